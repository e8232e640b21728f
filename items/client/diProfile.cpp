// Sections and tree of a display profile.
#include "items/client/diProfile.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/TagTools.h"
#include "frame/vdbcModule.h"
#include "items/client/diProfileNodes.h"

namespace kv {

using vdbShared::Edits;
using vdbShared::InnerLeaf;
using vdbShared::kParms;
using vdbShared::ListOf;
using vdbShared::NewIn;
using vdbShared::PlaceOf;
namespace {

using R = ProfileRecord;

constexpr std::wstring_view kClassWord = L"PROFILE";
constexpr std::wstring_view kTools[] = {L"FINDTAG", L"RENUMTAG", L"MAPTABLE"};

constexpr std::wstring_view kTextFonts = L"TEXTFONTS";
constexpr std::wstring_view kCommands = L"COMMANDS";
constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
constexpr std::wstring_view kPopups = L"POPUPS";
constexpr std::wstring_view kTitles = L"TITLES";
constexpr std::wstring_view kRecHtml = L"RECHTML";
constexpr std::wstring_view kLoanHtml = L"LOANHTML";
constexpr std::wstring_view kHtml = L"HTML";
constexpr std::wstring_view kFormats = L"FORMATS";
constexpr std::wstring_view kFormatParms = L"FORMATPARMS";
constexpr std::wstring_view kFormatCaption = L"FORMATCAPTION";
constexpr std::wstring_view kLoanTables = L"LOANTABLES";
constexpr std::wstring_view kLoanTableParms = L"LOANTABLEPARMS";
constexpr std::wstring_view kLoanTableCaption = L"LOANTABLECAPTION";
constexpr std::wstring_view kFields = L"FIELDS";
constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
constexpr std::wstring_view kFieldCaption = L"FIELDCAPTION";

// The folders but that of HTML, which comes behind the nodes of all others. TEXTFONTS has none.
constexpr vdbShared::FolderRow kFolders[] = {
    {kCommands, L"Pulsanti"},
    {kPopups, L"Popup"},
    {kTitles, L"Titolo"},
    {kRecHtml, L"Template Record"},
    {kLoanHtml, L"Template Disponibilità"},
    {kFormats, L"Formati"},
    {kLoanTables, L"Tabelle richiedibilità"},
    {kFields, L"Campi"},
};

// The lists.

using TextFonts = InRecord<&R::TextFonts>;
using Commands = InRecord<&R::Commands>;
using Tips = InElement<Commands, &CommandRecord::ToolTips>;
using Popups = InRecord<&R::Popups>;
using Titles = InRecord<&R::Titles>;
using RecHtml = InRecord<&R::RecHtml>;
using LoanHtml = InRecord<&R::LoanHtml>;
using Html = InRecord<&R::Html>;
using Formats = InRecord<&R::Formats>;
using FormatCaptions = InElement<Formats, &FormatRecord::Captions>;
using LoanTables = InRecord<&R::LoanTables>;
using LoanTableCaptions = InElement<LoanTables, &LoanTableRecord::Captions>;
using Fields = InRecord<&R::Fields>;
using FieldCaptions = InElement<Fields, &ProfileFieldRecord::Captions>;

template <class L, const std::wstring_view& Word, auto Caption>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diProfile.SetNode", [&] {
        return vdbShared::Leaf<L, Word, Caption>(Tree, Record, At, Index, Key, Relationship);
    });
}

// Where no tag is free the field gets the first; the check of Save then tells.
std::int32_t NewField(R& Record, const Place&, std::int32_t After) {
    ProfileFieldRecord Fresh;
    Fresh.Tag = GetFreeTag(Record.Fields);
    if (Fresh.Tag == 0) {
        CoreUtil::Instance().ForgetError();
        Fresh.Tag = 1;
    }
    return vdbShared::NewElement(Record.Fields, After, std::move(Fresh));
}

// Fields are named by their tags: after a renumbering their nodes show the new ones.
void ShowTags(DesignTree& Tree, R& Record) {
    for (std::int32_t I = 1; I <= Record.Fields.Count(); ++I) {
        const std::wstring Node = Tree.NodeAt(kFields, I);
        if (Node.empty()) return;  // made since the tree was built
        const ProfileFieldRecord& Field = Record.Fields.Item(I);
        if (Field.Captions.Count() > 0) Tree.SetNodeText(Node, FieldNode(Field));
    }
}

constexpr auto kOfSection = vdbShared::LeafKeys::OfSection;
constexpr auto Title = TitleNode<ParmItem>;
constexpr auto Message = MessageNode<ParmItem>;
constexpr auto Label = CaptionNode<ParmItem>;
constexpr auto Page = HtmlNode<HtmlRecord>;
constexpr auto Font = FontNode<FontRecord>;

// In the order in which the tree is filled. A new label reads as a message until its section is saved, it is
// moved or the tree is built again.
// clang-format off
constexpr ListSection<R> kLists[] = {
    {kFields, 0, ListOf<Fields>, NewField, profile::SetFieldNode, NewAt::End, Move::Yes, Delete::Yes},
    {kCommands, 0, ListOf<Commands>, NewCommandIn<Commands>, SetCommandNode<Commands>, NewAt::End, Move::Yes, Delete::Yes},
    {kPopups, 0, ListOf<Popups>, NewIn<Popups>, SetNode<Popups, kPopups, NoCaption<PopupRecord>>, NewAt::End, Move::Yes, Delete::Yes},
    {kFormats, 0, ListOf<Formats>, NewIn<Formats>, profile::SetFormatNode, NewAt::End, Move::Yes, Delete::Yes},
    {kLoanTables, 0, ListOf<LoanTables>, NewIn<LoanTables>, profile::SetLoanTableNode, NewAt::End, Move::Yes, Delete::Yes},
    {kTitles, 0, ListOf<Titles>, NewIn<Titles>, SetNode<Titles, kTitles, Title>, NewAt::End, Move::Yes, Delete::Yes},
    {kRecHtml, 0, ListOf<RecHtml>, NewIn<RecHtml>, SetNode<RecHtml, kRecHtml, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kLoanHtml, 0, ListOf<LoanHtml>, NewIn<LoanHtml>, SetNode<LoanHtml, kLoanHtml, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtml, 0, ListOf<Html>, NewIn<Html>, SetNode<Html, kHtml, Page>, NewAt::End, Move::Yes, Delete::Yes},
    {kTextFonts, 0, ListOf<TextFonts>, NewIn<TextFonts>, nullptr, NewAt::End, Move::Yes, Delete::Yes},
    {kCommandTips, 1, ListOf<Tips>, NewIn<Tips>, InnerLeaf<Tips, kCommandTips, kOfSection, Message, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kFormatCaption, 1, ListOf<FormatCaptions>, NewIn<FormatCaptions>, InnerLeaf<FormatCaptions, kFormatCaption, kOfSection, Message, Label>, NewAt::End, Move::Yes, Delete::Yes},
    {kLoanTableCaption, 1, ListOf<LoanTableCaptions>, NewIn<LoanTableCaptions>, InnerLeaf<LoanTableCaptions, kLoanTableCaption, kOfSection, Message, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kFieldCaption, 1, ListOf<FieldCaptions>, NewIn<FieldCaptions>, InnerLeaf<FieldCaptions, kFieldCaption, kOfSection, Message, Label>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements that ParmEditor reads and renders.
constexpr ElementSection<R> kSections[] = {
    Edits<TextFonts, ParmEditor::SaveFont, ParmEditor::DispFont, Font>(kTextFonts, Self::Yes),
    Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    Edits<Tips, SaveLabel, ParmEditor::DispCaption, Label>(kCommandTips, Self::Yes),
    Edits<Popups, ParmEditor::SavePopup, ParmEditor::DispPopup, nullptr>(kPopups, Self::Yes),
    Edits<Titles, ParmEditor::SaveTitle, ParmEditor::DispTitle, Title>(kTitles, Self::Yes),
    Edits<RecHtml, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kRecHtml, Self::Yes),
    Edits<LoanHtml, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kLoanHtml, Self::Yes),
    Edits<Html, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtml, Self::Yes),
    Edits<FormatCaptions, SaveLabel, ParmEditor::DispCaption, Label>(kFormatCaption, Self::Yes),
    Edits<LoanTableCaptions, SaveLabel, ParmEditor::DispCaption, Label>(kLoanTableCaption, Self::Yes),
    Edits<FieldCaptions, SaveLabel, ParmEditor::DispCaption, Label>(kFieldCaption, Self::Yes),
};
// Shown on the button's own node, which takes no text: COMMANDPARMS below it edits the same.
constexpr ElementSection<R> kCommandSection =
    Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, nullptr>(kCommands, Self::Yes);
// clang-format on

// Sections that take a text and do nothing with it.
constexpr std::wstring_view kSilent[] = {L"", kCommands, kFields, kFormats, kLoanTables};

// The value words.

constexpr auto kAlignChoices = WordsOf(kProfileAligns);
constexpr auto kWidthChoices = WordsOf(kProfileWidths);
constexpr auto kFlagChoices = ThenNone(kProfileFlags);
constexpr std::array<std::wstring_view, 6> kImageOptionChoices{L"NONE",       L"ALIGNBOTTOM", L"ALIGNLEFT",
                                                               L"ALIGNRIGHT", L"ALIGNTOP",    L"LINKS"};
constexpr auto kFieldFlagChoices = ThenNone(kProfileFieldFlags);
constexpr auto kStyleChoices = WordsOf(kFormatStyles);
constexpr auto kStyleFlagChoices = WordsOf(kFormatStyleFlags);
constexpr auto kDispTypeChoices = WordsOf(kDispTypes);

constexpr Choice kParmChoices[] = {
    {kParms, L"ALIGN=", kAlignChoices},
    {kParms, L"WIDTH=", kWidthChoices},
    {kParms, L"FLAGS=", kFlagChoices},
    {kParms, L"IMAGEOPTION=", kImageOptionChoices},
};
constexpr Choice kElementChoices[] = {
    {kFieldParms, L"CANCEL=", kBooleanWords},     {kFieldParms, L"DEFAULT=", kBooleanWords},
    {kFieldParms, L"SEPARATOR=", kBooleanWords},  {kFieldParms, L"FLAGS=", kFieldFlagChoices},
    {kFormatParms, L"DEFSTYLE=", kBooleanWords},  {kFormatParms, L"STYLE=", kStyleChoices},
    {kFormatParms, L"STYLE=", kStyleFlagChoices}, {kFormatParms, L"DISPTYPE=", kDispTypeChoices},
};

bool OfferChoices(DesignTree& Tree) {
    return AddChoices(Tree, kParmChoices) || ActionDefaults(Tree, kFieldParms, L"ACTION=") ||
           AddChoices(Tree, kElementChoices) || TipsDefaults(Tree, kParms) ||
           ToolTipsDefaults(Tree, kParms) || TipsDefaults(Tree, kParms, L"LOANALIGN=", {}) ||
           TipsDefaults(Tree, kParms, L"TOOLALIGN=", {}) || HtmlDefaults(Tree, kHtml);
}

}  // namespace

bool diProfile::TlbrButtonClick(const std::wstring& Method, const std::wstring&, const std::wstring&,
                                const std::wstring&) {
    return vdbShared::RunTool(L"diProfile.TlbrButtonClick", [&] {
        if (Method == L"MAPTABLE") return MapTable();
        if (RunTagTool(Method, kClassWord, TagFieldsOf(Record().Fields), Tree())) return true;
        if (Method == L"RENUMTAG") ShowTags(Tree(), Record());
        return false;
    });
}

bool diProfile::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diProfile.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        // Parsers that hand back what the element's node shows.
        const auto Element = [&](auto Parser) {
            std::wstring Caption;
            if ((this->*Parser)(Buffer, PlaceOf(Tree(), At, 1, Self::No)[0], SyntaxOn, Caption)) return true;
            vdbShared::ShowCaption(Tree(), vdbShared::ElementNode(Tree(), At, Self::No), std::move(Caption),
                                   NewItemKey);
            return false;
        };
        if (At.Key == kFormatParms) return Element(&diProfile::SaveFormatParm);
        if (At.Key == kLoanTableParms) return Element(&diProfile::SaveLoanTableParm);
        if (At.Key == kFieldParms) return Element(&diProfile::SaveFieldParm);
        if (const auto* const Section = FindSection(kSections, At.Key))
            return vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
        return std::find(std::begin(kSilent), std::end(kSilent), At.Key) == std::end(kSilent);
    });
}

bool diProfile::Save(RegData& Clsid) {
    return Trap(L"diProfile.Save", [&] {
        CheckTags(Record().Fields, [](std::int32_t Earlier, std::int32_t Later) {
            return L"#" + std::to_wstring(Earlier) + L" e #" + std::to_wstring(Later);
        });
        return Record().Save(Clsid);
    });
}

bool diProfile::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diProfile.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diProfile::LoadData(RegData& Clsid) {
    return Trap(L"diProfile.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid) || Tree().SetTools(kTools)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolders(Tree(), kFolders);
        for (const ListSection<R>& List : kLists) {
            if (List.Word == kHtml) vdbShared::AddFolder(Tree(), kHtml, L"WWW Templates", kind::kList);
            if (List.Owners == 0 && vdbShared::BuildList(Tree(), Record(), List)) return true;
        }
        return OfferChoices(Tree());
    });
}

bool diProfile::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                              std::wstring& Id) {
    return Trap(L"diProfile.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diProfile::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diProfile.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        R& From = Record();
        vdbShared::Exporter Out(*this, Buffer);
        // An element with its parameters and captions, all at one depth.
        const auto Elements = [&](auto& List, std::wstring_view Word, std::wstring_view Parms,
                                  std::wstring_view Captions) {
            return Out.Each(List, [&](std::int32_t I) {
                return Out.Block(Word, 1, [&] {
                    return Out.One(Parms, 1, {&I, 1}) || Out.Inner(Captions, List.Item(I).Captions, I, 1);
                });
            });
        };
        return Out.One(kParms, 1) || Out.Each(kTextFonts, From.TextFonts, 1) ||
               ExportCommands(Out, From.Commands, 1) || Out.Each(kPopups, From.Popups, 1) ||
               Out.Each(kLoanHtml, From.LoanHtml, 1) || Out.Each(kRecHtml, From.RecHtml, 1) ||
               Out.Each(kTitles, From.Titles, 1) ||
               Elements(From.Fields, kFields, kFieldParms, kFieldCaption) ||
               Elements(From.Formats, kFormats, kFormatParms, kFormatCaption) ||
               Elements(From.LoanTables, kLoanTables, kLoanTableParms, kLoanTableCaption) ||
               Out.Each(kHtml, From.Html, 1);
    });
}

bool diProfile::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diProfile.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        return (At.Key == kParms || At.Key == kFieldParms) &&
               vdbShared::AddNamelessLeaf(L"diProfile.SetNode", Tree(), At, NewItemKey);
    });
}

bool diProfile::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                         std::int32_t Indent) {
    return Trap(L"diProfile.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            const auto Element = [&] { return PlaceOf(Tree(), At, 1, Self::No, Item)[0]; };
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kFormatParms) return DispFormatParm(Buffer, Element(), Inside);
            if (At.Key == kLoanTableParms) return DispLoanTableParm(Buffer, Element(), Inside);
            if (At.Key == kFieldParms) return DispFieldParm(Buffer, Element(), Inside);
            const auto* const Section =
                At.Key == kCommands ? &kCommandSection : FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diProfile::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diProfile.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diProfile::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diProfile.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
