#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <zet/ZetCoreFunctions>
#include <zet/ZetEqnTile>
#include <zet/ZetRoundClipLoop>

#include "core/ZetUnitInit"
#include "eqn/ZetRoundClipRanges"
#include "eqn/ZetTileAccess"

namespace zet {

namespace {

using internal::kDoubleColumn;
using internal::kTileBlock;
using internal::pixelKernels;
using internal::ZetTileSource;

/// Runs a reducing loop over a real tile; 0.0 for any other.
double reduce(const internal::ZetPixelKernels::Reductions& loops, const ZetEqnTile& tile, double start)
{
    const ZetTileSource source(tile);
    if (!source.isReal()) {
        return 0.0;
    }
    if (source.isDense()) {
        return loops.at[source.column()](source.at(0), source.size(), start);
    }
    internal::forBlocks(source.size(), [&](unsigned long first, unsigned long count) {
        double block[kTileBlock];
        source.copy(first, count, block);
        start = loops.at[kDoubleColumn](block, count, start);
    });
    return start;
}

/// Elements from which counting is cheaper than selecting, where both serve.
template <class T>
constexpr unsigned long kLeastToCount = sizeof(T) == 1 ? 64 : 4096;

/// A number that is in the order of integers where its value is in the order of medians: NaN last,
/// -0.0 before 0.0.
template <class T>
auto keyOf(T value)
{
    if constexpr (std::is_integral_v<T>) {
        return value;
    } else {
        using Key = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
        if (std::isnan(value)) {
            return std::numeric_limits<Key>::max();
        }
        const Key bits = std::bit_cast<Key>(value);
        return bits < 0 ? bits ^ std::numeric_limits<Key>::max() : bits;
    }
}

template <class T, class Key>
double valueOf(Key key)
{
    if constexpr (std::is_integral_v<T>) {
        return static_cast<double>(key);
    } else {
        return static_cast<double>(std::bit_cast<T>(key < 0 ? key ^ std::numeric_limits<Key>::max() : key));
    }
}

template <class T>
T elementAt(const ZetTileSource& source, unsigned long i)
{
    T value;
    std::memcpy(&value, source.at(i), sizeof value);
    return value;
}

/// The element of the given rank of a tile of small integers, by counting each value.
template <class T>
double countToRank(const ZetTileSource& source, unsigned long rank)
{
    constexpr int least = std::numeric_limits<T>::min();
    std::vector<unsigned long> counts(1UL << (8 * sizeof(T)));
    for (unsigned long i = 0; i < source.size(); ++i) {
        ++counts[static_cast<unsigned long>(elementAt<T>(source, i) - least)];
    }
    int value = least;
    for (const unsigned long count : counts) {
        if (rank < count) {
            break;
        }
        rank -= count;
        ++value;
    }
    return value;
}

template <class T>
double selectRank(const ZetTileSource& source, unsigned long rank)
{
    std::vector<decltype(keyOf(T()))> keys(source.size());
    for (unsigned long i = 0; i < source.size(); ++i) {
        keys[i] = keyOf(elementAt<T>(source, i));
    }
    const auto ranked = keys.begin() + static_cast<std::ptrdiff_t>(rank);
    std::nth_element(keys.begin(), ranked, keys.end());
    return valueOf<T>(*ranked);
}

template <class T>
double elementOfRank(const ZetTileSource& source, unsigned long rank)
{
    if constexpr (sizeof(T) <= 2) {
        if (source.size() >= kLeastToCount<T>) {
            return countToRank<T>(source, rank);
        }
    }
    return selectRank<T>(source, rank);
}

/// A view of part of a tile: a body counts in int.
ZetEqnTile partOf(const ZetEqnTile& tile, unsigned long first, unsigned long count)
{
    const long elementSize = tile.dataType().size();
    char* start = tile.elements<char>() + static_cast<long>(first) * tile.increment() * elementSize;
    return ZetEqnTile(new ZetBuffer(0, start, false), tile.dataType(), count, tile.increment());
}

}  // namespace

double ZetEqnTile::sum() const
{
    return reduce(pixelKernels().sum, *this, 0.0);
}

double ZetEqnTile::max() const
{
    return reduce(pixelKernels().extreme[internal::kGreatest], *this, std::numeric_limits<double>::min());
}

double ZetEqnTile::min() const
{
    return reduce(pixelKernels().extreme[internal::kLeast], *this, std::numeric_limits<double>::max());
}

double ZetEqnTile::median() const
{
    const ZetTileSource source(*this);
    double median = 0.0;
    if (source.size() > 0) {
        internal::visitElement(source.column(), internal::ZetRealTypes(), [&](auto tag) {
            median = elementOfRank<typename decltype(tag)::type>(source, (source.size() - 1) / 2);
        });
    }
    return median;
}

ZetEqnTile ZetEqnTile::roundclip(const ZetDataType& type, double lo, double hi) const
{
    const ZetEqnTile source = partOf(*this, 0, m_size);
    ZetEqnTile result = internal::ZetTileResult::make(type, m_size, *this);
    internal::roundClipInRanges(source, result, lo, hi, std::numeric_limits<int>::max());
    return result;
}

void internal::roundClipInRanges(const ZetEqnTile& source, ZetEqnTile& result, double lo, double hi,
                                 unsigned long longestRange)
{
    const auto run = [&](auto in, auto out) {
        using Loop = ZetRoundClipLoop<typename decltype(in)::type, typename decltype(out)::type>;
        for (unsigned long first = 0; first < result.size(); first += longestRange) {
            const unsigned long count = std::min(longestRange, result.size() - first);
            const ZetEqnTile from = partOf(source, first, count);
            ZetEqnTile to = partOf(result, first, count);
            doParallelFor(ZetBlockedRange1D<int>(static_cast<int>(count)), Loop(&from, &to, lo, hi), useParallelLoops(),
                          true);
        }
    };
    if (ZetTileSource(source).size() < result.size()) {
        return;
    }
    const int outColumn = realColumn(result.dataType().type());
    visitElement(realColumn(source.dataType().type()), ZetRealTypes(),
                 [&](auto in) { visitElement(outColumn, ZetRealTypes(), [&](auto out) { run(in, out); }); });
}

}  // namespace zet
