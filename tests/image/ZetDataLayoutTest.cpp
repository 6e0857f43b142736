#include <zet/ZetDataLayout>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetEnum>
#include <zet/ZetStrList>

namespace zet {
namespace {

const wchar_t* const kKeys[] = {L"PixelInterleaved", L"BandInterleaved", L"LineInterleaved", L"BlockInterleaved"};

TEST(ZetDataLayout, table)
{
    for (int i = 0; i < 4; ++i) {
        const ZetDataLayout layout(static_cast<ZetDataLayout::Type>(i));
        EXPECT_EQ(layout.type(), i);
        EXPECT_EQ(layout.toString(), kKeys[i]);
        EXPECT_EQ(ZetDataLayout::fromString(kKeys[i]), i);
        EXPECT_EQ(ZetDataLayout(ZetString(kKeys[i])), layout);
        EXPECT_TRUE(ZetDataLayout::isValid(kKeys[i]));
        EXPECT_EQ(ZetDataLayout::allKeys()[static_cast<std::size_t>(i)], kKeys[i]);
    }
    EXPECT_EQ(ZetDataLayout::allKeys().size(), 4u);
    EXPECT_EQ(ZetDataLayout::enumerator().items().size(), 4u);
    EXPECT_EQ(ZetDataLayout().className(), L"ZetDataLayout");
}

TEST(ZetDataLayout, whatIsNoLayoutIsInvalid)
{
    EXPECT_EQ(ZetDataLayout().type(), 4);
    for (const int number : {4, 5, -1}) {
        EXPECT_EQ(ZetDataLayout(static_cast<ZetDataLayout::Type>(number)).type(), 4) << number;
    }
    EXPECT_EQ(ZetDataLayout(ZetString(L"bandinterleaved")).type(), 4);
    EXPECT_EQ(ZetDataLayout::fromString(L""), 4);
    EXPECT_FALSE(ZetDataLayout::isValid(L""));
    EXPECT_EQ(ZetDataLayout().toString(), L"");
    EXPECT_NE(ZetDataLayout(), ZetDataLayout(ZetDataLayout::BandInterleaved));
}

TEST(ZetDataLayout, text)
{
    std::wstringstream stream;
    stream << ZetDataLayout(ZetDataLayout::LineInterleaved) << L" Bogus";
    EXPECT_EQ(stream.str(), L"LineInterleaved Bogus");
    ZetDataLayout layout;
    stream >> layout;
    EXPECT_EQ(layout.type(), ZetDataLayout::LineInterleaved);
    stream >> layout;
    EXPECT_EQ(layout.type(), ZetDataLayout::Invalid);
    EXPECT_FALSE(stream.fail());
}

}  // namespace
}  // namespace zet
