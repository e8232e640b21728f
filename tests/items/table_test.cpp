// The table: its parameters, tree, value words, tag check, tools and export. Its fields are in
// field_test.cpp.
#include <gtest/gtest.h>

#include "items/definitions/diTable.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diTable.SaveParm";

const std::wstring kRecordText = Lines({
    L"NAME= \"libri\"",
    L"STYLE= RECORD",
    L"INDEX= \"aut\"",
    L"COLUMNS= 2",
    L"SORT= \"italiano\", \"numeri\"",
    L"FLAGS= catalogue | OEMCHARSET",
    L"TABLEID= 12",
    L"MIRROROF= \"Altri Libri\"",
});
const std::wstring kIndexText = Lines({
    L"NAME= \"aut\"",
    L"STYLE= INDEX",
    L"COLUMNS= 2",
    L"SORT= italiano,numeri",
});

RegObject FieldOf(std::int32_t Tag, std::wstring_view Name, std::int32_t Level = 1, std::int32_t Group = 0) {
    return Element(100 + Tag, Name,
                   {{L"Tag", Tag}, {L"Level", Level}, {L"GroupTag", Group}, {L"DataType", 8}});
}

class TableItem : public ::testing::Test {
  protected:
    Desk On{L"TABLE"};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    const RegObject& Stored() { return SavedBy(On); }
    std::vector<std::wstring> Rules() {
        std::vector<std::wstring> Found;
        for (const RegObject& Rule : ListOf(Stored(), L"Sort")) Found.push_back(TextOf(Rule, L"Text"));
        return Found;
    }
    std::wstring LineOf(std::wstring_view Keyword) {
        const std::wstring Shown = On.Text(Parms());
        const std::size_t At = Shown.find(std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos);
        return At == std::wstring::npos ? std::wstring() : Shown.substr(At, Shown.find(L"\r\n", At) - At);
    }
};

TEST_F(TableItem, EmptyTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 1,2\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  FIELDS \"Campi\" 12,11 RG\n"));
    EXPECT_EQ(On.Tree->Served(), (std::vector<std::wstring>{L"FINDTAG", L"RENUMTAG", L"CONSTANTS"}));
}

TEST_F(TableItem, FullTree) {
    Desk Full(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                                 {FieldOf(1, L"TITOLO"), FieldOf(2, L"AUTORE", 2, 1)}));
    ASSERT_TRUE(Accepted(Full.Opened));
    EXPECT_EQ(Narrow(Full.Picture()), Narrow(L"ROOT \"LIBRI\" 1,2\n"
                                             L"  PARMS \"Parametri\" 12,11\n"
                                             L"    PARMS # \"Parametri\" 9,9\n"
                                             L"  FIELDS \"Campi\" 12,11 RG\n"
                                             L"    FIELDS-# \"1:TITOLO\" 12,11 RDM\n"
                                             L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                                             L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                                             L"    FIELDS-# \"2:AUTORE\" 12,11 RDM\n"
                                             L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                                             L"        FIELDPARMS-# # \"Parametri\" 9,9\n"));
    const std::wstring Folder = KeyBelow(Full, KeyBelow(Full, L"FIELDS", 1), 1);
    EXPECT_EQ(KeyBelow(Full, Folder, 1).rfind(Folder + L" ", 0), 0U);
}

TEST_F(TableItem, LoadingAgainBuildsTheTreeOnce) {
    const std::wstring Before = On.Picture();
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(TableItem, Choices) {
    EXPECT_EQ(
        Narrow(On.Offered()),
        Narrow(L"PARMS STYLE= RECORD INDEX\n"
               L"PARMS FLAGS= OEMCHARSET AUTHORITY CATALOGUE\n"
               L"FIELDPARMS SEMANTIC= ISBDCOOK ISBDMETA ISBDRULE SETLINK SETNUM ITEMLINK ITEMNUM RESPLINK "
               L"SUBJECTLINK CLASSLINK TITLELINK GSTSIGLNK GSTBARLNK GSTACCLNK GSTBIDLNK GSTBIBLNK ITEMDATE "
               L"ITEMTITLE MAINRESP LOANSTART LOANEND LOANSTATUS LOANNOTE PUBLISHER LOANCHECK STATCONS "
               L"IMPTYPE HIERLEVEL RESPFLAGS GSTPUBTYPE NONE\n"
               L"FIELDPARMS FLAGS= NONE FIXEDSIZE READONLY WRITEONLY LOCKED TEXTBOX COMBOBOX LISTBOX AUTONUM "
               L"AUTODATE AUTOUNK IFEMPTY MANDATORY REPEATABLE VALIDATEONQUIT VALIDATEONREQ CAPTURE HIDDEN\n"
               L"FIELDPARMS DATATYPE= BYTE BOOLEAN LONG SINGLE DOUBLE CURRENCY DATE TEXT\n"
               L"FIELDPARMS LINKMODE= LINKNONE LINKOWNER LINKRECIPROCAL OWNERRECIPROCAL\n"));
}

TEST_F(TableItem, EmptyAndFullSectionText) {
    EXPECT_TRUE(MatchesGolden("section/TABLE.empty.txt", On.Text(Parms())));
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    EXPECT_TRUE(MatchesGolden("section/TABLE.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"INDEX="}), false)));
    ASSERT_TRUE(Accepted(On.Put(Parms(), kIndexText)));
    EXPECT_TRUE(MatchesGolden("section/TABLE.index.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
}

TEST_F(TableItem, EveryKeywordReachesItsProperty) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    const RegObject& Now = Stored();
    EXPECT_EQ(Now.Name, L"LIBRI");
    EXPECT_EQ(LongOf(Now, L"Style"), 0);
    EXPECT_EQ(TextOf(Now, L"Index"), L"AUT");
    EXPECT_EQ(LongOf(Now, L"Columns"), 2);
    EXPECT_EQ(LongOf(Now, L"Flags"), 0x11);
    EXPECT_EQ(LongOf(Now, L"TableID"), 12);
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altri Libri");
    EXPECT_EQ(Rules(), (std::vector<std::wstring>{L"ITALIANO", L"NUMERI"}));
}

TEST_F(TableItem, SortRulesHaveIdsOfTheirOwn) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    const std::vector<RegObject>& Sort = ListOf(Stored(), L"Sort");
    ASSERT_EQ(Sort.size(), 2U);
    EXPECT_NE(Sort[0].Id, 0);
    EXPECT_NE(Sort[0].Id, Sort[1].Id);
}

TEST_F(TableItem, EachFlagHasItsBit) {
    const struct {
        std::wstring_view Word;
        std::int32_t Bit;
    } kRows[] = {{L"OEMCHARSET", 0x01}, {L"AUTHORITY", 0x08}, {L"CATALOGUE", 0x10}};
    const std::wstring Rest = L"\r\nSTYLE= RECORD\r\nINDEX= A";
    for (const auto& Row : kRows) {
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= NONE" + Rest)));
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= " + std::wstring(Row.Word) + Rest)));
        EXPECT_EQ(LongOf(Stored(), L"Flags"), Row.Bit);
        EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=" + std::wstring(Row.Word));
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= catalogue|authority |  oemcharset" + Rest)));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0x19);
    EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=OEMCHARSET|AUTHORITY|CATALOGUE");
}

TEST_F(TableItem, FlagWordsAddBitsAndNoneClearsThem) {
    const std::wstring Rest = L"STYLE= RECORD\r\nINDEX= A\r\n";
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"FLAGS= AUTHORITY")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest)));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0x08);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"FLAGS= CATALOGUE")));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0x18);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"FLAGS= none")));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0);
    EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS= NONE");
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"FLAGS= CATALOGUE")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"FLAGS=")));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0);
}

TEST_F(TableItem, NoneAmongOtherWordsIsAnUnknownWord) {
    const std::wstring Text = L"STYLE= RECORD\r\nINDEX= A\r\nFLAGS= NONE|AUTHORITY";
    EXPECT_TRUE(Refused(On.Put(Parms(), Text), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(AUTHORITY)", 3));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Text, false)));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0x08);
}

TEST_F(TableItem, BitsWithoutAWordShowNoWord) {
    Desk Odd(L"TABLE", With(Desk::Named(L"PROVA"), {{L"Flags", 0x02}, {L"Style", 0}}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"PARMS")).find(L"\r\nFLAGS=\r\n"), std::wstring::npos);
}

TEST_F(TableItem, SortListSkipsEmptyPieces) {
    const auto Read = [&](std::wstring_view Value) {
        EXPECT_TRUE(Accepted(On.Put(Parms(), L"STYLE= RECORD\r\nINDEX= A\r\nSORT=" + std::wstring(Value))));
        return Rules();
    };
    EXPECT_EQ(Read(L" \"A\", , B"), (std::vector<std::wstring>{L"A", L"B"}));
    EXPECT_EQ(LineOf(L"SORT="), L"SORT= \"A\",\"B\"");
    EXPECT_EQ(Read(L"a"), (std::vector<std::wstring>{L"A"}));
    EXPECT_EQ(LineOf(L"SORT="), L"SORT= \"A\"");
    EXPECT_EQ(Read(L" \"\", ,"), (std::vector<std::wstring>{}));
    EXPECT_EQ(LineOf(L"SORT="), L"SORT= ");
    EXPECT_EQ(Read(L""), (std::vector<std::wstring>{}));
    EXPECT_EQ(Read(L" \"due parole\" ,x"), (std::vector<std::wstring>{L"DUE PAROLE", L"X"}));
}

TEST_F(TableItem, WhatATextLeavesOutKeepsItsValueButForStyleAndSort) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= RECORD")));
    const RegObject& Now = Stored();
    EXPECT_EQ(Now.Name, L"LIBRI");
    EXPECT_EQ(TextOf(Now, L"Index"), L"AUT");
    EXPECT_EQ(LongOf(Now, L"Columns"), 2);
    EXPECT_EQ(LongOf(Now, L"Flags"), 0x11);
    EXPECT_EQ(LongOf(Now, L"TableID"), 12);
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altri Libri");
    EXPECT_EQ(ListOf(Now, L"Sort").size(), 0U);
}

TEST_F(TableItem, FieldsStayWhereTheParametersAreSaved) {
    Desk Full(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", {FieldOf(1, L"TITOLO")}));
    ASSERT_TRUE(Accepted(Full.Put(Full.Leaf(L"PARMS"), kRecordText)));
    EXPECT_EQ(ListOf(SavedBy(Full), L"Fields").size(), 1U);
}

TEST_F(TableItem, StyleIsAskedForInEveryStrictText) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"COLUMNS= 2"), 20000, kSource,
                        L"NAME mancante o errato (max. 3 caratteri)."));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"NAME= ABC"), 20000, kSource, L"Non è stato specificato lo stile."));
    EXPECT_EQ(LineOf(L"STYLE="), L"STYLE= RECORD");
}

TEST_F(TableItem, WithoutStyleALaxTextLeavesItUnsetAndShowsIndex) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"COLUMNS= 3", false)));
    EXPECT_EQ(LongOf(Stored(), L"Style"), -1);
    EXPECT_EQ(LineOf(L"STYLE="), L"STYLE= INDEX");
    EXPECT_EQ(LongOf(Stored(), L"Columns"), 3);
}

TEST_F(TableItem, StyleWordsAreComparedAsTyped) {
    for (const std::wstring_view Word : {L"record", L"Index", L"\"RECORD\"", L""}) {
        EXPECT_TRUE(Refused(On.Put(Parms(), L"STYLE= " + std::wstring(Word)), 20000, kSource,
                            L"Valore sconosciuto per il parametro STYLE=(" + std::wstring(Word) + L")", 1));
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= " + std::wstring(Word), false)));
        EXPECT_EQ(LongOf(Stored(), L"Style"), -1);
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= INDEX", false)));
    EXPECT_EQ(LongOf(Stored(), L"Style"), 1);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"STYLE= RECORD", false)));
    EXPECT_EQ(LongOf(Stored(), L"Style"), 0);
}

TEST_F(TableItem, ColumnsTakeQuotesOffAndTheIdDoesNot) {
    const std::wstring Rest = L"STYLE= RECORD\r\nINDEX= A\r\n";
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"COLUMNS= \"4\"\r\nTABLEID= 5")));
    EXPECT_EQ(LongOf(Stored(), L"Columns"), 4);
    EXPECT_EQ(LongOf(Stored(), L"TableID"), 5);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Rest + L"COLUMNS= quattro\r\nTABLEID= \"6\"")));
    EXPECT_EQ(LongOf(Stored(), L"Columns"), 0);
    EXPECT_EQ(LongOf(Stored(), L"TableID"), 0);
}

TEST_F(TableItem, NumbersBeyondTheirRangeAreRunTimeFailures) {
    for (const std::wstring_view Keyword : {L"COLUMNS=", L"TABLEID="})
        for (const bool Strict : {true, false})
            EXPECT_TRUE(Refused(On.Put(Parms(), L"\r\n" + std::wstring(Keyword) + L" 3000000000", Strict), 6,
                                kSource, L"Overflow", 2));
}

TEST_F(TableItem, ChecksStandInTheirOrder) {
    constexpr std::wstring_view kName = L"NAME mancante o errato (max. 3 caratteri).";
    const struct {
        std::wstring_view Text;
        std::wstring_view Message;
    } kRows[] = {
        // An unset style with no name or a long one: the name comes first.
        {L"NAME=", kName},
        {L"NAME= ABCD", kName},
        {L"NAME= ABC", L"Non è stato specificato lo stile."},
        {L"NAME= A", L"Non è stato specificato lo stile."},
        {L"NAME=\r\nSTYLE= INDEX\r\nINDEX= X\r\nCOLUMNS= 1", kName},
        {L"NAME= ABCD\r\nSTYLE= INDEX\r\nINDEX= X\r\nCOLUMNS= 1", kName},
        {L"NAME= ABC\r\nSTYLE= INDEX\r\nINDEX= X\r\nCOLUMNS= 1",
         L"Non sono state specificate le regole di ordinamento."},
        {L"NAME= ABC\r\nSTYLE= INDEX\r\nINDEX= X\r\nCOLUMNS= 1\r\nSORT= A,B",
         L"Il numero di colonne differisce da quello delle regole di ordinamento."},
        {L"NAME= ABC\r\nSTYLE= INDEX\r\nINDEX= X\r\nSORT= A,B",
         L"Il numero di colonne differisce da quello delle regole di ordinamento."},
        {L"NAME= ABC\r\nSTYLE= INDEX\r\nINDEX= X\r\nCOLUMNS= 2\r\nSORT= A,B",
         L"La proprietà INDEX= non si applica agli indici."},
        {L"NAME= ABCDE\r\nSTYLE= RECORD", L"Non è stato specificato l'indice primario della tabella."},
        {L"NAME=\r\nSTYLE= RECORD\r\nFLAGS= AUTHORITY|OEMCHARSET",
         L"Non è stato specificato l'indice primario della tabella."},
    };
    const std::wstring Before = On.Text(Parms());
    for (const auto& Row : kRows) {
        EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Row.Text)), 20000, kSource, Row.Message))
            << Narrow(Row.Text);
        EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Before));
        Desk Lax(L"TABLE");
        EXPECT_TRUE(Accepted(Lax.Put(Lax.Leaf(L"PARMS"), std::wstring(Row.Text), false)));
    }
}

TEST_F(TableItem, RecordTablesMayHaveLongNamesAndCataloguesNoIndex) {
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"NAME= ABCD\r\nSTYLE= RECORD\r\nINDEX= X")));
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"NAME=\r\nSTYLE= RECORD\r\nINDEX= X")));
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"STYLE= RECORD\r\nINDEX=\r\nFLAGS= CATALOGUE")));
    EXPECT_TRUE(
        Accepted(On.Put(Parms(), L"NAME= ABC\r\nSTYLE= INDEX\r\nFLAGS= NONE\r\nCOLUMNS= 1\r\nSORT= \"A\"")));
}

TEST_F(TableItem, Refusals) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    ExpectRefusals(On, Parms(), kSource,
                   {
                       {L"STYLE= RECORD\r\nstyle= INDEX", L"Parametro non riconosciuto: style=INDEX", 2},
                       {L"PIPPO= 1", L"Parametro non riconosciuto: PIPPO=1", 1},
                       {L"=5", L"Parametro non riconosciuto: =5", 1},
                       {L"\t'[ID= 17]", L"Parametro non riconosciuto: \t'[ID=17]", 1},
                       {L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                       {L"SORT= A\r\n\r\n'nota\r\nSORT= B", L"Ripetizone del parametro SORT=.", 4},
                       {L"FLAGS= AUTHORITY\r\nFLAGS= NONE", L"Ripetizone del parametro FLAGS=.", 2},
                       {L"STYLE= RECORD\r\nSTYLE= RECORD", L"Ripetizone del parametro STYLE=.", 2},
                       {L"INDEX=\r\nINDEX=", L"Ripetizone del parametro INDEX=.", 2},
                       {L"COLUMNS=\r\nCOLUMNS=", L"Ripetizone del parametro COLUMNS=.", 2},
                       {L"TABLEID=\r\nTABLEID=", L"Ripetizone del parametro TABLEID=.", 2},
                       {L"MIRROROF=\r\nMIRROROF=", L"Ripetizone del parametro MIRROROF=.", 2},
                       {L"STYLE= FORSE\r\n", L"Valore sconosciuto per il parametro STYLE=(FORSE)", 1, false},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(), L"STYLE= RECORD\r\nsenza segno", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza segno.", 2));
}

TEST_F(TableItem, UnknownFlagWordsShowWhatRemains) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= pippo | authority"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(AUTHORITY)", 1));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= PIPPO"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=()", 1));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= pippo | authority", false)));
    EXPECT_EQ(LongOf(Stored(), L"Flags"), 0x19);
}

TEST_F(TableItem, SaveAndReload) {
    Desk Full(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", {FieldOf(1, L"TITOLO")}));
    ASSERT_TRUE(Accepted(Full.Put(Full.Leaf(L"PARMS"), kRecordText)));
    const std::wstring Shown = Full.Text(Full.Leaf(L"PARMS"));
    EXPECT_TRUE(Full.Tree->Modified());
    const RegObject& Saved = SavedBy(Full);
    EXPECT_FALSE(Full.Tree->Modified());
    Desk Again(L"TABLE", Saved);
    EXPECT_EQ(Narrow(Again.Text(Again.Leaf(L"PARMS"))), Narrow(Shown));
    EXPECT_EQ(SavedBy(Again), Saved);
}

TEST_F(TableItem, TwoFieldsOfOneTagAreNotSaved) {
    Desk Twice(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                                  {FieldOf(1, L"PRIMO"), FieldOf(7, L"SETTE"), FieldOf(3, L"TRE"),
                                   FieldOf(7, L"ANCORA"), FieldOf(1, L"POI")}));
    ASSERT_TRUE(Accepted(Twice.Opened));
    EXPECT_TRUE(Refused(Twice.Try([&] { return Twice.Core.Save(); }), 20000, L"diTable.Save",
                        L"Tag duplicato: 7\r\nSETTE=ANCORA"));
    EXPECT_FALSE(Twice.Object->Written());
    std::wstring Word;
    EXPECT_TRUE(Refused(Twice.Try([&] { return Twice.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); }),
                        20000, L"diTable.Save", L"Tag duplicato: 7\r\nSETTE=ANCORA"));
}

TEST_F(TableItem, TheFirstRepeatAndItsFirstBearerAreNamed) {
    Desk Thrice(L"TABLE",
                WithList(Desk::Named(L"LIBRI"), L"Fields",
                         {FieldOf(12345, L"A"), FieldOf(2, L"B"), FieldOf(2, L"C"), FieldOf(12345, L"D")}));
    EXPECT_TRUE(Refused(Thrice.Try([&] { return Thrice.Core.Save(); }), 20000, L"diTable.Save",
                        L"Tag duplicato: 2\r\nB=C"));
}

TEST_F(TableItem, Export) {
    Desk Full(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                                 {FieldOf(1, L"TITOLO"), FieldOf(2, L"AUTORE", 2, 1)}));
    ASSERT_TRUE(Accepted(Full.Put(Full.Leaf(L"PARMS"), kRecordText)));
    static_cast<void>(SavedBy(Full));
    EXPECT_TRUE(MatchesGolden("export/TABLE.txt", Full.Exported()));
    EXPECT_EQ(Narrow(Full.Exported()), Narrow(Full.Exported()));
}

TEST_F(TableItem, SectionsThatHoldNothing) {
    for (const wchar_t* Key : {L"", L"FIELDS", L"parms", L"PIPPO"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
}

TEST_F(TableItem, WrapLinesStandAtTheIndentAndTheSectionOneDeeper) {
    diTable Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer = L"prima\r\n";
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"PARMS"}, Buffer, true, {}, 2));
    EXPECT_EQ(Buffer.rfind(L"prima\r\n\t\tBEGIN PARMS\r\n\t\t\tNAME= \"PROVA\"\r\n", 0), 0U);
    EXPECT_TRUE(Buffer.ends_with(L"\t\t\t'[VERSION= 3]\r\n\t\tEND PARMS\r\n"));
    Buffer.clear();
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"PARMS"}, Buffer, true, {}, 0));
    EXPECT_EQ(Buffer.rfind(L"BEGIN PARMS\r\nNAME= ", 0), 0U);
    Buffer.clear();
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDS"}, Buffer, true, {}, 1));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"\tBEGIN FIELDS\r\n\tEND FIELDS\r\n"));
}

TEST_F(TableItem, ANewLeafOfTheParameters) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Made)));
    EXPECT_EQ(Made, On.Leaf(L"PARMS", 2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"PARMS");
    EXPECT_EQ(On.Text(Made), On.Text(Parms()));
}

TEST_F(TableItem, OtherOperations) {
    const std::wstring Before = On.Picture();
    std::wstring Made;
    EXPECT_TRUE(Accepted(DeleteAt(On, Parms())));
    EXPECT_TRUE(Accepted(DeleteAt(On, Parms(), true)));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    diTable Item;
    Item.DesignTree() = On.Tree;
    std::wstring Text = L"BEGIN TABLE\r\n";
    EXPECT_FALSE(Item.ImportData(*On.Object, Text));
    EXPECT_EQ(Text, L"BEGIN TABLE\r\n");
    EXPECT_FALSE(Item.ShowUsers({}));
    EXPECT_FALSE(On.Object->Written());
}

TEST_F(TableItem, IdentityAndCopy) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), kRecordText)));
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"TABLE");
    EXPECT_EQ(LongOf(On.Clipboard.DataObj->Read(), L"TableID"), 12);
    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users); })));
    EXPECT_EQ(Name, L"LIBRI");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
}

// The tools.

class TableTools : public ::testing::Test {
  protected:
    Desk On{L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                               {FieldOf(5, L"NUMERO DI CASSA", 1, 5), FieldOf(2, L"È PERÒ", 2, 5),
                                FieldOf(1, L"PREZZO €")})};
    void Click(const wchar_t* Tool) {
        EXPECT_TRUE(Accepted(On.Try([&] {
            On.Core.TlbrButtonClick(Tool, {.CurrItem = On.Leaf(L"PARMS")});
            return false;
        })));
    }
    std::vector<std::int32_t> Tags() {
        std::vector<std::int32_t> Found;
        for (const RegObject& Field : ListOf(SavedBy(On), L"Fields")) {
            Found.push_back(LongOf(Field, L"Tag"));
            Found.push_back(LongOf(Field, L"GroupTag"));
        }
        return Found;
    }
};

TEST_F(TableTools, FreeTagsAreListed) {
    Click(L"FINDTAG");
    ASSERT_EQ(On.Platform.Listed.size(), 1U);
    EXPECT_EQ(On.Platform.Listed[0], (std::vector<std::wstring>{L"3 - 4", L"6 - 32767"}));
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{L"Tag disponibili"}));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(TableTools, RenumberingIsAskedAndFollowsTheGroups) {
    On.Platform.Answers = {Answer::No, Answer::Yes};
    Click(L"RENUMTAG");
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Tags(), (std::vector<std::int32_t>{5, 5, 2, 5, 1, 0}));
    Click(L"RENUMTAG");
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Tags(), (std::vector<std::int32_t>{1, 1, 2, 1, 3, 0}));
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>(2, L"Confermi la rinumerazione dei Tag?")));
    EXPECT_EQ(On.Platform.Styles, (std::vector<std::int32_t>(2, 4 + 32 + 256)));
}

TEST_F(TableTools, TheDefaultAnswerRenumbersNothing) {
    Click(L"RENUMTAG");
    EXPECT_EQ(Tags(), (std::vector<std::int32_t>{5, 5, 2, 5, 1, 0}));
}

TEST_F(TableTools, ConstantsGoIntoTheChosenFile) {
    const std::filesystem::path File = On.Platform.Folder / "COSTANTI.BAS";
    On.Platform.SavePath = File.wstring();
    Click(L"CONSTANTS");
    EXPECT_EQ(ReadFile(File),
              "Public Const FTG_NUMERO_DI_CASSA=5\r\n"
              "Public Const FTG_\xC8_PER\xD2=2\r\n"
              "Public Const FTG_PREZZO_\x80=1\r\n");
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(TableTools, AFileThatCannotBeMadeIsShownOnce) {
    const std::wstring Path = (On.Platform.Folder / "manca" / "X.BAS").wstring();
    On.Platform.SavePath = Path;
    On.Core.TlbrButtonClick(L"CONSTANTS", {.CurrItem = On.Leaf(L"PARMS")});
    ASSERT_EQ(On.Platform.Shown.size(), 1U);
    EXPECT_EQ(On.Platform.Shown[0].Source, L"vdbcModule.ExportFieldsToConsts");
    EXPECT_EQ(Narrow(On.Platform.Shown[0].Description), Narrow(L"Impossibile creare il file " + Path));
    EXPECT_NE(On.Platform.Shown[0].Number, 0);
    EXPECT_NE(On.Platform.Shown[0].Number, 20000);
}

TEST_F(TableTools, OtherButtonsDoNothing) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Tool : {L"MAPTABLE", L"findtag", L"", L"COPY"}) Click(Tool);
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_FALSE(On.Tree->Modified());
}

}  // namespace
}  // namespace kv::test
