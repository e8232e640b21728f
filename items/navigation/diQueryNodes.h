// What the sources of the query's design item share: its inner lists, and the nodes of the elements that are
// folders themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/DesignTree.h"
#include "frame/ListSection.h"
#include "records/QueryRecord.h"

namespace kv::query {

inline constexpr std::wstring_view kFields = L"FIELDS";
inline constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
inline constexpr std::wstring_view kFieldCaption = L"FIELDCAPTION";
inline constexpr std::wstring_view kConstants = L"CONSTANTS";
inline constexpr std::wstring_view kConstantParms = L"CONSTANTPARMS";
inline constexpr std::wstring_view kConstantCaption = L"CONSTANTCAPTION";

using Fields = InRecord<&QueryRecord::Fields>;
/// The predefined values of a field.
struct Values {
    using Record = QueryRecord;
    static constexpr std::size_t kOwners = 1;
    static ParmList<MessageRecord>& Of(QueryRecord& In, const Place& At) {
        return Fields::Of(In, At).Item(At[0]).Defaults.Message;
    }
};

// Each builds the nodes of the element at `Index` of its list, as a row of ListSection takes it. True on
// failure (source "diQuery.<name>").

/// `FIELDS-<id>`, below it the parameters, the captions and `CONSTANTS-FIELDS-<id>` with the values.
[[nodiscard]] bool SetFieldNode(DesignTree& Tree, QueryRecord& Record, const Place& At, std::int32_t Index,
                                std::wstring& Key, std::optional<std::int32_t> Relationship);
/// `CONSTANTS-<id>` for value `Index` of the field at `At`, with "Valore: " and its name.
[[nodiscard]] bool SetConstantNode(DesignTree& Tree, QueryRecord& Record, const Place& At, std::int32_t Index,
                                   std::wstring& Key, std::optional<std::int32_t> Relationship);

/// What the node of a value shows.
std::wstring ConstantNode(std::wstring_view Name);

}  // namespace kv::query
