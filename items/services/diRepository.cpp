#include "items/services/diRepository.h"

namespace kv {

using vdbShared::kParms;

bool diRepository::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diRepository.SaveData", [&] {
        if (At.Key == kParms) return SaveParm(Buffer, Tree().SyntaxOn());
        return false;
    });
}

bool diRepository::Save(RegData& Clsid) {
    return Trap(L"diRepository.Save", [&] { return Record().Save(Clsid); });
}

bool diRepository::MoveData(Head&, std::int32_t) { return true; }

bool diRepository::LoadData(RegData& Clsid) {
    return Trap(L"diRepository.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return false;
    });
}

bool diRepository::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                 std::wstring& Id) {
    return Trap(L"diRepository.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diRepository::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diRepository.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diRepository::EditData(const Head&, std::wstring&) { return false; }

bool diRepository::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                            std::int32_t Indent) {
    return Trap(L"diRepository.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            return At.Key == kParms && DispParm(Buffer, vdbShared::InnerIndent(Indent));
        });
    });
}

bool diRepository::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diRepository.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diRepository::DeleteData(const Head&, bool) { return false; }

bool diRepository::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return Trap(L"diRepository.SaveParm", [&] {
        RepositoryRecord Scratch;
        Record().CopyTo(Scratch);
        if (Scratch.SaveParm(Buffer, SyntaxOn)) return true;
        std::move(Scratch).CopyTo(Record());
        return false;
    });
}

bool diRepository::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return Trap(L"diRepository.DispParm", [&] { return Record().DispParm(Buffer, Indent); });
}

}  // namespace kv
