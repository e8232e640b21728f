#include "items/services/diImport.h"

#include <array>

#include "editor/ParmEditor.h"
#include "frame/Words.h"

namespace kv {

using vdbShared::kParms;
namespace {

constexpr auto kFlagChoices = NoneThen(kImportFlags);
constexpr auto kProcTypeChoices = ThenNone(kImportProcTypes);

// Templates: offered as they stand, for the operator to fill in.
constexpr std::array<std::wstring_view, 3> kTargetForms{
    L"FILE:<target>[;<ziptmppath>]",
    L"FTP:[user,pwd@]<target>[;<ziptmppath>]",
    L"HTTP:[pwd@]<target>[;<ziptmppath>]",
};

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices},
    {kParms, L"TARGETPATH=", kTargetForms},
    {kParms, L"LOCKED=", kBooleanWords},
    {kParms, L"PROCTYPE=", kProcTypeChoices},
};

}  // namespace

bool diImport::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diImport.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveImport(Record(), Buffer, Flags);
        return false;
    });
}

bool diImport::Save(RegData& Clsid) {
    return Trap(L"diImport.Save", [&] { return Record().Save(Clsid); });
}

bool diImport::MoveData(Head&, std::int32_t) { return true; }

bool diImport::LoadData(RegData& Clsid) {
    return Trap(L"diImport.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diImport::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                             std::wstring& Id) {
    return Trap(L"diImport.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diImport::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diImport.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return vdbShared::WrapSection(Buffer, L"IMPORT", true, 0, [&] {
            return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
        });
    });
}

bool diImport::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diImport.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diImport::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions, std::int32_t) {
    return Trap(L"diImport.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kParms && ParmEditor::DispImport(Record(), Buffer, Flags);
        });
    });
}

bool diImport::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diImport.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diImport::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
