#include "Options"

#include <complex>
#include <sstream>

#include <zet/ZetMetaObjectImpl>
#include <zet/ZetScalar>
#include <zet/ZetTextMsg>

#include "support/TextValidator"

namespace calc {

namespace {

using zet::ZetString;

[[noreturn]] void fail(const ZetString& text, int line)
{
    throw zet::ZetTextMsg(text, L"calc", line, zet::ZetTextMsg::Error);
}

zet::ZetVariant readValue(const ZetString& text)
{
    std::wistringstream in(text);
    std::complex<double> number;
    if (!(in >> number)) {
        fail(L"'" + text + L"' is no number.", __LINE__);
    }
    ZetString rest;
    zet::getline(in, rest);
    const ZetString unitsText = zet::trim(rest);
    if (unitsText.find_first_not_of(L" \t") != ZetString::npos) {
        zet::ZetUnits units;
        const double scale = units.fromString(unitsText);
        return zet::ZetScalar(number * scale, units);
    }
    if (text.find(L'(') != ZetString::npos) {
        return number;
    }
    return number.real();
}

}  // namespace

std::pair<ZetString, zet::ZetVariant> readAssignment(const ZetString& text)
{
    const std::size_t equals = text.find(L'=');
    if (equals == ZetString::npos) {
        fail(L"'" + text + L"' is not of the form NAME=VALUE.", __LINE__);
    }
    return {zet::trim(text.substr(0, equals)), readValue(zet::trim(text.substr(equals + 1)))};
}

class OptionsMetaObj : public zet::ZetMetaObjectImpl<OptionsMetaObj, Options>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, equation)
    ZET_PROPERTY(zet::ZetStrList, assignments)

    static zet::ZetMetaPropertiesPtr staticProperties()
    {
        static constexpr Row rows[] = {
            ZET_OPTION(equation, 0, zet::ZetMetaFlag::Required,
                       L"the equation, such as \"v*t\"; one that begins with a minus sign takes a blank in front"),
            ZET_OPTION(assignments, 0, 0, L"NAME=VALUE, the value of a variable of the equation, such as \"v=3 m/s\""),
        };
        zet::ZetMetaPropertiesPtr properties = fill(L"Options", rows);
        properties->property(L"assignments", false)->setValidator(new tools::TextValidator([](const ZetString& text) {
            readAssignment(text);
        }));
        return properties;
    }
};

zet::ZetMetaObjectConstPtr Options::metaObject() const
{
    return new OptionsMetaObj(this);
}

}  // namespace calc
