// What the sources of the profile's design item share: the nodes of the elements that are folders themselves.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "frame/DesignTree.h"
#include "frame/ListSection.h"
#include "records/ProfileRecord.h"

namespace kv::profile {

// Each builds the nodes of the element at `Index` of its list, as a row of ListSection takes it. True on
// failure (source "diProfile.<name>").

/// `FIELDS-<id>`, with "Campo: 00012", or "Campo: #####" for a field without labels.
[[nodiscard]] bool SetFieldNode(DesignTree& Tree, ProfileRecord& Record, const Place& At, std::int32_t Index,
                                std::wstring& Key, std::optional<std::int32_t> Relationship);
/// `FORMATS-<id>`, with the format's name, or "????" for a format without labels.
[[nodiscard]] bool SetFormatNode(DesignTree& Tree, ProfileRecord& Record, const Place& At, std::int32_t Index,
                                 std::wstring& Key, std::optional<std::int32_t> Relationship);
/// `LOANTABLES-<id>`, with nature and level.
[[nodiscard]] bool SetLoanTableNode(DesignTree& Tree, ProfileRecord& Record, const Place& At,
                                    std::int32_t Index, std::wstring& Key,
                                    std::optional<std::int32_t> Relationship);

}  // namespace kv::profile
