#include "frame/CoreUtil.h"

#include <system_error>
#include <utility>

#include "frame/StrUtil.h"

namespace kv {
namespace {

// Room for the words of an out-of-memory fault and for the longest source name, so that reporting one never
// needs memory itself.
constexpr std::size_t kReserved = 128;

void Empty(KvError& Error) noexcept {
    Error.Number = 0;
    Error.Source.clear();
    Error.Description.clear();
    Error.HelpFile.clear();
    Error.HelpContext.clear();
    Error.LastDLLError = 0;
    Error.Line = 0;
}

// False for a character that is none of Unicode's. A pair of 16-bit halves is one character, whatever the
// width of wchar_t; a half alone is none.
bool AppendUtf8(std::wstring_view Text, std::u8string& Bytes) {
    const auto Put = [&](std::uint32_t Byte) { Bytes.push_back(static_cast<char8_t>(Byte)); };
    for (std::size_t At = 0; At < Text.size(); ++At) {
        auto Code = static_cast<std::uint32_t>(Text[At]);
        if (Code >= 0xD800 && Code <= 0xDBFF && At + 1 < Text.size()) {
            const auto Second = static_cast<std::uint32_t>(Text[At + 1]);
            if (Second >= 0xDC00 && Second <= 0xDFFF) {
                Code = 0x10000 + ((Code & 0x3FFU) << 10U) + (Second & 0x3FFU);
                ++At;
            }
        }
        if (Code > 0x10FFFF || (Code >= 0xD800 && Code <= 0xDFFF)) return false;
        if (Code < 0x80) {
            Put(Code);
            continue;
        }
        if (Code < 0x800) {
            Put(0xC0U | (Code >> 6U));
        } else if (Code < 0x10000) {
            Put(0xE0U | (Code >> 12U));
            Put(0x80U | ((Code >> 6U) & 0x3FU));
        } else {
            Put(0xF0U | (Code >> 18U));
            Put(0x80U | ((Code >> 12U) & 0x3FU));
            Put(0x80U | ((Code >> 6U) & 0x3FU));
        }
        Put(0x80U | (Code & 0x3FU));
    }
    return true;
}

std::wstring Closed(std::wstring Folder) {
    if (Folder.empty() || Folder.back() == L'/' || Folder.back() == L'\\') return Folder;
    Folder.push_back(static_cast<wchar_t>(std::filesystem::path::preferred_separator));
    return Folder;
}

}  // namespace

RegistryServer::~RegistryServer() { CoreUtil::Instance().ForgetRegistry(this); }

CoreUtil& CoreUtil::Instance() noexcept {
    static CoreUtil One;
    return One;
}

CoreUtil::CoreUtil() {
    for (KvError* Error : {&Pending_, &Stored_}) {
        Error->Source.reserve(kReserved);
        Error->Description.reserve(kReserved);
    }
}

void CoreUtil::Init(RegistryServer* Registry, std::wstring_view IniFile, std::int32_t Mode) {
    IniFile_ = IniFile;
    Registry_ = Registry;
    Mode_ = Mode;
}

Platform* CoreUtil::SetPlatform(Platform* Door) noexcept {
    Platform* const Before = Platform_ == &Silent_ ? nullptr : Platform_;
    Platform_ = Door ? Door : &Silent_;
    return Before;
}

bool CoreUtil::ReportError(const KvError& Error, std::int32_t Flags) noexcept {
    StoredFlags_ = Flags;
    try {
        Stored_ = Error;
    } catch (...) {
        KeepOutOfMemory({});
    }
    return true;
}

void CoreUtil::KeepOutOfMemory(std::wstring_view Source) noexcept {
    Empty(Pending_);
    Empty(Stored_);
    StoredFlags_ = 0;
    Stored_.Number = fault::kOutOfMemory;
    // If even the room kept beforehand is gone the number alone tells.
    const std::wstring_view Text = detail::TextOfFault(fault::kOutOfMemory);
    if (Stored_.Description.capacity() >= Text.size()) Stored_.Description.assign(Text);
    if (Stored_.Source.capacity() >= Source.size()) Stored_.Source.assign(Source);
}

void CoreUtil::NoteLine(std::int32_t Line) noexcept {
    if (!Stored_.Empty() && Stored_.Line == 0) Stored_.Line = Line;
}

void CoreUtil::ShowLastError() noexcept {
    if (Stored_.Empty()) return;
    // The store is empty while the operator reads: what is reported meanwhile is an error of its own.
    KvError Shown;
    std::swap(Shown, Stored_);
    StoredFlags_ = 0;
    try {
        Platform_->ShowError(Shown);
    } catch (...) {
        // A door that fails can't be told about it; the operation has answered True already.
    }
    if (!Stored_.Empty()) return;
    std::swap(Shown, Stored_);  // the room kept for reporting comes back
    Empty(Stored_);
}

void CoreUtil::FetchLastError(std::int32_t& Number, std::wstring& Source, std::wstring& Description,
                              std::wstring& HelpFile, std::wstring& HelpContext,
                              std::int32_t& LastDLLError) const {
    Number = Stored_.Number;
    Source = Stored_.Source;
    Description = Stored_.Description;
    HelpFile = Stored_.HelpFile;
    HelpContext = Stored_.HelpContext;
    LastDLLError = Stored_.LastDLLError;
}

void CoreUtil::ForgetError() noexcept {
    Empty(Stored_);
    StoredFlags_ = 0;
}

std::wstring CoreUtil::SystemText(std::int32_t SystemError) const {
    const std::string Text = std::system_category().message(SystemError);
    std::wstring Wide;
    for (const char C : Text) Wide.push_back(static_cast<wchar_t>(static_cast<unsigned char>(C)));
    return Wide;
}

std::wstring CoreUtil::ProgramFolder() { return Closed(Platform_->ProgramFolder()); }
std::wstring CoreUtil::TempFolder() { return Closed(Platform_->TempFolder()); }

bool CoreUtil::FileExists(const std::wstring& Path) const noexcept {
    std::filesystem::path File;
    std::error_code Ignored;
    return ToPath(Path, File) && std::filesystem::exists(File, Ignored);
}

bool CoreUtil::ToPath(const std::wstring& Text, std::filesystem::path& Path) noexcept {
    try {
        // Where names are bytes the library would narrow by the locale of the process; they are UTF-8
        // whatever that is.
        std::u8string Bytes;
        if (!AppendUtf8(Text, Bytes)) return false;
        Path = std::filesystem::path(Bytes);
        return true;
    } catch (...) {
        return false;
    }
}

std::int16_t CoreUtil::PackVersion(std::int16_t Major, std::int16_t Minor) {
    const auto Byte = [](std::int16_t Part) { return static_cast<unsigned>(StrUtil::ToByte(Part)); };
    return static_cast<std::int16_t>(Byte(Major) << 8U | Byte(Minor));
}

void CoreUtil::UnpackVersion(std::int16_t Version, std::int16_t& Major, std::int16_t& Minor) noexcept {
    const auto Bits = static_cast<std::uint16_t>(Version);
    Major = static_cast<std::int16_t>(Bits >> 8U);
    Minor = static_cast<std::int16_t>(Bits & 0xFFU);
}

void CoreUtil::TrimEnd(std::wstring& Text, std::wstring_view Chars) noexcept {
    while (!Text.empty() && Chars.find(Text.back()) != std::wstring_view::npos) Text.pop_back();
}

}  // namespace kv
