// The stored record of a loan menu: what the desk of the loan service may do, entry by entry and button by
// button.
#pragma once

#include "records/Stored.h"

namespace kv {

struct LoanMenuRecord final : Stored<LoanMenuRecord> {
    static constexpr std::wstring_view kClass = L"LoanMenuRecord";

    // readers: a new one, changes, removal, print
    bool UserNew = false;
    bool UserMod = false;
    bool UserDel = false;
    bool UserPrn = false;
    // loans: lending, deposit, reservation, reminder
    bool LoanLoan = false;
    bool LoanDep = false;
    bool LoanPren = false;
    bool LoanSolle = false;
    // menus that are there
    bool StatActive = false;
    bool ParmActive = false;
    bool ServActive = false;
    bool UserActive = false;
    bool LoanActive = false;
    // whether the desk may change its library
    bool ChangeBib = false;
    // buttons
    bool ButtLett = false;
    bool ButtPrest = false;
    bool ButtReso = false;
    bool ButtRinno = false;
    bool ButtPreno = false;
    bool ButtConse = false;
    bool ButtCance = false;
    bool ButtDepos = false;
    bool ButtEndDe = false;
    bool ButtCompra = false;
    std::wstring MirrorOf;  // the loan menu that this one mirrors

    static constexpr auto Properties(auto With) {
        using R = LoanMenuRecord;
        return With(Parameter(L"UserNew", &R::UserNew), Parameter(L"UserMod", &R::UserMod),
                    Parameter(L"UserDel", &R::UserDel), Parameter(L"UserPrn", &R::UserPrn),
                    Parameter(L"LoanLoan", &R::LoanLoan), Parameter(L"LoanDep", &R::LoanDep),
                    Parameter(L"LoanPren", &R::LoanPren), Parameter(L"LoanSolle", &R::LoanSolle),
                    Parameter(L"StatActive", &R::StatActive), Parameter(L"ParmActive", &R::ParmActive),
                    Parameter(L"ServActive", &R::ServActive), Parameter(L"UserActive", &R::UserActive),
                    Parameter(L"LoanActive", &R::LoanActive), Parameter(L"ChangeBib", &R::ChangeBib),
                    Parameter(L"ButtLett", &R::ButtLett), Parameter(L"ButtPrest", &R::ButtPrest),
                    Parameter(L"ButtReso", &R::ButtReso), Parameter(L"ButtRinno", &R::ButtRinno),
                    Parameter(L"ButtPreno", &R::ButtPreno), Parameter(L"ButtConse", &R::ButtConse),
                    Parameter(L"ButtCance", &R::ButtCance), Parameter(L"ButtDepos", &R::ButtDepos),
                    Parameter(L"ButtEndDe", &R::ButtEndDe), Parameter(L"ButtCompra", &R::ButtCompra),
                    Parameter(L"MirrorOf", &R::MirrorOf));
    }
};

}  // namespace kv
