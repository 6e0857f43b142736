#include "eqn/ZetFusedEvaluation"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetBlockCount"
#include "support/ZetCollectingHandler"
#include "support/ZetEachKernelBuild"
#include "support/ZetFunctionCalls"
#include "support/ZetNoMemory"
#include "support/ZetScopedLocale"
#include "support/ZetTwoWays"

namespace zet {
namespace test {
namespace {

struct Binding
{
    const wchar_t* name;
    std::wstring value;
};

// The variables of the equations here.
const Binding kVariables[] = {
    {L"a", L"U8[1 2 3 4 5]"},
    {L"b", L"I16[10 20 30 40 50]"},
    {L"c", L"Double[0.5 -1 2]"},
    {L"w", L"U16/2[1 9 2 9 3 9 4 9 5 9]"},
    {L"n", L"Double[nan 1 inf]"},
    {L"f", L"ComplexFloat[(1,2) (3,4) (5,6)]"},
    {L"z", L"ComplexDouble[(1,2) (3,-4) (0,1)]"},
    {L"l", L"I64[1 2 3]"},
    {L"o", L"empty"},
    {L"t", L"Type U8"},
    {L"x", L"'abc'"},
    {L"m", L"Scalar 5 m"},
    {L"s", L"Scalar 2 s"},
    {L"i", L"(0,1)"},
    {L"k", L"Int 3"},
};

/// What an outcome is, in one line: a value as text, or "!" and the message.
std::wstring textOf(const ZetEqnOutcome& outcome)
{
    return outcome.hasFailed() ? L"!" + outcome.message.text() : valueText(outcome.value);
}

/// An equation over the variables above, evaluated both ways.
class Equation : public ZetTwoWays
{
public:
    explicit Equation(const std::wstring& text)
    {
        EXPECT_EQ(parse(text), L"");
        EXPECT_FALSE(isRefused()) << toMultibyte(text);
        for (const Binding& binding : kVariables) {
            setValue(binding.name, makeValue(binding.value));
        }
    }

    /// The outcome, if it is the same both ways.
    std::wstring outcome()
    {
        const ZetOutcomes outcomes = evaluate();
        EXPECT_EQ(outcomes.difference, L"");
        return textOf(outcomes.fused);
    }
};

struct Row
{
    const wchar_t* equation;
    std::wstring outcome;
};

void expectOutcomes(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(ZetString(row.equation)));
        Equation equation(row.equation);
        EXPECT_EQ(equation.outcome(), row.outcome);
        equation.setValue(L"a", makeValue(kVariables[0].value));
        EXPECT_EQ(equation.outcome(), row.outcome) << "the second time";
    }
}

std::wstring refusedBy(const wchar_t* function)
{
    return L"!" + refusal(function);
}

class ZetFusedEvaluation : public ZetEachKernelBuild
{
private:
    ZetScopedLocale m_plainNumbers{"C"};
};
ZET_FOR_EACH_KERNEL_BUILD(ZetFusedEvaluation);

TEST_P(ZetFusedEvaluation, isOnUnlessATestTurnsItOff)
{
    EXPECT_TRUE(internal::useFusedEvaluation(false));
    EXPECT_FALSE(internal::useFusedEvaluation(false));
    EXPECT_FALSE(internal::useFusedEvaluation(true));
    EXPECT_TRUE(internal::useFusedEvaluation(true));
}

TEST_P(ZetFusedEvaluation, tilesOfOneEquation)
{
    expectOutcomes({
        {L"a+b", L"Double[11 22 33 44 55]"},
        {L"(b-a)/(b+a)*11", L"Double[9 9 9 9 9]"},
        {L"2*a*a-a+0.5", L"Double[1.5 6.5 15.5 28.5 45.5]"},
        {L"roundclip(b*6.3, t, 0, 255)", L"U8[63 126 189 252 255]"},
        {L"w*10-b", L"Double[0 0 0 0 0]"},
        {L"k*a", L"Double[3 6 9 12 15]"},
        {L"m*a-s", L"Double[3 8 13 18 23]"},
        // two operators at a time, in every order
        {L"c-(c*2-1)", L"Double[0.5 2 -1]"},
        {L"(c*2-1)-c", L"Double[-0.5 -2 1]"},
        {L"2-(c+c)", L"Double[1 4 -2]"},
        {L"8/(c-3)", L"Double[-3.2 -2 -8]"},
        {L"(c-3)/8", L"Double[-0.3125 -0.5 -0.125]"},
        {L"c/(8-c*4)+c/2", L"Double[0.333333333 -0.583333333 inf]"},
        {L"(a-w)/(a+w)", L"Double[0 0 0 0 0]"},
        {L"(b+b)/(b-b)", L"Double[inf inf inf inf inf]"},
        {L"(a+a)/(b-b*0)", L"Double[0.2 0.2 0.2 0.2 0.2]"},
        {L"(c+c)/(c-(c+c))", L"Double[-2 -2 -2]"},
        {L"(a+a)/(a+a)-(b-b)/(b+b)", L"Double[1 1 1 1 1]"},
        {L"(a-x)/(a+x); x=a*3", L"Double[-0.5 -0.5 -0.5 -0.5 -0.5]"},
        {L"(c-1)*(c+1)-(2-c)/(c-4)", L"Double[-0.321428571 0.6 3]"},
        // a tile that is its own operand
        {L"a+a", L"Double[2 4 6 8 10]"},
        {L"n-n", L"Double[nan 0 nan]"},
        {L"n*n+n*n", L"Double[nan 2 inf]"},
        {L"max(c,c)-min(c,c)", L"Double[0 0 0]"},
        // the surplus of the longer tile is dropped, where the two meet
        {L"a*c", L"Double[0.5 -2 6]"},
        {L"(a+b)*(a*c)", L"Double[5.5 -44 198]"},
        {L"(a*c)-(a+b)+a", L"Double[-9.5 -22 -24]"},
        {L"a+sum(a*c)", L"Double[5.5 6.5 7.5 8.5 9.5]"},
        {L"a*max(c*c)-median(a*c)", L"Double[3.5 7.5 11.5 15.5 19.5]"},
        // complex tiles and numbers
        {L"c+i", L"ComplexDouble[(0.5,1) (-1,1) (2,1)]"},
        {L"z*i", L"ComplexDouble[(-2,1) (4,3) (-1,0)]"},
        {L"f+z", L"ComplexDouble[(2,4) (6,0) (5,7)]"},
        {L"z*z+z", L"ComplexDouble[(-2,6) (-4,-28) (-1,1)]"},
        {L"z*f-z", L"ComplexDouble[(-4,2) (22,4) (-6,4)]"},
        {L"z-z*f", L"ComplexDouble[(4,-2) (-22,-4) (6,-4)]"},
        {L"(z+f)*z", L"ComplexDouble[(-6,8) (18,-24) (-7,5)]"},
        {L"z/(f-c)*0+z-a", L"ComplexDouble[(0,2) (1,-4) (-3,1)]"},
        {L"real(z)*a+imag(z)", L"Double[3 2 1]"},
        {L"abs(z)*0+norm(z)", L"ComplexDouble[(5,0) (25,0) (1,0)]"},
        {L"cmplx(a,c)*2", L"ComplexDouble[(2,1) (4,-2) (6,4)]"},
    });
}

TEST_P(ZetFusedEvaluation, typesThatAnOperationDoesNotServe)
{
    expectOutcomes({
        {L"f+1", L"empty"},
        {L"(f+1)+a", L"empty"},
        {L"a*(l-1)", L"empty"},
        {L"sqrt(l)+a", L"empty"},
        {L"floor(z)*a", L"empty"},
        {L"clip(z,0,1)-a", L"empty"},
        {L"atan2(a,b)+1", L"empty"},
        {L"ldexp(a,2)*b", L"empty"},
        {L"-f", L"empty"},
        {L"cmplx(z,1)", L"empty"},
        {L"o+a", L"empty"},
        {L"sum(f+1)", L"0"},
        {L"sum(f+1,2)", L"2"},
        {L"a+sum(l*2)", L"Double[1 2 3 4 5]"},
        {L"max(a,f*2)", L"empty"},
        {L"max(a,l)", L"empty"},
        {L"max(c,f)", L"Double[1 3 5]"},
        {L"mean(o)", L"nan"},
    });
}

TEST_P(ZetFusedEvaluation, reductionsOfWhatIsComputed)
{
    expectOutcomes({
        {L"sum(a*b)", L"550"},
        {L"min(a-b)", L"-45"},
        {L"max(b-a)", L"45"},
        {L"max(a-b)", L"2.22507386e-308"},
        {L"mean(a+b)", L"33"},
        {L"median(b-a)", L"27"},
        {L"median(a+0,b)", L"5"},
        {L"sum(w+0,w)", L"39"},  // a total of a tile that was given steps through its block
        {L"sum(z*1,1)", L"Scalar (5,-1)"},
        {L"sum(z*1)", L"0"},
        // inputs used twice
        {L"(a-min(a))/(max(a)-min(a))", L"Double[0 0.25 0.5 0.75 1]"},
        {L"a*b-mean(a*b)", L"Double[-100 -70 -20 50 140]"},
        {L"y-sum(y)/5; y=a*b", L"Double[-100 -70 -20 50 140]"},
        {L"sum((a-mean(a))^2)/5", L"2"},
        {L"min(a*2,7)", L"Double[2 4 6 7 7]"},
        {L"min(a*2,b-8,7)", L"Double[2 4 6 7 7]"},
    });
}

TEST_P(ZetFusedEvaluation, equalityOfTiles)
{
    expectOutcomes({
        {L"c*2 == c+c", L"Bool 1"},
        {L"c*2 != c+c", L"Bool 0"},
        {L"a == a", L"Bool 1"},
        {L"a+0 == a", L"Bool 0"},
        {L"o == o", L"Bool 1"},
        {L"l+1 == l+1", L"Bool 0"},
        {L"y == y; y=l+1", L"Bool 1"},
        {L"(n-n) == (n-n)", L"Bool 1"},
        {L"(c+1e-16) == c", L"Bool 1"},
        {L"(c == c) + a*2", L"Double[3 5 7 9 11]"},
    });
}

TEST_P(ZetFusedEvaluation, failuresComeInTheOrderOfTheOperands)
{
    expectOutcomes({
        {L"(a-x)+(a/x)", refusedBy(L"subtract")},
        {L"(a/x)+(a-x)", refusedBy(L"divide")},
        {L"(a+b)*(a-x)", refusedBy(L"subtract")},
        {L"(a*b)-(-x)", refusedBy(L"unaryminus")},
        {L"(a*b+c)-sqrt(x)/(a-x)", refusedBy(L"sqrt")},
        {L"a*2-x", refusedBy(L"subtract")},
        {L"x/(a*2)", refusedBy(L"divide")},
        {L"a*x", refusedBy(L"multiply")},
        {L"(a+1)<(b+1)", refusedBy(L"lessthan")},
        {L"(a+1)%2", refusedBy(L"mod")},
        {L"hypot(a+1,sqrt(x))", refusedBy(L"sqrt")},
        {L"2^(a+1)", refusedBy(L"pow")},
        {L"(a*2)+(m+s)", L"!Cannot convert physical units from 'm' to 's'"},
        // the right side of an equality is the first
        {L"(a-x) == (a/x)", refusedBy(L"divide")},
        {L"(a-x) != (a+1)", refusedBy(L"subtract")},
        // a reduction takes its operands one by one, the other functions all of theirs
        {L"min(a+1, x, sqrt(x))", refusedBy(L"min")},
        {L"max(a-x, sqrt(x))", refusedBy(L"subtract")},
        {L"sum(a+1, b+1, x)", refusedBy(L"sum")},
        {L"median(a+1, z, sqrt(x))", refusedBy(L"median")},
        {L"clip(a+1, x, sqrt(x))", refusedBy(L"sqrt")},
        {L"clip(a+1, x, 1)", refusedBy(L"clip")},
        {L"roundclip(a-x, sqrt(x), 0, 1)", refusedBy(L"subtract")},
        {L"roundclip(a+1, x, 0, 1)", refusedBy(L"roundclip")},
        // definitions come before what stands to their left, used or not
        {L"(a-x)+y; y=sqrt(x)", refusedBy(L"sqrt")},
        {L"a+b; y=sqrt(x)", refusedBy(L"sqrt")},
        {L"y; y=a-x; v=a/x", refusedBy(L"divide")},
    });
}

TEST_P(ZetFusedEvaluation, branchesThatAreNotTaken)
{
    expectOutcomes({
        {L"1 ? a+1 : a-x", L"Double[2 3 4 5 6]"},
        {L"0 ? a-x : a+1", L"Double[2 3 4 5 6]"},
        {L"(0 ? a-x : a+1)*2", L"Double[4 6 8 10 12]"},
        {L"sum(a*b) > 500 ? b-a : a-x", L"Double[9 18 27 36 45]"},
        {L"0*(1 ? a : sqrt(x))+(0 ? sqrt(x) : b)", L"Double[10 20 30 40 50]"},
        {L"select(1, a*2, a-x)", L"Double[2 4 6 8 10]"},
        {L"a+select(2, a-x, b)", L"Double[11 22 33 44 55]"},
        {L"select(0, a-x)", L"0"},
        {L"select(3, a, b)", refusedBy(L"select")},
        {L"select(a+1, a, b)", refusedBy(L"select")},
        {L"0 ? a+1 : a-x", refusedBy(L"subtract")},
        // both sides of these are always evaluated
        {L"1 || a-x", refusedBy(L"subtract")},
        {L"0 && sqrt(x)", refusedBy(L"sqrt")},
    });
}

TEST_P(ZetFusedEvaluation, definitionsKeepTheirValues)
{
    struct Definition
    {
        const wchar_t* equation;
        std::wstring outcome;
        std::vector<Binding> values;  // afterwards
    };
    const Definition rows[] = {
        {L"y+1; y=a*2", L"Double[3 5 7 9 11]", {{L"y", L"Double[2 4 6 8 10]"}}},
        {L"y*y-y; y=a+c", L"Double[0.75 0 20]", {{L"y", L"Double[1.5 1 5]"}}},
        {L"sum(y)+a; y=v-1; v=a*2",
         L"Double[26 27 28 29 30]",
         {{L"y", L"Double[1 3 5 7 9]"}, {L"v", L"Double[2 4 6 8 10]"}}},
        {L"y; y=a*2", L"Double[2 4 6 8 10]", {{L"y", L"Double[2 4 6 8 10]"}}},
        {L"a+1; y=v*2; v=a-1", L"Double[2 3 4 5 6]", {{L"v", L"Double[0 1 2 3 4]"}, {L"y", L"unset"}}},
        {L"; y=v*2; v=a-1", L"Double[0 2 4 6 8]", {{L"v", L"Double[0 1 2 3 4]"}}},
        {L"y-v; y=a+1; v=a*2; y=x", L"Double[0 -1 -2 -3 -4]", {{L"y", L"Double[2 3 4 5 6]"}}},
        // those that come before a failure have theirs
        {L"y-x; y=a*2", refusedBy(L"subtract"), {{L"y", L"Double[2 4 6 8 10]"}}},
        {L"u+y; y=a-x; u=a*2", refusedBy(L"subtract"), {{L"y", L"unset"}, {L"u", L"Double[2 4 6 8 10]"}}},
        {L"y+f; y=f+1", L"empty", {{L"y", L"empty"}}},
    };
    for (const Definition& row : rows) {
        SCOPED_TRACE(toMultibyte(ZetString(row.equation)));
        Equation equation(row.equation);
        EXPECT_EQ(equation.outcome(), row.outcome);
        for (const Binding& binding : row.values) {
            EXPECT_EQ(valueText(equation.value(binding.name)), binding.value) << toMultibyte(ZetString(binding.name));
        }
    }
}

// A definition that uses itself, or one to its left, has the value of the evaluation before.
TEST_P(ZetFusedEvaluation, definitionsGoOnFromTheirLastValues)
{
    Equation equation(L"y+v; y=a*10; a=a+y*0+1; v=y");
    equation.setValue(L"y", 0.0);
    const std::wstring outcomes[] = {L"Double[20 30 40 50 60]", L"Double[50 70 90 110 130]",
                                     L"Double[70 90 110 130 150]"};
    for (const std::wstring& outcome : outcomes) {
        EXPECT_EQ(equation.outcome(), outcome);
        equation.setValues(L"v", ZetVariant(), ZetVariant());
    }
}

TEST_P(ZetFusedEvaluation, aVariableMayChangeItsKind)
{
    Equation equation(L"x*2+c");
    const std::vector<Row> rows = {
        {L"Double[1 2 3]", L"Double[2.5 3 8]"},
        {L"U8[1 2 3]", L"Double[2.5 3 8]"},
        {L"1.5", L"Double[3.5 2 5]"},
        {L"(0,1)", L"ComplexDouble[(0.5,2) (-1,2) (2,2)]"},
        {L"ComplexDouble[(1,1) (0,0) (0,-1)]", L"ComplexDouble[(2.5,2) (-1,0) (2,-2)]"},
        {L"U8/2[1 0 2 0]", L"Double[2.5 3]"},
        {L"ComplexFloat[(1,1)]", L"empty"},
        {L"I64[1 2 3]", L"empty"},
        {L"Scalar 2 m", L"Double[4.5 3 6]"},
        {L"Bool 1", L"Double[2.5 1 4]"},
        {L"empty", L"empty"},
        {L"Type U8", L"'U8U8'"},
        {L"'ab'", L"'abab'"},
        {L"unset", L"''"},
        {L"Double[1 2 3 4 5 6]", L"Double[2.5 3 8]"},
    };
    for (const Row& before : rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(toMultibyte(ZetString(before.equation) + L", then " + row.equation));
            equation.setValue(L"x", makeValue(before.equation));
            EXPECT_EQ(equation.outcome(), before.outcome);
            equation.setValue(L"x", makeValue(row.equation));
            EXPECT_EQ(equation.outcome(), row.outcome);
        }
    }
}

/// Doubles of many sizes: about the length of a strip, and of several.
const unsigned long kSizes[] = {0, 1, 2, 31, 511, 512, 513, 1024, 1025, 1700};

Values ramp(unsigned long size, double first, double step)
{
    Values values;
    for (unsigned long i = 0; i < size; ++i) {
        values.push_back(first + step * static_cast<double>(i % 100));
    }
    return values;
}

TEST_P(ZetFusedEvaluation, stripsOfTilesOfEveryShape)
{
    struct Shape
    {
        ZetDataType::Type type;
        long increment;
        unsigned long offset;
    };
    const Shape shapes[] = {{ZetDataType::U8, 1, 0},     {ZetDataType::U8, 1, 3},     {ZetDataType::I16, 2, 1},
                            {ZetDataType::U32, 1, 2},    {ZetDataType::Float, 1, 0},  {ZetDataType::Float, 3, 0},
                            {ZetDataType::Double, 1, 0}, {ZetDataType::Double, 1, 1}, {ZetDataType::Double, 2, 4}};
    for (const unsigned long size : kSizes) {
        for (const Shape& left : shapes) {
            for (const Shape& right : shapes) {
                const ZetTilePixels x(left.type, ramp(size, 1.0, 1.0), left.increment, left.offset);
                const ZetTilePixels y(right.type, ramp(size + 7, 100.0, -1.0), right.increment, right.offset);
                Values expected;
                for (unsigned long i = 0; i < size; ++i) {
                    const double a = elementAt(x.tile, i).real();
                    const double b = elementAt(y.tile, i).real();
                    expected.push_back((a - b) / (a + b) * 127.5 + std::sqrt(b * b - 0.5) * a);
                }
                Equation equation(L"(x-y)/(x+y)*127.5+sqrt(y*y-0.5)*x");
                equation.setValue(L"x", x.tile);
                equation.setValue(L"y", y.tile);
                const ZetOutcomes outcomes = equation.evaluate();
                SCOPED_TRACE(testing::Message() << "size " << size << " types " << left.type << " " << right.type);
                EXPECT_EQ(outcomes.difference, L"");
                expectTile(held<ZetEqnTile>(outcomes.fused.value), ZetDataType::Double, expected);
            }
        }
    }
}

// Sums whose bits tell the order of the additions, over the strips of what is computed and of tiles as they are.
TEST_P(ZetFusedEvaluation, sumsRunFromTheFirstElementToTheLast)
{
    for (const unsigned long size : kSizes) {
        for (const ZetDataType::Type type : {ZetDataType::Double, ZetDataType::Float, ZetDataType::I16}) {
            for (const long increment : {1L, 2L}) {
                Values values = ramp(size, -20.0, 1.0);
                for (std::complex<double>& x : values) {
                    x *= type == ZetDataType::I16 ? 300.0 : 0.1 * std::ldexp(1.0, static_cast<int>(x.real()) / 4);
                }
                const ZetTilePixels x(type, values, increment);
                double sum = 0.0;
                double sumOfComputed = 0.0;
                double least = std::numeric_limits<double>::max();
                double greatest = std::numeric_limits<double>::min();
                for (unsigned long i = 0; i < size; ++i) {
                    const double element = elementAt(x.tile, i).real();
                    sum += element;
                    sumOfComputed += element * 3.0 - 0.7;
                    least = std::min(least, element * 3.0 - 0.7);
                    greatest = std::max(greatest, element * 3.0 - 0.7);
                }
                const struct
                {
                    const wchar_t* equation;
                    double value;
                } rows[] = {{L"sum(x)", sum},
                            {L"sum(x*3-0.7)", sumOfComputed},
                            {L"sum(y); y=x*3-0.7", sumOfComputed},
                            {L"mean(x*3-0.7)", sumOfComputed / static_cast<double>(size)},
                            {L"sum(x*3-0.7,1)", sumOfComputed + 1.0},
                            {L"min(x*3-0.7)", least},
                            {L"max(x*3-0.7)", greatest}};
                for (const auto& row : rows) {
                    SCOPED_TRACE(testing::Message() << toMultibyte(ZetString(row.equation)) << " of " << size
                                                    << " elements of type " << type << ", increment " << increment);
                    Equation equation(row.equation);
                    equation.setValue(L"x", x.tile);
                    const ZetOutcomes outcomes = equation.evaluate();
                    EXPECT_EQ(outcomes.difference, L"");
                    EXPECT_TRUE(isSame(outcomes.fused.value.value<double>(), row.value));
                }
            }
        }
    }
}

TEST_P(ZetFusedEvaluation, theResultIsAVariableOfTheNextEvaluation)
{
    for (const bool isHeld : {false, true}) {
        for (const unsigned long size : kSizes) {
            SCOPED_TRACE(testing::Message() << "size " << size << (isHeld ? " held" : " let go"));
            Equation equation(L"x*2+1");
            equation.setValue(L"x", ownTile(ZetDataType::Double, ramp(size, 0.0, 1.0)));
            std::vector<ZetVariant> results;
            for (int round = 0; round < 8; ++round) {
                const ZetOutcomes outcomes = equation.evaluate();
                EXPECT_EQ(outcomes.difference, L"");
                equation.setValues(L"x", outcomes.fused.value, outcomes.plain.value);
                results.push_back(isHeld || round == 7 ? outcomes.fused.value : ZetVariant());
            }
            for (std::size_t round = isHeld ? 0 : 7; round < 8; ++round) {
                const double factor = std::ldexp(1.0, static_cast<int>(round) + 1);
                expectTile(held<ZetEqnTile>(results[round]), ZetDataType::Double, ramp(size, factor - 1.0, factor));
            }
        }
    }
}

TEST_P(ZetFusedEvaluation, whatSomebodyHoldsKeepsItsBytes)
{
    struct Holder
    {
        ZetVariant value;
        ZetEqnTile tile;
        ZetBufferPtr buffer;
    };
    Equation equation(L"x*x-3*x; y=x+1");
    std::vector<Holder> holders;
    for (int round = 0; round < 12; ++round) {
        equation.setValue(L"x", ownTile(ZetDataType::Double, ramp(700, round, 1.0)));
        const ZetOutcomes outcomes = equation.evaluate();
        EXPECT_EQ(outcomes.difference, L"");
        const ZetVariant& value = outcomes.fused.value;
        holders.push_back({round % 3 == 0 ? value : ZetVariant(),
                           round % 3 == 1 ? held<ZetEqnTile>(value) : ZetEqnTile(),
                           round % 3 == 2 ? held<ZetEqnTile>(value).buffer() : ZetBufferPtr()});
    }
    for (int round = 0; round < 12; ++round) {
        const Holder& holder = holders[static_cast<std::size_t>(round)];
        const ZetEqnTile tile = round % 3 == 0   ? held<ZetEqnTile>(holder.value)
                                : round % 3 == 1 ? holder.tile
                                                 : ZetEqnTile(holder.buffer, ZetDataType::Double, 700);
        Values expected = ramp(700, round, 1.0);
        for (std::complex<double>& x : expected) {
            x = x.real() * x.real() - 3.0 * x.real();
        }
        SCOPED_TRACE(round);
        expectTile(tile, ZetDataType::Double, expected);
    }
}

TEST_P(ZetFusedEvaluation, aBlockThatServesAgainHasNoNoteOfItsElements)
{
    Equation equation(L"a*2");
    for (int round = 0; round < 3; ++round) {
        equation.setValue(L"a", makeValue(L"U8[1 2 3]"));
        const ZetVariant result = equation.evaluate().fused.value;
        EXPECT_EQ(held<ZetEqnTile>(result).buffer()->dataType(), ZetDataType());
        held<ZetEqnTile>(result).buffer()->setDataType(ZetDataType::Double);
    }
}

TEST_P(ZetFusedEvaluation, aTileThatIsWrittenInPlaceIsReadAnew)
{
    Equation equation(L"x*2+sum(x)");
    const ZetEqnTile x = ownTile(ZetDataType::Double, {1.0, 2.0});
    equation.setValue(L"x", x);
    EXPECT_EQ(equation.outcome(), L"Double[5 7]");
    x.elements<double>()[0] = 10.0;
    EXPECT_EQ(equation.outcome(), L"Double[5 7]") << "the result is kept until a variable is set";
    equation.setValue(L"x", x);
    EXPECT_EQ(equation.outcome(), L"Double[32 16]");
}

TEST_P(ZetFusedEvaluation, foldedTilesAreConstants)
{
    Equation equation(L"(x*2+1)*y");
    equation.setValue(L"x", makeValue(L"U8[1 2 3]"));
    EXPECT_EQ(equation.collapse(), L"");
    for (const double y : {1.0, 2.0, 3.0}) {
        equation.setValue(L"y", ownTile(ZetDataType::Double, {y, y, y}));
        const ZetOutcomes outcomes = equation.evaluate();
        EXPECT_EQ(outcomes.difference, L"");
        expectTile(held<ZetEqnTile>(outcomes.fused.value), ZetDataType::Double, {3.0 * y, 5.0 * y, 7.0 * y});
    }
    Equation failing(L"(a-x)*c");
    EXPECT_EQ(failing.collapse(), L"") << "the same message both ways";
}

TEST_P(ZetFusedEvaluation, copiesGoTheirOwnWays)
{
    Equation equation(L"x*2+1");
    equation.setValue(L"x", makeValue(L"Double[1 2]"));
    EXPECT_EQ(equation.outcome(), L"Double[3 5]");
    Equation copy(equation);
    equation.setValue(L"x", makeValue(L"Double[10 20]"));
    EXPECT_EQ(equation.outcome(), L"Double[21 41]");
    EXPECT_EQ(copy.outcome(), L"Double[3 5]");
    copy.setValue(L"x", makeValue(L"Double[0 0]"));
    EXPECT_EQ(copy.outcome(), L"Double[1 1]");
    EXPECT_EQ(equation.outcome(), L"Double[21 41]");
}

TEST_P(ZetFusedEvaluation, memoryThatCannotBeHad)
{
    for (const wchar_t* const text : {L"a*b+a", L"-(a+b)*2", L"y*2; y=a-b", L"sqrt(a)*b-a/2"}) {
        SCOPED_TRACE(toMultibyte(ZetString(text)));
        {
            Equation equation(text);
            const ZetNoMemory none;
            const ZetOutcomes outcomes = equation.evaluate();
            EXPECT_EQ(outcomes.difference, L"");
            EXPECT_EQ(textOf(outcomes.fused), L"!Cannot allocate '40' bytes for buffer.");
            EXPECT_EQ(outcomes.fused.message.file(), L"ZetBuffer");
        }
        Equation equation(text);
        {
            const ZetNoMemory none;
            const ZetCollectingHandler posted;
            EXPECT_EQ(equation.outcome(), L"empty");
            const std::vector<ZetString> texts = posted.texts();
            EXPECT_GE(texts.size(), 2u) << "one from each way, and one from each node where it goes node by node";
            for (const ZetString& message : texts) {
                EXPECT_EQ(message, L"Cannot allocate '40' bytes for buffer.");
            }
        }
        equation.setValue(L"a", makeValue(L"U8[1 2]"));
        const ZetOutcomes outcomes = equation.evaluate();
        EXPECT_EQ(outcomes.difference, L"");
        EXPECT_EQ(held<ZetEqnTile>(outcomes.fused.value).size(), 2u);
    }
}

// An equality needs the tile of its right side before the left side is evaluated.
TEST_P(ZetFusedEvaluation, anEqualityThatHasNoMemory)
{
    Equation failing(L"(a-x) == c*2");
    Equation equation(L"a*2 == c*2");
    const ZetNoMemory none;
    EXPECT_EQ(failing.outcome(), L"!Cannot allocate '24' bytes for buffer.");
    const ZetCollectingHandler posted;
    EXPECT_EQ(equation.outcome(), L"Bool 0");
    const ZetString ofLeft = L"Cannot allocate '40' bytes for buffer.";
    const ZetString ofRight = L"Cannot allocate '24' bytes for buffer.";
    EXPECT_EQ(posted.texts(), (std::vector<ZetString>{ofRight, ofLeft, ofRight, ofLeft}));
}

TEST_P(ZetFusedEvaluation, onlyResultsHaveBlocks)
{
    struct Count
    {
        const wchar_t* equation;
        int first;  // blocks of the first evaluation
    };
    const Count rows[] = {
        {L"a*b+a/b", 1},
        {L"(a*b-a)/(b-0.5)+sqrt(a*2)*max(a,b)", 1},
        {L"roundclip(a*b+a/b, t, 0, 255)", 1},
        {L"sum(a*b+a/b)", 0},
        {L"a*mean(b+a)+b*mean(b-a)", 1},
        {L"y*2+y; y=a*b+a/b", 2},

    };
    for (const Count& row : rows) {
        SCOPED_TRACE(toMultibyte(ZetString(row.equation)));
        ZetEqnParser parser;
        ASSERT_TRUE(parser.parse(row.equation));
        for (const Binding& binding : kVariables) {
            parser.setValue(binding.name, makeValue(binding.value));
        }
        const ZetVariant a = makeValue(L"U8[5 4 3 2 1]");
        ZetBlockCount blocks;
        parser.evaluate();
        EXPECT_EQ(blocks.take(), row.first);
        parser.setValue(L"a", a);
        parser.evaluate();
        EXPECT_EQ(blocks.take(), 0) << "the blocks of results that nobody holds serve again";
        const ZetVariant result = parser.evaluate();
        parser.setValue(L"a", a);
        parser.evaluate();
        EXPECT_EQ(blocks.take(), row.first > 0 ? 1 : 0) << "the block of a result that somebody holds does not";
    }
}

}  // namespace
}  // namespace test
}  // namespace zet
