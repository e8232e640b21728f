#include "items/services/diMailGroup.h"

#include <cmath>
#include <utility>

#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/MsgUtil.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = MailGroupRecord;

constexpr std::wstring_view kMail = L"MAIL";
constexpr std::wstring_view kExport = L"EXPORT";
constexpr std::wstring_view kSetOps = L"SETOPS";
constexpr std::wstring_view kNoteBook = L"NOTEBOOK";
constexpr std::wstring_view kQuery = L"QUERY";
constexpr std::wstring_view kPaths = L"PATHS";

// The whole part of the number, of which the low 32 bits are taken. Only what is too large to be read at all
// is refused.
template <auto Member, class Scratch>
bool Low32(Scratch& Into, Parm& P) {
    constexpr double kTwoTo32 = 4294967296.0;
    const double Whole = std::fmod(std::trunc(StrUtil::Number(P.Value)), kTwoTo32);
    Into.*Member = static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(Whole)));
    return false;
}

// The fixed sections, in the order of their text.

using P = MailGroupParmsRecord;
constexpr SectionRow<P> kParmRows[] = {
    {L"SIZE=", Low32<&P::Size>, write::Number<&P::Size>},
};

using M = MailGroupMailRecord;
constexpr SectionRow<M> kMailRows[] = {
    {L"RCVENABLED=", read::BoolOrTrue<&M::RcvEnabled>, write::Bool<&M::RcvEnabled>},
    {L"SNDENABLED=", read::BoolOrTrue<&M::SndEnabled>, write::Bool<&M::SndEnabled>},
    {L"RCVBROAD=", read::BoolOrTrue<&M::RcvBroad>, write::Bool<&M::RcvBroad>},
    {L"SNDBROAD=", read::BoolOrTrue<&M::SndBroad>, write::Bool<&M::SndBroad>},
    {L"EXPDAYS=", Low32<&M::ExpDays>, write::Number<&M::ExpDays>},
    {L"MAXFILES=", Low32<&M::MaxFiles>, write::Number<&M::MaxFiles>},
    {L"MAXSIZE=", Low32<&M::MaxSize>, write::Number<&M::MaxSize>},
    {L"ATTACH=", read::BoolOrTrue<&M::Attach>, write::Bool<&M::Attach>},
    {L"EDITOR=", read::Text<&M::Editor>, write::Quoted<&M::Editor>},
    {L"USERS=", read::Text<&M::Users>, write::Quoted<&M::Users>},
    {L"PRINTALLOW=", read::BoolOrTrue<&M::PrintAllow>, write::Bool<&M::PrintAllow>},
    {L"PRIORITY=", Low32<&M::Priority>, write::Number<&M::Priority>},
};

using E = MailGroupExportRecord;
constexpr SectionRow<E> kExportRows[] = {
    {L"ENABLED=", read::BoolOrTrue<&E::Enabled>, write::Bool<&E::Enabled>},
    {L"EXPDAYS=", Low32<&E::ExpDays>, write::Number<&E::ExpDays>},
    {L"MAXFILES=", Low32<&E::MaxFiles>, write::Number<&E::MaxFiles>},
    {L"MAXSIZE=", Low32<&E::MaxSize>, write::Number<&E::MaxSize>},
    {L"EDITOR=", read::Text<&E::Editor>, write::Quoted<&E::Editor>},
    {L"MAXITEMS=", Low32<&E::MaxItems>, write::Number<&E::MaxItems>},
    {L"MAXRECS=", Low32<&E::MaxRecs>, write::Number<&E::MaxRecs>},
    {L"PRINTALLOW=", read::BoolOrTrue<&E::PrintAllow>, write::Bool<&E::PrintAllow>},
};

using N = MailGroupNoteBookRecord;
constexpr SectionRow<N> kNoteBookRows[] = {
    {L"ENABLED=", read::BoolOrTrue<&N::Enabled>, write::Bool<&N::Enabled>},
    {L"EXPDAYS=", Low32<&N::ExpDays>, write::Number<&N::ExpDays>},
    {L"EDITOR=", read::Text<&N::Editor>, write::Quoted<&N::Editor>},
    {L"MAXFILES=", Low32<&N::MaxFiles>, write::Number<&N::MaxFiles>},
    {L"MAXSIZE=", Low32<&N::MaxSize>, write::Number<&N::MaxSize>},
    {L"PRINTALLOW=", read::BoolOrTrue<&N::PrintAllow>, write::Bool<&N::PrintAllow>},
};

// QUERY and SETOPS.
using K = MailGroupKeepRecord;
constexpr SectionRow<K> kKeepRows[] = {
    {L"ENABLED=", read::BoolOrTrue<&K::Enabled>, write::Bool<&K::Enabled>},
    {L"EXPDAYS=", Low32<&K::ExpDays>, write::Number<&K::ExpDays>},
    {L"MAXFILES=", Low32<&K::MaxFiles>, write::Number<&K::MaxFiles>},
};

// A backup path.
using B = MailBackupRecord;
constexpr SectionRow<B> kBackupRows[] = {
    {L"CAPTION=", read::Text<&B::Caption>, write::Quoted<&B::Caption>},
    {L"PATH=", read::Text<&B::Path>, write::Quoted<&B::Path>},
};

struct FixedSection {
    std::wstring_view Word;
    std::wstring_view Caption;
    std::wstring_view LeafCaption;
    std::wstring_view SaveSource;
    std::wstring_view DispSource;
    bool (*Save)(std::wstring_view Source, R&, std::wstring_view Buffer, bool SyntaxOn);
    bool (*Disp)(std::wstring_view Source, const R&, std::wstring& Buffer, std::int32_t Indent);
};

template <auto Member, const auto& Rows>
bool SaveFixed(std::wstring_view Source, R& Record, std::wstring_view Buffer, bool SyntaxOn) {
    return SaveSection(Source, Scratch::Header, Rows, Record.*Member, Buffer, SyntaxOn);
}
template <auto Member, const auto& Rows>
bool DispFixed(std::wstring_view Source, const R& Record, std::wstring& Buffer, std::int32_t Indent) {
    return DispLines(Source, Rows, Record.*Member, Buffer, Indent);
}

// In the order of the tree.
// clang-format off
constexpr FixedSection kFixed[] = {
    {kParms, L"Generale", L"Generale", L"diMailGroup.SaveParm", L"diMailGroup.DispParm", SaveFixed<&R::Parms, kParmRows>, DispFixed<&R::Parms, kParmRows>},
    {kMail, L"Mail", L"Parametri", L"diMailGroup.SaveMail", L"diMailGroup.DispMail", SaveFixed<&R::Mail, kMailRows>, DispFixed<&R::Mail, kMailRows>},
    {kExport, L"Export", L"Parametri", L"diMailGroup.SaveExport", L"diMailGroup.DispExport", SaveFixed<&R::Export, kExportRows>, DispFixed<&R::Export, kExportRows>},
    {kSetOps, L"Operazioni sugli insiemi", L"Parametri", L"diMailGroup.SaveSetOps", L"diMailGroup.DispSetOps", SaveFixed<&R::SetOps, kKeepRows>, DispFixed<&R::SetOps, kKeepRows>},
    {kNoteBook, L"Appunti", L"Parametri", L"diMailGroup.SaveNoteBook", L"diMailGroup.DispNoteBook", SaveFixed<&R::NoteBook, kNoteBookRows>, DispFixed<&R::NoteBook, kNoteBookRows>},
    {kQuery, L"Parametri ricerca", L"Parametri", L"diMailGroup.SaveQuery", L"diMailGroup.DispQuery", SaveFixed<&R::Query, kKeepRows>, DispFixed<&R::Query, kKeepRows>},
};
// clang-format on

// In the order of the export; the paths come last.
constexpr std::wstring_view kExported[] = {kParms, kExport, kMail, kNoteBook, kQuery, kSetOps};

// The caption as it may stand in a line, with its language where it has one.
std::wstring BackupNode(const B& Of) {
    std::wstring Shown;
    if (!Of.Language.empty()) Shown.append(L"[").append(Of.Language).append(L"] ");
    return Shown.append(MsgUtil::FilterText(Of.Caption));
}

using Backups = InRecord<&R::Backups>;

bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diMailGroup.SetNode", [&] {
        return vdbShared::Leaf<Backups, kPaths, BackupNode>(Tree, Record, At, Index, Key, Relationship);
    });
}

constexpr ListSection<R> kLists[] = {
    {kPaths, 0, vdbShared::ListOf<Backups>, vdbShared::NewIn<Backups>, SetNode, NewAt::End, Move::Yes,
     Delete::Yes},
};

}  // namespace

bool diMailGroup::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diMailGroup.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (const auto* const Section = FindSection(kFixed, At.Key))
            return Section->Save(Section->SaveSource, Record(), Buffer, SyntaxOn);
        if (At.Key != kPaths) return false;
        const std::int32_t Index = vdbShared::PlaceOf(Tree(), At, 0, Self::Yes)[0];
        vdbShared::NeedsOwnNode(Tree(), kPaths, At);
        if (SaveBackups(Buffer, Index, SyntaxOn)) return true;
        vdbShared::ShowCaption(Tree(), At.CurrItem, BackupNode(Record().Backups.Item(Index)), NewItemKey);
        return false;
    });
}

bool diMailGroup::Save(RegData& Clsid) {
    return Trap(L"diMailGroup.Save", [&] { return Record().Save(Clsid); });
}

bool diMailGroup::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diMailGroup.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diMailGroup::LoadData(RegData& Clsid) {
    return Trap(L"diMailGroup.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartTree(Tree(), Clsid);
        for (const FixedSection& Section : kFixed) {
            vdbShared::AddFolder(Tree(), Section.Word, Section.Caption);
            vdbShared::AddLeaf(Tree(), Section.Word, Section.LeafCaption);
        }
        vdbShared::AddFolder(Tree(), kPaths, L"Backup", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists);
    });
}

bool diMailGroup::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                std::wstring& Id) {
    return Trap(L"diMailGroup.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diMailGroup::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diMailGroup.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        for (const std::wstring_view Word : kExported)
            if (Out.One(Word, 1)) return true;
        return Out.Each(kPaths, Record().Backups, 1);
    });
}

bool diMailGroup::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diMailGroup.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diMailGroup::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                           std::int32_t Indent) {
    return Trap(L"diMailGroup.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            if (const auto* const Section = FindSection(kFixed, At.Key))
                return Section->Disp(Section->DispSource, Record(), Buffer, Inside);
            if (At.Key != kPaths) return false;
            if (vdbShared::OnFolder(Tree(), At, Item)) return false;
            return DispBackups(Buffer, vdbShared::PlaceOf(Tree(), At, 0, Self::Yes, Item)[0], Inside);
        });
    });
}

bool diMailGroup::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diMailGroup.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diMailGroup::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diMailGroup.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diMailGroup::SaveBackups(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return Trap(L"diMailGroup.SaveBackups", [&] {
        return SaveSection(L"diMailGroup.SaveBackups", Scratch::Header, kBackupRows,
                           Record().Backups.Item(Index), Buffer, SyntaxOn, [&](const B& Read) {
                               if (SyntaxOn && Read.Path.empty())
                                   Raise(L"Non è stato specificato un path valido.");
                           });
    });
}

bool diMailGroup::DispBackups(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return Trap(L"diMailGroup.DispBackups", [&] {
        return DispLines(L"diMailGroup.DispBackups", kBackupRows, Record().Backups.Item(Index), Buffer,
                         Indent);
    });
}

}  // namespace kv
