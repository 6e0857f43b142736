#include <zet/ZetBlockedRange1D>

#include <vector>

#include <gtest/gtest.h>

#include "support/ZetCollectingHandler"

namespace zet {
namespace {

struct AddOne
{
    std::vector<int>* values;
    int* calls;

    void operator()(const ZetBlockedRange1D<int>& range) const
    {
        ++*calls;
        for (int i = range.begin(); i < range.end(); ++i) {
            ++(*values)[static_cast<std::size_t>(i)];
        }
    }
};

TEST(ZetBlockedRange1D, startsAtZeroWithGrainOne)
{
    const ZetBlockedRange1D<int> range(7);
    EXPECT_EQ(range.end(), 7);
    EXPECT_EQ(range.begin(), 0);
    EXPECT_EQ(range.grain(), 1);
    const ZetBlockedRange1D<int> part(9, 4, 2);
    EXPECT_EQ(part.end(), 9);
    EXPECT_EQ(part.begin(), 4);
    EXPECT_EQ(part.grain(), 2);
}

TEST(ZetBlockedRange1D, loopCallsTheBodyOnceWhateverTheFlagsSay)
{
    for (const bool parallel : {false, true}) {
        for (const bool flag : {false, true}) {
            std::vector<int> values = {10, 20, 30, 40};
            int calls = 0;
            EXPECT_EQ(doParallelFor(ZetBlockedRange1D<int>(3, 1), AddOne{&values, &calls}, parallel, flag), 0);
            EXPECT_EQ(calls, 1);
            EXPECT_EQ(values, (std::vector<int>{10, 21, 31, 40}));
        }
    }
}

TEST(ZetBlockedRange1D, emptyRangeStillCallsTheBody)
{
    std::vector<int> values = {10};
    int calls = 0;
    EXPECT_EQ(doParallelFor(ZetBlockedRange1D<int>(0), AddOne{&values, &calls}, true, true), 0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(values, std::vector<int>{10});
}

TEST(ZetBlockedRange1D, exceptionOfTheBodyPassesUnposted)
{
    const test::ZetCollectingHandler posted;
    const auto body = [](const ZetBlockedRange1D<int>&) { throw 5; };
    EXPECT_THROW(doParallelFor(ZetBlockedRange1D<int>(1), body, false, true), int);
    EXPECT_TRUE(posted.messages().empty());
}

}  // namespace
}  // namespace zet
