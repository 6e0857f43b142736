// The texts that the fuzzer of matrix files found worth keeping.

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetMatrixReaders"

namespace zet {
namespace {

TEST(ZetMatrixText, corpusOfTheFuzzer)
{
    EXPECT_GE(test::replayCorpus("matrix", test::readAsMatrix), 20);
}

}  // namespace
}  // namespace zet
