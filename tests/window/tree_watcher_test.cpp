// A watcher that keeps a picture of its own must hold the same tree after every change.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "window/Offers.h"
#include "window/TreeModel.h"

namespace kv::test {
namespace {

using window::Offers;
using window::SiblingOrder;
using window::TreeModel;
using window::TreeNode;

/// Mirrors the tree from what it is told alone.
class Mirror final : public window::TreeWatcher {
  public:
    struct Copy {
        std::wstring Text;
        std::vector<std::wstring> Children;
    };

    explicit Mirror(TreeModel& Tree) : Tree_(Tree) { Tree_.SetWatcher(this); }
    Mirror(const Mirror&) = delete;
    Mirror& operator=(const Mirror&) = delete;
    ~Mirror() override { Tree_.SetWatcher(nullptr); }

    void Adding(const TreeNode* Parent, std::int32_t Place) override {
        EXPECT_FALSE(Open_);
        Open_ = true;
        Parent_ = Parent ? Parent->Key : std::wstring();
        Place_ = Place;
        EXPECT_GE(Place, 1);
        EXPECT_LE(Place, (Parent ? Parent->Children.Count() : 0) + 1);
    }
    void Added() override {
        EXPECT_TRUE(std::exchange(Open_, false));
        const TreeNode* const Above = Tree_.Find(Parent_);
        const TreeNode* const New = Above ? Above->Children.At(Place_) : Tree_.Root();
        ASSERT_NE(New, nullptr);
        auto& Siblings = Nodes[Parent_].Children;
        Siblings.insert(Siblings.begin() + (Place_ - 1), New->Key);
        Nodes[New->Key].Text = New->Text;
    }
    void Removing(const TreeNode& Node) override {
        EXPECT_FALSE(Open_);
        Open_ = true;
        EXPECT_EQ(Tree_.Find(Node.Key), &Node) << "it is still there when it is told";
        Parent_ = Node.Parent ? Node.Parent->Key : std::wstring();
        Place_ = Node.Parent ? SiblingOrder<TreeNode>::PlaceOf(&Node) : 1;
        Gone_ = Node.Key;
    }
    void Removed() override {
        EXPECT_TRUE(std::exchange(Open_, false));
        EXPECT_EQ(Tree_.Find(Gone_), nullptr);
        auto& Siblings = Nodes[Parent_].Children;
        ASSERT_LE(static_cast<std::size_t>(Place_), Siblings.size());
        EXPECT_EQ(Siblings[static_cast<std::size_t>(Place_ - 1)], Gone_);
        Siblings.erase(Siblings.begin() + (Place_ - 1));
        Forget(Gone_);
    }
    void RemovingChildren(const TreeNode& Node) override {
        EXPECT_FALSE(Open_);
        Open_ = true;
        EXPECT_GT(Node.Children.Count(), 0);
        Gone_ = Node.Key;
    }
    void RemovedChildren() override {
        EXPECT_TRUE(std::exchange(Open_, false));
        for (const std::wstring& Child : std::exchange(Nodes[Gone_].Children, {})) Forget(Child);
    }
    void TextChanged(const TreeNode& Node) override { Nodes[Node.Key].Text = Node.Text; }

    std::map<std::wstring, Copy> Nodes;

  private:
    void Forget(const std::wstring& Key) {
        for (const std::wstring& Child : std::exchange(Nodes[Key].Children, {})) Forget(Child);
        Nodes.erase(Key);
    }

    TreeModel& Tree_;
    bool Open_ = false;
    std::wstring Parent_;
    std::wstring Gone_;
    std::int32_t Place_ = 0;
};

void ExpectSame(const TreeModel& Tree, Mirror& Seen) {
    std::size_t Count = 0;
    Tree.ForEach([&](const TreeNode& Node) {
        ++Count;
        const auto Found = Seen.Nodes.find(Node.Key);
        ASSERT_NE(Found, Seen.Nodes.end());
        EXPECT_EQ(Found->second.Text, Node.Text);
        ASSERT_EQ(Found->second.Children.size(), static_cast<std::size_t>(Node.Children.Count()));
        for (std::int32_t Place = 1; Place <= Node.Children.Count(); ++Place)
            EXPECT_EQ(Found->second.Children[static_cast<std::size_t>(Place - 1)],
                      Node.Children.At(Place)->Key);
    });
    Seen.Nodes.erase(L"");  // what the root hangs below
    EXPECT_EQ(Seen.Nodes.size(), Count);
    if (Tree.Root()) Seen.Nodes[L""].Children = {Tree.Root()->Key};
}

TEST(TreeWatcherTest, FollowsRandomChanges) {
    std::mt19937 Random(20261121);
    TreeModel Tree;
    Mirror Seen(Tree);
    Tree.AddNode({.Key = kRootKey, .Text = L"Oggetto"});
    std::vector<std::wstring> Keys{std::wstring(kRootKey)};
    for (int Step = 0; Step < 4000; ++Step) {
        const std::wstring At = Keys[Random() % Keys.size()];
        switch (Random() % 8) {
            case 0:
            case 1:
            case 2:
            case 3: {
                const std::wstring Key = L"N " + std::to_wstring(Step);
                const std::int32_t How =
                    At == kRootKey ? relation::kChild : 2 + static_cast<int>(Random() % 3);
                Tree.AddNode({.Relative = At, .Relationship = How, .Key = Key, .Text = Key});
                break;
            }
            case 4:
                Tree.SetNodeText(At, L"T" + std::to_wstring(Step));
                break;
            case 5:
                if (At != kRootKey) Tree.RemoveNode(At);
                break;
            case 6:
                if (Step % 16 == 0) Tree.RemoveChildren(At);
                break;
            default:
                if (Step % 400 == 0) {
                    Tree.ClearNodes();
                    Tree.AddNode({.Key = kRootKey, .Text = L"Oggetto"});
                }
        }
        Keys.clear();
        Tree.ForEach([&](const TreeNode& Node) { Keys.push_back(Node.Key); });
        if (Step % 50 == 0) ExpectSame(Tree, Seen);
    }
    ExpectSame(Tree, Seen);
}

TEST(TreeWatcherTest, ARefusedChangeIsNotTold) {
    TreeModel Tree;
    Mirror Seen(Tree);
    Tree.AddNode({.Key = kRootKey, .Text = L"Oggetto"});
    EXPECT_THROW(Tree.AddNode({.Relative = L"NESSUNO", .Key = L"A"}), Failure);
    EXPECT_THROW(Tree.AddNode({.Relative = kRootKey, .Key = kRootKey}), Failure);
    EXPECT_THROW(Tree.RemoveNode(L"NESSUNO"), Failure);
    Tree.RemoveChildren(kRootKey);  // there are none
    ExpectSame(Tree, Seen);
}

TEST(OffersTest, FollowFromTheKindsAlone) {
    TreeModel Tree;
    const auto Add = [&](std::wstring_view Parent, std::wstring_view Key, std::wstring_view Kind) {
        Tree.AddNode({.Relative = Parent, .Relationship = relation::kChild, .Key = Key, .Kind = Kind});
    };
    Tree.AddNode({.Key = kRootKey});
    Add(kRootKey, L"PARMS", kind::kPlain);
    Add(L"PARMS", L"PARMS 1", kind::kPlain);
    Add(kRootKey, L"LABELS", kind::kList);
    Add(kRootKey, L"FIELDS", kind::kList);
    Add(L"FIELDS", L"FIELDS-2", kind::kElement);
    Add(L"FIELDS-2", L"FIELDCAPTION-2", kind::kSubList);
    Add(L"FIELDCAPTION-2", L"FIELDCAPTION 3", kind::kPlain);
    Add(L"FIELDCAPTION-2", L"FIELDCAPTION 4", kind::kPlain);
    const auto Told = [&](std::wstring_view Key) {
        const Offers On = OffersOn(Tree, *Tree.Find(Key));
        std::wstring Text = On.NewIn ? L"+" + On.NewIn->Key : L"";
        if (On.DeleteAll) Text += L" all";
        if (On.Delete) Text += L" delete";
        if (On.Move) Text += L" move";
        return Text;
    };
    EXPECT_EQ(Told(kRootKey), L"");
    EXPECT_EQ(Told(L"PARMS"), L"");
    EXPECT_EQ(Told(L"PARMS 1"), L"");
    EXPECT_EQ(Told(L"LABELS"), L"+LABELS") << "nothing there to delete";
    EXPECT_EQ(Told(L"FIELDS"), L"+FIELDS all");
    EXPECT_EQ(Told(L"FIELDS-2"), L"+FIELDS delete") << "it stands alone";
    EXPECT_EQ(Told(L"FIELDCAPTION-2"), L"+FIELDCAPTION-2");
    EXPECT_EQ(Told(L"FIELDCAPTION 3"), L"+FIELDCAPTION-2 delete move");
    Add(L"FIELDS", L"FIELDS-5", kind::kElement);
    EXPECT_EQ(Told(L"FIELDS-2"), L"+FIELDS delete move");
}

}  // namespace
}  // namespace kv::test
