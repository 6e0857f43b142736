#include <zet/ZetHistogram>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <random>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetHistogram_p>
#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

#include "support/ZetCollectingHandler"
#include "support/ZetNoMemory"

namespace zet {
namespace {

using Counts = std::vector<std::uint64_t>;

ZetBufferPtr bufferOf(const Counts& counts)
{
    const ZetBufferPtr buffer = new ZetBuffer(counts.size() * sizeof(std::uint64_t), true);
    if (!counts.empty()) {
        std::memcpy(buffer->data(), counts.data(), buffer->size());
    }
    return buffer;
}

ZetHistogram histogramOf(const Counts& counts, int firstBin = 0)
{
    ZetHistogram histogram;
    histogram.initialize(bufferOf(counts), firstBin, firstBin + static_cast<int>(counts.size()) - 1);
    return histogram;
}

/// Every field but the table, which a histogram without one shares with nobody.
void expectEmpty(const ZetHistogram& h)
{
    EXPECT_FALSE(h.frequencies().booleanTest());
    EXPECT_EQ(h.count(), 0u);
    for (const double field : {h.min(), h.max(), h.sum(), h.sumOfSquares(), h.mean(), h.variance(), h.rms(),
                               h.modePercent(), h.median(), h.entropy()}) {
        EXPECT_EQ(field, 0.0);
    }
    EXPECT_EQ(h.firstBin(), 0);
    EXPECT_EQ(h.lastBin(), 0);
    EXPECT_EQ(h.firstUsedIndex(), 0);
    EXPECT_EQ(h.lastUsedIndex(), 0);
    EXPECT_EQ(h.modeIndex(), 0);
    EXPECT_EQ(h.cumulativeHistogram(), nullptr);
}

TEST(ZetHistogram, countsItsTable)
{
    // the samples -3, -1, -1, -1, 1 in the bins -4 to 2
    const ZetHistogram h = histogramOf({0, 1, 0, 3, 0, 1, 0}, -4);
    EXPECT_EQ(h.className(), L"ZetHistogram");
    EXPECT_EQ(h.count(), 5u);
    EXPECT_EQ(h.min(), -3.0);
    EXPECT_EQ(h.max(), 1.0);
    EXPECT_EQ(h.sum(), -5.0);
    EXPECT_EQ(h.sumOfSquares(), 13.0);
    EXPECT_EQ(h.mean(), -1.0);
    EXPECT_EQ(h.variance(), 13.0 / 5.0 - 1.0);
    EXPECT_EQ(h.rms(), std::sqrt(13.0 / 5.0));
    EXPECT_EQ(h.firstUsedIndex(), 1);
    EXPECT_EQ(h.lastUsedIndex(), 5);
    EXPECT_EQ(h.modeIndex(), 3);
    EXPECT_EQ(h.modePercent(), 3.0 / 5.0 * 100.0);
    EXPECT_EQ(h.frequencies()->dataType().type(), ZetDataType::U64);
}

TEST(ZetHistogram, agreesWithItsSamples)
{
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        const int firstBin = static_cast<int>(random() % 100) - 50;
        Counts counts(1 + random() % 40);
        std::vector<double> samples;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            counts[i] = random() % 3 == 0 ? random() % 9 : 0;
            samples.insert(samples.end(), counts[i], firstBin + static_cast<double>(i));
        }
        if (samples.empty()) {
            continue;
        }
        const ZetHistogram h = histogramOf(counts, firstBin);
        const double n = static_cast<double>(samples.size());
        EXPECT_EQ(h.count(), samples.size());
        EXPECT_EQ(h.min(), samples.front());
        EXPECT_EQ(h.max(), samples.back());
        // sums of whole numbers are exact in any order
        EXPECT_EQ(h.sum(), std::accumulate(samples.begin(), samples.end(), 0.0));
        EXPECT_EQ(h.sumOfSquares(), std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0));
        EXPECT_EQ(h.mean(), h.sum() / n);
        EXPECT_EQ(h.rms(), std::sqrt(h.sumOfSquares() / n));
        double bits = 0.0;
        for (const std::uint64_t c : counts) {
            bits -= c == 0 ? 0.0 : static_cast<double>(c) / n * std::log2(static_cast<double>(c) / n);
        }
        EXPECT_NEAR(h.entropy(), bits, 1e-12);
    }
}

struct BinsRow
{
    int firstBin;
    int lastBin;
    int low;
    int high;
};

const BinsRow kBins[] = {{5, 10, 5, 10}, {10, 5, 5, 10}, {-3, -8, -8, -3}};

TEST(ZetHistogram, binsComeInAnyOrder)
{
    for (const BinsRow& row : kBins) {
        ZetHistogram h;
        h.initialize(bufferOf({1, 0, 0, 0, 0, 2}), row.firstBin, row.lastBin);
        EXPECT_EQ(h.firstBin(), row.low);
        EXPECT_EQ(h.lastBin(), row.high);
        EXPECT_EQ(h.min(), row.low);
        EXPECT_EQ(h.max(), row.high);
    }
}

struct ModeRow
{
    Counts counts;
    long index;
    double percent;
};

const ModeRow kMode[] = {
    {{4, 4}, 0, 50.0},  // equal bins: the lower one
    {{0, 4, 1, 4}, 1, 4.0 / 9.0 * 100.0},
    {{1, 2, 3}, 2, 3.0 / 6.0 * 100.0},
    {{0, 0, 7}, 2, 100.0},
    {{0, 0, 0}, 0, 0.0},  // no samples, no mode
};

TEST(ZetHistogram, mode)
{
    for (const ModeRow& row : kMode) {
        const ZetHistogram h = histogramOf(row.counts);
        EXPECT_EQ(h.modeIndex(), row.index);
        EXPECT_EQ(h.modePercent(), row.percent);
    }
}

struct MedianRow
{
    Counts counts;
    int firstBin;
    double median;
};

const MedianRow kMedian[] = {
    // an even number whose half is reached exactly: between this bin and the next with samples
    {{2, 0, 2}, 0, 1.0},
    {{2, 0, 2, 9}, 0, 3.0},
    {{0, 1, 0, 0, 1}, 0, 2.5},
    // an odd number whose half, cut, is reached exactly: this bin, though the middle sample is in the next
    {{1, 1, 1}, 0, 0.0},
    {{3, 1, 3}, 0, 0.0},
    // the half is passed within a bin
    {{1, 2, 1}, 0, 1.0},
    {{1}, 0, 0.0},
    {{0, 0, 5}, 0, 2.0},
    // an index into the table, not a value
    {{1, 2, 1}, 100, 1.0},
    {{1, 2, 1}, -100, 1.0},
    // a result that equals the first bin
    {{1, 1, 5}, 2, 2.0},
};

TEST(ZetHistogram, median)
{
    for (const MedianRow& row : kMedian) {
        const ZetHistogram h = histogramOf(row.counts, row.firstBin);
        EXPECT_EQ(h.median(), row.median);
        EXPECT_EQ(h.median(), row.median) << "kept";
    }
}

TEST(ZetHistogram, medianIsKeptUnlessItEqualsTheFirstBin)
{
    const ZetBufferPtr buffer = bufferOf({1, 2, 1});
    std::uint64_t* counts = static_cast<std::uint64_t*>(buffer->data());
    ZetHistogram kept;
    kept.initialize(buffer, 7, 9);
    EXPECT_EQ(kept.median(), 1.0);
    ZetHistogram recomputed;
    recomputed.initialize(buffer, 1, 3);
    EXPECT_EQ(recomputed.median(), 1.0);

    counts[0] = 4;
    EXPECT_EQ(kept.median(), 1.0);
    EXPECT_EQ(recomputed.median(), 0.0);
}

struct PercentileRow
{
    const char* what;
    Counts counts;
    int firstBin;
    double p;
    bool skipFirst;
    int value;
};

const PercentileRow kPercentile[] = {
    {"half is reached at the first bin", {5, 5}, 0, 50.0, false, 0},
    {"as a fraction", {5, 5}, 0, 0.5, false, 0},
    {"just above half", {5, 5}, 0, 50.5, false, 1},
    {"1 is all", {5, 5, 5}, 0, 1.0, false, 2},
    {"just above 1 is a percentage", {5, 5, 5}, 0, 1.01, false, 0},
    {"nothing", {0, 5, 5}, 0, 0.0, false, 1},
    {"everything", {0, 5, 5, 0}, 0, 100.0, false, 2},
    {"values, not indices", {5, 5}, -20, 50.0, false, -20},
    // eight times 0.1 added up is 0.7999999999999999
    {"shares are added up", {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, 0, 80.0, false, 8},
    {"without the lowest bin", {90, 5, 5}, 0, 50.0, true, 1},
    {"with it", {90, 5, 5}, 0, 50.0, false, 0},
    {"empty bins do not count as the lowest", {0, 90, 5, 5}, 0, 60.0, true, 3},
    {"a lone bin left out", {0, 5, 0}, 10, 50.0, true, 12},
    // outside 0 to 100: one below the smallest sample
    {"above", {0, 5, 5}, 10, 150.0, false, 10},
    {"below", {0, 5, 5}, 10, -0.5, false, 10},
    {"no number", {0, 5, 5}, 10, std::numeric_limits<double>::quiet_NaN(), false, 10},
};

TEST(ZetHistogram, percentile)
{
    for (const PercentileRow& row : kPercentile) {
        EXPECT_EQ(histogramOf(row.counts, row.firstBin).percentile(row.p, row.skipFirst), row.value) << row.what;
    }
    EXPECT_EQ(ZetHistogram().percentile(50.0, false), -1);
    // without samples the smallest sample is the bin behind the last
    EXPECT_EQ(histogramOf({0, 0, 0}, 10).percentile(50.0, false), 12);
}

TEST(ZetHistogram, percentileAtTheEndsOfTheRange)
{
    const int lowest = std::numeric_limits<int>::min();
    EXPECT_EQ(histogramOf({1, 1}, lowest).percentile(50.0, false), lowest);
    EXPECT_EQ(histogramOf({1, 1}, lowest).percentile(200.0, false), std::numeric_limits<int>::max());
}

TEST(ZetHistogram, entropy)
{
    EXPECT_EQ(histogramOf({3, 3}).entropy(), 1.0);
    EXPECT_EQ(histogramOf({1, 0, 1, 1, 1}).entropy(), 2.0);
    EXPECT_EQ(histogramOf({0, 8}).entropy(), 0.0);
    EXPECT_EQ(histogramOf({0, 0}).entropy(), 0.0);
    EXPECT_EQ(ZetHistogram().entropy(), 0.0);
}

TEST(ZetHistogram, entropyOfZeroIsComputedAnew)
{
    const ZetBufferPtr buffer = bufferOf({4, 0});
    ZetHistogram h;
    h.initialize(buffer, 0, 1);
    EXPECT_EQ(h.entropy(), 0.0);
    // half of the four counted samples now in a bin of the range that is looked at
    static_cast<std::uint64_t*>(buffer->data())[0] = 2;
    EXPECT_EQ(h.entropy(), 0.5);
    static_cast<std::uint64_t*>(buffer->data())[0] = 4;
    EXPECT_EQ(h.entropy(), 0.5);
}

TEST(ZetHistogram, cumulative)
{
    const ZetBufferPtr buffer = bufferOf({0, 1, 0, 2, 1, 0, 0});
    ZetHistogram h;
    h.initialize(buffer, 3, 9);
    const double expected[] = {0.0, 0.25, 0.25, 0.75, 1.0, 1.0, 1.0};
    const double* shares = h.cumulativeHistogram();
    ASSERT_NE(shares, nullptr);
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(shares[i], expected[i]) << i;
    }
    EXPECT_EQ(h.cumulativeHistogram(), shares);

    // counting anew leaves the table as it was, until it is asked for by name
    static_cast<std::uint64_t*>(buffer->data())[1] = 5;
    EXPECT_EQ(h.computeStatistics(), 0);
    EXPECT_EQ(h.count(), 8u);
    EXPECT_EQ(h.cumulativeHistogram()[1], 0.25);
    h.computeCummulativeHistogram();
    EXPECT_EQ(h.cumulativeHistogram()[1], 0.625);
}

TEST(ZetHistogram, cumulativeSharesAreProducts)
{
    // above the last bin with samples exactly 1, whatever the products give below
    const ZetHistogram h = histogramOf({1, 48, 0});
    EXPECT_EQ(h.cumulativeHistogram()[0], 1.0 / 49.0);
    EXPECT_EQ(h.cumulativeHistogram()[1], 49.0 * (1.0 / 49.0));
    EXPECT_LT(h.cumulativeHistogram()[1], 1.0);
    EXPECT_EQ(h.cumulativeHistogram()[2], 1.0);
}

TEST(ZetHistogram, withoutSamples)
{
    const ZetBufferPtr buffer = bufferOf({0, 0, 0});
    ZetHistogram h;
    h.initialize(buffer, 5, 7);
    EXPECT_EQ(h.count(), 0u);
    EXPECT_EQ(h.firstUsedIndex(), 3);
    EXPECT_EQ(h.lastUsedIndex(), 0);
    EXPECT_EQ(h.modeIndex(), 0);
    EXPECT_EQ(h.modePercent(), 0.0);
    EXPECT_EQ(h.min(), 8.0);
    EXPECT_EQ(h.max(), 5.0);
    EXPECT_EQ(h.mean(), 0.0);
    EXPECT_EQ(h.variance(), 0.0);
    EXPECT_EQ(h.rms(), 0.0);
    EXPECT_EQ(h.median(), 5.0);
    EXPECT_EQ(h.entropy(), 0.0);
    EXPECT_EQ(h.cumulativeHistogram(), nullptr);
    EXPECT_EQ(h.computeStatistics(), 1);
    h.computeCummulativeHistogram();
    EXPECT_EQ(h.cumulativeHistogram()[2], 0.0);

    // clearing and initialising with nothing leave it as it is
    h.clear();
    EXPECT_EQ(h.frequencies(), buffer);
    h.initialize(ZetBufferPtr(), 1, 2);
    EXPECT_EQ(h.frequencies(), buffer);
    EXPECT_EQ(h.firstBin(), 5);
}

TEST(ZetHistogram, initializeLetsTheCumulativeTableGo)
{
    ZetHistogram h;
    h.initialize(bufferOf({0, 0}), 0, 1);
    h.computeCummulativeHistogram();
    EXPECT_EQ(h.cumulativeHistogram()[1], 0.0);
    // although there was nothing to clear
    h.initialize(bufferOf({1, 0, 3}), 0, 2);
    EXPECT_EQ(h.cumulativeHistogram()[1], 0.25);
    EXPECT_EQ(h.cumulativeHistogram()[2], 1.0);
}

TEST(ZetHistogram, cumulativeTableWithoutMemory)
{
    const ZetHistogram h = histogramOf({1, 3});
    const double* shares = nullptr;
    std::vector<ZetTextMsg> posted;
    {
        const test::ZetNoMemory none;
        EXPECT_EQ(test::thrownBy([&] { h.cumulativeHistogram(); }).text(), L"Cannot allocate '16' bytes for buffer.");
        posted = test::postedBy([&] { shares = h.cumulativeHistogram(); });
    }
    EXPECT_EQ(posted.size(), 1u);
    EXPECT_EQ(shares, nullptr);
    EXPECT_EQ(h.cumulativeHistogram()[0], 0.25);
}

TEST(ZetHistogram, clearAndInitializeWithNothing)
{
    ZetHistogram h = histogramOf({1, 2, 3}, 4);
    h.cumulativeHistogram();
    EXPECT_EQ(h.median(), 1.5);
    h.clear();
    expectEmpty(h);

    h = histogramOf({1, 2, 3}, 4);
    h.initialize(ZetBufferPtr(), 1, 2);
    expectEmpty(h);
    expectEmpty(ZetHistogram());
}

TEST(ZetHistogram, initializesFromItsOwnTable)
{
    ZetHistogram h = histogramOf({1, 2, 3}, 4);
    h.initialize(h.frequencies(), 0, 1);
    EXPECT_EQ(h.count(), 3u);
    EXPECT_EQ(h.lastBin(), 1);
}

struct TooSmallRow
{
    ZetBufferPtr buffer;
    int firstBin;
    int lastBin;
    const wchar_t* text;
};

TEST(ZetHistogram, refusesATableThatIsTooSmall)
{
    const TooSmallRow rows[] = {
        {bufferOf({1, 2}), 0, 2, L"Histogram buffer of 16 bytes is too small for 3 bins."},
        {bufferOf({1, 2}), 2, 0, L"Histogram buffer of 16 bytes is too small for 3 bins."},
        {new ZetBuffer(15, true), 0, 1, L"Histogram buffer of 15 bytes is too small for 2 bins."},
        {new ZetBuffer(0, true), 0, 0, L"Histogram buffer of 0 bytes is too small for 1 bins."},
        // a buffer without a block
        {new ZetBuffer(64, false), 0, 0, L"Histogram buffer of 0 bytes is too small for 1 bins."},
        // the whole range of bins
        {bufferOf({1, 2}), std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
         L"Histogram buffer of 16 bytes is too small for 4294967296 bins."},
    };
    for (const TooSmallRow& row : rows) {
        for (const bool hadSamples : {false, true}) {
            const ZetHistogram before = hadSamples ? histogramOf({1, 2, 3}, 4) : histogramOf({0, 0}, 4);

            ZetHistogram h = before;
            const std::vector<ZetTextMsg> posted =
                test::postedBy([&] { h.initialize(row.buffer, row.firstBin, row.lastBin); });
            ASSERT_EQ(posted.size(), 1u);
            EXPECT_EQ(posted[0].text(), row.text);
            EXPECT_EQ(posted[0].file(), L"ZetHistogram");
            EXPECT_EQ(posted[0].kind(), ZetTextMsg::Error);
            expectEmpty(h);

            h = before;
            EXPECT_EQ(test::thrownBy([&] { h.initialize(row.buffer, row.firstBin, row.lastBin); }).text(), row.text);
            expectEmpty(h);
        }
        EXPECT_EQ(row.buffer->dataType().type(), ZetDataType::Invalid);
    }
}

TEST(ZetHistogram, sharesItsTableAndTakesLargerAndUnalignedOnes)
{
    const ZetBufferPtr buffer = bufferOf({1, 2, 3});
    ZetHistogram h;
    h.initialize(buffer, 0, 1);
    EXPECT_EQ(h.frequencies(), buffer);
    EXPECT_EQ(h.count(), 3u);

    unsigned char memory[2 * sizeof(std::uint64_t) + 1] = {};
    const Counts counts = {7, 9};
    std::memcpy(memory + 1, counts.data(), 2 * sizeof(std::uint64_t));
    h.initialize(new ZetBuffer(2 * sizeof(std::uint64_t), memory + 1, false), 0, 1);
    EXPECT_EQ(h.count(), 16u);
}

struct VarianceRow
{
    int value;
    std::uint64_t samples;
    double variance;
};

// One bin with samples, of a value whose square a double does not hold.
const VarianceRow kVariance[] = {
    {1900000001, 13, -512.0},
    {1900000002, 41, -512.0},
    {3, 7, 0.0},
};

TEST(ZetHistogram, negativeVarianceStays)
{
    for (const VarianceRow& row : kVariance) {
        EXPECT_EQ(histogramOf({row.samples}, row.value).variance(), row.variance);
    }
}

TEST(ZetHistogram, equality)
{
    const ZetHistogram h = histogramOf({1, 2, 3}, 4);
    EXPECT_TRUE(h == h);
    EXPECT_TRUE(h == histogramOf({1, 2, 3}, 4));
    EXPECT_FALSE(h == histogramOf({1, 2, 4}, 4));
    EXPECT_FALSE(h == histogramOf({1, 2, 3}, 5));
    EXPECT_FALSE(h == histogramOf({1, 2, 3, 0}, 4));
    EXPECT_FALSE(h == ZetHistogram());
    EXPECT_FALSE(ZetHistogram() == h);
    EXPECT_TRUE(ZetHistogram() == histogramOf({0, 0}, 4));
    EXPECT_TRUE(h != ZetHistogram());

    // a buffer's bytes behind the bins count
    ZetHistogram larger;
    larger.initialize(bufferOf({1, 2, 3, 0}), 4, 6);
    EXPECT_FALSE(h == larger);
}

TEST(ZetHistogram, recordSetThroughTheBaseReadsNoTable)
{
    ZetHistogram h;
    static_cast<ZetStatistics&>(h).initialize(5, 1.0, 2.0, 8.0, 14.0);
    EXPECT_EQ(h.median(), 0.0);
    EXPECT_EQ(h.entropy(), 0.0);
    EXPECT_EQ(h.percentile(50.0, true), 0);
    EXPECT_EQ(h.cumulativeHistogram(), nullptr);
    EXPECT_TRUE(h == h);
    EXPECT_EQ(h.computeStatistics(), 1);
}

TEST(ZetHistogram, recordSetThroughTheBaseStaysWithinATableWithoutSamples)
{
    ZetHistogram h = histogramOf({0, 0}, 4);
    static_cast<ZetStatistics&>(h).initialize(5, 1.0, 2.0, 8.0, 14.0);
    EXPECT_EQ(h.median(), 0.0);
    EXPECT_EQ(h.entropy(), 0.0);
    for (const bool skipFirst : {false, true}) {
        EXPECT_EQ(h.percentile(50.0, skipFirst), 0);
    }
    EXPECT_EQ(h.cumulativeHistogram()[1], 0.0);
}

TEST(ZetHistogram, property)
{
    ZetHistogram h = histogramOf({1, 2, 3}, 4);
    const ZetMetaObjectPtr meta = h.metaObject();
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(static_cast<const ZetHistogram&>(h).metaObject()->getPropertyValue(L"freq_histogram", value), 0);
    EXPECT_EQ(value.value<ZetHistogram_p>(), ZetHistogram_p(h.frequencies(), 4, 6));

    ZetHistogram other;
    EXPECT_EQ(other.metaObject()->setPropertyValue(L"freq_histogram", value), 0);
    EXPECT_EQ(other, h);
    EXPECT_EQ(other.frequencies(), h.frequencies());
    EXPECT_EQ(other.mean(), h.mean());

    // what is no histogram clears
    EXPECT_EQ(other.metaObject()->setPropertyValue(L"freq_histogram", ZetVariant(3)), 0);
    expectEmpty(other);
}

TEST(ZetHistogram, hasNoTextForm)
{
    ZetHistogram h = histogramOf({1, 2, 3}, 4);
    std::wostringstream out;
    out << h;
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");

    std::wistringstream in(L"1 2 3");
    in >> h;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(h.count(), 6u);
}

}  // namespace
}  // namespace zet
