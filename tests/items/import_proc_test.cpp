// The import procedure: parameters, fields, indexes and scripts, the mapping of a copied table and the
// import.
#include <gtest/gtest.h>

#include "items/definitions/diImportProc.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

RegObject Field(std::int32_t Id, std::wstring_view Name, std::int32_t Tag) {
    return Element(Id, Name, {{L"Tag", Tag}});
}
RegObject Procedure() {
    RegObject Made = Desk::Named(L"PROVA");
    Made = WithList(std::move(Made), L"Fields",
                    {Field(31, L"TITOLO", 1), Field(32, L"AUTORE", 2), Field(33, L"ANNO", 5)});
    Made = WithList(
        std::move(Made), L"Indexes",
        {Element(41, L"", {{L"Table", RegText(L"AUT")}}), Element(42, L"", {{L"Table", RegText(L"TIT")}})});
    return WithList(std::move(Made), L"Scripts",
                    {Element(51, L"PRIMA", {{L"Language", RegText(L"VBSCRIPT")}}), Element(52, L"DOPO")});
}

class ImportProc : public ::testing::Test {
  protected:
    Desk On{L"IMPORTPROC", Procedure()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    std::wstring Leaf(std::wstring_view Folder, std::size_t Nth) const {
        return KeyBelow(On, KeyBelow(On, Node(Folder, Nth), 1), 1);
    }
    // The captions as the stored record has them; tree and lists stand in one order.
    std::vector<std::wstring> Stored(std::wstring_view List, std::wstring_view Folder) {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List))
            Found.push_back(List == L"Indexes" ? TextOf(Each, L"Table") : Each.Name);
        EXPECT_EQ(CaptionsBelow(On, Folder), Found);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"IMPORTPROC", On.Object->Read()).Picture()));
        return Found;
    }
    void Click(const wchar_t* Tool) {
        EXPECT_TRUE(Accepted(On.Try([&] {
            On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
            return false;
        })));
    }
};

struct ListCase {
    const wchar_t* Folder;
    const wchar_t* List;
    std::vector<std::wstring> Captions;
    const wchar_t* Source;
    const wchar_t* Rename;  // a text that gives the first element a new caption
    const wchar_t* Renamed;
};
const ListCase kListCases[] = {
    {L"FIELDS",
     L"Fields",
     {L"TITOLO", L"AUTORE", L"ANNO"},
     L"ParmEditor.SaveImportField",
     L"TAG= 90\r\nNAME= nuovo",
     L"NUOVO"},
    {L"INDEXES", L"Indexes", {L"AUT", L"TIT"}, L"ParmEditor.SaveImportIndex", L"TABLE= nuovo", L"NUOVO"},
    {L"SCRIPTS", L"Scripts", {L"PRIMA", L"DOPO"}, L"ParmEditor.SaveImportScript", L"NAME= nuovo", L"NUOVO"},
};

TEST_F(ImportProc, EmptyTree) {
    Desk Empty(L"IMPORTPROC");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  FIELDS \"Campi\" 12,11 RG\n"
                                              L"  INDEXES \"Indici\" 12,11 RG\n"
                                              L"  SCRIPTS \"Scripts\" 12,11 RG\n"));
}

TEST_F(ImportProc, FullTreeAndTools) {
    ASSERT_TRUE(Accepted(On.Opened));
    std::wstring Expected =
        L"ROOT \"PROVA\" 12,11\n"
        L"  PARMS \"Parametri\" 12,11\n"
        L"    PARMS # \"Parametri\" 9,9\n";
    const auto Add = [&](const wchar_t* Folder, const wchar_t* Caption, const wchar_t* Inner,
                         const wchar_t* InnerCaption, std::initializer_list<const wchar_t*> Each) {
        Expected.append(L"  ").append(Folder).append(L" \"").append(Caption).append(L"\" 12,11 RG\n");
        for (const wchar_t* One : Each) {
            Expected.append(L"    ").append(Folder).append(L"-# \"").append(One).append(L"\" 12,11 RDM\n");
            Expected.append(L"      ").append(Inner).append(L"-# \"").append(InnerCaption);
            Expected.append(L"\" 12,11\n        ").append(Inner).append(L"-# # \"").append(InnerCaption);
            Expected.append(L"\" 9,9\n");
        }
    };
    Add(L"FIELDS", L"Campi", L"FIELDPARMS", L"Parametri", {L"TITOLO", L"AUTORE", L"ANNO"});
    Add(L"INDEXES", L"Indici", L"INDEXPARMS", L"Parametri", {L"AUT", L"TIT"});
    Add(L"SCRIPTS", L"Scripts", L"SCRIPTPARMS", L"Script", {L"PRIMA", L"DOPO"});
    EXPECT_EQ(Narrow(On.Picture()), Narrow(Expected));
    EXPECT_EQ(On.Tree->Served(), (std::vector<std::wstring>{L"FINDTAG", L"RENUMTAG", L"MAPTABLE"}));
}

TEST_F(ImportProc, Choices) {
    EXPECT_EQ(Narrow(On.Offered()),
              Narrow(L"PARMS FLAGS= OEMSOURCE READONLY NOSOURCE DATALOCK EXTSORT BINARYTARGET MOVESOURCES "
                     L"DELETESOURCES SORTBYNAME SORTBYDATE VER30 NONE\n"
                     L"PARMS SELECTED= FALSE TRUE\n"
                     L"PARMS LOCKED= FALSE TRUE\n"
                     L"PARMS INCLUDEDLIB= <LIBLIST> @nomefile\n"
                     L"PARMS EXCLUDEDLIB= <LIBLIST> @nomefile\n"
                     L"PARMS INCLUDEDLIBISBD= <LIBLIST> @nomefile\n"
                     L"PARMS EXCLUDEDLIBISBD= <LIBLIST> @nomefile\n"
                     L"PARMS LIBRARYORDER= <LIBLIST> @nomefile\n"
                     L"PARMS PROCTYPE= NODBR ONLYDBR UNKNOWTAGWARN UNKNOWTAGSTOP INCREMENTAL COMPACTDB "
                     L"REFRESH NONULLMAINKEY BATCH FLUSH NONE\n"
                     L"PARMS ACTION= EARLYPURGE LATEPURGE EARLYPURGENOT LATEPURGENOT EARLYSCRIPT "
                     L"MIDDLESCRIPT LATESCRIPT\n"
                     L"INDEXPARMS KEY= FIELDS( DELIMITED( RANGE( WORDS( WORDSIND( FULLTEXT OLE(\n"
                     L"INDEXPARMS FLAGS= PRIMARY UNIQUE INDIRECT COMPACT DUMMY TIDLIST SMALLFIELD\n"
                     L"FIELDPARMS FLAGS= MISSINGFIELDERR MISSINGFIELDWARN RECID READONLY RECSTATUS NOINDEX "
                     L"NONE\n"
                     L"FIELDPARMS ACTION= DELETE KEEPREC SKIPREC SCRIPT\n"
                     L"SCRIPTPARMS LANG= VBSCRIPT JSCRIPT\n"));
}

TEST_F(ImportProc, EveryOfferedWordIsTakenAndOthersAreNot) {
    // Whole words in either case; templates are the beginning of free text.
    for (const window::ValueWords& Row : On.Tree->Choices()) {
        const std::wstring Key = Row.Section == L"PARMS" ? Parms() : On.Leaf(Row.Section);
        const std::wstring Procedure = Row.Section == L"PARMS"        ? L"ParmEditor.SaveImportProc"
                                       : Row.Section == L"FIELDPARMS" ? L"ParmEditor.SaveImportField"
                                       : Row.Section == L"INDEXPARMS" ? L"ParmEditor.SaveImportIndex"
                                                                      : L"ParmEditor.SaveImportScript";
        bool Free = false;
        for (const std::wstring& Word : Row.Words) {
            const bool Template = Word.ends_with(L"(") || Word.find(L'<') != Word.npos;
            Free = Free || Word.find(L'<') != Word.npos;
            const std::wstring Value = Template ? Word + L"1,2)" : Word;
            SCOPED_TRACE(Narrow(Row.Keyword + L" " + Value));
            EXPECT_TRUE(Accepted(On.Put(Key, Row.Keyword + L" " + Value)));
            EXPECT_NE(On.Text(Key).find(Value), std::wstring::npos);
            ExpectFixpoint(On, Key);
            if (Template) continue;
            std::wstring Small = Value;
            for (wchar_t& C : Small)
                if (C >= L'A' && C <= L'Z') C = static_cast<wchar_t>(C + 32);
            EXPECT_TRUE(Accepted(On.Put(Key, Row.Keyword + L" " + Small)));
            if (Small != Value && !Free) {
                EXPECT_NE(On.Text(Key).find(Value), std::wstring::npos);
            }
        }
        if (Free) continue;
        SCOPED_TRACE(Narrow(Row.Section + L" " + Row.Keyword));
        const bool Words = Row.Keyword == L"FLAGS=" || Row.Keyword == L"PROCTYPE=" ||
                           (Row.Keyword == L"ACTION=" && Row.Section == L"PARMS");
        EXPECT_TRUE(
            Refused(On.Put(Key, Row.Keyword + L" FORSE"), 20000, Procedure,
                    L"Valore sconosciuto per il parametro " + Row.Keyword + (Words ? L"()" : L"(FORSE)"), 1));
        EXPECT_TRUE(Accepted(On.Put(Key, Row.Keyword + L" FORSE", false)));
        EXPECT_EQ(On.Text(Key).find(L"FORSE"), std::wstring::npos);
    }
}

TEST_F(ImportProc, SectionTexts) {
    Desk Empty(L"IMPORTPROC");
    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ASSERT_TRUE(Accepted(
        On.Put(Parms(),
               Lines({L"TABLE= libri", L"SOURCEPATH= \"C:\\Dati\\*.mrc\"", L"TARGETPATH= \"D:\\Base\"",
                      L"LOGFILE= \"Import.log\"", L"FLAGS= ver30|oemsource", L"SELECTED= vero",
                      L"LOCKED= TRUE", L"INCLUDEDLIB= \"@Biblioteche.txt\"", L"EXCLUDEDLIB= \"RM01,RM02\"",
                      L"INCLUDEDLIBISBD= A", L"EXCLUDEDLIBISBD= B", L"LIBRARYORDER= C",
                      L"PROCTYPE= flush|NODBR", L"ACTION= LATESCRIPT|earlypurge", L"MIRROROF= \"Altra\""}))));
    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());

    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.FIELDPARMS.empty.txt", On.Text(Leaf(L"FIELDS", 1))));
    ASSERT_TRUE(Accepted(
        On.Put(Leaf(L"FIELDS", 1), Lines({L"NAME= \"titolo\"", L"TAG= 200", L"POSITION= 3", L"KIND= 32",
                                          L"FLAGS= noindex|RECID", L"ACTION= script", L"SCRIPT= prima"}))));
    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.FIELDPARMS.full.txt", On.Text(Leaf(L"FIELDS", 1))));
    ExpectFixpoint(On, Leaf(L"FIELDS", 1));

    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.INDEXPARMS.empty.txt", On.Text(Leaf(L"INDEXES", 1))));
    ASSERT_TRUE(Accepted(On.Put(
        Leaf(L"INDEXES", 1), Lines({L"TABLE= aut", L"KEY= \"WORDS(700,701)\"", L"FLAGS= unique|PRIMARY"}))));
    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.INDEXPARMS.full.txt", On.Text(Leaf(L"INDEXES", 1))));
    ExpectFixpoint(On, Leaf(L"INDEXES", 1));

    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.SCRIPTPARMS.empty.txt", On.Text(Leaf(L"SCRIPTS", 2))));
    ASSERT_TRUE(Accepted(On.Put(Leaf(L"SCRIPTS", 2),
                                Lines({L"NAME= dopo", L"LANG= jscript", L"FILENAME= \"Script\\Dopo.js\""}))));
    EXPECT_TRUE(MatchesGolden("section/IMPORTPROC.SCRIPTPARMS.full.txt", On.Text(Leaf(L"SCRIPTS", 2))));
    ExpectFixpoint(On, Leaf(L"SCRIPTS", 2));
}

TEST_F(ImportProc, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"TABLE= libri\r\nFLAGS= VER30\r\nSELECTED= TRUE")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"LOGFILE= a")));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"Table"), L"");
    EXPECT_EQ(LongOf(Now, L"Flags"), 0);
    EXPECT_FALSE(BoolOf(Now, L"Selected"));
    EXPECT_EQ(TextOf(Now, L"LogFile"), L"a");
    EXPECT_EQ(ListOf(Now, L"Fields").size(), 3U);
    EXPECT_EQ(ListOf(Now, L"Scripts").size(), 2U);
}

TEST_F(ImportProc, CaptionsFollowTheElement) {
    for (const ListCase& Case : kListCases) {
        ASSERT_TRUE(Accepted(On.Put(Leaf(Case.Folder, 1), Case.Rename)));
        EXPECT_EQ(On.Tree->NodeText(Node(Case.Folder, 1)), Case.Renamed);
        EXPECT_EQ(Stored(Case.List, Case.Folder).front(), Case.Renamed);
    }
}

TEST_F(ImportProc, Refusals) {
    ExpectRefusals(
        On, Parms(), L"ParmEditor.SaveImportProc",
        {
            {L"LOCKED=\r\nLOCKED=", L"Ripetizone del parametro LOCKED=.", 2},
            {L"'x\r\nTAG= 1", L"Parametro non riconosciuto: TAG=1", 2},
            {L"table= x", L"Parametro non riconosciuto: table=x", 1},
            {L"SELECTED= forse", L"Valore sconosciuto per il parametro SELECTED=(FORSE)", 1, false},
        });
    for (const ListCase& Case : kListCases)
        ExpectRefusals(On, Leaf(Case.Folder, 1), Case.Source,
                       {
                           {L"PIPPO= 1", L"Parametro non riconosciuto: PIPPO=1", 1},
                           {L"'x\r\n\r\nCODE= 1", L"Parametro non riconosciuto: CODE=1", 3},
                       });
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(ImportProc, NewElementsGoLastOrBehindTheSelectedOne) {
    for (const ListCase& Case : kListCases) {
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Case.Folder, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        std::vector<std::wstring> Expected = Case.Captions;
        Expected.push_back(L"");
        EXPECT_EQ(Made, Node(Case.Folder, Expected.size()));
        EXPECT_EQ(Stored(Case.List, Case.Folder), Expected);
        EXPECT_NE(ListOf(On.Object->Read(), Case.List).back().Id, 0);
        ASSERT_TRUE(Accepted(DeleteAt(On, Made)));
        ASSERT_TRUE(Accepted(AddAt(On, Node(Case.Folder, 1), Made)));
        EXPECT_EQ(Made, Node(Case.Folder, 2));
        Expected = Case.Captions;
        Expected.insert(Expected.begin() + 1, L"");
        EXPECT_EQ(Stored(Case.List, Case.Folder), Expected);
        EXPECT_FALSE(On.Text(Leaf(Case.Folder, 2)).empty());
    }
}

TEST_F(ImportProc, ElementsMove) {
    for (const ListCase& Case : kListCases) {
        std::vector<std::wstring> Expected = Case.Captions;
        const std::wstring Old = Node(Case.Folder, 2);
        std::wstring Made;
        ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
        std::swap(Expected[0], Expected[1]);
        EXPECT_NE(Made, Old);
        EXPECT_EQ(Made, Node(Case.Folder, 1));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Stored(Case.List, Case.Folder), Expected);
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, 1, Made)));
        ASSERT_TRUE(Accepted(MoveAt(On, Node(Case.Folder, 1), 0, Made)));
        EXPECT_EQ(Made, Node(Case.Folder, 2));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Case.Folder, Expected.size()), -1, Made)));
        EXPECT_EQ(Stored(Case.List, Case.Folder), Case.Captions);
    }
}

TEST_F(ImportProc, OneOrAllAreDeleted) {
    for (const ListCase& Case : kListCases) {
        std::vector<std::wstring> Expected = Case.Captions;
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Case.Folder, 1))));
        EXPECT_TRUE(On.Tree->Modified());
        Expected.erase(Expected.begin());
        EXPECT_EQ(Stored(Case.List, Case.Folder), Expected);
        ASSERT_TRUE(Accepted(DeleteAt(On, Case.Folder, true)));
        EXPECT_EQ(Stored(Case.List, Case.Folder), (std::vector<std::wstring>{}));
    }
}

TEST_F(ImportProc, TwoFieldsOfOneTagAreNotSaved) {
    ASSERT_TRUE(Accepted(On.Put(Leaf(L"FIELDS", 3), L"NAME= ancora\r\nTAG= 1")));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diImportProc.Save",
                        L"Tag duplicato: 1\r\nTITOLO=ANCORA"));
    EXPECT_FALSE(On.Object->Written());
    EXPECT_TRUE(On.Tree->Modified());
}

TEST_F(ImportProc, TagTools) {
    Click(L"FINDTAG");
    ASSERT_EQ(On.Platform.Listed.size(), 1U);
    EXPECT_EQ(On.Platform.Listed[0], (std::vector<std::wstring>{L"3 - 4", L"6 - 32767"}));
    Click(L"RENUMTAG");
    EXPECT_FALSE(On.Tree->Modified());
    On.Platform.Answers = {Answer::Yes};
    Click(L"RENUMTAG");
    EXPECT_TRUE(On.Tree->Modified());
    std::int32_t Tag = 0;
    for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) EXPECT_EQ(LongOf(Each, L"Tag"), ++Tag);
    On.Platform.SavePath = (On.Platform.Folder / "X.BAS").wstring();
    Click(L"CONSTANTS");  // not one of its buttons
    EXPECT_TRUE(On.Platform.FileQuestions.empty());
}

TEST_F(ImportProc, ExportAndWrapLines) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"TABLE= libri\r\nPROCTYPE= BATCH")));
    static_cast<void>(SavedBy(On));
    EXPECT_TRUE(MatchesGolden("export/IMPORTPROC.txt", On.Exported()));
    diImportProc Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDS"}, Buffer, true, {}, 3));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"BEGIN FIELDS\r\nEND FIELDS\r\n"));
}

TEST_F(ImportProc, OtherOperations) {
    for (const wchar_t* Key : {L"", L"FIELDS", L"INDEXES", L"SCRIPTS", L"parms"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Made)));
    EXPECT_EQ(Made, On.Leaf(L"PARMS", 2));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"IMPORTPROC");
}

// The mapping of a copied table.

class MapTable : public ImportProc {
  protected:
    // Copies a table as a window does; the clipboard file then lies where this desk looks for it.
    void Copy(const wchar_t* Class, RegObject Content) {
        std::string Bytes;
        {
            Desk Source(Class, std::move(Content));
            std::wstring Word;
            EXPECT_TRUE(Accepted(
                Source.Try([&] { return Source.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
            Bytes = ReadFile(Source.Platform.Folder / "KVDSCLP.TMP");
            EXPECT_FALSE(Bytes.empty());
        }
        WriteFile(On.Platform.Folder / "KVDSCLP.TMP", Bytes);
    }
    void CopyTable() {
        Copy(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                                {Element(71, L"SERIE", {{L"Tag", 225}, {L"Level", 1}}),
                                 Element(72, L"È NOTA €", {{L"Tag", 300}, {L"Level", 2}})}));
    }
    std::vector<std::wstring> Names() {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(Each.Name);
        return Found;
    }
    void Clear() { ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true))); }

    const std::wstring kRemove = L"Si vogliono rimuovere i campi già presenti  nell'oggetto?";
    const std::wstring kConfirm =
        L"Confermi la generazione automatica dei campi dalla TABLE della Clipboard?";
    const std::wstring kDone =
        L"Operazione completata: salvare l'oggetto e riaprirlo per visualizzare le modifiche.";
};

TEST_F(MapTable, YesReplacesTheFieldsAndTheTreeStays) {
    CopyTable();
    On.Platform.Answers = {Answer::Yes};
    const std::wstring Before = On.Picture();
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{kRemove, kDone}));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"SERIE", L"È NOTA €"}));
    const std::vector<RegObject>& Fields = ListOf(On.Object->Read(), L"Fields");
    EXPECT_EQ(Fields[0].Id, 71);
    EXPECT_EQ(LongOf(Fields[0], L"Tag"), 225);
    EXPECT_EQ(LongOf(Fields[0], L"Kind"), 32);
    EXPECT_EQ(Fields[1].Id, 72);
    EXPECT_EQ(LongOf(Fields[1], L"Tag"), 300);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (std::vector<std::wstring>{L"SERIE", L"È NOTA €"}));
}

TEST_F(MapTable, NoAddsTheFieldsBehind) {
    CopyTable();
    On.Platform.Answers = {Answer::No};
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{kRemove, kDone}));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"TITOLO", L"AUTORE", L"ANNO", L"SERIE", L"È NOTA €"}));
}

TEST_F(MapTable, CancelIsTheDefaultAndEndsIt) {
    CopyTable();
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{kRemove}));
    EXPECT_EQ(On.Platform.Styles.at(0) & 0x0F, 3);
    EXPECT_EQ(On.Platform.Styles.at(0) & 0xF0, 32);
    EXPECT_EQ(On.Platform.Styles.at(0) & 0x300, 512);
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"TITOLO", L"AUTORE", L"ANNO"}));
}

TEST_F(MapTable, WithoutFieldsItAsksToGoOn) {
    CopyTable();
    Clear();
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{kConfirm}));
    EXPECT_EQ(On.Platform.Styles.at(0) & 0x0F, 4);
    EXPECT_EQ(On.Platform.Styles.at(0) & 0xF0, 32);
    EXPECT_EQ(On.Platform.Styles.at(0) & 0x300, 256);
    EXPECT_EQ(Names(), (std::vector<std::wstring>{}));
    On.Platform.Answers = {Answer::Yes};
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Asked, (std::vector<std::wstring>{kConfirm, kConfirm, kDone}));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"SERIE", L"È NOTA €"}));
}

TEST_F(MapTable, TheMessageAtTheEndHasOneButton) {
    CopyTable();
    On.Platform.Answers = {Answer::Yes};
    Click(L"MAPTABLE");
    EXPECT_EQ(On.Platform.Styles.at(1) & 0x0F, 0);
}

TEST_F(MapTable, ATableWithoutFieldsIsRefused) {
    const std::wstring Text = L"L'oggetto nella clipboard non ha campi o non è una TABLE.";
    const auto Refuses = [&] {
        On.Platform.Shown.clear();
        On.Core.TlbrButtonClick(L"MAPTABLE", {.CurrItem = Parms()});
        ASSERT_EQ(On.Platform.Shown.size(), 1U);
        EXPECT_EQ(On.Platform.Shown[0].Number, 20000);
        EXPECT_EQ(On.Platform.Shown[0].Source, L"diImportProc.MapTable");
        EXPECT_EQ(Narrow(On.Platform.Shown[0].Description), Narrow(Text));
        EXPECT_TRUE(On.Platform.Asked.empty());
        EXPECT_FALSE(On.Tree->Modified());
    };
    Copy(L"TABLE", Desk::Named(L"VUOTA"));
    Refuses();
    Copy(L"STOPWORD", Desk::Named(L"PAROLE"));
    Refuses();
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"TITOLO", L"AUTORE", L"ANNO"}));
}

TEST_F(MapTable, WithoutAReadableClipboardNothingHappens) {
    const std::filesystem::path File = On.Platform.Folder / "KVDSCLP.TMP";
    Click(L"MAPTABLE");
    WriteFile(File, "");
    Click(L"MAPTABLE");
    WriteFile(File, std::string(4, '\0'));
    Click(L"MAPTABLE");
    CopyTable();
    const std::string Whole = ReadFile(File);
    for (const std::size_t Length : {Whole.size() - 1, Whole.size() / 2, std::size_t{9}, std::size_t{3}}) {
        WriteFile(File, Whole.substr(0, Length));
        Click(L"MAPTABLE");
    }
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_TRUE(On.Platform.Shown.empty());
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"TITOLO", L"AUTORE", L"ANNO"}));
}

// The import.

class ImportText : public ::testing::Test {
  protected:
    TestPlatform Platform;
    std::shared_ptr<MemoryRegData> Into =
        std::make_shared<MemoryRegData>(L"IMPORTPROC", Desk::Named(L"ARRIVO"));
    std::shared_ptr<window::TreeModel> Tree = std::make_shared<window::TreeModel>();
    vdSvr Server{nullptr, [this] { return Tree; }};
    std::wstring Left;

    Outcome Import(std::wstring Text) {
        Platform.Shown.clear();
        Left = std::move(Text);
        const bool Failed = Server.Import(Into, L"IMPORTPROC", Left);
        if (!Failed) return std::nullopt;
        const KvError Error =
            Platform.Shown.empty() ? CoreUtil::Instance().LastError() : Platform.Shown.front();
        CoreUtil::Instance().ForgetError();
        return Error;
    }
    static std::wstring Exported(RegObject Content) {
        return Desk(L"IMPORTPROC", std::move(Content)).Exported();
    }
};

TEST_F(ImportText, ItsOwnExportComesBack) {
    Desk Source(L"IMPORTPROC", Procedure());
    ASSERT_TRUE(Accepted(Source.Put(
        Source.Leaf(L"PARMS"), Lines({L"TABLE= libri", L"SOURCEPATH= \"C:\\Dati\\*.mrc\"", L"FLAGS= VER30",
                                      L"LOCKED= TRUE", L"INCLUDEDLIB= \"@Lista\"", L"PROCTYPE= BATCH",
                                      L"ACTION= LATEPURGE", L"MIRROROF= \"Altra\""}))));
    ASSERT_TRUE(
        Accepted(Source.Put(Source.Leaf(L"INDEXPARMS"), L"TABLE= aut\r\nKEY= FULLTEXT\r\nFLAGS= DUMMY")));
    const RegObject Saved = SavedBy(Source);
    const std::wstring Text = Source.Exported();
    for (const bool Strict : {true, false}) {
        Tree->SetSyntaxOn(Strict);
        Into->Write(Desk::Named(L"ARRIVO"));
        ASSERT_TRUE(Accepted(Import(Text)));
        EXPECT_EQ(Left, L"");
        EXPECT_TRUE(Into->Saving());
        RegObject Got = Into->Read();
        EXPECT_EQ(Got.Name, L"ARRIVO");
        EXPECT_EQ(Got.Id, 7);
        // The elements bear ids of their own; all else is as it was.
        const auto Fresh = [](RegObject Of, std::wstring_view Name) {
            Of.Name = Name;
            for (RegObject& List : Of.Children) {
                std::int32_t Last = 0;
                for (RegObject& Each : List.Children) {
                    EXPECT_NE(Each.Id, Last);
                    Last = Each.Id;
                    Each.Id = 0;
                }
            }
            return Of;
        };
        EXPECT_EQ(Fresh(Got, L""), Fresh(Saved, L""));
    }
}

TEST_F(ImportText, WhatComesBehindStaysInTheText) {
    ASSERT_TRUE(Accepted(Import(Exported(Procedure()) + L"BEGIN IMPORTPROC\r\nx")));
    EXPECT_EQ(Left, L"BEGIN IMPORTPROC\r\nx");
}

TEST_F(ImportText, CaseTabsBlanksAndCommentsDoNotMatter) {
    ASSERT_TRUE(
        Accepted(Import(L"\r\n'nota\r\n \tbegin   importproc \r\n  Begin Parms\r\n\t\tTABLE=\tli\tbri\r\n"
                        L"'altra\r\n\r\nend   PARMS\r\n\tBEGIN FIELDPARMS\r\nNAME= a\tb\r\nTAG= 4\r\n"
                        L"END FIELDPARMS\r\nend IMPORTPROC\r\n")));
    const RegObject& Got = Into->Read();
    EXPECT_EQ(TextOf(Got, L"Table"), L"LIBRI");
    ASSERT_EQ(ListOf(Got, L"Fields").size(), 1U);
    EXPECT_EQ(ListOf(Got, L"Fields")[0].Name, L"AB");
    EXPECT_EQ(LongOf(ListOf(Got, L"Fields")[0], L"Tag"), 4);
}

TEST_F(ImportText, BlanksGoBeforeTabsSoThatABlankBehindATabStays) {
    for (const std::wstring_view Opener : {L"\t BEGIN IMPORTPROC", L"BEGIN IMPORTPROC \t"}) {
        SCOPED_TRACE(Narrow(Opener));
        EXPECT_TRUE(Refused(Import(Lines({Opener, L"BEGIN PARMS", L"END PARMS", L"END IMPORTPROC"})), 20000,
                            L"diImportProc.ImportData", L"Errore nei dati di import."));
    }
}

TEST_F(ImportText, WhatFollowsTheClosingLineStaysAlsoWhenTheContentIsRefused) {
    ASSERT_TRUE(Refused(Import(Lines({L"BEGIN IMPORTPROC", L"BEGIN PARMS", L"PIPPO= 1", L"END PARMS",
                                      L"END IMPORTPROC", L"BEGIN ALTRO", L"END ALTRO"})),
                        20000, L"ParmEditor.SaveImportProc", L"Parametro non riconosciuto: PIPPO=1"));
    EXPECT_EQ(Narrow(Left), Narrow(Lines({L"BEGIN ALTRO", L"END ALTRO"})));
}

TEST_F(ImportText, TheTextReplacesWhatTheObjectHolds) {
    RegObject Full = Procedure();
    Full.Name = L"ARRIVO";
    Into->Write(Full);
    ASSERT_TRUE(Accepted(Import(Lines({L"BEGIN IMPORTPROC", L"BEGIN FIELDPARMS", L"NAME= UNICO", L"TAG= 1",
                                       L"END FIELDPARMS", L"END IMPORTPROC"}))));
    EXPECT_EQ(ListOf(Into->Read(), L"Fields").size(), 1U);
    EXPECT_EQ(ListOf(Into->Read(), L"Scripts").size(), 0U);
}

TEST_F(ImportText, SectionsThatHoldNothingArePassedOver) {
    ASSERT_TRUE(Accepted(
        Import(Lines({L"BEGIN IMPORTPROC", L"BEGIN FIELDS", L"qualunque cosa", L"END FIELDS", L"BEGIN PIPPO",
                      L"END PIPPO", L"BEGIN SCRIPTPARMS", L"END SCRIPTPARMS", L"END IMPORTPROC"}))));
    EXPECT_EQ(ListOf(Into->Read(), L"Scripts").size(), 1U);
}

TEST_F(ImportText, FaultsOfForm) {
    const std::wstring_view kTexts[] = {
        L"",
        L"\r\n'solo un commento\r\n",
        L"BEGIN TABLE\r\nBEGIN PARMS\r\nEND PARMS\r\nEND TABLE\r\n",
        L"IMPORTPROC\r\nBEGIN PARMS\r\nEND PARMS\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROCX\r\nBEGIN PARMS\r\nEND PARMS\r\nEND IMPORTPROC\r\n",
        L"BEGINIMPORTPROC\r\nBEGIN PARMS\r\nEND PARMS\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC",
        L"BEGIN IMPORTPROC\r\nBEGIN PARMS\r\nEND PARMS\r\n",
        L"BEGIN IMPORTPROC\r\nBEGIN PARMS\r\nEND PARMS\r\nEND TABLE\r\n",
        L"BEGIN IMPORTPROC\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\n'nota\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\nTABLE= A\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\nEND PARMS\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\nBEGIN PARMS\r\nTABLE= A\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\nBEGIN PARMS\r\nEND FIELDPARMS\r\nEND IMPORTPROC\r\n",
        L"BEGIN IMPORTPROC\r\nBEGIN\r\nEND\r\nEND IMPORTPROC\r\n",
    };
    const RegObject Before = Into->Read();
    for (const std::wstring_view Text : kTexts) {
        EXPECT_TRUE(Refused(Import(std::wstring(Text)), 20000, L"diImportProc.ImportData",
                            L"Errore nei dati di import."))
            << Narrow(Text);
        EXPECT_EQ(Into->Read(), Before);
    }
    EXPECT_FALSE(Into->Written());
}

TEST_F(ImportText, AFaultOfASectionStopsIt) {
    const auto With = [](std::wstring_view Section) {
        return L"BEGIN IMPORTPROC\r\n" + std::wstring(Section) + L"END IMPORTPROC\r\n";
    };
    EXPECT_TRUE(Refused(Import(With(L"BEGIN PARMS\r\nTABLE= A\r\nPIPPO= 1\r\nEND PARMS\r\n")), 20000,
                        L"ParmEditor.SaveImportProc", L"Parametro non riconosciuto: PIPPO=1"));
    EXPECT_TRUE(Refused(Import(With(L"BEGIN PARMS\r\nTABLE= A\r\nTABLE= B\r\nEND PARMS\r\n")), 20000,
                        L"ParmEditor.SaveImportProc", L"Ripetizone del parametro TABLE=."));
    EXPECT_TRUE(Refused(Import(With(L"BEGIN FIELDPARMS\r\nFLAGS= FORSE\r\nEND FIELDPARMS\r\n")), 20000,
                        L"ParmEditor.SaveImportField", L"Valore sconosciuto per il parametro FLAGS=()"));
    EXPECT_TRUE(Refused(Import(With(L"BEGIN FIELDPARMS\r\nNAME= A\r\nTAG= 1\r\nEND FIELDPARMS\r\n"
                                    L"BEGIN FIELDPARMS\r\nNAME= B\r\nTAG= 1\r\nEND FIELDPARMS\r\n")),
                        20000, L"diImportProc.Save", L"Tag duplicato: 1\r\nA=B"));
    EXPECT_FALSE(Into->Written());
    Tree->SetSyntaxOn(false);
    EXPECT_TRUE(Accepted(Import(With(L"BEGIN FIELDPARMS\r\nFLAGS= FORSE\r\nEND FIELDPARMS\r\n"))));
}

}  // namespace
}  // namespace kv::test
