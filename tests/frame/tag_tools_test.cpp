// The tag tools: free tags, renumbering, the check for repeats and the module of constants.
#include <gtest/gtest.h>

#include "frame/ParmList.h"
#include "frame/TagTools.h"
#include "frame/vdbInclude.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

struct Tagged {
    std::wstring Name;
    std::int32_t Tag = 0;
    std::int32_t GroupTag = 0;
    std::int32_t Level = 1;
};
struct Ungrouped {
    std::wstring Name;
    std::int32_t Tag = 0;
};

template <class Each>
ParmList<Each> ListOf(std::initializer_list<Each> Elements) {
    ParmList<Each> Made;
    for (const Each& One : Elements) Made.Add(One);
    return Made;
}
ParmList<Tagged> Tags(std::initializer_list<std::int32_t> Numbers) {
    ParmList<Tagged> Made;
    for (const std::int32_t Number : Numbers)
        Made.Add({.Name = L"F" + std::to_wstring(Number), .Tag = Number});
    return Made;
}

class TagTools : public FrameTest {
  protected:
    std::vector<std::wstring> Free(ParmList<Tagged> Fields) {
        Platform.Listed.clear();
        EXPECT_TRUE(Succeeds(FindFreeTags(L"TABLE", TagFieldsOf(Fields))));
        EXPECT_EQ(Platform.Listed.size(), 1U);
        return Platform.Listed.empty() ? std::vector<std::wstring>{} : Platform.Listed.front();
    }
    // Tag and group tag of each, after the operator's yes.
    std::vector<std::pair<std::int32_t, std::int32_t>> Renumbered(ParmList<Tagged> Fields) {
        Platform.Answers = {Answer::Yes};
        bool Changed = false;
        EXPECT_TRUE(Succeeds(RenumTags(L"TABLE", TagFieldsOf(Fields), Changed)));
        EXPECT_TRUE(Changed);
        std::vector<std::pair<std::int32_t, std::int32_t>> Found;
        for (std::int32_t I = 1; I <= Fields.Count(); ++I)
            Found.emplace_back(Fields.Item(I).Tag, Fields.Item(I).GroupTag);
        return Found;
    }
    using Pairs = std::vector<std::pair<std::int32_t, std::int32_t>>;
    using Words = std::vector<std::wstring>;
};

TEST_F(TagTools, TheNewTagIsTheLargestPlusOne) {
    EXPECT_EQ(GetFreeTag(Tags({})), 1);
    EXPECT_EQ(GetFreeTag(Tags({1})), 2);
    EXPECT_EQ(GetFreeTag(Tags({1, 2, 5})), 6);
    EXPECT_EQ(GetFreeTag(Tags({5, 2, 1})), 6);
    EXPECT_EQ(GetFreeTag(Tags({0, -4})), 1);
    EXPECT_EQ(GetFreeTag(Tags({2147483647})), 0);
    EXPECT_TRUE(StoreTells({6, L"vdbcModule.GetFreeTag", L"Overflow"}));
}

TEST_F(TagTools, FreeTagsAreListedInRuns) {
    EXPECT_EQ(Free(Tags({1, 2, 5})), (Words{L"3 - 4", L"6 - 32767"}));
    EXPECT_EQ(Free(Tags({})), (Words{L"1 - 32767"}));
    EXPECT_EQ(Free(Tags({5, 1, 2})), (Words{L"3 - 4", L"6 - 32767"}));
    EXPECT_EQ(Free(Tags({2, 4})), (Words{L"1", L"3", L"5 - 32767"}));
    EXPECT_EQ(Free(Tags({3, 3})), (Words{L"1 - 2", L"4 - 32767"}));
    EXPECT_EQ(Free(Tags({32766})), (Words{L"1 - 32765", L"32767"}));
    EXPECT_EQ(Free(Tags({32767})), (Words{L"1 - 32766"}));
    EXPECT_EQ(Free(Tags({0, -3, 32768, 40000, 2})), (Words{L"1", L"3 - 32767"}));
    ParmList<Tagged> All;
    for (std::int32_t Tag = 1; Tag <= 32767; ++Tag) All.Add({.Name = L"F", .Tag = Tag});
    EXPECT_EQ(Free(All), Words{});
}

TEST_F(TagTools, TheListIsShownBehindTheWaitCursor) {
    static_cast<void>(Free(Tags({1})));
    EXPECT_EQ(Platform.Asked, (Words{L"Tag disponibili"}));
    EXPECT_EQ(Platform.Pointers, (std::vector<std::int32_t>{11, 0}));
}

TEST_F(TagTools, OtherClassesAreTold) {
    ParmList<Tagged> Fields = Tags({9});
    const TagFields Seen = TagFieldsOf(Fields);
    Platform.SavePath = (Platform.Folder / "X.BAS").wstring();
    bool Changed = true;
    for (const wchar_t* Class : {L"SORT", L"", L"table", L"STEM"}) {
        Platform.Asked.clear();
        Platform.Styles.clear();
        EXPECT_TRUE(Succeeds(FindFreeTags(Class, Seen)));
        EXPECT_TRUE(Succeeds(RenumTags(Class, Seen, Changed)));
        EXPECT_TRUE(Succeeds(ExportFieldsToConsts(Class, Seen)));
        EXPECT_EQ(Platform.Asked, Words(3, L"Funzione non disponibile per questo oggetto."));
        EXPECT_EQ(Platform.Styles, std::vector<std::int32_t>(3, 0));
    }
    EXPECT_FALSE(Changed);
    EXPECT_EQ(Fields.Item(1).Tag, 9);
    EXPECT_TRUE(Platform.Listed.empty());
    EXPECT_TRUE(Platform.FileQuestions.empty());
    EXPECT_TRUE(Platform.Pointers.empty());
    Platform.Asked.clear();
    for (const wchar_t* Class : {L"PROFILE", L"TABLE", L"IMPORTPROC"}) {
        EXPECT_TRUE(Succeeds(FindFreeTags(Class, Seen)));
        EXPECT_TRUE(Succeeds(RenumTags(Class, Seen, Changed)));
        EXPECT_TRUE(Succeeds(ExportFieldsToConsts(Class, Seen)));
    }
    EXPECT_EQ(Platform.Listed.size(), 3U);
    EXPECT_EQ(Platform.FileQuestions.size(), 3U);
    EXPECT_EQ(Platform.Asked, (Words{L"Tag disponibili", L"Confermi la rinumerazione dei Tag?",
                                     L"Tag disponibili", L"Confermi la rinumerazione dei Tag?",
                                     L"Tag disponibili", L"Confermi la rinumerazione dei Tag?"}));
}

TEST_F(TagTools, RenumberingAsksWithNoAsDefault) {
    ParmList<Tagged> Fields = Tags({9, 4});
    bool Changed = true;
    for (const Answer Given : {Answer::No, Answer::Cancel}) {
        Platform.Answers = {Given};
        EXPECT_TRUE(Succeeds(RenumTags(L"TABLE", TagFieldsOf(Fields), Changed)));
        EXPECT_FALSE(Changed);
        EXPECT_EQ(Fields.Item(1).Tag, 9);
    }
    EXPECT_TRUE(Succeeds(RenumTags(L"TABLE", TagFieldsOf(Fields), Changed)));
    EXPECT_FALSE(Changed);
    EXPECT_EQ(Platform.Styles, std::vector<std::int32_t>(3, 4 + 32 + 256));
    EXPECT_TRUE(Platform.Pointers.empty());
    Platform.Answers = {Answer::Yes};
    EXPECT_TRUE(Succeeds(RenumTags(L"TABLE", TagFieldsOf(Fields), Changed)));
    EXPECT_TRUE(Changed);
    EXPECT_EQ(Fields.Item(1).Tag, 1);
    EXPECT_EQ(Fields.Item(2).Tag, 2);
    EXPECT_EQ(Platform.Pointers, (std::vector<std::int32_t>{11, 0}));
}

TEST_F(TagTools, GroupTagsFollow) {
    EXPECT_EQ(
        Renumbered(ListOf<Tagged>({{L"A", 10, 0, 1},
                                   {L"B", 20, 20, 1},
                                   {L"C", 30, 20, 2},
                                   {L"D", 40, 20, 2},
                                   {L"E", 50, 40, 3},
                                   {L"F", 60, 20, 2},
                                   {L"G", 70, 60, 3},
                                   {L"H", 80, 0, 2},
                                   {L"I", 90, 60, 3},
                                   {L"J", 95, 95, 1},
                                   {L"K", 99, 95, 2}})),
        (Pairs{{1, 0}, {2, 2}, {3, 2}, {4, 2}, {5, 4}, {6, 2}, {7, 6}, {8, 0}, {9, 6}, {10, 10}, {11, 10}}));
}

TEST_F(TagTools, AMemberBeforeAnyHeadHasNoGroup) {
    EXPECT_EQ(Renumbered(ListOf<Tagged>({{L"A", 5, 9, 2}})), (Pairs{{1, 0}}));
    EXPECT_EQ(Renumbered(ListOf<Tagged>({{L"A", 5, 9, 3}, {L"B", 6, 6, 1}, {L"C", 7, 6, 2}})),
              (Pairs{{1, 0}, {2, 2}, {3, 2}}));
}

TEST_F(TagTools, AHeadClosesTheGroupsBelow) {
    EXPECT_EQ(Renumbered(ListOf<Tagged>(
                  {{L"A", 1, 1, 1}, {L"B", 2, 1, 2}, {L"C", 3, 2, 3}, {L"D", 4, 4, 1}, {L"E", 5, 4, 2}})),
              (Pairs{{1, 1}, {2, 1}, {3, 2}, {4, 4}, {5, 4}}));
    EXPECT_EQ(Renumbered(Tags({7, 7, 7})), (Pairs{{1, 0}, {2, 0}, {3, 0}}));
}

TEST_F(TagTools, FieldsWithoutGroupsAreRenumberedToo) {
    ParmList<Ungrouped> Fields = ListOf<Ungrouped>({{L"A", 5}, {L"B", 5}});
    Platform.Answers = {Answer::Yes};
    bool Changed = false;
    EXPECT_TRUE(Succeeds(RenumTags(L"IMPORTPROC", TagFieldsOf(Fields), Changed)));
    EXPECT_EQ(Fields.Item(2).Tag, 2);
}

TEST_F(TagTools, RepeatsAreToldByTheirFirstBearer) {
    const auto Told = [](const ParmList<Tagged>& Fields) {
        std::wstring Text;
        try {
            CheckTags(Fields);
        } catch (const Failure& Raised) {
            EXPECT_EQ(Raised.Error().Number, 20000);
            Text = Raised.Error().Description;
        }
        return Text;
    };
    EXPECT_EQ(Told(Tags({})), L"");
    EXPECT_EQ(Told(Tags({1, 2, 3})), L"");
    EXPECT_EQ(Told(ListOf<Tagged>({{L"A", 7}, {L"B", 7}})), L"Tag duplicato: 7\r\nA=B");
    EXPECT_EQ(Told(ListOf<Tagged>({{L"A", 1}, {L"B", 2}, {L"C", 3}, {L"D", 2}, {L"E", 1}})),
              L"Tag duplicato: 2\r\nB=D");
    EXPECT_EQ(Told(ListOf<Tagged>({{L"A", 99999}, {L"B", 0}, {L"C", 99999}})),
              L"Tag duplicato: 99999\r\nA=C");
    EXPECT_EQ(Told(Tags({1, 11, 111, 1111, 11111, 2, 12})), L"");
}

class Constants : public TagTools {
  protected:
    const std::filesystem::path File = Platform.Folder / "Costanti.bas";
    bool Write(ParmList<Tagged> Fields) {
        Platform.SavePath = File.wstring();
        return ExportFieldsToConsts(L"TABLE", TagFieldsOf(Fields));
    }
};

TEST_F(Constants, OneLineAField) {
    EXPECT_TRUE(Succeeds(Write(ListOf<Tagged>(
        {{L"TITOLO", 1}, {L"DUE  PAROLE ", 200}, {L"È PERÒ €", 32767}, {L"", 0}, {L"Δ", -1}}))));
    EXPECT_EQ(ReadFile(File),
              "Public Const FTG_TITOLO=1\r\n"
              "Public Const FTG_DUE__PAROLE_=200\r\n"
              "Public Const FTG_\xC8_PER\xD2_\x80=32767\r\n"
              "Public Const FTG_=0\r\n"
              "Public Const FTG_?=-1\r\n");
}

TEST_F(Constants, TheDialogIsTheSaveDialog) {
    EXPECT_TRUE(Succeeds(Write({})));
    ASSERT_EQ(Platform.FileQuestions.size(), 1U);
    EXPECT_EQ(Platform.FileQuestions[0].Title, L"File di uscita");
    EXPECT_EQ(Platform.FileQuestions[0].Filter, L"Moduli VB|*.BAS|Tutti i file|*.*");
    EXPECT_EQ(Platform.FileQuestions[0].FilterIndex, 1);
    EXPECT_EQ(Platform.FileQuestions[0].Flags, 2664450);
    EXPECT_TRUE(std::filesystem::exists(File));
    EXPECT_EQ(ReadFile(File), "");
}

TEST_F(Constants, AFileThatExistsIsReplaced) {
    WriteFile(File, std::string(1000, 'x'));
    EXPECT_TRUE(Succeeds(Write(Tags({3}))));
    EXPECT_EQ(ReadFile(File), "Public Const FTG_F3=3\r\n");
}

TEST_F(Constants, ACancelledDialogEndsItSilently) {
    ParmList<Tagged> Fields = Tags({3});
    EXPECT_TRUE(Succeeds(ExportFieldsToConsts(L"TABLE", TagFieldsOf(Fields))));
    EXPECT_EQ(Platform.FileQuestions.size(), 1U);
    EXPECT_TRUE(Platform.Asked.empty());
    EXPECT_TRUE(std::filesystem::is_empty(Platform.Folder));
}

TEST_F(Constants, AFileThatCannotBeMadeIsRefused) {
    for (const std::filesystem::path& Bad : {Platform.Folder, Platform.Folder / "manca" / "X.BAS"}) {
        const std::wstring Path = Bad.wstring();
        FileNumber Number;
        const std::int32_t Expected = OpenFile(Path, 148, 16, 0, Number);
        EXPECT_NE(Expected, 0);
        Platform.SavePath = Path;
        ParmList<Tagged> Fields = Tags({3});
        const std::wstring Text = L"Impossibile creare il file " + Path;
        EXPECT_TRUE(FailsWith(
            ExportFieldsToConsts(L"TABLE", TagFieldsOf(Fields)),
            {.Number = Expected, .Source = L"vdbcModule.ExportFieldsToConsts", .Description = Text}));
    }
}

}  // namespace
}  // namespace kv::test
