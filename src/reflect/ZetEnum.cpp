#include <zet/ZetEnum>

#include <algorithm>
#include <istream>
#include <ostream>

#include <zet/ZetVariant>

#include "core/ZetUnitInit"

namespace zet {

ZetEnum::Item::Item(const std::pair<int, ZetString>& pair) : m_pair(pair) {}

ZetEnum::Item::Item(const std::pair<int, ZetString>& pair, const ZetVariant& data)
    : m_pair(pair), m_data(std::make_unique<ZetVariant>(data))
{}

ZetEnum::Item::Item(const Item& other)
    : m_pair(other.m_pair), m_data(other.m_data ? std::make_unique<ZetVariant>(*other.m_data) : nullptr)
{}

ZetEnum::Item& ZetEnum::Item::operator=(const Item& other)
{
    if (this != &other) {
        m_pair = other.m_pair;
        m_data = other.m_data ? std::make_unique<ZetVariant>(*other.m_data) : nullptr;
    }
    return *this;
}

ZetEnum::Item::~Item() = default;

void ZetEnum::Item::setData(const ZetVariant& data)
{
    m_data = std::make_unique<ZetVariant>(data);
}

ZetEnum::ZetEnum(const Item* items, unsigned int count)
{
    std::for_each(items, items + count, [this](const Item& item) { insert(item); });
}

ZetString ZetEnum::className() const
{
    return L"ZetEnum";
}

void ZetEnum::insert(const Item& item)
{
    if (m_keys.find(item.name()) < 0 && m_items.emplace(item.value(), item).second) {
        m_keys.append(item.name());
    }
}

ZetVariant ZetEnum::data(int value) const
{
    const auto found = m_items.find(value);
    return found != m_items.end() && found->second.data() ? *found->second.data() : ZetVariant();
}

void ZetEnum::setData(int value, const ZetVariant& data)
{
    const auto found = m_items.find(value);
    if (found != m_items.end()) {
        found->second.setData(data);
    }
}

const ZetString& ZetEnum::toString(int value) const
{
    static const ZetString noName;
    const auto found = m_items.find(value);
    return found != m_items.end() ? found->second.name() : noName;
}

int ZetEnum::fromString(const ZetString& name) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [&name](const auto& entry) { return entry.second.name() == name; });
    return found != m_items.end() ? found->first : INVALID_ENUM;
}

bool ZetEnum::isValid(const ZetString& name) const
{
    return fromString(name) != INVALID_ENUM;
}

std::wostream& operator<<(std::wostream& out, const ZetEnum&)
{
    out.setstate(std::ios_base::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetEnum&)
{
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
