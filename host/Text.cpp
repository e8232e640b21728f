#include "host/Text.h"

#include <cstddef>

namespace kv::host {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kNoCharacter = 0xFFFFFFFF;

constexpr bool IsCharacter(char32_t Code) noexcept {
    return Code < 0xD800 || (Code >= 0xE000 && Code <= 0x10FFFF);
}

// Takes the first character off the bytes, which are not empty. Where there is none one byte goes.
char32_t TakeCharacter(std::string_view& Rest) noexcept {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto Byte = [&](std::size_t I) {
        return static_cast<char32_t>(static_cast<unsigned char>(Rest[I]));
    };
    const char32_t First = Byte(0);
    const std::size_t Length = First < 0x80 ? 1 : First < 0xC0 ? 0 : First < 0xE0 ? 2 : First < 0xF0 ? 3 : 4;
    char32_t Code = Length == 1 ? First : First & (0x7FU >> Length);
    bool Valid = Length > 0 && Length <= Rest.size() && First < 0xF8;
    for (std::size_t I = 1; Valid && I < Length; ++I) {
        Valid = (Byte(I) & 0xC0) == 0x80;
        Code = Code << 6 | (Byte(I) & 0x3F);
    }
    Valid = Valid && Code >= kSmallest[Length] && IsCharacter(Code);
    Rest.remove_prefix(Valid ? Length : 1);
    return Valid ? Code : kNoCharacter;
}

void Append(std::string& Bytes, char32_t Code) {
    const auto Put = [&](char32_t Byte) { Bytes.push_back(static_cast<char>(Byte)); };
    if (Code < 0x80) {
        Put(Code);
    } else if (Code < 0x800) {
        Put(0xC0 | Code >> 6);
        Put(0x80 | (Code & 0x3F));
    } else if (Code < 0x10000) {
        Put(0xE0 | Code >> 12);
        Put(0x80 | (Code >> 6 & 0x3F));
        Put(0x80 | (Code & 0x3F));
    } else {
        Put(0xF0 | Code >> 18);
        Put(0x80 | (Code >> 12 & 0x3F));
        Put(0x80 | (Code >> 6 & 0x3F));
        Put(0x80 | (Code & 0x3F));
    }
}

// `Stand` is put for what is no character; kNoCharacter there ends the conversion with nothing.
std::optional<std::wstring> Widen(std::string_view Bytes, char32_t Stand) {
    std::wstring Text;
    Text.reserve(Bytes.size());
    while (!Bytes.empty()) {
        char32_t Code = TakeCharacter(Bytes);
        if (Code == kNoCharacter) Code = Stand;
        if (Code == kNoCharacter) return std::nullopt;
        Text.push_back(static_cast<wchar_t>(Code));
    }
    return Text;
}

std::optional<std::string> Narrow(std::wstring_view Text, char32_t Stand) {
    std::string Bytes;
    Bytes.reserve(Text.size());
    for (const wchar_t Character : Text) {
        char32_t Code = static_cast<char32_t>(Character);
        if (!IsCharacter(Code)) Code = Stand;
        if (Code == kNoCharacter) return std::nullopt;
        Append(Bytes, Code);
    }
    return Bytes;
}

}  // namespace

std::optional<std::wstring> FromUtf8(std::string_view Bytes) { return Widen(Bytes, kNoCharacter); }

std::wstring FromUtf8Lossy(std::string_view Bytes) { return *Widen(Bytes, kReplacement); }

std::optional<std::string> ToUtf8(std::wstring_view Text) { return Narrow(Text, kNoCharacter); }

std::string ToUtf8Lossy(std::wstring_view Text) { return *Narrow(Text, kReplacement); }

}  // namespace kv::host
