#include "support/EquationFailure"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <string>

namespace tools {

namespace {

using zet::ZetString;

char g_explanation[128] = "";

/// The remainder of the equation language divides by the processor, which faults on zero.
extern "C" void explainFault(int)
{
    const ssize_t written = write(STDERR_FILENO, g_explanation, std::char_traits<char>::length(g_explanation));
    _exit(written < 0 ? 2 : 1);
}

}  // namespace

ZetString withCaret(const ZetString& text, long column)
{
    ZetString shown;
    long width = 0;    // of what is shown
    long counted = 0;  // as messages count
    long caret = 0;
    for (const wchar_t c : text) {
        const bool isReached = counted >= std::max(column, 1L);
        const long begin = width;
        if (c == L'\t') {
            width = width / 8 * 8 + 8;
            counted = counted / 8 * 8 + 8;
            shown.append(static_cast<std::size_t>(width - begin), L' ');
        } else {
            width += std::max(wcwidth(c), 0);
            counted += static_cast<long>(zet::toMultibyte(ZetString(1, c)).size());
            shown += c;
        }
        caret = isReached ? caret : begin;
    }
    return L"  " + shown + L"\n  " + ZetString(static_cast<std::size_t>(caret), L' ') + L"^";
}

void explainDivision(const char* tool)
{
    std::snprintf(g_explanation, sizeof g_explanation, "%s: The equation divides a whole number by zero with '%%'.\n",
                  tool);
    std::signal(SIGFPE, explainFault);
}

}  // namespace tools
