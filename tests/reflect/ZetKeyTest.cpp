#include <zet/ZetKey>

#include <sstream>

#include <gtest/gtest.h>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

TEST(ZetKey, constants)
{
    EXPECT_EQ(ZetKey::INVALID_KEY, 4294967295u);
    EXPECT_EQ(ZetKey::LAST_VALID_KEY, 4294967294u);
    EXPECT_EQ(ZetKey().value(), 0u);
    EXPECT_EQ(ZetKey().className(), L"ZetKey");
}

struct AdvanceRow
{
    unsigned int before;
    unsigned int after;
};

TEST(ZetKey, advances)
{
    const AdvanceRow rows[] = {
        {0u, 1u},
        {1u, 2u},
        {2147483647u, 2147483648u},
        {4294967293u, 4294967294u},
        // the invalid key is never reached
        {4294967294u, 0u},
        {4294967295u, 0u},
    };
    for (const AdvanceRow& row : rows) {
        ZetKey prefix(row.before);
        EXPECT_EQ(&++prefix, &prefix);
        EXPECT_EQ(prefix.value(), row.after) << row.before;
    }
}

TEST(ZetKey, postfixGivesTheAdvancedKey)
{
    ZetKey key(7);
    EXPECT_EQ(&key++, &key);
    EXPECT_EQ(key.value(), 8u);
    EXPECT_EQ((key++).value(), 9u);
    ZetKey last(ZetKey::LAST_VALID_KEY);
    EXPECT_EQ((last++).value(), 0u);
}

TEST(ZetKey, compares)
{
    EXPECT_TRUE(ZetKey(3) == ZetKey(3));
    EXPECT_TRUE(ZetKey(3) != ZetKey(4));
    EXPECT_TRUE(ZetKey(3) < ZetKey(4));
    EXPECT_FALSE(ZetKey(ZetKey::INVALID_KEY) < ZetKey(4));
}

TEST(ZetKey, textIsUnsignedDecimal)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(ZetString(ZetKey(0)), L"0");
    EXPECT_EQ(ZetString(ZetKey(ZetKey::INVALID_KEY)), L"4294967295");
    std::wostringstream out;
    out << ZetKey(4294967294u);
    EXPECT_EQ(out.str(), L"4294967294");

    std::wistringstream in(L" 4294967294 12x");
    ZetKey key;
    in >> key;
    EXPECT_EQ(key.value(), 4294967294u);
    in >> key;
    EXPECT_EQ(key.value(), 12u);
    EXPECT_TRUE(in.good());
    in >> key;
    EXPECT_TRUE(in.fail());
}

}  // namespace
}  // namespace zet
