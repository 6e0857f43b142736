#include "quantity/ZetUnitsCache"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

bool sameEntries(const ZetUnits::List& a, const ZetUnits::List& b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](const ZetUnits::UnitExp& x, const ZetUnits::UnitExp& y) { return x.unit == y.unit && x.exp == y.exp; });
}

}  // namespace

bool operator<(const UnitsFactor& a, const UnitsFactor& b)
{
    if (a.units != b.units) {
        return std::less<const ZetUnits::List*>()(a.units, b.units);
    }
    return a.factor < b.factor;
}

/// Two characters at a time.
std::size_t ZetUnitsCache::TextHash::operator()(const ZetString& text) const
{
    constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15U;
    const auto mixed = [](std::uint64_t hash, std::uint64_t bits) {
        hash = (hash ^ bits) * multiplier;
        return hash ^ (hash >> 32);
    };
    std::uint64_t hash = text.size();
    std::size_t i = 0;
    for (; i + 2 <= text.size(); i += 2) {
        hash = mixed(hash, static_cast<std::uint64_t>(text[i]) << 32 | static_cast<std::uint32_t>(text[i + 1]));
    }
    return i < text.size() ? mixed(hash, static_cast<std::uint64_t>(text[i])) : hash;
}

ZetUnitsCache& ZetUnitsCache::instance()
{
    static ZetUnitsCache& cache = *new ZetUnitsCache;
    return cache;
}

const ZetUnits::List* ZetUnitsCache::findCached(const List& list)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = std::find_if(m_lists.begin(), m_lists.end(),
                                    [&list](const Entry& entry) { return sameEntries(*entry.list, list); });
    if (found == m_lists.end()) {
        m_lists.push_back({std::make_unique<const List>(list), 1});
        return m_lists.back().list.get();
    }
    const List* canonical = found->list.get();
    ++found->hits;
    if (found != m_lists.begin() && found->hits > std::prev(found)->hits) {
        std::iter_swap(found, std::prev(found));
    }
    return canonical;
}

const ZetUnits::List* ZetUnitsCache::power(const List* units, double exponent) const
{
    if (std::isnan(exponent)) {
        return nullptr;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_powers.find({units, exponent});
    return found != m_powers.end() ? found->second : nullptr;
}

void ZetUnitsCache::setPower(const List* units, double exponent, const List* result)
{
    if (std::isnan(exponent)) {
        return;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_powers.emplace(UnitsFactor{units, exponent}, result);
}

const ZetString* ZetUnitsCache::knownText(const List* units) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_texts.find(units);
    return found != m_texts.end() ? &found->second : nullptr;
}

bool ZetUnitsCache::parsed(const ZetString& text, UnitsFactor& result) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_parsed.find(text);
    if (found == m_parsed.end()) {
        return false;
    }
    result = found->second;
    return true;
}

void ZetUnitsCache::setParsed(const ZetString& text, const UnitsFactor& result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_parsed[text] = result;
}

std::vector<std::pair<ZetUnits::List, unsigned long>> ZetUnitsCache::lists() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::pair<List, unsigned long>> all;
    for (const Entry& entry : m_lists) {
        all.emplace_back(*entry.list, entry.hits);
    }
    return all;
}

}  // namespace internal
}  // namespace zet
