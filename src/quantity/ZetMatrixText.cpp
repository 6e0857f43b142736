// The text file format of matrices, CMF.

#include <zet/ZetMatrix>

#include <algorithm>
#include <istream>
#include <ostream>
#include <sstream>
#include <string>

#include <zet/ZetTokenizer>

#include "core/ZetStreamPrecision"
#include "core/ZetUnitInit"
#include "quantity/ZetMatrix_p"

namespace zet {
namespace {

using internal::postMatrixError;

constexpr std::streamsize kDigits = 17;

/// Reads one matrix, token by token. Each step answers whether reading goes on; one that does not has
/// posted why, unless it says otherwise.
class CmfReader
{
public:
    explicit CmfReader(std::wistream& in) : m_tokenizer(in, L"{}=$", L"#", L"", L"", L" \t\r\n") {}

    /// Reads up to the end of the stream.
    /// Returns  whether that gave a matrix, which \p matrix then is.
    bool read(ZetMatrix& matrix) { return readHeader() && readElements() && store(matrix); }

private:
    bool readHeader()
    {
        return expectWord(L"CMF", L"First line of CMF file is not the CMF version (CMF = <version>).") &&
               expect(L"1", L"Expected the version number to be '1'.") &&
               expect(L"{", L"Expected an open brace '{' token.") &&
               expectWord(L"rows", L"Expected 'rows' token (rows = <nRows>).") &&
               readCount(m_rowCount, L"Expected assignment '=' token (rows = <nRows>).",
                         L"The number of rows cannot be zero (0).") &&
               expectWord(L"columns", L"Expected 'columns' token (columns = <nCols>).") &&
               readCount(m_columnCount, L"Expected assignment '=' token (columns = <nCols>).",
                         L"The number of columns can not be zero (0).") &&
               expect(L"}", L"Expected a close brace '}' token.");
    }

    /// The elements up to "$" or the end. They gather as they come, since the counts in the header
    /// promise nothing.
    bool readElements()
    {
        const std::size_t expected = std::size_t{m_rowCount} * m_columnCount;
        while (nextToken() && m_token != L"$") {
            m_elements.push_back(numberIn<double>(m_token));
            if (m_elements.size() > expected) {
                return refuse(L"Too many elements for matrix. Expected '" + std::to_wstring(expected) + L"' elements.");
            }
        }
        if (m_elements.size() < expected) {
            return refuse(L"Not enough elements for matrix. Expected '" + std::to_wstring(expected) +
                          L"' elements, but got '" + std::to_wstring(m_elements.size()) + L"'.");
        }
        return true;
    }

    /// Hands the matrix over, unless anything follows the end of the list.
    bool store(ZetMatrix& matrix)
    {
        if (nextToken()) {
            return false;
        }
        ZetMatrix result = internal::zeroMatrix(m_rowCount, m_columnCount);
        std::copy(m_elements.begin(), m_elements.end(), result.data());
        matrix = result;
        return true;
    }

    bool nextToken() { return m_tokenizer.nextToken(m_token); }

    bool expect(const wchar_t* token, const wchar_t* failure)
    {
        return (nextToken() && m_token == token) || refuse(failure);
    }

    /// The same without regard to case.
    bool expectWord(const wchar_t* word, const wchar_t* failure)
    {
        return (nextToken() && isEqual(m_token, word)) || refuse(failure);
    }

    /// Reads "= count".
    bool readCount(unsigned short& count, const wchar_t* noAssignment, const wchar_t* isZero)
    {
        if (!expect(L"=", noAssignment) || !(nextToken() || refuse(noAssignment))) {
            return false;
        }
        count = numberIn<unsigned short>(m_token);
        return count != 0 || refuse(isZero);
    }

    /// What the platform's stream makes of a token; 0 when that is no number.
    template <class T>
    T numberIn(const ZetString& token)
    {
        T value = 0;
        m_numbers.clear();
        m_numbers.str(token);
        m_numbers >> value;
        return value;
    }

    bool refuse(const ZetString& text)
    {
        postMatrixError(text, __LINE__);
        return false;
    }

    ZetTokenizer m_tokenizer;
    ZetString m_token;
    std::wistringstream m_numbers;
    unsigned short m_rowCount = 0;
    unsigned short m_columnCount = 0;
    std::vector<double> m_elements;
};

}  // namespace

std::wostream& operator<<(std::wostream& out, const ZetMatrix& matrix)
{
    if (matrix.isEmpty()) {
        return out;
    }
    out << L"\n#This file was written by ZetMatrix::operator<<\n\n"
        << L"CMF 1\n{\nrows = " << matrix.rowCount() << L"\ncolumns = " << matrix.columnCount() << L"\n}\n";
    const internal::ZetStreamPrecision digits(out, kDigits);
    for (unsigned int r = 0; r < matrix.rowCount(); ++r) {
        for (unsigned int c = 0; c < matrix.columnCount(); ++c) {
            out << matrix(r, c) << L"    ";
        }
        out << L"\n";
    }
    return out << L"$\n";
}

std::wistream& operator>>(std::wistream& in, ZetMatrix& matrix)
{
    if (!in.eof()) {
        CmfReader(in).read(matrix);
    }
    return in;
}

}  // namespace zet
