#include "raster/TextFile"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "raster/Failure"

namespace tools {

namespace {

/// What some editors put in front of UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

zet::ZetString readText(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    file.peek();
    if (!file.is_open() || file.bad()) {
        throw Failure("Cannot read '" + name + "': " + std::strerror(errno) + ".");
    }
    try {
        std::string text(std::istreambuf_iterator<char>(file), {});
        text.erase(0, text.rfind(kByteOrderMark, 0) == 0 ? kByteOrderMark.size() : 0);
        return zet::toWide(text);
    } catch (const std::length_error&) {
        throw Failure("'" + name + "' is not text of the locale.");
    }
}

void writeText(const Staging& staging, const std::string& name, const zet::ZetString& text)
{
    std::ofstream file(staging.path(), std::ios::binary);
    file << zet::toMultibyte(text);
    file.close();
    if (!file) {
        throw Failure("Cannot write '" + name + "': " + std::strerror(errno) + ".");
    }
}

}  // namespace tools
