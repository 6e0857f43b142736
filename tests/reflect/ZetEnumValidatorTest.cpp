#include <zet/ZetEnumValidator>

#include <gtest/gtest.h>

#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

ZetEnum makeEnum(std::initializer_list<ZetEnum::Item> items)
{
    return ZetEnum(items.begin(), static_cast<unsigned int>(items.size()));
}

ZetEnum colours()
{
    return makeEnum({ZetEnum::Item({2, L"red"}), ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"})});
}

struct VerdictRow
{
    ZetVariant value;
    bool valid;
    const wchar_t* shown;
};

TEST(ZetEnumValidator, verdicts)
{
    const test::ZetScopedLocale plainNumbers("C");
    const VerdictRow rows[] = {
        {ZetVariant(L"red"), true, L""},
        {ZetVariant(L"b"), true, L""},
        {ZetVariant(L"Red"), false, L"Red"},
        {ZetVariant(L"red "), false, L"red "},
        {ZetVariant(L""), false, L""},
        // the first member of a list or of a pair stands for it
        {ZetVariant(L"(red,blue)"), true, L""},
        {ZetVariant(L"(blue,red)"), false, L"blue"},
        {ZetVariant(L"(red)"), true, L""},
        {ZetVariant(L"(red"), true, L""},
        {ZetVariant(L"(red)x"), true, L""},
        {ZetVariant(L"(red)x,y"), false, L"red)x"},
        {ZetVariant(ZetStrList{L"green", L"none"}), true, L""},
        {ZetVariant(ZetStrList{L"none", L"green"}), false, L"none"},
        {ZetVariant(L"(,red)"), false, L""},
        {ZetVariant(L"("), false, L""},
        {ZetVariant(L"()"), false, L""},
        {ZetVariant(L"((red),x)"), false, L"(red)"},
        // other kinds by their text
        {ZetVariant(L'b'), true, L""},
        {ZetVariant(2), false, L"2"},
        {ZetVariant(2.0), false, L"2.0"},
        {ZetVariant(), false, L""},
    };
    const ZetEnumValidator validator(colours());
    for (const VerdictRow& row : rows) {
        const std::string what = toMultibyte(row.value.value<ZetString>());
        ZetTextMsg message(L"before", ZetTextMsg::User);
        EXPECT_EQ(validator.isValid(row.value, &message), row.valid) << what;
        EXPECT_EQ(validator.isValid(row.value, nullptr), row.valid) << what;
        if (row.valid) {
            EXPECT_EQ(message.text(), L"before") << what;
            continue;
        }
        EXPECT_EQ(message.text(), L"The value of '" + ZetString(row.shown) + L"' is not a member of {red,green,b}.");
        EXPECT_EQ(message.file(), L"ZetEnumValidator");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        EXPECT_EQ(message.givenKind(), 0);
        EXPECT_GT(message.line(), 0);
    }
}

TEST(ZetEnumValidator, emptyTextIsNoMember)
{
    const ZetEnumValidator validator(makeEnum({ZetEnum::Item({0, L""})}));
    EXPECT_FALSE(validator.isValid(ZetVariant(L""), nullptr));
}

TEST(ZetEnumValidator, keepsACopyOfTheEnumeration)
{
    ZetEnum keys = colours();
    const ZetEnumValidator validator(keys);
    keys.insert(ZetEnum::Item({9, L"late"}));
    EXPECT_FALSE(validator.isValid(ZetVariant(L"late"), nullptr));
    const ZetEnumValidator copy(validator);
    EXPECT_TRUE(copy.isValid(ZetVariant(L"red"), nullptr));
    EXPECT_EQ(validator.className(), L"ZetEnumValidator");
    EXPECT_FALSE(validator.isMetaObject());
}

struct EqualRow
{
    const char* what;
    ZetEnum other;
    bool equal;
};

TEST(ZetEnumValidator, equality)
{
    const EqualRow rows[] = {
        {"the same", colours(), true},
        {"in another order of insertion",
         makeEnum({ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"}), ZetEnum::Item({2, L"red"})}), true},
        {"with data",
         makeEnum({ZetEnum::Item({0, L"green"}, ZetVariant(1)), ZetEnum::Item({1, L"b"}), ZetEnum::Item({2, L"red"})}),
         true},
        {"one fewer", makeEnum({ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"})}), false},
        {"one more",
         makeEnum({ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"}), ZetEnum::Item({2, L"red"}),
                   ZetEnum::Item({3, L"x"})}),
         false},
        {"another number",
         makeEnum({ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"}), ZetEnum::Item({3, L"red"})}), false},
        {"another name", makeEnum({ZetEnum::Item({0, L"green"}), ZetEnum::Item({1, L"b"}), ZetEnum::Item({2, L"Red"})}),
         false},
        {"none", ZetEnum(), false},
    };
    const ZetEnumValidator validator(colours());
    for (const EqualRow& row : rows) {
        const ZetEnumValidator other(row.other);
        EXPECT_EQ(validator.isEqual(&other), row.equal) << row.what;
        EXPECT_EQ(other.isEqual(&validator), row.equal) << row.what;
    }
    EXPECT_FALSE(validator.isEqual(nullptr));
    const ZetValidatorPtr clone(validator.clone());
    EXPECT_TRUE(validator.isEqual(clone.get()));
    EXPECT_NE(clone.get(), static_cast<const ZetValidator*>(&validator));
}

}  // namespace
}  // namespace zet
