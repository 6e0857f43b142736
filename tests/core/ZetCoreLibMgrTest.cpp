#include <zet/ZetCoreLibMgr>

#include <gtest/gtest.h>

#include <zet/ZetCoreFunctions>
#include <zet/ZetVersion>

#include "support/ZetPrint"

namespace zet {
namespace {

/// Counts what it receives; it tells when it goes.
class Counting : public ZetTextHandler
{
public:
    explicit Counting(bool* gone = nullptr) : m_gone(gone) {}
    ~Counting() override
    {
        if (m_gone) {
            *m_gone = true;
        }
    }
    void postMessage(const ZetTextMsg&) override { ++count; }

    int count = 0;

private:
    bool* m_gone;
};

/// Every test starts and ends with the manager as it is in a fresh process.
class ZetCoreLibMgrTest : public ::testing::Test
{
protected:
    ZetCoreLibMgrTest() : manager(ZetCoreLibMgr::instance()), fallback(manager.textHandler()) {}
    ~ZetCoreLibMgrTest() override
    {
        manager.deInitialize();
        manager.setTextHandler(ZetTextHandlerPtr());
    }

    ZetCoreLibMgr& manager;
    const ZetTextHandlerPtr fallback;
};

TEST_F(ZetCoreLibMgrTest, knowsItsName)
{
    EXPECT_EQ(manager.className(), L"ZetCoreLibMgr");
}

TEST_F(ZetCoreLibMgrTest, hasTheVersion)
{
    EXPECT_EQ(manager.version().major(), 1);
    EXPECT_EQ(manager.version().minor(), 0);
    EXPECT_EQ(manager.version().build(), 0);
    EXPECT_EQ(&manager.version(), &ZetCoreLibMgr().version());
}

TEST_F(ZetCoreLibMgrTest, theFallbackIsTheDefaultHandler)
{
    EXPECT_FALSE(manager.isInitialized());
    ASSERT_TRUE(fallback);
    EXPECT_NE(dynamic_cast<QorDefTextHandler*>(fallback.get()), nullptr);
}

TEST_F(ZetCoreLibMgrTest, allHandlesShareOneState)
{
    const ZetTextHandlerPtr handler = new Counting;
    ZetCoreLibMgr other;
    other.setTextHandler(handler);
    EXPECT_EQ(manager.textHandler(), handler);
    const ZetCoreLibMgr copy(other);
    EXPECT_EQ(copy.textHandler(), handler);
    EXPECT_EQ(&ZetCoreLibMgr::instance(), &manager);
}

TEST_F(ZetCoreLibMgrTest, aSecondInitializeIsIgnored)
{
    const ZetTextHandlerPtr first = new Counting;
    const ZetTextHandlerPtr second = new Counting;
    EXPECT_EQ(manager.initialize(first), 0);
    EXPECT_TRUE(manager.isInitialized());
    EXPECT_EQ(manager.initialize(second), 0);
    EXPECT_EQ(manager.textHandler(), first);
    // one deInitialize undoes both
    manager.deInitialize();
    EXPECT_FALSE(manager.isInitialized());
    EXPECT_EQ(manager.initialize(second), 0);
    EXPECT_EQ(manager.textHandler(), second);
}

TEST_F(ZetCoreLibMgrTest, initializeWithNullKeepsTheDefaultHandling)
{
    EXPECT_EQ(manager.initialize(ZetTextHandlerPtr()), 0);
    EXPECT_TRUE(manager.isInitialized());
    EXPECT_EQ(manager.textHandler(), fallback);
}

TEST_F(ZetCoreLibMgrTest, deInitializeRestoresTheDefaultHandler)
{
    manager.initialize(new Counting);
    manager.deInitialize();
    EXPECT_EQ(manager.textHandler(), fallback);
    manager.deInitialize();
    EXPECT_EQ(manager.textHandler(), fallback);
    EXPECT_FALSE(manager.isInitialized());
}

TEST_F(ZetCoreLibMgrTest, deInitializeReleasesTheHandler)
{
    bool gone = false;
    manager.initialize(new Counting(&gone));
    EXPECT_FALSE(gone);
    manager.deInitialize();
    EXPECT_TRUE(gone);
}

TEST_F(ZetCoreLibMgrTest, setTextHandlerWorksInAnyState)
{
    const ZetTextHandlerPtr first = new Counting;
    const ZetTextHandlerPtr second = new Counting;
    manager.setTextHandler(first);
    EXPECT_FALSE(manager.isInitialized());
    EXPECT_EQ(manager.textHandler(), first);
    // while the flag is down, deInitialize clears nothing
    manager.deInitialize();
    EXPECT_EQ(manager.textHandler(), first);
    manager.initialize(second);
    EXPECT_EQ(manager.textHandler(), second);
    manager.setTextHandler(first);
    EXPECT_EQ(manager.textHandler(), first);
    manager.setTextHandler(ZetTextHandlerPtr());
    EXPECT_EQ(manager.textHandler(), fallback);
    EXPECT_TRUE(manager.isInitialized());
}

/// Keeps the handler that was in office before it.
class Stacked : public Counting
{
public:
    explicit Stacked(const ZetTextHandlerPtr& handler) : before(handler) {}
    const ZetTextHandlerPtr before;
};

TEST_F(ZetCoreLibMgrTest, aHandlerMayGiveWayToOneThatItAloneHolds)
{
    const auto stacked = [this]() -> const Stacked& { return dynamic_cast<Stacked&>(*manager.textHandler()); };
    Counting* const first = new Counting;
    manager.setTextHandler(new Stacked(new Stacked(first)));
    manager.setTextHandler(stacked().before);
    manager.initialize(stacked().before);
    EXPECT_EQ(manager.textHandler().get(), first);
    postMessage(ZetTextMsg(L"note", ZetTextMsg::Info));
    EXPECT_EQ(first->count, 1);
}

TEST_F(ZetCoreLibMgrTest, theHandlerReceivesEveryKind)
{
    Counting* handler = new Counting;
    manager.initialize(handler);
    for (const int kind : {0, 1, 2, 3, 4, 9}) {
        postMessage(ZetTextMsg(L"note", kind));
    }
    EXPECT_EQ(handler->count, 6);
}

}  // namespace
}  // namespace zet
