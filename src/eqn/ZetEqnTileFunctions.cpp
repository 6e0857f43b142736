#include <zet/ZetEqnTile>

#include "core/ZetUnitInit"
#include "eqn/ZetPendingTile"

namespace zet {

using internal::ZetPendingTile;

#define ZET_TILE_FUNCTION(Name, Parameters, Arguments)         \
    ZetEqnTile ZetEqnTile::Name Parameters const               \
    {                                                          \
        return ZetPendingTile(*this).Name Arguments.compute(); \
    }

ZET_TILE_FUNCTION(sin, (), ())
ZET_TILE_FUNCTION(cos, (), ())
ZET_TILE_FUNCTION(tan, (), ())
ZET_TILE_FUNCTION(asin, (), ())
ZET_TILE_FUNCTION(acos, (), ())
ZET_TILE_FUNCTION(atan, (), ())
ZET_TILE_FUNCTION(sinh, (), ())
ZET_TILE_FUNCTION(cosh, (), ())
ZET_TILE_FUNCTION(tanh, (), ())
ZET_TILE_FUNCTION(exp, (), ())
ZET_TILE_FUNCTION(log, (), ())
ZET_TILE_FUNCTION(log10, (), ())
ZET_TILE_FUNCTION(sqrt, (), ())
ZET_TILE_FUNCTION(sinc, (), ())
ZET_TILE_FUNCTION(abs, (), ())
ZET_TILE_FUNCTION(round, (), ())
ZET_TILE_FUNCTION(trunc, (), ())
ZET_TILE_FUNCTION(floor, (), ())
ZET_TILE_FUNCTION(ceil, (), ())
ZET_TILE_FUNCTION(y0, (), ())
ZET_TILE_FUNCTION(y1, (), ())
ZET_TILE_FUNCTION(j0, (), ())
ZET_TILE_FUNCTION(j1, (), ())
ZET_TILE_FUNCTION(yn, (int n), (n))
ZET_TILE_FUNCTION(jn, (int n), (n))
ZET_TILE_FUNCTION(logb, (double base), (base))
ZET_TILE_FUNCTION(min, (double c), (c))
ZET_TILE_FUNCTION(max, (double c), (c))
ZET_TILE_FUNCTION(clip, (double lo, double hi), (lo, hi))
ZET_TILE_FUNCTION(clipmin, (double m), (m))
ZET_TILE_FUNCTION(clipmax, (double m), (m))
ZET_TILE_FUNCTION(factorial, (), ())
ZET_TILE_FUNCTION(real, (), ())
ZET_TILE_FUNCTION(imag, (), ())
ZET_TILE_FUNCTION(arg, (), ())
ZET_TILE_FUNCTION(norm, (), ())
ZET_TILE_FUNCTION(pow, (double p), (p))
ZET_TILE_FUNCTION(conj, (), ())
ZET_TILE_FUNCTION(max, (const ZetEqnTile& other), (ZetPendingTile(other)))
ZET_TILE_FUNCTION(min, (const ZetEqnTile& other), (ZetPendingTile(other)))

#undef ZET_TILE_FUNCTION

ZetEqnTile ZetEqnTile::operator-() const
{
    return (-ZetPendingTile(*this)).compute();
}

ZetEqnTile ZetEqnTile::cmplx(const ZetEqnTile& re, const ZetEqnTile& im)
{
    return ZetPendingTile::cmplx(ZetPendingTile(re), ZetPendingTile(im)).compute();
}

ZetEqnTile ZetEqnTile::cmplx(const ZetEqnTile& re, double im)
{
    return ZetPendingTile::cmplx(ZetPendingTile(re), im).compute();
}

ZetEqnTile ZetEqnTile::cmplx(double re, const ZetEqnTile& im)
{
    return ZetPendingTile::cmplx(re, ZetPendingTile(im)).compute();
}

}  // namespace zet
