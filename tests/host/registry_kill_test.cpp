// A program that dies in the middle of its saves.

#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "host/KvRegSvr.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kRounds = 40;

// What the program that is killed tells; it lies in memory that both see.
struct Progress {
    std::atomic<std::int32_t> Begun;
    std::atomic<std::int32_t> Done;
};

// The content of the n-th save: all of it bears n, and odd and even ones differ in size and in every text.
RegObject ContentOf(std::int32_t Save) {
    const wchar_t Letter = Save % 2 ? L'A' : L'B';
    RegObject Made;
    Made.Name = Save % 2 ? L"DISPARI" : L"PARI";
    Made.Desc = std::to_wstring(Save);
    Made.Version = Save;
    Made.Children.resize(Save % 2 ? 60 : 40);
    for (RegObject& Child : Made.Children) {
        Child.Version = Save;
        Child.Values = {{L"Text", std::wstring(2000, Letter)}, {L"Save", Save}};
    }
    return Made;
}

std::shared_ptr<RegistryObject> OpenOnly(KvRegSvr& Registry) {
    const std::vector<RegistryEntry> All = Registry.List();
    if (All.size() != 1) return nullptr;
    return Registry.Open(All[0].Clsid, All[0].Name);
}

[[noreturn]] void SaveForEver(const fs::path& File, Progress& Told) {
    try {
        KvRegSvr Registry(File);
        const std::shared_ptr<RegistryObject> Object = OpenOnly(Registry);
        Object->SetSaving(true);
        for (;;) {
            const std::int32_t Save = static_cast<std::int32_t>(Object->Revision());
            Told.Begun = Save;
            Object->Write(ContentOf(Save));
            Told.Done = Save;
        }
    } catch (...) {
        _exit(1);
    }
}

std::string Integrity(const fs::path& File) {
    sqlite3* Base = nullptr;
    std::string Answer;
    EXPECT_EQ(sqlite3_open(File.c_str(), &Base), SQLITE_OK);
    const auto Keep = [](void* Into, int, char** Columns, char**) {
        static_cast<std::string*>(Into)->append(Columns[0]);
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(Base, "PRAGMA integrity_check", Keep, &Answer, nullptr), SQLITE_OK);
    sqlite3_close(Base);
    return Answer;
}

class RegistryKillTest : public ::testing::Test {
  protected:
    RegistryKillTest() {
        std::string Template = (fs::temp_directory_path() / "kvkillXXXXXX").string();
        EXPECT_NE(mkdtemp(Template.data()), nullptr);
        Folder_ = Template;
        File_ = Folder_ / "registro.kvr";
        void* const Shared =
            mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        EXPECT_NE(Shared, MAP_FAILED);
        Told_ = new (Shared) Progress{};
    }
    ~RegistryKillTest() override {
        munmap(Told_, sizeof(Progress));
        std::error_code Ignored;
        fs::remove_all(Folder_, Ignored);
    }

    fs::path Folder_;
    fs::path File_;
    Progress* Told_ = nullptr;
};

TEST_F(RegistryKillTest, LeavesTheOldObjectOrTheNewOne) {
    {
        KvRegSvr Registry(File_);
        Registry.Create(L"FILTER", L"PARI");
    }
    std::mt19937 Random(40);
    int Cut = 0, Journals = 0;
    std::int32_t Last = 0;
    for (int Round = 0; Round < kRounds; ++Round) {
        Told_->Begun = Told_->Done = 0;
        const pid_t Child = fork();
        ASSERT_NE(Child, -1);
        if (Child == 0) SaveForEver(File_, *Told_);

        const auto Deadline = std::chrono::steady_clock::now() + 5s;
        const bool Early = Round % 8 == 7;  // at times before or in the first save
        while (!Early && Told_->Done == 0 && std::chrono::steady_clock::now() < Deadline)
            std::this_thread::sleep_for(1ms);
        std::this_thread::sleep_for(
            std::chrono::microseconds(std::uniform_int_distribution<int>(0, 20000)(Random)));
        ASSERT_EQ(kill(Child, SIGKILL), 0);
        int Status = 0;
        ASSERT_EQ(waitpid(Child, &Status, 0), Child);
        ASSERT_TRUE(WIFSIGNALED(Status)) << "the saving program failed by itself in round " << Round;
        const std::int32_t Begun = Told_->Begun;
        const std::int32_t Done = Told_->Done;
        if (Begun != Done) ++Cut;
        if (fs::exists(File_.string() + "-journal")) ++Journals;

        KvRegSvr Registry(File_);
        const std::shared_ptr<RegistryObject> Object = OpenOnly(Registry);
        ASSERT_NE(Object, nullptr) << "round " << Round;
        const std::int64_t Saves = Object->Revision() - 1;
        EXPECT_GE(Saves, std::max(Done, Last)) << "a save that was told done is lost";
        EXPECT_LE(Saves, std::max(Begun, Last)) << "a save that never began";
        Last = static_cast<std::int32_t>(Saves);
        RegObject Wanted = ContentOf(Last);
        if (Last == 0) {
            Wanted.Desc.clear();
            Wanted.Version = 1;
            Wanted.Children.clear();
        }
        Wanted.Id = Object->Read().Id;
        EXPECT_TRUE(Object->Read() == Wanted) << "the object is not wholly that of save " << Last;
        EXPECT_EQ(Registry.List()[0].Version, Wanted.Version);
        EXPECT_EQ(Integrity(File_), "ok");
        if (HasFailure()) break;
    }
    RecordProperty("Saves", Last);
    RecordProperty("KilledInASave", Cut);
    RecordProperty("JournalsLeft", Journals);
    EXPECT_GT(Cut, kRounds / 4) << "the kills did not meet saves";
}

}  // namespace
}  // namespace kv::host
