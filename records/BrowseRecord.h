// The stored record of a browse: the list that a query sends its answers to.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/FilterRecord.h"
#include "records/FontRecord.h"
#include "records/HtmlRecord.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

/// What stands in front of a line of the list.
inline constexpr std::array<Word, 4> kBrowseIcons{{
    {L"NONE", 0},
    {L"CHECK", 1},
    {L"FOLDER", 2},
    {L"ARROW", 3},
}};

/// What choosing a reference does.
inline constexpr std::array<Word, 2> kBrowseReferences{{
    {L"JUMP", 0},
    {L"IMMEDIATE", 1},
}};

/// How several chosen lines are joined.
inline constexpr std::array<Word, 3> kBrowseBoolOps{{
    {L"NONE", 0},
    {L"AND", 1},
    {L"OR", 2},
}};

struct BrowseRecord final : Stored<BrowseRecord> {
    static constexpr std::wstring_view kClass = L"BrowseRecord";

    std::wstring Table;    // table that the answers come from
    std::wstring Profile;  // profile in which a record is shown
    std::wstring Help;
    std::wstring HelpWww;
    std::wstring Stem;  // stem that words are looked up in
    std::wstring Tips;
    std::int32_t TipsWidth = 0;  // percent
    std::int32_t Rows = 0;       // lines shown at once
    std::int32_t Icons = 0;      // kBrowseIcons
    std::int32_t Action = -1;    // action word, -1 for none
    bool UseCooked = false;
    bool OpenRecord = false;
    std::int32_t Reference = 0;  // kBrowseReferences
    bool AutoRun = false;
    bool MultiSel = false;
    std::int32_t TipsAlign = 0;    // kAlignWords
    std::int32_t TipsButtons = 0;  // kTipsButtonWords
    std::int32_t ToolTips = 0;     // kToolTipWords
    std::int32_t BoolOps = 0;      // kBrowseBoolOps
    bool LargeButt = false;
    bool ShowOccs = false;
    bool StemAuto = false;
    std::int32_t Flags = 0;  // no flag word exists
    bool NoPopup = false;
    std::int32_t StemAlign = 0;  // kAlignWords
    bool StemDocked = false;
    bool StemImmediate = false;
    bool StemSizable = false;
    bool TipsSizable = false;
    std::int32_t ToolAlign = 0;  // kAlignWords
    std::wstring MirrorOf;       // the browse that this one mirrors
    ParmList<CommandRecord> Commands;
    ParmList<FilterRecord> Filters;
    ParmList<ParmItem> FiltMessages;
    ParmList<ParmItem> FiltTitles;
    ParmList<FontRecord> Fonts;
    ParmList<CommandRecord> Popups;  // entries of the popup menu are buttons here
    ParmList<HtmlRecord> Html;
    ParmList<ParmItem> Titles;

    static constexpr auto Properties(auto With) {
        using R = BrowseRecord;
        return With(
            Parameter(L"Table", &R::Table), Parameter(L"Profile", &R::Profile), Parameter(L"Help", &R::Help),
            Parameter(L"HelpWww", &R::HelpWww), Parameter(L"Stem", &R::Stem), Parameter(L"Tips", &R::Tips),
            Parameter(L"TipsWidth", &R::TipsWidth), Parameter(L"Rows", &R::Rows),
            Parameter(L"Icons", &R::Icons), Parameter(L"Action", &R::Action),
            Parameter(L"UseCooked", &R::UseCooked), Parameter(L"OpenRecord", &R::OpenRecord),
            Parameter(L"Reference", &R::Reference), Parameter(L"AutoRun", &R::AutoRun),
            Parameter(L"MultiSel", &R::MultiSel), Parameter(L"TipsAlign", &R::TipsAlign),
            Parameter(L"TipsButtons", &R::TipsButtons), Parameter(L"ToolTips", &R::ToolTips),
            Parameter(L"BoolOps", &R::BoolOps), Parameter(L"LargeButt", &R::LargeButt),
            Parameter(L"ShowOccs", &R::ShowOccs), Parameter(L"StemAuto", &R::StemAuto),
            Parameter(L"Flags", &R::Flags), Parameter(L"NoPopup", &R::NoPopup),
            Parameter(L"StemAlign", &R::StemAlign), Parameter(L"StemDocked", &R::StemDocked),
            Parameter(L"StemImmediate", &R::StemImmediate), Parameter(L"StemSizable", &R::StemSizable),
            Parameter(L"TipsSizable", &R::TipsSizable), Parameter(L"ToolAlign", &R::ToolAlign),
            Parameter(L"MirrorOf", &R::MirrorOf), List(L"Commands", &R::Commands),
            List(L"Filters", &R::Filters), List(L"FiltMessages", &R::FiltMessages),
            List(L"FiltTitles", &R::FiltTitles), List(L"Fonts", &R::Fonts), List(L"Popups", &R::Popups),
            List(L"Html", &R::Html), List(L"Titles", &R::Titles));
    }
};

}  // namespace kv
