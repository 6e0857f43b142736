// calc: the value of one equation, with its variables given on the command line.

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <zet/ZetEqnParser>
#include <zet/ZetTextMsg>

#include "Options"
#include "support/CommandLine"

namespace calc {
namespace {

using zet::ZetString;

const wchar_t* const kDescription =
    L"Prints the value of the equation, and below it the kind of the value.\n"
    L"A VALUE is a real number (3 or 2.5e-3) or a complex one in brackets, with physical units behind it if it has "
    L"any. Definitions can also stand in the equation: \"x + y; y = 2*a; a = 3\". The constants m_pi, m_e, m_c ... "
    L"and pi are known.\n"
    L"The exit code is 0, or 1 after a failure.";

[[noreturn]] void fail(const ZetString& text, int line)
{
    throw zet::ZetTextMsg(text, L"calc", line, zet::ZetTextMsg::Error);
}

/// Sets the variable that \p assignment, "name=value", gives a value.
void setVariable(zet::ZetEqnParser& equation, const ZetString& assignment)
{
    const auto [name, value] = readAssignment(assignment);
    const zet::ZetStrList& used = equation.variables();
    if (std::find(used.begin(), used.end(), name) == used.end()) {
        fail(L"The equation does not use '" + name + L"'.", __LINE__);
    }
    equation.setValue(name, value);
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

zet::ZetVariant valueOf(const Options& options)
{
    const ZetString& text = options.equation();
    zet::ZetEqnParser equation;
    zet::ZetTextMsg message(ZetString(), zet::ZetTextMsg::Error);
    if (!equation.parse(text, &message)) {
        const ZetString place = pointer(text, message.text());
        fail(message.text() + (place.empty() ? L"" : L"\n" + withoutTabs(text) + L"\n" + place), __LINE__);
    }
    for (const ZetString& assignment : options.assignments()) {
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

void run(const std::vector<std::string>& words)
{
    Options options;
    tools::CommandLine commandLine(options, kDescription, {{L"equation", L"assignments"}, {}});
    commandLine.parse(words);
    const zet::ZetVariant value = valueOf(options);
    std::cout << zet::toMultibyte(value.value<ZetString>()) << '\n' << zet::toMultibyte(value.typeName()) << '\n';
}

}  // namespace
}  // namespace calc

int main(int argc, char** argv)
{
    tools::chooseLocale();
    try {
        calc::run({argv, argv + argc});
        return 0;
    } catch (const zet::ZetTextMsg& message) {
        std::cerr << "calc: " << zet::toMultibyte(message.text()) << '\n';
    } catch (const std::exception& error) {
        std::cerr << "calc: " << error.what() << '\n';
    }
    return 1;
}
