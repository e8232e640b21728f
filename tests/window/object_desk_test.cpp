// The steps that all windows on an object share, with a window that is a script.

#include <gtest/gtest.h>

#include <deque>
#include <set>
#include <stdexcept>

#include "frame/vdbInclude.h"
#include "tests/support/Desk.h"
#include "window/ObjectDesk.h"

namespace kv::test {
namespace {

using window::Command;
using window::Phrase;
using window::TreeNode;

class ScriptedFace final : public window::ObjectFace {
  public:
    bool TextChanged() const override { return Typed != Given; }
    std::wstring Text() const override { return Typed; }
    void ShowText(const std::wstring& Text, bool IsApplied) override {
        Given = Typed = Text;
        Applied = IsApplied;
        ++Shown;
        Position = 0;
    }
    void ShowNoText() override { ShowText({}, false); }
    void RevertText() override { Typed = Given; }
    int TextPosition() const override { return Position; }
    void SetTextPosition(int There) override { Position = There; }
    void ShowRefused(int Line) override { RefusedLine = Line; }
    void Mark(std::wstring_view Key) override { Marked = Key; }
    bool IsOpen(const TreeNode& Node) const override { return Opened.count(Node.Key) > 0; }
    void Open(const TreeNode& Node) override { Opened.insert(Node.Key); }
    void Rebuild(const std::function<void()>& Build) override {
        Opened.clear();
        Build();
        ++Rebuilt;
    }
    void Tell(const std::wstring& Text, bool Fault) override {
        if (BrokenLine) throw std::runtime_error("no line");
        Said = (Fault ? L"! " : L"") + Text;
        if (Text.empty()) Said.clear();
    }
    void ShowState() override { ++States; }
    std::size_t AskLeaving(const std::wstring& Question) override {
        Questions.push_back(Question);
        if (Leaving.empty()) return 2;
        const std::size_t Answer = Leaving.front();
        Leaving.pop_front();
        return Answer;
    }
    std::wstring Say(Phrase Of) const override { return window::TextOf(Of); }
    std::wstring Widened(const char* What) const override { return Wide(What); }
    std::optional<bool> BeforeSave() override { return Before; }
    bool Gone() const override { return IsGone; }

    std::wstring Given, Typed, Marked, Said;
    std::set<std::wstring> Opened;
    std::vector<std::wstring> Questions;  // about text that is not applied
    std::deque<std::size_t> Leaving;      // and the answers; stays where it is empty
    std::optional<bool> Before;
    std::optional<int> RefusedLine;
    bool Applied = false;
    bool BrokenLine = false;
    bool IsGone = false;
    int Shown = 0, Position = 0, Rebuilt = 0, States = 0;
};

/// One object with a window, on which the errors of the server are shown.
struct Opened {
    explicit Opened(std::wstring_view ClassWord) : On(ClassWord) { Work.Show(); }

    const TreeNode& Node(std::wstring_view Key) const { return *On.Tree->Find(Key); }
    std::wstring Child(std::wstring_view Folder, std::int32_t Place) const {
        return Node(Folder).Children.At(Place)->Key;
    }
    /// Elements with names in the list of fields of a TABLE.
    void MakeFields(std::initializer_list<std::wstring_view> Names) {
        for (const std::wstring_view Name : Names) {
            ASSERT_TRUE(Work.Select(L"FIELDS"));
            ASSERT_TRUE(Work.NewElement()) << Narrow(Face.Said);
            const std::wstring Leaf = On.Leaf(L"FIELDPARMS", Node(L"FIELDS").Children.Count());
            ASSERT_TRUE(Work.Select(Leaf));
            Face.Typed.replace(Face.Typed.find(L"NAME= "), 8, L"NAME= \"" + std::wstring(Name) + L"\"");
            ASSERT_TRUE(Work.Apply()) << Narrow(Face.Said);
        }
    }
    std::string Fields() const {
        std::wstring All;
        for (std::int32_t I = 1; I <= Node(L"FIELDS").Children.Count(); ++I)
            All += Node(Child(L"FIELDS", I)).Text + L" ";
        return Narrow(All);
    }
    std::size_t Asked() const { return On.Platform.Asked.size(); }

    Desk On;
    ScriptedFace Face;
    window::ObjectDesk Work{On.Core, Face};
};

// The tables.

TEST(WindowTables, StandInTheOrderOfTheirEnumerations) {
    for (std::size_t I = 0; I < std::size(window::kPhrases); ++I)
        EXPECT_EQ(static_cast<std::size_t>(window::kPhrases[I].Of), I);
    std::set<std::string> Names;
    int Menu = 0;
    for (std::size_t I = 0; I < std::size(window::kCommands); ++I) {
        const window::CommandRow& Row = window::kCommands[I];
        EXPECT_EQ(static_cast<std::size_t>(Row.Id), I);
        EXPECT_TRUE(Names.insert(Row.Name).second) << Row.Name;
        EXPECT_GE(static_cast<int>(Row.In), Menu) << "menu after menu";
        Menu = static_cast<int>(Row.In);
    }
    EXPECT_EQ(std::size(window::kMenus), 5U);
}

TEST(WindowTables, TheArgumentsOfATextAreFilledInOnce) {
    EXPECT_EQ(window::Filled(L"%1 - %2", {L"a", L"b"}), L"a - b");
    EXPECT_EQ(window::Filled(L"%2%1%2", {L"%2", L"b"}), L"b%2b");
    EXPECT_EQ(window::Filled(L"100% %3 %", {L"a"}), L"100%  %");
}

TEST(WindowTables, ADropIsTakenWithinTheListOnly) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"A", L"B", L"C"});
    const TreeNode& Second = Of.Node(Of.Child(L"FIELDS", 2));
    const auto Place = [&](std::wstring_view Target) { return PlaceOfDrop(Second, Of.Node(Target)); };
    EXPECT_EQ(Place(Of.Child(L"FIELDS", 1)), 1);
    EXPECT_EQ(Place(Of.Child(L"FIELDS", 3)), 3);
    EXPECT_EQ(Place(L"FIELDS"), 4);
    EXPECT_EQ(Place(Second.Key), 0);
    EXPECT_EQ(Place(kRootKey), 0);
    EXPECT_EQ(Place(Second.Children.At(1)->Key), 0);
    EXPECT_EQ(PlaceOfDrop(Of.Node(kRootKey), Second), 0);
}

// The text.

TEST(ObjectDeskTest, ShowsTheObjectAndItsNodes) {
    Opened Of(L"FILTER");
    EXPECT_EQ(Of.Work.Current(), kRootKey);
    EXPECT_EQ(Of.Face.Marked, kRootKey);
    EXPECT_EQ(Of.Face.Opened, (std::set<std::wstring>{std::wstring(kRootKey)}));
    EXPECT_EQ(Of.Work.Heading(), L"");
    EXPECT_EQ(Of.Face.Given, L"");
    const std::wstring Leaf = Of.On.Leaf(L"PARMS");
    EXPECT_TRUE(Of.Work.Select(Leaf));
    EXPECT_EQ(Of.Face.Given, Of.On.Text(Leaf));
    EXPECT_NE(Of.Work.Heading().find(Of.Node(Leaf).Text), std::wstring::npos);
    EXPECT_FALSE(Of.Work.Select(L"NESSUNO 1"));
    EXPECT_EQ(Of.Work.Current(), Leaf);
    EXPECT_EQ(Of.Face.Marked, Leaf);
    EXPECT_FALSE(Of.Work.Unsaved());
}

TEST(ObjectDeskTest, ARefusedTextStaysAsItIsTyped) {
    Opened Of(L"FILTER");
    Of.Work.Select(Of.On.Leaf(L"PARMS"));
    EXPECT_FALSE(Of.Work.IsOffered(Command::kApply));
    const std::wstring Text = Of.Face.Given;
    Of.Face.Typed = L"'nota\r\nAUTOMATIC= FORSE\r\n";
    EXPECT_TRUE(Of.Work.IsOffered(Command::kApply));
    EXPECT_TRUE(Of.Work.IsOffered(Command::kRevert));
    EXPECT_TRUE(Of.Work.Unsaved());
    EXPECT_FALSE(Of.Work.Apply());
    EXPECT_EQ(Of.Face.Typed, L"'nota\r\nAUTOMATIC= FORSE\r\n");
    EXPECT_TRUE(Of.Face.RefusedLine.has_value());
    EXPECT_FALSE(Of.On.Tree->Modified());
    EXPECT_FALSE(Of.Work.Save()) << "nor is the object saved with it";
    EXPECT_FALSE(Of.On.Object->Written());

    Of.Face.Typed = L"'nota\r\nAUTOMATIC= TRUE\r\n";
    Of.Face.Position = 3;
    EXPECT_TRUE(Of.Work.Apply());
    EXPECT_EQ(Of.Face.Said, L"Testo applicato.");
    EXPECT_TRUE(Of.Face.Applied);
    EXPECT_EQ(Of.Face.Position, 3);
    EXPECT_TRUE(Of.On.Tree->Modified());
    Of.Face.Typed = Text;
    EXPECT_TRUE(Of.Work.Revert());
    EXPECT_NE(Of.Face.Typed, Text) << "back to what was applied";
    EXPECT_TRUE(Of.Work.Save());
    EXPECT_EQ(Of.Face.Said, L"Oggetto salvato.");
    EXPECT_FALSE(Of.Work.Unsaved());
}

TEST(ObjectDeskTest, ErrorsOfTheServerAreToldWithTheirLine) {
    Opened Of(L"FILTER");
    KvError Error;
    Error.Description = L"Valore errato";
    Of.Work.ShowFault(Error);
    EXPECT_EQ(Of.Face.Said, L"! Valore errato");
    Error.Line = 4;
    Of.Work.ShowFault(Error);
    EXPECT_EQ(Of.Face.Said, L"! Riga 4: Valore errato");
    EXPECT_FALSE(Of.Work.Guarded([&] {
        Of.Work.ShowFault(Error);
        return true;
    })) << "what was told a fault is one";
    EXPECT_TRUE(Of.Work.Guarded([] { return true; }));
    EXPECT_EQ(Of.Face.Said, L"") << "what is said goes with the next command";
}

TEST(ObjectDeskTest, TextIsSettledBeforeItIsLeft) {
    Opened Of(L"SORT");
    const std::wstring First = Of.On.Leaf(L"PARMS");
    Of.Work.Select(First);
    const std::wstring Text = Of.Face.Given;
    Of.Face.Typed = L"=SBAGLIATO";
    for (const std::size_t Answer : {2U, 0U, 9U}) {  // not left, applied but refused
        Of.Face.Leaving = {Answer};
        EXPECT_FALSE(Of.Work.Select(kRootKey)) << Answer;
        EXPECT_EQ(Of.Work.Current(), First) << Answer;
        EXPECT_EQ(Of.Face.Marked, First) << Answer;
        EXPECT_EQ(Of.Face.Typed, L"=SBAGLIATO") << Answer;
    }
    EXPECT_EQ(Of.Face.Questions.back(),
              L"Il testo della sezione \"" + Of.Work.Heading() + L"\" non è stato applicato.");
    Of.Face.Leaving = {1};
    EXPECT_TRUE(Of.Work.Select(kRootKey));
    EXPECT_FALSE(Of.On.Tree->Modified());
    Of.Work.Select(First);
    EXPECT_EQ(Of.Face.Given, Text);
    Of.Face.Typed = Text + L"'nota\r\n";
    Of.Face.Leaving = {0};
    EXPECT_TRUE(Of.Work.Select(kRootKey));
    EXPECT_TRUE(Of.On.Tree->Modified());
}

// The tree.

TEST(ObjectDeskTest, WhatTakesAwayAsksFirstWithNoAsItsDefault) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"UNO", L"DUE"});
    Of.Work.Select(Of.Child(L"FIELDS", 1));
    const std::size_t Before = Of.Asked();
    EXPECT_FALSE(Of.Work.DeleteElement());  // the default answer is the script's
    EXPECT_FALSE(Of.Work.Cut());
    EXPECT_FALSE(Of.Work.Reload());
    EXPECT_FALSE(Of.Work.Paste());
    Of.Work.Select(L"FIELDS");
    EXPECT_FALSE(Of.Work.DeleteAll());
    ASSERT_EQ(Of.Asked(), Before + 5);
    const std::vector<std::wstring>& Asked = Of.On.Platform.Asked;
    EXPECT_EQ(Asked[Before], L"Eliminare \"1:UNO\"?");
    EXPECT_EQ(Asked[Before + 1], L"Negli appunti va l'intero oggetto. Copiarlo ed eliminare \"1:UNO\"?");
    EXPECT_EQ(Asked[Before + 2], L"Le modifiche non salvate andranno perse. Ricaricare l'oggetto?");
    EXPECT_EQ(Asked[Before + 3], L"L'oggetto ha modifiche non salvate, che andranno perse. Incollare?");
    EXPECT_EQ(Asked[Before + 4],
              L"Eliminare tutti gli elementi di \"" + Of.Node(L"FIELDS").Text + L"\"? Sono 2.");
    for (std::size_t I = Before; I < Asked.size(); ++I)
        EXPECT_EQ(Of.On.Platform.Styles[I] & box::kDefaults, box::kDefaultSecond) << I;
    EXPECT_EQ(Of.Node(L"FIELDS").Children.Count(), 2);
    EXPECT_EQ(Of.On.Clipboard.DataObj, nullptr);

    Of.On.Platform.Answers = {Answer::Yes, Answer::Yes};
    Of.Work.Select(Of.Child(L"FIELDS", 1));
    EXPECT_TRUE(Of.Work.DeleteElement()) << Narrow(Of.Face.Said);
    EXPECT_EQ(Of.Fields(), "1:DUE ");
    Of.Work.Select(L"FIELDS");
    EXPECT_TRUE(Of.Work.DeleteAll());
    EXPECT_EQ(Of.Fields(), "");
    EXPECT_EQ(Of.Work.Current(), L"FIELDS");
    const std::size_t After = Of.Asked();
    EXPECT_FALSE(Of.Work.DeleteAll());
    EXPECT_FALSE(Of.Work.DeleteElement());
    EXPECT_FALSE(Of.Work.Cut());
    EXPECT_EQ(Of.Asked(), After) << "what is not offered is not asked about";
}

TEST(ObjectDeskTest, OffersFollowTheNode) {
    Opened Of(L"TABLE");
    const auto Offered = [&](std::wstring_view Key) {
        Of.Work.Select(Key);
        std::string All;
        for (const window::CommandRow& Each : window::kCommands)
            if (Each.In == window::Menu::kEdit && Of.Work.IsOffered(Each.Id))
                All += std::string(Each.Name) + " ";
        return All;
    };
    EXPECT_EQ(Offered(kRootKey), "copy cut paste properties ");
    EXPECT_EQ(Offered(L"FIELDS"), "copy cut paste new properties ");
    Of.MakeFields({L"A"});
    EXPECT_EQ(Offered(L"FIELDS"), "copy cut paste new deleteAll properties ");
    EXPECT_EQ(Offered(Of.Child(L"FIELDS", 1)), "copy cut paste new delete properties ");
    Of.MakeFields({L"B"});
    EXPECT_EQ(Offered(Of.Child(L"FIELDS", 1)), "copy cut paste new delete moveUp moveDown properties ");
    EXPECT_TRUE(Of.Work.Serves(L"FINDTAG"));
    EXPECT_FALSE(Of.Work.Serves(L"NESSUNO"));
}

TEST(ObjectDeskTest, AMovedElementKeepsWhatIsOpen) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"A", L"B", L"C", L"D"});
    const auto Move = [&](int From, int To) {
        Of.Face.Opened = {std::wstring(kRootKey), L"FIELDS", Of.Child(L"FIELDS", From)};
        const bool Done = Of.Work.MoveTo(Of.Child(L"FIELDS", From), To);
        EXPECT_TRUE(Of.Face.Opened.count(Of.Work.Current())) << "it stays open";
        EXPECT_EQ(Of.Face.Marked, Of.Work.Current());
        EXPECT_EQ(Of.On.Tree->Selected(), Of.Work.Current());
        return Done;
    };
    EXPECT_TRUE(Move(4, 1));
    EXPECT_EQ(Of.Fields(), "1:D 1:A 1:B 1:C ");
    EXPECT_TRUE(Move(1, 3));
    EXPECT_EQ(Of.Fields(), "1:A 1:D 1:B 1:C ");
    EXPECT_TRUE(Move(1, 5));
    EXPECT_EQ(Of.Fields(), "1:D 1:B 1:C 1:A ");
    for (const int Place : {2, 3}) EXPECT_TRUE(Move(2, Place));  // where it stands already
    EXPECT_EQ(Of.Fields(), "1:D 1:B 1:C 1:A ");
    EXPECT_FALSE(Of.Work.MoveTo(L"NESSUNO", 1));
    EXPECT_FALSE(Of.Work.MoveTo(kRootKey, 1));

    Of.Work.Select(Of.Child(L"FIELDS", 1));
    EXPECT_FALSE(Of.Work.Move(+1)) << "there is no place to go";
    EXPECT_EQ(Of.Face.Said, L"! Operazione non eseguita.");
    EXPECT_EQ(Of.On.Platform.Beeps, 1);
    EXPECT_EQ(Of.Work.Current(), Of.Child(L"FIELDS", 1));
}

TEST(ObjectDeskTest, TheSearchFoldsLettersAndGoesRoundTheEnd) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"Novità", L"CITTÀ"});
    Of.Work.Select(kRootKey);
    std::vector<std::wstring> Met;
    for (int Time = 0; Time < 3; ++Time) {
        EXPECT_TRUE(Of.Work.FindNext(L"tà"));
        Met.push_back(Of.Work.Current());
    }
    EXPECT_EQ(Met, (std::vector<std::wstring>{Of.Child(L"FIELDS", 1), Of.Child(L"FIELDS", 2),
                                              Of.Child(L"FIELDS", 1)}));
    EXPECT_FALSE(Of.Work.FindNext(L"manca"));
    EXPECT_EQ(Of.Face.Said, L"! \"manca\" non si trova nell'albero.");
    EXPECT_EQ(Of.On.Platform.Beeps, 1);
    EXPECT_EQ(Of.Work.Current(), Met.back());
    EXPECT_FALSE(Of.Work.FindNext(L""));
}

// The object.

TEST(ObjectDeskTest, CutCopiesTheObjectAsItWas) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"UNO", L"DUE"});
    Of.Work.Select(Of.Child(L"FIELDS", 2));
    Of.On.Platform.Answers = {Answer::Yes};
    EXPECT_TRUE(Of.Work.Cut()) << Narrow(Of.Face.Said);
    EXPECT_EQ(Of.Fields(), "1:UNO ");
    ASSERT_NE(Of.On.Clipboard.DataObj, nullptr);
    EXPECT_EQ(Of.On.Clipboard.DataObj->Read().Child(L"Fields")->Children.size(), 2U);
    EXPECT_TRUE(Of.Work.Copy());
    EXPECT_EQ(Of.Face.Said, L"Negli appunti: un oggetto della classe TABLE.");
}

TEST(ObjectDeskTest, LoadedAnewTheObjectIsAsItWasSavedLast) {
    Opened Of(L"TABLE");
    Of.MakeFields({L"A", L"B"});
    EXPECT_TRUE(Of.Work.Save());
    EXPECT_TRUE(Of.Work.Copy());
    Of.MakeFields({L"C"});
    EXPECT_TRUE(Of.Work.Copy());
    Of.On.Platform.Answers = {Answer::Yes, Answer::Yes};
    EXPECT_TRUE(Of.Work.Reload());
    EXPECT_EQ(Of.Fields(), "1:A 1:B ");
    EXPECT_FALSE(Of.Work.Unsaved());

    Of.Face.Opened = {std::wstring(kRootKey), L"FIELDS", Of.Child(L"FIELDS", 2)};
    Of.Work.Select(Of.Child(L"FIELDS", 2));
    EXPECT_TRUE(Of.Work.Paste()) << Narrow(Of.Face.Said);
    EXPECT_EQ(Of.Fields(), "1:A 1:B 1:C ");
    EXPECT_EQ(Of.Work.Current(), Of.Child(L"FIELDS", 2));
    EXPECT_EQ(Of.Face.Opened,
              (std::set<std::wstring>{std::wstring(kRootKey), L"FIELDS", Of.Child(L"FIELDS", 2)}));
    EXPECT_TRUE(Of.Work.Reload()) << "the paste is taken back";
    EXPECT_EQ(Of.Fields(), "1:A 1:B ");
    EXPECT_FALSE(Of.Work.Unsaved());
    EXPECT_EQ(Of.Face.Rebuilt, 3);

    const int Before = static_cast<int>(Of.Asked());
    EXPECT_FALSE(Of.Work.Reload([] { return false; })) << "nothing to lose, nothing asked";
    EXPECT_EQ(static_cast<int>(Of.Asked()), Before);
    EXPECT_EQ(Of.On.Platform.Pointers.back(), kPointerDefault);
}

TEST(ObjectDeskTest, AppliedTextIsAskedAboutBeforeAPasteOverwritesIt) {
    Opened Of(L"FILTER");
    EXPECT_TRUE(Of.Work.Copy());
    Of.Work.Select(Of.On.Leaf(L"PARMS"));
    Of.Face.Typed = L"AUTOMATIC= TRUE\r\n";
    Of.Face.Leaving = {0};
    EXPECT_FALSE(Of.Work.Paste());
    EXPECT_EQ(Of.On.Platform.Asked.size(), 1U);
    EXPECT_NE(Of.Face.Given.find(L"AUTOMATIC= TRUE"), std::wstring::npos);
}

TEST(ObjectDeskTest, TheFaceMayEndASave) {
    Opened Of(L"FILTER");
    for (const bool Ended : {false, true}) {
        Of.Face.Before = Ended;
        EXPECT_EQ(Of.Work.Save(), Ended);
        EXPECT_FALSE(Of.On.Object->Written());
    }
    Of.Face.Before.reset();
    EXPECT_TRUE(Of.Work.Save());
    EXPECT_TRUE(Of.On.Object->Written());
}

TEST(ObjectDeskTest, ClosingSettlesTextAndChanges) {
    constexpr std::size_t kNotAsked = 9;
    const struct {
        bool Applied;         // an applied change stands in the object
        std::size_t Leaving;  // what becomes of typed text
        std::optional<Answer> Saving;
        bool Closes;
        bool Saved;
    } Table[] = {
        {false, kNotAsked, {}, true, false},
        {true, kNotAsked, Answer::Yes, true, true},
        {true, kNotAsked, Answer::No, true, false},
        {true, kNotAsked, Answer::Cancel, false, false},
        {false, 2, {}, false, false},
        {false, 1, {}, true, false},
        {false, 0, Answer::Yes, true, true},
        {false, 0, Answer::Cancel, false, false},
        {true, 1, Answer::No, true, false},
    };
    for (const auto& Row : Table) {
        SCOPED_TRACE(&Row - Table);
        Opened Of(L"FILTER");
        Of.Work.Select(Of.On.Leaf(L"PARMS"));
        if (Row.Applied) {
            Of.Face.Typed = L"AUTOMATIC= TRUE\r\n";
            ASSERT_TRUE(Of.Work.Apply());
        }
        if (Row.Leaving != kNotAsked) {
            Of.Face.Typed = L"AUTOMATIC= TRUE\r\n'nota\r\n";
            Of.Face.Leaving = {Row.Leaving};
        }
        if (Row.Saving) Of.On.Platform.Answers = {*Row.Saving};
        EXPECT_EQ(Of.Work.MayClose(), Row.Closes);
        EXPECT_EQ(Of.On.Object->Written(), Row.Saved);
        EXPECT_EQ(Of.On.Platform.Asked.size(), Row.Saving ? 1U : 0U);
        EXPECT_EQ(Of.Face.Questions.size(), Row.Leaving == kNotAsked ? 0U : 1U);
    }
    Opened Of(L"FILTER");
    Of.Work.Select(Of.On.Leaf(L"PARMS"));
    Of.Face.Typed = L"=SBAGLIATO";
    Of.Face.Leaving = {0};
    EXPECT_FALSE(Of.Work.MayClose()) << "refused: the window stays";
}

// What goes wrong.

TEST(ObjectDeskTest, NothingEscapes) {
    Opened Of(L"FILTER");
    const auto Said = [&](const std::function<bool()>& Body) {
        const int States = Of.Face.States;
        EXPECT_FALSE(Of.Work.Guarded(Body));
        EXPECT_EQ(Of.Face.States, States + 1);
        return Narrow(Of.Face.Said);
    };
    EXPECT_EQ(Said([]() -> bool { Raise(L"Un errore"); }), "! Un errore");
    EXPECT_EQ(Said([]() -> bool { throw std::runtime_error("un guaio"); }), "! un guaio");
    EXPECT_EQ(Said([]() -> bool { throw 1; }), "! Errore imprevisto.");
    Of.Face.BrokenLine = true;
    EXPECT_FALSE(Of.Work.Guarded([] { return true; }));
    EXPECT_EQ(Of.On.Platform.Beeps, 1) << "heard at least";
    EXPECT_FALSE(Of.Work.FindNext(L"manca"));
    EXPECT_FALSE(Of.Work.Save());
    Of.Face.BrokenLine = false;
    EXPECT_TRUE(Of.Work.Save());
}

TEST(ObjectDeskTest, AWindowThatIsTakenAwayIsLeftAlone) {
    Opened Of(L"FILTER");
    const int States = Of.Face.States;
    const int Shown = Of.Face.Shown;
    EXPECT_FALSE(Of.Work.Guarded([&] {
        Of.Face.IsGone = true;
        return true;
    }));
    EXPECT_EQ(Of.Face.States, States);
    EXPECT_FALSE(Of.Work.Guarded([&] { return Of.Work.Replaced([] { return false; }); }));
    EXPECT_EQ(Of.Face.Shown, Shown);
}

}  // namespace
}  // namespace kv::test
