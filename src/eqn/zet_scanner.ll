/* The tokens of the equation language.

   The longest match wins, and of equal matches the first rule. A scan that fails part-way falls back
   to the last place where a rule matched; the numbers with units rely on that. */

%option c++ noyywrap nodefault never-interactive 8bit
%option prefix="zet_yy" yyclass="zet::internal::ZetFlexScanner"

%{
#define YY_READ_BUF_SIZE 16384

#include "eqn/ZetFlexScanner"
#include "zet_grammar.hh"

using Token = zet::internal::ZetBisonParser::token;
%}

D           [0-9]
X           [0-9a-fA-F]
L           [a-zA-Z_]

INTEGER     {D}+
HEX         0[xX]{X}+
FLOAT       {D}+"."{D}*|"."{D}+
EXPONENT    ({INTEGER}|{FLOAT})[eE][+-]?{D}+
NUMBER      {INTEGER}|{FLOAT}|{EXPONENT}|{HEX}

    /* A unit holds no blanks, nests to two levels of parentheses, and an outer one encloses all. */
FACTOR      {L}+("^"({NUMBER}))*
CHAIN       {FACTOR}([*/]{FACTOR})*
TERM        {FACTOR}|"("{CHAIN}")"
PRODUCT     ({TERM})([*/]({TERM}))*
UNIT        {PRODUCT}|"("{PRODUCT}")"

%%

">>"                        { count(); return Token::TKN_RIGHT; }
"<<"                        { count(); return Token::TKN_LEFT; }
"&&"                        { count(); return Token::TKN_AND; }
"||"                        { count(); return Token::TKN_OR; }
"<="                        { count(); return Token::TKN_LE; }
">="                        { count(); return Token::TKN_GE; }
"=="                        { count(); return Token::TKN_EQ; }
"!="                        { count(); return Token::TKN_NE; }
".*"                        { count(); return Token::TKN_ALT_MULT; }
"./"                        { count(); return Token::TKN_ALT_DIV; }
".^"                        { count(); return Token::TKN_ALT_EXP; }
".'"                        { count(); return Token::TKN_ALT_TRANS; }
[.{}()\[\]<>\-+*/%?:;,'&~^|!=]  { count(); return yytext[0]; }
{INTEGER}                   { count(); return Token::TKN_IVAL; }
{FLOAT}                     { count(); return Token::TKN_FVAL; }
{EXPONENT}                  { count(); return Token::TKN_EVAL; }
{HEX}                       { count(); return Token::TKN_HVAL; }
({NUMBER})" "*({UNIT})      { count(); return Token::TKN_UVAL; }
\"[^"]*\"                   { count(); return Token::TKN_SVAL; }
{L}({L}|{D})*               { count(); return Token::TKN_ID; }
[ \t\n\v\f\r]+              { count(); skipText(); }
.|\n                        { count(); return Token::TKN_SYNTAX_ERROR; }

%%
