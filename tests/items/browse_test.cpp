// The browse: every section read and rendered by ParmEditor, fonts that the tree does not show, filters that
// are exported as empty blocks.
#include "items/navigation/diBrowse.h"
#include "tests/items/Form.h"

namespace kv::test {
namespace {

RegObject FullBrowse() {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"Table", RegText(L"LIBRI")},
                                                  {L"Profile", RegText(L"SCHEDA")},
                                                  {L"Icons", 2},
                                                  {L"Action", 4},
                                                  {L"Reference", 1},
                                                  {L"TipsAlign", 3},
                                                  {L"TipsButtons", 5},
                                                  {L"ToolTips", 9},
                                                  {L"BoolOps", 2},
                                                  {L"StemAlign", 2},
                                                  {L"ToolAlign", 1},
                                                  {L"MultiSel", true},
                                                  {L"MirrorOf", RegText(L"Altro")}});
    Made = WithList(std::move(Made), L"Popups",
                    {Element(41, L"", {{L"Code", RegText(L"APRI")}, {L"Action", 39}}),
                     Element(42, L"", {{L"Code", RegText(L"CHIUDI")}})});
    Made = WithList(
        std::move(Made), L"Filters",
        {Element(51, L"NOVECENTO",
                 {{L"Table", RegText(L"ANNI")}, {L"Expression", RegText(L"anno>1900")}, {L"MergeWith", 1}}),
         Element(52, L"ITALIANO", {{L"Automatic", true}})});
    Made = WithList(std::move(Made), L"Fonts",
                    {Element(61, L"Arial", {{L"Size", 10}}), Element(62, L"Courier", {{L"Size", 8}})});
    return Made;
}
RegObject WithFilterTexts(RegObject Made) {
    const auto Said = [](std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
        return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
    };
    Made = WithList(std::move(Made), L"FiltTitles",
                    {Said(71, L"ITA", L"Limita la ricerca alle opere"), Said(72, L"ENG", L"Limits")});
    return WithList(std::move(Made), L"FiltMessages",
                    {Said(81, L"ITA", L"Nessun filtro attivo al momento"), Said(82, L"ENG", L"None")});
}

class Browse : public FormTest {
  protected:
    Browse() : FormTest(L"BROWSE", WithContents(WithFilterTexts(FullBrowse()))) {}

    // A list without a folder answers under any node by its index.
    static window::Selection FontAt(std::int32_t Index) {
        return {.CurrItem = L"ROOT", .Index = Index, .Key = L"FONTS"};
    }
};

// The tree.

TEST_F(Browse, EmptyTreeAndChoices) {
    Desk Empty(L"BROWSE");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  TITLES \"Titoli\" 12,11 RG\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  POPUPS \"Popup\" 12,11 RG\n"
                                              L"  FILTERS \"Filtri\" 12,11\n"
                                              L"    FILTTITLES \"Titoli\" 12,11 RG\n"
                                              L"    FILTMESSAGES \"Messaggi\" 12,11 RG\n"
                                              L"    FILTER \"Filtri\" 12,11 RG\n"
                                              L"  HTML \"WWW Templates\" 12,11 RG\n"));
    const std::wstring Actions = L" ACTION=" + std::wstring(kOfferedActions) + L"\n";
    const std::wstring Aligns(kOfferedAligns);
    EXPECT_EQ(Narrow(Empty.Offered()), Narrow(L"PARMS ICONS= CHECK FOLDER ARROW NONE\n"
                                              L"PARMS" +
                                              Actions +
                                              L"PARMS USECOOKED= FALSE TRUE\n"
                                              L"PARMS OPENRECORD= FALSE TRUE\n"
                                              L"PARMS REFERENCE= JUMP IMMEDIATE\n"
                                              L"PARMS AUTORUN= FALSE TRUE\n"
                                              L"PARMS MULTISEL= FALSE TRUE\n"
                                              L"PARMS TIPSALIGN=" +
                                              Aligns +
                                              L"PARMS TIPSBUTTONS= BACK CLOSE HOME\n"
                                              L"PARMS TOOLTIPS= NONE CHECK FOLDER LINK COMMANDS LOANLINK\n"
                                              L"PARMS BOOLOPS= NONE AND OR\n"
                                              L"PARMS LARGEBUTT= FALSE TRUE\n"
                                              L"PARMS SHOWOCCS= FALSE TRUE\n"
                                              L"PARMS STEMAUTO= FALSE TRUE\n"
                                              L"PARMS FLAGS= NONE\n"
                                              L"FILTER AUTOMATIC= FALSE TRUE\n"
                                              L"FILTER MERGEWITH= AND OR\n"
                                              L"PARMS NOPOPUP= FALSE TRUE\n"
                                              L"PARMS STEMALIGN=" +
                                              Aligns +
                                              L"PARMS STEMDOCKED= FALSE TRUE\n"
                                              L"PARMS STEMIMMEDIATE= FALSE TRUE\n"
                                              L"PARMS STEMSIZABLE= FALSE TRUE\n"
                                              L"PARMS TIPSSIZABLE= FALSE TRUE\n"
                                              L"PARMS TOOLALIGN=" +
                                              Aligns + L"HTML" + Actions));
}

TEST_F(Browse, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  TITLES \"Titoli\" 12,11 RG\n"
                     L"    TITLES # \"Titolo: [ITA] Menù principale dell\" 9,9\n"
                     L"    TITLES # \"Titolo: [ENG] Main\" 9,9\n"
                     L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                     L"    COMMANDS-# \"CERCA\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"        COMMANDTIPS # \"Messaggio: [ITA] Apre la ricerca semp\" 9,9\n"
                     L"        COMMANDTIPS # \"Messaggio: [ENG] Find\" 9,9\n"
                     L"    COMMANDS-# \"ESCI\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"  POPUPS \"Popup\" 12,11 RG\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"  FILTERS \"Filtri\" 12,11\n"
                     L"    FILTTITLES \"Titoli\" 12,11 RG\n"
                     L"      FILTTITLES # \"Titolo: [ITA] Limita la ricerca al\" 9,9\n"
                     L"      FILTTITLES # \"Titolo: [ENG] Limits\" 9,9\n"
                     L"    FILTMESSAGES \"Messaggi\" 12,11 RG\n"
                     L"      FILTMESSAGES # \"Messaggio: [ITA] Nessun filtro attivo\" 9,9\n"
                     L"      FILTMESSAGES # \"Messaggio: [ENG] None\" 9,9\n"
                     L"    FILTER \"Filtri\" 12,11 RG\n"
                     L"      FILTER # \"Filtro: NOVECENTO\" 9,9\n"
                     L"      FILTER # \"Filtro: ITALIANO\" 9,9\n"
                     L"  HTML \"WWW Templates\" 12,11 RG\n"
                     L"    HTML # \"File: [ITA] pagina_iniziale_it.h\" 9,9\n"
                     L"    HTML # \"File: [] home.htm\" 9,9\n"));
    EXPECT_EQ(On.Picture().find(L"FONTS"), std::wstring::npos);
}

// The parameters, keyword by keyword: tests/editor.

TEST_F(Browse, ParameterTexts) {
    Desk Empty(L"BROWSE");
    EXPECT_TRUE(MatchesGolden("section/BROWSE.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    EXPECT_TRUE(MatchesGolden("section/BROWSE.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
}

TEST_F(Browse, EveryOfferedWordIsTakenAndAnyOtherRefusedInStrictMode) {
    for (const window::ValueWords& Row : On.Tree->Choices()) {
        if (Row.Section != L"PARMS") continue;
        for (const std::wstring& Choice : Row.Words) {
            for (const bool Strict : {true, false}) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" " + Choice, Strict)));
                EXPECT_EQ(Narrow(LineOf(Row.Keyword)), Narrow(Row.Keyword + L" " + Choice));
            }
        }
        const std::wstring Before = On.Text(Parms());
        const Outcome Got = On.Put(Parms(), Row.Keyword + L" forse");
        ASSERT_TRUE(Got.has_value()) << Narrow(Row.Keyword);
        EXPECT_EQ(Got->Source, L"ParmEditor.SaveBrowse");
        EXPECT_EQ(Got->Description.rfind(L"Valore sconosciuto per il parametro " + Row.Keyword + L"(", 0),
                  0U);
        EXPECT_EQ(On.Text(Parms()), Before);
        EXPECT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" forse", false)));
    }
}

TEST_F(Browse, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'niente")));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"Table"), L"");
    EXPECT_EQ(LongOf(Now, L"Icons"), 0);
    EXPECT_EQ(LongOf(Now, L"Action"), -1);
    EXPECT_FALSE(BoolOf(Now, L"MultiSel"));
    for (const std::wstring_view List :
         {L"Commands", L"Filters", L"FiltMessages", L"FiltTitles", L"Fonts", L"Popups", L"Html", L"Titles"})
        EXPECT_EQ(ListOf(Now, List).size(), 2U) << Narrow(List);
    ExpectRefusals(On, Parms(), L"ParmEditor.SaveBrowse",
                   {{L"ROWS= 5\r\nROWS= 5", L"Ripetizone del parametro ROWS=.", 2},
                    {L"STYLE= TEXT", L"Parametro non riconosciuto: STYLE=TEXT", 1}});
}

// The elements.

TEST_F(Browse, ElementTexts) {
    for (const wchar_t* Section :
         {L"TITLES", L"POPUPS", L"FILTTITLES", L"FILTMESSAGES", L"FILTER", L"HTML"}) {
        const std::wstring Key = Node(Section, 1);
        EXPECT_TRUE(MatchesGolden("section/BROWSE." + Narrow(Section) + ".txt", On.Text(Key)));
        ExpectFixpoint(On, Key);
        EXPECT_EQ(On.Text(Section), L"");
    }
    EXPECT_TRUE(MatchesGolden("section/BROWSE.COMMANDPARMS.txt", On.Text(ButtonParms(1))));
    EXPECT_TRUE(MatchesGolden("section/BROWSE.COMMANDTIPS.txt", On.Text(Tip(1, 1))));
    for (const std::wstring& Key : {ButtonParms(1), ButtonParms(2), Tip(1, 1), Tip(1, 2)})
        ExpectFixpoint(On, Key);
    for (const std::wstring& Container : {ButtonNode(1), std::wstring(L"COMMANDS"), std::wstring(L"FILTERS")})
        EXPECT_EQ(On.Text(Container), L"");
    const RegObject Before = SavedBy(On);
    EXPECT_TRUE(Accepted(On.Put(ButtonNode(1), L"CODE= ALTRO")));
    EXPECT_EQ(SavedBy(On), Before);
}

TEST_F(Browse, SavedElementsShowInTheirNodes) {
    const struct {
        std::wstring Key;
        std::wstring_view Text;
        std::wstring_view Caption;
    } kRows[] = {
        {Node(L"TITLES", 2), L"TEXT= Liste\r\nLANG= fra", L"Titolo: [FRA] Liste"},
        {Node(L"FILTTITLES", 2), L"TEXT= Filtres\r\nLANG= fra", L"Titolo: [FRA] Filtres"},
        {Node(L"FILTMESSAGES", 2), L"TEXT= Aucun\r\nLANG= fra", L"Messaggio: [FRA] Aucun"},
        {Node(L"FILTER", 2), L"NAME= francese\r\nAUTOMATIC= TRUE", L"Filtro: FRANCESE"},
        {Node(L"HTML", 2), L"FILENAME= liste.htm\r\nLANG= fra", L"File: [FRA] liste.htm"},
        {Tip(1, 2), L"TEXT= Cherche\r\nLANG= fra", L"Messaggio: [FRA] Cherche"},
    };
    for (const auto& Row : kRows) {
        std::wstring NewKey;
        std::wstring Text(Row.Text);
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Row.Key}, Text, NewKey); })));
        EXPECT_EQ(NewKey, Row.Caption);
        EXPECT_EQ(On.Tree->NodeText(Row.Key), Row.Caption);
    }
    ASSERT_TRUE(Accepted(On.Put(ButtonParms(2), L"CODE= fine\r\nACTION= quit")));
    EXPECT_EQ(On.Tree->NodeText(ButtonNode(2)), L"FINE");
    ASSERT_TRUE(Accepted(On.Put(Node(L"POPUPS", 2), L"CODE= fine\r\nACTION= quit\r\nVISIBLE= FALSE")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"POPUPS", 2)), L"");
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(ListOf(Now, L"FiltTitles")[1], L"Text"), L"Filtres");
    EXPECT_EQ(TextOf(ListOf(Now, L"FiltMessages")[1], L"Text"), L"Aucun");
    EXPECT_EQ(ListOf(Now, L"Filters")[1].Name, L"FRANCESE");
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[1], L"Code"), L"FINE");
    EXPECT_FALSE(BoolOf(ListOf(Now, L"Popups")[1], L"Visible"));
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[0], L"Code"), L"APRI");
    ExpectSameTree();
}

TEST_F(Browse, RefusalsOfTheElements) {
    const struct {
        std::wstring Key;
        std::wstring_view Parser;
        std::wstring_view Foreign;
    } kRows[] = {{Node(L"TITLES", 1), L"ParmEditor.SaveTitle", L"CODE="},
                 {Node(L"FILTTITLES", 1), L"ParmEditor.SaveTitle", L"CODE="},
                 {Node(L"FILTMESSAGES", 1), L"ParmEditor.SaveCaption", L"CODE="},
                 {Node(L"FILTER", 1), L"ParmEditor.SaveBrowseFilter", L"CODE="},
                 {Node(L"HTML", 1), L"ParmEditor.SaveHtml", L"TEXT="},
                 {Node(L"POPUPS", 1), L"ParmEditor.SaveCommand", L"TEXT="},
                 {ButtonParms(1), L"ParmEditor.SaveCommand", L"LANG="},
                 {Tip(1, 1), L"ParmEditor.SaveCaption", L"ACTION="}};
    const std::wstring Before = On.Picture();
    for (const auto& Row : kRows) {
        const std::wstring Text = std::wstring(Row.Foreign) + L" x";
        const std::wstring Unknown = L"Parametro non riconosciuto: " + std::wstring(Row.Foreign) + L"x";
        ExpectRefusals(On, Row.Key, Row.Parser, {{Text, Unknown, 1}});
    }
    for (const std::size_t Row : {0U, 1U, 2U, 4U, 7U})
        EXPECT_TRUE(Refused(On.Put(kRows[Row].Key, L"'x"), 20000, kRows[Row].Parser,
                            L"Non è stato specificato un codice LANG valido."));
    ExpectRefusals(
        On, Node(L"FILTER", 1), L"ParmEditor.SaveBrowseFilter",
        {{L"NAME= x\r\nMERGEWITH= xor", L"Valore sconosciuto per il parametro MERGEWITH=(XOR)", 2, false}});
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(Browse, ListsGrowMoveAndShrink) {
    ExpectListLife(L"TITLES", L"Titles", L"Titolo: [] ", true, true);
    ExpectListLife(L"FILTTITLES", L"FiltTitles", L"Titolo: [] ", true, true);
    ExpectListLife(L"FILTMESSAGES", L"FiltMessages", L"Messaggio: [] ", true, true);
    ExpectListLife(L"FILTER", L"Filters", L"Filtro: ", true, true);
    ExpectListLife(L"HTML", L"Html", L"File: [] ", true, true);
}

TEST_F(Browse, ANewFilterHasNoIdWhereTheOthersHave) {
    std::wstring Made;
    for (const auto& [Folder, List] : {std::pair<std::wstring, std::wstring_view>{L"TITLES", L"Titles"},
                                       {L"FILTTITLES", L"FiltTitles"},
                                       {L"FILTMESSAGES", L"FiltMessages"},
                                       {L"FILTER", L"Filters"},
                                       {L"POPUPS", L"Popups"},
                                       {L"HTML", L"Html"}}) {
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_EQ(Ids(List).at(2) == 0, Folder == L"FILTER") << Narrow(Folder);
    }
}

TEST_F(Browse, APopupNeitherMovesNorGoes) { ExpectListLife(L"POPUPS", L"Popups", L"", false, false); }

TEST_F(Browse, ButtonsAndTipsGrowMoveAndShrink) {
    // A new tip is made by SetNode, which knows no caption for it.
    ExpectButtonLife(L"COMMANDTIPS", {});
}

TEST_F(Browse, PlainSections) { ExpectPlainSections(); }

TEST_F(Browse, FontsLiveWithoutNodes) {
    const std::wstring Before = On.Picture();
    const auto Text = [&](std::int32_t Index) {
        std::wstring Shown;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DispData(FontAt(Index), Shown); })));
        return Shown;
    };
    EXPECT_EQ(Text(2).rfind(L"NAME= \"Courier\"\r\nSIZE= 8\r\n", 0), 0U);
    std::wstring Made;
    std::wstring Given = L"NAME= Verdana\r\nSIZE= 12\r\nBOLD= TRUE";
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData(FontAt(1), Given, Made); })));
    EXPECT_EQ(Made, L"Font: Verdana, 12") << "the caption comes back though no node shows it";
    EXPECT_EQ(Text(1).rfind(L"NAME= \"Verdana\"\r\nSIZE= 12\r\nBOLD= TRUE\r\n", 0), 0U);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.EditData(FontAt(0), Made); })));
    EXPECT_EQ(Made.rfind(L"FONTS ", 0), 0U);
    ASSERT_EQ(Ids(L"Fonts").size(), 3U);
    const std::int32_t New = Ids(L"Fonts").at(2);
    EXPECT_NE(New, 0);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.MoveData(FontAt(3), 1, Made); })));
    EXPECT_EQ(Ids(L"Fonts"), (Numbers{61, New, 62}));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.MoveData(FontAt(1), 0, Made); })));
    EXPECT_EQ(Ids(L"Fonts"), (Numbers{New, 61, 62}));
    EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(FontAt(1), 1, Made); })));
    EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(FontAt(3), -1, Made); })));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(FontAt(2), false); })));
    EXPECT_EQ(Ids(L"Fonts"), (Numbers{New, 62}));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(FontAt(0), true); })));
    EXPECT_EQ(Ids(L"Fonts"), Numbers{});
    EXPECT_EQ(On.Picture(), Before);
}

// The whole.

TEST_F(Browse, Export) {
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/BROWSE.txt", Text));
    EXPECT_EQ(Text.find(L'\t'), std::wstring::npos) << "block lines stand in the first column";
    EXPECT_NE(
        Text.find(L"BEGIN FILTERS\r\nEND FILTERS\r\nBEGIN FILTERS\r\nEND FILTERS\r\nBEGIN FILTTITLES\r\n"),
        std::wstring::npos);
    EXPECT_EQ(Text.find(L"NOVECENTO"), std::wstring::npos) << "nothing of a filter's content";
    EXPECT_NE(Text.find(L"BEGIN COMMANDS\r\nEND COMMANDS\r\nBEGIN COMMANDTIPS\r\n"), std::wstring::npos);
    std::size_t Last = 0;
    for (const wchar_t* Section : {L"PARMS", L"TITLES", L"FONTS", L"COMMANDS", L"COMMANDTIPS", L"POPUPS",
                                   L"FILTERS", L"FILTTITLES", L"FILTMESSAGES", L"HTML"}) {
        const std::size_t At = Text.find(L"BEGIN " + std::wstring(Section) + L"\r\n");
        ASSERT_NE(At, std::wstring::npos) << Narrow(Section);
        EXPECT_GE(At, Last) << Narrow(Section);
        Last = At;
    }
}

TEST_F(Browse, NoIndentAnywhere) {
    diBrowse Item;
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    MemoryRegData Object(L"BROWSE", On.Object->Read());
    ASSERT_FALSE(Item.LoadData(Object));
    const std::int32_t First = 1;
    for (const std::int32_t Indent : {0, 1, 3}) {
        for (const wchar_t* Key : {L"PARMS", L"TITLES", L"FONTS", L"POPUPS", L"FILTER", L"HTML"}) {
            std::wstring Buffer;
            EXPECT_FALSE(Item.DispData({.Index = 1, .Key = Key}, Buffer, true, {&First, 1}, Indent));
            EXPECT_EQ(Buffer.rfind(L"BEGIN " + std::wstring(Key) + L"\r\n", 0), 0U);
            EXPECT_EQ(Buffer.find(L'\t'), std::wstring::npos);
        }
        for (const wchar_t* Key : {L"COMMANDS", L"FILTERS", L"ALTRO"}) {
            std::wstring Buffer;
            EXPECT_FALSE(Item.DispData({.Index = 1, .Key = Key}, Buffer, true, {&First, 1}, Indent));
            EXPECT_EQ(Buffer, L"BEGIN " + std::wstring(Key) + L"\r\nEND " + Key + L"\r\n");
        }
    }
}

TEST_F(Browse, SaveAndReload) {
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"BROWSE", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
    EXPECT_EQ(Again.Picture(), On.Picture());
}

TEST_F(Browse, OtherOperations) {
    ExpectNothingDone({L"", L"ALTRO", L"parms", L"COMMANDS", L"FILTERS"});
    // A copy has no effect.
    std::wstring Copied;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Copied); })));
    EXPECT_EQ(Copied, L"");
    EXPECT_EQ(On.Clipboard.DataObj, nullptr);
    diBrowse Item;
    ClipItem Nothing;
    EXPECT_FALSE(Item.CopyData({}, false, Nothing));
}

}  // namespace
}  // namespace kv::test
