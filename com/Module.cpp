#include "com/Module.h"

#include <atomic>
#include <mutex>
#include <string>

#include "com/Failing.h"

namespace kv::com::module {
namespace {

HMODULE Loaded_ = nullptr;
std::atomic<long> Living_{0};

// Guarded, since class factory and nodes may be reached from any apartment.
std::mutex Gate_;
ITypeLib* Library_ = nullptr;
long Servers_ = 0;
DWORD Thread_ = 0;

[[noreturn]] void RefuseThread() {
    throw Refusal(RPC_E_WRONG_THREAD, L"Il server lavora su un solo thread, quello che lo ha creato");
}

}  // namespace

HMODULE Handle() noexcept { return Loaded_; }
void SetHandle(HMODULE Loaded) noexcept { Loaded_ = Loaded; }

std::wstring Path() {
    std::wstring Text(32768, L'\0');
    Text.resize(GetModuleFileNameW(Loaded_, Text.data(), static_cast<DWORD>(Text.size())));
    return Text;
}

void Hold() noexcept { ++Living_; }

void Drop() noexcept {
    if (--Living_ > 0) return;
    ITypeLib* Gone = nullptr;
    {
        const std::lock_guard<std::mutex> Locked(Gate_);
        if (Living_ == 0) Gone = std::exchange(Library_, nullptr);
    }
    if (Gone) Gone->Release();
}

bool Unused() noexcept { return Living_ == 0; }

Ref<ITypeLib> Library() {
    const std::lock_guard<std::mutex> Locked(Gate_);
    if (!Library_) {
        if (FAILED(LoadTypeLibEx(Path().c_str(), REGKIND_NONE, &Library_))) {
            Library_ = nullptr;
            throw Refusal(TYPE_E_CANTLOADLIBRARY, L"La libreria dei tipi non si legge");
        }
    }
    return Ref<ITypeLib>(Library_);
}

Ref<ITypeInfo> TypeOf(REFIID Interface) {
    Ref<ITypeInfo> Found;
    if (FAILED(Library()->GetTypeInfoOfGuid(Interface, Found.Out())))
        throw Refusal(TYPE_E_ELEMENTNOTFOUND, L"La libreria dei tipi non ha l'interfaccia");
    return Found;
}

void EnterServer() {
    const std::lock_guard<std::mutex> Locked(Gate_);
    const DWORD Here = GetCurrentThreadId();
    if (Servers_ > 0 && Thread_ != Here) RefuseThread();
    Thread_ = Here;
    ++Servers_;
}

void LeaveServer() noexcept {
    const std::lock_guard<std::mutex> Locked(Gate_);
    --Servers_;
}

void CheckThread() {
    const std::lock_guard<std::mutex> Locked(Gate_);
    if (Servers_ > 0 && Thread_ != GetCurrentThreadId()) RefuseThread();
}

}  // namespace kv::com::module
