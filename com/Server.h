// The creatable object of the component.
#pragma once

#include <memory>
#include <string_view>

#include "com/CallBackPlatform.h"
#include "com/Dual.h"
#include "com/HostObjects.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"

namespace kv::com {

/// What goes on in a server object, from nothing to most.
enum class Moment {
    Idle,
    HostsWindow,  // ShowData runs, in a tree of the host
    OwnWindow,    // ShowData runs, in the component's own: the operations of the item are that window's
    Working,      // an operation of the item runs, of whomever
};

/// `_vdSvr`, `iKvEditor` and `TreeDll` over the core's server object. Each method has a moment up to which it
/// may come; later it is refused with an error code. So nothing pulls the item away from under another call.
class Server final : public ComObject<::_vdSvr, ::iKvEditor, ::TreeDll> {
  public:
    Server();

    HRESULT STDMETHODCALLTYPE get_DesignTree(IDispatch** Tree) override;
    HRESULT STDMETHODCALLTYPE putref_DesignTree(IDispatch* Tree) override;
    HRESULT STDMETHODCALLTYPE get_CallBack(IDispatch** Object) override;
    HRESULT STDMETHODCALLTYPE putref_CallBack(IDispatch* Object) override;
    HRESULT STDMETHODCALLTYPE get_RegistryServer(IDispatch** Object) override;
    HRESULT STDMETHODCALLTYPE putref_RegistryServer(IDispatch* Object) override;
    HRESULT STDMETHODCALLTYPE NewNode(BSTR Name, IDispatch** Made) override;
    HRESULT STDMETHODCALLTYPE NewObject(BSTR Clsid, BSTR Name, IDispatch** Made) override;
    HRESULT STDMETHODCALLTYPE NewClipItem(IDispatch** Made) override;

    // iKvEditor
    HRESULT STDMETHODCALLTYPE Export(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT* Extra,
                                     VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE LastError(LONG* Number, BSTR* Source, BSTR* Description, BSTR* HelpFile,
                                        BSTR* HelpContext, LONG* LastDLLError) override;
    HRESULT STDMETHODCALLTYPE Import(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT Extra,
                                     VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE ShowData(IDispatch* CallBack, IDispatch* RegData, BSTR Clsid,
                                       IDispatch** Target, VARIANT_BOOL Flag, VARIANT_BOOL* Cancel,
                                       VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE CurrVersion(VARIANT* Version) override;
    HRESULT STDMETHODCALLTYPE ShutDown() override;

    // TreeDll
    HRESULT STDMETHODCALLTYPE CopyData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                       VARIANT_BOOL Group, VARIANT_BOOL* Failed,
                                       IDispatch* ClipItem) override;
    HRESULT STDMETHODCALLTYPE DeleteData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                         VARIANT_BOOL Group, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE DispData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                       BSTR* Buffer, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE EditData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                       BSTR* NewItemKey, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE GetObjectInfo(BSTR Path, BSTR* Name, BSTR* Desc, SHORT* Version, BSTR* Clsid,
                                            BSTR* Id, BSTR* UserList, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE HelpShow(BSTR Path, BSTR CurrFolder, BSTR CurrItem, BSTR HelpItem,
                                       VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE LoadData(BSTR Path, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE MoveData(BSTR Path, BSTR* CurrFolder, BSTR* CurrItem, LONG* Index, BSTR* Key,
                                       LONG Direction, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE PasteData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                        BSTR* NewItemKey, VARIANT_BOOL* Failed,
                                        IDispatch* ExternalSource) override;
    HRESULT STDMETHODCALLTYPE Terminate(BSTR Path, IDispatch** RegData, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE Quit(VARIANT_BOOL* Cancel, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE Save(BSTR Path, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE SaveData(BSTR Path, BSTR CurrFolder, BSTR CurrItem, LONG Index, BSTR Key,
                                       BSTR* NewItemKey, BSTR* Buffer, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE ShowPropTable(BSTR Path, BSTR CurrFolder, BSTR CurrItem,
                                            VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE TlbrButtonClick(BSTR Method, BSTR CurrFolder, BSTR CurrItem, BSTR Key) override;

  private:
    class Session;
    class WindowDoor;
    ~Server() override;

    Moment Now() const noexcept { return Busy_ ? Moment::Working : Open_; }
    /// Throws Refusal where it is later than `Latest`.
    void Admit(Moment Latest) const;

    /// The frame of a method: the right thread, this object kept alive, its call-back object asked meanwhile.
    template <class Body>
    HRESULT Method(std::wstring_view Name, Moment Latest, Body&& Run) noexcept;
    /// The same for what may come at any moment and answers something.
    template <class T, class Maker>
    HRESULT Answer(std::wstring_view Name, T* Into, Maker&& Run) noexcept;
    /// The same for what tells in `Failed` that it has failed, by the answer of `Run`; True where it is
    /// refused.
    template <class Body>
    HRESULT Judged(std::wstring_view Name, Moment Latest, VARIANT_BOOL* Failed, Body&& Run) noexcept;
    /// The same for an operation of the item; nothing else may touch the item meanwhile.
    template <class Body>
    HRESULT Operation(std::wstring_view Name, Moment Latest, VARIANT_BOOL* Failed, Body&& Run) noexcept;
    /// The same for an operation on a clipboard holder. One that fails is a failure of the operation.
    template <class Body>
    HRESULT ClipOperation(std::wstring_view Name, VARIANT_BOOL* Failed, IDispatch* Holder,
                          Body&& Run) noexcept;

    /// What the process has for its server objects, while there is one.
    struct Share {
        Share();
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;
        ~Share();
    };

    Share Shared_;
    std::shared_ptr<window::TreeModel> Model_ = std::make_shared<window::TreeModel>();
    HostRegistry Registry_;
    Ref<IDispatch> CallBack_;
    kv::vdSvr Core_;
    bool Busy_ = false;  // the item works
    Moment Open_ = Moment::Idle;
};

}  // namespace kv::com
