// The one road of failures: what is raised, who reports it, what the store keeps and what is shown.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <new>
#include <stdexcept>
#include <vector>

#include "frame/Words.h"
#include "frame/vdbInclude.h"
#include "frame/vdbcModule.h"
#include "tests/frame/FakeTree.h"
#include "tests/frame/PlainItem.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

class FailureRoad : public FrameTest {
  protected:
    CoreUtil& Core = CoreUtil::Instance();
};

KvError Six(std::int32_t Number, std::wstring_view Source, std::wstring_view Description,
            std::wstring_view HelpFile, std::wstring_view HelpContext, std::int32_t LastDLLError) {
    KvError Error;
    Error.Number = Number;
    Error.Source = Source;
    Error.Description = Description;
    Error.HelpFile = HelpFile;
    Error.HelpContext = HelpContext;
    Error.LastDLLError = LastDLLError;
    return Error;
}

/// Arguments of which only one is given.
template <class Member, class Value>
ErrorArguments Only(Member Place, Value Given) {
    ErrorArguments Arguments;
    Arguments.*Place = Given;
    return Arguments;
}

const KvError kPending = Six(77, L"below.Proc", L"pending text", L"pending.hlp", L"12", 2);

// ---- raising and trapping

TEST_F(FailureRoad, ACheckRaisesNumber20000WithADescriptionOnly) {
    try {
        Raise(L"Il testo.");
        FAIL() << "nothing was raised";
    } catch (const Failure& Raised) {
        EXPECT_TRUE(Tells(Raised.Error(), {.Number = 20000, .Description = L"Il testo."}));
    }
    EXPECT_TRUE(Core.LastError().Empty()) << "the store is the trap's business";
}

TEST_F(FailureRoad, TheTrapReportsUnderItsSourceAndAnswersTrue) {
    EXPECT_TRUE(FailsWith(Trap(L"diProva.SaveParm", []() -> bool { Raise(L"Il testo."); }),
                          {.Number = 20000, .Source = L"diProva.SaveParm", .Description = L"Il testo."}));
    EXPECT_TRUE(
        FailsWith(Trap(L"a.b", []() -> bool { Raise(12345, L"Altro", L"65536"); }),
                  {.Number = 12345, .Source = L"a.b", .Description = L"Altro", .HelpFile = L"65536"}));
    EXPECT_TRUE(FailsWith(Trap(L"a.b", []() -> bool { Raise(L""); }), {.Number = 20000, .Source = L"a.b"}));
}

TEST_F(FailureRoad, TheTrapPassesTheAnswerOfItsBodyOn) {
    EXPECT_TRUE(Succeeds(Trap(L"a.b", [] { return false; })));
    EXPECT_TRUE(Trap(L"a.b", [] { return true; }));
    EXPECT_TRUE(Core.LastError().Empty()) << "a failure that was not raised tells nothing";
}

TEST_F(FailureRoad, EveryOtherExceptionGoesDownTheSameRoad) {
    const struct {
        const char* What;
        std::function<void()> Throw;
        std::int32_t Number;
    } kRows[] = {
        {"bad_alloc", [] { throw std::bad_alloc(); }, 7},
        {"bad_array_new_length", [] { throw std::bad_array_new_length(); }, 7},
        {"out_of_range", [] { throw std::out_of_range("x"); }, 9},
        {"overflow_error", [] { throw std::overflow_error("x"); }, 6},
        {"runtime_error", [] { throw std::runtime_error("x"); }, 5},
        {"logic_error", [] { throw std::logic_error("x"); }, 5},
        {"filesystem_error", [] { throw std::filesystem::filesystem_error("x", std::error_code()); }, 5},
        {"no exception class", [] { throw 1; }, 5},
        {"fault 5", [] { RaiseFault(fault::kInvalidCall); }, 5},
        {"fault 6", [] { RaiseFault(fault::kOverflow); }, 6},
        {"fault 7", [] { RaiseFault(fault::kOutOfMemory); }, 7},
        {"fault 9", [] { RaiseFault(fault::kSubscript); }, 9},
        {"fault 53", [] { RaiseFault(fault::kFileNotFound); }, 53},
        {"fault 58", [] { RaiseFault(fault::kFileExists); }, 58},
        {"fault 62", [] { RaiseFault(fault::kReadPastEnd); }, 62},
        {"fault 75", [] { RaiseFault(fault::kFileAccess); }, 75},
        {"fault 91", [] { RaiseFault(fault::kNoObject); }, 91},
        {"fault 457", [] { RaiseFault(fault::kKeyTaken); }, 457},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.What);
        EXPECT_TRUE(Trap(L"diProva.Save", [&]() -> bool {
            Row.Throw();
            return false;
        }));
        EXPECT_EQ(Core.LastError().Number, Row.Number);
        EXPECT_EQ(Core.LastError().Source, L"diProva.Save");
        EXPECT_FALSE(Core.LastError().Description.empty()) << "a number and a text of its own";
        EXPECT_EQ(Core.LastError().Line, 0);
        EXPECT_TRUE(Core.Pending().Empty()) << "the pending error is cleared";
        Core.ForgetError();
    }
}

TEST_F(FailureRoad, TheOverflowFaultIsSix) {
    EXPECT_TRUE(FailsWith(Trap(L"a.b", []() -> bool { RaiseFault(fault::kOverflow); }),
                          {.Number = 6, .Source = L"a.b", .Description = L"Overflow"}));
    EXPECT_TRUE(FailsWith(Trap(L"a.b", []() -> bool { throw std::overflow_error("x"); }),
                          {.Number = 6, .Source = L"a.b", .Description = L"Overflow"}));
}

TEST_F(FailureRoad, TheInnermostSourceIsWhatTheOperatorSees) {
    const bool Failed = Trap(L"outer.A", [] {
        return Trap(L"middle.B", [] {
            if (Trap(L"inner.C", []() -> bool { Raise(L"Sotto."); })) return true;
            return false;
        });
    });
    EXPECT_TRUE(FailsWith(Failed, {.Number = 20000, .Source = L"inner.C", .Description = L"Sotto."}));
    EXPECT_TRUE(Platform.Shown.empty()) << "a trap shows nothing";
}

TEST_F(FailureRoad, ARaiseWithNoTrapBelowIsReportedByTheNextOne) {
    CheckParmOnce(L"PATH=");
    EXPECT_TRUE(FailsWith(Trap(L"diProva.SaveParm",
                               [] {
                                   CheckParmOnce(L"PATH=");
                                   return false;
                               }),
                          {.Number = 20000,
                           .Source = L"diProva.SaveParm",
                           .Description = L"Ripetizone del parametro PATH=.",
                           .HelpFile = L"65536"}));
}

TEST_F(FailureRoad, ALaterFailureOverwritesTheStoredOne) {
    EXPECT_TRUE(Trap(L"a.A", []() -> bool { Raise(9, L"Primo", L"h"); }));
    EXPECT_TRUE(FailsWith(Trap(L"b.B", []() -> bool { Raise(L"Secondo"); }),
                          {.Number = 20000, .Source = L"b.B", .Description = L"Secondo"}));
}

TEST_F(FailureRoad, TheTrapOfAParserKeepsTheLine) {
    SectionText Text(L"A=1\r\n'commento\r\n\r\nB=2");
    std::wstring_view Keyword;
    std::wstring_view Value;
    EXPECT_TRUE(FailsWith(Trap(L"x.y", Text, []() -> bool { Raise(L"Prima."); }),
                          {.Number = 20000, .Source = L"x.y", .Description = L"Prima.", .Line = 0}));
    for (std::int32_t Line = 1; Line <= 4; ++Line) {
        const bool Failed = Trap(L"x.y", Text, [&]() -> bool {
            if (GetFieldValue(Text, Keyword, Value)) return true;
            Raise(L"Qui.");
        });
        EXPECT_TRUE(
            FailsWith(Failed, {.Number = 20000, .Source = L"x.y", .Description = L"Qui.", .Line = Line}));
    }
    Text.EndOfLines();
    EXPECT_TRUE(FailsWith(Trap(L"x.y", Text, []() -> bool { Raise(L"Alla fine."); }),
                          {.Number = 20000, .Source = L"x.y", .Description = L"Alla fine.", .Line = 0}));
}

// ---- the reporter

TEST_F(FailureRoad, WithoutArgumentsThePendingErrorGoesToTheStore) {
    Core.Pending() = kPending;
    std::int32_t Flags = 0;
    EXPECT_TRUE(ReportError({}, Flags));
    EXPECT_TRUE(Core.Pending().Empty());
    EXPECT_TRUE(StoreTells({77, L"below.Proc", L"pending text", 0, L"pending.hlp", L"12", 2}));
}

TEST_F(FailureRoad, EachArgumentReplacesItsPendingValueAlone) {
    const struct {
        const char* What;
        ErrorArguments Given;
        Told Expected;
    } kRows[] = {
        {"number",
         Only(&ErrorArguments::Number, 5),
         {5, L"below.Proc", L"pending text", 0, L"pending.hlp", L"12", 2}},
        {"number 0",
         Only(&ErrorArguments::Number, 0),
         {0, L"below.Proc", L"pending text", 0, L"pending.hlp", L"12", 2}},
        {"source",
         Only(&ErrorArguments::Source, L"x.y"),
         {77, L"x.y", L"pending text", 0, L"pending.hlp", L"12", 2}},
        {"empty source",
         Only(&ErrorArguments::Source, L""),
         {77, L"", L"pending text", 0, L"pending.hlp", L"12", 2}},
        {"description",
         Only(&ErrorArguments::Description, L"new"),
         {77, L"below.Proc", L"new", 0, L"pending.hlp", L"12", 2}},
        {"empty description",
         Only(&ErrorArguments::Description, L""),
         {77, L"below.Proc", L"", 0, L"pending.hlp", L"12", 2}},
        {"help file",
         Only(&ErrorArguments::HelpFile, L"f"),
         {77, L"below.Proc", L"pending text", 0, L"f", L"12", 2}},
        {"help context",
         Only(&ErrorArguments::HelpContext, L"c"),
         {77, L"below.Proc", L"pending text", 0, L"pending.hlp", L"c", 2}},
        {"system error",
         Only(&ErrorArguments::LastDLLError, 13),
         {77, L"below.Proc", L"pending text", 0, L"pending.hlp", L"12", 13}},
        {"all", {1, L"s", L"d", L"f", L"c", 3}, {1, L"s", L"d", 0, L"f", L"c", 3}},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.What);
        Core.Pending() = kPending;
        std::int32_t Flags = 0;
        EXPECT_TRUE(ReportError(Row.Given, Flags));
        EXPECT_TRUE(Core.Pending().Empty());
        EXPECT_TRUE(StoreTells(Row.Expected));
    }
}

TEST_F(FailureRoad, TheGivenDescriptionIsNotJoinedToThePendingOne) {
    Core.Pending() = kPending;
    std::int32_t Flags = 0;
    ReportError(Only(&ErrorArguments::Description, L"il testo dato"), Flags);
    EXPECT_EQ(Core.LastError().Description, L"il testo dato");
    EXPECT_EQ(Core.LastError().Description.find(L"pending"), std::wstring::npos);
    EXPECT_EQ(Core.LastError().Description.find(L"("), std::wstring::npos);
}

TEST_F(FailureRoad, EachFlagBitAlone) {
    const std::wstring SystemText = Core.SystemText(2);
    ASSERT_FALSE(SystemText.empty());
    const std::wstring Appended = L"pending text\r\n" + SystemText;
    const std::wstring Given = L"given\r\n" + SystemText;
    const struct {
        std::int32_t Flags;
        bool AsGiven;
        bool System;
    } kRows[] = {{0, false, false},    {1, false, false},    {2, false, true},   {3, false, true},
                 {4, true, false},     {8, true, false},     {12, true, false},  {2 | 4, true, false},
                 {2 | 8, true, false}, {1 | 4, true, false}, {16, false, false}, {0x4000, false, false},
                 {0x4002, false, true}};
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.Flags);
        for (const bool WithText : {false, true}) {
            Core.Pending() = kPending;
            ErrorArguments Arguments = Only(&ErrorArguments::Source, L"x.y");
            if (WithText) Arguments.Description = L"given";
            std::int32_t Flags = Row.Flags;
            EXPECT_TRUE(ReportError(Arguments, Flags));
            EXPECT_EQ(Flags, Row.Flags) << "the caller's flags stay";
            EXPECT_EQ(Core.LastFlags(), Row.Flags) << "the store has them untouched";
            if (Row.AsGiven) {
                EXPECT_EQ(Core.Pending().Description, kPending.Description) << "not read, not cleared";
                EXPECT_EQ(Core.Pending().Number, 77);
                EXPECT_TRUE(
                    Tells(Core.LastError(), {.Source = L"x.y", .Description = WithText ? L"given" : L""}));
            } else {
                EXPECT_TRUE(Core.Pending().Empty());
                const std::wstring Text = Row.System ? (WithText ? Given : Appended)
                                                     : std::wstring(WithText ? L"given" : L"pending text");
                EXPECT_TRUE(Tells(Core.LastError(), {77, L"x.y", Text, 0, L"pending.hlp", L"12", 2}));
            }
            Core.ForgetError();
        }
    }
}

TEST_F(FailureRoad, TheSystemTextIsThatOfTheErrorAfterTheOverlay) {
    Core.Pending() = kPending;
    std::int32_t Flags = 2;
    ErrorArguments Arguments = Only(&ErrorArguments::Source, L"x.y");
    Arguments.LastDLLError = 13;
    ReportError(Arguments, Flags);
    const std::wstring Text = L"pending text\r\n" + Core.SystemText(13);
    EXPECT_NE(Core.SystemText(13), Core.SystemText(2));
    EXPECT_TRUE(StoreTells({77, L"x.y", Text, 0, L"pending.hlp", L"12", 13}));

    ReportError(Only(&ErrorArguments::Number, 1), Flags);
    const std::wstring Alone = L"\r\n" + Core.SystemText(0);
    EXPECT_TRUE(StoreTells({.Number = 1, .Description = Alone}));
}

TEST_F(FailureRoad, PassedThroughArgumentsGoUnchanged) {
    for (const std::int32_t Bit : {4, 8}) {
        Core.Pending() = kPending;
        std::int32_t Flags = Bit;
        ReportError({65535, L"s", L"d", L"f", L"c", 3}, Flags);
        EXPECT_TRUE(StoreTells({65535, L"s", L"d", 0, L"f", L"c", 3}));
        EXPECT_EQ(Core.Pending().Number, 77);
    }
}

TEST_F(FailureRoad, APendingNumber65535CountsAsZero) {
    Core.Pending() = Six(65535, L"", L"testo", L"", L"", 0);
    std::int32_t Flags = 0;
    ReportError(Only(&ErrorArguments::Source, L"x.y"), Flags);
    EXPECT_TRUE(StoreTells({.Number = 0, .Source = L"x.y", .Description = L"testo"}));
    EXPECT_TRUE(FailsWith(Trap(L"x.y", []() -> bool { Raise(65535, L"testo"); }),
                          {.Number = 0, .Source = L"x.y", .Description = L"testo"}));
    for (const std::int32_t Number : {65534, 65536, -1, 1}) {
        EXPECT_TRUE(FailsWith(Trap(L"x.y", [&]() -> bool { Raise(Number, L"testo"); }),
                              {.Number = Number, .Source = L"x.y", .Description = L"testo"}));
    }
}

// ---- the store

TEST_F(FailureRoad, TheStoredErrorIsShownOnce) {
    EXPECT_TRUE(Trap(L"x.y", []() -> bool { Raise(L"Una volta."); }));
    EXPECT_TRUE(Platform.Shown.empty());
    Core.ShowLastError();
    ASSERT_EQ(Platform.Shown.size(), 1U);
    EXPECT_TRUE(Tells(Platform.Shown[0], {.Number = 20000, .Source = L"x.y", .Description = L"Una volta."}));
    Core.ShowLastError();
    EXPECT_EQ(Platform.Shown.size(), 1U);
    EXPECT_TRUE(Core.LastError().Empty());
}

TEST_F(FailureRoad, AnEmptyStoreShowsNothing) {
    Core.ShowLastError();
    EXPECT_TRUE(Platform.Shown.empty());
    EXPECT_TRUE(Trap(L"x.y", [] { return true; }));
    Core.ShowLastError();
    EXPECT_TRUE(Platform.Shown.empty());
}

TEST_F(FailureRoad, AnErrorWithATextAndNoNumberIsShown) {
    EXPECT_TRUE(Trap(L"x.y", []() -> bool { Raise(65535, L"Solo testo."); }));
    Core.ShowLastError();
    ASSERT_EQ(Platform.Shown.size(), 1U);
    EXPECT_TRUE(Tells(Platform.Shown[0], {.Source = L"x.y", .Description = L"Solo testo."}));
}

TEST_F(FailureRoad, FetchingTheLastErrorKeepsTheStore) {
    Core.ReportError(kPending, 1);
    for (int Round = 0; Round < 2; ++Round) {
        KvError Got = Six(-1, L"x", L"x", L"x", L"x", -1);
        Core.FetchLastError(Got.Number, Got.Source, Got.Description, Got.HelpFile, Got.HelpContext,
                            Got.LastDLLError);
        EXPECT_TRUE(Tells(Got, {77, L"below.Proc", L"pending text", 0, L"pending.hlp", L"12", 2}));
    }
    Core.ShowLastError();
    EXPECT_EQ(Platform.Shown.size(), 1U);
    KvError Empty = Six(-1, L"x", L"x", L"x", L"x", -1);
    Core.FetchLastError(Empty.Number, Empty.Source, Empty.Description, Empty.HelpFile, Empty.HelpContext,
                        Empty.LastDLLError);
    EXPECT_TRUE(Tells(Empty, {}));
}

TEST_F(FailureRoad, AStoredErrorTakesALineOnlyWhereItHasNone) {
    Core.NoteLine(4);
    EXPECT_TRUE(Core.LastError().Empty());
    EXPECT_EQ(Core.LastError().Line, 0) << "nothing is stored that could have a line";
    EXPECT_TRUE(Trap(L"x.y", []() -> bool { Raise(L"t"); }));
    Core.NoteLine(4);
    Core.NoteLine(9);
    EXPECT_TRUE(StoreTells({.Number = 20000, .Source = L"x.y", .Description = L"t", .Line = 4}));
}

// ---- a platform that fails

class BrokenPlatform final : public Platform {
  public:
    BrokenPlatform() : Before(CoreUtil::Instance().SetPlatform(this)) {}
    ~BrokenPlatform() override { CoreUtil::Instance().SetPlatform(Before); }
    void ShowError(const KvError&) override { throw std::runtime_error("no screen"); }
    Answer MessageBox(std::wstring_view, std::int32_t) override { throw std::runtime_error("no screen"); }
    std::optional<std::wstring> SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                         std::int32_t) override {
        throw std::runtime_error("no screen");
    }
    void ShowList(std::wstring_view, std::span<const std::wstring>) override { throw 1; }
    void Beep() override { throw std::runtime_error("no sound"); }
    void SetPointer(std::int32_t) override { throw std::runtime_error("no pointer"); }
    std::wstring ProgramFolder() override { throw std::runtime_error("no folder"); }
    std::wstring TempFolder() override { throw std::bad_alloc(); }

  private:
    Platform* const Before;
};

TEST_F(FailureRoad, APlatformThatFailsToShowLosesNothingElse) {
    const BrokenPlatform Broken;
    EXPECT_TRUE(Trap(L"x.y", []() -> bool { Raise(L"t"); }));
    Core.ShowLastError();
    EXPECT_TRUE(Core.LastError().Empty()) << "it was taken out of the store";
}

TEST_F(FailureRoad, APlatformWithoutFoldersFailsTheOperation) {
    const BrokenPlatform Broken;
    std::wstring Table = L"x";
    EXPECT_TRUE(DefaultSortLoad(Table));
    EXPECT_TRUE(Table.empty());
    EXPECT_EQ(Core.LastError().Source, L"vdbInclude.DefaultSortLoad");
    EXPECT_NE(Core.LastError().Number, 0);
    Core.ForgetError();

    EXPECT_TRUE(DefaultSortCreate());
    EXPECT_EQ(Core.LastError().Source, L"vdbInclude.DefaultSortCreate");
    Core.ForgetError();

    RegObject Target;
    std::wstring Name;
    std::wstring Path;
    EXPECT_TRUE(ClipboardLoad(Target, Name, Path, 1));
    EXPECT_EQ(Core.LastError().Source, L"vdbInclude.ClipboardLoad");
    EXPECT_EQ(Core.LastError().Number, 7);
    Core.ForgetError();

    EXPECT_TRUE(ClipboardStore(Target, Path));
    EXPECT_EQ(Core.LastError().Source, L"vdbInclude.ClipboardStore");
}

TEST_F(FailureRoad, ThePlainCaseBeepsForThePropertyTableAndElseDoesNothing) {
    PlainItem Item;
    EXPECT_FALSE(Item.ShowPropTable(L"PARMS", L"PARMS 1"));
    EXPECT_EQ(Platform.Beeps, 1);
    MemoryRegData Object(L"PROVA");
    std::wstring Text = L"testo";
    ClipItem Clipboard;
    EXPECT_FALSE(Item.ShowUsers({}));
    EXPECT_FALSE(Item.ImportData(Object, Text));
    EXPECT_FALSE(Item.TlbrButtonClick(L"FINDTAG", L"", L"", L""));
    EXPECT_FALSE(Item.PasteData({}, Text, Clipboard));
    EXPECT_EQ(Text, L"testo");
    EXPECT_FALSE(Object.Written());
    EXPECT_EQ(Platform.Beeps, 1);
    EXPECT_TRUE(Core.LastError().Empty());
}

TEST_F(FailureRoad, AnItemWithoutATreeFailsAsAFaultOfItsOwn) {
    const PlainItem Item;
    EXPECT_TRUE(Trap(L"x.y", [&] {
        static_cast<void>(Item.Tree());
        return false;
    }));
    EXPECT_EQ(Core.LastError().Number, 91);
    EXPECT_FALSE(Core.LastError().Description.empty());
}

TEST_F(FailureRoad, NothingEscapesAnOperationAlsoWhenTheBeepFails) {
    const BrokenPlatform Broken;
    PlainItem Item;
    bool Failed = false;
    EXPECT_NO_THROW(Failed = Item.ShowPropTable(L"PARMS", L"PARMS 1"));
    EXPECT_TRUE(Failed);
}

// ---- the strict switch and the value words

TEST_F(FailureRoad, SaveFlagsHoldTheTextOfTheSwitch) {
    SaveFlags List;
    List.Add(L"vecchio", L"ALTRO");
    EXPECT_TRUE(Succeeds(SetSaveFlags(List, true)));
    ASSERT_EQ(List.Count(), 1) << "the list is emptied first";
    EXPECT_TRUE(List.Exists(L"SYNTAXON"));
    EXPECT_EQ(List.Item(1), L"True");
    EXPECT_TRUE(StrictFlag(List));

    EXPECT_TRUE(Succeeds(SetSaveFlags(List, false)));
    ASSERT_EQ(List.Count(), 1);
    EXPECT_TRUE(List.Exists(L"SYNTAXON"));
    EXPECT_EQ(List.Item(1), L"False");
    EXPECT_FALSE(StrictFlag(List));
    EXPECT_TRUE(Succeeds(SetSaveFlags(List, true))) << "again on the same list";
}

TEST_F(FailureRoad, NothingButTheEntryDecidesStrictOrLax) {
    SaveFlags List;
    EXPECT_FALSE(StrictFlag(List));
    List.Add(L"True", L"ALTRO");
    List.Add(L"True");
    EXPECT_FALSE(StrictFlag(List));
    List.Add(L"True", L"SYNTAXON");
    EXPECT_TRUE(StrictFlag(List));
}

TEST_F(FailureRoad, BooleanWordsAreOfferedFalseFirst) {
    FakeTree Tree;
    EXPECT_TRUE(Succeeds(BooleanDefaults(Tree, L"PARMS", L"LOCKED=")));
    EXPECT_EQ(Tree.Offered, (std::vector<std::wstring>{L"PARMS LOCKED= FALSE", L"PARMS LOCKED= TRUE"}));
}

TEST_F(FailureRoad, BooleanWordsStopAtTheFirstRefusal) {
    FakeTree First;
    First.RefuseAt = 1;
    EXPECT_TRUE(BooleanDefaults(First, L"PARMS", L"LOCKED="));
    EXPECT_EQ(First.Offered.size(), 1U);
    FakeTree Second;
    Second.RefuseAt = 2;
    EXPECT_TRUE(BooleanDefaults(Second, L"PARMS", L"LOCKED="));
    EXPECT_EQ(Second.Offered.size(), 2U);
    FakeTree Broken;
    Broken.ThrowAt = 2;
    EXPECT_TRUE(BooleanDefaults(Broken, L"PARMS", L"LOCKED="));
    EXPECT_EQ(Core.LastError().Source, L"vdbcModule.BooleanDefaults");
}

TEST_F(FailureRoad, ChoicesAreOfferedRowByRow) {
    constexpr std::array<std::wstring_view, 2> kWords{L"UNO", L"DUE"};
    const Choice kRows[] = {{L"PARMS", L"A=", kWords}, {L"FIELDS", L"B=", kNoneOnly}, {L"X", L"C=", {}}};
    FakeTree Tree;
    EXPECT_FALSE(AddChoices(Tree, kRows));
    EXPECT_EQ(Tree.Offered, (std::vector<std::wstring>{L"PARMS A= UNO", L"PARMS A= DUE", L"FIELDS B= NONE"}));
    FakeTree Refusing;
    Refusing.RefuseAt = 2;
    EXPECT_TRUE(AddChoices(Refusing, kRows));
    EXPECT_EQ(Refusing.Offered.size(), 2U);
}

// ---- small things of the utility object

TEST_F(FailureRoad, NodeIdsNeverRepeat) {
    std::int32_t Last = Core.NextNodeId();
    EXPECT_GT(Last, 0);
    for (int I = 0; I < 1000; ++I) {
        const std::int32_t Next = Core.NextNodeId();
        EXPECT_GT(Next, Last);
        Last = Next;
    }
}

TEST_F(FailureRoad, TrimEndTakesTheGivenCharactersOffTheEnd) {
    const struct {
        std::wstring Text;
        std::wstring_view Chars;
        std::wstring_view Expected;
    } kRows[] = {{L"A|B|", L"|", L"A|B"},
                 {L"A|B||", L"|", L"A|B"},
                 {L"||", L"|", L""},
                 {L"", L"|", L""},
                 {L"|A", L"|", L"|A"},
                 {L"A, ;", L" ;,", L"A"},
                 {L"A ", L"", L"A "},
                 {L"A\r\n", L"\r\n", L"A"},
                 {std::wstring(L"A\0", 2), std::wstring_view(L"\0", 1), L"A"}};
    for (const auto& Row : kRows) {
        std::wstring Text = Row.Text;
        CoreUtil::TrimEnd(Text, Row.Chars);
        EXPECT_EQ(Text, Row.Expected);
    }
}

TEST_F(FailureRoad, FoldersComeClosedByASeparator) {
    const auto Separator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);
    EXPECT_EQ(Core.ProgramFolder(), Platform.Folder.wstring() + Separator);
    EXPECT_EQ(Core.TempFolder(), Platform.Folder.wstring() + Separator);
    Platform.Folder += "/";
    EXPECT_EQ(Core.ProgramFolder(), Platform.Folder.wstring());
}

TEST_F(FailureRoad, TheInitialisationIsKept) {
    class Server final : public RegistryServer {
    } Registry;
    Core.Init(&Registry, L"VELMIRA.INI", 3);
    EXPECT_EQ(Core.Registry(), &Registry);
    EXPECT_EQ(Core.IniFile(), L"VELMIRA.INI");
    EXPECT_EQ(Core.Mode(), 3);
    Core.Init(nullptr, L"", 0);
    EXPECT_EQ(Core.Registry(), nullptr);
}

TEST_F(FailureRoad, ThePlatformCanBeTakenAway) {
    EXPECT_EQ(Core.SetPlatform(nullptr), &Platform);
    EXPECT_TRUE(Trap(L"x.y", []() -> bool { Raise(L"t"); }));
    Core.ShowLastError();
    EXPECT_TRUE(Core.LastError().Empty());
    EXPECT_TRUE(Platform.Shown.empty());
    EXPECT_EQ(Core.SetPlatform(&Platform), nullptr);
}

TEST_F(FailureRoad, TheDefaultButtonAnswersWhereThereIsNoOperator) {
    const struct {
        std::int32_t Style;
        Answer Expected;
    } kRows[] = {
        {box::kOk, Answer::Ok},
        {box::kOk | box::kCritical | box::kForeground, Answer::Ok},
        {box::kYesNo | box::kQuestion, Answer::Yes},
        {box::kYesNo | box::kDefaultSecond, Answer::No},
        {box::kYesNoCancel, Answer::Yes},
        {box::kYesNoCancel | box::kExclamation | box::kDefaultSecond, Answer::No},
        {box::kYesNoCancel | box::kDefaultThird, Answer::Cancel},
    };
    SilentPlatform Silent;
    for (const auto& Row : kRows) EXPECT_EQ(Silent.MessageBox(L"?", Row.Style), Row.Expected) << Row.Style;
    EXPECT_FALSE(Silent.SaveFile(L"", L"", 1, 0).has_value());
}

}  // namespace
}  // namespace kv::test
