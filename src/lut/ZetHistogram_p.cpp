#include <zet/ZetHistogram_p>

#include <istream>
#include <ostream>

#include <zet/ZetHistogram_pMetaObj>

#include "core/ZetUnitInit"
#include "reflect/ZetCustomVariant"

namespace zet {

namespace {

class ZetHistogram_pVariant : public internal::ZetCustomVariant<ZetHistogram_pVariant, ZetHistogram_p>
{
};

[[maybe_unused]] const bool s_registered =
    ZetVariant::registerType<ZetHistogram_p>(L"ZetHistogram_p", new ZetHistogram_pVariant);

}  // namespace

ZetMetaPropertiesPtr ZetHistogram_pMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(first_bin, L"First Bin", 0),
        ZET_ROW(last_bin, L"Last Bin", 0),
        ZET_ROW(data, L"Data", 0),
    };
    return fill(L"ZetHistogram_p", rows);
}

ZetMetaObjectConstPtr ZetHistogram_p::metaObject() const
{
    return new ZetHistogram_pMetaObj(this);
}

ZetString ZetHistogram_p::className() const
{
    return L"ZetHistogram_p";
}

bool ZetHistogram_p::operator==(const ZetHistogram_p& other) const
{
    if (m_first_bin != other.m_first_bin || m_last_bin != other.m_last_bin) {
        return false;
    }
    return m_data == other.m_data || (m_data && other.m_data && *m_data == *other.m_data);
}

std::wostream& operator<<(std::wostream& out, const ZetHistogram_p& histogram)
{
    static_cast<void>(histogram);
    out.setstate(std::ios_base::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetHistogram_p& histogram)
{
    static_cast<void>(histogram);
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
