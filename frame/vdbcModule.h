// Shared section builders: what tells a section parser to check strictly, and the value words that the editor
// offers.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "frame/DesignTree.h"
#include "frame/ParmList.h"

namespace kv {

/// The flag list that goes to ParmEditor: its entry "SYNTAXON" is "True" or "False".
using SaveFlags = ParmList<std::wstring>;
inline constexpr std::wstring_view kSyntaxOnFlag = L"SYNTAXON";

/// Empties `List` and enters SyntaxOn. True on failure (source "vdbcModule.SetSaveFlags").
[[nodiscard]] bool SetSaveFlags(SaveFlags& List, bool SyntaxOn);
/// Whether the list asks for strict checks; a list without the entry does not.
bool StrictFlag(const SaveFlags& List);

/// The value words offered for one keyword of one section, in order.
struct Choice {
    std::wstring_view Section;
    std::wstring_view Keyword;
    std::span<const std::wstring_view> Words;
};

/// Registers the words with the tree, row by row. True at the first refusal.
[[nodiscard]] bool AddChoices(DesignTree& Tree, std::span<const Choice> Choices);

/// Offers "FALSE", "TRUE" for the keyword. True at the first refusal (source "vdbcModule.BooleanDefaults").
[[nodiscard]] bool BooleanDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword);

}  // namespace kv
