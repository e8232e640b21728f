// The stored record of a mail centre.
#pragma once

#include "records/MessageRecord.h"
#include "records/Stored.h"

namespace kv {

struct MailRecord final : Stored<MailRecord> {
    static constexpr std::wstring_view kClass = L"MailRecord";

    std::wstring Path;               // where the centre is made
    ParmList<MessageRecord> Fields;  // the messages

    static constexpr auto Properties(auto With) {
        using R = MailRecord;
        return With(Parameter(L"Path", &R::Path), List(L"Fields", &R::Fields));
    }
};

}  // namespace kv
