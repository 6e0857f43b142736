#include <zet/ZetEqnTile>

#include <complex>
#include <limits>

#include <gtest/gtest.h>

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

class ZetEqnTileArithmetic : public test::ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetEqnTileArithmetic);

const ZetDataType::Type kAll[] = {
    ZetDataType::I8,      ZetDataType::U8,     ZetDataType::I16,          ZetDataType::U16,
    ZetDataType::I32,     ZetDataType::U32,    ZetDataType::I64,          ZetDataType::U64,
    ZetDataType::Float,   ZetDataType::Double, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble,
    ZetDataType::Invalid,
};

bool isReal(ZetDataType::Type type)
{
    return type <= ZetDataType::U32 || type == ZetDataType::Float || type == ZetDataType::Double;
}

bool isServed(ZetDataType::Type type)
{
    return type != ZetDataType::I64 && type != ZetDataType::U64 && type != ZetDataType::Invalid;
}

double real(char op, double x, double y)
{
    return op == '+' ? x + y : op == '-' ? x - y : op == '*' ? x * y : x / y;
}

/// An operand: a complex number, or a real one that has no imaginary part at all.
struct Number
{
    Complex value;
    bool isComplex;
};

Complex complex(char op, const Number& x, const Number& y)
{
    const double a = x.value.real();
    const double b = x.isComplex ? x.value.imag() : 0.0;
    const double c = y.value.real();
    const double d = y.isComplex ? y.value.imag() : 0.0;
    const double ac = a * c;
    const double bd = b * d;
    const double ad = a * d;
    const double bc = b * c;
    switch (op) {
        case '+':
            return {a + c, !x.isComplex ? d : !y.isComplex ? b : b + d};
        case '-':
            return {a - c, !x.isComplex ? -d : !y.isComplex ? b : b - d};
        case '*':
            return {ac - bd, ad + bc};
        default: {
            const double cc = c * c;
            const double dd = d * d;
            return {(ac + bd) / (cc + dd), (bc - ad) / (cc + dd)};
        }
    }
}

ZetEqnTile apply(char op, const ZetEqnTile& a, const auto& b)
{
    return op == '+' ? a + b : op == '-' ? a - b : op == '*' ? a * b : a / b;
}

Values expected(char op, const ZetEqnTile& a, const ZetEqnTile& b, bool isComplex)
{
    Values values;
    for (unsigned long i = 0; i < std::min(a.size(), b.size()); ++i) {
        const Complex x = elementAt(a, i);
        const Complex y = elementAt(b, i);
        values.push_back(isComplex ? complex(op, {x, a.dataType().isComplex()}, {y, b.dataType().isComplex()})
                                   : real(op, x.real(), y.real()));
    }
    return values;
}

struct Shape
{
    long leftIncrement;
    unsigned long leftOffset;
    long rightIncrement;
    unsigned long rightOffset;
    unsigned long leftSize;
    unsigned long rightSize;
};

const Shape kShapes[] = {
    {1, 0, 1, 0, 700, 700},    // dense
    {1, 1, 1, 3, 611, 611},    // at any address
    {2, 0, 1, 0, 1100, 1100},  // strided on one side, on both, and standing still
    {1, 0, 3, 1, 513, 513},   {3, 0, 2, 0, 512, 512}, {0, 0, 1, 0, 600, 600},
    {1, 0, 0, 0, 3, 3},       {1, 0, 1, 0, 5, 3},  // the surplus is dropped
    {2, 0, 1, 0, 1, 900},
};

TEST_P(ZetEqnTileArithmetic, tileWithTile)
{
    for (const ZetDataType::Type a : kAll) {
        for (const ZetDataType::Type b : kAll) {
            for (const Shape& shape : kShapes) {
                const ZetTilePixels left(a, valuesOf(a, shape.leftSize), shape.leftIncrement, shape.leftOffset);
                const ZetTilePixels right(b, valuesOf(b, shape.rightSize, 3), shape.rightIncrement, shape.rightOffset);
                for (const char op : {'+', '-', '*', '/'}) {
                    SCOPED_TRACE(testing::Message() << "types " << a << " " << op << " " << b << ", increments "
                                                    << shape.leftIncrement << " " << shape.rightIncrement);
                    const ZetEqnTile result = apply(op, left.tile, right.tile);
                    if (!isServed(a) || !isServed(b)) {
                        expectEmpty(result);
                        continue;
                    }
                    const bool isComplex = !isReal(a) || !isReal(b);
                    expectTile(result, isComplex ? ZetDataType::ComplexDouble : ZetDataType::Double,
                               expected(op, left.tile, right.tile, isComplex));
                }
            }
        }
    }
}

TEST_P(ZetEqnTileArithmetic, everySizeUpToSeveralVectors)
{
    for (unsigned long size = 1; size <= 140; ++size) {
        SCOPED_TRACE(size);
        const ZetTilePixels bytes(ZetDataType::U8, valuesOf(ZetDataType::U8, size), 1, size % 5);
        const ZetTilePixels doubles(ZetDataType::Double, valuesOf(ZetDataType::Double, size, size), 1, size % 9);
        const ZetTilePixels pairs(ZetDataType::ComplexDouble, valuesOf(ZetDataType::ComplexDouble, size, size));
        expectTile(bytes.tile * doubles.tile, ZetDataType::Double, expected('*', bytes.tile, doubles.tile, false));
        expectTile(pairs.tile / bytes.tile, ZetDataType::ComplexDouble, expected('/', pairs.tile, bytes.tile, true));
    }
}

TEST_P(ZetEqnTileArithmetic, tileWithNumber)
{
    for (const ZetDataType::Type type : kAll) {
        for (const long increment : {1L, 2L, 0L}) {
            const ZetTilePixels pixels(type, valuesOf(type, 700), increment, 1);
            const ZetEqnTile& tile = pixels.tile;
            const bool isComplexTile = tile.dataType().isComplex();
            for (const double number : {3.0, -0.0, 0.1, kInf, kNan}) {
                for (const char op : {'+', '-', '*', '/'}) {
                    SCOPED_TRACE(testing::Message() << "type " << type << " " << op << " " << number);
                    const Complex z(number, -number * 2.0);
                    const ZetEqnTile withReal = apply(op, tile, number);
                    const ZetEqnTile withComplex = apply(op, tile, z);
                    if (!isReal(type) && type != ZetDataType::ComplexDouble) {
                        expectEmpty(withReal);
                        expectEmpty(withComplex);
                        continue;
                    }
                    Values reals;
                    Values complexes;
                    for (unsigned long i = 0; i < tile.size(); ++i) {
                        const Number x = {elementAt(tile, i), isComplexTile};
                        reals.push_back(isComplexTile ? complex(op, x, {number, false})
                                                      : real(op, x.value.real(), number));
                        complexes.push_back(complex(op, x, {z, true}));
                    }
                    expectTile(withReal, isComplexTile ? ZetDataType::ComplexDouble : ZetDataType::Double, reals);
                    expectTile(withComplex, ZetDataType::ComplexDouble, complexes);
                }
            }
        }
    }
}

TEST_P(ZetEqnTileArithmetic, numberOnTheLeftAndNegation)
{
    for (const ZetDataType::Type type : kAll) {
        const ZetTilePixels pixels(type, valuesOf(type, 700), 2);
        const ZetEqnTile& tile = pixels.tile;
        const bool isComplexTile = tile.dataType().isComplex();
        const Complex z(2.0, -3.0);
        SCOPED_TRACE(type);
        if (!isReal(type) && type != ZetDataType::ComplexDouble) {
            expectEmpty(5.0 - tile);
            expectEmpty(5.0 / tile);
            expectEmpty(z - tile);
            expectEmpty(z / tile);
            expectEmpty(-tile);
            continue;
        }
        Values results[5];
        for (unsigned long i = 0; i < tile.size(); ++i) {
            const Number x = {elementAt(tile, i), isComplexTile};
            results[0].push_back(isComplexTile ? complex('-', {5.0, false}, x) : 5.0 - x.value.real());
            results[1].push_back(isComplexTile ? complex('/', {5.0, false}, x) : 5.0 / x.value.real());
            results[2].push_back(complex('-', {z, true}, x));
            results[3].push_back(complex('/', {z, true}, x));
            results[4].push_back(isComplexTile ? -x.value : -x.value.real());
        }
        const ZetDataType::Type kind = isComplexTile ? ZetDataType::ComplexDouble : ZetDataType::Double;
        expectTile(5.0 - tile, kind, results[0]);
        expectTile(5.0 / tile, kind, results[1]);
        expectTile(z - tile, ZetDataType::ComplexDouble, results[2]);
        expectTile(z / tile, ZetDataType::ComplexDouble, results[3]);
        expectTile(-tile, kind, results[4]);
    }
}

TEST_P(ZetEqnTileArithmetic, examples)
{
    const ZetEqnTile bytes = ownTile(ZetDataType::U8, {200.0});
    expectTile(bytes + ownTile(ZetDataType::U8, {100.0}), ZetDataType::Double, {300.0});
    const ZetEqnTile zeros = ownTile(ZetDataType::Float, {0.0, 0.0, 2.0});
    expectTile(ownTile(ZetDataType::Float, {1.0, 0.0, 3.0}) / zeros, ZetDataType::Double, {kInf, kNan, 1.5});
    const ZetEqnTile complex = ownTile(ZetDataType::ComplexFloat, {{1.0, 2.0}});
    expectTile(complex + bytes, ZetDataType::ComplexDouble, {{201.0, 2.0}});
    expectEmpty(complex + 1.0);
    expectEmpty(bytes + ownTile(ZetDataType::U64, {1.0}));
    expectEmpty(ownTile(ZetDataType::I64, {1.0}) + bytes);

    // signs of zeros: integers are computed as doubles, and complex products keep their zeros
    expectTile(-ownTile(ZetDataType::U8, {0.0}), ZetDataType::Double, {-0.0});
    expectTile(ownTile(ZetDataType::U8, {0.0}) * -1.0, ZetDataType::Double, {-0.0});
    const ZetEqnTile z = ownTile(ZetDataType::ComplexDouble, {{-1.0, 0.0}, {kInf, 1.0}});
    expectTile(z * 0.0, ZetDataType::ComplexDouble, {{-0.0, 0.0}, {kNan, kNan}});
    expectTile(z - 1.0, ZetDataType::ComplexDouble, {{-2.0, 0.0}, {kInf, 1.0}});
    expectTile(1.0 - z, ZetDataType::ComplexDouble, {{2.0, -0.0}, {-kInf, -1.0}});
    // a quotient is not scaled
    expectTile(ownTile(ZetDataType::ComplexDouble, {{1e200, 0.0}}) / Complex(1e200, 0.0), ZetDataType::ComplexDouble,
               {{kNan, 0.0}});
    expectTile(z / 0.0, ZetDataType::ComplexDouble, {{kNan, kNan}, {kNan, kNan}});
}

TEST_P(ZetEqnTileArithmetic, tilesOfSizeZero)
{
    ZetEqnTile bytes;
    bytes.initialize(ZetDataType::U8, 0);
    ZetEqnTile complex;
    complex.initialize(ZetDataType::ComplexFloat, 0);
    const ZetEqnTile words = ownTile(ZetDataType::I16, {1.0, 2.0});
    expectTile(bytes + words, ZetDataType::Double, {});
    expectTile(words - bytes, ZetDataType::Double, {});
    expectTile(bytes * bytes, ZetDataType::Double, {});
    expectTile(complex * words, ZetDataType::ComplexDouble, {});
    expectTile(bytes + 1.0, ZetDataType::Double, {});
    expectTile(bytes + Complex(1.0, 1.0), ZetDataType::ComplexDouble, {});
    expectTile(1.0 / bytes, ZetDataType::Double, {});
    expectTile(-bytes, ZetDataType::Double, {});
    expectEmpty(ZetEqnTile() + words);
    expectEmpty(words + ZetEqnTile());
    expectEmpty(ZetEqnTile() + 1.0);
    expectEmpty(-ZetEqnTile());
}

template <class T>
void expectHelpers(void (*tiles)(const ZetEqnTile&, const ZetEqnTile&, ZetEqnTile&),
                   void (*left)(double, const ZetEqnTile&, ZetEqnTile&),
                   void (*right)(const ZetEqnTile&, double, ZetEqnTile&), char op)
{
    const ZetTilePixels a(ZetDataType::Double, valuesOf(ZetDataType::Double, 600), 2);
    const ZetTilePixels b(ZetDataType::Double, valuesOf(ZetDataType::Double, 600, 5));
    Values results[3];
    for (unsigned long i = 0; i < 600; ++i) {
        const double x = elementAt(a.tile, i).real();
        const double y = elementAt(b.tile, i).real();
        results[0].push_back(real(op, x, y));
        results[1].push_back(real(op, 3.0, y));
        results[2].push_back(real(op, x, 3.0));
    }
    ZetEqnTile out;
    out.initialize(ZetDataType::Double, 600);
    tiles(a.tile, b.tile, out);
    expectTile(out, ZetDataType::Double, results[0]);
    left(3.0, b.tile, out);
    expectTile(out, ZetDataType::Double, results[1]);
    right(a.tile, 3.0, out);
    expectTile(out, ZetDataType::Double, results[2]);
}

TEST_P(ZetEqnTileArithmetic, loopsOfDoubleTiles)
{
    expectHelpers<double>(&add_aux<double>, &add_aux<double>, &add_aux<double>, '+');
    expectHelpers<double>(&subtract_aux<double>, &subtract_aux<double>, &subtract_aux<double>, '-');
    expectHelpers<double>(&multiply_aux<double>, &multiply_aux<double>, &multiply_aux<double>, '*');
    expectHelpers<double>(&divide_aux<double>, &divide_aux<double>, &divide_aux<double>, '/');
}

TEST_P(ZetEqnTileArithmetic, lendingChangesNoValue)
{
    for (const ZetDataType::Type type : {ZetDataType::Double, ZetDataType::ComplexDouble}) {
        for (const ZetDataType::Type otherType : {ZetDataType::U8, ZetDataType::Double, ZetDataType::ComplexDouble}) {
            const Values values = valuesOf(type, 1300);
            const ZetTilePixels other(otherType, valuesOf(otherType, 1300, 2), 2);
            for (const char op : {'+', '-', '*', '/'}) {
                ZetEqnTile left = ownTile(type, values);
                ZetEqnTile right = ownTile(type, values);
                const ZetEqnTile kept = ownTile(type, values);
                SCOPED_TRACE(op);
                const bool isComplex = kept.dataType().isComplex() || other.tile.dataType().isComplex();
                const ZetDataType::Type kind = isComplex ? ZetDataType::ComplexDouble : ZetDataType::Double;
                expectTile(apply(op, *ZetTileLoan(left), other.tile), kind, expected(op, kept, other.tile, isComplex));
                expectTile(apply(op, other.tile, *ZetTileLoan(right)), kind, expected(op, other.tile, kept, isComplex));
                ZetEqnTile both = ownTile(type, values);
                expectTile(apply(op, *ZetTileLoan(both), both), type,
                           expected(op, kept, kept, kept.dataType().isComplex()));
            }
        }
    }
}

}  // namespace
}  // namespace zet
