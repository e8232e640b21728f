// The design item of the class QUERY.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/QueryRecord.h"

namespace kv {

/// Designs a query. Sections: PARMS; the lists TITLES, MESSAGE, OPTIONMSG1, OPTIONMSG2, HTML, HTMLRES,
/// POPUPS, HTMLTEMPL and HTMLRESTEMPL; COMMANDS, below each button COMMANDPARMS and the list COMMANDTIPS;
/// FIELDS, below each field FIELDPARMS and the lists FIELDCAPTION and CONSTANTS (its predefined values),
/// below each value CONSTANTPARMS and the list CONSTANTCAPTION.
///
/// Sections and tree stand in diQuery.cpp, the parameters of query, field and value with the nodes of the two
/// latter in diQueryParms.cpp.
class diQuery final : public iKvTree {
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
    [[nodiscard]] bool SaveFieldParm(std::wstring& Buffer, std::int32_t Field, bool SyntaxOn);
    [[nodiscard]] bool DispFieldParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Indent);
    /// Reads by itself whether the tree wants strict checks.
    [[nodiscard]] bool SaveConstParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Value);
    [[nodiscard]] bool DispConstParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Value,
                                     std::int32_t Indent);

    QueryRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<QueryRecord> Record_;
};

}  // namespace kv
