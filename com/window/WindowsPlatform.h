// The door to the operator on Windows: what the server shows and asks are the boxes and dialogs of the
// system.
#pragma once

#include "com/window/Windows.h"
#include "frame/Platform.h"

namespace kv::com {

/// Boxes belong to the active window of the thread.
class WindowsPlatform final : public Platform {
  public:
    void ShowError(const KvError& Error) override;
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override;
    /// The wait pointer stays until the default one is asked for, or a window takes messages.
    void SetPointer(std::int32_t Pointer) override;
    /// The folder of the host's program.
    std::wstring ProgramFolder() override;
    std::wstring TempFolder() override;
};

}  // namespace kv::com
