// The stored record of a form of the set operations.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/HtmlRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/Stored.h"

namespace kv {

/// Bits of SetOpRecord::Flags.
inline constexpr std::array<Word, 1> kSetOpFlags{{
    {L"BROWSEFILES", 0x01},
}};

struct SetOpRecord final : Stored<SetOpRecord> {
    static constexpr std::wstring_view kClass = L"SetOpRecord";

    bool LargeButt = false;
    ParmList<CommandRecord> Commands;
    std::int32_t Flags = 0;  // kSetOpFlags
    std::wstring Help;
    std::wstring HelpWww;
    ParmList<HtmlRecord> Html;
    ParmList<PopupRecord> Popups;
    std::wstring Path;  // name, upper case
    std::wstring Tips;
    std::int32_t TipsAlign = 0;    // kAlignWords
    std::int32_t TipsButtons = 0;  // kTipsButtonWords
    std::int32_t TipsWidth = 0;    // percent
    ParmList<ParmItem> Titles;
    std::int32_t ToolAlign = 0;  // kAlignWords
    std::int32_t ToolTips = 0;   // kToolTipWords

    static constexpr auto Properties(auto With) {
        using R = SetOpRecord;
        return With(Parameter(L"LargeButt", &R::LargeButt), List(L"Commands", &R::Commands),
                    Parameter(L"Flags", &R::Flags), Parameter(L"Help", &R::Help),
                    Parameter(L"HelpWww", &R::HelpWww), List(L"Html", &R::Html), List(L"Popups", &R::Popups),
                    Parameter(L"Path", &R::Path), Parameter(L"Tips", &R::Tips),
                    Parameter(L"TipsAlign", &R::TipsAlign), Parameter(L"TipsButtons", &R::TipsButtons),
                    Parameter(L"TipsWidth", &R::TipsWidth), List(L"Titles", &R::Titles),
                    Parameter(L"ToolAlign", &R::ToolAlign), Parameter(L"ToolTips", &R::ToolTips));
    }
};

}  // namespace kv
