// A font of a form; its Name is the font's.
#pragma once

#include "records/Stored.h"

namespace kv {

struct FontRecord final : Stored<FontRecord> {
    static constexpr std::wstring_view kClass = L"FontRecord";

    std::int32_t Size = 0;  // in points
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Size", &FontRecord::Size), Parameter(L"Bold", &FontRecord::Bold),
                    Parameter(L"Italic", &FontRecord::Italic),
                    Parameter(L"Underline", &FontRecord::Underline));
    }
};

}  // namespace kv
