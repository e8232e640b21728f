// The command `kvdesign`: the command line taken apart, the command run, the exit code.
#pragma once

#include <iosfwd>

namespace kv::host {

/// Runs one command line. Answers 0 when it is done, 1 when the server has refused (its message is on Err), 2
/// for a command line that makes no sense, 3 when the store or a file failed.
int RunProgram(int Count, const char* const* Arguments, std::istream& In, std::ostream& Out,
               std::ostream& Err);

}  // namespace kv::host
