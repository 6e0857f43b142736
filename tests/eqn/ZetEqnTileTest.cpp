#include <zet/ZetEqnTile>

#include <algorithm>
#include <limits>
#include <sstream>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include <zet/ZetVariant>

#include "eqn/ZetTileAccess"
#include "image/ZetBlockMemory"
#include "support/ZetCollectingHandler"
#include "support/ZetTilePixels"

namespace zet {
namespace {

using internal::ZetTileLoan;
using test::elementAt;
using test::expectEmpty;
using test::expectTile;
using test::kInf;
using test::kNan;
using test::ownTile;
using test::Values;
using test::ZetTilePixels;

Values valuesIn(const ZetEqnTile& tile)
{
    Values values;
    for (unsigned long i = 0; i < tile.size(); ++i) {
        values.push_back(elementAt(tile, i));
    }
    return values;
}

TEST(ZetEqnTile, defaultTile)
{
    expectEmpty(ZetEqnTile());
    EXPECT_EQ(ZetEqnTile().className(), L"ZetEqnTile");
    EXPECT_EQ(ZetEqnTile().elements<char>(), nullptr);
}

TEST(ZetEqnTile, aroundExistingPixels)
{
    short pixels[] = {1, 2, 3, 4, 5};
    const ZetBufferPtr buffer(new ZetBuffer(sizeof pixels, pixels, false));
    const ZetEqnTile tile(buffer, ZetDataType(ZetDataType::I16, 12), 2, 3);
    EXPECT_EQ(tile.increment(), 3);
    EXPECT_EQ(tile.size(), 2u);
    EXPECT_EQ(tile.dataType(), ZetDataType(ZetDataType::I16, 12));
    EXPECT_EQ(tile.buffer(), buffer);
    EXPECT_EQ(tile.elements<short>(), pixels);
    EXPECT_EQ(tile.sum(), 5.0);
    const ZetEqnTile none(ZetBufferPtr(), ZetDataType::I16, 2);
    EXPECT_EQ(none.size(), 0u);
    EXPECT_EQ(none.dataType(), ZetDataType(ZetDataType::I16));
}

TEST(ZetEqnTile, anIncrementMayRunBackwards)
{
    for (const unsigned long size : {1UL, 2UL, 511UL, 512UL, 513UL, 1025UL}) {
        const Values values = test::valuesOf(ZetDataType::Float, size);
        const Values turned(values.rbegin(), values.rend());
        const ZetEqnTile forth = ownTile(ZetDataType::Float, values);
        const ZetBufferPtr last(new ZetBuffer(sizeof(float), forth.elements<float>() + (size - 1), false));
        const ZetEqnTile back(last, ZetDataType::Float, size, -1);
        const ZetEqnTile expected = ownTile(ZetDataType::Float, turned);
        SCOPED_TRACE(size);
        expectTile(back.abs(), ZetDataType::Double, valuesIn(expected.abs()));
        expectTile(back + forth, ZetDataType::Double, valuesIn(expected + forth));
        expectTile(back.max(forth), ZetDataType::Double, valuesIn(expected.max(forth)));
        expectTile(ZetEqnTile::cmplx(back, 1.0), ZetDataType::ComplexDouble,
                   valuesIn(ZetEqnTile::cmplx(expected, 1.0)));
        expectTile(back.roundclip(ZetDataType::I16, -5.0, 5.0), ZetDataType::I16,
                   valuesIn(expected.roundclip(ZetDataType::I16, -5.0, 5.0)));
        EXPECT_TRUE(test::isSame(back.sum(), expected.sum()));
        EXPECT_TRUE(test::isSame(back.max(), expected.max()));
        EXPECT_TRUE(test::isSame(back.median(), expected.median()));
    }
}

TEST(ZetEqnTile, oneElementHasNoNeighbourWhateverTheIncrement)
{
    const ZetDataType::Type types[] = {ZetDataType::U8, ZetDataType::Double, ZetDataType::ComplexFloat,
                                       ZetDataType::ComplexDouble};
    for (const ZetDataType::Type type : types) {
        for (const long increment : {std::numeric_limits<long>::max(), std::numeric_limits<long>::min()}) {
            const ZetEqnTile own = ownTile(type, {5.0});
            const ZetEqnTile tile(own.buffer(), type, 1, increment);
            const bool isReal = !own.dataType().isComplex();
            SCOPED_TRACE(testing::Message() << "type " << type << " increment " << increment);
            expectTile(tile + tile, isReal ? ZetDataType::Double : ZetDataType::ComplexDouble, {10.0});
            expectTile(tile.max(tile), ZetDataType::Double, {5.0});
            expectTile(ZetEqnTile::cmplx(tile, tile), ZetDataType::ComplexDouble, {{5.0, 5.0}});
            EXPECT_EQ(tile.sum(), isReal ? 5.0 : 0.0);
            EXPECT_EQ(tile.median(), isReal ? 5.0 : 0.0);
            if (isReal) {
                expectTile(tile.roundclip(ZetDataType::U8, 0.0, 4.0), ZetDataType::U8, {4.0});
            }
            EXPECT_FALSE(tile == ownTile(type, {6.0}));
        }
    }
}

TEST(ZetEqnTile, aBufferWithoutABlockHasNoElements)
{
    const ZetEqnTile tile(new ZetBuffer(80, false), ZetDataType::Double, 10);
    expectTile(tile + tile, ZetDataType::Double, {});
    expectTile(tile * std::complex<double>(1.0, 1.0), ZetDataType::ComplexDouble, {});
    expectTile(tile.sin(), ZetDataType::Double, {});
    EXPECT_EQ(tile.sum(), 0.0);
    EXPECT_EQ(tile.median(), 0.0);
    EXPECT_EQ(tile.clone().size(), 10u);
    EXPECT_EQ(tile.roundclip(ZetDataType::U8, 0.0, 1.0).size(), 10u);
    EXPECT_TRUE(tile == ZetEqnTile(new ZetBuffer(80, false), ZetDataType::U8, 1));
    EXPECT_FALSE(tile == ZetEqnTile(new ZetBuffer(81, false), ZetDataType::Double, 10));
}

TEST(ZetEqnTile, initialize)
{
    ZetEqnTile tile(ZetTilePixels(ZetDataType::U8, {1.0, 2.0}, 2).tile);
    tile.initialize(ZetDataType(ZetDataType::U16, 12), 5);
    EXPECT_EQ(tile.increment(), 1);
    EXPECT_EQ(tile.size(), 5u);
    EXPECT_EQ(tile.dataType(), ZetDataType(ZetDataType::U16, 12));
    EXPECT_EQ(tile.buffer()->size(), 10u);
    EXPECT_NE(tile.elements<char>(), nullptr);

    // size 0 keeps the type, the invalid type keeps the size; neither has a buffer
    tile.initialize(ZetDataType::Float, 0);
    EXPECT_EQ(tile.size(), 0u);
    EXPECT_EQ(tile.dataType(), ZetDataType(ZetDataType::Float));
    EXPECT_FALSE(tile.buffer().booleanTest());
    tile.initialize(ZetDataType(), 7);
    EXPECT_EQ(tile.size(), 7u);
    EXPECT_EQ(tile.dataType(), ZetDataType());
    EXPECT_FALSE(tile.buffer().booleanTest());

    // its own type is a legal argument
    tile.initialize(ZetDataType::I32, 2);
    tile.initialize(tile.dataType(), 3);
    EXPECT_EQ(tile.dataType(), ZetDataType(ZetDataType::I32));
    EXPECT_EQ(tile.size(), 3u);
}

TEST(ZetEqnTile, initializeLetsSharersKeepTheOldBuffer)
{
    ZetEqnTile tile = ownTile(ZetDataType::I32, {1.0, 2.0});
    const ZetEqnTile sharer(tile);
    tile.initialize(ZetDataType::I32, 9);
    expectTile(sharer, ZetDataType::I32, {1.0, 2.0});
}

void* noBlock(std::size_t)
{
    return nullptr;
}

TEST(ZetEqnTile, initializeWithoutMemory)
{
    void* (*const before)(std::size_t) = std::exchange(internal::acquireBlock, &noBlock);
    struct Row
    {
        ZetDataType::Type type;
        unsigned long size;
        const wchar_t* text;
    };
    const Row rows[] = {
        {ZetDataType::Double, 3, L"Cannot allocate '24' bytes for buffer."},
        // a product that does not fit counts as more than any memory, not as what is left of it
        {ZetDataType::ComplexDouble, (1UL << 60) + 1, L"Cannot allocate '18446744073709551615' bytes for buffer."},
        {ZetDataType::U16, 1UL << 63, L"Cannot allocate '18446744073709551615' bytes for buffer."},
        {ZetDataType::U8, std::numeric_limits<unsigned long>::max(),
         L"Cannot allocate '18446744073709551615' bytes for buffer."},
    };
    for (const Row& row : rows) {
        ZetEqnTile tile;
        EXPECT_EQ(test::thrownBy([&] { tile.initialize(row.type, row.size); }).text(), row.text);
        expectEmpty(tile);
        const test::ZetCollectingHandler posted;
        tile.initialize(row.type, row.size);
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{row.text});
        expectEmpty(tile);
    }
    internal::acquireBlock = before;
}

TEST(ZetEqnTile, operationsWithoutMemoryGiveEmptyTiles)
{
    const ZetEqnTile tile = ownTile(ZetDataType::U8, {1.0, 2.0});
    const ZetEqnTile complex = ownTile(ZetDataType::ComplexDouble, {1.0, 2.0});
    ZetEqnTile lender = ownTile(ZetDataType::Double, {1.0, 2.0});
    void* (*const before)(std::size_t) = std::exchange(internal::acquireBlock, &noBlock);
    {
        const test::ZetCollectingHandler posted;
        expectEmpty(tile + tile);
        expectEmpty(tile * 2.0);
        expectEmpty(tile / complex);
        expectEmpty(-complex);
        expectEmpty(tile.sin());
        expectEmpty(complex.norm());
        expectEmpty(tile.max(tile));
        expectEmpty(ZetEqnTile::cmplx(tile, tile));
        expectEmpty(tile.roundclip(ZetDataType::I16, 0, 1));
        expectEmpty(tile.clone());
        EXPECT_EQ(posted.messages().size(), 10u);
    }
    {
        // a lent block takes no memory, and is not lost where it does not serve
        const test::ZetCollectingHandler posted;
        expectEmpty(std::move(lender) + std::complex<double>(0.0, 1.0));
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{L"Cannot allocate '32' bytes for buffer."});
        expectTile(std::move(lender) + 1.0, ZetDataType::Double, {2.0, 3.0});
        EXPECT_EQ(posted.messages().size(), 1u);
    }
    EXPECT_EQ(test::thrownBy([&] { tile + tile; }).text(), L"Cannot allocate '16' bytes for buffer.");
    internal::acquireBlock = before;
}

TEST(ZetEqnTile, copiesShareAndClonesDoNot)
{
    ZetEqnTile tile = ownTile(ZetDataType::I32, {1.0, 2.0});
    const ZetEqnTile copy(tile);
    ZetEqnTile assigned;
    assigned = tile;
    const ZetEqnTile clone = tile.clone();
    tile.elements<int>()[1] = 5;
    expectTile(copy, ZetDataType::I32, {1.0, 5.0});
    expectTile(assigned, ZetDataType::I32, {1.0, 5.0});
    expectTile(clone, ZetDataType::I32, {1.0, 2.0});
}

TEST(ZetEqnTile, cloneCopiesTheWholeBlock)
{
    const ZetTilePixels pixels(ZetDataType::U8, {1.0, 2.0, 3.0}, 2);
    const ZetEqnTile clone = pixels.tile.clone();
    EXPECT_EQ(clone.increment(), 2);
    EXPECT_EQ(clone.size(), 3u);
    EXPECT_TRUE(*clone.buffer() == *pixels.tile.buffer());
    EXPECT_TRUE(clone.buffer()->ownsMemory());
    EXPECT_FALSE(clone.buffer()->isExternal());

    ZetEqnTile typed;
    typed.initialize(ZetDataType::U8, 0);
    expectEmpty(typed.clone());
    ZetEqnTile sized;
    sized.initialize(ZetDataType(), 4);
    EXPECT_EQ(sized.clone().size(), 4u);
    EXPECT_FALSE(sized.clone().buffer().booleanTest());
}

TEST(ZetEqnTile, assignmentLooksAtBuffersOnly)
{
    ZetEqnTile typed;
    typed.initialize(ZetDataType::U8, 0);
    ZetEqnTile sized;
    sized.initialize(ZetDataType(), 4);
    ZetEqnTile target;
    target = typed;
    expectEmpty(target);
    target = sized;
    expectEmpty(target);
    std::swap(typed, sized);
    EXPECT_EQ(typed.dataType(), ZetDataType(ZetDataType::U8));
    EXPECT_EQ(sized.size(), 4u);
    target = std::move(typed);
    expectEmpty(target);

    // two views of one buffer
    const ZetEqnTile bytes = ownTile(ZetDataType::U8, {1.0, 2.0, 3.0, 4.0});
    ZetEqnTile words(bytes.buffer(), ZetDataType::I16, 2);
    words = bytes;
    EXPECT_EQ(words.dataType(), ZetDataType(ZetDataType::I16));
    EXPECT_EQ(words.size(), 2u);

    // a buffer against none is an assignment like any other
    words = ZetEqnTile();
    expectEmpty(words);
}

TEST(ZetEqnTile, equality)
{
    const ZetEqnTile none;
    ZetEqnTile typed;
    typed.initialize(ZetDataType::U8, 0);
    EXPECT_TRUE(none == none);
    EXPECT_FALSE(none == ZetEqnTile());
    EXPECT_FALSE(typed == none);
    const ZetEqnTile ints = ownTile(ZetDataType::I32, {1.0, 2.0});
    EXPECT_FALSE(ints == none);
    EXPECT_FALSE(none == ints);

    // equal bytes win over size and type
    EXPECT_TRUE(ints == ints.clone());
    EXPECT_TRUE(ints == ZetEqnTile(ints.buffer(), ZetDataType::U8, 3));
    EXPECT_TRUE(ints == ZetEqnTile(ints.clone().buffer(), ZetDataType::ComplexFloat, 1));

    // integers differ as soon as bytes do
    EXPECT_FALSE(ints == ownTile(ZetDataType::I32, {1.0, 3.0}));
    const ZetTilePixels gaps(ZetDataType::I32, {1.0, 2.0}, 2);
    EXPECT_FALSE(ints == gaps.tile);

    // sizes, types and depths
    const Values values = {1.0, 2.0};
    const Values longer = {1.0, 2.0, 3.0};
    EXPECT_FALSE(ownTile(ZetDataType::Double, values) == ownTile(ZetDataType::Double, longer));
    EXPECT_FALSE(ownTile(ZetDataType::Double, values) == ownTile(ZetDataType::Float, values));
    EXPECT_FALSE(ownTile(ZetDataType::I32, values) == ownTile(ZetDataType::U8, values));
    EXPECT_TRUE(ownTile(ZetDataType::Double, values) != ownTile(ZetDataType::Float, values));
}

double placesAbove(double x, int places)
{
    for (int i = 0; i < places; ++i) {
        x = std::nextafter(x, std::numeric_limits<double>::infinity());
    }
    return x;
}

TEST(ZetEqnTile, equalityWithinFourPlaces)
{
    struct Row
    {
        double a;
        double b;
        bool equal;
    };
    const Row rows[] = {
        {1.0, placesAbove(1.0, 1), true},
        {1.0, placesAbove(1.0, 4), true},
        {1.0, placesAbove(1.0, 5), false},
        {-1.0, placesAbove(-1.0, 4), true},
        {-1.0, placesAbove(-1.0, 5), false},
        // across zero, both of which stand in one place
        {0.0, -0.0, true},
        {-1e-323, 1e-323, true},
        {-1.5e-323, 1e-323, false},
        {1.0, -1.0, false},
        {1.7976931348623157e308, kInf, true},
        {-kInf, kInf, false},
        {kInf, placesAbove(1.0, 1), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.a << " " << row.b);
        for (const ZetDataType::Type type : {ZetDataType::Double, ZetDataType::ComplexDouble}) {
            const ZetEqnTile a = ownTile(type, {7.0, row.a});
            const ZetEqnTile b = ownTile(type, {7.0, row.b});
            EXPECT_EQ(a == b, row.equal);
            EXPECT_EQ(b == a, row.equal);
        }
        EXPECT_EQ(
            ownTile(ZetDataType::ComplexDouble, {{7.0, row.a}}) == ownTile(ZetDataType::ComplexDouble, {{7.0, row.b}}),
            row.equal);
    }
}

TEST(ZetEqnTile, equalityOfFloatsIsThatOfDoubles)
{
    const double next = static_cast<double>(std::nextafter(1.0F, 2.0F));
    EXPECT_FALSE(ownTile(ZetDataType::Float, {1.0}) == ownTile(ZetDataType::Float, {next}));
    EXPECT_TRUE(ownTile(ZetDataType::Float, {0.0}) == ownTile(ZetDataType::Float, {-0.0}));
    EXPECT_TRUE(ownTile(ZetDataType::ComplexFloat, {{0.0, 1.0}}) == ownTile(ZetDataType::ComplexFloat, {{-0.0, 1.0}}));
}

TEST(ZetEqnTile, equalityReadsIncrements)
{
    for (const ZetDataType::Type type : {ZetDataType::Float, ZetDataType::Double, ZetDataType::ComplexFloat}) {
        const Values values = test::valuesOf(ZetDataType::I8, 1500);
        const ZetTilePixels a(type, values, 2);
        const ZetTilePixels b(type, values, 3, 1);
        EXPECT_TRUE(a.tile == b.tile);
        Values other = values;
        other[1499] += 1.0;
        EXPECT_FALSE(a.tile == ZetTilePixels(type, other, 3).tile);
    }
}

TEST(ZetEqnTile, nanEqualsNothingButItsBytes)
{
    const ZetEqnTile nan = ownTile(ZetDataType::Double, {kNan, 1.0});
    EXPECT_TRUE(nan == nan.clone());
    EXPECT_FALSE(nan == ownTile(ZetDataType::Double, {kNan, 2.0}));
    const ZetTilePixels gaps(ZetDataType::Double, {kNan, 1.0}, 2);
    EXPECT_FALSE(nan == gaps.tile);
}

TEST(ZetEqnTile, hasNoTextForm)
{
    std::wostringstream out;
    out << ownTile(ZetDataType::U8, {1.0});
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");
    std::wistringstream in(L"text");
    ZetEqnTile tile;
    in >> tile;
    EXPECT_TRUE(in.fail());
    expectEmpty(tile);
}

TEST(ZetEqnTile, travelsInVariants)
{
    const ZetEqnTile tile = ownTile(ZetDataType::U8, {1.0, 2.0});
    const ZetVariant variant(tile);
    EXPECT_EQ(variant.typeName(), L"ZetEqnTile");
    EXPECT_EQ(variant.value<ZetEqnTile>().buffer(), tile.buffer());
    EXPECT_TRUE(variant == ZetVariant(tile.clone()));
    double number = 7.0;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 7.0);
}

// Blocks that are lent.

TEST(ZetEqnTile, temporariesLendTheirBlock)
{
    const ZetEqnTile a = ownTile(ZetDataType::U8, {1.0, 2.0});
    const ZetEqnTile b = ownTile(ZetDataType::Double, {10.0, 20.0});
    ZetEqnTile sum = a + b;
    const void* const block = sum.elements<void>();
    const ZetEqnTile result = a - (std::move(sum) * 2.0 + b) / a;
    EXPECT_EQ(result.elements<void>(), block);
    expectTile(result, ZetDataType::Double, {-31.0, -30.0});
    expectTile(b, ZetDataType::Double, {10.0, 20.0});
    expectTile((a + b) * (b + a) - (b / a) + std::complex<double>(0.0, 1.0), ZetDataType::ComplexDouble,
               {{111.0, 1.0}, {474.0, 1.0}});

    // a note on the buffer is not lent with it
    ZetEqnTile noted = a + b;
    noted.buffer()->setDataType(ZetDataType::Double);
    EXPECT_EQ((std::move(noted) + 1.0).buffer()->dataType(), ZetDataType());
}

TEST(ZetEqnTile, copiesAreReadFromSeveralThreads)
{
    const Values values = test::valuesOf(ZetDataType::Double, 2000);
    const ZetEqnTile tile = ownTile(ZetDataType::Double, values);
    const Values expected = valuesIn((tile * 2.0 - tile).clip(-5.0, 5.0));
    const auto read = [&] {
        for (int round = 0; round < 50; ++round) {
            ZetEqnTile copy(tile);
            expectTile((std::move(copy) * 2.0 - tile).clip(-5.0, 5.0), ZetDataType::Double, expected);
        }
    };
    std::thread first(read);
    std::thread second(read);
    first.join();
    second.join();
    expectTile(tile, ZetDataType::Double, values);
}

TEST(ZetEqnTile, aLoanServesEveryOperation)
{
    ZetEqnTile tile = ownTile(ZetDataType::Double, {4.0, 9.0});
    const void* const block = tile.elements<void>();
    ZetEqnTile root = ZetTileLoan(tile)->sqrt();
    EXPECT_EQ(root.elements<void>(), block);
    expectEmpty(tile);
    expectTile(root, ZetDataType::Double, {2.0, 3.0});
    ZetEqnTile smaller = ZetTileLoan(root)->min(root);
    EXPECT_EQ(smaller.elements<void>(), block);
    ZetEqnTile clipped = ZetTileLoan(smaller)->roundclip(ZetDataType::Double, 0.0, 2.5);
    EXPECT_EQ(clipped.elements<void>(), block);
    expectTile(clipped, ZetDataType::Double, {2.0, 2.5});
    const ZetEqnTile negated = -*ZetTileLoan(clipped);
    EXPECT_EQ(negated.elements<void>(), block);
    expectTile(negated, ZetDataType::Double, {-2.0, -2.5});

    ZetEqnTile complex = ownTile(ZetDataType::ComplexDouble, {{1.0, 2.0}});
    const void* const pairs = complex.elements<void>();
    ZetEqnTile conjugate = ZetTileLoan(complex)->conj();
    EXPECT_EQ(conjugate.elements<void>(), pairs);
    expectTile(ZetEqnTile::cmplx(*ZetTileLoan(conjugate), conjugate), ZetDataType::ComplexDouble, {{1.0, 1.0}});
    expectEmpty(conjugate);
}

TEST(ZetEqnTile, aTileThatIsNotUsedUpStaysAsItWas)
{
    ZetEqnTile tile = ownTile(ZetDataType::Double, {4.0, 9.0});
    EXPECT_EQ(ZetTileLoan(tile)->sum(), 13.0);
    expectTile(tile, ZetDataType::Double, {4.0, 9.0});
    expectTile(tile + 1.0, ZetDataType::Double, {5.0, 10.0});
    // an operation of another type takes no block, and ends the loan
    expectTile(std::move(tile) + std::complex<double>(0.0, 1.0), ZetDataType::ComplexDouble, {{4.0, 1.0}, {9.0, 1.0}});
    expectTile(tile - 1.0, ZetDataType::Double, {3.0, 8.0});
    expectEmpty(std::move(tile) + ownTile(ZetDataType::U64, {1.0, 1.0}));
    expectTile(1.0 - tile, ZetDataType::Double, {-3.0, -8.0});
    expectTile(tile, ZetDataType::Double, {4.0, 9.0});
    // a copy is not lent
    const ZetEqnTile copy(tile);
    tile = ZetEqnTile();
    const ZetEqnTile result = copy + 1.0;
    expectTile(copy, ZetDataType::Double, {4.0, 9.0});
    expectTile(result, ZetDataType::Double, {5.0, 10.0});
}

TEST(ZetEqnTile, aResultMayBeAssignedToTheLender)
{
    ZetEqnTile tile = ownTile(ZetDataType::Double, {4.0, 9.0});
    tile = *ZetTileLoan(tile) + tile;
    expectTile(tile, ZetDataType::Double, {8.0, 18.0});
    tile = std::move(tile) * 2.0;
    expectTile(tile, ZetDataType::Double, {16.0, 36.0});
}

TEST(ZetEqnTile, whatMayNotBeLentIsNot)
{
    const ZetTilePixels callers(ZetDataType::Double, {1.0, 2.0});
    ZetEqnTile external(callers.tile.buffer(), ZetDataType::Double, 2);
    ZetEqnTile shared = ownTile(ZetDataType::Double, {1.0, 2.0});
    const ZetEqnTile sharer(shared);
    ZetEqnTile floats = ownTile(ZetDataType::Float, {1.0, 2.0});
    ZetEqnTile strided(ZetTilePixels(ZetDataType::Double, {1.0, 2.0}, 2).tile.clone());
    ZetEqnTile longer = ownTile(ZetDataType::Double, {1.0, 2.0, 3.0});
    const ZetEqnTile three = ownTile(ZetDataType::Double, {1.0, 2.0, 3.0});
    ZetEqnTile head(three.clone().buffer(), ZetDataType::Double, 2);
    ZetEqnTile adopted(new ZetBuffer(16, std::malloc(16), true), ZetDataType::Double, 2);
    std::copy_n(sharer.elements<double>(), 2, adopted.elements<double>());
    const ZetEqnTile two = ownTile(ZetDataType::U8, {5.0, 5.0});
    for (ZetEqnTile* tile : {&external, &shared, &floats, &strided, &longer, &head, &adopted}) {
        const ZetEqnTile before = tile->clone();
        const ZetEqnTile result = *ZetTileLoan(*tile) + two;
        EXPECT_NE(result.elements<void>(), tile->elements<void>());
        EXPECT_TRUE(*before.buffer() == *tile->buffer());
        expectTile(result, ZetDataType::Double, {6.0, 7.0});
    }
    // all of a block, but read standing still
    ZetEqnTile standing(three.clone().buffer(), ZetDataType::Double, 3, 0);
    expectTile(*ZetTileLoan(standing) + 1.0, ZetDataType::Double, {2.0, 2.0, 2.0});
    EXPECT_EQ(standing.size(), 3u);
    // elements of another type, though as wide
    ZetEqnTile words = ownTile(ZetDataType::I32, {1.0, 2.0});
    expectTile(ZetTileLoan(words)->roundclip(ZetDataType::Float, 0.0, 9.0), ZetDataType::Float, {1.0, 2.0});
    expectTile(words, ZetDataType::I32, {1.0, 2.0});
    // a tile that was not lent is never written over
    const ZetEqnTile plain = ownTile(ZetDataType::Double, {1.0, 2.0});
    expectTile(plain + two, ZetDataType::Double, {6.0, 7.0});
    expectTile(plain, ZetDataType::Double, {1.0, 2.0});
}

}  // namespace
}  // namespace zet
