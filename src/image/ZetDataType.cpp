#include <zet/ZetDataType>

#include <algorithm>
#include <cmath>
#include <limits>

#include <zet/ZetDataTypeInfo>
#include <zet/ZetEnum>
#include <zet/ZetStrList>
#include <zet/ZetVariant>

#include "core/ZetUnitInit"
#include "reflect/ZetCustomVariant"
#include "reflect/ZetEnumTable"

namespace zet {

namespace {

class ZetDataTypeInfoVariant : public internal::ZetCustomVariant<ZetDataTypeInfoVariant, ZetDataTypeInfo>
{
};

[[maybe_unused]] const bool s_registered =
    ZetVariant::registerType<ZetDataTypeInfo>(L"ZetDataTypeInfo", new ZetDataTypeInfoVariant);

struct ElementType
{
    const wchar_t* key;
    int size;
    double min;
    double max;
};

constexpr double kFloatMax = 3.4028234663852886e38;
constexpr double kDoubleMax = 1.7976931348623157e308;

constexpr ElementType kTypes[] = {
    // key            size  physical minimum  physical maximum
    {L"I8", 1, -0x1p7, 0x1p7 - 1},
    {L"U8", 1, 0.0, 0x1p8 - 1},
    {L"I16", 2, -0x1p15, 0x1p15 - 1},
    {L"U16", 2, 0.0, 0x1p16 - 1},
    {L"I32", 4, -0x1p31, 0x1p31 - 1},
    {L"U32", 4, 0.0, 0x1p32 - 1},
    {L"I64", 8, -0x1p63, 0x1p63},
    {L"U64", 8, 0.0, 0x1p64},
    {L"Float", 4, -kFloatMax, kFloatMax},
    {L"Double", 8, -kDoubleMax, kDoubleMax},
    {L"ComplexFloat", 8, -kFloatMax, kFloatMax},
    {L"ComplexDouble", 16, -kDoubleMax, kDoubleMax},
};
static_assert(std::size(kTypes) == ZetDataType::Invalid, "one row per element type");

constexpr ElementType kNoType = {nullptr, 0, 0.0, 0.0};

const ElementType& rowOf(ZetDataType::Type type)
{
    return type == ZetDataType::Invalid ? kNoType : kTypes[type];
}

unsigned int fullDepth(ZetDataType::Type type)
{
    return static_cast<unsigned int>(rowOf(type).size) * 8;
}

/// The types that ZetDataType::fromMinMax() tries, in their order.
constexpr ZetDataType::Type kUnsignedTypes[] = {ZetDataType::U8, ZetDataType::U16, ZetDataType::U32};
constexpr ZetDataType::Type kSignedTypes[] = {ZetDataType::I8, ZetDataType::I16, ZetDataType::I32, ZetDataType::I64};

/// The pairs for which ZetDataType::leastCommon() gives another type than the higher one.
struct Widening
{
    ZetDataType::Type high;
    ZetDataType::Type low;
    ZetDataType::Type result;
};

constexpr Widening kWidenings[] = {
    {ZetDataType::U8, ZetDataType::I8, ZetDataType::I16},
    {ZetDataType::U16, ZetDataType::I8, ZetDataType::I32},
    {ZetDataType::U16, ZetDataType::I16, ZetDataType::I32},
    {ZetDataType::U32, ZetDataType::I8, ZetDataType::Double},
    {ZetDataType::U32, ZetDataType::I16, ZetDataType::Double},
    {ZetDataType::U32, ZetDataType::I32, ZetDataType::Double},
    {ZetDataType::Float, ZetDataType::I32, ZetDataType::Double},
    {ZetDataType::Float, ZetDataType::U32, ZetDataType::Double},
    {ZetDataType::ComplexFloat, ZetDataType::I32, ZetDataType::ComplexDouble},
    {ZetDataType::ComplexFloat, ZetDataType::U32, ZetDataType::ComplexDouble},
    {ZetDataType::ComplexFloat, ZetDataType::Double, ZetDataType::ComplexDouble},
};

}  // namespace

ZetString ZetDataTypeInfo::className() const
{
    return L"ZetDataTypeInfo";
}

std::wostream& operator<<(std::wostream& out, const ZetDataTypeInfo&)
{
    out.setstate(std::ios::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetDataTypeInfo&)
{
    in.setstate(std::ios::failbit);
    return in;
}

ZetDataType::ZetDataType(Type type, unsigned int logicalBitDepth)
    : m_type(static_cast<Type>(internal::enumInRange(type, Invalid)))
{
    setLogicalBitDepth(logicalBitDepth);
}

ZetDataType::ZetDataType(const ZetString& key) : ZetDataType(fromString(key)) {}

ZetDataType ZetDataType::fromBitDepth(unsigned int bits, bool isSigned)
{
    if (bits <= 8) {
        return ZetDataType(isSigned ? I8 : U8, bits);
    }
    if (bits <= 16) {
        return ZetDataType(isSigned ? I16 : U16, bits);
    }
    if (bits <= 32) {
        return ZetDataType(isSigned ? I32 : U32, bits);
    }
    return ZetDataType(isSigned ? I64 : U64, bits);
}

ZetDataType ZetDataType::fromMinMax(double min, double max)
{
    if (min >= 0.0) {
        for (const Type type : kUnsignedTypes) {
            if (max <= kTypes[type].max) {
                return type;
            }
        }
        if (max <= kDoubleMax) {
            return U64;
        }
    }
    for (const Type type : kSignedTypes) {
        if (min < 0.0 && min >= kTypes[type].min && max <= kTypes[type].max) {
            return type;
        }
    }
    return min >= -kFloatMax && max <= kFloatMax ? Float : Double;
}

ZetDataType ZetDataType::leastCommon(const ZetDataType& a, const ZetDataType& b)
{
    const unsigned int depth = std::max(a.m_logicalBitDepth, b.m_logicalBitDepth);
    const auto [low, high] = std::minmax(a.m_type, b.m_type);
    for (const Widening& widening : kWidenings) {
        if (widening.high == high && widening.low == low) {
            return ZetDataType(widening.result, depth);
        }
    }
    return ZetDataType(high, depth);
}

ZetString ZetDataType::className() const
{
    return L"ZetDataType";
}

int ZetDataType::size() const
{
    return rowOf(m_type).size;
}

bool ZetDataType::isSigned() const
{
    return !isInteger() || rowOf(m_type).min < 0.0;
}

double ZetDataType::physicalMinValue() const
{
    return rowOf(m_type).min;
}

double ZetDataType::physicalMaxValue() const
{
    return rowOf(m_type).max;
}

double ZetDataType::logicalMinValue() const
{
    if (!isInteger()) {
        return physicalMinValue();
    }
    return isSigned() ? -std::ldexp(1.0, static_cast<int>(m_logicalBitDepth) - 1) : 0.0;
}

double ZetDataType::logicalMaxValue() const
{
    if (!isInteger()) {
        return physicalMaxValue();
    }
    return std::ldexp(1.0, static_cast<int>(m_logicalBitDepth) - (isSigned() ? 1 : 0)) - 1.0;
}

void ZetDataType::setLogicalBitDepth(unsigned int bits)
{
    const unsigned int full = fullDepth(m_type);
    m_logicalBitDepth = isInteger() && bits != 0 && bits <= full ? bits : full;
}

const ZetString& ZetDataType::toString() const
{
    return enumerator().toString(m_type);
}

ZetDataType::Type ZetDataType::fromString(const ZetString& key)
{
    return static_cast<Type>(internal::enumFromString(enumerator(), key, Invalid));
}

bool ZetDataType::isValid(const ZetString& key)
{
    return fromString(key) != Invalid;
}

const ZetStrList& ZetDataType::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetDataType::enumerator()
{
    static const ZetEnum table = internal::makeEnum(kTypes, [](const ElementType& row) {
        const ZetDataTypeInfo info(row.size, row.min, row.max);
        return ZetVariant(ZetMetaType::of<ZetDataTypeInfo>(), &info);
    });
    return table;
}

std::wostream& operator<<(std::wostream& out, const ZetDataType& type)
{
    return out << L"(" << type.toString() << L"," << type.logicalBitDepth() << L")";
}

std::wistream& operator>>(std::wistream& in, ZetDataType& type)
{
    wchar_t mark = 0;
    ZetString key;
    unsigned int depth = 0;
    in >> mark;
    getline(in, key, L',');
    in >> depth >> mark;
    if (in.good()) {
        type = ZetDataType(ZetDataType::fromString(key), depth);
    }
    return in;
}

}  // namespace zet
