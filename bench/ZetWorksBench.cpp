// Whole equations over tiles: parsed once, then one variable set and the equation evaluated into a new
// tile each time; beside one fused loop by hand and muParser's bulk mode. numpy and numexpr do the same
// in bench/peers.py, and scripts/bench.sh puts all of them into one table.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <muParser.h>

#include "support/ZetWorks"

namespace bench {
namespace {

using zet::ZetDataType;
using zet::ZetEqnTile;

/// The loop by hand, which writes into memory that exists already.
class HandRun
{
public:
    HandRun(const Work& work, unsigned long size)
        : m_work(work), m_size(size), m_operands(operandTiles(work, size).size()), m_out(2 * size)
    {
        for (std::size_t i = 0; i < m_operands.size(); ++i) {
            m_operands[i] = operandTiles(work, size)[i].buffer()->data();
        }
    }

    double operator()()
    {
        m_work.hand(m_operands.data(), m_out.data(), m_size);
        return m_out[0];
    }

    double check() { return magnitude(m_out.data(), m_work.result, m_work.reduction != nullptr ? 1 : m_size); }

private:
    const Work& m_work;
    unsigned long m_size;
    std::vector<const void*> m_operands;
    std::vector<double> m_out;
};

/// muParser's bulk mode: integers are turned into doubles first, since it computes on those alone, and
/// each evaluation writes into a new array.
class MuParserRun
{
public:
    MuParserRun(const Work& work, unsigned long size) : m_work(work), m_size(size), m_tiles(operandTiles(work, size))
    {
        constexpr const char* kNames[] = {"x", "y"};
        for (std::size_t i = 0; i < m_tiles.size(); ++i) {
            const bool ready = m_tiles[i].dataType().type() == ZetDataType::Double;
            m_doubles.emplace_back(ready ? 0 : size);
            m_parser.DefineVar(kNames[i], ready ? m_tiles[i].elements<double>() : m_doubles.back().data());
        }
        m_parser.SetExpr(work.muParser);
    }

    double operator()()
    {
        for (std::size_t i = 0; i < m_tiles.size(); ++i) {
            if (m_tiles[i].dataType().type() == ZetDataType::U8) {
                convert<std::uint8_t>(i);
            } else if (m_tiles[i].dataType().type() == ZetDataType::U16) {
                convert<std::uint16_t>(i);
            }
        }
        m_out.reset(new double[m_size]);
        m_parser.Eval(m_out.get(), static_cast<int>(m_size));
        return m_out[0];
    }

    double check() { return magnitude(m_out.get(), m_work.result, m_size); }

private:
    template <class T>
    void convert(std::size_t i)
    {
        const T* from = m_tiles[i].elements<T>();
        m_doubles[i].assign(from, from + m_size);
    }

    const Work& m_work;
    unsigned long m_size;
    const std::vector<ZetEqnTile>& m_tiles;
    std::vector<std::vector<double>> m_doubles;
    mu::Parser m_parser;
    std::unique_ptr<double[]> m_out;
};

/// The operation of a tile that a reduction calls, without the equation around it.
class CallRun
{
public:
    CallRun(const Work& work, unsigned long size)
        : m_tile(operandTiles(work, size).front()), m_reduction(work.reduction)
    {}

    double operator()() { return (m_tile.*m_reduction)(); }
    double check() { return (*this)(); }

private:
    ZetEqnTile m_tile;
    double (ZetEqnTile::*m_reduction)() const;
};

/// Measures a Run, made where it is measured; its memory has been touched before.
template <class Run>
void row(const Work& work, unsigned long size, const char* who)
{
    const std::string name = std::string(work.name) + ", " + std::to_string(size) + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [&work, size](benchmark::State& state) {
        Run run(work, size);
        run();
        run();
        for (auto _ : state) {
            benchmark::DoNotOptimize(run());
            benchmark::ClobberMemory();
        }
        state.counters["check"] = run.check();
    });
}

[[maybe_unused]] const bool s_registered = [] {
    for (const Work& work : works()) {
        for (const unsigned long size : work.sizes) {
            row<WorkEvaluation>(work, size, "zet");
            row<HandRun>(work, size, "hand");
            if (work.muParser != nullptr) {
                row<MuParserRun>(work, size, "muParser");
            }
            if (work.reduction != nullptr) {
                row<CallRun>(work, size, "call");
            }
        }
    }
    return true;
}();

}  // namespace
}  // namespace bench
