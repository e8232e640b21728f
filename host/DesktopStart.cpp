#include "host/DesktopStart.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <system_error>

namespace kv::host {
namespace {

namespace fs = std::filesystem;

// What tells that a window can be shown. Qt's own variable does not: it may name a platform without a screen.
constexpr std::array kDisplays{"DISPLAY", "WAYLAND_DISPLAY"};

}  // namespace

std::optional<fs::path> DesktopProgram() {
    const bool Display = std::any_of(kDisplays.begin(), kDisplays.end(), [](const char* Name) {
        const char* const Value = std::getenv(Name);
        return Value && *Value;
    });
    if (!Display) return std::nullopt;
    std::error_code Unable;
    const fs::path Here = fs::read_symlink("/proc/self/exe", Unable);
    if (Unable) return std::nullopt;
    fs::path Program = Here.parent_path() / "kvdesign-desktop";
    if (::access(Program.c_str(), X_OK) != 0) return std::nullopt;
    return Program;
}

std::string BecomeProgram(const fs::path& Program, const std::vector<std::string>& Arguments) {
    std::string Name = Program.string();
    std::vector<std::string> Words = Arguments;
    std::vector<char*> Given{Name.data()};
    for (std::string& Word : Words) Given.push_back(Word.data());
    Given.push_back(nullptr);
    ::execv(Program.c_str(), Given.data());
    return Name + ": " + std::error_code(errno, std::generic_category()).message();
}

}  // namespace kv::host
