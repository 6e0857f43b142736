#include "EquationText"

#include <algorithm>
#include <regex>

namespace bandmath {

namespace {

/// The text with everything between double quotes blanked out, at its old length.
std::string withoutQuoted(std::string text)
{
    bool quoted = false;
    for (char& c : text) {
        if (c == '"') {
            quoted = !quoted;
        } else if (quoted) {
            c = ' ';
        }
    }
    return text;
}

/// Whether the argument list that opens in front of \p begin has a comma of its own.
bool hasSeveralArguments(const std::string& text, std::size_t begin)
{
    int depth = 1;
    for (std::size_t i = begin; i < text.size() && depth > 0; ++i) {
        const char c = text[i];
        if (c == '(' || c == '[') {
            ++depth;
        } else if (c == ')' || c == ']') {
            --depth;
        } else if (c == ',' && depth == 1) {
            return true;
        }
    }
    return false;
}

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

}  // namespace

std::string onOneLine(const std::string& text)
{
    std::string result = text;
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return result;
}

std::set<std::string> definitions(const std::string& text)
{
    static const std::regex pattern(R"(;\s*([A-Za-z_]\w*)\s*=(?!=))");
    const std::string plain = withoutQuoted(text);
    std::set<std::string> names;
    for (std::sregex_iterator it(plain.begin(), plain.end(), pattern), end; it != end; ++it) {
        names.insert((*it)[1]);
    }
    return names;
}

std::string reduction(const std::string& text)
{
    static const std::regex pattern(R"(\b(sum|mean|median|min|max)\s*\()", std::regex::icase);
    const std::string plain = withoutQuoted(text);
    for (std::sregex_iterator it(plain.begin(), plain.end(), pattern), end; it != end; ++it) {
        const std::string name = lower((*it)[1]);
        const bool folds = name == "min" || name == "max";
        if (!folds || !hasSeveralArguments(plain, static_cast<std::size_t>(it->position() + it->length()))) {
            return name;
        }
    }
    return std::string();
}

std::string functionOfAnything(const std::string& text, const std::string& name)
{
    const std::string argument = name.empty() ? std::string() : "\\s*" + name + "\\s*[,)]";
    static const std::set<std::string> names = {"sum", "mean", "min", "max", "roundclip"};
    const std::regex call("\\b(\\w+)\\s*\\(" + argument);
    const std::string plain = withoutQuoted(text);
    for (std::sregex_iterator it(plain.begin(), plain.end(), call), end; it != end; ++it) {
        if (names.count(lower((*it)[1]))) {
            return lower((*it)[1]);
        }
    }
    return std::string();
}

int columnOf(const std::string& text, const std::string& name)
{
    const std::string plain = withoutQuoted(text);
    const std::regex word("\\b" + name + "\\b");
    std::smatch match;
    return std::regex_search(plain, match, word) ? static_cast<int>(match.position() + match.length()) : 0;
}

}  // namespace bandmath
