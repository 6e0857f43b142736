#include <zet/ZetTextHandler>

#include <type_traits>

#include <gtest/gtest.h>

#include <zet/ZetTextMsg>

#include "support/ZetPrint"

namespace zet {
namespace {

class Quiet : public ZetTextHandler
{
public:
    void postMessage(const ZetTextMsg&) override {}
};

TEST(ZetTextHandler, knowsItsName)
{
    EXPECT_EQ(Quiet().className(), L"ZetTextHandler");
    EXPECT_EQ(QorDefTextHandler().className(), L"ZetTextHandler");
}

TEST(ZetTextHandler, isAbstractAndShared)
{
    static_assert(std::is_abstract_v<ZetTextHandler>);
    static_assert(std::is_base_of_v<ZetObject, ZetTextHandler> && std::is_base_of_v<ZetRefCounted, ZetTextHandler>);
    static_assert(sizeof(QorDefTextHandler) == sizeof(Quiet));
}

TEST(QorDefTextHandler, throwsACopyOfAnError)
{
    QorDefTextHandler handler;
    const ZetTextMsg error(L"bad", L"File", 3, ZetTextMsg::Error);
    try {
        handler.postMessage(error);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ZetTextMsg& caught) {
        EXPECT_EQ(caught, error);
        EXPECT_NE(&caught, &error);
    }
}

TEST(QorDefTextHandler, dropsEveryOtherKind)
{
    QorDefTextHandler handler;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    for (const int kind : {1, 2, 3, 4, 7, -1}) {
        EXPECT_NO_THROW(handler.postMessage(ZetTextMsg(L"note", kind)));
    }
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace zet
