// The file as the process has loaded it: what lives, its type library, the thread that it serves.
#pragma once

#include <string>

#include "com/Common.h"
#include "com/Ref.h"

namespace kv::com::module {

/// Handle of this file, not of the program.
HMODULE Handle() noexcept;
void SetHandle(HMODULE Loaded) noexcept;
std::wstring Path();

/// Counts what keeps the file in memory: objects, and locks of the class factory.
void Hold() noexcept;
void Drop() noexcept;
bool Unused() noexcept;

class Holder {
  public:
    Holder() noexcept { Hold(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { Drop(); }
};

/// The type library in the resources of this file, kept while anything lives. Throws Refusal.
Ref<ITypeLib> Library();
/// What the library tells of an interface.
Ref<ITypeInfo> TypeOf(REFIID Interface);

/// The core serves one thread. While a server object lives all others are on its thread: throws Refusal
/// elsewhere.
void EnterServer();
void LeaveServer() noexcept;
/// Throws Refusal on another thread than that of the server objects.
void CheckThread();

}  // namespace kv::com::module
