// The shape of every section parser and renderer that works on a record by a table alone.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "frame/SectionTable.h"

namespace kv {

/// Parses `Buffer` by the ladder into a scratch of the record and commits it at a clean end. `AtEnd(Scratch)`
/// checks the whole section before that and raises what it refuses; those errors have no line. True on
/// failure (source `Source`): the record is as it was.
template <class Record, class Rows, class Check>
[[nodiscard]] bool SaveSection(std::wstring_view Source, const Rows& Ladder, Record& Into,
                               std::wstring_view Buffer, bool Strict, Check&& AtEnd) {
    SectionText Text(Buffer);
    return Trap(Source, Text, [&] {
        Record Scratch = Into.MakeScratch();
        ClearParmCheck();
        if (ReadLadder(Text, Ladder, Scratch, Strict)) return true;
        AtEnd(std::as_const(Scratch));
        std::move(Scratch).Commit(Into);
        return false;
    });
}
template <class Record, class Rows>
[[nodiscard]] bool SaveSection(std::wstring_view Source, const Rows& Ladder, Record& Into,
                               std::wstring_view Buffer, bool Strict) {
    return SaveSection(Source, Ladder, Into, Buffer, Strict, [](const Record&) {});
}

/// Appends the lines of the table and the identity of the record. True on failure (source `Source`).
template <class Record, class Rows>
[[nodiscard]] bool DispSection(std::wstring_view Source, const Rows& Lines, Record& From,
                               std::wstring& Buffer, std::int32_t Indent) {
    return Trap(Source, [&] {
        LineWriter Out{Buffer, Indent};
        if (WriteLines(Out, Lines, From)) return true;
        DispHeader(Buffer, From, Indent);
        return false;
    });
}

}  // namespace kv
