// Replays what the fuzzer of the variant readers was given and found.

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/ZetVariantReaders"

namespace zet {
namespace {

TEST(ZetVariantCorpus, replays)
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZET_TEST_CORPUS "/variant")) {
        SCOPED_TRACE(entry.path().string());
        std::ifstream in(entry.path(), std::ios::binary);
        ASSERT_TRUE(in.is_open());
        const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        EXPECT_NO_THROW(test::readAsVariants(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
        ++count;
    }
    EXPECT_GE(count, 20);
}

}  // namespace
}  // namespace zet
