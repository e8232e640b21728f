// The ladder loop of every parser and the tables of words: what a reading does with a value, what is refused,
// and the line that the store then remembers.
#include <gtest/gtest.h>

#include <vector>

#include "frame/SectionTable.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

constexpr std::array<Word, 3> kFlags{{{L"UNO", 1}, {L"DUE", 2}, {L"ALTO", 0x10000}}};
constexpr std::array<Word, 3> kCodes{{{L"ZERO", 0}, {L"QUATTRO", 4}, {L"MENO", -1}}};

struct Scratch {
    std::wstring Path;
    std::wstring Name;
    bool Locked = false;
    std::int32_t Flags = 0;
    std::int32_t Code = 0;
    std::vector<std::wstring> Tips;

    bool operator==(const Scratch&) const = default;
};

bool ReadTip(Scratch& Into, Parm& P) {
    P.Unquote();
    Into.Tips.emplace_back(P.Value);
    return false;
}

constexpr LadderRow<Scratch> kLadder[] = {
    {L"PATH=", read::Text<&Scratch::Path>},
    {L"NAME=", read::Upper<&Scratch::Name>},
    {L"LOCKED=", read::BoolOrIgnore<&Scratch::Locked>},
    {L"FLAGS=", read::Flags<&Scratch::Flags, kFlags>},
    {L"CODE=", read::OneWord<&Scratch::Code, kCodes>},
    {L"TIP=", ReadTip, Repeat::Any},
    {L"MUTO=", [](Scratch&, Parm&) { return true; }},
    {L"SOTTO=", [](Scratch&, Parm&) { return Trap(L"sotto.Leggi", []() -> bool { Raise(L"Sotto."); }); }},
    {L"SOPRA=", [](Scratch&, Parm&) -> bool { Raise(L"Sopra."); }},
    {L"BYTE=",
     [](Scratch& Into, Parm& P) {
         Into.Code = StrUtil::ToByte(StrUtil::Number(P.Value));
         return false;
     }},
};

bool Read(std::wstring_view Buffer, Scratch& Into, bool Strict = true) {
    SectionText Text(Buffer);
    return Trap(L"diProva.SaveParm", Text, [&] {
        ClearParmCheck();
        return ReadLadder(Text, kLadder, Into, Strict);
    });
}

class Ladder : public FrameTest {};

TEST_F(Ladder, EachReadingStoresWhatItIsToldTo) {
    Scratch Expected;
    Expected.Path = L"C:\\Dati";
    Expected.Name = L"LIBRI È";
    Expected.Locked = true;
    Expected.Flags = 0x10001;
    Expected.Code = 4;
    Expected.Tips = {L"uno", L"due"};
    for (const bool Strict : {true, false}) {
        Scratch Got;
        EXPECT_TRUE(Succeeds(
            Read(Lines({L"'commento", L"PATH= \"C:\\Dati\"", L"NAME= \"Libri è\"", L"", L"LOCKED= vero",
                        L"FLAGS= uno | Alto", L"CODE= \"quattro\"", L"TIP= \"uno\"", L"  ;x", L"TIP= due"}),
                 Got, Strict)));
        EXPECT_TRUE(Got == Expected);
    }
}

struct ReadCase {
    std::wstring_view Text;
    bool Strict;
    std::wstring_view Message;  // empty: accepted
    std::int32_t Line;
    std::int32_t Flags = 0;
    bool Locked = false;
    std::int32_t Code = 0;
};

constexpr wchar_t kFlagsBad[] = L"Valore sconosciuto per il parametro FLAGS=(";

TEST_F(Ladder, ValuesAreReadAsTold) {
    const std::wstring BadFlags(kFlagsBad);
    const std::wstring BadEmpty = BadFlags + L")";
    const std::wstring BadDue = BadFlags + L"DUE)";
    const std::wstring BadDueTre = BadFlags + L"DUE|TRE)";
    const ReadCase kRows[] = {
        // flag words
        {L"FLAGS= UNO", true, L"", 0, 1},
        {L"FLAGS= uno|due", true, L"", 0, 3},
        {L"FLAGS= ALTO | DUE |", true, L"", 0, 0x10002},
        {L"FLAGS= UNO|UNO", true, L"", 0, 1},
        {L"FLAGS= NONE", true, L"", 0, 0},
        {L"FLAGS= none", true, L"", 0, 0},
        {L"FLAGS=", true, L"", 0, 0},
        {L"FLAGS= TRE", true, BadEmpty, 1},
        {L"FLAGS= tre|due", true, BadDue, 1},
        {L"FLAGS= uno|x|due|tre", true, BadDueTre, 1},
        {L"FLAGS= NONE|DUE", true, BadDue, 1},
        {L"FLAGS= UNO||DUE", true, BadDue, 1},
        {L"FLAGS= |DUE", true, BadDue, 1},
        {L"FLAGS= \"UNO\"", true, BadEmpty, 1},
        {L"FLAGS= TRE", false, L"", 0, 0},
        {L"FLAGS= tre|due", false, L"", 0, 2},
        {L"FLAGS= NONE|DUE", false, L"", 0, 2},
        {L"FLAGS= UNO||DUE", false, L"", 0, 3},
        // booleans
        {L"LOCKED= TRUE", true, L"", 0, 0, true},
        {L"LOCKED= Vero", true, L"", 0, 0, true},
        {L"LOCKED= FALSE", true, L"", 0, 0, false},
        {L"LOCKED= falso", true, L"", 0, 0, false},
        {L"LOCKED=", true, L"", 0, 0, false},
        {L"LOCKED= si", true, L"Valore sconosciuto per il parametro LOCKED=(SI)", 1},
        {L"LOCKED= si", false, L"", 0, 0, false},
        // one word of a table
        {L"CODE= QUATTRO", true, L"", 0, 0, false, 4},
        {L"CODE= meno", true, L"", 0, 0, false, -1},
        {L"CODE= zero", true, L"", 0, 0, false, 0},
        {L"CODE= cinque", true, L"Valore sconosciuto per il parametro CODE=(CINQUE)", 1},
        {L"CODE=", true, L"Valore sconosciuto per il parametro CODE=()", 1},
        {L"CODE= cinque", false, L"", 0, 0, false, 0},
    };
    for (const ReadCase& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Text) + (Row.Strict ? " strict" : " lax"));
        Scratch Got;
        const bool Failed = Read(Row.Text, Got, Row.Strict);
        if (!Row.Message.empty()) {
            EXPECT_TRUE(FailsWith(Failed, {.Number = 20000,
                                           .Source = L"diProva.SaveParm",
                                           .Description = Row.Message,
                                           .Line = Row.Line}));
            continue;
        }
        EXPECT_TRUE(Succeeds(Failed));
        EXPECT_EQ(Got.Flags, Row.Flags);
        EXPECT_EQ(Got.Locked, Row.Locked);
        EXPECT_EQ(Got.Code, Row.Code);
    }
}

TEST_F(Ladder, WhatIsRefusedIsRefusedStrictOrLaxWithItsLine) {
    const struct {
        std::wstring_view Text;
        Told Expected;
    } kRows[] = {
        {L"PIPPO= 1", {20000, L"diProva.SaveParm", L"Parametro non riconosciuto: PIPPO=1", 1}},
        {L"path= x", {20000, L"diProva.SaveParm", L"Parametro non riconosciuto: path=x", 1}},
        {L"=5", {20000, L"diProva.SaveParm", L"Parametro non riconosciuto: =5", 1}},
        {L"PATH= a\r\nPATH= b",
         {20000, L"diProva.SaveParm", L"Ripetizone del parametro PATH=.", 2, L"65536"}},
        {L"PATH =a\r\n\r\n'x\r\nPATH= b",
         {20000, L"diProva.SaveParm", L"Ripetizone del parametro PATH=.", 4, L"65536"}},
        {L"FLAGS=\r\nFLAGS= SCONOSCIUTO",
         {20000, L"diProva.SaveParm", L"Ripetizone del parametro FLAGS=.", 2, L"65536"}},
        {L"PATH= a\r\npath= b", {20000, L"diProva.SaveParm", L"Parametro non riconosciuto: path=b", 2}},
        {L"PATH= a\r\nsenza uguale",
         {20018, L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza uguale.", 2}},
        {L"\t'[ID= 17]", {20000, L"diProva.SaveParm", L"Parametro non riconosciuto: \t'[ID=17]", 1}},
        {L"PATH= a\r\n\r\nSOPRA=", {20000, L"diProva.SaveParm", L"Sopra.", 3}},
        {L"PATH= a\r\n\r\nSOTTO=", {20000, L"sotto.Leggi", L"Sotto.", 3}},
        {L"BYTE= 256", {6, L"diProva.SaveParm", L"Overflow", 1}},
        {L"'x\r\nBYTE= -1", {6, L"diProva.SaveParm", L"Overflow", 2}},
    };
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            SCOPED_TRACE(Narrow(Row.Text));
            Scratch Got;
            EXPECT_TRUE(FailsWith(Read(Row.Text, Got, Strict), Row.Expected));
        }
    }
}

TEST_F(Ladder, ASilentFailureTellsNothing) {
    Scratch Got;
    EXPECT_TRUE(Read(L"PATH= a\r\nMUTO=\r\nPATH= b", Got));
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
    EXPECT_EQ(Got.Path, L"a") << "the parser stops there";
}

TEST_F(Ladder, ARepeatingKeywordIsNotChecked) {
    Scratch Got;
    EXPECT_TRUE(Succeeds(Read(L"TIP= a\r\nTIP= b\r\nTIP= a", Got)));
    EXPECT_EQ(Got.Tips, (std::vector<std::wstring>{L"a", L"b", L"a"}));
    EXPECT_EQ(LastParmChecked(), L"");
}

TEST_F(Ladder, DuplicatesAreNotCheckedAcrossTwoTexts) {
    Scratch Got;
    EXPECT_TRUE(Succeeds(Read(L"PATH= a", Got)));
    EXPECT_TRUE(Succeeds(Read(L"PATH= b", Got)));
    EXPECT_EQ(Got.Path, L"b");
}

TEST_F(Ladder, OnlyCommentsAndBlankLinesChangeNothing) {
    for (const std::wstring_view Text : {L"", L"  ", L"\r\n\r\n", L"'a\r\n;b\r\n*c\r\n\r\n   'd"}) {
        Scratch Got;
        Got.Path = L"prima";
        Scratch Before = Got;
        EXPECT_TRUE(Succeeds(Read(Text, Got)));
        EXPECT_TRUE(Got == Before);
    }
}

TEST_F(Ladder, ChecksAtTheEndOfTheTextHaveNoLine) {
    SectionText Text(L"PATH= a\r\nNAME= b\r\n");
    Scratch Got;
    const bool Failed = Trap(L"diProva.SaveParm", Text, [&]() -> bool {
        ClearParmCheck();
        if (ReadLadder(Text, kLadder, Got, true)) return true;
        Raise(L"Alla fine.");
    });
    EXPECT_TRUE(FailsWith(
        Failed, {.Number = 20000, .Source = L"diProva.SaveParm", .Description = L"Alla fine.", .Line = 0}));
}

TEST_F(Ladder, AKeywordWithoutARowGoesToWhomTheParserNames) {
    struct Seen {
        std::vector<std::wstring> Others;
        std::wstring Path;
    } Got;
    constexpr LadderRow<Seen> kRows[] = {{L"PATH=", read::Text<&Seen::Path>}};
    SectionText Text(L"PATH= a\r\nX= 1\r\nX= 2\r\nSTOP= \r\nY= 3");
    const bool Failed = Trap(L"diProva.SaveParm", Text, [&] {
        ClearParmCheck();
        return ReadLadder(Text, kRows, Got, true, [](Seen& Into, Parm& P) {
            if (P.Keyword == L"STOP=") return true;
            Into.Others.push_back(std::wstring(P.Keyword) + std::wstring(P.Value));
            return false;
        });
    });
    EXPECT_TRUE(Failed);
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
    EXPECT_EQ(Got.Others, (std::vector<std::wstring>{L"X=1", L"X=2"}));
    EXPECT_EQ(Got.Path, L"a");
}

TEST_F(Ladder, NoneClearsTheFlagsThatWereThere) {
    const struct {
        std::wstring_view Text;
        std::int32_t Flags;
    } kRows[] = {{L"FLAGS= NONE", 0}, {L"FLAGS= none", 0}, {L"FLAGS=", 0}, {L"PATH= x", 0x42}};
    for (const auto& Row : kRows) {
        for (const bool Strict : {true, false}) {
            Scratch Got;
            Got.Flags = 0x42;
            EXPECT_TRUE(Succeeds(Read(Row.Text, Got, Strict)));
            EXPECT_EQ(Got.Flags, Row.Flags) << Narrow(Row.Text);
        }
    }
}

TEST_F(Ladder, FurtherReadings) {
    struct More {
        bool Open = false;
        std::uint8_t Octet = 9;
        std::int32_t Size = 9;
    };
    constexpr LadderRow<More> kRows[] = {{L"OPEN=", read::BoolOrTrue<&More::Open>},
                                         {L"OCTET=", read::Byte<&More::Octet>},
                                         {L"SIZE=", read::Long<&More::Size>}};
    const struct {
        std::wstring_view Text;
        bool Strict;
        std::wstring_view Message;
        More Expected;
    } kCases[] = {
        {L"OPEN= vero", true, L"", {true, 9, 9}},
        {L"OPEN=", true, L"", {false, 9, 9}},
        {L"OPEN= si", true, L"Valore sconosciuto per il parametro OPEN=(SI)", {}},
        {L"OPEN= si", false, L"", {true, 9, 9}},
        {L"OCTET= 254.5", true, L"", {false, 254, 9}},
        {L"OCTET=", true, L"", {false, 0, 9}},
        {L"OCTET= 255.5", true, L"Overflow", {}},
        {L"OCTET= -1", false, L"Overflow", {}},
        {L"SIZE= 12", true, L"", {false, 9, 12}},
        {L"SIZE= -2147483648", true, L"", {false, 9, -2147483647 - 1}},
        {L"SIZE= 1e10", false, L"Overflow", {}},
        {L"SIZE= 1e999", false, L"Overflow", {}},
    };
    for (const auto& Case : kCases) {
        SCOPED_TRACE(Narrow(Case.Text));
        SectionText Text(Case.Text);
        More Got;
        const bool Failed = Trap(L"x.y", Text, [&] {
            ClearParmCheck();
            return ReadLadder(Text, kRows, Got, Case.Strict);
        });
        if (!Case.Message.empty()) {
            EXPECT_TRUE(FailsWith(Failed, {.Number = Case.Message == L"Overflow" ? 6 : 20000,
                                           .Source = L"x.y",
                                           .Description = Case.Message,
                                           .Line = 1}));
            continue;
        }
        EXPECT_TRUE(Succeeds(Failed));
        EXPECT_EQ(Got.Open, Case.Expected.Open);
        EXPECT_EQ(Got.Octet, Case.Expected.Octet);
        EXPECT_EQ(Got.Size, Case.Expected.Size);
    }
}

TEST_F(Ladder, TheTextIsNotChanged) {
    std::wstring Held = L"  PATH= \"a\" \r\nNAME= b\r\nFLAGS= uno|due";
    const std::wstring Before = Held;
    Scratch Got;
    EXPECT_TRUE(Succeeds(Read(Held, Got)));
    EXPECT_EQ(Held, Before);
}

// ---- words and writers

TEST_F(Ladder, WordsOfATable) {
    EXPECT_EQ(FindWord(kFlags, L"DUE"), &kFlags[1]);
    EXPECT_EQ(FindWord(kFlags, L"due"), nullptr) << "words are compared exactly";
    EXPECT_EQ(FindWord(kFlags, L""), nullptr);
    EXPECT_EQ(WordOf(kCodes, -1), L"MENO");
    EXPECT_EQ(WordOf(kCodes, 7), L"");
    EXPECT_EQ(JoinWords(kFlags, 0), L"NONE");
    EXPECT_EQ(JoinWords(kFlags, 1), L"UNO");
    EXPECT_EQ(JoinWords(kFlags, 0x10003), L"UNO|DUE|ALTO");
    EXPECT_EQ(JoinWords(kFlags, 0x10002), L"DUE|ALTO");
    EXPECT_EQ(JoinWords(kFlags, 0x40), L"NONE") << "a bit without a word is not shown";
    EXPECT_EQ(JoinWords({}, -1), L"NONE");
    EXPECT_EQ(BooleanWord(true), L"TRUE");
    EXPECT_EQ(BooleanWord(false), L"FALSE");
    constexpr auto kFirst = NoneThen(kFlags);
    constexpr auto kLast = ThenNone(kFlags);
    EXPECT_EQ(kFirst, (std::array<std::wstring_view, 4>{L"NONE", L"UNO", L"DUE", L"ALTO"}));
    EXPECT_EQ(kLast, (std::array<std::wstring_view, 4>{L"UNO", L"DUE", L"ALTO", L"NONE"}));
}

TEST_F(Ladder, LinesAreWrittenInTheOrderOfTheTable) {
    constexpr LineRow<const Scratch> kRows[] = {
        {L"NAME=", write::Quoted<&Scratch::Name>},
        {L"PATH=", write::Quoted<&Scratch::Path>},
        {L"LOCKED=", write::Bool<&Scratch::Locked>},
        {L"FLAGS=", write::Flags<&Scratch::Flags, kFlags>},
        {L"CODE=", write::OneWord<&Scratch::Code, kCodes>},
        {L"TIP=",
         [](const Scratch& From, std::wstring_view Keyword, LineWriter& Out) {
             for (const std::wstring& Tip : From.Tips) Out.Quoted(Keyword, Tip);
             Out.Number(L"TIPS=", static_cast<std::int32_t>(From.Tips.size()));
             Out.Line(L"'fine");
             return false;
         }},
    };
    Scratch From;
    From.Name = L"N";
    From.Locked = true;
    From.Flags = 3;
    From.Code = -1;
    From.Tips = {L"a", L"b"};
    std::wstring Buffer = L"prima\r\n";
    LineWriter Out{Buffer, 1};
    EXPECT_FALSE(WriteLines(Out, kRows, From));
    EXPECT_EQ(Narrow(Buffer), Narrow(Lines({L"prima", L"\tNAME= \"N\"", L"\tPATH= \"\"", L"\tLOCKED= TRUE",
                                            L"\tFLAGS= UNO|DUE", L"\tCODE= MENO", L"\tTIP= \"a\"",
                                            L"\tTIP= \"b\"", L"\tTIPS= 2", L"\t'fine"})));
    From.Code = 99;
    std::wstring Unknown;
    LineWriter Again{Unknown, 0};
    EXPECT_FALSE(WriteLines(Again, kRows, From));
    EXPECT_NE(Unknown.find(L"CODE= ZERO\r\n"), std::wstring::npos) << "a code without a word reads back";
}

TEST_F(Ladder, AWriterThatFailsEndsTheRendering) {
    constexpr LineRow<const Scratch> kRows[] = {
        {L"NAME=", write::Quoted<&Scratch::Name>},
        {L"X=", [](const Scratch&, std::wstring_view, LineWriter&) { return true; }},
        {L"PATH=", write::Quoted<&Scratch::Path>},
    };
    const Scratch From;
    std::wstring Buffer;
    LineWriter Out{Buffer, 0};
    EXPECT_TRUE(WriteLines(Out, kRows, From));
    EXPECT_EQ(Buffer, L"NAME= \"\"\r\n");
}

}  // namespace
}  // namespace kv::test
