// What the windows of the desktop share: the store, the door to the operator and the clipboard.
#pragma once

#include <filesystem>
#include <memory>

#include "frame/ClipItem.h"
#include "host/KvRegSvr.h"
#include "host/desktop/QtPlatform.h"

namespace kv::desktop {

/// While it lives its platform is the door of the core. One at a time.
class Desk {
  public:
    /// An empty program folder is that of the store which is open.
    Desk(const std::filesystem::path& ProgramDir, const std::filesystem::path& Temp);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;
    ~Desk();

    /// Opens a store (made where there is none) in the place of the one before. Throws host::StoreError; the
    /// one before stays open then.
    void OpenStore(const std::filesystem::path& File);
    bool HasStore() const noexcept { return Registry_ != nullptr; }
    const std::filesystem::path& Store() const noexcept { return Store_; }
    /// Only where a store is open.
    host::KvRegSvr& Registry() noexcept { return *Registry_; }

    QtPlatform& Platform() noexcept { return Platform_; }
    /// Lives as long as the desk, across the objects.
    ClipItem& Clipboard() noexcept { return Clipboard_; }

  private:
    QtPlatform Platform_;
    kv::Platform* Before_;
    bool FollowsStore_;  // the program folder
    ClipItem Clipboard_;
    std::filesystem::path Store_;
    std::unique_ptr<host::KvRegSvr> Registry_;
};

}  // namespace kv::desktop
