// bandmath: computes an equation over the bands of raster images. See Options.cpp for what it takes.

#include <gdal_priv.h>

#include <string>
#include <vector>

#include "Job"
#include "Options"
#include "raster/GdalErrors"
#include "raster/Interrupt"
#include "raster/Tool"
#include "support/EquationFailure"

namespace {

void run(const std::vector<std::string>& words)
{
    const bandmath::Options options = bandmath::parseOptions(words);
    const tools::GdalErrors unprinted;
    GDALAllRegister();
    tools::watchSignals();
    // No band is divided so: the fault comes with the first window, before there is any output.
    tools::explainDivision("bandmath");
    bandmath::runJob(options);
}

}  // namespace

int main(int argc, char** argv)
{
    return tools::runTool("bandmath", argc, argv, run);
}
