// The three classes of the loan service, each with the one section PARMS: what they have in common is asked
// of all, and each difference of each.
#include <gtest/gtest.h>

#include <ostream>

#include "items/services/diLoan.h"
#include "items/services/diLoanClient.h"
#include "items/services/diLoanMenu.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

struct Variant {
    const wchar_t* Word;
    const wchar_t* ClassName;   // source of the item's own procedures
    const wchar_t* SaveSource;  // source of a refused text
    std::wstring Sample;        // a text with every keyword, as it is rendered
    std::wstring Offered;       // the value words
    bool Copies;                // whether the object reaches the clipboard
    std::unique_ptr<iKvTree> (*Make)();
};

std::ostream& operator<<(std::ostream& Out, const Variant& Case) { return Out << Narrow(Case.Word); }

template <class Item>
std::unique_ptr<iKvTree> MakeItem() {
    return std::make_unique<Item>();
}

constexpr std::wstring_view kMenuKeywords[] = {
    L"USERNEW=",    L"USERMOD=",   L"USERDEL=",    L"USERPRN=",    L"LOANLOAN=",   L"LOANDEP=",
    L"LOANPREN=",   L"LOANSOLLE=", L"STATACTIVE=", L"PARMACTIVE=", L"SERVACTIVE=", L"USERACTIVE=",
    L"LOANACTIVE=", L"CHANGEBIB=", L"BUTTLETT=",   L"BUTTPREST=",  L"BUTTRESO=",   L"BUTTRINNO=",
    L"BUTTPRENO=",  L"BUTTCONSE=", L"BUTTCANCE=",  L"BUTTDEPOS=",  L"BUTTENDDE=",  L"BUTTCOMPRA=",
};

std::wstring MenuSample() {
    std::wstring Text;
    bool Yes = true;
    for (const std::wstring_view Keyword : kMenuKeywords) {
        Text.append(Keyword).append(Yes ? L" TRUE\r\n" : L" FALSE\r\n");
        Yes = !Yes;
    }
    return Text + L"MIRROROF= \"Altro\"\r\n";
}
std::wstring MenuOffered() {
    std::wstring Text;
    for (const std::wstring_view Keyword : kMenuKeywords)
        Text.append(L"PARMS ").append(Keyword).append(L" FALSE TRUE\n");
    return Text;
}

const Variant kVariants[] = {
    {L"LOAN", L"diLoan", L"ParmEditor.SaveLoan",
     L"RETRIEVAL= \"BIBLIO\"\r\nPATH= \"D:\\Prestiti\"\r\nLOGFILE= \"prestiti.log\"\r\nASKUSER= TRUE\r\n"
     L"HELP= \"AIUTO\"\r\nMIRROROF= \"Altro\"\r\n",
     L"PARMS ASKUSER= FALSE TRUE\n", true, MakeItem<diLoan>},
    {L"LOANCLIENT", L"diLoanClient", L"ParmEditor.SaveLoanClient",
     L"LOAN= \"PRESTITI\"\r\nMENU= \"BANCO\"\r\nREQUESTOPTIONS= LOAN|RESERVATION\r\nDELIVERLIB= DEFAULT\r\n"
     L"WEBDELIVERLIB= ALL\r\nPWDOPTIONS= ALPHA|LENGTH|DIGIT\r\nPWDLENGTH= 8\r\nHELP= \"AIUTO\"\r\n"
     L"MIRROROF= \"Altro\"\r\n",
     L"PARMS REQUESTOPTIONS= NOTHING LOAN REFERENCE RESERVATION\n"
     L"PARMS DELIVERLIB= ALL DEFAULT\n"
     L"PARMS WEBDELIVERLIB= ALL DEFAULT\n"
     L"PARMS PWDOPTIONS= NONE ALPHA CAMEL DOMAIN LENGTH NONALPHA PUNCT DIGIT\n",
     false, MakeItem<diLoanClient>},
    {L"LOANMENU", L"diLoanMenu", L"ParmEditor.SaveLoanMenu", MenuSample(), MenuOffered(), false,
     MakeItem<diLoanMenu>},
};

const std::wstring kIdentity = L"'[ID= 7]\r\n'[NAME= PROVA]\r\n'[VERSION= 3]\r\n";

class LoanItem : public ::testing::TestWithParam<Variant> {
  protected:
    const Variant& Of = GetParam();
    Desk On{GetParam().Word};
    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    window::Selection At() const { return {.CurrItem = Parms()}; }
    std::wstring Source(const wchar_t* Procedure) const {
        return std::wstring(Of.ClassName) + L"." + Procedure;
    }
    std::wstring FirstLine() const { return Of.Sample.substr(0, Of.Sample.find(L"\r\n")); }
    std::wstring FirstKeyword() const { return Of.Sample.substr(0, Of.Sample.find(L'=') + 1); }
};

INSTANTIATE_TEST_SUITE_P(Classes, LoanItem, ::testing::ValuesIn(kVariants),
                         [](const auto& Info) { return Narrow(Info.param.Word); });

TEST_P(LoanItem, TreeAndChoices) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"));
    EXPECT_EQ(Narrow(On.Offered()), Narrow(Of.Offered));
}

TEST_P(LoanItem, EmptyAndFullSectionText) {
    const std::string Name = Narrow(Of.Word);
    EXPECT_TRUE(MatchesGolden("section/" + Name + ".empty.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Of.Sample + kIdentity));
    EXPECT_TRUE(MatchesGolden("section/" + Name + ".full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
}

TEST_P(LoanItem, EveryOfferedWordIsTakenAndAnyOtherRefusedInStrictMode) {
    const auto LineOf = [&](const std::wstring& Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Parms());
        const std::size_t Found = Shown.find(L"\r\n" + Keyword) + 2;
        return Shown.substr(Found, Shown.find(L"\r\n", Found) - Found);
    };
    for (const window::ValueWords& Row : On.Tree->Choices()) {
        for (const std::wstring& Choice : Row.Words) {
            for (const bool Strict : {true, false}) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" " + Choice, Strict)));
                EXPECT_EQ(Narrow(LineOf(Row.Keyword)), Narrow(Row.Keyword + L" " + Choice));
            }
        }
        const std::wstring Before = On.Text(Parms());
        const Outcome Got = On.Put(Parms(), L"'prima\r\n" + Row.Keyword + L" forse");
        ASSERT_TRUE(Got.has_value()) << Narrow(Row.Keyword);
        EXPECT_EQ(Got->Source, Of.SaveSource);
        // A flag word is taken off the value before it is looked up; any other value is shown whole.
        const bool Bits = Row.Keyword.ends_with(L"OPTIONS=");
        EXPECT_EQ(Got->Description,
                  L"Valore sconosciuto per il parametro " + Row.Keyword + (Bits ? L"()" : L"(FORSE)"));
        EXPECT_EQ(Got->Line, 2);
        EXPECT_EQ(On.Text(Parms()), Before);
        EXPECT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" forse", false)));
    }
}

TEST_P(LoanItem, WhatATextLeavesOutReturnsToItsDefault) {
    const std::wstring Empty = On.Text(Parms());
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'niente\r\n\r\n;nulla")));
    EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Empty));
}

TEST_P(LoanItem, RefusedTextChangesNothing) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    const RegObject Saved = SavedBy(On);
    const std::wstring First = FirstLine();
    ExpectRefusals(On, Parms(), Of.SaveSource,
                   {{First + L"\r\nFLAGS=1", L"Parametro non riconosciuto: FLAGS=1", 2},
                    {First + L"\r\n\r\n" + First, L"Ripetizone del parametro " + FirstKeyword() + L".", 3}});
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(), FirstKeyword() + L"\r\nsenza segno", Strict), 20018,
                            L"vDesignPar.GetFieldValue", L"Errore di sintassi: senza segno.", 2));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(SavedBy(On), Saved);
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample))) << "duplicates are forgotten between texts";
}

TEST_P(LoanItem, SaveAndReload) {
    const RegObject Before = On.Object->Read();
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(On.Object->Read(), Before) << "nothing is stored without a save";
    const RegObject Saved = SavedBy(On);
    EXPECT_FALSE(On.Tree->Modified());
    Desk Again(Of.Word, Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
    EXPECT_EQ(SavedBy(Again), Saved);
}

TEST_P(LoanItem, ExportHasNoBlockOfTheClass) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    static_cast<void>(SavedBy(On));
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/" + Narrow(Of.Word) + ".txt", Text));
    EXPECT_EQ(Narrow(Text), Narrow(L"BEGIN PARMS\r\n" + Of.Sample + kIdentity + L"END PARMS\r\n"));
}

TEST_P(LoanItem, NoIndentAnywhere) {
    const auto Item = Of.Make();
    Item->DesignTree() = std::make_shared<window::TreeModel>();
    ASSERT_FALSE(Item->LoadData(*On.Object));
    for (const std::int32_t Indent : {0, 1, 3}) {
        for (const std::wstring Key : {L"PARMS", L"ALTRO"}) {
            std::wstring Buffer;
            EXPECT_FALSE(Item->DispData({.Index = 1, .Key = Key}, Buffer, true, {}, Indent));
            EXPECT_TRUE(Buffer.starts_with(L"BEGIN " + Key + L"\r\n"));
            EXPECT_TRUE(Buffer.ends_with(L"END " + Key + L"\r\n"));
            EXPECT_EQ(Buffer.find(L'\t'), std::wstring::npos);
        }
    }
}

TEST_P(LoanItem, NewLeaf) {
    std::wstring Key;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Key)));
    EXPECT_EQ(Key, On.Leaf(L"PARMS", 2));
    EXPECT_EQ(On.Tree->NodeText(Key), L"PARMS");
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(On.Text(Key), On.Text(Parms()));
    EXPECT_TRUE(
        Refused(On.Try([&] { return On.Core.EditData({.CurrItem = Parms(), .Key = L"FIELDS"}, Key); }), 91,
                Source(L"EditData"), L"Oggetto non impostato"));
    EXPECT_EQ(On.Tree->Count(), 4U);
}

TEST_P(LoanItem, NothingMovesAndNothingIsDeleted) {
    const std::wstring Before = On.Picture();
    std::wstring Key;
    for (const std::int32_t Direction : {1, 0, -1})
        EXPECT_TRUE(RefusedSilently(On.Try([&] { return On.Core.MoveData(At(), Direction, Key); })));
    for (const bool Group : {false, true}) EXPECT_TRUE(Accepted(DeleteAt(On, Parms(), Group)));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_P(LoanItem, OnlyTheLoanServiceReachesTheClipboard) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), Of.Sample)));
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData(At(), false, Word); })));
    EXPECT_EQ(Word, Of.Copies ? Of.Word : L"");
    ClipItem Nothing;
    const auto Item = Of.Make();
    EXPECT_EQ(Item->CopyData({}, false, Nothing), Of.Copies) << "a copy with nowhere to go";
    CoreUtil::Instance().ForgetError();
    if (!Of.Copies) {
        EXPECT_EQ(On.Clipboard.DataObj, nullptr);
        return;
    }
    RegObject Other = Desk::Named(L"ALTRO");
    Other.Id = 8;
    Desk Into(Of.Word, Other);
    Into.Clipboard = On.Clipboard;
    std::wstring NewKey;
    ASSERT_TRUE(Accepted(Into.Try(
        [&] { return Into.Core.PasteData({.CurrItem = Into.Leaf(L"PARMS")}, std::nullopt, NewKey); })));
    EXPECT_EQ(Narrow(Into.Text(Into.Leaf(L"PARMS"))),
              Narrow(Of.Sample + L"'[ID= 8]\r\n'[NAME= ALTRO]\r\n'[VERSION= 3]\r\n"));
}

TEST_P(LoanItem, UnknownSectionsAndOperationsThatDoNothing) {
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
    On.Tree->MarkModified(false);
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable(At()); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, At());
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(On.Text(Parms()), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_P(LoanItem, IdentityOfALoadedAndOfAnAbsentRecord) {
    std::wstring Name, Desc, Id, Clsid, UserList;
    std::int16_t Version = -1;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, UserList); })));
    EXPECT_EQ(Name, L"PROVA");
    EXPECT_EQ(Desc, L"Oggetto di prova");
    EXPECT_EQ(Version, 3);
    EXPECT_EQ(Id, L"7");
    const auto Item = Of.Make();
    ASSERT_FALSE(Item->GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name + Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
}

TEST_P(LoanItem, FailuresAreToldUnderItsOwnName) {
    const auto Item = Of.Make();
    std::wstring Text, Key;
    const Head Whole{.Key = L"PARMS"};
    const auto Told = [](bool Failed) {
        EXPECT_TRUE(Failed);
        EXPECT_EQ(CoreUtil::Instance().LastError().Number, 91);
        std::wstring Source = CoreUtil::Instance().LastError().Source;
        CoreUtil::Instance().ForgetError();
        return Source;
    };
    EXPECT_EQ(Told(Item->LoadData(*On.Object)), Source(L"LoadData"));
    EXPECT_EQ(Told(Item->SaveData(Whole, Key, Text, nullptr)), Source(L"SaveData"));
    EXPECT_EQ(Told(Item->DispData(Whole, Text, false, {}, 0)), Source(L"DispData"));
    EXPECT_EQ(Told(Item->EditData(Whole, Key)), Source(L"EditData"));
    RegObject Content = Desk::Named(L"PROVA");
    Content.Version = 40000;
    Desk Wide(Of.Word, Content);
    std::wstring Name, Desc, Id, Clsid, UserList;
    std::int16_t Version = 0;
    EXPECT_TRUE(
        Refused(Wide.Try([&] { return Wide.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, UserList); }),
                6, Source(L"GetObjectInfo"), L"Overflow"));
}

// What is each one's own.

TEST(LoanService, EveryKeywordIsStored) {
    Desk On(L"LOAN");
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"PARMS"),
                                Lines({L"RETRIEVAL= biblio", L"PATH= \"D:\\Dati\"", L"LOGFILE= Registro.log",
                                       L"ASKUSER= vero", L"HELP= \"aiuto\"", L"MIRROROF= Altro"}))));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"Retrieval"), L"BIBLIO");
    EXPECT_EQ(TextOf(Now, L"Path"), L"D:\\Dati");
    EXPECT_EQ(TextOf(Now, L"LogFile"), L"Registro.log");
    EXPECT_TRUE(BoolOf(Now, L"AskUser"));
    EXPECT_EQ(TextOf(Now, L"Help"), L"AIUTO");
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altro");
}

TEST(LoanClient, EveryKeywordIsStored) {
    Desk On(L"LOANCLIENT");
    ASSERT_TRUE(Accepted(
        On.Put(On.Leaf(L"PARMS"),
               Lines({L"LOAN= prestiti", L"MENU= \"banco\"", L"REQUESTOPTIONS= reservation | loan",
                      L"DELIVERLIB= default", L"WEBDELIVERLIB= default", L"PWDOPTIONS= digit|punct|camel",
                      L"PWDLENGTH= 10", L"HELP= aiuto", L"MIRROROF= Altro"}))));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"Loan"), L"PRESTITI");
    EXPECT_EQ(TextOf(Now, L"Menu"), L"BANCO");
    EXPECT_EQ(LongOf(Now, L"RequestOptions"), 5);
    EXPECT_EQ(LongOf(Now, L"DeliverLib"), 1);
    EXPECT_EQ(LongOf(Now, L"WebDeliverLib"), 1);
    EXPECT_EQ(LongOf(Now, L"PwdOptions"), 0x62);
    EXPECT_EQ(LongOf(Now, L"PwdLength"), 10);
    EXPECT_EQ(TextOf(Now, L"Help"), L"AIUTO");
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Altro");
}

TEST(LoanClient, NoRequestIsNothingAndNoPasswordRuleIsNone) {
    Desk On(L"LOANCLIENT");
    const std::wstring Key = On.Leaf(L"PARMS");
    for (const wchar_t* Text :
         {L"REQUESTOPTIONS= nothing\r\nPWDOPTIONS= none", L"REQUESTOPTIONS=\r\nPWDOPTIONS="}) {
        ASSERT_TRUE(Accepted(On.Put(Key, L"REQUESTOPTIONS= LOAN\r\nPWDOPTIONS= DIGIT")));
        ASSERT_TRUE(Accepted(On.Put(Key, Text)));
        EXPECT_EQ(LongOf(SavedBy(On), L"RequestOptions"), 0);
        EXPECT_EQ(LongOf(SavedBy(On), L"PwdOptions"), 0);
        EXPECT_NE(On.Text(Key).find(L"REQUESTOPTIONS= NOTHING\r\n"), std::wstring::npos);
        EXPECT_NE(On.Text(Key).find(L"PWDOPTIONS= NONE\r\n"), std::wstring::npos);
    }
    ExpectRefusals(
        On, Key, L"ParmEditor.SaveLoanClient",
        {{L"REQUESTOPTIONS= NONE", L"Valore sconosciuto per il parametro REQUESTOPTIONS=()", 1, false},
         {L"REQUESTOPTIONS= prestito|LOAN", L"Valore sconosciuto per il parametro REQUESTOPTIONS=(LOAN)", 1,
          false},
         {L"PWDOPTIONS= NOTHING", L"Valore sconosciuto per il parametro PWDOPTIONS=()", 1, false},
         {L"DELIVERLIB= ALL|DEFAULT", L"Valore sconosciuto per il parametro DELIVERLIB=(ALL|DEFAULT)", 1,
          false}});
    // In lax mode the words that are known stay.
    ASSERT_TRUE(Accepted(On.Put(Key, L"REQUESTOPTIONS= prestito|LOAN\r\nPWDOPTIONS= DIGIT|forse", false)));
    EXPECT_EQ(LongOf(SavedBy(On), L"RequestOptions"), 1);
    EXPECT_EQ(LongOf(SavedBy(On), L"PwdOptions"), 0x40);
}

TEST(LoanClient, ALengthBeyondItsRangeIsOverflow) {
    Desk On(L"LOANCLIENT");
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(On.Leaf(L"PARMS"), L"LOAN= x\r\nPWDLENGTH= 2147483648", Strict), 6,
                            L"ParmEditor.SaveLoanClient", L"Overflow", 2));
}

TEST(LoanMenu, EachKeywordSetsItsOwnFlag) {
    Desk On(L"LOANMENU");
    const std::wstring Key = On.Leaf(L"PARMS");
    ASSERT_EQ(std::size(kMenuKeywords), 24U);
    for (const std::wstring_view Keyword : kMenuKeywords) {
        ASSERT_TRUE(Accepted(On.Put(Key, std::wstring(Keyword) + L" vero")));
        std::wstring Expected;
        for (const std::wstring_view Each : kMenuKeywords)
            Expected.append(Each).append(Each == Keyword ? L" TRUE\r\n" : L" FALSE\r\n");
        EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Expected + L"MIRROROF= \"\"\r\n" + kIdentity));
        // The property is named as the keyword is.
        std::size_t Set = 0;
        for (const auto& [Name, Value] : SavedBy(On).Values) {
            if (Value != RegValue(true)) continue;
            ++Set;
            EXPECT_EQ(StrUtil::UpperCase(Name) + L"=", Keyword);
        }
        EXPECT_EQ(Set, 1U) << Narrow(Keyword);
    }
}

}  // namespace
}  // namespace kv::test
