#include "com/window/WindowsPlatform.h"

// behind windows.h
#include <commdlg.h>

#include <algorithm>
#include <string>
#include <vector>

#include "com/window/Boxes.h"

namespace kv::com {
namespace {

static_assert(box::kYesNoCancel == MB_YESNOCANCEL && box::kYesNo == MB_YESNO && box::kOk == MB_OK);
static_assert(box::kCritical == MB_ICONERROR && box::kQuestion == MB_ICONQUESTION &&
              box::kExclamation == MB_ICONWARNING && box::kInformation == MB_ICONINFORMATION);
static_assert(box::kDefaultSecond == MB_DEFBUTTON2 && box::kDefaultThird == MB_DEFBUTTON3 &&
              box::kForeground == MB_SETFOREGROUND);
constexpr std::int32_t kStyles = box::kButtons | box::kIcons | box::kDefaults | box::kForeground;

// The flags of the file dialog that ask nothing of the caller in return.
constexpr std::int32_t kFileFlags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                                    OFN_PATHMUSTEXIST | OFN_CREATEPROMPT | OFN_NOREADONLYRETURN;

constexpr std::size_t kLongestPath = 32768;

// "*.bas" is written with the extension "bas"; a pattern that names none has none.
std::wstring ExtensionOf(std::wstring_view Filter, std::int32_t Index) {
    std::vector<std::wstring_view> Parts;
    for (std::size_t At = 0; At <= Filter.size();) {
        const std::size_t Bar = std::min(Filter.find(L'|', At), Filter.size());
        Parts.push_back(Filter.substr(At, Bar - At));
        At = Bar + 1;
    }
    const auto Place = static_cast<std::size_t>(2 * std::max(1, Index) - 1);
    if (Place >= Parts.size()) return {};
    const std::wstring_view First = Parts[Place].substr(0, Parts[Place].find(L';'));
    if (First.substr(0, 2) != L"*." || First.find(L'*', 1) != std::wstring_view::npos) return {};
    return std::wstring(First.substr(2));
}

}  // namespace

void WindowsPlatform::ShowError(const KvError& Error) {
    static_cast<void>(MessageBox(Error.Description, box::kOk + box::kCritical));
}

Answer WindowsPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    const int Given = MessageBoxW(GetActiveWindow(), std::wstring(Text).c_str(), kCaption,
                                  static_cast<UINT>(Style & kStyles));
    switch (Given) {
        case IDOK:
            return Answer::Ok;
        case IDYES:
            return Answer::Yes;
        case IDNO:
            return Answer::No;
        case IDCANCEL:
            return (Style & box::kButtons) == box::kOk ? Answer::Ok : Answer::Cancel;
        default:
            return DefaultAnswer(Style);  // the box could not be shown
    }
}

std::optional<std::wstring> WindowsPlatform::SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                      std::int32_t FilterIndex, std::int32_t Flags) {
    const std::wstring Caption(Title);
    const std::wstring Extension = ExtensionOf(Filter, FilterIndex);
    std::wstring Kinds(Filter);
    std::replace(Kinds.begin(), Kinds.end(), L'|', L'\0');
    Kinds.append(2, L'\0');
    std::vector<wchar_t> File(kLongestPath);

    OPENFILENAMEW Asked{};
    Asked.lStructSize = sizeof Asked;
    Asked.hwndOwner = GetActiveWindow();
    Asked.lpstrFilter = Filter.empty() ? nullptr : Kinds.c_str();
    Asked.nFilterIndex = static_cast<DWORD>(std::max(1, FilterIndex));
    Asked.lpstrFile = File.data();
    Asked.nMaxFile = static_cast<DWORD>(File.size());
    Asked.lpstrTitle = Caption.empty() ? nullptr : Caption.c_str();
    Asked.lpstrDefExt = Extension.empty() ? nullptr : Extension.c_str();
    Asked.Flags = static_cast<DWORD>(Flags & kFileFlags) | OFN_EXPLORER | OFN_NOCHANGEDIR;
    if (!GetSaveFileNameW(&Asked)) return std::nullopt;
    return std::wstring(File.data());
}

void WindowsPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    ShowLines(GetActiveWindow(), std::wstring(Caption), Items);
}

void WindowsPlatform::Beep() { MessageBeep(MB_OK); }

void WindowsPlatform::SetPointer(std::int32_t Pointer) {
    SetCursor(LoadCursorW(nullptr, Pointer == kPointerWait ? IDC_WAIT : IDC_ARROW));
}

std::wstring WindowsPlatform::ProgramFolder() {
    std::wstring Path(kLongestPath, L'\0');
    const DWORD Length = GetModuleFileNameW(nullptr, Path.data(), static_cast<DWORD>(Path.size()));
    Path.resize(Length);
    const std::size_t End = Path.find_last_of(L"\\/");
    return End == std::wstring::npos ? L"." : Path.substr(0, End);
}

std::wstring WindowsPlatform::TempFolder() {
    std::wstring Path(kLongestPath, L'\0');
    const DWORD Length = GetTempPathW(static_cast<DWORD>(Path.size()), Path.data());
    if (Length == 0) return L".";
    Path.resize(Length);
    return Path;
}

}  // namespace kv::com
