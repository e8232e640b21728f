#include "com/window/TreeWindow.h"

#include "com/window/ObjectFrame.h"
#include "frame/CoreUtil.h"
#include "frame/Failure.h"

namespace kv::com {

/// The door to the operator while the window is open: errors go to the window, the rest where it went before.
class TreeWindow::Door final : public Platform {
  public:
    explicit Door(ObjectFrame& Shown) : Shown_(Shown), Before_(CoreUtil::Instance().Door()) {
        CoreUtil::Instance().SetPlatform(this);
    }
    // What was put there meanwhile stays.
    ~Door() override {
        if (&CoreUtil::Instance().Door() == this) CoreUtil::Instance().SetPlatform(&Before_);
    }

    void ShowError(const KvError& Error) override { Shown_.ShowFault(Error); }
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override {
        return Before_.MessageBox(Text, Style);
    }
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override {
        return Before_.SaveFile(Title, Filter, FilterIndex, Flags);
    }
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override {
        Before_.ShowList(Caption, Items);
    }
    void Beep() override { Before_.Beep(); }
    void SetPointer(std::int32_t Pointer) override { Before_.SetPointer(Pointer); }
    std::wstring ProgramFolder() override { return Before_.ProgramFolder(); }
    std::wstring TempFolder() override { return Before_.TempFolder(); }

  private:
    ObjectFrame& Shown_;
    Platform& Before_;
};

TreeWindow::TreeWindow(TreeDll& Server, window::TreeModel& Tree, RegData& Object, ClipItem& Clipboard,
                       HWND Owner)
    : Core_(Server, Tree, Object, Clipboard), Owner_(Owner) {
    Core_.Tree().SetFace(this);
}

TreeWindow::~TreeWindow() { Core_.Tree().SetFace(nullptr); }

bool TreeWindow::Run(TreeCall& Call) {
    Platform& Host = CoreUtil::Instance().Door();
    Host.SetPointer(kPointerWait);
    const bool Unread = Core_.LoadData();
    Host.SetPointer(kPointerDefault);
    if (Unread) return true;
    Core_.Tree().MarkModified(false);  // an earlier showing may have left its changes unsaved
    Call.Target = &Core_.Object();
    const bool Failed = Trap(L"TreeWindow.Run", [&] {
        const VisualStyle Style;
        const HWND Owner = Owner_ ? GetAncestor(Owner_, GA_ROOT) : GetActiveWindow();
        ObjectFrame Frame(Core_, Owner);
        const Door Errors(Frame);
        Open_ = &Frame;
        Frame.RunLoop();
        Open_ = nullptr;
        return false;
    });
    Open_ = nullptr;
    return Core_.Terminate() || Failed;
}

void TreeWindow::ModifiedChanged(bool) {
    if (Open_) Open_->ShowTitle();
}

HWND TreeWindow::Window() const noexcept { return Open_ ? Open_->Window() : nullptr; }

}  // namespace kv::com
