// What the operations of all items have in common: the plain tree, nodes, lists, blocks, identity, clipboard.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "frame/ListSection.h"
#include "frame/vdbShared.h"
#include "frame/vdbcModule.h"
#include "tests/frame/PlainItem.h"
#include "tests/frame/Told.h"
#include "window/TreeModel.h"

namespace kv::test {
namespace {

using window::TreeModel;
using window::TreeNode;

class Shared : public FrameTest {
  protected:
    /// One node a line: depth, key, caption, images, kind.
    std::wstring Picture() const {
        std::wstring Out;
        Tree.ForEach([&](const TreeNode& Node) {
            for (const TreeNode* N = Node.Parent; N; N = N->Parent) Out.append(L"  ");
            Out.append(Node.Key).append(L" [").append(Node.Text).append(L"] ");
            Out.append(std::to_wstring(Node.Image)).append(L",");
            Out.append(std::to_wstring(Node.SelectedImage));
            if (!Tree.Kind(Node).empty()) Out.append(L" ").append(Tree.Kind(Node));
            Out.append(L"\n");
        });
        return Out;
    }
    std::vector<std::wstring> Captions(std::wstring_view Folder) const {
        std::vector<std::wstring> Out;
        Tree.ForEach([&](const TreeNode& Node) {
            if (Node.Parent && Node.Parent->Key == Folder) Out.push_back(Node.Text);
        });
        return Out;
    }
    std::wstring KeyOf(std::wstring_view Caption) const {
        std::wstring Out;
        Tree.ForEach([&](const TreeNode& Node) {
            if (Node.Text == Caption) Out = Node.Key;
        });
        return Out;
    }

    MemoryRegData Object{L"PROVA", [] {
                             RegObject Content;
                             Content.Name = L"Soggetti";
                             return Content;
                         }()};
    TreeModel Tree;
};

std::wstring WithId(std::wstring_view Word, std::int32_t Id) {
    return std::wstring(Word) + L" " + std::to_wstring(Id);
}

// ---- the tree

TEST_F(Shared, ThePlainTree) {
    vdbShared::StartPlainTree(Tree, Object);
    const std::int32_t Id = CoreUtil::Instance().NextNodeId() - 1;
    EXPECT_EQ(Narrow(Picture()), Narrow(L"ROOT [Soggetti] 12,11\n"
                                        L"  PARMS [Parametri] 12,11\n"
                                        L"    " +
                                        WithId(L"PARMS", Id) + L" [Parametri] 9,9\n"));
    EXPECT_EQ(Tree.Count(), 3U);
}

TEST_F(Shared, StartingAnewTakesTheOldNodesOut) {
    vdbShared::StartPlainTree(Tree, Object);
    vdbShared::AddFolder(Tree, L"FIELDS", L"Componenti", kind::kList);
    const std::wstring OldLeaf = KeyOf(L"Parametri");
    vdbShared::StartPlainTree(Tree, Object);
    EXPECT_EQ(Tree.Count(), 3U);
    EXPECT_FALSE(Tree.HasNode(L"FIELDS"));
    EXPECT_FALSE(Tree.HasNode(OldLeaf)) << "a leaf gets a new id each time";
}

TEST_F(Shared, FoldersAndLeavesStandInOrderBelowTheRoot) {
    vdbShared::StartTree(Tree, Object);
    vdbShared::AddFolder(Tree, L"PARMS", L"Parametri");
    vdbShared::AddFolder(Tree, L"FIELDS", L"Componenti", kind::kList);
    vdbShared::AddLeaf(Tree, L"FIELDS", L"primo");
    vdbShared::AddLeaf(Tree, L"FIELDS", L"secondo");
    EXPECT_EQ(Captions(L"ROOT"), (std::vector<std::wstring>{L"Parametri", L"Componenti"}));
    EXPECT_EQ(Captions(L"FIELDS"), (std::vector<std::wstring>{L"primo", L"secondo"}));
    EXPECT_EQ(Tree.Kind(*Tree.Find(L"FIELDS")), L"RG");
    EXPECT_EQ(Tree.Kind(*Tree.Find(L"PARMS")), L"");
}

TEST_F(Shared, ANewNodeIsAChildOfTheFolderOfItsName) {
    vdbShared::StartPlainTree(Tree, Object);
    std::wstring Key = L"qualsiasi";
    const std::int32_t Before = CoreUtil::Instance().NextNodeId();
    vdbShared::SetNode(Tree, L"PARMS", L"Titolo", Key);
    EXPECT_EQ(Key, WithId(L"PARMS", Before + 1));
    EXPECT_EQ(Captions(L"PARMS"), (std::vector<std::wstring>{L"Parametri", L"Titolo"}));
    const TreeNode* const Node = Tree.Find(Key);
    ASSERT_NE(Node, nullptr);
    EXPECT_EQ(Node->Image, 9);
    EXPECT_EQ(Node->SelectedImage, 9);
    EXPECT_EQ(Tree.Kind(*Node), L"");
}

TEST_F(Shared, ANewNodeStandsInTheGivenRelation) {
    vdbShared::StartTree(Tree, Object);
    vdbShared::AddFolder(Tree, L"FIELDS", L"Componenti", kind::kList);
    std::wstring Middle;
    vdbShared::SetNode(Tree, L"FIELDS", L"M", Middle);
    const struct {
        std::int32_t Relationship;
        std::wstring_view Caption;
        std::vector<std::wstring> Expected;
    } kRows[] = {
        {relation::kBefore, L"B", {L"B", L"M"}},
        {relation::kAfter, L"A", {L"B", L"M", L"A"}},
        {relation::kBefore, L"B2", {L"B", L"B2", L"M", L"A"}},
        {relation::kAfter, L"A2", {L"B", L"B2", L"M", L"A2", L"A"}},
    };
    for (const auto& Row : kRows) {
        std::wstring Key = Middle;
        vdbShared::SetNode(Tree, L"FIELDS", Row.Caption, Key, Row.Relationship);
        EXPECT_NE(Key, Middle);
        EXPECT_TRUE(Key.starts_with(L"FIELDS "));
        EXPECT_EQ(Captions(L"FIELDS"), Row.Expected);
    }
    std::wstring Key = Middle;
    vdbShared::SetNode(Tree, L"FIELDS", L"figlio", Key, relation::kChild);
    EXPECT_EQ(Tree.NodeParent(Key), Middle) << "a child of the node that the key held";
}

TEST_F(Shared, WithoutANodeOnlyTheKeyIsMade) {
    vdbShared::StartPlainTree(Tree, Object);
    const std::wstring Before = Picture();
    std::wstring Key = L"x";
    vdbShared::SetNode(Tree, L"PARMS", L"Titolo", Key, {}, true);
    EXPECT_TRUE(Key.starts_with(L"PARMS "));
    EXPECT_FALSE(Tree.HasNode(Key));
    Key = L"non esiste";
    vdbShared::SetNode(Tree, L"MANCA", L"Titolo", Key, relation::kBefore, true);
    EXPECT_TRUE(Key.starts_with(L"MANCA "));
    EXPECT_EQ(Picture(), Before);
    std::wstring Again;
    vdbShared::SetNode(Tree, L"MANCA", L"Titolo", Again, {}, true);
    EXPECT_NE(Again, Key) << "each key has an id of its own";
}

TEST_F(Shared, ARelativeThatIsNotInTheTreeRaisesAndChangesNothing) {
    vdbShared::StartPlainTree(Tree, Object);
    const std::wstring Before = Picture();
    std::wstring Key = L"PARMS 0";
    EXPECT_EQ(NumberRaised([&] { vdbShared::SetNode(Tree, L"MANCA", L"x", Key); }), 91);
    EXPECT_EQ(NumberRaised([&] { vdbShared::SetNode(Tree, L"PARMS", L"x", Key, relation::kAfter); }), 91);
    EXPECT_EQ(Key, L"PARMS 0") << "no key is handed back";
    EXPECT_EQ(NumberRaised([&] { vdbShared::AddLeaf(Tree, L"MANCA", L"x"); }), 91);
    EXPECT_EQ(NumberRaised([&] { vdbShared::AddPlainLeaf(Tree, {.Key = L"MANCA"}, Key); }), 91);
    EXPECT_EQ(NumberRaised([&] { vdbShared::AddFolder(Tree, L"PARMS", L"x"); }), 457);
    EXPECT_EQ(Picture(), Before);
    EXPECT_FALSE(Tree.Modified());
}

TEST_F(Shared, AFurtherPlainLeafBearsTheSectionWord) {
    vdbShared::StartPlainTree(Tree, Object);
    std::wstring Key;
    vdbShared::AddPlainLeaf(Tree, {.Key = L"PARMS"}, Key);
    EXPECT_EQ(Captions(L"PARMS"), (std::vector<std::wstring>{L"Parametri", L"PARMS"}));
    EXPECT_TRUE(Tree.HasNode(Key));
    EXPECT_TRUE(Tree.Modified());
}

// ---- lists

class SharedList : public Shared {
  protected:
    void SetUp() override {
        Shared::SetUp();
        vdbShared::StartTree(Tree, Object);
        vdbShared::AddFolder(Tree, L"FIELDS", L"Componenti", kind::kList);
        for (const wchar_t* const Name : {L"a", L"b", L"c", L"d"}) {
            List.Add(Name);
            vdbShared::AddLeaf(Tree, L"FIELDS", Name);
        }
    }
    std::vector<std::wstring> Elements() const {
        std::vector<std::wstring> Out;
        for (std::int32_t I = 1; I <= List.Count(); ++I) Out.push_back(List.Item(I));
        return Out;
    }
    /// Moves the element of that caption; the rebuilding is an item's own.
    bool Move(std::wstring_view Caption, std::int32_t Direction, Head& At) {
        At.CurrItem = KeyOf(Caption);
        At.Key = L"FIELDS";
        At.CurrFolder = L"FIELDS";
        At.Index = Tree.NodeId(At.CurrItem);
        Tree.SelectNode(At.CurrItem);
        return vdbShared::MoveElement(
            L"Prova.MoveData", Tree, List, At, Direction,
            [&](std::int32_t NewIndex, std::wstring& Key, std::int32_t Relationship) {
                Relation = Relationship;
                if (BuildFails > 0 && BuildFails-- > 0) return true;
                vdbShared::SetNode(Tree, L"FIELDS", List.Item(NewIndex), Key, Relationship);
                return false;
            });
    }

    ParmList<std::wstring> List;
    std::int32_t Relation = 0;
    int BuildFails = 0;  // so many buildings of a node fail
};

TEST_F(SharedList, AnElementMovesOnePlaceAndItsNodeWithIt) {
    const struct {
        std::wstring_view Caption;
        std::int32_t Direction;
        std::int32_t Relation;
        std::vector<std::wstring> After;
    } kRows[] = {
        {L"c", 1, 3, {L"a", L"c", L"b", L"d"}},          {L"c", 5, 3, {L"c", L"a", L"b", L"d"}},
        {L"c", -1, 2, {L"a", L"c", L"b", L"d"}},         {L"c", 0, 2, {L"a", L"b", L"c", L"d"}},
        {L"c", -9, 2, {L"a", L"b", L"d", L"c"}},         {L"a", -1, 2, {L"b", L"a", L"d", L"c"}},
        {L"c", 2147483647, 3, {L"b", L"a", L"c", L"d"}},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Caption) + " " + std::to_string(Row.Direction));
        Tree.MarkModified(false);
        Head At;
        const std::wstring Old = KeyOf(Row.Caption);
        ASSERT_TRUE(Succeeds(Move(Row.Caption, Row.Direction, At)));
        EXPECT_EQ(Elements(), Row.After);
        EXPECT_EQ(Captions(L"FIELDS"), Row.After) << "tree order is list order";
        EXPECT_EQ(Relation, Row.Relation);
        EXPECT_NE(At.CurrItem, Old) << "the node has a new key";
        EXPECT_FALSE(Tree.HasNode(Old));
        EXPECT_EQ(At.CurrItem, KeyOf(Row.Caption));
        EXPECT_EQ(Tree.Selected(), At.CurrItem);
        EXPECT_TRUE(Tree.Modified());
        EXPECT_EQ(Tree.Count(), 6U);
    }
}

TEST_F(SharedList, AMoveThatHasNowhereToGoChangesNothing) {
    const std::wstring Before = Picture();
    const struct {
        std::wstring_view Caption;
        std::int32_t Direction;
    } kRows[] = {{L"a", 1}, {L"a", 100}, {L"d", 0}, {L"d", -1}};
    for (const auto& Row : kRows) {
        Head At;
        EXPECT_TRUE(Move(Row.Caption, Row.Direction, At));
        EXPECT_EQ(At.CurrItem, KeyOf(Row.Caption));
        EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
        EXPECT_EQ(Picture(), Before);
        EXPECT_FALSE(Tree.Modified());
        EXPECT_EQ(Relation, 0) << "nothing was rebuilt";
    }
}

TEST_F(SharedList, ANodeThatIsNotBuiltGoesBackWithItsElement) {
    for (const std::int32_t Direction : {1, -1}) {
        BuildFails = 1;
        Head At;
        EXPECT_TRUE(Move(L"b", Direction, At));
        EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
        EXPECT_EQ(Captions(L"FIELDS"), Elements());
        EXPECT_FALSE(Tree.Modified());
    }
}

TEST_F(SharedList, WhatIsNoElementDoesNotMove) {
    const std::wstring Before = Picture();
    for (const std::wstring_view Key : {L"FIELDS", L"ROOT", L"", L"FIELDS 0"}) {
        Head At{L"FIELDS", std::wstring(Key), 1, L"FIELDS"};
        EXPECT_TRUE(vdbShared::MoveElement(L"Prova.MoveData", Tree, List, At, 1,
                                           [](std::int32_t, std::wstring&, std::int32_t) { return false; }));
        EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
        EXPECT_EQ(Picture(), Before);
    }
}

TEST_F(SharedList, OneElementIsDeletedWithItsNode) {
    vdbShared::DeleteElement(Tree, List, L"FIELDS", {L"FIELDS", KeyOf(L"b"), 2, L"FIELDS"}, false);
    EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"a", L"c", L"d"}));
    EXPECT_EQ(Captions(L"FIELDS"), Elements());
    EXPECT_TRUE(Tree.Modified());
    vdbShared::DeleteElement(Tree, List, L"FIELDS", {L"FIELDS", KeyOf(L"d"), 3, L"FIELDS"}, false);
    vdbShared::DeleteElement(Tree, List, L"FIELDS", {L"FIELDS", KeyOf(L"a"), 1, L"FIELDS"}, false);
    vdbShared::DeleteElement(Tree, List, L"FIELDS", {L"FIELDS", KeyOf(L"c"), 0, L"FIELDS"}, false);
    EXPECT_EQ(List.Count(), 0);
    EXPECT_TRUE(Tree.HasNode(L"FIELDS")) << "the folder stays";
    EXPECT_EQ(Tree.Count(), 2U);
}

TEST_F(SharedList, AFolderIsEmptiedWithItsNodes) {
    vdbShared::DeleteElement(Tree, List, L"FIELDS", {L"FIELDS", KeyOf(L"b"), 2, L"FIELDS"}, true);
    EXPECT_EQ(List.Count(), 0);
    EXPECT_TRUE(Tree.HasNode(L"FIELDS"));
    EXPECT_EQ(Tree.Count(), 2U);
    EXPECT_TRUE(Tree.Modified());
}

TEST_F(SharedList, AListWithoutAFolderInTheTreeGoesByTheIndex) {
    const std::wstring Before = Picture();
    const Head Second{L"FIELDS", L"FIELDS", 2, L"UNSEEN"};
    EXPECT_TRUE(Succeeds(vdbShared::MoveUnseen(Tree, List, Second, 1)));
    EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"b", L"a", L"c", L"d"}));
    EXPECT_TRUE(Succeeds(vdbShared::MoveUnseen(Tree, List, Second, -1)));
    EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"b", L"c", L"a", L"d"}));
    const Head First{L"FIELDS", L"FIELDS", 1, L"UNSEEN"};
    const Head Last{L"FIELDS", L"FIELDS", 4, L"UNSEEN"};
    const Head None{L"FIELDS", L"FIELDS", 0, L"UNSEEN"};
    EXPECT_TRUE(vdbShared::MoveUnseen(Tree, List, First, 1));
    EXPECT_TRUE(vdbShared::MoveUnseen(Tree, List, Last, -1));
    EXPECT_TRUE(vdbShared::MoveUnseen(Tree, List, None, -1));
    vdbShared::DeleteElement(Tree, List, {}, First, false);
    EXPECT_EQ(NumberRaised([&] { vdbShared::DeleteElement(Tree, List, {}, None, false); }), 9);
    EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"c", L"a", L"d"}));
    vdbShared::DeleteElement(Tree, List, {}, None, true);
    EXPECT_EQ(List.Count(), 0);
    EXPECT_EQ(Picture(), Before) << "the nodes of others stay";
}

TEST_F(SharedList, ADeletionThatIsRefusedChangesNothing) {
    const std::wstring Before = Picture();
    const std::wstring Second = KeyOf(L"b");
    const struct {
        const char* What;
        Head At;
        bool Group;
    } kRows[] = {
        {"place -1", {L"FIELDS", Second, -1, L"FIELDS"}, false},
        {"place behind the last", {L"FIELDS", Second, 5, L"FIELDS"}, false},
        {"the folder itself", {L"FIELDS", L"FIELDS", 0, L"FIELDS"}, false},
        {"a node that is not in the tree", {L"FIELDS", L"FIELDS 0", 0, L"FIELDS"}, false},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.What);
        EXPECT_NE(NumberRaised([&] { vdbShared::DeleteElement(Tree, List, L"FIELDS", Row.At, Row.Group); }),
                  0);
        EXPECT_EQ(Captions(L"FIELDS"), Elements()) << "tree order is list order";
        EXPECT_EQ(Elements(), (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
        EXPECT_EQ(Picture(), Before);
        EXPECT_FALSE(Tree.Modified());
        // What a faulty deletion took away is put back, so that each row stands for itself.
        List.Clear();
        for (const wchar_t* const Name : {L"a", L"b", L"c", L"d"}) List.Add(Name);
    }
}

// ---- blocks

TEST_F(Shared, ABlockStandsBetweenItsLines) {
    const struct {
        bool Wrap;
        std::int32_t Indent;
        std::wstring Expected;
    } kRows[] = {
        {true, 0, Lines({L"prima", L"BEGIN PARMS", L"A= 1", L"END PARMS"})},
        {true, 1, Lines({L"prima", L"\tBEGIN PARMS", L"A= 1", L"\tEND PARMS"})},
        {true, 3, Lines({L"prima", L"\t\t\tBEGIN PARMS", L"A= 1", L"\t\t\tEND PARMS"})},
        {false, 2, Lines({L"prima", L"A= 1"})},
    };
    for (const auto& Row : kRows) {
        std::wstring Buffer = L"prima\r\n";
        EXPECT_FALSE(vdbShared::WrapSection(Buffer, L"PARMS", Row.Wrap, Row.Indent, [&] {
            Buffer += L"A= 1\r\n";
            return false;
        }));
        EXPECT_EQ(Buffer, Row.Expected);
    }
}

TEST_F(Shared, AFailedRenderingHasNoLastLine) {
    std::wstring Buffer;
    EXPECT_TRUE(vdbShared::WrapSection(Buffer, L"PARMS", true, 1, [&] {
        Buffer += L"A= 1\r\n";
        return true;
    }));
    EXPECT_EQ(Buffer, Lines({L"\tBEGIN PARMS", L"A= 1"}));
}

TEST_F(Shared, WhatStandsInABlockIsOneDeeperUnlessAtTheMargin) {
    EXPECT_EQ(vdbShared::InnerIndent(0), 0);
    EXPECT_EQ(vdbShared::InnerIndent(1), 2);
    EXPECT_EQ(vdbShared::InnerIndent(7), 8);
}

TEST_F(Shared, TheHeadOfAnExport) {
    const Head At = vdbShared::ExportHead(L"FIELDS");
    EXPECT_EQ(At.CurrFolder, L"");
    EXPECT_EQ(At.CurrItem, L"");
    EXPECT_EQ(At.Index, 1);
    EXPECT_EQ(At.Key, L"FIELDS");
}

// ---- records, identity, clipboard

TEST_F(Shared, AnAbsentRecordIsMadeEmpty) {
    std::unique_ptr<Identity> Held;
    Identity& Made = vdbShared::Made(Held);
    EXPECT_EQ(&Made, Held.get());
    Made.Id = 5;
    EXPECT_EQ(vdbShared::Made(Held).Id, 5) << "one that is there stays";
}

/// A record whose loading fails on demand.
struct LoadingRecord {
    std::wstring Name;
    bool Load(RegData& From) {
        Name = From.Name();
        return Name == L"guasto";
    }
};

TEST_F(Shared, ALoadTakesThePlaceOfTheRecordBefore) {
    std::unique_ptr<LoadingRecord> Held;
    EXPECT_FALSE(vdbShared::LoadFresh(Held, Object));
    ASSERT_NE(Held, nullptr);
    EXPECT_EQ(Held->Name, L"Soggetti");
    Held->Name = L"cambiato";
    EXPECT_FALSE(vdbShared::LoadFresh(Held, Object));
    EXPECT_EQ(Held->Name, L"Soggetti");
    RegObject Broken;
    Broken.Name = L"guasto";
    Object.Write(Broken);
    EXPECT_TRUE(vdbShared::LoadFresh(Held, Object));
    EXPECT_EQ(Held->Name, L"Soggetti") << "with the tree that stays";
}

TEST_F(Shared, TheIdentityIsReported) {
    std::wstring Name = L"x";
    std::wstring Desc = L"x";
    std::int16_t Version = -1;
    std::wstring Id = L"x";
    vdbShared::ObjectInfo({}, Name, Desc, Version, Id);
    EXPECT_EQ(Name, L"");
    EXPECT_EQ(Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
    vdbShared::ObjectInfo({-2147483647 - 1, L"Nome", L"Descrizione", 32767}, Name, Desc, Version, Id);
    EXPECT_EQ(Name, L"Nome");
    EXPECT_EQ(Desc, L"Descrizione");
    EXPECT_EQ(Version, 32767);
    EXPECT_EQ(Id, L"-2147483648");
    for (const std::int32_t Beyond : {32768, -32769, 2147483647}) {
        EXPECT_EQ(NumberRaised([&] {
                      vdbShared::ObjectInfo({1, L"altro", L"altro", Beyond}, Name, Desc, Version, Id);
                  }),
                  6);
        EXPECT_EQ(Name, L"Nome");
        EXPECT_EQ(Version, 32767);
    }
}

TEST_F(Shared, ACopyIsTheItemsOwnSaveOnTheClipboardsObject) {
    PlainItem Item;
    ClipItem Clip;
    Clip.DataObj = std::make_shared<MemoryRegData>(L"PROVA");
    EXPECT_FALSE(vdbShared::CopyTo(Item, Clip));
    EXPECT_EQ(Item.SavedOn, Clip.DataObj.get());
    Item.Fails = true;
    EXPECT_TRUE(vdbShared::CopyTo(Item, Clip));
    EXPECT_EQ(NumberRaised([&] { static_cast<void>(vdbShared::CopyTo(Item, ClipItem{})); }), 91);
}

// ---- stored objects

TEST_F(Shared, ValuesAndChildrenAreFoundByName) {
    RegObject Content;
    EXPECT_EQ(Content.Value(L"A"), nullptr);
    EXPECT_EQ(Content.Child(L"A"), nullptr);
    Content.SetValue(L"A", std::int32_t{1});
    Content.SetValue(L"B", true);
    Content.SetValue(L"A", std::wstring(L"uno"));
    ASSERT_EQ(Content.Values.size(), 2U) << "a value of that name is replaced";
    EXPECT_EQ(std::get<std::wstring>(*Content.Value(L"A")), L"uno");
    EXPECT_EQ(Content.Value(L"a"), nullptr) << "names are exact";
    Content.Children.resize(2);
    Content.Children[0].Name = L"C";
    Content.Children[1].Name = L"C";
    EXPECT_EQ(Content.Child(L"C"), &Content.Children[0]);
}

TEST_F(Shared, AnObjectInMemoryTakesItsNameFromItsContent) {
    EXPECT_EQ(Object.Name(), L"Soggetti");
    EXPECT_EQ(Object.Clsid(), L"PROVA");
    EXPECT_FALSE(Object.Written());
    RegObject Content;
    Content.Name = L"Altro";
    Content.UserList = L"U";
    Object.Write(Content);
    EXPECT_EQ(Object.Name(), L"Altro");
    EXPECT_EQ(Object.UserList(), L"U");
    EXPECT_TRUE(Object.Written());
    EXPECT_TRUE(Object.Read() == Content);
    EXPECT_FALSE(Object.Saving());
    Object.SetSaving(true);
    EXPECT_TRUE(Object.Saving());
}

// ---- the button branch

struct Tip {
    std::int32_t Id = 0;
    std::wstring Language;
    std::wstring Text;
};
struct Button {
    std::int32_t Id = 0;
    std::wstring Code;
    ParmList<Tip> ToolTips;
};

TEST_F(Shared, TheBranchOfAButton) {
    vdbShared::StartTree(Tree, Object);
    vdbShared::AddFolder(Tree, L"COMMANDS", L"Pulsanti", kind::kList);
    Button Print;
    Print.Code = L"STAMPA";
    Print.ToolTips.Add({.Language = L"ITA", .Text = L"Stampa"});
    Print.ToolTips.Add({.Language = L"ENG", .Text = L"Print"});
    std::wstring Key;
    const std::int32_t First = CoreUtil::Instance().NextNodeId() + 1;
    ASSERT_TRUE(Succeeds(CommandNodeAdd(Print, Tree, Key)));
    const auto Id = [&](std::int32_t Nth) { return std::to_wstring(First + Nth); };
    EXPECT_EQ(Key, L"COMMANDS-" + Id(0));
    const std::wstring Branch =
        L"    COMMANDS-" + Id(0) + L" [STAMPA] 12,11 RDM\n      COMMANDPARMS-" + Id(1) +
        L" [Pulsante] 12,11\n        COMMANDPARMS " + Id(2) + L" [Pulsante] 9,9\n      COMMANDTIPS-" + Id(3) +
        L" [ToolTips] 12,11 R\n        COMMANDTIPS " + Id(4) +
        L" [Messaggio: [ITA] Stampa] 9,9\n        COMMANDTIPS " + Id(5) + L" [Messaggio: [ENG] Print] 9,9\n";
    const std::wstring Above = L"ROOT [Soggetti] 12,11\n  COMMANDS [Pulsanti] 12,11 RG\n";
    EXPECT_EQ(Narrow(Picture()), Narrow(Above + Branch));

    // In a relation to the node whose key is handed in.
    Button Quit;
    Quit.Code = L"ESCI";
    ASSERT_TRUE(Succeeds(CommandNodeAdd(Quit, Tree, Key, relation::kBefore)));
    EXPECT_EQ(Captions(L"COMMANDS"), (std::vector<std::wstring>{L"ESCI", L"STAMPA"}));
    EXPECT_EQ(Key, KeyOf(L"ESCI"));

    const std::wstring Before = Picture();
    Key = L"COMMANDS-0";
    EXPECT_TRUE(FailsWith(CommandNodeAdd(Quit, Tree, Key, relation::kAfter),
                          {91, L"vdbcModule.CommandNodeAdd", L"Oggetto non impostato"}));
    EXPECT_EQ(Picture(), Before);
}

}  // namespace
}  // namespace kv::test
