#include <zet/ZetClUnlabeledArg>

#include "cmdline/ZetClValueWord"
#include "core/ZetUnitInit"

namespace zet {

ZetClUnlabeledArg::ZetClUnlabeledArg(const ZetMetaProperty& property, const ZetVariant& defaultValue,
                                     const ZetClArgVisitorIFConstPtr& visitor)
    : ZetClArg(property, defaultValue, visitor)
{}

ZetString ZetClUnlabeledArg::className() const
{
    return L"ZetClUnlabeledArg";
}

ZetString ZetClUnlabeledArg::shortID(const ZetString&) const
{
    return L"<" + internal::typeText(*this) + L">";
}

ZetString ZetClUnlabeledArg::longID(const ZetString& valueName) const
{
    return shortID(valueName);
}

bool ZetClUnlabeledArg::isLabeled() const
{
    return false;
}

bool ZetClUnlabeledArg::processArg(int* i, std::vector<ZetString>& args)
{
    const ZetString& word = args[static_cast<std::size_t>(*i)];
    if (alreadySet() || hasBlanks(word)) {
        return false;
    }
    setValue(word);
    return true;
}

}  // namespace zet
