#include "Source"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "raster/ElementTypes"
#include "raster/Failure"
#include "raster/Interrupt"

namespace stretch {

using tools::Band;
using tools::Failure;
using tools::Validity;
using tools::Window;
using zet::ZetDataType;

namespace {

constexpr int kSteps = 65536;
constexpr std::size_t kWindowPixels = 262144;

/// Calls fn(i, value) for the valid pixels of a window that have a finite value; the others are no
/// longer valid.
template <class Fn>
void visitValues(zet::ZetEqnTile& tile, Validity& valid, Fn&& fn)
{
    tools::visitElements(tile.dataType().type(), tile.buffer()->data(), [&](const auto* pixels) {
        for (std::size_t i = 0; i < valid.size(); ++i) {
            const double value = tools::magnitude(pixels[i]);
            if (valid[i] && std::isfinite(value)) {
                fn(i, value);
            } else {
                valid[i] = 0;
            }
        }
    });
}

}  // namespace

Source::Source(const std::string& file)
{
    const int count = m_files.open(file).GetRasterCount();
    if (count == 0) {
        throw Failure("'" + file + "' has no bands.");
    }
    m_bands.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        m_bands.emplace_back(tools::BandChoice{"", file, i}, m_files);
    }
    findTypes();
    if (!m_isExact) {
        findRanges();
    }
    this->count();
}

bool Source::isAlpha(std::size_t band) const
{
    return raster(band).GetColorInterpretation() == GCI_AlphaBand;
}

bool Source::hasSmallType(std::size_t band) const
{
    return m_bands[band].elementType() <= ZetDataType::U16;
}

void Source::findTypes()
{
    m_tableType = m_bands.front().elementType();
    m_isExact = hasSmallType(0);
    for (const Band& band : m_bands) {
        if (ZetDataType(band.elementType()).isComplex()) {
            throw Failure("The pixels of " + band.place() + " are complex, and have no order to stretch.");
        }
        if (band.raster().GetColorTable()) {
            throw Failure("The pixels of " + band.place() + " are numbers of a colour table, not brightness.");
        }
        m_isExact = m_isExact && band.elementType() == m_tableType;
        m_hasGaps = m_hasGaps || band.hasNoData();
    }
    m_tableType = m_isExact ? m_tableType : ZetDataType::U16;
    m_scales.resize(m_bands.size());
}

void Source::findRanges()
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<std::pair<double, double>> ranges(m_bands.size(), {kInfinity, -kInfinity});
    walk([&](std::size_t band, const Window&, zet::ZetEqnTile& tile, Validity& valid) {
        std::pair<double, double>& range = ranges[band];
        visitValues(tile, valid, [&](std::size_t, double value) {
            range.first = std::min(range.first, value);
            range.second = std::max(range.second, value);
        });
        m_hasGaps = m_hasGaps || std::find(valid.begin(), valid.end(), 0) != valid.end();
    });
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        const auto& [least, greatest] = ranges[band];
        if (!std::isfinite(greatest - least) && least <= greatest) {
            throw Failure("The values of " + m_bands[band].place() + " are too far apart.");
        }
        if (least <= greatest) {
            const double step = greatest / (kSteps - 1) - least / (kSteps - 1);
            m_scales[band] = Scale{least, step > 0 ? step : 1.0};
        }
    }
}

void Source::count()
{
    const ZetDataType type(m_tableType);
    const int first = static_cast<int>(type.logicalMinValue());
    const int last = static_cast<int>(type.logicalMaxValue());
    std::vector<zet::ZetBufferPtr> tables;
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        const std::size_t bytes = static_cast<std::size_t>(last - first + 1) * sizeof(std::uint64_t);
        tables.push_back(new zet::ZetBuffer(bytes, true));
        std::fill_n(static_cast<unsigned char*>(tables.back()->data()), bytes, static_cast<unsigned char>(0));
    }
    read([&](std::size_t band, const Window&, const std::vector<int>& bins, const Validity& valid) {
        auto* const counts = static_cast<std::uint64_t*>(tables[band]->data());
        for (std::size_t i = 0; i < bins.size(); ++i) {
            counts[bins[i] - first] += valid[i];
        }
    });
    m_histograms.resize(m_bands.size());
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        m_histograms[band].initialize(tables[band], first, last);
    }
}

void Source::read(const Take& take)
{
    std::vector<int> bins;
    walk([&](std::size_t band, const Window& window, zet::ZetEqnTile& tile, Validity& valid) {
        const Scale scale = m_scales[band];
        bins.assign(window.pixels(), 0);
        visitValues(tile, valid, [&](std::size_t i, double value) {
            bins[i] = m_isExact ? static_cast<int>(value)
                                : static_cast<int>(std::clamp((value - scale.first) / scale.step + 0.5, 0.0,
                                                              static_cast<double>(kSteps - 1)));
        });
        take(band, window, bins, valid);
    });
}

void Source::walk(const std::function<void(std::size_t, const Window&, zet::ZetEqnTile&, Validity&)>& take)
{
    const Band& model = m_bands.front();
    int blockWidth = 0;
    int blockHeight = 0;
    model.blockSize(blockWidth, blockHeight);
    tools::WindowWalk walk(model.width(), model.height(), blockWidth, blockHeight, kWindowPixels);
    for (Band& band : m_bands) {
        band.reserve(walk.largest());
    }
    Validity valid;
    for (Window window{}; walk.next(window);) {
        for (std::size_t band = 0; band < m_bands.size(); ++band) {
            tools::throwIfInterrupted();
            valid.assign(window.pixels(), 1);
            zet::ZetEqnTile tile = m_bands[band].read(window, valid);
            take(band, window, tile, valid);
        }
    }
}

}  // namespace stretch
