// The mail group: six fixed sections and a list of backup paths.
#include <gtest/gtest.h>

#include "items/services/diMailGroup.h"
#include "tests/items/Reading.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kNoPath = L"Non è stato specificato un path valido.";

enum class Type { Boolean, Number, Text };
struct Keyword {
    std::wstring_view Word;
    std::wstring_view Property;
    Type As;
};
struct Section {
    std::wstring_view Word;
    std::wstring_view Property;  // the record of the section
    std::wstring_view Parser;
    std::vector<Keyword> Keywords;  // in the order of the text
};

constexpr Type B = Type::Boolean;
constexpr Type N = Type::Number;
constexpr Type S = Type::Text;

const std::vector<Section> kSections{
    {L"PARMS", L"Parms", L"SaveParm", {{L"SIZE=", L"Size", N}}},
    {L"MAIL",
     L"Mail",
     L"SaveMail",
     {{L"RCVENABLED=", L"RcvEnabled", B},
      {L"SNDENABLED=", L"SndEnabled", B},
      {L"RCVBROAD=", L"RcvBroad", B},
      {L"SNDBROAD=", L"SndBroad", B},
      {L"EXPDAYS=", L"ExpDays", N},
      {L"MAXFILES=", L"MaxFiles", N},
      {L"MAXSIZE=", L"MaxSize", N},
      {L"ATTACH=", L"Attach", B},
      {L"EDITOR=", L"Editor", S},
      {L"USERS=", L"Users", S},
      {L"PRINTALLOW=", L"PrintAllow", B},
      {L"PRIORITY=", L"Priority", N}}},
    {L"EXPORT",
     L"Export",
     L"SaveExport",
     {{L"ENABLED=", L"Enabled", B},
      {L"EXPDAYS=", L"ExpDays", N},
      {L"MAXFILES=", L"MaxFiles", N},
      {L"MAXSIZE=", L"MaxSize", N},
      {L"EDITOR=", L"Editor", S},
      {L"MAXITEMS=", L"MaxItems", N},
      {L"MAXRECS=", L"MaxRecs", N},
      {L"PRINTALLOW=", L"PrintAllow", B}}},
    {L"SETOPS",
     L"SetOps",
     L"SaveSetOps",
     {{L"ENABLED=", L"Enabled", B}, {L"EXPDAYS=", L"ExpDays", N}, {L"MAXFILES=", L"MaxFiles", N}}},
    {L"NOTEBOOK",
     L"NoteBook",
     L"SaveNoteBook",
     {{L"ENABLED=", L"Enabled", B},
      {L"EXPDAYS=", L"ExpDays", N},
      {L"EDITOR=", L"Editor", S},
      {L"MAXFILES=", L"MaxFiles", N},
      {L"MAXSIZE=", L"MaxSize", N},
      {L"PRINTALLOW=", L"PrintAllow", B}}},
    {L"QUERY",
     L"Query",
     L"SaveQuery",
     {{L"ENABLED=", L"Enabled", B}, {L"EXPDAYS=", L"ExpDays", N}, {L"MAXFILES=", L"MaxFiles", N}}},
};

// Something in every property, each number another.
RegObject Group() {
    RegObject Made = Desk::Named(L"PROVA");
    std::int32_t Number = 100;
    for (const Section& Each : kSections) {
        RegObject& Child = Made.Children.emplace_back();
        Child.Name = Each.Property;
        for (const Keyword& K : Each.Keywords) {
            ++Number;
            if (K.As == B)
                Child.SetValue(K.Property, true);
            else if (K.As == N)
                Child.SetValue(K.Property, Number);
            else
                Child.SetValue(K.Property, L"Testo " + std::to_wstring(Number));
        }
    }
    return WithList(
        std::move(Made), L"Backups",
        {Element(41, L"",
                 {{L"Caption", RegText(L"Ogni notte, tutti gli archivi")},
                  {L"Path", RegText(L"D:\\Copie\\Notte")},
                  {L"Language", RegText(L"ITA")}}),
         Element(42, L"", {{L"Caption", RegText(L"Weekly")}, {L"Path", RegText(L"//nas/copies")}}),
         Element(43, L"", {{L"Path", RegText(L"e:")}})});
}

class MailGroup : public ::testing::Test {
  protected:
    using Ids = std::vector<std::int32_t>;

    Desk On{L"MAILGROUP", Group()};

    std::wstring Path(std::size_t Nth) const { return KeyBelow(On, L"PATHS", Nth); }
    // The record of a section as stored now.
    RegObject Stored(const Section& Of) {
        const RegObject* const Child = SavedBy(On).Child(Of.Property);
        EXPECT_NE(Child, nullptr) << Narrow(Of.Property);
        return Child ? *Child : RegObject{};
    }
    std::wstring Shown(std::wstring_view Section, std::wstring_view Keyword) {
        const std::wstring Text = L"\r\n" + On.Text(On.Leaf(Section));
        const std::size_t At = Text.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos) << Narrow(Keyword);
        return At == std::wstring::npos ? std::wstring()
                                        : Text.substr(At + 2, Text.find(L"\r\n", At + 2) - At - 2);
    }
    // Those of the paths; the tree is what the stored record builds.
    Ids Paths() {
        Ids Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Backups")) Found.push_back(Each.Id);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"MAILGROUP", On.Object->Read()).Picture()));
        return Found;
    }
    RegObject StoredPath(std::size_t Nth) { return ListOf(SavedBy(On), L"Backups").at(Nth - 1); }
};

TEST_F(MailGroup, EmptyTree) {
    Desk Empty(L"MAILGROUP");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Generale\" 12,11\n"
                                              L"    PARMS # \"Generale\" 9,9\n"
                                              L"  MAIL \"Mail\" 12,11\n"
                                              L"    MAIL # \"Parametri\" 9,9\n"
                                              L"  EXPORT \"Export\" 12,11\n"
                                              L"    EXPORT # \"Parametri\" 9,9\n"
                                              L"  SETOPS \"Operazioni sugli insiemi\" 12,11\n"
                                              L"    SETOPS # \"Parametri\" 9,9\n"
                                              L"  NOTEBOOK \"Appunti\" 12,11\n"
                                              L"    NOTEBOOK # \"Parametri\" 9,9\n"
                                              L"  QUERY \"Parametri ricerca\" 12,11\n"
                                              L"    QUERY # \"Parametri\" 9,9\n"
                                              L"  PATHS \"Backup\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Offered(), L"");
}

TEST_F(MailGroup, PathsShowTheirCaptionAndItsLanguage) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_TRUE(Narrow(On.Picture())
                    .ends_with(Narrow(L"  PATHS \"Backup\" 12,11 RG\n"
                                      L"    PATHS # \"[ITA] Ogni notte, tutti gli archivi\" 9,9\n"
                                      L"    PATHS # \"Weekly\" 9,9\n"
                                      L"    PATHS # \"\" 9,9\n")));
    EXPECT_EQ(CaptionsBelow(On, L"ROOT").size(), 7U);
}

TEST_F(MailGroup, SectionTexts) {
    Desk Empty(L"MAILGROUP");
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(Empty, L"PATHS", Made)));
    for (const wchar_t* const Word :
         {L"PARMS", L"MAIL", L"EXPORT", L"SETOPS", L"NOTEBOOK", L"QUERY", L"PATHS"}) {
        SCOPED_TRACE(Narrow(Word));
        EXPECT_TRUE(
            MatchesGolden("section/MAILGROUP." + Narrow(Word) + ".empty.txt", Empty.Text(Empty.Leaf(Word))));
        EXPECT_TRUE(MatchesGolden("section/MAILGROUP." + Narrow(Word) + ".full.txt", On.Text(On.Leaf(Word))));
        ExpectFixpoint(On, On.Leaf(Word));
        EXPECT_EQ(On.Text(On.Leaf(Word)).find(L"'["), std::wstring::npos) << "no identity";
    }
    EXPECT_EQ(On.Text(L"PATHS"), L"") << "the folder is none of the paths";
    EXPECT_EQ(On.Text(L"MAIL"), On.Text(On.Leaf(L"MAIL")));
}

TEST_F(MailGroup, AFixedSectionShowsItsKeywordsInOrderAndNothingElse) {
    for (const Section& Each : kSections) {
        std::wstring Expected;
        const RegObject Kept = Stored(Each);
        for (const Keyword& K : Each.Keywords) {
            Expected.append(K.Word).append(L" ");
            if (K.As == B)
                Expected.append(L"TRUE");
            else if (K.As == N)
                Expected.append(std::to_wstring(LongOf(Kept, K.Property)));
            else
                Expected.append(L"\"" + TextOf(Kept, K.Property) + L"\"");
            Expected.append(L"\r\n");
        }
        EXPECT_EQ(Narrow(On.Text(On.Leaf(Each.Word))), Narrow(Expected)) << Narrow(Each.Word);
    }
}

// A section is parsed by its own parser into its own record alone.
TEST_F(MailGroup, EachKeywordReachesItsPropertyAndAllOthersReturnToTheirDefaults) {
    for (const Section& Each : kSections)
        for (const Keyword& K : Each.Keywords) {
            SCOPED_TRACE(Narrow(Each.Word) + " " + Narrow(K.Word));
            On.Object->Write(Group());
            ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
            RegObject Others = SavedBy(On);
            const std::wstring Value = K.As == B ? L"vero" : K.As == N ? L"7" : L"\"Così com'è\"";
            ASSERT_TRUE(Accepted(On.Put(On.Leaf(Each.Word), std::wstring(K.Word) + L" " + Value)));
            const RegObject Now = Stored(Each);
            for (const Keyword& Other : Each.Keywords) {
                const bool Given = Other.Word == K.Word;
                if (Other.As == B)
                    EXPECT_EQ(BoolOf(Now, Other.Property), Given) << Narrow(Other.Word);
                else if (Other.As == N)
                    EXPECT_EQ(LongOf(Now, Other.Property), Given ? 7 : 0) << Narrow(Other.Word);
                else
                    EXPECT_EQ(TextOf(Now, Other.Property), Given ? L"Così com'è" : L"") << Narrow(Other.Word);
            }
            RegObject Saved = SavedBy(On);
            for (RegObject* const Of : {&Others, &Saved})
                for (RegObject& Child : Of->Children)
                    if (Child.Name == Each.Property) Child = RegObject{};
            EXPECT_TRUE(Saved == Others) << "the other sections stay";
        }
}

TEST_F(MailGroup, AnEmptyTextClearsASection) {
    for (const Section& Each : kSections) {
        for (const bool Strict : {true, false})
            ASSERT_TRUE(Accepted(On.Put(On.Leaf(Each.Word), L"'niente\r\n\r\n", Strict)));
        Desk Empty(L"MAILGROUP");
        EXPECT_EQ(Narrow(On.Text(On.Leaf(Each.Word))), Narrow(Empty.Text(Empty.Leaf(Each.Word))));
    }
}

TEST_F(MailGroup, KeywordsMayStandInAnyOrder) {
    for (const Section& Each : kSections) {
        std::wstring Backwards;
        const std::wstring Leaf = On.Leaf(Each.Word);
        const std::wstring Before = On.Text(Leaf);
        for (auto K = Each.Keywords.rbegin(); K != Each.Keywords.rend(); ++K)
            Backwards.append(Shown(Each.Word, K->Word)).append(L"\r\n");
        ASSERT_TRUE(Accepted(On.Put(Leaf, L"")));
        ASSERT_TRUE(Accepted(On.Put(Leaf, Backwards)));
        EXPECT_EQ(Narrow(On.Text(Leaf)), Narrow(Before));
    }
}

TEST_F(MailGroup, BooleanWords) {
    const struct {
        std::wstring_view Word;
        bool Value;
    } kRows[] = {{L"TRUE", true},   {L"vero", true},   {L"True", true}, {L"FALSE", false},
                 {L"Falso", false}, {L"False", false}, {L"", false}};
    for (const Section& Each : kSections)
        for (const Keyword& K : Each.Keywords) {
            if (K.As != B) continue;
            SCOPED_TRACE(Narrow(Each.Word) + " " + Narrow(K.Word));
            const std::wstring Leaf = On.Leaf(Each.Word);
            const std::wstring Source = L"diMailGroup." + std::wstring(Each.Parser);
            for (const auto& Row : kRows)
                for (const bool Strict : {true, false}) {
                    ASSERT_TRUE(
                        Accepted(On.Put(Leaf, std::wstring(K.Word) + L" " + std::wstring(Row.Word), Strict)));
                    EXPECT_EQ(BoolOf(Stored(Each), K.Property), Row.Value) << Narrow(Row.Word);
                }
            for (const wchar_t* const Word : {L"si", L"1", L"\"TRUE\"", L"NONE"}) {
                const std::wstring Folded = std::wstring(Word) == L"si" ? L"SI" : Word;
                ASSERT_TRUE(Accepted(On.Put(Leaf, std::wstring(K.Word) + L" FALSE")));
                EXPECT_TRUE(Refused(
                    On.Put(Leaf, std::wstring(K.Word) + L" " + Word), 20000, Source,
                    L"Valore sconosciuto per il parametro " + std::wstring(K.Word) + L"(" + Folded + L")",
                    1));
                EXPECT_FALSE(BoolOf(Stored(Each), K.Property));
                ASSERT_TRUE(Accepted(On.Put(Leaf, std::wstring(K.Word) + L" " + Word, false)));
                EXPECT_TRUE(BoolOf(Stored(Each), K.Property)) << Narrow(Word) << " counts as true";
            }
        }
}

TEST_F(MailGroup, NumbersAreCutToTheirLow32Bits) {
    const struct {
        std::wstring_view Given;
        std::int32_t Value;
    } kRows[] = {{L"0", 0},
                 {L"-5", -5},
                 {L"12.9", 12},
                 {L"-12.9", -12},
                 {L"1E3", 1000},
                 {L"30 giorni", 30},
                 {L"molti", 0},
                 {L"\"5\"", 0},
                 {L"", 0},
                 {L"2147483647", 2147483647},
                 {L"2147483647.9", 2147483647},
                 {L"2147483648", -2147483647 - 1},
                 {L"-2147483648", -2147483647 - 1},
                 {L"-2147483649", 2147483647},
                 {L"4294967295", -1},
                 {L"4294967296", 0},
                 {L"4294967301", 5},
                 {L"-4294967301", -5},
                 {L"1E300", 0}};
    for (const Section& Each : kSections)
        for (const Keyword& K : Each.Keywords) {
            if (K.As != N) continue;
            SCOPED_TRACE(Narrow(Each.Word) + " " + Narrow(K.Word));
            for (const auto& Row : kRows) {
                ASSERT_TRUE(Accepted(
                    On.Put(On.Leaf(Each.Word), std::wstring(K.Word) + L" " + std::wstring(Row.Given))));
                EXPECT_EQ(LongOf(Stored(Each), K.Property), Row.Value) << Narrow(Row.Given);
            }
            ExpectFixpoint(On, On.Leaf(Each.Word));
        }
    EXPECT_TRUE(
        Refused(On.Put(On.Leaf(L"PARMS"), L"SIZE= 1E400"), 6, L"diMailGroup.SaveParm", L"Overflow", 1))
        << "no number at all";
}

TEST_F(MailGroup, TextsAreKeptAsTheyAreTyped) {
    const struct {
        std::wstring_view Given;
        std::wstring_view Kept;
    } kRows[] = {{L"\"Scrittura.exe\"", L"Scrittura.exe"},
                 {L"città", L"città"},
                 {L"\"a \"b\" c\"", L"a \"b\" c"},
                 {L"\"", L""},
                 {L"x=y", L"x=y"}};
    for (const Section& Each : kSections)
        for (const Keyword& K : Each.Keywords) {
            if (K.As != S) continue;
            for (const auto& Row : kRows) {
                ASSERT_TRUE(Accepted(
                    On.Put(On.Leaf(Each.Word), std::wstring(K.Word) + L" " + std::wstring(Row.Given))));
                EXPECT_EQ(Narrow(TextOf(Stored(Each), K.Property)), Narrow(Row.Kept)) << Narrow(K.Word);
                ExpectFixpoint(On, On.Leaf(Each.Word));
            }
        }
}

TEST_F(MailGroup, RefusalsOfTheFixedSections) {
    for (const Section& Each : kSections) {
        SCOPED_TRACE(Narrow(Each.Word));
        const std::wstring Source = L"diMailGroup." + std::wstring(Each.Parser);
        const std::wstring Leaf = On.Leaf(Each.Word);
        for (const Keyword& K : Each.Keywords) {
            const std::wstring Word(K.Word);
            const std::wstring Lower = [&] {
                std::wstring Made(Word);
                for (wchar_t& C : Made)
                    if (C >= L'A' && C <= L'Z') C = static_cast<wchar_t>(C + 32);
                return Made;
            }();
            const std::wstring Twice = Word + L" TRUE\r\n'x\r\n" + Word + L" TRUE";
            const std::wstring Repeated = L"Ripetizone del parametro " + Word + L".";
            const std::wstring Unknown = L"Parametro non riconosciuto: " + Lower + L"1";
            ExpectRefusals(On, Leaf, Source, {{Twice, Repeated, 3}, {Lower + L" 1", Unknown, 1}});
        }
        ExpectRefusals(On, Leaf, Source,
                       {{L"PIPPO= \"1\"", L"Parametro non riconosciuto: PIPPO=\"1\"", 1},
                        {L"'x\r\nPATH= c:", L"Parametro non riconosciuto: PATH=c:", 2}});
        for (const bool Strict : {true, false})
            EXPECT_TRUE(Refused(On.Put(Leaf, L"\r\nPIPPO", Strict), 20018, L"vDesignPar.GetFieldValue",
                                L"Errore di sintassi: PIPPO.", 2));
    }
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Refused(On.Put(On.Leaf(L"QUERY"), L"MAXSIZE= 1"), 20000, L"diMailGroup.SaveQuery",
                        L"Parametro non riconosciuto: MAXSIZE=1", 1))
        << "a keyword of other sections";
}

TEST_F(MailGroup, FixedSectionsHaveNothingToAddMoveOrDelete) {
    const RegObject Saved = SavedBy(On);
    const std::wstring Before = On.Picture();
    for (const Section& Each : kSections)
        for (const std::wstring& Key : {std::wstring(Each.Word), On.Leaf(Each.Word)}) {
            SCOPED_TRACE(Narrow(Key));
            std::wstring Made;
            EXPECT_TRUE(Accepted(AddAt(On, Key, Made)));
            EXPECT_EQ(Made, L"");
            for (const int Direction : {1, -1}) EXPECT_TRUE(Accepted(MoveAt(On, Key, Direction, Made)));
            for (const bool Group : {false, true}) EXPECT_TRUE(Accepted(DeleteAt(On, Key, Group)));
        }
    EXPECT_EQ(On.Platform.Beeps, 0);
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(SavedBy(On), Saved);
}

// The backup paths.

TEST_F(MailGroup, ASavedPathShowsItsCaption) {
    std::wstring Text = L"PATH= \"f:\\Nuove Copie\"\r\nCAPTION= \"Ogni lunedì\"";
    std::wstring Shown;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Path(1)}, Text, Shown); })));
    EXPECT_EQ(Narrow(Shown), Narrow(L"[ITA] Ogni lunedì")) << "the language stays";
    EXPECT_EQ(On.Tree->NodeText(Path(1)), Shown);
    EXPECT_TRUE(On.Tree->Modified());
    const RegObject Now = StoredPath(1);
    EXPECT_EQ(Now.Id, 41);
    EXPECT_EQ(TextOf(Now, L"Caption"), L"Ogni lunedì");
    EXPECT_EQ(TextOf(Now, L"Path"), L"f:\\Nuove Copie");
    EXPECT_EQ(TextOf(Now, L"Language"), L"ITA");
    ASSERT_TRUE(Accepted(On.Put(Path(1), L"PATH= g:")));
    EXPECT_EQ(On.Tree->NodeText(Path(1)), L"[ITA] ") << "a caption left out is empty";
    ASSERT_TRUE(Accepted(On.Put(Path(3), L"CAPTION= Terza\r\nPATH= g:")));
    EXPECT_EQ(On.Tree->NodeText(Path(3)), L"Terza");
    ASSERT_TRUE(Accepted(On.Put(Path(3), L"CAPTION= due\nrighe\r\nPATH= g:")));
    EXPECT_EQ(On.Tree->NodeText(Path(3)), L"due righe") << "a node shows one line";
    EXPECT_EQ(TextOf(StoredPath(3), L"Caption"), L"due\nrighe");
    EXPECT_EQ(Paths(), (Ids{41, 42, 43}));
}

TEST_F(MailGroup, APathIsNeededUnderTheCheck) {
    for (const wchar_t* const Given : {L"", L"CAPTION= x", L"CAPTION= x\r\nPATH=", L"PATH= \"\""}) {
        SCOPED_TRACE(Narrow(Given));
        ASSERT_TRUE(Accepted(On.Put(Path(2), L"CAPTION= prima\r\nPATH= h:")));
        EXPECT_TRUE(Refused(On.Put(Path(2), Given), 20000, L"diMailGroup.SaveBackups", kNoPath, 0));
        EXPECT_EQ(On.Tree->NodeText(Path(2)), L"prima");
        EXPECT_EQ(TextOf(StoredPath(2), L"Path"), L"h:");
        ASSERT_TRUE(Accepted(On.Put(Path(2), Given, false)));
        EXPECT_EQ(TextOf(StoredPath(2), L"Path"), L"");
    }
    EXPECT_EQ(TextOf(StoredPath(1), L"Path"), L"D:\\Copie\\Notte");
}

TEST_F(MailGroup, RefusalsOfAPath) {
    ExpectRefusals(On, Path(1), L"diMailGroup.SaveBackups",
                   {
                       {L"PATH= A\r\nPATH= B", L"Ripetizone del parametro PATH=.", 2},
                       {L"CAPTION= A\r\nCAPTION= B", L"Ripetizone del parametro CAPTION=.", 2},
                       {L"path= A", L"Parametro non riconosciuto: path=A", 1},
                       {L"PATH= A\r\nLANG= ITA", L"Parametro non riconosciuto: LANG=ITA", 2},
                       {L"PATH= A\r\nNAME= B", L"Parametro non riconosciuto: NAME=B", 2},
                   });
    EXPECT_TRUE(Refused(On.Put(L"PATHS", L"PATH= x"), 9, L"diMailGroup.SaveData",
                        L"Indice non compreso nell'intervallo"))
        << "the folder is none of the paths";
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(MailGroup, ATextGoesIntoNoPathFromAnotherNode) {
    const std::wstring Before = On.Picture();
    const std::wstring Text = On.Text(Path(1));
    for (const std::wstring& Item : {std::wstring(L"ROOT"), On.Leaf(L"PARMS")}) {
        std::wstring Given = L"CAPTION= \"X\"\r\nPATH= \"Y\"\r\n";
        std::wstring Made;
        EXPECT_TRUE(Refused(On.Try([&] {
            return On.Core.SaveData({.CurrItem = Item, .CurrFolder = L"PATHS", .Key = L"PATHS"}, Given, Made);
        }),
                            9, L"diMailGroup.SaveData", L"Indice non compreso nell'intervallo"));
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(On.Text(Path(1)), Text);
}

TEST_F(MailGroup, ANewPathGoesLast) {
    for (const std::wstring& Selected : {std::wstring(L"PATHS"), Path(1)}) {
        On.Tree->MarkModified(false);
        const std::size_t Count = KeysBelow(On, L"PATHS").size();
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Selected, Made)));
        EXPECT_EQ(Made, Path(Count + 1));
        EXPECT_TRUE(Made.starts_with(L"PATHS "));
        EXPECT_EQ(On.Tree->NodeText(Made), L"");
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(On.Text(Made), L"CAPTION= \"\"\r\nPATH= \"\"\r\n");
        EXPECT_EQ(Paths().size(), Count + 1);
        EXPECT_NE(Paths().back(), 0);
    }
}

TEST_F(MailGroup, PathsMove) {
    const std::wstring Old = Path(3);
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_FALSE(On.Tree->HasNode(Old));
    EXPECT_EQ(Made, Path(2)) << "before its neighbour";
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Paths(), (Ids{41, 43, 42}));
    ASSERT_TRUE(Accepted(MoveAt(On, Path(1), 0, Made)));
    EXPECT_EQ(Made, Path(2)) << "behind it";
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_EQ(On.Tree->NodeText(Made), L"[ITA] Ogni notte, tutti gli archivi");
    EXPECT_EQ(Paths(), (Ids{43, 41, 42}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Path(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Path(3), -1, Made)));
    EXPECT_TRUE(Accepted(MoveAt(On, L"PATHS", 1, Made))) << "a folder does not move";
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Paths(), (Ids{43, 41, 42}));
}

TEST_F(MailGroup, OneOrAllPathsAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Path(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Paths(), (Ids{41, 43}));
    EXPECT_TRUE(Refused(On.Try([&] {
        return On.Core.DeleteData({.CurrItem = L"PATHS", .Index = 3, .Key = L"PATHS"}, false);
    }),
                        9, L"diMailGroup.DeleteData", L"Indice non compreso nell'intervallo"));
    EXPECT_FALSE(On.Tree->Modified());
    ASSERT_TRUE(Accepted(DeleteAt(On, L"PATHS", true)));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Paths(), Ids{});
    EXPECT_TRUE(KeysBelow(On, L"PATHS").empty());
}

// The object.

TEST_F(MailGroup, Export) { EXPECT_TRUE(MatchesGolden("export/MAILGROUP.txt", On.Exported())); }

TEST_F(MailGroup, SaveAndReload) {
    for (const Section& Each : kSections)
        ASSERT_TRUE(
            Accepted(On.Put(On.Leaf(Each.Word), std::wstring(Each.Keywords.back().Word) + L" 1", false)));
    EXPECT_FALSE(On.Object->Written()) << "nothing reaches the stored object before the save";
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"MAILGROUP", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
    EXPECT_EQ(Again.Exported(), On.Exported());
}

TEST_F(MailGroup, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"BACKUP", L"FIELDS", L"paths"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Path(1), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Path(1), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = L"PATHS"}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_TRUE(On.Tree->Served().empty());
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"MAILGROUP");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Backups").size(), 3U);
    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users); })));
    EXPECT_EQ(Name + L"/" + Id + L"/" + Clsid, L"PROVA/7/MAILGROUP");
    EXPECT_EQ(Version, 3);
}

TEST_F(MailGroup, WrapLines) {
    diMailGroup Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"PARMS"}, Buffer, true, {}, 0));
    EXPECT_EQ(Narrow(Buffer), "BEGIN PARMS\r\nSIZE= 101\r\nEND PARMS\r\n");
    Buffer.clear();
    const std::int32_t Third = 3;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"PATHS"}, Buffer, true, {&Third, 1}, 2));
    EXPECT_EQ(Narrow(Buffer),
              "\t\tBEGIN PATHS\r\n\t\t\tCAPTION= \"\"\r\n\t\t\tPATH= \"e:\"\r\n\t\tEND PATHS\r\n");
    Buffer.clear();
    const std::int32_t Beyond = 9;
    EXPECT_TRUE(Item.DispData({.Index = 1, .Key = L"PATHS"}, Buffer, true, {&Beyond, 1}, 1));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diMailGroup.DispBackups");
    EXPECT_EQ(Buffer.find(L"END"), std::wstring::npos);
    CoreUtil::Instance().ForgetError();
}

TEST_F(MailGroup, ANodeThatCannotBeMadeIsToldByItsMaker) {
    const auto Tree = std::make_shared<RefusingTree>();
    diMailGroup Item;
    Item.DesignTree() = Tree;
    const auto Told = [] {
        const std::wstring Source = CoreUtil::Instance().LastError().Source;
        CoreUtil::Instance().ForgetError();
        return Source;
    };
    Tree->Refused = L"PATHS ";
    EXPECT_TRUE(Item.LoadData(*On.Object));
    EXPECT_EQ(Told(), L"diMailGroup.SetNode");
    Tree->Refused = L"QUERY";
    EXPECT_TRUE(Item.LoadData(*On.Object));
    EXPECT_EQ(Told(), L"diMailGroup.LoadData");
    Tree->Refused.clear();
    ASSERT_FALSE(Item.LoadData(*On.Object));
    Tree->Refused = L"PATHS ";
    std::wstring Made;
    EXPECT_TRUE(Item.EditData({.CurrFolder = L"PATHS", .CurrItem = L"PATHS", .Key = L"PATHS"}, Made));
    EXPECT_EQ(Told(), L"diMailGroup.SetNode");
    EXPECT_EQ(Tree->CountBelow(L"PATHS"), 3);
    MemoryRegData Saved(L"MAILGROUP");
    ASSERT_FALSE(Item.Save(Saved));
    EXPECT_EQ(ListOf(Saved.Read(), L"Backups").size(), 3U) << "an element without a node goes out again";
}

}  // namespace
}  // namespace kv::test
