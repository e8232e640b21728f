// Menu, help form and form of the set operations: what they have in common is asked of all three, and each
// difference of each.
#include "items/navigation/diHelp.h"
#include "items/navigation/diMenu.h"
#include "items/navigation/diSetOp.h"
#include "tests/items/Form.h"

namespace kv::test {
namespace {

/// A class and in what it differs from the others.
struct Variant {
    std::wstring_view Word;
    std::wstring_view Class;
    std::wstring_view PathKeyword;
    std::wstring_view PathProperty;
    std::wstring_view PathStored;  // for the text "Altra Via"
    std::wstring_view OtherPath;   // the keyword that only others know
    std::wstring_view FlagLine;    // with all bits set
    std::wstring_view OfferedFirst;
    std::wstring_view OfferedFlags;
    bool PopupsMove;
    std::unique_ptr<iKvTree> (*Make)();
};

template <class Item>
std::unique_ptr<iKvTree> MakeItem() {
    return std::make_unique<Item>();
}

const Variant kVariants[] = {
    {L"MENU", L"diMenu", L"MIRROROF=", L"MirrorOf", L"Altra Via", L"PATH=", L"FLAGS=", L"", L"NONE", false,
     MakeItem<diMenu>},
    {L"HELP", L"diHelp", L"MIRROROF=", L"MirrorOf", L"Altra Via", L"PATH=", L"FLAGS=",
     L"PARMS STYLE= TEXT HTML WINDOWS\n", L"NONE", true, MakeItem<diHelp>},
    {L"SETOPS", L"diSetOp", L"PATH=", L"Path", L"ALTRA VIA", L"MIRROROF=", L"FLAGS=BROWSEFILES", L"",
     L"NONE BROWSEFILES", true, MakeItem<diSetOp>},
};

RegObject Full(const Variant& Of) {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"LargeButt", true},
                                                  {L"Help", RegText(L"AIUTO")},
                                                  {L"HelpWww", RegText(L"AIUTOWEB")},
                                                  {L"Flags", 1},
                                                  {Of.PathProperty, RegText(Of.PathStored)},
                                                  {L"Tips", RegText(L"SUGGERIMENTI")},
                                                  {L"TipsAlign", 3},
                                                  {L"TipsButtons", 5},
                                                  {L"TipsWidth", 30},
                                                  {L"ToolAlign", 1},
                                                  {L"ToolTips", 9}});
    return WithList(std::move(Made), L"Popups",
                    {Element(41, L"",
                             {{L"Text", RegText(L"Apri")},
                              {L"Language", RegText(L"ITA")},
                              {L"Code", RegText(L"APRI")},
                              {L"Action", 39}}),
                     Element(42, L"", {{L"Text", RegText(L"Chiudi")}, {L"Language", RegText(L"ITA")}})});
}

class AForm : public ::testing::WithParamInterface<Variant>, public FormTest {
  protected:
    AForm() : FormTest(GetParam().Word, WithContents(Full(GetParam()))) {}

    const Variant& Of = GetParam();
    const std::wstring Source = std::wstring(GetParam().Class) + L".SaveParm";
    std::string Golden(const char* Name) const { return Narrow(Of.Word) + Name; }
};

INSTANTIATE_TEST_SUITE_P(Classes, AForm, ::testing::ValuesIn(kVariants),
                         [](const auto& Info) { return Narrow(Info.param.Word); });

// The tree.

TEST_P(AForm, EmptyTreeAndChoices) {
    Desk Empty(Of.Word);
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  TITLES \"Titolo\" 12,11 RG\n"
                                              L"  HTML \"HTML\" 12,11 RG\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  POPUPS \"Popup\" 12,11 RG\n"));
    std::wstring Offered(Of.OfferedFirst);
    Offered.append(L"PARMS FLAGS= ").append(Of.OfferedFlags).append(L"\n");
    Offered.append(L"HTML ACTION=").append(kOfferedActions).append(L"\n");
    Offered.append(L"PARMS TIPSALIGN=").append(kOfferedAligns);
    Offered.append(L"PARMS TIPSBUTTONS= BACK CLOSE HOME\n");
    Offered.append(L"PARMS TOOLTIPS= NONE CHECK FOLDER LINK COMMANDS LOANLINK\n");
    Offered.append(L"PARMS TOOLALIGN=").append(kOfferedAligns);
    EXPECT_EQ(Narrow(Empty.Offered()), Narrow(Offered));
}

TEST_P(AForm, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  TITLES \"Titolo\" 12,11 RG\n"
                     L"    TITLES # \"Titolo: [ITA] Menù principale dell\" 9,9\n"
                     L"    TITLES # \"Titolo: [ENG] Main\" 9,9\n"
                     L"  HTML \"HTML\" 12,11 RG\n"
                     L"    HTML # \"File: [ITA] pagina_iniziale_it.h\" 9,9\n"
                     L"    HTML # \"File: [] home.htm\" 9,9\n"
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
                     L"    POPUPS # \"\" 9,9\n"));
}

// The parameters.

TEST_P(AForm, ParameterTexts) {
    Desk Empty(Of.Word);
    EXPECT_TRUE(MatchesGolden("section/" + Golden(".empty.txt"), Empty.Text(Empty.Leaf(L"PARMS"))));
    EXPECT_TRUE(MatchesGolden("section/" + Golden(".full.txt"), On.Text(Parms())));
    EXPECT_EQ(LineOf(L"FLAGS="), Of.FlagLine);
    // With a bit that no word knows the line is bare and reads back as none.
    const bool Known = Of.FlagLine != L"FLAGS=";
    const std::wstring Shown = On.Text(Parms());
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(On.Put(Parms(), Shown, Strict)));
        EXPECT_EQ(Stored(L"Flags"), Known ? 1 : 0);
    }
    ExpectFixpoint(On, Parms());
}

TEST_P(AForm, EveryKeywordIsStored) {
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(
            Accepted(On.Put(Parms(),
                            Lines({L"HELP= \"Guida\"", L"HELPWWW= guidaweb", L"LARGEBUTT= falso",
                                   std::wstring(Of.PathKeyword) + L" \"Altra Via\"", L"TIPS= \"Consigli\"",
                                   L"TIPSALIGN= bottom", L"TIPSWIDTH= 45", L"TIPSBUTTONS= HOME|CLOSE",
                                   L"TOOLALIGN= Right", L"TOOLTIPS= LOANLINK | FOLDER", L"FLAGS= NONE"}),
                            Strict)));
        const RegObject& Now = SavedBy(On);
        EXPECT_EQ(TextOf(Now, L"Help"), L"GUIDA");
        EXPECT_EQ(TextOf(Now, L"HelpWww"), L"GUIDAWEB");
        EXPECT_FALSE(BoolOf(Now, L"LargeButt"));
        EXPECT_EQ(TextOf(Now, Of.PathProperty), Of.PathStored);
        EXPECT_EQ(TextOf(Now, L"Tips"), L"CONSIGLI");
        EXPECT_EQ(LongOf(Now, L"TipsAlign"), 2);
        EXPECT_EQ(LongOf(Now, L"TipsWidth"), 45);
        EXPECT_EQ(LongOf(Now, L"TipsButtons"), 6);
        EXPECT_EQ(LongOf(Now, L"ToolAlign"), 4);
        EXPECT_EQ(LongOf(Now, L"ToolTips"), 18);
        EXPECT_EQ(LongOf(Now, L"Flags"), 0);
        EXPECT_EQ(LineOf(Of.PathKeyword),
                  std::wstring(Of.PathKeyword) + L" \"" + std::wstring(Of.PathStored) + L"\"");
        ExpectFixpoint(On, Parms());
    }
}

TEST_P(AForm, WhatATextLeavesOutReturnsToItsDefault) {
    for (const bool Strict : {true, false}) {
        Desk One(Of.Word, On.Object->Read());
        ASSERT_TRUE(Accepted(One.Put(One.Leaf(L"PARMS"), L"'niente\r\n\r\n;niente", Strict)));
        const RegObject& Now = SavedBy(One);
        EXPECT_FALSE(BoolOf(Now, L"LargeButt"));
        for (const std::wstring_view Property : {L"Help", L"HelpWww", L"Tips"})
            EXPECT_EQ(TextOf(Now, Property), L"");
        EXPECT_EQ(TextOf(Now, Of.PathProperty), L"");
        for (const std::wstring_view Property :
             {L"Flags", L"TipsAlign", L"TipsButtons", L"TipsWidth", L"ToolAlign", L"ToolTips"})
            EXPECT_EQ(LongOf(Now, Property), 0) << Narrow(Property);
        for (const std::wstring_view List : {L"Titles", L"Html", L"Commands", L"Popups"})
            EXPECT_EQ(ListOf(Now, List).size(), 2U) << "lists stay";
        EXPECT_EQ(Now.Name, L"PROVA");
    }
}

TEST_P(AForm, LargeButtons) {
    for (const bool Strict : {true, false}) {
        for (const std::wstring_view True : {L"TRUE", L"vero"}) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"LARGEBUTT= " + std::wstring(True), Strict)));
            EXPECT_TRUE(BoolOf(SavedBy(On), L"LargeButt"));
        }
        for (const std::wstring_view False : {L"False", L"FALSO", L""}) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"LARGEBUTT= " + std::wstring(False), Strict)));
            EXPECT_FALSE(BoolOf(SavedBy(On), L"LargeButt"));
        }
    }
    EXPECT_TRUE(Refused(On.Put(Parms(), L"LARGEBUTT= forse"), 20000, Source,
                        L"Valore sconosciuto per il parametro LARGEBUTT=(FORSE)", 1));
    EXPECT_FALSE(BoolOf(SavedBy(On), L"LargeButt"));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"LARGEBUTT= forse", false)));
    EXPECT_TRUE(BoolOf(SavedBy(On), L"LargeButt"));
}

TEST_P(AForm, WidthOfTheTips) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Width;
    } kRows[] = {{L"0", 0}, {L"5", 5}, {L"100", 100}, {L"12.5", 12}, {L"99.5", 100}, {L"", 0}, {L"tanto", 0}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), L"TIPSWIDTH= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"TipsWidth"), Row.Width);
            EXPECT_EQ(LineOf(L"TIPSWIDTH="), L"TIPSWIDTH= " + std::to_wstring(Row.Width)) << "never raised";
            EXPECT_EQ(Stored(L"TipsWidth"), Row.Width);
        }
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"TIPSWIDTH= 40")));
    for (const std::wstring_view Outside : {L"-1", L"101", L"100.4", L"-0.4", L"2147483648"}) {
        const std::wstring Text = L"'x\r\nTIPSWIDTH= " + std::wstring(Outside);
        EXPECT_TRUE(Refused(On.Put(Parms(), Text), 20000, Source,
                            L"Valore sconosciuto per il parametro TIPSWIDTH=(" + std::wstring(Outside) + L")",
                            2));
        EXPECT_EQ(Stored(L"TipsWidth"), 40);
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"TIPSWIDTH= 101", false)));
    EXPECT_EQ(Stored(L"TipsWidth"), 0) << "the line is as left out";
}

TEST_P(AForm, Alignments) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {{L"NONE", 0}, {L"TOP", 1}, {L"bottom", 2}, {L"Left", 3}, {L"RIGHT", 4}, {L"", 0}};
    for (const auto& [Keyword, Property] :
         {std::pair<std::wstring, std::wstring_view>{L"TIPSALIGN=", L"TipsAlign"},
          {L"TOOLALIGN=", L"ToolAlign"}}) {
        for (const bool Strict : {true, false}) {
            for (const auto& Row : kRows) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + L" " + std::wstring(Row.Word), Strict)));
                EXPECT_EQ(Stored(Property), Row.Code);
                EXPECT_EQ(LineOf(Keyword),
                          Keyword + L" " + (Row.Word.empty() ? L"NONE" : StrUtil::UpperCase(Row.Word)));
            }
            EXPECT_TRUE(Refused(On.Put(Parms(), L"'x\r\n" + Keyword + L" centro", Strict), 20000,
                                L"vdbcModule.TipsSetAlignment",
                                L"Valore sconosciuto per il parametro " + Keyword + L"(CENTRO)", 2));
        }
    }
}

TEST_P(AForm, ButtonsOfTheTipsAndToolTips) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
        std::wstring_view Typed;
        std::int32_t Bits;
        std::wstring_view Shown;
    } kRows[] = {
        {L"TIPSBUTTONS=", L"TipsButtons", L"NONE", 0, L"NONE"},
        {L"TIPSBUTTONS=", L"TipsButtons", L"", 0, L"NONE"},
        {L"TIPSBUTTONS=", L"TipsButtons", L"HOME | BACK", 5, L"BACK|HOME"},
        {L"TIPSBUTTONS=", L"TipsButtons", L"BACK|CLOSE|HOME", 7, L"BACK|CLOSE|HOME"},
        {L"TOOLTIPS=", L"ToolTips", L"NONE", 0, L"NONE"},
        {L"TOOLTIPS=", L"ToolTips", L"", 0, L"NONE"},
        {L"TOOLTIPS=", L"ToolTips", L"CHECK|LINK", 5, L"CHECK|LINK"},
        {L"TOOLTIPS=", L"ToolTips", L"LOANLINK|COMMANDS|LINK|FOLDER|CHECK", 31,
         L"CHECK|FOLDER|LINK|COMMANDS|LOANLINK"},
    };
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            const std::wstring Keyword(Row.Keyword);
            ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + L" " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(Row.Property), Row.Bits);
            EXPECT_EQ(LineOf(Keyword), Keyword + L" " + std::wstring(Row.Shown));
        }
        // Either mode refuses an unknown word, and tells it of the buttons.
        EXPECT_TRUE(Refused(On.Put(Parms(), L"TIPSBUTTONS= home", Strict), 20000,
                            L"vdbcModule.TipsSetButtons",
                            L"Valore sconosciuto per il parametro TIPSBUTTONS=()", 1));
        EXPECT_TRUE(Refused(On.Put(Parms(), L"TOOLTIPS= NONE|CHECK", Strict), 20000,
                            L"vdbcModule.ToolTipsSet",
                            L"Valore sconosciuto per il parametro TIPSBUTTONS=(CHECK)", 1));
    }
}

TEST_P(AForm, TipsNeedAnAlignmentAndAWidthInStrictMode) {
    const std::wstring_view kNoAlign = L"Selezionare una modalità di allineamento per TIPS=.";
    const std::wstring_view kBadWidth = L"Ampiezza relativa per TIPS= non corretta (10%-90%).";
    const struct {
        std::wstring_view Text;
        std::wstring_view Message;  // empty: accepted
    } kRows[] = {
        {L"TIPS= x", kNoAlign},
        {L"TIPS= x\r\nTIPSALIGN= NONE\r\nTIPSWIDTH= 5", kNoAlign},
        {L"TIPS= x\r\nTIPSALIGN= TOP", kBadWidth},
        {L"TIPS= x\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= 9", kBadWidth},
        {L"TIPSWIDTH= 91\r\nTIPS= x\r\nTIPSALIGN= TOP", kBadWidth},
        {L"TIPS= x\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= 10", L""},
        {L"TIPS= x\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= 90", L""},
        {L"TIPS= \"\"\r\nTIPSWIDTH= 5", L""},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Text));
        const std::wstring Before = On.Text(Parms());
        const Outcome Got = On.Put(Parms(), std::wstring(Row.Text));
        if (Row.Message.empty()) {
            EXPECT_TRUE(Accepted(Got));
        } else {
            EXPECT_TRUE(Refused(Got, 20000, L"vdbcModule.TipsAlignCheck", Row.Message));
            EXPECT_EQ(On.Text(Parms()), Before);
        }
        EXPECT_TRUE(Accepted(On.Put(Parms(), std::wstring(Row.Text), false)));
    }
}

TEST_P(AForm, FlagsAreComparedAsTyped) {
    const bool Known = Of.FlagLine != L"FLAGS=";
    for (const bool Strict : {true, false}) {
        for (const std::wstring_view None : {L"FLAGS= NONE", L"FLAGS=", L"'"}) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), std::wstring(None), Strict)));
            EXPECT_EQ(Stored(L"Flags"), 0);
            EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS= NONE");
        }
    }
    const struct {
        std::wstring_view Typed;
        std::wstring_view Left;  // what the message shows; of a form without words, and of one with them
        std::wstring_view KnownLeft;
        std::int32_t KnownBits;
    } kRows[] = {
        {L"none", L"", L"", 0},
        {L"browsefiles", L"", L"", 0},
        {L"BROWSEFILES|NONE", L"NONE", L"", 1},
        {L"NONE|BROWSEFILES", L"BROWSEFILES", L"BROWSEFILES", 1},
        {L"ALTRO | BROWSEFILES", L"BROWSEFILES", L"BROWSEFILES", 1},
    };
    for (const auto& Row : kRows) {
        const std::wstring Text = L"FLAGS= " + std::wstring(Row.Typed);
        EXPECT_TRUE(Refused(On.Put(Parms(), Text), 20000, Source,
                            L"Valore sconosciuto per il parametro FLAGS=(" +
                                std::wstring(Known ? Row.KnownLeft : Row.Left) + L")",
                            1));
        ASSERT_TRUE(Accepted(On.Put(Parms(), Text, false)));
        EXPECT_EQ(Stored(L"Flags"), Known ? Row.KnownBits : 0) << Narrow(Row.Typed);
    }
    for (const std::wstring_view Typed : {L"BROWSEFILES", L"BROWSEFILES | BROWSEFILES"}) {
        const std::wstring Text = L"FLAGS= " + std::wstring(Typed);
        if (Known) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), Text)));
            EXPECT_EQ(Stored(L"Flags"), 1);
            EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=BROWSEFILES") << "no blank behind the sign";
        } else {
            EXPECT_FALSE(Accepted(On.Put(Parms(), Text)));
            ASSERT_TRUE(Accepted(On.Put(Parms(), Text, false)));
            EXPECT_EQ(Stored(L"Flags"), 0);
        }
    }
    for (const std::int32_t Bits : {7, 6}) {
        Desk Odd(Of.Word, With(Desk::Named(L"PROVA"), {{L"Flags", Bits}}));
        const std::wstring Shown = Odd.Text(Odd.Leaf(L"PARMS"));
        const std::wstring Line = Bits == 7 ? std::wstring(Of.FlagLine) : L"FLAGS=";
        EXPECT_NE(Shown.find(L"\r\n" + Line + L"\r\n"), std::wstring::npos) << Narrow(Shown);
        ASSERT_TRUE(Accepted(Odd.Put(Odd.Leaf(L"PARMS"), Shown)));
        EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), Bits == 7 && Known ? 1 : 0);
    }
}

TEST_P(AForm, RefusalsOfTheParameters) {
    const std::wstring Other(Of.OtherPath);
    const std::wstring OtherMessage = L"Parametro non riconosciuto: " + Other + L"\"x\"";
    const std::wstring OtherText = Other + L" \"x\"";
    ExpectRefusals(On, Parms(), Source,
                   {{OtherText, OtherMessage, 1},
                    {L"'x\r\nSTYLE= TEXT", L"Parametro non riconosciuto: STYLE=TEXT", 2},
                    {L"help= x", L"Parametro non riconosciuto: help=x", 1},
                    {L"ROWS= 1", L"Parametro non riconosciuto: ROWS=1", 1}});
    for (const std::wstring_view Keyword :
         {std::wstring_view(L"HELP="), std::wstring_view(L"HELPWWW="), std::wstring_view(L"LARGEBUTT="),
          Of.PathKeyword, std::wstring_view(L"TIPS="), std::wstring_view(L"TIPSALIGN="),
          std::wstring_view(L"TIPSWIDTH="), std::wstring_view(L"TIPSBUTTONS="),
          std::wstring_view(L"TOOLALIGN="), std::wstring_view(L"TOOLTIPS="), std::wstring_view(L"FLAGS=")}) {
        const std::wstring Twice = std::wstring(Keyword) + L"\r\n" + std::wstring(Keyword);
        const std::wstring Message = L"Ripetizone del parametro " + std::wstring(Keyword) + L".";
        ExpectRefusals(On, Parms(), Source, {{Twice, Message, 2}});
    }
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(), L"HELP= x\r\nsenza uguale", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza uguale.", 2));
    EXPECT_FALSE(On.Tree->Modified());
}

// The elements.

TEST_P(AForm, ElementTexts) {
    for (const auto& [Key, Name] : {std::pair<std::wstring, const char*>{Node(L"TITLES", 1), "TITLES"},
                                    {Node(L"HTML", 1), "HTML"},
                                    {Node(L"POPUPS", 1), "POPUPS"},
                                    {ButtonParms(1), "COMMANDPARMS"},
                                    {Tip(1, 2), "COMMANDTIPS"}}) {
        EXPECT_TRUE(MatchesGolden(std::string("section/MENU.") + Name + ".txt", On.Text(Key)))
            << "one text for all three";
        ExpectFixpoint(On, Key);
    }
    for (const wchar_t* Folder : {L"TITLES", L"HTML", L"POPUPS", L"COMMANDS"})
        EXPECT_EQ(On.Text(Folder), L"");
    EXPECT_EQ(On.Text(ButtonNode(1)), L"");
    const RegObject Before = SavedBy(On);
    EXPECT_TRUE(Accepted(On.Put(ButtonNode(1), L"CODE= ALTRO")));
    EXPECT_EQ(SavedBy(On), Before);
}

TEST_P(AForm, SavedElementsShowInTheirNodes) {
    const auto Save = [&](const std::wstring& Key, std::wstring Text) {
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, NewKey); })));
        return NewKey;
    };
    EXPECT_EQ(Save(Node(L"TITLES", 2), L"TEXT= \"Menu\"\r\nLANG= fra"), L"Titolo: [FRA] Menu");
    EXPECT_EQ(On.Tree->NodeText(Node(L"TITLES", 2)), L"Titolo: [FRA] Menu");
    EXPECT_EQ(Save(Node(L"HTML", 2), L"FILENAME= menu.htm\r\nLANG= fra\r\nACTION= menu"),
              L"File: [FRA] menu.htm");
    EXPECT_EQ(On.Tree->NodeText(Node(L"HTML", 2)), L"File: [FRA] menu.htm");
    EXPECT_EQ(Save(Tip(1, 1), L"TEXT= Cherche\r\nLANG= fra"), L"Messaggio: [FRA] Cherche");
    EXPECT_EQ(On.Tree->NodeText(Tip(1, 1)), L"Messaggio: [FRA] Cherche");
    Save(ButtonParms(2), L"CODE= fine\r\nACTION= quit");
    EXPECT_EQ(On.Tree->NodeText(ButtonNode(2)), L"FINE");
    Save(Node(L"POPUPS", 2), L"TEXT= Fermer\r\nLANG= fra\r\nCODE= fine\r\nACTION= quit");
    EXPECT_EQ(On.Tree->NodeText(Node(L"POPUPS", 2)), L"");
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(ListOf(Now, L"Titles")[1], L"Text"), L"Menu");
    EXPECT_EQ(LongOf(ListOf(Now, L"Html")[1], L"Action"), 1);
    EXPECT_EQ(TextOf(ListOf(ListOf(Now, L"Commands")[0], L"ToolTips")[0], L"Language"), L"FRA");
    EXPECT_EQ(TextOf(ListOf(Now, L"Commands")[1], L"Code"), L"FINE");
    EXPECT_EQ(TextOf(ListOf(Now, L"Popups")[1], L"Code"), L"FINE");
    ExpectSameTree();
}

TEST_P(AForm, RefusalsOfTheElements) {
    const std::wstring_view kNoLanguage = L"Non è stato specificato un codice LANG valido.";
    const struct {
        std::wstring Key;
        std::wstring_view Parser;
        std::wstring_view Foreign;
        bool Language;
    } kRows[] = {{Node(L"TITLES", 1), L"ParmEditor.SaveTitle", L"CODE=", true},
                 {Node(L"HTML", 1), L"ParmEditor.SaveHtml", L"TEXT=", true},
                 {Node(L"POPUPS", 1), L"ParmEditor.SavePopup", L"ENABLED=", true},
                 {ButtonParms(1), L"ParmEditor.SaveCommand", L"LANG=", false},
                 {Tip(1, 1), L"ParmEditor.SaveCaption", L"ACTION=", true}};
    const std::wstring Before = On.Picture();
    for (const auto& Row : kRows) {
        const std::wstring Unknown = L"Parametro non riconosciuto: " + std::wstring(Row.Foreign) + L"x";
        const std::wstring Text = std::wstring(Row.Foreign) + L" x";
        ExpectRefusals(On, Row.Key, Row.Parser, {{Text, Unknown, 1}});
        if (!Row.Language) continue;
        EXPECT_TRUE(Refused(On.Put(Row.Key, L"'x"), 20000, Row.Parser, kNoLanguage));
    }
    EXPECT_EQ(On.Picture(), Before);
}

TEST_P(AForm, ListsGrowMoveAndShrink) {
    ExpectListLife(L"TITLES", L"Titles", L"Titolo: [] ", true, true);
    ExpectListLife(L"HTML", L"Html", L"File: [] ", true, true);
}

TEST_P(AForm, PopupsMoveButInAMenuAndAreNeverDeleted) {
    ExpectListLife(L"POPUPS", L"Popups", L"", Of.PopupsMove, false);
}

TEST_P(AForm, ButtonsAndTipsGrowMoveAndShrink) { ExpectButtonLife(); }

TEST_P(AForm, PlainSections) { ExpectPlainSections(); }

// The whole.

TEST_P(AForm, Export) {
    EXPECT_TRUE(MatchesGolden("export/" + Golden(".txt"), On.Exported()));
    EXPECT_NE(On.Exported().find(L"\tBEGIN COMMANDS\r\n\tEND COMMANDS\r\n\t\t\tBEGIN COMMANDTIPS\r\nTEXT= "),
              std::wstring::npos);
    Desk Empty(Of.Word);
    EXPECT_EQ(Narrow(Empty.Exported()).find("BEGIN", 8), std::string::npos) << "PARMS alone";
}

TEST_P(AForm, TheIndentOfTheText) {
    const std::unique_ptr<iKvTree> Item = Of.Make();
    Item->DesignTree() = std::make_shared<window::TreeModel>();
    MemoryRegData Object(Of.Word, On.Object->Read());
    ASSERT_FALSE(Item->LoadData(Object));
    const auto Shown = [&](bool Block, std::int32_t Indent, std::wstring_view Key) {
        std::wstring Buffer;
        const std::int32_t First = 1;
        EXPECT_FALSE(
            Item->DispData({.Index = 1, .Key = std::wstring(Key)}, Buffer, Block, {&First, 1}, Indent));
        return Buffer;
    };
    EXPECT_EQ(Shown(false, 0, L"PARMS").rfind(L"HELP= ", 0), 0U);
    EXPECT_EQ(Shown(false, 2, L"PARMS").rfind(L"\t\tHELP= ", 0), 0U);
    EXPECT_EQ(Shown(true, 0, L"PARMS").rfind(L"BEGIN PARMS\r\n\tHELP= ", 0), 0U);
    EXPECT_EQ(Shown(true, 1, L"PARMS").rfind(L"\tBEGIN PARMS\r\n\t\tHELP= ", 0), 0U);
    for (const wchar_t* Keyword : {L"FLAGS=", L"TIPSALIGN=", L"TIPSBUTTONS=", L"TOOLALIGN=", L"TOOLTIPS=",
                                   L"TIPSWIDTH=", L"LARGEBUTT=", L"'[ID= "})
        EXPECT_NE(Shown(true, 1, L"PARMS").find(L"\r\n\t\t" + std::wstring(Keyword)), std::wstring::npos);
    EXPECT_EQ(Shown(true, 1, L"TITLES").rfind(L"\tBEGIN TITLES\r\nTEXT= ", 0), 0U);
    EXPECT_EQ(Shown(true, 3, L"COMMANDS"), L"\t\t\tBEGIN COMMANDS\r\n\t\t\tEND COMMANDS\r\n");
    EXPECT_EQ(Shown(false, 3, L"COMMANDS"), L"");
}

TEST_P(AForm, SaveAndReload) {
    const RegObject& Saved = SavedBy(On);
    EXPECT_EQ(LongOf(Saved, L"TipsWidth"), 30);
    Desk Again(Of.Word, Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
    EXPECT_EQ(Again.Picture(), On.Picture());
}

TEST_P(AForm, OtherOperations) {
    ExpectNothingDone({L"", L"ALTRO", L"parms", L"COMMANDS"});
    std::wstring Copied;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Copied); })));
    EXPECT_EQ(Copied, Of.Word);
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Popups").size(), 2U);
    std::wstring Name;
    std::wstring Desc;
    std::int16_t Version = 0;
    std::wstring Id;
    const std::unique_ptr<iKvTree> Item = Of.Make();
    EXPECT_FALSE(Item->GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Id, L"0");
}

// A help form exports its pages ahead of the buttons, the others behind the popups.
TEST_P(AForm, OrderOfTheExport) {
    const std::wstring Text = On.Exported();
    const auto At = [&](std::wstring_view Section) {
        const std::size_t Found = Text.find(L"BEGIN " + std::wstring(Section) + L"\r\n");
        EXPECT_NE(Found, std::wstring::npos);
        return Found;
    };
    EXPECT_LT(At(L"PARMS"), At(L"HTML"));
    EXPECT_LT(At(L"COMMANDS"), At(L"POPUPS"));
    EXPECT_EQ(At(L"HTML") < At(L"COMMANDS"), Of.Word == L"HELP");
    EXPECT_EQ(At(L"HTML") > At(L"POPUPS"), Of.Word != L"HELP");
    EXPECT_GT(At(L"TITLES"), At(L"HTML"));
    EXPECT_GT(At(L"TITLES"), At(L"POPUPS"));
}

}  // namespace
}  // namespace kv::test
