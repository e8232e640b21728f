// A server and the names that go with it: the packed form, and the two keywords that show it.
#include <gtest/gtest.h>

#include "frame/MsgUtil.h"
#include "frame/vDesignPar.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

class ServerParms : public FrameTest {};

using Names = std::vector<std::wstring>;

TEST_F(ServerParms, PackedTextsUnfold) {
    const struct {
        std::wstring Main;
        Names Others;
        std::wstring Packed;
    } kRows[] = {
        {L"srv", {}, L"3:srv"},
        {L"srv", {L"a"}, L"3:srv1:a"},
        {L"12:x", {L"", L"3:", L"due parole"}, L"4:12:x0:2:3:10:due parole"},
        {L"", {}, L"0:"},
    };
    for (const auto& Row : kRows) {
        EXPECT_EQ(MsgUtil::PackServer(Row.Main, Row.Others), Row.Packed);
        std::wstring Main = L"?";
        Names Others{L"?"};
        ASSERT_FALSE(MsgUtil::UnpackServer(Row.Packed, Main, Others));
        EXPECT_EQ(Main, Row.Main);
        EXPECT_EQ(Others, Row.Others);
    }
    std::wstring Main = L"?";
    Names Others{L"?"};
    ASSERT_FALSE(MsgUtil::UnpackServer(L"", Main, Others));
    EXPECT_EQ(Main, L"");
    EXPECT_TRUE(Others.empty());
}

TEST_F(ServerParms, WhatIsNotPackedIsRefusedAndStoresNothing) {
    for (const std::wstring_view Text : {L"srv", L"3", L"3:sr", L":srv", L"3:srv1", L"3:srv2:a", L"-1:a",
                                         L"99999999999999999999:a", L"3:srv 1:a"}) {
        std::wstring Main = L"?";
        Names Others{L"?"};
        EXPECT_TRUE(MsgUtil::UnpackServer(Text, Main, Others)) << Narrow(Text);
        EXPECT_EQ(Main, L"?");
        EXPECT_EQ(Others, Names{L"?"});
    }
}

TEST_F(ServerParms, NamesAreJoinedByZeros) {
    const struct {
        std::wstring Main;
        std::wstring Others;
        std::wstring Packed;
    } kRows[] = {
        {L"", L"", L""},
        {L"srv", L"", L"3:srv"},
        {L"srv", std::wstring(L"a\0b", 3), L"3:srv1:a1:b"},
        {L"srv", std::wstring(L"a\0b\0", 4), L"3:srv1:a1:b"},
        {L"srv", std::wstring(L"a\0\0b\0", 5), L"3:srv1:a0:1:b"},
    };
    for (const auto& Row : kRows) {
        std::wstring Result = L"prima";
        EXPECT_TRUE(Succeeds(ServerParmsSave(Row.Main, Row.Others, Result)));
        EXPECT_EQ(Narrow(Result), Narrow(Row.Packed));
    }
    std::wstring Result = L"prima";
    EXPECT_TRUE(FailsWith(ServerParmsSave(L"", std::wstring(L"a\0", 2), Result),
                          {20000, L"vDesignPar.ServerParmsSave", L"Non è stato specificato il server."}));
    EXPECT_EQ(Result, L"prima");
}

TEST_F(ServerParms, EachNameHasALine) {
    std::wstring Buffer = L"prima\r\n";
    EXPECT_TRUE(Succeeds(ServerParmsDisp(L"3:srv1:a2:bb", L"EXPORTSVR=", L"EXPORTARG=", Buffer, 2)));
    EXPECT_EQ(Narrow(Buffer),
              "prima\r\n\t\tEXPORTSVR= \"srv\"\r\n\t\tEXPORTARG= \"a\"\r\n"
              "\t\tEXPORTARG= \"bb\"\r\n");
    Buffer.clear();
    EXPECT_TRUE(Succeeds(ServerParmsDisp(L"", L"A=", L"B=", Buffer, 0)));
    EXPECT_EQ(Narrow(Buffer), "A= \"\"\r\n");
    EXPECT_TRUE(FailsWith(ServerParmsDisp(L"srv", L"A=", L"B=", Buffer, 0),
                          {20017, L"vDesignPar.ServerParmsDisp", L"Parametri errati."}));
    EXPECT_EQ(Narrow(Buffer), "A= \"\"\r\n") << "nothing is appended";
}

}  // namespace
}  // namespace kv::test
