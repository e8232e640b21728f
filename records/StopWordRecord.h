// The stored record of a table of words and their replacements.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/Stored.h"

namespace kv {

/// Bits of StopWordRecord::Flags, in the order in which they are shown.
inline constexpr std::array<Word, 4> kStopWordFlags{{
    {L"KEEPTERM", 0x08},
    {L"TERMIMPLICIT", 0x01},
    {L"TERMPUNCT", 0x04},
    {L"TERMSPACE", 0x02},
}};

struct StopWordRecord final : Stored<StopWordRecord> {
    static constexpr std::wstring_view kClass = L"StopWordRecord";

    bool Anywhere = false;
    std::int32_t Flags = 0;  // kStopWordFlags
    bool IfFirst = false;
    bool IfNotOnly = false;
    bool IgnoreCase = false;
    std::wstring MirrorOf;   // the table that this one mirrors
    std::wstring Separator;  // between the two words of a pair
    /// The pairs: one character of code 0, then for each the word, a tab, the replacement, a character of
    /// code 0.
    std::wstring Table = std::wstring(1, L'\0');

    static constexpr auto Properties(auto With) {
        using R = StopWordRecord;
        return With(Parameter(L"Anywhere", &R::Anywhere), Parameter(L"Flags", &R::Flags),
                    Parameter(L"IfFirst", &R::IfFirst), Parameter(L"IfNotOnly", &R::IfNotOnly),
                    Parameter(L"IgnoreCase", &R::IgnoreCase), Parameter(L"MirrorOf", &R::MirrorOf),
                    Parameter(L"Separator", &R::Separator), Parameter(L"Table", &R::Table));
    }
};

}  // namespace kv
