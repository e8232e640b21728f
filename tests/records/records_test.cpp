// Every record of the system through the store and through the clipboard file, and what each begins with.
#include <gtest/gtest.h>

#include <filesystem>

#include "frame/vdbInclude.h"
#include "records/AliasRecord.h"
#include "records/ApplicationRecord.h"
#include "records/BrowseRecord.h"
#include "records/CatProcRecord.h"
#include "records/CatalogueRecord.h"
#include "records/CommandRecord.h"
#include "records/FieldRecord.h"
#include "records/FilterRecord.h"
#include "records/FontRecord.h"
#include "records/HelpRecord.h"
#include "records/HtmlRecord.h"
#include "records/ImportProcRecord.h"
#include "records/ImportRecord.h"
#include "records/LoanClientRecord.h"
#include "records/LoanMenuRecord.h"
#include "records/LoanRecord.h"
#include "records/MailGroupRecord.h"
#include "records/MailRecord.h"
#include "records/MaterRecord.h"
#include "records/MenuRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/QueryRecord.h"
#include "records/RepositoryRecord.h"
#include "records/RetrievalRecord.h"
#include "records/SetOpRecord.h"
#include "records/SortRecord.h"
#include "records/StemRecord.h"
#include "records/StopWordRecord.h"
#include "records/StringTableRecord.h"
#include "records/TableRecord.h"
#include "records/WebClientRecord.h"
#include "records/WebServerRecord.h"
#include "tests/frame/Told.h"
#include "tests/records/Filled.h"

namespace kv::test {
namespace {

template <class R>
class EveryRecord : public FrameTest {};

using Records =
    ::testing::Types<AliasRecord, ApplicationRecord, BrowseRecord, CatProcRecord, CatalogueRecord,
                     CommandRecord, FieldRecord, FilterRecord, FontRecord, HelpRecord, HtmlRecord,
                     ImportFieldRecord, ImportIndexRecord, ImportProcRecord, ImportRecord, LoanClientRecord,
                     LoanMenuRecord, LoanRecord, MailBackupRecord, MailGroupRecord, MailRecord, MaterRecord,
                     MenuRecord, MessageRecord, ParmItem, PopupRecord, QueryFieldRecord, QueryRecord,
                     RepositoryRecord, RetrievalRecord, SetOpRecord, SortRecord, StemRecord, StopWordRecord,
                     StringItemRecord, StringTableRecord, TableRecord, WebClientRecord, WebServerRecord>;
TYPED_TEST_SUITE(EveryRecord, Records);

TYPED_TEST(EveryRecord, ComesBackFromTheStore) {
    Filler Random(21);
    for (int Round = 0; Round < 50; ++Round) {
        const auto Record = Random.Record<TypeParam>();
        MemoryRegData Object(L"PROVA");
        ASSERT_TRUE(Succeeds(Record.Save(Object)));
        TypeParam Loaded = Random.Record<TypeParam>();
        ASSERT_TRUE(Succeeds(Loaded.Load(Object)));
        ASSERT_TRUE(Loaded == Record);
        MemoryRegData Again(L"PROVA");
        ASSERT_TRUE(Succeeds(Loaded.Save(Again)));
        ASSERT_TRUE(Again.Read() == Object.Read()) << "a load and a save change nothing";
    }
}

TYPED_TEST(EveryRecord, ComesBackFromTheClipboardFile) {
    Filler Random(22);
    for (int Round = 0; Round < 20; ++Round) {
        const auto Record = Random.Record<TypeParam>();
        std::wstring Path;
        ASSERT_TRUE(Succeeds(ClipboardStore(Record.SaveObject(), Path)));
        RegObject Content;
        std::wstring Name;
        ASSERT_TRUE(Succeeds(ClipboardLoad(Content, Name, Path, 1)));
        EXPECT_EQ(Name, Record.Name);
        MemoryRegData Object(L"PROVA", std::move(Content));
        TypeParam Loaded;
        ASSERT_TRUE(Succeeds(Loaded.Load(Object)));
        ASSERT_TRUE(Loaded == Record);
        ASSERT_TRUE(Loaded.SaveObject() == Record.SaveObject()) << "and is stored as it was";
    }
}

TYPED_TEST(EveryRecord, AnEmptyObjectGivesTheDefaults) {
    Filler Random(23);
    MemoryRegData Empty(L"PROVA");
    TypeParam Record = Random.Record<TypeParam>();
    ASSERT_TRUE(Succeeds(Record.Load(Empty)));
    EXPECT_TRUE(Record == TypeParam{});
    EXPECT_EQ(Record.Id, 0);
    EXPECT_EQ(Record.Name, L"");
    EXPECT_EQ(Record.Version, 0);
}

TYPED_TEST(EveryRecord, UnknownThingsAreKept) {
    RegObject Object;
    Object.SetValue(L"ValoreFuturo", std::wstring(L"x"));
    Object.Children.emplace_back().Name = L"FiglioFuturo";
    Object.String4 = L"s4";
    MemoryRegData Data(L"PROVA", Object);
    TypeParam Record;
    ASSERT_TRUE(Succeeds(Record.Load(Data)));
    ASSERT_TRUE(Succeeds(Record.Save(Data)));
    ASSERT_NE(Data.Read().Value(L"ValoreFuturo"), nullptr);
    EXPECT_NE(Data.Read().Child(L"FiglioFuturo"), nullptr);
    EXPECT_EQ(Data.Read().String4, L"s4");
}

TYPED_TEST(EveryRecord, AScratchTakesTheIdentityAndACommitGivesTheParametersBack) {
    Filler Random(24);
    for (int Round = 0; Round < 20; ++Round) {
        const auto Record = Random.Record<TypeParam>();
        TypeParam Scratch;
        Record.CopyTo(Scratch, false, false, true);
        EXPECT_EQ(Scratch.Id, Record.Id);
        EXPECT_EQ(Scratch.Name, Record.Name);
        EXPECT_EQ(Scratch.Desc, Record.Desc);
        EXPECT_EQ(Scratch.Version, Record.Version);
        TypeParam Committed = Record;
        std::move(Scratch).CopyTo(Committed, true, false, false);
        TypeParam Whole;
        Record.CopyTo(Whole, true, true, false);
        EXPECT_TRUE(Whole == Record);
        Record.CopyTo(Committed, true, false, false);
        EXPECT_TRUE(Committed == Record) << "its lists had stayed";
    }
}

TYPED_TEST(EveryRecord, TheIdentityAnswersToItsNames) {
    TypeParam Record;
    Record.Id = 17;
    Record.Name = L"Nome";
    Record.Version = 3;
    EXPECT_TRUE(Record.ByName(L"Id") == RegValue(std::int32_t{17}));
    EXPECT_TRUE(Record.ByName(L"Name") == RegValue(std::wstring(L"Nome")));
    EXPECT_TRUE(Record.ByName(L"Version") == RegValue(std::int32_t{3}));
}

TYPED_TEST(EveryRecord, PropertyNamesAreUniqueAndNotThoseOfTheIdentity) {
    std::vector<std::wstring_view> Names{L"Id", L"Name", L"Desc", L"Version"};
    TypeParam::Properties([&](const auto&... P) { (Names.push_back(P.Name), ...); });
    for (std::size_t A = 0; A < Names.size(); ++A)
        for (std::size_t B = A + 1; B < Names.size(); ++B) EXPECT_FALSE(Names[A] == Names[B]);
}

TYPED_TEST(EveryRecord, FailuresAreToldUnderTheRecordsName) {
    class Broken final : public RegData {
      public:
        std::wstring Name() const override { return {}; }
        std::wstring Clsid() const override { return {}; }
        std::wstring UserList() const override { return {}; }
        void SetSaving(bool) override {}
        const RegObject& Read() override { Raise(L"Illeggibile."); }
        void Write(RegObject) override { Raise(L"Non scrivibile."); }
    } Object;
    TypeParam Record;
    const std::wstring Class(TypeParam::kClass);
    EXPECT_TRUE(FailsWith(Record.Load(Object),
                          {.Number = 20000, .Source = Class + L".Load", .Description = L"Illeggibile."}));
    EXPECT_TRUE(FailsWith(Record.Save(Object),
                          {.Number = 20000, .Source = Class + L".Save", .Description = L"Non scrivibile."}));
}

// What a sort definition holds as text goes through the clipboard file with all its 256 characters.
TEST(SortRecordTable, KeepsCharactersOfCodeZero) {
    const TestPlatform Platform;
    SortRecord Record;
    for (int Code = 0; Code < 256; ++Code)
        Record.Table.push_back(static_cast<wchar_t>(DefaultSortWeight(static_cast<std::uint8_t>(Code))));
    std::wstring Path;
    ASSERT_TRUE(Succeeds(ClipboardStore(Record.SaveObject(), Path)));
    RegObject Content;
    std::wstring Name;
    ASSERT_TRUE(Succeeds(ClipboardLoad(Content, Name, Path, 1)));
    MemoryRegData Object(L"SORT", std::move(Content));
    SortRecord Loaded;
    ASSERT_TRUE(Succeeds(Loaded.Load(Object)));
    EXPECT_TRUE(Loaded.Table == Record.Table);
    EXPECT_EQ(Loaded.Table.size(), 256U);
}

}  // namespace
}  // namespace kv::test
