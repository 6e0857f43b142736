// bandmath: computes an equation over the bands of raster images. See helpText() in Options.cpp.

#include <gdal_priv.h>

#include <clocale>
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

namespace {

/// File names and equations come as the user's locale writes them; without one, as UTF-8. Numbers
/// keep the point.
void chooseLocale()
{
    if (!std::setlocale(LC_CTYPE, "") || std::string(std::setlocale(LC_CTYPE, nullptr)) == "C") {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}

int fail(const std::string& text, int code)
{
    std::fprintf(stderr, "bandmath: %s\n", text.c_str());
    return code;
}

int run(const std::vector<std::string>& arguments)
{
    try {
        const bandmath::Options options = bandmath::parseOptions(arguments);
        if (options.help) {
            std::fputs(bandmath::helpText().c_str(), stdout);
            return 0;
        }
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
    chooseLocale();
    return run(std::vector<std::string>(argv + 1, argv + argc));
}
