// Where a program of this project works: the store and the folders, as the command line and the environment
// name them.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace kv::host {

/// What the command line tells; empty where it tells nothing.
struct Places {
    std::string Store;
    std::string ProgramDir;
    std::string Temp;
};

/// Adds the options --store, --program-dir and --temp. `Into` must outlive the application.
void AddPlaces(CLI::App& To, Places& Into);

/// The store that the environment names.
std::optional<std::filesystem::path> StoreOfEnvironment();
/// The store that is used when none is named: that of the environment, else the user's own, whose folder is
/// made. Throws FileTrouble without a home folder, and filesystem_error.
std::filesystem::path DefaultStore();
/// A folder that is not there is told by the one that needs it.
std::filesystem::path TemporaryFolder();
/// The program folder where none is named: that of the store.
std::filesystem::path ProgramFolderOf(const std::filesystem::path& Store);

}  // namespace kv::host
