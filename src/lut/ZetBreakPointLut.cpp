#include <zet/ZetBreakPointLut>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>

#include <zet/ZetCoreFunctions>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetElementTypes"
#include "lut/ZetLutSupport"

namespace zet {

/// The values of a data type that a table speaks of.
struct ZetBreakPointLut::Range
{
    long low;
    long high;

    /// The number of values, in a type that holds one more than all.
    unsigned long count() const { return static_cast<unsigned long>(high) - static_cast<unsigned long>(low) + 1; }
};

namespace {

/// Posts an error of this unit, from its parts.
template <class... Parts>
void post(int line, const Parts&... parts)
{
    internal::postError(L"ZetBreakPointLut", line, parts...);
}

/// The order of points. Sorting needs one of all points, so a NaN stands behind the other outputs of its
/// band and input.
bool isBefore(const ZetBreakPoint& a, const ZetBreakPoint& b)
{
    if (a.band() == b.band() && a.in() == b.in() && std::isnan(b.out())) {
        return !std::isnan(a.out());
    }
    return a < b;
}

/// A value as an entry stores it. Whole numbers are cut through 64 bits.
template <class T>
T entryOf(double v)
{
    if constexpr (std::is_floating_point<T>::value) {
        return static_cast<T>(v);
    } else if constexpr (std::is_signed<T>::value) {
        return static_cast<T>(internal::truncateToInt64(v >= 0.0 ? v + 0.5 : v - 0.5));
    } else {
        return static_cast<T>(internal::truncateToInt64(v + 0.5));
    }
}

/// Whether a value is cut in 32 bits as it is in 64; false for NaN.
bool isSmall(double v)
{
    return std::abs(v) < 0x1p30;
}

/// Writes \p count entries of the line through x, x + 1 ...
/// Returns  the place behind them.
template <class T>
T* fillLine(T* out, long count, double x, double slope, double intercept)
{
    // whole numbers of at most 33 bits are added without rounding
    const auto valueAt = [=](auto i) { return (x + static_cast<double>(i)) * slope + intercept; };
    if constexpr (std::is_integral_v<T>) {
        // all values lie between those of the ends, for rounding keeps their order
        if (isSmall(valueAt(0L)) && isSmall(valueAt(count - 1)) && count <= std::numeric_limits<int>::max()) {
            for (int i = 0; i < static_cast<int>(count); ++i) {
                const double v = valueAt(i);
                out[i] = static_cast<T>(static_cast<int>(v + (std::is_signed_v<T> ? std::copysign(0.5, v) : 0.5)));
            }
            return out + count;
        }
    }
    for (long i = 0; i < count; ++i) {
        out[i] = entryOf<T>(valueAt(i));
    }
    return out + count;
}

}  // namespace

ZetBreakPointLut::ZetBreakPointLut(const ZetDataType& outputDataType) : m_outputType(outputDataType) {}

ZetBreakPointLut::ZetBreakPointLut(const ZetBreakPointLut& other)
    : ZetObject(other), ZetRefCounted(other), m_outputType(other.m_outputType), m_points(other.m_points)
{}

ZetBreakPointLut& ZetBreakPointLut::operator=(const ZetBreakPointLut& other)
{
    dropTable();
    m_inputType = ZetDataType();
    m_outputType = other.m_outputType;
    m_points = other.m_points;
    return *this;
}

ZetString ZetBreakPointLut::className() const
{
    return L"ZetBreakPointLut";
}

void ZetBreakPointLut::get(std::vector<ZetBreakPoint>& result, unsigned int band) const
{
    result.clear();
    if (m_points.empty()) {
        if (m_table) {
            result = ramp(rangeOf(m_inputType), rangeOf(m_outputType), band);
        }
        return;
    }
    std::copy_if(m_points.begin(), m_points.end(), std::back_inserter(result),
                 [band](const ZetBreakPoint& point) { return point.band() == band; });
    std::sort(result.begin(), result.end(), isBefore);
}

void ZetBreakPointLut::add(const ZetBreakPoint& point)
{
    m_points.push_back(point);
    dropTable();
}

void ZetBreakPointLut::clear()
{
    m_points.clear();
    dropTable();
    m_inputType = ZetDataType();
}

void ZetBreakPointLut::setOutputDataType(const ZetDataType& outputDataType)
{
    if (outputDataType.type() != ZetDataType::Invalid && outputDataType != m_outputType) {
        m_outputType = outputDataType;
        dropTable();
    }
}

ZetLutDescPtr ZetBreakPointLut::lut(const ZetDataType& inputDataType)
{
    if (inputDataType.type() == ZetDataType::Invalid) {
        post(__LINE__, L"Input data type (", inputDataType.toString(), L") is not valid.");
        return ZetLutDescPtr();
    }
    if (m_outputType.type() == ZetDataType::Invalid) {
        post(__LINE__, L"Output data type (", m_outputType.toString(), L") is not valid.");
        return ZetLutDescPtr();
    }
    if (inputDataType != m_inputType) {
        dropTable();
    }
    if (m_table) {
        return m_table;
    }
    const Range in = rangeOf(inputDataType);
    const Range out = rangeOf(m_outputType);
    std::vector<ZetBreakPoint> points = m_points.empty() ? ramp(in, out, 0) : m_points;
    m_inputType = inputDataType;
    if (!checkPoints(points, in, out)) {
        return ZetLutDescPtr();
    }
    std::sort(points.begin(), points.end(), isBefore);
    const unsigned long bands = static_cast<unsigned long>(points.back().band()) + 1;
    const unsigned long bytesPerEntry = static_cast<unsigned long>(m_outputType.size());
    const unsigned long bytes = internal::productOf(bands * bytesPerEntry, in.count());
    if (in.count() > internal::kMostEntries || bytes == internal::kTooMuch) {
        post(__LINE__, L"Could not allocate ", bytes, L" for LUT data.");
        return ZetLutDescPtr();
    }
    const ZetBufferPtr buffer = new ZetBuffer(bytes, true);
    if (!buffer->data()) {
        post(__LINE__, L"Could not allocate ", bytes, L" for LUT data.");
        return ZetLutDescPtr();
    }
    unsigned char* entries = static_cast<unsigned char*>(buffer->data());
    auto first = points.cbegin();
    for (unsigned long band = 0; band < bands; ++band, entries += in.count() * bytesPerEntry) {
        const auto next =
            std::find_if(first, points.cend(), [band](const ZetBreakPoint& point) { return point.band() != band; });
        if (!calculateBand(entries, static_cast<unsigned int>(band), {first, next}, in)) {
            return ZetLutDescPtr();
        }
        first = next;
    }
    m_table = new ZetLutDesc(buffer, m_outputType, static_cast<unsigned int>(in.count()), in.low,
                             static_cast<unsigned int>(bands), bands == 1);
    return m_table;
}

/// The range of an integer type; a fixed one for all others.
ZetBreakPointLut::Range ZetBreakPointLut::rangeOf(const ZetDataType& type)
{
    if (!type.isInteger()) {
        return {-32768, 32767};
    }
    return {internal::truncateToInt64(type.logicalMinValue()), internal::truncateToInt64(type.logicalMaxValue())};
}

/// The two points of a table without points of its own.
std::vector<ZetBreakPoint> ZetBreakPointLut::ramp(const Range& in, const Range& out, unsigned int band)
{
    return {ZetBreakPoint(static_cast<int>(in.low), static_cast<double>(out.low), band),
            ZetBreakPoint(static_cast<int>(in.high), static_cast<double>(out.high), band)};
}

/// Whether all points lie within the ranges, and one in band 0. Posts the first that does not hold.
bool ZetBreakPointLut::checkPoints(const std::vector<ZetBreakPoint>& points, const Range& in, const Range& out)
{
    ZetBreakPoint low = points.front();
    ZetBreakPoint high = low;
    for (const ZetBreakPoint& point : points) {
        low = ZetBreakPoint(std::min(low.in(), point.in()), std::min(low.out(), point.out()),
                            std::min(low.band(), point.band()));
        high = ZetBreakPoint(std::max(high.in(), point.in()), std::max(high.out(), point.out()),
                             std::max(high.band(), point.band()));
    }
    if (low.in() < in.low) {
        post(__LINE__, L"Minimum input value (", low.in(), L") for all bands is smaller than minimum (", in.low,
             L") for bit depth.");
        return false;
    }
    if (high.in() > in.high) {
        post(__LINE__, L"Maximum input value (", high.in(), L") for all bands is larger than maximum (", in.high,
             L") for bit depth.");
        return false;
    }
    if (low.out() < static_cast<double>(out.low)) {
        post(__LINE__, L"Minimum output value (", low.out(), L") for all bands is smaller than minimum (", out.low,
             L") for bit depth.");
        return false;
    }
    if (high.out() > static_cast<double>(out.high)) {
        post(__LINE__, L"Maximum output value (", high.out(), L") for all bands is larger than maximum (", out.high,
             L") for bit depth.");
        return false;
    }
    if (low.band() != 0) {
        post(__LINE__, L"Band numbers must start at zero and cannot be negative.");
        return false;
    }
    return true;
}

/// Fills one band at \p out from its sorted points; posts where that cannot be.
bool ZetBreakPointLut::calculateBand(void* out, unsigned int band, const std::vector<ZetBreakPoint>& points,
                                     const Range& in) const
{
    if (points.size() < 2) {
        post(__LINE__, L"Band ", band, L" does not have at least two break points.");
        return false;
    }
    const bool served =
        internal::visitElement(internal::realColumn(m_outputType.type()), internal::ZetRealTypes(), [&](auto element) {
            using T = typename decltype(element)::type;
            calculateLUT(static_cast<T*>(out), points, in.low, in.high);
        });
    if (!served) {
        post(__LINE__, L"Invalid data type");
    }
    return served;
}

/// Fills one band with the lines between its sorted points. Of points with one input, the last gives
/// the value there.
template <class T>
void ZetBreakPointLut::calculateLUT(T* out, const std::vector<ZetBreakPoint>& points, long minIn, long maxIn)
{
    const ZetBreakPoint& first = points.front();
    const ZetBreakPoint& last = points.back();
    out = std::fill_n(out, first.in() - minIn, entryOf<T>(first.out()));
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const ZetBreakPoint& a = points[i];
        const ZetBreakPoint& b = points[i + 1];
        const long dx = long{b.in()} - a.in();
        const double dy = b.out() - a.out();
        if (dy == 0.0) {
            out = std::fill_n(out, dx, entryOf<T>(b.out()));
        } else if (dx >= 1) {
            const double slope = dy / static_cast<double>(dx);
            const double intercept = a.out() - a.in() * slope;
            out = fillLine(out, dx, a.in(), slope, intercept);
        }
    }
    std::fill_n(out, maxIn - last.in() + 1, entryOf<T>(last.out()));
}

void ZetBreakPointLut::dropTable()
{
    m_table = ZetLutDescPtr();
}

}  // namespace zet
