// The component's own tree, for a host that reads the property DesignTree without having set one.
#pragma once

#include <memory>

#include "com/Dual.h"
#include "window/TreeModel.h"

namespace kv::com {

/// Shares the model. A window that stands in it is run by the server object alone: ShowTree is refused.
class OwnTree final : public ComObject<::DesignTree> {
  public:
    static const GUID kOwn;

    explicit OwnTree(std::shared_ptr<window::TreeModel> Model) noexcept : Model_(std::move(Model)) {}
    const std::shared_ptr<window::TreeModel>& Model() const noexcept { return Model_; }

    HRESULT STDMETHODCALLTYPE MarkModified(VARIANT_BOOL Modified) override;
    HRESULT STDMETHODCALLTYPE AddNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text,
                                      VARIANT Image, VARIANT SelectedImage, BSTR* Kind,
                                      IDispatch** Node) override;
    HRESULT STDMETHODCALLTYPE AddIconNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text,
                                          VARIANT Image, VARIANT SelectedImage, BSTR* Kind,
                                          IDispatch** Node) override;
    HRESULT STDMETHODCALLTYPE AddDefault(BSTR Section, BSTR Keyword, BSTR Word,
                                         VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE AddToolButton(BSTR Key, BSTR ToolTip, LONG Style, LONG Bitmap,
                                            IDispatch* Picture) override;
    HRESULT STDMETHODCALLTYPE SetTools(VARIANT Words, VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE ShowTree(IDispatch* CallBack, BSTR Clsid, IDispatch** Target, VARIANT_BOOL Flag,
                                       VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE Dispose() override;
    HRESULT STDMETHODCALLTYPE MoveListItem(IDispatch* List, LONG Direction, BSTR* RelativeKey, LONG* NewIndex,
                                           VARIANT_BOOL* Failed) override;
    HRESULT STDMETHODCALLTYPE get_SyntaxOn(VARIANT_BOOL* Strict) override;
    HRESULT STDMETHODCALLTYPE NodeId(BSTR Key, LONG* Position) override;
    HRESULT STDMETHODCALLTYPE get_TreeControl(IDispatch** Control) override;
    HRESULT STDMETHODCALLTYPE ClearNodes() override;
    HRESULT STDMETHODCALLTYPE RemoveNode(BSTR Key) override;
    HRESULT STDMETHODCALLTYPE RemoveChildren(BSTR Key) override;
    HRESULT STDMETHODCALLTYPE HasNode(BSTR Key, VARIANT_BOOL* There) override;
    HRESULT STDMETHODCALLTYPE get_NodeText(BSTR Key, BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_NodeText(BSTR Key, BSTR Text) override;
    HRESULT STDMETHODCALLTYPE NodeParent(BSTR Key, BSTR* ParentKey) override;
    HRESULT STDMETHODCALLTYPE NodeAt(BSTR Folder, LONG Place, BSTR* Key) override;
    HRESULT STDMETHODCALLTYPE SelectNode(BSTR Key) override;

  private:
    ~OwnTree() override = default;
    void* FindOwn(REFIID Wanted) noexcept override { return Wanted == kOwn ? this : nullptr; }

    std::shared_ptr<window::TreeModel> Model_;
};

}  // namespace kv::com
