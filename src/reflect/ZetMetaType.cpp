#include <zet/ZetMetaType>

#include <iostream>
#include <map>

#include <zet/ZetEnum>
#include <zet/ZetVariant>

#include "core/ZetUnitInit"
#include "reflect/ZetBuiltInClasses"

namespace zet {
namespace {

/// The kinds that the process knows: the built-in ones from the start, custom ones as they register.
class Kinds
{
public:
    static Kinds& instance()
    {
        static Kinds kinds;
        return kinds;
    }

    const ZetEnum& names() const { return m_names; }

    ZetMetaType::Type find(unsigned long id) const
    {
        const auto found = m_numbers.find(id);
        return found != m_numbers.end() ? found->second : ZetMetaType::Invalid;
    }

    ZetMetaType::Type addCustom(unsigned long id, const ZetString& name)
    {
        const auto number = static_cast<ZetMetaType::Type>(m_nextCustom++);
        add(number, name, id);
        return number;
    }

private:
    Kinds()
    {
#define ZET_ADD(Number, Enumerator, Name, Class, Numeric) add(ZetMetaType::Enumerator, Name, typeID<Class>());
        ZET_BUILT_IN_TYPES(ZET_ADD)
#undef ZET_ADD
    }

    void add(ZetMetaType::Type number, const ZetString& name, unsigned long id)
    {
        m_names.insert(ZetEnum::Item({number, name}, ZetVariant(id)));
        m_numbers.emplace(id, number);
    }

    ZetEnum m_names;
    std::map<unsigned long, ZetMetaType::Type> m_numbers;
    int m_nextCustom = ZetMetaType::FirstCustom;
};

}  // namespace

ZetMetaType::ZetMetaType(const ZetString& name) : m_type(fromString(name)) {}

ZetMetaType::Type ZetMetaType::customOrInvalid(Type type)
{
    return type > Invalid && enumerator().items().count(type) != 0 ? type : Invalid;
}

ZetString ZetMetaType::className() const
{
    return L"ZetMetaType";
}

bool ZetMetaType::isNumeric() const
{
#define ZET_NUMERIC(Number, Enumerator, Name, Class, Numeric) Numeric,
    static constexpr bool numeric[] = {ZET_BUILT_IN_TYPES(ZET_NUMERIC)};
#undef ZET_NUMERIC
    static_assert(std::size(numeric) == Invalid, "one row a kind");
    return m_type < Invalid && numeric[m_type];
}

unsigned long ZetMetaType::typeID() const
{
    const ZetVariant id = enumerator().data(m_type);
    return id.isValid() ? id.value<unsigned long>() : 0;
}

const ZetString& ZetMetaType::toString() const
{
    return enumerator().toString(m_type);
}

ZetMetaType::Type ZetMetaType::fromTypeID(unsigned long id)
{
    return Kinds::instance().find(id);
}

ZetMetaType::Type ZetMetaType::fromString(const ZetString& name)
{
    const int number = enumerator().fromString(name);
    return number == ZetEnum::INVALID_ENUM ? Invalid : static_cast<Type>(number);
}

bool ZetMetaType::isValid(const ZetString& name)
{
    return fromString(name) != Invalid;
}

const ZetStrList& ZetMetaType::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetMetaType::enumerator()
{
    return Kinds::instance().names();
}

ZetMetaType::Type ZetMetaType::registerType(unsigned long id, const ZetString& name)
{
    const Type named = fromString(name);
    if (named != Invalid) {
        return named;
    }
    const Type known = fromTypeID(id);
    return known != Invalid ? known : Kinds::instance().addCustom(id, name);
}

std::wostream& operator<<(std::wostream& out, const ZetMetaType& type)
{
    return out << type.toString();
}

std::wistream& operator>>(std::wistream& in, ZetMetaType& type)
{
    ZetString name;
    in >> name;
    type = ZetMetaType(name);
    return in;
}

}  // namespace zet
