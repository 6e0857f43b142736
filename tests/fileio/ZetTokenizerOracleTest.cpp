// The tokenizer beside an oracle: on all small texts, on random ones, and on what the fuzzer kept.

#include <random>

#include <gtest/gtest.h>

#include "support/ZetCorpus"
#include "support/ZetTokenizerOracle"

namespace zet {
namespace {

const ZetString kAlphabet = L"a/*#<;\\\"\n ";

void expectTokens(const ZetString& text, const test::ZetTokenCharacters& characters)
{
    std::wistringstream stream(text);
    test::requireTokensOf(stream, text, characters);
}

TEST(ZetTokenizerOracle, allTextsOfFourCharacters)
{
    for (const test::ZetTokenCharacters& characters : test::tokenCharacters()) {
        for (std::size_t number = 0; number < 10000; ++number) {
            ZetString text;
            for (std::size_t rest = number; rest != 0; rest /= 10) {
                text += kAlphabet[rest % 10];
            }
            expectTokens(text, characters);
        }
    }
}

TEST(ZetTokenizerOracle, randomTexts)
{
    std::mt19937 random(20240229);
    for (int round = 0; round < 3000; ++round) {
        ZetString text;
        for (std::size_t length = random() % 60; text.size() < length;) {
            text += kAlphabet[random() % kAlphabet.size()];
        }
        for (const test::ZetTokenCharacters& characters : test::tokenCharacters()) {
            expectTokens(text, characters);
            test::ZetOneWayBuffer buffer(text);
            std::wistream stream(&buffer);
            test::requireTokensOf(stream, text, characters);
        }
    }
}

TEST(ZetTokenizerOracle, corpusOfTheFuzzer)
{
    EXPECT_GE(test::replayCorpus("tokenizer", test::readAsTokens), 15);
}

}  // namespace
}  // namespace zet
