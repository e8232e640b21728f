// The door to the operator and to the machine's folders. The core opens no other.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "frame/Failure.h"

namespace kv {

/// Style of a message box: buttons + icon + default button + further bits, added up.
namespace box {
inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kYesNoCancel = 3;
inline constexpr std::int32_t kYesNo = 4;
inline constexpr std::int32_t kButtons = 0x0F;  // mask of the three above
inline constexpr std::int32_t kCritical = 16;
inline constexpr std::int32_t kQuestion = 32;
inline constexpr std::int32_t kExclamation = 48;
inline constexpr std::int32_t kInformation = 64;
inline constexpr std::int32_t kIcons = 0xF0;
inline constexpr std::int32_t kDefaultSecond = 256;
inline constexpr std::int32_t kDefaultThird = 512;
inline constexpr std::int32_t kDefaults = 0x300;
inline constexpr std::int32_t kForeground = 65536;
}  // namespace box

enum class Answer { Ok, Cancel, Yes, No };

/// Screen pointers that the server asks for.
inline constexpr std::int32_t kPointerDefault = 0;
inline constexpr std::int32_t kPointerWait = 11;

class Platform {
  public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    /// Shows the last error; called once an operation, only when there is one.
    virtual void ShowError(const KvError& Error) = 0;
    /// Asks or tells; `Style` is made of the numbers of namespace box.
    virtual Answer MessageBox(std::wstring_view Text, std::int32_t Style) = 0;
    /// The standard dialog for the name of a file to write. `Filter` is "label|pattern|label|pattern...",
    /// `FilterIndex` is 1-based. No value means that the operator cancelled.
    virtual std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                 std::int32_t FilterIndex, std::int32_t Flags) = 0;
    /// Shows a modal form with one list box.
    virtual void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) = 0;
    virtual void Beep() = 0;
    virtual void SetPointer(std::int32_t Pointer) = 0;

    /// The program's folder and the user's temporary folder, with or without a separator at the end.
    virtual std::wstring ProgramFolder() = 0;
    virtual std::wstring TempFolder() = 0;
};

/// A platform without an operator: shows nothing, answers a question with its default button, cancels the
/// dialogs; its folders are the current one.
class SilentPlatform : public Platform {
  public:
    void ShowError(const KvError&) override {}
    Answer MessageBox(std::wstring_view, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                         std::int32_t) override {
        return std::nullopt;
    }
    void ShowList(std::wstring_view, std::span<const std::wstring>) override {}
    void Beep() override {}
    void SetPointer(std::int32_t) override {}
    std::wstring ProgramFolder() override { return L"."; }
    std::wstring TempFolder() override { return L"."; }
};

/// The answer that the default button of `Style` stands for.
Answer DefaultAnswer(std::int32_t Style) noexcept;

}  // namespace kv
