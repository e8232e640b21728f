#include "items/definitions/diStem.h"

#include <utility>

#include "editor/ParmEditor.h"
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
    {L"STYLE=",
     [](R& Into, Parm& P) {
         if (const Word* Known = FindWord(kStemStyles, P.Value))
             Into.Style = Known->Value;
         else
             P.BadIfStrict();
         return false;
     }},
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
    {L"DATATYPE=",
     [](F& Into, Parm& P) {
         P.Fold();
         if (const Word* Known = FindWord(kStemDataTypes, P.Value))
             Into.DataType = Known->Value;
         else
             P.BadIfStrict();
         return false;
     }},
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

std::wstring FieldNodeCaption(const F& Field) {
    return Field.Captions.Count() == 0 ? L"Campo: ????" : FieldCaptionNode(Field.Captions.Item(1));
}

ParmList<ParmItem>& TipsOf(R& Record, const Place& At) { return Record.Commands.Item(At[0]).ToolTips; }
ParmList<ParmItem>& CaptionsOf(R& Record, const Place& At) { return Record.Fields.Item(At[0]).Captions; }

template <auto Member>
ParmListBase& ListOf(R& Record, const Place&) {
    return Record.*Member;
}
template <auto Member>
std::int32_t NewIn(R& Record, const Place&, std::int32_t After) {
    return vdbShared::NewElement(Record.*Member, After);
}
template <const std::wstring_view& Word, auto Member, auto Caption>
bool LeafIn(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
            std::optional<std::int32_t> Relationship) {
    return vdbShared::SetLeaf(Tree, Word, Caption((Record.*Member).Item(Index)), Key,
                              Relationship == relation::kChild ? std::nullopt : Relationship);
}

constexpr ListSection<R> kLists[] = {
    {kTitles, 0, ListOf<&R::Titles>, NewIn<&R::Titles>, LeafIn<kTitles, &R::Titles, TitleNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
    {kMessage, 0, ListOf<&R::Messages>, NewIn<&R::Messages>,
     LeafIn<kMessage, &R::Messages, MessageNode<ParmItem>>, NewAt::End, Move::Yes, Delete::Yes},
    {kFonts, 0, ListOf<&R::Fonts>, NewIn<&R::Fonts>, LeafIn<kFonts, &R::Fonts, FontNode<FontRecord>>,
     NewAt::End, Move::Yes, Delete::Yes},
    {kCommands, 0, ListOf<&R::Commands>,
     [](R& Record, const Place&, std::int32_t After) {
         CommandRecord Fresh;
         Fresh.Code = L"?????";
         return vdbShared::NewElement(Record.Commands, After, std::move(Fresh));
     },
     [](DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         return CommandNodeAdd(Record.Commands.Item(Index), Tree, Key, Relationship);
     },
     NewAt::End, Move::Yes, Delete::Yes},
    {kFields, 0, ListOf<&R::Fields>, NewIn<&R::Fields>,
     [](DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         const F& Field = Record.Fields.Item(Index);
         vdbShared::AddElementNodes(Tree, kFieldShape, FieldNodeCaption(Field),
                                    vdbShared::CaptionsOf(Field.Captions, CaptionNode<ParmItem>), Key,
                                    Relationship);
         return false;
     },
     NewAt::End, Move::Yes, Delete::Yes},
    {kCommandTips, 1, [](R& Record, const Place& At) -> ParmListBase& { return TipsOf(Record, At); },
     [](R& Record, const Place& At, std::int32_t After) {
         return vdbShared::NewElement(TipsOf(Record, At), After);
     },
     [](DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         return vdbShared::SetInnerNode(Tree, MessageNode(TipsOf(Record, At).Item(Index)), Key, Relationship,
                                        vdbShared::LeafKeys::OfSection, kCommandTips);
     },
     NewAt::End, Move::Yes, Delete::Yes},
    // A new label reads as a message until it is moved or the tree is built again.
    {kFieldCaption, 1, [](R& Record, const Place& At) -> ParmListBase& { return CaptionsOf(Record, At); },
     [](R& Record, const Place& At, std::int32_t After) {
         return vdbShared::NewElement(CaptionsOf(Record, At), After);
     },
     [](DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         const ParmItem& Label = CaptionsOf(Record, At).Item(Index);
         return vdbShared::SetInnerNode(
             Tree, Relationship == relation::kChild ? MessageNode(Label) : CaptionNode(Label), Key,
             Relationship);
     },
     NewAt::End, Move::Yes, Delete::Yes},
};

struct FolderRow {
    std::wstring_view Word;
    std::wstring_view Caption;
};
constexpr FolderRow kFolders[] = {
    {kTitles, L"Titolo"},     {kMessage, L"Messaggio"}, {kFonts, L"Font"},
    {kCommands, L"Pulsanti"}, {kFields, L"Campi"},
};

}  // namespace

bool diStem::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diStem.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        const auto Leaf = [&] { return PlaceOf(Tree(), At, 0, Self::Yes)[0]; };
        const auto Element = [&] { return Tree().NodeParent(vdbShared::FolderOf(Tree(), At.CurrFolder)); };
        const auto Show = [&](const std::wstring& Key, std::wstring Caption) {
            vdbShared::ShowCaption(Tree(), Key, std::move(Caption), NewItemKey);
            return false;
        };
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        if (At.Key == kFonts) {
            FontRecord& Edited = Record().Fonts.Item(Leaf());
            return ParmEditor::SaveFont(Edited, Buffer, Flags) || Show(At.CurrItem, FontNode(Edited));
        }
        if (At.Key == kTitles) {
            ParmItem& Edited = Record().Titles.Item(Leaf());
            return ParmEditor::SaveTitle(Edited, Buffer, Flags) || Show(At.CurrItem, TitleNode(Edited));
        }
        if (At.Key == kMessage) {
            ParmItem& Edited = Record().Messages.Item(Leaf());
            return ParmEditor::SaveCaption(Edited, Buffer, Flags) || Show(At.CurrItem, MessageNode(Edited));
        }
        if (At.Key == kCommandParms) {
            CommandRecord& Edited = Record().Commands.Item(PlaceOf(Tree(), At, 1, Self::No)[0]);
            return ParmEditor::SaveCommand(Edited, Buffer, Flags) || Show(Element(), Edited.Code);
        }
        if (At.Key == kCommandTips) {
            const Place Of = PlaceOf(Tree(), At, 1, Self::Yes);
            ParmItem& Edited = TipsOf(Record(), Of).Item(Of[1]);
            return ParmEditor::SaveCaption(Edited, Buffer, Flags) || Show(At.CurrItem, MessageNode(Edited));
        }
        if (At.Key == kFieldParms)
            return SaveFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No)[0], SyntaxOn);
        if (At.Key == kFieldCaption) {
            const Place Of = PlaceOf(Tree(), At, 1, Self::Yes);
            std::wstring Caption;
            if (CaptionSave(Buffer, CaptionsOf(Record(), Of).Item(Of[1]), Caption, Flags)) return true;
            // Whichever label was edited, the field is named by its first.
            Tree().SetNodeText(Element(), FieldNodeCaption(Record().Fields.Item(Of[0])));
            return Show(At.CurrItem, Caption);
        }
        return false;
    });
}

bool diStem::Save(RegData& Clsid) {
    return Trap(L"diStem.Save", [&] { return Record().Save(Clsid); });
}

bool diStem::MoveData(Head& At, std::int32_t Direction) {
    return Trap(L"diStem.MoveData", [&] {
        const auto* const List = FindSection(kLists, At.Key);
        return List && vdbShared::MoveInSection(Tree(), Record(), *List, At, Direction);
    });
}

bool diStem::LoadData(RegData& Clsid) {
    return Trap(L"diStem.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        for (const FolderRow& Row : kFolders)
            vdbShared::AddFolder(Tree(), Row.Word, Row.Caption, kind::kList);
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
        const auto One = [&](std::wstring_view Section, Positions Item, std::int32_t Indent) {
            return DispData(vdbShared::ExportHead(Section), Buffer, true, Item, Indent);
        };
        const auto Each = [](const ParmListBase& List, auto&& Run) {
            for (std::int32_t I = 1; I <= List.Count(); ++I)
                if (Run(I)) return true;
            return false;
        };
        const auto Plain = [&](std::wstring_view Section, const ParmListBase& List) {
            return Each(List, [&](std::int32_t I) { return One(Section, {&I, 1}, 1); });
        };
        const auto Inner = [&](std::wstring_view Section, const ParmListBase& List, std::int32_t Owner,
                               std::int32_t Indent) {
            return Each(List, [&](std::int32_t K) {
                const std::array<std::int32_t, 2> Of{Owner, K};
                return One(Section, Of, Indent);
            });
        };
        return One(kParms, {}, 1) || Plain(kMessage, Exported.Messages) ||
               Each(Exported.Commands,
                    [&](std::int32_t C) {
                        return One(kCommands, {&C, 1}, 1) ||
                               Inner(kCommandTips, Exported.Commands.Item(C).ToolTips, C, 1);
                    }) ||
               Plain(kFonts, Exported.Fonts) || Plain(kTitles, Exported.Titles) ||
               Each(Exported.Fields, [&](std::int32_t F) {
                   return vdbShared::WrapSection(Buffer, kFields, true, 1, [&] {
                       return One(kFieldParms, {&F, 1}, 2) ||
                              Inner(kFieldCaption, Exported.Fields.Item(F).Captions, F, 2);
                   });
               });
    });
}

bool diStem::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diStem.EditData", [&] {
        const auto* const List = FindSection(kLists, At.Key);
        return List && vdbShared::AddElement(Tree(), Record(), *List, At, NewItemKey);
    });
}

bool diStem::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                      std::int32_t Indent) {
    return Trap(L"diStem.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        const auto Leaf = [&] { return PlaceOf(Tree(), At, 0, Self::Yes, Item)[0]; };
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kFonts) return ParmEditor::DispFont(Record().Fonts.Item(Leaf()), Buffer, Flags);
            if (At.Key == kTitles) return ParmEditor::DispTitle(Record().Titles.Item(Leaf()), Buffer, Flags);
            if (At.Key == kMessage)
                return ParmEditor::DispCaption(Record().Messages.Item(Leaf()), Buffer, Flags);
            if (At.Key == kCommandParms)
                return ParmEditor::DispCommand(
                    Record().Commands.Item(PlaceOf(Tree(), At, 1, Self::No, Item)[0]), Buffer, Flags);
            if (At.Key == kCommandTips) {
                const Place Of = PlaceOf(Tree(), At, 1, Self::Yes, Item);
                return ParmEditor::DispCaption(TipsOf(Record(), Of).Item(Of[1]), Buffer, Flags);
            }
            if (At.Key == kFieldParms)
                return DispFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No, Item)[0], Inside);
            if (At.Key == kFieldCaption) {
                const Place Of = PlaceOf(Tree(), At, 1, Self::Yes, Item);
                return ParmEditor::DispCaption(CaptionsOf(Record(), Of).Item(Of[1]), Buffer, Flags);
            }
            return false;
        });
    });
}

bool diStem::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diStem.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diStem::DeleteData(const Head& At, bool Group) {
    return Trap(L"diStem.DeleteData", [&] {
        if (const auto* const List = FindSection(kLists, At.Key))
            vdbShared::DeleteInSection(Tree(), Record(), *List, At, Group);
        return false;
    });
}

bool diStem::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"diStem.SaveParm", Text, [&] {
        R Scratch;
        Record().CopyTo(Scratch);
        Scratch.Style = -1;
        ClearParmCheck();
        if (ReadLadder(Text, kParmLadder, Scratch, SyntaxOn)) return true;
        if (SyntaxOn && Scratch.Style < 0) Raise(L"Non è stato specificato lo stile.");
        std::move(Scratch).CopyTo(Record());
        return false;
    });
}

bool diStem::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diStem.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

bool diStem::SaveFieldParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"diStem.SaveFieldParm", Text, [&] {
        F& Stored = Record().Fields.Item(Index);
        F Scratch = Stored.MakeScratch();
        ClearParmCheck();
        if (ReadLadder(Text, kFieldLadder, Scratch, SyntaxOn)) return true;
        if (SyntaxOn && (Scratch.Flags & kStemPadding) != 0 && Scratch.PadMask.empty())
            Raise(L"Non è stata specificata la maschera di pad.");
        std::move(Scratch).CopyTo(Stored);
        return false;
    });
}

bool diStem::DispFieldParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return Trap(L"diStem.DispFieldParm", [&] {
        const F& Field = Record().Fields.Item(Index);
        LineWriter Out{Buffer, Indent};
        if (WriteLines(Out, kFieldLines, Field)) return true;
        DispHeader(Buffer, Field, Indent);
        return false;
    });
}

}  // namespace kv
