// The codec of section text: lines, keywords, values, the list of keywords, the lines that are written.
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <vector>

#include "frame/vDesignPar.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

class Codec : public FrameTest {};

// ---- taking lines

/// One line as it must come out; without a value the value is left alone.
struct Taken {
    std::wstring_view Keyword;
    std::optional<std::wstring_view> Value{};
};

struct LinesCase {
    std::wstring_view Text;
    std::vector<Taken> Expected;
};

const LinesCase kLines[] = {
    {L"", {}},
    {L"    ", {}},
    {L"PATH= C", {{L"PATH=", L"C"}}},
    {L"PATH= C\r\n", {{L"PATH=", L"C"}}},
    {L"A=1\r\nB=2", {{L"A=", L"1"}, {L"B=", L"2"}}},
    {L"A=1\r\nB=2\r\n", {{L"A=", L"1"}, {L"B=", L"2"}}},
    {L"A=1\r\n\r\nB=2\r\n", {{L"A=", L"1"}, {L""}, {L"B=", L"2"}}},
    {L"\r\n", {{L""}}},
    {L"\r\n\r\n", {{L""}, {L""}}},
    {L"   \r\nA=1", {{L""}, {L"A=", L"1"}}},
    {L"A=1\r\n   \r\n  B=2", {{L"A=", L"1"}, {L""}, {L"B=", L"2"}}},
    // blanks and tabs
    {L"   A=1", {{L"A=", L"1"}}},
    {L"A=1   \r\n   B=2   ", {{L"A=", L"1"}, {L"B=", L"2"}}},
    {L"A=   1 2   ", {{L"A=", L"1 2"}}},
    {L"PATH =1", {{L"PATH=", L"1"}}},
    {L"PATH   = 1", {{L"PATH=", L"1"}}},
    {L"PATH=1", {{L"PATH=", L"1"}}},
    {L"\tA=1", {{L"\tA=", L"1"}}},
    {L"A\t=1", {{L"A\t=", L"1"}}},
    {L"A=\t1\t", {{L"A=", L"\t1\t"}}},
    {L" \tA=1", {{L"\tA=", L"1"}}},
    {L"A=1\t \r\nB=2", {{L"A=", L"1\t"}, {L"B=", L"2"}}},
    {L"A=\u00A01\u00A0", {{L"A=", L"\u00A01\u00A0"}}},
    // what is no line end
    {L"A=1\nB=2", {{L"A=", L"1\nB=2"}}},
    {L"A=1\rB=2", {{L"A=", L"1\rB=2"}}},
    {L"A=1\n\rB=2", {{L"A=", L"1\n\rB=2"}}},
    {L"A=1\r\r\nB=2", {{L"A=", L"1\r"}, {L"B=", L"2"}}},
    {L"A=1\r", {{L"A=", L"1\r"}}},
    {L"A=1\r\n\nB=2", {{L"A=", L"1"}, {L"\nB=", L"2"}}},
    // comments
    {L"'A=1", {{L""}}},
    {L";A=1", {{L""}}},
    {L"*A=1", {{L""}}},
    {L"'", {{L""}}},
    {L"   'A=1", {{L""}}},
    {L"A=1\r\n   ;x\r\n  *y\r\n'z\r\nB=2", {{L"A=", L"1"}, {L""}, {L""}, {L""}, {L"B=", L"2"}}},
    {L"\t'[ID= 17]", {{L"\t'[ID=", L"17]"}}},
    {L"A=1 'x", {{L"A=", L"1 'x"}}},
    {L"A='x", {{L"A=", L"'x"}}},
    {L"#A=1", {{L"#A=", L"1"}}},
    // keywords and values
    {L"KEY=", {{L"KEY=", L""}}},
    {L"KEY=    ", {{L"KEY=", L""}}},
    {L"=5", {{L"=", L"5"}}},
    {L"  = 5", {{L"=", L"5"}}},
    {L"=", {{L"=", L""}}},
    {L"A=B=C", {{L"A=", L"B=C"}}},
    {L"A==", {{L"A=", L"="}}},
    {L"A = = B", {{L"A=", L"= B"}}},
    {L"path=x", {{L"path=", L"x"}}},
    {L"DUE PAROLE = x y", {{L"DUE PAROLE=", L"x y"}}},
    {L"A=\"x\"", {{L"A=", L"\"x\""}}},
    {L"A= \" x \"  ", {{L"A=", L"\" x \""}}},
    {std::wstring_view(L"A=x\0y\r\nB=2", 10), {{L"A=", std::wstring_view(L"x\0y", 3)}, {L"B=", L"2"}}},
};

TEST_F(Codec, LinesComeApartAsTold) {
    for (const LinesCase& Row : kLines) {
        SCOPED_TRACE(Narrow(Row.Text));
        const std::wstring Original(Row.Text);
        std::wstring Held = Original;
        SectionText Text(Held);
        std::wstring_view Keyword;
        std::wstring_view Value;
        std::int32_t Line = 0;
        EXPECT_EQ(Text.Line(), 0);
        for (const Taken& Expected : Row.Expected) {
            ASSERT_FALSE(Text.Empty());
            Value = L"before";
            ASSERT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
            EXPECT_EQ(std::wstring(Keyword), Expected.Keyword);
            EXPECT_EQ(std::wstring(Value), Expected.Value.value_or(L"before"));
            EXPECT_EQ(Text.Line(), ++Line) << "blank and comment lines count";
        }
        EXPECT_TRUE(Text.Empty());
        EXPECT_EQ(Held, Original) << "a text is never changed";
    }
}

TEST_F(Codec, AWholeLineStaysAsItIs) {
    const LinesCase kRows[] = {
        {L"A=1", {{L"A=1"}}},
        {L"  PAROLA SENZA UGUALE  ", {{L"PAROLA SENZA UGUALE"}}},
        {L"A = 1 \r\n B", {{L"A = 1"}, {L"B"}}},
        {L"'commento\r\n\r\n;x\r\n*y\r\nz", {{L""}, {L""}, {L""}, {L""}, {L"z"}}},
        {L"\tx\t", {{L"\tx\t"}}},
        {L"=", {{L"="}}},
    };
    for (const LinesCase& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Text));
        SectionText Text(Row.Text);
        std::wstring_view Keyword;
        std::wstring_view Value = L"before";
        for (const Taken& Expected : Row.Expected) {
            ASSERT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value, true)));
            EXPECT_EQ(std::wstring(Keyword), Expected.Keyword);
            EXPECT_EQ(std::wstring(Value), L"before");
        }
        EXPECT_TRUE(Text.Empty());
    }
}

TEST_F(Codec, ALineWithoutEqualsIsASyntaxFault) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Description;
        std::int32_t Line;
    } kRows[] = {
        {L"PATH", L"Errore di sintassi: PATH.", 1},
        {L"  due parole  ", L"Errore di sintassi: due parole.", 1},
        {L"\t", L"Errore di sintassi: \t.", 1},
        {L"A=1\r\n\r\n'x\r\nPATH\r\nB=2", L"Errore di sintassi: PATH.", 4},
        {L"A=1\r\nx y z", L"Errore di sintassi: x y z.", 2},
        {L"100%%", L"Errore di sintassi: 100%%.", 1},
        {L"\"x\"", L"Errore di sintassi: \"x\".", 1},
        {L"A=1\r\n\nB", L"Errore di sintassi: \nB.", 2},
        {L"perché", L"Errore di sintassi: perché.", 1},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Text));
        SectionText Text(Row.Text);
        std::wstring_view Keyword;
        std::wstring_view Value;
        bool Failed = false;
        while (!Text.Empty() && !Failed) Failed = GetFieldValue(Text, Keyword, Value);
        EXPECT_TRUE(FailsWith(Failed, {.Number = 20018,
                                       .Source = L"vDesignPar.GetFieldValue",
                                       .Description = Row.Description,
                                       .Line = Row.Line}));
        EXPECT_TRUE(CoreUtil::Instance().Pending().Empty());
    }
}

TEST_F(Codec, AnEmptyTextGivesALineToPassOver) {
    SectionText Text(L"");
    std::wstring_view Keyword = L"x";
    std::wstring_view Value = L"before";
    EXPECT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
    EXPECT_EQ(std::wstring(Keyword), L"");
    EXPECT_EQ(std::wstring(Value), L"before");
    EXPECT_TRUE(Text.Empty());
}

TEST_F(Codec, ATextWithinALineReportsThatLine) {
    SectionText Text(L"A=1\r\nB=2\r\nsenza uguale", 7);
    std::wstring_view Keyword;
    std::wstring_view Value;
    EXPECT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
    EXPECT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
    EXPECT_EQ(Text.Line(), 7);
    EXPECT_TRUE(
        FailsWith(GetFieldValue(Text, Keyword, Value), {.Number = 20018,
                                                        .Source = L"vDesignPar.GetFieldValue",
                                                        .Description = L"Errore di sintassi: senza uguale.",
                                                        .Line = 7}));
}

// An own, plain reading of the same rules, to be compared over random texts.
std::vector<std::pair<std::wstring, std::wstring>> PlainReading(std::wstring Buffer, bool& Failed) {
    const auto TrimLeft = [](std::wstring& S) { S.erase(0, std::min(S.find_first_not_of(L' '), S.size())); };
    const auto TrimRight = [](std::wstring& S) { S.erase(S.find_last_not_of(L' ') + 1); };
    std::vector<std::pair<std::wstring, std::wstring>> Out;
    Failed = false;
    TrimLeft(Buffer);
    while (!Buffer.empty()) {
        const std::size_t End = Buffer.find(L"\r\n");
        std::wstring Line = Buffer.substr(0, End);
        TrimRight(Line);
        Buffer = End == std::wstring::npos ? std::wstring() : Buffer.substr(End + 2);
        TrimLeft(Buffer);
        if (Line.empty() || Line[0] == L'\'' || Line[0] == L';' || Line[0] == L'*') {
            Out.emplace_back();
            continue;
        }
        const std::size_t Equals = Line.find(L'=');
        if (Equals == std::wstring::npos) {
            Failed = true;
            return Out;
        }
        std::wstring Keyword = Line.substr(0, Equals);
        std::wstring Value = Line.substr(Equals + 1);
        TrimRight(Keyword);
        TrimLeft(Value);
        Out.emplace_back(Keyword + L"=", Value);
    }
    return Out;
}

TEST_F(Codec, RandomTextsReadAsThePlainRules) {
    std::mt19937 Random(17);
    const std::wstring_view Pieces[] = {L" ", L"\t", L"\r\n", L"\r", L"\n", L"=", L"'",  L";",
                                        L"*", L"A",  L"bc",   L"\"", L"|",  L"è", L"  ", L"\r\n\r\n"};
    for (int Round = 0; Round < 20000; ++Round) {
        std::wstring Held;
        for (auto N = Random() % 14; N > 0; --N) Held += Pieces[Random() % std::size(Pieces)];
        bool ExpectFailure = false;
        const auto Expected = PlainReading(Held, ExpectFailure);
        SectionText Text(Held);
        std::vector<std::pair<std::wstring, std::wstring>> Got;
        bool Failed = false;
        while (!Text.Empty()) {
            std::wstring_view Keyword;
            std::wstring_view Value;
            if ((Failed = GetFieldValue(Text, Keyword, Value))) break;
            Got.emplace_back(Keyword, Value);
        }
        ASSERT_EQ(Failed, ExpectFailure) << Narrow(Held);
        ASSERT_EQ(Got, Expected) << Narrow(Held);
        if (Failed) {
            ASSERT_EQ(CoreUtil::Instance().LastError().Line, static_cast<std::int32_t>(Got.size()) + 1);
        }
        CoreUtil::Instance().ForgetError();
    }
}

// ---- the list of keywords

TEST_F(Codec, AKeywordMayStandOnce) {
    EXPECT_EQ(LastParmChecked(), L"");
    CheckParmOnce(L"PATH=");
    EXPECT_EQ(LastParmChecked(), L"PATH=");
    CheckParmOnce(L"Table=");
    EXPECT_EQ(LastParmChecked(), L"TABLE=") << "the list holds the folded keyword";

    const struct {
        std::wstring_view Keyword;
        std::wstring_view Description;
    } kRows[] = {{L"PATH=", L"Ripetizone del parametro PATH=."},
                 {L"path=", L"Ripetizone del parametro path=."},
                 {L"TABLE=", L"Ripetizone del parametro TABLE=."},
                 {L"tAbLe=", L"Ripetizone del parametro tAbLe=."}};
    for (const auto& Row : kRows) {
        const bool Failed = Trap(L"diProva.SaveParm", [&] {
            CheckParmOnce(Row.Keyword);
            return false;
        });
        EXPECT_TRUE(FailsWith(Failed, {.Number = 20000,
                                       .Source = L"diProva.SaveParm",
                                       .Description = Row.Description,
                                       .HelpFile = L"65536"}));
        EXPECT_EQ(LastParmChecked(), L"TABLE=") << "a refused keyword is not added";
    }
    CheckParmOnce(L"PATH");
    CheckParmOnce(L"PATH==");
    CheckParmOnce(L" PATH=");
    CheckParmOnce(L"");
    EXPECT_EQ(NumberRaised([] { CheckParmOnce(L""); }), 20000);
}

TEST_F(Codec, AccentedKeywordsFoldToo) {
    CheckParmOnce(L"CITTÀ=");
    EXPECT_EQ(NumberRaised([] { CheckParmOnce(L"città="); }), 20000);
    CheckParmOnce(L"CITTA=");
}

TEST_F(Codec, TheListSurvivesUntilItIsCleared) {
    CheckParmOnce(L"A=");
    CheckParmOnce(L"B=");
    EXPECT_EQ(NumberRaised([] { CheckParmOnce(L"A="); }), 20000);
    {
        SectionText Other(L"A=1");
        std::wstring_view Keyword;
        std::wstring_view Value;
        EXPECT_FALSE(GetFieldValue(Other, Keyword, Value));
    }
    EXPECT_EQ(NumberRaised([] { CheckParmOnce(L"B="); }), 20000);
    ClearParmCheck();
    EXPECT_EQ(LastParmChecked(), L"");
    CheckParmOnce(L"A=");
    EXPECT_EQ(LastParmChecked(), L"A=");
    ClearParmCheck();
    ClearParmCheck();
    EXPECT_EQ(LastParmChecked(), L"");
}

TEST_F(Codec, TenThousandKeywords) {
    const auto Keyword = [](int I) { return L"Keyword" + std::to_wstring(I) + L"="; };
    for (int Round = 0; Round < 2; ++Round) {
        for (int I = 0; I < 10000; ++I) {
            CheckParmOnce(Keyword(I));
            if (I % 1000 == 0) {
                EXPECT_EQ(LastParmChecked(), L"KEYWORD" + std::to_wstring(I) + L"=");
            }
        }
        for (int I = 0; I < 10000; ++I)
            ASSERT_EQ(NumberRaised([&] { CheckParmOnce(Keyword(I)); }), 20000) << I;
        EXPECT_EQ(LastParmChecked(), L"KEYWORD9999=");
        ClearParmCheck();
    }
}

// ---- values

TEST_F(Codec, QuotesAreTakenOff) {
    const struct {
        std::wstring_view Value;
        std::wstring_view Expected;
    } kRows[] = {
        {L"", L""},
        {L"   ", L""},
        {L"abc", L"abc"},
        {L"  abc  ", L"abc"},
        {L"\"abc\"", L"abc"},
        {L"  \"abc\"  ", L"abc"},
        {L"\"\"", L""},
        {L"\"", L""},
        {L"  \"  ", L""},
        {L"\"abc", L"\"abc"},
        {L"abc\"", L"abc\""},
        {L"\" abc \"", L" abc "},
        {L"\"a\"b\"", L"a\"b"},
        {L"\"\"abc\"\"", L"\"abc\""},
        {L"\"\"\"", L"\""},
        {L"'abc'", L"'abc'"},
        {L"\t\"abc\"", L"\t\"abc\""},
        {L"\"abc\"\t", L"\"abc\"\t"},
        {L"\"a\" b", L"\"a\" b"},
    };
    for (const auto& Row : kRows)
        EXPECT_EQ(std::wstring(Unquote(Row.Value)), Row.Expected) << Narrow(Row.Value);
}

TEST_F(Codec, FlagWordsAreTakenOneByOne) {
    const struct {
        std::wstring_view Value;
        std::vector<std::wstring> Expected;
    } kRows[] = {
        {L"", {}},
        {L"A", {L"A"}},
        {L"A|B", {L"A", L"B"}},
        {L"A | B|C  |  D", {L"A", L"B", L"C", L"D"}},
        {L"A|", {L"A"}},
        {L"A|  ", {L"A"}},
        {L"|A", {L"", L"A"}},
        {L"A||B", {L"A", L"", L"B"}},
        {L"|", {L""}},
        {L"A B | C", {L"A B", L"C"}},
        {L"A\t|\tB", {L"A\t", L"\tB"}},
    };
    for (const auto& Row : kRows) {
        std::wstring_view Value = Row.Value;
        std::vector<std::wstring> Got;
        while (!Value.empty()) Got.emplace_back(NextFlag(Value));
        EXPECT_EQ(Got, Row.Expected) << Narrow(Row.Value);
    }
    std::wstring_view Alone = L" A ";
    EXPECT_EQ(std::wstring(NextFlag(Alone)), L" A ") << "without a bar the whole value is the word";
    EXPECT_TRUE(Alone.empty());
}

TEST_F(Codec, BooleanWords) {
    const struct {
        std::wstring Value;
        int Result;
        std::wstring Folded;
    } kRows[] = {
        {L"", 0, L"FALSE"},
        {L"TRUE", -1, L"TRUE"},
        {L"true", -1, L"TRUE"},
        {L"vero", -1, L"VERO"},
        {L"Vero", -1, L"VERO"},
        {L"FALSE", 0, L"FALSE"},
        {L"falso", 0, L"FALSO"},
        {L"FALSO", 0, L"FALSO"},
        {L"SI", 1, L"SI"},
        {L"sì", 1, L"SÌ"},
        {L"1", 1, L"1"},
        {L"0", 1, L"0"},
        {L"-1", 1, L"-1"},
        {L" TRUE", 1, L" TRUE"},
        {L"\"TRUE\"", 1, L"\"TRUE\""},
        {L"TRUE|FALSE", 1, L"TRUE|FALSE"},
        {L" ", 1, L" "},
        {L"VERA", 1, L"VERA"},
    };
    for (const auto& Row : kRows) {
        std::wstring Value = Row.Value;
        EXPECT_EQ(BoolWord(Value), Row.Result) << Narrow(Row.Value);
        EXPECT_EQ(Value, Row.Folded);
    }
}

TEST_F(Codec, AnUnknownValueIsToldAsTyped) {
    const bool Failed = Trap(L"diProva.SaveParm", []() -> bool { BadValue(L"Chiave=", L"valore Strano"); });
    EXPECT_TRUE(
        FailsWith(Failed, {.Number = 20000,
                           .Source = L"diProva.SaveParm",
                           .Description = L"Valore sconosciuto per il parametro Chiave=(valore Strano)"}));
    EXPECT_TRUE(FailsWith(
        Trap(L"x.y", []() -> bool { BadValue(L"", L""); }),
        {.Number = 20000, .Source = L"x.y", .Description = L"Valore sconosciuto per il parametro ()"}));
}

TEST_F(Codec, AnUnknownKeywordIsToldWithItsValue) {
    EXPECT_TRUE(FailsWith(
        Trap(L"x.y", []() -> bool { UnknownParm(L"path=", L"C:\\X"); }),
        {.Number = 20000, .Source = L"x.y", .Description = L"Parametro non riconosciuto: path=C:\\X"}));
    EXPECT_TRUE(
        FailsWith(Trap(L"x.y", []() -> bool { UnknownParm(L"=", L"5"); }),
                  {.Number = 20000, .Source = L"x.y", .Description = L"Parametro non riconosciuto: =5"}));
}

// ---- writing

TEST_F(Codec, ALineIsKeywordBlankValueAndLineEnd) {
    EXPECT_EQ(FormatParm(L"PASSWORD=", L"ABC", StrUtil::QuoteChar()), L"PASSWORD= \"ABC\"\r\n");
    EXPECT_EQ(FormatParm(L"FLAGS=", L"NONE"), L"FLAGS= NONE\r\n");
    EXPECT_EQ(FormatParm(L"A=", L""), L"A= \r\n");
    EXPECT_EQ(FormatParm(L"A=", L"", L'"'), L"A= \"\"\r\n");
    EXPECT_EQ(FormatParm(L"A=", L"x\"y", L'"'), L"A= \"x\"y\"\r\n");
    EXPECT_EQ(FormatParm(L"", L"", L'\''), L" ''\r\n");
}

TEST_F(Codec, TheTabsAreTheCallers) {
    std::wstring Buffer = L"prima\r\n";
    AppendParm(Buffer, 2, L"A=", L"1");
    AppendParm(Buffer, 0, L"B=", L"2", L'"');
    AppendParm(Buffer, -3, L"C=", L"3");
    EXPECT_EQ(Buffer, L"prima\r\n\t\tA= 1\r\nB= \"2\"\r\nC= 3\r\n");
    for (const std::wstring_view Keyword : {L"A=", L""}) {
        std::wstring Alone;
        AppendParm(Alone, 0, Keyword, L"v", L'"');
        EXPECT_EQ(Alone, FormatParm(Keyword, L"v", L'"'));
    }
}

TEST_F(Codec, TheHeaderIsThreeCommentLines) {
    Identity Record;
    Record.Id = 17;
    Record.Name = L"Soggetti";
    Record.Desc = L"non si vede";
    Record.Version = 3;
    std::wstring Buffer = L"A= 1\r\n";
    DispHeader(Buffer, Record, 0);
    EXPECT_EQ(Buffer, Lines({L"A= 1", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"}));

    std::wstring Indented;
    DispHeader(Indented, Identity{-5, L"", L"", -2147483647 - 1}, 2);
    EXPECT_EQ(Indented, Lines({L"\t\t'[ID= -5]", L"\t\t'[NAME= ]", L"\t\t'[VERSION= -2147483648]"}));
}

TEST_F(Codec, TheHeaderIsIgnoredOnTheWayBack) {
    Identity Record{17, L"Nome = con 'segni; e *", L"", 3};
    std::wstring Buffer;
    DispHeader(Buffer, Record, 0);
    SectionText Text(Buffer);
    for (int Line = 0; Line < 3; ++Line) {
        std::wstring_view Keyword = L"x";
        std::wstring_view Value;
        EXPECT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
        EXPECT_TRUE(Keyword.empty());
    }
    EXPECT_TRUE(Text.Empty());
}

TEST_F(Codec, WhatIsWrittenQuotedReadsBack) {
    std::mt19937 Random(23);
    const std::wstring_view Pieces[] = {L" ", L"\t", L"=", L"'", L";", L"\"", L"|", L"a", L"È", L"\n", L"*"};
    for (int Round = 0; Round < 5000; ++Round) {
        std::wstring Original;
        for (auto N = Random() % 8; N > 0; --N) Original += Pieces[Random() % std::size(Pieces)];
        const std::wstring Held = FormatParm(L"A=", Original, StrUtil::QuoteChar());
        SectionText Text(Held);
        std::wstring_view Keyword;
        std::wstring_view Value;
        ASSERT_TRUE(Succeeds(GetFieldValue(Text, Keyword, Value)));
        ASSERT_EQ(std::wstring(Keyword), L"A=");
        ASSERT_EQ(std::wstring(Unquote(Value)), Original);
        ASSERT_TRUE(Text.Empty());
    }
}

}  // namespace
}  // namespace kv::test
