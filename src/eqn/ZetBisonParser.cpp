#include <locale.h>
#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include "core/ZetUnitInit"
#include "eqn/ZetFlexScanner"
#include "eqn/ZetGrammarActions"
#include "zet_grammar.hh"

namespace zet {
namespace internal {

namespace grammar {

ZetEqnNode* call(const wchar_t* name, ZetEqnNode*& arg)
{
    return new ZetFcnNode(name, nodes(arg));
}

ZetEqnNode* call(const wchar_t* name, ZetEqnNode*& arg1, ZetEqnNode*& arg2)
{
    return new ZetFcnNode(name, nodes(arg1, arg2));
}

ZetEqnNode* callList(ZetString&& name, Nodes&& args)
{
    return new ZetFcnNode(std::move(name), std::move(args));
}

Nodes* list(Nodes&& elements)
{
    return new Nodes(std::move(elements));
}

void append(Nodes* elements, const Nodes& more)
{
    elements->insert(elements->end(), more.begin(), more.end());
}

Nodes shapedLike(const Nodes& other, const ZetEqnNodePtr& subscript)
{
    if (other.size() == 1) {
        return {subscript};
    }
    return {subscript, unitStep(), subscript->clone()};
}

ZetEqnNodePtr unitStep()
{
    return new ZetConstNode(1);
}

double integerValue(const std::string& text, int base)
{
    return static_cast<double>(std::strtol(text.c_str(), nullptr, base));
}

double realValue(const std::string& text)
{
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t current = uselocale(classic);
    const double value = std::strtod(text.c_str(), nullptr);
    uselocale(current);
    return value;
}

std::string withoutQuotes(const std::string& text)
{
    return text.substr(1, text.size() - 2);
}

void define(ZetParsedEquations* equations, const std::string& name, const ZetEqnNodePtr& tree)
{
    equations->emplace_back(name, tree);
}

}  // namespace grammar

namespace {

constexpr int kMostTokensToList = 4;

std::string shownName(ZetBisonParser::symbol_kind_type symbol)
{
    return symbol == ZetBisonParser::symbol_kind::S_YYUNDEF ? "$undefined" : ZetBisonParser::symbol_name(symbol);
}

[[noreturn]] void raise(const ZetFlexScanner& scanner, const std::string& message, ZetParsedEquations* equations,
                        std::string* errorText)
{
    *errorText = "Parsing error at column #" + std::to_string(scanner.column) + " : " + message;
    equations->clear();
    throw std::logic_error(*errorText);
}

}  // namespace

// Where the table leaves no choice, nothing was read ahead, and there is nothing to tell.
void ZetBisonParser::report_syntax_error(const context& where) const
{
    std::string message = "syntax error";
    if (where.token() != symbol_kind::S_YYEMPTY) {
        message += ", unexpected " + shownName(where.token());
        symbol_kind_type expected[kMostTokensToList];
        const int count = where.expected_tokens(expected, kMostTokensToList);
        for (int i = 0; i < count; ++i) {
            message += (i == 0 ? ", expecting " : " or ") + shownName(expected[i]);
        }
    }
    raise(*m_scanner, message, m_equations, m_errorText);
}

void ZetBisonParser::error(const location_type&, const std::string& message)
{
    raise(*m_scanner, message, m_equations, m_errorText);
}

}  // namespace internal
}  // namespace zet
