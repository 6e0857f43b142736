#include <zet/ZetScalar>

#include <array>
#include <cmath>
#include <cstring>
#include <istream>
#include <sstream>

#include <zet/ZetComplexMath>
#include <zet/ZetCoreFunctions>
#include <zet/ZetScalarMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "quantity/ZetComplexParts"
#include "quantity/ZetScalarErrors"

namespace zet {
namespace {

using namespace internal::scalar;

/// The factor from \p b to \p a.
double conversionFactor(const ZetUnits& a, const ZetUnits& b, int line)
{
    const double factor = ZetUnits::addFactor(a, b);
    if (factor == 0.0) {
        throwConversionError(a, b, line);
    }
    return factor;
}

/// The number of \p other in the units of \p own, for a sum of the two.
Complex addend(const ZetScalar& own, const ZetScalar& other)
{
    if (own.units() == other.units()) {
        return other.value();
    }
    return scaled(other.value(), conversionFactor(own.units(), other.units(), __LINE__));
}

const ZetUnits& radians()
{
    static const ZetUnits units = [] {
        ZetUnits made;
        made.insert({ZetUnits::Unit::Radian, 1.0});
        return made;
    }();
    return units;
}

ZetUnits raised(ZetUnits units, double exponent)
{
    units.pow(exponent);
    return units;
}

/// A function of a real value in double, and of a complex one in complex arithmetic.
template <class Fcn>
Complex applied(const Complex& value, const Fcn& fcn)
{
    return value.imag() == 0.0 ? Complex(fcn(value.real())) : fcn(value);
}

template <class Fcn>
ZetScalar ofAngle(const ZetScalar& angle, const Fcn& fcn)
{
    const bool hasUnits = angle.units() != ZetUnits();
    return applied(hasUnits ? angle.convertUnits(radians()).value() : angle.value(), fcn);
}

template <class Fcn>
ZetScalar withoutUnits(const ZetScalar& scalar, const wchar_t* name, int line, const Fcn& fcn)
{
    requireUnitless(scalar, name, line);
    return applied(scalar.value(), fcn);
}

template <class Fcn>
ZetScalar ofReal(const ZetScalar& scalar, const wchar_t* name, int line, const Fcn& fcn)
{
    requireReal(scalar, name, line);
    return ZetScalar(fcn(scalar.real()), scalar.units());
}

/// The functions of the second kind have a pole at 0.
enum class Zero { Allowed, Refused };

bool inBesselDomain(double x, Zero zero)
{
    return zero == Zero::Allowed ? x >= 0.0 : x > 0.0;
}

ZetScalar bessel(const ZetScalar& x, Zero zero, const wchar_t* name, int line, double (*fcn)(double))
{
    requireReal(x, name, line);
    if (!inBesselDomain(x.real(), zero)) {
        throwInvalidArgError(name, line);
    }
    requireUnitless(x, name, line);
    return fcn(x.real());
}

/// An order beyond the range of int is as invalid as a negative one.
ZetScalar bessel(const ZetScalar& x, const ZetScalar& n, Zero zero, const wchar_t* name, int line,
                 double (*fcn)(int, double))
{
    requireReal(x, name, line);
    requireReal(n, name, line);
    if (!inBesselDomain(x.real(), zero) || !(n.real() >= 0.0 && n.real() < 0x1p31)) {
        throwInvalidArgError(name, line);
    }
    requireUnitless(x, name, line);
    requireUnitless(n, name, line);
    return fcn(internal::truncateToInt32(n.real()), x.real());
}

/// Half away from zero, by adding a half and cutting.
double rounded(double v)
{
    return std::trunc(v > 0.0 ? v + 0.5 : v - 0.5);
}

/// The double's bits as a number that grows with the double.
std::uint64_t biased(double v)
{
    constexpr std::uint64_t signBit = std::uint64_t{1} << 63;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return (bits & signBit) != 0 ? 0 - bits : bits | signBit;
}

/// Whether two doubles are at most 4 representable values apart; a NaN is so to nothing.
bool almostEqual(double a, double b)
{
    constexpr std::uint64_t tooFar = 5;
    if (isNaN(a) || isNaN(b)) {
        return false;
    }
    const std::uint64_t x = biased(a);
    const std::uint64_t y = biased(b);
    return (x > y ? x - y : y - x) < tooFar;
}

constexpr double greatestFactorial = 170.0;

/// KEPT: products of 64 bits, which wrap above 20!. Test: ZetScalar.factorial.
const std::array<std::uint64_t, 171>& factorials()
{
    static const auto table = [] {
        std::array<std::uint64_t, 171> made{1};
        for (std::size_t n = 1; n < made.size(); ++n) {
            made[n] = made[n - 1] * n;
        }
        return made;
    }();
    return table;
}

}  // namespace

ZetString ZetScalar::className() const
{
    return L"ZetScalar";
}

ZetMetaObjectConstPtr ZetScalar::metaObject() const
{
    return new ZetScalarMetaObj(this);
}

ZetMetaPropertiesPtr ZetScalarMetaObj::staticProperties()
{
    static const Row rows[] = {
        ZET_ROW(value, L"Value", 0),
        ZET_ROW(units, L"Units", 0),
    };
    return fill(L"ZetScalar", rows);
}

ZetScalar::operator ZetString() const
{
    std::wostringstream out;
    out << *this;
    return out.str();
}

ZetScalar& ZetScalar::convertUnits(const ZetUnits& units)
{
    if (m_units != units) {
        m_value = scaled(m_value, conversionFactor(units, m_units, __LINE__));
        m_units = units;
    }
    return *this;
}

ZetScalar ZetScalar::convertUnits(const ZetUnits& units) const
{
    ZetScalar copy = *this;
    copy.convertUnits(units);
    return copy;
}

ZetScalar& ZetScalar::operator+=(const ZetScalar& other)
{
    m_value += addend(*this, other);
    return *this;
}

ZetScalar& ZetScalar::operator-=(const ZetScalar& other)
{
    m_value -= addend(*this, other);
    return *this;
}

ZetScalar& ZetScalar::operator*=(const ZetScalar& other)
{
    ZetUnits units;
    const double factor = ZetUnits::multFactor(m_units, other.m_units, &units);
    if (isReal() && other.isReal()) {
        return *this = ZetScalar(real() * other.real() * factor, units);
    }
    return *this = ZetScalar(product(m_value, scaled(other.m_value, factor)), units);
}

ZetScalar& ZetScalar::operator/=(const ZetScalar& other)
{
    if (other.real() == 0.0 && other.imag() == 0.0) {
        throwDivisionError(__LINE__);
    }
    const bool realOnly = isReal() && other.isReal();
    if (m_units == other.m_units) {
        return *this = realOnly ? Complex(real() / other.real()) : quotient(m_value, other.m_value);
    }
    ZetUnits units;
    const double factor = ZetUnits::divFactor(m_units, other.m_units, &units);
    if (realOnly) {
        return *this = ZetScalar(factor / other.real() * real(), units);
    }
    return *this = ZetScalar(product(m_value, quotient(factor, other.m_value)), units);
}

ZetScalar& ZetScalar::operator%=(const ZetScalar& other)
{
    requireReal(*this, L"%=", __LINE__);
    requireReal(other, L"%=", __LINE__);
    requireUnitless(*this, L"%=", __LINE__);
    requireUnitless(other, L"%=", __LINE__);
    const std::int64_t dividend = internal::truncateToInt64(real());
    const std::int64_t divisor = internal::truncateToInt64(other.real());
    // The lowest value over -1 would overflow, and leaves no remainder like all others.
    const std::int64_t remainder = divisor == -1 ? 0 : dividend % divisor;
    return *this = static_cast<double>(remainder);
}

bool ZetScalar::operator==(const ZetScalar& other) const
{
    if (m_units != other.m_units) {
        return *this == other.convertUnits(m_units);
    }
    return almostEqual(real(), other.real()) && ((isReal() && other.isReal()) || almostEqual(imag(), other.imag()));
}

bool ZetScalar::operator<(const ZetScalar& other) const
{
    requireReal(*this, L"<", __LINE__);
    requireReal(other, L"<", __LINE__);
    return real() < other.convertUnits(m_units).real();
}

bool ZetScalar::operator>(const ZetScalar& other) const
{
    requireReal(*this, L">", __LINE__);
    requireReal(other, L">", __LINE__);
    return real() > other.convertUnits(m_units).real();
}

ZetScalar& ZetScalar::conj()
{
    m_value = Complex(real(), -imag());
    return *this;
}

ZetScalar& ZetScalar::abs()
{
    m_value = isReal() ? std::fabs(real()) : std::abs(m_value);
    return *this;
}

ZetScalar& ZetScalar::norm()
{
    return *this = ZetScalar(real() * real() + imag() * imag(), raised(m_units, 2.0));
}

ZetScalar& ZetScalar::arg()
{
    return *this = ZetScalar(std::arg(principal(m_value)), radians());
}

ZetScalar& ZetScalar::sqrt()
{
    const bool staysReal = isReal() && !(real() < 0.0);
    const Complex root = staysReal ? std::sqrt(real()) : std::sqrt(principal(m_value));
    return *this = ZetScalar(root, raised(m_units, 0.5));
}

ZetScalar& ZetScalar::pow(const ZetScalar& exponent)
{
    requireUnitless(exponent, L"pow", __LINE__);
    if (!exponent.isReal()) {
        requireUnitless(*this, L"pow", __LINE__);
        return *this = internal::scalar::power(m_value, exponent.m_value);
    }
    const double e = exponent.real();
    const Complex power = isReal() ? internal::scalar::power(real(), e) : internal::scalar::power(m_value, e);
    return *this = ZetScalar(power, raised(m_units, e));
}

ZetScalar& ZetScalar::exp()
{
    return *this = withoutUnits(*this, L"exp", __LINE__, [](const auto& v) { return std::exp(v); });
}

ZetScalar& ZetScalar::log()
{
    return *this = withoutUnits(*this, L"log", __LINE__, [](const auto& v) { return std::log(v); });
}

ZetScalar& ZetScalar::log10()
{
    requireUnitless(*this, L"log10", __LINE__);
    const double log10 = std::log(10.0);
    if (isReal()) {
        return *this = std::log10(real());
    }
    const Complex log = std::log(m_value);
    return *this = Complex(log.real() / log10, log.imag() / log10);
}

ZetScalar& ZetScalar::logb(const ZetScalar& base)
{
    const bool unitless = m_units == ZetUnits() && base.m_units == ZetUnits();
    if (unitless && isReal() && base.isReal()) {
        return *this = std::log(real()) / std::log(base.real());
    }
    ZetScalar own = *this;
    ZetScalar other = base;
    return *this = own.log() / other.log();
}

ZetScalar& ZetScalar::ldexp(const ZetScalar& n)
{
    requireUnitless(n, L"ldexp", __LINE__);
    return *this *= ZetScalar(2.0).pow(n);
}

ZetScalar& ZetScalar::floor()
{
    return *this = ofReal(*this, L"floor", __LINE__, [](double v) { return std::floor(v); });
}

ZetScalar& ZetScalar::ceil()
{
    return *this = ofReal(*this, L"ceil", __LINE__, [](double v) { return std::ceil(v); });
}

ZetScalar& ZetScalar::trunc()
{
    return *this = ofReal(*this, L"trunc", __LINE__, [](double v) { return std::trunc(v); });
}

ZetScalar& ZetScalar::round()
{
    m_value = Complex(rounded(real()), isReal() ? 0.0 : rounded(imag()));
    return *this;
}

ZetScalar& ZetScalar::sin()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::sin(v); });
}

ZetScalar& ZetScalar::cos()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::cos(v); });
}

ZetScalar& ZetScalar::tan()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::tan(v); });
}

ZetScalar& ZetScalar::sinh()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::sinh(v); });
}

ZetScalar& ZetScalar::cosh()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::cosh(v); });
}

ZetScalar& ZetScalar::tanh()
{
    return *this = ofAngle(*this, [](const auto& v) { return std::tanh(v); });
}

ZetScalar& ZetScalar::asin()
{
    requireUnitless(*this, L"asin", __LINE__);
    return *this = ZetScalar(zet::asin(m_value), radians());
}

ZetScalar& ZetScalar::acos()
{
    requireUnitless(*this, L"acos", __LINE__);
    return *this = ZetScalar(zet::acos(m_value), radians());
}

ZetScalar& ZetScalar::atan()
{
    requireUnitless(*this, L"atan", __LINE__);
    return *this = ZetScalar(zet::atan(m_value), radians());
}

ZetScalar& ZetScalar::sinc()
{
    if (std::abs(m_value) < epsilonDouble()) {
        return *this = ZetScalar(1.0, raised(m_units, -1.0));
    }
    ZetScalar sine = *this;
    return *this = sine.sin() / *this;
}

ZetScalar& ZetScalar::j0()
{
    return *this = bessel(*this, Zero::Allowed, L"j0", __LINE__, ::j0);
}

ZetScalar& ZetScalar::j1()
{
    return *this = bessel(*this, Zero::Allowed, L"j1", __LINE__, ::j1);
}

ZetScalar& ZetScalar::y0()
{
    return *this = bessel(*this, Zero::Refused, L"y0", __LINE__, ::y0);
}

ZetScalar& ZetScalar::y1()
{
    return *this = bessel(*this, Zero::Refused, L"y1", __LINE__, ::y1);
}

ZetScalar& ZetScalar::jn(const ZetScalar& n)
{
    return *this = bessel(*this, n, Zero::Allowed, L"jn", __LINE__, ::jn);
}

ZetScalar& ZetScalar::yn(const ZetScalar& n)
{
    return *this = bessel(*this, n, Zero::Refused, L"yn", __LINE__, ::yn);
}

ZetScalar& ZetScalar::factorial()
{
    requireUnitless(*this, L"factorial", __LINE__);
    requireReal(*this, L"factorial", __LINE__);
    if (!(real() >= 0.0 && real() <= greatestFactorial)) {
        throwInvalidArgError(L"factorial", __LINE__);
    }
    return *this = static_cast<double>(factorials()[static_cast<std::size_t>(real())]);
}

ZetScalar& ZetScalar::clipmin(const ZetScalar& minimum)
{
    ZetScalar converted = *this;
    converted.convertUnits(minimum.m_units);
    return *this = converted < minimum ? minimum : converted;
}

ZetScalar& ZetScalar::clipmax(const ZetScalar& maximum)
{
    ZetScalar converted = *this;
    converted.convertUnits(maximum.m_units);
    return *this = converted > maximum ? maximum : converted;
}

ZetScalar& ZetScalar::clip(const ZetScalar& low, const ZetScalar& high)
{
    if (high < low) {
        throwInvalidArgError(L"clip", __LINE__);
    }
    if (*this < low) {
        return *this = low;
    }
    if (*this > high) {
        return *this = high;
    }
    return convertUnits(low.m_units);
}

ZetScalar& ZetScalar::step(const ZetScalar& threshold)
{
    return *this = *this < threshold ? 0.0 : *this > threshold ? 1.0 : 0.5;
}

ZetScalar& ZetScalar::rect(const ZetScalar& low, const ZetScalar& high)
{
    if (high < low) {
        throwInvalidArgError(L"rect", __LINE__);
    }
    if (*this < low || *this > high) {
        return *this = 0.0;
    }
    return *this = *this > low && *this < high ? 1.0 : 0.5;
}

ZetScalar& ZetScalar::triang(const ZetScalar& low, const ZetScalar& high)
{
    if (high < low) {
        throwInvalidArgError(L"rect", __LINE__);
    }
    if (*this < low || *this > high) {
        return *this = 0.0;
    }
    const ZetScalar half = (high - low) / 2.0;
    const ZetScalar rising = 1.0 / half;
    const ZetScalar falling = -1.0 * rising;
    const ZetScalar height = *this < low + half ? rising * *this + falling * low : falling * *this + rising * high;
    return *this = height.real();
}

ZetScalar ZetScalar::hypot(const ZetScalar& a, const ZetScalar& b)
{
    requireReal(a, L"hypot", __LINE__);
    requireReal(b, L"hypot", __LINE__);
    return ZetScalar(std::hypot(a.real(), b.convertUnits(a.m_units).real()), a.m_units);
}

ZetScalar ZetScalar::atan2(const ZetScalar& y, const ZetScalar& x)
{
    const ZetScalar converted = x.convertUnits(y.m_units);
    if (y.isReal() && converted.isReal()) {
        return ZetScalar(std::atan2(y.real(), converted.real()), radians());
    }
    ZetScalar ratio = y / converted;
    requireUnitless(ratio, L"atan2", __LINE__);
    return ratio.atan();
}

ZetScalar ZetScalar::fromPolar(const ZetScalar& r, const ZetScalar& theta)
{
    requireReal(r, L"fromPolar", __LINE__);
    requireReal(theta, L"fromPolar", __LINE__);
    const double angle = theta.m_units != ZetUnits() ? theta.convertUnits(radians()).real() : theta.real();
    return ZetScalar(r.real() * std::cos(angle), r.real() * std::sin(angle), r.m_units);
}

ZetScalar operator+(const ZetScalar& a, const ZetScalar& b)
{
    return ZetScalar(a) += b;
}

ZetScalar operator-(const ZetScalar& a, const ZetScalar& b)
{
    return ZetScalar(a) -= b;
}

ZetScalar operator*(const ZetScalar& a, const ZetScalar& b)
{
    return ZetScalar(a) *= b;
}

ZetScalar operator/(const ZetScalar& a, const ZetScalar& b)
{
    return ZetScalar(a) /= b;
}

std::wostream& operator<<(std::wostream& out, const ZetScalar& scalar)
{
    if (scalar.isReal()) {
        out << scalar.real();
    } else {
        out << scalar.value();
    }
    return scalar.units() == ZetUnits() ? out : out << L" " << scalar.units();
}

std::wistream& operator>>(std::wistream& in, ZetScalar& scalar)
{
    Complex value;
    if (!(in >> value)) {
        return in;
    }
    ZetUnits units;
    if (!in.eof() && in.peek() != std::wistream::traits_type::eof()) {
        in >> units;
    }
    scalar = ZetScalar(value, units);
    return in;
}

}  // namespace zet
