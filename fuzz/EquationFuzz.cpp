// Feeds the scanner and the grammar of the equation language, and evaluates, folds and copies what parses.

#include <cstdint>

#include "support/ZetEquationExercise"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::exerciseEquation(data, size);
    return 0;
}
