// The stored record of a group of mail users: a record for each of its fixed sections, and the backup paths.
#pragma once

#include <cstdint>
#include <string>

#include "records/Stored.h"

namespace kv {

struct MailGroupParmsRecord final : Stored<MailGroupParmsRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupParmsRecord";

    std::int32_t Size = 0;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Size", &MailGroupParmsRecord::Size));
    }
};

struct MailGroupMailRecord final : Stored<MailGroupMailRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupMailRecord";

    bool RcvEnabled = false;
    bool SndEnabled = false;
    bool RcvBroad = false;
    bool SndBroad = false;
    std::int32_t ExpDays = 0;
    std::int32_t MaxFiles = 0;
    std::int32_t MaxSize = 0;
    bool Attach = false;
    std::wstring Editor;
    std::wstring Users;
    bool PrintAllow = false;
    std::int32_t Priority = 0;

    static constexpr auto Properties(auto With) {
        using R = MailGroupMailRecord;
        return With(Parameter(L"RcvEnabled", &R::RcvEnabled), Parameter(L"SndEnabled", &R::SndEnabled),
                    Parameter(L"RcvBroad", &R::RcvBroad), Parameter(L"SndBroad", &R::SndBroad),
                    Parameter(L"ExpDays", &R::ExpDays), Parameter(L"MaxFiles", &R::MaxFiles),
                    Parameter(L"MaxSize", &R::MaxSize), Parameter(L"Attach", &R::Attach),
                    Parameter(L"Editor", &R::Editor), Parameter(L"Users", &R::Users),
                    Parameter(L"PrintAllow", &R::PrintAllow), Parameter(L"Priority", &R::Priority));
    }
};

struct MailGroupExportRecord final : Stored<MailGroupExportRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupExportRecord";

    bool Enabled = false;
    std::int32_t ExpDays = 0;
    std::int32_t MaxFiles = 0;
    std::int32_t MaxSize = 0;
    std::wstring Editor;
    std::int32_t MaxItems = 0;
    std::int32_t MaxRecs = 0;
    bool PrintAllow = false;

    static constexpr auto Properties(auto With) {
        using R = MailGroupExportRecord;
        return With(Parameter(L"Enabled", &R::Enabled), Parameter(L"ExpDays", &R::ExpDays),
                    Parameter(L"MaxFiles", &R::MaxFiles), Parameter(L"MaxSize", &R::MaxSize),
                    Parameter(L"Editor", &R::Editor), Parameter(L"MaxItems", &R::MaxItems),
                    Parameter(L"MaxRecs", &R::MaxRecs), Parameter(L"PrintAllow", &R::PrintAllow));
    }
};

struct MailGroupNoteBookRecord final : Stored<MailGroupNoteBookRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupNoteBookRecord";

    bool Enabled = false;
    std::int32_t ExpDays = 0;
    std::wstring Editor;
    std::int32_t MaxFiles = 0;
    std::int32_t MaxSize = 0;
    bool PrintAllow = false;

    static constexpr auto Properties(auto With) {
        using R = MailGroupNoteBookRecord;
        return With(Parameter(L"Enabled", &R::Enabled), Parameter(L"ExpDays", &R::ExpDays),
                    Parameter(L"Editor", &R::Editor), Parameter(L"MaxFiles", &R::MaxFiles),
                    Parameter(L"MaxSize", &R::MaxSize), Parameter(L"PrintAllow", &R::PrintAllow));
    }
};

/// What is kept of a user's work, and for how long: stored queries, set operations.
struct MailGroupKeepRecord final : Stored<MailGroupKeepRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupKeepRecord";

    bool Enabled = false;
    std::int32_t ExpDays = 0;
    std::int32_t MaxFiles = 0;

    static constexpr auto Properties(auto With) {
        using R = MailGroupKeepRecord;
        return With(Parameter(L"Enabled", &R::Enabled), Parameter(L"ExpDays", &R::ExpDays),
                    Parameter(L"MaxFiles", &R::MaxFiles));
    }
};

/// The language belongs to the header: no text of a section says it, and a save keeps it.
struct MailBackupRecord final : Stored<MailBackupRecord> {
    static constexpr std::wstring_view kClass = L"MailBackupRecord";

    std::wstring Caption;
    std::wstring Path;
    std::wstring Language;  // of the caption

    static constexpr auto Properties(auto With) {
        using R = MailBackupRecord;
        return With(Parameter(L"Caption", &R::Caption), Parameter(L"Path", &R::Path),
                    HeaderField(L"Language", &R::Language));
    }
};

struct MailGroupRecord final : Stored<MailGroupRecord> {
    static constexpr std::wstring_view kClass = L"MailGroupRecord";

    MailGroupParmsRecord Parms;
    MailGroupMailRecord Mail;
    MailGroupExportRecord Export;
    MailGroupKeepRecord SetOps;
    MailGroupNoteBookRecord NoteBook;
    MailGroupKeepRecord Query;
    ParmList<MailBackupRecord> Backups;

    static constexpr auto Properties(auto With) {
        using R = MailGroupRecord;
        return With(List(L"Parms", &R::Parms), List(L"Mail", &R::Mail), List(L"Export", &R::Export),
                    List(L"SetOps", &R::SetOps), List(L"NoteBook", &R::NoteBook), List(L"Query", &R::Query),
                    List(L"Backups", &R::Backups));
    }
};

}  // namespace kv
