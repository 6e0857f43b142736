#include <zet/ZetSerialize>

#include <iostream>

#include <zet/ZetVariant>

#include "core/ZetUnitInit"

namespace zet {

namespace {

/// What \p work on \p stream returns; an exception sets the stream's fail bit.
template <class Stream, class Work>
Stream& failing(Stream& stream, const Work& work)
{
    try {
        return work();
    } catch (...) {
        stream.setstate(std::ios_base::failbit);
        return stream;
    }
}

}  // namespace

ZetString ZetSerialize::className() const
{
    return L"ZetSerialize";
}

std::wostream& ZetSerialize::serialize_aux(std::wostream& out, const ZetObject& object) const
{
    return failing(out, [&]() -> std::wostream& {
        const ZetMetaObjectConstPtr meta = object.metaObject();
        if (meta) {
            return m_format->writeObject(out, meta);
        }
        const ZetMetaType type = ZetVariant::typeFromName(object.className());
        if (type == ZetMetaType::Invalid) {
            out.setstate(std::ios_base::failbit);
            return out;
        }
        return m_format->writeValue(out, ZetVariant(type, dynamic_cast<const void*>(&object)));
    });
}

std::wistream& ZetSerialize::deSerialize_aux(std::wistream& in, ZetObject& object) const
{
    return failing(in, [&]() -> std::wistream& {
        const ZetMetaObjectPtr meta = object.metaObject();
        if (meta) {
            return m_format->readObject(in, meta);
        }
        const ZetMetaType type = ZetVariant::typeFromName(object.className());
        if (type == ZetMetaType::Invalid) {
            in.setstate(std::ios_base::failbit);
            return in;
        }
        void* const address = dynamic_cast<void*>(&object);
        ZetVariant value(type, address);
        std::wistream& result = m_format->readValue(in, value);
        if (!value.implementation()->convertTo(type.typeID(), address)) {
            result.setstate(std::ios_base::failbit);
        }
        return result;
    });
}

std::wostream& ZetSerialize::serialize_aux(std::wostream& out, const ZetVariant& value) const
{
    return failing(out, [&]() -> std::wostream& { return m_format->writeValue(out, value); });
}

std::wistream& ZetSerialize::deSerialize_aux(std::wistream& in, ZetVariant& value) const
{
    return failing(in, [&]() -> std::wistream& { return m_format->readValue(in, value); });
}

}  // namespace zet
