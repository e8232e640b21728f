// The way from the command to the desktop window, which is a program of its own.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kv::host {

/// The program of the desktop window: nothing where it does not stand beside this one, or there is no display
/// to show it on.
std::optional<std::filesystem::path> DesktopProgram();

/// Becomes that program. Comes back only when that fails, with a sentence.
std::string BecomeProgram(const std::filesystem::path& Program, const std::vector<std::string>& Arguments);

}  // namespace kv::host
