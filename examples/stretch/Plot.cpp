#include "Plot"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Chart"
#include "support/Table"

namespace stretch {

using tools::Canvas;
using tools::Colour;
using tools::numberText;

namespace {

constexpr int kWidth = 1280;
constexpr int kHeader = 70;
constexpr int kRow = 380;
constexpr int kChartWidth = 490;
constexpr int kChartHeight = 250;
constexpr int kLeft = 80;
constexpr int kRight = 720;
constexpr int kAbove = 70;
constexpr int kMostBars = 128;
constexpr std::size_t kMostRows = 12;

/// Some number of pixels at a value.
struct Weight
{
    double value;
    double pixels;
};

/// A range of values that is cut into bars of equally many steps.
struct Cut
{
    Cut(double first, double step, int steps)
    {
        const int stepsOfABar = (steps + kMostBars - 1) / kMostBars;
        bars = static_cast<std::size_t>((steps + stepsOfABar - 1) / stepsOfABar);
        range = {first, first + step * stepsOfABar * static_cast<double>(bars)};
    }

    Chart::Range range;
    std::size_t bars;
};

/// The shares of the pixels in the bars, as parts of the frame's height, and what that is in percent.
struct Bars
{
    Bars(const std::vector<Weight>& weights, const Cut& cut) : heights(cut.bars)
    {
        const auto [low, high] = cut.range;
        double total = 0;
        for (const Weight& weight : weights) {
            const double bar = std::floor((weight.value - low) / (high - low) * static_cast<double>(cut.bars) + 1e-9);
            total += weight.pixels;
            if (bar >= 0 && bar < static_cast<double>(cut.bars)) {
                heights[static_cast<std::size_t>(bar)] += weight.pixels;
            }
        }
        const double highest = frame();
        for (double& height : heights) {
            height /= highest;
        }
        percent = 100 * highest / std::max(total, 1.0);
    }

    /// The number of pixels at the head of the frame: those of the highest bar, or fewer where single
    /// bars tower over all.
    double frame() const
    {
        std::vector<double> sorted = heights;
        std::sort(sorted.begin(), sorted.end());
        const double most = sorted[sorted.size() * 95 / 100];
        return most > 0 ? std::min(sorted.back(), 1.5 * most) : std::max(sorted.back(), 1.0);
    }

    std::vector<double> heights;
    double percent = 0;
};

Colour colourOf(const GDALRasterBand& band)
{
    switch (const_cast<GDALRasterBand&>(band).GetColorInterpretation()) {
        case GCI_RedBand:
            return tools::colourOf(0xe59a92);
        case GCI_GreenBand:
            return tools::colourOf(0x9cc79a);
        case GCI_BlueBand:
            return tools::colourOf(0x93b5dd);
        default:
            return tools::colourOf(0xb5bcc4);
    }
}

/// The part of a band's values that is worth showing: its range, but not far beyond the ends.
Cut viewOf(const Source& source, const Curves& curves, std::size_t band)
{
    const zet::ZetHistogram& histogram = source.histogram(band);
    int low = static_cast<int>(histogram.min());
    int high = static_cast<int>(histogram.max());
    if (const auto ends = curves.ends(band)) {
        const int margin = 3 * (ends->second - ends->first) / 10 + 1;
        low = std::max(low, ends->first - margin);
        high = std::min(high, ends->second + margin);
    }
    const Scale& scale = source.scale(band);
    return Cut(scale.valueOf(low), scale.step, high - low + 1);
}

/// One band: its histograms before and after, as they are drawn.
class Row
{
public:
    Row(const Source& source, const Curves& curves, std::size_t band)
        : m_source(source), m_curves(curves), m_band(band), m_histogram(source.histogram(band))
    {
        const auto* const counts = static_cast<const std::uint64_t*>(m_histogram.frequencies()->data());
        for (long i = m_histogram.firstUsedIndex(); i <= m_histogram.lastUsedIndex(); ++i) {
            const int bin = m_histogram.firstBin() + static_cast<int>(i);
            const double pixels = static_cast<double>(counts[i]);
            m_before.push_back({source.scale(band).valueOf(bin), pixels});
            m_after.push_back({curves.valueOf(band, bin), pixels});
        }
    }

    void draw(Canvas& canvas, int y) const
    {
        const Cut out = outputCut();
        drawBefore(canvas, y, out);
        drawAfter(canvas, y, out);
    }

private:
    /// The whole range of a type of few values; of others what the tables give.
    Cut outputCut() const
    {
        const zet::ZetDataType type(m_curves.type());
        if (type.type() <= zet::ZetDataType::U16) {
            const double least = type.logicalMinValue();
            return Cut(least, 1.0, static_cast<int>(type.logicalMaxValue() - least) + 1);
        }
        const auto byValue = [](const Weight& a, const Weight& b) { return a.value < b.value; };
        const auto [least, greatest] = std::minmax_element(m_after.begin(), m_after.end(), byValue);
        return Cut(least->value, std::max((greatest->value - least->value) / kMostBars, 1e-300), kMostBars);
    }

    /// The value at the head of the curve: the last one of the cut, which ends behind it.
    double highestOutput(const Cut& out) const
    {
        return m_curves.type() <= zet::ZetDataType::U16 ? out.range.second - 1 : out.range.second;
    }

    std::string name() const
    {
        GDALRasterBand& band = m_source.raster(m_band);
        const GDALColorInterp colour = band.GetColorInterpretation();
        const bool isNamed = colour != GCI_Undefined && colour != GCI_GrayIndex;
        std::string result = "band " + std::to_string(m_band + 1);
        if (isNamed) {
            result += std::string(" (") + GDALGetColorInterpretationName(colour) + ")";
        }
        return result;
    }

    void drawBefore(Canvas& canvas, int y, const Cut& out) const
    {
        const Cut view = viewOf(m_source, m_curves, m_band);
        Chart chart(canvas, kLeft, y + kAbove, kChartWidth, kChartHeight, view.range);
        const Bars bars(m_before, view);
        chart.grid();
        chart.bars(bars.heights, colourOf(m_source.raster(m_band)));
        chart.heading(name() + ", before");
        chart.horizontalLabels();
        chart.sideLabels("0", numberText(bars.percent, 2) + "%", true);
        chart.sideLabels(numberText(out.range.first, 6), numberText(highestOutput(out), 6), false);
        if (const auto ends = m_curves.ends(m_band)) {
            const Scale& scale = m_source.scale(m_band);
            chart.mark(scale.valueOf(ends->first), numberText(scale.valueOf(ends->first), 4));
            chart.mark(scale.valueOf(ends->second), numberText(scale.valueOf(ends->second), 4));
        }
        chart.curve(curvePoints(chart, out), ink::kCurve);
    }

    void drawAfter(Canvas& canvas, int y, const Cut& out) const
    {
        Chart chart(canvas, kRight, y + kAbove, kChartWidth, kChartHeight, out.range);
        const Bars bars(m_after, out);
        chart.grid();
        chart.bars(bars.heights, colourOf(m_source.raster(m_band)));
        chart.heading("after");
        chart.horizontalLabels();
        chart.sideLabels("0", numberText(bars.percent, 2) + "%", true);
    }

    /// What each pixel column of the chart stands for, and what that becomes as a share of the output.
    std::vector<std::pair<double, double>> curvePoints(const Chart& chart, const Cut& out) const
    {
        const Scale& scale = m_source.scale(m_band);
        const auto [low, high] = chart.range();
        std::vector<std::pair<double, double>> points;
        for (int x = 0; x <= chart.width(); x += 2) {
            const double value = low + (high - low) * x / chart.width();
            const int bin = static_cast<int>((value - scale.first) / scale.step);
            const double share =
                (m_curves.valueOf(m_band, bin) - out.range.first) / (highestOutput(out) - out.range.first);
            points.emplace_back(value, std::clamp(share, 0.0, 1.0));
        }
        return points;
    }

    const Source& m_source;
    const Curves& m_curves;
    std::size_t m_band;
    const zet::ZetHistogram& m_histogram;
    std::vector<Weight> m_before;
    std::vector<Weight> m_after;
};

}  // namespace

Canvas plot(const Source& source, const Curves& curves, const std::string& title)
{
    std::vector<std::size_t> bands;
    for (std::size_t band = 0; band < source.bandCount() && bands.size() < kMostRows; ++band) {
        if (source.histogram(band).count() > 0) {
            bands.push_back(band);
        }
    }
    Canvas canvas(kWidth, kHeader + kRow * static_cast<int>(bands.size()));
    canvas.fill(0, 0, canvas.width(), canvas.height(), ink::kPaper);
    canvas.write(kLeft, 30, title, ink::kText);
    canvas.fill(kLeft, 58, kWidth - 2 * kLeft + 10, 2, ink::kGrid);
    int y = kHeader;
    for (const std::size_t band : bands) {
        Row(source, curves, band).draw(canvas, y);
        y += kRow;
    }
    return canvas;
}

}  // namespace stretch
