// The retrieval base: one section, and a rule of its own for nearly every third keyword.
#include <gtest/gtest.h>

#include "items/client/diRetrieval.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diRetrieval.SaveParm";

std::wstring Both(std::wstring_view First, std::wstring_view Second) {
    return std::wstring(First).append(L"\r\n").append(Second);
}

RegObject Base() {
    return With(Desk::Named(L"PROVA"), {{L"Path", RegText(L"D:\\Basi\\Libri")},
                                        {L"DbVersion", 0x0302},
                                        {L"LoanEnable", 0x01},
                                        {L"MenuBar", true},
                                        {L"PrnMaxRecs", 100},
                                        {L"Url", RegText(L"http://esempio.it/Libri")}});
}

class Retrieval : public ::testing::Test {
  protected:
    Desk On{L"RETRIEVAL", Base()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    window::Selection At() const { return {.CurrItem = Parms()}; }
    /// A text that strict mode takes, with one more line.
    static std::wstring WithPath(std::wstring_view Line) { return Both(L"PATH= C:\\B", Line); }
    Outcome Put(std::wstring_view Line, bool Strict = true) {
        return On.Put(Parms(), WithPath(Line), Strict);
    }
    std::wstring LineOf(std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Parms());
        const std::size_t Found = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(Found, std::wstring::npos);
        return Found == std::wstring::npos
                   ? std::wstring()
                   : Shown.substr(Found + 2, Shown.find(L"\r\n", Found + 2) - Found - 2);
    }
    std::int32_t Stored(std::wstring_view Property) { return LongOf(SavedBy(On), Property); }
};

TEST_F(Retrieval, TreeAndChoices) {
    for (const RegObject& Content : {Desk::Named(L"PROVA"), Base()}) {
        Desk One(L"RETRIEVAL", Content);
        ASSERT_TRUE(Accepted(One.Opened));
        EXPECT_EQ(Narrow(One.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                                L"  PARMS \"Parametri\" 12,11\n"
                                                L"    PARMS # \"Parametri\" 9,9\n"));
    }
    EXPECT_EQ(Narrow(On.Offered()),
              Narrow(L"PARMS LOANENABLE= NOTENABLED ENABLED STARTUP RESTARTABLE PREVAIL\n"
                     L"PARMS PRNMAXITEMS= NONE\n"
                     L"PARMS PRNMAXRECS= NONE\n"
                     L"PARMS FILEMAXITEMS= NONE\n"
                     L"PARMS FILEMAXRECS= NONE\n"
                     L"PARMS FLAGS= NONE\n"
                     L"PARMS REMOTEDB= FALSE TRUE\n"
                     L"PARMS COMPRESSED= FALSE TRUE\n"));
    EXPECT_TRUE(On.Tree->Served().empty());
}

const std::initializer_list<std::wstring_view> kFull{
    L"BACKUPPATH= \"E:\\Copie\"",
    L"COMPRESSED= FALSE",
    L"DATALOCKPWD= &h2a",
    L"DBVERSION= \"4.17\"",
    L"ENCRYPTION= vero",
    L"FILEMAXITEMS= 50",
    L"FILEMAXRECS= none",
    L"FLAGS= killaftercopy|keepbackup",
    L"HELP= \"aiuto\"",
    L"HELPTYPE= extern-chm",
    L"HTMLROOT= \"D:\\Pagine\"",
    L"LOANENABLE= enabled|startup|restartable|disponly|prevail",
    L"LOANPATH= \"D:\\Prestiti\"",
    L"LOCKFILE= \"D:\\Basi\\Libri.lck\"",
    L"LOGFILE= \"D:\\Basi\\Libri.log\"",
    L"MENUBAR= FALSE",
    L"MIRROROF= \"Altra Base\"",
    L"PATH= \"D:\\Basi\\Città\"",
    L"PRNMAXITEMS= 20",
    L"PRNMAXRECS= 1e3",
    L"REMOTEDB= TRUE",
    L"TEMPPATH= \"C:\\Temp\"",
    L"URL= \"http://esempio.it/Libri\"",
    L"URLFOR= \"http://esempio.it/Da\""};

TEST_F(Retrieval, Texts) {
    Desk Empty(L"RETRIEVAL");
    EXPECT_TRUE(MatchesGolden("section/RETRIEVAL.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines(kFull))));
    EXPECT_TRUE(MatchesGolden("section/RETRIEVAL.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"BackupPath"), L"E:\\Copie");
    EXPECT_FALSE(BoolOf(Now, L"Compressed"));
    EXPECT_EQ(LongOf(Now, L"DataLockPwd"), 42);
    EXPECT_EQ(LongOf(Now, L"DbVersion"), 0x0411) << "the major number is the high byte";
    EXPECT_TRUE(BoolOf(Now, L"Encryption"));
    EXPECT_EQ(LongOf(Now, L"FileMaxItems"), 50);
    EXPECT_EQ(LongOf(Now, L"FileMaxRecs"), -1);
    EXPECT_EQ(LongOf(Now, L"Flags"), 3);
    EXPECT_EQ(TextOf(Now, L"Help"), L"AIUTO");
    EXPECT_EQ(LongOf(Now, L"HelpType"), 1);
    EXPECT_EQ(TextOf(Now, L"HtmlRoot"), L"D:\\Pagine");
    EXPECT_EQ(LongOf(Now, L"LoanEnable"), 0x2F);
    EXPECT_EQ(TextOf(Now, L"LoanPath"), L"D:\\Prestiti");
    EXPECT_EQ(TextOf(Now, L"LockFile"), L"D:\\Basi\\Libri.lck");
    EXPECT_EQ(TextOf(Now, L"LogFile"), L"D:\\Basi\\Libri.log");
    EXPECT_FALSE(BoolOf(Now, L"MenuBar"));
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altra Base");
    EXPECT_EQ(TextOf(Now, L"Path"), L"D:\\Basi\\Città");
    EXPECT_EQ(LongOf(Now, L"PrnMaxItems"), 20);
    EXPECT_EQ(LongOf(Now, L"PrnMaxRecs"), 1000);
    EXPECT_TRUE(BoolOf(Now, L"RemoteDb"));
    EXPECT_EQ(TextOf(Now, L"TempPath"), L"C:\\Temp");
    EXPECT_EQ(TextOf(Now, L"Url"), L"http://esempio.it/Libri");
    EXPECT_EQ(TextOf(Now, L"UrlFor"), L"http://esempio.it/Da");
}

TEST_F(Retrieval, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines(kFull))));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"PATH= C:\\B")));
    Desk Plain(L"RETRIEVAL", With(Desk::Named(L"PROVA"), {{L"Path", RegText(L"C:\\B")}}));
    EXPECT_EQ(SavedBy(On), SavedBy(Plain));
}

TEST_F(Retrieval, ATextOfCommentsFailsStrictAndResetsLax) {
    const std::wstring Before = On.Text(Parms());
    for (const std::wstring_view Text : {L"", L"'niente\r\n;niente\r\n  *niente", L"\r\n\r\n"}) {
        EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Text)), 20000, kSource,
                            L"Non è stato specificato un PATH per la base di retrieval.", 0));
        EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Before));
    }
    EXPECT_TRUE(Refused(On.Put(Parms(), L"PATH= \"\""), 20000, kSource,
                        L"Non è stato specificato un PATH per la base di retrieval.", 0));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'niente", false)));
    Desk Empty(L"RETRIEVAL");
    EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Empty.Text(Empty.Leaf(L"PARMS"))));
}

TEST_F(Retrieval, EncryptionAndCompressionExcludeEachOther) {
    const std::wstring Before = On.Text(Parms());
    for (const bool Strict : {true, false}) {
        for (const std::wstring_view Text : {L"ENCRYPTION= TRUE\r\nCOMPRESSED= TRUE\r\nPATH= C:\\B",
                                             L"COMPRESSED= VERO\r\nENCRYPTION= VERO"}) {
            EXPECT_TRUE(Refused(On.Put(Parms(), std::wstring(Text), Strict), 20000, kSource,
                                L"Non è possibile specificare entrambe le opzioni ENCRYPTION= COMPRESSED=.",
                                0));
            EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Before));
        }
        EXPECT_TRUE(Accepted(On.Put(
            Parms(),
            On.Text(Parms()).replace(On.Text(Parms()).find(L"ENCRYPTION= FALSE"), 17, L"ENCRYPTION= TRUE"),
            Strict)));
        ASSERT_TRUE(Accepted(On.Put(Parms(), Before, Strict)));
    }
}

TEST_F(Retrieval, Booleans) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
    } kRows[] = {
        {L"COMPRESSED=", L"Compressed"}, {L"ENCRYPTION=", L"Encryption"}, {L"REMOTEDB=", L"RemoteDb"}};
    for (const auto& Row : kRows) {
        const std::wstring Keyword(Row.Keyword);
        for (const bool Strict : {true, false}) {
            for (const std::wstring_view Word : {L"TRUE", L"vero"}) {
                ASSERT_TRUE(Accepted(Put(Keyword + std::wstring(Word), Strict)));
                EXPECT_TRUE(BoolOf(SavedBy(On), Row.Property));
                EXPECT_EQ(LineOf(Keyword), Keyword + L" TRUE");
            }
            for (const std::wstring_view Word : {L"FALSE", L"Falso", L""}) {
                ASSERT_TRUE(Accepted(Put(Keyword + std::wstring(Word), Strict)));
                EXPECT_FALSE(BoolOf(SavedBy(On), Row.Property));
                EXPECT_EQ(LineOf(Keyword), Keyword + L" FALSE");
            }
        }
        EXPECT_TRUE(Refused(Put(Keyword + L"forse"), 20000, kSource,
                            L"Valore sconosciuto per il parametro " + Keyword + L"(FORSE)", 2));
        EXPECT_FALSE(BoolOf(SavedBy(On), Row.Property));
        ASSERT_TRUE(Accepted(Put(Keyword + L"forse", false)));
        EXPECT_TRUE(BoolOf(SavedBy(On), Row.Property));
    }
}

TEST_F(Retrieval, AnUnknownWordShowsTheMenuBarEvenInStrictMode) {
    for (const bool Strict : {true, false}) {
        for (const std::wstring_view Word : {L"FALSE", L"falso", L""}) {
            ASSERT_TRUE(Accepted(Put(L"MENUBAR= " + std::wstring(Word), Strict)));
            EXPECT_FALSE(BoolOf(SavedBy(On), L"MenuBar"));
        }
        for (const std::wstring_view Word : {L"forse", L"TRUE", L"vero", L"0"}) {
            ASSERT_TRUE(Accepted(Put(L"MENUBAR= FALSE", Strict)));
            ASSERT_TRUE(Accepted(Put(L"MENUBAR= " + std::wstring(Word), Strict)));
            EXPECT_TRUE(BoolOf(SavedBy(On), L"MenuBar"));
            EXPECT_EQ(LineOf(L"MENUBAR="), L"MENUBAR= TRUE");
        }
    }
}

TEST_F(Retrieval, TheLockPassword) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Value;
        std::wstring_view Shown;
    } kRows[] = {{L"", 0, L"&H0"},
                 {L"0", 0, L"&H0"},
                 {L"&H0", 0, L"&H0"},
                 {L"255", 255, L"&HFF"},
                 {L"&HFF", 255, L"&HFF"},
                 {L"&hff", 255, L"&HFF"},
                 {L"-1", -1, L"&HFFFF"},
                 {L"&HFFFF", -1, L"&HFFFF"},
                 {L"&H8000", -32768, L"&H8000"},
                 {L"32767", 32767, L"&H7FFF"},
                 {L"&HA05", 2565, L"&HA05"},
                 {L"\"12\"", 0, L"&H0"},
                 {L"2.5", 2, L"&H2"},
                 {L"segreta", 0, L"&H0"}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            SCOPED_TRACE(Narrow(Row.Typed));
            ASSERT_TRUE(Accepted(Put(L"DATALOCKPWD=  " + std::wstring(Row.Typed) + L"  ", Strict)));
            EXPECT_EQ(Stored(L"DataLockPwd"), Row.Value);
            EXPECT_EQ(LineOf(L"DATALOCKPWD="), L"DATALOCKPWD= " + std::wstring(Row.Shown));
            ASSERT_TRUE(Accepted(On.Put(Parms(), On.Text(Parms()), Strict)));
            EXPECT_EQ(Stored(L"DataLockPwd"), Row.Value);
        }
        for (const std::wstring_view Beyond : {L"32768", L"-32769", L"&H10000"})
            EXPECT_TRUE(
                Refused(Put(L"DATALOCKPWD= " + std::wstring(Beyond), Strict), 6, kSource, L"Overflow", 2));
    }
}

TEST_F(Retrieval, TheVersion) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Value;
        std::wstring_view Shown;
    } kRows[] = {{L"3", 0x0300, L"3.0"},
                 {L"3.2", 0x0302, L"3.2"},
                 {L"\"4.10\"", 0x040A, L"4.10"},
                 {L"\" 5 . 6 \"", 0x0506, L"5.6"},
                 {L"1.2.9", 0x0103, L"1.3"},
                 {L".7", 0x0007, L"0.7"},
                 {L"", 0, L"0.0"},
                 {L"200.1", -14335, L"200.1"},
                 {L"255.255", -1, L"255.255"},
                 {L"x.y", 0, L"0.0"}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            SCOPED_TRACE(Narrow(Row.Typed));
            ASSERT_TRUE(Accepted(Put(L"DBVERSION= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"DbVersion"), Row.Value);
            EXPECT_EQ(LineOf(L"DBVERSION="), L"DBVERSION= " + std::wstring(Row.Shown));
            ASSERT_TRUE(Accepted(On.Put(Parms(), On.Text(Parms()), Strict)));
            EXPECT_EQ(Stored(L"DbVersion"), Row.Value);
        }
        for (const std::wstring_view Beyond : {L"256", L"1.256", L"-1", L"40000", L"1.-1"})
            EXPECT_TRUE(
                Refused(Put(L"DBVERSION= " + std::wstring(Beyond), Strict), 6, kSource, L"Overflow", 2));
    }
}

TEST_F(Retrieval, Ceilings) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
    } kRows[] = {{L"FILEMAXITEMS=", L"FileMaxItems"},
                 {L"FILEMAXRECS=", L"FileMaxRecs"},
                 {L"PRNMAXITEMS=", L"PrnMaxItems"},
                 {L"PRNMAXRECS=", L"PrnMaxRecs"}};
    for (const auto& Row : kRows) {
        const std::wstring Keyword = std::wstring(Row.Keyword) + L" ";
        SCOPED_TRACE(Narrow(Keyword));
        for (const bool Strict : {true, false}) {
            for (const std::wstring_view Word : {L"NONE", L"none", L"  None "}) {
                ASSERT_TRUE(Accepted(Put(Keyword + L"3", Strict)));
                ASSERT_TRUE(Accepted(Put(Keyword + std::wstring(Word), Strict)));
                EXPECT_EQ(Stored(Row.Property), -1);
                EXPECT_EQ(LineOf(Row.Keyword), Keyword + L"NONE");
            }
            const struct {
                std::wstring_view Typed;
                std::int32_t Value;
            } kNumbers[] = {{L"0", 0},   {L"", 0},     {L"250", 250}, {L"2.5", 2},
                            {L"3.5", 4}, {L"-0.4", 0}, {L"molti", 0}, {L"2147483647", 2147483647}};
            for (const auto& Number : kNumbers) {
                ASSERT_TRUE(Accepted(Put(Keyword + std::wstring(Number.Typed), Strict)));
                EXPECT_EQ(Stored(Row.Property), Number.Value);
                EXPECT_EQ(LineOf(Row.Keyword), Keyword + std::to_wstring(Number.Value));
            }
            EXPECT_TRUE(Refused(Put(Keyword + L"2147483648", Strict), 6, kSource, L"Overflow", 2));
        }
        const std::wstring Before = On.Text(Parms());
        for (const std::wstring_view Negative : {L"-1", L"-5", L"-2147483648"}) {
            EXPECT_TRUE(RefusedSilently(Put(Keyword + std::wstring(Negative))));
            EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
            EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Before));
            // The text ends there: what stands behind is not read.
            EXPECT_TRUE(RefusedSilently(Put(Keyword + std::wstring(Negative) + L"\r\nPIPPO= 1")));
        }
        EXPECT_TRUE(Refused(Put(L"PIPPO= 1\r\n" + Keyword + L"-5"), 20000, kSource,
                            L"Parametro non riconosciuto: PIPPO=1", 2));
        ASSERT_TRUE(Accepted(Put(Keyword + L"-5", false)));
        EXPECT_EQ(Stored(Row.Property), -5);
        EXPECT_EQ(LineOf(Row.Keyword), Keyword + L"NONE");
    }
}

TEST_F(Retrieval, Flags) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Bits;
        std::wstring_view Shown;
    } kRows[] = {{L"NONE", 0, L"NONE"},
                 {L"none", 0, L"NONE"},
                 {L"", 0, L"NONE"},
                 {L"KEEPBACKUP", 2, L"KEEPBACKUP"},
                 {L"killaftercopy", 1, L"KILLAFTERCOPY"},
                 {L"KEEPBACKUP|KILLAFTERCOPY", 3, L"KEEPBACKUP|KILLAFTERCOPY"},
                 {L"KillAfterCopy | KeepBackup", 3, L"KEEPBACKUP|KILLAFTERCOPY"}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            ASSERT_TRUE(Accepted(Put(L"FLAGS= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"Flags"), Row.Bits);
            EXPECT_EQ(LineOf(L"FLAGS="), L"FLAGS= " + std::wstring(Row.Shown));
        }
    }
    EXPECT_TRUE(Refused(Put(L"FLAGS= keepbackup|forse|killaftercopy"), 20000, kSource,
                        L"Valore sconosciuto per il parametro FLAGS=(KILLAFTERCOPY)", 2));
    ASSERT_TRUE(Accepted(Put(L"FLAGS= keepbackup|forse|killaftercopy", false)));
    EXPECT_EQ(Stored(L"Flags"), 3);
}

TEST_F(Retrieval, HelpTypes) {
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(Put(L"HELPTYPE=  Extern-Chm ", Strict)));
        EXPECT_EQ(Stored(L"HelpType"), 1);
        EXPECT_EQ(LineOf(L"HELPTYPE="), L"HELPTYPE= EXTERN-CHM");
        ASSERT_TRUE(Accepted(Put(L"HELPTYPE= standard", Strict)));
        EXPECT_EQ(Stored(L"HelpType"), 0);
        EXPECT_EQ(LineOf(L"HELPTYPE="), L"HELPTYPE= STANDARD");
    }
    for (const std::wstring_view Word : {L"FORSE", L"", L"\"STANDARD\""}) {
        EXPECT_TRUE(Refused(Put(L"HELPTYPE= " + std::wstring(Word)), 20000, kSource,
                            L"Valore sconosciuto per il parametro HELPTYPE=(" + std::wstring(Word) + L")",
                            2));
        ASSERT_TRUE(Accepted(Put(L"HELPTYPE= " + std::wstring(Word), false)));
        EXPECT_EQ(Stored(L"HelpType"), 0);
    }
    Desk Odd(L"RETRIEVAL", With(Desk::Named(L"PROVA"), {{L"HelpType", 9}}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"PARMS")).find(L"HELPTYPE= STANDARD\r\n"), std::wstring::npos);
}

TEST_F(Retrieval, LoanWords) {
    const struct {
        std::wstring_view Typed;
        std::int32_t Bits;
        std::wstring_view Shown;
    } kRows[] = {{L"NOTENABLED", 0, L"NOTENABLED"},
                 {L"", 0, L"NOTENABLED"},
                 {L"enabled", 0x01, L"ENABLED"},
                 {L"STARTUP", 0x02, L"NOTENABLED|STARTUP"},
                 {L"restartable", 0x04, L"NOTENABLED|RESTARTABLE"},
                 {L"DISPONLY", 0x08, L"NOTENABLED|DISPONLY"},
                 {L"\"prevail\"", 0x20, L"NOTENABLED|PREVAIL"},
                 {L"NOTENABLED|ENABLED", 0x01, L"ENABLED"},
                 {L"ENABLED | NOTENABLED", 0x01, L"ENABLED"},
                 {L"\"PREVAIL|DISPONLY|ENABLED\"", 0x29, L"ENABLED|DISPONLY|PREVAIL"}};
    for (const bool Strict : {true, false}) {
        for (const auto& Row : kRows) {
            SCOPED_TRACE(Narrow(Row.Typed));
            ASSERT_TRUE(Accepted(Put(L"LOANENABLE= " + std::wstring(Row.Typed), Strict)));
            EXPECT_EQ(Stored(L"LoanEnable"), Row.Bits);
            EXPECT_EQ(LineOf(L"LOANENABLE="), L"LOANENABLE= " + std::wstring(Row.Shown));
            ASSERT_TRUE(Accepted(On.Put(Parms(), On.Text(Parms()), Strict)));
            EXPECT_EQ(Stored(L"LoanEnable"), Row.Bits);
        }
        ASSERT_TRUE(Accepted(
            Put(L"LOANENABLE= startup\r\nURL= u\r\nLOANENABLE= NOTENABLED\r\nLOANENABLE= ENABLED", Strict)));
        EXPECT_EQ(Stored(L"LoanEnable"), 0x03) << "the words of all lines add up";
        ASSERT_TRUE(Accepted(Put(L"URL= u", Strict)));
        EXPECT_EQ(Stored(L"LoanEnable"), 0);
    }
    EXPECT_TRUE(Refused(Put(L"LOANENABLE= NONE"), 20000, kSource,
                        L"Valore sconosciuto per il parametro LOANENABLE=()", 2));
    EXPECT_TRUE(Refused(Put(L"LOANENABLE= enabled|forse|startup"), 20000, kSource,
                        L"Valore sconosciuto per il parametro LOANENABLE=(STARTUP)", 2));
    ASSERT_TRUE(Accepted(Put(L"LOANENABLE= enabled|forse|startup", false)));
    EXPECT_EQ(Stored(L"LoanEnable"), 0x03);
    Desk Odd(L"RETRIEVAL", With(Desk::Named(L"PROVA"), {{L"LoanEnable", 0x10}}));
    EXPECT_NE(Odd.Text(Odd.Leaf(L"PARMS")).find(L"LOANENABLE= NOTENABLED\r\n"), std::wstring::npos);
}

TEST_F(Retrieval, Strings) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Property;
    } kRows[] = {{L"BACKUPPATH=", L"BackupPath"},
                 {L"HTMLROOT=", L"HtmlRoot"},
                 {L"LOANPATH=", L"LoanPath"},
                 {L"LOCKFILE=", L"LockFile"},
                 {L"LOGFILE=", L"LogFile"},
                 {L"MIRROROF=", L"MirrorOf"},
                 {L"PATH=", L"Path"},
                 {L"TEMPPATH=", L"TempPath"},
                 {L"URL=", L"Url"},
                 {L"URLFOR=", L"UrlFor"},
                 {L"HELP=", L"Help"}};
    for (const auto& Row : kRows) {
        const std::wstring Keyword(Row.Keyword);
        SCOPED_TRACE(Narrow(Keyword));
        const std::wstring Path = Keyword == L"PATH=" ? L"" : L"PATH= x\r\n";
        const auto Folded = [&](std::wstring_view Text) {
            return Keyword == L"HELP=" ? StrUtil::UpperCase(Text) : std::wstring(Text);
        };
        for (const bool Strict : {true, false}) {
            ASSERT_TRUE(Accepted(On.Put(Parms(), Path + Keyword + L" \" Città=b\"c \"", Strict)));
            EXPECT_EQ(TextOf(SavedBy(On), Row.Property), Folded(L" Città=b\"c "));
            EXPECT_EQ(LineOf(Keyword), Keyword + L" \"" + Folded(L" Città=b\"c ") + L"\"");
            ASSERT_TRUE(Accepted(On.Put(Parms(), Path + Keyword + L" nudo", Strict)));
            EXPECT_EQ(TextOf(SavedBy(On), Row.Property), Folded(L"nudo"));
        }
    }
}

TEST_F(Retrieval, Refusals) {
    for (const std::wstring_view Keyword :
         {L"COMPRESSED=",  L"DATALOCKPWD=", L"BACKUPPATH=", L"DBVERSION=", L"ENCRYPTION=",  L"FILEMAXITEMS=",
          L"FILEMAXRECS=", L"FLAGS=",       L"HELP=",       L"HTMLROOT=",  L"LOANPATH=",    L"LOCKFILE=",
          L"LOGFILE=",     L"MENUBAR=",     L"MIRROROF=",   L"PATH=",      L"PRNMAXITEMS=", L"PRNMAXRECS=",
          L"REMOTEDB=",    L"TEMPPATH=",    L"URL=",        L"URLFOR="})
        ExpectRefusals(
            On, Parms(), kSource,
            {{Both(Keyword, Keyword), L"Ripetizone del parametro " + std::wstring(Keyword) + L".", 2}});
    ExpectRefusals(
        On, Parms(), kSource,
        {
            {L"HELPTYPE= STANDARD\r\nHELPTYPE= STANDARD", L"Ripetizone del parametro HELPTYPE=.", 2},
            {L"'x\r\nPIPPO= 1", L"Parametro non riconosciuto: PIPPO=1", 2},
            {L"path= C:\\B", L"Parametro non riconosciuto: path=C:\\B", 1},
            {L"=5", L"Parametro non riconosciuto: =5", 1},
        });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(), L"PATH= x\r\nsenza uguale", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza uguale.", 2));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Retrieval, TheIndentOfTheText) {
    diRetrieval Item;
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    MemoryRegData Object(L"RETRIEVAL", Base());
    ASSERT_FALSE(Item.LoadData(Object));
    const auto Shown = [&](bool Block, std::int32_t Indent, std::wstring_view Key = L"PARMS") {
        std::wstring Buffer;
        EXPECT_FALSE(Item.DispData({.Index = 1, .Key = std::wstring(Key)}, Buffer, Block, {}, Indent));
        return Buffer;
    };
    EXPECT_EQ(Shown(false, 0).rfind(L"PATH= ", 0), 0U);
    EXPECT_EQ(Shown(false, 3).rfind(L"\t\t\tPATH= ", 0), 0U) << "as given";
    EXPECT_EQ(Shown(true, 0).rfind(L"BEGIN PARMS\r\n\tPATH= ", 0), 0U) << "one deeper";
    EXPECT_EQ(Shown(true, 2).rfind(L"\t\tBEGIN PARMS\r\n\t\t\tPATH= ", 0), 0U);
    // Comment lines are indented with the others; the one line that is not stands at the margin.
    EXPECT_NE(
        Shown(false, 2).find(L"\r\n\t\t'Questo parametro prevale sulle impostazioni del client solo se è "
                             L"settato il flag PREVAIL\r\nLOANENABLE= ENABLED\r\n\t\t'Questo parametro "
                             L"prevale sulle impostazioni del client\r\n\t\tPRNMAXITEMS= NONE\r\n"),
        std::wstring::npos);
    EXPECT_EQ(Shown(true, 1, L"ALTRO"), L"\tBEGIN ALTRO\r\n\tEND ALTRO\r\n");
    EXPECT_EQ(Shown(false, 1, L"ALTRO"), L"");
}

TEST_F(Retrieval, Export) { EXPECT_TRUE(MatchesGolden("export/RETRIEVAL.txt", On.Exported())); }

TEST_F(Retrieval, ImportsNothing) {
    std::wstring Text = L"BEGIN PARMS\r\nEND PARMS\r\n";
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Server.Import(On.Object, L"RETRIEVAL", Text); })));
    EXPECT_FALSE(On.Object->Written());
}

TEST_F(Retrieval, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines(kFull))));
    EXPECT_FALSE(On.Object->Written());
    const std::wstring Shown = On.Text(Parms());
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"RETRIEVAL", Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), Shown);
    EXPECT_EQ(SavedBy(Again), Saved);
}

TEST_F(Retrieval, OtherSections) {
    for (const bool Strict : {true, false}) {
        On.Tree->SetSyntaxOn(Strict);
        for (const wchar_t* Key : {L"ALTRO", L"parms", L"TABLE"}) {
            std::wstring Text = L"PIPPO= 1";
            std::wstring NewKey;
            EXPECT_TRUE(RefusedSilently(
                On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
            std::wstring Shown;
            EXPECT_TRUE(
                Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
            EXPECT_EQ(Shown, L"");
        }
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = L""}, Text, NewKey); })));
    }
}

TEST_F(Retrieval, OtherOperations) {
    const std::wstring Before = On.Picture();
    std::wstring Made;
    EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(At(), 1, Made); })));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At(), false); })));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At(), true); })));
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable(At()); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, At());
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());

    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.EditData({.CurrItem = Parms(), .Key = L"ALTRO"}, Made); })));
    EXPECT_EQ(On.Picture(), Before);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.EditData({.CurrItem = L"PARMS"}, Made); })));
    EXPECT_EQ(On.Leaf(L"PARMS", 2), Made);
    EXPECT_EQ(On.Tree->NodeText(Made), L"PARMS");

    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData(At(), false, Word); })));
    EXPECT_EQ(Word, L"RETRIEVAL");
    EXPECT_EQ(TextOf(On.Clipboard.DataObj->Read(), L"Path"), L"D:\\Basi\\Libri");
}

TEST_F(Retrieval, Identity) {
    diRetrieval Item;
    std::wstring Name = L"x";
    std::wstring Desc = L"x";
    std::wstring Id;
    std::int16_t Version = 9;
    EXPECT_FALSE(Item.GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name + Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
    MemoryRegData Object(L"RETRIEVAL", Base());
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    ASSERT_FALSE(Item.LoadData(Object));
    EXPECT_FALSE(Item.GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
}

TEST_F(Retrieval, AFailedLoadBuildsNothing) {
    Desk Broken(L"RETRIEVAL", With(Desk::Named(L"PROVA"), {{L"DataLockPwd", 70000}}));
    EXPECT_TRUE(Refused(Broken.Opened, 6, L"RetrievalRecord.Load", L"Overflow"));
    EXPECT_EQ(Broken.Picture(), L"");
    diRetrieval Item;
    MemoryRegData Object(L"RETRIEVAL", Base());
    EXPECT_TRUE(Item.LoadData(Object)) << "no tree";
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diRetrieval.LoadData");
    CoreUtil::Instance().ForgetError();
}

}  // namespace
}  // namespace kv::test
