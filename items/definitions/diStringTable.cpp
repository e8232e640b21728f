#include "items/definitions/diStringTable.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"

namespace kv {
namespace {

using R = StringTableRecord;
using vdbShared::PlaceOf;

constexpr std::wstring_view kMessages = L"FIELDS";
constexpr std::wstring_view kMessageParms = L"FIELDPARMS";
constexpr std::wstring_view kMessageTexts = L"FIELDCAPTION";
constexpr std::wstring_view kUnnamed = L"?????";

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

ParmList<ParmItem>& TextsOf(R& Record, const Place& At) { return Record.Messages.Item(At[0]).Message; }

constexpr ListSection<R> kLists[] = {
    {kMessages, 0, [](R& Record, const Place&) -> ParmListBase& { return Record.Messages; }, NewMessage,
     SetMsgNode, NewAt::BehindSelected, Move::Yes, Delete::Yes},
    {kMessageTexts, 1, [](R& Record, const Place& At) -> ParmListBase& { return TextsOf(Record, At); },
     [](R& Record, const Place& At, std::int32_t After) {
         return vdbShared::NewElement(TextsOf(Record, At), After);
     },
     [](DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
        std::optional<std::int32_t> Relationship) {
         return vdbShared::SetInnerNode(Tree, MessageNode(TextsOf(Record, At).Item(Index)), Key,
                                        Relationship);
     },
     NewAt::End, Move::Yes, Delete::Yes},
};

}  // namespace

bool diStringTable::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diStringTable.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kMessageParms) {
            const std::int32_t Index = PlaceOf(Tree(), At, 1, Self::No)[0];
            if (SaveMsgParm(Buffer, Index, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), Tree().NodeParent(vdbShared::FolderOf(Tree(), At.CurrFolder)),
                                   Record().Messages.Item(Index).Name, NewItemKey);
        } else if (At.Key == kMessageTexts) {
            const Place Of = PlaceOf(Tree(), At, 1, Self::Yes);
            ParmItem& Edited = TextsOf(Record(), Of).Item(Of[1]);
            if (ParmEditor::SaveCaption(Edited, Buffer, Flags)) return true;
            vdbShared::ShowCaption(Tree(), At.CurrItem, MessageNode(Edited), NewItemKey);
        }
        return false;
    });
}

bool diStringTable::Save(RegData& Clsid) {
    return Trap(L"diStringTable.Save", [&] { return Record().Save(Clsid); });
}

bool diStringTable::MoveData(Head& At, std::int32_t Direction) {
    return Trap(L"diStringTable.MoveData", [&] {
        const auto* const List = FindSection(kLists, At.Key);
        return List && vdbShared::MoveInSection(Tree(), Record(), *List, At, Direction);
    });
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
        for (std::int32_t I = 1; I <= Record().Messages.Count(); ++I) {
            const bool Failed = vdbShared::WrapSection(Buffer, kMessages, true, 1, [&] {
                if (DispData(vdbShared::ExportHead(kMessageParms), Buffer, true, {&I, 1}, 2)) return true;
                for (std::int32_t K = 1; K <= Record().Messages.Item(I).Message.Count(); ++K) {
                    const std::array<std::int32_t, 2> Of{I, K};
                    if (DispData(vdbShared::ExportHead(kMessageTexts), Buffer, true, Of, 2)) return true;
                }
                return false;
            });
            if (Failed) return true;
        }
        return false;
    });
}

bool diStringTable::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diStringTable.EditData", [&] {
        if (const auto* const List = FindSection(kLists, At.Key))
            return vdbShared::AddElement(Tree(), Record(), *List, At, NewItemKey);
        return false;
    });
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
            if (At.Key == kMessageTexts) {
                const Place Of = PlaceOf(Tree(), At, 1, Self::Yes, Item);
                return ParmEditor::DispCaption(TextsOf(Record(), Of).Item(Of[1]), Buffer, Flags);
            }
            return false;
        });
    });
}

bool diStringTable::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diStringTable.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diStringTable::DeleteData(const Head& At, bool Group) {
    return Trap(L"diStringTable.DeleteData", [&] {
        if (const auto* const List = FindSection(kLists, At.Key))
            vdbShared::DeleteInSection(Tree(), Record(), *List, At, Group);
        return false;
    });
}

bool diStringTable::SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    SectionText Text(Buffer);
    return Trap(L"diStringTable.SaveMsgParm", Text, [&] {
        StringItemRecord& Stored = Record().Messages.Item(Index);
        StringItemRecord Scratch = Stored.MakeScratch();
        ClearParmCheck();
        if (ReadLadder(Text, kMsgLadder, Scratch, SyntaxOn)) return true;
        if (SyntaxOn) {
            if (Scratch.Name.empty()) Raise(L"Non è stato specificato il nome del messaggio.");
            for (std::int32_t I = 1; I <= Record().Messages.Count(); ++I)
                if (I != Index && Record().Messages.Item(I).Name == Scratch.Name)
                    Raise(L"Il nome del messaggio non è univoco.");
        }
        std::move(Scratch).CopyTo(Stored);
        return false;
    });
}

bool diStringTable::DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return Trap(L"diStringTable.DispMsgParm", [&] {
        const StringItemRecord& Message = Record().Messages.Item(Index);
        LineWriter Out{Buffer, Indent};
        if (WriteLines(Out, kMsgLines, Message)) return true;
        DispHeader(Buffer, Message, Indent);
        return false;
    });
}

}  // namespace kv
