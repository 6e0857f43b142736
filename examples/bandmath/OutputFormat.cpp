#include "OutputFormat"

#include <cmath>
#include <limits>

#include "raster/ElementTypes"
#include "raster/Failure"

namespace bandmath {

using tools::Failure;
using tools::IsComplex;
using tools::isNaN;
using tools::magnitude;
using tools::nameOf;
using tools::visitElements;

namespace {

using zet::ZetDataType;

std::string textOf(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

/// Whether an element of the type can hold \p value: exactly for whole numbers, rounded for others.
bool holds(const ZetDataType& type, double value)
{
    const bool inside = value >= type.physicalMinValue() && value <= type.physicalMaxValue();
    if (!type.isInteger()) {
        return inside || !std::isfinite(value);
    }
    // The upper limits of the 64-bit types are rounded up to a value that they do not hold.
    return inside && value == std::floor(value) && !(type.size() == 8 && value == type.physicalMaxValue());
}

ZetDataType::Type chosenType(const std::string& name, ZetDataType::Type computed)
{
    if (name.empty()) {
        return computed;
    }
    const ZetDataType::Type type = ZetDataType::fromString(name);
    if (ZetDataType(computed).isComplex() && !ZetDataType(type).isComplex()) {
        throw Failure("The equation gives complex pixels, which " + name +
                      " cannot hold: take real(), imag(), arg() or norm() in the equation.");
    }
    return type;
}

/// The no-data value of a type: the given one, else NaN, or the end of an integer's range that
/// pictures need least.
template <class T>
T noDataOf(const std::optional<double>& given)
{
    if constexpr (IsComplex<T>::value) {
        return T(noDataOf<typename T::value_type>(given));
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(given.value_or(std::numeric_limits<double>::quiet_NaN()));
    } else if (given) {
        return static_cast<T>(*given);
    } else {
        return std::is_signed_v<T> ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
    }
}

}  // namespace

OutputFormat::OutputFormat(const Options& options, ZetDataType::Type computed, bool bandsHaveNoData)
    : m_type(chosenType(options.elementType(), computed)),
      m_rounds(false),
      m_low(0),
      m_high(0),
      m_hasNoData(options.noData() || bandsHaveNoData),
      m_noData(options.noData())
{
    if (m_noData && !holds(m_type, *m_noData)) {
        throw Failure("The no-data value " + textOf(*m_noData) + " is none of the element type " + nameOf(m_type) +
                      ".");
    }
    chooseLimits(options, computed);
}

void OutputFormat::chooseLimits(const Options& options, ZetDataType::Type computed)
{
    const ZetDataType type(m_type);
    const bool limited = options.minimum() || options.maximum();
    m_rounds = limited || (m_type != computed && !type.isComplex());
    if (!m_rounds) {
        return;
    }
    if (type.isComplex()) {
        throw Failure("--min and --max have no meaning for complex pixels.");
    }
    if (m_type == ZetDataType::I64 || m_type == ZetDataType::U64 || computed == ZetDataType::I64 ||
        computed == ZetDataType::U64) {
        throw Failure("Pixels of type " + nameOf(computed) + " cannot be rounded and clipped to " + nameOf(m_type) +
                      ": 64-bit integers are only copied as they are.");
    }
    const double infinity = std::numeric_limits<double>::infinity();
    const double lowest = type.isInteger() ? type.physicalMinValue() : -infinity;
    const double greatest = type.isInteger() ? type.physicalMaxValue() : infinity;
    m_low = options.minimum().value_or(lowest);
    m_high = options.maximum().value_or(greatest);
    if (m_low < lowest || m_high > greatest || m_low > m_high) {
        throw Failure("The limits " + textOf(m_low) + " to " + textOf(m_high) + " do not lie within the element type " +
                      nameOf(m_type) + ".");
    }
    keepLimitsOffNoData(options);
}

/// A value that is only cut off at the end of an integer type is not to turn into no-data.
void OutputFormat::keepLimitsOffNoData(const Options& options)
{
    if (!m_hasNoData || !ZetDataType(m_type).isInteger()) {
        return;
    }
    visitElements(m_type, nullptr, [&](auto* element) {
        const double noData = magnitude(noDataOf<std::remove_pointer_t<decltype(element)>>(m_noData));
        if (!options.minimum() && m_low == noData) {
            m_low += 1;
        }
        if (!options.maximum() && m_high == noData) {
            m_high -= 1;
        }
    });
}

void OutputFormat::declareNoData(GDALRasterBand& band) const
{
    if (!m_hasNoData) {
        return;
    }
    visitElements(m_type, nullptr, [&](auto* element) {
        using T = std::remove_pointer_t<decltype(element)>;
        if constexpr (std::is_same_v<T, std::int64_t>) {
            band.SetNoDataValueAsInt64(noDataOf<T>(m_noData));
        } else if constexpr (std::is_same_v<T, std::uint64_t>) {
            band.SetNoDataValueAsUInt64(noDataOf<T>(m_noData));
        } else if constexpr (IsComplex<T>::value) {
            band.SetNoDataValue(static_cast<double>(noDataOf<T>(m_noData).real()));
        } else {
            band.SetNoDataValue(static_cast<double>(noDataOf<T>(m_noData)));
        }
    });
}

void OutputFormat::Tally::add(const Tally& other)
{
    statistics.add(other.statistics);
    noData += other.noData;
    noValue += other.noValue;
    collisions += other.collisions;
}

zet::ZetEqnTile OutputFormat::finish(const zet::ZetEqnTile& computed, Validity& valid, Tally& tally) const
{
    const std::size_t count = computed.size();
    Tally seen;
    visitElements(computed.dataType().type(), computed.buffer()->data(), [&](const auto* elements) {
        for (std::size_t i = 0; i < count; ++i) {
            seen.noData += !valid[i];
            const bool missing = valid[i] && isNaN(elements[i]);
            seen.noValue += missing;
            valid[i] = static_cast<unsigned char>(valid[i] && !missing);
        }
    });
    const zet::ZetEqnTile pixels = m_rounds ? computed.roundclip(m_type, m_low, m_high) : computed;
    visitElements(pixels.dataType().type(), pixels.buffer()->data(), [&](auto* elements) {
        using T = std::remove_pointer_t<decltype(elements)>;
        const T noData = noDataOf<T>(m_noData);
        for (std::size_t i = 0; i < count; ++i) {
            if (valid[i]) {
                seen.statistics.add(magnitude(elements[i]));
                seen.collisions += m_hasNoData && elements[i] == noData;
            } else if (m_hasNoData) {
                elements[i] = noData;
            } else if constexpr (std::is_integral_v<T>) {
                elements[i] = static_cast<T>(m_low);
            }
        }
    });
    tally.add(seen);
    return pixels;
}

}  // namespace bandmath
