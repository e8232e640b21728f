#include "items/client/diApplication.h"

#include <array>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/TagTools.h"
#include "frame/vdbcModule.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = ApplicationRecord;

constexpr std::wstring_view kClassWord = L"VCLIENT";
constexpr std::wstring_view kFormFonts = L"FORMFONTS";
constexpr std::wstring_view kMessageFonts = L"MESSAGEFONTS";
constexpr std::wstring_view kTitleFonts = L"TITLEFONTS";
constexpr std::wstring_view kMessages = L"FIELDS";
constexpr std::wstring_view kMessageParms = L"FIELDPARMS";
constexpr std::wstring_view kMessageTexts = L"FIELDCAPTION";

constexpr std::wstring_view kTools[] = {L"CONSTANTS"};

// The value words, behind those of ALLOWSHUTDOWN= and STARTACTION=.

constexpr std::array kTextOnly{kClientFormats[0].Text};
constexpr std::array kRtfOnly{kClientFormats[1].Text};
constexpr auto kLoanChoices = WordsOf(kClientLoanWords);
constexpr auto kIdleChoices = WordsOf(kIdleActions);
constexpr auto kMsieChoices = NoneThen(kMsieFlags);
constexpr auto kStartupChoices = WordsOf(kStartupModes);
constexpr auto kFileChoices = NoneThen(kFileFlags);
constexpr auto kPrinterChoices = NoneThen(kPrinterFlags);

constexpr Choice kChoices[] = {
    {kParms, L"FORMAT=", kTextOnly},
    {kParms, L"LOANENABLE=", kLoanChoices},
    {kParms, L"FORMAT=", kRtfOnly},
    {kParms, L"IDLEACTION=", kIdleChoices},
    {kParms, L"MSIEFLAGS=", kMsieChoices},
    {kParms, L"STARTUPMODE=", kStartupChoices},
    {kParms, L"OUTPUTUSERLOG=", kBooleanWords},
    {kParms, L"FILEFLAGS=", kFileChoices},
    {kParms, L"PRINTERFLAGS=", kPrinterChoices},
    {kParms, L"PRNMAXITEMS=", kNoneOnly},
    {kParms, L"PRNMAXRECS=", kNoneOnly},
    {kParms, L"FILEMAXITEMS=", kNoneOnly},
    {kParms, L"FILEMAXRECS=", kNoneOnly},
    {kParms, L"REMOTEDB=", kBooleanWords},
};

// The lists.

using FormFonts = InRecord<&R::FormFonts>;
using MessageFonts = InRecord<&R::MessageFonts>;
using TitleFonts = InRecord<&R::TitleFonts>;
struct Messages {
    using Record = R;
    static constexpr std::size_t kOwners = 0;
    static auto& Of(R& In, const Place&) { return In.Messages.Message; }
};
using Texts = InElement<Messages, &MessageRecord::Message>;

// A message and what hangs below it bear no kind.
constexpr vdbShared::ElementShape kMsgShape{.Word = kMessages,
                                            .ParmsWord = kMessageParms,
                                            .ParmsCaption = L"Parametri",
                                            .ParmsLeaf = vdbShared::LeafKeys::OfSection,
                                            .InnerWord = kMessageTexts,
                                            .InnerCaption = L"Messaggi",
                                            .InnerKind = kind::kPlain,
                                            .InnerLeaf = vdbShared::LeafKeys::OfSection,
                                            .Kind = kind::kPlain};

template <class L, const std::wstring_view& Word>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diApplication.SetNode", [&] {
        return vdbShared::Leaf<L, Word, FontNode<FontRecord>>(Tree, Record, At, Index, Key, Relationship);
    });
}

// A message and all that hangs below it.
bool SetMsgNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                std::optional<std::int32_t> Relationship) {
    return Trap(L"diApplication.SetMsgNode", [&] {
        const MessageRecord& Message = Record.Messages.Message.Item(Index);
        vdbShared::AddElementNodes(Tree, kMsgShape, Message.Name,
                                   vdbShared::CaptionsOf(Message.Message, MessageNode<ParmItem>), Key,
                                   Relationship);
        return false;
    });
}

std::int32_t NewMessage(R& Record, const Place&, std::int32_t After) {
    MessageRecord Fresh;
    Fresh.Name = kUnnamed;
    return vdbShared::NewElement(Record.Messages.Message, After, std::move(Fresh));
}

constexpr auto kOfSection = vdbShared::LeafKeys::OfSection;

constexpr ListSection<R> kLists[] = {
    {kFormFonts, 0, vdbShared::ListOf<FormFonts>, vdbShared::NewIn<FormFonts>, SetNode<FormFonts, kFormFonts>,
     NewAt::End, Move::Yes, Delete::Yes},
    {kMessageFonts, 0, vdbShared::ListOf<MessageFonts>, vdbShared::NewIn<MessageFonts>,
     SetNode<MessageFonts, kMessageFonts>, NewAt::End, Move::Yes, Delete::Yes},
    {kTitleFonts, 0, vdbShared::ListOf<TitleFonts>, vdbShared::NewIn<TitleFonts>,
     SetNode<TitleFonts, kTitleFonts>, NewAt::End, Move::Yes, Delete::Yes},
    {kMessages, 0, vdbShared::ListOf<Messages>, NewMessage, SetMsgNode, NewAt::End, Move::Yes, Delete::Yes},
    {kMessageTexts, 1, vdbShared::ListOf<Texts>, vdbShared::NewIn<Texts>,
     vdbShared::InnerLeaf<Texts, kMessageTexts, kOfSection, MessageNode<ParmItem>, MessageNode<ParmItem>>,
     NewAt::End, Move::Yes, Delete::Yes},
};

// The sections of elements. The fonts of the messages are parsed as those of the forms. A message is parsed
// with the others in sight, since its name must be its own.

bool SaveMessage(R& Record, const Place& At, std::wstring& Buffer, const SaveFlags& Flags) {
    return ParmEditor::SaveMessage(Record.Messages.Message, At[0], Buffer, Flags);
}
bool DispMessage(R& Record, const Place& At, std::wstring& Buffer, const SaveFlags& Flags) {
    return ParmEditor::DispMessage(vdbShared::ElementAt<Messages>(Record, At), Buffer, Flags);
}
std::wstring NameOf(R& Record, const Place& At) { return vdbShared::ElementAt<Messages>(Record, At).Name; }

// clang-format off
constexpr ElementSection<R> kSections[] = {
    vdbShared::Edits<FormFonts, ParmEditor::SaveFormFont, ParmEditor::DispFormFont, FontNode<FontRecord>>(kFormFonts, Self::Yes),
    vdbShared::Edits<MessageFonts, ParmEditor::SaveFormFont, ParmEditor::DispMessageFont, FontNode<FontRecord>>(kMessageFonts, Self::Yes),
    vdbShared::Edits<TitleFonts, ParmEditor::SaveTitleFont, ParmEditor::DispTitleFont, FontNode<FontRecord>>(kTitleFonts, Self::Yes),
    {kMessageParms, 1, Self::No, SaveMessage, DispMessage, NameOf},
    vdbShared::Edits<Texts, ParmEditor::SaveMessageText, ParmEditor::DispMessageText, MessageNode<ParmItem>>(kMessageTexts, Self::Yes),
};
// clang-format on

constexpr vdbShared::FolderRow kFolders[] = {
    {kFormFonts, L"Font per le form"},
    {kMessageFonts, L"Font per i messaggi"},
    {kTitleFonts, L"Font per i titoli"},
    {kMessages, L"Messaggi di sistema"},
};

}  // namespace

bool diApplication::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diApplication.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveApplication(Record(), Buffer, Flags);
        const auto* const Section = FindSection(kSections, At.Key);
        return Section && vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
    });
}

bool diApplication::Save(RegData& Clsid) {
    return Trap(L"diApplication.Save", [&] { return Record().Save(Clsid); });
}

bool diApplication::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diApplication.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diApplication::LoadData(RegData& Clsid) {
    return Trap(L"diApplication.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid) || Tree().SetTools(kTools)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolders(Tree(), kFolders);
        return vdbShared::BuildLists(Tree(), Record(), kLists) ||
               BooleanDefaults(Tree(), kParms, L"ALLOWSHUTDOWN=") ||
               ActionDefaults(Tree(), kParms, L"STARTACTION=") || AddChoices(Tree(), kChoices);
    });
}

bool diApplication::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                  std::wstring& Id) {
    return Trap(L"diApplication.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diApplication::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diApplication.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& Exported = Record();
        vdbShared::Exporter Out(*this, Buffer);
        return Out.Block(kClassWord, 0, [&] {
            return Out.One(kParms, 1) || Out.Each(kFormFonts, Exported.FormFonts, 1) ||
                   Out.Each(kMessageFonts, Exported.MessageFonts, 1) ||
                   Out.Each(kTitleFonts, Exported.TitleFonts, 1) ||
                   Out.Each(Exported.Messages.Message, [&](std::int32_t I) {
                       return Out.Block(kMessages, 0, [&] {
                           return Out.One(kMessageParms, 1, {&I, 1}) ||
                                  Out.Inner(kMessageTexts, Exported.Messages.Message.Item(I).Message, I, 1);
                       });
                   });
        });
    });
}

bool diApplication::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diApplication.EditData", Tree(), Record(), kLists, At, NewItemKey);
}

bool diApplication::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                             std::int32_t) {
    return Trap(L"diApplication.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key == kParms) return ParmEditor::DispApplication(Record(), Buffer, Flags);
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diApplication::TlbrButtonClick(const std::wstring& Method, const std::wstring&, const std::wstring&,
                                    const std::wstring&) {
    return vdbShared::RunTool(L"diApplication.TlbrButtonClick", [&] {
        return Method == L"CONSTANTS" &&
               ExportFieldsToConsts(kClassWord, TagMessagesOf(Record().Messages.Message));
    });
}

bool diApplication::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diApplication.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diApplication::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diApplication.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
