#include <zet/ZetMetaObject>
#include <zet/ZetObject>

#include "core/ZetUnitInit"

namespace zet {

ZetMetaObjectPtr ZetObject::metaObject()
{
    const ZetMetaObjectConstPtr readable = static_cast<const ZetObject*>(this)->metaObject();
    return const_cast<ZetMetaObject*>(readable.get());
}

ZetString ZetObject::className() const
{
    return L"ZetObject";
}

ZetMetaObjectConstPtr ZetObject::metaObject() const
{
    return ZetMetaObjectConstPtr();
}

bool ZetObject::isMetaObject() const
{
    return metaObject().booleanTest();
}

}  // namespace zet
