// stretch: spreads the values of a raster's bands over the range of the output. See docs/stretch.md.

#include <gdal_priv.h>

#include "Job"
#include "raster/GdalErrors"
#include "raster/Interrupt"
#include "raster/Tool"

namespace {

void run(const std::vector<std::string>& words)
{
    const stretch::Options options = stretch::parseOptions(words);
    const tools::GdalErrors unprinted;
    GDALAllRegister();
    tools::watchSignals();
    stretch::runJob(options);
}

}  // namespace

int main(int argc, char** argv)
{
    return tools::runTool("stretch", argc, argv, run);
}
