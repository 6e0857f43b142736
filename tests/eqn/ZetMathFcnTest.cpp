#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "eqn/ZetFcnNode"
#include "eqn/ZetVarNode"
#include "support/ZetCollectingHandler"
#include "support/ZetFunctionCalls"
#include "support/ZetScopedLocale"

namespace zet {
namespace test {
namespace {

using internal::ZetEqnArgs;
using internal::ZetEqnNode;
using internal::ZetEqnNodePtr;
using internal::ZetFcnNode;
using internal::ZetMathFcn;
using internal::ZetVarNode;
using internal::ZetVarNodePtr;

const std::map<std::wstring, int> kTable = {
    {L"arg", 1},         {L"norm", 1},
    {L"conj", 1},        {L"real", 1},
    {L"imag", 1},        {L"sin", 1},
    {L"asin", 1},        {L"sinh", 1},
    {L"cos", 1},         {L"acos", 1},
    {L"cosh", 1},        {L"tan", 1},
    {L"atan", 1},        {L"tanh", 1},
    {L"sinc", 1},        {L"sqrt", 1},
    {L"exp", 1},         {L"log", 1},
    {L"log10", 1},       {L"abs", 1},
    {L"ceil", 1},        {L"floor", 1},
    {L"trunc", 1},       {L"round", 1},
    {L"y0", 1},          {L"y1", 1},
    {L"j0", 1},          {L"j1", 1},
    {L"factorial", 1},   {L"logicalnot", 1},
    {L"unaryplus", 1},   {L"unaryminus", 1},
    {L"cmplx", 2},       {L"add", 2},
    {L"subtract", 2},    {L"multiply", 2},
    {L"divide", 2},      {L"mod", 2},
    {L"pow", 2},         {L"atan2", 2},
    {L"hypot", 2},       {L"fmod", 2},
    {L"ldexp", 2},       {L"logb", 2},
    {L"yn", 2},          {L"jn", 2},
    {L"clipmin", 2},     {L"clipmax", 2},
    {L"equals", 2},      {L"notequals", 2},
    {L"lessthan", 2},    {L"lessthanequals", 2},
    {L"greaterthan", 2}, {L"greaterthanequals", 2},
    {L"logicalor", 2},   {L"logicaland", 2},
    {L"ternary", 3},     {L"clip", 3},
    {L"roundclip", 4},   {L"min", -1},
    {L"max", -1},        {L"median", -1},
    {L"mean", -1},       {L"sum", -1},
    {L"select", -1},
};

/// Evaluates to a value, and writes its letter into a log each time.
class LoggingNode : public ZetEqnNode
{
public:
    LoggingNode(wchar_t letter, const ZetVariant& value, std::wstring& log)
        : m_letter(letter), m_value(value), m_log(log)
    {}

    ZetEqnNode* clone() const override { return new LoggingNode(*this); }

    ZetVariant evaluate() override
    {
        m_log += m_letter;
        return m_value;
    }

private:
    wchar_t m_letter;
    ZetVariant m_value;
    std::wstring& m_log;
};

/// In which order a call evaluates its arguments, called a, b, c ...
std::wstring evaluations(const wchar_t* name, const std::vector<std::wstring>& operands)
{
    std::wstring log;
    ZetEqnArgs args;
    for (const std::wstring& operand : operands) {
        const auto letter = static_cast<wchar_t>(L'a' + static_cast<wchar_t>(args.size()));
        args.push_back(new LoggingNode(letter, makeValue(operand), log));
    }
    resultText(name, args);
    return log;
}

TEST(ZetMathFcn, table)
{
    const auto& table = ZetMathFcn::functionMap();
    EXPECT_EQ(table.size(), 65U);
    ASSERT_EQ(kTable.size(), 65U);
    auto row = kTable.begin();
    for (const auto& [name, info] : table) {
        EXPECT_EQ(std::wstring(name), row->first);
        EXPECT_EQ(info.nArgs, row->second) << testing::PrintToString(row->first);
        EXPECT_NE(info.fcn, nullptr);
        ++row;
    }
    EXPECT_EQ(&table, &ZetMathFcn::functionMap());
}

TEST(ZetMathFcn, namesInAnyCase)
{
    EXPECT_EQ(&ZetMathFcn::fromString(L"SIN"), &ZetMathFcn::fromString(L"sin"));
    EXPECT_EQ(&ZetMathFcn::fromString(L"Log10"), &ZetMathFcn::functionMap().at(L"log10"));
    EXPECT_TRUE(ZetMathFcn::isValid(L"UnaryMinus"));
    EXPECT_FALSE(ZetMathFcn::isValid(L"sin "));
    EXPECT_TRUE(ZetMathFcn::isValid(L"GreaterThanEquals"));
    EXPECT_FALSE(ZetMathFcn::isValid(L"greaterthanequalss"));
    EXPECT_FALSE(ZetMathFcn::isValid(ZetString(1000, L's')));
    EXPECT_FALSE(ZetMathFcn::isValid(L"\u017Fin")) << "only A to Z have a lower case";
    EXPECT_FALSE(ZetMathFcn::isValid(L""));
}

TEST(ZetMathFcn, reservedNamesHaveNoFunction)
{
    const wchar_t* const reserved[] = {
        L"bittoggle",  L"complextranspose", L"transpose", L"bitand",    L"bitor", L"shiftleft", L"shiftright",
        L"matrixmult", L"matrixdiv",        L"matrixpow", L"subscript", L"array", L"vector",    L"foo",
    };
    for (const wchar_t* name : reserved) {
        EXPECT_FALSE(ZetMathFcn::isValid(name));
        EXPECT_EQ(ZetMathFcn::fromString(name).nArgs, 0);
        EXPECT_EQ(ZetMathFcn::fromString(name).fcn, nullptr);
    }
    EXPECT_EQ(&ZetMathFcn::fromString(L"foo"), &ZetMathFcn::fromString(L"vector"));
}

TEST(ZetMathFcn, failuresAreThrownWhole)
{
    const auto failing = [] { call(L"subtract", constants({ZetVariant(L"a"), ZetVariant(1.0)})); };
    const ZetTextMsg message = thrownBy(failing);
    EXPECT_EQ(message.text(), L"Invalid argument passed to 'subtract' function.");
    EXPECT_EQ(message.file(), L"ZetEqnNode");
    EXPECT_EQ(message.kind(), ZetTextMsg::Error);
    EXPECT_GT(message.line(), 0);

    // They are thrown past the text handler, whether that returns or not.
    const ZetCollectingHandler posted;
    EXPECT_EQ(thrownBy(failing).text(), message.text());
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMathFcn, everyFailureHasItsName)
{
    const std::vector<std::vector<std::wstring>> refused = {
        {L"unset"}, {L"unset", L"1"}, {L"unset", L"1", L"1"}, {L"unset", L"1", L"1", L"1"}};
    const std::set<std::wstring> neverFail = {L"add", L"equals", L"notequals", L"unaryplus"};
    const std::set<std::wstring> reductions = {L"min", L"max", L"sum"};
    for (const auto& [name, count] : kTable) {
        if (neverFail.count(name)) {
            continue;
        }
        // A numeric operand beside an unset one makes a text of a product; two unset ones do not.
        const bool product = name == L"multiply";
        const auto& operands = refused[static_cast<std::size_t>(reductions.count(name) ? 1
                                                                : count < 0            ? 0
                                                                                       : count - 1)];
        EXPECT_EQ(callText(name, product ? std::vector<std::wstring>{L"unset", L"unset"} : operands), L"!")
            << testing::PrintToString(name);
    }
}

TEST(ZetMathFcn, decoratedNames)
{
    EXPECT_EQ(refusal(L"logicalnot"), L"Invalid argument passed to 'logicalnot (!)' function.");
    EXPECT_EQ(refusal(L"clip"), L"Invalid argument passed to 'clip' function.");
    const struct
    {
        const wchar_t* name;
        std::vector<ZetVariant> operands;
        const wchar_t* text;
    } rows[] = {
        {L"logicalnot", {ZetVariant()}, L"Invalid argument passed to 'logicalnot (!)' function."},
        {L"unaryminus", {ZetVariant()}, L"Invalid argument passed to 'unaryminus (-)' function."},
        {L"mod", {ZetVariant(), ZetVariant()}, L"Invalid argument passed to 'mod (%)' function."},
        {L"pow", {ZetVariant(), ZetVariant()}, L"Invalid argument passed to 'pow (^)' function."},
        {L"logicaland", {ZetVariant(), ZetVariant()}, L"Invalid argument passed to 'logicaland (&&)' function."},
        {L"logicalor", {ZetVariant(), ZetVariant()}, L"Invalid argument passed to 'logicalor (||)' function."},
        {L"ternary",
         {ZetVariant(), ZetVariant(), ZetVariant()},
         L"Invalid argument passed to 'ternary (? :)' function."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(thrownBy([&] { call(row.name, constants(row.operands)); }).text(), row.text);
    }
}

TEST(ZetMathFcn, argumentsAreEvaluatedOnceInOrder)
{
    EXPECT_EQ(evaluations(L"sin", {L"1"}), L"a");
    EXPECT_EQ(evaluations(L"unaryplus", {L"1"}), L"a");
    EXPECT_EQ(evaluations(L"add", {L"1", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"subtract", {L"'a'", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"pow", {L"1", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"cmplx", {L"1", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"mod", {L"'a'", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"lessthan", {L"1", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"equals", {L"1", L"2"}), L"ba");
    EXPECT_EQ(evaluations(L"notequals", {L"1", L"2"}), L"ba");
    EXPECT_EQ(evaluations(L"clipmin", {L"1", L"2"}), L"ab");
    EXPECT_EQ(evaluations(L"clip", {L"1", L"2", L"3"}), L"abc");
    EXPECT_EQ(evaluations(L"roundclip", {L"1", L"2", L"3", L"4"}), L"abcd");
    EXPECT_EQ(evaluations(L"min", {L"1", L"2", L"3"}), L"abc");
    EXPECT_EQ(evaluations(L"min", {L"1", L"'a'", L"3"}), L"ab");
    EXPECT_EQ(evaluations(L"sum", {L"1"}), L"a");
    EXPECT_EQ(evaluations(L"mean", {L"1"}), L"a");
    EXPECT_EQ(evaluations(L"mean", {L"1", L"2", L"3"}), L"abc");
    EXPECT_EQ(evaluations(L"median", {L"1", L"2", L"3"}), L"abc");
}

TEST(ZetMathFcn, logicEvaluatesBothSides)
{
    EXPECT_EQ(evaluations(L"logicalor", {L"1", L"0"}), L"ab");
    EXPECT_EQ(evaluations(L"logicaland", {L"0", L"1"}), L"ab");
    EXPECT_EQ(evaluations(L"logicaland", {L"unset", L"1"}), L"ab");
}

TEST(ZetMathFcn, choiceEvaluatesOneBranch)
{
    EXPECT_EQ(evaluations(L"ternary", {L"1", L"2", L"3"}), L"ab");
    EXPECT_EQ(evaluations(L"ternary", {L"0", L"2", L"3"}), L"ac");
    EXPECT_EQ(evaluations(L"ternary", {L"unset", L"2", L"3"}), L"a");
    EXPECT_EQ(evaluations(L"select", {L"0", L"2", L"3"}), L"a");
    EXPECT_EQ(evaluations(L"select", {L"1", L"2", L"3"}), L"ab");
    EXPECT_EQ(evaluations(L"select", {L"2", L"2", L"3"}), L"ac");
    EXPECT_EQ(evaluations(L"select", {L"3", L"2", L"3"}), L"a");
}

TEST(ZetMathFcn, aNullArgumentIsAnInvalidValue)
{
    EXPECT_EQ(resultText(L"add", {ZetEqnNodePtr(), constants({ZetVariant(1.0)})[0]}), L"'1'");
    EXPECT_EQ(resultText(L"sin", {ZetEqnNodePtr()}), L"!");
}

/// The call name(nodes ...) as a node.
ZetEqnNodePtr node(const wchar_t* name, const ZetEqnArgs& args)
{
    return new ZetFcnNode(name, args);
}

// A tile that dies in an operation lends its block to the result: nobody may see it.
TEST(ZetMathFcn, tilesThatOthersHoldAreNeverWritten)
{
    const ZetEqnTile tile = makeTile(L"Double[1 4]");
    const ZetVariant held(tile);
    const ZetVarNodePtr x = new ZetVarNode(L"x");
    x->setValue(held);
    const ZetEqnNodePtr xNode = x.get();

    // steps over the variable itself, and over a value that is passed on as it is
    const ZetEqnNodePtr passed = node(L"unaryplus", {xNode});
    const ZetEqnNodePtr least = node(L"min", {xNode});
    const ZetEqnNodePtr chosen = node(L"ternary", {constants({ZetVariant(true)})[0], xNode, xNode});
    const ZetEqnNodePtr limit = node(L"clipmax", {constants({ZetVariant(1.0)})[0], constants({ZetVariant(0.0)})[0]});
    for (const ZetEqnNodePtr& operand : {xNode, passed, chosen}) {
        for (const wchar_t* name : {L"unaryminus", L"sqrt", L"abs", L"floor"}) {
            node(name, {operand})->evaluate();
        }
        for (const wchar_t* name : {L"add", L"subtract", L"multiply", L"divide", L"min", L"max", L"clipmin", L"pow"}) {
            node(name, {operand, limit})->evaluate();
            node(name, {operand, operand})->evaluate();
            node(name, {operand, passed})->evaluate();
        }
    }
    EXPECT_EQ(valueText(least->evaluate()), L"1");
    EXPECT_EQ(valueText(held), L"Double[1 4]");
    EXPECT_EQ(tileText(tile), L"Double[1 4]");
}

/// Evaluates to a new tile each time, and keeps the address of its block.
class NewTileNode : public ZetEqnNode
{
public:
    ZetEqnNode* clone() const override { return new NewTileNode(*this); }

    ZetVariant evaluate() override
    {
        const ZetVariant value = makeValue(L"Double[1 4]");
        m_block = block(value);
        return value;
    }

    const void* block() const { return m_block; }

    static const void* block(const ZetVariant& value)
    {
        return static_cast<const ZetEqnTile*>(value.data())->elements<double>();
    }

private:
    const void* m_block = nullptr;
};

TEST(ZetMathFcn, aTileThatDiesLendsItsBlock)
{
    NewTileNode* const made = new NewTileNode;
    const ZetEqnNodePtr tile = made;
    const ZetEqnArgs numbers = constants({ZetVariant(2.0), ZetVariant(3.0)});
    const struct
    {
        const wchar_t* name;
        ZetEqnArgs args;
        const wchar_t* result;
    } rows[] = {
        {L"add", {tile, numbers[0]}, L"Double[3 6]"},
        {L"subtract", {numbers[0], tile}, L"Double[1 -2]"},
        {L"sqrt", {tile}, L"Double[1 2]"},
        {L"clip", {tile, numbers[0], numbers[1]}, L"Double[2 3]"},
        {L"max", {tile, numbers[0], numbers[1]}, L"Double[3 4]"},
    };
    for (const auto& row : rows) {
        const ZetVariant value = call(row.name, row.args);
        EXPECT_EQ(valueText(value), row.result);
        EXPECT_EQ(NewTileNode::block(value), made->block()) << testing::PrintToString(std::wstring(row.name));
    }
}

TEST(ZetMathFcn, chainsOfTiles)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetEqnArgs x = constants({makeValue(L"Double[1 4]")});
    const ZetEqnArgs y = constants({makeValue(L"U8[2 3]")});
    const ZetEqnArgs two = constants({ZetVariant(2.0)});
    // ((x + y) * (x - 2)) / max(x * x, y)
    const ZetEqnNodePtr left = node(L"multiply", {node(L"add", {x[0], y[0]}), node(L"subtract", {x[0], two[0]})});
    const ZetEqnNodePtr right = node(L"max", {node(L"multiply", {x[0], x[0]}), y[0]});
    EXPECT_EQ(valueText(node(L"divide", {left, right})->evaluate()), L"Double[-1.5 0.875]");
    // 2 - x * x
    EXPECT_EQ(valueText(node(L"subtract", {two[0], node(L"multiply", {x[0], x[0]})})->evaluate()), L"Double[1 -14]");
    EXPECT_EQ(valueText(x[0]->evaluate()), L"Double[1 4]");
    EXPECT_EQ(valueText(y[0]->evaluate()), L"U8[2 3]");
}

/// The names that the reference page explains: the words in code form at the start of a table row.
std::set<std::wstring> documentedFunctions()
{
    std::ifstream page(ZET_TEST_SOURCE_DIR "/docs/functions.md");
    EXPECT_TRUE(page.is_open());
    std::set<std::wstring> names;
    for (std::string line; std::getline(page, line);) {
        const std::size_t end = line.find('(', 3);
        if (line.rfind("| `", 0) == 0 && end != std::string::npos) {
            names.insert(toWide(line.substr(3, end - 3)));
        }
    }
    return names;
}

TEST(ZetMathFcn, referencePageIsComplete)
{
    std::set<std::wstring> names;
    for (const auto& [name, info] : ZetMathFcn::functionMap()) {
        names.insert(name);
    }
    EXPECT_EQ(documentedFunctions(), names);
}

}  // namespace
}  // namespace test
}  // namespace zet
