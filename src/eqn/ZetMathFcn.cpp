#include "eqn/ZetMathFcn"

#include <algorithm>
#include <string_view>

#include "core/ZetNameOrder"
#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

namespace {

#define ZET_LENGTH(Name, Count) sizeof(#Name) - 1,
constexpr std::size_t kLongestName = std::max({ZET_EQN_FUNCTIONS(ZET_LENGTH)});
#undef ZET_LENGTH

constexpr wchar_t lowerLetter(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

// The entry of a name in any case; null when there is none.
const ZetMathFcn::ZetFcnInfo* find(const ZetString& name)
{
    using Index = std::map<std::wstring_view, const ZetMathFcn::ZetFcnInfo*, ZetNameOrder>;
    static const Index index = [] {
        Index made;
        for (const auto& [key, info] : ZetMathFcn::functionMap()) {
            made.emplace(key, &info);
        }
        return made;
    }();
    if (name.size() > kLongestName) {
        return nullptr;
    }
    wchar_t lower[kLongestName];
    std::transform(name.begin(), name.end(), lower, lowerLetter);
    const auto found = index.find(std::wstring_view(lower, name.size()));
    return found == index.end() ? nullptr : found->second;
}

}  // namespace

const std::map<ZetString, ZetMathFcn::ZetFcnInfo>& ZetMathFcn::functionMap()
{
#define ZET_FUNCTION_ENTRY(Name, Count) {L"" #Name, {Count, &ZetMathFcn::Name, &Operands::Name}},
    static const std::map<ZetString, ZetFcnInfo> table = {ZET_EQN_FUNCTIONS(ZET_FUNCTION_ENTRY)};
#undef ZET_FUNCTION_ENTRY
    return table;
}

bool ZetMathFcn::isValid(const ZetString& name)
{
    return find(name) != nullptr;
}

const ZetMathFcn::ZetFcnInfo& ZetMathFcn::fromString(const ZetString& name)
{
    static const ZetFcnInfo none = {0, nullptr, nullptr};
    const ZetFcnInfo* const found = find(name);
    return found ? *found : none;
}

#define ZET_DEFINE_FUNCTION(Name, Count)          \
    ZetVariant ZetMathFcn::Name(ZetEqnArgs& args) \
    {                                             \
        return Operands::Name(args).value();      \
    }
ZET_EQN_FUNCTIONS(ZET_DEFINE_FUNCTION)
#undef ZET_DEFINE_FUNCTION

}  // namespace internal
}  // namespace zet
