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

/// `_vdSvr`, `iKvEditor` and `TreeDll` over the core's server object. A call that comes while it would pull
/// the item away from under another call is refused with an error code, and so are Export, Import, ShutDown
/// and a second ShowData while a window is open.
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
    HRESULT STDMETHODCALLTYPE Export(IDispatch* RegData, BSTR Clsid, BSTR* Buffer, VARIANT Extra,
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
    ~Server() override;

    /// The frame of a method: the right thread, this object kept alive, its call-back object asked meanwhile.
    template <class Body>
    HRESULT Method(std::wstring_view Name, Body&& Run) noexcept;
    /// The same for an operation of the item; nothing else may touch the item meanwhile. What `Run` answers
    /// goes to `Failed`, which is True where the method fails.
    template <class Body>
    HRESULT Operation(std::wstring_view Name, VARIANT_BOOL* Failed, Body&& Run) noexcept;

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
    bool Open_ = false;  // ShowData runs
};

}  // namespace kv::com
