// The shape of every section parser and renderer that works on a record by a table alone.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/SectionTable.h"

namespace kv {

/// What the scratch of a parser begins with, and so what becomes of a keyword that the text leaves out: with
/// the header alone it returns to its default, with the parameters it keeps its value and the words of a flag
/// line come on top of the bits that are there.
enum class Scratch { Header, Parameters };

/// Parses `Buffer` by the ladder into a scratch of the record and commits it at a clean end; the lists of the
/// record stay. `Prepare(Scratch)` sets what the section starts from; `AtEnd(Scratch)` checks the whole of it
/// before the commit and raises what it refuses, or answers True where a check has reported by itself; those
/// errors have no line. True on failure (source `Source`): the record is as it was.
template <class Record, class Rows, class First, class Last>
[[nodiscard]] bool SaveSection(std::wstring_view Source, Scratch Begins, const Rows& Ladder, Record& Into,
                               std::wstring_view Buffer, bool Strict, First&& Prepare, Last&& AtEnd) {
    SectionText Text(Buffer);
    return Trap(Source, Text, [&] {
        Record Read = Into.MakeScratch();
        if (Begins == Scratch::Parameters) Into.CopyTo(Read);
        Prepare(Read);
        ClearParmCheck();
        if (ReadLadder(Text, Ladder, Read, Strict)) return true;
        if constexpr (std::is_void_v<decltype(AtEnd(Read))>)
            AtEnd(Read);
        else if (AtEnd(Read))
            return true;
        std::move(Read).Commit(Into);
        return false;
    });
}
/// The same where nothing is set beforehand.
template <class Record, class Rows, class Last>
[[nodiscard]] bool SaveSection(std::wstring_view Source, Scratch Begins, const Rows& Ladder, Record& Into,
                               std::wstring_view Buffer, bool Strict, Last&& AtEnd) {
    return SaveSection(
        Source, Begins, Ladder, Into, Buffer, Strict, [](Record&) {}, AtEnd);
}
template <class Record, class Rows>
[[nodiscard]] bool SaveSection(std::wstring_view Source, Scratch Begins, const Rows& Ladder, Record& Into,
                               std::wstring_view Buffer, bool Strict) {
    return SaveSection(Source, Begins, Ladder, Into, Buffer, Strict, [](Record&) {});
}

/// Appends the lines of the table. True on failure (source `Source`).
template <class Record, class Rows>
[[nodiscard]] bool DispLines(std::wstring_view Source, const Rows& Lines, Record& From, std::wstring& Buffer,
                             std::int32_t Indent) {
    return Trap(Source, [&] {
        LineWriter Out{Buffer, Indent};
        return WriteLines(Out, Lines, From);
    });
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
