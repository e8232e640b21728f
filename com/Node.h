// Nodes of stored objects, objects in memory and clipboard holders that the component itself brings.
#pragma once

#include <string>
#include <vector>

#include "com/Dual.h"
#include "com/Values.h"
#include "frame/RegData.h"

namespace kv::com {

/// A stored object nests no deeper than this, and holds no more nodes and values; what says otherwise never
/// ends.
inline constexpr int kDeepest = 64;
inline constexpr long kMostNodes = 1'000'000;

class Node final : public ComObject<::RegNode> {
  public:
    static const GUID kOwn;

    explicit Node(RegObject Content, int Depth = 0);

    /// A copy of the node with all below it.
    RegObject Copy() const;

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_Name(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_Text(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_Text(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_Id(LONG* Number) override;
    HRESULT STDMETHODCALLTYPE put_Id(LONG Number) override;
    HRESULT STDMETHODCALLTYPE get_Version(LONG* Number) override;
    HRESULT STDMETHODCALLTYPE put_Version(LONG Number) override;
    HRESULT STDMETHODCALLTYPE get_Desc(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_Desc(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_UserList(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_UserList(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_Number2(LONG* Number) override;
    HRESULT STDMETHODCALLTYPE put_Number2(LONG Number) override;
    HRESULT STDMETHODCALLTYPE get_Number3(LONG* Number) override;
    HRESULT STDMETHODCALLTYPE put_Number3(LONG Number) override;
    HRESULT STDMETHODCALLTYPE get_String3(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_String3(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_String4(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_String4(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_String5(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_String5(BSTR Text) override;
    HRESULT STDMETHODCALLTYPE get_Value(BSTR ValueName, VARIANT* Content) override;
    HRESULT STDMETHODCALLTYPE put_Value(BSTR ValueName, VARIANT Content) override;
    HRESULT STDMETHODCALLTYPE get_ValueCount(LONG* Count) override;
    HRESULT STDMETHODCALLTYPE get_ValueName(LONG Place, BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE get_ChildCount(LONG* Count) override;
    HRESULT STDMETHODCALLTYPE get_Child(LONG Place, IDispatch** Found) override;
    HRESULT STDMETHODCALLTYPE AddChild(BSTR ChildName, IDispatch** Added) override;
    HRESULT STDMETHODCALLTYPE RemoveChild(LONG Place) override;
    HRESULT STDMETHODCALLTYPE Clear() override;

  private:
    ~Node() override = default;
    void* FindOwn(REFIID Wanted) noexcept override;
    HRESULT GetText(std::wstring RegObject::*Field, BSTR* Into) noexcept;
    HRESULT PutText(std::wstring RegObject::*Field, BSTR From) noexcept;
    HRESULT GetNumber(std::int32_t RegObject::*Field, LONG* Into) noexcept;
    std::size_t Slot(LONG Place) const;

    RegObject Own_;  // all but the children
    std::vector<Ref<Node>> Children_;
    int Depth_;
};

/// A stored object in memory.
class MemoryObject final : public ComObject<::RegData> {
  public:
    MemoryObject(std::wstring_view ClassWord, RegObject Content);

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE get_Clsid(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE get_UserList(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_Saving(VARIANT_BOOL Flag) override;
    HRESULT STDMETHODCALLTYPE get_Content(IDispatch** Found) override;
    HRESULT STDMETHODCALLTYPE Replace(IDispatch* Content) override;

  private:
    ~MemoryObject() override = default;

    std::wstring Clsid_;
    Ref<Node> Content_;
};

class ClipHolder final : public ComObject<::ClipItem> {
  public:
    ClipHolder() = default;

    HRESULT STDMETHODCALLTYPE get_DataObj(IDispatch** Held) override;
    HRESULT STDMETHODCALLTYPE putref_DataObj(IDispatch* Given) override;
    HRESULT STDMETHODCALLTYPE get_ClassWord(BSTR* Text) override;
    HRESULT STDMETHODCALLTYPE put_ClassWord(BSTR Text) override;

  private:
    ~ClipHolder() override = default;

    Ref<IDispatch> Data_;
    std::wstring ClassWord_;
};

/// The content of a node, of this component or of a host, early bound or by name; null is an empty object.
RegObject ReadNode(IDispatch* From);

}  // namespace kv::com
