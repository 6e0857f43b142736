#include "eqn/ZetOperand"

#include <utility>

#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "eqn/ZetFusedEvaluation"

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

ZetOperand::ZetOperand(const ZetVariant& value) : m_value(value)
{
    classify();
}

ZetOperand::ZetOperand(const ZetVariant* leaf) : m_value(leaf)
{
    classify();
    if (!m_number) {
        m_value.emplace<ZetVariant>(*leaf);
    }
}

ZetOperand::ZetOperand(ZetPendingTile&& tile) : m_value(std::move(tile)), m_class(ZetMetaType::EqnTile)
{
    if (!isEvaluationFused()) {
        value();
    }
}

void ZetOperand::classify()
{
    const ZetMetaType::Type kind = variant()->type().type();
    m_class = operandClass(kind);
    if (kind == ZetMetaType::Double) {
        m_number = *static_cast<const double*>(variant()->data());
    }
}

const ZetVariant* ZetOperand::variant() const
{
    const ZetVariant* const* const leaf = std::get_if<const ZetVariant*>(&m_value);
    return leaf ? *leaf : std::get_if<ZetVariant>(&m_value);
}

const ZetVariant& ZetOperand::value()
{
    if (variant()) {
        return *variant();
    }
    ZetTileMemory memory;
    return value(memory);
}

const ZetVariant& ZetOperand::value(ZetTileMemory& memory)
{
    if (const double* const number = std::get_if<double>(&m_value)) {
        m_value = ZetVariant(*number);
    } else if (ZetPendingTile* const tile = std::get_if<ZetPendingTile>(&m_value)) {
        m_value = ZetVariant(std::move(*tile).compute(memory));
    }
    return *variant();
}

ZetOperand ZetOperand::asResult()
{
    ZetOperand result = std::move(*this);
    if (result.variant()) {
        result.classify();
    } else if (result.m_number) {
        result.m_class = ZetMetaType::Double;
    }
    return result;
}

ZetPendingTile ZetOperand::takeTile()
{
    if (ZetPendingTile* const pending = std::get_if<ZetPendingTile>(&m_value)) {
        return std::move(*pending);
    }
    ZetPendingTile tile(std::get<ZetVariant>(m_value));
    m_value = 0.0;
    return tile;
}

ZetVariant complexResult(const ZetScalar& scalar)
{
    return std::complex<double>(scalar.real(), scalar.isReal() ? 0.0 : scalar.imag());
}

}  // namespace internal
}  // namespace zet
