// Feeds the reader of lookup tables.

#include <cstdint>

#include "support/ZetLutReading"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsTable(data, size);
    return 0;
}
