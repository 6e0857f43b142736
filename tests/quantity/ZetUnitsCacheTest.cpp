#include "quantity/ZetUnitsCache"

#include <atomic>
#include <limits>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "quantity/ZetUnitsOf"
#include "support/ZetPrint"

namespace zet {
namespace {

using internal::UnitsFactor;
using internal::ZetUnitsCache;
using test::unitsOf;
using List = ZetUnits::List;
using Unit = ZetUnits::Unit;

const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The first exponents and the hits of the lists, in the order of the search: "1x3 2x1".
std::string dump(const ZetUnitsCache& cache)
{
    std::ostringstream out;
    for (const auto& [list, hits] : cache.lists()) {
        out << (out.str().empty() ? "" : " ") << list.front().exp << "x" << hits;
    }
    return out.str();
}

TEST(ZetUnitsCache, givesOneListForEqualEntries)
{
    ZetUnitsCache cache;
    const List a = {{Unit::Meter, 1.0}, {Unit::Second, -1.0}};
    const List* canonical = cache.findCached(a);
    EXPECT_NE(canonical, &a);
    EXPECT_EQ(canonical->size(), 2u);
    EXPECT_EQ(cache.findCached(List(a)), canonical);
    EXPECT_NE(cache.findCached({{Unit::Meter, 1.0}}), canonical);
    EXPECT_NE(cache.findCached({{Unit::Meter, 1.0}, {Unit::Hour, -1.0}}), canonical);
    EXPECT_NE(cache.findCached({{Unit::Meter, 1.0}, {Unit::Second, -1.0000000000000002}}), canonical);
    EXPECT_NE(cache.findCached({{Unit::Meter, kNaN}}), cache.findCached({{Unit::Meter, kNaN}}));
}

TEST(ZetUnitsCache, listsInUseDriftToTheFront)
{
    ZetUnitsCache cache;
    const auto ask = [&cache](double exponent) { cache.findCached({{Unit::Meter, exponent}}); };
    ask(1);
    ask(2);
    ask(3);
    EXPECT_EQ(dump(cache), "1x1 2x1 3x1");
    // one step at a time, and only past an entry with fewer hits
    ask(3);
    EXPECT_EQ(dump(cache), "1x1 3x2 2x1");
    ask(2);
    EXPECT_EQ(dump(cache), "1x1 3x2 2x2");
    ask(3);
    EXPECT_EQ(dump(cache), "3x3 1x1 2x2");
    ask(2);
    EXPECT_EQ(dump(cache), "3x3 2x3 1x1");
    ask(2);
    EXPECT_EQ(dump(cache), "2x4 3x3 1x1");
    ask(2);
    EXPECT_EQ(dump(cache), "2x5 3x3 1x1");
}

TEST(ZetUnitsCache, powersKeepTheFirst)
{
    ZetUnitsCache cache;
    const List* metre = cache.findCached({{Unit::Meter, 1.0}});
    const List* square = cache.findCached({{Unit::Meter, 2.0}});
    EXPECT_EQ(cache.power(metre, 2.0), nullptr);
    cache.setPower(metre, 2.0, square);
    EXPECT_EQ(cache.power(metre, 2.0), square);
    cache.setPower(metre, 2.0, metre);
    EXPECT_EQ(cache.power(metre, 2.0), square);
    EXPECT_EQ(cache.power(square, 2.0), nullptr);
    // a NaN has no order, so it must not enter the map
    cache.setPower(metre, kNaN, metre);
    EXPECT_EQ(cache.power(metre, kNaN), nullptr);
    EXPECT_EQ(cache.power(metre, 2.0), square);
}

TEST(ZetUnitsCache, textsAreMadeOnce)
{
    ZetUnitsCache cache;
    const List* metre = cache.findCached({{Unit::Meter, 1.0}});
    EXPECT_EQ(cache.knownText(metre), nullptr);
    EXPECT_EQ(cache.text(metre, [] { return ZetString(L"first"); }), L"first");
    ASSERT_NE(cache.knownText(metre), nullptr);
    EXPECT_EQ(*cache.knownText(metre), L"first");
    EXPECT_EQ(cache.text(metre, [] { return ZetString(L"second"); }), L"first");
}

TEST(ZetUnitsCache, parsedTexts)
{
    ZetUnitsCache cache;
    const List* metre = cache.findCached({{Unit::Meter, 1.0}});
    UnitsFactor found{nullptr, 7.0};
    EXPECT_FALSE(cache.parsed(L"m", found));
    EXPECT_EQ(found.factor, 7.0);
    cache.setParsed(L"m", {metre, 2.0});
    EXPECT_FALSE(cache.parsed(L" m", found));
    EXPECT_TRUE(cache.parsed(L"m", found));
    EXPECT_EQ(found.units, metre);
    EXPECT_EQ(found.factor, 2.0);
}

TEST(ZetUnitsCache, orderIsByListThenNumber)
{
    const List lists[2] = {};
    const UnitsFactor rows[] = {{nullptr, 1.0}, {&lists[0], -1.0}, {&lists[0], 2.0}, {&lists[1], -5.0}};
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        for (std::size_t k = 0; k < std::size(rows); ++k) {
            EXPECT_EQ(rows[i] < rows[k], i < k);
        }
    }
}

// What one thread makes of texts that no other test uses: parsed, raised, multiplied, divided and
// printed units, each new to the process the first time.
struct Results
{
    std::vector<ZetUnits> units;
    std::vector<ZetString> texts;
    std::vector<double> scales;
};

constexpr int kRounds = 200;

Results workThrough()
{
    Results results;
    for (int i = 0; i < kRounds; ++i) {
        std::wostringstream text;
        text << L"km^" << 1 + i / 1024.0 << L" cm / hr^" << 2 + i;
        ZetUnits units;
        results.scales.push_back(units.fromString(text.str()));
        results.units.push_back(units);
        units.pow(-0.5 - i);
        results.units.push_back(units);
        ZetUnits product;
        results.scales.push_back(ZetUnits::multFactor(units, unitsOf(L"m kg"), &product));
        results.units.push_back(product);
        results.scales.push_back(ZetUnits::divFactor(unitsOf(L"km A"), units, &product));
        results.units.push_back(product);
        results.scales.push_back(ZetUnits::addFactor(product, units));
        results.texts.push_back(product);
        EXPECT_FALSE(ZetUnits::isValid(L"km xyz"));
    }
    return results;
}

TEST(ZetUnitsCache, threadsEndWithTheSameLists)
{
    constexpr std::size_t count = 4;
    std::vector<Results> results(count);
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            ++ready;
            while (ready < count) {
            }
            results[i] = workThrough();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const Results afterwards = workThrough();
    EXPECT_EQ(afterwards.units.size(), 4u * kRounds);
    for (const Results& each : results) {
        EXPECT_EQ(each.units, afterwards.units);
        EXPECT_EQ(each.texts, afterwards.texts);
        EXPECT_EQ(each.scales, afterwards.scales);
    }
}

}  // namespace
}  // namespace zet
