#include "frame/ListSection.h"

#include <utility>

#include "frame/Failure.h"

namespace kv::vdbShared {
namespace {

std::wstring Above(const DesignTree& Tree, const std::wstring& Key) {
    std::wstring Parent = Tree.NodeParent(Key);
    if (Parent.empty()) RaiseFault(fault::kNoObject);
    return Parent;
}

// The key of a leaf: the word or the key of its folder, a blank, a fresh id.
std::wstring LeafKey(LeafKeys Made, std::wstring_view Word, std::wstring_view Folder) {
    std::wstring Key(Made == LeafKeys::OfSection ? Word : Folder);
    return Key.append(L" ").append(std::to_wstring(CoreUtil::Instance().NextNodeId()));
}

std::wstring FolderKey(std::wstring_view Word) {
    std::wstring Key(Word);
    return Key.append(L"-").append(std::to_wstring(CoreUtil::Instance().NextNodeId()));
}

void AddFolderNode(DesignTree& Tree, std::wstring_view Relative, std::int32_t Relationship,
                   std::wstring_view Key, std::wstring_view Text, std::wstring_view Kind) {
    Tree.AddNode({.Relative = Relative,
                  .Relationship = Relationship,
                  .Key = Key,
                  .Text = Text,
                  .Image = image::kFolder,
                  .SelectedImage = image::kFolderOpen,
                  .Kind = Kind});
}

}  // namespace

Place PlaceOf(const DesignTree& Tree, const Head& At, std::size_t Owners, Self Leaf, Positions Item) {
    if (!Item.empty()) return Place(Item);
    std::array<std::int32_t, Place::kDeepest> Found{};
    std::size_t Depth = 0;
    std::wstring Key = FolderOf(Tree, At.CurrFolder);
    if (Leaf == Self::Yes) {
        if (At.CurrItem == Key) RaiseFault(fault::kSubscript);  // the folder is selected, and no element
        Found[Depth++] = Tree.NodeId(At.CurrItem);
    }
    for (std::size_t Owner = 0; Owner < Owners; ++Owner) {
        Key = Above(Tree, Key);  // the element that the folder belongs to
        Found[Depth++] = Tree.NodeId(Key);
        if (Owner + 1 < Owners) Key = Above(Tree, Key);  // the folder in which that one stands
    }
    Place Made;
    while (Depth > 0) Made.Push(Found[--Depth]);
    return Made;
}

void AddElementNodes(DesignTree& Tree, const ElementShape& Shape, std::wstring_view Caption,
                     std::span<const std::wstring> InnerCaptions, std::wstring& Key,
                     std::optional<std::int32_t> Relationship) {
    const std::wstring Element = FolderKey(Shape.Word);
    AddFolderNode(Tree, Relationship ? std::wstring_view(Key) : Shape.Word,
                  Relationship.value_or(relation::kChild), Element, Caption, Shape.Kind);
    const std::wstring Parms = FolderKey(Shape.ParmsWord);
    AddFolderNode(Tree, Element, relation::kChild, Parms, Shape.ParmsCaption, kind::kPlain);
    Tree.AddNode({.Relative = Parms,
                  .Relationship = relation::kChild,
                  .Key = LeafKey(Shape.ParmsLeaf, Shape.ParmsWord, Parms),
                  .Text = Shape.ParmsCaption});
    if (!Shape.InnerWord.empty()) {
        const std::wstring Inner = FolderKey(Shape.InnerWord);
        AddFolderNode(Tree, Element, relation::kChild, Inner, Shape.InnerCaption, Shape.InnerKind);
        for (const std::wstring& Text : InnerCaptions)
            Tree.AddNode({.Relative = Inner,
                          .Relationship = relation::kChild,
                          .Key = LeafKey(Shape.InnerLeaf, Shape.InnerWord, Inner),
                          .Text = Text});
    }
    Key = Element;
}

bool SetInnerNode(DesignTree& Tree, std::wstring_view Caption, std::wstring& Key,
                  std::optional<std::int32_t> Relationship, LeafKeys Keys, std::wstring_view Word) {
    const std::int32_t Stands = Relationship.value_or(relation::kChild);
    const std::wstring Folder = Stands == relation::kChild ? Key : Above(Tree, Key);
    std::wstring Made = LeafKey(Keys, Word, Folder);
    Tree.AddNode({.Relative = Key, .Relationship = Stands, .Key = Made, .Text = Caption});
    Key = std::move(Made);
    return false;
}

bool SetLeaf(DesignTree& Tree, std::wstring_view Word, std::wstring_view Caption, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    SetNode(Tree, Word, Caption, Key, Relationship);
    return false;
}

}  // namespace kv::vdbShared
