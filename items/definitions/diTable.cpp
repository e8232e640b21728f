#include "items/definitions/diTable.h"

#include <utility>

#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/TagTools.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = TableRecord;
using F = FieldRecord;

constexpr std::wstring_view kClassWord = L"TABLE";
constexpr std::wstring_view kFields = L"FIELDS";
constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
constexpr std::wstring_view kTools[] = {L"FINDTAG", L"RENUMTAG", L"CONSTANTS"};

// The parameters.

constexpr LadderRow<R> kParmLadder[] = {
    {L"COLUMNS=",
     [](R& Into, Parm& P) {
         P.Unquote();
         Into.Columns = StrUtil::ToLong(StrUtil::Number(P.Value));
         return false;
     }},
    {L"FLAGS=", read::Flags<&R::Flags, kTableFlags>},
    {L"INDEX=", read::Upper<&R::Index>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"NAME=", read::Upper<&R::Name>},
    {L"SORT=",
     [](R& Into, Parm& P) {
         P.Fold();
         for (std::wstring_view Rest = P.Value; !Rest.empty();) {
             const std::wstring_view Piece = Rest.substr(0, Rest.find(L','));
             Rest.remove_prefix(std::min(Piece.size() + 1, Rest.size()));
             const std::wstring_view Rule = Unquote(Piece);
             if (Rule.empty()) continue;
             ParmItem Item;
             Item.Id = CoreUtil::Instance().NextNodeId();
             Item.Text = Rule;
             Into.Sort.Add(std::move(Item));
         }
         return false;
     }},
    {L"STYLE=", read::ExactWord<&R::Style, kTableStyles>},
    {L"TABLEID=", read::Long<&R::TableID>},
};

constexpr LineRow<const R> kParmLines[] = {
    {L"NAME=", write::Quoted<&R::Name>},
    {L"STYLE=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, From.Style != 0 ? L"INDEX" : L"RECORD");
         return false;
     }},
    {L"INDEX=", write::Quoted<&R::Index>},
    {L"COLUMNS=", write::Number<&R::Columns>},
    {L"SORT=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         std::wstring Rules;
         for (std::int32_t I = 1; I <= From.Sort.Count(); ++I) {
             if (I > 1) Rules.push_back(L',');
             Rules.push_back(StrUtil::QuoteChar());
             Rules.append(From.Sort.Item(I).Text).push_back(StrUtil::QuoteChar());
         }
         Out.Plain(Keyword, Rules);
         return false;
     }},
    {L"FLAGS=", write::FlagsNoBlank<&R::Flags, kTableFlags>},
    {L"TABLEID=", write::Number<&R::TableID>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
};

// The whole section in strict mode, in this order.
void CheckTable(const R& Read) {
    if (Read.Style != 0 && (Read.Name.empty() || Read.Name.size() > 3))
        Raise(L"NAME mancante o errato (max. 3 caratteri).");
    if (Read.Style == -1) Raise(L"Non è stato specificato lo stile.");
    if (Read.Style == 1) {
        if (Read.Sort.Count() == 0) Raise(L"Non sono state specificate le regole di ordinamento.");
        if (Read.Columns != Read.Sort.Count())
            Raise(L"Il numero di colonne differisce da quello delle regole di ordinamento.");
        if (!Read.Index.empty()) Raise(L"La proprietà INDEX= non si applica agli indici.");
    } else if (Read.Index.empty() && (Read.Flags & kTableCatalogue) == 0) {
        Raise(L"Non è stato specificato l'indice primario della tabella.");
    }
}

// The parameters of a field.

constexpr LadderRow<F> kFieldLadder[] = {
    {L"CAPTION=", read::Text<&F::Caption>},
    {L"DATATYPE=",
     [](F& Into, Parm& P) {
         P.Unquote();
         if (const Word* Known = FindWord(kDataTypes, P.Value))
             Into.DataType = Known->Value;
         else
             P.BadIfStrict();
         return false;
     }},
    {L"DEFAULT=",
     [](F& Into, Parm& P) {
         P.Unquote();
         Into.DefValues.append(P.Value).push_back(L'\0');
         return false;
     },
     Repeat::Any},
    {L"FLAGS=", read::Flags<&F::Flags, kFieldFlags>},
    {L"GROUPTAG=",
     [](F& Into, Parm& P) {
         const std::int32_t Tag = StrUtil::ToLong(StrUtil::Number(P.Value));
         if (Tag < 0) P.BadIfStrict();
         Into.GroupTag = Tag;
         return false;
     }},
    {L"LEVEL=",
     [](F& Into, Parm& P) {
         const std::int32_t Level = StrUtil::ToLong(StrUtil::Number(P.Value));
         if (Level < 1) P.BadIfStrict();
         Into.Level = Level;
         return false;
     }},
    {L"LINKMODE=",
     [](F& Into, Parm& P) {
         P.Unquote();
         P.Fold();
         const Word* const Known = FindWord(kLinkModes, P.Value);
         if (!Known) P.BadIfStrict();
         Into.LinkMode = Known ? Known->Value : 0;
         return false;
     }},
    {L"LINKTABLE=", read::Upper<&F::LinkTable>},
    {L"LINKTYPE=", read::Byte<&F::LinkType>},
    {L"LINKTYPERECPR=", read::Byte<&F::LinkTypeRecpr>},
    {L"NAME=", read::Upper<&F::Name>},
    {L"SEMANTIC=",
     [](F& Into, Parm& P) {
         P.Unquote();
         P.Fold();
         const Word* const Known = FindWord(kSemantics, P.Value);
         if (Known || P.Value.empty()) {
             Into.Semantic = Known ? Known->Value : 0;
         } else {
             const std::int32_t Code = StrUtil::ToLong(StrUtil::Number(P.Value));
             if (Code <= 0) P.BadIfStrict();
             Into.Semantic = Code;
         }
         return false;
     }},
    {L"SIZE=", read::Long<&F::Size>},
    {L"TAG=", read::Long<&F::Tag>},
    {L"VALIDATIONTABLE=", read::Upper<&F::ValidationTable>},
    {L"VISIBLE=", read::BoolOrTrue<&F::Visible>},
};

constexpr LineRow<const F> kFieldLines[] = {
    {L"TAG=", write::Number<&F::Tag>},
    {L"NAME=", write::Quoted<&F::Name>},
    {L"DATATYPE=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         const std::int32_t Code = From.DataType == kDataTypeLongToo ? 2 : From.DataType;
         const std::wstring_view Known = WordOf(kDataTypes, Code);
         Out.Plain(Keyword, Known.empty() ? L"TEXT" : Known);
         return false;
     }},
    {L"LEVEL=", write::Number<&F::Level>},
    {L"GROUPTAG=", write::Number<&F::GroupTag>},
    {L"SEMANTIC=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         const std::wstring_view Known = WordOf(kSemantics, From.Semantic);
         Out.Plain(Keyword, Known.empty() ? std::to_wstring(From.Semantic) : std::wstring(Known));
         return false;
     }},
    {L"VISIBLE=", write::Bool<&F::Visible>},
    {L"LINKTABLE=", write::Quoted<&F::LinkTable>},
    {L"LINKMODE=", write::OneWord<&F::LinkMode, kLinkModes>},
    {L"LINKTYPE=", write::Number<&F::LinkType>},
    {L"LINKTYPERECPR=", write::Number<&F::LinkTypeRecpr>},
    {L"VALIDATIONTABLE=", write::Quoted<&F::ValidationTable>},
    {L"CAPTION=", write::Quoted<&F::Caption>},
    // By hand, so without a blank; a field without flags shows FLAGS=NONE.
    {L"FLAGS=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Line(std::wstring(Keyword) + JoinWords(kFieldFlags, From.Flags));
         return false;
     }},
    {L"DEFAULT=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         std::wstring_view Rest = From.DefValues;
         for (;;) {
             const std::size_t End = Rest.find(L'\0');
             Out.Quoted(Keyword, Rest.substr(0, End));
             if (End == Rest.npos) return false;
             Rest.remove_prefix(End + 1);
         }
     }},
    {L"SIZE=", write::Number<&F::Size>},
};

// A field in strict mode, in this order; `Fields` are the stored ones, `Index` its own place among them.
void CheckField(const F& Read, const ParmList<F>& Fields, std::int32_t Index) {
    if (Read.Tag <= 0) Raise(L"TAG mancante o non valido.");
    if (Read.Name.empty()) Raise(L"NAME mancante.");
    for (std::int32_t I = 1; I <= Fields.Count(); ++I)
        if (I != Index && Fields.Item(I).Name == Read.Name) Raise(L"Il nome del campo non è univoco.");
    if (Read.DataType == 0) Raise(L"DATATYPE mancante o non valido.");
    if ((Read.Flags & kFixedSize) != 0 && Read.Size < 1 && (Read.DataType == kDataTypeText || Read.Size < 0))
        Raise(L"SIZE mancante o non valido.");
    if (!Read.LinkTable.empty() && Read.LinkMode == 0) Raise(L"LINKMODE mancante o non valido.");
    if (Read.LinkTable.empty() && Read.LinkMode != 0) Raise(L"LINKTABLE mancante o non valido.");
}

constexpr auto kTableFlagChoices = WordsOf(kTableFlags);
constexpr auto kStyleChoices = WordsOf(kTableStyles);
constexpr auto kFieldFlagChoices = NoneThen(kFieldFlags);
constexpr auto kDataTypeChoices = WordsOf(kDataTypes);
constexpr auto kLinkModeChoices = WordsOf(kLinkModes);

constexpr Choice kChoices[] = {
    {kParms, L"STYLE=", kStyleChoices},
    {kParms, L"FLAGS=", kTableFlagChoices},
    {kFieldParms, L"SEMANTIC=", kSemanticChoices},
    {kFieldParms, L"FLAGS=", kFieldFlagChoices},
    {kFieldParms, L"DATATYPE=", kDataTypeChoices},
    {kFieldParms, L"LINKMODE=", kLinkModeChoices},
};

constexpr vdbShared::ElementShape kFieldShape{
    .Word = kFields, .ParmsWord = kFieldParms, .ParmsCaption = L"Parametri"};

std::wstring FieldCaption(const F& Field) { return std::to_wstring(Field.Level) + L":" + Field.Name; }

bool SetFieldNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship) {
    vdbShared::AddElementNodes(Tree, kFieldShape, FieldCaption(Record.Fields.Item(Index)), {}, Key,
                               Relationship);
    return false;
}

using Fields = InRecord<&R::Fields>;

// A new field takes its place in the hierarchy from the field it follows. Answers its place, 0 on failure.
std::int32_t NewField(R& Record, const Place&, std::int32_t After) {
    F Fresh;
    Fresh.Visible = true;
    Fresh.Tag = GetFreeTag(Record.Fields);
    if (Fresh.Tag == 0) return 0;
    if (Record.Fields.Count() == 0) {
        Fresh.Level = 1;
    } else {
        const F& Before = Record.Fields.Item(After == 0 ? Record.Fields.Count() : After);
        const bool HeadsGroup = Before.Tag == Before.GroupTag;
        Fresh.Level = HeadsGroup ? Before.Level + 1 : Before.Level;
        Fresh.GroupTag = HeadsGroup ? Before.Tag : Before.GroupTag;
    }
    return vdbShared::NewElement(Record.Fields, After, std::move(Fresh));
}

constexpr ListSection<R> kLists[] = {
    {kFields, 0, vdbShared::ListOf<Fields>, NewField, SetFieldNode, NewAt::BehindSelected, Move::Yes,
     Delete::Yes},
};

}  // namespace

bool diTable::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diTable.SaveData", [&] {
        const bool SyntaxOn = Tree().SyntaxOn();
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        if (At.Key == kFieldParms) {
            const std::int32_t Index = vdbShared::PlaceOf(Tree(), At, 1, Self::No)[0];
            if (SaveFieldParm(Buffer, Index, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), Tree().NodeParent(vdbShared::FolderOf(Tree(), At.CurrFolder)),
                                   FieldCaption(Record().Fields.Item(Index)), NewItemKey);
        }
        return false;
    });
}

bool diTable::Save(RegData& Clsid) {
    return Trap(L"diTable.Save", [&] {
        CheckTags(Record().Fields);
        return Record().Save(Clsid);
    });
}

bool diTable::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diTable.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diTable::LoadData(RegData& Clsid) {
    return Trap(L"diTable.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid) || Tree().SetTools(kTools)) return true;
        // The root of a table is one of its own, with the pictures of a table.
        constexpr std::int32_t kTableImage = 1;
        constexpr std::int32_t kTableOpen = 2;
        const std::wstring Name = Clsid.Name();
        Tree().ClearNodes();
        Tree().AddNode({.Key = kRootKey, .Text = Name, .Image = kTableImage, .SelectedImage = kTableOpen});
        vdbShared::AddFolder(Tree(), kParms, vdbShared::kParmsCaption);
        vdbShared::AddLeaf(Tree(), kParms, vdbShared::kParmsCaption);
        vdbShared::AddFolder(Tree(), kFields, L"Campi", kind::kList);
        if (vdbShared::BuildLists(Tree(), Record(), kLists)) return true;
        return AddChoices(Tree(), kChoices);
    });
}

bool diTable::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diTable.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diTable::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diTable.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) || Out.Each(Record().Fields, [&](std::int32_t I) {
            return Out.Block(kFields, 1, [&] { return Out.One(kFieldParms, 2, {&I, 1}); });
        });
    });
}

bool diTable::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diTable.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        if (At.Key == kParms || At.Key == kFieldParms) vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diTable::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t Indent) {
    return Trap(L"diTable.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inner = vdbShared::InnerIndent(Indent);
            if (At.Key == kParms) return DispParm(Buffer, Inner);
            if (At.Key == kFieldParms)
                return DispFieldParm(Buffer, vdbShared::PlaceOf(Tree(), At, 1, Self::No, Item)[0], Inner);
            return false;
        });
    });
}

bool diTable::TlbrButtonClick(const std::wstring& Method, const std::wstring&, const std::wstring&,
                              const std::wstring&) {
    return vdbShared::RunTool(L"diTable.TlbrButtonClick", [&] {
        const TagFields Fields = TagFieldsOf(Record().Fields);
        return Method == L"CONSTANTS" ? ExportFieldsToConsts(kClassWord, Fields)
                                      : RunTagTool(Method, kClassWord, Fields, Tree());
    });
}

bool diTable::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diTable.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diTable::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diTable.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diTable::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(
        L"diTable.SaveParm", Scratch::Header, kParmLadder, Record(), Buffer, SyntaxOn,
        [](R& Read) { Read.Style = -1; },
        [&](R& Read) {
            if (SyntaxOn) CheckTable(Read);
            Record().Sort = std::move(Read.Sort);
        });
}

bool diTable::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diTable.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

bool diTable::SaveFieldParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveSection(L"diTable.SaveFieldParm", Scratch::Header, kFieldLadder, Record().Fields.Item(Index),
                       Buffer, SyntaxOn, [&](F& Read) {
                           CoreUtil::TrimEnd(Read.DefValues, std::wstring_view(L"\0", 1));
                           if (SyntaxOn) CheckField(Read, Record().Fields, Index);
                       });
}

bool diTable::DispFieldParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diTable.DispFieldParm", kFieldLines, std::as_const(Record().Fields.Item(Index)),
                       Buffer, Indent);
}

}  // namespace kv
