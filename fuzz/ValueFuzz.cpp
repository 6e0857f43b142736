// Feeds the text readers of the value classes, and checks that what they print reads back.

#include <cstdint>

#include "support/ZetValueReaders"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsValues(data, size);
    return 0;
}
