// Random operations on every class of the server. After each: a refused text has changed nothing, an accepted
// one renders to a text that comes back unchanged, the export is stable, every node still answers, and what
// was saved comes back from the store.
#include <gtest/gtest.h>

#include <random>

#include "tests/support/Desk.h"

namespace kv::test {
namespace {

// Under the sanitizers a step takes ten times as long.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KV_SANITIZED
#endif
#endif
#ifdef KV_SANITIZED
constexpr int kSteps = 100;
#else
constexpr int kSteps = 250;
#endif

class Player {
  public:
    Player(std::wstring_view ClassWord, unsigned Seed) : Word(ClassWord), Random(Seed), On(ClassWord) {}

    void Play(int Steps) {
        ASSERT_TRUE(Accepted(On.Opened));
        Grow();
        for (int Step = 0; Step < Steps && !::testing::Test::HasFatalFailure(); ++Step) {
            SCOPED_TRACE(Narrow(Word) + " step " + std::to_string(Step));
            On.Tree->SetSyntaxOn(Below(3) != 0);
            switch (Below(12)) {
                case 0:
                case 1:
                case 2:
                case 3:
                case 4:
                    SaveRandomText();
                    break;
                case 5:
                    AnyOutcome([&](std::wstring& Key) { return On.Core.EditData(Node(), Key); });
                    break;
                case 6:
                    AnyOutcome([&](std::wstring& Key) {
                        return On.Core.MoveData(Node(), static_cast<int>(Below(3)) - 1, Key);
                    });
                    break;
                case 7:
                    AnyOutcome([&](std::wstring&) { return On.Core.DeleteData(Node(), Below(4) == 0); });
                    break;
                case 8:
                    AnyOutcome([&](std::wstring& Copied) { return On.Core.CopyData(Node(), false, Copied); });
                    break;
                case 9:
                    AnyOutcome(
                        [&](std::wstring& Key) { return On.Core.PasteData(Node(), std::nullopt, Key); });
                    break;
                case 10:
                    ClickTool();
                    break;
                default:
                    SaveAndReopen();
                    break;
            }
            EveryNodeAnswers();
            TreeOrderIsListOrder();
        }
    }

  private:
    // Elements in every list, and in the lists of those: random steps alone seldom get that deep.
    void Grow() {
        for (int Round = 0; Round < 3; ++Round) {
            std::vector<std::wstring> Folders;
            On.Tree->ForEach([&](const window::TreeNode& N) {
                if (!window::IsLeafKey(N.Key)) Folders.push_back(N.Key);
            });
            for (const std::wstring& Key : Folders) {
                std::wstring Made;
                // What a root or a plain folder does with it is not the matter here.
                static_cast<void>(On.Try([&] { return On.Core.EditData({.CurrItem = Key}, Made); }));
            }
        }
        // A procedure whose components have one name is not saved, and so could not be looked at.
        for (int Nth = 1; Word == L"CATPROC" && !On.Leaf(L"FIELDS", Nth).empty(); ++Nth)
            EXPECT_TRUE(Accepted(On.Put(On.Leaf(L"FIELDS", Nth), L"NAME= C" + std::to_wstring(Nth))));
        const std::pair<std::wstring_view, std::wstring_view> kDeepest[] = {
            {L"MAIL", L"FIELDCAPTION"},     {L"MAILGROUP", L"PATHS"},
            {L"PROFILE", L"FORMATCAPTION"}, {L"QUERY", L"CONSTANTCAPTION"},
            {L"STEM", L"FIELDCAPTION"},     {L"STRINGTABLE", L"FIELDCAPTION"},
            {L"VCLIENT", L"FIELDCAPTION"},  {L"WEBSERVER", L"MESSAGECAPTION"}};
        for (const auto& [Class, Section] : kDeepest)
            EXPECT_TRUE(Class != Word || !On.Leaf(Section).empty()) << Narrow(Section);
        TreeOrderIsListOrder();
    }

    unsigned Below(unsigned Bound) { return std::uniform_int_distribution<unsigned>(0, Bound - 1)(Random); }

    window::Selection Node() {
        std::vector<std::wstring> Keys;
        On.Tree->ForEach([&](const window::TreeNode& N) { Keys.push_back(N.Key); });
        window::Selection At{.CurrItem = Keys[Below(static_cast<unsigned>(Keys.size()))]};
        if (Below(10) == 0) At.Key = std::wstring(L"ALTRO");
        // The section of another node: what is selected then is none of its elements.
        if (Below(10) == 0)
            At.Key = std::wstring(window::SectionWord(Keys[Below(static_cast<unsigned>(Keys.size()))]));
        if (Below(10) == 0) At.Index = static_cast<int>(Below(5)) - 1;
        return At;
    }

    std::vector<std::wstring> Texts() {
        std::vector<std::wstring> All;
        On.Tree->ForEach([&](const window::TreeNode& N) {
            if (!window::IsLeafKey(N.Key)) return;
            std::wstring Text;
            ASSERT_FALSE(On.Core.DispData({.CurrItem = N.Key}, Text));
            All.push_back(std::move(Text));
        });
        return All;
    }

    // An operation that may be refused; refused, it has changed nothing.
    template <class Call>
    void AnyOutcome(Call&& Operation) {
        const std::wstring Picture = On.Picture();
        const std::vector<std::wstring> Before = Texts();
        const RegObject Stored = On.Object->Read();
        const bool Modified = On.Tree->Modified();
        std::wstring Out;
        if (!On.Try([&] { return Operation(Out); })) return;
        EXPECT_EQ(On.Picture(), Picture);
        EXPECT_EQ(Texts(), Before);
        EXPECT_TRUE(On.Object->Read() == Stored);
        EXPECT_EQ(On.Tree->Modified(), Modified);
    }

    // A tool shows its own error and answers nothing.
    void ClickTool() {
        const wchar_t* const kTools[] = {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"};
        On.Platform.Answers.assign(1, Below(2) == 0 ? Answer::Yes : Answer::No);
        On.Platform.Shown.clear();
        On.Core.TlbrButtonClick(kTools[Below(4)], Node());
        EXPECT_LE(On.Platform.Shown.size(), 1U);
        On.Platform.Answers.clear();
        if (On.Try([&] { return On.Core.Save(); })) {
            // Two fields with one tag, say: the last saved state is taken up again.
        }
        // What MAPTABLE adds shows in the tree only when it is built again.
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    }

    std::wstring Mutated(std::wstring Text) {
        std::vector<std::wstring> Parts;
        for (std::size_t At = 0; At < Text.size();) {
            const std::size_t End = Text.find(L"\r\n", At);
            Parts.push_back(Text.substr(At, End - At));
            At = End == std::wstring::npos ? Text.size() : End + 2;
        }
        for (unsigned Times = Below(4); Times > 0 && !Parts.empty(); --Times) {
            std::wstring& Line = Parts[Below(static_cast<unsigned>(Parts.size()))];
            const std::size_t Equals = Line.find(L'=');
            const wchar_t* const kValues[] = {L" TRUE",     L" forse", L" \"valore\"", L"",      L" NONE",
                                              L" A|B|NONE", L" 12.5",  L" \"",         L" &HFF", L" 41  [x]"};
            switch (Below(6)) {
                case 0:
                    Line.clear();
                    break;
                case 1:
                    if (Equals != std::wstring::npos) Line.resize(Equals + 1);
                    if (Equals != std::wstring::npos) Line.append(kValues[Below(10)]);
                    break;
                case 2:
                    Line.push_back(static_cast<wchar_t>(Below(0x180) + 1));
                    break;
                case 3:
                    Parts.push_back(Line);
                    break;
                case 4:
                    std::erase(Line, L'=');
                    break;
                default:
                    std::swap(Line, Parts[Below(static_cast<unsigned>(Parts.size()))]);
                    break;
            }
        }
        std::wstring Joined;
        for (const std::wstring& Line : Parts) Joined.append(Line).append(L"\r\n");
        return Joined;
    }

    void SaveRandomText() {
        window::Selection At = Node();
        std::wstring Text;
        if (On.Core.DispData(At, Text)) return;
        Text = Mutated(std::move(Text));
        const std::wstring AsTyped = Text;
        bool Done = false;
        std::wstring NewItemKey;
        AnyOutcome([&](std::wstring& Key) {
            const bool Failed = On.Core.SaveData(At, Text, Key);
            Done = !Failed;
            NewItemKey = Key;
            return Failed;
        });
        EXPECT_EQ(Text, AsTyped);
        if (!Done) return;
        // An alias that was renamed has a new leaf, and that is the selected one.
        if (On.Object->Clsid() == L"ALIAS" && !On.Tree->HasNode(At.CurrItem)) {
            EXPECT_EQ(On.Tree->Selected(), NewItemKey);
            At.CurrItem = NewItemKey;
        }
        std::wstring Shown;
        std::wstring Again;
        std::wstring Key;
        ASSERT_FALSE(On.Core.DispData(At, Shown));
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData(At, Shown, Key); }))) << Narrow(Shown);
        ASSERT_FALSE(On.Core.DispData(At, Again));
        EXPECT_EQ(Again, Shown);
    }

    void SaveAndReopen() {
        // Rendering may fill in defaults of the record (a sort table is made on first sight), so it comes
        // first.
        DropFurtherLeaves();
        const std::vector<std::wstring> Before = Texts();
        if (On.Try([&] { return On.Core.Save(); })) return;
        EXPECT_FALSE(On.Tree->Modified());
        const std::wstring Exported = On.Exported();
        EXPECT_EQ(On.Exported(), Exported);
        // Built anew from what was saved the tree shows the same elements in the same order: tree order was
        // list order. A further leaf of a plain section is gone then.
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
        EXPECT_EQ(Texts(), Before);
        EXPECT_EQ(On.Exported(), Exported);
    }

    // A leaf beyond the first of a plain section stands for nothing of its own and is not built again.
    void DropFurtherLeaves() {
        std::vector<std::wstring> Further;
        On.Tree->ForEach([&](const window::TreeNode& N) {
            if (IsFurtherLeaf(On, N)) Further.push_back(N.Key);
        });
        for (const std::wstring& Key : Further) On.Tree->RemoveNode(Key);
    }
    static bool IsFurtherLeaf(const Desk& Of, const window::TreeNode& N) {
        const bool ListElement = N.Parent && (Of.Tree->Kind(*N.Parent) == kind::kList ||
                                              Of.Tree->Kind(*N.Parent) == kind::kSubList);
        const bool Further = N.Text == window::SectionWord(N.Key) || N.Text.empty();
        return window::IsLeafKey(N.Key) && !ListElement && Further;
    }

    // The record under edit, opened on another desk, shows the same elements in the same order at every
    // level. An item that refuses to be saved as it is can't be looked at this way.
    void TreeOrderIsListOrder() {
        MemoryRegData Copy(Word);
        ClipItem Into{.DataObj = std::shared_ptr<RegData>(std::shared_ptr<void>(), &Copy), .ClassWord = Word};
        std::wstring Made;
        if (On.Try([&] { return On.Server.CopyData(Word, Head{.Key = L"ROOT"}, false, Into); })) return;
        if (!Copy.Written()) {
            const bool Copies = Word != L"BROWSE" && Word != L"LOANCLIENT" && Word != L"LOANMENU";
            EXPECT_FALSE(Copies) << "only these copy nothing; what was saved tells of it";
            return;
        }
        Desk Fresh(Word, Copy.Read());
        ASSERT_TRUE(Accepted(Fresh.Opened));
        EXPECT_EQ(ElementTexts(Fresh), ElementTexts(On));
    }

    // The texts of the leaves, but for further leaves of a plain section, which stand for nothing of their
    // own.
    static std::vector<std::wstring> ElementTexts(Desk& Of) {
        std::vector<std::wstring> All;
        Of.Tree->ForEach([&](const window::TreeNode& N) {
            if (!window::IsLeafKey(N.Key) || IsFurtherLeaf(Of, N)) return;
            std::wstring Text;
            ASSERT_FALSE(Of.Core.DispData({.CurrItem = N.Key}, Text));
            All.push_back(std::move(Text));
        });
        return All;
    }

    void EveryNodeAnswers() {
        static_cast<void>(Texts());
        EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
    }

    std::wstring Word;
    std::mt19937 Random;
    Desk On;
};

class RandomOperations : public ::testing::TestWithParam<std::wstring_view> {};

INSTANTIATE_TEST_SUITE_P(Classes, RandomOperations,
                         ::testing::ValuesIn(ClassWords().begin(), ClassWords().end()),
                         [](const auto& Info) { return Narrow(Info.param); });

TEST_P(RandomOperations, KeepTheRules) {
    for (const unsigned Seed : {1U, 2U, 3U, 4U}) {
        Player(GetParam(), Seed).Play(kSteps);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace kv::test
