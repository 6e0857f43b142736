#include <zet/ZetMetaProperties>

#include "core/ZetUnitInit"

namespace zet {

ZetMetaProperties::ZetMetaProperties(const ZetString& className, const ZetMetaPropertiesPtr& parent)
    : m_className(className), m_parent(parent)
{}

ZetString ZetMetaProperties::className() const
{
    return L"ZetMetaProperties";
}

int ZetMetaProperties::append(const ZetMetaPropertyPtr& property)
{
    if (!m_properties.emplace(property->name(), property).second) {
        return 1;
    }
    m_names.append(property->name());
    return 0;
}

ZetMetaPropertyPtr ZetMetaProperties::property(const ZetString& name, bool inherited)
{
    const auto found = m_properties.find(name);
    if (found != m_properties.end()) {
        return found->second;
    }
    return inherited && m_parent ? m_parent->property(name, true) : ZetMetaPropertyPtr();
}

ZetMetaPropertyConstPtr ZetMetaProperties::property(const ZetString& name, bool inherited) const
{
    const auto found = m_properties.find(name);
    if (found != m_properties.end()) {
        return found->second;
    }
    return inherited && m_parent ? m_parent->property(name, true) : ZetMetaPropertyPtr();
}

int ZetMetaProperties::numProperties(bool inherited) const
{
    const int own = static_cast<int>(m_properties.size());
    return inherited && m_parent ? own + m_parent->numProperties(false) : own;
}

ZetStrList ZetMetaProperties::propertyNames(bool inherited) const
{
    ZetStrList names;
    if (inherited && m_parent) {
        names = m_parent->propertyNames(true);
    }
    for (const ZetString& name : m_names) {
        names.append(name);
    }
    return names;
}

}  // namespace zet
