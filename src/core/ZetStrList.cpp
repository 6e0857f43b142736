#include <zet/ZetStrList>

#include <algorithm>
#include <ostream>

#include "core/ZetUnitInit"

namespace zet {
namespace {

using Parts = std::vector<ZetString>;

ZetString withoutBrackets(const ZetString& text)
{
    if (text.size() >= 2 && text.front() == L'(' && text.back() == L')') {
        return ZetString(text, 1, text.size() - 2);
    }
    return text;
}

Parts partsWithEmpty(const ZetString& text, const ZetString& delims)
{
    Parts parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find_first_of(delims); end != ZetString::npos;
         end = text.find_first_of(delims, begin)) {
        parts.emplace_back(text, begin, end - begin);
        begin = end + 1;
    }
    parts.emplace_back(text, begin);
    return parts;
}

Parts partsWithoutEmpty(const ZetString& text, const ZetString& delims)
{
    Parts parts;
    std::size_t begin = text.find_first_not_of(delims);
    while (begin != ZetString::npos) {
        const std::size_t end = text.find_first_of(delims, begin);
        parts.emplace_back(text, begin, end - begin);
        begin = text.find_first_not_of(delims, end);
    }
    return parts;
}

}  // namespace

ZetStrList::ZetStrList(const ZetString& text, const ZetString& delims)
{
    split(text, delims, true);
}

ZetString ZetStrList::className() const
{
    return L"ZetStrList";
}

int ZetStrList::find(const ZetString& text, bool ignoreCase) const
{
    const ZetString lower = ignoreCase ? zet::toLower(text) : ZetString();
    const ZetString& wanted = ignoreCase ? lower : text;
    const auto matches = [&](const ZetString& element) {
        return ignoreCase ? zet::toLower(element) == wanted : element == wanted;
    };
    const auto found = std::find_if(m_elements.rbegin(), m_elements.rend(), matches);
    return static_cast<int>(m_elements.rend() - found) - 1;
}

void ZetStrList::split(const ZetString& text, const ZetString& delims, bool keepEmpty)
{
    if (text.empty()) {
        m_elements.clear();
        return;
    }
    const ZetString inner = withoutBrackets(trim(text));
    if (delims.empty()) {
        m_elements = Parts{inner};
    } else {
        m_elements = keepEmpty ? partsWithEmpty(inner, delims) : partsWithoutEmpty(inner, delims);
    }
}

void ZetStrList::insert(std::size_t index, const ZetString& text)
{
    // The text may be an element of this list, which growing would take away.
    ZetString element = text;
    if (m_elements.capacity() == 0) {
        m_elements.reserve(10);
    } else if (m_elements.size() == m_elements.capacity()) {
        m_elements.reserve(2 * m_elements.capacity());
    }
    const std::size_t position = std::min(index, m_elements.size());
    m_elements.insert(m_elements.begin() + static_cast<std::ptrdiff_t>(position), std::move(element));
}

void ZetStrList::remove(const ZetString& text)
{
    // The text may be an element of this list.
    const ZetString unwanted = text;  // NOLINT(performance-unnecessary-copy-initialization)
    m_elements.erase(std::remove(m_elements.begin(), m_elements.end(), unwanted), m_elements.end());
}

void ZetStrList::sort(bool reverse, bool ignoreCase)
{
    std::sort(m_elements.begin(), m_elements.end(), ignoreCase ? caseInsensitiveCompare : caseSensitiveCompare);
    if (reverse) {
        std::reverse(m_elements.begin(), m_elements.end());
    }
}

ZetString ZetStrList::toString(const ZetString& separator) const
{
    ZetString joined;
    for (const ZetString& element : m_elements) {
        if (&element != m_elements.data()) {
            joined += separator;
        }
        joined += element;
    }
    return joined;
}

ZetStrList::operator ZetString() const
{
    if (m_elements.empty()) {
        return ZetString();
    }
    return L"(" + toString(L",") + L")";
}

std::wostream& operator<<(std::wostream& out, const ZetStrList& list)
{
    return out << static_cast<ZetString>(list);
}

std::wistream& operator>>(std::wistream& in, ZetStrList& list)
{
    ZetString line;
    getline(in, line);
    list.split(line, L",", true);
    return in;
}

}  // namespace zet
