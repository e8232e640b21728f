// One object opened in a tree window, whatever shows it: the server object, the tree and the window core of
// one showing.
#pragma once

#include <exception>
#include <functional>
#include <memory>

#include "frame/ClipItem.h"
#include "frame/CoreUtil.h"
#include "frame/RegData.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace kv::host {

class ObjectWindow final : private window::TreeFace {
  public:
    /// What is done while the window is open. Called inside the server's modal ShowTree, after LoadData has
    /// succeeded; when it comes back the window closes.
    using Body = std::function<void(window::WindowCore&)>;

    /// `Registry` may be null; it and `Clipboard` must outlive the window. The object is shared.
    ObjectWindow(RegistryServer* Registry, std::shared_ptr<RegData> Object, ClipItem& Clipboard);
    ~ObjectWindow() override;

    /// Opens the window with the strict switch as given, runs `While`, closes it (Terminate). True when the
    /// object could not be opened: then While has not run, and the error has been shown (LoadData) or waits
    /// in the error store (an unknown class word).
    [[nodiscard]] bool Show(bool SyntaxOn, const Body& While);

    /// Called when the mark of unsaved changes changes.
    std::function<void(bool)> OnModified;

  private:
    [[nodiscard]] bool Run(TreeCall& Call) override;
    void ModifiedChanged(bool Modified) override;

    std::shared_ptr<RegData> Object_;
    std::shared_ptr<window::TreeModel> Tree_;
    vdSvr Server_;
    window::WindowCore Core_;
    const Body* While_ = nullptr;
    std::exception_ptr Thrown_;
};

}  // namespace kv::host
