// The design item of the class CATPROC.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/CatProcRecord.h"

namespace kv {

/// Designs a catalogue procedure: PARMS and its components (FIELDS), both through ParmEditor. That no two
/// components have one name is asked for by Save alone.
class diCatProc final : public iKvTree {
  public:
    /// Does nothing, and sounds no beep.
    [[nodiscard]] bool ShowPropTable(const std::wstring& CurrFolder, const std::wstring& CurrItem) override;
    [[nodiscard]] bool SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                RegData* ExternalSource) override;
    [[nodiscard]] bool Save(RegData& Clsid) override;
    [[nodiscard]] bool MoveData(Head& At, std::int32_t Direction) override;
    [[nodiscard]] bool LoadData(RegData& Clsid) override;
    [[nodiscard]] bool GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                     std::wstring& Id) override;
    [[nodiscard]] bool ExportData(RegData& Clsid, std::wstring& Buffer) override;
    [[nodiscard]] bool EditData(const Head& At, std::wstring& NewItemKey) override;
    [[nodiscard]] bool DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                                std::int32_t Indent) override;
    [[nodiscard]] bool CopyData(const Head& At, bool Group, ClipItem& DataObj) override;
    [[nodiscard]] bool DeleteData(const Head& At, bool Group) override;

  private:
    CatProcRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<CatProcRecord> Record_;
};

}  // namespace kv
