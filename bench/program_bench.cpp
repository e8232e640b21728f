// The program as a whole: how long `kvdesign --version` takes, and a session of `kvdesign rpc` that opens an
// object, edits it, saves and closes it, from the start of the process to its end. With the store in memory
// nothing waits for a disk: what is left is the program's own time.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Places.h"
#include "host/KvRegSvr.h"

extern char** environ;

namespace {

using namespace kv;

/// A process with both ends of its standard input and output in our hands.
class Process {
  public:
    explicit Process(std::vector<std::string> Words) {
        std::array<int, 2> In{};
        std::array<int, 2> Out{};
        if (pipe2(In.data(), O_CLOEXEC) != 0 || pipe2(Out.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t Actions;
        posix_spawn_file_actions_init(&Actions);
        posix_spawn_file_actions_adddup2(&Actions, In[0], 0);
        posix_spawn_file_actions_adddup2(&Actions, Out[1], 1);
        std::vector<char*> Arguments;
        for (std::string& Word : Words) Arguments.push_back(Word.data());
        Arguments.push_back(nullptr);
        const int Failed = posix_spawn(&Id_, Arguments[0], &Actions, nullptr, Arguments.data(), environ);
        posix_spawn_file_actions_destroy(&Actions);
        close(In[0]);
        close(Out[1]);
        In_ = In[1];
        Out_ = Out[0];
        if (Failed != 0) throw std::runtime_error("cannot start " + Words[0]);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() { End(); }

    void Say(const std::string& Line) const {
        if (write(In_, Line.data(), Line.size()) != static_cast<ssize_t>(Line.size()))
            throw std::runtime_error("it does not listen");
    }
    /// Reads on to the end of the line in which `Wanted` is said; all that came so far.
    std::string Hear(const std::string& Wanted) {
        std::string Said;
        std::array<char, 65536> Part{};
        while (Said.find('\n', Said.find(Wanted)) == std::string::npos) {
            const ssize_t Size = read(Out_, Part.data(), Part.size());
            if (Size <= 0) throw std::runtime_error("it never said " + Wanted + " but " + Said);
            Said.append(Part.data(), static_cast<std::size_t>(Size));
        }
        return Said;
    }
    /// Waits for its end; the exit code.
    int End() {
        if (Id_ == 0) return 0;
        close(In_);
        close(Out_);
        int Status = 0;
        waitpid(Id_, &Status, 0);
        Id_ = 0;
        return WEXITSTATUS(Status);
    }

  private:
    pid_t Id_ = 0;
    int In_ = -1;
    int Out_ = -1;
};

// Processor time of all processes that have ended.
double Milliseconds() {
    rusage Used{};
    getrusage(RUSAGE_CHILDREN, &Used);
    const auto Of = [](const timeval& Time) {
        return 1e3 * static_cast<double>(Time.tv_sec) + 1e-3 * static_cast<double>(Time.tv_usec);
    };
    return Of(Used.ru_utime) + Of(Used.ru_stime);
}

/// Tells the processor time of the processes that ran while it lived.
class ProcessorTime {
  public:
    explicit ProcessorTime(benchmark::State& State) : State_(State) {}
    ProcessorTime(const ProcessorTime&) = delete;
    ProcessorTime& operator=(const ProcessorTime&) = delete;
    ~ProcessorTime() {
        State_.counters["cpu"] =
            benchmark::Counter(Milliseconds() - Before_, benchmark::Counter::kAvgIterations);
    }

  private:
    benchmark::State& State_;
    double Before_ = Milliseconds();
};

void Version(benchmark::State& State) {
    const ProcessorTime Used(State);
    for (auto _ : State) {
        Process Asked({KV_PROGRAM, "--version"});
        Asked.Hear("\n");
        if (Asked.End() != 0) State.SkipWithError("failed");
    }
}

// The floor: a process that does nothing.
void Nothing(benchmark::State& State) {
    const ProcessorTime Used(State);
    for (auto _ : State) {
        Process Asked({"/bin/true"});
        if (Asked.End() != 0) State.SkipWithError("failed");
    }
}

void Session(benchmark::State& State, const std::filesystem::path& Above) {
    const bench::Folder Folder(Above);
    const std::filesystem::path Store = Folder / "store.db";
    host::KvRegSvr(Store).Create(L"MEMBER", L"A");
    const ProcessorTime Used(State);
    for (auto _ : State) {
        Process Rpc({KV_PROGRAM, "--store", Store.string(), "rpc"});
        Rpc.Say(
            "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"open\",\"params\":{\"Clsid\":\"MEMBER\",\"Name\":"
            "\"A\"}}\n");
        const std::string Nodes = Rpc.Hear("\"id\":1");
        const std::size_t At = Nodes.find("\"PARMS ") + 1;
        const std::string Leaf = Nodes.substr(At, Nodes.find('"', At) - At);
        Rpc.Say("{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"SaveData\",\"params\":{\"CurrItem\":\"" + Leaf +
                "\",\"Buffer\":\"PASSWORD= x\"}}\n");
        Rpc.Hear("\"id\":2");
        Rpc.Say("{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"Save\"}\n");
        if (Rpc.Hear("\"id\":3").find("Revision") == std::string::npos) State.SkipWithError("not saved");
        Rpc.Say("{\"jsonrpc\":\"2.0\",\"id\":4,\"method\":\"close\"}\n");
        Rpc.Hear("\"id\":4");
        if (Rpc.End() != 0) State.SkipWithError("failed");
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    const auto Named = [](const char* Name, auto Work) {
        benchmark::RegisterBenchmark(Name, Work)->Unit(benchmark::kMillisecond)->UseRealTime();
    };
    Named("Program/--version/ours", Version);
    Named("Program/--version/floor: a process that does nothing", Nothing);
    if (!bench::InMemory().empty())
        Named("Program/session in memory/ours",
              [](benchmark::State& State) { Session(State, bench::InMemory()); });
    Named("Program/session on disk/ours", [](benchmark::State& State) { Session(State, bench::OnDisk()); });
    return true;
}();

}  // namespace
