#include <zet/ZetWideStreams>

#include <iostream>

#include <gtest/gtest.h>

namespace zet {
namespace {

TEST(ZetWideStreams, areTheStandardOnes)
{
    EXPECT_EQ(&internal::cin(), &std::wcin);
    EXPECT_EQ(&internal::cout(), &std::wcout);
    EXPECT_EQ(&internal::cerr(), &std::wcerr);
}

}  // namespace
}  // namespace zet
