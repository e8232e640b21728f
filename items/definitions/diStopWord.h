// The design item of the class STOPWORD.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/StopWordRecord.h"

namespace kv {

/// Designs a table of words and their replacements: the section PARMS tells where and how a word matches, the
/// section MESSAGE holds the pairs, one a line, with a separator of the user's choice between the two quoted
/// words.
class diStopWord final : public iKvTree {
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
    [[nodiscard]] bool SaveParm(std::wstring& Buffer, bool SyntaxOn);
    [[nodiscard]] bool DispParm(std::wstring& Buffer, std::int32_t Indent);
    [[nodiscard]] bool SaveTable(std::wstring& Buffer);
    [[nodiscard]] bool DispTable(std::wstring& Buffer, std::int32_t Indent);

    StopWordRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<StopWordRecord> Record_;
};

}  // namespace kv
