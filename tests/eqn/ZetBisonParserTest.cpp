#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>

#include "eqn/ZetFlexScanner"
#include "support/ZetGrammarOracle"
#include "support/ZetTreeDump"
#include "zet_grammar.hh"

namespace zet {
namespace internal {
namespace {

struct Outcome
{
    int status;
    ZetParsedEquations equations;
    std::string errorText;
    std::string thrown;
};

Outcome parse(const std::string& text, const ZetParsedEquations& before = {})
{
    Outcome outcome = {-1, before, "", ""};
    std::istringstream in(text);
    ZetFlexScanner scanner(&in);
    ZetBisonParser parser(&scanner, &outcome.equations, &outcome.errorText);
    try {
        outcome.status = parser.parse();
    } catch (const std::logic_error& error) {
        outcome.thrown = error.what();
    }
    return outcome;
}

// "tree; name=tree; ...", or "error".
std::string parsed(const std::string& text)
{
    const Outcome outcome = parse(text);
    if (outcome.status != 0) {
        return "error";
    }
    std::string trees;
    for (const auto& [name, tree] : outcome.equations) {
        trees += (name.empty() ? "" : "; " + name + "=") + test::dumpTree(tree.get());
    }
    return trees;
}

struct TreeRow
{
    const char* text;
    const char* trees;
};

void expectTrees(const TreeRow& row)
{
    EXPECT_EQ(parsed(row.text), row.trees) << row.text;
}

// One row for each production, in their order.
const TreeRow kProductions[] = {
    /*  1 */ {"a", "a"},
    /*  2 */ {"", ""},
    /*  3 */ {" a ", "a"},
    /*  4 */ {"x+y; y=2*a; a=3", "add(x,y); y=multiply(2,a); a=3"},
    /*  5 */ {"7", "7"},
    /*  6 */ {"(a)", "a"},
    /*  7 */ {"!a", "logicalnot(a)"},
    /*  8 */ {"a!", "factorial(a)"},
    /*  9 */ {"~a", "bittoggle(a)"},
    /* 10 */ {"-a", "unaryminus(a)"},
    /* 11 */ {"+a", "a"},
    /* 12 */ {"a'", "complextranspose(a)"},
    /* 13 */ {"a.'", "transpose(a)"},
    /* 14 */ {"a+b", "add(a,b)"},
    /* 15 */ {"a-b", "subtract(a,b)"},
    /* 16 */ {"a*b", "multiply(a,b)"},
    /* 17 */ {"a/b", "divide(a,b)"},
    /* 18 */ {"a%b", "mod(a,b)"},
    /* 19 */ {"a&b", "bitand(a,b)"},
    /* 20 */ {"a^b", "pow(a,b)"},
    /* 21 */ {"a|b", "bitor(a,b)"},
    /* 22 */ {"a<b", "lessthan(a,b)"},
    /* 23 */ {"a>b", "greaterthan(a,b)"},
    /* 24 */ {"a||b", "logicalor(a,b)"},
    /* 25 */ {"a&&b", "logicaland(a,b)"},
    /* 26 */ {"a==b", "equals(a,b)"},
    /* 27 */ {"a!=b", "notequals(a,b)"},
    /* 28 */ {"a<=b", "lessthanequals(a,b)"},
    /* 29 */ {"a>=b", "greaterthanequals(a,b)"},
    /* 30 */ {"a<<b", "shiftleft(a,b)"},
    /* 31 */ {"a>>b", "shiftright(a,b)"},
    /* 32 */ {"a.*b", "matrixmult(a,b)"},
    /* 33 */ {"a./b", "matrixdiv(a,b)"},
    /* 34 */ {"a.^b", "matrixpow(a,b)"},
    /* 35 */ {"a?b:c", "ternary(a,b,c)"},
    /* 36 */ {"fooBar(a,b)", "fooBar(a,b)"},
    /* 37 */ {"a[b]", "subscript(a,b)"},
    /* 38 */ {"[a]", "array(a)"},
    /* 39 */ {"[a:b]", "vector(a,1i,b)"},
    /* 40 */ {"#", "error"},
    /* 41 */ {"1.5", "1.5"},
    /* 42 */ {"2  m/s", "\"2  m/s\""},
    /* 43 */ {"\"ab\"", "\"ab\""},
    /* 44 */ {"Name_1", "Name_1"},
    /* 45 */ {"017", "17"},
    /* 46 */ {"0xFF", "255"},
    /* 47 */ {".25", "0.25"},
    /* 48 */ {"25e-2", "0.25"},
    /* 49 */ {"f()", "f()"},
    /* 50 */ {"f(a)", "f(a)"},
    /* 51 */ {"f(a,b,c)", "f(a,b,c)"},
    /* 52 */ {"a[1]", "subscript(a,1)"},
    /* 53 */ {"a[1,2]", "subscript(a,1,2)"},
    /* 54 */ {"a[1:2,3:4:5]", "subscript(a,1,1i,2,3,4,5)"},
    /* 55 */ {"x[1:3,2]", "subscript(x,1,1i,3,2,1i,2)"},
    /* 56 */ {"x[2,1:3]", "subscript(x,2,1i,2,1,1i,3)"},
    /* 57 */ {"[a,b]", "array(a,b)"},
    /* 58 */ {"[1,2;3,4]", "array(1,2,null,3,4)"},
    /* 59 */ {"[a;b]", "array(a,null,b)"},
    /* 60 */ {"[a,b,c]", "array(a,b,c)"},
    /* 61 */ {"[1:2:7]", "vector(1,2,7)"},
    /* 62 */ {"[1:3]", "vector(1,1i,3)"},
    /* 63 */ {"a[1:2,1:3]", "subscript(a,1,1i,2,1,1i,3)"},
    /* 64 */ {"a[:,:]", "subscript(a,null,null)"},
};

TEST(ZetBisonParser, everyProduction)
{
    EXPECT_EQ(std::size(kProductions), 64u);
    for (const TreeRow& row : kProductions) {
        expectTrees(row);
    }
}

TEST(ZetBisonParser, precedence)
{
    const TreeRow rows[] = {
        {"a?b:c?d:e", "ternary(a,b,ternary(c,d,e))"},
        {"a?b?c:d:e", "ternary(a,ternary(b,c,d),e)"},
        {"a||b?c:d||e", "ternary(logicalor(a,b),c,logicalor(d,e))"},
        // each level against the next tighter one, on both sides
        {"a||b&&c||d", "logicalor(logicalor(a,logicaland(b,c)),d)"},
        {"a&&b|c&&d", "logicaland(logicaland(a,bitor(b,c)),d)"},
        {"a|b&c|d", "bitor(bitor(a,bitand(b,c)),d)"},
        {"a&b==c&d", "bitand(bitand(a,equals(b,c)),d)"},
        {"a==b<c!=d", "notequals(equals(a,lessthan(b,c)),d)"},
        {"a<b<<c>=d", "greaterthanequals(lessthan(a,shiftleft(b,c)),d)"},
        {"a<<b+c>>d", "shiftright(shiftleft(a,add(b,c)),d)"},
        {"a+b*c-d", "subtract(add(a,multiply(b,c)),d)"},
        {"-a*-b", "multiply(unaryminus(a),unaryminus(b))"},
        {"-a^b", "unaryminus(pow(a,b))"},
        {"a^b[1]", "pow(a,subscript(b,1))"},
        // all operators of one level go from left to right
        {"a==b!=c==d", "equals(notequals(equals(a,b),c),d)"},
        {"a<b>c<=d>=e", "greaterthanequals(lessthanequals(greaterthan(lessthan(a,b),c),d),e)"},
        {"a<<b>>c", "shiftright(shiftleft(a,b),c)"},
        {"a-b+c-d", "subtract(add(subtract(a,b),c),d)"},
        {"a*b/c%d./e.*f", "matrixmult(matrixdiv(mod(divide(multiply(a,b),c),d),e),f)"},
        {"2^3^2", "pow(pow(2,3),2)"},
        {"a.^b^c", "pow(matrixpow(a,b),c)"},
        // prefix signs are looser than powers, and may stand behind one
        {"-2^2", "unaryminus(pow(2,2))"},
        {"!a!", "logicalnot(factorial(a))"},
        {"-a'", "unaryminus(complextranspose(a))"},
        {"a^-b^c", "pow(a,unaryminus(pow(b,c)))"},
        {"a^-b*c", "multiply(pow(a,unaryminus(b)),c)"},
        {"a*-b+c", "add(multiply(a,unaryminus(b)),c)"},
        {"~!-a", "bittoggle(logicalnot(unaryminus(a)))"},
        {"+ + a", "a"},
        {"-+a", "unaryminus(a)"},
        // postfix operators are of the power's level
        {"a^b!", "factorial(pow(a,b))"},
        {"a^b'", "complextranspose(pow(a,b))"},
        {"a!^b", "pow(factorial(a),b)"},
        {"a.'!'", "complextranspose(factorial(transpose(a)))"},
        // a subscript is the tightest
        {"a.^b[1]", "matrixpow(a,subscript(b,1))"},
        {"-a[1]", "unaryminus(subscript(a,1))"},
        {"a![1]", "subscript(factorial(a),1)"},
        {"a[1][2]", "subscript(subscript(a,1),2)"},
        {"(a+b)[1]", "subscript(add(a,b),1)"},
        {"a+b[1]", "add(a,subscript(b,1))"},
    };
    for (const TreeRow& row : rows) {
        expectTrees(row);
    }
}

TEST(ZetBisonParser, shapes)
{
    const TreeRow rows[] = {
        // an argument list may begin empty
        {"f(,1)", "f(1)"},
        {"f(1,)", "error"},
        {"f (x)", "f(x)"},
        {"(a)(b)", "error"},
        {"f (x)(y)", "error"},
        // sequences stand alone in brackets or in subscripts of two parts
        {"[]", "error"},
        {"[:]", "error"},
        {"a[]", "error"},
        {"a[:]", "error"},
        {"a[1:3]", "error"},
        {"a[1:2:3]", "error"},
        {"a[1,2,3]", "error"},
        {"[1,2:3]", "error"},
        {"[1:2,3]", "error"},
        {"[1;2:3]", "error"},
        {"[1:2:3:4]", "error"},
        {"x[:,2]", "subscript(x,null,2)"},
        {"x[2,:]", "subscript(x,2,null)"},
        {"x[:,1:2]", "subscript(x,null,1,1i,2)"},
        {"x[1:2,:]", "subscript(x,1,1i,2,null)"},
        {"x[1:2:9,a+b]", "subscript(x,1,2,9,add(a,b),1i,add(a,b))"},
        {"x[f(a),1:2]", "subscript(x,f(a),1i,f(a),1,1i,2)"},
        {"[a?b:c]", "array(ternary(a,b,c))"},
        {"[a?b:c:d]", "vector(ternary(a,b,c),1i,d)"},
        {"[a:b?c:d]", "vector(a,1i,ternary(b,c,d))"},
        {"[a:b?c:d:e]", "vector(a,ternary(b,c,d),e)"},
        {"[[1,2];[3]]", "array(array(1,2),null,array(3))"},
        {"[1;2;3]", "array(1,null,2,null,3)"},
        // the whole equation
        {"; a=1", "; a=1"},
        {"; a=1; b=2", "; a=1; b=2"},
        {"a=1", "error"},
        {"a;b", "error"},
        {"a;1=b", "error"},
        {"a;b=c=d", "error"},
        {"a;", "error"},
        {";", "error"},
        {"a; b=1;", "error"},
        {"a; b=1 c=2", "error"},
        // constants
        {"2x+1", "add(\"2x\",1)"},
        {"2(x)", "\"2(x)\""},
        {"2 (x+1)", "error"},
        {"\"\"", "\"\""},
        {"\"a b\"", "\"a b\""},
        {"a \"b\"", "error"},
        {"{a}", "error"},
        {"a.b", "error"},
        {"a 2.5", "error"},
    };
    for (const TreeRow& row : rows) {
        expectTrees(row);
    }
}

TEST(ZetBisonParser, numbers)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {"0", 0.0},
        {"3", 3.0},
        {"0017", 17.0},
        {"2.", 2.0},
        {".5", 0.5},
        {"2.5e3", 2500.0},
        {"2E+3", 2000.0},
        {"2.e-1", 0.2},
        {"0X1f", 31.0},
        {"0x1e", 30.0},
        // digits beyond 2^53 are lost
        {"9007199254740993", 9007199254740992.0},
        // beyond 64 bits the greatest integer stands
        {"9223372036854775807", 0x1p63},
        {"9223372036854775808", 0x1p63},
        {"99999999999999999999999", 0x1p63},
        {"0x8000000000000000", 0x1p63},
        {"0xFFFFFFFFFFFFFFFFF", 0x1p63},
        {"1e400", infinity},
        {"1e-400", 0.0},
        {"5e-324", 0x1p-1074},
        {"99999999999999999999999.0", 1e23},
    };
    for (const Row& row : rows) {
        const Outcome outcome = parse(row.text);
        ASSERT_EQ(outcome.status, 0) << row.text;
        const ZetConstNode* const constant = outcome.equations.at(0).second->toConstNode();
        ASSERT_NE(constant, nullptr) << row.text;
        EXPECT_EQ(constant->value().typeName(), ZetString(L"Double")) << row.text;
        EXPECT_EQ(constant->value().value<double>(), row.value) << row.text;
    }
}

TEST(ZetBisonParser, widenedSubscriptsShareNoNode)
{
    const Outcome outcome = parse("x[a,1:2]");
    const std::vector<ZetEqnNodePtr>& args = outcome.equations.at(0).second->toFcnNode()->args();
    ASSERT_EQ(args.size(), 7u);
    EXPECT_NE(args[1].get(), args[3].get());
    EXPECT_EQ(args[1]->toVarNode()->name(), args[3]->toVarNode()->name());
}

TEST(ZetBisonParser, resultListIsEmptiedWithoutAMainExpression)
{
    const ZetParsedEquations before = {{"old", new ZetConstNode(1.0)}};
    EXPECT_EQ(parse("", before).equations.size(), 0u);
    EXPECT_EQ(parse(";a=1", before).equations.size(), 1u);
    EXPECT_EQ(parse("a", before).equations.size(), 2u);
}

struct ErrorRow
{
    const char* text;
    int column;
    const char* message;
};

void expectError(const ErrorRow& row)
{
    const std::string expected =
        "Parsing error at column #" + std::to_string(row.column) + " : " + std::string(row.message);
    const Outcome outcome = parse(row.text, {{"old", new ZetConstNode(1.0)}});
    EXPECT_EQ(outcome.errorText, expected) << row.text;
    EXPECT_EQ(outcome.thrown, expected) << row.text;
    EXPECT_TRUE(outcome.equations.empty()) << row.text;
}

TEST(ZetBisonParser, errors)
{
    const ErrorRow rows[] = {
        // with five or more expected tokens there is no list
        {"1+", 2, "syntax error, unexpected end of file"},
        {"(", 1, "syntax error, unexpected end of file"},
        {"(1", 2, "syntax error, unexpected end of file"},
        {"()", 2, "syntax error, unexpected ')'"},
        {"f(", 2, "syntax error, unexpected end of file, expecting ',' or ')'"},
        {"f(1,)", 5, "syntax error, unexpected ')'"},
        {"[]", 2, "syntax error, unexpected ']'"},
        {"[:]", 2, "syntax error, unexpected ':'"},
        {"a[", 2, "syntax error, unexpected end of file"},
        {"a[:,", 4, "syntax error, unexpected end of file"},
        {"a?b", 3, "syntax error, unexpected end of file"},
        {"a?b:", 4, "syntax error, unexpected end of file"},
        {"a;b=", 4, "syntax error, unexpected end of file"},
        {"3!==6", 4, "syntax error, unexpected '='"},
        // after an expression
        {"a=1", 2, "syntax error, unexpected '=', expecting end of file or ';'"},
        {"a)", 2, "syntax error, unexpected ')', expecting end of file or ';'"},
        {"a:b", 2, "syntax error, unexpected ':', expecting end of file or ';'"},
        {"a,b", 2, "syntax error, unexpected ',', expecting end of file or ';'"},
        {"(a)(b)", 4, "syntax error, unexpected '(', expecting end of file or ';'"},
        {"a#", 2, "syntax error, unexpected TKN_SYNTAX_ERROR, expecting end of file or ';'"},
        {"a;b=1=", 6, "syntax error, unexpected '=', expecting end of file or ';'"},
        {".", 1, "syntax error, unexpected $undefined, expecting end of file or ';'"},
        {"{", 1, "syntax error, unexpected $undefined, expecting end of file or ';'"},
        {"a}", 2, "syntax error, unexpected $undefined, expecting end of file or ';'"},
        {"a.b", 2, "syntax error, unexpected $undefined, expecting end of file or ';'"},
        // definitions
        {"x+y;", 4, "syntax error, unexpected end of file, expecting TKN_ID"},
        {";", 1, "syntax error, unexpected end of file, expecting TKN_ID"},
        {";1", 2, "syntax error, unexpected TKN_IVAL, expecting TKN_ID"},
        {"x;y", 3, "syntax error, unexpected end of file, expecting '='"},
        {"x;y==1", 5, "syntax error, unexpected TKN_EQ, expecting '='"},
        // lists
        {"f(1", 3, "syntax error, unexpected end of file, expecting ',' or ')'"},
        {"f(1;2)", 4, "syntax error, unexpected ';', expecting ',' or ')'"},
        {"f(a:b)", 4, "syntax error, unexpected ':', expecting ',' or ')'"},
        {"f(1,2]", 6, "syntax error, unexpected ']', expecting ',' or ')'"},
        {"[1", 2, "syntax error, unexpected end of file, expecting ';' or ']'"},
        {"[1,2", 4, "syntax error, unexpected end of file, expecting ';' or ']'"},
        {"[1;2)", 5, "syntax error, unexpected ')', expecting ';' or ']'"},
        {"[1,2:3]", 5, "syntax error, unexpected ':', expecting ';' or ']'"},
        {"[1:3", 4, "syntax error, unexpected end of file, expecting ']'"},
        {"[1:3,4]", 5, "syntax error, unexpected ',', expecting ']'"},
        {"[1:2:3:4]", 7, "syntax error, unexpected ':', expecting ']'"},
        {"a[1", 3, "syntax error, unexpected end of file, expecting ']'"},
        {"a[1;2]", 4, "syntax error, unexpected ';', expecting ']'"},
        {"a[1,2", 5, "syntax error, unexpected end of file, expecting ']'"},
        {"a[1,2,3]", 6, "syntax error, unexpected ',', expecting ']'"},
        {"a[1:3]", 6, "syntax error, unexpected ']', expecting ','"},
        {"a[:]", 4, "syntax error, unexpected ']', expecting ','"},
        {"a[:1]", 4, "syntax error, unexpected TKN_IVAL, expecting ','"},
        {"a[:,1:2:3:4]", 10, "syntax error, unexpected ':', expecting ']'"},
        // an unknown character where an operand may stand: no token is read behind it
        {"#", 1, "syntax error token"},
        {"# a", 1, "syntax error token"},
        {"1+#", 3, "syntax error token"},
        {"(@", 2, "syntax error token"},
        {"\"ab", 1, "syntax error token"},
        {"\xc3", 1, "syntax error token"},
        // the column is behind the token found, white space before the end included
        {"  a  =1", 6, "syntax error, unexpected '=', expecting end of file or ';'"},
        {"1+  ", 4, "syntax error, unexpected end of file"},
        {"1+\t", 8, "syntax error, unexpected end of file"},
        {"1+\n", 0, "syntax error, unexpected end of file"},
        {"1\n+ \n  )", 3, "syntax error, unexpected ')'"},
        {"a\t2 kg", 12, "syntax error, unexpected TKN_UVAL, expecting end of file or ';'"},
    };
    for (const ErrorRow& row : rows) {
        expectError(row);
    }
}

TEST(ZetBisonParser, everyTokenHasItsName)
{
    struct Row
    {
        const char* token;
        const char* name;
    };
    // in front of an expression
    const Row front[] = {
        {",", "','"},           {"=", "'='"},
        {"?", "'?'"},           {":", "':'"},
        {"||", "TKN_OR"},       {"&&", "TKN_AND"},
        {"|", "'|'"},           {"&", "'&'"},
        {"!=", "TKN_NE"},       {"==", "TKN_EQ"},
        {"<", "'<'"},           {">", "'>'"},
        {">=", "TKN_GE"},       {"<=", "TKN_LE"},
        {">>", "TKN_RIGHT"},    {"<<", "TKN_LEFT"},
        {"*", "'*'"},           {"/", "'/'"},
        {"%", "'%'"},           {"./", "TKN_ALT_DIV"},
        {".*", "TKN_ALT_MULT"}, {"^", "'^'"},
        {"'", "'\\''"},         {"]", "']'"},
        {")", "')'"},           {".'", "TKN_ALT_TRANS"},
        {".^", "TKN_ALT_EXP"},
    };
    for (const Row& row : front) {
        const std::string message =
            std::string("syntax error, unexpected ") + row.name + ", expecting end of file or ';'";
        expectError({row.token, static_cast<int>(std::string(row.token).size()), message.c_str()});
    }
    // behind one
    const Row back[] = {
        {"~", "'~'"},          {"(", "'('"},
        {"a", "TKN_ID"},       {"1.5", "TKN_FVAL"},
        {"7", "TKN_IVAL"},     {"7 kg", "TKN_UVAL"},
        {"0x1", "TKN_HVAL"},   {"1e5", "TKN_EVAL"},
        {"\"a\"", "TKN_SVAL"}, {"#", "TKN_SYNTAX_ERROR"},
    };
    for (const Row& row : back) {
        const std::string text = std::string("a! ") + row.token;
        const std::string message =
            std::string("syntax error, unexpected ") + row.name + ", expecting end of file or ';'";
        expectError({text.c_str(), static_cast<int>(text.size()), message.c_str()});
    }
    // where the end or a name has to stand
    const Row definition[] = {{";", "';'"}, {"[", "'['"}, {"+", "'+'"}, {"-", "'-'"}, {"!", "'!'"}};
    for (const Row& row : definition) {
        const std::string text = std::string(";") + row.token;
        const std::string message = std::string("syntax error, unexpected ") + row.name + ", expecting TKN_ID";
        expectError({text.c_str(), 2, message.c_str()});
    }
}

TEST(ZetBisonParser, tokenNumbers)
{
    using Token = ZetBisonParser::token;
    const int inOrder[] = {Token::TKN_OR,        Token::TKN_AND,         Token::TKN_NE,        Token::TKN_EQ,
                           Token::TKN_GE,        Token::TKN_LE,          Token::TKN_RIGHT,     Token::TKN_LEFT,
                           Token::TKN_ALT_DIV,   Token::TKN_ALT_MULT,    Token::TKN_UNARY_POS, Token::TKN_UNARY_NEG,
                           Token::TKN_ALT_TRANS, Token::TKN_ALT_EXP,     Token::TKN_ID,        Token::TKN_FVAL,
                           Token::TKN_IVAL,      Token::TKN_UVAL,        Token::TKN_HVAL,      Token::TKN_EVAL,
                           Token::TKN_SVAL,      Token::TKN_SYNTAX_ERROR};
    for (std::size_t i = 0; i < std::size(inOrder); ++i) {
        EXPECT_EQ(inOrder[i], 258 + static_cast<int>(i));
    }
}

TEST(ZetBisonParser, deepTextParses)
{
    constexpr std::size_t depth = 100000;
    const std::string nested = std::string(depth, '(') + "a" + std::string(depth, ')');
    EXPECT_EQ(parsed(nested), "a");
    EXPECT_EQ(parsed(nested + ")"), "error");
    EXPECT_EQ(parsed(std::string(depth, '(')), "error");

    const Outcome signs = parse(std::string(depth, '-') + "a");
    ASSERT_EQ(signs.status, 0);
    EXPECT_EQ(signs.equations.at(0).second->toFcnNode()->height(), static_cast<int>(depth));
    EXPECT_EQ(parse(std::string(depth, '-') + "a)").status, -1);
}

std::string joined(const std::vector<std::string>& tokens)
{
    std::string text;
    for (const std::string& token : tokens) {
        text += token + " ";
    }
    return text;
}

void expectAsTheOracle(const std::vector<std::string>& tokens)
{
    const std::string text = joined(tokens);
    ASSERT_EQ(parsed(text), test::ZetGrammarOracle::parse(tokens)) << text;
}

TEST(ZetBisonParser, allShortSentencesAsTheOracle)
{
    const std::vector<std::string> vocabulary = {"a", "\"s\"", "+", "-", "!", "^", "'", "==", "?",
                                                 ":", "[",     "]", "(", ")", ",", ";", "="};
    std::vector<std::vector<std::string>> sentences = {{}};
    for (int length = 0; length < 4; ++length) {
        std::vector<std::vector<std::string>> longer;
        for (const std::vector<std::string>& sentence : sentences) {
            for (const std::string& token : vocabulary) {
                longer.push_back(sentence);
                longer.back().push_back(token);
                expectAsTheOracle(longer.back());
            }
        }
        sentences.swap(longer);
    }
}

// Sentences by random productions; without regard to precedence, which is what the parsers find out.
class SentenceMaker
{
public:
    explicit SentenceMaker(unsigned int seed) : m_random(seed) {}

    std::vector<std::string> make()
    {
        m_tokens.clear();
        if (below(8) != 0) {
            expression(5);
        }
        for (std::size_t i = below(3); i > 0; --i) {
            add({";", "x", "="});
            expression(3);
        }
        return m_tokens;
    }

    std::size_t below(std::size_t limit) { return m_random() % limit; }

private:
    void add(const std::vector<std::string>& tokens) { m_tokens.insert(m_tokens.end(), tokens.begin(), tokens.end()); }

    void pick(const std::vector<std::string>& tokens) { m_tokens.push_back(tokens[below(tokens.size())]); }

    void bracketed(const char* open, const char* separator, const char* close, std::size_t count, int depth)
    {
        add({open});
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0) {
                add({separator});
            }
            expression(depth);
        }
        add({close});
    }

    void dimension(int depth)
    {
        switch (below(3)) {
            case 0:
                return add({":"});
            case 1:
                expression(depth);
                add({":"});
                return expression(depth);
            default:
                return expression(depth);
        }
    }

    void expression(int depth)
    {
        if (depth <= 0) {
            return pick({"a", "b", "c", "\"s\""});
        }
        --depth;
        switch (below(9)) {
            case 0:
                pick({"+", "-", "~", "!"});
                return expression(depth);
            case 1:
                expression(depth);
                return pick({"!", "'", ".'"});
            case 2:
                expression(depth);
                add({"?"});
                expression(depth);
                add({":"});
                return expression(depth);
            case 3:
                add({"f"});
                return bracketed("(", ",", ")", below(4), depth - 1);
            case 4:
                return bracketed("[", below(2) == 0 ? ":" : ";", "]", 1 + below(3), depth - 1);
            case 5:
                expression(depth - 1);
                add({"["});
                dimension(depth - 1);
                add({","});
                dimension(depth - 1);
                return add({"]"});
            case 6:
                return bracketed("(", ",", ")", 1, depth);
            default:
                expression(depth);
                pick({"+",  "-",  "*",  "/",  "%",  "&",  "^",  "|",  "<",  ">", "||",
                      "&&", "==", "!=", "<=", ">=", "<<", ">>", ".*", "./", ".^"});
                return expression(depth);
        }
    }

    std::mt19937 m_random;
    std::vector<std::string> m_tokens;
};

TEST(ZetBisonParser, randomSentencesAsTheOracle)
{
    SentenceMaker maker(7);
    int sentences = 0;
    for (int i = 0; i < 8000; ++i) {
        std::vector<std::string> tokens = maker.make();
        sentences += parsed(joined(tokens)) != "error" ? 1 : 0;
        expectAsTheOracle(tokens);
        if (!tokens.empty()) {
            tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(maker.below(tokens.size())));
            expectAsTheOracle(tokens);
        }
    }
    EXPECT_GT(sentences, 7000) << "the maker makes sentences";
}

}  // namespace
}  // namespace internal
}  // namespace zet
