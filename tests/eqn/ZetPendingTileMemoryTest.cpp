// Which memory plans write: the block of a tile that is handed over, a new one, or a tile that is there.
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "eqn/ZetPendingTile"
#include "support/ZetBlockCount"
#include "support/ZetEachKernelBuild"
#include "support/ZetPixelSource"
#include "support/ZetRandomValues"
#include "support/ZetSameValue"

namespace zet {
namespace test {
namespace {

using internal::kAdd;
using internal::kDivide;
using internal::kMultiply;
using internal::kSubtract;
using internal::ZetArithmetic;
using internal::ZetPendingTile;
using internal::ZetTileMemory;

class ZetPendingTileMemory : public ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetPendingTileMemory);

// About the length of a strip, and of two.
const unsigned long kSizes[] = {0, 1, 511, 512, 513, 1023, 1024, 1025};

void expectSame(const ZetEqnTile& found, const ZetEqnTile& expected)
{
    EXPECT_EQ(differenceOf(found, expected, true), L"");
}

/// A tile of the same elements with a block of its own, in a value that nobody else holds.
ZetPendingTile handedOver(const ZetEqnTile& tile)
{
    return ZetPendingTile(ZetVariant(ownTile(tile.dataType().type(), elementsOf(tile))));
}

using Pendings = std::vector<ZetPendingTile>;
using Tiles = std::vector<ZetEqnTile>;

/// A plan of four tiles, and the same by the tiles themselves.
struct LendingRow
{
    const char* name;
    std::vector<ZetDataType::Type> types;
    ZetPendingTile (*plan)(Pendings& t);
    ZetEqnTile (*plain)(const Tiles& t);
};

ZetPendingTile taken(Pendings& tiles, std::size_t i)
{
    return std::move(tiles[i]);
}

ZetPendingTile combined(ZetArithmetic op, ZetPendingTile a, ZetPendingTile b)
{
    return ZetPendingTile::combine(op, std::move(a), std::move(b));
}

constexpr ZetDataType::Type kD = ZetDataType::Double;
constexpr ZetDataType::Type kZD = ZetDataType::ComplexDouble;
constexpr ZetDataType::Type kF = ZetDataType::Float;
constexpr ZetDataType::Type kB = ZetDataType::U8;

#define A taken(t, 0)
#define B taken(t, 1)
#define C taken(t, 2)
#define D taken(t, 3)
#define PLAN(Expression) [](Pendings& t) -> ZetPendingTile { return Expression; }
#define PLAIN(Expression)              \
    [](const Tiles& t) -> ZetEqnTile { \
        const ZetEqnTile& a = t[0];    \
        const ZetEqnTile& b = t[1];    \
        const ZetEqnTile& c = t[2];    \
        const ZetEqnTile& d = t[3];    \
        return Expression;             \
    }

const LendingRow kLending[] = {
    // no strips: one loop over runs where they stand
    {"(a+b)/(c-d)",
     {kD, kD, kD, kD},
     PLAN(combined(kDivide, combined(kAdd, A, B), combined(kSubtract, C, D))),
     PLAIN((a + b) / (c - d))},
    // strips
    {"(a*b+c)*d",
     {kD, kD, kD, kD},
     PLAN(combined(kMultiply, combined(kAdd, combined(kMultiply, A, B), C), D)),
     PLAIN((a * b + c) * d)},
    {"sqrt(a)+b*abs(c)-d",
     {kD, kD, kD, kD},
     PLAN(combined(kSubtract, combined(kAdd, A.sqrt(), combined(kMultiply, B, C.abs())), D)),
     PLAIN(a.sqrt() + b * c.abs() - d)},
    {"min(a,b.floor)-max(c,d)",
     {kD, kD, kD, kD},
     PLAN(combined(kSubtract, A.min(B.floor()), C.max(D))),
     PLAIN(a.min(b.floor()) - c.max(d))},
    // tiles that do not fit stand between
    {"a*b+sin(c)/d",
     {kB, kD, kF, kD},
     PLAN(combined(kAdd, combined(kMultiply, A, B), combined(kDivide, C.sin(), D))),
     PLAIN(a* b + c.sin() / d)},
    {"real(a)*b+c-d",
     {kZD, kB, kB, kD},
     PLAN(combined(kSubtract, combined(kAdd, combined(kMultiply, A.real(), B), C), D)),
     PLAIN(a.real() * b + c - d)},
    {"a*b+c-d",
     {kB, kF, kB, kF},
     PLAN(combined(kSubtract, combined(kAdd, combined(kMultiply, A, B), C), D)),
     PLAIN(a* b + c - d)},
    // complex results
    {"a*b+conj(c)/d",
     {kZD, kZD, kZD, kZD},
     PLAN(combined(kAdd, combined(kMultiply, A, B), combined(kDivide, C.conj(), D))),
     PLAIN(a* b + c.conj() / d)},
    {"cmplx(a,b)*c-d",
     {kD, kD, kZD, kZD},
     PLAN(combined(kSubtract, combined(kMultiply, ZetPendingTile::cmplx(A, B), C), D)),
     PLAIN(ZetEqnTile::cmplx(a, b) * c - d)},
    {"cmplx(imag(a),b)+sqrt(c)*d",
     {kZD, kD, kZD, kD},
     PLAN(combined(kAdd, ZetPendingTile::cmplx(A.imag(), B), combined(kMultiply, C.sqrt(), D))),
     PLAIN(ZetEqnTile::cmplx(a.imag(), b) + c.sqrt() * d)},
    // a real result of complex tiles
    {"norm(a*b)-abs(c)*d",
     {kZD, kZD, kD, kD},
     PLAN(combined(kSubtract, combined(kMultiply, A, B).norm(), combined(kMultiply, C.abs(), D))),
     PLAIN((a * b).norm() - c.abs() * d)},
    // results of smaller elements
    {"roundclip(a*b+c-d, Float)",
     {kF, kD, kF, kD},
     PLAN(combined(kSubtract, combined(kAdd, combined(kMultiply, A, B), C), D).roundclip(kF, -3.0, 60.0)),
     PLAIN((a * b + c - d).roundclip(kF, -3.0, 60.0))},
    {"roundclip(a-b*c/d, U8)",
     {kD, kB, kF, kB},
     PLAN(combined(kSubtract, A, combined(kDivide, combined(kMultiply, B, C), D)).roundclip(kB, 0.0, 255.0)),
     PLAIN((a - b * c / d).roundclip(kB, 0.0, 255.0))},
    {"roundclip(a, U8)*b-roundclip(c*d, Float)",
     {kB, kF, kD, kD},
     PLAN(combined(kSubtract, combined(kMultiply, A.roundclip(kB, 2.0, 9.0), B),
                   combined(kMultiply, C, D).roundclip(kF, 0.0, 99.0))),
     PLAIN(a.roundclip(kB, 2.0, 9.0) * b - (c * d).roundclip(kF, 0.0, 99.0))},
    // the inner operator on the right
    {"a-(b*c)+d",
     {kD, kD, kD, kD},
     PLAN(combined(kAdd, combined(kSubtract, A, combined(kMultiply, B, C)), D)),
     PLAIN(a - b * c + d)},
    {"a/(b-sqrt(c)*d)",
     {kD, kD, kD, kD},
     PLAN(combined(kDivide, A, combined(kSubtract, B, combined(kMultiply, C.sqrt(), D)))),
     PLAIN(a / (b - c.sqrt() * d))},
};

#undef PLAIN
#undef PLAN
#undef D
#undef C
#undef B
#undef A

// Every choice of tiles that are handed over: the result stands on one that has its type, and what stays
// with a caller keeps its elements.
TEST_P(ZetPendingTileMemory, resultsStandOnTilesThatAreHandedOver)
{
    for (const LendingRow& row : kLending) {
        for (const unsigned long size : kSizes) {
            Tiles tiles;
            std::vector<ZetWatchedBytes> watched;
            for (std::size_t i = 0; i < 4; ++i) {
                tiles.push_back(ownTile(row.types[i], valuesOf(row.types[i], size, i + size)));
                watched.emplace_back(tiles.back());
            }
            const ZetEqnTile expected = row.plain(tiles);
            for (int handed = 0; handed < 16; ++handed) {
                SCOPED_TRACE(testing::Message() << row.name << " of " << size << ", handed over " << handed);
                Pendings pendings;
                std::set<const void*> fitting;
                for (std::size_t i = 0; i < 4; ++i) {
                    const bool isHanded = handed >> i & 1;
                    pendings.push_back(isHanded ? handedOver(tiles[i]) : ZetPendingTile(tiles[i]));
                    if (isHanded && size > 0 && expected.dataType() == tiles[i].dataType()) {
                        fitting.insert(pendings.back().tile()->elements<void>());
                    }
                }
                ZetBlockCount count;
                ZetPendingTile plan = row.plan(pendings);
                const ZetEqnTile found = std::move(plan).compute();
                EXPECT_EQ(count.take(), size > 0 && fitting.empty() ? 1 : 0);
                EXPECT_EQ(fitting.count(found.elements<void>()), fitting.empty() ? 0u : 1u);
                expectSame(found, expected);
            }
            EXPECT_TRUE(
                std::all_of(watched.begin(), watched.end(), [](const auto& bytes) { return bytes.areUnchanged(); }));
        }
    }
}

TEST_P(ZetPendingTileMemory, resultsStandOnNoTileOfAnotherSize)
{
    for (const unsigned long size : {1UL, 512UL, 1025UL}) {
        SCOPED_TRACE(size);
        const ZetEqnTile shorter = ownTile(kD, valuesOf(kD, size));
        const ZetEqnTile longer = ownTile(kD, valuesOf(kD, size + 1));
        const ZetEqnTile expected = longer.sqrt() - shorter;
        ZetPendingTile plan = combined(kSubtract, handedOver(longer).sqrt(), ZetPendingTile(shorter));
        ZetPendingTile fitting = combined(kSubtract, handedOver(longer).sqrt(), handedOver(shorter));
        ZetBlockCount count;
        const ZetEqnTile found = std::move(plan).compute();
        EXPECT_EQ(count.take(), 1);
        expectSame(found, expected);
        const ZetEqnTile other = std::move(fitting).compute();
        EXPECT_EQ(count.take(), 0) << "the shorter one fits";
        expectSame(other, expected);
    }
}

TEST_P(ZetPendingTileMemory, aBlockThatIsKeptServesWhereNoTileLends)
{
    ZetTileMemory memory;
    ZetVariant before(ownTile(kD, valuesOf(kD, 600)));
    const void* const block = held<ZetEqnTile>(before).elements<void>();
    memory.release(before);
    const ZetEqnTile tile = ownTile(kB, valuesOf(kB, 600));
    const ZetEqnTile expected = tile.sqrt() + tile;
    ZetBlockCount count;
    const ZetEqnTile found = combined(kAdd, ZetPendingTile(tile).sqrt(), ZetPendingTile(tile)).compute(memory);
    EXPECT_EQ(count.take(), 0);
    EXPECT_EQ(found.elements<void>(), block);
    expectSame(found, expected);
}

// A plan that is only asked for a number, or for nothing, takes no block.
TEST_P(ZetPendingTileMemory, whatIsNotComputedLeavesItsTilesAlone)
{
    const ZetVariant value(ownTile(kD, valuesOf(kB, 700)));
    const ZetEqnTile& tile = held<ZetEqnTile>(value);
    const ZetWatchedBytes bytes(tile.clone());
    const void* const block = tile.elements<void>();
    {
        const ZetPendingTile plan = ZetPendingTile(value).sqrt();
        ZetBlockCount count;
        plan.sum();
        plan.min();
        plan.max();
        EXPECT_EQ(count.take(), 0);
    }
    EXPECT_EQ(tile.elements<void>(), block);
    expectTile(tile, kD, valuesOf(kB, 700));
}

/// A plan into a tile that is an operand of it.
struct IntoRow
{
    const char* name;
    ZetPendingTile (*plan)(const ZetEqnTile& out, const ZetEqnTile& x);
    double (*plain)(double out, double x);
};

#define INTO(Plan, Plain)                                                                          \
    {                                                                                              \
#Plain, [](const ZetEqnTile& out, const ZetEqnTile& x) -> ZetPendingTile {                       \
            [[maybe_unused]] const auto o = [&] { return ZetPendingTile(out); };                                          \
            [[maybe_unused]] const auto y = [&] { return ZetPendingTile(x); };                                            \
            return Plan;                                                                                 \
        }, []([[maybe_unused]] double o, [[maybe_unused]] double y) -> double { return Plain; } \
    }

const IntoRow kInto[] = {
    INTO(combined(kAdd, o(), y()), o + y),
    INTO(combined(kSubtract, y(), o()), y - o),
    INTO(combined(kMultiply, o(), o()), o* o),
    INTO(combined(kDivide, combined(kAdd, y(), o()), combined(kSubtract, y(), o())), (y + o) / (y - o)),
    INTO(combined(kSubtract, combined(kMultiply, o(), y()), o()), o* y - o),
    INTO(combined(kSubtract, o(), combined(kMultiply, y(), o())), o - y * o),
    INTO(combined(kAdd, y().sqrt(), combined(kMultiply, o().abs(), o())), std::sqrt(y) + std::fabs(o) * o),
    INTO(combined(kSubtract, y().floor(), o()), std::floor(y) - o),
    INTO(combined(kSubtract, o().floor(), combined(kAdd, o(), y().ceil())), std::floor(o) - (o + std::ceil(y))),
    INTO(ZetPendingTile::combine(kSubtract, 1.0, o()), 1.0 - o),
};

#undef INTO

TEST_P(ZetPendingTileMemory, computeIntoAnOperand)
{
    for (const IntoRow& row : kInto) {
        for (const unsigned long size : kSizes) {
            for (const unsigned long more : {0UL, 3UL, 600UL}) {
                SCOPED_TRACE(testing::Message() << row.name << " of " << size << ", x has " << more << " more");
                Values xs;
                Values outs;
                Values expected;
                for (unsigned long i = 0; i < size + more; ++i) {
                    xs.emplace_back(static_cast<double>(i * 37 % 101) / 4.0);
                    if (i < size) {
                        outs.emplace_back(static_cast<double>(i * 53 % 97) / 8.0 - 3.0);
                        expected.emplace_back(row.plain(outs[i].real(), xs[i].real()));
                    }
                }
                const ZetEqnTile x = ownTile(kD, xs);
                ZetEqnTile out = ownTile(kD, outs);
                const void* const block = out.elements<void>();
                row.plan(out, x).computeInto(out);
                EXPECT_EQ(out.elements<void>(), block);
                expectTile(out, kD, expected);
                expectTile(x, kD, xs);
            }
        }
    }
}

TEST_P(ZetPendingTileMemory, computeIntoAShorterTile)
{
    const ZetEqnTile x = ownTile(kB, valuesOf(kB, 1025));
    const ZetEqnTile expected = x.sqrt() * 3.0 - x;
    for (const unsigned long size : kSizes) {
        SCOPED_TRACE(size);
        std::vector<double> memory(1025 + 1, 77.0);
        ZetEqnTile out(new ZetBuffer(memory.size() * sizeof(double), memory.data(), false), kD, size);
        const ZetPendingTile plan =
            combined(kSubtract, ZetPendingTile::combine(kMultiply, ZetPendingTile(x).sqrt(), 3.0), ZetPendingTile(x));
        plan.computeInto(out);
        Values first = elementsOf(expected);
        first.resize(size);
        for (unsigned long i = 0; i < size; ++i) {
            ASSERT_TRUE(isSame(memory[i], first[i].real())) << i;
        }
        EXPECT_EQ(std::count(memory.begin() + static_cast<long>(size), memory.end(), 77.0),
                  static_cast<long>(memory.size() - size));
    }
}

}  // namespace
}  // namespace test
}  // namespace zet
