#include <zet/ZetCoreFunctions>

#include <time.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/ZetCollectingHandler"

namespace zet {
namespace {

using test::thrownBy;
using test::ZetCollectingHandler;

const ZetTextMsg kError(L"bad", L"File", 3, ZetTextMsg::Error);

TEST(ZetCoreFunctions, anErrorUnderTheDefaultHandlerIsThrown)
{
    const ZetTextMsg error(L"thrown to the caller", L"File", 4, ZetTextMsg::Error);
    EXPECT_EQ(thrownBy([&] { postMessage(error); }), error);
    EXPECT_EQ(lastError(), error);
}

TEST(ZetCoreFunctions, anErrorUnderAHandlerThatReturnsIsKept)
{
    const ZetCollectingHandler posted;
    const ZetTextMsg error(L"kept", L"File", 5, ZetTextMsg::Error);
    postMessage(error);
    EXPECT_EQ(lastError(), error);
    EXPECT_EQ(posted.messages(), std::vector<ZetTextMsg>{error});
}

TEST(ZetCoreFunctions, otherKindsLeaveLastError)
{
    thrownBy([] { postMessage(kError); });
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    for (const int kind : {1, 2, 3, 4, 7, -1}) {
        EXPECT_NO_THROW(postMessage(ZetTextMsg(L"note", kind)));
    }
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(lastError(), kError);
}

TEST(ZetCoreFunctions, lastErrorIsACopy)
{
    thrownBy([] { postMessage(kError); });
    ZetTextMsg copy = lastError();
    copy.clear();
    EXPECT_EQ(lastError(), kError);
}

TEST(ZetCoreFunctions, theLastErrorCanBePostedAgain)
{
    thrownBy([] { postMessage(kError); });
    EXPECT_EQ(thrownBy([] { postMessage(lastError()); }), kError);
    EXPECT_EQ(lastError(), kError);
}

class Throwing : public ZetTextHandler
{
public:
    void postMessage(const ZetTextMsg&) override { throw std::runtime_error("own"); }
};

TEST(ZetCoreFunctions, whatAHandlerThrowsPassesThrough)
{
    ZetCoreLibMgr().setTextHandler(new Throwing);
    const ZetTextMsg error(L"through a handler that throws", L"File", 6, ZetTextMsg::Error);
    EXPECT_THROW(postMessage(error), std::runtime_error);
    EXPECT_EQ(lastError(), error);
    EXPECT_THROW(postMessage(ZetTextMsg(L"note", ZetTextMsg::Info)), std::runtime_error);
    EXPECT_EQ(lastError(), error);
    ZetCoreLibMgr().setTextHandler(ZetTextHandlerPtr());
}

/// Takes itself out of office when the first message comes.
class Resigning : public ZetTextHandler
{
public:
    void postMessage(const ZetTextMsg&) override
    {
        ZetCoreLibMgr().setTextHandler(ZetTextHandlerPtr());
        // Still alive: whoever posts holds it.
        m_told = true;
    }

private:
    bool m_told = false;
};

TEST(ZetCoreFunctions, aHandlerMayReplaceItself)
{
    ZetCoreLibMgr().setTextHandler(new Resigning);
    EXPECT_NO_THROW(postMessage(kError));
    EXPECT_EQ(thrownBy([] { postMessage(kError); }), kError);
}

TEST(ZetCoreFunctions, epsilonOfADouble)
{
    EXPECT_EQ(epsilonDouble(), 2.220446049250313e-16);
    EXPECT_GT(1.0 + epsilonDouble(), 1.0);
    EXPECT_EQ(1.0 + epsilonDouble() / 2, 1.0);
}

TEST(ZetCoreFunctions, isNaNTellsNaNs)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(isNaN(nan));
    EXPECT_TRUE(isNaN(-nan));
    EXPECT_TRUE(isNaN(std::numeric_limits<double>::signaling_NaN()));
    for (const double x : {0.0, -0.0, 1.0, HUGE_VAL, -HUGE_VAL, 5e-324}) {
        EXPECT_FALSE(isNaN(x));
    }
}

TEST(ZetCoreFunctions, log1pIsCompensated)
{
    // The natural logarithm of 1 + x to 20 digits.
    struct Row
    {
        double x;
        double value;
    };
    const Row rows[] = {
        {1.0, 0.69314718055994530942},    {-0.5, -0.69314718055994530942},
        {0.5, 0.40546510810816438198},    {9.0, 2.3025850929940456840},
        {1e-3, 9.9950033308353316681e-4}, {-1e-6, -1.0000005000003333336e-6},
        {1e-10, 9.9999999995e-11},        {1e-20, 1e-20},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.x);
        EXPECT_NEAR(zet::log1p(row.x), row.value, 4e-16 * std::fabs(row.value));
    }
    EXPECT_EQ(zet::log1p(0.0), 0.0);
}

TEST(ZetCoreFunctions, log1pHasNoGuards)
{
    // log(0) less 0 / 0
    EXPECT_TRUE(std::isnan(zet::log1p(-1.0)));
    EXPECT_TRUE(std::isnan(zet::log1p(-2.0)));
    EXPECT_TRUE(std::isnan(zet::log1p(std::numeric_limits<double>::quiet_NaN())));
    // infinity less infinity in the correction
    EXPECT_TRUE(std::isnan(zet::log1p(HUGE_VAL)));
}

TEST(ZetCoreFunctions, loopSwitchesGiveTheValueBefore)
{
    struct Row
    {
        bool (*set)(bool);
        bool (*get)();
    };
    for (const Row& row : {Row{enableParallelLoops, useParallelLoops}, Row{enableLoopTiming, isTimingLoops}}) {
        const bool before = row.get();
        EXPECT_EQ(row.set(true), before);
        EXPECT_TRUE(row.get());
        EXPECT_TRUE(row.set(false));
        EXPECT_FALSE(row.get());
        EXPECT_FALSE(row.set(false));
        row.set(before);
    }
}

TEST(ZetCoreFunctions, memoryIsUnknown)
{
    EXPECT_EQ(physicalRam(), 0u);
    EXPECT_EQ(availableRam(), 0u);
}

/// Sets the time zone of the process while it lives.
class ScopedTimeZone
{
public:
    explicit ScopedTimeZone(const char* zone)
    {
        if (const char* before = std::getenv("TZ")) {
            m_before = before;
            m_wasSet = true;
        }
        setenv("TZ", zone, 1);
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;
    ~ScopedTimeZone()
    {
        if (m_wasSet) {
            setenv("TZ", m_before.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    std::string m_before;
    bool m_wasSet = false;
};

constexpr unsigned long kMinute = 60 * 1000ul;

TEST(ZetCoreFunctions, readsTimeStamps)
{
    struct Row
    {
        const wchar_t* text;
        unsigned long milliseconds;
    };
    const Row rows[] = {
        {L"20120229235959", 1330559999000},
        {L"20120229235959.123", 1330559999123},
        {L"20120229235959x123", 1330559999123},
        {L"20120229235959 123Z", 1330559999123},
        // a last field that is cut off is ignored
        {L"20120229235959.12", 1330559999000},
        {L"20120229235959.", 1330559999000},
        // too short
        {L"2012022923595", 0},
        {L"", 0},
        {L"19700101000000", 0},
        // impossible fields are carried over
        {L"20120230000000", 1330560000000},
        {L"20121331000000", 1359590400000},
        {L"20120229235960", 1330560000000},
        {L"20120229236000", 1330560000000},
        // characters that are no digits read as far as they are a number
        {L"2012022923595x", 1330559945000},
        {L"20120229235959.1x3", 1330559999001},
        {L"20120229235959.xyz", 1330559999000},
        {L"20120229235959.-23", 1330559998977},
        // before the epoch: the count wraps
        {L"19691231235959", static_cast<unsigned long>(-1000L)},
        // all fields zero is 30 November of the year before year 0
        {L"xxxxxxxxxxxxxx", static_cast<unsigned long>(-62169984000000L)},
    };
    for (const char* zone : {"UTC0", "NPT-5:45", "EST5"}) {
        const ScopedTimeZone scope(zone);
        const unsigned long offset = std::string(zone) == "NPT-5:45" ? 0 - 345 * kMinute
                                     : std::string(zone) == "EST5"   ? 300 * kMinute
                                                                     : 0;
        for (const Row& row : rows) {
            SCOPED_TRACE(zone + (" " + toMultibyte(row.text)));
            const bool tooShort = ZetString(row.text).size() < 14;
            EXPECT_EQ(timeStampFromStr(row.text), tooShort ? 0 : row.milliseconds + offset);
        }
    }
}

TEST(ZetCoreFunctions, daylightSavingIsThePlatformsAffair)
{
    const ScopedTimeZone scope("CET-1CEST,M3.5.0,M10.5.0/3");
    // 12:00 is 11:00 in winter and 10:00 in summer, universal time
    EXPECT_EQ(timeStampFromStr(L"20120115120000"), 1326625200000);
    EXPECT_EQ(timeStampFromStr(L"20120715120000"), 1342346400000);
}

}  // namespace
}  // namespace zet
