// The stored record of a repository: where a collection of digital objects lies. It alone of all records
// reads and writes its own section text.
#pragma once

#include <string>

#include "frame/SectionTable.h"
#include "records/Stored.h"

namespace kv {

struct RepositoryRecord final : Stored<RepositoryRecord> {
    static constexpr std::wstring_view kClass = L"RepositoryRecord";

    std::wstring Path;      // root folder of the objects
    std::wstring Url;       // the same as seen from the web
    std::wstring Table;     // record table whose records name the objects
    std::wstring KeyField;  // field that holds an object's name
    std::wstring TempPath;
    bool ReadOnly = false;
    std::int32_t Flags = 0;  // no flag word exists
    std::wstring MirrorOf;   // the repository that this one mirrors

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Path", &RepositoryRecord::Path), Parameter(L"Url", &RepositoryRecord::Url),
                    Parameter(L"Table", &RepositoryRecord::Table),
                    Parameter(L"KeyField", &RepositoryRecord::KeyField),
                    Parameter(L"TempPath", &RepositoryRecord::TempPath),
                    Parameter(L"ReadOnly", &RepositoryRecord::ReadOnly),
                    Parameter(L"Flags", &RepositoryRecord::Flags),
                    Parameter(L"MirrorOf", &RepositoryRecord::MirrorOf));
    }

    /// Parses a section text onto this record, keyword by keyword: what the text leaves out stays. True on
    /// failure (source "RepositoryRecord.SaveParm"); the record may then hold part of the text.
    [[nodiscard]] bool SaveParm(std::wstring_view Buffer, bool SyntaxOn);
    /// Appends the section text. True on failure (source "RepositoryRecord.DispParm").
    [[nodiscard]] bool DispParm(std::wstring& Buffer, std::int32_t Indent) const;
};

}  // namespace kv
