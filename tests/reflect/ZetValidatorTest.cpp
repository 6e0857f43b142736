#include <zet/ZetValidator>

#include <gtest/gtest.h>

#include <zet/ZetEnumValidator>
#include <zet/ZetMetaProperty>
#include <zet/ZetNumValidator>
#include <zet/ZetObjectFactory>
#include <zet/ZetTextMsg>
#include <zet/ZetVariant>

namespace zet {
namespace {

/// A caller's own validator: accepts texts of even length.
class EvenLength : public ZetValidator
{
public:
    ZetValidator* clone() const override { return new EvenLength(*this); }
    bool isEqual(const ZetValidator* other) const override { return dynamic_cast<const EvenLength*>(other) != nullptr; }
    bool isValid(const ZetVariant& value, ZetTextMsg* msg) const override
    {
        if (value.value<ZetString>().size() % 2 == 0) {
            return true;
        }
        if (msg) {
            msg->setText(L"odd", L"EvenLength", 1, 0);
        }
        return false;
    }
};

TEST(ZetValidator, isAnInterfaceForCallers)
{
    ZetMetaProperty property(L"even", ZetMetaType::String, 0, L"", L"", 0);
    property.setValidator(new EvenLength);
    const ZetValidatorConstPtr validator = property.validator();
    ZetTextMsg message(L"", 0);
    EXPECT_TRUE(validator->isValid(ZetVariant(L"ab"), &message));
    EXPECT_FALSE(validator->isValid(ZetVariant(L"abc"), nullptr));
    EXPECT_FALSE(validator->isValid(ZetVariant(L"abc"), &message));
    EXPECT_EQ(message.text(), L"odd");
    EXPECT_EQ(validator->className(), L"ZetValidator");
}

TEST(ZetValidator, classesAreNotEqual)
{
    const EvenLength even;
    const ZetEnumValidator keys((ZetEnum()));
    const ZetNumValidator<int> number;
    EXPECT_FALSE(keys.isEqual(&number));
    EXPECT_FALSE(number.isEqual(&keys));
    EXPECT_FALSE(number.isEqual(&even));
    EXPECT_FALSE(even.isEqual(&keys));
}

class NoFactory : public ZetObjectFactory
{
public:
    ZetString objectType() const override { return L"Nothing"; }
    ZetObject* createObject(const std::map<ZetString, ZetVariant>&) const override { return nullptr; }
};

TEST(ZetObjectFactory, className)
{
    EXPECT_EQ(NoFactory().className(), L"ZetObjectFactory");
}

}  // namespace
}  // namespace zet
