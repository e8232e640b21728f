// The design item of the class WEBSERVER.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/WebServerRecord.h"

namespace kv {

/// Designs the web server. Sections: PARMS; nine lists of page templates (BROWSE, ERRORS, HISTORY, HOME,
/// LOAN, LOANREPORT, QUERY, QUERYRESULT, RECORD); the tags CONSTANTS and the messages MESSAGE, below each its
/// name (CONSTANTPARMS, MESSAGEPARMS) and its texts by language (CONSTANTCAPTION, MESSAGECAPTION).
class diWebServer final : public iKvTree {
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
    /// Of tags and messages one is removed at a time, whatever Group says.
    [[nodiscard]] bool DeleteData(const Head& At, bool Group) override;

  private:
    [[nodiscard]] bool SaveParm(std::wstring& Buffer, bool SyntaxOn);
    [[nodiscard]] bool DispParm(std::wstring& Buffer, std::int32_t Indent);

    // The tag and the message at a place of their list.
    [[nodiscard]] bool SaveConstParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn);
    [[nodiscard]] bool DispConstParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);
    [[nodiscard]] bool SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn);
    [[nodiscard]] bool DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);

    WebServerRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<WebServerRecord> Record_;
};

}  // namespace kv
