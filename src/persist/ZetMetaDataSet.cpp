#include <zet/ZetMetaDataSet>

#include <ostream>

#include <zet/ZetMetaDataSetMetaObj>

#include "core/ZetUnitInit"
#include "persist/ZetMetaDataSet_p"
#include "reflect/ZetCustomVariant"

namespace zet {

namespace {

class ZetMetaDataFieldVariant : public internal::ZetCustomVariant<ZetMetaDataFieldVariant, ZetMetaDataField>
{
};

class ZetMetaDataSetVariant : public internal::ZetCustomVariant<ZetMetaDataSetVariant, ZetMetaDataSet>
{
};

[[maybe_unused]] const bool s_fieldRegistered =
    ZetVariant::registerType<ZetMetaDataField>(L"ZetMetaDataField", new ZetMetaDataFieldVariant);
[[maybe_unused]] const bool s_setRegistered =
    ZetVariant::registerType<ZetMetaDataSet>(L"ZetMetaDataSet", new ZetMetaDataSetVariant);

}  // namespace

// The meta object

ZetMetaPropertiesPtr ZetMetaDataSetMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(name, L"Name", 0),
        ZET_ROW(description, L"Description", 0),
        ZET_ROW(fields, L"Fields", 0),
        ZET_ROW(subsets, L"Subsets", 0),
    };
    return fill(L"ZetMetaDataSet", rows);
}

int ZetMetaDataSetMetaObj::set_fields(const ZetVariant& value)
{
    ZetMetaDataSet::ZetMetaDataSet_p::replace<ZetMetaDataField>(*m_object, value.value<ZetVariantList>());
    return 0;
}

int ZetMetaDataSetMetaObj::get_fields(ZetVariant& value) const
{
    return read(ZetMetaDataSet::ZetMetaDataSet_p::list<ZetMetaDataField>(*m_object), value);
}

int ZetMetaDataSetMetaObj::set_subsets(const ZetVariant& value)
{
    ZetMetaDataSet::ZetMetaDataSet_p::replace<ZetMetaDataSet>(*m_object, value.value<ZetVariantList>());
    return 0;
}

int ZetMetaDataSetMetaObj::get_subsets(ZetVariant& value) const
{
    return read(ZetMetaDataSet::ZetMetaDataSet_p::list<ZetMetaDataSet>(*m_object), value);
}

// The content

/// What the reader answers; an exception counts as its answer.
ZetTextMsg ZetMetaDataSet::ZetMetaDataSet_p::answer(ZetTextMsg (ZetMetaDataReader::*question)(ZetMetaDataSet*),
                                                    ZetMetaDataSet* set) const
{
    const ZetMetaDataReaderPtr asked = reader;
    try {
        return (asked.get()->*question)(set);
    } catch (const ZetTextMsg& message) {
        return message;
    } catch (...) {
        return ZetTextMsg(L"Caught an unknown exception.", L"ZetMetaDataSet", __LINE__, ZetTextMsg::Error);
    }
}

// Construction

ZetMetaDataSet::ZetMetaDataSet() : ZetMetaDataSet(ZetString()) {}

ZetMetaDataSet::ZetMetaDataSet(const ZetString& name, const ZetString& description)
    : ZetMetaDataSet(name, description, ZetMetaDataReaderPtr())
{}

ZetMetaDataSet::ZetMetaDataSet(const ZetString& name, const ZetString& description, const ZetMetaDataReaderPtr& reader)
    : ZetMetaDataObject(name, description), m_body(new ZetMetaDataSet_p(reader))
{}

ZetMetaDataSet::ZetMetaDataSet(const ZetMetaDataSet& other) = default;

ZetMetaDataSet& ZetMetaDataSet::operator=(const ZetMetaDataSet& other)
{
    // The other may be part of this set, and go with the content that is given up.
    const ZetSmartPtr<ZetMetaDataSet_p> body = other.m_body;
    ZetMetaDataObject::operator=(other);
    m_body = body;
    return *this;
}

ZetMetaDataSet::~ZetMetaDataSet() = default;

// Queries

ZetMetaObjectConstPtr ZetMetaDataSet::metaObject() const
{
    return new ZetMetaDataSetMetaObj(this);
}

ZetString ZetMetaDataSet::className() const
{
    return L"ZetMetaDataSet";
}

const std::map<ZetString, ZetMetaDataField>& ZetMetaDataSet::fields() const
{
    return ZetMetaDataSet_p::ready<ZetMetaDataField>(*this).byName;
}

const std::map<ZetString, ZetMetaDataSet>& ZetMetaDataSet::subsets() const
{
    return ZetMetaDataSet_p::ready<ZetMetaDataSet>(*this).byName;
}

ZetStrList ZetMetaDataSet::fieldNames() const
{
    return ZetMetaDataSet_p::ready<ZetMetaDataField>(*this).names;
}

ZetStrList ZetMetaDataSet::subsetNames() const
{
    return ZetMetaDataSet_p::ready<ZetMetaDataSet>(*this).names;
}

bool ZetMetaDataSet::containsField(const ZetString& name) const
{
    return fields().count(name) > 0;
}

bool ZetMetaDataSet::containsSubset(const ZetString& name) const
{
    return subsets().count(name) > 0;
}

ZetMetaDataField ZetMetaDataSet::field(const ZetString& name, bool recursive) const
{
    return ZetMetaDataSet_p::find<ZetMetaDataField>(*this, name, recursive);
}

ZetMetaDataSet ZetMetaDataSet::subset(const ZetString& name, bool recursive) const
{
    return ZetMetaDataSet_p::find<ZetMetaDataSet>(*this, name, recursive);
}

bool ZetMetaDataSet::operator==(const ZetMetaDataSet& other) const
{
    if (!ZetMetaDataObject::operator==(other)) {
        return false;
    }
    if (m_body == other.m_body) {
        return true;
    }
    // All is read first: a reader may put other content in the place of what the maps are part of.
    for (const ZetMetaDataSet* set : {this, &other}) {
        set->fields();
        set->subsets();
    }
    return fields() == other.fields() && subsets() == other.subsets();
}

// Operations

ZetMetaDataField& ZetMetaDataSet::rfield(const ZetString& name)
{
    return ZetMetaDataSet_p::obtain<ZetMetaDataField>(*this, name);
}

ZetMetaDataSet& ZetMetaDataSet::rsubset(const ZetString& name)
{
    return ZetMetaDataSet_p::obtain<ZetMetaDataSet>(*this, name);
}

int ZetMetaDataSet::removeField(const ZetString& name)
{
    return ZetMetaDataSet_p::remove<ZetMetaDataField>(*this, name);
}

int ZetMetaDataSet::removeSubset(const ZetString& name)
{
    return ZetMetaDataSet_p::remove<ZetMetaDataSet>(*this, name);
}

void ZetMetaDataSet::clear()
{
    ZetMetaDataSet_p::detach(*this);
    m_body->fields = internal::ZetMetaDataItems<ZetMetaDataField>();
    m_body->subsets = internal::ZetMetaDataItems<ZetMetaDataSet>();
}

void ZetMetaDataSet::readAll()
{
    for (auto& [key, subset] : ZetMetaDataSet_p::ready<ZetMetaDataSet>(*this).byName) {
        subset.readAll();
    }
}

void ZetMetaDataSet::setReader(const ZetMetaDataReaderPtr& reader)
{
    ZetMetaDataSet_p::detach(*this);
    m_body->reader = reader;
}

std::wostream& operator<<(std::wostream& out, const ZetMetaDataSet& set)
{
    out << set.name() << L"; " << set.description() << L"\n";
    for (const ZetString& name : set.fieldNames()) {
        out << set.field(name, false) << L"\n";
    }
    for (const ZetString& name : set.subsetNames()) {
        out << L"\n" << set.subset(name, false);
    }
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetMetaDataSet& set)
{
    static_cast<void>(set);
    in.setstate(std::ios_base::failbit);
    return in;
}

}  // namespace zet
