#include "Equation"

#include <algorithm>
#include <complex>
#include <regex>

#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

#include "EquationText"
#include "raster/ElementTypes"
#include "raster/Failure"
#include "support/EquationFailure"

namespace bandmath {

using tools::Failure;
using tools::nameOf;

namespace {

using zet::ZetDataType;

/// The column that a message of the parser speaks of: told, or that of the function it names.
int columnIn(const std::string& message, const std::string& text)
{
    std::smatch match;
    if (std::regex_search(message, match, std::regex("at column #(\\d+)"))) {
        return std::stoi(match[1]);
    }
    if (std::regex_search(message, match, std::regex("^'(\\w+)\\(\\)'"))) {
        return columnOf(text, match[1]);
    }
    return 0;
}

[[noreturn]] void refuse(const std::string& message, const std::string& text, int column)
{
    throw Failure(message + "\n" +
                  (column > 0 ? zet::toMultibyte(tools::withCaret(zet::toWide(text), column)) : "  " + text));
}

template <class T>
zet::ZetEqnTile filled(ZetDataType::Type type, const T& value, std::size_t pixels)
{
    zet::ZetEqnTile tile;
    tile.initialize(type, pixels);
    std::fill_n(tile.elements<T>(), pixels, value);
    return tile;
}

zet::ZetEqnTile filled(const std::complex<double>& value, std::size_t pixels)
{
    return value.imag() == 0.0 ? filled(ZetDataType::Double, value.real(), pixels)
                               : filled(ZetDataType::ComplexDouble, value, pixels);
}

/// Why an equation over these bands may have come out empty.
std::string unservedText(const std::vector<Band>& bands)
{
    struct Suspect
    {
        bool (*blames)(ZetDataType::Type);
        const char* text;
    };
    constexpr Suspect kSuspects[] = {
        {[](ZetDataType::Type t) { return t == ZetDataType::I64 || t == ZetDataType::U64; },
         "no arithmetic serves 64-bit integers"},
        {[](ZetDataType::Type t) { return t == ZetDataType::ComplexFloat; },
         "ComplexFloat bands combine with bands, but not with numbers, and no function serves them"},
        {[](ZetDataType::Type t) { return t == ZetDataType::ComplexDouble; },
         "rounding, clipping, factorial, logb and the Bessel functions serve real numbers only"},
    };
    for (const Suspect& suspect : kSuspects) {
        for (const Band& band : bands) {
            if (suspect.blames(band.elementType())) {
                return "An operation of the equation does not serve the element type " + nameOf(band.elementType()) +
                       " of '" + band.name() + "' (" + band.place() + "): " + suspect.text +
                       ". 'gdal_translate -ot' makes a copy of another type, such as " +
                       (ZetDataType(band.elementType()).isComplex() ? "CFloat64." : "Float64.");
            }
        }
    }
    return "A function of the equation does not serve bands: atan2 and ldexp compute with numbers only.";
}

}  // namespace

Equation::Equation(const std::string& text) : m_text(onOneLine(text))
{
    zet::ZetTextMsg message(zet::ZetString(), zet::ZetTextMsg::Error);
    if (!m_parser.parse(zet::toWide(m_text), &message)) {
        const std::string words = zet::toMultibyte(message.text());
        refuse(words, m_text, columnIn(words, m_text));
    }
    m_definitions = definitions(m_text);
}

void Equation::requireBands(const std::vector<Band>& bands)
{
    for (const zet::ZetString& variable : m_parser.variables()) {
        const std::string name = zet::toMultibyte(variable);
        const bool bound = std::any_of(bands.begin(), bands.end(), [&](const Band& b) { return b.name() == name; });
        if (!bound && !m_definitions.count(name) && !m_parser.value(variable).isValid()) {
            refuse("The variable '" + name + "' has no band: add -b " + name + "=FILE:BAND.", m_text,
                   columnOf(m_text, name));
        }
    }
}

void Equation::bind(const std::string& name, const zet::ZetEqnTile& tile)
{
    m_parser.setValue(zet::toWide(name), tile);
}

zet::ZetEqnTile Equation::evaluate(std::size_t pixels, const std::vector<Band>& bands)
{
    clearDefinitions();
    zet::ZetTextMsg message(zet::ZetString(), zet::ZetTextMsg::Error);
    const zet::ZetVariant result = m_parser.evaluate(&message);
    if (!message.text().empty()) {
        refuse(zet::toMultibyte(message.text()), m_text, 0);
    }
    if (result.type() == zet::ZetMetaType::EqnTile) {
        const zet::ZetEqnTile tile = result.value<zet::ZetEqnTile>();
        if (tile.dataType().type() == ZetDataType::Invalid || tile.size() != pixels) {
            throw Failure(unservedText(bands));
        }
        return tile;
    }
    if (result.type() == zet::ZetMetaType::String) {
        refuse("The equation gives a text and no pixels: '" + zet::toMultibyte(result.value<zet::ZetString>()) +
                   "'. A name behind a number is a unit; write 2*x, not 2 x.",
               m_text, 0);
    }
    if (!result.isNumeric()) {
        refuse("The equation gives no value.", m_text, 0);
    }
    return filled(result.value<std::complex<double>>(), pixels);
}

/// A definition is seen by what stands to its left only. Without this it would see the value from
/// the window before.
void Equation::clearDefinitions()
{
    for (const std::string& name : m_definitions) {
        m_parser.setValue(zet::toWide(name), zet::ZetVariant());
    }
}

}  // namespace bandmath
