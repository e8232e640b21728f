// What a window offers on a node.
#pragma once

#include <cstdint>
#include <string>

#include "window/TreeModel.h"

namespace kv::window {

/// Worked out from the kinds of the node and of the one above it alone: what hangs in a folder that repeats
/// ("RG", "R") is an element, which is added, moved and deleted there; those of "RG" go all at once, too.
struct Offers {
    const TreeNode* NewIn = nullptr;  // the folder in which EditData makes a new element, null for nowhere
    bool DeleteAll = false;           // the elements of this folder
    bool Delete = false;              // this element
    bool Move = false;                // this element, among its siblings
};

inline Offers OffersOn(const TreeModel& Tree, const TreeNode& Node) {
    const auto Repeats = [&](const TreeNode& Folder) {
        const std::wstring_view Kind = Tree.Kind(Folder);
        return Kind == kind::kList || Kind == kind::kSubList;
    };
    Offers On;
    if (Repeats(Node)) {
        On.NewIn = &Node;
        On.DeleteAll = Tree.Kind(Node) == kind::kList && Node.Children.Count() > 0;
    }
    if (Node.Parent && Repeats(*Node.Parent)) {
        if (!On.NewIn) On.NewIn = Node.Parent;
        On.Delete = true;
        On.Move = Node.Parent->Children.Count() > 1;
    }
    return On;
}

/// The place that a node takes in its own list when it is dropped onto another: that of a sibling, the end on
/// the folder that holds it; 0 where it can't be dropped.
inline std::int32_t PlaceOfDrop(const TreeNode& Node, const TreeNode& Target) {
    if (!Node.Parent) return 0;
    if (&Target == Node.Parent) return Target.Children.Count() + 1;
    return Target.Parent == Node.Parent && &Target != &Node ? SiblingOrder<TreeNode>::PlaceOf(&Target) : 0;
}

}  // namespace kv::window
