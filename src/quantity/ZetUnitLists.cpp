#include "quantity/ZetUnitLists"

#include <algorithm>
#include <cmath>

#include "core/ZetUnitInit"
#include "quantity/ZetUnits_p"

namespace zet {
namespace internal {

int indexIn(const ZetUnits::List& list, ZetUnits::Category category)
{
    int index = static_cast<int>(list.size()) - 1;
    while (index >= 0 && ZetUnits_p::toCategory(list[static_cast<std::size_t>(index)].unit) != category) {
        --index;
    }
    return index;
}

int insertInto(ZetUnits::List& list, const ZetUnits::UnitExp& factor)
{
    const ZetUnits::Category category = ZetUnits_p::toCategory(factor.unit);
    if (factor.exp == 0.0 || category == ZetUnits::Unitless) {
        return ZetUnits::Unitless;
    }
    const int index = indexIn(list, category);
    if (index >= 0) {
        list[static_cast<std::size_t>(index)] = factor;
    } else {
        const auto place = std::find_if(list.begin(), list.end(),
                                        [&factor](const ZetUnits::UnitExp& entry) { return entry.unit > factor.unit; });
        list.insert(place, factor);
    }
    return category;
}

void removeFrom(ZetUnits::List& list, ZetUnits::Category category)
{
    const int index = indexIn(list, category);
    if (index >= 0) {
        list.erase(list.begin() + index);
    }
}

double rescale(double factor, const ZetUnits::UnitExp& from, ZetUnits::Unit to)
{
    if (from.unit == to) {
        return factor;
    }
    double base = ZetUnits_p::toBaseUnits(from.unit) * ZetUnits_p::fromBaseUnits(to);
    if (std::fabs(from.exp) != 1.0) {
        base = std::pow(base, std::fabs(from.exp));
    }
    if (base == 1.0) {
        return factor;
    }
    return from.exp >= 0.0 ? factor * base : factor / base;
}

double multiplyInto(ZetUnits::List& list, const ZetUnits::List& other)
{
    if (list.empty() || other.empty()) {
        list = list.empty() ? other : list;
        return 1.0;
    }
    ZetUnits::List product = other;
    double factor = 1.0;
    for (const ZetUnits::UnitExp& entry : list) {
        const ZetUnits::Category category = ZetUnits_p::toCategory(entry.unit);
        const int index = indexIn(other, category);
        if (index < 0) {
            insertInto(product, entry);
            continue;
        }
        const ZetUnits::UnitExp& common = other[static_cast<std::size_t>(index)];
        factor = rescale(factor, common, entry.unit);
        const double sum = common.exp + entry.exp;
        if (sum != 0.0) {
            insertInto(product, {entry.unit, sum});
        } else {
            removeFrom(product, category);
        }
    }
    list.swap(product);
    return factor;
}

double multiplyInto(ZetUnits::List& list, const ZetUnits::UnitExp& factor)
{
    if (indexIn(list, ZetUnits_p::toCategory(factor.unit)) < 0) {
        insertInto(list, factor);
        return 1.0;
    }
    return multiplyInto(list, ZetUnits::List{factor});
}

}  // namespace internal
}  // namespace zet
