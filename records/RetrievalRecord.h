// The stored record of a retrieval base: where it lives, how it is kept, and what it lets its clients do.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/Stored.h"

namespace kv {

/// Bits of RetrievalRecord::Flags.
inline constexpr std::array<Word, 2> kRetrievalFlags{{
    {L"KEEPBACKUP", 0x02},
    {L"KILLAFTERCOPY", 0x01},
}};

/// Codes of RetrievalRecord::HelpType; any other is shown as STANDARD.
inline constexpr std::array<Word, 2> kRetrievalHelpTypes{{
    {L"STANDARD", 0},
    {L"EXTERN-CHM", 1},
}};

/// Bits of RetrievalRecord::LoanEnable; 0x10 has no word. The first word sets none and tells that the
/// second's is clear.
inline constexpr std::int32_t kLoanEnabled = 0x01;
inline constexpr std::wstring_view kLoanNotEnabled = L"NOTENABLED";
inline constexpr std::array<Word, 6> kLoanEnableWords{{
    {kLoanNotEnabled, 0},
    {L"ENABLED", kLoanEnabled},
    {L"STARTUP", 0x02},
    {L"RESTARTABLE", 0x04},
    {L"DISPONLY", 0x08},
    {L"PREVAIL", 0x20},
}};

struct RetrievalRecord final : Stored<RetrievalRecord> {
    static constexpr std::wstring_view kClass = L"RetrievalRecord";

    bool Compressed = false;
    std::wstring BackupPath;
    std::wstring TempPath;
    std::int16_t DbVersion = 0;  // packed by CoreUtil::PackVersion
    bool Encryption = false;
    std::int32_t Flags = 0;  // kRetrievalFlags
    std::wstring Help;
    std::int32_t HelpType = 0;  // kRetrievalHelpTypes
    std::wstring HtmlRoot;
    std::wstring LockFile;
    std::wstring LogFile;
    std::int32_t LoanEnable = 0;  // kLoanEnableWords
    std::wstring LoanPath;
    bool MenuBar = true;
    std::wstring MirrorOf;  // the base that this one mirrors
    // Ceilings that prevail over the client's own.
    std::int32_t FileMaxItems = kNoCeiling;
    std::int32_t FileMaxRecs = kNoCeiling;
    std::int32_t PrnMaxItems = kNoCeiling;
    std::int32_t PrnMaxRecs = kNoCeiling;
    std::wstring Path;
    std::int16_t DataLockPwd = 0;
    bool RemoteDb = false;
    std::wstring Url;
    std::wstring UrlFor;

    static constexpr auto Properties(auto With) {
        using R = RetrievalRecord;
        return With(Parameter(L"Compressed", &R::Compressed), Parameter(L"BackupPath", &R::BackupPath),
                    Parameter(L"TempPath", &R::TempPath), Parameter(L"DbVersion", &R::DbVersion),
                    Parameter(L"Encryption", &R::Encryption), Parameter(L"Flags", &R::Flags),
                    Parameter(L"Help", &R::Help), Parameter(L"HelpType", &R::HelpType),
                    Parameter(L"HtmlRoot", &R::HtmlRoot), Parameter(L"LockFile", &R::LockFile),
                    Parameter(L"LogFile", &R::LogFile), Parameter(L"LoanEnable", &R::LoanEnable),
                    Parameter(L"LoanPath", &R::LoanPath), Parameter(L"MenuBar", &R::MenuBar),
                    Parameter(L"MirrorOf", &R::MirrorOf), Parameter(L"FileMaxItems", &R::FileMaxItems),
                    Parameter(L"FileMaxRecs", &R::FileMaxRecs), Parameter(L"PrnMaxItems", &R::PrnMaxItems),
                    Parameter(L"PrnMaxRecs", &R::PrnMaxRecs), Parameter(L"Path", &R::Path),
                    Parameter(L"DataLockPwd", &R::DataLockPwd), Parameter(L"RemoteDb", &R::RemoteDb),
                    Parameter(L"Url", &R::Url), Parameter(L"UrlFor", &R::UrlFor));
    }
};

}  // namespace kv
