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

/// Sets a variable while it lives.
template <class T>
class While {
  public:
    While(T& Variable, T Value) noexcept : Variable_(Variable), Before_(std::exchange(Variable, Value)) {}
    While(const While&) = delete;
    While& operator=(const While&) = delete;
    ~While() { Variable_ = Before_; }

  private:
    T& Variable_;
    T Before_;
};

/// While it lives `Object` is asked in the operator's place, and errors go to it.
class Asking {
  public:
    explicit Asking(Ref<IDispatch> Object) noexcept
        : Platform_(CoreUtil::Instance().SetPlatform(&Door())), Before_(Door().Ask(std::move(Object))) {}
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;
    ~Asking() {
        Door().Ask(std::move(Before_));
        CoreUtil::Instance().SetPlatform(Platform_);
    }

  private:
    Platform* Platform_;
    Ref<IDispatch> Before_;
};

constexpr std::wstring_view kWorking = L"Il server sta eseguendo un'altra operazione";
constexpr std::wstring_view kWindowOpen = L"Una finestra è aperta su questo server";

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
        Asked_.emplace(Of.CallBack_);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

  private:
    Ref<::_vdSvr> Kept_;
    std::optional<Asking> Asked_;
};

void Server::Admit(Moment Latest) const {
    if (Now() > Latest) throw Refusal(E_UNEXPECTED, Now() == Moment::Working ? kWorking : kWindowOpen);
}

template <class Body>
HRESULT Server::Method(std::wstring_view Name, Moment Latest, Body&& Run) noexcept {
    return Guard(__uuidof(::_vdSvr), Name, [&] {
        const Session During(*this);
        Admit(Latest);
        Run();
    });
}

template <class T, class Maker>
HRESULT Server::Answer(std::wstring_view Name, T* Into, Maker&& Run) noexcept {
    return Guard(__uuidof(::_vdSvr), Name, [&] {
        Give(Into, [&] {
            const Session During(*this);
            return Run();
        });
    });
}

template <class Body>
HRESULT Server::Judged(std::wstring_view Name, Moment Latest, VARIANT_BOOL* Failed, Body&& Run) noexcept {
    return Guard(__uuidof(::_vdSvr), Name, [&] {
        Told(Failed) = VARIANT_TRUE;
        const Session During(*this);
        Admit(Latest);
        if (!Run()) *Failed = VARIANT_FALSE;
    });
}

template <class Body>
HRESULT Server::Operation(std::wstring_view Name, Moment Latest, VARIANT_BOOL* Failed, Body&& Run) noexcept {
    return Judged(Name, Latest, Failed, [&] {
        const While Working(Busy_, true);
        return Run();
    });
}

template <class Body>
HRESULT Server::ClipOperation(std::wstring_view Name, VARIANT_BOOL* Failed, IDispatch* Holder,
                              Body&& Run) noexcept {
    return Operation(Name, Moment::HostsWindow, Failed, [&] {
        Told(Holder);
        kv::ClipItem Item;
        if (Trap(Name, [&] { return Item = ReadClipItem(Holder), false; })) {
            CoreUtil::Instance().ShowLastError();
            return true;
        }
        return Run(Item);
    });
}

/// The operations as the component's own window calls them: no other may run meanwhile. The error of one that
/// is refused is shown like any other.
class Server::WindowDoor final : public kv::TreeDll {
  public:
    explicit WindowDoor(Server& Of) noexcept : Of_(Of) {}

    bool CopyData(const std::wstring& Path, const Head& At, bool Group, kv::ClipItem& Clipboard) override {
        return Do(L"vdSvr.CopyData", [&] { return Of_.Core_.CopyData(Path, At, Group, Clipboard); });
    }
    bool DeleteData(const std::wstring& Path, const Head& At, bool Group) override {
        return Do(L"vdSvr.DeleteData", [&] { return Of_.Core_.DeleteData(Path, At, Group); });
    }
    bool DispData(const std::wstring& Path, const Head& At, std::wstring& Buffer) override {
        return Do(L"vdSvr.DispData", [&] { return Of_.Core_.DispData(Path, At, Buffer); });
    }
    bool EditData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey) override {
        return Do(L"vdSvr.EditData", [&] { return Of_.Core_.EditData(Path, At, NewItemKey); });
    }
    bool GetObjectInfo(const std::wstring& Path, std::wstring& Name, std::wstring& Desc,
                       std::int16_t& Version, std::wstring& Clsid, std::wstring& Id,
                       std::wstring& UserList) override {
        return Do(L"vdSvr.GetObjectInfo",
                  [&] { return Of_.Core_.GetObjectInfo(Path, Name, Desc, Version, Clsid, Id, UserList); });
    }
    bool HelpShow(const std::wstring& Path, const std::wstring& CurrFolder, const std::wstring& CurrItem,
                  const std::wstring& HelpItem) override {
        return Of_.Core_.HelpShow(Path, CurrFolder, CurrItem, HelpItem);
    }
    bool LoadData(const std::wstring& Path) override {
        return Do(L"vdSvr.LoadData", [&] { return Of_.Core_.LoadData(Path); });
    }
    bool MoveData(const std::wstring& Path, Head& At, std::int32_t Direction) override {
        return Do(L"vdSvr.MoveData", [&] { return Of_.Core_.MoveData(Path, At, Direction); });
    }
    bool PasteData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                   kv::ClipItem& ExternalSource) override {
        return Do(L"vdSvr.PasteData",
                  [&] { return Of_.Core_.PasteData(Path, At, NewItemKey, ExternalSource); });
    }
    bool Terminate(const std::wstring& Path, std::shared_ptr<kv::RegData>& RegData) override {
        return Do(L"vdSvr.Terminate", [&] { return Of_.Core_.Terminate(Path, RegData); });
    }
    bool Quit(bool& Cancel) override { return Of_.Core_.Quit(Cancel); }
    bool Save(const std::wstring& Path) override {
        return Do(L"vdSvr.Save", [&] { return Of_.Core_.Save(Path); });
    }
    bool SaveData(const std::wstring& Path, const Head& At, std::wstring& NewItemKey,
                  std::wstring& Buffer) override {
        return Do(L"vdSvr.SaveData", [&] { return Of_.Core_.SaveData(Path, At, NewItemKey, Buffer); });
    }
    bool ShowPropTable(const std::wstring& Path, const std::wstring& CurrFolder,
                       const std::wstring& CurrItem) override {
        return Do(L"vdSvr.ShowPropTable",
                  [&] { return Of_.Core_.ShowPropTable(Path, CurrFolder, CurrItem); });
    }
    void TlbrButtonClick(const std::wstring& Word, const std::wstring& CurrFolder,
                         const std::wstring& CurrItem, const std::wstring& Key) override {
        static_cast<void>(Do(L"vdSvr.TlbrButtonClick", [&] {
            Of_.Core_.TlbrButtonClick(Word, CurrFolder, CurrItem, Key);
            return false;
        }));
    }

  private:
    template <class Body>
    bool Do(std::wstring_view Name, Body&& Run) noexcept {
        if (Of_.Busy_) {
            static_cast<void>(Trap(Name, []() -> bool { Raise(kWorking); }));
            CoreUtil::Instance().ShowLastError();
            return true;
        }
        const While Working(Of_.Busy_, true);
        return Run();
    }

    Server& Of_;
};

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
    const Asking During(CallBack_);
    Core_.ShutDown();
}

// What a host sets and makes.

HRESULT Server::get_DesignTree(IDispatch** Tree) {
    return Answer(L"vdSvr.DesignTree", Tree, [&] {
        const std::shared_ptr<kv::DesignTree>& Held = Core_.DesignTree();
        Ref<IDispatch> Found;
        if (const auto Hosts = std::dynamic_pointer_cast<HostDesignTree>(Held))
            Found = Ref<IDispatch>(Hosts->Object());
        else if (const auto Own = std::dynamic_pointer_cast<window::TreeModel>(Held))
            Found = ToDispatch(Make<OwnTree>(Own));
        return Found.Detach();
    });
}

HRESULT Server::putref_DesignTree(IDispatch* Tree) {
    return Method(L"vdSvr.DesignTree", Moment::Idle, [&] {
        if (!Tree)
            Core_.DesignTree() = nullptr;
        else if (const Ref<OwnTree> Own = OwnOf<OwnTree>(Tree))
            Core_.DesignTree() = Own->Model();
        else
            Core_.DesignTree() = std::make_shared<HostDesignTree>(Tree);
    });
}

HRESULT Server::get_CallBack(IDispatch** Object) {
    return Answer(L"vdSvr.CallBack", Object, [&] { return Ref<IDispatch>(CallBack_).Detach(); });
}

HRESULT Server::putref_CallBack(IDispatch* Object) {
    return Method(L"vdSvr.CallBack", Moment::Working, [&] { CallBack_ = Ref<IDispatch>(Object); });
}

HRESULT Server::get_RegistryServer(IDispatch** Object) {
    return Answer(L"vdSvr.RegistryServer", Object, [&] { return Ref<IDispatch>(Registry_.Object).Detach(); });
}

HRESULT Server::putref_RegistryServer(IDispatch* Object) {
    return Method(L"vdSvr.RegistryServer", Moment::Working,
                  [&] { Registry_.Object = Ref<IDispatch>(Object); });
}

HRESULT Server::NewNode(BSTR Name, IDispatch** Made) {
    return Answer(L"vdSvr.NewNode", Made, [&] {
        RegObject Named;
        Named.Name = FromBstr(Name);
        return ToDispatch(Make<Node>(std::move(Named))).Detach();
    });
}

HRESULT Server::NewObject(BSTR Clsid, BSTR Name, IDispatch** Made) {
    return Answer(L"vdSvr.NewObject", Made, [&] {
        RegObject Named;
        Named.Name = FromBstr(Name);
        return ToDispatch(Make<MemoryObject>(FromBstr(Clsid), std::move(Named))).Detach();
    });
}

HRESULT Server::NewClipItem(IDispatch** Made) {
    return Answer(L"vdSvr.NewClipItem", Made, [&] { return ToDispatch(Make<ClipHolder>()).Detach(); });
}

// iKvEditor

HRESULT Server::Export(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT*, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Export", Moment::Idle, Failed, [&] {
        InOutText Text(Buffer);
        const bool Bad = Core_.Export(ObjectOfHost(RegData), FromBstr(Clsid), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::Import(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Import", Moment::Idle, Failed, [&] {
        InOutText Text(Buffer);
        const bool Bad = Core_.Import(ObjectOfHost(RegData), FromBstr(Clsid), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::LastError(LONG* Number, BSTR* Source, BSTR* Description, BSTR* HelpFile, BSTR* HelpContext,
                          LONG* LastDLLError) {
    return Method(L"vdSvr.LastError", Moment::Working, [&] {
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
    return Judged(L"vdSvr.ShowData", Moment::Idle, Failed, [&] {
        Told(Target);
        Told(Cancel);
        const std::shared_ptr<HostRegData> Object = ObjectOfHost(RegData);
        // The window, and what comes back of it, lives as long as the tree.
        const std::shared_ptr<kv::DesignTree> Tree = Core_.DesignTree();
        const auto Own = std::dynamic_pointer_cast<window::TreeModel>(Tree);
        const While Showing(Open_, Own ? Moment::OwnWindow : Moment::HostsWindow);
        WindowDoor Operations(*this);
        std::optional<TreeWindow> Window;
        if (Own) Window.emplace(Operations, *Own, *Object, Clipboard());
        HostCallBack Back(CallBack);
        std::optional<HostRegData> Before;
        if (*Target) Before.emplace(*Target);
        kv::RegData* Edited = Before ? &*Before : nullptr;
        const bool Bad = Core_.ShowData(CallBack ? &Back : nullptr, Object, FromBstr(Clsid), Edited,
                                        Flag != VARIANT_FALSE);
        const auto* const After = dynamic_cast<HostRegData*>(Edited);
        GiveObject(*Target, After ? After->Object() : nullptr);
        return Bad;
    });
}

HRESULT Server::CurrVersion(VARIANT* Version) {
    return Answer(L"vdSvr.CurrVersion", Version, [&] {
        VARIANT Number{};
        Number.vt = VT_I2;
        Number.iVal = static_cast<SHORT>(Core_.CurrVersion());
        return Number;
    });
}

HRESULT Server::ShutDown() {
    return Method(L"vdSvr.ShutDown", Moment::Idle, [&] {
        const While Working(Busy_, true);
        Core_.ShutDown();
    });
}

// TreeDll

HRESULT Server::CopyData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, VARIANT_BOOL Group,
                         VARIANT_BOOL* Failed, IDispatch* ClipItem) {
    return ClipOperation(L"vdSvr.CopyData", Failed, ClipItem, [&](kv::ClipItem& Holder) {
        return Core_.CopyData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Group != VARIANT_FALSE,
                              Holder);
    });
}

HRESULT Server::DeleteData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, VARIANT_BOOL Group,
                           VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.DeleteData", Moment::HostsWindow, Failed, [&] {
        return Core_.DeleteData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Group != VARIANT_FALSE);
    });
}

HRESULT Server::DispData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* Buffer,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.DispData", Moment::OwnWindow, Failed, [&] {
        InOutText Text(Buffer);
        const bool Bad = Core_.DispData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), Text.Text);
        Text.Give();
        return Bad;
    });
}

HRESULT Server::EditData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* NewItemKey,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.EditData", Moment::HostsWindow, Failed, [&] {
        InOutText New(NewItemKey);
        const bool Bad = Core_.EditData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), New.Text);
        New.Give();
        return Bad;
    });
}

HRESULT Server::GetObjectInfo(BSTR, BSTR* Name, BSTR* Desc, SHORT* Version, BSTR* Clsid, BSTR* Id,
                              BSTR* UserList, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.GetObjectInfo", Moment::OwnWindow, Failed, [&] {
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
    return Judged(L"vdSvr.HelpShow", Moment::Working, Failed, [&] {
        return Core_.HelpShow(kNoPath, FromBstr(CurrFolder), FromBstr(CurrItem), FromBstr(HelpItem));
    });
}

HRESULT Server::LoadData(BSTR, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.LoadData", Moment::HostsWindow, Failed, [&] { return Core_.LoadData(kNoPath); });
}

HRESULT Server::MoveData(BSTR, BSTR* CurrFolder, BSTR* CurrItem, LONG* Index, BSTR* Key, LONG Direction,
                         VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.MoveData", Moment::HostsWindow, Failed, [&] {
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
    return ClipOperation(L"vdSvr.PasteData", Failed, ExternalSource, [&](kv::ClipItem& Holder) {
        InOutText New(NewItemKey);
        const bool Bad =
            Core_.PasteData(FromBstr(Path), HeadOf(CurrFolder, CurrItem, Index, Key), New.Text, Holder);
        New.Give();
        return Bad;
    });
}

HRESULT Server::Terminate(BSTR, IDispatch** RegData, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Terminate", Moment::HostsWindow, Failed, [&] {
        Told(RegData);
        std::shared_ptr<kv::RegData> Back;
        const bool Bad = Core_.Terminate(kNoPath, Back);
        const auto Hosts = std::dynamic_pointer_cast<HostRegData>(Back);
        GiveObject(*RegData, Hosts ? Hosts->Object() : nullptr);
        return Bad;
    });
}

HRESULT Server::Quit(VARIANT_BOOL* Cancel, VARIANT_BOOL* Failed) {
    return Judged(L"vdSvr.Quit", Moment::Working, Failed, [&] {
        bool Cancelled = Told(Cancel) != VARIANT_FALSE;
        const bool Bad = Core_.Quit(Cancelled);
        *Cancel = Cancelled ? VARIANT_TRUE : VARIANT_FALSE;
        return Bad;
    });
}

HRESULT Server::Save(BSTR, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.Save", Moment::HostsWindow, Failed, [&] { return Core_.Save(kNoPath); });
}

HRESULT Server::SaveData(BSTR, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key, BSTR* NewItemKey,
                         BSTR* Buffer, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.SaveData", Moment::HostsWindow, Failed, [&] {
        InOutText New(NewItemKey), Text(Buffer);
        const bool Bad =
            Core_.SaveData(kNoPath, HeadOf(CurrFolder, CurrItem, Index, Key), New.Text, Text.Text);
        New.Give();
        Text.Give();
        return Bad;
    });
}

HRESULT Server::ShowPropTable(BSTR, BSTR CurrFolder, BSTR CurrItem, VARIANT_BOOL* Failed) {
    return Operation(L"vdSvr.ShowPropTable", Moment::HostsWindow, Failed,
                     [&] { return Core_.ShowPropTable(kNoPath, FromBstr(CurrFolder), FromBstr(CurrItem)); });
}

HRESULT Server::TlbrButtonClick(BSTR Word, BSTR CurrFolder, BSTR CurrItem, BSTR Key) {
    VARIANT_BOOL Unused = VARIANT_FALSE;
    return Operation(L"vdSvr.TlbrButtonClick", Moment::HostsWindow, &Unused, [&] {
        Core_.TlbrButtonClick(FromBstr(Word), FromBstr(CurrFolder), FromBstr(CurrItem), FromBstr(Key));
        return false;
    });
}

}  // namespace kv::com
