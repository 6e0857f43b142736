// bandmath: computes an equation over the bands of raster images. See Options.cpp for what it takes.

#include <gdal_priv.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "Job"
#include "Options"
#include "raster/GdalErrors"
#include "raster/Interrupt"
#include "raster/Tool"

namespace {

/// The remainder of the equation language divides by the processor, which faults on zero. It
/// serves numbers alone, never bands, so the fault comes with the first window, before there is
/// any output.
extern "C" void explainFault(int)
{
    constexpr char kText[] = "bandmath: The equation divides a whole number by zero with '%'.\n";
    const ssize_t written = write(STDERR_FILENO, kText, sizeof kText - 1);
    _exit(written < 0 ? 2 : 1);
}

void run(const std::vector<std::string>& words)
{
    const bandmath::Options options = bandmath::parseOptions(words);
    const tools::GdalErrors unprinted;
    GDALAllRegister();
    tools::watchSignals();
    std::signal(SIGFPE, explainFault);
    bandmath::runJob(options);
}

}  // namespace

int main(int argc, char** argv)
{
    return tools::runTool("bandmath", argc, argv, run);
}
