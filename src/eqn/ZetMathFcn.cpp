#include "eqn/ZetMathFcn"

#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

const std::map<ZetString, ZetMathFcn::ZetFcnInfo>& ZetMathFcn::functionMap()
{
#define ZET_FUNCTION_ENTRY(Name, Count) {L"" #Name, {Count, &ZetMathFcn::Name, &Operands::Name}},
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
    static const ZetFcnInfo none = {0, nullptr, nullptr};
    const auto found = functionMap().find(toLower(name));
    return found == functionMap().end() ? none : found->second;
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
