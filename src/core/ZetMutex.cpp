#include <zet/ZetMutex>

#include <new>

#include "core/ZetUnitInit"

namespace zet {

ZetMutex::ZetMutex() : m_mutex(new pthread_mutex_t)
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    const int failure = pthread_mutex_init(m_mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    if (failure) {
        delete m_mutex;
        throw std::bad_alloc();
    }
}

ZetMutex::~ZetMutex()
{
    pthread_mutex_destroy(m_mutex);
    delete m_mutex;
    m_mutex = nullptr;
}

int ZetMutex::lock()
{
    return pthread_mutex_lock(m_mutex);
}

int ZetMutex::unlock()
{
    return pthread_mutex_unlock(m_mutex);
}

}  // namespace zet
