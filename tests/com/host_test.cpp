// What a host may do wrong, or do in another way: objects that fail, lack members, answer what does not fit,
// call back while the component works. Nothing is lost or leaked, and it is told.

#include "tests/com/Host.h"

#include <algorithm>
#include <atomic>
#include <initializer_list>
#include <optional>
#include <stdexcept>

#include "com/HostObjects.h"
#include "com/Server.h"
#include "server/vdSvr.h"
#include "window/WindowCore.h"
// behind windows.h
#include <olectl.h>

namespace kv::com::host {
namespace {

constexpr VARIANT_BOOL kYes = VARIANT_TRUE;
constexpr VARIANT_BOOL kNo = VARIANT_FALSE;

const char* NameOf(Binding As) { return As == Binding::Early ? "early" : "by name"; }

/// An object of a script: members by name, and nothing else.
class ScriptObject final : public IDispatch {
  public:
    /// The arguments stand in reverse order.
    using Member = std::function<HRESULT(const DISPPARAMS&, VARIANT&)>;

    explicit ScriptObject(std::map<std::wstring, Member> Members) {
        ++Living;
        for (auto& [Name, Run] : Members) {
            Ids_[Name] = static_cast<DISPID>(Members_.size()) + 1;
            Members_.push_back(std::move(Run));
        }
    }
    ScriptObject(const ScriptObject&) = delete;
    ScriptObject& operator=(const ScriptObject&) = delete;

    HRESULT LookUp = S_OK;  // what a look-up of a name answers instead

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Into) override {
        const bool Known = Wanted == __uuidof(IUnknown) || Wanted == __uuidof(IDispatch);
        *Into = Known ? this : nullptr;
        if (Known) AddRef();
        return Known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++Count_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG Left = --Count_;
        if (Left == 0) delete this;
        return Left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* Number) override { return *Number = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* Names, UINT, LCID, DISPID* Ids) override {
        if (FAILED(LookUp)) return LookUp;
        const auto Found = Ids_.find(*Names);
        *Ids = Found == Ids_.end() ? DISPID_UNKNOWN : Found->second;
        return Found == Ids_.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID, LCID, WORD, DISPPARAMS* Given, VARIANT* Result,
                                     EXCEPINFO*, UINT*) override {
        Variant Unasked;
        return Members_[static_cast<std::size_t>(Id) - 1](*Given, Result ? *Result : Unasked.Get());
    }

  private:
    ~ScriptObject() { --Living; }

    ULONG Count_ = 0;
    std::map<std::wstring, DISPID> Ids_;
    std::vector<Member> Members_;
};

ScriptObject::Member Says(std::wstring Text) {
    return [Text](const DISPPARAMS&, VARIANT& Into) {
        return Into = Variant(std::wstring_view(Text)).Detach(), S_OK;
    };
}
ScriptObject::Member Says(std::int32_t Number) {
    return [Number](const DISPPARAMS&, VARIANT& Into) { return Into = Variant(Number).Detach(), S_OK; };
}
ScriptObject::Member Says(double Number) {
    return [Number](const DISPPARAMS&, VARIANT& Into) {
        Into.vt = VT_R8;
        Into.dblVal = Number;
        return S_OK;
    };
}

/// A node of the host's own.
class HostNode final : public HostObject<::RegNode> {
  public:
    explicit HostNode(Binding As, std::wstring_view Named) : HostObject(As), Name(Named) {}

    std::wstring Name;
    std::map<std::wstring, std::wstring> Values;
    std::vector<Ref<IDispatch>> Children;
    std::optional<LONG> Counted;  // what ChildCount says instead

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* Text) override { return Say(L"Name", Text, Name); }
    HRESULT STDMETHODCALLTYPE put_Name(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Text(BSTR* Text) override { return Say(L"Text", Text, L"testo"); }
    HRESULT STDMETHODCALLTYPE put_Text(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Id(LONG* Number) override { return Say(L"Id", Number, 7); }
    HRESULT STDMETHODCALLTYPE put_Id(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Version(LONG* Number) override { return Say(L"Version", Number, 3); }
    HRESULT STDMETHODCALLTYPE put_Version(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Desc(BSTR* Text) override { return Say(L"Desc", Text, L"descr"); }
    HRESULT STDMETHODCALLTYPE put_Desc(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_UserList(BSTR* Text) override { return Say(L"UserList", Text, L"A;B"); }
    HRESULT STDMETHODCALLTYPE put_UserList(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Number2(LONG* Number) override { return Say(L"Number2", Number, 2); }
    HRESULT STDMETHODCALLTYPE put_Number2(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Number3(LONG* Number) override { return Say(L"Number3", Number, 33); }
    HRESULT STDMETHODCALLTYPE put_Number3(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_String3(BSTR* Text) override { return Say(L"String3", Text, L"s3"); }
    HRESULT STDMETHODCALLTYPE put_String3(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_String4(BSTR* Text) override { return Say(L"String4", Text, L"s4"); }
    HRESULT STDMETHODCALLTYPE put_String4(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_String5(BSTR* Text) override { return Say(L"String5", Text, L"s5"); }
    HRESULT STDMETHODCALLTYPE put_String5(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Value(BSTR ValueName, VARIANT* Content) override {
        return Do(L"Value",
                  [&] { *Content = Variant(std::wstring_view(Values.at(FromBstr(ValueName)))).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE put_Value(BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_ValueCount(LONG* Number) override {
        return Say(L"ValueCount", Number, static_cast<LONG>(Values.size()));
    }
    HRESULT STDMETHODCALLTYPE get_ValueName(LONG Place, BSTR* Text) override {
        return Say(L"ValueName", Text, std::next(Values.begin(), Place - 1)->first);
    }
    HRESULT STDMETHODCALLTYPE get_ChildCount(LONG* Number) override {
        return Say(L"ChildCount", Number, Counted ? *Counted : static_cast<LONG>(Children.size()));
    }
    HRESULT STDMETHODCALLTYPE get_Child(LONG Place, IDispatch** Node) override {
        return Do(L"Child",
                  [&] { *Node = Ref<IDispatch>(Children.at(static_cast<std::size_t>(Place) - 1)).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE AddChild(BSTR, IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveChild(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clear() override { return E_NOTIMPL; }

  private:
    ~HostNode() override = default;
    HRESULT Say(std::wstring_view Member, BSTR* Into, std::wstring_view Text) {
        return Do(Member, [&] { *Into = ToBstr(Text); });
    }
    HRESULT Say(std::wstring_view Member, LONG* Into, LONG Number) {
        return Do(Member, [&] { *Into = Number; });
    }
};

class HostClip final : public HostObject<::ClipItem> {
  public:
    explicit HostClip(Binding As) : HostObject(As) {}
    Ref<IDispatch> Data;
    std::wstring Word;

    HRESULT STDMETHODCALLTYPE get_DataObj(IDispatch** Into) override {
        return Do(L"DataObj", [&] { *Into = Ref<IDispatch>(Data).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE putref_DataObj(IDispatch*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_ClassWord(BSTR* Text) override {
        return Do(L"ClassWord", [&] { *Text = ToBstr(Word); });
    }
    HRESULT STDMETHODCALLTYPE put_ClassWord(BSTR) override { return E_NOTIMPL; }

  private:
    ~HostClip() override = default;
};

/// A component with one server object and an operator.
class HostTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Server = File.Create();
        Asked = Ref<Operator>(new Operator);
        ASSERT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    }
    void TearDown() override { SetErrorInfo(0, nullptr); }

    static Ref<Stored> Object(std::wstring_view Word, Binding As = Binding::Early) {
        return Ref<Stored>(new Stored(As, Word, L"PROVA"));
    }
    HRESULT ShowData(const Ref<::_vdSvr>& On, const Ref<Stored>& Edited, bool& Failed) {
        Bstr Word;
        static_cast<::RegData*>(Edited.Get())->get_Clsid(Word.Out());
        Ref<IDispatch> Target;
        VARIANT_BOOL Cancel = kNo, Bad = 99;
        const HRESULT Shown =
            On->ShowData(nullptr, Edited.Get(), Word.Get(), Target.Out(), kNo, &Cancel, &Bad);
        Failed = Bad != kNo;
        return Shown;
    }
    /// In a scripted tree. What ShowData tells.
    bool Show(const Ref<Stored>& Edited, const Ref<ScriptedTree>& Tree, std::function<bool()> Script) {
        EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
        Tree->Script = [Script = std::move(Script)](ScriptedTree&) { return Script(); };
        bool Failed = true;
        EXPECT_EQ(ShowData(Server, Edited, Failed), S_OK);
        Tree->Script = nullptr;
        return Failed;
    }
    bool Exported(IDispatch* From, const wchar_t* Word, std::wstring& Text) {
        Bstr Buffer;
        VARIANT_BOOL Failed = 99;
        EXPECT_EQ(Server->Export(From, Bstr(std::wstring_view(Word)).Get(), Buffer.Out(), nullptr, &Failed),
                  S_OK);
        Text = Buffer.Text();
        return Failed == kNo;
    }

    Component File;
    Ref<::_vdSvr> Server;
    Ref<Operator> Asked;
};

// The own window.

/// Closes the window that opens on this thread, and before that does something on this thread, between two
/// messages of the window.
class Meanwhile {
  public:
    explicit Meanwhile(std::function<void()> Do = {})
        : Hook_(SetWindowsHookExW(WH_GETMESSAGE, Seen, nullptr, GetCurrentThreadId())),
          Of_(GetCurrentThreadId()) {
        Work_ = std::move(Do);
        Ran_ = 0;
        Thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr);
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;
    ~Meanwhile() {
        End_ = true;
        WaitForSingleObject(Thread_, INFINITE);
        CloseHandle(Thread_);
        UnhookWindowsHookEx(Hook_);
        Work_ = nullptr;
    }
    int Ran() const { return Ran_; }

  private:
    static LRESULT CALLBACK Seen(int Code, WPARAM W, LPARAM L) {
        const auto* Message = reinterpret_cast<MSG*>(L);
        if (Code == HC_ACTION && Message->message == WM_CLOSE && Ran_ == 0) {
            ++Ran_;
            if (Work_) Work_();
        }
        return CallNextHookEx(nullptr, Code, W, L);
    }
    static BOOL CALLBACK Close(HWND Window, LPARAM To) {
        if (!IsWindowVisible(Window) || !GetMenu(Window)) return TRUE;
        PostMessageW(Window, WM_CLOSE, 0, 0);
        reinterpret_cast<Meanwhile*>(To)->Closed_ = true;
        return FALSE;
    }
    static DWORD WINAPI Run(void* Given) {
        auto& Self = *static_cast<Meanwhile*>(Given);
        for (int Tries = 0; Tries < 500 && !Self.Closed_ && !Self.End_; ++Tries) {
            Sleep(20);
            EnumThreadWindows(Self.Of_, Close, reinterpret_cast<LPARAM>(&Self));
        }
        return 0;
    }

    static inline std::function<void()> Work_;
    static inline int Ran_ = 0;
    HHOOK Hook_;
    DWORD Of_;
    std::atomic<bool> Closed_{false};
    std::atomic<bool> End_{false};
    HANDLE Thread_ = nullptr;
};

TEST_F(HostTest, NothingPullsTheItemFromUnderTheOwnWindow) {
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    int Called = 0;
    const auto Refused = [&](Moment Of) {
        VARIANT_BOOL Failed = kNo;
        Ref<IDispatch> Back;
        Bstr Text, Key;
        EXPECT_EQ(Server->Terminate(nullptr, Back.Out(), &Failed), E_UNEXPECTED);
        EXPECT_EQ(Failed, kYes);
        EXPECT_EQ(Words(), Of == Moment::Working ? L"Il server sta eseguendo un'altra operazione"
                                                 : L"Una finestra \u00E8 aperta su questo server");
        EXPECT_EQ(Server->LoadData(nullptr, &Failed), E_UNEXPECTED);
        EXPECT_EQ(Server->Save(nullptr, &Failed), E_UNEXPECTED);
        EXPECT_EQ(Server->SaveData(nullptr, nullptr, nullptr, 0, nullptr, Key.Out(), Text.Out(), &Failed),
                  E_UNEXPECTED);
        EXPECT_EQ(Server->DeleteData(nullptr, nullptr, nullptr, 0, nullptr, kYes, &Failed), E_UNEXPECTED);
        EXPECT_EQ(Server->TlbrButtonClick(Bstr(L"COPY").Get(), nullptr, nullptr, nullptr), E_UNEXPECTED);
        EXPECT_EQ(Server->ShutDown(), E_UNEXPECTED);
        EXPECT_EQ(Server->putref_DesignTree(nullptr), E_UNEXPECTED);
        bool Bad = false;
        EXPECT_EQ(ShowData(Server, Edited, Bad), E_UNEXPECTED);
        EXPECT_TRUE(Bad);
        // What only reads may come between two operations, what asks nothing of the item always.
        EXPECT_EQ(Server->DispData(nullptr, nullptr, nullptr, 0, nullptr, Text.Out(), &Failed),
                  Of == Moment::Working ? E_UNEXPECTED : S_OK);
        VARIANT_BOOL Cancel = kYes;
        EXPECT_EQ(Server->Quit(&Cancel, &Failed), S_OK);
        Variant Version;
        EXPECT_EQ(Server->CurrVersion(Version.Out()), S_OK);
        ++Called;
    };
    Edited->OnCall = [&](std::wstring_view Member) {
        if (Member == L"Content") Refused(Moment::Working);
        return S_OK;
    };
    {
        const Meanwhile Closes([&] { Refused(Moment::OwnWindow); });
        bool Failed = true;
        EXPECT_EQ(ShowData(Server, Edited, Failed), S_OK);
        EXPECT_FALSE(Failed);
        EXPECT_EQ(Closes.Ran(), 1);
    }
    EXPECT_EQ(Called, 2);
    Edited->OnCall = nullptr;
    EXPECT_EQ(Server->ShutDown(), S_OK);
}

TEST_F(HostTest, AnObjectThatFailsUnderTheOwnWindowEndsItWell) {
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    Edited->OnCall = [&](std::wstring_view Member) { return Member == L"Content" ? E_FAIL : S_OK; };
    bool Failed = false;
    EXPECT_EQ(ShowData(Server, Edited, Failed), S_OK);
    EXPECT_TRUE(Failed);
    EXPECT_EQ(Asked->Errors.size(), 1U);
    Edited->OnCall = nullptr;
    const Meanwhile Closes;
    EXPECT_EQ(ShowData(Server, Edited, Failed), S_OK);
    EXPECT_FALSE(Failed);
}

TEST_F(HostTest, TheErrorsOfASecondServerGoToItsOwnCallBack) {
    Ref<::_vdSvr> Second = File.Create();
    const Ref<Operator> Other(new Operator);
    Second->putref_CallBack(Other.Get());
    const Ref<Stored> Edited = Object(L"MEMBER");
    const Meanwhile Closes([&] {
        Bstr Buffer;
        VARIANT_BOOL Failed = kNo;
        EXPECT_EQ(Second->Export(Edited.Get(), Bstr(L"PIPPO").Get(), Buffer.Out(), nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kYes);
    });
    bool Failed = true;
    EXPECT_EQ(ShowData(Server, Edited, Failed), S_OK);
    EXPECT_FALSE(Failed);
    EXPECT_EQ(Closes.Ran(), 1);
    EXPECT_EQ(Other->Errors, std::vector<std::wstring>{L"20000 vdSvr.Export: Metodo sconosciuto [PIPPO]"});
    EXPECT_TRUE(Asked->Errors.empty());
}

// What a paste writes stays with the component until the operator saves.
TEST(HostData, APasteReachesTheHostByASaveAlone) {
    Living = 0;
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<Stored> Edited(new Stored(As, L"MEMBER", L"PROVA"));
        const auto Data = std::make_shared<HostRegData>(Edited.Get());
        const auto Tree = std::make_shared<window::TreeModel>();
        kv::vdSvr Core(nullptr, [&] { return Tree; });
        RegObject Copied;
        Copied.Name = L"ALTRO";
        Copied.SetValue(L"Text", std::wstring(L"SEGRETO"));
        kv::ClipItem Clipboard{.DataObj = std::make_shared<MemoryRegData>(L"MEMBER", Copied),
                               .ClassWord = L"MEMBER"};
        class Face final : public window::TreeFace {
          public:
            std::function<void()> Script;
            bool Run(TreeCall&) override { return Script(), false; }
        } Window;
        Tree->SetFace(&Window);
        window::WindowCore Work(Core, *Tree, *Data, Clipboard);
        Window.Script = [&] {
            EXPECT_FALSE(Work.LoadData());
            std::wstring Key, Text;
            EXPECT_FALSE(Work.PasteData({.CurrItem = L"ROOT"}, std::nullopt, Key));
            EXPECT_EQ(Edited->Replaced, 0);
            EXPECT_TRUE(Edited->Saving.empty());
            const std::wstring Leaf = Tree->NodeAt(L"PARMS", 1);
            EXPECT_FALSE(Work.DispData({.CurrItem = Leaf}, Text));
            EXPECT_NE(Text.find(L"SEGRETO"), std::wstring::npos);
            // A save that fails loses nothing.
            Edited->OnCall = [](std::wstring_view Member) { return Member == L"Replace" ? E_FAIL : S_OK; };
            EXPECT_TRUE(Work.Save());
            EXPECT_EQ(Data->Read().Values.size(), 1U);
            Edited->OnCall = nullptr;
            EXPECT_EQ(Edited->Replaced, 0);
            EXPECT_FALSE(Work.Save());
            EXPECT_EQ(Edited->Replaced, 1);
            EXPECT_EQ(Data->Read().Name, L"PROVA");
        };
        kv::RegData* Target = nullptr;
        EXPECT_FALSE(Core.ShowData(nullptr, Data, L"MEMBER", Target, false));
        EXPECT_EQ(Edited->Saving, (std::vector<bool>{true, true}));
        Tree->SetFace(nullptr);
    }
}

// Nodes of the host's own.

TEST_F(HostTest, NodesOfTheHostAreReadWhole) {
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<HostNode> Root(new HostNode(As, L"RADICE"));
        Root->Values = {{L"A", L"uno"}, {L"B", L""}};
        const Ref<HostNode> Child(
            new HostNode(As == Binding::Early ? Binding::ByName : Binding::Early, L"FIGLIO"));
        Child->Values = {{L"C", L"due"}};
        Root->Children = {Ref<IDispatch>(Child.Get()), Ref<IDispatch>(Child.Get())};
        const Ref<Stored> Edited = Object(L"MEMBER", As);
        Edited->Content = Ref<IDispatch>(Root.Get());
        HostRegData Data(Edited.Get());
        RegObject Below;
        Below.Name = L"FIGLIO";
        Below.Text = L"testo";
        Below.Id = 7;
        Below.Version = 3;
        Below.Desc = L"descr";
        Below.UserList = L"A;B";
        Below.Number2 = 2;
        Below.Number3 = 33;
        Below.String3 = L"s3";
        Below.String4 = L"s4";
        Below.String5 = L"s5";
        RegObject Expected = Below;
        Below.SetValue(L"C", std::wstring(L"due"));
        Expected.Name = L"RADICE";
        Expected.SetValue(L"A", std::wstring(L"uno"));
        Expected.SetValue(L"B", std::wstring());
        Expected.Children = {Below, Below};
        EXPECT_EQ(Data.Read(), Expected);
    }
}

TEST_F(HostTest, ANodeThatFailsInAnyMemberIsNotReadInPart) {
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<HostNode> Root(new HostNode(As, L"PROVA"));
        const Ref<HostNode> Child(new HostNode(As, L"FIGLIO"));
        Root->Values = {{L"Text", L"SEGRETO"}};
        Root->Children = {Ref<IDispatch>(Child.Get())};
        const Ref<Stored> Edited = Object(L"MEMBER", As);
        Edited->Content = Ref<IDispatch>(Root.Get());
        std::wstring Text;
        ASSERT_TRUE(Exported(Edited.Get(), L"MEMBER", Text));
        EXPECT_NE(Text.find(L"SEGRETO"), std::wstring::npos);
        std::vector<std::wstring> Members = Root->Calls;
        std::sort(Members.begin(), Members.end());
        Members.erase(std::unique(Members.begin(), Members.end()), Members.end());
        EXPECT_EQ(Members, (std::vector<std::wstring>{L"Child", L"ChildCount", L"Desc", L"Id", L"Name",
                                                      L"Number2", L"Number3", L"String3", L"String4",
                                                      L"String5", L"Text", L"UserList", L"Value",
                                                      L"ValueCount", L"ValueName", L"Version"}));
        for (const std::wstring& Member : Members)
            for (const HRESULT Code : {E_FAIL, E_OUTOFMEMORY, static_cast<HRESULT>(RPC_E_DISCONNECTED)}) {
                SCOPED_TRACE(std::string(Member.begin(), Member.end()));
                Root->OnCall = [&](std::wstring_view Called) { return Called == Member ? Code : S_OK; };
                Asked->Errors.clear();
                EXPECT_FALSE(Exported(Edited.Get(), L"MEMBER", Text));
                EXPECT_EQ(Text.find(L"PASSWORD"), std::wstring::npos);
                EXPECT_EQ(Asked->Errors.size(), 1U);
            }
        Root->OnCall = nullptr;
        EXPECT_TRUE(Exported(Edited.Get(), L"MEMBER", Text));
    }
}

TEST_F(HostTest, NodesWithoutEndAreRefused) {
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<HostNode> Root(new HostNode(As, L"PROVA"));
        const Ref<Stored> Edited = Object(L"MEMBER", As);
        Edited->Content = Ref<IDispatch>(Root.Get());
        std::wstring Text;
        for (const LONG Count : {-1L, 1000001L, 0x7FFFFFFFL}) {
            Root->Counted = Count;
            Asked->Errors.clear();
            EXPECT_FALSE(Exported(Edited.Get(), L"MEMBER", Text));
            ASSERT_EQ(Asked->Errors.size(), 1U);
            EXPECT_NE(Asked->Errors[0].find(L"L'oggetto ha troppi elementi"), std::wstring::npos);
        }
        Root->Counted.reset();
        Root->Children = {Ref<IDispatch>(Root.Get())};  // its own child
        Asked->Errors.clear();
        EXPECT_FALSE(Exported(Edited.Get(), L"MEMBER", Text));
        ASSERT_EQ(Asked->Errors.size(), 1U);
        EXPECT_NE(Asked->Errors[0].find(L"L'oggetto ha troppi livelli"), std::wstring::npos);
        Root->Children.clear();
        EXPECT_TRUE(Exported(Edited.Get(), L"MEMBER", Text));
    }
}

TEST_F(HostTest, AFailingLookUpIsNoAbsentMember) {
    const Ref<ScriptObject> Node(new ScriptObject({{L"Name", Says(L"PROVA")},
                                                   {L"ValueCount", Says(1)},
                                                   {L"ValueName", Says(L"Text")},
                                                   {L"Value", Says(L"SEGRETO")}}));
    const Ref<Stored> Edited = Object(L"MEMBER");
    Edited->Content = Ref<IDispatch>(Node.Get());
    std::wstring Text;
    EXPECT_TRUE(Exported(Edited.Get(), L"MEMBER", Text));
    EXPECT_NE(Text.find(L"SEGRETO"), std::wstring::npos);
    for (const HRESULT Code : {E_OUTOFMEMORY, E_FAIL, static_cast<HRESULT>(RPC_E_DISCONNECTED), E_NOTIMPL}) {
        Node->LookUp = Code;
        Asked->Errors.clear();
        EXPECT_FALSE(Exported(Edited.Get(), L"MEMBER", Text)) << Code;
        EXPECT_EQ(Asked->Errors.size(), 1U);
    }
    EXPECT_EQ(Asked->Errors[0],
              L"20000 ParmItem.Load: Oggetto dell'applicazione: non \u00E8 un nodo, mancano "
              L"Name, ValueCount e ChildCount");
    Node->LookUp = S_OK;
    EXPECT_TRUE(Exported(Edited.Get(), L"MEMBER", Text));
}

TEST_F(HostTest, WhatDoesNotFitIsToldWithItsMember) {
    const struct {
        std::map<std::wstring, ScriptObject::Member> Members;
        const wchar_t* Told;
    } kNodes[] = {
        {{{L"Name", Says(L"X")},
          {L"ValueCount", Says(1)},
          {L"ValueName", Says(L"Text")},
          {L"Value", Says(1.5)}},
         L"Value(Text)"},
        {{{L"Name", Says(L"X")}, {L"ValueCount", Says(L"molti")}}, L"ValueCount"},
        {{{L"Name", Says(L"X")}, {L"ChildCount", Says(L"pochi")}}, L"ChildCount"},
        {{{L"Name", Says(L"X")}, {L"ChildCount", Says(1)}, {L"Child", Says(3)}}, L"Child"},
        {{{L"Name", Says(L"X")}, {L"Id", Says(L"uno")}}, L"Id"},
    };
    for (const auto& [Members, Told] : kNodes) {
        const Ref<Stored> Edited = Object(L"MEMBER");
        Edited->Content = Ref<IDispatch>(new ScriptObject(Members));
        Asked->Errors.clear();
        std::wstring Text;
        EXPECT_FALSE(Exported(Edited.Get(), L"MEMBER", Text));
        ASSERT_EQ(Asked->Errors.size(), 1U);
        const std::wstring Named = std::wstring(L"20000 ParmItem.Load: Oggetto dell'applicazione, ") + Told;
        EXPECT_EQ(Asked->Errors[0].substr(0, Named.size() + 2), Named + L": ")
            << std::string(Asked->Errors[0].begin(), Asked->Errors[0].end());
    }
    // An answer of the tree.
    const Ref<ScriptObject> Tree(new ScriptObject({{L"SetTools", Says(L"forse")}, {L"Dispose", Says(0)}}));
    EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
    bool Failed = false;
    EXPECT_EQ(ShowData(Server, Object(L"MEMBER"), Failed), S_OK);
    EXPECT_TRUE(Failed);
    LONG Number = 0, System = 0;
    Bstr Source, Description, HelpFile, HelpContext;
    Server->LastError(&Number, Source.Out(), Description.Out(), HelpFile.Out(), HelpContext.Out(), &System);
    EXPECT_EQ(Description.Text(), L"Oggetto dell'applicazione, SetTools: Tipo di valore non ammesso");
}

// Lists.

/// Two elements of a list, and what is saved of them.
class HostMoveTest : public HostTest {
  protected:
    void Moved(Binding As, std::function<HRESULT(IDispatch*, BSTR*, LONG*, VARIANT_BOOL*)> Move, bool Bad,
               const std::vector<int>& Order) {
        const Ref<ScriptedTree> Tree(new ScriptedTree(As));
        const Ref<Stored> Edited = Object(L"STRINGTABLE", As);
        EXPECT_FALSE(Show(Edited, Tree, [&] {
            VARIANT_BOOL Failed = kYes;
            EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
            const Bstr Fields(L"FIELDS");
            Bstr Keys[3];
            for (Bstr& Key : Keys)
                Server->EditData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), Key.Out(), &Failed);
            Tree->Model.SetSyntaxOn(false);
            const std::vector<std::int32_t> Before = Saved(Edited);
            Tree->Model.SelectNode(Keys[2].Text());
            Tree->OnMove = [&](IDispatch* List, LONG, BSTR* Key, LONG* Index, VARIANT_BOOL* Told) {
                return Move(List, Key, Index, Told);
            };
            Bstr Folder(Keys[2].Text()), Item(Keys[2].Text()), Section(L"FIELDS");
            LONG Index = 3;
            EXPECT_EQ(Server->MoveData(nullptr, Folder.Out(), Item.Out(), &Index, Section.Out(), 1, &Failed),
                      S_OK);
            EXPECT_EQ(Failed, Bad ? kYes : kNo);
            Tree->OnMove = nullptr;
            std::vector<std::int32_t> Expected;
            for (const int Place : Order) Expected.push_back(Before[static_cast<std::size_t>(Place) - 1]);
            EXPECT_EQ(Saved(Edited), Expected);
            return false;
        }));
    }
    std::vector<std::int32_t> Saved(const Ref<Stored>& Edited) {
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->Save(nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        HostRegData Data(Edited.Get());
        std::vector<std::int32_t> Ids;
        for (const RegObject& List : Data.Read().Children)
            for (const RegObject& Element : List.Children) Ids.push_back(Element.Id);
        return Ids;
    }
};

TEST_F(HostMoveTest, AMoveThatFailsAfterItsWorkLeavesTheListAlone) {
    const auto MoveUp = [](IDispatch* List) {
        EXPECT_EQ(As<::ParmList>(List)->Move(3, 2), S_OK);
        EXPECT_EQ(As<::ParmList>(List)->Move(2, 1), S_OK);
    };
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        Moved(As, [&](IDispatch* List, BSTR*, LONG*, VARIANT_BOOL*) { return MoveUp(List), E_FAIL; }, true,
              {1, 2, 3});
        Moved(As,
              [&](IDispatch* List, BSTR*, LONG*, VARIANT_BOOL* Failed) {
                  MoveUp(List);
                  *Failed = kYes;
                  return S_OK;
              },
              true, {1, 2, 3});
        // An element that is lost is not lost.
        Moved(As,
              [&](IDispatch* List, BSTR*, LONG*, VARIANT_BOOL* Failed) {
                  EXPECT_EQ(kv::com::As<::ParmList>(List)->Remove(2), S_OK);
                  *Failed = kNo;
                  return S_OK;
              },
              true, {1, 2, 3});
        EXPECT_NE(Asked->Errors.back().find(L"MoveListItem: un elemento tolto dalla lista"),
                  std::wstring::npos);
    }
    if (sizeof(void*) == 8)
        Moved(Binding::Early,
              [&](IDispatch* List, BSTR*, LONG*, VARIANT_BOOL*) -> HRESULT {
                  MoveUp(List);
                  throw std::runtime_error("of the host");
              },
              true, {1, 2, 3});
}

TEST_F(HostTest, TheLentListHasTheOperationsOfAList) {
    const Ref<ScriptedTree> Tree(new ScriptedTree(Binding::Early));
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    EXPECT_FALSE(Show(Edited, Tree, [&] {
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
        const Bstr Fields(L"FIELDS");
        Bstr Keys[3];
        for (Bstr& Key : Keys)
            Server->EditData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), Key.Out(), &Failed);
        Tree->Model.SelectNode(Keys[2].Text());
        Ref<IDispatch> Kept;
        Tree->OnMove = [&](IDispatch* Given, LONG, BSTR* Key, LONG* Index, VARIANT_BOOL* Told) {
            const Ref<::ParmList> List = As<::ParmList>(Given);
            const VARIANT Absent = Variant::Absent().Detach();
            LONG Count = 0, Place = 0;
            EXPECT_EQ(List->get_Count(&Count), S_OK);
            EXPECT_EQ(Count, 3);
            Ref<IDispatch> Third, First, None;
            EXPECT_EQ(List->get_Item(3, Third.Out()), S_OK);
            EXPECT_EQ(List->get_Item(1, First.Out()), S_OK);
            EXPECT_EQ(List->get_Item(4, None.Out()), DISP_E_BADINDEX);
            EXPECT_FALSE(None);
            EXPECT_EQ(List->Add(Third.Get(), Absent, Absent, Absent), E_INVALIDARG) << "it stands there";
            EXPECT_EQ(List->Add(Edited.Get(), Absent, Absent, Absent), E_INVALIDARG) << "a stranger";
            EXPECT_EQ(List->Remove(3), S_OK);
            EXPECT_EQ(List->Remove(3), DISP_E_BADINDEX);
            const Ref<::ListElement> Element = As<::ListElement>(Third.Get());
            EXPECT_EQ(Element->get_Place(&Place), S_OK);
            EXPECT_EQ(Place, 0);
            const Variant Named(std::wstring_view(L"TERZO")), Second(2), Far(9);
            EXPECT_EQ(List->Add(Third.Get(), Absent, Far.Get(), Absent), DISP_E_BADINDEX);
            EXPECT_EQ(List->Add(Third.Get(), Named.Get(), Second.Get(), Absent), S_OK);
            EXPECT_EQ(Element->get_Place(&Place), S_OK);
            EXPECT_EQ(Place, 2);
            VARIANT_BOOL There = kNo;
            EXPECT_EQ(List->Exists(Bstr(L"TERZO").Get(), &There), S_OK);
            EXPECT_EQ(There, kYes);
            EXPECT_EQ(List->Exists(Bstr(L"QUARTO").Get(), &There), S_OK);
            EXPECT_EQ(There, kNo);
            EXPECT_EQ(List->Remove(1), S_OK);
            EXPECT_FALSE(SUCCEEDED(List->Add(First.Get(), Named.Get(), Absent, Absent)))
                << "the key is taken";
            EXPECT_EQ(List->Add(First.Get(), Absent, Absent, Variant(2).Get()), S_OK);  // behind the last
            // By name, as a script has it.
            const ByName Late{Ref<IDispatch>(Given)};
            EXPECT_EQ(Late.Get(L"Count", NumberOf), 3);
            const Ref<IDispatch> Last = Late.Get(L"Item", ObjectOf, {&Variant(3).Get()});
            Late.Call(L"Remove", {&Variant(3).Get()});
            Late.Call(L"Add", {&Variant(Last.Get()).Get(), &Absent, &Variant(1).Get()});
            Kept = Ref<IDispatch>(Given);
            // 1 3 2 now: the node of the third goes, as the window takes it out.
            SysFreeString(*Key);
            *Key = ToBstr(Keys[1].Text());
            *Index = 2;
            Tree->Model.RemoveNode(Keys[2].Text());
            *Told = kNo;
            return S_OK;
        };
        Bstr Folder(Keys[2].Text()), Item(Keys[2].Text()), Section(L"FIELDS");
        LONG Index = 3;
        EXPECT_EQ(Server->MoveData(nullptr, Folder.Out(), Item.Out(), &Index, Section.Out(), 1, &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kNo) << (Asked->Errors.empty() ? ""
                                                         : std::string(Asked->Errors.back().begin(),
                                                                       Asked->Errors.back().end()));
        EXPECT_EQ(Tree->Model.NodeId(Item.Text()), 2);
        LONG Count = 9;
        EXPECT_EQ(As<::ParmList>(Kept.Get())->get_Count(&Count), E_UNEXPECTED);
        EXPECT_EQ(Count, 0);
        EXPECT_EQ(As<::ParmList>(Kept.Get())->Clear(), E_UNEXPECTED);
        return false;
    }));
    Tree->OnMove = nullptr;
}

// A window that has what is told of a tree window and no more: nodes are cleared and named through its
// control.

Ref<ScriptObject> ControlOf(window::TreeModel& Model) {
    const auto Text = [](const DISPPARAMS& Given) { return TextOf(Given.rgvarg[0]); };
    const Ref<ScriptObject> Nodes(new ScriptObject(
        {{L"Clear", [&Model](const DISPPARAMS&, VARIANT&) { return Model.ClearNodes(), S_OK; }},
         {L"Item", [&Model, Text](const DISPPARAMS& Given, VARIANT& Into) {
              const std::wstring Key = Text(Given);
              if (!Model.HasNode(Key)) return E_FAIL;
              Into = Variant(new ScriptObject(
                                 {{L"Key", Says(Key)},
                                  {L"Text",
                                   [&Model, Key, Text](const DISPPARAMS& Put, VARIANT& Out) {
                                       if (Put.cArgs == 1)
                                           Model.SetNodeText(Key, Text(Put));
                                       else
                                           Out = Variant(std::wstring_view(Model.NodeText(Key))).Detach();
                                       return S_OK;
                                   }}}))
                         .Detach();
              return S_OK;
          }}}));
    return Ref<ScriptObject>(new ScriptObject({{L"Nodes", [Nodes](const DISPPARAMS&, VARIANT& Into) {
                                                    return Into = Variant(Nodes.Get()).Detach(), S_OK;
                                                }}}));
}

TEST_F(HostTest, ATreeOfTheToldMembersServesAClassWithLists) {
    const Ref<ScriptedTree> Tree(new ScriptedTree(Binding::ByName));
    for (const wchar_t* Further : {L"ClearNodes", L"RemoveNode", L"RemoveChildren", L"HasNode", L"NodeText",
                                   L"NodeParent", L"NodeAt", L"SelectNode"})
        Tree->Lacking[Further] = true;
    Tree->Nodes = Ref<IDispatch>(ControlOf(Tree->Model).Get());
    const Ref<Stored> Edited = Object(L"STRINGTABLE", Binding::ByName);
    EXPECT_FALSE(Show(Edited, Tree, [&] {
        VARIANT_BOOL Failed = kYes;
        for (int Loaded = 0; Loaded < 2; ++Loaded) {
            EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
            EXPECT_EQ(Failed, kNo);
        }
        const Bstr Fields(L"FIELDS");
        Bstr Keys[2];
        for (Bstr& Key : Keys) {
            Server->EditData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), Key.Out(), &Failed);
            EXPECT_EQ(Failed, kNo);
        }
        // A rename shows at once.
        const std::wstring Parms = Tree->Leaf(L"FIELDPARMS", 2);
        const Bstr Folder(std::wstring_view(Tree->Model.NodeParent(Parms)));
        const Bstr Leaf{std::wstring_view(Parms)}, Section(L"FIELDPARMS");
        Bstr New, Text(L"NAME= SECONDO\r\n");
        Tree->Model.SetSyntaxOn(false);
        Server->SaveData(nullptr, Folder.Get(), Leaf.Get(), 0, Section.Get(), New.Out(), Text.Out(), &Failed);
        EXPECT_EQ(Failed, kNo);
        EXPECT_EQ(Tree->Model.NodeText(Keys[1].Text()), L"SECONDO");

        Tree->Model.SelectNode(Keys[1].Text());
        Bstr At(Keys[1].Text()), Item(Keys[1].Text()), List(L"FIELDS");
        LONG Index = 2;
        Server->MoveData(nullptr, At.Out(), Item.Out(), &Index, List.Out(), 1, &Failed);
        Tree->Lent.Clear();
        EXPECT_EQ(Failed, kNo);
        EXPECT_EQ(Tree->Model.NodeId(Item.Text()), 1);
        EXPECT_EQ(Tree->Model.NodeText(Item.Text()), L"SECONDO");

        Server->DeleteData(nullptr, Item.Get(), Item.Get(), 1, List.Get(), kNo, &Failed);
        EXPECT_EQ(Failed, kNo);
        // The window takes out itself what its operator deletes.
        Tree->Model.RemoveNode(Item.Text());
        Server->DeleteData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), kYes, &Failed);
        EXPECT_EQ(Failed, kNo);
        Server->Save(nullptr, &Failed);
        EXPECT_EQ(Failed, kNo);
        return false;
    }));
    EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{});
    EXPECT_EQ(Edited->Replaced, 1);
    EXPECT_EQ(Server->ShutDown(), S_OK);
    Tree->Nodes.Clear();
}

TEST_F(HostTest, ATargetIsNotLeakedWhereTheTreeFails) {
    std::vector<std::function<HRESULT()>> Kinds{[] { return E_FAIL; }};
    if (sizeof(void*) == 8) Kinds.emplace_back([]() -> HRESULT { throw std::runtime_error("of the host"); });
    for (const auto& Kind : Kinds) {
        const Ref<ScriptedTree> Tree(new ScriptedTree(Binding::Early));
        const Ref<Stored> Target = Object(L"MEMBER");
        Tree->OnCall = [&](std::wstring_view Member) { return Member == L"ShowTree" ? Kind() : S_OK; };
        EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
        Ref<IDispatch> Given(Target.Get());
        VARIANT_BOOL Cancel = kNo, Failed = kNo;
        EXPECT_EQ(Server->ShowData(nullptr, Object(L"MEMBER").Get(), Bstr(L"MEMBER").Get(), Given.InOut(),
                                   kNo, &Cancel, &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kYes);
        Given.Clear();
        EXPECT_EQ(Target->Count, 1U);
        EXPECT_EQ(Server->putref_DesignTree(nullptr), S_OK);
    }
}

// The clipboard holder.

TEST_F(HostTest, AHolderThatFailsIsAFailureOfTheOperation) {
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<ScriptedTree> Tree(new ScriptedTree(As));
        EXPECT_FALSE(Show(Object(L"MEMBER", As), Tree, [&] {
            VARIANT_BOOL Failed = kYes;
            EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
            const Ref<HostClip> Clip(new HostClip(As));
            Clip->Word = L"MEMBER";
            const Ref<Stored> Copy = Object(L"MEMBER", As);
            Clip->Data = Ref<IDispatch>(Copy.Get());
            Bstr Key;
            const Bstr Word(L"MEMBER");
            for (const std::wstring_view Member : {L"DataObj", L"ClassWord"}) {
                Clip->OnCall = [&](std::wstring_view Called) { return Called == Member ? E_FAIL : S_OK; };
                Asked->Errors.clear();
                Failed = kNo;
                EXPECT_EQ(Server->CopyData(nullptr, nullptr, nullptr, 0, nullptr, kNo, &Failed, Clip.Get()),
                          S_OK);
                EXPECT_EQ(Failed, kYes);
                EXPECT_EQ(Asked->Errors.size(), 1U);
                EXPECT_NE(Asked->Errors[0].find(L"20000 vdSvr.CopyData: Oggetto dell'applicazione, "),
                          std::wstring::npos);
                Failed = kNo;
                EXPECT_EQ(Server->PasteData(Word.Get(), nullptr, nullptr, 0, nullptr, Key.Out(), &Failed,
                                            Clip.Get()),
                          S_OK);
                EXPECT_EQ(Failed, kYes);
                EXPECT_EQ(Asked->Errors.size(), 2U);
            }
            EXPECT_EQ(Copy->Replaced, 0);
            Clip->OnCall = nullptr;
            EXPECT_EQ(Server->CopyData(nullptr, nullptr, nullptr, 0, nullptr, kNo, &Failed, Clip.Get()),
                      S_OK);
            EXPECT_EQ(Failed, kNo);
            EXPECT_EQ(Copy->Replaced, 1);
            EXPECT_EQ(
                Server->PasteData(Word.Get(), nullptr, nullptr, 0, nullptr, Key.Out(), &Failed, Clip.Get()),
                S_OK);
            EXPECT_EQ(Failed, kNo);
            return false;
        }));
    }
}

// Who is asked in the operator's place.

TEST_F(HostTest, TheCallBackObjectIsAskedByItsInterfaceOrByName) {
    for (const Binding As : {Binding::Early, Binding::ByName}) {
        SCOPED_TRACE(NameOf(As));
        const Ref<Operator> Host(new Operator(As));
        EXPECT_EQ(Server->putref_CallBack(Host.Get()), S_OK);
        const Ref<ScriptedTree> Tree(new ScriptedTree(As));
        wchar_t Folder[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, Folder);
        const std::wstring Path =
            std::wstring(Folder) + L"kvhost" + std::to_wstring(GetCurrentProcessId()) + L".bas";
        const auto Press = [&](const wchar_t* Word) {
            const Variant Button{std::wstring_view(Word)}, Nothing{std::wstring_view(L"")};
            if (As == Binding::Early) {
                EXPECT_EQ(Server->TlbrButtonClick(Button.Get().bstrVal, nullptr, nullptr, nullptr), S_OK);
                return;
            }
            const VARIANT* const None = &Nothing.Get();
            ByName(Ref<IDispatch>(Server.Get())).Call(L"TlbrButtonClick", {&Button.Get(), None, None, None});
        };
        EXPECT_FALSE(Show(Object(L"TABLE", As), Tree, [&] {
            VARIANT_BOOL Failed = kYes;
            EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
            const Bstr Fields(L"FIELDS");
            Bstr Key;
            Server->EditData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), Key.Out(), &Failed);
            EXPECT_EQ(Failed, kNo);
            Tree->Model.MarkModified(false);
            Press(L"FINDTAG");
            Host->Button = IDNO;
            Press(L"RENUMTAG");
            EXPECT_FALSE(Tree->Model.Modified());
            Press(L"CONSTANTS");  // no path: nothing is written
            EXPECT_EQ(Host->Asked,
                      (std::vector<std::wstring>{L"Tag disponibili1", L"Confermi la rinumerazione dei Tag?",
                                                 L"File di uscita"}));
            Host->Button = IDYES;
            Host->File = Path;
            Press(L"RENUMTAG");
            EXPECT_TRUE(Tree->Model.Modified());
            Press(L"CONSTANTS");
            WIN32_FILE_ATTRIBUTE_DATA Written{};
            EXPECT_TRUE(GetFileAttributesExW(Path.c_str(), GetFileExInfoStandard, &Written));
            EXPECT_GT(Written.nFileSizeLow, 0U);
            EXPECT_TRUE(DeleteFileW(Path.c_str()));
            EXPECT_TRUE(Host->Errors.empty());

            // One that fails is told, where it can still be told.
            const struct {
                const wchar_t* Member;
                const wchar_t* Word;
            } kAsking[] = {{L"ShowList", L"FINDTAG"}, {L"MsgBox", L"RENUMTAG"}, {L"SaveFile", L"CONSTANTS"}};
            std::vector<std::function<HRESULT()>> Kinds{[] { return E_FAIL; }, [] { return E_OUTOFMEMORY; }};
            // Between files built apart an exception travels on 64 bits alone.
            if (sizeof(void*) == 8 && As == Binding::Early)
                Kinds.emplace_back([]() -> HRESULT { throw std::runtime_error("of the host"); });
            for (const auto& [Member, Word] : kAsking)
                for (const auto& Kind : Kinds) {
                    Host->Errors.clear();
                    Host->OnCall = [&, Named = std::wstring(Member)](std::wstring_view Called) {
                        return Called == Named ? Kind() : S_OK;
                    };
                    Press(Word);
                    EXPECT_EQ(Host->Errors.size(), 1U) << &Kind - Kinds.data();
                }
            Host->OnCall = [](std::wstring_view) { return E_FAIL; };
            Press(L"FINDTAG");
            Bstr Item, Text(L"PIPPO= 1\r\n");
            const Bstr Parms(L"PARMS");
            EXPECT_EQ(Server->SaveData(nullptr, Parms.Get(), Parms.Get(), 0, Parms.Get(), Item.Out(),
                                       Text.Out(), &Failed),
                      S_OK);
            EXPECT_EQ(Failed, kYes);
            // One that calls back is refused, and does no harm.
            Host->OnCall = [&](std::wstring_view) {
                VARIANT_BOOL Bad = kNo;
                Ref<IDispatch> Back;
                EXPECT_EQ(Server->Terminate(nullptr, Back.Out(), &Bad), E_UNEXPECTED);
                return S_OK;
            };
            Press(L"RENUMTAG");
            Host->OnCall = nullptr;
            Host->Calls.clear();
            Press(L"FINDTAG");
            EXPECT_EQ(Host->Calls, (std::vector<std::wstring>{L"SetPointer", L"SetPointer", L"ShowList"}));
            return false;
        }));
        // A member that is lacking is the system's.
        Host->Lacking[L"SetPointer"] = true;
        Host->OnCall = [&](std::wstring_view Called) { return Called == L"SetPointer" ? E_NOTIMPL : S_OK; };
        std::wstring Text;
        EXPECT_TRUE(Exported(Object(L"MEMBER").Get(), L"MEMBER", Text));
        Host->OnCall = nullptr;
        EXPECT_EQ(Server->putref_CallBack(nullptr), S_OK);
        EXPECT_EQ(Server->putref_DesignTree(nullptr), S_OK);
    }
}

// Null pointers, and places for what comes back.

TEST_F(HostTest, NullPointersTakeNothing) {
    const ULONG Before = Asked->Count;
    EXPECT_EQ(Server->putref_RegistryServer(Asked.Get()), S_OK);
    Ref<IDispatch> Made, Tree, Object, Clip, Control, Nodes, Child;
    EXPECT_EQ(Server->NewNode(Bstr(L"X").Get(), Made.Out()), S_OK);
    EXPECT_EQ(Server->NewObject(Bstr(L"MEMBER").Get(), Bstr(L"X").Get(), Object.Out()), S_OK);
    EXPECT_EQ(Server->NewClipItem(Clip.Out()), S_OK);
    EXPECT_EQ(Server->get_DesignTree(Tree.Out()), S_OK);
    const Ref<::RegNode> Node = As<::RegNode>(Made.Get());
    const Ref<::RegData> Data = As<::RegData>(Object.Get());
    const Ref<::ClipItem> Holder = As<::ClipItem>(Clip.Get());
    const Ref<::DesignTree> Model = As<::DesignTree>(Tree.Get());
    EXPECT_EQ(Node->AddChild(Bstr(L"F").Get(), Child.Out()), S_OK);
    EXPECT_EQ(Node->put_Value(Bstr(L"V").Get(), Variant(std::wstring_view(L"v")).Get()), S_OK);
    EXPECT_EQ(Holder->putref_DataObj(Object.Get()), S_OK);
    const VARIANT Absent = Variant::Absent().Detach();
    const Variant Root(std::wstring_view(L"ROOT"));
    EXPECT_EQ(Model->AddNode(Absent, Absent, Root.Get(), Root.Get(), Absent, Absent, nullptr, nullptr), S_OK);
    EXPECT_EQ(Model->get_TreeControl(Control.Out()), S_OK);
    EXPECT_EQ(As<::TreeControl>(Control.Get())->get_Nodes(Nodes.Out()), S_OK);
    const Bstr Key(L"ROOT"), Value(L"V");
    const Bstr None;
    VARIANT_BOOL Flag = kNo;
    LONG Number = 0;
    SHORT Short = 0;
    Bstr A, B, C, D, E;
    Ref<IDispatch> O;

    const std::function<HRESULT()> kCalls[] = {
        [&] { return Server->get_DesignTree(nullptr); },
        [&] { return Server->get_CallBack(nullptr); },
        [&] { return Server->get_RegistryServer(nullptr); },
        [&] { return Server->NewNode(None.Get(), nullptr); },
        [&] { return Server->NewObject(None.Get(), None.Get(), nullptr); },
        [&] { return Server->NewClipItem(nullptr); },
        [&] { return Server->CurrVersion(nullptr); },
        [&] { return Server->ShowData(nullptr, Object.Get(), None.Get(), nullptr, kNo, &Flag, &Flag); },
        [&] { return Server->ShowData(nullptr, Object.Get(), None.Get(), O.Out(), kNo, nullptr, &Flag); },
        [&] { return Server->ShowData(nullptr, nullptr, None.Get(), O.Out(), kNo, &Flag, &Flag); },
        [&] { return Server->ShowData(nullptr, Object.Get(), None.Get(), O.Out(), kNo, &Flag, nullptr); },
        [&] { return Server->LastError(nullptr, A.Out(), B.Out(), C.Out(), D.Out(), &Number); },
        [&] { return Server->LastError(&Number, nullptr, B.Out(), C.Out(), D.Out(), &Number); },
        [&] { return Server->LastError(&Number, A.Out(), nullptr, C.Out(), D.Out(), &Number); },
        [&] { return Server->LastError(&Number, A.Out(), B.Out(), nullptr, D.Out(), &Number); },
        [&] { return Server->LastError(&Number, A.Out(), B.Out(), C.Out(), nullptr, &Number); },
        [&] { return Server->LastError(&Number, A.Out(), B.Out(), C.Out(), D.Out(), nullptr); },
        [&] {
            return Server->GetObjectInfo(nullptr, nullptr, B.Out(), &Short, C.Out(), D.Out(), E.Out(), &Flag);
        },
        [&] {
            return Server->GetObjectInfo(nullptr, A.Out(), nullptr, &Short, C.Out(), D.Out(), E.Out(), &Flag);
        },
        [&] {
            return Server->GetObjectInfo(nullptr, A.Out(), B.Out(), nullptr, C.Out(), D.Out(), E.Out(),
                                         &Flag);
        },
        [&] {
            return Server->GetObjectInfo(nullptr, A.Out(), B.Out(), &Short, nullptr, D.Out(), E.Out(), &Flag);
        },
        [&] {
            return Server->GetObjectInfo(nullptr, A.Out(), B.Out(), &Short, C.Out(), nullptr, E.Out(), &Flag);
        },
        [&] {
            return Server->GetObjectInfo(nullptr, A.Out(), B.Out(), &Short, C.Out(), D.Out(), nullptr, &Flag);
        },
        [&] { return Server->MoveData(nullptr, nullptr, B.Out(), &Number, C.Out(), 1, &Flag); },
        [&] { return Server->MoveData(nullptr, A.Out(), nullptr, &Number, C.Out(), 1, &Flag); },
        [&] { return Server->MoveData(nullptr, A.Out(), B.Out(), nullptr, C.Out(), 1, &Flag); },
        [&] { return Server->MoveData(nullptr, A.Out(), B.Out(), &Number, nullptr, 1, &Flag); },
        [&] { return Node->get_Name(nullptr); },
        [&] { return Node->get_Text(nullptr); },
        [&] { return Node->get_Id(nullptr); },
        [&] { return Node->get_Value(Value.Get(), nullptr); },
        [&] { return Node->get_ValueCount(nullptr); },
        [&] { return Node->get_ValueName(1, nullptr); },
        [&] { return Node->get_ChildCount(nullptr); },
        [&] { return Node->get_Child(1, nullptr); },
        [&] { return Node->AddChild(Key.Get(), nullptr); },
        [&] { return Data->get_Name(nullptr); },
        [&] { return Data->get_Clsid(nullptr); },
        [&] { return Data->get_UserList(nullptr); },
        [&] { return Data->get_Content(nullptr); },
        [&] { return Data->Replace(nullptr); },
        [&] { return Holder->get_DataObj(nullptr); },
        [&] { return Holder->get_ClassWord(nullptr); },
        [&] { return Model->AddDefault(Key.Get(), Key.Get(), Key.Get(), nullptr); },
        [&] { return Model->SetTools(Absent, nullptr); },
        [&] { return Model->MoveListItem(nullptr, 1, A.Out(), &Number, &Flag); },
        [&] { return Model->get_SyntaxOn(nullptr); },
        [&] { return Model->NodeId(Key.Get(), nullptr); },
        [&] { return Model->get_TreeControl(nullptr); },
        [&] { return Model->HasNode(Key.Get(), nullptr); },
        [&] { return Model->get_NodeText(Key.Get(), nullptr); },
        [&] { return Model->NodeParent(Key.Get(), nullptr); },
        [&] { return Model->NodeAt(Key.Get(), 1, nullptr); },
        [&] { return As<::TreeControl>(Control.Get())->get_Nodes(nullptr); },
        [&] { return As<::TreeNodes>(Nodes.Get())->get_Item(Key.Get(), nullptr); },
    };
    for (const auto& Call : kCalls) EXPECT_EQ(Call(), E_POINTER) << &Call - kCalls;
    EXPECT_EQ(Asked->Count, Before + 1) << "the registry server";
    SetErrorInfo(0, nullptr);
    LONG Children = 0;
    EXPECT_EQ(Node->get_ChildCount(&Children), S_OK);
    EXPECT_EQ(Children, 1) << "a call that is refused changes nothing";
    const MemorySpy Spy;
    const long Once = Spy.Held();
    for (int I = 0; I < 3; ++I)
        for (const auto& Call : kCalls) Call();
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(Spy.Held(), Once);
    EXPECT_EQ(Server->putref_RegistryServer(nullptr), S_OK);
    EXPECT_EQ(Asked->Count, Before);
}

TEST_F(HostTest, PlacesAreEmptyAndFlagsSetWhereACallFails) {
    Ref<IDispatch> Made, Held;
    EXPECT_EQ(Server->NewNode(Bstr(L"X").Get(), Made.Out()), S_OK);
    EXPECT_EQ(Server->get_DesignTree(Held.Out()), S_OK);
    const Ref<::RegNode> Node = As<::RegNode>(Made.Get());
    const Ref<::DesignTree> Tree = As<::DesignTree>(Held.Get());
    const Bstr Unknown(L"PIPPO");
    const auto Text = [&](const std::function<HRESULT(BSTR*)>& Call) {
        auto Place = reinterpret_cast<BSTR>(std::uintptr_t{0x1234});
        EXPECT_TRUE(FAILED(Call(&Place)));
        return Place == nullptr;
    };
    EXPECT_TRUE(Text([&](BSTR* Place) { return Node->get_ValueName(9, Place); }));
    EXPECT_TRUE(Text([&](BSTR* Place) { return Tree->get_NodeText(Unknown.Get(), Place); }));
    EXPECT_TRUE(Text([&](BSTR* Place) { return Tree->NodeParent(Unknown.Get(), Place); }));
    EXPECT_TRUE(Text([&](BSTR* Place) { return Tree->NodeAt(Unknown.Get(), 1, Place); }));
    const auto Object = [&](const std::function<HRESULT(IDispatch**)>& Call) {
        auto* Place = reinterpret_cast<IDispatch*>(std::uintptr_t{0x1234});
        EXPECT_TRUE(FAILED(Call(&Place)));
        return Place == nullptr;
    };
    EXPECT_TRUE(Object([&](IDispatch** Place) { return Node->get_Child(2, Place); }));
    const VARIANT Absent = Variant::Absent().Detach();
    const Variant Key(std::wstring_view(L"FIGLIO")), Near(std::wstring_view(L"PIPPO")), Child(4);
    EXPECT_TRUE(Object([&](IDispatch** Place) {
        return Tree->AddNode(Near.Get(), Child.Get(), Key.Get(), Key.Get(), Absent, Absent, nullptr, Place);
    }));
    LONG Position = 9;
    EXPECT_TRUE(FAILED(Tree->NodeId(Unknown.Get(), &Position)));
    EXPECT_EQ(Position, 0);
    const auto Judged = [&](const std::function<HRESULT(VARIANT_BOOL*)>& Call) {
        VARIANT_BOOL Failed = kNo;
        EXPECT_TRUE(FAILED(Call(&Failed)));
        return Failed == kYes;
    };
    Ref<IDispatch> Target;
    EXPECT_TRUE(
        Judged([&](VARIANT_BOOL* F) { return Tree->ShowTree(nullptr, nullptr, Target.Out(), kNo, F); }));
    EXPECT_TRUE(Judged([&](VARIANT_BOOL* F) { return Tree->SetTools(Absent, F); }));
    EXPECT_TRUE(Judged([&](VARIANT_BOOL* F) {
        return Server->LoadData(nullptr, F),
               Server->ShowData(nullptr, nullptr, nullptr, Target.Out(), kNo, F, F);
    }));
}

TEST_F(HostTest, AnotherInterfaceIdentifierIsRefused) {
    DISPID Id = DISPID_UNKNOWN;
    wchar_t Member[] = L"CurrVersion";
    LPOLESTR Name = Member;
    EXPECT_EQ(Server->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Id), S_OK);
    EXPECT_EQ(Server->GetIDsOfNames(__uuidof(::_vdSvr), &Name, 1, LOCALE_USER_DEFAULT, &Id),
              DISP_E_UNKNOWNINTERFACE);
    DISPPARAMS Nothing{};
    Variant Result;
    EXPECT_EQ(Server->Invoke(Id, __uuidof(::_vdSvr), LOCALE_USER_DEFAULT, DISPATCH_METHOD, &Nothing,
                             Result.Out(), nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

// The file.

TEST(HostFile, LeavesTheProcessWhenAllHasGone) {
    for (int Life = 0; Life < 3; ++Life) {
        {
            const Component File;
            EXPECT_NE(GetModuleHandleW(L"KvDesSvr.dll"), nullptr);
            Ref<IClassFactory> Factory;
            ASSERT_EQ(File.ClassObject(__uuidof(::vdSvr), __uuidof(IClassFactory), Factory.OutVoid()), S_OK);
            // A lock too few is none too many.
            EXPECT_EQ(Factory->LockServer(FALSE), E_UNEXPECTED);
            Factory.Clear();
            EXPECT_EQ(File.CanUnload(), S_OK);
            Ref<::_vdSvr> Server = File.Create();
            EXPECT_EQ(File.CanUnload(), S_FALSE);
            Ref<IDispatch> Kept;
            EXPECT_EQ(Server->NewNode(Bstr(L"X").Get(), Kept.Out()), S_OK);
            Server.Clear();
            EXPECT_EQ(File.CanUnload(), S_FALSE) << "a node lives";
            Kept.Clear();
            EXPECT_EQ(File.CanUnload(), S_OK);
        }
        EXPECT_EQ(GetModuleHandleW(L"KvDesSvr.dll"), nullptr);
    }
}

// A key that is gone with the session takes no lasting one below it: so the writing of the registration fails
// at one place or the other.
TEST(HostFile, ARegistrationThatFailsHalfWayLeavesNothing) {
    const HMODULE Loaded = LoadLibraryW(L"" KV_DLL);
    ASSERT_NE(Loaded, nullptr);
    const auto Call = [&](const char* Entry) {
        return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(Loaded, Entry)))();
    };
    const auto Named = [](REFIID Id) {
        wchar_t Text[40];
        StringFromGUID2(Id, Text, 40);
        return std::wstring(Text);
    };
    TLIBATTR* Attributes = nullptr;
    ASSERT_EQ(Library()->GetLibAttr(&Attributes), S_OK);
    const std::wstring Class = L"CLSID\\" + Named(__uuidof(::vdSvr));
    const std::wstring Keys[] = {Class, L"vdbSvr.vdSvr", L"TypeLib\\" + Named(Attributes->guid),
                                 L"Interface\\" + Named(__uuidof(::_vdSvr))};
    Library()->ReleaseTLibAttr(Attributes);
    const auto There = [&] {
        std::vector<std::wstring> Found;
        for (const std::wstring& Key : Keys) {
            HKEY Opened = nullptr;
            if (RegOpenKeyExW(HKEY_CLASSES_ROOT, Key.c_str(), 0, KEY_READ, &Opened) != ERROR_SUCCESS)
                continue;
            RegCloseKey(Opened);
            Found.push_back(Key);
        }
        return Found;
    };
    EXPECT_EQ(There(), std::vector<std::wstring>{});
    for (const std::wstring& Fleeting : {Keys[0], Keys[1]}) {
        HKEY Made = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, Fleeting.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                  KEY_WRITE, nullptr, &Made, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(Made);
        EXPECT_EQ(Call("DllRegisterServer"), SELFREG_E_CLASS);
        EXPECT_EQ(There(), std::vector<std::wstring>{});
        EXPECT_EQ(Call("DllCanUnloadNow"), S_OK);
    }
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(There(), std::vector<std::wstring>(std::begin(Keys), std::end(Keys)));
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(There(), std::vector<std::wstring>{});
    SetErrorInfo(0, nullptr);
    FreeLibrary(Loaded);
}

/// A client that knows nothing of the component but names, and has only what the system gives.
class Client {
  public:
    explicit Client(IDispatch* Object) : Object_(Object) {}

    VARIANT Run(const wchar_t* Name, WORD Flags, std::vector<VARIANT> Arguments = {}) const {
        DISPID Id = DISPID_UNKNOWN;
        auto* Text = const_cast<LPOLESTR>(Name);
        EXPECT_EQ(Object_->GetIDsOfNames(IID_NULL, &Text, 1, LOCALE_USER_DEFAULT, &Id), S_OK) << Id;
        std::vector<VARIANT> Reversed(Arguments.rbegin(), Arguments.rend());
        DISPPARAMS Passed{Reversed.data(), nullptr, static_cast<UINT>(Reversed.size()), 0};
        DISPID Value = DISPID_PROPERTYPUT;
        if (Flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
            Passed.cNamedArgs = 1;
            Passed.rgdispidNamedArgs = &Value;
        }
        VARIANT Result;
        VariantInit(&Result);
        EXPECT_EQ(Object_->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, Flags, &Passed,
                                  Passed.cNamedArgs ? nullptr : &Result, nullptr, nullptr),
                  S_OK);
        return Result;
    }
    VARIANT Call(const wchar_t* Name, std::vector<VARIANT> Arguments = {}) const {
        return Run(Name, DISPATCH_METHOD, std::move(Arguments));
    }

    static VARIANT Of(IDispatch* Object) {
        VARIANT Made{};
        Made.vt = VT_DISPATCH;
        Made.pdispVal = Object;
        return Made;
    }
    static VARIANT Of(BSTR Text) {
        VARIANT Made{};
        Made.vt = VT_BSTR;
        Made.bstrVal = Text;
        return Made;
    }
    static VARIANT Of(LONG Number) {
        VARIANT Made{};
        Made.vt = VT_I4;
        Made.lVal = Number;
        return Made;
    }
    static VARIANT Flag(bool Set) {
        VARIANT Made{};
        Made.vt = VT_BOOL;
        Made.boolVal = Set ? kYes : kNo;
        return Made;
    }
    static VARIANT ByRef(VARTYPE Type, void* Place) {
        VARIANT Made{};
        Made.vt = static_cast<VARTYPE>(Type | VT_BYREF);
        Made.byref = Place;
        return Made;
    }

  private:
    IDispatch* Object_;
};

TEST(HostFile, AClientByProgramIdentifierLivesAWholeLifeAndTheFileUnloads) {
    const HMODULE Loaded = LoadLibraryW(L"" KV_DLL);
    ASSERT_NE(Loaded, nullptr);
    const auto Entry = [&](const char* Name) {
        return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(Loaded, Name)));
    };
    ASSERT_EQ(Entry("DllRegisterServer")(), S_OK);
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    Living = 0;
    {
        CLSID Class;
        ASSERT_EQ(CLSIDFromProgID(L"vdbSvr.vdSvr", &Class), S_OK);
        IDispatch* Server = nullptr;
        ASSERT_EQ(CoCreateInstance(Class, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch),
                                   reinterpret_cast<void**>(&Server)),
                  S_OK);
        const Client On(Server);
        const VARIANT Version = On.Run(L"CurrVersion", DISPATCH_METHOD | DISPATCH_PROPERTYGET);
        EXPECT_EQ(Version.vt, VT_I2);
        EXPECT_EQ(Version.iVal, 256);

        const Ref<ScriptedTree> Tree(new ScriptedTree(Binding::ByName));
        const Ref<Operator> Asked(new Operator);
        const Ref<Stored> Edited(new Stored(Binding::ByName, L"STRINGTABLE", L"PROVA"));
        On.Run(L"DesignTree", DISPATCH_PROPERTYPUTREF, {Client::Of(Tree.Get())});
        On.Run(L"CallBack", DISPATCH_PROPERTYPUTREF, {Client::Of(Asked.Get())});
        BSTR Empty = SysAllocString(L"");
        BSTR Word = SysAllocString(L"STRINGTABLE");
        BSTR Fields = SysAllocString(L"FIELDS");
        BSTR Buffer = nullptr, Key = nullptr, Second = nullptr;
        VARIANT_BOOL Failed = kNo;
        const VARIANT Nothing = Client::Of(Empty);
        Tree->Model.SetSyntaxOn(false);
        Tree->Script = [&](ScriptedTree& Window) {
            EXPECT_EQ(On.Call(L"LoadData", {Nothing}).boolVal, kNo);
            for (BSTR* New : {&Key, &Second})
                EXPECT_EQ(
                    On.Call(L"EditData", {Nothing, Client::Of(Fields), Client::Of(Fields), Client::Of(0L),
                                          Client::Of(Fields), Client::ByRef(VT_BSTR, New)})
                        .boolVal,
                    kNo);
            Window.Model.SelectNode(Second);
            BSTR Folder = SysAllocString(Second), Item = SysAllocString(Second),
                 Section = SysAllocString(Fields);
            LONG Index = 2;
            EXPECT_EQ(On.Call(L"MoveData", {Nothing, Client::ByRef(VT_BSTR, &Folder),
                                            Client::ByRef(VT_BSTR, &Item), Client::ByRef(VT_I4, &Index),
                                            Client::ByRef(VT_BSTR, &Section), Client::Of(1L)})
                          .boolVal,
                      kNo);
            EXPECT_EQ(Window.Model.NodeId(Item), 1);
            Window.Lent.Clear();
            const std::wstring Leaf = Window.Leaf(L"FIELDPARMS");
            BSTR At = SysAllocString(Leaf.c_str()), Parms = SysAllocString(L"FIELDPARMS");
            const std::wstring Above = Window.Model.NodeParent(Leaf);
            BSTR In = SysAllocString(Above.c_str());
            const VARIANT Head[] = {Nothing, Client::Of(In), Client::Of(At), Client::Of(0L),
                                    Client::Of(Parms)};
            const auto With = [&](std::initializer_list<VARIANT> Further) {
                std::vector<VARIANT> All(std::begin(Head), std::end(Head));
                All.insert(All.end(), Further);
                return All;
            };
            EXPECT_EQ(On.Call(L"DispData", With({Client::ByRef(VT_BSTR, &Buffer)})).boolVal, kNo);
            EXPECT_GT(SysStringLen(Buffer), 0U);
            BSTR New = nullptr;
            for (const auto& [Typed, Bad] :
                 {std::pair(L"PIPPO= 1\r\n", kYes), std::pair(L"NAME= PRIMO\r\n", kNo)}) {
                SysFreeString(Buffer);
                Buffer = SysAllocString(Typed);
                EXPECT_EQ(On.Call(L"SaveData",
                                  With({Client::ByRef(VT_BSTR, &New), Client::ByRef(VT_BSTR, &Buffer)}))
                              .boolVal,
                          Bad);
            }
            EXPECT_EQ(Asked->Errors.size(), 1U);
            // A clipboard of the host's own, by name.
            const Ref<HostClip> Clip(new HostClip(Binding::ByName));
            const Ref<Stored> Copy(new Stored(Binding::ByName, L"STRINGTABLE", L"COPIA"));
            Clip->Word = L"STRINGTABLE";
            Clip->Data = Ref<IDispatch>(Copy.Get());
            On.Call(L"CopyData",
                    With({Client::Flag(false), Client::ByRef(VT_BOOL, &Failed), Client::Of(Clip.Get())}));
            EXPECT_EQ(Failed, kNo);
            EXPECT_EQ(Copy->Replaced, 1);
            Failed = kYes;
            On.Call(L"PasteData",
                    {Client::Of(Word), Client::Of(In), Client::Of(At), Client::Of(0L), Client::Of(Parms),
                     Client::ByRef(VT_BSTR, &New), Client::ByRef(VT_BOOL, &Failed), Client::Of(Clip.Get())});
            EXPECT_EQ(Failed, kNo);
            BSTR Name = nullptr, Desc = nullptr, Clsid = nullptr, Id = nullptr, Users = nullptr;
            SHORT Number = 9;
            EXPECT_EQ(On.Call(L"GetObjectInfo",
                              {Nothing, Client::ByRef(VT_BSTR, &Name), Client::ByRef(VT_BSTR, &Desc),
                               Client::ByRef(VT_I2, &Number), Client::ByRef(VT_BSTR, &Clsid),
                               Client::ByRef(VT_BSTR, &Id), Client::ByRef(VT_BSTR, &Users)})
                          .boolVal,
                      kNo);
            EXPECT_STREQ(Name, L"PROVA");
            EXPECT_STREQ(Clsid, L"STRINGTABLE");
            EXPECT_STREQ(Users, L"ADMIN;BIBLIO");
            EXPECT_EQ(On.Call(L"DeleteData", {Nothing, Client::Of(Fields), Client::Of(Key), Client::Of(2L),
                                              Client::Of(Fields), Client::Flag(false)})
                          .boolVal,
                      kNo);
            EXPECT_EQ(Window.Model.Find(L"FIELDS")->Children.Count(), 1);
            On.Call(L"TlbrButtonClick", {Client::Of(Word), Nothing, Nothing, Nothing});
            EXPECT_EQ(On.Call(L"ShowPropTable", {Nothing, Nothing, Nothing}).boolVal, kNo);
            EXPECT_EQ(On.Call(L"HelpShow", {Nothing, Nothing, Nothing, Nothing}).boolVal, kNo);
            VARIANT_BOOL Cancel = kYes;
            EXPECT_EQ(On.Call(L"Quit", {Client::ByRef(VT_BOOL, &Cancel)}).boolVal, kNo);
            EXPECT_EQ(Cancel, kNo);
            EXPECT_EQ(On.Call(L"Save", {Nothing}).boolVal, kNo);
            IDispatch* Back = nullptr;
            EXPECT_EQ(On.Call(L"Terminate", {Nothing, Client::ByRef(VT_DISPATCH, &Back)}).boolVal, kNo);
            EXPECT_EQ(Back, static_cast<IDispatch*>(Edited.Get()));
            if (Back) Back->Release();
            for (BSTR Gone : {Folder, Item, Section, At, Parms, In, New, Name, Desc, Clsid, Id, Users})
                SysFreeString(Gone);
            return false;
        };
        IDispatch* Target = nullptr;
        VARIANT_BOOL Cancel = kNo;
        EXPECT_EQ(
            On.Call(L"ShowData", {Client::Of(static_cast<IDispatch*>(nullptr)), Client::Of(Edited.Get()),
                                  Client::Of(Word), Client::ByRef(VT_DISPATCH, &Target), Client::Flag(false),
                                  Client::ByRef(VT_BOOL, &Cancel)})
                .boolVal,
            kNo);
        Tree->Script = nullptr;
        if (Target) Target->Release();
        EXPECT_EQ(Edited->Replaced, 1);

        // The argument that is not read, given and left out.
        SysFreeString(Buffer);
        Buffer = nullptr;
        VARIANT Unread = Client::Of(7L);
        EXPECT_EQ(On.Call(L"Export", {Client::Of(Edited.Get()), Client::Of(Word),
                                      Client::ByRef(VT_BSTR, &Buffer), Client::ByRef(VT_VARIANT, &Unread)})
                      .boolVal,
                  kNo);
        EXPECT_EQ(Unread.lVal, 7);
        const std::wstring Whole(Buffer ? Buffer : L"");
        EXPECT_NE(Whole.find(L"PRIMO"), std::wstring::npos);
        SysFreeString(Buffer);
        Buffer = nullptr;
        EXPECT_EQ(
            On.Call(L"Export", {Client::Of(Edited.Get()), Client::Of(Word), Client::ByRef(VT_BSTR, &Buffer)})
                .boolVal,
            kNo);
        EXPECT_EQ(Whole, Buffer ? Buffer : L"");
        EXPECT_EQ(
            On.Call(L"Import", {Client::Of(Edited.Get()), Client::Of(Word), Client::ByRef(VT_BSTR, &Buffer)})
                .boolVal,
            kNo);

        LONG Number = 1, System = 1;
        BSTR Source = nullptr, Description = nullptr, HelpFile = nullptr, HelpContext = nullptr;
        BSTR Unknown = SysAllocString(L"PIPPO");
        EXPECT_EQ(
            On.Call(L"ShowData", {Client::Of(static_cast<IDispatch*>(nullptr)), Client::Of(Edited.Get()),
                                  Client::Of(Unknown), Client::ByRef(VT_DISPATCH, &Target),
                                  Client::Flag(false), Client::ByRef(VT_BOOL, &Cancel)})
                .boolVal,
            kYes);
        On.Call(L"LastError", {Client::ByRef(VT_I4, &Number), Client::ByRef(VT_BSTR, &Source),
                               Client::ByRef(VT_BSTR, &Description), Client::ByRef(VT_BSTR, &HelpFile),
                               Client::ByRef(VT_BSTR, &HelpContext), Client::ByRef(VT_I4, &System)});
        EXPECT_EQ(Number, 20000);
        EXPECT_STREQ(Description, L"Metodo sconosciuto [PIPPO]");
        On.Call(L"ShutDown");
        EXPECT_EQ(Tree->Disposed, 1);
        for (BSTR Gone :
             {Empty, Word, Fields, Buffer, Key, Second, Source, Description, HelpFile, HelpContext, Unknown})
            SysFreeString(Gone);
        EXPECT_EQ(Server->Release(), 0U);
    }
    EXPECT_EQ(Living, 0);
    EXPECT_EQ(Entry("DllCanUnloadNow")(), S_OK);
    EXPECT_EQ(Entry("DllUnregisterServer")(), S_OK);
    FreeLibrary(Loaded);
    // The system holds the file until nothing in it lives.
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"KvDesSvr.dll"), nullptr);
    CoUninitialize();
    CLSID Class;
    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"vdbSvr.vdSvr", &Class)));
}

}  // namespace
}  // namespace kv::com::host
