#include <zet/ZetStatistics>

#include <cmath>
#include <istream>
#include <ostream>

#include "core/ZetUnitInit"

namespace zet {

ZetStatistics::ZetStatistics(unsigned long count, double min, double max, double sum, double sumOfSquares)
{
    initialize(count, min, max, sum, sumOfSquares);
}

ZetString ZetStatistics::className() const
{
    return L"ZetStatistics";
}

void ZetStatistics::clear()
{
    m_count = 0;
    m_min = m_max = m_sum = m_sumOfSquares = 0.0;
    m_mean = m_variance = m_rms = 0.0;
}

int ZetStatistics::initialize(unsigned long count, double min, double max, double sum, double sumOfSquares)
{
    ZetStatistics::clear();
    if (count == 0 || sumOfSquares < 0.0) {
        return 1;
    }
    m_count = count;
    m_min = min;
    m_max = max;
    m_sum = sum;
    m_sumOfSquares = sumOfSquares;
    computeStatistics();
    return 0;
}

int ZetStatistics::computeStatistics()
{
    m_mean = m_variance = m_rms = 0.0;
    if (m_count == 0 || !(m_sumOfSquares >= 0.0)) {
        return 1;
    }
    deriveMeasures();
    m_variance = m_variance >= 0.0 ? m_variance : 0.0;
    return 0;
}

void ZetStatistics::deriveMeasures()
{
    const double n = static_cast<double>(m_count);
    m_rms = std::sqrt(m_sumOfSquares / n);
    m_mean = m_sum / n;
    m_variance = m_sumOfSquares / n - m_mean * m_mean;
}

std::wostream& operator<<(std::wostream& out, const ZetStatistics& statistics)
{
    static_cast<void>(statistics);
    out.setstate(std::ios_base::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetStatistics& statistics)
{
    static_cast<void>(statistics);
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
