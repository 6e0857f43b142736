#include <zet/ZetMetaFlag>

#include <iostream>
#include <sstream>

#include <zet/ZetStrList>

#include "core/ZetUnitInit"

namespace zet {
namespace {

/// The flags that exclude one another.
constexpr int exFlags = ZetMetaFlag::InFileName | ZetMetaFlag::OutFileName | ZetMetaFlag::Directory;

constexpr int flagAt(std::size_t keyIndex)
{
    return keyIndex == 0 ? 0 : 1 << (keyIndex - 1);
}

/// The characters up to the closing bracket; sets the fail bit when the stream ends before it.
ZetString readBracketed(std::wistream& in)
{
    ZetString text;
    wchar_t c = 0;
    while (in.get(c) && c != L')') {
        text.push_back(c);
    }
    return text;
}

}  // namespace

ZetMetaFlag::ZetMetaFlag(int flags) : m_flags(flags)
{
    validate();
}

ZetString ZetMetaFlag::className() const
{
    return L"ZetMetaFlag";
}

void ZetMetaFlag::setFlag(int flag, bool on)
{
    m_flags = on ? m_flags | flag : m_flags & ~flag;
    validate();
}

void ZetMetaFlag::setFlags(int flags)
{
    m_flags = flags;
    validate();
}

void ZetMetaFlag::validate()
{
    if (isSet(Return | NoCrossRef)) {
        m_flags &= ~NoCrossRef;
    }
    const int exclusive = m_flags & exFlags;
    if ((exclusive & (exclusive - 1)) != 0) {
        m_flags &= ~exFlags;
    }
}

ZetString ZetMetaFlag::toString() const
{
    std::wostringstream out;
    out << *this;
    return out.str();
}

int ZetMetaFlag::fromString(const ZetString& text)
{
    std::wistringstream in(text);
    ZetMetaFlag flag;
    in >> flag;
    return flag.flags();
}

const ZetStrList& ZetMetaFlag::allKeys()
{
    static const ZetStrList keys = {L"Editable",   L"ReadOnly",  L"NoCrossRef", L"NoPersist",   L"Required",
                                    L"Disabled",   L"Ignorable", L"Hidden",     L"Return",      L"System",
                                    L"Expression", L"MultiLine", L"InFileName", L"OutFileName", L"Directory"};
    return keys;
}

std::wostream& operator<<(std::wostream& out, const ZetMetaFlag& flag)
{
    const ZetStrList& keys = ZetMetaFlag::allKeys();
    ZetStrList set;
    for (std::size_t i = 1; i < keys.size(); ++i) {
        if (flag.isSet(flagAt(i))) {
            set.append(keys[i]);
        }
    }
    return out << L"(" << (flag.flags() == 0 ? keys[0] : set.toString(L" | ")) << L")";
}

std::wistream& operator>>(std::wistream& in, ZetMetaFlag& flag)
{
    wchar_t first = 0;
    if (!(in >> first)) {
        return in;
    }
    ZetString text;
    if (first == L'(') {
        text = readBracketed(in);
    } else {
        in.putback(first);
        in >> text;
    }
    if (!in) {
        return in;
    }
    const ZetStrList parts(text, L"|");
    int word = flag.flags();
    for (std::size_t i = parts.size(); i-- > 0;) {
        const int index = ZetMetaFlag::allKeys().find(trim(parts[i]), true);
        word |= index < 0 ? 0 : flagAt(static_cast<std::size_t>(index));
    }
    flag.setFlags(word);
    return in;
}

}  // namespace zet
