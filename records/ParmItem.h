// The stored element of the simplest shape, and the record of the member class.
#pragma once

#include "records/Stored.h"

namespace kv {

/// Text is what the element holds, Language the code of its language where it is one of several.
struct ParmItem final : Stored<ParmItem> {
    static constexpr std::wstring_view kClass = L"ParmItem";

    std::wstring Text;
    std::wstring Language;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Text", &ParmItem::Text), Parameter(L"Language", &ParmItem::Language));
    }
};

}  // namespace kv
