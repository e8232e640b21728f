#include "items/services/diAlias.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"

namespace kv {
namespace {

using R = AliasRecord;
using Aliases = ParmList<ParmItem>;

constexpr std::wstring_view kClassWord = L"ALIAS";
constexpr std::wstring_view kFields = L"FIELDS";
constexpr std::wstring_view kNewName = L"Unknown type";

using Fields = InRecord<&R::Fields>;

std::wstring NameOf(const ParmItem& Of) { return Of.Name; }

// The place where a name belongs: before the first greater one. With `Without`, in the list from which the
// alias at that place is taken out.
std::int32_t SortedPlace(const Aliases& In, std::wstring_view Name,
                         std::optional<std::int32_t> Without = {}) {
    std::int32_t First = 1;
    std::int32_t Behind = Without ? In.Count() : In.Count() + 1;
    while (First < Behind) {
        const std::int32_t Middle = First + (Behind - First) / 2;
        const bool Skips = Without && Middle >= *Without;
        if (In.Item(Skips ? Middle + 1 : Middle).Name <= Name)
            First = Middle + 1;
        else
            Behind = Middle;
    }
    return First;
}

std::int32_t NewAlias(R& Record, const Place&, std::int32_t) {
    ParmItem Fresh;
    Fresh.Id = CoreUtil::Instance().NextNodeId();
    Fresh.Name = kNewName;
    const std::int32_t At = SortedPlace(Record.Fields, Fresh.Name);
    if (At > Record.Fields.Count())
        Record.Fields.Add(std::move(Fresh));
    else
        Record.Fields.Add(std::move(Fresh), {}, At);
    return At;
}

bool SetNode(DesignTree& Tree, std::wstring_view Name, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diAlias.SetNode",
                [&] { return vdbShared::SetLeaf(Tree, kFields, Name, Key, Relationship); });
}

// A new alias stands in its list already; what has its place in the tree is the next one.
bool SetAliasNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship) {
    const std::wstring& Name = Record.Fields.Item(Index).Name;
    if (Relationship != relation::kChild || Index == Record.Fields.Count())
        return SetNode(Tree, Name, Key, Relationship);
    Key = Tree.NodeAt(kFields, Index);
    return SetNode(Tree, Name, Key, relation::kBefore);
}

// Nothing moves: MoveData asks no table.
constexpr ListSection<R> kLists[] = {
    {kFields, 0, vdbShared::ListOf<Fields>, NewAlias, SetAliasNode, NewAt::End, Move::No, Delete::Yes},
};

constexpr ElementSection<R> kAlias =
    vdbShared::Edits<Fields, ParmEditor::SaveAlias, ParmEditor::DispAlias, NameOf>(kFields, Self::Yes);

// Equal names stay as they stood to each other.
Aliases Sorted(Aliases From) {
    std::vector<std::int32_t> Order(static_cast<std::size_t>(From.Count()));
    std::iota(Order.begin(), Order.end(), 1);
    std::stable_sort(Order.begin(), Order.end(),
                     [&](std::int32_t A, std::int32_t B) { return From.Item(A).Name < From.Item(B).Name; });
    Aliases Made;
    for (const std::int32_t At : Order) Made.Add(std::move(From.Item(At)));
    return Made;
}

}  // namespace

bool diAlias::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diAlias.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return At.Key == kFields && SaveAlias(At, NewItemKey, Buffer, Flags);
    });
}

bool diAlias::Save(RegData& Clsid) {
    return Trap(L"diAlias.Save", [&] { return Record().Save(Clsid); });
}

bool diAlias::MoveData(Head&, std::int32_t) { return true; }

bool diAlias::LoadData(RegData& Clsid) {
    return Trap(L"diAlias.LoadData", [&] {
        if (LoadSorted(Clsid)) return true;
        vdbShared::StartTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kFields, L"Alias", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists);
    });
}

bool diAlias::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diAlias.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diAlias::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diAlias.ExportData", [&] {
        if (LoadSorted(Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        return Out.Block(kClassWord, 0, [&] { return Out.Each(kFields, Record().Fields, 1); });
    });
}

bool diAlias::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diAlias.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diAlias::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t) {
    return Trap(L"diAlias.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kFields &&
                   vdbShared::DispElement(Tree(), Record(), kAlias, At, Item, Buffer, Flags);
        });
    });
}

bool diAlias::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diAlias.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diAlias::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diAlias.DeleteData", Tree(), Record(), kLists, At, Group);
}

// An object that something else has written may hold its aliases in any order.
bool diAlias::LoadSorted(RegData& Clsid) {
    auto Fresh = std::make_unique<R>();
    if (Fresh->Load(Clsid)) return true;
    Fresh->Fields = Sorted(std::move(Fresh->Fields));
    Record_ = std::move(Fresh);
    return false;
}

// The alias keeps its text and its leaf until its new leaf stands in the tree.
bool diAlias::SaveAlias(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                        const SaveFlags& Flags) {
    const std::int32_t Index = vdbShared::PlaceOf(Tree(), At, 0, Self::Yes)[0];
    vdbShared::NeedsOwnNode(Tree(), kFields, At);
    Aliases& All = Record().Fields;
    ParmItem Read = All.Item(Index);
    if (ParmEditor::SaveAlias(Read, Buffer, Flags)) return true;
    std::wstring Key = At.CurrItem;
    std::int32_t Now = Index;
    if (All.Count() == 1) {
        Tree().SetNodeText(Key, Read.Name);
    } else if (Read.Name != All.Item(Index).Name) {
        Now = SortedPlace(All, Read.Name, Index);
        const bool Last = Now == All.Count();
        const std::int32_t Neighbour = Last ? Now - 1 : Now;  // its place without this alias
        Key = Tree().NodeAt(kFields, Neighbour < Index ? Neighbour : Neighbour + 1);
        if (SetNode(Tree(), Read.Name, Key, Last ? relation::kAfter : relation::kBefore)) return true;
        Tree().RemoveNode(At.CurrItem);
        All.Move(Index, Now);
        Tree().SelectNode(Key);
        Tree().MarkModified(true);
    }
    All.Item(Now) = std::move(Read);
    NewItemKey = std::move(Key);
    return false;
}

}  // namespace kv
