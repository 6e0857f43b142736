#include <zet/ZetTokenizer>

#include <fcntl.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include <zet/ZetCoreFunctions>
#include <zet/ZetFile>

#include "core/ZetUnitInit"
#include "fileio/ZetTokenizer_p"

namespace zet {
namespace {

/// The first \p byteCount bytes of a file, taken as wide characters up to a zero.
ZetString wideBytesOf(ZetFile& file, int byteCount)
{
    const std::size_t bytes = static_cast<std::size_t>(std::max(byteCount, 0));
    std::wstring buffer(bytes + 1, L'\0');
    std::memset(buffer.data(), '\n', bytes);
    file.read(buffer.data(), bytes);
    return buffer.c_str();
}

}  // namespace

ZetTokenizer::ZetTokenizer(std::wistream& stream, const ZetString& delimiters, const ZetString& lineComment,
                           const ZetString& blockCommentBegin, const ZetString& blockCommentEnd,
                           const ZetString& whitespace)
    : m_p(std::make_unique<ZetTokenizer_p>(stream, delimiters, lineComment, blockCommentBegin, blockCommentEnd,
                                           whitespace))
{
    if (!m_p->status().text().empty()) {
        postMessage(m_p->status());
    }
}

ZetTokenizer::~ZetTokenizer() = default;

ZetString ZetTokenizer::className() const
{
    return L"ZetTokenizer";
}

int ZetTokenizer::lineNumber() const
{
    return m_p->lineNumber();
}

void ZetTokenizer::setLineNumber(int lineNumber)
{
    m_p->setLineNumber(lineNumber);
}

ZetTextMsg ZetTokenizer::status() const
{
    return m_p->status();
}

bool ZetTokenizer::nextToken(ZetString& token, TokenType& type)
{
    return m_p->nextToken(token, type);
}

bool ZetTokenizer::nextToken(ZetString& token)
{
    TokenType type = Word;
    return m_p->nextToken(token, type);
}

bool ZetTokenizer::nextData(ZetString& data, wchar_t stop)
{
    return m_p->nextData(data, stop);
}

bool ZetTokenizer::findToken(ZetString& token, TokenType& type, const ZetString& fileName, int byteCount,
                             const ZetString& delimiters, const ZetString& lineComment, const ZetString& blockBegin,
                             const ZetString& blockEnd, const ZetString& whitespace)
{
    ZetFile file;
    if (file.open(fileName, O_RDONLY, 0666) != 0) {
        postMessage(ZetTextMsg(L"Cannot open file for read-only access: " + fileName, L"ZetTokenizer", __LINE__,
                               ZetTextMsg::Error));
        return false;
    }
    try {
        token.clear();
        type = Word;
        std::wistringstream stream(wideBytesOf(file, byteCount));
        ZetTokenizer tokenizer(stream, delimiters, lineComment, blockBegin, blockEnd, whitespace);
        return tokenizer.status().text().empty() && tokenizer.nextToken(token, type);
    } catch (...) {
        return false;
    }
}

}  // namespace zet
