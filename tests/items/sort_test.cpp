#include <gtest/gtest.h>

#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"
#include "items/definitions/diSort.h"
#include "tests/support/Desk.h"

namespace kv::test {
namespace {

constexpr wchar_t kWeightText[] =
    L"Il peso dev'essere equivalente al codice di un carattere alfanumerico (30-39, 41-5A) o dello spazio "
    L"(20) "
    L"oppure nullo (00). (Carattere";

class SortItem : public ::testing::Test {
  protected:
    Desk On{L"SORT"};

    std::wstring Parms() const { return On.Leaf(L"PARMS", 1); }
    const std::wstring Table = L"PARMS 0";

    /// The record as it would be stored now.
    const RegObject& Stored() {
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
        return On.Object->Read();
    }
    std::int32_t Switches() { return std::get<std::int32_t>(*Stored().Value(L"Switches")); }
    std::wstring Weights() { return std::get<std::wstring>(*Stored().Value(L"Table")); }
};

TEST_F(SortItem, TreeAndChoices) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"    PARMS 0 \"Tabella\" 9,9\n"));
    EXPECT_EQ(Narrow(On.Offered()), Narrow(L"PARMS NONUMERIC= FALSE TRUE\n"
                                           L"PARMS NOMASK= FALSE TRUE\n"
                                           L"PARMS NOTABLE= FALSE TRUE\n"
                                           L"PARMS FLAGS= NONE\n"));
}

TEST_F(SortItem, ParametersRenderAllKeywordsAlways) {
    EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Lines({
                                            L"NONUMERIC= FALSE",
                                            L"NOTABLE= FALSE",
                                            L"NOMASK= FALSE",
                                            L"NOSPACES= FALSE",
                                            L"FLAGS= NONE",
                                            L"MIRROROF= \"\"",
                                            L"'[ID= 7]",
                                            L"'[NAME= PROVA]",
                                            L"'[VERSION= 3]",
                                        })));
}

TEST_F(SortItem, EachSwitchHasItsBit) {
    const struct {
        std::wstring_view Keyword;
        std::int32_t Bit;
    } kRows[] = {{L"NONUMERIC=", 0x40}, {L"NOMASK=", 0x2000}, {L"NOTABLE=", 0x4000}, {L"NOSPACES=", 0x10000}};
    for (const auto& Row : kRows) {
        for (const std::wstring_view Word : {L"TRUE", L"vero", L"True"}) {
            ASSERT_TRUE(
                Accepted(On.Put(Parms(), Lines({std::wstring(Row.Keyword) + L" " + std::wstring(Word)}))));
            EXPECT_EQ(Switches(), Row.Bit);
            const std::wstring Shown = On.Text(Parms());
            EXPECT_NE(Shown.find(std::wstring(Row.Keyword) + L" TRUE"), std::wstring::npos);
        }
        for (const std::wstring_view Word : {L"FALSE", L"falso", L""}) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({std::wstring(Row.Keyword) + std::wstring(Word)}))));
            EXPECT_EQ(Switches(), 0);
        }
        EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Row.Keyword) + L" forse"), 20000, L"diSort.SaveParm",
                            L"Valore sconosciuto per il parametro " + std::wstring(Row.Keyword) + L"(FORSE)",
                            1));
    }
}

TEST_F(SortItem, AbsentSwitchIsCleared) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"NOTABLE= TRUE", L"NOMASK= TRUE"}))));
    EXPECT_EQ(Switches(), 0x6000);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"NOMASK= TRUE"}))));
    EXPECT_EQ(Switches(), 0x2000);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'soltanto un commento")));
    EXPECT_EQ(Switches(), 0);
}

TEST_F(SortItem, LaxModeClearsOnUnknownBooleanAndDropsFlagWords) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"NOMASK= TRUE"}))));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"NOMASK= FORSE", L"FLAGS= A|B"}), false)));
    EXPECT_EQ(Switches(), 0);
    EXPECT_EQ(std::get<std::int32_t>(*Stored().Value(L"Flags")), 0);
}

TEST_F(SortItem, FlagsKnowNoWord) {
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"FLAGS= none")));
    EXPECT_TRUE(Accepted(On.Put(Parms(), L"FLAGS=")));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= A"), 20000, L"diSort.SaveParm",
                        L"Valore sconosciuto per il parametro FLAGS=()", 1));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= a | b|c"), 20000, L"diSort.SaveParm",
                        L"Valore sconosciuto per il parametro FLAGS=(B|C)", 1));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"FLAGS= NONE|A"), 20000, L"diSort.SaveParm",
                        L"Valore sconosciuto per il parametro FLAGS=(A)", 1));
}

TEST_F(SortItem, MirrorOfIsReadAndDropped) {
    RegObject Content = Desk::Named(L"PROVA");
    Content.SetValue(L"MirrorOf", std::wstring(L"ITALIANO"));
    Desk Mirrored(L"SORT", Content);
    const std::wstring Leaf = Mirrored.Leaf(L"PARMS");
    ASSERT_TRUE(Accepted(Mirrored.Put(Leaf, Lines({L"MIRROROF= \"ALTRO\""}))));
    EXPECT_NE(Mirrored.Text(Leaf).find(L"MIRROROF= \"ITALIANO\""), std::wstring::npos);
    ASSERT_TRUE(Accepted(Mirrored.Put(L"PARMS 0", Lines({L"MIRROROF= \"ALTRO\""}))));
    EXPECT_NE(Mirrored.Text(L"PARMS 0").find(L"MIRROROF= \"ITALIANO\""), std::wstring::npos);
}

TEST_F(SortItem, RefusalsOfTheParameters) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Message;
        int Line;
    } kRows[] = {
        {L"nomask= TRUE", L"Parametro non riconosciuto: nomask=TRUE", 1},
        {L"41 = 41", L"Parametro non riconosciuto: 41=41", 1},
        {L"NOMASK= TRUE\r\n'nota\r\n\r\nNOMASK= FALSE", L"Ripetizone del parametro NOMASK=.", 4},
        {L"MIRROROF= A\r\nMIRROROF= B", L"Ripetizone del parametro MIRROROF=.", 2},
        {L"=5", L"Parametro non riconosciuto: =5", 1},
    };
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"NOSPACES= TRUE")));
    const RegObject Before = Stored();
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false})
            EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Row.Text), Strict), 20000, L"diSort.SaveParm",
                                Row.Message, Row.Line));
    EXPECT_TRUE(Refused(On.Put(Parms(), L"NOMASK= TRUE\r\nsenza segno"), 20018, L"vDesignPar.GetFieldValue",
                        L"Errore di sintassi: senza segno.", 2));
    EXPECT_EQ(Stored(), Before);
}

TEST_F(SortItem, EmptyTableShowsTheDefaultOneAndKeepsIt) {
    const std::wstring Shown = On.Text(Table);
    EXPECT_TRUE(MatchesGolden("sort_table.txt", Shown));
    EXPECT_EQ(ReadFile(On.Platform.Folder / "KVDSRT.TAB").size(), 256U);
    const std::wstring Kept = Weights();
    ASSERT_EQ(Kept.size(), 256U);
    for (int Code = 0; Code < 256; ++Code)
        EXPECT_EQ(Kept[static_cast<std::size_t>(Code)],
                  static_cast<wchar_t>(DefaultSortWeight(static_cast<std::uint8_t>(Code))));
}

TEST_F(SortItem, TableComesBackUnchanged) {
    const std::wstring Shown = On.Text(Table);
    const std::wstring Before = Weights();
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(On.Put(Table, Shown, Strict)));
        EXPECT_EQ(On.Text(Table), Shown);
        EXPECT_EQ(Weights(), Before);
    }
    ASSERT_TRUE(Accepted(On.Put(Table, Lines({L"41 = 41  [A] [A]", L"20 = 20  [ ] [ ]"}))));
    EXPECT_EQ(Weights()[0x41], 0x41);
    EXPECT_EQ(Weights()[0x20], 0x20);
}

TEST_F(SortItem, TableTextWithoutWeightsClearsAll) {
    static_cast<void>(On.Text(Table));
    ASSERT_TRUE(Accepted(On.Put(Table, L"'nessuna riga")));
    EXPECT_EQ(Weights(), std::wstring(256, L'\0'));
    ASSERT_TRUE(Accepted(On.Put(Table, L"")));
    EXPECT_EQ(Weights(), std::wstring(256, L'\0'));
}

TEST_F(SortItem, TableLeavesTheSwitchesAlone) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"NOMASK= TRUE")));
    ASSERT_TRUE(Accepted(On.Put(Table, L"61 = 41")));
    EXPECT_EQ(Switches(), 0x2000);
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"NOTABLE= TRUE")));
    EXPECT_EQ(Weights()[0x61], 0x41);
}

TEST_F(SortItem, EveryAllowedWeightAndNoOther) {
    for (int Weight = 0; Weight < 256; ++Weight) {
        const auto Byte = static_cast<std::uint8_t>(Weight);
        const bool Allowed = Weight == 0 || Weight == 0x20 || (Weight >= 0x30 && Weight <= 0x39) ||
                             (Weight >= 0x41 && Weight <= 0x5A);
        const Outcome Got = On.Put(Table, L"E1 = " + StrUtil::Hex2(Byte));
        if (Allowed) {
            ASSERT_TRUE(Accepted(Got));
            EXPECT_EQ(Weights()[0xE1], static_cast<wchar_t>(Byte));
        } else {
            EXPECT_TRUE(Refused(Got, 20000, L"diSort.SaveParm", std::wstring(kWeightText) + L"E1.)", 1));
        }
    }
}

TEST_F(SortItem, EveryCodeInEitherCase) {
    for (int Code = 0; Code < 256; ++Code) {
        std::wstring Digits = StrUtil::Hex2(static_cast<std::uint8_t>(Code));
        ASSERT_TRUE(Accepted(On.Put(Table, Digits + L"=5a")));
        EXPECT_EQ(Weights()[static_cast<std::size_t>(Code)], 0x5A);
        for (wchar_t& C : Digits)
            if (C >= L'A') C = static_cast<wchar_t>(C + 32);
        ASSERT_TRUE(Accepted(On.Put(Table, Digits + L" = 5A  [qualcosa]")));
        EXPECT_EQ(Weights()[static_cast<std::size_t>(Code)], 0x5A);
    }
}

TEST_F(SortItem, RefusalsOfTheTable) {
    const struct {
        std::wstring_view Text;
        std::wstring_view Message;
        int Line;
    } kRows[] = {
        {L"A = 41", L"Parametro non riconosciuto: A41", 1},
        {L"0G = 41", L"Parametro non riconosciuto: 0G41", 1},
        {L"100 = 41", L"Parametro non riconosciuto: 10041", 1},
        {L"FFFFFFFFFF = 41", L"Parametro non riconosciuto: FFFFFFFFFF41", 1},
        {L"= 41", L"Parametro non riconosciuto: 41", 1},
        {L"41 = 4", L"Parametro non riconosciuto: 414", 1},
        {L"41 = 041", L"Parametro non riconosciuto: 41041", 1},
        {L"41 =", L"Parametro non riconosciuto: 41", 1},
        {L"41 = 4g  [x] [y]", L"Parametro non riconosciuto: 414G", 1},
        {L"61 = 41\r\n61 = 42", L"Ripetizone del parametro 61.", 2},
        {L"e1 = 41\r\nE1 = 42", L"Ripetizone del parametro E1.", 2},
        {L"NOMASK= TRUE", L"Parametro non consentito in questa sezioneNOMASK=(TRUE)", 1},
        {L"NONUMERIC=", L"Parametro non consentito in questa sezioneNONUMERIC=()", 1},
        {L"NOSPACES= a b", L"Parametro non consentito in questa sezioneNOSPACES=(a b)", 1},
        {L"NOTABLE= FALSE", L"Parametro non consentito in questa sezioneNOTABLE=(FALSE)", 1},
        {L"'nota\r\nFLAGS= NONE", L"Parametro non consentito in questa sezioneFLAGS=(NONE)", 2},
        {L"nomask= TRUE", L"Parametro non riconosciuto: NOMASKTRUE", 1},
        {L"MIRROROF= A\r\nMIRROROF= A", L"Ripetizone del parametro MIRROROF=.", 2},
    };
    ASSERT_TRUE(Accepted(On.Put(Table, L"61 = 41")));
    const RegObject Before = Stored();
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false})
            EXPECT_TRUE(Refused(On.Put(Table, std::wstring(Row.Text), Strict), 20000, L"diSort.SaveParm",
                                Row.Message, Row.Line))
                << Narrow(Row.Text);
    EXPECT_TRUE(Refused(On.Put(Table, L"41 = 61"), 20000, L"diSort.SaveParm",
                        std::wstring(kWeightText) + L"41.)", 1));
    EXPECT_EQ(Stored(), Before);
}

TEST_F(SortItem, EmptyTableFileEndsTheRenderingWithSuccess) {
    WriteFile(On.Platform.Folder / "KVDSRT.TAB", "");
    EXPECT_EQ(Narrow(On.Text(Table)),
              Narrow(Lines({L"'In questa sezione sono significative solo le cifre esadecimali",
                            L"'I codici di carattere assenti si assumono =0"})));
}

TEST_F(SortItem, ShortTableFileCountsAsZeroFromThereOn) {
    WriteFile(On.Platform.Folder / "KVDSRT.TAB", std::string("\0\x41\x42", 3));
    const std::wstring Shown = On.Text(Table);
    EXPECT_NE(Shown.find(L"01 = 41  [ ] [A]\r\n02 = 42  [ ] [B]\r\n03 = 00  [ ] [ ]\r\n"),
              std::wstring::npos);
    EXPECT_NE(Shown.find(L"FF = 00  [ÿ] [ ]\r\n"), std::wstring::npos);
}

TEST_F(SortItem, UnreadableTableFileIsAFailure) {
    std::filesystem::create_directory(On.Platform.Folder / "KVDSRT.TAB");
    std::wstring Buffer;
    const Outcome Got = On.Try([&] { return On.Core.DispData({.CurrItem = Table}, Buffer); });
    EXPECT_TRUE(Refused(Got, 75, L"vdbInclude.DefaultSortLoad",
                        L"Impossibile aprire il file " + (On.Platform.Folder / "KVDSRT.TAB").wstring()));
}

TEST_F(SortItem, TableReplacesWhatTheBufferHolds) {
    diSort Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer = L"prima";
    const Head At{.CurrFolder = L"PARMS", .CurrItem = L"PARMS 0", .Index = 0, .Key = L"PARMS"};
    ASSERT_FALSE(Item.DispData(At, Buffer, true, {}, 1));
    EXPECT_EQ(Buffer.find(L"BEGIN"), std::wstring::npos);
    EXPECT_EQ(Buffer.rfind(L"\t\t'In questa sezione", 0), 0U);
    EXPECT_NE(Buffer.find(L"\t\t61 = 41  [a] [A]\r\n"), std::wstring::npos);
    EXPECT_NE(Buffer.find(L"\tEND PARMS\r\n"), std::wstring::npos);
}

TEST_F(SortItem, ExportHoldsTheParametersOnly) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"NOMASK= TRUE")));
    ASSERT_TRUE(Accepted(On.Put(Table, L"61 = 41")));
    static_cast<void>(Stored());
    EXPECT_TRUE(MatchesGolden("export/SORT.txt", On.Exported()));
}

TEST_F(SortItem, UnknownSectionsFailSilentlyAndEmptyOnesSucceed) {
    std::wstring Text = L"NOMASK= TRUE";
    std::wstring NewKey;
    const auto Save = [&](const wchar_t* Key) {
        return On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); });
    };
    EXPECT_TRUE(RefusedSilently(Save(L"TABLE")));
    EXPECT_TRUE(RefusedSilently(Save(L"parms")));
    EXPECT_TRUE(Accepted(Save(L"")));
    EXPECT_EQ(Switches(), 0);
}

TEST_F(SortItem, OtherOperations) {
    const window::Selection At{.CurrItem = Parms()};
    const std::wstring Picture = On.Picture();
    std::wstring Key;
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.EditData(At, Key); })));
    EXPECT_EQ(Key, L"");
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At, false); })));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At, true); })));
    EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(At, 1, Key); })));
    EXPECT_EQ(On.Picture(), Picture);
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable(At); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
}

TEST_F(SortItem, CopyIsAStoredObject) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"NOMASK= TRUE")));
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"SORT");
    const RegObject& Copied = On.Clipboard.DataObj->Read();
    EXPECT_EQ(Copied.Name, L"PROVA");
    EXPECT_EQ(std::get<std::int32_t>(*Copied.Value(L"Switches")), 0x2000);
}

}  // namespace
}  // namespace kv::test
