// The stored record of a client application.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/FontRecord.h"
#include "records/MessageRecord.h"
#include "records/Stored.h"

namespace kv {

/// Codes of ApplicationRecord::Format.
inline constexpr std::array<Word, 2> kClientFormats{{
    {L"TEXT", 0},
    {L"RTF", 1},
}};

/// Codes of ApplicationRecord::IdleAction.
inline constexpr std::array<Word, 5> kIdleActions{{
    {L"NONE", 0},
    {L"CLOSE", 1},
    {L"RESTART", 2},
    {L"SAVESCREEN", 3},
    {L"PASSWORD", 4},
}};

/// Bits of ApplicationRecord::LoanEnable; the first word sets none and tells that the second's is clear.
inline constexpr std::array<Word, 4> kClientLoanWords{{
    {L"NOTENABLED", 0},
    {L"ENABLED", 0x01},
    {L"STARTUP", 0x02},
    {L"RESTARTABLE", 0x04},
}};

/// Bits of ApplicationRecord::StartupMode; the last word sets none.
inline constexpr std::array<Word, 5> kStartupModes{{
    {L"MAXIMIZED", 0x01},
    {L"HASCAPTION", 0x02},
    {L"NORESIZE", 0x04},
    {L"QUERYUNLOAD", 0x08},
    {L"DEFAULT", 0},
}};

/// Bits of ApplicationRecord::MsieFlags.
inline constexpr std::array<Word, 1> kMsieFlags{{
    {L"ENABLENEWWINDOW", 0x01},
}};

/// Bits of ApplicationRecord::FileFlags.
inline constexpr std::array<Word, 2> kFileFlags{{
    {L"NOOWN", 0x01},
    {L"OWNASK", 0x02},
}};

/// Bits of ApplicationRecord::PrinterFlags.
inline constexpr std::array<Word, 4> kPrinterFlags{{
    {L"NOOWN", 0x01},
    {L"OWNASK", 0x02},
    {L"FONTBUTTON", 0x04},
    {L"PRINTERBUTTON", 0x08},
}};

struct ApplicationRecord final : Stored<ApplicationRecord> {
    static constexpr std::wstring_view kClass = L"ApplicationRecord";

    std::wstring Retrieval;  // the base that the client opens
    std::wstring Language;   // the language it begins in
    std::wstring Help;
    std::wstring HelpWww;
    std::int32_t StartAction = -1;  // an action word
    std::wstring StartObject;       // what the action opens
    std::int32_t StartupMode = 0;   // kStartupModes
    bool AllowShutdown = false;
    std::int32_t IdleAction = 0;  // kIdleActions
    std::int32_t IdleTime = 0;    // seconds until then, 0 for never
    std::wstring Password;        // asked for before the client closes or wakes
    std::int32_t MsieFlags = 0;   // kMsieFlags
    bool RemoteDb = false;
    std::int32_t LoanEnable = 0;  // kClientLoanWords
    std::wstring LoanPath;
    std::int32_t Format = 0;        // kClientFormats
    std::int32_t PrinterFlags = 0;  // kPrinterFlags
    // Ceilings; kNoCeiling for none.
    std::int32_t PrnMaxItems = kNoCeiling;
    std::int32_t PrnMaxRecs = kNoCeiling;
    std::int32_t FileFlags = 0;  // kFileFlags
    std::int32_t FileMaxItems = kNoCeiling;
    std::int32_t FileMaxRecs = kNoCeiling;
    bool OutputUserLog = false;
    std::wstring LogFile;
    std::wstring MirrorOf;  // the application that this one mirrors
    ParmList<FontRecord> FormFonts;
    ParmList<FontRecord> MessageFonts;
    MessageListRecord Messages;
    ParmList<FontRecord> TitleFonts;

    static constexpr auto Properties(auto With) {
        using R = ApplicationRecord;
        return With(Parameter(L"Retrieval", &R::Retrieval), Parameter(L"Language", &R::Language),
                    Parameter(L"Help", &R::Help), Parameter(L"HelpWww", &R::HelpWww),
                    Parameter(L"StartAction", &R::StartAction), Parameter(L"StartObject", &R::StartObject),
                    Parameter(L"StartupMode", &R::StartupMode),
                    Parameter(L"AllowShutdown", &R::AllowShutdown), Parameter(L"IdleAction", &R::IdleAction),
                    Parameter(L"IdleTime", &R::IdleTime), Parameter(L"Password", &R::Password),
                    Parameter(L"MsieFlags", &R::MsieFlags), Parameter(L"RemoteDb", &R::RemoteDb),
                    Parameter(L"LoanEnable", &R::LoanEnable), Parameter(L"LoanPath", &R::LoanPath),
                    Parameter(L"Format", &R::Format), Parameter(L"PrinterFlags", &R::PrinterFlags),
                    Parameter(L"PrnMaxItems", &R::PrnMaxItems), Parameter(L"PrnMaxRecs", &R::PrnMaxRecs),
                    Parameter(L"FileFlags", &R::FileFlags), Parameter(L"FileMaxItems", &R::FileMaxItems),
                    Parameter(L"FileMaxRecs", &R::FileMaxRecs),
                    Parameter(L"OutputUserLog", &R::OutputUserLog), Parameter(L"LogFile", &R::LogFile),
                    Parameter(L"MirrorOf", &R::MirrorOf), List(L"FormFonts", &R::FormFonts),
                    List(L"MessageFonts", &R::MessageFonts), List(L"Messages", &R::Messages),
                    List(L"TitleFonts", &R::TitleFonts));
    }
};

}  // namespace kv
