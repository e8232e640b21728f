// Strings and variants of the system, as the core's values and back.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/Common.h"
#include "com/Ref.h"
#include "frame/RegData.h"

namespace kv::com {

/// A null string is the empty one; a null character inside counts as any other.
std::wstring FromBstr(BSTR Text);
/// Throws bad_alloc.
BSTR ToBstr(std::wstring_view Text);

/// Owns a string of the system.
class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(std::wstring_view Text) : Text_(ToBstr(Text)) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(Text_); }

    BSTR Get() const noexcept { return Text_; }
    BSTR* Out() noexcept { return &Text_; }
    BSTR Detach() noexcept { return std::exchange(Text_, nullptr); }
    std::wstring Text() const { return FromBstr(Text_); }

  private:
    BSTR Text_ = nullptr;
};

/// Owns a variant.
class Variant {
  public:
    Variant() noexcept { VariantInit(&Held_); }
    explicit Variant(std::wstring_view Text) : Variant() {
        Held_.bstrVal = ToBstr(Text);
        Held_.vt = VT_BSTR;
    }
    explicit Variant(std::int32_t Number) noexcept : Variant() {
        Held_.vt = VT_I4;
        Held_.lVal = Number;
    }
    explicit Variant(bool Flag) noexcept : Variant() {
        Held_.vt = VT_BOOL;
        Held_.boolVal = Flag ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit Variant(const wchar_t*) = delete;
    /// Shares the object, null for Nothing.
    explicit Variant(IDispatch* Object) noexcept : Variant() {
        Held_.vt = VT_DISPATCH;
        Held_.pdispVal = Object;
        if (Object) Object->AddRef();
    }
    Variant(Variant&& Other) noexcept : Held_(Other.Held_) { VariantInit(&Other.Held_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&Held_); }

    /// An argument left out.
    static Variant Absent() noexcept {
        Variant Made;
        Made.Held_.vt = VT_ERROR;
        Made.Held_.scode = DISP_E_PARAMNOTFOUND;
        return Made;
    }

    VARIANT& Get() noexcept { return Held_; }
    const VARIANT& Get() const noexcept { return Held_; }
    VARIANT* Out() noexcept {
        VariantClear(&Held_);
        return &Held_;
    }
    VARIANT Detach() noexcept {
        const VARIANT Given = Held_;
        VariantInit(&Held_);
        return Given;
    }

  private:
    VARIANT Held_;
};

/// What a variant holds; raises where it can't be read as that. Empty and Null are "", 0, False, nothing.
std::wstring TextOf(const VARIANT& Value);
std::int32_t NumberOf(const VARIANT& Value);
bool FlagOf(const VARIANT& Value);
Ref<IDispatch> ObjectOf(const VARIANT& Value);
/// Whether an optional argument was left out.
bool IsAbsent(const VARIANT& Value) noexcept;

/// A value of a stored object; none for Empty and Null. Raises for what is no number, Boolean or string.
std::optional<RegValue> ToRegValue(const VARIANT& Value);
Variant FromRegValue(const RegValue& Value);

/// An array of variants that hold strings.
Variant ToArray(std::span<const std::wstring_view> Words);
/// The strings of an array of variants or of strings.
std::vector<std::wstring> FromArray(const VARIANT& Words);

}  // namespace kv::com
