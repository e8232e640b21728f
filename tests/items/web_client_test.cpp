// The web client: its parameters, buttons with their tips, and popups that stay.
#include <gtest/gtest.h>

#include "items/client/diWebClient.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diWebClient.SaveParm";

RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Protocol(std::wstring_view Name) {
    RegObject Made;
    Made.Text = Name;
    return Made;
}
RegObject Browser() {
    RegObject Made =
        With(Desk::Named(L"PROVA"),
             {{L"AddressBar", true}, {L"StatusBar", false}, {L"DefaultFontSize", 3}, {L"ToolAlign", 3}});
    Made =
        WithList(std::move(Made), L"Commands",
                 {WithList(Element(41, L"", {{L"Code", RegText(L"INDIETRO")}, {L"Action", 6}}), L"ToolTips",
                           {TextIn(42, L"ITA", L"Torna alla pagina di prima"), TextIn(43, L"ENG", L"Back")}),
                  WithList(Element(44, L"", {{L"Code", RegText(L"ESCI")}}), L"ToolTips", {})});
    Made = WithList(std::move(Made), L"Protocols", {Protocol(L"HTTP"), Protocol(L"FTP")});
    return WithList(std::move(Made), L"Popups",
                    {Element(51, L"",
                             {{L"Text", RegText(L"Stampa")},
                              {L"Language", RegText(L"ITA")},
                              {L"Code", RegText(L"STAMPA")},
                              {L"Action", 39}}),
                     Element(52, L"", {{L"Text", RegText(L"Print")}, {L"Language", RegText(L"ENG")}})});
}

class WebClient : public ::testing::Test {
  protected:
    Desk On{L"WEBCLIENT", Browser()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    std::wstring Button(std::size_t Nth) const { return Node(L"COMMANDS", Nth); }
    std::wstring ButtonParms(std::size_t Nth) const { return KeyBelow(On, KeyBelow(On, Button(Nth), 1), 1); }
    std::wstring Tips(std::size_t Nth) const { return KeyBelow(On, Button(Nth), 2); }
    std::wstring Tip(std::size_t Of, std::size_t Nth) const { return KeyBelow(On, Tips(Of), Nth); }
    std::wstring Popup(std::size_t Nth) const { return Node(L"POPUPS", Nth); }
    std::wstring LineOf(std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Parms());
        const std::size_t Found = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(Found, std::wstring::npos);
        return Found == std::wstring::npos
                   ? std::wstring()
                   : Shown.substr(Found + 2, Shown.find(L"\r\n", Found + 2) - Found - 2);
    }
    std::int32_t Stored(std::wstring_view Property) { return LongOf(SavedBy(On), Property); }
    std::vector<std::wstring> Protocols() {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Protocols")) Found.push_back(Each.Text);
        return Found;
    }
    std::vector<std::int32_t> Ids(std::wstring_view List) {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List)) Found.push_back(Each.Id);
        return Found;
    }
    std::vector<std::int32_t> TipIds(std::size_t Of) {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(ListOf(SavedBy(On), L"Commands").at(Of - 1), L"ToolTips"))
            Found.push_back(Each.Id);
        return Found;
    }
    // The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"WEBCLIENT", Saved).Picture()));
    }
};

TEST_F(WebClient, EmptyTreeAndChoices) {
    Desk Empty(L"WEBCLIENT");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  POPUPS \"Popup\" 12,11 RG\n"));
    EXPECT_EQ(Narrow(Empty.Offered()), Narrow(L"PARMS FLAGS= NONE ALLOWNEWWINDOW OPENNEWWINDOW\n"));
}

TEST_F(WebClient, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                     L"    COMMANDS-# \"INDIETRO\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"        COMMANDTIPS # \"Messaggio: [ITA] Torna alla pagina di\" 9,9\n"
                     L"        COMMANDTIPS # \"Messaggio: [ENG] Back\" 9,9\n"
                     L"    COMMANDS-# \"ESCI\" 12,11 RDM\n"
                     L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                     L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                     L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                     L"  POPUPS \"Popup\" 12,11 RG\n"
                     L"    POPUPS # \"\" 9,9\n"
                     L"    POPUPS # \"\" 9,9\n"));
    EXPECT_TRUE(On.Tree->Served().empty());
}

TEST_F(WebClient, ParameterTexts) {
    Desk Empty(L"WEBCLIENT");
    EXPECT_TRUE(MatchesGolden("section/WEBCLIENT.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ASSERT_TRUE(Accepted(On.Put(
        Parms(), Lines({L"ADDRESSBAR= FALSE", L"LARGEBUTT= vero", L"STATUSBAR= TRUE", L"DEFAULTFONTSIZE= 5",
                        L"FLAGS= opennewwindow|allownewwindow", L"MIRROROF= \"Altro Client\"",
                        L"PROTOCOL= \"https\"", L"TOOLALIGN= right", L"PROTOCOL= ftp"}))));
    EXPECT_TRUE(MatchesGolden("section/WEBCLIENT.full.txt", On.Text(Parms())));
    const RegObject& Now = SavedBy(On);
    EXPECT_FALSE(BoolOf(Now, L"AddressBar"));
    EXPECT_TRUE(BoolOf(Now, L"LargeButt"));
    EXPECT_TRUE(BoolOf(Now, L"StatusBar"));
    EXPECT_EQ(LongOf(Now, L"DefaultFontSize"), 5);
    EXPECT_EQ(LongOf(Now, L"Flags"), 3);
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altro Client");
    EXPECT_EQ(LongOf(Now, L"ToolAlign"), 4);
    EXPECT_EQ(Protocols(), (std::vector<std::wstring>{L"HTTPS", L"FTP"}));
    ExpectFixpoint(On, Parms());
}

TEST_F(WebClient, WhatATextLeavesOutReturnsToItsDefault) {
    for (const bool Strict : {true, false}) {
        Desk One(L"WEBCLIENT", Browser());
        ASSERT_TRUE(Accepted(One.Put(One.Leaf(L"PARMS"), L"'niente\r\n\r\n;niente", Strict)));
        const RegObject& Now = SavedBy(One);
        EXPECT_FALSE(BoolOf(Now, L"AddressBar"));
        EXPECT_EQ(LongOf(Now, L"DefaultFontSize"), 0);
        EXPECT_EQ(LongOf(Now, L"ToolAlign"), 0);
        EXPECT_TRUE(ListOf(Now, L"Protocols").empty()) << "a parameter, though it is a list";
        EXPECT_EQ(ListOf(Now, L"Commands").size(), 2U);
        EXPECT_EQ(ListOf(ListOf(Now, L"Commands")[0], L"ToolTips").size(), 2U);
        EXPECT_EQ(ListOf(Now, L"Popups").size(), 2U);
    }
}

TEST_F(WebClient, Booleans) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
    } kRows[] = {
        {L"ADDRESSBAR=", L"AddressBar"}, {L"LARGEBUTT=", L"LargeButt"}, {L"STATUSBAR=", L"StatusBar"}};
    for (const auto& Row : kRows) {
        const std::wstring Keyword(Row.Keyword);
        for (const bool Strict : {true, false}) {
            for (const std::wstring_view Word : {L"TRUE", L"vero"}) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + std::wstring(Word), Strict)));
                EXPECT_TRUE(BoolOf(SavedBy(On), Row.Property));
            }
            for (const std::wstring_view Word : {L"FALSE", L"Falso", L""}) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + std::wstring(Word), Strict)));
                EXPECT_FALSE(BoolOf(SavedBy(On), Row.Property));
            }
        }
        EXPECT_TRUE(Refused(On.Put(Parms(), Keyword + L"forse"), 20000, kSource,
                            L"Valore sconosciuto per il parametro " + Keyword + L"(FORSE)", 1));
        EXPECT_FALSE(BoolOf(SavedBy(On), Row.Property));
        ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + L"forse", false)));
        EXPECT_TRUE(BoolOf(SavedBy(On), Row.Property));
    }
}

TEST_F(WebClient, TheStatusBarIsShownAsTheAddressBar) {
    for (const bool Address : {true, false}) {
        for (const bool Status : {true, false}) {
            Desk One(L"WEBCLIENT",
                     With(Desk::Named(L"PROVA"), {{L"AddressBar", Address}, {L"StatusBar", Status}}));
            const std::wstring Word = Address ? L"TRUE" : L"FALSE";
            const std::wstring Shown = One.Text(One.Leaf(L"PARMS"));
            EXPECT_EQ(Shown.rfind(L"ADDRESSBAR= " + Word + L"\r\nSTATUSBAR= " + Word + L"\r\n", 0), 0U);
            EXPECT_EQ(BoolOf(SavedBy(One), L"StatusBar"), Status);
            ASSERT_TRUE(Accepted(One.Put(One.Leaf(L"PARMS"), Shown)));
            EXPECT_EQ(BoolOf(SavedBy(One), L"StatusBar"), Address) << "what was shown is now stored";
        }
    }
}

TEST_F(WebClient, TheFontSizeHasItsBoundsInStrictMode) {
    for (const std::wstring_view Size : {L"6", L"-1", L"2147483647"}) {
        const std::wstring Text = L"DEFAULTFONTSIZE= " + std::wstring(Size);
        EXPECT_TRUE(Refused(On.Put(Parms(), Text), 20000, kSource,
                            L"Valore non corretto per DEFAULTFONTSIZE= (0-5)", 0));
        EXPECT_EQ(Stored(L"DefaultFontSize"), 3);
        // Only at the end of the text: any other fault comes first.
        EXPECT_TRUE(Refused(On.Put(Parms(), Text + L"\r\nPIPPO= 1"), 20000, kSource,
                            L"Parametro non riconosciuto: PIPPO=1", 2));
        Desk Lax(L"WEBCLIENT");
        ASSERT_TRUE(Accepted(Lax.Put(Lax.Leaf(L"PARMS"), Text, false)));
        EXPECT_EQ(std::to_wstring(LongOf(SavedBy(Lax), L"DefaultFontSize")), Size);
    }
    const struct {
        std::wstring_view Typed;
        std::int32_t Size;
    } kRows[] = {{L"5", 5}, {L"0", 0}, {L"", 0}, {L"4.5", 4}, {L"5.5", 6}, {L"-0.5", 0}, {L"grande", 0}};
    for (const auto& Row : kRows) {
        for (const bool Strict : {true, false}) {
            if (Strict && Row.Size > 5) continue;
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"DEFAULTFONTSIZE= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"DefaultFontSize"), Row.Size);
            EXPECT_EQ(LineOf(L"DEFAULTFONTSIZE="), L"DEFAULTFONTSIZE= " + std::to_wstring(Row.Size));
        }
    }
    for (const bool Strict : {true, false})
        EXPECT_TRUE(
            Refused(On.Put(Parms(), L"DEFAULTFONTSIZE= 2147483648", Strict), 6, kSource, L"Overflow", 1));
}

TEST_F(WebClient, Flags) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Bits;
        std::wstring_view Shown;
    } kRows[] = {{L"NONE", 0, L"NONE"},
                 {L"none", 0, L"NONE"},
                 {L"", 0, L"NONE"},
                 {L"allownewwindow", 1, L"ALLOWNEWWINDOW"},
                 {L"OPENNEWWINDOW", 2, L"OPENNEWWINDOW"},
                 {L"OpenNewWindow | AllowNewWindow", 3, L"ALLOWNEWWINDOW|OPENNEWWINDOW"}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"Flags"), Row.Bits);
            EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS= " + std::wstring(Row.Shown)) << "with one blank";
        }
    }
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= allownewwindow|forse|opennewwindow"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(OPENNEWWINDOW)", 1));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= allownewwindow|forse|opennewwindow", false)));
    EXPECT_EQ(Stored(L"Flags"), 3);
}

TEST_F(WebClient, ProtocolsRepeatAndDiffer) {
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(On.Put(
            Parms(),
            L"PROTOCOL= \" http \"\r\nPROTOCOL=\r\nPROTOCOL= \"\"\r\nPROTOCOL= Gopher\r\nPROTOCOL= FTP",
            Strict)));
        EXPECT_EQ(Protocols(), (std::vector<std::wstring>{L"HTTP", L"GOPHER", L"FTP"}));
        EXPECT_NE(On.Text(Parms()).find(
                      L"\r\nPROTOCOL= \"HTTP\"\r\nPROTOCOL= \"GOPHER\"\r\nPROTOCOL= \"FTP\"\r\nTOOLALIGN="),
                  std::wstring::npos);
        for (const std::wstring_view Twice :
             {L"PROTOCOL= http\r\nPROTOCOL= \" HTTP \"", L"PROTOCOL= \"ftp\"\r\nPROTOCOL=   Ftp  "}) {
            EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Twice), Strict), 20000, kSource,
                                L"Protocollo duplicato in PROTOCOL=", 2));
            EXPECT_EQ(Protocols(), (std::vector<std::wstring>{L"HTTP", L"GOPHER", L"FTP"}));
        }
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"PROTOCOL= GOPHER", Strict))) << "the record's do not count";
        EXPECT_EQ(Protocols(), (std::vector<std::wstring>{L"GOPHER"}));
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"PROTOCOL= \"\"", Strict)));
        EXPECT_TRUE(Protocols().empty());
        EXPECT_EQ(LineOf(L"PROTOCOL="), L"PROTOCOL= \"\"");
    }
}

TEST_F(WebClient, TheToolBarsAlignment) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {{L"NONE", 0}, {L"TOP", 1}, {L"bottom", 2}, {L"Left", 3}, {L"RIGHT", 4}, {L"", 0}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"TOOLALIGN= " + std::wstring(Row.Word), Strict)));
            EXPECT_EQ(Stored(L"ToolAlign"), Row.Code);
            EXPECT_EQ(LineOf(L"TOOLALIGN="),
                      L"TOOLALIGN= " + (Row.Word.empty() ? L"NONE" : StrUtil::UpperCase(Row.Word)));
        }
        EXPECT_TRUE(Refused(On.Put(Parms(), L"'x\r\nTOOLALIGN= centro", Strict), 20000,
                            L"vdbcModule.TipsSetAlignment",
                            L"Valore sconosciuto per il parametro TOOLALIGN=(CENTRO)", 2));
        EXPECT_EQ(Stored(L"ToolAlign"), 0);
    }
    Desk Odd(L"WEBCLIENT", With(Desk::Named(L"PROVA"), {{L"ToolAlign", 9}}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"PARMS")).find(L"TOOLALIGN= NONE\r\n"), std::wstring::npos);
}

TEST_F(WebClient, RefusalsOfTheParameters) {
    ExpectRefusals(
        On, Parms(), kSource,
        {
            {L"ADDRESSBAR=\r\nADDRESSBAR=", L"Ripetizone del parametro ADDRESSBAR=.", 2},
            {L"LARGEBUTT=\r\nLARGEBUTT=", L"Ripetizone del parametro LARGEBUTT=.", 2},
            {L"STATUSBAR=\r\nSTATUSBAR=", L"Ripetizone del parametro STATUSBAR=.", 2},
            {L"DEFAULTFONTSIZE=\r\nDEFAULTFONTSIZE=", L"Ripetizone del parametro DEFAULTFONTSIZE=.", 2},
            {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
            {L"MIRROROF=\r\nMIRROROF=", L"Ripetizone del parametro MIRROROF=.", 2},
            {L"TOOLALIGN=\r\nTOOLALIGN=", L"Ripetizone del parametro TOOLALIGN=.", 2},
            {L"'x\r\nCODE= A", L"Parametro non riconosciuto: CODE=A", 2},
            {L"protocol= http", L"Parametro non riconosciuto: protocol=http", 1},
        });
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(WebClient, ElementTexts) {
    EXPECT_TRUE(MatchesGolden("section/WEBCLIENT.COMMANDPARMS.full.txt", On.Text(ButtonParms(1))));
    EXPECT_TRUE(MatchesGolden("section/WEBCLIENT.COMMANDTIPS.full.txt", On.Text(Tip(1, 2))));
    EXPECT_TRUE(MatchesGolden("section/WEBCLIENT.POPUPS.full.txt", On.Text(Popup(1))));
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"POPUPS", Made)));
    std::wstring New = On.Text(Made);
    const std::size_t Id = New.find(L"'[ID= ") + 6;
    EXPECT_TRUE(
        MatchesGolden("section/WEBCLIENT.POPUPS.empty.txt", New.replace(Id, New.find(L']', Id) - Id, L"#")));
    for (const std::wstring& Key : {ButtonParms(1), ButtonParms(2), Tip(1, 1), Popup(1), Popup(2)})
        ExpectFixpoint(On, Key);
}

TEST_F(WebClient, AButtonsOwnNodeShowsItsTextAndTakesNone) {
    EXPECT_EQ(On.Text(Button(1)), On.Text(ButtonParms(1)));
    EXPECT_EQ(On.Text(Button(2)), On.Text(ButtonParms(2)));
    EXPECT_EQ(On.Text(L"COMMANDS"), L"");
    EXPECT_EQ(On.Text(L"POPUPS"), L"");
    const RegObject Before = SavedBy(On);
    for (const std::wstring& Key : {Button(1), std::wstring(L"COMMANDS")})
        EXPECT_TRUE(Accepted(On.Put(Key, L"CODE= ALTRO")));
    EXPECT_EQ(SavedBy(On), Before);
    EXPECT_EQ(On.Tree->NodeText(Button(1)), L"INDIETRO");
}

TEST_F(WebClient, CaptionsFollowTheirSection) {
    ASSERT_TRUE(Accepted(On.Put(ButtonParms(2), L"CODE= chiudi\r\nACTION= quit")));
    EXPECT_EQ(On.Tree->NodeText(Button(2)), L"CHIUDI");
    EXPECT_EQ(On.Tree->NodeText(ButtonParms(2)), L"Pulsante");
    EXPECT_EQ(On.Tree->NodeText(Button(1)), L"INDIETRO");
    ASSERT_TRUE(Accepted(On.Put(Popup(2), L"TEXT= Print it\r\nLANG= eng\r\nCODE= stampa\r\nACTION= open")));
    EXPECT_EQ(On.Tree->NodeText(Popup(2)), L"");
    ExpectSameTree();
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[1], L"Text"), L"Print it");
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[1], L"Language"), L"ENG");
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[1], L"Code"), L"STAMPA");
    EXPECT_EQ(LongOf(ListOf(Now, L"Popups")[1], L"Action"), 39);
    EXPECT_EQ(ListOf(ListOf(Now, L"Commands")[1], L"ToolTips").size(), 0U);

    // A tip that was saved reads as a label; moved or loaded it reads as a message again.
    std::wstring NewKey;
    std::wstring Text = L"TEXT= Go back\r\nLANG= ENG";
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Tip(1, 2)}, Text, NewKey); })));
    EXPECT_EQ(NewKey, L"Etichetta: [ENG] Go back");
    EXPECT_EQ(On.Tree->NodeText(Tip(1, 2)), L"Etichetta: [ENG] Go back");
    ASSERT_TRUE(Accepted(MoveAt(On, Tip(1, 2), 1, NewKey)));
    EXPECT_EQ(On.Tree->NodeText(Tip(1, 1)), L"Messaggio: [ENG] Go back");
    ExpectSameTree();
}

TEST_F(WebClient, RefusalsOfTheElements) {
    ExpectRefusals(
        On, ButtonParms(1), L"ParmEditor.SaveCommand",
        {{L"CODE= A\r\nACTION= forse", L"Valore sconosciuto per il parametro ACTION=(FORSE)", 2, false},
         {L"CODE=\r\nCODE=", L"Ripetizone del parametro CODE=.", 2},
         {L"TEXT= A", L"Parametro non riconosciuto: TEXT=A", 1}});
    EXPECT_EQ(On.Tree->NodeText(Button(1)), L"INDIETRO");
    ASSERT_TRUE(Accepted(On.Put(ButtonParms(1), L"CODE= A\r\nACTION= forse\r\nENABLED= forse", false)));
    EXPECT_EQ(On.Tree->NodeText(Button(1)), L"A");
    ExpectRefusals(On, Tip(1, 1), L"ParmEditor.SaveCaption",
                   {{L"TEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 2},
                    {L"LANG= A\r\nCODE= A", L"Parametro non riconosciuto: CODE=A", 2}});
    ExpectRefusals(
        On, Popup(1), L"ParmEditor.SavePopup",
        {{L"LANG= ITA\r\nACTION= forse", L"Valore sconosciuto per il parametro ACTION=(FORSE)", 2, false}});
    ExpectRefusals(On, Popup(1), L"ParmEditor.SavePopup",
                   {{L"CODE=\r\nCODE=", L"Ripetizone del parametro CODE=.", 2},
                    {L"ENABLED= TRUE", L"Parametro non riconosciuto: ENABLED=TRUE", 1}});
    EXPECT_TRUE(Refused(On.Put(Popup(1), L"TEXT= a"), 20000, L"ParmEditor.SavePopup",
                        L"Non è stato specificato un codice LANG valido."));
    EXPECT_TRUE(Refused(On.Put(Tip(1, 1), L"TEXT= a"), 20000, L"ParmEditor.SaveCaption",
                        L"Non è stato specificato un codice LANG valido."));
}

TEST_F(WebClient, ButtonsGrowMoveAndShrink) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"COMMANDS", Made)));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Made, Button(3));
    EXPECT_EQ(On.Tree->NodeText(Made), L"?????");
    EXPECT_EQ(TextOf(ListOf(SavedBy(On), L"Commands")[2], L"Code"), L"?????");
    std::vector<std::int32_t> Now = Ids(L"Commands");
    ASSERT_EQ(Now.size(), 3U);
    EXPECT_NE(Now[2], 0);
    ExpectSameTree();

    const std::wstring Old = Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_EQ(Made, Button(2));
    ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Made)));
    EXPECT_EQ(Made, Button(1));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, 1, Made)));
    EXPECT_EQ(Ids(L"Commands"), (std::vector<std::int32_t>{Now[2], 41, 44}));
    ExpectSameTree();
    ASSERT_TRUE(Accepted(MoveAt(On, Button(2), 0, Made)));
    EXPECT_EQ(Ids(L"Commands"), (std::vector<std::int32_t>{Now[2], 44, 41}));
    EXPECT_EQ(TipIds(3), (std::vector<std::int32_t>{42, 43})) << "its tips go with it";
    ExpectSameTree();
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Button(3), -1, Made)));

    ASSERT_TRUE(Accepted(DeleteAt(On, Button(2))));
    EXPECT_EQ(Ids(L"Commands"), (std::vector<std::int32_t>{Now[2], 41}));
    ExpectSameTree();
    ASSERT_TRUE(Accepted(DeleteAt(On, L"COMMANDS", true)));
    EXPECT_TRUE(Ids(L"Commands").empty());
    EXPECT_TRUE(KeysBelow(On, L"COMMANDS").empty());
    EXPECT_EQ(Ids(L"Popups").size(), 2U);
}

TEST_F(WebClient, TipsGrowMoveAndShrink) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Tips(1), Made)));
    EXPECT_EQ(Made, Tip(1, 3));
    EXPECT_EQ(Made.rfind(L"COMMANDTIPS ", 0), 0U);
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
    const std::vector<std::int32_t> Now = TipIds(1);
    ASSERT_EQ(Now.size(), 3U);
    EXPECT_NE(Now[2], 0);
    ASSERT_TRUE(Accepted(AddAt(On, Tip(1, 1), Made))) << "a tip that is selected names its list too";
    EXPECT_EQ(Made, Tip(1, 4));
    ASSERT_TRUE(Accepted(DeleteAt(On, Made)));
    ASSERT_TRUE(Accepted(AddAt(On, Tips(2), Made)));
    EXPECT_EQ(Made, Tip(2, 1));
    EXPECT_EQ(TipIds(2).size(), 1U);
    ExpectSameTree();

    ASSERT_TRUE(Accepted(MoveAt(On, Tip(1, 3), 1, Made)));
    EXPECT_EQ(Made, Tip(1, 2));
    EXPECT_EQ(TipIds(1), (std::vector<std::int32_t>{42, Now[2], 43}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Tip(1, 1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Tip(1, 3), 0, Made)));
    ExpectSameTree();
    ASSERT_TRUE(Accepted(DeleteAt(On, Tip(1, 1))));
    EXPECT_EQ(TipIds(1), (std::vector<std::int32_t>{Now[2], 43}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Tips(1), true)));
    EXPECT_TRUE(TipIds(1).empty());
    EXPECT_EQ(TipIds(2).size(), 1U);
    ExpectSameTree();
}

TEST_F(WebClient, PopupsGrowAndMoveAndAreNeverDeleted) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"POPUPS", Made)));
    EXPECT_EQ(Made, Popup(3));
    EXPECT_EQ(On.Tree->NodeText(Made), L"");
    const std::vector<std::int32_t> Now = Ids(L"Popups");
    ASSERT_EQ(Now.size(), 3U);
    EXPECT_NE(Now[2], 0);
    EXPECT_EQ(LongOf(ListOf(SavedBy(On), L"Popups")[2], L"Action"), -1);
    ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Made)));
    EXPECT_EQ(Made, Popup(2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"");
    EXPECT_EQ(Ids(L"Popups"), (std::vector<std::int32_t>{51, Now[2], 52}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Popup(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Popup(3), -1, Made)));
    ExpectSameTree();

    const std::wstring Before = On.Picture();
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(DeleteAt(On, Popup(1))));
    EXPECT_TRUE(Accepted(DeleteAt(On, L"POPUPS", true)));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(Ids(L"Popups"), (std::vector<std::int32_t>{51, Now[2], 52}));
}

TEST_F(WebClient, Export) {
    EXPECT_TRUE(MatchesGolden("export/WEBCLIENT.txt", On.Exported()));
    Desk Empty(L"WEBCLIENT");
    EXPECT_EQ(Empty.Exported().find(L"COMMANDS"), std::wstring::npos);
}

TEST_F(WebClient, TheIndentOfTheText) {
    diWebClient Item;
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    MemoryRegData Object(L"WEBCLIENT", Browser());
    ASSERT_FALSE(Item.LoadData(Object));
    const auto Shown = [&](bool Block, std::int32_t Indent, std::wstring_view Key) {
        std::wstring Buffer;
        const std::int32_t First = 1;
        EXPECT_FALSE(
            Item.DispData({.Index = 1, .Key = std::wstring(Key)}, Buffer, Block, {&First, 1}, Indent));
        return Buffer;
    };
    EXPECT_EQ(Shown(true, 0, L"PARMS").rfind(L"BEGIN PARMS\r\nADDRESSBAR= ", 0), 0U);
    EXPECT_EQ(Shown(true, 1, L"PARMS").rfind(L"\tBEGIN PARMS\r\n\t\tADDRESSBAR= ", 0), 0U);
    EXPECT_NE(Shown(true, 1, L"PARMS").find(L"\r\n\t\tTOOLALIGN= LEFT\r\n"), std::wstring::npos);
    EXPECT_EQ(Shown(true, 1, L"POPUPS").rfind(L"\tBEGIN POPUPS\r\nTEXT= ", 0), 0U);
    EXPECT_EQ(Shown(true, 1, L"ALTRO"), L"\tBEGIN ALTRO\r\n\tEND ALTRO\r\n");
}

TEST_F(WebClient, SaveAndReload) {
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(BoolOf(Saved, L"StatusBar"), false);
    Desk Again(L"WEBCLIENT", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
}

TEST_F(WebClient, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"ALTRO", L"parms"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    On.Tree->MarkModified(false);
    std::wstring Made;
    for (const std::wstring& Key : {Parms(), ButtonParms(1)}) {
        EXPECT_TRUE(Accepted(AddAt(On, Key, Made)));
        EXPECT_TRUE(Accepted(DeleteAt(On, Key)));
        EXPECT_TRUE(Accepted(DeleteAt(On, Key, true)));
    }
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"WEBCLIENT");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Popups").size(), 2U);
}

}  // namespace
}  // namespace kv::test
