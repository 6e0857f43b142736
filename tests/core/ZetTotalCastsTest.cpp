#include "core/ZetTotalCasts"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace zet {
namespace {

using namespace internal;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t kLow32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kLow64 = std::numeric_limits<std::int64_t>::min();

TEST(ZetTotalCasts, answerForEveryDouble)
{
    struct Row
    {
        double v;
        std::int32_t toInt32;
        std::int64_t toInt64;
        std::uint32_t toUInt32;
        std::uint64_t toUInt64;
    };
    const Row rows[] = {
        {0.0, 0, 0, 0, 0},
        {-0.0, 0, 0, 0, 0},
        {0.999, 0, 0, 0, 0},
        {-0.999, 0, 0, 0, 0},
        {2.7, 2, 2, 2, 2},
        {-2.7, -2, -2, 0xfffffffe, 0xfffffffffffffffe},
        {5e-324, 0, 0, 0, 0},
        // around 32 bits
        {2147483647.9, 2147483647, 2147483647, 2147483647, 2147483647},
        {2147483648.0, kLow32, 2147483648, 2147483648u, 2147483648u},
        {-2147483648.9, kLow32, -2147483648, 2147483648u, 0xffffffff80000000},
        {-2147483649.0, kLow32, -2147483649, 2147483647u, 0xffffffff7fffffff},
        {4294967295.5, kLow32, 4294967295, 4294967295u, 4294967295u},
        {4294967297.0, kLow32, 4294967297, 1, 4294967297u},
        // around 64 bits
        {0x1p62, kLow32, std::int64_t{1} << 62, 0, std::uint64_t{1} << 62},
        {0x1.fffffffffffffp62, kLow32, 0x7ffffffffffffc00, 0xfffffc00, 0x7ffffffffffffc00},
        {0x1p63, kLow32, kLow64, 0, 0x8000000000000000},
        {0x1.8p63, kLow32, kLow64, 0, 0xc000000000000000},
        {0x1.fffffffffffffp63, kLow32, kLow64, 0, 0xfffffffffffff800},
        {-0x1p63, kLow32, kLow64, 0, 0x8000000000000000},
        {-0x1.0000000000001p63, kLow32, kLow64, 0, 0x8000000000000000},
        // beyond every integer
        {0x1p64, kLow32, kLow64, 0, 0},
        {1e300, kLow32, kLow64, 0, 0},
        {-1e300, kLow32, kLow64, 0, 0x8000000000000000},
        {kInf, kLow32, kLow64, 0, 0},
        {-kInf, kLow32, kLow64, 0, 0x8000000000000000},
        {kNaN, kLow32, kLow64, 0, 0x8000000000000000},
        {-kNaN, kLow32, kLow64, 0, 0x8000000000000000},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(truncateToInt32(row.v), row.toInt32) << row.v;
        EXPECT_EQ(truncateToInt64(row.v), row.toInt64) << row.v;
        EXPECT_EQ(truncateToUInt32(row.v), row.toUInt32) << row.v;
        EXPECT_EQ(truncateToUInt64(row.v), row.toUInt64) << row.v;
    }
}

TEST(ZetTotalCasts, serveConstants)
{
    static_assert(truncateToInt32(-7.9) == -7);
    static_assert(truncateToInt64(0x1p40) == std::int64_t{1} << 40);
    static_assert(truncateToUInt32(-1.0) == 0xffffffff);
    static_assert(truncateToUInt64(0x1p63) == std::uint64_t{1} << 63);
}

}  // namespace
}  // namespace zet
