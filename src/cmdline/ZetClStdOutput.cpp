#include <zet/ZetClStdOutput>

#include <algorithm>
#include <ostream>

#include <zet/ZetClParserIF>
#include <zet/ZetClXorHandler>

#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr int kMaxWidth = 75;
constexpr const wchar_t* kValueName = L"val";

/// Whether a line may break in front of the character at \p place; never behind the text.
bool breaksAt(const ZetString& text, long place)
{
    return static_cast<std::size_t>(place) < text.size() &&
           ZetString(L" ,|").find(text[static_cast<std::size_t>(place)]) != ZetString::npos;
}

/// How many characters from \p start on stand on one line of \p room characters.
long lineLength(const ZetString& text, long start, long room)
{
    long n = std::min(room, static_cast<long>(text.size()) - start);
    if (n == room) {
        while (n >= 0 && !breaksAt(text, start + n)) {
            --n;
        }
    }
    if (n <= 0) {
        n = room;
    }
    const auto begin = text.begin() + start;
    const auto newline = std::find(begin, begin + n, L'\n');
    return newline == begin + n ? n : newline - begin + 1;
}

ZetString blanks(long count)
{
    return ZetString(static_cast<std::size_t>(std::max(count, 0L)), L' ');
}

void printID(const ZetClStdOutput& output, const ZetClArg& arg, std::wostream& out)
{
    output.spacePrint(out, arg.longID(kValueName), kMaxWidth, 3, 3);
    output.spacePrint(out, arg.description(), kMaxWidth, 5, 0);
}

}  // namespace

ZetString ZetClStdOutput::className() const
{
    return L"ZetClStdOutput";
}

void ZetClStdOutput::usage(const ZetClParserIF& parser) const
{
    std::wostream& out = internal::cout();
    out << L"\nUSAGE: \n\n";
    shortUsage(parser, out);
    out << L"\n\nWhere: \n\n";
    longUsage(parser, out);
    out << std::endl;
}

void ZetClStdOutput::version(const ZetClParserIF& parser) const
{
    internal::cout() << L"\n" << parser.programName() << L"  version: " << parser.version() << L"\n" << std::endl;
}

void ZetClStdOutput::failure(const ZetClParserIF& parser, const ZetTextMsg& message) const
{
    std::wostream& err = internal::cerr();
    err << L"PARSE ERROR: " << message << L"\n" << std::endl;
    if (!parser.hasHelpAndVersion()) {
        usage(parser);
        return;
    }
    err << L"Brief USAGE: \n";
    shortUsage(parser, err);
    err << L"\nFor complete USAGE and HELP type: \n   " << parser.programName() << L" --help\n" << std::endl;
}

void ZetClStdOutput::longUsage(const ZetClParserIF& parser, std::wostream& out) const
{
    for (const ZetClXorHandler::Group& group : parser.xorHandler().groups()) {
        for (const ZetClArgPtr& member : group) {
            printID(*this, *member, out);
            if (member != group.back()) {
                spacePrint(out, L"-- OR --", kMaxWidth, 9, 0);
            }
        }
        out << L"\n\n";
    }
    for (const ZetClArgPtr& arg : parser.argList()) {
        if (!parser.xorHandler().contains(arg)) {
            printID(*this, *arg, out);
            out << L"\n";
        }
    }
    out << L"\n";
    spacePrint(out, parser.description(), kMaxWidth, 3, 0);
}

void ZetClStdOutput::shortUsage(const ZetClParserIF& parser, std::wostream& out) const
{
    ZetString text = parser.programName() + L" ";
    for (const ZetClXorHandler::Group& group : parser.xorHandler().groups()) {
        text += L" {";
        for (const ZetClArgPtr& member : group) {
            text += member->shortID(kValueName) + L"|";
        }
        text.back() = L'}';
    }
    for (const ZetClArgPtr& arg : parser.argList()) {
        if (!parser.xorHandler().contains(arg)) {
            text += L" " + arg->shortID(kValueName);
        }
    }
    const int offset = static_cast<int>(std::min<std::size_t>(parser.programName().size() + 2, 37));
    spacePrint(out, text, kMaxWidth, 3, offset);
}

void ZetClStdOutput::spacePrint(std::wostream& out, const ZetString& text, int maxWidth, int indentSpaces,
                                int secondLineOffset) const
{
    const long length = static_cast<long>(text.size());
    long indent = indentSpaces;
    if (length + indent <= maxWidth || maxWidth <= 0) {
        out << blanks(indent) << text << L"\n";
        return;
    }
    long start = 0;
    while (start < length) {
        // Without room, each line still takes one character.
        const long n = lineLength(text, start, std::max(maxWidth - indent, 1L));
        out << blanks(indent) << text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(n)) << L"\n";
        if (start == 0) {
            indent += secondLineOffset;
        }
        while (start + n < length && text[static_cast<std::size_t>(start + n)] == L' ') {
            ++start;
        }
        start += n;
    }
}

}  // namespace zet
