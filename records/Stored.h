// The record protocol. A record states its properties once, in stored order, each with its role; loading,
// saving, CopyTo, reading by name and comparing all come from that one statement.
//
//     struct HtmlRecord final : Stored<HtmlRecord> {
//         static constexpr std::wstring_view kClass = L"HtmlRecord";
//         std::wstring FileName;
//         ParmList<ParmItem> Titles;
//         static constexpr auto Properties(auto With) {
//             return With(Parameter(L"FileName", &HtmlRecord::FileName),
//                         List(L"Titles", &HtmlRecord::Titles));
//         }
//     };
//
// `With` is called with all of them at once. What the operations do stands in StoredBody.h, and each record
// is made there once: a new one wants its line in one of records/*Records.cpp.
//
// In a stored object a scalar property is a named value, a list is a child object with one child an element,
// a record inside the record is a child object too; the names are the property names. An element of a list of
// strings is a child object that holds the string as its text. A property that is absent gets its default;
// what the record does not know is kept and goes back with the next Save.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/Failure.h"
#include "frame/Identity.h"
#include "frame/ParmList.h"
#include "frame/RegData.h"
#include "frame/StrUtil.h"
#include "frame/vDesignPar.h"

namespace kv {

/// What a property is to CopyTo: part of the header (what is not a parameter), a parameter, or a list.
enum class Role { Header, Parameter, List };

template <class Member>
struct Property {
    std::wstring_view Name;
    Member Place;
    Role As;
};

template <std::size_t N, class Member>
constexpr Property<Member> HeaderField(const wchar_t (&Name)[N], Member Place) {
    return {{Name, N - 1}, Place, Role::Header};
}
template <std::size_t N, class Member>
constexpr Property<Member> Parameter(const wchar_t (&Name)[N], Member Place) {
    return {{Name, N - 1}, Place, Role::Parameter};
}
template <std::size_t N, class Member>
constexpr Property<Member> List(const wchar_t (&Name)[N], Member Place) {
    return {{Name, N - 1}, Place, Role::List};
}

namespace detail {

/// `<record>.Load`, `<record>.Save`: made at compile time, since a source must be at hand when memory is not.
inline constexpr std::wstring_view kLoad = L".Load";
inline constexpr std::wstring_view kSave = L".Save";
template <class R, const std::wstring_view& Procedure>
inline constexpr auto kSourceText = [] {
    std::array<wchar_t, R::kClass.size() + Procedure.size()> Text{};
    std::copy(R::kClass.begin(), R::kClass.end(), Text.begin());
    std::copy(Procedure.begin(), Procedure.end(),
              Text.begin() + static_cast<std::ptrdiff_t>(R::kClass.size()));
    return Text;
}();
template <class R, const std::wstring_view& Procedure>
inline constexpr std::wstring_view kSource{kSourceText<R, Procedure>.data(),
                                           kSourceText<R, Procedure>.size()};

template <class T>
concept NestedRecord = requires(const T& Record) {
    { T::kClass } -> std::convertible_to<std::wstring_view>;
    { Record.SaveObject() } -> std::same_as<RegObject>;
};

}  // namespace detail

/// Base of every record and of every element of a list; `R` is the record itself.
template <class R>
struct Stored : Identity {
    /// Fills the record anew from the stored object; `Flags` is passed as 0 and `Extra` as null, neither is
    /// read. True on failure (source "<record>.Load"); the record may then be filled in part.
    [[nodiscard]] bool Load(RegData& From, std::int32_t Flags = 0, const ParmListBase* Extra = nullptr);

    /// Writes the record to the stored object, wholly or not at all. True on failure (source
    /// "<record>.Save").
    [[nodiscard]] bool Save(RegData& To) const;

    /// Copies onto `Target`: identity and header fields always, parameters when `WithParms` and not
    /// `HeaderOnly`, lists when `WithLists` and not HeaderOnly. What does not go over stays in Target as it
    /// is. MakeScratch and Commit are the two settings that parsers use.
    void CopyTo(R& Target, bool WithParms = true, bool WithLists = false, bool HeaderOnly = false) const&;
    /// The same for a scratch that is done with: nothing is copied, and nothing can fail halfway.
    void CopyTo(R& Target, bool WithParms = true, bool WithLists = false,
                bool HeaderOnly = false) && noexcept;

    /// A scratch of this record for a parser: the header has gone over, the parameters are at their defaults.
    R MakeScratch() const;
    /// Commits a scratch that is done with onto `Record`, whose lists stay. Cannot fail.
    void Commit(R& Record) && noexcept;

    /// What a new record bears as its Version.
    static constexpr std::int32_t CurrentVersion() noexcept {
        if constexpr (requires { R::kVersion; })
            return R::kVersion;
        else
            return 1;
    }

    /// The identity or scalar property of that name; nothing for a list, a nested record or a name that it
    /// does not have.
    std::optional<RegValue> ByName(std::wstring_view Wanted) const;

    /// The record as a stored object.
    RegObject SaveObject() const;

    /// Fills a new record. Raises for a value beyond its property's range.
    void LoadObject(const RegObject& From);

    /// Same identity, same properties.
    friend bool operator==(const R& A, const R& B) { return A.SameAs(B); }

  private:
    bool SameAs(const R& Other) const;
    const R& Self() const noexcept { return static_cast<const R&>(*this); }

    template <class Visit>
    static void ForEach(Visit&& Each);

    static bool Knows(std::wstring_view PropertyName);

    template <class Source>
    static void Transfer(Source&& From, R& Target, bool WithParms, bool WithLists, bool HeaderOnly);

    // What a stored object holds beside what the record knows: of the object itself, and of its lists (a
    // child a list, without the elements).
    struct UnknownParts;

    void KeepUnknown(const RegObject& From);

    // Whether a property of that name is one of a kind.
    template <template <class> class Kind>
    static bool KnowsAs(std::wstring_view PropertyName);
    static bool KnowsList(std::wstring_view PropertyName);
    static bool IsChild(std::wstring_view PropertyName);

    std::shared_ptr<const UnknownParts> Unknown_;
};

}  // namespace kv
