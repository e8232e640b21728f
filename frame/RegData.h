// Stored objects: the tree of plain values that a stored object is made of, and the descriptor through which
// the items reach one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kv {

/// A value of a stored object: a number, a boolean or a string.
using RegValue = std::variant<std::int32_t, bool, std::wstring>;

struct RegNamedValue {
    std::wstring Name;
    RegValue Value;

    bool operator==(const RegNamedValue&) const = default;
};

/// A stored object as it lies in the registry or in the clipboard file: identity, named values, children.
/// A record's scalar properties are values, each of its lists is a child with one child an element.
///
/// Text, Number2 to String5 have no meaning to this server; they are the further fields of an object in the
/// clipboard file and are carried along. In an object read from that file, which has no named values, a value
/// is a child that bears the property's name and holds the value in Text.
struct RegObject {
    std::wstring Name;
    std::wstring Text;
    std::int32_t Id = 0;
    std::int32_t Version = 0;
    std::wstring Desc;
    std::int32_t Number2 = 0;
    std::int32_t Number3 = 0;
    std::wstring String3;
    std::wstring String4;
    std::wstring UserList;
    std::wstring String5;
    std::vector<RegNamedValue> Values;
    std::vector<RegObject> Children;

    /// The value of that name, null when there is none.
    const RegValue* Value(std::wstring_view ValueName) const noexcept;
    /// Adds a value, or replaces the one of that name.
    void SetValue(std::wstring_view ValueName, RegValue NewValue);
    /// The first child of that name, null when there is none.
    const RegObject* Child(std::wstring_view ChildName) const noexcept;

    bool operator==(const RegObject&) const = default;
};

/// Descriptor of one stored object, handed in by the host, which owns it.
class RegData {
  public:
    RegData() = default;
    RegData(const RegData&) = delete;
    RegData& operator=(const RegData&) = delete;
    virtual ~RegData() = default;

    /// Name of the object, its class word, and the users who may work on it.
    virtual std::wstring Name() const = 0;
    virtual std::wstring Clsid() const = 0;
    virtual std::wstring UserList() const = 0;

    /// Write-only: the server sets it True before a Save. What it gates is the host's own.
    virtual void SetSaving(bool Saving) = 0;

    /// The whole object. The reference holds until the next Write. Raises when the object can't be read.
    virtual const RegObject& Read() = 0;
    /// Replaces the object by `Content`, wholly or (when it raises) not at all. The name in Content becomes
    /// the object's name.
    virtual void Write(RegObject Content) = 0;
};

/// A stored object that lives in memory only: what a clipboard holds, what an import fills.
class MemoryRegData final : public RegData {
  public:
    MemoryRegData() = default;
    explicit MemoryRegData(std::wstring_view ClassWord, RegObject Content = {})
        : Clsid_(ClassWord), Content_(std::move(Content)) {}

    std::wstring Name() const override { return Content_.Name; }
    std::wstring Clsid() const override { return Clsid_; }
    std::wstring UserList() const override { return Content_.UserList; }
    void SetSaving(bool Saving) override { Saving_ = Saving; }
    const RegObject& Read() override { return Content_; }
    void Write(RegObject Content) override;

    /// Whether Write has run since the object was made.
    bool Written() const noexcept { return Written_; }
    bool Saving() const noexcept { return Saving_; }

  private:
    std::wstring Clsid_;
    RegObject Content_;
    bool Written_ = false;
    bool Saving_ = false;
};

}  // namespace kv
