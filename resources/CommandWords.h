// The command words, string resources 10000 to 10055.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kv::resources {

inline constexpr std::int32_t kFirstCommandWord = 10000;

/// The word at place i has the id kFirstCommandWord + i.
inline constexpr std::array<std::wstring_view, 56> kCommandWords{{
    L"AND",         L"CAPTURE",      L"CHILDREN", L"CLIPBOARD", L"CLOSE",      L"CLOSEALL",  L"EXTRACT",
    L"FILTER",      L"FIND",         L"FORMAT",   L"HELP",      L"HIERARCHY",  L"HISTORY",   L"MAIL",
    L"MEMORY",      L"MEMORYFOLDER", L"LABRYS",   L"NEXTREC",   L"OTHER",      L"OPEN",      L"OPTIONS",
    L"OR",          L"OWNED",        L"PGDOWN",   L"PGUP",      L"PARENT",     L"PASSWORD",  L"PREVREC",
    L"EXPORT",      L"ROWDOWN",      L"ROWUP",    L"SELECT",    L"SELECTMODE", L"SETOPS",    L"UNSELECT",
    L"UNSELECTALL", L"FONT",         L"TOP",      L"BOTTOM",    L"COPY",       L"CUT",       L"PASTE",
    L"QUERY",       L"BACK",         L"QUIT",     L"UNDO",      L"ADMIN",      L"SELECTALL", L"CLOSEWIN",
    L"FORWARD",     L"STOP",         L"REFRESH",  L"SAVE",      L"XOR",        L"EXCL",      L"LOAD",
}};

}  // namespace kv::resources
