#include <zet/ZetKey>

#include <sstream>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetKey::className() const
{
    return L"ZetKey";
}

ZetKey& ZetKey::operator++()
{
    m_value = m_value == LAST_VALID_KEY ? 0 : m_value + 1;
    return *this;
}

ZetKey& ZetKey::operator++(int)
{
    return ++*this;
}

ZetKey::operator ZetString() const
{
    std::wostringstream text;
    text << *this;
    return text.str();
}

std::wostream& operator<<(std::wostream& out, const ZetKey& key)
{
    return out << key.value();
}

std::wistream& operator>>(std::wistream& in, ZetKey& key)
{
    unsigned int value = key.value();
    in >> value;
    key = ZetKey(value);
    return in;
}

}  // namespace zet
