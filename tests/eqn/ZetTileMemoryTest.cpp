#include "eqn/ZetTileMemory"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetEqnParser>
#include <zet/ZetScalar>

#include "support/ZetBlockCount"
#include "support/ZetCollectingHandler"
#include "support/ZetNoMemory"
#include "support/ZetSameValue"

namespace zet {
namespace test {
namespace {

using internal::ZetTileMemory;

constexpr unsigned long kBytes = 48;

const ZetDataType::Type kTypes[] = {ZetDataType::I8,     ZetDataType::U8,           ZetDataType::I16,
                                    ZetDataType::U16,    ZetDataType::I32,          ZetDataType::U32,
                                    ZetDataType::I64,    ZetDataType::U64,          ZetDataType::Float,
                                    ZetDataType::Double, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble};

/// How many elements of a type fill some bytes.
unsigned long countOf(ZetDataType::Type type, unsigned long bytes = kBytes)
{
    return bytes / static_cast<unsigned long>(ZetDataType(type).size());
}

/// A value that holds a tile with a block of its own, each byte 7.
ZetVariant result(ZetDataType::Type type, unsigned long size)
{
    ZetEqnTile tile;
    tile.initialize(type, size);
    std::memset(tile.elements<void>(), 7, tile.buffer()->size());
    return ZetVariant(tile);
}

ZetVariant result(unsigned long bytes)
{
    return result(ZetDataType::U8, bytes);
}

const ZetEqnTile& tileIn(const ZetVariant& value)
{
    return held<ZetEqnTile>(value);
}

const void* blockOf(const ZetVariant& value)
{
    return tileIn(value).elements<const void>();
}

/// Expects a tile as initialize() makes it, but for its elements.
void expectFresh(const ZetEqnTile& tile, const ZetDataType& type, unsigned long size)
{
    ZetEqnTile fresh;
    fresh.initialize(type, size);
    EXPECT_EQ(differenceOf(tile, fresh, false), L"");
}

TEST(ZetTileMemory, aBlockComesBackForItsSizeWhateverTheTypes)
{
    for (const ZetDataType::Type from : kTypes) {
        for (const ZetDataType::Type to : kTypes) {
            SCOPED_TRACE(testing::Message() << "from " << from << " to " << to);
            ZetTileMemory memory;
            ZetVariant value = result(from, countOf(from));
            const ZetBuffer* const buffer = tileIn(value).buffer().get();
            const void* const block = blockOf(value);
            tileIn(value).buffer()->setDataType(from);
            memory.release(value);
            EXPECT_FALSE(value.isValid());

            ZetBlockCount blocks;
            const ZetEqnTile tile = memory.makeTile(to, countOf(to));
            EXPECT_EQ(blocks.take(), 0);
            EXPECT_EQ(tile.buffer().get(), buffer);
            EXPECT_EQ(tile.elements<const void>(), block);
            // the note of what the elements are is not the new tile's
            expectFresh(tile, to, countOf(to));
            // and the block is given once
            blocks.take();
            EXPECT_NE(memory.makeTile(to, countOf(to)).elements<const void>(), block);
            EXPECT_EQ(blocks.take(), 1);
        }
    }
}

TEST(ZetTileMemory, theLogicalBitDepthIsThatOfTheNewType)
{
    ZetTileMemory memory;
    ZetDataType deep(ZetDataType::U16);
    deep.setLogicalBitDepth(11);
    for (const ZetDataType& type : {deep, ZetDataType(ZetDataType::U16), deep}) {
        ZetVariant value(memory.makeTile(type, 24));
        expectFresh(tileIn(value), type, 24);
        memory.release(value);
    }
}

TEST(ZetTileMemory, aBlockServesNoOtherSize)
{
    ZetTileMemory memory;
    ZetVariant value = result(kBytes);
    const void* const block = blockOf(value);
    memory.release(value);
    ZetBlockCount blocks;
    const struct
    {
        ZetDataType::Type type;
        unsigned long size;
    } rows[] = {
        {ZetDataType::U8, kBytes - 1},  {ZetDataType::U8, kBytes + 1},   {ZetDataType::U8, 1},
        {ZetDataType::U8, 2 * kBytes},  {ZetDataType::Double, kBytes},   {ZetDataType::Double, 5},
        {ZetDataType::Double, 7},       {ZetDataType::ComplexDouble, 2}, {ZetDataType::ComplexDouble, 4},
        {ZetDataType::I16, kBytes / 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.size << " of type " << row.type);
        const ZetEqnTile tile = memory.makeTile(row.type, row.size);
        EXPECT_EQ(blocks.take(), 1);
        EXPECT_NE(tile.elements<const void>(), block);
        expectFresh(tile, row.type, row.size);
        blocks.take();
    }
    EXPECT_EQ(memory.makeTile(ZetDataType::U8, kBytes).elements<const void>(), block) << "it is still there";
}

/// What somebody else holds of a value, and the values that go.
struct Holder
{
    ZetVariant value;
    ZetEqnTile tile;
    ZetBufferPtr buffer;
};

struct ReleaseRow
{
    const char* name;
    std::function<ZetVariant(Holder&)> make;
    int blocks;  // that are needed for a tile of the same size afterwards
};

alignas(double) unsigned char s_callers[kBytes];

const ReleaseRow kReleases[] = {
    {"a result that nobody else holds", [](Holder&) { return result(kBytes); }, 0},
    {"a result of part of its block",
     [](Holder&) { return ZetVariant(ZetEqnTile(tileIn(result(kBytes)).buffer(), ZetDataType::Double, 2)); }, 0},
    {"a result whose elements are apart",
     [](Holder&) { return ZetVariant(ZetEqnTile(tileIn(result(kBytes)).buffer(), ZetDataType::Double, 3, 2)); }, 0},
    {"a result whose value is held",
     [](Holder& holder) {
         holder.value = result(kBytes);
         return holder.value;
     },
     1},
    {"a result whose tile is held",
     [](Holder& holder) {
         const ZetVariant value = result(kBytes);
         holder.tile = tileIn(value);
         return value;
     },
     1},
    {"a result whose buffer is held",
     [](Holder& holder) {
         const ZetVariant value = result(kBytes);
         holder.buffer = tileIn(value).buffer();
         return value;
     },
     1},
    {"another value on the same buffer",
     [](Holder& holder) {
         holder.value = result(kBytes);
         return ZetVariant(ZetEqnTile(tileIn(holder.value).buffer(), ZetDataType::U16, kBytes / 2));
     },
     1},
    {"a tile on a caller's memory",
     [](Holder&) { return ZetVariant(ZetEqnTile(new ZetBuffer(kBytes, s_callers, false), ZetDataType::U8, kBytes)); },
     1},
    {"a tile on memory that a caller handed over",
     [](Holder&) {
         return ZetVariant(ZetEqnTile(new ZetBuffer(kBytes, std::malloc(kBytes), true), ZetDataType::U8, kBytes));
     },
     1},
    {"a buffer without a block",
     [](Holder&) { return ZetVariant(ZetEqnTile(new ZetBuffer(kBytes, false), ZetDataType::U8, kBytes)); }, 1},
    {"a tile without a buffer", [](Holder&) { return ZetVariant(ZetEqnTile()); }, 1},
    {"a tile of no elements", [](Holder&) { return ZetVariant(ownTile(ZetDataType::U8, {})); }, 1},
    {"a number", [](Holder&) { return ZetVariant(2.5); }, 1},
    {"a scalar", [](Holder&) { return ZetVariant(ZetScalar(2.5)); }, 1},
    {"a text", [](Holder&) { return ZetVariant(ZetString(kBytes, L'x')); }, 1},
    {"nothing", [](Holder&) { return ZetVariant(); }, 1},
};

TEST(ZetTileMemory, whatIsReleasedIsInvalidAndServesOnlyIfNobodyHoldsIt)
{
    for (const ReleaseRow& row : kReleases) {
        SCOPED_TRACE(row.name);
        std::memset(s_callers, 7, kBytes);
        ZetTileMemory memory;
        Holder holder;
        ZetVariant value = row.make(holder);
        memory.release(value);
        EXPECT_FALSE(value.isValid());

        ZetBlockCount blocks;
        const ZetEqnTile tile = memory.makeTile(ZetDataType::U8, kBytes);
        EXPECT_EQ(blocks.take(), row.blocks);
        expectFresh(tile, ZetDataType::U8, kBytes);
        std::memset(tile.elements<void>(), 9, kBytes);
        std::vector<const void*> heldBlocks = {s_callers, holder.tile.elements<const void>(),
                                               holder.buffer ? holder.buffer->data() : nullptr,
                                               holder.value.isValid() ? blockOf(holder.value) : nullptr};
        for (const void* const block : heldBlocks) {
            const unsigned char* const bytes = static_cast<const unsigned char*>(block);
            EXPECT_TRUE(!bytes || std::count(bytes, bytes + kBytes, 7) == long{kBytes});
        }
    }
}

TEST(ZetTileMemory, fourBlocksAreKeptAndTheOldestGoesFirst)
{
    for (unsigned long released = 1; released <= 9; ++released) {
        SCOPED_TRACE(released);
        ZetTileMemory memory;
        std::vector<const void*> buffers;
        for (unsigned long i = 0; i < released; ++i) {
            ZetVariant value = result(100 + i);
            buffers.push_back(tileIn(value).buffer().get());
            memory.release(value);
        }
        ZetBlockCount blocks;
        std::vector<ZetEqnTile> tiles;
        for (unsigned long i = 0; i < released; ++i) {
            const bool isKept = i + 4 >= released;
            tiles.push_back(memory.makeTile(ZetDataType::U8, 100 + i));
            EXPECT_EQ(blocks.take(), isKept ? 0 : 1) << i;
            EXPECT_TRUE(!isKept || tiles.back().buffer().get() == buffers[i]) << i;
        }
    }
}

// Five of one size: four come back, each of them once.
TEST(ZetTileMemory, blocksOfOneSize)
{
    ZetTileMemory memory;
    std::vector<ZetVariant> values;
    std::vector<const void*> released;
    for (int i = 0; i < 5; ++i) {
        values.push_back(result(kBytes));
        released.push_back(blockOf(values.back()));
    }
    std::for_each(values.begin(), values.end(), [&](ZetVariant& value) { memory.release(value); });
    ZetBlockCount blocks;
    std::vector<ZetEqnTile> tiles;
    std::multiset<const void*> given;
    for (int i = 0; i < 4; ++i) {
        tiles.push_back(memory.makeTile(ZetDataType::Float, kBytes / 4));
        given.insert(tiles.back().elements<const void>());
    }
    EXPECT_EQ(blocks.take(), 0);
    EXPECT_EQ(given, std::multiset<const void*>(released.begin() + 1, released.end()));
    tiles.push_back(memory.makeTile(ZetDataType::Float, kBytes / 4));
    EXPECT_EQ(blocks.take(), 1);
}

TEST(ZetTileMemory, tilesWithoutBytesHaveNoBuffer)
{
    ZetTileMemory memory;
    ZetBuffer* const none = new ZetBuffer(1, s_callers, false);
    ZetVariant value(ZetEqnTile(none, ZetDataType::U8, 0));
    ASSERT_NE(none->reallocate(0, true), nullptr) << "a block of no bytes";
    memory.release(value);
    ZetBlockCount blocks;
    for (const ZetDataType::Type type : kTypes) {
        SCOPED_TRACE(type);
        const ZetEqnTile tile = memory.makeTile(type, 0);
        EXPECT_FALSE(tile.buffer().booleanTest());
        EXPECT_EQ(tile.dataType(), ZetDataType(type));
        EXPECT_EQ(tile.size(), 0u);
        EXPECT_EQ(tile.increment(), 1);
    }
    for (const unsigned long size : {0UL, 1UL, kBytes}) {
        SCOPED_TRACE(size);
        const ZetEqnTile tile = memory.makeTile(ZetDataType(), size);
        EXPECT_FALSE(tile.buffer().booleanTest());
        EXPECT_EQ(tile.dataType(), ZetDataType());
        EXPECT_EQ(tile.size(), size);
        EXPECT_EQ(tile.increment(), 1);
    }
    EXPECT_EQ(blocks.take(), 0);
}

// Products that come to the bytes of a block that is there, or to none, once they overflow.
TEST(ZetTileMemory, sizesThatNoMemoryCanHold)
{
    const struct
    {
        ZetDataType::Type type;
        unsigned long size;
    } rows[] = {
        {ZetDataType::Double, (1UL << 61) + kBytes / 8},
        {ZetDataType::ComplexDouble, (1UL << 60) + kBytes / 16},
        {ZetDataType::U16, (1UL << 63) + kBytes / 2},
        {ZetDataType::Double, 1UL << 61},
        {ZetDataType::U16, 1UL << 63},
        {ZetDataType::ComplexFloat, ~0UL},
    };
    ZetTileMemory memory;
    ZetVariant value = result(kBytes);
    const void* const block = blockOf(value);
    memory.release(value);
    const ZetNoMemory none;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.size << " of type " << row.type);
        const ZetTextMsg thrown = thrownBy([&] { memory.makeTile(row.type, row.size); });
        EXPECT_EQ(thrown.text(), L"Cannot allocate '18446744073709551615' bytes for buffer.");
        EXPECT_EQ(thrown.file(), L"ZetBuffer");
        const ZetCollectingHandler posted;
        expectEmpty(memory.makeTile(row.type, row.size));
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{thrown.text()});
    }
    EXPECT_EQ(memory.makeTile(ZetDataType::U8, kBytes).elements<const void>(), block) << "which needs no memory";
    EXPECT_EQ(thrownBy([&] { memory.makeTile(ZetDataType::U8, kBytes); }).text(),
              L"Cannot allocate '48' bytes for buffer.");
}

TEST(ZetTileMemory, doublesAreALineOfTheCache)
{
    ZetTileMemory memory;
    const double* longest = nullptr;
    std::size_t most = 0;
    for (const std::size_t count : {0u, 1u, 7u, 8u, 9u, 64u, 1032u, 5u, 1032u, 1033u, 5160u, 100000u, 5160u, 100001u}) {
        SCOPED_TRACE(count);
        double* const doubles = memory.doubles(count);
        ASSERT_NE(doubles, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(doubles) % 64, 0u);
        EXPECT_TRUE(!longest || count > most || doubles == longest) << "there are enough already";
        std::fill_n(doubles, count, static_cast<double>(count));
        EXPECT_EQ(std::count(doubles, doubles + count, static_cast<double>(count)), static_cast<long>(count));
        most = std::max(most, count);
        longest = doubles;
    }
}

TEST(ZetTileMemory, doublesAndTilesAreApart)
{
    ZetTileMemory memory;
    ZetVariant value = result(ZetDataType::Double, 600);
    memory.release(value);
    double* const doubles = memory.doubles(600);
    const ZetEqnTile tile = memory.makeTile(ZetDataType::Double, 600);
    std::fill_n(doubles, 600, 1.0);
    std::fill_n(tile.elements<double>(), 600, 2.0);
    EXPECT_EQ(std::count(doubles, doubles + 600, 1.0), 600);
}

/// The elements 0, 1, 2 ... of a tile for x.
constexpr unsigned long kCount = 700;

ZetEqnTile ramp(double first, unsigned long count = kCount)
{
    Values values;
    for (unsigned long i = 0; i < count; ++i) {
        values.push_back(first + static_cast<double>(i));
    }
    return ownTile(ZetDataType::Double, values);
}

/// Whether the elements are factor * (first + i) + offset.
bool isLine(const ZetEqnTile& tile, double factor, double first, double offset, unsigned long count = kCount)
{
    for (unsigned long i = 0; i < count; ++i) {
        if (elementAt(tile, i).real() != factor * (first + static_cast<double>(i)) + offset) {
            return false;
        }
    }
    return tile.size() == count;
}

class ZetTileMemoryOfAParser : public testing::Test
{
protected:
    void parse(const wchar_t* text) { ASSERT_TRUE(m_parser.parse(text)); }

    /// Evaluates over a new tile for x, which begins with \p first.
    const ZetVariant& evaluate(double first, unsigned long count = kCount)
    {
        const ZetVariant x(ramp(first, count));
        m_blocks.take();
        m_parser.setValue(L"x", x);
        return m_parser.evaluate();
    }

    ZetEqnParser m_parser;
    ZetBlockCount m_blocks;
};

TEST_F(ZetTileMemoryOfAParser, resultsStandOnOneBlockWhileNobodyHoldsThem)
{
    parse(L"x*2+1");
    const void* const block = blockOf(evaluate(0.0));
    EXPECT_EQ(m_blocks.take(), 1);
    for (double first = 1.0; first < 6.0; ++first) {
        const ZetVariant& again = evaluate(first);
        EXPECT_EQ(m_blocks.take(), 0);
        EXPECT_EQ(blockOf(again), block);
        EXPECT_TRUE(isLine(tileIn(again), 2.0, first, 1.0)) << first;
    }
}

TEST_F(ZetTileMemoryOfAParser, aResultThatSomebodyHoldsKeepsItsBlockAndBytes)
{
    for (int kind = 0; kind < 3; ++kind) {
        SCOPED_TRACE(kind);
        parse(L"x*2+1");
        Holder holder;
        const void* block = nullptr;
        {
            const ZetVariant& value = evaluate(3.0);
            block = blockOf(value);
            holder.value = kind == 0 ? value : ZetVariant();
            holder.tile = kind == 1 ? tileIn(value) : ZetEqnTile();
            holder.buffer = kind == 2 ? tileIn(value).buffer() : ZetBufferPtr();
        }
        const ZetVariant& next = evaluate(10.0);
        EXPECT_EQ(m_blocks.take(), 1);
        EXPECT_NE(blockOf(next), block);
        const void* const second = blockOf(next);
        EXPECT_EQ(blockOf(evaluate(20.0)), second) << "which nobody holds";
        EXPECT_EQ(m_blocks.take(), 0);
        const ZetEqnTile still = kind == 0   ? tileIn(holder.value)
                                 : kind == 1 ? holder.tile
                                             : ZetEqnTile(holder.buffer, ZetDataType::Double, kCount);
        EXPECT_EQ(still.elements<const void>(), block);
        EXPECT_TRUE(isLine(still, 2.0, 3.0, 1.0));
    }
}

TEST_F(ZetTileMemoryOfAParser, theTileOfAVariableIsNoResult)
{
    parse(L"x");
    const ZetVariant x(ramp(0.0));
    m_parser.setValue(L"x", x);
    EXPECT_EQ(blockOf(m_parser.evaluate()), blockOf(x));
    parse(L"x*2");
    evaluate(5.0);
    EXPECT_TRUE(isLine(tileIn(x), 1.0, 0.0, 0.0));
}

TEST_F(ZetTileMemoryOfAParser, resultsOfSeveralSizesEachHaveABlock)
{
    parse(L"x*2+1");
    std::vector<const void*> found;
    for (int round = 0; round < 3; ++round) {
        for (const unsigned long count : {10UL, 700UL, 1500UL, 20UL}) {
            const ZetVariant& value = evaluate(1.0, count);
            EXPECT_EQ(m_blocks.take(), round == 0 ? 1 : 0);
            EXPECT_TRUE(isLine(tileIn(value), 2.0, 1.0, 1.0, count));
            found.push_back(blockOf(value));
        }
    }
    EXPECT_EQ(std::set<const void*>(found.begin(), found.end()).size(), 4u);
}

TEST_F(ZetTileMemoryOfAParser, definitionsAndResultsShareTheirBlocks)
{
    parse(L"y+1; y=x*2");
    const auto blocks = [&](double first) {
        const ZetVariant& value = evaluate(first);
        EXPECT_TRUE(isLine(tileIn(value), 2.0, first, 1.0));
        EXPECT_TRUE(isLine(tileIn(m_parser.value(L"y")), 2.0, first, 0.0));
        return std::set<const void*>{blockOf(value), blockOf(m_parser.value(L"y"))};
    };
    const std::set<const void*> before = blocks(0.0);
    EXPECT_EQ(before.size(), 2u);
    EXPECT_EQ(m_blocks.take(), 2);
    for (double first = 1.0; first < 6.0; ++first) {
        EXPECT_EQ(blocks(first), before);
        EXPECT_EQ(m_blocks.take(), 0);
    }
}

TEST_F(ZetTileMemoryOfAParser, aDefinitionThatSomebodyHoldsKeepsItsBlockAndBytes)
{
    parse(L"y+1; y=x*2");
    evaluate(3.0);
    const ZetVariant y = m_parser.value(L"y");
    const void* const block = blockOf(y);
    for (double first = 10.0; first < 13.0; ++first) {
        const ZetVariant& value = evaluate(first);
        EXPECT_EQ(m_blocks.take(), first == 10.0 ? 1 : 0);
        EXPECT_NE(blockOf(value), block);
        EXPECT_NE(blockOf(m_parser.value(L"y")), block);
        EXPECT_TRUE(isLine(tileIn(m_parser.value(L"y")), 2.0, first, 0.0));
        EXPECT_TRUE(isLine(tileIn(value), 2.0, first, 1.0));
    }
    EXPECT_EQ(blockOf(y), block);
    EXPECT_TRUE(isLine(tileIn(y), 2.0, 3.0, 0.0));
}

// The result is the definition's value: two blocks take turns, because the old one is a value of the
// definition until the new one is there.
TEST_F(ZetTileMemoryOfAParser, aDefinitionThatIsTheResult)
{
    parse(L"y; y=x*2");
    std::vector<const void*> found;
    for (int round = 0; round < 6; ++round) {
        const ZetVariant& value = evaluate(round);
        EXPECT_EQ(m_blocks.take(), round < 2 ? 1 : 0);
        EXPECT_EQ(blockOf(value), blockOf(m_parser.value(L"y")));
        EXPECT_TRUE(isLine(tileIn(value), 2.0, round, 0.0));
        found.push_back(blockOf(value));
        EXPECT_TRUE(round < 2 || found.back() == found[static_cast<std::size_t>(round) - 2]);
    }
}

TEST_F(ZetTileMemoryOfAParser, reductionsAndNumbersNeedNoBlocks)
{
    parse(L"sum(x*2)/700");
    for (int round = 0; round < 3; ++round) {
        // the mean of 2 * (round + i), i from 0 to 699
        EXPECT_EQ(evaluate(round).value<double>(), 2.0 * round + 699.0);
        EXPECT_EQ(m_blocks.take(), 0);
    }
}

}  // namespace
}  // namespace test
}  // namespace zet
