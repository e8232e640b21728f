#include "com/Values.h"

#include <limits>
#include <new>
#include <vector>

#include "com/Failing.h"

namespace kv::com {
namespace {

/// The value behind a reference, in a variant of its own.
Variant Plain(const VARIANT& Value) {
    Variant Copied;
    Check(VariantCopyInd(&Copied.Get(), const_cast<VARIANT*>(&Value)), L"");
    return Copied;
}

Variant Changed(const VARIANT& Value, VARTYPE Type) {
    Variant Made = Plain(Value);
    if (Made.Get().vt == VT_EMPTY || Made.Get().vt == VT_NULL) {
        VARIANT Nothing;
        VariantInit(&Nothing);
        Check(VariantChangeType(&Made.Get(), &Nothing, 0, Type), L"");
        return Made;
    }
    // Numbers as the system writes them everywhere, not as the operator's country does.
    if (FAILED(VariantChangeTypeEx(&Made.Get(), &Made.Get(), LOCALE_INVARIANT, 0, Type)))
        throw Refusal(DISP_E_TYPEMISMATCH, L"Tipo di valore non ammesso");
    return Made;
}

class Lock {
  public:
    explicit Lock(SAFEARRAY* Of) : Of_(Of) { Check(SafeArrayLock(Of), L""); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { SafeArrayUnlock(Of_); }

  private:
    SAFEARRAY* Of_;
};

}  // namespace

std::wstring FromBstr(BSTR Text) { return Text ? std::wstring(Text, SysStringLen(Text)) : std::wstring(); }

BSTR ToBstr(std::wstring_view Text) {
    if (Text.size() > std::numeric_limits<UINT>::max() / sizeof(wchar_t)) throw std::bad_alloc();
    const BSTR Made = SysAllocStringLen(Text.data(), static_cast<UINT>(Text.size()));
    if (!Made) throw std::bad_alloc();
    return Made;
}

std::wstring TextOf(const VARIANT& Value) {
    if (Value.vt == VT_BSTR) return FromBstr(Value.bstrVal);
    return FromBstr(Changed(Value, VT_BSTR).Get().bstrVal);
}

std::int32_t NumberOf(const VARIANT& Value) {
    return static_cast<std::int32_t>(Changed(Value, VT_I4).Get().lVal);
}

bool FlagOf(const VARIANT& Value) { return Changed(Value, VT_BOOL).Get().boolVal != VARIANT_FALSE; }

Ref<IDispatch> ObjectOf(const VARIANT& Value) {
    const Variant Held = Plain(Value);
    switch (Held.Get().vt) {
        case VT_EMPTY:
        case VT_NULL:
            return {};
        case VT_DISPATCH:
            return Ref<IDispatch>(Held.Get().pdispVal);
        case VT_UNKNOWN: {
            Ref<IDispatch> Found = As<IDispatch>(Held.Get().punkVal);
            if (Found || !Held.Get().punkVal) return Found;
            break;
        }
        default:
            break;
    }
    throw Refusal(DISP_E_TYPEMISMATCH, L"Non è un oggetto");
}

bool IsAbsent(const VARIANT& Value) noexcept {
    return Value.vt == VT_EMPTY || (Value.vt == VT_ERROR && Value.scode == DISP_E_PARAMNOTFOUND);
}

std::optional<RegValue> ToRegValue(const VARIANT& Value) {
    const Variant Held = Plain(Value);
    switch (Held.Get().vt) {
        case VT_EMPTY:
        case VT_NULL:
            return std::nullopt;
        case VT_BSTR:
            return RegValue(FromBstr(Held.Get().bstrVal));
        case VT_BOOL:
            return RegValue(Held.Get().boolVal != VARIANT_FALSE);
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_I8:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
        case VT_UINT:
            return RegValue(NumberOf(Held.Get()));
        case VT_R4:
        case VT_R8: {
            // A script keeps whole numbers so as well.
            const double Number =
                Held.Get().vt == VT_R4 ? static_cast<double>(Held.Get().fltVal) : Held.Get().dblVal;
            if (Number >= std::numeric_limits<std::int32_t>::min() &&
                Number <= std::numeric_limits<std::int32_t>::max() &&
                Number == static_cast<double>(static_cast<std::int32_t>(Number)))
                return RegValue(static_cast<std::int32_t>(Number));
            break;
        }
        default:
            break;
    }
    throw Refusal(DISP_E_TYPEMISMATCH, L"Tipo di valore non ammesso");
}

Variant FromRegValue(const RegValue& Value) {
    if (const auto* Text = std::get_if<std::wstring>(&Value)) return Variant(std::wstring_view(*Text));
    if (const auto* Flag = std::get_if<bool>(&Value)) return Variant(*Flag);
    return Variant(std::get<std::int32_t>(Value));
}

Variant ToArray(std::span<const std::wstring_view> Words) {
    Variant Made;
    SAFEARRAY* const Array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(Words.size()));
    if (!Array) throw std::bad_alloc();
    Made.Get().vt = VT_ARRAY | VT_VARIANT;
    Made.Get().parray = Array;
    const Lock Locked(Array);
    auto* Place = static_cast<VARIANT*>(Array->pvData);
    for (const std::wstring_view Word : Words) *Place++ = Variant(Word).Detach();
    return Made;
}

std::vector<std::wstring> FromArray(const VARIANT& Words) {
    const Variant Held = Plain(Words);
    const VARTYPE Type = Held.Get().vt;
    if ((Type != (VT_ARRAY | VT_VARIANT) && Type != (VT_ARRAY | VT_BSTR)) || !Held.Get().parray ||
        SafeArrayGetDim(Held.Get().parray) != 1)
        throw Refusal(DISP_E_TYPEMISMATCH, L"Non è un elenco di parole");
    SAFEARRAY* const Array = Held.Get().parray;
    const Lock Locked(Array);
    std::vector<std::wstring> Made;
    for (ULONG I = 0; I < Array->rgsabound[0].cElements; ++I)
        Made.push_back(Type == (VT_ARRAY | VT_BSTR) ? FromBstr(static_cast<BSTR*>(Array->pvData)[I])
                                                    : TextOf(static_cast<VARIANT*>(Array->pvData)[I]));
    return Made;
}

}  // namespace kv::com
