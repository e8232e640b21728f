// The design item of the class MAILGROUP.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/MailGroupRecord.h"

namespace kv {

/// Designs what a group of users may do with mail, and where backups go. Sections: PARMS, MAIL, EXPORT,
/// SETOPS, NOTEBOOK, QUERY, each with its one leaf; the list of backup paths PATHS. Their texts bear no
/// identity.
class diMailGroup final : public iKvTree {
  public:
    [[nodiscard]] bool SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                RegData* ExternalSource) override;
    [[nodiscard]] bool Save(RegData& Clsid) override;
    /// Of PATHS alone, as EditData and DeleteData; the fixed sections have nothing to add, move or delete.
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
    // The backup path at a place of the list.
    [[nodiscard]] bool SaveBackups(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn);
    [[nodiscard]] bool DispBackups(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);

    MailGroupRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<MailGroupRecord> Record_;
};

}  // namespace kv
