#include <zet/ZetRational>

#include <istream>
#include <ostream>

#include <zet/ZetRationalMetaObj>

#include "core/ZetUnitInit"
#include "reflect/ZetElementMetaObj"

namespace zet {
namespace {

template <class T>
std::wostream& write(std::wostream& out, const ZetRational<T>& rational)
{
    return out << L"(" << rational.numerator() << L"," << rational.denominator() << L")";
}

template <class T>
std::wistream& read(std::wistream& in, ZetRational<T>& rational)
{
    wchar_t punctuation = 0;
    T numerator = 0;
    T denominator = 1;
    if (in >> punctuation >> numerator >> punctuation >> denominator >> punctuation) {
        rational = ZetRational<T>(numerator, denominator);
    }
    return in;
}

}  // namespace

ZetMetaObjectPtr internal::rationalMetaObj(const void* object, unsigned long elementId)
{
    return elementMetaObj<ZetRationalMetaObj, ZetRational>(object, elementId);
}

std::wostream& operator<<(std::wostream& out, const ZetRational<long>& rational)
{
    return write(out, rational);
}

std::wostream& operator<<(std::wostream& out, const ZetRational<unsigned long>& rational)
{
    return write(out, rational);
}

std::wistream& operator>>(std::wistream& in, ZetRational<long>& rational)
{
    return read(in, rational);
}

std::wistream& operator>>(std::wistream& in, ZetRational<unsigned long>& rational)
{
    return read(in, rational);
}

}  // namespace zet
