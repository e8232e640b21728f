#include "com/window/ObjectFrame.h"

#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "com/window/Boxes.h"
#include "com/window/Texts.h"
#include "frame/CoreUtil.h"
#include "resources/ToolButtons.h"

namespace kv::com {
namespace {

using window::Command;
using window::Filled;
using window::Phrase;
using window::TreeNode;

constexpr const wchar_t* kClass = L"KvDesSvrObject";
constexpr WORD kIcon = 32001;
constexpr WORD kDragCursor = 32102;
constexpr WORD kNoDropCursor = 32103;
constexpr int kLeastTree = 12;        // letters
constexpr UINT kFollow = WM_APP + 1;  // the operator has selected another node

bool KeyDown(int Key) { return GetKeyState(Key) < 0; }

/// True for as long as it lives.
class While {
  public:
    explicit While(bool& Of) : Of_(Of), Before_(std::exchange(Of, true)) {}
    While(const While&) = delete;
    While& operator=(const While&) = delete;
    ~While() { Of_ = Before_; }

  private:
    bool& Of_;
    bool Before_;
};

/// The words of the clipboard among those of the tool bar.
struct ClipboardWord {
    std::wstring_view Word;
    int Id;
};
constexpr ClipboardWord kClipboard[] = {
    {resources::kClipboardWords[0], command::kCopy},
    {resources::kClipboardWords[1], command::kCut},
    {resources::kClipboardWords[2], command::kPaste},
};

/// A window that is disabled while this one is open.
class Disabled {
  public:
    explicit Disabled(HWND Of) : Of_(Of && !EnableWindow(Of, FALSE) ? Of : nullptr) {}
    Disabled(const Disabled&) = delete;
    Disabled& operator=(const Disabled&) = delete;
    ~Disabled() {
        if (Of_) EnableWindow(Of_, TRUE);
    }

  private:
    HWND Of_;  // null where there is none or it was disabled already
};

HICON SignOf(LPCWSTR Icon, int Side) {
    return static_cast<HICON>(CopyImage(LoadIconW(nullptr, Icon), IMAGE_ICON, Side, Side, 0));
}

}  // namespace

// The commands.

/// In the order of the menus.
struct ObjectFrame::Row {
    int Id;
    const wchar_t* KeyText;
    BYTE Modifiers;
    WORD Key;
    const wchar_t* Picture;  // on the tool bar, behind the words of the server; empty for none
    bool (ObjectFrame::*Do)();
    bool OfTree = false;  // the key belongs to the text while it is being written
};

namespace {

static_assert(command::kOtherPane - command::kSave == static_cast<int>(Command::kOtherPane));

/// What the window has besides: an edit control does not select all by itself.
constexpr window::CommandRow kOwn{Command::kOtherPane, window::Menu::kText, "selectAll", L"S&eleziona tutto"};

const window::CommandRow& SharedRow(int Id) {
    return Id == command::kSelectAll ? kOwn : window::RowOf(static_cast<Command>(Id - command::kSave));
}

int IdOf(Command Of) { return command::kSave + static_cast<int>(Of); }

}  // namespace

// clang-format off
const ObjectFrame::Row ObjectFrame::kCommands[] = {
    {command::kSave, L"Ctrl+S", FCONTROL, 'S', L"save", &ObjectFrame::Save},
    {command::kReload, L"F5", 0, VK_F5, L"", &ObjectFrame::Reload},
    {command::kClose, L"Ctrl+W", FCONTROL, 'W', L"", &ObjectFrame::Close},
    {command::kCopy, L"Ctrl+C", FCONTROL, 'C', L"", &ObjectFrame::Copy},
    {command::kCut, L"Ctrl+X", FCONTROL, 'X', L"", &ObjectFrame::Cut},
    {command::kPaste, L"Ctrl+V", FCONTROL, 'V', L"", &ObjectFrame::Paste},
    {command::kNew, L"Ins", 0, VK_INSERT, L"new", &ObjectFrame::NewElement, true},
    {command::kDelete, L"Canc", 0, VK_DELETE, L"delete", &ObjectFrame::DeleteElement, true},
    {command::kDeleteAll, L"Ctrl+Maiusc+Canc", FCONTROL | FSHIFT, VK_DELETE, L"", &ObjectFrame::DeleteAll},
    {command::kMoveUp, L"Alt+Su", FALT, VK_UP, L"up", &ObjectFrame::MoveUp},
    {command::kMoveDown, L"Alt+Giù", FALT, VK_DOWN, L"down", &ObjectFrame::MoveDown},
    {command::kProperties, L"F4", 0, VK_F4, L"", &ObjectFrame::ShowProperties},
    {command::kApply, L"Ctrl+Invio", FCONTROL, VK_RETURN, L"apply", &ObjectFrame::Apply},
    {command::kRevert, L"Ctrl+R", FCONTROL, 'R', L"revert", &ObjectFrame::Revert},
    {command::kSelectAll, L"Ctrl+A", FCONTROL, 'A', L"", &ObjectFrame::SelectAll},
    {command::kStrict, L"Ctrl+K", FCONTROL, 'K', L"", &ObjectFrame::SwitchStrict},
    {command::kFind, L"Ctrl+F", FCONTROL, 'F', L"", &ObjectFrame::Find},
    {command::kFindNext, L"F3", 0, VK_F3, L"", &ObjectFrame::FindNext},
    {command::kOtherPane, L"F6", 0, VK_F6, L"", &ObjectFrame::OtherPane},
};
// clang-format on

// The window.

ObjectFrame::ObjectFrame(window::WindowCore& Core, HWND Owner)
    : Core_(Core), Owner_(Owner), Font_(MessageFont()), Fixed_(FixedFont()), Letter_(SizeOf(Font_.get())) {
    SignOfFault_.reset(SignOf(IDI_WARNING, Letter_.Height));
    SignOfWord_.reset(SignOf(IDI_INFORMATION, Letter_.Height));
    Button_ = 4 * Letter_.Width + std::max(WidthOf(Font_.get(), LabelOf(command::kApply)),
                                           WidthOf(Font_.get(), LabelOf(command::kRevert)));
    Row_ = 2 * Button_ + 2 * Letter_.Width + WidthOf(Font_.get(), LabelOf(command::kStrict)) +
           2 * Letter_.Height;
    try {
        Make();
        std::wstring Name, Desc, Id, Clsid, Users;
        std::int16_t Version = 0;
        if (!Core_.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users))
            Status_ = {Clsid, Desc, Filled(Say(Phrase::kVersion), {std::to_wstring(Version)}),
                       Filled(Say(Phrase::kId), {Id})};
        MakeStatus();
        Desk_.Show();
        Layout();
        ShowWindow(Window_, SW_SHOWNORMAL);
        SetForegroundWindow(Window_);
        SetFocus(Tree_);
    } catch (...) {
        TakeAway();
        throw;
    }
}

ObjectFrame::~ObjectFrame() { TakeAway(); }

// A class that another showing still uses stays.
void ObjectFrame::TakeAway() noexcept {
    if (Window_) DestroyWindow(Window_);
    UnregisterClassW(kClass, OwnModule());
}

void ObjectFrame::Lost() noexcept {
    Nodes_.reset();
    Window_ = nullptr;
    Open_ = false;
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // the loop looks up
}

void ObjectFrame::Make() {
    INITCOMMONCONTROLSEX Wanted{sizeof Wanted, ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&Wanted);
    WNDCLASSEXW Class{};
    Class.cbSize = sizeof Class;
    Class.lpfnWndProc = Procedure;
    Class.hInstance = OwnModule();
    Class.hIcon = static_cast<HICON>(
        LoadImageW(OwnModule(), MAKEINTRESOURCEW(kIcon), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
    Class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    Class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    Class.lpszClassName = kClass;
    if (!RegisterClassExW(&Class) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) Raise(text::kNoWindow);

    RECT Work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &Work, 0);
    const int Width = std::min<int>(130 * Letter_.Width, Work.right - Work.left);
    const int Height = std::min<int>(40 * Letter_.Height, Work.bottom - Work.top);
    Split_ = Width / 3;
    const HWND Made =
        CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        (Work.left + Work.right - Width) / 2, (Work.top + Work.bottom - Height) / 2, Width,
                        Height, Owner_, nullptr, OwnModule(), this);
    if (!Made || !Tree_ || !Text_.Control()) Raise(text::kNoWindow);
}

HWND ObjectFrame::Child(const wchar_t* Class, const wchar_t* Text, DWORD Style, DWORD ExtendedStyle, int Id) {
    const HWND Made =
        CreateWindowExW(ExtendedStyle, Class, Text, WS_CHILD | WS_VISIBLE | Style, 0, 0, 0, 0, Window_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(Id)), OwnModule(), nullptr);
    SendMessageW(Made, WM_SETFONT, reinterpret_cast<WPARAM>(Font_.get()), FALSE);
    return Made;
}

// In the order in which Tab walks.
void ObjectFrame::MakeChildren() {
    MakeToolBar();
    const std::wstring Sought = Say(Phrase::kSearch);
    const HWND Search = Child(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, control::kSearch);
    SendMessageW(Search, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(Sought.c_str()));
    Tree_ = Child(WC_TREEVIEWW, Say(Phrase::kTree).c_str(),
                  WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS,
                  WS_EX_CLIENTEDGE, control::kTree);
    Child(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 0, control::kHeading);
    const HWND Text = Child(L"EDIT", L"", SectionEdit::kStyle, WS_EX_CLIENTEDGE, control::kText);
    SendMessageW(Text, WM_SETFONT, reinterpret_cast<WPARAM>(Fixed_.get()), FALSE);
    Text_.Take(Text);
    Child(L"BUTTON", LabelOf(command::kStrict).c_str(), WS_TABSTOP | BS_CHECKBOX, 0, command::kStrict);
    Child(L"BUTTON", LabelOf(command::kApply).c_str(), WS_TABSTOP | BS_PUSHBUTTON, 0, command::kApply);
    Child(L"BUTTON", LabelOf(command::kRevert).c_str(), WS_TABSTOP | BS_PUSHBUTTON, 0, command::kRevert);
    Child(L"STATIC", L"", SS_ICON | SS_REALSIZECONTROL, 0, control::kSign);
    Child(L"EDIT", L"", WS_TABSTOP | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0, control::kMessage);
    Child(STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0, control::kStatus);
    Nodes_ = std::make_unique<NodesView>(Core_.Tree(), Tree_);
}

void ObjectFrame::AddTo(HMENU Menu, const Row& Command) {
    AppendMenuW(Menu, MF_STRING, static_cast<UINT_PTR>(Command.Id),
                (std::wstring(SharedRow(Command.Id).Caption) + L"\t" + Command.KeyText).c_str());
}

const ObjectFrame::Row* ObjectFrame::RowOf(int Id) {
    const Row* const Of = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&](const Row& Each) { return Each.Id == Id; });
    return Of == std::end(kCommands) ? nullptr : Of;
}

void ObjectFrame::MakeMenus() {
    Owned<HMENU> Bar(CreateMenu());
    for (std::size_t Menu = 0; Menu < std::size(window::kMenus); ++Menu) {
        Owned<HMENU> Below(CreatePopupMenu());
        for (const Row& Each : kCommands)
            if (SharedRow(Each.Id).In == static_cast<window::Menu>(Menu)) AddTo(Below.get(), Each);
        if (static_cast<window::Menu>(Menu) == window::Menu::kTools)
            for (std::size_t I = 0; I < Tools_.size(); ++I)
                if (!Tools_[I].empty() && !ToolTips_[I].empty())
                    AppendMenuW(Below.get(), MF_STRING, command::kFirstTool + I, ToolTips_[I].c_str());
        if (AppendMenuW(Bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(Below.get()), window::kMenus[Menu]))
            Below.release();  // the bar's
    }
    if (SetMenu(Window_, Bar.get())) Bar.release();  // the window's

    std::vector<ACCEL> Always, OfTree;
    for (const Row& Each : kCommands)
        (Each.OfTree ? OfTree : Always)
            .push_back({static_cast<BYTE>(Each.Modifiers | FVIRTKEY), Each.Key, static_cast<WORD>(Each.Id)});
    Keys_.reset(CreateAcceleratorTableW(Always.data(), static_cast<int>(Always.size())));
    TreeKeys_.reset(CreateAcceleratorTableW(OfTree.data(), static_cast<int>(OfTree.size())));
}

// The words that the server handed over, in its order; then what the window does by itself.
void ObjectFrame::MakeToolBar() {
    ToolBar_ = CreateWindowExW(
        0, TOOLBARCLASSNAMEW, Say(Phrase::kTools).c_str(),
        WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER, 0,
        0, 0, 0, Window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control::kToolBar)), OwnModule(),
        nullptr);
    SendMessageW(ToolBar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(ToolBar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    SendMessageW(ToolBar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(Pictures_.List()));
    SendMessageW(ToolBar_, WM_SETFONT, reinterpret_cast<WPARAM>(Font_.get()), FALSE);

    const auto Add = [this](int Id, int Picture, const std::wstring& Tip) {
        TBBUTTON New{};
        New.iBitmap = Picture < 0 ? I_IMAGENONE : Picture;
        New.idCommand = Id;
        New.fsState = TBSTATE_ENABLED;
        New.fsStyle = BTNS_BUTTON;
        New.iString = reinterpret_cast<INT_PTR>(Tip.c_str());
        if (Picture < 0) New.fsStyle |= BTNS_SHOWTEXT | BTNS_AUTOSIZE;  // a button must show something
        SendMessageW(ToolBar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&New));
    };
    const auto Separate = [this] {
        TBBUTTON New{};
        New.fsStyle = BTNS_SEP;
        SendMessageW(ToolBar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&New));
    };
    const std::vector<window::ToolButton>& Buttons = Core_.Tree().Buttons();
    Tools_ = Core_.Tree().Tools();
    ToolTips_.resize(Tools_.size());
    for (std::size_t I = 0; I < Tools_.size(); ++I) {
        const std::wstring& Word = Tools_[I];
        if (Word.empty()) {
            Separate();
            continue;
        }
        const auto Known = std::find_if(std::begin(kClipboard), std::end(kClipboard),
                                        [&](const ClipboardWord& Each) { return Each.Word == Word; });
        if (Known != std::end(kClipboard)) {
            Add(Known->Id, Pictures_.Add(Word), TipOf(Known->Id));
            continue;
        }
        const auto Button = std::find_if(Buttons.begin(), Buttons.end(),
                                         [&](const window::ToolButton& Of) { return Of.Key == Word; });
        ToolTips_[I] = Button == Buttons.end() ? Word : Button->ToolTip;
        Add(command::kFirstTool + static_cast<int>(I),
            Button == Buttons.end() ? -1 : Pictures_.Add(Button->Bitmap), ToolTips_[I]);
    }
    std::optional<window::Menu> Menu;
    for (const Row& Each : kCommands) {
        if (!*Each.Picture) continue;
        const window::Menu In = SharedRow(Each.Id).In;
        if (std::exchange(Menu, In) != In) Separate();
        Add(Each.Id, Pictures_.Add(std::wstring_view(Each.Picture)), TipOf(Each.Id));
    }
    SendMessageW(ToolBar_, TB_AUTOSIZE, 0, 0);
}

// The caption of a command without its mark.
std::wstring ObjectFrame::LabelOf(int Id) {
    std::wstring Label = SharedRow(Id).Caption;
    std::erase(Label, L'&');
    return Label;
}

// The same, and its key.
std::wstring ObjectFrame::TipOf(int Id) {
    const Row* const Of = RowOf(Id);
    return Of ? LabelOf(Id) + L" (" + Of->KeyText + L")" : std::wstring();
}

void ObjectFrame::Tip(int Id, wchar_t* Text, int Room) const {
    const auto Tool = static_cast<std::size_t>(Id - command::kFirstTool);
    const std::wstring Said =
        Id >= command::kFirstTool && Tool < ToolTips_.size() ? ToolTips_[Tool] : TipOf(Id);
    lstrcpynW(Text, Said.c_str(), Room);
}

void ObjectFrame::MakeStatus() {
    for (std::size_t I = 0; I < Status_.size(); ++I)
        SendMessageW(Of(control::kStatus), SB_SETTEXTW, I, reinterpret_cast<LPARAM>(Status_[I].c_str()));
}

void ObjectFrame::Layout() {
    if (!Window_) return;
    SendMessageW(ToolBar_, TB_AUTOSIZE, 0, 0);
    SendMessageW(Of(control::kStatus), WM_SIZE, 0, 0);
    RECT In{}, Bar{}, Line{};
    GetClientRect(Window_, &In);
    GetWindowRect(ToolBar_, &Bar);
    GetWindowRect(Of(control::kStatus), &Line);
    LayoutStatus(In.right);

    const int W = Letter_.Width;
    const int H = Letter_.Height;
    const int Button = 2 * H - H / 4;
    const int MessageHeight = 2 * H + H / 4;
    Split_ = std::clamp<int>(Split_, kLeastTree * W, std::max<int>(kLeastTree * W, In.right - Row_ - 2 * W));
    const int Top = Bar.bottom - Bar.top + W / 2;
    const int Below = In.bottom - (Line.bottom - Line.top) - MessageHeight - W / 2;
    const int Bottom = Below - W;
    const int Left = Split_ + W;
    const int Right = In.right - W;
    const int Buttons = Bottom - Button;
    const auto Place = [this](int Id, int X, int Y, int ToX, int ToY) {
        MoveWindow(Of(Id), X, Y, std::max(0, ToX - X), std::max(0, ToY - Y), TRUE);
    };
    // The text begins where the tree does.
    const int Head = H + H / 2;
    const int Body = Top + Head + W / 2;
    Place(control::kSearch, W, Top, Split_, Top + Head);
    Place(control::kTree, W, Body, Split_, Bottom);
    Place(control::kHeading, Left, Top + H / 4, Right, Top + Head);
    Place(control::kText, Left, Body, Right, Buttons - W);
    Place(command::kRevert, Right - Button_, Buttons, Right, Bottom);
    Place(command::kApply, Right - 2 * Button_ - W, Buttons, Right - Button_ - W, Bottom);
    Place(command::kStrict, Left, Buttons, Right - 2 * Button_ - 2 * W, Bottom);
    Place(control::kSign, W, Below, W + H, Below + H);
    Place(control::kMessage, W + H + W, Below, Right, Below + MessageHeight);
}

void ObjectFrame::LayoutStatus(int Width) {
    const int Part = 18 * Letter_.Width;
    const int Ends[] = {Part, Width - 2 * Part, Width - Part, -1};
    SendMessageW(Of(control::kStatus), SB_SETPARTS, std::size(Ends), reinterpret_cast<LPARAM>(Ends));
}

// The split between the tree and the text follows the mouse.
bool ObjectFrame::DragSplit(UINT Message, int X) {
    switch (Message) {
        case WM_LBUTTONDOWN:
            if (X < Split_ || X > Split_ + Letter_.Width) return false;
            Grip_ = X - Split_;
            SetCapture(Window_);
            return true;
        case WM_MOUSEMOVE:
            if (!Grip_) return false;
            Split_ = X - *Grip_;
            Layout();
            return true;
        default:
            if (!std::exchange(Grip_, std::nullopt)) return false;
            if (Message == WM_LBUTTONUP) ReleaseCapture();
            return true;
    }
}

LRESULT CALLBACK ObjectFrame::Procedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept {
    if (Message == WM_NCCREATE) {
        auto* const New = static_cast<ObjectFrame*>(reinterpret_cast<CREATESTRUCTW*>(L)->lpCreateParams);
        SetWindowLongPtrW(Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(New));
        New->Window_ = Window;
    }
    auto* const Of = reinterpret_cast<ObjectFrame*>(GetWindowLongPtrW(Window, GWLP_USERDATA));
    if (!Of) return DefWindowProcW(Window, Message, W, L);
    try {
        return Of->Handle(Message, W, L);
    } catch (...) {
        Of->Desk_.Caught();
        return Message == WM_CREATE ? -1 : 0;
    }
}

LRESULT ObjectFrame::Handle(UINT Message, WPARAM W, LPARAM L) {
    switch (Message) {
        case WM_CREATE:
            MakeChildren();
            MakeMenus();
            return 0;
        case WM_DESTROY:
            Nodes_.reset();
            return 0;
        case WM_NCDESTROY: {
            const HWND Window = Window_;
            SetWindowLongPtrW(Window, GWLP_USERDATA, 0);
            Lost();
            return DefWindowProcW(Window, Message, W, L);
        }
        case WM_CLOSE:
            Do(command::kClose);
            return 0;
        case WM_SIZE:
            if (W != SIZE_MINIMIZED) Layout();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(L)->ptMinTrackSize = {Row_ + (kLeastTree + 8) * Letter_.Width,
                                                                18 * Letter_.Height};
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(W) == WA_INACTIVE && IsChild(Window_, GetFocus())) Focused_ = GetFocus();
            break;
        case WM_SETFOCUS:
            SetFocus(Focused_ && IsWindowEnabled(Focused_) ? Focused_ : Tree_);
            return 0;
        case WM_COMMAND:
            if (LOWORD(W) == control::kText && reinterpret_cast<HWND>(L) == Text_.Control()) {
                if (HIWORD(W) == EN_CHANGE && Text_.Touched()) ShowState();
            } else if (HIWORD(W) == BN_CLICKED || !L) {
                Do(LOWORD(W));
            }
            return 0;
        case WM_NOTIFY:
            return Notify(*reinterpret_cast<NMHDR*>(L));
        case kFollow:
            if (!Running_) {
                const While Now(Running_);
                FollowView();
            }
            return 0;
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(W) != Tree_) break;
            TreeMenu({GET_X_LPARAM(L), GET_Y_LPARAM(L)}, L == -1);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
        case WM_CAPTURECHANGED:
            if (DragNode(Message, {GET_X_LPARAM(L), GET_Y_LPARAM(L)}) || DragSplit(Message, GET_X_LPARAM(L)))
                return 0;
            break;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(W) == Window_ && LOWORD(L) == HTCLIENT) {
                POINT Where{};
                GetCursorPos(&Where);
                ScreenToClient(Window_, &Where);
                if (Where.x < Split_ || Where.x > Split_ + Letter_.Width) break;
                ::SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
                return TRUE;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(Window_, Message, W, L);
}

LRESULT ObjectFrame::Notify(NMHDR& Told) {
    if (Told.hwndFrom == Tree_) {
        if (Nodes_ && Nodes_->Notify(Told)) return 0;
        // The control is still in the middle of its own work.
        if (Told.code == TVN_SELCHANGEDW && !Desk_.Busy()) PostMessageW(Window_, kFollow, 0, 0);
        if (Told.code == TVN_BEGINDRAGW) TakeNode(reinterpret_cast<NMTREEVIEWW&>(Told).itemNew.hItem);
        return 0;
    }
    if (Told.code == TBN_GETINFOTIPW) {
        auto& Asked = reinterpret_cast<NMTBGETINFOTIPW&>(Told);
        Tip(Asked.iItem, Asked.pszText, Asked.cchTextMax);
    } else if (Told.code == TTN_GETDISPINFOW) {
        auto& Asked = reinterpret_cast<NMTTDISPINFOW&>(Told);
        Tip(static_cast<int>(Told.idFrom), Asked.szText, static_cast<int>(std::size(Asked.szText)));
        Asked.lpszText = Asked.szText;
    }
    return 0;
}

void ObjectFrame::RunLoop() {
    const Disabled Owner(Owner_);
    MSG Message{};
    while (Open_) {
        const BOOL Got = GetMessageW(&Message, nullptr, 0, 0);
        if (Got == 0) PostQuitMessage(static_cast<int>(Message.wParam));  // the host is to hear it too
        if (Got <= 0) break;
        if (Translated(Message)) continue;
        TranslateMessage(&Message);
        DispatchMessageW(&Message);
    }
}

bool ObjectFrame::Translated(MSG& Message) {
    if (!Window_ || (Message.hwnd != Window_ && !IsChild(Window_, Message.hwnd))) return false;
    const HWND Focus = GetFocus();
    if (Message.message == WM_KEYDOWN && !KeyDown(VK_CONTROL)) {
        if (Message.wParam == VK_TAB) {
            MoveFocus(KeyDown(VK_SHIFT));
            return true;
        }
        if (Message.wParam == VK_ESCAPE && Dragged_) {
            ReleaseCapture();
            return true;
        }
        if (Message.wParam == VK_RETURN && Focus == Of(control::kSearch)) {
            PostMessageW(Window_, WM_COMMAND, command::kFindNext, 0);
            return true;
        }
        if (Message.wParam == VK_RETURN &&
            (SendMessageW(Focus, WM_GETDLGCODE, 0, 0) & (DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON))) {
            PostMessageW(Focus, BM_CLICK, 0, 0);
            return true;
        }
    }
    return (Focus == Tree_ && TranslateAcceleratorW(Window_, TreeKeys_.get(), &Message)) ||
           TranslateAcceleratorW(Window_, Keys_.get(), &Message);
}

void ObjectFrame::MoveFocus(bool Back) {
    if (const HWND Next = GetNextDlgTabItem(Window_, GetFocus(), Back)) SetFocus(Next);
}

// Messages.

void ObjectFrame::Tell(const std::wstring& Text, bool Fault) {
    SetWindowTextW(Of(control::kMessage), Text.c_str());
    const HICON Sign = Text.empty() ? nullptr : Fault ? SignOfFault_.get() : SignOfWord_.get();
    SendMessageW(Of(control::kSign), STM_SETICON, reinterpret_cast<WPARAM>(Sign), 0);
    ShowWindow(Of(control::kSign), Sign ? SW_SHOWNA : SW_HIDE);
}

void ObjectFrame::ShowTitle() {
    SetWindowTextW(Window_, Filled(text::kTitle, {Desk_.Name(), Core_.Object().Clsid(),
                                                  Desk_.Unsaved() ? text::kModified : L""})
                                .c_str());
}

// One thing at a time: while the operator is asked something, nothing else is begun.
void ObjectFrame::Do(int Id) {
    if (Running_) return;
    const While Now(Running_);
    if (!FollowView()) return;
    const auto Tool = static_cast<std::size_t>(Id - command::kFirstTool);
    if (Id >= command::kFirstTool) {
        if (Tool < Tools_.size() && !Tools_[Tool].empty()) Desk_.RunTool(Tools_[Tool]);
        return;
    }
    if (const Row* const Of = RowOf(Id)) (this->*Of->Do)();
}

// The window as window::ObjectDesk works on it.

std::wstring ObjectFrame::Widened(const char* What) const {
    return {What, What + std::char_traits<char>::length(What)};
}

void ObjectFrame::Offer(int Id, bool Offered) {
    EnableMenuItem(GetMenu(Window_), static_cast<UINT>(Id),
                   static_cast<UINT>(Offered ? MF_ENABLED : MF_GRAYED));
    SendMessageW(ToolBar_, TB_ENABLEBUTTON, static_cast<WPARAM>(Id), Offered ? TRUE : FALSE);
    const HWND Button = Of(Id);
    if (!Button) return;
    if (!Offered && GetFocus() == Button) SetFocus(Text_.Control());
    EnableWindow(Button, Offered);
}

void ObjectFrame::ShowState() {
    ShowTitle();
    SetWindowTextW(Of(control::kHeading), Desk_.Heading().c_str());
    for (const window::CommandRow& Each : window::kCommands) Offer(IdOf(Each.Id), Desk_.IsOffered(Each.Id));
    for (std::size_t I = 0; I < Tools_.size(); ++I)
        if (!ToolTips_[I].empty()) Offer(command::kFirstTool + static_cast<int>(I), Desk_.Serves(Tools_[I]));
    const bool Strict = Core_.Tree().SyntaxOn();
    SendMessageW(Of(command::kStrict), BM_SETCHECK, Strict ? BST_CHECKED : BST_UNCHECKED, 0);
    CheckMenuItem(GetMenu(Window_), command::kStrict, static_cast<UINT>(Strict ? MF_CHECKED : MF_UNCHECKED));
}

void ObjectFrame::ShowRefused(int Line) {
    if (Line > 0) Text_.GoToLine(Line);
    SetFocus(Text_.Control());
}

void ObjectFrame::Mark(std::wstring_view Key) {
    if (Nodes_) Nodes_->Select(Key);
}

bool ObjectFrame::IsOpen(const TreeNode& Node) const { return Nodes_ && Nodes_->IsOpen(Node); }

void ObjectFrame::Open(const TreeNode& Node) {
    if (Nodes_) Nodes_->Expand(Node.Key);
}

void ObjectFrame::Rebuild(const std::function<void()>& Build) {
    if (!Nodes_) return Build();
    const NodesView::Reloading Empty(*Nodes_);
    Build();
}

std::size_t ObjectFrame::AskLeaving(const std::wstring& Question) {
    return Choose(Window_, Question, {Say(Phrase::kApplyIt), Say(Phrase::kDropIt), Say(Phrase::kCancel)});
}

// What the operator does.

// What the operator has selected in the view becomes the current node. False when the text is not left.
bool ObjectFrame::FollowView() {
    const TreeNode* const Node = Nodes_ ? Nodes_->Selected() : nullptr;
    return !Node || Node->Key == Desk_.Current() || Desk_.Select(Node->Key);
}

bool ObjectFrame::SwitchStrict() {
    Core_.Tree().SetSyntaxOn(!Core_.Tree().SyntaxOn());
    ShowState();
    return true;
}

bool ObjectFrame::Find() {
    const HWND Search = Of(control::kSearch);
    SetFocus(Search);
    SendMessageW(Search, EM_SETSEL, 0, -1);
    return true;
}

bool ObjectFrame::FindNext() { return Desk_.FindNext(TextOf(Of(control::kSearch))); }

// The tree.

// A node that may move within its list follows the mouse.
void ObjectFrame::TakeNode(HTREEITEM Item) {
    const TreeNode* const Node = Nodes_ ? Nodes_->NodeOf(Item) : nullptr;
    if (Running_ || !Node || !OffersOn(Core_.Tree(), *Node).Move) return;
    Dragged_ = Node->Key;
    SetCapture(Window_);
}

// Where the dragged node would come to stand: before the node under the mouse in its upper half, behind it in
// its lower one, at the end over the folder itself; 0 where it can't be dropped. The view shows the place.
std::int32_t ObjectFrame::PlaceUnder(POINT Where) {
    const TreeNode* const Node = Core_.Tree().Find(*Dragged_);
    TVHITTESTINFO Hit{};
    Hit.pt = Where;
    MapWindowPoints(Window_, Tree_, &Hit.pt, 1);
    SendMessageW(Tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&Hit));
    const TreeNode* const Target = Nodes_ ? Nodes_->NodeOf(Hit.hItem) : nullptr;
    std::int32_t Place = Node && Target ? window::PlaceOfDrop(*Node, *Target) : 0;
    const bool Beside = Place > 0 && Target != Node->Parent;
    bool Behind = false;
    if (Beside) {
        const RECT Of = RectOf(Hit.hItem);
        Behind = Hit.pt.y >= (Of.top + Of.bottom) / 2;
        Place += Behind ? 1 : 0;
    }
    SendMessageW(Tree_, TVM_SETINSERTMARK, Behind, reinterpret_cast<LPARAM>(Beside ? Hit.hItem : nullptr));
    return Place;
}

bool ObjectFrame::DragNode(UINT Message, POINT Where) {
    if (!Dragged_) return false;
    if (Message == WM_MOUSEMOVE) {
        const WORD Cursor = PlaceUnder(Where) > 0 ? kDragCursor : kNoDropCursor;
        ::SetCursor(LoadCursorW(OwnModule(), MAKEINTRESOURCEW(Cursor)));
        return true;
    }
    const std::int32_t Place = Message == WM_LBUTTONUP ? PlaceUnder(Where) : 0;
    SendMessageW(Tree_, TVM_SETINSERTMARK, FALSE, 0);
    const std::wstring Key = *std::exchange(Dragged_, std::nullopt);
    if (Message != WM_CAPTURECHANGED) ReleaseCapture();
    if (Place == 0 || Running_) return true;
    const While Now(Running_);
    Desk_.MoveTo(Key, Place);
    return true;
}

RECT ObjectFrame::RectOf(HTREEITEM Item) const {
    RECT Of{};
    std::memcpy(&Of, &Item, sizeof Item);  // the message takes the item there and leaves its place
    if (!Item || !SendMessageW(Tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&Of))) Of = {};
    return Of;
}

void ObjectFrame::TreeMenu(POINT Where, bool ByKey) {
    if (Running_ || !Nodes_) return;
    const While Now(Running_);
    if (ByKey) {
        // Below the node that is selected.
        const RECT Of = RectOf(Nodes_->ItemOf(Desk_.Current()));
        Where = {Of.left, Of.bottom};
        ClientToScreen(Tree_, &Where);
    } else {
        TVHITTESTINFO Hit{};
        Hit.pt = Where;
        ScreenToClient(Tree_, &Hit.pt);
        SendMessageW(Tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&Hit));
        const TreeNode* const Node = Nodes_->NodeOf(Hit.hItem);
        if (Node && Node->Key != Desk_.Current() && !Desk_.Select(Node->Key)) return;
    }
    const Owned<HMENU> Menu(CreatePopupMenu());
    for (const Command Each : window::kNodeMenu)
        if (Desk_.IsOffered(Each)) AddTo(Menu.get(), *RowOf(IdOf(Each)));
    if (GetMenuItemCount(Menu.get()) > 0) AppendMenuW(Menu.get(), MF_SEPARATOR, 0, nullptr);
    for (const Command Each : window::kObjectMenu) AddTo(Menu.get(), *RowOf(IdOf(Each)));
    SetFocus(Tree_);
    const BOOL Chosen =
        TrackPopupMenu(Menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, Where.x, Where.y, 0, Window_, nullptr);
    if (Chosen) PostMessageW(Window_, WM_COMMAND, static_cast<WPARAM>(Chosen), 0);
}

// The clipboard: the text's while the text is being written, else that of the objects.

HWND ObjectFrame::Writing() const {
    const HWND Focus = GetFocus();
    for (const int Id : {control::kText, control::kMessage, control::kSearch})
        if (Focus && Focus == Of(Id)) return Focus;
    return nullptr;
}

bool ObjectFrame::SelectAll() {
    SendMessageW(Writing(), EM_SETSEL, 0, -1);
    return true;
}

bool ObjectFrame::InText(UINT Message) const {
    const HWND Text = Writing();
    if (Text) SendMessageW(Text, Message, 0, 0);
    return Text != nullptr;
}

bool ObjectFrame::Copy() { return InText(WM_COPY) || Desk_.Copy(); }
bool ObjectFrame::Cut() { return InText(WM_CUT) || Desk_.Cut(); }
bool ObjectFrame::Paste() { return InText(WM_PASTE) || Desk_.Paste(); }

// The object.

bool ObjectFrame::OtherPane() {
    SetFocus(GetFocus() == Text_.Control() ? Tree_ : Text_.Control());
    return true;
}

bool ObjectFrame::Close() {
    if (!Desk_.MayClose()) return false;
    Open_ = false;
    PostMessageW(Window_, WM_NULL, 0, 0);  // the loop looks up
    return true;
}

}  // namespace kv::com
