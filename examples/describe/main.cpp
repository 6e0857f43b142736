// describe: tells what a raster image is made of, in the library's own values. See docs/describe.md.

#include <gdal_priv.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <zet/ZetString>

#include "Answer"
#include "raster/Failure"
#include "raster/GdalErrors"
#include "raster/Tool"

namespace {

/// Prints what the command line asks for.
void run(const std::vector<std::string>& words)
{
    const describe::Request request = describe::parseRequest(words);
    const tools::GdalErrors unprinted;
    GDALAllRegister();
    const describe::RasterPtr raster = std::make_shared<describe::Raster>(zet::toMultibyte(request.file()));
    const std::string text = zet::toMultibyte(describe::answer(request, raster));
    if (request.trace()) {
        for (const std::string& asked : raster->asked) {
            std::fprintf(stderr, "asked for the %s\n", asked.c_str());
        }
    }
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0) {
        throw tools::Failure("Cannot write the description.");
    }
}

}  // namespace

int main(int argc, char** argv)
{
    return tools::runTool("describe", argc, argv, run);
}
