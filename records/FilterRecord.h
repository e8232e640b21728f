// The stored record of a filter: a condition laid over the answers of a query.
#pragma once

#include "frame/vdbcModule.h"
#include "records/Stored.h"

namespace kv {

struct FilterRecord final : Stored<FilterRecord> {
    static constexpr std::wstring_view kClass = L"FilterRecord";

    std::wstring Table;          // index that the condition reads
    std::wstring Expression;     // the condition
    bool Automatic = false;      // laid over every query without being asked for
    std::int32_t MergeWith = 0;  // kMergeWords
    std::wstring Help;
    std::int32_t Flags = 0;  // no flag word exists
    std::wstring MirrorOf;   // the filter that this one mirrors

    static constexpr auto Properties(auto With) {
        return With(
            Parameter(L"Table", &FilterRecord::Table), Parameter(L"Expression", &FilterRecord::Expression),
            Parameter(L"Automatic", &FilterRecord::Automatic),
            Parameter(L"MergeWith", &FilterRecord::MergeWith), Parameter(L"Help", &FilterRecord::Help),
            Parameter(L"Flags", &FilterRecord::Flags), Parameter(L"MirrorOf", &FilterRecord::MirrorOf));
    }
};

}  // namespace kv
