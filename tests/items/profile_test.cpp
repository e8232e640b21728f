// The display profile: sections and tree. Its parameters, formats and fields have tests of their own.
#include "tests/items/Profile.h"

#include <gtest/gtest.h>

#include "items/client/diProfile.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

TEST(ProfileTree, AnEmptyProfileHasAllFolders) {
    Desk Empty(L"PROFILE");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  POPUPS \"Popup\" 12,11 RG\n"
                                              L"  TITLES \"Titolo\" 12,11 RG\n"
                                              L"  RECHTML \"Template Record\" 12,11 RG\n"
                                              L"  LOANHTML \"Template Disponibilità\" 12,11 RG\n"
                                              L"  FORMATS \"Formati\" 12,11 RG\n"
                                              L"  LOANTABLES \"Tabelle richiedibilità\" 12,11 RG\n"
                                              L"  FIELDS \"Campi\" 12,11 RG\n"
                                              L"  HTML \"WWW Templates\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Tree->Served(), (std::vector<std::wstring>{L"FINDTAG", L"RENUMTAG", L"MAPTABLE"}));
    const std::wstring Actions =
        L"MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC QUERYRESULT ADMIN LANG HTMLMOVE "
        L"LOGIN HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC WEBCLIENT DBSELECT SETOPS NAVIGATE PASSWORD "
        L"CLIENTSETUP LOANSTART LOANQUIT SHELLWIN INFO KVRSELECT IMAGE SEEK OPEN CLOSEALL QUERYGET BOOLSTEM "
        L"SHELF IMAGELIST ZOOMIN ZOOMOUT MAP LOANACTION IMAGEUM\n";
    EXPECT_EQ(
        Narrow(Empty.Offered()),
        Narrow(L"PARMS ALIGN= LEFT RIGHT\n"
               L"PARMS WIDTH= ADJUST PLAIN\n"
               L"PARMS FLAGS= REFRESHTIPS NONE\n"
               L"PARMS IMAGEOPTION= NONE ALIGNBOTTOM ALIGNLEFT ALIGNRIGHT ALIGNTOP LINKS\n"
               L"FIELDPARMS ACTION= " +
               Actions +
               L"FIELDPARMS CANCEL= FALSE TRUE\n"
               L"FIELDPARMS DEFAULT= FALSE TRUE\n"
               L"FIELDPARMS SEPARATOR= FALSE TRUE\n"
               L"FIELDPARMS FLAGS= PEER FORCENAVY LITERAL NOREPAINT NOHREF ENDBANNER NOBREAK SPLIT NONE\n"
               L"FORMATPARMS DEFSTYLE= FALSE TRUE\n"
               L"FORMATPARMS STYLE= BANNER COOKED BATCH NOPRINT SPLITTED DOUBLEFRAME\n"
               L"FORMATPARMS DISPTYPE= DISPLAY PRINTER FILE\n"
               L"PARMS TIPSALIGN= NONE LEFT RIGHT TOP BOTTOM\n"
               L"PARMS TIPSBUTTONS= BACK CLOSE HOME\n"
               L"PARMS TOOLTIPS= NONE CHECK FOLDER LINK COMMANDS LOANLINK\n"
               L"PARMS LOANALIGN= NONE LEFT RIGHT TOP BOTTOM\n"
               L"PARMS TOOLALIGN= NONE LEFT RIGHT TOP BOTTOM\n"
               L"HTML ACTION= " +
               Actions));
}

TEST_F(Profile, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                     L"    COMMANDS-# \"STAMPA\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"        COMMANDTIPS # \"Messaggio: [ITA] Stampa la scheda\" 9,9\n"
                     L"        COMMANDTIPS # \"Messaggio: [ENG] Print the card\" 9,9\n"
                     L"    COMMANDS-# \"ESCI\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"  POPUPS \"Popup\" 12,11 RG\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"  TITLES \"Titolo\" 12,11 RG\n"
                     L"    TITLES # \"Titolo: [ITA] Scheda del catalogo \" 9,9\n"
                     L"    TITLES # \"Titolo: [ENG] Catalogue card\" 9,9\n"
                     L"  RECHTML \"Template Record\" 12,11 RG\n"
                     L"    RECHTML # \"File: [ITA] scheda.htm\" 9,9\n"
                     L"    RECHTML # \"File: [ENG] card.htm\" 9,9\n"
                     L"  LOANHTML \"Template Disponibilità\" 12,11 RG\n"
                     L"    LOANHTML # \"File: [ITA] prestito.htm\" 9,9\n"
                     L"    LOANHTML # \"File: [ENG] loan.htm\" 9,9\n"
                     L"  FORMATS \"Formati\" 12,11 RG\n"
                     L"    FORMATS-# \"SCHEDA\" 12,11 RDM\n"
                     L"      FORMATPARMS-# \"Parametri\" 12,11\n"
                     L"        FORMATPARMS # \"Parametri\" 9,9\n"
                     L"      FORMATCAPTION-# \"Etichette\" 12,11 R\n"
                     L"        FORMATCAPTION # \"Etichetta: [ITA] Scheda\" 9,9\n"
                     L"        FORMATCAPTION # \"Etichetta: [ENG] Card\" 9,9\n"
                     L"    FORMATS-# \"????\" 12,11 RDM\n"
                     L"      FORMATPARMS-# \"Parametri\" 12,11\n"
                     L"        FORMATPARMS # \"Parametri\" 9,9\n"
                     L"      FORMATCAPTION-# \"Etichette\" 12,11 R\n"
                     L"  LOANTABLES \"Tabelle richiedibilità\" 12,11 RG\n"
                     L"    LOANTABLES-# \"M - 1\" 12,11 RDM\n"
                     L"      LOANTABLEPARMS-# \"Parametri\" 12,11\n"
                     L"        LOANTABLEPARMS # \"Parametri\" 9,9\n"
                     L"      LOANTABLECAPTION-# \"Messaggi\" 12,11 R\n"
                     L"        LOANTABLECAPTION # \"Messaggio: [ITA] Prestabile\" 9,9\n"
                     L"        LOANTABLECAPTION # \"Messaggio: [ENG] For loan\" 9,9\n"
                     L"    LOANTABLES-# \" - \" 12,11 RDM\n"
                     L"      LOANTABLEPARMS-# \"Parametri\" 12,11\n"
                     L"        LOANTABLEPARMS # \"Parametri\" 9,9\n"
                     L"      LOANTABLECAPTION-# \"Messaggi\" 12,11 R\n"
                     L"  FIELDS \"Campi\" 12,11 RG\n"
                     L"    FIELDS-# \"Campo: 00012\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"
                     L"        FIELDCAPTION # \"Etichetta: [ITA] Titolo: \" 9,9\n"
                     L"        FIELDCAPTION # \"Etichetta: [ENG] Title: \" 9,9\n"
                     L"    FIELDS-# \"Campo: #####\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"
                     L"  HTML \"WWW Templates\" 12,11 RG\n"
                     L"    HTML # \"File: [ITA] pagina.htm\" 9,9\n"
                     L"    HTML # \"File: [ENG] page.htm\" 9,9\n"));
}

TEST_F(Profile, SectionTexts) {
    for (const wchar_t* const Section :
         {L"PARMS", L"COMMANDPARMS", L"COMMANDTIPS", L"POPUPS", L"TITLES", L"RECHTML", L"LOANHTML", L"HTML",
          L"FORMATPARMS", L"FORMATCAPTION", L"LOANTABLEPARMS", L"LOANTABLECAPTION", L"FIELDPARMS",
          L"FIELDCAPTION"}) {
        const std::wstring Key = On.Leaf(Section);
        EXPECT_TRUE(MatchesGolden("section/PROFILE." + Narrow(Section) + ".txt", On.Text(Key)));
        ExpectFixpoint(On, Key);
    }
    EXPECT_EQ(Narrow(On.Text(Node(L"COMMANDS", 1))), Narrow(On.Text(On.Leaf(L"COMMANDPARMS"))))
        << "the node of a button shows what its parameters show";
    for (const wchar_t* const Folder : {L"FORMATS", L"LOANTABLES", L"FIELDS", L"COMMANDS", L"TITLES"})
        EXPECT_EQ(Narrow(On.Text(Folder)), "");
    EXPECT_EQ(Narrow(On.Text(Node(L"FORMATS", 1))), "");
}

TEST_F(Profile, SectionsThatTakeNoText) {
    for (const std::wstring& Key : {Node(L"COMMANDS", 1), Node(L"FORMATS", 1), Node(L"FIELDS", 1),
                                    Node(L"LOANTABLES", 1), std::wstring(L"FORMATS")})
        EXPECT_TRUE(Accepted(On.Put(Key, L"PIPPO= 1")));
    const auto PutAs = [&](std::wstring_view Section) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring Made;
        return On.Try([&] {
            return On.Core.SaveData({.CurrItem = L"ROOT", .Key = std::wstring(Section)}, Text, Made);
        });
    };
    EXPECT_TRUE(Accepted(PutAs(L"")));
    EXPECT_TRUE(RefusedSilently(PutAs(L"ALTRO")));
}

TEST_F(Profile, TheTreeHasNoFolderForTheFontsAndTheExportHasThem) {
    EXPECT_EQ(On.Picture().find(L"TEXTFONTS"), std::wstring::npos);
    EXPECT_NE(On.Exported().find(L"\tBEGIN TEXTFONTS\r\nNAME= \"Arial\"\r\n"), std::wstring::npos);
    // They are reached by their place alone.
    const auto At = [](std::int32_t Index) {
        return window::Selection{.CurrItem = L"ROOT", .Index = Index, .Key = L"TEXTFONTS"};
    };
    const std::wstring Before = On.Picture();
    std::wstring Text;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.DispData(At(2), Text); })));
    EXPECT_EQ(Text.find(L"NAME= \"Courier\"\r\n"), 0U) << Narrow(Text);
    std::wstring Made;
    Text = L"NAME= \"Verdana\"\r\nSIZE= 9";
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData(At(2), Text, Made); })));
    EXPECT_EQ(Names(L"TextFonts"), (Words{L"Arial", L"Verdana"}));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.EditData(At(0), Made); })));
    EXPECT_EQ(Made.find(L"TEXTFONTS "), 0U);
    EXPECT_EQ(Names(L"TextFonts"), (Words{L"Arial", L"Verdana", L""}));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.MoveData(At(2), 1, Made); })));
    EXPECT_EQ(Names(L"TextFonts"), (Words{L"Verdana", L"Arial", L""}));
    EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(At(1), 1, Made); })));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At(1), false); })));
    EXPECT_EQ(Names(L"TextFonts"), (Words{L"Arial", L""}));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.DeleteData(At(3), false); }), 9, L"diProfile.DeleteData",
                        L"Indice non compreso nell'intervallo"));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At(0), true); })));
    EXPECT_EQ(Names(L"TextFonts"), Words{});
    EXPECT_EQ(On.Picture(), Before) << "no node comes or goes";
}

TEST_F(Profile, Export) {
    EXPECT_TRUE(MatchesGolden("export/PROFILE.txt", On.Exported()));
    Desk Bare(L"PROFILE", WithList(Desk::Named(L"PROVA"), L"Fields", {Element(71, L"", {{L"Tag", 5}})}));
    const std::wstring Text = Bare.Exported();
    EXPECT_EQ(
        Narrow(Text.substr(Text.find(L"\tEND PARMS"))),
        "\tEND PARMS\r\n\tBEGIN FIELDS\r\n\tBEGIN FIELDPARMS\r\n\t\tTAG= 5\r\n\t\tBROWSE= \"\"\r\n"
        "\t\tPROFILE= \"\"\r\n\t\tFLAGS= NONE\r\n\t\t'[ID= 71]\r\n\t\t'[NAME= ]\r\n\t\t'[VERSION= 0]\r\n"
        "\tEND FIELDPARMS\r\n\tEND FIELDS\r\n");
}

TEST(ProfileExport, EndsWithTheFirstSectionThatFails) {
    RegObject Odd = WithList(Desk::Named(L"PROVA"), L"Formats",
                             {Element(61, L"A"), Element(62, L"B", {{L"Server", RegText(L"guasto")}})});
    Odd = WithList(std::move(Odd), L"Html", {Page(91, L"ITA", L"pagina.htm")});
    Desk Damaged(L"PROFILE", std::move(Odd));
    std::wstring Buffer;
    EXPECT_TRUE(
        Refused(Damaged.Try([&] { return Damaged.Server.Export(Damaged.Object, L"PROFILE", Buffer); }), 20017,
                L"vDesignPar.ServerParmsDisp", L"Parametri errati."));
    EXPECT_NE(Buffer.find(L"NAME= \"A\""), std::wstring::npos);
    EXPECT_EQ(Buffer.find(L"BEGIN HTML"), std::wstring::npos);
}

TEST_F(Profile, SavedSectionsShowOnTheirNodes) {
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"TITLES"), L"TEXT= \"Nuovo\"\r\nLANG= fra")));
    EXPECT_EQ(CaptionsBelow(On, L"TITLES").at(0), L"Titolo: [FRA] Nuovo");
    for (const wchar_t* const Section : {L"RECHTML", L"LOANHTML", L"HTML"}) {
        ASSERT_TRUE(Accepted(On.Put(On.Leaf(Section), L"FILENAME= \"x.htm\"\r\nLANG= spa")));
        EXPECT_EQ(CaptionsBelow(On, Section).at(0), L"File: [SPA] x.htm");
    }
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"POPUPS"), L"TEXT= \"Voce\"\r\nLANG= ita")));
    EXPECT_EQ(CaptionsBelow(On, L"POPUPS").at(0), L"") << "popups have no caption";
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"COMMANDPARMS"), L"CODE= \"vai\"")));
    EXPECT_EQ(CaptionsBelow(On, L"COMMANDS").at(0), L"VAI");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"FORMATPARMS", 2),
                                L"NAME= \"breve\"\r\nSTYLE= BANNER\r\n"
                                L"DISPTYPE= FILE")));
    EXPECT_EQ(CaptionsBelow(On, L"FORMATS").at(1), L"BREVE");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"LOANTABLEPARMS", 2), L"NATURE= \"s\"\r\nLEVEL= \"x\"")));
    EXPECT_EQ(CaptionsBelow(On, L"LOANTABLES").at(1), L"S - X");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"FIELDPARMS", 2), L"TAG= 99")));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS").at(1), L"Campo: 00099");
    // A label reads as one once its section is saved, whatever it read before.
    for (const wchar_t* const Section :
         {L"COMMANDTIPS", L"FORMATCAPTION", L"LOANTABLECAPTION", L"FIELDCAPTION"}) {
        ASSERT_TRUE(Accepted(On.Put(On.Leaf(Section), L"TEXT= \"Nuovo testo\"\r\nLANG= deu")));
        EXPECT_EQ(On.Tree->NodeText(On.Leaf(Section)), L"Etichetta: [DEU] Nuovo testo");
        EXPECT_TRUE(Refused(On.Put(On.Leaf(Section), L"TEXT= \"Altro\""), 20000, L"ParmEditor.SaveCaption",
                            L"Non è stato specificato un codice LANG valido."));
        EXPECT_EQ(On.Tree->NodeText(On.Leaf(Section)), L"Etichetta: [DEU] Nuovo testo");
    }
}

TEST_F(Profile, NewElements) {
    const struct {
        const wchar_t* Folder;
        const wchar_t* Key;
        const wchar_t* Caption;
    } kRows[] = {
        {L"COMMANDS", L"COMMANDS-", L"?????"},     {L"POPUPS", L"POPUPS ", L""},
        {L"TITLES", L"TITLES ", L"Titolo: [] "},   {L"RECHTML", L"RECHTML ", L"File: [] "},
        {L"LOANHTML", L"LOANHTML ", L"File: [] "}, {L"HTML", L"HTML ", L"File: [] "},
        {L"FORMATS", L"FORMATS-", L"????"},        {L"LOANTABLES", L"LOANTABLES-", L" - "},
        {L"FIELDS", L"FIELDS-", L"Campo: #####"},
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
    }
    EXPECT_EQ(LongOf(ListOf(SavedBy(On), L"Fields").at(2), L"Tag"), 31) << "the largest and one";
    ExpectSameTree();
}

TEST_F(Profile, NewLabels) {
    const struct {
        const wchar_t* Section;
        const wchar_t* Owner;
    } kRows[] = {{L"COMMANDTIPS", L"COMMANDS"},
                 {L"FORMATCAPTION", L"FORMATS"},
                 {L"LOANTABLECAPTION", L"LOANTABLES"},
                 {L"FIELDCAPTION", L"FIELDS"}};
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Section));
        const std::wstring Folder = KeyBelow(On, Node(Row.Owner, 2), 2);
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_EQ(Made.find(std::wstring(Row.Section) + L" "), 0U) << Narrow(Made);
        EXPECT_EQ(KeysBelow(On, Folder), Words{Made});
        EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
        // The list is that of the element below which the folder hangs.
        ASSERT_TRUE(Accepted(On.Put(Made, L"TEXT= \"x\"\r\nLANG= ita")));
    }
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(ListOf(ListOf(Saved, L"Commands").at(1), L"ToolTips").size(), 1U);
    for (const wchar_t* const List : {L"Formats", L"LoanTables", L"Fields"})
        EXPECT_EQ(ListOf(ListOf(Saved, List).at(1), L"Captions").size(), 1U) << Narrow(List);
}

TEST_F(Profile, SectionsThatAddNothing) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Section : {L"FORMATPARMS", L"COMMANDPARMS", L"LOANTABLEPARMS"}) {
        std::wstring Made;
        EXPECT_TRUE(Accepted(AddAt(On, On.Leaf(Section), Made)));
        EXPECT_EQ(On.Picture(), Before);
    }
    // A further leaf, nameless, and the beep sounds.
    for (const std::wstring& Key : {std::wstring(L"PARMS"), On.Leaf(L"FIELDPARMS")}) {
        const std::wstring Folder = Key == L"PARMS" ? Key : On.Tree->NodeParent(Key);
        const int Beeps = On.Platform.Beeps;
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Key, Made)));
        EXPECT_EQ(KeysBelow(On, Folder).size(), 2U);
        EXPECT_EQ(KeysBelow(On, Folder).back(), Made);
        EXPECT_EQ(On.Tree->NodeText(Made), L"");
        EXPECT_EQ(On.Platform.Beeps, Beeps + 1);
        EXPECT_EQ(On.Text(Made), On.Text(KeysBelow(On, Folder).front()));
    }
}

TEST_F(Profile, WithoutAFreeTagAFieldGetsTheFirst) {
    Desk Full(L"PROFILE",
              WithList(Desk::Named(L"PROVA"), L"Fields",
                       {Element(1, L"", {{L"Tag", 1}}), Element(2, L"", {{L"Tag", 2147483647}})}));
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(Full, L"FIELDS", Made)));
    EXPECT_TRUE(Refused(Full.Try([&] { return Full.Core.Save(); }), 20000, L"diProfile.Save",
                        L"Tag duplicato: 1\r\n#1 e #3"));
}

TEST_F(Profile, ElementsMove) {
    for (const wchar_t* const Folder : {L"COMMANDS", L"POPUPS", L"TITLES", L"RECHTML", L"LOANHTML", L"HTML",
                                        L"FORMATS", L"LOANTABLES", L"FIELDS"}) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        std::wstring Made;
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Folder, 1), 1, Made)));
        ASSERT_TRUE(Accepted(MoveAt(On, Node(Folder, 2), 1, Made)));
        EXPECT_EQ(Made, Node(Folder, 1));
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Captions[1], Captions[0]}));
        EXPECT_TRUE(Accepted(MoveAt(On, Folder, 1, Made))) << "a folder stays";
    }
    EXPECT_EQ(Ids(L"Popups"), (std::vector<std::int32_t>{22, 21}));
    EXPECT_EQ(Ids(L"Fields"), (std::vector<std::int32_t>{74, 71}));
    ExpectSameTree();
}

TEST_F(Profile, LabelsMoveAndTakeTheCaptionThatLoadingGives) {
    const struct {
        const wchar_t* Owner;
        const wchar_t* First;
        const wchar_t* Second;
    } kRows[] = {
        {L"COMMANDS", L"Messaggio: [ENG] Print the card", L"Messaggio: [ITA] Stampa la scheda"},
        {L"FORMATS", L"Etichetta: [ENG] Card", L"Etichetta: [ITA] Scheda"},
        {L"LOANTABLES", L"Messaggio: [ENG] For loan", L"Messaggio: [ITA] Prestabile"},
        {L"FIELDS", L"Etichetta: [ENG] Title: ", L"Etichetta: [ITA] Titolo: "},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Owner));
        const std::wstring Folder = KeyBelow(On, Node(Row.Owner, 1), 2);
        std::wstring Made;
        ASSERT_TRUE(Accepted(MoveAt(On, KeyBelow(On, Folder, 1), -1, Made)));
        EXPECT_EQ(Made, KeyBelow(On, Folder, 2));
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Row.First, Row.Second}));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, -1, Made)));
    }
    ExpectSameTree();
}

TEST_F(Profile, ElementsAreDeleted) {
    for (const wchar_t* const Folder : {L"COMMANDS", L"POPUPS", L"TITLES", L"RECHTML", L"LOANHTML", L"HTML",
                                        L"FORMATS", L"LOANTABLES", L"FIELDS"}) {
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Folder, 1))));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Captions[1]});
    }
    ExpectSameTree();
    for (const wchar_t* const Folder : {L"COMMANDS", L"POPUPS", L"TITLES", L"RECHTML", L"LOANHTML", L"HTML",
                                        L"FORMATS", L"LOANTABLES", L"FIELDS"}) {
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
    }
    ExpectSameTree();
}

TEST_F(Profile, LabelsAreDeleted) {
    for (const wchar_t* const Owner : {L"COMMANDS", L"FORMATS", L"LOANTABLES", L"FIELDS"}) {
        SCOPED_TRACE(Narrow(Owner));
        const std::wstring Folder = KeyBelow(On, Node(Owner, 1), 2);
        const Words Captions = CaptionsBelow(On, Folder);
        ASSERT_TRUE(Accepted(DeleteAt(On, KeyBelow(On, Folder, 1))));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Captions[1]});
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
    }
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(ListOf(ListOf(Saved, L"Formats").at(0), L"Captions").size(), 0U);
    EXPECT_EQ(Names(L"Formats").size(), 2U) << "the elements themselves stay";
}

TEST_F(Profile, ParametersAreNotDeleted) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Section :
         {L"PARMS", L"FIELDPARMS", L"FORMATPARMS", L"LOANTABLEPARMS", L"COMMANDPARMS"}) {
        EXPECT_TRUE(Accepted(DeleteAt(On, On.Leaf(Section))));
        EXPECT_EQ(On.Picture(), Before);
    }
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Profile, AHeadOfAnotherFolderTouchesNoForeignNode) {
    const std::wstring Before = On.Picture();
    std::wstring Made;
    // A list of the record is the one of its word, whatever is selected.
    ASSERT_TRUE(Accepted(On.Try(
        [&] { return On.Core.DeleteData({.CurrItem = L"ROOT", .Index = 1, .Key = L"TITLES"}, false); })));
    EXPECT_EQ(CaptionsBelow(On, L"TITLES"), Words{L"Titolo: [ENG] Catalogue card"});
    ASSERT_TRUE(Accepted(
        On.Try([&] { return On.Core.EditData({.CurrItem = On.Leaf(L"PARMS"), .Key = L"TITLES"}, Made); })));
    EXPECT_EQ(KeysBelow(On, L"TITLES").back(), Made);
    // A list of an element is that of the folder selected, which must be one of its word.
    for (const wchar_t* const Key : {L"ROOT", L"FORMATS"}) {
        const std::wstring Now = On.Picture();
        EXPECT_TRUE(
            Refused(On.Try([&] { return On.Core.EditData({.CurrItem = Key, .Key = L"FIELDCAPTION"}, Made); }),
                    91, L"diProfile.EditData", L"Oggetto non impostato"));
        EXPECT_TRUE(On.Try([&] {
            return On.Core.DeleteData({.CurrItem = Key, .Index = 1, .Key = L"FIELDCAPTION"}, false);
        }));
        EXPECT_EQ(On.Picture(), Now);
    }
}

TEST_F(Profile, EqualTagsAreRefusedByPlace) {
    Desk Twice(L"PROFILE", WithList(Desk::Named(L"PROVA"), L"Fields",
                                    {Element(1, L"A", {{L"Tag", 7}}), Element(2, L"B", {{L"Tag", 8}}),
                                     Element(3, L"C", {{L"Tag", 7}})}));
    const RegObject Before = Twice.Object->Read();
    EXPECT_TRUE(Refused(Twice.Try([&] { return Twice.Core.Save(); }), 20000, L"diProfile.Save",
                        L"Tag duplicato: 7\r\n#1 e #3"));
    EXPECT_TRUE(Twice.Object->Read() == Before);
}

TEST_F(Profile, RenumberingShowsTheNewTagsAndKeepsUnsavedEdits) {
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"FIELDPARMS"), L"TAG= 44\r\nBROWSE= \"lista\"")));
    On.Platform.Answers = {Answer::Yes};
    On.Core.TlbrButtonClick(L"RENUMTAG", {.CurrItem = L"ROOT"});
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (Words{L"Campo: 00001", L"Campo: #####"}));
    const std::vector<RegObject>& Fields = ListOf(SavedBy(On), L"Fields");
    EXPECT_EQ(LongOf(Fields.at(0), L"Tag"), 1);
    EXPECT_EQ(TextOf(Fields.at(0), L"Browse"), L"LISTA");
    EXPECT_EQ(LongOf(Fields.at(1), L"Tag"), 2);
    On.Core.TlbrButtonClick(L"FINDTAG", {.CurrItem = L"ROOT"});
    EXPECT_EQ(On.Platform.Listed, (std::vector<Words>{{L"3 - 32767"}}));
    On.Platform.Listed.clear();
    On.Core.TlbrButtonClick(L"CONSTANTS", {.CurrItem = L"ROOT"});
    EXPECT_TRUE(On.Platform.FileQuestions.empty()) << "no tool of this class";
}

TEST_F(Profile, ComesBackFromTheStore) {
    const RegObject Saved = SavedBy(On);
    Desk Again(L"PROFILE", Saved);
    EXPECT_TRUE(SavedBy(Again) == Saved);
    EXPECT_EQ(Again.Exported(), On.Exported());
}

// A profile whose tree refuses nodes.
class ProfileNodes : public ::testing::Test {
  protected:
    TestPlatform Platform;
    MemoryRegData Object{L"PROFILE", FullProfile()};
    std::shared_ptr<RefusingTree> Tree = std::make_shared<RefusingTree>();
    diProfile Item;

    void SetUp() override { Item.DesignTree() = Tree; }
    ::testing::AssertionResult ToldBy(bool Failed, std::wstring_view Source) {
        const KvError Error = CoreUtil::Instance().LastError();
        CoreUtil::Instance().ForgetError();
        if (!Failed) return ::testing::AssertionFailure() << "nothing failed";
        if (Error.Source != Source) return ::testing::AssertionFailure() << Narrow(Error.Source);
        return ::testing::AssertionSuccess();
    }
    std::int32_t Stored(std::wstring_view List) {
        MemoryRegData Copy(L"PROFILE");
        EXPECT_FALSE(Item.Save(Copy));
        return static_cast<std::int32_t>(ListOf(Copy.Read(), List).size());
    }
};

TEST_F(ProfileNodes, ThatCannotBeMadeAreToldByTheirMaker) {
    const std::pair<const wchar_t*, const wchar_t*> kRows[] = {
        {L"TITLES ", L"diProfile.SetNode"},
        {L"POPUPS ", L"diProfile.SetNode"},
        {L"RECHTML ", L"diProfile.SetNode"},
        {L"HTML ", L"diProfile.SetNode"},
        {L"COMMANDS-", L"vdbcModule.CommandNodeAdd"},
        {L"FIELDS-", L"diProfile.SetFieldNode"},
        {L"FIELDCAPTION ", L"diProfile.SetFieldNode"},
        {L"FORMATS-", L"diProfile.SetFormatNode"},
        {L"FORMATCAPTION ", L"diProfile.SetFormatNode"},
        {L"LOANTABLECAPTION-", L"diProfile.SetLoanTableNode"},
        {L"PARMS", L"diProfile.LoadData"}};
    for (const auto& [Refused, Source] : kRows) {
        Tree->Refused = Refused;
        EXPECT_TRUE(ToldBy(Item.LoadData(Object), Source)) << Narrow(Refused);
    }
}

TEST_F(ProfileNodes, ThatAreHalfBuiltGoOutAgain) {
    ASSERT_FALSE(Item.LoadData(Object));
    const struct {
        const wchar_t* Refused;
        const wchar_t* Folder;
        const wchar_t* List;
    } kRows[] = {
        {L"FORMATCAPTION-", L"FORMATS", L"Formats"},          {L"FORMATPARMS ", L"FORMATS", L"Formats"},
        {L"LOANTABLECAPTION-", L"LOANTABLES", L"LoanTables"}, {L"FIELDPARMS-", L"FIELDS", L"Fields"},
        {L"COMMANDTIPS-", L"COMMANDS", L"Commands"},          {L"TITLES ", L"TITLES", L"Titles"}};
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Refused));
        const Head At{.CurrFolder = Row.Folder, .CurrItem = Row.Folder, .Key = Row.Folder};
        std::wstring Made;
        Tree->Refused = Row.Refused;
        EXPECT_TRUE(Item.EditData(At, Made));
        CoreUtil::Instance().ForgetError();
        EXPECT_EQ(Tree->CountBelow(Row.Folder), 2);
        EXPECT_EQ(Stored(Row.List), 2);
        // Moved, the element and its node come back to where they were, or the node can't be made either way.
        Head Second{.CurrFolder = Tree->NodeAt(Row.Folder, 2),
                    .CurrItem = Tree->NodeAt(Row.Folder, 2),
                    .Index = 2,
                    .Key = Row.Folder};
        const std::wstring First = Tree->NodeAt(Row.Folder, 1);
        EXPECT_TRUE(Item.MoveData(Second, 1));
        CoreUtil::Instance().ForgetError();
        EXPECT_EQ(Tree->NodeAt(Row.Folder, 1), First);
        EXPECT_LE(Tree->CountBelow(Row.Folder), 2);
        Tree->Refused.clear();
        ASSERT_FALSE(Item.LoadData(Object));
        EXPECT_EQ(Tree->CountBelow(Row.Folder), 2);
    }
}

TEST_F(ProfileNodes, OfAMovedLabelAreToldUnderTheMove) {
    ASSERT_FALSE(Item.LoadData(Object));
    const std::wstring Format = Tree->NodeAt(L"FORMATS", 1);
    const std::wstring Folder = Tree->NodeAt(Format, 2);
    Head Label{
        .CurrFolder = Folder, .CurrItem = Tree->NodeAt(Folder, 2), .Index = 2, .Key = L"FORMATCAPTION"};
    Tree->Refused = L"FORMATCAPTION ";
    EXPECT_TRUE(ToldBy(Item.MoveData(Label, 1), L"diProfile.MoveData"));
}

TEST_F(Profile, AfterMappingNoElementIsAddedUntilTheTreeIsBuiltAgain) {
    std::string Bytes;
    {
        Desk Source(L"TABLE",
                    WithList(Desk::Named(L"LIBRI"), L"Fields", {Element(171, L"A", {{L"Tag", 225}})}));
        std::wstring Word;
        ASSERT_TRUE(
            Accepted(Source.Try([&] { return Source.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
        Bytes = ReadFile(Source.Platform.Folder / "KVDSCLP.TMP");
    }
    WriteFile(On.Platform.Folder / "KVDSCLP.TMP", Bytes);
    for (const Answer Given : {Answer::No, Answer::Yes}) {
        On.Platform.Answers = {Given};
        On.Core.TlbrButtonClick(L"MAPTABLE", {.CurrItem = L"ROOT"});
        std::wstring Made;
        EXPECT_TRUE(Refused(AddAt(On, L"FIELDS", Made), 20000, L"diProfile.EditData",
                            L"Salvare l'oggetto e riaprirlo per visualizzare le modifiche."));
    }
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
}

}  // namespace
}  // namespace kv::test
