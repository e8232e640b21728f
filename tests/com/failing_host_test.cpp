// A host that fails: each operation of the server with a host whose n-th call fails, for every n; and each
// operation at the moments that are not its own.

#include <stdexcept>
#include <utility>

#include "tests/com/Host.h"

namespace kv::com::host {
namespace {

constexpr VARIANT_BOOL kYes = VARIANT_TRUE;
constexpr VARIANT_BOOL kNo = VARIANT_FALSE;
constexpr const wchar_t* kWord = L"CATPROC";

/// A clipboard holder of the host.
class Holder final : public HostObject<::ClipItem> {
  public:
    Holder(Binding As, Ref<IDispatch> Data, std::wstring_view Word)
        : HostObject(As), Data_(std::move(Data)), Word_(Word) {}

    HRESULT STDMETHODCALLTYPE get_DataObj(IDispatch** Held) override {
        return Do(L"DataObj", [&] { *Held = Ref<IDispatch>(Data_).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE putref_DataObj(IDispatch* Given) override {
        return Do(L"DataObj", [&] { Data_ = Ref<IDispatch>(Given); });
    }
    HRESULT STDMETHODCALLTYPE get_ClassWord(BSTR* Text) override {
        return Do(L"ClassWord", [&] { *Text = ToBstr(Word_); });
    }
    HRESULT STDMETHODCALLTYPE put_ClassWord(BSTR Text) override {
        return Do(L"ClassWord", [&] { Word_ = FromBstr(Text); });
    }

  private:
    ~Holder() override = default;
    Ref<IDispatch> Data_;
    std::wstring Word_;
};

/// What an operation is called with, and what it answers.
struct Call {
    explicit Call(const Ref<::_vdSvr>& Of, IDispatch* Edited = nullptr, IDispatch* Holder = nullptr)
        : Server(Of.Get()), Object(Edited), Clip(Holder) {}

    ::_vdSvr* Server;
    IDispatch* Object;
    IDispatch* Clip;
    Bstr Folder, Item, Key;
    LONG Index = 0;
    Bstr Text;
    VARIANT_BOOL Failed = 99;
};

void Put(Bstr& Into, std::wstring_view Text) { SysFreeString(std::exchange(*Into.Out(), ToBstr(Text))); }

/// Where a row stands: on the folder of the list or on its second element.
enum class On { Folder, Element };

enum class Rests {
    Item,    // without an item it fails and tells; while the item works it is refused
    Nothing  // it works at every moment
};

/// What the record holds afterwards, whether it fails or not.
enum class Leaves {
    WhatIsShown,
    AllElements,  // a text that was taken stays, also where the node's caption could not be written
    WhatIsStored
};

struct Operation {
    const char* Name;
    On Where;
    Rests Needs;
    Leaves After;
    HRESULT (*Run)(Call&);
};

// clang-format off
const Operation kOperations[] = {
    {"CopyData", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->CopyData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), kNo, &C.Failed, C.Clip); }},
    {"DeleteData", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->DeleteData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), kNo, &C.Failed); }},
    {"DeleteData, all", On::Folder, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->DeleteData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), kYes, &C.Failed); }},
    {"DispData", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->DispData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), C.Text.Out(), &C.Failed); }},
    {"EditData", On::Folder, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->EditData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), C.Text.Out(), &C.Failed); }},
    {"GetObjectInfo", On::Folder, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        Bstr Desc, Class, Id, Users;
        SHORT Version = 0;
        return C.Server->GetObjectInfo(nullptr, C.Text.Out(), Desc.Out(), &Version, Class.Out(), Id.Out(), Users.Out(),
                                       &C.Failed); }},
    {"HelpShow", On::Folder, Rests::Nothing, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->HelpShow(nullptr, C.Folder.Get(), C.Item.Get(), nullptr, &C.Failed); }},
    {"LoadData", On::Folder, Rests::Item, Leaves::WhatIsStored, [](Call& C) { return C.Server->LoadData(nullptr, &C.Failed); }},
    {"MoveData, forward", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->MoveData(nullptr, C.Folder.Out(), C.Item.Out(), &C.Index, C.Key.Out(), 1, &C.Failed); }},
    {"MoveData, back", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->MoveData(nullptr, C.Folder.Out(), C.Item.Out(), &C.Index, C.Key.Out(), -1, &C.Failed); }},
    {"PasteData", On::Element, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->PasteData(Bstr(kWord).Get(), C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), C.Text.Out(),
                                   &C.Failed, C.Clip); }},
    {"Quit", On::Folder, Rests::Nothing, Leaves::WhatIsShown, [](Call& C) {
        VARIANT_BOOL Cancel = kYes;
        const HRESULT Result = C.Server->Quit(&Cancel, &C.Failed);
        EXPECT_EQ(Cancel, kNo);
        return Result; }},
    {"Save", On::Folder, Rests::Item, Leaves::WhatIsShown, [](Call& C) { return C.Server->Save(nullptr, &C.Failed); }},
    {"SaveData", On::Element, Rests::Item, Leaves::AllElements, [](Call& C) {
        Put(C.Text, L"NAME= NUOVO\r\n");
        Bstr New;
        return C.Server->SaveData(nullptr, C.Folder.Get(), C.Item.Get(), C.Index, C.Key.Get(), New.Out(), C.Text.Out(),
                                  &C.Failed); }},
    {"ShowPropTable", On::Folder, Rests::Item, Leaves::WhatIsShown, [](Call& C) {
        return C.Server->ShowPropTable(nullptr, C.Folder.Get(), C.Item.Get(), &C.Failed); }},
};
// clang-format on

/// How a call of the host fails.
std::vector<std::function<HRESULT()>> Faults(Binding As) {
    std::vector<std::function<HRESULT()>> Kinds{[] { return E_FAIL; }, [] { return E_OUTOFMEMORY; },
                                                [] { return DISP_E_EXCEPTION; }};
    // Between files built apart an exception travels on 64 bits alone.
    if (sizeof(void*) == 8 && As == Binding::Early)
        Kinds.emplace_back([]() -> HRESULT { throw std::runtime_error("of the host"); });
    return Kinds;
}

class FailingHost : public ::testing::TestWithParam<Binding> {
  protected:
    void SetUp() override {
        Server = File.Create();
        Tree = Ref<ScriptedTree>(new ScriptedTree(GetParam()));
        Asked = Ref<Operator>(new Operator);
        Tree->Model.SetSyntaxOn(false);
        ASSERT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
        ASSERT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    }
    void TearDown() override { SetErrorInfo(0, nullptr); }

    Ref<Stored> Object(std::wstring_view Name = L"PROVA") const {
        return Ref<Stored>(new Stored(GetParam(), kWord, Name));
    }

    /// Every call of every object of the host goes through `Fails`.
    void Arm(const Fault& Fails) {
        Tree->OnCall = Fails;
        if (Edited) Edited->OnCall = Fails;
        if (Copy) Copy->OnCall = Fails;
        if (Clip) Clip->OnCall = Fails;
    }

    /// ShowData; `Script` runs in the window.
    void Show(const std::function<void()>& Script) {
        Edited = Object();
        Copy = Object(L"COPIA");
        Clip = Ref<Holder>(new Holder(GetParam(), Ref<IDispatch>(Copy.Get()), kWord));
        Tree->Script = [&](ScriptedTree&) {
            Script();
            return false;
        };
        IDispatch* Target = nullptr;
        VARIANT_BOOL Cancel = kNo, Failed = kYes;
        EXPECT_EQ(Server->ShowData(nullptr, Edited.Get(), Bstr(kWord).Get(), &Target, kNo, &Cancel, &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kNo);
        if (Target) Target->Release();
        Tree->Script = nullptr;
        Tree->Lent.Clear();
        Edited.Clear();
        Copy.Clear();
        Clip.Clear();
    }

    /// Loads the object and gives it three elements with names.
    void Fill() {
        ASSERT_FALSE(Loaded());
        for (const wchar_t* Name : {L"PRIMO", L"SECONDO", L"TERZO"}) {
            Call Made(Server);
            Aim(Made, On::Folder);
            ASSERT_EQ(Server->EditData(nullptr, Made.Folder.Get(), Made.Item.Get(), 0, Made.Key.Get(),
                                       Made.Text.Out(), &Made.Failed),
                      S_OK);
            ASSERT_EQ(Made.Failed, kNo);
            Call Named(Server);
            Aim(Named, On::Element, Tree->Model.Find(L"FIELDS")->Children.Count());
            Bstr New, Text(L"NAME= " + std::wstring(Name) + L"\r\n");
            ASSERT_EQ(Server->SaveData(nullptr, Named.Folder.Get(), Named.Item.Get(), Named.Index,
                                       Named.Key.Get(), New.Out(), Text.Out(), &Named.Failed),
                      S_OK);
            ASSERT_EQ(Named.Failed, kNo);
        }
        ASSERT_EQ(Elements(), (std::vector<std::wstring>{L"PRIMO", L"SECONDO", L"TERZO"}));
    }
    bool Loaded() {
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->LoadData(nullptr, &Failed), S_OK);
        return Failed != kNo;
    }

    /// The elements of the list as the tree shows them.
    std::vector<std::wstring> Elements() const {
        std::vector<std::wstring> Names;
        Tree->Model.ForEach([&](const window::TreeNode& Node) {
            if (Node.Parent && Node.Parent->Key == L"FIELDS") Names.push_back(Node.Text);
        });
        return Names;
    }

    /// Gives a call the head of a node, which is selected.
    void Aim(Call& Made, On Where, std::int32_t Nth = 2) const {
        std::wstring Wanted = L"FIELDS";
        if (Where != On::Folder && Tree->Model.HasNode(Wanted))
            Tree->Model.ForEach([&](const window::TreeNode& Node) {
                if (!Node.Parent || Node.Parent->Key != L"FIELDS" || --Nth != 0) return;
                Wanted = Node.Key;
            });
        Put(Made.Folder, Wanted);
        Put(Made.Item, Wanted);
        Put(Made.Key, SectionWord(Wanted));
        if (const window::TreeNode* const Node = Tree->Model.Find(Wanted); Node && Node->Parent) {
            if (IsLeafKey(Wanted)) Put(Made.Folder, Node->Parent->Key);
            const std::wstring_view Kind = Tree->Model.Kind(*Node->Parent);
            if (Kind == kind::kList || Kind == kind::kSubList) Made.Index = Tree->Model.NodeId(Wanted);
            Tree->Model.SelectNode(Wanted);
        }
    }

    /// One life in which the n-th call that the operation makes on the host fails. Whether there was one.
    bool LifeWithAFault(const Operation& Row, int Nth, const std::function<HRESULT()>& Kind) {
        bool Reached = false;
        Show([&] {
            Fill();
            Call Made(Server, Edited.Get(), Clip.Get());
            Aim(Made, Row.Where);
            Asked->Errors.clear();
            int Calls = 0;
            std::string Member;
            Arm([&](std::wstring_view Called) {
                if (++Calls != Nth) return S_OK;
                Member.assign(Called.begin(), Called.end());
                return Kind();
            });
            EXPECT_EQ(Row.Run(Made), S_OK);
            Arm(nullptr);
            SCOPED_TRACE(Member);
            Reached = Calls >= Nth;
            EXPECT_EQ(Made.Failed, Reached ? kYes : kNo);
            EXPECT_EQ(Asked->Errors.size(), Reached ? 1U : 0U) << "told once";
            // The next calls work, and what the tree shows is what the record holds.
            const std::vector<std::wstring> Shown = Elements();
            VARIANT_BOOL Unsaved = kYes;
            EXPECT_EQ(Server->Save(nullptr, &Unsaved), S_OK);
            EXPECT_EQ(Unsaved, kNo);
            EXPECT_FALSE(Loaded());
            if (Row.After == Leaves::WhatIsShown) {
                EXPECT_EQ(Elements(), Shown);
            }
            if (Row.After == Leaves::AllElements) {
                EXPECT_EQ(Elements().size(), Shown.size());
            }
        });
        return Reached;
    }

    void EveryFault() {
        for (const Operation& Row : kOperations) {
            std::size_t Which = 0;
            for (const auto& Kind : Faults(GetParam())) {
                int Nth = 0;
                do {
                    SCOPED_TRACE(std::string(Row.Name) + ", call " + std::to_string(Nth + 1) + ", fault " +
                                 std::to_string(Which));
                    if (!LifeWithAFault(Row, ++Nth, Kind)) break;
                } while (Nth < 200 && !HasFailure());
                ++Which;
            }
        }
    }

    // The objects go before the file is left.
    Component File;
    Ref<::_vdSvr> Server;
    Ref<ScriptedTree> Tree;
    Ref<Operator> Asked;
    Ref<Stored> Edited, Copy;
    Ref<Holder> Clip;
};

TEST_P(FailingHost, EachCallThatAnOperationMakesMayFail) { EveryFault(); }

TEST_P(FailingHost, NothingIsLeakedByAFault) {
    EveryFault();
    MemorySpy Spy;
    EveryFault();
    const long Once = Spy.Held();
    EveryFault();
    EXPECT_EQ(Spy.Held(), Once);
}

TEST_P(FailingHost, AnOperationWithoutAnItemFailsAndTells) {
    const auto EachFails = [&](const char* When) {
        SCOPED_TRACE(When);
        for (const Operation& Row : kOperations) {
            SCOPED_TRACE(Row.Name);
            Asked->Errors.clear();
            Call Made(Server, nullptr, Clip.Get());
            Put(Made.Key, L"FIELDS");
            EXPECT_EQ(Row.Run(Made), S_OK);
            EXPECT_EQ(Made.Failed, Row.Needs == Rests::Item ? kYes : kNo);
            EXPECT_EQ(Asked->Errors.size(), Row.Needs == Rests::Item ? 1U : 0U);
        }
        Asked->Errors.clear();
        EXPECT_EQ(Server->TlbrButtonClick(Bstr(L"FINDTAG").Get(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(Asked->Errors.size(), 1U);
    };
    Copy = Object(L"COPIA");
    Clip = Ref<Holder>(new Holder(GetParam(), Ref<IDispatch>(Copy.Get()), kWord));
    EachFails("before anything was shown");
    Show([&] {
        Fill();
        Ref<IDispatch> Back;
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->Terminate(nullptr, Back.Out(), &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_EQ(Back.Get(), static_cast<IDispatch*>(Edited.Get()));
        EachFails("behind Terminate");
    });
    Clip = Ref<Holder>(new Holder(GetParam(), {}, kWord));
    EXPECT_EQ(Server->ShutDown(), S_OK);
    EachFails("behind ShutDown");
    EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
    Show([&] { Fill(); });
}

TEST_P(FailingHost, WhileTheItemWorksNoOtherOperationDoes) {
    Show([&] {
        Fill();
        int Inside = 0;
        Tree->OnCall = [&](std::wstring_view Member) {
            if (Member != L"AddNode" || Inside++ != 0) return S_OK;
            for (const Operation& Row : kOperations) {
                SCOPED_TRACE(Row.Name);
                Call Made(Server, nullptr, Clip.Get());
                Put(Made.Key, L"FIELDS");
                EXPECT_EQ(Row.Run(Made), Row.Needs == Rests::Item ? E_UNEXPECTED : S_OK);
                EXPECT_EQ(Made.Failed, Row.Needs == Rests::Item ? kYes : kNo);
            }
            EXPECT_EQ(Server->TlbrButtonClick(Bstr(L"FINDTAG").Get(), nullptr, nullptr, nullptr),
                      E_UNEXPECTED);
            Ref<IDispatch> Back;
            VARIANT_BOOL Failed = kNo;
            EXPECT_EQ(Server->Terminate(nullptr, Back.Out(), &Failed), E_UNEXPECTED);
            EXPECT_EQ(Failed, kYes);
            EXPECT_FALSE(Back);
            return S_OK;
        };
        Call Made(Server);
        Aim(Made, On::Folder);
        Bstr New;
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->EditData(nullptr, Made.Folder.Get(), Made.Item.Get(), 0, Made.Key.Get(), New.Out(),
                                   &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_GT(Inside, 0);
        Tree->OnCall = nullptr;
        EXPECT_EQ(Elements().size(), 4U);
        VARIANT_BOOL Unsaved = kYes;
        EXPECT_EQ(Server->Save(nullptr, &Unsaved), S_OK);
        EXPECT_EQ(Unsaved, kNo);
    });
    EXPECT_TRUE(Asked->Errors.empty());
}

// Outside a window: what a failing object leaves of Export, Import, ShowData and ShutDown.
TEST_P(FailingHost, EachCallOutsideAWindowMayFail) {
    struct {
        const char* Name;
        bool MayFail;  // else what fails is passed over
        HRESULT (*Run)(Call&);
    } const kRows[] = {
        {"Export", true,
         [](Call& C) { return C.Server->Export(C.Object, Bstr(kWord).Get(), C.Text.Out(), {}, &C.Failed); }},
        {"ShowData", true,
         [](Call& C) {
             IDispatch* Target = nullptr;
             VARIANT_BOOL Cancel = kNo;
             const HRESULT Shown =
                 C.Server->ShowData(nullptr, C.Object, Bstr(kWord).Get(), &Target, kNo, &Cancel, &C.Failed);
             if (Target) Target->Release();
             return Shown;
         }},
        {"ShutDown", false,
         [](Call& C) {
             C.Failed = kNo;
             return C.Server->ShutDown();
         }},
    };
    for (const auto& Row : kRows)
        for (const auto& Kind : Faults(GetParam())) {
            bool Reached = true;
            for (int Nth = 1; Reached && Nth < 100 && !HasFailure(); ++Nth) {
                SCOPED_TRACE(std::string(Row.Name) + ", call " + std::to_string(Nth));
                EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
                Edited = Object();
                int Calls = 0;
                Arm([&](std::wstring_view) { return ++Calls == Nth ? Kind() : S_OK; });
                Call Made(Server, Edited.Get());
                EXPECT_EQ(Row.Run(Made), S_OK);
                Arm(nullptr);
                Reached = Calls >= Nth;
                EXPECT_EQ(Made.Failed, Reached && Row.MayFail ? kYes : kNo);
                EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
                Show([&] { Fill(); });
            }
        }
    EXPECT_EQ(Server->ShutDown(), S_OK);
}

INSTANTIATE_TEST_SUITE_P(Bound, FailingHost, ::testing::Values(Binding::Early, Binding::ByName),
                         [](const auto& Info) { return Info.param == Binding::Early ? "Early" : "ByName"; });

}  // namespace
}  // namespace kv::com::host
