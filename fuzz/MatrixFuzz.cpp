// Feeds the reader of matrix files.

#include <cstdint>

#include "support/ZetMatrixReaders"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::readAsMatrix(data, size);
    return 0;
}
