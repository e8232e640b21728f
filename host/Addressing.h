// How a command names a node of the tree: the section word and the places of the elements that lead to it,
// instead of a key whose number is another one in every run.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "window/TreeModel.h"

namespace kv::host {

/// Places, 1-based, outermost first.
using Place = std::vector<std::int32_t>;

/// A node and what names it. The node and the section word live as long as the tree is left alone.
struct Address {
    const window::TreeNode* Node = nullptr;
    std::wstring_view Section;
    /// For the node itself and each one above it: its place among its siblings where these are the elements
    /// of a list, which the parent's kind says or, in a tree without kinds, its key. Behind them, for a leaf
    /// whose own siblings are no such elements, its place among the leaves of its folder, unless the places
    /// before it tell it already.
    Place At;
    bool Leaf = false;
};

/// The addresses of all nodes but the root, in display order.
std::vector<Address> Addresses(const window::TreeModel& Tree);

/// What a command wants to work on.
enum class Want {
    Text,    // a section that can be shown: a leaf before a folder; no place means the first leaf
    Folder,  // where an element can be added: a folder before a leaf
};

/// The node that `Section` and `At` name, nothing when there is none. A leaf that stands alone below an
/// element answers to the places of the element, the first of several likewise.
std::optional<Address> Resolve(const window::TreeModel& Tree, std::wstring_view Section,
                               std::span<const std::int32_t> At, Want Wanted);

/// The places joined by `Separator`: "3 2".
std::wstring PlaceText(std::span<const std::int32_t> At, std::wstring_view Separator = L" ");

}  // namespace kv::host
