#include "eqn/ZetTileStep"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetEachKernelBuild"
#include "support/ZetPixelSource"
#include "support/ZetRandom"

namespace zet {
namespace test {
namespace {

using internal::kAdd;
using internal::kDivide;
using internal::kMultiply;
using internal::kStripBlock;
using internal::kSubtract;
using internal::kTileBlock;
using internal::makeLoopStep;
using internal::ZetArithmetic;
using internal::ZetArithmeticStep;
using internal::ZetComplexArithmeticStep;
using internal::ZetNumberStep;
using internal::ZetRuns;
using internal::ZetSourceStep;
using internal::ZetStrip;
using internal::ZetTileStep;
using internal::ZetTileStepPtr;

class ZetTileStepRuns : public ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetTileStepRuns);

/// The element types of the columns of the kernel tables.
const ZetDataType::Type kColumns[] = {ZetDataType::I8,  ZetDataType::U8,  ZetDataType::I16,   ZetDataType::U16,
                                      ZetDataType::I32, ZetDataType::U32, ZetDataType::Float, ZetDataType::Double};

const ZetArithmetic kOperators[] = {kAdd, kSubtract, kMultiply, kDivide};

constexpr unsigned char kUntouched = 0xa5;

/// Memory for the strips of a step, and behind it some that the step must leave alone.
class GuardedBlocks
{
public:
    explicit GuardedBlocks(const ZetTileStep& step)
        : m_used((step.spareBlocks() + 1) * kStripBlock), m_doubles(m_used + kStripBlock)
    {}

    /// The elements of a strip. Writes no more than these to the first block, and nothing behind the last one.
    const void* run(const ZetTileStep& step, const ZetStrip& strip)
    {
        std::memset(m_doubles.data(), kUntouched, m_doubles.size() * sizeof(double));
        const void* const run = step.run(strip, block(), m_doubles.data() + kStripBlock);
        const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(m_doubles.data());
        const std::size_t written = step.needsBlock() ? strip.count * step.elementSize() : 0;
        EXPECT_TRUE(isUntouched(bytes + written, bytes + kStripBlock * sizeof(double))) << "the first block";
        EXPECT_TRUE(isUntouched(bytes + m_used * sizeof(double), bytes + m_doubles.size() * sizeof(double)));
        return run;
    }

    void* block() { return m_doubles.data(); }

private:
    static bool isUntouched(const unsigned char* first, const unsigned char* last)
    {
        static const std::vector<unsigned char> untouched(2 * kStripBlock * sizeof(double), kUntouched);
        return std::memcmp(first, untouched.data(), static_cast<std::size_t>(last - first)) == 0;
    }

    std::size_t m_used;
    std::vector<double> m_doubles;
};

/// The elements of a step, strip by strip.
Values runsOf(const ZetTileStep& step, unsigned long size, unsigned long length = kTileBlock)
{
    const ZetDataType::Type type = step.isReal() ? kColumns[step.column()] : ZetDataType::ComplexDouble;
    GuardedBlocks blocks(step);
    Values values;
    for (ZetStrip strip = {0, 0}; strip.first < size; strip.first += strip.count) {
        strip.count = std::min(length, size - strip.first);
        const char* const run = static_cast<const char*>(blocks.run(step, strip));
        EXPECT_TRUE(!step.isDoubles() || reinterpret_cast<std::uintptr_t>(run) % alignof(double) == 0);
        std::vector<char> bytes(run, run + strip.count * step.elementSize());
        const ZetEqnTile tile(new ZetBuffer(bytes.size(), bytes.data(), false), type, strip.count);
        for (unsigned long i = 0; i < strip.count; ++i) {
            values.push_back(elementAt(tile, i));
        }
    }
    return values;
}

void expectSame(const Values& found, const Values& expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_TRUE(isSame(found[i], expected[i]))
            << "element " << i << " is " << found[i] << " and not " << expected[i];
    }
}

struct SourceRow
{
    long increment;
    unsigned long size;
    unsigned long offset;
    bool isInPlace;
    bool isMisaligned;
};

const SourceRow kShapes[] = {
    // elements that follow each other are read where they stand, at any address
    {1, 1, 0, true, false},
    {1, 5, 0, true, false},
    {1, 511, 0, true, false},
    {1, 512, 0, true, false},
    {1, 513, 0, true, false},
    {1, 1700, 0, true, false},
    {1, 513, 1, true, true},
    {1, 513, 4, true, true},
    {1, 513, 8, true, false},
    // one element follows itself
    {2, 1, 0, true, false},
    {0, 1, 0, true, false},
    {-1, 1, 3, true, true},
    // others are gathered
    {2, 2, 0, false, false},
    {2, 513, 0, false, false},
    {2, 1024, 5, false, false},
    {3, 1025, 0, false, false},
    {-1, 513, 0, false, false},
    {-1, 1030, 7, false, false},
    {0, 513, 0, false, false},
};

void expectSource(const ZetSourceStep& step, const ZetEqnTile& tile)
{
    EXPECT_EQ(&step.tile(), &tile);
    EXPECT_EQ(step.toSource(), &step);
    EXPECT_EQ(step.firstTile(), &tile);
    EXPECT_EQ(step.type(), tile.dataType());
    EXPECT_EQ(step.operations(), 0);
    EXPECT_EQ(step.spareBlocks(), 0u);
    EXPECT_FALSE(step.isOfRunsInPlace());
    EXPECT_EQ(step.needsBlock(), !step.isInPlace());
}

TEST_P(ZetTileStepRuns, sourcesOfRealElements)
{
    for (int column = 0; column < 8; ++column) {
        const ZetDataType::Type type = kColumns[column];
        for (const SourceRow& row : kShapes) {
            SCOPED_TRACE(testing::Message()
                         << row.size << " of type " << type << " by " << row.increment << " at " << row.offset);
            const ZetPixelSource source(type, valuesOf(type, row.size, row.size), row.increment, row.offset);
            const ZetSourceStep step(source.tile);
            expectSource(step, source.tile);
            EXPECT_EQ(step.size(), row.size);
            EXPECT_TRUE(step.isReal());
            EXPECT_FALSE(step.isComplex());
            EXPECT_EQ(step.isInPlace(), row.isInPlace);
            EXPECT_EQ(step.isMisaligned(), row.isMisaligned);
            // gathered elements are doubles
            EXPECT_EQ(step.column(), row.isInPlace ? column : 7);
            EXPECT_EQ(step.elementSize(), row.isInPlace ? static_cast<std::size_t>(ZetDataType(type).size()) : 8u);
            EXPECT_EQ(step.isDoubles(), !row.isInPlace || (type == ZetDataType::Double && !row.isMisaligned));
            expectSame(runsOf(step, row.size), elementsOf(source.tile));
            expectSame(runsOf(step, row.size, 37), elementsOf(source.tile));
        }
    }
}

TEST_P(ZetTileStepRuns, sourcesOfComplexElements)
{
    for (const ZetDataType::Type type : {ZetDataType::ComplexFloat, ZetDataType::ComplexDouble}) {
        for (const SourceRow& row : kShapes) {
            SCOPED_TRACE(testing::Message()
                         << row.size << " of type " << type << " by " << row.increment << " at " << row.offset);
            const ZetPixelSource source(type, valuesOf(type, row.size, row.size), row.increment, row.offset);
            const ZetSourceStep step(source.tile);
            const bool isDouble = type == ZetDataType::ComplexDouble;
            expectSource(step, source.tile);
            EXPECT_EQ(step.size(), row.size);
            EXPECT_FALSE(step.isReal());
            EXPECT_TRUE(step.isComplex());
            EXPECT_EQ(step.isComplexDouble(), isDouble);
            EXPECT_FALSE(step.isDoubles());
            EXPECT_EQ(step.isInPlace(), row.isInPlace && isDouble) << "parts that are floats are converted";
            EXPECT_EQ(step.isMisaligned(), row.isMisaligned && isDouble);
            EXPECT_EQ(step.elementSize(), 16u);
            expectSame(runsOf(step, row.size), elementsOf(source.tile));
            expectSame(runsOf(step, row.size, 37), elementsOf(source.tile));
        }
    }
}

TEST_P(ZetTileStepRuns, elementsInPlaceAreThoseOfTheTile)
{
    for (const ZetDataType::Type type : {ZetDataType::U8, ZetDataType::Float, ZetDataType::ComplexDouble}) {
        SCOPED_TRACE(type);
        const unsigned long size = 3000;
        const ZetEqnTile tile = ownTile(type, valuesOf(type, size));
        const ZetSourceStep step(tile);
        // any number of them, and no block is written
        expectSame(runsOf(step, size, size), elementsOf(tile));
        const char* const first = tile.elements<const char>();
        EXPECT_EQ(step.run({0, size}, nullptr, nullptr), first);
        EXPECT_EQ(step.run({700, 5}, nullptr, nullptr), first + 700 * step.elementSize());
    }
}

TEST(ZetTileStep, sourcesWithoutElements)
{
    ZetEqnTile typed;
    typed.initialize(ZetDataType::U16, 0);
    const struct
    {
        ZetEqnTile tile;
        int column;
        bool isComplex;
    } rows[] = {
        {ZetEqnTile(), -1, false},
        {typed, 2 + 1, false},
        {ZetEqnTile(new ZetBuffer(40, false), ZetDataType::Double, 5), 7, false},
        {ZetEqnTile(new ZetBuffer(40, false), ZetDataType::U8, 20, 2), 1, false},
        {ZetEqnTile(new ZetBuffer(40, false), ZetDataType::ComplexDouble, 2), -1, true},
        {ZetEqnTile(new ZetBuffer(40, false), ZetDataType::ComplexFloat, 5, -1), -1, true},
        {ZetEqnTile(new ZetBuffer(40, false), ZetDataType::I64, 5), -1, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "type " << row.tile.dataType().type());
        const ZetSourceStep step(row.tile);
        expectSource(step, row.tile);
        EXPECT_EQ(step.size(), 0u);
        EXPECT_EQ(step.column(), row.column);
        EXPECT_EQ(step.isReal(), row.column >= 0);
        EXPECT_EQ(step.isComplex(), row.isComplex);
        EXPECT_FALSE(step.isMisaligned());
    }
}

TEST(ZetTileStep, elementsThatNoOperationServes)
{
    for (const ZetDataType::Type type : {ZetDataType::I64, ZetDataType::U64}) {
        const ZetEqnTile tile = ownTile(type, {1.0, 2.0, 3.0});
        const ZetSourceStep step(tile);
        expectSource(step, tile);
        EXPECT_EQ(step.size(), 3u);
        EXPECT_FALSE(step.isReal());
        EXPECT_FALSE(step.isComplex());
        EXPECT_FALSE(step.isDoubles());
        EXPECT_FALSE(step.isInPlace());
    }
}

TEST(ZetTileStep, numbersAreRunsOfEqualElements)
{
    for (const std::complex<double>& value : Values{{2.5, 0.0}, {-0.0, 0.0}, {kNan, 0.0}, {1.5, -3.0}, {0.0, kInf}}) {
        const bool isComplex = value.imag() != 0.0;
        const auto step =
            isComplex ? std::make_unique<ZetNumberStep>(value) : std::make_unique<ZetNumberStep>(value.real());
        SCOPED_TRACE(testing::Message() << value);
        EXPECT_EQ(step->size(), std::numeric_limits<unsigned long>::max());
        EXPECT_EQ(step->isReal(), !isComplex);
        EXPECT_EQ(step->isDoubles(), !isComplex);
        EXPECT_EQ(step->isComplexDouble(), isComplex);
        EXPECT_EQ(step->elementSize(), isComplex ? 16u : 8u);
        EXPECT_FALSE(step->needsBlock());
        EXPECT_FALSE(step->isInPlace()) << "there are no more than a strip";
        EXPECT_EQ(step->operations(), 0);
        EXPECT_EQ(step->firstTile(), nullptr);
        EXPECT_EQ(step->lender(ZetDataType::Double, 512), nullptr);
        EXPECT_EQ(step->toSource(), nullptr);
        expectSame(runsOf(*step, 1100), Values(1100, value));
    }
}

/// A step, or a number, and the elements that it has to have.
struct Real
{
    ZetTileStepPtr step;
    double number = 0.0;
    std::vector<double> values;

    unsigned long size() const { return step ? values.size() : std::numeric_limits<unsigned long>::max(); }
    double at(std::size_t i) const { return step ? values[i] : number; }
    ZetArithmeticStep::Side side() { return step ? std::move(step) : ZetArithmeticStep::Side(number); }
};

Real numberOf(double value)
{
    return {nullptr, value, {}};
}

Real elementsIn(const ZetEqnTile& tile)
{
    Real real = {std::make_unique<ZetSourceStep>(tile), 0.0, {}};
    for (const std::complex<double>& value : elementsOf(tile)) {
        real.values.push_back(value.real());
    }
    return real;
}

double plain(ZetArithmetic op, double a, double b)
{
    return op == kAdd ? a + b : op == kSubtract ? a - b : op == kMultiply ? a * b : a / b;
}

/// a op b, of which at least one has a step.
Real combined(ZetArithmetic op, Real a, Real b)
{
    Real result;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        result.values.push_back(plain(op, a.at(i), b.at(i)));
    }
    result.step = ZetArithmeticStep::make(op, a.side(), b.side());
    return result;
}

void expectElements(const Real& real)
{
    EXPECT_EQ(real.step->type(), ZetDataType(ZetDataType::Double));
    EXPECT_TRUE(real.step->isDoubles());
    EXPECT_TRUE(real.step->needsBlock());
    EXPECT_FALSE(real.step->isInPlace());
    EXPECT_EQ(real.step->elementSize(), 8u);
    EXPECT_EQ(real.step->toSource(), nullptr);
    ASSERT_EQ(real.step->size(), real.size());
    expectSame(runsOf(*real.step, real.size()), Values(real.values.begin(), real.values.end()));
}

TEST_P(ZetTileStepRuns, oneOperatorOfEveryTwoTypes)
{
    for (const ZetDataType::Type left : kColumns) {
        const ZetPixelSource x(left, valuesOf(left, 600, 1));
        for (const ZetArithmetic op : kOperators) {
            SCOPED_TRACE(testing::Message() << "types " << left << " and number, operator " << op);
            expectElements(combined(op, elementsIn(x.tile), numberOf(0.3)));
            expectElements(combined(op, numberOf(-7.0), elementsIn(x.tile)));
        }
        for (const ZetDataType::Type right : kColumns) {
            const ZetPixelSource y(right, valuesOf(right, 599, 4), 1, 3);
            for (const ZetArithmetic op : kOperators) {
                SCOPED_TRACE(testing::Message() << "types " << left << " " << right << " operator " << op);
                Real result = combined(op, elementsIn(x.tile), elementsIn(y.tile));
                expectElements(result);
                EXPECT_EQ(result.step->operations(), 1);
                EXPECT_TRUE(result.step->isOfRunsInPlace());
                EXPECT_EQ(result.step->spareBlocks(), 0u);
            }
        }
    }
}

/// What an operand of a chain may be.
enum Kind { Number, Doubles, Gathered, Bytes, Misaligned, KindCount };

bool isRunOfDoubles(Kind kind)
{
    return kind == Number || kind == Doubles || kind == Gathered;
}

/// An operand of each kind.
class Operands
{
public:
    explicit Operands(unsigned long phase)
        : m_number(phase == 0 ? 0.1 : 3.0 * static_cast<double>(phase)),
          m_doubles(ZetDataType::Double, valuesOf(ZetDataType::Double, 70 + phase, phase)),
          m_gathered(ZetDataType::Float, valuesOf(ZetDataType::Float, 73, 3 * phase), 2),
          m_bytes(ZetDataType::U8, valuesOf(ZetDataType::U8, 80 - phase, phase + 1)),
          m_misaligned(ZetDataType::Double, valuesOf(ZetDataType::Double, 69, 5 * phase), 1, 4)
    {}

    Real make(Kind kind) const
    {
        const ZetEqnTile* const tiles[] = {nullptr, &m_doubles.tile, &m_gathered.tile, &m_bytes.tile,
                                           &m_misaligned.tile};
        return kind == Number ? numberOf(m_number) : elementsIn(*tiles[kind]);
    }

private:
    double m_number;
    ZetPixelSource m_doubles;
    ZetPixelSource m_gathered;
    ZetPixelSource m_bytes;
    ZetPixelSource m_misaligned;
};

TEST_P(ZetTileStepRuns, chainsOfEveryTwoOperators)
{
    const Operands xs(0);
    const Operands ys(1);
    const Operands zs(2);
    for (int kinds = 0; kinds < KindCount * KindCount * KindCount; ++kinds) {
        const Kind x = static_cast<Kind>(kinds % KindCount);
        const Kind y = static_cast<Kind>(kinds / KindCount % KindCount);
        const Kind z = static_cast<Kind>(kinds / KindCount / KindCount);
        if (x == Number && y == Number) {
            continue;  // that is a number
        }
        const bool isChained = isRunOfDoubles(x) && isRunOfDoubles(y) && isRunOfDoubles(z);
        for (const ZetArithmetic first : kOperators) {
            for (const ZetArithmetic second : kOperators) {
                SCOPED_TRACE(testing::Message() << "kinds " << x << y << z << ", operators " << first << second);
                const auto inner = [&] { return combined(first, xs.make(x), ys.make(y)); };
                const Real left = combined(second, inner(), zs.make(z));
                expectElements(left);
                EXPECT_EQ(left.step->operations(), isChained ? 1 : 2);
                const Real right = combined(second, zs.make(z), inner());
                expectElements(right);
                EXPECT_EQ(right.step->operations(), isChained ? 1 : 2);
            }
        }
    }
}

TEST_P(ZetTileStepRuns, quotientsOfSumsAndDifferences)
{
    for (const ZetDataType::Type type : kColumns) {
        const ZetPixelSource x(type, valuesOf(type, 1030, 0));
        const ZetPixelSource y(type, valuesOf(type, 1100, 1), 1, 1);
        const ZetPixelSource z(type, valuesOf(type, 1029, 2));
        const ZetPixelSource w(type, valuesOf(type, 1030, 3), 1, 5);
        for (const ZetArithmetic first : kOperators) {
            for (const ZetArithmetic second : kOperators) {
                SCOPED_TRACE(testing::Message() << "type " << type << " operators " << first << " " << second);
                const Real quotient = combined(kDivide, combined(first, elementsIn(x.tile), elementsIn(y.tile)),
                                               combined(second, elementsIn(z.tile), elementsIn(w.tile)));
                expectElements(quotient);
                const bool areSums = first <= kSubtract && second <= kSubtract;
                EXPECT_EQ(quotient.step->operations(), areSums ? 1 : 3);
                EXPECT_EQ(quotient.step->isOfRunsInPlace(), areSums);
                // a product of the same is none
                expectElements(combined(kMultiply, combined(first, elementsIn(x.tile), elementsIn(y.tile)),
                                        combined(second, elementsIn(z.tile), elementsIn(w.tile))));
            }
        }
    }
}

TEST_P(ZetTileStepRuns, quotientsOfSeveralTypesOrWithNumbers)
{
    const ZetPixelSource bytes(ZetDataType::U8, valuesOf(ZetDataType::U8, 1030, 0));
    const ZetPixelSource words(ZetDataType::U16, valuesOf(ZetDataType::U16, 1030, 5));
    const ZetPixelSource doubles(ZetDataType::Double, valuesOf(ZetDataType::Double, 1030, 2));
    const auto operand = [&](char name) {
        return name == 'b'   ? elementsIn(bytes.tile)
               : name == 'w' ? elementsIn(words.tile)
               : name == 'd' ? elementsIn(doubles.tile)
                             : numberOf(3.0);
    };
    for (const char* const names : {"bbww", "bwbb", "bbbw", "wbbb", "ddbb", "bbdd", "bnbb", "nbbb", "bbnb", "dndd",
                                    "nddd", "dddn", "ddnd", "dnnd", "dddd", "wwww"}) {
        SCOPED_TRACE(names);
        expectElements(combined(kDivide, combined(kSubtract, operand(names[0]), operand(names[1])),
                                combined(kAdd, operand(names[2]), operand(names[3]))));
    }
}

/// A step of real or complex elements, and the elements that it has to have.
struct Complex
{
    ZetTileStepPtr step;
    Values values;  // one for a number
    bool isReal;

    const std::complex<double>& at(std::size_t i) const { return values[values.size() == 1 ? 0 : i]; }
};

// On the parts: a real operand counts as (x,0) in products and quotients, and touches only the real part
// in sums and differences.
std::complex<double> plain(ZetArithmetic op, const std::complex<double>& x, bool isXReal, const std::complex<double>& y,
                           bool isYReal)
{
    const double a = x.real();
    const double b = x.imag();
    const double c = y.real();
    const double d = y.imag();
    const double m = c * c + d * d;
    switch (op) {
        case kAdd:
            return {a + c, isXReal ? d : isYReal ? b : b + d};
        case kSubtract:
            return {a - c, isXReal ? -d : isYReal ? b : b - d};
        case kMultiply:
            return {a * c - b * d, a * d + b * c};
        default:
            return {(a * c + b * d) / m, (b * c - a * d) / m};
    }
}

Complex combined(ZetArithmetic op, Complex a, Complex b)
{
    Complex result = {nullptr, {}, false};
    for (std::size_t i = 0; i < std::min(a.step->size(), b.step->size()); ++i) {
        result.values.push_back(plain(op, a.at(i), a.isReal, b.at(i), b.isReal));
    }
    result.step = ZetComplexArithmeticStep::make(op, std::move(a.step), std::move(b.step));
    return result;
}

/// What an operand of complex arithmetic may be; the first four are complex.
enum ComplexKind { Pairs, PairsOfFloats, GatheredPairs, ComplexNumber, Reals, RealNumber, ComplexKindCount };

class ComplexOperands
{
public:
    explicit ComplexOperands(unsigned long phase)
        : m_number(1.5, static_cast<double>(phase) - 3.0),
          m_pairs(ZetDataType::ComplexDouble, valuesOf(ZetDataType::ComplexDouble, 70 + phase, phase), 1, phase),
          m_floats(ZetDataType::ComplexFloat, valuesOf(ZetDataType::ComplexFloat, 71, 2 * phase)),
          m_gathered(ZetDataType::ComplexDouble, valuesOf(ZetDataType::ComplexDouble, 69, 3 * phase), 2),
          m_reals(ZetDataType::Double, valuesOf(ZetDataType::Double, 72, phase))
    {}

    Complex make(ComplexKind kind) const
    {
        if (kind == ComplexNumber) {
            return {std::make_unique<ZetNumberStep>(m_number), {m_number}, false};
        }
        if (kind == RealNumber) {
            return {std::make_unique<ZetNumberStep>(m_number.imag()), {m_number.imag()}, true};
        }
        const ZetEqnTile& tile = kind == Pairs           ? m_pairs.tile
                                 : kind == PairsOfFloats ? m_floats.tile
                                 : kind == GatheredPairs ? m_gathered.tile
                                                         : m_reals.tile;
        return {std::make_unique<ZetSourceStep>(tile), elementsOf(tile), kind == Reals};
    }

private:
    std::complex<double> m_number;
    ZetPixelSource m_pairs;
    ZetPixelSource m_floats;
    ZetPixelSource m_gathered;
    ZetPixelSource m_reals;
};

void expectElements(const Complex& complex)
{
    EXPECT_EQ(complex.step->type(), ZetDataType(ZetDataType::ComplexDouble));
    EXPECT_TRUE(complex.step->isComplexDouble());
    EXPECT_TRUE(complex.step->needsBlock());
    EXPECT_EQ(complex.step->elementSize(), 16u);
    ASSERT_EQ(complex.step->size(), complex.values.size());
    expectSame(runsOf(*complex.step, complex.values.size()), complex.values);
}

TEST_P(ZetTileStepRuns, chainsOfComplexElements)
{
    const ComplexOperands xs(0);
    const ComplexOperands ys(1);
    const ComplexOperands zs(2);
    for (int kinds = 0; kinds < ComplexKindCount * ComplexKindCount * ComplexKindCount; ++kinds) {
        const ComplexKind x = static_cast<ComplexKind>(kinds % ComplexKindCount);
        const ComplexKind y = static_cast<ComplexKind>(kinds / ComplexKindCount % ComplexKindCount);
        const ComplexKind z = static_cast<ComplexKind>(kinds / ComplexKindCount / ComplexKindCount);
        const auto isNumber = [](ComplexKind kind) { return kind == ComplexNumber || kind == RealNumber; };
        if ((x >= Reals && y >= Reals) || (isNumber(x) && isNumber(y))) {
            continue;
        }
        const bool isChained = x < Reals && y < Reals && z < Reals;
        for (const ZetArithmetic first : kOperators) {
            for (const ZetArithmetic second : kOperators) {
                SCOPED_TRACE(testing::Message() << "kinds " << x << y << z << ", operators " << first << second);
                const auto inner = [&] { return combined(first, xs.make(x), ys.make(y)); };
                const Complex left = combined(second, inner(), zs.make(z));
                expectElements(left);
                EXPECT_EQ(left.step->operations(), isChained ? 1 : 2);
                const Complex right = combined(second, zs.make(z), inner());
                expectElements(right);
                EXPECT_EQ(right.step->operations(), isChained ? 1 : 2);
            }
        }
    }
}

/// Trees of many operations.
enum Shape { LeftDeep, RightDeep, Balanced, Random, ShapeCount };

/// combine(a, b) over \p count leaves.
template <class Leaf, class Combine>
auto treeOf(Shape shape, int count, ZetRandom& random, const Leaf& leaf, const Combine& combine)
{
    if (count == 1) {
        return leaf();
    }
    const int left = shape == LeftDeep    ? count - 1
                     : shape == RightDeep ? 1
                     : shape == Balanced  ? count / 2
                                          : random.between(1, count - 1);
    auto first = treeOf(shape, left, random, leaf, combine);
    auto second = treeOf(shape, count - left, random, leaf, combine);
    return combine(std::move(first), std::move(second));
}

const int kLeaves[] = {2, 3, 4, 5, 16, 33};

// Elements that show where a block was written over: all differ, and stay far from the limits.
Values distinct(unsigned long size, double first)
{
    Values values;
    for (unsigned long i = 0; i < size; ++i) {
        const double x = first + static_cast<double>(i) / 1024.0;
        values.emplace_back(x, -x);
    }
    return values;
}

TEST_P(ZetTileStepRuns, blocksOfRealTreesSuffice)
{
    const ZetPixelSource doubles(ZetDataType::Double, distinct(600, 1.0));
    const ZetPixelSource gathered(ZetDataType::Double, distinct(590, 3.0), 2);
    const ZetPixelSource floats(ZetDataType::Float, distinct(580, 5.0), 3);
    const ZetPixelSource bytes(ZetDataType::U8, valuesOf(ZetDataType::U8, 610));
    const ZetEqnTile* const tiles[] = {&doubles.tile, &gathered.tile, &floats.tile, &bytes.tile};
    for (int kinds = 1; kinds < 1 << std::size(tiles); ++kinds) {
        std::vector<const ZetEqnTile*> leaves;
        for (std::size_t i = 0; i < std::size(tiles); ++i) {
            if (kinds >> i & 1) {
                leaves.push_back(tiles[i]);
            }
        }
        for (int shape = 0; shape < ShapeCount; ++shape) {
            for (const int count : kLeaves) {
                SCOPED_TRACE(testing::Message() << "kinds " << kinds << " shape " << shape << " of " << count);
                ZetRandom random(20240229, static_cast<std::uint64_t>(kinds * 1000 + shape * 100 + count));
                const Real tree = treeOf(
                    static_cast<Shape>(shape), count, random, [&] { return elementsIn(*random.oneOf(leaves)); },
                    [&](Real a, Real b) { return combined(random.oneOf(kOperators), std::move(a), std::move(b)); });
                expectElements(tree);
                EXPECT_TRUE(shape != LeftDeep || tree.step->spareBlocks() <= 3u) << tree.step->spareBlocks();
            }
        }
    }
}

TEST_P(ZetTileStepRuns, blocksOfComplexTreesSuffice)
{
    const ZetPixelSource pairs(ZetDataType::ComplexDouble, distinct(600, 1.0));
    const ZetPixelSource gathered(ZetDataType::ComplexDouble, distinct(590, 3.0), 2);
    const ZetPixelSource floats(ZetDataType::ComplexFloat, distinct(580, 5.0));
    const ZetEqnTile* const tiles[] = {&pairs.tile, &gathered.tile, &floats.tile};
    for (int shape = 0; shape < ShapeCount; ++shape) {
        for (const int count : kLeaves) {
            SCOPED_TRACE(testing::Message() << "shape " << shape << " of " << count);
            ZetRandom random(7, static_cast<std::uint64_t>(shape * 100 + count));
            const Complex tree = treeOf(
                static_cast<Shape>(shape), count, random,
                [&] {
                    const ZetEqnTile& tile = *random.oneOf(tiles);
                    return Complex{std::make_unique<ZetSourceStep>(tile), elementsOf(tile), false};
                },
                [&](Complex a, Complex b) { return combined(random.oneOf(kOperators), std::move(a), std::move(b)); });
            expectElements(tree);
            EXPECT_TRUE(shape != LeftDeep || tree.step->spareBlocks() <= 2u) << tree.step->spareBlocks();
        }
    }
}

/// The elements that a step gives, for steps between elements of several sizes.
struct Mixed
{
    ZetTileStepPtr step;
    std::vector<double> values;
};

/// Whole elements from 0 to 255, as a type of the kernel tables.
Mixed wholeMix(const ZetEqnTile& tile)
{
    Mixed mixed = {std::make_unique<ZetSourceStep>(tile), {}};
    for (const std::complex<double>& value : elementsOf(tile)) {
        mixed.values.push_back(value.real());
    }
    return mixed;
}

double readAt(const void* run, ZetDataType::Type type, std::size_t i)
{
    const auto get = [=](auto element) {
        std::memcpy(&element, static_cast<const char*>(run) + i * sizeof element, sizeof element);
        return static_cast<double>(element);
    };
    return type == ZetDataType::U8      ? get(static_cast<unsigned char>(0))
           : type == ZetDataType::U16   ? get(static_cast<unsigned short>(0))
           : type == ZetDataType::Float ? get(0.0F)
                                        : get(0.0);
}

/// (x + 2 y + 3 z + 4 w) mod 251 as one of several types, of up to four operands.
Mixed mixedOf(ZetDataType::Type type, std::vector<Mixed>& operands)
{
    internal::ZetOperands steps;
    std::vector<ZetDataType::Type> types;
    Mixed mixed = {nullptr, std::vector<double>(operands[0].values.size())};
    for (std::size_t k = 0; k < operands.size(); ++k) {
        for (std::size_t i = 0; i < mixed.values.size(); ++i) {
            mixed.values[i] = std::fmod(mixed.values[i] + static_cast<double>(k + 1) * operands[k].values[i], 251.0);
        }
        types.push_back(kColumns[operands[k].step->column()]);
        steps[k] = std::move(operands[k].step);
    }
    mixed.step = makeLoopStep(type, std::move(steps), [=](const ZetRuns& in, void* out, unsigned long count) {
        for (unsigned long i = 0; i < count; ++i) {
            double sum = 0.0;
            for (std::size_t k = 0; k < types.size(); ++k) {
                sum = std::fmod(sum + static_cast<double>(k + 1) * readAt(in[k], types[k], i), 251.0);
            }
            const std::size_t elementSize = static_cast<std::size_t>(ZetDataType(type).size());
            writeElement(type, sum, static_cast<unsigned char*>(out) + i * elementSize);
        }
    });
    return mixed;
}

Mixed randomMix(int depth, ZetRandom& random, const std::vector<const ZetEqnTile*>& tiles)
{
    if (depth == 0 || random.chance(20)) {
        return wholeMix(*random.oneOf(tiles));
    }
    static const ZetDataType::Type types[] = {ZetDataType::U8, ZetDataType::U16, ZetDataType::Float,
                                              ZetDataType::Double};
    std::vector<Mixed> operands;
    for (int left = random.between(1, 4); left > 0; --left) {
        operands.push_back(randomMix(depth - 1, random, tiles));
    }
    return mixedOf(random.oneOf(types), operands);
}

TEST(ZetTileStep, blocksOfElementsOfSeveralSizesSuffice)
{
    Values whole;
    for (unsigned long i = 0; i < 600; ++i) {
        whole.emplace_back(static_cast<double>(i * 37 % 251));
    }
    const ZetPixelSource bytes(ZetDataType::U8, whole);
    const ZetPixelSource words(ZetDataType::U16, whole, 1, 1);
    const ZetPixelSource floats(ZetDataType::Float, whole, 2);
    const ZetPixelSource doubles(ZetDataType::Double, whole, -1);
    const std::vector<const ZetEqnTile*> tiles = {&bytes.tile, &words.tile, &floats.tile, &doubles.tile};
    for (std::uint64_t number = 0; number < 200; ++number) {
        SCOPED_TRACE(number);
        ZetRandom random(11, number);
        const Mixed tree = randomMix(3, random, tiles);
        expectSame(runsOf(*tree.step, 600), Values(tree.values.begin(), tree.values.end()));
    }
}

TEST(ZetTileStep, theSizeIsThatOfTheSmallestOperand)
{
    const ZetEqnTile three = ownTile(ZetDataType::Double, {1.0, 2.0, 3.0});
    const ZetEqnTile two = ownTile(ZetDataType::U8, {1.0, 2.0});
    const ZetEqnTile none = ownTile(ZetDataType::U8, {});
    const auto size = [](const ZetEqnTile& a, const ZetEqnTile& b) {
        return combined(kAdd, elementsIn(a), elementsIn(b)).step->size();
    };
    EXPECT_EQ(size(three, two), 2u);
    EXPECT_EQ(size(two, three), 2u);
    EXPECT_EQ(size(three, three), 3u);
    EXPECT_EQ(size(three, none), 0u);
    EXPECT_EQ(combined(kAdd, elementsIn(three), numberOf(1.0)).step->size(), 3u);
    EXPECT_EQ(combined(kMultiply, combined(kAdd, elementsIn(three), elementsIn(three)), elementsIn(two)).step->size(),
              2u);
}

/// A tile in a value that only the step holds.
ZetTileStepPtr handedOver(ZetDataType::Type type, unsigned long size, const ZetEqnTile** tile)
{
    auto step = std::make_unique<ZetSourceStep>(ZetVariant(ownTile(type, Values(size, 1.0))));
    *tile = &step->tile();
    return step;
}

TEST(ZetTileStep, lendersAndFirstTiles)
{
    const ZetEqnTile* a = nullptr;
    const ZetEqnTile* b = nullptr;
    const ZetEqnTile* c = nullptr;
    const auto bytes = [](const ZetEqnTile** tile) { return handedOver(ZetDataType::U8, 6, tile); };
    const auto doubles = [](const ZetEqnTile** tile) { return handedOver(ZetDataType::Double, 6, tile); };
    const auto make = [](ZetTileStepPtr x, ZetTileStepPtr y, ZetTileStepPtr z) {
        ZetTileStepPtr inner = ZetArithmeticStep::make(kAdd, std::move(x), std::move(y));
        return ZetArithmeticStep::make(kMultiply, std::move(inner), std::move(z));
    };
    {
        const ZetTileStepPtr step = make(doubles(&a), doubles(&b), doubles(&c));
        EXPECT_EQ(step->firstTile(), a);
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), a) << "the first of those that could";
        EXPECT_EQ(step->lender(ZetDataType::Double, 5), nullptr) << "another size";
        EXPECT_EQ(step->lender(ZetDataType::Double, 7), nullptr);
        EXPECT_EQ(step->lender(ZetDataType::U8, 48), nullptr) << "another type";
        EXPECT_EQ(step->lender(ZetDataType::ComplexDouble, 3), nullptr);
    }
    {
        const ZetTileStepPtr step = make(bytes(&a), doubles(&b), doubles(&c));
        EXPECT_EQ(step->firstTile(), a);
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), b);
        EXPECT_EQ(step->lender(ZetDataType::U8, 6), a);
    }
    {
        const ZetTileStepPtr step = make(bytes(&a), bytes(&b), doubles(&c));
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), c);
    }
    {
        const ZetTileStepPtr step = make(bytes(&a), bytes(&b), bytes(&c));
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), nullptr);
    }
    {
        // a number is no tile
        const ZetTileStepPtr step = ZetArithmeticStep::make(kSubtract, 1.0, doubles(&a));
        EXPECT_EQ(step->firstTile(), a);
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), a);
        const ZetTileStepPtr complex = ZetComplexArithmeticStep::make(
            kAdd, std::make_unique<ZetNumberStep>(std::complex<double>(1.0, 1.0)), doubles(&b));
        EXPECT_EQ(complex->firstTile(), b);
    }
    {
        // the loop of a chain reads the operands of the inner operator first
        ZetTileStepPtr sum = ZetArithmeticStep::make(kAdd, doubles(&a), doubles(&b));
        const ZetTileStepPtr step = ZetArithmeticStep::make(kMultiply, doubles(&c), std::move(sum));
        EXPECT_EQ(step->operations(), 1);
        EXPECT_EQ(step->firstTile(), a);
        EXPECT_EQ(step->lender(ZetDataType::Double, 6), a);
    }
}

TEST(ZetTileStep, onlyWhatNobodyElseHoldsIsLent)
{
    const ZetDataType type = ZetDataType::Double;
    const ZetEqnTile tile = ownTile(type.type(), {1.0, 2.0});
    EXPECT_EQ(ZetSourceStep(tile).lender(type, 2), nullptr) << "a caller's tile";
    EXPECT_EQ(ZetSourceStep(ZetVariant(tile)).lender(type, 2), nullptr) << "a tile whose buffer is held";
    const ZetVariant value(ownTile(type.type(), {1.0, 2.0}));
    const ZetVariant copy = value;
    EXPECT_EQ(ZetSourceStep(value).lender(type, 2), nullptr) << "a value that is held";
    EXPECT_EQ(ZetSourceStep(ZetVariant(ZetEqnTile())).lender(ZetDataType(), 0), nullptr) << "nothing to lend";

    const ZetSourceStep lending(ZetVariant(ownTile(type.type(), {1.0, 2.0})));
    EXPECT_EQ(lending.lender(type, 2), &lending.tile());
    const ZetEqnTile held = lending.tile();
    EXPECT_EQ(lending.lender(type, 2), nullptr) << "now somebody holds it";
}

// A loan ends with the step: the tile that was not used lends no more.
TEST(ZetTileStep, aLoanLastsAsLongAsItsStep)
{
    const ZetVariant value(ownTile(ZetDataType::Double, {1.0, 2.0}));
    const ZetEqnTile& tile = *static_cast<const ZetEqnTile*>(value.data());
    {
        const ZetSourceStep step(value);
        EXPECT_EQ(step.lender(ZetDataType::Double, 2), &tile);
    }
    const ZetSourceStep other(tile);
    EXPECT_EQ(other.lender(ZetDataType::Double, 2), nullptr);
    expectTile(tile, ZetDataType::Double, {1.0, 2.0});
}

}  // namespace
}  // namespace test
}  // namespace zet
