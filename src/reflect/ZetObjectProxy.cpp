#include <zet/ZetObjectProxy>

#include <istream>

#include <zet/ZetObjectProxyMetaObj>

#include "core/ZetUnitInit"
#include "reflect/ZetCustomVariant"

namespace zet {

namespace {

class ZetObjectProxyVariant : public internal::ZetCustomVariant<ZetObjectProxyVariant, ZetObjectProxy>
{
};

[[maybe_unused]] const bool s_registered =
    ZetVariant::registerType<ZetObjectProxy>(L"ZetObjectProxy", new ZetObjectProxyVariant);

std::map<ZetString, ZetObjectFactoryPtr>& factories()
{
    static std::map<ZetString, ZetObjectFactoryPtr> registry;
    return registry;
}

}  // namespace

ZetString ZetObjectProxy::className() const
{
    return L"ZetObjectProxy";
}

ZetMetaObjectConstPtr ZetObjectProxy::metaObject() const
{
    return new ZetObjectProxyMetaObj(this);
}

void ZetObjectProxy::setObject(const ZetObject& object)
{
    ZetVariantMap values;
    const ZetMetaObjectConstPtr meta = object.metaObject();
    const ZetMetaPropertiesConstPtr properties = meta ? meta->properties() : ZetMetaPropertiesConstPtr();
    if (properties) {
        for (const ZetString& name : properties->propertyNames(false)) {
            ZetVariant value;
            if (meta->getPropertyValue(name, value) == 0) {
                values[name] = value;
            }
        }
    }
    m_type = object.className();
    m_properties.swap(values);
}

ZetObject* ZetObjectProxy::createObject_aux() const
{
    const auto factory = factories().find(m_type);
    if (factory == factories().end()) {
        return nullptr;
    }
    std::unique_ptr<ZetObject> object(factory->second->createObject(m_properties));
    const ZetMetaObjectPtr meta = object ? object->metaObject() : ZetMetaObjectPtr();
    if (!meta) {
        return nullptr;
    }
    // KEPT: the object's property table is not asked for first, so before the first properties() of
    // its class every write is refused and the object thaws as the factory made it. Refused writes
    // of read-only entries are no failure of the whole.
    // Test: ZetObjectProxyDeathTest.thawBeforePropertiesKeepsTheDefaults.
    for (const auto& [name, value] : m_properties) {
        static_cast<void>(meta->setPropertyValue(name, value));
    }
    return object.release();
}

bool ZetObjectProxy::registerFactory(const ZetObjectFactoryPtr& factory)
{
    factories().emplace(factory->objectType(), factory);
    return true;
}

std::wostream& operator<<(std::wostream& out, const ZetObjectProxy&)
{
    out.setstate(std::ios_base::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetObjectProxy&)
{
    in.setstate(std::ios_base::failbit);
    return in;
}

ZetMetaPropertiesPtr ZetObjectProxyMetaObj::staticProperties()
{
    static const Row rows[] = {
        ZET_ROW(type, L"Type", 0),
        ZET_ROW(properties, L"Properties", 0),
    };
    return fill(L"ZetObjectProxy", rows);
}

}  // namespace zet
