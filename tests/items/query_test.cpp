// The query: sections and tree. Its parameters and those of fields and values have tests of their own.
#include "tests/items/Query.h"

#include <gtest/gtest.h>

#include "items/navigation/diQuery.h"

namespace kv::test {
namespace {

// Folder, and list of the record that it shows.
constexpr std::pair<const wchar_t*, const wchar_t*> kPlainLists[] = {
    {L"TITLES", L"Titles"},
    {L"MESSAGE", L"Message"},
    {L"OPTIONMSG1", L"OptionMsg1"},
    {L"OPTIONMSG2", L"OptionMsg2"},
    {L"HTML", L"Html"},
    {L"HTMLRES", L"HtmlRes"},
    {L"HTMLTEMPL", L"HtmlTempl"},
    {L"HTMLRESTEMPL", L"HtmlResTempl"},
    {L"POPUPS", L"Popups"},
    {L"COMMANDS", L"Commands"},
    {L"FIELDS", L"Fields"},
};

TEST(QueryTree, AnEmptyQueryHasAllFolders) {
    Desk Empty(L"QUERY");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  TITLES \"Titolo\" 12,11 RG\n"
                                              L"  MESSAGE \"Messaggio\" 12,11 RG\n"
                                              L"  OPTIONMSG1 \"Messaggio insieme A\" 12,11 RG\n"
                                              L"  OPTIONMSG2 \"Messaggio insieme B\" 12,11 RG\n"
                                              L"  HTML \"HTML\" 12,11 RG\n"
                                              L"  HTMLRES \"HTML Risultato\" 12,11 RG\n"
                                              L"  FIELDS \"Campi\" 12,11 RG\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  POPUPS \"Popup\" 12,11 RG\n"
                                              L"  HTMLTEMPL \"WWW Templates\" 12,11 RG\n"
                                              L"  HTMLRESTEMPL \"WWW Templates (Risultato)\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Tree->Served(), std::vector<std::wstring>{});
    const std::wstring Actions =
        L" ACTION= MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC QUERYRESULT ADMIN LANG "
        L"HTMLMOVE LOGIN HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC WEBCLIENT DBSELECT SETOPS NAVIGATE "
        L"PASSWORD CLIENTSETUP LOANSTART LOANQUIT SHELLWIN INFO KVRSELECT IMAGE SEEK OPEN CLOSEALL QUERYGET "
        L"BOOLSTEM SHELF IMAGELIST ZOOMIN ZOOMOUT MAP LOANACTION IMAGEUM\n";
    EXPECT_EQ(Narrow(Empty.Offered()),
              Narrow(L"PARMS TOOLALIGN= NONE LEFT RIGHT TOP BOTTOM\n"
                     L"PARMS FLAGS= NONE CAPTURE HIDDEN\n"
                     L"HTML" +
                     Actions + L"HTMLRES" + Actions + L"HTMLTEMPL" + Actions + L"HTMLRESTEMPL" + Actions));
}

TEST_F(Query, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  TITLES \"Titolo\" 12,11 RG\n"
                     L"    TITLES # \"Titolo: [ITA] Ricerca nel catalogo\" 9,9\n"
                     L"    TITLES # \"Titolo: [ENG] Catalogue search\" 9,9\n"
                     L"  MESSAGE \"Messaggio\" 12,11 RG\n"
                     L"    MESSAGE # \"Messaggio: [ITA] Riempire almeno un c\" 9,9\n"
                     L"    MESSAGE # \"Messaggio: [ENG] Fill in one field\" 9,9\n"
                     L"  OPTIONMSG1 \"Messaggio insieme A\" 12,11 RG\n"
                     L"    OPTIONMSG1 # \"Messaggio: [ITA] Insieme A\" 9,9\n"
                     L"    OPTIONMSG1 # \"Messaggio: [ENG] Set A\" 9,9\n"
                     L"  OPTIONMSG2 \"Messaggio insieme B\" 12,11 RG\n"
                     L"    OPTIONMSG2 # \"Messaggio: [ITA] Insieme B\" 9,9\n"
                     L"    OPTIONMSG2 # \"Messaggio: [ENG] Set B\" 9,9\n"
                     L"  HTML \"HTML\" 12,11 RG\n"
                     L"    HTML # \"File: [ITA] ricerca.htm\" 9,9\n"
                     L"    HTML # \"File: [ENG] search.htm\" 9,9\n"
                     L"  HTMLRES \"HTML Risultato\" 12,11 RG\n"
                     L"    HTMLRES # \"File: [ITA] esito.htm\" 9,9\n"
                     L"    HTMLRES # \"File: [ENG] result.htm\" 9,9\n"
                     L"  FIELDS \"Campi\" 12,11 RG\n"
                     L"    FIELDS-# \"Campo: Lingua dell'originale\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"
                     L"        FIELDCAPTION-# # \"Etichetta: [ITA] Lingua dell'original\" 9,9\n"
                     L"        FIELDCAPTION-# # \"Etichetta: [ENG] Original language\" 9,9\n"
                     L"      CONSTANTS-FIELDS-# \"Valori predefiniti\" 12,11 R\n"
                     L"        CONSTANTS-# \"Valore: ITA\" 12,11 RDM\n"
                     L"          CONSTANTPARMS-# \"Valore\" 12,11\n"
                     L"            CONSTANTPARMS-# # \"Valore\" 9,9\n"
                     L"          CONSTANTCAPTION-# \"Etichette\" 12,11 R\n"
                     L"            CONSTANTCAPTION-# # \"Messaggio: [ITA] Lingua italiana\" 9,9\n"
                     L"            CONSTANTCAPTION-# # \"Messaggio: [ENG] Italian\" 9,9\n"
                     L"        CONSTANTS-# \"Valore: FRA\" 12,11 RDM\n"
                     L"          CONSTANTPARMS-# \"Valore\" 12,11\n"
                     L"            CONSTANTPARMS-# # \"Valore\" 9,9\n"
                     L"          CONSTANTCAPTION-# \"Etichette\" 12,11 R\n"
                     L"    FIELDS-# \"Campo: ????\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"
                     L"      CONSTANTS-FIELDS-# \"Valori predefiniti\" 12,11 R\n"
                     L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                     L"    COMMANDS-# \"CERCA\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"        COMMANDTIPS # \"Messaggio: [ITA] Avvia la ricerca\" 9,9\n"
                     L"        COMMANDTIPS # \"Messaggio: [ENG] Start the search\" 9,9\n"
                     L"    COMMANDS-# \"ESCI\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"  POPUPS \"Popup\" 12,11 RG\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"  HTMLTEMPL \"WWW Templates\" 12,11 RG\n"
                     L"    HTMLTEMPL # \"File: [ITA] modello.htm\" 9,9\n"
                     L"    HTMLTEMPL # \"File: [ENG] template.htm\" 9,9\n"
                     L"  HTMLRESTEMPL \"WWW Templates (Risultato)\" 12,11 RG\n"
                     L"    HTMLRESTEMPL # \"File: [ITA] modelloesito.htm\" 9,9\n"
                     L"    HTMLRESTEMPL # \"File: [ENG] resulttemplate.htm\" 9,9\n"));
    EXPECT_EQ(Values(1), L"CONSTANTS-" + Node(L"FIELDS", 1)) << "the folder bears the key of its field";
    EXPECT_EQ(Node(Captions(1), 1).find(Captions(1) + L" "), 0U) << "the leaf bears the key of its folder";
}

TEST(QueryTree, AnObjectThatCantBeReadLeavesTheTreeAsItWas) {
    Desk On(L"QUERY", FullQuery());
    const std::wstring Before = On.Picture();
    On.Object->Write(With(Desk::Named(L"ALTRA"), {{L"Rows", RegText(L"99999999999")}}));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.LoadData(); }), 6, L"QueryRecord.Load", L"Overflow"));
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(Query, SectionTexts) {
    for (const wchar_t* const Section :
         {L"PARMS", L"TITLES", L"MESSAGE", L"OPTIONMSG1", L"OPTIONMSG2", L"HTML", L"HTMLRES", L"HTMLTEMPL",
          L"HTMLRESTEMPL", L"FIELDPARMS", L"FIELDCAPTION", L"CONSTANTPARMS", L"CONSTANTCAPTION",
          L"COMMANDPARMS", L"COMMANDTIPS", L"POPUPS"}) {
        const std::wstring Key = On.Leaf(Section);
        EXPECT_TRUE(MatchesGolden("section/QUERY." + Narrow(Section) + ".txt", On.Text(Key)));
        ExpectFixpoint(On, Key);
    }
    // The folders of parameters show what their leaves show.
    for (const wchar_t* const Section : {L"FIELDPARMS", L"CONSTANTPARMS", L"COMMANDPARMS"}) {
        const std::wstring Leaf = On.Leaf(Section);
        EXPECT_EQ(Narrow(On.Text(On.Tree->NodeParent(Leaf))), Narrow(On.Text(Leaf)));
    }
    for (const std::wstring& Container :
         {std::wstring(L"COMMANDS"), Node(L"COMMANDS", 1), std::wstring(L"FIELDS"), Node(L"FIELDS", 1),
          Values(1), Node(Values(1), 1), Captions(1), ValueCaptions(1, 1), Tips(1), std::wstring(L"TITLES"),
          std::wstring(L"ROOT")})
        EXPECT_EQ(Narrow(On.Text(Container)), "") << Narrow(Container);
}

TEST_F(Query, SectionsThatTakeNoText) {
    const std::wstring Before = On.Picture();
    const auto PutAs = [&](std::wstring_view Section) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring Made;
        return On.Try([&] {
            return On.Core.SaveData({.CurrItem = L"ROOT", .Key = std::wstring(Section)}, Text, Made);
        });
    };
    for (const wchar_t* const Section : {L"", L"COMMANDS", L"FIELDS", L"CONSTANTS"})
        EXPECT_TRUE(Accepted(PutAs(Section))) << Narrow(Section);
    for (const wchar_t* const Section : {L"ALTRO", L"parms", L"CONSTANTS-FIELDS", L"TEXTFONTS"})
        EXPECT_TRUE(RefusedSilently(PutAs(Section))) << Narrow(Section);
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(Query, Export) {
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/QUERY.txt", Text));
    EXPECT_NE(Text.find(L"\tBEGIN COMMANDS\r\n\tEND COMMANDS\r\n\t\t\tBEGIN COMMANDTIPS\r\n"),
              std::wstring::npos)
        << "an empty block for the button, then its tips at the third tab";
    EXPECT_NE(Text.find(L"\t\tBEGIN CONSTANTPARMS\r\n\t\t\tBEGIN CONSTANTPARMS\r\n\t\t\t\tNAME= \"ITA\"\r\n"),
              std::wstring::npos);
    EXPECT_NE(Text.find(L"\t\t\tBEGIN CONSTANTCAPTION\r\n\t\t\t\tBEGIN CONSTANTCAPTION\r\n"
                        L"TEXT= \"Lingua italiana\"\r\n"),
              std::wstring::npos);
    // What stands where in the text, from left to right.
    std::size_t At = 0;
    for (const wchar_t* const Part :
         {L"BEGIN PARMS", L"BEGIN COMMANDS", L"BEGIN POPUPS", L"BEGIN FIELDS", L"BEGIN FIELDPARMS",
          L"BEGIN FIELDCAPTION", L"BEGIN CONSTANTPARMS", L"BEGIN CONSTANTCAPTION", L"END FIELDS",
          L"BEGIN HTML\r", L"BEGIN HTMLRES\r", L"BEGIN MESSAGE", L"BEGIN OPTIONMSG1", L"BEGIN OPTIONMSG2",
          L"BEGIN TITLES", L"BEGIN HTMLTEMPL", L"BEGIN HTMLRESTEMPL"}) {
        const std::size_t Found = Text.find(Part, At);
        ASSERT_NE(Found, std::wstring::npos) << Narrow(Part);
        At = Found;
    }
    Desk Bare(L"QUERY", WithList(Desk::Named(L"PROVA"), L"Fields", {Element(81, L"ANNO")}));
    const std::wstring Short = Bare.Exported();
    EXPECT_EQ(Narrow(Short.substr(Short.find(L"\tEND PARMS"))),
              "\tEND PARMS\r\n\tBEGIN FIELDS\r\n\t\tBEGIN FIELDPARMS\r\n\t\t\tNAME= \"ANNO\"\r\n"
              "\t\t\tSTOPWORD= \"\"\r\n\t\t\tTABLES= \"\"\r\n\t\t\tWORDS= FALSE\r\n\t\t\tSELECTED= 0\r\n"
              "\t\t\tSEMANTIC= 0\r\n\t\t\tFLAGS= NONE\r\n\t\t\t'[ID= 81]\r\n\t\t\t'[NAME= ANNO]\r\n"
              "\t\t\t'[VERSION= 0]\r\n\t\tEND FIELDPARMS\r\n\tEND FIELDS\r\n");
}

TEST_F(Query, ABlockGivesTheIndentOfWhatItHolds) {
    diQuery Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    const auto Shown = [&](std::wstring_view Section, bool Block, std::int32_t Indent,
                           std::vector<std::int32_t> Place = {}) {
        std::wstring Text;
        EXPECT_FALSE(Item.DispData({.CurrItem = L"ROOT", .Key = std::wstring(Section)}, Text, Block,
                                   Positions(Place), Indent));
        return Narrow(Text.substr(0, Text.find(L"\r\n", Text.find(L"= ")) + 2));
    };
    EXPECT_EQ(Shown(L"PARMS", false, 0), "BROWSE= \"TITOLI\"\r\n");
    EXPECT_EQ(Shown(L"PARMS", false, 2), "\t\tBROWSE= \"TITOLI\"\r\n");
    EXPECT_EQ(Shown(L"PARMS", true, 0), "BEGIN PARMS\r\n\tBROWSE= \"TITOLI\"\r\n");
    EXPECT_EQ(Shown(L"FIELDPARMS", true, 2, {1}), "\t\tBEGIN FIELDPARMS\r\n\t\t\tNAME= \"LINGUA\"\r\n");
    EXPECT_EQ(Shown(L"CONSTANTPARMS", false, 1, {1, 2}), "\tNAME= \"FRA\"\r\n");
    // The sections of others stand at the margin.
    EXPECT_EQ(Shown(L"CONSTANTCAPTION", true, 1, {1, 1, 2}),
              "\tBEGIN CONSTANTCAPTION\r\nTEXT= \"Italian\"\r\n");
    EXPECT_EQ(Shown(L"COMMANDTIPS", false, 3, {1, 2}), "TEXT= \"Start the search\"\r\n");
    for (const wchar_t* const Container : {L"COMMANDS", L"FIELDS", L"CONSTANTS", L"ALTRO"}) {
        std::wstring Text;
        ASSERT_FALSE(Item.DispData({.CurrItem = L"ROOT", .Key = Container}, Text, false, {}, 2));
        EXPECT_EQ(Narrow(Text), "");
        ASSERT_FALSE(Item.DispData({.CurrItem = L"ROOT", .Key = Container}, Text, true, {}, 2));
        const std::wstring Word = Container;
        EXPECT_EQ(Narrow(Text), Narrow(L"\t\tBEGIN " + Word + L"\r\n\t\tEND " + Word + L"\r\n"));
    }
    // A place that is none ends the block without its last line.
    std::wstring Text;
    const std::int32_t Nowhere[] = {1, 3};
    EXPECT_TRUE(Item.DispData({.CurrItem = L"ROOT", .Key = L"CONSTANTPARMS"}, Text, true, Nowhere, 0));
    EXPECT_EQ(Narrow(Text), "BEGIN CONSTANTPARMS\r\n");
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diQuery.DispConstParm");
    CoreUtil::Instance().ForgetError();
    Item.DesignTree().reset();
}

TEST_F(Query, SavedSectionsShowOnTheirNodes) {
    const struct {
        const wchar_t* Section;
        const wchar_t* Text;
        const wchar_t* Caption;
        const wchar_t* Source;
    } kRows[] = {
        {L"TITLES", L"TEXT= \"Nuovo\"\r\nLANG= fra", L"Titolo: [FRA] Nuovo", L"ParmEditor.SaveTitle"},
        {L"MESSAGE", L"TEXT= \"Nuovo\"\r\nLANG= fra", L"Messaggio: [FRA] Nuovo", L"ParmEditor.SaveCaption"},
        {L"OPTIONMSG1", L"TEXT= \"Nuovo\"\r\nLANG= fra", L"Messaggio: [FRA] Nuovo",
         L"ParmEditor.SaveCaption"},
        {L"OPTIONMSG2", L"TEXT= \"Nuovo\"\r\nLANG= fra", L"Messaggio: [FRA] Nuovo",
         L"ParmEditor.SaveCaption"},
        {L"HTML", L"FILENAME= \"x.htm\"\r\nLANG= spa", L"File: [SPA] x.htm", L"ParmEditor.SaveHtml"},
        {L"HTMLRES", L"FILENAME= \"x.htm\"\r\nLANG= spa", L"File: [SPA] x.htm", L"ParmEditor.SaveHtml"},
        {L"HTMLTEMPL", L"FILENAME= \"x.htm\"\r\nLANG= spa", L"File: [SPA] x.htm", L"ParmEditor.SaveHtml"},
        {L"HTMLRESTEMPL", L"FILENAME= \"x.htm\"\r\nLANG= spa", L"File: [SPA] x.htm", L"ParmEditor.SaveHtml"},
        {L"POPUPS", L"TEXT= \"Voce\"\r\nLANG= ita", L"", L"ParmEditor.SavePopup"},
        {L"COMMANDTIPS", L"TEXT= \"Nuovo\"\r\nLANG= deu", L"Messaggio: [DEU] Nuovo",
         L"ParmEditor.SaveCaption"},
        {L"FIELDCAPTION", L"TEXT= \"Nuova\"\r\nLANG= deu", L"Etichetta: [DEU] Nuova",
         L"ParmEditor.SaveCaption"},
        {L"CONSTANTCAPTION", L"TEXT= \"Nuova\"\r\nLANG= deu", L"Messaggio: [DEU] Nuova",
         L"ParmEditor.SaveCaption"},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Section));
        const std::wstring Leaf = On.Leaf(Row.Section);
        const std::wstring Before = On.Picture();
        std::wstring Text = Row.Text;
        Text.resize(Text.find(L'\r'));
        EXPECT_TRUE(Refused(On.Put(Leaf, Text), 20000, Row.Source,
                            L"Non è stato specificato un codice LANG valido."));
        EXPECT_EQ(On.Picture(), Before);
        ASSERT_TRUE(Accepted(On.Put(Leaf, Row.Text)));
        EXPECT_EQ(On.Tree->NodeText(Leaf), Row.Caption);
    }
    const std::wstring Parms = On.Leaf(L"COMMANDPARMS");
    std::wstring Text = L"CODE= \"vai\"";
    std::wstring Caption;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Parms}, Text, Caption); })));
    EXPECT_EQ(CaptionsBelow(On, L"COMMANDS"), (Words{L"VAI", L"ESCI"}));
    EXPECT_EQ(Caption, L"VAI");
    EXPECT_EQ(On.Tree->NodeText(Parms), L"Pulsante");
    ExpectSameTree();
}

TEST_F(Query, AFieldIsNamedByItsFirstCaption) {
    const std::wstring Second = Node(Captions(1), 2);
    ASSERT_TRUE(Accepted(On.Put(Node(Captions(1), 1), L"TEXT= \"Idioma\"\r\nLANG= SPA")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Idioma");
    On.Tree->SetNodeText(Node(L"FIELDS", 1), L"Campo: altro");
    ASSERT_TRUE(Accepted(On.Put(Second, L"TEXT= \"Langue\"\r\nLANG= FRA")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Idioma") << "whichever was edited";
    EXPECT_EQ(On.Tree->NodeText(Second), L"Etichetta: [FRA] Langue");
    ExpectSameTree();
}

TEST_F(Query, AValueIsNamedByTheStartOfItsName) {
    const std::wstring Long(300, L'x');
    std::wstring Text = L"NAME= \"" + Long + L"\"";
    std::wstring Caption;
    const std::wstring Leaf = On.Leaf(L"CONSTANTPARMS", 2);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Leaf}, Text, Caption); })));
    EXPECT_EQ(Caption, std::wstring(255, L'X'));
    EXPECT_EQ(CaptionsBelow(On, Values(1)), (Words{L"Valore: ITA", L"Valore: " + std::wstring(255, L'X')}));
    EXPECT_EQ(On.Tree->NodeText(Leaf), L"Valore");
    EXPECT_EQ(StoredValues(1).at(1).Name, std::wstring(300, L'X'));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(CaptionsBelow(On, Values(1)).at(1), L"Valore: " + std::wstring(300, L'X'))
        << "the builder takes it whole";
}

TEST_F(Query, NewElements) {
    const struct {
        const wchar_t* Folder;
        const wchar_t* Key;
        const wchar_t* Caption;
    } kRows[] = {
        {L"COMMANDS", L"COMMANDS-", L"?????"},
        {L"POPUPS", L"POPUPS ", L""},
        {L"FIELDS", L"FIELDS-", L"Campo: ????"},
        {L"TITLES", L"TITLES ", L"Titolo: [] "},
        {L"MESSAGE", L"MESSAGE ", L"Messaggio: [] "},
        {L"OPTIONMSG1", L"OPTIONMSG1 ", L"Messaggio: [] "},
        {L"OPTIONMSG2", L"OPTIONMSG2 ", L"Messaggio: [] "},
        {L"HTML", L"HTML ", L"File: [] "},
        {L"HTMLRES", L"HTMLRES ", L"File: [] "},
        {L"HTMLTEMPL", L"HTMLTEMPL ", L"File: [] "},
        {L"HTMLRESTEMPL", L"HTMLRESTEMPL ", L"File: [] "},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Folder));
        std::wstring Made;
        // The last of the folder, also where an element is selected.
        ASSERT_TRUE(Accepted(AddAt(On, Node(Row.Folder, 1), Made)));
        EXPECT_EQ(Made.find(Row.Key), 0U) << Narrow(Made);
        EXPECT_EQ(KeysBelow(On, Row.Folder).back(), Made);
        EXPECT_EQ(CaptionsBelow(On, Row.Folder).back(), Row.Caption);
        EXPECT_EQ(KeysBelow(On, Row.Folder).size(), 3U);
        EXPECT_TRUE(On.Tree->Modified());
    }
    for (const auto& [Folder, List] : kPlainLists) {
        const std::vector<RegObject>& Stored = ListOf(SavedBy(On), List);
        ASSERT_EQ(Stored.size(), 3U) << Narrow(Folder);
        // A button has none until it has a code.
        EXPECT_EQ(Stored.at(2).Id > 0, std::wstring_view(Folder) != L"COMMANDS") << Narrow(Folder);
    }
    // A new button begins with one tool tip.
    const RegObject Button = ListOf(SavedBy(On), L"Commands").at(2);
    EXPECT_EQ(TextOf(Button, L"Code"), L"?????");
    ASSERT_EQ(ListOf(Button, L"ToolTips").size(), 1U);
    EXPECT_GT(ListOf(Button, L"ToolTips").at(0).Id, 0);
    EXPECT_EQ(CaptionsBelow(On, Tips(3)), Words{L"Messaggio: [] "});
    EXPECT_EQ(CaptionsBelow(On, Node(L"FIELDS", 3)),
              (Words{L"Parametri", L"Etichette", L"Valori predefiniti"}));
    ExpectSameTree();
}

TEST_F(Query, NewCaptionsReadAsMessagesUntilTheyAreSavedMovedOrBuiltAgain) {
    std::wstring Made;
    for (const std::wstring& Folder : {Tips(2), Captions(2), ValueCaptions(1, 2)}) {
        SCOPED_TRACE(Narrow(Folder));
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_EQ(Made.find(Folder + L" "), 0U) << Narrow(Made);
        EXPECT_EQ(KeysBelow(On, Folder), Words{Made});
        EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
        // From a caption it goes behind the last all the same.
        std::wstring Second;
        ASSERT_TRUE(Accepted(AddAt(On, Made, Second)));
        EXPECT_EQ(KeysBelow(On, Folder), (Words{Made, Second}));
        ASSERT_TRUE(Accepted(On.Put(Second, L"TEXT= \"due\"\r\nLANG= ita")));
    }
    EXPECT_EQ(CaptionsBelow(On, Captions(2)), (Words{L"Messaggio: [] ", L"Etichetta: [ITA] due"}));
    // The lists are those of the elements below which the folders hang.
    EXPECT_EQ(ListOf(ListOf(SavedBy(On), L"Commands").at(1), L"ToolTips").size(), 2U);
    EXPECT_EQ(ListOf(StoredField(2), L"Captions").size(), 2U);
    EXPECT_EQ(ListOf(StoredValues(1).at(1), L"Message").size(), 2U);
    EXPECT_EQ(ListOf(StoredValues(1).at(0), L"Message").size(), 2U) << "that of the other value is as it was";
    ASSERT_TRUE(Accepted(MoveAt(On, Node(Captions(2), 1), -1, Made)));
    EXPECT_EQ(CaptionsBelow(On, Captions(2)), (Words{L"Etichetta: [ITA] due", L"Etichetta: [] "}));
    ASSERT_TRUE(Accepted(On.Put(Node(Captions(2), 1), L"TEXT= \"due\"\r\nLANG= ita")));
    ExpectSameTree();
}

TEST_F(Query, ANewValueStandsBesideTheSelectedOne) {
    std::wstring First;
    std::wstring Second;
    ASSERT_TRUE(Accepted(AddAt(On, Values(2), First)));
    ASSERT_TRUE(Accepted(AddAt(On, First, Second)));
    EXPECT_EQ(KeysBelow(On, Values(2)), (Words{First, Second}));
    EXPECT_EQ(First.find(L"CONSTANTS-"), 0U);
    EXPECT_EQ(CaptionsBelow(On, Values(2)), (Words{L"Valore: ?????", L"Valore: ?????"}));
    ASSERT_TRUE(Accepted(AddAt(On, Node(Values(1), 1), Second)));
    EXPECT_EQ(CaptionsBelow(On, Values(1)), (Words{L"Valore: ITA", L"Valore: FRA", L"Valore: ?????"}));
    const std::vector<RegObject> Stored = StoredValues(2);
    ASSERT_EQ(Stored.size(), 2U);
    for (const RegObject& Each : Stored) {
        EXPECT_EQ(Each.Id, 0) << "none until it has a name";
        EXPECT_EQ(Each.Name, L"?????");
        ASSERT_EQ(ListOf(Each, L"Message").size(), 1U) << "one caption to begin with";
        EXPECT_GT(ListOf(Each, L"Message").at(0).Id, 0);
    }
    EXPECT_EQ(CaptionsBelow(On, ValueCaptions(2, 1)), Words{L"Messaggio: [] "});
    ExpectSameTree();
}

TEST_F(Query, FurtherLeavesOfParameters) {
    std::wstring Made;
    for (const std::wstring& Key : {std::wstring(L"PARMS"), On.Leaf(L"COMMANDPARMS"), On.Leaf(L"FIELDPARMS"),
                                    On.Leaf(L"CONSTANTPARMS")}) {
        SCOPED_TRACE(Narrow(Key));
        // Nameless, and the beep sounds.
        const std::wstring Folder = Key == L"PARMS" ? Key : On.Tree->NodeParent(Key);
        const int Beeps = On.Platform.Beeps;
        ASSERT_TRUE(Accepted(AddAt(On, Key, Made)));
        ASSERT_EQ(KeysBelow(On, Folder).size(), 2U);
        EXPECT_EQ(KeysBelow(On, Folder).back(), Made);
        EXPECT_EQ(On.Tree->NodeText(Made), L"");
        EXPECT_EQ(On.Platform.Beeps, Beeps + 1);
        // It edits what the first leaf does.
        EXPECT_EQ(Narrow(On.Text(Made)), Narrow(On.Text(KeysBelow(On, Folder).front())));
        ASSERT_TRUE(Accepted(On.Put(Made, On.Text(Made))));
    }
    // Where no folder of an element is selected there is none for the leaf.
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Section : {L"COMMANDPARMS", L"FIELDPARMS", L"CONSTANTPARMS"}) {
        EXPECT_TRUE(
            Refused(On.Try([&] { return On.Core.EditData({.CurrItem = L"ROOT", .Key = Section}, Made); }), 91,
                    L"diQuery.SetNode", L"Oggetto non impostato"));
        EXPECT_EQ(On.Picture(), Before);
    }
    EXPECT_TRUE(
        Accepted(On.Try([&] { return On.Core.EditData({.CurrItem = L"ROOT", .Key = L"ALTRO"}, Made); })));
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(Query, ElementsMove) {
    for (const auto& [Folder, List] : kPlainLists) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        const std::vector<std::int32_t> Ids = IdsOf(ListOf(SavedBy(On), List));
        std::wstring Made;
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Folder, 1), 1, Made)));
        ASSERT_TRUE(Accepted(MoveAt(On, Node(Folder, 2), 1, Made)));
        EXPECT_EQ(Made, Node(Folder, 1));
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Captions[1], Captions[0]}));
        EXPECT_EQ(IdsOf(ListOf(SavedBy(On), List)), (std::vector<std::int32_t>{Ids[1], Ids[0]}));
        EXPECT_TRUE(Accepted(MoveAt(On, Folder, 1, Made))) << "a folder stays";
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Captions[1], Captions[0]}));
    }
    ExpectSameTree();
}

TEST_F(Query, InnerElementsMove) {
    const auto Move = [&](const std::wstring& Folder) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Before = CaptionsBelow(On, Folder);
        std::wstring Made;
        ASSERT_TRUE(Accepted(MoveAt(On, KeyBelow(On, Folder, 1), -1, Made)));
        EXPECT_EQ(Made, KeyBelow(On, Folder, 2));
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Before[1], Before[0]}));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, 0, Made)));
        EXPECT_TRUE(Accepted(MoveAt(On, Folder, 1, Made))) << "a folder stays";
    };
    Move(Tips(1));
    Move(ValueCaptions(1, 1));
    Move(Values(1));
    Move(Captions(1));
    EXPECT_EQ(IdsOf(StoredValues(1)), (std::vector<std::int32_t>{77, 74}));
    EXPECT_EQ(IdsOf(ListOf(StoredValues(1).at(1), L"Message")), (std::vector<std::int32_t>{76, 75}));
    EXPECT_EQ(IdsOf(ListOf(StoredField(1), L"Captions")), (std::vector<std::int32_t>{73, 72}));
    // The field's node takes its new first caption with the next save or load.
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Lingua dell'originale");
    ASSERT_TRUE(Accepted(On.Put(Node(Captions(1), 2), On.Text(Node(Captions(1), 2)))));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Original language");
    ExpectSameTree();
    // A field moves with all that hangs below it.
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Node(L"FIELDS", 1), -1, Made)));
    EXPECT_EQ(Values(2), L"CONSTANTS-" + Made);
    EXPECT_EQ(CaptionsBelow(On, Values(2)), (Words{L"Valore: FRA", L"Valore: ITA"}));
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Node(Node(Values(2), 2), 1), 1), L"NAME= \"LAT\"")));
    EXPECT_EQ(StoredValues(2).at(1).Name, L"LAT");
    ExpectSameTree();
}

TEST_F(Query, ElementsAreDeleted) {
    for (const auto& [Folder, List] : kPlainLists) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Folder, 1))));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Captions[1]});
    }
    ExpectSameTree();
    for (const auto& [Folder, List] : kPlainLists) {
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
        EXPECT_EQ(ListOf(SavedBy(On), List).size(), 0U);
    }
    ExpectSameTree();
}

TEST_F(Query, InnerElementsAreDeleted) {
    const auto Delete = [&](const std::wstring& Folder) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Before = CaptionsBelow(On, Folder);
        ASSERT_TRUE(Accepted(DeleteAt(On, KeyBelow(On, Folder, 1))));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Before[1]});
    };
    const auto Empty = [&](const std::wstring& Folder) {
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
    };
    Delete(Tips(1));
    Delete(ValueCaptions(1, 1));
    Empty(ValueCaptions(1, 1));
    EXPECT_EQ(ListOf(StoredValues(1).at(0), L"Message").size(), 0U);
    Delete(Values(1));
    EXPECT_EQ(IdsOf(StoredValues(1)), (std::vector<std::int32_t>{77}));
    EXPECT_EQ(IdsOf(ListOf(StoredField(1), L"Captions")), (std::vector<std::int32_t>{72, 73}));
    Empty(Values(1));
    EXPECT_EQ(StoredValues(1).size(), 0U);
    ExpectSameTree();
    Delete(Captions(1));
    EXPECT_EQ(IdsOf(ListOf(StoredField(1), L"Captions")), (std::vector<std::int32_t>{73}));
    Empty(Captions(1));
    Empty(Tips(1));
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(ListOf(ListOf(Saved, L"Commands").at(0), L"ToolTips").size(), 0U);
    EXPECT_EQ(ListOf(Saved, L"Fields").size(), 2U) << "the elements themselves stay";
}

TEST_F(Query, ParametersNeitherMoveNorGo) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Section : {L"PARMS", L"COMMANDPARMS", L"FIELDPARMS", L"CONSTANTPARMS"}) {
        std::wstring Made;
        for (const bool Group : {false, true}) EXPECT_TRUE(Accepted(DeleteAt(On, On.Leaf(Section), Group)));
        EXPECT_TRUE(Accepted(MoveAt(On, On.Leaf(Section), 1, Made)));
        EXPECT_EQ(On.Picture(), Before);
    }
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Query, AHeadOfAnotherFolderTouchesNoForeignNode) {
    std::wstring Made;
    // A list of the record is the one of its word, whatever is selected.
    ASSERT_TRUE(Accepted(On.Try(
        [&] { return On.Core.DeleteData({.CurrItem = L"ROOT", .Index = 1, .Key = L"TITLES"}, false); })));
    EXPECT_EQ(CaptionsBelow(On, L"TITLES"), Words{L"Titolo: [ENG] Catalogue search"});
    // A list of an element is that of the folder selected, which must be one of its word.
    const std::wstring Now = On.Picture();
    for (const std::wstring& Key : {std::wstring(L"ROOT"), std::wstring(L"FIELDS"), Node(L"FIELDS", 1)})
        for (const wchar_t* const Section :
             {L"COMMANDTIPS", L"FIELDCAPTION", L"CONSTANTS", L"CONSTANTCAPTION"}) {
            EXPECT_TRUE(
                Refused(On.Try([&] { return On.Core.EditData({.CurrItem = Key, .Key = Section}, Made); }), 91,
                        L"diQuery.EditData", L"Oggetto non impostato"));
            EXPECT_TRUE(Refused(On.Try([&] {
                return On.Core.DeleteData({.CurrItem = Key, .Index = 1, .Key = Section}, false);
            }),
                                91, L"diQuery.DeleteData", L"Oggetto non impostato"));
            EXPECT_EQ(On.Picture(), Now);
        }
    EXPECT_TRUE(Refused(On.Try([&] {
        return On.Core.DeleteData({.CurrItem = Values(1), .Index = 3, .Key = L"CONSTANTS"}, false);
    }),
                        9, L"diQuery.DeleteData", L"Indice non compreso nell'intervallo"));
    EXPECT_EQ(On.Picture(), Now);
}

TEST_F(Query, OperationsWithoutEffect) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = L"FIELDS"});
    EXPECT_TRUE(On.Platform.Shown.empty());
    EXPECT_TRUE(On.Platform.Listed.empty());
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = L"FIELDS"}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Query, ComesBackFromTheStoreAndFromTheClipboard) {
    std::wstring Name;
    std::wstring Desc;
    std::int16_t Version = 0;
    std::wstring Id;
    std::wstring Clsid;
    std::wstring Users;
    ASSERT_FALSE(On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
    const RegObject Saved = SavedBy(On);
    Desk Again(L"QUERY", Saved);
    EXPECT_TRUE(SavedBy(Again) == Saved);
    EXPECT_EQ(Narrow(Again.Picture()), Narrow(On.Picture()));
    EXPECT_EQ(Again.Exported(), On.Exported());
    std::wstring Copied;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Copied); })));
    EXPECT_EQ(Copied, L"QUERY");
    ASSERT_NE(On.Clipboard.DataObj, nullptr);
    Desk Pasted(L"QUERY", On.Clipboard.DataObj->Read());
    EXPECT_EQ(Texts(Pasted), Texts(On));
}

}  // namespace
}  // namespace kv::test
