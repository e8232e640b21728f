// The door to the operator of the desktop: what the server shows and asks are Qt's dialogs.
#pragma once

#include <functional>

#include "host/HostPlatform.h"

class QFileDialog;
class QString;
class QWidget;

namespace kv::desktop {

/// Needs a QApplication. Dialogs belong to the active window.
class QtPlatform final : public host::HostPlatform {
  public:
    using HostPlatform::HostPlatform;
    ~QtPlatform() override;

    /// Where errors are shown while an object window is open; a box where it is empty.
    std::function<void(const KvError&)> OnError;

    void ShowError(const KvError& Error) override;
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override;
    /// The wait pointer stays until the default one is asked for.
    void SetPointer(std::int32_t Pointer) override;

    /// Runs a dialog for one file, with our words; empty when it is cancelled. `AskBefore` asks before a file
    /// that is there is chosen.
    QString RunDialog(QFileDialog& Dialog, bool AskBefore = false);

  private:
    class PlainPointer;
    bool Waiting_ = false;
};

/// The wait pointer, for as long as it lives.
class Wait {
  public:
    explicit Wait(kv::Platform& Door) : Door_(Door) { Door_.SetPointer(kPointerWait); }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    ~Wait() { Door_.SetPointer(kPointerDefault); }

  private:
    kv::Platform& Door_;
};

}  // namespace kv::desktop
