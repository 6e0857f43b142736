// Units and scalars: parsing, printing, converting and adding, beside the same sum of plain doubles.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include <zet/ZetScalar>
#include <zet/ZetUnits>

#include "support/ZetUnitTexts"

namespace {

zet::ZetUnits unitsOf(const wchar_t* text)
{
    zet::ZetUnits units;
    units.fromString(text);
    return units;
}

void parseKnownUnits(benchmark::State& state)
{
    const zet::ZetString text(bench::kKnownUnits);
    zet::ZetUnits units;
    for (auto _ : state) {
        benchmark::DoNotOptimize(units.fromString(text));
    }
}
BENCHMARK(parseKnownUnits)->Name("parse known units/zet");

/// Every text is new to the process; the units in it are not.
void parseNewUnits(benchmark::State& state)
{
    const std::vector<zet::ZetString> texts = bench::newUnitTexts<zet::ZetString>(bench::kNewUnitTexts);
    std::size_t i = 0;
    zet::ZetUnits units;
    for (auto _ : state) {
        benchmark::DoNotOptimize(units.fromString(texts[i++]));
    }
}
BENCHMARK(parseNewUnits)->Name("parse new units/zet")->Iterations(bench::kNewUnitTexts);

void printUnits(benchmark::State& state)
{
    const zet::ZetUnits units = unitsOf(L"kg m^2 / s^2");
    for (auto _ : state) {
        benchmark::DoNotOptimize(zet::ZetString(units));
    }
}
BENCHMARK(printUnits)->Name("print units/zet");

void compareUnits(benchmark::State& state)
{
    zet::ZetUnits a = unitsOf(L"J");
    zet::ZetUnits b = unitsOf(L"N m");
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(a == b);
    }
}
BENCHMARK(compareUnits)->Name("compare units/zet");

void multiplyUnits(benchmark::State& state)
{
    const zet::ZetUnits a = unitsOf(L"km/hr");
    const zet::ZetUnits b = unitsOf(L"s");
    zet::ZetUnits product;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zet::ZetUnits::multFactor(a, b, &product));
    }
}
BENCHMARK(multiplyUnits)->Name("multiply units/zet");

void addPlainDoubles(benchmark::State& state)
{
    double a = 1.0;
    double b = 1e-9;
    for (auto _ : state) {
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(a += b);
    }
}
BENCHMARK(addPlainDoubles)->Name("add scalars, same units/double");

void addScalars(benchmark::State& state, const wchar_t* own, const wchar_t* other)
{
    zet::ZetScalar a(1.0, unitsOf(own));
    const zet::ZetScalar b(1e-9, unitsOf(other));
    for (auto _ : state) {
        benchmark::DoNotOptimize(a += b);
    }
}
BENCHMARK_CAPTURE(addScalars, same_units, L"m", L"m")->Name("add scalars, same units/zet");
BENCHMARK_CAPTURE(addScalars, other_units, L"m", L"km")->Name("add scalars, other units/zet");

void multiplyScalars(benchmark::State& state, const wchar_t* own, const wchar_t* other)
{
    const zet::ZetScalar a(2.0, unitsOf(own));
    const zet::ZetScalar b(3.0, unitsOf(other));
    for (auto _ : state) {
        benchmark::DoNotOptimize(a * b);
    }
}
BENCHMARK_CAPTURE(multiplyScalars, no_units, L"", L"")->Name("multiply scalars, no units/zet");
BENCHMARK_CAPTURE(multiplyScalars, units, L"m", L"s")->Name("multiply scalars, units/zet");

void convertScalar(benchmark::State& state)
{
    const zet::ZetScalar speed(36.0, unitsOf(L"km/hr"));
    const zet::ZetUnits target = unitsOf(L"m/s");
    for (auto _ : state) {
        benchmark::DoNotOptimize(speed.convertUnits(target));
    }
}
BENCHMARK(convertScalar)->Name("convert a scalar/zet");

}  // namespace
