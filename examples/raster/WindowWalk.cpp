#include "raster/WindowWalk"

#include <algorithm>

namespace tools {

namespace {

/// The greatest number of pixels up to \p limit that is a multiple of \p step, or all of \p extent:
/// at least one step.
int fit(int extent, int step, std::size_t limit)
{
    if (limit >= static_cast<std::size_t>(extent)) {
        return extent;
    }
    return std::max(step, static_cast<int>(limit) / step * step);
}

}  // namespace

WindowWalk::WindowWalk(int width, int height, int blockWidth, int blockHeight, std::size_t limit)
    : m_width(width),
      m_height(height),
      m_cellWidth(std::clamp(blockWidth, 1, width)),
      m_cellHeight(std::clamp(blockHeight, 1, height)),
      m_windowWidth(0),
      m_windowHeight(0)
{
    if (Window{0, 0, m_cellWidth, m_cellHeight}.pixels() > limit) {
        m_windowWidth = fit(m_cellWidth, 1, limit);
        m_windowHeight = fit(m_cellHeight, 1, limit / static_cast<std::size_t>(m_windowWidth));
        return;
    }
    m_cellWidth = fit(width, m_cellWidth, limit / static_cast<std::size_t>(m_cellHeight));
    if (m_cellWidth == width) {
        m_cellHeight = fit(height, m_cellHeight, limit / static_cast<std::size_t>(width));
    }
    m_windowWidth = m_cellWidth;
    m_windowHeight = m_cellHeight;
}

bool WindowWalk::next(Window& window)
{
    if (m_cellY >= m_height) {
        return false;
    }
    const int cellRight = m_cellX + std::min(m_cellWidth, m_width - m_cellX);
    const int cellBottom = m_cellY + std::min(m_cellHeight, m_height - m_cellY);
    window = {m_x, m_y, std::min(m_windowWidth, cellRight - m_x), std::min(m_windowHeight, cellBottom - m_y)};

    m_x += window.width;
    if (m_x == cellRight) {
        m_x = m_cellX;
        m_y += window.height;
    }
    if (m_y == cellBottom) {
        m_cellX = cellRight;
        if (m_cellX == m_width) {
            m_cellX = 0;
            m_cellY = cellBottom;
        }
        m_x = m_cellX;
        m_y = m_cellY;
    }
    return true;
}

}  // namespace tools
