// How often an edit takes memory from the heap, and how long it takes: what an operator does on a table of
// 1,000 fields and on a browse, from the window core down to the record. Nothing is stored.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "bench/Allocations.h"
#include "bench/Desk.h"
#include "records/BrowseRecord.h"
#include "records/TableRecord.h"

namespace {

using namespace kv;
using bench::Desk;
using bench::Must;

constexpr std::int32_t kFields = 1000;

RegObject Table() {
    TableRecord Made;
    Made.Name = L"TABELLA";
    Made.Style = 0;
    Made.Index = L"TIT";
    for (std::int32_t I = 1; I <= kFields; ++I) {
        FieldRecord Field;
        Field.Id = I;
        Field.Name = L"FIELD " + std::to_wstring(I);
        Field.DataType = 8;
        Field.Tag = I;
        Field.Level = 1;
        Made.Fields.Add(std::move(Field));
    }
    return Made.SaveObject();
}

RegObject Browse() {
    BrowseRecord Made;
    Made.Name = L"SOGGETTI";
    return Made.SaveObject();
}

struct EditCase {
    std::string_view Name;
    std::wstring_view ClassWord;
    RegObject (*Content)();
    void (*Once)(Desk&);
};

constexpr EditCase kEdits[] = {
    {"31 keywords shown", L"BROWSE", Browse,
     [](Desk& On) {
         std::wstring Text;
         Must(On.Core.DispData({.CurrItem = On.Leaf(L"PARMS")}, Text));
     }},
    {"31 keywords shown and saved", L"BROWSE", Browse,
     [](Desk& On) {
         const std::wstring Leaf = On.Leaf(L"PARMS");
         std::wstring Text;
         std::wstring Made;
         Must(On.Core.DispData({.CurrItem = Leaf}, Text));
         Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
     }},
    {"one keyword refused", L"BROWSE", Browse,
     [](Desk& On) {
         std::wstring Text = L"NOSUCH= 1";
         std::wstring Made;
         Must(!On.Core.SaveData({.CurrItem = On.Leaf(L"PARMS")}, Text, Made));
     }},
    {"field added and deleted", L"TABLE", Table,
     [](Desk& On) {
         std::wstring Made;
         Must(On.Core.EditData({.CurrItem = On.Middle(L"FIELDS")}, Made));
         Must(On.Core.DeleteData({.CurrItem = Made}, false));
     }},
    {"field moved up and down", L"TABLE", Table,
     [](Desk& On) {
         std::wstring Made;
         Must(On.Core.MoveData({.CurrItem = On.Middle(L"FIELDS")}, 1, Made));
         Must(On.Core.MoveData({.CurrItem = Made}, -1, Made));
     }},
    {"field saved", L"TABLE", Table,
     [](Desk& On) {
         std::wstring Text = L"TAG= 5000\r\nNAME= \"ANOTHER NAME\"\r\nDATATYPE= TEXT\r\nLEVEL= 1";
         std::wstring Made;
         Must(On.Core.SaveData({.CurrItem = On.ParmsOf(On.Middle(L"FIELDS"))}, Text, Made));
     }},
};

[[maybe_unused]] const bool kRegistered = [] {
    for (const EditCase& Of : kEdits)
        benchmark::RegisterBenchmark(std::string("Edit/").append(Of.Name).append("/ours").c_str(),
                                     [&Of](benchmark::State& State) {
                                         bench::Agreeing Operator;
                                         Desk On(Of.ClassWord, Of.Content());
                                         Must(On.Core.LoadData());
                                         Of.Once(On);  // what is made on first use
                                         const std::int64_t Before = bench::Allocations();
                                         for (auto _ : State) Of.Once(On);
                                         State.counters["allocations"] = benchmark::Counter(
                                             static_cast<double>(bench::Allocations() - Before),
                                             benchmark::Counter::kAvgIterations);
                                     })
            ->Unit(benchmark::kMicrosecond);
    return true;
}();

}  // namespace
