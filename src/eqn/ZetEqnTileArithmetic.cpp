#include <complex>

#include <zet/ZetEqnTile>

#include "core/ZetUnitInit"
#include "eqn/ZetPendingTile"

namespace zet {

namespace {

using internal::ZetPendingTile;
using internal::ZetTileLoan;

/// What an operand is in a plan: a tile is its source, a number is itself.
ZetPendingTile asOperand(const ZetEqnTile& tile)
{
    return ZetPendingTile(tile);
}

template <class Number>
const Number& asOperand(const Number& number)
{
    return number;
}

template <class A, class B>
ZetPendingTile pending(internal::ZetArithmetic op, const A& a, const B& b)
{
    return ZetPendingTile::combine(op, asOperand(a), asOperand(b));
}

template <class A, class B>
ZetEqnTile combine(internal::ZetArithmetic op, const A& a, const B& b)
{
    return pending(op, a, b).compute();
}

}  // namespace

#define ZET_TILE_OPERATOR(Op, Loop)                                               \
    ZetEqnTile ZetEqnTile::operator Op(const ZetEqnTile& other) const&            \
    {                                                                             \
        return combine(internal::Loop, *this, other);                             \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(ZetEqnTile&& other) const&                 \
    {                                                                             \
        return combine(internal::Loop, *this, *ZetTileLoan(other));               \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(const ZetEqnTile& other)&&                 \
    {                                                                             \
        return combine(internal::Loop, *ZetTileLoan(*this), other);               \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(ZetEqnTile&& other)&&                      \
    {                                                                             \
        return combine(internal::Loop, *ZetTileLoan(*this), *ZetTileLoan(other)); \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(double number) const&                      \
    {                                                                             \
        return combine(internal::Loop, *this, number);                            \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(double number)&&                           \
    {                                                                             \
        return combine(internal::Loop, *ZetTileLoan(*this), number);              \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(const std::complex<double>& number) const& \
    {                                                                             \
        return combine(internal::Loop, *this, number);                            \
    }                                                                             \
    ZetEqnTile ZetEqnTile::operator Op(const std::complex<double>& number)&&      \
    {                                                                             \
        return combine(internal::Loop, *ZetTileLoan(*this), number);              \
    }

ZET_TILE_OPERATOR(+, kAdd)
ZET_TILE_OPERATOR(-, kSubtract)
ZET_TILE_OPERATOR(*, kMultiply)
ZET_TILE_OPERATOR(/, kDivide)

ZetEqnTile operator-(double number, const ZetEqnTile& tile)
{
    return combine(internal::kSubtract, number, tile);
}

ZetEqnTile operator-(const std::complex<double>& number, const ZetEqnTile& tile)
{
    return combine(internal::kSubtract, number, tile);
}

ZetEqnTile operator/(double number, const ZetEqnTile& tile)
{
    return combine(internal::kDivide, number, tile);
}

ZetEqnTile operator/(const std::complex<double>& number, const ZetEqnTile& tile)
{
    return combine(internal::kDivide, number, tile);
}

#define ZET_TILE_LOOPS(Name, Op)                                                 \
    template <>                                                                  \
    void Name<double>(const ZetEqnTile& a, const ZetEqnTile& b, ZetEqnTile& out) \
    {                                                                            \
        pending(internal::Op, a, b).computeInto(out);                            \
    }                                                                            \
    template <>                                                                  \
    void Name<double>(double a, const ZetEqnTile& b, ZetEqnTile& out)            \
    {                                                                            \
        pending(internal::Op, a, b).computeInto(out);                            \
    }                                                                            \
    template <>                                                                  \
    void Name<double>(const ZetEqnTile& a, double b, ZetEqnTile& out)            \
    {                                                                            \
        pending(internal::Op, a, b).computeInto(out);                            \
    }

ZET_TILE_LOOPS(add_aux, kAdd)
ZET_TILE_LOOPS(subtract_aux, kSubtract)
ZET_TILE_LOOPS(multiply_aux, kMultiply)
ZET_TILE_LOOPS(divide_aux, kDivide)

}  // namespace zet
