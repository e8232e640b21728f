// The plain life of a design item, once for all: what an item's operations have in common. An item tells only
// what is its own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/DesignTree.h"
#include "frame/Failure.h"
#include "frame/Identity.h"
#include "frame/ParmList.h"
#include "frame/RegData.h"
#include "frame/iKvTree.h"
#include "frame/vDesignPar.h"

namespace kv::vdbShared {

/// The section word and captions of the section that nearly every class has.
inline constexpr std::wstring_view kParms = L"PARMS";
inline constexpr std::wstring_view kParmsCaption = L"Parametri";

/// The record of an item, made empty where there is none.
template <class Record>
Record& Made(std::unique_ptr<Record>& Held) {
    if (!Held) Held = std::make_unique<Record>();
    return *Held;
}

/// Loads the object into a fresh record, which then takes the place of whatever there was. True on failure:
/// the record is then the one from before.
template <class Record>
[[nodiscard]] bool LoadFresh(std::unique_ptr<Record>& Held, RegData& Clsid) {
    auto Fresh = std::make_unique<Record>();
    if (Fresh->Load(Clsid)) return true;
    Held = std::move(Fresh);
    return false;
}

// The tree.

/// Takes all nodes out and adds the root with the object's name.
void StartTree(DesignTree& Tree, const RegData& Clsid);
/// Adds a folder below the root, or below another folder.
void AddFolder(DesignTree& Tree, std::wstring_view Key, std::wstring_view Caption,
               std::wstring_view Kind = kind::kPlain, std::wstring_view Parent = kRootKey);
/// A folder as an item's table states it; a list has the kind of one.
struct FolderRow {
    std::wstring_view Word;
    std::wstring_view Caption;
    std::wstring_view Kind = kind::kList;
    std::wstring_view Parent = kRootKey;
};
/// Adds the folders of a table in its order.
void AddFolders(DesignTree& Tree, std::span<const FolderRow> Rows);
/// Adds a leaf, key `<section> <fresh id>`, as the last child of the folder `Section`.
void AddLeaf(DesignTree& Tree, std::wstring_view Section, std::wstring_view Caption);
/// Starts the tree with the one folder "PARMS" and its leaf.
void StartPlainTree(DesignTree& Tree, const RegData& Clsid);

/// Makes the leaf of a section: `NewKey` comes back as `Name`, a blank, a fresh id. Without `Relationship`
/// the leaf is a child of the folder `Name`; with it, it stands in that relation to the node whose key
/// `NewKey` held. With `NoNode` only the key is made. A relative that is not in the tree raises; the tree is
/// as it was.
void SetNode(DesignTree& Tree, std::wstring_view Name, std::wstring_view Caption, std::wstring& NewKey,
             std::optional<std::int32_t> Relationship = {}, bool NoNode = false);

/// EditData of a section without a list: a further leaf below the folder of the section that is selected, or
/// else below the one that the section word names. Its caption is the section word; a class whose list
/// sections have captions of their own knows none for it: the leaf is nameless, and the beep sounds; its
/// SetNode reports under `SetNodeSource` (True on failure).
void AddPlainLeaf(DesignTree& Tree, const Head& At, std::wstring& NewItemKey);
[[nodiscard]] bool AddNamelessLeaf(std::wstring_view SetNodeSource, DesignTree& Tree, const Head& At,
                                   std::wstring& NewItemKey);

/// Writes the caption of an element whose section was saved into its node and hands it back.
void ShowCaption(DesignTree& Tree, std::wstring_view Key, std::wstring Caption, std::wstring& NewItemKey);

// Lists.

/// The folder in whose list a node stands, or which it is. A node is an element of the node above it when
/// both keys have the same section word. Raises for a key that is not in the tree.
std::wstring FolderOf(const DesignTree& Tree, const std::wstring& Key);
/// Whether the selected node is an element of a list.
bool IsElement(const DesignTree& Tree, const Head& At);

/// The place of a folder where a node is about to be built. A builder that fails halfway leaves what it has
/// made so far.
class HalfBuilt {
  public:
    HalfBuilt(DesignTree& Tree, std::wstring Folder, std::int32_t Place)
        : Tree_(Tree), Folder_(std::move(Folder)), Place_(Place), Before_(Tree.NodeAt(Folder_, Place)) {}
    /// Takes out what stands there now and did not before.
    void TakeOut() {
        const std::wstring Now = Tree_.NodeAt(Folder_, Place_);
        if (!Now.empty() && Now != Before_) Tree_.RemoveNode(Now);
    }

  private:
    DesignTree& Tree_;
    std::wstring Folder_;
    std::int32_t Place_;
    std::wstring Before_;
};

/// MoveData of a list section: moves the selected element inside `List`, then has the item build its node
/// anew through `Rebuild(NewIndex, Key, Relationship)`, where Key holds the neighbour's key and comes back as
/// the new node's (True on failure), and hands that back in At.CurrItem. True when there is nowhere to go:
/// nothing has changed. A node that could not be built goes back to where it was, and the element with it;
/// the failure is told under `Source`.
template <class Builder>
[[nodiscard]] bool MoveElement(std::wstring_view Source, DesignTree& Tree, ParmListBase& List, Head& At,
                               std::int32_t Direction, Builder&& Rebuild) {
    if (!IsElement(Tree, At)) return true;
    Tree.SelectNode(At.CurrItem);
    const std::int32_t OldIndex = Tree.NodeId(At.CurrItem);
    std::wstring Neighbour;
    std::int32_t NewIndex = 0;
    if (Tree.MoveListItem(List, Direction, Neighbour, NewIndex)) return true;
    const std::int32_t Forward = Direction > 0 ? relation::kBefore : relation::kAfter;
    const std::int32_t Back = Direction > 0 ? relation::kAfter : relation::kBefore;
    std::wstring Key = Neighbour;
    std::optional<HalfBuilt> Node;
    if (Trap(Source, [&] {
            Node.emplace(Tree, FolderOf(Tree, Neighbour), NewIndex);
            return Rebuild(NewIndex, Key, Forward);
        })) {
        if (Node) Node->TakeOut();
        List.Move(NewIndex, OldIndex);
        Key = Neighbour;
        static_cast<void>(Trap(Source, [&] { return Rebuild(OldIndex, Key, Back); }));
        return true;
    }
    At.CurrItem = Key;
    Tree.SelectNode(Key);
    Tree.MarkModified(true);
    return false;
}

/// Whether a node is in the tree, directly below the folder.
bool StandsIn(const DesignTree& Tree, const std::wstring& Key, const std::wstring& Folder);

/// MoveData of a list without nodes: the element at At.Index goes one place to the front with a positive
/// direction, else one to the end. True when there is nowhere to go.
[[nodiscard]] bool MoveUnseen(DesignTree& Tree, ParmListBase& List, const Head& At, std::int32_t Direction);

/// DeleteData of a list section: with `Group` all elements of the list that stands below `Folder`, else the
/// element at At.Index (without an index, the selected one), each with its node; an empty `Folder` is
/// that of a list without nodes. A place that is none of the list raises and changes nothing.
void DeleteElement(DesignTree& Tree, ParmListBase& Elements, const std::wstring& Folder, const Head& At,
                   bool Group);

// Sections.

/// The indent of what stands inside a block: 0 stays 0, else one more.
constexpr std::int32_t InnerIndent(std::int32_t Indent) noexcept { return Indent == 0 ? 0 : Indent + 1; }

/// Renders a section by `Render()` (True on failure), between its BEGIN and END lines where `Wrap` is set;
/// the two lines stand behind `Indent` tabs. A failed rendering has no END line.
template <class Renderer>
[[nodiscard]] bool WrapSection(std::wstring& Buffer, std::wstring_view Word, bool Wrap, std::int32_t Indent,
                               Renderer&& Render) {
    const auto Line = [&](std::wstring_view Mark) {
        if (!Wrap) return;
        AppendTabs(Buffer, Indent);
        Buffer.append(Mark).append(Word).append(StrUtil::kLineEnd);
    };
    Line(L"BEGIN ");
    if (Render()) return true;
    Line(L"END ");
    return false;
}

/// The head under which ExportData has the item render a section of its own.
Head ExportHead(std::wstring_view Section);

/// TlbrButtonClick: what goes wrong in a tool is shown here, since the answer tells it to nobody else. True
/// on failure.
template <class Tool>
bool RunTool(std::wstring_view Source, Tool&& Body) {
    const bool Failed = Trap(Source, Body);
    if (Failed) CoreUtil::Instance().ShowLastError();
    return Failed;
}

// Identity and clipboard.

/// GetObjectInfo: the version as a 16-bit value (beyond it: the fault "Overflow"), the id as decimal text.
void ObjectInfo(const Identity& Record, std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                std::wstring& Id);

/// CopyData: has the item save itself onto the object that the clipboard holds. True on failure.
[[nodiscard]] bool CopyTo(iKvTree& Item, const ClipItem& DataObj);

}  // namespace kv::vdbShared
