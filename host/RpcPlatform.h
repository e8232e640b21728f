// The door to the operator of the headless host: what the server shows and asks goes over the channel.
#pragma once

#include <optional>

#include "host/HostPlatform.h"
#include "host/RpcChannel.h"

namespace kv::host {

/// Questions are requests of the host's own, the beep and the pointer are notices. An answer that is an
/// error, that is none of those offered or that never comes counts as the default button, or as Cancel.
class RpcPlatform final : public HostPlatform {
  public:
    /// The channel must outlive the platform.
    RpcPlatform(RpcChannel& Channel, const std::filesystem::path& ProgramDir,
                const std::filesystem::path& Temp)
        : HostPlatform(ProgramDir, Temp), Channel_(Channel) {}

    /// The first error shown since the last call; nothing when none was.
    std::optional<KvError> TakeShown();

    void ShowError(const KvError& Error) override;
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override;
    void SetPointer(std::int32_t Pointer) override;

  private:
    RpcChannel& Channel_;
    std::optional<KvError> Shown_;
};

}  // namespace kv::host
