// The design item of the class PROFILE.
#pragma once

#include <memory>
#include <string>

#include "frame/iKvTree.h"
#include "frame/vdbShared.h"
#include "records/ProfileRecord.h"

namespace kv {

/// Designs a display profile. Sections: PARMS; the lists TEXTFONTS (which the tree does not show), POPUPS,
/// TITLES, RECHTML, LOANHTML and HTML; COMMANDS, below each button COMMANDPARMS and the list COMMANDTIPS;
/// FORMATS, LOANTABLES and FIELDS, below each element FORMATPARMS and the list FORMATCAPTION, and so on.
/// Tools: FINDTAG, RENUMTAG, MAPTABLE.
///
/// Sections and tree stand in diProfile.cpp, the parameters in diProfileParms.cpp, formats and loan tables in
/// diProfileFormats.cpp, fields and the mapping tool in diProfileFields.cpp.
class diProfile final : public iKvTree {
  public:
    [[nodiscard]] bool TlbrButtonClick(const std::wstring& Method, const std::wstring& CurrFolder,
                                       const std::wstring& CurrItem, const std::wstring& Key) override;
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
    /// Raises TIPSWIDTH= and LOANWIDTH= under 10 to 10 in the record.
    [[nodiscard]] bool DispParm(std::wstring& Buffer, std::int32_t Indent);

    // The parsers of elements hand back what the element's node shows from then on.
    [[nodiscard]] bool SaveFormatParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                                      std::wstring& NewCaption);
    [[nodiscard]] bool DispFormatParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);
    [[nodiscard]] bool SaveLoanTableParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                                         std::wstring& NewCaption);
    [[nodiscard]] bool DispLoanTableParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);
    [[nodiscard]] bool SaveFieldParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                                     std::wstring& NewCaption);
    [[nodiscard]] bool DispFieldParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent);
    [[nodiscard]] bool MapTable();

    ProfileRecord& Record() { return vdbShared::Made(Record_); }

    std::unique_ptr<ProfileRecord> Record_;
};

}  // namespace kv
