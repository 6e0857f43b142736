// Every value class and every kind of variant, written and read back; the page of the documentation
// shows the same tables.

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetBreakPoint>
#include <zet/ZetDataTypeInfo>
#include <zet/ZetEnum>
#include <zet/ZetHistogram>
#include <zet/ZetHistogram_p>
#include <zet/ZetKey>
#include <zet/ZetLutDesc>
#include <zet/ZetMathConst>
#include <zet/ZetMetaDataSet>
#include <zet/ZetMetaProperty>
#include <zet/ZetObjectProxy>
#include <zet/ZetParameter>
#include <zet/ZetParameterList>
#include <zet/ZetSize2D>
#include <zet/ZetStatistics>
#include <zet/ZetTextMsg>
#include <zet/ZetTiePoint>
#include <zet/ZetVariantImpl>
#include <zet/ZetVersion>

#include "support/ZetKindSamples"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

// What has no == of its own is compared by its text.

template <class T>
ZetString printed(const T& value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

template <class T>
bool isSame(const T& a, const T& b)
{
    if constexpr (internal::ZetHasEquality<T>::value) {
        return a == b;
    } else {
        return printed(a) == printed(b);
    }
}

bool isSame(const ZetVariant& a, const ZetVariant& b)
{
    return a.type() == b.type() && a == b;
}

bool isSame(const ZetParameter& a, const ZetParameter& b)
{
    return a.name() == b.name() && a == b;
}

/// A text with marks for what a page does not show.
std::string visible(const ZetString& text)
{
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool atEnd = i == 0 || i + 1 == text.size();
        if (text[i] == L'\n') {
            shown += "\u23ce";
        } else if (text[i] == L'\0') {
            shown += "\u2400";
        } else if (text[i] == L' ' && atEnd) {
            shown += "\u2423";
        } else {
            shown += static_cast<char>(text[i]);
        }
    }
    return shown;
}

std::string stateOf(const std::wios& stream)
{
    return stream.fail() ? "failed" : stream.eof() ? "at end" : "good";
}

/// What becomes of a value that is written and read back.
struct Outcome
{
    std::string written;
    std::string writer;
    std::string back;
    std::string reader;
    std::string left;
};

template <class T>
Outcome writeOnly(const T& value)
{
    std::wostringstream out;
    out << value;
    return {visible(out.str()), stateOf(out), "no", "", ""};
}

/// Reads the text of \p value into \p target, alone and with a line behind it.
template <class T>
Outcome roundTrip(const T& value, const T& target = T())
{
    Outcome outcome = writeOnly(value);
    const ZetString text = printed(value);
    T back(target);
    std::wistringstream alone(text);
    alone >> back;
    if (outcome.writer != "failed") {
        outcome.back = isSame(back, value) ? "yes" : visible(printed(back));
    }
    outcome.reader = stateOf(alone);

    T followed(target);
    std::wistringstream in(text + L"\nnext");
    in >> followed;
    in.clear();
    std::wstring left;
    std::getline(in, left, L'\0');
    outcome.left = visible(left);
    return outcome;
}

/// A value as a variant, read back into a variant of no kind.
Outcome inVariant(const ZetVariant& value)
{
    return roundTrip(value);
}

template <class T>
Outcome inCustomVariant(const T& value)
{
    return inVariant(ZetVariant(ZetMetaType::of<T>(), &value));
}

ZetColorModel modelOf(ZetColorModel::Type type, unsigned int bands)
{
    ZetColorModel model;
    model.setType(type, bands);
    return model;
}

/// A model with numbers of bands, which only reading gives it.
ZetColorModel modelWithBands()
{
    std::wistringstream in(L"(RGB,3,2:4,9)x");
    ZetColorModel model;
    in >> model;
    return model;
}

ZetMetaProperty property(const wchar_t* description)
{
    return ZetMetaProperty(L"gain", ZetMetaType::Double, ZetMetaFlag::Required, L"Gain", description, L'g');
}

ZetMetaDataSet metaData()
{
    ZetMetaDataSet set(L"image", L"a picture");
    set.rfield(L"size").setValues({ZetVariant(3.0), ZetVariant(true)});
    set.rsubset(L"band").setDescription(L"one");
    return set;
}

struct Row
{
    const char* value;
    Outcome outcome;
    Outcome expected;
};

// clang-format off

// value; then what is written and how the stream stands, what is read back and how the stream stands
// at the end of the text, and what is left of a line behind the text
std::vector<Row> valueRows()
{
    return {
        // numbers and characters: the stream's own forms
        {"`bool` true",                      roundTrip(true),                        {"1", "good", "yes", "at end", "⏎next"}},
        {"`int` -5",                         roundTrip(-5),                          {"-5", "good", "yes", "at end", "⏎next"}},
        {"`unsigned int` 5",                 roundTrip(5u),                          {"5", "good", "yes", "at end", "⏎next"}},
        {"`long` -5",                        roundTrip(-5l),                         {"-5", "good", "yes", "at end", "⏎next"}},
        {"`unsigned long` 5",                roundTrip(5ul),                         {"5", "good", "yes", "at end", "⏎next"}},
        {"`double` 1.5",                     roundTrip(1.5),                         {"1.5", "good", "yes", "at end", "⏎next"}},
        {"`double` 12345.678",               roundTrip(12345.678),                   {"12345.7", "good", "12345.7", "at end", "⏎next"}},
        {"`double`, not a number",           roundTrip(std::nan("")),                {"nan", "good", "0", "failed", "nan⏎next"}},
        {"`std::complex<double>` (1,2)",     roundTrip(std::complex<double>(1, 2)),  {"(1,2)", "good", "yes", "good", "⏎next"}},
        {"`wchar_t` A",                      roundTrip(L'A'),                        {"A", "good", "yes", "good", "⏎next"}},
        {"`wchar_t` blank",                  roundTrip(L' '),                        {"␣", "good", "␀", "failed", "ext"}},
        {"`void*` null",                     roundTrip<void*>(nullptr),              {"0", "good", "yes", "at end", "⏎next"}},
        // text: one word, or one line
        {"`ZetString` word",                 roundTrip(ZetString(L"word")),          {"word", "good", "yes", "at end", "⏎next"}},
        {"`ZetString` two words",            roundTrip(ZetString(L"two words")),     {"two words", "good", "two", "good", "␣words⏎next"}},
        {"`ZetString`, empty",               roundTrip(ZetString()),                 {"", "good", "yes", "failed", ""}},
        {"`ZetStrList` a, b",                roundTrip(ZetStrList{L"a", L"b"}),      {"(a,b)", "good", "yes", "at end", "next"}},
        {"`ZetStrList` \"a,b\"",             roundTrip(ZetStrList{L"a,b"}),          {"(a,b)", "good", "(a,b)", "at end", "next"}},
        {"`ZetStrList`, one empty text",     roundTrip(ZetStrList{L""}),             {"()", "good", "yes", "at end", "next"}},
        {"`ZetStrList`, empty",              roundTrip(ZetStrList()),                {"", "good", "yes", "failed", "next"}},
        // quantities
        {"`ZetRational<long>` -1/2",         roundTrip(ZetRational<long>(-1, 2)),    {"(-1,2)", "good", "yes", "good", "⏎next"}},
        {"`ZetRational<unsigned long>` 1/2", roundTrip(ZetRational<unsigned long>(1, 2)), {"(1,2)", "good", "yes", "good", "⏎next"}},
        {"`ZetUnits` m/s",                   roundTrip(test::makeUnits(L"m/s")),     {"m/s", "good", "yes", "at end", "next"}},
        {"`ZetUnits`, none",                 roundTrip(ZetUnits()),                  {"", "good", "yes", "failed", "next"}},
        {"`ZetScalar` 5 m",                  roundTrip(ZetScalar(5.0, test::makeUnits(L"m"))), {"5 m", "good", "yes", "at end", "next"}},
        {"`ZetScalar` 5",                    roundTrip(ZetScalar(5.0)),              {"5", "good", "yes", "at end", "next"}},
        {"`ZetScalar` (1,2) m",              roundTrip(ZetScalar(std::complex<double>(1, 2), test::makeUnits(L"m"))), {"(1,2) m", "good", "yes", "at end", "next"}},
        // enumerations: one word
        {"`ZetMathConst` m_pi",              roundTrip(ZetMathConst(ZetMathConst::Pi)), {"m_pi", "good", "yes", "at end", "⏎next"}},
        {"`ZetByteOrder` BigEndian",         roundTrip(ZetByteOrder(ZetByteOrder::BigEndian)), {"BigEndian", "good", "yes", "at end", "⏎next"}},
        {"`ZetDataLayout` LineInterleaved",  roundTrip(ZetDataLayout(ZetDataLayout::LineInterleaved)), {"LineInterleaved", "good", "yes", "at end", "⏎next"}},
        {"`ZetMetaType` Double",             roundTrip(ZetMetaType(ZetMetaType::Double)), {"Double", "good", "yes", "at end", "⏎next"}},
        {"`ZetMetaType`, invalid",           roundTrip(ZetMetaType()),               {"", "good", "yes", "failed", ""}},
        {"`ZetMetaFlag` 0",                  roundTrip(ZetMetaFlag()),               {"(Editable)", "good", "yes", "good", "⏎next"}},
        {"`ZetMetaFlag` 5",                  roundTrip(ZetMetaFlag(5)),              {"(ReadOnly | NoPersist)", "good", "yes", "good", "⏎next"}},
        // images
        {"`ZetDataType` U16 of 12 bits",     roundTrip(ZetDataType(ZetDataType::U16, 12)), {"(U16,12)", "good", "yes", "good", "⏎next"}},
        {"`ZetDataType`, invalid",           roundTrip(ZetDataType(ZetDataType::Invalid), ZetDataType(ZetDataType::U8)), {"(,0)", "good", "yes", "good", "⏎next"}},
        {"`ZetColorModel` RGB",              roundTrip(ZetColorModel(ZetColorModel::RGB)), {"(RGB,3,0)", "good", "yes", "good", "⏎next"}},
        {"`ZetColorModel` MultiSpectral",    roundTrip(modelOf(ZetColorModel::MultiSpectral, 7)), {"(MultiSpectral,7,0)", "good", "yes", "good", "⏎next"}},
        {"`ZetColorModel` Other",            roundTrip(modelOf(ZetColorModel::Other, 2)), {"(Other,2,0)", "good", "yes", "good", "⏎next"}},
        {"`ZetColorModel`, invalid",         roundTrip(ZetColorModel(ZetColorModel::Invalid)), {"(,0,0)", "good", "yes", "good", "⏎next"}},
        {"`ZetColorModel` with bands",       roundTrip(modelWithBands()),            {"(RGB,3,2:4,9)", "good", "yes", "failed", "ext"}},
        {"`ZetCoord2D<int>`",                roundTrip(ZetCoord2D<int>(1, -2)),      {"(1,-2)", "good", "yes", "good", "⏎next"}},
        {"`ZetCoord2D<double>`",             roundTrip(ZetCoord2D<double>(1.5, -2)), {"(1.5,-2)", "good", "yes", "good", "⏎next"}},
        {"`ZetCoord3D<int>`",                roundTrip(ZetCoord3D<int>(1, -2, 3)),   {"(1,-2,3)", "good", "yes", "good", "⏎next"}},
        {"`ZetCoord3D<double>`",             roundTrip(ZetCoord3D<double>(1.5, -2, 3)), {"(1.5,-2,3)", "good", "yes", "good", "⏎next"}},
        {"`ZetSize2D<unsigned int>`",        roundTrip(ZetSize2D<unsigned int>(1, 2)), {"(1,2)", "good", "yes", "good", "⏎next"}},
        {"`ZetSize3D<unsigned int>`",        roundTrip(ZetSize3D<unsigned int>(1, 2, 3)), {"(1,2,3)", "good", "yes", "good", "⏎next"}},
        {"`ZetImageSize`",                   roundTrip(ZetImageSize(1, 2, 3)),       {"(1,2,3)", "good", "yes", "good", "⏎next"}},
        {"`ZetROI`",                         roundTrip(ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6))), {"((1,2,3),(4,5,6))", "good", "yes", "good", "⏎next"}},
        {"`ZetTiePoint`",                    roundTrip(ZetTiePoint(ZetCoord2D<double>(1, 2), ZetCoord2D<double>(3, 4))), {"((1,2),(3,4))", "good", "yes", "good", "⏎next"}},
        {"`ZetBreakPoint`",                  roundTrip(ZetBreakPoint(1, 2.5, 3)),    {"(1,2.5,3)", "good", "yes", "good", "⏎next"}},
        {"`ZetBufferPtr`, null",             roundTrip(ZetBufferPtr()),              {"0x00000000", "good", "yes", "good", "0x00000000⏎next"}},
        // records
        {"`ZetKey` 7",                       roundTrip(ZetKey(7)),                   {"7", "good", "yes", "at end", "⏎next"}},
        {"`ZetVersion` 2.5.7",               roundTrip(ZetVersion(2, 5, 7)),         {"2.5.7", "good", "yes", "at end", "⏎next"}},
        {"`ZetVersion` 2.5.0",               roundTrip(ZetVersion(2, 5, 0)),         {"2.5", "good", "yes", "at end", "⏎next"}},
        {"`ZetVersion` -1.-2.-3",            roundTrip(ZetVersion(-1, -2, -3)),      {"-1.-2.-3", "good", "yes", "at end", "⏎next"}},
        {"`ZetMetaProperty`",                roundTrip(property(L"in dB")),          {"(gain,Gain,Double,(Required),in dB,g)", "good", "yes", "good", "⏎next"}},
        {"`ZetMetaProperty` with a comma",   roundTrip(property(L"a,b")),            {"(gain,Gain,Double,(Required),a,b,g)", "good", "(gain,Gain,Double,(Required),a,b)", "good", "g)⏎next"}},
        {"`ZetParameter`, a number",         roundTrip(ZetParameter(L"p", 1.5, false)), {"(p,Double,1.5,(p,p,Double,(Editable),,␀))", "good", "(p,Double,1.5,((p,p,Double,(Editable),,␀))", "good", "⏎next"}},
        {"`ZetParameter`, a word",           roundTrip(ZetParameter(L"p", ZetVariant(L"w"), false)), {"(p,ZetString,w,(p,p,ZetString,(Editable),,␀))", "good", "(p,ZetString,w,(p,p,ZetString,(Editable),,␀)),(,,,(Editable),,␀))", "failed", ""}},
        {"`ZetParameterList`, empty",        roundTrip(ZetParameterList(L"list"), ZetParameterList(L"other")), {"", "good", "yes", "good", "⏎next"}},
        {"`ZetMetaDataField`",               roundTrip(metaData().field(L"size", false)), {"(size,\"\",2,\"3.0\",\"true\")", "good", "(,\"\",0,)", "failed", "(size,\"\",2,\"3.0\",\"true\")⏎next"}},
        {"`ZetMetaDataSet`",                 roundTrip(metaData()),                  {"image; a picture⏎(size,\"\",2,\"3.0\",\"true\")⏎⏎band; one⏎", "good", "; ⏎", "failed", "image; a picture⏎(size,\"\",2,\"3.0\",\"true\")⏎⏎band; one⏎⏎next"}},
        {"`ZetTextMsg`",                     writeOnly(ZetTextMsg(L"text", L"file", 7, ZetTextMsg::Error)), {"error: text - (file : 7)", "good", "no", "", ""}},
        {"`ZetTextMsg`, empty",              writeOnly(ZetTextMsg(L"", ZetTextMsg::Error)), {"", "good", "no", "", ""}},
        // containers
        {"`ZetVariantList` 1.5, true",       roundTrip(ZetVariantList{ZetVariant(1.5), ZetVariant(true)}), {"[Double,1.5,Bool,1]", "good", "yes", "good", "⏎next"}},
        {"`ZetVariantList`, empty",          roundTrip(ZetVariantList()),            {"[]", "good", "yes", "good", "⏎next"}},
        {"`ZetVariantMap` a: 1.5",           roundTrip(ZetVariantMap{{L"a", ZetVariant(1.5)}}), {"{a:Double,1.5}", "good", "yes", "good", "⏎next"}},
        {"`ZetVariantMap`, empty",           roundTrip(ZetVariantMap()),             {"{}", "good", "yes", "good", "⏎next"}},
        // no text form
        {"`ZetEnum`",                        roundTrip(ZetDataType::enumerator()),   {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetEqnTile`",                     roundTrip(test::makeTile(2)),           {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetHistogram`",                   roundTrip(ZetHistogram()),              {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetHistogram_p`",                 roundTrip(ZetHistogram_p()),            {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetLutDesc`",                     roundTrip(ZetLutDesc()),                {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetStatistics`",                  roundTrip(ZetStatistics()),             {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetObjectProxy`",                 roundTrip(ZetObjectProxy()),            {"", "failed", "no", "failed", "⏎next"}},
        {"`ZetDataTypeInfo`",                roundTrip(ZetDataTypeInfo(1, 0, 255)),  {"", "failed", "no", "failed", "⏎next"}},
    };
}

std::vector<Row> variantRows()
{
    return {
        // the built-in kinds in the order of their numbers
        {"no kind",                          inVariant(ZetVariant()),                {",␣", "good", "ZetString,", "failed", ""}},
        {"Bool",                             inVariant(true),                        {"Bool,1", "good", "yes", "at end", "⏎next"}},
        {"Int",                              inVariant(-5),                          {"Int,-5", "good", "yes", "at end", "⏎next"}},
        {"UInt",                             inVariant(5u),                          {"UInt,5", "good", "yes", "at end", "⏎next"}},
        {"Int64",                            inVariant(-5l),                         {"Int64,-5", "good", "yes", "at end", "⏎next"}},
        {"UInt64",                           inVariant(5ul),                         {"UInt64,5", "good", "yes", "at end", "⏎next"}},
        {"Double 3",                         inVariant(3.0),                         {"Double,3", "good", "yes", "at end", "⏎next"}},
        {"Double 12345.678",                 inVariant(12345.678),                   {"Double,12345.7", "good", "Double,12345.7", "at end", "⏎next"}},
        {"ComplexDouble",                    inVariant(std::complex<double>(1, 2)),  {"ComplexDouble,(1,2)", "good", "yes", "good", "⏎next"}},
        {"ZetI64Rational",                   inVariant(ZetRational<long>(-1, 2)),    {"ZetI64Rational,(-1,2)", "good", "yes", "good", "⏎next"}},
        {"ZetU64Rational",                   inVariant(ZetRational<unsigned long>(1, 2)), {"ZetU64Rational,(1,2)", "good", "yes", "good", "⏎next"}},
        {"ZetChar",                          inVariant(L'A'),                        {"ZetChar,A", "good", "yes", "good", "⏎next"}},
        {"ZetString, a word",                inVariant(L"word"),                     {"ZetString,word", "good", "yes", "at end", "⏎next"}},
        {"ZetString, two words",             inVariant(L"two words"),                {"ZetString,two words", "good", "ZetString,two", "good", "␣words⏎next"}},
        {"ZetString, in quotes",             inVariant(L"\"two words\""),            {"ZetString,\"two words\"", "good", "ZetString,two words", "good", "⏎next"}},
        {"ZetString, empty",                 inVariant(L""),                         {"ZetString,", "good", "yes", "failed", ""}},
        {"ZetStrList",                       inVariant(ZetStrList{L"a", L"b"}),      {"ZetStrList,(a,b)", "good", "yes", "at end", "next"}},
        {"ZetStrList, empty",                inVariant(ZetStrList()),                {"ZetStrList,", "good", "yes", "failed", "next"}},
        {"ZetEqnTile",                       inVariant(test::makeTile(2)),           {"ZetEqnTile,", "failed", "no", "failed", "⏎next"}},
        {"ZetBufferPtr, null",               inVariant(ZetBufferPtr()),              {"ZetBufferPtr,0x00000000", "good", "yes", "good", "0x00000000⏎next"}},
        {"ZetI32Coord",                      inVariant(ZetCoord3D<int>(1, -2, 3)),   {"ZetI32Coord,(1,-2,3)", "good", "yes", "good", "⏎next"}},
        {"ZetDblCoord",                      inVariant(ZetCoord3D<double>(1.5, -2, 3)), {"ZetDblCoord,(1.5,-2,3)", "good", "yes", "good", "⏎next"}},
        {"ZetDblCoord2D",                    inVariant(ZetCoord2D<double>(1.5, -2)), {"ZetDblCoord2D,(1.5,-2)", "good", "yes", "good", "⏎next"}},
        {"ZetU32Size",                       inVariant(ZetSize3D<unsigned int>(1, 2, 3)), {"ZetU32Size,(1,2,3)", "good", "yes", "good", "⏎next"}},
        {"ZetImageSize",                     inVariant(ZetImageSize(1, 2, 3)),       {"ZetImageSize,(1,2,3)", "good", "yes", "good", "⏎next"}},
        {"ZetUnits",                         inVariant(test::makeUnits(L"m/s")),     {"ZetUnits,m/s", "good", "yes", "at end", "next"}},
        {"ZetScalar 5 m",                    inVariant(ZetScalar(5.0, test::makeUnits(L"m"))), {"ZetScalar,5 m", "good", "yes", "at end", "next"}},
        {"ZetScalar 5",                      inVariant(ZetScalar(5.0)),              {"ZetScalar,5", "good", "yes", "at end", "next"}},
        {"ZetROI",                           inVariant(ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6))), {"ZetROI,((1,2,3),(4,5,6))", "good", "yes", "good", "⏎next"}},
        {"ZetDataType",                      inVariant(ZetDataType(ZetDataType::U16, 12)), {"ZetDataType,(U16,12)", "good", "yes", "good", "⏎next"}},
        {"ZetDataLayout",                    inVariant(ZetDataLayout(ZetDataLayout::LineInterleaved)), {"ZetDataLayout,LineInterleaved", "good", "yes", "at end", "⏎next"}},
        {"ZetColorModel RGB",                inVariant(ZetColorModel(ZetColorModel::RGB)), {"ZetColorModel,(RGB,3,0)", "good", "yes", "good", "⏎next"}},
        {"ZetColorModel MultiSpectral",      inVariant(modelOf(ZetColorModel::MultiSpectral, 7)), {"ZetColorModel,(MultiSpectral,7,0)", "good", "yes", "good", "⏎next"}},
        {"ZetColorModel with bands",         inVariant(modelWithBands()),            {"ZetColorModel,(RGB,3,2:4,9)", "good", "yes", "failed", "ext"}},
        {"ZetByteOrder",                     inVariant(ZetByteOrder(ZetByteOrder::BigEndian)), {"ZetByteOrder,BigEndian", "good", "yes", "at end", "⏎next"}},
        {"ZetVariantList",                   inVariant(ZetVariantList{ZetVariant(1.5), ZetVariant(true)}), {"ZetVariantList,[Double,1.5,Bool,1]", "good", "yes", "good", "⏎next"}},
        {"ZetVariantMap",                    inVariant(ZetVariantMap{{L"a", ZetVariant(1.5)}}), {"ZetVariantMap,{a:Double,1.5}", "good", "yes", "good", "⏎next"}},
        // the kinds that register themselves
        {"ZetDataTypeInfo",                  inCustomVariant(ZetDataTypeInfo(1, 0, 255)), {"ZetDataTypeInfo,", "failed", "no", "failed", "⏎next"}},
        {"ZetHistogram_p",                   inCustomVariant(ZetHistogram_p()),      {"ZetHistogram_p,", "failed", "no", "failed", "⏎next"}},
        {"ZetMetaProperty",                  inCustomVariant(property(L"in dB")),    {"ZetMetaProperty,(gain,Gain,Double,(Required),in dB,g)", "good", "yes", "good", "⏎next"}},
        {"ZetObjectProxy",                   inCustomVariant(ZetObjectProxy()),      {"ZetObjectProxy,", "failed", "no", "failed", "⏎next"}},
        {"ZetMetaDataField",                 inCustomVariant(metaData().field(L"size", false)), {"ZetMetaDataField,(size,\"\",2,\"3.0\",\"true\")", "good", "ZetMetaDataField,(,\"\",0,)", "failed", "(size,\"\",2,\"3.0\",\"true\")⏎next"}},
        {"ZetMetaDataSet",                   inCustomVariant(ZetMetaDataSet(L"s", L"d")), {"ZetMetaDataSet,s; d⏎", "good", "ZetMetaDataSet,; ⏎", "failed", "s; d⏎⏎next"}},
        // what containers do not bring back
        {"a list of a coordinate",           inVariant(ZetVariantList{ZetVariant(ZetCoord3D<int>(1, 2, 3))}), {"ZetVariantList,[ZetI32Coord,(1,2,3)]", "good", "ZetVariantList,[ZetI32Coord,(0,0,0),ZetString,3)]", "good", "⏎next"}},
        {"a list of text with a comma",      inVariant(ZetVariantList{ZetVariant(L"a,b")}), {"ZetVariantList,[ZetString,a,b]", "good", "ZetVariantList,[ZetString,a]", "good", "⏎next"}},
        {"a list of text with a bracket",    inVariant(ZetVariantList{ZetVariant(L"a]b")}), {"ZetVariantList,[ZetString,a]b]", "good", "ZetVariantList,[ZetString,a]", "good", "b]⏎next"}},
        {"a list of no kind",                inVariant(ZetVariantList{ZetVariant()}), {"ZetVariantList,[, ]", "good", "ZetVariantList,[ZetString,]", "good", "⏎next"}},
        {"a list of a list",                 inVariant(ZetVariantList{ZetVariant(ZetVariantList{ZetVariant(1)})}), {"ZetVariantList,[ZetVariantList,[Int,1]]", "good", "ZetVariantList,[ZetVariantList,[]]", "good", "]⏎next"}},
        {"a map with a colon in a key",      inVariant(ZetVariantMap{{L"a:b", ZetVariant(1)}}), {"ZetVariantMap,{a:b:Int,1}", "good", "ZetVariantMap,{a:ZetString,}", "good", "⏎next"}},
        {"a map with a colon in a value",    inVariant(ZetVariantMap{{L"a", ZetVariant(L"x:y")}}), {"ZetVariantMap,{a:ZetString,x:y}", "good", "ZetVariantMap,{a:ZetString,x}", "good", "⏎next"}},
        {"a map of a map",                   inVariant(ZetVariantMap{{L"m", ZetVariant(ZetVariantMap{{L"k", ZetVariant(1)}})}}), {"ZetVariantMap,{m:ZetVariantMap,{k:Int,1}}", "good", "ZetVariantMap,{1,:ZetString,,m:ZetVariantMap,{k,:ZetString,}}", "good", "}⏎next"}},
    };
}
// clang-format on

void expectOutcome(const Row& row)
{
    SCOPED_TRACE(row.value);
    EXPECT_EQ(row.outcome.written, row.expected.written);
    EXPECT_EQ(row.outcome.writer, row.expected.writer);
    EXPECT_EQ(row.outcome.back, row.expected.back);
    EXPECT_EQ(row.outcome.reader, row.expected.reader);
    EXPECT_EQ(row.outcome.left, row.expected.left);
}

TEST(ZetTextForms, values)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (const Row& row : valueRows()) {
        expectOutcome(row);
    }
}

TEST(ZetTextForms, variants)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (const Row& row : variantRows()) {
        expectOutcome(row);
    }
}

TEST(ZetTextForms, everyKindHasARow)
{
    const test::ZetScopedLocale plainNumbers("C");
    std::set<std::string> written;
    for (const Row& row : variantRows()) {
        written.insert(row.expected.written.substr(0, row.expected.written.find(',')));
    }
    for (const ZetString& name : ZetMetaType::allKeys()) {
        // a variant of the kind of variants themselves cannot be made
        EXPECT_EQ(written.count(toMultibyte(name)), name == L"ZetVariant" ? 0u : 1u) << toMultibyte(name);
    }
}

/// Whether a value of a kind that registers itself converts to text, and whether it takes text.
template <class T>
void expectConversions(const T& value, bool toText, bool fromText)
{
    const ZetVariantIFPtr implementation = ZetVariant(ZetMetaType::of<T>(), &value).implementation()->clone();
    SCOPED_TRACE(toMultibyte(implementation->type().toString()));
    ZetString text = L"before";
    EXPECT_EQ(implementation->convertTo(typeID<ZetString>(), &text), toText);
    const ZetString given = L"(gain,Gain,Double,(Required),in dB,g)";
    EXPECT_EQ(implementation->convertFrom(typeID<ZetString>(), &given), fromText);
    T copy = T();
    EXPECT_TRUE(implementation->convertTo(typeID<T>(), &copy));
    // nothing else
    int number = 7;
    EXPECT_FALSE(implementation->convertTo(typeID<int>(), &number));
    EXPECT_EQ(number, 7);
    EXPECT_FALSE(implementation->convertFrom(typeID<int>(), &number));
}

TEST(ZetTextForms, conversionsOfTheKindsThatRegisterThemselves)
{
    expectConversions(ZetDataTypeInfo(1, 0, 255), false, false);
    expectConversions(ZetHistogram_p(), false, false);
    expectConversions(property(L"in dB"), true, true);
    expectConversions(ZetObjectProxy(), false, false);
    expectConversions(metaData().field(L"size", false), true, false);
    expectConversions(metaData(), true, false);
}

/// A cell of code in a table; nothing for an empty text.
std::string code(const std::string& text)
{
    std::string cell;
    for (const char c : text) {
        cell += c == '|' ? "\\|" : std::string(1, c);
    }
    return cell.empty() ? cell : "`" + cell + "`";
}

std::string lineOf(const Row& row)
{
    const Outcome& o = row.expected;
    const std::string back = o.back == "yes" || o.back == "no" ? o.back : code(o.back);
    return std::string("| ") + row.value + " | " + code(o.written) + " | " + o.writer + " | " + back + " | " +
           o.reader + " | " + code(o.left) + " |";
}

TEST(ZetTextForms, thePageShowsTheTables)
{
    const test::ZetScopedLocale plainNumbers("C");
    std::vector<std::string> rows;
    for (const Row& row : valueRows()) {
        rows.push_back(lineOf(row));
    }
    for (const Row& row : variantRows()) {
        rows.push_back(lineOf(row));
    }
    std::ifstream page(ZET_TEST_SOURCE_DIR "/docs/texts.md");
    ASSERT_TRUE(page);
    std::vector<std::string> shown;
    for (std::string line; std::getline(page, line);) {
        // all lines of the tables but their heads
        if (line.compare(0, 2, "| ") == 0 && line.compare(0, 7, "| Value") != 0) {
            shown.push_back(line);
        }
    }
    EXPECT_EQ(shown, rows);
}

}  // namespace
}  // namespace zet
