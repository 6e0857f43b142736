// Reading and writing a file of three tables of 65,536 values of 16 bits, beside loops by hand with
// std::from_chars and std::to_chars.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <zet/ZetLutIO>

#include "support/ZetMemoryBuffers"

namespace {

using zet::bench::ZetMemorySink;
using zet::bench::ZetMemorySource;

constexpr unsigned int kEntries = 65536;
constexpr unsigned int kBands = 3;

/// More characters than the file has.
constexpr std::size_t kMost = kEntries * kBands * 6 + 1000;

/// A rising, a falling and a scattered band.
std::vector<std::uint16_t> values()
{
    std::vector<std::uint16_t> all;
    for (unsigned int i = 0; i < kEntries; ++i) {
        all.push_back(static_cast<std::uint16_t>(i));
    }
    for (unsigned int i = 0; i < kEntries; ++i) {
        all.push_back(static_cast<std::uint16_t>(kEntries - 1 - i));
    }
    for (unsigned int i = 0; i < kEntries; ++i) {
        all.push_back(static_cast<std::uint16_t>(i * 40503u));
    }
    return all;
}

zet::ZetLutDesc table()
{
    const std::vector<std::uint16_t> all = values();
    const zet::ZetBufferPtr buffer = new zet::ZetBuffer(all.size() * sizeof all[0], true);
    std::memcpy(buffer->data(), all.data(), buffer->size());
    return zet::ZetLutDesc(buffer, zet::ZetDataType::U16, kEntries, 0, kBands, false);
}

std::wstring text()
{
    std::wostringstream out;
    out.imbue(std::locale::classic());
    zet::ZetLutIO::writeCommon(table(), out);
    return out.str();
}

void setValues(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * kEntries * kBands);
}

void writeTable(benchmark::State& state)
{
    const zet::ZetLutDesc lut = table();
    std::wstring block(kMost, L'\0');
    for (auto _ : state) {
        ZetMemorySink sink(block);
        std::wostream out(&sink);
        benchmark::DoNotOptimize(zet::ZetLutIO::writeCommon(lut, out));
        benchmark::DoNotOptimize(sink.size());
    }
    setValues(state);
}
BENCHMARK(writeTable)->Name("write a table/zet");

void writeTableByToChars(benchmark::State& state)
{
    const std::vector<std::uint16_t> all = values();
    std::wstring block(kMost, L'\0');
    for (auto _ : state) {
        ZetMemorySink sink(block);
        std::wostream out(&sink);
        for (const std::uint16_t value : all) {
            char digits[8];
            char* const end = std::to_chars(digits, std::end(digits), value).ptr;
            wchar_t line[8];
            wchar_t* last = std::copy(digits, end, line);
            *last++ = L'\n';
            sink.sputn(line, last - line);
        }
        benchmark::DoNotOptimize(sink.size());
    }
    setValues(state);
}
BENCHMARK(writeTableByToChars)->Name("write a table/to_chars");

void writeTableByStream(benchmark::State& state)
{
    const std::vector<std::uint16_t> all = values();
    std::wstring block(kMost, L'\0');
    for (auto _ : state) {
        ZetMemorySink sink(block);
        std::wostream out(&sink);
        for (const std::uint16_t value : all) {
            out << value << L'\n';
        }
        benchmark::DoNotOptimize(sink.size());
    }
    setValues(state);
}
BENCHMARK(writeTableByStream)->Name("write a table/stream");

void readTable(benchmark::State& state)
{
    std::wstring file = text();
    for (auto _ : state) {
        ZetMemorySource source(file);
        std::wistream in(&source);
        const std::unique_ptr<zet::ZetLutDesc> lut(zet::ZetLutIO::readCommon(in));
        benchmark::DoNotOptimize(lut->numBands());
    }
    setValues(state);
}
BENCHMARK(readTable)->Name("read a table/zet");

/// The same characters, narrowed word by word: without comments, literals and delimiters.
void readTableByFromChars(benchmark::State& state)
{
    const std::wstring file = text();
    std::wstring data = file.substr(file.find(L'}') + 1);
    for (auto _ : state) {
        ZetMemorySource in(data);
        std::vector<std::uint16_t> all;
        char word[8];
        char* end = word;
        for (std::wint_t c = in.sgetc(); c != WEOF; c = in.snextc()) {
            if (c >= L'0' && c <= L'9') {
                *end++ = static_cast<char>(c);
            } else if (end != word) {
                std::uint16_t value = 0;
                std::from_chars(word, end, value);
                all.push_back(value);
                end = word;
            }
        }
        benchmark::DoNotOptimize(all.data());
    }
    setValues(state);
}
BENCHMARK(readTableByFromChars)->Name("read a table/from_chars");

void readTableByStream(benchmark::State& state)
{
    const std::wstring file = text();
    std::wstring data = file.substr(file.find(L'}') + 1);
    std::erase(data, L'$');
    for (auto _ : state) {
        ZetMemorySource source(data);
        std::wistream in(&source);
        std::vector<std::uint16_t> all;
        for (std::uint16_t value = 0; in >> value;) {
            all.push_back(value);
        }
        benchmark::DoNotOptimize(all.data());
    }
    setValues(state);
}
BENCHMARK(readTableByStream)->Name("read a table/stream");

}  // namespace
