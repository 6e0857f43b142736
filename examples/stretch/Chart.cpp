#include "Chart"

#include <algorithm>
#include <cmath>

#include "support/Table"

namespace stretch {

using tools::Canvas;
using tools::Colour;

namespace {

int textWidth(const std::string& text)
{
    return static_cast<int>(text.size()) * Canvas::kLetterWidth - 2;
}

/// The distance of a point from the line between two others.
double distance(double x, double y, double x0, double y0, double x1, double y1)
{
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    const double square = dx * dx + dy * dy;
    const double t = square > 0 ? std::clamp(((x - x0) * dx + (y - y0) * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(x - x0 - t * dx, y - y0 - t * dy);
}

/// A round number of which the length has some four or five.
double roundStep(double length)
{
    const double power = std::pow(10.0, std::floor(std::log10(length / 4)));
    const double rest = length / 4 / power;
    return power * (rest < 1.5 ? 1 : rest < 3.5 ? 2 : rest < 7.5 ? 5 : 10);
}

}  // namespace

Chart::Chart(Canvas& canvas, int x, int y, int width, int height, const Range& range)
    : m_canvas(canvas), m_x(x), m_y(y), m_width(width), m_height(height), m_range(range)
{
    if (!(m_range.first < m_range.second)) {
        m_range = {m_range.first - 0.5, m_range.first + 0.5};
    }
}

void Chart::grid()
{
    for (int i = 0; i <= 4; ++i) {
        const int y = m_y + m_height * i / 4;
        m_canvas.fill(m_x, y, m_width, i == 4 ? 2 : 1, i == 4 ? ink::kFaint : ink::kGrid);
    }
}

void Chart::bars(const std::vector<double>& heights, Colour colour)
{
    const auto count = static_cast<double>(heights.size());
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double top = m_y + m_height * (1 - std::clamp(heights[i], 0.0, 1.0));
        const int left = m_x + static_cast<int>(std::lround(m_width * static_cast<double>(i) / count));
        const int right = m_x + static_cast<int>(std::lround(m_width * static_cast<double>(i + 1) / count));
        const int whole = static_cast<int>(std::ceil(top));
        m_canvas.fill(left, whole, right - left, m_y + m_height - whole, colour);
        for (int x = left; x < right && whole > m_y; ++x) {
            m_canvas.blend(x, whole - 1, colour, whole - top);
        }
    }
}

void Chart::curve(const std::vector<std::pair<double, double>>& points, Colour colour)
{
    for (std::size_t i = 1; i < points.size(); ++i) {
        line(place(points[i - 1].first), m_y + m_height * (1 - points[i - 1].second), place(points[i].first),
             m_y + m_height * (1 - points[i].second), 3.0, colour);
    }
}

void Chart::mark(double value, const std::string& text)
{
    const int x = static_cast<int>(std::lround(place(value)));
    for (int y = m_y; y < m_y + m_height; y += 9) {
        m_canvas.fill(x, y, 2, std::min(5, m_y + m_height - y), ink::kMark);
    }
    write(x - textWidth(text) / 2, m_y - Canvas::kLetterHeight - 5, text, ink::kMark);
}

void Chart::horizontalLabels()
{
    constexpr int kMostLabels = 10;
    const double step = roundStep(m_range.second - m_range.first);
    const double first = std::ceil(m_range.first / step) * step;
    for (int i = 0; i < kMostLabels && first + i * step <= m_range.second; ++i) {
        // what rounding leaves beside 0 is 0
        const double value = std::abs(first + i * step) < step / 1e6 ? 0.0 : first + i * step;
        const int x = static_cast<int>(std::lround(place(value)));
        const std::string text = tools::numberText(value, 6);
        m_canvas.fill(x, m_y + m_height, 2, 7, ink::kFaint);
        write(x - textWidth(text) / 2, m_y + m_height + 12, text, ink::kFaint);
    }
}

void Chart::sideLabels(const std::string& foot, const std::string& head, bool onTheLeft)
{
    const auto at = [&](const std::string& text) {
        return onTheLeft ? m_x - 10 - textWidth(text) : m_x + m_width + 10;
    };
    write(at(foot), m_y + m_height - Canvas::kLetterHeight / 2, foot, ink::kFaint);
    write(at(head), m_y - Canvas::kLetterHeight / 2, head, ink::kFaint);
}

void Chart::heading(const std::string& text)
{
    write(m_x, m_y - 46, text, ink::kText);
}

double Chart::place(double value) const
{
    return m_x + m_width * (value - m_range.first) / (m_range.second - m_range.first);
}

void Chart::line(double x0, double y0, double x1, double y1, double width, Colour colour)
{
    const double reach = width / 2 + 1;
    const int top = static_cast<int>(std::floor(std::min(y0, y1) - reach));
    const int bottom = static_cast<int>(std::ceil(std::max(y0, y1) + reach));
    const int left = static_cast<int>(std::floor(std::min(x0, x1) - reach));
    const int right = static_cast<int>(std::ceil(std::max(x0, x1) + reach));
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const double cover = width / 2 + 0.5 - distance(x + 0.5, y + 0.5, x0, y0, x1, y1);
            if (cover > 0) {
                m_canvas.blend(x, y, colour, std::min(cover, 1.0));
            }
        }
    }
}

void Chart::write(int x, int y, const std::string& text, Colour colour)
{
    m_canvas.write(x, y, text, colour);
}

}  // namespace stretch
