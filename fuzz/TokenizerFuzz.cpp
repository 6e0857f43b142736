// Feeds the tokenizer, beside an oracle.

#include <cstdint>

#include "support/ZetTokenizerOracle"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsTokens(data, size);
    return 0;
}
