#include "items/services/diLoanMenu.h"

#include "editor/ParmEditor.h"
#include "frame/Words.h"

namespace kv {

using vdbShared::kParms;
namespace {

// One keyword a line.
// clang-format off
constexpr Choice kChoices[] = {
    {kParms, L"USERNEW=", kBooleanWords},
    {kParms, L"USERMOD=", kBooleanWords},
    {kParms, L"USERDEL=", kBooleanWords},
    {kParms, L"USERPRN=", kBooleanWords},
    {kParms, L"LOANLOAN=", kBooleanWords},
    {kParms, L"LOANDEP=", kBooleanWords},
    {kParms, L"LOANPREN=", kBooleanWords},
    {kParms, L"LOANSOLLE=", kBooleanWords},
    {kParms, L"STATACTIVE=", kBooleanWords},
    {kParms, L"PARMACTIVE=", kBooleanWords},
    {kParms, L"SERVACTIVE=", kBooleanWords},
    {kParms, L"USERACTIVE=", kBooleanWords},
    {kParms, L"LOANACTIVE=", kBooleanWords},
    {kParms, L"CHANGEBIB=", kBooleanWords},
    {kParms, L"BUTTLETT=", kBooleanWords},
    {kParms, L"BUTTPREST=", kBooleanWords},
    {kParms, L"BUTTRESO=", kBooleanWords},
    {kParms, L"BUTTRINNO=", kBooleanWords},
    {kParms, L"BUTTPRENO=", kBooleanWords},
    {kParms, L"BUTTCONSE=", kBooleanWords},
    {kParms, L"BUTTCANCE=", kBooleanWords},
    {kParms, L"BUTTDEPOS=", kBooleanWords},
    {kParms, L"BUTTENDDE=", kBooleanWords},
    {kParms, L"BUTTCOMPRA=", kBooleanWords},
};
// clang-format on

}  // namespace

bool diLoanMenu::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diLoanMenu.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveLoanMenu(Record(), Buffer, Flags);
        return false;
    });
}

bool diLoanMenu::Save(RegData& Clsid) {
    return Trap(L"diLoanMenu.Save", [&] { return Record().Save(Clsid); });
}

bool diLoanMenu::MoveData(Head&, std::int32_t) { return true; }

bool diLoanMenu::LoadData(RegData& Clsid) {
    return Trap(L"diLoanMenu.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diLoanMenu::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                               std::wstring& Id) {
    return Trap(L"diLoanMenu.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diLoanMenu::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diLoanMenu.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diLoanMenu::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diLoanMenu.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diLoanMenu::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                          std::int32_t) {
    return Trap(L"diLoanMenu.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            return At.Key == kParms && ParmEditor::DispLoanMenu(Record(), Buffer, Flags);
        });
    });
}

bool diLoanMenu::CopyData(const Head&, bool, ClipItem&) { return false; }

bool diLoanMenu::DeleteData(const Head&, bool) { return false; }

}  // namespace kv
