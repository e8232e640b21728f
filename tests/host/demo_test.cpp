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
         {L"CATALOGUE", L"FILTER", L"IMPORT", L"MEMBER", L"REPOSITORY", L"SORT"})
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
