// An object as the texts of its sections, and what differs between two states of one.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "frame/ClipItem.h"
#include "frame/CoreUtil.h"
#include "host/Demo.h"
#include "host/KvRegSvr.h"
#include "host/ObjectWindow.h"
#include "host/desktop/InCommon.h"
#include "host/desktop/ObjectTexts.h"
#include "tests/support/TestPlatform.h"

namespace kv::desktop {
namespace {

using test::Narrow;
using window::WindowCore;

// What two lists have in common.

using Ids = std::vector<std::uint32_t>;
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

Ids IdsOf(std::string_view Letters) { return {Letters.begin(), Letters.end()}; }

::testing::AssertionResult IsCommonOrder(const Ids& A, const Ids& B, const Pairs& Found) {
    for (std::size_t I = 0; I < Found.size(); ++I) {
        const auto [InA, InB] = Found[I];
        if (InA >= A.size() || InB >= B.size())
            return ::testing::AssertionFailure() << "beyond the end, " << I;
        if (A[InA] != B[InB]) return ::testing::AssertionFailure() << "not equal, " << I;
        if (I > 0 && (InA <= Found[I - 1].first || InB <= Found[I - 1].second))
            return ::testing::AssertionFailure() << "not in order, " << I;
    }
    return ::testing::AssertionSuccess();
}

std::size_t Longest(const Ids& A, const Ids& B) {
    std::vector<std::size_t> Row(B.size() + 1, 0);
    for (const std::uint32_t Of : A) {
        std::size_t Corner = 0;
        for (std::size_t J = 1; J <= B.size(); ++J) {
            const std::size_t Above = Row[J];
            Row[J] = Of == B[J - 1] ? Corner + 1 : std::max(Row[J], Row[J - 1]);
            Corner = Above;
        }
    }
    return Row.back();
}

TEST(InCommon, KnownCases) {
    const auto Count = [](std::string_view A, std::string_view B) {
        return InCommon(IdsOf(A), IdsOf(B)).size();
    };
    EXPECT_EQ(Count("", ""), 0U);
    EXPECT_EQ(Count("abc", ""), 0U);
    EXPECT_EQ(Count("abc", "abc"), 3U);
    EXPECT_EQ(Count("abc", "xyz"), 0U);
    EXPECT_EQ(Count("abcd", "acd"), 3U);
    EXPECT_EQ(Count("abab", "baba"), 3U);
    EXPECT_EQ(InCommon(IdsOf("abc"), IdsOf("cab")), (Pairs{{0, 1}, {1, 2}})) << "c has moved to the front";
}

TEST(InCommon, IsALongestOrderWithinItsBounds) {
    std::mt19937 Random(8);
    const auto Letter = [&] { return static_cast<std::uint32_t>('a' + Random() % 3); };
    for (int Round = 0; Round < 200; ++Round) {
        // A and B begin and end differently, and every letter stands often.
        Ids A = IdsOf("aaabbbccc"), B = IdsOf("cccbbbaaa");
        for (int N = 0; N < 60; ++N) {
            A.push_back(Letter());
            B.push_back(Letter());
        }
        for (const char C : {'a', 'a', 'b', 'b', 'c', 'c'}) A.push_back(static_cast<std::uint32_t>(C));
        for (const char C : {'c', 'c', 'b', 'b', 'a', 'a'}) B.push_back(static_cast<std::uint32_t>(C));
        const Pairs Found = InCommon(A, B);
        ASSERT_TRUE(IsCommonOrder(A, B, Found)) << Round;
        ASSERT_EQ(Found.size(), Longest(A, B)) << Round;
    }
}

// With the square of the length each of these would take hours.
TEST(InCommon, GrowsWithTheLists) {
    constexpr std::uint32_t kMany = 300'000;
    Ids Up, Down, Other, Few, FewToo;
    std::mt19937 Random(9);
    for (std::uint32_t I = 0; I < kMany; ++I) {
        Up.push_back(I);
        Down.push_back(kMany - I);
        Other.push_back(kMany + I);
        Few.push_back(static_cast<std::uint32_t>(Random() % 2));
        FewToo.push_back(static_cast<std::uint32_t>(Random() % 2));
    }
    EXPECT_EQ(InCommon(Up, Other).size(), 0U);
    EXPECT_EQ(InCommon(Up, Down).size(), 1U);
    EXPECT_TRUE(IsCommonOrder(Few, FewToo, InCommon(Few, FewToo)));
    Ids Edited = Up;
    for (std::size_t I = 0; I < kMany; I += 1000) Edited[I] = kMany;
    EXPECT_EQ(InCommon(Up, Edited).size(), kMany - kMany / 1000);
    Ids Swapped = Up;
    for (std::size_t I = 0; I + 1 < kMany; I += 2) std::swap(Swapped[I], Swapped[I + 1]);
    EXPECT_EQ(InCommon(Up, Swapped).size(), kMany / 2);
}

// Comparing texts. A section is told as "WORD caption: line, line".

std::vector<SectionTextOf> Sections(std::initializer_list<std::wstring_view> Told) {
    std::vector<SectionTextOf> Made;
    for (const std::wstring_view Each : Told) {
        const std::size_t Blank = Each.find(L' ');
        const std::size_t Colon = Each.find(L':');
        SectionTextOf Section{
            std::wstring(Each.substr(0, Blank)), std::wstring(Each.substr(Blank + 1, Colon - Blank - 1)), {}};
        std::wistringstream Lines{std::wstring(Each.substr(Colon + 1))};
        for (std::wstring Line; std::getline(Lines, Line, L',');) Section.Lines.push_back(Line.substr(1));
        Made.push_back(std::move(Section));
    }
    return Made;
}

// Changes told as "kind caption: =line, -line, +line".
std::vector<std::string> Told(const std::vector<SectionChange>& Changes) {
    constexpr std::string_view kKinds[] = {"changed", "removed", "added", "moved"};
    constexpr char kSigns[] = {'=', '-', '+'};
    std::vector<std::string> All;
    for (const SectionChange& Change : Changes) {
        std::string One(kKinds[static_cast<std::size_t>(Change.Is)]);
        One += ' ' + Narrow(Change.Caption) + ':';
        for (const LineChange& Line : Change.Lines)
            One.append(" ") += kSigns[static_cast<std::size_t>(Line.Is)] + Narrow(Line.Text);
        All.push_back(std::move(One));
    }
    return All;
}

using Expected = std::vector<std::string>;

std::vector<std::string> Compared(std::initializer_list<std::wstring_view> Before,
                                  std::initializer_list<std::wstring_view> After) {
    return Told(Compare(Sections(Before), Sections(After)));
}

TEST(Compare, NothingDiffers) {
    EXPECT_EQ(Compared({}, {}), Expected{});
    EXPECT_EQ(Compared({L"P a: 1, 2", L"F b:"}, {L"P a: 1, 2", L"F b:"}), Expected{});
}

TEST(Compare, LinesOfASection) {
    EXPECT_EQ(Compared({L"P a: 1, 2, 3"}, {L"P a: 1, x, 3"}), Expected{"changed a: =1 -2 +x =3"});
    EXPECT_EQ(Compared({L"P a: 1, 2"}, {L"P a: 0, 1, 2, 3"}), Expected{"changed a: +0 =1 =2 +3"});
    EXPECT_EQ(Compared({L"P a: 1, 2, 3"}, {L"P a: 3, 1, 2"}), Expected{"changed a: +3 =1 =2 -3"});
    EXPECT_EQ(Compared({L"P a: 1"}, {L"P a:"}), Expected{"changed a: -1"});
}

TEST(Compare, SectionsComeAndGo) {
    EXPECT_EQ(Compared({L"P a: 1"}, {L"P a: 1", L"F b: 2"}), Expected{"added b: +2"});
    EXPECT_EQ(Compared({L"P a: 1", L"F b: 2", L"F c: 3"}, {L"P a: 1", L"F c: 3"}), Expected{"removed b: -2"});
    EXPECT_EQ(Compared({}, {L"F b:"}), Expected{"added b:"}) << "a section without lines is told";
    EXPECT_EQ(Compared({L"F b:"}, {}), Expected{"removed b:"});
    // In the order of After, what was removed before what followed it.
    EXPECT_EQ(Compared({L"A a: 1", L"B b: 2", L"C c: 3"}, {L"B b: 2", L"D d: 4", L"C c: 3x"}),
              (Expected{"removed a: -1", "added d: +4", "changed c: -3 +3x"}));
}

// Among elements that read the same it is the one of that caption that went.
TEST(Compare, TheRightOneOfSeveralAlikeIsTold) {
    EXPECT_EQ(Compared({L"F a: 1", L"F b: 1", L"F c: 1"}, {L"F a: 1", L"F c: 1"}), Expected{"removed b: -1"});
    EXPECT_EQ(Compared({L"F a: 1", L"F c: 1"}, {L"F a: 1", L"F b: 1", L"F c: 1"}), Expected{"added b: +1"});
}

TEST(Compare, RenamedElements) {
    // The caption tells the element; only the section that names it differs.
    EXPECT_EQ(Compared({L"F x: name x", L"T x / t: 1"}, {L"F y: name y", L"T y / t: 1"}),
              Expected{"changed y: -name x +name y"});
    // Two that were edited together are paired in their order.
    EXPECT_EQ(Compared({L"F x: 1", L"F z: 2"}, {L"F x1: 1a", L"F z1: 2a"}),
              (Expected{"changed x1: -1 +1a", "changed z1: -2 +2a"}));
    EXPECT_EQ(Compared({L"F x: 1"}, {L"G x: 1"}), (Expected{"removed x: -1", "added x: +1"}))
        << "sections of two words are never the same";
}

TEST(Compare, MovedElements) {
    EXPECT_EQ(Compared({L"F a: 1", L"F b: 2", L"F c: 3"}, {L"F c: 3", L"F a: 1", L"F b: 2"}),
              Expected{"moved c:"});
    EXPECT_EQ(Compared({L"F a: 1", L"F b: 2", L"F c: 3"}, {L"F c: 3x", L"F a: 1", L"F b: 2"}),
              Expected{"moved c: -3 +3x"});
    EXPECT_EQ(
        Compared({L"F a: 1", L"G a: 2", L"F b: 3", L"G b: 4"}, {L"F b: 3", L"G b: 4", L"F a: 1", L"G a: 2"})
            .size(),
        2U)
        << "one of the two elements, with both its sections";
    // Which of several of one caption it would be is not known.
    EXPECT_EQ(Compared({L"F p: 1", L"F p: 2", L"F p: 3"}, {L"F p: 2", L"F p: 3", L"F p: 9"}),
              (Expected{"removed p: -1", "added p: +9"}));
}

TEST(Compare, ManySectionsAndLines) {
    std::vector<SectionTextOf> Before;
    for (int I = 0; I < 20'000; ++I)
        Before.push_back(
            {L"FIELDPARMS", L"Campi / " + std::to_wstring(I), {L"TAG= " + std::to_wstring(I), L"X= 0"}});
    std::vector<SectionTextOf> After(Before.begin() + 1, Before.end());
    After[500].Lines[1] = L"X= 1";
    After.push_back({L"FIELDPARMS", L"Campi / nuovo", {L"TAG= 0"}});
    EXPECT_EQ(Told(Compare(Before, After)),
              (Expected{"removed Campi / 0: -TAG= 0 -X= 0", "changed Campi / 501: =TAG= 501 -X= 0 +X= 1",
                        "added Campi / nuovo: +TAG= 0"}));
    std::vector<SectionTextOf> Backwards(Before.rbegin(), Before.rend());
    EXPECT_EQ(Compare(Before, Backwards).size(), Before.size() - 1);
}

// The texts of objects.

class ObjectTexts : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Desk = std::make_unique<test::TestPlatform>();
        host::MakeDemo(Desk->Folder / "demo");
        Registry = std::make_unique<host::KvRegSvr>(Desk->Folder / "demo" / host::kDemoStore);
    }
    static void TearDownTestSuite() {
        Registry.reset();
        Desk.reset();
    }
    void SetUp() override { Desk->Shown.clear(); }

    static void Open(const std::wstring& Clsid, RegObject Content,
                     const std::function<void(WindowCore&)>& While) {
        ClipItem Clipboard;
        host::ObjectWindow Window(Registry.get(), std::make_shared<MemoryRegData>(Clsid, std::move(Content)),
                                  Clipboard);
        bool Ran = false;
        EXPECT_FALSE(Window.Show(true, [&](WindowCore& Core) {
            Ran = true;
            While(Core);
        }));
        EXPECT_TRUE(Ran);
    }
    static std::vector<std::string> Captions(const std::vector<SectionTextOf>& Sections) {
        std::vector<std::string> All;
        for (const SectionTextOf& Each : Sections) All.push_back(Narrow(Each.Word + L": " + Each.Caption));
        return All;
    }

    static std::unique_ptr<test::TestPlatform> Desk;
    static std::unique_ptr<host::KvRegSvr> Registry;
};

std::unique_ptr<test::TestPlatform> ObjectTexts::Desk;
std::unique_ptr<host::KvRegSvr> ObjectTexts::Registry;

TEST_F(ObjectTexts, AreTheLeavesOfTheTree) {
    const auto Sort = TextsOf(L"SORT", Registry->ReadStored(L"SORT", L"CIFRE"));
    EXPECT_EQ(Captions(Sort), (std::vector<std::string>{"PARMS: Parametri", "PARMS: Parametri / Tabella"}));
    ASSERT_FALSE(Sort.empty());
    EXPECT_EQ(Sort[0].Lines,
              (std::vector<std::wstring>{L"NONUMERIC= FALSE", L"NOTABLE= FALSE", L"NOMASK= FALSE",
                                         L"NOSPACES= TRUE", L"FLAGS= NONE", L"MIRROROF= \"\""}));
    ASSERT_GT(Sort[1].Lines.size(), 255U) << "a line a character";
    EXPECT_TRUE(Sort[1].Lines[2].starts_with(L"00 = ")) << Narrow(Sort[1].Lines[2]);

    const auto Menu = TextsOf(L"MENU", Registry->ReadStored(L"MENU", L"PRINCIPALE"));
    const std::vector<std::string> Found = Captions(Menu);
    for (const char* const One :
         {"PARMS: Parametri", "COMMANDPARMS: Pulsanti / RICERCA / Pulsante",
          "COMMANDTIPS: Pulsanti / RICERCA / ToolTips / Messaggio: [ENG] Simple search", "POPUPS: Popup"})
        EXPECT_NE(std::find(Found.begin(), Found.end(), One), Found.end()) << One;
    for (const SectionTextOf& Section : Menu) {
        EXPECT_FALSE(Section.Lines.empty()) << Narrow(Section.Caption);
        for (const std::wstring& Line : Section.Lines) {
            EXPECT_EQ(Line.find_first_of(L"\r\n"), std::wstring::npos) << Narrow(Line);
            EXPECT_FALSE(Line.starts_with(L"'[")) << Narrow(Line);
        }
    }
}

TEST_F(ObjectTexts, OfAnOpenObjectAreThoseOfTheStoredOne) {
    for (const wchar_t* const Clsid : {L"SORT", L"TABLE", L"FILTER", L"MENU"})
        for (const host::RegistryEntry& Entry : Registry->List(Clsid)) {
            const RegObject Stored = Registry->ReadStored(Clsid, Entry.Name);
            Open(Clsid, Stored, [&](WindowCore& Core) {
                const auto Texts = TextsOf(Core);
                EXPECT_FALSE(Texts.empty()) << Narrow(Entry.Name);
                EXPECT_EQ(Told(Compare(TextsOf(Clsid, Stored), Texts)), Expected{}) << Narrow(Entry.Name);
            });
        }
    EXPECT_TRUE(Desk->Shown.empty());
}

TEST_F(ObjectTexts, LeaveTheWindowAsItWas) {
    Open(L"TABLE", Registry->ReadStored(L"TABLE", L"NOTIZIE"), [](WindowCore& Core) {
        const std::wstring Folder = Core.Tree().NodeAt(kRootKey, 2);
        Core.Tree().SelectNode(Folder);
        EXPECT_FALSE(TextsOf(Core).empty());
        EXPECT_EQ(Core.Tree().Selected(), Folder);
        EXPECT_FALSE(Core.Tree().Modified());
        Core.Tree().MarkModified(true);
        static_cast<void>(TextsOf(L"SORT", Registry->ReadStored(L"SORT", L"CIFRE")));
        EXPECT_TRUE(Core.Tree().Modified());
        EXPECT_EQ(Core.Tree().Selected(), Folder);
        EXPECT_EQ(CoreUtil::Instance().Registry(), Registry.get());
    });
    EXPECT_EQ(&CoreUtil::Instance().Door(), Desk.get());
}

TEST_F(ObjectTexts, TellWhatWasEdited) {
    const RegObject Stored = Registry->ReadStored(L"FILTER", L"PUBBLICI");
    Open(L"FILTER", Stored, [&](WindowCore& Core) {
        std::wstring Leaf, Text, NewItemKey;
        Core.Tree().ForEach([&](const window::TreeNode& Node) {
            if (window::IsLeafKey(Node.Key)) Leaf = Node.Key;
        });
        ASSERT_FALSE(Core.DispData({.CurrItem = Leaf}, Text));
        const std::size_t At = Text.find(L"MERGEWITH= AND");
        ASSERT_NE(At, std::wstring::npos);
        Text.replace(At, 14, L"MERGEWITH= OR");
        ASSERT_FALSE(Core.SaveData({.CurrItem = Leaf}, Text, NewItemKey));
        const auto Changes = Compare(TextsOf(L"FILTER", Stored), TextsOf(Core));
        ASSERT_EQ(Changes.size(), 1U);
        EXPECT_EQ(Changes[0].Caption, L"Parametri");
        std::vector<std::string> Differing;
        for (const LineChange& Line : Changes[0].Lines)
            if (Line.Is != Line::Same)
                Differing.push_back((Line.Is == Line::Added ? '+' : '-') + Narrow(Line.Text));
        EXPECT_EQ(Differing, (std::vector<std::string>{"-MERGEWITH= AND", "+MERGEWITH= OR"}));
    });
}

TEST_F(ObjectTexts, TellAMovedElement) {
    const RegObject Stored = Registry->ReadStored(L"MENU", L"PRINCIPALE");
    Open(L"MENU", Stored, [&](WindowCore& Core) {
        std::wstring Second;
        for (std::int32_t I = 1; !Core.Tree().NodeAt(kRootKey, I).empty(); ++I)
            if (Core.Tree().NodeAt(kRootKey, I) == L"COMMANDS") Second = Core.Tree().NodeAt(L"COMMANDS", 2);
        ASSERT_FALSE(Second.empty());
        ASSERT_FALSE(Core.MoveData({.CurrItem = Second}, 1, Second));
        const auto Changes = Compare(TextsOf(L"MENU", Stored), TextsOf(Core));
        EXPECT_EQ(Changes.size(), 3U) << "the button and its two texts";
        for (const SectionChange& Each : Changes) {
            EXPECT_EQ(Each.Is, SectionChange::Kind::Moved) << Narrow(Each.Caption);
            EXPECT_TRUE(Each.Lines.empty());
        }
    });
}

TEST_F(ObjectTexts, KeepTheMessageOfASectionThatCannotBeRendered) {
    RegObject Format;
    Format.Name = L"BREVE";
    Format.SetValue(L"Server", std::wstring(L"rotto"));
    RegObject Formats;
    Formats.Name = L"Formats";
    Formats.Children = {Format};
    RegObject Profile;
    Profile.Name = L"PROVA";
    Profile.Children = {Formats};
    const auto Texts = TextsOf(L"PROFILE", Profile);
    const auto Faulty = std::find_if(Texts.begin(), Texts.end(),
                                     [](const SectionTextOf& Each) { return Each.Word == L"FORMATPARMS"; });
    ASSERT_NE(Faulty, Texts.end());
    EXPECT_EQ(Faulty->Lines, std::vector<std::wstring>{L"'Parametri errati."});
    EXPECT_GT(Texts.size(), 1U);
    EXPECT_TRUE(Desk->Shown.empty()) << "nothing is shown";
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty()) << "nothing waits to be shown";
}

TEST_F(ObjectTexts, ThrowWhereNothingCanBeLoaded) {
    RegObject Base;
    Base.Name = L"PROVA";
    Base.SetValue(L"DbVersion", std::int32_t{100'000});
    try {
        static_cast<void>(TextsOf(L"RETRIEVAL", Base));
        FAIL() << "the version has 16 bits";
    } catch (const Failure& No) {
        EXPECT_EQ(No.Error().Number, fault::kOverflow);
        EXPECT_FALSE(No.Error().Description.empty());
    }
    try {
        static_cast<void>(TextsOf(L"PIPPO", {}));
        FAIL() << "there is no such class";
    } catch (const Failure& No) {
        EXPECT_NE(No.Error().Description.find(L"PIPPO"), std::wstring::npos)
            << Narrow(No.Error().Description);
    }
    EXPECT_TRUE(Desk->Shown.empty());
    EXPECT_EQ(&CoreUtil::Instance().Door(), Desk.get());
}

}  // namespace
}  // namespace kv::desktop
