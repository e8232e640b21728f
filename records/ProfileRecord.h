// The stored record of a display profile: how a retrieved record is shown, printed, exported and lent.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/FontRecord.h"
#include "records/HtmlRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/Stored.h"

namespace kv {

/// Bits of ProfileRecord::Flags.
inline constexpr std::array<Word, 1> kProfileFlags{{
    {L"REFRESHTIPS", 0x01},
}};

/// Codes of ProfileRecord::Align.
inline constexpr std::array<Word, 2> kProfileAligns{{
    {L"LEFT", 3},
    {L"RIGHT", 4},
}};

/// The widths that have a word; any other is a positive number.
inline constexpr std::array<Word, 2> kProfileWidths{{
    {L"ADJUST", 0},
    {L"PLAIN", -1},
}};

/// Alignments of an image: codes of the low three bits of ProfileRecord::ImageOption.
inline constexpr std::array<Word, 4> kImageAligns{{
    {L"ALIGNBOTTOM", 1},
    {L"ALIGNTOP", 2},
    {L"ALIGNLEFT", 3},
    {L"ALIGNRIGHT", 4},
}};
inline constexpr std::int32_t kImageAlignBits = 0x07;
/// The bit of ImageOption beside the alignment.
inline constexpr Word kImageLinks{L"LINKS", 0x20};

/// The low byte of FormatRecord::Style.
inline constexpr std::array<Word, 2> kFormatStyles{{
    {L"BANNER", 1},
    {L"COOKED", 2},
}};
inline constexpr std::int32_t kFormatStyleBits = 0xFF;
inline constexpr std::int32_t kFormatCooked = 2;
/// The bits of its high byte.
inline constexpr std::array<Word, 4> kFormatStyleFlags{{
    {L"BATCH", 0x0100},
    {L"NOPRINT", 0x0200},
    {L"SPLITTED", 0x0400},
    {L"DOUBLEFRAME", 0x0800},
}};

/// Bits of FormatRecord::DispType.
inline constexpr std::array<Word, 3> kDispTypes{{
    {L"DISPLAY", 0x01},
    {L"PRINTER", 0x02},
    {L"FILE", 0x04},
}};

/// Bits of ProfileFieldRecord::Flags, in the order in which they are shown.
inline constexpr std::array<Word, 8> kProfileFieldFlags{{
    {L"PEER", 0x01},
    {L"FORCENAVY", 0x02},
    {L"LITERAL", 0x08},
    {L"NOREPAINT", 0x04},
    {L"NOHREF", 0x10},
    {L"ENDBANNER", 0x20},
    {L"NOBREAK", 0x40},
    {L"SPLIT", 0x80},
}};

/// A field of the profile: a tag of the record, and the browse and profile that show it.
struct ProfileFieldRecord final : Stored<ProfileFieldRecord> {
    static constexpr std::wstring_view kClass = L"ProfileFieldRecord";

    std::wstring Browse;
    ParmList<ParmItem> Captions;
    std::int32_t Flags = 0;  // kProfileFieldFlags
    std::wstring Profile;
    std::int32_t Tag = 0;

    static constexpr auto Properties(auto With) {
        using R = ProfileFieldRecord;
        return With(Parameter(L"Browse", &R::Browse), List(L"Captions", &R::Captions),
                    Parameter(L"Flags", &R::Flags), Parameter(L"Profile", &R::Profile),
                    Parameter(L"Tag", &R::Tag));
    }
};

/// A message tag of a format; its sign is significant.
struct CookieItem final : Stored<CookieItem> {
    static constexpr std::wstring_view kClass = L"CookieItem";

    std::int32_t Tag = 0;
    std::wstring Language;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Tag", &CookieItem::Tag), Parameter(L"Language", &CookieItem::Language));
    }
};

/// One way of showing a record. Its parser works on a record with more to it (FormatText), hence not final.
struct FormatRecord : Stored<FormatRecord> {
    static constexpr std::wstring_view kClass = L"FormatRecord";

    ParmList<CookieItem> Cookies;  // parameters: a text brings its own
    bool DefStyle = false;
    std::int32_t DispType = 0;  // kDispTypes
    ParmList<ParmItem> Captions;
    std::wstring Server;     // export server and its arguments, MsgUtil::PackServer
    std::int32_t Style = 0;  // kFormatStyles in the low byte, kFormatStyleFlags above

    static constexpr auto Properties(auto With) {
        using R = FormatRecord;
        return With(Parameter(L"Cookies", &R::Cookies), Parameter(L"DefStyle", &R::DefStyle),
                    Parameter(L"DispType", &R::DispType), List(L"Captions", &R::Captions),
                    Parameter(L"Server", &R::Server), Parameter(L"Style", &R::Style));
    }
};

/// Pairs a nature with a level; its captions are messages.
struct LoanTableRecord final : Stored<LoanTableRecord> {
    static constexpr std::wstring_view kClass = L"LoanTableRecord";

    std::wstring Level;
    std::wstring Nature;
    ParmList<ParmItem> Captions;

    static constexpr auto Properties(auto With) {
        using R = LoanTableRecord;
        return With(Parameter(L"Level", &R::Level), Parameter(L"Nature", &R::Nature),
                    List(L"Captions", &R::Captions));
    }
};

struct ProfileRecord final : Stored<ProfileRecord> {
    static constexpr std::wstring_view kClass = L"ProfileRecord";

    std::int32_t Align = 0;  // kProfileAligns
    bool LargeButt = false;
    std::int32_t Flags = 0;  // kProfileFlags
    std::wstring Help;
    std::wstring HelpWww;
    std::wstring LinkedPage;
    std::wstring LinkedServer;
    std::int32_t LoanAlign = 0;  // kAlignWords
    std::wstring LoanHelp;
    std::wstring LoanLinksOnly;
    bool LoanQuit = false;
    std::wstring LoanSortBy;
    std::wstring LoanTips;
    std::int32_t LoanWidth = 0;  // percent
    ParmList<ParmItem> Masters;  // parameters, keyed by name while they are read
    std::wstring MirrorOf;       // the profile that this one mirrors
    std::wstring Table;          // the record table that is shown
    std::wstring Tips;
    std::int32_t TipsAlign = 0;    // kAlignWords
    std::int32_t TipsButtons = 0;  // kTipsButtonWords
    std::int32_t TipsWidth = 0;    // percent
    std::int32_t ToolAlign = 0;    // kAlignWords
    std::int32_t ToolTips = 0;     // kToolTipWords
    std::int32_t Width = 0;        // kProfileWidths, or a positive number
    std::int32_t ImageOption = 0;  // kImageAligns, kImageLinks
    std::wstring ImageListFile;
    std::wstring ImageFilter;
    std::wstring ImageThumb;
    std::wstring ImageKeyField;
    std::int32_t ImageRange = 0;
    std::wstring ImageRoot;
    std::wstring ImageUrl;
    std::wstring ImagesTempl;
    std::int32_t ImagesPerPage = 0;
    std::int32_t ImagesPerRec = 0;
    std::wstring ImageExt;
    std::wstring ImagesTemplButt;
    std::wstring ImagesTemplButt2;
    std::wstring ImagesFullTempl;
    std::int32_t ImageMaxWidth = 0;
    std::int32_t ImageMaxHeight = 0;
    std::int32_t ImagesLimit = 0;
    std::wstring ImageFormat;
    std::wstring ImageZoom;
    ParmList<CommandRecord> Commands;
    ParmList<ProfileFieldRecord> Fields;
    ParmList<FormatRecord> Formats;
    ParmList<FontRecord> TextFonts;
    ParmList<HtmlRecord> LoanHtml;
    ParmList<HtmlRecord> RecHtml;
    ParmList<LoanTableRecord> LoanTables;
    ParmList<PopupRecord> Popups;
    ParmList<HtmlRecord> Html;
    ParmList<ParmItem> Titles;

    static constexpr auto Properties(auto With) {
        using R = ProfileRecord;
        return With(
            Parameter(L"Align", &R::Align), Parameter(L"LargeButt", &R::LargeButt),
            List(L"Commands", &R::Commands), List(L"Fields", &R::Fields), Parameter(L"Flags", &R::Flags),
            List(L"Formats", &R::Formats), List(L"TextFonts", &R::TextFonts), Parameter(L"Help", &R::Help),
            Parameter(L"HelpWww", &R::HelpWww), Parameter(L"LinkedPage", &R::LinkedPage),
            Parameter(L"LinkedServer", &R::LinkedServer), Parameter(L"LoanAlign", &R::LoanAlign),
            Parameter(L"LoanHelp", &R::LoanHelp), List(L"LoanHtml", &R::LoanHtml),
            Parameter(L"LoanLinksOnly", &R::LoanLinksOnly), Parameter(L"LoanQuit", &R::LoanQuit),
            List(L"RecHtml", &R::RecHtml), Parameter(L"LoanSortBy", &R::LoanSortBy),
            List(L"LoanTables", &R::LoanTables), Parameter(L"LoanTips", &R::LoanTips),
            Parameter(L"LoanWidth", &R::LoanWidth), Parameter(L"Masters", &R::Masters),
            Parameter(L"MirrorOf", &R::MirrorOf), List(L"Popups", &R::Popups), Parameter(L"Table", &R::Table),
            List(L"Html", &R::Html), Parameter(L"Tips", &R::Tips), Parameter(L"TipsAlign", &R::TipsAlign),
            Parameter(L"TipsButtons", &R::TipsButtons), Parameter(L"TipsWidth", &R::TipsWidth),
            List(L"Titles", &R::Titles), Parameter(L"ToolAlign", &R::ToolAlign),
            Parameter(L"ToolTips", &R::ToolTips), Parameter(L"Width", &R::Width),
            Parameter(L"ImageOption", &R::ImageOption), Parameter(L"ImageListFile", &R::ImageListFile),
            Parameter(L"ImageFilter", &R::ImageFilter), Parameter(L"ImageThumb", &R::ImageThumb),
            Parameter(L"ImageKeyField", &R::ImageKeyField), Parameter(L"ImageRange", &R::ImageRange),
            Parameter(L"ImageRoot", &R::ImageRoot), Parameter(L"ImageUrl", &R::ImageUrl),
            Parameter(L"ImagesTempl", &R::ImagesTempl), Parameter(L"ImagesPerPage", &R::ImagesPerPage),
            Parameter(L"ImagesPerRec", &R::ImagesPerRec), Parameter(L"ImageExt", &R::ImageExt),
            Parameter(L"ImagesTemplButt", &R::ImagesTemplButt),
            Parameter(L"ImagesTemplButt2", &R::ImagesTemplButt2),
            Parameter(L"ImagesFullTempl", &R::ImagesFullTempl),
            Parameter(L"ImageMaxWidth", &R::ImageMaxWidth), Parameter(L"ImageMaxHeight", &R::ImageMaxHeight),
            Parameter(L"ImagesLimit", &R::ImagesLimit), Parameter(L"ImageFormat", &R::ImageFormat),
            Parameter(L"ImageZoom", &R::ImageZoom));
    }
};

}  // namespace kv
