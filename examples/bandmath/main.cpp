// bandmath: computes an equation over the bands of raster images. See Options.cpp for what it takes.

#include <gdal_priv.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <zet/ZetString>
#include <zet/ZetTextMsg>

#include "Job"
#include "Options"
#include "raster/Failure"
#include "raster/GdalErrors"
#include "raster/Interrupt"
#include "support/CommandLine"

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

int fail(const std::string& text, int code)
{
    std::fprintf(stderr, "bandmath: %s\n", text.c_str());
    return code;
}

int run(const std::vector<std::string>& words)
{
    try {
        const bandmath::Options options = bandmath::parseOptions(words);
        const tools::GdalErrors unprinted;
        GDALAllRegister();
        tools::watchSignals();
        std::signal(SIGFPE, explainFault);
        bandmath::runJob(options);
        return 0;
    } catch (const tools::Interrupted& interrupted) {
        return fail(interrupted.what(), 130);
    } catch (const zet::ZetTextMsg& message) {
        return fail(zet::toMultibyte(message.text()), 1);
    } catch (const std::exception& failure) {
        return fail(failure.what(), 1);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    tools::chooseLocale();
    return run(std::vector<std::string>(argv, argv + argc));
}
