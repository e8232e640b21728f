// The tool buttons of the tree window: the clipboard words, and the four tools with their pictures.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kv::resources {

struct ToolButton {
    std::int32_t Bitmap;  // id of the picture in the bitmap resources
    std::wstring_view Word;
    std::wstring_view ToolTip;
};

inline constexpr std::array<std::wstring_view, 3> kClipboardWords{L"COPY", L"CUT", L"PASTE"};

inline constexpr std::array<ToolButton, 4> kToolButtons{{
    {1000, L"FINDTAG", L"Trova tag libero"},
    {1001, L"RENUMTAG", L"Rinumera tags"},
    {1002, L"MAPTABLE", L"Campi dalla TABLE"},
    {1003, L"CONSTANTS", L"Export VB module"},
}};

}  // namespace kv::resources
