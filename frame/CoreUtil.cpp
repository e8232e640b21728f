#include "frame/CoreUtil.h"

#include <system_error>
#include <utility>

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

std::wstring Closed(std::wstring Folder) {
    if (Folder.empty() || Folder.back() == L'/' || Folder.back() == L'\\') return Folder;
    Folder.push_back(static_cast<wchar_t>(std::filesystem::path::preferred_separator));
    return Folder;
}

}  // namespace

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
        Path = std::filesystem::path(Text);
        return true;
    } catch (...) {
        return false;
    }
}

void CoreUtil::TrimEnd(std::wstring& Text, std::wstring_view Chars) noexcept {
    while (!Text.empty() && Chars.find(Text.back()) != std::wstring_view::npos) Text.pop_back();
}

}  // namespace kv
