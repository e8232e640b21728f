#include "server/vdSvr.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/Desk.h"

namespace kv::test {
namespace {

std::shared_ptr<kv::DesignTree> PlainTree() { return std::make_shared<window::TreeModel>(); }

TEST(Server, VersionAndStart) {
    TestPlatform Platform;
    RegistryServer Registry;
    vdSvr Server(&Registry, PlainTree);
    EXPECT_EQ(Server.CurrVersion(), 256);
    EXPECT_EQ(CoreUtil::Instance().Registry(), &Registry);
    EXPECT_EQ(CoreUtil::Instance().IniFile(), L"VELMIRA.INI");
    EXPECT_EQ(CoreUtil::Instance().Mode(), 3);
    EXPECT_NE(Server.DesignTree(), nullptr);
    Server.ShutDown();
    EXPECT_EQ(Server.DesignTree(), nullptr);
    Server.ShutDown();
    CoreUtil::Instance().Init(nullptr, L"", 0);
}

TEST(Server, ShowDataSetsUpTheToolBar) {
    for (const std::wstring_view Word : ClassWords()) {
        Desk On(Word);
        ASSERT_TRUE(Accepted(On.Opened));
        const std::wstring Tools = Word == L"TABLE"        ? L"FINDTAG RENUMTAG CONSTANTS "
                                   : Word == L"IMPORTPROC" ? L"FINDTAG RENUMTAG MAPTABLE "
                                   : Word == L"PROFILE"    ? L"FINDTAG RENUMTAG MAPTABLE "
                                   : Word == L"VCLIENT"    ? L"CONSTANTS "
                                                           : L"";
        std::wstring Served;
        for (const std::wstring& Tool : On.Tree->Served()) Served.append(Tool).append(L" ");
        EXPECT_EQ(Served, Tools);
    }
    class Face final : public window::TreeFace {
      public:
        explicit Face(const window::TreeModel& Shown) : Tree(Shown) {}
        bool Run(TreeCall& Call) override {
            Tools = Tree.Tools();
            for (const window::ToolButton& Button : Tree.Buttons())
                Buttons.emplace_back(std::to_wstring(Button.Bitmap) + L" " + std::wstring(Button.ToolTip) +
                                     L" " + std::to_wstring(Button.Style));
            ClassWord = Call.ClassWord;
            return false;
        }
        const window::TreeModel& Tree;
        std::vector<std::wstring> Tools;
        std::vector<std::wstring> Buttons;
        std::wstring ClassWord;
    };
    TestPlatform Platform;
    const auto Tree = std::make_shared<window::TreeModel>();
    Face Shown(*Tree);
    Tree->SetFace(&Shown);
    vdSvr Server(nullptr, [&] { return Tree; });
    const auto Object = std::make_shared<MemoryRegData>(L"MEMBER");
    RegData* Target = nullptr;
    for (int Showing = 0; Showing < 2; ++Showing) {
        ASSERT_FALSE(Server.ShowData(nullptr, Object, L"MEMBER", Target, false));
        EXPECT_EQ(Shown.Tools, (std::vector<std::wstring>{L"COPY", L"CUT", L"PASTE", L"", L"FINDTAG",
                                                          L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"}));
    }
    EXPECT_EQ(Shown.ClassWord, L"MEMBER");
    EXPECT_EQ(Shown.Buttons[0], L"0  3");
    EXPECT_EQ(Shown.Buttons[1], L"1000 Trova tag libero 0");
    EXPECT_EQ(Shown.Buttons[2], L"1001 Rinumera tags 0");
    EXPECT_EQ(Shown.Buttons[3], L"1002 Campi dalla TABLE 0");
    EXPECT_EQ(Shown.Buttons[4], L"1003 Export VB module 0");
    Tree->SetFace(nullptr);
}

TEST(Server, UnknownClassWordIsRefusedAndLeavesNoItem) {
    for (const wchar_t* Word : {L"PIPPO", L"", L"sort", L"SORT "}) {
        Desk On(Word);
        EXPECT_TRUE(Refused(On.Opened, 20000, L"vdSvr.ShowData",
                            L"Metodo sconosciuto [" + std::wstring(Word) + L"]"));
        std::wstring Buffer;
        EXPECT_TRUE(Refused(On.Try([&] { return On.Core.DispData({.CurrItem = L"PARMS"}, Buffer); }), 91,
                            L"vdSvr.DispData", L"Oggetto non impostato"));
    }
}

TEST(Server, UnknownClassWordReplacesTheItemBeforeIt) {
    Desk On(L"MEMBER");
    RegData* Target = nullptr;
    EXPECT_TRUE(On.Server.ShowData(nullptr, On.Object, L"PIPPO", Target, false));
    std::int32_t Number = 0;
    std::wstring Source, Description, HelpFile, HelpContext;
    std::int32_t System = 0;
    On.Server.LastError(Number, Source, Description, HelpFile, HelpContext, System);
    EXPECT_EQ(Number, 20000);
    EXPECT_EQ(Description, L"Metodo sconosciuto [PIPPO]");
    EXPECT_TRUE(On.Platform.Shown.empty());
    CoreUtil::Instance().ForgetError();
    EXPECT_FALSE(Accepted(On.Try([&] { return On.Core.Save(); })));
}

// Every forwarding operation on a server without an item: a failure of the server's own, shown once.
TEST(Server, OperationsWithoutAnItemFailUnderTheirOwnSource) {
    Desk On(L"MEMBER");
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Terminate(); })));
    const std::wstring P;
    Head At{.Key = L"PARMS"};
    std::wstring Text, Name, Desc, Clsid, Id, Users;
    std::int16_t Version = 0;
    ClipItem Clip{.DataObj = nullptr, .ClassWord = L""};
    TreeDll& Tree = On.Server;
    const std::map<std::wstring, std::function<bool()>> kCalls{
        {L"CopyData", [&] { return Tree.CopyData(P, At, false, Clip); }},
        {L"DeleteData", [&] { return Tree.DeleteData(P, At, false); }},
        {L"DispData", [&] { return Tree.DispData(P, At, Text); }},
        {L"EditData", [&] { return Tree.EditData(P, At, Text); }},
        {L"GetObjectInfo", [&] { return Tree.GetObjectInfo(P, Name, Desc, Version, Clsid, Id, Users); }},
        {L"LoadData", [&] { return Tree.LoadData(P); }},
        {L"MoveData", [&] { return Tree.MoveData(P, At, 1); }},
        {L"PasteData", [&] { return Tree.PasteData(P, At, Text, Clip); }},
        {L"Save", [&] { return Tree.Save(P); }},
        {L"SaveData", [&] { return Tree.SaveData(P, At, Text, Name); }},
        {L"ShowPropTable", [&] { return Tree.ShowPropTable(P, L"", L""); }},
    };
    for (const auto& [Operation, Call] : kCalls)
        EXPECT_TRUE(Refused(On.Try(Call), 91, L"vdSvr." + Operation, L"Oggetto non impostato"))
            << Narrow(Operation);
    EXPECT_FALSE(Tree.HelpShow(P, L"", L"", L""));
    bool Cancel = true;
    EXPECT_FALSE(Tree.Quit(Cancel));
    EXPECT_FALSE(Cancel);
    On.Platform.Shown.clear();
    Tree.TlbrButtonClick(L"FINDTAG", L"", L"", L"");
    ASSERT_EQ(On.Platform.Shown.size(), 1U);
    EXPECT_EQ(On.Platform.Shown[0].Source, L"vdSvr.TlbrButtonClick");
}

TEST(Server, TerminateHandsTheObjectBack) {
    Desk On(L"MEMBER");
    std::shared_ptr<RegData> Back;
    EXPECT_FALSE(On.Server.Terminate(L"", Back));
    EXPECT_EQ(Back, On.Object);
}

TEST(Server, AnErrorIsShownOnceWhateverTheScreenDoes) {
    Desk On(L"MEMBER");
    On.Platform.FailOnShow = true;
    EXPECT_FALSE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PIPPO=1")));
    EXPECT_EQ(On.Platform.Shown.size(), 1U);
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
}

// A stored object that fails in every way a host's may.
class FailingObject final : public RegData {
  public:
    std::wstring Name() const override { return L"ROTTO"; }
    std::wstring Clsid() const override { return L"MEMBER"; }
    std::wstring UserList() const override { return {}; }
    void SetSaving(bool) override {}
    const RegObject& Read() override {
        if (OnRead) OnRead();
        return Content;
    }
    void Write(RegObject) override {
        if (OnWrite) OnWrite();
    }
    RegObject Content;
    std::function<void()> OnRead;
    std::function<void()> OnWrite;
};

TEST(Server, WhatAnObjectThrowsIsAFailureWithItsSource) {
    TestPlatform Platform;
    const auto Object = std::make_shared<FailingObject>();
    const struct {
        std::function<void()> Throw;
        std::int32_t Number;
        const wchar_t* Text;
    } kRows[] = {
        {[] { Raise(20022, L"Violazione."); }, 20022, L"Violazione."},
        {[] { throw std::bad_alloc(); }, 7, L"Memoria esaurita"},
        {[] { static_cast<void>(std::vector<int>{}.at(1)); }, 9, L"Indice non compreso nell'intervallo"},
        {[] { throw 5; }, 5, L"Chiamata o argomento non valido"},
    };
    for (const auto& Row : kRows) {
        vdSvr Server(nullptr, PlainTree);
        std::wstring Buffer;
        Platform.Shown.clear();
        Object->OnRead = Row.Throw;
        EXPECT_TRUE(Server.Export(Object, L"MEMBER", Buffer));
        ASSERT_EQ(Platform.Shown.size(), 1U);
        EXPECT_EQ(Platform.Shown[0].Number, Row.Number);
        EXPECT_EQ(Platform.Shown[0].Source, L"ParmItem.Load");
        EXPECT_EQ(Platform.Shown[0].Description, Row.Text);
        EXPECT_EQ(Buffer, L"");
        Object->OnRead = nullptr;
        EXPECT_FALSE(Server.Export(Object, L"MEMBER", Buffer));
    }
}

TEST(Server, ExportShowsTheWaitPointerAndPutsItBack) {
    TestPlatform Platform;
    vdSvr Server(nullptr, PlainTree);
    std::wstring Buffer;
    EXPECT_TRUE(Server.Export(std::make_shared<MemoryRegData>(), L"PIPPO", Buffer));
    EXPECT_EQ(Platform.Pointers, (std::vector<std::int32_t>{11, 0}));
    ASSERT_EQ(Platform.Shown.size(), 1U);
    EXPECT_EQ(Platform.Shown[0].Source, L"vdSvr.Export");
    EXPECT_TRUE(Server.Export(nullptr, L"MEMBER", Buffer));
    EXPECT_EQ(Platform.Shown.back().Number, 91);
}

TEST(Server, ExportAppends) {
    TestPlatform Platform;
    vdSvr Server(nullptr, PlainTree);
    std::wstring Buffer = L"prima\r\n";
    EXPECT_FALSE(Server.Export(std::make_shared<MemoryRegData>(L"MEMBER"), L"MEMBER", Buffer));
    EXPECT_EQ(Buffer.rfind(L"prima\r\n\tBEGIN PARMS\r\n", 0), 0U);
}

TEST(Server, ImportOfAClassWithoutAReaderDoesNothing) {
    TestPlatform Platform;
    vdSvr Server(nullptr, PlainTree);
    const auto Object = std::make_shared<MemoryRegData>(L"MEMBER");
    std::wstring Buffer = L"BEGIN PARMS\r\nEND PARMS\r\n";
    EXPECT_FALSE(Server.Import(Object, L"MEMBER", Buffer));
    EXPECT_FALSE(Object->Written());
    EXPECT_TRUE(Server.Import(Object, L"PIPPO", Buffer));
    ASSERT_EQ(Platform.Shown.size(), 1U);
    EXPECT_EQ(Platform.Shown[0].Source, L"vdSvr.Import");
    EXPECT_EQ(Platform.Shown[0].Description, L"Metodo sconosciuto [PIPPO]");
}

TEST(Server, AMakerWithoutATreeLeavesAServerThatRefuses) {
    TestPlatform Platform;
    vdSvr Server(nullptr, []() -> std::shared_ptr<kv::DesignTree> { throw std::bad_alloc(); });
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdSvr.vdSvr");
    RegData* Target = nullptr;
    EXPECT_TRUE(
        Server.ShowData(nullptr, std::make_shared<MemoryRegData>(L"MEMBER"), L"MEMBER", Target, false));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 91);
    CoreUtil::Instance().ForgetError();
}

TEST(Server, SaveSetsTheFlagOfTheObjectFirst) {
    Desk On(L"MEMBER");
    EXPECT_FALSE(On.Object->Saving());
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_TRUE(On.Object->Saving());
}

}  // namespace
}  // namespace kv::test
