#include <zet/ZetEnumValidator>

#include <algorithm>
#include <sstream>

#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

#include "core/ZetUnitInit"

namespace zet {

namespace {

/// The text itself, or the first member of a text that starts with a bracket.
ZetString firstMember(const ZetString& text)
{
    if (text.empty() || text.front() != L'(') {
        return text;
    }
    std::wistringstream in(text);
    in.ignore();
    ZetString member;
    getline(in, member, text.find(L',') != ZetString::npos ? L',' : L')');
    return member;
}

}  // namespace

ZetString ZetEnumValidator::className() const
{
    return L"ZetEnumValidator";
}

ZetValidator* ZetEnumValidator::clone() const
{
    return new ZetEnumValidator(*this);
}

bool ZetEnumValidator::isEqual(const ZetValidator* other) const
{
    const auto* that = dynamic_cast<const ZetEnumValidator*>(other);
    if (!that) {
        return false;
    }
    const ZetEnum::Items& items = m_enum.items();
    const ZetEnum::Items& others = that->m_enum.items();
    return std::equal(items.begin(), items.end(), others.begin(), others.end(), [](const auto& a, const auto& b) {
        return a.second.value() == b.second.value() && a.second.name() == b.second.name();
    });
}

bool ZetEnumValidator::isValid(const ZetVariant& value, ZetTextMsg* msg) const
{
    const ZetString name = firstMember(value.value<ZetString>());
    if (!name.empty() && m_enum.isValid(name)) {
        return true;
    }
    if (msg) {
        msg->setText(L"The value of '" + name + L"' is not a member of {" + m_enum.allKeys().toString(L",") + L"}.",
                     L"ZetEnumValidator", __LINE__, ZetTextMsg::Error);
    }
    return false;
}

}  // namespace zet
