// The design item of the class LOAN.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/LoanRecord.h"

namespace kv {

/// Designs a loan service. Its one section PARMS goes through ParmEditor.
class diLoan final : public iKvTree {
  public:
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
    LoanRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<LoanRecord> Record_;
};

}  // namespace kv
