// The mapping tools: they make the fields of a record from the table that the operator has copied.
#pragma once

#include <utility>

#include "frame/DesignTree.h"
#include "records/TableRecord.h"

namespace kv {

/// Loads the first object of the clipboard file as a table. True when there is none or it can't be read;
/// nothing waits in the error store then: the tools end without a word.
[[nodiscard]] bool LoadCopiedTable(TableRecord& Table);

/// Asks before fields are made of a table: with fields already there whether to remove them (yes, no, cancel;
/// cancel as default), else whether to go on (yes, no; no as default). False when the operator wants nothing
/// of it; `Remove` tells whether the old fields go.
[[nodiscard]] bool ConfirmMapping(bool HasFields, bool& Remove);

/// Says that the mapping is done and how to see it.
void TellMapped();

/// MAPTABLE: `Make(TableField)` makes a field of the record for each field of the copied table; they go
/// behind those that the operator keeps. The tree is not built again, only marked. A table without fields
/// raises "L'oggetto nella clipboard non ha campi o non è una TABLE."; whatever ends the tool early, or
/// fails, leaves `Fields` as it was. Answers False.
template <class Field, class Maker>
[[nodiscard]] bool MapCopiedTable(ParmList<Field>& Fields, DesignTree& Tree, Maker&& Make) {
    TableRecord Table;
    if (LoadCopiedTable(Table)) return false;
    if (Table.Fields.Count() == 0) Raise(L"L'oggetto nella clipboard non ha campi o non è una TABLE.");
    bool Remove = false;
    if (!ConfirmMapping(Fields.Count() > 0, Remove)) return false;
    ParmList<Field> Made;
    for (std::int32_t I = 1; I <= Table.Fields.Count(); ++I) Made.Add(Make(Table.Fields.Item(I)));
    if (Remove) Fields.Clear();
    for (std::int32_t I = 1; I <= Made.Count(); ++I) Fields.Add(std::move(Made.Item(I)));
    Tree.MarkModified(true);
    TellMapped();
    return false;
}

}  // namespace kv
