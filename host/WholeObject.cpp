#include "host/WholeObject.h"

#include <utility>

#include "server/vdSvr.h"
#include "window/TreeModel.h"

namespace kv::host {
namespace {

/// A server object without a window.
class Side {
  public:
    Side(KvRegSvr& Registry, bool SyntaxOn)
        : Tree_(std::make_shared<window::TreeModel>()), Server_(&Registry, [this] { return Tree_; }) {
        Tree_->SetSyntaxOn(SyntaxOn);
    }
    iKvEditor& Editor() noexcept { return Server_; }

  private:
    std::shared_ptr<window::TreeModel> Tree_;
    vdSvr Server_;
};

}  // namespace

bool ExportText(KvRegSvr& Registry, const std::shared_ptr<RegistryObject>& Object, bool SyntaxOn,
                std::wstring& Buffer) {
    return Side(Registry, SyntaxOn).Editor().Export(Object, Object->Clsid(), Buffer);
}

bool ImportText(KvRegSvr& Registry, const std::shared_ptr<RegistryObject>& Object, bool SyntaxOn,
                std::wstring Buffer, bool& Taken) {
    const std::int64_t Before = Object->Revision();
    Object->SetSaving(true);
    const bool Failed = Side(Registry, SyntaxOn).Editor().Import(Object, Object->Clsid(), Buffer);
    Taken = Object->Revision() != Before;
    return Failed;
}

void CopyObject(KvRegSvr& Registry, const std::wstring& Clsid, const std::wstring& Name,
                const std::wstring& NewName, const std::wstring& NewDesc) {
    RegObject Content = Registry.ReadStored(Clsid, Name);
    Content.Name = NewName;
    Content.Desc = NewDesc;
    Registry.Create(Clsid, NewName, NewDesc);
    try {
        const std::shared_ptr<RegistryObject> Made = Registry.Open(Clsid, NewName);
        Made->SetSaving(true);
        Made->Write(std::move(Content));
    } catch (...) {
        Registry.Delete(Clsid, NewName);
        throw;
    }
}

}  // namespace kv::host
