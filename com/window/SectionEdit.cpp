#include "com/window/SectionEdit.h"

#include <algorithm>

#include "com/window/Handles.h"

namespace kv::com {
namespace {

constexpr UINT kTabUnits = 4 * 4;  // four letters, in quarters of one

// Each line ends with CR LF.
std::wstring WithLineEnds(const std::wstring& Text) {
    std::wstring Made;
    Made.reserve(Text.size() + Text.size() / 16);
    for (std::size_t At = 0; At < Text.size(); ++At) {
        if (Text[At] == L'\r') {
            Made += L"\r\n";
            if (At + 1 < Text.size() && Text[At + 1] == L'\n') ++At;
        } else if (Text[At] == L'\n') {
            Made += L"\r\n";
        } else {
            Made += Text[At];
        }
    }
    return Made;
}

}  // namespace

void SectionEdit::Take(HWND Control) {
    Control_ = Control;
    SendMessageW(Control_, EM_SETLIMITTEXT, 0, 0);  // as much as there is memory for
    SendMessageW(Control_, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&kTabUnits));
    ShowNothing();
}

void SectionEdit::ShowSection(const std::wstring& Text) {
    Show(Text, Text.find(L'\0') != std::wstring::npos);
}

void SectionEdit::ShowNothing() { Show({}, true); }

void SectionEdit::Revert() { ShowSection(std::wstring(Given_)); }

void SectionEdit::Show(const std::wstring& Text, bool ReadOnly) {
    Given_ = Text;
    Shown_ = WithLineEnds(Text);
    Changed_ = false;
    Showing_ = true;
    SetWindowTextW(Control_, Shown_.c_str());
    Showing_ = false;
    // Without the memory for the whole the control keeps what it can.
    ReadOnly_ = ReadOnly || static_cast<std::size_t>(GetWindowTextLengthW(Control_)) != Shown_.size();
    SendMessageW(Control_, EM_EMPTYUNDOBUFFER, 0, 0);
    SendMessageW(Control_, EM_SETREADONLY, ReadOnly_, 0);
    SetCursor(0);
}

std::wstring SectionEdit::Text() const { return Changed_ ? WithLineEnds(TextOf(Control_)) : Given_; }

// What was typed back is no change: only the letters tell. Texts of other lengths need no look.
bool SectionEdit::Touched() {
    if (Showing_) return false;
    const bool Now = static_cast<std::size_t>(GetWindowTextLengthW(Control_)) != Shown_.size() ||
                     TextOf(Control_) != Shown_;
    const bool Another = Now != Changed_;
    Changed_ = Now;
    return Another;
}

void SectionEdit::GoToLine(int Line) const {
    const auto Lines = static_cast<int>(SendMessageW(Control_, EM_GETLINECOUNT, 0, 0));
    const int Place = std::clamp(Line, 1, std::max(1, Lines)) - 1;
    SetCursor(static_cast<int>(SendMessageW(Control_, EM_LINEINDEX, static_cast<WPARAM>(Place), 0)));
}

int SectionEdit::Cursor() const {
    DWORD End = 0;
    SendMessageW(Control_, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&End));
    return static_cast<int>(End);
}

void SectionEdit::SetCursor(int Position) const {
    SendMessageW(Control_, EM_SETSEL, static_cast<WPARAM>(Position), Position);
    SendMessageW(Control_, EM_SCROLLCARET, 0, 0);
}

}  // namespace kv::com
