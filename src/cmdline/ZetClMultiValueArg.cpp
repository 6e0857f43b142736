#include <zet/ZetClMultiValueArg>

#include <utility>

#include "cmdline/ZetClFault"
#include "cmdline/ZetClValueWord"
#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr const wchar_t* kUnit = L"ZetClMultiValueArg";

}  // namespace

ZetClMultiValueArg::ZetClMultiValueArg(const ZetMetaProperty& property, const ZetVariant& defaultValue,
                                       const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(property, defaultValue, visitor), m_allowMore(false)
{}

ZetString ZetClMultiValueArg::className() const
{
    return kUnit;
}

bool ZetClMultiValueArg::isRequired() const
{
    return ZetClArg::isRequired() && !value().isValid();
}

ZetString ZetClMultiValueArg::shortID(const ZetString&) const
{
    return ZetClArg::shortID(internal::typeText(*this)) + L" ... ";
}

ZetString ZetClMultiValueArg::longID(const ZetString&) const
{
    return ZetClArg::longID(internal::typeText(*this)) + L" (accepted multiple times)";
}

void ZetClMultiValueArg::reset()
{
    ZetClArg::reset();
    m_allowMore = false;
}

bool ZetClMultiValueArg::isMultiValue() const
{
    return true;
}

bool ZetClMultiValueArg::allowMore()
{
    return std::exchange(m_allowMore, true);
}

bool ZetClMultiValueArg::processArg(int* i, std::vector<ZetString>& args)
{
    ZetString text;
    if (isIgnored() || !internal::splitsInto(*this, args[static_cast<std::size_t>(*i)], text)) {
        return false;
    }
    if (xorSet()) {
        internal::throwClFault(internal::kMutuallyExclusive, kUnit, __LINE__);
    }
    if (const wchar_t* fault = internal::completeValue(i, args, text)) {
        internal::throwClFault(fault, kUnit, __LINE__);
    }
    setValue(internal::appended(value(), text));
    return true;
}

}  // namespace zet
