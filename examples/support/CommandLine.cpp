#include "support/CommandLine"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include <zet/ZetClMultiUnlabeledArg>
#include <zet/ZetClMultiValueArg>
#include <zet/ZetClSwitchArg>
#include <zet/ZetClUnlabeledArg>
#include <zet/ZetClValueArg>
#include <zet/ZetCoreLibMgr>
#include <zet/ZetMetaObject>
#include <zet/ZetMetaProperties>
#include <zet/ZetStrList>
#include <zet/ZetVersion>

namespace tools {

namespace {

using zet::ZetClArgPtr;
using zet::ZetMetaProperty;
using zet::ZetMetaType;
using zet::ZetString;
using zet::ZetTextMsg;
using zet::ZetVariant;

bool isList(const ZetMetaProperty& property)
{
    return property.type() == ZetMetaType::StrList;
}

/// Judges the text of an option by the property's kind and validator, and puts the option's name in
/// front of a refusal.
class OptionValidator : public zet::ZetValidator
{
public:
    OptionValidator(const ZetMetaProperty& property, const ZetString& option)
        : m_type(isList(property) ? ZetMetaType(ZetMetaType::String) : property.type()),
          m_validator(property.validator()),
          m_option(option)
    {}

    zet::ZetValidator* clone() const override { return new OptionValidator(*this); }

    bool isEqual(const zet::ZetValidator* other) const override
    {
        const auto* that = dynamic_cast<const OptionValidator*>(other);
        return that && that->m_option == m_option && that->m_validator == m_validator;
    }

    bool isValid(const ZetVariant& value, ZetTextMsg* msg) const override
    {
        // Of a list that grows, the other texts were judged when they came.
        const ZetVariant text =
            value.type() == ZetMetaType::VariantList ? value.value<zet::ZetVariantList>().back() : value;
        ZetTextMsg refusal(ZetString(), ZetTextMsg::Error);
        if (!converts(text)) {
            refusal.setText(L"'" + text.value<ZetString>() + L"' is not of the kind " + m_type.toString() + L".",
                            L"CommandLine", __LINE__, ZetTextMsg::Error);
        } else if (!m_validator || m_validator->isValid(text, &refusal)) {
            return true;
        }
        if (msg) {
            msg->setText(m_option + L": " + refusal.text(), refusal.file(), refusal.line(), ZetTextMsg::Error);
        }
        return false;
    }

private:
    /// Whether the text is one of the kind. A number is one as a whole, and within the kind's range:
    /// converting alone would take an empty text for 0 and cut what is too large.
    bool converts(const ZetVariant& text) const
    {
        ZetVariant target(m_type, nullptr);
        if (!text.implementation()->convertTo(m_type.typeID(), target.data())) {
            return false;
        }
        if (m_type < ZetMetaType::Int || ZetMetaType(ZetMetaType::Double) < m_type) {
            return true;
        }
        double number = 0;
        return !text.value<ZetString>().empty() && text.convertTo(&number) &&
               (m_type == ZetMetaType::Double || target.value<double>() == number);
    }

    ZetMetaType m_type;
    zet::ZetValidatorConstPtr m_validator;
    ZetString m_option;
};

/// The property as the parser's arguments take it.
ZetMetaProperty optionOf(const ZetMetaProperty& property, bool isOperand)
{
    ZetMetaProperty option(property);
    if (!isOperand) {
        ZetString name = property.name();
        std::replace(name.begin(), name.end(), L'_', L'-');
        option.setName(name);
    }
    if (isList(property)) {
        // What is required of a list is asked when all of it is there.
        option.setType(ZetMetaType::String);
        zet::ZetMetaFlag flags = property.flags();
        flags.setFlag(zet::ZetMetaFlag::Required, false);
        option.setFlags(flags);
        if (property.flags().isSet(zet::ZetMetaFlag::Required)) {
            option.setDescription(L"(required) " + property.description());
        }
    }
    option.setValidator(new OptionValidator(property, (isOperand ? L"" : L"--") + option.name()));
    return option;
}

ZetClArgPtr makeArg(const ZetMetaProperty& property, const ZetVariant& preset, bool isOperand)
{
    ZetMetaProperty option = optionOf(property, isOperand);
    if (property.type() == ZetMetaType::Bool) {
        option.setValidator(zet::ZetValidatorConstPtr());
        return new zet::ZetClSwitchArg(option, preset.value<bool>());
    }
    if (isList(property)) {
        return isOperand ? ZetClArgPtr(new zet::ZetClMultiUnlabeledArg(option, zet::ZetVariantList()))
                         : ZetClArgPtr(new zet::ZetClMultiValueArg(option, zet::ZetVariantList()));
    }
    return isOperand ? ZetClArgPtr(new zet::ZetClUnlabeledArg(option, preset))
                     : ZetClArgPtr(new zet::ZetClValueArg(option, preset));
}

bool holds(const std::vector<ZetString>& names, const ZetString& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<ZetString> wideWords(const std::vector<std::string>& words)
try {
    return std::vector<ZetString>(words.begin(), words.end());
} catch (const std::length_error&) {
    throw std::runtime_error("The command line is not text of the locale.");
}

}  // namespace

CommandLine::CommandLine(zet::ZetObject& options, const ZetString& description, const Layout& layout)
    : m_options(options), m_parser(description, zet::ZetCoreLibMgr().version(), L' ', true)
{
    const zet::ZetMetaObjectPtr meta = options.metaObject();
    const zet::ZetMetaPropertiesConstPtr properties = meta->properties();
    for (const zet::ZetMetaPropertyConstPtr& property : *properties) {
        const ZetString& name = property->name();
        ZetVariant preset;
        meta->getPropertyValue(name, preset);
        m_args[name] = makeArg(*property, preset, holds(layout.operands, name));
        if (isList(*property) && property->flags().isSet(zet::ZetMetaFlag::Required)) {
            m_requiredLists.push_back(name);
        }
    }
    addArguments(properties->propertyNames(true), layout);
}

void CommandLine::addArguments(const zet::ZetStrList& names, const Layout& layout)
{
    for (const std::vector<ZetString>& group : layout.groups) {
        std::vector<ZetClArgPtr> members;
        members.reserve(group.size());
        for (const ZetString& name : group) {
            members.push_back(m_args.at(name));
        }
        m_parser.xorAdd(members);
    }
    const auto addOne = [this](const ZetClArgPtr& arg) {
        if (!m_parser.xorHandler().contains(arg)) {
            m_parser.add(arg);
        }
    };
    // Usage lists the labelled argument that was added last first.
    for (std::size_t i = names.size(); i > 0; --i) {
        if (!holds(layout.operands, names[i - 1])) {
            addOne(m_args.at(names[i - 1]));
        }
    }
    for (const ZetString& name : layout.operands) {
        addOne(m_args.at(name));
    }
}

void CommandLine::parse(const std::vector<std::string>& words)
{
    std::vector<ZetString> args = wideWords(words);
    if (!args.empty()) {
        args.front() = ZetTextMsg::trimFname(args.front());
    }
    splitNames(args);
    m_parser.parse(args);
    requireLists();
    fill();
}

bool CommandLine::takesValue(const ZetString& option) const
{
    return std::any_of(m_args.begin(), m_args.end(), [&](const auto& entry) {
        const zet::ZetClArg& arg = *entry.second;
        return arg.isLabeled() && !arg.isSwitch() && arg.argMatches(option);
    });
}

/// Makes two words of each "--name=value" that is not itself the value of an option.
void CommandLine::splitNames(std::vector<ZetString>& words) const
{
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::size_t equals = words[i].find(L'=');
        const ZetString option = words[i].substr(0, equals);
        if (!takesValue(option)) {
            continue;
        }
        const auto next = words.begin() + static_cast<std::ptrdiff_t>(++i);
        if (equals != ZetString::npos) {
            const ZetString value = next[-1].substr(equals + 1);
            next[-1] = option;
            words.insert(next, value);
        }
    }
}

void CommandLine::requireLists() const
{
    for (const ZetString& name : m_requiredLists) {
        const zet::ZetClArg& arg = *m_args.at(name);
        if (!arg.alreadySet()) {
            fail(L"Required argument missing: " + arg.name(), __LINE__);
        }
    }
}

void CommandLine::fill()
{
    const zet::ZetMetaObjectPtr meta = m_options.metaObject();
    for (const auto& [name, arg] : m_args) {
        if (!arg->alreadySet()) {
            continue;
        }
        ZetVariant value = arg->value();
        if (arg->isMultiValue()) {
            zet::ZetStrList texts;
            for (const ZetVariant& text : value.value<zet::ZetVariantList>()) {
                texts.append(text.value<ZetString>());
            }
            value = texts;
        }
        meta->setPropertyValue(name, value);
    }
}

void CommandLine::fail(const ZetString& text, int line) const
{
    m_parser.output()->failure(m_parser, ZetTextMsg(text, m_parser.programName(), line, ZetTextMsg::Error));
    std::exit(1);
}

void chooseLocale()
{
    if (!std::setlocale(LC_CTYPE, "") || std::string(std::setlocale(LC_CTYPE, nullptr)) == "C") {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}

}  // namespace tools
