// What is told of bands, and of the metadata that GDAL keeps beside them and the file.

#include <cpl_string.h>

#include <zet/ZetDataType>
#include <zet/ZetImageSize>

#include "RasterReader"
#include "raster/ElementTypes"

namespace describe {

namespace {

using zet::ZetVariant;

struct NumberRow
{
    const wchar_t* name;
    double (GDALRasterBand::*get)(int*);
    const wchar_t* description;
};

// What a band may have or not, and tells without a look at its pixels.
const NumberRow numberRows[] = {
    {L"scale", &GDALRasterBand::GetScale, L"times the stored value, plus the offset, is the value"},
    {L"offset", &GDALRasterBand::GetOffset, L"added to the scaled value"},
};

void addText(zet::ZetMetaDataSet& set, const wchar_t* name, const char* text, const wchar_t* description)
{
    if (text && *text) {
        zet::ZetMetaDataField& field = set.rfield(name);
        field.setDescription(description);
        field.setValues({wideText(text)});
    }
}

zet::ZetImageSize planeOf(int width, int height)
{
    return zet::ZetImageSize(static_cast<unsigned int>(width), static_cast<unsigned int>(height), 1);
}

/// The value of pixels without data, of a kind that holds it whole; invalid where the band has none.
ZetVariant noDataOf(GDALRasterBand& band)
{
    int known = 0;
    ZetVariant value;
    if (band.GetRasterDataType() == GDT_Int64) {
        value = static_cast<long>(band.GetNoDataValueAsInt64(&known));
    } else if (band.GetRasterDataType() == GDT_UInt64) {
        value = static_cast<unsigned long>(band.GetNoDataValueAsUInt64(&known));
    } else {
        value = band.GetNoDataValue(&known);
    }
    return known ? value : ZetVariant();
}

class BandReader : public RasterReader
{
public:
    BandReader(const RasterPtr& raster, const std::string& place, int number)
        : RasterReader(raster, place), m_number(number)
    {}

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        GDALRasterBand& band = *dataset().GetRasterBand(m_number);
        const zet::ZetDataType type = elementTypeOf(band);
        addField(set, L"element_type", type, L"of a sample");
        addField(set, L"bits", type.logicalBitDepth(), L"in use in a sample");
        addText(set, L"color_interpretation", GDALGetColorInterpretationName(band.GetColorInterpretation()),
                L"what the samples stand for");
        addText(set, L"title", band.GetDescription(), L"as the file calls it");
        addText(set, L"unit", band.GetUnitType(), L"of the values");
        int width = 0;
        int height = 0;
        band.GetBlockSize(&width, &height);
        addField(set, L"block_size", planeOf(width, height), L"columns, rows and planes of a storage block");
        const ZetVariant noData = noDataOf(band);
        if (noData.isValid()) {
            addField(set, L"no_data", noData, L"value of pixels without data");
        }
        for (const NumberRow& row : numberRows) {
            int known = 0;
            const double value = (band.*row.get)(&known);
            if (known) {
                addField(set, row.name, value, row.description);
            }
        }
        addOverviews(set, band);
    }

    void addSubsets(zet::ZetMetaDataSet& set) const override
    {
        GDALRasterBand* const band = dataset().GetRasterBand(m_number);
        if (DomainsReader::hasAny(*band)) {
            addPart<DomainsReader>(set, "domains", L"stored with the band", band);
        }
    }

private:
    static void addOverviews(zet::ZetMetaDataSet& set, GDALRasterBand& band)
    {
        zet::ZetVariantList sizes;
        for (int i = 0; i < band.GetOverviewCount(); ++i) {
            if (GDALRasterBand* const overview = band.GetOverview(i)) {
                sizes.push_back(planeOf(overview->GetXSize(), overview->GetYSize()));
            }
        }
        if (!sizes.empty()) {
            addField(set, L"overviews", sizes, L"columns, rows and planes of the reduced copies");
        }
    }

    int m_number;
};

/// The entries of one domain, as they are stored; one that has no name is its whole text.
class DomainReader : public RasterReader
{
public:
    DomainReader(const RasterPtr& raster, const std::string& place, GDALMajorObject* owner, const std::string& domain)
        : RasterReader(raster, place), m_owner(owner), m_domain(domain)
    {}

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        for (const char* const* entry = m_owner->GetMetadata(m_domain.c_str()); entry && *entry; ++entry) {
            char* key = nullptr;
            const char* value = CPLParseNameValue(*entry, &key);
            const zet::ZetString name = wideText(key && value && *key ? key : "text");
            set.rfield(name).setValues({wideText(key && value ? value : *entry)});
            CPLFree(key);
        }
    }

private:
    GDALMajorObject* m_owner;
    std::string m_domain;
};

/// The domains of \p owner that have an entry.
std::vector<std::string> domainsOf(GDALMajorObject& owner)
{
    std::vector<std::string> domains;
    const CPLStringList all(owner.GetMetadataDomainList());
    for (int i = 0; i < all.size(); ++i) {
        const char* const* entries = owner.GetMetadata(all[i]);
        if (entries && *entries) {
            domains.emplace_back(all[i]);
        }
    }
    return domains;
}

}  // namespace

zet::ZetDataType elementTypeOf(GDALRasterBand& band)
{
    const zet::ZetDataType type(tools::fromGdal({band.GetRasterDataType(), tools::isSignedByte(band)}));
    const char* bits = band.GetMetadataItem("NBITS", "IMAGE_STRUCTURE");
    return bits ? zet::ZetDataType(type.type(), static_cast<unsigned int>(std::atoi(bits))) : type;
}

bool DomainsReader::hasAny(GDALMajorObject& owner)
{
    return !domainsOf(owner).empty();
}

void DomainsReader::addSubsets(zet::ZetMetaDataSet& set) const
{
    for (const std::string& domain : domainsOf(*m_owner)) {
        addPart<DomainReader>(set, domain.empty() ? "default" : domain, L"", m_owner, domain);
    }
}

void BandsReader::addSubsets(zet::ZetMetaDataSet& set) const
{
    for (int number = 1; number <= dataset().GetRasterCount(); ++number) {
        addPart<BandReader>(set, std::to_string(number), L"", number);
    }
}

}  // namespace describe
