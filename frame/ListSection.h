// List sections as tables: which lists of its record an item shows, how an element's node is made, and what
// may be done to it. Adding, moving, deleting and exporting are then the same for all.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/CoreUtil.h"
#include "frame/DesignTree.h"
#include "frame/ParmList.h"
#include "frame/iKvTree.h"
#include "frame/vdbShared.h"

namespace kv {

/// The 1-based places of the elements that a node stands in, outermost first.
class Place {
  public:
    static constexpr std::size_t kDeepest = 3;

    Place() = default;
    explicit Place(Positions Given) {
        for (const std::int32_t At : Given) Push(At);
    }
    void Push(std::int32_t At) {
        if (Depth_ == kDeepest) RaiseFault(fault::kSubscript);
        Places_[Depth_++] = At;
    }
    std::size_t Depth() const noexcept { return Depth_; }
    /// The place at a depth from 0; raises the subscript fault beyond it.
    std::int32_t operator[](std::size_t At) const {
        if (At >= Depth_) RaiseFault(fault::kSubscript);
        return Places_[At];
    }

  private:
    std::array<std::int32_t, kDeepest> Places_{};
    std::size_t Depth_ = 0;
};

/// What a section's node stands in: `Owners` elements above its folder, and the leaf itself where the folder
/// is a list.
enum class Self : bool { No, Yes };

namespace vdbShared {

/// The place of the node at `At`: each owner is the parent of a section folder, the next one two levels
/// further up; with Self::Yes the leaf's own place comes last. `Item`, where given, stands for all of it.
/// Raises for a node that is not in the tree or stands higher than that.
Place PlaceOf(const DesignTree& Tree, const Head& At, std::size_t Owners, Self Leaf, Positions Item = {});

/// The nodes of an element that is itself a folder: `FIELDS-<id>`, below it `FIELDPARMS-<id>` with its one
/// leaf, and `FIELDCAPTION-<id>` with a leaf for each entry of an inner list. Keys of leaves are the section
/// word or the key of their folder, a blank and an id.
enum class LeafKeys { OfSection, OfFolder };
/// The operation of the tree that makes a node. An icon node has one image for both states.
enum class MadeBy { AddNode, AddIconNode };
struct ElementShape {
    std::wstring_view Word;
    std::wstring_view ParmsWord;
    std::wstring_view ParmsCaption;
    LeafKeys ParmsLeaf = LeafKeys::OfFolder;
    std::wstring_view InnerWord{};  // empty: no inner list
    std::wstring_view InnerCaption{};
    std::wstring_view InnerKind = kind::kSubList;
    LeafKeys InnerLeaf = LeafKeys::OfFolder;
    std::wstring_view Kind = kind::kElement;
    /// Image of the element's node. Where it is given, that node and all below it are made by AddIconNode,
    /// those below with the image of leaves; else they are folders and leaves.
    std::optional<std::int32_t> Icon{};
};

/// Builds them, as a child of the folder Shape.Word or in `Relationship` to the node whose key `Key` holds.
/// `Key` comes back as the key of the first node.
void AddElementNodes(DesignTree& Tree, const ElementShape& Shape, std::wstring_view Caption,
                     std::span<const std::wstring> InnerCaptions, std::wstring& Key,
                     std::optional<std::int32_t> Relationship);

/// The leaf of an inner list: below the folder whose key `Key` holds, or in `Relationship` to the node of
/// that key; its own key is that of its folder (or the section word), a blank and an id.
[[nodiscard]] bool SetInnerNode(DesignTree& Tree, std::wstring_view Caption, std::wstring& Key,
                                std::optional<std::int32_t> Relationship, LeafKeys Keys = LeafKeys::OfFolder,
                                std::wstring_view Word = {}, MadeBy By = MadeBy::AddNode);
/// SetNode as a row of a table calls it.
[[nodiscard]] bool SetLeaf(DesignTree& Tree, std::wstring_view Word, std::wstring_view Caption,
                           std::wstring& Key, std::optional<std::int32_t> Relationship);

/// The captions of a list, in order.
template <class List, class Caption>
std::vector<std::wstring> CaptionsOf(const List& Elements, Caption&& Of) {
    std::vector<std::wstring> Made;
    for (std::int32_t I = 1; I <= Elements.Count(); ++I) Made.push_back(Of(Elements.Item(I)));
    return Made;
}

}  // namespace vdbShared

/// Where a new element goes: to the end, or behind the selected one where an element is selected.
enum class NewAt { End, BehindSelected };
enum class Move : bool { No, Yes };
/// One: the single element even where all of the folder are asked for.
enum class Delete { No, Yes, One };

/// A list section of the record `R`: which list, how a new element comes into it, how an element's node is
/// made.
template <class R>
struct ListSection {
    std::wstring_view Word;  // section word of the elements
    std::size_t Owners;      // elements that the list itself stands in
    ParmListBase& (*List)(R&, const Place&);
    /// Adds an element with a fresh id behind place `After`, 0 for the end; answers its place, 0 on failure.
    std::int32_t (*New)(R&, const Place&, std::int32_t After);
    /// Makes the node of the element at Index: as a child of the folder Word (no Relationship), as a new one
    /// below the folder whose key Key holds (child), or as a moved one beside the node of that key. True on
    /// failure. Null for a list that the tree does not show: At.Index alone names its elements.
    bool (*Build)(DesignTree&, R&, const Place&, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship);
    NewAt Adds;
    Move Moves;
    Delete Deletes;
};

/// The row of a section word, null when the item has no such list.
template <class Rows>
const auto* FindSection(const Rows& Sections, std::wstring_view Word) {
    const auto At = std::find_if(std::begin(Sections), std::end(Sections),
                                 [&](const auto& Row) { return Row.Word == Word; });
    return At == std::end(Sections) ? nullptr : &*At;
}

// The lists of a record, named once for the tables of an item: `Of(Record, At)` is the list, whose owners
// stand at the first `kOwners` places of `At`.

namespace detail {
template <class Member>
struct MemberOf;
template <class R, class T>
struct MemberOf<T R::*> {
    using Record = R;
};
}  // namespace detail

/// A list of the record itself.
template <auto Member>
struct InRecord {
    using Record = typename detail::MemberOf<decltype(Member)>::Record;
    static constexpr std::size_t kOwners = 0;
    static auto& Of(Record& In, const Place&) { return In.*Member; }
};
/// The list that each element of another one has.
template <class Outer, auto Member>
struct InElement {
    using Record = typename Outer::Record;
    static constexpr std::size_t kOwners = Outer::kOwners + 1;
    static auto& Of(Record& In, const Place& At) {
        return Outer::Of(In, At).Item(At[Outer::kOwners]).*Member;
    }
};

namespace vdbShared {

/// Adds an element with a fresh id behind place `After` of `Elements`, 0 for the end; answers its place.
template <class T>
std::int32_t NewElement(ParmList<T>& Elements, std::int32_t After, T Fresh = {}) {
    Fresh.Id = CoreUtil::Instance().NextNodeId();
    if (After == 0) {
        Elements.Add(std::move(Fresh));
        return Elements.Count();
    }
    Elements.Add(std::move(Fresh), {}, {}, After);
    return After + 1;
}

// What the columns of a ListSection mostly hold, for a list `L` named as above.

template <class L>
ParmListBase& ListOf(typename L::Record& Record, const Place& At) {
    return L::Of(Record, At);
}
/// An element with a fresh id and nothing else.
template <class L>
std::int32_t NewIn(typename L::Record& Record, const Place& At, std::int32_t After) {
    return NewElement(L::Of(Record, At), After);
}
/// A leaf below the folder `Word`, key `<Word> <id>`.
template <class L, const std::wstring_view& Word, auto Caption>
bool Leaf(DesignTree& Tree, typename L::Record& Record, const Place& At, std::int32_t Index,
          std::wstring& Key, std::optional<std::int32_t> Relationship) {
    return SetLeaf(Tree, Word, Caption(L::Of(Record, At).Item(Index)), Key, Relationship);
}
/// A leaf of an inner list, whose caption while it is new may be another one.
template <class L, const std::wstring_view& Word, LeafKeys Keys, auto NewCaption, auto Caption,
          MadeBy By = MadeBy::AddNode>
bool InnerLeaf(DesignTree& Tree, typename L::Record& Record, const Place& At, std::int32_t Index,
               std::wstring& Key, std::optional<std::int32_t> Relationship) {
    const auto& Element = L::Of(Record, At).Item(Index);
    const bool New = Relationship == relation::kChild;
    return SetInnerNode(Tree, New ? NewCaption(Element) : Caption(Element), Key, Relationship, Keys, Word,
                        By);
}

/// Loads the folder of a list section: a node for each element.
template <class R>
[[nodiscard]] bool BuildList(DesignTree& Tree, R& Record, const ListSection<R>& Section) {
    if (!Section.Build) return false;
    const std::int32_t Count = Section.List(Record, {}).Count();
    for (std::int32_t I = 1; I <= Count; ++I) {
        std::wstring Key;
        if (Section.Build(Tree, Record, {}, I, Key, {})) return true;
    }
    return false;
}
/// The same for the lists that hang on the record itself, in the order of the table.
template <class R, class Rows>
[[nodiscard]] bool BuildLists(DesignTree& Tree, R& Record, const Rows& Sections) {
    for (const ListSection<R>& Section : Sections)
        if (Section.Owners == 0 && BuildList(Tree, Record, Section)) return true;
    return false;
}

/// The folder in which the elements of a section stand: the one of its word, or for an inner list the folder
/// that is selected or holds the selected leaf. Raises where that is no folder of the section. Empty for a
/// list without nodes.
template <class R>
std::wstring FolderOfSection(const DesignTree& Tree, const ListSection<R>& Section, const Head& At) {
    if (!Section.Build) return {};
    if (Section.Owners == 0) return std::wstring(Section.Word);
    std::wstring Folder = FolderOf(Tree, At.CurrFolder);
    if (SectionWord(Folder) != Section.Word) RaiseFault(fault::kNoObject);
    return Folder;
}

/// Raises where the folder shows other elements than the list has: a tool has changed the list since the tree
/// was built, and a further element would stand at different places in the two.
void NeedsEveryNode(const DesignTree& Tree, const std::wstring& Folder, const ParmListBase& Elements);

/// A new element of a list section, its node below the section's folder or behind the selected one. An
/// element whose node can't be made is taken out again.
template <class R>
[[nodiscard]] bool AddElement(DesignTree& Tree, R& Record, const ListSection<R>& Section, const Head& At,
                              std::wstring& NewItemKey) {
    const std::wstring Folder = FolderOfSection(Tree, Section, At);
    if (Folder.empty()) {
        if (Section.New(Record, {}, 0) == 0) return true;
        SetNode(Tree, Section.Word, {}, NewItemKey, {}, true);
        Tree.MarkModified(true);
        return false;
    }
    const Place Owners = PlaceOf(Tree, At, Section.Owners, Self::No);
    NeedsEveryNode(Tree, Folder, Section.List(Record, Owners));
    const bool Behind = Section.Adds == NewAt::BehindSelected && StandsIn(Tree, At.CurrItem, Folder);
    std::wstring Key = Behind ? At.CurrItem : Folder;
    const std::int32_t Index = Section.New(Record, Owners, Behind ? Tree.NodeId(At.CurrItem) : 0);
    if (Index == 0) return true;
    struct Addition {
        ParmListBase& List;
        const std::int32_t Index;
        std::optional<HalfBuilt> Node = std::nullopt;
        bool Shown = false;
        ~Addition() {
            if (Shown) return;
            if (Node) Node->TakeOut();
            List.Remove(Index);
        }
    } Added{Section.List(Record, Owners), Index};
    Added.Node.emplace(Tree, Folder, Index);
    if (Section.Build(Tree, Record, Owners, Index, Key, Behind ? relation::kAfter : relation::kChild))
        return true;
    Added.Shown = true;
    NewItemKey = std::move(Key);
    Tree.MarkModified(true);
    return false;
}

// The operations of an item whose lists stand in a table. A section word without a row is a success that does
// nothing.

/// EditData. `Otherwise()` takes the sections that are no lists (True on failure).
template <class R, class Rows, class Other>
[[nodiscard]] bool EditData(std::wstring_view Source, DesignTree& Tree, R& Record, const Rows& Lists,
                            const Head& At, std::wstring& NewItemKey, Other&& Otherwise) {
    return Trap(Source, [&] {
        const auto* const Section = FindSection(Lists, At.Key);
        return Section ? AddElement(Tree, Record, *Section, At, NewItemKey) : Otherwise();
    });
}
template <class R, class Rows>
[[nodiscard]] bool EditData(std::wstring_view Source, DesignTree& Tree, R& Record, const Rows& Lists,
                            const Head& At, std::wstring& NewItemKey) {
    return EditData(Source, Tree, Record, Lists, At, NewItemKey, [] { return false; });
}

/// MoveData. A folder does not move: success, nothing done. True when there is nowhere to go.
template <class R, class Rows>
[[nodiscard]] bool MoveData(std::wstring_view Source, DesignTree& Tree, R& Record, const Rows& Lists,
                            Head& At, std::int32_t Direction) {
    return Trap(Source, [&] {
        const auto* const Section = FindSection(Lists, At.Key);
        if (!Section || Section->Moves == Move::No) return false;
        const std::wstring Folder = FolderOfSection(Tree, *Section, At);
        if (Folder.empty()) return MoveUnseen(Tree, Section->List(Record, {}), At, Direction);
        if (At.CurrItem == Folder) return false;
        if (!StandsIn(Tree, At.CurrItem, Folder)) return true;
        const Place Owners = PlaceOf(Tree, At, Section->Owners, Self::No);
        return MoveElement(Source, Tree, Section->List(Record, Owners), At, Direction,
                           [&](std::int32_t Index, std::wstring& Key, std::int32_t Relationship) {
                               return Section->Build(Tree, Record, Owners, Index, Key, Relationship);
                           });
    });
}

/// DeleteData: with `Group` the whole list, else, and always where a section deletes one at a time, the
/// element at At.Index.
template <class R, class Rows>
[[nodiscard]] bool DeleteData(std::wstring_view Source, DesignTree& Tree, R& Record, const Rows& Lists,
                              const Head& At, bool Group) {
    return Trap(Source, [&] {
        const auto* const Section = FindSection(Lists, At.Key);
        if (!Section || Section->Deletes == Delete::No) return false;
        const std::wstring Folder = FolderOfSection(Tree, *Section, At);
        const Place Owners = PlaceOf(Tree, At, Section->Owners, Self::No);
        DeleteElement(Tree, Section->List(Record, Owners), Folder, At,
                      Group && Section->Deletes != Delete::One);
        return false;
    });
}

/// ExportData step by step: each section is rendered by the item's own DispData, with its BEGIN and END
/// lines. True ends the export with the failure.
class Exporter {
  public:
    Exporter(iKvTree& Item, std::wstring& Buffer) noexcept : Item_(Item), Buffer_(Buffer) {}

    [[nodiscard]] bool One(std::wstring_view Section, std::int32_t Indent, Positions At = {}) {
        return Item_.DispData(ExportHead(Section), Buffer_, true, At, Indent);
    }
    /// One section an element.
    [[nodiscard]] bool Each(std::wstring_view Section, const ParmListBase& List, std::int32_t Indent) {
        return Each(List, [&](std::int32_t I) { return One(Section, Indent, {&I, 1}); });
    }
    /// One section an element of the list of element `Owner`.
    [[nodiscard]] bool Inner(std::wstring_view Section, const ParmListBase& List, std::int32_t Owner,
                             std::int32_t Indent) {
        return Each(List, [&](std::int32_t I) {
            const std::array<std::int32_t, 2> Of{Owner, I};
            return One(Section, Indent, Of);
        });
    }
    /// `Run(Index)` for each element.
    template <class Body>
    [[nodiscard]] bool Each(const ParmListBase& List, Body&& Run) {
        for (std::int32_t I = 1; I <= List.Count(); ++I)
            if (Run(I)) return true;
        return false;
    }
    /// What `Run()` exports, between a BEGIN and an END line.
    template <class Body>
    [[nodiscard]] bool Block(std::wstring_view Word, std::int32_t Indent, Body&& Run) {
        return WrapSection(Buffer_, Word, true, Indent, Run);
    }

  private:
    iKvTree& Item_;
    std::wstring& Buffer_;
};

}  // namespace vdbShared

}  // namespace kv
