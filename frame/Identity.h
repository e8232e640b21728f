// What every stored record begins with.
#pragma once

#include <cstdint>
#include <string>

namespace kv {

/// The four general properties, in this order, of every record and of every element of a list.
struct Identity {
    std::int32_t Id = 0;
    std::wstring Name;
    std::wstring Desc;
    std::int32_t Version = 0;

    bool operator==(const Identity&) const = default;
};

}  // namespace kv
