#include "support/ZetHandWorks"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace bench {
namespace {

using Count = std::size_t;
using U8 = std::uint8_t;
using U16 = std::uint16_t;

struct Complex
{
    double re;
    double im;
};

/// The one loop: \p fn of an element of each operand.
template <class Out, class... In, class Fn>
void fused(const void* const* operands, void* out, Count n, Fn fn)
{
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        [n, fn](Out* __restrict z, const In* __restrict... x) {
            for (Count i = 0; i < n; ++i) {
                z[i] = fn(x[i]...);
            }
        }(static_cast<Out*>(out), static_cast<const In*>(operands[I])...);
    }
    (std::index_sequence_for<In...>());
}

double indexOf(double nir, double red)
{
    return (nir - red) / (nir + red);
}

void sumOfBytes(const void* const* operands, void* out, Count n)
{
    fused<double, U8, U8>(operands, out, n, [](U8 a, U8 b) { return static_cast<double>(a + b); });
}

// The sums of integers of 16 bits are exact in an int.
void index(const void* const* operands, void* out, Count n)
{
    fused<double, U16, U16>(operands, out, n, [](int nir, int red) {
        return static_cast<double>(nir - red) / static_cast<double>(nir + red);
    });
}

void scaledIndex(const void* const* operands, void* out, Count n)
{
    fused<U8, U16, U16>(operands, out, n, [](U16 nir, U16 red) {
        const double v = indexOf(nir, red) * 127.5 + 127.5;
        return static_cast<U8>(static_cast<int>(v <= 0.0 ? 0.0 : v >= 255.0 ? 255.0 : v + 0.5));
    });
}

void polynomial(const void* const* operands, void* out, Count n)
{
    fused<double, double>(operands, out, n, [](double x) { return 3.0 * x * x * x - 2.0 * x * x + x - 5.0; });
}

void transcendental(const void* const* operands, void* out, Count n)
{
    fused<double, double, double>(operands, out, n,
                                  [](double x, double y) { return std::sin(x) * std::cos(y) + std::exp(-x * x); });
}

void complexMultiplyAdd(const void* const* operands, void* out, Count n)
{
    fused<Complex, Complex, Complex, Complex>(operands, out, n, [](Complex a, Complex b, Complex c) {
        return Complex{a.re * b.re - a.im * b.im + c.re, a.re * b.im + a.im * b.re + c.im};
    });
}

template <class T>
void clip(const void* const* operands, void* out, Count n)
{
    fused<double, T>(operands, out, n, [](T x) {
        const double v = static_cast<double>(x);
        return v < -1.0 ? -1.0 : v > 1.0 ? 1.0 : v;
    });
}

void give(void* out, double result)
{
    *static_cast<double*>(out) = result;
}

/// Totals of 32 bits hold 65,536 elements of 16 bits.
void sumU16(const void* const* operands, void* out, Count n)
{
    const U16* x = static_cast<const U16*>(operands[0]);
    std::uint64_t total = 0;
    for (Count start = 0; start < n; start += 65536) {
        const Count end = std::min<Count>(start + 65536, n);
        std::uint32_t part = 0;
        for (Count i = start; i < end; ++i) {
            part += x[i];
        }
        total += part;
    }
    give(out, static_cast<double>(total));
}

void sumFloat(const void* const* operands, void* out, Count n)
{
    const float* x = static_cast<const float*>(operands[0]);
    double total = 0.0;
    for (Count i = 0; i < n; ++i) {
        total += static_cast<double>(x[i]);
    }
    give(out, total);
}

/// The outermost element in the order of \p Before. The candidates of 64 columns let the compiler use
/// vectors for floats too, whose order it may not change by itself.
template <class T, class Before>
void outermost(const void* const* operands, void* out, Count n, Before before)
{
    const T* x = static_cast<const T*>(operands[0]);
    constexpr Count kColumns = 64;
    T best[kColumns];
    std::fill_n(best, kColumns, x[0]);
    Count i = 0;
    for (; i + kColumns <= n; i += kColumns) {
        for (Count column = 0; column < kColumns; ++column) {
            best[column] = before(x[i + column], best[column]) ? x[i + column] : best[column];
        }
    }
    for (; i < n; ++i) {
        best[0] = before(x[i], best[0]) ? x[i] : best[0];
    }
    give(out, static_cast<double>(*std::min_element(best, best + kColumns, before)));
}

template <class T>
void min(const void* const* operands, void* out, Count n)
{
    outermost<T>(operands, out, n, [](T a, T b) { return a < b; });
}

template <class T>
void max(const void* const* operands, void* out, Count n)
{
    outermost<T>(operands, out, n, [](T a, T b) { return a > b; });
}

/// The element of rank \p rank, digit by digit from the highest: count the digits, find the one that
/// holds the rank, and keep only the keys that have it.
template <int kDigitBits, class Key>
class RadixSelection
{
public:
    template <class KeyAt>
    Key select(Count n, Count rank, KeyAt keyAt)
    {
        m_kept.resize(n);
        m_rank = rank;
        int shift = std::numeric_limits<Key>::digits - kDigitBits;
        Key found = keep(n, shift, kDigitBits, keyAt);
        while (shift > 0) {
            const int bits = std::min(shift, kDigitBits);
            shift -= bits;
            found = static_cast<Key>(found | keep(m_size, shift, bits, [this](Count i) { return m_kept[i]; }));
        }
        return found;
    }

private:
    static constexpr Count kDigits = Count{1} << kDigitBits;

    /// Keeps those of the \p n keys that have the digit of the rank at \p shift. Returns the digit, in its place.
    template <class KeyAt>
    Key keep(Count n, int shift, int bits, KeyAt keyAt)
    {
        const auto digitAt = [=](Count i) {
            return static_cast<std::uint32_t>(keyAt(i) >> shift) & static_cast<std::uint32_t>((1u << bits) - 1);
        };
        count(n, digitAt);
        const std::uint32_t digit = digitOfRank();
        m_size = 0;
        for (Count start = 0; start < n; start += kBlock) {
            const Count end = std::min(start + kBlock, n);
            // most blocks have no such key, which vectors see at once
            std::uint32_t hits = 0;
            for (Count i = start; i < end; ++i) {
                hits += digitAt(i) == digit ? 1u : 0u;
            }
            for (Count i = start; hits != 0 && i < end; ++i) {
                const bool hit = digitAt(i) == digit;
                m_kept[m_size] = keyAt(i);
                m_size += hit ? 1 : 0;
            }
        }
        return static_cast<Key>(static_cast<Key>(digit) << shift);
    }

    /// Four counters take turns, so that equal digits in a row do not wait for each other.
    template <class DigitAt>
    void count(Count n, DigitAt digitAt)
    {
        std::fill_n(&m_counts[0][0], 4 * kDigits, 0u);
        Count i = 0;
        for (; i + 4 <= n; i += 4) {
            ++m_counts[0][digitAt(i)];
            ++m_counts[1][digitAt(i + 1)];
            ++m_counts[2][digitAt(i + 2)];
            ++m_counts[3][digitAt(i + 3)];
        }
        for (; i < n; ++i) {
            ++m_counts[0][digitAt(i)];
        }
    }

    /// Leaves in m_rank the rank among the keys that have the digit.
    std::uint32_t digitOfRank()
    {
        for (std::uint32_t digit = 0;; ++digit) {
            const Count here = Count{m_counts[0][digit]} + m_counts[1][digit] + m_counts[2][digit] + m_counts[3][digit];
            if (m_rank < here) {
                return digit;
            }
            m_rank -= here;
        }
    }

    static constexpr Count kBlock = 32;

    std::vector<Key> m_kept;
    std::uint32_t m_counts[4][kDigits];
    Count m_rank = 0;
    Count m_size = 0;
};

void medianU16(const void* const* operands, void* out, Count n)
{
    static RadixSelection<8, U16> selection;
    const U16* x = static_cast<const U16*>(operands[0]);
    give(out, static_cast<double>(selection.select(n, (n - 1) / 2, [x](Count i) { return x[i]; })));
}

/// Floats in their order are integers in their order once the negative ones are turned around.
void medianFloat(const void* const* operands, void* out, Count n)
{
    static RadixSelection<11, std::uint32_t> selection;
    constexpr std::uint32_t kSign = 0x80000000u;
    const std::uint32_t* x = static_cast<const std::uint32_t*>(operands[0]);
    const std::uint32_t key = selection.select(
        n, (n - 1) / 2, [x](Count i) { return x[i] ^ ((x[i] & kSign) != 0 ? ~std::uint32_t{0} : kSign); });
    give(out, static_cast<double>(std::bit_cast<float>((key & kSign) != 0 ? key ^ kSign : ~key)));
}

}  // namespace

const HandWorks handWorks = {
    &sumOfBytes,   &index,      &scaledIndex, &polynomial,  &transcendental, &complexMultiplyAdd,
    &clip<double>, &clip<U16>,  &sumU16,      &sumFloat,    &min<U16>,       &min<float>,
    &max<U16>,     &max<float>, &medianU16,   &medianFloat,
};

}  // namespace bench
