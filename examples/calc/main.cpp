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
#include "support/EquationFailure"

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

/// The message, and below it the equation with a caret under the column that the message tells, if it
/// tells one. Of an equation of several lines the column does not say in which it is.
ZetString withPlace(const ZetString& message, const ZetString& equation)
{
    const ZetString head = L"Parsing error at column #";
    if (message.rfind(head, 0) != 0 || equation.find(L'\n') != ZetString::npos) {
        return message;
    }
    const long column = zet::strtol(message.c_str() + head.size(), nullptr, 10);
    return message + L"\n" + tools::withCaret(equation, column);
}

zet::ZetVariant valueOf(const Options& options)
{
    const ZetString& text = options.equation();
    zet::ZetEqnParser equation;
    zet::ZetTextMsg message(ZetString(), zet::ZetTextMsg::Error);
    if (!equation.parse(text, &message)) {
        fail(withPlace(message.text(), text), __LINE__);
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
    std::cout << zet::toMultibyte(value.value<ZetString>()) << '\n' << zet::toMultibyte(value.typeName()) << std::endl;
    if (!std::cout) {
        fail(L"Cannot write to the standard output.", __LINE__);
    }
}

}  // namespace
}  // namespace calc

int main(int argc, char** argv)
{
    tools::chooseLocale();
    tools::explainDivision("calc");
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
