#include "items/services/diFilter.h"

#include "editor/ParmEditor.h"
#include "frame/Words.h"

namespace kv {

using vdbShared::kParms;
namespace {

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kNoneOnly},
};

}  // namespace

bool diFilter::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diFilter.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveFilter(Record(), Buffer, Flags);
        return false;
    });
}

bool diFilter::Save(RegData& Clsid) {
    return Trap(L"diFilter.Save", [&] { return Record().Save(Clsid); });
}

bool diFilter::MoveData(Head&, std::int32_t) { return true; }

bool diFilter::LoadData(RegData& Clsid) {
    return Trap(L"diFilter.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diFilter::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                             std::wstring& Id) {
    return Trap(L"diFilter.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diFilter::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diFilter.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return vdbShared::WrapSection(Buffer, L"FILTER", true, 0, [&] {
            return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
        });
    });
}

bool diFilter::EditData(const Head&, std::wstring&) { return false; }

bool diFilter::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions, std::int32_t) {
    return Trap(L"diFilter.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kParms && ParmEditor::DispFilter(Record(), Buffer, Flags);
        });
    });
}

bool diFilter::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diFilter.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diFilter::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
