// An object open in a window without a screen, for the work that an operator does on it.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "frame/CoreUtil.h"
#include "frame/Platform.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace kv::bench {

inline void Must(bool Failed) {
    if (Failed) throw std::runtime_error("refused");
}

/// An operator who says yes to everything.
class Agreeing final : public SilentPlatform {
  public:
    Agreeing() : Before_(CoreUtil::Instance().SetPlatform(this)) {}
    ~Agreeing() override { CoreUtil::Instance().SetPlatform(Before_); }
    Answer MessageBox(std::wstring_view, std::int32_t) override { return Answer::Yes; }

  private:
    Platform* Before_;
};

class Desk final : private window::TreeFace {
  public:
    Desk(std::wstring_view ClassWord, RegObject Content)
        : Desk(std::make_shared<MemoryRegData>(ClassWord, std::move(Content)), nullptr) {}
    Desk(std::shared_ptr<RegData> Stored, RegistryServer* Registry)
        : Object(std::move(Stored)),
          Server(Registry, [this] { return Tree; }),
          Core(Server, *Tree, *Object, Clipboard) {
        Tree->SetFace(this);
        RegData* Target = nullptr;
        Must(Server.ShowData(nullptr, Object, Object->Clsid(), Target, false));
    }
    ~Desk() override { Tree->SetFace(nullptr); }

    /// Key of the first leaf of a section.
    std::wstring Leaf(std::wstring_view Section) const {
        std::wstring Found;
        Tree->ForEach([&](const window::TreeNode& Node) {
            if (Found.empty() && IsLeafKey(Node.Key) && SectionWord(Node.Key) == Section) Found = Node.Key;
        });
        return Found;
    }
    /// Key of the node in the middle of a folder.
    std::wstring Middle(std::wstring_view Folder) const {
        const window::TreeNode* const Node = Tree->Find(Folder);
        return Tree->NodeAt(Folder, Node->Children.Count() / 2);
    }
    /// The leaf with the parameters of an element.
    std::wstring ParmsOf(std::wstring_view Element) const {
        return Tree->NodeAt(Tree->NodeAt(Element, 1), 1);
    }

    ClipItem Clipboard;
    std::shared_ptr<RegData> Object;
    std::shared_ptr<window::TreeModel> Tree = std::make_shared<window::TreeModel>();
    vdSvr Server;
    window::WindowCore Core;

  private:
    [[nodiscard]] bool Run(TreeCall&) override { return false; }
};

}  // namespace kv::bench
