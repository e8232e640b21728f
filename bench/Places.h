// Folders for the files that are measured; gone with the object.
#pragma once

#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kv::bench {

/// A folder of its own on the disk: below the folder that KVDESIGN_BENCH_DISK names, else where the program
/// was started.
inline std::filesystem::path OnDisk() {
    const char* const Named = std::getenv("KVDESIGN_BENCH_DISK");
    return Named ? Named : ".";
}
/// A folder in memory, where nothing waits for a disk; empty when there is none.
inline std::filesystem::path InMemory() {
    return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::path();
}

class Folder {
  public:
    explicit Folder(const std::filesystem::path& Above) {
        std::string Pattern = (Above / "kvdesign-bench-XXXXXX").string();
        if (!mkdtemp(Pattern.data())) throw std::runtime_error("no folder can be made in " + Above.string());
        Path_ = Pattern;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code Left;
        std::filesystem::remove_all(Path_, Left);
    }
    std::filesystem::path operator/(const char* Name) const { return Path_ / Name; }

  private:
    std::filesystem::path Path_;
};

}  // namespace kv::bench
