// calc: the value of one equation, with its variables given on the command line.

#include <algorithm>
#include <clocale>
#include <complex>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <zet/ZetEqnParser>
#include <zet/ZetScalar>
#include <zet/ZetString>
#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

namespace {

using zet::ZetString;

const char* const kUsage = R"usage(Usage: calc EQUATION [NAME=VALUE]...

Prints the value of the equation, and below it the kind of the value.

A VALUE is a real number (3, 2.5e-3) or a complex one ((1,2)), with physical
units behind it if it has any (3 m, (1,2) V). Definitions can also stand in the
equation: "x + y; y = 2*a; a = 3". The constants m_pi, m_e, m_c ... and pi are
known.

  calc "2^10"
  calc "v*t" "v=3 m/s" "t=4 s"
  calc "abs(z)" "z=(3,4)"

  --help   shows this text

The exit code is 0, or 1 after a failure.
)usage";

[[noreturn]] void fail(const ZetString& text, int line)
{
    throw zet::ZetTextMsg(text, L"calc", line, zet::ZetTextMsg::Error);
}

/// "3", "(1,2)", "3 m": a Double, a ComplexDouble, or a ZetScalar where there are units.
zet::ZetVariant readValue(const ZetString& text)
{
    std::wistringstream in(text);
    std::complex<double> number;
    if (!(in >> number)) {
        fail(L"'" + text + L"' is no number.", __LINE__);
    }
    ZetString rest;
    zet::getline(in, rest);
    const ZetString unitsText = zet::trim(rest);
    if (unitsText.find_first_not_of(L" \t") != ZetString::npos) {
        zet::ZetUnits units;
        const double scale = units.fromString(unitsText);
        return zet::ZetScalar(number * scale, units);
    }
    if (text.find(L'(') != ZetString::npos) {
        return number;
    }
    return number.real();
}

/// Sets the variable that \p assignment, "name=value", gives a value.
void setVariable(zet::ZetEqnParser& equation, const ZetString& assignment)
{
    const std::size_t equals = assignment.find(L'=');
    if (equals == ZetString::npos) {
        fail(L"'" + assignment + L"' is not of the form NAME=VALUE.", __LINE__);
    }
    const ZetString name = zet::trim(assignment.substr(0, equals));
    const zet::ZetStrList& used = equation.variables();
    if (std::find(used.begin(), used.end(), name) == used.end()) {
        fail(L"The equation does not use '" + name + L"'.", __LINE__);
    }
    equation.setValue(name, readValue(zet::trim(assignment.substr(equals + 1))));
}

/// A line that points at the column which a message tells, below the equation; empty when it
/// tells none, or the equation has several lines and the column does not say in which.
ZetString pointer(const ZetString& equation, const ZetString& message)
{
    const std::size_t mark = message.find(L'#');
    if (message.find(L"Parsing error at column #") != 0 || equation.find(L'\n') != ZetString::npos) {
        return ZetString();
    }
    const long column = zet::strtol(message.c_str() + mark + 1, nullptr, 10);
    return ZetString(static_cast<std::size_t>(std::max(column - 1, 0L)), L' ') + L"^";
}

/// The text with its tabs as blanks, with the tab stops that columns are counted by.
ZetString withoutTabs(const ZetString& text)
{
    ZetString plain;
    for (const wchar_t c : text) {
        plain.append(c == L'\t' ? 8 - plain.size() % 8 : 1, c == L'\t' ? L' ' : c);
    }
    return plain;
}

zet::ZetVariant valueOf(const ZetString& text, const std::vector<ZetString>& assignments)
{
    zet::ZetEqnParser equation;
    zet::ZetTextMsg message(ZetString(), zet::ZetTextMsg::Error);
    if (!equation.parse(text, &message)) {
        const ZetString place = pointer(text, message.text());
        fail(message.text() + (place.empty() ? L"" : L"\n" + withoutTabs(text) + L"\n" + place), __LINE__);
    }
    for (const ZetString& assignment : assignments) {
        setVariable(equation, assignment);
    }
    const zet::ZetVariant value = equation.evaluate(&message);
    for (const ZetString& name : equation.variables()) {
        if (!equation.value(name).isValid()) {
            fail(L"'" + name + L"' has no value.", __LINE__);
        }
    }
    if (!value.isValid()) {
        fail(message.text().empty() ? L"The equation has no value." : message.text(), __LINE__);
    }
    return value;
}

int run(const std::vector<std::string>& arguments)
{
    if (arguments.empty()) {
        std::cerr << kUsage;
        return 1;
    }
    if (arguments.front() == "--help") {
        std::cout << kUsage;
        return 0;
    }
    const std::vector<ZetString> texts(arguments.begin(), arguments.end());
    const zet::ZetVariant value = valueOf(texts.front(), {texts.begin() + 1, texts.end()});
    std::cout << zet::toMultibyte(value.value<ZetString>()) << '\n' << zet::toMultibyte(value.typeName()) << '\n';
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "");
    try {
        return run({argv + 1, argv + argc});
    } catch (const zet::ZetTextMsg& message) {
        std::cerr << "calc: " << zet::toMultibyte(message.text()) << '\n';
    } catch (const std::exception& error) {
        std::cerr << "calc: " << error.what() << '\n';
    }
    return 1;
}
