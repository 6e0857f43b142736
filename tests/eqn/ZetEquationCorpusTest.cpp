#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetEquationExercise"

namespace zet {
namespace {

TEST(ZetEquationCorpus, replays)
{
    EXPECT_GT(test::replayCorpus("equation", test::exerciseEquation), 15) << "the corpus is there";
}

}  // namespace
}  // namespace zet
