#include "Report"

#include <cmath>

#include "support/Table"

namespace registration {

using tools::numberText;

namespace {

constexpr int kPlaceDigits = 12;
constexpr int kResidualDigits = 4;

std::string polynomial(const char* name, const zet::ZetMatrix& coefficients, unsigned int row)
{
    constexpr const char* kTerms[] = {"", " u", " v", " u*u", " u*v", " v*v"};
    std::string result = std::string(name) + " = " + numberText(coefficients(row, 0), kPlaceDigits);
    for (unsigned int c = 1; c < coefficients.columnCount(); ++c) {
        const double coefficient = coefficients(row, c);
        result +=
            (std::signbit(coefficient) ? " - " : " + ") + numberText(std::abs(coefficient), kPlaceDigits) + kTerms[c];
    }
    return result + "\n";
}

}  // namespace

std::string report(const TiePoints& points, Model model, const zet::ZetMatrix& coefficients)
{
    tools::Table table;
    table.add({"point", "u", "v", "x", "y", "dx", "dy", "distance"});
    double squares = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& [uv, xy] = std::pair(points[i].uv(), points[i].xy());
        const zet::ZetCoord2D<double> fitted = apply(coefficients, uv);
        const double dx = xy.x() - fitted.x();
        const double dy = xy.y() - fitted.y();
        squares += dx * dx + dy * dy;
        table.add({std::to_string(i + 1), numberText(uv.x(), kPlaceDigits), numberText(uv.y(), kPlaceDigits),
                   numberText(xy.x(), kPlaceDigits), numberText(xy.y(), kPlaceDigits), numberText(dx, kResidualDigits),
                   numberText(dy, kResidualDigits), numberText(std::hypot(dx, dy), kResidualDigits)});
    }
    const double mean = squares / static_cast<double>(points.size());
    return "model " + nameOf(model) + ", points " + std::to_string(points.size()) + "\n" + table.text() +
           "root mean square " + numberText(std::sqrt(mean), kResidualDigits) + "\n" +
           polynomial("x", coefficients, 0) + polynomial("y", coefficients, 1);
}

}  // namespace registration
