#include <zet/ZetMetaProperty>

#include <ostream>

#include <zet/ZetMetaPropertyMetaObj>

#include "core/ZetUnitInit"
#include "reflect/ZetCustomVariant"

namespace zet {

namespace {

class ZetMetaPropertyVariant : public internal::ZetCustomVariant<ZetMetaPropertyVariant, ZetMetaProperty>
{
};

[[maybe_unused]] const bool s_registered =
    ZetVariant::registerType<ZetMetaProperty>(L"ZetMetaProperty", new ZetMetaPropertyVariant);

ZetString readToComma(std::wistream& in)
{
    ZetString text;
    getline(in, text, L',');
    return text;
}

}  // namespace

ZetMetaProperty::ZetMetaProperty() : ZetKeyedObject(ZetString()), m_type(ZetMetaType::String), m_command_flag(0)
{
    setName(ZetString());
}

ZetMetaProperty::ZetMetaProperty(const ZetString& name, const ZetMetaType& type, const ZetMetaFlag& flags,
                                 const ZetString& label, const ZetString& description, int commandFlag)
    : ZetMetaProperty(static_cast<wchar_t>(commandFlag), name, description, type, flags, label)
{}

ZetMetaProperty::ZetMetaProperty(wchar_t commandFlag, const ZetString& name, const ZetString& description,
                                 const ZetMetaType& type, const ZetMetaFlag& flags, const ZetString& label)
    : ZetKeyedObject(trim(name)),
      m_type(type),
      m_flags(flags),
      m_label(label.empty() ? this->name() : label),
      m_description(description),
      m_command_flag(commandFlag)
{}

ZetString ZetMetaProperty::className() const
{
    return L"ZetMetaProperty";
}

ZetMetaObjectPtr ZetMetaProperty::metaObject()
{
    return new ZetMetaPropertyMetaObj(this);
}

ZetMetaObjectConstPtr ZetMetaProperty::metaObject() const
{
    return new ZetMetaPropertyMetaObj(this);
}

void ZetMetaProperty::setValidator(const ZetValidatorConstPtr& validator)
{
    m_validator = validator ? ZetValidatorConstPtr(validator->clone()) : ZetValidatorConstPtr();
}

bool ZetMetaProperty::operator==(const ZetMetaProperty& other) const
{
    if (name() != other.name() || m_label != other.m_label || m_description != other.m_description ||
        m_flags.flags() != other.m_flags.flags() || m_type != other.m_type || m_command_flag != other.m_command_flag) {
        return false;
    }
    if (!m_validator || !other.m_validator) {
        return m_validator == other.m_validator;
    }
    return m_validator->isEqual(other.m_validator.get());
}

std::wostream& operator<<(std::wostream& out, const ZetMetaProperty& property)
{
    return out << L'(' << property.name() << L',' << property.label() << L',' << property.type() << L','
               << property.flags() << L',' << property.description() << L',' << property.commandFlag() << L')';
}

std::wistream& operator>>(std::wistream& in, ZetMetaProperty& property)
{
    wchar_t bracket = 0;
    wchar_t commandFlag = 0;
    in >> bracket;
    property.setName(trim(readToComma(in)));
    property.setLabel(readToComma(in));
    property.setType(trim(readToComma(in)));
    property.setFlags(ZetMetaFlag::fromString(readToComma(in)));
    property.setDescription(readToComma(in));
    in >> commandFlag >> bracket;
    property.setCommandFlag(commandFlag);
    return in;
}

int ZetMetaPropertyMetaObj::set_name(const ZetVariant& value)
{
    m_object->setName(value.value<ZetString>());
    return 0;
}

int ZetMetaPropertyMetaObj::set_type(const ZetVariant& value)
{
    const ZetString name = value.value<ZetString>();
    if (!ZetMetaType::isValid(name)) {
        return 1;
    }
    m_object->setType(name);
    return 0;
}

int ZetMetaPropertyMetaObj::set_flags(const ZetVariant& value)
{
    m_object->setFlags(ZetMetaFlag::fromString(value.value<ZetString>()));
    return 0;
}

int ZetMetaPropertyMetaObj::set_validator(const ZetVariant& value)
{
    const ZetValidatorConstPtr validator(value.value<ZetObjectProxy>().createObject<ZetValidator>().release());
    if (validator) {
        m_object->setValidator(validator);
    }
    return 0;
}

int ZetMetaPropertyMetaObj::get_validator(ZetVariant& value) const
{
    ZetObjectProxy proxy;
    if (m_object->validator()) {
        proxy.setObject(*m_object->validator());
    }
    return read(proxy, value);
}

ZetMetaPropertiesPtr ZetMetaPropertyMetaObj::staticProperties()
{
    static const Row rows[] = {
        ZET_ROW(name, L"Name", 0),
        ZET_ROW(label, L"Label", 0),
        ZET_ROW(type, L"Type", 0),
        ZET_ROW(flags, L"Flags", 0),
        ZET_ROW(description, L"Description", 0),
        ZET_ROW(command_flag, L"Command Flag", 0),
        ZET_ROW(validator, L"Validator", 0),
    };
    return fill(L"ZetMetaProperty", rows);
}

}  // namespace zet
