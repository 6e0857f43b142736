// Tiles beside loops by hand, array expressions of Eigen, and the bulk mode of muParser: 65,536
// elements, unit stride, our results in new tiles.

#include <algorithm>
#include <complex>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <zet/ZetByteOrder>
#include <zet/ZetEqnTile>

#include "support/ZetEigenLoops"
#include "support/ZetHandLoops"

namespace bench {
namespace {

using zet::ZetDataType;
using zet::ZetEqnTile;

constexpr unsigned long kSize = 65536;

/// A tile of numbers from 1 to 250.
template <class T>
ZetEqnTile randomTile(ZetDataType::Type type, unsigned int seed)
{
    std::mt19937 random(seed);
    ZetEqnTile tile;
    tile.initialize(type, kSize);
    for (unsigned long i = 0; i < kSize; ++i) {
        tile.elements<T>()[i] = static_cast<T>(static_cast<int>(1 + random() % 250));
    }
    return tile;
}

template <>
ZetEqnTile randomTile<std::complex<double>>(ZetDataType::Type type, unsigned int seed)
{
    std::mt19937 random(seed);
    ZetEqnTile tile;
    tile.initialize(type, kSize);
    for (unsigned long i = 0; i < kSize; ++i) {
        const double re = 1 + static_cast<double>(random() % 250);
        tile.elements<std::complex<double>>()[i] = {re, static_cast<double>(random() % 250)};
    }
    return tile;
}

/// Measures \p work, which gives something to keep.
template <class Work>
void row(const std::string& name, const Work& work)
{
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(work());
            benchmark::ClobberMemory();
        }
    });
}

/// The same for a loop that writes into memory of its own, made once.
template <class Work>
void rowInto(const std::string& name, const Work& work)
{
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        std::vector<double> out(2 * kSize);
        for (auto _ : state) {
            work(out.data());
            benchmark::ClobberMemory();
        }
    });
}

template <class T>
void arithmeticRows(const std::string& type, ZetDataType::Type number, HandLoops::Type hand)
{
    const ZetEqnTile a = randomTile<T>(number, 1);
    const ZetEqnTile b = randomTile<T>(number, 2);
    const T* x = a.elements<T>();
    const T* y = b.elements<T>();
    const auto pair = [&](const std::string& name, HandLoops::Combine loop, EigenRow eigen, auto ours) {
        row(name + type + "/zet", [a, b, ours] { return ours(a, b).size(); });
        rowInto(name + type + "/hand", [=](double* out) { loop(x, y, out, kSize); });
        rowInto(name + type + "/Eigen", [=](double* out) { eigenRow<T>(eigen, x, y, out, kSize); });
    };
    const auto at = static_cast<std::size_t>(hand);
    pair("add ", handLoops().add[at], EigenRow::add, [](const auto& p, const auto& q) { return p + q; });
    pair("multiply ", handLoops().multiply[at], EigenRow::multiply, [](const auto& p, const auto& q) { return p * q; });
    pair("divide ", handLoops().divide[at], EigenRow::divide, [](const auto& p, const auto& q) { return p / q; });
    row("times number " + type + "/zet", [a] { return (a * 1.5).size(); });
    rowInto("times number " + type + "/hand", [=](double* out) { handLoops().multiplyNumber[at](x, 1.5, out, kSize); });
    rowInto("times number " + type + "/Eigen",
            [=](double* out) { eigenRow<T>(EigenRow::multiplyNumber, x, y, out, kSize); });
}

template <class T>
void clipRows(const std::string& type, ZetDataType::Type number, HandLoops::Type hand)
{
    const ZetEqnTile a = randomTile<T>(number, 1);
    const T* x = a.elements<T>();
    const auto loop = handLoops().clip[static_cast<std::size_t>(hand)];
    row("clip " + type + "/zet", [a] { return a.clip(10.0, 200.0).size(); });
    rowInto("clip " + type + "/hand", [=](double* out) { loop(x, 10.0, 200.0, out, kSize); });
    rowInto("clip " + type + "/Eigen", [=](double* out) { eigenRow<T>(EigenRow::clip, x, x, out, kSize); });
}

void roundClipRows()
{
    const ZetEqnTile a = randomTile<double>(ZetDataType::Double, 1) * 1.1 - 20.0;
    const double* x = a.elements<double>();
    row("roundclip Double to U8/zet", [a] { return a.roundclip(ZetDataType::U8, 0.0, 255.0).size(); });
    rowInto("roundclip Double to U8/hand", [=](double* out) { handLoops().toU8(x, 0.0, 255.0, out, kSize); });
    row("roundclip Double to U16/zet", [a] { return a.roundclip(ZetDataType::U16, 0.0, 255.0).size(); });
    rowInto("roundclip Double to U16/hand", [=](double* out) { handLoops().toU16(x, 0.0, 255.0, out, kSize); });
}

template <class T>
void reductionRows(const std::string& type, ZetDataType::Type number, HandLoops::Type hand)
{
    const ZetEqnTile a = randomTile<T>(number, 1);
    const T* x = a.elements<T>();
    const auto at = static_cast<std::size_t>(hand);
    const HandLoops::Reduce sum = handLoops().sum[at];
    const HandLoops::Reduce min = handLoops().min[at];
    const HandLoops::Reduce max = handLoops().max[at];
    row("sum " + type + "/zet", [a] { return a.sum(); });
    row("sum " + type + "/hand", [=] { return sum(x, kSize); });
    row("sum " + type + "/Eigen", [=] { return eigenSum<T>(x, kSize); });
    row("min " + type + "/zet", [a] { return a.min(); });
    row("min " + type + "/hand", [=] { return min(x, kSize); });
    row("min " + type + "/Eigen", [=] { return eigenMin<T>(x, kSize); });
    row("max " + type + "/zet", [a] { return a.max(); });
    row("max " + type + "/hand", [=] { return max(x, kSize); });
    row("max " + type + "/Eigen", [=] { return eigenMax<T>(x, kSize); });
    row("median " + type + "/zet", [a] { return a.median(); });
    row("median " + type + "/nth_element", [=] {
        std::vector<T> scratch(x, x + kSize);
        const auto middle = scratch.begin() + (kSize - 1) / 2;
        std::nth_element(scratch.begin(), middle, scratch.end());
        return *middle;
    });
    row("median " + type + "/sort", [=] {
        std::vector<T> scratch(x, x + kSize);
        std::sort(scratch.begin(), scratch.end());
        return scratch[(kSize - 1) / 2];
    });
}

void swapRows()
{
    const struct
    {
        unsigned long width;
        HandLoops::Swap loop;
    } rows[] = {{2, handLoops().swap2}, {4, handLoops().swap4}, {8, handLoops().swap8}};
    for (const auto& [width, loop] : rows) {
        const std::string name = "swap bytes " + std::to_string(width);
        rowInto(name + "/zet", [width = width](double* data) { zet::swapBytes(data, kSize, width, false); });
        rowInto(name + "/hand", [loop = loop](double* data) { loop(data, kSize); });
    }
}

/// Whole expressions over Double tiles: node by node in ours, element by element in muParser.
void expressionRows()
{
    const ZetEqnTile nir = randomTile<double>(ZetDataType::Double, 1);
    const ZetEqnTile red = randomTile<double>(ZetDataType::Double, 2);
    const double* x = nir.elements<double>();
    const double* y = red.elements<double>();
    const auto bulk = [x, y](const char* text) {
        const auto parser = std::make_shared<mu::Parser>();
        parser->DefineVar("x", const_cast<double*>(x));
        parser->DefineVar("y", const_cast<double*>(y));
        parser->SetExpr(text);
        return [parser](double* out) { parser->Eval(out, static_cast<int>(kSize)); };
    };
    rowInto("add Double/muParser", bulk("x+y"));
    rowInto("multiply Double/muParser", bulk("x*y"));
    rowInto("times number Double/muParser", bulk("x*1.5"));
    row("(x-y)/(x+y) Double/zet", [nir, red] { return ((nir - red) / (nir + red)).size(); });
    rowInto("(x-y)/(x+y) Double/muParser", bulk("(x-y)/(x+y)"));
    rowInto("(x-y)/(x+y) Double/hand", [x, y](double* out) {
        for (unsigned long i = 0; i < kSize; ++i) {
            out[i] = (x[i] - y[i]) / (x[i] + y[i]);
        }
    });
    row("sin Double/zet", [nir] { return nir.sin().size(); });
    rowInto("sin Double/muParser", bulk("sin(x)"));
}

[[maybe_unused]] const bool s_registered = [] {
    arithmeticRows<unsigned char>("U8", ZetDataType::U8, HandLoops::U8);
    arithmeticRows<short>("I16", ZetDataType::I16, HandLoops::I16);
    arithmeticRows<unsigned short>("U16", ZetDataType::U16, HandLoops::U16);
    arithmeticRows<float>("Float", ZetDataType::Float, HandLoops::Float);
    arithmeticRows<double>("Double", ZetDataType::Double, HandLoops::Double);
    arithmeticRows<std::complex<double>>("ComplexDouble", ZetDataType::ComplexDouble, HandLoops::ComplexDouble);
    clipRows<unsigned char>("U8", ZetDataType::U8, HandLoops::U8);
    clipRows<unsigned short>("U16", ZetDataType::U16, HandLoops::U16);
    clipRows<float>("Float", ZetDataType::Float, HandLoops::Float);
    clipRows<double>("Double", ZetDataType::Double, HandLoops::Double);
    roundClipRows();
    reductionRows<unsigned char>("U8", ZetDataType::U8, HandLoops::U8);
    reductionRows<unsigned short>("U16", ZetDataType::U16, HandLoops::U16);
    reductionRows<float>("Float", ZetDataType::Float, HandLoops::Float);
    reductionRows<double>("Double", ZetDataType::Double, HandLoops::Double);
    swapRows();
    expressionRows();
    return true;
}();

}  // namespace
}  // namespace bench
