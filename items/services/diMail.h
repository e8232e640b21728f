// The design item of the class MAIL.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/MailRecord.h"

namespace kv {

/// Designs a mail centre. Sections: PARMS; the messages FIELDS, below each its name (FIELDPARMS) and its
/// texts by language (FIELDCAPTION). Names and paths keep their case.
class diMail final : public iKvTree {
  public:
    [[nodiscard]] bool SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                RegData* ExternalSource) override;
    [[nodiscard]] bool Save(RegData& Clsid) override;
    [[nodiscard]] bool MoveData(Head& At, std::int32_t Direction) override;
    [[nodiscard]] bool LoadData(RegData& Clsid) override;
    [[nodiscard]] bool GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                     std::wstring& Id) override;
    /// The texts of the messages are not exported.
    [[nodiscard]] bool ExportData(RegData& Clsid, std::wstring& Buffer) override;
    [[nodiscard]] bool EditData(const Head& At, std::wstring& NewItemKey) override;
    [[nodiscard]] bool DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                                std::int32_t Indent) override;
    [[nodiscard]] bool CopyData(const Head& At, bool Group, ClipItem& DataObj) override;
    [[nodiscard]] bool DeleteData(const Head& At, bool Group) override;

  private:
    [[nodiscard]] bool SaveParm(std::wstring& Buffer, bool SyntaxOn);
    [[nodiscard]] bool DispParm(std::wstring& Buffer, std::int32_t Indent);

    // The message at a place of the list.
    [[nodiscard]] bool SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn);
    [[nodiscard]] bool DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);

    MailRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<MailRecord> Record_;
};

}  // namespace kv
