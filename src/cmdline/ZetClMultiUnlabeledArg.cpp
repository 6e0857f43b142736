#include <zet/ZetClMultiUnlabeledArg>

#include "cmdline/ZetClValueWord"
#include "core/ZetUnitInit"

namespace zet {

ZetClMultiUnlabeledArg::ZetClMultiUnlabeledArg(const ZetMetaProperty& property, const ZetVariant& defaultValue,
                                               const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(property, defaultValue, visitor)
{}

ZetString ZetClMultiUnlabeledArg::className() const
{
    return L"ZetClMultiUnlabeledArg";
}

ZetString ZetClMultiUnlabeledArg::shortID(const ZetString&) const
{
    return L"<" + internal::typeText(*this) + L"> ...";
}

ZetString ZetClMultiUnlabeledArg::longID(const ZetString&) const
{
    return L"<" + internal::typeText(*this) + L"> (accepted multiple times)";
}

bool ZetClMultiUnlabeledArg::isLabeled() const
{
    return false;
}

bool ZetClMultiUnlabeledArg::isMultiValue() const
{
    return true;
}

bool ZetClMultiUnlabeledArg::processArg(int* i, std::vector<ZetString>& args)
{
    const ZetString& word = args[static_cast<std::size_t>(*i)];
    if (hasBlanks(word)) {
        return false;
    }
    setValue(internal::appended(value(), word));
    return true;
}

}  // namespace zet
