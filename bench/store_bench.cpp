// A whole installation of 1,000 objects, that of the demonstration over and over: loaded (each object opened
// and its tree built), exported and saved, beside SQLite alone reading or writing the same bytes under the
// same promises, and beside the same bytes in a plain file. The saves of the three go by turns, object by
// object, so that what else the disk does meets all of them.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Desk.h"
#include "bench/Places.h"
#include "host/Demo.h"
#include "host/KvRegSvr.h"
#include "host/WholeObject.h"

namespace {

using namespace kv;
using bench::Desk;
using bench::Must;
namespace fs = std::filesystem;

constexpr int kObjects = 1000;

/// SQLite with nothing around it.
class Sqlite {
  public:
    explicit Sqlite(const fs::path& File) {
        Check(sqlite3_open_v2(File.c_str(), &Base_, SQLITE_OPEN_READWRITE, nullptr));
        // What the registry asks for.
        Execute("PRAGMA cell_size_check = ON");
        Execute("PRAGMA synchronous = EXTRA");
        Execute("PRAGMA journal_mode = DELETE");
        Begin_ = Prepare("BEGIN IMMEDIATE");
        Commit_ = Prepare("COMMIT");
        // The revision grows as with us: SQLite writes nothing where nothing changes.
        Update_ = Prepare("UPDATE objects SET Content = ?, Revision = Revision + 1 WHERE Id = ?");
        Select_ = Prepare("SELECT Content FROM objects WHERE Id = ?");
    }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;
    ~Sqlite() {
        for (sqlite3_stmt* Statement : {Begin_, Commit_, Update_, Select_}) sqlite3_finalize(Statement);
        sqlite3_close(Base_);
    }

    void Execute(const std::string& Sql) {
        Check(sqlite3_exec(Base_, Sql.c_str(), nullptr, nullptr, nullptr));
    }
    std::string Read(std::int64_t Id) {
        sqlite3_bind_int64(Select_, 1, Id);
        if (sqlite3_step(Select_) != SQLITE_ROW) throw std::runtime_error("no such row");
        std::string Content(reinterpret_cast<const char*>(sqlite3_column_text(Select_, 0)),
                            static_cast<std::size_t>(sqlite3_column_bytes(Select_, 0)));
        sqlite3_reset(Select_);
        return Content;
    }
    void Write(std::int64_t Id, std::string_view Content) {
        Run(Begin_);
        sqlite3_bind_text64(Update_, 1, Content.data(), Content.size(), SQLITE_STATIC, SQLITE_UTF8);
        sqlite3_bind_int64(Update_, 2, Id);
        Run(Update_);
        Run(Commit_);
    }

  private:
    static void Check(int Code) {
        if (Code != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(Code));
    }
    sqlite3_stmt* Prepare(const char* Sql) {
        sqlite3_stmt* Made = nullptr;
        Check(sqlite3_prepare_v2(Base_, Sql, -1, &Made, nullptr));
        return Made;
    }
    static void Run(sqlite3_stmt* Statement) {
        if (sqlite3_step(Statement) != SQLITE_DONE) throw std::runtime_error("SQLite refuses");
        sqlite3_reset(Statement);
    }

    sqlite3* Base_ = nullptr;
    sqlite3_stmt* Begin_ = nullptr;
    sqlite3_stmt* Commit_ = nullptr;
    sqlite3_stmt* Update_ = nullptr;
    sqlite3_stmt* Select_ = nullptr;
};

/// A plain file that is written and synchronised.
class Plain {
  public:
    explicit Plain(const fs::path& File) : File_(open(File.c_str(), O_CREAT | O_RDWR, 0600)) {}
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;
    ~Plain() { close(File_); }
    void Write(std::string_view Content) const {
        if (pwrite(File_, Content.data(), Content.size(), 0) != static_cast<ssize_t>(Content.size()) ||
            fsync(File_) != 0)
            throw std::runtime_error("the disk refuses");
    }
    void Read(std::string& Content) const {
        if (pread(File_, Content.data(), Content.size(), 0) != static_cast<ssize_t>(Content.size()))
            throw std::runtime_error("the disk refuses");
    }

  private:
    int File_;
};

/// The demonstration's objects, each as often as it takes, under names of their own.
class Installation {
  public:
    explicit Installation(const fs::path& Above) : Folder_(Above) {
        const bench::Folder Quick(bench::InMemory().empty() ? Above : bench::InMemory());
        host::MakeDemo(Quick / "demo");
        const fs::path Demo = (Quick / "demo") / host::kDemoStore;
        {
            Sqlite Base(Demo);
            const auto Made = static_cast<int>(host::DemoObjects().size());
            for (int There = Made; There < kObjects; There += Made)
                Base.Execute(
                    "INSERT INTO objects(Clsid, Name, Description, Version, UserList, Revision, Content) "
                    "SELECT Clsid, Name || ' " +
                    std::to_string(There) +
                    "', Description, Version, UserList, 1, Content FROM objects ORDER BY Id LIMIT " +
                    std::to_string(std::min(Made, kObjects - There)));
        }
        fs::copy_file(Demo, Ours());
        fs::copy_file(Demo, Alone());
    }
    fs::path Ours() const { return Folder_ / "ours.db"; }
    fs::path Alone() const { return Folder_ / "alone.db"; }
    fs::path Plainly() const { return Folder_ / "plain"; }

  private:
    bench::Folder Folder_;
};

double Milliseconds(auto&& Work) {
    const auto Start = std::chrono::steady_clock::now();
    Work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - Start).count();
}

double Middle(std::vector<double> Of) {
    std::nth_element(Of.begin(), Of.begin() + static_cast<std::ptrdiff_t>(Of.size() / 2), Of.end());
    return Of[Of.size() / 2];
}

// From the record to the disk, each object a transaction.
void Save(benchmark::State& State, const fs::path& Above) {
    bench::Agreeing Operator;
    const Installation On(Above);
    host::KvRegSvr Registry(On.Ours());
    Sqlite Alone(On.Alone());
    const Plain File(On.Plainly());
    for (auto _ : State) {
        std::vector<double> Ours;
        std::vector<double> Theirs;
        std::vector<double> Floor;
        for (const host::RegistryEntry& Entry : Registry.List()) {
            Desk At(Registry.Open(Entry.Clsid, Entry.Name), &Registry);
            Must(At.Core.LoadData());
            const std::string Content = Alone.Read(Entry.Id);
            const auto Turn = [&](int Of) {
                if (Of == 0) Ours.push_back(Milliseconds([&] { Must(At.Core.Save()); }));
                if (Of == 1) Theirs.push_back(Milliseconds([&] { Alone.Write(Entry.Id, Content); }));
                if (Of == 2) Floor.push_back(Milliseconds([&] { File.Write(Content); }));
            };
            for (int I = 0; I < 3; ++I) Turn((Entry.Id + I) % 3);
        }
        if (Ours.size() != kObjects) return State.SkipWithError("not all were saved");
        double Whole = 0;
        double Beside = 0;
        for (std::size_t I = 0; I < Ours.size(); ++I) {
            Whole += Ours[I];
            Beside += Theirs[I];
        }
        State.counters["ours"] = Middle(Ours);
        State.counters["SQLite alone"] = Middle(Theirs);
        State.counters["floor: write and fsync"] = Middle(Floor);
        State.counters["ratio of the sums"] = Whole / Beside;
    }
}

template <class Work>
void OverAll(benchmark::State& State, Work&& One) {
    bench::Agreeing Operator;
    const Installation On(bench::InMemory().empty() ? bench::OnDisk() : bench::InMemory());
    host::KvRegSvr Registry(On.Ours());
    const std::vector<host::RegistryEntry> All = Registry.List();
    for (auto _ : State)
        for (const host::RegistryEntry& Entry : All) One(Registry, Entry);
}

void Load(benchmark::State& State) {
    OverAll(State, [](host::KvRegSvr& Registry, const host::RegistryEntry& Entry) {
        Desk At(Registry.Open(Entry.Clsid, Entry.Name), &Registry);
        Must(At.Core.LoadData());
    });
}
// Up to the stored object, without a record or a tree.
void LoadStored(benchmark::State& State) {
    OverAll(State, [](host::KvRegSvr& Registry, const host::RegistryEntry& Entry) {
        benchmark::DoNotOptimize(Registry.ReadStored(Entry.Clsid, Entry.Name).Values.data());
    });
}
void Export(benchmark::State& State) {
    OverAll(State, [](host::KvRegSvr& Registry, const host::RegistryEntry& Entry) {
        std::wstring Text;
        Must(host::ExportText(Registry, Registry.Open(Entry.Clsid, Entry.Name), true, Text));
        benchmark::DoNotOptimize(Text.data());
    });
}
void ReadAlone(benchmark::State& State) {
    const Installation On(bench::InMemory().empty() ? bench::OnDisk() : bench::InMemory());
    Sqlite Alone(On.Alone());
    for (auto _ : State)
        for (int Id = 1; Id <= kObjects; ++Id) benchmark::DoNotOptimize(Alone.Read(Id).data());
}
void ReadPlain(benchmark::State& State) {
    const Installation On(bench::InMemory().empty() ? bench::OnDisk() : bench::InMemory());
    Sqlite Alone(On.Alone());
    const Plain File(On.Plainly());
    std::vector<std::string> Contents;
    for (int Id = 1; Id <= kObjects; ++Id) Contents.push_back(Alone.Read(Id));
    const std::string& Largest = *std::max_element(
        Contents.begin(), Contents.end(), [](const auto& A, const auto& B) { return A.size() < B.size(); });
    File.Write(Largest);
    for (auto _ : State)
        for (std::string& Content : Contents) File.Read(Content);
}

[[maybe_unused]] const bool kRegistered = [] {
    const auto Named = [](const char* Name, auto Work) {
        return benchmark::RegisterBenchmark(Name, Work)->Unit(benchmark::kMillisecond);
    };
    Named("Load/1000 objects/ours", Load);
    Named("Load/1000 objects/ours, stored objects only", LoadStored);
    Named("Load/1000 objects/SQLite alone", ReadAlone);
    Named("Load/1000 objects/floor: file read", ReadPlain);
    Named("Export/1000 objects/ours", Export);
    Named("Export/1000 objects/SQLite alone", ReadAlone);
    Named("Export/1000 objects/floor: file read", ReadPlain);
    // A disk takes its time: the 1,000 are many enough.
    Named("Save/1000 objects on disk/by turns", [](benchmark::State& State) { Save(State, bench::OnDisk()); })
        ->Iterations(1)
        ->Repetitions(1);
    if (!bench::InMemory().empty())
        Named("Save/1000 objects in memory/by turns", [](benchmark::State& State) {
            Save(State, bench::InMemory());
        })->Iterations(1);
    return true;
}();

}  // namespace
