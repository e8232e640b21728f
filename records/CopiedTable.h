// The table that the operator has copied, as the mapping tools need it, and what they ask and tell.
#pragma once

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

}  // namespace kv
