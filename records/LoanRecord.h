// The stored record of a loan service: which base it lends from and where it keeps its files.
#pragma once

#include "records/Stored.h"

namespace kv {

struct LoanRecord final : Stored<LoanRecord> {
    static constexpr std::wstring_view kClass = L"LoanRecord";

    std::wstring Retrieval;  // retrieval base whose documents are lent
    std::wstring Path;       // folder of its files
    std::wstring LogFile;
    bool AskUser = false;  // whether the reader is asked who they are
    std::wstring Help;
    std::wstring MirrorOf;  // the loan service that this one mirrors

    static constexpr auto Properties(auto With) {
        using R = LoanRecord;
        return With(Parameter(L"Retrieval", &R::Retrieval), Parameter(L"Path", &R::Path),
                    Parameter(L"LogFile", &R::LogFile), Parameter(L"AskUser", &R::AskUser),
                    Parameter(L"Help", &R::Help), Parameter(L"MirrorOf", &R::MirrorOf));
    }
};

}  // namespace kv
