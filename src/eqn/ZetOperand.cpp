#include "eqn/ZetOperand"

#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

void throwBadArgError(const wchar_t* name, int line)
{
    throw ZetTextMsg(L"Invalid argument passed to '" + ZetString(name) + L"' function.", L"ZetEqnNode", line,
                     ZetTextMsg::Error);
}

ZetMetaType::Type operandClass(ZetMetaType::Type kind)
{
    switch (kind) {
        case ZetMetaType::Bool:
        case ZetMetaType::Int:
        case ZetMetaType::UInt:
        case ZetMetaType::Int64:
        case ZetMetaType::UInt64:
        case ZetMetaType::I64Rational:
        case ZetMetaType::U64Rational:
        case ZetMetaType::Char:
            return ZetMetaType::Double;
        case ZetMetaType::ComplexDouble:
            return ZetMetaType::Scalar;
        default:
            return kind;
    }
}

ZetVariant complexResult(const ZetScalar& scalar)
{
    return std::complex<double>(scalar.real(), scalar.isReal() ? 0.0 : scalar.imag());
}

}  // namespace internal
}  // namespace zet
