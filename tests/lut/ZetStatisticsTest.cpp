#include <zet/ZetStatistics>

#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

namespace zet {
namespace {

void expectEmpty(const ZetStatistics& s)
{
    EXPECT_EQ(s.count(), 0u);
    for (const double field : {s.min(), s.max(), s.sum(), s.sumOfSquares(), s.mean(), s.variance(), s.rms()}) {
        EXPECT_EQ(field, 0.0);
    }
}

TEST(ZetStatistics, derivesItsMeasures)
{
    // the samples 1, 2, 3, 4
    const ZetStatistics s(4, 1.0, 4.0, 10.0, 30.0);
    EXPECT_EQ(s.className(), L"ZetStatistics");
    EXPECT_EQ(s.count(), 4u);
    EXPECT_EQ(s.min(), 1.0);
    EXPECT_EQ(s.max(), 4.0);
    EXPECT_EQ(s.sum(), 10.0);
    EXPECT_EQ(s.sumOfSquares(), 30.0);
    EXPECT_EQ(s.mean(), 2.5);
    EXPECT_EQ(s.variance(), 1.25);
    EXPECT_EQ(s.rms(), std::sqrt(7.5));
}

struct InitializeRow
{
    const char* what;
    unsigned long count;
    double sum;
    double sumOfSquares;
    int status;
    double mean;
    double variance;
    double rms;
};

const double kNaN = std::numeric_limits<double>::quiet_NaN();

const InitializeRow kInitialize[] = {
    {"plain", 2, 6.0, 20.0, 0, 3.0, 1.0, std::sqrt(10.0)},
    {"no samples", 0, 6.0, 20.0, 1, 0.0, 0.0, 0.0},
    {"negative sum of squares", 2, 6.0, -1.0, 1, 0.0, 0.0, 0.0},
    {"negative zero is no negative sum", 2, 0.0, -0.0, 0, 0.0, 0.0, 0.0},
    // the squares of a sum that cannot be: a negative variance counts as none
    {"negative variance", 1, 2.0, 3.0, 0, 2.0, 0.0, std::sqrt(3.0)},
    {"variance that is no number", 1, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
     0, std::numeric_limits<double>::infinity(), 0.0, std::numeric_limits<double>::infinity()},
};

TEST(ZetStatistics, initialize)
{
    for (const InitializeRow& row : kInitialize) {
        SCOPED_TRACE(row.what);
        ZetStatistics s(9, 1.0, 2.0, 3.0, 4.0);
        EXPECT_EQ(s.initialize(row.count, -1.0, 7.0, row.sum, row.sumOfSquares), row.status);
        if (row.status != 0) {
            expectEmpty(s);
            continue;
        }
        EXPECT_EQ(s.count(), row.count);
        EXPECT_EQ(s.min(), -1.0);
        EXPECT_EQ(s.max(), 7.0);
        EXPECT_EQ(s.sum(), row.sum);
        EXPECT_EQ(s.sumOfSquares(), row.sumOfSquares);
        EXPECT_EQ(s.mean(), row.mean);
        EXPECT_EQ(s.variance(), row.variance);
        EXPECT_EQ(s.rms(), row.rms);
    }
}

TEST(ZetStatistics, sumOfSquaresThatIsNoNumberIsStored)
{
    ZetStatistics s;
    EXPECT_EQ(s.initialize(2, 1.0, 3.0, 4.0, kNaN), 0);
    EXPECT_EQ(s.count(), 2u);
    EXPECT_TRUE(std::isnan(s.sumOfSquares()));
    EXPECT_EQ(s.mean(), 0.0);
    EXPECT_EQ(s.variance(), 0.0);
    EXPECT_EQ(s.rms(), 0.0);
    EXPECT_EQ(s.computeStatistics(), 1);
}

TEST(ZetStatistics, emptyRecords)
{
    expectEmpty(ZetStatistics());
    expectEmpty(ZetStatistics(0, 1.0, 2.0, 3.0, 4.0));
    expectEmpty(ZetStatistics(3, 1.0, 2.0, 3.0, -4.0));

    ZetStatistics s(4, 1.0, 4.0, 10.0, 30.0);
    s.clear();
    expectEmpty(s);
    EXPECT_EQ(s.computeStatistics(), 1);
}

TEST(ZetStatistics, hasNoTextForm)
{
    ZetStatistics s(4, 1.0, 4.0, 10.0, 30.0);
    std::wostringstream out;
    out << s;
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");

    std::wistringstream in(L"1 2 3");
    in >> s;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(s.count(), 4u);
}

}  // namespace
}  // namespace zet
