#include <array>
#include <cmath>
#include <complex>

#include <zet/ZetCoreFunctions>
#include <zet/ZetEqnTile>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "core/ZetWholePower"
#include "eqn/ZetTileAccess"
#include "eqn/ZetTileMaps"
#include "quantity/ZetComplexParts"

namespace zet {

namespace {

using internal::kTileBlock;
using internal::mapBoth;
using internal::mapParts;
using internal::mapReal;
using internal::ZetTileResult;
using internal::ZetTileSource;

using Complex = std::complex<double>;

double sincOf(double x)
{
    return std::abs(x) > epsilonDouble() ? std::sin(x) / x : 1.0;
}

Complex sincOf(const Complex& z)
{
    return std::abs(z) > epsilonDouble() ? internal::scalar::quotient(std::sin(z), z) : 1.0;
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
    const std::int64_t n = internal::truncateToInt64(x);
    return n >= 0 && n < std::ssize(table) ? table[static_cast<std::size_t>(n)] : 0.0;
}

bool isServedAsReal(const ZetTileSource& source)
{
    return source.isReal() || source.isComplex();
}

/// A Double tile of the smaller or greater of each pair.
ZetEqnTile pick(internal::ZetExtreme which, const ZetEqnTile& a, const ZetEqnTile& b)
{
    const ZetTileSource left(a);
    const ZetTileSource right(b);
    if (!isServedAsReal(left) || !isServedAsReal(right)) {
        return ZetEqnTile();
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::Double, std::min(left.size(), right.size()), a, b);
    double* out = result.elements<double>();
    const auto loop = internal::pixelKernels().pick[which];
    internal::forBlocks(result.size(), [&](unsigned long first, unsigned long count) {
        double x[kTileBlock];
        double y[kTileBlock];
        loop(left.run(first, count, x), right.run(first, count, y), out + first, count);
    });
    return result;
}

/// Writes a ComplexDouble tile from re(first, count, block) and im(first, count, block), each of
/// which fills a block of parts.
template <class Re, class Im>
void writeParts(ZetEqnTile& result, const Re& re, const Im& im)
{
    double* out = result.elements<double>();
    internal::forBlocks(result.size(), [&](unsigned long first, unsigned long count) {
        double x[kTileBlock];
        double y[kTileBlock];
        re(first, count, x);
        im(first, count, y);
        for (unsigned long i = 0; i < count; ++i) {
            out[2 * (first + i)] = x[i];
            out[2 * (first + i) + 1] = y[i];
        }
    });
}

auto partsOf(const ZetTileSource& source)
{
    return [&source](unsigned long first, unsigned long count, double* block) { source.copy(first, count, block); };
}

auto partsOf(double number)
{
    return [number](unsigned long, unsigned long count, double* block) { std::fill_n(block, count, number); };
}

}  // namespace

ZetEqnTile ZetEqnTile::sin() const
{
    return mapBoth(*this, [](const auto& x) { return std::sin(x); });
}

ZetEqnTile ZetEqnTile::cos() const
{
    return mapBoth(*this, [](const auto& x) { return std::cos(x); });
}

ZetEqnTile ZetEqnTile::tan() const
{
    return mapBoth(*this, [](const auto& x) { return std::tan(x); });
}

ZetEqnTile ZetEqnTile::asin() const
{
    return mapBoth(*this, [](const auto& x) { return std::asin(x); });
}

ZetEqnTile ZetEqnTile::acos() const
{
    return mapBoth(*this, [](const auto& x) { return std::acos(x); });
}

ZetEqnTile ZetEqnTile::atan() const
{
    return mapBoth(*this, [](const auto& x) { return std::atan(x); });
}

ZetEqnTile ZetEqnTile::sinh() const
{
    return mapBoth(*this, [](const auto& x) { return std::sinh(x); });
}

ZetEqnTile ZetEqnTile::cosh() const
{
    return mapBoth(*this, [](const auto& x) { return std::cosh(x); });
}

ZetEqnTile ZetEqnTile::tanh() const
{
    return mapBoth(*this, [](const auto& x) { return std::tanh(x); });
}

ZetEqnTile ZetEqnTile::exp() const
{
    return mapBoth(*this, [](const auto& x) { return std::exp(x); });
}

ZetEqnTile ZetEqnTile::log() const
{
    return mapBoth(*this, [](const auto& x) { return std::log(x); });
}

ZetEqnTile ZetEqnTile::log10() const
{
    return mapBoth(*this, [](const auto& x) { return std::log10(x); });
}

ZetEqnTile ZetEqnTile::sqrt() const
{
    if (ZetTileSource(*this).isComplexDouble()) {
        return internal::mapComplex(*this, [](const Complex& z) { return std::sqrt(z); });
    }
    return mapReal(internal::kSqrt, *this);
}

ZetEqnTile ZetEqnTile::sinc() const
{
    return mapBoth(*this, [](const auto& x) { return sincOf(x); });
}

ZetEqnTile ZetEqnTile::abs() const
{
    if (ZetTileSource(*this).isComplexDouble()) {
        return internal::mapComplex(*this, [](const Complex& z) { return Complex(std::abs(z), 0.0); });
    }
    return mapReal(internal::kAbs, *this);
}

ZetEqnTile ZetEqnTile::round() const
{
    return mapReal(internal::kRound, *this);
}

ZetEqnTile ZetEqnTile::trunc() const
{
    return mapReal(internal::kTrunc, *this);
}

ZetEqnTile ZetEqnTile::floor() const
{
    return mapReal(internal::kFloor, *this);
}

ZetEqnTile ZetEqnTile::ceil() const
{
    return mapReal(internal::kCeil, *this);
}

ZetEqnTile ZetEqnTile::y0() const
{
    return mapReal(*this, [](double x) { return ::y0(x); });
}

ZetEqnTile ZetEqnTile::y1() const
{
    return mapReal(*this, [](double x) { return ::y1(x); });
}

ZetEqnTile ZetEqnTile::j0() const
{
    return mapReal(*this, [](double x) { return ::j0(x); });
}

ZetEqnTile ZetEqnTile::j1() const
{
    return mapReal(*this, [](double x) { return ::j1(x); });
}

ZetEqnTile ZetEqnTile::yn(int n) const
{
    return mapReal(*this, [n](double x) { return ::yn(n, x); });
}

ZetEqnTile ZetEqnTile::jn(int n) const
{
    return mapReal(*this, [n](double x) { return ::jn(n, x); });
}

ZetEqnTile ZetEqnTile::logb(double base) const
{
    const double divisor = std::log(base);
    return mapReal(*this, [divisor](double x) { return std::log(x) / divisor; });
}

ZetEqnTile ZetEqnTile::min(double c) const
{
    return mapReal(internal::kMinNumber, *this, c);
}

ZetEqnTile ZetEqnTile::max(double c) const
{
    return mapReal(internal::kMaxNumber, *this, c);
}

ZetEqnTile ZetEqnTile::clip(double lo, double hi) const
{
    return mapReal(internal::kClip, *this, lo, hi);
}

ZetEqnTile ZetEqnTile::clipmin(double m) const
{
    return mapReal(internal::kClipMin, *this, m);
}

ZetEqnTile ZetEqnTile::clipmax(double m) const
{
    return mapReal(internal::kClipMax, *this, m);
}

ZetEqnTile ZetEqnTile::factorial() const
{
    return mapReal(*this, factorialOf);
}

ZetEqnTile ZetEqnTile::real() const
{
    return mapParts(*this, [](double re, double) { return re; });
}

ZetEqnTile ZetEqnTile::imag() const
{
    return mapParts(*this, [](double, double im) { return im; });
}

ZetEqnTile ZetEqnTile::arg() const
{
    return mapParts(*this, [](double re, double im) { return std::arg(Complex(re, im)); });
}

ZetEqnTile ZetEqnTile::norm() const
{
    if (ZetTileSource(*this).isReal()) {
        return mapReal(internal::kSquare, *this);
    }
    return mapParts(*this, [](double re, double im) { return re * re + im * im; });
}

ZetEqnTile ZetEqnTile::pow(double p) const
{
    if (ZetTileSource(*this).isComplexDouble()) {
        return internal::mapComplex(*this, [p](const Complex& z) { return std::pow(z, Complex(p)); });
    }
    const int exponent = internal::truncateToInt32(p);
    if (exponent == p) {
        return mapReal(*this, [exponent](double x) { return internal::wholePower(x, exponent); });
    }
    return mapReal(*this, [p](double x) { return std::pow(x, p); });
}

ZetEqnTile ZetEqnTile::conj() const
{
    const ZetTileSource source(*this);
    if (source.isComplexDouble()) {
        return internal::mapComplex(*this, [](const Complex& z) { return std::conj(z); });
    }
    return cmplx(*this, 0.0);
}

ZetEqnTile ZetEqnTile::max(const ZetEqnTile& other) const
{
    return pick(internal::kGreatest, *this, other);
}

ZetEqnTile ZetEqnTile::min(const ZetEqnTile& other) const
{
    return pick(internal::kLeast, *this, other);
}

ZetEqnTile ZetEqnTile::cmplx(const ZetEqnTile& re, const ZetEqnTile& im)
{
    const ZetTileSource x(re);
    const ZetTileSource y(im);
    if (!isServedAsReal(x) || !isServedAsReal(y)) {
        return ZetEqnTile();
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, std::min(x.size(), y.size()), re, im);
    writeParts(result, partsOf(x), partsOf(y));
    return result;
}

ZetEqnTile ZetEqnTile::cmplx(const ZetEqnTile& re, double im)
{
    const ZetTileSource x(re);
    if (!x.isReal()) {
        return ZetEqnTile();
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, x.size(), re);
    writeParts(result, partsOf(x), partsOf(im));
    return result;
}

ZetEqnTile ZetEqnTile::cmplx(double re, const ZetEqnTile& im)
{
    const ZetTileSource y(im);
    if (!y.isReal()) {
        return ZetEqnTile();
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, y.size(), im);
    writeParts(result, partsOf(re), partsOf(y));
    return result;
}

}  // namespace zet
