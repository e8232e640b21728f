// A complete host in one file: it opens a stored object, edits its section as an operator would, shows what
// is refused, saves, and prints the object as text. It needs the core library only.
#include <iostream>
#include <memory>
#include <string>

#include "frame/CoreUtil.h"
#include "frame/RegData.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace {

std::string Ascii(std::wstring_view Text) {
    std::string Out;
    for (const wchar_t C : Text) Out.push_back(C < 0x80 ? static_cast<char>(C) : '?');
    return Out;
}

// The door to the operator: here a terminal that takes no answers.
class Terminal final : public kv::SilentPlatform {
  public:
    void ShowError(const kv::KvError& Error) override {
        std::cout << "refused: " << Ascii(Error.Description) << " [" << Ascii(Error.Source) << ", line "
                  << Error.Line << "]\n";
    }
};

// The window: it runs inside the server's call, loads the tree and works on the first leaf.
class ScriptedWindow final : public kv::window::TreeFace {
  public:
    ScriptedWindow(kv::vdSvr& Server, kv::window::TreeModel& Tree, kv::RegData& Object)
        : Core_(Server, Tree, Object, Clipboard_) {}

    bool Run(kv::TreeCall&) override {
        if (Core_.LoadData()) return true;
        std::wstring Leaf;
        Core_.Tree().ForEach([&](const kv::window::TreeNode& Node) {
            std::cout << Ascii(Node.Key) << ": " << Ascii(Node.Text) << "\n";
            if (kv::window::IsLeafKey(Node.Key)) Leaf = Node.Key;
        });
        for (std::wstring Text : {L"PASSWORD= \"biblio\"\r\nPIPPO=1", L"PASSWORD= \"biblio\""}) {
            std::wstring NewItemKey;
            if (!Core_.SaveData({.CurrItem = Leaf}, Text, NewItemKey)) std::cout << "accepted\n";
        }
        if (Core_.Save()) return true;
        return Core_.Terminate();
    }

  private:
    kv::ClipItem Clipboard_;
    kv::window::WindowCore Core_;
};

}  // namespace

int main() {
    Terminal Door;
    kv::CoreUtil::Instance().SetPlatform(&Door);

    kv::RegObject Content;
    Content.Id = 1;
    Content.Name = L"LETTORE";
    Content.Version = 1;
    const auto Object = std::make_shared<kv::MemoryRegData>(L"MEMBER", Content);

    const auto Tree = std::make_shared<kv::window::TreeModel>();
    kv::vdSvr Server(nullptr, [&] { return Tree; });
    ScriptedWindow Window(Server, *Tree, *Object);
    Tree->SetFace(&Window);

    kv::RegData* Target = nullptr;
    const bool Failed = Server.ShowData(nullptr, Object, Object->Clsid(), Target, false);
    std::wstring Text;
    if (!Failed && !Server.Export(Object, Object->Clsid(), Text)) std::cout << Ascii(Text);

    kv::CoreUtil::Instance().SetPlatform(nullptr);
    return Failed ? 1 : 0;
}
