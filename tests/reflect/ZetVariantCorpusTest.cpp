// Replays what the fuzzer of the variant readers was given and found.

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetVariantReaders"

namespace zet {
namespace {

TEST(ZetVariantCorpus, replays)
{
    EXPECT_GE(test::replayCorpus("variant", test::readAsVariants), 20);
}

}  // namespace
}  // namespace zet
