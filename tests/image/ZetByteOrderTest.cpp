#include <zet/ZetByteOrder>

#include <cstring>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zet/QorSwapBytesLoop>
#include <zet/ZetEnum>
#include <zet/ZetStrList>

namespace zet {
namespace {

TEST(ZetByteOrder, table)
{
    const wchar_t* const keys[] = {L"LittleEndian", L"BigEndian"};
    for (int i = 0; i < 2; ++i) {
        const ZetByteOrder order(static_cast<ZetByteOrder::Type>(i));
        EXPECT_EQ(order.type(), i);
        EXPECT_EQ(order.toString(), keys[i]);
        EXPECT_EQ(ZetByteOrder(ZetString(keys[i])), order);
        EXPECT_TRUE(ZetByteOrder::isValid(keys[i]));
        EXPECT_EQ(ZetByteOrder::allKeys()[static_cast<std::size_t>(i)], keys[i]);
    }
    EXPECT_EQ(ZetByteOrder::enumerator().items().size(), 2u);
    for (const int number : {2, 3, -1}) {
        EXPECT_EQ(ZetByteOrder(static_cast<ZetByteOrder::Type>(number)).type(), 2) << number;
    }
    EXPECT_EQ(ZetByteOrder(ZetString(L"bigendian")).type(), 2);
    EXPECT_FALSE(ZetByteOrder::isValid(L"bigendian"));
    EXPECT_EQ(ZetByteOrder(ZetByteOrder::Invalid).toString(), L"");
    EXPECT_EQ(ZetByteOrder().className(), L"ZetByteOrder");
}

TEST(ZetByteOrder, nativeOrderIsThatOfTheMachine)
{
    const unsigned short one = 1;
    unsigned char first = 0;
    std::memcpy(&first, &one, 1);
    EXPECT_EQ(ZetByteOrder::nativeOrder(), first == 1 ? 0 : 1);
    EXPECT_EQ(ZetByteOrder(), ZetByteOrder(ZetByteOrder::nativeOrder()));
}

TEST(ZetByteOrder, text)
{
    std::wstringstream stream;
    stream << ZetByteOrder(ZetByteOrder::BigEndian) << L" Middle";
    EXPECT_EQ(stream.str(), L"BigEndian Middle");
    ZetByteOrder order;
    stream >> order;
    EXPECT_EQ(order.type(), ZetByteOrder::BigEndian);
    stream >> order;
    EXPECT_EQ(order.type(), ZetByteOrder::Invalid);
}

std::string swapped(std::string text, unsigned long elementSize)
{
    EXPECT_EQ(swapBytes(text.data(), elementSize == 0 ? text.size() : text.size() / elementSize, elementSize, true), 0);
    return text;
}

TEST(swapBytes, reversesEachElement)
{
    EXPECT_EQ(swapped("AB", 2), "BA");
    EXPECT_EQ(swapped("ABC", 3), "CBA");
    EXPECT_EQ(swapped("ABCDEF", 2), "BADCFE");
    EXPECT_EQ(swapped("ABCDEF", 3), "CBAFED");
    EXPECT_EQ(swapped("ABCDEFGH", 4), "DCBAHGFE");
    EXPECT_EQ(swapped("ABCDEFGHabcdefgh", 8), "HGFEDCBAhgfedcba");
    EXPECT_EQ(swapped("ABCDEFGHabcdefgh", 16), "hgfedcbaHGFEDCBA");
    // too small to have an order
    EXPECT_EQ(swapped("ABCD", 1), "ABCD");
    EXPECT_EQ(swapped("ABCD", 0), "ABCD");
    EXPECT_EQ(swapped("", 2), "");
    EXPECT_EQ(swapBytes(nullptr, 0, 4, false), 0);
}

TEST(swapBytes, everyCountWidthAndAddress)
{
    for (unsigned long width = 1; width <= 17; ++width) {
        for (const unsigned long count : {1UL, 2UL, 7UL, 255UL, 256UL, 257UL, 1000UL}) {
            for (const unsigned long offset : {0UL, 1UL}) {
                std::vector<unsigned char> bytes(offset + width * count + 1);
                std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(width));
                std::vector<unsigned char> expected(bytes);
                for (unsigned long i = 0; i < count; ++i) {
                    for (unsigned long k = 0; k < width; ++k) {
                        expected[offset + i * width + k] = bytes[offset + i * width + width - 1 - k];
                    }
                }
                EXPECT_EQ(swapBytes(bytes.data() + offset, count, width, count % 2 == 0), 0);
                EXPECT_EQ(bytes, expected) << "width " << width << " count " << count;
            }
        }
    }
}

TEST(QorSwapBytesLoop, swapsTheElementsOfTheRange)
{
    char bytes[] = "abcdefgh";
    const QorSwapBytesLoop loop(bytes, 4, 2);
    EXPECT_EQ(loop.count(), 4u);
    EXPECT_EQ(loop.elementSize(), 2u);
    EXPECT_EQ(static_cast<void*>(loop.data()), static_cast<void*>(bytes));
    loop(ZetBlockedRange1D<int>(3, 1));
    EXPECT_STREQ(bytes, "abdcfegh");
    loop(ZetBlockedRange1D<int>(2, 2));
    loop(ZetBlockedRange1D<int>(0, 2));
    EXPECT_STREQ(bytes, "abdcfegh");
}

}  // namespace
}  // namespace zet
