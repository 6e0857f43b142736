// register: fits a polynomial model to tie points. See docs/register.md.

#include <gdal_priv.h>

#include <sstream>
#include <string>
#include <vector>

#include "Options"
#include "Report"
#include "TiePoints"
#include "raster/GdalErrors"
#include "raster/Interrupt"
#include "raster/TextFile"
#include "raster/Tool"

namespace {

using namespace registration;

void run(const std::vector<std::string>& words)
{
    const Options options = parseOptions(words);
    const tools::GdalErrors unprinted;
    GDALAllRegister();
    tools::watchSignals();
    const TiePoints points =
        options.raster().empty() ? readPoints(options.points()) : controlPointsOf(options.raster());
    const zet::ZetMatrix coefficients = fit(points, options.model());

    std::wostringstream file;
    file << coefficients;
    tools::Staging staging(options.output());
    tools::writeText(staging, options.output(), file.str());
    tools::throwIfInterrupted();
    tools::print(report(points, options.model(), coefficients));
    staging.commit();
}

}  // namespace

int main(int argc, char** argv)
{
    return tools::runTool("register", argc, argv, run);
}
