// The files that the fuzzer of lookup tables was given and found.

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetLutReading"

namespace zet {
namespace {

TEST(ZetLutCorpus, replays)
{
    EXPECT_GE(test::replayCorpus("lut", test::readAsTable), 15);
}

}  // namespace
}  // namespace zet
