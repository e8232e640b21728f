// The client application: its parameters, three lists of fonts and the system messages.
#include <gtest/gtest.h>

#include "items/client/diApplication.h"
#include "tests/items/Reading.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kSource = L"ParmEditor.SaveApplication";
constexpr std::wstring_view kMessageSource = L"ParmEditor.SaveMessage";
constexpr std::wstring_view kTextSource = L"ParmEditor.SaveMessageText";

RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Message(std::int32_t Id, std::wstring_view Name, std::vector<RegObject> Texts = {}) {
    return WithList(Element(Id, Name), L"Message", std::move(Texts));
}
RegObject Client() {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"StartAction", 1}, {L"LoanEnable", 1}});
    Made = WithList(std::move(Made), L"FormFonts",
                    {Element(11, L"Arial", {{L"Size", 10}}), Element(12, L"Tahoma", {{L"Size", 8}})});
    Made = WithList(std::move(Made), L"MessageFonts", {Element(21, L"Courier New", {{L"Size", 9}})});
    RegObject Holder;
    Holder.Name = L"Messages";
    Holder = WithList(std::move(Holder), L"Message",
                      {Message(31, L"ADDIO",
                               {TextIn(41, L"ITA", L"Arrivederci a tutti quanti"), TextIn(42, L"ENG", L"Bye"),
                                TextIn(43, L"FRA", L"Au revoir")}),
                       Message(32, L"BENVENUTO", {TextIn(44, L"ITA", L"Benvenuto")}), Message(33, L"CODA")});
    Made.Children.push_back(std::move(Holder));
    return WithList(std::move(Made), L"TitleFonts",
                    {Element(51, L"Georgia", {{L"Size", 14}, {L"Bold", true}})});
}
const std::vector<RegObject>& MessagesOf(const RegObject& Saved) {
    static const RegObject kNone;
    const RegObject* const Holder = Saved.Child(L"Messages");
    EXPECT_NE(Holder, nullptr);
    return ListOf(Holder ? *Holder : kNone, L"Message");
}

class Application : public ::testing::Test {
  protected:
    Desk On{L"VCLIENT", Client()};

    std::wstring Parms() const { return On.Leaf(L"PARMS"); }
    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    std::wstring Name(std::size_t Nth) const {
        return KeyBelow(On, KeyBelow(On, Node(L"FIELDS", Nth), 1), 1);
    }
    std::wstring Texts(std::size_t Nth) const { return KeyBelow(On, Node(L"FIELDS", Nth), 2); }
    std::wstring Text(std::size_t Nth, std::size_t Of) const { return KeyBelow(On, Texts(Nth), Of); }

    // The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Desk(L"VCLIENT", Saved).Picture()));
    }
    std::vector<std::wstring> Names() {
        ExpectSameTree();
        std::vector<std::wstring> Found;
        for (const RegObject& Each : MessagesOf(On.Object->Read())) Found.push_back(Each.Name);
        EXPECT_EQ(CaptionsBelow(On, L"FIELDS"), Found);
        return Found;
    }
    std::vector<std::wstring> Languages(std::size_t Nth) {
        ExpectSameTree();
        std::vector<std::wstring> Found;
        for (const RegObject& Each : ListOf(MessagesOf(On.Object->Read()).at(Nth - 1), L"Message"))
            Found.push_back(TextOf(Each, L"Language"));
        return Found;
    }
};

TEST_F(Application, EmptyTreeAndChoices) {
    Desk Empty(L"VCLIENT");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  FORMFONTS \"Font per le form\" 12,11 RG\n"
                                              L"  MESSAGEFONTS \"Font per i messaggi\" 12,11 RG\n"
                                              L"  TITLEFONTS \"Font per i titoli\" 12,11 RG\n"
                                              L"  FIELDS \"Messaggi di sistema\" 12,11 RG\n"));
    EXPECT_EQ(Narrow(Empty.Offered()),
              Narrow(L"PARMS ALLOWSHUTDOWN= FALSE TRUE\n"
                     L"PARMS STARTACTION= MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC "
                     L"QUERYRESULT ADMIN LANG HTMLMOVE LOGIN HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC "
                     L"WEBCLIENT DBSELECT SETOPS NAVIGATE PASSWORD CLIENTSETUP LOANSTART LOANQUIT SHELLWIN "
                     L"INFO KVRSELECT IMAGE SEEK OPEN CLOSEALL QUERYGET BOOLSTEM SHELF IMAGELIST ZOOMIN "
                     L"ZOOMOUT MAP LOANACTION IMAGEUM\n"
                     L"PARMS FORMAT= TEXT RTF\n"
                     L"PARMS LOANENABLE= NOTENABLED ENABLED STARTUP RESTARTABLE\n"
                     L"PARMS IDLEACTION= NONE CLOSE RESTART SAVESCREEN PASSWORD\n"
                     L"PARMS MSIEFLAGS= NONE ENABLENEWWINDOW\n"
                     L"PARMS STARTUPMODE= MAXIMIZED HASCAPTION NORESIZE QUERYUNLOAD DEFAULT\n"
                     L"PARMS OUTPUTUSERLOG= FALSE TRUE\n"
                     L"PARMS FILEFLAGS= NONE NOOWN OWNASK\n"
                     L"PARMS PRINTERFLAGS= NONE NOOWN OWNASK FONTBUTTON PRINTERBUTTON\n"
                     L"PARMS PRNMAXITEMS= NONE\n"
                     L"PARMS PRNMAXRECS= NONE\n"
                     L"PARMS FILEMAXITEMS= NONE\n"
                     L"PARMS FILEMAXRECS= NONE\n"
                     L"PARMS REMOTEDB= FALSE TRUE\n"));
    EXPECT_EQ(Empty.Tree->Served(), (std::vector<std::wstring>{L"CONSTANTS"}));
}

TEST_F(Application, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  FORMFONTS \"Font per le form\" 12,11 RG\n"
                     L"    FORMFONTS # \"Font: Arial, 10\" 9,9\n"
                     L"    FORMFONTS # \"Font: Tahoma, 8\" 9,9\n"
                     L"  MESSAGEFONTS \"Font per i messaggi\" 12,11 RG\n"
                     L"    MESSAGEFONTS # \"Font: Courier New, 9\" 9,9\n"
                     L"  TITLEFONTS \"Font per i titoli\" 12,11 RG\n"
                     L"    TITLEFONTS # \"Font: Georgia, 14\" 9,9\n"
                     L"  FIELDS \"Messaggi di sistema\" 12,11 RG\n"
                     L"    FIELDS-# \"ADDIO\" 12,11\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11\n"
                     L"        FIELDCAPTION # \"Messaggio: [ITA] Arrivederci a tutti \" 9,9\n"
                     L"        FIELDCAPTION # \"Messaggio: [ENG] Bye\" 9,9\n"
                     L"        FIELDCAPTION # \"Messaggio: [FRA] Au revoir\" 9,9\n"
                     L"    FIELDS-# \"BENVENUTO\" 12,11\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11\n"
                     L"        FIELDCAPTION # \"Messaggio: [ITA] Benvenuto\" 9,9\n"
                     L"    FIELDS-# \"CODA\" 12,11\n"
                     L"      FIELDPARMS-# \"Parametri\" 12,11\n"
                     L"        FIELDPARMS # \"Parametri\" 9,9\n"
                     L"      FIELDCAPTION-# \"Messaggi\" 12,11\n"));
}

TEST_F(Application, SectionTexts) {
    Desk Empty(L"VCLIENT");
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ASSERT_TRUE(Accepted(On.Put(Parms(), Lines({L"RETRIEVAL= \"biblio\"",
                                                L"LANG= ita",
                                                L"HELP= \"aiuto\"",
                                                L"HELPWWW= \"pagina.htm\"",
                                                L"STARTACTION= query",
                                                L"STARTOBJECT= semplice",
                                                L"STARTUPMODE= queryunload|maximized",
                                                L"ALLOWSHUTDOWN= vero",
                                                L"IDLEACTION= restart",
                                                L"IDLETIME= 300",
                                                L"PASSWORD= \"Chiave\"",
                                                L"MSIEFLAGS= enablenewwindow",
                                                L"REMOTEDB= true",
                                                L"LOANENABLE= enabled|restartable",
                                                L"LOANPATH= \"D:\\Prestiti\"",
                                                L"FORMAT= rtf",
                                                L"PRINTERFLAGS= ownask|fontbutton",
                                                L"PRNMAXITEMS= 100",
                                                L"PRNMAXRECS= none",
                                                L"FILEFLAGS= noown",
                                                L"FILEMAXITEMS= 0",
                                                L"FILEMAXRECS= 250",
                                                L"OUTPUTUSERLOG= TRUE",
                                                L"LOGFILE= \"D:\\Log\\sala.txt\"",
                                                L"MIRROROF= \"Altro\""}))));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.full.txt", On.Text(Parms())));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.FORMFONTS.full.txt", On.Text(Node(L"FORMFONTS", 1))));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.MESSAGEFONTS.full.txt", On.Text(Node(L"MESSAGEFONTS", 1))));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.TITLEFONTS.full.txt", On.Text(Node(L"TITLEFONTS", 1))));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.FIELDPARMS.full.txt", On.Text(Name(1))));
    EXPECT_TRUE(MatchesGolden("section/VCLIENT.FIELDCAPTION.full.txt", On.Text(Text(1, 1))));
    for (const std::wstring& Key : {Parms(), Node(L"FORMFONTS", 1), Node(L"MESSAGEFONTS", 1),
                                    Node(L"TITLEFONTS", 1), Name(1), Text(1, 1)})
        ExpectFixpoint(On, Key);
    for (const wchar_t* Folder : {L"FORMFONTS", L"MESSAGEFONTS", L"TITLEFONTS", L"FIELDS"})
        EXPECT_EQ(On.Text(Folder), L"") << Narrow(Folder);
    EXPECT_EQ(On.Text(Texts(1)), L"");
}

TEST_F(Application, EveryParameterReachesTheRecord) {
    const struct {
        std::wstring_view Line;
        std::wstring_view Property;
        RegValue Value;
    } kRows[] = {
        {L"RETRIEVAL= \"biblio\"", L"Retrieval", RegText(L"BIBLIO")},
        {L"LANG= ita", L"Language", RegText(L"ITA")},
        {L"HELP= aiuto", L"Help", RegText(L"AIUTO")},
        {L"HELPWWW= aiuto", L"HelpWww", RegText(L"AIUTO")},
        {L"STARTACTION= imagetag", L"StartAction", 50},
        {L"STARTACTION= NONE", L"StartAction", -1},
        {L"STARTOBJECT= avvio", L"StartObject", RegText(L"AVVIO")},
        {L"STARTUPMODE= maximized", L"StartupMode", 1},
        {L"STARTUPMODE= hascaption", L"StartupMode", 2},
        {L"STARTUPMODE= noresize", L"StartupMode", 4},
        {L"STARTUPMODE= queryunload|default", L"StartupMode", 8},
        {L"STARTUPMODE= DEFAULT", L"StartupMode", 0},
        {L"ALLOWSHUTDOWN= vero", L"AllowShutdown", true},
        {L"IDLEACTION= none", L"IdleAction", 0},
        {L"IDLEACTION= close", L"IdleAction", 1},
        {L"IDLEACTION= restart", L"IdleAction", 2},
        {L"IDLEACTION= savescreen", L"IdleAction", 3},
        {L"IDLEACTION= password", L"IdleAction", 4},
        {L"IDLETIME= 60", L"IdleTime", 60},
        {L"PASSWORD= \"Chiave\"", L"Password", RegText(L"Chiave")},
        {L"MSIEFLAGS= enablenewwindow", L"MsieFlags", 1},
        {L"REMOTEDB= TRUE", L"RemoteDb", true},
        {L"LOANENABLE= notenabled", L"LoanEnable", 0},
        {L"LOANENABLE= enabled|notenabled", L"LoanEnable", 1},
        {L"LOANENABLE= startup", L"LoanEnable", 2},
        {L"LOANENABLE= restartable", L"LoanEnable", 4},
        {L"LOANPATH= \"D:\\Prestiti\"", L"LoanPath", RegText(L"D:\\Prestiti")},
        {L"FORMAT= text", L"Format", 0},
        {L"FORMAT= rtf", L"Format", 1},
        {L"PRINTERFLAGS= noown|ownask", L"PrinterFlags", 3},
        {L"PRINTERFLAGS= fontbutton", L"PrinterFlags", 4},
        {L"PRINTERFLAGS= printerbutton", L"PrinterFlags", 8},
        {L"PRINTERFLAGS= NONE", L"PrinterFlags", 0},
        {L"PRNMAXITEMS= 7", L"PrnMaxItems", 7},
        {L"PRNMAXRECS= none", L"PrnMaxRecs", -1},
        {L"FILEFLAGS= noown", L"FileFlags", 1},
        {L"FILEFLAGS= ownask", L"FileFlags", 2},
        {L"FILEMAXITEMS= 0", L"FileMaxItems", 0},
        {L"FILEMAXRECS= 9", L"FileMaxRecs", 9},
        {L"OUTPUTUSERLOG= TRUE", L"OutputUserLog", true},
        {L"LOGFILE= C:\\log.txt", L"LogFile", RegText(L"C:\\log.txt")},
        {L"MIRROROF= Altro", L"MirrorOf", RegText(L"Altro")},
    };
    for (const auto& Row : kRows) {
        for (const bool Strict : {true, false}) {
            SCOPED_TRACE(Narrow(Row.Line));
            ASSERT_TRUE(Accepted(On.Put(Parms(), std::wstring(Row.Line), Strict)));
            EXPECT_TRUE(ValueOf(SavedBy(On), Row.Property) == Row.Value);
            if (Row.Property != L"StartAction") {
                EXPECT_EQ(LongOf(On.Object->Read(), L"StartAction"), -1) << "left out, back to its default";
            }
        }
    }
    EXPECT_EQ(ListOf(On.Object->Read(), L"FormFonts").size(), 2U) << "the lists stay";
    EXPECT_EQ(Names().size(), 3U);
    EXPECT_EQ(Languages(1).size(), 3U);
}

TEST_F(Application, UnknownWordsOfTheParameters) {
    const struct {
        std::wstring_view Keyword;
        std::wstring_view Value;
        std::wstring_view Told;
    } kRows[] = {
        {L"STARTACTION=", L"forse", L"FORSE"},
        {L"STARTUPMODE=", L"none", L""},
        {L"ALLOWSHUTDOWN=", L"forse", L"FORSE"},
        {L"IDLEACTION=", L"", L""},
        {L"MSIEFLAGS=", L"noown", L""},
        {L"REMOTEDB=", L"1", L"1"},
        {L"LOANENABLE=", L"prevail", L""},
        {L"LOANENABLE=", L"disponly|startup", L"STARTUP"},
        {L"LOANENABLE=", L"none", L""},
        {L"FORMAT=", L"html", L"HTML"},
        {L"PRINTERFLAGS=", L"forse|noown", L"NOOWN"},
        {L"PRNMAXITEMS=", L"-5", L"-5"},
        {L"PRNMAXRECS=", L"tutti", L"TUTTI"},
        {L"FILEFLAGS=", L"fontbutton", L""},
        {L"FILEMAXITEMS=", L"-1", L"-1"},
        {L"FILEMAXRECS=", L"\"none\"", L"\"NONE\""},
        {L"OUTPUTUSERLOG=", L"boh", L"BOH"},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Keyword) + Narrow(Row.Value));
        const std::wstring Line = std::wstring(Row.Keyword) + L" " + std::wstring(Row.Value);
        const std::wstring Before = On.Text(Parms());
        EXPECT_TRUE(Refused(On.Put(Parms(), L"'x\r\n" + Line), 20000, kSource,
                            L"Valore sconosciuto per il parametro " + std::wstring(Row.Keyword) + L"(" +
                                std::wstring(Row.Told) + L")",
                            2));
        EXPECT_EQ(Narrow(On.Text(Parms())), Narrow(Before));
        EXPECT_TRUE(Accepted(On.Put(Parms(), Line, false)));
    }
}

TEST_F(Application, RefusalsOfTheParameters) {
    for (const wchar_t* Keyword :
         {L"RETRIEVAL=",   L"LANG=",          L"HELP=",         L"HELPWWW=",      L"STARTOBJECT=",
          L"STARTUPMODE=", L"ALLOWSHUTDOWN=", L"IDLETIME=",     L"PASSWORD=",     L"MSIEFLAGS=",
          L"REMOTEDB=",    L"LOANENABLE=",    L"LOANPATH=",     L"PRINTERFLAGS=", L"PRNMAXITEMS=",
          L"PRNMAXRECS=",  L"FILEFLAGS=",     L"FILEMAXITEMS=", L"FILEMAXRECS=",  L"OUTPUTUSERLOG=",
          L"LOGFILE=",     L"MIRROROF="}) {
        const std::wstring Twice = std::wstring(Keyword) + L"\r\n" + Keyword;
        const std::wstring Told = L"Ripetizone del parametro " + std::wstring(Keyword) + L".";
        ExpectRefusals(On, Parms(), kSource, {{Twice, Told, 2}});
    }
    ExpectRefusals(On, Parms(), kSource,
                   {{L"FORMAT= RTF\r\nFORMAT= TEXT", L"Ripetizone del parametro FORMAT=.", 2},
                    {L"STARTACTION= MENU\r\nSTARTACTION= MENU", L"Ripetizone del parametro STARTACTION=.", 2},
                    {L"IDLEACTION= NONE\r\nIDLEACTION= NONE", L"Ripetizone del parametro IDLEACTION=.", 2},
                    {L"format= RTF", L"Parametro non riconosciuto: format=RTF", 1},
                    {L"FLAGS= NONE", L"Parametro non riconosciuto: FLAGS=NONE", 1}});
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Application, FontsOfTheMessagesAreParsedAsThoseOfTheForms) {
    const struct {
        const wchar_t* Folder;
        std::wstring_view Source;
    } kRows[] = {{L"FORMFONTS", L"ParmEditor.SaveFormFont"},
                 {L"MESSAGEFONTS", L"ParmEditor.SaveFormFont"},
                 {L"TITLEFONTS", L"ParmEditor.SaveTitleFont"}};
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Folder));
        ASSERT_TRUE(Accepted(On.Put(Node(Row.Folder, 1), L"NAME= \"Times\"\r\nSIZE= 11\r\nBOLD= vero")));
        EXPECT_EQ(On.Tree->NodeText(Node(Row.Folder, 1)), L"Font: Times, 11");
        ExpectRefusals(On, Node(Row.Folder, 1), Row.Source,
                       {{L"BOLD= forse", L"Valore sconosciuto per il parametro BOLD=(FORSE)", 1, false},
                        {L"SIZE= 1\r\nSIZE= 1", L"Ripetizone del parametro SIZE=.", 2},
                        {L"TEXT= x", L"Parametro non riconosciuto: TEXT=x", 1}});
        ASSERT_TRUE(Accepted(On.Put(Node(Row.Folder, 1), L"NAME= \"Times\"\r\nSIZE= 11\r\nBOLD= vero")));
    }
    ExpectSameTree();
}

TEST_F(Application, NamesOfMessages) {
    ASSERT_TRUE(Accepted(On.Put(Name(1), L"NAME= \"a così\"\r\nDESC= \"Saluto finale\"")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"A COSÌ");
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"A COSÌ", L"BENVENUTO", L"CODA"}));
    EXPECT_EQ(MessagesOf(On.Object->Read())[0].Desc, L"Saluto finale");
    EXPECT_EQ(MessagesOf(On.Object->Read())[0].Id, 31);
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"ENG", L"FRA"}));
    ASSERT_TRUE(Accepted(On.Put(Name(1), L"'niente")));
    EXPECT_EQ(Names().front(), L"A COSÌ") << "a name left out is kept";
}

TEST_F(Application, NameChecks) {
    EXPECT_TRUE(Refused(On.Put(Name(1), L"NAME="), 20000, kMessageSource,
                        L"Non è stato specificato il nome del messaggio."));
    EXPECT_TRUE(Refused(On.Put(Name(1), L"NAME= \"coda\""), 20000, kMessageSource,
                        L"Il nome del messaggio non è univoco."));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 1)), L"ADDIO");
    EXPECT_TRUE(Accepted(On.Put(Name(1), L"NAME= \"addio\"")));
    ASSERT_TRUE(Accepted(On.Put(Name(1), L"NAME= \"coda\"", false)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"BENVENUTO", L"CODA"}));
    ASSERT_TRUE(Accepted(On.Put(Name(2), L"NAME=", false)));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"CODA", L"", L"CODA"}));
    ExpectRefusals(On, Name(3), kMessageSource,
                   {{L"NAME= A\r\nNAME= B", L"Ripetizone del parametro NAME=.", 2},
                    {L"DESC= A\r\nDESC= B", L"Ripetizone del parametro DESC=.", 2},
                    {L"name= A", L"Parametro non riconosciuto: name=A", 1},
                    {L"'x\r\n\r\nTEXT= A", L"Parametro non riconosciuto: TEXT=A", 3}});
}

TEST_F(Application, TextsOfALanguage) {
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"TEXT= \"See you\"\r\nLANG= deu")));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Messaggio: [DEU] See you");
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"DEU", L"FRA"}));
    EXPECT_TRUE(Refused(On.Put(Text(1, 2), L"TEXT= x"), 20000, kTextSource,
                        L"Non è stato specificato un codice LANG valido."));
    ASSERT_TRUE(Accepted(On.Put(Text(1, 2), L"TEXT= x", false)));
    EXPECT_EQ(On.Tree->NodeText(Text(1, 2)), L"Messaggio: [] x");
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"", L"FRA"}));
    ExpectRefusals(On, Text(2, 1), kTextSource,
                   {{L"TEXT=\r\nTEXT=", L"Ripetizone del parametro TEXT=.", 2},
                    {L"LANG= ITA\r\nNAME= x", L"Parametro non riconosciuto: NAME=x", 2}});
}

TEST_F(Application, ANewMessageHasNoNameYetAndNoText) {
    std::wstring Made;
    for (const std::wstring& At : {std::wstring(L"FIELDS"), Node(L"FIELDS", 1)}) {
        const std::size_t Before = KeysBelow(On, L"FIELDS").size();
        ASSERT_TRUE(Accepted(AddAt(On, At, Made)));
        EXPECT_EQ(Made, Node(L"FIELDS", Before + 1)) << "always last";
        EXPECT_EQ(On.Tree->NodeText(Made), L"?????");
        EXPECT_TRUE(KeysBelow(On, Texts(Before + 1)).empty());
    }
    EXPECT_TRUE(On.Tree->Modified());
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"ADDIO", L"BENVENUTO", L"CODA", L"?????", L"?????"}));
    const RegObject& New = MessagesOf(On.Object->Read())[3];
    EXPECT_NE(New.Id, 0);
    EXPECT_TRUE(ListOf(New, L"Message").empty());
    EXPECT_TRUE(Refused(On.Put(Name(4), On.Text(Name(4))), 20000, kMessageSource,
                        L"Il nome del messaggio non è univoco."));
    ASSERT_TRUE(Accepted(On.Put(Name(4), L"NAME= nuovo")));
    EXPECT_EQ(On.Tree->NodeText(Node(L"FIELDS", 4)), L"NUOVO");
}

TEST_F(Application, TextsGrowMoveAndShrink) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Texts(3), Made)));
    EXPECT_EQ(Made, Text(3, 1));
    EXPECT_EQ(Made.rfind(L"FIELDCAPTION ", 0), 0U);
    EXPECT_EQ(On.Tree->NodeText(Made), L"Messaggio: [] ");
    EXPECT_TRUE(On.Tree->Modified());
    ASSERT_TRUE(Accepted(AddAt(On, Text(1, 1), Made)));
    EXPECT_EQ(Made, Text(1, 4));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"ENG", L"FRA", L""}));
    EXPECT_NE(ListOf(MessagesOf(On.Object->Read())[0], L"Message")[3].Id, 0);

    const std::wstring Old = Text(1, 3);
    ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
    EXPECT_NE(Made, Old);
    EXPECT_EQ(Made, Text(1, 2));
    EXPECT_EQ(Made.rfind(L"FIELDCAPTION ", 0), 0U);
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"ITA", L"FRA", L"ENG", L""}));
    ASSERT_TRUE(Accepted(MoveAt(On, Text(1, 1), 0, Made)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"FRA", L"ITA", L"ENG", L""}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 1), 1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(1, 4), -1, Made)));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Text(2, 1), 1, Made)));

    ASSERT_TRUE(Accepted(DeleteAt(On, Text(1, 2))));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{L"FRA", L"ENG", L""}));
    ASSERT_TRUE(Accepted(DeleteAt(On, Texts(1), true)));
    EXPECT_EQ(Languages(1), (std::vector<std::wstring>{}));
    EXPECT_EQ(Languages(2), (std::vector<std::wstring>{L"ITA"}));
}

struct ListRow {
    const wchar_t* Folder;
    const wchar_t* List;
    const wchar_t* NewCaption;
};
const ListRow kLists[] = {{L"FORMFONTS", L"FormFonts", L"Font: , 0"},
                          {L"MESSAGEFONTS", L"MessageFonts", L"Font: , 0"},
                          {L"TITLEFONTS", L"TitleFonts", L"Font: , 0"},
                          {L"FIELDS", L"", L"?????"}};

TEST_F(Application, EveryListGrowsMovesAndShrinks) {
    for (const ListRow& Row : kLists) {
        SCOPED_TRACE(Narrow(Row.Folder));
        const auto Ids = [&] {
            const RegObject& Saved = SavedBy(On);
            const std::wstring_view List = Row.List;
            std::vector<std::int32_t> Found;
            for (const RegObject& Each : List.empty() ? MessagesOf(Saved) : ListOf(Saved, List))
                Found.push_back(Each.Id);
            return Found;
        };
        const std::size_t Before = Ids().size();
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Row.Folder, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Made, Node(Row.Folder, Before + 1));
        EXPECT_EQ(On.Tree->NodeText(Made), Row.NewCaption);
        std::vector<std::int32_t> Now = Ids();
        ASSERT_EQ(Now.size(), Before + 1);
        EXPECT_NE(Now.back(), 0);
        ExpectSameTree();

        const std::wstring Old = Made;
        ASSERT_TRUE(Accepted(MoveAt(On, Old, 1, Made)));
        EXPECT_NE(Made, Old);
        EXPECT_EQ(Made, Node(Row.Folder, Before));
        EXPECT_TRUE(On.Tree->Modified());
        std::swap(Now[Before], Now[Before - 1]);
        EXPECT_EQ(Ids(), Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(MoveAt(On, Made, -1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, -1, Made)));
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Row.Folder, 1), 1, Made)));
        std::swap(Now[Before], Now[Before - 1]);
        EXPECT_EQ(Ids(), Now);

        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Row.Folder, 1))));
        EXPECT_TRUE(On.Tree->Modified());
        Now.erase(Now.begin());
        EXPECT_EQ(Ids(), Now);
        ExpectSameTree();
        ASSERT_TRUE(Accepted(DeleteAt(On, Row.Folder, true)));
        EXPECT_TRUE(Ids().empty());
        ExpectSameTree();
    }
}

TEST_F(Application, Export) { EXPECT_TRUE(MatchesGolden("export/VCLIENT.txt", On.Exported())); }

TEST_F(Application, ExportOfAnEmptyOne) {
    Desk Empty(L"VCLIENT");
    EXPECT_EQ(Narrow(Empty.Exported()),
              Narrow(L"BEGIN VCLIENT\r\nBEGIN PARMS\r\n" + Empty.Text(Empty.Leaf(L"PARMS")) +
                     L"END PARMS\r\nEND VCLIENT\r\n"));
}

TEST_F(Application, SaveAndReload) {
    ASSERT_TRUE(Accepted(On.Put(Name(1), L"NAME= nuovo\r\nDESC= Descrizione")));
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"FORMAT= RTF\r\nFILEMAXRECS= 3")));
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"VCLIENT", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Picture(), On.Picture());
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
}

TEST_F(Application, TheConstantsOfTheMessages) {
    const std::filesystem::path File = On.Platform.Folder / "MESSAGGI.BAS";
    On.Platform.SavePath = File.wstring();
    ASSERT_TRUE(Accepted(On.Put(Name(2), L"NAME= \"ben venuto\"")));
    On.Tree->MarkModified(false);
    On.Platform.Shown.clear();
    On.Core.TlbrButtonClick(L"CONSTANTS", {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Shown.empty());
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_EQ(ReadFile(File),
              "'vdbApplication Messages\r\n"
              "Public Const MSG_ADDIO_ITA=\"Arrivederci a tutti quanti\"\r\n"
              "Public Const MSG_ADDIO_ENG=\"Bye\"\r\n"
              "Public Const MSG_ADDIO_FRA=\"Au revoir\"\r\n"
              "Public Const MSG_BEN_VENUTO_ITA=\"Benvenuto\"\r\n"
              "Public Const MSG_ADDIO_STR=\"ADDIO\"\r\n"
              "Public Const MSG_BEN_VENUTO_STR=\"BEN VENUTO\"\r\n"
              "Public Const MSG_CODA_STR=\"CODA\"\r\n"
              "Public Const MSG_ADDIO_COD=10000\r\n"
              "Public Const MSG_BEN_VENUTO_COD=10001\r\n");
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(Application, AFileThatCannotBeMadeIsShownOnce) {
    On.Platform.SavePath = (On.Platform.Folder / "manca" / "X.BAS").wstring();
    On.Core.TlbrButtonClick(L"CONSTANTS", {.CurrItem = Parms()});
    ASSERT_EQ(On.Platform.Shown.size(), 1U);
    EXPECT_EQ(On.Platform.Shown[0].Source, L"vdbcModule.ExportFieldsToConsts");
    EXPECT_EQ(Narrow(On.Platform.Shown[0].Description),
              Narrow(L"Impossibile creare il file " + *On.Platform.SavePath));
}

TEST_F(Application, OtherOperations) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* Key : {L"", L"FIELDS", L"ALTRO", L"parms"}) {
        std::wstring Text = L"PIPPO= 1";
        std::wstring NewKey;
        EXPECT_TRUE(Accepted(
            On.Try([&] { return On.Core.SaveData({.CurrItem = Parms(), .Key = Key}, Text, NewKey); })));
        std::wstring Shown;
        EXPECT_TRUE(
            Accepted(On.Try([&] { return On.Core.DispData({.CurrItem = Parms(), .Key = Key}, Shown); })));
        EXPECT_EQ(Shown, L"");
    }
    On.Tree->MarkModified(false);
    for (const std::wstring& Key : {std::wstring(L"PARMS"), Parms(), Name(1)}) {
        std::wstring Made;
        EXPECT_TRUE(Accepted(AddAt(On, Key, Made))) << "nothing is added";
        EXPECT_EQ(Made, L"");
        EXPECT_TRUE(Accepted(DeleteAt(On, Key, true))) << "nothing is deleted";
        EXPECT_TRUE(Accepted(DeleteAt(On, Key)));
    }
    EXPECT_FALSE(On.Tree->Modified());
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.ShowPropTable({.CurrItem = L"FIELDS"}); })));
    EXPECT_EQ(On.Platform.Beeps, 1);
    for (const wchar_t* Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"constants", L""})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = Parms()});
    EXPECT_TRUE(On.Platform.Asked.empty());
    EXPECT_TRUE(On.Platform.FileQuestions.empty());
    EXPECT_EQ(On.Picture(), Before);
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Word); })));
    EXPECT_EQ(Word, L"VCLIENT");
    EXPECT_EQ(MessagesOf(On.Clipboard.DataObj->Read()).size(), 3U);
}

TEST_F(Application, WrapLinesStandAtTheMargin) {
    diApplication Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDS"}, Buffer, true, {}, 1));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"BEGIN FIELDS\r\nEND FIELDS\r\n"));
    Buffer.clear();
    const std::int32_t Second = 2;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Second, 1}, 2));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"BEGIN FIELDPARMS\r\nNAME= \"BENVENUTO\"\r\nDESC= \"\"\r\n'[ID= 32]\r\n"
                                     L"'[NAME= BENVENUTO]\r\n'[VERSION= 0]\r\nEND FIELDPARMS\r\n"));
    Buffer.clear();
    const std::int32_t Beyond = 9;
    EXPECT_TRUE(Item.DispData({.Index = 1, .Key = L"FIELDPARMS"}, Buffer, true, {&Beyond, 1}, 2));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diApplication.DispData");
    CoreUtil::Instance().ForgetError();
}

TEST_F(Application, ANodeThatCannotBeMadeIsToldByItsMaker) {
    const struct {
        std::wstring_view Nodes;
        std::wstring_view Source;
    } kRows[] = {{L"FORMFONTS ", L"diApplication.SetNode"},
                 {L"TITLEFONTS ", L"diApplication.SetNode"},
                 {L"FIELDS-", L"diApplication.SetMsgNode"},
                 {L"FIELDCAPTION ", L"diApplication.SetMsgNode"},
                 {L"PARMS", L"diApplication.LoadData"}};
    for (const auto& Row : kRows) {
        diApplication Item;
        const auto Tree = std::make_shared<RefusingTree>();
        Tree->Refused = Row.Nodes;
        Item.DesignTree() = Tree;
        EXPECT_TRUE(Item.LoadData(*On.Object));
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, Row.Source);
        CoreUtil::Instance().ForgetError();
    }
}

TEST_F(Application, AnItemThatHasLoadedNothingAnswers) {
    diApplication Item;
    std::wstring Name = L"x";
    std::wstring Desc = L"x";
    std::wstring Id;
    std::int16_t Version = 9;
    ASSERT_FALSE(Item.GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name + Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
}

}  // namespace
}  // namespace kv::test
