#include <zet/ZetSmartPtr>

#include <atomic>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetObject>

namespace zet {

struct CountProbe;

/// Looks at counts and changes them, as only smart pointers may.
template <>
class ZetSmartPtr<CountProbe>
{
public:
    static int countOf(const ZetRefCounted& object) { return object.m_count; }
    static void drop(const ZetRefCounted& object) { object.dropReference(); }
};

namespace {

using Count = ZetSmartPtr<CountProbe>;

class Thing : public ZetObject, public ZetRefCounted
{
public:
    Thing() { ++s_alive; }
    Thing(const Thing& other) : ZetObject(other), ZetRefCounted(other), value(other.value) { ++s_alive; }
    Thing& operator=(const Thing&) = default;
    ~Thing() override { --s_alive; }

    int value = 0;
    static std::atomic<int> s_alive;
};

std::atomic<int> Thing::s_alive{0};

ZET_SMART_PTR(ThingPtr, Thing);
ZET_CONST_SMART_PTR(ThingConstPtr, Thing, ThingPtr);

class DerivedThing : public Thing
{
public:
    explicit DerivedThing(bool& gone) : m_gone(gone) {}
    ~DerivedThing() override { m_gone = true; }

private:
    bool& m_gone;
};

TEST(ZetRefCounted, aNewObjectHasCountZero)
{
    const Thing thing;
    EXPECT_EQ(Count::countOf(thing), 0);
}

TEST(ZetRefCounted, aCopyStartsAtZero)
{
    const ThingPtr held = new Thing;
    const ThingPtr again = held;
    const Thing copy = *held;
    EXPECT_EQ(Count::countOf(copy), 0);
    EXPECT_EQ(Count::countOf(*held), 2);
}

TEST(ZetRefCounted, assigningDataLeavesBothCounts)
{
    const ThingPtr a = new Thing;
    const ThingPtr b = new Thing;
    const ThingPtr b2 = b;
    b->value = 7;
    *a = *b;
    EXPECT_EQ(a->value, 7);
    EXPECT_EQ(Count::countOf(*a), 1);
    EXPECT_EQ(Count::countOf(*b), 2);
}

TEST(ZetSmartPtr, theLastHolderDeletes)
{
    ASSERT_EQ(Thing::s_alive, 0);
    {
        const ThingPtr first = new Thing;
        EXPECT_EQ(Count::countOf(*first), 1);
        {
            const ThingPtr second = first;
            EXPECT_EQ(Count::countOf(*first), 2);
        }
        EXPECT_EQ(Count::countOf(*first), 1);
        EXPECT_EQ(Thing::s_alive, 1);
    }
    EXPECT_EQ(Thing::s_alive, 0);
}

TEST(ZetSmartPtr, deletesThroughTheVirtualDestructor)
{
    bool gone = false;
    ThingPtr held = new DerivedThing(gone);
    held = ThingPtr();
    EXPECT_TRUE(gone);
}

TEST(ZetSmartPtr, nullIsTheDefault)
{
    const ThingPtr none;
    const ThingPtr alsoNone(nullptr);
    EXPECT_EQ(none.get(), nullptr);
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.booleanTest());
    EXPECT_EQ(none, alsoNone);
    const ThingPtr copy = none;
    EXPECT_FALSE(copy);
}

TEST(ZetSmartPtr, testsTrueWhenItHoldsSomething)
{
    const ThingPtr held = new Thing;
    EXPECT_TRUE(held.booleanTest());
    EXPECT_TRUE(held ? true : false);
    EXPECT_FALSE(!held);
    EXPECT_EQ(&*held, held.get());
    EXPECT_EQ(held.operator->(), held.get());
}

TEST(ZetSmartPtr, assigningItselfLeavesTheCount)
{
    ThingPtr held = new Thing;
    const ThingPtr& self = held;
    held = self;
    EXPECT_EQ(Count::countOf(*held), 1);
    EXPECT_EQ(Thing::s_alive, 1);
}

TEST(ZetSmartPtr, assigningTheSamePointeeLeavesTheCount)
{
    ThingPtr a = new Thing;
    const ThingPtr b = a;
    a = b;
    EXPECT_EQ(Count::countOf(*a), 2);
}

TEST(ZetSmartPtr, assigningTakesOverThePointee)
{
    ThingPtr a = new Thing;
    const ThingPtr b = new Thing;
    a = b;
    EXPECT_EQ(Thing::s_alive, 1);
    EXPECT_EQ(a, b);
    EXPECT_EQ(Count::countOf(*b), 2);
}

TEST(ZetSmartPtr, assigningNullToTheLastHolderDeletes)
{
    ThingPtr held = new Thing;
    held = ThingPtr();
    EXPECT_EQ(Thing::s_alive, 0);
    EXPECT_FALSE(held);
}

TEST(ZetSmartPtr, aCountBelowOneDeletes)
{
    {
        const ThingPtr held = new Thing;
        Count::drop(*held);
        ASSERT_EQ(Count::countOf(*held), 0);
        // The release that follows takes the count to -1.
    }
    EXPECT_EQ(Thing::s_alive, 0);
}

/// Notes, when it goes, how often another object is held.
class Watcher : public ZetRefCounted
{
public:
    Watcher(const ZetRefCounted& watched, int& seen) : m_watched(watched), m_seen(seen) {}
    ~Watcher() override { m_seen = Count::countOf(m_watched); }

private:
    const ZetRefCounted& m_watched;
    int& m_seen;
};

TEST(ZetSmartPtr, releasesBeforeTaking)
{
    int seen = -1;
    const ZetSmartPtr<ZetRefCounted> keepAlive = new Thing;
    ZetSmartPtr<ZetRefCounted> pointer = new Watcher(*keepAlive, seen);
    pointer = keepAlive;
    EXPECT_EQ(seen, 1) << "the new pointee was taken before the old one was released";
    EXPECT_EQ(Count::countOf(*keepAlive), 2);
}

/// Denies that it holds anything.
class Shy : public ZetSmartPtr<Thing>
{
public:
    using ZetSmartPtr::ZetSmartPtr;
    bool booleanTest() const override { return false; }
};

TEST(ZetSmartPtr, copiesAskTheVirtualTest)
{
    const Shy shy(new Thing);
    const ZetSmartPtr<Thing> copy(shy);
    EXPECT_EQ(copy.get(), nullptr);
    ZetSmartPtr<Thing> assigned(new Thing);
    assigned = shy;
    EXPECT_EQ(assigned.get(), nullptr);
    EXPECT_EQ(Count::countOf(*shy), 1);
}

TEST(ZetSmartPtr, swapExchangesThePointees)
{
    ThingPtr a = new Thing;
    ThingPtr none;
    Thing* const thing = a.get();
    a.swap(none);
    EXPECT_FALSE(a);
    EXPECT_EQ(none.get(), thing);
    EXPECT_EQ(Count::countOf(*thing), 1);
    none.swap(none);
    EXPECT_EQ(none.get(), thing);
}

TEST(ZetSmartPtr, aConstPointeeIsCountedToo)
{
    const ThingPtr writable = new Thing;
    {
        const ThingConstPtr readable = writable;
        EXPECT_EQ(readable.get(), writable.get());
        EXPECT_EQ(Count::countOf(*writable), 2);
        const ThingConstPtr copy = readable;
        EXPECT_EQ(Count::countOf(*writable), 3);
    }
    EXPECT_EQ(Count::countOf(*writable), 1);
}

TEST(ZetSmartPtr, convertsOnlyTowardConst)
{
    static_assert(std::is_convertible_v<ThingPtr, ThingConstPtr>);
    static_assert(!std::is_convertible_v<ThingConstPtr, ThingPtr>);
    static_assert(std::is_convertible_v<Thing*, ThingPtr>);
    static_assert(!std::is_convertible_v<ThingPtr, int>);
}

TEST(ZetSmartPtr, separatePointersMayBeUsedByManyThreads)
{
    const ThingPtr shared = new Thing;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared] {
            for (int i = 0; i < 20000; ++i) {
                ThingPtr copy = shared;
                const ThingConstPtr another = copy;
                copy = ThingPtr();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Count::countOf(*shared), 1);
}

TEST(ZetSmartPtr, exactlyOneThreadDeletes)
{
    for (int round = 0; round < 200; ++round) {
        ThingPtr a = new Thing;
        ThingPtr b = a;
        std::thread other([&b] { b = ThingPtr(); });
        a = ThingPtr();
        other.join();
        ASSERT_EQ(Thing::s_alive, 0);
    }
}

}  // namespace
}  // namespace zet
