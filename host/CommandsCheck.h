// The command that reads the sections of stored objects back.
#pragma once

#include <optional>
#include <string>

#include "host/CommandsSession.h"

namespace kv::host {

/// Renders every section of the objects and parses it in strict mode, and makes the checks of a save, all on
/// a copy: nothing is stored. Then looks whether the objects that it names are there (References.h). Prints
/// one line a fault and goes on. An object that can't be loaded is a fault too. Without a class all objects
/// are checked, without a name all of the class. Answers 1 when there was a fault, else 0.
int CheckObjects(Session& Work, const std::optional<std::wstring>& Clsid,
                 const std::optional<std::wstring>& Name);

}  // namespace kv::host
