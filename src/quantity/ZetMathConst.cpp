#include <zet/ZetMathConst>

#include <iostream>

#include <zet/ZetScalar>
#include <zet/ZetVariant>

#include "core/ZetUnitInit"
#include "reflect/ZetEnumTable"

namespace zet {
namespace {

ZetVariant plain(double number, const wchar_t*)
{
    return number;
}

/// A number in the units of a text, the scale of which is 1.
ZetVariant quantity(double number, const wchar_t* text)
{
    ZetUnits units;
    units.fromString(text);
    return ZetScalar(number, units);
}

ZetVariant squareRoot(double number, const wchar_t*)
{
    return ZetScalar(number).sqrt();
}

struct Row
{
    const wchar_t* key;
    double number;
    const wchar_t* units;
    ZetVariant (*make)(double number, const wchar_t* units);
};

// clang-format off
constexpr Row rows[] = {
    {L"m_pi",  3.141592653589793,  L"",            plain},
    {L"m_e",   2.718281828459045,  L"",            quantity},
    {L"m_phi", 1.618033988749895,  L"",            quantity},
    {L"m_Eu",  0.5772156649015329, L"",            quantity},
    {L"m_i",   -1.0,               L"",            squareRoot},
    {L"m_k",   1.3806504e-23,      L"J / K",       quantity},
    {L"m_c",   299792458.0,        L"m / s",       quantity},
    {L"m_q",   1.602176487e-19,    L"C",           quantity},
    {L"m_SB",  5.6704e-08,         L"W / m^2 K^4", quantity},
    {L"m_h",   6.62606896e-34,     L"J s",         quantity},
    {L"m_Rh",  10973731.568525,    L"m^-1",        quantity},
    {L"m_Na",  6.02214179e+23,     L"",            quantity},
    {L"m_G",   9.81,               L"m / s^2",     quantity},
};
// clang-format on
static_assert(std::size(rows) == ZetMathConst::Invalid, "one row per constant");

}  // namespace

ZetMathConst::ZetMathConst(Type type) : m_type(static_cast<Type>(internal::enumInRange(type, Invalid))) {}

ZetMathConst::ZetMathConst(const ZetString& name) : m_type(fromString(name)) {}

ZetString ZetMathConst::className() const
{
    return L"ZetMathConst";
}

ZetScalar ZetMathConst::value() const
{
    return enumerator().data(m_type).value<ZetScalar>();
}

ZetMathConst::operator ZetScalar() const
{
    return value();
}

ZetMathConst::operator double() const
{
    return value().real();
}

const ZetString& ZetMathConst::toString() const
{
    return enumerator().toString(m_type);
}

ZetMathConst::Type ZetMathConst::fromString(const ZetString& name)
{
    // the keys stand in the order of the numbers
    const int number = allKeys().find(name);
    return number < 0 ? Invalid : static_cast<Type>(number);
}

bool ZetMathConst::isValid(const ZetString& name)
{
    return fromString(name) != Invalid;
}

const ZetStrList& ZetMathConst::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetMathConst::enumerator()
{
    static const ZetEnum table =
        internal::makeEnum(rows, [](const Row& row) { return row.make(row.number, row.units); });
    return table;
}

std::wostream& operator<<(std::wostream& out, const ZetMathConst& constant)
{
    return out << constant.toString();
}

std::wistream& operator>>(std::wistream& in, ZetMathConst& constant)
{
    constant =
        static_cast<ZetMathConst::Type>(internal::readEnum(in, ZetMathConst::enumerator(), ZetMathConst::Invalid));
    return in;
}

}  // namespace zet
