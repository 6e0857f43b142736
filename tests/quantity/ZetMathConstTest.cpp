#include <zet/ZetMathConst>

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetEnum>
#include <zet/ZetScalar>
#include <zet/ZetVariant>

#include "support/ZetPrint"

namespace zet {
namespace {

struct Row
{
    int type;
    const wchar_t* name;
    double value;
    const wchar_t* units;
};

const Row kConstants[] = {
    {0, L"m_pi", 3.141592653589793, L""},
    {1, L"m_e", 2.718281828459045, L""},
    {2, L"m_phi", 1.618033988749895, L""},
    {3, L"m_Eu", 0.5772156649015329, L""},
    // the imaginary unit has no real part
    {4, L"m_i", 0.0, L""},
    {5, L"m_k", 1.3806504e-23, L"m^2*kg/(s^2*K)"},
    {6, L"m_c", 299792458.0, L"m/s"},
    {7, L"m_q", 1.602176487e-19, L"s*A"},
    {8, L"m_SB", 5.6704e-08, L"kg/(s^3*K^4)"},
    {9, L"m_h", 6.62606896e-34, L"m^2*kg/s"},
    {10, L"m_Rh", 10973731.568525, L"m^-1"},
    {11, L"m_Na", 6.02214179e+23, L""},
    {12, L"m_G", 9.81, L"m/s^2"},
};

TEST(ZetMathConst, constants)
{
    for (const Row& row : kConstants) {
        SCOPED_TRACE(toMultibyte(row.name));
        const ZetMathConst constant(row.name);
        EXPECT_EQ(constant.type(), row.type);
        EXPECT_EQ(constant, ZetMathConst(static_cast<ZetMathConst::Type>(row.type)));
        EXPECT_EQ(ZetMathConst::fromString(row.name), row.type);
        EXPECT_TRUE(ZetMathConst::isValid(row.name));
        EXPECT_EQ(constant.toString(), row.name);
        EXPECT_EQ(constant.value().real(), row.value);
        EXPECT_EQ(constant.value().imag(), row.type == 4 ? 1.0 : 0.0);
        EXPECT_EQ(ZetString(constant.value().units()), row.units);
        EXPECT_EQ(static_cast<ZetScalar>(constant).value(), constant.value().value());
        EXPECT_EQ(static_cast<double>(constant), row.value);
    }
}

TEST(ZetMathConst, enumeratorsHaveTheirNumbers)
{
    const ZetMathConst::Type types[] = {
        ZetMathConst::Pi,
        ZetMathConst::E,
        ZetMathConst::Phi,
        ZetMathConst::EulerMascheroni,
        ZetMathConst::ImaginaryUnit,
        ZetMathConst::Boltzmann,
        ZetMathConst::SpeedOfLight,
        ZetMathConst::ElementaryCharge,
        ZetMathConst::StefanBoltzmann,
        ZetMathConst::Planck,
        ZetMathConst::Rydberg,
        ZetMathConst::Avogadro,
        ZetMathConst::GravityAcceleration,
        ZetMathConst::Invalid,
    };
    for (std::size_t i = 0; i < std::size(types); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(types[i]), i);
    }
}

TEST(ZetMathConst, invalidValues)
{
    for (const int number : {13, 14, 99, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const ZetMathConst constant(static_cast<ZetMathConst::Type>(number));
        EXPECT_EQ(constant.type(), ZetMathConst::Invalid);
        EXPECT_EQ(constant.toString(), L"");
        EXPECT_EQ(constant.value().value(), std::complex<double>());
        EXPECT_EQ(constant.value().units(), ZetUnits());
    }
    for (const wchar_t* name : {L"", L"pi", L"M_PI", L"m_pi ", L"m_g"}) {
        EXPECT_EQ(ZetMathConst(name).type(), ZetMathConst::Invalid);
        EXPECT_FALSE(ZetMathConst::isValid(name));
    }
    EXPECT_EQ(ZetMathConst().type(), ZetMathConst::Invalid);
}

TEST(ZetMathConst, table)
{
    const ZetEnum& table = ZetMathConst::enumerator();
    EXPECT_EQ(&table, &ZetMathConst::enumerator());
    EXPECT_EQ(table.items().size(), std::size(kConstants));
    ZetStrList names;
    for (const Row& row : kConstants) {
        names.append(row.name);
        // one is stored as a plain double, the others with their units
        EXPECT_EQ(table.data(row.type).type().type(), row.type == 0 ? ZetMetaType::Double : ZetMetaType::Scalar);
    }
    EXPECT_EQ(ZetMathConst::allKeys(), names);
}

TEST(ZetMathConst, streams)
{
    std::wistringstream in(L"  m_c m_h\nno m_e");
    std::wostringstream out;
    ZetMathConst constant(ZetMathConst::Pi);
    for (int i = 0; i < 4; ++i) {
        in >> constant;
        out << L"[" << constant << L"]";
    }
    EXPECT_EQ(out.str(), L"[m_c][m_h][][m_e]");
    EXPECT_EQ(constant.className(), L"ZetMathConst");
    EXPECT_FALSE(constant.isMetaObject());
}

}  // namespace
}  // namespace zet
