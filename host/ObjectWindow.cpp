#include "host/ObjectWindow.h"

#include <utility>

namespace kv::host {

ObjectWindow::ObjectWindow(RegistryServer* Registry, std::shared_ptr<RegData> Object, ClipItem& Clipboard)
    : Object_(std::move(Object)),
      Tree_(std::make_shared<window::TreeModel>()),
      Server_(Registry, [this] { return Tree_; }),
      Core_(Server_, *Tree_, *Object_, Clipboard) {
    Tree_->SetFace(this);
}

ObjectWindow::~ObjectWindow() { Tree_->SetFace(nullptr); }

bool ObjectWindow::Show(bool SyntaxOn, const Body& While) {
    Tree_->SetSyntaxOn(SyntaxOn);
    While_ = &While;
    RegData* Target = nullptr;
    const bool Failed = Server_.ShowData(nullptr, Object_, Object_->Clsid(), Target, false);
    While_ = nullptr;
    if (Thrown_) std::rethrow_exception(std::exchange(Thrown_, nullptr));
    return Failed;
}

bool ObjectWindow::Run(TreeCall& Call) {
    if (Core_.LoadData()) return true;
    Call.Target = &Core_.Object();
    try {
        (*While_)(Core_);
    } catch (...) {
        Thrown_ = std::current_exception();  // the server would take it for a fault of its own
    }
    return Core_.Terminate();
}

void ObjectWindow::ModifiedChanged(bool Modified) {
    if (OnModified) OnModified(Modified);
}

}  // namespace kv::host
