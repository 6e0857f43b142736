#include <zet/ZetEqnParser>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include <zet/ZetEqnTile>
#include <zet/ZetScalar>
#include <zet/ZetVariantImpl>

#include "support/ZetCollectingHandler"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

ZetStrList names(std::initializer_list<ZetString> all)
{
    return ZetStrList(all);
}

ZetUnits units(const ZetString& text)
{
    ZetUnits parsed;
    parsed.fromString(text);
    return parsed;
}

// The message of a text that does not parse; empty for one that does.
std::string refusal(const ZetString& text)
{
    ZetEqnParser parser;
    ZetTextMsg message(L"untouched", ZetTextMsg::Info);
    const bool isGood = parser.parse(text, &message);
    EXPECT_EQ(parser.expression(), text);
    if (isGood) {
        EXPECT_EQ(message.text(), L"untouched");
        return "";
    }
    EXPECT_EQ(message.kind(), ZetTextMsg::Error);
    EXPECT_EQ(message.file(), L"ZetEqnParser");
    EXPECT_FALSE(parser.parse(text)) << "without a message to fill";
    return toMultibyte(message.text());
}

double valueOf(ZetEqnParser* parser)
{
    const ZetVariant& value = parser->evaluate();
    EXPECT_EQ(value.typeName(), L"Double");
    return value.value<double>();
}

double valueOf(const ZetString& text)
{
    ZetEqnParser parser;
    EXPECT_TRUE(parser.parse(text));
    return valueOf(&parser);
}

TEST(ZetEqnParser, isACountedObject)
{
    static_assert(std::is_base_of_v<ZetObject, ZetEqnParser> && std::is_base_of_v<ZetRefCounted, ZetEqnParser>);
    EXPECT_EQ(ZetEqnParser().className(), L"ZetEqnParser");
    EXPECT_FALSE(ZetEqnParser().isMetaObject());
}

TEST(ZetEqnParser, theEmptyTextIsAnEquationWithoutAValue)
{
    ZetEqnParser parser;
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_TRUE(parser.parse(L""));
    EXPECT_TRUE(parser.parse(L"x+1"));
    EXPECT_TRUE(parser.parse(L""));
    EXPECT_EQ(parser.expression(), L"");
    EXPECT_TRUE(parser.variables().empty());
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_EQ(parser.collapse(), 0);
}

TEST(ZetEqnParser, parseOnceEvaluateForManyValues)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"a*a + b - a"));
    EXPECT_EQ(parser.variables(), names({L"a", L"b"}));
    for (double a = -3.0; a < 4.0; ++a) {
        parser.setValue(L"a", a);
        parser.setValue(L"b", 10.0);
        EXPECT_EQ(valueOf(&parser), a * a + 10.0 - a);
        EXPECT_EQ(parser.value(L"a").value<double>(), a);
    }
}

TEST(ZetEqnParser, definitionsRunFromTheLastToTheFirst)
{
    struct Row
    {
        const wchar_t* text;
        double value;
    };
    const Row rows[] = {
        {L"x+y; y=2*a; a=3; x=1", 7.0},
        {L"a; a=b; b=2", 2.0},
        // without a main expression the first definition is the value
        {L";a=1;b=2", 1.0},
        {L";a=b+1;b=2", 3.0},
        // of two definitions of a name the left one runs later
        {L"a; a=1; a=2", 1.0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(valueOf(ZetString(row.text)), row.value) << toMultibyte(row.text);
    }
}

TEST(ZetEqnParser, aDefinitionLeftOfItsUseIsSeenWithItsOldValue)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"b; a=7; b=a"));
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_EQ(valueOf(&parser), 7.0) << "an invalid result is not kept";
}

TEST(ZetEqnParser, variablesInTheOrderOfTheirFirstUse)
{
    struct Row
    {
        const wchar_t* text;
        ZetStrList names;
    };
    const Row rows[] = {
        {L"x+y; y=2*a; a=3", names({L"x", L"y", L"a"})},
        {L"b*a+b*c", names({L"b", L"a", L"c"})},
        // the left side of a definition is no use
        {L"a; a=1", names({L"a"})},
        {L";a=1", names({})},
        // names differ in case
        {L"sum(X,x,X)", names({L"X", L"x"})},
        {L"max(a,min(b,c),d)", names({L"a", L"b", L"c", L"d"})},
        {L"pi*2+m_c", names({L"pi", L"m_c"})},
    };
    for (const Row& row : rows) {
        ZetEqnParser parser;
        EXPECT_TRUE(parser.parse(row.text)) << toMultibyte(row.text);
        EXPECT_EQ(parser.variables(), row.names) << toMultibyte(row.text);
    }
}

TEST(ZetEqnParser, constantsHaveTheirValues)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"pi*2"));
    EXPECT_EQ(parser.variables(), names({L"pi"}));
    EXPECT_EQ(parser.value(L"pi").typeName(), L"ZetScalar");
    EXPECT_EQ(parser.evaluate().typeName(), L"ZetScalar");
    EXPECT_EQ(parser.evaluate().value<double>(), 6.283185307179586);
    parser.setValue(L"pi", 3.0);
    EXPECT_EQ(valueOf(&parser), 6.0);

    struct Row
    {
        const wchar_t* name;
        double real;
        double imaginary;
        const wchar_t* units;
    };
    const Row rows[] = {
        {L"pi", 3.141592653589793, 0.0, L""},    {L"m_pi", 3.141592653589793, 0.0, L""},
        {L"m_e", 2.718281828459045, 0.0, L""},   {L"m_phi", 1.618033988749895, 0.0, L""},
        {L"m_Eu", 0.5772156649015329, 0.0, L""}, {L"m_i", 0.0, 1.0, L""},
        {L"m_k", 1.3806504e-23, 0.0, L"J/K"},    {L"m_c", 299792458.0, 0.0, L"m/s"},
        {L"m_q", 1.602176487e-19, 0.0, L"C"},    {L"m_SB", 5.6704e-08, 0.0, L"W/m^2 K^4"},
        {L"m_h", 6.62606896e-34, 0.0, L"J s"},   {L"m_Rh", 10973731.568525, 0.0, L"m^-1"},
        {L"m_Na", 6.02214179e+23, 0.0, L""},     {L"m_G", 9.81, 0.0, L"m/s^2"},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(parser.parse(row.name));
        const ZetVariant value = parser.evaluate();
        EXPECT_EQ(value.typeName(), L"ZetScalar") << toMultibyte(row.name);
        const ZetScalar scalar = value.value<ZetScalar>();
        EXPECT_EQ(scalar.real(), row.real) << toMultibyte(row.name);
        EXPECT_NEAR(scalar.imag(), row.imaginary, 1e-15) << toMultibyte(row.name);
        EXPECT_EQ(scalar.units(), units(row.units)) << toMultibyte(row.name);
    }
    ASSERT_TRUE(parser.parse(L"PI"));
    EXPECT_FALSE(parser.evaluate().isValid()) << "names are compared exactly";
}

TEST(ZetEqnParser, aVariableWithoutAValue)
{
    ZetEqnParser parser;
    ZetTextMsg message(L"untouched", ZetTextMsg::Info);
    ASSERT_TRUE(parser.parse(L"x"));
    EXPECT_FALSE(parser.evaluate(&message).isValid());
    EXPECT_EQ(message.text(), L"untouched");

    ASSERT_TRUE(parser.parse(L"x+1"));
    EXPECT_EQ(parser.evaluate(&message).typeName(), L"ZetString");
    EXPECT_EQ(parser.evaluate(&message).value<ZetString>(), L"1");
    EXPECT_EQ(message.text(), L"untouched");

    ASSERT_TRUE(parser.parse(L"x-1"));
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_FALSE(parser.evaluate(&message).isValid());
    EXPECT_EQ(message.text(), L"Invalid argument passed to 'subtract' function.");
    EXPECT_EQ(message.file(), L"ZetEqnNode");
    parser.setValue(L"x", 3.0);
    EXPECT_EQ(valueOf(&parser), 2.0);
}

TEST(ZetEqnParser, unitTextIsText)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"2 m + 3 m"));
    EXPECT_EQ(parser.evaluate().value<ZetString>(), L"2 m3 m");
    ASSERT_TRUE(parser.parse(L"25 m"));
    EXPECT_EQ(parser.evaluate().value<ZetScalar>(), ZetScalar(25.0, units(L"m")));
    ASSERT_TRUE(parser.parse(L"\"\""));
    EXPECT_TRUE(parser.evaluate().isValid());
    EXPECT_EQ(parser.evaluate().value<ZetString>(), L"");
}

TEST(ZetEqnParser, tilesAreValues)
{
    ZetEqnTile nir;
    ZetEqnTile red;
    nir.initialize(ZetDataType::U8, 4);
    red.initialize(ZetDataType::U16, 4);
    const unsigned char near[] = {200, 100, 30, 0};
    const unsigned short far[] = {100, 100, 90, 65535};
    std::copy_n(near, 4, nir.elements<unsigned char>());
    std::copy_n(far, 4, red.elements<unsigned short>());

    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"(nir - red) / (nir + red)"));
    parser.setValue(L"nir", nir);
    parser.setValue(L"red", red);
    EXPECT_EQ(parser.evaluate().typeName(), L"ZetEqnTile");
    const ZetEqnTile index = parser.evaluate().value<ZetEqnTile>();
    ASSERT_EQ(index.size(), 4u);
    EXPECT_EQ(index.dataType().type(), ZetDataType::Double);
    const double expected[] = {100.0 / 300.0, 0.0, -60.0 / 120.0, -1.0};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(index.elements<double>()[i], expected[i]) << i;
    }
}

TEST(ZetEqnParser, refusals)
{
    struct Row
    {
        const wchar_t* text;
        const char* message;
    };
    const Row rows[] = {
        // the grammar's own words
        {L"1+", "Parsing error at column #2 : syntax error, unexpected end of file"},
        {L"a=1", "Parsing error at column #2 : syntax error, unexpected '=', expecting end of file or ';'"},
        {L"#", "Parsing error at column #1 : syntax error token"},
        // no such function
        {L"foo(1)", "'foo()' is not a valid parametric function."},
        {L"FooBar()", "'FooBar()' is not a valid parametric function."},
        {L"~a", "'bittoggle()' is not a valid parametric function."},
        {L"a'", "'complextranspose()' is not a valid parametric function."},
        {L"a.'", "'transpose()' is not a valid parametric function."},
        {L"a&b", "'bitand()' is not a valid parametric function."},
        {L"a|b", "'bitor()' is not a valid parametric function."},
        {L"a<<b", "'shiftleft()' is not a valid parametric function."},
        {L"a>>b", "'shiftright()' is not a valid parametric function."},
        {L"a.*b", "'matrixmult()' is not a valid parametric function."},
        {L"a./b", "'matrixdiv()' is not a valid parametric function."},
        {L"a.^b", "'matrixpow()' is not a valid parametric function."},
        {L"a[1]", "'subscript()' is not a valid parametric function."},
        {L"a[:,:]", "'subscript()' is not a valid parametric function."},
        {L"[1;2]", "'array()' is not a valid parametric function."},
        {L"[1:2]", "'vector()' is not a valid parametric function."},
        // wrong counts
        {L"sin()", "'sin()' does not have the correct number of arguments."},
        {L"SIN(1,2)", "'SIN()' does not have the correct number of arguments."},
        {L"add(1)", "'add()' does not have the correct number of arguments."},
        {L"clip(1,2,3,4)", "'clip()' does not have the correct number of arguments."},
        {L"sum()", "'sum()' does not have the correct number of arguments."},
        {L"roundclip(1,2,3)", "'roundclip()' does not have the correct number of arguments."},
        // the first message stands: outer before inner, left before right, main before definitions
        {L"foo(bar(1))", "'foo()' is not a valid parametric function."},
        {L"sin(foo(1),2)", "'sin()' does not have the correct number of arguments."},
        {L"a*foo(1)+bar(2)", "'foo()' is not a valid parametric function."},
        {L"x; a=foo(1); b=bar(2)", "'foo()' is not a valid parametric function."},
        {L"sin(1,2)+foo(1)", "'sin()' does not have the correct number of arguments."},
        // good ones
        {L"SIN(0)", ""},
        {L"Sin(0)", ""},
        {L"sum(1)", ""},
        {L"sum(,1)", ""},
        {L"sum(1,2,3,4,5)", ""},
        {L"add(1,2)", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(refusal(row.text), row.message) << toMultibyte(row.text);
    }
}

TEST(ZetEqnParser, textThatCannotBeNarrowed)
{
    // A half of a pair has no multibyte form in any locale.
    const ZetString text = {L'1', L'+', static_cast<wchar_t>(0xD800)};
    EXPECT_EQ(refusal(text), "Unknown exception from parametric expression parser.");

    const test::ZetScopedLocale plain("C");
    EXPECT_EQ(refusal(L"\"\x00e4\""), "Unknown exception from parametric expression parser.");
}

TEST(ZetEqnParser, thePointIsAPointInEveryLocale)
{
    const test::ZetScopedLocale comma("de_DE.UTF-8");
    EXPECT_EQ(valueOf(L"2.5 + .25 + 1.5e1"), 17.75);
    EXPECT_EQ(valueOf(L"sum(1,5)"), 6.0);
    ZetEqnParser parser;
    EXPECT_TRUE(parser.parse(L"\"\x00e4\"")) << "text beyond ASCII, where the locale has it";
    EXPECT_EQ(parser.evaluate().value<ZetString>(), L"\x00e4");
}

TEST(ZetEqnParser, nothingIsPosted)
{
    EXPECT_TRUE(test::postedBy([] {
                    ZetEqnParser parser;
                    parser.parse(L"1+");
                    parser.parse(L"foo(1)");
                    parser.parse(L"\"a\"-1");
                    parser.evaluate();
                }).empty());
}

TEST(ZetEqnParser, aRefusedParseKeepsItsTreesAndVariables)
{
    ZetEqnParser parser;
    EXPECT_FALSE(parser.parse(L"foo(pi)+x; y=pi"));
    EXPECT_EQ(parser.variables(), names({L"pi", L"x"}));
    EXPECT_FALSE(parser.value(L"pi").isValid()) << "constants are not bound";
    parser.setValue(L"x", 2.0);
    EXPECT_EQ(parser.evaluate().value<ZetString>(), L"2") << "the unknown function has no value";
    EXPECT_FALSE(parser.parse(L"foo(1)"));
    EXPECT_FALSE(parser.evaluate().isValid());
}

TEST(ZetEqnParser, aSyntaxErrorLeavesNothingButTheText)
{
    ZetEqnParser parser;
    EXPECT_FALSE(parser.parse(L"x+y; z=1; 2"));
    EXPECT_EQ(parser.expression(), L"x+y; z=1; 2");
    EXPECT_TRUE(parser.variables().empty());
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_EQ(parser.collapse(), 0);

    EXPECT_TRUE(parser.parse(L"x+1"));
    EXPECT_EQ(parser.variables(), names({L"x"}));
    EXPECT_FALSE(parser.parse(L"1+"));
    EXPECT_TRUE(parser.parse(L"")) << "the message is gone";
}

TEST(ZetEqnParser, parseOfItsOwnText)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"a_rather_long_name + 1"));
    ASSERT_TRUE(parser.parse(parser.expression()));
    EXPECT_EQ(parser.expression(), L"a_rather_long_name + 1");
    EXPECT_EQ(parser.variables(), names({L"a_rather_long_name"}));
}

TEST(ZetEqnParser, valuesOfUnknownNames)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x"));
    EXPECT_FALSE(parser.value(L"x").isValid());
    EXPECT_FALSE(parser.value(L"y").isValid());
    EXPECT_EQ(&parser.value(L"y"), &ZetEqnParser().value(L"z")) << "one invalid variant for all";
}

TEST(ZetEqnParser, theResultIsKeptUntilAVariableIsSet)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*2; y=4"));
    parser.setValue(L"x", 1.0);
    const ZetVariant first = parser.evaluate();
    EXPECT_EQ(parser.evaluate().implementation(), first.implementation());
    parser.setValue(L"unknown", 5.0);
    parser.setValue(L"y", 5.0);
    EXPECT_EQ(parser.evaluate().implementation(), first.implementation()) << "no such variable";
    parser.setValue(L"x", 1.0);
    const ZetVariant second = parser.evaluate();
    EXPECT_NE(second.implementation(), first.implementation());
    EXPECT_EQ(second.value<double>(), 2.0);
}

TEST(ZetEqnParser, theResultAsTheNextValue)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*2 - x*0"));
    parser.setValue(L"x", 1.0);
    for (int i = 0; i < 10; ++i) {
        parser.setValue(L"x", parser.evaluate());
    }
    EXPECT_EQ(valueOf(&parser), 2048.0);
    parser.setValue(L"x", parser.value(L"x"));
    EXPECT_EQ(valueOf(&parser), 2048.0);
}

TEST(ZetEqnParser, aValueOfAnotherVariable)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*y + x*x + y"));
    parser.setValue(L"x", 3.0);
    parser.setValue(L"y", parser.value(L"x"));
    EXPECT_EQ(parser.value(L"y").implementation(), parser.value(L"x").implementation());
    EXPECT_EQ(valueOf(&parser), 21.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(parser.value(L"y").value<double>(), 3.0);
    EXPECT_EQ(valueOf(&parser), 43.0);
    parser.setValue(L"y", parser.evaluate());
    EXPECT_EQ(parser.value(L"y").value<double>(), 43.0);
    EXPECT_EQ(valueOf(&parser), 5.0 * 43.0 + 25.0 + 43.0);
}

TEST(ZetEqnParser, aValueThatLiesInTheOneItReplaces)
{
    for (const bool isEvaluated : {false, true}) {
        SCOPED_TRACE(isEvaluated);
        ZetEqnParser parser;
        ASSERT_TRUE(parser.parse(L"select(n, x, x + x)"));
        parser.setValue(L"n", 1.0);
        parser.setValue(L"x", ZetVariantList{ZetVariant(L"first"), ZetVariant(21.0)});
        const ZetVariant& holder = isEvaluated ? parser.evaluate() : parser.value(L"x");
        const auto& list = *static_cast<const ZetVariantList*>(holder.data());
        ASSERT_EQ(list.size(), 2U);
        parser.setValue(L"x", list[1]);
        EXPECT_EQ(parser.value(L"x").value<double>(), 21.0);
        parser.setValue(L"n", 2.0);
        EXPECT_EQ(valueOf(&parser), 42.0);
    }
}

TEST(ZetEqnParser, aValueIsSharedWithTheCaller)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*x"));
    ZetVariant value = 3.0;
    parser.setValue(L"x", value);
    *static_cast<double*>(value.data()) = 4.0;
    EXPECT_EQ(valueOf(&parser), 16.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(value.value<double>(), 4.0);
    EXPECT_EQ(valueOf(&parser), 25.0);
}

/// Another implementation of the kind of plain doubles.
class OwnDouble : public ZetVariantImpl<double>
{
public:
    explicit OwnDouble(double value) : ZetVariantImpl(value) {}
    OwnDouble* clone() const override { return new OwnDouble(*this); }
};

TEST(ZetEqnParser, aNumberOverANumberLeavesCopiesAlone)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x + x*y"));
    parser.setValue(L"y", 10.0);
    parser.setValue(L"x", 1.0);
    parser.setValue(L"x", 2.0);
    EXPECT_EQ(valueOf(&parser), 22.0);

    const ZetVariant held = parser.value(L"x");
    parser.setValue(L"x", 3.0);
    EXPECT_EQ(held.value<double>(), 2.0);
    EXPECT_EQ(valueOf(&parser), 33.0);

    ZetEqnParser copy(parser);
    parser.setValue(L"x", 4.0);
    copy.setValue(L"y", 100.0);
    EXPECT_EQ(copy.value(L"x").value<double>(), 3.0);
    EXPECT_EQ(valueOf(&copy), 303.0);
    EXPECT_EQ(valueOf(&parser), 44.0);

    parser.setValue(L"y", parser.value(L"x"));
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(parser.value(L"y").value<double>(), 4.0);
    EXPECT_EQ(valueOf(&parser), 25.0);
}

TEST(ZetEqnParser, aNumberOverTheResult)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x"));
    parser.setValue(L"x", 1.0);
    const ZetVariant& result = parser.evaluate();
    const ZetVariant held = result;
    parser.setValue(L"x", 2.0);
    EXPECT_FALSE(result.isValid());
    EXPECT_EQ(held.value<double>(), 1.0);
    EXPECT_EQ(valueOf(&parser), 2.0);
    parser.setValue(L"x", 3.0);
    EXPECT_EQ(valueOf(&parser), 3.0);
}

TEST(ZetEqnParser, aFoldedNumberStays)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*y + x"));
    parser.setValue(L"x", 2.0);
    EXPECT_GT(parser.collapse(), 0);
    parser.setValue(L"y", 3.0);
    parser.setValue(L"x", 7.0);
    parser.setValue(L"y", 4.0);
    EXPECT_EQ(valueOf(&parser), 10.0);
}

TEST(ZetEqnParser, aNumberTakesTheKindAlong)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*x"));
    parser.setValue(L"x", 1.0);
    parser.setValue(L"x", 2);
    EXPECT_EQ(parser.value(L"x").typeName(), L"Int");
    parser.setValue(L"x", 3.0);
    EXPECT_EQ(parser.value(L"x").typeName(), L"Double");
    parser.setValue(L"x", ZetVariant(ZetVariantIFPtr(new OwnDouble(4.0))));
    EXPECT_NE(dynamic_cast<const OwnDouble*>(parser.value(L"x").implementation().get()), nullptr);
    EXPECT_EQ(valueOf(&parser), 16.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(dynamic_cast<const OwnDouble*>(parser.value(L"x").implementation().get()), nullptr);
    EXPECT_EQ(valueOf(&parser), 25.0);
}

TEST(ZetEqnParser, aValueGivenAwayIsSharedWithItsCopies)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x*x"));
    parser.setValue(L"x", 1.0);
    ZetVariant value = 3.0;
    ZetVariant copy = value;
    parser.setValue(L"x", std::move(value));
    *static_cast<double*>(copy.data()) = 4.0;
    EXPECT_EQ(parser.value(L"x").value<double>(), 4.0);
    EXPECT_EQ(valueOf(&parser), 16.0);
}

TEST(ZetEqnParser, heldResultsStay)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x+1"));
    parser.setValue(L"x", 1.0);
    const ZetVariant& result = parser.evaluate();
    const ZetVariant held = result;
    parser.setValue(L"x", 2.0);
    EXPECT_FALSE(result.isValid()) << "the parser has none now";
    EXPECT_EQ(held.value<double>(), 2.0);
    const ZetVariant none = result;
    EXPECT_EQ(parser.evaluate().value<double>(), 3.0);
    EXPECT_EQ(held.value<double>(), 2.0);
    EXPECT_FALSE(none.isValid());
}

TEST(ZetEqnParser, copiesAreIndependent)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x+y; y=2*x"));
    parser.setValue(L"x", 1.0);
    const ZetVariant result = parser.evaluate();

    ZetEqnParser copy(parser);
    EXPECT_EQ(copy.expression(), parser.expression());
    EXPECT_EQ(copy.variables(), parser.variables());
    EXPECT_EQ(copy.evaluate().implementation(), result.implementation()) << "the result comes along";
    EXPECT_EQ(copy.value(L"x").value<double>(), 1.0);
    copy.setValue(L"x", 10.0);
    EXPECT_EQ(valueOf(&copy), 30.0);
    EXPECT_EQ(valueOf(&parser), 3.0);

    ZetEqnParser assigned;
    ASSERT_TRUE(assigned.parse(L"old"));
    assigned = copy;
    EXPECT_EQ(assigned.variables(), names({L"x", L"y"}));
    EXPECT_EQ(valueOf(&assigned), 30.0);
    ZetEqnParser& self = assigned;
    assigned = self;
    EXPECT_EQ(valueOf(&assigned), 30.0);
}

TEST(ZetEqnParser, aCopyOfAFailureIsEmpty)
{
    for (const wchar_t* const text : {L"1+", L"foo(1)+x", L""}) {
        ZetEqnParser parser;
        parser.parse(text);
        ZetEqnParser copy;
        ASSERT_TRUE(copy.parse(L"a+b"));
        copy = parser;
        EXPECT_EQ(copy.expression(), L"") << toMultibyte(text);
        EXPECT_TRUE(copy.variables().empty()) << toMultibyte(text);
        EXPECT_FALSE(copy.evaluate().isValid()) << toMultibyte(text);
        EXPECT_EQ(ZetEqnParser(parser).expression(), L"") << toMultibyte(text);
    }
}

TEST(ZetEqnParser, collapseCounts)
{
    struct Row
    {
        const wchar_t* text;  // with the value 2 for v
        int changes;
    };
    const Row rows[] = {
        {L"7", 0},
        {L"x", 0},
        {L"x+3", 0},
        {L"2+3", 1},
        // one level in each pass
        {L"1+2+3", 2},
        {L"(1+2)*(3+4)", 3},
        // the variable, then the call with it
        {L"v+3", 2},
        {L"v+x", 1},
        {L"v", 1},
        {L"unaryplus(x)", 1},
        {L"unaryplus(unaryplus(x))", 2},
        // definitions too
        {L"x; a=1+2; b=v*3", 3},
    };
    for (const Row& row : rows) {
        ZetEqnParser parser;
        ASSERT_TRUE(parser.parse(row.text)) << toMultibyte(row.text);
        parser.setValue(L"v", 2.0);
        EXPECT_EQ(parser.collapse(), row.changes) << toMultibyte(row.text);
        EXPECT_EQ(parser.collapse(), 0) << toMultibyte(row.text);
    }
}

TEST(ZetEqnParser, collapseOfAVariableCountsOne)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"v; a=1+2+3"));
    parser.setValue(L"v", 2.0);
    EXPECT_EQ(parser.collapse(), 1) << "the changes before are not counted";
    ASSERT_TRUE(parser.parse(L"1+2; a=v"));
    parser.setValue(L"v", 2.0);
    EXPECT_EQ(parser.collapse(), 1 + 1) << "those after it are";
}

TEST(ZetEqnParser, collapseKeepsTheValue)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"v*3 + x - (1+2)"));
    parser.setValue(L"v", 2.0);
    EXPECT_GT(parser.collapse(), 0);
    EXPECT_EQ(parser.variables(), names({L"v", L"x"})) << "names stay listed, and come once";
    EXPECT_FALSE(parser.value(L"v").isValid());
    parser.setValue(L"v", 100.0);
    parser.setValue(L"x", 5.0);
    EXPECT_EQ(valueOf(&parser), 8.0) << "what is folded cannot be set";

    const ZetEqnParser copy(parser);
    EXPECT_EQ(copy.variables(), names({L"v", L"x"}));
}

TEST(ZetEqnParser, collapseFreezesEvaluatedDefinitions)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x+y; y=2*a; a=3"));
    parser.setValue(L"x", 1.0);
    EXPECT_EQ(parser.collapse(), 1) << "x alone: the definitions have not run";
    EXPECT_EQ(valueOf(&parser), 7.0);
    EXPECT_GT(parser.collapse(), 0);
    parser.setValue(L"y", 100.0);
    EXPECT_EQ(valueOf(&parser), 7.0);
}

TEST(ZetEqnParser, collapseLetsFailuresOut)
{
    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"\"a\"-1"));
    EXPECT_EQ(test::thrownBy([&] { parser.collapse(); }).text(), L"Invalid argument passed to 'subtract' function.");
    EXPECT_FALSE(parser.evaluate().isValid());
    EXPECT_TRUE(parser.parse(L"1+2"));
    EXPECT_EQ(valueOf(&parser), 3.0);
}

TEST(ZetEqnParser, collapseOfARefusedParse)
{
    ZetEqnParser parser;
    EXPECT_FALSE(parser.parse(L"foo(1)+x"));
    EXPECT_EQ(parser.collapse(), 1);
    parser.setValue(L"x", 2.0);
    EXPECT_EQ(parser.evaluate().value<ZetString>(), L"2");
    EXPECT_EQ(ZetEqnParser(parser).expression(), L"foo(1)+x") << "the unknown function is folded away";
}

TEST(ZetEqnParser, deepEquations)
{
    constexpr std::size_t depth = 20000;
    const auto times = [](std::size_t count, const wchar_t* text) {
        ZetString all;
        for (std::size_t i = 0; i < count; ++i) {
            all += text;
        }
        return all;
    };
    EXPECT_EQ(valueOf(ZetString(100000, L'(') + L"7" + ZetString(100000, L')')), 7.0);
    EXPECT_EQ(valueOf(ZetString(depth, L'-') + L"7"), 7.0);
    EXPECT_EQ(valueOf(L"1" + times(depth, L"+1")), 1.0 + depth);
    EXPECT_EQ(valueOf(times(depth, L"abs(") + L"7" + ZetString(depth, L')')), 7.0);
    EXPECT_EQ(valueOf(times(depth, L"0?1:") + L"7"), 7.0);
    EXPECT_FALSE(ZetEqnParser().parse(times(depth, L"foo(") + ZetString(depth, L')')));
    EXPECT_FALSE(ZetEqnParser().parse(times(depth, L"[") + L"1" + ZetString(depth, L']')));

    ZetEqnParser parser;
    ASSERT_TRUE(parser.parse(L"x" + times(depth, L"-x")));
    parser.setValue(L"x", 1.0);
    ZetEqnParser copy(parser);
    EXPECT_EQ(valueOf(&copy), 1.0 - depth);
    parser.setValue(L"x", 2.0);
    EXPECT_EQ(valueOf(&parser), 2.0 * (1.0 - depth));

    constexpr int folded = 2000;
    ASSERT_TRUE(parser.parse(ZetString(folded, L'-') + L"x"));
    parser.setValue(L"x", 1.0);
    EXPECT_EQ(parser.collapse(), folded + 1);
    EXPECT_EQ(valueOf(&parser), 1.0);
}

}  // namespace
}  // namespace zet
