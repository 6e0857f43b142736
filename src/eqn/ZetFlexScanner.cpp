#include "eqn/ZetFlexScanner"

#include <stdexcept>

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
    yylval->text = new std::string(yytext, static_cast<std::size_t>(yyleng));
    for (const char c : *yylval->text) {
        column = columnBehind(column, c);
    }
}

void ZetFlexScanner::skipText()
{
    delete yylval->text;
    yylval->text = nullptr;
}

void ZetFlexScanner::LexerError(const char* text)
{
    throw std::logic_error(text);
}

}  // namespace internal
}  // namespace zet
