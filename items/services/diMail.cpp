#include "items/services/diMail.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/MessageSection.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
using vdbShared::PlaceOf;
namespace {

using R = MailRecord;
using M = MessageRecord;

constexpr std::wstring_view kMessages = L"FIELDS";
constexpr std::wstring_view kMessageParms = L"FIELDPARMS";
constexpr std::wstring_view kMessageTexts = L"FIELDCAPTION";

constexpr SectionRow<R> kParmRows[] = {
    {L"PATH=", read::Text<&R::Path>, write::Quoted<&R::Path>},
};

constexpr SectionRow<M> kMsgRows[] = {
    {L"NAME=", read::Text<&M::Name>, write::Quoted<&M::Name>},
};

constexpr vdbShared::ElementShape kMsgShape{.Word = kMessages,
                                            .ParmsWord = kMessageParms,
                                            .ParmsCaption = L"Parametri",
                                            .ParmsLeaf = vdbShared::LeafKeys::OfSection,
                                            .InnerWord = kMessageTexts,
                                            .InnerCaption = L"Messaggi",
                                            .InnerLeaf = vdbShared::LeafKeys::OfSection};

bool SetMsgNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                std::optional<std::int32_t> Relationship) {
    return Trap(L"diMail.SetMsgNode", [&] {
        const M& Message = Record.Fields.Item(Index);
        vdbShared::AddElementNodes(Tree, kMsgShape, Message.Name,
                                   vdbShared::CaptionsOf(Message.Message, MessageNode<ParmItem>), Key,
                                   Relationship);
        return false;
    });
}

std::int32_t NewMessage(R& Record, const Place&, std::int32_t After) {
    M Fresh;
    Fresh.Name = kUnnamed;
    vdbShared::NewElement(Fresh.Message, 0);
    return vdbShared::NewElement(Record.Fields, After, std::move(Fresh));
}

using Messages = InRecord<&R::Fields>;
using Texts = InElement<Messages, &M::Message>;

constexpr ListSection<R> kLists[] = {
    {kMessages, 0, vdbShared::ListOf<Messages>, NewMessage, SetMsgNode, NewAt::End, Move::Yes, Delete::Yes},
    {kMessageTexts, 1, vdbShared::ListOf<Texts>, vdbShared::NewIn<Texts>,
     vdbShared::InnerLeaf<Texts, kMessageTexts, vdbShared::LeafKeys::OfSection, MessageNode<ParmItem>,
                          MessageNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
};

// A text whose section was saved is shown as a label until it is moved or the tree is built again.
constexpr ElementSection<R> kTextSection =
    vdbShared::Edits<Texts, SaveLabel, ParmEditor::DispCaption, CaptionNode<ParmItem>>(kMessageTexts,
                                                                                       Self::Yes);

}  // namespace

bool diMail::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diMail.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        if (At.Key == kMessageParms) {
            const std::int32_t Index = PlaceOf(Tree(), At, 1, Self::No)[0];
            if (SaveMsgParm(Buffer, Index, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), vdbShared::ElementNode(Tree(), At, Self::No),
                                   Record().Fields.Item(Index).Name, NewItemKey);
        } else if (At.Key == kMessageTexts) {
            return vdbShared::SaveElement(Tree(), Record(), kTextSection, At, NewItemKey, Buffer, Flags);
        }
        return false;
    });
}

bool diMail::Save(RegData& Clsid) {
    return Trap(L"diMail.Save", [&] { return Record().Save(Clsid); });
}

bool diMail::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diMail.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diMail::LoadData(RegData& Clsid) {
    return Trap(L"diMail.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kMessages, L"Messaggi", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists);
    });
}

bool diMail::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version, std::wstring& Id) {
    return Trap(L"diMail.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diMail::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diMail.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::Exporter Out(*this, Buffer);
        return Out.One(kParms, 1) ||
               Out.Block(kMessages, 1, [&] { return Out.Each(kMessageParms, Record().Fields, 2); });
    });
}

bool diMail::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diMail.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        if (At.Key != kParms && At.Key != kMessageParms) return false;
        return Trap(L"diMail.SetNode", [&] {
            vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
            return false;
        });
    });
}

bool diMail::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                      std::int32_t Indent) {
    return Trap(L"diMail.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kMessageParms)
                return DispMsgParm(Buffer, PlaceOf(Tree(), At, 1, Self::No, Item)[0], Inside);
            if (At.Key == kMessageTexts)
                return vdbShared::DispElement(Tree(), Record(), kTextSection, At, Item, Buffer, Flags);
            return false;
        });
    });
}

bool diMail::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diMail.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diMail::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diMail.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diMail::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(
        L"diMail.SaveParm", Scratch::Header, kParmRows, Record(), Buffer, SyntaxOn, [&](const R& Read) {
            if (SyntaxOn && Read.Path.empty())
                Raise(L"Non è stato specificato un PATH per la creazione della centrale postale.");
        });
}

bool diMail::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diMail.DispParm", kParmRows, std::as_const(Record()), Buffer, Indent);
}

bool diMail::SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveMessageParms(L"diMail.SaveMsgParm", kMsgRows, Record().Fields, Index, Buffer, SyntaxOn);
}

bool diMail::DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return Trap(L"diMail.DispMsgParm", [&] {
        return DispSection(L"diMail.DispMsgParm", kMsgRows, std::as_const(Record().Fields.Item(Index)),
                           Buffer, Indent);
    });
}

}  // namespace kv
