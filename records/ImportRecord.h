// The stored record of an import: which files go through which procedure into which base.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CatalogueRecord.h"
#include "records/Stored.h"

namespace kv {

/// Bits of ImportRecord::Flags.
inline constexpr std::array<Word, 2> kImportFlags{{
    {L"ZIPFILES", 0x01},
    {L"CABFILES", 0x02},
}};

/// Bits of ImportRecord::ProcType.
inline constexpr std::array<Word, 8> kImportProcTypes{{
    {L"NODBR", 0x01},
    {L"ONLYDBR", 0x02},
    {L"UNKNOWTAGWARN", 0x04},
    {L"UNKNOWTAGSTOP", 0x08},
    {L"INCREMENTAL", 0x10},
    {L"COMPACTDB", 0x20},
    {L"NONULLMAINKEY", 0x40},
    {L"REFRESH", 0x80},
}};

struct ImportRecord final : Stored<ImportRecord>, CatalogueParms {
    static constexpr std::wstring_view kClass = L"ImportRecord";

    std::wstring Procedure;   // import procedure
    std::wstring SourcePath;  // files to load
    std::wstring TargetPath;  // where they go: a form "FILE:", "FTP:" or "HTTP:"
    std::wstring LogFile;
    std::int32_t ProcType = 0;  // kImportProcTypes
    bool Locked = false;

    static constexpr auto Properties(auto With) {
        return CatalogueProperties<ImportRecord>([&](const auto&... Shared) {
            return With(Shared..., Parameter(L"Procedure", &ImportRecord::Procedure),
                        Parameter(L"SourcePath", &ImportRecord::SourcePath),
                        Parameter(L"TargetPath", &ImportRecord::TargetPath),
                        Parameter(L"LogFile", &ImportRecord::LogFile),
                        Parameter(L"ProcType", &ImportRecord::ProcType),
                        Parameter(L"Locked", &ImportRecord::Locked));
        });
    }
};

}  // namespace kv
