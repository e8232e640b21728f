// What a test reads off a stored object and off the tree beside it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/Desk.h"

namespace kv::test {

inline RegValue ValueOf(const RegObject& Of, std::wstring_view Name) {
    const RegValue* const Found = Of.Value(Name);
    EXPECT_NE(Found, nullptr) << "no value " << Narrow(Name);
    return Found ? *Found : RegValue{};
}
inline std::int32_t LongOf(const RegObject& Of, std::wstring_view Name) {
    const RegValue Found = ValueOf(Of, Name);
    const auto* const Number = std::get_if<std::int32_t>(&Found);
    EXPECT_NE(Number, nullptr) << Narrow(Name) << " is no number";
    return Number ? *Number : 0;
}
inline bool BoolOf(const RegObject& Of, std::wstring_view Name) {
    const RegValue Found = ValueOf(Of, Name);
    const auto* const Flag = std::get_if<bool>(&Found);
    EXPECT_NE(Flag, nullptr) << Narrow(Name) << " is no boolean";
    return Flag && *Flag;
}
inline std::wstring TextOf(const RegObject& Of, std::wstring_view Name) {
    const RegValue Found = ValueOf(Of, Name);
    const auto* const Text = std::get_if<std::wstring>(&Found);
    EXPECT_NE(Text, nullptr) << Narrow(Name) << " is no text";
    return Text ? *Text : std::wstring();
}

/// The elements of a list of a stored object.
inline const std::vector<RegObject>& ListOf(const RegObject& Of, std::wstring_view Name) {
    static const std::vector<RegObject> kNoElements;
    const RegObject* const Found = Of.Child(Name);
    EXPECT_NE(Found, nullptr) << "no list " << Narrow(Name);
    return Found ? Found->Children : kNoElements;
}

/// An object or element put together in place.
inline RegObject With(RegObject Of, std::initializer_list<std::pair<std::wstring_view, RegValue>> Values) {
    for (const auto& [Name, Value] : Values) Of.SetValue(Name, Value);
    return Of;
}
inline RegObject Element(std::int32_t Id, std::wstring_view Name,
                         std::initializer_list<std::pair<std::wstring_view, RegValue>> Values = {}) {
    RegObject Made;
    Made.Id = Id;
    Made.Name = Name;
    return With(std::move(Made), Values);
}
inline RegObject WithList(RegObject Of, std::wstring_view Name, std::vector<RegObject> Elements) {
    RegObject& List = Of.Children.emplace_back();
    List.Name = Name;
    List.Children = std::move(Elements);
    return Of;
}
inline RegValue RegText(std::wstring_view Text) { return std::wstring(Text); }

/// The record as it would be stored now.
inline const RegObject& SavedBy(Desk& On) {
    EXPECT_TRUE(Accepted(On.Try([&] { return On.Core.Save(); })));
    return On.Object->Read();
}

/// Keys and captions of the nodes right below a folder, in display order.
inline std::vector<std::wstring> KeysBelow(const Desk& On, std::wstring_view Folder) {
    std::vector<std::wstring> Found;
    On.Tree->ForEach([&](const window::TreeNode& Node) {
        if (Node.Parent && Node.Parent->Key == Folder) Found.push_back(Node.Key);
    });
    return Found;
}
inline std::vector<std::wstring> CaptionsBelow(const Desk& On, std::wstring_view Folder) {
    std::vector<std::wstring> Found;
    for (const std::wstring& Key : KeysBelow(On, Folder)) Found.push_back(On.Tree->NodeText(Key));
    return Found;
}
inline std::wstring KeyBelow(const Desk& On, std::wstring_view Folder, std::size_t Nth) {
    const std::vector<std::wstring> Found = KeysBelow(On, Folder);
    EXPECT_LE(Nth, Found.size()) << "below " << Narrow(Folder);
    return Nth <= Found.size() ? Found[Nth - 1] : std::wstring();
}

/// What a selected node answers to the operations of the window.
inline Outcome AddAt(Desk& On, const std::wstring& Key, std::wstring& Made) {
    return On.Try([&] { return On.Core.EditData({.CurrItem = Key}, Made); });
}
inline Outcome MoveAt(Desk& On, const std::wstring& Key, std::int32_t Direction, std::wstring& Made) {
    return On.Try([&] { return On.Core.MoveData({.CurrItem = Key}, Direction, Made); });
}
inline Outcome DeleteAt(Desk& On, const std::wstring& Key, bool Group = false) {
    return On.Try([&] { return On.Core.DeleteData({.CurrItem = Key}, Group); });
}

/// One text given to a section and what it is refused with.
struct Refusal {
    std::wstring_view Text;
    std::wstring_view Message;
    int Line;
    bool LaxToo = true;  // else lax mode takes it
};

/// Each text is refused with its message, and the section shows what it showed before.
inline void ExpectRefusals(Desk& On, const std::wstring& Key, std::wstring_view Source,
                           std::initializer_list<Refusal> Cases) {
    const std::wstring Before = On.Text(Key);
    for (const Refusal& Case : Cases) {
        SCOPED_TRACE(Narrow(Case.Text));
        EXPECT_TRUE(
            Refused(On.Put(Key, std::wstring(Case.Text), true), 20000, Source, Case.Message, Case.Line));
        EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
        if (Case.LaxToo) {
            EXPECT_TRUE(
                Refused(On.Put(Key, std::wstring(Case.Text), false), 20000, Source, Case.Message, Case.Line));
            EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Before));
        }
    }
}

/// What a section shows is accepted in either mode and shown again as it was.
inline void ExpectFixpoint(Desk& On, const std::wstring& Key) {
    const std::wstring Shown = On.Text(Key);
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(Accepted(On.Put(Key, Shown, Strict))) << Narrow(Shown);
        EXPECT_EQ(Narrow(On.Text(Key)), Narrow(Shown));
    }
}

}  // namespace kv::test
