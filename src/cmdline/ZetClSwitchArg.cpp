#include <zet/ZetClSwitchArg>

#include "cmdline/ZetClFault"
#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr const wchar_t* kUnit = L"ZetClSwitchArg";

}  // namespace

ZetClSwitchArg::ZetClSwitchArg(const ZetMetaProperty& property, bool defaultValue,
                               const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(withFlag(property, ZetMetaFlag::Ignorable), defaultValue, visitor)
{}

ZetString ZetClSwitchArg::className() const
{
    return kUnit;
}

bool ZetClSwitchArg::isSwitch() const
{
    return true;
}

bool ZetClSwitchArg::processArg(int* i, std::vector<ZetString>& args)
{
    if (isIgnored()) {
        return false;
    }
    ZetString& word = args[static_cast<std::size_t>(*i)];
    if (argMatches(word)) {
        turn();
        return true;
    }
    if (!combinedSwitchesMatch(word)) {
        return false;
    }
    if (combinedSwitchesMatch(word)) {
        internal::throwClFault(internal::kAlreadySet, kUnit, __LINE__);
    }
    turn();
    return lastCombined(word);
}

void ZetClSwitchArg::turn()
{
    if (xorSet()) {
        internal::throwClFault(internal::kMutuallyExclusive, kUnit, __LINE__);
    }
    if (alreadySet()) {
        internal::throwClFault(internal::kAlreadySet, kUnit, __LINE__);
    }
    setValue(!value().value<bool>());
}

}  // namespace zet
