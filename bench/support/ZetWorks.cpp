#include "support/ZetWorks"

#include <cmath>
#include <complex>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <utility>

#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

namespace bench {

using zet::ZetDataType;
using zet::ZetEqnTile;

const std::vector<Work>& works()
{
    constexpr auto kU8 = ZetDataType::U8;
    constexpr auto kU16 = ZetDataType::U16;
    constexpr auto kFloat = ZetDataType::Float;
    constexpr auto kDouble = ZetDataType::Double;
    constexpr auto kComplex = ZetDataType::ComplexDouble;
    const std::vector<Operand> bytes = {{L"a", kU8, 1, 250}, {L"b", kU8, 1, 250}};
    const std::vector<Operand> bands = {{L"nir", kU16, 1, 65535}, {L"red", kU16, 1, 65535}};
    const std::vector<Operand> plane = {{L"x", kDouble, -2, 2}, {L"y", kDouble, -2, 2}};
    const std::vector<Operand> line = {plane.front()};
    const std::vector<Operand> counts = {{L"x", kU16, 1, 65535}};
    const std::vector<Operand> floats = {{L"x", kFloat, 1, 2000}};
    const std::vector<Operand> waves = {{L"a", kComplex, -2, 2}, {L"b", kComplex, -2, 2}, {L"c", kComplex, -2, 2}};
    const std::vector<unsigned long> allSizes = {4096, 65536, 1048576};
    const std::vector<unsigned long> fromOne = {1, 4096, 65536, 1048576};
    const std::vector<unsigned long> oneSize = {65536};
    static const std::vector<Work> works = {
        {"a+b, U8", L"a+b", "x+y", handWorks.sumOfBytes, kDouble, bytes, fromOne},
        {"(nir-red)/(nir+red), U16", L"(nir-red)/(nir+red)", "(x-y)/(x+y)", handWorks.index, kDouble, bands, allSizes},
        {"roundclip of the index to U8", L"roundclip((nir-red)/(nir+red)*127.5+127.5, t, 0, 255)", nullptr,
         handWorks.scaledIndex, kU8, bands, allSizes},
        {"3*x*x*x-2*x*x+x-5, Double", L"3*x*x*x-2*x*x+x-5", "3*x*x*x-2*x*x+x-5", handWorks.polynomial, kDouble, line,
         allSizes},
        {"sin(x)*cos(y)+exp(-x*x), Double", L"sin(x)*cos(y)+exp(-x*x)", "sin(x)*cos(y)+exp(-x*x)",
         handWorks.transcendental, kDouble, plane, oneSize},
        {"a*b+c, ComplexDouble", L"a*b+c", nullptr, handWorks.complexMultiplyAdd, kComplex, waves, allSizes},
        {"sum(x), U16", L"sum(x)", nullptr, handWorks.sumU16, kDouble, counts, oneSize, &ZetEqnTile::sum},
        {"sum(x), Float", L"sum(x)", nullptr, handWorks.sumFloat, kDouble, floats, oneSize, &ZetEqnTile::sum},
        {"min(x), U16", L"min(x)", nullptr, handWorks.minU16, kDouble, counts, oneSize, &ZetEqnTile::min},
        {"min(x), Float", L"min(x)", nullptr, handWorks.minFloat, kDouble, floats, oneSize, &ZetEqnTile::min},
        {"max(x), U16", L"max(x)", nullptr, handWorks.maxU16, kDouble, counts, oneSize, &ZetEqnTile::max},
        {"max(x), Float", L"max(x)", nullptr, handWorks.maxFloat, kDouble, floats, oneSize, &ZetEqnTile::max},
        {"median(x), U16", L"median(x)", nullptr, handWorks.medianU16, kDouble, counts, oneSize, &ZetEqnTile::median},
        {"median(x), Float", L"median(x)", nullptr, handWorks.medianFloat, kDouble, floats, oneSize,
         &ZetEqnTile::median},
        {"clip(x,-1,1), Double", L"clip(x,-1,1)", "max(-1,min(1,x))", handWorks.clipDouble, kDouble, line, allSizes},
        {"clip(x,-1,1), U16", L"clip(x,-1,1)", "max(-1,min(1,x))", handWorks.clipU16, kDouble, counts, allSizes},
    };
    return works;
}

namespace {

/// Part \p i of the whole numbers of 32 bits, well mixed. bench/peers.py makes the same ones.
std::uint32_t mixed(std::uint32_t i, std::uint32_t seed)
{
    std::uint32_t k = i * 0x9e3779b9u + seed * 0x85ebca6bu;
    k = (k ^ (k >> 16)) * 0x21f0aaadu;
    k = (k ^ (k >> 15)) * 0x735a2d97u;
    return k ^ (k >> 15);
}

/// Fills \p values parts; those of integers are cut to whole numbers.
template <class T>
void fill(T* values, unsigned long count, const Operand& operand, std::uint32_t seed)
{
    for (unsigned long i = 0; i < count; ++i) {
        const double share = mixed(static_cast<std::uint32_t>(i), seed) * 0x1p-32;
        values[i] = static_cast<T>(operand.lo + share * (operand.hi - operand.lo));
    }
}

ZetEqnTile operandTile(const Operand& operand, unsigned long size, std::uint32_t seed)
{
    ZetEqnTile tile;
    tile.initialize(operand.type, size);
    switch (operand.type) {
        case ZetDataType::U8:
            fill(tile.elements<std::uint8_t>(), size, operand, seed);
            break;
        case ZetDataType::U16:
            fill(tile.elements<std::uint16_t>(), size, operand, seed);
            break;
        case ZetDataType::Float:
            fill(tile.elements<float>(), size, operand, seed);
            break;
        case ZetDataType::Double:
            fill(tile.elements<double>(), size, operand, seed);
            break;
        default:
            fill(tile.elements<double>(), 2 * size, operand, seed);
            break;
    }
    return tile;
}

template <class T>
double magnitudeOf(const void* elements, unsigned long count)
{
    double total = 0.0;
    for (unsigned long i = 0; i < count; ++i) {
        total += std::abs(static_cast<double>(static_cast<const T*>(elements)[i]));
    }
    return total;
}

}  // namespace

const std::vector<ZetEqnTile>& operandTiles(const Work& work, unsigned long size)
{
    static std::map<std::pair<const Work*, unsigned long>, std::vector<ZetEqnTile>> tiles;
    std::vector<ZetEqnTile>& result = tiles[{&work, size}];
    for (std::size_t i = result.size(); i < work.operands.size(); ++i) {
        result.push_back(operandTile(work.operands[i], size, static_cast<std::uint32_t>(i + 1)));
    }
    return result;
}

double magnitude(const void* elements, ZetDataType::Type type, unsigned long size)
{
    switch (type) {
        case ZetDataType::U8:
            return magnitudeOf<std::uint8_t>(elements, size);
        case ZetDataType::ComplexDouble:
            return magnitudeOf<double>(elements, 2 * size);
        default:
            return magnitudeOf<double>(elements, size);
    }
}

WorkEvaluation::WorkEvaluation(const Work& work, unsigned long size)
    : m_work(work), m_name(work.operands.front().name), m_tile(operandTiles(work, size).front())
{
    zet::ZetTextMsg problem(L"", zet::ZetTextMsg::Error);
    if (!m_parser.parse(work.equation, &problem)) {
        throw std::runtime_error(work.name);
    }
    for (std::size_t i = 0; i < work.operands.size(); ++i) {
        m_parser.setValue(work.operands[i].name, operandTiles(work, size)[i]);
    }
    m_parser.setValue(L"t", ZetDataType(ZetDataType::U8));
}

double WorkEvaluation::operator()()
{
    m_parser.setValue(m_name, m_tile);
    const zet::ZetVariant& result = m_parser.evaluate();
    return m_work.reduction != nullptr ? result.value<double>()
                                       : static_cast<double>(result.value<ZetEqnTile>().size());
}

double WorkEvaluation::check()
{
    const zet::ZetVariant& result = m_parser.evaluate();
    if (m_work.reduction != nullptr) {
        return std::abs(result.value<double>());
    }
    const ZetEqnTile tile = result.value<ZetEqnTile>();
    return tile.dataType().type() == m_work.result ? magnitude(tile.buffer()->data(), m_work.result, tile.size()) : 0.0;
}

}  // namespace bench
