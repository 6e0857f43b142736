// Making lookup tables from break points and counting histograms, beside loops by hand.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include <zet/ZetBreakPointLut>
#include <zet/ZetHistogram>

namespace {

/// Nine points over all inputs of 16 bits, rising and falling.
std::vector<zet::ZetBreakPoint> ninePoints()
{
    std::vector<zet::ZetBreakPoint> points;
    for (int i = 0; i < 8; ++i) {
        points.emplace_back(i * 8192, i % 2 == 0 ? i * 5000.25 : 65535.0 - i * 3000.5, 0);
    }
    points.emplace_back(65535, 40000.0, 0);
    return points;
}

void makeTable(benchmark::State& state)
{
    zet::ZetBreakPointLut lut{zet::ZetDataType(zet::ZetDataType::U16)};
    for (const zet::ZetBreakPoint& point : ninePoints()) {
        lut.add(point);
    }
    for (auto _ : state) {
        // a copy has no table yet
        zet::ZetBreakPointLut fresh(lut);
        benchmark::DoNotOptimize(fresh.lut(zet::ZetDataType(zet::ZetDataType::U16))->buffer()->data());
    }
}
BENCHMARK(makeTable)->Name("table of nine break points/zet");

void makeTableByHand(benchmark::State& state)
{
    const std::vector<zet::ZetBreakPoint> points = ninePoints();
    for (auto _ : state) {
        const zet::ZetBufferPtr buffer = new zet::ZetBuffer(65536 * sizeof(std::uint16_t), true);
        std::uint16_t* out = static_cast<std::uint16_t*>(buffer->data());
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double slope = (points[i + 1].out() - points[i].out()) / (points[i + 1].in() - points[i].in());
            const double intercept = points[i].out() - points[i].in() * slope;
            for (int x = points[i].in(); x < points[i + 1].in(); ++x) {
                *out++ = static_cast<std::uint16_t>(x * slope + intercept + 0.5);
            }
        }
        *out = static_cast<std::uint16_t>(points.back().out() + 0.5);
        benchmark::DoNotOptimize(buffer->data());
    }
}
BENCHMARK(makeTableByHand)->Name("table of nine break points/hand");

/// A table of counts of \p bins values, with empty bins among them.
zet::ZetBufferPtr counts(std::size_t bins)
{
    const zet::ZetBufferPtr buffer = new zet::ZetBuffer(bins * sizeof(std::uint64_t), true);
    std::uint64_t* const values = static_cast<std::uint64_t*>(buffer->data());
    for (std::size_t i = 0; i < bins; ++i) {
        values[i] = i % 5 == 0 ? 0 : i * 7919 % 1000;
    }
    return buffer;
}

void countHistogram(benchmark::State& state, int bins)
{
    const zet::ZetBufferPtr table = counts(static_cast<std::size_t>(bins));
    zet::ZetHistogram histogram;
    for (auto _ : state) {
        histogram.initialize(table, 0, bins - 1);
        benchmark::DoNotOptimize(histogram.median());
    }
}
BENCHMARK_CAPTURE(countHistogram, bins, 256)->Name("histogram of 256 bins/zet");
BENCHMARK_CAPTURE(countHistogram, bins, 65536)->Name("histogram of 65536 bins/zet");

void countHistogramByHand(benchmark::State& state, int bins)
{
    const zet::ZetBufferPtr table = counts(static_cast<std::size_t>(bins));
    const std::uint64_t* const values = static_cast<const std::uint64_t*>(table->data());
    for (auto _ : state) {
        std::uint64_t total = 0;
        std::uint64_t fullest = 0;
        double sum = 0.0;
        double sumOfSquares = 0.0;
        for (long i = 0; i < bins; ++i) {
            const double value = static_cast<double>(i);
            const double weight = static_cast<double>(values[i]);
            sum += weight * value;
            sumOfSquares += value * (weight * value);
            total += values[i];
            fullest = values[i] > fullest ? values[i] : fullest;
        }
        long median = 0;
        for (std::uint64_t running = values[0]; running < total / 2; running += values[++median]) {
        }
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(sumOfSquares);
        benchmark::DoNotOptimize(fullest);
        benchmark::DoNotOptimize(median);
    }
}
BENCHMARK_CAPTURE(countHistogramByHand, bins, 256)->Name("histogram of 256 bins/hand");
BENCHMARK_CAPTURE(countHistogramByHand, bins, 65536)->Name("histogram of 65536 bins/hand");

}  // namespace
