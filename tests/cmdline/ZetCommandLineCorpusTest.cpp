// Replays what the fuzzer of command lines was given and found.

#include <gtest/gtest.h>

#include "support/ZetCommandLineExercise"
#include "support/ZetCorpus"

namespace zet {
namespace {

TEST(ZetCommandLineCorpus, replays)
{
    EXPECT_GE(test::replayCorpus("commandline", test::exerciseCommandLine), 20);
}

}  // namespace
}  // namespace zet
