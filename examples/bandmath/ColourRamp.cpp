#include "ColourRamp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace bandmath {

namespace {

struct Stop
{
    double position;
    unsigned rgb;
};

struct RampRow
{
    const char* name;
    std::vector<Stop> stops;
};

const std::vector<RampRow>& ramps()
{
    static const std::vector<RampRow> rows = {
        {"grey", {{0, 0x000000}, {1, 0xffffff}}},
        // snow, sand, steppe, meadow, wood, rain forest
        {"vegetation",
         {{0, 0xfbfaf6},
          {0.16, 0xe6d3a8},
          {0.32, 0xc9bf6c},
          {0.5, 0x94ab49},
          {0.7, 0x4f8434},
          {0.86, 0x22602b},
          {1, 0x0b3a1f}}},
        // lightness rises evenly, also for eyes that do not tell red from green
        {"dusk", {{0, 0x12103c}, {0.25, 0x264f80}, {0.5, 0x2f8f8c}, {0.75, 0x8cc96b}, {1, 0xfdf07a}}},
    };
    return rows;
}

const RampRow* find(const std::string& name)
{
    for (const RampRow& row : ramps()) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

using Triple = std::array<double, 3>;

Triple multiply(const double (&matrix)[3][3], const Triple& v)
{
    Triple result{};
    for (int i = 0; i < 3; ++i) {
        result[static_cast<std::size_t>(i)] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    }
    return result;
}

// The Oklab colour space: linear light to cone responses, and their cube roots to lightness and
// two colour axes, each with its way back.
constexpr double kToCones[3][3] = {{0.4122214708, 0.5363325363, 0.0514459929},
                                   {0.2119034982, 0.6806995451, 0.1073969566},
                                   {0.0883024619, 0.2817188376, 0.6299787005}};
constexpr double kFromCones[3][3] = {{4.0767416621, -3.3077115913, 0.2309699292},
                                     {-1.2684380046, 2.6097574011, -0.3413193965},
                                     {-0.0041960863, -0.7034186147, 1.7076147010}};
constexpr double kToLab[3][3] = {{0.2104542553, 0.7936177850, -0.0040720468},
                                 {1.9779984951, -2.4285922050, 0.4505937099},
                                 {0.0259040371, 0.7827717662, -0.8086757660}};
constexpr double kFromLab[3][3] = {
    {1, 0.3963377774, 0.2158037573}, {1, -0.1055613458, -0.0638541728}, {1, -0.0894841775, -1.2914855480}};

double toLinear(unsigned byte)
{
    const double v = byte / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

unsigned char fromLinear(double v)
{
    const double inside = std::clamp(v, 0.0, 1.0);
    const double screen = inside <= 0.0031308 ? 12.92 * inside : 1.055 * std::pow(inside, 1 / 2.4) - 0.055;
    return static_cast<unsigned char>(screen * 255 + 0.5);
}

Triple toLab(unsigned rgb)
{
    Triple cones = multiply(kToCones, {toLinear(rgb >> 16 & 255), toLinear(rgb >> 8 & 255), toLinear(rgb & 255)});
    for (double& v : cones) {
        v = std::cbrt(v);
    }
    return multiply(kToLab, cones);
}

Colour fromLab(const Triple& lab)
{
    Triple cones = multiply(kFromLab, lab);
    for (double& v : cones) {
        v = v * v * v;
    }
    const Triple linear = multiply(kFromCones, cones);
    return {fromLinear(linear[0]), fromLinear(linear[1]), fromLinear(linear[2])};
}

Colour between(const std::vector<Stop>& stops, double position)
{
    std::size_t next = 1;
    while (next + 1 < stops.size() && stops[next].position < position) {
        ++next;
    }
    const Stop& a = stops[next - 1];
    const Stop& b = stops[next];
    const double t = (position - a.position) / (b.position - a.position);
    const Triple from = toLab(a.rgb);
    const Triple to = toLab(b.rgb);
    return fromLab({from[0] + t * (to[0] - from[0]), from[1] + t * (to[1] - from[1]), from[2] + t * (to[2] - from[2])});
}

}  // namespace

ColourRamp::ColourRamp(const std::string& name) : m_colours()
{
    const std::vector<Stop>& stops = find(name)->stops;
    for (std::size_t i = 0; i < m_colours.size(); ++i) {
        m_colours[i] = between(stops, static_cast<double>(i) / 255);
    }
}

Colour ColourRamp::at(double position) const
{
    return m_colours[static_cast<std::size_t>(std::clamp(position, 0.0, 1.0) * 255 + 0.5)];
}

bool ColourRamp::isKnown(const std::string& name)
{
    return find(name) != nullptr;
}

std::string ColourRamp::names()
{
    std::string result;
    for (const RampRow& row : ramps()) {
        result += (result.empty() ? "" : ", ") + std::string(row.name);
    }
    return result;
}

}  // namespace bandmath
