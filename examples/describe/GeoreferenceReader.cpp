// Where the raster lies: as the file tells it, and on the ground.

#include <ogr_spatialref.h>

#include <array>
#include <memory>
#include <optional>
#include <sstream>

#include <zet/ZetCoord2D>
#include <zet/ZetGeodeticFunctions>
#include <zet/ZetScalar>
#include <zet/ZetTiePoint>
#include <zet/ZetUnits>

#include "RasterReader"

namespace describe {

namespace {

using zet::ZetVariant;
using Transform = std::array<double, 6>;
using Point = zet::ZetCoord2D<double>;

std::optional<Transform> transformOf(GDALDataset& dataset)
{
    Transform transform{};
    const bool known = dataset.GetGeoTransform(transform.data()) == CE_None;
    return known ? std::optional<Transform>(transform) : std::nullopt;
}

const OGRSpatialReference* projectionOf(GDALDataset& dataset)
{
    const OGRSpatialReference* projection = dataset.GetSpatialRef();
    return projection ? projection : dataset.GetGCPSpatialRef();
}

Point place(const Transform& t, double column, double row)
{
    return Point(t[0] + column * t[1] + row * t[2], t[3] + column * t[4] + row * t[5]);
}

/// From the coordinates of the raster to longitude and latitude.
class Ground
{
public:
    explicit Ground(GDALDataset& dataset) : m_dataset(dataset), m_transform(transformOf(dataset))
    {
        const OGRSpatialReference* projection = dataset.GetSpatialRef();
        if (!projection || !m_transform) {
            return;
        }
        OGRSpatialReference from(*projection);
        const std::unique_ptr<OGRSpatialReference> to(from.CloneGeogCS());
        if (to) {
            from.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
            to->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
            m_toDegrees.reset(OGRCreateCoordinateTransformation(&from, to.get()));
        }
    }

    /// Longitude and latitude of a place that is told in parts of the raster's width and height;
    /// none where it cannot be told.
    std::optional<Point> at(double across, double down) const
    {
        if (!m_toDegrees) {
            return std::nullopt;
        }
        const Point point = place(*m_transform, across * m_dataset.GetRasterXSize(), down * m_dataset.GetRasterYSize());
        double x = point.x();
        double y = point.y();
        return m_toDegrees->Transform(1, &x, &y) ? std::optional<Point>(Point(x, y)) : std::nullopt;
    }

private:
    GDALDataset& m_dataset;
    std::optional<Transform> m_transform;
    std::unique_ptr<OGRCoordinateTransformation> m_toDegrees;
};

struct CornerRow
{
    const wchar_t* name;
    double across;
    double down;
};

constexpr CornerRow cornerRows[] = {
    {L"upper_left", 0.0, 0.0}, {L"upper_right", 1.0, 0.0}, {L"lower_right", 1.0, 1.0},
    {L"lower_left", 0.0, 1.0}, {L"center", 0.5, 0.5},
};

struct DistanceRow
{
    const wchar_t* name;
    CornerRow from;
    CornerRow to;
};

constexpr DistanceRow distanceRows[] = {
    {L"top", cornerRows[0], cornerRows[1]},      {L"right", cornerRows[1], cornerRows[2]},
    {L"bottom", cornerRows[3], cornerRows[2]},   {L"left", cornerRows[0], cornerRows[3]},
    {L"diagonal", cornerRows[0], cornerRows[2]},
};

class CornersReader : public RasterReader
{
public:
    using RasterReader::RasterReader;

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        const Ground ground(dataset());
        for (const CornerRow& row : cornerRows) {
            if (const std::optional<Point> point = ground.at(row.across, row.down)) {
                addField(set, row.name, zet::ZetVariantList{point->x(), point->y()},
                         L"longitude and latitude in degrees");
            }
        }
    }
};

zet::ZetScalar metres(double value)
{
    zet::ZetUnits unit;
    unit.fromString(L"m");
    return zet::ZetScalar(value, unit);
}

class DistancesReader : public RasterReader
{
public:
    using RasterReader::RasterReader;

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        const Ground ground(dataset());
        for (const DistanceRow& row : distanceRows) {
            const std::optional<Point> a = ground.at(row.from.across, row.from.down);
            const std::optional<Point> b = ground.at(row.to.across, row.to.down);
            if (a && b) {
                addField(set, row.name, metres(zet::greatCircleDistance(a->x(), a->y(), b->x(), b->y())),
                         L"along the great circle");
            }
        }
        const std::optional<Point> foot = ground.at(0.5, 1.0);
        const std::optional<Point> head = ground.at(0.5, 0.0);
        if (foot && head) {
            addField(set, L"heading", zet::greatCircleHeading(foot->x(), foot->y(), head->x(), head->y()),
                     L"degrees clockwise from north, from the middle of the bottom to that of the top");
        }
    }
};

/// The text of the value, with all digits that a double holds for sure.
zet::ZetString textOf(const zet::ZetTiePoint& point)
{
    std::wostringstream out;
    out.precision(15);
    out << point;
    return out.str();
}

zet::ZetVariantList tiePointsOf(GDALDataset& dataset)
{
    zet::ZetVariantList points;
    for (int i = 0; i < dataset.GetGCPCount(); ++i) {
        const GDAL_GCP& gcp = dataset.GetGCPs()[i];
        points.push_back(textOf(zet::ZetTiePoint(Point(gcp.dfGCPPixel, gcp.dfGCPLine), Point(gcp.dfGCPX, gcp.dfGCPY))));
    }
    return points;
}

}  // namespace

bool GeoreferenceReader::hasAny(GDALDataset& dataset)
{
    return projectionOf(dataset) || transformOf(dataset) || dataset.GetGCPCount() > 0;
}

void GeoreferenceReader::addFields(zet::ZetMetaDataSet& set) const
{
    if (const OGRSpatialReference* projection = projectionOf(dataset())) {
        if (const char* name = projection->GetName()) {
            addField(set, L"projection", wideText(name), L"name of the reference system");
        }
        const char* authority = projection->GetAuthorityName(nullptr);
        const char* code = projection->GetAuthorityCode(nullptr);
        if (authority && code) {
            addField(set, L"authority", wideText(std::string(authority) + ":" + code), L"its code");
        }
    }
    if (const std::optional<Transform> transform = transformOf(dataset())) {
        addField(set, L"transform", zet::ZetVariantList(transform->begin(), transform->end()),
                 L"x0, x by column, x by row, y0, y by column, y by row");
    }
    if (dataset().GetGCPCount() > 0) {
        addField(set, L"tie_points", tiePointsOf(dataset()), L"column and row, and where they lie");
    }
}

void GeoreferenceReader::addSubsets(zet::ZetMetaDataSet& set) const
{
    if (Ground(dataset()).at(0.5, 0.5)) {
        addPart<CornersReader>(set, "corners", L"on the ground");
        addPart<DistancesReader>(set, "distances", L"on the ground, between the corners");
    }
}

}  // namespace describe
