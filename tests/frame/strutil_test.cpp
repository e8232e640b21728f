// Strings and numbers of section text: folding, reading numbers, rounding, the code page.
#include "frame/StrUtil.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <vector>

#include "tests/frame/Told.h"

namespace kv::test {
namespace {

constexpr std::int32_t kOverflow = 6;

/// UTF-8 as characters; the rows of the tables hold one or none.
std::wstring Decoded(std::string_view Utf8) {
    std::wstring Out;
    std::uint32_t Code = 0;
    int Left = 0;
    for (const char C : Utf8) {
        const auto Byte = static_cast<std::uint8_t>(C);
        if (Left > 0) {
            Code = (Code << 6U) | (Byte & 0x3FU);
            --Left;
        } else {
            Left = Byte < 0x80 ? 0 : Byte < 0xE0 ? 1 : Byte < 0xF0 ? 2 : 3;
            Code = Left == 0 ? Byte : Byte & (0x3FU >> static_cast<unsigned>(Left));
        }
        if (Left == 0) Out.push_back(static_cast<wchar_t>(Code));
    }
    return Out;
}

// ---- trimming

TEST(Trims, TakeBlanksOnly) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Left;
        std::wstring_view Right;
        std::wstring_view Both;
    } kRows[] = {
        {L"", L"", L"", L""},
        {L"   ", L"", L"", L""},
        {L" a ", L"a ", L" a", L"a"},
        {L"\ta\t", L"\ta\t", L"\ta\t", L"\ta\t"},
        {L" \ta\t ", L"\ta\t ", L" \ta\t", L"\ta\t"},
        {L" \r\n ", L"\r\n ", L" \r\n", L"\r\n"},
        {L"\u00A0a\u00A0", L"\u00A0a\u00A0", L"\u00A0a\u00A0", L"\u00A0a\u00A0"},
        {L"a  b", L"a  b", L"a  b", L"a  b"},
    };
    for (const auto& Row : kRows) {
        EXPECT_TRUE(StrUtil::TrimLeft(Row.Text) == Row.Left) << Narrow(Row.Text);
        EXPECT_TRUE(StrUtil::TrimRight(Row.Text) == Row.Right) << Narrow(Row.Text);
        EXPECT_TRUE(StrUtil::Trim(Row.Text) == Row.Both) << Narrow(Row.Text);
    }
}

TEST(QuoteMark, IsTheDoubleQuote) { EXPECT_EQ(StrUtil::QuoteChar(), L'"'); }

// ---- folding

TEST(Upper, FoldsEveryLetterOfTheCodePage) {
    std::map<wchar_t, wchar_t> Pairs{{L'\u0161', L'\u0160'},   // š
                                     {L'\u0153', L'\u0152'},   // œ
                                     {L'\u017E', L'\u017D'},   // ž
                                     {L'\u00FF', L'\u0178'}};  // ÿ
    for (wchar_t C = L'a'; C <= L'z'; ++C) Pairs[C] = static_cast<wchar_t>(L'A' + (C - L'a'));
    constexpr std::wstring_view kLower = L"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ";
    constexpr std::wstring_view kUpper = L"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ";
    ASSERT_EQ(kLower.size(), 30U);
    for (std::size_t I = 0; I < kLower.size(); ++I) Pairs[kLower[I]] = kUpper[I];
    ASSERT_EQ(Pairs.size(), 60U);
    for (int Byte = 0; Byte < 256; ++Byte) {
        const wchar_t C = StrUtil::FromWindows1252(static_cast<std::uint8_t>(Byte));
        const auto Pair = Pairs.find(C);
        EXPECT_EQ(StrUtil::Upper(C), Pair == Pairs.end() ? C : Pair->second) << Byte;
    }
}

TEST(Upper, AgreesWithTheTableOfTheCodePage) {
    const std::filesystem::path File =
        std::filesystem::path(KV_SOURCE_DIR).parent_path() / "shared" / "data" / "cp1252.tsv";
    if (!std::filesystem::exists(File)) GTEST_SKIP() << "the table is not at hand";
    // hex, dec, unicode, char, name, category, undefined, upper, lower, base letter
    std::ifstream In(File);
    std::string Line;
    std::getline(In, Line);
    std::vector<std::pair<wchar_t, std::wstring>> Upper;
    while (std::getline(In, Line)) {
        std::vector<std::string> Columns;
        std::istringstream Split(Line);
        for (std::string Column; std::getline(Split, Column, '\t');) Columns.push_back(Column);
        Columns.resize(10);
        const auto Code = static_cast<std::uint8_t>(std::stoi(Columns[1]));
        const auto Point = static_cast<wchar_t>(std::stoul(Columns[2].substr(2), nullptr, 16));
        EXPECT_EQ(StrUtil::FromWindows1252(Code), Point) << Line;
        EXPECT_EQ(StrUtil::ToWindows1252(Point), Code) << Line;
        Upper.emplace_back(Point, Decoded(Columns[7]));
    }
    ASSERT_EQ(Upper.size(), 256U);
    for (const auto& [Point, Folded] : Upper) {
        // A letter whose upper case is none of the code page stays.
        const bool Folds = Folded.size() == 1 && StrUtil::ToWindows1252(Folded[0]) >= 0;
        EXPECT_EQ(StrUtil::Upper(Point), Folds ? Folded[0] : Point) << static_cast<int>(Point);
    }
}

TEST(Upper, SharpSAndSignsStay) {
    std::wstring Text = L"straße più ÿ š œ ž ÷ × µ ƒ ª º 1 |\t";
    EXPECT_EQ(StrUtil::UpperCase(Text), L"STRAßE PIÙ Ÿ Š Œ Ž ÷ × µ ƒ ª º 1 |\t");
    StrUtil::UpperInPlace(Text);
    EXPECT_EQ(Text, L"STRAßE PIÙ Ÿ Š Œ Ž ÷ × µ ƒ ª º 1 |\t");
    EXPECT_EQ(StrUtil::UpperCase(L""), L"");
    EXPECT_EQ(StrUtil::UpperCase(Text), Text) << "folding twice changes nothing";
}

// ---- numbers

struct NumberCase {
    std::wstring_view Text;
    double Value;
};

constexpr NumberCase kNumbers[] = {
    {L"", 0},
    {L"   ", 0},
    {L"0", 0},
    {L"7", 7},
    {L"+7", 7},
    {L"-7", -7},
    {L"-0", 0},
    {L"  42", 42},
    {L"  -42  ", -42},
    {L"\t42", 0},
    {L"007", 7},
    {L".5", 0.5},
    {L"-.5", -0.5},
    {L"+.5", 0.5},
    {L"5.", 5},
    {L"-5.", -5},
    {L"5.25", 5.25},
    {L"5.2.5", 5.2},
    {L"5,25", 5},
    {L".", 0},
    {L"-", 0},
    {L"+", 0},
    {L"-.", 0},
    {L"--5", 0},
    {L"+-5", 0},
    {L"- 5", 0},
    {L"1e3", 1000},
    {L"1E3", 1000},
    {L"1e+3", 1000},
    {L"1e-3", 0.001},
    {L"1.5e2", 150},
    {L".5e1", 5},
    {L"5.e1", 50},
    {L"1e", 1},
    {L"1e+", 1},
    {L"1e-", 1},
    {L"1ex", 1},
    {L"1e 3", 1},
    {L"1e3.5", 1000},
    {L"e5", 0},
    {L".e5", 0},
    {L"abc", 0},
    {L"12abc", 12},
    {L"12 abc", 12},
    {L"1 2", 1},
    {L"1_000", 1},
    {L"1'000", 1},
    {L"0x10", 0},
    {L"&HFF", 0},
    {L"inf", 0},
    {L"nan", 0},
    {L"-infinity", 0},
    {L"\"5\"", 0},
    {L"5%", 5},
    {L"1e-400", 0},
    {L"-1e-400", 0},
    {L"0e999999", 0},
    {L"0.0e999999", 0},
    {L"1e308", 1e308},
    {L"-1e308", -1e308},
    {L"2147483648", 2147483648.0},
    {L"123456789012345678901234567890", 123456789012345678901234567890.0},
    {L"0.1", 0.1},
    {L"0000000000000000000000000000000000000000000000000001", 1},
    {L"٣", 0},
    {L"１", 0},
};

TEST(Number, ReadsTheLongestBeginningThatIsOne) {
    for (const NumberCase& Row : kNumbers) {
        EXPECT_EQ(StrUtil::Number(Row.Text), Row.Value) << Narrow(Row.Text);
        EXPECT_FALSE(std::signbit(StrUtil::Number(Row.Text)) && Row.Value == 0) << Narrow(Row.Text);
    }
}

TEST(Number, ManyDigitsAreOneNumber) {
    const std::wstring Zeros(400, L'0');
    EXPECT_EQ(StrUtil::Number(L"1" + Zeros + L"e-400"), 1);
    EXPECT_EQ(StrUtil::Number(L"0." + Zeros + L"1e401"), 1);
    EXPECT_EQ(StrUtil::Number(L"0." + Zeros + L"1"), 0);
    EXPECT_EQ(StrUtil::Number(Zeros + L"5"), 5);
    EXPECT_EQ(StrUtil::Number(std::wstring(100, L'9') + L"e-90"), 1e10);
    EXPECT_EQ(StrUtil::Number(L"0." + std::wstring(1000, L'3')), 1.0 / 3);
    EXPECT_EQ(StrUtil::Number(L"1e-99999999999999999999999"), 0);
}

TEST(Number, BeyondADoubleIsOverflow) {
    const std::wstring Zeros(400, L'0');
    const std::wstring Rows[] = {L"1e309",     L"-1e309",
                                 L"1" + Zeros, L"1e99999999999999999999999",
                                 L"1e400abc",  L"0." + Zeros + L"1e800",
                                 L"2e308",     L"-" + std::wstring(310, L'9')};
    for (const std::wstring& Text : Rows)
        EXPECT_EQ(NumberRaised([&] { StrUtil::Number(Text); }), kOverflow) << Narrow(Text.substr(0, 40));
}

TEST(NumberAnyBase, HexadecimalAndOctalForms) {
    const NumberCase kRows[] = {
        {L"&H0", 0},
        {L"&HA", 10},
        {L"&hff", 255},
        {L"&HFFFF", -1},
        {L"&H8000", -32768},
        {L"&H7FFF", 32767},
        {L"&H10000", 65536},
        {L"&H7FFFFFFF", 2147483647},
        {L"&H80000000", -2147483648.0},
        {L"&HFFFFFFFF", -1},
        {L"&O17", 15},
        {L"&o17", 15},
        {L"&O177777", -1},
        {L"&O100000", -32768},
        {L"&O77777", 32767},
        {L"&O200000", 65536},
        {L"&O37777777777", -1},
        {L"&O8", 0},
        {L"&O19", 1},
        {L"&H", 0},
        {L"&O", 0},
        {L"&", 0},
        {L"&X12", 0},
        {L"&HG", 0},
        {L"&H1G", 1},
        {L"  &H10", 16},
        {L"&H 10", 0},
        {L"&H-1", 0},
    };
    for (const NumberCase& Row : kRows)
        EXPECT_EQ(StrUtil::NumberAnyBase(Row.Text), Row.Value) << Narrow(Row.Text);
    for (const std::wstring_view Text :
         {L"&H100000000", L"&HFFFFFFFFF", L"&O40000000000", L"&HFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"})
        EXPECT_EQ(NumberRaised([&] { StrUtil::NumberAnyBase(Text); }), kOverflow) << Narrow(Text);
}

TEST(NumberAnyBase, ReadsPlainNumbersAsNumberDoes) {
    for (const NumberCase& Row : kNumbers) {
        if (StrUtil::TrimLeft(Row.Text).starts_with(L'&')) continue;
        EXPECT_EQ(StrUtil::NumberAnyBase(Row.Text), Row.Value) << Narrow(Row.Text);
    }
}

TEST(HexNumber, ReadsDigitsUpToTheFirstThatIsNone) {
    const struct {
        std::wstring_view Text;
        std::int32_t Value;
    } kRows[] = {{L"", 0},
                 {L"0", 0},
                 {L"41", 0x41},
                 {L"fF", 255},
                 {L"FG", 15},
                 {L"G", 0},
                 {L"100", 256},
                 {L"FFFF", 65535},
                 {L"7FFFFFFF", 2147483647},
                 {L"4 1", 4},
                 {L"00000000000041", 0x41}};
    for (const auto& Row : kRows) EXPECT_EQ(StrUtil::HexNumber(Row.Text), Row.Value) << Narrow(Row.Text);
    EXPECT_EQ(NumberRaised([] { StrUtil::HexNumber(L"100000000"); }), kOverflow);
    EXPECT_EQ(NumberRaised([] { StrUtil::HexNumber(L"123456789ABCDEF0123"); }), kOverflow);
}

// ---- rounding

TEST(Rounding, IsToNearestAndTiesGoToEven) {
    const struct {
        double Value;
        std::int32_t Rounded;
    } kRows[] = {{0, 0},       {0.4, 0},  {0.5, 0},   {0.6, 1},   {1.5, 2},   {2.5, 2},
                 {3.5, 4},     {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {-2.6, -3}, {0.49999999999999994, 0},
                 {126.5, 126}, {127, 127}};
    for (const auto& Row : kRows) {
        EXPECT_EQ(StrUtil::ToLong(Row.Value), Row.Rounded) << Row.Value;
        EXPECT_EQ(StrUtil::ToInteger(Row.Value), Row.Rounded) << Row.Value;
        if (Row.Rounded >= 0) {
            EXPECT_EQ(StrUtil::ToByte(Row.Value), Row.Rounded) << Row.Value;
        }
    }
}

TEST(Rounding, BeyondTheTargetIsOverflow) {
    EXPECT_EQ(StrUtil::ToByte(255), 255);
    EXPECT_EQ(StrUtil::ToByte(255.4), 255);
    EXPECT_EQ(StrUtil::ToByte(254.5), 254);
    EXPECT_EQ(StrUtil::ToByte(-0.5), 0);
    EXPECT_EQ(StrUtil::ToInteger(32767.4), 32767);
    EXPECT_EQ(StrUtil::ToInteger(-32768.5), -32768);
    EXPECT_EQ(StrUtil::ToLong(2147483647.4), 2147483647);
    EXPECT_EQ(StrUtil::ToLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());

    const double kNan = std::numeric_limits<double>::quiet_NaN();
    const double kInf = std::numeric_limits<double>::infinity();
    for (const double Value : {255.5, 256.0, -0.51, -1.0, 1e300, -1e300, kNan, kInf, -kInf})
        EXPECT_EQ(NumberRaised([&] { StrUtil::ToByte(Value); }), kOverflow) << Value;
    for (const double Value : {32767.5, 32768.0, -32768.6, -32769.0, 1e300, kNan, kInf})
        EXPECT_EQ(NumberRaised([&] { StrUtil::ToInteger(Value); }), kOverflow) << Value;
    for (const double Value : {2147483647.5, 2147483648.0, -2147483648.6, -2147483649.0, 1e300, kNan, kInf})
        EXPECT_EQ(NumberRaised([&] { StrUtil::ToLong(Value); }), kOverflow) << Value;
}

TEST(Rounding, TheOverflowIsToldAsSuch) {
    const TestPlatform Platform;
    const bool Failed = Trap(L"diProva.SaveParm", [] {
        StrUtil::ToByte(StrUtil::Number(L"256"));
        return false;
    });
    EXPECT_TRUE(FailsWith(Failed, {.Number = 6, .Source = L"diProva.SaveParm", .Description = L"Overflow"}));
}

// ---- code page and hexadecimal digits

TEST(CodePage, EveryByteComesBack) {
    std::map<wchar_t, int> Seen;
    for (int Byte = 0; Byte < 256; ++Byte) {
        const wchar_t C = StrUtil::FromWindows1252(static_cast<std::uint8_t>(Byte));
        EXPECT_EQ(StrUtil::ToWindows1252(C), Byte);
        EXPECT_TRUE(Seen.emplace(C, Byte).second) << "two bytes of one character: " << Byte;
    }
}

TEST(CodePage, TheRowsThatAreNotLatin1) {
    constexpr std::wstring_view k80To9F =
        L"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
        L"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";
    ASSERT_EQ(k80To9F.size(), 32U);
    for (int Byte = 0; Byte < 256; ++Byte) {
        const wchar_t Expected = Byte >= 0x80 && Byte <= 0x9F ? k80To9F[static_cast<std::size_t>(Byte - 0x80)]
                                                              : static_cast<wchar_t>(Byte);
        EXPECT_EQ(StrUtil::FromWindows1252(static_cast<std::uint8_t>(Byte)), Expected) << Byte;
    }
}

TEST(CodePage, OtherCharactersHaveNoByte) {
    for (const wchar_t C : {L'\u0080', L'\u0099', L'\u0100', L'\u0391', L'\u20AD', L'\u2028', L'\uFFFD'})
        EXPECT_EQ(StrUtil::ToWindows1252(C), -1) << static_cast<int>(C);
}

TEST(CodePage, TextsGoThereAndBack) {
    std::string All;
    for (int Byte = 0; Byte < 256; ++Byte) All.push_back(static_cast<char>(Byte));
    EXPECT_EQ(StrUtil::ToBytes(StrUtil::FromBytes(All)), All);
    EXPECT_EQ(StrUtil::ToBytes(L"è\u20AC\u03A9\u0081"), "\xE8\x80?\x81");
    EXPECT_EQ(StrUtil::FromBytes(""), L"");
    EXPECT_EQ(StrUtil::ToBytes(L""), "");
}

TEST(Padded, ZerosStandOnTheLeft) {
    EXPECT_EQ(StrUtil::Padded(0, 5), L"00000");
    EXPECT_EQ(StrUtil::Padded(12, 5), L"00012");
    EXPECT_EQ(StrUtil::Padded(12345, 5), L"12345");
    EXPECT_EQ(StrUtil::Padded(123456, 5), L"123456");
}

TEST(Hex2, TwoUpperCaseDigits) {
    EXPECT_EQ(StrUtil::Hex2(0), L"00");
    EXPECT_EQ(StrUtil::Hex2(9), L"09");
    EXPECT_EQ(StrUtil::Hex2(0x1F), L"1F");
    EXPECT_EQ(StrUtil::Hex2(0xA0), L"A0");
    EXPECT_EQ(StrUtil::Hex2(255), L"FF");
    for (int Value = 0; Value < 256; ++Value)
        EXPECT_EQ(StrUtil::HexNumber(StrUtil::Hex2(static_cast<std::uint8_t>(Value))), Value);
}

}  // namespace
}  // namespace kv::test
