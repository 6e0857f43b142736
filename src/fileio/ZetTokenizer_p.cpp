#include "fileio/ZetTokenizer_p"

#include <algorithm>
#include <iterator>

#include <zet/ZetCoreFunctions>

#include "core/ZetUnitInit"

namespace zet {
namespace {

ZetTextMsg failure(const ZetString& text, int line)
{
    return ZetTextMsg(text, L"ZetTokenizer", line, ZetTextMsg::Error);
}

ZetTextMsg noFailure()
{
    return ZetTextMsg(ZetString(), ZetTextMsg::Error);
}

bool contains(const ZetString& text, wchar_t c)
{
    return text.find(c) != ZetString::npos;
}

/// Whether any character of \p set occurs in \p text.
bool containsAny(const ZetString& text, const ZetString& set)
{
    return text.find_first_of(set) != ZetString::npos;
}

bool hasOneOrTwo(const ZetString& text)
{
    return text.size() == 1 || text.size() == 2;
}

/// The first character of \p set, in its order, that occurs in \p text; an empty text for none.
ZetString firstOf(const ZetString& set, const ZetString& text)
{
    const std::size_t index = set.find_first_of(text);
    return index == ZetString::npos ? ZetString() : ZetString(1, set[index]);
}

/// The characters of a tokenizer, as its rules see them.
struct Setup
{
    const ZetString& whitespace;
    const ZetString& delimiters;
    const ZetString& line;
    const ZetString& begin;
    const ZetString& end;

    bool hasTwoComments() const { return !begin.empty() && !line.empty(); }
};

struct Rule
{
    bool (*isBroken)(const Setup& s);
    ZetString (*message)(const Setup& s);
};

/// In the order in which they are tested. The doubled blanks belong to the messages.
const Rule kRules[] = {
    {[](const Setup& s) { return s.line.size() > 2; },
     [](const Setup& s) -> ZetString {
         return L"Line comment identifier, '" + s.line + L"', exceeds maximum length of 2";
     }},
    {[](const Setup& s) { return contains(s.line, L'"'); },
     [](const Setup& s) -> ZetString {
         return L"Line comment identifier, '" + s.line + L"' may not include literal token identifier '\"'";
     }},
    {[](const Setup& s) { return containsAny(s.line, s.whitespace); },
     [](const Setup&) -> ZetString { return L"Line comment identifier may not include whitespace ZetCharacters"; }},

    {[](const Setup& s) {
         return (!s.begin.empty() || !s.end.empty()) && !(hasOneOrTwo(s.begin) && hasOneOrTwo(s.end));
     },
     [](const Setup& s) -> ZetString {
         return L"Block comment begin, '" + s.begin + L"', and block comment end, '" + s.end + L"', failed length test";
     }},
    {[](const Setup& s) { return contains(s.begin, L'"'); },
     [](const Setup&) -> ZetString { return L"Invalid character, '\"', in block comment begin identifier"; }},
    {[](const Setup& s) { return contains(s.end, L'"'); },
     [](const Setup&) -> ZetString { return L"Invalid  ZetCharacter, '\"', in block comment end identifier"; }},
    // The whitespace is tested character by character, in both identifiers: the first hit decides.
    {[](const Setup& s) { return containsAny(s.begin, firstOf(s.whitespace, s.begin + s.end)); },
     [](const Setup&) -> ZetString { return L"White space found in block comment begin identifier"; }},
    {[](const Setup& s) { return containsAny(s.end, s.whitespace); },
     [](const Setup&) -> ZetString { return L"White  space found in block comment end identifier"; }},

    {[](const Setup& s) { return s.hasTwoComments() && s.line == s.begin; },
     [](const Setup&) -> ZetString { return L"Block begin comment and line comment  identifiers must differ"; }},
    {[](const Setup& s) {
         return s.hasTwoComments() && s.line.size() == 1 && s.begin.size() == 2 && containsAny(s.begin, s.line);
     },
     [](const Setup& s) -> ZetString {
         return L"The line comment ZetCharacter '" + s.line +
                L"' must differ from each ZetCharacter in the block comment begin identifier '" + s.begin + L"'";
     }},
    {[](const Setup& s) {
         return s.hasTwoComments() && s.begin.size() == 1 && s.line.size() == 2 && containsAny(s.line, s.begin);
     },
     [](const Setup& s) -> ZetString {
         return L"The block comment begin ZetCharacter '" + s.begin +
                L"' must differ from each ZetCharacter in the line comment identifier '" + s.line + L"'";
     }},

    {[](const Setup& s) { return containsAny(s.delimiters, s.whitespace); },
     [](const Setup& s) -> ZetString {
         return L"'" + firstOf(s.whitespace, s.delimiters) +
                L"' cannot be listed as both whitespace and as a delimiter";
     }},
    {[](const Setup& s) { return contains(s.whitespace, L'"'); },
     [](const Setup&) -> ZetString { return L"Literal ZetCharacter, '\"', cannot be listed as a whitespace"; }},
    {[](const Setup& s) { return contains(s.delimiters, L'"'); },
     [](const Setup&) -> ZetString { return L"Literal ZetCharacter, '\"', cannot be listed as a delimiter"; }},
};

}  // namespace

ZetTokenizer_p::ZetTokenizer_p(std::wistream& stream, const ZetString& delimiters, const ZetString& lineComment,
                               const ZetString& blockCommentBegin, const ZetString& blockCommentEnd,
                               const ZetString& whitespace)
    : m_stream(stream),
      m_buffer(stream.rdbuf()),
      m_whitespace(whitespace),
      m_delimiters(delimiters),
      m_lineComment(lineComment),
      m_blockCommentBegin(blockCommentBegin),
      m_blockCommentEnd(blockCommentEnd),
      m_lineNumber(1),
      m_status(noFailure()),
      m_held(kEnd)
{
    if (!m_stream) {
        m_status = failure(L"Invalid input stream for the tokenizer.", __LINE__);
    } else if (!m_buffer) {
        m_status = failure(L"Failed to retrieve stream buffer for tokenizer.", __LINE__);
    } else {
        for (const wchar_t c : {L'\n', L'\r'}) {
            if (!contains(m_whitespace, c)) {
                m_whitespace += c;
            }
        }
        m_status = validate();
    }
    sortCharacters();
}

ZetTextMsg ZetTokenizer_p::validate() const
{
    const Setup setup = {m_whitespace, m_delimiters, m_lineComment, m_blockCommentBegin, m_blockCommentEnd};
    for (const Rule& rule : kRules) {
        if (rule.isBroken(setup)) {
            return failure(rule.message(setup), __LINE__);
        }
    }
    return noFailure();
}

void ZetTokenizer_p::sortCharacters()
{
    for (std::size_t i = 0; i < std::size(m_asciiTypes); ++i) {
        const wchar_t c = static_cast<wchar_t>(i);
        const bool mayBeComment =
            m_lineComment.substr(0, 1) == ZetString(1, c) || m_blockCommentBegin.substr(0, 1) == ZetString(1, c);
        m_asciiTypes[i] = mayBeComment ? kUnsure : typeOf(c);
    }
}

bool ZetTokenizer_p::nextToken(ZetString& token, TokenType& type)
{
    beginReading();
    token.clear();
    while (parseNext(token, type)) {
    }
    if (!m_status.text().empty()) {
        token.clear();
        postMessage(m_status);
    }
    return !token.empty();
}

bool ZetTokenizer_p::nextData(ZetString& data, wchar_t stop)
{
    beginReading();
    data.clear();
    for (std::wint_t c = get(); c != kEnd; c = get()) {
        if (static_cast<wchar_t>(c) == stop) {
            return true;
        }
        data.push_back(static_cast<wchar_t>(c));
    }
    return false;
}

/// \name Characters
/// @{

void ZetTokenizer_p::beginReading()
{
    const std::wistream::sentry ready(m_stream, true);
    m_buffer = ready ? m_stream.rdbuf() : nullptr;
}

/// What \p read gives, kEnd without a buffer. A buffer that throws ends the input and, as for any reading
/// of a stream, makes the stream bad: a file that does not fit its locale is such a buffer.
template <class Read>
std::wint_t ZetTokenizer_p::guarded(Read&& read)
{
    if (!m_buffer) {
        return kEnd;
    }
    try {
        return read(*m_buffer);
    } catch (...) {
        m_buffer = nullptr;
    }
    m_stream.setstate(std::ios_base::badbit);
    return kEnd;
}

/// look() where nothing is ready.
std::wint_t ZetTokenizer_p::lookFurther()
{
    if (m_held != kEnd) {
        return m_held;
    }
    const std::wint_t c = guarded([](std::wstreambuf& buffer) { return buffer.sgetc(); });
    if (c == kEnd && m_buffer) {
        m_buffer = nullptr;
        m_stream.setstate(std::ios_base::eofbit);
    }
    return c;
}

/// The character behind the next one. Both stay: where the buffer cannot take back the next one, as at
/// a border of the blocks that it reads of a file, the tokenizer holds it.
std::wint_t ZetTokenizer_p::lookBehindNext()
{
    const auto look = [](std::wstreambuf& buffer) { return buffer.sgetc(); };
    if (m_held != kEnd) {
        return guarded(look);
    }
    const std::wint_t next = m_buffer->sbumpc();
    const std::wint_t behind = guarded(look);
    if (guarded([](std::wstreambuf& buffer) { return buffer.sungetc(); }) == kEnd) {
        m_held = next;
    }
    return behind;
}

/// Takes the next character, and counts it if it ends a line.
std::wint_t ZetTokenizer_p::get()
{
    const std::wint_t c = look();
    if (c == kEnd) {
        m_stream.setstate(std::ios_base::failbit);
        return c;
    }
    if (m_held != kEnd) {
        m_held = kEnd;
    } else {
        m_buffer->sbumpc();
    }
    countLine(static_cast<wchar_t>(c));
    return c;
}

void ZetTokenizer_p::get(std::size_t count)
{
    for (; count != 0; --count) {
        get();
    }
}

/// @}
/// \name What comes next
/// @{

ZetTokenizer_p::NextType ZetTokenizer_p::nextType()
{
    const std::wint_t c = look();
    if (c == kEnd) {
        return EndOfInput;
    }
    if (c < std::size(m_asciiTypes) && m_asciiTypes[c] != kUnsure) {
        return m_asciiTypes[c];
    }
    if (c != kQuote && isLineComment()) {
        return LineComment;
    }
    if (c != kQuote && isBeginBlockComment()) {
        return BlockComment;
    }
    return typeOf(static_cast<wchar_t>(c));
}

/// What a character is that begins no comment.
ZetTokenizer_p::NextType ZetTokenizer_p::typeOf(wchar_t c) const
{
    return c == kQuote                 ? Literal
           : contains(m_delimiters, c) ? Delimiter
           : contains(m_whitespace, c) ? Whitespace
                                       : Word;
}

/// Takes characters that the buffer holds ready, as long as the table alone tells that they are of \p type.
/// It is the short way through the bulk of a text, and may end anywhere. What it took lies in the buffer
/// until that is asked for more.
std::wstring_view ZetTokenizer_p::takeReady(NextType type)
{
    if (m_held != kEnd || !m_buffer) {
        return std::wstring_view();
    }
    const std::wstring_view ready = ZetReadyCharacters::in(*m_buffer);
    const auto end = std::find_if(ready.begin(), ready.end(), [this, type](wchar_t c) {
        return static_cast<std::wint_t>(c) >= std::size(m_asciiTypes) || m_asciiTypes[c] != type;
    });
    const std::size_t count = static_cast<std::size_t>(end - ready.begin());
    ZetReadyCharacters::take(*m_buffer, count);
    return ready.substr(0, count);
}

/// Whether the input goes on with \p identifier, of one or two characters. Nothing is taken.
bool ZetTokenizer_p::isNext(const ZetString& identifier)
{
    if (!hasOneOrTwo(identifier) || look() != static_cast<std::wint_t>(identifier[0])) {
        return false;
    }
    return identifier.size() == 1 || lookBehindNext() == static_cast<std::wint_t>(identifier[1]);
}

/// @}
/// \name Pieces of the input
/// @{

/// Takes the next piece. Returns whether the one behind it is to be taken too: this one was no token, and
/// all is well.
bool ZetTokenizer_p::parseNext(ZetString& token, TokenType& type)
{
    switch (nextType()) {
        case Whitespace:
            skipWhitespace();
            break;
        case Literal:
            type = ZetTokenizer::Literal;
            parseLiteral(token);
            return false;
        case Delimiter:
            type = ZetTokenizer::Delimiter;
            token.assign(1, static_cast<wchar_t>(get()));
            return false;
        case LineComment:
            skipLineComment();
            break;
        case BlockComment:
            parseBlockComment();
            break;
        case Word:
            type = ZetTokenizer::Word;
            parseToken(token);
            return false;
        case EndOfInput:
            return false;
    }
    return m_status.text().empty();
}

void ZetTokenizer_p::skipWhitespace()
{
    do {
        for (const wchar_t c : takeReady(Whitespace)) {
            countLine(c);
        }
    } while (nextType() == Whitespace && get() != kEnd);
}

void ZetTokenizer_p::parseToken(ZetString& token)
{
    token = takeReady(Word);
    while (nextType() == Word) {
        token.push_back(static_cast<wchar_t>(get()));
        token += takeReady(Word);
    }
}

/// A backslash is stored like any character, and the character behind it takes its place, for good: it
/// escapes nothing itself.
void ZetTokenizer_p::parseLiteral(ZetString& token)
{
    get();
    const int line = m_lineNumber;
    bool isEscapePossible = true;
    for (std::wint_t c = get(); c != kEnd; c = get()) {
        if (isEscapePossible && !token.empty() && token.back() == kEscape) {
            token.back() = static_cast<wchar_t>(c);
            isEscapePossible = false;
            continue;
        }
        if (c == kQuote) {
            return;
        }
        isEscapePossible = true;
        token.push_back(static_cast<wchar_t>(c));
    }
    token.clear();
    m_status =
        failure(L"Failed to find closing literal delimiter (\") at line " + std::to_wstring(line) + L".", __LINE__);
}

void ZetTokenizer_p::skipLineComment()
{
    while (look() != kEnd && get() != L'\n') {
    }
}

void ZetTokenizer_p::parseBlockComment()
{
    get(m_blockCommentBegin.size());
    const int line = m_lineNumber;
    while (!isEndBlockComment()) {
        if (look() == kEnd) {
            m_status = failure(
                L"Failed to find closing block comment delimiter at line " + std::to_wstring(line) + L".", __LINE__);
            return;
        }
        get();
    }
    get(m_blockCommentEnd.size());
}

/// @}

}  // namespace zet
