// Replays what the fuzzer of the value classes' readers was given and found.

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetScopedLocale"
#include "support/ZetValueReaders"

namespace zet {
namespace {

TEST(ZetValueCorpus, replays)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_GE(test::replayCorpus("value", test::readAsValues), 20);
}

}  // namespace
}  // namespace zet
