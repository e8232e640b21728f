// The stored record of a loan client: what may be asked for, where it is delivered and what a reader's
// password must look like.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/Stored.h"

namespace kv {

/// Bits of LoanClientRecord::RequestOptions. The first word stands for none set.
inline constexpr std::array<Word, 4> kLoanRequests{{
    {L"NOTHING", 0x00},
    {L"LOAN", 0x01},
    {L"REFERENCE", 0x02},
    {L"RESERVATION", 0x04},
}};

/// Libraries that a document may be delivered to.
inline constexpr std::array<Word, 2> kDeliverLibs{{
    {L"ALL", 0},
    {L"DEFAULT", 1},
}};

/// Bits of LoanClientRecord::PwdOptions.
inline constexpr std::array<Word, 7> kPasswordOptions{{
    {L"ALPHA", 0x01},
    {L"CAMEL", 0x02},
    {L"DOMAIN", 0x04},
    {L"LENGTH", 0x08},
    {L"NONALPHA", 0x10},
    {L"PUNCT", 0x20},
    {L"DIGIT", 0x40},
}};

struct LoanClientRecord final : Stored<LoanClientRecord> {
    static constexpr std::wstring_view kClass = L"LoanClientRecord";

    std::wstring Loan;                // loan service
    std::wstring Menu;                // loan menu
    std::int32_t RequestOptions = 0;  // kLoanRequests
    std::int32_t DeliverLib = 0;      // kDeliverLibs
    std::int32_t WebDeliverLib = 0;   // kDeliverLibs, for requests from the web
    std::int32_t PwdOptions = 0;      // kPasswordOptions
    std::int32_t PwdLength = 0;       // shortest password, where LENGTH is set
    std::wstring Help;
    std::wstring MirrorOf;  // the loan client that this one mirrors

    static constexpr auto Properties(auto With) {
        using R = LoanClientRecord;
        return With(Parameter(L"Loan", &R::Loan), Parameter(L"Menu", &R::Menu),
                    Parameter(L"RequestOptions", &R::RequestOptions),
                    Parameter(L"DeliverLib", &R::DeliverLib), Parameter(L"WebDeliverLib", &R::WebDeliverLib),
                    Parameter(L"PwdOptions", &R::PwdOptions), Parameter(L"PwdLength", &R::PwdLength),
                    Parameter(L"Help", &R::Help), Parameter(L"MirrorOf", &R::MirrorOf));
    }
};

}  // namespace kv
