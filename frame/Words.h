// Value words: flag words, codes, and the lists of them that the editor offers. A table serves reader,
// renderer and choices alike, so that a word stands once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kv {

/// A value word and what it stands for: a bit of a flag set, or a code.
struct Word {
    std::wstring_view Text;
    std::int32_t Value;
};
using WordTable = std::span<const Word>;

/// The table of a flag line that knows no word but "NONE".
inline constexpr std::array<Word, 0> kNoWords{};

inline constexpr std::wstring_view kNone = L"NONE";
inline constexpr std::array<std::wstring_view, 1> kNoneOnly{kNone};
/// A ceiling that is none; written NONE.
inline constexpr std::int32_t kNoCeiling = -1;
/// The two words of a boolean, in the order in which they are offered.
inline constexpr std::array<std::wstring_view, 2> kBooleanWords{L"FALSE", L"TRUE"};

constexpr std::wstring_view BooleanWord(bool Value) noexcept { return kBooleanWords[Value ? 1 : 0]; }

/// The row of that word, null when there is none. Words are compared exactly.
constexpr const Word* FindWord(WordTable Words, std::wstring_view Text) noexcept {
    for (const Word& Row : Words)
        if (Row.Text == Text) return &Row;
    return nullptr;
}

/// The word of a code, empty when it has none.
constexpr std::wstring_view WordOf(WordTable Words, std::int32_t Code) noexcept {
    for (const Word& Row : Words)
        if (Row.Value == Code) return Row.Text;
    return {};
}

/// The words whose bits are set, in the order of the table, joined by "|"; empty when none is.
std::wstring JoinSetWords(WordTable Words, std::int32_t Bits);
/// The same, "NONE" when none is.
std::wstring JoinWords(WordTable Words, std::int32_t Bits);

/// Choices made of a table: its words in order, all of them or but the first, or with "NONE" in front or
/// behind.
template <std::size_t N>
constexpr std::array<std::wstring_view, N> WordsOf(const std::array<Word, N>& Words) {
    std::array<std::wstring_view, N> Choices{};
    for (std::size_t I = 0; I < N; ++I) Choices[I] = Words[I].Text;
    return Choices;
}
template <std::size_t N>
constexpr std::array<std::wstring_view, N - 1> WordsBehindFirst(const std::array<Word, N>& Words) {
    std::array<std::wstring_view, N - 1> Choices{};
    for (std::size_t I = 1; I < N; ++I) Choices[I - 1] = Words[I].Text;
    return Choices;
}
template <std::size_t N>
constexpr std::array<std::wstring_view, N + 1> NoneThen(const std::array<Word, N>& Words) {
    std::array<std::wstring_view, N + 1> Choices{};
    Choices[0] = kNone;
    for (std::size_t I = 0; I < N; ++I) Choices[I + 1] = Words[I].Text;
    return Choices;
}
template <std::size_t N>
constexpr std::array<std::wstring_view, N + 1> ThenNone(const std::array<Word, N>& Words) {
    std::array<std::wstring_view, N + 1> Choices{};
    for (std::size_t I = 0; I < N; ++I) Choices[I] = Words[I].Text;
    Choices[N] = kNone;
    return Choices;
}

}  // namespace kv
