// An HTML page or template of a form.
#pragma once

#include "records/Stored.h"

namespace kv {

struct HtmlRecord final : Stored<HtmlRecord> {
    static constexpr std::wstring_view kClass = L"HtmlRecord";

    std::wstring FileName;
    std::wstring Language;
    std::int32_t Action = -1;  // action word, -1 for none

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"FileName", &HtmlRecord::FileName),
                    Parameter(L"Language", &HtmlRecord::Language), Parameter(L"Action", &HtmlRecord::Action));
    }
};

}  // namespace kv
