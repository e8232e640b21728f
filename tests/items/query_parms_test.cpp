// The parameters of a query, of its fields and of their predefined values: every keyword, strict and lax, and
// how they are shown.
#include <gtest/gtest.h>

#include "tests/items/Query.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kBadValue = L"Valore sconosciuto per il parametro ";

// A line that strict mode refuses, what of it the message shows, and the line that stands after lax mode took
// it.
struct StrictRefusal {
    const wchar_t* Line;
    const wchar_t* Shown;
    const wchar_t* LaxLine;
};

class QuerySection : public Query {
  protected:
    void ExpectStrictRefusals(const std::wstring& Key, std::wstring_view Source,
                              std::initializer_list<StrictRefusal> Rows) {
        for (const StrictRefusal& Row : Rows) {
            SCOPED_TRACE(Narrow(Row.Line));
            const std::wstring Before = On.Text(Key);
            EXPECT_TRUE(Refused(On.Put(Key, Row.Line), 20000, Source,
                                std::wstring(kBadValue) + std::wstring(Row.Shown), 1));
            EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
            ASSERT_TRUE(Accepted(On.Put(Key, Row.Line, false)));
            const std::wstring Line = Row.Line;
            EXPECT_EQ(Narrow(LineOf(Key, Line.substr(0, Line.find(L'=') + 1))), Narrow(Row.LaxLine));
        }
    }
    void ExpectRepeatsRefused(const std::wstring& Key, std::wstring_view Source,
                              std::initializer_list<std::wstring> Keywords) {
        for (const std::wstring& Keyword : Keywords)
            for (const bool Strict : {true, false})
                EXPECT_TRUE(Refused(On.Put(Key, Keyword + L"\r\n" + Keyword, Strict), 20000, Source,
                                    L"Ripetizone del parametro " + Keyword + L".", 2));
    }
};

// The query.

constexpr std::wstring_view kParmSource = L"diQuery.SaveParm";

class QueryParms : public QuerySection {
  protected:
    std::wstring Key = On.Leaf(L"PARMS");

    std::wstring Line(std::wstring_view Keyword) { return LineOf(Key, Keyword); }
};

TEST_F(QueryParms, DefaultsOfANewQuery) {
    Desk Empty(L"QUERY");
    EXPECT_TRUE(MatchesGolden("section/QUERY.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
}

TEST_F(QueryParms, EveryKeywordIsStoredAndShown) {
    ASSERT_TRUE(Accepted(On.Put(Key, Lines({
                                         L"BROWSE= \"autori\"",
                                         L"DEFAULTSET= 1",
                                         L"HELP= \"aiuto\"",
                                         L"HELPWWW= \"pagina\"",
                                         L"LARGEBUTT= vero",
                                         L"MIRROROF= \"Altra query\"",
                                         L"ROWS= 20",
                                         L"SETSELECT= falso",
                                         L"SHOWRES= true",
                                         L"STYLE= \"html\"",
                                         L"TIMEOUT= 45",
                                         L"TIPS= \"novità\"",
                                         L"TIPSALIGN= left",
                                         L"TIPSWIDTH= 40",
                                         L"TOOLALIGN= Bottom",
                                         L"FLAGS= none",
                                     }))));
    EXPECT_TRUE(MatchesGolden("section/QUERY.full.txt", On.Text(Key)));
    const RegObject& Now = SavedBy(On);
    const std::pair<const wchar_t*, const wchar_t*> kTexts[] = {{L"Browse", L"AUTORI"},
                                                                {L"Help", L"AIUTO"},
                                                                {L"HelpWww", L"PAGINA"},
                                                                {L"MirrorOf", L"Altra query"},
                                                                {L"Tips", L"NOVITÀ"}};
    for (const auto& [Name, Text] : kTexts) EXPECT_EQ(TextOf(Now, Name), Text) << Narrow(Name);
    const std::pair<const wchar_t*, std::int32_t> kNumbers[] = {
        {L"DefaultSet", 1}, {L"Rows", 20},      {L"Style", 0},     {L"Timeout", 45},
        {L"TipsAlign", 3},  {L"TipsWidth", 40}, {L"ToolAlign", 2}, {L"Flags", 0}};
    for (const auto& [Name, Number] : kNumbers) EXPECT_EQ(LongOf(Now, Name), Number) << Narrow(Name);
    EXPECT_TRUE(BoolOf(Now, L"LargeButt"));
    EXPECT_FALSE(BoolOf(Now, L"SetSelect"));
    EXPECT_TRUE(BoolOf(Now, L"ShowRes"));
    EXPECT_EQ(ListOf(Now, L"Fields").size(), 2U) << "the lists stay";
    ExpectFixpoint(On, Key);
}

TEST_F(QueryParms, WhatATextLeavesOutKeepsItsValue) {
    const std::wstring Before = On.Text(Key);
    for (const bool Strict : {true, false})
        for (const wchar_t* const Text : {L"", L"'BROWSE= X\r\n\r\n;\r\n*ROWS= 99", L"ROWS= 5"}) {
            ASSERT_TRUE(Accepted(On.Put(Key, Text, Strict)));
            EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
        }
    ASSERT_TRUE(Accepted(On.Put(Key, L"ROWS= 7")));
    EXPECT_EQ(Line(L"ROWS="), L"ROWS= 7");
    EXPECT_EQ(Line(L"BROWSE="), L"BROWSE= \"TITOLI\"");
    EXPECT_EQ(Line(L"SETSELECT="), L"SETSELECT= TRUE");
}

TEST_F(QueryParms, ValuesThatStrictModeRefuses) {
    ASSERT_TRUE(
        Accepted(On.Put(Key, L"BROWSE= A\r\nLARGEBUTT= FALSE\r\nSETSELECT= FALSE\r\nSHOWRES= FALSE")));
    ExpectStrictRefusals(Key, kParmSource,
                         {
                             {L"LARGEBUTT= forse", L"LARGEBUTT=(FORSE)", L"LARGEBUTT= TRUE"},
                             {L"SETSELECT= si", L"SETSELECT=(SI)", L"SETSELECT= TRUE"},
                             {L"SHOWRES= 1", L"SHOWRES=(1)", L"SHOWRES= TRUE"},
                             {L"STYLE= testo", L"STYLE=(TESTO)", L"STYLE= HTML"},
                             {L"STYLE=", L"STYLE=()", L"STYLE= HTML"},
                             {L"TIPSWIDTH= 101", L"TIPSWIDTH=(101)", L"TIPSWIDTH= 30"},
                             {L"TIPSWIDTH= -1", L"TIPSWIDTH=(-1)", L"TIPSWIDTH= 30"},
                             {L"TIPSWIDTH= 100.2", L"TIPSWIDTH=(100.2)", L"TIPSWIDTH= 30"},
                             {L"TIPSWIDTH= 99999999999", L"TIPSWIDTH=(99999999999)", L"TIPSWIDTH= 30"},
                             {L"TIMEOUT= -1", L"TIMEOUT=(-1)", L"TIMEOUT= -1"},
                             {L"TIMEOUT= -0.2", L"TIMEOUT=(-0.2)", L"TIMEOUT= 0"},
                             {L"FLAGS= capture", L"FLAGS=()", L"FLAGS= NONE"},
                             {L"FLAGS= HIDDEN|CAPTURE", L"FLAGS=(CAPTURE)", L"FLAGS= NONE"},
                             {L"FLAGS= NONE|NONE", L"FLAGS=(NONE)", L"FLAGS= NONE"},
                         });
}

TEST_F(QueryParms, ValuesThatEitherModeRefuses) {
    ExpectRefusals(On, Key, kParmSource,
                   {
                       {L"DEFAULTSET= 2", L"Valore sconosciuto per il parametro DEFAULTSET=(2)", 1},
                       {L"DEFAULTSET= -1", L"Valore sconosciuto per il parametro DEFAULTSET=(-1)", 1},
                       {L"DEFAULTSET= 1.2", L"Valore sconosciuto per il parametro DEFAULTSET=(1.2)", 1},
                       {L"DEFAULTSET= -0.1", L"Valore sconosciuto per il parametro DEFAULTSET=(-0.1)", 1},
                       {L"ROWS= 21", L"Valore sconosciuto per il parametro ROWS=(21)", 1},
                       {L"ROWS= 20.6", L"Valore sconosciuto per il parametro ROWS=(20.6)", 1},
                       {L"ROWS= -1", L"Valore sconosciuto per il parametro ROWS=(-1)", 1},
                       {L"ROWS= -0.6", L"Valore sconosciuto per il parametro ROWS=(-0.6)", 1},
                       {L"NOME= A", L"Parametro non riconosciuto: NOME=A", 1},
                       {L"browse= A", L"Parametro non riconosciuto: browse=A", 1},
                       {L"TIPSBUTTONS= BACK", L"Parametro non riconosciuto: TIPSBUTTONS=BACK", 1},
                       {L"ROWS= 3\r\n=5", L"Parametro non riconosciuto: =5", 2},
                   });
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Refused(On.Put(Key, L"TIPSALIGN= CENTRO", Strict), 20000, L"vdbcModule.TipsSetAlignment",
                            L"Valore sconosciuto per il parametro TIPSALIGN=(CENTRO)", 1));
        EXPECT_TRUE(Refused(On.Put(Key, L"ROWS= 1\r\nTOOLALIGN= alto", Strict), 20000,
                            L"vdbcModule.TipsSetAlignment",
                            L"Valore sconosciuto per il parametro TOOLALIGN=(ALTO)", 2));
        EXPECT_TRUE(Refused(On.Put(Key, L"BROWSE", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: BROWSE.", 1));
        EXPECT_TRUE(Refused(On.Put(Key, L"ROWS= 99999999999", Strict), 20000, kParmSource,
                            L"Valore sconosciuto per il parametro ROWS=(99999999999)", 1));
        EXPECT_TRUE(Refused(On.Put(Key, L"TIMEOUT= 99999999999", Strict), 6, kParmSource, L"Overflow", 1));
    }
    EXPECT_EQ(Line(L"ROWS="), L"ROWS= 5") << "nothing of a refused text is kept";
}

TEST_F(QueryParms, NumbersAreRounded) {
    const struct {
        const wchar_t* Typed;
        const wchar_t* Shown;
    } kRows[] = {
        {L"DEFAULTSET= 0.4", L"DEFAULTSET= 0"},
        {L"DEFAULTSET= 0.6", L"DEFAULTSET= 1"},
        {L"DEFAULTSET= 0.5", L"DEFAULTSET= 0"},
        {L"DEFAULTSET=", L"DEFAULTSET= 0"},
        {L"ROWS= 20", L"ROWS= 20"},
        {L"ROWS= 20.4", L"ROWS= 20"},
        {L"ROWS= -0.4", L"ROWS= 0"},
        {L"ROWS= \"7\"", L"ROWS= 0"},
        {L"TIPSWIDTH= 89.5", L"TIPSWIDTH= 90"},
        {L"TIMEOUT= 2.5", L"TIMEOUT= 2"},
        {L"TIMEOUT= x", L"TIMEOUT= 0"},
    };
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false}) {
            SCOPED_TRACE(Narrow(Row.Typed));
            ASSERT_TRUE(Accepted(On.Put(Key, Row.Typed, Strict)));
            const std::wstring Shown = Row.Shown;
            EXPECT_EQ(Line(Shown.substr(0, Shown.find(L'=') + 1)), Shown);
        }
}

TEST_F(QueryParms, Repeats) {
    ExpectRepeatsRefused(Key, kParmSource,
                         {L"BROWSE=", L"DEFAULTSET=", L"HELP=", L"HELPWWW=", L"LARGEBUTT=", L"MIRROROF=",
                          L"ROWS=", L"SETSELECT=", L"SHOWRES=", L"TIMEOUT=", L"TIPS=", L"TIPSALIGN=",
                          L"TIPSWIDTH=", L"TOOLALIGN=", L"FLAGS="});
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Key, L"STYLE= HTML\r\nSTYLE= HTML", Strict), 20000, kParmSource,
                            L"Ripetizone del parametro STYLE=.", 2));
}

TEST_F(QueryParms, ChecksAtTheEnd) {
    const std::wstring NoBrowse = L"Non è stata specificata la tabella di destinazione.";
    ExpectRefusals(On, Key, kParmSource,
                   {
                       {L"BROWSE=", NoBrowse, 0, false},
                   });
    ASSERT_TRUE(Accepted(On.Put(Key, L"BROWSE= A")));
    // The whole text is read first.
    EXPECT_TRUE(Refused(On.Put(Key, L"BROWSE=\r\nNOME= A"), 20000, kParmSource,
                        L"Parametro non riconosciuto: NOME=A", 2));
    EXPECT_TRUE(Refused(On.Put(Key, L"BROWSE=\r\nTIPSALIGN= NONE"), 20000, kParmSource, NoBrowse, 0));
    const std::wstring Align = L"Selezionare una modalità di allineamento per TIPS=.";
    const std::wstring Width = L"Ampiezza relativa per TIPS= non corretta (10%-90%).";
    const struct {
        const wchar_t* Text;
        const std::wstring& Message;
    } kRows[] = {
        {L"TIPSALIGN= NONE\r\nTIPSWIDTH= 5", Align},
        {L"TIPSALIGN=", Align},
        {L"TIPSALIGN= TOP\r\nTIPSWIDTH= 9", Width},
        {L"TIPSWIDTH= 91", Width},
    };
    for (const auto& Row : kRows) {
        EXPECT_TRUE(Refused(On.Put(Key, Row.Text), 20000, L"vdbcModule.TipsAlignCheck", Row.Message));
        const std::wstring Before = On.Text(Key);
        EXPECT_TRUE(Accepted(On.Put(Key, Row.Text, false))) << Narrow(Row.Text);
        EXPECT_TRUE(Accepted(On.Put(Key, L"TIPS=\r\n" + std::wstring(Row.Text)))) << "without tips";
        ASSERT_TRUE(Accepted(On.Put(Key, Before)));
    }
    for (const wchar_t* const Bound : {L"10", L"90"})
        EXPECT_TRUE(Accepted(On.Put(Key, L"TIPSWIDTH= " + std::wstring(Bound))));
    // What is shown is what is there: rendering raises nothing.
    ASSERT_TRUE(Accepted(On.Put(Key, L"TIPS=\r\nTIPSWIDTH= 5")));
    EXPECT_EQ(Line(L"TIPSWIDTH="), L"TIPSWIDTH= 5");
    EXPECT_EQ(LongOf(SavedBy(On), L"TipsWidth"), 5);
}

TEST_F(QueryParms, AStyleOrFlagThatHasNoWord) {
    Desk Odd(L"QUERY", With(FullQuery(), {{L"Style", 3}, {L"Flags", 2}, {L"TipsAlign", 9}}));
    const std::wstring Leaf = Odd.Leaf(L"PARMS");
    const std::wstring Shown = Odd.Text(Leaf);
    EXPECT_EQ(Shown.find(L"STYLE="), std::wstring::npos);
    EXPECT_NE(Shown.find(L"\r\nSETSELECT= TRUE\r\nROWS= 5\r\n"), std::wstring::npos);
    EXPECT_NE(Shown.find(L"\r\nFLAGS=\r\nMIRROROF= \"\"\r\n"), std::wstring::npos);
    EXPECT_NE(Shown.find(L"\r\nTIPSALIGN= NONE\r\n"), std::wstring::npos);
    ASSERT_TRUE(Accepted(Odd.Put(Leaf, L"STYLE= testo\r\nFLAGS= CAPTURE|HIDDEN|ALTRO", false)));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Style"), 3) << "lax mode leaves both as they were";
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), 2);
    ASSERT_TRUE(Accepted(Odd.Put(Leaf, L"STYLE= HTML\r\nFLAGS=")));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Style"), 0);
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), 0);
    EXPECT_NE(Odd.Text(Leaf).find(L"\r\nFLAGS= NONE\r\n"), std::wstring::npos);
}

// A field.

constexpr std::wstring_view kFieldSource = L"diQuery.SaveFieldParm";

class QueryField : public QuerySection {
  protected:
    std::wstring Key = On.Leaf(L"FIELDPARMS");

    std::wstring Line(std::wstring_view Keyword) { return LineOf(Key, Keyword); }
};

TEST_F(QueryField, EveryKeywordIsStoredAndShown) {
    ASSERT_TRUE(Accepted(On.Put(Key, Lines({
                                         L"NAME= \"paese\"",
                                         L"STOPWORD= \"vuote\"",
                                         L"TABLES= \"libri;periodici\"",
                                         L"WORDS= falso",
                                         L"SELECTED= -3",
                                         L"SEMANTIC= 12.5",
                                         L"FLAGS= capture | hidden",
                                     }))));
    EXPECT_TRUE(MatchesGolden("section/QUERY.FIELDPARMS.full.txt", On.Text(Key)));
    const RegObject Saved = StoredField(1);
    EXPECT_EQ(Saved.Name, L"PAESE");
    EXPECT_EQ(TextOf(Saved, L"StopWord"), L"VUOTE");
    EXPECT_EQ(TextOf(Saved, L"Tables"), L"LIBRI;PERIODICI");
    EXPECT_FALSE(BoolOf(Saved, L"Words"));
    EXPECT_EQ(LongOf(Saved, L"Selected"), -3);
    EXPECT_EQ(LongOf(Saved, L"Semantic"), 12);
    EXPECT_EQ(LongOf(Saved, L"Flags"), 3);
    EXPECT_EQ(ListOf(Saved, L"Captions").size(), 2U) << "captions and values stay";
    EXPECT_EQ(StoredValues(1).size(), 2U);
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"Campo: Lingua dell'originale");
    ExpectFixpoint(On, Key);
    ExpectFixpoint(On, On.Leaf(L"FIELDPARMS", 2));
}

TEST_F(QueryField, WhatATextLeavesOutKeepsItsValue) {
    const std::wstring Before = On.Text(Key);
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(On.Put(Key, L"'nulla", Strict)));
        EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
    }
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME=")));
    EXPECT_EQ(Line(L"NAME="), L"NAME= \"\"");
    EXPECT_EQ(Line(L"TABLES="), L"TABLES= \"LIBRI\"");
}

TEST_F(QueryField, FlagsAreAddedAndOnlyNoneClears) {
    const struct {
        const wchar_t* Typed;
        std::int32_t Flags;
        const wchar_t* Shown;
    } kRows[] = {
        {L"FLAGS= HIDDEN", 3, L"FLAGS= CAPTURE|HIDDEN"},
        {L"FLAGS= CAPTURE", 3, L"FLAGS= CAPTURE|HIDDEN"},
        {L"FLAGS= none", 0, L"FLAGS= NONE"},
        {L"FLAGS= hidden", 2, L"FLAGS= HIDDEN"},
        {L"FLAGS=", 0, L"FLAGS= NONE"},
        {L"FLAGS= CAPTURE", 1, L"FLAGS= CAPTURE"},
    };
    for (const auto& Row : kRows) {
        ASSERT_TRUE(Accepted(On.Put(Key, Row.Typed)));
        EXPECT_EQ(LongOf(StoredField(1), L"Flags"), Row.Flags) << Narrow(Row.Typed);
        EXPECT_EQ(Line(L"FLAGS="), Row.Shown);
    }
    Desk Odd(L"QUERY", WithList(Desk::Named(L"PROVA"), L"Fields", {Element(81, L"ANNO", {{L"Flags", 4}})}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"FIELDPARMS")).find(L"\r\nFLAGS= NONE\r\n"), std::wstring::npos);
}

TEST_F(QueryField, Refusals) {
    ASSERT_TRUE(Accepted(On.Put(Key, L"WORDS= FALSE")));
    ExpectStrictRefusals(Key, kFieldSource,
                         {
                             {L"WORDS= forse", L"WORDS=(FORSE)", L"WORDS= TRUE"},
                             {L"FLAGS= ALTRO|HIDDEN", L"FLAGS=(HIDDEN)", L"FLAGS= CAPTURE|HIDDEN"},
                             {L"FLAGS= NONE|CAPTURE", L"FLAGS=(CAPTURE)", L"FLAGS= CAPTURE|HIDDEN"},
                         });
    ExpectRefusals(On, Key, kFieldSource,
                   {
                       {L"BROWSE= A", L"Parametro non riconosciuto: BROWSE=A", 1},
                       {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                   });
    ExpectRepeatsRefused(
        Key, kFieldSource,
        {L"FLAGS=", L"SELECTED=", L"NAME=", L"SEMANTIC=", L"STOPWORD=", L"TABLES=", L"WORDS="});
    for (const wchar_t* const Text : {L"SELECTED= 3000000000", L"SEMANTIC= -3000000000"})
        EXPECT_TRUE(Refused(On.Put(Key, Text, false), 6, kFieldSource, L"Overflow", 1));
}

// A predefined value.

constexpr std::wstring_view kValueSource = L"diQuery.SaveConstParm";

class QueryValue : public QuerySection {
  protected:
    std::wstring Key = On.Leaf(L"CONSTANTPARMS");

    Words StoredNames() {
        Words Found;
        for (const RegObject& Each : StoredValues(1)) Found.push_back(Each.Name);
        return Found;
    }
};

TEST_F(QueryValue, EveryKeywordIsStoredAndShown) {
    ASSERT_TRUE(Accepted(On.Put(Key, L"DESC= \"Lingua latina\"\r\nNAME= \"lat\"")));
    EXPECT_TRUE(MatchesGolden("section/QUERY.CONSTANTPARMS.full.txt", On.Text(Key)));
    const RegObject Saved = StoredValues(1).at(0);
    EXPECT_EQ(Saved.Name, L"LAT");
    EXPECT_EQ(Saved.Desc, L"Lingua latina");
    EXPECT_EQ(ListOf(Saved, L"Message").size(), 2U) << "the captions stay";
    ExpectFixpoint(On, Key);
    // What a text leaves out stays.
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= ita")));
    EXPECT_EQ(LineOf(Key, L"DESC="), L"DESC= \"Lingua latina\"");
    ASSERT_TRUE(Accepted(On.Put(Key, L"DESC=")));
    EXPECT_EQ(LineOf(Key, L"NAME="), L"NAME= \"ITA\"");
    EXPECT_EQ(CaptionsBelow(On, Values(1)), (Words{L"Valore: ITA", L"Valore: FRA"}));
}

TEST_F(QueryValue, NamesAreUniqueWithinTheFieldInStrictMode) {
    ExpectRefusals(On, Key, kValueSource,
                   {
                       {L"NAME=", L"Non è stato specificato il nome del messaggio.", 0, false},
                       {L"NAME= \"fra\"", L"Il nome del messaggio non è univoco.", 0, false},
                   });
    EXPECT_EQ(StoredNames(), (Words{L"ITA", L"FRA"}));
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= ITA"))) << "its own name is no other's";
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= FRA", false)));
    EXPECT_EQ(StoredNames(), (Words{L"FRA", L"FRA"})) << "lax mode lets two be equal";
    EXPECT_TRUE(Refused(On.Put(On.Leaf(L"CONSTANTPARMS", 2), L"DESC= x"), 20000, kValueSource,
                        L"Il nome del messaggio non è univoco.", 0));
    ASSERT_TRUE(Accepted(On.Put(Key, L"NAME=", false)));
    EXPECT_EQ(CaptionsBelow(On, Values(1)), (Words{L"Valore: ", L"Valore: FRA"}));
    // A value of another field may bear the name.
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Values(2), Made)));
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Node(Made, 1), 1), L"NAME= FRA")));
    EXPECT_EQ(StoredValues(2).at(0).Name, L"FRA");
}

TEST_F(QueryValue, Refusals) {
    ExpectRefusals(On, Key, kValueSource,
                   {
                       {L"TEXT= A", L"Parametro non riconosciuto: TEXT=A", 1},
                       {L"NAME= A\r\nname= B", L"Parametro non riconosciuto: name=B", 2},
                   });
    ExpectRepeatsRefused(Key, kValueSource, {L"NAME=", L"DESC="});
    EXPECT_EQ(StoredNames(), (Words{L"ITA", L"FRA"}));
}

}  // namespace
}  // namespace kv::test
