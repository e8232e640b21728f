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

void Add(DesignTree& Tree, MadeBy By, const NewNode& Node) {
    if (By == MadeBy::AddIconNode)
        Tree.AddIconNode(Node);
    else
        Tree.AddNode(Node);
}

MadeBy MakerOf(std::optional<std::int32_t> Icon) { return Icon ? MadeBy::AddIconNode : MadeBy::AddNode; }

void AddFolderNode(DesignTree& Tree, std::optional<std::int32_t> Icon, std::wstring_view Relative,
                   std::int32_t Relationship, std::wstring_view Key, std::wstring_view Text,
                   std::wstring_view Kind) {
    Add(Tree, MakerOf(Icon),
        {.Relative = Relative,
         .Relationship = Relationship,
         .Key = Key,
         .Text = Text,
         .Image = Icon.value_or(image::kFolder),
         .SelectedImage = Icon.value_or(image::kFolderOpen),
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
    const std::optional<std::int32_t> Below = Shape.Icon ? std::optional(image::kLeaf) : std::nullopt;
    const std::wstring Element = FolderKey(Shape.Word);
    AddFolderNode(Tree, Shape.Icon, Relationship ? std::wstring_view(Key) : Shape.Word,
                  Relationship.value_or(relation::kChild), Element, Caption, Shape.Kind);
    const std::wstring Parms = FolderKey(Shape.ParmsWord);
    AddFolderNode(Tree, Below, Element, relation::kChild, Parms, Shape.ParmsCaption, kind::kPlain);
    Add(Tree, MakerOf(Shape.Icon),
        {.Relative = Parms,
         .Relationship = relation::kChild,
         .Key = LeafKey(Shape.ParmsLeaf, Shape.ParmsWord, Parms),
         .Text = Shape.ParmsCaption});
    if (!Shape.InnerWord.empty()) {
        const std::wstring Inner = FolderKey(Shape.InnerWord);
        AddFolderNode(Tree, Below, Element, relation::kChild, Inner, Shape.InnerCaption, Shape.InnerKind);
        for (const std::wstring& Text : InnerCaptions)
            Add(Tree, MakerOf(Shape.Icon),
                {.Relative = Inner,
                 .Relationship = relation::kChild,
                 .Key = LeafKey(Shape.InnerLeaf, Shape.InnerWord, Inner),
                 .Text = Text});
    }
    Key = Element;
}

void NeedsEveryNode(const DesignTree& Tree, const std::wstring& Folder, const ParmListBase& Elements) {
    const std::int32_t Count = Elements.Count();
    if ((Count > 0 && Tree.NodeAt(Folder, Count).empty()) || !Tree.NodeAt(Folder, Count + 1).empty())
        Raise(L"Salvare l'oggetto e riaprirlo per visualizzare le modifiche.");
}

bool SetInnerNode(DesignTree& Tree, std::wstring_view Caption, std::wstring& Key,
                  std::optional<std::int32_t> Relationship, LeafKeys Keys, std::wstring_view Word,
                  MadeBy By) {
    const std::int32_t Stands = Relationship.value_or(relation::kChild);
    const std::wstring Folder = Stands == relation::kChild ? Key : Above(Tree, Key);
    std::wstring Made = LeafKey(Keys, Word, Folder);
    Add(Tree, By, {.Relative = Key, .Relationship = Stands, .Key = Made, .Text = Caption});
    Key = std::move(Made);
    return false;
}

bool SetLeaf(DesignTree& Tree, std::wstring_view Word, std::wstring_view Caption, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    SetNode(Tree, Word, Caption, Key, Relationship);
    return false;
}

}  // namespace kv::vdbShared
