#include "raster/Tool"

#include <cstdio>
#include <exception>

#include <zet/ZetString>
#include <zet/ZetTextMsg>

#include "raster/Failure"
#include "support/CommandLine"

namespace tools {

namespace {

int fail(const char* name, const std::string& text, int code)
{
    std::fprintf(stderr, "%s: %s\n", name, text.c_str());
    return code;
}

}  // namespace

int runTool(const char* name, int argc, char** argv, void (*work)(const std::vector<std::string>& words))
{
    chooseLocale();
    try {
        work({argv, argv + argc});
        return 0;
    } catch (const Interrupted& interrupted) {
        return fail(name, interrupted.what(), 130);
    } catch (const zet::ZetTextMsg& message) {
        return fail(name, zet::toMultibyte(message.text()), 1);
    } catch (const std::exception& failure) {
        return fail(name, failure.what(), 1);
    }
}

void print(const std::string& text)
{
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0) {
        throw Failure("Cannot write to the standard output.");
    }
}

}  // namespace tools
