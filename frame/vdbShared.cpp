#include "frame/vdbShared.h"

#include "frame/CoreUtil.h"
#include "frame/StrUtil.h"

namespace kv::vdbShared {

void StartTree(DesignTree& Tree, const RegData& Clsid) {
    const std::wstring Name = Clsid.Name();
    Tree.ClearNodes();
    Tree.AddNode({.Key = kRootKey,
                  .Text = Name,
                  .Image = image::kFolder,
                  .SelectedImage = image::kFolderOpen,
                  .Kind = kind::kPlain});
}

void AddFolder(DesignTree& Tree, std::wstring_view Key, std::wstring_view Caption, std::wstring_view Kind,
               std::wstring_view Parent) {
    Tree.AddNode({.Relative = Parent,
                  .Relationship = relation::kChild,
                  .Key = Key,
                  .Text = Caption,
                  .Image = image::kFolder,
                  .SelectedImage = image::kFolderOpen,
                  .Kind = Kind});
}

void AddFolders(DesignTree& Tree, std::span<const FolderRow> Rows) {
    for (const FolderRow& Row : Rows) AddFolder(Tree, Row.Word, Row.Caption, Row.Kind, Row.Parent);
}

void AddLeaf(DesignTree& Tree, std::wstring_view Section, std::wstring_view Caption) {
    std::wstring Key;
    SetNode(Tree, Section, Caption, Key);
}

void StartPlainTree(DesignTree& Tree, const RegData& Clsid) {
    StartTree(Tree, Clsid);
    AddFolder(Tree, kParms, kParmsCaption);
    AddLeaf(Tree, kParms, kParmsCaption);
}

void SetNode(DesignTree& Tree, std::wstring_view Name, std::wstring_view Caption, std::wstring& NewKey,
             std::optional<std::int32_t> Relationship, bool NoNode) {
    std::wstring Key(Name);
    Key.append(L" ").append(std::to_wstring(CoreUtil::Instance().NextNodeId()));
    if (!NoNode)
        Tree.AddNode({.Relative = Relationship ? std::wstring_view(NewKey) : Name,
                      .Relationship = Relationship.value_or(relation::kChild),
                      .Key = Key,
                      .Text = Caption});
    NewKey = std::move(Key);
}

namespace {

void AddFurtherLeaf(DesignTree& Tree, const Head& At, std::wstring_view Caption, std::wstring& NewItemKey) {
    std::wstring Folder = Tree.HasNode(At.CurrFolder) ? FolderOf(Tree, At.CurrFolder) : std::wstring();
    if (SectionWord(Folder) == At.Key) {
        SetNode(Tree, At.Key, Caption, Folder, relation::kChild);
        NewItemKey = std::move(Folder);
    } else {
        SetNode(Tree, At.Key, Caption, NewItemKey);
    }
    Tree.MarkModified(true);
}

}  // namespace

void AddPlainLeaf(DesignTree& Tree, const Head& At, std::wstring& NewItemKey) {
    AddFurtherLeaf(Tree, At, At.Key, NewItemKey);
}

bool AddNamelessLeaf(std::wstring_view SetNodeSource, DesignTree& Tree, const Head& At,
                     std::wstring& NewItemKey) {
    return Trap(SetNodeSource, [&] {
        CoreUtil::Instance().Door().Beep();
        AddFurtherLeaf(Tree, At, {}, NewItemKey);
        return false;
    });
}

void ShowCaption(DesignTree& Tree, std::wstring_view Key, std::wstring Caption, std::wstring& NewItemKey) {
    Tree.SetNodeText(Key, Caption);
    NewItemKey = std::move(Caption);
}

std::wstring FolderOf(const DesignTree& Tree, const std::wstring& Key) {
    std::wstring Above = Tree.NodeParent(Key);
    return SectionWord(Above) == SectionWord(Key) ? Above : Key;
}

bool IsElement(const DesignTree& Tree, const Head& At) {
    return Tree.HasNode(At.CurrItem) && FolderOf(Tree, At.CurrItem) != At.CurrItem;
}

bool StandsIn(const DesignTree& Tree, const std::wstring& Key, const std::wstring& Folder) {
    return Tree.HasNode(Key) && Tree.NodeParent(Key) == Folder;
}

bool MoveUnseen(DesignTree& Tree, ParmListBase& List, const Head& At, std::int32_t Direction) {
    const std::int32_t To = Direction > 0 ? At.Index - 1 : At.Index + 1;
    if (At.Index < 1 || At.Index > List.Count() || To < 1 || To > List.Count()) return true;
    List.Move(At.Index, To);
    Tree.MarkModified(true);
    return false;
}

void DeleteElement(DesignTree& Tree, ParmListBase& Elements, const std::wstring& Folder, const Head& At,
                   bool Group) {
    const bool Seen = !Folder.empty();
    if (Group) {
        if (Seen) Tree.RemoveChildren(Folder);
        Elements.Clear();
    } else {
        const bool Selected = At.Index == 0 && Seen && StandsIn(Tree, At.CurrItem, Folder);
        const std::int32_t Index = Selected ? Tree.NodeId(At.CurrItem) : At.Index;
        const std::wstring Node = Seen ? Tree.NodeAt(Folder, Index) : std::wstring();
        if ((Seen && Node.empty()) || Index < 1 || Index > Elements.Count()) RaiseFault(fault::kSubscript);
        if (Seen) Tree.RemoveNode(Node);
        Elements.Remove(Index);
    }
    Tree.MarkModified(true);
}

Head ExportHead(std::wstring_view Section) { return {.Index = 1, .Key = std::wstring(Section)}; }

void ObjectInfo(const Identity& Record, std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                std::wstring& Id) {
    Version = StrUtil::ToInteger(Record.Version);
    Name = Record.Name;
    Desc = Record.Desc;
    Id = std::to_wstring(Record.Id);
}

bool CopyTo(iKvTree& Item, const ClipItem& DataObj) {
    if (!DataObj.DataObj) RaiseFault(fault::kNoObject);
    return Item.Save(*DataObj.DataObj);
}

}  // namespace kv::vdbShared
