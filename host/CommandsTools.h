// The commands that press a tool button on an object.
#pragma once

#include <string>

#include "host/CommandsSession.h"

namespace kv::host {

// Both answer the exit code; what is refused and what fails is thrown (CommandsSession.h). Neither changes or
// saves the object. A class that does not serve the button is refused.

/// Prints the free tags: a line each run, "7" or "12 - 32767".
int ShowFreeTags(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
/// Writes the tags as constants of a source module into `File`, which replaces one that is there. A file that
/// can't be made is what the tool refuses, and no trouble of the machine's. Throws WrongUsage when `File` is
/// empty or the store.
int ExportConstants(Session& Work, const std::wstring& Clsid, const std::wstring& Name,
                    const std::string& File);

}  // namespace kv::host
