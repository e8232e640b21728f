// The formats and loan tables of a display profile.
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "items/client/diProfile.h"
#include "items/client/diProfileNodes.h"
#include "records/Sections.h"

namespace kv {
namespace {

using R = ProfileRecord;
using F = FormatRecord;
using T = LoanTableRecord;

// A format as its text is read: what waits for a later line, and for the end of the text.
struct FormatText : FormatRecord {
    std::wstring ServerName;
    std::wstring Arguments;   // each followed by a character of code 0
    std::wstring PendingTag;  // of a TAG= line whose LANG= line is to come
    std::int32_t Sign = 0;    // of the first message tag
};

constexpr std::wstring_view kTag = L"TAG=";
constexpr std::wstring_view kLang = L"LANG=";
constexpr std::wstring_view kExportArg = L"EXPORTARG=";

// TAG= and LANG= stand in pairs and repeat: each is noted under a name of its own, only to be the last one.
void NoteLine(std::wstring_view Keyword) {
    CheckParmOnce(std::wstring(Keyword) + std::to_wstring(CoreUtil::Instance().NextNodeId()));
}
bool BehindTag() { return LastParmChecked().starts_with(kTag); }

std::int32_t SignOf(std::int32_t Number) { return (Number > 0) - (Number < 0); }

bool ReadTag(FormatText& Into, Parm& P) {
    if (BehindTag()) Raise(L"Due TAG= consecutivi.");
    NoteLine(P.Keyword);
    P.Unquote();
    Into.PendingTag = P.Value;
    return false;
}

bool ReadLang(FormatText& Into, Parm& P) {
    if (!BehindTag())
        Raise(L"Il parametro " + std::wstring(P.Keyword) + L" non è preceduto dal messaggio relativo.");
    NoteLine(P.Keyword);
    P.Unquote();
    P.Fold();
    if (Into.PendingTag.empty() && P.Value.empty()) return false;
    if (P.Value.empty() && P.Strict) Raise(L"Omesso il codice di LANG.");
    CookieItem Cookie;
    Cookie.Id = CoreUtil::Instance().NextNodeId();
    Cookie.Tag = StrUtil::ToLong(StrUtil::Number(Into.PendingTag));
    Cookie.Language = P.Value;
    if (Into.Cookies.Count() == 0)
        Into.Sign = SignOf(Cookie.Tag);
    else if (SignOf(Cookie.Tag) != Into.Sign && P.Strict)
        Raise(L"Non è possibile usare valori positivi e negativi per TAG.");
    Into.Cookies.Add(std::move(Cookie));
    Into.PendingTag.clear();
    return false;
}

bool ReadDispType(FormatText& Into, Parm& P) {
    P.Fold();
    P.Value = StrUtil::Trim(P.Value);
    P.AddWords(kDispTypes, Into.DispType);
    return false;
}

// The words as typed. BANNER and COOKED replace each other.
bool ReadStyle(FormatText& Into, Parm& P) {
    while (!P.Value.empty()) {
        const std::wstring_view Style = P.NextFlag();
        if (const Word* const Code = FindWord(kFormatStyles, Style))
            Into.Style = (Into.Style & ~kFormatStyleBits) | Code->Value;
        else if (const Word* const Flag = FindWord(kFormatStyleFlags, Style))
            Into.Style |= Flag->Value;
        else
            P.BadIfStrict();
    }
    return false;
}

constexpr LadderRow<FormatText> kFormatLadder[] = {
    {L"NAME=", read::Upper<&F::Name>},
    {L"DEFSTYLE=", read::BoolOrTrue<&F::DefStyle>},
    {L"DISPTYPE=", ReadDispType},
    {L"EXPORTSVR=", read::Text<&FormatText::ServerName>},
    {kExportArg,
     [](FormatText& Into, Parm& P) {
         P.Unquote();
         if (P.Value.empty()) return false;
         if (Into.ServerName.empty() && P.Strict) Raise(L"Non è stato specificato il nome del server.");
         Into.Arguments.append(P.Value).push_back(L'\0');
         return false;
     },
     Repeat::Any},
    {L"STYLE=", ReadStyle},
    {kTag, ReadTag, Repeat::Any},
    {kLang, ReadLang, Repeat::Any},
};

// A format in strict mode, in this order.
void CheckFormat(const F& Read) {
    const std::int32_t Style = Read.Style & kFormatStyleBits;
    if (Style == 0) Raise(L"Non è stato specificato STYLE.");
    if (Style == kFormatCooked && Read.Cookies.Count() == 0)
        Raise(L"Non è stato specificato il campo per il formato cooked.");
    if (Read.DispType == 0) Raise(L"Non è stato specificato il tipo di display.");
}

// A format without a style shows as BANNER.
bool WriteStyle(const F& From, std::wstring_view Keyword, LineWriter& Out) {
    const std::wstring_view Known = WordOf(kFormatStyles, From.Style & kFormatStyleBits);
    std::wstring Style(Known.empty() ? kFormatStyles[0].Text : Known);
    if (const std::wstring Flags = JoinSetWords(kFormatStyleFlags, From.Style); !Flags.empty())
        Style.append(L"|").append(Flags);
    Out.Plain(Keyword, Style);
    return false;
}

// A pair without a tag is a comment; the last pair is one to copy from.
bool WriteCookies(const F& From, std::wstring_view, LineWriter& Out) {
    const auto Pair = [&](std::wstring_view Mark, std::wstring_view Tag, std::wstring_view Language) {
        Out.Plain(std::wstring(Mark).append(kTag), Tag);
        Out.Quoted(std::wstring(Mark).append(kLang), Language);
    };
    for (std::int32_t I = 1; I <= From.Cookies.Count(); ++I) {
        const CookieItem& Cookie = From.Cookies.Item(I);
        if (Cookie.Tag == 0)
            Pair(L"*", {}, Cookie.Language);
        else
            Pair({}, std::to_wstring(Cookie.Tag), Cookie.Language);
    }
    Pair(L"*", {}, {});
    return false;
}

constexpr LineRow<const F> kFormatLines[] = {
    {L"NAME=", write::Quoted<&F::Name>},
    {L"STYLE=", WriteStyle},
    {L"DEFSTYLE=", write::Bool<&F::DefStyle>},
    {L"DISPTYPE=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, JoinSetWords(kDispTypes, From.DispType));
         return false;
     }},
    {L"EXPORTSVR=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         return ServerParmsDisp(From.Server, Keyword, kExportArg, Out.Buffer, Out.Indent);
     }},
    {kTag, WriteCookies},
};

constexpr LadderRow<T> kLoanTableLadder[] = {
    {L"NATURE=", read::Upper<&T::Nature>},
    {L"LEVEL=", read::Upper<&T::Level>},
};

constexpr LineRow<const T> kLoanTableLines[] = {
    {L"NATURE=", write::Quoted<&T::Nature>},
    {L"LEVEL=", write::Quoted<&T::Level>},
};

std::wstring LoanTableCaption(const T& Of) { return Of.Nature + L" - " + Of.Level; }

constexpr auto kOfSection = vdbShared::LeafKeys::OfSection;

constexpr vdbShared::ElementShape kFormatShape{.Word = L"FORMATS",
                                               .ParmsWord = L"FORMATPARMS",
                                               .ParmsCaption = L"Parametri",
                                               .ParmsLeaf = kOfSection,
                                               .InnerWord = L"FORMATCAPTION",
                                               .InnerCaption = L"Etichette",
                                               .InnerLeaf = kOfSection};

constexpr vdbShared::ElementShape kLoanTableShape{.Word = L"LOANTABLES",
                                                  .ParmsWord = L"LOANTABLEPARMS",
                                                  .ParmsCaption = L"Parametri",
                                                  .ParmsLeaf = kOfSection,
                                                  .InnerWord = L"LOANTABLECAPTION",
                                                  .InnerCaption = L"Messaggi",
                                                  .InnerLeaf = kOfSection};

}  // namespace

bool profile::SetFormatNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                            std::optional<std::int32_t> Relationship) {
    return Trap(L"diProfile.SetFormatNode", [&] {
        const F& Format = Record.Formats.Item(Index);
        vdbShared::AddElementNodes(
            Tree, kFormatShape, Format.Captions.Count() == 0 ? std::wstring(L"????") : Format.Name,
            vdbShared::CaptionsOf(Format.Captions, CaptionNode<ParmItem>), Key, Relationship);
        return false;
    });
}

bool profile::SetLoanTableNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index,
                               std::wstring& Key, std::optional<std::int32_t> Relationship) {
    return Trap(L"diProfile.SetLoanTableNode", [&] {
        const T& Table = Record.LoanTables.Item(Index);
        vdbShared::AddElementNodes(Tree, kLoanTableShape, LoanTableCaption(Table),
                                   vdbShared::CaptionsOf(Table.Captions, MessageNode<ParmItem>), Key,
                                   Relationship);
        return false;
    });
}

bool diProfile::SaveFormatParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                               std::wstring& NewCaption) {
    SectionText Text(Buffer);
    return Trap(L"diProfile.SaveFormatParm", Text, [&] {
        F& Stored = Record().Formats.Item(Index);
        FormatText Read{Stored.MakeScratch(), {}, {}, {}};
        ClearParmCheck();
        if (ReadLadder(Text, kFormatLadder, Read, SyntaxOn)) return true;
        if (SyntaxOn) CheckFormat(Read);
        if (ServerParmsSave(Read.ServerName, Read.Arguments, Read.Server)) return true;
        NewCaption = Read.Name;
        std::move(static_cast<F&>(Read)).Commit(Stored);
        return false;
    });
}

bool diProfile::DispFormatParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diProfile.DispFormatParm", kFormatLines, std::as_const(Record().Formats.Item(Index)),
                       Buffer, Indent);
}

bool diProfile::SaveLoanTableParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                                  std::wstring& NewCaption) {
    return SaveSection(L"diProfile.SaveLoanTableParm", Scratch::Header, kLoanTableLadder,
                       Record().LoanTables.Item(Index), Buffer, SyntaxOn, [&](const T& Read) {
                           if (SyntaxOn && Read.Nature.empty()) Raise(L"Non è stata specificata la natura.");
                           if (SyntaxOn && Read.Level.empty()) Raise(L"Non è stato specificato il livello.");
                           NewCaption = LoanTableCaption(Read);
                       });
}

bool diProfile::DispLoanTableParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diProfile.DispLoanTableParm", kLoanTableLines,
                       std::as_const(Record().LoanTables.Item(Index)), Buffer, Indent);
}

}  // namespace kv
