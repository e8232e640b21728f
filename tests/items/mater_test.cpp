// The master page: hardly a parameter, and a list of templates.
#include <gtest/gtest.h>

#include "items/definitions/diMater.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diMater.SaveParm";
constexpr std::wstring_view kHtmlSource = L"ParmEditor.SaveHtml";

RegObject Template(std::int32_t Id, std::wstring_view File, std::wstring_view Language, std::int32_t Action) {
    return Element(Id, L"",
                   {{L"FileName", RegText(File)}, {L"Language", RegText(Language)}, {L"Action", Action}});
}
RegObject Page() {
    return WithList(With(Desk::Named(L"PROVA"), {{L"Flags", 5}}), L"Html",
                    {Template(31, L"modelli/ricerca-semplice.htm", L"ITA", 5),
                     Template(32, L"search.htm", L"ENG", -1), Template(33, L"zoom.htm", L"FRA", 45)});
}

class Mater : public ::testing::Test {
  protected:
    Desk On{L"MATER", Page()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Html(int Nth) const { return On.Leaf(L"HTML", Nth); }
    std::int32_t Flags() { return LongOf(SavedBy(On), L"Flags"); }
    std::vector<std::wstring> Languages() {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Html")) Found.push_back(TextOf(Each, L"Language"));
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"MATER", On.Object->Read()).Picture()));
        return Found;
    }
};

TEST_F(Mater, EmptyTree) {
    Desk Empty(L"MATER");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  HTML \"HTML\" 12,11 RG\n"));
}

TEST_F(Mater, FullTreeAndChoices) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  HTML \"HTML\" 12,11 RG\n"
                                           L"    HTML # \"File: [ITA] modelli/ricerca-semp\" 9,9\n"
                                           L"    HTML # \"File: [ENG] search.htm\" 9,9\n"
                                           L"    HTML # \"File: [FRA] zoom.htm\" 9,9\n"));
    EXPECT_EQ(
        Narrow(On.Offered()),
        Narrow(L"PARMS FLAGS= NONE\n"
               L"HTML ACTION= MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC QUERYRESULT "
               L"ADMIN LANG HTMLMOVE LOGIN HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC WEBCLIENT DBSELECT "
               L"SETOPS NAVIGATE PASSWORD CLIENTSETUP LOANSTART LOANQUIT SHELLWIN INFO KVRSELECT IMAGE SEEK "
               L"OPEN CLOSEALL QUERYGET BOOLSTEM SHELF IMAGELIST ZOOMIN ZOOMOUT MAP LOANACTION IMAGEUM\n"));
}

TEST_F(Mater, SectionTexts) {
    EXPECT_EQ(Narrow(On.Text(Parms())),
              Narrow(Lines({L"FLAGS= NONE", L"'[ID= 7]", L"'[NAME= PROVA]", L"'[VERSION= 3]"})));
    EXPECT_EQ(Narrow(On.Text(Html(1))),
              Narrow(Lines({L"FILENAME= \"modelli/ricerca-semplice.htm\"", L"LANG= \"ITA\"", L"ACTION= QUERY",
                            L"'[ID= 31]", L"'[NAME= ]", L"'[VERSION= 0]"})));
    EXPECT_NE(On.Text(Html(2)).find(L"ACTION= NONE\r\n"), std::wstring::npos);
    ExpectFixpoint(On, Parms());
    ExpectFixpoint(On, Html(1));
    ExpectFixpoint(On, Html(2));
}

TEST_F(Mater, FlagsKnowNoWord) {
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= ALFA"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=()", 1));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= alfa | beta|gamma"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(BETA|GAMMA)", 1));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= NONE|ALFA"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(ALFA)", 1));
    EXPECT_EQ(Flags(), 5);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= ALFA", false)));
    EXPECT_EQ(Flags(), 5);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'niente")));
    EXPECT_EQ(Flags(), 5);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= none")));
    EXPECT_EQ(Flags(), 0);
}

TEST_F(Mater, AnEmptyFlagsValueClears) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FLAGS=")));
    EXPECT_EQ(Flags(), 0);
    EXPECT_EQ(Languages().size(), 3U);
}

TEST_F(Mater, Refusals) {
    ExpectRefusals(On, Parms(), kSource,
                   {
                       {L"FLAGS= NONE\r\nFLAGS= NONE", L"Ripetizone del parametro FLAGS=.", 2},
                       {L"flags= NONE", L"Parametro non riconosciuto: flags=NONE", 1},
                       {L"'x\r\nFILENAME= a", L"Parametro non riconosciuto: FILENAME=a", 2},
                   });
    ExpectRefusals(
        On, Html(1), kHtmlSource,
        {
            {L"LANG= ITA\r\nLANG= ENG", L"Ripetizone del parametro LANG=.", 2},
            {L"FILENAME=\r\nFILENAME=", L"Ripetizone del parametro FILENAME=.", 2},
            {L"ACTION= MENU\r\nACTION= MENU", L"Ripetizone del parametro ACTION=.", 2},
            {L"LANG= ITA\r\nTEXT= a", L"Parametro non riconosciuto: TEXT=a", 2},
            {L"LANG= ITA\r\nACTION= FORSE", L"Valore sconosciuto per il parametro ACTION=(FORSE)", 2, false},
        });
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Mater, TemplatesAndTheirCaption) {
    ASSERT_TRUE(Accepted(On.Put(Html(2), L"FILENAME= \"Cerca.htm\"\r\nLANG= deu\r\nACTION= imagetag")));
    EXPECT_EQ(On.Tree->NodeText(Html(2)), L"File: [DEU] Cerca.htm");
    const RegObject Now = ListOf(SavedBy(On), L"Html")[1];
    EXPECT_EQ(Now.Id, 32);
    EXPECT_EQ(TextOf(Now, L"FileName"), L"Cerca.htm");
    EXPECT_EQ(TextOf(Now, L"Language"), L"DEU");
    EXPECT_EQ(LongOf(Now, L"Action"), 50);
    EXPECT_NE(On.Text(Html(2)).find(L"ACTION= IMAGETAG\r\n"), std::wstring::npos);
    EXPECT_TRUE(Refused(On.Put(Html(2), L"FILENAME= x"), 20000, kHtmlSource,
                        L"Non è stato specificato un codice LANG valido."));
    ASSERT_TRUE(Accepted(On.Put(Html(2), L"FILENAME= x\r\nACTION= FORSE", false)));
    EXPECT_EQ(On.Tree->NodeText(Html(2)), L"File: [] x");
    EXPECT_EQ(LongOf(ListOf(SavedBy(On), L"Html")[1], L"Action"), -1);
}

TEST_F(Mater, EveryActionWord) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {
        {L"NONE", -1},       {L"MENU", 1},      {L"BROWSE", 2},       {L"HELP", 3},       {L"RECORD", 4},
        {L"QUERY", 5},       {L"BACK", 6},      {L"QUIT", 7},         {L"LINK", 9},       {L"SHELL", 10},
        {L"SPAWN", 11},      {L"LOANIC", 13},   {L"QUERYRESULT", 15}, {L"ADMIN", 16},     {L"LANG", 17},
        {L"HTMLMOVE", 18},   {L"LOGIN", 19},    {L"HBACK", 20},       {L"SPAWN16", 21},   {L"SPAWNDOC", 22},
        {L"SPAWNDOC16", 23}, {L"SHELLDOC", 24}, {L"WEBCLIENT", 26},   {L"DBSELECT", 27},  {L"SETOPS", 28},
        {L"NAVIGATE", 29},   {L"PASSWORD", 30}, {L"CLIENTSETUP", 31}, {L"LOANSTART", 32}, {L"LOANQUIT", 33},
        {L"SHELLWIN", 34},   {L"INFO", 35},     {L"KVRSELECT", 36},   {L"IMAGE", 37},     {L"SEEK", 38},
        {L"OPEN", 39},       {L"CLOSEALL", 40}, {L"QUERYGET", 41},    {L"BOOLSTEM", 42},  {L"SHELF", 43},
        {L"IMAGELIST", 44},  {L"ZOOMIN", 45},   {L"ZOOMOUT", 46},     {L"MAP", 47},       {L"LOANACTION", 48},
        {L"IMAGEUM", 49},    {L"IMAGETAG", 50}};
    for (const auto& Row : kRows) {
        ASSERT_TRUE(Accepted(On.Put(Html(1), L"LANG= ITA\r\nACTION= " + std::wstring(Row.Word))));
        EXPECT_EQ(LongOf(ListOf(SavedBy(On), L"Html")[0], L"Action"), Row.Code) << Narrow(Row.Word);
        EXPECT_NE(On.Text(Html(1)).find(L"ACTION= " + std::wstring(Row.Word) + L"\r\n"), std::wstring::npos);
    }
}

TEST_F(Mater, NewTemplatesGoLast) {
    for (const std::wstring& At : {std::wstring(L"HTML"), Html(1)}) {
        const std::size_t Before = Languages().size();
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, At, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Made, KeyBelow(On, L"HTML", Before + 1));
        EXPECT_EQ(On.Tree->NodeText(Made), L"File: [] ");
        EXPECT_EQ(Languages().size(), Before + 1);
        EXPECT_NE(ListOf(On.Object->Read(), L"Html").back().Id, 0);
    }
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Made)));
    EXPECT_EQ(Made, L"");
    EXPECT_EQ(Languages().size(), 5U);
}

TEST_F(Mater, TemplatesMove) {
    std::wstring Made;
    const std::wstring Old = Html(3);
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_EQ(Made, Html(2));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{L"ITA", L"FRA", L"ENG"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Html(1), -1, Made)));
    EXPECT_EQ(Made, Html(2));
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{L"FRA", L"ITA", L"ENG"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Html(2), 0, Made)));
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{L"FRA", L"ENG", L"ITA"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Html(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Html(3), 0, Made)));
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{L"FRA", L"ENG", L"ITA"}));
}

TEST_F(Mater, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Html(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{L"ITA", L"FRA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Html(1), true)));
    EXPECT_EQ(Languages(), (std::vector<std::wstring>{}));
    EXPECT_TRUE(Accepted(DeleteAt(On, Parms(), true)));
    EXPECT_NE(Parms(), L"");
}

TEST_F(Mater, Export) { EXPECT_TRUE(MatchesGolden("export/MATER.txt", On.Exported())); }

TEST_F(Mater, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Html(1), L"FILENAME= a\r\nLANG= X")));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"MATER", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
}

TEST_F(Mater, OtherOperations) {
    for (const wchar_t* Key : {L"", L"parms", L"FIELDS"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
    }
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_TRUE(On.Tree->Served().empty());
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Asked.empty());
    diMater Item;
    std::wstring Text = L"BEGIN";
    EXPECT_FALSE(Item.ImportData(*On.Object, Text));
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"MATER");
    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users); })));
    EXPECT_EQ(Id, L"7");
}

}  // namespace
}  // namespace kv::test
