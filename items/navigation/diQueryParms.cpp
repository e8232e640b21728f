// The parameters of a query, of its fields and of their predefined values, and the nodes of fields and
// values.
#include <cmath>
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "items/navigation/diQuery.h"
#include "items/navigation/diQueryNodes.h"
#include "records/MessageSection.h"
#include "records/Sections.h"

namespace kv {
namespace {

using R = QueryRecord;
using F = QueryFieldRecord;
using V = MessageRecord;

// The query. A number is held against its bounds as typed, but for that of ROWS=.

constexpr LadderRow<R> kParmLadder[] = {
    {L"BROWSE=", read::Upper<&R::Browse>},
    {L"DEFAULTSET=",
     [](R& Into, Parm& P) {
         const double Set = StrUtil::Number(P.Value);
         if (Set < 0 || Set > 1) P.Bad();
         Into.DefaultSet = StrUtil::ToLong(Set);
         return false;
     }},
    {L"HELP=", read::Upper<&R::Help>},
    {L"HELPWWW=", read::Upper<&R::HelpWww>},
    {L"LARGEBUTT=", read::BoolOrTrue<&R::LargeButt>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"ROWS=",
     [](R& Into, Parm& P) {
         const double Rows = std::nearbyint(StrUtil::Number(P.Value));
         if (Rows < 0 || Rows > 20) P.Bad();
         Into.Rows = StrUtil::ToLong(Rows);
         return false;
     }},
    {L"SETSELECT=", read::BoolOrTrue<&R::SetSelect>},
    {L"SHOWRES=", read::BoolOrTrue<&R::ShowRes>},
    {L"STYLE=", read::OneWord<&R::Style, kQueryStyles>},
    {L"TIMEOUT=",
     [](R& Into, Parm& P) {
         const double Timeout = StrUtil::Number(P.Value);
         if (Timeout < 0) P.BadIfStrict();
         Into.Timeout = StrUtil::ToLong(Timeout);
         return false;
     }},
    {L"TIPS=", read::Upper<&R::Tips>},
    {L"TIPSALIGN=", read::Align<&R::TipsAlign>},
    {L"TIPSWIDTH=", read::Percent<&R::TipsWidth>},
    {L"TOOLALIGN=", read::Align<&R::ToolAlign>},
    {L"FLAGS=", read::Flags<&R::Flags, kNoWords>},
};

// A style without a word has no line; flags that the ladder can't produce show as a FLAGS= that it reads as
// 0.
constexpr LineRow<const R> kParmLines[] = {
    {L"BROWSE=", write::Quoted<&R::Browse>},
    {L"DEFAULTSET=", write::Number<&R::DefaultSet>},
    {L"SETSELECT=", write::Bool<&R::SetSelect>},
    {L"STYLE=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         const std::wstring_view Style = WordOf(kQueryStyles, From.Style);
         if (!Style.empty()) Out.Plain(Keyword, Style);
         return false;
     }},
    {L"ROWS=", write::Number<&R::Rows>},
    {L"SHOWRES=", write::Bool<&R::ShowRes>},
    {L"TIMEOUT=", write::Number<&R::Timeout>},
    {L"LARGEBUTT=", write::Bool<&R::LargeButt>},
    {L"TOOLALIGN=", write::Align<&R::ToolAlign>},
    {L"HELP=", write::Quoted<&R::Help>},
    {L"HELPWWW=", write::Quoted<&R::HelpWww>},
    {L"TIPS=", write::Quoted<&R::Tips>},
    {L"TIPSALIGN=", write::Align<&R::TipsAlign>},
    {L"TIPSWIDTH=", write::Number<&R::TipsWidth>},
    {L"FLAGS=", write::FlagsNoBlank<&R::Flags, kNoWords>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
};

// A field.

constexpr LadderRow<F> kFieldLadder[] = {
    {L"FLAGS=", read::Flags<&F::Flags, kQueryFieldFlags>},
    {L"SELECTED=", read::Long<&F::Selected>},
    {L"NAME=", read::Upper<&F::Name>},
    {L"SEMANTIC=", read::Long<&F::Semantic>},
    {L"STOPWORD=", read::Upper<&F::StopWord>},
    {L"TABLES=", read::Upper<&F::Tables>},
    {L"WORDS=", read::BoolOrTrue<&F::Words>},
};

constexpr LineRow<const F> kFieldLines[] = {
    {L"NAME=", write::Quoted<&F::Name>},
    {L"STOPWORD=", write::Quoted<&F::StopWord>},
    {L"TABLES=", write::Quoted<&F::Tables>},
    {L"WORDS=", write::Bool<&F::Words>},
    {L"SELECTED=", write::Number<&F::Selected>},
    {L"SEMANTIC=", write::Number<&F::Semantic>},
    {L"FLAGS=", write::Flags<&F::Flags, kQueryFieldFlags>},
};

constexpr vdbShared::ElementShape kFieldShape{.Word = query::kFields,
                                              .ParmsWord = query::kFieldParms,
                                              .ParmsCaption = L"Parametri",
                                              .InnerWord = query::kFieldCaption,
                                              .InnerCaption = L"Etichette"};

// A predefined value.

constexpr vdbShared::ElementShape kConstantShape{.Word = query::kConstants,
                                                 .ParmsWord = query::kConstantParms,
                                                 .ParmsCaption = L"Valore",
                                                 .InnerWord = query::kConstantCaption,
                                                 .InnerCaption = L"Etichette"};

}  // namespace

bool query::SetFieldNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                         std::optional<std::int32_t> Relationship) {
    return Trap(L"diQuery.SetFieldNode", [&] {
        const F& Field = Record.Fields.Item(Index);
        vdbShared::AddElementNodes(Tree, kFieldShape, FirstCaptionNode(Field.Captions),
                                   vdbShared::CaptionsOf(Field.Captions, CaptionNode<ParmItem>), Key,
                                   Relationship);
        const std::wstring Folder = std::wstring(kConstants) + L"-" + Key;
        vdbShared::AddFolder(Tree, Folder, L"Valori predefiniti", kind::kSubList, Key);
        const Place Owner({&Index, 1});
        for (std::int32_t I = 1; I <= Field.Defaults.Message.Count(); ++I) {
            std::wstring Node = Folder;
            if (SetConstantNode(Tree, Record, Owner, I, Node, relation::kChild)) return true;
        }
        return false;
    });
}

bool query::SetConstantNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index,
                            std::wstring& Key, std::optional<std::int32_t> Relationship) {
    return Trap(L"diQuery.SetConstantNode", [&] {
        const V& Value = Values::Of(Record, At).Item(Index);
        vdbShared::AddElementNodes(Tree, kConstantShape, ConstantNode(Value.Name),
                                   vdbShared::CaptionsOf(Value.Message, MessageNode<ParmItem>), Key,
                                   Relationship);
        return false;
    });
}

std::wstring query::ConstantNode(std::wstring_view Name) { return std::wstring(L"Valore: ").append(Name); }

bool diQuery::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diQuery.SaveParm", Scratch::Parameters, kParmLadder, Record(), Buffer, SyntaxOn,
                       [&](const R& Read) {
                           if (!SyntaxOn) return false;
                           if (Read.Browse.empty())
                               Raise(L"Non è stata specificata la tabella di destinazione.");
                           return TipsAlignCheck(Read.Tips, Read.TipsAlign, Read.TipsWidth);
                       });
}

bool diQuery::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diQuery.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

bool diQuery::SaveFieldParm(std::wstring& Buffer, std::int32_t Field, bool SyntaxOn) {
    constexpr std::wstring_view kSource = L"diQuery.SaveFieldParm";
    return Trap(kSource, [&] {
        return SaveSection(kSource, Scratch::Header, kFieldLadder, Record().Fields.Item(Field), Buffer,
                           SyntaxOn);
    });
}

bool diQuery::DispFieldParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Indent) {
    constexpr std::wstring_view kSource = L"diQuery.DispFieldParm";
    return Trap(kSource, [&] {
        return DispSection(kSource, kFieldLines, std::as_const(Record().Fields.Item(Field)), Buffer, Indent);
    });
}

bool diQuery::SaveConstParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Value) {
    constexpr std::wstring_view kSource = L"diQuery.SaveConstParm";
    return Trap(kSource, [&] {
        return SaveMessageParms(kSource, Record().Fields.Item(Field).Defaults.Message, Value, Buffer,
                                Tree().SyntaxOn());
    });
}

bool diQuery::DispConstParm(std::wstring& Buffer, std::int32_t Field, std::int32_t Value,
                            std::int32_t Indent) {
    constexpr std::wstring_view kSource = L"diQuery.DispConstParm";
    return Trap(kSource, [&] {
        return DispMessageParms(kSource, Record().Fields.Item(Field).Defaults.Message, Value, Buffer, Indent);
    });
}

}  // namespace kv
