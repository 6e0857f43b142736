#include "Options"

#include <zet/ZetEnum>
#include <zet/ZetEnumValidator>
#include <zet/ZetMetaObjectImpl>

#include "support/CommandLine"

namespace registration {

namespace {

using zet::ZetString;

const wchar_t* const kDescription =
    L"Finds the polynomials in u and v that give the x and y of tie points with the least sum of squares. Prints what "
    L"is left over at each point, the root of its mean square and the polynomials, and writes their coefficients as a "
    L"matrix in a CMF file: a row for x and one for y, with the columns 1, u, v and, of second order, u*u, u*v, v*v.\n"
    L"A file of tie points has one a line, such as \"((10.5,20),(512340,4815600))\" for u, v, x and y. Empty lines, "
    L"and "
    L"lines that begin with \"#\", are passed over. Of ground control points u is the column and v the line.\n"
    L"The exit code is 0, and 1 after a failure, which leaves no output behind.";

zet::ZetEnum modelNames()
{
    zet::ZetEnum names;
    for (const Model model : {Model::Affine, Model::SecondOrder}) {
        names.insert(zet::ZetEnum::Item({static_cast<int>(model), zet::toWide(nameOf(model))}));
    }
    return names;
}

}  // namespace

class OptionsMetaObj : public zet::ZetMetaObjectImpl<OptionsMetaObj, Options>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, points)
    ZET_PROPERTY(ZetString, raster)
    ZET_PROPERTY(ZetString, output)
    ZET_PROPERTY(ZetString, model)

    static zet::ZetMetaPropertiesPtr staticProperties()
    {
        using zet::ZetMetaFlag;
        static constexpr Row rows[] = {
            ZET_OPTION(points, L'p', ZetMetaFlag::InFileName, L"a text file of tie points"),
            ZET_OPTION(raster, L'r', ZetMetaFlag::InFileName, L"a raster that has ground control points"),
            ZET_OPTION(output, L'o', ZetMetaFlag::Required | ZetMetaFlag::OutFileName, L"the CMF file to write"),
            ZET_OPTION(model, L'm', 0, L"affine or second-order; default affine"),
        };
        const zet::ZetMetaPropertiesPtr properties = fill(L"Options", rows);
        properties->property(L"model", false)->setValidator(new zet::ZetEnumValidator(modelNames()));
        return properties;
    }
};

zet::ZetMetaObjectConstPtr Options::metaObject() const
{
    return new OptionsMetaObj(this);
}

Options parseOptions(const std::vector<std::string>& words)
{
    Options options;
    tools::CommandLine commandLine(options, kDescription, {{}, {{L"points", L"raster"}}});
    commandLine.parse(words);
    return options;
}

}  // namespace registration
