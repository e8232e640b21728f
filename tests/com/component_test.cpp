// The whole life of the component as a host sees it, through the file itself: early bound and by name.

#include <initializer_list>
#include <stdexcept>

#include "server/vdSvr.h"
#include "tests/com/Host.h"

namespace kv::com::host {
namespace {

constexpr VARIANT_BOOL kYes = VARIANT_TRUE;
constexpr VARIANT_BOOL kNo = VARIANT_FALSE;

/// Calls the operations of TreeDll: by its slots, or by their names on the default interface.
class Caller {
  public:
    Caller(Binding As, const Ref<::_vdSvr>& Server)
        : Early_(As == Binding::Early ? kv::com::As<::TreeDll>(Server.Get()) : Ref<::TreeDll>()),
          Late_(Ref<IDispatch>(Server.Get())) {
        EXPECT_EQ(As == Binding::Early, static_cast<bool>(Early_));
    }

    Head HeadOf(const window::TreeModel& Tree, std::wstring_view Key) const {
        const window::TreeNode* const Node = Tree.Find(Key);
        Head Made{.CurrFolder = std::wstring(Key),
                  .CurrItem = std::wstring(Key),
                  .Key = std::wstring(SectionWord(Key))};
        if (!Node || !Node->Parent) return Made;
        if (IsLeafKey(Key)) Made.CurrFolder = Node->Parent->Key;
        const std::wstring_view Kind = Tree.Kind(*Node->Parent);
        if (Kind == kind::kList || Kind == kind::kSubList)
            Made.Index = window::SiblingOrder<window::TreeNode>::PlaceOf(Node);
        return Made;
    }

    bool LoadData() {
        if (!Early_) return FlagOf(Late_.Call(L"LoadData", {&Empty()}).Get());
        return Answered([&](VARIANT_BOOL* Failed) { return Early_->LoadData(nullptr, Failed); });
    }
    bool Save() {
        if (!Early_) return FlagOf(Late_.Call(L"Save", {&Empty()}).Get());
        return Answered([&](VARIANT_BOOL* Failed) { return Early_->Save(nullptr, Failed); });
    }
    bool DispData(const Head& At, std::wstring& Buffer) {
        if (!Early_) {
            const InOut Text{Variant(std::wstring_view(Buffer))};
            const LateHead H(At);
            const bool Bad = FlagOf(
                Late_.Call(L"DispData", {&Empty(), H.Folder(), H.Item(), H.Index(), H.Key(), Text.Argument()})
                    .Get());
            Buffer = TextOf(Text.Value());
            return Bad;
        }
        Bstr Text{std::wstring_view(Buffer)};
        const EarlyHead H(At);
        const bool Bad = Answered([&](VARIANT_BOOL* Failed) {
            return Early_->DispData(nullptr, H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(), Text.Out(),
                                    Failed);
        });
        Buffer = Text.Text();
        return Bad;
    }
    bool SaveData(const Head& At, std::wstring Buffer, std::wstring* NewKey = nullptr) {
        std::wstring New;
        bool Bad = true;
        if (!Early_) {
            const InOut Key{Variant(std::wstring_view(L""))};
            const InOut Text{Variant(std::wstring_view(Buffer))};
            const LateHead H(At);
            Bad = FlagOf(Late_
                             .Call(L"saveDATA", {&Empty(), H.Folder(), H.Item(), H.Index(), H.Key(),
                                                 Key.Argument(), Text.Argument()})
                             .Get());
            New = TextOf(Key.Value());
        } else {
            Bstr Key;
            Bstr Text{std::wstring_view(Buffer)};
            const EarlyHead H(At);
            Bad = Answered([&](VARIANT_BOOL* Failed) {
                return Early_->SaveData(nullptr, H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(),
                                        Key.Out(), Text.Out(), Failed);
            });
            New = Key.Text();
        }
        if (NewKey) *NewKey = New;
        return Bad;
    }
    bool EditData(const Head& At, std::wstring& NewKey) {
        if (!Early_) {
            const InOut Key{Variant()};
            const LateHead H(At);
            const bool Bad = FlagOf(
                Late_.Call(L"EditData", {&Empty(), H.Folder(), H.Item(), H.Index(), H.Key(), Key.Argument()})
                    .Get());
            NewKey = TextOf(Key.Value());
            return Bad;
        }
        Bstr Key;
        const EarlyHead H(At);
        const bool Bad = Answered([&](VARIANT_BOOL* Failed) {
            return Early_->EditData(nullptr, H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(), Key.Out(),
                                    Failed);
        });
        NewKey = Key.Text();
        return Bad;
    }
    bool DeleteData(const Head& At, bool Group) {
        if (!Early_) {
            const LateHead H(At);
            return FlagOf(Late_
                              .Call(L"DeleteData", {&Empty(), H.Folder(), H.Item(), H.Index(), H.Key(),
                                                    &Variant(Group).Get()})
                              .Get());
        }
        const EarlyHead H(At);
        return Answered([&](VARIANT_BOOL* Failed) {
            return Early_->DeleteData(nullptr, H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(),
                                      Group ? kYes : kNo, Failed);
        });
    }
    bool MoveData(Head& At, std::int32_t Direction) {
        if (!Early_) {
            const InOut Folder{Variant(std::wstring_view(At.CurrFolder))};
            const InOut Item{Variant(std::wstring_view(At.CurrItem))};
            const InOut Index{Variant(At.Index)};
            const InOut Key{Variant(std::wstring_view(At.Key))};
            const bool Bad =
                FlagOf(Late_
                           .Call(L"MoveData", {&Empty(), Folder.Argument(), Item.Argument(), Index.Argument(),
                                               Key.Argument(), &Variant(Direction).Get()})
                           .Get());
            At.CurrItem = TextOf(Item.Value());
            return Bad;
        }
        EarlyHead H(At);
        LONG Index = At.Index;
        const bool Bad = Answered([&](VARIANT_BOOL* Failed) {
            return Early_->MoveData(nullptr, H.Folder.Out(), H.Item.Out(), &Index, H.Key.Out(), Direction,
                                    Failed);
        });
        At.CurrItem = H.Item.Text();
        return Bad;
    }
    bool CopyData(const Head& At, bool Group, IDispatch* Holder) {
        if (!Early_) {
            const LateHead H(At);
            const InOut Failed{Variant(false)};
            Late_.Call(L"CopyData", {&Empty(), H.Folder(), H.Item(), H.Index(), H.Key(),
                                     &Variant(Group).Get(), Failed.Argument(), &Variant(Holder).Get()});
            return FlagOf(Failed.Value());
        }
        const EarlyHead H(At);
        return Answered([&](VARIANT_BOOL* Failed) {
            return Early_->CopyData(nullptr, H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(),
                                    Group ? kYes : kNo, Failed, Holder);
        });
    }
    bool PasteData(std::wstring_view Path, const Head& At, IDispatch* Holder) {
        if (!Early_) {
            const LateHead H(At);
            const InOut Key{Variant()};
            const InOut Failed{Variant()};
            Late_.Call(L"PasteData", {&Variant(Path).Get(), H.Folder(), H.Item(), H.Index(), H.Key(),
                                      Key.Argument(), Failed.Argument(), &Variant(Holder).Get()});
            return FlagOf(Failed.Value());
        }
        const EarlyHead H(At);
        Bstr Key;
        return Answered([&](VARIANT_BOOL* Failed) {
            return Early_->PasteData(Bstr(Path).Get(), H.Folder.Get(), H.Item.Get(), H.Index, H.Key.Get(),
                                     Key.Out(), Failed, Holder);
        });
    }
    bool GetObjectInfo(std::vector<std::wstring>& Told) {
        if (!Early_) {
            const InOut Name{Variant()}, Desc{Variant()}, Version{Variant()}, Clsid{Variant()}, Id{Variant()},
                Users{Variant()};
            const bool Bad = FlagOf(
                Late_
                    .Call(L"GetObjectInfo", {&Empty(), Name.Argument(), Desc.Argument(), Version.Argument(),
                                             Clsid.Argument(), Id.Argument(), Users.Argument()})
                    .Get());
            EXPECT_EQ(Version.Value().vt, VT_I2);
            for (const InOut* Value : {&Name, &Desc, &Version, &Clsid, &Id, &Users})
                Told.push_back(TextOf(Value->Value()));
            return Bad;
        }
        Bstr Name, Desc, Clsid, Id, Users;
        SHORT Version = 0;
        const bool Bad = Answered([&](VARIANT_BOOL* Failed) {
            return Early_->GetObjectInfo(nullptr, Name.Out(), Desc.Out(), &Version, Clsid.Out(), Id.Out(),
                                         Users.Out(), Failed);
        });
        Told = {Name.Text(), Desc.Text(), std::to_wstring(Version), Clsid.Text(), Id.Text(), Users.Text()};
        return Bad;
    }
    bool HelpShow() {
        if (!Early_) return FlagOf(Late_.Call(L"HelpShow", {&Empty(), &Empty(), &Empty(), &Empty()}).Get());
        return Answered([&](VARIANT_BOOL* Failed) {
            return Early_->HelpShow(nullptr, nullptr, nullptr, nullptr, Failed);
        });
    }
    bool Quit(bool& Cancel) {
        if (!Early_) {
            const InOut Cancelled{Variant(Cancel)};
            const bool Bad = FlagOf(Late_.Call(L"Quit", {Cancelled.Argument()}).Get());
            Cancel = FlagOf(Cancelled.Value());
            return Bad;
        }
        VARIANT_BOOL Cancelled = Cancel ? kYes : kNo;
        const bool Bad = Answered([&](VARIANT_BOOL* Failed) { return Early_->Quit(&Cancelled, Failed); });
        Cancel = Cancelled != kNo;
        return Bad;
    }
    bool ShowPropTable() {
        if (!Early_) return FlagOf(Late_.Call(L"ShowPropTable", {&Empty(), &Empty(), &Empty()}).Get());
        return Answered(
            [&](VARIANT_BOOL* Failed) { return Early_->ShowPropTable(nullptr, nullptr, nullptr, Failed); });
    }
    void TlbrButtonClick(std::wstring_view Word) {
        if (!Early_)
            Late_.Call(L"TlbrButtonClick", {&Variant(Word).Get(), &Empty(), &Empty(), &Empty()});
        else
            EXPECT_EQ(Early_->TlbrButtonClick(Bstr(Word).Get(), nullptr, nullptr, nullptr), S_OK);
    }
    bool Terminate(Ref<IDispatch>& Back) {
        if (!Early_) {
            const InOut Object{Variant()};
            const bool Bad = FlagOf(Late_.Call(L"Terminate", {&Empty(), Object.Argument()}).Get());
            Back = ObjectOf(Object.Value());
            return Bad;
        }
        return Answered([&](VARIANT_BOOL* Failed) { return Early_->Terminate(nullptr, Back.Out(), Failed); });
    }

  private:
    struct EarlyHead {
        explicit EarlyHead(const Head& At)
            : Folder(std::wstring_view(At.CurrFolder)),
              Item(std::wstring_view(At.CurrItem)),
              Index(At.Index),
              Key(std::wstring_view(At.Key)) {}
        Bstr Folder;
        Bstr Item;
        LONG Index;
        Bstr Key;
    };
    class LateHead {
      public:
        explicit LateHead(const Head& At)
            : Folder_(std::wstring_view(At.CurrFolder)),
              Item_(std::wstring_view(At.CurrItem)),
              Index_(At.Index),
              Key_(std::wstring_view(At.Key)) {}
        const VARIANT* Folder() const { return &Folder_.Get(); }
        const VARIANT* Item() const { return &Item_.Get(); }
        const VARIANT* Index() const { return &Index_.Get(); }
        const VARIANT* Key() const { return &Key_.Get(); }

      private:
        Variant Folder_, Item_, Index_, Key_;
    };
    static const VARIANT& Empty() {
        static const Variant The{std::wstring_view(L"")};
        return The.Get();
    }
    template <class Call>
    static bool Answered(Call&& Run) {
        VARIANT_BOOL Failed = 99;
        const HRESULT Result = Run(&Failed);
        EXPECT_EQ(Result, S_OK);
        EXPECT_TRUE(Failed == kYes || Failed == kNo) << Failed;
        return Failed != kNo;
    }

    Ref<::TreeDll> Early_;
    ByName Late_;
};

/// A server object with a scripted window and an operator.
class ComponentTest : public ::testing::TestWithParam<Binding> {
  protected:
    void SetUp() override {
        Server = File.Create();
        Tree = Ref<ScriptedTree>(new ScriptedTree(GetParam()));
        Asked = Ref<Operator>(new Operator);
        ASSERT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
        ASSERT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    }
    void TearDown() override { SetErrorInfo(0, nullptr); }

    Ref<Stored> Object(std::wstring_view Word, std::wstring_view Name = L"PROVA") const {
        return Ref<Stored>(new Stored(GetParam(), Word, Name));
    }
    /// ShowData; True on failure.
    bool Show(const Ref<Stored>& Edited, std::function<bool(ScriptedTree&)> Script,
              Ref<IDispatch>* Target = nullptr) {
        Tree->Script = std::move(Script);
        Bstr Word;
        Edited->get_Clsid(Word.Out());
        Ref<::iKvEditor> Editor = As<::iKvEditor>(Server.Get());
        IDispatch* Back = Target ? Target->Detach() : nullptr;
        VARIANT_BOOL Cancel = kNo;
        VARIANT_BOOL Failed = kNo;
        EXPECT_EQ(Editor->ShowData(Asked.Get(), Edited.Get(), Word.Get(), &Back, kYes, &Cancel, &Failed),
                  S_OK);
        Tree->Script = nullptr;
        if (Target)
            *Target->Out() = Back;
        else if (Back)
            Back->Release();
        return Failed != kNo;
    }
    std::wstring Exported(const Ref<Stored>& From) {
        Bstr Word, Buffer;
        From->get_Clsid(Word.Out());
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Server->Export(From.Get(), Word.Get(), Buffer.Out(), nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        return Buffer.Text();
    }
    Caller On() const { return Caller(GetParam(), Server); }

    // The objects go before the file is left.
    Component File;
    Ref<::_vdSvr> Server;
    Ref<ScriptedTree> Tree;
    Ref<Operator> Asked;
};

TEST_P(ComponentTest, ALifeFromCreationToShutDown) {
    Variant Version;
    EXPECT_EQ(Server->CurrVersion(Version.Out()), S_OK);
    EXPECT_EQ(Version.Get().vt, VT_I2);
    EXPECT_EQ(Version.Get().iVal, 256);

    const Ref<Stored> Edited = Object(L"MEMBER", L"BIBLIOTECA");
    Ref<IDispatch> Target;
    Ref<IDispatch> Back;
    Tree->Returned = Ref<IDispatch>(Edited.Get());
    EXPECT_FALSE(Show(
        Edited,
        [&](ScriptedTree& Window) {
            EXPECT_EQ(Window.ClassWord, L"MEMBER");
            EXPECT_TRUE(Window.Flag);
            EXPECT_EQ(Window.Given.Get(), static_cast<IDispatch*>(Asked.Get()));
            Caller Call = On();
            EXPECT_FALSE(Call.LoadData());
            EXPECT_EQ(Window.Model.NodeText(L"ROOT"), L"BIBLIOTECA");
            const std::wstring Leaf = Window.Leaf(L"PARMS");
            const Head At = Call.HeadOf(Window.Model, Leaf);
            std::wstring Text;
            EXPECT_FALSE(Call.DispData(At, Text));
            EXPECT_EQ(Text.find(L"PASSWORD= \"\"\r\n"), 0U);

            EXPECT_TRUE(Call.SaveData(At, L"PIPPO= 1\r\n"));
            EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{
                                         L"20000 diMember.SaveParm: Parametro non riconosciuto: PIPPO=1"});
            EXPECT_FALSE(Call.SaveData(At, L"PASSWORD= \"PERCH\u00C8 \u20AC\"\r\n"));
            EXPECT_EQ(Edited->Replaced, 0) << "nothing leaves the item before Save";
            EXPECT_FALSE(Call.Save());
            EXPECT_EQ(Edited->Replaced, 1);
            EXPECT_EQ(Edited->Saving, std::vector<bool>{true});

            std::vector<std::wstring> Told;
            EXPECT_FALSE(Call.GetObjectInfo(Told));
            EXPECT_EQ(Told, (std::vector<std::wstring>{L"BIBLIOTECA", L"", L"0", L"MEMBER", L"0",
                                                       L"ADMIN;BIBLIO"}));
            bool Cancel = true;
            EXPECT_FALSE(Call.Quit(Cancel));
            EXPECT_FALSE(Cancel);
            EXPECT_FALSE(Call.HelpShow());
            EXPECT_FALSE(Call.ShowPropTable());
            EXPECT_EQ(Asked->Beeps, 1);
            Call.TlbrButtonClick(L"CONSTANTS");
            EXPECT_FALSE(Call.Terminate(Back));
            return false;
        },
        &Target));
    EXPECT_EQ(Back.Get(), static_cast<IDispatch*>(Edited.Get()));
    EXPECT_EQ(Target.Get(), static_cast<IDispatch*>(Edited.Get()));
    EXPECT_EQ(Tree->Buttons,
              (std::vector<std::wstring>{
                  L"COPY CUT PASTE ", L"||3|0", L"FINDTAG|Trova tag libero|0|1000",
                  L"RENUMTAG|Rinumera tags|0|1001", L"MAPTABLE|Campi dalla TABLE|0|1002",
                  L"CONSTANTS|Export VB module|0|1003", L"FINDTAG RENUMTAG MAPTABLE CONSTANTS "}));
    EXPECT_EQ(Tree->Pictures, 4);
    EXPECT_NE(Exported(Edited).find(L"PASSWORD= \"PERCH\u00C8 \u20AC\""), std::wstring::npos);
    EXPECT_EQ(Asked->Pointers, (std::vector<std::int32_t>{11, 0}));

    LONG Number = 0, System = 0;
    Bstr Source, Description, HelpFile, HelpContext;
    EXPECT_EQ(Server->LastError(&Number, Source.Out(), Description.Out(), HelpFile.Out(), HelpContext.Out(),
                                &System),
              S_OK);
    EXPECT_EQ(Number, 0);

    EXPECT_EQ(Server->ShutDown(), S_OK);
    EXPECT_EQ(Tree->Disposed, 1);
    Ref<IDispatch> Gone;
    EXPECT_EQ(Server->get_DesignTree(Gone.Out()), S_OK);
    EXPECT_FALSE(Gone);
    EXPECT_EQ(Server->ShutDown(), S_OK);
    EXPECT_EQ(File.CanUnload(), S_FALSE);
}

TEST_P(ComponentTest, EveryClassIsLoadedShownSavedBackAndStored) {
    for (const std::wstring_view Word : ClassWords()) {
        SCOPED_TRACE(std::string(Word.begin(), Word.end()));
        const Ref<Stored> Edited = Object(Word);
        Tree->Model.SetSyntaxOn(false);
        Asked->Errors.clear();
        EXPECT_FALSE(Show(Edited, [&](ScriptedTree& Window) {
            Caller Call = On();
            EXPECT_FALSE(Call.LoadData());
            std::vector<std::wstring> Leaves;
            Window.Model.ForEach([&](const window::TreeNode& Node) {
                if (IsLeafKey(Node.Key)) Leaves.push_back(Node.Key);
            });
            for (const std::wstring& Leaf : Leaves) {
                if (!Window.Model.HasNode(Leaf)) continue;
                const Head At = Call.HeadOf(Window.Model, Leaf);
                std::wstring Text;
                EXPECT_FALSE(Call.DispData(At, Text));
                EXPECT_FALSE(Call.SaveData(At, Text)) << std::string(Text.begin(), Text.end());
            }
            EXPECT_FALSE(Call.Save());
            Ref<IDispatch> Back;
            return Call.Terminate(Back);
        }));
        EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{});
        EXPECT_EQ(Edited->Replaced, 1);
        // A class of lists alone has nothing to tell where they are empty.
        EXPECT_EQ(Exported(Edited).empty(), Word == L"STRINGTABLE");
    }
}

TEST_P(ComponentTest, ElementsAreAddedMovedCopiedPastedAndDeleted) {
    struct {
        std::wstring_view Word, Folder;
    } const kLists[] = {{L"STRINGTABLE", L"FIELDS"}, {L"TABLE", L"FIELDS"}};
    for (const auto& [Word, Folder] : kLists) {
        SCOPED_TRACE(std::string(Word.begin(), Word.end()));
        const Ref<Stored> Edited = Object(Word);
        Asked->Errors.clear();
        EXPECT_FALSE(Show(Edited, [&, Folder = Folder, Word = Word](ScriptedTree& Window) {
            Caller Call = On();
            EXPECT_FALSE(Call.LoadData());
            std::vector<std::wstring> Keys(3);
            for (std::wstring& Key : Keys) {
                EXPECT_FALSE(Call.EditData(Call.HeadOf(Window.Model, Folder), Key));
                EXPECT_TRUE(Window.Model.HasNode(Key));
            }
            EXPECT_TRUE(Window.Model.Modified());
            EXPECT_EQ(Window.Model.NodeId(Keys[2]), 3);

            Window.Model.SelectNode(Keys[2]);
            Head At = Call.HeadOf(Window.Model, Keys[2]);
            EXPECT_FALSE(Call.MoveData(At, 1));
            EXPECT_FALSE(Window.Model.HasNode(Keys[2]));
            EXPECT_EQ(Window.Model.NodeId(At.CurrItem), 2);
            // The list is lent for the call alone.
            Ref<::ParmList> Kept = As<::ParmList>(Window.Lent.Get());
            LONG Count = 0;
            EXPECT_EQ(Kept->get_Count(&Count), E_UNEXPECTED);
            EXPECT_EQ(Kept->Move(1, 2), E_UNEXPECTED);
            Window.Lent.Clear();

            Ref<IDispatch> Clip;
            EXPECT_EQ(Server->NewClipItem(Clip.Out()), S_OK);
            const Ref<::ClipItem> Holder = As<::ClipItem>(Clip.Get());
            const Ref<Stored> Copy = Object(Word, L"COPIA");
            EXPECT_EQ(Holder->putref_DataObj(Copy.Get()), S_OK);
            EXPECT_EQ(Holder->put_ClassWord(Bstr(Word).Get()), S_OK);
            Asked->Errors.clear();
            Window.Model.SetSyntaxOn(false);
            EXPECT_FALSE(Call.CopyData(At, false, Clip.Get()));
            EXPECT_EQ(Copy->Replaced, 1);
            EXPECT_FALSE(Call.PasteData(Word, At, Clip.Get()));
            EXPECT_TRUE(Call.PasteData(L"PIPPO", At, Clip.Get()));
            EXPECT_EQ(Asked->Errors,
                      std::vector<std::wstring>{
                          L"20000 vdSvr.PasteData: I dati memorizzati sono di una classe diversa da PIPPO"});

            Window.Model.SelectNode(At.CurrItem);
            EXPECT_FALSE(Call.DeleteData(Call.HeadOf(Window.Model, At.CurrItem), false));
            EXPECT_EQ(Window.Model.Find(Folder)->Children.Count(), 2);
            EXPECT_FALSE(Call.DeleteData(Call.HeadOf(Window.Model, Folder), true));
            EXPECT_EQ(Window.Model.Find(Folder)->Children.Count(), 0);
            return false;
        }));
    }
}

TEST_P(ComponentTest, ImportReadsWhatWasExported) {
    const Ref<Stored> Edited = Object(L"IMPORTPROC");
    const std::wstring Text = Exported(Edited);
    EXPECT_FALSE(Text.empty());
    Bstr Buffer{std::wstring_view(Text)};
    VARIANT_BOOL Failed = kYes;
    EXPECT_EQ(Server->Import(Edited.Get(), Bstr(L"IMPORTPROC").Get(), Buffer.Out(), Variant::Absent().Get(),
                             &Failed),
              S_OK);
    EXPECT_EQ(Failed, kNo) << (Asked->Errors.empty()
                                   ? ""
                                   : std::string(Asked->Errors[0].begin(), Asked->Errors[0].end()));
}

TEST_P(ComponentTest, AnUnknownClassWordWaitsForLastError) {
    EXPECT_TRUE(Show(Object(L"PIPPO"), {}));
    EXPECT_TRUE(Asked->Errors.empty());
    LONG Number = 0, System = 0;
    Bstr Source, Description, HelpFile, HelpContext;
    EXPECT_EQ(Server->LastError(&Number, Source.Out(), Description.Out(), HelpFile.Out(), HelpContext.Out(),
                                &System),
              S_OK);
    EXPECT_EQ(Number, 20000);
    EXPECT_EQ(Source.Text(), L"vdSvr.ShowData");
    EXPECT_EQ(Description.Text(), L"Metodo sconosciuto [PIPPO]");
}

// Whatever a host's object does in whatever member, a life ends well: the failure is told, nothing is lost or
// leaked, and the same life runs well when the object is well again.
TEST_P(ComponentTest, AnObjectThatFailsInAnyMemberIsTold) {
    const auto Life = [&](const Ref<Stored>& Edited) {
        const bool Bad = Show(Edited, [&](ScriptedTree& Window) {
            Caller Call = On();
            if (Call.LoadData()) return true;
            std::wstring Key;
            if (Call.EditData(Call.HeadOf(Window.Model, L"FIELDS"), Key)) return true;
            if (Call.EditData(Call.HeadOf(Window.Model, L"FIELDS"), Key)) return true;
            Window.Model.SelectNode(Key);
            Head At = Call.HeadOf(Window.Model, Key);
            if (Call.MoveData(At, 1)) return true;
            std::wstring Text;
            Head Parms = Call.HeadOf(Window.Model, Window.Leaf(L"FIELDPARMS"));
            if (Call.DispData(Parms, Text)) return true;
            if (Call.SaveData(Parms, L"NAME= A\r\n")) return true;
            Window.Model.SetSyntaxOn(false);
            const bool Unsaved = Call.Save();
            Window.Model.SetSyntaxOn(true);
            return Unsaved;
        });
        return Bad;
    };
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    ASSERT_FALSE(Life(Edited));
    std::vector<std::wstring> Members = Tree->Calls;
    Members.insert(Members.end(), Edited->Calls.begin(), Edited->Calls.end());
    std::sort(Members.begin(), Members.end());
    Members.erase(std::unique(Members.begin(), Members.end()), Members.end());
    std::erase(Members, L"Clsid");  // asked by the test alone
    EXPECT_GT(Members.size(), 12U);
    std::vector<std::function<HRESULT()>> Kinds{[] { return E_FAIL; }, [] { return E_OUTOFMEMORY; },
                                                [] { return DISP_E_EXCEPTION; }};
    // Between files built apart an exception travels on 64 bits alone.
    if (sizeof(void*) == 8 && GetParam() == Binding::Early)
        Kinds.emplace_back([]() -> HRESULT { throw std::runtime_error("of the host"); });
    for (const std::wstring& Member : Members)
        for (std::size_t Kind = 0; Kind < Kinds.size(); ++Kind) {
            SCOPED_TRACE(std::string(Member.begin(), Member.end()) + " " + std::to_string(Kind));
            const Ref<Stored> Faulty = Object(L"STRINGTABLE");
            const Fault Fails = [&](std::wstring_view Called) {
                return Called == Member ? Kinds[Kind]() : S_OK;
            };
            Tree->OnCall = Fails;
            Faulty->OnCall = Fails;
            Asked->Errors.clear();
            EXPECT_TRUE(Life(Faulty));
            LONG Number = 0, System = 0;
            Bstr Source, Description, HelpFile, HelpContext;
            EXPECT_EQ(Server->LastError(&Number, Source.Out(), Description.Out(), HelpFile.Out(),
                                        HelpContext.Out(), &System),
                      S_OK);
            EXPECT_TRUE(Number != 0 || !Asked->Errors.empty()) << "nothing was told";
            Tree->OnCall = nullptr;
            Tree->Model.SetSyntaxOn(true);
            EXPECT_FALSE(Life(Object(L"STRINGTABLE"))) << "the next call works";
        }
}

TEST_P(ComponentTest, CallsAtTheWrongTimeAreRefusedAndChangeNothing) {
    // Nothing is open: each operation fails, and tells.
    Caller Call = On();
    std::wstring Text, Key;
    Head At{.Key = L"PARMS"};
    EXPECT_TRUE(Call.LoadData());
    EXPECT_TRUE(Call.DispData(At, Text));
    EXPECT_TRUE(Call.SaveData(At, L""));
    EXPECT_TRUE(Call.EditData(At, Key));
    EXPECT_TRUE(Call.MoveData(At, 1));
    EXPECT_TRUE(Call.DeleteData(At, true));
    EXPECT_TRUE(Call.Save());
    EXPECT_EQ(Asked->Errors.size(), 7U);
    EXPECT_EQ(Asked->Errors[0], L"91 vdSvr.LoadData: Oggetto non impostato");
    Ref<IDispatch> Back;
    EXPECT_FALSE(Call.Terminate(Back));
    EXPECT_FALSE(Back);

    const Ref<Stored> Edited = Object(L"MEMBER");
    EXPECT_FALSE(Show(Edited, [&](ScriptedTree& Window) {
        // While the item works.
        int Refused = 0;
        Tree->OnCall = [&](std::wstring_view Member) {
            if (Member != L"AddNode") return S_OK;
            VARIANT_BOOL Bad = kNo;
            EXPECT_EQ(As<::TreeDll>(Server.Get())->Terminate(nullptr, Back.Out(), &Bad), E_UNEXPECTED);
            EXPECT_EQ(Bad, kYes);
            EXPECT_EQ(As<::TreeDll>(Server.Get())->Save(nullptr, &Bad), E_UNEXPECTED);
            EXPECT_EQ(As<::TreeDll>(Server.Get())->LoadData(nullptr, &Bad), E_UNEXPECTED);
            EXPECT_EQ(Server->ShutDown(), E_UNEXPECTED);
            ++Refused;
            return S_OK;
        };
        EXPECT_FALSE(Call.LoadData());
        EXPECT_EQ(Refused, 3);
        Tree->OnCall = nullptr;
        EXPECT_FALSE(Call.SaveData(Call.HeadOf(Window.Model, Window.Leaf(L"PARMS")), L"PASSWORD= \"A\"\r\n"));
        // While the window is open.
        VARIANT_BOOL Failed = kNo, Cancel = kNo;
        Bstr Buffer;
        IDispatch* Target = nullptr;
        EXPECT_EQ(Server->Export(Edited.Get(), Bstr(L"MEMBER").Get(), Buffer.Out(), nullptr, &Failed),
                  E_UNEXPECTED);
        EXPECT_EQ(Failed, kYes);
        EXPECT_EQ(Words(), L"Una finestra \u00E8 aperta su questo server");
        EXPECT_EQ(Server->Import(Edited.Get(), Bstr(L"MEMBER").Get(), Buffer.Out(), Variant::Absent().Get(),
                                 &Failed),
                  E_UNEXPECTED);
        EXPECT_EQ(
            Server->ShowData(nullptr, Edited.Get(), Bstr(L"MEMBER").Get(), &Target, kNo, &Cancel, &Failed),
            E_UNEXPECTED);
        EXPECT_EQ(Server->ShutDown(), E_UNEXPECTED);
        EXPECT_EQ(Server->putref_DesignTree(nullptr), E_UNEXPECTED);
        // Another server object is free.
        const Ref<::_vdSvr> Second = File.Create();
        EXPECT_EQ(Second->Export(Edited.Get(), Bstr(L"MEMBER").Get(), Buffer.Out(), nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_FALSE(Call.Save());
        return false;
    }));
    EXPECT_NE(Exported(Edited).find(L"PASSWORD= \"A\""), std::wstring::npos) << "nothing was lost";

    EXPECT_EQ(Server->ShutDown(), S_OK);
    EXPECT_TRUE(Show(Edited, {})) << "a server that is shut down has no tree";
}

// Strings that a call hands over, or takes and replaces, go the way that they must: none is left when all
// have gone.
TEST_P(ComponentTest, NoStringIsLeaked) {
    const auto Life = [&] {
        for (const bool Fails : {false, true}) {
            const Ref<Stored> Edited = Object(L"STRINGTABLE");
            Tree->OnCall = [&](std::wstring_view Member) {
                return Fails && Member == L"AddNode" ? E_FAIL : S_OK;
            };
            Show(Edited, [&](ScriptedTree& Window) {
                Caller Call = On();
                std::wstring Key, Text;
                std::vector<std::wstring> Told;
                static_cast<void>(Call.LoadData());
                static_cast<void>(Call.GetObjectInfo(Told));
                if (!Window.Model.HasNode(L"FIELDS")) return true;
                for (int I = 0; I < 2; ++I)
                    static_cast<void>(Call.EditData(Call.HeadOf(Window.Model, L"FIELDS"), Key));
                Window.Model.SelectNode(Key);
                Head At = Call.HeadOf(Window.Model, Key);
                static_cast<void>(Call.MoveData(At, 1));
                Window.Lent.Clear();
                const Head Parms = Call.HeadOf(Window.Model, Window.Leaf(L"FIELDPARMS"));
                static_cast<void>(Call.DispData(Parms, Text));
                static_cast<void>(Call.SaveData(Parms, L"NAME= A\r\nPIPPO\r\n"));
                static_cast<void>(Call.SaveData(Parms, L"NAME= A\r\n"));
                static_cast<void>(Call.Save());
                Ref<IDispatch> Back;
                return Call.Terminate(Back);
            });
            LONG Number = 0, System = 0;
            Bstr Source, Description, HelpFile, HelpContext;
            Server->LastError(&Number, Source.Out(), Description.Out(), HelpFile.Out(), HelpContext.Out(),
                              &System);
            Server->DispData(nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr);
            SetErrorInfo(0, nullptr);
            Tree->OnCall = nullptr;
            Tree->Given.Clear();
            if (!Fails) {
                EXPECT_FALSE(Edited->Replaced == 0);
                Exported(Edited);
            }
        }
    };
    Life();
    MemorySpy Spy;
    Life();
    const long Once = Spy.Held();
    for (int I = 0; I < 5; ++I) Life();
    EXPECT_EQ(Spy.Held(), Once);
    Bstr Counted(std::wstring_view(L"x"));
    EXPECT_EQ(Spy.Held(), Once + 1) << "the spy sees strings";
}

TEST_P(ComponentTest, TheLastReferenceMayGoInsideACall) {
    const Ref<Stored> Edited = Object(L"MEMBER");
    ::_vdSvr* const Bare = Server.Get();
    EXPECT_FALSE(Show(Edited, [&](ScriptedTree&) {
        // Only the calls that run hold the object.
        Server.Clear();
        Ref<IDispatch> Back;
        VARIANT_BOOL Failed = kYes;
        EXPECT_EQ(Bare->LoadData(nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        return false;
    }));
}

TEST_P(ComponentTest, NullPointersAndWrongTypesAreRefused) {
    const Ref<Stored> Edited = Object(L"MEMBER");
    const BSTR None = nullptr;
    VARIANT_BOOL Flag = kNo;
    Bstr Text;
    EXPECT_EQ(Server->get_DesignTree(nullptr), E_POINTER);
    EXPECT_EQ(Server->CurrVersion(nullptr), E_POINTER);
    EXPECT_EQ(Server->LastError(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Server->Export(nullptr, None, Text.Out(), nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Server->Export(Edited.Get(), None, nullptr, nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Server->Export(Edited.Get(), None, Text.Out(), nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Server->ShowData(nullptr, nullptr, None, nullptr, kNo, nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Server->NewNode(None, nullptr), E_POINTER);
    EXPECT_EQ(Server->NewObject(None, None, nullptr), E_POINTER);
    EXPECT_EQ(Server->LoadData(None, nullptr), E_POINTER);
    EXPECT_EQ(Server->DispData(None, None, None, 0, None, nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Server->CopyData(None, None, None, 0, None, kNo, &Flag, nullptr), E_POINTER);
    EXPECT_EQ(Server->PasteData(None, None, None, 0, None, Text.Out(), &Flag, nullptr), E_POINTER);
    EXPECT_EQ(Server->GetObjectInfo(None, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &Flag),
              E_POINTER);
    EXPECT_EQ(Server->MoveData(None, nullptr, nullptr, nullptr, nullptr, 1, &Flag), E_POINTER);
    EXPECT_EQ(Server->Terminate(None, nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Server->Quit(nullptr, &Flag), E_POINTER);
    EXPECT_EQ(Words(), L"Manca un argomento");
    EXPECT_EQ(static_cast<IUnknown*>(Server.Get())->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
    Ref<IUnknown> Other;
    EXPECT_EQ(Server->QueryInterface(__uuidof(IClassFactory), Other.OutVoid()), E_NOINTERFACE);

    // By name: a wrong type, too few and too many arguments, unknown members.
    DISPID Id = DISPID_UNKNOWN;
    wchar_t Member[] = L"LoadData";
    LPOLESTR Name = Member;
    EXPECT_EQ(Server->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Id), S_OK);
    DISPPARAMS Nothing{};
    Variant Result;
    EXPECT_EQ(Server->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &Nothing, Result.Out(),
                             nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Server->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, nullptr, Result.Out(),
                             nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(Server->Invoke(9999, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &Nothing, Result.Out(),
                             nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    wchar_t Unknown[] = L"Pippo";
    Name = Unknown;
    EXPECT_EQ(Server->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Id), DISP_E_UNKNOWNNAME);
    // An object that is put as a value is put by reference; no object, in whatever form, is one too.
    wchar_t Property[] = L"RegistryServer";
    Name = Property;
    EXPECT_EQ(Server->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Id), S_OK);
    DISPID Value = DISPID_PROPERTYPUT;
    Variant Held(static_cast<IDispatch*>(Edited.Get()));
    DISPPARAMS Put{&Held.Get(), &Value, 1, 1};
    EXPECT_EQ(Server->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &Put, nullptr, nullptr,
                             nullptr),
              S_OK);
    Ref<IDispatch> Registry;
    EXPECT_EQ(Server->get_RegistryServer(Registry.Out()), S_OK);
    EXPECT_EQ(Registry.Get(), static_cast<IDispatch*>(Edited.Get()));
    for (const VARTYPE Empty : {VT_EMPTY, VT_NULL}) {
        VARIANT NoObject;
        VariantInit(&NoObject);
        NoObject.vt = Empty;
        Put.rgvarg = &NoObject;
        EXPECT_EQ(Server->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF, &Put, nullptr,
                                 nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(Server->get_RegistryServer(Registry.Out()), S_OK);
        EXPECT_FALSE(Registry);
    }
    const ByName Late{Ref<IDispatch>(Server.Get())};
    EXPECT_THROW(
        Late.Call(L"Export", {&Variant(std::wstring_view(L"x")).Get(), &Variant(7).Get(), &Variant(7).Get()}),
        std::exception);
    // An object that has none of the members.
    EXPECT_EQ(Server->Export(Asked.Get(), Bstr(L"MEMBER").Get(), Text.Out(), nullptr, &Flag), S_OK);
    EXPECT_EQ(Flag, kYes);
    EXPECT_EQ(Asked->Errors.size(), 1U);
    // And the next call works.
    EXPECT_FALSE(Exported(Edited).empty());
}

TEST_P(ComponentTest, SenselessArgumentsAreTakenAsTheyAre) {
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    EXPECT_FALSE(Show(Edited, [&](ScriptedTree& Window) {
        Caller Call = On();
        EXPECT_FALSE(Call.LoadData());
        for (const std::int32_t Index : {-1, 0, 7, 0x7FFFFFFF, static_cast<std::int32_t>(0x80000000)})
            for (const wchar_t* Key : {L"", L"PIPPO", L"FIELDS", L"FIELDPARMS"}) {
                Head At{.CurrFolder = L"nessuna", .CurrItem = L"nessuno 1", .Index = Index, .Key = Key};
                std::wstring Text, New;
                static_cast<void>(Call.DispData(At, Text));
                static_cast<void>(Call.SaveData(At, std::wstring(L"NAME= \0A\r\n", 10)));
                static_cast<void>(Call.MoveData(At, Index));
                static_cast<void>(Call.DeleteData(At, false));
            }
        EXPECT_FALSE(Call.LoadData());
        return !Window.Model.HasNode(L"FIELDS");
    }));
}

INSTANTIATE_TEST_SUITE_P(Bound, ComponentTest, ::testing::Values(Binding::Early, Binding::ByName),
                         [](const auto& Info) { return Info.param == Binding::Early ? "Early" : "ByName"; });

// Nodes.

TEST(ComponentNodes, KeepValuesChildrenAndTextWithNulls) {
    const Component File;
    const Ref<::_vdSvr> Server = File.Create();
    Ref<IDispatch> Made;
    ASSERT_EQ(Server->NewNode(Bstr(L"RADICE").Get(), Made.Out()), S_OK);
    const Ref<::RegNode> Root = As<::RegNode>(Made.Get());
    const std::wstring Odd(L"a\0b", 3);
    EXPECT_EQ(Root->put_Desc(Bstr(Odd).Get()), S_OK);
    Bstr Back;
    EXPECT_EQ(Root->get_Desc(Back.Out()), S_OK);
    EXPECT_EQ(Back.Text(), Odd);
    EXPECT_EQ(Root->put_Value(Bstr(L"N").Get(), Variant(7).Get()), S_OK);
    EXPECT_EQ(Root->put_Value(Bstr(L"B").Get(), Variant(true).Get()), S_OK);
    EXPECT_EQ(Root->put_Value(Bstr(L"S").Get(), Variant(std::wstring_view(L"x")).Get()), S_OK);
    LONG Count = 0;
    EXPECT_EQ(Root->get_ValueCount(&Count), S_OK);
    EXPECT_EQ(Count, 3);
    Variant Value;
    EXPECT_EQ(Root->get_Value(Bstr(L"B").Get(), Value.Out()), S_OK);
    EXPECT_EQ(Value.Get().vt, VT_BOOL);
    EXPECT_EQ(Root->put_Value(Bstr(L"B").Get(), Variant().Get()), S_OK);
    EXPECT_EQ(Root->get_Value(Bstr(L"B").Get(), Value.Out()), S_OK);
    EXPECT_EQ(Value.Get().vt, VT_EMPTY);
    EXPECT_EQ(Root->put_Value(Bstr(L"O").Get(), Variant(Made.Get()).Get()), DISP_E_TYPEMISMATCH);
    Ref<IDispatch> Child;
    EXPECT_EQ(Root->get_Child(1, Child.Out()), DISP_E_BADINDEX);
    EXPECT_EQ(Root->AddChild(Bstr(L"FIGLIO").Get(), Child.Out()), S_OK);
    EXPECT_EQ(Root->get_ChildCount(&Count), S_OK);
    EXPECT_EQ(Count, 1);
    EXPECT_EQ(Root->RemoveChild(0), DISP_E_BADINDEX);
    EXPECT_EQ(Root->RemoveChild(1), S_OK);
    // Levels without end.
    HRESULT Added = S_OK;
    for (int Depth = 0; Depth < 100 && SUCCEEDED(Added); ++Depth) {
        Ref<IDispatch> Next;
        Added = As<::RegNode>(Child.Get())->AddChild(Bstr(L"X").Get(), Next.Out());
        if (SUCCEEDED(Added)) Child = Next;
    }
    EXPECT_TRUE(FAILED(Added));
    EXPECT_EQ(Words(), L"L'oggetto ha troppi livelli");
}

TEST(ComponentTree, TheOwnTreeIsReadAndGivenBack) {
    const Component File;
    const Ref<::_vdSvr> Server = File.Create();
    Ref<IDispatch> Held;
    ASSERT_EQ(Server->get_DesignTree(Held.Out()), S_OK);
    const Ref<::DesignTree> Tree = As<::DesignTree>(Held.Get());
    ASSERT_TRUE(Tree);
    Ref<IDispatch> Node;
    Bstr Kind;
    const VARIANT Absent = Variant::Absent().Detach();
    const Variant Key(std::wstring_view(L"ROOT")), Text(std::wstring_view(L"Radice"));
    EXPECT_EQ(Tree->AddNode(Absent, Absent, Key.Get(), Text.Get(), Absent, Absent, Kind.Out(), Node.Out()),
              S_OK);
    EXPECT_EQ(TextOf(ByName(Node).Get(L"Text").Get()), L"Radice");
    Ref<IDispatch> Again;
    EXPECT_TRUE(FAILED(
        Tree->AddNode(Absent, Absent, Key.Get(), Text.Get(), Absent, Absent, Kind.Out(), Again.Out())));
    EXPECT_FALSE(Again);
    LONG Position = 0;
    EXPECT_EQ(Tree->NodeId(Bstr(L"ROOT").Get(), &Position), S_OK);
    EXPECT_EQ(Position, 1);
    EXPECT_TRUE(FAILED(Tree->NodeId(Bstr(L"PIPPO").Get(), &Position)));
    EXPECT_EQ(Words(), L"Oggetto non impostato");
    Ref<IDispatch> Control;
    EXPECT_EQ(Tree->get_TreeControl(Control.Out()), S_OK);
    const ByName Nodes(ObjectOf(ByName(Control).Get(L"Nodes").Get()));
    const ByName Item(ObjectOf(Nodes.Get(L"Item", {&Key.Get()}).Get()));
    Item.Put(L"Text", {&Variant(std::wstring_view(L"Nuova")).Get()});
    EXPECT_EQ(TextOf(ByName(Node).Get(L"Text").Get()), L"Nuova");
    Nodes.Call(L"Clear");
    VARIANT_BOOL There = kYes;
    EXPECT_EQ(Tree->HasNode(Bstr(L"ROOT").Get(), &There), S_OK);
    EXPECT_EQ(There, kNo);
    VARIANT_BOOL Failed = kNo;
    IDispatch* Target = nullptr;
    EXPECT_EQ(Tree->ShowTree(nullptr, nullptr, &Target, kNo, &Failed), E_UNEXPECTED);
    EXPECT_EQ(Tree->Dispose(), E_UNEXPECTED);
    // Set again it is the same tree, and with it the component's own window.
    EXPECT_EQ(Server->putref_DesignTree(Held.Get()), S_OK);
    EXPECT_EQ(Server->ShutDown(), S_OK);
}

/// Closes the window that the calling thread opens, as the operator does; whether one came.
class Closer {
  public:
    Closer() : Of_(GetCurrentThreadId()), Thread_(CreateThread(nullptr, 0, Run, this, 0, nullptr)) {}
    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;
    ~Closer() { Closed(); }
    bool Closed() {
        if (Thread_) {
            WaitForSingleObject(Thread_, INFINITE);
            CloseHandle(Thread_);
            Thread_ = nullptr;
        }
        return Closed_;
    }

  private:
    static BOOL CALLBACK Close(HWND Window, LPARAM To) {
        if (!IsWindowVisible(Window) || !GetMenu(Window)) return TRUE;
        PostMessageW(Window, WM_CLOSE, 0, 0);
        reinterpret_cast<Closer*>(To)->Closed_ = true;
        return FALSE;
    }
    static DWORD WINAPI Run(void* Given) {
        auto& Self = *static_cast<Closer*>(Given);
        for (int Tries = 0; Tries < 500 && !Self.Closed_; ++Tries) {
            Sleep(20);
            EnumThreadWindows(Self.Of_, Close, reinterpret_cast<LPARAM>(&Self));
        }
        return 0;
    }

    DWORD Of_;
    bool Closed_ = false;
    HANDLE Thread_;
};

TEST(ComponentTree, WithoutATreeOfTheHostTheOwnWindowOpens) {
    const Component File;
    const Ref<::_vdSvr> Server = File.Create();
    const Ref<Operator> Asked(new Operator);
    ASSERT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    for (int Showing = 0; Showing < 2; ++Showing) {
        const Ref<Stored> Edited(new Stored(Binding::Early, L"MEMBER", L"PROVA"));
        Closer Operates;
        IDispatch* Target = nullptr;
        VARIANT_BOOL Cancel = kNo, Failed = kYes;
        EXPECT_EQ(
            Server->ShowData(nullptr, Edited.Get(), Bstr(L"MEMBER").Get(), &Target, kNo, &Cancel, &Failed),
            S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_TRUE(Operates.Closed());
        EXPECT_EQ(Target, static_cast<IDispatch*>(Edited.Get()));
        if (Target) Target->Release();
    }
    EXPECT_TRUE(Asked->Errors.empty());
    EXPECT_EQ(Server->ShutDown(), S_OK);
}

TEST(ComponentFactory, RefusesWhatItDoesNotMake) {
    const Component File;
    Ref<IUnknown> Made;
    EXPECT_EQ(File.ClassObject(IID_NULL, __uuidof(IClassFactory), Made.OutVoid()), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(File.ClassObject(__uuidof(::vdSvr), IID_NULL, Made.OutVoid()), E_NOINTERFACE);
    EXPECT_EQ(File.ClassObject(__uuidof(::vdSvr), __uuidof(IClassFactory), nullptr), E_POINTER);
    EXPECT_EQ(File.CanUnload(), S_OK);
    Ref<IClassFactory> Factory;
    ASSERT_EQ(File.ClassObject(__uuidof(::vdSvr), __uuidof(IClassFactory), Factory.OutVoid()), S_OK);
    EXPECT_EQ(File.CanUnload(), S_FALSE);
    const Ref<::_vdSvr> Server = File.Create();
    EXPECT_EQ(Factory->CreateInstance(Server.Get(), __uuidof(IUnknown), Made.OutVoid()),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(Factory->CreateInstance(nullptr, __uuidof(IClassFactory), Made.OutVoid()), E_NOINTERFACE);
    EXPECT_EQ(Factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(Factory->LockServer(FALSE), S_OK);
}

DWORD WINAPI OnAnotherThread(void* Given) {
    Ref<IUnknown> Made;
    return static_cast<DWORD>(
        static_cast<IClassFactory*>(Given)->CreateInstance(nullptr, __uuidof(IUnknown), Made.OutVoid()));
}

TEST(ComponentFactory, OneThreadIsServedAtATime) {
    const Component File;
    Ref<IClassFactory> Factory;
    ASSERT_EQ(File.ClassObject(__uuidof(::vdSvr), __uuidof(IClassFactory), Factory.OutVoid()), S_OK);
    const auto Elsewhere = [&] {
        const HANDLE Thread = CreateThread(nullptr, 0, OnAnotherThread, Factory.Get(), 0, nullptr);
        WaitForSingleObject(Thread, INFINITE);
        DWORD Result = 0;
        GetExitCodeThread(Thread, &Result);
        CloseHandle(Thread);
        return static_cast<HRESULT>(Result);
    };
    {
        const Ref<::_vdSvr> Server = File.Create();
        EXPECT_EQ(Elsewhere(), RPC_E_WRONG_THREAD);
    }
    EXPECT_EQ(Elsewhere(), S_OK);
}

TEST(ComponentFactory, ManyLivesLeaveNothing) {
    for (int Life = 0; Life < 50; ++Life) {
        const Component File;
        const Ref<::_vdSvr> Server = File.Create();
        Variant Version;
        EXPECT_EQ(Server->CurrVersion(Version.Out()), S_OK);
    }
}

}  // namespace
}  // namespace kv::com::host
