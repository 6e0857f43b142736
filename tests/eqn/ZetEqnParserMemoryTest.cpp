#include <zet/ZetEqnParser>

#include <algorithm>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include <zet/ZetEqnTile>

#include "support/ZetCountedNew"

namespace zet {
namespace {

// The parser that bison makes promises that its first stack, of some kilobytes, can be had.
constexpr std::size_t kGreatestToFail = 4096;

void useAll(ZetEqnParser& parser, const ZetString& text)
{
    static const ZetString name = L"x";
    static const ZetVariant value = 2.0;
    if (parser.parse(text)) {
        parser.setValue(name, value);
        parser.evaluate();
        ZetEqnParser(parser).collapse();
    }
}

const ZetVariant& someTile()
{
    static const ZetVariant value = [] {
        ZetEqnTile tile;
        tile.initialize(ZetDataType::U8, 700);
        std::fill_n(tile.elements<unsigned char>(), tile.size(), 7);
        return tile;
    }();
    return value;
}

/// Evaluates over tiles, again where there are results already, and folds; a failure of a function is no matter.
void useTiles(ZetEqnParser& parser, const ZetString& text)
{
    static const ZetString name = L"x";
    if (!parser.parse(text)) {
        return;
    }
    for (int i = 0; i < 2; ++i) {
        parser.setValue(name, someTile());
        parser.evaluate();
    }
    try {
        ZetEqnParser(parser).collapse();
    } catch (const ZetTextMsg&) {
    }
}

/// Whether \p blocks were enough. What memory does not suffice for ends in an exception or a refusal, and
/// leaves a parser that can be used, and nothing else.
bool sufficed(const ZetString& text, long blocks, void (*use)(ZetEqnParser&, const ZetString&) = useAll)
{
    const long before = s_liveBlocks;
    bool enough = false;
    {
        ZetEqnParser parser;
        s_greatestToFail = kGreatestToFail;
        s_blocksLeft = blocks;
        try {
            use(parser, text);
        } catch (const std::bad_alloc&) {
            s_blocksLeft = 0;
        }
        enough = s_blocksLeft > 0;
        s_blocksLeft = -1;
        parser.value(L"x");
        EXPECT_TRUE(parser.parse(L"1+2")) << blocks;
        EXPECT_EQ(parser.evaluate().value<double>(), 3.0) << blocks;
    }
    EXPECT_EQ(s_liveBlocks, before) << "of " << blocks << " blocks";
    return enough;
}

TEST(ZetEqnParserMemory, whereEachAllocationFails)
{
    ZetString deep;
    for (int i = 0; i < 250; ++i) {
        deep += L"(x-";
    }
    deep += L"1" + ZetString(250, L')');
    struct Row
    {
        ZetString text;
        long step;
    };
    const Row rows[] = {
        {L"sin(x)+pi*2-(x^2 > 1 ? 3 : m_c); y=0x10; z=\"a\"", 1},
        {L"a[1:2,x+f(3)]+[1,2;3]", 1},
        {L"[1:2,3", 1},
        {L"f(1,2,x,[1;2", 1},
        {L"2 m/s + \"abc\" #", 1},
        {deep, 97},
    };
    for (const Row& row : rows) {
        const ZetString text = row.text;
        // what is made once and kept
        ZetEqnParser first;
        useAll(first, text);
        first.value(L"x");

        long blocks = 0;
        while (!sufficed(text, blocks)) {
            blocks += row.step;
        }
        EXPECT_GT(blocks, 10);
    }
}

TEST(ZetEqnParserMemory, whereEachAllocationFailsOverTiles)
{
    const ZetString texts[] = {
        L"(x*x-3)/(x+2)*y-sum(x*y)+min(x,y,1); y=x*2",
        L"cmplx(x,1)*x+abs(sqrt(x)-(x-1)^2.5)",
        L"x*2 == x+x ? clip(x,0,5)-median(x*3) : x-1",
        L"(x+1)-sqrt(\"abc\")",
    };
    for (const ZetString& text : texts) {
        ZetEqnParser first;
        useTiles(first, text);
        long blocks = 0;
        while (!sufficed(text, blocks, useTiles)) {
            ++blocks;
        }
        EXPECT_GT(blocks, 50);
    }
}

TEST(ZetEqnParserMemory, aMedianOfManyTilesCopiesItsNumbersAFewTimes)
{
    ZetString text = L"median(x";
    for (int i = 1; i < 300; ++i) {
        text += L",x";
    }
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(text + L")"));
    parser.setValue(L"x", someTile());
    const std::size_t before = s_bytes;
    EXPECT_EQ(parser.evaluate().value<double>(), 7.0);
    const std::size_t numbers = 300 * 700 * sizeof(double);
    EXPECT_GT(s_bytes - before, numbers);
    EXPECT_LT(s_bytes - before, 10 * numbers);
}

}  // namespace
}  // namespace zet
