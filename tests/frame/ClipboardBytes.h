// A clipboard file put together by hand, field by field.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/RegData.h"
#include "frame/StrUtil.h"

namespace kv::test {

/// Bytes under construction; remembers where its integers stand.
class ClipboardBytes {
  public:
    std::string Bytes;
    std::vector<std::size_t> Longs;  // offset of every 32-bit integer

    ClipboardBytes& Long(std::int32_t Value) {
        Longs.push_back(Bytes.size());
        Bytes.append(4, '\0');
        Put(Bytes.size() - 4, Value);
        return *this;
    }
    ClipboardBytes& String(std::string_view Text) {
        Long(static_cast<std::int32_t>(Text.size()));
        Bytes.append(Text);
        return *this;
    }
    void Put(std::size_t Offset, std::int32_t Value) {
        const auto Bits = static_cast<std::uint32_t>(Value);
        for (std::size_t I = 0; I < 4; ++I) Bytes[Offset + I] = static_cast<char>((Bits >> (8 * I)) & 0xFFU);
    }

    /// The fields of an object up to its child count.
    ClipboardBytes& Head(const RegObject& Object, std::int32_t Children) {
        return String(Narrow1252(Object.Name))
            .String(Narrow1252(Object.Text))
            .Long(Object.Id)
            .Long(Object.Version)
            .String(Narrow1252(Object.Desc))
            .Long(Object.Number2)
            .Long(Object.Number3)
            .String(Narrow1252(Object.String3))
            .String(Narrow1252(Object.String4))
            .String(Narrow1252(Object.UserList))
            .String(Narrow1252(Object.String5))
            .Long(Children);
    }
    /// A whole object; one that has no named values.
    ClipboardBytes& Object(const RegObject& Each) {
        Head(Each, static_cast<std::int32_t>(Each.Children.size()));
        for (const RegObject& Child : Each.Children) Object(Child);
        return *this;
    }

    static std::string Narrow1252(std::wstring_view Text) {
        std::string Out;
        for (const wchar_t C : Text) Out.push_back(static_cast<char>(StrUtil::ToWindows1252(C)));
        return Out;
    }
};

/// A file of several entries; `Ends[i]` is the length of the file up to the end of entry i + 1.
struct ClipboardFile {
    ClipboardBytes Out;
    std::vector<std::size_t> Ends;

    explicit ClipboardFile(const std::vector<std::pair<std::string, RegObject>>& Entries) {
        Out.Long(static_cast<std::int32_t>(Entries.size()));
        for (const auto& [Name, Object] : Entries) {
            const std::size_t Next = Out.Bytes.size();
            Out.Long(0).String(Name).Object(Object);
            Out.Put(Next, static_cast<std::int32_t>(Out.Bytes.size()) + 1);
            Ends.push_back(Out.Bytes.size());
        }
    }
};

/// An object whose every field holds something, two levels deep.
inline RegObject FullObject() {
    RegObject Object;
    Object.Name = L"Soggetti";
    Object.Text = L"primo testo";
    Object.Id = 17;
    Object.Version = 3;
    Object.Desc = L"Descrizione è così €";
    Object.Number2 = -2;
    Object.Number3 = 2147483647;
    Object.String3 = L"tre";
    Object.String4 = L"";
    Object.UserList = L"ADMIN;UTENTE";
    Object.String5 = L"cinque";
    RegObject List;
    List.Name = L"Titles";
    for (const wchar_t* const Name : {L"uno", L"due"}) {
        RegObject Element;
        Element.Name = Name;
        Element.Id = 5;
        Element.Text = L"testo";
        List.Children.push_back(Element);
    }
    Object.Children.push_back(List);
    RegObject Value;
    Value.Name = L"Path";
    Value.Text = L"C:\\Dati";
    Object.Children.push_back(Value);
    return Object;
}

}  // namespace kv::test
