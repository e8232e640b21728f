#include "items/services/diCatalogue.h"

#include "editor/ParmEditor.h"
#include "frame/vdbShared.h"

namespace kv {

using vdbShared::kParms;

bool diCatalogue::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diCatalogue.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key != kParms) return false;
        return std::visit([&](auto& Record) { return ParmEditor::SaveCatalogue(Record, Buffer, Flags); },
                          Record_);
    });
}

bool diCatalogue::Save(RegData& Clsid) {
    return Trap(L"diCatalogue.Save",
                [&] { return std::visit([&](auto& Record) { return Record.Save(Clsid); }, Record_); });
}

bool diCatalogue::MoveData(Head&, std::int32_t) { return true; }

bool diCatalogue::LoadData(RegData& Clsid) {
    return Trap(L"diCatalogue.LoadData", [&] {
        CatalogueRecord Fresh;
        if (Fresh.Load(Clsid)) return true;
        Record_ = std::move(Fresh);
        vdbShared::StartPlainTree(Tree(), Clsid);
        return false;
    });
}

bool diCatalogue::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                std::wstring& Id) {
    return Trap(L"diCatalogue.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(std::visit([](auto& Record) -> const Identity& { return Record; }, Record_),
                              Name, Desc, Version, Id);
        return false;
    });
}

bool diCatalogue::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diCatalogue.ExportData", [&] {
        ImportRecord Fresh;
        if (Fresh.Load(Clsid)) return true;
        Record_ = std::move(Fresh);
        return vdbShared::WrapSection(Buffer, L"CATALOGUE", true, 0, [&] {
            return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
        });
    });
}

bool diCatalogue::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diCatalogue.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diCatalogue::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                           std::int32_t) {
    return Trap(L"diCatalogue.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key != kParms) return false;
            return std::visit([&](auto& Record) { return ParmEditor::DispCatalogue(Record, Buffer, Flags); },
                              Record_);
        });
    });
}

bool diCatalogue::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diCatalogue.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diCatalogue::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
