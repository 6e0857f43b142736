#include <zet/ZetNumValidator>

#include <iterator>
#include <sstream>

#include <zet/ZetNumValidatorFactory>
#include <zet/ZetNumValidatorMetaObj>
#include <zet/ZetObjectProxy>
#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "reflect/ZetElementMetaObj"

namespace zet {

namespace {

/// The number and the bounds of one judgement, all in the kind in which the element type travels.
template <class V>
struct Judgement
{
    static constexpr unsigned int loBoth = 3;
    static constexpr unsigned int upBoth = 12;

    unsigned int flags;
    V value;
    V lower;
    V upper;

    bool passes() const { return passesLower() && passesUpper(); }

    // The comparisons decide where a NaN goes: inclusive bounds pass it, exclusive ones do not.
    bool passesLower() const
    {
        switch (flags & loBoth) {
            case 1:
                return !(value < lower);
            case 2:
                return value > lower;
            default:
                return true;
        }
    }

    bool passesUpper() const
    {
        switch (flags & upBoth) {
            case 4:
                return !(value > upper);
            case 8:
                return value < upper;
            default:
                return true;
        }
    }

    ZetString refusal() const
    {
        std::wostringstream text;
        text << L"The value of '" << value << L"' is not within ";
        if (flags & loBoth) {
            text << (flags & 1 ? L"[" : L"(") << lower << L", ";
        } else {
            text << L"(-inf, ";
        }
        if (flags & upBoth) {
            text << upper << (flags & 4 ? L"]." : L").");
        } else {
            text << L"inf).";
        }
        return text.str();
    }
};

template <class T>
ZetObject* createNumValidator()
{
    return new ZetNumValidator<T>;
}

[[maybe_unused]] const bool s_registered = ZetObjectProxy::registerFactory(new ZetNumValidatorFactory);

}  // namespace

template <class T>
ZetString ZetNumValidator<T>::className() const
{
    return L"ZetNumValidator";
}

template <class T>
ZetMetaObjectConstPtr ZetNumValidator<T>::metaObject() const
{
    return internal::numValidatorMetaObj(this, typeID<T>());
}

template <class T>
ZetValidator* ZetNumValidator<T>::clone() const
{
    return new ZetNumValidator(*this);
}

template <class T>
bool ZetNumValidator<T>::isEqual(const ZetValidator* other) const
{
    const auto* that = dynamic_cast<const ZetNumValidator*>(other);
    return that && m_flags == that->m_flags && m_lower_bound == that->m_lower_bound &&
           m_upper_bound == that->m_upper_bound;
}

template <class T>
bool ZetNumValidator<T>::isValid(const ZetVariant& value, ZetTextMsg* msg) const
{
    if (m_flags == 0) {
        return true;
    }
    using Travel = typename internal::ZetTravel<T>::type;
    const Judgement<Travel> judgement = {m_flags, value.value<Travel>(), static_cast<Travel>(m_lower_bound),
                                         static_cast<Travel>(m_upper_bound)};
    if (judgement.passes()) {
        return true;
    }
    if (msg) {
        msg->setText(judgement.refusal(), L"ZetNumValidator", __LINE__, ZetTextMsg::Error);
    }
    return false;
}

template class ZetNumValidator<signed char>;
template class ZetNumValidator<unsigned char>;
template class ZetNumValidator<short>;
template class ZetNumValidator<unsigned short>;
template class ZetNumValidator<int>;
template class ZetNumValidator<unsigned int>;
template class ZetNumValidator<long>;
template class ZetNumValidator<unsigned long>;
template class ZetNumValidator<float>;
template class ZetNumValidator<double>;

ZetMetaObjectPtr internal::numValidatorMetaObj(const void* validator, unsigned long elementId)
{
    return elementMetaObj<ZetNumValidatorMetaObj, ZetNumValidator, signed char>(validator, elementId);
}

ZetString ZetNumValidatorFactory::className() const
{
    return L"ZetNumValidatorFactory";
}

ZetString ZetNumValidatorFactory::objectType() const
{
    return L"ZetNumValidator";
}

ZetObject* ZetNumValidatorFactory::createObject(const std::map<ZetString, ZetVariant>& properties) const
{
    // In the order of the element types' numbers.
    static constexpr ZetObject* (*creators[])() = {
        &createNumValidator<signed char>,    &createNumValidator<unsigned char>, &createNumValidator<short>,
        &createNumValidator<unsigned short>, &createNumValidator<int>,           &createNumValidator<unsigned int>,
        &createNumValidator<long>,           &createNumValidator<unsigned long>, &createNumValidator<float>,
        &createNumValidator<double>,
    };
    const auto entry = properties.find(L"template_type");
    if (entry == properties.end()) {
        return nullptr;
    }
    const auto number = static_cast<unsigned int>(entry->second.value<ZetDataType>().type());
    return number < std::size(creators) ? creators[number]() : nullptr;
}

}  // namespace zet
