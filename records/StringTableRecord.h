// The stored record of a table of named messages, each with a text a language.
#pragma once

#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

struct StringItemRecord final : Stored<StringItemRecord> {
    static constexpr std::wstring_view kClass = L"StringItemRecord";

    ParmList<ParmItem> Message;  // one a language

    static constexpr auto Properties(auto With) { return With(List(L"Message", &StringItemRecord::Message)); }
};

struct StringTableRecord final : Stored<StringTableRecord> {
    static constexpr std::wstring_view kClass = L"StringTableRecord";

    ParmList<StringItemRecord> Messages;

    static constexpr auto Properties(auto With) {
        return With(List(L"Messages", &StringTableRecord::Messages));
    }
};

}  // namespace kv
