#include <cstring>
#include <limits>
#include <vector>

#include <zet/ZetCoreFunctions>
#include <zet/ZetEqnTile>
#include <zet/ZetRoundClipLoop>

#include "core/ZetUnitInit"
#include "eqn/ZetPendingTile"
#include "eqn/ZetRankSelection"
#include "eqn/ZetRoundClipRanges"
#include "eqn/ZetTileAccess"

namespace zet {

namespace {

using internal::ZetPendingTile;
using internal::ZetTileSource;

/// The median of a tile of T; elements with gaps are brought together first.
template <class T>
double medianOf(const ZetTileSource& source)
{
    if (source.isDense()) {
        return internal::lowerMedian<T>(source.at(0), source.size());
    }
    std::vector<T> elements(source.size());
    for (unsigned long i = 0; i < source.size(); ++i) {
        std::memcpy(&elements[i], source.at(i), sizeof(T));
    }
    return internal::lowerMedian<T>(elements.data(), elements.size());
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
    return ZetPendingTile(*this).sum();
}

double ZetEqnTile::max() const
{
    return ZetPendingTile(*this).max();
}

double ZetEqnTile::min() const
{
    return ZetPendingTile(*this).min();
}

double ZetEqnTile::median() const
{
    const ZetTileSource source(*this);
    double median = 0.0;
    internal::visitElement(source.column(), internal::ZetRealTypes(),
                           [&](auto tag) { median = medianOf<typename decltype(tag)::type>(source); });
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
        const auto runRange = [&](unsigned long first, unsigned long count) {
            const ZetEqnTile from = partOf(source, first, count);
            ZetEqnTile to = partOf(result, first, count);
            doParallelFor(ZetBlockedRange1D<int>(static_cast<int>(count)), Loop(&from, &to, lo, hi), useParallelLoops(),
                          true);
        };
        forBlocks(result.size(), runRange, longestRange);
    };
    if (ZetTileSource(source).size() < result.size()) {
        return;
    }
    const int outColumn = realColumn(result.dataType().type());
    visitElement(realColumn(source.dataType().type()), ZetRealTypes(),
                 [&](auto in) { visitElement(outColumn, ZetRealTypes(), [&](auto out) { run(in, out); }); });
}

}  // namespace zet
