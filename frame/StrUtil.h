// Strings and numbers as the section texts read and write them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kv::StrUtil {

/// The quote mark of section text, for writing and for reading.
inline constexpr wchar_t kQuoteChar = L'"';
constexpr wchar_t QuoteChar() noexcept { return kQuoteChar; }

/// Line end of section text: always both characters.
inline constexpr std::wstring_view kLineEnd = L"\r\n";

/// Trims take blanks only: tabs and line ends stay.
constexpr std::wstring_view TrimLeft(std::wstring_view Text) noexcept {
    while (!Text.empty() && Text.front() == L' ') Text.remove_prefix(1);
    return Text;
}
constexpr std::wstring_view TrimRight(std::wstring_view Text) noexcept {
    while (!Text.empty() && Text.back() == L' ') Text.remove_suffix(1);
    return Text;
}
constexpr std::wstring_view Trim(std::wstring_view Text) noexcept { return TrimLeft(TrimRight(Text)); }

/// Folds one letter of Windows-1252 to upper case (à to À, š to Š, ÿ to Ÿ); ß and all else stay.
constexpr wchar_t Upper(wchar_t C) noexcept {
    if (C < 0x80) return C >= L'a' && C <= L'z' ? static_cast<wchar_t>(C - 32) : C;
    if (C >= 0xE0 && C <= 0xFE) return C == 0xF7 ? C : static_cast<wchar_t>(C - 32);
    switch (C) {
        case 0xFF:
            return 0x178;
        case 0x161:
            return 0x160;
        case 0x153:
            return 0x152;
        case 0x17E:
            return 0x17D;
        default:
            return C;
    }
}

void UpperInPlace(std::wstring& Text) noexcept;
std::wstring UpperCase(std::wstring_view Text);

/// Reads a number: leading blanks, a sign, digits with a decimal point, an exponent; stops at the first
/// character that fits no number; 0 when there is none. Raises "Overflow" beyond the range of a double.
double Number(std::wstring_view Text);

/// The same, and the forms "&H" (hexadecimal) and "&O" (octal) besides; their digits end at the first that is
/// none, and an "&H" or "&O" value of up to 16 or 32 bits is taken as signed in that width.
double NumberAnyBase(std::wstring_view Text);

/// Hexadecimal digits up to the first that is none, 0 when there is none. Raises "Overflow" beyond 32 bits.
std::int32_t HexNumber(std::wstring_view Digits);

/// Rounds to nearest, ties to even. Raises "Overflow" for a value outside the target.
std::int32_t ToLong(double Value);
std::int16_t ToInteger(double Value);
std::uint8_t ToByte(double Value);

/// Code point of a Windows-1252 byte; the five bytes without a character stand for themselves.
wchar_t FromWindows1252(std::uint8_t Byte) noexcept;
/// The Windows-1252 byte of a character, or -1 when it has none.
int ToWindows1252(wchar_t Character) noexcept;

/// A text as Windows-1252 bytes, "?" for a character that has none, and back.
std::string ToBytes(std::wstring_view Text);
std::wstring FromBytes(std::string_view Bytes);

/// Decimal digits, padded left with "0" to `Width`; a longer number stands as it is.
std::wstring Padded(std::int32_t Value, std::size_t Width);

/// Two upper-case hexadecimal digits.
std::wstring Hex2(std::uint8_t Value);

}  // namespace kv::StrUtil
