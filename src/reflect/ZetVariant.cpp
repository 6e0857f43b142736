#include <zet/ZetVariant>

#include <cmath>
#include <cstring>
#include <iostream>
#include <map>
#include <sstream>

#include "core/ZetUnitInit"
#include "reflect/ZetBuiltInVariants"

namespace zet {

bool ZetDoubleVariant::isEqual(const ZetVariantIF* other) const
{
    static const double epsilon = 0x1p-23;
    double value = 0.0;
    return other->convertTo(typeID<double>(), &value) && (value == m_value || std::fabs(value - m_value) <= epsilon);
}

std::wistream& ZetStringVariant::read(std::wistream& in)
{
    wchar_t first = 0;
    if (!(in >> first)) {
        return in;
    }
    if (first == L'"') {
        return getline(in, m_value, L'"');
    }
    in.putback(first);
    return in >> m_value;
}

bool ZetInvalidVariant::isEqual(const ZetVariantIF* other) const
{
    return other->type() == ZetMetaType::Invalid;
}

bool ZetBufferPtrVariant::isEqual(const ZetVariantIF* other) const
{
    ZetBufferPtr buffer;
    if (!other->convertTo(typeID<ZetBufferPtr>(), &buffer)) {
        return false;
    }
    return buffer == m_value || (buffer && m_value && *buffer == *m_value);
}

namespace {

using Registry = std::map<ZetMetaType, ZetVariantIFPtr>;

template <class T>
ZetVariantIFPtr makeImplementation(const T& value)
{
    return new typename internal::ZetImplementation<T>::type(value);
}

template <class T>
void addPrototype(Registry& registry)
{
    const ZetVariantIFPtr prototype = new typename internal::ZetImplementation<T>::type();
    registry[prototype->type()] = prototype;
}

/// The prototypes by kind. The built-in ones come in on the first call; making them may ask for the
/// registry again, which is then no longer empty.
Registry& variantRegistry()
{
    static Registry registry;
    if (registry.empty()) {
        registry[ZetMetaType()] = new ZetInvalidVariant();
#define ZET_ADD_PROTOTYPE(Number, Enumerator, Name, Class, Numeric) addPrototype<Class>(registry);
        ZET_BUILT_IN_TYPES(ZET_ADD_PROTOTYPE)
#undef ZET_ADD_PROTOTYPE
    }
    return registry;
}

/// The prototype of a kind, null when none is registered.
const ZetVariantIF* prototypeOf(const ZetMetaType& type)
{
    const Registry& registry = variantRegistry();
    const auto found = registry.find(type);
    return found != registry.end() ? found->second.get() : nullptr;
}

/// The piece at \p index, or nothing past the end.
ZetString pieceAt(const ZetStrList& pieces, std::size_t index)
{
    return index < pieces.size() ? pieces[index] : ZetString();
}

void readFromText(const ZetString& text, ZetVariant& variant)
{
    std::wistringstream in(text);
    in >> variant;
}

/// Reads the text between \p open and \p close and cuts it at each comma. Returns false, with the
/// first character put back, when that is not \p open.
bool readPieces(std::wistream& in, wchar_t open, wchar_t close, ZetStrList& pieces)
{
    wchar_t first = 0;
    if (!(in >> first)) {
        return false;
    }
    if (first != open) {
        in.putback(first);
        return false;
    }
    ZetString text;
    getline(in, text, close);
    pieces.split(text, L",", true);
    return true;
}

}  // namespace

ZetVariant::ZetVariant() : m_implementation(new ZetInvalidVariant()) {}

#define ZET_CONSTRUCT(Parameter, Class) \
    ZetVariant::ZetVariant(Parameter value) : m_implementation(makeImplementation<Class>(value)) {}

ZET_CONSTRUCT(bool, bool)
ZET_CONSTRUCT(int, int)
ZET_CONSTRUCT(unsigned int, unsigned int)
ZET_CONSTRUCT(long, long)
ZET_CONSTRUCT(unsigned long, unsigned long)
ZET_CONSTRUCT(double, double)
ZET_CONSTRUCT(const std::complex<double>&, std::complex<double>)
ZET_CONSTRUCT(wchar_t, wchar_t)
ZET_CONSTRUCT(const ZetString&, ZetString)
ZET_CONSTRUCT(const std::wstring&, ZetString)
ZET_CONSTRUCT(const wchar_t*, ZetString)
ZET_CONSTRUCT(const ZetBufferPtr&, ZetBufferPtr)
ZET_CONSTRUCT(const ZetByteOrder&, ZetByteOrder)
ZET_CONSTRUCT(const ZetColorModel&, ZetColorModel)
ZET_CONSTRUCT(const ZetCoord2D<double>&, ZetCoord2D<double>)
ZET_CONSTRUCT(const ZetCoord3D<double>&, ZetCoord3D<double>)
ZET_CONSTRUCT(const ZetCoord3D<int>&, ZetCoord3D<int>)
ZET_CONSTRUCT(const ZetDataLayout&, ZetDataLayout)
ZET_CONSTRUCT(const ZetDataType&, ZetDataType)
ZET_CONSTRUCT(const ZetEqnTile&, ZetEqnTile)
ZET_CONSTRUCT(const ZetImageSize&, ZetImageSize)
ZET_CONSTRUCT(const ZetRational<long>&, ZetRational<long>)
ZET_CONSTRUCT(const ZetRational<unsigned long>&, ZetRational<unsigned long>)
ZET_CONSTRUCT(const ZetROI&, ZetROI)
ZET_CONSTRUCT(const ZetScalar&, ZetScalar)
ZET_CONSTRUCT(const ZetSize3D<unsigned int>&, ZetSize3D<unsigned int>)
ZET_CONSTRUCT(const ZetStrList&, ZetStrList)
ZET_CONSTRUCT(const ZetUnits&, ZetUnits)
ZET_CONSTRUCT(const ZetVariantList&, ZetVariantList)
ZET_CONSTRUCT(const ZetVariantMap&, ZetVariantMap)

#undef ZET_CONSTRUCT

ZetVariant::ZetVariant(const std::string& value) : m_implementation(new ZetStringVariant(toWide(value))) {}

ZetVariant::ZetVariant(const char* value) : m_implementation(new ZetStringVariant(toWide(value))) {}

ZetVariant::ZetVariant(const ZetMetaType& type, const void* value) : m_implementation(fromValue(type, value)) {}

ZetVariant::ZetVariant(const ZetVariantIFPtr& implementation)
    : m_implementation(implementation ? implementation : ZetVariantIFPtr(new ZetInvalidVariant()))
{}

ZetVariant::ZetVariant(const ZetVariant& other)
    : ZetObject(other), ZetRefCounted(other), m_implementation(other.m_implementation.get())
{}

ZetVariant& ZetVariant::operator=(const ZetVariant& other)
{
    if (m_implementation != other.m_implementation) {
        // The other may stand in the list or map that this one holds, and goes with it only at the end.
        ZetVariantIFPtr implementation = other.m_implementation.get();
        implementation.swap(m_implementation);
    }
    return *this;
}

ZetVariant::~ZetVariant() = default;

ZetString ZetVariant::className() const
{
    return L"ZetVariant";
}

ZetMetaObjectPtr ZetVariant::metaObject()
{
    return m_implementation->metaObject();
}

ZetMetaObjectConstPtr ZetVariant::metaObject() const
{
    return static_cast<const ZetVariantIF&>(*m_implementation).metaObject();
}

bool ZetVariant::isNumeric() const
{
    double value = 0.0;
    return type().isNumeric() || convertTo(&value);
}

void ZetVariant::clear()
{
    ZetVariantIFPtr implementation = new ZetInvalidVariant();
    implementation.swap(m_implementation);
}

ZetMetaType ZetVariant::typeFromName(const ZetString& name)
{
    for (const auto& [type, prototype] : variantRegistry()) {
        if (prototype->className() == name) {
            return type;
        }
    }
    return ZetMetaType::Invalid;
}

ZetVariantIFPtr ZetVariant::fromValue(const ZetMetaType& type, const void* value)
{
    const ZetVariantIF* prototype = prototypeOf(type);
    if (!prototype) {
        return new ZetInvalidVariant();
    }
    const ZetVariantIFPtr implementation = prototype->clone();
    if (value) {
        implementation->convertFrom(type.typeID(), value);
    }
    return implementation;
}

void ZetVariant::clearPOD(void* p, unsigned long size)
{
    std::memset(p, 0, size);
}

bool ZetVariant::registerType(const ZetVariantIFPtr& prototype)
{
    if (!prototype || prototype->type() == ZetMetaType::Invalid) {
        return false;
    }
    variantRegistry()[prototype->type()] = prototype;
    return true;
}

bool operator==(const ZetVariant& a, const ZetVariant& b)
{
    return a.implementation() == b.implementation() || a.implementation()->isEqual(b.implementation().get());
}

std::wostream& operator<<(std::wostream& out, const ZetVariant& variant)
{
    out << variant.type() << L",";
    return variant.isValid() ? variant.implementation()->print(out) : out << L" ";
}

std::wistream& operator>>(std::wistream& in, ZetVariant& variant)
{
    ZetString name;
    getline(in, name, L',');
    const ZetMetaType type(trim(name));
    if (type != variant.type()) {
        const ZetVariantIF* prototype = prototypeOf(type);
        if (!prototype) {
            return in;
        }
        variant = ZetVariant(ZetVariantIFPtr(prototype->clone()));
    }
    if (!variant.isValid()) {
        variant = ZetVariant(ZetString());
    }
    return variant.implementation()->read(in);
}

std::wostream& operator<<(std::wostream& out, const ZetVariantList& list)
{
    const wchar_t* separator = L"";
    out << L"[";
    for (const ZetVariant& element : list) {
        out << separator << element;
        separator = L",";
    }
    return out << L"]";
}

std::wistream& operator>>(std::wistream& in, ZetVariantList& list)
{
    list.clear();
    ZetStrList pieces;
    if (readPieces(in, L'[', L']', pieces)) {
        list.resize(pieces.size() / 2);
        for (std::size_t i = 0; i < list.size(); ++i) {
            readFromText(pieces[2 * i] + L"," + pieces[2 * i + 1], list[i]);
        }
    }
    return in;
}

std::wostream& operator<<(std::wostream& out, const ZetVariantMap& map)
{
    const wchar_t* separator = L"";
    out << L"{";
    for (const auto& [key, value] : map) {
        out << separator << key << L":" << value;
        separator = L",";
    }
    return out << L"}";
}

std::wistream& operator>>(std::wistream& in, ZetVariantMap& map)
{
    map.clear();
    ZetStrList pieces;
    if (readPieces(in, L'{', L'}', pieces)) {
        for (std::size_t i = 0; i < pieces.size(); i += 2) {
            const ZetStrList entry(pieces[i] + L"," + pieceAt(pieces, i + 1), L":");
            readFromText(pieceAt(entry, 1), map[pieceAt(entry, 0)]);
        }
    }
    return in;
}

namespace {

// The kind of a variant itself, between those of other units in the order of starting.
const ZetMetaType s_variantType(ZetMetaType::registerType(typeID<ZetVariant>(), L"ZetVariant"));

}  // namespace

}  // namespace zet
