#include "com/Failing.h"

#include <array>
#include <new>
#include <string>

#include "com/Ref.h"
#include "com/Values.h"
#include "frame/Failure.h"

namespace kv::com {
namespace {

std::wstring Hexadecimal(HRESULT Result) {
    constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
    std::wstring Text(8, L'0');
    auto Number = static_cast<std::uint32_t>(Result);
    for (auto At = Text.rbegin(); At != Text.rend(); ++At, Number >>= 4U) *At = kDigits[Number & 15U];
    return Text;
}

void KeepInformation(REFIID Interface, std::wstring_view Source, std::wstring_view Text) noexcept {
    try {
        Ref<ICreateErrorInfo> Made;
        if (FAILED(CreateErrorInfo(Made.Out()))) return;
        Made->SetGUID(Interface);
        Made->SetSource(Bstr(Source).Get());
        Made->SetDescription(Bstr(Text).Get());
        if (const Ref<IErrorInfo> Read = As<IErrorInfo>(Made.Get())) SetErrorInfo(0, Read.Get());
    } catch (...) {
        SetErrorInfo(0, nullptr);  // no room for words: the code alone tells
    }
}

}  // namespace

void Check(HRESULT Result, std::wstring_view Member) {
    if (SUCCEEDED(Result)) return;
    if (Result == E_OUTOFMEMORY) throw std::bad_alloc();
    Ref<IErrorInfo> Information;
    Bstr Words;
    if (GetErrorInfo(0, Information.Out()) == S_OK) Information->GetDescription(Words.Out());
    std::wstring Text = Words.Text();
    if (Text.empty()) Text = L"errore " + Hexadecimal(Result);
    if (Member.empty()) Raise(Text);
    RaiseOfHost(Member, Text);
}

void RaiseOfHost(std::wstring_view Member, std::wstring_view Words) {
    std::wstring Text = L"Oggetto dell'applicazione, ";
    Raise(Text.append(Member).append(L": ").append(Words));
}

HRESULT Caught(REFIID Interface, std::wstring_view Source) noexcept {
    try {
        throw;
    } catch (const Refusal& Told) {
        KeepInformation(Interface, Source, Told.Text);
        return Told.Code;
    } catch (const Failure& Told) {
        KeepInformation(Interface, Source, Told.Error().Description);
        return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x200);
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (...) {
        KeepInformation(Interface, Source, L"Errore inatteso");
        return E_UNEXPECTED;
    }
}

}  // namespace kv::com
