#include <zet/ZetComplexMath>

#include <cmath>

#include <zet/ZetCoreFunctions>

#include "core/ZetUnitInit"

namespace zet {
namespace {

using Complex = std::complex<double>;

constexpr double pi = 3.141592653589793;
constexpr double halfPi = 1.5707963267948966;

/// Up to here the angle is taken from its sine or cosine itself; beyond, from a tangent that keeps
/// its digits near the branch points.
constexpr double angleCrossover = 0.6417;

/// Up to here the logarithm is taken from the small distance of `a` to 1.
constexpr double logarithmCrossover = 1.5;

/// A number in the first quadrant by its distances from -1 and 1: the ellipse with these foci
/// through it has the half axis `a`, and `x / a` is the cosine of its hyperbola's angle.
struct Quadrant
{
    explicit Quadrant(const Complex& z)
        : x(std::fabs(z.real())),
          y(std::fabs(z.imag())),
          r(std::hypot(x + 1.0, y)),
          s(std::hypot(x - 1.0, y)),
          a((r + s) / 2.0),
          b(x / a)
    {}

    double x;
    double y;
    double r;
    double s;
    double a;
    double b;
};

/// The square root under the tangent of the angle; beyond 1 without its factor y.
double angleRoot(const Quadrant& q)
{
    const double t = q.a + q.x;
    if (q.x <= 1.0) {
        return std::sqrt(0.5 * t * (q.y * q.y / (q.r + q.x + 1.0) + (1.0 - q.x + q.s)));
    }
    return std::sqrt(0.5 * (t / (q.r + q.x + 1.0) + t / (q.x - 1.0 + q.s)));
}

double asinAngle(const Quadrant& q)
{
    if (q.b <= angleCrossover) {
        return std::asin(q.b);
    }
    const double root = angleRoot(q);
    return q.x <= 1.0 ? std::atan(q.x / root) : std::atan(q.x / (q.y * root));
}

double acosAngle(const Quadrant& q)
{
    if (q.b <= angleCrossover) {
        return std::acos(q.b);
    }
    const double root = angleRoot(q);
    return q.x <= 1.0 ? std::atan(root / q.x) : std::atan(root * q.y / q.x);
}

double logarithm(const Quadrant& q)
{
    if (q.a <= logarithmCrossover) {
        const double w = q.x < 1.0 ? q.y * q.y / (1.0 - q.x + q.s) : q.x - 1.0 + q.s;
        const double m = 0.5 * (q.y * q.y / (1.0 + q.x + q.r) + w);
        return log1p(m + std::sqrt((q.a + 1.0) * m));
    }
    return std::log(q.a + std::sqrt(q.a * q.a - 1.0));
}

}  // namespace

Complex asin(const Complex& z)
{
    if (z.imag() == 0.0) {
        return {std::asin(z.real()), 0.0};
    }
    const Quadrant q(z);
    const double angle = asinAngle(q);
    const double log = logarithm(q);
    return {z.real() >= 0.0 ? angle : -angle, z.imag() >= 0.0 ? log : -log};
}

Complex acos(const Complex& z)
{
    if (z.imag() == 0.0) {
        return {std::acos(z.real()), 0.0};
    }
    const Quadrant q(z);
    const double angle = acosAngle(q);
    const double log = logarithm(q);
    return {z.real() >= 0.0 ? angle : pi - angle, z.imag() >= 0.0 ? -log : log};
}

Complex atan(const Complex& z)
{
    const double x = z.real();
    const double y = z.imag();
    if (y == 0.0) {
        return {std::atan(x), 0.0};
    }
    const double r = std::hypot(x, y);
    const double u = 2.0 * y / (r * r + 1.0);
    const double imaginary = std::fabs(u) < 0.1 ? 0.25 * (log1p(u) - log1p(-u))
                                                : 0.5 * std::log(std::hypot(x, 1.0 + y) / std::hypot(x, y - 1.0));
    if (x != 0.0) {
        return {0.5 * std::atan2(2.0 * x, (1.0 - r) * (1.0 + r)), imaginary};
    }
    return {y > 1.0 ? halfPi : y < -1.0 ? -halfPi : 0.0, imaginary};
}

}  // namespace zet
