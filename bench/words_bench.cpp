// The words of a stop word list saved and rendered, up to 1,000,000 pairs, through the whole server as from a
// window. The floor is their text copied.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "bench/Desk.h"
#include "records/StopWordRecord.h"

namespace {

using namespace kv;
using bench::Desk;
using bench::Must;

std::wstring WordsOf(std::int64_t Count) {
    std::wstring Text;
    for (std::int64_t I = 1; I <= Count; ++I)
        Text.append(L"\"word ")
            .append(std::to_wstring(I))
            .append(L"\"=\"replacement ")
            .append(std::to_wstring(I))
            .append(L"\"\r\n");
    return Text;
}

void Over(benchmark::internal::Benchmark* Bench) {
    Bench->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
}

void CopyWords(benchmark::State& State) {
    const std::wstring Text = WordsOf(State.range(0));
    for (auto _ : State) {
        std::wstring Copy = Text;
        benchmark::DoNotOptimize(Copy.data());
    }
}
BENCHMARK(CopyWords)->Apply(Over);

void SaveWords(benchmark::State& State) {
    Desk On(L"STOPWORD", StopWordRecord().SaveObject());
    Must(On.Core.LoadData());
    const std::wstring Leaf = On.Leaf(L"MESSAGE");
    std::wstring Text = WordsOf(State.range(0));
    for (auto _ : State) {
        std::wstring Made;
        Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
    }
}
BENCHMARK(SaveWords)->Apply(Over);

void ShowWords(benchmark::State& State) {
    Desk On(L"STOPWORD", StopWordRecord().SaveObject());
    Must(On.Core.LoadData());
    const std::wstring Leaf = On.Leaf(L"MESSAGE");
    std::wstring Text = WordsOf(State.range(0));
    std::wstring Made;
    Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
    for (auto _ : State) {
        std::wstring Shown;
        Must(On.Core.DispData({.CurrItem = Leaf}, Shown));
        if (!Shown.starts_with(Text)) throw std::runtime_error("shown otherwise");
    }
}
BENCHMARK(ShowWords)->Apply(Over);

}  // namespace
