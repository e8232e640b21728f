// The stored record of an import procedure: how a data file is loaded into a retrieval base.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/ParmItem.h"
#include "records/Stored.h"

namespace kv {

/// Bits of ImportProcRecord::Flags.
inline constexpr std::array<Word, 11> kImportProcFlags{{
    {L"OEMSOURCE", 0x001},
    {L"READONLY", 0x002},
    {L"NOSOURCE", 0x004},
    {L"DATALOCK", 0x008},
    {L"EXTSORT", 0x010},
    {L"BINARYTARGET", 0x020},
    {L"MOVESOURCES", 0x040},
    {L"DELETESOURCES", 0x080},
    {L"SORTBYNAME", 0x100},
    {L"SORTBYDATE", 0x200},
    {L"VER30", 0x400},
}};

/// Bits of ImportProcRecord::ProcType.
inline constexpr std::array<Word, 10> kProcTypes{{
    {L"NODBR", 0x001},
    {L"ONLYDBR", 0x002},
    {L"UNKNOWTAGWARN", 0x004},
    {L"UNKNOWTAGSTOP", 0x008},
    {L"INCREMENTAL", 0x010},
    {L"COMPACTDB", 0x020},
    {L"REFRESH", 0x040},
    {L"NONULLMAINKEY", 0x080},
    {L"BATCH", 0x100},
    {L"FLUSH", 0x200},
}};

/// Bits of ImportProcRecord::Action: what is done before, in the middle of and after an import.
inline constexpr std::array<Word, 7> kImportProcActions{{
    {L"EARLYPURGE", 0x01},
    {L"LATEPURGE", 0x02},
    {L"EARLYPURGENOT", 0x04},
    {L"LATEPURGENOT", 0x08},
    {L"EARLYSCRIPT", 0x10},
    {L"MIDDLESCRIPT", 0x20},
    {L"LATESCRIPT", 0x40},
}};

/// Bits of ImportIndexRecord::Flags.
inline constexpr std::array<Word, 7> kImportIndexFlags{{
    {L"PRIMARY", 0x01},
    {L"UNIQUE", 0x02},
    {L"INDIRECT", 0x04},
    {L"COMPACT", 0x08},
    {L"DUMMY", 0x10},
    {L"TIDLIST", 0x20},
    {L"SMALLFIELD", 0x40},
}};

/// Bits of ImportFieldRecord::Flags.
inline constexpr std::array<Word, 6> kImportFieldFlags{{
    {L"MISSINGFIELDERR", 0x01},
    {L"MISSINGFIELDWARN", 0x02},
    {L"RECID", 0x04},
    {L"READONLY", 0x08},
    {L"RECSTATUS", 0x10},
    {L"NOINDEX", 0x20},
}};

/// Codes of ImportFieldRecord::Action; the first word is understood and not offered.
inline constexpr std::array<Word, 5> kImportFieldActions{{
    {L"NONE", 0},
    {L"DELETE", 1},
    {L"KEEPREC", 2},
    {L"SKIPREC", 3},
    {L"SCRIPT", 4},
}};

/// How the keys of an index are made: words, and the beginnings of function forms (those that end in a
/// bracket).
inline constexpr std::array<std::wstring_view, 7> kKeyForms{L"FIELDS(",   L"DELIMITED(", L"RANGE(", L"WORDS(",
                                                            L"WORDSIND(", L"FULLTEXT",   L"OLE("};

/// What a script is written in.
inline constexpr std::array<Word, 2> kScriptLanguages{{
    {L"VBSCRIPT", 0},
    {L"JSCRIPT", 1},
}};

struct ImportFieldRecord final : Stored<ImportFieldRecord> {
    static constexpr std::wstring_view kClass = L"ImportFieldRecord";

    std::int32_t Tag = 0;
    std::int32_t Kind = 0;      // kind of element; 32 for a field made from a table
    std::int32_t Position = 0;  // place in the source
    std::int32_t Flags = 0;     // kImportFieldFlags
    std::int32_t Action = 0;    // kImportFieldActions
    std::wstring Script;        // script that the action SCRIPT runs

    static constexpr auto Properties(auto With) {
        using R = ImportFieldRecord;
        return With(Parameter(L"Tag", &R::Tag), Parameter(L"Kind", &R::Kind),
                    Parameter(L"Position", &R::Position), Parameter(L"Flags", &R::Flags),
                    Parameter(L"Action", &R::Action), Parameter(L"Script", &R::Script));
    }
};

struct ImportIndexRecord final : Stored<ImportIndexRecord> {
    static constexpr std::wstring_view kClass = L"ImportIndexRecord";

    std::wstring Table;      // the index table
    std::wstring Key;        // how its keys are made
    std::int32_t Flags = 0;  // kImportIndexFlags

    static constexpr auto Properties(auto With) {
        using R = ImportIndexRecord;
        return With(Parameter(L"Table", &R::Table), Parameter(L"Key", &R::Key),
                    Parameter(L"Flags", &R::Flags));
    }
};

struct ImportProcRecord final : Stored<ImportProcRecord> {
    static constexpr std::wstring_view kClass = L"ImportProcRecord";

    std::wstring Table;  // record table that is fed
    std::wstring SourcePath;
    std::wstring TargetPath;
    std::wstring LogFile;
    std::int32_t Flags = 0;     // kImportProcFlags
    std::int32_t ProcType = 0;  // kProcTypes
    std::int32_t Action = 0;    // kImportProcActions
    bool Selected = false;
    bool Locked = false;
    std::wstring IncludedLib;  // lists of libraries, or "@" and a file that holds one
    std::wstring ExcludedLib;
    std::wstring IncludedLibIsbd;
    std::wstring ExcludedLibIsbd;
    std::wstring LibraryOrder;
    std::wstring MirrorOf;  // the procedure that this one mirrors
    ParmList<ImportFieldRecord> Fields;
    ParmList<ImportIndexRecord> Indexes;
    ParmList<ParmItem> Scripts;  // Text is the script, Language the one it is written in

    static constexpr auto Properties(auto With) {
        using R = ImportProcRecord;
        return With(
            Parameter(L"Table", &R::Table), Parameter(L"SourcePath", &R::SourcePath),
            Parameter(L"TargetPath", &R::TargetPath), Parameter(L"LogFile", &R::LogFile),
            Parameter(L"Flags", &R::Flags), Parameter(L"ProcType", &R::ProcType),
            Parameter(L"Action", &R::Action), Parameter(L"Selected", &R::Selected),
            Parameter(L"Locked", &R::Locked), Parameter(L"IncludedLib", &R::IncludedLib),
            Parameter(L"ExcludedLib", &R::ExcludedLib), Parameter(L"IncludedLibIsbd", &R::IncludedLibIsbd),
            Parameter(L"ExcludedLibIsbd", &R::ExcludedLibIsbd), Parameter(L"LibraryOrder", &R::LibraryOrder),
            Parameter(L"MirrorOf", &R::MirrorOf), List(L"Fields", &R::Fields), List(L"Indexes", &R::Indexes),
            List(L"Scripts", &R::Scripts));
    }
};

}  // namespace kv
