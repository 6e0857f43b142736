#include "eqn/ZetFlexScanner"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

constexpr int kTabWidth = 8;

int columnBehind(int column, char c)
{
    switch (c) {
        case '\n':
            return 0;
        case '\t':
            return column / kTabWidth * kTabWidth + kTabWidth;
        default:
            return column + 1;
    }
}

}  // namespace

void ZetFlexScanner::count()
{
    const std::string_view text(yytext, static_cast<std::size_t>(yyleng));
    if (m_spare) {
        m_spare->assign(text);
    } else {
        m_spare = std::make_unique<std::string>(text);
    }
    yylval->text = m_spare.release();
    for (const char c : text) {
        column = columnBehind(column, c);
    }
}

void ZetFlexScanner::skipText()
{
    m_spare.reset(std::exchange(yylval->text, nullptr));
}

void ZetFlexScanner::LexerError(const char* text)
{
    throw std::logic_error(text);
}

}  // namespace internal
}  // namespace zet
