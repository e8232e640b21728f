// The stored record of a web client: the bars, the protocols, the buttons and the popups of the browser.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/PopupRecord.h"
#include "records/Stored.h"

namespace kv {

/// Bits of WebClientRecord::Flags.
inline constexpr std::array<Word, 2> kWebClientFlags{{
    {L"ALLOWNEWWINDOW", 0x01},
    {L"OPENNEWWINDOW", 0x02},
}};

struct WebClientRecord final : Stored<WebClientRecord> {
    static constexpr std::wstring_view kClass = L"WebClientRecord";

    bool AddressBar = false;
    bool LargeButt = false;
    ParmList<CommandRecord> Commands;
    std::int32_t DefaultFontSize = 0;  // 0 to 5
    std::int32_t Flags = 0;            // kWebClientFlags
    std::wstring MirrorOf;             // the web client that this one mirrors
    ParmList<PopupRecord> Popups;
    ParmList<std::wstring> Protocols;  // upper case, no two alike
    bool StatusBar = false;
    std::int32_t ToolAlign = 0;  // kAlignWords

    static constexpr auto Properties(auto With) {
        using R = WebClientRecord;
        return With(Parameter(L"AddressBar", &R::AddressBar), Parameter(L"LargeButt", &R::LargeButt),
                    List(L"Commands", &R::Commands), Parameter(L"DefaultFontSize", &R::DefaultFontSize),
                    Parameter(L"Flags", &R::Flags), Parameter(L"MirrorOf", &R::MirrorOf),
                    List(L"Popups", &R::Popups), Parameter(L"Protocols", &R::Protocols),
                    Parameter(L"StatusBar", &R::StatusBar), Parameter(L"ToolAlign", &R::ToolAlign));
    }
};

}  // namespace kv
