// How a method of the component fails: an error code and error information, and nothing else.
#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "com/Common.h"

namespace kv::com {

/// What a method throws that refuses its arguments or the moment.
class Refusal final : public std::exception {
  public:
    Refusal(HRESULT Reason, std::wstring_view Words) : Code(Reason), Text(Words) {}
    const char* what() const noexcept override { return "kv::com::Refusal"; }

    HRESULT Code;
    std::wstring Text;
};

/// Raises the failure of a call on an object of the host (or of the system): the words of its error
/// information, or its code. `Member` is what was called.
void Check(HRESULT Result, std::wstring_view Member);
/// Raises what a member of the host's object has done wrong.
[[noreturn]] void RaiseOfHost(std::wstring_view Member, std::wstring_view Words);

/// What the host has put into a place of `Member`, read by `Read`; raises where it is of a wrong type.
template <class T>
T Taken(std::wstring_view Member, const VARIANT& Held, T (*Read)(const VARIANT&)) {
    try {
        return Read(Held);
    } catch (const Refusal& Wrong) {
        RaiseOfHost(Member, Wrong.Text);
    }
}

/// Throws for a null pointer.
template <class T>
T& Told(T* Pointer) {
    if (!Pointer) throw Refusal(E_POINTER, L"Manca un argomento");
    return *Pointer;
}

/// Puts what `Make` answers into the caller's place, which is empty where something fails.
template <class T, class Maker>
void Give(T* Into, Maker&& Make) {
    T& Place = Told(Into);
    Place = T{};
    Place = std::invoke(std::forward<Maker>(Make));
}

/// Makes of the exception in flight an error code, and error information under the interface and source.
HRESULT Caught(REFIID Interface, std::wstring_view Source) noexcept;

/// The frame of every method. The one catch.
template <class Body>
HRESULT Guard(REFIID Interface, std::wstring_view Source, Body&& Run) noexcept {
    SetErrorInfo(0, nullptr);  // what an earlier call has left is not told of this one
    try {
        std::invoke(std::forward<Body>(Run));
        return S_OK;
    } catch (...) {
        return Caught(Interface, Source);
    }
}

}  // namespace kv::com
