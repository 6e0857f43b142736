#include <zet/ZetHistogram>

#include <algorithm>
#include <cmath>
#include <cstring>

#include <zet/ZetCoreFunctions>
#include <zet/ZetHistogramMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr unsigned long kBytesPerCount = sizeof(std::uint64_t);

unsigned long bytesIn(const ZetBuffer& buffer)
{
    return buffer.data() ? buffer.size() : 0;
}

/// The samples in one bin. The memory may be a caller's, aligned anyhow.
std::uint64_t countIn(const unsigned char* counts, long index)
{
    std::uint64_t samples = 0;
    std::memcpy(&samples, counts + static_cast<unsigned long>(index) * kBytesPerCount, kBytesPerCount);
    return samples;
}

void postTooSmall(unsigned long bytes, unsigned long bins, int line)
{
    postMessage(ZetTextMsg(L"Histogram buffer of " + std::to_wstring(bytes) + L" bytes is too small for " +
                               std::to_wstring(bins) + L" bins.",
                           L"ZetHistogram", line, ZetTextMsg::Error));
}

}  // namespace

// The meta object

ZetMetaPropertiesPtr ZetHistogramMetaObj::staticProperties()
{
    static constexpr Row rows[] = {ZET_ROW(freq_histogram, L"Histogram", 0)};
    return fill(L"ZetHistogram", rows);
}

int ZetHistogramMetaObj::set_freq_histogram(const ZetVariant& value)
{
    const ZetHistogram_p parts = value.value<ZetHistogram_p>();
    m_object->initialize(parts.data(), parts.firstBin(), parts.lastBin());
    return 0;
}

int ZetHistogramMetaObj::get_freq_histogram(ZetVariant& value) const
{
    return read(ZetHistogram_p(m_object->frequencies(), m_object->firstBin(), m_object->lastBin()), value);
}

// The histogram

ZetMetaObjectConstPtr ZetHistogram::metaObject() const
{
    return new ZetHistogramMetaObj(this);
}

ZetString ZetHistogram::className() const
{
    return L"ZetHistogram";
}

void ZetHistogram::clear()
{
    if (m_count != 0) {
        reset();
    }
}

void ZetHistogram::initialize(ZetBufferPtr frequencies, int firstBin, int lastBin)
{
    clear();
    if (!frequencies) {
        return;
    }
    const auto [first, last] = std::minmax(firstBin, lastBin);
    const unsigned long bins = static_cast<unsigned long>(long{last} - first + 1);
    const unsigned long bytes = bytesIn(*frequencies);
    if (bytes / kBytesPerCount < bins) {
        reset();
        postTooSmall(bytes, bins, __LINE__);
        return;
    }
    m_cumulative = ZetBufferPtr();
    m_shares = nullptr;
    frequencies->setDataType(ZetDataType(ZetDataType::U64));
    m_frequencies = frequencies;
    m_counts = static_cast<const unsigned char*>(m_frequencies->data());
    m_firstBin = first;
    m_lastBin = last;
    computeStatistics();
}

int ZetHistogram::computeStatistics()
{
    ZetStatistics::clear();
    const long bins = numBins();
    long first = 0;
    while (first < bins && countIn(m_counts, first) == 0) {
        ++first;
    }
    // An empty bin adds zeros, which change no sum: that is quicker than to look for it.
    double sum = 0.0;
    double sumOfSquares = 0.0;
    std::uint64_t count = 0;
    std::uint64_t fullest = 0;
    long last = 0;
    long mode = first < bins ? first : 0;
    double value = static_cast<double>(m_firstBin + first);
    for (long i = first; i < bins; ++i, value += 1.0) {
        const std::uint64_t samples = countIn(m_counts, i);
        const double weighted = static_cast<double>(samples) * value;
        sum += weighted;
        sumOfSquares += value * weighted;
        count += samples;
        last = samples != 0 ? i : last;
        mode = samples > fullest ? i : mode;
        fullest = std::max(fullest, samples);
    }
    m_firstUsed = first;
    m_lastUsed = last;
    m_modeIndex = mode;
    m_count = count;
    m_sum = sum;
    m_sumOfSquares = sumOfSquares;
    m_min = static_cast<double>(m_firstBin + m_firstUsed);
    m_max = static_cast<double>(m_firstBin + m_lastUsed);
    m_modePercent = 0.0;
    m_entropy = 0.0;
    m_median = m_firstBin;
    if (m_count == 0) {
        return 1;
    }
    // KEPT: a variance that rounding makes negative stays. Test: ZetHistogram.negativeVarianceStays.
    deriveMeasures();
    m_modePercent = static_cast<double>(fullest) / static_cast<double>(m_count) * 100.0;
    return 0;
}

double ZetHistogram::median() const
{
    if (m_count == 0 || m_median != m_firstBin) {
        return m_median;
    }
    const std::uint64_t half = m_count / 2;
    std::uint64_t running = 0;
    m_median = 0.0;
    const long bins = numBins();
    for (long i = m_firstUsed; i <= m_lastUsed && i < bins; ++i) {
        running += countIn(m_counts, i);
        if (running >= half) {
            m_median = running > half ? static_cast<double>(i) : medianAt(i);
            break;
        }
    }
    return m_median;
}

/// The median where half of the samples, cut, lie in the bins up to and with \p index.
double ZetHistogram::medianAt(long index) const
{
    if (m_count % 2 == 0) {
        for (long next = index + 1; next <= m_lastUsed; ++next) {
            if (countIn(m_counts, next) != 0) {
                return static_cast<double>(index + next) * 0.5;
            }
        }
    }
    return static_cast<double>(index);
}

int ZetHistogram::percentile(double p, bool skipFirst) const
{
    if (m_count == 0 || m_firstUsed >= numBins() || !(p >= 0.0 && p <= 100.0)) {
        return static_cast<int>(std::int64_t{internal::truncateToInt32(m_min)} - 1);
    }
    const double share = p > 1.0 ? p / 100.0 : p;
    std::uint64_t samples = m_count;
    long i = m_firstUsed;
    if (skipFirst) {
        samples -= countIn(m_counts, i);
        ++i;
    }
    const double weight = 1.0 / static_cast<double>(samples);
    double reached = 0.0;
    for (; i < m_lastUsed; ++i) {
        reached += static_cast<double>(countIn(m_counts, i)) * weight;
        if (!(reached < share)) {
            break;
        }
    }
    return static_cast<int>(i + m_firstBin);
}

double ZetHistogram::entropy() const
{
    if (m_entropy != 0.0 || m_count == 0 || numBins() == 0) {
        return m_entropy;
    }
    static const double bitsPerNat = 1.0 / std::log(2.0);
    const double weight = 1.0 / static_cast<double>(m_count);
    double entropy = 0.0;
    for (long i = m_lastUsed; i >= m_firstUsed; --i) {
        const std::uint64_t samples = countIn(m_counts, i);
        if (samples != 0) {
            const double share = static_cast<double>(samples) * weight;
            entropy -= share * (std::log(share) * bitsPerNat);
        }
    }
    m_entropy = entropy;
    return m_entropy;
}

const double* ZetHistogram::cumulativeHistogram() const
{
    if (!m_shares && m_count != 0) {
        computeCummulativeHistogram();
    }
    return m_shares;
}

void ZetHistogram::computeCummulativeHistogram() const
{
    m_shares = nullptr;
    m_cumulative = ZetBufferPtr();
    const long bins = numBins();
    const ZetBufferPtr table = new ZetBuffer(static_cast<unsigned long>(bins) * sizeof(double), true);
    if (!table->data()) {
        return;
    }
    table->setDataType(ZetDataType(ZetDataType::Double));
    m_cumulative = table;
    m_shares = static_cast<double*>(table->data());
    const double weight = 1.0 / static_cast<double>(m_count);
    std::uint64_t running = 0;
    for (long i = 0; i < bins; ++i) {
        if (i < m_firstUsed) {
            m_shares[i] = 0.0;
        } else if (i <= m_lastUsed) {
            running += countIn(m_counts, i);
            m_shares[i] = static_cast<double>(running) * weight;
        } else {
            m_shares[i] = 1.0;
        }
    }
}

bool ZetHistogram::operator==(const ZetHistogram& other) const
{
    if (m_count == 0 || other.m_count == 0) {
        return m_count == other.m_count;
    }
    const bool sameBins = m_firstBin == other.m_firstBin && m_lastBin == other.m_lastBin;
    const bool sameTable = m_frequencies == other.m_frequencies;
    return sameBins && (sameTable || (m_frequencies && other.m_frequencies && *m_frequencies == *other.m_frequencies));
}

void ZetHistogram::reset()
{
    *this = ZetHistogram();
}

/// The number of bins; 0 without a table.
long ZetHistogram::numBins() const
{
    return m_counts ? long{m_lastBin} - m_firstBin + 1 : 0;
}

}  // namespace zet
