#include <zet/ZetRoundClipLoop>

#include <zet/ZetEqnTile>

#include "core/ZetUnitInit"
#include "eqn/ZetTileAccess"

namespace zet {

template <class In, class Out>
void ZetRoundClipLoop<In, Out>::operator()(const ZetBlockedRange1D<int>& range) const
{
    using namespace internal;
    if (range.begin() >= range.end()) {
        return;
    }
    const int column = columnOf<In>(ZetRealTypes());
    const unsigned long begin = static_cast<unsigned long>(range.begin());
    const unsigned long size = static_cast<unsigned long>(range.end()) - begin;
    const ZetTileSource source(*m_source);
    char* out = m_destination->template elements<char>() + begin * sizeof(Out);
    constexpr int outColumn = columnOf<Out>(ZetRealTypes());
    if (source.isDense()) {
        pixelKernels().roundClip[column].to[outColumn](source.at(begin), out, size, m_min, m_max);
        return;
    }
    forBlocks(size, [&](unsigned long first, unsigned long count) {
        double block[kTileBlock];
        source.copy(begin + first, count, block);
        pixelKernels().roundClip[kDoubleColumn].to[outColumn](block, out + first * sizeof(Out), count, m_min, m_max);
    });
}

#define ZET_INSTANTIATE(In, Out) template class ZetRoundClipLoop<In, Out>;
#define ZET_INSTANTIATE_ALL(In)         \
    ZET_INSTANTIATE(In, signed char)    \
    ZET_INSTANTIATE(In, unsigned char)  \
    ZET_INSTANTIATE(In, short)          \
    ZET_INSTANTIATE(In, unsigned short) \
    ZET_INSTANTIATE(In, int)            \
    ZET_INSTANTIATE(In, unsigned int)   \
    ZET_INSTANTIATE(In, float)          \
    ZET_INSTANTIATE(In, double)

ZET_INSTANTIATE_ALL(signed char)
ZET_INSTANTIATE_ALL(unsigned char)
ZET_INSTANTIATE_ALL(short)
ZET_INSTANTIATE_ALL(unsigned short)
ZET_INSTANTIATE_ALL(int)
ZET_INSTANTIATE_ALL(unsigned int)
ZET_INSTANTIATE_ALL(float)
ZET_INSTANTIATE_ALL(double)

}  // namespace zet
