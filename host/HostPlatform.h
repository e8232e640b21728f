// What the platforms of all hosts on an ordinary machine have in common: the two folders.
#pragma once

#include <filesystem>
#include <string>

#include "frame/Platform.h"

namespace kv::host {

/// Keeps the program's folder and the user's temporary folder. What the operator sees and is asked is left to
/// the host that derives from it.
class HostPlatform : public kv::Platform {
  public:
    /// An empty path stands for the current folder. Throws filesystem_error for a name that is not UTF-8.
    HostPlatform(const std::filesystem::path& ProgramDir, const std::filesystem::path& Temp);

    /// Throws as the constructor; the folder stays as it was then.
    void SetProgramFolder(const std::filesystem::path& ProgramDir);

    std::wstring ProgramFolder() override { return ProgramFolder_; }
    std::wstring TempFolder() override { return TempFolder_; }

  private:
    std::wstring ProgramFolder_;
    std::wstring TempFolder_;
};

}  // namespace kv::host
