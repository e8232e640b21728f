#include "editor/ParmEditor.h"

#include <array>

#include "frame/SectionTable.h"

namespace kv::ParmEditor {
namespace {

constexpr std::array<Word, 0> kNoFlagWords{};

template <class C>
constexpr SectionRow<C> kCatalogue[] = {
    {L"RETRIEVAL=", read::Upper<&C::Retrieval>, write::Quoted<&C::Retrieval>},
    {L"TABLE=", read::Upper<&C::Table>, write::Quoted<&C::Table>},
    {L"PROFILE=", read::Upper<&C::Profile>, write::Quoted<&C::Profile>},
    {L"QUERY=", read::Upper<&C::Query>, write::Quoted<&C::Query>},
    {L"BROWSE=", read::Upper<&C::Browse>, write::Quoted<&C::Browse>},
    {L"PATH=", read::Text<&C::Path>, write::Quoted<&C::Path>},
    {L"HELP=", read::Upper<&C::Help>, write::Quoted<&C::Help>},
    {L"HELPWWW=", read::Upper<&C::HelpWww>, write::Quoted<&C::HelpWww>},
    {L"FLAGS=", read::Flags<&C::Flags, kNoFlagWords>, write::Flags<&C::Flags, kNoFlagWords>},
    {L"MIRROROF=", read::Text<&C::MirrorOf>, write::Quoted<&C::MirrorOf>},
};

using F = FilterRecord;
constexpr SectionRow<F> kFilter[] = {
    {L"TABLE=", read::Upper<&F::Table>, write::Quoted<&F::Table>},
    {L"EXPRESSION=", read::Text<&F::Expression>, write::Quoted<&F::Expression>},
    {L"AUTOMATIC=", read::BoolOrIgnore<&F::Automatic>, write::Bool<&F::Automatic>},
    {L"MERGEWITH=", read::OneWord<&F::MergeWith, kMergeWords>, write::OneWord<&F::MergeWith, kMergeWords>},
    {L"HELP=", read::Upper<&F::Help>, write::Quoted<&F::Help>},
    {L"FLAGS=", read::Flags<&F::Flags, kNoFlagWords>, write::Flags<&F::Flags, kNoFlagWords>},
    {L"MIRROROF=", read::Text<&F::MirrorOf>, write::Quoted<&F::MirrorOf>},
};

using I = ImportRecord;
constexpr SectionRow<I> kImport[] = {
    {L"PROCEDURE=", read::Upper<&I::Procedure>, write::Quoted<&I::Procedure>},
    {L"RETRIEVAL=", read::Upper<&I::Retrieval>, write::Quoted<&I::Retrieval>},
    {L"SOURCEPATH=", read::Text<&I::SourcePath>, write::Quoted<&I::SourcePath>},
    {L"TARGETPATH=", read::Text<&I::TargetPath>, write::Quoted<&I::TargetPath>},
    {L"LOGFILE=", read::Text<&I::LogFile>, write::Quoted<&I::LogFile>},
    {L"PROCTYPE=", read::Flags<&I::ProcType, kImportProcTypes>, write::Flags<&I::ProcType, kImportProcTypes>},
    {L"FLAGS=", read::Flags<&I::Flags, kImportFlags>, write::Flags<&I::Flags, kImportFlags>},
    {L"LOCKED=", read::BoolOrIgnore<&I::Locked>, write::Bool<&I::Locked>},
    {L"MIRROROF=", read::Text<&I::MirrorOf>, write::Quoted<&I::MirrorOf>},
};

template <class Record, class Rows>
bool SaveSection(std::wstring_view Source, const Rows& Table, Record& Into, std::wstring_view Buffer,
                 const SaveFlags& Flags) {
    SectionText Text(Buffer);
    return Trap(Source, Text, [&] {
        Record Scratch;
        Into.CopyTo(Scratch, false, false, true);
        ClearParmCheck();
        if (ReadLadder(Text, Table, Scratch, StrictFlag(Flags))) return true;
        std::move(Scratch).CopyTo(Into, true, false, false);
        return false;
    });
}

// The sections here stand at the left margin: those who render through ParmEditor pass no indent.
template <class Record, class Rows>
bool DispSection(std::wstring_view Source, const Rows& Table, const Record& From, std::wstring& Buffer) {
    return Trap(Source, [&] {
        LineWriter Out{Buffer, 0};
        if (WriteLines(Out, Table, From)) return true;
        DispHeader(Buffer, From, 0);
        return false;
    });
}

}  // namespace

template <class Record>
bool SaveCatalogue(Record& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return SaveSection(L"ParmEditor.SaveCatalogue", kCatalogue<Record>, Into, Buffer, Flags);
}
template <class Record>
bool DispCatalogue(const Record& From, std::wstring& Buffer, const SaveFlags&) {
    return DispSection(L"ParmEditor.DispCatalogue", kCatalogue<Record>, From, Buffer);
}
template bool SaveCatalogue(CatalogueRecord&, std::wstring&, const SaveFlags&);
template bool SaveCatalogue(ImportRecord&, std::wstring&, const SaveFlags&);
template bool DispCatalogue(const CatalogueRecord&, std::wstring&, const SaveFlags&);
template bool DispCatalogue(const ImportRecord&, std::wstring&, const SaveFlags&);

bool SaveFilter(FilterRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return SaveSection(L"ParmEditor.SaveFilter", kFilter, Into, Buffer, Flags);
}
bool DispFilter(const FilterRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return DispSection(L"ParmEditor.DispFilter", kFilter, From, Buffer);
}

bool SaveImport(ImportRecord& Into, std::wstring& Buffer, const SaveFlags& Flags) {
    return SaveSection(L"ParmEditor.SaveImport", kImport, Into, Buffer, Flags);
}
bool DispImport(const ImportRecord& From, std::wstring& Buffer, const SaveFlags&) {
    return DispSection(L"ParmEditor.DispImport", kImport, From, Buffer);
}

}  // namespace kv::ParmEditor
