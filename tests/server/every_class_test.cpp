// The walk: an object of every class, opened through the server, is given each operation with good and with
// senseless arguments. Nothing escapes; a failure is shown once and has changed nothing; the object loads and
// renders afterwards as it did before.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <set>

#include "tests/support/Desk.h"

namespace kv::test {
namespace {

constexpr std::array<std::wstring_view, 30> kLadder{
    L"ALIAS", L"VCLIENT",  L"RETRIEVAL",   L"BROWSE",  L"CATALOGUE",  L"CATPROC",    L"COMMAND", L"FILTER",
    L"HELP",  L"IMPORT",   L"IMPORTPROC",  L"LOAN",    L"LOANCLIENT", L"LOANMENU",   L"MAIL",    L"MAILGROUP",
    L"MATER", L"MEMBER",   L"MENU",        L"PROFILE", L"QUERY",      L"REPOSITORY", L"SETOPS",  L"SORT",
    L"STEM",  L"STOPWORD", L"STRINGTABLE", L"TABLE",   L"WEBCLIENT",  L"WEBSERVER",
};

TEST(EveryClassWord, StandsInTheLadderInItsPlace) {
    EXPECT_EQ(std::vector<std::wstring_view>(ClassWords().begin(), ClassWords().end()),
              std::vector<std::wstring_view>(kLadder.begin(), kLadder.end()));
}

// Their SaveData refuses a section that they do not have, without a message; the others pass over it.
constexpr std::wstring_view kRefuseUnknownSections[] = {L"PROFILE", L"QUERY", L"RETRIEVAL", L"SORT"};

constexpr std::int32_t kHuge = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
const std::wstring kNoPath;

/// What may be seen of an open object.
struct Sight {
    std::wstring Picture;
    std::vector<std::wstring> Texts;  // of the leaves
    bool operator==(const Sight&) const = default;
};

class EveryClass : public ::testing::TestWithParam<std::wstring_view> {
  protected:
    EveryClass() : Word(GetParam()), On(Word) {}

    void SetUp() override {
        ASSERT_TRUE(Accepted(On.Opened));
        Grow();
        Reload();
        See();  // what is made on first sight is there from now on
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
        Reload();
        Whole = See();
        Stored = On.Object->Read();
    }

    TreeDll& Dll() { return On.Server; }

    // Elements in every list, as many of them as may be saved.
    void Grow() {
        On.Tree->SetSyntaxOn(false);
        for (int Round = 0; Round < 3; ++Round)
            for (const std::wstring& Key : Keys()) {
                if (IsLeafKey(Key) || !On.Tree->HasNode(Key)) continue;
                std::wstring Made;
                if (On.Try([&] { return On.Core.EditData({.CurrItem = Key}, Made); })) continue;
                if (Word == L"CATPROC" && Key == L"FIELDS") {
                    EXPECT_TRUE(Accepted(On.Put(Made, L"NAME= C" + Made, false)));
                }
                if (On.Try([&] { return On.Core.Save(); })) Reload();
            }
        On.Tree->SetSyntaxOn(true);
        On.Platform.Beeps = 0;
    }
    void Reload() {
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    }

    std::vector<std::wstring> Keys() const {
        std::vector<std::wstring> Found;
        On.Tree->ForEach([&](const window::TreeNode& Node) { Found.push_back(Node.Key); });
        return Found;
    }
    Sight See() {
        Sight Seen{On.Picture(), {}};
        for (const std::wstring& Key : Keys())
            if (IsLeafKey(Key)) Seen.Texts.push_back(On.Text(Key));
        return Seen;
    }
    void ExpectUnchanged() {
        EXPECT_TRUE(See() == Whole) << Narrow(On.Picture());
        EXPECT_TRUE(On.Object->Read() == Stored);
    }
    // The object as it was before the operation that went well.
    void Restore() {
        if (!(On.Object->Read() == Stored)) On.Object->Write(Stored);
        Reload();
    }

    /// Whether a failure may be without a word, as that of what does not move.
    enum class Silence { Never, Allowed };

    // Runs one operation: nothing escapes; True comes with one error and nothing changed, False with none.
    template <class Call>
    bool Run(std::string_view Operation, Call&& Run, Silence Silent = Silence::Never) {
        SCOPED_TRACE(Operation);
        const bool Modified = On.Tree->Modified();
        bool Failed = false;
        On.Platform.Shown.clear();
        EXPECT_NO_THROW(Failed = Run());
        EXPECT_TRUE(CoreUtil::Instance().LastError().Empty()) << "what is left unshown is shown later";
        CoreUtil::Instance().ForgetError();
        if (!Failed) {
            EXPECT_TRUE(On.Platform.Shown.empty()) << "a success shows nothing";
            return false;
        }
        EXPECT_LE(On.Platform.Shown.size(), 1U);
        EXPECT_TRUE(Silent == Silence::Allowed || !On.Platform.Shown.empty()) << "a failure without a word";
        for (const KvError& Error : On.Platform.Shown) {
            EXPECT_NE(Error.Number, 0);
            EXPECT_FALSE(Error.Source.empty());
            EXPECT_FALSE(Error.Description.empty());
        }
        EXPECT_EQ(On.Tree->Modified(), Modified);
        ExpectUnchanged();
        return true;
    }

    // The section words of the tree, one leaf and one folder of each.
    std::vector<std::wstring> Nodes() const {
        std::vector<std::wstring> Found;
        std::set<std::pair<std::wstring, bool>> Seen;
        for (const std::wstring& Key : Keys())
            if (Seen.emplace(SectionWord(Key), IsLeafKey(Key)).second) Found.push_back(Key);
        return Found;
    }

    // Each operation that takes a head, on one.
    void RunAll(const Head& At, std::int32_t Direction, const std::wstring& Text, bool Group) {
        SCOPED_TRACE("folder [" + Narrow(At.CurrFolder) + "] item [" + Narrow(At.CurrItem) + "] index " +
                     std::to_string(At.Index) + " key [" + Narrow(At.Key) + "]");
        std::wstring Buffer;
        Run("DispData", [&] { return Dll().DispData(kNoPath, At, Buffer); });
        std::wstring Typed = Text;
        std::wstring Out = L"prima";
        const bool Refuses = std::find(std::begin(kRefuseUnknownSections), std::end(kRefuseUnknownSections),
                                       Word) != std::end(kRefuseUnknownSections);
        if (Run(
                "SaveData", [&] { return Dll().SaveData(kNoPath, At, Out, Typed); },
                Refuses && Buffer.empty() ? Silence::Allowed : Silence::Never))
            EXPECT_EQ(Out, L"prima");
        else
            Restore();
        EXPECT_EQ(Typed, Text) << "the operator's text is not eaten";
        Head Moved = At;
        if (Run(
                "MoveData", [&] { return Dll().MoveData(kNoPath, Moved, Direction); }, Silence::Allowed))
            EXPECT_EQ(Moved.CurrItem, At.CurrItem);
        else
            Restore();
        Out = L"prima";
        if (Run("EditData", [&] { return Dll().EditData(kNoPath, At, Out); }))
            EXPECT_EQ(Out, L"prima");
        else
            Restore();
        if (!Run("DeleteData", [&] { return Dll().DeleteData(kNoPath, At, Group); })) Restore();
        ClipItem Nowhere{.DataObj = nullptr, .ClassWord = Word};
        Run("CopyData", [&] { return Dll().CopyData(kNoPath, At, Group, Nowhere); });
        Run("PasteData", [&] { return Dll().PasteData(Word, At, Out, Nowhere); });
        Restore();
        Run("ShowPropTable", [&] { return Dll().ShowPropTable(kNoPath, At.CurrFolder, At.CurrItem); });
        Run("HelpShow", [&] { return Dll().HelpShow(kNoPath, At.CurrFolder, At.CurrItem, At.Key); });
    }

    // A tool answers nothing and shows its own error; what it did to the record shows when it is saved.
    void Click(const std::wstring& Method, const Head& At) {
        SCOPED_TRACE(Narrow(Method));
        On.Platform.Shown.clear();
        EXPECT_NO_THROW(Dll().TlbrButtonClick(Method, At.CurrFolder, At.CurrItem, At.Key));
        EXPECT_LE(On.Platform.Shown.size(), 1U);
        EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
        EXPECT_TRUE(On.Object->Read() == Stored);
        Restore();
    }

    std::wstring Word;
    Desk On;
    Sight Whole;
    RegObject Stored;
};

INSTANTIATE_TEST_SUITE_P(Ladder, EveryClass, ::testing::ValuesIn(kLadder),
                         [](const auto& Info) { return Narrow(Info.param); });

TEST_P(EveryClass, TellsWhoItIs) {
    std::wstring Name, Desc, Clsid, Id, Users;
    std::int16_t Version = 0;
    ASSERT_FALSE(Run("GetObjectInfo",
                     [&] { return Dll().GetObjectInfo(kNoPath, Name, Desc, Version, Clsid, Id, Users); }));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
    EXPECT_EQ(Clsid, Word);
    EXPECT_EQ(Users, L"ADMIN");
    EXPECT_EQ(On.Tree->Root()->Key, L"ROOT");
    EXPECT_EQ(On.Tree->Root()->Text, L"PROVA");
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_P(EveryClass, TakesEachOperationOnEachOfItsNodes) {
    for (const bool Strict : {true, false}) {
        On.Tree->SetSyntaxOn(Strict);
        std::size_t Nth = 0;
        // A restored tree has new keys: the nodes are asked for anew.
        for (std::size_t I = 0; I < Nodes().size(); ++I) {
            const auto At = [&] { return On.Core.HeadOf({.CurrItem = Nodes()[I]}); };
            std::wstring Shown;
            if (Run("DispData", [&] { return Dll().DispData(kNoPath, At(), Shown); })) continue;
            std::wstring Out;
            if (!Shown.empty() && !Run("SaveData", [&] {
                    std::wstring Text = Shown;
                    return Dll().SaveData(kNoPath, At(), Out, Text);
                })) {
                std::wstring Again;
                Run("DispData", [&] { return Dll().DispData(kNoPath, At(), Again); });
                EXPECT_EQ(Narrow(Again), Narrow(Shown));
                Restore();
            }
            ++Nth;
            RunAll(At(), Nth % 2 == 0 ? 1 : -1, Shown, Nth % 3 == 0);
        }
    }
}

TEST_P(EveryClass, TakesSenselessArguments) {
    // Words of other classes, and what is no word at all.
    const std::vector<std::wstring> kStrange{L"",
                                             L" ",
                                             L"PIPPO",
                                             L"PARMS",
                                             L"PARMS 0",
                                             L"parms",
                                             L"FIELDS",
                                             L"TITLES",
                                             L"ROOT",
                                             L"FIELDS-",
                                             L"FIELDPARMS-0",
                                             L"COMMANDS",
                                             L"-",
                                             L"\x20AC=",
                                             L"PARMS\r",
                                             std::wstring(L"A\0B", 3),
                                             std::wstring(5000, L'X')};
    const std::vector<std::wstring> kTexts{L"",
                                           L"\r\n",
                                           L"\r\r\r",
                                           L"=",
                                           L"=x",
                                           L"PIPPO",
                                           L"PIPPO= 1",
                                           L"NAME",
                                           L"NAME= \"",
                                           L"'\r\n;\r\n*",
                                           L"NAME= x\r\nNAME= x",
                                           L"\"\"=\"\"",
                                           L"41 = FF",
                                           std::wstring(L"\0\0=\0", 4),
                                           L"\xFFFE\xD800=\x1",
                                           std::wstring(20000, L'='),
                                           std::wstring(20000, L'\t') + L"A=B"};
    constexpr std::int32_t kNumbers[] = {0, 1, -1, 2, 99, kHuge, kLeast, kHuge - 1, kLeast + 1};
    std::mt19937 Random(static_cast<unsigned>(Word.size()));
    const auto Below = [&](std::size_t Bound) {
        return std::uniform_int_distribution<std::size_t>(0, Bound - 1)(Random);
    };
    const auto Any = [&] {
        const std::vector<std::wstring> Own = Nodes();
        const std::size_t Nth = Below(Own.size() + kStrange.size());
        return Nth < Own.size() ? Own[Nth] : kStrange[Nth - Own.size()];
    };
    for (int Step = 0; Step < 100; ++Step) {
        SCOPED_TRACE("step " + std::to_string(Step));
        On.Tree->SetSyntaxOn(Step % 3 != 0);
        Head At{.CurrFolder = Any(), .CurrItem = Any(), .Index = kNumbers[Below(std::size(kNumbers))]};
        // Half of the words are those of a section here, so that there is something to be senseless about.
        At.Key = Step % 2 == 0 ? std::wstring(SectionWord(Nodes()[Below(Nodes().size())])) : Any();
        if (Step % 5 == 0) {
            const std::int32_t Index = At.Index;
            At = On.Core.HeadOf({.CurrItem = Nodes()[Below(Nodes().size())]});
            At.Index = Index;
        }
        RunAll(At, kNumbers[Below(std::size(kNumbers))], kTexts[Below(kTexts.size())], Step % 4 == 0);
        if (Step % 6 == 0) Click(kStrange[Below(kStrange.size())], At);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

// Each value of a section's text in turn is replaced by something senseless.
TEST_P(EveryClass, TakesSenselessValues) {
    const std::wstring kValues[] = {L"999999999999999999999",
                                    L"-999999999999999999999",
                                    L"1E400",
                                    L"\"",
                                    L"|||",
                                    L"NONE|NONE|PIPPO",
                                    L"&HFFFFFFFFF",
                                    L"=",
                                    L"",
                                    std::wstring(5000, L'"')};
    std::size_t Turn = 0;
    for (std::size_t I = 0; I < Nodes().size(); ++I) {
        std::wstring Shown;
        if (Run("DispData",
                [&] { return Dll().DispData(kNoPath, On.Core.HeadOf({.CurrItem = Nodes()[I]}), Shown); }))
            continue;
        for (std::size_t At = Shown.find(L'='); At != std::wstring::npos;
             At = Shown.find(L'=', Shown.find(L"\r\n", At))) {
            std::wstring Text = Shown.substr(0, At + 1) + kValues[Turn++ % std::size(kValues)] +
                                Shown.substr(std::min(Shown.find(L"\r\n", At), Shown.size()));
            On.Tree->SetSyntaxOn(Turn % 3 != 0);
            std::wstring Out;
            SCOPED_TRACE(Narrow(Text.substr(0, 2000)));
            if (!Run("SaveData", [&] {
                    return Dll().SaveData(kNoPath, On.Core.HeadOf({.CurrItem = Nodes()[I]}), Out, Text);
                }))
                Restore();
        }
    }
}

TEST_P(EveryClass, TakesToolsItHasAndToolsItHasNot) {
    for (const wchar_t* const Tool :
         {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS", L"COPY", L"", L"findtag", L"PIPPO"})
        for (std::size_t I = 0; I < Nodes().size(); ++I) {
            Click(Tool, On.Core.HeadOf({.CurrItem = Nodes()[I]}));
            Click(Tool, {.CurrFolder = L"NIENTE", .CurrItem = L"", .Index = -1, .Key = L"ALTRO"});
        }
}

TEST_P(EveryClass, CopiesPastesExportsAndImports) {
    const Head At{.CurrFolder = L"ROOT", .CurrItem = L"ROOT", .Key = L"ROOT"};
    const auto Into = std::make_shared<MemoryRegData>(Word);
    ClipItem Clip{.DataObj = Into, .ClassWord = Word};
    for (const bool Group : {false, true})
        EXPECT_FALSE(Run("CopyData", [&] { return Dll().CopyData(kNoPath, At, Group, Clip); }));
    EXPECT_TRUE(!Into->Written() || Into->Read() == Stored);
    std::wstring Out;
    EXPECT_FALSE(Run("PasteData", [&] { return Dll().PasteData(Word, At, Out, Clip); }));
    for (const std::wstring& Other : {std::wstring(L"PIPPO"), std::wstring(), Word + L" "})
        EXPECT_TRUE(Refused(On.Try([&] { return Dll().PasteData(Other, At, Out, Clip); }), 20000,
                            L"vdSvr.PasteData",
                            L"I dati memorizzati sono di una classe diversa da " + Other));
    EXPECT_FALSE(Run("Save", [&] { return Dll().Save(kNoPath); }));
    EXPECT_TRUE(On.Object->Read() == Stored) << "what was not touched is saved as it was";

    const std::wstring Text = On.Exported();
    EXPECT_EQ(On.Exported(), Text);
    vdSvr Apart(nullptr, [] { return std::make_shared<window::TreeModel>(); });
    std::wstring Buffer;
    EXPECT_TRUE(Run("Export", [&] { return Apart.Export(nullptr, Word, Buffer); }));
    EXPECT_TRUE(Run("Import", [&] { return Apart.Import(nullptr, Word, Buffer); }));
    for (const wchar_t* const Garbage :
         {L"", L"BEGIN", L"BEGIN \r\nEND ", L"END PARMS\r\n", L"\"\r\n=\r\n"}) {
        const auto Object = std::make_shared<MemoryRegData>(Word, Stored);
        Buffer = Garbage;
        Run("Import", [&] { return Apart.Import(Object, Word, Buffer); });
        EXPECT_TRUE(Object->Read() == Stored);
    }
    Apart.DesignTree().reset();
    Run("Export without a tree", [&] { return Apart.Export(On.Object, Word, Buffer); });
    ExpectUnchanged();
}

TEST_P(EveryClass, SurvivesAnObjectThatIsNoneOfIts) {
    // Every list and value of the object is something else.
    RegObject Strange = Stored;
    for (RegObject& Child : Strange.Children) {
        Child.Children.clear();
        Child.Children.emplace_back();
        Child.Children.back().Children.emplace_back();
        Child.Values.push_back({L"Id", std::wstring(L"x")});
    }
    for (RegNamedValue& Value : Strange.Values) Value.Value = std::wstring(L"\x1\"9");
    Strange.Id = kLeast;
    Desk Other(Word, Strange);
    if (Other.Opened) {
        EXPECT_NE(Other.Opened->Number, 0) << "it says why it can't be opened";
    } else {
        EXPECT_GT(Other.Tree->Count(), 1U);
        std::vector<std::wstring> Leaves;
        Other.Tree->ForEach([&](const window::TreeNode& Node) {
            if (IsLeafKey(Node.Key)) Leaves.push_back(Node.Key);
        });
        for (const std::wstring& Key : Leaves) {
            std::wstring Buffer;
            // Try counts what is shown: one error where it fails, none where it does not.
            const Outcome Got = Other.Try([&] { return Other.Core.DispData({.CurrItem = Key}, Buffer); });
            EXPECT_TRUE(Got ? Got->Number != 0 : !Buffer.empty()) << Narrow(Key);
        }
    }
    // One whose version is no 16-bit number tells so.
    RegObject Late = Stored;
    Late.Version = kHuge;
    Desk Third(Word, Late);
    std::wstring Name, Desc, Clsid, Id, Users;
    std::int16_t Version = 0;
    const Outcome Got =
        Third.Try([&] { return Third.Server.GetObjectInfo(kNoPath, Name, Desc, Version, Clsid, Id, Users); });
    ASSERT_TRUE(Got);
    EXPECT_EQ(Got->Number, 6);
    EXPECT_EQ(Name, L"");
}

TEST_P(EveryClass, EndsItsWork) {
    bool Cancel = true;
    EXPECT_FALSE(Run("Quit", [&] { return Dll().Quit(Cancel); }));
    EXPECT_FALSE(Cancel);
    std::shared_ptr<RegData> Back;
    EXPECT_FALSE(Dll().Terminate(kNoPath, Back));
    EXPECT_EQ(Back, On.Object);
    std::wstring Buffer;
    const Head At{.Key = L"PARMS"};
    EXPECT_TRUE(Refused(On.Try([&] { return Dll().DispData(kNoPath, At, Buffer); }), 91, L"vdSvr.DispData",
                        L"Oggetto non impostato"));
    // Opened without an object it has nothing to load, and knows that.
    RegData* Target = nullptr;
    EXPECT_FALSE(On.Server.ShowData(nullptr, nullptr, Word, Target, false));
    EXPECT_EQ(Target, nullptr);
    On.Platform.Shown.clear();
    EXPECT_TRUE(Refused(On.Try([&] { return Dll().LoadData(kNoPath); }), 91, L"vdSvr.LoadData",
                        L"Oggetto non impostato"));
    EXPECT_TRUE(
        Refused(On.Try([&] { return Dll().Save(kNoPath); }), 91, L"vdSvr.Save", L"Oggetto non impostato"));
    On.Server.ShutDown();
    EXPECT_TRUE(On.Server.ShowData(nullptr, On.Object, Word, Target, false));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 91);
    CoreUtil::Instance().ForgetError();
}

}  // namespace
}  // namespace kv::test
