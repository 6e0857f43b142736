#include <zet/ZetLutIO>

#include <algorithm>
#include <istream>
#include <limits>
#include <sstream>
#include <type_traits>
#include <vector>

#include <zet/ZetBreakPointLut>
#include <zet/ZetCommonLutHeader>
#include <zet/ZetTokenizer>

#include "core/ZetStreamPrecision"
#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetBlockMemory"
#include "image/ZetElementTypes"
#include "lut/ZetLutSupport"
#include "lut/ZetNumberText"

namespace zet {
namespace {

constexpr wchar_t kEndOfData = L'$';

/// Posts an error, and gives what a reader that failed gives.
template <class... Parts>
std::nullptr_t refuse(int line, const Parts&... parts)
{
    internal::postError(L"ZetLutIO", line, parts...);
    return nullptr;
}

// --- Writing ---

/// Values that are characters of a stream are written as the numbers that they are.
template <class T>
using Printed = std::conditional_t<sizeof(T) == 1, short, T>;

template <class T>
void writeValues(const T* values, unsigned long count, std::wostream& out)
{
    const internal::ZetStreamPrecision digits(out, std::is_same<T, float>::value ? 9 : 17);
    internal::ZetNumberLines<Printed<T>> lines(out);
    std::for_each(values, values + count, [&lines](T value) { lines.write(value); });
    lines.flush();
}

/// Writes the values of one band; posts where that cannot be.
bool writeBand(const ZetLutDesc& table, unsigned int band, std::wostream& out)
{
    const ZetBufferConstPtr buffer = table.buffer();
    const unsigned long count = table.numEntriesPerBand();
    bool isThere = true;
    const bool isServed = internal::visitElement(
        internal::realColumn(table.dataType().type()), internal::ZetRealTypes(), [&](auto element) {
            using T = typename decltype(element)::type;
            const unsigned long available = buffer && buffer->data() ? buffer->size() / sizeof(T) : 0;
            isThere = available >= count * (band + 1ul);
            if (isThere && count != 0) {
                writeValues(static_cast<const T*>(buffer->data()) + count * band, count, out);
            }
        });
    if (!isServed) {
        refuse(__LINE__, L"Invalid data type.");
    } else if (!isThere) {
        refuse(__LINE__, L"Missing data of band ", band, L".");
    }
    return isServed && isThere;
}

/// Writes a keyword whose value is the same for each band.
template <class T>
void writeList(const wchar_t* keyword, T value, unsigned int count, std::wostream& out)
{
    out << L"    " << keyword << L"=";
    for (; count != 0; --count) {
        out << L" " << value;
    }
    out << L"\n";
}

// --- Reading ---

/// The lowest and the highest of the inputs or outputs of break points, as their files count them.
struct PointRange
{
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::min();

    void add(double value)
    {
        if (value < low) {
            low = value;
        } else {
            high = value;
        }
    }

    ZetDataType dataType() const { return ZetDataType::fromMinMax(low, high); }
};

/// A value as an entry stores it. Whole numbers are cut, and wrap.
template <class T>
T entryOf(double value)
{
    if constexpr (std::is_floating_point<T>::value) {
        return static_cast<T>(value);
    } else if constexpr (std::is_same<T, unsigned int>::value) {
        return internal::truncateToUInt32(value);
    } else {
        return static_cast<T>(internal::truncateToInt32(value));
    }
}

/// Reads one file.
class TableReader
{
public:
    explicit TableReader(std::wistream& in) : m_tokenizer(in, L"{}=$", L"#", L"", L"", L" \t\r\n") {}

    ZetLutDesc* read()
    {
        if (parseLutHeader(m_tokenizer, m_header) != 0) {
            return nullptr;
        }
        if (m_header.type == L"b") {
            return readBreakPoints();
        }
        if (m_header.type == L"l") {
            return readTables();
        }
        return refuse(__LINE__, L"Invalid type value, ", m_header.type,
                      L" Valid types are 'l' for LUT and 'b' for breakpoint");
    }

private:
    /// Takes the next token. Returns whether it is one of data.
    bool takeValue() { return m_tokenizer.nextToken(m_token) && !isEndOfData(); }
    bool isEndOfData() const { return m_token.size() == 1 && m_token[0] == kEndOfData; }

    bool takeEndOfData();

    ZetLutDesc* readBreakPoints();
    bool readPoint(unsigned int band);

    ZetLutDesc* readTables();
    bool readBand(int length);
    ZetDataType smallestType() const;

    unsigned long padOf(std::size_t band) const;
    unsigned long width() const;
    static ZetBufferPtr newBuffer(const ZetDataType& type, unsigned long bytes);
    template <class T>
    void fill(T* out, unsigned long width) const;

    ZetTokenizer m_tokenizer;
    ZetCommonLutHeader m_header;
    ZetString m_token;

    std::wistringstream m_number;
    ZetBreakPointLut m_points{ZetDataType()};
    PointRange m_inputs;
    PointRange m_outputs;

    /// The values of the bands as the file tells them, so that memory is asked for what was read alone.
    std::vector<std::vector<double>> m_bands;
};

bool TableReader::takeEndOfData()
{
    m_tokenizer.nextToken(m_token);
    if (isEndOfData()) {
        return true;
    }
    refuse(__LINE__, L"Failed to find expected end of data section symbol, $");
    return false;
}

/// \name Break points
/// @{

ZetLutDesc* TableReader::readBreakPoints()
{
    for (std::size_t band = 0; band < m_header.lengths.size(); ++band) {
        long count = 0;
        do {
            if (!readPoint(static_cast<unsigned int>(band))) {
                return nullptr;
            }
        } while (++count != m_header.lengths[band]);
        if (!takeEndOfData()) {
            return nullptr;
        }
    }
    if (m_tokenizer.nextToken(m_token)) {
        return refuse(__LINE__, L"Found unexpected token, ", m_token, L", at end of data section");
    }
    const bool isFloat = m_header.dataTypeGiven && m_header.dataType.isFloat();
    m_points.setOutputDataType(m_header.dataTypeGiven ? m_header.dataType : m_outputs.dataType());
    const ZetLutDescPtr table = m_points.lut(isFloat ? m_header.dataType : m_inputs.dataType());
    return table ? new ZetLutDesc(*table) : nullptr;
}

bool TableReader::readPoint(unsigned int band)
{
    if (!takeValue()) {
        refuse(__LINE__, L"Missing 'in' breakpoint value");
        return false;
    }
    int in = 0;
    m_number.clear();
    m_number.str(m_token);
    m_number >> in;
    if (!takeValue()) {
        refuse(__LINE__, L"Missing 'out' breakpoint value");
        return false;
    }
    const double out = internal::toDouble(m_token);
    m_points.add(ZetBreakPoint(in, out, band));
    m_inputs.add(in);
    m_outputs.add(out);
    return true;
}

/// @}
/// \name Tables
/// @{

ZetLutDesc* TableReader::readTables()
{
    if (m_header.channels == 0) {
        return new ZetLutDesc;
    }
    const auto shortest = std::min_element(m_header.lengths.begin(), m_header.lengths.end());
    if (*shortest < 1) {
        return refuse(__LINE__, L"Invalid value, ", *shortest, L", for keyword 'length'");
    }
    for (const int length : m_header.lengths) {
        if (!readBand(length)) {
            return nullptr;
        }
    }
    const ZetDataType type = m_header.dataTypeGiven ? m_header.dataType : smallestType();
    const int column = internal::realColumn(type.type());
    if (column == -1) {
        return refuse(__LINE__, L"Invalid data type.");
    }
    const unsigned int channels = static_cast<unsigned int>(m_header.channels);
    const unsigned long bytes = internal::productOf(width(), static_cast<unsigned long>(type.size()) * channels);
    const ZetBufferPtr buffer = width() > internal::kMostEntries ? ZetBufferPtr() : newBuffer(type, bytes);
    if (!buffer) {
        return refuse(__LINE__, L"Could not allocate ", bytes, L" for LUT data.");
    }
    internal::visitElement(column, internal::ZetRealTypes(), [&](auto element) {
        fill(static_cast<typename decltype(element)::type*>(buffer->data()), width());
    });
    if (type.type() == ZetDataType::Double) {
        // KEPT: the values stand in the places of others. Test: ZetLutIO.tableOfADoubleFile.
        return new ZetLutDesc(buffer, type, static_cast<unsigned int>(m_header.lowestZeroOffset), m_header.channels, 1,
                              false);
    }
    return new ZetLutDesc(buffer, type, static_cast<unsigned int>(width()), m_header.lowestZeroOffset, channels, false);
}

/// Reads the values of one band, and the end of its section.
bool TableReader::readBand(int length)
{
    std::vector<double>& values = m_bands.emplace_back();
    while (values.size() != static_cast<std::size_t>(length)) {
        if (!takeValue()) {
            refuse(__LINE__, values.empty() ? L"Missing lut out value" : L"Missing lut value");
            return false;
        }
        values.push_back(internal::toDouble(m_token));
    }
    return takeEndOfData();
}

/// KEPT: the values of the last band alone decide. Test: ZetLutIO.lastBandDecidesTheType.
ZetDataType TableReader::smallestType() const
{
    const std::vector<double>& last = m_bands.back();
    double low = last.front();
    double high = last.front();
    for (const double value : last) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    return ZetDataType::fromMinMax(low, high);
}

/// The entries before the first value of a band.
unsigned long TableReader::padOf(std::size_t band) const
{
    return static_cast<unsigned long>(long{m_header.zeroOffsets[band]} - m_header.lowestZeroOffset);
}

/// The entries of each band of the table.
unsigned long TableReader::width() const
{
    unsigned long width = 0;
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        width = std::max(width, padOf(band) + m_bands[band].size());
    }
    return width;
}

/// A block for a table; null where there is none to be had. That of a Double table is handed to its buffer,
/// as a caller's would be.
ZetBufferPtr TableReader::newBuffer(const ZetDataType& type, unsigned long bytes)
{
    if (bytes == internal::kTooMuch) {
        return ZetBufferPtr();
    }
    if (type.type() == ZetDataType::Double) {
        void* const block = internal::acquireBlock(bytes);
        return block ? new ZetBuffer(bytes, block, true) : nullptr;
    }
    const ZetBufferPtr buffer = new ZetBuffer(bytes, true);
    return buffer->data() ? buffer : ZetBufferPtr();
}

/// Fills the table: before its first and behind its last value, a band repeats them.
template <class T>
void TableReader::fill(T* out, unsigned long width) const
{
    for (std::size_t band = 0; band < m_bands.size(); ++band) {
        const std::vector<double>& values = m_bands[band];
        T* const end = out + width;
        out = std::fill_n(out, padOf(band), entryOf<T>(values.front()));
        out = std::transform(values.begin(), values.end(), out, entryOf<T>);
        std::fill(out, end, entryOf<T>(values.back()));
        out = end;
    }
}

/// @}

}  // namespace

ZetString ZetLutIO::className() const
{
    return L"ZetLutIO";
}

bool ZetLutIO::writeCommon(const ZetLutDesc& table, std::wostream& out)
{
    const unsigned int bands = table.numBands();
    out << L"{\n    type= l\n    channels= " << bands << L"\n";
    if (bands != 0) {
        writeList(L"length", table.numEntriesPerBand(), bands, out);
        writeList(L"zeroOffset", table.minIndex(), bands, out);
        out << L"    dataType = " << table.dataType().toString() << L"\n";
    }
    out << L"}\n";
    for (unsigned int band = 0; band < bands; ++band) {
        if (!writeBand(table, band, out)) {
            return false;
        }
        out << kEndOfData << L"\n";
    }
    return true;
}

ZetLutDesc* ZetLutIO::readCommon(std::wistream& in)
{
    return TableReader(in).read();
}

}  // namespace zet
