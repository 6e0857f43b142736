#include "raster/TextFile"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "raster/Failure"

namespace tools {

zet::ZetString readText(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    file.peek();
    if (!file.is_open() || file.bad()) {
        throw Failure("Cannot read '" + name + "': " + std::strerror(errno) + ".");
    }
    try {
        return zet::toWide(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
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
