// The tree of 1,000, 100,000 and 1,000,000 nodes, in three levels and in one wide level: built, then 10,000
// nodes inserted before others, asked for their place among their siblings and taken out again, all at places
// spread by chance. One run does all of it and tells the processor time of each part, in nanoseconds an
// operation, and the heap that a node takes beside its strings.
//
// We find a node by its key; QStandardItemModel, which knows no keys, is asked by the item itself, and keeps
// the key as a value of its own. The floor is a vector of the same records and, where a record is asked for
// by its place, a vector of pointers to them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <memory>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Allocations.h"
#include "window/TreeModel.h"

#ifdef KV_PEER_QT
#include <QHash>
#include <QStandardItemModel>
#include <QString>
#endif

namespace {

using namespace kv;

constexpr std::size_t kEdits = 10000;

struct Record {
    std::size_t Parent;  // place in the list of records; the root's is its own
    std::wstring Key;
    std::wstring Text;
};
using Records = std::vector<Record>;

Record Numbered(std::size_t Parent, std::size_t Number) {
    const std::wstring Digits = std::to_wstring(Number);
    return {Parent, L"FIELD-" + Digits, L"Field " + Digits};
}

// The root and `Count` nodes below it, `Wide` of them under each node, in display order.
Records Nodes(std::size_t Count, std::size_t Wide) {
    Records Made;
    Made.reserve(Count + 1);
    Made.push_back({0, L"ROOT", L"Root"});
    const auto Add = [&](std::size_t Parent) {
        Made.push_back(Numbered(Parent, Made.size()));
        return Made.size() - 1;
    };
    while (Made.size() <= Count) {
        const std::size_t Top = Add(0);
        for (std::size_t I = 0; Wide < Count && I < Wide && Made.size() <= Count; ++I) {
            const std::size_t Middle = Add(Top);
            for (std::size_t J = 0; J < Wide && Made.size() <= Count; ++J) Add(Middle);
        }
    }
    return Made;
}

class OurTree {
  public:
    using Handle = std::wstring_view;
    explicit OurTree(const Records& From) : From_(From) {
        Tree_.AddNode({.Key = From[0].Key, .Text = From[0].Text});
        for (std::size_t I = 1; I < From.size(); ++I)
            Tree_.AddNode({.Relative = From[From[I].Parent].Key, .Key = From[I].Key, .Text = From[I].Text});
    }
    Handle InsertBefore(std::size_t Next, const Record& New) {
        Tree_.AddNode({.Relative = From_[Next].Key,
                       .Relationship = relation::kBefore,
                       .Key = New.Key,
                       .Text = New.Text});
        return New.Key;
    }
    std::int32_t Place(Handle Of) const { return Tree_.NodeId(Of); }
    void Remove(Handle Of) { Tree_.RemoveNode(Of); }

    static std::wstring Copied(const std::wstring& Text) { return Text; }

  private:
    const Records& From_;
    window::TreeModel Tree_;
};

#ifdef KV_PEER_QT
// By the item at hand.
class QtTree {
  public:
    using Handle = QStandardItem*;
    explicit QtTree(const Records& From) {
        Items_.reserve(From.size());
        for (const Record& One : From) {
            Items_.push_back(ItemOf(One));
            QStandardItem* const Parent =
                Items_.size() == 1 ? Model_.invisibleRootItem() : Items_[One.Parent];
            Parent->appendRow(Items_.back());
        }
    }
    Handle InsertBefore(std::size_t Next, const Record& New) {
        QStandardItem* const Item = ItemOf(New);
        Items_[Next]->parent()->insertRow(Items_[Next]->row(), Item);
        return Item;
    }
    std::int32_t Place(Handle Of) const { return Of->row() + 1; }
    void Remove(Handle Of) { Of->parent()->removeRow(Of->row()); }

    static QString Copied(const std::wstring& Text) { return QString::fromStdWString(Text); }
    static QStandardItem* ItemOf(const Record& Of) {
        auto* const Item = new QStandardItem(Copied(Of.Text));
        Item->setData(Copied(Of.Key), Qt::UserRole);
        return Item;
    }

  private:
    QStandardItemModel Model_;
    std::vector<QStandardItem*> Items_;
};

// By the key, as our nodes are found: with a hash of the keys beside the model. The keys of the calls are
// ready.
class QtKeyTree {
  public:
    using Handle = QString;
    explicit QtKeyTree(const Records& From) {
        for (const Record& One : From) Keys_.push_back(QtTree::Copied(One.Key));
        for (std::size_t I = 0; I < From.size(); ++I)
            Put(I == 0 ? Model_.invisibleRootItem() : Items_.value(Keys_[From[I].Parent]), -1, From[I]);
    }
    Handle InsertBefore(std::size_t Next, const Record& New) {
        const QStandardItem* const Item = Items_.value(Keys_[Next]);
        return Put(Item->parent(), Item->row(), New);
    }
    std::int32_t Place(const Handle& Of) const { return Items_.value(Of)->row() + 1; }
    void Remove(const Handle& Of) {
        const QStandardItem* const Item = Items_.take(Of);
        Item->parent()->removeRow(Item->row());
    }

    static QString Copied(const std::wstring& Text) { return QtTree::Copied(Text); }

  private:
    // Before a place, last for -1. The hash and the item share the key.
    QString Put(QStandardItem* Parent, int Before, const Record& New) {
        QStandardItem* const Item = QtTree::ItemOf(New);
        const QString Key = Item->data(Qt::UserRole).toString();
        Items_.insert(Key, Item);
        if (Before < 0)
            Parent->appendRow(Item);
        else
            Parent->insertRow(Before, Item);
        return Key;
    }

    QStandardItemModel Model_;
    QHash<QString, QStandardItem*> Items_;
    std::vector<QString> Keys_;
};
#endif

// Only the siblings of one wide level.
class VectorTree {
  public:
    using Handle = const Record*;
    explicit VectorTree(const Records& From) {
        for (const Record& One : From) Records_.push_back(One);
        for (const Record& One : Records_) Siblings_.push_back(&One);
    }
    Handle InsertBefore(std::size_t Next, const Record& New) {
        Siblings_.insert(Siblings_.begin() + static_cast<std::ptrdiff_t>(Next), &New);
        return &New;
    }
    std::int32_t Place(Handle Of) const {
        return static_cast<std::int32_t>(std::find(Siblings_.begin(), Siblings_.end(), Of) -
                                         Siblings_.begin());
    }
    void Remove(Handle Of) { Siblings_.erase(Siblings_.begin() + Place(Of)); }

    static std::wstring Copied(const std::wstring& Text) { return Text; }

  private:
    Records Records_;
    std::vector<const Record*> Siblings_;
};

double Seconds(auto&& Work) {
    const auto Now = [] {
        timespec Time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &Time);
        return static_cast<double>(Time.tv_sec) + 1e-9 * static_cast<double>(Time.tv_nsec);
    };
    const double Start = Now();
    Work();
    return Now() - Start;
}

// Heap that the strings of the nodes take by themselves.
template <class Tree>
std::size_t HeapOfStrings(const Records& Of) {
    using String = decltype(Tree::Copied(Of[0].Key));
    std::vector<String> Copies;
    Copies.reserve(2 * Of.size());
    const std::size_t Before = bench::HeapInUse();
    for (const Record& One : Of) {
        Copies.push_back(Tree::Copied(One.Key));
        Copies.push_back(Tree::Copied(One.Text));
    }
    return bench::HeapInUse() - Before;
}

template <class Tree>
void Run(benchmark::State& State, std::size_t Count, std::size_t Wide) {
    const Records From = Nodes(Count, Wide);
    Records More;
    for (std::size_t I = 1; I <= kEdits; ++I) More.push_back(Numbered(0, From.size() + I));
    std::mt19937 Random(1);
    std::vector<std::size_t> Order(kEdits);
    std::iota(Order.begin(), Order.end(), 0U);
    std::shuffle(Order.begin(), Order.end(), Random);
    // Any node but the root, so that three levels are met as often as they have nodes.
    std::vector<std::size_t> Next(kEdits);
    std::uniform_int_distribution<std::size_t> Any(1, From.size() - 1);
    for (std::size_t& At : Next) At = Any(Random);
    const std::size_t Strings = HeapOfStrings<Tree>(From);

    double Build = 1e9;
    double Insert = 1e9;
    double Place = 1e9;
    double Remove = 1e9;
    double Bytes = 0;
    const int Turns = Count < 10000 ? 20 : Count < 1000000 ? 3 : 1;
    for (auto _ : State) {
        for (int Turn = 0; Turn < Turns; ++Turn) {
            std::unique_ptr<Tree> On;
            const std::size_t Before = bench::HeapInUse();
            Build = std::min(Build, Seconds([&] { On = std::make_unique<Tree>(From); }));
            Bytes = static_cast<double>(bench::HeapInUse() - Before) - static_cast<double>(Strings);
            std::vector<typename Tree::Handle> Added(kEdits);
            Insert = std::min(Insert, Seconds([&] {
                                  for (std::size_t I = 0; I < kEdits; ++I)
                                      Added[I] = On->InsertBefore(Next[I], More[I]);
                              }));
            Place = std::min(Place, Seconds([&] {
                                 for (const std::size_t I : Order)
                                     benchmark::DoNotOptimize(On->Place(Added[I]));
                             }));
            Remove = std::min(Remove, Seconds([&] {
                                  for (const std::size_t I : Order) On->Remove(Added[I]);
                              }));
        }
    }
    State.counters["build"] = 1e9 * Build / static_cast<double>(From.size());
    State.counters["insert"] = 1e9 * Insert / kEdits;
    State.counters["place"] = 1e9 * Place / kEdits;
    State.counters["remove"] = 1e9 * Remove / kEdits;
    State.counters["bytes"] = Bytes / static_cast<double>(From.size());
}

[[maybe_unused]] const bool kRegistered = [] {
    struct Shape {
        std::string_view Name;
        std::size_t Count;
        std::size_t Wide;
    };
    constexpr Shape kShapes[] = {
        {"1000 in three levels", 1000, 10},        {"1000 wide", 1000, 1000},
        {"100000 in three levels", 100000, 46},    {"100000 wide", 100000, 100000},
        {"1000000 in three levels", 1000000, 100}, {"1000000 wide", 1000000, 1000000},
    };
    for (const Shape& Of : kShapes) {
        const auto Named = [&](std::string_view Who, auto* Work) {
            benchmark::RegisterBenchmark(
                std::string("Tree/").append(Of.Name).append("/").append(Who).c_str(),
                [Work, Of](benchmark::State& State) { Work(State, Of.Count, Of.Wide); })
                ->Iterations(1)
                ->Repetitions(Of.Count < 1000000 ? 5 : 2)  // of a million a second or more each
                ->Unit(benchmark::kMillisecond);
        };
        Named("ours", Run<OurTree>);
#ifdef KV_PEER_QT
        Named("QStandardItemModel", Run<QtTree>);
        Named("QStandardItemModel with a hash of keys", Run<QtKeyTree>);
#endif
        if (Of.Wide == Of.Count) Named("floor: vector", Run<VectorTree>);
    }
    return true;
}();

}  // namespace
