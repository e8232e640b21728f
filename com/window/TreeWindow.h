// The tree window of the component: a native window on an object under edit.
#pragma once

#include "com/window/Windows.h"
#include "frame/ClipItem.h"
#include "frame/RegData.h"
#include "server/TreeDll.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace kv::com {

class ObjectFrame;

/// One showing of one object: the face of the tree while it lives. It is opened by the server's ShowTree,
/// inside which it stays until the operator closes it. The thread's own messages are taken meanwhile, and the
/// owner is disabled. While it is open it shows the errors of the server in its message line; all else that
/// is shown or asked goes to the platform that was the door before.
class TreeWindow final : public window::TreeFace {
  public:
    /// `Object` is the stored object that ShowData is given, `Clipboard` lives as long as the process; the
    /// references must outlive the window. `Owner` may be null: then the active window of the thread is it.
    TreeWindow(TreeDll& Server, window::TreeModel& Tree, RegData& Object, ClipItem& Clipboard,
               HWND Owner = nullptr);
    TreeWindow(const TreeWindow&) = delete;
    TreeWindow& operator=(const TreeWindow&) = delete;
    ~TreeWindow() override;

    /// LoadData, the window, Terminate. `Call.Target` becomes the object. True when the object was not loaded
    /// (the error has been shown) or there was no window to be had (the error waits in the error store).
    [[nodiscard]] bool Run(TreeCall& Call) override;
    void ModifiedChanged(bool Modified) override;

    /// The window while it is open, else null.
    HWND Window() const noexcept;

  private:
    class Door;

    window::WindowCore Core_;
    HWND Owner_;
    ObjectFrame* Open_ = nullptr;
};

}  // namespace kv::com
