// What every object of the component is made of: counting, its interfaces, and the late-bound half of each.
#pragma once

#include <atomic>

#include "com/Common.h"
#include "com/Module.h"
#include "com/Ref.h"

namespace kv::com {

namespace detail {
HRESULT TypeInformation(REFIID Interface, UINT Which, ITypeInfo** Into) noexcept;
HRESULT IdsOfNames(REFIID Interface, LPOLESTR* Names, UINT Count, DISPID* Ids) noexcept;
/// Calls `Object`, which is the interface told, by its type library. What the system takes of a script is
/// widened: a variant by reference, or a value, serves an in/out argument of any type.
HRESULT Call(void* Object, REFIID Interface, DISPID Id, WORD Flags, DISPPARAMS* Arguments, VARIANT* Result,
             EXCEPINFO* Information, UINT* Wrong) noexcept;
}  // namespace detail

/// One dual interface with its late-bound half.
template <class I>
class Dual : public I {
  public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Count) override {
        if (!Count) return E_POINTER;
        *Count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT Which, LCID, ITypeInfo** Into) override {
        return detail::TypeInformation(__uuidof(I), Which, Into);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID Reserved, LPOLESTR* Names, UINT Count, LCID,
                                            DISPID* Ids) override {
        if (Reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        return detail::IdsOfNames(__uuidof(I), Names, Count, Ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID Reserved, LCID, WORD Flags, DISPPARAMS* Arguments,
                                     VARIANT* Result, EXCEPINFO* Information, UINT* Wrong) override {
        if (Reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        return detail::Call(static_cast<I*>(this), __uuidof(I), Id, Flags, Arguments, Result, Information,
                            Wrong);
    }

  protected:
    ~Dual() = default;
};

/// An object with a default interface and further ones. It lives on the heap, made by Make.
template <class Default, class... Further>
class ComObject : public Dual<Default>, public Dual<Further>..., public ISupportErrorInfo {
  public:
    using Main = Default;

    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Into) override {
        if (!Into) return E_POINTER;
        *Into = Find(Wanted);
        if (!*Into) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++Count_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG Left = --Count_;
        if (Left == 0) {
            Count_ = 1;  // what the end itself hands out and takes back does not end it twice
            delete this;
        }
        return Left;
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID Wanted) override {
        return Wanted == __uuidof(Default) || ((Wanted == __uuidof(Further)) || ...) ? S_OK : S_FALSE;
    }

  protected:
    virtual ~ComObject() = default;
    /// An interface that stands in no library: how an object of this file knows another one.
    virtual void* FindOwn(REFIID) noexcept { return nullptr; }

  private:
    void* Find(REFIID Wanted) noexcept {
        if (Wanted == __uuidof(IUnknown) || Wanted == __uuidof(IDispatch) || Wanted == __uuidof(Default))
            return static_cast<Default*>(this);
        if (Wanted == __uuidof(ISupportErrorInfo)) return static_cast<ISupportErrorInfo*>(this);
        void* Found = nullptr;
        static_cast<void>(
            ((Wanted == __uuidof(Further) && (Found = static_cast<Further*>(this), true)) || ...));
        return Found ? Found : FindOwn(Wanted);
    }

    std::atomic<ULONG> Count_{0};
    module::Holder Holder_;
};

template <class T, class... Arguments>
Ref<T> Make(Arguments&&... With) {
    return Ref<T>(new T(std::forward<Arguments>(With)...));
}

/// The object behind an interface pointer when it is a `T` of this file itself; `T` has a kOwn.
template <class T>
Ref<T> OwnOf(IUnknown* Object) noexcept {
    Ref<T> Found;
    if (Object && FAILED(Object->QueryInterface(T::kOwn, Found.OutVoid()))) Found.Detach();
    return Found;
}

/// An object's default interface, for those who hand it on.
template <class T>
Ref<IDispatch> ToDispatch(const Ref<T>& Of) noexcept {
    return Ref<IDispatch>(static_cast<typename T::Main*>(Of.Get()));
}

}  // namespace kv::com
