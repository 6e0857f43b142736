#include <zet/ZetMatrix>

#include <bit>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

#include "quantity/ZetMatrixSupport"
#include "support/ZetFullBuffer"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::expectPost;
using test::matrixOf;
using test::ZetScopedLocale;

ZetString textOf(const ZetMatrix& matrix)
{
    std::wostringstream out;
    out << matrix;
    return out.str();
}

/// What a matrix of a single 5 is after reading.
ZetMatrix readFrom(const ZetString& text)
{
    std::wistringstream in(text);
    ZetMatrix matrix(1, 1, 5.0);
    in >> matrix;
    return matrix;
}

void expectReads(const ZetString& text, const ZetMatrix& expected)
{
    const test::ZetCollectingHandler posted;
    EXPECT_EQ(readFrom(text), expected) << testing::PrintToString(text);
    EXPECT_TRUE(posted.messages().empty()) << testing::PrintToString(posted.texts());
}

/// Whether reading posts the message, and leaves the matrix and the stream's state.
void expectRefuses(const ZetString& text, const ZetString& message)
{
    SCOPED_TRACE(testing::PrintToString(text));
    ZetMatrix matrix(1, 1, 5.0);
    expectPost(message, [&] {
        std::wistringstream in(text);
        in >> matrix;
        EXPECT_FALSE(in.bad());
    });
    EXPECT_EQ(matrix, ZetMatrix(1, 1, 5.0));
}

TEST(ZetMatrixText, writes)
{
    const ZetScopedLocale plain("C");
    EXPECT_EQ(textOf(matrixOf(2, 2, {1, 2, 3, 4})),
              L"\n"
              L"#This file was written by ZetMatrix::operator<<\n"
              L"\n"
              L"CMF 1\n"
              L"{\n"
              L"rows = 2\n"
              L"columns = 2\n"
              L"}\n"
              L"1    2    \n"
              L"3    4    \n"
              L"$\n");
    EXPECT_EQ(textOf(ZetMatrix()), L"");
    EXPECT_EQ(textOf(ZetMatrix(3, 0, 1.0)), L"");
}

TEST(ZetMatrixText, keepsTheFormatOfTheStream)
{
    const ZetScopedLocale plain("C");
    std::wostringstream out;
    out << std::setprecision(3) << 0.1234567 << matrixOf(1, 2, {0.1, 2.5}) << 0.1234567;
    EXPECT_EQ(out.str(),
              L"0.123\n#This file was written by ZetMatrix::operator<<\n\nCMF 1\n{\nrows = 1\ncolumns = 2\n}\n"
              L"0.10000000000000001    2.5    \n$\n0.123");
    out.str(L"");
    out << std::scientific << matrixOf(1, 1, {2.5}) << 2.5;
    EXPECT_EQ(out.str().substr(out.str().find(L"}\n")), L"}\n2.50000000000000000e+00    \n$\n2.500e+00");
}

TEST(ZetMatrixText, streamThatThrowsKeepsItsPrecision)
{
    const ZetScopedLocale plain("C");
    const ZetMatrix matrix(5, 5, 0.1);
    const std::size_t elements = textOf(matrix).find(L'}') + 2;
    for (const std::size_t room : {std::size_t{0}, elements - 10, elements + 10}) {
        test::ZetFullBuffer buffer(room);
        std::wostream out(&buffer);
        out.precision(3);
        out.exceptions(std::ios_base::badbit);
        EXPECT_THROW(out << matrix, std::ios_base::failure) << room;
        EXPECT_EQ(out.precision(), 3) << room;
    }
}

TEST(ZetMatrixText, readsBackWhatItWrote)
{
    const ZetScopedLocale plain("C");
    using Limits = std::numeric_limits<double>;
    expectReads(textOf(matrixOf(2, 3, {0.1, -1.0 / 3.0, Limits::max(), Limits::min(), 5e-324, -0.0})),
                matrixOf(2, 3, {0.1, -1.0 / 3.0, Limits::max(), Limits::min(), 5e-324, -0.0}));
    std::mt19937_64 random(1);
    std::vector<double> bits;
    while (bits.size() < 1000) {
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            bits.push_back(value);
        }
    }
    expectReads(textOf(matrixOf(40, 25, bits)), matrixOf(40, 25, bits));
}

TEST(ZetMatrixText, infinitiesReadBackAsZero)
{
    const ZetScopedLocale plain("C");
    const double infinity = std::numeric_limits<double>::infinity();
    const ZetString text = textOf(matrixOf(1, 3, {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_EQ(text.substr(text.find(L"}")), L"}\ninf    -inf    nan    \n$\n");
    expectReads(text, ZetMatrix(1, 3, 0.0));
}

TEST(ZetMatrixText, reads)
{
    const ZetScopedLocale plain("C");
    const ZetMatrix expected = matrixOf(2, 2, {1, 2, 3, 4});
    const ZetString texts[] = {
        L"CMF 1 { rows = 2 columns = 2 } 1 2 3 4 $",
        // without regard to case
        L"cmf 1 { ROWS = 2 Columns = 2 } 1 2 3 4 $",
        // the "$" is optional, and so are line breaks and blanks beside delimiters
        L"CMF 1{rows=2 columns=2}1 2 3 4",
        L"CMF\n1\n{\nrows\n=\n2\ncolumns\n=\n2\n}\n1\n2\r\n3\t4$",
        // comments anywhere
        L"# a\nCMF # b\n1 {rows#c\n=2 columns = 2 # } d\n} 1 2# e\n3 4 # f\n $ # g\n # h",
        // literals are tokens too, and a quoted "$" ends the list
        L"\"CMF\" \"1\" \"{\" \"rows\" \"=\" \"2\" columns = 2 } 1 \"2\" 3 4 \"$\"",
        // an empty literal is no token: it ends the list, and what follows the end is then nothing
        L"CMF 1 {rows = 2 columns = 2} 1 2 3 4 $ \"\"",
        // counts as the platform's stream reads them
        L"CMF 1 {rows = 2.7 columns = 2x} 1 2 3 4 $",
        L"CMF 1 {rows = +2 columns = 02} 1 2 3 4 $",
        // elements too
        L"CMF 1 {rows = 2 columns = 2} 1.0 0.2e1 3abc +4 $",
    };
    for (const ZetString& text : texts) {
        expectReads(text, expected);
    }
}

TEST(ZetMatrixText, anyTokenIsAnElement)
{
    const ZetScopedLocale plain("C");
    expectReads(L"CMF 1 {rows = 1 columns = 5} abc { = } 7 $", matrixOf(1, 5, {0, 0, 0, 0, 7}));
}

TEST(ZetMatrixText, keepsTheBlockOfAsManyElements)
{
    std::wistringstream in(L"CMF 1 {rows = 1 columns = 2} 8 9");
    ZetMatrix matrix(2, 1, 5.0);
    const double* const block = matrix.data();
    in >> matrix;
    EXPECT_EQ(matrix, matrixOf(1, 2, {8, 9}));
    EXPECT_EQ(matrix.data(), block);
}

TEST(ZetMatrixText, refusesHeaders)
{
    const wchar_t* const noFormat = L"First line of CMF file is not the CMF version (CMF = <version>).";
    const wchar_t* const noVersion = L"Expected the version number to be '1'.";
    const wchar_t* const noOpenBrace = L"Expected an open brace '{' token.";
    const wchar_t* const noRows = L"Expected 'rows' token (rows = <nRows>).";
    const wchar_t* const noRowsValue = L"Expected assignment '=' token (rows = <nRows>).";
    const wchar_t* const zeroRows = L"The number of rows cannot be zero (0).";
    const wchar_t* const noColumns = L"Expected 'columns' token (columns = <nCols>).";
    const wchar_t* const noColumnsValue = L"Expected assignment '=' token (columns = <nCols>).";
    const wchar_t* const zeroColumns = L"The number of columns can not be zero (0).";
    const wchar_t* const noCloseBrace = L"Expected a close brace '}' token.";
    const ZetScopedLocale plain("C");
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"", noFormat},
        {L"# CMF", noFormat},
        {L"CMG 1", noFormat},
        {L"CMF1 {", noFormat},
        {L"\"\" CMF 1", noFormat},
        {L"CMF", noVersion},
        {L"CMF 2 {", noVersion},
        {L"CMF 01 {", noVersion},
        {L"CMF = 1 {", noVersion},
        {L"CMF 1", noOpenBrace},
        {L"CMF 1 rows", noOpenBrace},
        {L"CMF 1 {", noRows},
        {L"CMF 1 {}", noRows},
        {L"CMF 1 {columns = 2 rows = 2}", noRows},
        {L"CMF 1 {rows", noRowsValue},
        {L"CMF 1 {rows 2", noRowsValue},
        {L"CMF 1 {rows =", noRowsValue},
        {L"CMF 1 {rows = \"\"", noRowsValue},
        {L"CMF 1 {rows = 0", zeroRows},
        {L"CMF 1 {rows = two", zeroRows},
        {L"CMF 1 {rows = }", zeroRows},
        {L"CMF 1 {rows = 0.9", zeroRows},
        {L"CMF 1 {rows = 2", noColumns},
        {L"CMF 1 {rows = 2 rows", noColumns},
        {L"CMF 1 {rows = 2}", noColumns},
        {L"CMF 1 {rows = 2 columns", noColumnsValue},
        {L"CMF 1 {rows = 2 columns 2", noColumnsValue},
        {L"CMF 1 {rows = 2 columns =", noColumnsValue},
        {L"CMF 1 {rows = 2 columns = 0", zeroColumns},
        {L"CMF 1 {rows = 2 columns = x", zeroColumns},
        {L"CMF 1 {rows = 2 columns = 2", noCloseBrace},
        {L"CMF 1 {rows = 2 columns = 2 1 2 3 4", noCloseBrace},
    };
    for (const auto& [text, message] : rows) {
        expectRefuses(text, message);
    }
}

TEST(ZetMatrixText, countsElements)
{
    const ZetScopedLocale plain("C");
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"CMF 1 {rows = 2 columns = 2} 1 2 3 $",
         L"Not enough elements for matrix. Expected '4' elements, but got '3'."},
        {L"CMF 1 {rows = 2 columns = 2} 1 2 3", L"Not enough elements for matrix. Expected '4' elements, but got '3'."},
        {L"CMF 1 {rows = 2 columns = 2}", L"Not enough elements for matrix. Expected '4' elements, but got '0'."},
        {L"CMF 1 {rows = 2 columns = 2} 1 2 \"\" 3 4",
         L"Not enough elements for matrix. Expected '4' elements, but got '2'."},
        {L"CMF 1 {rows = 2 columns = 2} 1 \"$\" 2 3 4",
         L"Not enough elements for matrix. Expected '4' elements, but got '1'."},
        {L"CMF 1 {rows = 2 columns = 2} 1 2 3 4 5", L"Too many elements for matrix. Expected '4' elements."},
        {L"CMF 1 {rows = 1 columns = 1} a b $", L"Too many elements for matrix. Expected '1' elements."},
        // a header promises nothing: 34 gigabytes are not looked for
        {L"CMF 1 {rows = 65535 columns = 65535} 1 2 $",
         L"Not enough elements for matrix. Expected '4294836225' elements, but got '2'."},
        // the platform's stream takes the highest number for what is too high, and turns a negative one round
        {L"CMF 1 {rows = 70000 columns = 1} 1 $",
         L"Not enough elements for matrix. Expected '65535' elements, but got '1'."},
        {L"CMF 1 {rows = 1 columns = -1} 1 $",
         L"Not enough elements for matrix. Expected '65535' elements, but got '1'."},
    };
    for (const auto& [text, message] : rows) {
        expectRefuses(text, message);
    }
}

TEST(ZetMatrixText, textBehindTheEndIsSilent)
{
    const ZetScopedLocale plain("C");
    const ZetMatrix unchanged(1, 1, 5.0);
    expectReads(L"CMF 1 {rows = 1 columns = 2} 1 2 $ 3", unchanged);
    expectReads(L"CMF 1 {rows = 1 columns = 2} 1 2 $ $", unchanged);
    expectReads(L"CMF 1 {rows = 1 columns = 2} 1 2 $ \"x\"", unchanged);
    expectReads(L"CMF 1 {rows = 1 columns = 2} 1 2 $\nCMF 1 {rows = 1 columns = 1} 1 $", unchanged);
}

TEST(ZetMatrixText, unclosedLiteral)
{
    // the tokenizer posts for itself; to the reader the tokens have ended
    const ZetString unclosed = L"Failed to find closing literal delimiter (\") at line 1.";
    const ZetString few = L"Not enough elements for matrix. Expected '2' elements, but got '1'.";
    std::wistringstream in(L"CMF 1 {rows = 1 columns = 2} 1 \"2");
    ZetMatrix matrix(1, 1, 5.0);
    const test::ZetCollectingHandler posted;
    in >> matrix;
    EXPECT_EQ(posted.texts(), (std::vector<ZetString>{unclosed, few}));
    EXPECT_EQ(matrix, ZetMatrix(1, 1, 5.0));
}

TEST(ZetMatrixText, streamsThatHaveEnded)
{
    std::wistringstream ended(L"CMF");
    ended.setstate(std::ios::eofbit);
    ZetMatrix matrix(1, 1, 5.0);
    ended >> matrix;
    EXPECT_EQ(matrix, ZetMatrix(1, 1, 5.0));
    EXPECT_EQ(ended.rdstate(), std::ios::eofbit);

    // a stream that has failed without an end is the tokenizer's to refuse, at every token
    std::wistringstream failed(L"CMF 1");
    failed.setstate(std::ios::failbit);
    const ZetString invalid = L"Invalid input stream for the tokenizer.";
    EXPECT_EQ(test::thrownBy([&] { failed >> matrix; }).text(), invalid);
    const test::ZetCollectingHandler posted;
    failed >> matrix;
    EXPECT_EQ(posted.texts(),
              (std::vector<ZetString>{invalid, invalid,
                                      L"First line of CMF file is not the CMF version (CMF = <version>)."}));
    EXPECT_EQ(matrix, ZetMatrix(1, 1, 5.0));
}

}  // namespace
}  // namespace zet
