#include "QuickLook"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>

#include "raster/ElementTypes"

namespace bandmath {

using tools::Colour;
using tools::magnitude;
using tools::visitElements;

namespace {

/// \p extent scaled so that \p longest becomes \p size, if that makes it smaller.
int scaled(int extent, int longest, int size)
{
    if (longest <= size) {
        return extent;
    }
    const double factor = static_cast<double>(size) / longest;
    return std::max(1, static_cast<int>(std::lround(extent * factor)));
}

int cellOf(int position, int extent, int cells)
{
    return static_cast<int>(static_cast<long>(position) * cells / extent);
}

std::string shortText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", value);
    return text;
}

/// The text in lines of at most \p length letters, broken at blanks where there are some.
std::vector<std::string> wrapped(const std::string& text, std::size_t length)
{
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (text.size() - begin > length) {
        const std::size_t blank = text.rfind(' ', begin + length);
        const bool found = blank != std::string::npos && blank > begin;
        const std::size_t end = found ? blank : begin + length;
        lines.push_back(text.substr(begin, end - begin));
        begin = found ? end + 1 : end;
    }
    lines.push_back(text.substr(begin));
    return lines;
}

constexpr int kMargin = 12;
constexpr int kBarWidth = 200;
constexpr int kLabelWidth = 9 * Canvas::kLetterWidth;
constexpr int kLineHeight = Canvas::kLetterHeight + 6;

int linesHeight(std::size_t lines)
{
    return 2 * kMargin + static_cast<int>(lines) * kLineHeight - (kLineHeight - Canvas::kLetterHeight);
}

}  // namespace

QuickLook::QuickLook(const Options& options, int width, int height)
    : m_options(options),
      m_imageWidth(width),
      m_imageHeight(height),
      m_width(scaled(width, std::max(width, height), options.pictureSize())),
      m_height(scaled(height, std::max(width, height), options.pictureSize())),
      m_sums(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height)),
      m_valid(m_sums.size()),
      m_total(m_sums.size())
{}

void QuickLook::add(const Window& window, const zet::ZetEqnTile& pixels, const Validity& valid)
{
    visitElements(pixels.dataType().type(), pixels.buffer()->data(), [&](const auto* elements) {
        std::size_t i = 0;
        for (int y = window.y; y < window.y + window.height; ++y) {
            const std::size_t row =
                static_cast<std::size_t>(cellOf(y, m_imageHeight, m_height)) * static_cast<std::size_t>(m_width);
            for (int x = window.x; x < window.x + window.width; ++x, ++i) {
                const std::size_t cell = row + static_cast<std::size_t>(cellOf(x, m_imageWidth, m_width));
                const double value = magnitude(elements[i]);
                ++m_total[cell];
                if (valid[i] && std::isfinite(value)) {
                    m_sums[cell] += value;
                    ++m_valid[cell];
                }
            }
        }
    });
}

/// NaN where a cell has no pixel.
std::vector<double> QuickLook::means() const
{
    std::vector<double> result(m_sums.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = m_valid[i] ? m_sums[i] / m_valid[i] : std::numeric_limits<double>::quiet_NaN();
    }
    return result;
}

/// The values at the two ends of the colours.
std::pair<double, double> QuickLook::limits(const std::vector<double>& means) const
{
    if (const auto stretch = m_options.stretch()) {
        return *stretch;
    }
    std::vector<double> sorted;
    std::copy_if(means.begin(), means.end(), std::back_inserter(sorted), [](double v) { return !std::isnan(v); });
    if (sorted.empty()) {
        return {0, 1};
    }
    std::sort(sorted.begin(), sorted.end());
    const auto percentile = [&](double percent) {
        return sorted[static_cast<std::size_t>(percent / 100 * static_cast<double>(sorted.size() - 1) + 0.5)];
    };
    const std::pair<double, double> percents = m_options.percentiles();
    const std::pair<double, double> ends(percentile(percents.first), percentile(percents.second));
    return ends.first < ends.second ? ends : std::pair<double, double>(ends.first - 0.5, ends.first + 0.5);
}

Canvas QuickLook::draw(const std::string& equation) const
{
    const std::vector<double> values = means();
    const std::pair<double, double> ends = limits(values);
    const ColourRamp ramp(m_options.ramp());
    const std::optional<Colour> background = m_options.background();
    const int textWidth = m_width - 5 * kMargin - kBarWidth - 2 * kLabelWidth;
    const std::size_t letters = static_cast<std::size_t>(std::max(textWidth / Canvas::kLetterWidth, 16));
    const std::vector<std::string> lines = m_options.legend() ? wrapped(equation, letters) : std::vector<std::string>();

    Canvas canvas(m_width, m_height + (m_options.legend() ? linesHeight(lines.size()) : 0));
    std::size_t i = 0;
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x, ++i) {
            if (background) {
                canvas.set(x, y, *background);
            }
            if (m_valid[i]) {
                const Colour colour = ramp.at((values[i] - ends.first) / (ends.second - ends.first));
                canvas.blend(x, y, colour, static_cast<double>(m_valid[i]) / m_total[i]);
            }
        }
    }
    if (m_options.legend()) {
        drawLegend(canvas, ramp, ends, lines);
    }
    return canvas;
}

/// Below the picture: the low value, the colours, the high value, and the equation.
void QuickLook::drawLegend(Canvas& canvas, const ColourRamp& ramp, const std::pair<double, double>& limits,
                           const std::vector<std::string>& lines) const
{
    constexpr Colour kPaper{0xff, 0xff, 0xff};
    constexpr Colour kInk{0x33, 0x33, 0x33};
    canvas.fill(0, m_height, m_width, canvas.height() - m_height, kPaper);

    const int top = m_height + kMargin;
    const std::string low = shortText(limits.first);
    const int bar = kMargin + static_cast<int>(low.size()) * Canvas::kLetterWidth + kMargin;
    canvas.write(kMargin, top, low, kInk);
    for (int x = 0; x < kBarWidth; ++x) {
        canvas.fill(bar + x, top, 1, Canvas::kLetterHeight, ramp.at(static_cast<double>(x) / (kBarWidth - 1)));
    }
    const std::string high = shortText(limits.second);
    canvas.write(bar + kBarWidth + kMargin, top, high, kInk);
    const int text = bar + kBarWidth + 3 * kMargin + static_cast<int>(high.size()) * Canvas::kLetterWidth;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        canvas.write(text, top + static_cast<int>(i) * kLineHeight, lines[i], kInk);
    }
}

}  // namespace bandmath
