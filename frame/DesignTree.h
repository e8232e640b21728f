// The model of the tree window, as the items and the server need it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "frame/ParmList.h"

namespace kv {

/// How a new node stands to its relative.
namespace relation {
inline constexpr std::int32_t kAfter = 2;
inline constexpr std::int32_t kBefore = 3;
inline constexpr std::int32_t kChild = 4;
}  // namespace relation

/// Image numbers: folders and the root, leaves.
namespace image {
inline constexpr std::int32_t kFolder = 12;
inline constexpr std::int32_t kFolderOpen = 11;
inline constexpr std::int32_t kLeaf = 9;
}  // namespace image

/// What the tree window may offer on a node.
namespace kind {
inline constexpr std::wstring_view kPlain = L"";       // root, plain folders, leaves
inline constexpr std::wstring_view kList = L"RG";      // a folder whose children are list elements
inline constexpr std::wstring_view kElement = L"RDM";  // a list element that is a folder with sub-folders
inline constexpr std::wstring_view kSubList = L"R";    // a sub-folder with repeating leaves
}  // namespace kind

inline constexpr std::wstring_view kRootKey = L"ROOT";

/// Whether a node's key is that of a leaf: the key of a folder never holds a blank.
constexpr bool IsLeafKey(std::wstring_view Key) noexcept { return Key.find(L' ') != std::wstring_view::npos; }
/// The section word of a node's key: what stands before the first blank or hyphen.
constexpr std::wstring_view SectionWord(std::wstring_view Key) noexcept {
    return Key.substr(0, Key.find_first_of(L" -"));
}

/// A node as it is added.
struct NewNode {
    std::optional<std::wstring_view> Relative{};  // absent for the root
    std::optional<std::int32_t> Relationship{};   // namespace relation; absent for the root
    std::wstring_view Key{};
    std::wstring_view Text{};
    std::int32_t Image = image::kLeaf;
    std::int32_t SelectedImage = image::kLeaf;
    std::wstring_view Kind = kind::kPlain;
};

/// A tool button or separator (style 3, empty key and tool tip, no picture).
struct ToolButtonInfo {
    std::wstring_view Key{};
    std::wstring_view ToolTip{};
    std::int32_t Style = 0;
    std::int32_t Bitmap = 0;  // id in the bitmap resources, 0 for none
};
inline constexpr std::int32_t kSeparatorStyle = 3;

/// An object of the host that travels through unread.
class HostObject {
  public:
    virtual ~HostObject() = default;
};

class RegData;

/// What ShowTree is given. `Target` comes back possibly replaced; the window owns neither.
struct TreeCall {
    HostObject* CallBack = nullptr;
    std::wstring_view ClassWord;
    RegData* Target = nullptr;
    bool Flag = false;
};

/// Keys are unique in a tree. A key that no node bears makes the reading operations raise the fault "no such
/// object" and the adding ones leave the tree as it was and raise it too.
class DesignTree {
  public:
    DesignTree() = default;
    DesignTree(const DesignTree&) = delete;
    DesignTree& operator=(const DesignTree&) = delete;
    virtual ~DesignTree() = default;

    /// Records that the object has unsaved changes.
    virtual void MarkModified(bool Modified) = 0;

    // Nodes.

    virtual void AddNode(const NewNode& Node) = 0;
    /// The same with one image for both states.
    virtual void AddIconNode(const NewNode& Node) = 0;
    /// Takes all nodes out.
    virtual void ClearNodes() = 0;
    /// Takes a node and what hangs below it out.
    virtual void RemoveNode(std::wstring_view Key) = 0;
    /// Takes out what hangs below a node.
    virtual void RemoveChildren(std::wstring_view Key) = 0;
    virtual bool HasNode(std::wstring_view Key) const = 0;
    virtual std::wstring NodeText(std::wstring_view Key) const = 0;
    virtual void SetNodeText(std::wstring_view Key, std::wstring_view Text) = 0;
    /// Key of the node above, empty for the root.
    virtual std::wstring NodeParent(std::wstring_view Key) const = 0;
    /// 1-based place of the node among its siblings.
    virtual std::int32_t NodeId(std::wstring_view Key) const = 0;
    /// Key of the child at a 1-based place, empty when there is none.
    virtual std::wstring NodeAt(std::wstring_view Folder, std::int32_t Place) const = 0;
    /// Makes another node the selected one.
    virtual void SelectNode(std::wstring_view Key) = 0;

    /// Moves the element of the selected node one place inside `List`, towards the front for a positive
    /// `Direction`, and takes the node out of the tree. `RelativeKey` becomes the key of the neighbour that
    /// the element passes, `NewIndex` its new place. True when there is no place to go: nothing has changed.
    [[nodiscard]] virtual bool MoveListItem(ParmListBase& List, std::int32_t Direction,
                                            std::wstring& RelativeKey, std::int32_t& NewIndex) = 0;

    // What the window offers.

    /// Remembers one value word offered for a keyword of a section. True on failure.
    [[nodiscard]] virtual bool AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                          std::wstring_view Word) = 0;
    virtual void AddToolButton(const ToolButtonInfo& Button) = 0;
    /// Says which tool buttons are served; a word not seen before is added. True on failure.
    [[nodiscard]] virtual bool SetTools(std::span<const std::wstring_view> Words) = 0;
    /// Whether the operator wants section text checked strictly.
    virtual bool SyntaxOn() const = 0;

    // The window.

    /// Runs the tree window, modally. True when it failed.
    [[nodiscard]] virtual bool ShowTree(TreeCall& Call) = 0;
    /// Ends the tree window.
    virtual void Dispose() = 0;
};

}  // namespace kv
