#include <zet/ZetClValueArg>

#include "cmdline/ZetClFault"
#include "cmdline/ZetClValueWord"
#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr const wchar_t* kUnit = L"ZetClValueArg";

}  // namespace

ZetClValueArg::ZetClValueArg(const ZetMetaProperty& property, const ZetVariant& defaultValue,
                             const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(property, defaultValue, visitor)
{}

ZetString ZetClValueArg::className() const
{
    return kUnit;
}

ZetString ZetClValueArg::shortID(const ZetString&) const
{
    return ZetClArg::shortID(internal::typeText(*this));
}

ZetString ZetClValueArg::longID(const ZetString&) const
{
    return ZetClArg::longID(internal::typeText(*this));
}

bool ZetClValueArg::processArg(int* i, std::vector<ZetString>& args)
{
    ZetString text;
    if (isIgnored() || !internal::splitsInto(*this, args[static_cast<std::size_t>(*i)], text)) {
        return false;
    }
    if (xorSet()) {
        internal::throwClFault(internal::kMutuallyExclusive, kUnit, __LINE__);
    }
    if (alreadySet()) {
        internal::throwClFault(internal::kAlreadySet, kUnit, __LINE__);
    }
    if (const wchar_t* fault = internal::completeValue(i, args, text)) {
        internal::throwClFault(fault, kUnit, __LINE__);
    }
    setValue(text);
    return true;
}

}  // namespace zet
