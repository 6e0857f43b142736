#include "Report"

#include "support/Table"

namespace stretch {

using tools::numberText;

namespace {

constexpr int kDigits = 6;

tools::Table::Line statisticsOf(const Source& source, std::size_t band)
{
    const zet::ZetHistogram& histogram = source.histogram(band);
    const Scale& scale = source.scale(band);
    tools::Table::Line line = {std::to_string(band + 1), std::to_string(histogram.count())};
    if (histogram.count() == 0) {
        line.insert(line.end(), 8, "-");
        return line;
    }
    // Median and mode are indices into the table.
    const double numbers[] = {
        scale.valueOf(histogram.min()),
        scale.valueOf(histogram.max()),
        scale.valueOf(histogram.mean()),
        scale.step * scale.step * histogram.variance(),
        scale.valueOf(histogram.firstBin() + histogram.median()),
        scale.valueOf(static_cast<double>(histogram.firstBin() + histogram.modeIndex())),
        histogram.modePercent(),
        histogram.entropy(),
    };
    for (const double number : numbers) {
        line.push_back(numberText(number, kDigits));
    }
    return line;
}

}  // namespace

std::string report(const Source& source, const Curves& curves)
{
    tools::Table table;
    table.add({"band", "count", "min", "max", "mean", "variance", "median", "mode", "mode %", "entropy", "from", "to"});
    for (std::size_t band = 0; band < source.bandCount(); ++band) {
        tools::Table::Line line = statisticsOf(source, band);
        if (const auto ends = curves.ends(band)) {
            line.push_back(numberText(source.scale(band).valueOf(ends->first), kDigits));
            line.push_back(numberText(source.scale(band).valueOf(ends->second), kDigits));
        } else {
            line.insert(line.end(), 2, "-");
        }
        table.add(line);
    }
    return table.text();
}

}  // namespace stretch
