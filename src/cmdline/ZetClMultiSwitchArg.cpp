#include <zet/ZetClMultiSwitchArg>

#include "core/ZetUnitInit"

namespace zet {

ZetClMultiSwitchArg::ZetClMultiSwitchArg(const ZetMetaProperty& property, unsigned int defaultValue,
                                         const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(withFlag(property, ZetMetaFlag::Ignorable), defaultValue, visitor)
{}

ZetString ZetClMultiSwitchArg::className() const
{
    return L"ZetClMultiSwitchArg";
}

ZetString ZetClMultiSwitchArg::shortID(const ZetString& valueName) const
{
    return ZetClArg::shortID(valueName) + L" ... ";
}

ZetString ZetClMultiSwitchArg::longID(const ZetString& valueName) const
{
    return ZetClArg::longID(valueName) + L" (accepted multiple times)";
}

bool ZetClMultiSwitchArg::isSwitch() const
{
    return true;
}

bool ZetClMultiSwitchArg::processArg(int* i, std::vector<ZetString>& args)
{
    if (isIgnored()) {
        return false;
    }
    ZetString& word = args[static_cast<std::size_t>(*i)];
    unsigned int count = value().value<unsigned int>();
    if (argMatches(word)) {
        setValue(count + 1);
        return true;
    }
    if (!combinedSwitchesMatch(word)) {
        return false;
    }
    do {
        ++count;
    } while (combinedSwitchesMatch(word));
    setValue(count);
    return false;
}

}  // namespace zet
