// The small modal forms: a question whose buttons say what they do, and a list.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "com/window/Windows.h"

namespace kv::com {

/// Asks with these labels; the first is the default one, the last is what Escape stands for. The 0-based
/// place of the one that was chosen. `Owner` (may be null) waits.
std::size_t Choose(HWND Owner, const std::wstring& Text, const std::vector<std::wstring>& Labels);

/// Shows lines that can be selected and copied.
void ShowLines(HWND Owner, const std::wstring& Caption, std::span<const std::wstring> Lines);

/// Puts text on the system's clipboard. False when it could not be had.
bool CopyText(HWND Owner, const std::wstring& Text);

/// The caption of message boxes and questions.
inline constexpr const wchar_t* kCaption = L"kvdesign";

}  // namespace kv::com
