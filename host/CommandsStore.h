// The commands on whole objects, and the clipboard file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "host/CommandsSession.h"

namespace kv::host {

// All answer the exit code; what is refused and what fails is thrown (CommandsSession.h).

/// Lists the stored objects, of one class or of all.
int ListObjects(Session& Work, const std::optional<std::wstring>& Clsid);
/// Makes an empty object.
int NewObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name, const std::wstring& Desc);
/// Deletes an object. One that others name, or may name but can't be read, is refused, with who they are,
/// unless it is forced.
int DeleteObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name, bool Force);
/// Prints who names an object, a line a use; an object that nobody names prints nothing. Those that may name
/// it but can't be read are told beside the output.
int ShowUses(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
/// Writes the exported text, line ends as they are.
int ExportObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
/// Reads exported text from the input.
int ImportObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
/// Shows one entry of a clipboard file; without `File` that of the temporary folder. Index 0 shows nothing.
int ShowClipboard(Session& Work, const std::optional<std::filesystem::path>& File, std::int32_t Index);

}  // namespace kv::host
