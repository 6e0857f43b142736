#include <zet/ZetParameter>

#include <ostream>

#include <zet/ZetParameterMetaObj>

#include "core/ZetUnitInit"

namespace zet {

namespace {

ZetMetaProperty propertyOf(const ZetString& name, const ZetVariant& value)
{
    ZetMetaProperty property;
    property.setName(name);
    property.setLabel(name);
    property.setType(value.type());
    return property;
}

/// \p property with its flag for expressions set or cleared.
ZetMetaProperty withExpression(ZetMetaProperty property, bool on)
{
    ZetMetaFlag flags = property.flags();
    flags.setFlag(ZetMetaFlag::Expression, on);
    property.setFlags(flags);
    return property;
}

}  // namespace

ZetParameter::ZetParameter() : ZetKeyedObject(ZetString()), m_value(ZetString())
{
    setName(ZetString());
    m_properties = propertyOf(name(), m_value);
}

ZetParameter::ZetParameter(const ZetString& name, const ZetString& crossRef)
    : ZetKeyedObject(name), m_cross_ref(crossRef), m_value(ZetString()), m_properties(propertyOf(this->name(), m_value))
{}

ZetParameter::ZetParameter(const ZetString& name, const ZetVariant& value, bool isExpression)
    : ZetKeyedObject(name), m_value(value), m_properties(withExpression(propertyOf(this->name(), value), isExpression))
{}

ZetParameter::ZetParameter(const ZetMetaProperty& property)
    : ZetKeyedObject(property.name()), m_value(ZetString()), m_properties(property)
{}

ZetParameter::ZetParameter(const ZetParameter& other)
    : ZetKeyedObject(other), m_cross_ref(other.m_cross_ref), m_value(other.m_value), m_properties(other.m_properties)
{}

ZetParameter& ZetParameter::operator=(const ZetParameter& other)
{
    if (this != &other) {
        ZetKeyedObject::operator=(other);
        m_cross_ref = other.m_cross_ref;
        m_value = other.m_value;
        m_properties = other.m_properties;
    }
    return *this;
}

ZetParameter::~ZetParameter() = default;

ZetString ZetParameter::className() const
{
    return L"ZetParameter";
}

ZetMetaObjectPtr ZetParameter::metaObject()
{
    return new ZetParameterMetaObj(this);
}

ZetMetaObjectConstPtr ZetParameter::metaObject() const
{
    return new ZetParameterMetaObj(this);
}

bool ZetParameter::operator==(const ZetParameter& other) const
{
    return m_cross_ref == other.m_cross_ref && m_properties == other.m_properties && m_value == other.m_value;
}

void ZetParameter::setValue(const ZetVariant& value, bool isExpression)
{
    m_value = value;
    m_properties = withExpression(m_properties, isExpression);
}

std::wostream& operator<<(std::wostream& out, const ZetParameter& parameter)
{
    return out << L'(' << parameter.name() << L',' << parameter.value() << L',' << parameter.property() << L')';
}

std::wistream& operator>>(std::wistream& in, ZetParameter& parameter)
{
    wchar_t bracket = 0;
    ZetString name;
    ZetMetaProperty property;
    in >> bracket;
    getline(in, name, L',');
    parameter.setName(trim(name));
    in >> parameter.m_value >> property >> bracket;
    parameter.setProperty(property);
    return in;
}

int ZetParameterMetaObj::set_value(const ZetVariant& value)
{
    m_object->setValue(value, false);
    return 0;
}

int ZetParameterMetaObj::get_value(ZetVariant& value) const
{
    value = m_object->value();
    return value.isValid() ? 0 : 1;
}

ZetMetaObjectPtr ZetParameterMetaObj::superMetaObject() const
{
    return m_object->ZetKeyedObject::metaObject();
}

ZetMetaPropertiesPtr ZetParameterMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(cross_ref, L"Cross Reference", 0),
        ZET_ROW(value, L"Value", 0),
        ZET_ROW(properties, L"Properties", 0),
    };
    // The names that the super meta object serves are ready together with these.
    ZetKeyedObject::staticProperties();
    return fill(L"ZetParameter", rows);
}

}  // namespace zet
