// The stored record of a list of aliases.
#pragma once

#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

struct AliasRecord final : Stored<AliasRecord> {
    static constexpr std::wstring_view kClass = L"AliasRecord";

    ParmList<ParmItem> Fields;  // Name, and as Text what it stands for; ascending by Name

    static constexpr auto Properties(auto With) { return With(List(L"Fields", &AliasRecord::Fields)); }
};

}  // namespace kv
