// The shared object that parses and renders the sections which the items do not parse themselves: one pair of
// operations a record class.
#pragma once

#include <string>

#include "frame/vdbcModule.h"
#include "records/CatalogueRecord.h"
#include "records/FilterRecord.h"
#include "records/ImportRecord.h"

namespace kv::ParmEditor {

// Every Save operation parses `Buffer` into a scratch of the record and commits it at a clean end: a keyword
// that the text leaves out returns to its default, a text with any fault leaves the record as it was. Strict
// or lax is what the entry "SYNTAXON" of `Flags` says. Every Disp operation appends all keywords in the order
// of their table and the three identity lines. All answer True on failure, reported under
// "ParmEditor.<operation>".

/// Works on what a catalogue's section needs, whichever record has it.
template <class Record>
[[nodiscard]] bool SaveCatalogue(Record& Into, std::wstring& Buffer, const SaveFlags& Flags);
template <class Record>
[[nodiscard]] bool DispCatalogue(const Record& From, std::wstring& Buffer, const SaveFlags& Flags);

[[nodiscard]] bool SaveFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

[[nodiscard]] bool SaveImport(ImportRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispImport(const ImportRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

}  // namespace kv::ParmEditor
