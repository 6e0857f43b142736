#include <zet/ZetByteOrder>

#include <algorithm>
#include <bit>
#include <limits>

#include <zet/QorSwapBytesLoop>
#include <zet/ZetEnum>
#include <zet/ZetStrList>

#include "core/ZetUnitInit"
#include "reflect/ZetEnumTable"

namespace zet {

namespace {

constexpr const wchar_t* kKeys[] = {L"LittleEndian", L"BigEndian"};
static_assert(std::size(kKeys) == ZetByteOrder::Invalid, "one key per order");

/// Fewer elements are not worth a parallel start.
constexpr unsigned long kLeastForParallel = 256;

/// A range counts in int.
constexpr unsigned long kLongestRange = std::numeric_limits<int>::max();

}  // namespace

ZetByteOrder::ZetByteOrder(Type type) : m_type(static_cast<Type>(internal::enumInRange(type, Invalid))) {}

ZetByteOrder::ZetByteOrder(const ZetString& key) : m_type(fromString(key)) {}

ZetByteOrder::Type ZetByteOrder::nativeOrder()
{
    return std::endian::native == std::endian::big ? BigEndian : LittleEndian;
}

ZetString ZetByteOrder::className() const
{
    return L"ZetByteOrder";
}

const ZetString& ZetByteOrder::toString() const
{
    return enumerator().toString(m_type);
}

ZetByteOrder::Type ZetByteOrder::fromString(const ZetString& key)
{
    return static_cast<Type>(internal::enumFromString(enumerator(), key, Invalid));
}

bool ZetByteOrder::isValid(const ZetString& key)
{
    return fromString(key) != Invalid;
}

const ZetStrList& ZetByteOrder::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetByteOrder::enumerator()
{
    static const ZetEnum table = internal::makeEnum(kKeys);
    return table;
}

std::wostream& operator<<(std::wostream& out, const ZetByteOrder& order)
{
    return out << order.toString();
}

std::wistream& operator>>(std::wistream& in, ZetByteOrder& order)
{
    const int number = internal::readEnum(in, ZetByteOrder::enumerator(), ZetByteOrder::Invalid);
    order = static_cast<ZetByteOrder::Type>(number);
    return in;
}

int swapBytes(void* data, unsigned long count, unsigned long elementSize, bool allowParallel)
{
    const bool parallel = count >= kLeastForParallel && allowParallel;
    unsigned char* bytes = static_cast<unsigned char*>(data);
    int status = 0;
    do {
        const unsigned long part = std::min(count, kLongestRange);
        const ZetBlockedRange1D<int> range(static_cast<int>(part));
        status |= doParallelFor(range, QorSwapBytesLoop(bytes, part, elementSize), parallel, true);
        bytes += part * elementSize;
        count -= part;
    } while (count > 0);
    return status;
}

}  // namespace zet
