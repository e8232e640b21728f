// The stored record of a query: a form on which a user fills in search fields, and whose answers a browse
// shows.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/CommandRecord.h"
#include "records/HtmlRecord.h"
#include "records/MessageRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/Stored.h"

namespace kv {

/// Codes of QueryRecord::Style; any other is not shown.
inline constexpr std::array<Word, 1> kQueryStyles{{
    {L"HTML", 0},
}};

/// Bits of QueryFieldRecord::Flags.
inline constexpr std::array<Word, 2> kQueryFieldFlags{{
    {L"CAPTURE", 0x01},
    {L"HIDDEN", 0x02},
}};

/// A search field. Its scalars are header: a scratch takes them over, so that what a text leaves out stays.
struct QueryFieldRecord final : Stored<QueryFieldRecord> {
    static constexpr std::wstring_view kClass = L"QueryFieldRecord";

    std::int32_t Flags = 0;  // kQueryFieldFlags
    std::int32_t Semantic = 0;
    std::int32_t Selected = 0;
    std::wstring StopWord;  // stop-word table
    std::wstring Tables;
    bool Words = false;
    ParmList<ParmItem> Captions;
    MessageListRecord Defaults;  // the predefined values, each with its captions

    static constexpr auto Properties(auto With) {
        using R = QueryFieldRecord;
        return With(HeaderField(L"Flags", &R::Flags), HeaderField(L"Semantic", &R::Semantic),
                    HeaderField(L"Selected", &R::Selected), HeaderField(L"StopWord", &R::StopWord),
                    HeaderField(L"Tables", &R::Tables), HeaderField(L"Words", &R::Words),
                    List(L"Captions", &R::Captions), List(L"Defaults", &R::Defaults));
    }
};

struct QueryRecord final : Stored<QueryRecord> {
    static constexpr std::wstring_view kClass = L"QueryRecord";

    std::wstring Browse;  // the browse that shows the answers
    bool LargeButt = false;
    ParmList<CommandRecord> Commands;
    std::int32_t DefaultSet = 0;  // 0 or 1
    ParmList<QueryFieldRecord> Fields;
    std::int32_t Flags = 0;  // no flag word exists
    std::wstring Help;
    std::wstring HelpWww;
    ParmList<HtmlRecord> Html;
    ParmList<HtmlRecord> HtmlRes;
    ParmList<ParmItem> Message;
    std::wstring MirrorOf;  // the query that this one mirrors
    ParmList<ParmItem> OptionMsg1;
    ParmList<ParmItem> OptionMsg2;
    ParmList<PopupRecord> Popups;
    ParmList<HtmlRecord> HtmlResTempl;
    std::int32_t Rows = 0;  // 0 to 20
    bool SetSelect = false;
    bool ShowRes = false;
    std::int32_t Style = 0;  // kQueryStyles
    ParmList<HtmlRecord> HtmlTempl;
    std::int32_t Timeout = 0;
    std::wstring Tips;
    std::int32_t TipsAlign = 0;  // kAlignWords
    std::int32_t TipsWidth = 0;  // percent
    ParmList<ParmItem> Titles;
    std::int32_t ToolAlign = 0;  // kAlignWords

    static constexpr auto Properties(auto With) {
        using R = QueryRecord;
        return With(Parameter(L"Browse", &R::Browse), Parameter(L"LargeButt", &R::LargeButt),
                    List(L"Commands", &R::Commands), Parameter(L"DefaultSet", &R::DefaultSet),
                    List(L"Fields", &R::Fields), Parameter(L"Flags", &R::Flags), Parameter(L"Help", &R::Help),
                    Parameter(L"HelpWww", &R::HelpWww), List(L"Html", &R::Html),
                    List(L"HtmlRes", &R::HtmlRes), List(L"Message", &R::Message),
                    Parameter(L"MirrorOf", &R::MirrorOf), List(L"OptionMsg1", &R::OptionMsg1),
                    List(L"OptionMsg2", &R::OptionMsg2), List(L"Popups", &R::Popups),
                    List(L"HtmlResTempl", &R::HtmlResTempl), Parameter(L"Rows", &R::Rows),
                    Parameter(L"SetSelect", &R::SetSelect), Parameter(L"ShowRes", &R::ShowRes),
                    Parameter(L"Style", &R::Style), List(L"HtmlTempl", &R::HtmlTempl),
                    Parameter(L"Timeout", &R::Timeout), Parameter(L"Tips", &R::Tips),
                    Parameter(L"TipsAlign", &R::TipsAlign), Parameter(L"TipsWidth", &R::TipsWidth),
                    List(L"Titles", &R::Titles), Parameter(L"ToolAlign", &R::ToolAlign));
    }
};

}  // namespace kv
