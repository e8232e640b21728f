#include "com/ByName.h"

#include <dispex.h>

#include <vector>

#include "frame/Failure.h"

namespace kv::com {
namespace {

class Exception {
  public:
    Exception() = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception() {
        SysFreeString(Held_.bstrSource);
        SysFreeString(Held_.bstrDescription);
        SysFreeString(Held_.bstrHelpFile);
    }
    EXCEPINFO* Out() noexcept { return &Held_; }
    std::wstring Text() {
        if (Held_.pfnDeferredFillIn) Held_.pfnDeferredFillIn(&Held_);
        Held_.pfnDeferredFillIn = nullptr;
        return FromBstr(Held_.bstrDescription);
    }

  private:
    EXCEPINFO Held_{};
};

}  // namespace

bool ByName::FindId(const wchar_t* Name, DISPID& Id) const {
    if (!Object_) RaiseFault(fault::kNoObject);
    auto* Text = const_cast<LPOLESTR>(Name);
    const HRESULT Found = Object_->GetIDsOfNames(IID_NULL, &Text, 1, LOCALE_USER_DEFAULT, &Id);
    if (SUCCEEDED(Found)) return Id != DISPID_UNKNOWN;
    if (Found == DISP_E_UNKNOWNNAME) return false;
    if (Found != E_NOTIMPL) Check(Found, Name);
    // Objects of some scripts know their names by the extended interface alone.
    const Ref<IDispatchEx> Extended = As<IDispatchEx>(Object_.Get());
    if (!Extended) return false;
    const HRESULT Known =
        Extended->GetDispID(Bstr(std::wstring_view(Name)).Get(), fdexNameCaseInsensitive, &Id);
    if (Known == DISP_E_UNKNOWNNAME) return false;
    Check(Known, Name);
    return Id != DISPID_UNKNOWN;
}

bool ByName::Has(const wchar_t* Name) const {
    DISPID Id = DISPID_UNKNOWN;
    return FindId(Name, Id);
}

HRESULT ByName::Invoke(DISPID Id, WORD Flags, std::initializer_list<const VARIANT*> Arguments,
                       Variant& Result, std::wstring& Words) const {
    std::vector<VARIANT> Reversed;
    for (const VARIANT* Argument : Arguments) Reversed.insert(Reversed.begin(), *Argument);
    DISPPARAMS Passed{};
    Passed.cArgs = static_cast<UINT>(Reversed.size());
    Passed.rgvarg = Reversed.empty() ? nullptr : Reversed.data();
    DISPID Value = DISPID_PROPERTYPUT;
    const bool Puts = (Flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (Puts) {
        Passed.cNamedArgs = 1;
        Passed.rgdispidNamedArgs = &Value;
    }
    Exception Thrown;
    UINT Wrong = 0;
    const HRESULT Called = Object_->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, Flags, &Passed,
                                           Puts ? nullptr : Result.Out(), Thrown.Out(), &Wrong);
    if (Called == DISP_E_EXCEPTION) {
        Words = Thrown.Text();
        if (Words.empty()) Words = L"eccezione";
    }
    return Called;
}

std::optional<Variant> ByName::Try(const wchar_t* Name, WORD First, WORD Second,
                                   std::initializer_list<const VARIANT*> Arguments) const {
    DISPID Id = DISPID_UNKNOWN;
    if (!FindId(Name, Id)) return std::nullopt;
    Variant Result;
    std::wstring Words;
    HRESULT Called = Invoke(Id, First, Arguments, Result, Words);
    if (Called == DISP_E_MEMBERNOTFOUND && Second) Called = Invoke(Id, Second, Arguments, Result, Words);
    if (Called == DISP_E_EXCEPTION) RaiseOfHost(Name, Words);
    Check(Called, Name);
    return Result;
}

std::optional<Variant> ByName::TryGet(const wchar_t* Name,
                                      std::initializer_list<const VARIANT*> Arguments) const {
    return Try(Name, DISPATCH_PROPERTYGET, DISPATCH_METHOD, Arguments);
}

std::optional<Variant> ByName::TryCall(const wchar_t* Name,
                                       std::initializer_list<const VARIANT*> Arguments) const {
    return Try(Name, DISPATCH_METHOD, DISPATCH_METHOD | DISPATCH_PROPERTYGET, Arguments);
}

bool ByName::TryPut(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const {
    const bool Object = Arguments.size() > 0 && (*(Arguments.end() - 1))->vt == VT_DISPATCH;
    return Try(Name, Object ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT,
               Object ? DISPATCH_PROPERTYPUT : 0, Arguments)
        .has_value();
}

namespace {

[[noreturn]] void Lacking(const wchar_t* Name) {
    Raise(L"Oggetto dell'applicazione: manca " + std::wstring(Name));
}

}  // namespace

Variant ByName::Get(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const {
    std::optional<Variant> Found = TryGet(Name, Arguments);
    if (!Found) Lacking(Name);
    return *std::move(Found);
}

Variant ByName::Call(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const {
    std::optional<Variant> Found = TryCall(Name, Arguments);
    if (!Found) Lacking(Name);
    return *std::move(Found);
}

void ByName::Put(const wchar_t* Name, std::initializer_list<const VARIANT*> Arguments) const {
    if (!TryPut(Name, Arguments)) Lacking(Name);
}

}  // namespace kv::com
