// What the forms of navigation have in common, two of everything, and a desk on which such a form is open.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/items/Reading.h"

namespace kv::test {

/// The words offered for the action of a page, with the blank before each.
inline constexpr std::wstring_view kOfferedActions =
    L" MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC QUERYRESULT ADMIN LANG HTMLMOVE LOGIN "
    L"HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC WEBCLIENT DBSELECT SETOPS NAVIGATE PASSWORD CLIENTSETUP "
    L"LOANSTART LOANQUIT SHELLWIN INFO KVRSELECT IMAGE SEEK OPEN CLOSEALL QUERYGET BOOLSTEM SHELF IMAGELIST "
    L"ZOOMIN ZOOMOUT MAP LOANACTION IMAGEUM";
inline constexpr std::wstring_view kOfferedAligns = L" NONE LEFT RIGHT TOP BOTTOM\n";

class FormTest : public ::testing::Test {
  protected:
    using Numbers = std::vector<std::int32_t>;

    FormTest(std::wstring_view ClassWord, RegObject Content)
        : Word(ClassWord), On(ClassWord, std::move(Content)) {}

    static RegObject Said(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
        return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
    }
    static RegObject Button(std::int32_t Id, std::wstring_view Code, std::int32_t Action) {
        return Element(Id, L"", {{L"Code", RegText(Code)}, {L"Action", Action}});
    }
    /// Titles, pages and buttons; titles from id 11, pages 21, buttons 31, the tips of the first 32.
    static RegObject WithContents(RegObject Made) {
        Made = WithList(std::move(Made), L"Titles",
                        {Said(11, L"ITA", L"Menù principale della biblioteca"), Said(12, L"ENG", L"Main")});
        Made = WithList(std::move(Made), L"Html",
                        {Element(21, L"",
                                 {{L"Language", RegText(L"ITA")},
                                  {L"FileName", RegText(L"pagina_iniziale_it.htm")},
                                  {L"Action", 37}}),
                         Element(22, L"", {{L"FileName", RegText(L"home.htm")}})});
        return WithList(std::move(Made), L"Commands",
                        {WithList(Button(31, L"CERCA", 5), L"ToolTips",
                                  {Said(32, L"ITA", L"Apre la ricerca semplice"), Said(33, L"ENG", L"Find")}),
                         WithList(Button(34, L"ESCI", 7), L"ToolTips", {})});
    }

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    std::wstring ButtonNode(std::size_t Nth) const { return Node(L"COMMANDS", Nth); }
    std::wstring ButtonParms(std::size_t Nth) const {
        return KeyBelow(On, KeyBelow(On, ButtonNode(Nth), 1), 1);
    }
    std::wstring Tips(std::size_t Nth) const { return KeyBelow(On, ButtonNode(Nth), 2); }
    std::wstring Tip(std::size_t Of, std::size_t Nth) const { return KeyBelow(On, Tips(Of), Nth); }

    std::int32_t Stored(std::wstring_view Property) { return LongOf(SavedBy(On), Property); }
    Numbers Ids(std::wstring_view List) {
        Numbers Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List)) Found.push_back(Each.Id);
        return Found;
    }
    Numbers TipIds(std::size_t Of) {
        Numbers Found;
        for (const RegObject& Each : ListOf(ListOf(SavedBy(On), L"Commands").at(Of - 1), L"ToolTips"))
            Found.push_back(Each.Id);
        return Found;
    }
    /// The line of the parameters that begins with the keyword.
    std::wstring LineOf(std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Parms());
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos) << Narrow(Keyword);
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    /// The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        EXPECT_EQ(WithoutFolderIds(On.Picture()), WithoutFolderIds(Desk(Word, Saved).Picture()));
    }

    /// A list whose elements are leaves: one more goes to the end, moves to the front and back, and is
    /// deleted; with `Moves` false nothing moves, with `Deletes` false nothing goes.
    void ExpectListLife(const std::wstring& Folder, std::wstring_view List, std::wstring_view NewCaption,
                        bool Moves, bool Deletes) {
        SCOPED_TRACE(Narrow(Folder));
        const Numbers Old = Ids(List);
        ASSERT_EQ(Old.size(), 2U);
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Made, Node(Folder, 3));
        EXPECT_EQ(On.Tree->NodeText(Made), NewCaption);
        const std::int32_t New = Ids(List).at(2);
        EXPECT_EQ(Ids(List), (Numbers{Old[0], Old[1], New}));
        ExpectSameTree();

        std::wstring Moved = Made;
        if (Moves) {
            ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Moved)));
            EXPECT_NE(Moved, Made);
            EXPECT_EQ(Moved, Node(Folder, 2));
            EXPECT_EQ(Ids(List), (Numbers{Old[0], New, Old[1]}));
            ExpectSameTree();
            ASSERT_TRUE(Accepted(MoveAt(On, Moved, 1, Moved)));
            EXPECT_TRUE(RefusedSilently(MoveAt(On, Moved, 1, Moved)));
            ASSERT_TRUE(Accepted(MoveAt(On, Node(Folder, 2), -1, Made)));
            EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Folder, 3), 0, Made)));
            EXPECT_EQ(Ids(List), (Numbers{New, Old[1], Old[0]}));
            ExpectSameTree();
        } else {
            static_cast<void>(SavedBy(On));
            for (const int Direction : {1, 0}) {
                EXPECT_TRUE(Accepted(MoveAt(On, Node(Folder, 2), Direction, Moved)));
                EXPECT_EQ(Moved, Node(Folder, 2)) << "its key is still its own";
            }
            EXPECT_FALSE(On.Tree->Modified());
            EXPECT_EQ(Ids(List), (Numbers{Old[0], Old[1], New}));
        }
        static_cast<void>(SavedBy(On));
        EXPECT_TRUE(Accepted(MoveAt(On, Folder, 1, Moved))) << "a folder does not move";
        EXPECT_FALSE(On.Tree->Modified());

        const Numbers Now = Ids(List);
        const std::wstring Before = On.Picture();
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Folder, 2))));
        EXPECT_EQ(On.Tree->Modified(), Deletes);
        EXPECT_EQ(Ids(List), Deletes ? (Numbers{Now[0], Now[2]}) : Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(On.Tree->Modified(), Deletes);
        EXPECT_EQ(Ids(List), Deletes ? Numbers{} : Now);
        EXPECT_EQ(On.Picture() == Before, !Deletes);
        ExpectSameTree();
    }

    /// The buttons and the tips of the first: added, moved, deleted; a new button has a tip.
    /// `TipKey` is how the key of a new tip begins, after its folder's where it is empty; `TipCaption` what
    /// it shows until it is moved.
    void ExpectButtonLife(std::wstring_view TipKey = {}, std::wstring_view TipCaption = L"Messaggio: [] ") {
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, L"COMMANDS", Made)));
        EXPECT_EQ(Made, ButtonNode(3));
        EXPECT_EQ(On.Tree->NodeText(Made), L"?????");
        EXPECT_EQ(CaptionsBelow(On, Tips(3)), (std::vector<std::wstring>{L"Messaggio: [] "}));
        EXPECT_EQ(TextOf(ListOf(SavedBy(On), L"Commands")[2], L"Code"), L"?????");
        EXPECT_NE(TipIds(3).at(0), 0);
        ExpectSameTree();
        const std::int32_t New = Ids(L"Commands").at(2);
        ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Made)));
        EXPECT_EQ(Made, ButtonNode(2));
        ASSERT_TRUE(Accepted(MoveAt(On, ButtonNode(1), -1, Made)));
        EXPECT_EQ(Ids(L"Commands"), (Numbers{New, 31, 34}));
        EXPECT_EQ(TipIds(2), (Numbers{32, 33})) << "its tips go with it";
        EXPECT_TRUE(RefusedSilently(MoveAt(On, ButtonNode(1), 1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, ButtonNode(3), -1, Made)));
        ExpectSameTree();

        ASSERT_TRUE(Accepted(AddAt(On, Tips(2), Made)));
        EXPECT_EQ(Made, Tip(2, 3));
        const std::wstring Front = TipKey.empty() ? Tips(2) : std::wstring(TipKey);
        EXPECT_EQ(Made.rfind(Front + L" ", 0), 0U) << Narrow(Made);
        EXPECT_EQ(On.Tree->NodeText(Made), TipCaption);
        const std::int32_t NewTip = TipIds(2).at(2);
        EXPECT_NE(NewTip, 0);
        ASSERT_TRUE(Accepted(MoveAt(On, Made, 1, Made)));
        EXPECT_EQ(Made.rfind(Tips(2) + L" ", 0), 0U);
        EXPECT_EQ(TipIds(2), (Numbers{32, NewTip, 33}));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Tip(2, 1), 1, Made)));
        EXPECT_TRUE(Accepted(MoveAt(On, Tips(2), 1, Made))) << "a folder does not move";
        ExpectSameTree();
        ASSERT_TRUE(Accepted(DeleteAt(On, Tip(2, 1))));
        EXPECT_EQ(TipIds(2), (Numbers{NewTip, 33}));
        ASSERT_TRUE(Accepted(DeleteAt(On, Tips(2), true)));
        EXPECT_EQ(TipIds(2), Numbers{});
        EXPECT_EQ(TipIds(1).size(), 1U);
        ExpectSameTree();

        ASSERT_TRUE(Accepted(DeleteAt(On, ButtonNode(2))));
        EXPECT_EQ(Ids(L"Commands"), (Numbers{New, 34}));
        ASSERT_TRUE(Accepted(DeleteAt(On, L"COMMANDS", true)));
        EXPECT_EQ(Ids(L"Commands"), Numbers{});
        EXPECT_TRUE(KeysBelow(On, L"COMMANDS").empty());
        ExpectSameTree();
    }

    /// A further leaf of parameters has no caption. Sections of parameters neither move nor go.
    void ExpectPlainSections() {
        std::wstring Made;
        const std::wstring Before = On.Picture();
        const RegObject Saved = SavedBy(On);
        for (const std::wstring& Key : {Parms(), ButtonParms(1)}) {
            for (const bool Group : {false, true}) EXPECT_TRUE(Accepted(DeleteAt(On, Key, Group)));
            EXPECT_TRUE(Accepted(MoveAt(On, Key, 1, Made)));
        }
        EXPECT_EQ(On.Picture(), Before);
        EXPECT_FALSE(On.Tree->Modified());
        for (const std::wstring& Key : {Parms(), ButtonParms(1)}) {
            const std::wstring Folder = On.Tree->NodeParent(Key);
            ASSERT_TRUE(Accepted(AddAt(On, Key, Made)));
            EXPECT_EQ(Made, Node(Folder, 2));
            EXPECT_EQ(On.Tree->NodeText(Made), L"");
            EXPECT_EQ(On.Text(Made), On.Text(Key));
        }
        EXPECT_EQ(SavedBy(On), Saved);
    }

    /// What changes nothing: unknown sections, a container, the tools.
    void ExpectNothingDone(std::initializer_list<std::wstring_view> Sections) {
        const std::wstring Before = On.Picture();
        const RegObject Saved = SavedBy(On);
        for (const std::wstring_view Key : Sections) {
            std::wstring Text = L"PIPPO= 1";
            std::wstring NewKey;
            EXPECT_TRUE(Accepted(On.Try([&] {
                return On.Core.SaveData({.CurrItem = Parms(), .Key = std::wstring(Key)}, Text, NewKey);
            })));
            std::wstring Shown;
            EXPECT_TRUE(Accepted(On.Try(
                [&] { return On.Core.DispData({.CurrItem = Parms(), .Key = std::wstring(Key)}, Shown); })));
            EXPECT_EQ(Shown, L"");
        }
        On.Tree->MarkModified(false);
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = Parms()}); })));
        EXPECT_EQ(On.Platform.Beeps, 1);
        for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
            On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
        EXPECT_TRUE(On.Platform.Asked.empty());
        EXPECT_TRUE(On.Tree->Served().empty());
        EXPECT_EQ(On.Picture(), Before);
        EXPECT_FALSE(On.Tree->Modified());
        EXPECT_EQ(SavedBy(On), Saved);
    }

    const std::wstring Word;
    Desk On;

  private:
    // A leaf of the tips bears the key of its folder while it is new or moved, else the section word.
    static std::string WithoutFolderIds(std::wstring Picture) {
        const std::wstring New = L"COMMANDTIPS-# # ";
        for (std::size_t At = 0; (At = Picture.find(New, At)) != std::wstring::npos;)
            Picture.replace(At, New.size(), L"COMMANDTIPS # ");
        return Narrow(Picture);
    }
};

}  // namespace kv::test
