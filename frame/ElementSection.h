// Sections that edit one element of a list through a pair of operations that others own, as a table: which
// element, who reads and renders it, and what its node then shows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "frame/ListSection.h"
#include "frame/vdbcModule.h"

namespace kv {

template <class R>
struct ElementSection {
    std::wstring_view Word;
    std::size_t Owners;  // elements above the section's folder
    Self Leaf;           // whether the selected leaf is the element; else the nearest owner is
    /// Parses the text into the element at the place. True on failure.
    bool (*Save)(R&, const Place&, std::wstring& Buffer, const SaveFlags&);
    /// Renders the element at the place. True on failure.
    bool (*Disp)(R&, const Place&, std::wstring& Buffer, const SaveFlags&);
    /// What the element's node shows once its section is saved; null where that does not change.
    std::wstring (*Caption)(R&, const Place&);
};

namespace vdbShared {

/// The element of list `L` at the place.
template <class L>
auto& ElementAt(typename L::Record& Record, const Place& At) {
    return L::Of(Record, At).Item(At[L::kOwners]);
}

/// A row for the elements of list `L`: their own leaves with Self::Yes, a folder below each of them with
/// Self::No. `CaptionBy` is what its node shows, null for no change.
template <class L, auto SaveBy, auto DispBy, auto CaptionBy>
constexpr ElementSection<typename L::Record> Edits(std::wstring_view Word, Self Leaf) {
    using R = typename L::Record;
    ElementSection<R> Row{Word, Leaf == Self::Yes ? L::kOwners : L::kOwners + 1, Leaf, {}, {}, {}};
    Row.Save = [](R& Record, const Place& At, std::wstring& Buffer, const SaveFlags& Flags) -> bool {
        return SaveBy(ElementAt<L>(Record, At), Buffer, Flags);
    };
    Row.Disp = [](R& Record, const Place& At, std::wstring& Buffer, const SaveFlags& Flags) -> bool {
        return DispBy(ElementAt<L>(Record, At), Buffer, Flags);
    };
    if constexpr (!std::is_null_pointer_v<decltype(CaptionBy)>)
        Row.Caption = [](R& Record, const Place& At) -> std::wstring {
            return CaptionBy(ElementAt<L>(Record, At));
        };
    return Row;
}

/// The node that stands for the element of a section: the leaf itself, or what its folder hangs on.
inline std::wstring ElementNode(const DesignTree& Tree, const Head& At, Self Leaf) {
    return Leaf == Self::Yes ? At.CurrItem : Tree.NodeParent(FolderOf(Tree, At.CurrFolder));
}

/// Raises where the selected node is no element of the section's folder: the text would go into one element
/// and the caption onto the node of another.
inline void NeedsOwnNode(const DesignTree& Tree, std::wstring_view Word, const Head& At) {
    const std::wstring Folder = FolderOf(Tree, At.CurrFolder);
    if (SectionWord(Folder) != Word || !StandsIn(Tree, At.CurrItem, Folder)) RaiseFault(fault::kSubscript);
}

/// The place that a head or an export gives for a section. Where the list has no folder in the tree, the
/// head's Index names the element.
template <class R>
Place PlaceOfSection(const DesignTree& Tree, const ElementSection<R>& Section, const Head& At,
                     Positions Item = {}) {
    const bool Unseen = Section.Owners == 0 && !Tree.HasNode(Section.Word);
    if (Unseen && Item.empty()) return Place({&At.Index, 1});
    return PlaceOf(Tree, At, Section.Owners, Section.Leaf, Item);
}

/// SaveData of an element's section; the new caption comes back, also that of an element without a node.
/// True on failure.
template <class R>
[[nodiscard]] bool SaveElement(DesignTree& Tree, R& Record, const ElementSection<R>& Section, const Head& At,
                               std::wstring& NewItemKey, std::wstring& Buffer, const SaveFlags& Flags) {
    const bool Shown = Section.Owners > 0 || Tree.HasNode(Section.Word);
    const Place Of = PlaceOfSection(Tree, Section, At);
    if (Shown && Section.Leaf == Self::Yes) NeedsOwnNode(Tree, Section.Word, At);
    if (Section.Save(Record, Of, Buffer, Flags)) return true;
    if (!Section.Caption) return false;
    NewItemKey = Section.Caption(Record, Of);
    if (Shown) Tree.SetNodeText(ElementNode(Tree, At, Section.Leaf), NewItemKey);
    return false;
}

/// Whether it is a list's folder that is selected, and no element told otherwise.
inline bool OnFolder(const DesignTree& Tree, const Head& At, Positions Item) {
    return Item.empty() && At.CurrItem == At.CurrFolder && Tree.HasNode(At.CurrItem) &&
           FolderOf(Tree, At.CurrItem) == At.CurrItem;
}

/// DispData of an element's section; a list's folder that is selected itself has nothing to show. True on
/// failure.
template <class R>
[[nodiscard]] bool DispElement(const DesignTree& Tree, R& Record, const ElementSection<R>& Section,
                               const Head& At, Positions Item, std::wstring& Buffer, const SaveFlags& Flags) {
    if (Section.Leaf == Self::Yes && OnFolder(Tree, At, Item) &&
        (Section.Owners > 0 || Tree.HasNode(Section.Word)))
        return false;
    return Section.Disp(Record, PlaceOfSection(Tree, Section, At, Item), Buffer, Flags);
}

}  // namespace vdbShared

}  // namespace kv
