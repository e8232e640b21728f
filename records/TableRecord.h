// The stored record of a table: a record definition or an index definition.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/FieldRecord.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

/// Bits of TableRecord::Flags.
inline constexpr std::array<Word, 3> kTableFlags{{
    {L"OEMCHARSET", 0x01},
    {L"AUTHORITY", 0x08},
    {L"CATALOGUE", 0x10},
}};
inline constexpr std::int32_t kTableCatalogue = 0x10;

/// Codes of TableRecord::Style; -1 is unset.
inline constexpr std::array<Word, 2> kTableStyles{{
    {L"RECORD", 0},
    {L"INDEX", 1},
}};

/// The scalar properties belong to the header: a section that leaves one out keeps it.
struct TableRecord final : Stored<TableRecord> {
    static constexpr std::wstring_view kClass = L"TableRecord";

    std::int32_t Columns = 0;  // of an index
    ParmList<FieldRecord> Fields;
    std::int32_t Flags = 0;   // kTableFlags
    std::wstring Index;       // primary index of a record table
    std::wstring MirrorOf;    // the table that this one mirrors
    ParmList<ParmItem> Sort;  // the sort rules, one a column, by their Text
    std::int32_t Style = -1;  // kTableStyles
    std::int32_t TableID = 0;

    static constexpr auto Properties(auto With) {
        using R = TableRecord;
        return With(HeaderField(L"Columns", &R::Columns), List(L"Fields", &R::Fields),
                    HeaderField(L"Flags", &R::Flags), HeaderField(L"Index", &R::Index),
                    HeaderField(L"MirrorOf", &R::MirrorOf), List(L"Sort", &R::Sort),
                    HeaderField(L"Style", &R::Style), HeaderField(L"TableID", &R::TableID));
    }
};

}  // namespace kv
