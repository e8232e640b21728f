#include "items/definitions/diStringTable.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/MessageSection.h"
#include "records/Sections.h"

namespace kv {
namespace {

using R = StringTableRecord;
using vdbShared::PlaceOf;

constexpr std::wstring_view kMessages = L"FIELDS";
constexpr std::wstring_view kMessageParms = L"FIELDPARMS";
constexpr std::wstring_view kMessageTexts = L"FIELDCAPTION";

constexpr LadderRow<StringItemRecord> kMsgLadder[] = {
    {L"NAME=", read::Upper<&StringItemRecord::Name>},
};

constexpr LineRow<const StringItemRecord> kMsgLines[] = {
    {L"NAME=", write::Quoted<&StringItemRecord::Name>},
};

constexpr vdbShared::ElementShape kMsgShape{.Word = kMessages,
                                            .ParmsWord = kMessageParms,
                                            .ParmsCaption = L"Parametri",
                                            .InnerWord = kMessageTexts,
                                            .InnerCaption = L"Messaggi"};

// A message and all that hangs below it.
bool SetMsgNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                std::optional<std::int32_t> Relationship) {
    const StringItemRecord& Message = Record.Messages.Item(Index);
    vdbShared::AddElementNodes(Tree, kMsgShape, Message.Name,
                               vdbShared::CaptionsOf(Message.Message, MessageNode<ParmItem>), Key,
                               Relationship);
    return false;
}

std::int32_t NewMessage(R& Record, const Place&, std::int32_t After) {
    StringItemRecord Fresh;
    Fresh.Name = kUnnamed;
    vdbShared::NewElement(Fresh.Message, 0);
    return vdbShared::NewElement(Record.Messages, After, std::move(Fresh));
}

using Messages = InRecord<&R::Messages>;
using Texts = InElement<Messages, &StringItemRecord::Message>;

constexpr auto kOfFolder = vdbShared::LeafKeys::OfFolder;

constexpr ListSection<R> kLists[] = {
    {kMessages, 0, vdbShared::ListOf<Messages>, NewMessage, SetMsgNode, NewAt::BehindSelected, Move::Yes,
     Delete::Yes},
    {kMessageTexts, 1, vdbShared::ListOf<Texts>, vdbShared::NewIn<Texts>,
     vdbShared::InnerLeaf<Texts, kMessageTexts, kOfFolder, MessageNode<ParmItem>, MessageNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
};

constexpr ElementSection<R> kTextSection =
    vdbShared::Edits<Texts, ParmEditor::SaveCaption, ParmEditor::DispCaption, MessageNode<ParmItem>>(
        kMessageTexts, Self::Yes);

}  // namespace

bool diStringTable::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diStringTable.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kMessageParms) {
            const std::int32_t Index = PlaceOf(Tree(), At, 1, Self::No)[0];
            if (SaveMsgParm(Buffer, Index, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), vdbShared::ElementNode(Tree(), At, Self::No),
                                   Record().Messages.Item(Index).Name, NewItemKey);
        } else if (At.Key == kMessageTexts) {
            return vdbShared::SaveElement(Tree(), Record(), kTextSection, At, NewItemKey, Buffer, Flags);
        }
        return false;
    });
}

bool diStringTable::Save(RegData& Clsid) {
    return Trap(L"diStringTable.Save", [&] { return Record().Save(Clsid); });
}

bool diStringTable::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diStringTable.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diStringTable::LoadData(RegData& Clsid) {
    return Trap(L"diStringTable.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kMessages, L"Messaggi", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists);
    });
}

bool diStringTable::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                  std::wstring& Id) {
    return Trap(L"diStringTable.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diStringTable::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diStringTable.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        return Out.Each(Record().Messages, [&](std::int32_t I) {
            return Out.Block(kMessages, 1, [&] {
                return Out.One(kMessageParms, 2, {&I, 1}) ||
                       Out.Inner(kMessageTexts, Record().Messages.Item(I).Message, I, 2);
            });
        });
    });
}

bool diStringTable::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diStringTable.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diStringTable::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                             std::int32_t Indent) {
    return Trap(L"diStringTable.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            if (At.Key == kMessageParms)
                return DispMsgParm(Buffer, PlaceOf(Tree(), At, 1, Self::No, Item)[0],
                                   vdbShared::InnerIndent(Indent));
            if (At.Key == kMessageTexts)
                return vdbShared::DispElement(Tree(), Record(), kTextSection, At, Item, Buffer, Flags);
            return false;
        });
    });
}

bool diStringTable::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diStringTable.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diStringTable::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diStringTable.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diStringTable::SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveMessageParms(L"diStringTable.SaveMsgParm", kMsgLadder, Record().Messages, Index, Buffer,
                            SyntaxOn);
}

bool diStringTable::DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diStringTable.DispMsgParm", kMsgLines, std::as_const(Record().Messages.Item(Index)),
                       Buffer, Indent);
}

}  // namespace kv
