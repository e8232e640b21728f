// The process-wide utility object: the error store, the counter of node ids, the folders, small conversions.
// It is made on first use and is the one place of the core, beside the duplicate list of vDesignPar, that
// keeps anything between calls.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "frame/Failure.h"
#include "frame/Platform.h"

namespace kv {

/// The registry server component as CoreUtil knows it: it is handed in and handed on.
class RegistryServer {
  public:
    RegistryServer() = default;
    RegistryServer(const RegistryServer&) = delete;
    RegistryServer& operator=(const RegistryServer&) = delete;
    /// CoreUtil forgets it.
    virtual ~RegistryServer();
};

class CoreUtil {
  public:
    /// The one instance.
    static CoreUtil& Instance() noexcept;

    CoreUtil(const CoreUtil&) = delete;
    CoreUtil& operator=(const CoreUtil&) = delete;

    /// Called by each server object at its creation. `Registry` may be null; it must outlive its use.
    void Init(RegistryServer* Registry, std::wstring_view IniFile, std::int32_t Mode);
    RegistryServer* Registry() const noexcept { return Registry_; }
    /// Lets go of `Gone` if it is the one handed in.
    void ForgetRegistry(const RegistryServer* Gone) noexcept {
        if (Registry_ == Gone) Registry_ = nullptr;
    }
    const std::wstring& IniFile() const noexcept { return IniFile_; }
    std::int32_t Mode() const noexcept { return Mode_; }

    /// The door to the operator. Null puts the silent platform back. The host owns the object and takes it
    /// away (null) before it dies; answers the one that was there.
    Platform* SetPlatform(Platform* Door) noexcept;
    Platform& Door() noexcept { return *Platform_; }

    /// A positive number that never repeats within a run.
    std::int32_t NextNodeId() noexcept { return ++LastNodeId_; }

    // The error store.

    /// The error between a raise and the trap that takes it.
    KvError& Pending() noexcept { return Pending_; }
    /// Keeps an error with the flags it came with; answers True.
    bool ReportError(const KvError& Error, std::int32_t Flags) noexcept;
    /// Keeps an out-of-memory fault of the procedure `Source`, in room kept for it; clears the pending error.
    void KeepOutOfMemory(std::wstring_view Source) noexcept;
    /// Remembers the line at which a parser stopped, if the stored error has none and is not empty.
    void NoteLine(std::int32_t Line) noexcept;
    /// The last error reported and its flags; empty when none waits.
    const KvError& LastError() const noexcept { return Stored_; }
    std::int32_t LastFlags() const noexcept { return StoredFlags_; }
    /// Shows the last error to the operator and empties the store. With an empty store nothing is shown.
    void ShowLastError() noexcept;
    /// The six values of the last error, which stays in the store.
    void FetchLastError(std::int32_t& Number, std::wstring& Source, std::wstring& Description,
                        std::wstring& HelpFile, std::wstring& HelpContext, std::int32_t& LastDLLError) const;
    /// Empties the store without showing anything.
    void ForgetError() noexcept;
    /// The operating system's text for an error number of its own.
    std::wstring SystemText(std::int32_t SystemError) const;

    // Folders and files.

    /// The program's folder and the user's temporary folder, closed by a separator.
    std::wstring ProgramFolder();
    std::wstring TempFolder();
    bool FileExists(const std::wstring& Path) const noexcept;
    /// The path as the system takes it; False when the text can't be one.
    static bool ToPath(const std::wstring& Text, std::filesystem::path& Path) noexcept;

    /// A version of a base as one 16-bit number: the major number in the high byte, the minor in the low one.
    /// Raises "Overflow" for a number that is no byte.
    static std::int16_t PackVersion(std::int16_t Major, std::int16_t Minor);
    /// And back; every 16-bit number is a version.
    static void UnpackVersion(std::int16_t Version, std::int16_t& Major, std::int16_t& Minor) noexcept;

    /// Takes the given characters off the end of the text.
    static void TrimEnd(std::wstring& Text, std::wstring_view Chars) noexcept;

  private:
    CoreUtil();

    SilentPlatform Silent_;
    Platform* Platform_ = &Silent_;
    RegistryServer* Registry_ = nullptr;
    std::wstring IniFile_;
    std::int32_t Mode_ = 0;
    std::int32_t LastNodeId_ = 0;
    KvError Pending_;
    KvError Stored_;
    std::int32_t StoredFlags_ = 0;
};

}  // namespace kv
