#include <zet/ZetLutDesc>

#include <istream>
#include <ostream>

#include <zet/ZetLutDescMetaObj>

#include "core/ZetUnitInit"

namespace zet {

ZetMetaPropertiesPtr ZetLutDescMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(reuseLutDataForAllBands, L"Reuse Lut Data For All Bands", 0),
        ZET_ROW(numEntriesPerBand, L"Num Entries Per Band", 0),
        ZET_ROW(numBands, L"Num Bands", 0),
        ZET_ROW(minIndex, L"Minimum Index", 0),
        ZET_ROW(data, L"Lut Data", 0),
        ZET_ROW(datatype, L"Data Type", 0),
    };
    return fill(L"ZetLutDesc", rows);
}

int ZetLutDescMetaObj::set_data(const ZetVariant& value)
{
    return write(m_object->m_data, value);
}

int ZetLutDescMetaObj::get_data(ZetVariant& value) const
{
    if (m_object->m_datatype.type() == ZetDataType::Invalid) {
        return 0;
    }
    if (m_object->m_data) {
        m_object->m_data->setDataType(m_object->m_datatype);
    }
    return read(m_object->m_data, value);
}

ZetLutDesc::ZetLutDesc(const ZetBufferPtr& data, const ZetDataType& dataType, unsigned int numEntriesPerBand,
                       long minIndex, unsigned int numBands, bool reuseLutDataForAllBands)
    : m_reuseLutDataForAllBands(reuseLutDataForAllBands),
      m_numEntriesPerBand(numEntriesPerBand),
      m_numBands(numBands),
      m_minIndex(minIndex),
      m_data(data),
      m_datatype(dataType)
{}

ZetLutDesc* ZetLutDesc::clone() const
{
    const ZetBufferPtr data = m_data ? ZetBufferPtr(new ZetBuffer(*m_data)) : ZetBufferPtr();
    return new ZetLutDesc(data, m_datatype, m_numEntriesPerBand, m_minIndex, m_numBands, m_reuseLutDataForAllBands);
}

ZetMetaObjectConstPtr ZetLutDesc::metaObject() const
{
    return new ZetLutDescMetaObj(this);
}

ZetString ZetLutDesc::className() const
{
    return L"ZetLutDesc";
}

bool ZetLutDesc::operator==(const ZetLutDesc& other) const
{
    if (m_datatype != other.m_datatype || m_numEntriesPerBand != other.m_numEntriesPerBand ||
        m_minIndex != other.m_minIndex || m_numBands != other.m_numBands ||
        m_reuseLutDataForAllBands != other.m_reuseLutDataForAllBands) {
        return false;
    }
    return m_data == other.m_data || (m_data && other.m_data && *m_data == *other.m_data);
}

std::wostream& operator<<(std::wostream& out, const ZetLutDesc& table)
{
    static_cast<void>(table);
    out.setstate(std::ios_base::failbit);
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetLutDesc& table)
{
    static_cast<void>(table);
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
