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

namespace {

template <class... Ts>
bool ask()
{
    return (... && (typeID<Ts>() != 0));
}

// The types that the library compares with, but that are no kind of variant, are asked for here;
// the others are when their kinds register. So the table stands before threads run.
[[maybe_unused]] const bool s_asked = ask<char, signed char, unsigned char, short, unsigned short, float, void*>();

}  // namespace

}  // namespace internal
}  // namespace zet
