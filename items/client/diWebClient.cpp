#include "items/client/diWebClient.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = WebClientRecord;

constexpr std::wstring_view kCommands = L"COMMANDS";
constexpr std::wstring_view kCommandParms = L"COMMANDPARMS";
constexpr std::wstring_view kCommandTips = L"COMMANDTIPS";
constexpr std::wstring_view kPopups = L"POPUPS";

// The parameters.

constexpr LadderRow<R> kParmLadder[] = {
    {L"ADDRESSBAR=", read::BoolOrTrue<&R::AddressBar>},
    {L"LARGEBUTT=", read::BoolOrTrue<&R::LargeButt>},
    {L"STATUSBAR=", read::BoolOrTrue<&R::StatusBar>},
    {L"DEFAULTFONTSIZE=", read::Long<&R::DefaultFontSize>},
    {L"FLAGS=", read::Flags<&R::Flags, kWebClientFlags>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"PROTOCOL=",
     [](R& Into, Parm& P) {
         P.Unquote();
         P.Value = StrUtil::Trim(P.Value);
         P.Fold();
         if (P.Value.empty()) return false;
         if (Into.Protocols.Exists(P.Value)) Raise(L"Protocollo duplicato in PROTOCOL=");
         Into.Protocols.Add(std::wstring(P.Value), P.Value);
         return false;
     },
     Repeat::Any},
    {L"TOOLALIGN=", read::Align<&R::ToolAlign, R>},
};

constexpr LineRow<const R> kParmLines[] = {
    {L"ADDRESSBAR=", write::Bool<&R::AddressBar>},
    {L"STATUSBAR=", write::Bool<&R::AddressBar>},  // of the other bar: StatusBar itself is never shown
    {L"LARGEBUTT=", write::Bool<&R::LargeButt>},
    {L"DEFAULTFONTSIZE=", write::Number<&R::DefaultFontSize>},
    {L"PROTOCOL=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         if (From.Protocols.Count() == 0) Out.Quoted(Keyword, L"");
         for (std::int32_t I = 1; I <= From.Protocols.Count(); ++I)
             Out.Quoted(Keyword, From.Protocols.Item(I));
         return false;
     }},
    {L"TOOLALIGN=", write::Align<&R::ToolAlign, const R>},
    {L"FLAGS=", write::Flags<&R::Flags, kWebClientFlags>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
};

constexpr auto kFlagChoices = NoneThen(kWebClientFlags);

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices},
};

// The lists.

using Commands = InRecord<&R::Commands>;
using Tips = InElement<Commands, &CommandRecord::ToolTips>;
using Popups = InRecord<&R::Popups>;

bool SetPopupNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship) {
    return Trap(L"diWebClient.SetNode", [&] {
        return vdbShared::Leaf<Popups, kPopups, NoCaption<PopupRecord>>(Tree, Record, At, Index, Key,
                                                                        Relationship);
    });
}

constexpr auto kOfSection = vdbShared::LeafKeys::OfSection;
constexpr auto Message = MessageNode<ParmItem>;

// A tip reads as a message but for when its section has just been saved. A popup can't be deleted.
// clang-format off
constexpr ListSection<R> kLists[] = {
    {kCommands, 0, vdbShared::ListOf<Commands>, NewCommandIn<Commands>, SetCommandNode<Commands>, NewAt::End, Move::Yes, Delete::Yes},
    {kPopups, 0, vdbShared::ListOf<Popups>, vdbShared::NewIn<Popups>, SetPopupNode, NewAt::End, Move::Yes, Delete::No},
    {kCommandTips, 1, vdbShared::ListOf<Tips>, vdbShared::NewIn<Tips>, vdbShared::InnerLeaf<Tips, kCommandTips, kOfSection, Message, Message>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements that ParmEditor reads and renders.
constexpr ElementSection<R> kSections[] = {
    vdbShared::Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, CodeOf<CommandRecord>>(kCommandParms, Self::No),
    vdbShared::Edits<Tips, SaveLabel, ParmEditor::DispCaption, CaptionNode<ParmItem>>(kCommandTips, Self::Yes),
    vdbShared::Edits<Popups, ParmEditor::SavePopup, ParmEditor::DispPopup, nullptr>(kPopups, Self::Yes),
};
// Shown on the button's own node, which takes no text: COMMANDPARMS below it edits the same.
constexpr ElementSection<R> kCommandSection =
    vdbShared::Edits<Commands, ParmEditor::SaveCommand, ParmEditor::DispCommand, nullptr>(kCommands, Self::Yes);
// clang-format on

}  // namespace

bool diWebClient::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diWebClient.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        const auto* const Section = FindSection(kSections, At.Key);
        return Section && vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
    });
}

bool diWebClient::Save(RegData& Clsid) {
    return Trap(L"diWebClient.Save", [&] { return Record().Save(Clsid); });
}

bool diWebClient::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diWebClient.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diWebClient::LoadData(RegData& Clsid) {
    return Trap(L"diWebClient.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kCommands, L"Pulsanti", kind::kList);
        vdbShared::AddFolder(Tree(), kPopups, L"Popup", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists) || AddChoices(Tree(), kChoices);
    });
}

bool diWebClient::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                std::wstring& Id) {
    return Trap(L"diWebClient.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diWebClient::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diWebClient.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& Exported = Record();
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) || ExportCommands(Out, Exported.Commands, 1) ||
               Out.Each(kPopups, Exported.Popups, 1);
    });
}

bool diWebClient::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diWebClient.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diWebClient::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                           std::int32_t Indent) {
    return Trap(L"diWebClient.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            if (At.Key == kParms) return DispParm(Buffer, vdbShared::InnerIndent(Indent));
            const auto* const Section =
                At.Key == kCommands ? &kCommandSection : FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diWebClient::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diWebClient.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diWebClient::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diWebClient.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diWebClient::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diWebClient.SaveParm", Scratch::Header, kParmLadder, Record(), Buffer, SyntaxOn,
                       [&](const R& Read) {
                           if (SyntaxOn && (Read.DefaultFontSize < 0 || Read.DefaultFontSize > 5))
                               Raise(L"Valore non corretto per DEFAULTFONTSIZE= (0-5)");
                       });
}

bool diWebClient::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diWebClient.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

}  // namespace kv
