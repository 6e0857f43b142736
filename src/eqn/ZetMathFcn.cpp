#include "eqn/ZetMathFcn"

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

const std::map<ZetString, ZetMathFcn::ZetFcnInfo>& ZetMathFcn::functionMap()
{
#define ZET_FUNCTION_ENTRY(Name, Count) {L"" #Name, {Count, &ZetMathFcn::Name}},
    static const std::map<ZetString, ZetFcnInfo> table = {ZET_EQN_FUNCTIONS(ZET_FUNCTION_ENTRY)};
#undef ZET_FUNCTION_ENTRY
    return table;
}

bool ZetMathFcn::isValid(const ZetString& name)
{
    return functionMap().count(toLower(name)) != 0;
}

const ZetMathFcn::ZetFcnInfo& ZetMathFcn::fromString(const ZetString& name)
{
    static const ZetFcnInfo none = {0, nullptr};
    const auto found = functionMap().find(toLower(name));
    return found == functionMap().end() ? none : found->second;
}

}  // namespace internal
}  // namespace zet
