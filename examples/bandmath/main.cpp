// bandmath: computes an equation over the bands of raster images. See Options.cpp for what it takes.

#include <gdal_priv.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <zet/ZetString>
#include <zet/ZetTextMsg>

#include "Failure"
#include "GdalErrors"
#include "Interrupt"
#include "Job"
#include "Options"
#include "support/CommandLine"

namespace {

int fail(const std::string& text, int code)
{
    std::fprintf(stderr, "bandmath: %s\n", text.c_str());
    return code;
}

int run(const std::vector<std::string>& words)
{
    try {
        const bandmath::Options options = bandmath::parseOptions(words);
        const bandmath::GdalErrors unprinted;
        GDALAllRegister();
        bandmath::watchSignals();
        bandmath::runJob(options);
        return 0;
    } catch (const bandmath::Interrupted& interrupted) {
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
