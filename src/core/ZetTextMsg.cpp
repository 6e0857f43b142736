#include <zet/ZetTextMsg>

#include <iterator>
#include <ostream>

#include "core/ZetUnitInit"

namespace zet {
namespace {

constexpr const wchar_t* kWords[] = {L"error", L"warning", L"info", L"debug", L"user"};
static_assert(std::size(kWords) == ZetTextMsg::User + 1, "one word for each kind");

ZetTextMsg::Kind kindOf(int given)
{
    // As unsigned numbers, negative ones lie above the kinds too.
    return static_cast<unsigned int>(given) < ZetTextMsg::User ? static_cast<ZetTextMsg::Kind>(given)
                                                               : ZetTextMsg::User;
}

}  // namespace

ZetTextMsg::ZetTextMsg(const ZetString& text, const ZetString& file, int line, int kind)
    : m_code(0), m_kind(kindOf(kind)), m_givenKind(kind), m_line(line), m_file(trimFname(file)), m_text(text)
{}

ZetTextMsg::ZetTextMsg(const ZetString& text, int kind) : ZetTextMsg(text, unknown(), 0, kind) {}

const char* ZetTextMsg::what() const noexcept
{
    return reinterpret_cast<const char*>(m_text.c_str());
}

ZetTextMsg* ZetTextMsg::clone() const
{
    return new ZetTextMsg(*this);
}

bool ZetTextMsg::isEqual(const ZetTextMsg* other) const
{
    return other && m_code == other->m_code && m_kind == other->m_kind && m_givenKind == other->m_givenKind &&
           m_line == other->m_line && m_file == other->m_file && m_text == other->m_text;
}

ZetString ZetTextMsg::className() const
{
    return L"ZetTextMsg";
}

void ZetTextMsg::setText(const ZetString& text, const ZetString& file, int line, int kind)
{
    *this = ZetTextMsg(text, file, line, kind);
}

void ZetTextMsg::clear()
{
    *this = ZetTextMsg(ZetString(), Error);
}

ZetString ZetTextMsg::trimFname(const ZetString& path)
{
    const std::size_t separator = path.find_last_of(L"\\/");
    return separator == ZetString::npos ? path : ZetString(path, separator + 1);
}

const ZetString& ZetTextMsg::unknown()
{
    static const ZetString name = L"<filename unknown>";
    return name;
}

std::wostream& operator<<(std::wostream& out, const ZetTextMsg& message)
{
    if (message.text().empty()) {
        return out;
    }
    return out << kWords[message.kind()] << L": " << message.text() << L" - (" << message.file() << L" : "
               << message.line() << L")";
}

std::ostream& operator<<(std::ostream& out, const ZetTextMsg& message)
{
    if (message.text().empty()) {
        return out;
    }
    const auto address = [](const wchar_t* punctuation) { return static_cast<const void*>(punctuation); };
    return out << toMultibyte(kWords[message.kind()]) << address(L": ") << toMultibyte(message.text())
               << address(L" - (") << toMultibyte(message.file()) << address(L" : ") << message.line() << address(L")");
}

}  // namespace zet
