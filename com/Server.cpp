#include "com/Server.h"

#include <optional>
#include <string>
#include <utility>

#include "com/Failing.h"
#include "com/Node.h"
#include "com/OwnTree.h"
#include "com/Values.h"
#include "com/window/TreeWindow.h"
#include "frame/CoreUtil.h"

namespace kv::com {
namespace {

/// One for all server objects, as the error store behind it is; made with the first and taken away with the
/// last.
CallBackPlatform& Door() {
    static CallBackPlatform The;
    return The;
}
long Servers = 0;

/// What a window has copied; it holds objects in memory alone.
kv::ClipItem& Clipboard() {
    static kv::ClipItem The;
    return The;
}

class Flagged {
  public:
    explicit Flagged(bool& Flag) noexcept : Flag_(Flag) { Flag_ = true; }
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;
    ~Flagged() { Flag_ = false; }

  private:
    bool& Flag_;
};

/// A string argument that comes back. The caller's string changes only in Give.
class InOutText {
  public:
    explicit InOutText(BSTR* Place) : Place_(Told(Place)), Text(FromBstr(Place_)) {}
    void Give() {
        Bstr Made(Text);
        std::swap(Place_, *Made.Out());
    }

  private:
    BSTR& Place_;

  public:
    std::wstring Text;
};

/// An object argument that comes back.
void GiveObject(IDispatch*& Place, IDispatch* Object) noexcept {
    if (Object) Object->AddRef();
    if (IDispatch* const Gone = std::exchange(Place, Object)) Gone->Release();
}

Head HeadOf(BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key) {
    return {.CurrFolder = FromBstr(CurrFolder),
            .CurrItem = FromBstr(CurrItem),
            .Index = static_cast<std::int32_t>(Index),
            .Key = FromBstr(Key)};
}

std::shared_ptr<HostRegData> ObjectOfHost(IDispatch* Object) {
    if (!Object) throw Refusal(E_POINTER, L"Manca l'oggetto");
    return std::make_shared<HostRegData>(Object);
}

const std::wstring kNoPath;

}  // namespace

/// What holds while a method runs.
class Server::Session {
  public:
    explicit Session(Server& Of) : Kept_(static_cast<::_vdSvr*>(&Of)) {
        module::CheckThread();
        Before_ = Door().Ask(Of.CallBack_);
        Asks_ = true;
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        if (Asks_) Door().Ask(std::move(Before_));
    }

  private:
    Ref<::_vdSvr> Kept_;
    Ref<IDispatch> Before_;
    bool Asks_ = false;
};

template <class Body>
HRESULT Server::Method(std::wstring_view Name, Body&& Run) noexcept {
    return Guard(__uuidof(::_vdSvr), Name, [&] {
        const Session During(*this);
        Run();
    });
}

template <class Body>
HRESULT Server::Operation(std::wstring_view Name, VARIANT_BOOL* Failed, Body&& Run) noexcept {
    return Method(Name, [&] {
        Told(Failed) = VARIANT_TRUE;
        if (Busy_) throw Refusal(E_UNEXPECTED, L"Il server sta eseguendo un'altra operazione");
        const Flagged Working(Busy_);
        if (!Run()) *Failed = VARIANT_FALSE;
    });
}

Server::Share::Share() {
    module::EnterServer();
    if (Servers++ == 0) CoreUtil::Instance().SetPlatform(&Door());
}

Server::Share::~Share() {
    if (--Servers == 0) {
        CoreUtil::Instance().SetPlatform(nullptr);
        CoreUtil::Instance().ForgetError();
    }
    module::LeaveServer();
}

Server::Server() : Core_(&Registry_, [this] { return Model_; }) {}

Server::~Server() {
    Ref<IDispatch> Before = Door().Ask(CallBack_);
    Core_.ShutDown();
    Door().Ask(std::move(Before));
}

// What a host sets and makes.

HRESULT Server::get_DesignTree(IDispatch** Tree) {
    return Method(L"vdSvr.DesignTree", [&] {
        Told(Tree) = nullptr;
        const std::shared_ptr<kv::DesignTree>& Held = Core_.DesignTree();
        if (const auto Hosts = std::dynamic_pointer_cast<HostDesignTree>(Held))
            *Tree = Ref<IDispatch>(Hosts->Object()).Detach();
        else if (const auto Own = std::dynamic_pointer_cast<window::TreeModel>(Held))
            *Tree = ToDispatch(Make<OwnTree>(Own)).Detach();
    });
}

HRESULT Server::putref_DesignTree(IDispatch* Tree) {
    return Method(L"vdSvr.DesignTree", [&] {
        if (Busy_ || Open_) throw Refusal(E_UNEXPECTED, L"L'albero non cambia mentre una finestra è aperta");
        if (!Tree)
            Core_.DesignTree() = nullptr;
        else if (const Ref<OwnTree> Own = OwnOf<OwnTree>(Tree))
            Core_.DesignTree() = Own->Model();
        else
            Core_.DesignTree() = std::make_shared<HostDesignTree>(Tree);
    });
}

HRESULT Server::get_CallBack(IDispatch** Object) {
    return Method(L"vdSvr.CallBack", [&] { Told(Object) = Ref<IDispatch>(CallBack_).Detach(); });
}

HRESULT Server::putref_CallBack(IDispatch* Object) {
    return Method(L"vdSvr.CallBack", [&] { CallBack_ = Ref<IDispatch>(Object); });
}

HRESULT Server::get_RegistryServer(IDispatch** Object) {
    return Method(L"vdSvr.RegistryServer", [&] { Told(Object) = Ref<IDispatch>(Registry_.Object).Detach(); });
}

HRESULT Server::putref_RegistryServer(IDispatch* Object) {
    return Method(L"vdSvr.RegistryServer", [&] { Registry_.Object = Ref<IDispatch>(Object); });
}

HRESULT Server::NewNode(BSTR Name, IDispatch** Made) {
    return Method(L"vdSvr.NewNode", [&] {
        Told(Made) = nullptr;
        RegObject Named;
        Named.Name = FromBstr(Name);
        *Made = ToDispatch(Make<Node>(std::move(Named))).Detach();
    });
}

HRESULT Server::NewObject(BSTR Clsid, BSTR Name, IDispatch** Made) {
    return Method(L"vdSvr.NewObject", [&] {
        Told(Made) = nullptr;
        RegObject Named;
        Named.Name = FromBstr(Name);
        *Made = ToDispatch(Make<MemoryObject>(FromBstr(Clsid), std::move(Named))).Detach();
    });
}

HRESULT Server::NewClipItem(IDispatch** Made) {
    return Method(L"vdSvr.NewClipItem", [&] {
        Told(Made) = nullptr;
        *Made = ToDispatch(Make<ClipHolder>()).Detach();
    });
}

// iKvEditor

HRESULT Server::Export(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Export", Failed, [&] {
        if (Open_) throw Refusal(E_UNEXPECTED, L"Una finestra è aperta su questo server");
        InOutText Text(Buffer);
        const bool Bad = Core_.Export(ObjectOfHost(RegData), FromBstr(Clsid), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::Import(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Import", Failed, [&] {
        if (Open_) throw Refusal(E_UNEXPECTED, L"Una finestra è aperta su questo server");
        InOutText Text(Buffer);
        const bool Bad = Core_.Import(ObjectOfHost(RegData), FromBstr(Clsid), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::LastError(LONG* Number, BSTR* Source, BSTR* Description, BSTR* HelpFile, BSTR* HelpContext,
                          LONG* LastDLLError) {
    return Method(L"vdSvr.LastError", [&] {
        Told(Number);
        Told(LastDLLError);
        InOutText From(Source), Words(Description), File(HelpFile), Context(HelpContext);
        std::int32_t Which = 0;
        std::int32_t System = 0;
        Core_.LastError(Which, From.Text, Words.Text, File.Text, Context.Text, System);
        From.Give();
        Words.Give();
        File.Give();
        Context.Give();
        *Number = Which;
        *LastDLLError = System;
    });
}

HRESULT Server::ShowData(IDispatch* CallBack, IDispatch* RegData, BSTR Clsid, IDispatch** Target,
                         VARIANT_BOOL Flag, VARIANT_BOOL* Cancel, VARIANT_BOOL* Failed) {
    return Method(L"vdSvr.ShowData", [&] {
        Told(Failed) = VARIANT_TRUE;
        Told(Target);
        Told(Cancel);
        if (Busy_ || Open_) throw Refusal(E_UNEXPECTED, L"Una finestra è aperta su questo server");
        const std::shared_ptr<HostRegData> Object = ObjectOfHost(RegData);
        const Flagged Showing(Open_);
        // The window, and what comes back of it, lives as long as the tree.
        const std::shared_ptr<kv::DesignTree> Tree = Core_.DesignTree();
        std::optional<TreeWindow> Window;
        if (const auto Own = std::dynamic_pointer_cast<window::TreeModel>(Tree))
            Window.emplace(Core_, *Own, *Object, Clipboard());
        HostCallBack Back(CallBack);
        std::optional<HostRegData> Before;
        if (*Target) Before.emplace(*Target);
        kv::RegData* Edited = Before ? &*Before : nullptr;
        const bool Bad = Core_.ShowData(CallBack ? &Back : nullptr, Object, FromBstr(Clsid), Edited,
                                        Flag != VARIANT_FALSE);
        const auto* const After = dynamic_cast<HostRegData*>(Edited);
        GiveObject(*Target, After ? After->Object() : nullptr);
        *Failed = Bad ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

HRESULT Server::CurrVersion(VARIANT* Version) {
    return Method(L"vdSvr.CurrVersion", [&] {
        VARIANT& Into = Told(Version);
        VariantInit(&Into);
        Into.vt = VT_I2;
        Into.iVal = static_cast<SHORT>(Core_.CurrVersion());
    });
}

HRESULT Server::ShutDown() {
    return Method(L"vdSvr.ShutDown", [&] {
        if (Busy_ || Open_) throw Refusal(E_UNEXPECTED, L"Una finestra è aperta su questo server");
        const Flagged Working(Busy_);
        Core_.ShutDown();
    });
}

// TreeDll

HRESULT Server::CopyData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, VARIANT_BOOL Group,
                         VARIANT_BOOL* Failed, IDispatch* ClipItem) {
    return Operation(L"vdSvr.CopyData", Failed, [&] {
        HostClipItem Holder(ClipItem);
        if (Core_.CopyData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Group != VARIANT_FALSE,
                           Holder.Item()))
            return true;
        Holder.GiveBack();
        return false;
    });
}

HRESULT Server::DeleteData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, VARIANT_BOOL Group,
                           VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.DeleteData", Failed, [&] {
        return Core_.DeleteData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Group != VARIANT_FALSE);
    });
}

HRESULT Server::DispData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* Buffer,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.DispData", Failed, [&] {
        InOutText Text(Buffer);
        const bool Bad = Core_.DispData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::EditData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* NewItemKey,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.EditData", Failed, [&] {
        InOutText New(NewItemKey);
        const bool Bad = Core_.EditData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), New.Text);
        New.Give();
        return Bad;
    });
}

HRESULT Server::GetObjectInfo(BSTR, BSTR* Name, BSTR* Desc, SHORT* Version, BSTR* Clsid, BSTR* Id,
                              BSTR* UserList, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.GetObjectInfo", Failed, [&] {
        std::int16_t Number = Told(Version);
        InOutText Named(Name), Described(Desc), Class(Clsid), Identity(Id), Users(UserList);
        const bool Bad = Core_.GetObjectInfo(kNoPath, Named.Text, Described.Text, Number, Class.Text,
                                             Identity.Text, Users.Text);
        Named.Give();
        Described.Give();
        Class.Give();
        Identity.Give();
        Users.Give();
        *Version = Number;
        return Bad;
    });
}

HRESULT Server::HelpShow(BSTR, BSTR CurrFolder, BSTR CurrItem, BSTR HelpItem, VARIANT_BOOL* Failed) {
    return Method(L"vdSvr.HelpShow", [&] {
        Told(Failed) = VARIANT_TRUE;
        if (!Core_.HelpShow(kNoPath, FromBstr(CurrFolder), FromBstr(CurrItem), FromBstr(HelpItem)))
            *Failed = VARIANT_FALSE;
    });
}

HRESULT Server::LoadData(BSTR, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.LoadData", Failed, [&] { return Core_.LoadData(kNoPath); });
}

HRESULT Server::MoveData(BSTR, BSTR* CurrFolder, BSTR* CurrItem, LONG* Index, BSTR* Key, LONG Direction,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.MoveData", Failed, [&] {
        Told(Index);
        InOutText Folder(CurrFolder), Item(CurrItem), Section(Key);
        Head At{.CurrFolder = Folder.Text,
                .CurrItem = Item.Text,
                .Index = static_cast<std::int32_t>(*Index),
                .Key = Section.Text};
        const bool Bad = Core_.MoveData(kNoPath, At, static_cast<std::int32_t>(Direction));
        Folder.Text = std::move(At.CurrFolder);
        Item.Text = std::move(At.CurrItem);
        Section.Text = std::move(At.Key);
        Folder.Give();
        Item.Give();
        Section.Give();
        *Index = At.Index;
        return Bad;
    });
}

HRESULT Server::PasteData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* NewItemKey,
                          VARIANT_BOOL* Failed, IDispatch* ExternalSource) {
    return Operation(L"vdSvr.PasteData", Failed, [&] {
        InOutText New(NewItemKey);
        HostClipItem Holder(ExternalSource);
        const bool Bad = Core_.PasteData(FromBstr(Path), HeadOf(CurrFolder, CurrItem, Index, Key), New.Text,
                                         Holder.Item());
        New.Give();
        return Bad;
    });
}

HRESULT Server::Terminate(BSTR, IDispatch** RegData, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Terminate", Failed, [&] {
        Told(RegData);
        std::shared_ptr<kv::RegData> Back;
        const bool Bad = Core_.Terminate(kNoPath, Back);
        const auto Hosts = std::dynamic_pointer_cast<HostRegData>(Back);
        GiveObject(*RegData, Hosts ? Hosts->Object() : nullptr);
        return Bad;
    });
}

HRESULT Server::Quit(VARIANT_BOOL* Cancel, VARIANT_BOOL* Failed) {
    return Method(L"vdSvr.Quit", [&] {
        Told(Failed) = VARIANT_TRUE;
        bool Cancelled = Told(Cancel) != VARIANT_FALSE;
        const bool Bad = Core_.Quit(Cancelled);
        *Cancel = Cancelled ? VARIANT_TRUE : VARIANT_FALSE;
        *Failed = Bad ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

HRESULT Server::Save(BSTR, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Save", Failed, [&] { return Core_.Save(kNoPath); });
}

HRESULT Server::SaveData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* NewItemKey,
                         BSTR* Buffer, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.SaveData", Failed, [&] {
        InOutText New(NewItemKey), Text(Buffer);
        const bool Bad =
            Core_.SaveData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), New.Text, Text.Text);
        New.Give();
        Text.Give();
        return Bad;
    });
}

HRESULT Server::ShowPropTable(BSTR, BSTR CurrFolder, BSTR CurrItem, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.ShowPropTable", Failed,
                     [&] { return Core_.ShowPropTable(kNoPath, FromBstr(CurrFolder), FromBstr(CurrItem)); });
}

HRESULT Server::TlbrButtonClick(BSTR Word, BSTR CurrFolder, BSTR CurrItem, BSTR Key) {
    VARIANT_BOOL Unused = VARIANT_FALSE;
    return Operation(L"vdSvr.TlbrButtonClick", &Unused, [&] {
        Core_.TlbrButtonClick(FromBstr(Word), FromBstr(CurrFolder), FromBstr(CurrItem), FromBstr(Key));
        return false;
    });
}

}  // namespace kv::com
