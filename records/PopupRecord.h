// An entry of a popup menu: what it says in one language, and the button that it does the work of.
#pragma once

#include "records/Stored.h"

namespace kv {

struct PopupRecord final : Stored<PopupRecord> {
    static constexpr std::wstring_view kClass = L"PopupRecord";

    std::wstring Text;
    std::wstring Language;
    std::wstring Code;
    std::int32_t Action = -1;  // action word, -1 for none

    static constexpr auto Properties(auto With) {
        using R = PopupRecord;
        return With(Parameter(L"Text", &R::Text), Parameter(L"Language", &R::Language),
                    Parameter(L"Code", &R::Code), Parameter(L"Action", &R::Action));
    }
};

}  // namespace kv
