// The parameters of a named message, NAME= and DESC=, as every class that keeps messages reads and renders
// them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "frame/SectionTable.h"
#include "records/MessageRecord.h"
#include "records/Sections.h"

namespace kv {

inline constexpr SectionRow<MessageRecord> kMessageRows[] = {
    {L"NAME=", read::Upper<&MessageRecord::Name>, write::Quoted<&MessageRecord::Name>},
    {L"DESC=", read::Text<&MessageRecord::Desc>, write::Quoted<&MessageRecord::Desc>},
};

/// Parses the section of the message at `Index` of its list by the ladder; in strict mode a name that is
/// empty or borne by another of the list is refused. True on failure (source `Source`): the message is as it
/// was.
template <class M, class Rows>
[[nodiscard]] bool SaveMessageParms(std::wstring_view Source, const Rows& Ladder, ParmList<M>& Messages,
                                    std::int32_t Index, std::wstring_view Buffer, bool Strict) {
    return Trap(Source, [&] {
        return SaveSection(Source, Scratch::Header, Ladder, Messages.Item(Index), Buffer, Strict,
                           [&](const M& Read) {
                               if (Strict) CheckMessageName(Read.Name, Messages, Index);
                           });
    });
}
/// The same with the rows that most classes have.
[[nodiscard]] inline bool SaveMessageParms(std::wstring_view Source, ParmList<MessageRecord>& Messages,
                                           std::int32_t Index, std::wstring_view Buffer, bool Strict) {
    return SaveMessageParms(Source, kMessageRows, Messages, Index, Buffer, Strict);
}

/// Renders it. True on failure (source `Source`).
[[nodiscard]] inline bool DispMessageParms(std::wstring_view Source, const ParmList<MessageRecord>& Messages,
                                           std::int32_t Index, std::wstring& Buffer, std::int32_t Indent) {
    return Trap(Source,
                [&] { return DispSection(Source, kMessageRows, Messages.Item(Index), Buffer, Indent); });
}

}  // namespace kv
