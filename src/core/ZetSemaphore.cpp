#include <zet/ZetSemaphore>

#include <cerrno>

#include "core/ZetUnitInit"

namespace zet {

ZetSemaphore::ZetSemaphore(unsigned int value) : m_semaphore(nullptr), m_errno(0)
{
    initialize(value);
}

ZetSemaphore::~ZetSemaphore()
{
    if (m_semaphore) {
        sem_destroy(m_semaphore);
    }
    m_semaphore = nullptr;
}

ZetString ZetSemaphore::className() const
{
    return L"ZetSemaphore";
}

bool ZetSemaphore::initialize(unsigned int value)
{
    if (m_semaphore) {
        return false;
    }
    if (sem_init(&m_storage, 0, value) != 0) {
        m_errno = errno;
        return false;
    }
    m_semaphore = &m_storage;
    return true;
}

bool ZetSemaphore::acquire()
{
    if (!m_semaphore) {
        return false;
    }
    int failure = 0;
    do {
        failure = sem_wait(m_semaphore);
    } while (failure && errno == EINTR);
    return failure == 0;
}

bool ZetSemaphore::tryAcquire()
{
    return m_semaphore && sem_trywait(m_semaphore) == 0;
}

void ZetSemaphore::release(unsigned int count)
{
    if (!m_semaphore) {
        return;
    }
    for (unsigned int i = 0; i < count; ++i) {
        sem_post(m_semaphore);
    }
}

}  // namespace zet
