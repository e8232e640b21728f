// The server object: it turns a class word into a design item and forwards.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "frame/CoreUtil.h"
#include "server/TreeDll.h"
#include "server/iKvEditor.h"

namespace kv {

/// Makes the tree of a server object.
using TreeMaker = std::function<std::shared_ptr<kv::DesignTree>()>;

/// One object is worked on at a time: a new class word replaces the item. Export and Import use the same
/// place, so neither may run on a server object whose ShowData is open. Everything runs on the host's one
/// thread.
class vdSvr final : public iKvEditor, public TreeDll {
  public:
    static constexpr std::int32_t kVersion = 256;

    /// Hands "VELMIRA.INI" and the registry server (may be null; must outlive this object) to CoreUtil and
    /// makes the tree. A failure of `MakeTree` is reported as "vdSvr.vdSvr" and leaves the server without a
    /// tree.
    vdSvr(RegistryServer* Registry, const TreeMaker& MakeTree);
    ~vdSvr() override;

    /// The tree, shared with whoever sets or reads it.
    std::shared_ptr<kv::DesignTree>& DesignTree() noexcept { return Tree_; }

    // iKvEditor
    [[nodiscard]] bool Export(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid,
                              std::wstring& Buffer) override;
    void LastError(std::int32_t& Number, std::wstring& Source, std::wstring& Description,
                   std::wstring& HelpFile, std::wstring& HelpContext, std::int32_t& LastDLLError) override;
    [[nodiscard]] bool Import(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid,
                              std::wstring& Buffer) override;
    [[nodiscard]] bool ShowData(HostObject* CallBack, std::shared_ptr<kv::RegData> RegData,
                                const std::wstring& Clsid, kv::RegData*& Target, bool Flag) override;
    std::int32_t CurrVersion() const noexcept override { return kVersion; }
    void ShutDown() noexcept override;

    // TreeDll
    [[nodiscard]] bool CopyData(const std::wstring& Path, const Head& At, bool Group,
                                ClipItem& Clipboard) override;
    [[nodiscard]] bool DeleteData(const std::wstring& Path, const Head& At, bool Group) override;
    [[nodiscard]] bool DispData(const std::wstring& Path, const Head& At, std::wstring& Buffer) override;
    [[nodiscard]] bool EditData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey) override;
    [[nodiscard]] bool GetObjectInfo(const std::wstring& Path, std::wstring& Name, std::wstring& Desc,
                                     std::int16_t& Version, std::wstring& Clsid, std::wstring& Id,
                                     std::wstring& UserList) override;
    [[nodiscard]] bool HelpShow(const std::wstring& Path, const std::wstring& CurrFolder,
                                const std::wstring& CurrItem, const std::wstring& HelpItem) override;
    [[nodiscard]] bool LoadData(const std::wstring& Path) override;
    [[nodiscard]] bool MoveData(const std::wstring& Path, Head& At, std::int32_t Direction) override;
    [[nodiscard]] bool PasteData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                                 ClipItem& ExternalSource) override;
    [[nodiscard]] bool Terminate(const std::wstring& Path, std::shared_ptr<kv::RegData>& RegData) override;
    [[nodiscard]] bool Quit(bool& Cancel) override;
    [[nodiscard]] bool Save(const std::wstring& Path) override;
    [[nodiscard]] bool SaveData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                                std::wstring& Buffer) override;
    [[nodiscard]] bool ShowPropTable(const std::wstring& Path, const std::wstring& CurrFolder,
                                     const std::wstring& CurrItem) override;
    void TlbrButtonClick(const std::wstring& Method, const std::wstring& CurrFolder,
                         const std::wstring& CurrItem, const std::wstring& Key) override;

  private:
    void CreateItem(const std::wstring& Word);
    void DropItem() noexcept;
    iKvTree& Item() const;
    kv::RegData& Object() const;

    bool Closed_ = false;  // blocks ShowData and Export; nothing in this component sets it
    std::unique_ptr<iKvTree> Item_;
    std::shared_ptr<kv::RegData> RegData_;
    std::wstring ClassWord_;
    std::shared_ptr<kv::DesignTree> Tree_;
};

/// The class words whose design items stand in this server, in the order of the ladder.
std::span<const std::wstring_view> ClassWords() noexcept;

}  // namespace kv
