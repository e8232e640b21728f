#include "items/client/diRetrieval.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = RetrievalRecord;

// The parameters.

// A negative number typed fails in strict mode and says nothing; NONE is no such number.
template <auto Member>
bool ReadCeilingOrFail(R& Into, Parm& P) {
    P.Fold();
    if (P.Value == kNone) {
        Into.*Member = kNoCeiling;
        return false;
    }
    Into.*Member = StrUtil::ToLong(StrUtil::Number(P.Value));
    return P.Strict && Into.*Member < 0;
}

constexpr LadderRow<R> kParmLadder[] = {
    {L"COMPRESSED=", read::BoolOrTrue<&R::Compressed>},
    {L"DATALOCKPWD=",
     [](R& Into, Parm& P) {
         Into.DataLockPwd = StrUtil::ToInteger(StrUtil::NumberAnyBase(P.Value));
         return false;
     }},
    {L"BACKUPPATH=", read::Text<&R::BackupPath>},
    {L"DBVERSION=",
     [](R& Into, Parm& P) {
         P.Unquote();
         const std::size_t Point = P.Value.find(L'.');
         const std::wstring_view Minor = Point == P.Value.npos ? L"" : P.Value.substr(Point + 1);
         Into.DbVersion = CoreUtil::PackVersion(StrUtil::ToInteger(StrUtil::Number(P.Value.substr(0, Point))),
                                                StrUtil::ToInteger(StrUtil::Number(Minor)));
         return false;
     }},
    {L"ENCRYPTION=", read::BoolOrTrue<&R::Encryption>},
    {L"FILEMAXITEMS=", ReadCeilingOrFail<&R::FileMaxItems>},
    {L"FILEMAXRECS=", ReadCeilingOrFail<&R::FileMaxRecs>},
    {L"FLAGS=", read::Flags<&R::Flags, kRetrievalFlags>},
    {L"HELP=", read::Upper<&R::Help>},
    {L"HELPTYPE=", read::FoldedWord<&R::HelpType, kRetrievalHelpTypes>},
    {L"HTMLROOT=", read::Text<&R::HtmlRoot>},
    {L"LOANENABLE=",
     [](R& Into, Parm& P) {
         P.Unquote();
         P.Fold();
         P.AddWords(kLoanEnableWords, Into.LoanEnable);
         return false;
     },
     Repeat::Any},
    {L"LOANPATH=", read::Text<&R::LoanPath>},
    {L"LOCKFILE=", read::Text<&R::LockFile>},
    {L"LOGFILE=", read::Text<&R::LogFile>},
    {L"MENUBAR=",
     [](R& Into, Parm& P) {
         Into.MenuBar = P.Bool() != 0;  // an unknown word is true, strict or lax
         return false;
     }},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"PATH=", read::Text<&R::Path>},
    {L"PRNMAXITEMS=", ReadCeilingOrFail<&R::PrnMaxItems>},
    {L"PRNMAXRECS=", ReadCeilingOrFail<&R::PrnMaxRecs>},
    {L"REMOTEDB=", read::BoolOrTrue<&R::RemoteDb>},
    {L"TEMPPATH=", read::Text<&R::TempPath>},
    {L"URL=", read::Text<&R::Url>},
    {L"URLFOR=", read::Text<&R::UrlFor>},
};

constexpr std::wstring_view kPrevailsNote =
    L"'Questo parametro prevale sulle impostazioni del client solo se è settato il flag PREVAIL";
constexpr std::wstring_view kOverNote = L"'Questo parametro prevale sulle impostazioni del client";

// A comment line, then the line of the keyword.
template <auto Member>
bool WriteCeiling(const R& From, std::wstring_view Keyword, LineWriter& Out) {
    Out.Line(kOverNote);
    Out.Ceiling(Keyword, From.*Member);
    return false;
}

std::wstring LoanEnableText(std::int32_t Bits) {
    std::wstring Words;
    if ((Bits & kLoanEnabled) == 0) Words.append(kLoanNotEnabled).push_back(L'|');
    Words.append(JoinSetWords(kLoanEnableWords, Bits));
    CoreUtil::TrimEnd(Words, L"|");
    return Words;
}

// Without zeros in front.
std::wstring HexText(std::int16_t Value) {
    const auto Bits = static_cast<std::uint16_t>(Value);
    std::wstring Digits = StrUtil::Hex2(static_cast<std::uint8_t>(Bits >> 8U));
    Digits.append(StrUtil::Hex2(static_cast<std::uint8_t>(Bits & 0xFFU)));
    Digits.erase(0, std::min(Digits.find_first_not_of(L'0'), Digits.size() - 1));
    return Digits;
}

constexpr LineRow<const R> kParmLines[] = {
    {L"PATH=", write::Quoted<&R::Path>},
    {L"ENCRYPTION=", write::Bool<&R::Encryption>},
    {L"COMPRESSED=", write::Bool<&R::Compressed>},
    {L"DBVERSION=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         std::int16_t Major = 0;
         std::int16_t Minor = 0;
         CoreUtil::UnpackVersion(From.DbVersion, Major, Minor);
         Out.Plain(Keyword, std::to_wstring(Major) + L"." + std::to_wstring(Minor));
         return false;
     }},
    {L"HTMLROOT=", write::Quoted<&R::HtmlRoot>},
    {L"HELPTYPE=", write::OneWord<&R::HelpType, kRetrievalHelpTypes>},
    {L"HELP=", write::Quoted<&R::Help>},
    {L"LOANPATH=", write::Quoted<&R::LoanPath>},
    {L"LOANENABLE=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Line(kPrevailsNote);
         AppendParm(Out.Buffer, 0, Keyword, LoanEnableText(From.LoanEnable));  // no tabs, alone of all lines
         return false;
     }},
    {L"PRNMAXITEMS=", WriteCeiling<&R::PrnMaxItems>},
    {L"PRNMAXRECS=", WriteCeiling<&R::PrnMaxRecs>},
    {L"FILEMAXITEMS=", WriteCeiling<&R::FileMaxItems>},
    {L"FILEMAXRECS=", WriteCeiling<&R::FileMaxRecs>},
    {L"REMOTEDB=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Line(kOverNote);
         Out.Bool(Keyword, From.RemoteDb);
         return false;
     }},
    {L"URL=", write::Quoted<&R::Url>},
    {L"URLFOR=", write::Quoted<&R::UrlFor>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
    {L"MENUBAR=", write::Bool<&R::MenuBar>},
    {L"DATALOCKPWD=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, L"&H" + HexText(From.DataLockPwd));
         return false;
     }},
    {L"LOCKFILE=", write::Quoted<&R::LockFile>},
    {L"BACKUPPATH=", write::Quoted<&R::BackupPath>},
    {L"TEMPPATH=", write::Quoted<&R::TempPath>},
    {L"LOGFILE=", write::Quoted<&R::LogFile>},
    {L"FLAGS=", write::Flags<&R::Flags, kRetrievalFlags>},
};

// DISPONLY is taken and not offered.
constexpr std::array<std::wstring_view, 5> kLoanEnableChoices{L"NOTENABLED", L"ENABLED", L"STARTUP",
                                                              L"RESTARTABLE", L"PREVAIL"};

constexpr Choice kChoices[] = {
    {kParms, L"LOANENABLE=", kLoanEnableChoices}, {kParms, L"PRNMAXITEMS=", kNoneOnly},
    {kParms, L"PRNMAXRECS=", kNoneOnly},          {kParms, L"FILEMAXITEMS=", kNoneOnly},
    {kParms, L"FILEMAXRECS=", kNoneOnly},         {kParms, L"FLAGS=", kNoneOnly},
    {kParms, L"REMOTEDB=", kBooleanWords},        {kParms, L"COMPRESSED=", kBooleanWords},
};

}  // namespace

bool diRetrieval::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diRetrieval.SaveData", [&] {
        const bool SyntaxOn = Tree().SyntaxOn();
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        return !At.Key.empty();  // another section fails, without a message
    });
}

bool diRetrieval::Save(RegData& Clsid) {
    return Trap(L"diRetrieval.Save", [&] { return Record().Save(Clsid); });
}

bool diRetrieval::MoveData(Head&, std::int32_t) { return true; }

bool diRetrieval::LoadData(RegData& Clsid) {
    return Trap(L"diRetrieval.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        return AddChoices(Tree(), kChoices);
    });
}

bool diRetrieval::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                std::wstring& Id) {
    return Trap(L"diRetrieval.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diRetrieval::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diRetrieval.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return DispData(vdbShared::ExportHead(kParms), Buffer, true, {}, 1);
    });
}

bool diRetrieval::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diRetrieval.EditData", [&] {
        if (At.Key == kParms) vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diRetrieval::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                           std::int32_t Indent) {
    return Trap(L"diRetrieval.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            // Unlike elsewhere the block decides how deep the text stands: inside it one deeper, also from 0.
            return At.Key == kParms && DispParm(Buffer, ExternalTarget ? Indent + 1 : Indent);
        });
    });
}

bool diRetrieval::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diRetrieval.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diRetrieval::DeleteData(const Head&, bool) { return false; }

bool diRetrieval::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(
        L"diRetrieval.SaveParm", Scratch::Header, kParmLadder, Record(), Buffer, SyntaxOn,
        [&](const R& Read) {
            if (Read.Encryption && Read.Compressed)
                Raise(L"Non è possibile specificare entrambe le opzioni ENCRYPTION= COMPRESSED=.");
            if (SyntaxOn && Read.Path.empty())
                Raise(L"Non è stato specificato un PATH per la base di retrieval.");
        });
}

bool diRetrieval::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diRetrieval.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

}  // namespace kv
