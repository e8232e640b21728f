// The stored record of a catalogue procedure: named components that are run one after the other.
#pragma once

#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

struct CatProcRecord final : Stored<CatProcRecord> {
    static constexpr std::wstring_view kClass = L"CatProcRecord";

    std::wstring Catalogue;   // the catalogue that it works on
    std::wstring Retrieval;   // the retrieval base behind it
    std::wstring SourcePath;  // where its data come from
    std::wstring TargetPath;  // where they go
    std::wstring LogFile;
    std::wstring MirrorOf;      // the procedure that this one mirrors
    ParmList<ParmItem> Fields;  // its components: Id, Name

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Catalogue", &CatProcRecord::Catalogue),
                    Parameter(L"Retrieval", &CatProcRecord::Retrieval),
                    Parameter(L"SourcePath", &CatProcRecord::SourcePath),
                    Parameter(L"TargetPath", &CatProcRecord::TargetPath),
                    Parameter(L"LogFile", &CatProcRecord::LogFile),
                    Parameter(L"MirrorOf", &CatProcRecord::MirrorOf),
                    List(L"Fields", &CatProcRecord::Fields));
    }
};

}  // namespace kv
