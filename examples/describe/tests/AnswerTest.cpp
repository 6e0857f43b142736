// What is printed of a description, and what is asked of GDAL for it.

#include "Answer"

#include <zet/ZetMetaProperties>

#include "raster/Failure"
#include "raster/tests/Rasters"

namespace describe {

namespace {

using tools::test::RasterPlan;
using zet::ZetString;

Request requestOf(const std::vector<const char*>& arguments)
{
    std::vector<std::string> words = {"describe"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return parseRequest(words);
}

class AnswerTest : public tools::test::RasterTest
{
protected:
    AnswerTest()
    {
        RasterPlan plan{100, 60, GDT_Byte};
        plan.bands.resize(2);
        for (tools::test::Complexes& band : plan.bands) {
            band.resize(6000, 1.0);
        }
        plan.creation = {{"TILED", "YES"}, {"BLOCKXSIZE", "32"}, {"BLOCKYSIZE", "16"}};
        m_file = make("in.tif", plan);
        m_raster = std::make_shared<Raster>(m_file);
    }

    ZetString answerTo(std::vector<const char*> words)
    {
        words.push_back(m_file.c_str());
        return answer(requestOf(words), m_raster);
    }

    std::string failureOf(const std::vector<const char*>& words)
    {
        try {
            answerTo(words);
        } catch (const tools::Failure& failure) {
            return failure.what();
        }
        return "no failure";
    }

    std::string m_file;
    RasterPtr m_raster;
};

TEST_F(AnswerTest, asksOnlyForWhatIsOnTheWay)
{
    const struct
    {
        const char* path;
        const wchar_t* text;
        std::vector<std::string> asked;
    } rows[] = {
        {"size", L"(100,60,2)\n", {"parts of the raster", "fields of the raster"}},
        {"color_model", L"MultiSpectral\n2\n", {"parts of the raster", "fields of the raster"}},
        {"tiles.count", L"16\n", {"parts of the raster", "parts of tiles", "fields of tiles"}},
        {"bands.2.element_type",
         L"U8\n",
         {"parts of the raster", "parts of bands", "parts of bands.2", "fields of bands.2"}},
        {"domains.IMAGE_STRUCTURE.INTERLEAVE",
         L"PIXEL\n",
         {"parts of the raster", "parts of domains", "parts of domains.IMAGE_STRUCTURE",
          "fields of domains.IMAGE_STRUCTURE"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        m_raster->asked.clear();
        EXPECT_EQ(answerTo({"--get", row.path}), row.text);
        EXPECT_EQ(m_raster->asked, row.asked);
    }
}

TEST_F(AnswerTest, partsPrintAsSets)
{
    EXPECT_EQ(answerTo({"--get", "tiles"}),
              L"tiles; the blocks of the file\n"
              L"(tile_size,\"columns, rows and bands of a block\",1,\"(32,16,2)\")\n"
              L"(across,\"blocks side by side\",1,\"4\")\n"
              L"(down,\"blocks below each other\",1,\"4\")\n"
              L"(count,\"blocks in all\",1,\"16\")\n");
}

TEST_F(AnswerTest, withoutAQuestionAllIsPrinted)
{
    const ZetString all = answerTo({});
    EXPECT_EQ(all.find(zet::toWide(m_file) + L"; GeoTIFF\n"), 0u);
    for (const wchar_t* part : {L"\nbands; ", L"\n2; ", L"\ntiles; ", L"\ndomains; "}) {
        EXPECT_NE(all.find(part), ZetString::npos) << zet::toMultibyte(part);
    }
}

TEST_F(AnswerTest, cellsAndRegions)
{
    EXPECT_EQ(answerTo({"--cell", "0"}), L"((0,0,0),(32,16,2))\n");
    // cut at the edges
    EXPECT_EQ(answerTo({"-c", "15"}), L"((96,48,0),(4,12,2))\n");
    EXPECT_EQ(answerTo({"--region", "31,15,2,2"}), L"0\n1\n4\n5\n");
    EXPECT_EQ(answerTo({"-r", "-10,-10,11,11"}), L"0\n");
    EXPECT_EQ(answerTo({"-r", "100,0,5,5"}), L"");
    EXPECT_EQ(answerTo({"-r", "0,0,0,5"}), L"");
    EXPECT_EQ(answerTo({"-r", " 99, 59,1,1"}), L"15\n");
    EXPECT_EQ(failureOf({"--cell", "16"}), "There is no cell 16; there are 16, counted from 0.");
    EXPECT_EQ(failureOf({"--cell", "4294967295"}), "There is no cell 4294967295; there are 16, counted from 0.");
    // nothing is asked of the description
    EXPECT_TRUE(m_raster->asked.empty());
}

TEST_F(AnswerTest, unknownPaths)
{
    for (const char* path : {"nothing", "bands.9", "bands.1.nothing", "bands.", ".", "size.1", "bands..1"}) {
        EXPECT_EQ(failureOf({"--get", path}),
                  "There is no '" + std::string(path) + "' in the description of '" + m_file + "'.");
    }
}

TEST(TextAt, namesMayHoldDots)
{
    zet::ZetMetaDataSet set(L"s");
    set.rfield(L"a.b").setValues({1});
    set.rsubset(L"a").rfield(L"c").setValues({2, 3});
    set.rsubset(L"x.y").rfield(L"z.w").setValues({4});
    set.rsubset(L"x").rfield(L"y").setValues({5});
    EXPECT_EQ(textAt(set, L"a.b").value(), L"1\n");
    EXPECT_EQ(textAt(set, L"a.c").value(), L"2\n3\n");
    EXPECT_EQ(textAt(set, L"x.y.z.w").value(), L"4\n");
    EXPECT_EQ(textAt(set, L"x.y").value(), L"5\n");
    EXPECT_FALSE(textAt(set, L"a.b.c"));
    EXPECT_FALSE(textAt(set, L""));
}

TEST(Request, defaults)
{
    const Request request = requestOf({"f.tif"});
    EXPECT_EQ(request.file(), L"f.tif");
    EXPECT_EQ(request.get(), L"");
    EXPECT_FALSE(request.cell());
    EXPECT_FALSE(request.region());
    EXPECT_FALSE(request.trace());
}

TEST(Request, optionsAreProperties)
{
    const Request request = requestOf({"-t", "f.tif", "--region", "-1,2,3,4"});
    EXPECT_TRUE(request.trace());
    const zet::ZetMetaObjectConstPtr meta = request.metaObject();
    EXPECT_EQ(meta->properties()->propertyNames(true),
              (zet::ZetStrList{L"file", L"get", L"cell", L"region", L"trace"}));
    const struct
    {
        const wchar_t* name;
        const wchar_t* kind;
        const wchar_t* text;
    } rows[] = {
        {L"file", L"ZetString", L"f.tif"},      {L"get", L"ZetString", L""},  {L"cell", L"UInt", L""},
        {L"region", L"ZetString", L"-1,2,3,4"}, {L"trace", L"Bool", L"true"},
    };
    for (const auto& row : rows) {
        zet::ZetVariant value;
        EXPECT_EQ(meta->getPropertyValue(row.name, value), 0);
        EXPECT_EQ(value.value<ZetString>(), row.text);
        EXPECT_EQ(meta->properties()->property(row.name, false)->type().toString(), row.kind);
    }
}

}  // namespace
}  // namespace describe
