// The sections under test: for each its operations, and its keywords as the tests state them, apart from the
// tables of the code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "editor/ParmEditor.h"
#include "records/RepositoryRecord.h"

namespace kv::test {

/// How the value of a keyword is read and written.
enum class Reads {
    Name,     // quoted, folded to upper case
    Kept,     // quoted, case kept
    Boolean,  // TRUE or FALSE
    Flags,    // words joined by "|", NONE for none
    OneWord,  // one word of a list
    Number,   // decimal
    Bits,     // words joined by "|", one of which sets none
    Ceiling,  // NONE or decimal
};

using WordList = std::vector<std::pair<std::wstring_view, std::int32_t>>;

struct Row {
    std::wstring_view Keyword;
    std::wstring_view Property;
    Reads How;
    WordList Words{};
    bool Identity = false;  // the property is one of those that every record begins with
};

inline SaveFlags FlagsFor(bool Strict) {
    SaveFlags Flags;
    static_cast<void>(SetSaveFlags(Flags, Strict));
    return Flags;
}

inline const WordList& ActionWords() {
    static const WordList kWords{
        {L"NONE", -1},       {L"MENU", 1},      {L"BROWSE", 2},       {L"HELP", 3},       {L"RECORD", 4},
        {L"QUERY", 5},       {L"BACK", 6},      {L"QUIT", 7},         {L"LINK", 9},       {L"SHELL", 10},
        {L"SPAWN", 11},      {L"LOANIC", 13},   {L"QUERYRESULT", 15}, {L"ADMIN", 16},     {L"LANG", 17},
        {L"HTMLMOVE", 18},   {L"LOGIN", 19},    {L"HBACK", 20},       {L"SPAWN16", 21},   {L"SPAWNDOC", 22},
        {L"SPAWNDOC16", 23}, {L"SHELLDOC", 24}, {L"WEBCLIENT", 26},   {L"DBSELECT", 27},  {L"SETOPS", 28},
        {L"NAVIGATE", 29},   {L"PASSWORD", 30}, {L"CLIENTSETUP", 31}, {L"LOANSTART", 32}, {L"LOANQUIT", 33},
        {L"SHELLWIN", 34},   {L"INFO", 35},     {L"KVRSELECT", 36},   {L"IMAGE", 37},     {L"SEEK", 38},
        {L"OPEN", 39},       {L"CLOSEALL", 40}, {L"QUERYGET", 41},    {L"BOOLSTEM", 42},  {L"SHELF", 43},
        {L"IMAGELIST", 44},  {L"ZOOMIN", 45},   {L"ZOOMOUT", 46},     {L"MAP", 47},       {L"LOANACTION", 48},
        {L"IMAGEUM", 49},    {L"IMAGETAG", 50}};
    return kWords;
}

struct CatalogueSection {
    using Record = CatalogueRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveCatalogue";
    static constexpr bool kKeeps = false;          // what the text leaves out keeps its value
    static constexpr bool kNeedsLanguage = false;  // strict: LANG= must not be empty
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCatalogue(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCatalogue(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"RETRIEVAL=", L"Retrieval", Reads::Name}, {L"TABLE=", L"Table", Reads::Name},
                {L"PROFILE=", L"Profile", Reads::Name},     {L"QUERY=", L"Query", Reads::Name},
                {L"BROWSE=", L"Browse", Reads::Name},       {L"PATH=", L"Path", Reads::Kept},
                {L"HELP=", L"Help", Reads::Name},           {L"HELPWWW=", L"HelpWww", Reads::Name},
                {L"FLAGS=", L"Flags", Reads::Flags},        {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

/// A catalogue is exported through the record of an import.
struct CatalogueOfImportSection : CatalogueSection {
    using Record = ImportRecord;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCatalogue(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCatalogue(From, Buffer, FlagsFor(true));
    }
};

struct CatProcSection {
    using Record = CatProcRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveCatProc";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCatProc(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCatProc(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"CATALOGUE=", L"Catalogue", Reads::Name},   {L"RETRIEVAL=", L"Retrieval", Reads::Name},
                {L"SOURCEPATH=", L"SourcePath", Reads::Kept}, {L"TARGETPATH=", L"TargetPath", Reads::Kept},
                {L"LOGFILE=", L"LogFile", Reads::Kept},       {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct CatProcFieldSection {
    using Record = ParmItem;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveCatProcField";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCatProcField(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCatProcField(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() { return {{L"NAME=", L"Name", Reads::Kept, {}, true}}; }
};

struct AliasSection {
    using Record = ParmItem;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveAlias";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveAlias(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispAlias(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"NAME=", L"Name", Reads::Kept, {}, true}, {L"TEXT=", L"Text", Reads::Kept}};
    }
};

struct FilterSection {
    using Record = FilterRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveFilter";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveFilter(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispFilter(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"TABLE=", L"Table", Reads::Name},
                {L"EXPRESSION=", L"Expression", Reads::Kept},
                {L"AUTOMATIC=", L"Automatic", Reads::Boolean},
                {L"MERGEWITH=", L"MergeWith", Reads::OneWord, {{L"AND", 0}, {L"OR", 1}}},
                {L"HELP=", L"Help", Reads::Name},
                {L"FLAGS=", L"Flags", Reads::Flags},
                {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct ImportSection {
    using Record = ImportRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveImport";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveImport(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispImport(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"PROCEDURE=", L"Procedure", Reads::Name},
                {L"RETRIEVAL=", L"Retrieval", Reads::Name},
                {L"SOURCEPATH=", L"SourcePath", Reads::Kept},
                {L"TARGETPATH=", L"TargetPath", Reads::Kept},
                {L"LOGFILE=", L"LogFile", Reads::Kept},
                {L"PROCTYPE=",
                 L"ProcType",
                 Reads::Flags,
                 {{L"NODBR", 1},
                  {L"ONLYDBR", 2},
                  {L"UNKNOWTAGWARN", 4},
                  {L"UNKNOWTAGSTOP", 8},
                  {L"INCREMENTAL", 16},
                  {L"COMPACTDB", 32},
                  {L"NONULLMAINKEY", 64},
                  {L"REFRESH", 128}}},
                {L"FLAGS=", L"Flags", Reads::Flags, {{L"ZIPFILES", 1}, {L"CABFILES", 2}}},
                {L"LOCKED=", L"Locked", Reads::Boolean},
                {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct CaptionSection {
    using Record = ParmItem;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveCaption";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = true;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCaption(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCaption(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"TEXT=", L"Text", Reads::Kept}, {L"LANG=", L"Language", Reads::Name}};
    }
};

struct TitleSection : CaptionSection {
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveTitle";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveTitle(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispTitle(From, Buffer, FlagsFor(true));
    }
};

struct HtmlSection {
    using Record = HtmlRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveHtml";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = true;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveHtml(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispHtml(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"FILENAME=", L"FileName", Reads::Kept},
                {L"LANG=", L"Language", Reads::Name},
                {L"ACTION=", L"Action", Reads::OneWord, ActionWords()}};
    }
};

struct FontSection {
    using Record = FontRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveFont";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveFont(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispFont(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"NAME=", L"Name", Reads::Kept, {}, true},
                {L"SIZE=", L"Size", Reads::Number},
                {L"BOLD=", L"Bold", Reads::Boolean},
                {L"ITALIC=", L"Italic", Reads::Boolean},
                {L"UNDERLINE=", L"Underline", Reads::Boolean}};
    }
};

struct CommandSection {
    using Record = CommandRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveCommand";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveCommand(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispCommand(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"CODE=", L"Code", Reads::Name},
                {L"ACTION=", L"Action", Reads::OneWord, ActionWords()},
                {L"ENABLED=", L"Enabled", Reads::Boolean},
                {L"VISIBLE=", L"Visible", Reads::Boolean}};
    }
};

struct ToolCommandSection {
    using Record = CommandRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveToolCommand";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveToolCommand(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispToolCommand(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"CODE=", L"Code", Reads::Name},
                {L"COMMAND=", L"Action", Reads::OneWord, ActionWords()},
                {L"ENABLED=", L"Enabled", Reads::Boolean},
                {L"KBENABLED=", L"KbEnabled", Reads::Boolean},
                {L"VISIBLE=", L"Visible", Reads::Boolean},
                {L"KBCODE=",
                 L"KbCode",
                 Reads::OneWord,
                 {{L"", 0},          {L"{BACK}", 1},  {L"{CENTER}", 2}, {L"{DEL}", 3},      {L"{DOWN}", 4},
                  {L"{END}", 5},     {L"{ENTER}", 6}, {L"{ESC}", 7},    {L"{F1}", 8},       {L"{F2}", 9},
                  {L"{F3}", 10},     {L"{F4}", 11},   {L"{F5}", 12},    {L"{F6}", 13},      {L"{F7}", 14},
                  {L"{F8}", 15},     {L"{F9}", 16},   {L"{F10}", 17},   {L"{F11}", 18},     {L"{F12}", 19},
                  {L"{HOME}", 20},   {L"{INS}", 21},  {L"{LEFT}", 22},  {L"{NUMLOCK}", 23}, {L"{PAUSE}", 24},
                  {L"{PGDOWN}", 25}, {L"{PGUP}", 26}, {L"{RIGHT}", 27}, {L"{TAB}", 28},     {L"{UP}", 29}}},
                {L"KBSHIFT=",
                 L"KbShift",
                 Reads::OneWord,
                 {{L"", 0},
                  {L"ALT", 1},
                  {L"CTRL", 2},
                  {L"SHIFT", 4},
                  {L"ALT+CTRL", 3},
                  {L"ALT+SHIFT", 5},
                  {L"CTRL+SHIFT", 6}}},
                {L"STYLE=",
                 L"Style",
                 Reads::OneWord,
                 {{L"DEFAULT", 0}, {L"CHECK", 1}, {L"PLACEHOLDER", 2}, {L"SEPARATOR", 3}}},
                {L"HELP=", L"Help", Reads::Name},
                {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct LoanSection {
    using Record = LoanRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveLoan";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveLoan(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispLoan(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"RETRIEVAL=", L"Retrieval", Reads::Name}, {L"PATH=", L"Path", Reads::Kept},
                {L"LOGFILE=", L"LogFile", Reads::Kept},     {L"ASKUSER=", L"AskUser", Reads::Boolean},
                {L"HELP=", L"Help", Reads::Name},           {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct LoanClientSection {
    using Record = LoanClientRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveLoanClient";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveLoanClient(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispLoanClient(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"LOAN=", L"Loan", Reads::Name},
                {L"MENU=", L"Menu", Reads::Name},
                {L"REQUESTOPTIONS=",
                 L"RequestOptions",
                 Reads::Bits,
                 {{L"LOAN", 1}, {L"REFERENCE", 2}, {L"RESERVATION", 4}, {L"NOTHING", 0}}},
                {L"DELIVERLIB=", L"DeliverLib", Reads::OneWord, {{L"ALL", 0}, {L"DEFAULT", 1}}},
                {L"WEBDELIVERLIB=", L"WebDeliverLib", Reads::OneWord, {{L"ALL", 0}, {L"DEFAULT", 1}}},
                {L"PWDOPTIONS=",
                 L"PwdOptions",
                 Reads::Flags,
                 {{L"ALPHA", 1},
                  {L"CAMEL", 2},
                  {L"DOMAIN", 4},
                  {L"LENGTH", 8},
                  {L"NONALPHA", 16},
                  {L"PUNCT", 32},
                  {L"DIGIT", 64}}},
                {L"PWDLENGTH=", L"PwdLength", Reads::Number},
                {L"HELP=", L"Help", Reads::Name},
                {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct LoanMenuSection {
    using Record = LoanMenuRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveLoanMenu";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveLoanMenu(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispLoanMenu(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {
            {L"USERNEW=", L"UserNew", Reads::Boolean},       {L"USERMOD=", L"UserMod", Reads::Boolean},
            {L"USERDEL=", L"UserDel", Reads::Boolean},       {L"USERPRN=", L"UserPrn", Reads::Boolean},
            {L"LOANLOAN=", L"LoanLoan", Reads::Boolean},     {L"LOANDEP=", L"LoanDep", Reads::Boolean},
            {L"LOANPREN=", L"LoanPren", Reads::Boolean},     {L"LOANSOLLE=", L"LoanSolle", Reads::Boolean},
            {L"STATACTIVE=", L"StatActive", Reads::Boolean}, {L"PARMACTIVE=", L"ParmActive", Reads::Boolean},
            {L"SERVACTIVE=", L"ServActive", Reads::Boolean}, {L"USERACTIVE=", L"UserActive", Reads::Boolean},
            {L"LOANACTIVE=", L"LoanActive", Reads::Boolean}, {L"CHANGEBIB=", L"ChangeBib", Reads::Boolean},
            {L"BUTTLETT=", L"ButtLett", Reads::Boolean},     {L"BUTTPREST=", L"ButtPrest", Reads::Boolean},
            {L"BUTTRESO=", L"ButtReso", Reads::Boolean},     {L"BUTTRINNO=", L"ButtRinno", Reads::Boolean},
            {L"BUTTPRENO=", L"ButtPreno", Reads::Boolean},   {L"BUTTCONSE=", L"ButtConse", Reads::Boolean},
            {L"BUTTCANCE=", L"ButtCance", Reads::Boolean},   {L"BUTTDEPOS=", L"ButtDepos", Reads::Boolean},
            {L"BUTTENDDE=", L"ButtEndDe", Reads::Boolean},   {L"BUTTCOMPRA=", L"ButtCompra", Reads::Boolean},
            {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

struct PopupSection {
    using Record = PopupRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SavePopup";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = true;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SavePopup(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispPopup(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"TEXT=", L"Text", Reads::Kept},
                {L"LANG=", L"Language", Reads::Name},
                {L"CODE=", L"Code", Reads::Name},
                {L"ACTION=", L"Action", Reads::OneWord, ActionWords()}};
    }
};

struct ApplicationSection {
    using Record = ApplicationRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveApplication";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveApplication(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispApplication(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {
            {L"RETRIEVAL=", L"Retrieval", Reads::Name},
            {L"LANG=", L"Language", Reads::Name},
            {L"HELP=", L"Help", Reads::Name},
            {L"HELPWWW=", L"HelpWww", Reads::Name},
            {L"STARTACTION=", L"StartAction", Reads::OneWord, ActionWords()},
            {L"STARTOBJECT=", L"StartObject", Reads::Name},
            {L"STARTUPMODE=",
             L"StartupMode",
             Reads::Bits,
             {{L"MAXIMIZED", 1}, {L"HASCAPTION", 2}, {L"NORESIZE", 4}, {L"QUERYUNLOAD", 8}, {L"DEFAULT", 0}}},
            {L"ALLOWSHUTDOWN=", L"AllowShutdown", Reads::Boolean},
            {L"IDLEACTION=",
             L"IdleAction",
             Reads::OneWord,
             {{L"NONE", 0}, {L"CLOSE", 1}, {L"RESTART", 2}, {L"SAVESCREEN", 3}, {L"PASSWORD", 4}}},
            {L"IDLETIME=", L"IdleTime", Reads::Number},
            {L"PASSWORD=", L"Password", Reads::Kept},
            {L"MSIEFLAGS=", L"MsieFlags", Reads::Flags, {{L"ENABLENEWWINDOW", 1}}},
            {L"REMOTEDB=", L"RemoteDb", Reads::Boolean},
            {L"LOANENABLE=",
             L"LoanEnable",
             Reads::Bits,
             {{L"NOTENABLED", 0}, {L"ENABLED", 1}, {L"STARTUP", 2}, {L"RESTARTABLE", 4}}},
            {L"LOANPATH=", L"LoanPath", Reads::Kept},
            {L"FORMAT=", L"Format", Reads::OneWord, {{L"TEXT", 0}, {L"RTF", 1}}},
            {L"PRINTERFLAGS=",
             L"PrinterFlags",
             Reads::Flags,
             {{L"NOOWN", 1}, {L"OWNASK", 2}, {L"FONTBUTTON", 4}, {L"PRINTERBUTTON", 8}}},
            {L"PRNMAXITEMS=", L"PrnMaxItems", Reads::Ceiling},
            {L"PRNMAXRECS=", L"PrnMaxRecs", Reads::Ceiling},
            {L"FILEFLAGS=", L"FileFlags", Reads::Flags, {{L"NOOWN", 1}, {L"OWNASK", 2}}},
            {L"FILEMAXITEMS=", L"FileMaxItems", Reads::Ceiling},
            {L"FILEMAXRECS=", L"FileMaxRecs", Reads::Ceiling},
            {L"OUTPUTUSERLOG=", L"OutputUserLog", Reads::Boolean},
            {L"LOGFILE=", L"LogFile", Reads::Kept},
            {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

/// The words of an alignment.
inline const WordList& AlignWords() {
    static const WordList kWords{{L"NONE", 0}, {L"TOP", 1}, {L"BOTTOM", 2}, {L"LEFT", 3}, {L"RIGHT", 4}};
    return kWords;
}

struct BrowseSection {
    using Record = BrowseRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveBrowse";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveBrowse(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispBrowse(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"TABLE=", L"Table", Reads::Name},
                {L"PROFILE=", L"Profile", Reads::Name},
                {L"HELP=", L"Help", Reads::Name},
                {L"HELPWWW=", L"HelpWww", Reads::Name},
                {L"STEM=", L"Stem", Reads::Name},
                {L"TIPS=", L"Tips", Reads::Name},
                {L"TIPSWIDTH=", L"TipsWidth", Reads::Number},
                {L"ROWS=", L"Rows", Reads::Number},
                {L"ICONS=",
                 L"Icons",
                 Reads::OneWord,
                 {{L"NONE", 0}, {L"CHECK", 1}, {L"FOLDER", 2}, {L"ARROW", 3}}},
                {L"ACTION=", L"Action", Reads::OneWord, ActionWords()},
                {L"USECOOKED=", L"UseCooked", Reads::Boolean},
                {L"OPENRECORD=", L"OpenRecord", Reads::Boolean},
                {L"REFERENCE=", L"Reference", Reads::OneWord, {{L"JUMP", 0}, {L"IMMEDIATE", 1}}},
                {L"AUTORUN=", L"AutoRun", Reads::Boolean},
                {L"MULTISEL=", L"MultiSel", Reads::Boolean},
                {L"TIPSALIGN=", L"TipsAlign", Reads::OneWord, AlignWords()},
                {L"TIPSBUTTONS=", L"TipsButtons", Reads::Flags, {{L"BACK", 1}, {L"CLOSE", 2}, {L"HOME", 4}}},
                {L"TOOLTIPS=",
                 L"ToolTips",
                 Reads::Flags,
                 {{L"CHECK", 1}, {L"FOLDER", 2}, {L"LINK", 4}, {L"COMMANDS", 8}, {L"LOANLINK", 16}}},
                {L"BOOLOPS=", L"BoolOps", Reads::OneWord, {{L"NONE", 0}, {L"AND", 1}, {L"OR", 2}}},
                {L"LARGEBUTT=", L"LargeButt", Reads::Boolean},
                {L"SHOWOCCS=", L"ShowOccs", Reads::Boolean},
                {L"STEMAUTO=", L"StemAuto", Reads::Boolean},
                {L"FLAGS=", L"Flags", Reads::Flags},
                {L"NOPOPUP=", L"NoPopup", Reads::Boolean},
                {L"STEMALIGN=", L"StemAlign", Reads::OneWord, AlignWords()},
                {L"STEMDOCKED=", L"StemDocked", Reads::Boolean},
                {L"STEMIMMEDIATE=", L"StemImmediate", Reads::Boolean},
                {L"STEMSIZABLE=", L"StemSizable", Reads::Boolean},
                {L"TIPSSIZABLE=", L"TipsSizable", Reads::Boolean},
                {L"TOOLALIGN=", L"ToolAlign", Reads::OneWord, AlignWords()},
                {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

/// A filter of a browse bears its name in its text.
struct BrowseFilterSection : FilterSection {
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveBrowseFilter";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveBrowseFilter(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispBrowseFilter(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        std::vector<Row> Made = FilterSection::Rows();
        Made.insert(Made.begin(), {L"NAME=", L"Name", Reads::Name, {}, true});
        return Made;
    }
};

struct FormFontSection : FontSection {
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveFormFont";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveFormFont(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispFormFont(From, Buffer, FlagsFor(true));
    }
};
/// Parsed as the fonts of forms, rendered by themselves.
struct MessageFontSection : FormFontSection {
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispMessageFont(From, Buffer, FlagsFor(true));
    }
};
struct TitleFontSection : FontSection {
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveTitleFont";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveTitleFont(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispTitleFont(From, Buffer, FlagsFor(true));
    }
};

/// A message that stands alone in its list.
struct MessageSection {
    using Record = MessageRecord;
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveMessage";
    static constexpr bool kKeeps = false;
    static constexpr bool kNeedsLanguage = false;
    static constexpr std::wstring_view kMandatory = L"NAME=";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        ParmList<MessageRecord> Messages;
        Messages.Add(Into);
        const bool Failed = ParmEditor::SaveMessage(Messages, 1, Text, FlagsFor(Strict));
        Into = Messages.Item(1);
        return Failed;
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispMessage(From, Buffer, FlagsFor(true));
    }
    static std::vector<Row> Rows() {
        return {{L"NAME=", L"Name", Reads::Name, {}, true}, {L"DESC=", L"Desc", Reads::Kept, {}, true}};
    }
};

struct MessageTextSection : CaptionSection {
    static constexpr std::wstring_view kSource = L"ParmEditor.SaveMessageText";
    static bool Save(Record& Into, std::wstring& Text, bool Strict) {
        return ParmEditor::SaveMessageText(Into, Text, FlagsFor(Strict));
    }
    static bool Disp(const Record& From, std::wstring& Buffer) {
        return ParmEditor::DispMessageText(From, Buffer, FlagsFor(true));
    }
};

/// The keyword that strict mode does not let be empty; none for most sections.
template <class S>
constexpr std::wstring_view Mandatory() {
    if constexpr (requires { S::kMandatory; })
        return S::kMandatory;
    else
        return S::kNeedsLanguage ? L"LANG=" : L"";
}

/// The record of a repository reads and writes its own section.
struct RepositorySection {
    using Record = RepositoryRecord;
    static constexpr std::wstring_view kSource = L"RepositoryRecord.SaveParm";
    static constexpr bool kKeeps = true;
    static constexpr bool kNeedsLanguage = false;
    static bool Save(Record& Into, std::wstring& Text, bool Strict) { return Into.SaveParm(Text, Strict); }
    static bool Disp(const Record& From, std::wstring& Buffer) { return From.DispParm(Buffer, 0); }
    static std::vector<Row> Rows() {
        return {{L"PATH=", L"Path", Reads::Kept},         {L"URL=", L"Url", Reads::Kept},
                {L"TABLE=", L"Table", Reads::Name},       {L"KEYFIELD=", L"KeyField", Reads::Name},
                {L"TEMPPATH=", L"TempPath", Reads::Kept}, {L"READONLY=", L"ReadOnly", Reads::Boolean},
                {L"FLAGS=", L"Flags", Reads::Flags},      {L"MIRROROF=", L"MirrorOf", Reads::Kept}};
    }
};

}  // namespace kv::test
