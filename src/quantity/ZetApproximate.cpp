#include <zet/ZetApproximate>

#include <cmath>
#include <limits>

#include "core/ZetUnitInit"

namespace zet {
namespace {

__extension__ using Wide = unsigned __int128;

constexpr int wideBits = 127;

struct Fraction
{
    Wide numerator;
    Wide denominator;
};

/// A finite \p x >= 0 as an exact ratio with a power of two below it. A denominator that does not
/// fit stands as the greatest that does: no fraction of 64 bits can tell such a number from 0. A
/// numerator that does not fit stands as the greatest one likewise.
Fraction exactRatio(double x)
{
    if (x >= 0x1p127) {
        return {Wide{1} << wideBits, 1};
    }
    int doublings = 0;
    while (x != std::floor(x) && doublings < wideBits) {
        x *= 2.0;
        ++doublings;
    }
    return {static_cast<Wide>(std::ceil(x)), Wide{1} << doublings};
}

/// The last convergent of the continued fraction of \p ratio with a denominator of at most \p limit,
/// or the semi-convergent behind it where that takes at least half of the next term.
Fraction bestConvergent(Fraction ratio, Wide limit)
{
    constexpr int maxTerms = 64;
    Fraction current = {1, 0};
    Fraction previous = {0, 1};
    bool last = false;
    for (int i = 0; i < maxTerms && !last; ++i) {
        const Wide term = ratio.denominator == 0 ? 0 : ratio.numerator / ratio.denominator;
        if (i > 0 && term == 0) {
            break;
        }
        const Wide rest = ratio.denominator == 0 ? 0 : ratio.numerator % ratio.denominator;
        Wide taken = term;
        if (term * current.denominator + previous.denominator >= limit) {
            taken = (limit - previous.denominator) / current.denominator;
            if (taken * 2 < term && current.denominator < limit) {
                break;
            }
            last = true;
        }
        const Fraction next = {taken * current.numerator + previous.numerator,
                               taken * current.denominator + previous.denominator};
        previous = current;
        current = next;
        ratio = {ratio.denominator, rest};
    }
    return current;
}

/// The magnitude \p v with a sign, held within the range of long.
long saturated(Wide v, bool negative)
{
    constexpr Wide greatest = std::numeric_limits<long>::max();
    if (negative) {
        return v > greatest ? std::numeric_limits<long>::min() : -static_cast<long>(v);
    }
    return v > greatest ? std::numeric_limits<long>::max() : static_cast<long>(v);
}

}  // namespace

void approximate(double x, long maxDenominator, long* numerator, long* denominator)
{
    const bool negative = x < 0.0;
    Fraction result = {0, 1};
    if (std::isinf(x)) {
        result = {1, 0};
    } else if (!std::isnan(x)) {
        result = maxDenominator <= 1 ? exactRatio(std::trunc(std::fabs(x)))
                                     : bestConvergent(exactRatio(std::fabs(x)), static_cast<Wide>(maxDenominator));
    }
    *numerator = saturated(result.numerator, negative);
    *denominator = static_cast<long>(result.denominator);
}

}  // namespace zet
