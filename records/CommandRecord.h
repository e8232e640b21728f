// A button of a tool bar, and the record of the command class: a tool command of a client has its labels,
// messages and label fonts where a button has tool tips.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/FontRecord.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

/// The key that calls a command. The empty word stands for none.
inline constexpr std::array<Word, 30> kKeyCodes{{
    {L"", 0},          {L"{BACK}", 1},  {L"{CENTER}", 2}, {L"{DEL}", 3},      {L"{DOWN}", 4},
    {L"{END}", 5},     {L"{ENTER}", 6}, {L"{ESC}", 7},    {L"{F1}", 8},       {L"{F2}", 9},
    {L"{F3}", 10},     {L"{F4}", 11},   {L"{F5}", 12},    {L"{F6}", 13},      {L"{F7}", 14},
    {L"{F8}", 15},     {L"{F9}", 16},   {L"{F10}", 17},   {L"{F11}", 18},     {L"{F12}", 19},
    {L"{HOME}", 20},   {L"{INS}", 21},  {L"{LEFT}", 22},  {L"{NUMLOCK}", 23}, {L"{PAUSE}", 24},
    {L"{PGDOWN}", 25}, {L"{PGUP}", 26}, {L"{RIGHT}", 27}, {L"{TAB}", 28},     {L"{UP}", 29},
}};

/// What is held down with it. The empty word stands for nothing.
inline constexpr std::array<Word, 7> kKeyShifts{{
    {L"", 0},
    {L"ALT", 1},
    {L"CTRL", 2},
    {L"SHIFT", 4},
    {L"ALT+CTRL", 3},
    {L"ALT+SHIFT", 5},
    {L"CTRL+SHIFT", 6},
}};

/// How a command looks on the tool bar.
inline constexpr std::array<Word, 4> kCommandStyles{{
    {L"DEFAULT", 0},
    {L"CHECK", 1},
    {L"PLACEHOLDER", 2},
    {L"SEPARATOR", 3},
}};

struct CommandRecord final : Stored<CommandRecord> {
    static constexpr std::wstring_view kClass = L"CommandRecord";

    std::wstring Code;
    std::int32_t Action = -1;  // action word, -1 for none
    bool Enabled = true;
    bool Visible = true;
    bool KbEnabled = true;
    std::int32_t KbCode = 0;   // kKeyCodes
    std::int32_t KbShift = 0;  // kKeyShifts
    std::int32_t Style = 0;    // kCommandStyles
    std::wstring Help;
    std::wstring MirrorOf;        // the command that this one mirrors
    ParmList<ParmItem> ToolTips;  // of a button, one a language
    ParmList<ParmItem> Titles;    // one a language
    ParmList<ParmItem> Messages;  // one a language
    ParmList<FontRecord> TitleFonts;

    static constexpr auto Properties(auto With) {
        using R = CommandRecord;
        return With(Parameter(L"Code", &R::Code), Parameter(L"Action", &R::Action),
                    Parameter(L"Enabled", &R::Enabled), Parameter(L"Visible", &R::Visible),
                    Parameter(L"KbEnabled", &R::KbEnabled), Parameter(L"KbCode", &R::KbCode),
                    Parameter(L"KbShift", &R::KbShift), Parameter(L"Style", &R::Style),
                    Parameter(L"Help", &R::Help), Parameter(L"MirrorOf", &R::MirrorOf),
                    List(L"ToolTips", &R::ToolTips), List(L"Titles", &R::Titles),
                    List(L"Messages", &R::Messages), List(L"TitleFonts", &R::TitleFonts));
    }
};

}  // namespace kv
