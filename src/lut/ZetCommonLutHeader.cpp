#include <zet/ZetCommonLutHeader>

#include <algorithm>
#include <utility>

#include <zet/ZetTokenizer>

#include "core/ZetUnitInit"
#include "lut/ZetLutSupport"

namespace zet {
namespace {

/// Posts an error, and gives what a header that failed gives.
template <class... Parts>
bool refuse(int line, const Parts&... parts)
{
    internal::postError(L"ZetLutIO", line, parts...);
    return false;
}

/// The number at the start of a text, 0 for none.
int numberIn(const ZetString& text)
{
    return static_cast<int>(atoi(text));
}

/// The names of data types beside their keys.
struct ShortName
{
    const wchar_t* name;
    ZetDataType::Type type;
};

const ShortName kShortNames[] = {
    {L"float", ZetDataType::Float}, {L"double", ZetDataType::Double}, {L"u8", ZetDataType::U8},
    {L"i8", ZetDataType::I8},       {L"u16", ZetDataType::U16},       {L"i16", ZetDataType::I16},
    {L"u32", ZetDataType::U32},     {L"i32", ZetDataType::I32},
};

ZetDataType dataTypeIn(const ZetString& text)
{
    const ZetDataType::Type type = ZetDataType::fromString(text);
    if (type != ZetDataType::Invalid) {
        return type;
    }
    for (const ShortName& known : kShortNames) {
        if (isEqual(text, known.name)) {
            return known.type;
        }
    }
    return ZetDataType::Invalid;
}

/// Reads one header.
class HeaderReader
{
public:
    HeaderReader(ZetTokenizer& tokenizer, ZetCommonLutHeader& header) : m_tokenizer(tokenizer), m_header(header) {}

    bool read()
    {
        m_header = ZetCommonLutHeader();
        take();
        if (m_token != L"{") {
            return refuse(__LINE__, L"Unable to find the begin-of-header token '{'.");
        }
        take();
        while (!m_token.empty() && m_token != L"}") {
            if (!readKeyword()) {
                return false;
            }
        }
        return check();
    }

private:
    /// What may stand before the first digit of one more value of a list.
    static constexpr const wchar_t* kDigits = L"0123456789";
    static constexpr const wchar_t* kDigitsAndSigns = L"0123456789-+";

    void take() { m_tokenizer.nextToken(m_token); }

    /// Reads a keyword, which is the present token, and its value. The token behind it is the present one
    /// then.
    bool readKeyword()
    {
        const ZetString keyword = m_token;
        take();
        if (m_token != L"=") {
            return refuse(__LINE__, L"Failed parsing for '='. Previous token: '", keyword, L"'.");
        }
        take();
        if (m_token.empty()) {
            return refuse(__LINE__, L"Missing value for keyword '", keyword, L"'.");
        }
        if (isEqual(keyword, L"length")) {
            return readList(m_header.lengths, L"length", kDigits);
        }
        if (isEqual(keyword, L"zeroOffset")) {
            return readZeroOffsets();
        }
        if (!readValue(keyword)) {
            return false;
        }
        take();
        return true;
    }

    bool readValue(const ZetString& keyword)
    {
        if (isEqual(keyword, L"tables")) {
            return readTables();
        }
        if (isEqual(keyword, L"type")) {
            if (!m_header.type.empty()) {
                return refuse(__LINE__, L"Multiple 'type' keyword definitions");
            }
            m_header.type = m_token;
            return true;
        }
        if (isEqual(keyword, L"channels")) {
            return readChannels();
        }
        if (isEqual(keyword, L"dataType")) {
            m_header.dataType = dataTypeIn(m_token);
            m_header.dataTypeGiven = true;
            return true;
        }
        return refuse(__LINE__, L"Unknown header section token '", keyword, L"'.");
    }

    bool readTables()
    {
        if (m_tables != 0) {
            return refuse(__LINE__, L"Multiple 'tables' keyword definitions");
        }
        const int number = numberIn(m_token);
        if (number < 1) {
            return refuse(__LINE__, L"Invalid value, ", number, L", for keyword 'tables'");
        }
        m_tables = number;
        return true;
    }

    bool readChannels()
    {
        m_header.channelsGiven = true;
        if (m_header.channels != 0) {
            return refuse(__LINE__, L"Multiple 'channels' keyword definitions");
        }
        m_header.channels = numberIn(m_token);
        if (m_header.channels < 0) {
            return refuse(__LINE__, L"Invalid value, ", m_header.channels, L", for keyword 'channels'");
        }
        return true;
    }

    /// Reads one value, whatever it is, and as many more as begin with one of \p starts.
    bool readList(std::vector<int>& values, const wchar_t* keyword, const ZetString& starts)
    {
        if (!values.empty()) {
            return refuse(__LINE__, L"Multiple '", keyword, L"' keyword definitions");
        }
        do {
            values.push_back(numberIn(m_token));
            take();
        } while (!m_token.empty() && starts.find(m_token[0]) != ZetString::npos);
        return true;
    }

    bool readZeroOffsets()
    {
        if (!readList(m_header.zeroOffsets, L"zeroOffset", kDigitsAndSigns)) {
            return false;
        }
        m_header.lowestZeroOffset = *std::min_element(m_header.zeroOffsets.begin(), m_header.zeroOffsets.end());
        return true;
    }

    /// Whether the keywords make a header together.
    bool check()
    {
        if (m_tables == 0 && !m_header.channelsGiven) {
            return refuse(__LINE__, L"Missing required 'channel' keyword");
        }
        if (m_tables != 0 && m_header.channels != 0 && m_tables != m_header.channels) {
            return refuse(__LINE__, L"Number of tables, ", m_tables, L", does not equal number of channels, ",
                          m_header.channels);
        }
        if (m_header.channels == 0) {
            m_header.channels = m_tables;
        }
        if (m_header.type.empty()) {
            return refuse(__LINE__, L"Missing required 'type' keyword");
        }
        return checkLengths() && checkZeroOffsets();
    }

    bool checkLengths()
    {
        if (m_header.channels != 0 && m_header.lengths.empty()) {
            return refuse(__LINE__, L"Missing required 'length' keyword");
        }
        if (!isOnePerChannel(m_header.lengths)) {
            return refuse(__LINE__, L"Expected ", m_header.channels, L" length value(s); got ", m_header.lengths.size(),
                          L" length value(s)");
        }
        return true;
    }

    bool checkZeroOffsets()
    {
        if (m_header.zeroOffsets.empty()) {
            m_header.zeroOffsets.resize(m_header.lengths.size(), 0);
            return true;
        }
        if (m_header.type != L"l") {
            return refuse(__LINE__, L"ZeroOffset keyword is only valid when type is 'l'");
        }
        if (!isOnePerChannel(m_header.zeroOffsets)) {
            return refuse(__LINE__, L"Expected ", m_header.channels, L" zero offset value(s); got ",
                          m_header.zeroOffsets.size(), L" value(s)");
        }
        return true;
    }

    bool isOnePerChannel(const std::vector<int>& values) const
    {
        return values.size() == static_cast<std::size_t>(m_header.channels);
    }

    ZetTokenizer& m_tokenizer;
    ZetCommonLutHeader& m_header;
    ZetString m_token;

    /// The value of the keyword "tables", 0 without it.
    int m_tables = 0;
};

}  // namespace

int parseLutHeader(ZetTokenizer& tokenizer, ZetCommonLutHeader& header)
{
    return HeaderReader(tokenizer, header).read() ? 0 : 1;
}

}  // namespace zet
