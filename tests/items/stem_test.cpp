// The stem: an input form with its parameters, titles, messages, fonts, buttons and fields.
#include <gtest/gtest.h>

#include "items/definitions/diStem.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diStem.SaveParm";
constexpr std::wstring_view kFieldSource = L"diStem.SaveFieldParm";

RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Form() {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"Style", 1}});
    Made =
        WithList(std::move(Made), L"Titles", {TextIn(11, L"ITA", L"Ricerca"), TextIn(12, L"ENG", L"Search")});
    Made = WithList(std::move(Made), L"Messages", {TextIn(21, L"ITA", L"Nessun risultato trovato")});
    Made = WithList(std::move(Made), L"Fonts", {Element(31, L"Arial", {{L"Size", 10}})});
    Made = WithList(std::move(Made), L"Commands",
                    {WithList(Element(41, L"", {{L"Code", RegText(L"CERCA")}, {L"Action", 5}}), L"ToolTips",
                              {TextIn(42, L"ITA", L"Cerca"), TextIn(43, L"ENG", L"Search")}),
                     WithList(Element(44, L"", {{L"Code", RegText(L"ESCI")}}), L"ToolTips", {})});
    return WithList(std::move(Made), L"Fields",
                    {WithList(Element(51, L"", {{L"DataType", 1}, {L"MaxLen", 8}}), L"Captions",
                              {TextIn(52, L"ITA", L"Anno"), TextIn(53, L"ENG", L"Year")}),
                     WithList(Element(54, L""), L"Captions", {})});
}

class Stem : public ::testing::Test {
  protected:
    Desk On{L"STEM", Form()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    std::wstring Inner(std::wstring_view Folder, std::size_t Nth, std::size_t Which) const {
        return KeyBelow(On, Node(Folder, Nth), Which);
    }
    std::wstring FieldParms(std::size_t Nth) const { return KeyBelow(On, Inner(L"FIELDS", Nth, 1), 1); }
    std::wstring Labels(std::size_t Nth) const { return Inner(L"FIELDS", Nth, 2); }
    std::wstring Tips(std::size_t Nth) const { return Inner(L"COMMANDS", Nth, 2); }
    RegObject Field(std::size_t Nth = 1) { return ListOf(SavedBy(On), L"Fields").at(Nth - 1); }
    std::wstring LineOf(const std::wstring& Key, std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Key);
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos);
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    std::vector<std::int32_t> Ids(std::wstring_view List) {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List)) Found.push_back(Each.Id);
        return Found;
    }
    // The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"STEM", Saved).Picture()));
    }
};

TEST_F(Stem, EmptyTreeAndChoices) {
    Desk Empty(L"STEM");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  TITLES \"Titolo\" 12,11 RG\n"
                                              L"  MESSAGE \"Messaggio\" 12,11 RG\n"
                                              L"  FONTS \"Font\" 12,11 RG\n"
                                              L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                              L"  FIELDS \"Campi\" 12,11 RG\n"));
    EXPECT_EQ(Narrow(Empty.Offered()),
              Narrow(L"PARMS STYLE= RESULTNONE RESULTSELECT RESULTAND RESULTOR RESULTDIALOG\n"
                     L"PARMS FLAGS= NONE\n"
                     L"FIELDPARMS FLAGS= NONE REMOVEBLANKS REMOVEFIRSTBLANK TRANSLUNDERSCORE PADLEFT "
                     L"PADRIGHT HASFOCUS\n"
                     L"FIELDPARMS DATATYPE= NUMERIC ALFA\n"
                     L"FIELDPARMS HIDDEN= FALSE TRUE\n"));
}

TEST_F(Stem, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  TITLES \"Titolo\" 12,11 RG\n"
                                           L"    TITLES # \"Titolo: [ITA] Ricerca\" 9,9\n"
                                           L"    TITLES # \"Titolo: [ENG] Search\" 9,9\n"
                                           L"  MESSAGE \"Messaggio\" 12,11 RG\n"
                                           L"    MESSAGE # \"Messaggio: [ITA] Nessun risultato tro\" 9,9\n"
                                           L"  FONTS \"Font\" 12,11 RG\n"
                                           L"    FONTS # \"Font: Arial, 10\" 9,9\n"
                                           L"  COMMANDS \"Pulsanti\" 12,11 RG\n"
                                           L"    COMMANDS-# \"CERCA\" 12,11 RDM\n"
                                           L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                                           L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                                           L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                                           L"        COMMANDTIPS # \"Messaggio: [ITA] Cerca\" 9,9\n"
                                           L"        COMMANDTIPS # \"Messaggio: [ENG] Search\" 9,9\n"
                                           L"    COMMANDS-# \"ESCI\" 12,11 RDM\n"
                                           L"      COMMANDPARMS-# \"Pulsante\" 12,11\n"
                                           L"        COMMANDPARMS # \"Pulsante\" 9,9\n"
                                           L"      COMMANDTIPS-# \"ToolTips\" 12,11 R\n"
                                           L"  FIELDS \"Campi\" 12,11 RG\n"
                                           L"    FIELDS-# \"Campo: Anno\" 12,11 RDM\n"
                                           L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                                           L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                                           L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"
                                           L"        FIELDCAPTION-# # \"Etichetta: [ITA] Anno\" 9,9\n"
                                           L"        FIELDCAPTION-# # \"Etichetta: [ENG] Year\" 9,9\n"
                                           L"    FIELDS-# \"Campo: ????\" 12,11 RDM\n"
                                           L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                                           L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                                           L"      FIELDCAPTION-# \"Etichette\" 12,11 R\n"));
    EXPECT_TRUE(On.Tree->Served().empty());
}

TEST_F(Stem, ParameterTexts) {
    Desk Empty(L"STEM");
    EXPECT_TRUE(MatchesGolden("section/STEM.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ASSERT_TRUE(Accepted(
        On.Put(Parms(), Lines({L"STYLE= RESULTDIALOG", L"FLAGS= none", L"HELP= \"aiuto\"",
                               L"HELPWWW= \"pagina.htm\"", L"TIMEOUT= 45", L"MIRROROF= \"Altro\""}))));
    EXPECT_TRUE(MatchesGolden("section/STEM.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
}

TEST_F(Stem, Styles) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {
        {L"RESULTNONE", 0}, {L"RESULTSELECT", 1}, {L"RESULTAND", 2}, {L"RESULTOR", 3}, {L"RESULTDIALOG", 4}};
    for (const auto& Row : kRows) {
        const std::wstring Word(Row.Word);
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= " + Word)));
        EXPECT_EQ(LongOf(SavedBy(On), L"Style"), Row.Code);
        EXPECT_EQ(LineOf(Parms(), L"STYLE="), L"STYLE= " + Word);
    }
    for (const std::wstring_view Word : {L"resultand", L"\"RESULTAND\"", L""}) {
        EXPECT_TRUE(Refused(On.Put(Parms(), L"STYLE= " + std::wstring(Word)), 20000, kSource,
                            L"Valore sconosciuto per il parametro STYLE=(" + std::wstring(Word) + L")", 1));
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= " + std::wstring(Word), false)));
        EXPECT_EQ(LongOf(SavedBy(On), L"Style"), -1);
        EXPECT_EQ(LineOf(Parms(), L"STYLE="), L"STYLE= RESULTNONE");
    }
    EXPECT_TRUE(Refused(On.Put(Parms(), L"HELP= a"), 20000, kSource, L"Non è stato specificato lo stile."));
}

TEST_F(Stem, WhatATextLeavesOutKeepsItsValueButForTheStyle) {
    ASSERT_TRUE(Accepted(
        On.Put(Parms(), L"STYLE= RESULTAND\r\nHELP= a\r\nHELPWWW= b\r\nTIMEOUT= 7\r\nMIRROROF= Uno")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"HELP= c", false)));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(LongOf(Now, L"Style"), -1);
    EXPECT_EQ(TextOf(Now, L"Help"), L"C");
    EXPECT_EQ(TextOf(Now, L"HelpWww"), L"B");
    EXPECT_EQ(LongOf(Now, L"Timeout"), 7);
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Uno");
    EXPECT_EQ(ListOf(Now, L"Fields").size(), 2U);
}

TEST_F(Stem, TheTimeoutHasItsBounds) {
    for (const bool Strict : {true, false}) {
        for (const std::wstring_view Value : {L"61", L"-1", L"1000"})
            EXPECT_TRUE(
                Refused(On.Put(Parms(), L"STYLE= RESULTAND\r\nTIMEOUT= " + std::wstring(Value), Strict),
                        20000, kSource, L"Il valore di TIMEOUT= dev'essere compreso fra 0 e 60", 2));
        for (const std::wstring_view Value : {L"60", L"0", L""})
            EXPECT_TRUE(
                Accepted(On.Put(Parms(), L"STYLE= RESULTAND\r\nTIMEOUT= " + std::wstring(Value), Strict)));
    }
}

TEST_F(Stem, TheParametersTakeNoFlagWord) {
    const std::wstring Style = L"STYLE= RESULTAND\r\n";
    EXPECT_TRUE(Refused(On.Put(Parms(), Style + L"FLAGS= PADLEFT"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=()", 2));
    EXPECT_TRUE(Accepted(On.Put(Parms(), Style + L"FLAGS= PADLEFT", false)));
    EXPECT_EQ(LongOf(SavedBy(On), L"Flags"), 0);
    Desk Odd(L"STEM", With(Desk::Named(L"PROVA"), {{L"Flags", 0x3F}}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"PARMS"))
                  .find(L"FLAGS= REMOVEBLANKS|REMOVEFIRSTBLANK|TRANSLUNDERSCORE|PADLEFT|PADRIGHT\r\n"),
              std::wstring::npos);
    ASSERT_TRUE(Accepted(Odd.Put(Odd.Leaf(L"PARMS"), Style + L"FLAGS=")));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), 0);
}

TEST_F(Stem, RefusalsOfTheParameters) {
    ExpectRefusals(On, Parms(), kSource,
                   {
                       {L"STYLE= RESULTAND\r\nSTYLE= RESULTAND", L"Ripetizone del parametro STYLE=.", 2},
                       {L"HELP=\r\nHELP=", L"Ripetizone del parametro HELP=.", 2},
                       {L"HELPWWW=\r\nHELPWWW=", L"Ripetizone del parametro HELPWWW=.", 2},
                       {L"TIMEOUT=\r\nTIMEOUT=", L"Ripetizone del parametro TIMEOUT=.", 2},
                       {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
                       {L"MIRROROF=\r\nMIRROROF=", L"Ripetizone del parametro MIRROROF=.", 2},
                       {L"'x\r\nDATATYPE= ALFA", L"Parametro non riconosciuto: DATATYPE=ALFA", 2},
                   });
}

TEST_F(Stem, FieldTexts) {
    EXPECT_TRUE(MatchesGolden("section/STEM.FIELDPARMS.empty.txt", On.Text(FieldParms(2))));
    ASSERT_TRUE(Accepted(On.Put(
        FieldParms(1), Lines({L"DATATYPE= numeric", L"DEFAULT= \"Nessuno\"", L"STOPWORD= \"articoli\"",
                              L"SIZE= 12", L"HIDDEN= vero", L"PADMASK= \"00aA\"", L"POSTFIX= \" (fine)\"",
                              L"PREFIX= \"Inizio \"", L"FLAGS= hasfocus|PADLEFT"}))));
    EXPECT_TRUE(MatchesGolden("section/STEM.FIELDPARMS.full.txt", On.Text(FieldParms(1))));
    ExpectFixpoint(On, FieldParms(1));
    ExpectFixpoint(On, FieldParms(2));
    const RegObject Now = Field();
    EXPECT_EQ(Now.Id, 51);
    EXPECT_EQ(LongOf(Now, L"DataType"), 1);
    EXPECT_EQ(TextOf(Now, L"Default"), L"Nessuno");
    EXPECT_EQ(TextOf(Now, L"StopWord"), L"ARTICOLI");
    EXPECT_EQ(LongOf(Now, L"MaxLen"), 12);
    EXPECT_TRUE(BoolOf(Now, L"Hidden"));
    EXPECT_EQ(TextOf(Now, L"PadMask"), L"00aA");
    EXPECT_EQ(TextOf(Now, L"Postfix"), L" (fine)");
    EXPECT_EQ(TextOf(Now, L"Prefix"), L"Inizio ");
    EXPECT_EQ(LongOf(Now, L"Flags"), 0x28);
    EXPECT_EQ(ListOf(Now, L"Captions").size(), 2U);
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"'niente")));
    const RegObject Reset = Field();
    EXPECT_EQ(TextOf(Reset, L"Default"), L"");
    EXPECT_EQ(LongOf(Reset, L"Flags"), 0);
    EXPECT_EQ(LongOf(Reset, L"DataType"), 0);
    EXPECT_FALSE(BoolOf(Reset, L"Hidden"));
    EXPECT_EQ(ListOf(Reset, L"Captions").size(), 2U);
}

TEST_F(Stem, FieldFlags) {
    const struct {
        std::wstring_view Word;
        std::int32_t Bit;
    } kRows[] = {{L"REMOVEBLANKS", 0x01}, {L"REMOVEFIRSTBLANK", 0x02}, {L"TRANSLUNDERSCORE", 0x04},
                 {L"PADLEFT", 0x08},      {L"PADRIGHT", 0x10},         {L"HASFOCUS", 0x20}};
    for (const auto& Row : kRows) {
        const std::wstring Word(Row.Word);
        ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"PADMASK= 0\r\nFLAGS= " + Word)));
        EXPECT_EQ(LongOf(Field(), L"Flags"), Row.Bit);
        EXPECT_EQ(LineOf(FieldParms(1), L"FLAGS="), L"FLAGS=" + Word);
        const bool Pads = Row.Bit == 0x08 || Row.Bit == 0x10;
        const Outcome Got = On.Put(FieldParms(1), L"FLAGS= " + Word);
        EXPECT_TRUE(Pads ? Refused(Got, 20000, kFieldSource, L"Non è stata specificata la maschera di pad.")
                         : Accepted(Got));
        EXPECT_TRUE(Accepted(On.Put(FieldParms(1), L"FLAGS= " + Word, false)));
    }
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"FLAGS= none")));
    EXPECT_EQ(LineOf(FieldParms(1), L"FLAGS="), L"FLAGS= NONE");
    EXPECT_TRUE(Refused(On.Put(FieldParms(1), L"FLAGS= hasfocus|forse|padleft"), 20000, kFieldSource,
                        L"Valore sconosciuto per il parametro FLAGS=(PADLEFT)", 1));
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"FLAGS= hasfocus|forse|padleft", false)));
    EXPECT_EQ(LongOf(Field(), L"Flags"), 0x28);
    EXPECT_EQ(LineOf(FieldParms(1), L"FLAGS="), L"FLAGS=PADLEFT|HASFOCUS");
}

TEST_F(Stem, FieldWordsAndNumbers) {
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"DATATYPE= Alfa")));
    EXPECT_EQ(LongOf(Field(), L"DataType"), 0);
    EXPECT_TRUE(Refused(On.Put(FieldParms(1), L"DATATYPE= testo"), 20000, kFieldSource,
                        L"Valore sconosciuto per il parametro DATATYPE=(TESTO)", 1));
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"DATATYPE= testo", false)));
    EXPECT_EQ(LineOf(FieldParms(1), L"DATATYPE="), L"DATATYPE= ALFA");
    EXPECT_TRUE(Refused(On.Put(FieldParms(1), L"SIZE= -1"), 20000, kFieldSource,
                        L"Valore sconosciuto per il parametro SIZE=(-1)", 1));
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"SIZE= -1", false)));
    EXPECT_EQ(LongOf(Field(), L"MaxLen"), -1);
    EXPECT_TRUE(Accepted(On.Put(FieldParms(1), L"SIZE= 0")));
    EXPECT_TRUE(Refused(On.Put(FieldParms(1), L"HIDDEN= forse"), 20000, kFieldSource,
                        L"Valore sconosciuto per il parametro HIDDEN=(FORSE)", 1));
    ASSERT_TRUE(Accepted(On.Put(FieldParms(1), L"HIDDEN= forse", false)));
    EXPECT_TRUE(BoolOf(Field(), L"Hidden"));
    const auto Shown = [](std::int32_t Code) {
        Desk One(L"STEM",
                 WithList(Desk::Named(L"PROVA"), L"Fields", {Element(1, L"", {{L"DataType", Code}})}));
        const std::wstring Text = One.Text(One.Leaf(L"FIELDPARMS"));
        return Text.substr(0, Text.find(L'\r'));
    };
    EXPECT_EQ(Shown(3), L"DATATYPE= NUMERIC");
    EXPECT_EQ(Shown(2), L"DATATYPE= ALFA");
}

TEST_F(Stem, RefusalsOfAField) {
    ExpectRefusals(On, FieldParms(1), kFieldSource,
                   {
                       {L"DATATYPE= ALFA\r\nDATATYPE= ALFA", L"Ripetizone del parametro DATATYPE=.", 2},
                       {L"DEFAULT=\r\nDEFAULT=", L"Ripetizone del parametro DEFAULT=.", 2},
                       {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
                       {L"HIDDEN=\r\nHIDDEN=", L"Ripetizone del parametro HIDDEN=.", 2},
                       {L"PADMASK=\r\nPADMASK=", L"Ripetizone del parametro PADMASK=.", 2},
                       {L"POSTFIX=\r\nPOSTFIX=", L"Ripetizone del parametro POSTFIX=.", 2},
                       {L"PREFIX=\r\nPREFIX=", L"Ripetizone del parametro PREFIX=.", 2},
                       {L"SIZE=\r\nSIZE=", L"Ripetizone del parametro SIZE=.", 2},
                       {L"STOPWORD=\r\nSTOPWORD=", L"Ripetizone del parametro STOPWORD=.", 2},
                       {L"STYLE= RESULTAND", L"Parametro non riconosciuto: STYLE=RESULTAND", 1},
                   });
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Stem, CaptionsFollowTheirSection) {
    ASSERT_TRUE(Accepted(On.Put(Node(L"TITLES", 2), L"TEXT= \"Find a book in the library\"\r\nLANG= eng")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"TITLES", 2)), L"Titolo: [ENG] Find a book in the l");
    ASSERT_TRUE(Accepted(On.Put(Node(L"MESSAGE", 1), L"TEXT= Niente\r\nLANG= ITA")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"MESSAGE", 1)), L"Messaggio: [ITA] Niente");
    ASSERT_TRUE(Accepted(On.Put(Node(L"FONTS", 1), L"NAME= \"Courier New\"\r\nSIZE= 9\r\nBOLD= TRUE")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FONTS", 1)), L"Font: Courier New, 9");
    const std::wstring Button = KeyBelow(On, Inner(L"COMMANDS", 1, 1), 1);
    ASSERT_TRUE(Accepted(On.Put(Button, L"CODE= trova\r\nACTION= query")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"COMMANDS", 1)), L"TROVA");
    ExpectSameTree();
}

TEST_F(Stem, ATipShowsTheSameCaptionSavedAndLoaded) {
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Tips(1), 2), L"TEXT= Go\r\nLANG= ENG")));
    EXPECT_EQ(On.Tree->NodeText(KeyBelow(On, Tips(1), 2)), L"Messaggio: [ENG] Go");
    ExpectSameTree();
}

TEST_F(Stem, LabelsNameTheirField) {
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Labels(1), 2), L"TEXT= Date\r\nLANG= ENG")));
    EXPECT_EQ(On.Tree->NodeText(KeyBelow(On, Labels(1), 2)), L"Etichetta: [ENG] Date");
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Anno");
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Labels(1), 1), L"TEXT= Data\r\nLANG= ITA")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Data");
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Labels(2), Made)));
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
    EXPECT_EQ(Made.rfind(Labels(2) + L" ", 0), 0U);
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 2)), L"Campo: ????");
    ASSERT_TRUE(Accepted(On.Put(Made, L"TEXT= Nuovo\r\nLANG= ITA")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 2)), L"Campo: Nuovo");
    ExpectSameTree();
}

TEST_F(Stem, SharedSectionTexts) {
    const std::wstring Button = KeyBelow(On, Inner(L"COMMANDS", 1, 1), 1);
    EXPECT_TRUE(MatchesGolden("section/STEM.TITLES.full.txt", On.Text(Node(L"TITLES", 1))));
    EXPECT_TRUE(MatchesGolden("section/STEM.FONTS.full.txt", On.Text(Node(L"FONTS", 1))));
    EXPECT_TRUE(MatchesGolden("section/STEM.COMMANDPARMS.full.txt", On.Text(Button)));
    EXPECT_TRUE(MatchesGolden("section/STEM.COMMANDTIPS.full.txt", On.Text(KeyBelow(On, Tips(1), 1))));
    EXPECT_TRUE(MatchesGolden("section/STEM.FIELDCAPTION.full.txt", On.Text(KeyBelow(On, Labels(1), 1))));
    for (const std::wstring& Key : {Node(L"TITLES", 1), Node(L"MESSAGE", 1), Node(L"FONTS", 1), Button,
                                    KeyBelow(On, Tips(1), 1), KeyBelow(On, Labels(1), 1)})
        ExpectFixpoint(On, Key);
}

TEST_F(Stem, RefusalsOfTheSharedSections) {
    const std::wstring Button = KeyBelow(On, Inner(L"COMMANDS", 1, 1), 1);
    const struct {
        std::wstring Key;
        std::wstring_view Source;
    } kTexts[] = {{Node(L"TITLES", 1), L"ParmEditor.SaveTitle"},
                  {Node(L"MESSAGE", 1), L"ParmEditor.SaveCaption"},
                  {KeyBelow(On, Tips(1), 1), L"ParmEditor.SaveCaption"},
                  {KeyBelow(On, Labels(1), 1), L"ParmEditor.SaveCaption"}};
    for (const auto& Row : kTexts) {
        ExpectRefusals(On, Row.Key, Row.Source,
                       {{L"TEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 2},
                        {L"LANG= A\r\nNAME= A", L"Parametro non riconosciuto: NAME=A", 2}});
        EXPECT_TRUE(Refused(On.Put(Row.Key, L"TEXT= a"), 20000, Row.Source,
                            L"Non è stato specificato un codice LANG valido."));
    }
    ExpectRefusals(
        On, Button, L"ParmEditor.SaveCommand",
        {{L"CODE= A\r\nACTION= forse", L"Valore sconosciuto per il parametro ACTION=(FORSE)", 2, false},
         {L"ENABLED= forse", L"Valore sconosciuto per il parametro ENABLED=(FORSE)", 1, false},
         {L"VISIBLE= forse", L"Valore sconosciuto per il parametro VISIBLE=(FORSE)", 1, false},
         {L"CODE=\r\nCODE=", L"Ripetizone del parametro CODE=.", 2},
         {L"TEXT= A", L"Parametro non riconosciuto: TEXT=A", 1}});
    ExpectRefusals(On, Node(L"FONTS", 1), L"ParmEditor.SaveFont",
                   {{L"BOLD= forse", L"Valore sconosciuto per il parametro BOLD=(FORSE)", 1, false},
                    {L"ITALIC= forse", L"Valore sconosciuto per il parametro ITALIC=(FORSE)", 1, false},
                    {L"UNDERLINE= forse", L"Valore sconosciuto per il parametro UNDERLINE=(FORSE)", 1, false},
                    {L"SIZE= 1\r\nSIZE= 1", L"Ripetizone del parametro SIZE=.", 2}});
}

struct ListRow {
    const wchar_t* Folder;
    const wchar_t* List;
    const wchar_t* NewCaption;
};
const ListRow kLists[] = {{L"TITLES", L"Titles", L"Titolo: [] "},
                          {L"MESSAGE", L"Messages", L"Messaggio: [] "},
                          {L"FONTS", L"Fonts", L"Font: , 0"},
                          {L"COMMANDS", L"Commands", L"?????"},
                          {L"FIELDS", L"Fields", L"Campo: ????"}};

TEST_F(Stem, EveryListGrowsMovesAndShrinks) {
    for (const ListRow& Row : kLists) {
        SCOPED_TRACE(Narrow(Row.Folder));
        const std::vector<std::int32_t> Before = Ids(Row.List);
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Row.Folder, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Made, Node(Row.Folder, Before.size() + 1));
        EXPECT_EQ(On.Tree->NodeText(Made), Row.NewCaption);
        std::vector<std::int32_t> Now = Ids(Row.List);
        ASSERT_EQ(Now.size(), Before.size() + 1);
        EXPECT_NE(Now.back(), 0);
        ExpectSameTree();

        const std::wstring Old = Made;
        ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
        EXPECT_NE(Made, Old);
        EXPECT_EQ(Made, Node(Row.Folder, Before.size()));
        EXPECT_TRUE(On.Tree->Modified());
        std::swap(Now[Now.size() - 1], Now[Now.size() - 2]);
        EXPECT_EQ(Ids(Row.List), Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(MoveAt(On, Made, -1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, -1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Row.Folder, 1), 1, Made)));
        std::swap(Now[Now.size() - 1], Now[Now.size() - 2]);
        EXPECT_EQ(Ids(Row.List), Now);

        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Row.Folder, 1))));
        EXPECT_TRUE(On.Tree->Modified());
        Now.erase(Now.begin());
        EXPECT_EQ(Ids(Row.List), Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(DeleteAt(On, Row.Folder, true)));
        EXPECT_TRUE(Ids(Row.List).empty());
        ExpectSameTree();
    }
}

TEST_F(Stem, InnerListsGrowMoveAndShrink) {
    for (const wchar_t* List : {L"Commands", L"Fields"}) {
        const bool OfButton = std::wstring_view(List) == L"Commands";
        SCOPED_TRACE(Narrow(List));
        const std::wstring Folder = OfButton ? Tips(1) : Labels(1);
        const auto InnerIds = [&] {
            std::vector<std::int32_t> Found;
            for (const RegObject& Each :
                 ListOf(ListOf(SavedBy(On), List)[0], OfButton ? L"ToolTips" : L"Captions"))
                Found.push_back(Each.Id);
            return Found;
        };
        std::vector<std::int32_t> Now = InnerIds();
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_EQ(Made, KeyBelow(On, Folder, 3));
        EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
        ASSERT_EQ(InnerIds().size(), 3U);
        Now.push_back(InnerIds().back());
        EXPECT_EQ(InnerIds(), Now);
        ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Made)));
        EXPECT_EQ(Made, KeyBelow(On, Folder, 2));
        std::swap(Now[1], Now[2]);
        EXPECT_EQ(InnerIds(), Now);
        EXPECT_TRUE(RefusedSilently(MoveAt(On, KeyBelow(On, Folder, 1), 1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, KeyBelow(On, Folder, 3), 0, Made)));
        ASSERT_TRUE(Accepted(DeleteAt(On, KeyBelow(On, Folder, 2))));
        Now.erase(Now.begin() + 1);
        EXPECT_EQ(InnerIds(), Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_TRUE(InnerIds().empty());
        EXPECT_TRUE(KeysBelow(On, Folder).empty());
    }
}

TEST_F(Stem, Export) { EXPECT_TRUE(MatchesGolden("export/STEM.txt", On.Exported())); }

TEST_F(Stem, SaveAndReload) {
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"STEM", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
}

TEST_F(Stem, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"COMMANDS", L"FIELDS", L"parms"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_TRUE(Accepted(DeleteAt(On, Parms(), true)));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(On.Picture(), Before);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Commands").size(), 2U);
}

}  // namespace
}  // namespace kv::test
