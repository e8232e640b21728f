#include "host/Text.h"

#include <gtest/gtest.h>

namespace kv::host {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

struct Pair {
    std::string Bytes;
    std::wstring Text;
};

TEST(Text, GoesToUtf8AndBack) {
    const Pair kPairs[] = {
        {"", L""},
        {"abc", L"abc"},
        {"perch\xC3\xA9", L"perch\u00E9"},
        {"\x7F\xC2\x80", L"\x7F\u0080"s},
        {"\xDF\xBF\xE0\xA0\x80", L"\u07FF\u0800"},
        {"\xED\x9F\xBF\xEE\x80\x80", L"\uD7FF\uE000"},
        {"\xEF\xBF\xBF\xF0\x90\x80\x80", L"\uFFFF\U00010000"},
        {"\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
        {"\xEF\xBB\xBFx", L"\uFEFFx"},
        {"a\0b\0"s, L"a\0b\0"s},
    };
    for (const Pair& Case : kPairs) {
        EXPECT_EQ(FromUtf8(Case.Bytes), Case.Text) << Case.Bytes;
        EXPECT_EQ(ToUtf8(Case.Text), Case.Bytes) << Case.Bytes;
        EXPECT_EQ(FromUtf8Lossy(Case.Bytes), Case.Text) << Case.Bytes;
        EXPECT_EQ(ToUtf8Lossy(Case.Text), Case.Bytes) << Case.Bytes;
    }
}

TEST(Text, EveryCharacterComesBack) {
    std::wstring All;
    for (char32_t Code = 0; Code <= 0x10FFFF; ++Code)
        if (Code < 0xD800 || Code > 0xDFFF) All.push_back(static_cast<wchar_t>(Code));
    const std::optional<std::string> Bytes = ToUtf8(All);
    ASSERT_TRUE(Bytes);
    EXPECT_EQ(Bytes->size(), 0x80U + 2 * 0x780U + 3 * (0xF800U - 0x800U) + 4 * 0x100000U);
    EXPECT_TRUE(FromUtf8(*Bytes) == All);
}

TEST(Text, BytesThatAreNoUtf8AreRefused) {
    const Pair kRefused[] = {
        {"\x80", L"\uFFFD"},                                // continuation without a beginning
        {"a\xBF", L"a\uFFFD"},                              //
        {"\xC3", L"\uFFFD"},                                // cut
        {"\xE2\x82", L"\uFFFD\uFFFD"},                      //
        {"\xF0\x9F\x98", L"\uFFFD\uFFFD\uFFFD"},            //
        {"\xC3x", L"\uFFFDx"},                              // cut by another character
        {"\xE2\x82\xC3\xA9", L"\uFFFD\uFFFD\u00E9"},        //
        {"\xC0\x80", L"\uFFFD\uFFFD"},                      // overlong
        {"\xC1\xBF", L"\uFFFD\uFFFD"},                      //
        {"\xE0\x9F\xBF", L"\uFFFD\uFFFD\uFFFD"},            //
        {"\xF0\x8F\xBF\xBF", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  //
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},            // surrogates
        {"\xED\xBF\xBF", L"\uFFFD\uFFFD\uFFFD"},            //
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
        {"\xF8\x88\x80\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xFF", L"\uFFFD"},
        {"\xFE!", L"\uFFFD!"},
    };
    for (const Pair& Case : kRefused) {
        EXPECT_EQ(FromUtf8(Case.Bytes), std::nullopt) << ::testing::PrintToString(Case.Bytes);
        EXPECT_EQ(FromUtf8Lossy(Case.Bytes), Case.Text) << ::testing::PrintToString(Case.Bytes);
    }
}

TEST(Text, WhatIsNoCharacterIsRefused) {
    for (const long Code : {0xD800L, 0xDBFFL, 0xDC00L, 0xDFFFL, 0x110000L, 0x7FFFFFFFL, -1L}) {
        const std::wstring Text{L'a', static_cast<wchar_t>(Code), L'b'};
        EXPECT_EQ(ToUtf8(Text), std::nullopt) << Code;
        EXPECT_EQ(ToUtf8Lossy(Text),
                  "a\xEF\xBF\xBD"
                  "b")
            << Code;
    }
    const std::wstring Both{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(ToUtf8(Both), std::nullopt) << "a pair of surrogates is no character here either";
}

}  // namespace
}  // namespace kv::host
