// The texts that the fuzzer of units found worth keeping.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetUnitsReaders"

namespace zet {
namespace {

TEST(ZetUnits, corpusOfTheFuzzer)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZET_TEST_CORPUS "/units")) {
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
        test::readAsUnits(data.data(), data.size());
        ++count;
    }
    EXPECT_GE(count, 20);
}

}  // namespace
}  // namespace zet
