#include "host/HostPlatform.h"

#include <optional>
#include <string_view>
#include <system_error>

#include "host/Text.h"

namespace kv::host {
namespace {

// The library's own conversion knows ASCII alone where no locale is set.
std::wstring Wide(const std::filesystem::path& Folder) {
    const std::u8string Bytes = Folder.u8string();
    std::optional<std::wstring> Text =
        FromUtf8(std::string_view(reinterpret_cast<const char*>(Bytes.data()), Bytes.size()));
    if (!Text)
        throw std::filesystem::filesystem_error("the name of the folder is not UTF-8", Folder,
                                                std::make_error_code(std::errc::illegal_byte_sequence));
    return *std::move(Text);
}

}  // namespace

HostPlatform::HostPlatform(const std::filesystem::path& ProgramDir, const std::filesystem::path& Temp)
    : ProgramFolder_(Wide(ProgramDir)), TempFolder_(Wide(Temp)) {}

void HostPlatform::SetProgramFolder(const std::filesystem::path& ProgramDir) {
    ProgramFolder_ = Wide(ProgramDir);
}

}  // namespace kv::host
