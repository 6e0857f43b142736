#include <zet/ZetClArg>

#include <sstream>

#include <zet/ZetCoreFunctions>

#include "core/ZetUnitInit"

namespace zet {

namespace {

bool isBlank(wchar_t c)
{
    return c == ZetClArg::blankCharacter;
}

}  // namespace

ZetClArg::ZetClArg(const ZetMetaProperty& property, const ZetVariant& defaultValue,
                   const ZetClArgVisitorIFConstPtr& visitor)
    : ZetKeyedObject(property.name()),
      m_property(property),
      m_value(defaultValue),
      m_defaultValue(defaultValue),
      m_requireLabel(L"required"),
      m_alreadySet(false),
      m_xorSet(false),
      m_visitor(visitor ? visitor->clone() : nullptr)
{
    checkIdentifiers();
}

ZetClArg::~ZetClArg() = default;

void ZetClArg::checkIdentifiers() const
{
    if (name() == L"ignore_rest") {
        return;
    }
    const auto post = [this](const wchar_t* rule, int line) {
        std::wostringstream text;
        text << rule << *this;
        postMessage(ZetTextMsg(text.str(), L"ZetClArg", line, ZetTextMsg::Error));
    };
    if (m_property.commandFlag() == L'-' || m_property.commandFlag() == L' ') {
        post(L"Argument flag cannot be either '-' or '--' or a space: ", __LINE__);
    }
    if (name().rfind(flagStart, 0) == 0 || name().find(L' ') != ZetString::npos) {
        post(L"Argument name cannot begin with either '-' or '--' or space: ", __LINE__);
    }
}

ZetString ZetClArg::className() const
{
    return L"ZetClArg";
}

bool ZetClArg::isRequired() const
{
    return m_property.flags().isSet(ZetMetaFlag::Required);
}

ZetString ZetClArg::shortID(const ZetString& valueName) const
{
    ZetString id = m_property.commandFlag() ? flagStart + ZetString(1, m_property.commandFlag()) : nameStart + name();
    if (!isSwitch()) {
        id += rdelimiter() + (L"<" + valueName + L">");
    }
    return isRequired() ? id : L"[" + id + L"]";
}

ZetString ZetClArg::longID(const ZetString& valueName) const
{
    const ZetString value = isSwitch() ? ZetString() : ZetString(rdelimiter() + (L"<" + valueName + L">"));
    ZetString id;
    if (m_property.commandFlag()) {
        id = flagStart + ZetString(1, m_property.commandFlag()) + value + L",  ";
    }
    return id + nameStart + name() + value;
}

void ZetClArg::reset()
{
    m_value = m_defaultValue;
    m_alreadySet = false;
    m_xorSet = false;
}

bool ZetClArg::isLabeled() const
{
    return true;
}

bool ZetClArg::isSwitch() const
{
    return false;
}

bool ZetClArg::isMultiValue() const
{
    return false;
}

bool ZetClArg::allowMore()
{
    return false;
}

bool ZetClArg::argMatches(const ZetString& word) const
{
    const wchar_t flag = m_property.commandFlag();
    return (flag && word == flagStart + ZetString(1, flag)) || word == nameStart + name();
}

bool ZetClArg::matches(const ZetClArg& other) const
{
    const wchar_t flag = m_property.commandFlag();
    return (flag && flag == other.m_property.commandFlag()) || name() == other.name();
}

bool ZetClArg::combinedSwitchesMatch(ZetString& word) const
{
    const wchar_t flag = m_property.commandFlag();
    // A flag that is the blank character would be found again where it has been consumed.
    if (!flag || flag == L'-' || isBlank(flag)) {
        return false;
    }
    if (word.rfind(flagStart, 0) != 0 || word.rfind(nameStart, 0) == 0 || word.find(rdelimiter()) != ZetString::npos) {
        return false;
    }
    const std::size_t place = word.find(flag, 1);
    if (place == ZetString::npos) {
        return false;
    }
    word[place] = blankCharacter;
    return true;
}

ZetString ZetClArg::description() const
{
    const ZetString& text = m_property.description();
    return isRequired() ? ZetString(L"(" + m_requireLabel + L") " + text) : text;
}

void ZetClArg::setValue(const ZetVariant& value)
{
    if (const ZetValidatorConstPtr validator = m_property.validator()) {
        ZetTextMsg refusal(ZetString(), ZetTextMsg::Error);
        if (!validator->isValid(value, &refusal)) {
            throw refusal;
        }
    }
    m_alreadySet = true;
    m_value = value;
    if (m_visitor) {
        m_visitor->visit();
    }
}

void ZetClArg::addFlag(int flag)
{
    m_property = withFlag(m_property, flag);
}

wchar_t& ZetClArg::rdelimiter()
{
    static wchar_t delim = L' ';
    return delim;
}

bool ZetClArg::hasBlanks(const ZetString& word)
{
    return word.find(blankCharacter, 1) != ZetString::npos;
}

bool ZetClArg::lastCombined(const ZetString& word)
{
    return word.find_first_not_of(blankCharacter, 1) == ZetString::npos;
}

void ZetClArg::splitStr(const ZetString& word, ZetString& flag, ZetString& value)
{
    const std::size_t place = word.find(rdelimiter());
    flag = word.substr(0, place);
    value = place == ZetString::npos ? ZetString() : ZetString(word, place + 1);
}

ZetMetaProperty ZetClArg::withFlag(const ZetMetaProperty& property, int flag)
{
    ZetMetaFlag flags = property.flags();
    flags.setFlag(flag);
    ZetMetaProperty flagged(property);
    flagged.setFlags(flags);
    return flagged;
}

bool ZetClArg::isIgnored() const
{
    return m_property.flags().isSet(ZetMetaFlag::Ignorable) && m_ignoreRestVisitor && m_ignoreRestVisitor->visited();
}

std::wostream& operator<<(std::wostream& out, const ZetClArg& arg)
{
    if (const wchar_t flag = arg.property().commandFlag()) {
        out << ZetClArg::flagStart << flag << L' ';
    }
    return out << L'(' << ZetClArg::nameStart << arg.name() << L')';
}

}  // namespace zet
