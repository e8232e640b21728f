// The door to the operator of the commands: errors and lists wait for the command to tell them, the save
// dialog answers what the command line names, questions go to the terminal.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/HostPlatform.h"

namespace kv::host {

/// A question is written down and answered with its default button; there is no sound and no pointer.
class ConsolePlatform final : public HostPlatform {
  public:
    /// `Err` takes what is told beside the errors; it must outlive the platform.
    ConsolePlatform(const std::filesystem::path& ProgramDir, const std::filesystem::path& Temp,
                    std::ostream& Err)
        : HostPlatform(ProgramDir, Temp), Err_(Err) {}

    /// The errors shown since the last call, in order.
    std::vector<KvError> TakeShown();
    /// The lines of the list forms shown since the last call, in order.
    std::vector<std::wstring> TakeListed();
    /// What the save dialog answers from now on; until then it is cancelled.
    void AnswerSaveFile(std::wstring Path) { Output_ = std::move(Path); }

    void ShowError(const KvError& Error) override { Shown_.push_back(Error); }
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override {}
    void SetPointer(std::int32_t) override {}

  private:
    std::ostream& Err_;
    std::vector<KvError> Shown_;
    std::vector<std::wstring> Listed_;
    std::optional<std::wstring> Output_;
};

}  // namespace kv::host
