#include "GdalText"

#include <cpl_conv.h>
#include <cpl_string.h>

#include <memory>

namespace describe {

namespace {

struct Freeing
{
    void operator()(void* block) const { CPLFree(block); }
};

}  // namespace

zet::ZetString wideText(const std::string& text)
{
    const bool isUtf8 = CPLIsUTF8(text.c_str(), -1) != 0;
    const char* const encoding = isUtf8 ? CPL_ENC_UTF8 : CPL_ENC_ISO8859_1;
    const std::unique_ptr<wchar_t, Freeing> wide(CPLRecodeToWChar(text.c_str(), encoding, "WCHAR_T"));
    return wide ? zet::ZetString(wide.get()) : zet::ZetString();
}

}  // namespace describe
