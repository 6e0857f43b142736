// Feeds the texts of units, and of scalars with units.

#include <cstdint>

#include "support/ZetUnitsReaders"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsUnits(data, size);
    return 0;
}
