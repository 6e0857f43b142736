#include <zet/ZetMetaDataField>

#include <zet/ZetMetaDataFieldMetaObj>

#include "core/ZetUnitInit"

namespace zet {

ZetMetaPropertiesPtr ZetMetaDataFieldMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(name, L"Name", 0),
        ZET_ROW(description, L"Description", 0),
        ZET_ROW(values, L"Values", 0),
    };
    return fill(L"ZetMetaDataField", rows);
}

ZetMetaObjectConstPtr ZetMetaDataField::metaObject() const
{
    return new ZetMetaDataFieldMetaObj(this);
}

ZetString ZetMetaDataField::className() const
{
    return L"ZetMetaDataField";
}

std::wostream& operator<<(std::wostream& out, const ZetMetaDataField& field)
{
    out << L"(" << field.name() << L",\"" << field.description() << L"\"," << field.values().size() << L",";
    const wchar_t* separator = L"";
    for (const ZetVariant& value : field.values()) {
        out << separator << L'"' << value.value<ZetString>() << L'"';
        separator = L",";
    }
    return out << L")";
}

std::wistream& operator>>(std::wistream& in, ZetMetaDataField& field)
{
    static_cast<void>(field);
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
