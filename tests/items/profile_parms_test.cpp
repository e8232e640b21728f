// The parameters of a display profile: every keyword, strict and lax, and how they are shown.
#include <gtest/gtest.h>

#include "tests/items/Profile.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diProfile.SaveParm";

class ProfileParms : public Profile {
  protected:
    std::wstring Key = On.Leaf(L"PARMS");

    std::wstring Line(std::wstring_view Keyword) { return LineOf(Key, Keyword); }
    // Saves one line, with the table that strict mode wants.
    Outcome Put(const std::wstring& Text, bool Strict = true) {
        return On.Put(Key, L"TABLE= LIBRI\r\n" + Text, Strict);
    }
};

TEST_F(ProfileParms, DefaultsOfANewProfile) {
    Desk Empty(L"PROFILE");
    EXPECT_TRUE(MatchesGolden("section/PROFILE.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
}

TEST_F(ProfileParms, EveryKeywordIsStoredAndShown) {
    const std::wstring Text = Lines({
        L"ALIGN= left",
        L"WIDTH= 80",
        L"LARGEBUTT= vero",
        L"FLAGS= refreshtips",
        L"TABLE= \"libri\"",
        L"HELP= \"aiuto\"",
        L"HELPWWW= \"pagina\"",
        L"TIPS= \"consigli\"",
        L"TIPSALIGN= left",
        L"TIPSWIDTH= 30",
        L"TIPSBUTTONS= BACK|HOME",
        L"TOOLALIGN= TOP",
        L"TOOLTIPS= CHECK|LOANLINK",
        L"LOANHELP= \"aiuto2\"",
        L"LOANTIPS= \"prestiti\"",
        L"LOANALIGN= bottom",
        L"LOANWIDTH= 40",
        L"LOANQUIT= TRUE",
        L"LINKEDPAGE= \"pag\"",
        L"LINKEDSERVER= \"Srv\"",
        L"LOANLINKSONLY= \"A||b\"",
        L"LOANSORTBY= \"x||y\"",
        L"MASTER= ita=\"scheda\"",
        L"MASTER= Eng=card",
        L"MIRROROF= \"Altro\"",
        L"IMAGEOPTION= aligntop|links",
        L"IMAGELISTFILE= \"Elenco.txt\"",
        L"IMAGEFILTER= \"jpg\"",
        L"IMAGETHUMB= \"Mini\"",
        L"IMAGEKEYFIELD= \"Chiave\"",
        L"IMAGERANGE= 3",
        L"IMAGEROOT= \"C:\\Img\"",
        L"IMAGEURL= \"http://x\"",
        L"IMAGESPERPAGE= 4",
        L"IMAGESPERREC= 5",
        L"IMAGEEXT= \".jpg\"",
        L"IMAGESTEMPL= \"a.htm\"",
        L"IMAGESTEMPLBUTT= \"b.htm\"",
        L"IMAGESTEMPLBUTT2= \"c.htm\"",
        L"IMAGESFULLTEMPL= \"d.htm\"",
        L"IMAGEMAXWIDTH= 640",
        L"IMAGEMAXHEIGHT= 480.5",
        L"IMAGEZOOM= \"  due  \"",
        L"IMAGESLIMIT= 9",
        L"IMAGEFORMAT= \"Png\"",
    });
    ASSERT_TRUE(Accepted(On.Put(Key, Text)));
    EXPECT_TRUE(MatchesGolden("section/PROFILE.full.txt", On.Text(Key)));
    const RegObject& Now = SavedBy(On);
    const std::pair<const wchar_t*, const wchar_t*> kTexts[] = {{L"Help", L"AIUTO"},
                                                                {L"HelpWww", L"PAGINA"},
                                                                {L"LinkedPage", L"PAG"},
                                                                {L"LinkedServer", L"Srv"},
                                                                {L"LoanHelp", L"AIUTO2"},
                                                                {L"LoanLinksOnly", L"A|b"},
                                                                {L"LoanSortBy", L"x|y"},
                                                                {L"LoanTips", L"PRESTITI"},
                                                                {L"MirrorOf", L"Altro"},
                                                                {L"Table", L"LIBRI"},
                                                                {L"Tips", L"CONSIGLI"},
                                                                {L"ImageListFile", L"Elenco.txt"},
                                                                {L"ImageFilter", L"JPG"},
                                                                {L"ImageThumb", L"Mini"},
                                                                {L"ImageKeyField", L"Chiave"},
                                                                {L"ImageRoot", L"C:\\Img"},
                                                                {L"ImageUrl", L"http://x"},
                                                                {L"ImagesTempl", L"a.htm"},
                                                                {L"ImageExt", L".jpg"},
                                                                {L"ImagesTemplButt", L"b.htm"},
                                                                {L"ImagesTemplButt2", L"c.htm"},
                                                                {L"ImagesFullTempl", L"d.htm"},
                                                                {L"ImageFormat", L"Png"},
                                                                {L"ImageZoom", L"due"}};
    for (const auto& [Name, Value] : kTexts) EXPECT_EQ(TextOf(Now, Name), Value) << Narrow(Name);
    const std::pair<const wchar_t*, std::int32_t> kNumbers[] = {
        {L"Align", 3},         {L"Flags", 1},        {L"LoanAlign", 2},       {L"LoanWidth", 40},
        {L"TipsAlign", 3},     {L"TipsButtons", 5},  {L"TipsWidth", 30},      {L"ToolAlign", 1},
        {L"ToolTips", 17},     {L"Width", 80},       {L"ImageOption", 0x22},  {L"ImageRange", 3},
        {L"ImagesPerPage", 4}, {L"ImagesPerRec", 5}, {L"ImageMaxWidth", 640}, {L"ImageMaxHeight", 480},
        {L"ImagesLimit", 9}};
    for (const auto& [Name, Value] : kNumbers) EXPECT_EQ(LongOf(Now, Name), Value) << Narrow(Name);
    EXPECT_TRUE(BoolOf(Now, L"LargeButt"));
    EXPECT_TRUE(BoolOf(Now, L"LoanQuit"));
    ASSERT_EQ(Names(L"Masters"), (Words{L"ITA", L"ENG"}));
    EXPECT_EQ(TextOf(ListOf(Now, L"Masters").at(0), L"Text"), L"SCHEDA");
    EXPECT_EQ(TextOf(ListOf(Now, L"Masters").at(1), L"Text"), L"CARD");
    EXPECT_EQ(Names(L"Formats").size(), 2U) << "the lists stay";
    ExpectFixpoint(On, Key);
}

TEST_F(ProfileParms, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(Put({})));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(LongOf(Now, L"Align"), 0);
    EXPECT_EQ(LongOf(Now, L"Width"), 0);
    EXPECT_EQ(ListOf(Now, L"Masters").size(), 0U);
    EXPECT_EQ(Line(L"ALIGN="), L"ALIGN= RIGHT");
    EXPECT_EQ(Line(L"WIDTH="), L"WIDTH= ADJUST");
    EXPECT_EQ(Line(L"MASTER="), L"MASTER= ");
}

TEST_F(ProfileParms, RefusalsOfAValue) {
    // In strict mode; lax mode passes over the line, or the word.
    const struct {
        const wchar_t* Line;
        const wchar_t* Shown;
        const wchar_t* LaxLine;
    } kRows[] = {
        {L"ALIGN= CENTER", L"ALIGN=(CENTER)", L"ALIGN= RIGHT"},
        {L"ALIGN= \"LEFT\"", L"ALIGN=(\"LEFT\")", L"ALIGN= RIGHT"},
        {L"ALIGN=", L"ALIGN=()", L"ALIGN= RIGHT"},
        {L"WIDTH= 0", L"WIDTH=(0)", L"WIDTH= ADJUST"},
        {L"WIDTH= -4", L"WIDTH=(-4)", L"WIDTH= ADJUST"},
        {L"WIDTH= largo", L"WIDTH=(LARGO)", L"WIDTH= ADJUST"},
        {L"FLAGS= REFRESHTIPS|ALTRO", L"FLAGS=()", L"FLAGS= REFRESHTIPS"},
        {L"FLAGS= NONE|REFRESHTIPS", L"FLAGS=(REFRESHTIPS)", L"FLAGS= REFRESHTIPS"},
        {L"LARGEBUTT= forse", L"LARGEBUTT=(FORSE)", L"LARGEBUTT= TRUE"},
        {L"LOANQUIT= si", L"LOANQUIT=(SI)", L"LOANQUIT= TRUE"},
        {L"TIPSWIDTH= 101", L"TIPSWIDTH=(101)", L"TIPSWIDTH= 10"},
        {L"TIPSWIDTH= -1", L"TIPSWIDTH=(-1)", L"TIPSWIDTH= 10"},
        {L"LOANWIDTH= 101", L"LOANWIDTH=(101)", L"LOANWIDTH= 10"},
        {L"LOANWIDTH= -1", L"LOANWIDTH=(-1)", L"LOANWIDTH= 10"},
        {L"IMAGEOPTION= ALIGNTOP|ALTRO", L"IMAGEOPTION=()", L"IMAGEOPTION= ALIGNTOP"},
        {L"IMAGEOPTION= NONE|ALIGNTOP", L"IMAGEOPTION=(ALIGNTOP)", L"IMAGEOPTION= ALIGNTOP"},
        {L"MASTER= ita=", L"MASTER=(ita=)", L"MASTER= "},
        {L"MASTER= =x", L"MASTER=(=x)", L"MASTER= "},
        {L"MASTER= ita=\"\"", L"MASTER=(ita=\"\")", L"MASTER= "},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Line));
        const std::wstring Before = On.Text(Key);
        EXPECT_TRUE(Refused(Put(Row.Line), 20000, kSource,
                            L"Valore sconosciuto per il parametro " + std::wstring(Row.Shown), 2));
        EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
        ASSERT_TRUE(Accepted(Put(Row.Line, false)));
        const std::wstring Keyword = std::wstring(Row.Line).substr(0, std::wstring(Row.Line).find(L'=') + 1);
        EXPECT_EQ(Narrow(Line(Keyword)), Narrow(Row.LaxLine));
    }
}

TEST_F(ProfileParms, AlignmentsButtonsAndTipsAreRefusedInEitherMode) {
    const struct {
        const wchar_t* Line;
        const wchar_t* Source;
        const wchar_t* Shown;
    } kRows[] = {
        {L"TIPSALIGN= CENTRO", L"vdbcModule.TipsSetAlignment", L"TIPSALIGN=(CENTRO)"},
        {L"LOANALIGN= CENTRO", L"vdbcModule.TipsSetAlignment", L"TIPSALIGN=(CENTRO)"},
        {L"TOOLALIGN= CENTRO", L"vdbcModule.TipsSetAlignment", L"TOOLALIGN=(CENTRO)"},
        {L"TIPSBUTTONS= BACK|ALTRO", L"vdbcModule.TipsSetButtons", L"TIPSBUTTONS=()"},
        {L"TIPSBUTTONS= back", L"vdbcModule.TipsSetButtons", L"TIPSBUTTONS=()"},
        {L"TOOLTIPS= NONE|CHECK", L"vdbcModule.ToolTipsSet", L"TIPSBUTTONS=(CHECK)"},
    };
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false})
            EXPECT_TRUE(Refused(Put(Row.Line, Strict), 20000, Row.Source,
                                L"Valore sconosciuto per il parametro " + std::wstring(Row.Shown), 2))
                << Narrow(Row.Line);
    for (const wchar_t* const Fine :
         {L"TIPSALIGN= left", L"TIPSALIGN=", L"LOANALIGN= none", L"TOOLALIGN= Right", L"TIPSBUTTONS= NONE",
          L"TIPSBUTTONS=", L"TOOLTIPS= CHECK|FOLDER"})
        EXPECT_TRUE(Accepted(Put(Fine))) << Narrow(Fine);
}

TEST_F(ProfileParms, Repeats) {
    std::wstring Shown = On.Text(Key);
    for (std::size_t At = 0; At < Shown.size();) {
        const std::size_t End = Shown.find(L"\r\n", At);
        const std::wstring Row = Shown.substr(At, End - At);
        At = End + 2;
        if (Row.front() == L'\'') continue;
        const std::wstring Keyword = Row.substr(0, Row.find(L'=') + 1);
        const Outcome Got = On.Put(Key, Keyword + L" 1\r\n" + Keyword + L" 1", false);
        SCOPED_TRACE(Narrow(Row));
        if (Keyword == L"MASTER=") {
            EXPECT_TRUE(Refused(Got, 20018, L"vDesignPar.GetFieldValue", L"Errore di sintassi: 1.", 1));
        } else if (Keyword.find(L"ALIGN=") != std::wstring::npos && Keyword != L"ALIGN=") {
            EXPECT_TRUE(Refused(Got, 20000, L"vdbcModule.TipsSetAlignment",
                                L"Valore sconosciuto per il parametro " +
                                    (Keyword == L"LOANALIGN=" ? L"TIPSALIGN=" : Keyword) + L"(1)",
                                1));
        } else if (Keyword == L"TOOLTIPS=" || Keyword == L"TIPSBUTTONS=") {
            EXPECT_TRUE(
                Refused(Got, 20000,
                        Keyword == L"TOOLTIPS=" ? L"vdbcModule.ToolTipsSet" : L"vdbcModule.TipsSetButtons",
                        L"Valore sconosciuto per il parametro TIPSBUTTONS=()", 1));
            EXPECT_TRUE(Refused(On.Put(Key, Keyword + L"\r\n" + Keyword, false), 20000, kSource,
                                L"Ripetizone del parametro " + Keyword + L".", 2));
        } else {
            EXPECT_TRUE(Refused(Got, 20000, kSource, L"Ripetizone del parametro " + Keyword + L".", 2));
        }
    }
    ExpectRefusals(On, Key, kSource,
                   {{L"NOME= A", L"Parametro non riconosciuto: NOME=A", 1},
                    {L"table= A", L"Parametro non riconosciuto: table=A", 1}});
}

TEST_F(ProfileParms, Masters) {
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Refused(Put(L"MASTER= ita=a\r\nMASTER= ENG=b\r\nMASTER= ITA=c", Strict), 20000, kSource,
                            L"Il master ITA viene specificata più di una volta.", 4));
        EXPECT_TRUE(Refused(Put(L"MASTER= ABC", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: ABC.", 2));
        ASSERT_TRUE(Accepted(Put(L"MASTER=\r\nMASTER= a b =\"x=y\"\r\nMASTER=", Strict)));
        EXPECT_EQ(Names(L"Masters"), Words{L"A B"});
        EXPECT_EQ(Line(L"MASTER="), L"MASTER= A B=\"X=Y\"");
        ExpectFixpoint(On, Key);
    }
    // A comment mark in front of the name makes it none.
    EXPECT_TRUE(Refused(Put(L"MASTER= 'a=b"), 20000, kSource,
                        L"Valore sconosciuto per il parametro MASTER=('a=b)", 2));
    EXPECT_TRUE(Accepted(Put(L"MASTER= 'a=b", false)));
}

TEST_F(ProfileParms, ImageOptions) {
    const struct {
        const wchar_t* Typed;
        std::int32_t Code;
        const wchar_t* Shown;
    } kRows[] = {
        {L"", 0, L"NONE"},
        {L"none", 0, L"NONE"},
        {L"ALIGNBOTTOM", 1, L"ALIGNBOTTOM"},
        {L"ALIGNTOP", 2, L"ALIGNTOP"},
        {L"ALIGNLEFT", 3, L"ALIGNLEFT"},
        {L"ALIGNRIGHT", 4, L"ALIGNRIGHT"},
        {L"links|alignright", 0x24, L"ALIGNRIGHT|LINKS"},
        {L"LINKS", 0x20, L"NONE"},
    };
    for (const auto& Row : kRows) {
        for (const bool Strict : {true, false}) {
            ASSERT_TRUE(Accepted(Put(L"IMAGEOPTION= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(LongOf(SavedBy(On), L"ImageOption"), Row.Code) << Narrow(Row.Typed);
            EXPECT_EQ(Line(L"IMAGEOPTION="), L"IMAGEOPTION= " + std::wstring(Row.Shown));
        }
    }
    // Shown as NONE, LINKS alone is lost with the next save.
    ASSERT_TRUE(Accepted(On.Put(Key, On.Text(Key))));
    EXPECT_EQ(LongOf(SavedBy(On), L"ImageOption"), 0);
    for (const wchar_t* const Two :
         {L"ALIGNLEFT|ALIGNTOP", L"ALIGNTOP|ALIGNTOP", L"LINKS|ALIGNTOP|ALIGNLEFT"})
        EXPECT_TRUE(Refused(Put(L"IMAGEOPTION= " + std::wstring(Two)), 20000, kSource,
                            L"Conflitto nei parametri di IMAGEOPTION=", 2));
    ASSERT_TRUE(Accepted(Put(L"IMAGEOPTION= ALIGNTOP|ALIGNBOTTOM", false)));
    EXPECT_EQ(LongOf(SavedBy(On), L"ImageOption"), 3);
    EXPECT_EQ(Line(L"IMAGEOPTION="), L"IMAGEOPTION= ALIGNLEFT");
}

TEST_F(ProfileParms, RenderingRaisesWidthsUnderTen) {
    ASSERT_TRUE(Accepted(Put(L"TIPSWIDTH= 5\r\nLOANWIDTH= 0")));
    EXPECT_EQ(LongOf(SavedBy(On), L"TipsWidth"), 5);
    EXPECT_EQ(LongOf(SavedBy(On), L"LoanWidth"), 0);
    EXPECT_EQ(Line(L"TIPSWIDTH="), L"TIPSWIDTH= 10");
    EXPECT_EQ(Line(L"LOANWIDTH="), L"LOANWIDTH= 10");
    EXPECT_EQ(LongOf(SavedBy(On), L"TipsWidth"), 10);
    EXPECT_EQ(LongOf(SavedBy(On), L"LoanWidth"), 10);
    ASSERT_TRUE(Accepted(Put(L"TIPSWIDTH= 100\r\nLOANWIDTH= 11")));
    EXPECT_EQ(Line(L"TIPSWIDTH="), L"TIPSWIDTH= 100");
    EXPECT_EQ(Line(L"LOANWIDTH="), L"LOANWIDTH= 11");
}

TEST_F(ProfileParms, ChecksAtTheEnd) {
    EXPECT_TRUE(Refused(On.Put(Key, L"TIPS= A"), 20000, kSource,
                        L"Non è stato specificato il nome di una TABLE.", 0));
    const std::wstring Align = L"Selezionare una modalità di allineamento per TIPS=.";
    const std::wstring Width = L"Ampiezza relativa per TIPS= non corretta (10%-90%).";
    const struct {
        const wchar_t* Text;
        const std::wstring& Message;
    } kRows[] = {
        {L"TIPS= A", Align},
        {L"TIPS= A\r\nTIPSALIGN= TOP", Width},
        {L"TIPS= A\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= 5", Width},
        {L"TIPS= A\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= 91", Width},
        {L"LOANTIPS= A", Align},
        {L"LOANTIPS= A\r\nLOANALIGN= TOP\r\nLOANWIDTH= 9", Width},
    };
    for (const auto& Row : kRows) {
        EXPECT_TRUE(Refused(Put(Row.Text), 20000, L"vdbcModule.TipsAlignCheck", Row.Message));
        EXPECT_TRUE(Accepted(Put(Row.Text, false))) << Narrow(Row.Text);
    }
    for (const wchar_t* const Bound : {L"10", L"90"})
        EXPECT_TRUE(Accepted(Put(L"TIPS= A\r\nTIPSALIGN= TOP\r\nTIPSWIDTH= " + std::wstring(Bound))));
    EXPECT_TRUE(Accepted(On.Put(Key, L"TIPS= A", false))) << "lax mode needs no table";
    EXPECT_EQ(TextOf(SavedBy(On), L"Table"), L"");
}

TEST_F(ProfileParms, BooleanWords) {
    for (const wchar_t* const Keyword : {L"LARGEBUTT=", L"LOANQUIT="})
        for (const bool Strict : {true, false})
            for (const auto& [Typed, Shown] :
                 {std::pair{L"vero", L"TRUE"}, {L"TRUE", L"TRUE"}, {L"falso", L"FALSE"}, {L"", L"FALSE"}}) {
                ASSERT_TRUE(Accepted(Put(std::wstring(Keyword) + L" " + Typed, Strict)));
                EXPECT_EQ(Line(Keyword), std::wstring(Keyword) + L" " + Shown);
            }
}

TEST_F(ProfileParms, DoubleBarsBecomeSingleOnesInOnePass) {
    const struct {
        const wchar_t* Typed;
        const wchar_t* Kept;
    } kRows[] = {{L"a||b", L"a|b"}, {L"a|||b", L"a||b"}, {L"||||", L"||"}, {L"a|b", L"a|b"}, {L"||", L"|"}};
    for (const wchar_t* const Keyword : {L"LOANLINKSONLY=", L"LOANSORTBY="})
        for (const auto& Row : kRows) {
            ASSERT_TRUE(Accepted(Put(std::wstring(Keyword) + L" \"" + Row.Typed + L"\"")));
            EXPECT_EQ(Line(Keyword), std::wstring(Keyword) + L" \"" + Row.Kept + L"\"");
        }
}

TEST_F(ProfileParms, NumbersAreRoundedAndOverflowIsAFault) {
    for (const wchar_t* const Keyword : {L"IMAGERANGE=", L"IMAGESPERPAGE=", L"IMAGESPERREC=", L"IMAGESLIMIT=",
                                         L"IMAGEMAXWIDTH=", L"IMAGEMAXHEIGHT="}) {
        ASSERT_TRUE(Accepted(Put(std::wstring(Keyword) + L" 2.5")));
        EXPECT_EQ(Line(Keyword), std::wstring(Keyword) + L" 2");
        ASSERT_TRUE(Accepted(Put(std::wstring(Keyword) + L" -7")));
        EXPECT_EQ(Line(Keyword), std::wstring(Keyword) + L" -7");
        EXPECT_TRUE(Refused(Put(std::wstring(Keyword) + L" 3000000000", false), 6, kSource, L"Overflow", 2));
    }
    ASSERT_TRUE(Accepted(Put(L"WIDTH= 12.6")));
    EXPECT_EQ(Line(L"WIDTH="), L"WIDTH= 13");
    ASSERT_TRUE(Accepted(Put(L"WIDTH= plain")));
    EXPECT_EQ(LongOf(SavedBy(On), L"Width"), -1);
}

}  // namespace
}  // namespace kv::test
