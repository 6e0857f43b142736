#include <zet/ZetBuffer>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <new>

#include <zet/ZetCoreFunctions>
#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "image/ZetBlockMemory"

namespace zet {

namespace {

void postFailure(const wchar_t* cause, unsigned long size, int line)
{
    const ZetString text = cause + (L"Cannot allocate '" + std::to_wstring(size)) + L"' bytes for buffer.";
    postMessage(ZetTextMsg(text, L"ZetBuffer", line, ZetTextMsg::Error));
}

}  // namespace

ZetBuffer::ZetBuffer(unsigned long size, bool allocateNow) : ZetBuffer(size, nullptr, false)
{
    if (allocateNow) {
        allocate();
    }
}

ZetBuffer::ZetBuffer(unsigned long size, void* memory, bool takeOwnership)
    : m_valid(false),
      m_ownsMemory(!memory || takeOwnership),
      m_external(memory != nullptr),
      m_allocationFailed(false),
      m_data(memory),
      m_size(size)
{
    m_valid = true;
}

ZetBuffer::ZetBuffer(const ZetBuffer& other) : ZetBuffer(0, false)
{
    *this = other;
}

ZetBuffer::~ZetBuffer()
{
    deallocate();
}

ZetString ZetBuffer::className() const
{
    return L"ZetBuffer";
}

ZetBuffer& ZetBuffer::operator=(const ZetBuffer& other)
{
    if (this == &other) {
        return *this;
    }
    if (other.m_size == 0 || other.m_size != m_size) {
        deallocate();
        m_size = other.m_size;
    }
    if (m_size == 0) {
        return *this;
    }
    if (other.m_data && allocate()) {
        std::memmove(m_data, other.m_data, m_size);
        m_allocationFailed = false;
    }
    m_dataType = other.m_dataType;
    return *this;
}

bool ZetBuffer::operator==(const ZetBuffer& other) const
{
    if (m_size != other.m_size) {
        return false;
    }
    if (!m_data || !other.m_data) {
        return m_data == other.m_data;
    }
    return std::memcmp(m_data, other.m_data, m_size) == 0;
}

void* ZetBuffer::allocate()
{
    const wchar_t* exception = L"";
    try {
        if (!m_data && m_size != 0) {
            m_data = internal::acquireBlock(m_size);
            m_ownsMemory = true;
            m_external = false;
            m_allocationFailed = !m_data;
        }
    } catch (const std::bad_alloc&) {
        m_allocationFailed = true;
        exception = L"Caught a bad memory allocation exception. ";
    } catch (...) {
        m_allocationFailed = true;
        exception = L"Caught an unknown exception. ";
    }
    if (!m_data && m_size != 0) {
        postFailure(exception, m_size, __LINE__);
    }
    return m_data;
}

bool ZetBuffer::deallocate()
{
    const bool freed = m_ownsMemory && m_data;
    if (freed) {
        std::free(m_data);
    }
    m_data = nullptr;
    m_ownsMemory = true;
    m_external = false;
    m_allocationFailed = false;
    m_dataType = ZetDataType();
    return freed;
}

void* ZetBuffer::reallocate(unsigned long size, bool preserve)
{
    const bool hadBlock = m_data != nullptr;
    if (preserve && hadBlock) {
        resizeBlock(size);
        return m_data;
    }
    const ZetDataType dataType = m_dataType;
    if (hadBlock) {
        deallocate();
    }
    m_size = size;
    m_dataType = dataType;
    return hadBlock ? nullptr : allocate();
}

/// Moves the bytes to a block of the buffer's own, as far as they fit. Without memory for it the
/// buffer is left without a block, and nothing is reported.
void ZetBuffer::resizeBlock(unsigned long size)
{
    const bool inPlace = m_ownsMemory && !m_external;
    void* block = nullptr;
    if (!inPlace) {
        block = internal::acquireBlock(size);
        if (block) {
            std::memcpy(block, m_data, std::min(m_size, size));
        }
    } else if (size != 0) {
        block = std::realloc(m_data, size);
    }
    const bool isGone = inPlace && block;
    if (m_ownsMemory && !isGone) {
        std::free(m_data);
    }
    m_data = block;
    m_size = size;
    m_ownsMemory = true;
    m_external = false;
    m_allocationFailed = false;
}

std::wostream& operator<<(std::wostream& out, const ZetBufferPtr& buffer)
{
    wchar_t text[2 + 16 + 1];
    std::swprintf(text, std::size(text), L"0x%08lx", reinterpret_cast<std::uintptr_t>(buffer.get()));
    return out << text;
}

std::wistream& operator>>(std::wistream& in, ZetBufferPtr&)
{
    return in;
}

}  // namespace zet
