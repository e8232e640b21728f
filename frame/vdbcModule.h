// Shared section builders: the captions of nodes, the value words that the editor offers, the converters
// between words and bits, the command branch, and what tells a section parser to check strictly.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/DesignTree.h"
#include "frame/ListSection.h"
#include "frame/ParmList.h"
#include "frame/SectionTable.h"
#include "frame/StrUtil.h"
#include "frame/Words.h"

namespace kv {

/// The branch of a button: `COMMANDS-<id>` with the code, below it its parameters "Pulsante" and the list
/// "ToolTips".
inline constexpr vdbShared::ElementShape kCommandShape{.Word = L"COMMANDS",
                                                       .ParmsWord = L"COMMANDPARMS",
                                                       .ParmsCaption = L"Pulsante",
                                                       .ParmsLeaf = vdbShared::LeafKeys::OfSection,
                                                       .InnerWord = L"COMMANDTIPS",
                                                       .InnerCaption = L"ToolTips",
                                                       .InnerKind = kind::kSubList,
                                                       .InnerLeaf = vdbShared::LeafKeys::OfSection};

/// The flag list that goes to ParmEditor: its entry "SYNTAXON" is "True" or "False".
using SaveFlags = ParmList<std::wstring>;
inline constexpr std::wstring_view kSyntaxOnFlag = L"SYNTAXON";

/// Empties `List` and enters SyntaxOn. True on failure (source "vdbcModule.SetSaveFlags").
[[nodiscard]] bool SetSaveFlags(SaveFlags& List, bool SyntaxOn);
/// Whether the list asks for strict checks; a list without the entry does not.
bool StrictFlag(const SaveFlags& List);

/// The value words offered for one keyword of one section, in order.
struct Choice {
    std::wstring_view Section;
    std::wstring_view Keyword;
    std::span<const std::wstring_view> Words;
};

/// Registers the words with the tree, row by row. True at the first refusal.
[[nodiscard]] bool AddChoices(DesignTree& Tree, std::span<const Choice> Choices);

// Words and bits.

/// Bits of a record's ToolTips.
inline constexpr std::array<Word, 5> kToolTipWords{{
    {L"CHECK", 1},
    {L"FOLDER", 2},
    {L"LINK", 4},
    {L"COMMANDS", 8},
    {L"LOANLINK", 16},
}};

/// Bits of a record's TipsButtons.
inline constexpr std::array<Word, 3> kTipsButtonWords{{
    {L"BACK", 1},
    {L"CLOSE", 2},
    {L"HOME", 4},
}};

/// Codes of an alignment; any other code is shown as NONE.
inline constexpr std::array<Word, 5> kAlignWords{{
    {L"NONE", 0},
    {L"TOP", 1},
    {L"BOTTOM", 2},
    {L"LEFT", 3},
    {L"RIGHT", 4},
}};

/// The action of a button or link. The codes 0, 8, 12, 14 and 25 have no word.
inline constexpr std::array<Word, 47> kActionWords{{
    {L"NONE", -1},       {L"MENU", 1},      {L"BROWSE", 2},       {L"HELP", 3},       {L"RECORD", 4},
    {L"QUERY", 5},       {L"BACK", 6},      {L"QUIT", 7},         {L"LINK", 9},       {L"SHELL", 10},
    {L"SPAWN", 11},      {L"LOANIC", 13},   {L"QUERYRESULT", 15}, {L"ADMIN", 16},     {L"LANG", 17},
    {L"HTMLMOVE", 18},   {L"LOGIN", 19},    {L"HBACK", 20},       {L"SPAWN16", 21},   {L"SPAWNDOC", 22},
    {L"SPAWNDOC16", 23}, {L"SHELLDOC", 24}, {L"WEBCLIENT", 26},   {L"DBSELECT", 27},  {L"SETOPS", 28},
    {L"NAVIGATE", 29},   {L"PASSWORD", 30}, {L"CLIENTSETUP", 31}, {L"LOANSTART", 32}, {L"LOANQUIT", 33},
    {L"SHELLWIN", 34},   {L"INFO", 35},     {L"KVRSELECT", 36},   {L"IMAGE", 37},     {L"SEEK", 38},
    {L"OPEN", 39},       {L"CLOSEALL", 40}, {L"QUERYGET", 41},    {L"BOOLSTEM", 42},  {L"SHELF", 43},
    {L"IMAGELIST", 44},  {L"ZOOMIN", 45},   {L"ZOOMOUT", 46},     {L"MAP", 47},       {L"LOANACTION", 48},
    {L"IMAGEUM", 49},    {L"IMAGETAG", 50},
}};

/// How a filter joins what it is put on.
inline constexpr std::array<Word, 2> kMergeWords{{
    {L"AND", 0},
    {L"OR", 1},
}};

inline constexpr std::wstring_view kTipsAlign = L"TIPSALIGN=";
inline constexpr std::wstring_view kTipsButtons = L"TIPSBUTTONS=";
inline constexpr std::wstring_view kToolTips = L"TOOLTIPS=";

/// The converters read words as typed, but for alignments, which are folded. They have no strict flag: an
/// unknown word is refused always. True on failure (source "vdbcModule.<name>"); the result then holds what
/// was read before it. "NONE" is understood as the whole value only. An unknown word is told as one of
/// TIPSBUTTONS=, also by ToolTipsSet.
[[nodiscard]] bool ToolTipsSet(std::wstring_view Value, std::int32_t& Flags);
[[nodiscard]] bool TipsSetButtons(std::wstring_view Value, std::int32_t& Flags);
/// An unknown word is told as one of `Keyword`.
[[nodiscard]] bool TipsSetAlignment(std::wstring_view Value, std::int32_t& Align,
                                    std::wstring_view Keyword = kTipsAlign);

/// Append one line each: words of the bits in table order, or NONE; a blank behind the "=", no quotes.
[[nodiscard]] bool ToolTipsGet(std::int32_t ToolTips, std::wstring& Buffer, std::int32_t Indent);
[[nodiscard]] bool TipsGetButtons(std::int32_t TipsButtons, std::wstring& Buffer, std::int32_t Indent);
[[nodiscard]] bool TipsGetAlignment(std::int32_t Align, std::wstring& Buffer, std::int32_t Indent,
                                    std::wstring_view Keyword = kTipsAlign);

/// With a `Value`: Align 0 is refused with "Selezionare una modalità di allineamento per TIPS=.", then a
/// Width outside 10 to 90 with "Ampiezza relativa per TIPS= non corretta (10%-90%).". True on failure (source
/// "vdbcModule.TipsAlignCheck").
[[nodiscard]] bool TipsAlignCheck(std::wstring_view Value, std::int32_t Align, std::int32_t Width);

// Value words. True at the first refusal (source "vdbcModule.<name>").

/// Offers "FALSE", "TRUE" for the keyword.
[[nodiscard]] bool BooleanDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword);
/// AUTOMATIC= as a boolean, MERGEWITH= "AND", "OR".
[[nodiscard]] bool FilterDefaults(DesignTree& Tree, std::wstring_view Section);
/// The action words with codes 1 to 49 in code order: NONE (-1) and IMAGETAG (50) are accepted, not offered.
[[nodiscard]] bool ActionDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword);
/// ActionDefaults for ACTION=.
[[nodiscard]] bool HtmlDefaults(DesignTree& Tree, std::wstring_view Section);
[[nodiscard]] bool ToolTipsDefaults(DesignTree& Tree, std::wstring_view Section);
/// Alignments for the one keyword, buttons for the other; an empty keyword skips its group.
[[nodiscard]] bool TipsDefaults(DesignTree& Tree, std::wstring_view Section,
                                std::wstring_view AlignKeyword = kTipsAlign,
                                std::wstring_view ButtonsKeyword = kTipsButtons);

// Captions. Any element that has the properties will do; only memory can fail, which the caller's trap
// reports.

namespace caption {
/// How much of a text a caption shows.
inline constexpr std::size_t kShown = 20;
std::wstring OfLanguage(std::wstring_view Label, std::wstring_view Language, std::wstring_view Text);
}  // namespace caption

/// "Campo: " and the text.
template <class Element>
std::wstring FieldCaptionNode(const Element& Of) {
    return L"Campo: " + Of.Text;
}
/// The same of the first of a field's captions; "Campo: ????" for a field without any.
template <class List>
std::wstring FirstCaptionNode(const List& Captions) {
    return Captions.Count() == 0 ? L"Campo: ????" : FieldCaptionNode(Captions.Item(1));
}
/// "Campo: " and the tag in five digits.
template <class Element>
std::wstring FieldNode(const Element& Of) {
    return L"Campo: " + StrUtil::Padded(Of.Tag, 5);
}
/// "Etichetta: [ITA] " and the first 20 characters of the text.
template <class Element>
std::wstring CaptionNode(const Element& Of) {
    return caption::OfLanguage(L"Etichetta: [", Of.Language, Of.Text);
}
/// "Titolo: [ITA] " ...
template <class Element>
std::wstring TitleNode(const Element& Of) {
    return caption::OfLanguage(L"Titolo: [", Of.Language, Of.Text);
}
/// "Messaggio: [ITA] " ...
template <class Element>
std::wstring MessageNode(const Element& Of) {
    return caption::OfLanguage(L"Messaggio: [", Of.Language, Of.Text);
}
/// "File: [ITA] " and the first 20 characters of the file name.
template <class Element>
std::wstring HtmlNode(const Element& Of) {
    return caption::OfLanguage(L"File: [", Of.Language, Of.FileName);
}
/// "Pulsante: " and the code.
template <class Element>
std::wstring CommandNode(const Element& Of) {
    return L"Pulsante: " + Of.Code;
}
/// "Filtro: " and the name.
template <class Element>
std::wstring FilterNode(const Element& Of) {
    return L"Filtro: " + Of.Name;
}
/// "Font: " name ", " size.
template <class Element>
std::wstring FontNode(const Element& Of) {
    return L"Font: " + Of.Name + L", " + std::to_wstring(Of.Size);
}

/// Builds the command branch, as a child of "COMMANDS" or in `Relationship` to the node whose key `Key`
/// holds; Key comes back as that of its folder. True on failure (source "vdbcModule.CommandNodeAdd").
template <class Command>
[[nodiscard]] bool CommandNodeAdd(const Command& Record, DesignTree& Tree, std::wstring& Key,
                                  std::optional<std::int32_t> Relationship = {}) {
    return Trap(L"vdbcModule.CommandNodeAdd", [&] {
        const auto Tips =
            vdbShared::CaptionsOf(Record.ToolTips, [](const auto& Tip) { return MessageNode(Tip); });
        vdbShared::AddElementNodes(Tree, kCommandShape, Record.Code, Tips, Key, Relationship);
        return false;
    });
}

// The columns of a ladder and of a renderer for an alignment.

namespace read {
/// An unknown word is refused in strict and in lax mode, as one of the row's keyword.
template <auto Member, class Scratch>
bool Align(Scratch& Into, Parm& P) {
    return TipsSetAlignment(P.Value, Into.*Member, P.Keyword);
}
}  // namespace read

namespace write {
template <auto Member, class Record>
bool Align(Record& From, std::wstring_view Keyword, LineWriter& Out) {
    return TipsGetAlignment(From.*Member, Out.Buffer, Out.Indent, Keyword);
}
}  // namespace write

/// Exports a list of buttons: the section of each, then those of its tool tips at their own indent.
template <class Commands>
[[nodiscard]] bool ExportCommands(vdbShared::Exporter& Out, const Commands& List, std::int32_t TipsIndent) {
    return Out.Each(List, [&](std::int32_t I) {
        return Out.One(kCommandShape.Word, 1, {&I, 1}) ||
               Out.Inner(kCommandShape.InnerWord, List.Item(I).ToolTips, I, TipsIndent);
    });
}

// The columns of ListSection and ElementSection for a list `L` of buttons, or of messages.

/// Stands for the code of a new button or the name of a new message until the operator replaces it.
inline constexpr std::wstring_view kUnnamed = L"?????";

/// A button whose code the operator is to replace.
template <class L>
std::int32_t NewCommandIn(typename L::Record& Record, const Place& At, std::int32_t After) {
    auto& Commands = L::Of(Record, At);
    std::remove_cvref_t<decltype(Commands.Item(1))> Fresh;
    Fresh.Code = kUnnamed;
    return vdbShared::NewElement(Commands, After, std::move(Fresh));
}
/// The same as the forms of navigation make it: it has no id while its code is to be replaced, and one tool
/// tip to begin with, which has one.
template <class L>
std::int32_t NewCommandWithTipIn(typename L::Record& Record, const Place& At, std::int32_t) {
    auto& Commands = L::Of(Record, At);
    std::remove_cvref_t<decltype(Commands.Item(1))> Fresh;
    Fresh.Code = kUnnamed;
    vdbShared::NewElement(Fresh.ToolTips, 0);
    Commands.Add(std::move(Fresh));
    return Commands.Count();
}
/// A message whose name the operator is to replace, without an id, and with one text, which has one.
template <class L>
std::int32_t NewMessageWithTextIn(typename L::Record& Record, const Place& At, std::int32_t) {
    auto& Messages = L::Of(Record, At);
    std::remove_cvref_t<decltype(Messages.Item(1))> Fresh;
    Fresh.Name = kUnnamed;
    vdbShared::NewElement(Fresh.Message, 0);
    Messages.Add(std::move(Fresh));
    return Messages.Count();
}
template <class L>
bool SetCommandNode(DesignTree& Tree, typename L::Record& Record, const Place& At, std::int32_t Index,
                    std::wstring& Key, std::optional<std::int32_t> Relationship) {
    return CommandNodeAdd(L::Of(Record, At).Item(Index), Tree, Key, Relationship);
}
/// What the branch of a button shows.
template <class Command>
std::wstring CodeOf(const Command& Of) {
    return Of.Code;
}
/// What the leaf of a popup shows. Nothing beeps: it would at every load.
template <class Popup>
std::wstring NoCaption(const Popup&) {
    return {};
}

}  // namespace kv
