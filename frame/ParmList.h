// The keyed list of the system: every list of a record is one, and the small option bags are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frame/Failure.h"

namespace kv {

/// What can be done with a list without knowing its elements.
class ParmListBase {
  public:
    virtual ~ParmListBase() = default;
    virtual std::int32_t Count() const noexcept = 0;
    /// Takes the element at `From` out and puts it back so that it stands at `To`, both 1-based.
    /// Raises the subscript fault when either is no place of the list; the list is then as it was.
    virtual void Move(std::int32_t From, std::int32_t To) = 0;
    /// Takes the element at `Index` out; the subscript fault as above.
    virtual void Remove(std::int32_t Index) = 0;
    /// Takes all elements out.
    virtual void Clear() noexcept = 0;

  protected:
    ParmListBase() = default;
    ParmListBase(const ParmListBase&) = default;
    ParmListBase(ParmListBase&&) = default;
    ParmListBase& operator=(const ParmListBase&) = default;
    ParmListBase& operator=(ParmListBase&&) = default;
};

/// Keyed list of elements, 1-based. The list owns its elements; an element keeps its address until it is
/// removed. Copying copies the elements. Places outside the list raise the subscript fault, a key that is
/// taken raises fault 457; both leave the list as it was.
template <class T>
class ParmList final : public ParmListBase {
  public:
    ParmList() = default;
    ParmList(ParmList&&) noexcept = default;
    ParmList& operator=(ParmList&&) noexcept = default;
    ~ParmList() override = default;

    ParmList(const ParmList& Other) {
        Entries_.reserve(Other.Entries_.size());
        for (const Entry& E : Other.Entries_) Add(*E.Element, E.Key);
    }
    ParmList& operator=(const ParmList& Other) {
        if (this != &Other) *this = ParmList(Other);
        return *this;
    }

    /// Adds `Item` at the end, or before place `Before`, or behind place `After`; `Key`, when not empty, is
    /// the key by which it can be found. Answers the element in the list.
    T& Add(T Item, std::wstring_view Key = {}, std::optional<std::int32_t> Before = {},
           std::optional<std::int32_t> After = {}) {
        std::size_t Place = Entries_.size();
        if (Before)
            Place = Slot(*Before);
        else if (After)
            Place = Slot(*After) + 1;
        if (!Key.empty() && Exists(Key)) RaiseFault(fault::kKeyTaken);
        auto Element = std::make_unique<T>(std::move(Item));
        T& Added = *Element;
        if (Entries_.size() == Entries_.capacity())
            Entries_.reserve(Entries_.empty() ? 4 : 2 * Entries_.size());
        Entry New{std::move(Element), std::wstring(Key)};
        if (!Key.empty()) {
            if (!Keys_) Keys_ = std::make_unique<Keys>();
            Keys_->emplace(New.Key, &Added);
        }
        Entries_.insert(Entries_.begin() + static_cast<std::ptrdiff_t>(Place), std::move(New));
        return Added;
    }

    void Remove(std::int32_t Index) override {
        const auto At = Entries_.begin() + static_cast<std::ptrdiff_t>(Slot(Index));
        if (!At->Key.empty()) Keys_->erase(At->Key);
        Entries_.erase(At);
    }

    std::int32_t Count() const noexcept override { return static_cast<std::int32_t>(Entries_.size()); }

    T& Item(std::int32_t Index) { return *Entries_[Slot(Index)].Element; }
    const T& Item(std::int32_t Index) const { return *Entries_[Slot(Index)].Element; }

    bool Exists(std::wstring_view Key) const { return Find(Key) != nullptr; }

    /// The element of that key, null when there is none.
    const T* Find(std::wstring_view Key) const {
        if (!Keys_) return nullptr;
        const auto At = Keys_->find(std::wstring(Key));
        return At == Keys_->end() ? nullptr : At->second;
    }

    void Clear() noexcept override {
        Keys_.reset();
        Entries_.clear();
    }

    void Move(std::int32_t From, std::int32_t To) override {
        const std::size_t Source = Slot(From);
        const std::size_t Target = Slot(To);
        const auto Begin = Entries_.begin();
        const auto At = [&](std::size_t Place) { return Begin + static_cast<std::ptrdiff_t>(Place); };
        if (Source < Target)
            std::rotate(At(Source), At(Source + 1), At(Target + 1));
        else
            std::rotate(At(Target), At(Source), At(Source + 1));
    }

    /// Equal elements in the same order. Keys are not part of what a list holds: they are not stored.
    friend bool operator==(const ParmList& A, const ParmList& B) {
        return std::equal(A.Entries_.begin(), A.Entries_.end(), B.Entries_.begin(), B.Entries_.end(),
                          [](const Entry& X, const Entry& Y) { return *X.Element == *Y.Element; });
    }

  private:
    struct Entry {
        std::unique_ptr<T> Element;
        std::wstring Key;
    };

    std::size_t Slot(std::int32_t Index) const {
        if (Index < 1 || Index > Count()) RaiseFault(fault::kSubscript);
        return static_cast<std::size_t>(Index) - 1;
    }

    std::vector<Entry> Entries_;
    // Null until an element has a key: few lists have keys, and records have many lists.
    using Keys = std::unordered_map<std::wstring, T*>;
    std::unique_ptr<Keys> Keys_;
};

}  // namespace kv
