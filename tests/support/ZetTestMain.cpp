#include <cstdlib>
#include <iostream>
#include <locale>

#include <gtest/gtest.h>

/// Under the address checker too, memory that cannot be had is null, as the tests of failures expect.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

/// Runs the tests, under the locale that ZET_TEST_LOCALE names if it is set: as the global locale of
/// both C and C++, which a program may well have chosen.
int main(int argc, char** argv)
{
    // A test that ends its process runs in a fresh one.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ::testing::InitGoogleTest(&argc, argv);
    if (const char* name = std::getenv("ZET_TEST_LOCALE")) {
        std::locale::global(std::locale(name));
        std::cout << "tests run under the locale " << name << std::endl;
    }
    return RUN_ALL_TESTS();
}
