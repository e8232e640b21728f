// The definition of one field of a table.
#pragma once

#include <array>

#include "frame/Words.h"
#include "records/Stored.h"

namespace kv {

/// Codes of FieldRecord::DataType as they are read. LONG is shown for 3 too, and read back as 2; TEXT is
/// shown for every code that has no word.
inline constexpr std::array<Word, 8> kDataTypes{{
    {L"BYTE", 17},
    {L"BOOLEAN", 11},
    {L"LONG", 2},
    {L"SINGLE", 4},
    {L"DOUBLE", 5},
    {L"CURRENCY", 6},
    {L"DATE", 7},
    {L"TEXT", 8},
}};
inline constexpr std::int32_t kDataTypeLongToo = 3;
inline constexpr std::int32_t kDataTypeText = 8;

/// Bits of FieldRecord::Flags, in the order in which they are shown.
inline constexpr std::array<Word, 17> kFieldFlags{{
    {L"FIXEDSIZE", 0x00001},
    {L"READONLY", 0x00004},
    {L"WRITEONLY", 0x00002},
    {L"LOCKED", 0x00008},
    {L"TEXTBOX", 0x00010},
    {L"COMBOBOX", 0x00020},
    {L"LISTBOX", 0x00040},
    {L"AUTONUM", 0x00080},
    {L"AUTODATE", 0x00100},
    {L"AUTOUNK", 0x00200},
    {L"IFEMPTY", 0x00400},
    {L"MANDATORY", 0x00800},
    {L"REPEATABLE", 0x01000},
    {L"VALIDATEONQUIT", 0x02000},
    {L"VALIDATEONREQ", 0x04000},
    {L"CAPTURE", 0x08000},
    {L"HIDDEN", 0x10000},
}};
inline constexpr std::int32_t kFixedSize = 0x00001;

/// Codes of FieldRecord::LinkMode; any other is shown as LINKNONE.
inline constexpr std::array<Word, 4> kLinkModes{{
    {L"LINKNONE", 0},
    {L"LINKOWNER", 1},
    {L"LINKRECIPROCAL", 2},
    {L"OWNERRECIPROCAL", 3},
}};

/// Codes of FieldRecord::Semantic. 30 has no word; a code without a word stands in the text as a number.
inline constexpr std::array<Word, 31> kSemantics{{
    {L"NONE", 0},       {L"ISBDCOOK", 1},    {L"ISBDMETA", 2},    {L"SETLINK", 3},     {L"SETNUM", 4},
    {L"ITEMLINK", 5},   {L"ITEMNUM", 6},     {L"RESPLINK", 7},    {L"SUBJECTLINK", 8}, {L"CLASSLINK", 9},
    {L"TITLELINK", 10}, {L"GSTSIGLNK", 11},  {L"GSTBARLNK", 12},  {L"GSTACCLNK", 13},  {L"GSTBIDLNK", 14},
    {L"GSTBIBLNK", 15}, {L"GSTPUBTYPE", 16}, {L"ITEMDATE", 17},   {L"ITEMTITLE", 18},  {L"MAINRESP", 19},
    {L"LOANSTART", 20}, {L"LOANEND", 21},    {L"LOANSTATUS", 22}, {L"LOANNOTE", 23},   {L"PUBLISHER", 24},
    {L"LOANCHECK", 25}, {L"STATCONS", 26},   {L"IMPTYPE", 27},    {L"HIERLEVEL", 28},  {L"RESPFLAGS", 29},
    {L"ISBDRULE", 31},
}};

/// The order in which the semantic words are offered, "NONE" last.
inline constexpr std::array<std::wstring_view, 31> kSemanticChoices{
    L"ISBDCOOK",   L"ISBDMETA",    L"ISBDRULE",  L"SETLINK",   L"SETNUM",    L"ITEMLINK",  L"ITEMNUM",
    L"RESPLINK",   L"SUBJECTLINK", L"CLASSLINK", L"TITLELINK", L"GSTSIGLNK", L"GSTBARLNK", L"GSTACCLNK",
    L"GSTBIDLNK",  L"GSTBIBLNK",   L"ITEMDATE",  L"ITEMTITLE", L"MAINRESP",  L"LOANSTART", L"LOANEND",
    L"LOANSTATUS", L"LOANNOTE",    L"PUBLISHER", L"LOANCHECK", L"STATCONS",  L"IMPTYPE",   L"HIERLEVEL",
    L"RESPFLAGS",  L"GSTPUBTYPE",  L"NONE",
};

struct FieldRecord final : Stored<FieldRecord> {
    static constexpr std::wstring_view kClass = L"FieldRecord";

    std::wstring Caption;       // label for input forms
    std::int32_t DataType = 0;  // kDataTypes
    std::wstring DefValues;     // default values, parted by the character of code 0
    std::int32_t Flags = 0;     // kFieldFlags
    std::int32_t GroupTag = 0;  // tag of the group that the field belongs to, 0 for none
    std::int32_t Level = 0;     // depth, from 1
    std::wstring LinkTable;
    std::int32_t LinkMode = 0;  // kLinkModes
    std::uint8_t LinkType = 0;
    std::uint8_t LinkTypeRecpr = 0;  // of the reciprocal link
    std::int32_t Semantic = 0;       // kSemantics
    std::int32_t Size = 0;           // in characters or bytes
    std::int32_t Tag = 0;
    std::wstring ValidationTable;  // table of allowed values
    bool Visible = false;

    static constexpr auto Properties(auto With) {
        using R = FieldRecord;
        return With(Parameter(L"Caption", &R::Caption), Parameter(L"DataType", &R::DataType),
                    Parameter(L"DefValues", &R::DefValues), Parameter(L"Flags", &R::Flags),
                    Parameter(L"GroupTag", &R::GroupTag), Parameter(L"Level", &R::Level),
                    Parameter(L"LinkTable", &R::LinkTable), Parameter(L"LinkMode", &R::LinkMode),
                    Parameter(L"LinkType", &R::LinkType), Parameter(L"LinkTypeRecpr", &R::LinkTypeRecpr),
                    Parameter(L"Semantic", &R::Semantic), Parameter(L"Size", &R::Size),
                    Parameter(L"Tag", &R::Tag), Parameter(L"ValidationTable", &R::ValidationTable),
                    Parameter(L"Visible", &R::Visible));
    }
};

}  // namespace kv
