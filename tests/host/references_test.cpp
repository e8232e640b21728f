// Who names whom: every row of the table, names that hang or lead to another class, parts of other objects.

#include "host/References.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "frame/CoreUtil.h"
#include "frame/SectionTable.h"
#include "host/CommandsSession.h"
#include "host/Demo.h"
#include "tests/support/TestPlatform.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;
using test::Narrow;

std::wstring ValueOf(const ReferenceRow& Row, std::wstring_view Name) {
    const std::wstring Quoted = L"\"" + std::wstring(Name) + L"\"";
    return Row.How == Naming::Master ? L"SCHEDA=" + Quoted : Quoted;
}

// A text in which the row names `Name`, with the other lines that it takes.
std::wstring TextOf(const ReferenceRow& Row, std::wstring_view Name) {
    std::wstring Text;
    LineWriter Out{Text, 0};
    if (!Row.Beside.Keyword.empty()) Out.Plain(Row.Beside.Keyword, Row.Beside.Word);
    Out.Plain(Row.Keyword, ValueOf(Row, Name));
    if (Row.What == Named::Field) Out.Quoted(L"TABLE=", L"TITOLARE");
    return Text;
}

std::string RowText(const ReferenceRow& Row) {
    return Narrow(std::wstring(Row.Clsid) + L" " + std::wstring(Row.Section) + L" " +
                  std::wstring(Row.Keyword));
}

/// A keyword that the server renders.
struct Stand {
    std::wstring Clsid;
    std::wstring Section;
    std::wstring Keyword;

    auto operator<=>(const Stand&) const = default;
    friend void PrintTo(const Stand& Of, std::ostream* Out) {
        *Out << Narrow(Of.Clsid + L" " + Of.Section + L" " + Of.Keyword);
    }

    /// All those of an object.
    static std::set<Stand> Of(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
        std::set<Stand> All;
        Work.InWindow(Clsid, Name, [&](window::WindowCore& Core) {
            for (const Address& Node : Addresses(Core.Tree())) {
                if (!Node.Leaf) continue;
                std::wstring Buffer;
                Work.Must(Core.DispData({.CurrItem = Node.Node->Key}, Buffer));
                SectionText Lines(Buffer);
                std::wstring_view Keyword, Value;
                while (!Lines.Empty()) {
                    if (GetFieldValue(Lines, Keyword, Value))
                        CoreUtil::Instance().ForgetError();  // a line of free text
                    else
                        All.insert({Clsid, std::wstring(Node.Section), std::wstring(Keyword)});
                }
            }
        });
        return All;
    }
};

class ReferencesTest : public ::testing::Test {
  protected:
    ReferencesTest()
        : Work({.Store = Platform.Folder / "kv.db", .ProgramDir = Platform.Folder, .Temp = Platform.Folder},
               {.In = In, .Out = Out, .Err = Err}) {}

    void Make(std::wstring_view Clsid, std::wstring_view Name) { Work.Registry().Create(Clsid, Name); }

    /// An element more in a list.
    void Add(const std::wstring& Clsid, const std::wstring& Name, const std::wstring& List) {
        Work.InWindow(Clsid, Name, [&](window::WindowCore& Core) {
            const Address Node = Addressed(Core.Tree(), List, {}, Want::Folder);
            std::wstring Key;
            Work.Must(Core.EditData({.CurrItem = Node.Node->Key}, Key));
            Work.MustSave(Core.Save());
        });
    }

    /// An object with an element in each list that the table of references looks into.
    void MakeWithLists(const std::wstring& Clsid, const std::wstring& Name) {
        static const std::map<std::wstring_view, std::vector<std::wstring>> kLists = {
            {L"BROWSE", {L"FILTER"}},  {L"IMPORTPROC", {L"FIELDS", L"INDEXES", L"SCRIPTS"}},
            {L"PROFILE", {L"FIELDS"}}, {L"QUERY", {L"FIELDS"}},
            {L"STEM", {L"FIELDS"}},    {L"TABLE", {L"FIELDS"}},
        };
        Make(Clsid, Name);
        if (const auto Found = kLists.find(Clsid); Found != kLists.end())
            for (const std::wstring& List : Found->second) Add(Clsid, Name, List);
    }

    /// Saves the text of a section, unchecked.
    void Set(const std::wstring& Clsid, const std::wstring& Name, const std::wstring& Section,
             const Place& At, std::wstring_view Text) {
        Work.InWindow(Clsid, Name, [&](window::WindowCore& Core) {
            Core.Tree().SetSyntaxOn(false);
            const Address Node = Addressed(Core.Tree(), Section, At, Want::Text);
            std::wstring Buffer;
            Work.Must(Core.DispData({.CurrItem = Node.Node->Key}, Buffer));  // as everyone does
            Buffer = WithLineEnds(Text);
            std::wstring Key;
            Work.Must(Core.SaveData({.CurrItem = Node.Node->Key}, Buffer, Key));
            Work.MustSave(Core.Save());
        });
    }
    void Set(const std::wstring& Clsid, const std::wstring& Name, std::wstring_view Text) {
        Set(Clsid, Name, L"PARMS", {1}, Text);
    }

    /// A table with fields of these names.
    void Table(const std::wstring& Name, std::wstring_view Parms,
               const std::vector<std::wstring>& Fields = {}) {
        Make(L"TABLE", Name);
        Set(L"TABLE", Name, Parms);
        std::int32_t At = 0;
        for (const std::wstring& Field : Fields) {
            ++At;
            Add(L"TABLE", Name, L"FIELDS");
            Set(L"TABLE", Name, L"FIELDPARMS", {At},
                L"TAG= " + std::to_wstring(At) + L"\nNAME= \"" + Field + L"\"\n");
        }
    }

    /// Changes the file behind the back of the registry.
    void Damage(const char* Sql) {
        sqlite3* Base = nullptr;
        EXPECT_EQ(sqlite3_open((Platform.Folder / "kv.db").c_str(), &Base), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(Base, Sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(Base);
    }

    std::vector<std::string> Faults() {
        std::vector<std::string> Told;
        for (const ReferenceFault& Each : References(Work.Registry()).Faults()) {
            const Use& Of = Each.Of;
            Told.push_back(
                Narrow(StandsAt(Of.Clsid, Of.Name, Of.By.Row->Section, Of.By.At) + L": " + Each.Message));
        }
        return Told;
    }
    std::vector<std::string> Users(std::wstring_view Clsid, std::wstring_view Name) {
        std::vector<std::string> Told;
        for (const Use& Each : References(Work.Registry()).UsersOf(Clsid, Name))
            Told.push_back(Narrow(UseText(Each)));
        return Told;
    }

    static std::vector<std::string> Names(const std::vector<ObjectName>& Of) {
        std::vector<std::string> Told;
        for (const ObjectName& Each : Of) Told.push_back(Narrow(StandsAt(Each.Clsid, Each.Name, {}, {})));
        return Told;
    }

    using Texts = std::vector<std::string>;

    test::TestPlatform Platform;
    std::istringstream In;
    std::ostringstream Out, Err;
    Session Work;
};

/// The names that a text tells, each as KEYWORD= name (class).
std::vector<std::string> Told(std::wstring_view Clsid, std::wstring_view Section, std::wstring_view Text) {
    const std::vector<SectionAsText> Texts{{std::wstring(Section), {1}, WithLineEnds(Text)}};
    std::vector<std::string> All;
    for (const Reference& Each : ReferencesIn(Clsid, L"A", Texts))
        All.push_back(Narrow(std::wstring(Each.Row->Keyword) + L" " + Each.Name + L" (" +
                             std::wstring(Each.Row->Wanted) + L")"));
    return All;
}

TEST(ReferencesInText, EveryRowIsFound) {
    for (const ReferenceRow& Row : ReferenceTable()) {
        const std::vector<SectionAsText> Texts{{std::wstring(Row.Section), {4, 2}, TextOf(Row, L"NOME")}};
        const std::vector<Reference> All = ReferencesIn(Row.Clsid, L"A", Texts);
        const auto Found =
            std::find_if(All.begin(), All.end(), [&](const Reference& Each) { return Each.Row == &Row; });
        ASSERT_NE(Found, All.end()) << RowText(Row);
        EXPECT_EQ(Found->Name, L"NOME") << RowText(Row);
        EXPECT_EQ(Found->At, (Place{4, 2}));
        EXPECT_EQ(Found->Line, Row.Beside.Keyword.empty() ? 1 : 2) << RowText(Row);
        // Nothing stands for no name, and the same line in a section that has no such row.
        const std::vector<SectionAsText> Empty{{std::wstring(Row.Section), {1}, TextOf(Row, L"")}};
        for (const Reference& Each : ReferencesIn(Row.Clsid, L"A", Empty))
            EXPECT_NE(Each.Row, &Row) << RowText(Row);
        const std::vector<SectionAsText> Elsewhere{{L"MESSAGE", {1}, TextOf(Row, L"NOME")}};
        EXPECT_TRUE(ReferencesIn(Row.Clsid, L"A", Elsewhere).empty()) << RowText(Row);
    }
}

TEST(ReferencesInText, RowsOfAClassAndSectionStandTogetherAndOnce) {
    std::set<std::string> Rows;
    std::set<std::pair<std::wstring_view, std::wstring_view>> Sections;
    std::pair<std::wstring_view, std::wstring_view> Last;
    for (const ReferenceRow& Row : ReferenceTable()) {
        EXPECT_TRUE(Rows.insert(RowText(Row) + Narrow(Row.Beside.Word)).second) << RowText(Row);
        const std::pair Here(Row.Clsid, Row.Section);
        if (Here != Last) {
            EXPECT_TRUE(Sections.insert(Here).second) << RowText(Row);
        }
        Last = Here;
    }
}

TEST(ReferencesInText, ValuesAreReadAsTheServerReadsThem) {
    using Texts = std::vector<std::string>;
    struct Case {
        std::wstring_view Clsid;
        std::wstring_view Section;
        std::wstring_view Text;
        Texts Names;
    };
    const Case Cases[] = {
        {L"FILTER", L"PARMS", L"TABLE = STATO\n", {"TABLE= STATO (TABLE)"}},
        {L"FILTER", L"PARMS", L"   TABLE=\"STATO\"   \n", {"TABLE= STATO (TABLE)"}},
        {L"FILTER", L"PARMS", L"'TABLE= \"STATO\"\n*HELP= \"A\"\n;HELP= \"B\"\n", {}},
        {L"FILTER", L"PARMS", L"table= \"STATO\"\n\tTABLE= \"STATO\"\n", {}},
        {L"FILTER", L"PARMS", L"TABLE=\nHELP= \"\"\nMIRROROF= \"\n", {}},
        {L"FILTER", L"PARMS", L"senza uguale\nHELP= \"AIUTO\"\n", {"HELP= AIUTO (HELP)"}},
        {L"FILTER", L"PARMS", L"MIRROROF= \"Città vecchia\"\n", {"MIRROROF= Città vecchia (FILTER)"}},
        {L"TABLE",
         L"PARMS",
         L"SORT= \"A\", , B,\"C D\"\n",
         {"SORT= A (SORT)", "SORT= B (SORT)", "SORT= C D (SORT)"}},
        {L"TABLE", L"PARMS", L"SORT= \"A\",\"B\",\"A\"\n", {"SORT= A (SORT)", "SORT= B (SORT)"}},
        {L"TABLE", L"PARMS", L"SORT=\n", {}},
        {L"QUERY", L"FIELDPARMS", L"TABLES= \"AUT, TIT\"\n", {"TABLES= AUT (TABLE)", "TABLES= TIT (TABLE)"}},
        {L"PROFILE",
         L"PARMS",
         L"MASTER= A=\"UNO\"\nMASTER= B = due\nMASTER=\nMASTER= TRE\nMASTER= C=\n",
         {"MASTER= UNO (MATER)", "MASTER= due (MATER)"}},
        {L"VCLIENT", L"PARMS", L"STARTOBJECT= \"R\"\nSTARTACTION= QUERY\n", {"STARTOBJECT= R (QUERY)"}},
        {L"VCLIENT", L"PARMS", L"STARTOBJECT= \"R\"\nSTARTACTION= BACK\n", {}},
        {L"VCLIENT", L"PARMS", L"STARTOBJECT= \"R\"\n", {}},
        {L"RETRIEVAL", L"PARMS", L"HELPTYPE= STANDARD\nHELP= \"A\"\n", {"HELP= A (HELP)"}},
        {L"RETRIEVAL", L"PARMS", L"HELP= \"A\"\nHELPTYPE= standard\n", {"HELP= A (HELP)"}},
        {L"RETRIEVAL", L"PARMS", L"HELPTYPE= EXTERN-CHM\nHELP= \"A.CHM\"\n", {}},
        {L"MEMBER", L"PARMS", L"TABLE= \"A\"\n", {}},
        {L"PIPPO", L"PARMS", L"TABLE= \"A\"\n", {}},
    };
    for (const Case& Each : Cases)
        EXPECT_EQ(Told(Each.Clsid, Each.Section, Each.Text), Each.Names) << Narrow(Each.Text);
}

// A row whose keyword the server does not know would never find anything.
TEST_F(ReferencesTest, EveryRowStandsInTheTextThatTheServerShows) {
    std::set<std::wstring> Classes;
    for (const ReferenceRow& Row : ReferenceTable()) Classes.emplace(Row.Clsid);
    for (const std::wstring& Class : Classes) {
        MakeWithLists(Class, L"A");
        const std::set<Stand> Stands = Stand::Of(Work, Class, L"A");
        for (const ReferenceRow& Row : ReferenceTable())
            if (Row.Clsid == Class) {
                EXPECT_EQ(Stands.count({Class, std::wstring(Row.Section), std::wstring(Row.Keyword)}), 1U)
                    << RowText(Row);
            }
    }
}

TEST_F(ReferencesTest, EveryRowTellsHowItsReaderTakesTheLetters) {
    int Made = 0;
    for (const ReferenceRow& Row : ReferenceTable()) {
        const std::wstring Class(Row.Clsid);
        if (Class == L"SORT") continue;  // reads its MIRROROF= and does not store it
        const std::wstring Name = L"A" + std::to_wstring(++Made);
        MakeWithLists(Class, Name);
        Set(Class, Name, std::wstring(Row.Section), {1}, TextOf(Row, L"Città"));
        std::vector<std::wstring> Found;
        for (const Reference& Each : References(Work.Registry()).Of(Class, Name))
            if (Each.Row == &Row) Found.push_back(Each.Name);
        EXPECT_EQ(Found, (std::vector<std::wstring>{Row.Case == Letters::Folded ? L"CITTÀ" : L"Città"}))
            << RowText(Row);
    }
}

// What is rendered under a keyword of the table and has no row.
TEST_F(ReferencesTest, EveryKeywordOfTheDemonstrationHasARow) {
    std::set<std::wstring_view> Keywords;
    std::set<Stand> Rows;
    for (const ReferenceRow& Row : ReferenceTable()) {
        Keywords.insert(Row.Keyword);
        Rows.insert({std::wstring(Row.Clsid), std::wstring(Row.Section), std::wstring(Row.Keyword)});
    }
    const fs::path Folder = Platform.Folder / "demo";
    MakeDemo(Folder);
    Session Library({.Store = Folder / kDemoStore, .ProgramDir = Folder, .Temp = Platform.Folder},
                    {.In = In, .Out = Out, .Err = Err});
    std::set<Stand> Without;
    for (const RegistryEntry& Entry : Library.Registry().List())
        for (const Stand& Each : Stand::Of(Library, Entry.Clsid, Entry.Name))
            if (Keywords.count(Each.Keyword) != 0 && Rows.count(Each) == 0) Without.insert(Each);
    EXPECT_EQ(Without, (std::set<Stand>{}));
}

TEST_F(ReferencesTest, ANameHoldsHangsOrLeadsToAnotherClass) {
    for (const ReferenceRow& Row : ReferenceTable()) {
        if (Row.What == Named::Field || Row.What == Named::Script) continue;
        const std::wstring Wanted(Row.Wanted);
        References Before(Work.Registry());
        if (!Before.Knows(Wanted, L"BUONO " + Wanted)) {
            Make(Wanted, L"BUONO " + Wanted);
            Make(Wanted, L"Misto " + Wanted);
        }
        if (!Before.Knows(L"MEMBER", L"Socio")) Make(L"MEMBER", L"Socio");
        References All(Work.Registry());
        const auto Fault = [&](std::wstring_view Name) -> std::string {
            Reference Of{&Row, {1}, 1, std::wstring(Name), {}};
            return Narrow(All.FaultOf(Of).value_or(L"-"));
        };
        const std::string Start = Narrow(std::wstring(Row.Keyword) + L" nomina un'istanza ");
        const auto Unknown = [&](std::wstring_view Name) {
            return Start + Narrow(L"sconosciuta della classe " + Wanted + L": " + std::wstring(Name) + L".");
        };
        const auto OfMember = [&](std::wstring_view Name) {
            return Start + Narrow(L"della classe MEMBER e non della classe " + Wanted + L": " +
                                  std::wstring(Name) + L".");
        };
        EXPECT_EQ(Fault(L"BUONO " + Wanted), "-") << RowText(Row);
        EXPECT_EQ(Fault(L"Misto " + Wanted), "-") << RowText(Row);
        EXPECT_EQ(Fault(L"BUONA"), Unknown(L"BUONA"));
        EXPECT_EQ(Fault(L"Socio"), OfMember(L"Socio"));
        const bool Folded = Row.Case == Letters::Folded;
        for (const std::wstring& Other : {L"buono " + Wanted, L"MISTO " + Wanted})
            EXPECT_EQ(Fault(Other), Folded ? "-" : Unknown(Other)) << RowText(Row);
        EXPECT_EQ(Fault(L"SOCIO"), Folded ? OfMember(L"SOCIO") : Unknown(L"SOCIO")) << RowText(Row);
    }
}

TEST_F(ReferencesTest, AFoldedNameMeansAnObjectInSmallLetters) {
    Make(L"HELP", L"Guida");
    Make(L"COMMAND", L"CERCA");
    Set(L"COMMAND", L"CERCA", L"HELP= \"Guida\"\n");
    Make(L"HELP", L"SPECCHIO");
    Set(L"HELP", L"SPECCHIO", L"MIRROROF= \"Guida\"\n");
    EXPECT_EQ(Faults(), Texts{});
    EXPECT_EQ(Users(L"HELP", L"Guida"),
              (Texts{"COMMAND/CERCA PARMS[1]: HELP= GUIDA", "HELP/SPECCHIO PARMS[1]: MIRROROF= Guida"}));
    // Where one bears the very letters, that one is meant.
    Make(L"HELP", L"GUIDA");
    EXPECT_EQ(Faults(), Texts{});
    EXPECT_EQ(Users(L"HELP", L"Guida"), Texts{"HELP/SPECCHIO PARMS[1]: MIRROROF= Guida"});
    EXPECT_EQ(Users(L"HELP", L"GUIDA"), Texts{"COMMAND/CERCA PARMS[1]: HELP= GUIDA"});
    Work.Registry().Delete(L"HELP", L"Guida");
    EXPECT_EQ(Faults(),
              Texts{"HELP/SPECCHIO PARMS[1]: MIRROROF= nomina un'istanza sconosciuta della classe HELP: "
                    "Guida."});
}

TEST_F(ReferencesTest, PartsAreLookedForInATableInSmallLetters) {
    Table(L"Libri", L"STYLE= RECORD\n", {L"NUMERO"});
    Make(L"REPOSITORY", L"A");
    Set(L"REPOSITORY", L"A", L"TABLE= \"Libri\"\nKEYFIELD= \"Numero\"\n");
    Make(L"REPOSITORY", L"B");
    Set(L"REPOSITORY", L"B", L"TABLE= \"Libri\"\nKEYFIELD= \"Prezzo\"\n");
    Table(L"DISCHI", L"STYLE= RECORD\nINDEX= \"Libri\"\n");
    EXPECT_EQ(
        Faults(),
        (Texts{"REPOSITORY/B PARMS[1]: KEYFIELD= nomina un campo sconosciuto della tabella LIBRI: PREZZO.",
               "TABLE/DISCHI PARMS[1]: INDEX= nomina una tabella che non è un indice: LIBRI."}));
}

TEST_F(ReferencesTest, TheHelpOfABaseIsAnObjectWhereItsKindSaysSo) {
    Make(L"HELP", L"AIUTO");
    for (const std::wstring Name : {L"A", L"B"}) Make(L"RETRIEVAL", Name);
    Set(L"RETRIEVAL", L"A", L"HELPTYPE= EXTERN-CHM\nHELP= \"Aiuto.chm\"\n");
    Set(L"RETRIEVAL", L"B", L"HELP= \"Aiuto.chm\"\n");
    EXPECT_EQ(Faults(), Texts{"RETRIEVAL/B PARMS[1]: HELP= nomina un'istanza sconosciuta della classe HELP: "
                              "AIUTO.CHM."});
    Set(L"RETRIEVAL", L"A", L"HELPTYPE= EXTERN-CHM\nHELP= \"AIUTO\"\n");
    Set(L"RETRIEVAL", L"B", L"HELP= \"AIUTO\"\n");
    EXPECT_EQ(Users(L"HELP", L"AIUTO"), Texts{"RETRIEVAL/B PARMS[1]: HELP= AIUTO"});
}

TEST_F(ReferencesTest, OfAWrongClassAllAreTold) {
    for (const std::wstring_view Class : {L"SORT", L"HELP", L"MENU"}) Make(Class, L"A");
    Make(L"FILTER", L"F");
    Set(L"FILTER", L"F", L"TABLE= \"A\"\n");
    EXPECT_EQ(Faults(), (Texts{"FILTER/F PARMS[1]: TABLE= nomina un'istanza delle classi HELP, MENU, SORT e "
                               "non della classe TABLE: A."}));
}

TEST_F(ReferencesTest, ADroppedObjectIsMissedWhereverItIsNamed) {
    Table(L"NOTIZIE", L"STYLE= RECORD\n");
    Make(L"PROFILE", L"SCHEDA");
    Set(L"PROFILE", L"SCHEDA", L"TABLE= \"NOTIZIE\"\n");
    Make(L"BROWSE", L"ELENCO");
    Set(L"BROWSE", L"ELENCO", L"TABLE= \"NOTIZIE\"\nPROFILE= \"SCHEDA\"\n");
    Add(L"BROWSE", L"ELENCO", L"FILTER");
    Add(L"BROWSE", L"ELENCO", L"FILTER");
    Set(L"BROWSE", L"ELENCO", L"FILTER", {2}, L"NAME= \"F\"\nTABLE= \"notizie\"\n");
    EXPECT_EQ(Faults(), Texts{});
    const Texts Named{"BROWSE/ELENCO PARMS[1]: TABLE= NOTIZIE", "BROWSE/ELENCO FILTER[2]: TABLE= NOTIZIE",
                      "PROFILE/SCHEDA PARMS[1]: TABLE= NOTIZIE"};
    EXPECT_EQ(Users(L"TABLE", L"NOTIZIE"), Named);
    EXPECT_EQ(Users(L"PROFILE", L"SCHEDA"), Texts{"BROWSE/ELENCO PARMS[1]: PROFILE= SCHEDA"});
    EXPECT_EQ(Users(L"BROWSE", L"ELENCO"), Texts{});
    EXPECT_EQ(Users(L"PROFILE", L"NOTIZIE"), Texts{}) << "a name of another class";

    Work.Registry().Delete(L"TABLE", L"NOTIZIE");
    const std::string Missing = ": TABLE= nomina un'istanza sconosciuta della classe TABLE: NOTIZIE.";
    EXPECT_EQ(Faults(), (Texts{"BROWSE/ELENCO PARMS[1]" + Missing, "BROWSE/ELENCO FILTER[2]" + Missing,
                               "PROFILE/SCHEDA PARMS[1]" + Missing}));
}

TEST_F(ReferencesTest, ReadsWithTheWeightsOfTheProgramFolder) {
    Make(L"SORT", L"ITALIANO");
    const fs::path Weights = fs::path(CoreUtil::Instance().ProgramFolder()) / "KVDSRT.TAB";
    fs::remove(Weights);
    static_cast<void>(References(Work.Registry()).Of(L"SORT", L"ITALIANO"));
    EXPECT_TRUE(fs::exists(Weights));
}

TEST_F(ReferencesTest, EachNameOfAListIsOneOfItsOwn) {
    Make(L"SORT", L"ITALIANO");
    Make(L"STOPWORD", L"CIFRE");
    Table(L"AUT", L"NAME= \"AUT\"\nSTYLE= INDEX\nCOLUMNS= 3\nSORT= \"ITALIANO\",\"CIFRE\",\"ITALICO\"\n");
    Make(L"QUERY", L"RICERCA");
    Add(L"QUERY", L"RICERCA", L"FIELDS");
    Set(L"QUERY", L"RICERCA", L"FIELDPARMS", {1}, L"NAME= \"A\"\nTABLES= \"AUT,TIT\"\n");
    EXPECT_EQ(Faults(),
              (Texts{"QUERY/RICERCA FIELDPARMS[1]: TABLES= nomina un'istanza sconosciuta della classe "
                     "TABLE: TIT.",
                     "TABLE/AUT PARMS[1]: SORT= nomina un'istanza della classe STOPWORD e non della classe "
                     "SORT: CIFRE.",
                     "TABLE/AUT PARMS[1]: SORT= nomina un'istanza sconosciuta della classe SORT: ITALICO."}));
    EXPECT_EQ(Users(L"TABLE", L"AUT"), Texts{"QUERY/RICERCA FIELDPARMS[1]: TABLES= AUT"});
    EXPECT_EQ(Users(L"SORT", L"ITALIANO"), Texts{"TABLE/AUT PARMS[1]: SORT= ITALIANO"});
}

TEST_F(ReferencesTest, AnIndexIsATableOfThatStyle) {
    Make(L"SORT", L"CIFRE");
    Table(L"NUM", L"NAME= \"NUM\"\nSTYLE= INDEX\nCOLUMNS= 1\nSORT= \"CIFRE\"\n");
    Table(L"LIBRI", L"STYLE= RECORD\nINDEX= \"NUM\"\n");
    EXPECT_EQ(Faults(), Texts{});
    Table(L"DISCHI", L"STYLE= RECORD\nINDEX= \"LIBRI\"\n");
    Make(L"IMPORTPROC", L"CARICO");
    for (int I = 0; I < 2; ++I) Add(L"IMPORTPROC", L"CARICO", L"INDEXES");
    Set(L"IMPORTPROC", L"CARICO", L"INDEXPARMS", {1}, L"TABLE= \"DISCHI\"\n");
    Set(L"IMPORTPROC", L"CARICO", L"INDEXPARMS", {2}, L"TABLE= \"NUM\"\n");
    EXPECT_EQ(
        Faults(),
        (Texts{"IMPORTPROC/CARICO INDEXPARMS[1]: TABLE= nomina una tabella che non è un indice: DISCHI.",
               "TABLE/DISCHI PARMS[1]: INDEX= nomina una tabella che non è un indice: LIBRI."}));
    EXPECT_EQ(Users(L"TABLE", L"NUM"),
              (Texts{"IMPORTPROC/CARICO INDEXPARMS[2]: TABLE= NUM", "TABLE/LIBRI PARMS[1]: INDEX= NUM"}));
}

TEST_F(ReferencesTest, AFieldIsOneOfTheTableOfTheSameText) {
    Table(L"FOTO", L"STYLE= RECORD\n", {L"INVENTARIO"});
    Table(L"LIBRI", L"STYLE= RECORD\n", {L"NUMERO", L"NUMERO ISBN"});
    Make(L"REPOSITORY", L"A");
    Set(L"REPOSITORY", L"A", L"TABLE= \"FOTO\"\nKEYFIELD= \"inventario\"\n");
    Make(L"PROFILE", L"A");
    Set(L"PROFILE", L"A", L"IMAGEKEYFIELD= \"Numero ISBN\"\nTABLE= \"LIBRI\"\n");
    EXPECT_EQ(Faults(), Texts{});
    Set(L"REPOSITORY", L"A", L"TABLE= \"LIBRI\"\n");  // KEYFIELD= keeps its value
    Set(L"PROFILE", L"A", L"IMAGEKEYFIELD= \"TITOLO\"\nTABLE= \"FOTO\"\n");
    EXPECT_EQ(Faults(),
              (Texts{"PROFILE/A PARMS[1]: IMAGEKEYFIELD= nomina un campo sconosciuto della tabella FOTO: "
                     "TITOLO.",
                     "REPOSITORY/A PARMS[1]: KEYFIELD= nomina un campo sconosciuto della tabella LIBRI: "
                     "INVENTARIO."}));
    EXPECT_EQ(Users(L"TABLE", L"FOTO"), Texts{"PROFILE/A PARMS[1]: TABLE= FOTO"});
    // Where the table itself hangs its field is not looked for.
    Set(L"PROFILE", L"A", L"TABLE= \"FOTO\"\n");
    Set(L"REPOSITORY", L"A", L"TABLE= \"NIENTE\"\n");
    EXPECT_EQ(Faults(), Texts{"REPOSITORY/A PARMS[1]: TABLE= nomina un'istanza sconosciuta della classe "
                              "TABLE: NIENTE."});
}

TEST_F(ReferencesTest, AScriptIsOneOfTheSameProcedure) {
    Make(L"IMPORTPROC", L"A");
    Make(L"IMPORTPROC", L"B");
    Add(L"IMPORTPROC", L"A", L"SCRIPTS");
    Set(L"IMPORTPROC", L"A", L"SCRIPTPARMS", {1}, L"NAME= \"ISBN\"\n");
    for (const std::wstring Name : {L"A", L"B"}) {
        Add(L"IMPORTPROC", Name, L"FIELDS");
        Set(L"IMPORTPROC", Name, L"FIELDPARMS", {1}, L"NAME= \"NUMERO\"\nTAG= 1\nSCRIPT= \"ISBN\"\n");
    }
    EXPECT_EQ(Faults(), Texts{"IMPORTPROC/B FIELDPARMS[1]: SCRIPT= nomina uno script sconosciuto: ISBN."});
    Set(L"IMPORTPROC", L"A", L"FIELDPARMS", {1}, L"NAME= \"NUMERO\"\nTAG= 1\nSCRIPT= \"NUMERO\"\n");
    EXPECT_EQ(Faults().size(), 2U) << "a field is no script";
    EXPECT_EQ(Users(L"IMPORTPROC", L"A"), Texts{}) << "a part is no use of the object";
}

TEST_F(ReferencesTest, AnObjectMayNameItself) {
    Make(L"WEBCLIENT", L"Sala");
    Set(L"WEBCLIENT", L"Sala", L"MIRROROF= \"Sala\"\n");
    Make(L"WEBCLIENT", L"B");
    Set(L"WEBCLIENT", L"B", L"MIRROROF= \"SALA\"\n");
    EXPECT_EQ(Users(L"WEBCLIENT", L"Sala"), Texts{"WEBCLIENT/Sala PARMS[1]: MIRROROF= Sala"});
    EXPECT_EQ(Faults(), Texts{"WEBCLIENT/B PARMS[1]: MIRROROF= nomina un'istanza sconosciuta della classe "
                              "WEBCLIENT: SALA."});
}

TEST_F(ReferencesTest, WhatCannotBeReadStopsNothing) {
    Make(L"HELP", L"AIUTO");
    Table(L"LIBRI", L"STYLE= RECORD\n", {L"NUMERO"});
    for (const std::wstring Name : {L"A", L"B"}) {
        Make(L"FILTER", Name);
        Set(L"FILTER", Name, L"TABLE= \"LIBRI\"\nHELP= \"AIUTI\"\n");
    }
    Make(L"REPOSITORY", L"R");
    Set(L"REPOSITORY", L"R", L"TABLE= \"LIBRI\"\nKEYFIELD= \"PREZZO\"\n");
    Make(L"PIPPO", L"P");  // of a class that this server does not have
    EXPECT_EQ(Faults().size(), 3U);
    Damage("UPDATE objects SET Content = '{' WHERE Name = 'LIBRI' OR Clsid = 'FILTER' AND Name = 'A'");
    const Texts Told{"FILTER/B PARMS[1]: HELP= nomina un'istanza sconosciuta della classe HELP: AIUTI."};
    EXPECT_EQ(Faults(), Told) << "the name of a damaged table holds, and its fields are not known";
    EXPECT_EQ(Users(L"TABLE", L"LIBRI"),
              (Texts{"FILTER/B PARMS[1]: TABLE= LIBRI", "REPOSITORY/R PARMS[1]: TABLE= LIBRI"}));
    std::vector<ObjectName> Unread;
    References(Work.Registry()).UsersOf(L"TABLE", L"LIBRI", &Unread);
    EXPECT_EQ(Names(Unread), (Texts{"FILTER/A", "TABLE/LIBRI"})) << "those that may name it";
    Unread.clear();
    References(Work.Registry()).UsersOf(L"STOPWORD", L"CIFRE", &Unread);
    EXPECT_EQ(Names(Unread), Texts{}) << "no filter names stop words";
    EXPECT_TRUE(References(Work.Registry()).Of(L"FILTER", L"A").empty());
    EXPECT_TRUE(References(Work.Registry()).Of(L"FILTER", L"NIENTE").empty());
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty());
    EXPECT_TRUE(Work.Platform().TakeShown().empty()) << "nothing is shown";
}

}  // namespace
}  // namespace kv::host
