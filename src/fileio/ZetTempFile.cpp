#include <zet/ZetTempFile>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <ostream>

#include <zet/ZetBuffer>
#include <zet/ZetCoreFunctions>
#include <zet/ZetMutex>

#include "core/ZetUnitInit"
#include "fileio/ZetTempName"

namespace zet {

namespace internal {

char* (*makeTempName)(const char* directory, const char* prefix) = &::tempnam;

}  // namespace internal

namespace {

void post(const ZetString& text, int line)
{
    postMessage(ZetTextMsg(text, L"ZetTempFile", line, ZetTextMsg::Error));
}

std::unique_ptr<char, decltype(&std::free)> generatedName()
{
    static ZetMutex s_mutex;
    const std::lock_guard<ZetMutex> lock(s_mutex);
    return {internal::makeTempName("/tmp", "vanta_"), &std::free};
}

}  // namespace

ZetTempFile::ZetTempFile() : m_deleteOnClose(true), m_stream(nullptr) {}

ZetTempFile::~ZetTempFile()
{
    close();
}

ZetString ZetTempFile::className() const
{
    return L"ZetTempFile";
}

int ZetTempFile::open(const wchar_t* mode, bool deleteOnClose)
{
    const auto name = generatedName();
    if (!name) {
        post(L"Unable to create name for a temporary file.", __LINE__);
        return -1;
    }
    return open(toWide(name.get()).c_str(), mode, deleteOnClose);
}

int ZetTempFile::open(const wchar_t* name, const wchar_t* mode, bool deleteOnClose)
{
    // \p name may be that of the file that is open
    ZetString newName = name ? name : L"";
    close();
    m_deleteOnClose = deleteOnClose;
    if (!mode || *mode == 0) {
        post(L"The passed mode for file open cannot be null or empty.", __LINE__);
        return -1;
    }
    std::string platformName = toMultibyte(newName);
    m_stream = std::fopen(platformName.c_str(), toMultibyte(mode).c_str());
    if (!m_stream) {
        post(L"Unable to fopen(" + ZetString(mode) + L") temporary file '" + newName + L"'.", __LINE__);
        return -1;
    }
    // nothing here can fail, so that a file which was made is one that close() removes
    m_name.swap(newName);
    m_platformName.swap(platformName);
    return 0;
}

int ZetTempFile::close()
{
    if (!m_stream) {
        return 0;
    }
    const int status = std::fclose(m_stream);
    m_stream = nullptr;
    if (m_deleteOnClose) {
        std::remove(m_platformName.c_str());
    }
    m_name.clear();
    return status;
}

long ZetTempFile::read(void* data, unsigned long byteCount)
{
    if (!m_stream) {
        return -1;
    }
    const std::size_t count = std::fread(data, 1, byteCount, m_stream);
    return count != byteCount && std::ferror(m_stream) ? -1 : static_cast<long>(count);
}

long ZetTempFile::write(const void* data, unsigned long byteCount)
{
    if (!m_stream) {
        return -1;
    }
    return std::fwrite(data, 1, byteCount, m_stream) == byteCount ? static_cast<long>(byteCount) : -1;
}

int ZetTempFile::seek(long offset, int whence)
{
    return m_stream ? std::fseek(m_stream, offset, whence) : -1;
}

void ZetTempFile::fileToStream(std::wostream& out) const
{
    const long length = m_stream ? std::ftell(m_stream) : -1;
    if (length == -1) {
        return;
    }
    ZetBuffer buffer(static_cast<unsigned long>(length) + 1, true);
    char* const text = static_cast<char*>(buffer.data());
    if (!text) {
        return;
    }
    std::memset(text, 0, buffer.size());
    if (std::fseek(m_stream, 0, SEEK_SET) != 0) {
        return;
    }
    static_cast<void>(std::fread(text, 1, static_cast<std::size_t>(length), m_stream));
    out << text << L"\n";
}

}  // namespace zet
