// A program of somebody else's, built against the installed library alone.
#include <cstdio>
#include <memory>

#include "frame/RegData.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"

int main() {
    kv::vdSvr Server(nullptr, [] { return std::make_shared<kv::window::TreeModel>(); });
    std::wstring Text;
    const bool Failed = Server.Export(std::make_shared<kv::MemoryRegData>(L"MEMBER"), L"MEMBER", Text);
    if (Failed || Server.CurrVersion() != 256 || Text.rfind(L"\tBEGIN PARMS\r\n", 0) != 0) return 1;
    std::printf("%s\n", KVDESIGN_VERSION);
    return 0;
}
