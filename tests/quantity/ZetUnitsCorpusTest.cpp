// The texts that the fuzzer of units found worth keeping.

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetUnitsReaders"

namespace zet {
namespace {

TEST(ZetUnits, corpusOfTheFuzzer)
{
    EXPECT_GE(test::replayCorpus("units", test::readAsUnits), 20);
}

}  // namespace
}  // namespace zet
