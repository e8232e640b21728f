// What it costs to take a section text apart, over its number of lines, beside the floor: finding the line
// ends of the same text. Each curve must be straight.
#include <benchmark/benchmark.h>

#include <string>

#include "frame/SectionTable.h"
#include "frame/vDesignPar.h"

namespace {

std::wstring TextOf(std::int64_t Lines) {
    std::wstring Text;
    for (std::int64_t I = 0; I < Lines; ++I)
        Text.append(L"KEYWORD").append(std::to_wstring(I)).append(L"= \"value of this keyword\"\r\n");
    return Text;
}

void Over(benchmark::internal::Benchmark* Bench) {
    Bench->RangeMultiplier(10)
        ->Range(1000, 1000000)
        ->Unit(benchmark::kMillisecond)
        ->Complexity(benchmark::oN);
}

void FindLineEnds(benchmark::State& State) {
    const std::wstring Text = TextOf(State.range(0));
    for (auto _ : State) {
        std::int64_t Lines = 0;
        for (std::size_t At = Text.find(L"\r\n"); At != std::wstring::npos; At = Text.find(L"\r\n", At + 2))
            ++Lines;
        benchmark::DoNotOptimize(Lines);
    }
    State.SetComplexityN(State.range(0));
    State.SetItemsProcessed(State.iterations() * State.range(0));
}
BENCHMARK(FindLineEnds)->Apply(Over);

void TakeLines(benchmark::State& State) {
    const std::wstring Text = TextOf(State.range(0));
    for (auto _ : State) {
        kv::SectionText Buffer(Text);
        std::wstring_view Keyword;
        std::wstring_view Value;
        while (!Buffer.Empty()) {
            if (kv::GetFieldValue(Buffer, Keyword, Value)) State.SkipWithError("refused");
            benchmark::DoNotOptimize(Value);
        }
    }
    State.SetComplexityN(State.range(0));
    State.SetItemsProcessed(State.iterations() * State.range(0));
}
BENCHMARK(TakeLines)->Apply(Over);

// A whole parser: lines, ladder, and the check that no keyword stands twice, each keyword another one.
void ReadAndCheck(benchmark::State& State) {
    const std::wstring Text = TextOf(State.range(0));
    struct Counter {
        std::int64_t Read = 0;
    };
    static constexpr kv::LadderRow<Counter> kLadder[] = {
        {L"NONE=", [](Counter&, kv::Parm&) { return false; }},
    };
    for (auto _ : State) {
        kv::SectionText Buffer(Text);
        Counter Count;
        kv::ClearParmCheck();
        const bool Failed = kv::ReadLadder(Buffer, kLadder, Count, true, [](Counter& Into, kv::Parm& P) {
            kv::CheckParmOnce(P.Keyword);
            P.Unquote();
            ++Into.Read;
            return false;
        });
        if (Failed || Count.Read != State.range(0)) State.SkipWithError("refused");
    }
    State.SetComplexityN(State.range(0));
    State.SetItemsProcessed(State.iterations() * State.range(0));
}
BENCHMARK(ReadAndCheck)->Apply(Over);

void WriteParms(benchmark::State& State) {
    std::wstring Buffer;
    for (auto _ : State) {
        Buffer.clear();
        for (std::int64_t I = 0; I < State.range(0); ++I)
            kv::AppendParm(Buffer, 2, L"KEYWORD=", L"value of this keyword", kv::StrUtil::QuoteChar());
        benchmark::DoNotOptimize(Buffer.data());
    }
    State.SetComplexityN(State.range(0));
    State.SetItemsProcessed(State.iterations() * State.range(0));
}
BENCHMARK(WriteParms)->Apply(Over);

}  // namespace
