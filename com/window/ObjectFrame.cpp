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

using window::Selection;
using window::TreeNode;

constexpr const wchar_t* kClass = L"KvDesSvrObject";
constexpr WORD kIcon = 32001;
constexpr int kLeastTree = 12;        // letters
constexpr UINT kFollow = WM_APP + 1;  // the operator has selected another node

Selection On(const std::wstring& Key) { return {.CurrItem = Key, .CurrFolder = {}, .Index = {}, .Key = {}}; }

// The captions that lead to a node, the root left out.
std::wstring PathOf(const TreeNode& Node) {
    std::wstring Path;
    for (const TreeNode* N = &Node; N->Parent; N = N->Parent)
        Path = Path.empty() ? N->Text : N->Text + text::kPathArrow + Path;
    return Path;
}

std::wstring Widened(const char* Text) { return {Text, Text + std::char_traits<char>::length(Text)}; }

bool KeyDown(int Key) { return GetKeyState(Key) < 0; }

/// Puts a value for as long as it lives.
template <class T>
class While {
  public:
    While(T& Of, T Value) : Of_(Of), Before_(std::exchange(Of, std::move(Value))) {}
    While(const While&) = delete;
    While& operator=(const While&) = delete;
    ~While() { Of_ = std::move(Before_); }

  private:
    T& Of_;
    T Before_;
};

/// The wait pointer, for what may take a while.
class Waiting {
  public:
    Waiting() { CoreUtil::Instance().Door().SetPointer(kPointerWait); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        try {
            CoreUtil::Instance().Door().SetPointer(kPointerDefault);
        } catch (...) {  // the pointer is the host's to draw
        }
    }
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

/// In the order of the menus. `Text` is empty where no menu has it.
struct ObjectFrame::Row {
    int Id;
    int Menu;  // which of kMenus
    const wchar_t* Text;
    const wchar_t* KeyText;
    BYTE Modifiers;
    WORD Key;
    const wchar_t* Picture;  // on the tool bar, behind the words of the server; empty for none
    bool (ObjectFrame::*Do)();
    bool OfTree = false;  // the key belongs to the text while it is being written
};

namespace {
constexpr const wchar_t* kMenus[] = {L"&Oggetto", L"&Modifica", L"&Testo", L"&Vai", L"&Strumenti"};
constexpr int kObject = 0;
constexpr int kEdit = 1;
constexpr int kText = 2;
constexpr int kGo = 3;
constexpr int kToolMenu = 4;
}  // namespace

// clang-format off
const ObjectFrame::Row ObjectFrame::kCommands[] = {
    {command::kSave, kObject, L"&Salva", L"Ctrl+S", FCONTROL, 'S', L"save", &ObjectFrame::Save},
    {command::kClose, kObject, L"&Chiudi", L"Ctrl+W", FCONTROL, 'W', L"", &ObjectFrame::Close},
    {command::kCopy, kEdit, L"&Copia", L"Ctrl+C", FCONTROL, 'C', L"", &ObjectFrame::Copy},
    {command::kCut, kEdit, L"&Taglia", L"Ctrl+X", FCONTROL, 'X', L"", &ObjectFrame::Cut},
    {command::kPaste, kEdit, L"&Incolla", L"Ctrl+V", FCONTROL, 'V', L"", &ObjectFrame::Paste},
    {command::kNew, kEdit, L"&Nuovo elemento", L"Ins", 0, VK_INSERT, L"new", &ObjectFrame::NewElement, true},
    {command::kDelete, kEdit, L"&Elimina", L"Canc", 0, VK_DELETE, L"delete", &ObjectFrame::DeleteElement, true},
    {command::kDeleteAll, kEdit, L"Elimina t&utti", L"Ctrl+Maiusc+Canc", FCONTROL | FSHIFT, VK_DELETE, L"",
     &ObjectFrame::DeleteAll},
    {command::kMoveUp, kEdit, L"Sposta &su", L"Alt+Su", FALT, VK_UP, L"up", &ObjectFrame::MoveUp},
    {command::kMoveDown, kEdit, L"Sposta &giù", L"Alt+Giù", FALT, VK_DOWN, L"down", &ObjectFrame::MoveDown},
    {command::kProperties, kEdit, L"&Proprietà", L"F4", 0, VK_F4, L"", &ObjectFrame::ShowProperties},
    {command::kApply, kText, L"&Applica il testo", L"Ctrl+Invio", FCONTROL, VK_RETURN, L"apply",
     &ObjectFrame::Apply},
    {command::kRevert, kText, L"A&nnulla il testo", L"Ctrl+R", FCONTROL, 'R', L"revert", &ObjectFrame::Revert},
    {command::kSelectAll, kText, L"S&eleziona tutto", L"Ctrl+A", FCONTROL, 'A', L"", &ObjectFrame::SelectAll},
    {command::kStrict, kText, L"Controllo &sintassi", L"Ctrl+K", FCONTROL, 'K', L"", &ObjectFrame::SwitchStrict},
    {command::kOtherPane, kGo, L"Albero o t&esto", L"F6", 0, VK_F6, L"", &ObjectFrame::OtherPane},
};
// clang-format on

// The window.

ObjectFrame::ObjectFrame(window::WindowCore& Core, HWND Owner)
    : Core_(Core), Owner_(Owner), Font_(MessageFont()), Fixed_(FixedFont()), Letter_(SizeOf(Font_.get())) {
    SignOfFault_.reset(SignOf(IDI_WARNING, Letter_.Height));
    SignOfWord_.reset(SignOf(IDI_INFORMATION, Letter_.Height));
    Button_ = 4 * Letter_.Width +
              std::max(WidthOf(Font_.get(), text::kApplyText), WidthOf(Font_.get(), text::kRevertText));
    Row_ = 2 * Button_ + 2 * Letter_.Width + WidthOf(Font_.get(), text::kStrict) + 2 * Letter_.Height;
    try {
        Make();
        std::wstring Name, Desc, Id, Clsid, Users;
        std::int16_t Version = 0;
        if (!Core_.GetObjectInfo(Name, Desc, Version, Id, Clsid, Users))
            Status_ = {Clsid, Desc, Filled(text::kVersion, {std::to_wstring(Version)}),
                       Filled(text::kId, {Id})};
        MakeStatus();
        AfterLoad();
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

void ObjectFrame::Gone() noexcept {
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
    Tree_ = Child(WC_TREEVIEWW, text::kTree,
                  WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
                      TVS_DISABLEDRAGDROP,
                  WS_EX_CLIENTEDGE, control::kTree);
    Child(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 0, control::kHeading);
    const HWND Text = Child(L"EDIT", L"", SectionEdit::kStyle, WS_EX_CLIENTEDGE, control::kText);
    SendMessageW(Text, WM_SETFONT, reinterpret_cast<WPARAM>(Fixed_.get()), FALSE);
    Text_.Take(Text);
    Child(L"BUTTON", text::kStrict, WS_TABSTOP | BS_CHECKBOX, 0, command::kStrict);
    Child(L"BUTTON", text::kApplyText, WS_TABSTOP | BS_PUSHBUTTON, 0, command::kApply);
    Child(L"BUTTON", text::kRevertText, WS_TABSTOP | BS_PUSHBUTTON, 0, command::kRevert);
    Child(L"STATIC", L"", SS_ICON | SS_REALSIZECONTROL, 0, control::kSign);
    Child(L"EDIT", L"", WS_TABSTOP | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0, control::kMessage);
    Child(STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0, control::kStatus);
    Nodes_ = std::make_unique<NodesView>(Core_.Tree(), Tree_);
}

void ObjectFrame::MakeMenus() {
    Owned<HMENU> Bar(CreateMenu());
    for (int Menu = 0; Menu < static_cast<int>(std::size(kMenus)); ++Menu) {
        Owned<HMENU> Below(CreatePopupMenu());
        for (const Row& Each : kCommands)
            if (Each.Menu == Menu)
                AppendMenuW(Below.get(), MF_STRING, static_cast<UINT_PTR>(Each.Id),
                            (std::wstring(Each.Text) + L"\t" + Each.KeyText).c_str());
        if (Menu == kToolMenu)
            for (std::size_t I = 0; I < Tools_.size(); ++I)
                if (!Tools_[I].empty() && !ToolTips_[I].empty())
                    AppendMenuW(Below.get(), MF_STRING, command::kFirstTool + I, ToolTips_[I].c_str());
        if (AppendMenuW(Bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(Below.get()), kMenus[Menu]))
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
        0, TOOLBARCLASSNAMEW, text::kTools,
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
    int Menu = -1;
    for (const Row& Each : kCommands) {
        if (!*Each.Picture) continue;
        if (std::exchange(Menu, Each.Menu) != Each.Menu) Separate();
        Add(Each.Id, Pictures_.Add(std::wstring_view(Each.Picture)), TipOf(Each.Id));
    }
    SendMessageW(ToolBar_, TB_AUTOSIZE, 0, 0);
}

// The caption of a command without its mark, and its key.
std::wstring ObjectFrame::TipOf(int Id) {
    const Row* const Of = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&](const Row& Each) { return Each.Id == Id; });
    if (Of == std::end(kCommands)) return {};
    std::wstring Tip = Of->Text;
    std::erase(Tip, L'&');
    return Tip + L" (" + Of->KeyText + L")";
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
    Place(control::kTree, W, Top, Split_, Bottom);
    Place(control::kHeading, Left, Top, Right, Top + H + H / 4);
    Place(control::kText, Left, Top + H + H / 4, Right, Buttons - W);
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
bool ObjectFrame::Drag(UINT Message, int X) {
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
        Of->Caught();
        return Message == WM_CREATE ? -1 : 0;
    }
}

// Tells what has come as far as the window procedure; what fails even there is only heard.
void ObjectFrame::Caught() noexcept {
    try {
        try {
            throw;
        } catch (const Failure& Fault) {
            ShowFault(Fault.Error());
        } catch (const std::exception& Trouble) {
            Faulty_ = true;
            Tell(Widened(Trouble.what()), true);
        } catch (...) {
            Faulty_ = true;
            Tell(text::kUnknownFault, true);
        }
    } catch (...) {
        MessageBeep(MB_ICONERROR);
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
            Gone();
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
                if (HIWORD(W) == EN_CHANGE && Text_.Touched()) {
                    UpdateOffers();
                    ShowTitle();
                }
            } else if (HIWORD(W) == BN_CLICKED || !L) {
                Do(LOWORD(W));
            }
            return 0;
        case WM_NOTIFY:
            return Notify(*reinterpret_cast<NMHDR*>(L));
        case kFollow:
            if (!Running_) {
                const While<bool> Now(Running_, true);
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
            if (Drag(Message, GET_X_LPARAM(L))) return 0;
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
        if (Told.code == TVN_SELCHANGEDW && !Busy_) PostMessageW(Window_, kFollow, 0, 0);
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

void ObjectFrame::ShowFault(const KvError& Error) {
    Faulty_ = true;
    FaultLine_ = Error.Line;
    Tell(Error.Line > 0 ? Filled(text::kFaultAtLine, {std::to_wstring(Error.Line), Error.Description})
                        : Error.Description,
         true);
}

void ObjectFrame::ShowTitle() {
    const TreeNode* const Root = Core_.Tree().Root();
    const std::wstring Name = Root ? Root->Text : Core_.Object().Name();
    SetWindowTextW(
        Window_,
        Filled(text::kTitle, {Name, Core_.Object().Clsid(), Unsaved() ? text::kModified : L""}).c_str());
}

bool ObjectFrame::Ask(const std::wstring& Text, std::int32_t Style) {
    return CoreUtil::Instance().Door().MessageBox(Text, box::kYesNo + box::kQuestion + Style) == Answer::Yes;
}

// Runs what the operator asked for. Nothing escapes; what fails without a word is told at least so.
bool ObjectFrame::Guarded(const std::function<bool()>& Body) {
    Tell({}, false);
    Faulty_ = false;
    FaultLine_ = 0;
    bool Done = false;
    try {
        Done = Body();
    } catch (...) {
        Caught();
    }
    if (!Window_) return false;
    UpdateOffers();
    ShowTitle();
    return Done && !Faulty_;
}

// One thing at a time: while the operator is asked something, nothing else is begun.
void ObjectFrame::Do(int Id) {
    if (Running_) return;
    const While<bool> Now(Running_, true);
    if (!FollowView()) return;
    const auto Tool = static_cast<std::size_t>(Id - command::kFirstTool);
    if (Id >= command::kFirstTool) {
        if (Tool < Tools_.size() && !Tools_[Tool].empty()) RunTool(std::wstring(Tools_[Tool]));
        return;
    }
    const Row* const Of = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&](const Row& Each) { return Each.Id == Id; });
    if (Of != std::end(kCommands)) (this->*Of->Do)();
}

window::Offers ObjectFrame::CurrentOffers() const {
    const TreeNode* const Node = CurrentNode();
    return Node ? OffersOn(Core_.Tree(), *Node) : window::Offers{};
}

Selection ObjectFrame::At() const { return On(Current_); }

void ObjectFrame::Offer(int Id, bool Offered) {
    EnableMenuItem(GetMenu(Window_), static_cast<UINT>(Id),
                   static_cast<UINT>(Offered ? MF_ENABLED : MF_GRAYED));
    SendMessageW(ToolBar_, TB_ENABLEBUTTON, static_cast<WPARAM>(Id), Offered ? TRUE : FALSE);
    const HWND Button = Of(Id);
    if (!Button) return;
    if (!Offered && GetFocus() == Button) SetFocus(Text_.Control());
    EnableWindow(Button, Offered);
}

void ObjectFrame::UpdateOffers() {
    const window::Offers Now = CurrentOffers();
    Offer(command::kNew, Now.NewIn != nullptr);
    Offer(command::kDelete, Now.Delete);
    Offer(command::kDeleteAll, Now.DeleteAll);
    Offer(command::kMoveUp, Now.Move);
    Offer(command::kMoveDown, Now.Move);
    Offer(command::kApply, Text_.HasChanges());
    Offer(command::kRevert, Text_.HasChanges());
    const std::vector<std::wstring>& Served = Core_.Tree().Served();
    for (std::size_t I = 0; I < Tools_.size(); ++I)
        if (!ToolTips_[I].empty())
            Offer(command::kFirstTool + static_cast<int>(I),
                  std::find(Served.begin(), Served.end(), Tools_[I]) != Served.end());
    const bool Strict = Core_.Tree().SyntaxOn();
    SendMessageW(Of(command::kStrict), BM_SETCHECK, Strict ? BST_CHECKED : BST_UNCHECKED, 0);
    CheckMenuItem(GetMenu(Window_), command::kStrict, static_cast<UINT>(Strict ? MF_CHECKED : MF_UNCHECKED));
}

// The text.

bool ObjectFrame::Display(const std::wstring& Key) {
    Current_ = Key;
    const TreeNode* const Node = CurrentNode();
    SetWindowTextW(Of(control::kHeading), Node ? PathOf(*Node).c_str() : L"");
    std::wstring Buffer;
    if (!Node || !IsLeafKey(Current_) || Core_.DispData(At(), Buffer)) {
        Text_.ShowNothing();
        return Node && !IsLeafKey(Current_);
    }
    Text_.ShowSection(Buffer);
    return true;
}

// The view and the text follow what the tree says is selected.
void ObjectFrame::ShowSelected() {
    if (!Nodes_) return;
    const TreeNode* Node = Core_.Tree().Find(Core_.Tree().Selected());
    if (!Node) Node = Core_.Tree().Root();
    const std::wstring Key = Node ? Node->Key : std::wstring();
    {
        const While<bool> Quiet(Busy_, true);
        Nodes_->Select(Key);
    }
    Display(Key);
}

void ObjectFrame::AfterLoad() {
    if (const TreeNode* const Root = Core_.Tree().Root()) {
        Core_.Tree().SelectNode(Root->Key);
        const While<bool> Quiet(Busy_, true);
        if (Nodes_) Nodes_->Expand(Root->Key);
    }
    ShowSelected();
    UpdateOffers();
    ShowTitle();
}

// Runs what builds the whole tree anew.
bool ObjectFrame::Replaced(const std::function<bool()>& Operation) {
    if (!Nodes_) return false;
    bool Failed = false;
    {
        const While<bool> Quiet(Busy_, true);
        const NodesView::Reloading Empty(*Nodes_);
        Failed = Operation();
    }
    AfterLoad();
    return !Failed;
}

ObjectFrame::Leave ObjectFrame::LeaveText() {
    if (!Text_.HasChanges()) return Leave::Applied;
    switch (Choose(Window_, Filled(text::kNotApplied, {TextOf(Of(control::kHeading))}),
                   {text::kApplyIt, text::kDropIt, text::kCancel})) {
        case 0:
            return Apply() ? Leave::Applied : Leave::Stay;
        case 1:
            Display(std::wstring(Current_));
            return Leave::Dropped;
        default:
            return Leave::Stay;
    }
}

// What the operator has selected in the view becomes the current node. False when the text is not left.
bool ObjectFrame::FollowView() {
    const TreeNode* const Node = Nodes_ ? Nodes_->Selected() : nullptr;
    return !Node || Node->Key == Current_ || Select(std::wstring(Node->Key));
}

bool ObjectFrame::Select(std::wstring_view Key) {
    const std::wstring Wanted(Key);
    const bool Left = Guarded([&] {
        if (LeaveText() == Leave::Stay || !Core_.Tree().HasNode(Wanted)) return false;
        Core_.Tree().SelectNode(Wanted);
        return true;
    });
    if (!Left) {
        const While<bool> Quiet(Busy_, true);
        if (Nodes_) Nodes_->Select(Current_);
        return false;
    }
    return Guarded([&] {
        ShowSelected();
        return true;
    });
}

bool ObjectFrame::Apply() {
    if (!Text_.HasChanges()) return true;
    return Guarded([&] {
        std::wstring Buffer = Text_.Text();
        std::wstring NewItemKey;
        bool Refused = false;
        {
            const While<bool> Quiet(Busy_, true);
            Refused = Core_.SaveData(At(), Buffer, NewItemKey);
            if (Refused && Nodes_) Nodes_->Select(Current_);
        }
        if (Refused) {
            if (FaultLine_ > 0) Text_.GoToLine(FaultLine_);
            SetFocus(Text_.Control());
            return false;
        }
        const int Cursor = Text_.Cursor();
        ShowSelected();
        Text_.SetCursor(Cursor);
        if (!Faulty_) Tell(text::kApplied, false);
        return true;
    });
}

bool ObjectFrame::Revert() {
    if (!Text_.HasChanges()) return true;
    return Guarded([&] { return Display(std::wstring(Current_)); });
}

bool ObjectFrame::SwitchStrict() {
    Core_.Tree().SetSyntaxOn(!Core_.Tree().SyntaxOn());
    UpdateOffers();
    return true;
}

// The tree.

// An operation that changes nodes: the text is settled first, and afterwards the view follows the tree.
bool ObjectFrame::Structural(const std::function<bool()>& Operation) {
    return Guarded([&] {
        if (LeaveText() == Leave::Stay) return false;
        bool Failed = false;
        {
            const While<bool> Quiet(Busy_, true);
            Failed = Operation();
        }
        const bool Silent = Failed && !Faulty_;
        if (Failed && Core_.Tree().HasNode(Current_)) Core_.Tree().SelectNode(Current_);
        ShowSelected();
        if (!Silent) return !Failed;
        CoreUtil::Instance().Door().Beep();
        Tell(text::kNotDone, true);
        return false;
    });
}

bool ObjectFrame::NewElement() {
    const window::Offers Now = CurrentOffers();
    if (!Now.NewIn) return false;
    const std::wstring Folder = Now.NewIn->Key;
    return Structural([&] {
        std::wstring NewItemKey;
        return Core_.EditData(On(Folder), NewItemKey);
    });
}

bool ObjectFrame::DeleteElement() {
    if (!CurrentOffers().Delete || !Ask(Filled(text::kAskDelete, {CurrentNode()->Text}))) return false;
    return Structural([&] { return Core_.DeleteData(At(), false); });
}

bool ObjectFrame::DeleteAll() {
    if (!CurrentOffers().DeleteAll) return false;
    const TreeNode& Folder = *CurrentNode();
    if (!Ask(Filled(text::kAskDeleteAll, {Folder.Text, std::to_wstring(Folder.Children.Count())}),
             box::kDefaultSecond))
        return false;
    return Structural([&] { return Core_.DeleteData(At(), true); });
}

// What was shown open below the moved node is so again.
bool ObjectFrame::Move(std::int32_t Direction) {
    if (!CurrentOffers().Move || !Nodes_) return false;
    return Structural([&] {
        std::vector<std::wstring> Open = Nodes_->OpenBelow(Current_);
        const std::wstring Before = Current_;
        std::wstring NewKey;
        if (Core_.MoveData(At(), Direction, NewKey)) return true;
        if (Core_.Tree().HasNode(NewKey)) Current_ = NewKey;
        std::replace(Open.begin(), Open.end(), Before, Current_);
        Core_.Tree().SelectNode(Current_);
        for (const std::wstring& Key : Open)
            if (Nodes_) Nodes_->Expand(Key);
        return false;
    });
}

void ObjectFrame::TreeMenu(POINT Where, bool ByKey) {
    if (Running_ || !Nodes_) return;
    const While<bool> Now(Running_, true);
    if (ByKey) {
        // Below the node that is selected.
        const HTREEITEM Item = Nodes_->ItemOf(Current_);
        RECT Of{};
        std::memcpy(&Of, &Item, sizeof Item);  // the message takes the item there and leaves its place
        if (!Item || !SendMessageW(Tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&Of))) Of = {};
        Where = {Of.left, Of.bottom};
        ClientToScreen(Tree_, &Where);
    } else {
        TVHITTESTINFO Hit{};
        Hit.pt = Where;
        ScreenToClient(Tree_, &Hit.pt);
        SendMessageW(Tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&Hit));
        const TreeNode* const Node = Nodes_->NodeOf(Hit.hItem);
        if (Node && Node->Key != Current_ && !Select(std::wstring(Node->Key))) return;
    }
    const window::Offers Offered = CurrentOffers();
    const std::pair<int, bool> Rows[] = {
        {command::kNew, Offered.NewIn != nullptr},
        {command::kDelete, Offered.Delete},
        {command::kDeleteAll, Offered.DeleteAll},
        {command::kMoveUp, Offered.Move},
        {command::kMoveDown, Offered.Move},
        {0, true},
        {command::kCopy, true},
        {command::kPaste, true},
        {command::kProperties, true},
    };
    const Owned<HMENU> Menu(CreatePopupMenu());
    for (const auto& [Id, Is] : Rows) {
        const Row* const Of = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [Id = Id](const Row& Each) { return Each.Id == Id; });
        if (Of != std::end(kCommands)) {
            if (Is)
                AppendMenuW(Menu.get(), MF_STRING, static_cast<UINT_PTR>(Id),
                            (std::wstring(Of->Text) + L"\t" + Of->KeyText).c_str());
        } else if (GetMenuItemCount(Menu.get()) > 0) {
            AppendMenuW(Menu.get(), MF_SEPARATOR, 0, nullptr);
        }
    }
    SetFocus(Tree_);
    const BOOL Chosen =
        TrackPopupMenu(Menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, Where.x, Where.y, 0, Window_, nullptr);
    if (Chosen) PostMessageW(Window_, WM_COMMAND, static_cast<WPARAM>(Chosen), 0);
}

// The clipboard: the text's while the text is being written, else that of the objects.

HWND ObjectFrame::Writing() const {
    const HWND Focus = GetFocus();
    return Focus && (Focus == Text_.Control() || Focus == Of(control::kMessage)) ? Focus : nullptr;
}

bool ObjectFrame::SelectAll() {
    SendMessageW(Writing(), EM_SETSEL, 0, -1);
    return true;
}

bool ObjectFrame::Copy() {
    if (const HWND Text = Writing()) {
        SendMessageW(Text, WM_COPY, 0, 0);
        return true;
    }
    return Guarded([&] {
        std::wstring ClassWord;
        if (LeaveText() == Leave::Stay || Core_.CopyData(At(), false, ClassWord)) return false;
        Tell(ClassWord.empty() ? text::kClipboardEmpty : Filled(text::kClipboardHolds, {ClassWord}), false);
        return true;
    });
}

bool ObjectFrame::Cut() {
    if (const HWND Text = Writing()) {
        SendMessageW(Text, WM_CUT, 0, 0);
        return true;
    }
    return Copy() && DeleteElement();
}

bool ObjectFrame::Paste() {
    if (const HWND Text = Writing()) {
        SendMessageW(Text, WM_PASTE, 0, 0);
        return true;
    }
    if (Core_.Tree().Modified() && !Ask(text::kAskPaste, box::kDefaultSecond)) return false;
    return Guarded([&] {
        if (LeaveText() == Leave::Stay) return false;
        std::wstring NewItemKey;
        const Waiting Here;
        return Replaced([&] { return Core_.PasteData(At(), std::nullopt, NewItemKey); });
    });
}

// The object.

bool ObjectFrame::ShowProperties() {
    return Guarded([&] { return !Core_.ShowPropTable(At()); });
}

void ObjectFrame::RunTool(const std::wstring& Word) {
    Structural([&] {
        Core_.TlbrButtonClick(Word, At());
        return Faulty_;
    });
}

bool ObjectFrame::Save() {
    return Guarded([&] {
        if (Text_.HasChanges() && !Apply()) return false;
        const Waiting Here;
        if (Core_.Save()) return false;
        Tell(text::kSaved, false);
        return true;
    });
}

bool ObjectFrame::OtherPane() {
    SetFocus(GetFocus() == Text_.Control() ? Tree_ : Text_.Control());
    return true;
}

bool ObjectFrame::Close() {
    if (LeaveText() == Leave::Stay) return false;
    if (Core_.Tree().Modified()) {
        const Answer Given = CoreUtil::Instance().Door().MessageBox(
            Filled(text::kAskSave, {Core_.Object().Name()}), box::kYesNoCancel + box::kQuestion);
        if (Given == Answer::Yes ? !Save() : Given != Answer::No) return false;
    }
    Open_ = false;
    PostMessageW(Window_, WM_NULL, 0, 0);  // the loop looks up
    return true;
}

}  // namespace kv::com
