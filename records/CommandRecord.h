// A button of a tool bar.
#pragma once

#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

struct CommandRecord final : Stored<CommandRecord> {
    static constexpr std::wstring_view kClass = L"CommandRecord";

    std::wstring Code;
    std::int32_t Action = -1;  // action word, -1 for none
    bool Enabled = true;
    bool Visible = true;
    ParmList<ParmItem> ToolTips;  // one a language

    static constexpr auto Properties() {
        return std::tuple{
            Parameter(L"Code", &CommandRecord::Code), Parameter(L"Action", &CommandRecord::Action),
            Parameter(L"Enabled", &CommandRecord::Enabled), Parameter(L"Visible", &CommandRecord::Visible),
            List(L"ToolTips", &CommandRecord::ToolTips)};
    }
};

}  // namespace kv
