// An object of the host taken by the names of its members.
#pragma once

#include <initializer_list>
#include <string_view>

#include "com/Common.h"
#include "com/Failing.h"
#include "com/Ref.h"
#include "com/Values.h"

namespace kv::com {

/// Every call raises when the object fails. A member that is not there raises too, but for the calls that say
/// so.
class ByName {
  public:
    ByName() = default;
    explicit ByName(Ref<IDispatch> Object) noexcept : Object_(std::move(Object)) {}

    explicit operator bool() const noexcept { return static_cast<bool>(Object_); }
    IDispatch* Object() const noexcept { return Object_.Get(); }

    /// `Arguments` stand in the order of the call; one that holds a reference is in/out. Absent where nothing
    /// bears the name.
    std::optional<Variant> TryGet(const wchar_t* Name,
                                  std::initializer_list<const VARIANT*> Arguments = {}) const;
    std::optional<Variant> TryCall(const wchar_t* Name,
                                   std::initializer_list<const VARIANT*> Arguments = {}) const;
    /// False where nothing bears the name. The last argument is the value.
    bool TryPut(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const;

    /// Whether something bears the name.
    bool Has(const wchar_t* Name) const;

    Variant Get(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments = {}) const;
    Variant Call(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments = {}) const;
    void Put(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const;

    // The same, with the answer read by one of TextOf, NumberOf, FlagOf, ObjectOf.
    template <class T>
    std::optional<T> TryGet(const wchar_t* Name, T (*Read)(const VARIANT&),
                            std::initializer_list<const VARIANT*> Arguments = {}) const {
        return Answer(Name, TryGet(Name, Arguments), Read);
    }
    template <class T>
    std::optional<T> TryCall(const wchar_t* Name, T (*Read)(const VARIANT&),
                             std::initializer_list<const VARIANT*> Arguments = {}) const {
        return Answer(Name, TryCall(Name, Arguments), Read);
    }
    template <class T>
    T Get(const wchar_t* Name, T (*Read)(const VARIANT&),
          std::initializer_list<const VARIANT*> Arguments = {}) const {
        return Taken(Name, Get(Name, Arguments).Get(), Read);
    }
    template <class T>
    T Call(const wchar_t* Name, T (*Read)(const VARIANT&),
           std::initializer_list<const VARIANT*> Arguments = {}) const {
        return Taken(Name, Call(Name, Arguments).Get(), Read);
    }

  private:
    template <class T>
    static std::optional<T> Answer(const wchar_t* Name, const std::optional<Variant>& Answered,
                                   T (*Read)(const VARIANT&)) {
        if (!Answered) return std::nullopt;
        return Taken(Name, Answered->Get(), Read);
    }
    bool FindId(const wchar_t* Name, DISPID& Id) const;
    HRESULT Invoke(DISPID Id, WORD Flags, std::initializer_list<const VARIANT*> Arguments, Variant& Result,
                   std::wstring& Words) const;
    std::optional<Variant> Try(const wchar_t* Name, WORD First, WORD Second,
                               std::initializer_list<const VARIANT*> Arguments) const;

    Ref<IDispatch> Object_;
};

/// A variable that is handed over by reference.
class InOut {
  public:
    explicit InOut(Variant Start) noexcept : Value_(std::move(Start)) {
        VariantInit(&Reference_);
        Reference_.vt = VT_VARIANT | VT_BYREF;
        Reference_.pvarVal = &Value_.Get();
    }
    InOut(const InOut&) = delete;
    InOut& operator=(const InOut&) = delete;

    const VARIANT* Argument() const noexcept { return &Reference_; }
    const VARIANT& Value() const noexcept { return Value_.Get(); }

  private:
    Variant Value_;
    VARIANT Reference_;
};

}  // namespace kv::com
