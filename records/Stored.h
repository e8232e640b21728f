// The record protocol. A record states its properties once, in stored order, each with its role; loading,
// saving, CopyTo, reading by name and comparing all come from that one statement.
//
//     struct HtmlRecord final : Stored<HtmlRecord> {
//         static constexpr std::wstring_view kClass = L"HtmlRecord";
//         std::wstring FileName;
//         ParmList<ParmItem> Titles;
//         static constexpr auto Properties() {
//             return std::tuple{Parameter(L"FileName", &HtmlRecord::FileName),
//                               List(L"Titles", &HtmlRecord::Titles)};
//         }
//     };
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
#include <tuple>
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

template <class Member>
constexpr Property<Member> HeaderField(std::wstring_view Name, Member Place) {
    return {Name, Place, Role::Header};
}
template <class Member>
constexpr Property<Member> Parameter(std::wstring_view Name, Member Place) {
    return {Name, Place, Role::Parameter};
}
template <class Member>
constexpr Property<Member> List(std::wstring_view Name, Member Place) {
    return {Name, Place, Role::List};
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
    T::Properties();
    Record.SaveObject();
};

template <class T>
struct IsParmList : std::false_type {};
template <class T>
struct IsParmList<ParmList<T>> : std::true_type {
    using Element = T;
};

/// A list or a nested record: what is stored as a child object.
template <class T>
struct IsChild : std::bool_constant<IsParmList<T>::value || NestedRecord<T>> {};

inline RegValue ToRegValue(const std::wstring& Value) { return Value; }
inline RegValue ToRegValue(bool Value) { return Value; }
template <std::integral T>
requires(!std::same_as<T, bool>) RegValue ToRegValue(T Value) { return static_cast<std::int32_t>(Value); }

/// A stored value as a property takes it. A value of another type is converted as its text would read; a
/// number beyond the property's range raises "Overflow".
inline void FromRegValue(const RegValue& Value, std::wstring& Into) {
    if (const auto* Text = std::get_if<std::wstring>(&Value))
        Into = *Text;
    else if (const auto* Flag = std::get_if<bool>(&Value))
        Into = *Flag ? L"True" : L"False";
    else
        Into = std::to_wstring(std::get<std::int32_t>(Value));
}
inline void FromRegValue(const RegValue& Value, bool& Into) {
    if (const auto* Flag = std::get_if<bool>(&Value)) {
        Into = *Flag;
    } else if (const auto* Number = std::get_if<std::int32_t>(&Value)) {
        Into = *Number != 0;
    } else {
        std::wstring Text = std::get<std::wstring>(Value);
        const int Word = BoolWord(Text);
        const bool IsNumber = Text.find_first_of(L"0123456789") != std::wstring::npos;
        Into = Word == 1 && IsNumber ? StrUtil::Number(Text) != 0 : Word != 0;
    }
}
template <std::integral T>
requires(!std::same_as<T, bool>) void FromRegValue(const RegValue& Value, T& Into) {
    std::int32_t Number = 0;
    if (const auto* Stored = std::get_if<std::int32_t>(&Value))
        Number = *Stored;
    else if (const auto* Flag = std::get_if<bool>(&Value))
        Number = *Flag ? -1 : 0;
    else
        Number = StrUtil::ToLong(StrUtil::Number(std::get<std::wstring>(Value)));
    if (!std::in_range<T>(Number)) RaiseFault(fault::kOverflow);
    Into = static_cast<T>(Number);
}

/// An element of a list as a stored object, and back.
inline RegObject SaveElement(const std::wstring& Text) {
    RegObject Made;
    Made.Text = Text;
    return Made;
}
template <NestedRecord T>
RegObject SaveElement(const T& Element) {
    return Element.SaveObject();
}
inline void LoadElement(const RegObject& From, std::wstring& Into) { Into = From.Text; }
template <NestedRecord T>
void LoadElement(const RegObject& From, T& Into) {
    Into.LoadObject(From);
}

}  // namespace detail

/// Base of every record and of every element of a list; `R` is the record itself.
template <class R>
struct Stored : Identity {
    /// Fills the record anew from the stored object; `Flags` is passed as 0 and `Extra` as null, neither is
    /// read. True on failure (source "<record>.Load"); the record may then be filled in part.
    [[nodiscard]] bool Load(RegData& From, std::int32_t Flags = 0, const ParmListBase* Extra = nullptr) {
        static_cast<void>(Flags);
        static_cast<void>(Extra);
        return Trap(detail::kSource<R, detail::kLoad>, [&] {
            static_cast<R&>(*this) = R{};
            LoadObject(From.Read());
            return false;
        });
    }

    /// Writes the record to the stored object, wholly or not at all. True on failure (source
    /// "<record>.Save").
    [[nodiscard]] bool Save(RegData& To) const {
        return Trap(detail::kSource<R, detail::kSave>, [&] {
            RegObject Content = SaveObject();
            if (std::wstring Users = To.UserList(); !Users.empty()) Content.UserList = std::move(Users);
            To.Write(std::move(Content));
            return false;
        });
    }

    /// Copies onto `Target`: identity and header fields always, parameters when `WithParms` and not
    /// `HeaderOnly`, lists when `WithLists` and not HeaderOnly. What does not go over stays in Target as it
    /// is. MakeScratch and Commit are the two settings that parsers use.
    void CopyTo(R& Target, bool WithParms = true, bool WithLists = false, bool HeaderOnly = false) const& {
        Transfer(Self(), Target, WithParms, WithLists, HeaderOnly);
    }
    /// The same for a scratch that is done with: nothing is copied, and nothing can fail halfway.
    void CopyTo(R& Target, bool WithParms = true, bool WithLists = false,
                bool HeaderOnly = false) && noexcept {
        Transfer(std::move(static_cast<R&>(*this)), Target, WithParms, WithLists, HeaderOnly);
    }

    /// A scratch of this record for a parser: the header has gone over, the parameters are at their defaults.
    R MakeScratch() const {
        R Scratch;
        CopyTo(Scratch, false, false, true);
        return Scratch;
    }
    /// Commits a scratch that is done with onto `Record`, whose lists stay. Cannot fail.
    void Commit(R& Record) && noexcept { std::move(*this).CopyTo(Record, true, false, false); }

    /// What a new record bears as its Version.
    static constexpr std::int32_t CurrentVersion() noexcept {
        if constexpr (requires { R::kVersion; })
            return R::kVersion;
        else
            return 1;
    }

    /// The identity or scalar property of that name; nothing for a list, a nested record or a name that it
    /// does not have.
    std::optional<RegValue> ByName(std::wstring_view Wanted) const {
        if (Wanted == L"Id") return Id;
        if (Wanted == L"Name") return Name;
        if (Wanted == L"Desc") return Desc;
        if (Wanted == L"Version") return Version;
        std::optional<RegValue> Found;
        ForEach([&](const auto& P) {
            using Type = std::remove_cvref_t<decltype(Self().*P.Place)>;
            if constexpr (!detail::IsParmList<Type>::value && !detail::NestedRecord<Type>)
                if (P.Name == Wanted) Found = detail::ToRegValue(Self().*P.Place);
        });
        return Found;
    }

    /// The record as a stored object.
    RegObject SaveObject() const {
        RegObject Out;
        if (Unknown_) Out = Unknown_->Rest;
        Out.Id = Id;
        Out.Name = Name;
        Out.Desc = Desc;
        Out.Version = Version;
        std::vector<RegNamedValue> Others = std::move(Out.Values);
        std::vector<RegObject> OtherChildren = std::move(Out.Children);
        Out.Values.clear();
        Out.Children.clear();
        ForEach([&](const auto& P) {
            const auto& Member = Self().*P.Place;
            if constexpr (detail::IsParmList<std::remove_cvref_t<decltype(Member)>>::value) {
                RegObject& Child = Out.Children.emplace_back();
                Child.Name = P.Name;
                if (Unknown_)
                    if (const RegObject* Kept = Unknown_->Lists.Child(P.Name)) Child = *Kept;
                Child.Children.reserve(static_cast<std::size_t>(Member.Count()));
                for (std::int32_t I = 1; I <= Member.Count(); ++I)
                    Child.Children.push_back(detail::SaveElement(Member.Item(I)));
            } else if constexpr (detail::NestedRecord<std::remove_cvref_t<decltype(Member)>>) {
                RegObject& Child = Out.Children.emplace_back(Member.SaveObject());
                Child.Name = P.Name;
            } else {
                Out.Values.push_back({std::wstring(P.Name), detail::ToRegValue(Member)});
            }
        });
        std::move(Others.begin(), Others.end(), std::back_inserter(Out.Values));
        std::move(OtherChildren.begin(), OtherChildren.end(), std::back_inserter(Out.Children));
        return Out;
    }

    /// Fills a new record. Raises for a value beyond its property's range.
    void LoadObject(const RegObject& From) {
        Id = From.Id;
        Name = From.Name;
        Desc = From.Desc;
        Version = From.Version;
        ForEach([&](const auto& P) {
            auto& Member = static_cast<R&>(*this).*P.Place;
            using Type = std::remove_cvref_t<decltype(Member)>;
            if constexpr (detail::IsParmList<Type>::value) {
                Member.Clear();
                if (const RegObject* Child = From.Child(P.Name))
                    for (const RegObject& Element : Child->Children) {
                        typename detail::IsParmList<Type>::Element Loaded;
                        detail::LoadElement(Element, Loaded);
                        Member.Add(std::move(Loaded));
                    }
            } else if constexpr (detail::NestedRecord<Type>) {
                // The child's name is the property's, and no name of its own.
                Member = Type{};
                if (const RegObject* Child = From.Child(P.Name)) Member.LoadObject(*Child);
                Member.Name.clear();
            } else if (const RegValue* Value = From.Value(P.Name)) {
                detail::FromRegValue(*Value, Member);
            } else if (const RegObject* Child = From.Child(P.Name)) {
                detail::FromRegValue(Child->Text, Member);
            }
        });
        KeepUnknown(From);
    }

    /// Same identity, same properties.
    friend bool operator==(const R& A, const R& B) {
        bool Same = static_cast<const Identity&>(A) == static_cast<const Identity&>(B);
        A.ForEach([&](const auto& P) { Same = Same && A.*P.Place == B.*P.Place; });
        return Same;
    }

  private:
    const R& Self() const noexcept { return static_cast<const R&>(*this); }

    template <class Visit>
    static void ForEach(Visit&& Each) {
        std::apply([&](const auto&... P) { (Each(P), ...); }, R::Properties());
    }

    static bool Knows(std::wstring_view PropertyName) {
        bool Known = false;
        ForEach([&](const auto& P) { Known = Known || P.Name == PropertyName; });
        return Known;
    }

    template <class Source>
    static void Transfer(Source&& From, R& Target, bool WithParms, bool WithLists, bool HeaderOnly) {
        if (&Target == &From) return;
        if constexpr (std::is_lvalue_reference_v<Source>)
            static_cast<Identity&>(Target) = static_cast<const Identity&>(From);
        else
            static_cast<Identity&>(Target) = std::move(static_cast<Identity&>(From));
        ForEach([&](const auto& P) {
            const bool Goes = P.As == Role::Header || (P.As == Role::Parameter && WithParms && !HeaderOnly) ||
                              (P.As == Role::List && WithLists && !HeaderOnly);
            if (!Goes) return;
            if constexpr (std::is_lvalue_reference_v<Source>)
                Target.*P.Place = From.*P.Place;
            else
                Target.*P.Place = std::move(From.*P.Place);
        });
    }

    // What a stored object holds beside what the record knows: of the object itself, and of its lists (a
    // child a list, without the elements).
    struct UnknownParts {
        RegObject Rest;
        RegObject Lists;

        bool operator==(const UnknownParts&) const = default;
    };

    void KeepUnknown(const RegObject& From) {
        UnknownParts Parts;
        RegObject& Rest = Parts.Rest;
        Rest.Text = From.Text;
        Rest.Number2 = From.Number2;
        Rest.Number3 = From.Number3;
        Rest.String3 = From.String3;
        Rest.String4 = From.String4;
        Rest.UserList = From.UserList;
        Rest.String5 = From.String5;
        for (const RegNamedValue& Entry : From.Values)
            if (!Knows(Entry.Name) || IsChild(Entry.Name)) Rest.Values.push_back(Entry);
        for (const RegObject& Child : From.Children) {
            // A nested record keeps by itself what it does not know.
            if (!Knows(Child.Name) || From.Child(Child.Name) != &Child) {
                Rest.Children.push_back(Child);
            } else if (KnowsList(Child.Name)) {
                RegObject Bare;
                Bare.Name = Child.Name;
                const RegObject Plain = Bare;
                Bare.Text = Child.Text;
                Bare.Id = Child.Id;
                Bare.Version = Child.Version;
                Bare.Desc = Child.Desc;
                Bare.Number2 = Child.Number2;
                Bare.Number3 = Child.Number3;
                Bare.String3 = Child.String3;
                Bare.String4 = Child.String4;
                Bare.UserList = Child.UserList;
                Bare.String5 = Child.String5;
                Bare.Values = Child.Values;
                if (!(Bare == Plain)) Parts.Lists.Children.push_back(std::move(Bare));
            }
        }
        Unknown_ = Parts == UnknownParts{} ? nullptr : std::make_shared<const UnknownParts>(std::move(Parts));
    }

    // Whether a property of that name is one of a kind.
    template <template <class> class Kind>
    static bool KnowsAs(std::wstring_view PropertyName) {
        bool Known = false;
        ForEach([&](const auto& P) {
            using Type = std::remove_cvref_t<decltype(std::declval<R&>().*P.Place)>;
            Known = Known || (Kind<Type>::value && P.Name == PropertyName);
        });
        return Known;
    }
    static bool KnowsList(std::wstring_view PropertyName) {
        return KnowsAs<detail::IsParmList>(PropertyName);
    }
    static bool IsChild(std::wstring_view PropertyName) { return KnowsAs<detail::IsChild>(PropertyName); }

    std::shared_ptr<const UnknownParts> Unknown_;
};

}  // namespace kv
