// Failures whose handler uses the parser that is at work.

#include <zet/ZetEqnParser>

#include <cstdlib>
#include <functional>
#include <utility>

#include <gtest/gtest.h>

#include <zet/ZetCoreLibMgr>
#include <zet/ZetTextHandler>

#include "eqn/ZetFusedEvaluation"
#include "image/ZetBlockMemory"
#include "support/ZetSameValue"

namespace zet {
namespace test {
namespace {

/// While it lives, one block of memory cannot be had, and the message about it is handled by \p work.
class FailOnce
{
public:
    explicit FailOnce(const std::function<void()>& work)
        : m_blocksBefore(internal::acquireBlock), m_before(ZetCoreLibMgr().textHandler())
    {
        s_fails = true;
        internal::acquireBlock = [](std::size_t size) -> void* {
            return std::exchange(s_fails, false) ? nullptr : std::malloc(size);
        };
        ZetCoreLibMgr().setTextHandler(new Handler(work));
    }
    FailOnce(const FailOnce&) = delete;
    FailOnce& operator=(const FailOnce&) = delete;
    ~FailOnce()
    {
        EXPECT_FALSE(s_fails) << "no block was asked for";
        internal::acquireBlock = m_blocksBefore;
        ZetCoreLibMgr().setTextHandler(m_before);
    }

private:
    class Handler : public ZetTextHandler
    {
    public:
        explicit Handler(const std::function<void()>& work) : m_work(work) {}
        void postMessage(const ZetTextMsg&) override { m_work(); }

    private:
        std::function<void()> m_work;
    };

    static inline bool s_fails = false;
    void* (*m_blocksBefore)(std::size_t);
    ZetTextHandlerPtr m_before;
};

/// Many doubles that are all the same.
ZetEqnTile flat(double value)
{
    return ownTile(ZetDataType::Double, Values(700, value));
}

/// Runs \p test for both ways of evaluating.
template <class Test>
void bothWays(const Test& test)
{
    const bool before = internal::useFusedEvaluation(true);
    test();
    internal::useFusedEvaluation(false);
    test();
    internal::useFusedEvaluation(before);
}

// The equality gets no block while the double of the definition's value is still to be computed.
TEST(ZetEvaluationInHandler, definitionsGetNewValues)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"d*2+((x*3)==(x*5)); d=x"));
    parser.setValue(L"x", flat(10.0));
    const FailOnce failure([&] {
        parser.setValue(L"x", flat(1000.0));
        expectTile(held<ZetEqnTile>(parser.evaluate()), ZetDataType::Double, Values(700, 2000.0));
    });
    expectTile(held<ZetEqnTile>(parser.evaluate()), ZetDataType::Double, Values(700, 20.0));
}

TEST(ZetEvaluationInHandler, variablesGetValuesOfOtherKinds)
{
    for (const ZetVariant& other : {ZetVariant(), ZetVariant(3.0), ZetVariant(L"abc"), ZetVariant(flat(7.0))}) {
        bothWays([&] {
            ZetEqnParser parser;
            ASSERT_TRUE(parser.parse(L"max(y,z+((x*3)==(x*5)))"));
            parser.setValue(L"x", flat(1.0));
            parser.setValue(L"y", flat(10.0));
            parser.setValue(L"z", flat(11.0));
            const FailOnce failure([&] {
                parser.setValue(L"y", other);
                parser.setValue(L"z", other);
            });
            expectTile(held<ZetEqnTile>(parser.evaluate()), ZetDataType::Double, Values(700, 11.0));
        });
    }
}

TEST(ZetEvaluationInHandler, anotherEquationIsParsed)
{
    for (const wchar_t* const text : {L"", L"7", L"c*7; c=1"}) {
        bothWays([&] {
            ZetEqnParser parser;
            ASSERT_TRUE(parser.parse(L"b+1; definition=((x*3)==(x*5)); b=2"));
            parser.setValue(L"x", flat(1.0));
            const FailOnce failure([&] { parser.parse(text); });
            parser.evaluate();
            EXPECT_EQ(parser.expression(), text);
            ASSERT_TRUE(parser.parse(L"a+1"));
            parser.setValue(L"a", 2.0);
            EXPECT_EQ(held<double>(parser.evaluate()), 3.0);
        });
    }
}

TEST(ZetEvaluationInHandler, aFailureLeavesNoResult)
{
    bothWays([] {
        ZetEqnParser parser;
        ASSERT_TRUE(parser.parse(L"x*2"));
        parser.setValue(L"x", flat(1.0));
        const FailOnce failure([&] {
            expectTile(held<ZetEqnTile>(parser.evaluate()), ZetDataType::Double, Values(700, 2.0));
            throw ZetTextMsg(L"thrown", ZetTextMsg::Error);
        });
        ZetTextMsg message(ZetString(), ZetTextMsg::Error);
        EXPECT_FALSE(parser.evaluate(&message).isValid());
        EXPECT_EQ(message.text(), L"thrown");
    });
}

}  // namespace
}  // namespace test
}  // namespace zet
