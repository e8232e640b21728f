// A named message with a text a language, and the holder in which a record keeps several.
#pragma once

#include <cstdint>
#include <string>

#include "frame/Failure.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

struct MessageRecord final : Stored<MessageRecord> {
    static constexpr std::wstring_view kClass = L"MessageRecord";

    ParmList<ParmItem> Message;  // one a language

    static constexpr auto Properties(auto With) { return With(List(L"Message", &MessageRecord::Message)); }
};

struct MessageListRecord final : Stored<MessageListRecord> {
    static constexpr std::wstring_view kClass = L"MessageListRecord";

    ParmList<MessageRecord> Message;

    static constexpr auto Properties(auto With) {
        return With(List(L"Message", &MessageListRecord::Message));
    }
};

/// Refuses an empty name, and one that another message of the list bears; `Index` is its own place among
/// them.
template <class List>
void CheckMessageName(const std::wstring& Name, const List& Messages, std::int32_t Index) {
    if (Name.empty()) Raise(L"Non è stato specificato il nome del messaggio.");
    for (std::int32_t I = 1; I <= Messages.Count(); ++I)
        if (I != Index && Messages.Item(I).Name == Name) Raise(L"Il nome del messaggio non è univoco.");
}

}  // namespace kv
