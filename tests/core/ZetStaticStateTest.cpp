#include <cstdlib>
#include <memory>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetCoreFunctions>
#include <zet/ZetCoreLibMgr>
#include <zet/ZetMetaType>
#include <zet/ZetStrList>
#include <zet/ZetTypeID>
#include <zet/ZetVersion>
#include <zet/ZetWideStreams>

#include "support/ZetPrint"

// What the library answers in a fresh process, and that it answers at all before its own static
// initialisers ran: the early object below starts before every other one of the program.
namespace zet {
namespace {

class Keeping : public ZetTextHandler
{
public:
    void postMessage(const ZetTextMsg& message) override { messages.push_back(message); }

    std::vector<ZetTextMsg> messages;
};

struct Early
{
    Early()
    {
        firstId = internal::uniqueTypeID(L"the first name");
        secondId = internal::uniqueTypeID(L"the second name");
        firstIdAgain = internal::uniqueTypeID(L"the first name");
        firstCustomKind = ZetMetaType(ZetMetaType::FirstCustom).type();
        lastErrorBeforeAny = std::make_unique<ZetTextMsg>(lastError());

        parallelSetFirst = enableParallelLoops(false);
        parallelThen = useParallelLoops();
        enableParallelLoops(true);
        timingAtFirst = isTimingLoops();
        timingSetFirst = enableLoopTiming(true);
        timingSetThen = enableLoopTiming(false);

        postMessage(ZetTextMsg(L"a warning that is dropped", ZetTextMsg::Warning));
        try {
            postMessage(ZetTextMsg(L"early", L"File", 1, ZetTextMsg::Error));
        } catch (const ZetTextMsg& message) {
            thrown = message.text();
        }
        Keeping* keeping = new Keeping;
        initializeResult = ZetCoreLibMgr::instance().initialize(keeping);
        postMessage(ZetTextMsg(L"kept", L"File", 2, ZetTextMsg::Error));
        kept = keeping->messages.size();
        ZetCoreLibMgr::instance().deInitialize();
        version = static_cast<ZetString>(ZetCoreLibMgr().version());

        list = ZetStrList(L"(a,b)", L",");
        internal::cout() << L"";
        internal::cerr() << L"";
        streamsGood = internal::cin().good() && internal::cout().good() && internal::cerr().good();
    }

    unsigned long firstId = 0;
    unsigned long secondId = 0;
    unsigned long firstIdAgain = 0;
    ZetMetaType::Type firstCustomKind = ZetMetaType::Bool;
    std::unique_ptr<ZetTextMsg> lastErrorBeforeAny;
    bool parallelSetFirst = false;
    bool parallelThen = true;
    bool timingAtFirst = true;
    bool timingSetFirst = true;
    bool timingSetThen = false;
    ZetString thrown;
    int initializeResult = -1;
    std::size_t kept = 0;
    ZetString version;
    ZetStrList list;
    bool streamsGood = false;
};

__attribute__((init_priority(101))) const Early s_early;

TEST(ZetStaticState, noCustomKindBeforeAnyRegistration)
{
    EXPECT_EQ(s_early.firstCustomKind, ZetMetaType::Invalid);
}

TEST(ZetStaticState, theFirstTypeNameGetsOne)
{
    EXPECT_EQ(s_early.firstId, 1u);
    EXPECT_EQ(s_early.secondId, 2u);
    EXPECT_EQ(s_early.firstIdAgain, 1u);
    EXPECT_EQ(internal::uniqueTypeID(L"the first name"), 1u);
}

TEST(ZetStaticState, lastErrorBeforeAnyErrorIsEmpty)
{
    const ZetTextMsg& message = *s_early.lastErrorBeforeAny;
    EXPECT_EQ(message.text(), L"");
    EXPECT_EQ(message.file(), L"<filename unknown>");
    EXPECT_EQ(message.line(), 0);
    EXPECT_EQ(message.kind(), 0);
    EXPECT_EQ(message.code(), 0);
    std::wostringstream out;
    out << message;
    EXPECT_EQ(out.str(), L"");
}

TEST(ZetStaticState, switchesOfTheLoops)
{
    EXPECT_TRUE(s_early.parallelSetFirst);
    EXPECT_FALSE(s_early.parallelThen);
    EXPECT_FALSE(s_early.timingAtFirst);
    EXPECT_FALSE(s_early.timingSetFirst);
    EXPECT_TRUE(s_early.timingSetThen);
}

TEST(ZetStaticState, messagesWorkWithoutAnyCallByTheApplication)
{
    EXPECT_EQ(s_early.thrown, L"early");
    EXPECT_EQ(s_early.initializeResult, 0);
    EXPECT_EQ(s_early.kept, 1u);
    EXPECT_EQ(s_early.version, L"1.0");
}

TEST(ZetStaticState, textAndStreamsWorkEarly)
{
    EXPECT_EQ(s_early.list, (ZetStrList{L"a", L"b"}));
    EXPECT_TRUE(s_early.streamsGood);
}

/// Ends the process with 42 when it goes.
class Ending : public Keeping
{
public:
    ~Ending() override { std::_Exit(42); }
};

TEST(ZetStaticState, theManagersStateReleasesItsHandlerAtExit)
{
    const auto initialized = [] {
        ZetCoreLibMgr::instance().initialize(new Ending);
        std::exit(0);
    };
    EXPECT_EXIT(initialized(), ::testing::ExitedWithCode(42), "");
    const auto replaced = [] {
        ZetCoreLibMgr::instance().setTextHandler(new Ending);
        std::exit(0);
    };
    EXPECT_EXIT(replaced(), ::testing::ExitedWithCode(42), "");
}

}  // namespace
}  // namespace zet
