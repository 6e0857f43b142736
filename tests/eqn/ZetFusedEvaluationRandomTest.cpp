#include "eqn/ZetFusedEvaluation"

#include <algorithm>
#include <cstdlib>
#include <cwctype>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetEqnParser>

#include "eqn/ZetMathFcn"
#include "support/ZetNoMemory"
#include "support/ZetRandomEquations"
#include "support/ZetRandomValues"
#include "support/ZetTwoWays"

namespace zet {
namespace test {
namespace {

/// Which equations a run makes. ZET_TEST_EQUATIONS=seed:first:count tells others than the usual ones, such as the
/// one that a failure names.
struct Numbers
{
    std::uint64_t seed;
    std::uint64_t first;
    std::uint64_t count;

    static Numbers asked(const Numbers& usual)
    {
        Numbers run = usual;
        if (const char* const text = std::getenv("ZET_TEST_EQUATIONS")) {
            char colon;
            std::istringstream in(text);
            in.imbue(std::locale::classic());
            in >> run.seed >> colon >> run.first >> colon >> run.count;
        }
        return run;
    }
};

/// What became of the equations of a run, so that a test of nothing does not pass for one.
struct Tally
{
    std::uint64_t total = 0;
    std::map<std::string, std::uint64_t> results;  // by the kind of the first result

    double share(const std::string& kind) const
    {
        const auto found = results.find(kind);
        return found == results.end() ? 0.0 : static_cast<double>(found->second) / static_cast<double>(total);
    }

    /// How often a function is called by its name, or an operator stands in the texts.
    std::uint64_t uses(const std::wstring& word) const
    {
        const auto found = m_uses.find(word);
        return found == m_uses.end() ? 0 : found->second;
    }

    void countUses(const std::wstring& text)
    {
        for (std::size_t i = 0; i < text.size();) {
            const auto isLetter = [](wchar_t c) { return std::iswalnum(static_cast<std::wint_t>(c)) || c == L'_'; };
            std::size_t end = i;
            while (end < text.size() && isLetter(text[end])) {
                ++end;
            }
            if (end == i) {
                static const std::set<std::wstring> pairs = {L"<=", L">=", L"==", L"!=", L"&&", L"||"};
                const bool isPair = pairs.count(text.substr(i, 2)) != 0;
                end = i + (isPair ? 2 : 1);
            }
            ++m_uses[toLower(text.substr(i, end - i))];
            i = end;
        }
    }

private:
    std::map<std::wstring, std::uint64_t> m_uses;
};

/// Bytes that somebody holds on to while the parser goes on.
class Kept
{
public:
    /// A tile may be held in three ways.
    Kept(const ZetVariant& value, std::size_t how) : m_data(nullptr)
    {
        if (value.type().type() != ZetMetaType::EqnTile) {
            m_value = value;
            m_text = describe(value);
            return;
        }
        const ZetEqnTile& tile = held<ZetEqnTile>(value);
        m_data = tile.elements<const unsigned char>();
        if (m_data) {
            m_before.assign(m_data, m_data + tile.buffer()->size());
        }
        if (how == 0) {
            m_value = value;
        } else if (how == 1) {
            m_tile = tile;
        } else {
            m_buffer = tile.buffer();
        }
    }

    bool isUnchanged() const
    {
        return std::equal(m_before.begin(), m_before.end(), m_data) && (m_text.empty() || describe(m_value) == m_text);
    }

private:
    ZetVariant m_value;
    ZetEqnTile m_tile;
    ZetBufferPtr m_buffer;
    const unsigned char* m_data;
    std::vector<unsigned char> m_before;
    std::wstring m_text;
};

/// One random equation, evaluated a few times both ways, with what callers do between evaluations.
class Trial
{
public:
    Trial(const ZetRandomValues& values, ZetRandom random, const internal::ZetPixelKernels* kernels)
        : m_values(values),
          m_equation(ZetRandomEquations(random).make()),
          m_random(random.next()),
          m_ways(kernels),
          m_own(ZetRandomValues::ordinaryTile(m_random, m_random.chance(20) ? 513 : m_random.below(40))),
          m_ownBytes(m_own)
    {}

    const std::wstring& text() const { return m_equation.text; }

    /// How the two ways differ; empty when they do not.
    std::wstring run(Tally& tally)
    {
        check(m_ways->parse(m_equation.text), L"parsing");
        bindAll();
        const int rounds = m_random.chance(55) ? 1 : m_random.between(2, 4);
        for (int round = 0; round < rounds && m_difference.empty(); ++round) {
            if (round > 0) {
                change();
            }
            const ZetOutcomes outcomes = m_ways->evaluate(order(round));
            check(outcomes.difference, L"round " + std::to_wstring(round));
            if (round == 0) {
                count(outcomes.plain, tally);
            }
            if (round + 1 < rounds && m_difference.empty()) {
                use(outcomes);
            }
        }
        const bool areKept =
            std::all_of(m_kept.begin(), m_kept.end(), [](const Kept& kept) { return kept.isUnchanged(); });
        check(areKept ? L"" : L"a result that somebody held has other bytes", L"the end");
        const bool areLeft = m_ownBytes.areUnchanged() && m_values.areUnchanged();
        check(areLeft ? L"" : L"the bytes of a variable were written", L"the end");
        return m_difference;
    }

private:
    void check(const std::wstring& difference, const std::wstring& where)
    {
        if (!m_difference.empty() || difference.empty()) {
            return;
        }
        m_difference = difference + L"\n  in " + where;
        if (m_ways) {
            for (const ZetString& name : m_ways->variables()) {
                m_difference += L"\n  " + name + L": " + describe(m_ways->value(name));
            }
        }
    }

    void count(const ZetEqnOutcome& outcome, Tally& tally) const
    {
        ++tally.total;
        const ZetVariant& value = outcome.value;
        const bool isFilled = value.type().type() == ZetMetaType::EqnTile && held<ZetEqnTile>(value).size() > 0;
        const ZetString kind = m_ways->isRefused()   ? ZetString(L"refused")
                               : outcome.hasFailed() ? ZetString(L"failure")
                               : isFilled            ? ZetString(L"filled tile")
                                                     : value.typeName();
        ++tally.results[toMultibyte(kind)];
    }

    ZetTwoWays::Order order(int round)
    {
        ZetTwoWays::Order order;
        order.plainFirst = m_random.chance(50);
        order.plainTwice = round > 0 && m_random.chance(10);
        order.withElements = m_equation.isWritten;
        return order;
    }

    /// Whether the caller gives the variable its value; the others are definitions and constants.
    bool isGiven(const ZetString& name) const { return name.size() == 2 && m_values.hasValuesFor(name); }

    void bind(ZetTwoWays& ways, const ZetString& name)
    {
        if (name == L"m0") {
            ways.setValue(name, m_own);
        } else if (isGiven(name)) {
            ways.setValue(name, m_values.drawFor(name, m_random));
        }
    }

    /// Some equations are folded, when a few variables have values or all of them.
    void bindAll()
    {
        const bool isFolded = m_random.chance(6);
        for (const ZetString& name : ZetStrList(m_ways->variables())) {
            bind(*m_ways, name);
            if (isFolded && m_random.chance(30)) {
                check(m_ways->collapse(), L"folding");
            }
        }
    }

    /// Gives variables other values, most often of other kinds, or writes into a tile that has been given.
    void change()
    {
        const ZetStrList names = m_ways->variables();
        for (int i = m_random.between(0, 3); i > 0 && names.size() > 0; --i) {
            bind(*m_ways, *(names.begin() + static_cast<std::ptrdiff_t>(m_random.below(names.size()))));
        }
        if (m_own.elements<unsigned char>() && m_random.chance(30)) {
            m_own.elements<unsigned char>()[m_random.below(m_own.buffer()->size())] ^= 1;
            m_ownBytes.accept();
            m_ways->setValue(L"m0", m_own);
        }
        if (m_random.chance(5)) {
            if (m_random.chance(50)) {
                const ZetNoMemory none;
                m_ways->evaluate();
            }
            check(m_ways->parse(m_equation.text), L"parsing again");
            bindAll();
        }
    }

    /// What callers do with results and values.
    void use(const ZetOutcomes& outcomes)
    {
        if (m_random.chance(10)) {
            useCopy();
        }
        keep(outcomes.fused.value);
        for (const ZetString& name : ZetStrList(m_ways->variables())) {
            keep(m_ways->value(name));
        }
        if (m_equation.isWritten && outcomes.fused.value.type().type() == ZetMetaType::EqnTile) {
            handBack(outcomes);
        }
    }

    void keep(const ZetVariant& value)
    {
        const bool isOwn =
            value.type().type() == ZetMetaType::EqnTile && held<ZetEqnTile>(value).buffer() == m_own.buffer();
        if (m_random.chance(25) && !isOwn) {
            m_kept.emplace_back(value, m_random.below(3));
        }
    }

    /// Makes the result the value of variables.
    void handBack(const ZetOutcomes& outcomes)
    {
        const ZetEqnTile& tile = held<ZetEqnTile>(outcomes.fused.value);
        const bool hasElements = tile.elements<char>() || tile.size() == 0;
        const bool isReal = tile.dataType().type() <= ZetDataType::U32 || tile.dataType().isFloat();
        for (const ZetString& name : ZetStrList(m_ways->variables())) {
            const bool isTaker = isGiven(name) && ((name[0] == L'r' && isReal && hasElements) || name[0] == L't');
            if (isTaker && m_random.chance(40)) {
                m_ways->setValues(name, outcomes.fused.value, outcomes.plain.value);
            }
        }
    }

    void useCopy()
    {
        ZetTwoWays copy(*m_ways);
        check(copy.evaluate(order(1)).difference, L"a copy");
        for (const ZetString& name : ZetStrList(copy.variables())) {
            if (m_random.chance(50)) {
                bind(copy, name);
            }
        }
        check(copy.evaluate(order(1)).difference, L"a copy with values of its own");
    }

    const ZetRandomValues& m_values;
    ZetRandomEquation m_equation;
    ZetRandom m_random;
    std::optional<ZetTwoWays> m_ways;
    ZetEqnTile m_own;  // the value of m0, which changes under the parser
    ZetWatchedBytes m_ownBytes;
    std::vector<Kept> m_kept;
    std::wstring m_difference;
};

/// Runs equations, the values of their variables being made for many at a time; reports those in which the ways
/// differ, up to a few.
Tally runTrials(const Numbers& run, const internal::ZetPixelKernels* kernels = nullptr)
{
    constexpr std::uint64_t batchSize = 50;
    constexpr int mostFailures = 5;
    Tally tally;
    std::optional<ZetRandomValues> values;
    int failures = 0;
    for (std::uint64_t number = run.first; number < run.first + run.count && failures < mostFailures; ++number) {
        if (!values || number % batchSize == 0) {
            values.emplace(ZetRandom(~run.seed, number / batchSize));
        }
        Trial trial(*values, ZetRandom(run.seed, number), kernels);
        const std::wstring difference = trial.run(tally);
        tally.countUses(trial.text());
        if (!difference.empty()) {
            ADD_FAILURE() << "ZET_TEST_EQUATIONS=" << run.seed << ":" << number << ":1\n  " << toMultibyte(trial.text())
                          << "\n  " << toMultibyte(difference);
            ++failures;
        }
    }
    return tally;
}

// Long enough for every function and operator to be met many times, in all element types.
TEST(ZetFusedEvaluationRandom, givesWhatTheNodesGive)
{
    const Numbers usual = {1, 0, 20000};
    const Numbers run = Numbers::asked(usual);
    const Tally tally = runTrials(run);
    for (const auto& [kind, count] : tally.results) {
        std::cout << kind << " " << count << std::endl;
    }
    if (run.count < usual.count || HasFailure()) {
        return;
    }
    EXPECT_GE(tally.share("filled tile"), 0.4);
    EXPECT_GE(tally.share("Double"), 0.02);
    EXPECT_GE(tally.share("failure"), 0.05);
    EXPECT_LE(tally.share("failure"), 0.25);
    for (const auto& [name, info] : internal::ZetMathFcn::functionMap()) {
        EXPECT_GE(tally.uses(name), 50u) << toMultibyte(name);
    }
    const wchar_t* const operators[] = {L"+", L"-",  L"*",  L"/",  L"%",  L"^",  L"!",  L"<",
                                        L">", L"<=", L">=", L"==", L"!=", L"&&", L"||", L"?"};
    for (const wchar_t* const sign : operators) {
        EXPECT_GE(tally.uses(sign), 50u) << toMultibyte(sign);
    }
}

TEST(ZetFusedEvaluationRandom, everyKernelBuildGivesWhatTheNodesGiveByThePlainestOne)
{
    const std::vector<internal::ZetPixelKernelBuild> builds = internal::pixelKernelBuilds();
    const internal::ZetPixelKernels* const before = internal::usePixelKernels(builds.front().kernels);
    for (const internal::ZetPixelKernelBuild& build : builds) {
        SCOPED_TRACE(build.name);
        runTrials(Numbers::asked({2, 0, 1000}), build.kernels);
    }
    internal::usePixelKernels(before);
}

}  // namespace
}  // namespace test
}  // namespace zet
