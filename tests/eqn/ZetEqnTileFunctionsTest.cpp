#include <cmath>
#include <complex>
#include <functional>

#include <gtest/gtest.h>

#include <zet/ZetEqnTile>

#include "eqn/ZetTileAccess"
#include "support/ZetEachKernelBuild"
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
using test::valuesOf;
using test::ZetTilePixels;
using Complex = std::complex<double>;

class ZetEqnTileFunctions : public test::ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetEqnTileFunctions);

const ZetDataType::Type kReal[] = {ZetDataType::I8,  ZetDataType::U8,  ZetDataType::I16,   ZetDataType::U16,
                                   ZetDataType::I32, ZetDataType::U32, ZetDataType::Float, ZetDataType::Double};
const ZetDataType::Type kNeverServed[] = {ZetDataType::I64, ZetDataType::U64, ZetDataType::ComplexFloat};

Complex quotient(Complex a, Complex b)
{
    const double m = b.real() * b.real() + b.imag() * b.imag();
    return {(a.real() * b.real() + a.imag() * b.imag()) / m, (a.imag() * b.real() - a.real() * b.imag()) / m};
}

double sincOf(double x)
{
    return std::abs(x) > 2.220446049250313e-16 ? std::sin(x) / x : 1.0;
}

/// Add a half away from zero, and cut to 64 bits as the processor does.
double roundOf(double x)
{
    const double sum = x < 0 ? x - 0.5 : x + 0.5;
    if (!(sum >= -9223372036854775808.0 && sum < 9223372036854775808.0)) {
        return -9223372036854775808.0;
    }
    return static_cast<double>(static_cast<long>(sum));
}

using TileFunction = std::function<ZetEqnTile(const ZetEqnTile&)>;
using RealFunction = std::function<double(double)>;
using ComplexFunction = std::function<Complex(Complex)>;

struct FunctionRow
{
    const char* name;
    TileFunction tile;
    RealFunction real;
    ComplexFunction complex;  // none where a complex tile is not served
};

#define BOTH(Name)                                                                                                     \
    {                                                                                                                  \
#Name, [](const ZetEqnTile&                                                                                    \
                      t) { return t.Name(); },                                                                         \
                                            [](double x) { return std::Name(x); },                                     \
                                                                                [](Complex z) { return std::Name(z); } \
    }
#define TILE(Call) [](const ZetEqnTile& t) { return t.Call; }
#define REAL(Expression) [](double x) { return Expression; }

const FunctionRow kFunctions[] = {
    // real functions of real tiles, complex functions of complex ones
    BOTH(sin),
    BOTH(cos),
    BOTH(tan),
    BOTH(asin),
    BOTH(acos),
    BOTH(atan),
    BOTH(sinh),
    BOTH(cosh),
    BOTH(tanh),
    BOTH(exp),
    BOTH(log),
    BOTH(log10),
    BOTH(sqrt),
    {"sinc", TILE(sinc()), sincOf,
     [](Complex z) { return std::abs(z) > 2.220446049250313e-16 ? quotient(std::sin(z), z) : Complex(1.0); }},
    {"abs", TILE(abs()), REAL(std::fabs(x)), [](Complex z) { return Complex(std::hypot(z.real(), z.imag()), 0.0); }},
    // functions of real tiles only
    {"round", TILE(round()), roundOf, nullptr},
    {"trunc", TILE(trunc()), REAL(std::trunc(x)), nullptr},
    {"floor", TILE(floor()), REAL(std::floor(x)), nullptr},
    {"ceil", TILE(ceil()), REAL(std::ceil(x)), nullptr},
    {"y0", TILE(y0()), REAL(::y0(x)), nullptr},
    {"y1", TILE(y1()), REAL(::y1(x)), nullptr},
    {"j0", TILE(j0()), REAL(::j0(x)), nullptr},
    {"j1", TILE(j1()), REAL(::j1(x)), nullptr},
    {"yn(2)", TILE(yn(2)), REAL(::yn(2, x)), nullptr},
    {"jn(3)", TILE(jn(3)), REAL(::jn(3, x)), nullptr},
    {"jn(-1)", TILE(jn(-1)), REAL(::jn(-1, x)), nullptr},
    {"logb(2)", TILE(logb(2.0)), REAL(std::log(x) / std::log(2.0)), nullptr},
    {"logb(1)", TILE(logb(1.0)), REAL(std::log(x) / 0.0), nullptr},
    {"min(2)", TILE(min(2.0)), REAL(2.0 < x ? 2.0 : x), nullptr},
    {"max(2)", TILE(max(2.0)), REAL(2.0 > x ? 2.0 : x), nullptr},
    {"min(NaN)", TILE(min(kNan)), REAL(x), nullptr},
    {"max(NaN)", TILE(max(kNan)), REAL(x), nullptr},
    {"clip(-1,2)", TILE(clip(-1.0, 2.0)), REAL(x<-1.0 ? -1.0 : x> 2.0 ? 2.0 : x), nullptr},
    {"clip(2,-1)", TILE(clip(2.0, -1.0)), REAL(x<2.0 ? 2.0 : x> - 1.0 ? -1.0 : x), nullptr},
    {"clip(NaN,NaN)", TILE(clip(kNan, kNan)), REAL(x), nullptr},
    {"clipmin(1)", TILE(clipmin(1.0)), REAL(x < 1.0 ? 1.0 : x), nullptr},
    {"clipmax(1)", TILE(clipmax(1.0)), REAL(x > 1.0 ? 1.0 : x), nullptr},
};

TEST_P(ZetEqnTileFunctions, ofOneTile)
{
    for (const FunctionRow& row : kFunctions) {
        for (const ZetDataType::Type type : kReal) {
            for (const long increment : {1L, 2L, 0L}) {
                SCOPED_TRACE(testing::Message() << row.name << " of type " << type << " increment " << increment);
                const ZetTilePixels pixels(type, valuesOf(type, 600), increment, 1);
                Values values;
                for (unsigned long i = 0; i < 600; ++i) {
                    values.push_back(row.real(elementAt(pixels.tile, i).real()));
                }
                expectTile(row.tile(pixels.tile), ZetDataType::Double, values);
            }
        }
        ZetEqnTile typed;
        typed.initialize(ZetDataType::U8, 0);
        expectTile(row.tile(typed), ZetDataType::Double, {});
        expectEmpty(row.tile(ZetEqnTile()));
        for (const ZetDataType::Type type : kNeverServed) {
            SCOPED_TRACE(testing::Message() << row.name << " of type " << type);
            expectEmpty(row.tile(ownTile(type, {1.0, 2.0})));
        }
    }
}

TEST_P(ZetEqnTileFunctions, ofOneComplexTile)
{
    for (const FunctionRow& row : kFunctions) {
        for (const long increment : {1L, 2L}) {
            SCOPED_TRACE(testing::Message() << row.name << " increment " << increment);
            const ZetTilePixels pixels(ZetDataType::ComplexDouble, valuesOf(ZetDataType::ComplexDouble, 600), increment,
                                       1);
            if (!row.complex) {
                expectEmpty(row.tile(pixels.tile));
                continue;
            }
            Values values;
            for (unsigned long i = 0; i < 600; ++i) {
                values.push_back(row.complex(elementAt(pixels.tile, i)));
            }
            expectTile(row.tile(pixels.tile), ZetDataType::ComplexDouble, values);
        }
    }
}

struct PartRow
{
    const char* name;
    TileFunction tile;
    std::function<double(Complex)> part;
};

const PartRow kParts[] = {
    {"real", TILE(real()), [](Complex z) { return z.real(); }},
    {"imag", TILE(imag()), [](Complex z) { return z.imag(); }},
    {"arg", TILE(arg()), [](Complex z) { return std::atan2(z.imag(), z.real()); }},
    {"norm", TILE(norm()), [](Complex z) { return z.real() * z.real() + z.imag() * z.imag(); }},
};

TEST_P(ZetEqnTileFunctions, partsAreDoubles)
{
    for (const PartRow& row : kParts) {
        for (const ZetDataType::Type type : {ZetDataType::I8, ZetDataType::U16, ZetDataType::U32, ZetDataType::Float,
                                             ZetDataType::Double, ZetDataType::ComplexDouble}) {
            for (const long increment : {1L, 3L}) {
                SCOPED_TRACE(testing::Message() << row.name << " of type " << type);
                const ZetTilePixels pixels(type, valuesOf(type, 600), increment);
                Values values;
                for (unsigned long i = 0; i < 600; ++i) {
                    values.push_back(row.part(elementAt(pixels.tile, i)));
                }
                expectTile(row.tile(pixels.tile), ZetDataType::Double, values);
            }
        }
        for (const ZetDataType::Type type : kNeverServed) {
            expectEmpty(row.tile(ownTile(type, {1.0})));
        }
        expectEmpty(row.tile(ZetEqnTile()));
    }
    // the phase of a real element goes by its sign, that of a zero too
    const double pi = 3.141592653589793;
    expectTile(ownTile(ZetDataType::Double, {1.0, -1.0, 0.0, -0.0}).arg(), ZetDataType::Double, {0.0, pi, 0.0, pi});
}

TEST_P(ZetEqnTileFunctions, conj)
{
    expectTile(ownTile(ZetDataType::I8, {1.0, -2.0}).conj(), ZetDataType::ComplexDouble, {{1.0, 0.0}, {-2.0, 0.0}});
    expectTile(ownTile(ZetDataType::Float, {-0.0}).conj(), ZetDataType::ComplexDouble, {{-0.0, 0.0}});
    expectTile(ownTile(ZetDataType::ComplexDouble, {{1.0, 2.0}, {1.0, 0.0}}).conj(), ZetDataType::ComplexDouble,
               {{1.0, -2.0}, {1.0, -0.0}});
    for (const ZetDataType::Type type : kNeverServed) {
        expectEmpty(ownTile(type, {1.0}).conj());
    }
    expectEmpty(ZetEqnTile().conj());
}

TEST_P(ZetEqnTileFunctions, pow)
{
    expectTile(ownTile(ZetDataType::I32, {3.0, -4.0}).pow(2.0), ZetDataType::Double, {9.0, 16.0});
    struct Row
    {
        double p;
        std::function<double(double)> power;
    };
    const Row rows[] = {
        // whole exponents multiply, squares from the lowest bit up
        {0.0, REAL((static_cast<void>(x), 1.0))},
        {1.0, REAL(x)},
        {2.0, REAL(x * x)},
        {3.0, REAL(x * (x * x))},
        {7.0, REAL((x * (x * x)) * ((x * x) * (x * x)))},
        {-1.0, REAL(1.0 / x)},
        {-2.0, REAL(1.0 / (x * x))},
        // others are left to the platform
        {0.5, REAL(std::pow(x, 0.5))},
        {2.5, REAL(std::pow(x, 2.5))},
        {-0.5, REAL(std::pow(x, -0.5))},
        {1e300, REAL(std::pow(x, 1e300))},
        {2147483648.0, REAL(std::pow(x, 2147483648.0))},
        {kInf, REAL(std::pow(x, kInf))},
        {kNan, REAL(std::pow(x, kNan))},
    };
    for (const Row& row : rows) {
        for (const ZetDataType::Type type : {ZetDataType::I8, ZetDataType::Double}) {
            SCOPED_TRACE(row.p);
            const ZetTilePixels pixels(type, valuesOf(type, 40), 2);
            Values values;
            for (unsigned long i = 0; i < 40; ++i) {
                values.push_back(row.power(elementAt(pixels.tile, i).real()));
            }
            expectTile(pixels.tile.pow(row.p), ZetDataType::Double, values);
        }
    }
    // the lowest int counts as whole
    expectTile(ownTile(ZetDataType::Double, {1.0, -1.0, 2.0}).pow(-2147483648.0), ZetDataType::Double, {1.0, 1.0, 0.0});

    // not known to the compiler, which would compute the powers more exactly than the platform does
    volatile double re = 1.5;
    const Complex z(re, -2.0);
    expectTile(ownTile(ZetDataType::ComplexDouble, {z}).pow(2.5), ZetDataType::ComplexDouble,
               {std::pow(z, Complex(2.5))});
    expectTile(ownTile(ZetDataType::ComplexDouble, {z}).pow(2.0), ZetDataType::ComplexDouble,
               {std::pow(z, Complex(2.0))});
    expectEmpty(ownTile(ZetDataType::ComplexFloat, {z}).pow(2.0));
    expectEmpty(ownTile(ZetDataType::U64, {1.0}).pow(2.0));
    expectEmpty(ZetEqnTile().pow(2.0));
}

TEST_P(ZetEqnTileFunctions, wholePowersOfManyElements)
{
    const Values values = valuesOf(ZetDataType::Double, 1300);
    Values fifth;
    Values invertedCube;
    for (const Complex& value : values) {
        const double x = value.real();
        fifth.push_back(x * ((x * x) * (x * x)));
        invertedCube.push_back(1.0 / (x * (x * x)));
    }
    expectTile(ownTile(ZetDataType::Double, values).pow(5.0), ZetDataType::Double, fifth);
    expectTile(ownTile(ZetDataType::Double, values).pow(-3.0), ZetDataType::Double, invertedCube);
    expectTile(ownTile(ZetDataType::Double, values).pow(0.0), ZetDataType::Double, Values(1300, Complex(1.0)));
}

TEST_P(ZetEqnTileFunctions, factorial)
{
    struct Row
    {
        double x;
        double factorial;
    };
    const Row rows[] = {
        {0.0, 1.0},
        {1.0, 1.0},
        {5.0, 120.0},
        {22.0, 1124000727777607680000.0},
        {170.0, 7.257415615307994e306},
        {171.0, 0.0},
        {-1.0, 0.0},
        // cut to an integer first
        {5.9, 120.0},
        {-0.9, 1.0},
        {170.9, 7.257415615307994e306},
        // what no small integer holds
        {4294967301.0, 0.0},
        {1e300, 0.0},
        {-1e300, 0.0},
        {kInf, 0.0},
        {kNan, 0.0},
    };
    for (const Row& row : rows) {
        expectTile(ownTile(ZetDataType::Double, {row.x}).factorial(), ZetDataType::Double, {row.factorial});
    }
    expectTile(ownTile(ZetDataType::U8, {170.0, 171.0, 3.0}).factorial(), ZetDataType::Double,
               {7.257415615307994e306, 0.0, 6.0});
    expectTile(ownTile(ZetDataType::I8, {-1.0, 4.0}).factorial(), ZetDataType::Double, {0.0, 24.0});
    for (const ZetDataType::Type type : kNeverServed) {
        expectEmpty(ownTile(type, {1.0}).factorial());
    }
    expectEmpty(ownTile(ZetDataType::ComplexDouble, {1.0}).factorial());
    expectEmpty(ZetEqnTile().factorial());
}

TEST_P(ZetEqnTileFunctions, factorialsAreProductsFromOne)
{
    Values arguments;
    Values products;
    double product = 1.0;
    for (int n = 0; n <= 170; ++n) {
        product *= n > 0 ? n : 1;
        arguments.emplace_back(n);
        products.emplace_back(product);
    }
    expectTile(ownTile(ZetDataType::U8, arguments).factorial(), ZetDataType::Double, products);
}

TEST_P(ZetEqnTileFunctions, examples)
{
    expectTile(ownTile(ZetDataType::I8, {-4.0, 4.0}).sqrt(), ZetDataType::Double, {kNan, 2.0});
    expectTile(ownTile(ZetDataType::Double, {-2.5, 2.5, 0.49999999999999994, -0.3, -0.0}).round(), ZetDataType::Double,
               {-3.0, 3.0, 1.0, 0.0, 0.0});
    expectTile(ownTile(ZetDataType::Double, {1e300, -1e300, kNan, 9223372036854774784.0}).round(), ZetDataType::Double,
               {-0x1p63, -0x1p63, -0x1p63, 9223372036854774784.0});
    expectTile(ownTile(ZetDataType::Double, {kNan, 0.0, 1e-16, 2.220446049250313e-16}).sinc(), ZetDataType::Double,
               {1.0, 1.0, 1.0, 1.0});
    expectTile(ownTile(ZetDataType::ComplexDouble, {{kNan, 0.0}, {0.0, 0.0}, {0.0, 1e-200}}).sinc(),
               ZetDataType::ComplexDouble, {{1.0, 0.0}, {1.0, 0.0}, {1.0, 0.0}});
    expectTile(ownTile(ZetDataType::ComplexDouble, {{3.0, -4.0}}).abs(), ZetDataType::ComplexDouble, {{5.0, 0.0}});
    expectTile(ownTile(ZetDataType::Float, {-1.0, 0.25, 3.0, kNan, -0.0}).clip(0.0, 1.0), ZetDataType::Double,
               {0.0, 0.25, 1.0, kNan, -0.0});
    expectEmpty(ownTile(ZetDataType::ComplexDouble, {1.0}).clip(0.0, 1.0));
    expectTile(ownTile(ZetDataType::U8, {0.0}).abs(), ZetDataType::Double, {0.0});
}

const ZetDataType::Type kAll[] = {
    ZetDataType::I8,      ZetDataType::U8,     ZetDataType::I16,          ZetDataType::U16,
    ZetDataType::I32,     ZetDataType::U32,    ZetDataType::I64,          ZetDataType::U64,
    ZetDataType::Float,   ZetDataType::Double, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble,
    ZetDataType::Invalid,
};

bool isServed(ZetDataType::Type type)
{
    return type != ZetDataType::I64 && type != ZetDataType::U64 && type != ZetDataType::Invalid;
}

TEST_P(ZetEqnTileFunctions, ofTwoTiles)
{
    for (const ZetDataType::Type a : kAll) {
        for (const ZetDataType::Type b : kAll) {
            for (const long increment : {1L, 2L}) {
                SCOPED_TRACE(testing::Message() << "types " << a << " and " << b << " increment " << increment);
                const ZetTilePixels left(a, valuesOf(a, 700), increment, 1);
                const ZetTilePixels right(b, valuesOf(b, 650, 3), increment);
                if (!isServed(a) || !isServed(b)) {
                    expectEmpty(left.tile.max(right.tile));
                    expectEmpty(left.tile.min(right.tile));
                    expectEmpty(ZetEqnTile::cmplx(left.tile, right.tile));
                    continue;
                }
                Values greater;
                Values smaller;
                Values pairs;
                for (unsigned long i = 0; i < 650; ++i) {
                    const double x = elementAt(left.tile, i).real();
                    const double y = elementAt(right.tile, i).real();
                    greater.push_back(y > x ? y : x);
                    smaller.push_back(y < x ? y : x);
                    pairs.emplace_back(x, y);
                }
                expectTile(left.tile.max(right.tile), ZetDataType::Double, greater);
                expectTile(left.tile.min(right.tile), ZetDataType::Double, smaller);
                expectTile(ZetEqnTile::cmplx(left.tile, right.tile), ZetDataType::ComplexDouble, pairs);
            }
        }
    }
}

TEST_P(ZetEqnTileFunctions, minAndMaxKeepTheLeftOneWhereTheyDoNotCompare)
{
    const ZetEqnTile a = ownTile(ZetDataType::Double, {kNan, 1.0, 0.0, -0.0});
    const ZetEqnTile b = ownTile(ZetDataType::Double, {1.0, kNan, -0.0, 0.0});
    expectTile(a.max(b), ZetDataType::Double, {kNan, 1.0, 0.0, -0.0});
    expectTile(a.min(b), ZetDataType::Double, {kNan, 1.0, 0.0, -0.0});
    ZetEqnTile typed;
    typed.initialize(ZetDataType::ComplexFloat, 0);
    expectTile(a.max(typed), ZetDataType::Double, {});
    expectTile(ZetEqnTile::cmplx(a, typed), ZetDataType::ComplexDouble, {});
}

TEST_P(ZetEqnTileFunctions, cmplxWithANumber)
{
    for (const ZetDataType::Type type : kReal) {
        const ZetTilePixels pixels(type, valuesOf(type, 600), 2);
        Values left;
        Values right;
        for (unsigned long i = 0; i < 600; ++i) {
            const double x = elementAt(pixels.tile, i).real();
            left.emplace_back(x, -0.5);
            right.emplace_back(-0.5, x);
        }
        expectTile(ZetEqnTile::cmplx(pixels.tile, -0.5), ZetDataType::ComplexDouble, left);
        expectTile(ZetEqnTile::cmplx(-0.5, pixels.tile), ZetDataType::ComplexDouble, right);
    }
    for (const ZetDataType::Type type :
         {ZetDataType::I64, ZetDataType::U64, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble}) {
        expectEmpty(ZetEqnTile::cmplx(ownTile(type, {1.0}), 1.0));
        expectEmpty(ZetEqnTile::cmplx(1.0, ownTile(type, {1.0})));
    }
    expectEmpty(ZetEqnTile::cmplx(ZetEqnTile(), 1.0));
}

TEST_P(ZetEqnTileFunctions, lendingChangesNoValue)
{
    for (const FunctionRow& row : kFunctions) {
        const Values values = valuesOf(ZetDataType::Double, 1300);
        ZetEqnTile lent = ownTile(ZetDataType::Double, values);
        const void* const block = lent.elements<void>();
        Values expected;
        for (const Complex& value : values) {
            expected.push_back(row.real(value.real()));
        }
        SCOPED_TRACE(row.name);
        const ZetEqnTile result = row.tile(*ZetTileLoan(lent));
        EXPECT_EQ(result.elements<void>(), block);
        expectTile(result, ZetDataType::Double, expected);
    }
}

}  // namespace
}  // namespace zet
