// The operations of tiles, element by element.

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <utility>

#include <zet/ZetCoreFunctions>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "core/ZetWholePower"
#include "eqn/ZetPendingTile"
#include "quantity/ZetComplexParts"

namespace zet {
namespace internal {

namespace {

using Complex = std::complex<double>;
using Count = unsigned long;
using StepPtr = ZetTileStepPtr;

double sincOf(double x)
{
    return std::abs(x) > epsilonDouble() ? std::sin(x) / x : 1.0;
}

Complex sincOf(const Complex& z)
{
    return std::abs(z) > epsilonDouble() ? scalar::quotient(std::sin(z), z) : 1.0;
}

double factorialOf(double x)
{
    static const std::array<double, 171> table = [] {
        std::array<double, 171> factorials;
        factorials[0] = 1.0;
        for (std::size_t n = 1; n < factorials.size(); ++n) {
            factorials[n] = factorials[n - 1] * static_cast<double>(n);
        }
        return factorials;
    }();
    const std::int64_t n = truncateToInt64(x);
    return n >= 0 && n < std::ssize(table) ? table[static_cast<std::size_t>(n)] : 0.0;
}

const double* doublesAt(const void* run)
{
    return static_cast<const double*>(run);
}

double* doublesAt(void* run)
{
    return static_cast<double*>(run);
}

/// A kernel's function of real elements.
StepPtr mapReal(ZetPixelMap map, StepPtr x, double p = 0.0, double q = 0.0)
{
    const auto loop = pixelKernels().map[map].at[x->column()];
    return makeLoopStep(ZetDataType::Double, {std::move(x)},
                        [=](const ZetRuns& in, void* out, Count n) { loop(in[0], doublesAt(out), n, p, q); });
}

/// Real elements as doubles, at an address for doubles.
StepPtr toDoubles(StepPtr x)
{
    return x->isDoubles() ? std::move(x) : mapReal(kConvert, std::move(x));
}

/// A kernel's function of both parts of complex elements.
StepPtr mapBothParts(ZetPixelMap map, StepPtr z)
{
    const auto loop = pixelKernels().map[map].at[kDoubleColumn];
    return makeLoopStep(ZetDataType::ComplexDouble, {std::move(z)},
                        [=](const ZetRuns& in, void* out, Count n) { loop(in[0], doublesAt(out), 2 * n, 0.0, 0.0); });
}

/// Complex elements at an address for doubles.
StepPtr toPairs(StepPtr z)
{
    return z->isMisaligned() ? mapBothParts(kConvert, std::move(z)) : std::move(z);
}

/// fn(double) of real elements.
template <class Fn>
StepPtr mapReal(StepPtr x, const Fn& fn)
{
    return makeLoopStep(ZetDataType::Double, {toDoubles(std::move(x))}, [=](const ZetRuns& in, void* out, Count n) {
        std::transform(doublesAt(in[0]), doublesAt(in[0]) + n, doublesAt(out), fn);
    });
}

/// fn(Complex) of complex elements.
template <class Fn>
StepPtr mapComplex(StepPtr z, const Fn& fn)
{
    return makeLoopStep(ZetDataType::ComplexDouble, {toPairs(std::move(z))},
                        [=](const ZetRuns& in, void* out, Count n) {
                            const double* const parts = doublesAt(in[0]);
                            double* const results = doublesAt(out);
                            for (Count i = 0; i < n; ++i) {
                                const Complex value = fn(Complex(parts[2 * i], parts[2 * i + 1]));
                                results[2 * i] = value.real();
                                results[2 * i + 1] = value.imag();
                            }
                        });
}

/// fn(re, im) of complex elements, as real ones.
template <class Fn>
StepPtr mapParts(StepPtr z, const Fn& fn)
{
    return makeLoopStep(ZetDataType::Double, {toPairs(std::move(z))}, [=](const ZetRuns& in, void* out, Count n) {
        const double* const parts = doublesAt(in[0]);
        for (Count i = 0; i < n; ++i) {
            doublesAt(out)[i] = fn(parts[2 * i], parts[2 * i + 1]);
        }
    });
}

double realPart(double re, double)
{
    return re;
}

/// Real elements, or the real parts of complex ones, as doubles.
StepPtr toRealParts(StepPtr x)
{
    return x->isReal() ? toDoubles(std::move(x)) : mapParts(std::move(x), realPart);
}

bool isServedAsReal(const StepPtr& x)
{
    return x->isReal() || x->isComplex();
}

/// Arithmetic where at least one operand is complex.
StepPtr combineComplex(ZetArithmetic op, StepPtr a, StepPtr b)
{
    const auto asOperand = [](StepPtr x) { return x->isComplex() ? std::move(x) : toDoubles(std::move(x)); };
    return ZetComplexArithmeticStep::make(op, asOperand(std::move(a)), asOperand(std::move(b)));
}

/// Complex elements of two runs of doubles.
StepPtr pairUp(StepPtr re, StepPtr im)
{
    return makeLoopStep(ZetDataType::ComplexDouble, {std::move(re), std::move(im)},
                        [](const ZetRuns& in, void* out, Count n) {
                            for (Count i = 0; i < n; ++i) {
                                doublesAt(out)[2 * i] = doublesAt(in[0])[i];
                                doublesAt(out)[2 * i + 1] = doublesAt(in[1])[i];
                            }
                        });
}

StepPtr number(double value)
{
    return std::make_unique<ZetNumberStep>(value);
}

StepPtr number(const Complex& value)
{
    return std::make_unique<ZetNumberStep>(value);
}

}  // namespace

ZetPendingTile ZetPendingTile::combine(ZetArithmetic op, ZetPendingTile a, ZetPendingTile b)
{
    if (a.m_step->isReal() && b.m_step->isReal()) {
        return ZetPendingTile(ZetArithmeticStep::make(op, std::move(a.m_step), std::move(b.m_step)));
    }
    if (!isServedAsReal(a.m_step) || !isServedAsReal(b.m_step)) {
        return empty();
    }
    return ZetPendingTile(combineComplex(op, std::move(a.m_step), std::move(b.m_step)));
}

ZetPendingTile ZetPendingTile::combine(ZetArithmetic op, ZetPendingTile a, double b)
{
    if (a.m_step->isReal()) {
        return ZetPendingTile(ZetArithmeticStep::make(op, std::move(a.m_step), b));
    }
    if (!a.m_step->isComplexDouble()) {
        return empty();
    }
    return ZetPendingTile(combineComplex(op, std::move(a.m_step), number(b)));
}

ZetPendingTile ZetPendingTile::combine(ZetArithmetic op, double a, ZetPendingTile b)
{
    if (b.m_step->isReal()) {
        return ZetPendingTile(ZetArithmeticStep::make(op, a, std::move(b.m_step)));
    }
    if (!b.m_step->isComplexDouble()) {
        return empty();
    }
    return ZetPendingTile(combineComplex(op, number(a), std::move(b.m_step)));
}

ZetPendingTile ZetPendingTile::combine(ZetArithmetic op, ZetPendingTile a, const Complex& b)
{
    if (!a.m_step->isReal() && !a.m_step->isComplexDouble()) {
        return empty();
    }
    return ZetPendingTile(combineComplex(op, std::move(a.m_step), number(b)));
}

ZetPendingTile ZetPendingTile::combine(ZetArithmetic op, const Complex& a, ZetPendingTile b)
{
    if (!b.m_step->isReal() && !b.m_step->isComplexDouble()) {
        return empty();
    }
    return ZetPendingTile(combineComplex(op, number(a), std::move(b.m_step)));
}

// A function of real elements: a kernel with its numbers, or fn(double).
#define ZET_REAL_FUNCTION(Name, Parameters, ...)                                  \
    ZetPendingTile ZetPendingTile::Name Parameters&&                              \
    {                                                                             \
        return m_step->isReal() ? ZetPendingTile(mapReal(__VA_ARGS__)) : empty(); \
    }

ZET_REAL_FUNCTION(round, (), kRound, std::move(m_step))
ZET_REAL_FUNCTION(trunc, (), kTrunc, std::move(m_step))
ZET_REAL_FUNCTION(floor, (), kFloor, std::move(m_step))
ZET_REAL_FUNCTION(ceil, (), kCeil, std::move(m_step))
ZET_REAL_FUNCTION(y0, (), std::move(m_step), [](double x) { return ::y0(x); })
ZET_REAL_FUNCTION(y1, (), std::move(m_step), [](double x) { return ::y1(x); })
ZET_REAL_FUNCTION(j0, (), std::move(m_step), [](double x) { return ::j0(x); })
ZET_REAL_FUNCTION(j1, (), std::move(m_step), [](double x) { return ::j1(x); })
ZET_REAL_FUNCTION(yn, (int n), std::move(m_step), [n](double x) { return ::yn(n, x); })
ZET_REAL_FUNCTION(jn, (int n), std::move(m_step), [n](double x) { return ::jn(n, x); })
ZET_REAL_FUNCTION(logb, (double base), std::move(m_step),
                  [divisor = std::log(base)](double x) { return std::log(x) / divisor; })
ZET_REAL_FUNCTION(min, (double c), kMinNumber, std::move(m_step), c)
ZET_REAL_FUNCTION(max, (double c), kMaxNumber, std::move(m_step), c)
ZET_REAL_FUNCTION(clip, (double lo, double hi), kClip, std::move(m_step), lo, hi)
ZET_REAL_FUNCTION(clipmin, (double m), kClipMin, std::move(m_step), m)
ZET_REAL_FUNCTION(clipmax, (double m), kClipMax, std::move(m_step), m)
ZET_REAL_FUNCTION(factorial, (), std::move(m_step), factorialOf)

#undef ZET_REAL_FUNCTION

// A function of real elements, and of ComplexDouble elements, each with its own step.
#define ZET_REAL_AND_COMPLEX(Name, OfReal, OfComplex) \
    ZetPendingTile ZetPendingTile::Name&&             \
    {                                                 \
        if (m_step->isReal()) {                       \
            return ZetPendingTile(OfReal);            \
        }                                             \
        if (!m_step->isComplexDouble()) {             \
            return empty();                           \
        }                                             \
        return ZetPendingTile(OfComplex);             \
    }

#define ZET_ELEMENTARY(Name)                                                                        \
    ZET_REAL_AND_COMPLEX(Name(), mapReal(std::move(m_step), [](double x) { return std::Name(x); }), \
                         mapComplex(std::move(m_step), [](const Complex& z) { return std::Name(z); }))

ZET_ELEMENTARY(sin)
ZET_ELEMENTARY(cos)
ZET_ELEMENTARY(tan)
ZET_ELEMENTARY(asin)
ZET_ELEMENTARY(acos)
ZET_ELEMENTARY(atan)
ZET_ELEMENTARY(sinh)
ZET_ELEMENTARY(cosh)
ZET_ELEMENTARY(tanh)
ZET_ELEMENTARY(exp)
ZET_ELEMENTARY(log)
ZET_ELEMENTARY(log10)

#undef ZET_ELEMENTARY

ZET_REAL_AND_COMPLEX(operator-(), mapReal(kNegate, std::move(m_step)), mapBothParts(kNegate, std::move(m_step)))
ZET_REAL_AND_COMPLEX(sqrt(), mapReal(kSqrt, std::move(m_step)),
                     mapComplex(std::move(m_step), [](const Complex& z) { return std::sqrt(z); }))
ZET_REAL_AND_COMPLEX(sinc(), mapReal(std::move(m_step), [](double x) { return sincOf(x); }),
                     mapComplex(std::move(m_step), [](const Complex& z) { return sincOf(z); }))
ZET_REAL_AND_COMPLEX(abs(), mapReal(kAbs, std::move(m_step)),
                     mapComplex(std::move(m_step), [](const Complex& z) { return Complex(std::abs(z), 0.0); }))
ZET_REAL_AND_COMPLEX(real(), mapReal(kConvert, std::move(m_step)), mapParts(std::move(m_step), realPart))
ZET_REAL_AND_COMPLEX(imag(), mapReal(std::move(m_step), [](double) { return 0.0; }),
                     mapParts(std::move(m_step), [](double, double im) { return im; }))
ZET_REAL_AND_COMPLEX(arg(), mapReal(std::move(m_step), [](double x) { return std::arg(Complex(x, 0.0)); }),
                     mapParts(std::move(m_step), [](double re, double im) { return std::arg(Complex(re, im)); }))
ZET_REAL_AND_COMPLEX(norm(), mapReal(kSquare, std::move(m_step)),
                     mapParts(std::move(m_step), [](double re, double im) { return re * re + im * im; }))
ZET_REAL_AND_COMPLEX(conj(), pairUp(toDoubles(std::move(m_step)), number(0.0)),
                     mapComplex(std::move(m_step), [](const Complex& z) { return std::conj(z); }))

namespace {

struct Strip
{
    double elements[kTileBlock];
};

/// Whole powers: the products of wholePower(), each of a strip at a time.
StepPtr wholePowerOfReal(StepPtr x, int exponent)
{
    const ZetPixelKernels& kernels = pixelKernels();
    const auto multiply = kernels.combine[kMultiply].left[kDoubleColumn].at[kDoubleColumn];
    const auto invert = kernels.map[exponent < 0 ? kDivideInto : kConvert].at[kDoubleColumn];
    return makeLoopStep(ZetDataType::Double, {toDoubles(std::move(x))}, [=](const ZetRuns& in, void* out, Count n) {
        Strip ones;
        std::fill_n(ones.elements, kTileBlock, 1.0);
        forBlocks(n, [&](Count first, Count count) {
            const auto product = [&](const Strip& a, const Strip& b) {
                Strip strip;
                multiply(a.elements, b.elements, strip.elements, count);
                return strip;
            };
            Strip base;
            std::copy_n(doublesAt(in[0]) + first, count, base.elements);
            const Strip power = wholePower(base, exponentSize(exponent), ones, product);
            invert(power.elements, doublesAt(out) + first, count, 1.0, 0.0);
        });
    });
}

StepPtr powerOfReal(StepPtr x, double p)
{
    const int exponent = truncateToInt32(p);
    if (exponent != p) {
        return mapReal(std::move(x), [p](double base) { return std::pow(base, p); });
    }
    if (exponent == 2) {
        return mapReal(kSquare, std::move(x));
    }
    return wholePowerOfReal(std::move(x), exponent);
}

}  // namespace

ZET_REAL_AND_COMPLEX(pow(double p), powerOfReal(std::move(m_step), p),
                     mapComplex(std::move(m_step), [p](const Complex& z) { return std::pow(z, Complex(p)); }))

#undef ZET_REAL_AND_COMPLEX

ZetPendingTile ZetPendingTile::max(ZetPendingTile other) &&
{
    return pick(kGreatest, std::move(other));
}

ZetPendingTile ZetPendingTile::min(ZetPendingTile other) &&
{
    return pick(kLeast, std::move(other));
}

ZetPendingTile ZetPendingTile::pick(ZetExtreme which, ZetPendingTile other)
{
    if (!isServedAsReal(m_step) || !isServedAsReal(other.m_step)) {
        return empty();
    }
    const auto loop = pixelKernels().pick[which];
    return ZetPendingTile(
        makeLoopStep(ZetDataType::Double, {toRealParts(std::move(m_step)), toRealParts(std::move(other.m_step))},
                     [=](const ZetRuns& in, void* out, Count n) { loop(in[0], in[1], doublesAt(out), n); }));
}

ZetPendingTile ZetPendingTile::cmplx(ZetPendingTile re, ZetPendingTile im)
{
    if (!isServedAsReal(re.m_step) || !isServedAsReal(im.m_step)) {
        return empty();
    }
    return ZetPendingTile(pairUp(toRealParts(std::move(re.m_step)), toRealParts(std::move(im.m_step))));
}

ZetPendingTile ZetPendingTile::cmplx(ZetPendingTile re, double im)
{
    return re.m_step->isReal() ? ZetPendingTile(pairUp(toDoubles(std::move(re.m_step)), number(im))) : empty();
}

ZetPendingTile ZetPendingTile::cmplx(double re, ZetPendingTile im)
{
    return im.m_step->isReal() ? ZetPendingTile(pairUp(number(re), toDoubles(std::move(im.m_step)))) : empty();
}

// Elements of types without a loop are not written, so the result is made of the tile itself.
ZetPendingTile ZetPendingTile::roundclip(const ZetDataType& type, double lo, double hi) &&
{
    const int column = realColumn(type.type());
    const bool hasElements = !tile() || m_step->size() == tile()->size();
    if (!m_step->isReal() || column < 0 || !hasElements) {
        return ZetPendingTile(ZetVariant(std::move(*this).compute().roundclip(type, lo, hi)));
    }
    const auto loop = pixelKernels().roundClip[m_step->column()].to[column];
    return ZetPendingTile(makeLoopStep(type, {std::move(m_step)},
                                       [=](const ZetRuns& in, void* out, Count n) { loop(in[0], out, n, lo, hi); }));
}

}  // namespace internal
}  // namespace zet
