// The fields of a table: their section, its checks, adding, moving and deleting them.
#include <gtest/gtest.h>

#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diTable.SaveFieldParm";
const std::wstring kGood = L"TAG= 1\r\nNAME= A\r\nLEVEL= 1\r\nDATATYPE= TEXT\r\n";

RegObject FieldOf(std::int32_t Tag, std::wstring_view Name, std::int32_t Level = 1, std::int32_t Group = 0) {
    return Element(100 + Tag, Name,
                   {{L"Tag", Tag}, {L"Level", Level}, {L"GroupTag", Group}, {L"DataType", 8}});
}

class FieldSection : public ::testing::Test {
  protected:
    explicit FieldSection(std::vector<RegObject> Fields = {FieldOf(1, L"TITOLO"), FieldOf(2, L"AUTORE")})
        : On(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", std::move(Fields))) {}

    Desk On;

    std::wstring Leaf(int Nth = 1) const { return On.Leaf(L"FIELDPARMS", Nth); }
    std::wstring Node(std::size_t Nth) const { return KeyBelow(On, L"FIELDS", Nth); }
    RegObject Field(std::size_t Nth = 1) {
        const std::vector<RegObject>& Fields = ListOf(SavedBy(On), L"Fields");
        EXPECT_LE(Nth, Fields.size());
        return Nth <= Fields.size() ? Fields[Nth - 1] : RegObject{};
    }
    std::wstring LineOf(std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Leaf());
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos);
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    Outcome Put(const std::wstring& Text, bool Strict = true) { return On.Put(Leaf(), Text, Strict); }

    // Captions, and that tree and list stand in one order.
    std::vector<std::wstring> Names() {
        std::vector<std::wstring> Found;
        std::vector<std::wstring> Captions;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) {
            Found.push_back(Each.Name);
            Captions.push_back(std::to_wstring(LongOf(Each, L"Level")) + L":" + Each.Name);
        }
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Captions);
        return Found;
    }
};

TEST_F(FieldSection, EmptyAndFullSectionText) {
    Desk Bare(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", {Element(9, L"")}));
    EXPECT_TRUE(MatchesGolden("section/TABLE.FIELDPARMS.empty.txt", Bare.Text(Bare.Leaf(L"FIELDPARMS"))));
    ASSERT_TRUE(Accepted(Put(Lines({
        L"TAG= 200",
        L"NAME= \"titolo proprio\"",
        L"DATATYPE= TEXT",
        L"LEVEL= 2",
        L"GROUPTAG= 1",
        L"SEMANTIC= itemtitle",
        L"VISIBLE= vero",
        L"LINKTABLE= \"aut\"",
        L"LINKMODE= linkreciprocal",
        L"LINKTYPE= 3",
        L"LINKTYPERECPR= 255",
        L"VALIDATIONTABLE= \"lingue\"",
        L"CAPTION= \"Titolo proprio: \"",
        L"FLAGS= hidden | FIXEDSIZE",
        L"DEFAULT= \"uno\"",
        L"DEFAULT= \"Due\"",
        L"SIZE= 40",
    }))));
    EXPECT_TRUE(MatchesGolden("section/TABLE.FIELDPARMS.full.txt", On.Text(Leaf())));
    ExpectFixpoint(On, Leaf());
}

TEST_F(FieldSection, EveryKeywordReachesItsProperty) {
    ASSERT_TRUE(Accepted(
        Put(Lines({L"TAG= 200", L"NAME= \"titolo\"", L"DATATYPE= TEXT", L"LEVEL= 2", L"GROUPTAG= 1",
                   L"SEMANTIC= itemtitle", L"VISIBLE= vero", L"LINKTABLE= \"aut\"", L"LINKMODE= linkowner",
                   L"LINKTYPE= 3", L"LINKTYPERECPR= 255", L"VALIDATIONTABLE= \"lingue\"",
                   L"CAPTION= \"Titolo: \"", L"FLAGS= HIDDEN", L"DEFAULT= \"x\"", L"SIZE= 40"}))));
    const RegObject Now = Field();
    EXPECT_EQ(Now.Id, 101);
    EXPECT_EQ(Now.Name, L"TITOLO");
    EXPECT_EQ(LongOf(Now, L"Tag"), 200);
    EXPECT_EQ(LongOf(Now, L"DataType"), 8);
    EXPECT_EQ(LongOf(Now, L"Level"), 2);
    EXPECT_EQ(LongOf(Now, L"GroupTag"), 1);
    EXPECT_EQ(LongOf(Now, L"Semantic"), 18);
    EXPECT_TRUE(BoolOf(Now, L"Visible"));
    EXPECT_EQ(TextOf(Now, L"LinkTable"), L"AUT");
    EXPECT_EQ(LongOf(Now, L"LinkMode"), 1);
    EXPECT_EQ(LongOf(Now, L"LinkType"), 3);
    EXPECT_EQ(LongOf(Now, L"LinkTypeRecpr"), 255);
    EXPECT_EQ(TextOf(Now, L"ValidationTable"), L"LINGUE");
    EXPECT_EQ(TextOf(Now, L"Caption"), L"Titolo: ");
    EXPECT_EQ(LongOf(Now, L"Flags"), 0x10000);
    EXPECT_EQ(TextOf(Now, L"DefValues"), L"x");
    EXPECT_EQ(LongOf(Now, L"Size"), 40);
    EXPECT_EQ(Field(2).Name, L"AUTORE");
}

TEST_F(FieldSection, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(
        Put(Lines({L"TAG= 200", L"NAME= \"titolo\"", L"DATATYPE= TEXT", L"LEVEL= 2", L"GROUPTAG= 1",
                   L"SEMANTIC= itemtitle", L"VISIBLE= vero", L"LINKTABLE= \"aut\"", L"LINKMODE= linkowner",
                   L"LINKTYPE= 3", L"LINKTYPERECPR= 255", L"VALIDATIONTABLE= \"lingue\"",
                   L"CAPTION= \"Titolo: \"", L"FLAGS= HIDDEN", L"DEFAULT= \"x\"", L"SIZE= 40"}))));
    ASSERT_TRUE(Accepted(Put(L"'niente", false)));
    const RegObject Now = Field();
    EXPECT_EQ(Now.Id, 101);
    EXPECT_EQ(Now.Name, L"TITOLO");  // the name belongs to the identity
    for (const std::wstring_view Name : {L"Tag", L"DataType", L"Level", L"GroupTag", L"Semantic", L"LinkMode",
                                         L"LinkType", L"LinkTypeRecpr", L"Flags", L"Size"})
        EXPECT_EQ(LongOf(Now, Name), 0) << Narrow(Name);
    for (const std::wstring_view Name : {L"LinkTable", L"ValidationTable", L"Caption", L"DefValues"})
        EXPECT_EQ(TextOf(Now, Name), L"") << Narrow(Name);
    EXPECT_FALSE(BoolOf(Now, L"Visible"));
}

TEST_F(FieldSection, DataTypes) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {{L"BYTE", 17},  {L"BOOLEAN", 11}, {L"LONG", 2}, {L"SINGLE", 4},
                 {L"DOUBLE", 5}, {L"CURRENCY", 6}, {L"DATE", 7}, {L"TEXT", 8}};
    for (const auto& Row : kRows)
        for (const wchar_t* Quote : {L"", L"\""}) {
            const std::wstring Word(Row.Word);
            ASSERT_TRUE(Accepted(Put(L"TAG= 1\r\nLEVEL= 1\r\nDATATYPE= " + (Quote + Word + Quote))));
            EXPECT_EQ(LongOf(Field(), L"DataType"), Row.Code);
            EXPECT_EQ(LineOf(L"DATATYPE="), L"DATATYPE= " + Word);
        }
}

TEST_F(FieldSection, DataTypeWordsAreComparedAsTyped) {
    for (const std::wstring_view Word : {L"long", L"Text", L"INTEGER", L"8", L""}) {
        const std::wstring Text = L"TAG= 1\r\nLEVEL= 1\r\nDATATYPE= " + std::wstring(Word);
        EXPECT_TRUE(Refused(Put(Text), 20000, kSource,
                            L"Valore sconosciuto per il parametro DATATYPE=(" + std::wstring(Word) + L")",
                            3));
        ASSERT_TRUE(Accepted(Put(Text, false)));
        EXPECT_EQ(LongOf(Field(), L"DataType"), 0);
        EXPECT_EQ(LineOf(L"DATATYPE="), L"DATATYPE= TEXT");
    }
}

TEST_F(FieldSection, DataTypesWithoutAWordShowTextAndThreeShowsLong) {
    const auto Shown = [](std::int32_t Code) {
        Desk One(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields",
                                    {Element(1, L"A", {{L"DataType", Code}, {L"Tag", 1}, {L"Level", 1}})}));
        const std::wstring Key = One.Leaf(L"FIELDPARMS");
        const std::wstring Text = One.Text(Key);
        EXPECT_TRUE(Accepted(One.Put(Key, Text)));
        const std::size_t At = Text.find(L"DATATYPE= ");
        return std::pair{Text.substr(At, Text.find(L'\r', At) - At),
                         LongOf(ListOf(SavedBy(One), L"Fields").front(), L"DataType")};
    };
    EXPECT_EQ(Shown(3), (std::pair<std::wstring, std::int32_t>{L"DATATYPE= LONG", 2}));
    EXPECT_EQ(Shown(2), (std::pair<std::wstring, std::int32_t>{L"DATATYPE= LONG", 2}));
    for (const std::int32_t Code : {0, 1, 9, 10, 12, 16, 18, -1})
        EXPECT_EQ(Shown(Code), (std::pair<std::wstring, std::int32_t>{L"DATATYPE= TEXT", 8})) << Code;
}

TEST_F(FieldSection, FlagsEachWithItsBitInTheirOrder) {
    const struct {
        std::wstring_view Word;
        std::int32_t Bit;
    } kRows[] = {{L"FIXEDSIZE", 0x00001},  {L"READONLY", 0x00004},       {L"WRITEONLY", 0x00002},
                 {L"LOCKED", 0x00008},     {L"TEXTBOX", 0x00010},        {L"COMBOBOX", 0x00020},
                 {L"LISTBOX", 0x00040},    {L"AUTONUM", 0x00080},        {L"AUTODATE", 0x00100},
                 {L"AUTOUNK", 0x00200},    {L"IFEMPTY", 0x00400},        {L"MANDATORY", 0x00800},
                 {L"REPEATABLE", 0x01000}, {L"VALIDATEONQUIT", 0x02000}, {L"VALIDATEONREQ", 0x04000},
                 {L"CAPTURE", 0x08000},    {L"HIDDEN", 0x10000}};
    std::wstring All;
    std::wstring Backwards;
    std::int32_t Bits = 0;
    for (const auto& Row : kRows) {
        ASSERT_TRUE(Accepted(Put(kGood + L"SIZE= 1\r\nFLAGS= " + std::wstring(Row.Word))));
        EXPECT_EQ(LongOf(Field(), L"Flags"), Row.Bit) << Narrow(Row.Word);
        EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=" + std::wstring(Row.Word));
        All.append(All.empty() ? L"" : L"|").append(Row.Word);
        Backwards = std::wstring(Row.Word) + (Backwards.empty() ? L"" : L"|") + Backwards;
        Bits |= Row.Bit;
    }
    ASSERT_TRUE(Accepted(Put(kGood + L"SIZE= 1\r\nFLAGS= " + Backwards)));
    EXPECT_EQ(LongOf(Field(), L"Flags"), Bits);
    EXPECT_EQ(Bits, 0x1FFFF);
    EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=" + All);
}

TEST_F(FieldSection, NoFlagsShowNoneWithoutABlank) {
    for (const std::wstring_view Value : {L" NONE", L" none", L"", L"NONE"}) {
        ASSERT_TRUE(Accepted(Put(kGood + L"FLAGS= HIDDEN")));
        ASSERT_TRUE(Accepted(Put(kGood + L"FLAGS=" + std::wstring(Value))));
        EXPECT_EQ(LongOf(Field(), L"Flags"), 0);
        EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS=NONE");
    }
}

TEST_F(FieldSection, UnknownFlagWords) {
    EXPECT_TRUE(Refused(Put(kGood + L"FLAGS= hidden|pippo | locked"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(LOCKED)", 5));
    EXPECT_TRUE(Refused(Put(kGood + L"FLAGS= NONE|HIDDEN"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(HIDDEN)", 5));
    ASSERT_TRUE(Accepted(Put(kGood + L"FLAGS= hidden|pippo | locked|", false)));
    EXPECT_EQ(LongOf(Field(), L"Flags"), 0x10008);
}

TEST_F(FieldSection, LinkModes) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {{L"LINKOWNER", 1}, {L"LINKRECIPROCAL", 2}, {L"OWNERRECIPROCAL", 3}};
    for (const auto& Row : kRows) {
        const std::wstring Word(Row.Word);
        ASSERT_TRUE(Accepted(Put(kGood + L"LINKTABLE= X\r\nLINKMODE= \"" + Word + L"\"")));
        EXPECT_EQ(LongOf(Field(), L"LinkMode"), Row.Code);
        EXPECT_EQ(LineOf(L"LINKMODE="), L"LINKMODE= " + Word);
        EXPECT_TRUE(
            Refused(Put(kGood + L"LINKMODE= " + Word), 20000, kSource, L"LINKTABLE mancante o non valido."));
        EXPECT_TRUE(Accepted(Put(kGood + L"LINKMODE= " + Word, false)));
    }
    ASSERT_TRUE(Accepted(Put(kGood + L"LINKMODE= linknone")));
    EXPECT_EQ(LongOf(Field(), L"LinkMode"), 0);
    EXPECT_EQ(LineOf(L"LINKMODE="), L"LINKMODE= LINKNONE");
}

TEST_F(FieldSection, AnUnknownLinkModeIsNone) {
    ASSERT_TRUE(Accepted(Put(kGood + L"LINKTABLE= X\r\nLINKMODE= LINKOWNER")));
    EXPECT_TRUE(Refused(Put(kGood + L"LINKMODE= \"forse\""), 20000, kSource,
                        L"Valore sconosciuto per il parametro LINKMODE=(FORSE)", 5));
    ASSERT_TRUE(Accepted(Put(kGood + L"LINKMODE= forse", false)));
    EXPECT_EQ(LongOf(Field(), L"LinkMode"), 0);
    Desk Odd(L"TABLE", WithList(Desk::Named(L"LIBRI"), L"Fields", {Element(1, L"A", {{L"LinkMode", 9}})}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"FIELDPARMS")).find(L"LINKMODE= LINKNONE\r\n"), std::wstring::npos);
}

TEST_F(FieldSection, SemanticWords) {
    const struct {
        std::wstring_view Word;
        std::int32_t Code;
    } kRows[] = {{L"NONE", 0},        {L"ISBDCOOK", 1},   {L"ISBDMETA", 2},    {L"SETLINK", 3},
                 {L"SETNUM", 4},      {L"ITEMLINK", 5},   {L"ITEMNUM", 6},     {L"RESPLINK", 7},
                 {L"SUBJECTLINK", 8}, {L"CLASSLINK", 9},  {L"TITLELINK", 10},  {L"GSTSIGLNK", 11},
                 {L"GSTBARLNK", 12},  {L"GSTACCLNK", 13}, {L"GSTBIDLNK", 14},  {L"GSTBIBLNK", 15},
                 {L"GSTPUBTYPE", 16}, {L"ITEMDATE", 17},  {L"ITEMTITLE", 18},  {L"MAINRESP", 19},
                 {L"LOANSTART", 20},  {L"LOANEND", 21},   {L"LOANSTATUS", 22}, {L"LOANNOTE", 23},
                 {L"PUBLISHER", 24},  {L"LOANCHECK", 25}, {L"STATCONS", 26},   {L"IMPTYPE", 27},
                 {L"HIERLEVEL", 28},  {L"RESPFLAGS", 29}, {L"ISBDRULE", 31}};
    for (const auto& Row : kRows) {
        std::wstring Word(Row.Word);
        ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= " + Word)));
        EXPECT_EQ(LongOf(Field(), L"Semantic"), Row.Code) << Narrow(Word);
        EXPECT_EQ(LineOf(L"SEMANTIC="), L"SEMANTIC= " + Word);
        for (wchar_t& C : Word) C = static_cast<wchar_t>(C + 32);
        ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= \"" + Word + L"\"")));
        EXPECT_EQ(LongOf(Field(), L"Semantic"), Row.Code) << Narrow(Word);
        if (Row.Code == 0) continue;
        ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= " + std::to_wstring(Row.Code))));
        EXPECT_EQ(LineOf(L"SEMANTIC="), L"SEMANTIC= " + std::wstring(Row.Word));
    }
}

TEST_F(FieldSection, SemanticCodesWithoutAWordStandAsNumbers) {
    for (const std::int32_t Code : {30, 32, 500}) {
        ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= " + std::to_wstring(Code))));
        EXPECT_EQ(LongOf(Field(), L"Semantic"), Code);
        EXPECT_EQ(LineOf(L"SEMANTIC="), L"SEMANTIC= " + std::to_wstring(Code));
        ExpectFixpoint(On, Leaf());
    }
    ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC=")));
    EXPECT_EQ(LineOf(L"SEMANTIC="), L"SEMANTIC= NONE");
    for (const std::wstring_view Word : {L"FOO", L"0", L"-3"}) {
        EXPECT_TRUE(Refused(Put(kGood + L"SEMANTIC= " + std::wstring(Word)), 20000, kSource,
                            L"Valore sconosciuto per il parametro SEMANTIC=(" + std::wstring(Word) + L")",
                            5));
    }
    ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= 30")));
    ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= FOO", false)));
    EXPECT_EQ(LongOf(Field(), L"Semantic"), 0);
    ASSERT_TRUE(Accepted(Put(kGood + L"SEMANTIC= -3", false)));
    EXPECT_EQ(LongOf(Field(), L"Semantic"), -3);
    EXPECT_EQ(LineOf(L"SEMANTIC="), L"SEMANTIC= -3");
}

TEST_F(FieldSection, Visibility) {
    const auto Read = [&](std::wstring_view Word, bool Strict) {
        EXPECT_TRUE(Accepted(Put(kGood + L"VISIBLE= " + std::wstring(Word), Strict)));
        return BoolOf(Field(), L"Visible");
    };
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Read(L"TRUE", Strict));
        EXPECT_FALSE(Read(L"FALSE", Strict));
        EXPECT_TRUE(Read(L"vero", Strict));
        EXPECT_FALSE(Read(L"Falso", Strict));
        EXPECT_TRUE(Read(L"True", Strict));
        EXPECT_FALSE(Read(L"", Strict));
    }
    EXPECT_TRUE(Refused(Put(kGood + L"VISIBLE= si"), 20000, kSource,
                        L"Valore sconosciuto per il parametro VISIBLE=(SI)", 5));
    EXPECT_TRUE(Read(L"si", false));
    EXPECT_EQ(LineOf(L"VISIBLE="), L"VISIBLE= TRUE");
}

TEST_F(FieldSection, DefaultsMayRepeat) {
    const auto Read = [&](std::wstring_view Text) {
        EXPECT_TRUE(Accepted(Put(kGood + std::wstring(Text))));
        return TextOf(Field(), L"DefValues");
    };
    EXPECT_EQ(Read(L"DEFAULT= \"A\"\r\nDEFAULT= b"), std::wstring(L"A\0b", 3));
    EXPECT_NE(On.Text(Leaf()).find(L"DEFAULT= \"A\"\r\nDEFAULT= \"b\"\r\nSIZE= "), std::wstring::npos);
    ExpectFixpoint(On, Leaf());
    EXPECT_EQ(Read(L"DEFAULT= \"\"\r\nDEFAULT= \"B\""), std::wstring(L"\0B", 2));
    EXPECT_NE(On.Text(Leaf()).find(L"DEFAULT= \"\"\r\nDEFAULT= \"B\"\r\n"), std::wstring::npos);
    EXPECT_EQ(Read(L""), L"");
    EXPECT_NE(On.Text(Leaf()).find(L"FLAGS=NONE\r\nDEFAULT= \"\"\r\nSIZE= 0\r\n"), std::wstring::npos);
    EXPECT_EQ(Read(L"DEFAULT= \"\""), L"");
    EXPECT_EQ(Read(L"DEFAULT= solo"), L"solo");
    ExpectFixpoint(On, Leaf());
}

TEST_F(FieldSection, GroupsAndLevels) {
    EXPECT_TRUE(Refused(Put(kGood + L"GROUPTAG= -1"), 20000, kSource,
                        L"Valore sconosciuto per il parametro GROUPTAG=(-1)", 5));
    ASSERT_TRUE(Accepted(Put(kGood + L"GROUPTAG= -1", false)));
    EXPECT_EQ(LongOf(Field(), L"GroupTag"), -1);
    EXPECT_TRUE(Accepted(Put(kGood + L"GROUPTAG= 0")));
    for (const std::wstring_view Level : {L"0", L"-2", L"uno", L""}) {
        const std::wstring Text = L"TAG= 1\r\nDATATYPE= TEXT\r\nLEVEL= " + std::wstring(Level);
        EXPECT_TRUE(Refused(Put(Text), 20000, kSource,
                            L"Valore sconosciuto per il parametro LEVEL=(" + std::wstring(Level) + L")", 3));
        EXPECT_TRUE(Accepted(Put(Text, false)));
    }
    EXPECT_TRUE(Accepted(Put(kGood)));
}

TEST_F(FieldSection, ByteNumbersOverflow) {
    for (const std::wstring_view Keyword : {L"LINKTYPE=", L"LINKTYPERECPR="}) {
        for (const std::wstring_view Value : {L"300", L"256", L"-1"})
            for (const bool Strict : {true, false})
                EXPECT_TRUE(Refused(Put(kGood + std::wstring(Keyword) + L" " + std::wstring(Value), Strict),
                                    6, kSource, L"Overflow", 5));
        EXPECT_TRUE(Accepted(Put(kGood + std::wstring(Keyword) + L" 255")));
        EXPECT_TRUE(Accepted(Put(kGood + std::wstring(Keyword))));
        EXPECT_EQ(LineOf(Keyword), std::wstring(Keyword) + L" 0");
    }
    for (const std::wstring_view Keyword : {L"SIZE=", L"GROUPTAG="})
        EXPECT_TRUE(
            Refused(Put(kGood + std::wstring(Keyword) + L" 2147483648", false), 6, kSource, L"Overflow", 5));
}

// Only strings and words have their quotes taken off; a number in quotes reads as no number.
TEST_F(FieldSection, NumbersInQuotesAreNoNumbers) {
    ASSERT_TRUE(Accepted(
        Put(L"TAG= \"5\"\r\nSIZE= \"6\"\r\nGROUPTAG= \"7\"\r\nLEVEL= \"8\"\r\nLINKTYPE= \"9\"", false)));
    for (const std::wstring_view Name : {L"Tag", L"Size", L"GroupTag", L"Level", L"LinkType"})
        EXPECT_EQ(LongOf(Field(), Name), 0) << Narrow(Name);
}

TEST_F(FieldSection, ChecksStandInTheirOrder) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Message;
    } kRows[] = {
        // Each row cures the fault of the one above and has all that follow.
        {L"NAME=\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X", L"TAG mancante o non valido."},
        {L"TAG= 0\r\nNAME=\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X", L"TAG mancante o non valido."},
        {L"TAG= -1\r\nNAME=\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X", L"TAG mancante o non valido."},
        {L"TAG= 1\r\nNAME=\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X", L"NAME mancante."},
        {L"TAG= 1\r\nNAME= autore\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X",
         L"Il nome del campo non è univoco."},
        {L"TAG= 1\r\nNAME= B\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X",
         L"DATATYPE mancante o non valido."},
        {L"TAG= 1\r\nNAME= B\r\nDATATYPE= LONG\r\nFLAGS= FIXEDSIZE\r\nSIZE= -1\r\nLINKTABLE= X",
         L"SIZE mancante o non valido."},
        {L"TAG= 1\r\nNAME= B\r\nDATATYPE= TEXT\r\nFLAGS= FIXEDSIZE\r\nSIZE= 0\r\nLINKTABLE= X",
         L"SIZE mancante o non valido."},
        {L"TAG= 1\r\nNAME= B\r\nDATATYPE= TEXT\r\nFLAGS= FIXEDSIZE\r\nLINKTABLE= X",
         L"SIZE mancante o non valido."},
        {L"TAG= 1\r\nNAME= B\r\nDATATYPE= LONG\r\nFLAGS= FIXEDSIZE\r\nSIZE= 0\r\nLINKTABLE= X",
         L"LINKMODE mancante o non valido."},
        {L"TAG= 1\r\nNAME= B\r\nDATATYPE= TEXT\r\nSIZE= -1\r\nLINKMODE= LINKOWNER",
         L"LINKTABLE mancante o non valido."},
    };
    const std::wstring Before = On.Text(Leaf());
    for (const auto& Row : kRows) {
        EXPECT_TRUE(Refused(Put(std::wstring(Row.Text)), 20000, kSource, Row.Message)) << Narrow(Row.Text);
        EXPECT_EQ(Narrow(On.Text(Leaf())), Narrow(Before));
        EXPECT_EQ(On.Tree->NodeText(Node(1)), L"1:TITOLO");
        Desk Lax(L"TABLE",
                 WithList(Desk::Named(L"LIBRI"), L"Fields", {FieldOf(1, L"TITOLO"), FieldOf(2, L"AUTORE")}));
        EXPECT_TRUE(Accepted(Lax.Put(Lax.Leaf(L"FIELDPARMS"), std::wstring(Row.Text), false)));
    }
    EXPECT_TRUE(
        Accepted(Put(L"TAG= 1\r\nNAME= B\r\nDATATYPE= LONG\r\nLEVEL= 1\r\nFLAGS= FIXEDSIZE\r\nSIZE= 0")));
    EXPECT_TRUE(
        Accepted(Put(L"TAG= 1\r\nNAME= B\r\nDATATYPE= TEXT\r\nLEVEL= 1\r\nFLAGS= FIXEDSIZE\r\nSIZE= 1")));
    EXPECT_TRUE(Accepted(Put(L"TAG= 1\r\nNAME= B\r\nDATATYPE= TEXT\r\nLEVEL= 1\r\nSIZE= -5")));
}

TEST_F(FieldSection, ItsOwnNameIsNoRepeatAndTheTagMayBe) {
    EXPECT_TRUE(Accepted(Put(L"TAG= 2\r\nNAME= \"titolo\"\r\nDATATYPE= TEXT\r\nLEVEL= 1")));
    EXPECT_TRUE(Refused(On.Try([&] { return On.Core.Save(); }), 20000, L"diTable.Save",
                        L"Tag duplicato: 2\r\nTITOLO=AUTORE"));
    ASSERT_TRUE(Accepted(Put(L"NAME= autore\r\nTAG= 1", false)));
    EXPECT_EQ(Field(1).Name, Field(2).Name);
}

TEST_F(FieldSection, Refusals) {
    ExpectRefusals(
        On, Leaf(), kSource,
        {
            {L"TAG= 1\r\ntag= 2", L"Parametro non riconosciuto: tag=2", 2},
            {L"INDEX= A", L"Parametro non riconosciuto: INDEX=A", 1},
            {L"CAPTION=\r\nCAPTION=", L"Ripetizone del parametro CAPTION=.", 2},
            {L"DATATYPE= LONG\r\nDATATYPE= LONG", L"Ripetizone del parametro DATATYPE=.", 2},
            {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
            {L"GROUPTAG=\r\nGROUPTAG=", L"Ripetizone del parametro GROUPTAG=.", 2},
            {L"LEVEL= 1\r\nLEVEL= 1", L"Ripetizone del parametro LEVEL=.", 2},
            {L"LINKMODE= LINKNONE\r\nLINKMODE= LINKNONE", L"Ripetizone del parametro LINKMODE=.", 2},
            {L"LINKTABLE=\r\nLINKTABLE=", L"Ripetizone del parametro LINKTABLE=.", 2},
            {L"LINKTYPE=\r\nLINKTYPE=", L"Ripetizone del parametro LINKTYPE=.", 2},
            {L"LINKTYPERECPR=\r\nLINKTYPERECPR=", L"Ripetizone del parametro LINKTYPERECPR=.", 2},
            {L"NAME=\r\nNAME=", L"Ripetizone del parametro NAME=.", 2},
            {L"SEMANTIC=\r\nSEMANTIC=", L"Ripetizone del parametro SEMANTIC=.", 2},
            {L"SIZE=\r\nSIZE=", L"Ripetizone del parametro SIZE=.", 2},
            {L"TAG=\r\nTAG=", L"Ripetizone del parametro TAG=.", 2},
            {L"VALIDATIONTABLE=\r\nVALIDATIONTABLE=", L"Ripetizone del parametro VALIDATIONTABLE=.", 2},
            {L"VISIBLE=\r\nVISIBLE=", L"Ripetizone del parametro VISIBLE=.", 2},
        });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(Put(L"TAG= 1\r\n\r\nsenza", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: senza.", 3));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(FieldSection, TheCaptionFollowsNameAndLevel) {
    std::wstring Text = L"TAG= 1\r\nNAME= nuovo\r\nLEVEL= 3\r\nDATATYPE= TEXT";
    std::wstring Handed;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Leaf()}, Text, Handed); })));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (std::vector<std::wstring>{L"3:NUOVO", L"1:AUTORE"}));
    EXPECT_EQ(Handed, L"3:NUOVO");
    ASSERT_TRUE(Accepted(On.Put(Leaf(2), L"TAG= 2\r\nNAME= altro\r\nLEVEL= 2\r\nDATATYPE= TEXT")));
    EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), (std::vector<std::wstring>{L"3:NUOVO", L"2:ALTRO"}));
    Desk Again(L"TABLE", SavedBy(On));
    EXPECT_EQ(CaptionsBelow(Again, L"FIELDS"), CaptionsBelow(On, L"FIELDS"));
}

class NoFields : public FieldSection {
  protected:
    NoFields() : FieldSection(std::vector<RegObject>{}) {}
};

TEST_F(NoFields, TheFirstFieldOpensTheList) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_EQ(Made, Node(1));
    EXPECT_TRUE(On.Tree->Modified());
    const RegObject Now = Field();
    EXPECT_EQ(LongOf(Now, L"Tag"), 1);
    EXPECT_EQ(LongOf(Now, L"Level"), 1);
    EXPECT_EQ(LongOf(Now, L"GroupTag"), 0);
    EXPECT_TRUE(BoolOf(Now, L"Visible"));
    EXPECT_NE(Now.Id, 0);
    EXPECT_EQ(Now.Name, L"");
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L""}));
    EXPECT_EQ(On.Tree->NodeText(Made), L"1:");
    EXPECT_EQ(On.Picture(), (Desk(L"TABLE", On.Object->Read()).Picture()));
}

class GroupedFields : public FieldSection {
  protected:
    GroupedFields()
        : FieldSection({FieldOf(10, L"A"), FieldOf(5, L"B", 1, 5), FieldOf(7, L"C", 2, 5),
                        FieldOf(8, L"D", 2, 8), FieldOf(3, L"E")}) {}
};

TEST_F(GroupedFields, ANewFieldGoesBehindTheSelectedOne) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(1), Made)));
    EXPECT_EQ(Made, Node(2));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"", L"B", L"C", L"D", L"E"}));
    const RegObject Now = Field(2);
    EXPECT_EQ(LongOf(Now, L"Tag"), 11);
    EXPECT_EQ(LongOf(Now, L"Level"), 1);
    EXPECT_EQ(LongOf(Now, L"GroupTag"), 0);
    EXPECT_TRUE(BoolOf(Now, L"Visible"));
}

TEST_F(GroupedFields, BehindTheHeadOfAGroupItBecomesAMember) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(2), Made)));
    EXPECT_EQ(LongOf(Field(3), L"Level"), 2);
    EXPECT_EQ(LongOf(Field(3), L"GroupTag"), 5);
    EXPECT_EQ(On.Tree->NodeText(Made), L"2:");
    ASSERT_TRUE(Accepted(AddAt(On, Node(5), Made)));  // D heads a group one level down
    EXPECT_EQ(LongOf(Field(6), L"Level"), 3);
    EXPECT_EQ(LongOf(Field(6), L"GroupTag"), 8);
    EXPECT_EQ(LongOf(Field(6), L"Tag"), 12);
}

TEST_F(GroupedFields, BehindAMemberItBecomesItsSibling) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(3), Made)));
    EXPECT_EQ(LongOf(Field(4), L"Level"), 2);
    EXPECT_EQ(LongOf(Field(4), L"GroupTag"), 5);
}

TEST_F(GroupedFields, WithTheFolderSelectedItGoesLast) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_EQ(Made, Node(6));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"B", L"C", L"D", L"E", L""}));
    EXPECT_EQ(LongOf(Field(6), L"Tag"), 11);
    EXPECT_EQ(LongOf(Field(6), L"Level"), 1);
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_EQ(LongOf(Field(7), L"Tag"), 12);
}

TEST_F(GroupedFields, AnAddedFieldCanBeEditedAtOnce) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(1), Made)));
    const std::wstring Key = KeyBelow(On, KeyBelow(On, Made, 1), 1);
    EXPECT_NE(On.Text(Key).find(L"TAG= 11\r\nNAME= \"\"\r\nDATATYPE= TEXT\r\nLEVEL= 1\r\n"),
              std::wstring::npos);
    ASSERT_TRUE(Accepted(On.Put(Key, L"TAG= 20\r\nNAME= Z\r\nDATATYPE= DATE\r\nLEVEL= 1")));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"Z", L"B", L"C", L"D", L"E"}));
}

TEST_F(GroupedFields, WithoutAFreeTagNothingIsAdded) {
    ASSERT_TRUE(Accepted(On.Put(Leaf(), L"TAG= 2147483647\r\nNAME= A\r\nLEVEL= 1", false)));
    const std::wstring Before = On.Picture();
    std::wstring Made;
    EXPECT_TRUE(Refused(AddAt(On, Node(1), Made), 6, L"vdbcModule.GetFreeTag", L"Overflow"));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(Names().size(), 5U);
}

TEST_F(GroupedFields, FieldsMoveOnePlace) {
    std::wstring Made;
    const std::wstring Old = Node(3);
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_FALSE(On.Tree->HasNode(Old));
    EXPECT_EQ(Made, Node(2));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"C", L"B", L"D", L"E"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Made, -1, Made)));
    EXPECT_EQ(Made, Node(3));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"B", L"C", L"D", L"E"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Made, 0, Made)));
    EXPECT_EQ(Made, Node(4));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"B", L"D", L"C", L"E"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Made, 5, Made)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"B", L"C", L"D", L"E"}));
    EXPECT_EQ(On.Picture(), (Desk(L"TABLE", On.Object->Read()).Picture()));
}

TEST_F(GroupedFields, MovesMarkTheTree) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Node(1), -1, Made)));
    EXPECT_TRUE(On.Tree->Modified());
}

TEST_F(GroupedFields, AtTheEndsThereIsNowhereToGo) {
    const std::wstring Before = On.Picture();
    std::wstring Made;
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(5), -1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(5), 0, Made)));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"B", L"C", L"D", L"E"}));
}

TEST_F(GroupedFields, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A", L"C", L"D", L"E"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(4))));
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(1))));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"C", L"D"}));
    EXPECT_NE(On.Text(Leaf(2)).find(L"NAME= \"D\""), std::wstring::npos);
    ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{}));
    EXPECT_TRUE(KeysBelow(On, L"FIELDS").empty());
    EXPECT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
}

// The section of a field has one leaf and no folder of its own word to put a second one into.
TEST_F(GroupedFields, TheParametersOfAFieldTakeAFurtherLeafAndAreNotDeleted) {
    const std::wstring Folder = On.Tree->NodeParent(Leaf());
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Leaf(), Made)));
    EXPECT_EQ(KeysBelow(On, Folder), (std::vector<std::wstring>{Leaf(), Made}));
    EXPECT_EQ(On.Text(Made), On.Text(Leaf()));
    const std::wstring Before = On.Picture();
    EXPECT_TRUE(Accepted(DeleteAt(On, Leaf())));
    EXPECT_TRUE(Accepted(DeleteAt(On, Leaf(), true)));
    EXPECT_EQ(On.Picture(), Before);
}

}  // namespace
}  // namespace kv::test
