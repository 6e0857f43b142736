#include <zet/ZetHistogram_p>

#include <cstring>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

namespace zet {
namespace {

ZetBufferPtr bufferOf(const char* text)
{
    const ZetBufferPtr buffer = new ZetBuffer(std::strlen(text), true);
    std::memcpy(buffer->data(), text, buffer->size());
    return buffer;
}

TEST(ZetHistogram_p, holdsItsParts)
{
    ZetHistogram_p h;
    EXPECT_EQ(h.className(), L"ZetHistogram_p");
    EXPECT_FALSE(h.data().booleanTest());
    EXPECT_EQ(h.firstBin(), 0);
    EXPECT_EQ(h.lastBin(), 0);

    const ZetBufferPtr buffer = bufferOf("ab");
    h.setData(buffer);
    h.setFirstBin(-1);
    h.setLastBin(7);
    EXPECT_EQ(h, ZetHistogram_p(buffer, -1, 7));
    EXPECT_EQ(h, ZetHistogram_p(bufferOf("ab"), -1, 7));
    EXPECT_NE(h, ZetHistogram_p(bufferOf("ac"), -1, 7));
    EXPECT_NE(h, ZetHistogram_p(ZetBufferPtr(), -1, 7));
    EXPECT_NE(h, ZetHistogram_p(buffer, 0, 7));
    EXPECT_NE(h, ZetHistogram_p(buffer, -1, 8));
}

TEST(ZetHistogram_p, properties)
{
    ZetHistogram_p h;
    const ZetMetaObjectPtr meta = h.metaObject();
    meta->properties();

    const ZetBufferPtr buffer = bufferOf("ab");
    EXPECT_EQ(meta->setPropertyValue(L"first_bin", ZetVariant(3)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"last_bin", ZetVariant(L"9")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"data", ZetVariant(buffer)), 0);
    EXPECT_EQ(h, ZetHistogram_p(buffer, 3, 9));
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"data", value), 0);
    EXPECT_EQ(value.value<ZetBufferPtr>(), buffer);
    EXPECT_EQ(meta->getPropertyValue(L"other", value), 1);
}

TEST(ZetHistogram_p, travelsInVariants)
{
    const ZetHistogram_p h(bufferOf("ab"), 1, 2);
    const ZetVariant variant(ZetMetaType::of<ZetHistogram_p>(), &h);
    EXPECT_EQ(variant.typeName(), L"ZetHistogram_p");
    EXPECT_EQ(variant.className(), L"ZetVariant");
    EXPECT_EQ(variant.implementation()->className(), L"ZetHistogram_p");
    EXPECT_EQ(variant.value<ZetHistogram_p>(), h);

    const ZetVariantIFPtr clone = variant.implementation()->clone();
    EXPECT_TRUE(clone->isEqual(variant.implementation().get()));

    // no text form, neither way
    ZetString text(L"before");
    EXPECT_FALSE(variant.convertTo(&text));
    EXPECT_EQ(text, L"");
    EXPECT_FALSE(clone->convertFrom(typeID<ZetString>(), &text));
    EXPECT_EQ(ZetVariant(L"text").value<ZetHistogram_p>(), ZetHistogram_p());

    // no other target is written
    int number = 7;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 7);

    std::wostringstream out;
    out << variant;
    EXPECT_TRUE(out.fail());
    std::wistringstream in(L"ZetHistogram_p,1");
    ZetVariant read;
    in >> read;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(read.typeName(), L"ZetHistogram_p");
}

}  // namespace
}  // namespace zet
