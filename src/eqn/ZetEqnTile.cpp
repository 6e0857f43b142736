#include <zet/ZetEqnTile>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <limits>

#include "core/ZetUnitInit"
#include "eqn/ZetTileAccess"

namespace zet {

namespace {

/// The place of a number in the order of all doubles; both zeros have the same.
std::uint64_t placeInOrder(double x)
{
    constexpr std::uint64_t zero = std::uint64_t{1} << 63;
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(x);
    return bits < zero ? zero + bits : zero - (bits - zero);
}

/// Whether two numbers are no more than 4 places apart; false for NaN.
bool isNear(double x, double y)
{
    if (std::isnan(x) || std::isnan(y)) {
        return false;
    }
    const std::uint64_t a = placeInOrder(x);
    const std::uint64_t b = placeInOrder(y);
    return (a > b ? a - b : b - a) <= 4;
}

/// Whether all elements of two tiles of one size and one floating or complex type are near.
bool areNear(const internal::ZetTileSource& a, const internal::ZetTileSource& b)
{
    bool equal = true;
    internal::forBlocks(a.size(), [&](unsigned long first, unsigned long count) {
        double x[2 * internal::kTileBlock];
        double y[2 * internal::kTileBlock];
        if (!equal) {
            return;
        }
        if (a.isComplex()) {
            a.copyComplex(first, count, x);
            b.copyComplex(first, count, y);
            count *= 2;
        } else {
            a.copy(first, count, x);
            b.copy(first, count, y);
        }
        equal = std::equal(x, x + count, y, isNear);
    });
    return equal;
}

/// The product, or the greatest number where it overflows: more than memory can hold.
unsigned long byteCount(unsigned long size, unsigned long elementSize)
{
    constexpr unsigned long most = std::numeric_limits<unsigned long>::max();
    return size > most / elementSize ? most : size * elementSize;
}

}  // namespace

ZetEqnTile::ZetEqnTile() : m_increment(1), m_size(0), m_lender(nullptr) {}

ZetEqnTile::ZetEqnTile(const ZetBufferPtr& buffer, const ZetDataType& dataType, unsigned long size, long increment)
    : m_increment(increment), m_size(buffer ? size : 0), m_dataType(dataType), m_buffer(buffer), m_lender(nullptr)
{}

ZetEqnTile::ZetEqnTile(const ZetEqnTile& other)
    : ZetObject(other),
      m_increment(other.m_increment),
      m_size(other.m_size),
      m_dataType(other.m_dataType),
      m_buffer(other.m_buffer),
      m_lender(nullptr)
{}

ZetEqnTile& ZetEqnTile::operator=(const ZetEqnTile& other)
{
    if (m_buffer == other.m_buffer) {
        return *this;
    }
    m_increment = other.m_increment;
    m_size = other.m_size;
    m_dataType = other.m_dataType;
    m_buffer = other.m_buffer;
    m_lender = nullptr;
    return *this;
}

ZetEqnTile::~ZetEqnTile() = default;

ZetString ZetEqnTile::className() const
{
    return L"ZetEqnTile";
}

bool ZetEqnTile::operator==(const ZetEqnTile& other) const
{
    if (this == &other) {
        return true;
    }
    if (!m_buffer || !other.m_buffer) {
        return false;
    }
    if (*m_buffer == *other.m_buffer) {
        return true;
    }
    if (m_size != other.m_size || m_dataType != other.m_dataType) {
        return false;
    }
    const internal::ZetTileSource a(*this);
    const internal::ZetTileSource b(other);
    const bool areFilled = a.size() == m_size && b.size() == m_size;
    return areFilled && (m_dataType.isFloat() || m_dataType.isComplex()) && areNear(a, b);
}

void ZetEqnTile::initialize(const ZetDataType& type, unsigned long size)
{
    const ZetDataType newType(type);
    const unsigned long elementSize = static_cast<unsigned long>(newType.size());
    m_increment = 1;
    m_size = 0;
    m_dataType = ZetDataType();
    m_buffer = ZetBufferPtr();
    m_lender = nullptr;
    if (size != 0 && elementSize != 0) {
        const ZetBufferPtr buffer(new ZetBuffer(byteCount(size, elementSize), false));
        if (!buffer->allocate()) {
            return;
        }
        m_buffer = buffer;
    }
    m_size = size;
    m_dataType = newType;
}

ZetEqnTile ZetEqnTile::clone() const
{
    ZetEqnTile copy;
    if (m_size == 0) {
        return copy;
    }
    if (m_buffer) {
        copy.m_buffer = new ZetBuffer(*m_buffer);
        if (m_buffer->data() && !copy.m_buffer->data()) {
            return ZetEqnTile();
        }
    }
    copy.m_increment = m_increment;
    copy.m_size = m_size;
    copy.m_dataType = m_dataType;
    return copy;
}

std::wostream& operator<<(std::wostream& out, const ZetEqnTile&)
{
    out.setstate(std::ios::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetEqnTile&)
{
    in.setstate(std::ios::failbit);
    return in;
}

}  // namespace zet
