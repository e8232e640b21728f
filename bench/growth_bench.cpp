// How the work on large objects grows: each piece of work is done at n and at 10 n in one run. `ratio` is the
// processor time for one element at 10 n over that at n: 1 where the time grows with the work, 10 where it
// grows with the square. Work on one element of a list (added, moved, deleted, saved) is reckoned over the
// whole list too: 1 where the list is walked once for it, near 0.1 where the time does not depend on the
// list. What no longer fits into a cache lifts a straight curve; the floors CopyFields and WalkFields,
// which do nothing but touch the same memory, show by how much.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Desk.h"
#include "frame/TagTools.h"
#include "records/StopWordRecord.h"
#include "records/TableRecord.h"
#include "server/vdSvr.h"

namespace {

using namespace kv;
using bench::Agreeing;
using bench::Desk;
using bench::Must;

constexpr std::int32_t kFields = 10000;
constexpr std::int32_t kPairs = 100000;
constexpr int kTimes = 20;  // that work on one element is done

// Processor time: what else runs on the machine is not to count.
double Seconds(auto&& Work) {
    const std::clock_t Start = std::clock();
    Work();
    return static_cast<double>(std::clock() - Start) / CLOCKS_PER_SEC;
}

// Fields in groups of ten, tags 1 to n.
TableRecord TableOf(std::int32_t Count) {
    TableRecord Made;
    Made.Name = L"GROWTH";
    Made.Style = 0;
    Made.Index = L"TIT";
    for (std::int32_t I = 1; I <= Count; ++I) {
        FieldRecord Field;
        Field.Id = I;
        Field.Name = L"FIELD " + std::to_wstring(I);
        Field.Caption = L"A caption of some length";
        Field.DataType = 8;
        Field.Tag = I;
        Field.GroupTag = I - (I - 1) % 10;
        Field.Level = I % 10 == 1 ? 1 : 2;
        Field.Visible = true;
        Made.Fields.Add(std::move(Field));
    }
    return Made;
}

// Runs `Work(n)` and `Work(10 n)`, which answer the seconds that the work itself took.
void Grow(benchmark::State& State, std::int32_t Small, auto&& Work) {
    Agreeing Operator;
    const std::int32_t Large = 10 * Small;
    double Least = 1e9;
    double Most = 1e9;
    for (auto _ : State) {
        for (int Turn = 0; Turn < 5; ++Turn) Least = std::min(Least, Work(Small));
        const double Took = Work(Large);
        Most = std::min(Most, Took);
        State.SetIterationTime(Took);
    }
    State.counters["ms_n"] = Least * 1e3;
    State.counters["ms_10n"] = Most * 1e3;
    State.counters["ratio"] = Most / Least / 10;
}

void Repeated(benchmark::internal::Benchmark* Bench) {
    Bench->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
}

// The work on a table that is loaded before the clock runs; `Times` runs of it are averaged.
void GrowTable(benchmark::State& State, int Times, auto&& Work) {
    Grow(State, kFields, [&](std::int32_t Count) {
        Desk On(L"TABLE", TableOf(Count).SaveObject());
        Must(On.Core.LoadData());
        return Seconds([&] {
                   for (int Time = 0; Time < Times; ++Time) Work(On);
               }) /
               Times;
    });
}

// The floor: the list copied.
void CopyFields(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        const TableRecord Record = TableOf(Count);
        ParmList<FieldRecord> Copy;
        return Seconds([&] {
            Copy = Record.Fields;
            benchmark::DoNotOptimize(Copy);
        });
    });
}
BENCHMARK(CopyFields)->Apply(Repeated);

// The floor of what looks at each field once.
void WalkFields(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        const TableRecord Record = TableOf(Count);
        return Seconds([&] {
            for (int Time = 0; Time < kTimes; ++Time) {
                std::uint64_t Letters = 0;
                for (std::int32_t I = 1; I <= Count; ++I)
                    Letters += static_cast<std::uint64_t>(Record.Fields.Item(I).Name.front());
                benchmark::DoNotOptimize(Letters);
            }
        });
    });
}
BENCHMARK(WalkFields)->Apply(Repeated);

void LoadTable(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        Desk On(L"TABLE", TableOf(Count).SaveObject());
        return Seconds([&] { Must(On.Core.LoadData()); });
    });
}
BENCHMARK(LoadTable)->Apply(Repeated);

// With the check for repeated tags.
void SaveTableObject(benchmark::State& State) {
    GrowTable(State, 1, [](Desk& On) { Must(On.Core.Save()); });
}
BENCHMARK(SaveTableObject)->Apply(Repeated);

void ExportTable(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        const auto Object = std::make_shared<MemoryRegData>(L"TABLE", TableOf(Count).SaveObject());
        vdSvr Server(nullptr, [] { return std::make_shared<window::TreeModel>(); });
        std::wstring Buffer;
        return Seconds([&] { Must(Server.Export(Object, L"TABLE", Buffer)); });
    });
}
BENCHMARK(ExportTable)->Apply(Repeated);

void TagCheck(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        const TableRecord Record = TableOf(Count);
        return Seconds([&] { CheckTags(Record.Fields); });
    });
}
BENCHMARK(TagCheck)->Apply(Repeated);

void FreeTag(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        const TableRecord Record = TableOf(Count);
        return Seconds([&] { benchmark::DoNotOptimize(GetFreeTag(Record.Fields)); });
    });
}
BENCHMARK(FreeTag)->Apply(Repeated);

void ListFreeTags(benchmark::State& State) {
    GrowTable(State, 1, [](Desk& On) { On.Core.TlbrButtonClick(L"FINDTAG", {.CurrItem = L"FIELDS"}); });
}
BENCHMARK(ListFreeTags)->Apply(Repeated);

void Renumber(benchmark::State& State) {
    GrowTable(State, 1, [](Desk& On) { On.Core.TlbrButtonClick(L"RENUMTAG", {.CurrItem = L"FIELDS"}); });
}
BENCHMARK(Renumber)->Apply(Repeated);

// Heads of groups and fields as deep as the list is long, by turns.
void RenumberDeep(benchmark::State& State) {
    Grow(State, kFields, [](std::int32_t Count) {
        TableRecord Record = TableOf(Count);
        for (std::int32_t I = 2; I <= Count; I += 2) {
            Record.Fields.Item(I - 1).Level = 1;
            Record.Fields.Item(I).Level = Count;
        }
        const TagFields Fields = TagFieldsOf(Record.Fields);
        bool Changed = false;
        return Seconds([&] { Must(RenumTags(L"TABLE", Fields, Changed)); });
    });
}
BENCHMARK(RenumberDeep)->Apply(Repeated);

void AddInTheMiddle(benchmark::State& State) {
    GrowTable(State, kTimes, [](Desk& On) {
        std::wstring Made;
        Must(On.Core.EditData({.CurrItem = On.Middle(L"FIELDS")}, Made));
    });
}
BENCHMARK(AddInTheMiddle)->Apply(Repeated);

void MoveInTheMiddle(benchmark::State& State) {
    GrowTable(State, kTimes, [](Desk& On) {
        std::wstring Made;
        Must(On.Core.MoveData({.CurrItem = On.Middle(L"FIELDS")}, 1, Made));
    });
}
BENCHMARK(MoveInTheMiddle)->Apply(Repeated);

void DeleteInTheMiddle(benchmark::State& State) {
    GrowTable(State, kTimes,
              [](Desk& On) { Must(On.Core.DeleteData({.CurrItem = On.Middle(L"FIELDS")}, false)); });
}
BENCHMARK(DeleteInTheMiddle)->Apply(Repeated);

// With the check that its name is no other field's.
void SaveOneField(benchmark::State& State) {
    GrowTable(State, kTimes, [](Desk& On) {
        std::wstring Text = L"TAG= 5\r\nNAME= \"ANOTHER NAME\"\r\nDATATYPE= TEXT\r\nLEVEL= 1";
        std::wstring Caption;
        Must(On.Core.SaveData({.CurrItem = On.ParmsOf(On.Middle(L"FIELDS"))}, Text, Caption));
    });
}
BENCHMARK(SaveOneField)->Apply(Repeated);

void DeleteAllFields(benchmark::State& State) {
    GrowTable(State, 1, [](Desk& On) { Must(On.Core.DeleteData({.CurrItem = L"FIELDS"}, true)); });
}
BENCHMARK(DeleteAllFields)->Apply(Repeated);

// As many words on one line as tabs part: each beginning may be a repeat.
void SaveOneLineOfTabs(benchmark::State& State) {
    Grow(State, kPairs, [](std::int32_t Count) {
        Desk On(L"STOPWORD", StopWordRecord().SaveObject());
        Must(On.Core.LoadData());
        std::wstring Text = L"\"" + std::wstring(static_cast<std::size_t>(Count), L'\t') + L"\"=\"\"";
        const std::wstring Leaf = On.Leaf(L"MESSAGE");
        std::wstring Made;
        return Seconds([&] { Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made)); });
    });
}
BENCHMARK(SaveOneLineOfTabs)->Apply(Repeated);

}  // namespace
