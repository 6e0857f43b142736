#include <zet/ZetFile>

#include <fcntl.h>
#include <unistd.h>

#include <mutex>

#include "core/ZetUnitInit"

namespace zet {
namespace {

std::size_t narrowed(unsigned long byteCount)
{
    return static_cast<unsigned int>(byteCount);
}

}  // namespace

ZetFile::ZetFile() : m_descriptor(-1) {}

ZetFile::~ZetFile()
{
    close();
}

ZetString ZetFile::className() const
{
    return L"ZetFile";
}

int ZetFile::open(const ZetString& name, int flags, int mode)
{
    close();
    m_name = name;
    m_descriptor = ::open(toMultibyte(m_name).c_str(), flags, static_cast<mode_t>(mode));
    return m_descriptor == -1 ? 1 : 0;
}

int ZetFile::close()
{
    if (m_descriptor == -1) {
        return -1;
    }
    const int status = ::close(m_descriptor);
    m_descriptor = -1;
    return status;
}

int ZetFile::read(void* data, unsigned long byteCount)
{
    return static_cast<int>(::read(m_descriptor, data, narrowed(byteCount)));
}

int ZetFile::write(const void* data, unsigned long byteCount)
{
    return static_cast<int>(::write(m_descriptor, data, narrowed(byteCount)));
}

/// Seek and transfer in one step.
template <class Transfer>
int ZetFile::transferAt(long offset, Transfer&& transfer)
{
    const std::lock_guard<ZetMutex> lock(m_mutex);
    return lseek(offset, SEEK_SET) == -1 ? -1 : transfer();
}

int ZetFile::read(long offset, void* data, unsigned long byteCount)
{
    return transferAt(offset, [&] { return read(data, byteCount); });
}

int ZetFile::write(long offset, const void* data, unsigned long byteCount)
{
    return transferAt(offset, [&] { return write(data, byteCount); });
}

long ZetFile::lseek(long offset, int whence)
{
    return ::lseek(m_descriptor, offset, whence);
}

long ZetFile::offset() const
{
    return ::lseek(m_descriptor, 0, SEEK_CUR);
}

int ZetFile::stat(struct ::stat64& status) const
{
    return ::fstat64(m_descriptor, &status);
}

}  // namespace zet
