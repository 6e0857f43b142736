#include <zet/ZetURI>

#include <type_traits>

#include <gtest/gtest.h>

namespace zet {
namespace {

TEST(ZetURI, keepsItsTextAsItIs)
{
    EXPECT_EQ(ZetURI().className(), L"ZetURI");
    EXPECT_EQ(ZetURI().text(), L"");
    for (const wchar_t* text : {L"http://example.org/a%20b?c=d#e", L"  :::/%zz\\ ", L"file:///\x20ac", L""}) {
        const ZetURI uri{ZetString(text)};
        EXPECT_EQ(uri.text(), text);
        ZetURI copy(uri);
        EXPECT_EQ(copy.text(), text);
        ZetURI assigned(L"before");
        assigned = uri;
        EXPECT_EQ(assigned.text(), text);
        assigned = *&assigned;
        EXPECT_EQ(assigned.text(), text);
    }
}

TEST(ZetURI, isNoPlainText)
{
    EXPECT_FALSE((std::is_convertible<ZetString, ZetURI>::value));
    EXPECT_FALSE((std::is_convertible<ZetURI, ZetString>::value));
    EXPECT_FALSE(ZetURI().isMetaObject());
}

}  // namespace
}  // namespace zet
