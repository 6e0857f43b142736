#include <zet/ZetTypeID>

#include <map>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

unsigned long uniqueTypeID(const ZetString& name)
{
    static std::map<ZetString, unsigned long> numbers;
    return numbers.emplace(name, numbers.size() + 1).first->second;
}

}  // namespace internal
}  // namespace zet
