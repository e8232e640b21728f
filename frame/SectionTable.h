// Sections as tables. A parser is a ladder, keyword by keyword with how its value is read and where it goes;
// a renderer is a list of lines. What a row does is one of the readers and writers below, or a lambda that
// stands in the row where a keyword has a rule of its own.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "frame/CoreUtil.h"
#include "frame/Failure.h"
#include "frame/StrUtil.h"
#include "frame/Words.h"
#include "frame/vDesignPar.h"

namespace kv {

/// A parameter as a row of a ladder meets it. `Value` is what the reading holds at the moment: each step
/// (fold, unquote, a word taken off) changes it, and it is what the unknown-value message shows.
class Parm {
  public:
    explicit Parm(bool StrictOn) noexcept : Strict(StrictOn) {}

    std::wstring_view Keyword;
    std::wstring_view Value;
    std::int32_t Line = 0;  // 1-based, of the section text
    const bool Strict;

    /// Folds the value to upper case.
    void Fold();
    /// Takes the quotes off.
    void Unquote() noexcept { Value = kv::Unquote(Value); }
    /// Takes the next word off the list.
    std::wstring_view NextFlag() noexcept { return kv::NextFlag(Value); }
    /// -1 true, 0 false, 1 unknown; the value is folded by it.
    int Bool();
    [[noreturn]] void Bad() const { BadValue(Keyword, Value); }
    /// Refuses the value in strict mode; in lax mode the caller passes over it.
    void BadIfStrict() const {
        if (Strict) Bad();
    }
    /// Folds the value, then sets `Bits` to 0 for "NONE" and the empty value, and otherwise adds the bit of
    /// each word; a word that is not in the table is refused in strict mode and passed over in lax mode.
    void AddFlags(WordTable Words, std::int32_t& Bits);
    /// Adds the bit of each word of the value as it stands; an unknown word as above.
    void AddWords(WordTable Words, std::int32_t& Bits);

  private:
    std::wstring Held_;
};

/// Reads a value into the scratch. True stops the parser with a failure that is told or silent already.
template <class Scratch>
using ReadParm = bool (*)(Scratch&, Parm&);

enum class Repeat : bool { Once, Any };

/// A row of a ladder, in which no keyword stands twice. A keyword passes CheckParmOnce before it is read,
/// unless it may repeat. Any row type with a Keyword, a Read and a Times makes a ladder.
template <class Scratch>
struct LadderRow {
    std::wstring_view Keyword;
    ReadParm<Scratch> Read;
    Repeat Times = Repeat::Once;
};

namespace detail {
/// The loop of every parser. `Find(Keyword)` gives the row or null, `Other` takes a parameter without a row.
template <class Scratch, class Rows, class Other>
bool ReadLines(SectionText& Text, const Rows& Table, Scratch& Into, Parm& P, Other&& Otherwise) {
    const auto Begin = std::begin(Table);
    const auto End = std::end(Table);
    auto Next = Begin;  // behind the row found last: most texts stand in the order of their table
    while (!Text.Empty()) {
        if (GetFieldValue(Text, P.Keyword, P.Value)) return true;
        if (P.Keyword.empty()) continue;
        P.Line = Text.Line();
        const auto IsIt = [&](const auto& Row) { return Row.Keyword == P.Keyword; };
        auto Found = std::find_if(Next, End, IsIt);
        if (Found == End) {
            Found = std::find_if(Begin, Next, IsIt);
            if (Found == Next) Found = End;
        }
        bool Failed = false;
        if (Found == End) {
            Failed = Otherwise(Into, P);
        } else {
            Next = std::next(Found);
            if (Found->Times == Repeat::Once) CheckParmOnce(P.Keyword);
            Failed = Found->Read(Into, P);
        }
        if (Failed) {
            CoreUtil::Instance().NoteLine(Text.Line());
            return true;
        }
    }
    Text.EndOfLines();
    return false;
}
}  // namespace detail

/// Takes `Text` line by line through the ladder into `Into`. Blank and comment lines are passed over; a
/// keyword of no row goes to `Otherwise`. True when a reading failed without raising.
template <class Scratch, class Rows, class Other>
[[nodiscard]] bool ReadLadder(SectionText& Text, const Rows& Table, Scratch& Into, bool Strict,
                              Other&& Otherwise) {
    Parm P(Strict);
    return detail::ReadLines(Text, Table, Into, P, Otherwise);
}
/// The same for the plain case: a keyword of no row is refused as unknown, strict or lax.
template <class Scratch, class Rows>
[[nodiscard]] bool ReadLadder(SectionText& Text, const Rows& Table, Scratch& Into, bool Strict) {
    return ReadLadder(Text, Table, Into, Strict,
                      [](Scratch&, const Parm& P) -> bool { UnknownParm(P.Keyword, P.Value); });
}

/// A text under construction: where the lines go and how deep they stand.
struct LineWriter {
    std::wstring& Buffer;
    std::int32_t Indent;

    void Plain(std::wstring_view Keyword, std::wstring_view Value) {
        AppendParm(Buffer, Indent, Keyword, Value);
    }
    void Quoted(std::wstring_view Keyword, std::wstring_view Value) {
        AppendParm(Buffer, Indent, Keyword, Value, StrUtil::QuoteChar());
    }
    void Number(std::wstring_view Keyword, std::int32_t Value) { Plain(Keyword, std::to_wstring(Value)); }
    /// The number, NONE for a negative one.
    void Ceiling(std::wstring_view Keyword, std::int32_t Value) {
        if (Value < 0)
            Plain(Keyword, kNone);
        else
            Number(Keyword, Value);
    }
    void Bool(std::wstring_view Keyword, bool Value) { Plain(Keyword, BooleanWord(Value)); }
    /// A line as it stands, behind the tabs.
    void Line(std::wstring_view Text) {
        AppendTabs(Buffer, Indent);
        Buffer.append(Text).append(StrUtil::kLineEnd);
    }
};

/// Writes one line, or what stands in its place. True ends the rendering with failure.
template <class Record>
using WriteLine = bool (*)(Record&, std::wstring_view, LineWriter&);

template <class Record>
struct LineRow {
    std::wstring_view Keyword;
    WriteLine<Record> Write;
};

/// A row of a section whose text stands in the order of its ladder: read and written by one table.
template <class Record>
struct SectionRow {
    std::wstring_view Keyword;
    ReadParm<Record> Read;
    WriteLine<const Record> Write;
    Repeat Times = Repeat::Once;
};

/// Appends the lines of a table in its order. True when one failed.
template <class Record, class Rows>
[[nodiscard]] bool WriteLines(LineWriter& Out, const Rows& Table, Record& From) {
    for (const auto& Row : Table)
        if (Row.Write(From, Row.Keyword, Out)) return true;
    return false;
}

/// Readers, named by what they do with the value before it is stored in a member.
namespace read {

template <class Reader>
struct Row : Reader {
    template <class Scratch>
    constexpr operator ReadParm<Scratch>() const noexcept {  // NOLINT: a row takes it as it stands
        return [](Scratch& Into, Parm& P) -> bool {
            Reader::Run(Into, P);
            return false;
        };
    }
};

template <auto Member>
struct TextReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        P.Unquote();
        Into.*Member = P.Value;
    }
};
template <auto Member>
struct UpperReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        P.Unquote();
        P.Fold();
        Into.*Member = P.Value;
    }
};
template <auto Member>
struct BoolOrIgnoreReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        const int Word = P.Bool();
        if (Word == 1)
            P.BadIfStrict();
        else
            Into.*Member = Word != 0;
    }
};
template <auto Member>
struct BoolOrTrueReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        const int Word = P.Bool();
        if (Word == 1) P.BadIfStrict();
        Into.*Member = Word != 0;
    }
};
template <auto Member, const auto& Words>
struct FlagsReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        P.AddFlags(Words, Into.*Member);
    }
};
template <auto Member, const auto& Words>
struct WordReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        P.Unquote();
        P.Fold();
        if (const Word* Found = FindWord(Words, P.Value))
            Into.*Member = Found->Value;
        else
            P.BadIfStrict();
    }
};
template <auto Member, const auto& Words>
struct FoldedWordReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        P.Fold();
        if (const Word* Found = FindWord(Words, P.Value))
            Into.*Member = Found->Value;
        else
            P.BadIfStrict();
    }
};
template <auto Member, const auto& Words>
struct ExactWordReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        if (const Word* Found = FindWord(Words, P.Value))
            Into.*Member = Found->Value;
        else
            P.BadIfStrict();
    }
};

template <auto Member>
struct ByteReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        Into.*Member = StrUtil::ToByte(StrUtil::Number(P.Value));
    }
};
template <auto Member>
struct LongReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        Into.*Member = StrUtil::ToLong(StrUtil::Number(P.Value));
    }
};
template <auto Member>
struct PercentReader {
    template <class Scratch>
    static void Run(Scratch& Into, Parm& P) {
        const double Percent = StrUtil::Number(P.Value);
        if (Percent < 0 || Percent > 100)
            P.BadIfStrict();
        else
            Into.*Member = StrUtil::ToLong(Percent);
    }
};

/// Unquoted, case kept.
template <auto Member>
inline constexpr Row<TextReader<Member>> Text{};
/// Unquoted, folded to upper case.
template <auto Member>
inline constexpr Row<UpperReader<Member>> Upper{};
/// Boolean word; an unknown one is refused in strict mode and leaves the member alone in lax mode.
template <auto Member>
inline constexpr Row<BoolOrIgnoreReader<Member>> BoolOrIgnore{};
/// Boolean word; an unknown one is refused in strict mode and counts as true in lax mode.
template <auto Member>
inline constexpr Row<BoolOrTrueReader<Member>> BoolOrTrue{};
/// The numeric value as typed, rounded: one in quotes is none and reads as 0.
template <auto Member>
inline constexpr Row<LongReader<Member>> Long{};
/// The numeric value as a byte; beyond it the fault "Overflow".
template <auto Member>
inline constexpr Row<ByteReader<Member>> Byte{};
/// A number that is 0 to 100 as typed, then rounded; another is refused in strict mode and leaves the member
/// alone else.
template <auto Member>
inline constexpr Row<PercentReader<Member>> Percent{};
/// Flag words joined by "|", each adding its bit; "NONE" or empty clears (Parm::AddFlags).
template <auto Member, const auto& Words>
inline constexpr Row<FlagsReader<Member, Words>> Flags{};
/// One word of a table, folded; an unknown one is refused in strict mode and leaves the member alone else.
template <auto Member, const auto& Words>
inline constexpr Row<WordReader<Member, Words>> OneWord{};
/// The same, folded but not unquoted: a word in quotes is unknown.
template <auto Member, const auto& Words>
inline constexpr Row<FoldedWordReader<Member, Words>> FoldedWord{};
/// The same, compared as typed: no quotes taken off, no folding.
template <auto Member, const auto& Words>
inline constexpr Row<ExactWordReader<Member, Words>> ExactWord{};

}  // namespace read

/// Writers; each makes the one line of its keyword.
namespace write {

template <class Writer>
struct Row : Writer {
    template <class Record>
    constexpr operator WriteLine<Record>() const noexcept {  // NOLINT: a row takes it as it stands
        return [](Record& From, std::wstring_view Keyword, LineWriter& Out) -> bool {
            Writer::Run(From, Keyword, Out);
            return false;
        };
    }
};

template <auto Member>
struct QuotedWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        Out.Quoted(Keyword, From.*Member);
    }
};
template <auto Member>
struct BoolWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        Out.Bool(Keyword, From.*Member);
    }
};
template <auto Member>
struct NumberWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        Out.Number(Keyword, From.*Member);
    }
};
template <const std::wstring_view& Value>
struct ConstantWriter {
    template <class Record>
    static void Run(const Record&, std::wstring_view Keyword, LineWriter& Out) {
        Out.Plain(Keyword, Value);
    }
};
struct NoteWriter {
    template <class Record>
    static void Run(const Record&, std::wstring_view Keyword, LineWriter& Out) {
        Out.Line(Keyword);
    }
};
template <auto Member, const auto& Words>
struct FlagsWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        Out.Plain(Keyword, JoinWords(Words, From.*Member));
    }
};
template <auto Member, const auto& Words>
struct FlagsNoBlankWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        if (From.*Member == 0)
            Out.Plain(Keyword, kNone);
        else
            Out.Line(std::wstring(Keyword) + JoinSetWords(Words, From.*Member));
    }
};
template <auto Member, const auto& Words>
struct WordWriter {
    template <class Record>
    static void Run(const Record& From, std::wstring_view Keyword, LineWriter& Out) {
        const std::wstring_view Known = WordOf(Words, From.*Member);
        Out.Plain(Keyword, Known.empty() ? Words[0].Text : Known);
    }
};

/// The string between quote marks.
template <auto Member>
inline constexpr Row<QuotedWriter<Member>> Quoted{};
/// TRUE or FALSE.
template <auto Member>
inline constexpr Row<BoolWriter<Member>> Bool{};
/// The same word whatever the record holds.
template <const std::wstring_view& Value>
inline constexpr Row<ConstantWriter<Value>> Constant{};
/// A comment line: what stands in the keyword's column, as it is.
inline constexpr Row<NoteWriter> Note{};
/// The decimal number.
template <auto Member>
inline constexpr Row<NumberWriter<Member>> Number{};
/// The words of the bits that are set, in table order, joined by "|", or "NONE"; a blank behind the "=".
template <auto Member, const auto& Words>
inline constexpr Row<FlagsWriter<Member, Words>> Flags{};
/// The same, by hand: no blank behind the "=" before the words, `FLAGS=A|B`, but one in `FLAGS= NONE` for 0.
template <auto Member, const auto& Words>
inline constexpr Row<FlagsNoBlankWriter<Member, Words>> FlagsNoBlank{};
/// The word of the code; a code without a word shows as the first of the table, so that it reads back.
template <auto Member, const auto& Words>
inline constexpr Row<WordWriter<Member, Words>> OneWord{};

}  // namespace write

}  // namespace kv
