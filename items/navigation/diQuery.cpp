// Sections and tree of a query.
#include "items/navigation/diQuery.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/vdbcModule.h"
#include "items/navigation/diQueryNodes.h"

namespace kv {

using query::kConstantCaption;
using query::kConstantParms;
using query::kConstants;
using query::kFieldCaption;
using query::kFieldParms;
using query::kFields;
using vdbShared::Edits;
using vdbShared::InnerLeaf;
using vdbShared::kParms;
using vdbShared::ListOf;
using vdbShared::NewIn;
using vdbShared::PlaceOf;
namespace {

using R = QueryRecord;

constexpr std::wstring_view kTitles = L"TITLES";
constexpr std::wstring_view kMessage = L"MESSAGE";
constexpr std::wstring_view kOptionMsg1 = L"OPTIONMSG1";
constexpr std::wstring_view kOptionMsg2 = L"OPTIONMSG2";
constexpr std::wstring_view kHtml = L"HTML";
constexpr std::wstring_view kHtmlRes = L"HTMLRES";
constexpr std::wstring_view kHtmlTempl = L"HTMLTEMPL";
constexpr std::wstring_view kHtmlResTempl = L"HTMLRESTEMPL";
constexpr std::wstring_view kCommands = L"COMMANDS";
constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
constexpr std::wstring_view kPopups = L"POPUPS";

constexpr vdbShared::FolderRow kFolders[] = {
    {kTitles, L"Titolo"},
    {kMessage, L"Messaggio"},
    {kOptionMsg1, L"Messaggio insieme A"},
    {kOptionMsg2, L"Messaggio insieme B"},
    {kHtml, L"HTML"},
    {kHtmlRes, L"HTML Risultato"},
    {kFields, L"Campi"},
    {kCommands, L"Pulsanti"},
    {kPopups, L"Popup"},
};
// Added when their own lists are filled, behind all others.
constexpr vdbShared::FolderRow kTemplateFolders[] = {
    {kHtmlTempl, L"WWW Templates"},
    {kHtmlResTempl, L"WWW Templates (Risultato)"},
};

// The lists.

using Titles = InRecord<&R::Titles>;
using Messages = InRecord<&R::Message>;
using OptionMsg1 = InRecord<&R::OptionMsg1>;
using OptionMsg2 = InRecord<&R::OptionMsg2>;
using Html = InRecord<&R::Html>;
using HtmlRes = InRecord<&R::HtmlRes>;
using HtmlTempl = InRecord<&R::HtmlTempl>;
using HtmlResTempl = InRecord<&R::HtmlResTempl>;
using Popups = InRecord<&R::Popups>;
using Commands = InRecord<&R::Commands>;
using Tips = InElement<Commands, &CommandRecord::ToolTips>;
using query::Fields;
using FieldCaptions = InElement<Fields, &QueryFieldRecord::Captions>;
using query::Values;
using ValueCaptions = InElement<Values, &MessageRecord::Message>;

template <class L, const std::wstring_view& Word, auto Caption>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diQuery.SetNode", [&] {
        return vdbShared::Leaf<L, Word, Caption>(Tree, Record, At, Index, Key, Relationship);
    });
}

constexpr auto kOfFolder = vdbShared::LeafKeys::OfFolder;
constexpr auto Title = TitleNode<ParmItem>;
constexpr auto Message = MessageNode<ParmItem>;
constexpr auto Label = CaptionNode<ParmItem>;
constexpr auto Page = HtmlNode<HtmlRecord>;

// In the order in which the tree is filled. A new caption of a field reads as a message until its section is
// saved, it is moved or the tree is built again. A tool tip that is new or has moved bears the key of its
// folder, those of a branch that is built the section word.
// clang-format off
constexpr ListSection<R> kLists[] = {
    {kCommands, 0, ListOf<Commands>, NewCommandWithTipIn<Commands>, SetCommandNode<Commands>, NewAt::End, Move::Yes, Delete::Yes},
    {kPopups, 0, ListOf<Popups>, NewIn<Popups>, SetNode<Popups, kPopups, NoCaption<PopupRecord>>, NewAt::End, Move::Yes, Delete::Yes},
    {kFields, 0, ListOf<Fields>, NewIn<Fields>, query::SetFieldNode, NewAt::End, Move::Yes, Delete::Yes},
    {kTitles, 0, ListOf<Titles>, NewIn<Titles>, SetNode<Titles, kTitles, Title>, NewAt::End, Move::Yes, Delete::Yes},
    {kMessage, 0, ListOf<Messages>, NewIn<Messages>, SetNode<Messages, kMessage, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kOptionMsg1, 0, ListOf<OptionMsg1>, NewIn<OptionMsg1>, SetNode<OptionMsg1, kOptionMsg1, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kOptionMsg2, 0, ListOf<OptionMsg2>, NewIn<OptionMsg2>, SetNode<OptionMsg2, kOptionMsg2, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtml, 0, ListOf<Html>, NewIn<Html>, SetNode<Html, kHtml, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtmlRes, 0, ListOf<HtmlRes>, NewIn<HtmlRes>, SetNode<HtmlRes, kHtmlRes, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtmlTempl, 0, ListOf<HtmlTempl>, NewIn<HtmlTempl>, SetNode<HtmlTempl, kHtmlTempl, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtmlResTempl, 0, ListOf<HtmlResTempl>, NewIn<HtmlResTempl>, SetNode<HtmlResTempl, kHtmlResTempl, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kCommandTips, 1, ListOf<Tips>, NewIn<Tips>, InnerLeaf<Tips, kCommandTips, kOfFolder, Message, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kFieldCaption, 1, ListOf<FieldCaptions>, NewIn<FieldCaptions>, InnerLeaf<FieldCaptions, kFieldCaption, kOfFolder, Message, Label>, NewAt::End, Move::Yes, Delete::Yes},
    {kConstants, 1, ListOf<Values>, NewMessageWithTextIn<Values>, query::SetConstantNode, NewAt::End, Move::Yes, Delete::Yes},
    {kConstantCaption, 2, ListOf<ValueCaptions>, NewIn<ValueCaptions>, InnerLeaf<ValueCaptions, kConstantCaption, kOfFolder, Message, Message>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements that ParmEditor reads and renders.
constexpr ElementSection<R> kSections[] = {
    Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    Edits<Tips, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kCommandTips, Self::Yes),
    Edits<Html, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtml, Self::Yes),
    Edits<HtmlRes, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtmlRes, Self::Yes),
    Edits<HtmlTempl, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtmlTempl, Self::Yes),
    Edits<HtmlResTempl, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtmlResTempl, Self::Yes),
    Edits<Messages, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kMessage, Self::Yes),
    Edits<OptionMsg1, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kOptionMsg1, Self::Yes),
    Edits<OptionMsg2, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kOptionMsg2, Self::Yes),
    Edits<Popups, ParmEditor::SavePopup, ParmEditor::DispPopup, nullptr>(kPopups, Self::Yes),
    Edits<Titles, ParmEditor::SaveTitle, ParmEditor::DispTitle, Title>(kTitles, Self::Yes),
    Edits<FieldCaptions, SaveLabel, ParmEditor::DispCaption, Label>(kFieldCaption, Self::Yes),
    Edits<ValueCaptions, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kConstantCaption, Self::Yes),
};
// clang-format on

// Sections that take a text and do nothing with it.
constexpr std::wstring_view kSilent[] = {L"", kCommands, kFields, kConstants};

// Sections of which EditData makes a further leaf.
constexpr std::wstring_view kLeafOnly[] = {kParms, kCommandParms, kFieldParms, kConstantParms};

bool IsOneOf(std::span<const std::wstring_view> Words, std::wstring_view Word) {
    return std::find(Words.begin(), Words.end(), Word) != Words.end();
}

/// How much of a value's name its saved node shows.
constexpr std::size_t kNameShown = 255;

// The value words. The reader of the query's own FLAGS= refuses those of a field, which are offered all the
// same.
constexpr auto kFlagChoices = NoneThen(kQueryFieldFlags);

constexpr Choice kParmChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices},
};

bool OfferChoices(DesignTree& Tree) {
    return TipsDefaults(Tree, kParms, L"TOOLALIGN=", {}) || AddChoices(Tree, kParmChoices) ||
           HtmlDefaults(Tree, kHtml) || HtmlDefaults(Tree, kHtmlRes) || HtmlDefaults(Tree, kHtmlTempl) ||
           HtmlDefaults(Tree, kHtmlResTempl);
}

}  // namespace

bool diQuery::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diQuery.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        if (At.Key == kFieldParms)
            return SaveFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No)[0], SyntaxOn);
        if (At.Key == kConstantParms) {
            const Place Of = PlaceOf(Tree(), At, 2, Self::No);
            if (SaveConstParm(Buffer, Of[0], Of[1])) return true;
            NewItemKey = Values::Of(Record(), Of).Item(Of[1]).Name.substr(0, kNameShown);
            Tree().SetNodeText(vdbShared::ElementNode(Tree(), At, Self::No), query::ConstantNode(NewItemKey));
            return false;
        }
        const auto* const Section = FindSection(kSections, At.Key);
        if (!Section) return !IsOneOf(kSilent, At.Key);
        if (vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags)) return true;
        // Whichever caption was edited, the field is named by its first.
        if (At.Key == kFieldCaption)
            Tree().SetNodeText(
                vdbShared::ElementNode(Tree(), At, Self::No),
                FirstCaptionNode(FieldCaptions::Of(Record(), PlaceOf(Tree(), At, 1, Self::No))));
        return false;
    });
}

bool diQuery::Save(RegData& Clsid) {
    return Trap(L"diQuery.Save", [&] { return Record().Save(Clsid); });
}

bool diQuery::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diQuery.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diQuery::LoadData(RegData& Clsid) {
    return Trap(L"diQuery.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolders(Tree(), kFolders);
        for (const ListSection<R>& List : kLists) {
            if (List.Owners > 0) continue;
            if (const auto* const Row = FindSection(kTemplateFolders, List.Word))
                vdbShared::AddFolders(Tree(), {Row, 1});
            if (vdbShared::BuildList(Tree(), Record(), List)) return true;
        }
        return OfferChoices(Tree());
    });
}

bool diQuery::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diQuery.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diQuery::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diQuery.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        R& From = Record();
        vdbShared::Exporter Out(*this, Buffer);
        // A section in a block of its own word, around the block that it has itself.
        const auto Double = [&](std::wstring_view Word, std::int32_t Indent, Positions At) {
            return Out.Block(Word, Indent, [&] { return Out.One(Word, Indent + 1, At); });
        };
        const auto Value = [&](std::int32_t F, std::int32_t V) {
            const auto& Captions = From.Fields.Item(F).Defaults.Message.Item(V).Message;
            return Double(kConstantParms, 2, std::array{F, V}) || Out.Each(Captions, [&](std::int32_t K) {
                return Double(kConstantCaption, 3, std::array{F, V, K});
            });
        };
        const auto Field = [&](std::int32_t F) {
            const QueryFieldRecord& Each = From.Fields.Item(F);
            return Out.Block(kFields, 1, [&] {
                return Out.One(kFieldParms, 2, {&F, 1}) || Out.Each(Each.Captions, [&](std::int32_t K) {
                    return Double(kFieldCaption, 2, std::array{F, K});
                }) || Out.Each(Each.Defaults.Message, [&](std::int32_t V) { return Value(F, V); });
            });
        };
        return Out.One(kParms, 1) || ExportCommands(Out, From.Commands, 3) ||
               Out.Each(kPopups, From.Popups, 1) || Out.Each(From.Fields, Field) ||
               Out.Each(kHtml, From.Html, 1) || Out.Each(kHtmlRes, From.HtmlRes, 1) ||
               Out.Each(kMessage, From.Message, 1) || Out.Each(kOptionMsg1, From.OptionMsg1, 1) ||
               Out.Each(kOptionMsg2, From.OptionMsg2, 1) || Out.Each(kTitles, From.Titles, 1) ||
               Out.Each(kHtmlTempl, From.HtmlTempl, 1) || Out.Each(kHtmlResTempl, From.HtmlResTempl, 1);
    });
}

bool diQuery::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diQuery.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        if (!IsOneOf(kLeafOnly, At.Key)) return false;
        return vdbShared::AddNamelessLeaf(L"diQuery.SetNode", Tree(), At, NewItemKey);
    });
}

bool diQuery::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                       std::int32_t Indent) {
    return Trap(L"diQuery.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            // The block decides, not whether there is an indent.
            const std::int32_t Inside = ExternalTarget ? Indent + 1 : Indent;
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kFieldParms)
                return DispFieldParm(Buffer, PlaceOf(Tree(), At, 1, Self::No, Item)[0], Inside);
            if (At.Key == kConstantParms) {
                const Place Of = PlaceOf(Tree(), At, 2, Self::No, Item);
                return DispConstParm(Buffer, Of[0], Of[1], Inside);
            }
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diQuery::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diQuery.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diQuery::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diQuery.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
