#include <zet/ZetGeodeticFunctions>

#include <cmath>

#include <gtest/gtest.h>

namespace zet {
namespace {

// Expected values were computed with forty digits, on vectors rather than by the formulas here.

constexpr double kRadius = 6367444.6570999995;
constexpr double kPi = 3.14159265358979323846;

void expectNear(double value, double expected)
{
    EXPECT_NEAR(value, expected, 1e-11 * std::fmax(1.0, std::fabs(expected)));
}

struct DegreeRow
{
    double latitude;
    double perDegreeLatitude;
    double perDegreeLongitude;
};

const DegreeRow kDegrees[] = {
    {0.0, 110574.2727, 111319.458},
    {30.0, 110852.4248, 96486.247556773411},
    {45.0, 111131.745, 78846.805720692592},
    {-52.25, 111272.05847249834, 68294.754893302644},
    {90.0, 111693.9173, 0.0},
};

TEST(ZetGeodeticFunctions, metersPerDegree)
{
    for (const DegreeRow& row : kDegrees) {
        double perDegreeLatitude = 0.0;
        double perDegreeLongitude = 0.0;
        metersPerDegree(row.latitude, perDegreeLatitude, perDegreeLongitude);
        expectNear(perDegreeLatitude, row.perDegreeLatitude);
        EXPECT_NEAR(perDegreeLongitude, row.perDegreeLongitude, 1e-9);
    }
}

struct PairRow
{
    double lon1, lat1, lon2, lat2;
    double directDistance, directHeading;
    double distance, heading;
    double latitude, longitude;  // of the point half-way
};

const PairRow kPairs[] = {
    {0, 0, 1, 0, 111319.458, 90.0, 111132.87420491633, 90.0, 0.0, 0.5},
    {0, 0, 0, 1, 110574.35725067137, 0.0, 111132.87420491633, 0.0, 0.5, 0.0},
    {2.55, 49.0125, -73.78, 40.64, 6107821.2001421073, 263.74035357899144, 5830467.8758873728, 291.59274962463978,
     51.609878715789768, -38.887489226295261},
    {10, -20, 40, 30, 6452906.472340757, 30.963756532073521, 6416832.6467000738, 30.800837748076894, 5.1751317115646009,
     24.373700424738613},
    {8.5, 47.25, 8.75, 47.5, 33600.75824424725, 45.0, 33554.401613045438, 34.013830698462168, 47.375067942435855,
     8.6247036912603157},
    {-70, -33, 151, -34, 20536174.556446231, 90.259255151501386, 11415546.514103876, 213.88870415939286,
     -62.11360449049589, -138.61490126836395},
    // across the antimeridian: the flat grid goes the long way, the middle is not wrapped
    {139.75, 35.5, -118.5, 33.75, 23683005.506978867, 269.61174799825751, 8818622.8352112027, 55.925434648166355,
     47.574846886242311, 360.0 - 168.63219593755147},
    {170, 10, -170, 20, 36583891.685218481, 271.68468431789629, 2413894.5420793397, 60.277259489474473,
     15.220616735373661, 179.76316648277035},
    {-170, 20, 170, 10, 36583891.685218481, 91.68468431789629, 2413894.5420793397, 245.52315780120652,
     15.220616735373661, 179.76316648277035 - 360.0},
};

TEST(ZetGeodeticFunctions, pairsOfPoints)
{
    for (const PairRow& r : kPairs) {
        SCOPED_TRACE(testing::Message() << r.lon1 << "," << r.lat1 << " " << r.lon2 << "," << r.lat2);
        expectNear(directDistance(r.lon1, r.lat1, r.lon2, r.lat2), r.directDistance);
        expectNear(directHeading(r.lon1, r.lat1, r.lon2, r.lat2), r.directHeading);
        expectNear(greatCircleDistance(r.lon1, r.lat1, r.lon2, r.lat2), r.distance);
        expectNear(greatCircleHeading(r.lon1, r.lat1, r.lon2, r.lat2), r.heading);
        expectNear(latitudeMidPoint(r.lon1, r.lat1, r.lon2, r.lat2), r.latitude);
        expectNear(longitudeMidPoint(r.lon1, r.lat1, r.lon2, r.lat2), r.longitude);
    }
}

struct HeadingRow
{
    double lon2;
    double lat2;
    double heading;
};

const HeadingRow kHeadings[] = {
    {0, 1, 0.0},
    {1, 1, 45.0},
    {1, 0, 90.0},
    {1, -1, 135.0},
    {0, -1, 180.0},
    {-1, -1, 225.0},
    {-1, 0, 270.0},
    {-1, 1, 315.0},
    // equal points
    {0, 0, 90.0},
};

TEST(ZetGeodeticFunctions, directHeadings)
{
    for (const HeadingRow& row : kHeadings) {
        EXPECT_EQ(directHeading(0, 0, row.lon2, row.lat2), row.heading) << row.lon2 << " " << row.lat2;
    }
    // never 360 or more, however close to north
    for (double lon = 1.0; lon > 0.0; lon /= 8.0) {
        for (const double side : {lon, -lon}) {
            const double heading = directHeading(0, 0, side, 1);
            EXPECT_GE(heading, 0.0);
            EXPECT_LT(heading, 360.0);
        }
    }
}

TEST(ZetGeodeticFunctions, equalPoints)
{
    for (const double lat : {-90.0, -33.3, 0.0, 5.0, 89.0}) {
        EXPECT_EQ(greatCircleDistance(12.5, lat, 12.5, lat), 0.0);
        EXPECT_EQ(directDistance(12.5, lat, 12.5, lat), 0.0);
        expectNear(latitudeMidPoint(12.5, lat, 12.5, lat), lat);
    }
    EXPECT_EQ(greatCircleHeading(5, 0, 5, 0), 0.0);
    EXPECT_EQ(greatCircleHeading(5, 45, 5, 45), 0.0);
}

TEST(ZetGeodeticFunctions, overThePole)
{
    expectNear(greatCircleDistance(0, 89, 180, 89), 2.0 * kPi / 180.0 * kRadius);
    EXPECT_NEAR(greatCircleHeading(0, 89, 180, 89), 0.0, 1e-9);
    EXPECT_NEAR(latitudeMidPoint(0, 89, 180, 89), 90.0, 1e-6);
}

TEST(ZetGeodeticFunctions, oppositePoints)
{
    expectNear(greatCircleDistance(0, 0, 180, 0), kPi * kRadius);
    bool found = false;
    for (int tenths = -900; tenths <= 900; ++tenths) {
        const double lat = tenths / 10.0;
        const double distance = greatCircleDistance(0, lat, 180, -lat);
        if (std::isnan(distance)) {
            found = true;
        } else {
            EXPECT_NEAR(distance, kPi * kRadius, 1.0) << lat;
        }
    }
    EXPECT_TRUE(found);
}

}  // namespace
}  // namespace zet
