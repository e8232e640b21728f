// The stored record of a help form of the client.
#pragma once

#include "records/CommandRecord.h"
#include "records/HtmlRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/Stored.h"

namespace kv {

struct HelpRecord final : Stored<HelpRecord> {
    static constexpr std::wstring_view kClass = L"HelpRecord";

    bool LargeButt = false;
    ParmList<CommandRecord> Commands;
    std::int32_t Flags = 0;  // no flag word exists
    std::wstring Help;
    std::wstring HelpWww;
    ParmList<HtmlRecord> Html;
    std::wstring MirrorOf;  // the help form that this one mirrors
    ParmList<PopupRecord> Popups;
    std::wstring Tips;
    std::int32_t TipsAlign = 0;    // kAlignWords
    std::int32_t TipsButtons = 0;  // kTipsButtonWords
    std::int32_t TipsWidth = 0;    // percent
    ParmList<ParmItem> Titles;
    std::int32_t ToolAlign = 0;  // kAlignWords
    std::int32_t ToolTips = 0;   // kToolTipWords

    static constexpr auto Properties(auto With) {
        using R = HelpRecord;
        return With(Parameter(L"LargeButt", &R::LargeButt), List(L"Commands", &R::Commands),
                    Parameter(L"Flags", &R::Flags), Parameter(L"Help", &R::Help),
                    Parameter(L"HelpWww", &R::HelpWww), List(L"Html", &R::Html),
                    Parameter(L"MirrorOf", &R::MirrorOf), List(L"Popups", &R::Popups),
                    Parameter(L"Tips", &R::Tips), Parameter(L"TipsAlign", &R::TipsAlign),
                    Parameter(L"TipsButtons", &R::TipsButtons), Parameter(L"TipsWidth", &R::TipsWidth),
                    List(L"Titles", &R::Titles), Parameter(L"ToolAlign", &R::ToolAlign),
                    Parameter(L"ToolTips", &R::ToolTips));
    }
};

}  // namespace kv
