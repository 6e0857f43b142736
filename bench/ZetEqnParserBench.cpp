#include <iterator>

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <zet/ZetEqnParser>

#include "support/ZetEqnTexts"

namespace {

using bench::kManyCalls;
using bench::kManyCallsNames;

constexpr const wchar_t* kFourVariables = L"a*b+c/d-(a-d)*(b+c)";
constexpr const wchar_t* kMedium =
    L"clip((nir - red) / (nir + red + 0.5) * 1.5, lo, hi) + sqrt(x^2 + y^2) * (gain > 1 ? gain : 1e-3); "
    L"lo = -1.0; hi = 0x10; gain = 2.5*x";

// What muParser reads: no definitions, and no hexadecimal numbers.
constexpr const char* kMediumForMuParser =
    "max(min((nir - red) / (nir + red + 0.5) * 1.5, 16), -1.0) + sqrt(x^2 + y^2) * (2.5*x > 1 ? 2.5*x : 1e-3)";

void parseMedium(benchmark::State& state)
{
    zet::ZetEqnParser parser;
    const zet::ZetString text = kMedium;
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(text));
    }
}
BENCHMARK(parseMedium)->Name("parse a medium equation/zet");

// muParser compiles at the first evaluation.
void parseMediumWithMuParser(benchmark::State& state)
{
    double values[5] = {4.0, 3.0, 2.0, 1.0, 0.5};
    mu::Parser parser;
    const char* const names[] = {"nir", "red", "x", "y"};
    for (int i = 0; i < 4; ++i) {
        parser.DefineVar(names[i], &values[i]);
    }
    for (auto _ : state) {
        parser.SetExpr(kMediumForMuParser);
        benchmark::DoNotOptimize(parser.Eval());
    }
}
BENCHMARK(parseMediumWithMuParser)->Name("parse a medium equation/muParser");

void parseManyCalls(benchmark::State& state)
{
    zet::ZetEqnParser parser;
    const zet::ZetString text(kManyCalls);
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(text));
    }
}
BENCHMARK(parseManyCalls)->Name("parse an equation of 18 calls/zet");

void parseManyCallsWithMuParser(benchmark::State& state)
{
    double values[std::size(kManyCallsNames)] = {1.0, 2.0, 3.0, 0.5, 0.25, 0.125, 0.75};
    mu::Parser parser;
    for (std::size_t i = 0; i < std::size(values); ++i) {
        parser.DefineVar(kManyCallsNames[i], &values[i]);
    }
    for (auto _ : state) {
        parser.SetExpr(kManyCalls);
        benchmark::DoNotOptimize(parser.Eval());
    }
}
BENCHMARK(parseManyCallsWithMuParser)->Name("parse an equation of 18 calls/muParser");

// Four plain variables set, and seven calls evaluated.
void evaluateFourVariables(benchmark::State& state)
{
    zet::ZetEqnParser parser;
    parser.parse(kFourVariables);
    const zet::ZetString names[] = {L"a", L"b", L"c", L"d"};
    double value = 1.0;
    for (auto _ : state) {
        for (const zet::ZetString& name : names) {
            parser.setValue(name, value);
            value += 0.25;
        }
        benchmark::DoNotOptimize(parser.evaluate().value<double>());
    }
}
BENCHMARK(evaluateFourVariables)->Name("set 4 variables, evaluate/zet");

void evaluateFourVariablesWithMuParser(benchmark::State& state)
{
    double values[4] = {};
    mu::Parser parser;
    const char* const names[] = {"a", "b", "c", "d"};
    for (int i = 0; i < 4; ++i) {
        parser.DefineVar(names[i], &values[i]);
    }
    parser.SetExpr("a*b+c/d-(a-d)*(b+c)");
    double value = 1.0;
    for (auto _ : state) {
        for (double& variable : values) {
            variable = value;
            value += 0.25;
        }
        benchmark::DoNotOptimize(parser.Eval());
    }
}
BENCHMARK(evaluateFourVariablesWithMuParser)->Name("set 4 variables, evaluate/muParser");

[[gnu::noinline]] double fourVariables(double a, double b, double c, double d)
{
    return a * b + c / d - (a - d) * (b + c);
}

void evaluateFourVariablesByHand(benchmark::State& state)
{
    double values[4] = {};
    double value = 1.0;
    for (auto _ : state) {
        for (double& variable : values) {
            variable = value;
            value += 0.25;
        }
        benchmark::DoNotOptimize(fourVariables(values[0], values[1], values[2], values[3]));
    }
}
BENCHMARK(evaluateFourVariablesByHand)->Name("set 4 variables, evaluate/hand");

}  // namespace
