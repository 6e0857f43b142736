#include "fileio/ZetState_p"

#include <unistd.h>

#include <stdexcept>
#include <vector>

#include "core/ZetUnitInit"

namespace zet {
namespace {

/// Wide text, or an empty one for a name that the locale cannot decode.
ZetString decoded(const char* name)
{
    try {
        return toWide(name);
    } catch (const std::length_error&) {
        return ZetString();
    }
}

/// The open directory, null for one that cannot be opened.
DIR* opened(const ZetString& path)
{
    try {
        return ::opendir(toMultibyte(path).c_str());
    } catch (const std::length_error&) {
        return nullptr;
    }
}

/// The next entry, written to \p memory; null at the end and for an error.
const dirent* nextEntry(DIR* handle, void* memory)
{
    dirent* entry = nullptr;
// Each iteration has an entry of its own, as the platform's older interface wants it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const int error = ::readdir_r(handle, static_cast<dirent*>(memory), &entry);
#pragma GCC diagnostic pop
    return error == 0 ? entry : nullptr;
}

}  // namespace

ZetState_p::~ZetState_p()
{
    releaseHandle();
}

ZetString ZetState_p::acquireHandle(const ZetString& path, const ZetString& pattern)
{
    if (pattern.find(L'*') != pattern.rfind(L'*')) {
        return ZetString();
    }
    releaseHandle();
    m_path = path;
    m_pattern = pattern;
    m_handle = opened(m_path);
    return next();
}

void ZetState_p::releaseHandle()
{
    if (m_handle) {
        ::closedir(m_handle);
        m_handle = nullptr;
    }
    m_pattern.clear();
}

ZetString ZetState_p::next()
{
    if (!m_handle) {
        return ZetString();
    }
    std::vector<unsigned char> memory(entrySize());
    while (const dirent* entry = nextEntry(m_handle, memory.data())) {
        ZetString name = decoded(entry->d_name);
        if (!name.empty() && patternMatch(name)) {
            return name;
        }
    }
    return ZetString();
}

/// The bytes of an entry with the longest name that this directory can hold.
std::size_t ZetState_p::entrySize() const
{
    const long longest = ::fpathconf(::dirfd(m_handle), _PC_PATH_MAX);
    return longest < 257 ? 1304 : static_cast<std::size_t>(longest) + 1048;
}

bool ZetState_p::patternMatch(const ZetString& name) const
{
    std::size_t p = 0;
    std::size_t n = 0;
    while (p < m_pattern.size() && n < name.size()) {
        if (m_pattern[p] == L'*') {
            // what follows the star stands at the end of the name
            ++p;
            const std::size_t rest = m_pattern.size() - p;
            if (name.size() - n < rest) {
                return false;
            }
            n = name.size() - rest;
        } else if (m_pattern[p++] != name[n++]) {
            return false;
        }
    }
    return n == name.size() && (p == m_pattern.size() || m_pattern.compare(p, ZetString::npos, L"*") == 0);
}

}  // namespace zet
