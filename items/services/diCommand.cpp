#include "items/services/diCommand.h"

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

using R = CommandRecord;

constexpr std::wstring_view kTitles = L"TITLES";
constexpr std::wstring_view kMessage = L"MESSAGE";
constexpr std::wstring_view kTitleFonts = L"TITLEFONTS";

// The folders behind PARMS.
constexpr vdbShared::FolderRow kFolders[] = {
    {kTitles, L"Etichette"},
    {kMessage, L"Messaggi"},
    {kTitleFonts, L"Font per le etichette"},
};

// The lists.

using Titles = InRecord<&R::Titles>;
using Messages = InRecord<&R::Messages>;
using TitleFonts = InRecord<&R::TitleFonts>;

template <class L, const std::wstring_view& Word, auto Caption>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diCommand.SetNode", [&] {
        return vdbShared::Leaf<L, Word, Caption>(Tree, Record, At, Index, Key, Relationship);
    });
}

constexpr auto Title = TitleNode<ParmItem>;
constexpr auto Message = MessageNode<ParmItem>;
constexpr auto Font = FontNode<FontRecord>;

// clang-format off
constexpr ListSection<R> kLists[] = {
    {kTitles, 0, ListOf<Titles>, NewIn<Titles>, SetNode<Titles, kTitles, Title>, NewAt::End, Move::Yes, Delete::Yes},
    {kMessage, 0, ListOf<Messages>, NewIn<Messages>, SetNode<Messages, kMessage, Message>, NewAt::End, Move::Yes, Delete::Yes},
    {kTitleFonts, 0, ListOf<TitleFonts>, NewIn<TitleFonts>, SetNode<TitleFonts, kTitleFonts, Font>, NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements.
constexpr ElementSection<R> kSections[] = {
    Edits<Titles, ParmEditor::SaveTitle, ParmEditor::DispTitle, Title>(kTitles, Self::Yes),
    Edits<Messages, ParmEditor::SaveCaption, ParmEditor::DispCaption, Message>(kMessage, Self::Yes),
    Edits<TitleFonts, ParmEditor::SaveFont, ParmEditor::DispFont, Font>(kTitleFonts, Self::Yes),
};
// clang-format on

// The value words behind those of COMMAND=.

constexpr auto kKeyChoices = WordsBehindFirst(kKeyCodes);
constexpr auto kShiftChoices = WordsBehindFirst(kKeyShifts);
constexpr auto kStyleChoices = WordsOf(kCommandStyles);

constexpr Choice kChoices[] = {
    {kParms, L"ENABLED=", kBooleanWords}, {kParms, L"KBENABLED=", kBooleanWords},
    {kParms, L"VISIBLE=", kBooleanWords}, {kParms, L"KBCODE=", kKeyChoices},
    {kParms, L"KBSHIFT=", kShiftChoices}, {kParms, L"STYLE=", kStyleChoices},
};

}  // namespace

bool diCommand::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diCommand.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveToolCommand(Record(), Buffer, Flags);
        const auto* const Section = FindSection(kSections, At.Key);
        return Section && vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
    });
}

bool diCommand::Save(RegData& Clsid) {
    return Trap(L"diCommand.Save", [&] { return Record().Save(Clsid); });
}

bool diCommand::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diCommand.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diCommand::LoadData(RegData& Clsid) {
    return Trap(L"diCommand.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolders(Tree(), kFolders);
        return vdbShared::BuildLists(Tree(), Record(), kLists) ||
               ActionDefaults(Tree(), kParms, L"COMMAND=") || AddChoices(Tree(), kChoices);
    });
}

bool diCommand::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                              std::wstring& Id) {
    return Trap(L"diCommand.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diCommand::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diCommand.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& From = Record();
        vdbShared::Exporter Out(*this, Buffer);
        return Out.Block(L"COMMAND", 0, [&] {
            return Out.One(kParms, 1) || Out.Each(kTitles, From.Titles, 1) ||
                   Out.Each(kMessage, From.Messages, 1) || Out.Each(kTitleFonts, From.TitleFonts, 1);
        });
    });
}

// SetNode makes a section that is no list with its word for a caption, and no beep.
bool diCommand::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diCommand.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        return Trap(L"diCommand.SetNode", [&] {
            vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
            return false;
        });
    });
}

bool diCommand::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                         std::int32_t) {
    return Trap(L"diCommand.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key == kParms) return ParmEditor::DispToolCommand(Record(), Buffer, Flags);
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diCommand::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diCommand.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diCommand::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diCommand.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
