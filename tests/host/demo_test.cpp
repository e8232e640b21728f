// The demonstration installation: what it holds, that the server accepts all of it, and that it is there
// wholly or not at all.

#include "host/Demo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <system_error>

#include "host/CommandsCheck.h"
#include "host/CommandsSession.h"
#include "host/References.h"
#include "tests/support/TestPlatform.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;
using test::Narrow;
using test::ReadFile;
using test::WriteFile;

class Demo : public ::testing::Test {
  protected:
    std::set<std::string> Names(const fs::path& Folder) const {
        std::set<std::string> Found;
        for (const fs::directory_entry& Each : fs::directory_iterator(Folder))
            Found.insert(Each.path().filename().string());
        return Found;
    }

    test::TestPlatform Platform;
    const fs::path& Here = Platform.Folder;
    const std::set<std::string> Whole{"KVDSRT.TAB", "VELMIRA.INI", "kvdesign.db"};
};

TEST_F(Demo, HoldsSeveralObjectsOfAClass) {
    std::map<std::wstring_view, int> Count;
    std::set<std::pair<std::wstring_view, std::wstring_view>> Once;
    for (const DemoObject& Object : DemoObjects()) {
        ++Count[Object.Clsid];
        EXPECT_TRUE(Once.emplace(Object.Clsid, Object.Name).second) << Narrow(Object.Name);
        EXPECT_FALSE(Object.Desc.empty());
        EXPECT_FALSE(Object.Sections.empty());
    }
    for (const std::wstring_view Word :
         {L"BROWSE",    L"CATALOGUE", L"FILTER",   L"HELP",        L"IMPORT",     L"IMPORTPROC", L"MATER",
          L"MEMBER",    L"MENU",      L"PROFILE",  L"QUERY",       L"REPOSITORY", L"RETRIEVAL",  L"SETOPS",
          L"SORT",      L"STEM",      L"STOPWORD", L"STRINGTABLE", L"TABLE",      L"VCLIENT",    L"WEBCLIENT",
          L"WEBSERVER", L"COMMAND",   L"LOAN",     L"LOANCLIENT",  L"LOANMENU",   L"MAILGROUP"})
        EXPECT_GE(Count[Word], 2) << Narrow(Word);
}

TEST_F(Demo, IsAnInstallationWhoseEverySectionIsAccepted) {
    MakeDemo(Here / "biblioteca");
    EXPECT_EQ(Names(Here / "biblioteca"), Whole);
    EXPECT_EQ(Names(Here), std::set<std::string>{"biblioteca"}) << "nothing is left beside it";
    EXPECT_EQ(fs::file_size(Here / "biblioteca" / "KVDSRT.TAB"), 256U);

    std::istringstream In;
    std::ostringstream Out, Err;
    const fs::path Folder = Here / "biblioteca";
    Session Work({.Store = Folder / kDemoStore, .ProgramDir = Folder, .Temp = Here},
                 {.In = In, .Out = Out, .Err = Err});
    EXPECT_EQ(CheckObjects(Work, std::nullopt, std::nullopt), exit_code::kDone);
    EXPECT_EQ(Out.str() + Err.str(), "");

    // Every object has been through one save, and holds what its text says.
    const std::vector<RegistryEntry> Entries = Work.Registry().List();
    EXPECT_EQ(Entries.size(), DemoObjects().size());
    for (const RegistryEntry& Entry : Entries) {
        EXPECT_EQ(Entry.Revision, 2) << Narrow(Entry.Name);
        EXPECT_FALSE(Entry.Desc.empty()) << Narrow(Entry.Name);
    }
    const RegObject Catalogue = Work.Registry().ReadStored(L"CATALOGUE", L"GENERALE");
    EXPECT_EQ(*Catalogue.Value(L"Retrieval"), RegValue(std::wstring(L"BIBLIO")));
    const RegObject Digits = Work.Registry().ReadStored(L"SORT", L"CIFRE");
    const auto& Table = std::get<std::wstring>(*Digits.Value(L"Table"));
    ASSERT_EQ(Table.size(), 256U);
    EXPECT_EQ(Table[L'7'], L'7');
    EXPECT_EQ(std::count(Table.begin(), Table.end(), L'\0'), 246);
}

/// The objects of a demonstration, as they are stored.
class DemoContent : public Demo {
  protected:
    using Name = std::pair<std::wstring, std::wstring>;  // class, name

    void SetUp() override {
        MakeDemo(Here / "demo");
        KvRegSvr Registry(Here / "demo" / kDemoStore);
        for (const RegistryEntry& Entry : Registry.List())
            Objects.emplace(Name(Entry.Clsid, Entry.Name), Registry.ReadStored(Entry.Clsid, Entry.Name));
    }

    static std::wstring Text(const RegObject& Of, std::wstring_view Property) {
        const RegValue* const Value = Of.Value(Property);
        return Value ? std::get<std::wstring>(*Value) : std::wstring();
    }
    static std::int32_t Number(const RegObject& Of, std::wstring_view Property) {
        const RegValue* const Value = Of.Value(Property);
        return Value ? std::get<std::int32_t>(*Value) : 0;
    }
    static const std::vector<RegObject>& Elements(const RegObject& Of, std::wstring_view List) {
        return Of.Child(List)->Children;
    }
    const RegObject& Object(std::wstring_view Clsid, std::wstring_view Of) const {
        return Objects.at(Name(Clsid, Of));
    }
    /// The names of a table's fields by tag.
    std::map<std::int32_t, std::wstring> Tags(std::wstring_view Table) const {
        std::map<std::int32_t, std::wstring> Found;
        for (const RegObject& Field : Elements(Object(L"TABLE", Table), L"Fields"))
            Found.emplace(Number(Field, L"Tag"), Field.Name);
        return Found;
    }

    std::map<Name, RegObject> Objects;
};

TEST_F(DemoContent, NamesOnlyObjectsThatAreThereAndInEveryWayThatThereIs) {
    KvRegSvr Registry(Here / "demo" / kDemoStore);
    References All(Registry);
    for (const ReferenceFault& Each : All.Faults())
        ADD_FAILURE() << Narrow(UseText(Each.Of)) << ": " << Narrow(Each.Message);
    std::set<const ReferenceRow*> Used;
    for (const auto& [Key, Stored] : Objects)
        for (const Reference& Each : All.Of(Key.first, Key.second)) Used.insert(Each.Row);
    std::set<std::string> Unused;
    for (const ReferenceRow& Row : ReferenceTable())
        if (Used.count(&Row) == 0)
            Unused.insert(Narrow(std::wstring(Row.Clsid) + L" " + std::wstring(Row.Section) + L" " +
                                 std::wstring(Row.Keyword) + std::wstring(Row.Beside.Word)));
    // What a mirror of these classes is, the demonstration has no use for; its clients begin at a menu.
    EXPECT_EQ(Unused,
              (std::set<std::string>{
                  "BROWSE FILTER MIRROROF=", "FILTER PARMS MIRROROF=", "IMPORT PARMS MIRROROF=",
                  "REPOSITORY PARMS MIRROROF=", "SORT PARMS MIRROROF=", "STEM PARMS MIRROROF=",
                  "STOPWORD PARMS MIRROROF=", "TABLE PARMS MIRROROF=", "VCLIENT PARMS STARTOBJECT=BROWSE",
                  "VCLIENT PARMS STARTOBJECT=HELP", "VCLIENT PARMS STARTOBJECT=QUERY",
                  "VCLIENT PARMS STARTOBJECT=SETOPS", "VCLIENT PARMS STARTOBJECT=WEBCLIENT"}));
}

TEST_F(DemoContent, ProceduresRunImportsAndAliasesStandForObjects) {
    for (const auto& [Key, Stored] : Objects)
        if (Key.first == L"CATPROC") {
            EXPECT_FALSE(Elements(Stored, L"Fields").empty()) << Narrow(Key.second);
            for (const RegObject& Each : Elements(Stored, L"Fields"))
                EXPECT_EQ(Objects.count(Name(L"IMPORT", Each.Name)), 1U) << Narrow(Each.Name);
        }
    for (const auto& [Alias, Class] : {std::pair(L"CATALOGHI", L"CATALOGUE"), {L"SPORTELLI", L"MEMBER"}}) {
        std::vector<std::wstring> Names;
        for (const RegObject& Each : Elements(Object(L"ALIAS", Alias), L"Fields")) {
            Names.push_back(Each.Name);
            EXPECT_EQ(Objects.count(Name(Class, Text(Each, L"Text"))), 1U) << Narrow(Each.Name);
        }
        EXPECT_GE(Names.size(), 3U);
        EXPECT_TRUE(std::is_sorted(Names.begin(), Names.end()));
    }
}

TEST_F(DemoContent, ToolCommandsSpeakFiveLanguages) {
    std::set<std::int32_t> Keys;
    for (const auto& [Key, Stored] : Objects) {
        if (Key.first != L"COMMAND") continue;
        Keys.insert(Number(Stored, L"KbCode"));
        EXPECT_FALSE(Elements(Stored, L"TitleFonts").empty()) << Narrow(Key.second);
        for (const wchar_t* const List : {L"Titles", L"Messages"}) {
            std::vector<std::wstring> Languages;
            for (const RegObject& Each : Elements(Stored, List)) {
                Languages.push_back(Text(Each, L"Language"));
                EXPECT_FALSE(Text(Each, L"Text").empty()) << Narrow(Key.second);
            }
            EXPECT_EQ(Languages, (std::vector<std::wstring>{L"ITA", L"ENG", L"FRE", L"GER", L"SPA"}))
                << Narrow(Key.second);
        }
    }
    EXPECT_EQ(Keys.size(), 3U) << "one of them without a key";
}

TEST_F(DemoContent, IndexesAreIndexesAndRecordsHaveFields) {
    constexpr std::int32_t kIndex = 1;
    for (const auto& [Key, Stored] : Objects) {
        if (Key.first != L"TABLE") continue;
        const std::wstring Primary = Text(Stored, L"Index");
        EXPECT_EQ(Number(Stored, L"Style") == kIndex, Primary.empty()) << Narrow(Key.second);
        EXPECT_EQ(Number(Stored, L"Style") == kIndex, Elements(Stored, L"Fields").empty())
            << Narrow(Key.second);
        if (!Primary.empty()) {
            EXPECT_EQ(Number(Object(L"TABLE", Primary), L"Style"), kIndex) << Narrow(Primary);
        }
    }
    for (const auto& [Key, Stored] : Objects)
        if (Key.first == L"REPOSITORY") {
            bool Found = false;
            for (const RegObject& Field : Elements(Object(L"TABLE", Text(Stored, L"Table")), L"Fields"))
                Found = Found || Field.Name == Text(Stored, L"KeyField");
            EXPECT_TRUE(Found) << Narrow(Key.second);
        }
}

TEST_F(DemoContent, NoticesStandInGroups) {
    const std::map<std::int32_t, std::wstring> All = Tags(L"NOTIZIE");
    EXPECT_GE(All.size(), 60U);
    std::map<std::int32_t, std::int32_t> Levels;  // by tag
    int Members = 0;
    for (const RegObject& Field : Elements(Object(L"TABLE", L"NOTIZIE"), L"Fields")) {
        const std::int32_t Group = Number(Field, L"GroupTag");
        const std::int32_t Level = Number(Field, L"Level");
        EXPECT_TRUE(Levels.emplace(Number(Field, L"Tag"), Level).second) << Narrow(Field.Name);
        if (Level == 1) {
            EXPECT_TRUE(Group == 0 || Group == Number(Field, L"Tag")) << Narrow(Field.Name);
        } else {
            // The head stands before its members, one level up.
            ASSERT_EQ(Levels.count(Group), 1U) << Narrow(Field.Name);
            EXPECT_EQ(Levels[Group], Level - 1) << Narrow(Field.Name);
            ++Members;
        }
    }
    EXPECT_GT(Members, 30);
}

TEST_F(DemoContent, ImportsFeedFieldsThatTheirTableHas) {
    for (const auto& [Key, Stored] : Objects) {
        if (Key.first != L"IMPORTPROC") continue;
        const std::map<std::int32_t, std::wstring> Fed = Tags(Text(Stored, L"Table"));
        std::set<std::wstring> Scripts{L""};
        for (const RegObject& Script : Elements(Stored, L"Scripts")) Scripts.insert(Script.Name);
        std::set<std::int32_t> Read;
        for (const RegObject& Field : Elements(Stored, L"Fields")) {
            Read.insert(Number(Field, L"Tag"));
            ASSERT_EQ(Fed.count(Number(Field, L"Tag")), 1U) << Narrow(Field.Name);
            EXPECT_EQ(Fed.at(Number(Field, L"Tag")), Field.Name);
            EXPECT_EQ(Scripts.count(Text(Field, L"Script")), 1U) << Narrow(Field.Name);
        }
        for (const RegObject& Index : Elements(Stored, L"Indexes")) {
            const std::wstring Form = Text(Index, L"Key");
            std::wstring Digits;
            for (const wchar_t C : Form + L" ") {
                if (C >= L'0' && C <= L'9') {
                    Digits += C;
                } else if (!Digits.empty()) {
                    EXPECT_EQ(Read.count(std::stoi(Digits)), 1U) << Narrow(Form);
                    Digits.clear();
                }
            }
        }
    }
}

TEST_F(DemoContent, MessagesSpeakFiveLanguages) {
    const auto Look = [](const std::vector<RegObject>& Messages) {
        for (const RegObject& Message : Messages) {
            std::vector<std::wstring> Languages;
            for (const RegObject& Each : Elements(Message, L"Message")) {
                Languages.push_back(Text(Each, L"Language"));
                EXPECT_FALSE(Text(Each, L"Text").empty()) << Narrow(Message.Name);
            }
            EXPECT_EQ(Languages, (std::vector<std::wstring>{L"ITA", L"ENG", L"FRE", L"GER", L"SPA"}))
                << Narrow(Message.Name);
        }
        return Messages.size();
    };
    for (const auto& [Key, Stored] : Objects) {
        if (Key.first == L"STRINGTABLE") Look(Elements(Stored, L"Messages"));
        if (Key.first == L"MAIL") Look(Elements(Stored, L"Fields"));
        if (Key.first == L"VCLIENT") Look(Elements(*Stored.Child(L"Messages"), L"Message"));
    }
    EXPECT_EQ(Elements(Object(L"STRINGTABLE", L"CATALOGO"), L"Messages").size(), 25U);
    EXPECT_EQ(Elements(Object(L"MAIL", L"CENTRALE"), L"Fields").size(), 6U);
    EXPECT_EQ(Look(Elements(*Object(L"VCLIENT", L"LETTORI").Child(L"Messages"), L"Message")), 12U);
}

TEST_F(DemoContent, TheCardShowsItsTableFieldByField) {
    for (const auto& [Profile, Table] :
         {std::pair(L"SCHEDA", L"NOTIZIE"), std::pair(L"TESTATA", L"PERIODICI")}) {
        const std::vector<RegObject>& Mapped = Elements(Object(L"PROFILE", Profile), L"Fields");
        const std::vector<RegObject>& From = Elements(Object(L"TABLE", Table), L"Fields");
        ASSERT_EQ(Mapped.size(), From.size());
        for (std::size_t I = 0; I < From.size(); ++I) {
            EXPECT_EQ(Number(Mapped[I], L"Tag"), Number(From[I], L"Tag"));
            const RegObject& Label = Elements(Mapped[I], L"Captions").at(0);
            EXPECT_EQ(Text(Label, L"Language"), L"ITA");
            EXPECT_EQ(Text(Label, L"Text"), From[I].Name + L": ");
        }
    }
    std::set<std::wstring> Languages;
    for (const RegObject& Field : Elements(Object(L"PROFILE", L"SCHEDA"), L"Fields"))
        for (const RegObject& Label : Elements(Field, L"Captions"))
            Languages.insert(Text(Label, L"Language"));
    EXPECT_EQ(Languages, (std::set<std::wstring>{L"ENG", L"FRE", L"GER", L"ITA", L"SPA"}));
}

TEST_F(DemoContent, ProfilesShowTagsOfTheirTable) {
    std::map<std::wstring, std::size_t> Lists;  // elements of all profiles, by list
    std::set<std::int32_t> Styles;
    for (const auto& [Key, Stored] : Objects) {
        if (Key.first != L"PROFILE") continue;
        const std::map<std::int32_t, std::wstring> Known = Tags(Text(Stored, L"Table"));
        std::set<std::int32_t> Once;
        for (const RegObject& Field : Elements(Stored, L"Fields")) {
            EXPECT_EQ(Known.count(Number(Field, L"Tag")), 1U) << Narrow(Key.second);
            EXPECT_TRUE(Once.insert(Number(Field, L"Tag")).second) << Narrow(Key.second);
        }
        for (const RegObject& Format : Elements(Stored, L"Formats")) {
            Styles.insert(Number(Format, L"Style") & 0xFF);
            for (const RegObject& Cookie : Elements(Format, L"Cookies"))
                EXPECT_EQ(Known.count(Number(Cookie, L"Tag")), 1U) << Narrow(Format.Name);
        }
        for (const wchar_t* const List : {L"Commands", L"Popups", L"Titles", L"RecHtml", L"LoanHtml",
                                          L"Formats", L"LoanTables", L"Fields", L"Html", L"Masters"})
            Lists[List] += Elements(Stored, List).size();
    }
    EXPECT_EQ(Lists.size(), 10U);
    for (const auto& [List, Count] : Lists) EXPECT_GT(Count, 0U) << Narrow(List);
    EXPECT_EQ(Styles, (std::set<std::int32_t>{1, 2})) << "banner and cooked";
}

// The text of an element that the server makes is the first text told, and none is left empty.
TEST_F(DemoContent, ButtonsValuesTagsAndServerMessagesSpeakItalianAndEnglish) {
    using Languages = std::vector<std::wstring>;
    std::map<std::wstring, std::size_t> Seen;
    const auto Look = [&](const Name& Of, const std::vector<RegObject>& Texts) {
        Languages Told;
        for (const RegObject& Each : Texts) {
            Told.push_back(Text(Each, L"Language"));
            EXPECT_FALSE(Text(Each, L"Text").empty()) << Narrow(Of.first) << ' ' << Narrow(Of.second);
        }
        if (Told.size() > 2) Told.resize(2);
        EXPECT_EQ(Told, (Languages{L"ITA", L"ENG"})) << Narrow(Of.first) << ' ' << Narrow(Of.second);
        ++Seen[Of.first];
    };
    const auto Messages = [](const RegObject& Of) -> const std::vector<RegObject>& {
        return Elements(Of, L"Message");
    };
    for (const auto& [Key, Stored] : Objects) {
        const std::wstring& Clsid = Key.first;
        if (Clsid == L"WEBSERVER") {
            for (const wchar_t* const List : {L"Constants", L"Messages"})
                for (const RegObject& Each : Messages(*Stored.Child(List))) Look(Key, Messages(Each));
            continue;
        }
        if (Clsid != L"QUERY" && Clsid != L"BROWSE" && Clsid != L"MENU" && Clsid != L"HELP" &&
            Clsid != L"SETOPS")
            continue;
        for (const RegObject& Each : Elements(Stored, L"Commands")) Look(Key, Elements(Each, L"ToolTips"));
        Look(Key, Elements(Stored, L"Titles"));
        if (Clsid != L"QUERY") continue;
        for (const RegObject& Field : Elements(Stored, L"Fields")) {
            Look(Key, Elements(Field, L"Captions"));
            const std::vector<RegObject>& Values = Messages(*Field.Child(L"Defaults"));
            for (const RegObject& Each : Values) Look(Key, Messages(Each));
            EXPECT_LE(static_cast<std::size_t>(Number(Field, L"Selected")), Values.size())
                << Narrow(Field.Name);
        }
    }
    EXPECT_EQ(Seen.size(), 6U);
}

TEST_F(DemoContent, TheListsOfQueriesBrowsesAndServersHoldSomething) {
    struct Row {
        std::wstring_view Clsid;
        std::wstring_view Name;
        std::vector<std::wstring_view> Lists;
    };
    for (const Row& Each :
         {Row{L"QUERY", L"RICERCA", {L"Commands", L"Fields", L"Html", L"Message", L"Popups", L"Titles"}},
          Row{L"QUERY",
              L"AVANZATA",
              {L"Commands", L"Fields", L"Html", L"HtmlRes", L"HtmlTempl", L"HtmlResTempl", L"Message",
               L"OptionMsg1", L"OptionMsg2", L"Popups", L"Titles"}},
          Row{L"BROWSE",
              L"AUTORI",
              {L"Commands", L"Filters", L"FiltMessages", L"FiltTitles", L"Html", L"Popups", L"Titles"}},
          Row{L"BROWSE",
              L"TITOLI",
              {L"Commands", L"Filters", L"FiltMessages", L"FiltTitles", L"Html", L"Popups", L"Titles"}},
          Row{L"MENU", L"PRINCIPALE", {L"Commands", L"Html", L"Popups", L"Titles"}},
          Row{L"HELP", L"AIUTO", {L"Commands", L"Html", L"Popups", L"Titles"}},
          Row{L"SETOPS", L"INSIEMI", {L"Commands", L"Html", L"Popups", L"Titles"}},
          Row{L"WEBSERVER",
              L"OPAC",
              {L"Browse", L"Errors", L"History", L"Home", L"Loan", L"LoanReport", L"Query", L"QueryResult",
               L"Record"}}})
        for (const std::wstring_view List : Each.Lists)
            EXPECT_FALSE(Elements(Object(Each.Clsid, Each.Name), List).empty())
                << Narrow(Each.Name) << ' ' << Narrow(List);
    EXPECT_EQ(Elements(Object(L"QUERY", L"RICERCA"), L"Fields").size(), 3U);
    EXPECT_EQ(Elements(Object(L"QUERY", L"AVANZATA"), L"Fields").size(), 7U);
}

TEST_F(DemoContent, MailGroupsOfStaffAndPublicDiffer) {
    EXPECT_EQ(Text(Object(L"MAIL", L"CENTRALE"), L"Path"), L"posta/centrale");
    for (const auto& [Group, MaySend, Size, Paths] :
         {std::tuple(L"PERSONALE", true, 51200, 3U), std::tuple(L"PUBBLICO", false, 1024, 1U)}) {
        const RegObject& Stored = Object(L"MAILGROUP", Group);
        EXPECT_EQ(*Stored.Child(L"Mail")->Value(L"SndEnabled"), RegValue(MaySend)) << Narrow(Group);
        EXPECT_EQ(Number(*Stored.Child(L"Parms"), L"Size"), Size) << Narrow(Group);
        EXPECT_EQ(Elements(Stored, L"Backups").size(), Paths) << Narrow(Group);
        for (const RegObject& Path : Elements(Stored, L"Backups")) {
            EXPECT_FALSE(Text(Path, L"Caption").empty()) << Narrow(Group);
            EXPECT_FALSE(Text(Path, L"Path").empty()) << Narrow(Group);
        }
        // Those who may be written to are members.
        std::wstringstream Users(Text(*Stored.Child(L"Mail"), L"Users"));
        for (std::wstring User; std::getline(Users, User, L';');)
            EXPECT_EQ(Objects.count(Name(L"MEMBER", User)), 1U) << Narrow(User);
    }
}

TEST_F(Demo, RefusesAFolderThatHoldsAnInstallation) {
    for (const std::string& Name : Whole) {
        const fs::path Folder = Here / ("con-" + Name);
        fs::create_directory(Folder);
        WriteFile(Folder / Name, "del bibliotecario");
        EXPECT_THROW(MakeDemo(Folder), DemoRefused) << Name;
        EXPECT_EQ(Names(Folder), std::set<std::string>{Name});
        EXPECT_EQ(ReadFile(Folder / Name), "del bibliotecario");
    }
    MakeDemo(Here / "due");
    const std::string Before = ReadFile(Here / "due" / kDemoStore);
    EXPECT_THROW(MakeDemo(Here / "due"), DemoRefused);
    EXPECT_EQ(ReadFile(Here / "due" / kDemoStore), Before);
}

TEST_F(Demo, GoesIntoAFolderThatHoldsOtherThings) {
    fs::create_directory(Here / "casa");
    WriteFile(Here / "casa" / "note.txt", "x");
    MakeDemo(Here / "casa" / "");
    std::set<std::string> Expected = Whole;
    Expected.insert("note.txt");
    EXPECT_EQ(Names(Here / "casa"), Expected);
}

TEST_F(Demo, MakesTheFoldersAbove) {
    MakeDemo(Here / "a" / "b" / "c");
    EXPECT_EQ(Names(Here / "a" / "b" / "c"), Whole);
    EXPECT_EQ(Names(Here / "a" / "b"), std::set<std::string>{"c"});
}

TEST_F(Demo, IsAsOpenAsAnyNewFolder) {
    fs::create_directory(Here / "altra");
    MakeDemo(Here / "demo");
    EXPECT_EQ(fs::status(Here / "demo").permissions(), fs::status(Here / "altra").permissions());
}

TEST_F(Demo, LeavesNothingWhereItCannotBeMade) {
    WriteFile(Here / "file", "x");
    EXPECT_THROW(MakeDemo(Here / "file"), fs::filesystem_error);
    EXPECT_THROW(MakeDemo(Here / "file" / "demo"), fs::filesystem_error);
    EXPECT_EQ(Names(Here), std::set<std::string>{"file"});
    EXPECT_EQ(ReadFile(Here / "file"), "x");
}

// A name too long to be put in place is found out last: what was built beside it goes again.
TEST_F(Demo, LeavesNothingWhereItCannotBePut) {
    EXPECT_THROW(MakeDemo(Here / "sopra" / std::string(300, 'x')), fs::filesystem_error);
    EXPECT_EQ(Names(Here), std::set<std::string>{});
}

}  // namespace
}  // namespace kv::host
