#include "items/services/diMember.h"

#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

constexpr LadderRow<ParmItem> kLadder[] = {
    {L"PASSWORD=", read::Upper<&ParmItem::Text>},
};

constexpr LineRow<const ParmItem> kLines[] = {
    {L"PASSWORD=", write::Quoted<&ParmItem::Text>},
};

}  // namespace

bool diMember::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diMember.SaveData", [&] {
        if (At.Key == kParms) return SaveParm(Buffer, Tree().SyntaxOn());
        return false;
    });
}

bool diMember::Save(RegData& Clsid) {
    return Trap(L"diMember.Save", [&] { return Record().Save(Clsid); });
}

bool diMember::MoveData(Head&, std::int32_t) { return true; }

bool diMember::LoadData(RegData& Clsid) {
    return Trap(L"diMember.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return false;
    });
}

bool diMember::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                             std::wstring& Id) {
    return Trap(L"diMember.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diMember::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diMember.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diMember::EditData(const Head&, std::wstring&) { return false; }

bool diMember::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                        std::int32_t Indent) {
    return Trap(L"diMember.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            return At.Key == kParms && DispParm(Buffer, vdbShared::InnerIndent(Indent));
        });
    });
}

bool diMember::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diMember.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diMember::DeleteData(const Head&, bool) { return false; }

bool diMember::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diMember.SaveParm", Scratch::Header, kLadder, Record(), Buffer, SyntaxOn);
}

bool diMember::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diMember.DispParm", kLines, std::as_const(Record()), Buffer, Indent);
}

}  // namespace kv
