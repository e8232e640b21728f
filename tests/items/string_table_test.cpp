// The string table: messages by name, each with a text a language.
#include <gtest/gtest.h>

#include "items/definitions/diStringTable.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"diStringTable.SaveMsgParm";
constexpr std::wstring_view kTextSource = L"ParmEditor.SaveCaption";

RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Message(std::int32_t Id, std::wstring_view Name, std::vector<RegObject> Texts = {}) {
    return WithList(Element(Id, Name), L"Message", std::move(Texts));
}
RegObject Table() {
    return WithList(Desk::Named(L"PROVA"), L"Messages",
                    {Message(21, L"ADDIO",
                             {TextIn(31, L"ITA", L"Arrivederci a tutti quanti"), TextIn(32, L"ENG", L"Bye"),
                              TextIn(33, L"FRA", L"Au revoir")}),
                     Message(22, L"BENVENUTO", {TextIn(34, L"ITA", L"Benvenuto")}), Message(23, L"CODA")});
}

class StringTable : public ::testing::Test {
  protected:
    Desk On{L"STRINGTABLE", Table()};

    std::wstring Node(std::size_t Nth) const { return KeyBelow(On, L"FIELDS", Nth); }
    std::wstring Texts(std::size_t Nth) const { return KeyBelow(On, Node(Nth), 2); }
    std::wstring Parms(std::size_t Nth) const { return KeyBelow(On, KeyBelow(On, Node(Nth), 1), 1); }
    std::wstring Text(std::size_t Nth, std::size_t Of) const { return KeyBelow(On, Texts(Nth), Of); }

    // The names as stored; tree and lists stand in one order.
    std::vector<std::wstring> Names() {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Messages")) Found.push_back(Each.Name);
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Found);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"STRINGTABLE", On.Object->Read()).Picture()));
        return Found;
    }
    std::vector<std::wstring> Languages(std::size_t Nth) {
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(ListOf(SavedBy(On), L"Messages")[Nth - 1], L"Message"))
            Found.push_back(TextOf(Each, L"Language"));
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"STRINGTABLE", On.Object->Read()).Picture()));
        return Found;
    }
};

TEST_F(StringTable, EmptyTree) {
    Desk Empty(L"STRINGTABLE");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  FIELDS \"Messaggi\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Offered(), L"");
    EXPECT_EQ(Empty.Exported(), L"");
}

TEST_F(StringTable, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  FIELDS \"Messaggi\" 12,11 RG\n"
                     L"    FIELDS-# \"ADDIO\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"
                     L"        FIELDCAPTION-# # \"Messaggio: [ITA] Arrivederci a tutti \" 9,9\n"
                     L"        FIELDCAPTION-# # \"Messaggio: [ENG] Bye\" 9,9\n"
                     L"        FIELDCAPTION-# # \"Messaggio: [FRA] Au revoir\" 9,9\n"
                     L"    FIELDS-# \"BENVENUTO\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"
                     L"        FIELDCAPTION-# # \"Messaggio: [ITA] Benvenuto\" 9,9\n"
                     L"    FIELDS-# \"CODA\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS-# # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"));
    EXPECT_EQ(Text(1, 2).rfind(Texts(1) + L" ", 0), 0U);
}

TEST_F(StringTable, SectionTexts) {
    EXPECT_EQ(Narrow(On.Text(Parms(1))),
              Narrow(Lines({L"NAME= \"ADDIO\"", L"'[ID= 21]", L"'[NAME= ADDIO]", L"'[VERSION= 0]"})));
    EXPECT_TRUE(MatchesGolden("section/STRINGTABLE.FIELDCAPTION.full.txt", On.Text(Text(1, 1))));
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Texts(3), Made)));
    const std::wstring Empty = On.Text(Made);
    EXPECT_EQ(Empty.rfind(L"TEXT= \"\"\r\nLANG= \"\"\r\n'[ID= ", 0), 0U);
    EXPECT_TRUE(Empty.ends_with(L"]\r\n'[NAME= ]\r\n'[VERSION= 0]\r\n"));
    ExpectFixpoint(On, Parms(1));
    ExpectFixpoint(On, Text(1, 1));
}

TEST_F(StringTable, NamesAreFolded) {
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= \"a così\"")));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A COSÌ", L"BENVENUTO", L"CODA"}));
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"A COSÌ");
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"ENG", L"FRA"}));
}

TEST_F(StringTable, NameChecks) {
    EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME="), 20000, kSource,
                        L"Non è stato specificato il nome del messaggio."));
    EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME= \"coda\""), 20000, kSource,
                        L"Il nome del messaggio non è univoco."));
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"ADDIO");
    EXPECT_TRUE(Accepted(On.Put(Parms(1), L"NAME= \"addio\"")));
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= \"coda\"", false)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"BENVENUTO", L"CODA"}));
    ASSERT_TRUE(Accepted(On.Put(Parms(2), L"NAME=", false)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"", L"CODA"}));
}

TEST_F(StringTable, ATextWithoutNameKeepsIt) {
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"'niente")));
    EXPECT_EQ(Names().front(), L"ADDIO");
    EXPECT_EQ(Languages(1).size(), 3U);
}

TEST_F(StringTable, RefusalsOfTheName) {
    ExpectRefusals(On, Parms(1), kSource,
                   {
                       {L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                       {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                       {L"TEXT= A", L"Parametro non riconosciuto: TEXT=A", 1},
                       {L"'x\r\n\r\nDESC= A", L"Parametro non riconosciuto: DESC=A", 3},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: NAME.", 1));
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(StringTable, TextsOfALanguage) {
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"TEXT= \"See you\"\r\nLANG= eng")));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Messaggio: [ENG] See you");
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"LANG= \"deu\"")));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Messaggio: [DEU] ");
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"DEU", L"FRA"}));
    EXPECT_TRUE(Refused(On.Put(Text(1, 2), L"TEXT= x"), 20000, kTextSource,
                        L"Non è stato specificato un codice LANG valido."));
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"TEXT= x", false)));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Messaggio: [] x");
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"", L"FRA"}));
    const auto& Kept = ListOf(ListOf(On.Object->Read(), L"Messages")[0], L"Message")[1];
    EXPECT_EQ(Kept.Id, 32);
}

TEST_F(StringTable, RefusalsOfAText) {
    ExpectRefusals(On, Text(1, 1), kTextSource,
                   {
                       {L"LANG= A\r\nLANG= B", L"Ripetizone del parametro LANG=.", 2},
                       {L"TEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 2},
                       {L"LANG= ITA\r\nNAME= x", L"Parametro non riconosciuto: NAME=x", 2},
                       {L"text= x", L"Parametro non riconosciuto: text=x", 1},
                   });
    EXPECT_EQ(On.Tree->NodeText(Text(1, 1)), L"Messaggio: [ITA] Arrivederci a tutti ");
}

TEST_F(StringTable, ANewMessageHasNoNameYetAndOneText) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_EQ(Made, Node(4));
    EXPECT_EQ(On.Tree->NodeText(Made), L"?????");
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(CaptionsBelow(On, Texts(4)), (std::vector<std::wstring>{L"Messaggio: [] "}));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"ADDIO", L"BENVENUTO", L"CODA", L"?????"}));
    const RegObject& New = ListOf(On.Object->Read(), L"Messages")[3];
    EXPECT_NE(New.Id, 0);
    ASSERT_EQ(ListOf(New, L"Message").size(), 1U);
    EXPECT_NE(ListOf(New, L"Message")[0].Id, 0);
    EXPECT_NE(ListOf(New, L"Message")[0].Id, New.Id);
}

TEST_F(StringTable, ANewMessageGoesBehindTheSelectedOne) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Node(1), Made)));
    EXPECT_EQ(Made, Node(2));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"ADDIO", L"?????", L"BENVENUTO", L"CODA"}));
}

TEST_F(StringTable, TwoUnnamedMessagesMayStandTogetherInLaxMode) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_TRUE(Accepted(On.Put(Parms(5), On.Text(Parms(5)), false)));
    EXPECT_TRUE(Refused(On.Put(Parms(5), On.Text(Parms(5))), 20000, kSource,
                        L"Il nome del messaggio non è univoco."));
    EXPECT_EQ(Names().size(), 5U);
}

TEST_F(StringTable, ANewTextGoesLastInItsMessage) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Texts(2), Made)));
    EXPECT_EQ(Made, Text(2, 2));
    EXPECT_EQ(Made.rfind(Texts(2) + L" ", 0), 0U);
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
    EXPECT_TRUE(On.Tree->Modified());
    ASSERT_TRUE(Accepted(On.Put(Made, L"TEXT= Willkommen\r\nLANG= DEU")));
    EXPECT_EQ(Languages(2), (std::vector<std::wstring>{L"ITA", L"DEU"}));
    ASSERT_TRUE(Accepted(AddAt(On, Text(1, 1), Made)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"ENG", L"FRA", L""}));
    EXPECT_EQ(Made, Text(1, 4));
}

TEST_F(StringTable, MessagesMove) {
    const std::wstring Old = Node(3);
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_FALSE(On.Tree->HasNode(Old));
    EXPECT_EQ(Made, Node(2));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"ADDIO", L"CODA", L"BENVENUTO"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Node(1), -1, Made)));
    EXPECT_EQ(Made, Node(2));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"ADDIO", L"BENVENUTO"}));
    EXPECT_EQ(Languages(2), (std::vector<std::wstring>{L"ITA", L"ENG", L"FRA"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(3), -1, Made)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"ADDIO", L"BENVENUTO"}));
}

TEST_F(StringTable, TextsMoveInTheirMessage) {
    std::wstring Made;
    const std::wstring Old = Text(1, 3);
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_EQ(Made, Text(1, 2));
    EXPECT_EQ(Made.rfind(Texts(1) + L" ", 0), 0U);
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"FRA", L"ENG"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Text(1, 1), 0, Made)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"FRA", L"ITA", L"ENG"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 3), -1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(2, 1), 1, Made)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"FRA", L"ITA", L"ENG"}));
    EXPECT_EQ(Languages(2), (std::vector<std::wstring>{L"ITA"}));
}

TEST_F(StringTable, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Text(1, 2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"FRA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Texts(1), true)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{}));
    EXPECT_EQ(Languages(2), (std::vector<std::wstring>{L"ITA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(2))));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"ADDIO", L"CODA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{}));
}

TEST_F(StringTable, Export) { EXPECT_TRUE(MatchesGolden("export/STRINGTABLE.txt", On.Exported())); }

TEST_F(StringTable, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= nuovo")));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"STRINGTABLE", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
}

TEST_F(StringTable, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"FIELDS", L"PARMS", L"fieldparms"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(1), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(1), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = L"FIELDS"}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    EXPECT_TRUE(On.Tree->Served().empty());
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"}) {
        On.Core.TlbrButtonClick(Tool, {.CurrItem = L"FIELDS"});
        EXPECT_TRUE(On.Platform.Shown.empty());
        EXPECT_TRUE(On.Platform.Asked.empty());
    }
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"STRINGTABLE");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Messages").size(), 3U);
}

TEST_F(StringTable, WrapLines) {
    diStringTable Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDS"}, Buffer, true, {}, 1));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"\tBEGIN FIELDS\r\n\tEND FIELDS\r\n"));
    Buffer.clear();
    const std::int32_t Second = 2;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Second, 1}, 2));
    EXPECT_EQ(Narrow(Buffer),
              Narrow(L"\t\tBEGIN FIELDPARMS\r\n\t\t\tNAME= \"BENVENUTO\"\r\n\t\t\t'[ID= 22]\r\n"
                     L"\t\t\t'[NAME= BENVENUTO]\r\n\t\t\t'[VERSION= 0]\r\n"
                     L"\t\tEND FIELDPARMS\r\n"));
    Buffer.clear();
    const std::int32_t Beyond = 9;
    EXPECT_TRUE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Beyond, 1}, 2));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(Buffer.find(L"END"), std::wstring::npos);
    CoreUtil::Instance().ForgetError();
}

}  // namespace
}  // namespace kv::test
