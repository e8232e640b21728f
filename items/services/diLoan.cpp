#include "items/services/diLoan.h"

#include "editor/ParmEditor.h"
#include "frame/Words.h"

namespace kv {

using vdbShared::kParms;
namespace {

constexpr Choice kChoices[] = {
    {kParms, L"ASKUSER=", kBooleanWords},
};

}  // namespace

bool diLoan::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diLoan.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveLoan(Record(), Buffer, Flags);
        return false;
    });
}

bool diLoan::Save(RegData& Clsid) {
    return Trap(L"diLoan.Save", [&] { return Record().Save(Clsid); });
}

bool diLoan::MoveData(Head&, std::int32_t) { return true; }

bool diLoan::LoadData(RegData& Clsid) {
    return Trap(L"diLoan.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diLoan::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diLoan.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diLoan::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diLoan.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diLoan::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diLoan.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diLoan::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions, std::int32_t) {
    return Trap(L"diLoan.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kParms && ParmEditor::DispLoan(Record(), Buffer, Flags);
        });
    });
}

bool diLoan::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diLoan.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diLoan::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
