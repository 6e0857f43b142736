#include "eqn/ZetPendingTile"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetBlockCount"
#include "support/ZetCollectingHandler"
#include "support/ZetEachKernelBuild"
#include "support/ZetNoMemory"
#include "support/ZetPixelSource"
#include "support/ZetSameValue"

namespace zet {
namespace test {
namespace {

using internal::kAdd;
using internal::kDivide;
using internal::kMultiply;
using internal::kSubtract;
using internal::ZetPendingTile;
using Complex = std::complex<double>;

/// While it lives, blocks are cleared: what a conversion does not write is the same both ways.
class ClearedBlocks
{
public:
    ClearedBlocks() : m_before(internal::acquireBlock)
    {
        internal::acquireBlock = [](std::size_t size) { return std::calloc(size, 1); };
    }
    ClearedBlocks(const ClearedBlocks&) = delete;
    ClearedBlocks& operator=(const ClearedBlocks&) = delete;
    ~ClearedBlocks() { internal::acquireBlock = m_before; }

private:
    void* (*m_before)(std::size_t);
};

class ZetPendingTilePlans : public ZetEachKernelBuild
{
private:
    ClearedBlocks m_clearedBlocks;
};
ZET_FOR_EACH_KERNEL_BUILD(ZetPendingTilePlans);

const ZetDataType::Type kReal[] = {ZetDataType::I8,  ZetDataType::U8,  ZetDataType::I16,   ZetDataType::U16,
                                   ZetDataType::I32, ZetDataType::U32, ZetDataType::Float, ZetDataType::Double};

// About the length of a strip, and of two.
const unsigned long kSizes[] = {0, 1, 511, 512, 513, 1023, 1024, 1025};

/// An operation on a tile, as a step of a plan and by the tile itself.
struct Function
{
    const char* name;
    ZetPendingTile (*pending)(ZetPendingTile&& t);
    ZetEqnTile (*plain)(const ZetEqnTile& t);
};

#define SAME(Call)                                                                                               \
    Function                                                                                                     \
    {                                                                                                            \
#Call, [](ZetPendingTile && t) { return std::move(t).Call; }, [](const ZetEqnTile& t) { return t.Call; } \
    }
#define COMBINED(Left, Loop, Right, Plain)                                                                          \
    Function                                                                                                        \
    {                                                                                                               \
#Plain, [](ZetPendingTile &&                                                                                \
                   t) { return ZetPendingTile::combine(internal::Loop, Left, Right); }, [](const ZetEqnTile&        \
                                                                                               t) { return Plain; } \
    }
#define TAKEN std::move(t)

const Complex kZ(1.5, -2.0);

const Function kIdentity = {"t", [](ZetPendingTile&& t) { return std::move(t); },
                            [](const ZetEqnTile& t) { return t; }};

const Function kFunctions[] = {
    SAME(sin()),
    SAME(cos()),
    SAME(tan()),
    SAME(asin()),
    SAME(acos()),
    SAME(atan()),
    SAME(sinh()),
    SAME(cosh()),
    SAME(tanh()),
    SAME(exp()),
    SAME(log()),
    SAME(log10()),
    SAME(sqrt()),
    SAME(sinc()),
    SAME(abs()),
    SAME(round()),
    SAME(trunc()),
    SAME(floor()),
    SAME(ceil()),
    SAME(y0()),
    SAME(y1()),
    SAME(j0()),
    SAME(j1()),
    SAME(yn(2)),
    SAME(jn(3)),
    SAME(logb(2.5)),
    SAME(min(2.0)),
    SAME(max(-1.0)),
    SAME(clip(-1.0, 2.0)),
    SAME(clipmin(0.5)),
    SAME(clipmax(0.5)),
    SAME(factorial()),
    SAME(real()),
    SAME(imag()),
    SAME(arg()),
    SAME(norm()),
    SAME(pow(2.0)),
    SAME(pow(-3.0)),
    SAME(pow(0.4)),
    SAME(conj()),
    SAME(operator-()),
    SAME(roundclip(ZetDataType::I8, -5.0, 100.0)),
    SAME(roundclip(ZetDataType::U8, 0.0, 255.0)),
    SAME(roundclip(ZetDataType::I16, -300.0, 70.0)),
    SAME(roundclip(ZetDataType::U16, 0.0, 65535.0)),
    SAME(roundclip(ZetDataType::I32, -1e9, 1e9)),
    SAME(roundclip(ZetDataType::U32, 0.0, 4e9)),
    SAME(roundclip(ZetDataType::Float, -1.0, 1.0)),
    SAME(roundclip(ZetDataType::Double, -10.0, 10.0)),
    COMBINED(TAKEN, kAdd, 0.3, t + 0.3),
    COMBINED(TAKEN, kSubtract, 0.3, t - 0.3),
    COMBINED(TAKEN, kMultiply, 0.3, t * 0.3),
    COMBINED(TAKEN, kDivide, 0.3, t / 0.3),
    COMBINED(7.0, kAdd, TAKEN, t + 7.0),
    COMBINED(7.0, kSubtract, TAKEN, 7.0 - t),
    COMBINED(7.0, kMultiply, TAKEN, t * 7.0),
    COMBINED(7.0, kDivide, TAKEN, 7.0 / t),
    COMBINED(TAKEN, kAdd, kZ, t + kZ),
    COMBINED(TAKEN, kSubtract, kZ, t - kZ),
    COMBINED(TAKEN, kMultiply, kZ, t* kZ),
    COMBINED(TAKEN, kDivide, kZ, t / kZ),
    COMBINED(kZ, kAdd, TAKEN, t + kZ),
    COMBINED(kZ, kSubtract, TAKEN, kZ - t),
    COMBINED(kZ, kMultiply, TAKEN, t* kZ),
    COMBINED(kZ, kDivide, TAKEN, kZ / t),
};

// What stands before and behind: nothing, arithmetic, elements of other types and widths.
const Function kAround[] = {
    kIdentity,
    {"-(t*3-1)",
     [](ZetPendingTile&& t) {
         return -ZetPendingTile::combine(kSubtract, ZetPendingTile::combine(kMultiply, std::move(t), 3.0), 1.0);
     },
     [](const ZetEqnTile& t) { return -(t * 3.0 - 1.0); }},
    COMBINED(TAKEN, kMultiply, kZ, t* kZ),
    SAME(roundclip(ZetDataType::I16, -300.0, 300.0)),
};

#undef TAKEN
#undef COMBINED
#undef SAME

/// Tiles of some size and of many shapes.
struct Shapes
{
    explicit Shapes(unsigned long size)
    {
        using Type = ZetDataType;
        for (const ZetDataType::Type type : {Type::U8, Type::I32, Type::Float, Type::Double, Type::ComplexDouble}) {
            sources.emplace_back(type, valuesOf(type, size, size));
        }
        sources.emplace_back(Type::I16, valuesOf(Type::I16, size), 2);
        sources.emplace_back(Type::Double, valuesOf(Type::Double, size), 1, 4);
        sources.emplace_back(Type::Double, valuesOf(Type::Double, size), -1);
        sources.emplace_back(Type::ComplexDouble, valuesOf(Type::ComplexDouble, size), 1, 1);
        sources.emplace_back(Type::ComplexDouble, valuesOf(Type::ComplexDouble, size), 2);
        sources.emplace_back(Type::ComplexFloat, valuesOf(Type::ComplexFloat, size), 3, 2);
        sources.emplace_back(Type::I64, valuesOf(Type::I64, size));
    }

    std::deque<ZetPixelSource> sources;
};

void expectSame(const ZetEqnTile& found, const ZetEqnTile& expected)
{
    EXPECT_EQ(differenceOf(found, expected, true), L"");
}

TEST_P(ZetPendingTilePlans, functionsAmongOthers)
{
    for (const unsigned long size : kSizes) {
        const Shapes shapes(size);
        for (const ZetPixelSource& source : shapes.sources) {
            for (const Function& before : kAround) {
                const ZetEqnTile first = before.plain(source.tile);
                for (const Function& function : kFunctions) {
                    const ZetEqnTile second = function.plain(first);
                    for (const Function& after : kAround) {
                        if (&before != &kAround[0] && &after != &kAround[1]) {
                            continue;  // arithmetic stands behind the functions that something stands before
                        }
                        SCOPED_TRACE(testing::Message() << size << " of type " << source.tile.dataType().type() << ": "
                                                        << before.name << ", " << function.name << ", " << after.name);
                        ZetPendingTile plan =
                            after.pending(function.pending(before.pending(ZetPendingTile(source.tile))));
                        const ZetEqnTile expected = after.plain(second);
                        EXPECT_EQ(plan.size(), expected.size());
                        expectSame(std::move(plan).compute(), expected);
                    }
                }
            }
        }
    }
}

/// An operation on two tiles, as a step of a plan and by the tiles themselves.
struct TwoFunction
{
    const char* name;
    ZetPendingTile (*pending)(ZetPendingTile&& a, ZetPendingTile&& b);
    ZetEqnTile (*plain)(const ZetEqnTile& a, const ZetEqnTile& b);
};

#define TWO(Pending, Plain)                                                                            \
    {                                                                                                  \
#Plain, [](ZetPendingTile && a,                                                                \
                   ZetPendingTile && b) { return Pending; }, [](const ZetEqnTile& a,                   \
                                                                const ZetEqnTile& b) { return Plain; } \
    }

const TwoFunction kTwoFunctions[] = {
    TWO(ZetPendingTile::combine(kAdd, std::move(a), std::move(b)), a + b),
    TWO(ZetPendingTile::combine(kSubtract, std::move(a), std::move(b)), a - b),
    TWO(ZetPendingTile::combine(kMultiply, std::move(a), std::move(b)), a* b),
    TWO(ZetPendingTile::combine(kDivide, std::move(a), std::move(b)), a / b),
    TWO(std::move(a).min(std::move(b)), a.min(b)),
    TWO(std::move(a).max(std::move(b)), a.max(b)),
    TWO(ZetPendingTile::cmplx(std::move(a), std::move(b)), ZetEqnTile::cmplx(a, b)),
    TWO(ZetPendingTile::cmplx(std::move(a), 2.5).max(std::move(b)), ZetEqnTile::cmplx(a, 2.5).max(b)),
    TWO(ZetPendingTile::combine(kAdd, std::move(b), ZetPendingTile::cmplx(-0.0, std::move(a))),
        b + ZetEqnTile::cmplx(-0.0, a)),
};

#undef TWO

TEST_P(ZetPendingTilePlans, functionsOfTwoTilesAmongOthers)
{
    for (const unsigned long size : kSizes) {
        const Shapes lefts(size);
        const Shapes rights(size % 2 == 0 ? size : size + 3);
        for (const ZetPixelSource& left : lefts.sources) {
            for (const ZetPixelSource& right : rights.sources) {
                for (const TwoFunction& function : kTwoFunctions) {
                    for (const Function& before : kAround) {
                        SCOPED_TRACE(testing::Message()
                                     << size << " of types " << left.tile.dataType().type() << " "
                                     << right.tile.dataType().type() << ": " << before.name << ", " << function.name);
                        const auto plan = [&] {
                            return function.pending(before.pending(ZetPendingTile(left.tile)),
                                                    ZetPendingTile(right.tile));
                        };
                        const ZetEqnTile expected = function.plain(before.plain(left.tile), right.tile);
                        expectSame(plan().compute(), expected);
                        // and on the other side, of the one tile twice
                        expectSame(function.pending(ZetPendingTile(left.tile), plan()).compute(),
                                   function.plain(left.tile, expected));
                    }
                }
            }
        }
    }
}

TEST_P(ZetPendingTilePlans, theTileOfASourceIsThatVeryTile)
{
    const Shapes shapes(5);
    for (const ZetPixelSource& source : shapes.sources) {
        const ZetPendingTile plan(source.tile);
        EXPECT_EQ(plan.tile(), &source.tile);
        EXPECT_EQ(plan.size(), 5u);
        const ZetEqnTile found = ZetPendingTile(source.tile).compute();
        EXPECT_EQ(found.buffer(), source.tile.buffer());
        expectSame(found, source.tile);
    }
    const ZetVariant value(ownTile(ZetDataType::U8, {1.0, 2.0}));
    EXPECT_EQ(ZetPendingTile(value).tile(), value.data());
    const ZetEqnTile noBlock(new ZetBuffer(40, false), ZetDataType::Double, 5);
    EXPECT_EQ(ZetPendingTile(noBlock).size(), 5u) << "what the tile says of itself";
    EXPECT_EQ(ZetPendingTile(noBlock).sqrt().size(), 0u);
    EXPECT_EQ(ZetPendingTile(noBlock).sqrt().tile(), nullptr);
    EXPECT_EQ(ZetPendingTile(shapes.sources[0].tile).floor().tile(), nullptr);
}

struct UnservedRow
{
    const char* name;
    bool servesComplex;  // ComplexDouble
    bool servesComplexFloat;
    ZetPendingTile (*pending)(ZetPendingTile&& t);
};

ZetPendingTile two()
{
    static const ZetEqnTile tile = ownTile(ZetDataType::U8, {1.0, 2.0});
    return ZetPendingTile(tile);
}

#define ROW(Name, OnComplex, OnComplexFloat, Call)                               \
    {                                                                            \
        Name, OnComplex, OnComplexFloat, [](ZetPendingTile&& t) { return Call; } \
    }

const UnservedRow kUnserved[] = {
    // real elements and ComplexDouble
    ROW("sin", true, false, std::move(t).sin()),
    ROW("log10", true, false, std::move(t).log10()),
    ROW("sqrt", true, false, std::move(t).sqrt()),
    ROW("sinc", true, false, std::move(t).sinc()),
    ROW("abs", true, false, std::move(t).abs()),
    ROW("real", true, false, std::move(t).real()),
    ROW("imag", true, false, std::move(t).imag()),
    ROW("arg", true, false, std::move(t).arg()),
    ROW("norm", true, false, std::move(t).norm()),
    ROW("conj", true, false, std::move(t).conj()),
    ROW("pow", true, false, std::move(t).pow(2.0)),
    ROW("-t", true, false, -std::move(t)),
    ROW("t+1", true, false, ZetPendingTile::combine(kAdd, std::move(t), 1.0)),
    ROW("1/t", true, false, ZetPendingTile::combine(kDivide, 1.0, std::move(t))),
    ROW("t*i", true, false, ZetPendingTile::combine(kMultiply, std::move(t), Complex(0.0, 1.0))),
    ROW("i-t", true, false, ZetPendingTile::combine(kSubtract, Complex(0.0, 1.0), std::move(t))),
    // real elements only
    ROW("round", false, false, std::move(t).round()),
    ROW("trunc", false, false, std::move(t).trunc()),
    ROW("floor", false, false, std::move(t).floor()),
    ROW("ceil", false, false, std::move(t).ceil()),
    ROW("j1", false, false, std::move(t).j1()),
    ROW("yn", false, false, std::move(t).yn(1)),
    ROW("logb", false, false, std::move(t).logb(2.0)),
    ROW("min", false, false, std::move(t).min(1.0)),
    ROW("max", false, false, std::move(t).max(1.0)),
    ROW("clip", false, false, std::move(t).clip(0.0, 1.0)),
    ROW("clipmin", false, false, std::move(t).clipmin(0.0)),
    ROW("clipmax", false, false, std::move(t).clipmax(0.0)),
    ROW("factorial", false, false, std::move(t).factorial()),
    ROW("cmplx(t,1)", false, false, ZetPendingTile::cmplx(std::move(t), 1.0)),
    ROW("cmplx(1,t)", false, false, ZetPendingTile::cmplx(1.0, std::move(t))),
    // with another tile, ComplexFloat too
    ROW("t+two", true, true, ZetPendingTile::combine(kAdd, std::move(t), two())),
    ROW("two/t", true, true, ZetPendingTile::combine(kDivide, two(), std::move(t))),
    ROW("min(t,two)", true, true, std::move(t).min(two())),
    ROW("max(two,t)", true, true, two().max(std::move(t))),
    ROW("cmplx(t,two)", true, true, ZetPendingTile::cmplx(std::move(t), two())),
    ROW("cmplx(two,t)", true, true, ZetPendingTile::cmplx(two(), std::move(t))),
};

#undef ROW

TEST_P(ZetPendingTilePlans, whatServesNoOperandIsTheEmptyTile)
{
    const struct
    {
        ZetEqnTile tile;
        bool UnservedRow::*isServed;  // null: by nothing
    } operands[] = {
        {ownTile(ZetDataType::I64, {1.0, 2.0}), nullptr},
        {ownTile(ZetDataType::U64, {1.0, 2.0}), nullptr},
        {ZetEqnTile(), nullptr},
        {ownTile(ZetDataType::ComplexFloat, {1.0, 2.0}), &UnservedRow::servesComplexFloat},
        {ownTile(ZetDataType::ComplexDouble, {1.0, 2.0}), &UnservedRow::servesComplex},
    };
    for (const auto& operand : operands) {
        for (const UnservedRow& row : kUnserved) {
            SCOPED_TRACE(testing::Message() << row.name << " of type " << operand.tile.dataType().type());
            ZetPendingTile plan = row.pending(ZetPendingTile(operand.tile));
            if (operand.isServed && row.*operand.isServed) {
                EXPECT_EQ(std::move(plan).compute().size(), 2u);
                continue;
            }
            ASSERT_NE(plan.tile(), nullptr);
            expectEmpty(*plan.tile());
            expectEmpty(std::move(plan).compute());
            expectEmpty(row.pending(row.pending(ZetPendingTile(operand.tile))).compute());
        }
    }
    expectEmpty(ZetPendingTile::empty().compute());
    EXPECT_EQ(ZetPendingTile::empty().sum(), 0.0);
}

// Half is added away from zero and the sum is cut; an element beyond a limit is the limit.
TEST_P(ZetPendingTilePlans, roundclipOfWhatIsComputed)
{
    Values in;
    Values bytes;
    Values floats;
    const double xs[] = {-3.0, -0.25, 0.2, 0.25, 0.75, 1.0, 127.25, 127.3, 200.0};
    const double twice[] = {0.0, 0.0, 0.0, 1.0, 2.0, 2.0, 255.0, 255.0, 255.0};  // of 2 x, to 255
    for (unsigned long i = 0; i < 1025; ++i) {
        in.emplace_back(xs[i % std::size(xs)]);
        bytes.emplace_back(twice[i % std::size(xs)]);
        floats.emplace_back(twice[i % std::size(xs)] / 2.0 + 0.5);
    }
    const ZetEqnTile tile = ownTile(ZetDataType::Double, in);
    const auto clipped = [&] {
        return ZetPendingTile::combine(kMultiply, ZetPendingTile(tile), 2.0).roundclip(ZetDataType::U8, 0.0, 255.0);
    };
    expectTile(clipped().compute(), ZetDataType::U8, bytes);
    const auto halved = [&] {
        return ZetPendingTile::combine(kAdd, ZetPendingTile::combine(kMultiply, clipped(), 0.5), 0.5);
    };
    expectTile(halved().compute(), ZetDataType::Double, floats);
    expectTile(halved().roundclip(ZetDataType::Float, 0.0, 128.0).compute(), ZetDataType::Float, floats);
}

TEST_P(ZetPendingTilePlans, roundclipToEveryTypeAmongOthers)
{
    for (const ZetDataType::Type first : kReal) {
        for (const ZetDataType::Type last : kReal) {
            for (const unsigned long size : kSizes) {
                SCOPED_TRACE(testing::Message() << first << ", " << last << ", size " << size);
                const ZetEqnTile tile = ownTile(ZetDataType::Double, valuesOf(ZetDataType::Double, size));
                const ZetEqnTile middle = (tile * 1.5).roundclip(first, 0.0, 100.0);
                const auto plan = [&] {
                    return ZetPendingTile::combine(kMultiply, ZetPendingTile(tile), 1.5).roundclip(first, 0.0, 100.0);
                };
                expectSame(plan().compute(), middle);
                expectSame(plan().roundclip(last, 2.0, 50.0).compute(), middle.roundclip(last, 2.0, 50.0));
                expectSame(
                    ZetPendingTile::combine(kSubtract, plan(), plan().sqrt()).roundclip(last, 1.0, 9.0).compute(),
                    (middle - middle.sqrt()).roundclip(last, 1.0, 9.0));
            }
        }
    }
}

// The elements are not written, whatever comes before.
TEST_P(ZetPendingTilePlans, roundclipOfTypesWithoutALoop)
{
    const ZetEqnTile real = ownTile(ZetDataType::Double, {1.0, 2.0});
    const ZetEqnTile complex = ownTile(ZetDataType::ComplexDouble, {1.0, 2.0});
    for (const ZetDataType::Type type : {ZetDataType::I64, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble}) {
        const ZetEqnTile found = ZetPendingTile(real).sqrt().roundclip(type, 0.0, 1.0).compute();
        EXPECT_EQ(found.dataType(), ZetDataType(type));
        EXPECT_EQ(found.size(), 2u);
    }
    const ZetEqnTile found = (-ZetPendingTile(complex)).roundclip(ZetDataType::U8, 0.0, 1.0).compute();
    EXPECT_EQ(found.dataType(), ZetDataType(ZetDataType::U8));
    EXPECT_EQ(found.size(), 2u);
}

TEST_P(ZetPendingTilePlans, manyOperations)
{
    static_assert(ZetPendingTile::kMostOperations < 200);
    for (const unsigned long size : {1UL, 513UL, 1025UL}) {
        SCOPED_TRACE(size);
        const ZetEqnTile tile = ownTile(ZetDataType::Double, valuesOf(ZetDataType::Double, size));
        const Values before = elementsOf(tile);
        Values expected = before;
        ZetBlockCount blocks;
        ZetPendingTile plan(tile);
        for (int i = 0; i < 200; ++i) {
            const double number = 1.0 + i / 16.0;
            plan = i % 3 == 0   ? ZetPendingTile::combine(kMultiply, std::move(plan), number)
                   : i % 3 == 1 ? std::move(plan).abs()
                                : ZetPendingTile::combine(kSubtract, number, std::move(plan));
            for (Complex& x : expected) {
                x = i % 3 == 0 ? x.real() * number : i % 3 == 1 ? std::fabs(x.real()) : number - x.real();
            }
        }
        EXPECT_EQ(plan.size(), size);
        const ZetEqnTile found = std::move(plan).compute();
        EXPECT_EQ(blocks.take(), 1) << "which goes on from result to result";
        expectTile(found, ZetDataType::Double, expected);
        expectTile(tile, ZetDataType::Double, before);
    }
}

TEST_P(ZetPendingTilePlans, aPlanOfTheMostOperationsIsComputed)
{
    const ZetEqnTile tile = ownTile(ZetDataType::Double, {-2.0, 3.0});
    ZetPendingTile plan = ZetPendingTile(tile).abs();
    for (int operations = 1; operations < ZetPendingTile::kMostOperations; ++operations) {
        ASSERT_EQ(plan.tile(), nullptr) << operations;
        plan = -std::move(plan);
    }
    ASSERT_NE(plan.tile(), nullptr);
    expectTile(*plan.tile(), ZetDataType::Double, {-2.0, -3.0});
    EXPECT_EQ((-std::move(plan)).tile(), nullptr) << "it starts over";
}

TEST_P(ZetPendingTilePlans, manyOperationsWithoutMemory)
{
    const ZetEqnTile tile = ownTile(ZetDataType::Double, {-2.0, 3.0});
    const auto compute = [&] {
        ZetPendingTile plan(tile);
        for (int i = 0; i < 200; ++i) {
            plan = -std::move(plan);
        }
        return std::move(plan).compute();
    };
    const ZetNoMemory none;
    EXPECT_EQ(thrownBy(compute).text(), L"Cannot allocate '16' bytes for buffer.");
    const ZetCollectingHandler posted;
    expectEmpty(compute());
    EXPECT_EQ(posted.texts(), std::vector<ZetString>{L"Cannot allocate '16' bytes for buffer."});
    expectTile(tile, ZetDataType::Double, {-2.0, 3.0});
}

TEST_P(ZetPendingTilePlans, operationsOnManyTiles)
{
    std::deque<ZetPixelSource> sources;
    std::vector<double> least(700, kInf);
    double sum = 0.0;
    for (unsigned long i = 0; i < 1000; ++i) {
        Values values;
        for (unsigned long k = 0; k < 700; ++k) {
            values.emplace_back(static_cast<double>((i * 7919 + k * 104729) % 60000));
            least[k] = std::min(least[k], values.back().real());
        }
        sources.emplace_back(i % 2 == 0 ? ZetDataType::U16 : ZetDataType::Double, values);
    }
    for (const double x : least) {
        sum += x;
    }
    ZetPendingTile fromLeft(sources[0].tile);
    ZetPendingTile fromRight(sources[0].tile);
    for (const ZetPixelSource& source : sources) {
        fromLeft = std::move(fromLeft).min(ZetPendingTile(source.tile));
        fromRight = ZetPendingTile(source.tile).min(std::move(fromRight));
    }
    const std::function<ZetPendingTile(std::size_t, std::size_t)> between = [&](std::size_t first, std::size_t last) {
        if (last - first == 1) {
            return ZetPendingTile(sources[first].tile);
        }
        const std::size_t middle = first + (last - first) / 2;
        return between(first, middle).min(between(middle, last));
    };
    const Values expected(least.begin(), least.end());
    EXPECT_EQ(fromLeft.sum(), sum);
    EXPECT_EQ(fromRight.min(), *std::min_element(least.begin(), least.end()));
    expectTile(std::move(fromLeft).compute(), ZetDataType::Double, expected);
    expectTile(std::move(fromRight).compute(), ZetDataType::Double, expected);
    expectTile(between(0, sources.size()).compute(), ZetDataType::Double, expected);
}

TEST_P(ZetPendingTilePlans, theSizeIsThatOfTheSmallestTile)
{
    const ZetEqnTile three = ownTile(ZetDataType::U8, {1.0, 2.0, 3.0});
    const ZetEqnTile five = ownTile(ZetDataType::Double, {1.0, 2.0, 3.0, 4.0, 5.0});
    const ZetEqnTile none = ownTile(ZetDataType::Double, {});
    const auto sum = [](const ZetEqnTile& a, const ZetEqnTile& b) {
        return ZetPendingTile::combine(kAdd, ZetPendingTile(a), ZetPendingTile(b));
    };
    EXPECT_EQ(sum(three, five).size(), 3u);
    EXPECT_EQ(sum(five, three).size(), 3u);
    EXPECT_EQ(sum(five, none).size(), 0u);
    EXPECT_EQ(ZetPendingTile(three).min(ZetPendingTile(five)).size(), 3u);
    EXPECT_EQ(ZetPendingTile::cmplx(ZetPendingTile(five), ZetPendingTile(three)).conj().size(), 3u);
    EXPECT_EQ(ZetPendingTile::combine(kAdd, 1.0, sum(five, five)).size(), 5u);
    EXPECT_EQ(ZetPendingTile::combine(kMultiply, sum(five, five), ZetPendingTile(three)).size(), 3u);
    expectTile(ZetPendingTile::combine(kMultiply, sum(five, five), ZetPendingTile(three)).compute(),
               ZetDataType::Double, {2.0, 8.0, 18.0});
    expectTile(sum(none, five).compute(), ZetDataType::Double, {});
}

TEST_P(ZetPendingTilePlans, reductionsOfPlans)
{
    for (const unsigned long size : kSizes) {
        const Shapes shapes(size);
        for (const ZetPixelSource& source : shapes.sources) {
            for (const Function& before : kAround) {
                for (const Function& function : kFunctions) {
                    SCOPED_TRACE(testing::Message() << size << " of type " << source.tile.dataType().type() << ": "
                                                    << before.name << ", " << function.name);
                    const ZetEqnTile tile = function.plain(before.plain(source.tile));
                    const ZetPendingTile plan = function.pending(before.pending(ZetPendingTile(source.tile)));
                    EXPECT_TRUE(isSame(plan.sum(), tile.sum()));
                    EXPECT_TRUE(isSame(plan.min(), tile.min()));
                    EXPECT_TRUE(isSame(plan.max(), tile.max()));
                }
            }
            EXPECT_TRUE(isSame(ZetPendingTile(source.tile).sum(), source.tile.sum()));
        }
    }
}

// From the first element to the last, over all strips: an order that the bits of the sum tell.
TEST_P(ZetPendingTilePlans, sumsRunFromTheFirstElementToTheLast)
{
    for (const unsigned long size : kSizes) {
        Values values;
        double sum = 0.0;
        double least = std::numeric_limits<double>::max();
        double greatest = std::numeric_limits<double>::min();
        for (unsigned long i = 0; i < size; ++i) {
            values.emplace_back(std::ldexp(0.1, static_cast<int>(i * 13 % 60)) * (i % 2 == 0 ? 1.0 : -1.0));
            const double x = values.back().real() * 3.0 - 0.7;
            sum += x;
            least = std::min(least, x);
            greatest = std::max(greatest, x);
        }
        const ZetEqnTile tile = ownTile(ZetDataType::Double, values);
        const ZetPendingTile plan =
            ZetPendingTile::combine(kSubtract, ZetPendingTile::combine(kMultiply, ZetPendingTile(tile), 3.0), 0.7);
        SCOPED_TRACE(size);
        EXPECT_TRUE(isSame(plan.sum(), sum));
        EXPECT_TRUE(isSame(plan.min(), least));
        EXPECT_TRUE(isSame(plan.max(), greatest));
        EXPECT_TRUE(isSame(plan.sum(), sum)) << "again";
    }
}

TEST_P(ZetPendingTilePlans, reductionsOfWhatIsNotReal)
{
    const ZetEqnTile complex = ownTile(ZetDataType::ComplexDouble, {1.0, 2.0});
    const ZetEqnTile wide = ownTile(ZetDataType::I64, {1.0, 2.0});
    for (const ZetEqnTile& tile : {complex, wide, ZetEqnTile()}) {
        for (const ZetPendingTile& plan : {std::move(ZetPendingTile(tile)).sqrt(), ZetPendingTile(tile)}) {
            EXPECT_EQ(plan.sum(), 0.0);
            EXPECT_EQ(plan.min(), 0.0);
            EXPECT_EQ(plan.max(), 0.0);
        }
    }
}

}  // namespace
}  // namespace test
}  // namespace zet
