// The contract of every design item.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "frame/ClipItem.h"
#include "frame/DesignTree.h"
#include "frame/RegData.h"

namespace kv {

/// The head of an operation: which node it concerns.
struct Head {
    std::wstring CurrFolder{};  // key of the folder of the selected node
    std::wstring CurrItem{};    // key of the selected node
    std::int32_t Index = 0;     // 1-based place of the element in its list, 0 where none
    std::wstring Key{};         // the bare section word
};

/// Positions that stand in for a selected node when a section is rendered for an export: outermost first,
/// 1-based; empty when the node is to be asked.
using Positions = std::span<const std::int32_t>;

/// One design item: it serves one configuration class. Every operation answers True on failure; the text then
/// waits in the error store. The bodies that stand here are what the plain case answers without a record.
class iKvTree {
  public:
    iKvTree() = default;
    iKvTree(const iKvTree&) = delete;
    iKvTree& operator=(const iKvTree&) = delete;
    virtual ~iKvTree() = default;

    /// Shows a property table for the node; the plain case sounds the beep.
    [[nodiscard]] virtual bool ShowPropTable(const std::wstring& CurrFolder, const std::wstring& CurrItem);
    /// Parses the operator's text of the section `At.Key` into the record. On success `NewItemKey` may come
    /// back with a caption or key; on failure the record is as it was. `ExternalSource` is null from the
    /// server.
    [[nodiscard]] virtual bool SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                        RegData* ExternalSource) = 0;
    /// Checks what spans elements and writes the record to the stored object.
    [[nodiscard]] virtual bool Save(RegData& Clsid) = 0;
    /// Shows who uses the object; the plain case does nothing.
    [[nodiscard]] virtual bool ShowUsers(const Head& At);
    /// Moves a list element one place, towards the front for a positive `Direction`. The moved node's new key
    /// comes back in At.CurrItem.
    [[nodiscard]] virtual bool MoveData(Head& At, std::int32_t Direction) = 0;
    /// Reads the stored object and builds the tree.
    [[nodiscard]] virtual bool LoadData(RegData& Clsid) = 0;
    /// Reads an object from exported text; the plain case does nothing.
    [[nodiscard]] virtual bool ImportData(RegData& Clsid, std::wstring& Buffer);
    /// Reports the record's identity; a record that is absent is made empty.
    [[nodiscard]] virtual bool GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                             std::wstring& Id) = 0;
    /// Loads the object into a record of its own and appends the whole of it to `Buffer` as text.
    [[nodiscard]] virtual bool ExportData(RegData& Clsid, std::wstring& Buffer) = 0;
    /// Makes a new leaf in the folder; its key comes back in `NewItemKey`.
    [[nodiscard]] virtual bool EditData(const Head& At, std::wstring& NewItemKey) = 0;
    /// Appends the section as text. `ExternalTarget` wraps it in its BEGIN and END lines; `Indent` is in
    /// tabs.
    [[nodiscard]] virtual bool DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget,
                                        Positions Item, std::int32_t Indent) = 0;
    /// Acts on the tool button whose word is `Method`; the plain case does nothing.
    [[nodiscard]] virtual bool TlbrButtonClick(const std::wstring& Method, const std::wstring& CurrFolder,
                                               const std::wstring& CurrItem, const std::wstring& Key);
    /// Pastes what the clipboard holds; the plain case does nothing, the host pastes.
    [[nodiscard]] virtual bool PasteData(const Head& At, std::wstring& NewItemKey, ClipItem& ExternalSource);
    /// Saves the record onto the object in `DataObj`.
    [[nodiscard]] virtual bool CopyData(const Head& At, bool Group, ClipItem& DataObj) = 0;
    /// Deletes one element, or with `Group` True all of the folder.
    [[nodiscard]] virtual bool DeleteData(const Head& At, bool Group) = 0;

    /// The tree, set by the server after creation and shared with it.
    std::shared_ptr<kv::DesignTree>& DesignTree() noexcept { return Tree_; }

  protected:
    /// The tree; raises the fault "no such object" when the server has set none.
    kv::DesignTree& Tree() const;

  private:
    std::shared_ptr<kv::DesignTree> Tree_;
};

}  // namespace kv
