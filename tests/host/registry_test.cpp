#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <latch>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "frame/Failure.h"
#include "host/KvRegSvr.h"
#include "host/ObjectJson.h"
#include "host/Text.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::wstring kHalfPair(1, static_cast<wchar_t>(0xD800));

std::string Bytes(const fs::path& File) {
    std::ifstream In(File, std::ios::binary);
    return {std::istreambuf_iterator<char>(In), {}};
}

void PutBytes(const fs::path& File, std::string_view Content) {
    std::ofstream Out(File, std::ios::binary | std::ios::trunc);
    Out.write(Content.data(), static_cast<std::streamsize>(Content.size()));
    ASSERT_TRUE(Out.flush().good());
}

/// Another program at the same file.
class Other {
  public:
    explicit Other(const fs::path& File) {
        EXPECT_EQ(sqlite3_open(File.c_str(), &Base_), SQLITE_OK);
        sqlite3_busy_timeout(Base_, 5000);
    }
    Other(const Other&) = delete;
    Other& operator=(const Other&) = delete;
    ~Other() { sqlite3_close(Base_); }

    /// Runs SQL; the first column of the first row, as text.
    std::string Run(const std::string& Sql) {
        std::string First;
        const auto Keep = [](void* Into, int, char** Columns, char**) {
            std::string& Text = *static_cast<std::string*>(Into);
            if (Text.empty() && Columns[0]) Text = Columns[0];
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(Base_, Sql.c_str(), Keep, &First, nullptr), SQLITE_OK)
            << Sql << ": " << sqlite3_errmsg(Base_);
        return First;
    }

  private:
    sqlite3* Base_ = nullptr;
};

/// SQLite's own way to the disk for as long as this lives, but that nothing waits for the disk and that
/// operations can be made to fail.
class TestDisk {
  public:
    TestDisk() {
        Original_ = sqlite3_vfs_find(nullptr);
        Layer_ = *Original_;
        Layer_.zName = "test";
        Layer_.pNext = nullptr;
        Layer_.xOpen = &Open;
        Layer_.xDelete = [](sqlite3_vfs*, const char* Name, int Sync) {
            return Fails(Sync ? 'D' : 'd') ? SQLITE_IOERR_DELETE : Original_->xDelete(Original_, Name, 0);
        };
        EXPECT_EQ(sqlite3_vfs_register(&Layer_, 1), SQLITE_OK);
        Heal();
    }
    TestDisk(const TestDisk&) = delete;
    TestDisk& operator=(const TestDisk&) = delete;
    ~TestDisk() {
        sqlite3_vfs_unregister(&Layer_);
        sqlite3_vfs_register(Original_, 1);
    }

    /// The operation of that number, counted from 1 and from now on, fails, and all after it when `ForGood`.
    static void FailAt(std::size_t Operation, bool ForGood, int WriteCode) {
        Done_.clear();
        Failing_ = Operation;
        ForGood_ = ForGood;
        WriteCode_ = WriteCode;
    }
    static void Heal() { FailAt(0, false, 0); }
    /// In the operation of that number the program dies with kDied, a write half done.
    static void DieAt(std::size_t Operation) {
        Heal();
        DyingAt_ = Operation;
    }
    static constexpr int kDied = 99;
    /// What was done since FailAt or Heal, a letter each: r write to the registry, R synchronise it, j and J
    /// the same for its journal, t cut either, d delete the journal, D the same with its folder synchronised.
    static const std::string& Done() { return Done_; }

  private:
    static bool Fails(char Operation) {
        Done_.push_back(Operation);
        if (Done_.size() == DyingAt_) _exit(kDied);
        return Failing_ > 0 && (Done_.size() == Failing_ || (ForGood_ && Done_.size() > Failing_));
    }
    template <char Write, char Sync>
    static const sqlite3_io_methods* Layered(const sqlite3_io_methods* Plain) {
        static const sqlite3_io_methods* Below = nullptr;
        static sqlite3_io_methods Methods;
        Below = Plain;
        Methods = *Plain;
        Methods.xWrite = [](sqlite3_file* To, const void* Data, int Amount, sqlite3_int64 At) {
            if (Done_.size() + 1 == DyingAt_) Below->xWrite(To, Data, Amount / 2, At);
            return Fails(Write) ? WriteCode_ : Below->xWrite(To, Data, Amount, At);
        };
        Methods.xSync = [](sqlite3_file*, int) { return Fails(Sync) ? SQLITE_IOERR_FSYNC : SQLITE_OK; };
        Methods.xTruncate = [](sqlite3_file* To, sqlite3_int64 Size) {
            return Fails('t') ? SQLITE_IOERR_TRUNCATE : Below->xTruncate(To, Size);
        };
        return &Methods;
    }
    static int Open(sqlite3_vfs*, const char* Name, sqlite3_file* File, int Flags, int* OutFlags) {
        const int Code = Original_->xOpen(Original_, Name, File, Flags, OutFlags);
        if (Code != SQLITE_OK || !File->pMethods) return Code;
        const bool IsRegistry = (Flags & SQLITE_OPEN_MAIN_DB) != 0;
        File->pMethods = IsRegistry ? Layered<'r', 'R'>(File->pMethods) : Layered<'j', 'J'>(File->pMethods);
        return SQLITE_OK;
    }

    static inline sqlite3_vfs* Original_ = nullptr;
    static inline std::string Done_;
    static inline std::size_t Failing_ = 0;
    static inline std::size_t DyingAt_ = 0;
    static inline bool ForGood_ = false;
    static inline int WriteCode_ = 0;
    sqlite3_vfs Layer_;
};

/// Whether a call raises what is told.
template <class Body>
::testing::AssertionResult Raises(Body&& Run, std::int32_t Number, const std::wstring& Text) {
    try {
        Run();
    } catch (const Failure& Caught) {
        const KvError& Error = Caught.Error();
        if (Error.Number == Number && Error.Description == Text) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << Error.Number << ": " << ToUtf8Lossy(Error.Description);
    } catch (const std::exception& Caught) {
        return ::testing::AssertionFailure() << "another exception: " << Caught.what();
    }
    return ::testing::AssertionFailure() << "nothing is raised";
}

/// Whether a call throws the StoreError with this sentence.
template <class Body>
::testing::AssertionResult Tells(Body&& Run, const std::wstring& Sentence) {
    try {
        Run();
    } catch (const StoreError& Caught) {
        if (Caught.Text() == Sentence && Caught.what() == ToUtf8Lossy(Sentence))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << Caught.what();
    } catch (const std::exception& Caught) {
        return ::testing::AssertionFailure() << "another exception: " << Caught.what();
    }
    return ::testing::AssertionFailure() << "nothing is thrown";
}

RegObject Sample(const std::wstring& Name, std::int32_t Mark = 1) {
    RegObject Made;
    Made.Name = Name;
    Made.Desc = L"descrizione \u00E8 " + std::to_wstring(Mark);
    Made.Version = 10 + Mark;
    Made.UserList = L"ROSSI";
    Made.Number2 = Mark;
    Made.String5 = L"cinque";
    Made.Values = {{L"Path", L"C:\\DATI\\" + std::to_wstring(Mark)}, {L"ReadOnly", true}, {L"Mark", Mark}};
    Made.Children.resize(2);
    Made.Children[0].Name = L"Fields";
    Made.Children[0].Children.resize(3);
    Made.Children[1].Name = L"Titles";
    return Made;
}

class RegistryTest : public ::testing::Test {
  protected:
    RegistryTest() {
        std::string Template = (fs::temp_directory_path() / "kvregistryXXXXXX").string();
        EXPECT_NE(mkdtemp(Template.data()), nullptr);
        Folder_ = Template;
        File_ = Folder_ / "registro.kvr";
    }
    ~RegistryTest() override {
        std::error_code Ignored;
        fs::remove_all(Folder_, Ignored);
    }

    std::wstring Sentence(const std::wstring& Before, const std::wstring& After) const {
        return Before + File_.wstring() + After;
    }
    std::wstring Damaged() const { return Sentence(L"Il file di registro ", L" è danneggiato."); }
    std::wstring NoRegistry() const { return Sentence(L"Il file ", L" non è un registro, o è danneggiato."); }
    std::wstring Locked() const {
        return Sentence(L"Il file di registro ", L" è bloccato da un altro programma.");
    }
    std::wstring ReadOnly() const { return Sentence(L"Il file di registro ", L" è di sola lettura."); }

    /// A registry with an object saved once: FILTER/PROVA, revision 2.
    void MakeSample() {
        KvRegSvr Registry(File_);
        Registry.Create(L"FILTER", L"PROVA", L"");
        SaveOver(Registry, Sample(L"PROVA"));
    }
    static void SaveOver(KvRegSvr& Registry, const RegObject& Content) {
        const auto Object = Registry.Open(L"FILTER", L"PROVA");
        Object->SetSaving(true);
        Object->Write(Content);
    }

    fs::path Folder_;
    fs::path File_;
};

// Objects.

TEST_F(RegistryTest, IsMadeWhenItIsMissing) {
    KvRegSvr Registry(File_);
    EXPECT_TRUE(fs::is_regular_file(File_));
    EXPECT_TRUE(Registry.List().empty());
    Other Look(File_);
    EXPECT_EQ(Look.Run("PRAGMA user_version"), "1");
    EXPECT_NE(Look.Run("PRAGMA application_id"), "0");
    EXPECT_EQ(Look.Run("PRAGMA journal_mode"), "delete");
}

TEST_F(RegistryTest, AnEmptyFileBecomesARegistry) {
    PutBytes(File_, "");
    KvRegSvr(File_).Create(L"FILTER", L"PROVA");
    EXPECT_EQ(KvRegSvr(File_).List().size(), 1U);
}

TEST_F(RegistryTest, OddFileNamesAreFileNames) {
    const fs::path Before = fs::current_path();
    fs::current_path(Folder_);
    for (const char* Name : {":memory:", "file:x?mode=memory", "perché no.kvr", "a%20b#c", "%%"}) {
        KvRegSvr(Name).Create(L"FILTER", L"PROVA");
        EXPECT_EQ(KvRegSvr(Name).List().size(), 1U) << Name;
        EXPECT_TRUE(fs::is_regular_file(Folder_ / Name)) << Name;
    }
    fs::current_path(Before);
}

TEST_F(RegistryTest, ANewObjectIsEmpty) {
    KvRegSvr Registry(File_);
    const std::int32_t Id = Registry.Create(L"FILTER", L"PROVA", L"Un filtro");
    EXPECT_GT(Id, 0);
    RegObject Wanted;
    Wanted.Name = L"PROVA";
    Wanted.Desc = L"Un filtro";
    Wanted.Version = 1;
    Wanted.Id = Id;
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"PROVA"), Wanted);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    EXPECT_EQ(Object->Read(), Wanted);
    EXPECT_EQ(Object->Revision(), 1);
    EXPECT_EQ(Object->Name(), L"PROVA");
    EXPECT_EQ(Object->Clsid(), L"FILTER");
    EXPECT_EQ(Object->UserList(), L"");
    const RegistryEntry Entry{L"FILTER", L"PROVA", Id, L"Un filtro", 1, L"", 1};
    EXPECT_EQ(Registry.List(), std::vector{Entry});
    EXPECT_EQ(Other(File_).Run("SELECT Content FROM objects"), ToJsonText(Wanted));
}

TEST_F(RegistryTest, TheListIsOrderedByClassAndName) {
    KvRegSvr Registry(File_);
    const std::vector<std::pair<std::wstring, std::wstring>> kOrdered = {
        {L"FILTER", L"A"},      {L"FILTER", L"B"},      {L"FILTER", L"a"},
        {L"FILTER", L"\u00E0"}, {L"FILTER", L"\uFFFD"}, {L"FILTER", L"\U0001F600"},
        {L"SORT", L"A"},        {L"SORT", L"A B"},      {L"filter", L"A"},
    };
    std::vector<std::pair<std::wstring, std::wstring>> Mixed = kOrdered;
    std::shuffle(Mixed.begin(), Mixed.end(), std::mt19937(5));
    for (const auto& [Clsid, Name] : Mixed) Registry.Create(Clsid, Name);

    std::vector<std::pair<std::wstring, std::wstring>> Listed;
    for (const RegistryEntry& Entry : Registry.List()) Listed.emplace_back(Entry.Clsid, Entry.Name);
    EXPECT_EQ(Listed, kOrdered);
    EXPECT_EQ(Registry.List(L"FILTER").size(), 6U);
    EXPECT_EQ(Registry.List(L"SORT").size(), 2U);
    EXPECT_EQ(Registry.List(L"SORT")[1].Name, L"A B");
    EXPECT_EQ(Registry.List(std::optional<std::wstring>(L"filter")).size(), 1U);
    EXPECT_TRUE(Registry.List(L"Filter").empty());
    EXPECT_TRUE(Registry.List(L"").empty());
    EXPECT_TRUE(Registry.List(kHalfPair).empty());
}

TEST_F(RegistryTest, ANameStandsOnceInAClass) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA", L"primo");
    EXPECT_TRUE(
        Raises([&] { Registry.Create(L"FILTER", L"PROVA", L"altro"); }, 20015, L"L'istanza esiste già."));
    EXPECT_EQ(Registry.List().size(), 1U);
    EXPECT_EQ(Registry.List()[0].Desc, L"primo");
    Registry.Create(L"SORT", L"PROVA");
    Registry.Create(L"FILTER", L"Prova");
    Registry.Create(L"FILTER", L"PROVA ");
    Registry.Create(L"FILTER", std::wstring(L"PROVA\0", 6));
    EXPECT_EQ(Registry.List().size(), 5U);
    EXPECT_EQ(Registry.ReadStored(L"FILTER", std::wstring(L"PROVA\0", 6)).Name.size(), 6U);
}

TEST_F(RegistryTest, WrongParametersMakeNothing) {
    KvRegSvr Registry(File_);
    EXPECT_TRUE(Raises([&] { Registry.Create(L"FILTER", L""); }, 20017, L"Parametri errati."));
    EXPECT_TRUE(
        Raises([&] { Registry.Create(L"FILTER", kHalfPair); }, 20000, L"Testo non valido: " + kHalfPair));
    EXPECT_TRUE(
        Raises([&] { Registry.Create(kHalfPair, L"PROVA"); }, 20000, L"Testo non valido: " + kHalfPair));
    EXPECT_TRUE(Raises([&] { Registry.Create(L"FILTER", L"PROVA", kHalfPair); }, 20000,
                       L"Testo non valido: " + kHalfPair));
    EXPECT_TRUE(Registry.List().empty());
}

TEST_F(RegistryTest, AnIdIsNeverUsedAgain) {
    KvRegSvr Registry(File_);
    std::set<std::int32_t> Ids;
    for (int I = 0; I < 5; ++I) {
        EXPECT_TRUE(Ids.insert(Registry.Create(L"FILTER", L"PROVA")).second);
        Registry.Delete(L"FILTER", L"PROVA");
    }
}

TEST_F(RegistryTest, IdsEndWith32Bits) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"A");
    Other(File_).Run("UPDATE sqlite_sequence SET seq = 2147483646");
    EXPECT_EQ(Registry.Create(L"FILTER", L"B"), 2147483647);
    EXPECT_TRUE(Tells([&] { Registry.Create(L"FILTER", L"C"); },
                      Sentence(L"Il file di registro ", L" non ammette altri oggetti.")));
    EXPECT_EQ(Registry.List().size(), 2U);
}

TEST_F(RegistryTest, UnknownObjectsAreTold) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA");
    const std::wstring Text = L"Istanza sconosciuta: prova.";
    EXPECT_TRUE(Raises([&] { Registry.Open(L"FILTER", L"prova"); }, 20016, Text));
    EXPECT_TRUE(Raises([&] { Registry.ReadStored(L"FILTER", L"prova"); }, 20016, Text));
    EXPECT_TRUE(Raises([&] { Registry.Delete(L"FILTER", L"prova"); }, 20016, Text));
    EXPECT_TRUE(Raises([&] { Registry.Delete(L"SORT", L"PROVA"); }, 20016, L"Istanza sconosciuta: PROVA."));
    EXPECT_TRUE(Raises([&] { Registry.Open(L"FILTER", L""); }, 20016, L"Istanza sconosciuta: ."));
    const std::wstring Odd = L"Istanza sconosciuta: " + kHalfPair + L".";
    EXPECT_TRUE(Raises([&] { Registry.Open(L"FILTER", kHalfPair); }, 20016, Odd));
    EXPECT_TRUE(Raises([&] { Registry.Delete(L"FILTER", kHalfPair); }, 20016, Odd));
    EXPECT_EQ(Registry.List().size(), 1U);
    Registry.Delete(L"FILTER", L"PROVA");
    EXPECT_TRUE(Registry.List().empty());
}

// Saves.

TEST_F(RegistryTest, ASaveStoresContentAndIdentity) {
    KvRegSvr Registry(File_);
    const std::int32_t Id = Registry.Create(L"FILTER", L"PROVA");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    RegObject Wanted = Sample(L"PROVA");
    Wanted.Id = 4711;
    Object->SetSaving(true);
    Object->Write(Wanted);
    Wanted.Id = Id;
    EXPECT_EQ(Object->Read(), Wanted) << "the id is the registry's";
    EXPECT_EQ(Object->Revision(), 2);
    EXPECT_EQ(Object->UserList(), L"ROSSI");
    KvRegSvr Second(File_);
    EXPECT_EQ(Second.ReadStored(L"FILTER", L"PROVA"), Wanted);
    EXPECT_EQ(Second.Open(L"FILTER", L"PROVA")->Revision(), 2);
    const RegistryEntry Entry{L"FILTER", L"PROVA", Id, Wanted.Desc, Wanted.Version, L"ROSSI", 2};
    EXPECT_EQ(Second.List(), std::vector{Entry});
    EXPECT_EQ(Other(File_).Run("SELECT Content FROM objects"), ToJsonText(Wanted));

    Object->Write(Sample(L"PROVA", 2));
    Object->Write(Sample(L"PROVA", 3));
    EXPECT_EQ(Object->Revision(), 4);
    EXPECT_EQ(Second.List()[0].Revision, 4);
    EXPECT_EQ(Second.ReadStored(L"FILTER", L"PROVA").Number2, 3);
}

TEST_F(RegistryTest, WithoutSavingAWriteStaysInMemory) {
    KvRegSvr Registry(File_);
    const std::int32_t Id = Registry.Create(L"FILTER", L"PROVA");
    const RegObject Before = Registry.ReadStored(L"FILTER", L"PROVA");
    const std::string File = Bytes(File_);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    RegObject Wanted = Sample(L"ALTRA");
    Object->Write(Wanted);
    Wanted.Id = Id;
    EXPECT_EQ(Object->Read(), Wanted);
    EXPECT_EQ(Object->Name(), L"ALTRA");
    EXPECT_EQ(Object->Revision(), 1);
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"PROVA"), Before);
    EXPECT_TRUE(Bytes(File_) == File);

    Object->SetSaving(true);
    Object->Write(Wanted);
    Object->SetSaving(false);
    Object->Write(Before);
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"ALTRA"), Wanted);
}

TEST_F(RegistryTest, PutContentKeepsTheIdentity) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA", L"mia");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    RegObject Wanted = Sample(L"ALTRA");
    Object->SetSaving(true);
    Object->PutContent(Wanted);
    const RegObject Own = Registry.ReadStored(L"FILTER", L"PROVA");
    EXPECT_TRUE(Own.Values.empty()) << "nothing is stored";
    Wanted.Name = Own.Name;
    Wanted.Id = Own.Id;
    Wanted.Desc = Own.Desc;
    Wanted.Version = Own.Version;
    Wanted.UserList = Own.UserList;
    EXPECT_EQ(Object->Read(), Wanted);
    EXPECT_EQ(Object->Revision(), 1);
}

TEST_F(RegistryTest, AnObjectOutlivesTheServer) {
    std::shared_ptr<RegistryObject> Object;
    {
        KvRegSvr Registry(File_);
        Registry.Create(L"FILTER", L"PROVA");
        Object = Registry.Open(L"FILTER", L"PROVA");
    }
    Object->SetSaving(true);
    Object->Write(Sample(L"PROVA"));
    EXPECT_EQ(KvRegSvr(File_).List()[0].Revision, 2);
}

/// A save that is refused: neither the file nor the object in memory changes.
template <class Check>
void ExpectUnchanged(const fs::path& File, RegistryObject& Object, Check&& Refused) {
    const std::string Stored = Bytes(File);
    const RegObject Content = Object.Read();
    const std::int64_t Revision = Object.Revision();
    Refused();
    EXPECT_EQ(Object.Read(), Content);
    EXPECT_EQ(Object.Revision(), Revision);
    EXPECT_TRUE(Bytes(File) == Stored);
}

TEST_F(RegistryTest, ASaveOverANewerRevisionIsRefused) {
    KvRegSvr First(File_), Second(File_);
    First.Create(L"FILTER", L"PROVA");
    const auto Mine = First.Open(L"FILTER", L"PROVA");
    SaveOver(Second, Sample(L"PROVA", 2));
    Mine->SetSaving(true);
    const std::wstring Text =
        L"L'oggetto FILTER/PROVA è stato modificato da un altro programma dopo l'apertura e non è stato "
        L"salvato: esportare le proprie modifiche o riaprire l'oggetto.";
    ExpectUnchanged(File_, *Mine, [&] {
        EXPECT_TRUE(Raises([&] { Mine->Write(Sample(L"PROVA", 1)); }, 20000, Text));
        EXPECT_TRUE(Raises([&] { Mine->Write(Sample(L"NUOVA", 1)); }, 20000, Text));
    });
    EXPECT_EQ(First.ReadStored(L"FILTER", L"PROVA").Number2, 2);

    const auto Again = First.Open(L"FILTER", L"PROVA");
    Again->SetSaving(true);
    Again->Write(Sample(L"PROVA", 3));
    EXPECT_EQ(Again->Revision(), 3);
    const auto Two = First.Open(L"FILTER", L"PROVA");
    Again->Write(Sample(L"PROVA", 4));
    Two->SetSaving(true);
    ExpectUnchanged(File_, *Two, [&] {
        EXPECT_TRUE(Raises([&] { Two->Write(Sample(L"PROVA", 1)); }, 20000, Text)) << "on one server too";
    });
}

TEST_F(RegistryTest, ASaveOfADeletedObjectIsRefused) {
    KvRegSvr First(File_), Second(File_);
    First.Create(L"FILTER", L"PROVA");
    const auto Mine = First.Open(L"FILTER", L"PROVA");
    Mine->SetSaving(true);
    const std::wstring Text =
        L"L'oggetto FILTER/PROVA è stato eliminato da un altro programma dopo l'apertura e non è stato "
        L"salvato: esportare le proprie modifiche per non perderle.";
    Second.Delete(L"FILTER", L"PROVA");
    ExpectUnchanged(File_, *Mine,
                    [&] { EXPECT_TRUE(Raises([&] { Mine->Write(Sample(L"PROVA")); }, 20000, Text)); });
    Second.Create(L"FILTER", L"PROVA");
    ExpectUnchanged(File_, *Mine, [&] {
        EXPECT_TRUE(Raises([&] { Mine->Write(Sample(L"PROVA")); }, 20000, Text)) << "that is another object";
    });
}

TEST_F(RegistryTest, TheStoredStateCanBeTakenOverOrOutranked) {
    KvRegSvr First(File_), Second(File_);
    First.Create(L"FILTER", L"PROVA");
    const auto Mine = First.Open(L"FILTER", L"PROVA");
    const auto Yours = First.Open(L"FILTER", L"PROVA");
    const auto Theirs = Second.Open(L"FILTER", L"PROVA");
    Theirs->SetSaving(true);
    Theirs->Write(Sample(L"ALTRA", 2));

    const auto State = Mine->Stored();
    ASSERT_TRUE(State);
    EXPECT_EQ(State->Revision, 2);
    EXPECT_EQ(State->Content.Name, L"ALTRA") << "found under the name that it has now";
    EXPECT_EQ(Mine->Revision(), 1) << "looking changes nothing";

    Mine->TakeOver(*State);
    EXPECT_EQ(Mine->Revision(), 2);
    EXPECT_EQ(Mine->Read(), State->Content);
    Mine->SetSaving(true);
    Mine->Write(Sample(L"ALTRA", 3));
    EXPECT_EQ(First.ReadStored(L"FILTER", L"ALTRA").Number2, 3);

    Yours->PutContent(Sample(L"PROVA", 4));
    const auto Newest = Yours->Stored();
    ASSERT_TRUE(Newest);
    Yours->Outrank(*Newest);
    EXPECT_EQ(Yours->Read().Number2, 4) << "what is in memory stays";
    EXPECT_EQ(Yours->Name(), L"PROVA");
    Yours->SetSaving(true);
    Yours->Write(Sample(L"PROVA", 4));
    EXPECT_EQ(Second.ReadStored(L"FILTER", L"PROVA").Number2, 4);
    EXPECT_EQ(Yours->Revision(), 4);

    Second.Delete(L"FILTER", L"PROVA");
    EXPECT_FALSE(Yours->Stored());
}

TEST_F(RegistryTest, ASaveRenamesTheObject) {
    KvRegSvr Registry(File_);
    const std::int32_t Id = Registry.Create(L"FILTER", L"PROVA");
    Registry.Create(L"SORT", L"NUOVA");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    Object->Write(Sample(L"NUOVA"));
    EXPECT_EQ(Object->Name(), L"NUOVA");
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"NUOVA").Id, Id);
    EXPECT_TRUE(Raises([&] { Registry.Open(L"FILTER", L"PROVA"); }, 20016, L"Istanza sconosciuta: PROVA."));
    Registry.Create(L"FILTER", L"PROVA");
    Object->Write(Sample(L"Nuova"));
    Object->Write(Sample(L"NUOVA"));
    EXPECT_EQ(Object->Revision(), 4);
    EXPECT_EQ(Registry.List().size(), 3U);
}

TEST_F(RegistryTest, ARenameToATakenNameIsRefused) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA");
    Registry.Create(L"FILTER", L"PRESA");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    ExpectUnchanged(File_, *Object, [&] {
        EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"PRESA")); }, 20015, L"L'istanza esiste già."));
        EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"")); }, 20017, L"Parametri errati."));
    });
    Object->Write(Sample(L"PROVA"));
    EXPECT_EQ(Object->Revision(), 2) << "the refused saves were none";
}

TEST_F(RegistryTest, WhatCannotBeWrittenIsRefused) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    RegObject Bad = Sample(L"PROVA");
    Bad.Values.push_back({L"Url", kHalfPair});
    ExpectUnchanged(File_, *Object, [&] {
        EXPECT_TRUE(Raises([&] { Object->Write(Bad); }, 20000, L"Testo non valido nell'oggetto PROVA: Url."));
        Bad = Sample(L"PROVA");
        Bad.UserList = kHalfPair;
        EXPECT_TRUE(
            Raises([&] { Object->Write(Bad); }, 20000, L"Testo non valido nell'oggetto PROVA: UserList."));
        Bad = Sample(L"PROVA");
        RegObject* Deepest = &Bad;
        for (int I = 0; I < 64; ++I) Deepest = &Deepest->Children.emplace_back();
        EXPECT_TRUE(
            Raises([&] { Object->Write(Bad); }, 20000, L"Dati errati nell'oggetto PROVA: troppi livelli."));
    });
}

TEST_F(RegistryTest, ProgramsWorkOnOneFileAtOnce) {
    constexpr int kPrograms = 4;
    constexpr int kSaves = 15;
    std::atomic<int> Made = 0, Taken = 0, Conflicts = 0;
    const auto Work = [&](const std::wstring& Own) {
        KvRegSvr Registry(File_, 30s);  // one of them makes the file
        try {
            Registry.Create(L"FILTER", L"PROVA");
            ++Made;
        } catch (const Failure& Caught) {
            if (Caught.Error().Number == 20015) ++Taken;
        }
        Registry.Create(L"FILTER", Own);
        const auto Object = Registry.Open(L"FILTER", Own);
        Object->SetSaving(true);
        for (int I = 0; I < kSaves; ++I) {
            Object->Write(Sample(Own, I));
            try {
                SaveOver(Registry, Sample(L"PROVA", I));
            } catch (const Failure& Caught) {
                EXPECT_NE(Caught.Error().Description, Locked());
                ++Conflicts;
            }
        }
    };
    std::vector<std::thread> Programs;
    for (int Program = 0; Program < kPrograms; ++Program)
        Programs.emplace_back([&, Program] {
            try {
                Work(L"P" + std::to_wstring(Program));
            } catch (const std::exception& Caught) {
                ADD_FAILURE() << Caught.what();
            }
        });
    for (std::thread& Program : Programs) Program.join();
    EXPECT_EQ(Made, 1);
    EXPECT_EQ(Taken, kPrograms - 1);
    const std::vector<RegistryEntry> All = KvRegSvr(File_).List();
    ASSERT_EQ(All.size(), 1U + kPrograms);
    for (int Program = 0; Program < kPrograms; ++Program)
        EXPECT_EQ(All[static_cast<std::size_t>(Program)].Revision, 1 + kSaves);
    EXPECT_EQ(All.back().Revision + Conflicts, 1 + kPrograms * kSaves) << "no save is lost unseen";
    EXPECT_EQ(Other(File_).Run("PRAGMA integrity_check"), "ok");
}

TEST_F(RegistryTest, ProgramsThatStartTogetherMakeOneRegistry) {
    constexpr std::size_t kPrograms = 4;
    for (int Round = 0; Round < 20; ++Round) {
        fs::remove(File_);
        std::latch Start(kPrograms);
        std::vector<std::thread> Programs;
        for (std::size_t Program = 0; Program < kPrograms; ++Program)
            Programs.emplace_back([&, Program] {
                Start.arrive_and_wait();
                try {
                    KvRegSvr(File_, 30s).Create(L"FILTER", L"P" + std::to_wstring(Program));
                } catch (const std::exception& Caught) {
                    ADD_FAILURE() << Caught.what();
                }
            });
        for (std::thread& Program : Programs) Program.join();
        EXPECT_EQ(KvRegSvr(File_).List().size(), kPrograms);
    }
}

// The file.

TEST_F(RegistryTest, IsOneFileAtRest) {
    KvRegSvr Registry(File_);
    Registry.Create(L"FILTER", L"PROVA");
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    Object->Write(Sample(L"PROVA"));
    EXPECT_EQ(std::distance(fs::directory_iterator(Folder_), fs::directory_iterator()), 1);
    Other(File_).Run("BEGIN EXCLUSIVE; COMMIT");
}

TEST_F(RegistryTest, AFileWithAWriteAheadLogIsBroughtBackToOneFile) {
    MakeSample();
    EXPECT_EQ(Other(File_).Run("PRAGMA journal_mode = WAL"), "wal");
    KvRegSvr Registry(File_);
    SaveOver(Registry, Sample(L"PROVA", 2));
    EXPECT_EQ(Other(File_).Run("PRAGMA journal_mode"), "delete");
    EXPECT_EQ(std::distance(fs::directory_iterator(Folder_), fs::directory_iterator()), 1);
}

TEST_F(RegistryTest, TheFolderMustExist) {
    File_ = Folder_ / "manca" / "registro.kvr";
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; },
                      Sentence(L"Impossibile aprire il file di registro ", L": la cartella non esiste.")));
    EXPECT_FALSE(fs::exists(File_.parent_path()));
    File_ = Folder_;
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; },
                      Sentence(L"Impossibile aprire il file di registro ", L": non è un file.")));
    File_ = Folder_ / "tubo";
    ASSERT_EQ(mkfifo(File_.c_str(), 0600), 0);
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; },
                      Sentence(L"Impossibile aprire il file di registro ", L": non è un file.")));
    File_ = "";
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, L"Impossibile aprire il file di registro ."));
}

TEST_F(RegistryTest, AnotherFileIsNotTaken) {
    for (const std::string& Content :
         {std::string("x"), std::string("questo non è un registro\n"), std::string(15, '\0'),
          std::string(1, '\0'), std::string(100000, 'q'), std::string("SQLite format 3\0", 16)}) {
        PutBytes(File_, Content);
        EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, NoRegistry())) << Content.substr(0, 40);
        EXPECT_TRUE(Bytes(File_) == Content);
    }
    fs::remove(File_);
    Other(File_).Run("PRAGMA journal_mode = WAL; CREATE TABLE objects(Id)");
    const std::string Before = Bytes(File_);
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Sentence(L"Il file ", L" non è un registro.")));
    EXPECT_TRUE(Bytes(File_) == Before);
    fs::remove(File_);
    MakeSample();
    Other(File_).Run("PRAGMA application_id = 1");
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Sentence(L"Il file ", L" non è un registro.")));
}

TEST_F(RegistryTest, ANewerFileIsNotTouched) {
    MakeSample();
    Other(File_).Run("PRAGMA user_version = 2");
    const std::string Before = Bytes(File_);
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; },
                      Sentence(L"Il file di registro ", L" è di una versione più recente del programma.")));
    EXPECT_TRUE(Bytes(File_) == Before);
    Other(File_).Run("PRAGMA user_version = 0");
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Damaged()));
}

TEST_F(RegistryTest, AFileWithoutItsTableIsDamaged) {
    MakeSample();
    Other(File_).Run("ALTER TABLE objects RENAME COLUMN Revision TO Altro");
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Damaged()));
    Other(File_).Run("DROP TABLE objects");
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Damaged()));
}

TEST_F(RegistryTest, CodeInTheFileIsNotRun) {
    MakeSample();
    Other(File_).Run("CREATE TRIGGER t AFTER UPDATE ON objects BEGIN DELETE FROM objects; END");
    KvRegSvr Registry(File_);
    SaveOver(Registry, Sample(L"PROVA", 2));
    EXPECT_EQ(Registry.List().size(), 1U);
}

TEST_F(RegistryTest, AFileThatIsCutIsTold) {
    MakeSample();
    {
        KvRegSvr Registry(File_);
        RegObject Large = Sample(L"PROVA");
        Large.Values.push_back({L"Testo", std::wstring(20000, L'x')});
        SaveOver(Registry, Large);
    }
    const std::string Whole = Bytes(File_);
    constexpr std::size_t kHead = 24;  // what shows that it is an SQLite file, and its page size
    ASSERT_GT(Whole.size(), 20000U);
    std::set<std::size_t> Lengths;
    for (std::size_t I = 1; I <= 110; ++I) Lengths.insert({I, Whole.size() - I});
    for (std::size_t I = 512; I < Whole.size(); I += 512) Lengths.insert({I - 1, I, I + 1});
    for (const std::size_t Length : Lengths) {
        PutBytes(File_, std::string_view(Whole).substr(0, Length));
        EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Length < kHead ? NoRegistry() : Damaged())) << Length;
        EXPECT_EQ(fs::file_size(File_), Length);
    }
    PutBytes(File_, Whole);
    EXPECT_EQ(KvRegSvr(File_).List().size(), 1U);
}

TEST_F(RegistryTest, GarbageInTheFileEndsInASentence) {
    const TestDisk Layer;
    {
        KvRegSvr Registry(File_);
        for (int I = 0; I < 40; ++I) {
            const std::wstring Name = L"OGGETTO" + std::to_wstring(I);
            Registry.Create(I % 2 ? L"FILTER" : L"SORT", Name, L"Uno dei quaranta");
            const auto Object = Registry.Open(I % 2 ? L"FILTER" : L"SORT", Name);
            Object->SetSaving(true);
            RegObject Content = Sample(Name, I);
            if (I % 8 == 0) Content.Values.push_back({L"Testo", std::wstring(9000, L'x')});
            Object->Write(Content);
        }
    }
    const std::string Whole = Bytes(File_);
    std::mt19937 Random(20250101);
    const auto Below = [&](std::size_t Limit) {
        return std::uniform_int_distribution<std::size_t>(0, Limit - 1)(Random);
    };
    int Told = 0, Raised = 0, Fine = 0;
    const auto Try = [&](auto&& Run) {
        try {
            Run();
            ++Fine;
        } catch (const StoreError& Caught) {
            EXPECT_NE(Caught.Text(), L"");
            ++Told;
        } catch (const Failure& Caught) {
            EXPECT_NE(Caught.Error().Description, L"");
            ++Raised;
        }
    };
    for (int Round = 0; Round < 400; ++Round) {
        std::string Bad = Whole;
        for (std::size_t Hits = 1 + Below(4); Hits > 0; --Hits) {
            // Beginnings of pages hold what leads to the rest.
            const std::size_t At =
                Below(2) ? Below(Bad.size()) : Below(Bad.size() / 4096) * 4096 + Below(120);
            const std::size_t Count = std::min(Bad.size() - At, 1 + Below(Below(3) ? 3 : 600));
            for (std::size_t I = 0; I < Count; ++I) Bad[At + I] = static_cast<char>(Below(256));
        }
        PutBytes(File_, Bad);
        fs::remove(File_.string() + "-journal");
        Try([&] {
            KvRegSvr Registry(File_, 10ms);
            std::vector<RegistryEntry> All;
            Try([&] { All = Registry.List(); });
            for (const RegistryEntry& Entry : All)
                Try([&] {
                    const auto Object = Registry.Open(Entry.Clsid, Entry.Name);
                    Object->SetSaving(true);
                    Object->Write(Sample(Entry.Name + L"X"));
                });
            Try([&] { Registry.Create(L"MEMBER", L"NUOVO"); });
            Try([&] { Registry.Delete(L"SORT", L"OGGETTO4"); });
        });
    }
    EXPECT_GT(Told, 100);
    EXPECT_GT(Raised, 20);
    EXPECT_GT(Fine, 1000);
}

TEST_F(RegistryTest, ADamagedObjectLeavesTheOthersUsable) {
    {
        KvRegSvr Registry(File_);
        Registry.Create(L"FILTER", L"ALTRO");
        Registry.Create(L"FILTER", L"PROVA");
    }
    KvRegSvr Registry(File_);
    const auto Opened = Registry.Open(L"FILTER", L"PROVA");
    const std::pair<const char*, std::wstring> kDamages[] = {
        {"'{\"Name\":'", L"il testo non è JSON valido (byte 9)."},
        {"''", L"il testo non è JSON valido (byte 1)."},
        {"CAST(x'7B7D00' AS TEXT)", L"il testo non è JSON valido (byte 3)."},
        {"CAST(x'7B22FF223A317D' AS TEXT)", L"il testo non è JSON valido (byte 3)."},
        {"'{\"Values\":{\"X\":3000000000}}'", L"il valore X non è un numero intero a 32 bit."},
    };
    for (const auto& [Content, Reason] : kDamages) {
        Other(File_).Run(std::string("UPDATE objects SET Content = ") + Content + " WHERE Name = 'PROVA'");
        const std::wstring Text = L"Dati errati nell'oggetto FILTER/PROVA: " + Reason;
        EXPECT_TRUE(Raises([&] { Registry.Open(L"FILTER", L"PROVA"); }, 20000, Text)) << Content;
        EXPECT_TRUE(Raises([&] { Registry.ReadStored(L"FILTER", L"PROVA"); }, 20000, Text)) << Content;
        EXPECT_EQ(Registry.List().size(), 2U);
        EXPECT_EQ(Registry.ReadStored(L"FILTER", L"ALTRO").Name, L"ALTRO");
    }
    Opened->SetSaving(true);
    Opened->Write(Sample(L"PROVA"));
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"PROVA").Number2, 1) << "who has it open can save it";
    Other(File_).Run("UPDATE objects SET Content = '' WHERE Name = 'PROVA'");
    Registry.Delete(L"FILTER", L"PROVA");
    EXPECT_EQ(Registry.List().size(), 1U);
}

TEST_F(RegistryTest, TheIdentityOfTheRowCounts) {
    MakeSample();
    Other(File_).Run(
        "UPDATE objects SET Description = 'd', Version = 5, UserList = 'u', "
        "Content = '{\"Name\":\"X\",\"Id\":99,\"Desc\":\"X\",\"Version\":9,\"Colore\":\"rosso\"}'");
    KvRegSvr Registry(File_);
    const RegObject Read = Registry.ReadStored(L"FILTER", L"PROVA");
    const RegistryEntry Entry = Registry.List()[0];
    EXPECT_EQ(Read.Name, L"PROVA");
    EXPECT_EQ(Read.Id, Entry.Id);
    EXPECT_EQ(Read.Desc, L"d");
    EXPECT_EQ(Read.Version, 5);
    EXPECT_EQ(Read.UserList, L"u");
}

TEST_F(RegistryTest, ANameThatIsNoUnicodeIsStillListed) {
    MakeSample();
    Other(File_).Run("UPDATE objects SET Name = CAST(x'41FF' AS TEXT)");
    EXPECT_EQ(KvRegSvr(File_).List()[0].Name, L"A\uFFFD");
}

TEST_F(RegistryTest, ALockedFileIsTold) {
    MakeSample();
    KvRegSvr Registry(File_, 30ms);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    {
        Other Holder(File_);
        Holder.Run("BEGIN EXCLUSIVE");
        const auto Begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(Tells([&] { KvRegSvr(File_, 30ms); }, Locked()));
        EXPECT_TRUE(Tells([&] { Registry.List(); }, Locked()));
        EXPECT_TRUE(Tells([&] { Registry.Create(L"FILTER", L"NUOVO"); }, Locked()));
        EXPECT_TRUE(Tells([&] { Registry.Delete(L"FILTER", L"PROVA"); }, Locked()));
        EXPECT_TRUE(Tells([&] { Registry.Open(L"FILTER", L"PROVA"); }, Locked()));
        EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"PROVA", 2)); }, 20000, Locked()));
        EXPECT_GE(std::chrono::steady_clock::now() - Begin, 6 * 25ms);
    }
    EXPECT_EQ(Object->Read().Number2, 1);
    EXPECT_EQ(Object->Revision(), 2);
    Object->Write(Sample(L"PROVA", 2));
    EXPECT_EQ(Object->Revision(), 3);
}

TEST_F(RegistryTest, AReaderHoldsASaveUp) {
    MakeSample();
    KvRegSvr Registry(File_, 30ms);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    Other Reader(File_);
    Reader.Run("BEGIN; SELECT * FROM objects");
    EXPECT_EQ(Registry.List().size(), 1U);
    EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"PROVA", 2)); }, 20000, Locked()));
    EXPECT_EQ(Object->Read().Number2, 1);
    EXPECT_EQ(Registry.List()[0].Revision, 2);
    Reader.Run("COMMIT");
    Object->Write(Sample(L"PROVA", 2));
    EXPECT_EQ(Registry.List()[0].Revision, 3);
}

TEST_F(RegistryTest, ALockThatIsGivenUpIsWaitedFor) {
    MakeSample();
    KvRegSvr Registry(File_);
    Other Holder(File_);
    Holder.Run("BEGIN EXCLUSIVE");
    std::thread Later([&] {
        std::this_thread::sleep_for(100ms);
        Holder.Run("COMMIT");
    });
    EXPECT_NO_THROW(SaveOver(Registry, Sample(L"PROVA", 2)));
    Later.join();
    EXPECT_EQ(Registry.List()[0].Revision, 3);
}

/// Permissions bind any user but root: for as long as this lives, root works as nobody.
class Unprivileged {
  public:
    Unprivileged() {
        if (geteuid() == 0) Bound_ = seteuid(65534) == 0;
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;
    ~Unprivileged() {
        if (geteuid() != getuid()) {
            EXPECT_EQ(seteuid(getuid()), 0);
        }
    }
    bool Bound() const noexcept { return Bound_; }

  private:
    bool Bound_ = true;
};

TEST_F(RegistryTest, AReadOnlyFileCanBeRead) {
    MakeSample();
    ASSERT_EQ(chmod(Folder_.c_str(), 0777), 0);
    ASSERT_EQ(chmod(File_.c_str(), 0444), 0);
    const Unprivileged As;
    if (!As.Bound() || access(File_.c_str(), R_OK) != 0) GTEST_SKIP() << "no user whom permissions bind";
    KvRegSvr Registry(File_);
    EXPECT_EQ(Registry.List().size(), 1U);
    EXPECT_EQ(Registry.ReadStored(L"FILTER", L"PROVA").Number2, 1);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    ExpectUnchanged(File_, *Object, [&] {
        EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"PROVA", 2)); }, 20000, ReadOnly()));
        EXPECT_TRUE(Tells([&] { Registry.Create(L"FILTER", L"NUOVO"); }, ReadOnly()));
        EXPECT_TRUE(Tells([&] { Registry.Delete(L"FILTER", L"PROVA"); }, ReadOnly()));
    });
}

TEST_F(RegistryTest, PermissionsOfFolderAndFileAreTold) {
    MakeSample();
    ASSERT_EQ(chmod(Folder_.c_str(), 0755), 0);
    ASSERT_EQ(chmod(File_.c_str(), 0666), 0);
    const fs::path File = File_;
    if (geteuid() != 0) {
        ASSERT_EQ(chmod(Folder_.c_str(), 0555), 0);
    }
    {
        const Unprivileged As;
        if (!As.Bound() || access(File_.c_str(), R_OK) != 0) GTEST_SKIP() << "no user whom permissions bind";
        KvRegSvr Registry(File_);
        EXPECT_EQ(Registry.List().size(), 1U);
        EXPECT_TRUE(Tells([&] { Registry.Create(L"FILTER", L"NUOVO"); },
                          Sentence(L"La cartella del file di registro ", L" è di sola lettura.")));
        File_ = Folder_ / "nuovo.kvr";
        EXPECT_TRUE(
            Tells([&] { KvRegSvr{File_}; }, Sentence(L"Impossibile aprire il file di registro ", L".")));
    }
    File_ = File;
    ASSERT_EQ(chmod(Folder_.c_str(), 0755), 0);
    ASSERT_EQ(chmod(File_.c_str(), 0), 0);
    const Unprivileged As;
    EXPECT_TRUE(Tells([&] { KvRegSvr{File_}; }, Sentence(L"Impossibile aprire il file di registro ", L".")));
}

TEST_F(RegistryTest, AFileThatIsTakenAwayTakesNoSaves) {
    MakeSample();
    KvRegSvr Registry(File_);
    const auto Object = Registry.Open(L"FILTER", L"PROVA");
    Object->SetSaving(true);
    fs::rename(File_, Folder_ / "altrove");
    EXPECT_TRUE(Raises([&] { Object->Write(Sample(L"PROVA", 2)); }, 20000,
                       Sentence(L"Il file di registro ", L" è stato spostato o eliminato.")));
    EXPECT_EQ(Object->Read().Number2, 1);
    fs::rename(Folder_ / "altrove", File_);
    Object->Write(Sample(L"PROVA", 2));
    EXPECT_EQ(KvRegSvr(File_).List()[0].Revision, 3);
}

// A disk that fails.

struct Disk {
    bool ForGood;
    int WriteCode;
};

class FailingDiskTest : public RegistryTest, public ::testing::WithParamInterface<Disk> {
  protected:
    bool IsTold(const std::wstring& Text) const {
        return Text == Sentence(L"Il disco del file di registro ", L" è pieno.") ||
               Text == Sentence(L"Errore del disco nel file di registro ", L".");
    }
};

TEST_P(FailingDiskTest, ASaveIsWholeOrNot) {
    const TestDisk Layer;
    RegObject Before = Sample(L"PROVA", 1);
    Before.Values.push_back({L"Testo", std::wstring(20000, L'a')});
    RegObject After = Sample(L"NUOVA", 2);
    After.Values.push_back({L"Testo", std::wstring(30000, L'b')});
    int Failed = 0;
    for (std::size_t Operation = 1;; ++Operation) {
        fs::remove(File_);
        MakeSample();
        KvRegSvr Registry(File_);
        SaveOver(Registry, Before);
        const auto Object = Registry.Open(L"FILTER", L"PROVA");
        Before.Id = After.Id = Object->Read().Id;
        Object->SetSaving(true);
        TestDisk::FailAt(Operation, GetParam().ForGood, GetParam().WriteCode);
        bool Saved = true;
        try {
            Object->Write(After);
        } catch (const Failure& Caught) {
            Saved = false;
            EXPECT_EQ(Caught.Error().Number, 20000);
            EXPECT_TRUE(IsTold(Caught.Error().Description)) << ToUtf8Lossy(Caught.Error().Description);
        }
        const bool Reached = TestDisk::Done().size() >= Operation;
        TestDisk::Heal();
        EXPECT_EQ(Saved, !Reached) << Operation;
        if (!Reached) break;
        ++Failed;
        EXPECT_EQ(Object->Read(), Before) << Operation;
        EXPECT_EQ(Object->Revision(), 3);
        {
            KvRegSvr Second(File_);
            EXPECT_EQ(Second.ReadStored(L"FILTER", L"PROVA"), Before) << Operation;
            EXPECT_EQ(Second.List().size(), 1U);
            EXPECT_EQ(Second.List()[0].Revision, 3) << Operation;
        }
        Object->Write(After);
        EXPECT_EQ(Registry.ReadStored(L"FILTER", L"NUOVA"), After) << Operation;
        EXPECT_EQ(Object->Revision(), 4);
        EXPECT_EQ(Other(File_).Run("PRAGMA integrity_check"), "ok") << Operation;
    }
    EXPECT_GT(Failed, 20);
}

TEST_P(FailingDiskTest, ARegistryIsMadeWhollyOrNot) {
    const TestDisk Layer;
    int Failed = 0;
    for (std::size_t Operation = 1;; ++Operation) {
        fs::remove(File_);
        TestDisk::FailAt(Operation, GetParam().ForGood, GetParam().WriteCode);
        bool Made = true;
        try {
            KvRegSvr(File_).Create(L"FILTER", L"PROVA");
        } catch (const StoreError& Caught) {
            Made = false;
            EXPECT_TRUE(IsTold(Caught.Text())) << Caught.what();
        }
        const bool Reached = TestDisk::Done().size() >= Operation;
        TestDisk::Heal();
        EXPECT_EQ(Made, !Reached) << Operation;
        if (!Reached) break;
        ++Failed;
        KvRegSvr Registry(File_);
        EXPECT_TRUE(Registry.List().empty()) << Operation;
        EXPECT_EQ(Registry.Create(L"FILTER", L"PROVA"), 1) << Operation;
    }
    EXPECT_GT(Failed, 10);
}

INSTANTIATE_TEST_SUITE_P(Disks, FailingDiskTest,
                         ::testing::Values(Disk{false, SQLITE_FULL}, Disk{true, SQLITE_FULL},
                                           Disk{false, SQLITE_IOERR_WRITE}, Disk{true, SQLITE_IOERR_WRITE}));

// A program that dies, and two that work.

// Runs `Body` in a program of its own; its exit code, 1 for an exception.
template <class Body>
int InAnotherProgram(Body&& Run) {
    const pid_t Child = fork();
    if (Child == 0) {
        try {
            Run();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    int Status = 0;
    EXPECT_EQ(waitpid(Child, &Status, 0), Child);
    return WIFEXITED(Status) ? WEXITSTATUS(Status) : -1;
}

TEST_F(RegistryTest, AProgramThatDiesInAnyWriteLeavesTheOldObjectOrTheNewOne) {
    const TestDisk Layer;
    RegObject Before = Sample(L"PROVA", 1);
    Before.Values.push_back({L"Testo", std::wstring(20000, L'a')});
    RegObject After = Sample(L"NUOVA", 2);
    After.Values.push_back({L"Testo", std::wstring(30000, L'b')});
    MakeSample();
    {
        KvRegSvr Registry(File_);
        SaveOver(Registry, Before);
        Before.Id = After.Id = Registry.List()[0].Id;
    }
    const std::string Prepared = Bytes(File_);
    std::size_t Deaths = 0, OldOnes = 0;
    for (std::size_t Operation = 1;; ++Operation) {
        PutBytes(File_, Prepared);
        const int Code = InAnotherProgram([&] {
            KvRegSvr Registry(File_);
            const auto Object = Registry.Open(L"FILTER", L"PROVA");
            Object->SetSaving(true);
            TestDisk::DieAt(Operation);
            Object->Write(After);
        });
        ASSERT_TRUE(Code == 0 || Code == TestDisk::kDied) << Code;
        KvRegSvr Registry(File_);
        const std::vector<RegistryEntry> All = Registry.List();
        ASSERT_EQ(All.size(), 1U) << Operation;
        const bool Old = All[0].Name == L"PROVA";
        EXPECT_EQ(Registry.ReadStored(L"FILTER", All[0].Name), Old ? Before : After) << Operation;
        EXPECT_EQ(All[0].Revision, Old ? 3 : 4) << Operation;
        EXPECT_EQ(Other(File_).Run("PRAGMA integrity_check"), "ok") << Operation;
        EXPECT_FALSE(Old && Code == 0) << "a save that came back is lost";
        if (Code == 0) break;
        ++Deaths;
        OldOnes += Old ? 1 : 0;
    }
    EXPECT_GT(Deaths, 20U);
    EXPECT_GT(OldOnes, 10U);
}

TEST_F(RegistryTest, TwoProgramsOfAThousandSavesEachLoseNone) {
    const TestDisk Layer;
    constexpr int kSaves = 1000;
    MakeSample();
    const auto Count = [&] {
        KvRegSvr Registry(File_, 30s);
        for (int Save = 0; Save < kSaves;) {
            const auto Object = Registry.Open(L"FILTER", L"PROVA");
            Object->SetSaving(true);
            RegObject Next = Object->Read();
            ++Next.Number2;
            try {
                Object->Write(std::move(Next));
                ++Save;
            } catch (const Failure& Caught) {
                // Overtaken: once more on what the other has saved.
                if (Caught.Error().Description.find(L"altro programma") == std::wstring::npos) throw;
            }
        }
    };
    const std::int32_t Begin = KvRegSvr(File_).ReadStored(L"FILTER", L"PROVA").Number2;
    const std::int64_t Revision = KvRegSvr(File_).List()[0].Revision;
    int Other1 = -1;
    std::thread Waiting([&] { Other1 = InAnotherProgram(Count); });
    EXPECT_EQ(InAnotherProgram(Count), 0);
    Waiting.join();
    EXPECT_EQ(Other1, 0);
    EXPECT_EQ(KvRegSvr(File_).ReadStored(L"FILTER", L"PROVA").Number2, Begin + 2 * kSaves);
    EXPECT_EQ(KvRegSvr(File_).List()[0].Revision, Revision + 2 * kSaves);
    EXPECT_EQ(Other(File_).Run("PRAGMA integrity_check"), "ok");
}

TEST_F(RegistryTest, ASaveIsOnTheDiskWhenItComesBack) {
    const TestDisk Layer;
    MakeSample();
    KvRegSvr Registry(File_);
    TestDisk::Heal();
    SaveOver(Registry, Sample(L"PROVA", 2));
    std::string Steps = TestDisk::Done();
    Steps.erase(std::unique(Steps.begin(), Steps.end()), Steps.end());
    EXPECT_TRUE(Steps == "jJrRD" || Steps == "jJjJrRD") << TestDisk::Done();
}

}  // namespace
}  // namespace kv::host
