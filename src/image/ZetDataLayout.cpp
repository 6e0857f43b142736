#include <zet/ZetDataLayout>

#include <zet/ZetEnum>
#include <zet/ZetStrList>

#include "core/ZetUnitInit"
#include "reflect/ZetEnumTable"

namespace zet {

namespace {

constexpr const wchar_t* kKeys[] = {L"PixelInterleaved", L"BandInterleaved", L"LineInterleaved", L"BlockInterleaved"};
static_assert(std::size(kKeys) == ZetDataLayout::Invalid, "one key per layout");

}  // namespace

ZetDataLayout::ZetDataLayout(Type type) : m_type(static_cast<Type>(internal::enumInRange(type, Invalid))) {}

ZetDataLayout::ZetDataLayout(const ZetString& key) : m_type(fromString(key)) {}

ZetString ZetDataLayout::className() const
{
    return L"ZetDataLayout";
}

const ZetString& ZetDataLayout::toString() const
{
    return enumerator().toString(m_type);
}

ZetDataLayout::Type ZetDataLayout::fromString(const ZetString& key)
{
    return static_cast<Type>(internal::enumFromString(enumerator(), key, Invalid));
}

bool ZetDataLayout::isValid(const ZetString& key)
{
    return fromString(key) != Invalid;
}

const ZetStrList& ZetDataLayout::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetDataLayout::enumerator()
{
    static const ZetEnum table = internal::makeEnum(kKeys);
    return table;
}

std::wostream& operator<<(std::wostream& out, const ZetDataLayout& layout)
{
    return out << layout.toString();
}

std::wistream& operator>>(std::wistream& in, ZetDataLayout& layout)
{
    const int number = internal::readEnum(in, ZetDataLayout::enumerator(), ZetDataLayout::Invalid);
    layout = static_cast<ZetDataLayout::Type>(number);
    return in;
}

}  // namespace zet
