// What every tree window does, whatever it looks like: it turns the selected node into the head of an
// operation, calls the server, and keeps the mark of unsaved changes, the clipboard and the selection.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "frame/ClipItem.h"
#include "frame/RegData.h"
#include "server/TreeDll.h"
#include "window/TreeModel.h"

namespace kv::window {

/// The selected node, and what the caller wants the head to say otherwise than the window would.
struct Selection {
    std::wstring CurrItem;
    std::optional<std::wstring> CurrFolder{};
    std::optional<std::int32_t> Index{};
    std::optional<std::wstring> Key{};
};

using kv::IsLeafKey;
using kv::SectionWord;

/// One showing of one object. All operations answer True on failure; the server has then shown the error. A
/// failed operation leaves the mark of unsaved changes as it was. The references must outlive the core.
class WindowCore {
  public:
    /// `Object` is the stored object under edit, `Clipboard` lives as long as the process.
    WindowCore(TreeDll& Server, TreeModel& Tree, RegData& Object, ClipItem& Clipboard)
        : Server_(Server), Tree_(Tree), Object_(Object), Clipboard_(Clipboard) {}

    /// The head that the window passes for a selection. For a folder CurrFolder is its own key, for a leaf
    /// its parent's; Index is the node's place among its siblings where the parent's kind is "RG" or "R",
    /// else 0; Key is the section word. A CurrItem that is no node is taken as a leaf of nothing.
    Head HeadOf(const Selection& At) const;

    /// Builds the tree from the object; what the item offers is registered anew.
    [[nodiscard]] bool LoadData();
    [[nodiscard]] bool DispData(const Selection& At, std::wstring& Buffer);
    [[nodiscard]] bool SaveData(const Selection& At, std::wstring& Buffer, std::wstring& NewItemKey);
    [[nodiscard]] bool EditData(const Selection& At, std::wstring& NewItemKey);
    /// `CurrItem` becomes the moved node's new key.
    [[nodiscard]] bool MoveData(const Selection& At, std::int32_t Direction, std::wstring& CurrItem);
    [[nodiscard]] bool DeleteData(const Selection& At, bool Group);
    /// What the item puts on the clipboard goes into KVDSCLP.TMP too, and replaces what was there. An item
    /// that puts nothing there leaves the clipboard alone. `ClassWord` is what the clipboard holds
    /// afterwards.
    [[nodiscard]] bool CopyData(const Selection& At, bool Group, std::wstring& ClassWord);
    /// `Path` is the class word that the window expects; absent, that of the open object. What the server
    /// lets through replaces the content of the open object, whose identity stays its own, and the tree is
    /// built anew.
    [[nodiscard]] bool PasteData(const Selection& At, const std::optional<std::wstring>& Path,
                                 std::wstring& NewItemKey);
    [[nodiscard]] bool ShowPropTable(const Selection& At);
    void TlbrButtonClick(const std::wstring& Method, const Selection& At);
    [[nodiscard]] bool GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                     std::wstring& Id, std::wstring& Clsid, std::wstring& UserList);
    [[nodiscard]] bool HelpShow(const Selection& At, const std::wstring& HelpItem);
    [[nodiscard]] bool Save();
    /// Loads the object anew as it lies where it is stored; what was pasted since the last save goes. When it
    /// fails all stays as it was.
    [[nodiscard]] bool Reload();
    /// Ends the work on the object; edits that were not saved are gone.
    [[nodiscard]] bool Terminate();

    TreeModel& Tree() noexcept { return Tree_; }
    RegData& Object() noexcept { return Object_; }
    const ClipItem& Clipboard() const noexcept { return Clipboard_; }

  private:
    template <class Call>
    bool Run(std::wstring_view Source, const Selection& At, Call&& Operation);
    void Replace(RegObject Content);

    TreeDll& Server_;
    TreeModel& Tree_;
    RegData& Object_;
    ClipItem& Clipboard_;
    std::optional<RegObject> BeforePaste_;  // the content as it was saved last, where a paste has replaced it
};

}  // namespace kv::window
