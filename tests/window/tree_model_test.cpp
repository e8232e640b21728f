#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/support/TestPlatform.h"
#include "window/TreeModel.h"

namespace kv::test {
namespace {

using window::SiblingOrder;
using window::TreeModel;
using window::TreeNode;

std::vector<std::wstring> Keys(const TreeModel& Tree) {
    std::vector<std::wstring> Out;
    Tree.ForEach([&](const TreeNode& Node) { Out.push_back(Node.Key); });
    return Out;
}

// Runs `Body` and answers the number of the fault that it raises, 0 for none.
template <class Body>
std::int32_t FaultOf(Body&& Run) {
    try {
        Run();
        return 0;
    } catch (const Failure& Raised) {
        return Raised.Error().Number;
    }
}

class TreeModelTest : public ::testing::Test {
  protected:
    TreeModelTest() { Tree.AddNode({.Key = kRootKey, .Text = L"Oggetto"}); }
    void Child(std::wstring_view Parent, std::wstring_view Key, std::wstring_view Kind = L"") {
        Tree.AddNode(
            {.Relative = Parent, .Relationship = relation::kChild, .Key = Key, .Text = Key, .Kind = Kind});
    }
    void Beside(std::wstring_view Relative, std::int32_t Relationship, std::wstring_view Key) {
        Tree.AddNode({.Relative = Relative, .Relationship = Relationship, .Key = Key, .Text = Key});
    }
    TreeModel Tree;
};

TEST_F(TreeModelTest, DisplayOrderIsDepthFirst) {
    Child(kRootKey, L"A");
    Child(kRootKey, L"B");
    Child(L"A", L"A 1");
    Child(L"A", L"A 3");
    Beside(L"A 3", relation::kBefore, L"A 2");
    Beside(L"A 3", relation::kAfter, L"A 4");
    Beside(L"A", relation::kAfter, L"C");
    EXPECT_EQ(Keys(Tree),
              (std::vector<std::wstring>{L"ROOT", L"A", L"A 1", L"A 2", L"A 3", L"A 4", L"C", L"B"}));
    EXPECT_EQ(Tree.NodeId(L"A 1"), 1);
    EXPECT_EQ(Tree.NodeId(L"A 4"), 4);
    EXPECT_EQ(Tree.NodeId(L"B"), 3);
    EXPECT_EQ(Tree.NodeParent(L"A 2"), L"A");
    EXPECT_EQ(Tree.NodeParent(L"ROOT"), L"");
}

TEST_F(TreeModelTest, RefusedAdditionsChangeNothing) {
    Child(kRootKey, L"A");
    const auto Before = Keys(Tree);
    EXPECT_EQ(FaultOf([&] { Child(L"NESSUNO", L"X"); }), fault::kNoObject);
    EXPECT_EQ(FaultOf([&] { Child(kRootKey, L"A"); }), fault::kKeyTaken);
    EXPECT_EQ(FaultOf([&] { Beside(kRootKey, relation::kAfter, L"X"); }), fault::kInvalidCall);
    EXPECT_EQ(FaultOf([&] { Beside(L"A", 9, L"X"); }), fault::kInvalidCall);
    EXPECT_EQ(FaultOf([&] { Tree.AddNode({.Key = L"X"}); }), fault::kKeyTaken);
    EXPECT_EQ(FaultOf([&] { Child(kRootKey, L""); }), fault::kInvalidCall);
    EXPECT_EQ(FaultOf([&] { Tree.RemoveNode(L"X"); }), fault::kNoObject);
    EXPECT_EQ(FaultOf([&] { Tree.SetNodeText(L"X", L"Y"); }), fault::kNoObject);
    EXPECT_EQ(FaultOf([&] { static_cast<void>(Tree.NodeId(L"X")); }), fault::kNoObject);
    EXPECT_EQ(Keys(Tree), Before);
    EXPECT_EQ(Tree.Count(), 2U);
}

TEST_F(TreeModelTest, RemovingTakesTheSubtreeAndMovesTheSelection) {
    Child(kRootKey, L"A");
    for (const wchar_t* Key : {L"A 1", L"A 2", L"A 3"}) Child(L"A", Key);
    Child(L"A 2", L"A-2 1");
    Tree.SelectNode(L"A-2 1");
    Tree.RemoveNode(L"A 2");
    EXPECT_EQ(Tree.Selected(), L"A 3");
    EXPECT_FALSE(Tree.HasNode(L"A-2 1"));
    Tree.RemoveNode(L"A 3");
    EXPECT_EQ(Tree.Selected(), L"A 1");
    Tree.RemoveNode(L"A 1");
    EXPECT_EQ(Tree.Selected(), L"A");
    Child(L"A", L"A 9");
    Tree.SelectNode(L"A 9");
    Tree.RemoveChildren(L"A");
    EXPECT_EQ(Tree.Selected(), L"A");
    EXPECT_EQ(Keys(Tree), (std::vector<std::wstring>{L"ROOT", L"A"}));
    Tree.ClearNodes();
    EXPECT_EQ(Tree.Count(), 0U);
    EXPECT_EQ(Tree.Selected(), L"");
    EXPECT_EQ(Tree.Root(), nullptr);
}

TEST_F(TreeModelTest, MovingTakesListAndNodeAlong) {
    ParmList<std::wstring> List;
    Child(kRootKey, L"A", kind::kList);
    for (const wchar_t* Key : {L"A 1", L"A 2", L"A 3"}) {
        List.Add(Key);
        Child(L"A", Key);
    }
    std::wstring Relative = L"unberührt";
    std::int32_t NewIndex = -1;
    Tree.SelectNode(L"A 1");
    EXPECT_TRUE(Tree.MoveListItem(List, 1, Relative, NewIndex));
    Tree.SelectNode(L"A 3");
    EXPECT_TRUE(Tree.MoveListItem(List, -1, Relative, NewIndex));
    EXPECT_TRUE(Tree.MoveListItem(List, 0, Relative, NewIndex));
    EXPECT_EQ(Relative, L"unberührt");
    EXPECT_EQ(NewIndex, -1);
    EXPECT_EQ(Tree.Count(), 5U);

    EXPECT_FALSE(Tree.MoveListItem(List, 5, Relative, NewIndex));
    EXPECT_EQ(Relative, L"A 2");
    EXPECT_EQ(NewIndex, 2);
    EXPECT_EQ(List.Item(2), L"A 3");
    EXPECT_FALSE(Tree.HasNode(L"A 3"));
    Beside(Relative, relation::kBefore, L"A 4");
    EXPECT_EQ(Tree.NodeId(L"A 4"), NewIndex);

    Tree.SelectNode(L"A 1");
    EXPECT_FALSE(Tree.MoveListItem(List, 0, Relative, NewIndex));
    EXPECT_EQ(Relative, L"A 4");
    EXPECT_EQ(NewIndex, 2);
}

TEST_F(TreeModelTest, AListShorterThanItsNodesDoesNotMove) {
    ParmList<std::wstring> List;
    List.Add(L"A 1");
    Child(kRootKey, L"A", kind::kList);
    Child(L"A", L"A 1");
    Child(L"A", L"A 2");
    std::wstring Relative;
    std::int32_t NewIndex = 0;
    Tree.SelectNode(L"A 1");
    EXPECT_TRUE(Tree.MoveListItem(List, -1, Relative, NewIndex));
    EXPECT_EQ(Tree.Count(), 4U);
}

TEST_F(TreeModelTest, ValueWordsKeepTheirOrder) {
    EXPECT_FALSE(Tree.AddDefault(L"PARMS", L"FORMAT=", L"TEXT"));
    EXPECT_FALSE(Tree.AddDefault(L"PARMS", L"LOCKED=", L"FALSE"));
    EXPECT_FALSE(Tree.AddDefault(L"PARMS", L"FORMAT=", L"RTF"));
    const auto Words = Tree.ChoicesOf(L"PARMS", L"FORMAT=");
    EXPECT_EQ(std::vector<std::wstring>(Words.begin(), Words.end()),
              (std::vector<std::wstring>{L"TEXT", L"RTF"}));
    EXPECT_TRUE(Tree.ChoicesOf(L"HTML", L"FORMAT=").empty());
    Tree.ForgetOffers();
    EXPECT_TRUE(Tree.ChoicesOf(L"PARMS", L"FORMAT=").empty());
}

TEST_F(TreeModelTest, ToolsAreNotRepeatedAndSeparatorsAre) {
    const std::wstring_view First[] = {L"COPY", L"CUT"};
    const std::wstring_view Second[] = {L"CUT", L"FINDTAG"};
    EXPECT_FALSE(Tree.SetTools(First));
    Tree.AddToolButton({.Style = kSeparatorStyle});
    Tree.AddToolButton({.Key = L"FINDTAG", .ToolTip = L"Trova tag libero", .Bitmap = 1000});
    EXPECT_FALSE(Tree.SetTools(Second));
    EXPECT_EQ(Tree.Tools(), (std::vector<std::wstring>{L"COPY", L"CUT", L"", L"FINDTAG"}));
    EXPECT_EQ(Tree.Served(), (std::vector<std::wstring>{L"COPY", L"CUT", L"FINDTAG"}));
    EXPECT_EQ(Tree.Buttons().size(), 2U);
}

TEST_F(TreeModelTest, WithoutAFaceTheWindowFails) {
    TreeCall Call;
    EXPECT_TRUE(Tree.ShowTree(Call));
}

// The model against a plain list of lists, over random additions, removals and moves.
TEST(TreeModelProperty, RandomOperationsAgreeWithAPlainList) {
    for (const unsigned Seed : {1U, 2U, 3U, 4U, 5U}) {
        std::mt19937 Random(Seed);
        TreeModel Tree;
        Tree.AddNode({.Key = kRootKey});
        Tree.AddNode(
            {.Relative = kRootKey, .Relationship = relation::kChild, .Key = L"A", .Kind = kind::kList});
        std::vector<std::wstring> Plain;
        ParmList<std::wstring> List;
        int Next = 0;
        for (int Step = 0; Step < 4000; ++Step) {
            const std::size_t Size = Plain.size();
            const auto Pick = [&] { return std::uniform_int_distribution<std::size_t>(0, Size - 1)(Random); };
            const unsigned What = std::uniform_int_distribution<unsigned>(0, 9)(Random);
            if (Size == 0 || What < 5) {
                const std::wstring Key = L"A " + std::to_wstring(++Next);
                const std::size_t At = Size == 0 || What == 0 ? Size : Pick();
                if (At == Size) {
                    Tree.AddNode({.Relative = L"A", .Relationship = relation::kChild, .Key = Key});
                    List.Add(Key);
                } else {
                    const bool Before = What < 3;
                    Tree.AddNode({.Relative = Plain[At],
                                  .Relationship = Before ? relation::kBefore : relation::kAfter,
                                  .Key = Key});
                    const auto Place = static_cast<std::int32_t>(At + 1);
                    if (Before)
                        List.Add(Key, {}, Place);
                    else
                        List.Add(Key, {}, {}, Place);
                    Plain.insert(Plain.begin() + static_cast<std::ptrdiff_t>(At + (Before ? 0 : 1)), Key);
                    continue;
                }
                Plain.push_back(Key);
            } else if (What < 7) {
                const std::size_t At = Pick();
                Tree.RemoveNode(Plain[At]);
                List.Remove(static_cast<std::int32_t>(At + 1));
                Plain.erase(Plain.begin() + static_cast<std::ptrdiff_t>(At));
            } else {
                const std::size_t At = Pick();
                const int Direction = What == 7 ? 1 : -1;
                Tree.SelectNode(Plain[At]);
                std::wstring Relative;
                std::int32_t NewIndex = 0;
                const bool Failed = Tree.MoveListItem(List, Direction, Relative, NewIndex);
                const bool NowhereToGo = Direction > 0 ? At == 0 : At + 1 == Size;
                ASSERT_EQ(Failed, NowhereToGo);
                if (Failed) continue;
                const std::size_t Target = Direction > 0 ? At - 1 : At + 1;
                ASSERT_EQ(Relative, Plain[Target]);
                ASSERT_EQ(NewIndex, static_cast<std::int32_t>(Target + 1));
                Tree.AddNode({.Relative = Relative,
                              .Relationship = Direction > 0 ? relation::kBefore : relation::kAfter,
                              .Key = Plain[At]});
                std::swap(Plain[At], Plain[Target]);
            }
        }
        ASSERT_EQ(Tree.Count(), Plain.size() + 2);
        ASSERT_EQ(static_cast<std::size_t>(List.Count()), Plain.size());
        for (std::size_t I = 0; I < Plain.size(); ++I) {
            ASSERT_EQ(Tree.NodeId(Plain[I]), static_cast<std::int32_t>(I + 1));
            ASSERT_EQ(List.Item(static_cast<std::int32_t>(I + 1)), Plain[I]);
        }
    }
}

TEST(TreeModelProperty, ManyNodesBelowOneParent) {
    TreeModel Tree;
    Tree.AddNode({.Key = kRootKey});
    constexpr int kCount = 200000;
    for (int I = 1; I <= kCount; ++I)
        Tree.AddNode(
            {.Relative = kRootKey, .Relationship = relation::kChild, .Key = L"N " + std::to_wstring(I)});
    EXPECT_EQ(Tree.NodeId(L"N 150000"), 150000);
    EXPECT_EQ(Tree.Root()->Children.At(77777)->Key, L"N 77777");
}

}  // namespace
}  // namespace kv::test
