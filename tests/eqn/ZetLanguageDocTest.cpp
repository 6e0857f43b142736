#include <gtest/gtest.h>

#include <complex>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include <zet/ZetEqnParser>
#include <zet/ZetScalar>

#include "support/ZetScopedLocale"
#include "support/ZetTreeDump"

namespace zet {
namespace {

std::string contentOf(const std::string& path)
{
    std::ifstream in(std::string(ZET_TEST_CORPUS "/../../") + path);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The lines of all blocks of one language in the page.
std::vector<std::string> linesOfBlocks(const std::string& language)
{
    std::vector<std::string> lines;
    std::istringstream page(contentOf("docs/language.md"));
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.compare(0, 3, "```") == 0) {
            isInside = line == "```" + language;
        } else if (isInside) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::string shownComplex(const std::complex<double>& value)
{
    return "(" + test::shortest(value.real()) + "," + test::shortest(value.imag()) + ")";
}

std::string shown(const ZetVariant& value)
{
    const std::string kind = toMultibyte(value.typeName()) + " ";
    switch (value.type().type()) {
        case ZetMetaType::Invalid:
            return "no value";
        case ZetMetaType::Bool:
            return kind + (value.value<bool>() ? "true" : "false");
        case ZetMetaType::Int:
            return kind + std::to_string(value.value<int>());
        case ZetMetaType::Double:
            return kind + test::shortest(value.value<double>());
        case ZetMetaType::ComplexDouble:
            return kind + shownComplex(value.value<std::complex<double>>());
        case ZetMetaType::Scalar:
            return kind + shownComplex({value.value<ZetScalar>().real(), value.value<ZetScalar>().imag()});
        case ZetMetaType::String:
            return kind + '"' + toMultibyte(value.value<ZetString>()) + '"';
        default:
            return kind;
    }
}

std::string outcomeOf(const std::string& text)
{
    ZetEqnParser parser;
    ZetTextMsg message(ZetString(), ZetTextMsg::Error);
    if (!parser.parse(text, &message)) {
        return "refused: " + toMultibyte(message.text());
    }
    parser.setValue(L"a", 2.0);
    parser.setValue(L"b", 3.0);
    parser.setValue(L"c", 5.0);
    const ZetVariant value = parser.evaluate(&message);
    return message.text().empty() ? shown(value) : "fails: " + toMultibyte(message.text());
}

TEST(ZetLanguageDoc, examples)
{
    const test::ZetScopedLocale plainNumbers("C");
    int examples = 0;
    for (const std::string& line : linesOfBlocks("eqn")) {
        const std::size_t arrow = line.find(" => ");
        ASSERT_NE(arrow, std::string::npos) << line;
        const std::string text = line.substr(0, line.find_last_not_of(' ', arrow) + 1);
        EXPECT_EQ(outcomeOf(text), line.substr(arrow + 4)) << line;
        ++examples;
    }
    EXPECT_GE(examples, 40);
}

TEST(ZetLanguageDoc, program)
{
    // clang-format off
    // the program of the page
ZetEqnParser parser;
ZetTextMsg message(ZetString(), ZetTextMsg::Error);
if (!parser.parse(L"x + y; y = 2*a; a = 3", &message)) {
    std::wcerr << message << std::endl;
}
parser.setValue(L"x", 1.0);
const double sum = parser.evaluate(&message).value<double>();  // 7
parser.setValue(L"x", 5.0);
const double next = parser.evaluate(&message).value<double>();  // 11
    // clang-format on
    EXPECT_EQ(sum, 7.0);
    EXPECT_EQ(next, 11.0);

    std::string program;
    for (const std::string& line : linesOfBlocks("cpp")) {
        program += line + "\n";
    }
    EXPECT_NE(contentOf("tests/eqn/ZetLanguageDocTest.cpp").find("page\n" + program), std::string::npos)
        << "the page shows what is compiled here";
}

}  // namespace
}  // namespace zet
