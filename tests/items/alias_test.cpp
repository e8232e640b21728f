// The list of aliases: it stands in the order of the names at all times, and a renamed alias takes its leaf
// along.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "items/services/diAlias.h"
#include "tests/items/Reading.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"ParmEditor.SaveAlias";

RegObject Alias(std::int32_t Id, std::wstring_view Name, std::wstring_view Text) {
    return Element(Id, Name, {{L"Text", RegText(Text)}});
}
RegObject Aliases(std::vector<RegObject> All) {
    return WithList(Desk::Named(L"PROVA"), L"Fields", std::move(All));
}
RegObject Aliases() {
    return Aliases({Alias(21, L"Autore", L"AUT"), Alias(22, L"Data", L"DAT"), Alias(23, L"Luogo", L"LUO"),
                    Alias(24, L"Titolo", L"TIT")});
}

using Listed = std::vector<std::wstring>;

class AliasList : public ::testing::Test {
  protected:
    Desk On{L"ALIAS", Aliases()};

    std::wstring Node(std::size_t Nth) const { return KeyBelow(On, L"FIELDS", Nth); }

    // The names as stored: in ascending order, and the tree shows them in the same one.
    Listed Names() {
        Listed Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(Each.Name);
        EXPECT_TRUE(std::is_sorted(Found.begin(), Found.end()));
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Found);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"ALIAS", On.Object->Read()).Picture()));
        return Found;
    }
    std::vector<std::int32_t> Ids() {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(Each.Id);
        return Found;
    }
    Outcome Rename(const std::wstring& Key, std::wstring_view Name, std::wstring& Made, bool Strict = true) {
        On.Tree->SetSyntaxOn(Strict);
        std::wstring Text = L"NAME= \"" + std::wstring(Name) + L"\"\r\nTEXT= \"nuovo\"\r\n";
        return On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, Made); });
    }
};

TEST_F(AliasList, EmptyTree) {
    Desk Empty(L"ALIAS");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  FIELDS \"Alias\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Offered(), L"");
    EXPECT_EQ(Empty.Exported(), L"BEGIN ALIAS\r\nEND ALIAS\r\n");
}

TEST_F(AliasList, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  FIELDS \"Alias\" 12,11 RG\n"
                                           L"    FIELDS # \"Autore\" 9,9\n"
                                           L"    FIELDS # \"Data\" 9,9\n"
                                           L"    FIELDS # \"Luogo\" 9,9\n"
                                           L"    FIELDS # \"Titolo\" 9,9\n"));
    EXPECT_TRUE(On.Tree->Served().empty());
}

TEST_F(AliasList, AListInAnotherOrderIsPutInItsOwn) {
    const RegObject Mixed =
        Aliases({Alias(1, L"b", L"1"), Alias(2, L"a", L"2"), Alias(3, L"b", L"3"), Alias(4, L"B", L"4")});
    Desk Other(L"ALIAS", Mixed);
    EXPECT_EQ(CaptionsBelow(Other, L"FIELDS"), (Listed{L"B", L"a", L"b", L"b"}));
    EXPECT_FALSE(Other.Tree->Modified());
    EXPECT_LT(Other.Exported().find(L"[ID= 2]"), Other.Exported().find(L"[ID= 1]"));
    EXPECT_LT(Other.Exported().find(L"[ID= 1]"), Other.Exported().find(L"[ID= 3]"));
    EXPECT_TRUE(Other.Object->Read() == Mixed) << "reading writes nothing";
}

TEST_F(AliasList, SectionTexts) {
    EXPECT_TRUE(MatchesGolden("section/ALIAS.full.txt", On.Text(Node(2))));
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    const std::wstring Shown = On.Text(Made);
    EXPECT_EQ(Shown.rfind(L"NAME= \"Unknown type\"\r\nTEXT= \"\"\r\n'[ID= ", 0), 0U);
    EXPECT_TRUE(Shown.ends_with(L"]\r\n'[NAME= Unknown type]\r\n'[VERSION= 0]\r\n"));
    ExpectFixpoint(On, Node(2));
    ExpectFixpoint(On, Made);
    EXPECT_EQ(On.Text(L"FIELDS"), L"") << "the folder stands for no alias";
}

TEST_F(AliasList, Refusals) {
    ExpectRefusals(On, Node(2), kSource,
                   {
                       {L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                       {L"NAME= Zeta\r\nTEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 3},
                       {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                       {L"NAME= Zeta\r\nLANG= ITA", L"Parametro non riconosciuto: LANG=ITA", 2},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Node(2), L"NAME= Zeta\r\nTEXT", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: TEXT.", 2));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(AliasList, ARefusedTextMovesNothing) {
    const std::vector<std::wstring> Keys = KeysBelow(On, L"FIELDS");
    const std::wstring Selected = Node(2);
    std::wstring Made = L"prima";
    std::wstring Text = L"NAME= \"Zeta\"\r\nPIPPO= 1";
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.SaveData({.CurrItem = Selected}, Text, Made); }), 20000,
                        kSource, L"Parametro non riconosciuto: PIPPO=1", 2));
    EXPECT_EQ(Made, L"prima");
    EXPECT_EQ(KeysBelow(On, L"FIELDS"), Keys);
    EXPECT_EQ(On.Tree->Selected(), Selected);
    EXPECT_EQ(Names(), (Listed{L"Autore", L"Data", L"Luogo", L"Titolo"}));
}

TEST_F(AliasList, ARenamedAliasMovesToItsPlace) {
    struct Row {
        std::size_t From;
        std::wstring_view Name;
        std::size_t To;
    };
    constexpr Row kRows[] = {
        {1, L"Autori", 1},  // its own place, between the same neighbours
        {2, L"Aaa", 1},     // before the first
        {3, L"Zona", 4},    // behind the last
        {1, L"Titolo", 4},  // behind the one of that name
        {4, L"Luogo", 4},   // the same, from behind
        {4, L"Data", 3},    // the same, in between
        {1, L"Luoga", 2},   // down past one
        {4, L"Lu", 3},      // up past none: Luogo is greater
        {1, L"città", 4},   // a small letter is greater than any capital
        {2, L"", 1},        // the empty name is the least
        {1, L"\x00E8", 4},  // beyond the plain letters
        {4, L"Data  doppia", 3},
    };
    for (const Row& Each : kRows) {
        SCOPED_TRACE(Narrow(Each.Name));
        Desk Fresh(L"ALIAS", Aliases());
        const std::vector<std::wstring> Before = KeysBelow(Fresh, L"FIELDS");
        const std::wstring Old = Before[Each.From - 1];
        const std::int32_t Id = ListOf(Fresh.Object->Read(), L"Fields")[Each.From - 1].Id;
        std::wstring Text = L"NAME= \"" + std::wstring(Each.Name) + L"\"\r\nTEXT= \"nuovo\"\r\n";
        std::wstring Made;
        ASSERT_TRUE(Accepted(Fresh.Try([&] { return Fresh.Core.SaveData({.CurrItem = Old}, Text, Made); })));
        std::vector<std::wstring> After = KeysBelow(Fresh, L"FIELDS");
        ASSERT_EQ(After.size(), 4U);
        EXPECT_EQ(After[Each.To - 1], Made);
        EXPECT_EQ(Made.rfind(L"FIELDS ", 0), 0U);
        EXPECT_NE(Made, Old);
        EXPECT_FALSE(Fresh.Tree->HasNode(Old));
        EXPECT_EQ(Fresh.Tree->Selected(), Made) << "the new leaf is selected";
        EXPECT_TRUE(Fresh.Tree->Modified());
        EXPECT_EQ(Fresh.Tree->NodeText(Made), Each.Name);
        // The others keep their leaves.
        std::erase(After, Made);
        std::vector<std::wstring> Others = Before;
        std::erase(Others, Old);
        EXPECT_EQ(After, Others);
        const std::vector<RegObject>& Stored = ListOf(SavedBy(Fresh), L"Fields");
        EXPECT_EQ(Stored[Each.To - 1].Id, Id) << "the alias keeps its id";
        EXPECT_EQ(Stored[Each.To - 1].Name, Each.Name);
        EXPECT_EQ(TextOf(Stored[Each.To - 1], L"Text"), L"nuovo");
        EXPECT_TRUE(std::is_sorted(Stored.begin(), Stored.end(),
                                   [](const RegObject& A, const RegObject& B) { return A.Name < B.Name; }));
        EXPECT_EQ(Narrow(Fresh.Picture()), Narrow(Desk(L"ALIAS", Fresh.Object->Read()).Picture()));
        EXPECT_EQ(Fresh.Text(Made).rfind(Text, 0), 0U);
    }
}

TEST_F(AliasList, AnAliasOfItsOwnNameStaysWhereItIs) {
    const std::vector<std::wstring> Keys = KeysBelow(On, L"FIELDS");
    std::wstring Made;
    ASSERT_TRUE(Accepted(Rename(Node(2), L"Data", Made)));
    EXPECT_EQ(Made, Keys[1]);
    EXPECT_EQ(KeysBelow(On, L"FIELDS"), Keys);
    EXPECT_EQ(Names(), (Listed{L"Autore", L"Data", L"Luogo", L"Titolo"}));
    EXPECT_EQ(TextOf(ListOf(On.Object->Read(), L"Fields")[1], L"Text"), L"nuovo");
    // Also beside others of that name, and where the text tells no name.
    Desk Twice(L"ALIAS", Aliases({Alias(1, L"A", L"1"), Alias(2, L"A", L"2"), Alias(3, L"A", L"3")}));
    for (std::size_t Nth = 1; Nth <= 3; ++Nth) {
        ASSERT_TRUE(Accepted(Twice.Put(KeyBelow(Twice, L"FIELDS", Nth), L"NAME= A\r\nTEXT= x")));
        ASSERT_TRUE(Accepted(Twice.Put(KeyBelow(Twice, L"FIELDS", Nth), L"TEXT= y")));
        EXPECT_EQ(ListOf(SavedBy(Twice), L"Fields")[Nth - 1].Id, static_cast<std::int32_t>(Nth));
    }
}

TEST_F(AliasList, WhatATextLeavesOut) {
    ASSERT_TRUE(Accepted(On.Put(Node(2), L"'niente")));
    EXPECT_EQ(Names()[1], L"Data") << "the name is no parameter";
    EXPECT_EQ(TextOf(ListOf(On.Object->Read(), L"Fields")[1], L"Text"), L"");
}

TEST_F(AliasList, TheOnlyAliasKeepsItsLeaf) {
    Desk One(L"ALIAS", Aliases({Alias(1, L"Solo", L"S")}));
    const std::wstring Key = KeyBelow(One, L"FIELDS", 1);
    for (const wchar_t* Name : {L"Zeta", L"Alfa", L""}) {
        std::wstring Text = L"NAME= \"" + std::wstring(Name) + L"\"";
        std::wstring Made;
        ASSERT_TRUE(Accepted(One.Try([&] { return One.Core.SaveData({.CurrItem = Key}, Text, Made); })));
        EXPECT_EQ(Made, Key);
        EXPECT_EQ(KeysBelow(One, L"FIELDS"), (Listed{Key}));
        EXPECT_EQ(One.Tree->NodeText(Key), Name);
        EXPECT_EQ(ListOf(SavedBy(One), L"Fields")[0].Name, Name);
    }
}

TEST_F(AliasList, ANewAliasGoesToItsPlace) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(1), Made)));
    EXPECT_EQ(Made, Node(5)) << "behind Titolo";
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Autore", L"Data", L"Luogo", L"Titolo", L"Unknown type"}));
    EXPECT_NE(Ids()[4], 0);
    std::wstring Renamed;
    ASSERT_TRUE(Accepted(Rename(Node(2), L"Zona", Renamed)));
    ASSERT_TRUE(Accepted(Rename(Node(1), L"alias", Renamed)));
    std::wstring Second;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Second)));
    EXPECT_EQ(Names(), (Listed{L"Luogo", L"Titolo", L"Unknown type", L"Unknown type", L"Zona", L"alias"}));
    EXPECT_EQ(Made, Node(3));
    EXPECT_EQ(Second, Node(4)) << "behind the one that is there";
    EXPECT_EQ(On.Tree->Selected(), Second);
    EXPECT_EQ(On.Platform.Beeps, 0);
}

TEST_F(AliasList, TheFirstAlias) {
    Desk Empty(L"ALIAS");
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(Empty, L"FIELDS", Made)));
    EXPECT_EQ(CaptionsBelow(Empty, L"FIELDS"), (Listed{L"Unknown type"}));
    EXPECT_EQ(KeyBelow(Empty, L"FIELDS", 1), Made);
    ASSERT_TRUE(Accepted(Empty.Put(Made, L"NAME= Primo\r\nTEXT= \"Libro \"raro\"\"")));
    EXPECT_EQ(Empty.Text(Made).rfind(L"NAME= \"Primo\"\r\nTEXT= \"Libro \"raro\"\"\r\n", 0), 0U);
}

TEST_F(AliasList, NothingMoves) {
    const std::vector<std::wstring> Keys = KeysBelow(On, L"FIELDS");
    for (const std::wstring& Key :
         {Node(1), Node(3), Node(4), std::wstring(L"FIELDS"), std::wstring(L"ROOT")})
        for (const std::int32_t Direction : {1, 0, -1, 2147483647}) {
            std::wstring Made = L"prima";
            EXPECT_TRUE(RefusedSilently(MoveAt(On, Key, Direction, Made)));
            EXPECT_EQ(Made, L"prima");
        }
    EXPECT_EQ(KeysBelow(On, L"FIELDS"), Keys);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(AliasList, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (Listed{L"Autore", L"Luogo", L"Titolo"}));
    for (const std::int32_t Index : {4, -1})
        EXPECT_TRUE(
            Refused(On.Try([&] { return On.Core.DeleteData({.CurrItem = Node(1), .Index = Index}, false); }),
                    9, L"diAlias.DeleteData", L"Indice non compreso nell'intervallo"));
    ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
    EXPECT_EQ(Names(), (Listed{}));
}

TEST_F(AliasList, ASelectionThatIsNoAliasIsRefused) {
    const std::wstring Before = On.Picture();
    const struct {
        window::Selection At;
        std::int32_t Number;
    } kRows[] = {
        {{.CurrItem = L"FIELDS"}, 9},
        {{.CurrItem = L"ROOT", .Key = L"FIELDS"}, 9},
        {{.CurrItem = L"ROOT", .CurrFolder = L"FIELDS", .Key = L"FIELDS"}, 9},
        {{.CurrItem = L"FIELDS 0", .CurrFolder = L"FIELDS", .Key = L"FIELDS"}, 91},
        {{.CurrItem = L"", .CurrFolder = L"", .Key = L"FIELDS"}, 91},
    };
    for (const auto& Row : kRows) {
        std::wstring Text = L"NAME= Zeta";
        std::wstring Made;
        const Outcome Got = On.Try([&] { return On.Core.SaveData(Row.At, Text, Made); });
        ASSERT_TRUE(Got);
        EXPECT_EQ(Got->Number, Row.Number) << Narrow(Row.At.CurrItem);
        EXPECT_EQ(Got->Source, L"diAlias.SaveData");
        EXPECT_EQ(Made, L"");
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(Names().size(), 4U);
}

TEST_F(AliasList, Export) { EXPECT_TRUE(MatchesGolden("export/ALIAS.txt", On.Exported())); }

TEST_F(AliasList, AnExportTakesThePositionThatItIsGiven) {
    diAlias Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    const std::int32_t Third = 3;
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.CurrFolder = L"FIELDS", .CurrItem = Node(1), .Index = 1, .Key = L"FIELDS"},
                               Buffer, true, {&Third, 1}, 4));
    EXPECT_EQ(Narrow(Buffer),
              Narrow(Lines({L"BEGIN FIELDS", L"NAME= \"Luogo\"", L"TEXT= \"LUO\"", L"'[ID= 23]",
                            L"'[NAME= Luogo]", L"'[VERSION= 0]", L"END FIELDS"})));
    const std::int32_t Beyond = 5;
    EXPECT_TRUE(Item.DispData({.Key = L"FIELDS"}, Buffer, true, {&Beyond, 1}, 1));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    CoreUtil::Instance().ForgetError();
}

TEST_F(AliasList, SaveAndReload) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(Rename(Node(1), L"Zeta", Made)));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"ALIAS", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
}

TEST_F(AliasList, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"PARMS", L"fields"}) {
        const window::Selection At{.CurrItem = Node(1), .Key = Key};
        std::wstring Text = L"PIPPO= 1";
        std::wstring Out;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData(At, Text, Out); })));
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.EditData(At, Out); })));
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At, true); })));
        std::wstring Shown;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DispData(At, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = L"FIELDS"}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"ALIAS");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Fields").size(), 4U);
}

TEST(AliasTree, ANodeThatTheTreeRefusesLeavesListAndTreeAsTheyWere) {
    TestPlatform Platform;
    const auto Tree = std::make_shared<RefusingTree>();
    diAlias Item;
    Item.DesignTree() = Tree;
    MemoryRegData Object(L"ALIAS", Aliases());
    ASSERT_FALSE(Item.LoadData(Object));
    const RegObject Before = [&] {
        EXPECT_FALSE(Item.Save(Object));
        return Object.Read();
    }();
    Listed Keys;
    for (std::int32_t I = 1; I <= 4; ++I) Keys.push_back(Tree->NodeAt(L"FIELDS", I));
    Tree->SelectNode(Keys[1]);
    Tree->Refused = L"FIELDS ";
    const auto AsBefore = [&](std::wstring_view Made) {
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diAlias.SetNode");
        CoreUtil::Instance().ForgetError();
        EXPECT_EQ(Made, L"prima");
        EXPECT_FALSE(Item.Save(Object));
        EXPECT_TRUE(Object.Read() == Before);
        EXPECT_EQ(Tree->CountBelow(L"FIELDS"), 4);
        for (std::int32_t I = 1; I <= 4; ++I)
            EXPECT_EQ(Tree->NodeAt(L"FIELDS", I), Keys[static_cast<std::size_t>(I - 1)]);
        EXPECT_EQ(Tree->NodeText(Keys[1]), L"Data");
        EXPECT_EQ(Tree->Selected(), Keys[1]);
        EXPECT_FALSE(Tree->Modified());
    };
    for (const wchar_t* Name : {L"Aaa", L"Dato", L"Zeta"}) {
        std::wstring Text = L"NAME= " + std::wstring(Name);
        std::wstring Made = L"prima";
        EXPECT_TRUE(
            Item.SaveData({.CurrFolder = L"FIELDS", .CurrItem = Keys[1], .Index = 2, .Key = L"FIELDS"}, Made,
                          Text, nullptr));
        AsBefore(Made);
    }
    std::wstring Made = L"prima";
    EXPECT_TRUE(
        Item.EditData({.CurrFolder = L"FIELDS", .CurrItem = Keys[1], .Index = 2, .Key = L"FIELDS"}, Made));
    AsBefore(Made);
}

// Against the plain way: take it out, walk from the start to the first greater name, put it back.
TEST_F(AliasList, RandomRenamesAsTheWalkWouldPlaceThem) {
    std::mt19937 Random(7);
    const auto Below = [&](std::size_t Bound) {
        return std::uniform_int_distribution<std::size_t>(0, Bound - 1)(Random);
    };
    std::vector<std::pair<std::wstring, std::int32_t>> Expected;  // name, id
    for (const RegObject& Each : ListOf(On.Object->Read(), L"Fields"))
        Expected.emplace_back(Each.Name, Each.Id);
    for (int Step = 0; Step < 300; ++Step) {
        const std::size_t At = Below(Expected.size());
        const std::wstring Name(1, static_cast<wchar_t>(L'A' + static_cast<wchar_t>(Below(6))));
        std::wstring Made;
        ASSERT_TRUE(Accepted(Rename(Node(At + 1), Name, Made)));
        if (Expected[At].first != Name) {
            const auto Taken = std::pair(Name, Expected[At].second);
            Expected.erase(Expected.begin() + static_cast<std::ptrdiff_t>(At));
            auto Before = Expected.begin();
            while (Before != Expected.end() && Before->first <= Name) ++Before;
            const auto Put = Expected.insert(Before, Taken);
            EXPECT_EQ(Node(static_cast<std::size_t>(Put - Expected.begin()) + 1), Made);
        }
        std::vector<std::pair<std::wstring, std::int32_t>> Stored;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Stored.emplace_back(Each.Name, Each.Id);
        ASSERT_EQ(Stored, Expected);
        if (Step % 10 == 0 && Expected.size() < 40) {
            ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
            Expected.clear();
            for (const RegObject& Each : ListOf(SavedBy(On), L"Fields"))
                Expected.emplace_back(Each.Name, Each.Id);
            ASSERT_TRUE(std::is_sorted(Expected.begin(), Expected.end(),
                                       [](const auto& A, const auto& B) { return A.first < B.first; }));
            ASSERT_EQ(Expected[static_cast<std::size_t>(On.Tree->NodeId(Made)) - 1].first, L"Unknown type");
        }
    }
}

// A rename in a long list, from either end to the other.
TEST(AliasTree, ALongListIsRenamedWithin) {
    std::vector<RegObject> Many;
    for (std::int32_t I = 0; I < 10000; ++I) Many.push_back(Element(I, std::to_wstring(100000 + I)));
    Desk On(L"ALIAS", Aliases(std::move(Many)));
    const std::wstring Folder = L"FIELDS";
    for (std::int32_t I = 0; I < 200; ++I) {
        const bool Down = I % 2 == 0;
        const std::wstring Key = On.Tree->NodeAt(Folder, Down ? 1 : 10000);
        std::wstring Text =
            Down ? L"NAME= 2" + std::to_wstring(1000000 + I) : L"NAME= 0" + std::to_wstring(9000000 - I);
        std::wstring Made;
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, Made); })));
        ASSERT_EQ(On.Tree->NodeId(Made), Down ? 10000 : 1);
    }
}

}  // namespace
}  // namespace kv::test
