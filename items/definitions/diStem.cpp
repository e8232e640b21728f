#include "items/definitions/diStem.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
using vdbShared::PlaceOf;
namespace {

using R = StemRecord;
using F = StemFieldRecord;

constexpr std::wstring_view kTitles = L"TITLES";
constexpr std::wstring_view kMessage = L"MESSAGE";
constexpr std::wstring_view kFonts = L"FONTS";
constexpr std::wstring_view kCommands = L"COMMANDS";
constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
constexpr std::wstring_view kFields = L"FIELDS";
constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
constexpr std::wstring_view kFieldCaption = L"FIELDCAPTION";

// The parameters.

constexpr LadderRow<R> kParmLadder[] = {
    {L"STYLE=", read::ExactWord<&R::Style, kStemStyles>},
    {L"HELP=", read::Upper<&R::Help>},
    {L"HELPWWW=", read::Upper<&R::HelpWww>},
    {L"TIMEOUT=",
     [](R& Into, Parm& P) {
         const std::int32_t Seconds = StrUtil::ToLong(StrUtil::Number(P.Value));
         if (Seconds < 0 || Seconds > 60) Raise(L"Il valore di TIMEOUT= dev'essere compreso fra 0 e 60");
         Into.Timeout = Seconds;
         return false;
     }},
    {L"FLAGS=", read::Flags<&R::Flags, kNoWords>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
};

// The renderer knows the words of the field's table but for HASFOCUS; the reader keeps none of them.
constexpr auto kShownFlags = std::array<Word, 5>{kStemFieldFlags[0], kStemFieldFlags[1], kStemFieldFlags[2],
                                                 kStemFieldFlags[3], kStemFieldFlags[4]};

constexpr LineRow<const R> kParmLines[] = {
    {L"STYLE=", write::OneWord<&R::Style, kStemStyles>},
    {L"FLAGS=", write::Flags<&R::Flags, kShownFlags>},
    {L"HELP=", write::Quoted<&R::Help>},
    {L"HELPWWW=", write::Quoted<&R::HelpWww>},
    {L"TIMEOUT=", write::Number<&R::Timeout>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
};

// The parameters of a field.

constexpr LadderRow<F> kFieldLadder[] = {
    {L"DATATYPE=", read::FoldedWord<&F::DataType, kStemDataTypes>},
    {L"DEFAULT=", read::Text<&F::Default>},
    {L"FLAGS=", read::Flags<&F::Flags, kStemFieldFlags>},
    {L"HIDDEN=", read::BoolOrTrue<&F::Hidden>},
    {L"PADMASK=", read::Text<&F::PadMask>},
    {L"POSTFIX=", read::Text<&F::Postfix>},
    {L"PREFIX=", read::Text<&F::Prefix>},
    {L"SIZE=",
     [](F& Into, Parm& P) {
         const std::int32_t Size = StrUtil::ToLong(StrUtil::Number(P.Value));
         if (Size < 0) P.BadIfStrict();
         Into.MaxLen = Size;
         return false;
     }},
    {L"STOPWORD=", read::Upper<&F::StopWord>},
};

constexpr LineRow<const F> kFieldLines[] = {
    {L"DATATYPE=",
     [](const F& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, WordOf(kStemDataTypes, From.DataType & 1));
         return false;
     }},
    {L"DEFAULT=", write::Quoted<&F::Default>},
    {L"STOPWORD=", write::Quoted<&F::StopWord>},
    {L"SIZE=", write::Number<&F::MaxLen>},
    {L"HIDDEN=", write::Bool<&F::Hidden>},
    {L"PADMASK=", write::Quoted<&F::PadMask>},
    {L"POSTFIX=", write::Quoted<&F::Postfix>},
    {L"PREFIX=", write::Quoted<&F::Prefix>},
    {L"FLAGS=", write::FlagsNoBlank<&F::Flags, kStemFieldFlags>},
};

constexpr auto kStyleChoices = WordsOf(kStemStyles);
constexpr auto kFieldFlagChoices = NoneThen(kStemFieldFlags);
constexpr auto kDataTypeChoices = WordsOf(kStemDataTypes);

constexpr Choice kChoices[] = {
    {kParms, L"STYLE=", kStyleChoices},          {kParms, L"FLAGS=", kNoneOnly},
    {kFieldParms, L"FLAGS=", kFieldFlagChoices}, {kFieldParms, L"DATATYPE=", kDataTypeChoices},
    {kFieldParms, L"HIDDEN=", kBooleanWords},
};

// The lists.

constexpr vdbShared::ElementShape kFieldShape{.Word = kFields,
                                              .ParmsWord = kFieldParms,
                                              .ParmsCaption = L"Parametri",
                                              .InnerWord = kFieldCaption,
                                              .InnerCaption = L"Etichette"};

using Titles = InRecord<&R::Titles>;
using Messages = InRecord<&R::Messages>;
using Fonts = InRecord<&R::Fonts>;
using Commands = InRecord<&R::Commands>;
using Tips = InElement<Commands, &CommandRecord::ToolTips>;
using Fields = InRecord<&R::Fields>;
using Captions = InElement<Fields, &F::Captions>;

bool SetFieldNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship) {
    const F& Field = Record.Fields.Item(Index);
    vdbShared::AddElementNodes(Tree, kFieldShape, FirstCaptionNode(Field.Captions),
                               vdbShared::CaptionsOf(Field.Captions, CaptionNode<ParmItem>), Key,
                               Relationship);
    return false;
}

constexpr auto kOfFolder = vdbShared::LeafKeys::OfFolder;
constexpr auto kOfSection = vdbShared::LeafKeys::OfSection;

// A new label reads as a message until its section is saved, it is moved or the tree is built again.
constexpr ListSection<R> kLists[] = {
    {kTitles, 0, vdbShared::ListOf<Titles>, vdbShared::NewIn<Titles>,
     vdbShared::Leaf<Titles, kTitles, TitleNode<ParmItem>>, NewAt::End, Move::Yes, Delete::Yes},
    {kMessage, 0, vdbShared::ListOf<Messages>, vdbShared::NewIn<Messages>,
     vdbShared::Leaf<Messages, kMessage, MessageNode<ParmItem>>, NewAt::End, Move::Yes, Delete::Yes},
    {kFonts, 0, vdbShared::ListOf<Fonts>, vdbShared::NewIn<Fonts>,
     vdbShared::Leaf<Fonts, kFonts, FontNode<FontRecord>>, NewAt::End, Move::Yes, Delete::Yes},
    {kCommands, 0, vdbShared::ListOf<Commands>, NewCommandIn<Commands>, SetCommandNode<Commands>, NewAt::End,
     Move::Yes, Delete::Yes},
    {kFields, 0, vdbShared::ListOf<Fields>, vdbShared::NewIn<Fields>, SetFieldNode, NewAt::End, Move::Yes,
     Delete::Yes},
    {kCommandTips, 1, vdbShared::ListOf<Tips>, vdbShared::NewIn<Tips>,
     vdbShared::InnerLeaf<Tips, kCommandTips, kOfSection, MessageNode<ParmItem>, MessageNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
    {kFieldCaption, 1, vdbShared::ListOf<Captions>, vdbShared::NewIn<Captions>,
     vdbShared::InnerLeaf<Captions, kFieldCaption, kOfFolder, MessageNode<ParmItem>, CaptionNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements that ParmEditor reads and renders.
// clang-format off
constexpr ElementSection<R> kSections[] = {
    vdbShared::Edits<Fonts, ParmEditor::SaveFont, ParmEditor::DispFont, FontNode<FontRecord>>(kFonts, Self::Yes),
    vdbShared::Edits<Titles, ParmEditor::SaveTitle, ParmEditor::DispTitle, TitleNode<ParmItem>>(kTitles, Self::Yes),
    vdbShared::Edits<Messages, ParmEditor::SaveCaption, ParmEditor::DispCaption, MessageNode<ParmItem>>(kMessage, Self::Yes),
    vdbShared::Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    vdbShared::Edits<Tips, ParmEditor::SaveCaption, ParmEditor::DispCaption, MessageNode<ParmItem>>(kCommandTips, Self::Yes),
    vdbShared::Edits<Captions, SaveLabel, ParmEditor::DispCaption, CaptionNode<ParmItem>>(kFieldCaption, Self::Yes),
};
// clang-format on

constexpr vdbShared::FolderRow kFolders[] = {
    {kTitles, L"Titolo"},     {kMessage, L"Messaggio"}, {kFonts, L"Font"},
    {kCommands, L"Pulsanti"}, {kFields, L"Campi"},
};

}  // namespace

bool diStem::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diStem.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        if (At.Key == kFieldParms)
            return SaveFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No)[0], SyntaxOn);
        const auto* const Section = FindSection(kSections, At.Key);
        if (!Section) return false;
        if (vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags)) return true;
        // Whichever label was edited, the field is named by its first.
        if (At.Key == kFieldCaption)
            Tree().SetNodeText(
                vdbShared::ElementNode(Tree(), At, Self::No),
                FirstCaptionNode(Record().Fields.Item(PlaceOf(Tree(), At, 1, Self::No)[0]).Captions));
        return false;
    });
}

bool diStem::Save(RegData& Clsid) {
    return Trap(L"diStem.Save", [&] { return Record().Save(Clsid); });
}

bool diStem::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diStem.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diStem::LoadData(RegData& Clsid) {
    return Trap(L"diStem.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolders(Tree(), kFolders);
        return vdbShared::BuildLists(Tree(), Record(), kLists) || AddChoices(Tree(), kChoices);
    });
}

bool diStem::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diStem.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diStem::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diStem.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& Exported = Record();
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) || Out.Each(kMessage, Exported.Messages, 1) ||
               ExportCommands(Out, Exported.Commands, 1) || Out.Each(kFonts, Exported.Fonts, 1) ||
               Out.Each(kTitles, Exported.Titles, 1) || Out.Each(Exported.Fields, [&](std::int32_t N) {
                   return Out.Block(kFields, 1, [&] {
                       return Out.One(kFieldParms, 2, {&N, 1}) ||
                              Out.Inner(kFieldCaption, Exported.Fields.Item(N).Captions, N, 2);
                   });
               });
    });
}

bool diStem::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diStem.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diStem::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                      std::int32_t Indent) {
    return Trap(L"diStem.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kFieldParms)
                return DispFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No, Item)[0], Inside);
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diStem::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diStem.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diStem::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diStem.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diStem::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(
        L"diStem.SaveParm", Scratch::Parameters, kParmLadder, Record(), Buffer, SyntaxOn,
        [](R& Read) { Read.Style = -1; },
        [&](const R& Read) {
            if (SyntaxOn && Read.Style < 0) Raise(L"Non è stato specificato lo stile.");
        });
}

bool diStem::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diStem.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

bool diStem::SaveFieldParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveSection(L"diStem.SaveFieldParm", Scratch::Header, kFieldLadder, Record().Fields.Item(Index),
                       Buffer, SyntaxOn, [&](const F& Read) {
                           if (SyntaxOn && (Read.Flags & kStemPadding) != 0 && Read.PadMask.empty())
                               Raise(L"Non è stata specificata la maschera di pad.");
                       });
}

bool diStem::DispFieldParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diStem.DispFieldParm", kFieldLines, std::as_const(Record().Fields.Item(Index)),
                       Buffer, Indent);
}

}  // namespace kv
