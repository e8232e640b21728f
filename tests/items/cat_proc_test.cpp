// The catalogue procedure: its parameters and its components, whose names Save alone wants to be different.
#include <gtest/gtest.h>

#include "items/services/diCatProc.h"
#include "tests/items/Reading.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"ParmEditor.SaveCatProc";
constexpr std::wstring_view kComponentSource = L"ParmEditor.SaveCatProcField";
constexpr std::wstring_view kSameName = L"Due elementi della procedura hanno lo stesso nome.";

RegObject Procedure(std::vector<RegObject> Components) {
    return WithList(With(Desk::Named(L"PROVA"), {{L"Catalogue", RegText(L"GENERALE")},
                                                 {L"Retrieval", RegText(L"BIBLIO")},
                                                 {L"SourcePath", RegText(L"C:\\Dati\\in")},
                                                 {L"TargetPath", RegText(L"D:\\Base")},
                                                 {L"LogFile", RegText(L"notte.log")},
                                                 {L"MirrorOf", RegText(L"Altra")}}),
                    L"Fields", std::move(Components));
}
RegObject Procedure() {
    return Procedure({Element(21, L"Carico"), Element(22, L"Indici"), Element(23, L"Chiusura")});
}

class CatProc : public ::testing::Test {
  protected:
    Desk On{L"CATPROC", Procedure()};

    std::wstring Node(std::size_t Nth) const { return KeyBelow(On, L"FIELDS", Nth); }

    // The names as they are listed; tree and list stand in one order.
    std::vector<std::wstring> Names() {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(Each.Name);
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Found);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"CATPROC", On.Object->Read()).Picture()));
        return Found;
    }
};

using Listed = std::vector<std::wstring>;

TEST_F(CatProc, EmptyTree) {
    Desk Empty(L"CATPROC");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  FIELDS \"Componenti\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Offered(), L"");
    EXPECT_EQ(
        Narrow(Empty.Exported()),
        Narrow(Lines({L"BEGIN CATPROC", L"BEGIN PARMS", L"CATALOGUE= \"\"", L"RETRIEVAL= \"\"",
                      L"SOURCEPATH= \"\"", L"TARGETPATH= \"\"", L"LOGFILE= \"\"", L"MIRROROF= \"\"",
                      L"'[ID= 7]", L"'[NAME= PROVA]", L"'[VERSION= 3]", L"END PARMS", L"END CATPROC"})));
}

TEST_F(CatProc, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  FIELDS \"Componenti\" 12,11 RG\n"
                                           L"    FIELDS # \"Carico\" 9,9\n"
                                           L"    FIELDS # \"Indici\" 9,9\n"
                                           L"    FIELDS # \"Chiusura\" 9,9\n"));
    EXPECT_TRUE(On.Tree->Served().empty());
}

TEST_F(CatProc, SectionTexts) {
    EXPECT_TRUE(MatchesGolden("section/CATPROC.full.txt", On.Text(On.Leaf(L"PARMS"))));
    Desk Empty(L"CATPROC");
    EXPECT_TRUE(MatchesGolden("section/CATPROC.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    EXPECT_EQ(Narrow(On.Text(Node(2))),
              Narrow(Lines({L"NAME= \"Indici\"", L"'[ID= 22]", L"'[NAME= Indici]", L"'[VERSION= 0]"})));
    ExpectFixpoint(On, On.Leaf(L"PARMS"));
    ExpectFixpoint(On, Node(2));
    EXPECT_EQ(On.Text(L"FIELDS"), L"") << "the folder stands for no component";
}

TEST_F(CatProc, EveryParameter) {
    ASSERT_TRUE(Accepted(On.Put(
        On.Leaf(L"PARMS"),
        Lines({L"MIRROROF= \"La Città\"", L"LOGFILE= C:\\Log.txt", L"TARGETPATH= \"FILE:D:\\Base;C:\\Temp\"",
               L"SOURCEPATH= in", L"RETRIEVAL= \"base è\"", L"CATALOGUE= ragazzi"}))));
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(TextOf(Saved, L"Catalogue"), L"RAGAZZI");
    EXPECT_EQ(TextOf(Saved, L"Retrieval"), L"BASE È");
    EXPECT_EQ(TextOf(Saved, L"SourcePath"), L"in");
    EXPECT_EQ(TextOf(Saved, L"TargetPath"), L"FILE:D:\\Base;C:\\Temp");
    EXPECT_EQ(TextOf(Saved, L"LogFile"), L"C:\\Log.txt");
    EXPECT_EQ(TextOf(Saved, L"MirrorOf"), L"La Città");
    EXPECT_EQ(Saved.Name, L"PROVA");
    EXPECT_EQ(ListOf(Saved, L"Fields").size(), 3U) << "the components stay";
}

TEST_F(CatProc, WhatATextLeavesOutIsCleared) {
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"'niente\r\n\r\n;\r\n*")));
    const RegObject& Saved = SavedBy(On);
    for (const wchar_t* Property :
         {L"Catalogue", L"Retrieval", L"SourcePath", L"TargetPath", L"LogFile", L"MirrorOf"})
        EXPECT_EQ(TextOf(Saved, Property), L"") << Narrow(Property);
    EXPECT_EQ(ListOf(Saved, L"Fields").size(), 3U);
}

TEST_F(CatProc, RefusalsOfTheParameters) {
    ExpectRefusals(On, On.Leaf(L"PARMS"), kSource,
                   {
                       {L"CATALOGUE= A\r\nCATALOGUE= B", L"Ripetizone del parametro CATALOGUE=.", 2},
                       {L"MIRROROF=\r\n\r\nMIRROROF=", L"Ripetizone del parametro MIRROROF=.", 3},
                       {L"catalogue= A", L"Parametro non riconosciuto: catalogue=A", 1},
                       {L"LOGFILE= a\r\nNAME= A", L"Parametro non riconosciuto: NAME=A", 2},
                       {L"FLAGS= NONE", L"Parametro non riconosciuto: FLAGS=NONE", 1},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(On.Leaf(L"PARMS"), L"LOGFILE= x\r\nRETRIEVAL", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: RETRIEVAL.", 2));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(CatProc, RefusalsOfAComponent) {
    ExpectRefusals(On, Node(1), kComponentSource,
                   {
                       {L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                       {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                       {L"NAME= A\r\nTEXT= A", L"Parametro non riconosciuto: TEXT=A", 2},
                   });
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"Carico");
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(CatProc, AComponentIsRenamedWithItsLeaf) {
    const std::wstring Key = Node(2);
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= \"Indici a città\"")));
    EXPECT_EQ(Node(2), Key);
    EXPECT_EQ(On.Tree->NodeText(Key), L"Indici a città");
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Indici a città", L"Chiusura"}));
    EXPECT_EQ(ListOf(On.Object->Read(), L"Fields")[1].Id, 22);
    ASSERT_TRUE(Accepted(On.Put(Key, L"'niente")));
    EXPECT_EQ(Names()[1], L"Indici a città") << "the name is no parameter: a text without it keeps it";
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME=")));
    EXPECT_EQ(Names(), (Listed{L"Carico", L"", L"Chiusura"}));
}

TEST_F(CatProc, EqualNamesAreRefusedAtSaveOnly) {
    for (const bool Strict : {true, false}) ASSERT_TRUE(Accepted(On.Put(Node(3), L"NAME= Carico", Strict)));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (Listed{L"Carico", L"Indici", L"Carico"}));
    const RegObject Before = On.Object->Read();
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diCatProc.Save", kSameName));
    EXPECT_TRUE(On.Object->Read() == Before) << "nothing is written";
    EXPECT_TRUE(On.Tree->Modified());
    std::wstring Word;
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); }), 20000,
                        L"diCatProc.Save", kSameName));
    ASSERT_TRUE(Accepted(On.Put(Node(3), L"NAME= carico")));
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Indici", L"carico"})) << "compared as they are written";
}

TEST_F(CatProc, AStoredProcedureWithEqualNamesLoadsAndIsEdited) {
    Desk Twice(L"CATPROC", Procedure({Element(1, L"A"), Element(2, L"B"), Element(3, L"A")}));
    ASSERT_TRUE(Accepted(Twice.Opened));
    ASSERT_TRUE(Accepted(Twice.Put(KeyBelow(Twice, L"FIELDS", 2), L"NAME= C")));
    EXPECT_EQ(CaptionsBelow(Twice, L"FIELDS"), (Listed{L"A", L"C", L"A"}));
    EXPECT_TRUE(Refused(Twice.Try([&] { return Twice.Core.Save(); }), 20000, L"diCatProc.Save", kSameName));
    ASSERT_TRUE(Accepted(DeleteAt(Twice, KeyBelow(Twice, L"FIELDS", 1))));
    EXPECT_EQ(ListOf(SavedBy(Twice), L"Fields").size(), 2U);
}

TEST_F(CatProc, ANewComponentGoesLastAndHasNoName) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(1), Made)));
    EXPECT_EQ(Made, Node(4)) << "also where another one is selected";
    EXPECT_EQ(Made.rfind(L"FIELDS ", 0), 0U);
    EXPECT_EQ(On.Tree->NodeText(Made), L"");
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Indici", L"Chiusura", L""}));
    EXPECT_NE(ListOf(On.Object->Read(), L"Fields")[3].Id, 0);
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diCatProc.Save", kSameName))
        << "two without a name have the same one";
    ASSERT_TRUE(Accepted(On.Put(Made, L"NAME= \"Avviso\"")));
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Indici", L"Chiusura", L"", L"Avviso"}));
    EXPECT_EQ(On.Platform.Beeps, 0);
}

TEST_F(CatProc, AFurtherLeafOfTheParametersIsNamelessAndBeeps) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"PARMS", Made)));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_EQ(Made, KeyBelow(On, L"PARMS", 2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"");
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(On.Text(Made), On.Text(On.Leaf(L"PARMS")));
}

TEST_F(CatProc, ComponentsMove) {
    const std::wstring Old = Node(3);
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_FALSE(On.Tree->HasNode(Old));
    EXPECT_EQ(Made, Node(2));
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Chiusura", L"Indici"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Node(1), 0, Made)));
    EXPECT_EQ(Names(), (Listed{L"Chiusura", L"Carico", L"Indici"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Node(2), -1, Made)));
    EXPECT_EQ(Made, Node(3));
    EXPECT_EQ(Names(), (Listed{L"Chiusura", L"Indici", L"Carico"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(3), -1, Made)));
    EXPECT_EQ(Names(), (Listed{L"Chiusura", L"Indici", L"Carico"}));
}

TEST_F(CatProc, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Chiusura"}));
    for (const std::int32_t Index : {3, -1, 2147483647})
        EXPECT_TRUE(
            Refused(On.Try([&] { return On.Core.DeleteData({.CurrItem = Node(1), .Index = Index}, false); }),
                    9, L"diCatProc.DeleteData", L"Indice non compreso nell'intervallo"));
    EXPECT_EQ(Names(), (Listed{L"Carico", L"Chiusura"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(1), true)));
    EXPECT_EQ(Names(), (Listed{}));
    EXPECT_TRUE(Accepted(DeleteAt(On, On.Leaf(L"PARMS"), true)));
    EXPECT_EQ(TextOf(SavedBy(On), L"Catalogue"), L"GENERALE");
}

TEST_F(CatProc, Export) { EXPECT_TRUE(MatchesGolden("export/CATPROC.txt", On.Exported())); }

TEST_F(CatProc, AnExportTakesThePositionThatItIsGiven) {
    diCatProc Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    for (std::int32_t At = 1; At <= 3; ++At) {
        const Listed Given{L"Carico", L"Indici", L"Chiusura"};
        const std::wstring& Name = Given[static_cast<std::size_t>(At - 1)];
        std::wstring Buffer;
        // The node that the head names is not asked.
        ASSERT_FALSE(
            Item.DispData({.CurrFolder = L"FIELDS", .CurrItem = Node(1), .Index = 1, .Key = L"FIELDS"},
                          Buffer, true, {&At, 1}, 4));
        EXPECT_EQ(Narrow(Buffer), Narrow(Lines({L"BEGIN FIELDS", L"NAME= \"" + Name + L"\"",
                                                L"'[ID= " + std::to_wstring(20 + At) + L"]",
                                                L"'[NAME= " + Name + L"]", L"'[VERSION= 0]", L"END FIELDS"})))
            << "no tabs";
    }
    for (const std::int32_t Beyond : {0, 4, -1}) {
        std::wstring Buffer;
        EXPECT_TRUE(Item.DispData({.Key = L"FIELDS"}, Buffer, true, {&Beyond, 1}, 1));
        EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCatProc.DispData");
        EXPECT_EQ(Buffer, L"BEGIN FIELDS\r\n");
        CoreUtil::Instance().ForgetError();
    }
}

TEST_F(CatProc, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Node(1), L"NAME= \"Nuovo Nome\"")));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"CATPROC", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(On.Leaf(L"PARMS")));
}

TEST_F(CatProc, ShowPropTableNeitherMovesNorBeeps) {
    const std::wstring Before = On.Picture();
    for (const std::wstring& Key :
         {std::wstring(L"ROOT"), On.Leaf(L"PARMS"), std::wstring(L"FIELDS"), Node(2)})
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Key}); })));
    EXPECT_EQ(On.Platform.Beeps, 0);
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(CatProc, UnknownWordsDoNothing) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"fields", L"ALTRO", L"PARMS 1"}) {
        const window::Selection At{.CurrItem = Node(1), .Key = Key};
        std::wstring Text = L"PIPPO= 1";
        std::wstring Out;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData(At, Text, Out); })));
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.EditData(At, Out); })));
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.MoveData(At, 1, Out); })));
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At, true); })));
        std::wstring Shown;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DispData(At, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(On.Platform.Beeps, 0);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"CATPROC");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Fields").size(), 3U);
}

TEST(CatProcTree, ANodeThatTheTreeRefusesLeavesListAndTreeAsTheyWere) {
    TestPlatform Platform;
    const auto Tree = std::make_shared<RefusingTree>();
    diCatProc Item;
    Item.DesignTree() = Tree;
    MemoryRegData Object(L"CATPROC", Procedure());
    ASSERT_FALSE(Item.LoadData(Object));
    const std::wstring First = Tree->NodeAt(L"FIELDS", 1);
    Tree->Refused = L"FIELDS ";
    std::wstring Made;
    EXPECT_TRUE(Item.EditData({.CurrFolder = L"FIELDS", .CurrItem = L"FIELDS", .Key = L"FIELDS"}, Made));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCatProc.SetNode");
    EXPECT_EQ(Made, L"");
    EXPECT_EQ(Tree->CountBelow(L"FIELDS"), 3);
    EXPECT_FALSE(Tree->Modified());
    CoreUtil::Instance().ForgetError();
    ASSERT_FALSE(Item.Save(Object));
    EXPECT_EQ(ListOf(Object.Read(), L"Fields").size(), 3U);
    EXPECT_EQ(Tree->NodeAt(L"FIELDS", 1), First);
    Tree->Refused = L"PARMS ";
    EXPECT_TRUE(Item.EditData({.CurrFolder = L"PARMS", .CurrItem = L"PARMS", .Key = L"PARMS"}, Made));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCatProc.SetNode");
    EXPECT_EQ(Tree->CountBelow(L"PARMS"), 1);
    CoreUtil::Instance().ForgetError();
}

// A tree that has no room where the element is to go takes it back where it stood.
TEST(CatProcTree, AMoveThatFailsHalfwayGoesBack) {
    class OnceRefusing final : public window::TreeModel {
      public:
        int Refusals = 0;
        void AddNode(const NewNode& Node) override {
            if (Refusals > 0 && Node.Key.starts_with(L"FIELDS ")) {
                --Refusals;
                RaiseFault(fault::kSubscript);
            }
            TreeModel::AddNode(Node);
        }
    };
    TestPlatform Platform;
    const auto Tree = std::make_shared<OnceRefusing>();
    diCatProc Item;
    Item.DesignTree() = Tree;
    MemoryRegData Object(L"CATPROC", Procedure());
    ASSERT_FALSE(Item.LoadData(Object));
    for (const std::int32_t Direction : {1, -1}) {
        Tree->Refusals = 1;
        Head At{
            .CurrFolder = L"FIELDS", .CurrItem = Tree->NodeAt(L"FIELDS", 2), .Index = 2, .Key = L"FIELDS"};
        EXPECT_TRUE(Item.MoveData(At, Direction));
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCatProc.SetNode");
        CoreUtil::Instance().ForgetError();
        ASSERT_FALSE(Item.Save(Object));
        Listed Shown, Stored;
        for (std::int32_t I = 1; I <= 3; ++I) Shown.push_back(Tree->NodeText(Tree->NodeAt(L"FIELDS", I)));
        for (const RegObject& Each : ListOf(Object.Read(), L"Fields")) Stored.push_back(Each.Name);
        EXPECT_EQ(Shown, (Listed{L"Carico", L"Indici", L"Chiusura"}));
        EXPECT_EQ(Stored, Shown);
    }
}

// Equal names are found wherever in a long list they stand.
TEST(CatProcTree, ALongListOfNamesIsChecked) {
    std::vector<RegObject> Many;
    for (std::int32_t I = 0; I < 20000; ++I) Many.push_back(Element(I, L"C" + std::to_wstring(I)));
    TestPlatform Platform;
    diCatProc Item;
    MemoryRegData Object(L"CATPROC", Procedure(std::move(Many)));
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    ASSERT_FALSE(Item.LoadData(Object));
    EXPECT_FALSE(Item.Save(Object));

    const RegObject Stored = Object.Read();
    std::wstring Text = L"NAME= \"C0\"\r\n";
    std::wstring Out;
    const std::wstring Last = Item.DesignTree()->NodeAt(L"FIELDS", 20000);
    ASSERT_FALSE(Item.SaveData({.CurrFolder = L"FIELDS", .CurrItem = Last, .Index = 20000, .Key = L"FIELDS"},
                               Out, Text, nullptr));
    EXPECT_TRUE(Item.Save(Object));
    EXPECT_EQ(CoreUtil::Instance().LastError().Description,
              L"Due elementi della procedura hanno lo stesso nome.");
    CoreUtil::Instance().ForgetError();
    EXPECT_TRUE(Object.Read() == Stored);
}

}  // namespace
}  // namespace kv::test
