#include "host/Places.h"

#include <pwd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <system_error>

#include "host/CommandsSession.h"
#include "host/Demo.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;

const char* Variable(const char* Name) {
    const char* const Value = std::getenv(Name);
    return Value && *Value ? Value : nullptr;
}

fs::path HomeFolder() {
    if (const char* const Home = Variable("HOME")) return Home;
    if (const ::passwd* const User = ::getpwuid(::getuid()); User && User->pw_dir) return User->pw_dir;
    throw FileTrouble("there is no home folder for the store; --store names one");
}

}  // namespace

void AddPlaces(CLI::App& To, Places& Into) {
    const auto Add = [&](const char* Name, std::string& Value, const char* What, const char* Type) {
        To.add_option(Name, Value, What)
            ->type_name(Type)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    };
    Add("--store", Into.Store, "The store, an SQLite file", "FILE");
    Add("--program-dir", Into.ProgramDir, "Folder of VELMIRA.INI and KVDSRT.TAB (default: that of the store)",
        "DIR");
    Add("--temp", Into.Temp, "Folder of temporary files and of KVDSCLP.TMP", "DIR");
}

fs::path ProgramFolderOf(const fs::path& Store) { return fs::absolute(Store).parent_path(); }

std::optional<fs::path> StoreOfEnvironment() {
    if (const char* const Named = Variable("KVDESIGN_STORE")) return Named;
    return std::nullopt;
}

fs::path DefaultStore() {
    if (const std::optional<fs::path> Named = StoreOfEnvironment()) return *Named;
    const char* const Data = Variable("XDG_DATA_HOME");
    const fs::path Folder = (Data ? fs::path(Data) : HomeFolder() / ".local" / "share") / "kvdesign";
    fs::create_directories(Folder);
    return Folder / kDemoStore;
}

fs::path TemporaryFolder() {
    std::error_code Missing;
    fs::path Folder = fs::temp_directory_path(Missing);
    if (!Missing) return Folder;
    const char* const Named = Variable("TMPDIR");
    return Named ? Named : "/tmp";
}

}  // namespace kv::host
