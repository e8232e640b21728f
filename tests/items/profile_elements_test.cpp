// Formats, loan tables and fields of a display profile, and the tool that maps a table.
#include <gtest/gtest.h>

#include "tests/items/Profile.h"

namespace kv::test {
namespace {

// Formats.

constexpr std::wstring_view kFormatSource = L"diProfile.SaveFormatParm";

class ProfileFormat : public Profile {
  protected:
    std::wstring Key = On.Leaf(L"FORMATPARMS");
    const std::wstring kFine = L"STYLE= BANNER\r\nDISPTYPE= FILE\r\n";

    RegObject Format() { return ListOf(SavedBy(On), L"Formats").at(0); }
    std::vector<std::pair<std::int32_t, std::wstring>> Cookies() {
        std::vector<std::pair<std::int32_t, std::wstring>> Found;
        const RegObject Saved = Format();
        for (const RegObject& Each : ListOf(Saved, L"Cookies"))
            Found.emplace_back(LongOf(Each, L"Tag"), TextOf(Each, L"Language"));
        return Found;
    }
    using Pairs = std::vector<std::pair<std::int32_t, std::wstring>>;
};

TEST_F(ProfileFormat, EveryKeywordIsStored) {
    ASSERT_TRUE(Accepted(On.Put(
        Key, Lines({L"NAME= \"breve\"", L"STYLE= COOKED|NOPRINT|DOUBLEFRAME", L"DEFSTYLE= vero",
                    L"DISPTYPE= printer | file", L"EXPORTSVR= \"Srv\"", L"EXPORTARG= \"Uno\"", L"EXPORTARG=",
                    L"EXPORTARG= \"Due\"", L"TAG= \"12\"", L"LANG= \"ita\"", L"TAG= 7", L"LANG= Eng"}))));
    const RegObject Saved = Format();
    EXPECT_EQ(Saved.Name, L"BREVE");
    EXPECT_EQ(LongOf(Saved, L"Style"), 0x0A02);
    EXPECT_TRUE(BoolOf(Saved, L"DefStyle"));
    EXPECT_EQ(LongOf(Saved, L"DispType"), 6);
    EXPECT_EQ(TextOf(Saved, L"Server"), L"3:Srv3:Uno3:Due");
    EXPECT_EQ(Cookies(), (Pairs{{12, L"ITA"}, {7, L"ENG"}}));
    EXPECT_EQ(ListOf(Saved, L"Captions").size(), 2U) << "labels stay";
    EXPECT_TRUE(MatchesGolden("section/PROFILE.FORMATPARMS.full.txt", On.Text(Key)));
    ExpectFixpoint(On, Key);
}

TEST_F(ProfileFormat, WhatATextLeavesOutReturnsToItsDefaultButForTheName) {
    ASSERT_TRUE(Accepted(On.Put(Key, kFine)));
    const RegObject Saved = Format();
    EXPECT_EQ(Saved.Name, L"SCHEDA");
    EXPECT_FALSE(BoolOf(Saved, L"DefStyle"));
    EXPECT_EQ(TextOf(Saved, L"Server"), L"");
    EXPECT_EQ(Cookies(), Pairs{});
}

TEST_F(ProfileFormat, Values) {
    const struct {
        const wchar_t* Line;
        const wchar_t* Shown;
        const wchar_t* LaxLine;
    } kRows[] = {
        {L"STYLE= cooked", L"STYLE=()", L"STYLE= BANNER"},
        {L"STYLE= COOKED|ALTRO|BATCH", L"STYLE=(BATCH)", L"STYLE= COOKED|BATCH"},
        {L"STYLE= NONE", L"STYLE=()", L"STYLE= BANNER"},
        {L"DISPTYPE= NONE", L"DISPTYPE=()", L"DISPTYPE= "},
        {L"DISPTYPE= schermo|printer", L"DISPTYPE=(PRINTER)", L"DISPTYPE= PRINTER"},
        {L"DEFSTYLE= forse", L"DEFSTYLE=(FORSE)", L"DEFSTYLE= TRUE"},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Line));
        const std::wstring Before = On.Text(Key);
        EXPECT_TRUE(Refused(On.Put(Key, Row.Line), 20000, kFormatSource,
                            L"Valore sconosciuto per il parametro " + std::wstring(Row.Shown), 1));
        EXPECT_EQ(On.Text(Key), Before);
        ASSERT_TRUE(Accepted(On.Put(Key, Row.Line, false)));
        const std::wstring Keyword = std::wstring(Row.Line).substr(0, std::wstring(Row.Line).find(L'=') + 1);
        EXPECT_EQ(Narrow(LineOf(Key, Keyword)), Narrow(Row.LaxLine));
    }
    ASSERT_TRUE(Accepted(On.Put(Key, L"STYLE= COOKED|BANNER\r\nDISPTYPE= DISPLAY")));
    EXPECT_EQ(LongOf(Format(), L"Style"), 1) << "the later word wins";
    ASSERT_TRUE(Accepted(On.Put(Key, L"STYLE= BATCH|COOKED|SPLITTED|BANNER\r\nDISPTYPE= DISPLAY")));
    EXPECT_EQ(LongOf(Format(), L"Style"), 0x0501) << "the high byte stays";
}

TEST_F(ProfileFormat, ChecksAtTheEndInTheirOrder) {
    const struct {
        const wchar_t* Text;
        const wchar_t* Message;
    } kRows[] = {
        {L"", L"Non è stato specificato STYLE."},
        {L"STYLE= BATCH", L"Non è stato specificato STYLE."},
        {L"STYLE= COOKED", L"Non è stato specificato il campo per il formato cooked."},
        {L"STYLE= COOKED\r\nDISPTYPE= FILE", L"Non è stato specificato il campo per il formato cooked."},
        {L"STYLE= COOKED\r\nTAG= 1\r\nLANG= ITA", L"Non è stato specificato il tipo di display."},
        {L"STYLE= BANNER", L"Non è stato specificato il tipo di display."},
    };
    for (const auto& Row : kRows) {
        EXPECT_TRUE(Refused(On.Put(Key, Row.Text), 20000, kFormatSource, Row.Message, 0)) << Narrow(Row.Text);
        EXPECT_TRUE(Accepted(On.Put(Key, Row.Text, false)));
    }
}

TEST_F(ProfileFormat, PairsOfTagAndLanguage) {
    ExpectRefusals(On, Key, kFormatSource,
                   {
                       {L"TAG= 12\r\nTAG= 13", L"Due TAG= consecutivi.", 2},
                       {L"LANG= ITA", L"Il parametro LANG= non è preceduto dal messaggio relativo.", 1},
                       {L"TAG= 12\r\nLANG= ITA\r\nLANG= ENG",
                        L"Il parametro LANG= non è preceduto dal messaggio relativo.", 3},
                       {L"TAG= 12\r\nNAME= A\r\nLANG= ITA",
                        L"Il parametro LANG= non è preceduto dal messaggio relativo.", 3},
                       {L"TAG= 12\r\nLANG=", L"Omesso il codice di LANG.", 2, false},
                       {L"STYLE= BANNER\r\nDISPTYPE= FILE\r\nTAG= -5\r\nLANG= ITA\r\nTAG= 7\r\nLANG= ENG",
                        L"Non è possibile usare valori positivi e negativi per TAG.", 6, false},
                       {L"TAG= 5\r\nLANG= ITA\r\nTAG= 0\r\nLANG= ENG",
                        L"Non è possibile usare valori positivi e negativi per TAG.", 4, false},
                   });
    ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"TAG= -5\r\nLANG= ita\r\nTAG= 7\r\nLANG= eng", false)));
    EXPECT_EQ(Cookies(), (Pairs{{-5, L"ITA"}, {7, L"ENG"}}));
    ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"TAG= 12\r\nLANG=", false)));
    EXPECT_EQ(Cookies(), (Pairs{{12, L""}}));
    for (const bool Strict : {true, false}) {
        // An empty pair is none; a language without a tag is one of tag 0, shown as a comment.
        ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"TAG=\r\nLANG= \"\"\r\nTAG= -3\r\nLANG= ita", Strict)));
        EXPECT_EQ(Cookies(), (Pairs{{-3, L"ITA"}}));
        ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"TAG=\r\nLANG= ita", Strict)));
        EXPECT_EQ(Cookies(), (Pairs{{0, L"ITA"}}));
        EXPECT_NE(On.Text(Key).find(L"\r\n*TAG= \r\n*LANG= \"ITA\"\r\n*TAG= \r\n*LANG= \"\"\r\n"),
                  std::wstring::npos);
    }
}

TEST_F(ProfileFormat, WhatStandsBetweenTheLinesOfAPair) {
    // Comments, blank lines and arguments are not noted; a last tag without a language is none.
    ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"EXPORTSVR= s\r\nTAG= 4\r\n'nota\r\n\r\nEXPORTARG= a\r\n"
                                             L"LANG= ita\r\nTAG= 5")));
    EXPECT_EQ(Cookies(), (Pairs{{4, L"ITA"}}));
    EXPECT_EQ(TextOf(Format(), L"Server"), L"1:s1:a");
    EXPECT_TRUE(Refused(On.Put(Key, kFine + L"TAG= 9\r\nLANG= ENG\r\nPIPPO= 1"), 20000, kFormatSource,
                        L"Parametro non riconosciuto: PIPPO=1", 5));
    EXPECT_EQ(Cookies(), (Pairs{{4, L"ITA"}})) << "a refused text leaves them";
}

TEST_F(ProfileFormat, ExportServers) {
    ExpectRefusals(
        On, Key, kFormatSource,
        {{L"EXPORTARG= a\r\nEXPORTSVR= s", L"Non è stato specificato il nome del server.", 1, false},
         {L"EXPORTSVR= s\r\nEXPORTSVR= s", L"Ripetizone del parametro EXPORTSVR=.", 2}});
    ASSERT_TRUE(Accepted(On.Put(Key, kFine + L"EXPORTARG=\r\nEXPORTSVR= s")));
    EXPECT_EQ(TextOf(Format(), L"Server"), L"1:s");
    ASSERT_TRUE(Accepted(On.Put(Key, L"EXPORTARG= a\r\nEXPORTSVR= s", false)));
    EXPECT_EQ(TextOf(Format(), L"Server"), L"1:s1:a") << "in lax mode the server may follow";
    EXPECT_TRUE(Refused(On.Put(Key, L"EXPORTARG= a", false), 20000, L"vDesignPar.ServerParmsSave",
                        L"Non è stato specificato il server."));
}

TEST_F(ProfileFormat, Repeats) {
    ExpectRefusals(On, Key, kFormatSource,
                   {{L"NAME= A\r\nNAME= A", L"Ripetizone del parametro NAME=.", 2},
                    {L"STYLE= BATCH\r\nSTYLE= BATCH", L"Ripetizone del parametro STYLE=.", 2},
                    {L"DEFSTYLE=\r\nDEFSTYLE=", L"Ripetizone del parametro DEFSTYLE=.", 2},
                    {L"DISPTYPE= FILE\r\nDISPTYPE= FILE", L"Ripetizone del parametro DISPTYPE=.", 2},
                    {L"PIPPO= 1", L"Parametro non riconosciuto: PIPPO=1", 1}});
}

// Loan tables.

class ProfileLoanTable : public Profile {
  protected:
    std::wstring Key = On.Leaf(L"LOANTABLEPARMS", 2);
};

TEST_F(ProfileLoanTable, NatureAndLevel) {
    ASSERT_TRUE(Accepted(On.Put(Key, L"NATURE= \"s\"\r\nLEVEL= b1")));
    const RegObject& Saved = ListOf(SavedBy(On), L"LoanTables").at(1);
    EXPECT_EQ(TextOf(Saved, L"Nature"), L"S");
    EXPECT_EQ(TextOf(Saved, L"Level"), L"B1");
    EXPECT_EQ(
        Narrow(On.Text(Key)),
        Narrow(Lines({L"NATURE= \"S\"", L"LEVEL= \"B1\"", L"'[ID= 84]", L"'[NAME= ]", L"'[VERSION= 0]"})));
    ExpectFixpoint(On, Key);
    ExpectRefusals(On, Key, L"diProfile.SaveLoanTableParm",
                   {{L"", L"Non è stata specificata la natura.", 0, false},
                    {L"LEVEL= 1", L"Non è stata specificata la natura.", 0, false},
                    {L"NATURE= 1", L"Non è stato specificato il livello.", 0, false},
                    {L"NATURE=\r\nNATURE=", L"Ripetizone del parametro NATURE=.", 2},
                    {L"LEVEL=\r\nLEVEL=", L"Ripetizone del parametro LEVEL=.", 2},
                    {L"NAME= A", L"Parametro non riconosciuto: NAME=A", 1}});
    ASSERT_TRUE(Accepted(On.Put(Key, L"LEVEL= 1", false)));
    EXPECT_EQ(CaptionsBelow(On, L"LOANTABLES").at(1), L" - 1") << "what is left out goes";
}

// Fields.

class ProfileField : public Profile {
  protected:
    std::wstring Key = On.Leaf(L"FIELDPARMS");

    RegObject Field() { return ListOf(SavedBy(On), L"Fields").at(0); }
};

TEST_F(ProfileField, EveryKeywordIsStored) {
    ASSERT_TRUE(
        Accepted(On.Put(Key, L"TAG= 20.5\r\nBROWSE= \"Lista\"\r\nPROFILE= scheda\r\nFLAGS= hidden", false)));
    ASSERT_TRUE(Accepted(On.Put(
        Key, L"TAG= 20.4\r\nBROWSE= \"Lista\"\r\nPROFILE= scheda\r\nFLAGS= split|noBreak|PEER|literal")));
    const RegObject Saved = Field();
    EXPECT_EQ(LongOf(Saved, L"Tag"), 20);
    EXPECT_EQ(TextOf(Saved, L"Browse"), L"LISTA");
    EXPECT_EQ(TextOf(Saved, L"Profile"), L"SCHEDA");
    EXPECT_EQ(LongOf(Saved, L"Flags"), 0xC9);
    EXPECT_EQ(Saved.Name, L"TITOLO");
    EXPECT_EQ(ListOf(Saved, L"Captions").size(), 2U);
    EXPECT_EQ(LineOf(Key, L"FLAGS="), L"FLAGS=PEER|LITERAL|NOBREAK|SPLIT") << "without a blank";
    ExpectFixpoint(On, Key);
    ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 3")));
    EXPECT_EQ(TextOf(Field(), L"Browse"), L"");
    EXPECT_EQ(LineOf(Key, L"FLAGS="), L"FLAGS= NONE");
}

TEST_F(ProfileField, Flags) {
    const std::pair<const wchar_t*, std::int32_t> kWords[] = {
        {L"PEER", 0x01},   {L"FORCENAVY", 0x02}, {L"NOREPAINT", 0x04}, {L"LITERAL", 0x08},
        {L"NOHREF", 0x10}, {L"ENDBANNER", 0x20}, {L"NOBREAK", 0x40},   {L"SPLIT", 0x80}};
    std::wstring All;
    for (const auto& [Word, Bit] : kWords) {
        ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 1\r\nFLAGS= " + std::wstring(Word))));
        EXPECT_EQ(LongOf(Field(), L"Flags"), Bit);
        All.append(Word).append(L"|");
    }
    ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 1\r\nFLAGS= " + All)));
    EXPECT_EQ(LineOf(Key, L"FLAGS="),
              L"FLAGS=PEER|FORCENAVY|LITERAL|NOREPAINT|NOHREF|ENDBANNER|NOBREAK|SPLIT");
}

TEST_F(ProfileField, Refusals) {
    const std::wstring Bad = L"Valore sconosciuto per il parametro ";
    ExpectRefusals(
        On, Key, L"diProfile.SaveFieldParm",
        {{L"TAG= 0", L"Valore sconosciuto per il parametro TAG=(0)", 1, false},
         {L"TAG= -3", L"Valore sconosciuto per il parametro TAG=(-3)", 1, false},
         {L"TAG= \"4\"", L"Valore sconosciuto per il parametro TAG=(\"4\")", 1, false},
         {L"BROWSE= A", L"Non è stato specificato il TAG.", 0, false},
         {L"TAG= 0.3", L"Non è stato specificato il TAG.", 0, false},
         {L"TAG= 1\r\nFLAGS= NONE|PEER", L"Valore sconosciuto per il parametro FLAGS=(PEER)", 2, false},
         {L"TAG= 1\r\nTAG= 1", L"Ripetizone del parametro TAG=.", 2},
         {L"BROWSE=\r\nBROWSE=", L"Ripetizone del parametro BROWSE=.", 2},
         {L"PROFILE=\r\nPROFILE=", L"Ripetizone del parametro PROFILE=.", 2},
         {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
         {L"NAME= A", L"Parametro non riconosciuto: NAME=A", 1}});
    ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 0\r\nFLAGS= NONE|PEER", false)));
    EXPECT_EQ(LongOf(Field(), L"Tag"), 0);
    EXPECT_EQ(LongOf(Field(), L"Flags"), 1);
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS").at(0), L"Campo: 00000");
}

TEST_F(ProfileField, EqualTagsPassHere) {
    ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 30")));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diProfile.Save",
                        L"Tag duplicato: 30\r\n#1 e #2"));
}

// The mapping tool.

class ProfileMapping : public Profile {
  protected:
    // Copies a table as a window does; the clipboard file then lies where this desk looks for it.
    void Copy(std::vector<RegObject> Fields) {
        std::string Bytes;
        {
            Desk Source(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", std::move(Fields)));
            std::wstring Word;
            EXPECT_TRUE(Accepted(
                Source.Try([&] { return Source.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
            Bytes = ReadFile(Source.Platform.Folder / "KVDSCLP.TMP");
            EXPECT_FALSE(Bytes.empty());
        }
        WriteFile(On.Platform.Folder / "KVDSCLP.TMP", Bytes);
    }
    void CopyTable() {
        Copy({Element(171, L"SERIE", {{L"Tag", 225}, {L"Level", 1}}),
              Element(172, L"NOTA", {{L"Tag", 12}, {L"Level", 2}})});
    }
    void Click() { On.Core.TlbrButtonClick(L"MAPTABLE", {.CurrItem = L"ROOT"}); }
    std::vector<std::int32_t> Tags() {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(LongOf(Each, L"Tag"));
        return Found;
    }
    using Numbers = std::vector<std::int32_t>;

    const std::wstring kRemove = L"Si vogliono rimuovere i campi già presenti  nell'oggetto?";
    const std::wstring kConfirm =
        L"Confermi la generazione automatica dei campi dalla TABLE della Clipboard?";
    const std::wstring kDone =
        L"Operazione completata: salvare l'oggetto e riaprirlo per visualizzare le modifiche.";
};

TEST_F(ProfileMapping, YesReplacesTheFields) {
    CopyTable();
    On.Platform.Answers = {Answer::Yes};
    const std::wstring Before = On.Picture();
    Click();
    EXPECT_EQ(On.Platform.Asked, (Words{kRemove, kDone}));
    EXPECT_EQ(On.Platform.Styles.at(0), 66083);
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Tags(), (Numbers{225, 12}));
    const RegObject& Field = ListOf(On.Object->Read(), L"Fields").at(0);
    EXPECT_EQ(Field.Id, 171);
    EXPECT_EQ(Field.Name, L"SERIE");
    EXPECT_EQ(Field.Version, 1);
    ASSERT_EQ(ListOf(Field, L"Captions").size(), 1U);
    const RegObject& Label = ListOf(Field, L"Captions").at(0);
    EXPECT_EQ(TextOf(Label, L"Text"), L"SERIE: ");
    EXPECT_EQ(TextOf(Label, L"Language"), L"ITA");
    EXPECT_EQ(Label.Version, 1);
    EXPECT_NE(Label.Id, 0);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (Words{L"Campo: 00225", L"Campo: 00012"}));
}

TEST_F(ProfileMapping, NoKeepsTheFieldsAndMayMakeEqualTags) {
    CopyTable();
    On.Platform.Answers = {Answer::No};
    Click();
    EXPECT_EQ(On.Platform.Asked, (Words{kRemove, kDone}));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diProfile.Save",
                        L"Tag duplicato: 12\r\n#1 e #4"));
}

TEST_F(ProfileMapping, CancelEndsIt) {
    CopyTable();
    Click();
    EXPECT_EQ(On.Platform.Asked, Words{kRemove});
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Tags(), (Numbers{12, 30}));
}

TEST_F(ProfileMapping, WithoutFieldsItAsksToGoOn) {
    CopyTable();
    ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
    Click();
    EXPECT_EQ(On.Platform.Asked, Words{kConfirm});
    EXPECT_EQ(On.Platform.Styles.at(0), 65828);
    EXPECT_EQ(Tags(), Numbers{});
    On.Platform.Answers = {Answer::Yes};
    Click();
    EXPECT_EQ(Tags(), (Numbers{225, 12}));
}

TEST_F(ProfileMapping, NothingToMap) {
    Click();
    EXPECT_TRUE(On.Platform.Asked.empty()) << "an empty clipboard asks nothing";
    EXPECT_TRUE(On.Platform.Shown.empty());
    Copy({});
    Click();
    EXPECT_TRUE(On.Platform.Asked.empty());
    ASSERT_EQ(On.Platform.Shown.size(), 1U);
    EXPECT_EQ(On.Platform.Shown[0].Description, L"L'oggetto nella clipboard non ha campi o non è una TABLE.");
    EXPECT_EQ(On.Platform.Shown[0].Source, L"diProfile.MapTable");
    EXPECT_FALSE(On.Tree->Modified());
}

}  // namespace
}  // namespace kv::test
