// scale: multiplies numbers. A whole tool, as docs/cmdline.md shows it.

#include <cmath>
#include <iostream>

#include <zet/ZetMetaObjectImpl>
#include <zet/ZetNumValidator>
#include <zet/ZetStrList>

#include "support/CommandLine"

class Options : public zet::ZetObject
{
public:
    zet::ZetString className() const override { return L"Options"; }
    using ZetObject::metaObject;
    zet::ZetMetaObjectConstPtr metaObject() const override;

    zet::ZetStrList m_numbers;
    double m_factor = 2;
    bool m_round = false;
};

class OptionsMetaObj : public zet::ZetMetaObjectImpl<OptionsMetaObj, Options>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(zet::ZetStrList, numbers)
    ZET_PROPERTY(double, factor)
    ZET_PROPERTY(bool, round)

    static zet::ZetMetaPropertiesPtr staticProperties()
    {
        static constexpr Row rows[] = {
            ZET_OPTION(numbers, 0, zet::ZetMetaFlag::Required, L"the numbers to multiply"),
            ZET_OPTION(factor, L'f', 0, L"what to multiply them by; default 2"),
            ZET_OPTION(round, L'r', 0, L"round the products to whole numbers"),
        };
        zet::ZetMetaPropertiesPtr properties = fill(L"Options", rows);
        properties->property(L"factor", false)->setValidator(new zet::ZetNumValidator<double>(5, 0, 100));
        return properties;
    }
};

zet::ZetMetaObjectConstPtr Options::metaObject() const
{
    return new OptionsMetaObj(this);
}

int main(int argc, char** argv)
{
    tools::chooseLocale();
    Options options;
    tools::CommandLine commandLine(options, L"Multiplies numbers by a factor.", {{L"numbers"}, {}});
    commandLine.parse({argv, argv + argc});
    for (const zet::ZetString& number : options.m_numbers) {
        const double product = zet::ZetVariant(number).value<double>() * options.m_factor;
        std::cout << (options.m_round ? std::round(product) : product) << '\n';
    }
    return 0;
}
