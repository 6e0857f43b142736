#include <zet/ZetTileGrid>

#include <algorithm>
#include <cmath>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"

namespace zet {

namespace {

unsigned int tilesIn(unsigned int extent, unsigned int tile)
{
    return internal::truncateToUInt32(std::ceil(static_cast<double>(extent) / static_cast<double>(tile)));
}

/// A cell on one axis, cut back to the image. The greatest position, of the last cell of the greatest
/// size, is still within 64 bits.
struct Extent
{
    Extent(std::uint64_t begin, unsigned int size, unsigned int pixels)
        : first(begin), end(std::min<std::uint64_t>(begin + size, pixels))
    {}

    unsigned int size() const { return static_cast<unsigned int>(end - first); }

    std::uint64_t first;
    std::uint64_t end;
};

}  // namespace

ZetTileGrid::ZetTileGrid(const ZetImageSize& imageSize, const ZetImageSize& tileSize)
{
    ZetTileGrid::initialize(imageSize, tileSize);
}

ZetString ZetTileGrid::className() const
{
    return L"ZetTileGrid";
}

void ZetTileGrid::initialize(const ZetImageSize& imageSize, const ZetImageSize& tileSize)
{
    m_imageSize = imageSize;
    m_tileSize = tileSize;
    m_tilesAcross = tilesIn(imageSize.width(), tileSize.width());
    m_tilesDown = tilesIn(imageSize.height(), tileSize.height());
    m_tileCount = m_tilesAcross * m_tilesDown;
}

void ZetTileGrid::clear()
{
    if (m_tileCount != 0) {
        *this = ZetTileGrid();
    }
}

bool ZetTileGrid::operator==(const ZetTileGrid& other) const
{
    return m_tilesAcross == other.m_tilesAcross && m_tilesDown == other.m_tilesDown &&
           m_tileCount == other.m_tileCount && m_tileSize == other.m_tileSize && m_imageSize == other.m_imageSize;
}

unsigned int ZetTileGrid::imageToCell(unsigned int x, unsigned int y, unsigned int z) const
{
    if (x >= m_imageSize.width() || y >= m_imageSize.height() || z >= m_imageSize.depth()) {
        return kOutside;
    }
    return static_cast<unsigned int>(cellOf(x, y));
}

ZetROI ZetTileGrid::operator()(unsigned int cellX, unsigned int cellY, unsigned int z) const
{
    const Extent x(std::uint64_t{cellX} * m_tileSize.width(), m_tileSize.width(), m_imageSize.width());
    const Extent y(std::uint64_t{cellY} * m_tileSize.height(), m_tileSize.height(), m_imageSize.height());
    const Extent plane(z, m_tileSize.depth(), m_imageSize.depth());
    const ZetCoord3D<int> origin(static_cast<int>(x.first), static_cast<int>(y.first), static_cast<int>(plane.first));
    return ZetROI(origin, ZetImageSize(x.size(), y.size(), plane.size()));
}

ZetROI ZetTileGrid::operator[](unsigned int index) const
{
    const unsigned int cellY = m_tilesAcross == 0 ? 0 : index / m_tilesAcross;
    return (*this)(index - m_tilesAcross * cellY, cellY, 0);
}

std::set<unsigned int> ZetTileGrid::intersectedCells(const ZetROI& region) const
{
    std::set<unsigned int> cells;
    const ZetROI inside = ZetROI(ZetCoord3D<int>(), m_imageSize).intersection(region);
    if (inside.size().isEmpty()) {
        return cells;
    }
    // Inside an image no position is negative.
    const std::uint64_t x0 = static_cast<unsigned int>(inside.origin().x());
    const std::uint64_t y0 = static_cast<unsigned int>(inside.origin().y());
    const std::uint64_t x1 = x0 + inside.size().width() - 1;
    const std::uint64_t y1 = y0 + inside.size().height() - 1;
    const std::uint64_t rowEnd = cellOf(x1, y0) - cellOf(x0, y0);
    for (std::uint64_t row = cellOf(x0, y0); row <= cellOf(x1, y1); row += m_tilesAcross) {
        for (std::uint64_t i = 0; i <= rowEnd; ++i) {
            cells.insert(static_cast<unsigned int>(row + i));
        }
    }
    return cells;
}

/// The number of the cell at a position of the image.
std::uint64_t ZetTileGrid::cellOf(std::uint64_t x, std::uint64_t y) const
{
    return y / m_tileSize.height() * m_tilesAcross + x / m_tileSize.width();
}

}  // namespace zet
