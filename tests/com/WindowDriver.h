// Works on the tree window as an operator does, from a second thread: messages, keys, boxes.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "com/window/ObjectFrame.h"
#include "com/window/TreeWindow.h"
#include "com/window/WindowsPlatform.h"
#include "frame/CoreUtil.h"
#include "server/vdSvr.h"
#include "tests/support/TestPlatform.h"

namespace kv::com::test {

using kv::test::Narrow;
using window::TreeNode;

/// Waits until it holds, at most fifteen seconds. What it answered last.
bool Until(const std::function<bool()>& Holds);

/// The text of a window or control of this process.
std::wstring TextIn(HWND Of);
/// The message box or form that is open; null for none.
HWND OpenBox();
/// All that the labels of a box say.
std::wstring SaidBy(HWND Box);

/// How many colours the window shows; it is written to `File` as a bitmap where that is given.
std::size_t TakePicture(HWND Of, const char* File);

/// A window of the thread that shows, to which nothing else is sent.
class BesideWindow {
  public:
    BesideWindow();
    BesideWindow(const BesideWindow&) = delete;
    BesideWindow& operator=(const BesideWindow&) = delete;
    ~BesideWindow();
    HWND Get() const noexcept { return Window_; }

  private:
    HWND Window_;
};

/// Calls off whatever is open, and closes the window, until the showing is over; at most fifteen seconds.
/// `Window` answers the window, null for none.
void CallOff(const std::function<HWND()>& Window, const std::atomic<bool>& Over);

/// One showing, seen from the driver's thread. Of a window whose model is that of another file, `Of` is
/// empty: the nodes are then known by their captions.
class Shown {
  public:
    Shown(window::TreeModel& Of, HWND Open, HWND Beside) : Tree(Of), Window(Open), Beside_(Beside) {}

    window::TreeModel& Tree;
    HWND Window;

    HWND Control(int Id) const { return GetDlgItem(Window, Id); }
    HWND View() const { return Control(control::kTree); }
    HWND Editor() const { return Control(control::kText); }
    std::wstring Text() const { return TextIn(Editor()); }
    std::wstring Message() const { return TextIn(Control(control::kMessage)); }
    std::wstring Heading() const { return TextIn(Control(control::kHeading)); }
    std::wstring Title() const { return TextIn(Window); }
    bool Offered(int Id) const {
        return (GetMenuState(GetMenu(Window), static_cast<UINT>(Id), MF_BYCOMMAND) & MF_GRAYED) == 0;
    }

    /// What was posted before has been done, or is asking something; or the window is closed.
    void Settle() const;
    /// A command of the window; comes back when it is done or asks something.
    void Do(int Id) const {
        PostMessageW(Window, WM_COMMAND, static_cast<WPARAM>(Id), 0);
        Settle();
    }
    /// The same for a command that asks `Said`, which is answered with the button of that label or id.
    void Do(int Id, const std::wstring& Said, int Button) const;
    void Do(int Id, const std::wstring& Said, const std::wstring& Label) const;
    void Answer(const std::wstring& Said, int Button) const;
    void Answer(const std::wstring& Said, const std::wstring& Label) const;

    /// Puts text into the editor as typing does.
    void Type(const std::wstring& Text) const;
    /// Clicks a node, so to speak.
    void Click(const std::wstring& Key) const;
    /// Selects the n-th leaf of a section; its key.
    std::wstring Leaf(std::wstring_view Section, int Nth = 1) const;
    std::wstring FirstLeaf() const;
    /// Clicks the first node whose section says `Text`. False when there is none.
    bool ClickSection(std::wstring_view Text) const;
    /// Presses a key with others held; comes back when all is taken.
    void Press(WORD Key, std::vector<WORD> Held = {}) const;

    /// The window is destroyed, as by a host that takes away all it owns.
    void TakeAway() const;

    HTREEITEM ItemOf(std::wstring_view Key) const;
    std::wstring CaptionOf(HTREEITEM Item) const;
    /// The key of the node that the view has selected.
    std::wstring Selected() const;
    /// The captions of the whole view, with their depth; and those of the model in the same form.
    std::vector<std::wstring> Viewed() const;
    std::vector<std::wstring> Modelled() const;

  private:
    /// All items of the view, in order, with their depth.
    std::vector<std::pair<HTREEITEM, int>> Items() const;
    void Press(HWND Box, const std::wstring& Said, HWND Button) const;

    HWND Beside_;
};

class WindowTest : public ::testing::Test {
  protected:
    WindowTest();
    ~WindowTest() override;

    /// Opens the window on an object and lets `While` drive it from another thread; afterwards closes what it
    /// has left open, without saving. What ShowData answers.
    bool InWindow(const std::shared_ptr<RegData>& Object, const std::wstring& Clsid,
                  const std::function<void(Shown&)>& While, HWND Owner = nullptr);
    bool InWindow(const std::shared_ptr<RegData>& Object, const std::function<void(Shown&)>& While) {
        return InWindow(Object, Object->Clsid(), While);
    }

    static std::shared_ptr<MemoryRegData> Fresh(std::wstring_view Clsid) {
        RegObject Content;
        Content.Name = L"PROVA";
        return std::make_shared<MemoryRegData>(Clsid, std::move(Content));
    }

    /// What WM_QUIT told after the last showing, 0 where none came.
    WPARAM Quit = 0;

    WindowsPlatform Platform;
    ClipItem Clipboard;

  private:
    kv::Platform* Before_;
    BesideWindow Beside_;
};

}  // namespace kv::com::test
