#include <zet/ZetDir>

#include "core/ZetUnitInit"
#include "fileio/ZetState_p"

namespace zet {

ZetDir::Iterator& ZetDir::Iterator::operator++()
{
    if (m_state) {
        m_name = m_state->next();
    }
    return *this;
}

ZetDir::Iterator ZetDir::Iterator::operator++(int)
{
    const Iterator before(*this);
    ++*this;
    return before;
}

ZetString ZetDir::className() const
{
    return L"ZetDir";
}

void ZetDir::setPath(const ZetString& path)
{
    clearState();
    m_path = path;
}

ZetDir::Iterator ZetDir::begin(const ZetString& pattern) const
{
    clearState();
    if (m_path.empty()) {
        return end();
    }
    ZetState_p* const state = new ZetState_p;
    m_state = state;
    return Iterator(m_state, state->acquireHandle(m_path, pattern));
}

ZetDir::Iterator ZetDir::end() const
{
    static const Iterator s_end;
    return s_end;
}

void ZetDir::clearState() const
{
    if (m_state) {
        static_cast<ZetState_p*>(m_state.get())->releaseHandle();
        m_state = StatePtr();
    }
}

}  // namespace zet
