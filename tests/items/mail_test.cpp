// The mail centre: its path, and messages by name, each with a text a language.
#include <gtest/gtest.h>

#include "items/services/diMail.h"
#include "tests/items/Reading.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kParmSource = L"diMail.SaveParm";
constexpr std::wstring_view kSource = L"diMail.SaveMsgParm";
constexpr std::wstring_view kTextSource = L"ParmEditor.SaveCaption";
constexpr std::wstring_view kNoPath =
    L"Non è stato specificato un PATH per la creazione della centrale postale.";
constexpr std::wstring_view kNoName = L"Non è stato specificato il nome del messaggio.";
constexpr std::wstring_view kNotUnique = L"Il nome del messaggio non è univoco.";

RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Message(std::int32_t Id, std::wstring_view Name, std::vector<RegObject> Texts = {}) {
    return WithList(Element(Id, Name), L"Message", std::move(Texts));
}
RegObject Centre() {
    return WithList(With(Desk::Named(L"PROVA"), {{L"Path", RegText(L"D:\\Posta\\Centrale")}}), L"Fields",
                    {Message(21, L"Scaduto",
                             {TextIn(31, L"ITA", L"Il prestito è scaduto ieri"), TextIn(32, L"ENG", L"Late"),
                              TextIn(33, L"FRA", L"En retard")}),
                     Message(22, L"Pronto", {TextIn(34, L"ITA", L"Pronto")}), Message(23, L"Pieno")});
}

using Names = std::vector<std::wstring>;

class Mail : public ::testing::Test {
  protected:
    Desk On{L"MAIL", Centre()};

    std::wstring Path() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::size_t Nth) const { return KeyBelow(On, L"FIELDS", Nth); }
    std::wstring Texts(std::size_t Nth) const { return KeyBelow(On, Node(Nth), 2); }
    std::wstring Parms(std::size_t Nth) const { return KeyBelow(On, KeyBelow(On, Node(Nth), 1), 1); }
    std::wstring Text(std::size_t Nth, std::size_t Of) const { return KeyBelow(On, Texts(Nth), Of); }

    // The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"MAIL", Saved).Picture()));
    }
    // As stored; tree and lists stand in one order.
    Names Stored() {
        Names Found;
        for (const RegObject& Each : ListOf(SavedBy(On), L"Fields")) Found.push_back(Each.Name);
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Found);
        return Found;
    }
    Names Languages(std::size_t Nth) {
        Names Found;
        for (const RegObject& Each : ListOf(ListOf(SavedBy(On), L"Fields").at(Nth - 1), L"Message"))
            Found.push_back(TextOf(Each, L"Language"));
        EXPECT_EQ(KeysBelow(On, Texts(Nth)).size(), Found.size());
        return Found;
    }
};

TEST_F(Mail, EmptyTree) {
    Desk Empty(L"MAIL");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  FIELDS \"Messaggi\" 12,11 RG\n"));
    EXPECT_EQ(Empty.Offered(), L"");
    EXPECT_EQ(Narrow(Empty.Exported()),
              Narrow(Lines({L"\tBEGIN PARMS", L"\t\tPATH= \"\"", L"\t\t'[ID= 7]", L"\t\t'[NAME= PROVA]",
                            L"\t\t'[VERSION= 3]", L"\tEND PARMS", L"\tBEGIN FIELDS", L"\tEND FIELDS"})));
}

TEST_F(Mail, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  FIELDS \"Messaggi\" 12,11 RG\n"
                     L"    FIELDS-# \"Scaduto\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"
                     L"        FIELDCAPTION # \"Messaggio: [ITA] Il prestito è scadut\" 9,9\n"
                     L"        FIELDCAPTION # \"Messaggio: [ENG] Late\" 9,9\n"
                     L"        FIELDCAPTION # \"Messaggio: [FRA] En retard\" 9,9\n"
                     L"    FIELDS-# \"Pronto\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"
                     L"        FIELDCAPTION # \"Messaggio: [ITA] Pronto\" 9,9\n"
                     L"    FIELDS-# \"Pieno\" 12,11 RDM\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11 R\n"));
}

TEST_F(Mail, SectionTexts) {
    Desk Empty(L"MAIL");
    EXPECT_TRUE(MatchesGolden("section/MAIL.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    EXPECT_TRUE(MatchesGolden("section/MAIL.full.txt", On.Text(Path())));
    EXPECT_TRUE(MatchesGolden("section/MAIL.FIELDPARMS.full.txt", On.Text(Parms(1))));
    EXPECT_TRUE(MatchesGolden("section/MAIL.FIELDCAPTION.full.txt", On.Text(Text(1, 1))));
    for (const std::wstring& Key : {Path(), Parms(1), Parms(3), Text(1, 1), Text(2, 1)})
        ExpectFixpoint(On, Key);
    for (const std::wstring& Folder : {std::wstring(L"FIELDS"), Node(1), Texts(1)})
        EXPECT_EQ(On.Text(Folder), L"");
}

// The path.

TEST_F(Mail, ThePathKeepsItsCase) {
    const struct {
        std::wstring_view Given;
        std::wstring_view Kept;
    } kRows[] = {{L"PATH= \"c:\\Città\\posta\"", L"c:\\Città\\posta"},
                 {L"PATH=//server/Posta", L"//server/Posta"},
                 {L"PATH= a=b", L"a=b"},
                 {L"PATH= \"con \"virgolette\"\"", L"con \"virgolette\""},
                 {L"'x\r\n\r\n;y\r\n*z\r\nPATH = d:\\", L"d:\\"}};
    for (const auto& Row : kRows)
        for (const bool Strict : {true, false}) {
            SCOPED_TRACE(Narrow(Row.Given));
            ASSERT_TRUE(Accepted(On.Put(Path(), L"PATH= prima")));
            ASSERT_TRUE(Accepted(On.Put(Path(), std::wstring(Row.Given), Strict)));
            EXPECT_EQ(Narrow(TextOf(SavedBy(On), L"Path")), Narrow(Row.Kept));
            ExpectFixpoint(On, Path());
        }
    EXPECT_EQ(Stored(), (Names{L"Scaduto", L"Pronto", L"Pieno"})) << "the messages stay";
}

TEST_F(Mail, APathThatIsLeftOutIsRefusedUnderTheCheckAlone) {
    for (const wchar_t* const Given : {L"", L"'solo un commento", L"PATH=", L"PATH= \"\"", L"PATH= \""}) {
        SCOPED_TRACE(Narrow(Given));
        ASSERT_TRUE(Accepted(On.Put(Path(), L"PATH= prima")));
        EXPECT_TRUE(Refused(On.Put(Path(), Given), 20000, kParmSource, kNoPath, 0));
        EXPECT_EQ(TextOf(SavedBy(On), L"Path"), L"prima");
        ASSERT_TRUE(Accepted(On.Put(Path(), Given, false)));
        EXPECT_EQ(TextOf(SavedBy(On), L"Path"), L"");
    }
}

TEST_F(Mail, RefusalsOfThePath) {
    ExpectRefusals(On, Path(), kParmSource,
                   {
                       {L"PATH= A\r\nPATH= B", L"Ripetizone del parametro PATH=.", 2},
                       {L"path= A", L"Parametro non riconosciuto: path=A", 1},
                       {L"PATH= A\r\nNAME= \"x\"", L"Parametro non riconosciuto: NAME=\"x\"", 2},
                       {L"PATH= A\r\n\t'[ID= 17]", L"Parametro non riconosciuto: \t'[ID=17]", 2},
                       {L"=5", L"Parametro non riconosciuto: =5", 1},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Path(), L"PATH= A\r\nPATH", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: PATH.", 2));
    EXPECT_EQ(TextOf(SavedBy(On), L"Path"), L"D:\\Posta\\Centrale");
}

// The name of a message.

TEST_F(Mail, NamesAreComparedLetterByLetter) {
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= \"pronto\""))) << "another one is Pronto";
    EXPECT_EQ(Stored(), (Names{L"pronto", L"Pronto", L"Pieno"}));
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"pronto");
    EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME= Pronto"), 20000, kSource, kNotUnique, 0));
    EXPECT_TRUE(Refused(On.Put(Parms(2), L"NAME= pronto"), 20000, kSource, kNotUnique, 0));
    EXPECT_TRUE(Refused(On.Put(Parms(3), L"NAME= \"Pronto\""), 20000, kSource, kNotUnique, 0));
    EXPECT_EQ(Stored(), (Names{L"pronto", L"Pronto", L"Pieno"}));
    ASSERT_TRUE(Accepted(On.Put(Parms(3), L"NAME= \"Città è qui\"")));
    EXPECT_EQ(Stored(), (Names{L"pronto", L"Pronto", L"Città è qui"}));
    EXPECT_EQ(Languages(1), (Names{L"ITA", L"ENG", L"FRA"})) << "its texts stay";
}

TEST_F(Mail, NameChecks) {
    EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME="), 20000, kSource, kNoName, 0));
    EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME= \"\""), 20000, kSource, kNoName, 0));
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"Scaduto");
    EXPECT_TRUE(Accepted(On.Put(Parms(1), L"NAME= \"Scaduto\""))) << "its own name";
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= Pieno", false)));
    EXPECT_EQ(Stored(), (Names{L"Pieno", L"Pronto", L"Pieno"}));
    for (const std::size_t Nth : {1U, 3U})
        EXPECT_TRUE(Refused(On.Put(Parms(Nth), L"NAME= Pieno"), 20000, kSource, kNotUnique, 0))
            << "whichever of the two comes first";
    ASSERT_TRUE(Accepted(On.Put(Parms(2), L"NAME=", false)));
    EXPECT_EQ(Stored(), (Names{L"Pieno", L"", L"Pieno"}));
    EXPECT_TRUE(Refused(On.Put(Parms(2), L"'niente"), 20000, kSource, kNoName, 0));
}

TEST_F(Mail, ATextWithoutNameKeepsIt) {
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"'niente")));
    EXPECT_EQ(Stored().front(), L"Scaduto");
    EXPECT_EQ(ListOf(On.Object->Read(), L"Fields")[0].Id, 21);
    EXPECT_EQ(Languages(1).size(), 3U);
}

TEST_F(Mail, TheNameThatASaveShowsComesBack) {
    std::wstring Text = L"NAME= \"Nuovo nome\"";
    std::wstring Shown;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(2)}, Text, Shown); })));
    EXPECT_EQ(Shown, L"Nuovo nome");
    EXPECT_EQ(On.Tree->NodeText(Node(2)), L"Nuovo nome");
    EXPECT_EQ(On.Tree->NodeText(Parms(2)), L"Parametri");
    EXPECT_TRUE(On.Tree->Modified());
}

TEST_F(Mail, RefusalsOfTheName) {
    ExpectRefusals(On, Parms(1), kSource,
                   {
                       {L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                       {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                       {L"PATH= A", L"Parametro non riconosciuto: PATH=A", 1},
                       {L"'x\r\n\r\nDESC= A", L"Parametro non riconosciuto: DESC=A", 3},
                       {L"NAME= nuovo\r\nTEXT= A", L"Parametro non riconosciuto: TEXT=A", 2},
                   });
    for (const bool Strict : {true, false})
        EXPECT_TRUE(Refused(On.Put(Parms(1), L"NAME", Strict), 20018, L"vDesignPar.GetFieldValue",
                            L"Errore di sintassi: NAME.", 1));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"Scaduto");
}

// The texts of a message.

TEST_F(Mail, ASavedTextIsShownAsALabelUntilTheTreeIsBuiltAgain) {
    std::wstring Given = L"TEXT= \"Un testo di più di venti caratteri\"\r\nLANG= eng";
    std::wstring Shown;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Text(1, 2)}, Given, Shown); })));
    EXPECT_EQ(Narrow(Shown), Narrow(L"Etichetta: [ENG] Un testo di più di v"));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), Shown);
    EXPECT_EQ(On.Tree->NodeText(Node(1)), L"Scaduto");
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"LANG= \"deu\"")));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Etichetta: [DEU] ") << "a text left out is empty";
    EXPECT_EQ(Languages(1), (Names{L"ITA", L"DEU", L"FRA"}));
    EXPECT_EQ(ListOf(ListOf(On.Object->Read(), L"Fields")[0], L"Message")[1].Id, 32);
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Text(1, 2), -1, Made)));
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [DEU] ");
    ExpectSameTree();
}

TEST_F(Mail, RefusalsOfAText) {
    EXPECT_TRUE(Refused(On.Put(Text(1, 2), L"TEXT= x"), 20000, kTextSource,
                        L"Non è stato specificato un codice LANG valido."));
    ExpectRefusals(On, Text(1, 1), kTextSource,
                   {
                       {L"LANG= A\r\nLANG= B", L"Ripetizone del parametro LANG=.", 2},
                       {L"TEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 2},
                       {L"LANG= ITA\r\nNAME= x", L"Parametro non riconosciuto: NAME=x", 2},
                       {L"text= x", L"Parametro non riconosciuto: text=x", 1},
                   });
    EXPECT_EQ(Narrow(On.Tree->NodeText(Text(1, 1))), Narrow(L"Messaggio: [ITA] Il prestito è scadut"));
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"TEXT= x", false)));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Etichetta: [] x");
    // The folder of the texts is none of them.
    EXPECT_TRUE(Refused(On.Put(Texts(1), L"TEXT= x\r\nLANG= ITA"), 9, L"diMail.SaveData",
                        L"Indice non compreso nell'intervallo"));
}

// Adding.

TEST_F(Mail, ANewMessageGoesLastHasNoNameYetAndOneText) {
    for (const std::wstring& Selected : {std::wstring(L"FIELDS"), Node(1)}) {
        On.Tree->MarkModified(false);
        const std::size_t Count = KeysBelow(On, L"FIELDS").size();
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Selected, Made)));
        EXPECT_EQ(Made, Node(Count + 1));
        EXPECT_EQ(On.Tree->NodeText(Made), L"?????");
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(CaptionsBelow(On, Texts(Count + 1)), (Names{L"Messaggio: [] "}));
        const RegObject New = ListOf(SavedBy(On), L"Fields").back();
        EXPECT_NE(New.Id, 0);
        ASSERT_EQ(ListOf(New, L"Message").size(), 1U);
        EXPECT_NE(ListOf(New, L"Message")[0].Id, 0);
        EXPECT_NE(ListOf(New, L"Message")[0].Id, New.Id);
        ExpectSameTree();
    }
    EXPECT_EQ(Stored(), (Names{L"Scaduto", L"Pronto", L"Pieno", L"?????", L"?????"}));
}

TEST_F(Mail, TwoUnnamedMessagesAreRefusedUnderTheCheckUntilOneIsNamed) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    EXPECT_TRUE(Accepted(On.Put(Parms(4), On.Text(Parms(4))))) << "one alone passes";
    ASSERT_TRUE(Accepted(AddAt(On, L"FIELDS", Made)));
    for (const std::size_t Nth : {4U, 5U}) {
        EXPECT_TRUE(Refused(On.Put(Parms(Nth), On.Text(Parms(Nth))), 20000, kSource, kNotUnique, 0));
        EXPECT_TRUE(Accepted(On.Put(Parms(Nth), On.Text(Parms(Nth)), false)));
    }
    ASSERT_TRUE(Accepted(On.Put(Parms(5), L"NAME= Chiusura")));
    EXPECT_TRUE(Accepted(On.Put(Parms(4), On.Text(Parms(4)))));
    EXPECT_EQ(Stored(), (Names{L"Scaduto", L"Pronto", L"Pieno", L"?????", L"Chiusura"}));
}

TEST_F(Mail, ANewTextGoesLastInItsMessage) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Texts(2), Made)));
    EXPECT_EQ(Made, Text(2, 2));
    EXPECT_TRUE(Made.starts_with(L"FIELDCAPTION ")) << Narrow(Made);
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
    EXPECT_TRUE(On.Tree->Modified());
    ASSERT_TRUE(Accepted(On.Put(Made, L"TEXT= Bereit\r\nLANG= DEU")));
    EXPECT_EQ(Languages(2), (Names{L"ITA", L"DEU"}));
    ASSERT_TRUE(Accepted(AddAt(On, Text(1, 1), Made)));
    EXPECT_EQ(Made, Text(1, 4));
    EXPECT_EQ(Languages(1), (Names{L"ITA", L"ENG", L"FRA", L""}));
    EXPECT_NE(ListOf(ListOf(On.Object->Read(), L"Fields")[0], L"Message")[3].Id, 0);
}

TEST_F(Mail, AFurtherLeafOfParametersIsAllThatIsAddedToThem) {
    const RegObject Saved = SavedBy(On);
    for (const std::wstring& Key : {Path(), Parms(2)}) {
        On.Tree->MarkModified(false);
        const std::wstring Folder = On.Tree->NodeParent(Key);
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Key, Made)));
        EXPECT_EQ(Made, KeyBelow(On, Folder, 2));
        EXPECT_EQ(On.Tree->NodeText(Made), SectionWord(Made));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(On.Text(Made), On.Text(Key));
    }
    EXPECT_EQ(SavedBy(On), Saved);
}

// Moving.

TEST_F(Mail, MessagesMove) {
    const std::wstring Old = Node(3);
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_FALSE(On.Tree->HasNode(Old));
    EXPECT_EQ(Made, Node(2)) << "before its neighbour";
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Stored(), (Names{L"Scaduto", L"Pieno", L"Pronto"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Node(1), 0, Made)));
    EXPECT_EQ(Made, Node(2)) << "behind it";
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_EQ(Stored(), (Names{L"Pieno", L"Scaduto", L"Pronto"}));
    EXPECT_EQ(Languages(2), (Names{L"ITA", L"ENG", L"FRA"})) << "its texts go with it";
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(3), -1, Made)));
    EXPECT_TRUE(Accepted(MoveAt(On, L"FIELDS", 1, Made))) << "a folder does not move";
    EXPECT_TRUE(Accepted(MoveAt(On, Parms(1), 1, Made)));
    EXPECT_TRUE(Accepted(MoveAt(On, Path(), 1, Made)));
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_EQ(Stored(), (Names{L"Pieno", L"Scaduto", L"Pronto"}));
    ExpectSameTree();
}

TEST_F(Mail, TextsMoveInTheirMessage) {
    std::wstring Made;
    const std::wstring Old = Text(1, 3);
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_EQ(Made, Text(1, 2));
    EXPECT_TRUE(Made.starts_with(L"FIELDCAPTION ")) << Narrow(Made);
    EXPECT_EQ(On.Tree->Selected(), Made);
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(1), (Names{L"ITA", L"FRA", L"ENG"}));
    ASSERT_TRUE(Accepted(MoveAt(On, Text(1, 1), -1, Made)));
    EXPECT_EQ(Languages(1), (Names{L"FRA", L"ITA", L"ENG"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 3), -1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(2, 1), 1, Made)));
    EXPECT_TRUE(Accepted(MoveAt(On, Texts(1), 1, Made))) << "a folder does not move";
    EXPECT_EQ(Languages(1), (Names{L"FRA", L"ITA", L"ENG"}));
    EXPECT_EQ(Languages(2), (Names{L"ITA"}));
    ExpectSameTree();
}

// Deleting.

TEST_F(Mail, OneOrAllAreDeleted) {
    ASSERT_TRUE(Accepted(DeleteAt(On, Text(1, 2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(1), (Names{L"ITA", L"FRA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Texts(1), true)));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Languages(1), Names{});
    EXPECT_EQ(Languages(2), (Names{L"ITA"}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Node(2))));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Stored(), (Names{L"Scaduto", L"Pieno"}));
    for (const bool Group : {false, true})
        for (const std::wstring& Key : {Path(), Parms(1)}) EXPECT_TRUE(Accepted(DeleteAt(On, Key, Group)));
    EXPECT_FALSE(On.Tree->Modified()) << "parameters stay";
    ExpectSameTree();
    ASSERT_TRUE(Accepted(DeleteAt(On, L"FIELDS", true)));
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Stored(), Names{});
    EXPECT_EQ(TextOf(On.Object->Read(), L"Path"), L"D:\\Posta\\Centrale");
    EXPECT_TRUE(Refused(On.Try([&] {
        return On.Core.DeleteData({.CurrItem = L"FIELDS", .Index = 1, .Key = L"FIELDS"}, false);
    }),
                        9, L"diMail.DeleteData", L"Indice non compreso nell'intervallo"));
}

// The object.

TEST_F(Mail, Export) {
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/MAIL.txt", Text));
    EXPECT_EQ(Text.find(L"FIELDCAPTION"), std::wstring::npos) << "texts are not exported";
}

TEST_F(Mail, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Path(), L"PATH= altrove")));
    ASSERT_TRUE(Accepted(On.Put(Parms(1), L"NAME= nuovo")));
    EXPECT_FALSE(On.Object->Written()) << "nothing reaches the stored object before the save";
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"MAIL", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
    EXPECT_EQ(Again.Exported(), On.Exported());
}

TEST_F(Mail, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"FIELDS", L"TITLES", L"fieldparms"}) {
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
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"MAIL");
    EXPECT_EQ(ListOf(On.Clipboard.DataObj->Read(), L"Fields").size(), 3U);
    std::wstring Name, Desc, Id, Clsid, Users;
    std::int16_t Version = 0;
    ASSERT_TRUE(
        Accepted(On.Try([&] { return On.Core.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users); })));
    EXPECT_EQ(Name + L"/" + Id + L"/" + Clsid, L"PROVA/7/MAIL");
    EXPECT_EQ(Version, 3);
}

TEST_F(Mail, WrapLines) {
    diMail Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"PARMS"}, Buffer, true, {}, 0));
    EXPECT_EQ(Narrow(Buffer), Narrow(Lines({L"BEGIN PARMS", L"PATH= \"D:\\Posta\\Centrale\"", L"'[ID= 7]",
                                            L"'[NAME= PROVA]", L"'[VERSION= 3]", L"END PARMS"})));
    Buffer.clear();
    const std::int32_t Second = 2;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Second, 1}, 2));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"\t\tBEGIN FIELDPARMS\r\n\t\t\tNAME= \"Pronto\"\r\n\t\t\t'[ID= 22]\r\n"
                                     L"\t\t\t'[NAME= Pronto]\r\n\t\t\t'[VERSION= 0]\r\n"
                                     L"\t\tEND FIELDPARMS\r\n"));
    Buffer.clear();
    const std::int32_t Beyond = 9;
    EXPECT_TRUE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Beyond, 1}, 2));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diMail.DispMsgParm");
    EXPECT_EQ(Buffer.find(L"END"), std::wstring::npos);
    CoreUtil::Instance().ForgetError();
}

TEST_F(Mail, ANodeThatCannotBeMadeIsToldByItsMaker) {
    const auto Tree = std::make_shared<RefusingTree>();
    diMail Item;
    Item.DesignTree() = Tree;
    const auto Told = [] {
        const std::wstring Source = CoreUtil::Instance().LastError().Source;
        CoreUtil::Instance().ForgetError();
        return Source;
    };
    const struct {
        std::wstring_view Nodes;
        std::wstring_view Source;
    } kRows[] = {{L"FIELDS-", L"diMail.SetMsgNode"},
                 {L"FIELDPARMS ", L"diMail.SetMsgNode"},
                 {L"FIELDCAPTION ", L"diMail.SetMsgNode"},
                 {L"PARMS", L"diMail.LoadData"}};
    for (const auto& Row : kRows) {
        Tree->Refused = Row.Nodes;
        EXPECT_TRUE(Item.LoadData(*On.Object));
        EXPECT_EQ(Narrow(Told()), Narrow(Row.Source));
    }
    Tree->Refused.clear();
    ASSERT_FALSE(Item.LoadData(*On.Object));
    Tree->Refused = L"PARMS ";
    std::wstring Made;
    EXPECT_TRUE(Item.EditData({.CurrFolder = L"PARMS", .CurrItem = L"PARMS", .Key = L"PARMS"}, Made));
    EXPECT_EQ(Told(), L"diMail.SetNode");
    Tree->Refused = L"FIELDCAPTION";
    EXPECT_TRUE(Item.EditData({.CurrFolder = L"FIELDS", .CurrItem = L"FIELDS", .Key = L"FIELDS"}, Made));
    EXPECT_EQ(Told(), L"diMail.SetMsgNode");
    EXPECT_EQ(Tree->CountBelow(L"FIELDS"), 3) << "what was half made is gone";
    MemoryRegData Saved(L"MAIL");
    ASSERT_FALSE(Item.Save(Saved));
    EXPECT_EQ(ListOf(Saved.Read(), L"Fields").size(), 3U) << "and the element with it";
}

}  // namespace
}  // namespace kv::test
