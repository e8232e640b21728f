// The shared object that parses and renders the sections which the items do not parse themselves: one pair of
// operations a record class.
#pragma once

#include <string>

#include "frame/vdbcModule.h"
#include "records/AliasRecord.h"
#include "records/ApplicationRecord.h"
#include "records/BrowseRecord.h"
#include "records/CatProcRecord.h"
#include "records/CatalogueRecord.h"
#include "records/CommandRecord.h"
#include "records/FilterRecord.h"
#include "records/FontRecord.h"
#include "records/HtmlRecord.h"
#include "records/ImportProcRecord.h"
#include "records/ImportRecord.h"
#include "records/LoanClientRecord.h"
#include "records/LoanMenuRecord.h"
#include "records/LoanRecord.h"
#include "records/MessageRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"

namespace kv::ParmEditor {

// Every Save operation parses `Buffer` into a scratch of the record and commits it at a clean end: a keyword
// that the text leaves out returns to its default, a text with any fault leaves the record as it was. Strict
// or lax is what the entry "SYNTAXON" of `Flags` says. Every Disp operation appends all keywords in the order
// of their table and the three identity lines. All answer True on failure, reported under
// "ParmEditor.<operation>".

/// Works on what a catalogue's section needs, whichever record has it.
template <class Record>
[[nodiscard]] bool SaveCatalogue(Record& Into, std::wstring& Buffer, const SaveFlags& Flags);
template <class Record>
[[nodiscard]] bool DispCatalogue(const Record& From, std::wstring& Buffer, const SaveFlags& Flags);

[[nodiscard]] bool SaveFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

[[nodiscard]] bool SaveImport(ImportRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispImport(const ImportRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

// An import procedure and the elements of its lists.
[[nodiscard]] bool SaveImportProc(ImportProcRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveImportScript(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveImportIndex(ImportIndexRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveImportField(ImportFieldRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispImportScript(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispImportIndex(const ImportIndexRecord& From, std::wstring& Buffer,
                                   const SaveFlags& Flags);
[[nodiscard]] bool DispImportField(const ImportFieldRecord& From, std::wstring& Buffer,
                                   const SaveFlags& Flags);
[[nodiscard]] bool DispImportProc(const ImportProcRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A client application.
[[nodiscard]] bool SaveApplication(ApplicationRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispApplication(const ApplicationRecord& From, std::wstring& Buffer,
                                   const SaveFlags& Flags);
// Its fonts. Those of the messages are rendered by themselves and parsed by SaveFormFont.
[[nodiscard]] bool SaveFormFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispFormFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveTitleFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispTitleFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispMessageFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A browse, and one of its filters: NAME= and then what SaveFilter reads. The other elements of a browse are
/// read and rendered by what many classes share, its popups as buttons.
[[nodiscard]] bool SaveBrowse(BrowseRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispBrowse(const BrowseRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveBrowseFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispBrowseFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A tool command, which shares its record with the buttons; its titles, messages and fonts are read and
/// rendered by what many classes share. KBCODE= and KBSHIFT= are empty where no key calls it.
[[nodiscard]] bool SaveToolCommand(CommandRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispToolCommand(const CommandRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A loan service, a client of it, and what the menu of its desk allows.
[[nodiscard]] bool SaveLoan(LoanRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispLoan(const LoanRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveLoanClient(LoanClientRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispLoanClient(const LoanClientRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveLoanMenu(LoanMenuRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispLoanMenu(const LoanMenuRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A catalogue procedure, and one of its components: NAME=.
[[nodiscard]] bool SaveCatProc(CatProcRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispCatProc(const CatProcRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveCatProcField(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispCatProcField(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);

/// An alias: NAME=, TEXT=.
[[nodiscard]] bool SaveAlias(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispAlias(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);

/// A system message, NAME= and DESC=: the one at place `Index` of its list. In strict mode a name that is
/// empty or that another message of the list bears is refused.
[[nodiscard]] bool SaveMessage(ParmList<MessageRecord>& Messages, std::int32_t Index, std::wstring& Buffer,
                               const SaveFlags& Flags);
[[nodiscard]] bool DispMessage(const MessageRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
/// A message's text in one language, as SaveCaption.
[[nodiscard]] bool SaveMessageText(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispMessageText(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);

// Sections that many classes share. A text in one language: TEXT=, LANG=; in strict mode an empty LANG= is
// refused with "Non è stato specificato un codice LANG valido.".
[[nodiscard]] bool SaveCaption(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispCaption(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool SaveTitle(ParmItem& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispTitle(const ParmItem& From, std::wstring& Buffer, const SaveFlags& Flags);
/// FILENAME=, LANG= as above, ACTION= an action word.
[[nodiscard]] bool SaveHtml(HtmlRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispHtml(const HtmlRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
/// NAME=, SIZE=, BOLD=, ITALIC=, UNDERLINE=.
[[nodiscard]] bool SaveFont(FontRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispFont(const FontRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
/// CODE=, ACTION=, ENABLED=, VISIBLE=.
[[nodiscard]] bool SaveCommand(CommandRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispCommand(const CommandRecord& From, std::wstring& Buffer, const SaveFlags& Flags);
/// TEXT=, LANG= as above, CODE=, ACTION= an action word.
[[nodiscard]] bool SavePopup(PopupRecord& Into, std::wstring& Buffer, const SaveFlags& Flags);
[[nodiscard]] bool DispPopup(const PopupRecord& From, std::wstring& Buffer, const SaveFlags& Flags);

}  // namespace kv::ParmEditor

namespace kv {

/// Parses a caption through ParmEditor; on success `Caption` becomes the element's CaptionNode. True on
/// failure (source "vDesignPar.CaptionSave", or that of the parser).
[[nodiscard]] bool CaptionSave(std::wstring& Section, ParmItem& Item, std::wstring& Caption,
                               const SaveFlags& Flags);
/// The same as a row of ElementSection calls it, which shows CaptionNode by itself.
[[nodiscard]] inline bool SaveLabel(ParmItem& Item, std::wstring& Section, const SaveFlags& Flags) {
    std::wstring Caption;
    return CaptionSave(Section, Item, Caption, Flags);
}

}  // namespace kv
