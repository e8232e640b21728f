// The design item of the class ALIAS.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "frame/vdbcModule.h"
#include "records/AliasRecord.h"

namespace kv {

/// Designs a list of aliases. Its one section FIELDS goes through ParmEditor, element by element. The list
/// stands in ascending order of the names at all times: a new alias goes to its place, one that is renamed
/// moves there with its leaf, and there is no other order to move it to.
class diAlias final : public iKvTree {
  public:
    /// NewItemKey becomes the key of the alias' leaf, which is a new one where the alias was renamed.
    [[nodiscard]] bool SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                RegData* ExternalSource) override;
    [[nodiscard]] bool Save(RegData& Clsid) override;
    /// True, and nothing done.
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
    [[nodiscard]] bool LoadSorted(RegData& Clsid);
    [[nodiscard]] bool SaveAlias(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                                 const SaveFlags& Flags);

    AliasRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<AliasRecord> Record_;
};

}  // namespace kv
