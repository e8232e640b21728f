// A counted reference to an object of the component object model.
#pragma once

#include <utility>

#include "com/Common.h"

namespace kv::com {

template <class I>
class Ref {
  public:
    Ref() = default;
    /// Shares the object, null for none.
    explicit Ref(I* Shared) noexcept : Held_(Shared) {
        if (Held_) Held_->AddRef();
    }
    Ref(const Ref& Other) noexcept : Ref(Other.Held_) {}
    Ref(Ref&& Other) noexcept : Held_(std::exchange(Other.Held_, nullptr)) {}
    ~Ref() { Clear(); }
    Ref& operator=(Ref Other) noexcept {
        std::swap(Held_, Other.Held_);
        return *this;
    }

    I* Get() const noexcept { return Held_; }
    I* operator->() const noexcept { return Held_; }
    explicit operator bool() const noexcept { return Held_ != nullptr; }

    void Clear() noexcept {
        if (I* const Gone = std::exchange(Held_, nullptr)) Gone->Release();
    }
    /// Where a call puts the object that it hands over.
    I** Out() noexcept {
        Clear();
        return &Held_;
    }
    /// Where a call puts another object in the place of this one, which it releases.
    I** InOut() noexcept { return &Held_; }
    void** OutVoid() noexcept { return reinterpret_cast<void**>(Out()); }
    /// The object with its count, for a caller who takes it over.
    I* Detach() noexcept { return std::exchange(Held_, nullptr); }

  private:
    I* Held_ = nullptr;
};

/// The object by another of its interfaces; nothing where it has not got it.
template <class I>
Ref<I> As(IUnknown* Object) noexcept {
    Ref<I> Found;
    if (Object && FAILED(Object->QueryInterface(__uuidof(I), Found.OutVoid()))) Found.Detach();
    return Found;
}

}  // namespace kv::com
