#include "host/Addressing.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "frame/DesignTree.h"
#include "frame/vdbShared.h"
#include "window/WindowCore.h"

namespace kv::host {
namespace {

using window::TreeModel;
using window::TreeNode;

bool IsListKind(std::wstring_view Kind) { return Kind == kind::kList || Kind == kind::kSubList; }

// Whether a node is an element of the list that the node above it is. Where the kinds say nothing the keys
// do, as they do to the server: both have the same section word. The leaves below the folder of a section's
// parameters are no list, which there nothing but its word tells.
bool IsElement(const TreeModel& Tree, const TreeNode& Node) {
    const TreeNode& Above = *Node.Parent;
    const std::wstring_view Kind = Tree.Kind(Above);
    if (IsListKind(Kind)) return true;
    const std::wstring_view Word = window::SectionWord(Node.Key);
    if (!Above.Parent || window::SectionWord(Above.Key) != Word) return false;
    if (!window::IsLeafKey(Node.Key)) return true;
    return Kind.empty() && Tree.Kind(*Above.Parent).empty() && !Word.ends_with(vdbShared::kParms);
}

// The places that the lists above a node, and its own, give it.
Place ListPlaces(const TreeModel& Tree, const TreeNode& Node) {
    Place Found;
    for (const TreeNode* N = &Node; N->Parent; N = N->Parent)
        if (IsElement(Tree, *N)) Found.push_back(window::SiblingOrder<TreeNode>::PlaceOf(N));
    std::reverse(Found.begin(), Found.end());
    return Found;
}

bool Same(std::span<const std::int32_t> A, std::span<const std::int32_t> B) {
    return std::equal(A.begin(), A.end(), B.begin(), B.end());
}

// How well a node answers to the places asked for: 0 is exact, higher is looser, nothing is not at all.
std::optional<int> Fit(const TreeModel& Tree, const Address& Candidate, std::span<const std::int32_t> At,
                       Want Wanted) {
    const bool Preferred = Candidate.Leaf == (Wanted == Want::Text);
    if (Same(Candidate.At, At)) return Preferred ? 0 : 3;
    if (!Candidate.Leaf) return std::nullopt;
    if (Wanted == Want::Text && At.empty()) return 1;
    if (IsElement(Tree, *Candidate.Node)) return std::nullopt;
    // The leaf of a plain folder: with and without its place among the leaves.
    const Place Lists = ListPlaces(Tree, *Candidate.Node);
    Place First = Lists;
    First.push_back(1);
    const bool IsFirst = Same(Candidate.At, First) || Same(Candidate.At, Lists);
    if (IsFirst && (Same(At, Lists) || Same(At, First))) return Preferred ? 2 : 4;
    return std::nullopt;
}

}  // namespace

std::vector<Address> Addresses(const TreeModel& Tree) {
    std::unordered_map<const TreeNode*, std::int32_t> Leaves;  // of each folder
    Tree.ForEach([&](const TreeNode& Node) {
        if (Node.Parent && window::IsLeafKey(Node.Key)) ++Leaves[Node.Parent];
    });
    std::unordered_map<const TreeNode*, std::int32_t> Passed;
    std::vector<Address> All;
    Tree.ForEach([&](const TreeNode& Node) {
        if (!Node.Parent) return;
        Address Next{.Node = &Node,
                     .Section = window::SectionWord(Node.Key),
                     .At = ListPlaces(Tree, Node),
                     .Leaf = window::IsLeafKey(Node.Key)};
        if (Next.Leaf && !IsElement(Tree, Node)) {
            const std::int32_t Own = ++Passed[Node.Parent];
            if (Next.At.empty() || Leaves[Node.Parent] > 1) Next.At.push_back(Own);
        }
        All.push_back(std::move(Next));
    });
    return All;
}

std::optional<Address> Resolve(const TreeModel& Tree, std::wstring_view Section,
                               std::span<const std::int32_t> At, Want Wanted) {
    std::optional<Address> Best;
    int BestFit = 0;
    for (Address& Candidate : Addresses(Tree)) {
        if (Candidate.Section != Section) continue;
        const std::optional<int> Rank = Fit(Tree, Candidate, At, Wanted);
        if (!Rank || (Best && *Rank >= BestFit)) continue;
        BestFit = *Rank;
        Best = std::move(Candidate);
    }
    return Best;
}

std::wstring PlaceText(std::span<const std::int32_t> At, std::wstring_view Separator) {
    std::wstring Text;
    for (const std::int32_t Each : At) {
        if (!Text.empty()) Text.append(Separator);
        Text.append(std::to_wstring(Each));
    }
    return Text;
}

}  // namespace kv::host
