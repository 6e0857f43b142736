// What the description of a raster holds.

#include <ogr_spatialref.h>

#include <array>
#include <cmath>
#include <sstream>

#include <zet/ZetColorModel>
#include <zet/ZetScalar>

#include "ColourModel"
#include "Raster"
#include "RasterReader"
#include "raster/tests/Rasters"

namespace describe {

namespace {

using tools::test::RasterPlan;
using tools::test::toComplex;
using zet::ZetMetaDataSet;
using zet::ZetString;

class DescriptionTest : public tools::test::RasterTest
{
protected:
    ZetMetaDataSet describe(const std::string& file, const wchar_t* name = L"in")
    {
        m_raster = std::make_shared<Raster>(file);
        return describeRaster(m_raster, name);
    }

    /// Runs \p change on a file that is open for writing.
    template <class Change>
    static void update(const std::string& file, const Change& change)
    {
        const GDALDatasetUniquePtr dataset(GDALDataset::Open(file.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        ASSERT_TRUE(dataset);
        change(*dataset);
    }

    /// Gives the file a reference system and a transform.
    static void place(const std::string& file, int epsg, std::array<double, 6> transform)
    {
        update(file, [&](GDALDataset& dataset) {
            OGRSpatialReference system;
            ASSERT_EQ(system.importFromEPSG(epsg), OGRERR_NONE);
            dataset.SetSpatialRef(&system);
            dataset.SetGeoTransform(transform.data());
        });
    }

    static std::vector<double> numbersIn(const ZetMetaDataSet& set, const wchar_t* field)
    {
        std::vector<double> numbers;
        const zet::ZetVariantList values = set.field(field, false).values();
        for (const zet::ZetVariant& value : values) {
            numbers.push_back(value.value<double>());
        }
        return numbers;
    }

    static ZetString valueIn(const ZetMetaDataSet& set, const wchar_t* field)
    {
        const zet::ZetVariantList values = set.field(field, false).values();
        return values.empty() ? ZetString(L"none") : values.front().value<ZetString>();
    }

    RasterPtr m_raster;
};

TEST_F(DescriptionTest, wholeText)
{
    RasterPlan plan{5, 3, GDT_UInt16};
    plan.noData = 7;
    plan.creation = {{"NBITS", "12"}};
    plan.bands = {toComplex(std::vector<double>(15, 1.0))};
    std::wostringstream out;
    out << describe(make("in.tif", plan));
    EXPECT_EQ(out.str().substr(0, out.str().find(L"\ndomains; stored with the file")),
              L"in; GeoTIFF\n"
              L"(driver,\"GDAL's driver\",1,\"GTiff\")\n"
              L"(size,\"columns, rows and bands\",1,\"(5,3,1)\")\n"
              L"(element_type,\"of all bands\",1,\"U16\")\n"
              L"(bits,\"in use in an element\",1,\"12\")\n"
              L"(color_model,\"and its number of bands\",2,\"GrayScale\",\"1\")\n"
              L"(layout,\"order of the samples in the file\",1,\"BandInterleaved\")\n"
              L"\n"
              L"bands; by their numbers\n"
              L"\n"
              L"1; \n"
              L"(element_type,\"of a sample\",1,\"U16\")\n"
              L"(bits,\"in use in a sample\",1,\"12\")\n"
              L"(color_interpretation,\"what the samples stand for\",1,\"Gray\")\n"
              L"(block_size,\"columns, rows and planes of a storage block\",1,\"(5,3,1)\")\n"
              L"(no_data,\"value of pixels without data\",1,\"7.0\")\n"
              L"\n"
              L"domains; stored with the band\n"
              L"\n"
              L"IMAGE_STRUCTURE; \n"
              L"(NBITS,\"\",1,\"12\")\n"
              L"\n"
              L"tiles; the blocks of the file\n"
              L"(tile_size,\"columns, rows and bands of a block\",1,\"(5,3,1)\")\n"
              L"(across,\"blocks side by side\",1,\"1\")\n"
              L"(down,\"blocks below each other\",1,\"1\")\n"
              L"(count,\"blocks in all\",1,\"1\")\n");
}

TEST_F(DescriptionTest, whatTheFileDoesNotTellIsLeftOut)
{
    RasterPlan plan{4, 1, GDT_Byte};
    const ZetMetaDataSet set = describe(make("in.tif", plan));
    EXPECT_FALSE(set.containsSubset(L"georeference"));
    const ZetMetaDataSet band = set.subset(L"bands", false).subset(L"1", false);
    for (const wchar_t* name : {L"no_data", L"scale", L"offset", L"unit", L"title", L"overviews"}) {
        EXPECT_FALSE(band.containsField(name)) << zet::toMultibyte(name);
    }
    EXPECT_FALSE(set.containsField(L"compression"));
}

TEST_F(DescriptionTest, bandsThatTellMuch)
{
    RasterPlan plan{600, 300, GDT_Int16};
    plan.bands.resize(2, toComplex(std::vector<double>(600 * 300, 3.0)));
    const std::string file = make("in.tif", plan);
    update(file, [](GDALDataset& dataset) {
        GDALRasterBand& band = *dataset.GetRasterBand(2);
        band.SetScale(0.5);
        band.SetOffset(-1);
        band.SetUnitType("K");
        band.SetDescription("temp\xC3\xA9rature");
        const int factors[] = {2, 4};
        ASSERT_EQ(dataset.BuildOverviews("NEAREST", 2, factors, 0, nullptr, nullptr, nullptr), CE_None);
    });
    const ZetMetaDataSet bands = describe(file).subset(L"bands", false);
    EXPECT_EQ(bands.subsetNames(), (zet::ZetStrList{L"1", L"2"}));
    const ZetMetaDataSet band = bands.subset(L"2", false);
    EXPECT_EQ(valueIn(band, L"scale"), L"0.5");
    EXPECT_EQ(valueIn(band, L"offset"), L"-1.0");
    EXPECT_EQ(valueIn(band, L"unit"), L"K");
    EXPECT_EQ(valueIn(band, L"title"), L"temp\u00e9rature");
    const zet::ZetVariantList overviews = band.field(L"overviews", false).values();
    ASSERT_EQ(overviews.size(), 2u);
    EXPECT_EQ(overviews[0].value<ZetString>(), L"(300,150,1)");
    EXPECT_EQ(overviews[1].value<ZetString>(), L"(150,75,1)");
}

TEST_F(DescriptionTest, noDataOf64BitsIsWhole)
{
    const std::string lowest = make("i64.tif", RasterPlan{2, 2, GDT_Int64});
    update(lowest, [](GDALDataset& dataset) { dataset.GetRasterBand(1)->SetNoDataValueAsInt64(-9007199254740993); });
    const std::string greatest = make("u64.tif", RasterPlan{2, 2, GDT_UInt64});
    update(greatest,
           [](GDALDataset& dataset) { dataset.GetRasterBand(1)->SetNoDataValueAsUInt64(18446744073709551615u); });
    const auto noDataOf = [this](const std::string& file) {
        return valueIn(describe(file).subset(L"bands", false).subset(L"1", false), L"no_data");
    };
    EXPECT_EQ(noDataOf(lowest), L"-9007199254740993");
    EXPECT_EQ(noDataOf(greatest), L"18446744073709551615");
}

TEST_F(DescriptionTest, elementTypes)
{
    const struct
    {
        GDALDataType type;
        const wchar_t* name;
    } rows[] = {
        {GDT_Byte, L"U8"},
        {GDT_Int16, L"I16"},
        {GDT_UInt16, L"U16"},
        {GDT_Int32, L"I32"},
        {GDT_UInt32, L"U32"},
        {GDT_Int64, L"I64"},
        {GDT_UInt64, L"U64"},
        {GDT_Float32, L"Float"},
        {GDT_Float64, L"Double"},
        {GDT_CFloat32, L"ComplexFloat"},
        {GDT_CFloat64, L"ComplexDouble"},
        {GDT_CInt16, L"ComplexDouble"},
    };
    for (const auto& row : rows) {
        RasterPlan plan{2, 2, row.type};
        EXPECT_EQ(valueIn(describe(make("in.tif", plan)), L"element_type"), row.name);
    }
    RasterPlan bytes{2, 2, GDT_Byte};
    bytes.creation = {{"PIXELTYPE", "SIGNEDBYTE"}};
    EXPECT_EQ(valueIn(describe(make("in.tif", bytes)), L"element_type"), L"I8");
}

TEST_F(DescriptionTest, colourModels)
{
    const struct
    {
        std::vector<GDALColorInterp> bands;
        const wchar_t* model;
        unsigned int count;
    } rows[] = {
        {{GCI_GrayIndex}, L"GrayScale", 1},
        {{GCI_GrayIndex, GCI_AlphaBand}, L"GrayScale", 1},
        {{GCI_AlphaBand}, L"Alpha", 1},
        {{GCI_PaletteIndex}, L"Other", 1},
        {{GCI_Undefined}, L"Other", 1},
        {{GCI_RedBand, GCI_GreenBand, GCI_BlueBand}, L"RGB", 3},
        {{GCI_RedBand, GCI_GreenBand, GCI_BlueBand, GCI_AlphaBand}, L"RGB", 3},
        {{GCI_HueBand, GCI_SaturationBand, GCI_LightnessBand}, L"HSI", 3},
        {{GCI_YCbCr_YBand, GCI_YCbCr_CbBand, GCI_YCbCr_CrBand}, L"YCbCr", 3},
        {{GCI_CyanBand, GCI_MagentaBand, GCI_YellowBand, GCI_BlackBand}, L"CMYK", 4},
        // what fits no model is just so many bands
        {{GCI_BlueBand, GCI_GreenBand, GCI_RedBand}, L"MultiSpectral", 3},
        {{GCI_GrayIndex, GCI_Undefined}, L"MultiSpectral", 2},
        {{GCI_RedBand, GCI_GreenBand, GCI_BlueBand, GCI_Undefined, GCI_Undefined}, L"MultiSpectral", 5},
    };
    GDALDriver* const memory = GetGDALDriverManager()->GetDriverByName("MEM");
    for (const auto& row : rows) {
        const GDALDatasetUniquePtr dataset(
            memory->Create("", 1, 1, static_cast<int>(row.bands.size()), GDT_Byte, nullptr));
        for (std::size_t i = 0; i < row.bands.size(); ++i) {
            dataset->GetRasterBand(static_cast<int>(i) + 1)->SetColorInterpretation(row.bands[i]);
        }
        const zet::ZetColorModel model = colourModelOf(*dataset);
        EXPECT_EQ(model.name(), row.model);
        EXPECT_EQ(model.numBands(), row.count);
    }
}

TEST_F(DescriptionTest, layouts)
{
    for (const auto& [interleave, layout] :
         {std::pair<const char*, const wchar_t*>{"PIXEL", L"PixelInterleaved"}, {"BAND", L"BandInterleaved"}}) {
        RasterPlan plan{2, 2, GDT_Byte};
        plan.bands.resize(2, toComplex({1, 2, 3, 4}));
        plan.creation = {{"INTERLEAVE", interleave}, {"COMPRESS", "DEFLATE"}};
        const ZetMetaDataSet set = describe(make("in.tif", plan));
        EXPECT_EQ(valueIn(set, L"layout"), layout);
        EXPECT_EQ(valueIn(set, L"compression"), L"DEFLATE");
    }
}

TEST_F(DescriptionTest, domains)
{
    const std::string file = make("in.tif", RasterPlan{2, 2, GDT_Byte});
    update(file, [](GDALDataset& dataset) {
        dataset.SetMetadataItem("sensor.name", "a b=c");
        dataset.SetMetadataItem("KEY", "value", "OWN");
        const char* text[] = {"<x>y</x>", nullptr};
        dataset.SetMetadata(const_cast<char**>(text), "xml:MINE");
        // no UTF-8, so Latin-1
        dataset.GetRasterBand(1)->SetMetadataItem("of", "b\xE4nd");
    });
    const ZetMetaDataSet set = describe(file);
    const ZetMetaDataSet domains = set.subset(L"domains", false);
    EXPECT_EQ(valueIn(domains.subset(L"default", false), L"sensor.name"), L"a b=c");
    EXPECT_EQ(valueIn(domains.subset(L"OWN", false), L"KEY"), L"value");
    EXPECT_EQ(valueIn(domains.subset(L"xml:MINE", false), L"text"), L"<x>y</x>");
    const ZetMetaDataSet band = set.subset(L"bands", false).subset(L"1", false);
    EXPECT_EQ(valueIn(band.subset(L"domains", false).subset(L"default", false), L"of"), L"b\u00e4nd");
}

TEST_F(DescriptionTest, degreesOnTheGround)
{
    const std::string file = make("in.tif", RasterPlan{100, 50, GDT_Byte});
    place(file, 4326, {10, 0.02, 0, 48, 0, -0.01});
    const ZetMetaDataSet place = describe(file).subset(L"georeference", false);
    EXPECT_EQ(valueIn(place, L"projection"), L"WGS 84");
    EXPECT_EQ(valueIn(place, L"authority"), L"EPSG:4326");
    EXPECT_EQ(numbersIn(place, L"transform"), (std::vector<double>{10, 0.02, 0, 48, 0, -0.01}));

    const struct
    {
        const wchar_t* name;
        double longitude;
        double latitude;
    } corners[] = {
        {L"upper_left", 10, 48},   {L"upper_right", 12, 48}, {L"lower_right", 12, 47.5},
        {L"lower_left", 10, 47.5}, {L"center", 11, 47.75},
    };
    for (const auto& corner : corners) {
        const std::vector<double> point = numbersIn(place.subset(L"corners", false), corner.name);
        ASSERT_EQ(point.size(), 2u);
        EXPECT_NEAR(point[0], corner.longitude, 1e-12);
        EXPECT_NEAR(point[1], corner.latitude, 1e-12);
    }

    // by the spherical law of cosines, on the radius that the distances are told for
    const auto distance = [](double lon1, double lat1, double lon2, double lat2) {
        const double degree = std::acos(-1.0) / 180.0;
        return 6367444.6570999995 *
               std::acos(std::sin(lat1 * degree) * std::sin(lat2 * degree) +
                         std::cos(lat1 * degree) * std::cos(lat2 * degree) * std::cos((lon2 - lon1) * degree));
    };
    const ZetMetaDataSet distances = place.subset(L"distances", false);
    const struct
    {
        const wchar_t* name;
        double metres;
    } rows[] = {
        {L"top", distance(10, 48, 12, 48)},        {L"bottom", distance(10, 47.5, 12, 47.5)},
        {L"left", distance(10, 48, 10, 47.5)},     {L"right", distance(12, 48, 12, 47.5)},
        {L"diagonal", distance(10, 48, 12, 47.5)},
    };
    for (const auto& row : rows) {
        const zet::ZetScalar scalar = distances.field(row.name, false).values().at(0).value<zet::ZetScalar>();
        EXPECT_NEAR(scalar.real(), row.metres, 1e-3);
        EXPECT_EQ(ZetString(scalar.units()), L"m");
    }
    EXPECT_NEAR(numbersIn(distances, L"heading").at(0), 0.0, 1e-9);
}

TEST_F(DescriptionTest, metresOnTheGround)
{
    const std::string file = make("in.tif", RasterPlan{10, 10, GDT_Byte});
    // the central meridian of the zone meets the equator at 500000, 0
    place(file, 32633, {500000, 100, 0, 0, 0, -100});
    const ZetMetaDataSet place = describe(file).subset(L"georeference", false);
    EXPECT_EQ(valueIn(place, L"authority"), L"EPSG:32633");
    const std::vector<double> corner = numbersIn(place.subset(L"corners", false), L"upper_left");
    ASSERT_EQ(corner.size(), 2u);
    EXPECT_NEAR(corner[0], 15.0, 1e-9);
    EXPECT_NEAR(corner[1], 0.0, 1e-9);
    EXPECT_NEAR(std::remainder(numbersIn(place.subset(L"distances", false), L"heading").at(0), 360.0), 0.0, 0.01);
}

TEST_F(DescriptionTest, aTransformWithoutAReferenceSystem)
{
    const std::string file = make("in.tif", RasterPlan{10, 10, GDT_Byte});
    update(file, [](GDALDataset& dataset) {
        double transform[] = {1, 2, 0, 3, 0, -2};
        dataset.SetGeoTransform(transform);
    });
    const ZetMetaDataSet place = describe(file).subset(L"georeference", false);
    EXPECT_EQ(place.fieldNames(), zet::ZetStrList{L"transform"});
    EXPECT_TRUE(place.subsets().empty());
}

TEST_F(DescriptionTest, tiePoints)
{
    const std::string file = make("in.tif", RasterPlan{10, 10, GDT_Byte});
    update(file, [](GDALDataset& dataset) {
        OGRSpatialReference system;
        system.importFromEPSG(4326);
        system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
        char text[] = "";
        const GDAL_GCP points[] = {{text, text, 0, 0, 10.125, 48, 0}, {text, text, 9.5, 8, 11, 47.0625, 0}};
        ASSERT_EQ(dataset.SetGCPs(2, points, &system), CE_None);
    });
    const ZetMetaDataSet place = describe(file).subset(L"georeference", false);
    const zet::ZetVariantList values = place.field(L"tie_points", false).values();
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].value<ZetString>(), L"((0,0),(10.125,48))");
    EXPECT_EQ(values[1].value<ZetString>(), L"((9.5,8),(11,47.0625))");
    EXPECT_EQ(valueIn(place, L"projection"), L"WGS 84");
    EXPECT_TRUE(place.subsets().empty());
}

TEST_F(DescriptionTest, aJpeg)
{
    RasterPlan plan{40, 20, GDT_Byte};
    plan.bands.resize(3, toComplex(std::vector<double>(800, 100.0)));
    const GDALDatasetUniquePtr source = open(make("in.tif", plan));
    GDALDriver* const jpeg = GetGDALDriverManager()->GetDriverByName("JPEG");
    ASSERT_NE(jpeg, nullptr);
    GDALDatasetUniquePtr(jpeg->CreateCopy(path("in.jpg").c_str(), source.get(), FALSE, nullptr, nullptr, nullptr));
    const ZetMetaDataSet set = describe(path("in.jpg"));
    EXPECT_EQ(set.description(), L"JPEG JFIF");
    EXPECT_EQ(valueIn(set, L"size"), L"(40,20,3)");
    EXPECT_EQ(valueIn(set, L"color_model"), L"RGB");
    EXPECT_EQ(valueIn(set, L"layout"), L"PixelInterleaved");
    EXPECT_EQ(valueIn(set.subset(L"tiles", false), L"count"), L"20");
    EXPECT_FALSE(set.containsSubset(L"georeference"));
}

TEST_F(DescriptionTest, theSetOutlivesItsMaker)
{
    ZetMetaDataSet set = describe(make("in.tif", RasterPlan{4, 2, GDT_Byte}));
    m_raster.reset();
    EXPECT_EQ(valueIn(set.subset(L"bands", false).subset(L"1", false), L"element_type"), L"U8");
}

}  // namespace
}  // namespace describe
