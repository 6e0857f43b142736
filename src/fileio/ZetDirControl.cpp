#include <zet/ZetDirControl>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>

#include "core/ZetUnitInit"

namespace zet {
namespace {

/// The status of an operation of the platform on a path.
template <class Operation>
int statusOf(const ZetString& path, Operation&& operation)
{
    std::string name;
    try {
        name = toMultibyte(path);
    } catch (const std::length_error&) {
        errno = EILSEQ;
        return -1;
    }
    return operation(name.c_str());
}

}  // namespace

ZetString ZetDirControl::className() const
{
    return L"ZetDirControl";
}

int ZetDirControl::chdir(const ZetString& path)
{
    return statusOf(path, [](const char* name) { return ::chdir(name); });
}

int ZetDirControl::mkdir(const ZetString& path, int mode)
{
    return statusOf(path, [mode](const char* name) { return ::mkdir(name, static_cast<mode_t>(mode)); });
}

int ZetDirControl::rmdir(const ZetString& path)
{
    return statusOf(path, [](const char* name) { return ::rmdir(name); });
}

ZetString ZetDirControl::getcwd()
{
    char path[1024];
    try {
        return ::getcwd(path, sizeof path) ? toWide(path) : ZetString();
    } catch (const std::length_error&) {
        return ZetString();
    }
}

}  // namespace zet
