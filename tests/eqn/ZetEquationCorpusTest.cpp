#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/ZetEquationExercise"

namespace zet {
namespace {

TEST(ZetEquationCorpus, replays)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZET_TEST_CORPUS "/equation")) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(in), {});
        EXPECT_NO_THROW(test::exerciseEquation(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
        ++files;
    }
    EXPECT_GT(files, 15) << "the corpus is there";
}

}  // namespace
}  // namespace zet
