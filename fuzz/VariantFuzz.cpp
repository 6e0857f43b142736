// Feeds the text readers of variants, and the conversions from text.

#include <cstdint>

#include "support/ZetVariantReaders"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsVariants(data, size);
    return 0;
}
