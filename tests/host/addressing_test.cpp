// How a section word and places name a node: plain folders, lists, lists inside the elements of a list, with
// the kinds that say so and without.

#include "host/Addressing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TestPlatform.h"

namespace kv::host {
namespace {

using test::Narrow;
using window::TreeModel;

void Add(TreeModel& Tree, std::wstring_view Parent, std::wstring_view Key,
         std::wstring_view Kind = kind::kPlain) {
    NewNode Node;
    if (!Parent.empty()) {
        Node.Relative = Parent;
        Node.Relationship = relation::kChild;
    }
    Node.Key = Key;
    Node.Text = Key;
    Node.Kind = Kind;
    Tree.AddNode(Node);
}

// ROOT
//   PARMS: PARMS 7, PARMS 0
void BuildSort(TreeModel& Tree) {
    Add(Tree, L"", L"ROOT");
    Add(Tree, L"ROOT", L"PARMS");
    Add(Tree, L"PARMS", L"PARMS 7");
    Add(Tree, L"PARMS", L"PARMS 0");
}

// ROOT
//   PARMS: PARMS 1
//   INDEXES (RG): INDEXES 2, INDEXES 3
//   FIELDS (RG)
//     FIELDS-<n> (RDM), n = 10, 20, 30
//       FIELDPARMS-<n+1>: one leaf
//       FIELDCAPTION-<n+2> (R): n/10 leaves
//       CONSTANTS-FIELDS-<n+3>: three leaves below a plain folder
//   TITLES (RG), empty
void BuildNested(TreeModel& Tree) {
    Add(Tree, L"", L"ROOT");
    Add(Tree, L"ROOT", L"PARMS");
    Add(Tree, L"PARMS", L"PARMS 1");
    Add(Tree, L"ROOT", L"INDEXES", kind::kList);
    Add(Tree, L"INDEXES", L"INDEXES 2");
    Add(Tree, L"INDEXES", L"INDEXES 3");
    Add(Tree, L"ROOT", L"FIELDS", kind::kList);
    for (int N = 10; N <= 30; N += 10) {
        const auto Key = [&](const wchar_t* Word, int Plus) { return Word + std::to_wstring(N + Plus); };
        Add(Tree, L"FIELDS", Key(L"FIELDS-", 0), kind::kElement);
        Add(Tree, Key(L"FIELDS-", 0), Key(L"FIELDPARMS-", 1));
        Add(Tree, Key(L"FIELDPARMS-", 1), Key(L"FIELDPARMS-", 1) + L" 5");
        Add(Tree, Key(L"FIELDS-", 0), Key(L"FIELDCAPTION-", 2), kind::kSubList);
        for (int Caption = 1; Caption <= N / 10; ++Caption)
            Add(Tree, Key(L"FIELDCAPTION-", 2),
                L"FIELDCAPTION " + std::to_wstring(N) + std::to_wstring(Caption));
        Add(Tree, Key(L"FIELDS-", 0), Key(L"CONSTANTS-FIELDS-", 3));
        for (int Constant = 1; Constant <= 3; ++Constant)
            Add(Tree, Key(L"CONSTANTS-FIELDS-", 3),
                Key(L"CONSTANTS-FIELDS-", 3) + L" " + std::to_wstring(Constant));
    }
    Add(Tree, L"ROOT", L"TITLES", kind::kList);
}

// The same lists without a kind anywhere:
// ROOT
//   PARMS: PARMS 1
//   FONTS: one leaf
//   TITLES, empty
//   FIELDS
//     FIELDS-<n>, n = 10, 20, 30
//       FIELDPARMS-<n+1>: one leaf
//       FIELDCAPTION-<n+2>: n/10 leaves
void BuildKindless(TreeModel& Tree) {
    Add(Tree, L"", L"ROOT");
    Add(Tree, L"ROOT", L"PARMS");
    Add(Tree, L"PARMS", L"PARMS 1");
    Add(Tree, L"ROOT", L"FONTS");
    Add(Tree, L"FONTS", L"FONTS 2");
    Add(Tree, L"ROOT", L"TITLES");
    Add(Tree, L"ROOT", L"FIELDS");
    for (int N = 10; N <= 30; N += 10) {
        const auto Key = [&](const wchar_t* Word, int Plus) { return Word + std::to_wstring(N + Plus); };
        Add(Tree, L"FIELDS", Key(L"FIELDS-", 0));
        Add(Tree, Key(L"FIELDS-", 0), Key(L"FIELDPARMS-", 1));
        Add(Tree, Key(L"FIELDPARMS-", 1), Key(L"FIELDPARMS ", 5));
        Add(Tree, Key(L"FIELDS-", 0), Key(L"FIELDCAPTION-", 2));
        for (int Caption = 1; Caption <= N / 10; ++Caption)
            Add(Tree, Key(L"FIELDCAPTION-", 2),
                L"FIELDCAPTION " + std::to_wstring(N) + std::to_wstring(Caption));
    }
}

/// The key of the node found, "-" when there is none.
std::string Found(const TreeModel& Tree, std::wstring_view Section, const Place& At, Want Wanted) {
    const std::optional<Address> Node = Resolve(Tree, Section, At, Wanted);
    return Node ? Narrow(Node->Node->Key) : "-";
}
std::string Text(const TreeModel& Tree, std::wstring_view Section, const Place& At = {}) {
    return Found(Tree, Section, At, Want::Text);
}
std::string Folder(const TreeModel& Tree, std::wstring_view Section, const Place& At = {}) {
    return Found(Tree, Section, At, Want::Folder);
}

TEST(Addressing, PlainFolderCountsItsLeaves) {
    TreeModel Tree;
    BuildSort(Tree);
    EXPECT_EQ(Text(Tree, L"PARMS"), "PARMS 7");
    EXPECT_EQ(Text(Tree, L"PARMS", {1}), "PARMS 7");
    EXPECT_EQ(Text(Tree, L"PARMS", {2}), "PARMS 0");
    EXPECT_EQ(Text(Tree, L"PARMS", {3}), "-");
    EXPECT_EQ(Text(Tree, L"PARMS", {0}), "-");
    EXPECT_EQ(Text(Tree, L"PARMS", {1, 1}), "-");
    EXPECT_EQ(Folder(Tree, L"PARMS"), "PARMS");
    EXPECT_EQ(Folder(Tree, L"PARMS", {2}), "PARMS 0");
}

TEST(Addressing, WordsAreComparedExactlyAndTheRootIsNoSection) {
    TreeModel Tree;
    BuildSort(Tree);
    EXPECT_EQ(Text(Tree, L"parms"), "-");
    EXPECT_EQ(Text(Tree, L"PARM"), "-");
    EXPECT_EQ(Text(Tree, L"PARMS 7"), "-");
    EXPECT_EQ(Text(Tree, L""), "-");
    EXPECT_EQ(Text(Tree, L"ROOT"), "-");
}

TEST(Addressing, ListCountsItsElements) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Text(Tree, L"PARMS"), "PARMS 1");
    EXPECT_EQ(Text(Tree, L"INDEXES"), "INDEXES 2");
    EXPECT_EQ(Text(Tree, L"INDEXES", {2}), "INDEXES 3");
    EXPECT_EQ(Text(Tree, L"INDEXES", {3}), "-");
    EXPECT_EQ(Folder(Tree, L"INDEXES"), "INDEXES");
}

TEST(Addressing, ElementsThatAreFolders) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Text(Tree, L"FIELDS", {3}), "FIELDS-30");
    EXPECT_EQ(Text(Tree, L"FIELDS", {4}), "-");
    EXPECT_EQ(Text(Tree, L"FIELDS"), "FIELDS") << "no leaf bears the word";
    EXPECT_EQ(Folder(Tree, L"FIELDS"), "FIELDS");
    EXPECT_EQ(Folder(Tree, L"FIELDS", {2}), "FIELDS-20");
}

TEST(Addressing, OneLeafBelowAnElementNeedsNoPlaceOfItsOwn) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Text(Tree, L"FIELDPARMS"), "FIELDPARMS-11 5");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {3}), "FIELDPARMS-31 5");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {3, 1}), "FIELDPARMS-31 5");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {3, 2}), "-");
    EXPECT_EQ(Folder(Tree, L"FIELDPARMS", {3}), "FIELDPARMS-31");
}

TEST(Addressing, ListInsideAnElement) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {3, 2}), "FIELDCAPTION 302");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {2, 3}), "-");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {2}), "FIELDCAPTION-22") << "the list, not one of its elements";
    EXPECT_EQ(Folder(Tree, L"FIELDCAPTION", {3}), "FIELDCAPTION-32");
    EXPECT_EQ(Folder(Tree, L"FIELDCAPTION", {3, 1}), "FIELDCAPTION 301");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION"), "FIELDCAPTION 101");
}

TEST(Addressing, SeveralLeavesInAPlainFolderBelowAnElement) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Text(Tree, L"CONSTANTS", {2, 3}), "CONSTANTS-FIELDS-23 3");
    EXPECT_EQ(Text(Tree, L"CONSTANTS", {2}), "CONSTANTS-FIELDS-23 1");
    EXPECT_EQ(Text(Tree, L"CONSTANTS", {2, 4}), "-");
    EXPECT_EQ(Folder(Tree, L"CONSTANTS", {2}), "CONSTANTS-FIELDS-23");
}

TEST(Addressing, EmptyListIsAFolderAndNothingElse) {
    TreeModel Tree;
    BuildNested(Tree);
    EXPECT_EQ(Folder(Tree, L"TITLES"), "TITLES");
    EXPECT_EQ(Text(Tree, L"TITLES"), "TITLES");
    EXPECT_EQ(Text(Tree, L"TITLES", {1}), "-");
}

TEST(Addressing, WithoutKindsElementsThatAreFoldersAreToldByTheirKeys) {
    TreeModel Tree;
    BuildKindless(Tree);
    EXPECT_EQ(Text(Tree, L"FIELDS", {3}), "FIELDS-30");
    EXPECT_EQ(Text(Tree, L"FIELDS", {4}), "-");
    EXPECT_EQ(Folder(Tree, L"FIELDS"), "FIELDS");
    EXPECT_EQ(Folder(Tree, L"FIELDS", {2}), "FIELDS-20");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {2}), "FIELDPARMS 25");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {2, 1}), "FIELDPARMS 25");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS", {2, 2}), "-");
    EXPECT_EQ(Text(Tree, L"FIELDPARMS"), "FIELDPARMS 15");
    EXPECT_EQ(Folder(Tree, L"FIELDPARMS", {2}), "FIELDPARMS-21");
}

TEST(Addressing, WithoutKindsLeavesOfAListHaveTheirPlaceAlsoWhenThereIsOne) {
    TreeModel Tree;
    BuildKindless(Tree);
    EXPECT_EQ(Text(Tree, L"FONTS", {1}), "FONTS 2");
    EXPECT_EQ(Text(Tree, L"FONTS"), "FONTS 2");
    EXPECT_EQ(Text(Tree, L"FONTS", {2}), "-");
    EXPECT_EQ(Folder(Tree, L"FONTS"), "FONTS");
    EXPECT_EQ(Folder(Tree, L"TITLES"), "TITLES");
    EXPECT_EQ(Text(Tree, L"TITLES", {1}), "-");
    EXPECT_EQ(Text(Tree, L"PARMS", {1}), "PARMS 1");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {1, 1}), "FIELDCAPTION 101");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {1, 2}), "-");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {3, 2}), "FIELDCAPTION 302");
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION", {1}), "FIELDCAPTION-12") << "the list, not its one element";
    EXPECT_EQ(Text(Tree, L"FIELDCAPTION"), "FIELDCAPTION 101");
    EXPECT_EQ(Folder(Tree, L"FIELDCAPTION", {3}), "FIELDCAPTION-32");
}

TEST(Addressing, WithoutKindsAllIsNamedAsWithThem) {
    TreeModel With;
    TreeModel Without;
    BuildNested(With);
    BuildKindless(Without);
    const auto Named = [](const TreeModel& Tree) {
        std::vector<std::wstring> All;
        for (const Address& Each : Addresses(Tree))
            if (Each.Section.starts_with(L"FIELD")) {
                All.push_back(std::wstring(Each.Section));
                All.back().append(Each.Leaf ? L" leaf " : L" ").append(PlaceText(Each.At));
            }
        return All;
    };
    EXPECT_EQ(Named(Without), Named(With));
    EXPECT_EQ(Named(Without).size(), 1U + 3U * 4U + 6U);
}

TEST(Addressing, EmptyTreeHasNoAddress) {
    const TreeModel Tree;
    EXPECT_TRUE(Addresses(Tree).empty());
    EXPECT_EQ(Text(Tree, L"PARMS"), "-");
}

// What is printed can be typed: each address leads back to its node.
TEST(Addressing, EveryAddressLeadsBack) {
    for (const auto Build : {BuildSort, BuildNested, BuildKindless}) {
        TreeModel Tree;
        Build(Tree);
        const std::vector<Address> All = Addresses(Tree);
        EXPECT_EQ(All.size(), Tree.Count() - 1);
        for (const Address& Each : All) {
            const std::optional<Address> Back =
                Resolve(Tree, Each.Section, Each.At, Each.Leaf ? Want::Text : Want::Folder);
            ASSERT_TRUE(Back) << Narrow(Each.Node->Key);
            EXPECT_EQ(Narrow(Back->Node->Key), Narrow(Each.Node->Key));
            EXPECT_EQ(Back->At, Each.At);
        }
    }
}

TEST(Addressing, PlacesAsText) {
    EXPECT_EQ(PlaceText({}), L"");
    EXPECT_EQ(PlaceText(Place{3}), L"3");
    EXPECT_EQ(PlaceText(Place{3, 2, 12}), L"3 2 12");
    EXPECT_EQ(PlaceText(Place{3, 2}, L"."), L"3.2");
}

}  // namespace
}  // namespace kv::host
