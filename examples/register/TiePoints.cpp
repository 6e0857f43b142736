#include "TiePoints"

#include <sstream>

#include "raster/Failure"
#include "raster/InputRaster"
#include "raster/TextFile"

namespace registration {

using tools::Failure;
using zet::ZetCoord2D;
using zet::ZetString;

namespace {

zet::ZetTiePoint pointIn(const ZetString& line, const std::string& place)
{
    std::wistringstream in(line);
    zet::ZetTiePoint point;
    in >> point;
    const bool isPoint = !in.fail();
    in >> std::ws;
    if (!isPoint || !in.eof()) {
        throw Failure(place + ": '" + zet::toMultibyte(line) +
                      "' is no tie point such as ((10.5,20),(512340,4815600)).");
    }
    return point;
}

}  // namespace

TiePoints readPoints(const std::string& file)
{
    std::wistringstream text(tools::readText(file));
    TiePoints points;
    ZetString line;
    for (int number = 1; zet::getline(text, line); ++number) {
        if (line.find_first_not_of(L" \t\r") != ZetString::npos && line.front() != L'#') {
            points.push_back(pointIn(zet::trim(line), "'" + file + "', line " + std::to_string(number)));
        }
    }
    if (points.empty()) {
        throw Failure("'" + file + "' has no tie points.");
    }
    return points;
}

TiePoints controlPointsOf(const std::string& raster)
{
    const GDALDatasetUniquePtr dataset = tools::openRaster(raster);
    TiePoints points;
    for (int i = 0; i < dataset->GetGCPCount(); ++i) {
        const GDAL_GCP& control = dataset->GetGCPs()[i];
        points.emplace_back(ZetCoord2D<double>(control.dfGCPPixel, control.dfGCPLine),
                            ZetCoord2D<double>(control.dfGCPX, control.dfGCPY));
    }
    if (points.empty()) {
        throw Failure("'" + raster + "' has no ground control points.");
    }
    return points;
}

}  // namespace registration
