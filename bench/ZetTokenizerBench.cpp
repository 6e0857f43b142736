// Taking tokens from text, beside a loop by hand over the same characters.

#include <benchmark/benchmark.h>

#include <istream>
#include <random>
#include <string>

#include <zet/ZetTokenizer>

#include "support/ZetMemoryBuffers"

namespace {

using zet::bench::ZetMemorySource;

/// Numbers of up to five digits, one a line.
std::wstring numbers()
{
    std::mt19937 random(1);
    std::wstring text;
    for (int i = 0; i < 65536; ++i) {
        text += std::to_wstring(random() % 65536) + L'\n';
    }
    return text;
}

void setTokens(benchmark::State& state, long tokens)
{
    state.SetItemsProcessed(state.iterations() * tokens);
}

void takeTokens(benchmark::State& state)
{
    std::wstring text = numbers();
    long tokens = 0;
    for (auto _ : state) {
        ZetMemorySource source(text);
        std::wistream in(&source);
        zet::ZetTokenizer tokenizer(in, L"{}=$", L"#", L"", L"", L" \t\r\n");
        zet::ZetString token;
        for (tokens = 0; tokenizer.nextToken(token); ++tokens) {
            benchmark::DoNotOptimize(token.data());
        }
    }
    setTokens(state, tokens);
}
BENCHMARK(takeTokens)->Name("take tokens/zet");

void takeTokensWithBlockComments(benchmark::State& state)
{
    std::wstring text = numbers();
    long tokens = 0;
    for (auto _ : state) {
        ZetMemorySource source(text);
        std::wistream in(&source);
        zet::ZetTokenizer tokenizer(in, L"{}=$", L"//", L"/*", L"*/", L" \t\r\n");
        zet::ZetString token;
        for (tokens = 0; tokenizer.nextToken(token); ++tokens) {
            benchmark::DoNotOptimize(token.data());
        }
    }
    setTokens(state, tokens);
}
BENCHMARK(takeTokensWithBlockComments)->Name("take tokens, block comments/zet");

/// The words alone, with what a stream buffer costs and nothing else.
void takeWordsByHand(benchmark::State& state)
{
    std::wstring text = numbers();
    long tokens = 0;
    for (auto _ : state) {
        ZetMemorySource in(text);
        std::wstring token;
        const auto isBlank = [](wchar_t c) { return c == L' ' || c == L'\n' || c == L'\t' || c == L'\r'; };
        for (tokens = 0;; ++tokens) {
            token.clear();
            std::wint_t c = in.sgetc();
            for (; c != WEOF && isBlank(static_cast<wchar_t>(c)); c = in.snextc()) {
            }
            for (; c != WEOF && !isBlank(static_cast<wchar_t>(c)); c = in.snextc()) {
                token.push_back(static_cast<wchar_t>(c));
            }
            if (token.empty()) {
                break;
            }
            benchmark::DoNotOptimize(token.data());
        }
    }
    setTokens(state, tokens);
}
BENCHMARK(takeWordsByHand)->Name("take tokens/hand");

/// The words by the stream's own reader.
void takeWordsByStream(benchmark::State& state)
{
    std::wstring text = numbers();
    long tokens = 0;
    for (auto _ : state) {
        ZetMemorySource source(text);
        std::wistream in(&source);
        std::wstring token;
        for (tokens = 0; in >> token; ++tokens) {
            benchmark::DoNotOptimize(token.data());
        }
    }
    setTokens(state, tokens);
}
BENCHMARK(takeWordsByStream)->Name("take tokens/stream");

}  // namespace
