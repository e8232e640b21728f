#include "items/services/diLoanClient.h"

#include "editor/ParmEditor.h"
#include "frame/Words.h"

namespace kv {

using vdbShared::kParms;
namespace {

constexpr auto kRequestChoices = WordsOf(kLoanRequests);
constexpr auto kDeliverChoices = WordsOf(kDeliverLibs);
constexpr auto kPasswordChoices = NoneThen(kPasswordOptions);

constexpr Choice kChoices[] = {
    {kParms, L"REQUESTOPTIONS=", kRequestChoices},
    {kParms, L"DELIVERLIB=", kDeliverChoices},
    {kParms, L"WEBDELIVERLIB=", kDeliverChoices},
    {kParms, L"PWDOPTIONS=", kPasswordChoices},
};

}  // namespace

bool diLoanClient::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diLoanClient.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveLoanClient(Record(), Buffer, Flags);
        return false;
    });
}

bool diLoanClient::Save(RegData& Clsid) {
    return Trap(L"diLoanClient.Save", [&] { return Record().Save(Clsid); });
}

bool diLoanClient::MoveData(Head&, std::int32_t) { return true; }

bool diLoanClient::LoadData(RegData& Clsid) {
    return Trap(L"diLoanClient.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diLoanClient::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                 std::wstring& Id) {
    return Trap(L"diLoanClient.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diLoanClient::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diLoanClient.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diLoanClient::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diLoanClient.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diLoanClient::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                            std::int32_t) {
    return Trap(L"diLoanClient.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kParms && ParmEditor::DispLoanClient(Record(), Buffer, Flags);
        });
    });
}

bool diLoanClient::CopyData(const Head&, bool, ClipItem&) { return false; }

bool diLoanClient::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
