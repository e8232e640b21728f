#include <gtest/gtest.h>

#include "frame/vdbInclude.h"
#include "records/ParmItem.h"
#include "tests/support/Desk.h"
#include "window/WindowCore.h"

namespace kv::test {
namespace {

TEST(SectionWords, StandBeforeTheFirstBlankOrHyphen) {
    EXPECT_EQ(window::SectionWord(L"PARMS"), L"PARMS");
    EXPECT_EQ(window::SectionWord(L"PARMS 12"), L"PARMS");
    EXPECT_EQ(window::SectionWord(L"FIELDPARMS-17 18"), L"FIELDPARMS");
    EXPECT_EQ(window::SectionWord(L"CONSTANTS-FIELDS-17"), L"CONSTANTS");
    EXPECT_EQ(window::SectionWord(L""), L"");
    EXPECT_TRUE(window::IsLeafKey(L"FIELDPARMS-17 18"));
    EXPECT_FALSE(window::IsLeafKey(L"FIELDPARMS-17"));
}

class HeadTest : public ::testing::Test {
  protected:
    HeadTest() {
        On.Tree->AddNode({.Relative = kRootKey, .Relationship = 4, .Key = L"FIELDS", .Kind = L"RG"});
        for (const wchar_t* Key : {L"FIELDS-1", L"FIELDS-2"}) {
            On.Tree->AddNode({.Relative = L"FIELDS", .Relationship = 4, .Key = Key, .Kind = L"RDM"});
        }
        On.Tree->AddNode({.Relative = L"FIELDS-2", .Relationship = 4, .Key = L"FIELDPARMS-3"});
        On.Tree->AddNode({.Relative = L"FIELDPARMS-3", .Relationship = 4, .Key = L"FIELDPARMS-3 4"});
        On.Tree->AddNode(
            {.Relative = L"FIELDS-2", .Relationship = 4, .Key = L"FIELDCAPTION-5", .Kind = L"R"});
        On.Tree->AddNode({.Relative = L"FIELDCAPTION-5", .Relationship = 4, .Key = L"FIELDCAPTION-5 6"});
        On.Tree->AddNode({.Relative = L"FIELDCAPTION-5", .Relationship = 4, .Key = L"FIELDCAPTION-5 7"});
    }
    std::string Of(const window::Selection& At) const {
        const Head Made = On.Core.HeadOf(At);
        return Narrow(Made.CurrFolder + L"/" + Made.CurrItem + L"/" + std::to_wstring(Made.Index) + L"/" +
                      Made.Key);
    }
    Desk On{L"MEMBER"};
};

TEST_F(HeadTest, OfFoldersAndLeaves) {
    EXPECT_EQ(Of({.CurrItem = L"ROOT"}), "ROOT/ROOT/0/ROOT");
    EXPECT_EQ(Of({.CurrItem = L"PARMS"}), "PARMS/PARMS/0/PARMS");
    EXPECT_EQ(Of({.CurrItem = L"FIELDS"}), "FIELDS/FIELDS/0/FIELDS");
    EXPECT_EQ(Of({.CurrItem = L"FIELDS-2"}), "FIELDS-2/FIELDS-2/2/FIELDS");
    EXPECT_EQ(Of({.CurrItem = L"FIELDPARMS-3"}), "FIELDPARMS-3/FIELDPARMS-3/0/FIELDPARMS");
    EXPECT_EQ(Of({.CurrItem = L"FIELDPARMS-3 4"}), "FIELDPARMS-3/FIELDPARMS-3 4/0/FIELDPARMS");
    EXPECT_EQ(Of({.CurrItem = L"FIELDCAPTION-5 7"}), "FIELDCAPTION-5/FIELDCAPTION-5 7/2/FIELDCAPTION");
}

TEST_F(HeadTest, CanBeOverridden) {
    EXPECT_EQ(Of({.CurrItem = L"FIELDS-2", .CurrFolder = L"X", .Index = 9, .Key = L""}), "X/FIELDS-2/9/");
}

TEST(WindowCoreTest, ModifiedFollowsSaveDataAndSave) {
    Desk On(L"MEMBER");
    const std::wstring Key = On.Leaf(L"PARMS");
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_FALSE(Accepted(On.Put(Key, L"PIPPO=1")));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(On.Put(Key, L"PASSWORD= A")));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_FALSE(Accepted(On.Put(Key, L"PIPPO=1")));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST(WindowCoreTest, CopyWritesTheClipboardFile) {
    Desk On(L"MEMBER");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PASSWORD= SEGRETO")));
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"PARMS"}, true, Word); })));
    RegObject Target;
    std::wstring Name;
    std::wstring Path;
    ASSERT_FALSE(ClipboardLoad(Target, Name, Path, 1));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Path, (On.Platform.Folder / "KVDSCLP.TMP").wstring());
    ASSERT_NE(Target.Child(L"Text"), nullptr);
    EXPECT_EQ(Target.Child(L"Text")->Text, L"SEGRETO");

    MemoryRegData Read(L"MEMBER", Target);
    ParmItem Loaded;
    ASSERT_FALSE(Loaded.Load(Read));
    EXPECT_EQ(Loaded.Text, L"SEGRETO");
    EXPECT_EQ(Loaded.Version, 3);
}

TEST(WindowCoreTest, ACopyThatCannotBeWrittenLeavesTheClipboard) {
    Desk On(L"MEMBER");
    std::wstring Word = L"?";
    std::filesystem::create_directory(On.Platform.Folder / "KVDSCLP.TMP");
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.CopyData({.CurrItem = L"PARMS"}, true, Word); }), 75,
                        L"vdbInclude.ClipboardStore",
                        L"Impossibile creare il file " + (On.Platform.Folder / "KVDSCLP.TMP").wstring()));
    EXPECT_EQ(On.Clipboard.DataObj, nullptr);
}

TEST(WindowCoreTest, PasteWithAnEmptyClipboardIsRefused) {
    Desk On(L"MEMBER");
    std::wstring Key;
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.PasteData({.CurrItem = L"PARMS"}, std::nullopt, Key); }),
                        20000, L"vdSvr.PasteData",
                        L"I dati memorizzati sono di una classe diversa da MEMBER"));
}

TEST(WindowCoreTest, APasteThatCannotBeLoadedLeavesTheObjectAsItWas) {
    Desk On(L"SORT");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"NOMASK= TRUE")));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"NOTABLE= TRUE")));  // not saved, and not lost
    const RegObject Before = On.Object->Read();
    const std::wstring Shown = On.Text(On.Leaf(L"PARMS"));
    RegObject Bad = Desk::Named(L"ALTRO");
    Bad.SetValue(L"Switches", std::wstring(L"99999999999"));
    On.Clipboard = {.DataObj = std::make_shared<MemoryRegData>(L"SORT", Bad), .ClassWord = L"SORT"};
    std::wstring Key;
    EXPECT_TRUE(
        Refused(On.Try([&] { return On.Core.PasteData({.CurrItem = On.Leaf(L"PARMS")}, std::nullopt, Key); }),
                6, L"SortRecord.Load", L"Overflow"));
    EXPECT_EQ(On.Object->Read(), Before);
    EXPECT_EQ(On.Text(On.Leaf(L"PARMS")), Shown);
    EXPECT_TRUE(On.Tree->Modified());
}

TEST(WindowCoreTest, PasteDoesNotStore) {
    Desk On(L"MEMBER");
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_TRUE(On.Object->Saving());
    On.Clipboard = {.DataObj = std::make_shared<MemoryRegData>(L"MEMBER", Desk::Named(L"ALTRO")),
                    .ClassWord = L"MEMBER"};
    std::wstring Key;
    ASSERT_TRUE(Accepted(
        On.Try([&] { return On.Core.PasteData({.CurrItem = On.Leaf(L"PARMS")}, std::nullopt, Key); })));
    EXPECT_FALSE(On.Object->Saving());
    EXPECT_EQ(On.Object->Name(), L"PROVA");
}

TEST(WindowCoreTest, LoadingAnewDoesNotRepeatTheValueWords) {
    Desk On(L"IMPORT");
    const std::wstring Before = On.Offered();
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(On.Offered(), Before);
}

TEST(WindowCoreTest, ANodeThatIsNotInTheTreeIsHandedOnAsItStands) {
    Desk On(L"MEMBER");
    std::wstring Buffer;
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = L"FIELDS 99"}, Buffer); })));
    EXPECT_EQ(Buffer, L"");
}

}  // namespace
}  // namespace kv::test
