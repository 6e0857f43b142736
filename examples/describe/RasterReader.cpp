#include "RasterReader"

namespace describe {

namespace {

zet::ZetTextMsg success()
{
    return zet::ZetTextMsg(zet::ZetString(), zet::ZetTextMsg::Error);
}

}  // namespace

zet::ZetTextMsg RasterReader::readSubsets(zet::ZetMetaDataSet* set)
{
    m_raster->asked.push_back("parts of " + m_place);
    addSubsets(*set);
    return success();
}

zet::ZetTextMsg RasterReader::readFields(zet::ZetMetaDataSet* set)
{
    m_raster->asked.push_back("fields of " + m_place);
    addFields(*set);
    return success();
}

void RasterReader::addSubsets(zet::ZetMetaDataSet&) const {}

void RasterReader::addFields(zet::ZetMetaDataSet&) const {}

std::string RasterReader::placeOf(const std::string& name) const
{
    return m_place == "the raster" ? name : m_place + "." + name;
}

void RasterReader::addField(zet::ZetMetaDataSet& set, const wchar_t* name, const zet::ZetVariant& value,
                            const wchar_t* description)
{
    addField(set, name, zet::ZetVariantList{value}, description);
}

void RasterReader::addField(zet::ZetMetaDataSet& set, const wchar_t* name, const zet::ZetVariantList& values,
                            const wchar_t* description)
{
    zet::ZetMetaDataField& field = set.rfield(name);
    field.setDescription(description);
    field.setValues(values);
}

}  // namespace describe
