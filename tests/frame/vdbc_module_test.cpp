// The shared builders: flag list, value words, converters between words and bits, captions, the button
// branch.
#include <gtest/gtest.h>

#include "frame/vdbcModule.h"
#include "tests/frame/FakeTree.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

class Builders : public FrameTest {
  protected:
    FakeTree Tree;

    // What was offered, one keyword a line.
    std::wstring Offered() {
        std::wstring Out;
        std::wstring Row;
        for (const std::wstring& Each : Tree.Offered) {
            const std::size_t Blank = Each.rfind(L' ');
            if (Each.substr(0, Blank) != Row) {
                if (!Out.empty()) Out.append(L"\n");
                Row = Each.substr(0, Blank);
                Out.append(Row);
            }
            Out.append(Each.substr(Blank));
        }
        Tree.Offered.clear();
        return Out;
    }
};

const struct {
    std::int32_t Code;
    std::wstring_view Word;
} kActions[] = {
    {-1, L"NONE"},
    {1, L"MENU"},
    {2, L"BROWSE"},
    {3, L"HELP"},
    {4, L"RECORD"},
    {5, L"QUERY"},
    {6, L"BACK"},
    {7, L"QUIT"},
    {8, L""},
    {9, L"LINK"},
    {10, L"SHELL"},
    {11, L"SPAWN"},
    {12, L""},
    {13, L"LOANIC"},
    {14, L""},
    {15, L"QUERYRESULT"},
    {16, L"ADMIN"},
    {17, L"LANG"},
    {18, L"HTMLMOVE"},
    {19, L"LOGIN"},
    {20, L"HBACK"},
    {21, L"SPAWN16"},
    {22, L"SPAWNDOC"},
    {23, L"SPAWNDOC16"},
    {24, L"SHELLDOC"},
    {25, L""},
    {26, L"WEBCLIENT"},
    {27, L"DBSELECT"},
    {28, L"SETOPS"},
    {29, L"NAVIGATE"},
    {30, L"PASSWORD"},
    {31, L"CLIENTSETUP"},
    {32, L"LOANSTART"},
    {33, L"LOANQUIT"},
    {34, L"SHELLWIN"},
    {35, L"INFO"},
    {36, L"KVRSELECT"},
    {37, L"IMAGE"},
    {38, L"SEEK"},
    {39, L"OPEN"},
    {40, L"CLOSEALL"},
    {41, L"QUERYGET"},
    {42, L"BOOLSTEM"},
    {43, L"SHELF"},
    {44, L"IMAGELIST"},
    {45, L"ZOOMIN"},
    {46, L"ZOOMOUT"},
    {47, L"MAP"},
    {48, L"LOANACTION"},
    {49, L"IMAGEUM"},
    {50, L"IMAGETAG"},
    {0, L""},
    {51, L""},
};

TEST_F(Builders, TheFlagListHoldsTheTextOfABoolean) {
    SaveFlags List;
    List.Add(L"vecchio", L"ALTRO");
    EXPECT_TRUE(Succeeds(SetSaveFlags(List, true)));
    EXPECT_EQ(List.Count(), 1);
    EXPECT_EQ(*List.Find(L"SYNTAXON"), L"True");
    EXPECT_TRUE(StrictFlag(List));
    EXPECT_TRUE(Succeeds(SetSaveFlags(List, false)));
    EXPECT_EQ(List.Count(), 1);
    EXPECT_EQ(*List.Find(L"SYNTAXON"), L"False");
    EXPECT_FALSE(StrictFlag(List));
    EXPECT_FALSE(StrictFlag(SaveFlags{}));
}

TEST_F(Builders, ActionWordsByTheirCodes) {
    for (const auto& Row : kActions) EXPECT_EQ(WordOf(kActionWords, Row.Code), Row.Word) << Row.Code;
    EXPECT_EQ(std::size(kActionWords), 47U);
}

TEST_F(Builders, ActionsOfferedAreThoseOfOneToFortyNine) {
    std::wstring Expected = L"POPUPS AZIONE=";
    for (const auto& Row : kActions)
        if (Row.Code >= 1 && Row.Code <= 49 && !Row.Word.empty()) Expected.append(L" ").append(Row.Word);
    EXPECT_TRUE(Succeeds(ActionDefaults(Tree, L"POPUPS", L"AZIONE=")));
    EXPECT_EQ(Tree.Offered.size(), 45U);
    EXPECT_EQ(Narrow(Offered()), Narrow(Expected));
    EXPECT_TRUE(Succeeds(HtmlDefaults(Tree, L"HTML")));
    Expected.replace(0, std::wstring_view(L"POPUPS AZIONE=").size(), L"HTML ACTION=");
    EXPECT_EQ(Narrow(Offered()), Narrow(Expected));
}

TEST_F(Builders, OtherWordsOffered) {
    EXPECT_TRUE(Succeeds(BooleanDefaults(Tree, L"PARMS", L"LOCKED=")));
    EXPECT_EQ(Offered(), L"PARMS LOCKED= FALSE TRUE");
    EXPECT_TRUE(Succeeds(FilterDefaults(Tree, L"FILTERS")));
    EXPECT_EQ(Offered(), L"FILTERS AUTOMATIC= FALSE TRUE\nFILTERS MERGEWITH= AND OR");
    EXPECT_TRUE(Succeeds(ToolTipsDefaults(Tree, L"PARMS")));
    EXPECT_EQ(Offered(), L"PARMS TOOLTIPS= NONE CHECK FOLDER LINK COMMANDS LOANLINK");
    EXPECT_TRUE(Succeeds(TipsDefaults(Tree, L"PARMS")));
    EXPECT_EQ(Offered(), L"PARMS TIPSALIGN= NONE LEFT RIGHT TOP BOTTOM\nPARMS TIPSBUTTONS= BACK CLOSE HOME");
    EXPECT_TRUE(Succeeds(TipsDefaults(Tree, L"PARMS", L"LOANALIGN=", L"")));
    EXPECT_EQ(Offered(), L"PARMS LOANALIGN= NONE LEFT RIGHT TOP BOTTOM");
    EXPECT_TRUE(Succeeds(TipsDefaults(Tree, L"PARMS", L"", L"LOANBUTTONS=")));
    EXPECT_EQ(Offered(), L"PARMS LOANBUTTONS= BACK CLOSE HOME");
    EXPECT_TRUE(Succeeds(TipsDefaults(Tree, L"PARMS", L"", L"")));
    EXPECT_EQ(Offered(), L"");
}

TEST_F(Builders, TheFirstRefusalStopsTheOffer) {
    const auto StopsAt = [&](std::size_t At, auto&& Offer) {
        Tree.Offered.clear();
        Tree.RefuseAt = At;
        EXPECT_TRUE(Offer());
        EXPECT_EQ(Tree.Offered.size(), At);
        Tree.RefuseAt = 0;
    };
    StopsAt(1, [&] { return BooleanDefaults(Tree, L"P", L"K="); });
    StopsAt(1, [&] { return FilterDefaults(Tree, L"P"); });
    StopsAt(3, [&] { return FilterDefaults(Tree, L"P"); });
    StopsAt(7, [&] { return ActionDefaults(Tree, L"P", L"K="); });
    StopsAt(2, [&] { return HtmlDefaults(Tree, L"P"); });
    StopsAt(6, [&] { return ToolTipsDefaults(Tree, L"P"); });
    StopsAt(5, [&] { return TipsDefaults(Tree, L"P"); });
    StopsAt(6, [&] { return TipsDefaults(Tree, L"P"); });
}

TEST_F(Builders, AFaultWhileOfferingIsToldByTheInnermost) {
    const auto Tells = [&](std::wstring_view Source, auto&& Offer) {
        Tree.Offered.clear();
        Tree.ThrowAt = 1;
        const bool Failed = Offer();
        EXPECT_TRUE(Failed);
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, Source);
        CoreUtil::Instance().ForgetError();
    };
    Tells(L"vdbcModule.BooleanDefaults", [&] { return BooleanDefaults(Tree, L"P", L"K="); });
    Tells(L"vdbcModule.BooleanDefaults", [&] { return FilterDefaults(Tree, L"P"); });
    Tells(L"vdbcModule.ActionDefaults", [&] { return HtmlDefaults(Tree, L"P"); });
    Tells(L"vdbcModule.ToolTipsDefaults", [&] { return ToolTipsDefaults(Tree, L"P"); });
    Tells(L"vdbcModule.TipsDefaults", [&] { return TipsDefaults(Tree, L"P"); });
}

TEST_F(Builders, ToolTipWords) {
    const struct {
        std::wstring_view Value;
        std::int32_t Bits;
    } kRows[] = {{L"", 0},
                 {L"NONE", 0},
                 {L"CHECK", 1},
                 {L"FOLDER", 2},
                 {L"LINK", 4},
                 {L"COMMANDS", 8},
                 {L"LOANLINK", 16},
                 {L"CHECK|LINK", 5},
                 {L"LOANLINK | CHECK|CHECK", 17},
                 {L"CHECK|", 1},
                 {L"CHECK|FOLDER|LINK|COMMANDS|LOANLINK", 31}};
    for (const auto& Row : kRows) {
        std::int32_t Bits = 99;
        EXPECT_TRUE(Succeeds(ToolTipsSet(Row.Value, Bits))) << Narrow(Row.Value);
        EXPECT_EQ(Bits, Row.Bits) << Narrow(Row.Value);
    }
}

TEST_F(Builders, AnUnknownToolTipIsToldAsATipButton) {
    const struct {
        std::wstring_view Value;
        std::wstring_view Text;
    } kRows[] = {
        {L"NONE|CHECK", L"Valore sconosciuto per il parametro TIPSBUTTONS=(CHECK)"},
        {L"CHECK|NONE", L"Valore sconosciuto per il parametro TIPSBUTTONS=()"},
        {L"FORSE", L"Valore sconosciuto per il parametro TIPSBUTTONS=()"},
        {L"check", L"Valore sconosciuto per il parametro TIPSBUTTONS=()"},
        {L"CHECK|BACK|LINK", L"Valore sconosciuto per il parametro TIPSBUTTONS=(LINK)"},
    };
    for (const auto& Row : kRows) {
        std::int32_t Bits = 0;
        EXPECT_TRUE(
            FailsWith(ToolTipsSet(Row.Value, Bits),
                      {.Number = 20000, .Source = L"vdbcModule.ToolTipsSet", .Description = Row.Text}))
            << Narrow(Row.Value);
    }
}

TEST_F(Builders, TipButtonWords) {
    const struct {
        std::wstring_view Value;
        std::int32_t Bits;
    } kRows[] = {{L"", 0}, {L"NONE", 0}, {L"BACK", 1}, {L"CLOSE", 2}, {L"HOME", 4}, {L"HOME | BACK", 5}};
    for (const auto& Row : kRows) {
        std::int32_t Bits = 99;
        EXPECT_TRUE(Succeeds(TipsSetButtons(Row.Value, Bits)));
        EXPECT_EQ(Bits, Row.Bits);
    }
    std::int32_t Bits = 0;
    EXPECT_TRUE(FailsWith(TipsSetButtons(L"CHECK|HOME", Bits),
                          {.Number = 20000,
                           .Source = L"vdbcModule.TipsSetButtons",
                           .Description = L"Valore sconosciuto per il parametro TIPSBUTTONS=(HOME)"}));
    EXPECT_TRUE(FailsWith(TipsSetButtons(L"home", Bits),
                          {.Number = 20000,
                           .Source = L"vdbcModule.TipsSetButtons",
                           .Description = L"Valore sconosciuto per il parametro TIPSBUTTONS=()"}));
}

TEST_F(Builders, AlignmentWordsAreFolded) {
    const struct {
        std::wstring_view Value;
        std::int32_t Code;
    } kRows[] = {{L"", 0},       {L"NONE", 0}, {L"none", 0}, {L"TOP", 1},
                 {L"Bottom", 2}, {L"left", 3}, {L"LEFT", 3}, {L"RIGHT", 4}};
    for (const auto& Row : kRows) {
        std::int32_t Code = 99;
        EXPECT_TRUE(Succeeds(TipsSetAlignment(Row.Value, Code)));
        EXPECT_EQ(Code, Row.Code) << Narrow(Row.Value);
    }
    std::int32_t Code = 7;
    EXPECT_TRUE(FailsWith(TipsSetAlignment(L"CENTRO", Code),
                          {.Number = 20000,
                           .Source = L"vdbcModule.TipsSetAlignment",
                           .Description = L"Valore sconosciuto per il parametro TIPSALIGN=(CENTRO)"}));
    EXPECT_TRUE(FailsWith(TipsSetAlignment(L"LEFT|TOP", Code, L"LOANALIGN="),
                          {.Number = 20000,
                           .Source = L"vdbcModule.TipsSetAlignment",
                           .Description = L"Valore sconosciuto per il parametro LOANALIGN=(LEFT|TOP)"}));
    EXPECT_EQ(Code, 7);
}

TEST_F(Builders, LinesOfTheTips) {
    const auto Line = [](auto&& Write) {
        std::wstring Buffer = L"prima\r\n";
        EXPECT_TRUE(Succeeds(Write(Buffer)));
        EXPECT_EQ(Buffer.rfind(L"prima\r\n", 0), 0U);
        return Buffer.substr(7);
    };
    EXPECT_EQ(Line([](std::wstring& B) { return ToolTipsGet(0, B, 0); }), L"TOOLTIPS= NONE\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return ToolTipsGet(31, B, 2); }),
              L"\t\tTOOLTIPS= CHECK|FOLDER|LINK|COMMANDS|LOANLINK\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return ToolTipsGet(20, B, 1); }), L"\tTOOLTIPS= LINK|LOANLINK\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return ToolTipsGet(32, B, 0); }), L"TOOLTIPS= NONE\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return TipsGetButtons(0, B, 0); }), L"TIPSBUTTONS= NONE\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return TipsGetButtons(7, B, 1); }),
              L"\tTIPSBUTTONS= BACK|CLOSE|HOME\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return TipsGetButtons(5, B, 0); }), L"TIPSBUTTONS= BACK|HOME\r\n");
    const std::wstring_view kWords[] = {L"NONE", L"TOP", L"BOTTOM", L"LEFT", L"RIGHT", L"NONE"};
    for (std::int32_t Code = 0; Code <= 5; ++Code)
        EXPECT_EQ(Line([&](std::wstring& B) { return TipsGetAlignment(Code, B, 1); }),
                  L"\tTIPSALIGN= " + std::wstring(kWords[Code]) + L"\r\n");
    EXPECT_EQ(Line([](std::wstring& B) { return TipsGetAlignment(-1, B, 0); }), L"TIPSALIGN= NONE\r\n");
    for (const std::wstring_view Keyword : {L"TOOLALIGN=", L"LOANALIGN="})
        EXPECT_EQ(Line([&](std::wstring& B) { return TipsGetAlignment(3, B, 0, Keyword); }),
                  std::wstring(Keyword) + L" LEFT\r\n");
}

TEST_F(Builders, TipsWantAnAlignmentAndAWidth) {
    constexpr std::wstring_view kAlign = L"Selezionare una modalità di allineamento per TIPS=.";
    constexpr std::wstring_view kWidth = L"Ampiezza relativa per TIPS= non corretta (10%-90%).";
    constexpr std::wstring_view kSource = L"vdbcModule.TipsAlignCheck";
    EXPECT_TRUE(Succeeds(TipsAlignCheck(L"", 0, 0)));
    EXPECT_TRUE(Succeeds(TipsAlignCheck(L"", 0, 500)));
    for (const std::int32_t Width : {10, 50, 90}) EXPECT_TRUE(Succeeds(TipsAlignCheck(L"X", 3, Width)));
    for (const std::int32_t Width : {9, 91, 0, -10, 100})
        EXPECT_TRUE(FailsWith(TipsAlignCheck(L"X", 1, Width),
                              {.Number = 20000, .Source = kSource, .Description = kWidth}));
    for (const std::int32_t Width : {50, 0})
        EXPECT_TRUE(FailsWith(TipsAlignCheck(L"X", 0, Width),
                              {.Number = 20000, .Source = kSource, .Description = kAlign}));
}

TEST_F(Builders, Captions) {
    struct {
        std::wstring Text = L"Un testo di più di venti lettere";
        std::wstring Language = L"ITA";
        std::wstring FileName = L"modelli/pagina-iniziale.htm";
        std::wstring Code = L"CERCA";
        std::wstring Name = L"Arial";
        std::int32_t Size = 12;
        std::int32_t Tag = 42;
    } Of;
    EXPECT_EQ(FieldCaptionNode(Of), L"Campo: Un testo di più di venti lettere");
    EXPECT_EQ(FieldNode(Of), L"Campo: 00042");
    EXPECT_EQ(CaptionNode(Of), L"Etichetta: [ITA] Un testo di più di v");
    EXPECT_EQ(TitleNode(Of), L"Titolo: [ITA] Un testo di più di v");
    EXPECT_EQ(MessageNode(Of), L"Messaggio: [ITA] Un testo di più di v");
    EXPECT_EQ(HtmlNode(Of), L"File: [ITA] modelli/pagina-inizi");
    EXPECT_EQ(CommandNode(Of), L"Pulsante: CERCA");
    EXPECT_EQ(FilterNode(Of), L"Filtro: Arial");
    EXPECT_EQ(FontNode(Of), L"Font: Arial, 12");
    Of.Text = L"venti lettere giuste";
    EXPECT_EQ(MessageNode(Of), L"Messaggio: [ITA] venti lettere giuste");
    Of.Text.clear();
    Of.Language.clear();
    EXPECT_EQ(MessageNode(Of), L"Messaggio: [] ");
    Of.Tag = 123456;
    EXPECT_EQ(FieldNode(Of), L"Campo: 123456");
}

}  // namespace
}  // namespace kv::test
