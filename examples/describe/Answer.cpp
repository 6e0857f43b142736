#include "Answer"

#include <sstream>

#include "raster/Failure"

namespace describe {

namespace {

using tools::Failure;

zet::ZetString textOf(const zet::ZetMetaDataSet& set)
{
    std::wostringstream out;
    out << set;
    return out.str();
}

zet::ZetString textOf(const zet::ZetMetaDataField& field)
{
    zet::ZetString text;
    for (const zet::ZetVariant& value : field.values()) {
        text += value.value<zet::ZetString>() + L"\n";
    }
    return text;
}

std::string inQuotes(const zet::ZetString& text)
{
    return "'" + zet::toMultibyte(text) + "'";
}

zet::ZetString valueAt(const Request& request, const zet::ZetMetaDataSet& description)
{
    const std::optional<zet::ZetString> text = textAt(description, request.get());
    if (!text) {
        throw Failure("There is no " + inQuotes(request.get()) + " in the description of " + inQuotes(request.file()) +
                      ".");
    }
    return *text;
}

zet::ZetString regionOf(unsigned int cell, const zet::ZetTileGrid& grid)
{
    if (cell >= grid.tileCount()) {
        throw Failure("There is no cell " + std::to_string(cell) + "; there are " + std::to_string(grid.tileCount()) +
                      ", counted from 0.");
    }
    return zet::ZetString(grid[cell]) + L"\n";
}

zet::ZetString cellsIn(const zet::ZetROI& region, const zet::ZetTileGrid& grid)
{
    zet::ZetString text;
    for (const unsigned int cell : grid.intersectedCells(region)) {
        text += std::to_wstring(cell) + L"\n";
    }
    return text;
}

}  // namespace

std::optional<zet::ZetString> textAt(const zet::ZetMetaDataSet& set, const zet::ZetString& path)
{
    for (std::size_t dot = path.find(L'.'); dot != zet::ZetString::npos; dot = path.find(L'.', dot + 1)) {
        const zet::ZetString name = path.substr(0, dot);
        if (set.containsSubset(name)) {
            const std::optional<zet::ZetString> text = textAt(set.subset(name, false), path.substr(dot + 1));
            if (text) {
                return text;
            }
        }
    }
    if (set.containsSubset(path)) {
        return textOf(set.subset(path, false));
    }
    return set.containsField(path) ? std::optional<zet::ZetString>(textOf(set.field(path, false))) : std::nullopt;
}

zet::ZetString answer(const Request& request, const RasterPtr& raster)
{
    if (request.cell()) {
        return regionOf(*request.cell(), raster->grid());
    }
    if (request.region()) {
        return cellsIn(*request.region(), raster->grid());
    }
    const zet::ZetMetaDataSet description = describeRaster(raster, request.file());
    return request.get().empty() ? textOf(description) : valueAt(request, description);
}

}  // namespace describe
