#include "items/navigation/diBrowse.h"

#include <algorithm>
#include <array>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/vdbcModule.h"

namespace kv {

using vdbShared::Edits;
using vdbShared::kParms;
using vdbShared::ListOf;
using vdbShared::NewIn;
namespace {

using R = BrowseRecord;

constexpr std::wstring_view kTitles = L"TITLES";
constexpr std::wstring_view kFonts = L"FONTS";
constexpr std::wstring_view kCommands = L"COMMANDS";
constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
constexpr std::wstring_view kPopups = L"POPUPS";
constexpr std::wstring_view kFilters = L"FILTERS";
constexpr std::wstring_view kFilter = L"FILTER";
constexpr std::wstring_view kFiltTitles = L"FILTTITLES";
constexpr std::wstring_view kFiltMessages = L"FILTMESSAGES";
constexpr std::wstring_view kHtml = L"HTML";

// The folders behind PARMS, each filled before the next. FONTS has none.
constexpr vdbShared::FolderRow kFolders[] = {
    {kTitles, L"Titoli"},
    {kCommands, L"Pulsanti"},
    {kPopups, L"Popup"},
    {kFilters, L"Filtri", kind::kPlain},
    {kFiltTitles, L"Titoli", kind::kList, kFilters},
    {kFiltMessages, L"Messaggi", kind::kList, kFilters},
    {kFilter, L"Filtri", kind::kList, kFilters},
    {kHtml, L"WWW Templates"},
};

// The lists.

using Titles = InRecord<&R::Titles>;
using Fonts = InRecord<&R::Fonts>;
using Commands = InRecord<&R::Commands>;
using Tips = InElement<Commands, &CommandRecord::ToolTips>;
using Popups = InRecord<&R::Popups>;
using Filters = InRecord<&R::Filters>;
using FiltTitles = InRecord<&R::FiltTitles>;
using FiltMessages = InRecord<&R::FiltMessages>;
using Html = InRecord<&R::Html>;

template <class L, const std::wstring_view& Word, auto Caption>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diBrowse.SetNode", [&] {
        return vdbShared::Leaf<L, Word, Caption>(Tree, Record, At, Index, Key, Relationship);
    });
}

// A new filter has no id.
std::int32_t NewFilter(R& Record, const Place&, std::int32_t) {
    Record.Filters.Add({});
    return Record.Filters.Count();
}

constexpr auto kOfFolder = vdbShared::LeafKeys::OfFolder;
constexpr auto Title = TitleNode<ParmItem>;
constexpr auto Message = MessageNode<ParmItem>;
constexpr auto Page = HtmlNode<HtmlRecord>;
constexpr auto Font = FontNode<FontRecord>;
constexpr auto FilterCaption = FilterNode<FilterRecord>;

// A new tool tip is made by SetNode, which has no caption for it; one that has moved bears the key of its
// folder.
bool SetTip(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
            std::optional<std::int32_t> Relationship) {
    if (Relationship != relation::kChild)
        return vdbShared::InnerLeaf<Tips, kCommandTips, kOfFolder, Message, Message>(Tree, Record, At, Index,
                                                                                     Key, Relationship);
    return Trap(L"diBrowse.SetNode", [&] {
        return vdbShared::SetInnerNode(Tree, {}, Key, Relationship, vdbShared::LeafKeys::OfSection,
                                       kCommandTips);
    });
}

// A popup neither moves nor can it be deleted.
// clang-format off
constexpr ListSection<R> kLists[] = {
    {kTitles, 0, ListOf<Titles>, NewIn<Titles>, SetNode<Titles, kTitles, Title>, NewAt::End, Move::Yes, Delete::Yes},
    {kFonts, 0, ListOf<Fonts>, NewIn<Fonts>, nullptr, NewAt::End, Move::Yes, Delete::Yes},
    {kCommands, 0, ListOf<Commands>, NewCommandWithTipIn<Commands>, SetCommandNode<Commands>, NewAt::End, Move::Yes, Delete::Yes},
    {kCommandTips, 1, ListOf<Tips>, NewIn<Tips>, SetTip, NewAt::End, Move::Yes, Delete::Yes},
    {kPopups, 0, ListOf<Popups>, NewIn<Popups>, SetNode<Popups, kPopups, NoCaption<CommandRecord>>, NewAt::End, Move::No, Delete::No},
    {kFilter, 0, ListOf<Filters>, NewFilter, SetNode<Filters, kFilter, FilterCaption>, NewAt::End, Move::Yes, Delete::Yes},
    {kFiltTitles, 0, ListOf<FiltTitles>, NewIn<FiltTitles>, SetNode<FiltTitles, kFiltTitles, Title>, NewAt::End, Move::Yes, Delete::Yes},
    {kFiltMessages, 0, ListOf<FiltMessages>, NewIn<FiltMessages>, SetNode<FiltMessages, kFiltMessages, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kHtml, 0, ListOf<Html>, NewIn<Html>, SetNode<Html, kHtml, Page>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements.
constexpr ElementSection<R> kSections[] = {
    Edits<Titles, ParmEditor::SaveTitle, ParmEditor::DispTitle, Title>(kTitles, Self::Yes),
    Edits<Fonts, ParmEditor::SaveFont, ParmEditor::DispFont, Font>(kFonts, Self::Yes),
    Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    Edits<Tips, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kCommandTips, Self::Yes),
    Edits<Popups, ParmEditor::SaveCommand, ParmEditor::DispCommand, nullptr>(kPopups, Self::Yes),
    Edits<Filters, ParmEditor::SaveBrowseFilter, ParmEditor::DispBrowseFilter, FilterCaption>(kFilter, Self::Yes),
    Edits<FiltTitles, ParmEditor::SaveTitle, ParmEditor::DispTitle, Title>(kFiltTitles, Self::Yes),
    Edits<FiltMessages, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kFiltMessages, Self::Yes),
    Edits<Html, ParmEditor::SaveHtml, ParmEditor::DispHtml, Page>(kHtml, Self::Yes),
};
// clang-format on

// The value words.

// The first, for none, is offered last.
constexpr auto kIconChoices = [] {
    auto Words = WordsOf(kBrowseIcons);
    std::rotate(Words.begin(), Words.begin() + 1, Words.end());
    return Words;
}();
constexpr auto kReferenceChoices = WordsOf(kBrowseReferences);
constexpr auto kBoolOpChoices = WordsOf(kBrowseBoolOps);

constexpr Choice kIconChoice[] = {{kParms, L"ICONS=", kIconChoices}};
constexpr Choice kChoicesBehindAction[] = {
    {kParms, L"USECOOKED=", kBooleanWords},     {kParms, L"OPENRECORD=", kBooleanWords},
    {kParms, L"REFERENCE=", kReferenceChoices}, {kParms, L"AUTORUN=", kBooleanWords},
    {kParms, L"MULTISEL=", kBooleanWords},
};
constexpr Choice kChoicesBehindTips[] = {
    {kParms, L"BOOLOPS=", kBoolOpChoices}, {kParms, L"LARGEBUTT=", kBooleanWords},
    {kParms, L"SHOWOCCS=", kBooleanWords}, {kParms, L"STEMAUTO=", kBooleanWords},
    {kParms, L"FLAGS=", kNoneOnly},
};
constexpr Choice kChoiceBehindFilter[] = {{kParms, L"NOPOPUP=", kBooleanWords}};
constexpr Choice kChoicesBehindStemAlign[] = {
    {kParms, L"STEMDOCKED=", kBooleanWords},
    {kParms, L"STEMIMMEDIATE=", kBooleanWords},
    {kParms, L"STEMSIZABLE=", kBooleanWords},
    {kParms, L"TIPSSIZABLE=", kBooleanWords},
};

bool OfferChoices(DesignTree& Tree) {
    return AddChoices(Tree, kIconChoice) || ActionDefaults(Tree, kParms, L"ACTION=") ||
           AddChoices(Tree, kChoicesBehindAction) || TipsDefaults(Tree, kParms) ||
           ToolTipsDefaults(Tree, kParms) || AddChoices(Tree, kChoicesBehindTips) ||
           FilterDefaults(Tree, kFilter) || AddChoices(Tree, kChoiceBehindFilter) ||
           TipsDefaults(Tree, kParms, L"STEMALIGN=", {}) || AddChoices(Tree, kChoicesBehindStemAlign) ||
           TipsDefaults(Tree, kParms, L"TOOLALIGN=", {}) || HtmlDefaults(Tree, kHtml);
}

}  // namespace

bool diBrowse::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diBrowse.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveBrowse(Record(), Buffer, Flags);
        const auto* const Section = FindSection(kSections, At.Key);
        return Section && vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
    });
}

bool diBrowse::Save(RegData& Clsid) {
    return Trap(L"diBrowse.Save", [&] { return Record().Save(Clsid); });
}

bool diBrowse::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diBrowse.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diBrowse::LoadData(RegData& Clsid) {
    return Trap(L"diBrowse.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        for (const vdbShared::FolderRow& Folder : kFolders) {
            vdbShared::AddFolder(Tree(), Folder.Word, Folder.Caption, Folder.Kind, Folder.Parent);
            const auto* const Section = FindSection(kLists, Folder.Word);
            if (Section && vdbShared::BuildList(Tree(), Record(), *Section)) return true;
        }
        return OfferChoices(Tree());
    });
}

bool diBrowse::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                             std::wstring& Id) {
    return Trap(L"diBrowse.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

// A filter is exported as an empty block: DispData knows no FILTERS.
bool diBrowse::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diBrowse.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& From = Record();
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) || Out.Each(kTitles, From.Titles, 1) || Out.Each(kFonts, From.Fonts, 1) ||
               ExportCommands(Out, From.Commands, 3) || Out.Each(kPopups, From.Popups, 1) ||
               Out.Each(kFilters, From.Filters, 1) || Out.Each(kFiltTitles, From.FiltTitles, 1) ||
               Out.Each(kFiltMessages, From.FiltMessages, 1) || Out.Each(kHtml, From.Html, 1);
    });
}

bool diBrowse::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diBrowse.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        return (At.Key == kParms || At.Key == kCommandParms) &&
               vdbShared::AddNamelessLeaf(L"diBrowse.SetNode", Tree(), At, NewItemKey);
    });
}

bool diBrowse::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                        std::int32_t) {
    return Trap(L"diBrowse.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key == kParms) return ParmEditor::DispBrowse(Record(), Buffer, Flags);
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diBrowse::CopyData(const Head&, bool, ClipItem&) { return false; }

bool diBrowse::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diBrowse.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
