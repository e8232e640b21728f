// The stored record of a master page definition: a list of templates.
#pragma once

#include "records/HtmlRecord.h"
#include "records/Stored.h"

namespace kv {

struct MaterRecord final : Stored<MaterRecord> {
    static constexpr std::wstring_view kClass = L"MaterRecord";

    ParmList<HtmlRecord> Html;
    std::int32_t Flags = 0;  // no flag word exists

    static constexpr auto Properties(auto With) {
        return With(List(L"Html", &MaterRecord::Html), Parameter(L"Flags", &MaterRecord::Flags));
    }
};

}  // namespace kv
