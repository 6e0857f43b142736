#include <zet/ZetSafeBool>

#include <type_traits>

#include <gtest/gtest.h>

namespace zet {
namespace internal {
namespace {

class Answer : public ZetSafeBool
{
public:
    explicit Answer(bool answer) : m_answer(answer) {}
    bool booleanTest() const override { return m_answer; }

private:
    bool m_answer;
};

TEST(ZetSafeBool, aConditionSeesTheTest)
{
    for (const bool value : {false, true}) {
        const Answer answer(value);
        bool seen = false;
        if (answer) {
            seen = true;
        }
        EXPECT_EQ(seen, value);
        EXPECT_EQ(!answer, !value);
    }
}

TEST(ZetSafeBool, theConversionYieldsTheMember)
{
    const ZetSafeBool::BoolType yes = Answer(true);
    const ZetSafeBool::BoolType no = Answer(false);
    EXPECT_TRUE(yes == &ZetSafeBoolBase::this_type_does_not_support_comparisons);
    EXPECT_TRUE(no == nullptr);
    const Answer object(true);
    (object.*yes)();
}

template <class T, class = void>
constexpr bool kComparable = false;
template <class T>
constexpr bool kComparable<T, std::void_t<decltype(std::declval<const T&>() == std::declval<const T&>())>> = true;

TEST(ZetSafeBool, convertsToNothingElse)
{
    static_assert(!std::is_convertible_v<Answer, int>);
    static_assert(!std::is_convertible_v<Answer, const void*>);
    static_assert(!kComparable<Answer>);
}

}  // namespace
}  // namespace internal
}  // namespace zet
