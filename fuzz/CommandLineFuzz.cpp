// Feeds command lines to declared sets of arguments, and texts to the lines of usage.

#include <cstdint>

#include "support/ZetCommandLineExercise"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zet::test::exerciseCommandLine(data, size);
    return 0;
}
