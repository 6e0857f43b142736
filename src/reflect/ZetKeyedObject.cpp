#include <zet/ZetKeyedObject>

#include <zet/ZetKeyedMetaObj>

#include "core/ZetUnitInit"

namespace zet {

namespace {

/// The next key of the process; the first one is 1.
ZetKey nextKey()
{
    static ZetKey g_nextKey;
    return ++g_nextKey;
}

}  // namespace

ZetKeyedObject::ZetKeyedObject(const ZetString& name) : ZetKeyedObject(nextKey(), name) {}

ZetKeyedObject::ZetKeyedObject(const ZetKey& key, const ZetString& name)
    : m_metaObject(new ZetKeyedMetaObj(this)), m_key(key), m_name(name.empty() ? ZetString(key) : name)
{}

ZetKeyedObject::ZetKeyedObject(const ZetKeyedObject& other)
    : ZetObject(other),
      ZetRefCounted(other),
      m_metaObject(new ZetKeyedMetaObj(this)),
      m_key(other.m_key),
      m_name(other.m_name)
{}

ZetKeyedObject& ZetKeyedObject::operator=(const ZetKeyedObject& other)
{
    m_key = other.m_key;
    m_name = other.m_name;
    return *this;
}

ZetKeyedObject::~ZetKeyedObject() = default;

ZetString ZetKeyedObject::className() const
{
    return L"ZetKeyedObject";
}

ZetMetaObjectPtr ZetKeyedObject::metaObject()
{
    return m_metaObject;
}

ZetMetaObjectConstPtr ZetKeyedObject::metaObject() const
{
    return m_metaObject;
}

ZetMetaPropertiesPtr ZetKeyedObject::staticProperties()
{
    return ZetKeyedMetaObj::staticProperties();
}

ZetMetaPropertiesPtr ZetKeyedMetaObj::staticProperties()
{
    constexpr int computed = ZetMetaFlag::ReadOnly | ZetMetaFlag::NoPersist;
    static const Row rows[] = {
        ZET_ROW(classname, L"Class Name", computed),
        ZET_ROW(key, L"Object ID", computed),
        ZET_ROW(name, L"Object Name", 0),
    };
    return fill(L"ZetKeyedObject", rows);
}

}  // namespace zet
