#include <zet/ZetVersion>

#include <istream>
#include <ostream>

#include <zet/ZetStrList>
#include <zet/ZetVersionMetaObj>

#include "core/ZetUnitInit"

namespace zet {
ZetMetaPropertiesPtr ZetVersionMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(major, L"Major", ZetMetaFlag::Editable),
        ZET_ROW(minor, L"Minor", ZetMetaFlag::Editable),
        ZET_ROW(build, L"Build", ZetMetaFlag::Editable),
    };
    return fill(L"ZetVersion", rows);
}

ZetMetaObjectConstPtr ZetVersion::metaObject() const
{
    return new ZetVersionMetaObj(this);
}

ZetString ZetVersion::className() const
{
    return L"ZetVersion";
}

ZetString ZetVersion::toString(const ZetString& separator, bool omitBuild) const
{
    ZetString text = std::to_wstring(m_major) + separator + std::to_wstring(m_minor);
    if (!omitBuild && m_build != 0) {
        text += separator + std::to_wstring(m_build);
    }
    return text;
}

ZetVersion::operator ZetString() const
{
    return toString(L".", false);
}

std::wostream& operator<<(std::wostream& out, const ZetVersion& version)
{
    return out << static_cast<ZetString>(version);
}

std::wistream& operator>>(std::wistream& in, ZetVersion& version)
{
    ZetString word;
    in >> word;
    ZetStrList parts(word, L".");
    while (parts.size() < 3) {
        parts.append(L"0");
    }
    const auto part = [&](std::size_t index) { return static_cast<int>(strtoul(parts[index], 10)); };
    version = ZetVersion(part(0), part(1), part(2));
    return in;
}

}  // namespace zet
