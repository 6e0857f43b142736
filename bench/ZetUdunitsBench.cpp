// The rows that UDUNITS-2 has, beside ours in ZetUnitsBench.cpp.

#include <cstddef>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <udunits2.h>

#include "support/ZetUnitTexts"

namespace {

/// The system of units that comes with the library.
ut_system* unitSystem()
{
    ut_set_error_message_handler(ut_ignore);
    static ut_system* const system = ut_read_xml(nullptr);
    return system;
}

/// Parses \p text. Returns whether it is one of units.
bool parse(const char* text)
{
    ut_unit* const unit = ut_parse(unitSystem(), text, UT_ASCII);
    ut_free(unit);
    return unit != nullptr;
}

void parseKnownUnits(benchmark::State& state)
{
    if (!parse(bench::kKnownUnits)) {
        state.SkipWithError("not units");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(parse(bench::kKnownUnits));
    }
}
BENCHMARK(parseKnownUnits)->Name("parse known units/UDUNITS-2");

void parseNewUnits(benchmark::State& state)
{
    const std::vector<std::string> texts = bench::newUnitTexts<std::string>(bench::kNewUnitTexts);
    std::size_t i = 0;
    bool good = true;
    for (auto _ : state) {
        good = parse(texts[i++].c_str()) && good;
    }
    if (!good) {
        state.SkipWithError("not units");
    }
}
BENCHMARK(parseNewUnits)->Name("parse new units/UDUNITS-2")->Iterations(bench::kNewUnitTexts);

}  // namespace
