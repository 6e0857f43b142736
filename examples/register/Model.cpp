#include "Model"

#include <algorithm>
#include <limits>

#include "raster/Failure"

namespace registration {

using tools::Failure;
using zet::ZetCoord2D;
using zet::ZetMatrix;

namespace {

constexpr std::size_t kMostPoints = std::numeric_limits<unsigned short>::max();

/// Singular values below this share of the greatest mean that the points leave something open.
constexpr double kLeastShare = 1e-10;

struct ModelRow
{
    Model model;
    const char* name;
    const char* needs;
};

constexpr ModelRow kModels[] = {
    {Model::Affine, "affine", "three points that are not on one line"},
    {Model::SecondOrder, "second-order", "six points that are not on one conic section"},
};

const ModelRow& rowOf(Model model)
{
    return *std::find_if(std::begin(kModels), std::end(kModels),
                         [&](const ModelRow& row) { return row.model == model; });
}

unsigned short termCount(Model model)
{
    return static_cast<unsigned short>(model);
}

/// The values of the terms at a place, as many as the model has.
ZetMatrix termsAt(double u, double v, unsigned short count)
{
    const double terms[] = {1.0, u, v, u * u, u * v, v * v};
    return ZetMatrix(1, count, terms, ZetMatrix::RowMajor);
}

/// A change of one coordinate to one between -1 and 1: c becomes scale * c + shift.
struct Scaling
{
    Scaling(double least, double greatest)
        : scale(least < greatest ? 2.0 / (greatest - least) : 1.0), shift(-0.5 * scale * (least + greatest))
    {}

    double operator()(double c) const { return scale * c + shift; }

    double scale;
    double shift;
};

template <class Coordinate>
Scaling scalingOf(const TiePoints& points, Coordinate coordinate)
{
    const auto [least, greatest] = std::minmax_element(
        points.begin(), points.end(),
        [&](const zet::ZetTiePoint& a, const zet::ZetTiePoint& b) { return coordinate(a) < coordinate(b); });
    return Scaling(coordinate(*least), coordinate(*greatest));
}

/// How each term of scaled coordinates, a row, is made up of the terms of those before.
ZetMatrix expansion(const Scaling& u, const Scaling& v, unsigned short count)
{
    const double a = u.scale;
    const double b = u.shift;
    const double c = v.scale;
    const double d = v.shift;
    const double rows[6][6] = {
        // 1       u          v          u*u    u*v    v*v
        {1.0, 0.0, 0.0, 0.0, 0.0, 0.0},
        {b, a, 0.0, 0.0, 0.0, 0.0},
        {d, 0.0, c, 0.0, 0.0, 0.0},
        {b * b, 2 * a * b, 0.0, a * a, 0.0, 0.0},
        {b * d, a * d, b * c, 0.0, a * c, 0.0},
        {d * d, 0.0, 2 * c * d, 0.0, 0.0, c * c},
    };
    ZetMatrix result(count, count, 0.0);
    for (unsigned int r = 0; r < count; ++r) {
        std::copy_n(rows[r], count, &result(r, 0));
    }
    return result;
}

void requireDetermined(const ZetMatrix& design, Model model)
{
    ZetMatrix u;
    ZetMatrix v;
    std::vector<double> s;
    design.singularValueDecomposition(u, s, v, false, false, true);
    if (design.rowCount() < termCount(model) || !(s.back() > kLeastShare * s.front())) {
        throw Failure("The points leave the model open: one that is " + nameOf(model) + " needs " + rowOf(model).needs +
                      ".");
    }
}

}  // namespace

std::string nameOf(Model model)
{
    return rowOf(model).name;
}

Model modelOf(const std::string& name)
{
    return std::find_if(std::begin(kModels), std::end(kModels), [&](const ModelRow& row) { return row.name == name; })
        ->model;
}

ZetMatrix fit(const TiePoints& points, Model model)
{
    if (points.empty() || points.size() > kMostPoints) {
        throw Failure("There are " + std::to_string(points.size()) + " points; between 1 and " +
                      std::to_string(kMostPoints) + " can be taken.");
    }
    const unsigned short count = termCount(model);
    const Scaling u = scalingOf(points, [](const zet::ZetTiePoint& point) { return point.uv().x(); });
    const Scaling v = scalingOf(points, [](const zet::ZetTiePoint& point) { return point.uv().y(); });
    ZetMatrix design(static_cast<unsigned short>(points.size()), count, 0.0);
    ZetMatrix right(design.rowCount(), 2, 0.0);
    for (unsigned int r = 0; r < design.rowCount(); ++r) {
        const zet::ZetTiePoint& point = points[r];
        std::copy_n(termsAt(u(point.uv().x()), v(point.uv().y()), count).data(), count, &design(r, 0));
        right(r, 0) = point.xy().x();
        right(r, 1) = point.xy().y();
    }
    requireDetermined(design, model);
    return design.leastSquares(right).transpose() * expansion(u, v, count);
}

ZetCoord2D<double> apply(const ZetMatrix& coefficients, const ZetCoord2D<double>& uv)
{
    const ZetMatrix xy = coefficients * termsAt(uv.x(), uv.y(), coefficients.columnCount()).transpose();
    return ZetCoord2D<double>(xy(0, 0), xy(1, 0));
}

}  // namespace registration
