#include "tests/com/WindowDriver.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <set>

namespace kv::com::test {
namespace {

constexpr auto kPatience = std::chrono::seconds(15);
constexpr UINT kMark = WM_APP + 7;
constexpr UINT kIdle = WM_APP + 9;
constexpr UINT kTakeAway = WM_APP + 8;
std::atomic<WPARAM> Marked{0};

LRESULT CALLBACK Beside(HWND Window, UINT Message, WPARAM W, LPARAM L) {
    if (Message == kTakeAway) return DestroyWindow(reinterpret_cast<HWND>(W));
    if (Message == kIdle) return HIWORD(GetQueueStatus(QS_KEY | QS_MOUSE | QS_POSTMESSAGE)) == 0;
    if (Message != kMark) return DefWindowProcW(Window, Message, W, L);
    Marked = W;
    return 0;
}

BOOL CALLBACK IsBox(HWND Window, LPARAM Found) {
    wchar_t Class[32]{};
    DWORD Process = 0;
    GetClassNameW(Window, Class, 32);
    GetWindowThreadProcessId(Window, &Process);
    if (std::wstring_view(Class) != L"#32770" || Process != GetCurrentProcessId() || !IsWindowVisible(Window))
        return TRUE;
    *reinterpret_cast<HWND*>(Found) = Window;
    return FALSE;
}

BOOL CALLBACK AddText(HWND Window, LPARAM Into) {
    *reinterpret_cast<std::wstring*>(Into) += TextIn(Window) + L"\n";
    return TRUE;
}

std::wstring Plain(std::wstring Label) {
    std::erase(Label, L'&');
    return Label;
}

}  // namespace

bool Until(const std::function<bool()>& Holds) {
    const auto End = std::chrono::steady_clock::now() + kPatience;
    while (!Holds()) {
        if (std::chrono::steady_clock::now() > End) return Holds();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::wstring TextIn(HWND Of) {
    std::wstring Text(static_cast<std::size_t>(SendMessageW(Of, WM_GETTEXTLENGTH, 0, 0)), L'\0');
    const LRESULT Length =
        SendMessageW(Of, WM_GETTEXT, Text.size() + 1, reinterpret_cast<LPARAM>(Text.data()));
    Text.resize(static_cast<std::size_t>(Length));
    return Text;
}

HWND OpenBox() {
    HWND Found = nullptr;
    EnumWindows(IsBox, reinterpret_cast<LPARAM>(&Found));
    return Found;
}

std::wstring SaidBy(HWND Box) {
    std::wstring Said = TextIn(Box) + L"\n";
    EnumChildWindows(Box, AddText, reinterpret_cast<LPARAM>(&Said));
    return Said;
}

std::size_t TakePicture(HWND Of, const char* File) {
    RECT At{};
    GetWindowRect(Of, &At);
    BITMAPINFO Form{};
    Form.bmiHeader.biSize = sizeof Form.bmiHeader;
    Form.bmiHeader.biWidth = At.right - At.left;
    Form.bmiHeader.biHeight = At.bottom - At.top;
    Form.bmiHeader.biPlanes = 1;
    Form.bmiHeader.biBitCount = 32;
    void* Bits = nullptr;
    const Owned<HBITMAP> Picture(CreateDIBSection(nullptr, &Form, DIB_RGB_COLORS, &Bits, nullptr, 0));
    const Owned<HDC> Into(CreateCompatibleDC(nullptr));
    const SelectedInto Selected(Into.get(), Picture.get());
    const HDC From = GetWindowDC(Of);
    BitBlt(Into.get(), 0, 0, Form.bmiHeader.biWidth, Form.bmiHeader.biHeight, From, 0, 0, SRCCOPY);
    ReleaseDC(Of, From);
    GdiFlush();
    const auto Count = static_cast<std::size_t>(Form.bmiHeader.biWidth * Form.bmiHeader.biHeight);
    const auto* const Pixels = static_cast<const std::uint32_t*>(Bits);
    if (File) {
        BITMAPFILEHEADER Head{};
        Head.bfType = 0x4D42;  // "BM"
        Head.bfOffBits = sizeof Head + sizeof Form.bmiHeader;
        Head.bfSize = static_cast<DWORD>(Head.bfOffBits + Count * sizeof *Pixels);
        std::ofstream Out(File, std::ios::binary);
        Out.write(reinterpret_cast<const char*>(&Head), sizeof Head);
        Out.write(reinterpret_cast<const char*>(&Form.bmiHeader), sizeof Form.bmiHeader);
        Out.write(reinterpret_cast<const char*>(Pixels),
                  static_cast<std::streamsize>(Count * sizeof *Pixels));
    }
    std::set<std::uint32_t> Colours;
    for (std::size_t I = 0; I < Count; ++I) Colours.insert(Pixels[I] & 0xFFFFFFU);
    return Colours.size();
}

void Shown::Settle() const {
    static WPARAM Last = 0;
    const WPARAM Mine = ++Last;
    PostMessageW(Beside_, kMark, Mine, 0);
    EXPECT_TRUE(Until([&] { return Marked == Mine || !IsWindow(Window); })) << "the window does not answer";
}

void Shown::Press(HWND Box, const std::wstring& Said, HWND Button) const {
    const std::wstring All = SaidBy(Box);
    EXPECT_NE(All.find(Said), std::wstring::npos) << Narrow(All);
    ASSERT_NE(Button, nullptr) << Narrow(All);
    PostMessageW(Button, BM_CLICK, 0, 0);
    EXPECT_TRUE(Until([&] { return !IsWindow(Box) || !IsWindowVisible(Box); }))
        << "the box stays: " << Narrow(All);
    Settle();
}

void Shown::Answer(const std::wstring& Said, int Button) const {
    HWND Box = nullptr;
    ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << "nothing asks: " << Narrow(Said);
    Press(Box, Said, GetDlgItem(Box, Button));
}

void Shown::Answer(const std::wstring& Said, const std::wstring& Label) const {
    HWND Box = nullptr;
    ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << "nothing asks: " << Narrow(Said);
    HWND Button = nullptr;
    while ((Button = FindWindowExW(Box, Button, L"Button", nullptr)) != nullptr)
        if (Plain(TextIn(Button)) == Label) break;
    Press(Box, Said, Button);
}

void Shown::Do(int Id, const std::wstring& Said, int Button) const {
    Do(Id);
    Answer(Said, Button);
}

void Shown::Do(int Id, const std::wstring& Said, const std::wstring& Label) const {
    Do(Id);
    Answer(Said, Label);
}

void Shown::Type(const std::wstring& Text) const {
    SendMessageW(Editor(), EM_SETSEL, 0, -1);
    SendMessageW(Editor(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Text.c_str()));
}

void Shown::TakeAway() const { SendMessageW(Beside_, kTakeAway, reinterpret_cast<WPARAM>(Window), 0); }

HTREEITEM Shown::ItemOf(std::wstring_view Key) const {
    const TreeNode* const Wanted = Tree.Find(Key);
    std::vector<LRESULT> Waiting{SendMessageW(View(), TVM_GETNEXTITEM, TVGN_ROOT, 0)};
    while (!Waiting.empty()) {
        const LRESULT Item = Waiting.back();
        Waiting.pop_back();
        if (!Item) continue;
        TVITEMW Asked{};
        Asked.mask = TVIF_HANDLE | TVIF_PARAM;
        Asked.hItem = reinterpret_cast<HTREEITEM>(Item);
        SendMessageW(View(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&Asked));
        if (reinterpret_cast<const TreeNode*>(Asked.lParam) == Wanted) return Asked.hItem;
        Waiting.push_back(SendMessageW(View(), TVM_GETNEXTITEM, TVGN_NEXT, Item));
        Waiting.push_back(SendMessageW(View(), TVM_GETNEXTITEM, TVGN_CHILD, Item));
    }
    return nullptr;
}

std::wstring Shown::CaptionOf(HTREEITEM Item) const {
    wchar_t Text[260]{};
    TVITEMW Asked{};
    Asked.mask = TVIF_HANDLE | TVIF_TEXT;
    Asked.hItem = Item;
    Asked.pszText = Text;
    Asked.cchTextMax = 260;
    SendMessageW(View(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&Asked));
    return Asked.pszText;
}

std::wstring Shown::Selected() const {
    TVITEMW Asked{};
    Asked.mask = TVIF_HANDLE | TVIF_PARAM;
    Asked.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(View(), TVM_GETNEXTITEM, TVGN_CARET, 0));
    if (!Asked.hItem || !SendMessageW(View(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&Asked))) return {};
    return reinterpret_cast<const TreeNode*>(Asked.lParam)->Key;
}

void Shown::Click(const std::wstring& Key) const {
    const HTREEITEM Item = ItemOf(Key);
    ASSERT_NE(Item, nullptr) << Narrow(Key);
    SendMessageW(View(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(Item));
    Settle();
}

std::wstring Shown::Leaf(std::wstring_view Section, int Nth) const {
    std::wstring Key;
    Tree.ForEach([&](const TreeNode& Node) {
        if (IsLeafKey(Node.Key) && SectionWord(Node.Key) == Section && Nth-- == 1) Key = Node.Key;
    });
    EXPECT_FALSE(Key.empty());
    if (!Key.empty()) Click(Key);
    return Key;
}

std::wstring Shown::FirstLeaf() const {
    std::wstring Key;
    Tree.ForEach([&](const TreeNode& Node) {
        if (Key.empty() && IsLeafKey(Node.Key)) Key = Node.Key;
    });
    EXPECT_FALSE(Key.empty());
    if (!Key.empty()) Click(Key);
    return Key;
}

void Shown::Press(WORD Key, std::vector<WORD> Held) const {
    std::vector<INPUT> All;
    const auto Add = [&](WORD Which, DWORD Flags) {
        INPUT One{};
        One.type = INPUT_KEYBOARD;
        One.ki.wVk = Which;
        One.ki.wScan = static_cast<WORD>(MapVirtualKeyW(Which, MAPVK_VK_TO_VSC));
        One.ki.dwFlags = Flags;
        All.push_back(One);
    };
    for (const WORD Each : Held) Add(Each, 0);
    Add(Key, 0);
    Add(Key, KEYEVENTF_KEYUP);
    std::reverse(Held.begin(), Held.end());
    for (const WORD Each : Held) Add(Each, KEYEVENTF_KEYUP);
    SendInput(static_cast<UINT>(All.size()), All.data(), sizeof(INPUT));
    EXPECT_TRUE(Until([&] { return SendMessageW(Beside_, kIdle, 0, 0) != 0; })) << "the keys are not taken";
}

std::vector<std::pair<HTREEITEM, int>> Shown::Items() const {
    const auto Next = [&](WPARAM Which, HTREEITEM Of) {
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(View(), TVM_GETNEXTITEM, Which, reinterpret_cast<LPARAM>(Of)));
    };
    std::vector<std::pair<HTREEITEM, int>> All;
    std::vector<std::pair<HTREEITEM, int>> Waiting{{Next(TVGN_ROOT, nullptr), 0}};
    while (!Waiting.empty()) {
        const auto [Item, Depth] = Waiting.back();
        Waiting.pop_back();
        if (!Item) continue;
        All.emplace_back(Item, Depth);
        Waiting.emplace_back(Next(TVGN_NEXT, Item), Depth);
        Waiting.emplace_back(Next(TVGN_CHILD, Item), Depth + 1);
    }
    return All;
}

std::vector<std::wstring> Shown::Viewed() const {
    std::vector<std::wstring> All;
    for (const auto& [Item, Depth] : Items())
        All.push_back(std::wstring(static_cast<std::size_t>(Depth), L'.') + CaptionOf(Item));
    return All;
}

bool Shown::ClickSection(std::wstring_view Said) const {
    for (const auto& [Item, Depth] : Items()) {
        SendMessageW(View(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(Item));
        Settle();
        if (Text().find(Said) != std::wstring::npos) return true;
    }
    return false;
}

std::vector<std::wstring> Shown::Modelled() const {
    std::vector<std::wstring> All;
    Tree.ForEach([&](const TreeNode& Node) {
        std::size_t Depth = 0;
        for (const TreeNode* N = &Node; N->Parent; N = N->Parent) ++Depth;
        All.push_back(std::wstring(Depth, L'.') + Node.Text);
    });
    return All;
}

BesideWindow::BesideWindow() {
    WNDCLASSW Class{};
    Class.lpfnWndProc = Beside;
    Class.hInstance = GetModuleHandleW(nullptr);
    Class.lpszClassName = L"KvTestBeside";
    RegisterClassW(&Class);
    Window_ = CreateWindowExW(0, L"KvTestBeside", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, Class.hInstance,
                              nullptr);
}

BesideWindow::~BesideWindow() { DestroyWindow(Window_); }

void CallOff(const std::function<HWND()>& Window, const std::atomic<bool>& Over) {
    for (const auto End = std::chrono::steady_clock::now() + kPatience;
         !Over && std::chrono::steady_clock::now() < End;
         std::this_thread::sleep_for(std::chrono::milliseconds(10))) {
        if (const HWND Box = OpenBox()) {
            const HWND No = GetDlgItem(Box, IDNO) ? GetDlgItem(Box, IDNO) : GetDlgItem(Box, 1001);
            PostMessageW(No ? No : GetDlgItem(Box, IDCANCEL), BM_CLICK, 0, 0);
        } else if (const HWND Open = Window()) {
            PostMessageW(Open, WM_CLOSE, 0, 0);
        }
    }
}

WindowTest::WindowTest() : Before_(CoreUtil::Instance().SetPlatform(&Platform)) {
    CoreUtil::Instance().ForgetError();
}

WindowTest::~WindowTest() { CoreUtil::Instance().SetPlatform(Before_); }

bool WindowTest::InWindow(const std::shared_ptr<RegData>& Object, const std::wstring& Clsid,
                          const std::function<void(Shown&)>& While, HWND Owner) {
    const auto Tree = std::make_shared<window::TreeModel>();
    vdSvr Server(nullptr, [&] { return Tree; });
    TreeWindow Face(Server, *Tree, *Object, Clipboard, Owner);
    std::atomic<bool> Over{false};
    std::thread Driver([&] {
        Until([&] { return Over || (Face.Window() && IsWindowVisible(Face.Window())); });
        if (!Face.Window()) return;
        Shown On(*Tree, Face.Window(), Beside_.Get());
        On.Settle();
        While(On);
        CallOff([&] { return Face.Window(); }, Over);
    });
    RegData* Target = nullptr;
    const bool Failed = Server.ShowData(nullptr, Object, Clsid, Target, false);
    Over = true;
    Driver.join();
    MSG Left{};
    Quit = 0;
    while (PeekMessageW(&Left, nullptr, 0, 0, PM_REMOVE)) {
        if (Left.message == WM_QUIT) Quit = Left.wParam;
        DispatchMessageW(&Left);
    }
    EXPECT_EQ(Target, Failed ? nullptr : Object.get());
    return Failed;
}

}  // namespace kv::com::test
