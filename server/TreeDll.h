// The interface through which the tree window calls back for each action of the operator.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frame/ClipItem.h"
#include "frame/iKvTree.h"

namespace kv {

/// Each operation hands on to the iKvTree operation of its name and answers True on failure, after the error
/// has been shown to the operator once. Only PasteData reads `Path`.
class TreeDll {
  public:
    virtual ~TreeDll() = default;

    [[nodiscard]] virtual bool CopyData(const std::wstring& Path, const Head& At, bool Group,
                                        ClipItem& Clipboard) = 0;
    [[nodiscard]] virtual bool DeleteData(const std::wstring& Path, const Head& At, bool Group) = 0;
    [[nodiscard]] virtual bool DispData(const std::wstring& Path, const Head& At, std::wstring& Buffer) = 0;
    [[nodiscard]] virtual bool EditData(const std::wstring& Path, const Head& At,
                                        std::wstring& NewItemKey) = 0;
    /// Besides what the item reports, the class word and the users of the stored object.
    [[nodiscard]] virtual bool GetObjectInfo(const std::wstring& Path, std::wstring& Name, std::wstring& Desc,
                                             std::int16_t& Version, std::wstring& Clsid, std::wstring& Id,
                                             std::wstring& UserList) = 0;
    /// No help is shown: always False.
    [[nodiscard]] virtual bool HelpShow(const std::wstring& Path, const std::wstring& CurrFolder,
                                        const std::wstring& CurrItem, const std::wstring& HelpItem) = 0;
    [[nodiscard]] virtual bool LoadData(const std::wstring& Path) = 0;
    [[nodiscard]] virtual bool MoveData(const std::wstring& Path, Head& At, std::int32_t Direction) = 0;
    /// Here `Path` carries the class word. What the clipboard holds must be of that class, else 20000 "I dati
    /// memorizzati sono di una classe diversa da <Path>" and the item is not asked.
    [[nodiscard]] virtual bool PasteData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                                         ClipItem& ExternalSource) = 0;
    /// Hands the stored object back and drops the item.
    [[nodiscard]] virtual bool Terminate(const std::wstring& Path, std::shared_ptr<kv::RegData>& RegData) = 0;
    /// Quitting is never cancelled.
    [[nodiscard]] virtual bool Quit(bool& Cancel) = 0;
    [[nodiscard]] virtual bool Save(const std::wstring& Path) = 0;
    [[nodiscard]] virtual bool SaveData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                                        std::wstring& Buffer) = 0;
    [[nodiscard]] virtual bool ShowPropTable(const std::wstring& Path, const std::wstring& CurrFolder,
                                             const std::wstring& CurrItem) = 0;
    /// A tool shows its own error; nothing comes back.
    virtual void TlbrButtonClick(const std::wstring& Method, const std::wstring& CurrFolder,
                                 const std::wstring& CurrItem, const std::wstring& Key) = 0;
};

}  // namespace kv
