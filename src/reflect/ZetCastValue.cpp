#include "reflect/ZetCastValue"

#include <array>
#include <concepts>
#include <cstdint>
#include <iomanip>
#include <string_view>
#include <utility>

#include <zet/ZetApproximate>
#include <zet/ZetEnum>
#include <zet/ZetVariantImpl>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "reflect/ZetBuiltInClasses"

namespace zet {
namespace {

using internal::truncateToInt32;
using internal::truncateToInt64;
using internal::truncateToUInt64;

// Which kinds convert to which: a row for each source, a mark for each target.
// '1' converts, '.' writes the target's default and answers false, ' ' writes nothing and answers false.
struct ConversionRow
{
    int source;
    std::string_view marks;
};

// clang-format off
constexpr ConversionRow kConversions[] = {
    //                        0         1         2
    //                        0123456789012345678901234567
    { 0 /* Bool           */, "1111111..11. .......1 ......"},
    { 1 /* Int            */, "11111111111. .......1 1111.."},
    { 2 /* UInt           */, "11111111111. .......1 1111.."},
    { 3 /* Int64          */, "11111111111. .......1 ......"},
    { 4 /* UInt64         */, "11111111111. .......1 ......"},
    { 5 /* Double         */, "11111111111. .......1 ......"},
    { 6 /* ComplexDouble  */, "11111111111. .......1 ......"},
    { 7 /* ZetI64Rational */, "11111111111. .......1 ......"},
    { 8 /* ZetU64Rational */, "11111111111. .......1 ......"},
    { 9 /* ZetChar        */, "11111111111. .......1 ......"},
    {10 /* ZetString      */, "111111111111 .1111111 111111"},
    {11 /* ZetStrList     */, "1.........11 ........ ....1."},
    {12 /* ZetEqnTile     */, "            1               "},
    {13 /* ZetBufferPtr   */, "1.1.1.....1. 1....... ......"},
    {14 /* ZetI32Coord    */, "1.........1. .11..... ......"},
    {15 /* ZetDblCoord    */, "1.........1. .11..... ......"},
    {16 /* ZetDblCoord2D  */, "1.........1. ...1.... ......"},
    {17 /* ZetU32Size     */, "1.........1. ....11.. ......"},
    {18 /* ZetImageSize   */, "1.........1. ....11.. ......"},
    {19 /* ZetUnits       */, "1.........1. ......1. ......"},
    {20 /* ZetScalar      */, "11111111111. .......1 ......"},
    {21 /* ZetROI         */, "1.........1. ........1......"},
    {22 /* ZetDataType    */, "111111.1111. ........ 1....."},
    {23 /* ZetDataLayout  */, "111111.1111. ........ .1...."},
    {24 /* ZetColorModel  */, "111111.1111. ........ ..1..."},
    {25 /* ZetByteOrder   */, "111111.1111. ........ ...1.."},
    {26 /* ZetVariantList */, "............ ........ ....1."},
    {27 /* ZetVariantMap  */, "............ ........ .....1"},
    {28 /* none of these  */, "............ ........ ......"},
};
// clang-format on

constexpr bool isWholeMatrix()
{
    int next = 0;
    for (const ConversionRow& row : kConversions) {
        if (row.source != next++ || row.marks.size() != ZetMetaType::Invalid) {
            return false;
        }
    }
    return next == ZetMetaType::Invalid + 1;
}
static_assert(isWholeMatrix(), "one row a kind in the order of numbers, one mark a target");

template <class T, class... Us>
concept AnyOf = (std::same_as<T, Us> || ...);

template <class T>
concept Integer = AnyOf<T, int, unsigned int, long, unsigned long, wchar_t>;

template <class T>
concept Rational = AnyOf<T, ZetRational<long>, ZetRational<unsigned long>>;

template <class T>
concept Enumeration = AnyOf<T, ZetDataType, ZetDataLayout, ZetColorModel, ZetByteOrder>;

template <class T>
concept Size = AnyOf<T, ZetSize3D<unsigned int>, ZetImageSize>;

/// The greatest denominator of a rational that is made from a double.
constexpr long maxDenominator = 65535;

/// The precision that shows a value with 15 digits behind those of its whole part.
int precisionFor(double value)
{
    std::wostringstream whole;
    whole << truncateToInt32(value);
    const int digits = static_cast<int>(whole.str().size()) - (value < 0.0 ? 1 : 0);
    return digits + 15;
}

template <class V>
ZetString streamText(const V& value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

/// Whether a value shows at most one decimal in the default format.
bool hasOneDecimal(double value)
{
    const double tenfold = 10.0 * value;
    return streamText(tenfold) == streamText(truncateToInt32(tenfold));
}

/// \name From numbers
/// @{

template <ZetTextTarget T>
bool ZetCastValue(bool value, T* out)
{
    *out = value ? L"true" : L"false";
    return true;
}

template <ZetTextTarget T>
bool ZetCastValue(double value, T* out)
{
    std::wostringstream stream;
    if (hasOneDecimal(value)) {
        stream << std::fixed << std::setprecision(1) << value;
    } else {
        stream << std::setprecision(precisionFor(value)) << value;
    }
    *out = stream.str();
    return !stream.fail();
}

template <ZetTextTarget T>
bool ZetCastValue(const std::complex<double>& value, T* out)
{
    std::wostringstream stream;
    stream << std::setprecision(precisionFor(value.real())) << value;
    *out = stream.str();
    return !stream.fail();
}

/// Every number that is not an integer reaches the numeric targets as a double.
template <class T>
requires(!ZetTextTarget<T>) bool ZetCastValue(double value, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = value != 0.0;
    } else if constexpr (AnyOf<T, int, wchar_t>) {
        *out = truncateToInt32(value);
    } else if constexpr (std::same_as<T, unsigned int>) {
        *out = static_cast<unsigned int>(truncateToInt64(value));
    } else if constexpr (std::same_as<T, long>) {
        *out = truncateToInt64(value);
    } else if constexpr (std::same_as<T, unsigned long>) {
        *out = truncateToUInt64(value);
    } else if constexpr (Rational<T>) {
        long numerator = 0;
        long denominator = 1;
        approximate(value, maxDenominator, &numerator, &denominator);
        using Field = decltype(out->numerator());
        *out = T(static_cast<std::decay_t<Field>>(numerator), static_cast<std::decay_t<Field>>(denominator));
    } else {
        *out = T(value);
    }
    return true;
}

template <class T, Integer S>
requires(!ZetTextTarget<T>) bool ZetCastValue(S value, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = value != 0;
    } else if constexpr (Integer<T>) {
        *out = static_cast<T>(value);
    } else if constexpr (Rational<T>) {
        using Field = std::decay_t<decltype(out->numerator())>;
        *out = T(static_cast<Field>(value), 1);
    } else if constexpr (Enumeration<T>) {
        *out = T(static_cast<typename T::Type>(value));
    } else {
        *out = T(static_cast<double>(value));
    }
    return true;
}

template <class T, class S>
requires std::same_as<S, bool> &&(!ZetTextTarget<T>)bool ZetCastValue(S value, T* out)
{
    return ZetCastValue<T>(value ? 1 : 0, out);
}

template <class T>
requires(!ZetTextTarget<T>) bool ZetCastValue(const std::complex<double>& value, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = value.real() != 0.0 || value.imag() != 0.0;
        return true;
    } else if constexpr (std::same_as<T, ZetScalar>) {
        *out = ZetScalar(value);
        return true;
    } else {
        return ZetCastValue<T>(value.real(), out);
    }
}

template <class T>
requires(!ZetTextTarget<T>) bool ZetCastValue(const ZetScalar& value, T* out)
{
    if constexpr (std::same_as<T, std::complex<double>>) {
        *out = value.value();
        return true;
    } else {
        return ZetCastValue<T>(value.value(), out);
    }
}

template <class T, Rational S>
requires(!ZetTextTarget<T>) bool ZetCastValue(const S& value, T* out)
{
    if constexpr (Rational<T>) {
        using Field = std::decay_t<decltype(out->numerator())>;
        *out = T(static_cast<Field>(value.numerator()), static_cast<Field>(value.denominator()));
        return true;
    } else {
        return ZetCastValue<T>(static_cast<double>(value.numerator()) / static_cast<double>(value.denominator()), out);
    }
}

/// @}
/// \name From the value classes
/// @{

template <ZetTextTarget T, Enumeration S>
bool ZetCastValue(const S& value, T* out)
{
    *out = S::enumerator().toString(value.type());
    return true;
}

template <class T, Enumeration S>
requires(!ZetTextTarget<T>) bool ZetCastValue(const S& value, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = value.type() != S::Invalid;
        return true;
    } else {
        return ZetCastValue<T>(static_cast<int>(value.type()), out);
    }
}

template <class T>
requires std::same_as<T, bool>
bool ZetCastValue(const ZetStrList& value, T* out)
{
    *out = !value.empty();
    return true;
}

template <class T>
requires std::same_as<T, ZetVariantList>
bool ZetCastValue(const ZetStrList& value, T* out)
{
    out->assign(value.begin(), value.end());
    return true;
}

template <class T>
requires AnyOf<T, bool, unsigned int, unsigned long>
bool ZetCastValue(const ZetBufferPtr& value, T* out)
{
    return ZetCastValue<T>(static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(value.get())), out);
}

template <class T, class S>
requires std::same_as<T, bool> && requires(const S& value)
{
    value.isNull();
}
bool ZetCastValue(const S& value, T* out)
{
    *out = !value.isNull();
    return true;
}

bool ZetCastValue(const ZetCoord3D<int>& value, ZetCoord3D<double>* out)
{
    *out = ZetCoord3D<double>(value.x(), value.y(), value.z());
    return true;
}

bool ZetCastValue(const ZetCoord3D<double>& value, ZetCoord3D<int>* out)
{
    *out = ZetCoord3D<int>(truncateToInt32(value.x()), truncateToInt32(value.y()), truncateToInt32(value.z()));
    return true;
}

template <class T, Size S>
requires(!ZetTextTarget<T>) bool ZetCastValue(const S& value, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = !value.isEmpty();
    } else {
        *out = T(value.width(), value.height(), value.depth());
    }
    return true;
}

template <class T>
requires std::same_as<T, bool>
bool ZetCastValue(const ZetUnits& value, T* out)
{
    *out = value.numCategories() > 0;
    return true;
}

template <class T>
requires std::same_as<T, bool>
bool ZetCastValue(const ZetROI& value, T* out)
{
    *out = !value.size().isEmpty();
    return true;
}

/// @}
/// \name From text
/// @{

bool isTrueWord(const ZetString& text)
{
    static const ZetStrList words = {L"1", L"t", L"y", L"true", L"yes", L"on"};
    return words.find(toLower(text)) >= 0;
}

/// The whole text is a number: nothing stands behind it.
template <class T, class Parse>
bool castWholeText(const ZetString& text, const Parse& parse, T* out)
{
    wchar_t* end = nullptr;
    *out = static_cast<T>(parse(text.c_str(), &end));
    return *end == L'\0';
}

template <class T>
bool castByStream(const ZetString& text, T* out)
{
    std::wistringstream in(text);
    in >> *out;
    return !in.fail();
}

template <class T>
requires(!ZetTextTarget<T>) bool ZetCastValue(const ZetString& text, T* out)
{
    if constexpr (std::same_as<T, bool>) {
        *out = isTrueWord(text);
        return true;
    } else if constexpr (std::same_as<T, int>) {
        return castWholeText(
            text, [](const wchar_t* t, wchar_t** end) { return std::wcstol(t, end, 10); }, out);
    } else if constexpr (std::same_as<T, unsigned int>) {
        return castWholeText(
            text, [](const wchar_t* t, wchar_t** end) { return std::wcstoul(t, end, 10); }, out);
    } else if constexpr (std::same_as<T, double>) {
        return castWholeText(
            text, [](const wchar_t* t, wchar_t** end) { return std::wcstod(t, end); }, out);
    } else if constexpr (std::same_as<T, ZetStrList>) {
        castByStream(text, out);
        return true;
    } else if constexpr (std::same_as<T, ZetImageSize>) {
        return castByStream(text, static_cast<ZetSize3D<unsigned int>*>(out));
    } else if constexpr (std::same_as<T, ZetVariantList>) {
        out->assign(1, ZetVariant(text));
        return true;
    } else if constexpr (std::same_as<T, ZetVariantMap>) {
        out->clear();
        return true;
    } else {
        return castByStream(text, out);
    }
}

/// @}

using Cell = bool (*)(const void* value, void* out);

/// The conversion of one cell of the matrix.
template <int Source, int Target, class S, class T>
bool convertCell([[maybe_unused]] const void* value, [[maybe_unused]] void* out)
{
    constexpr char mark = kConversions[Source].marks[Target];
    [[maybe_unused]] T* target = static_cast<T*>(out);
    if constexpr (mark == '1') {
        const S& source = *static_cast<const S*>(value);
        if constexpr (std::same_as<S, T>) {
            *target = source;
            return true;
        } else if constexpr (requires { ZetCastValue<T>(source, target); }) {
            return ZetCastValue<T>(source, target);
        } else {
            return ZetCastValue(source, target);
        }
    } else if constexpr (mark == '.') {
        *target = ZetDefaultValue<T>();
        return false;
    } else {
        return false;
    }
}

using Row = std::array<Cell, ZetMetaType::Invalid>;

template <int Source, class S>
constexpr Row makeRow()
{
#define ZET_CELL(Number, Enumerator, Name, Class, Numeric) &convertCell<Source, Number, S, Class>,
    return Row{ZET_BUILT_IN_TYPES(ZET_CELL)};
#undef ZET_CELL
}

#define ZET_MAKE_ROW(Number, Enumerator, Name, Class, Numeric) makeRow<Number, Class>(),
constexpr Row kCells[] = {ZET_BUILT_IN_TYPES(ZET_MAKE_ROW) makeRow<ZetMetaType::Invalid, void*>()};
#undef ZET_MAKE_ROW

}  // namespace

bool internal::convertValue(ZetMetaType::Type source, const void* value, unsigned long typeId, void* out)
{
    const ZetMetaType::Type target = ZetMetaType::fromTypeID(typeId);
    return target < ZetMetaType::Invalid && kCells[source][static_cast<std::size_t>(target)](value, out);
}

}  // namespace zet
