// The stored record of the web server: how it runs, its page templates, the tags that these may hold, and its
// messages.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/HtmlRecord.h"
#include "records/MessageRecord.h"
#include "records/Stored.h"

namespace kv {

/// Bits of WebServerRecord::Flags.
inline constexpr std::array<Word, 1> kWebServerFlags{{
    {L"DISABLEPERMISSIONCHECK", 0x01},
}};

/// Bits of WebServerRecord::MessageLevel. The last word sets them all.
inline constexpr std::array<Word, 5> kMessageLevels{{
    {L"ALERTERROR", 0x01},
    {L"LOGERROR", 0x02},
    {L"LOGUSERCONNECT", 0x04},
    {L"LOGTRANSACTIONS", 0x08},
    {L"DEBUGMODE", 0x7FFFFFFF},
}};

struct WebServerRecord final : Stored<WebServerRecord> {
    static constexpr std::wstring_view kClass = L"WebServerRecord";

    std::int32_t BrowseRows = 0;
    ParmList<HtmlRecord> Browse;
    MessageListRecord Constants;  // the tags
    ParmList<HtmlRecord> Errors;
    ParmList<HtmlRecord> History;
    ParmList<HtmlRecord> Home;
    std::int32_t Flags = 0;  // kWebServerFlags
    ParmList<HtmlRecord> LoanReport;
    ParmList<HtmlRecord> Loan;
    std::wstring LogFile;
    std::int32_t MessageLevel = 0;  // kMessageLevels
    MessageListRecord Messages;
    ParmList<HtmlRecord> QueryResult;
    ParmList<HtmlRecord> Query;
    std::int32_t QueryTimeout = 0;
    ParmList<HtmlRecord> Record;

    static constexpr auto Properties(auto With) {
        using R = WebServerRecord;
        return With(Parameter(L"BrowseRows", &R::BrowseRows), List(L"Browse", &R::Browse),
                    List(L"Constants", &R::Constants), List(L"Errors", &R::Errors),
                    List(L"History", &R::History), List(L"Home", &R::Home), Parameter(L"Flags", &R::Flags),
                    List(L"LoanReport", &R::LoanReport), List(L"Loan", &R::Loan),
                    Parameter(L"LogFile", &R::LogFile), Parameter(L"MessageLevel", &R::MessageLevel),
                    List(L"Messages", &R::Messages), List(L"QueryResult", &R::QueryResult),
                    List(L"Query", &R::Query), Parameter(L"QueryTimeout", &R::QueryTimeout),
                    List(L"Record", &R::Record));
    }
};

}  // namespace kv
