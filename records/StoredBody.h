// What the operations of Stored do. Included by the sources that make them for their records
// (records/*Records.cpp), and by no header: each record is made once, not in every source that reads one.
#pragma once

#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/Failure.h"
#include "frame/StrUtil.h"
#include "frame/vDesignPar.h"
#include "records/Stored.h"

namespace kv {
namespace detail {

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

template <class R>
struct Stored<R>::UnknownParts {
    RegObject Rest;
    RegObject Lists;

    bool operator==(const UnknownParts&) const = default;
};

template <class R>
bool Stored<R>::Load(RegData& From, std::int32_t Flags, const ParmListBase* Extra) {
    static_cast<void>(Flags);
    static_cast<void>(Extra);
    return Trap(detail::kSource<R, detail::kLoad>, [&] {
        static_cast<R&>(*this) = R{};
        LoadObject(From.Read());
        return false;
    });
}

template <class R>
bool Stored<R>::Save(RegData& To) const {
    return Trap(detail::kSource<R, detail::kSave>, [&] {
        RegObject Content = SaveObject();
        if (std::wstring Users = To.UserList(); !Users.empty()) Content.UserList = std::move(Users);
        To.Write(std::move(Content));
        return false;
    });
}

template <class R>
void Stored<R>::CopyTo(R& Target, bool WithParms, bool WithLists, bool HeaderOnly) const& {
    Transfer(Self(), Target, WithParms, WithLists, HeaderOnly);
}

template <class R>
void Stored<R>::CopyTo(R& Target, bool WithParms, bool WithLists, bool HeaderOnly) && noexcept {
    Transfer(std::move(static_cast<R&>(*this)), Target, WithParms, WithLists, HeaderOnly);
}

template <class R>
R Stored<R>::MakeScratch() const {
    R Scratch;
    CopyTo(Scratch, false, false, true);
    return Scratch;
}

template <class R>
void Stored<R>::Commit(R& Record) && noexcept {
    std::move(*this).CopyTo(Record, true, false, false);
}

template <class R>
std::optional<RegValue> Stored<R>::ByName(std::wstring_view Wanted) const {
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

template <class R>
RegObject Stored<R>::SaveObject() const {
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

template <class R>
void Stored<R>::LoadObject(const RegObject& From) {
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

template <class R>
template <class Visit>
void Stored<R>::ForEach(Visit&& Each) {
    R::Properties([&](const auto&... P) { (Each(P), ...); });
}

template <class R>
bool Stored<R>::Knows(std::wstring_view PropertyName) {
    bool Known = false;
    ForEach([&](const auto& P) { Known = Known || P.Name == PropertyName; });
    return Known;
}

template <class R>
template <class Source>
void Stored<R>::Transfer(Source&& From, R& Target, bool WithParms, bool WithLists, bool HeaderOnly) {
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

template <class R>
void Stored<R>::KeepUnknown(const RegObject& From) {
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

template <class R>
template <template <class> class Kind>
bool Stored<R>::KnowsAs(std::wstring_view PropertyName) {
    bool Known = false;
    ForEach([&](const auto& P) {
        using Type = std::remove_cvref_t<decltype(std::declval<R&>().*P.Place)>;
        Known = Known || (Kind<Type>::value && P.Name == PropertyName);
    });
    return Known;
}

template <class R>
bool Stored<R>::KnowsList(std::wstring_view PropertyName) {
    return KnowsAs<detail::IsParmList>(PropertyName);
}

template <class R>
bool Stored<R>::IsChild(std::wstring_view PropertyName) {
    return KnowsAs<detail::IsChild>(PropertyName);
}

template <class R>
bool Stored<R>::SameAs(const R& Other) const {
    bool Same = static_cast<const Identity&>(*this) == static_cast<const Identity&>(Other);
    ForEach([&](const auto& P) { Same = Same && Self().*P.Place == Other.*P.Place; });
    return Same;
}

}  // namespace kv
