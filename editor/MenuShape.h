// The design items of the forms that lead from one to the next: menu, help, set operations. They are one
// shape, a parameter section, titles, pages, buttons and popups, and stand here since an item uses no other
// item and the shape works through ParmEditor. Where they differ is what a `Form` states:
//
//     struct Form {
//         using Record = MenuRecord;
//         static constexpr std::wstring_view kClass = L"diMenu";   // of the sources of errors
//         static constexpr SectionRow<Record> kPath{...};           // the keyword that leads elsewhere
//         static constexpr auto kFlagWords = kNoWords;              // words of FLAGS=
//         static constexpr std::wstring_view kLines[] = {...};      // keywords in the order of the text
//         static constexpr std::array<Choice, 0> kFirstChoices{};   // offered ahead of what all offer
//         static constexpr Move kPopupsMove = Move::No;
//         static constexpr std::wstring_view kExport[] = {...};     // sections behind PARMS
//     };
//
// The operations are those of iKvTree, which the item states and hands on.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbShared.h"
#include "frame/vdbcModule.h"
#include "records/CommandRecord.h"
#include "records/HtmlRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/Sections.h"
#include "records/Stored.h"

namespace kv::MenuShape {

inline constexpr std::wstring_view kTitles = L"TITLES";
inline constexpr std::wstring_view kHtml = L"HTML";
inline constexpr std::wstring_view kCommands = L"COMMANDS";
inline constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
inline constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
inline constexpr std::wstring_view kPopups = L"POPUPS";

namespace detail {

using kv::detail::kSource;
using vdbShared::Edits;
using vdbShared::kParms;
using vdbShared::ListOf;
using vdbShared::NewIn;

// What an error is reported under, behind the class.
inline constexpr std::wstring_view kSaveData = L".SaveData";
inline constexpr std::wstring_view kSave = L".Save";
inline constexpr std::wstring_view kMoveData = L".MoveData";
inline constexpr std::wstring_view kLoadData = L".LoadData";
inline constexpr std::wstring_view kGetObjectInfo = L".GetObjectInfo";
inline constexpr std::wstring_view kExportData = L".ExportData";
inline constexpr std::wstring_view kEditData = L".EditData";
inline constexpr std::wstring_view kDispData = L".DispData";
inline constexpr std::wstring_view kCopyData = L".CopyData";
inline constexpr std::wstring_view kDeleteData = L".DeleteData";
inline constexpr std::wstring_view kSetNode = L".SetNode";
inline constexpr std::wstring_view kSaveParm = L".SaveParm";
inline constexpr std::wstring_view kDispParm = L".DispParm";

// The parameters.

template <class Form>
using RecordOf = typename Form::Record;

/// Words as typed: "none" is no word.
template <class Form>
bool ReadFlags(RecordOf<Form>& Into, Parm& P) {
    if (P.Value.empty() || P.Value == kNone)
        Into.Flags = 0;
    else
        P.AddWords(Form::kFlagWords, Into.Flags);
    return false;
}
template <class R>
bool ReadTipsButtons(R& Into, Parm& P) {
    return TipsSetButtons(P.Value, Into.TipsButtons);
}
template <class R>
bool WriteTipsButtons(const R& From, std::wstring_view, LineWriter& Out) {
    return TipsGetButtons(From.TipsButtons, Out.Buffer, Out.Indent);
}
template <class R>
bool ReadToolTips(R& Into, Parm& P) {
    return ToolTipsSet(P.Value, Into.ToolTips);
}
template <class R>
bool WriteToolTips(const R& From, std::wstring_view, LineWriter& Out) {
    return ToolTipsGet(From.ToolTips, Out.Buffer, Out.Indent);
}

// In the order of the ladder. Words of FLAGS= are rendered without a blank in front: `FLAGS=BROWSEFILES`.
template <class Form, class R = RecordOf<Form>>
inline constexpr SectionRow<R> kLadder[] = {
    {L"HELP=", read::Upper<&R::Help>, write::Quoted<&R::Help>},
    {L"HELPWWW=", read::Upper<&R::HelpWww>, write::Quoted<&R::HelpWww>},
    {L"LARGEBUTT=", read::BoolOrTrue<&R::LargeButt>, write::Bool<&R::LargeButt>},
    Form::kPath,
    {L"TIPS=", read::Upper<&R::Tips>, write::Quoted<&R::Tips>},
    {L"TIPSALIGN=", read::Align<&R::TipsAlign>, write::Align<&R::TipsAlign>},
    {L"TIPSWIDTH=", read::Percent<&R::TipsWidth>, write::Number<&R::TipsWidth>},
    {L"TIPSBUTTONS=", ReadTipsButtons<R>, WriteTipsButtons<R>},
    {L"TOOLALIGN=", read::Align<&R::ToolAlign>, write::Align<&R::ToolAlign>},
    {L"TOOLTIPS=", ReadToolTips<R>, WriteToolTips<R>},
    {L"FLAGS=", ReadFlags<Form>, write::FlagsNoBlank<&R::Flags, Form::kFlagWords>},
};

/// The rows in the order of the text; a keyword of no row does not compile.
template <class Form>
inline constexpr auto kLines = [] {
    std::array<SectionRow<RecordOf<Form>>, std::size(Form::kLines)> Rows{};
    static_assert(std::size(Form::kLines) == std::size(kLadder<Form>), "every keyword is rendered");
    for (std::size_t I = 0; I < Rows.size(); ++I)
        Rows[I] = *std::find_if(std::begin(kLadder<Form>), std::end(kLadder<Form>),
                                [&](const auto& Row) { return Row.Keyword == Form::kLines[I]; });
    return Rows;
}();

// The lists.

template <class Form>
using Titles = InRecord<&RecordOf<Form>::Titles>;
template <class Form>
using Commands = InRecord<&RecordOf<Form>::Commands>;
template <class Form>
using Tips = InElement<Commands<Form>, &CommandRecord::ToolTips>;
template <class Form>
using Popups = InRecord<&RecordOf<Form>::Popups>;
template <class Form>
using Html = InRecord<&RecordOf<Form>::Html>;

inline constexpr auto kTitle = TitleNode<ParmItem>;
inline constexpr auto kMessage = MessageNode<ParmItem>;
inline constexpr auto kPage = HtmlNode<HtmlRecord>;

template <class Form, class L, const std::wstring_view& Word, auto Caption>
bool SetNode(DesignTree& Tree, RecordOf<Form>& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(kSource<Form, kSetNode>, [&] {
        return vdbShared::Leaf<L, Word, Caption>(Tree, Record, At, Index, Key, Relationship);
    });
}

inline constexpr vdbShared::FolderRow kFolders[] = {
    {kTitles, L"Titolo"},
    {kHtml, L"HTML"},
    {kCommands, L"Pulsanti"},
    {kPopups, L"Popup"},
};

// In the order in which the tree is filled. A popup can't be deleted.
// clang-format off
template <class Form>
inline constexpr ListSection<RecordOf<Form>> kLists[] = {
    {kTitles, 0, ListOf<Titles<Form>>, NewIn<Titles<Form>>, SetNode<Form, Titles<Form>, kTitles, kTitle>, NewAt::End, Move::Yes, Delete::Yes},
    {kCommands, 0, ListOf<Commands<Form>>, NewCommandWithTipIn<Commands<Form>>, SetCommandNode<Commands<Form>>, NewAt::End, Move::Yes, Delete::Yes},
    {kPopups, 0, ListOf<Popups<Form>>, NewIn<Popups<Form>>, SetNode<Form, Popups<Form>, kPopups, NoCaption<PopupRecord>>, NewAt::End, Form::kPopupsMove, Delete::No},
    {kHtml, 0, ListOf<Html<Form>>, NewIn<Html<Form>>, SetNode<Form, Html<Form>, kHtml, kPage>, NewAt::End, Move::Yes, Delete::Yes},
    {kCommandTips, 1, ListOf<Tips<Form>>, NewIn<Tips<Form>>, vdbShared::InnerLeaf<Tips<Form>, kCommandTips, vdbShared::LeafKeys::OfFolder, kMessage, kMessage>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements that ParmEditor reads and renders.
template <class Form>
inline constexpr ElementSection<RecordOf<Form>> kSections[] = {
    Edits<Commands<Form>, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    Edits<Tips<Form>, ParmEditor::SaveCaption, ParmEditor::DispCaption, kMessage>(kCommandTips, Self::Yes),
    Edits<Html<Form>, ParmEditor::SaveHtml, ParmEditor::DispHtml, kPage>(kHtml, Self::Yes),
    Edits<Popups<Form>, ParmEditor::SavePopup, ParmEditor::DispPopup, nullptr>(kPopups, Self::Yes),
    Edits<Titles<Form>, ParmEditor::SaveTitle, ParmEditor::DispTitle, kTitle>(kTitles, Self::Yes),
};
// clang-format on

// The value words.

template <class Form>
inline constexpr auto kFlagChoices = NoneThen(Form::kFlagWords);
template <class Form>
inline constexpr Choice kParmChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices<Form>},
};

template <class Form>
bool OfferChoices(DesignTree& Tree) {
    return AddChoices(Tree, Form::kFirstChoices) || AddChoices(Tree, kParmChoices<Form>) ||
           HtmlDefaults(Tree, kHtml) || TipsDefaults(Tree, kParms) || ToolTipsDefaults(Tree, kParms) ||
           TipsDefaults(Tree, kParms, L"TOOLALIGN=", {});
}

template <class Form>
bool SaveParm(RecordOf<Form>& Record, std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(kSource<Form, kSaveParm>, Scratch::Header, kLadder<Form>, Record, Buffer, SyntaxOn,
                       [&](const RecordOf<Form>& Read) {
                           return SyntaxOn && TipsAlignCheck(Read.Tips, Read.TipsAlign, Read.TipsWidth);
                       });
}

template <class Form>
bool DispParm(const RecordOf<Form>& Record, std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(kSource<Form, kDispParm>, kLines<Form>, Record, Buffer, Indent);
}

}  // namespace detail

template <class Form>
[[nodiscard]] bool SaveData(DesignTree& Tree, typename Form::Record& Record, const Head& At,
                            std::wstring& NewItemKey, std::wstring& Buffer) {
    return Trap(detail::kSource<Form, detail::kSaveData>, [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree.SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == vdbShared::kParms) return detail::SaveParm<Form>(Record, Buffer, SyntaxOn);
        const auto* const Section = FindSection(detail::kSections<Form>, At.Key);
        return Section && vdbShared::SaveElement(Tree, Record, *Section, At, NewItemKey, Buffer, Flags);
    });
}

template <class Form>
[[nodiscard]] bool Save(const typename Form::Record& Record, RegData& Clsid) {
    return Trap(detail::kSource<Form, detail::kSave>, [&] { return Record.Save(Clsid); });
}

template <class Form>
[[nodiscard]] bool MoveData(DesignTree& Tree, typename Form::Record& Record, Head& At,
                            std::int32_t Direction) {
    return vdbShared::MoveData(detail::kSource<Form, detail::kMoveData>, Tree, Record, detail::kLists<Form>,
                               At, Direction);
}

template <class Form>
[[nodiscard]] bool LoadData(DesignTree& Tree, std::unique_ptr<typename Form::Record>& Held, RegData& Clsid) {
    return Trap(detail::kSource<Form, detail::kLoadData>, [&] {
        if (vdbShared::LoadFresh(Held, Clsid)) return true;
        vdbShared::StartPlainTree(Tree, Clsid);
        vdbShared::AddFolders(Tree, detail::kFolders);
        return vdbShared::BuildLists(Tree, *Held, detail::kLists<Form>) || detail::OfferChoices<Form>(Tree);
    });
}

template <class Form>
[[nodiscard]] bool GetObjectInfo(const typename Form::Record& Record, std::wstring& Name, std::wstring& Desc,
                                 std::int16_t& Version, std::wstring& Id) {
    return Trap(detail::kSource<Form, detail::kGetObjectInfo>, [&] {
        vdbShared::ObjectInfo(Record, Name, Desc, Version, Id);
        return false;
    });
}

template <class Form>
[[nodiscard]] bool ExportData(iKvTree& Item, std::unique_ptr<typename Form::Record>& Held, RegData& Clsid,
                              std::wstring& Buffer) {
    return Trap(detail::kSource<Form, detail::kExportData>, [&] {
        if (vdbShared::LoadFresh(Held, Clsid)) return true;
        typename Form::Record& Exported = *Held;
        vdbShared::Exporter Out(Item, Buffer);
        if (Out.One(vdbShared::kParms, 1)) return true;
        for (const std::wstring_view Word : Form::kExport) {
            const auto* const Section = FindSection(detail::kLists<Form>, Word);
            if (Word == kCommands ? ExportCommands(Out, Exported.Commands, 3)
                                  : Out.Each(Word, Section->List(Exported, {}), 1))
                return true;
        }
        return false;
    });
}

/// Further leaves of PARMS and COMMANDPARMS have an empty caption.
template <class Form>
[[nodiscard]] bool EditData(DesignTree& Tree, typename Form::Record& Record, const Head& At,
                            std::wstring& NewItemKey) {
    return vdbShared::EditData(
        detail::kSource<Form, detail::kEditData>, Tree, Record, detail::kLists<Form>, At, NewItemKey, [&] {
            return (At.Key == vdbShared::kParms || At.Key == kCommandParms) &&
                   vdbShared::AddNamelessLeaf(detail::kSource<Form, detail::kSetNode>, Tree, At, NewItemKey);
        });
}

/// In a block PARMS stands one deeper than the block's lines.
template <class Form>
[[nodiscard]] bool DispData(DesignTree& Tree, typename Form::Record& Record, const Head& At,
                            std::wstring& Buffer, bool ExternalTarget, Positions Item, std::int32_t Indent) {
    return Trap(detail::kSource<Form, detail::kDispData>, [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree.SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            if (At.Key == vdbShared::kParms)
                return detail::DispParm<Form>(Record, Buffer, ExternalTarget ? Indent + 1 : Indent);
            const auto* const Section = FindSection(detail::kSections<Form>, At.Key);
            return Section && vdbShared::DispElement(Tree, Record, *Section, At, Item, Buffer, Flags);
        });
    });
}

template <class Form>
[[nodiscard]] bool CopyData(iKvTree& Item, const ClipItem& DataObj) {
    return Trap(detail::kSource<Form, detail::kCopyData>, [&] { return vdbShared::CopyTo(Item, DataObj); });
}

template <class Form>
[[nodiscard]] bool DeleteData(DesignTree& Tree, typename Form::Record& Record, const Head& At, bool Group) {
    return vdbShared::DeleteData(detail::kSource<Form, detail::kDeleteData>, Tree, Record,
                                 detail::kLists<Form>, At, Group);
}

}  // namespace kv::MenuShape
