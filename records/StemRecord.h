// The stored record of a stem: an input form whose fields are assembled into one search term.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/FontRecord.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

/// Codes of StemRecord::Style; -1 is unset.
inline constexpr std::array<Word, 5> kStemStyles{{
    {L"RESULTNONE", 0},
    {L"RESULTSELECT", 1},
    {L"RESULTAND", 2},
    {L"RESULTOR", 3},
    {L"RESULTDIALOG", 4},
}};

/// Bits of StemFieldRecord::Flags.
inline constexpr std::array<Word, 6> kStemFieldFlags{{
    {L"REMOVEBLANKS", 0x01},
    {L"REMOVEFIRSTBLANK", 0x02},
    {L"TRANSLUNDERSCORE", 0x04},
    {L"PADLEFT", 0x08},
    {L"PADRIGHT", 0x10},
    {L"HASFOCUS", 0x20},
}};
inline constexpr std::int32_t kStemPadding = 0x08 | 0x10;

/// Codes of StemFieldRecord::DataType; bit 1 decides.
inline constexpr std::array<Word, 2> kStemDataTypes{{
    {L"NUMERIC", 1},
    {L"ALFA", 0},
}};

struct StemFieldRecord final : Stored<StemFieldRecord> {
    static constexpr std::wstring_view kClass = L"StemFieldRecord";

    std::int32_t DataType = 0;  // kStemDataTypes
    std::wstring Default;
    std::int32_t Flags = 0;  // kStemFieldFlags
    bool Hidden = false;
    std::int32_t MaxLen = 0;
    std::wstring PadMask;
    std::wstring Postfix;   // put behind the value
    std::wstring Prefix;    // put before the value
    std::wstring StopWord;  // stop-word table
    ParmList<ParmItem> Captions;

    static constexpr auto Properties(auto With) {
        using R = StemFieldRecord;
        return With(Parameter(L"DataType", &R::DataType), Parameter(L"Default", &R::Default),
                    Parameter(L"Flags", &R::Flags), Parameter(L"Hidden", &R::Hidden),
                    Parameter(L"MaxLen", &R::MaxLen), Parameter(L"PadMask", &R::PadMask),
                    Parameter(L"Postfix", &R::Postfix), Parameter(L"Prefix", &R::Prefix),
                    Parameter(L"StopWord", &R::StopWord), List(L"Captions", &R::Captions));
    }
};

struct StemRecord final : Stored<StemRecord> {
    static constexpr std::wstring_view kClass = L"StemRecord";

    std::int32_t Style = -1;  // kStemStyles
    std::int32_t Flags = 0;   // only written as 0
    std::wstring Help;
    std::wstring HelpWww;
    std::int32_t Timeout = 0;  // 0 to 60
    std::wstring MirrorOf;     // the stem that this one mirrors
    ParmList<ParmItem> Titles;
    ParmList<ParmItem> Messages;
    ParmList<FontRecord> Fonts;
    ParmList<CommandRecord> Commands;
    ParmList<StemFieldRecord> Fields;

    static constexpr auto Properties(auto With) {
        using R = StemRecord;
        return With(Parameter(L"Style", &R::Style), Parameter(L"Flags", &R::Flags),
                    Parameter(L"Help", &R::Help), Parameter(L"HelpWww", &R::HelpWww),
                    Parameter(L"Timeout", &R::Timeout), Parameter(L"MirrorOf", &R::MirrorOf),
                    List(L"Titles", &R::Titles), List(L"Messages", &R::Messages), List(L"Fonts", &R::Fonts),
                    List(L"Commands", &R::Commands), List(L"Fields", &R::Fields));
    }
};

}  // namespace kv
