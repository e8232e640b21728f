#include "items/navigation/diWebServer.h"

#include <array>
#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/MsgUtil.h"
#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/MessageSection.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
using vdbShared::PlaceOf;
namespace {

using R = WebServerRecord;
using M = MessageRecord;

constexpr std::wstring_view kBrowse = L"BROWSE";
constexpr std::wstring_view kConstants = L"CONSTANTS";
constexpr std::wstring_view kConstantParms = L"CONSTANTPARMS";
constexpr std::wstring_view kConstantCaption = L"CONSTANTCAPTION";
constexpr std::wstring_view kErrors = L"ERRORS";
constexpr std::wstring_view kHistory = L"HISTORY";
constexpr std::wstring_view kHome = L"HOME";
constexpr std::wstring_view kLoan = L"LOAN";
constexpr std::wstring_view kLoanReport = L"LOANREPORT";
constexpr std::wstring_view kMessage = L"MESSAGE";
constexpr std::wstring_view kMessageParms = L"MESSAGEPARMS";
constexpr std::wstring_view kMessageCaption = L"MESSAGECAPTION";
constexpr std::wstring_view kQuery = L"QUERY";
constexpr std::wstring_view kQueryResult = L"QUERYRESULT";
constexpr std::wstring_view kRecord = L"RECORD";

// Image of a tag and of a message; that of their folders, and of all below them, is that of leaves.
constexpr std::int32_t kNamedIcon = 15;

enum class Holds { Templates, Named };
struct FolderRow {
    std::wstring_view Word;
    std::wstring_view Caption;
    Holds What;
};

// In the order of the tree, in which the template folders also get their choices.
constexpr FolderRow kFolders[] = {
    {kBrowse, L"Browse Templates", Holds::Templates},
    {kConstants, L"Tags", Holds::Named},
    {kErrors, L"Errors Templates", Holds::Templates},
    {kHistory, L"History Templates", Holds::Templates},
    {kHome, L"Home Templates", Holds::Templates},
    {kLoan, L"Loan Templates", Holds::Templates},
    {kLoanReport, L"LoanReport Templates", Holds::Templates},
    {kMessage, L"Messaggi di sistema", Holds::Named},
    {kQuery, L"Query Templates", Holds::Templates},
    {kQueryResult, L"Query Result Templates", Holds::Templates},
    {kRecord, L"Record Templates", Holds::Templates},
};

// The parameters.

constexpr LadderRow<R> kParmLadder[] = {
    {L"BROWSEROWS=", read::Long<&R::BrowseRows>},
    {L"FLAGS=", read::Flags<&R::Flags, kWebServerFlags>},
    {L"LOGFILE=", read::Text<&R::LogFile>},
    {L"MESSAGELEVEL=",
     [](R& Into, Parm& P) {
         Into.MessageLevel = 0;
         P.AddFlags(kMessageLevels, Into.MessageLevel);
         return false;
     }},
    {L"QUERYTIMEOUT=", read::Long<&R::QueryTimeout>},
};

// The levels as they are shown: DEBUGMODE is told by the words of its bits.
constexpr std::array kShownLevels{kMessageLevels[0], kMessageLevels[1], kMessageLevels[3], kMessageLevels[2]};
static_assert(kShownLevels[0].Text == L"ALERTERROR" && kShownLevels[1].Text == L"LOGERROR" &&
              kShownLevels[2].Text == L"LOGTRANSACTIONS" && kShownLevels[3].Text == L"LOGUSERCONNECT");

constexpr LineRow<const R> kParmLines[] = {
    {L"FLAGS=", write::FlagsNoBlank<&R::Flags, kWebServerFlags>},
    {L"BROWSEROWS=", write::Number<&R::BrowseRows>},
    {L"QUERYTIMEOUT=", write::Number<&R::QueryTimeout>},
    {L"MESSAGELEVEL=",
     [](const R& From, std::wstring_view Keyword, LineWriter& Out) {
         Out.Plain(Keyword, From.MessageLevel == 0 ? std::wstring(kNone)
                                                   : JoinSetWords(kShownLevels, From.MessageLevel));
         return false;
     }},
    {L"LOGFILE=", write::Quoted<&R::LogFile>},
};

// The record in strict mode, in this order.
void CheckParms(const R& Read) {
    if (Read.BrowseRows < 1) Raise(L"BROWSEROWS= dev'essere un numero positivo.");
    if (Read.QueryTimeout < 0) Raise(L"QUERYTIMEOUT= dev'essere >= 0.");
}

// The texts of a tag.

constexpr LadderRow<ParmItem> kTextLadder[] = {
    {L"TEXT=", read::Text<&ParmItem::Text>},
    {L"LANG=", read::Upper<&ParmItem::Language>},
};

// The entry's name stands where its text would be looked for.
std::wstring ConstantNode(const ParmItem& Of) { return caption::OfLanguage(L"Tag: [", Of.Language, Of.Name); }

// The caption that a save gives is that of a message, not the one that the tree is built with.
bool ConstantSave(std::wstring& Buffer, ParmItem& Item, std::wstring& Caption, bool SyntaxOn) {
    return SaveSection(L"diWebServer.ConstantSave", Scratch::Header, kTextLadder, Item, Buffer, SyntaxOn,
                       [&](ParmItem& Read) {
                           if (SyntaxOn && Read.Language.empty())
                               Raise(L"Non è stato specificato un codice LANG valido.");
                           Read.Text = MsgUtil::FilterText(Read.Text);
                           Caption = MessageNode(Read);
                       });
}

// Without an item: the form to fill in.
bool ConstantDisp(std::wstring& Buffer, const ParmItem* Item, std::int32_t Indent) {
    return Trap(L"diWebServer.ConstantDisp", [&] {
        LineWriter Out{Buffer, Indent};
        Out.Quoted(L"TEXT=", Item ? MsgUtil::FilterText(Item->Text) : std::wstring());
        Out.Quoted(L"LANG=", Item ? Item->Language : std::wstring());
        if (Item) DispHeader(Buffer, *Item, Indent);
        return false;
    });
}

// The lists.

template <MessageListRecord R::*Holder>
struct NamedIn {
    using Record = R;
    static constexpr std::size_t kOwners = 0;
    static auto& Of(R& In, const Place&) { return (In.*Holder).Message; }
};
using Tags = NamedIn<&R::Constants>;
using TagTexts = InElement<Tags, &M::Message>;
using Messages = NamedIn<&R::Messages>;
using MessageTexts = InElement<Messages, &M::Message>;

constexpr vdbShared::ElementShape kConstShape{.Word = kConstants,
                                              .ParmsWord = kConstantParms,
                                              .ParmsCaption = L"Parametri",
                                              .InnerWord = kConstantCaption,
                                              .InnerCaption = L"Tags",
                                              .Icon = kNamedIcon};

constexpr vdbShared::ElementShape kMsgShape{.Word = kMessage,
                                            .ParmsWord = kMessageParms,
                                            .ParmsCaption = L"Parametri",
                                            .InnerWord = kMessageCaption,
                                            .InnerCaption = L"Messaggi",
                                            .Icon = kNamedIcon};

template <auto Member, const std::wstring_view& Word>
bool SetNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
             std::optional<std::int32_t> Relationship) {
    return Trap(L"diWebServer.SetNode", [&] {
        return vdbShared::Leaf<InRecord<Member>, Word, HtmlNode<HtmlRecord>>(Tree, Record, At, Index, Key,
                                                                             Relationship);
    });
}

bool SetConstNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                  std::optional<std::int32_t> Relationship) {
    return Trap(L"diWebServer.SetConstNode", [&] {
        const M& Tag = Record.Constants.Message.Item(Index);
        vdbShared::AddElementNodes(Tree, kConstShape, Tag.Name,
                                   vdbShared::CaptionsOf(Tag.Message, ConstantNode), Key, Relationship);
        return false;
    });
}

bool SetMsgNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                std::optional<std::int32_t> Relationship) {
    return Trap(L"diWebServer.SetMsgNode", [&] {
        const M& Message = Record.Messages.Message.Item(Index);
        vdbShared::AddElementNodes(Tree, kMsgShape, Message.Name,
                                   vdbShared::CaptionsOf(Message.Message, MessageNode<ParmItem>), Key,
                                   Relationship);
        return false;
    });
}

template <auto Member, const std::wstring_view& Word>
constexpr ListSection<R> Templates() {
    using L = InRecord<Member>;
    return {Word,       0,         vdbShared::ListOf<L>, vdbShared::NewIn<L>, SetNode<Member, Word>,
            NewAt::End, Move::Yes, Delete::Yes};
}

constexpr auto kOfFolder = vdbShared::LeafKeys::OfFolder;
constexpr auto kAsIcon = vdbShared::MadeBy::AddIconNode;
constexpr auto Text = MessageNode<ParmItem>;

// clang-format off
constexpr ListSection<R> kLists[] = {
    Templates<&R::Browse, kBrowse>(),
    Templates<&R::Errors, kErrors>(),
    Templates<&R::History, kHistory>(),
    Templates<&R::Home, kHome>(),
    Templates<&R::Loan, kLoan>(),
    Templates<&R::LoanReport, kLoanReport>(),
    Templates<&R::Query, kQuery>(),
    Templates<&R::QueryResult, kQueryResult>(),
    Templates<&R::Record, kRecord>(),
    {kConstants, 0, vdbShared::ListOf<Tags>, NewMessageWithTextIn<Tags>, SetConstNode, NewAt::End, Move::Yes, Delete::One},
    {kMessage, 0, vdbShared::ListOf<Messages>, NewMessageWithTextIn<Messages>, SetMsgNode, NewAt::End, Move::Yes, Delete::One},
    {kConstantCaption, 1, vdbShared::ListOf<TagTexts>, vdbShared::NewIn<TagTexts>, vdbShared::InnerLeaf<TagTexts, kConstantCaption, kOfFolder, ConstantNode, ConstantNode, kAsIcon>, NewAt::End, Move::Yes, Delete::Yes},
    {kMessageCaption, 1, vdbShared::ListOf<MessageTexts>, vdbShared::NewIn<MessageTexts>, vdbShared::InnerLeaf<MessageTexts, kMessageCaption, kOfFolder, Text, Text, kAsIcon>, NewAt::End, Move::Yes, Delete::Yes},
};
// clang-format on

template <auto Member>
constexpr ElementSection<R> Pages(std::wstring_view Word) {
    return vdbShared::Edits<InRecord<Member>, ParmEditor::SaveHtml, ParmEditor::DispHtml,
                            HtmlNode<HtmlRecord>>(Word, Self::Yes);
}

// The sections of elements that ParmEditor reads and renders.
constexpr ElementSection<R> kSections[] = {
    Pages<&R::Browse>(kBrowse),
    Pages<&R::Errors>(kErrors),
    Pages<&R::History>(kHistory),
    Pages<&R::Home>(kHome),
    Pages<&R::Loan>(kLoan),
    Pages<&R::LoanReport>(kLoanReport),
    Pages<&R::Query>(kQuery),
    Pages<&R::QueryResult>(kQueryResult),
    Pages<&R::Record>(kRecord),
    vdbShared::Edits<MessageTexts, ParmEditor::SaveCaption, ParmEditor::DispCaption, Text>(kMessageCaption,
                                                                                           Self::Yes),
};

void AddFolder(DesignTree& Tree, const FolderRow& Row) {
    if (Row.What == Holds::Named)
        Tree.AddIconNode({.Relative = kRootKey,
                          .Relationship = relation::kChild,
                          .Key = Row.Word,
                          .Text = Row.Caption,
                          .Kind = kind::kList});
    else
        vdbShared::AddFolder(Tree, Row.Word, Row.Caption, kind::kList);
}

// The value words.

constexpr auto kFlagChoices = NoneThen(kWebServerFlags);
constexpr auto kLevelChoices = NoneThen(kMessageLevels);

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices},
    {kParms, L"MESSAGELEVEL=", kLevelChoices},
};

bool OfferChoices(DesignTree& Tree) {
    if (AddChoices(Tree, kChoices)) return true;
    for (const FolderRow& Row : kFolders)
        if (Row.What == Holds::Templates && HtmlDefaults(Tree, Row.Word)) return true;
    return false;
}

}  // namespace

bool diWebServer::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer, RegData*) {
    return Trap(L"diWebServer.SaveData", [&] {
        SaveFlags Flags;
        const bool SyntaxOn = Tree().SyntaxOn();
        if (SetSaveFlags(Flags, SyntaxOn)) return true;
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        const auto Named = [&](auto Parser, ParmList<M>& List) {
            const std::int32_t Index = PlaceOf(Tree(), At, 1, Self::No)[0];
            if ((this->*Parser)(Buffer, Index, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), vdbShared::ElementNode(Tree(), At, Self::No),
                                   List.Item(Index).Name, NewItemKey);
            return false;
        };
        if (At.Key == kConstantParms) return Named(&diWebServer::SaveConstParm, Record().Constants.Message);
        if (At.Key == kMessageParms) return Named(&diWebServer::SaveMsgParm, Record().Messages.Message);
        if (At.Key == kConstantCaption) {
            ParmItem& Entry = vdbShared::ElementAt<TagTexts>(Record(), PlaceOf(Tree(), At, 1, Self::Yes));
            std::wstring Caption;
            if (ConstantSave(Buffer, Entry, Caption, SyntaxOn)) return true;
            vdbShared::ShowCaption(Tree(), At.CurrItem, std::move(Caption), NewItemKey);
            return false;
        }
        const auto* const Section = FindSection(kSections, At.Key);
        return Section && vdbShared::SaveElement(Tree(), Record(), *Section, At, NewItemKey, Buffer, Flags);
    });
}

bool diWebServer::Save(RegData& Clsid) {
    return Trap(L"diWebServer.Save", [&] { return Record().Save(Clsid); });
}

bool diWebServer::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diWebServer.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diWebServer::LoadData(RegData& Clsid) {
    return Trap(L"diWebServer.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        for (const FolderRow& Row : kFolders) {
            AddFolder(Tree(), Row);
            if (vdbShared::BuildList(Tree(), Record(), *FindSection(kLists, Row.Word))) return true;
        }
        return OfferChoices(Tree());
    });
}

bool diWebServer::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                std::wstring& Id) {
    return Trap(L"diWebServer.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

// LOANREPORT stands before LOAN here, and behind it in the tree.
bool diWebServer::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diWebServer.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        const R& From = Record();
        vdbShared::Exporter Out(*this, Buffer);
        // All tags, or all messages, in one block.
        const auto Named = [&](std::wstring_view Word, const ParmList<M>& List, std::wstring_view Parms,
                               std::wstring_view Texts) {
            return Out.Block(Word, 1, [&] {
                return Out.Each(List, [&](std::int32_t I) {
                    return Out.One(Parms, 2, {&I, 1}) || Out.Inner(Texts, List.Item(I).Message, I, 2);
                });
            });
        };
        return Out.One(kParms, 1) || Out.Each(kBrowse, From.Browse, 1) ||
               Named(kConstants, From.Constants.Message, kConstantParms, kConstantCaption) ||
               Out.Each(kErrors, From.Errors, 1) || Out.Each(kHistory, From.History, 1) ||
               Out.Each(kHome, From.Home, 1) || Out.Each(kLoanReport, From.LoanReport, 1) ||
               Out.Each(kLoan, From.Loan, 1) ||
               Named(kMessage, From.Messages.Message, kMessageParms, kMessageCaption) ||
               Out.Each(kQuery, From.Query, 1) || Out.Each(kQueryResult, From.QueryResult, 1) ||
               Out.Each(kRecord, From.Record, 1);
    });
}

bool diWebServer::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diWebServer.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        if (At.Key == kParms || At.Key == kConstantParms || At.Key == kMessageParms)
            // A leaf of SetNode, also where all around it are icon nodes.
            return vdbShared::AddNamelessLeaf(L"diWebServer.SetNode", Tree(), At, NewItemKey);
        return false;
    });
}

bool diWebServer::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                           std::int32_t Indent) {
    return Trap(L"diWebServer.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            // An indent of 0 stays 0, block or not.
            const std::int32_t Inside = vdbShared::InnerIndent(Indent);
            const auto Element = [&] { return PlaceOf(Tree(), At, 1, Self::No, Item)[0]; };
            if (At.Key == kParms) return DispParm(Buffer, Inside);
            if (At.Key == kConstantParms) return DispConstParm(Buffer, Element(), Inside);
            if (At.Key == kMessageParms) return DispMsgParm(Buffer, Element(), Inside);
            if (At.Key == kConstantCaption) {
                if (Item.empty() && !vdbShared::IsElement(Tree(), At))
                    return ConstantDisp(Buffer, nullptr, Inside);
                return ConstantDisp(
                    Buffer,
                    &vdbShared::ElementAt<TagTexts>(Record(), PlaceOf(Tree(), At, 1, Self::Yes, Item)),
                    Inside);
            }
            const auto* const Section = FindSection(kSections, At.Key);
            return Section && vdbShared::DispElement(Tree(), Record(), *Section, At, Item, Buffer, Flags);
        });
    });
}

bool diWebServer::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diWebServer.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diWebServer::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diWebServer.DeleteData", Tree(), Record(), kLists, At, Group);
}

bool diWebServer::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diWebServer.SaveParm", Scratch::Parameters, kParmLadder, Record(), Buffer, SyntaxOn,
                       [&](const R& Read) {
                           if (SyntaxOn) CheckParms(Read);
                       });
}

bool diWebServer::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diWebServer.DispParm", kParmLines, std::as_const(Record()), Buffer, Indent);
}

bool diWebServer::SaveConstParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveMessageParms(L"diWebServer.SaveConstParm", Record().Constants.Message, Index, Buffer,
                            SyntaxOn);
}

bool diWebServer::DispConstParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispMessageParms(L"diWebServer.DispConstParm", Record().Constants.Message, Index, Buffer, Indent);
}

bool diWebServer::SaveMsgParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn) {
    return SaveMessageParms(L"diWebServer.SaveMsgParm", Record().Messages.Message, Index, Buffer, SyntaxOn);
}

bool diWebServer::DispMsgParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispMessageParms(L"diWebServer.DispMsgParm", Record().Messages.Message, Index, Buffer, Indent);
}

}  // namespace kv
