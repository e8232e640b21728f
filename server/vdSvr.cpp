#include "server/vdSvr.h"

#include <algorithm>
#include <array>
#include <utility>

#include "items/client/diApplication.h"
#include "items/client/diProfile.h"
#include "items/client/diRetrieval.h"
#include "items/client/diWebClient.h"
#include "items/definitions/diImportProc.h"
#include "items/definitions/diMater.h"
#include "items/definitions/diSort.h"
#include "items/definitions/diStem.h"
#include "items/definitions/diStopWord.h"
#include "items/definitions/diStringTable.h"
#include "items/definitions/diTable.h"
#include "items/navigation/diBrowse.h"
#include "items/navigation/diHelp.h"
#include "items/navigation/diMenu.h"
#include "items/navigation/diQuery.h"
#include "items/navigation/diSetOp.h"
#include "items/navigation/diWebServer.h"
#include "items/services/diAlias.h"
#include "items/services/diCatProc.h"
#include "items/services/diCatalogue.h"
#include "items/services/diCommand.h"
#include "items/services/diFilter.h"
#include "items/services/diImport.h"
#include "items/services/diLoan.h"
#include "items/services/diLoanClient.h"
#include "items/services/diLoanMenu.h"
#include "items/services/diMail.h"
#include "items/services/diMailGroup.h"
#include "items/services/diMember.h"
#include "items/services/diRepository.h"
#include "resources/ToolButtons.h"

namespace kv {
namespace {

template <class Item>
std::unique_ptr<iKvTree> Make() {
    return std::make_unique<Item>();
}

struct ClassRow {
    std::wstring_view Word;
    std::unique_ptr<iKvTree> (*Create)();
};

/// The class word ladder; words are compared exactly.
// clang-format off
constexpr ClassRow kClasses[] = {
    {L"ALIAS", Make<diAlias>},
    {L"VCLIENT", Make<diApplication>},
    {L"RETRIEVAL", Make<diRetrieval>},
    {L"BROWSE", Make<diBrowse>},
    {L"CATALOGUE", Make<diCatalogue>},
    {L"CATPROC", Make<diCatProc>},
    {L"COMMAND", Make<diCommand>},
    {L"FILTER", Make<diFilter>},
    {L"HELP", Make<diHelp>},
    {L"IMPORT", Make<diImport>},
    {L"IMPORTPROC", Make<diImportProc>},
    {L"LOAN", Make<diLoan>},
    {L"LOANCLIENT", Make<diLoanClient>},
    {L"LOANMENU", Make<diLoanMenu>},
    {L"MAIL", Make<diMail>},
    {L"MAILGROUP", Make<diMailGroup>},
    {L"MATER", Make<diMater>},
    {L"MEMBER", Make<diMember>},
    {L"MENU", Make<diMenu>},
    {L"PROFILE", Make<diProfile>},
    {L"QUERY", Make<diQuery>},
    {L"REPOSITORY", Make<diRepository>},
    {L"SETOPS", Make<diSetOp>},
    {L"SORT", Make<diSort>},
    {L"STEM", Make<diStem>},
    {L"STOPWORD", Make<diStopWord>},
    {L"STRINGTABLE", Make<diStringTable>},
    {L"TABLE", Make<diTable>},
    {L"WEBCLIENT", Make<diWebClient>},
    {L"WEBSERVER", Make<diWebServer>},
};
// clang-format on

constexpr auto kClassWords = [] {
    std::array<std::wstring_view, std::size(kClasses)> Words;
    std::transform(std::begin(kClasses), std::end(kClasses), Words.begin(),
                   [](const ClassRow& Row) { return Row.Word; });
    return Words;
}();

constexpr std::wstring_view kIniFile = L"VELMIRA.INI";
constexpr std::int32_t kInitMode = 3;

/// The shape of every forwarding operation: what the body answers or raises becomes the result, and a failure
/// is shown to the operator here and nowhere else.
template <class Body>
bool Forward(std::wstring_view Source, Body&& Call) noexcept {
    if (!Trap(Source, std::forward<Body>(Call))) return false;
    CoreUtil::Instance().ShowLastError();
    return true;
}

void SetPointer(std::int32_t Pointer) { CoreUtil::Instance().Door().SetPointer(Pointer); }

}  // namespace

std::span<const std::wstring_view> ClassWords() noexcept { return kClassWords; }

vdSvr::vdSvr(RegistryServer* Registry, const TreeMaker& MakeTree) {
    static_cast<void>(Trap(L"vdSvr.vdSvr", [&] {
        CoreUtil::Instance().Init(Registry, kIniFile, kInitMode);
        Tree_ = MakeTree();
        return false;
    }));
}

vdSvr::~vdSvr() { ShutDown(); }

void vdSvr::CreateItem(const std::wstring& Word) {
    DropItem();
    const auto Row = std::find_if(std::begin(kClasses), std::end(kClasses),
                                  [&](const ClassRow& Candidate) { return Candidate.Word == Word; });
    if (Row == std::end(kClasses)) Raise(L"Metodo sconosciuto [" + Word + L"]");
    Item_ = Row->Create();
    Item_->DesignTree() = Tree_;
}

void vdSvr::DropItem() noexcept {
    if (Item_) Item_->DesignTree().reset();
    Item_.reset();
}

iKvTree& vdSvr::Item() const {
    if (!Item_) RaiseFault(fault::kNoObject);
    return *Item_;
}

kv::RegData& vdSvr::Object() const {
    if (!RegData_) RaiseFault(fault::kNoObject);
    return *RegData_;
}

bool vdSvr::ShowData(HostObject* CallBack, std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid,
                     kv::RegData*& Target, bool Flag) {
    return Trap(L"vdSvr.ShowData", [&] {
        if (Closed_) return true;
        if (!Tree_) RaiseFault(fault::kNoObject);
        ClassWord_ = Clsid;
        RegData_ = std::move(RegData);
        CreateItem(Clsid);
        if (Tree_->SetTools(resources::kClipboardWords)) return true;
        Tree_->AddToolButton({.Style = kSeparatorStyle});
        std::array<std::wstring_view, resources::kToolButtons.size()> Words;
        for (std::size_t I = 0; I < Words.size(); ++I) {
            const resources::ToolButton& Button = resources::kToolButtons[I];
            Words[I] = Button.Word;
            Tree_->AddToolButton({.Key = Button.Word, .ToolTip = Button.ToolTip, .Bitmap = Button.Bitmap});
        }
        if (Tree_->SetTools(Words)) return true;
        // The window may let go of this object's tree while it runs.
        const std::shared_ptr<kv::DesignTree> Shown = Tree_;
        TreeCall Call{.CallBack = CallBack, .ClassWord = Clsid, .Target = Target, .Flag = Flag};
        const bool Failed = Shown->ShowTree(Call);
        Target = Call.Target;
        if (Failed) CoreUtil::Instance().ShowLastError();
        return Failed;
    });
}

bool vdSvr::Export(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid, std::wstring& Buffer) {
    const bool Failed = Forward(L"vdSvr.Export", [&] {
        if (Closed_) return true;
        SetPointer(kPointerWait);
        CreateItem(Clsid);
        if (!RegData) RaiseFault(fault::kNoObject);
        return Item().ExportData(*RegData, Buffer);
    });
    DropItem();
    return Forward(L"vdSvr.Export",
                   [] {
                       SetPointer(kPointerDefault);
                       return false;
                   }) ||
           Failed;
}

bool vdSvr::Import(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid, std::wstring& Buffer) {
    const bool Failed = Forward(L"vdSvr.Import", [&] {
        CreateItem(Clsid);
        if (!RegData) RaiseFault(fault::kNoObject);
        return Item().ImportData(*RegData, Buffer);
    });
    if (!Failed) DropItem();  // after a failure the item is kept
    return Failed;
}

void vdSvr::LastError(std::int32_t& Number, std::wstring& Source, std::wstring& Description,
                      std::wstring& HelpFile, std::wstring& HelpContext, std::int32_t& LastDLLError) {
    static_cast<void>(Trap(L"vdSvr.LastError", [&] {
        CoreUtil::Instance().FetchLastError(Number, Source, Description, HelpFile, HelpContext, LastDLLError);
        return false;
    }));
}

void vdSvr::ShutDown() noexcept {
    DropItem();
    RegData_.reset();
    if (Tree_)
        static_cast<void>(Trap(L"vdSvr.ShutDown", [&] {
            Tree_->Dispose();
            return false;
        }));
    Tree_.reset();
}

bool vdSvr::CopyData(const std::wstring&, const Head& At, bool Group, ClipItem& Clipboard) {
    return Forward(L"vdSvr.CopyData", [&] { return Item().CopyData(At, Group, Clipboard); });
}

bool vdSvr::DeleteData(const std::wstring&, const Head& At, bool Group) {
    return Forward(L"vdSvr.DeleteData", [&] { return Item().DeleteData(At, Group); });
}

bool vdSvr::DispData(const std::wstring&, const Head& At, std::wstring& Buffer) {
    return Forward(L"vdSvr.DispData", [&] { return Item().DispData(At, Buffer, false, {}, 0); });
}

bool vdSvr::EditData(const std::wstring&, const Head& At, std::wstring& NewItemKey) {
    return Forward(L"vdSvr.EditData", [&] { return Item().EditData(At, NewItemKey); });
}

bool vdSvr::GetObjectInfo(const std::wstring&, std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                          std::wstring& Clsid, std::wstring& Id, std::wstring& UserList) {
    return Forward(L"vdSvr.GetObjectInfo", [&] {
        if (Item().GetObjectInfo(Name, Desc, Version, Id)) return true;
        Clsid = Object().Clsid();
        UserList = Object().UserList();
        return false;
    });
}

bool vdSvr::HelpShow(const std::wstring&, const std::wstring&, const std::wstring&, const std::wstring&) {
    return false;
}

bool vdSvr::LoadData(const std::wstring&) {
    return Forward(L"vdSvr.LoadData", [&] { return Item().LoadData(Object()); });
}

bool vdSvr::MoveData(const std::wstring&, Head& At, std::int32_t Direction) {
    return Forward(L"vdSvr.MoveData", [&] { return Item().MoveData(At, Direction); });
}

bool vdSvr::PasteData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                      ClipItem& ExternalSource) {
    return Forward(L"vdSvr.PasteData", [&] {
        if (ExternalSource.ClassWord != Path)
            Raise(L"I dati memorizzati sono di una classe diversa da " + Path);
        return Item().PasteData(At, NewItemKey, ExternalSource);
    });
}

bool vdSvr::Terminate(const std::wstring&, std::shared_ptr<kv::RegData>& RegData) {
    RegData = RegData_;
    DropItem();
    return false;
}

bool vdSvr::Quit(bool& Cancel) {
    Cancel = false;
    return false;
}

bool vdSvr::Save(const std::wstring&) {
    return Forward(L"vdSvr.Save", [&] {
        iKvTree& Edited = Item();
        Object().SetSaving(true);
        return Edited.Save(Object());
    });
}

bool vdSvr::SaveData(const std::wstring&, const Head& At, std::wstring& NewItemKey, std::wstring& Buffer) {
    return Forward(L"vdSvr.SaveData", [&] { return Item().SaveData(At, NewItemKey, Buffer, nullptr); });
}

bool vdSvr::ShowPropTable(const std::wstring&, const std::wstring& CurrFolder, const std::wstring& CurrItem) {
    return Forward(L"vdSvr.ShowPropTable", [&] { return Item().ShowPropTable(CurrFolder, CurrItem); });
}

void vdSvr::TlbrButtonClick(const std::wstring& Method, const std::wstring& CurrFolder,
                            const std::wstring& CurrItem, const std::wstring& Key) {
    // The tool itself shows what went wrong; what only this procedure meets is shown here.
    static_cast<void>(Forward(L"vdSvr.TlbrButtonClick", [&] {
        static_cast<void>(Item().TlbrButtonClick(Method, CurrFolder, CurrItem, Key));
        return false;
    }));
}

}  // namespace kv
