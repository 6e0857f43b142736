#include <zet/ZetString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <iostream>
#include <locale>
#include <sstream>

#include "core/ZetUnitInit"

namespace zet {

ZetString& ZetString::operator=(const char* text)
{
    _assign_(text);
    return *this;
}

ZetString& ZetString::operator=(const std::string& text)
{
    _assign_(text.c_str());
    return *this;
}

void ZetString::_assign_(const char* text)
{
    ZetString wide = toWide(text);
    if (!wide.empty()) {
        swap(wide);
    }
}

void ZetString::toUpper()
{
    for (wchar_t& c : *this) {
        if (c >= 97 && c <= 122) {
            c -= 32;
        }
    }
}

void ZetString::toLower()
{
    for (wchar_t& c : *this) {
        if (c >= 65 && c <= 90) {
            c += 32;
        }
    }
}

ZetString trim(const ZetString& text)
{
    static constexpr wchar_t kBlanks[] = L"\n\t\r ";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == ZetString::npos) {
        return text;
    }
    return ZetString(text, first, text.find_last_not_of(kBlanks) - first + 1);
}

ZetString toLower(const ZetString& text)
{
    ZetString lower = text;
    lower.toLower();
    return lower;
}

bool containsSubstring(const ZetString& a, const ZetString& b, bool caseSensitive)
{
    if (caseSensitive) {
        return a.find(b) != ZetString::npos;
    }
    return toLower(a).find(toLower(b)) != ZetString::npos;
}

bool isEqual(const ZetString& a, const ZetString& b)
{
    const auto length = static_cast<std::uint32_t>(a.size());
    if (length != static_cast<std::uint32_t>(b.size())) {
        return false;
    }
    for (std::uint32_t i = length; i > 0; --i) {
        if (std::towlower(static_cast<std::wint_t>(a[i - 1])) != std::towlower(static_cast<std::wint_t>(b[i - 1]))) {
            return false;
        }
    }
    return true;
}

bool caseSensitiveCompare(const ZetString& a, const ZetString& b)
{
    return a.compare(b) < 0;
}

bool caseInsensitiveCompare(const ZetString& a, const ZetString& b)
{
    return toLower(a).compare(toLower(b)) < 0;
}

std::wistream& getline(std::wistream& in, ZetString& text)
{
    return std::getline(in, static_cast<std::wstring&>(text));
}

std::wistream& getline(std::wistream& in, ZetString& text, wchar_t delim)
{
    return std::getline(in, static_cast<std::wstring&>(text), delim);
}

ZetString toWide(const char* text)
{
    ZetString wide;
    if (!text || !*text) {
        return wide;
    }
    std::mbstate_t state{};
    const char* source = text;
    // An invalid sequence answers the greatest size, which resize() refuses.
    wide.resize(std::mbsrtowcs(nullptr, &source, 0, &state));
    state = std::mbstate_t{};
    source = text;
    std::mbsrtowcs(wide.data(), &source, wide.size(), &state);
    return wide;
}

ZetString toWide(const std::string& text)
{
    return toWide(text.c_str());
}

std::string toMultibyte(const std::wstring& text)
{
    std::string narrow;
    std::mbstate_t state{};
    const wchar_t* source = text.c_str();
    // A character that cannot be expressed answers the greatest size, which resize() refuses.
    narrow.resize(std::wcsrtombs(nullptr, &source, 0, &state));
    state = std::mbstate_t{};
    source = text.c_str();
    std::wcsrtombs(narrow.data(), &source, narrow.size(), &state);
    return narrow;
}

std::string toUTF8(const std::wstring& text)
{
    if (text.empty()) {
        return std::string();
    }
    std::ostringstream out;
    out.imbue(std::locale("en_US"));
    const auto& characters = std::use_facet<std::ctype<char>>(out.getloc());
    for (const wchar_t c : text) {
        const auto lowByte = static_cast<unsigned char>(c);
        out << characters.narrow(static_cast<char>(lowByte), '\0');
    }
    return out.str();
}

int sprintf(wchar_t* dst, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsprintf(dst, format, arguments);
    va_end(arguments);
    return length;
}

int vsprintf(wchar_t* dst, const wchar_t* format, std::va_list arguments)
{
    wchar_t buffer[512] = {};
    const int length = std::vswprintf(buffer, std::size(buffer), format, arguments);
    buffer[std::size(buffer) - 1] = L'\0';
    std::wcscpy(dst, buffer);
    return length;
}

int sprintf(char* dst, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsprintf(dst, format, arguments);
    va_end(arguments);
    return length;
}

int vsprintf(char* dst, const char* format, std::va_list arguments)
{
    return std::vsprintf(dst, format, arguments);
}

int scanf(const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int count = vscanf(format, arguments);
    va_end(arguments);
    return count;
}

int vscanf(const wchar_t* format, std::va_list arguments)
{
    return std::vwscanf(format, arguments);
}

int scanf(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int count = vscanf(format, arguments);
    va_end(arguments);
    return count;
}

int vscanf(const char* format, std::va_list arguments)
{
    return std::vscanf(format, arguments);
}

wchar_t* strcat(wchar_t* dst, const wchar_t* src)
{
    return std::wcscat(dst, src);
}
char* strcat(char* dst, const char* src)
{
    return std::strcat(dst, src);
}

double strtod(const wchar_t* text, wchar_t** end)
{
    return std::wcstod(text, end);
}
double strtod(const char* text, char** end)
{
    return std::strtod(text, end);
}
double strtod(const std::wstring& text)
{
    return std::wcstod(text.c_str(), nullptr);
}
double strtod(const std::string& text)
{
    return std::strtod(text.c_str(), nullptr);
}

long strtol(const wchar_t* text, wchar_t** end, int base)
{
    return std::wcstol(text, end, base);
}
long strtol(const char* text, char** end, int base)
{
    return std::strtol(text, end, base);
}
long strtol(const std::wstring& text, int base)
{
    return std::wcstol(text.c_str(), nullptr, base);
}
long strtol(const std::string& text, int base)
{
    return std::strtol(text.c_str(), nullptr, base);
}

unsigned long strtoul(const wchar_t* text, wchar_t** end, int base)
{
    return std::wcstoul(text, end, base);
}
unsigned long strtoul(const char* text, char** end, int base)
{
    return std::strtoul(text, end, base);
}
unsigned long strtoul(const std::wstring& text, int base)
{
    return std::wcstoul(text.c_str(), nullptr, base);
}
unsigned long strtoul(const std::string& text, int base)
{
    return std::strtoul(text.c_str(), nullptr, base);
}

double atof(const wchar_t* text)
{
    return std::wcstod(text, nullptr);
}
double atof(const char* text)
{
    return std::atof(text);
}
double atof(const std::wstring& text)
{
    return atof(text.c_str());
}
double atof(const std::string& text)
{
    return std::atof(text.c_str());
}

long atol(const wchar_t* text)
{
    return std::wcstol(text, nullptr, 10);
}
long atol(const char* text)
{
    return std::atol(text);
}
long atol(const std::wstring& text)
{
    return atol(text.c_str());
}
long atol(const std::string& text)
{
    return std::atol(text.c_str());
}

long atoi(const wchar_t* text)
{
    return atol(text);
}
int atoi(const char* text)
{
    return std::atoi(text);
}
long atoi(const std::wstring& text)
{
    return atol(text.c_str());
}
int atoi(const std::string& text)
{
    return std::atoi(text.c_str());
}

namespace internal {

std::wistream& cin()
{
    static const std::ios_base::Init ready;
    return std::wcin;
}

std::wostream& cout()
{
    static const std::ios_base::Init ready;
    return std::wcout;
}

std::wostream& cerr()
{
    static const std::ios_base::Init ready;
    return std::wcerr;
}

}  // namespace internal
}  // namespace zet
