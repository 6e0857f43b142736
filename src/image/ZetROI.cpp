#include <zet/ZetROI>

#include <algorithm>
#include <cstdint>
#include <sstream>

#include <zet/ZetROIMetaObj>

#include "core/ZetUnitInit"
#include "image/ZetTupleText"

namespace zet {

namespace {

/// What a region covers on one axis.
struct Span
{
    std::int64_t origin;
    std::int64_t last;
};

Span spanOf(int origin, unsigned int size)
{
    return {origin, std::int64_t{origin} + size - 1};
}

/// The spans of a region on its three axes.
struct Box
{
    explicit Box(const ZetROI& region)
        : x(spanOf(region.origin().x(), region.size().width())),
          y(spanOf(region.origin().y(), region.size().height())),
          z(spanOf(region.origin().z(), region.size().depth()))
    {}

    Box(Span xSpan, Span ySpan, Span zSpan) : x(xSpan), y(ySpan), z(zSpan) {}

    ZetROI region() const
    {
        return ZetROI(
            ZetCoord3D<int>(static_cast<int>(x.origin), static_cast<int>(y.origin), static_cast<int>(z.origin)),
            ZetImageSize(sizeOf(x), sizeOf(y), sizeOf(z)));
    }

    Span x;
    Span y;
    Span z;

private:
    static unsigned int sizeOf(const Span& span)
    {
        return static_cast<unsigned int>(std::max<std::int64_t>(span.last - span.origin + 1, 0));
    }
};

/// Joins two regions axis by axis.
template <class Join>
ZetROI joinAxes(const ZetROI& a, const ZetROI& b, const Join& join)
{
    const Box left(a);
    const Box right(b);
    return Box(join(left.x, right.x), join(left.y, right.y), join(left.z, right.z)).region();
}

}  // namespace

ZetMetaPropertiesPtr ZetROIMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(origin, L"Origin", 0),
        ZET_ROW(size, L"Size", 0),
    };
    return fill(L"ZetROI", rows);
}

ZetMetaObjectConstPtr ZetROI::metaObject() const
{
    return new ZetROIMetaObj(this);
}

ZetString ZetROI::className() const
{
    return L"ZetROI";
}

ZetROI ZetROI::intersection(const ZetROI& other) const
{
    return joinAxes(*this, other, [](const Span& a, const Span& b) {
        return Span{std::max(a.origin, b.origin), std::min(a.last, b.last)};
    });
}

ZetROI ZetROI::boundingROI(const ZetROI& other) const
{
    if (m_size.isEmpty()) {
        return other;
    }
    if (other.m_size.isEmpty()) {
        return *this;
    }
    return joinAxes(*this, other, [](const Span& a, const Span& b) {
        return Span{a.origin, std::max(a.last, b.last)};
    });
}

ZetROI::operator ZetString() const
{
    std::wostringstream out;
    out << *this;
    return out.str();
}

std::wostream& operator<<(std::wostream& out, const ZetROI& region)
{
    return internal::writeTuple(out, region.origin(), region.size());
}

std::wistream& operator>>(std::wistream& in, ZetROI& region)
{
    ZetCoord3D<int> origin;
    ZetImageSize size;
    region = internal::readTuple(in, origin, size) ? ZetROI(origin, size) : ZetROI();
    return in;
}

}  // namespace zet
