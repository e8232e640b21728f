// A server and the names that go with it: the packed form, and the two keywords that show it; and the filter
// of texts.
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

TEST(TextFilter, ControlCharactersButTheTabBecomeBlanks) {
    for (std::uint32_t Code = 0; Code < 0x200; ++Code) {
        const std::wstring One(1, static_cast<wchar_t>(Code));
        const bool Control = Code < 0x20 || (Code >= 0x7F && Code <= 0x9F);
        EXPECT_EQ(MsgUtil::FilterText(One), Control && Code != 9 ? L" " : One) << Code;
    }
    EXPECT_EQ(MsgUtil::FilterText(L""), L"");
    EXPECT_EQ(MsgUtil::FilterText(L"a\r\nb\tc"), L"a  b\tc");
    EXPECT_EQ(MsgUtil::FilterText(std::wstring(L"a\0b", 3)), L"a b");
    EXPECT_EQ(MsgUtil::FilterText(L"\"Città\" – €"), L"\"Città\" – €");
}

TEST(TextFilter, PairsStayAndASecondPassChangesNothing) {
    // The two code units of one character, as texts hold it where characters have 16 bits.
    const std::wstring Pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDCD6)};
    EXPECT_EQ(MsgUtil::FilterText(L"\x01" + Pair + L"\x7F"), L" " + Pair + L" ");
    std::wstring All;
    for (std::uint32_t Code = 0; Code < 0x10000; ++Code) All.push_back(static_cast<wchar_t>(Code));
    const std::wstring Once = MsgUtil::FilterText(All);
    EXPECT_EQ(Once.size(), All.size());
    EXPECT_EQ(Once.substr(0xA0), All.substr(0xA0));
    EXPECT_EQ(MsgUtil::FilterText(Once), Once);
}

}  // namespace
}  // namespace kv::test
