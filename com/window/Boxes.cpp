#include "com/window/Boxes.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

#include "com/window/Handles.h"
#include "com/window/Texts.h"

namespace kv::com {
namespace {

/// A dialog whose controls are made in code, sized by the font of the system's messages.
class Form {
  public:
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    /// What ended it: the id of a button, IDCANCEL for Escape and the window's own button.
    INT_PTR Show(HWND Owner) {
        // No controls, no menu, the dialog's own class, no caption.
        alignas(DWORD) std::byte Template[sizeof(DLGTEMPLATE) + 3 * sizeof(WORD)]{};
        DLGTEMPLATE Empty{};
        Empty.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
        std::memcpy(Template, &Empty, sizeof Empty);
        const INT_PTR End = DialogBoxIndirectParamW(OwnModule(), reinterpret_cast<LPCDLGTEMPLATEW>(Template),
                                                    Owner, Procedure, reinterpret_cast<LPARAM>(this));
        if (Thrown_) std::rethrow_exception(std::exchange(Thrown_, nullptr));
        return End;
    }

  protected:
    Form() = default;
    /// Makes the controls; answers the size of the inside.
    virtual SIZE Fill() = 0;
    /// A button that does not end the form. True when it was one.
    virtual bool Pressed(int) { return false; }

    HWND Window() const noexcept { return Window_; }
    HFONT Font() const noexcept { return Font_.get(); }
    LetterSize Letter() const { return SizeOf(Font_.get()); }

    HWND Add(const wchar_t* Class, const std::wstring& Text, DWORD Style, DWORD ExtendedStyle, int Id,
             const RECT& At) const {
        const HWND Made =
            CreateWindowExW(ExtendedStyle, Class, Text.c_str(), WS_CHILD | WS_VISIBLE | Style, At.left,
                            At.top, At.right - At.left, At.bottom - At.top, Window_,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(Id)), OwnModule(), nullptr);
        SendMessageW(Made, WM_SETFONT, reinterpret_cast<WPARAM>(Font_.get()), FALSE);
        return Made;
    }

    struct Button {
        std::wstring Label;
        int Id;
    };
    int ButtonWidth(const std::vector<Button>& Row) const {
        int Width = 12 * Letter().Width;
        for (const Button& Each : Row)
            Width = std::max(Width, WidthOf(Font(), Each.Label) + 4 * Letter().Width);
        return Width;
    }
    int ButtonHeight() const { return 2 * Letter().Height - Letter().Height / 4; }
    /// A row of buttons that ends at `Right`; the one with the id `Default` is the default one.
    void AddButtons(const std::vector<Button>& Row, int Default, int Right, int Top) const {
        const int Gap = Letter().Width;
        const int Width = ButtonWidth(Row);
        int Left = Right - static_cast<int>(Row.size()) * (Width + Gap) + Gap;
        for (const Button& Each : Row) {
            Add(L"BUTTON", Each.Label, WS_TABSTOP | (Each.Id == Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                0, Each.Id, {Left, Top, Left + Width, Top + ButtonHeight()});
            Left += Width + Gap;
        }
        SendMessageW(Window_, DM_SETDEFID, static_cast<WPARAM>(Default), 0);
    }

    std::wstring Caption_ = kCaption;
    HWND First_ = nullptr;  // has the keyboard first

  private:
    void Start() {
        SetWindowTextW(Window_, Caption_.c_str());
        const SIZE Inside = Fill();
        RECT Outer{0, 0, Inside.cx, Inside.cy};
        AdjustWindowRectEx(&Outer, static_cast<DWORD>(GetWindowLongPtrW(Window_, GWL_STYLE)), FALSE,
                           static_cast<DWORD>(GetWindowLongPtrW(Window_, GWL_EXSTYLE)));
        const int Width = Outer.right - Outer.left;
        const int Height = Outer.bottom - Outer.top;
        RECT Over{};
        const HWND Owner = GetWindow(Window_, GW_OWNER);
        RECT Work{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &Work, 0);
        if (!Owner || !GetWindowRect(Owner, &Over)) Over = Work;
        // In the middle of the owner, but on the screen.
        const int Left = std::max<int>(Work.left, (Over.left + Over.right - Width) / 2);
        const int Top = std::max<int>(Work.top, (Over.top + Over.bottom - Height) / 2);
        SetWindowPos(Window_, nullptr, Left, Top, Width, Height, SWP_NOZORDER | SWP_NOACTIVATE);
        if (First_) SetFocus(First_);
    }

    static INT_PTR CALLBACK Procedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept {
        if (Message == WM_INITDIALOG) SetWindowLongPtrW(Window, DWLP_USER, L);
        auto* const Of = reinterpret_cast<Form*>(GetWindowLongPtrW(Window, DWLP_USER));
        if (!Of) return FALSE;
        try {
            switch (Message) {
                case WM_INITDIALOG:
                    Of->Window_ = Window;
                    Of->Start();
                    return FALSE;  // the keyboard is where it should be
                case WM_COMMAND:
                    if (HIWORD(W) != BN_CLICKED || Of->Pressed(LOWORD(W))) return TRUE;
                    EndDialog(Window, LOWORD(W));
                    return TRUE;
                default:
                    return FALSE;
            }
        } catch (...) {
            Of->Thrown_ = std::current_exception();
            EndDialog(Window, IDCANCEL);
            return TRUE;
        }
    }

    HWND Window_ = nullptr;
    Owned<HFONT> Font_ = MessageFont();
    std::exception_ptr Thrown_;
};

class Question final : public Form {
  public:
    Question(const std::wstring& Text, const std::vector<std::wstring>& Labels) : Text_(Text) {
        for (const std::wstring& Label : Labels)
            Buttons_.push_back({Label, kFirst + static_cast<int>(Buttons_.size())});
        Buttons_.back().Id = IDCANCEL;
    }
    std::size_t Chosen(INT_PTR End) const {
        return End >= kFirst ? static_cast<std::size_t>(End - kFirst) : Buttons_.size() - 1;
    }

  private:
    static constexpr int kFirst = 1000;

    SIZE Fill() override {
        const LetterSize Of = Letter();
        const int Edge = 2 * Of.Width;
        const int Icon = GetSystemMetrics(SM_CXICON);
        const int Row = static_cast<int>(Buttons_.size()) * (ButtonWidth(Buttons_) + Of.Width) - Of.Width;
        // A text that is longer than a line of sixty letters is broken.
        const int Widest = std::max(60 * Of.Width, Row - Icon - Edge);
        const int Width = std::min(WidthOf(Font(), Text_) + Of.Width, Widest);
        const int Lines = WidthOf(Font(), Text_) / (Width - 12 * Of.Width) + 1;
        const int Height = std::max(Icon, (Lines + 1) * Of.Height);
        const int Right = std::max(Icon + Edge + Width, Row) + Edge;
        SendMessageW(Add(L"STATIC", L"", SS_ICON, 0, -1, {Edge, Edge, Edge + Icon, Edge + Icon}), STM_SETICON,
                     reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_QUESTION)), 0);
        Add(L"STATIC", Text_, SS_LEFT | SS_NOPREFIX, 0, -1,
            {Edge + Icon + Edge, Edge, Edge + Icon + Edge + Width, Edge + Height});
        const int Top = Edge + Height + Of.Height / 2;
        AddButtons(Buttons_, Buttons_.front().Id, Right, Top);
        First_ = GetDlgItem(Window(), Buttons_.front().Id);
        return {Right + Edge, Top + ButtonHeight() + Edge};
    }

    std::wstring Text_;
    std::vector<Button> Buttons_;
};

class List final : public Form {
  public:
    List(const std::wstring& Caption, std::span<const std::wstring> Lines) : Lines_(Lines) {
        Caption_ = Caption;
    }

  private:
    static constexpr int kList = 1000;
    static constexpr int kCopy = 1001;

    SIZE Fill() override {
        const LetterSize Of = Letter();
        const int Edge = 2 * Of.Width;
        int Widest = 40 * Of.Width;
        for (const std::wstring& Line : Lines_) Widest = std::max(Widest, WidthOf(Font(), Line));
        const std::vector<Button> Buttons{{text::kCopy, kCopy}, {text::kCloseForm, IDCANCEL}};
        const int Scroll = GetSystemMetrics(SM_CXVSCROLL) + Edge;
        const int Right = Edge + std::min(Widest, 100 * Of.Width) + Scroll;
        const int Bottom = Edge + 22 * Of.Height;
        First_ = Add(L"LISTBOX", Caption_,
                     WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_EXTENDEDSEL | LBS_NOINTEGRALHEIGHT,
                     WS_EX_CLIENTEDGE, kList, {Edge, Edge, Right, Bottom});
        SendMessageW(First_, WM_SETREDRAW, FALSE, 0);
        for (const std::wstring& Line : Lines_)
            SendMessageW(First_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Line.c_str()));
        SendMessageW(First_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(Widest + Edge), 0);
        SendMessageW(First_, WM_SETREDRAW, TRUE, 0);
        AddButtons(Buttons, IDCANCEL, Right, Bottom + Of.Height / 2);
        return {Right + Edge, Bottom + Of.Height / 2 + ButtonHeight() + Edge};
    }

    // What is selected, or all where nothing is.
    bool Pressed(int Id) override {
        if (Id != kCopy) return false;
        std::vector<int> Places(
            static_cast<std::size_t>(std::max<LRESULT>(0, SendMessageW(First_, LB_GETSELCOUNT, 0, 0))));
        SendMessageW(First_, LB_GETSELITEMS, Places.size(), reinterpret_cast<LPARAM>(Places.data()));
        std::wstring Text;
        for (std::size_t I = 0; I < (Places.empty() ? Lines_.size() : Places.size()); ++I)
            Text += Lines_[Places.empty() ? I : static_cast<std::size_t>(Places[I])] + L"\r\n";
        if (!CopyText(Window(), Text)) MessageBeep(MB_ICONWARNING);
        return true;
    }

    std::span<const std::wstring> Lines_;
};

}  // namespace

std::size_t Choose(HWND Owner, const std::wstring& Text, const std::vector<std::wstring>& Labels) {
    Question Asked(Text, Labels);
    return Asked.Chosen(Asked.Show(Owner));
}

void ShowLines(HWND Owner, const std::wstring& Caption, std::span<const std::wstring> Lines) {
    List(Caption, Lines).Show(Owner);
}

bool CopyText(HWND Owner, const std::wstring& Text) {
    if (!OpenClipboard(Owner)) return false;
    bool Done = false;
    const std::size_t Bytes = (Text.size() + 1) * sizeof(wchar_t);
    if (const HGLOBAL Memory = GlobalAlloc(GMEM_MOVEABLE, Bytes)) {
        if (void* const At = GlobalLock(Memory)) {
            std::memcpy(At, Text.c_str(), Bytes);
            GlobalUnlock(Memory);
            Done = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, Memory);
        }
        if (!Done) GlobalFree(Memory);  // else it is the clipboard's
    }
    CloseClipboard();
    return Done;
}

}  // namespace kv::com
