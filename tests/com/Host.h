// A host of the component: it loads the file, and hands in objects of its own, counted, early bound or by
// name.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "com/ByName.h"
#include "com/Ref.h"
#include "com/Values.h"
#include "window/TreeModel.h"

namespace kv::com::host {

/// The file, loaded without being registered. When it dies all objects must have gone: that is tested.
class Component {
  public:
    Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;
    ~Component();

    /// A new server object. Its errors go to nobody until a CallBack is set.
    Ref<::_vdSvr> Create() const;
    HRESULT ClassObject(REFCLSID Class, REFIID Interface, void** Into) const;
    HRESULT CanUnload() const { return CanUnload_(); }

  private:
    HMODULE Loaded_ = nullptr;
    HRESULT(WINAPI* ClassObject_)(REFCLSID, REFIID, LPVOID*) = nullptr;
    HRESULT(WINAPI* CanUnload_)() = nullptr;
};

/// The type library of the file.
const Ref<ITypeLib>& Library();

/// How many objects of the test live.
inline long Living = 0;

/// Counts what is taken of the system's memory and not given back while it lives: strings, arrays, error
/// information.
class MemorySpy final : public IMallocSpy {
  public:
    MemorySpy();
    MemorySpy(const MemorySpy&) = delete;
    MemorySpy& operator=(const MemorySpy&) = delete;
    ~MemorySpy();
    long Held() const noexcept { return Held_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** Into) override { return *Into = this, S_OK; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T Bytes) override { return Bytes; }
    void* STDMETHODCALLTYPE PostAlloc(void* Made) override {
        if (Made) ++Held_;
        return Made;
    }
    void* STDMETHODCALLTYPE PreFree(void* Gone, WINBOOL Seen) override {
        if (Gone && Seen) --Held_;
        return Gone;
    }
    void STDMETHODCALLTYPE PostFree(WINBOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* Old, SIZE_T Bytes, void** New, WINBOOL) override {
        *New = Old;
        return Bytes;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* Made, WINBOOL) override { return Made; }
    void* STDMETHODCALLTYPE PreGetSize(void* Of, WINBOOL) override { return Of; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T Bytes, WINBOOL) override { return Bytes; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* Of, WINBOOL) override { return Of; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, WINBOOL, int Answer) override { return Answer; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

  private:
    long Held_ = 0;
};

/// How an object lets itself be reached.
enum class Binding { Early, ByName };

/// What an object does instead of its work: answers a code or throws. Called with the name of each member.
using Fault = std::function<HRESULT(std::wstring_view)>;

/// A dual interface of the host. By name it refuses the interface itself, as an object of a script does.
template <class I>
class HostObject : public I {
  public:
    explicit HostObject(Binding As) : As_(As) { ++Living; }
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Into) override {
        const bool Known = Wanted == __uuidof(IUnknown) || Wanted == __uuidof(IDispatch) ||
                           (As_ == Binding::Early && Wanted == __uuidof(I));
        *Into = Known ? static_cast<I*>(this) : nullptr;
        if (Known) AddRef();
        return Known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++Count; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG Left = --Count;
        if (Left == 0) delete this;
        return Left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Number) override { return *Number = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* Names, UINT Number, LCID,
                                            DISPID* Ids) override {
        if (As_ == Binding::Early) return E_NOTIMPL;
        return Lacking.contains(*Names) ? DISP_E_UNKNOWNNAME
                                        : DispGetIDsOfNames(Type().Get(), Names, Number, Ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID, LCID, WORD Flags, DISPPARAMS* Given, VARIANT* Result,
                                     EXCEPINFO* Information, UINT* Wrong) override {
        // An in/out argument is a variant by reference; the typed member takes what lies inside.
        std::vector<VARIANT> Inside(Given->rgvarg, Given->rgvarg + Given->cArgs);
        for (VARIANT& Argument : Inside)
            if (Argument.vt == (VT_VARIANT | VT_BYREF)) {
                VARIANT* const Variable = Argument.pvarVal;
                Argument.vt = static_cast<VARTYPE>(Variable->vt | VT_BYREF);
                Argument.byref = &Variable->byref;
            }
        DISPPARAMS Typed = *Given;
        Typed.rgvarg = Inside.data();
        return DispInvoke(static_cast<I*>(this), Type().Get(), Id, Flags, &Typed, Result, Information, Wrong);
    }

    Fault OnCall;
    /// Members that cannot be found by name.
    std::map<std::wstring, bool> Lacking;
    ULONG Count = 0;

  protected:
    virtual ~HostObject() { --Living; }
    /// The frame of each member.
    template <class Body>
    HRESULT Do(std::wstring_view Member, Body&& Run) {
        Calls.emplace_back(Member);
        if (OnCall)
            if (const HRESULT Faulty = OnCall(Member); FAILED(Faulty)) return Faulty;
        try {
            Run();
            return S_OK;
        } catch (const std::exception&) {
            return E_FAIL;
        }
    }

  public:
    std::vector<std::wstring> Calls;

  private:
    static const Ref<ITypeInfo>& Type() {
        static const Ref<ITypeInfo> The = [] {
            Ref<ITypeInfo> Found;
            Library()->GetTypeInfoOfGuid(__uuidof(I), Found.Out());
            return Found;
        }();
        return The;
    }

    Binding As_;
};

/// A stored object: it keeps the nodes that the component hands over.
class Stored final : public HostObject<::RegData> {
  public:
    Stored(Binding As, std::wstring_view ClassWord, std::wstring_view Named)
        : HostObject(As), ClassWord_(ClassWord), Name_(Named) {}

    Ref<IDispatch> Content;
    std::vector<bool> Saving;
    int Replaced = 0;

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Text) override {
        return Do(L"Name", [&] { *Text = ToBstr(Name_); });
    }
    HRESULT STDMETHODCALLTYPE get_Clsid(BSTR* Text) override {
        return Do(L"Clsid", [&] { *Text = ToBstr(ClassWord_); });
    }
    HRESULT STDMETHODCALLTYPE get_UserList(BSTR* Text) override {
        return Do(L"UserList", [&] { *Text = ToBstr(L"ADMIN;BIBLIO"); });
    }
    HRESULT STDMETHODCALLTYPE put_Saving(VARIANT_BOOL Flag) override {
        return Do(L"Saving", [&] { Saving.push_back(Flag != VARIANT_FALSE); });
    }
    HRESULT STDMETHODCALLTYPE get_Content(IDispatch** Node) override {
        return Do(L"Content", [&] { *Node = Ref<IDispatch>(Content).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE Replace(IDispatch* Node) override {
        return Do(L"Replace", [&] {
            Content = Ref<IDispatch>(Node);
            ++Replaced;
        });
    }

  private:
    ~Stored() override = default;
    std::wstring ClassWord_;
    std::wstring Name_;
};

/// A tree window without a screen: its script runs inside ShowTree.
class ScriptedTree final : public HostObject<::DesignTree> {
  public:
    explicit ScriptedTree(Binding As) : HostObject(As) {}

    window::TreeModel Model;
    /// True when the window failed.
    std::function<bool(ScriptedTree&)> Script;
    Ref<IDispatch> Given;     // the call-back object of ShowTree
    Ref<IDispatch> Returned;  // what Target becomes; nothing for no change
    std::wstring ClassWord;
    bool Flag = false;
    int Pictures = 0;
    std::vector<std::wstring> Buttons;
    int Disposed = 0;
    Ref<IDispatch> Nodes;  // what TreeControl answers
    /// In the place of MoveListItem.
    std::function<HRESULT(IDispatch*, LONG, BSTR*, LONG*, VARIANT_BOOL*)> OnMove;

    /// Key of the n-th leaf (1-based) of a section; empty when there is none.
    std::wstring Leaf(std::wstring_view Section, int Nth = 1) const {
        std::wstring Found;
        Model.ForEach([&](const window::TreeNode& Node) {
            if (IsLeafKey(Node.Key) && SectionWord(Node.Key) == Section && Nth-- == 1) Found = Node.Key;
        });
        return Found;
    }

    HRESULT STDMETHODCALLTYPE MarkModified(VARIANT_BOOL Modified) override {
        return Do(L"MarkModified", [&] { Model.MarkModified(Modified != VARIANT_FALSE); });
    }
    HRESULT STDMETHODCALLTYPE AddNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text,
                                      VARIANT Image, VARIANT SelectedImage, BSTR* Kind,
                                      IDispatch** Node) override {
        return Do(L"AddNode", [&] {
            const std::wstring Near = IsAbsent(Relative) ? L"" : TextOf(Relative);
            const std::wstring Named = TextOf(Key);
            const std::wstring Caption = TextOf(Text);
            const std::wstring Word = Kind ? FromBstr(*Kind) : L"";
            NewNode New{.Key = Named, .Text = Caption, .Kind = Word};
            if (!IsAbsent(Relative)) New.Relative = Near;
            if (!IsAbsent(Relationship)) New.Relationship = NumberOf(Relationship);
            New.Image = NumberOf(Image);
            New.SelectedImage = NumberOf(SelectedImage);
            Model.AddNode(New);
            if (Node) *Node = nullptr;
        });
    }
    HRESULT STDMETHODCALLTYPE AddIconNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text,
                                          VARIANT Image, VARIANT SelectedImage, BSTR* Kind,
                                          IDispatch** Node) override {
        return AddNode(Relative, Relationship, Key, Text, Image, SelectedImage, Kind, Node);
    }
    HRESULT STDMETHODCALLTYPE AddDefault(BSTR Section, BSTR Keyword, BSTR Word,
                                         VARIANT_BOOL* Failed) override {
        return Do(L"AddDefault", [&] {
            *Failed = Model.AddDefault(FromBstr(Section), FromBstr(Keyword), FromBstr(Word)) ? VARIANT_TRUE
                                                                                             : VARIANT_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE AddToolButton(BSTR Key, BSTR ToolTip, LONG Style, LONG Bitmap,
                                            IDispatch* Picture) override {
        return Do(L"AddToolButton", [&] {
            Buttons.push_back(FromBstr(Key) + L"|" + FromBstr(ToolTip) + L"|" + std::to_wstring(Style) +
                              L"|" + std::to_wstring(Bitmap));
            if (Picture) ++Pictures;
        });
    }
    HRESULT STDMETHODCALLTYPE SetTools(VARIANT Words, VARIANT_BOOL* Failed) override {
        return Do(L"SetTools", [&] {
            std::wstring Line;
            for (const std::wstring& Word : FromArray(Words)) Line.append(Word).append(L" ");
            Buttons.push_back(Line);
            *Failed = VARIANT_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE ShowTree(IDispatch* CallBack, BSTR Clsid, IDispatch** Target,
                                       VARIANT_BOOL Further, VARIANT_BOOL* Failed) override {
        return Do(L"ShowTree", [&] {
            Given = Ref<IDispatch>(CallBack);
            ClassWord = FromBstr(Clsid);
            Flag = Further != VARIANT_FALSE;
            const bool Bad = Script && Script(*this);
            if (Returned) {
                if (*Target) (*Target)->Release();
                *Target = Ref<IDispatch>(Returned).Detach();
            }
            *Failed = Bad ? VARIANT_TRUE : VARIANT_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Dispose() override {
        return Do(L"Dispose", [&] { ++Disposed; });
    }
    HRESULT STDMETHODCALLTYPE MoveListItem(IDispatch* List, LONG Direction, BSTR* RelativeKey, LONG* NewIndex,
                                           VARIANT_BOOL* Failed) override {
        if (OnMove) return OnMove(List, Direction, RelativeKey, NewIndex, Failed);
        return Do(L"MoveListItem", [&] {
            Lent = Ref<IDispatch>(List);
            ListOf Elements(List);
            std::wstring Neighbour;
            std::int32_t Place = 0;
            *Failed = VARIANT_TRUE;
            if (Model.MoveListItem(Elements, static_cast<std::int32_t>(Direction), Neighbour, Place)) return;
            SysFreeString(*RelativeKey);
            *RelativeKey = ToBstr(Neighbour);
            *NewIndex = Place;
            *Failed = VARIANT_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE get_SyntaxOn(VARIANT_BOOL* Strict) override {
        return Do(L"SyntaxOn", [&] { *Strict = Model.SyntaxOn() ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE NodeId(BSTR Key, LONG* Position) override {
        return Do(L"NodeId", [&] { *Position = Model.NodeId(FromBstr(Key)); });
    }
    HRESULT STDMETHODCALLTYPE get_TreeControl(IDispatch** Control) override {
        return Do(L"TreeControl", [&] { *Control = Ref<IDispatch>(Nodes).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE ClearNodes() override {
        return Do(L"ClearNodes", [&] { Model.ClearNodes(); });
    }
    HRESULT STDMETHODCALLTYPE RemoveNode(BSTR Key) override {
        return Do(L"RemoveNode", [&] { Model.RemoveNode(FromBstr(Key)); });
    }
    HRESULT STDMETHODCALLTYPE RemoveChildren(BSTR Key) override {
        return Do(L"RemoveChildren", [&] { Model.RemoveChildren(FromBstr(Key)); });
    }
    HRESULT STDMETHODCALLTYPE HasNode(BSTR Key, VARIANT_BOOL* There) override {
        return Do(L"HasNode", [&] { *There = Model.HasNode(FromBstr(Key)) ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_NodeText(BSTR Key, BSTR* Text) override {
        return Do(L"NodeText", [&] { *Text = ToBstr(Model.NodeText(FromBstr(Key))); });
    }
    HRESULT STDMETHODCALLTYPE put_NodeText(BSTR Key, BSTR Text) override {
        return Do(L"NodeText", [&] { Model.SetNodeText(FromBstr(Key), FromBstr(Text)); });
    }
    HRESULT STDMETHODCALLTYPE NodeParent(BSTR Key, BSTR* ParentKey) override {
        return Do(L"NodeParent", [&] { *ParentKey = ToBstr(Model.NodeParent(FromBstr(Key))); });
    }
    HRESULT STDMETHODCALLTYPE NodeAt(BSTR Folder, LONG Place, BSTR* Key) override {
        return Do(L"NodeAt",
                  [&] { *Key = ToBstr(Model.NodeAt(FromBstr(Folder), static_cast<std::int32_t>(Place))); });
    }
    HRESULT STDMETHODCALLTYPE SelectNode(BSTR Key) override {
        return Do(L"SelectNode", [&] { Model.SelectNode(FromBstr(Key)); });
    }

    Ref<IDispatch> Lent;  // the list of the last MoveListItem, kept longer than it is good for

  private:
    ~ScriptedTree() override = default;

    /// The list of the record as the model takes one.
    class ListOf final : public ParmListBase {
      public:
        explicit ListOf(IDispatch* Object)
            : Object_(Ref<IDispatch>(Object)), Count_(NumberOf(Object_.Get(L"Count").Get())) {}
        std::int32_t Count() const noexcept override { return Count_; }
        void Move(std::int32_t From, std::int32_t To) override {
            Object_.Call(L"Move", {&Variant(From).Get(), &Variant(To).Get()});
        }
        void Remove(std::int32_t) override {}
        void Clear() noexcept override {}

      private:
        ByName Object_;
        std::int32_t Count_;
    };
};

/// Who is asked in the operator's place.
class Operator final : public HostObject<::CallBack> {
  public:
    explicit Operator(Binding As = Binding::ByName) : HostObject(As) {}

    std::vector<std::wstring> Errors;
    std::vector<std::wstring> Asked;
    LONG Button = IDYES;  // what MsgBox answers
    std::wstring File;    // what SaveFile answers
    std::vector<std::int32_t> Pointers;
    int Beeps = 0;

    HRESULT STDMETHODCALLTYPE ShowError(LONG Number, BSTR Source, BSTR Description) override {
        return Do(L"ShowError", [&] {
            Errors.push_back(std::to_wstring(Number) + L" " + FromBstr(Source) + L": " +
                             FromBstr(Description));
        });
    }
    HRESULT STDMETHODCALLTYPE MsgBox(BSTR Text, LONG, LONG* Answered) override {
        return Do(L"MsgBox", [&] {
            Asked.push_back(FromBstr(Text));
            *Answered = Button;
        });
    }
    HRESULT STDMETHODCALLTYPE SaveFile(BSTR Title, BSTR, LONG, LONG, BSTR* Path) override {
        return Do(L"SaveFile", [&] {
            Asked.push_back(FromBstr(Title));
            *Path = File.empty() ? nullptr : ToBstr(File);
        });
    }
    HRESULT STDMETHODCALLTYPE ShowList(BSTR Caption, VARIANT Items) override {
        return Do(L"ShowList",
                  [&] { Asked.push_back(FromBstr(Caption) + std::to_wstring(FromArray(Items).size())); });
    }
    HRESULT STDMETHODCALLTYPE Beep() override {
        return Do(L"Beep", [&] { ++Beeps; });
    }
    HRESULT STDMETHODCALLTYPE SetPointer(LONG Pointer) override {
        return Do(L"SetPointer", [&] { Pointers.push_back(static_cast<std::int32_t>(Pointer)); });
    }

  private:
    ~Operator() override = default;
};

/// Code and words of the last failure of a method; takes the error information away.
std::wstring Words();

}  // namespace kv::com::host
