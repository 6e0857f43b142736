#include "Curves"

#include <algorithm>
#include <cstdint>
#include <sstream>

#include <zet/ZetBreakPointLut>
#include <zet/ZetLutIO>
#include <zet/ZetTextMsg>

#include "raster/ElementTypes"
#include "raster/Failure"
#include "raster/TextFile"

namespace stretch {

using tools::Failure;
using zet::ZetBreakPoint;
using zet::ZetDataType;

namespace {

/// The bins at two percentiles. Where they are one bin, those of the lowest and highest value.
std::pair<int, int> endsOf(const zet::ZetHistogram& histogram, const std::pair<double, double>& percentiles)
{
    const std::pair<int, int> ends(histogram.percentile(percentiles.first / 100, false),
                                   histogram.percentile(percentiles.second / 100, false));
    return ends.first < ends.second ? ends
                                    : std::pair(static_cast<int>(histogram.min()), static_cast<int>(histogram.max()));
}

/// Copies entries of a table, as blocks of bytes of the width of \p Entry.
template <class Entry, class EntryOf>
void copyEntries(const void* table, std::size_t count, const tools::Validity& valid, void* pixels, EntryOf entryOf)
{
    const auto* const entries = static_cast<const Entry*>(table);
    auto* const out = static_cast<Entry*>(pixels);
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = valid[i] ? entries[entryOf(i)] : Entry(0);
    }
}

}  // namespace

Curves::Curves(const Source& source, const std::pair<double, double>& percentiles, const ZetDataType& type)
{
    const double highest = type.logicalMaxValue();
    const ZetDataType in(source.tableType());
    zet::ZetBreakPointLut lut(type);
    for (std::size_t band = 0; band < source.bandCount(); ++band) {
        const bool isWhole = source.isAlpha(band) || source.histogram(band).count() == 0;
        m_ends.push_back(isWhole
                             ? std::pair(static_cast<int>(in.logicalMinValue()), static_cast<int>(in.logicalMaxValue()))
                             : endsOf(source.histogram(band), percentiles));
        // The value 0 stands for pixels without one.
        const double lowest = source.hasGaps() && !source.isAlpha(band) ? 1.0 : 0.0;
        lut.add(ZetBreakPoint(m_ends.back().first, lowest, static_cast<unsigned int>(band)));
        lut.add(ZetBreakPoint(m_ends.back().second, highest, static_cast<unsigned int>(band)));
    }
    m_table = lut.lut(in);
}

Curves::Curves(const Source& source, const std::string& file)
{
    std::wistringstream in(tools::readText(file));
    try {
        m_table = zet::ZetLutIO::readCommon(in);
    } catch (const zet::ZetTextMsg& message) {
        throw Failure("'" + file + "' is no file of lookup tables: " + zet::toMultibyte(message.text()));
    }
    requireServes(source, file);
}

void Curves::requireServes(const Source& source, const std::string& file) const
{
    const std::size_t bands = m_table->numBands();
    if (type() == ZetDataType::Double) {
        throw Failure("The tables of '" + file + "' are of the type Double, which does not tell how many there are.");
    }
    if (m_table->numEntriesPerBand() == 0) {
        throw Failure("'" + file + "' has no entries.");
    }
    if (bands != 1 && bands != source.bandCount()) {
        throw Failure("'" + file + "' has " + std::to_string(bands) + " tables, and the raster " +
                      std::to_string(source.bandCount()) + " bands.");
    }
}

std::optional<std::pair<int, int>> Curves::ends(std::size_t band) const
{
    return m_ends.empty() ? std::nullopt : std::optional(m_ends[band]);
}

std::size_t Curves::entryOf(std::size_t band, int bin) const
{
    const long count = m_table->numEntriesPerBand();
    const std::size_t table = m_table->numBands() == 1 ? 0 : band;
    return table * static_cast<std::size_t>(count) +
           static_cast<std::size_t>(std::clamp(bin - m_table->minIndex(), 0L, count - 1));
}

double Curves::valueOf(std::size_t band, int bin) const
{
    double value = 0;
    zet::ZetLutDescPtr table = m_table;
    tools::visitElements(type(), table->buffer()->data(),
                         [&](const auto* entries) { value = tools::magnitude(entries[entryOf(band, bin)]); });
    return value;
}

void Curves::apply(std::size_t band, const std::vector<int>& bins, const tools::Validity& valid,
                   std::vector<unsigned char>& pixels) const
{
    const auto width = static_cast<std::size_t>(m_table->dataType().size());
    pixels.resize(bins.size() * width);
    zet::ZetLutDescPtr table = m_table;
    const void* const entries = table->buffer()->data();
    const auto entryAt = [&](std::size_t i) { return entryOf(band, bins[i]); };
    if (width == 1) {
        copyEntries<std::uint8_t>(entries, bins.size(), valid, pixels.data(), entryAt);
    } else if (width == 2) {
        copyEntries<std::uint16_t>(entries, bins.size(), valid, pixels.data(), entryAt);
    } else {
        copyEntries<std::uint32_t>(entries, bins.size(), valid, pixels.data(), entryAt);
    }
}

zet::ZetString Curves::text() const
{
    std::wostringstream out;
    zet::ZetLutIO::writeCommon(*m_table, out);
    return out.str();
}

}  // namespace stretch
