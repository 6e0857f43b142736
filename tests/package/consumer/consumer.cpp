// A program of a user of the installed library: it derives from every class that callers may
// derive from in C++17, and checks that values, exceptions and type information cross the library's border.
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <typeinfo>

#include <zet/ZetBuffer>
#include <zet/ZetCoreFunctions>
#include <zet/ZetCoreLibMgr>
#include <zet/ZetDataType>
#include <zet/ZetEqnParser>
#include <zet/ZetEqnTile>
#include <zet/ZetMetaObjectImpl>
#include <zet/ZetNumValidator>
#include <zet/ZetObjectFactory>
#include <zet/ZetObjectProxy>
#include <zet/ZetTextHandler>
#include <zet/ZetTextMsg>
#include <zet/ZetUnits>
#include <zet/ZetValidator>
#include <zet/ZetVariant>
#include <zet/ZetVariantImpl>
#include <zet/ZetVersion>

namespace {

int s_failures = 0;

void check(bool good, const char* what)
{
    std::printf("%s %s\n", good ? "ok    " : "FAILED", what);
    s_failures += good ? 0 : 1;
}

// A value class with a meta object, a variant kind and a factory of its own.

class Point : public zet::ZetObject
{
public:
    Point() : m_x(0), m_y(0.0) {}
    Point(int x, double y) : m_x(x), m_y(y) {}

    using zet::ZetObject::metaObject;
    zet::ZetMetaObjectConstPtr metaObject() const override;
    zet::ZetString className() const override { return L"Point"; }

    int x() const { return m_x; }
    double y() const { return m_y; }
    bool operator==(const Point& other) const { return m_x == other.m_x && m_y == other.m_y; }

private:
    friend class PointMetaObj;

    int m_x;
    double m_y;
};

std::wostream& operator<<(std::wostream& out, const Point& point)
{
    return out << L"(" << point.x() << L"," << point.y() << L")";
}

std::wistream& operator>>(std::wistream& in, Point& point)
{
    wchar_t c = 0;
    int x = 0;
    double y = 0.0;
    in >> c >> x >> c >> y >> c;
    point = Point(x, y);
    return in;
}

class PointMetaObj : public zet::ZetMetaObjectImpl<PointMetaObj, Point>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, x)
    ZET_PROPERTY(double, y)

    static zet::ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {
            ZET_ROW(x, L"X", zet::ZetMetaFlag::Editable),
            ZET_ROW(y, L"Y", zet::ZetMetaFlag::Editable),
        };
        return fill(L"Point", rows);
    }
};

zet::ZetMetaObjectConstPtr Point::metaObject() const
{
    return new PointMetaObj(this);
}

class PointVariant : public zet::ZetVariantImpl<Point>
{
public:
    using ZetVariantImpl::ZetVariantImpl;
    zet::ZetVariantIF* clone() const override { return new PointVariant(*this); }

    bool convertTo(unsigned long typeId, void* out) const override
    {
        if (typeId == zet::typeID<double>()) {
            *static_cast<double*>(out) = m_value.y();
            return true;
        }
        return ZetVariantImpl::convertTo(typeId, out);
    }
};

class PointFactory : public zet::ZetObjectFactory
{
public:
    zet::ZetString objectType() const override { return L"Point"; }
    zet::ZetObject* createObject(const std::map<zet::ZetString, zet::ZetVariant>&) const override { return new Point; }
};

class EvenValidator : public zet::ZetValidator
{
public:
    zet::ZetValidator* clone() const override { return new EvenValidator(*this); }
    bool isEqual(const zet::ZetValidator* other) const override { return dynamic_cast<const EvenValidator*>(other); }
    bool isValid(const zet::ZetVariant& value, zet::ZetTextMsg* msg) const override
    {
        const bool even = value.value<int>() % 2 == 0;
        if (!even && msg) {
            msg->setText(L"odd", L"consumer", __LINE__, zet::ZetTextMsg::Error);
        }
        return even;
    }
};

class Log : public zet::ZetTextHandler
{
public:
    void postMessage(const zet::ZetTextMsg& message) override { lines << message << L'\n'; }

    std::wostringstream lines;
};

void messages()
{
    const zet::ZetTextMsg error(L"bad", L"consumer", 7, zet::ZetTextMsg::Error);
    bool caught = false;
    try {
        zet::postMessage(error);
    } catch (const zet::ZetTextMsg& message) {
        caught = message == error;
    }
    check(caught, "the default handler's exception is caught by its type");

    caught = false;
    try {
        zet::postMessage(error);
    } catch (const std::exception& message) {
        caught = typeid(message) == typeid(zet::ZetTextMsg) && dynamic_cast<const zet::ZetObject*>(&message);
    }
    check(caught, "the exception is a standard exception and an object");

    caught = false;
    try {
        zet::ZetUnits().fromString(L"furlongs");
    } catch (const zet::ZetTextMsg& message) {
        caught = !message.text().empty();
    }
    check(caught, "an exception that the library throws past the handler is caught");

    Log* log = new Log;
    zet::ZetCoreLibMgr& manager = zet::ZetCoreLibMgr::instance();
    check(manager.initialize(log) == 0 && manager.textHandler().get() == log, "a handler of one's own is taken");
    zet::postMessage(error);
    check(log->lines.str() == L"error: bad - (consumer : 7)\n", "the handler receives the message");
    check(zet::lastError() == error, "the last error is kept");
    manager.deInitialize();
    check(static_cast<zet::ZetString>(manager.version()) == L"1.0", "the library tells its version");
}

void reflection()
{
    Point point(3, 2.5);
    const zet::ZetMetaObjectPtr meta = point.metaObject();
    check(meta && meta->properties()->propertyNames(true) == zet::ZetStrList{L"x", L"y"}, "properties are listed");
    zet::ZetVariant value;
    check(meta->getPropertyValue(L"y", value) == 0 && value.value<double>() == 2.5, "a property is read");
    check(meta->setPropertyValue(L"x", zet::ZetVariant(L"8")) == 0 && point.x() == 8,
          "a property is written from text");
    check(meta->setPropertyValue(L"z", value) == 1, "an unknown property is refused");
    check(dynamic_cast<PointMetaObj*>(meta.get()), "a meta object keeps its type");
}

void variants()
{
    check(zet::ZetVariant::registerType<Point>(L"Point", new PointVariant), "a kind is registered");
    const zet::ZetMetaType kind = zet::ZetMetaType::of<Point>();
    check(kind.type() >= zet::ZetMetaType::FirstCustom && kind.toString() == L"Point", "the kind has a number");
    const Point point(3, 2.5);
    const zet::ZetVariant variant(kind, &point);
    check(variant.value<Point>() == point, "a value comes back");
    check(variant.value<double>() == 2.5, "a conversion of one's own is used");
    check(dynamic_cast<PointVariant*>(variant.implementation().get()), "an implementation keeps its type");
    std::wstringstream stream;
    stream << variant;
    check(stream.str() == L"Point,(3,2.5)", "a value is written");
    zet::ZetVariant back;
    stream >> back;
    check(back == variant, "a value is read");

    zet::ZetObjectProxy::registerFactory(new PointFactory);
    zet::ZetObjectProxy proxy;
    proxy.setObject(point);
    const std::unique_ptr<Point> thawed = proxy.createObject<Point>();
    check(thawed && *thawed == point, "a frozen object thaws through a factory of one's own");
}

void validators()
{
    const zet::ZetMetaPropertyPtr property = PointMetaObj::staticProperties()->property(L"x", false);
    property->setValidator(zet::ZetValidatorConstPtr(new EvenValidator));
    const zet::ZetValidatorConstPtr validator = property->validator();
    zet::ZetTextMsg message(L"", 0);
    check(validator->isValid(zet::ZetVariant(4), &message), "a validator of one's own accepts");
    check(!validator->isValid(zet::ZetVariant(5), &message) && message.text() == L"odd", "and refuses with a reason");
    const zet::ZetNumValidator<short> range(5, 0, 10);
    check(range.isValid(zet::ZetVariant(10), nullptr) && !range.isValid(zet::ZetVariant(11), nullptr), "a range holds");
    check(!range.isEqual(validator.get()), "validators of different classes differ");
}

/// A tile around numbers of the caller.
zet::ZetVariant tileOf(double* numbers, unsigned long count)
{
    const zet::ZetBufferPtr buffer = new zet::ZetBuffer(count * sizeof(double), numbers, false);
    return zet::ZetEqnTile(buffer, zet::ZetDataType::Double, count);
}

void equations()
{
    double nir[] = {3.0, 1.0, 6.0};
    double red[] = {1.0, 3.0, 2.0};
    zet::ZetEqnParser parser;
    zet::ZetTextMsg message(L"", 0);
    check(parser.parse(L"(nir - red) / (nir + red)", &message), "an equation is parsed");
    parser.setValue(L"nir", tileOf(nir, 3));
    parser.setValue(L"red", tileOf(red, 3));
    const zet::ZetEqnTile index = parser.evaluate(&message).value<zet::ZetEqnTile>();
    const double* pixels = index.elements<double>();
    check(index.size() == 3 && pixels && pixels[0] == 0.5 && pixels[1] == -0.5 && pixels[2] == 0.5,
          "and evaluated over pixels");
    check(!parser.parse(L"1 +", &message) && !message.text().empty(), "a wrong one is refused with a message");
}

}  // namespace

int main()
{
    messages();
    reflection();
    variants();
    validators();
    equations();
    return s_failures == 0 ? 0 : 1;
}
