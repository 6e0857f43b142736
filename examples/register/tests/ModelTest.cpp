// The models that are fitted, against polynomials that are known.

#include "Model"

#include <gtest/gtest.h>

#include <cmath>

#include "raster/Failure"

namespace registration {

namespace {

using Place = zet::ZetCoord2D<double>;

/// Points of the polynomials with the given coefficients, on a grid that begins at (u, v).
TiePoints gridOf(const zet::ZetMatrix& coefficients, int columns, int rows, double u, double v, double step)
{
    TiePoints points;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            const Place uv(u + c * step, v + r * step);
            points.emplace_back(uv, apply(coefficients, uv));
        }
    }
    return points;
}

void expectNear(const zet::ZetMatrix& actual, const zet::ZetMatrix& expected, double relative)
{
    ASSERT_EQ(actual.rowCount(), expected.rowCount());
    ASSERT_EQ(actual.columnCount(), expected.columnCount());
    for (std::size_t i = 0; i < actual.elementCount(); ++i) {
        EXPECT_NEAR(actual.data()[i], expected.data()[i], relative * std::abs(expected.data()[i])) << i;
    }
}

std::string failureOf(const TiePoints& points, Model model)
{
    try {
        fit(points, model);
    } catch (const tools::Failure& failure) {
        return failure.what();
    }
    return "none";
}

const zet::ZetMatrix kAffine(2, 3, std::vector<double>{512340, 30, 0.25, 4815600, -0.5, -30}, zet::ZetMatrix::RowMajor);
const zet::ZetMatrix kSecondOrder(2, 6, std::vector<double>{7, 2, -3, 0.5, 0.25, -1, -20, 1, 4, -0.125, 2, 0.75},
                                  zet::ZetMatrix::RowMajor);

TEST(RegisterModel, names)
{
    EXPECT_EQ(nameOf(Model::Affine), "affine");
    EXPECT_EQ(nameOf(Model::SecondOrder), "second-order");
    EXPECT_EQ(modelOf("affine"), Model::Affine);
    EXPECT_EQ(modelOf("second-order"), Model::SecondOrder);
}

TEST(RegisterModel, appliesTerms)
{
    EXPECT_EQ(apply(kAffine, Place(0, 0)), Place(512340, 4815600));
    EXPECT_EQ(apply(kAffine, Place(2, 4)), Place(512340 + 60 + 1, 4815600 - 1 - 120));
    // 7 + 2*2 - 3*4 + 0.5*4 + 0.25*8 - 16 and -20 + 2 + 16 - 0.125*4 + 2*8 + 0.75*16
    EXPECT_EQ(apply(kSecondOrder, Place(2, 4)), Place(-13, 25.5));
}

TEST(RegisterModel, findsWhatThePointsWereMadeOf)
{
    expectNear(fit(gridOf(kAffine, 2, 2, 0, 0, 100), Model::Affine), kAffine, 1e-8);
    expectNear(fit(gridOf(kAffine, 5, 4, -7, 12, 0.5), Model::Affine), kAffine, 1e-8);
    expectNear(fit(gridOf(kSecondOrder, 3, 3, -1, -1, 1), Model::SecondOrder), kSecondOrder, 1e-8);
    expectNear(fit(gridOf(kSecondOrder, 4, 5, 10, 20, 3), Model::SecondOrder), kSecondOrder, 1e-8);
}

TEST(RegisterModel, keepsDigitsFarFromTheOrigin)
{
    // places on the ground in metres: their squares are 1e13, and what they add is 1
    const TiePoints points = gridOf(kAffine, 4, 4, 500000, 4800000, 30);
    const zet::ZetMatrix found = fit(points, Model::SecondOrder);
    for (const zet::ZetTiePoint& point : points) {
        const Place fitted = apply(found, point.uv());
        EXPECT_NEAR(fitted.x(), point.xy().x(), 1e-2);
        EXPECT_NEAR(fitted.y(), point.xy().y(), 1e-2);
    }
}

TEST(RegisterModel, leavesTheLeastSquares)
{
    // the fourth corner is off by 4 in x: an affine model spreads that as 1, -1, -1, 1
    const TiePoints points = {
        {Place(0, 0), Place(0, 0)}, {Place(1, 0), Place(1, 0)}, {Place(0, 1), Place(0, 1)}, {Place(1, 1), Place(5, 1)}};
    const zet::ZetMatrix found = fit(points, Model::Affine);
    const double left[] = {1, -1, -1, 1};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Place fitted = apply(found, points[i].uv());
        EXPECT_NEAR(points[i].xy().x() - fitted.x(), left[i], 1e-14);
        EXPECT_NEAR(points[i].xy().y() - fitted.y(), 0, 1e-14);
    }
}

TEST(RegisterModel, pointsThatLeaveItOpen)
{
    const std::string affine =
        "The points leave the model open: one that is affine needs three points that are not on one line.";
    const std::string secondOrder =
        "The points leave the model open: one that is second-order needs six points that are not on one conic section.";
    TiePoints line = gridOf(kAffine, 9, 1, 0.1, 0.2, 0.3);
    TiePoints circle;
    for (int i = 0; i < 12; ++i) {
        circle.emplace_back(Place(std::cos(i), std::sin(i)), Place(i, i));
    }
    EXPECT_EQ(failureOf(gridOf(kAffine, 2, 1, 0, 0, 1), Model::Affine), affine);
    EXPECT_EQ(failureOf(gridOf(kAffine, 1, 1, 3, 3, 1), Model::Affine), affine);
    EXPECT_EQ(failureOf(line, Model::Affine), affine);
    EXPECT_EQ(failureOf(gridOf(kAffine, 5, 1, 0, 0, 1), Model::SecondOrder), secondOrder);
    EXPECT_EQ(failureOf(line, Model::SecondOrder), secondOrder);
    EXPECT_EQ(failureOf(circle, Model::SecondOrder), secondOrder);
    EXPECT_EQ(failureOf(circle, Model::Affine), "none");
    EXPECT_EQ(failureOf({}, Model::Affine), "There are 0 points; between 1 and 65535 can be taken.");
    EXPECT_EQ(failureOf(gridOf(kAffine, 256, 256, 0, 0, 1), Model::Affine),
              "There are 65536 points; between 1 and 65535 can be taken.");
}

}  // namespace

}  // namespace registration
