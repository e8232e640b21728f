// The stored record of a sort definition.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/Stored.h"

namespace kv {

/// Bits of SortRecord::Switches.
namespace sort_switch {
inline constexpr std::int32_t kNoNumeric = 0x40;
inline constexpr std::int32_t kNoMask = 0x2000;
inline constexpr std::int32_t kNoTable = 0x4000;
inline constexpr std::int32_t kNoSpaces = 0x10000;
}  // namespace sort_switch

struct SortRecord final : Stored<SortRecord> {
    static constexpr std::wstring_view kClass = L"SortRecord";

    std::wstring MirrorOf;      // the definition that this one mirrors
    std::int32_t Switches = 0;  // sort_switch
    std::wstring Table;         // 256 characters; the one at place c is the weight of character code c
    std::int32_t Flags = 0;     // only ever written as 0

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"MirrorOf", &SortRecord::MirrorOf),
                    Parameter(L"Switches", &SortRecord::Switches), Parameter(L"Table", &SortRecord::Table),
                    Parameter(L"Flags", &SortRecord::Flags));
    }
};

}  // namespace kv
