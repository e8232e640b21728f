// The table of words to look for and their replacements.
#include <gtest/gtest.h>

#include "items/definitions/diStopWord.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diStopWord.SaveParm";
constexpr std::wstring_view kTableSource = L"diStopWord.SaveTable";

// `a|b;c|d` as the packed form of two pairs.
std::wstring Packed(std::wstring_view Pairs) {
    std::wstring Made(1, L'\0');
    for (const wchar_t C : Pairs) Made.push_back(C == L'|' ? L'\t' : C == L';' ? L'\0' : C);
    if (!Pairs.empty()) Made.push_back(L'\0');
    return Made;
}

class StopWord : public ::testing::Test {
  protected:
    explicit StopWord(std::wstring_view Separator = L"=")
        : On(L"STOPWORD", With(Desk::Named(L"PROVA"),
                               {{L"Separator", RegText(Separator)}, {L"Table", Packed(L"il|lo;a|")}})) {}

    Desk On;

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Words() const { return On.Leaf(L"MESSAGE"); }
    std::wstring Table() { return TextOf(SavedBy(On), L"Table"); }
    std::int32_t Flags() { return LongOf(SavedBy(On), L"Flags"); }
};

TEST_F(StopWord, TreeAndChoices) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  MESSAGE \"Parole\" 12,11\n"
                                           L"    MESSAGE # \"Parole\" 9,9\n"));
    EXPECT_EQ(Narrow(On.Offered()), Narrow(L"PARMS ANYWHERE= FALSE TRUE\n"
                                           L"PARMS IFFIRST= FALSE TRUE\n"
                                           L"PARMS IFNOTONLY= FALSE TRUE\n"
                                           L"PARMS IGNORECASE= FALSE TRUE\n"
                                           L"PARMS FLAGS= NONE KEEPTERM TERMIMPLICIT TERMPUNCT TERMSPACE\n"));
}

TEST_F(StopWord, SectionTexts) {
    Desk Empty(L"STOPWORD");
    EXPECT_TRUE(MatchesGolden("section/STOPWORD.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    EXPECT_EQ(Narrow(Empty.Text(Empty.Leaf(L"MESSAGE"))),
              Narrow(Lines({L"'\"ParolaDaCercare\"=\"ParolaDiSostituzione\"", L"'[ID= 7]", L"'[NAME= PROVA]",
                            L"'[VERSION= 3]"})));
    ASSERT_TRUE(Accepted(
        On.Put(Parms(), Lines({L"ANYWHERE= VERO", L"IFFIRST= true", L"IFNOTONLY= TRUE", L"IGNORECASE= TRUE",
                               L"SEPARATOR= \"->\"", L"FLAGS= termspace|TERMPUNCT |keepterm|TERMIMPLICIT",
                               L"MIRROROF= \"Altra\""}))));
    EXPECT_TRUE(MatchesGolden("section/STOPWORD.full.txt", On.Text(Parms())));
    EXPECT_TRUE(MatchesGolden("section/STOPWORD.MESSAGE.full.txt", On.Text(Words())));
    ExpectFixpoint(On, Parms());
    ExpectFixpoint(On, Words());
    EXPECT_EQ(Table(), Packed(L"il|lo;a|"));
}

TEST_F(StopWord, Booleans) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
    } kRows[] = {{L"ANYWHERE=", L"Anywhere"},
                 {L"IFFIRST=", L"IfFirst"},
                 {L"IFNOTONLY=", L"IfNotOnly"},
                 {L"IGNORECASE=", L"IgnoreCase"}};
    for (const auto& Row : kRows) {
        const std::wstring Keyword(Row.Keyword);
        const auto Read = [&](std::wstring_view Value, bool Strict) {
            EXPECT_TRUE(Accepted(On.Put(Parms(), Keyword + L" " + std::wstring(Value), Strict)));
            return BoolOf(SavedBy(On), Row.Property);
        };
        for (const bool Strict : {true, false}) {
            EXPECT_TRUE(Read(L"TRUE", Strict));
            EXPECT_FALSE(Read(L"falso", Strict));
            EXPECT_TRUE(Read(L"vero", Strict));
            EXPECT_FALSE(Read(L"", Strict));
            EXPECT_TRUE(Read(L"True", Strict));
            EXPECT_FALSE(Read(L"FALSE", Strict));
        }
        EXPECT_TRUE(Refused(On.Put(Parms(), Keyword + L" forse"), 20000, kSource,
                            L"Valore sconosciuto per il parametro " + Keyword + L"(FORSE)", 1));
        EXPECT_TRUE(Read(L"FORSE", false));
        for (const auto& Other : kRows)
            EXPECT_EQ(BoolOf(On.Object->Read(), Other.Property), Other.Property == Row.Property)
                << Narrow(Other.Property);
        EXPECT_FALSE(Read(L"FALSE", true));
    }
}

TEST_F(StopWord, FlagWordsComeOnTopOfTheBitsThatAreThere) {
    const struct {
        std::wstring_view Word;
        std::int32_t Bit;
    } kRows[] = {{L"TERMIMPLICIT", 0x01}, {L"TERMSPACE", 0x02}, {L"TERMPUNCT", 0x04}, {L"KEEPTERM", 0x08}};
    std::int32_t Bits = 0;
    for (const auto& Row : kRows) {
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= NONE")));
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= " + std::wstring(Row.Word))));
        EXPECT_EQ(Flags(), Row.Bit);
        EXPECT_NE(On.Text(Parms()).find(L"FLAGS= " + std::wstring(Row.Word) + L"\r\n"), std::wstring::npos);
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= NONE")));
    for (const auto& Row : kRows) {
        Bits |= Row.Bit;
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= " + std::wstring(Row.Word))));
        EXPECT_EQ(Flags(), Bits);
    }
    EXPECT_NE(On.Text(Parms()).find(L"FLAGS= KEEPTERM|TERMIMPLICIT|TERMPUNCT|TERMSPACE\r\n"),
              std::wstring::npos);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS=")));
    EXPECT_EQ(Flags(), 0);
    EXPECT_NE(On.Text(Parms()).find(L"FLAGS= NONE\r\n"), std::wstring::npos);
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= keepterm|pippo| termspace"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(TERMSPACE)", 1));
    EXPECT_EQ(Flags(), 0);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= keepterm|pippo| termspace", false)));
    EXPECT_EQ(Flags(), 0x0A);
}

TEST_F(StopWord, WhatATextLeavesOutKeepsItsValue) {
    ASSERT_TRUE(Accepted(
        On.Put(Parms(),
               L"ANYWHERE= TRUE\r\nIFFIRST= TRUE\r\nSEPARATOR= \"; \"\r\nFLAGS= KEEPTERM\r\nMIRROROF= Uno")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"IFFIRST= FALSE")));
    const RegObject& Now = SavedBy(On);
    EXPECT_TRUE(BoolOf(Now, L"Anywhere"));
    EXPECT_FALSE(BoolOf(Now, L"IfFirst"));
    EXPECT_EQ(TextOf(Now, L"Separator"), L"; ");
    EXPECT_EQ(LongOf(Now, L"Flags"), 0x08);
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Uno");
    EXPECT_EQ(TextOf(Now, L"Table"), Packed(L"il|lo;a|"));
}

TEST_F(StopWord, Refusals) {
    ExpectRefusals(
        On, Parms(), kSource,
        {
            {L"SEPARATOR=", L"Valore sconosciuto per il parametro SEPARATOR=()", 1},
            {L"ANYWHERE= TRUE\r\nSEPARATOR= \"\"", L"Valore sconosciuto per il parametro SEPARATOR=()", 2},
            {L"SEPARATOR= \"", L"Valore sconosciuto per il parametro SEPARATOR=()", 1},
            {L"anywhere= TRUE", L"Parametro non riconosciuto: anywhere=TRUE", 1},
            {L"\"a\"=\"b\"", L"Parametro non riconosciuto: \"a\"=\"b\"", 1},
            {L"ANYWHERE=\r\nANYWHERE=", L"Ripetizone del parametro ANYWHERE=.", 2},
            {L"IFFIRST=\r\nIFFIRST=", L"Ripetizone del parametro IFFIRST=.", 2},
            {L"IFNOTONLY=\r\nIFNOTONLY=", L"Ripetizone del parametro IFNOTONLY=.", 2},
            {L"IGNORECASE=\r\nIGNORECASE=", L"Ripetizone del parametro IGNORECASE=.", 2},
            {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
            {L"MIRROROF=\r\nMIRROROF=", L"Ripetizone del parametro MIRROROF=.", 2},
            {L"SEPARATOR= a\r\nSEPARATOR= a", L"Ripetizone del parametro SEPARATOR=.", 2},
        });
    EXPECT_TRUE(Refused(On.Put(Parms(), L"ANYWHERE"), 20018, L"vDesignPar.GetFieldValue",
                        L"Errore di sintassi: ANYWHERE.", 1));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(StopWord, AStoredRecordWithoutASeparatorIsRefusedUntilItWasShown) {
    constexpr std::wstring_view kMissing =
        L"Non è stato definito il separatore delle stringhe per la tabella.";
    Desk Fresh(L"STOPWORD");
    const std::wstring Key = Fresh.Leaf(L"PARMS");
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Refused(Fresh.Put(Key, L"ANYWHERE= TRUE", Strict), 20000, kSource, kMissing));
        EXPECT_TRUE(Refused(Fresh.Put(Key, L"SEPARATOR= \"-\"", Strict), 20000, kSource, kMissing));
    }
    // A fault of a line comes before it.
    EXPECT_TRUE(Refused(Fresh.Put(Key, L"PIPPO= 1"), 20000, kSource, L"Parametro non riconosciuto: PIPPO=1"));
    EXPECT_NE(Fresh.Text(Key).find(L"SEPARATOR= \"=\"\r\n"), std::wstring::npos);
    EXPECT_TRUE(Accepted(Fresh.Put(Key, L"ANYWHERE= TRUE")));
    EXPECT_EQ(TextOf(SavedBy(Fresh), L"Separator"), L"=");
}

TEST_F(StopWord, ShowingTheWordsFillsInNoSeparator) {
    Desk Fresh(L"STOPWORD");
    static_cast<void>(Fresh.Text(Fresh.Leaf(L"MESSAGE")));
    EXPECT_TRUE(Refused(Fresh.Put(Fresh.Leaf(L"PARMS"), L"ANYWHERE= TRUE"), 20000, kSource,
                        L"Non è stato definito il separatore delle stringhe per la tabella."));
    EXPECT_TRUE(Accepted(Fresh.Put(Fresh.Leaf(L"MESSAGE"), L"\"a\"=\"b\"")));
    EXPECT_EQ(TextOf(SavedBy(Fresh), L"Table"), Packed(L"a|b"));
}

TEST_F(StopWord, PairsArePacked) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Pairs;
    } kRows[] = {
        {L"\"a\"=\"b\"", L"a|b"},
        {L"\"a\" = \"b\"", L"a|b"},
        {L"   \"a\"   =   \"b\"   \r\n", L"a|b"},
        {L"\"a\"=\"\"", L"a|"},
        {L"\"a\"=\"", L"a|"},  // one lone quote mark is both
        {L"\"a\"=\"b=c\"", L"a|b=c"},
        {L"\"a\"=\"b\"c\"", L"a|b\"c"},
        {L"\"a\"\"b\"=\"c\"", L"a\"\"b|c"},
        {L"\"A\"=\"x\"\r\n\"a\"=\"y\"", L"A|x;a|y"},
        {L"\" a \"=\" b \"", L" a | b "},
        {L"'nota\r\n\r\n;altra\r\n*ancora\r\n\"a\"=\"b\"", L"a|b"},
        {L"\"b\"=\"1\"\r\n\"a\"=\"b\"\r\n\"1\"=\"a\"", L"b|1;a|b;1|a"},
        {L"", L""},
        {L"'nota", L""},
    };
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false}) {
            EXPECT_TRUE(Accepted(On.Put(Words(), std::wstring(Row.Text), Strict))) << Narrow(Row.Text);
            EXPECT_EQ(Table(), Packed(Row.Pairs)) << Narrow(Row.Text);
        }
}

TEST_F(StopWord, RefusalsOfThePairs) {
    const std::wstring Quotes = L" contiene parole non racchiuse fra doppi apici.";
    const std::wstring Empty = L" contiene una stringa vuota.";
    const std::wstring None = L" non contiene il separatore (=)";
    const struct {
        std::wstring_view Text;
        std::wstring Message;
        int Line;
    } kRows[] = {
        {L"a", L"La riga #1" + None, 1},
        {L"\"a\" \"b\"", L"La riga #1" + None, 1},
        {L"a=b", L"La riga #1" + Quotes, 1},
        {L"\"a=\"b\"", L"La riga #1" + Quotes, 1},
        {L"a\"=\"b\"", L"La riga #1" + Quotes, 1},
        {L"=\"b\"", L"La riga #1" + Quotes, 1},
        {L"\"a=b\"=\"c\"", L"La riga #1" + Quotes, 1},
        {L"\t\"a\"=\"c\"", L"La riga #1" + Quotes, 1},
        {L"\"\"=\"b\"", L"La riga #1" + Empty, 1},
        {L"\"=\"b\"", L"La riga #1" + Empty, 1},
        {L"\"\"=", L"La riga #1" + Empty, 1},
        {L"\"a\"=", L"La riga #1" + Quotes, 1},
        {L"\"a\"=b", L"La riga #1" + Quotes, 1},
        {L"\"a\"=\"b", L"La riga #1" + Quotes, 1},
        {L"\"a\"=\"1\"\r\n\"a\"=\"2\"", L"La riga #2 contiene la parola a più di una volta.", 2},
        {L"\"a\"=\"1\"\r\n\"b\"=\"2\"\r\n\"a\"=", L"La riga #3 contiene la parola a più di una volta.", 3},
        {L"'uno\r\n;due\r\n*tre\r\nquattro", L"La riga #4" + None, 4},
        {L"\"a\"=\"b\"\r\n\r\n'tre\r\nquattro", L"La riga #4" + None, 4},
        {L"\"x\"=\"a\"\r\n'[ID= 7]\r\n=", L"La riga #3" + Quotes, 3},
    };
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false}) {
            EXPECT_TRUE(Refused(On.Put(Words(), std::wstring(Row.Text), Strict), 20000, kTableSource,
                                Row.Message, Row.Line))
                << Narrow(Row.Text);
            EXPECT_EQ(Table(), Packed(L"il|lo;a|"));
        }
}

// A word is found by what stands between a code 0 and a tab of the packed text.
TEST_F(StopWord, RepeatsAreWordsAndNoReplacements) {
    EXPECT_TRUE(Accepted(On.Put(Words(), L"\"ab\"=\"b\"\r\n\"b\"=\"a\"\r\n\"a\"=\"ab\"")));
    EXPECT_TRUE(Refused(On.Put(Words(), L"\"a\tb\"=\"c\"\r\n\"a\"=\"d\""), 20000, kTableSource,
                        L"La riga #2 contiene la parola a più di una volta.", 2));
    EXPECT_TRUE(Accepted(On.Put(Words(), L"\"a\"=\"c\"\r\n\"a\tb\"=\"d\"")));
    EXPECT_TRUE(Refused(On.Put(Words(), L"\"a\"=\"b\tc\"\r\n\"a\tb\"=\"d\""), 20000, kTableSource,
                        L"La riga #2 contiene la parola a\tb più di una volta.", 2));
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"IGNORECASE= TRUE")));
    EXPECT_TRUE(Accepted(On.Put(Words(), L"\"A\"=\"x\"\r\n\"a\"=\"y\"")));
}

class LongSeparator : public StopWord {
  protected:
    LongSeparator() : StopWord(L"->") {}
};

TEST_F(LongSeparator, PartsThePairs) {
    EXPECT_EQ(On.Text(Words()).rfind(L"\"il\"->\"lo\"\r\n\"a\"->\"\"\r\n'\"ParolaDaCercare\"->\"ParolaDi", 0),
              0U);
    ASSERT_TRUE(Accepted(On.Put(Words(), L"\"a=b\" -> \"c->d\"\r\n\"-\"->\">\"")));
    EXPECT_EQ(Table(), Packed(L"a=b|c->d;-|>"));
    EXPECT_TRUE(Refused(On.Put(Words(), L"\"a\"=\"b\""), 20000, kTableSource,
                        L"La riga #1 non contiene il separatore (->)", 1));
    EXPECT_TRUE(Refused(On.Put(Words(), L"\"a->b\"->\"c\""), 20000, kTableSource,
                        L"La riga #1 contiene parole non racchiuse fra doppi apici.", 1));
    ExpectFixpoint(On, Words());
}

TEST_F(StopWord, StoredEntriesShowInTheirOrder) {
    const auto Shown = [](const std::wstring& Table) {
        Desk One(L"STOPWORD", With(Desk::Named(L"PROVA"), {{L"Table", Table}}));
        const std::wstring Text = One.Text(One.Leaf(L"MESSAGE"));
        return Text.substr(0, Text.find(L'\''));
    };
    EXPECT_EQ(Shown(Packed(L"z|1;a|2")), L"\"z\"=\"1\"\r\n\"a\"=\"2\"\r\n");
    EXPECT_EQ(Shown(Packed(L"sola;a|2")), L"\"sola\"=\"\"\r\n\"a\"=\"2\"\r\n");
    EXPECT_EQ(Shown(Packed(L"a|b|c")), L"\"a\"=\"b\tc\"\r\n");
    EXPECT_EQ(Shown(std::wstring(L"\0a\tb", 4)), L"\"a\"=\"b\"\r\n");
    EXPECT_EQ(Shown(std::wstring(1, L'\0')), L"");
    EXPECT_EQ(Shown(L""), L"");
}

TEST_F(StopWord, Export) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= KEEPTERM\r\nIGNORECASE= TRUE")));
    static_cast<void>(SavedBy(On));
    EXPECT_TRUE(MatchesGolden("export/STOPWORD.txt", On.Exported()));
}

TEST_F(StopWord, NewLeavesOfEitherSection) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Made)));
    EXPECT_EQ(Made, On.Leaf(L"PARMS", 2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"PARMS");
    ASSERT_TRUE(Accepted(AddAt(On, L"MESSAGE", Made)));
    EXPECT_EQ(Made, On.Leaf(L"MESSAGE", 2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"MESSAGE");
    EXPECT_EQ(On.Text(Made), On.Text(Words()));
}

TEST_F(StopWord, OtherOperations) {
    const std::wstring Before = On.Picture();
    std::wstring Made;
    for (const std::wstring& Key : {Parms(), Words()}) {
        for (const std::int32_t Direction : {1, 0, -1})
            EXPECT_TRUE(RefusedSilently(MoveAt(On, Key, Direction, Made)));
        EXPECT_TRUE(Accepted(DeleteAt(On, Key)));
        EXPECT_TRUE(Accepted(DeleteAt(On, Key, true)));
    }
    for (const wchar_t* Key : {L"", L"parms", L"FIELDS"}) {
        std::wstring Text = L"PIPPO= 1";
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, Made); })));
    }
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(On.Picture(), Before);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(TextOf(On.Clipboard.DataObj->Read(), L"Table"), Packed(L"il|lo;a|"));
}

TEST_F(StopWord, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Words(), L"\"è\"=\"€\"\r\n\"x\"=\"\"")));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"STOPWORD", Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"MESSAGE")), On.Text(Words()));
    EXPECT_EQ(SavedBy(Again), Saved);
}

}  // namespace
}  // namespace kv::test
