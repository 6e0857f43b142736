#include <zet/ZetBreakPoint>

#include <sstream>

#include <zet/ZetBreakPointMetaObj>

#include "core/ZetUnitInit"
#include "image/ZetTupleText"

namespace zet {

ZetMetaPropertiesPtr ZetBreakPointMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(in, L"In", 0),
        ZET_ROW(out, L"Out", 0),
        ZET_ROW(band, L"Band", 0),
    };
    return fill(L"ZetBreakPoint", rows);
}

ZetMetaObjectConstPtr ZetBreakPoint::metaObject() const
{
    return new ZetBreakPointMetaObj(this);
}

ZetString ZetBreakPoint::className() const
{
    return L"ZetBreakPoint";
}

bool ZetBreakPoint::operator<(const ZetBreakPoint& other) const
{
    if (m_band != other.m_band) {
        return m_band < other.m_band;
    }
    return m_in != other.m_in ? m_in < other.m_in : m_out < other.m_out;
}

ZetString ZetBreakPoint::toString() const
{
    std::wostringstream out;
    out << *this;
    return out.str();
}

long ZetBreakPoint::fromString(const ZetString& text)
{
    std::wistringstream in(text);
    in >> *this;
    return in.good() ? static_cast<long>(in.tellg()) : 0;
}

std::wostream& operator<<(std::wostream& out, const ZetBreakPoint& point)
{
    return internal::writeTuple(out, point.in(), point.out(), point.band());
}

std::wistream& operator>>(std::wistream& in, ZetBreakPoint& point)
{
    int input = 0;
    double output = 0.0;
    unsigned int band = 0;
    if (internal::readTuple(in, input, output, band)) {
        point = ZetBreakPoint(input, output, band);
    }
    return in;
}

}  // namespace zet
