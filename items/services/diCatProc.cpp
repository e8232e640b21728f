#include "items/services/diCatProc.h"

#include <string_view>
#include <unordered_set>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/vdbcModule.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = CatProcRecord;

constexpr std::wstring_view kClassWord = L"CATPROC";
constexpr std::wstring_view kFields = L"FIELDS";

using Fields = InRecord<&R::Fields>;

std::wstring NameOf(const ParmItem& Of) { return Of.Name; }

bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diCatProc.SetNode", [&] {
        return vdbShared::Leaf<Fields, kFields, NameOf>(Tree, Record, At, Index, Key, Relationship);
    });
}

constexpr ListSection<R> kLists[] = {
    {kFields, 0, vdbShared::ListOf<Fields>, vdbShared::NewIn<Fields>, SetNode, NewAt::End, Move::Yes,
     Delete::Yes},
};

constexpr ElementSection<R> kComponent =
    vdbShared::Edits<Fields, ParmEditor::SaveCatProcField, ParmEditor::DispCatProcField, NameOf>(kFields,
                                                                                                 Self::Yes);

void CheckNames(const ParmList<ParmItem>& Components) {
    std::unordered_set<std::wstring_view> Names;
    for (std::int32_t I = 1; I <= Components.Count(); ++I)
        if (!Names.insert(Components.Item(I).Name).second)
            Raise(L"Due elementi della procedura hanno lo stesso nome.");
}

}  // namespace

bool diCatProc::ShowPropTable(const std::wstring&, const std::wstring&) { return false; }

bool diCatProc::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diCatProc.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveCatProc(Record(), Buffer, Flags);
        if (At.Key != kFields) return false;
        return vdbShared::SaveElement(Tree(), Record(), kComponent, At, NewItemKey, Buffer, Flags);
    });
}

bool diCatProc::Save(RegData& Clsid) {
    return Trap(L"diCatProc.Save", [&] {
        CheckNames(Record().Fields);
        return Record().Save(Clsid);
    });
}

bool diCatProc::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diCatProc.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diCatProc::LoadData(RegData& Clsid) {
    return Trap(L"diCatProc.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kFields, L"Componenti", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists);
    });
}

bool diCatProc::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                              std::wstring& Id) {
    return Trap(L"diCatProc.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diCatProc::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diCatProc.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        return Out.Block(kClassWord, 0,
                         [&] { return Out.One(kParms, 1) || Out.Each(kFields, Record().Fields, 1); });
    });
}

bool diCatProc::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diCatProc.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        return At.Key == kParms && vdbShared::AddNamelessLeaf(L"diCatProc.SetNode", Tree(), At, NewItemKey);
    });
}

bool diCatProc::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                         std::int32_t) {
    return Trap(L"diCatProc.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key == kParms) return ParmEditor::DispCatProc(Record(), Buffer, Flags);
            return At.Key == kFields &&
                   vdbShared::DispElement(Tree(), Record(), kComponent, At, Item, Buffer, Flags);
        });
    });
}

bool diCatProc::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diCatProc.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diCatProc::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diCatProc.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
