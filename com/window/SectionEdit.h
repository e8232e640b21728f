// The control in which the text of a section is written.
#pragma once

#include <string>

#include "com/window/Windows.h"

namespace kv::com {

/// A multi-line edit control, which it does not own.
class SectionEdit {
  public:
    static constexpr DWORD kStyle = WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOHSCROLL |
                                    ES_AUTOVSCROLL | ES_NOHIDESEL | ES_WANTRETURN;

    /// The control to write in; a tab in a text is as wide as four letters.
    void Take(HWND Control);

    /// Another section: its text, which has no changes and no history of undo. The cursor stands at the
    /// front. A text that the control would cut cannot be written to.
    void ShowSection(const std::wstring& Text);
    /// Nothing to edit.
    void ShowNothing();
    /// Back to the text that ShowSection was given.
    void Revert();
    /// The text with lines that end with CR LF; what ShowSection was given, letter by letter, while there are
    /// no changes.
    std::wstring Text() const;
    bool HasChanges() const noexcept { return Changed_; }
    bool ReadOnly() const noexcept { return ReadOnly_; }
    /// The control has told that its text is another. True when HasChanges is another.
    bool Touched();

    /// Puts the cursor at the front of the 1-based line where a text was refused; a line behind the last
    /// stands for the last.
    void GoToLine(int Line) const;
    int Cursor() const;
    void SetCursor(int Position) const;
    HWND Control() const noexcept { return Control_; }

  private:
    void Show(const std::wstring& Text, bool ReadOnly);

    HWND Control_ = nullptr;
    std::wstring Given_;  // the text as it came
    std::wstring Shown_;  // the same with the line ends of the control
    bool Showing_ = false;
    bool Changed_ = false;
    bool ReadOnly_ = true;
};

}  // namespace kv::com
