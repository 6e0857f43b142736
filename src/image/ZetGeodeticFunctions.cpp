#include <zet/ZetGeodeticFunctions>

#include <cmath>

#include "core/ZetUnitInit"

namespace zet {

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kEarthRadius = 6367444.6570999995;

double radians(double degrees)
{
    return degrees * kRadiansPerDegree;
}

double degrees(double radians)
{
    return radians * kDegreesPerRadian;
}

double square(double x)
{
    return x * x;
}

/// What both coordinates of a point half-way are made of: the second point as seen from the meridian
/// of the first, in the plane of the equator.
struct Half
{
    Half(double lon1, double lat1, double lon2, double lat2)
        : a(radians(lat1)),
          b(radians(lat2)),
          bx(std::cos(b) * std::cos(radians(lon2) - radians(lon1))),
          by(std::cos(b) * std::sin(radians(lon2) - radians(lon1)))
    {}

    double a;
    double b;
    double bx;
    double by;
};

}  // namespace

void metersPerDegree(double latitude, double& perDegreeLatitude, double& perDegreeLongitude)
{
    const double x = radians(latitude);
    perDegreeLatitude = 111132.92 - 559.82 * std::cos(2.0 * x) + 1.175 * std::cos(4.0 * x) - 0.0023 * std::cos(6.0 * x);
    perDegreeLongitude = 111412.84 * std::cos(x) - 93.5 * std::cos(3.0 * x) + 0.118 * std::cos(5.0 * x);
}

double directHeading(double lon1, double lat1, double lon2, double lat2)
{
    double heading = degrees(std::atan2(-(lat2 - lat1), lon2 - lon1));
    if (heading < 0.0) {
        heading += 360.0;
    }
    heading += 90.0;
    return heading >= 360.0 ? heading - 360.0 : heading;
}

double directDistance(double lon1, double lat1, double lon2, double lat2)
{
    double perDegreeLatitude = 0.0;
    double perDegreeLongitude = 0.0;
    metersPerDegree((lat1 + lat2) / 2.0, perDegreeLatitude, perDegreeLongitude);
    const double north = (lat2 - lat1) * perDegreeLatitude;
    const double east = (lon2 - lon1) * perDegreeLongitude;
    return std::sqrt(square(east) + square(north));
}

double greatCircleHeading(double lon1, double lat1, double lon2, double lat2)
{
    const double d = radians(lon2 - lon1);
    const double a = radians(lat1);
    const double b = radians(lat2);
    const double y = std::sin(d) * std::cos(b);
    const double x = std::sin(b) * std::cos(a) - std::cos(d) * std::sin(a) * std::cos(b);
    const double heading = degrees(std::atan2(y, x));
    return heading < 0.0 ? heading + 360.0 : heading;
}

double greatCircleDistance(double lon1, double lat1, double lon2, double lat2)
{
    const double d = radians(lon2 - lon1);
    const double a = radians(lat1);
    const double b = radians(lat2);
    const double s = square(std::sin((b - a) / 2.0)) + square(std::sin(d / 2.0)) * std::cos(a) * std::cos(b);
    return 2.0 * std::atan2(std::sqrt(s), std::sqrt(1.0 - s)) * kEarthRadius;
}

double latitudeMidPoint(double lon1, double lat1, double lon2, double lat2)
{
    const Half half(lon1, lat1, lon2, lat2);
    const double z = std::sin(half.a) + std::sin(half.b);
    return degrees(std::atan2(z, std::sqrt(square(std::cos(half.a) + half.bx) + square(half.by))));
}

double longitudeMidPoint(double lon1, double lat1, double lon2, double lat2)
{
    const Half half(lon1, lat1, lon2, lat2);
    return degrees(radians(lon1) + std::atan2(half.by, std::cos(half.a) + half.bx));
}

}  // namespace zet
