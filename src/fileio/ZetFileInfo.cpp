#include <zet/ZetFileInfo>

#include <unistd.h>

#include <zet/ZetDirControl>

#include "core/ZetUnitInit"

namespace zet {
namespace {

const wchar_t* const kSeparators = L"\\/";

/// A copy in which each \p pattern lost its first \p count characters, also where what is left makes one
/// with the text behind it.
ZetString shortened(const ZetString& text, const ZetString& pattern, std::size_t count)
{
    ZetString result;
    for (std::size_t i = 0; i < text.size();) {
        if (text.compare(i, pattern.size(), pattern) == 0) {
            i += count;
        } else {
            result += text[i++];
        }
    }
    return result;
}

/// The text before the last separator of \p path, that separator itself if it comes first, and
/// \p without if there is none.
ZetString beforeLastSeparator(const ZetString& path, const ZetString& without)
{
    const std::size_t index = path.find_last_of(kSeparators);
    if (index == ZetString::npos) {
        return without;
    }
    return path.substr(0, index == 0 ? 1 : index);
}

}  // namespace

ZetFileInfo::ZetFileInfo(const ZetString& file)
{
    setFile(file);
}

ZetString ZetFileInfo::className() const
{
    return L"ZetFileInfo";
}

void ZetFileInfo::setFile(const ZetString& file)
{
    ZetString path = shortened(shortened(file, L"/./", 2), L"//", 1);
    if (path == L"./") {
        path = L".";
    } else if (path.compare(0, 2, L"./") == 0) {
        path.erase(0, 2);
    }
    if (path.size() > 1 && path.back() == L'/') {
        path.pop_back();
    }
    m_path = path;
}

bool ZetFileInfo::isAbsolute() const
{
    return !m_path.empty() && m_path.front() == L'/';
}

ZetString ZetFileInfo::suffix() const
{
    const std::size_t index = m_path.rfind(L'.');
    return index == ZetString::npos ? ZetString() : ZetString(m_path, index);
}

ZetString ZetFileInfo::baseName() const
{
    // without a separator this is npos + 1, the start
    return m_path.substr(m_path.find_last_of(kSeparators) + 1);
}

ZetString ZetFileInfo::path() const
{
    return beforeLastSeparator(m_path, L".");
}

ZetString ZetFileInfo::absoluteFilePath() const
{
    if (isAbsolute() || m_path.empty()) {
        return m_path;
    }
    return ZetDirControl::getcwd() + L"/" + m_path;
}

ZetString ZetFileInfo::absolutePath() const
{
    return beforeLastSeparator(absoluteFilePath(), L"");
}

int ZetFileInfo::access(int mode) const
{
    return ::access(toMultibyte(m_path).c_str(), mode);
}

int ZetFileInfo::stat(struct ::stat64& status) const
{
    return ::stat64(toMultibyte(m_path).c_str(), &status);
}

bool ZetFileInfo::isDir() const
{
    return hasModeBit(0x4000);
}

bool ZetFileInfo::isFile() const
{
    return hasModeBit(0x8000);
}

bool ZetFileInfo::hasModeBit(unsigned int bit) const
{
    struct ::stat64 status = {};
    return stat(status) == 0 && (status.st_mode & bit) != 0;
}

}  // namespace zet
