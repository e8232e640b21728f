// The classes with the one section PARMS and the plain life: catalogue, filter, import, member, repository.
#include <gtest/gtest.h>

#include <ostream>

#include "items/services/diCatalogue.h"
#include "items/services/diFilter.h"
#include "items/services/diImport.h"
#include "items/services/diMember.h"
#include "items/services/diRepository.h"
#include "tests/support/Desk.h"

namespace kv::test {
namespace {

struct ClassCase {
    const wchar_t* Word;
    const wchar_t* ClassName;   // source of the item's own procedures
    const wchar_t* SaveSource;  // source of a refused text
    bool AddsLeaf;              // whether EditData adds a further leaf
    const wchar_t* Sample;      // a text with every keyword
    const wchar_t* Offered;     // the value words
    std::unique_ptr<iKvTree> (*Make)();
};

std::ostream& operator<<(std::ostream& Out, const ClassCase& Case) { return Out << Narrow(Case.Word); }

template <class Item>
std::unique_ptr<iKvTree> Make() {
    return std::make_unique<Item>();
}

const ClassCase kCases[] = {
    {L"CATALOGUE", L"diCatalogue", L"ParmEditor.SaveCatalogue", true,
     L"RETRIEVAL= \"biblio\"\r\nTABLE= \"libri\"\r\nPROFILE= \"scheda\"\r\nQUERY= \"semplice\"\r\n"
     L"BROWSE= \"titoli\"\r\nPATH= \"D:\\Cataloghi\\Libri\"\r\nHELP= \"aiuto\"\r\nHELPWWW= \"aiutoweb\"\r\n"
     L"FLAGS= NONE\r\nMIRROROF= \"Altro\"\r\n",
     L"", Make<diCatalogue>},
    {L"FILTER", L"diFilter", L"ParmEditor.SaveFilter", false,
     L"TABLE= \"anno\"\r\nEXPRESSION= \"Anno > 1950\"\r\nAUTOMATIC= TRUE\r\nMERGEWITH= OR\r\nHELP= "
     L"\"aiuto\"\r\n"
     L"FLAGS= NONE\r\nMIRROROF= \"Altro\"\r\n",
     L"PARMS FLAGS= NONE\n", Make<diFilter>},
    {L"IMPORT", L"diImport", L"ParmEditor.SaveImport", true,
     L"PROCEDURE= \"unimarc\"\r\nRETRIEVAL= \"biblio\"\r\nSOURCEPATH= \"C:\\Dati\\*.mrc\"\r\n"
     L"TARGETPATH= \"FILE:D:\\Base;C:\\Temp\"\r\nLOGFILE= \"import.log\"\r\n"
     L"PROCTYPE= INCREMENTAL|REFRESH\r\nFLAGS= CABFILES|ZIPFILES\r\nLOCKED= TRUE\r\nMIRROROF= \"Altro\"\r\n",
     L"PARMS FLAGS= NONE ZIPFILES CABFILES\n"
     L"PARMS TARGETPATH= FILE:<target>[;<ziptmppath>] FTP:[user,pwd@]<target>[;<ziptmppath>] "
     L"HTTP:[pwd@]<target>[;<ziptmppath>]\n"
     L"PARMS LOCKED= FALSE TRUE\n"
     L"PARMS PROCTYPE= NODBR ONLYDBR UNKNOWTAGWARN UNKNOWTAGSTOP INCREMENTAL COMPACTDB NONULLMAINKEY REFRESH "
     L"NONE\n",
     Make<diImport>},
    {L"MEMBER", L"diMember", L"diMember.SaveParm", false, L"PASSWORD= \"abc\"\r\n", L"", Make<diMember>},
    {L"REPOSITORY", L"diRepository", L"RepositoryRecord.SaveParm", false,
     L"PATH= \"D:\\Digitale\"\r\nURL= \"http://esempio.it/Img\"\r\nTABLE= \"libri\"\r\nKEYFIELD= "
     L"\"inventario\"\r\n"
     L"TEMPPATH= \"C:\\Temp\"\r\nREADONLY= TRUE\r\nFLAGS= NONE\r\nMIRROROF= \"Altro\"\r\n",
     L"", Make<diRepository>},
};

class SimpleItem : public ::testing::TestWithParam<ClassCase> {
  protected:
    Desk On{GetParam().Word};
    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    window::Selection At() const { return {.CurrItem = Parms()}; }
    std::wstring Source(const wchar_t* Procedure) const {
        return std::wstring(GetParam().ClassName) + L"." + Procedure;
    }
};

INSTANTIATE_TEST_SUITE_P(Classes, SimpleItem, ::testing::ValuesIn(kCases),
                         [](const auto& Info) { return Narrow(Info.param.Word); });

TEST_P(SimpleItem, Tree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"));
    EXPECT_EQ(Narrow(On.Offered()), Narrow(GetParam().Offered));
}

TEST_P(SimpleItem, EmptyAndFullSectionText) {
    const std::string Name = Narrow(GetParam().Word);
    EXPECT_TRUE(MatchesGolden("section/" + Name + ".empty.txt", On.Text(Parms())));
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    EXPECT_TRUE(MatchesGolden("section/" + Name + ".full.txt", On.Text(Parms())));
}

TEST_P(SimpleItem, RenderedTextComesBackUnchanged) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    const std::wstring Shown = On.Text(Parms());
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(On.Put(Parms(), Shown, Strict)));
        EXPECT_EQ(On.Text(Parms()), Shown);
    }
}

TEST_P(SimpleItem, LineFeedsAloneAreNoLineEnds) {
    // The whole text is one line: what stands behind its first "=" is one value.
    const std::wstring Sample = GetParam().Sample;
    const std::wstring First = Sample.substr(0, Sample.find(L"\r\n"));
    const std::wstring Keyword = First.substr(0, First.find(L'=') + 1);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Keyword + L" uno\nPIPPO= due\nPIPPO= tre")));
    const std::wstring Shown = On.Text(Parms());
    const std::wstring Value = GetParam().SaveSource == std::wstring(L"RepositoryRecord.SaveParm")
                                   ? L"\"uno\nPIPPO= due\nPIPPO= tre\""
                                   : L"\"UNO\nPIPPO= DUE\nPIPPO= TRE\"";
    EXPECT_EQ(Narrow(Shown.substr(0, Shown.find(L"\r\n"))), Narrow(Keyword + L" " + Value));
}

TEST_P(SimpleItem, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    const std::wstring Shown = On.Text(Parms());
    EXPECT_TRUE(On.Tree->Modified());
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(On.Object->Saving());
    Desk Again(GetParam().Word, On.Object->Read());
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), Shown);
    EXPECT_EQ(Again.Object->Read(), On.Object->Read());
}

TEST_P(SimpleItem, NothingIsStoredWithoutSave) {
    const RegObject Before = On.Object->Read();
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    EXPECT_EQ(On.Object->Read(), Before);
    EXPECT_FALSE(On.Object->Written());
}

TEST_P(SimpleItem, Export) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_TRUE(MatchesGolden("export/" + Narrow(GetParam().Word) + ".txt", On.Exported()));
    EXPECT_EQ(On.Platform.Pointers, (std::vector<std::int32_t>{11, 0}));
}

TEST_P(SimpleItem, RefusedTextChangesNothing) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    const std::wstring Before = On.Text(Parms());
    const std::wstring First =
        std::wstring(GetParam().Sample).substr(0, std::wstring(GetParam().Sample).find(L"\r\n"));
    const std::wstring Keyword = First.substr(0, First.find(L'=') + 1);
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Refused(On.Put(Parms(), First + L"\r\nPIPPO=1", Strict), 20000, GetParam().SaveSource,
                            L"Parametro non riconosciuto: PIPPO=1", 2));
        EXPECT_TRUE(Refused(On.Put(Parms(), First + L"\r\n\r\n" + First, Strict), 20000,
                            GetParam().SaveSource, L"Ripetizone del parametro " + Keyword + L".", 3));
        EXPECT_TRUE(Refused(On.Put(Parms(), Keyword + L"\r\nsenza segno", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza segno.", 2));
        EXPECT_EQ(On.Text(Parms()), Before);
        EXPECT_FALSE(On.Tree->Modified());
    }
}

TEST_P(SimpleItem, DuplicatesAreForgottenBetweenSaves) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
}

TEST_P(SimpleItem, UnknownAndEmptySectionsSucceedAndDoNothing) {
    const std::wstring Before = On.Text(Parms());
    for (const wchar_t* Key : {L"", L"FIELDS", L"parms"}) {
        std::wstring Text = L"PIPPO=1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_EQ(On.Text(Parms()), Before);
}

TEST_P(SimpleItem, NewLeaf) {
    std::wstring Key;
    const Outcome Got = On.Try([&] { return On.Core.EditData(At(), Key); });
    ASSERT_TRUE(Accepted(Got));
    if (GetParam().AddsLeaf) {
        EXPECT_EQ(Key, On.Leaf(L"PARMS", 2));
        EXPECT_EQ(On.Tree->NodeText(Key), L"PARMS");
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(On.Text(Key), On.Text(Parms()));
        std::wstring Other;
        EXPECT_TRUE(
            Refused(On.Try([&] { return On.Core.EditData({.CurrItem = Parms(), .Key = L"FIELDS"}, Other); }),
                    91, Source(L"EditData"), L"Oggetto non impostato"));
        EXPECT_EQ(On.Tree->Count(), 4U);
        // The root is a node like any other: a leaf hangs below it.
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.EditData({.CurrItem = L"ROOT"}, Other); })));
        EXPECT_EQ(On.Tree->NodeParent(Other), L"ROOT");
        EXPECT_EQ(On.Tree->NodeText(Other), L"ROOT");
    } else {
        EXPECT_EQ(Key, L"");
        EXPECT_EQ(On.Tree->Count(), 3U);
        EXPECT_FALSE(On.Tree->Modified());
    }
}

TEST_P(SimpleItem, NothingMovesAndNothingIsDeleted) {
    const std::wstring Before = On.Picture();
    std::wstring Key;
    for (const std::int32_t Direction : {1, 0, -1})
        EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(At(), Direction, Key); })));
    for (const bool Group : {false, true})
        EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.DeleteData(At(), Group); })));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_P(SimpleItem, OperationsThatDoNothing) {
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable(At()); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.HelpShow(At(), L"PARMS"); })));
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS", L"COPY", L""})
        EXPECT_TRUE(Accepted(On.Try([&] {
            On.Core.TlbrButtonClick(Tool, At());
            return false;
        })));
    const auto Item = GetParam().Make();
    std::wstring Text = L"BEGIN PARMS\r\nEND PARMS\r\n";
    EXPECT_FALSE(Item->ImportData(*On.Object, Text));
    EXPECT_FALSE(Item->ShowUsers({}));
    EXPECT_FALSE(On.Object->Written());
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_P(SimpleItem, IdentityOfALoadedAndOfAnAbsentRecord) {
    std::wstring Name, Desc, Id, Clsid, UserList;
    std::int16_t Version = -1;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, UserList); })));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
    EXPECT_EQ(Clsid, GetParam().Word);
    EXPECT_EQ(UserList, L"ADMIN");

    const auto Item = GetParam().Make();
    ASSERT_FALSE(Item->GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name, L"");
    EXPECT_EQ(Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
}

TEST_P(SimpleItem, VersionBeyondSixteenBitsIsAnOverflow) {
    RegObject Content = Desk::Named(L"PROVA");
    Content.Version = 40000;
    Desk Wide(GetParam().Word, Content);
    std::wstring Name, Desc, Id, Clsid, UserList;
    std::int16_t Version = 0;
    EXPECT_TRUE(
        Refused(Wide.Try([&] { return Wide.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, UserList); }),
                6, Source(L"GetObjectInfo"), L"Overflow"));
}

TEST_P(SimpleItem, WithoutATreeTheItemFailsWithAText) {
    const auto Item = GetParam().Make();
    EXPECT_TRUE(Item->LoadData(*On.Object));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, Source(L"LoadData"));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 91);
    CoreUtil::Instance().ForgetError();
}

TEST_P(SimpleItem, CopyAndPasteIntoAnotherObject) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), GetParam().Sample)));
    const std::wstring Copied = On.Text(Parms());
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData(At(), false, Word); })));
    EXPECT_EQ(Word, GetParam().Word);

    RegObject Other = Desk::Named(L"ALTRO");
    Other.Id = 8;
    Desk Into(GetParam().Word, Other);
    Into.Clipboard = On.Clipboard;
    std::wstring NewKey;
    ASSERT_TRUE(Accepted(Into.Try(
        [&] { return Into.Core.PasteData({.CurrItem = Into.Leaf(L"PARMS")}, std::nullopt, NewKey); })));
    EXPECT_TRUE(Into.Tree->Modified());
    std::wstring Expected = Copied;
    const auto Put = [&](std::wstring_view From, std::wstring_view To) {
        Expected.replace(Expected.find(From), From.size(), To);
    };
    Put(L"'[ID= 7]", L"'[ID= 8]");
    Put(L"'[NAME= PROVA]", L"'[NAME= ALTRO]");
    EXPECT_EQ(Narrow(Into.Text(Into.Leaf(L"PARMS"))), Narrow(Expected));
}

TEST_P(SimpleItem, PasteOfAForeignClassIsRefused) {
    On.Clipboard = {.DataObj = std::make_shared<MemoryRegData>(L"MENU"), .ClassWord = L"MENU"};
    std::wstring NewKey;
    const std::wstring Before = On.Text(Parms());
    EXPECT_TRUE(Refused(
        On.Try([&] { return On.Core.PasteData(At(), std::nullopt, NewKey); }), 20000, L"vdSvr.PasteData",
        L"I dati memorizzati sono di una classe diversa da " + std::wstring(GetParam().Word)));
    EXPECT_EQ(On.Text(Parms()), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST(MemberItem, PasswordIsStoredInUpperCase) {
    Desk On(L"MEMBER");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PASSWORD= abc")));
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    EXPECT_EQ(std::get<std::wstring>(*On.Object->Read().Value(L"Text")), L"ABC");
    EXPECT_EQ(Narrow(On.Text(On.Leaf(L"PARMS"))),
              Narrow(Lines({L"PASSWORD= \"ABC\"", L"'[ID= 7]", L"'[NAME= PROVA]", L"'[VERSION= 3]"})));
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PASSWORD= \"à la ß\"")));
    EXPECT_EQ(On.Text(On.Leaf(L"PARMS")).rfind(L"PASSWORD= \"À LA ß\"\r\n", 0), 0U);
}

TEST(MemberItem, ATextOfCommentsCommitsTheDefaults) {
    Desk On(L"MEMBER");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PASSWORD= ABC")));
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"'nota\r\n\r\n;altra\r\n*ancora")));
    EXPECT_EQ(On.Text(On.Leaf(L"PARMS")).rfind(L"PASSWORD= \"\"\r\n", 0), 0U);
}

TEST(RepositoryItem, WhatATextLeavesOutKeepsItsValue) {
    Desk On(L"REPOSITORY");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PATH= Uno\r\nURL= Due")));
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"URL= Tre")));
    EXPECT_EQ(On.Text(On.Leaf(L"PARMS")).rfind(L"PATH= \"Uno\"\r\nURL= \"Tre\"\r\n", 0), 0U);
}

TEST(CatalogueItem, WhatATextLeavesOutReturnsToItsDefault) {
    Desk On(L"CATALOGUE");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"PATH= Uno\r\nTABLE= Due")));
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"), L"TABLE= Tre")));
    const std::wstring Shown = On.Text(On.Leaf(L"PARMS"));
    EXPECT_NE(Shown.find(L"PATH= \"\"\r\n"), std::wstring::npos);
    EXPECT_NE(Shown.find(L"TABLE= \"TRE\"\r\n"), std::wstring::npos);
}

TEST(ImportItem, FlagWordsInAnyOrderReadAsOne) {
    Desk On(L"IMPORT");
    const std::wstring Key = On.Leaf(L"PARMS");
    ASSERT_TRUE(Accepted(On.Put(Key, L"FLAGS= cabfiles | ZIPFILES\r\nPROCTYPE= refresh|nodbr")));
    const std::wstring Shown = On.Text(Key);
    EXPECT_NE(Shown.find(L"FLAGS= ZIPFILES|CABFILES\r\n"), std::wstring::npos);
    EXPECT_NE(Shown.find(L"PROCTYPE= NODBR|REFRESH\r\n"), std::wstring::npos);
    EXPECT_TRUE(Refused(On.Put(Key, L"FLAGS= ZIPFILES|RARFILES|CABFILES"), 20000, L"ParmEditor.SaveImport",
                        L"Valore sconosciuto per il parametro FLAGS=(CABFILES)", 1));
    ASSERT_TRUE(Accepted(On.Put(Key, L"FLAGS= ZIPFILES|RARFILES|CABFILES", false)));
    EXPECT_NE(On.Text(Key).find(L"FLAGS= ZIPFILES|CABFILES\r\n"), std::wstring::npos);
}

}  // namespace
}  // namespace kv::test
