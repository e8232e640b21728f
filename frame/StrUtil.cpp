#include "frame/StrUtil.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "frame/Failure.h"

namespace kv::StrUtil {
namespace {

constexpr bool Digit(wchar_t C) noexcept { return C >= L'0' && C <= L'9'; }

constexpr int HexDigit(wchar_t C) noexcept {
    if (Digit(C)) return C - L'0';
    if (C >= L'A' && C <= L'F') return C - L'A' + 10;
    if (C >= L'a' && C <= L'f') return C - L'a' + 10;
    return -1;
}

// The longest prefix of `Text` that is a number, as plain characters.
struct Scanned {
    std::string Digits;  // sign, digits, point, exponent
    long Magnitude = 0;  // digits before the point (zeros in front left out), plus the exponent
    bool Zero = true;    // no digit other than 0
};

Scanned Scan(std::wstring_view Text) {
    Scanned Out;
    Text = TrimLeft(Text);
    std::size_t At = 0;
    const auto Peek = [&](std::size_t Ahead = 0) {
        return At + Ahead < Text.size() ? Text[At + Ahead] : L'\0';
    };
    const auto Take = [&] { Out.Digits.push_back(static_cast<char>(Text[At++])); };
    if (Peek() == L'-')
        Take();
    else if (Peek() == L'+')
        ++At;
    bool Any = false;
    long FractionZeros = 0;
    while (Digit(Peek())) {
        Any = true;
        if (Peek() != L'0') Out.Zero = false;
        if (!Out.Zero) ++Out.Magnitude;
        Take();
    }
    if (Peek() == L'.') {
        if (!Any) Out.Digits.push_back('0');
        Take();
        while (Digit(Peek())) {
            Any = true;
            if (Out.Zero && Peek() == L'0') ++FractionZeros;
            if (Peek() != L'0') {
                if (Out.Zero) Out.Magnitude = -FractionZeros;
                Out.Zero = false;
            }
            Take();
        }
    }
    if (!Any) return {};
    if (Peek() == L'e' || Peek() == L'E') {
        const bool Signed = Peek(1) == L'-' || Peek(1) == L'+';
        if (Digit(Peek(Signed ? 2 : 1))) {
            Take();
            const bool Minus = Peek() == L'-';
            if (Signed) Take();
            long Exponent = 0;
            while (Digit(Peek())) {
                Exponent = std::min(Exponent * 10 + (Peek() - L'0'), 1'000'000L);
                Take();
            }
            Out.Magnitude += Minus ? -Exponent : Exponent;
        }
    }
    return Out;
}

std::uint64_t BaseDigits(std::wstring_view Digits, int Base) {
    std::uint64_t Value = 0;
    for (const wchar_t C : Digits) {
        const int D = HexDigit(C);
        if (D < 0 || D >= Base) break;
        Value = Value * static_cast<unsigned>(Base) + static_cast<unsigned>(D);
        if (Value > std::numeric_limits<std::uint32_t>::max()) RaiseFault(fault::kOverflow);
    }
    return Value;
}

template <class Target>
Target Narrow(double Value) {
    const double Rounded = std::nearbyint(Value);
    if (!(Rounded >= static_cast<double>(std::numeric_limits<Target>::min()) &&
          Rounded <= static_cast<double>(std::numeric_limits<Target>::max())))
        RaiseFault(fault::kOverflow);
    return static_cast<Target>(Rounded);
}

constexpr std::array<wchar_t, 32> k80To9F{0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                          0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

}  // namespace

void UpperInPlace(std::wstring& Text) noexcept {
    for (wchar_t& C : Text) C = Upper(C);
}

std::wstring UpperCase(std::wstring_view Text) {
    std::wstring Folded(Text);
    UpperInPlace(Folded);
    return Folded;
}

double Number(std::wstring_view Text) {
    const Scanned Found = Scan(Text);
    if (Found.Zero) return 0;
    double Value = 0;
    const char* const End = Found.Digits.data() + Found.Digits.size();
    const auto [At, Code] = std::from_chars(Found.Digits.data(), End, Value);
    if (Code == std::errc::result_out_of_range) {
        if (Found.Magnitude > 0) RaiseFault(fault::kOverflow);
        return 0;  // too small to tell from nothing
    }
    return Value;
}

double NumberAnyBase(std::wstring_view Text) {
    Text = TrimLeft(Text);
    if (Text.size() < 2 || Text[0] != L'&') return Number(Text);
    const wchar_t Kind = Upper(Text[1]);
    if (Kind != L'H' && Kind != L'O') return 0;
    const std::uint64_t Bits = BaseDigits(Text.substr(2), Kind == L'H' ? 16 : 8);
    if (Bits <= 0xFFFF) return static_cast<std::int16_t>(Bits);
    return static_cast<std::int32_t>(Bits);
}

std::int32_t HexNumber(std::wstring_view Digits) { return static_cast<std::int32_t>(BaseDigits(Digits, 16)); }

std::int32_t ToLong(double Value) { return Narrow<std::int32_t>(Value); }
std::int16_t ToInteger(double Value) { return Narrow<std::int16_t>(Value); }
std::uint8_t ToByte(double Value) { return Narrow<std::uint8_t>(Value); }

wchar_t FromWindows1252(std::uint8_t Byte) noexcept {
    return Byte >= 0x80 && Byte <= 0x9F ? k80To9F[Byte - 0x80U] : static_cast<wchar_t>(Byte);
}

int ToWindows1252(wchar_t Character) noexcept {
    const auto Code = static_cast<std::uint32_t>(Character);
    if (Code < 0x80 || (Code >= 0xA0 && Code <= 0xFF)) return static_cast<int>(Code);
    const auto At = std::find(k80To9F.begin(), k80To9F.end(), Character);
    return At == k80To9F.end() ? -1 : 0x80 + static_cast<int>(At - k80To9F.begin());
}

std::wstring FromBytes(std::string_view Bytes) {
    std::wstring Text;
    Text.reserve(Bytes.size());
    for (const char C : Bytes) Text.push_back(FromWindows1252(static_cast<std::uint8_t>(C)));
    return Text;
}

std::string ToBytes(std::wstring_view Text) {
    std::string Bytes;
    Bytes.reserve(Text.size());
    for (const wchar_t C : Text) {
        const int Byte = ToWindows1252(C);
        Bytes.push_back(Byte < 0 ? '?' : static_cast<char>(Byte));
    }
    return Bytes;
}

std::wstring Padded(std::int32_t Value, std::size_t Width) {
    const std::wstring Digits = std::to_wstring(Value);
    return Digits.size() >= Width ? Digits : std::wstring(Width - Digits.size(), L'0') + Digits;
}

std::wstring Hex2(std::uint8_t Value) {
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    return {kDigits[Value >> 4U], kDigits[Value & 0x0FU]};
}

}  // namespace kv::StrUtil
