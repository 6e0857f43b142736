// The rows that muParserX has, beside ours in ZetEqnParserBench.cpp.

#include <cstddef>
#include <iterator>
#include <vector>

#include <benchmark/benchmark.h>
#include <mpParser.h>

#include "support/ZetEqnTexts"

namespace {

void parseManyCalls(benchmark::State& state)
{
    std::vector<mup::Value> values(std::size(bench::kManyCallsNames), mup::Value(0.5));
    mup::ParserX parser;
    for (std::size_t i = 0; i < values.size(); ++i) {
        parser.DefineVar(bench::kManyCallsNames[i], mup::Variable(&values[i]));
    }
    for (auto _ : state) {
        parser.SetExpr(bench::kManyCalls);
        benchmark::DoNotOptimize(parser.Eval().GetFloat());
    }
}
BENCHMARK(parseManyCalls)->Name("parse an equation of 18 calls/muParserX");

void evaluateFourVariables(benchmark::State& state)
{
    mup::Value values[4];
    mup::ParserX parser;
    const char* const names[] = {"a", "b", "c", "d"};
    for (int i = 0; i < 4; ++i) {
        parser.DefineVar(names[i], mup::Variable(&values[i]));
    }
    parser.SetExpr("a*b+c/d-(a-d)*(b+c)");
    double value = 1.0;
    for (auto _ : state) {
        for (mup::Value& variable : values) {
            variable = value;
            value += 0.25;
        }
        benchmark::DoNotOptimize(parser.Eval().GetFloat());
    }
}
BENCHMARK(evaluateFourVariables)->Name("set 4 variables, evaluate/muParserX");

}  // namespace
