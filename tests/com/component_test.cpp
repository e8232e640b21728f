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

// A text that cannot be imported leaves the object as it was, and the item, which the next calls meet; one
// that can be leaves none.
TEST_P(ComponentTest, AFailedImportKeepsTheItemAndTheObject) {
    const Ref<Stored> Edited = Object(L"IMPORTPROC");
    const auto Import = [&](std::wstring Text) {
        Bstr Buffer{std::wstring_view(Text)};
        VARIANT_BOOL Failed = 99;
        EXPECT_EQ(Server->Import(Edited.Get(), Bstr(L"IMPORTPROC").Get(), Buffer.Out(),
                                 Variant::Absent().Get(), &Failed),
                  S_OK);
        EXPECT_TRUE(Failed == kYes || Failed == kNo);
        return Failed == kYes;
    };
    const std::wstring Good = Exported(Edited);
    EXPECT_FALSE(Import(Good));
    EXPECT_EQ(Edited->Replaced, 1);
    const Ref<IDispatch> Content = Edited->Content;
    const std::wstring Before = Exported(Edited);
    Caller Call = On();
    const Head Parms{.CurrFolder = L"PARMS", .CurrItem = L"PARMS 1", .Key = L"PARMS"};
    std::wstring Text;
    const auto NoItem = [&] {
        Asked->Errors.clear();
        EXPECT_TRUE(Call.DispData(Parms, Text));
        EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{L"91 vdSvr.DispData: Oggetto non impostato"});
    };
    NoItem();
    Edited->Saving.clear();
    const std::wstring Broken = Good.substr(0, Good.rfind(L"END IMPORTPROC"));
    const std::wstring Wrong =
        L"BEGIN IMPORTPROC\r\nBEGIN PARMS\r\nPIPPO= 1\r\nEND PARMS\r\nEND IMPORTPROC\r\n";
    for (const std::wstring& Bad :
         {std::wstring(), std::wstring(L"BEGIN TABLE\r\nEND TABLE\r\n"), Broken, Wrong}) {
        SCOPED_TRACE(std::string(Bad.begin(), Bad.end()));
        Asked->Errors.clear();
        EXPECT_TRUE(Import(Bad));
        EXPECT_EQ(Asked->Errors.size(), 1U);
        EXPECT_EQ(Edited->Replaced, 1);
        EXPECT_EQ(Edited->Content.Get(), Content.Get());
        EXPECT_TRUE(Edited->Saving.empty());
        // The item is kept: it shows what it has read so far. What it edits is no object of a window.
        Asked->Errors.clear();
        Text.clear();
        EXPECT_FALSE(Call.DispData(Parms, Text));
        EXPECT_FALSE(Text.empty());
        EXPECT_TRUE(Call.Save());
        EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{L"91 vdSvr.Save: Oggetto non impostato"});
        EXPECT_EQ(Edited->Replaced, 1);
    }
    // A host that does not take what was imported.
    Edited->OnCall = [](std::wstring_view Member) { return Member == L"Replace" ? E_FAIL : S_OK; };
    Asked->Errors.clear();
    EXPECT_TRUE(Import(Good));
    ASSERT_EQ(Asked->Errors.size(), 1U);
    EXPECT_NE(Asked->Errors[0].find(L"Oggetto dell'applicazione, Replace: "), std::wstring::npos);
    EXPECT_EQ(Edited->Content.Get(), Content.Get());
    Edited->OnCall = nullptr;
    // The item that was kept goes with the next one, and holds nothing of the host's.
    EXPECT_EQ(Server->putref_DesignTree(nullptr), S_OK);
    EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
    EXPECT_EQ(Exported(Edited), Before);
    NoItem();
    EXPECT_FALSE(Import(Good));
    EXPECT_EQ(Edited->Replaced, 2);
    NoItem();
}

// Each section asks the tree once, so a tree that fails late makes an export fail in the middle. What stood
// there stays, what was rendered so far comes behind it; the pointer is the usual one again.
TEST_P(ComponentTest, AnExportThatFailsInTheMiddleIsTold) {
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    Tree->Model.SetSyntaxOn(false);
    EXPECT_FALSE(Show(Edited, [&](ScriptedTree& Window) {
        Caller Call = On();
        EXPECT_FALSE(Call.LoadData());
        for (int Nth = 1; Nth <= 3; ++Nth) {
            std::wstring Key;
            EXPECT_FALSE(Call.EditData(Call.HeadOf(Window.Model, L"FIELDS"), Key));
        }
        return Call.Save();
    }));
    const std::wstring Whole = L"prima\r\n" + Exported(Edited);
    int Sections = 0;
    Tree->OnCall = [&](std::wstring_view Member) { return Sections += Member == L"SyntaxOn", S_OK; };
    Exported(Edited);
    ASSERT_GE(Sections, 3);
    std::size_t Longest = 0;
    for (int Fails = 1; Fails <= Sections; ++Fails) {
        SCOPED_TRACE(Fails);
        int Seen = 0;
        Tree->OnCall = [&](std::wstring_view Member) {
            return Member == L"SyntaxOn" && ++Seen == Fails ? E_FAIL : S_OK;
        };
        Asked->Errors.clear();
        Asked->Pointers.clear();
        Bstr Buffer(std::wstring_view(L"prima\r\n"));
        VARIANT_BOOL Failed = kNo;
        EXPECT_EQ(Server->Export(Edited.Get(), Bstr(L"STRINGTABLE").Get(), Buffer.Out(), nullptr, &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kYes);
        EXPECT_EQ(Asked->Errors.size(), 1U);
        EXPECT_EQ(Asked->Pointers, (std::vector<std::int32_t>{11, 0}));
        const std::wstring Made = Buffer.Text();
        EXPECT_EQ(Made, Whole.substr(0, Made.size()));
        EXPECT_GT(Made.size(), Longest) << "it ends later than the one before";
        EXPECT_LT(Made.size(), Whole.size());
        Longest = Made.size();
    }
    Tree->OnCall = nullptr;
    // None of them has kept its item.
    Asked->Errors.clear();
    std::wstring Text;
    EXPECT_TRUE(On().DispData({.Key = L"FIELDPARMS"}, Text));
    EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{L"91 vdSvr.DispData: Oggetto non impostato"});
    EXPECT_EQ(L"prima\r\n" + Exported(Edited), Whole);
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
    EXPECT_EQ(Members,
              (std::vector<std::wstring>{L"AddNode", L"AddToolButton", L"ClearNodes", L"Content", L"HasNode",
                                         L"MarkModified", L"MoveListItem", L"Name", L"NodeAt", L"NodeId",
                                         L"NodeParent", L"NodeText", L"Replace", L"Saving", L"SelectNode",
                                         L"SetTools", L"ShowTree", L"SyntaxOn", L"UserList"}));
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

// Each null pointer alone, beside good arguments: those of the operations; the others are HostTest's.
TEST_P(ComponentTest, EachNullPointerIsRefused) {
    const Ref<Stored> Edited = Object(L"MEMBER");
    IDispatch* const Given = Edited.Get();
    const Ref<IDispatch> Clip = [&] {
        Ref<IDispatch> Made;
        EXPECT_EQ(Server->NewClipItem(Made.Out()), S_OK);
        return Made;
    }();
    const Bstr Word(L"MEMBER"), None;
    const BSTR N = None.Get();
    const VARIANT Absent = Variant::Absent().Detach();
    const Ref<::TreeDll> Tools = As<::TreeDll>(Server.Get());
    const Ref<::iKvEditor> Editor = As<::iKvEditor>(Server.Get());
    VARIANT_BOOL Cancel = kNo;
    Bstr A, B, C;
    LONG Index = 0;
    SHORT Version = 0;
    Bstr D, E;
    Ref<IDispatch> O;
    using Place = VARIANT_BOOL*;
    // The argument is where the call tells whether it has failed.
    const struct {
        const char* What;
        std::function<HRESULT(Place)> Call;
        bool OfResult;  // that place itself is what is null
    } kRows[] = {
        {"Export, object", [&](Place F) { return Editor->Export(nullptr, Word.Get(), A.Out(), nullptr, F); },
         false},
        {"Export, text", [&](Place F) { return Editor->Export(Given, Word.Get(), nullptr, nullptr, F); },
         false},
        {"Export, result",
         [&](Place) { return Editor->Export(Given, Word.Get(), A.Out(), nullptr, nullptr); }, true},
        {"Import, object", [&](Place F) { return Editor->Import(nullptr, Word.Get(), A.Out(), Absent, F); },
         false},
        {"Import, text", [&](Place F) { return Editor->Import(Given, Word.Get(), nullptr, Absent, F); },
         false},
        {"Import, result", [&](Place) { return Editor->Import(Given, Word.Get(), A.Out(), Absent, nullptr); },
         true},
        {"CopyData, holder", [&](Place F) { return Tools->CopyData(N, N, N, 0, N, kNo, F, nullptr); }, false},
        {"CopyData, result", [&](Place) { return Tools->CopyData(N, N, N, 0, N, kNo, nullptr, Clip.Get()); },
         true},
        {"DeleteData, result", [&](Place) { return Tools->DeleteData(N, N, N, 0, N, kNo, nullptr); }, true},
        {"DispData, text", [&](Place F) { return Tools->DispData(N, N, N, 0, N, nullptr, F); }, false},
        {"DispData, result", [&](Place) { return Tools->DispData(N, N, N, 0, N, A.Out(), nullptr); }, true},
        {"EditData, key", [&](Place F) { return Tools->EditData(N, N, N, 0, N, nullptr, F); }, false},
        {"EditData, result", [&](Place) { return Tools->EditData(N, N, N, 0, N, A.Out(), nullptr); }, true},
        {"GetObjectInfo, result",
         [&](Place) {
             return Tools->GetObjectInfo(N, A.Out(), B.Out(), &Version, C.Out(), D.Out(), E.Out(), nullptr);
         },
         true},
        {"HelpShow, result", [&](Place) { return Tools->HelpShow(N, N, N, N, nullptr); }, true},
        {"LoadData, result", [&](Place) { return Tools->LoadData(N, nullptr); }, true},
        {"MoveData, result",
         [&](Place) { return Tools->MoveData(N, A.Out(), B.Out(), &Index, C.Out(), 1, nullptr); }, true},
        {"PasteData, key", [&](Place F) { return Tools->PasteData(N, N, N, 0, N, nullptr, F, Clip.Get()); },
         false},
        {"PasteData, holder", [&](Place F) { return Tools->PasteData(N, N, N, 0, N, A.Out(), F, nullptr); },
         false},
        {"PasteData, result",
         [&](Place) { return Tools->PasteData(N, N, N, 0, N, A.Out(), nullptr, Clip.Get()); }, true},
        {"Terminate, object", [&](Place F) { return Tools->Terminate(N, nullptr, F); }, false},
        {"Terminate, result", [&](Place) { return Tools->Terminate(N, O.Out(), nullptr); }, true},
        {"Quit, cancel", [&](Place F) { return Tools->Quit(nullptr, F); }, false},
        {"Quit, result", [&](Place) { return Tools->Quit(&Cancel, nullptr); }, true},
        {"Save, result", [&](Place) { return Tools->Save(N, nullptr); }, true},
        {"SaveData, key", [&](Place F) { return Tools->SaveData(N, N, N, 0, N, nullptr, A.Out(), F); },
         false},
        {"SaveData, text", [&](Place F) { return Tools->SaveData(N, N, N, 0, N, A.Out(), nullptr, F); },
         false},
        {"SaveData, result", [&](Place) { return Tools->SaveData(N, N, N, 0, N, A.Out(), B.Out(), nullptr); },
         true},
        {"ShowPropTable, result", [&](Place) { return Tools->ShowPropTable(N, N, N, nullptr); }, true},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.What);
        VARIANT_BOOL Failed = kNo;
        EXPECT_EQ(Row.Call(&Failed), E_POINTER);
        const std::wstring Told = Words();
        EXPECT_TRUE(Told == L"Manca un argomento" || Told == L"Manca l'oggetto")
            << std::string(Told.begin(), Told.end());
        if (!Row.OfResult) {
            EXPECT_EQ(Failed, kYes);
        }
    }
    EXPECT_TRUE(Asked->Errors.empty()) << "a call that is refused is no failure of the operation";
    EXPECT_EQ(Edited->Calls, std::vector<std::wstring>{}) << "nothing was read";
    EXPECT_EQ(static_cast<IUnknown*>(Server.Get())->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
    Ref<IUnknown> Other;
    EXPECT_EQ(Server->QueryInterface(__uuidof(IClassFactory), Other.OutVoid()), E_NOINTERFACE);
    EXPECT_FALSE(Exported(Edited).empty()) << "the next call works";
}

TEST_P(ComponentTest, WrongTypesAndUnknownMembersAreRefused) {
    const Ref<Stored> Edited = Object(L"MEMBER");
    VARIANT_BOOL Flag = kNo;
    Bstr Text;
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
    // A wrong type, in each place of Export and one by reference: told with its place, and nothing is done.
    wchar_t Method[] = L"Export";
    Name = Method;
    EXPECT_EQ(Server->GetIDsOfNames(IID_NULL, &Name, 1, LOCALE_USER_DEFAULT, &Id), S_OK);
    Bstr Buffer;
    const Variant Number(7), Letters(std::wstring_view(L"x")), Word(std::wstring_view(L"MEMBER"));
    VARIANT Into{};
    Into.vt = VT_BSTR | VT_BYREF;
    Into.pbstrVal = Buffer.Out();
    VARIANT Long{};
    LONG Seven = 7;
    Long.vt = VT_I4 | VT_BYREF;
    Long.plVal = &Seven;
    VARIANT List{};
    SAFEARRAY* const Array = SafeArrayCreateVector(VT_I4, 0, 1);
    List.vt = VT_ARRAY | VT_I4;
    List.parray = Array;
    const struct {
        VARIANT Given[3];  // in reverse order
        UINT Wrong;
        bool BySystem;  // which under Wine does not tell the place
    } kWrong[] = {
        {{Into, Word.Get(), Letters.Get()}, 2, true}, {{Into, Word.Get(), Number.Get()}, 2, true},
        {{Into, List, Held.Get()}, 1, true},          {{Long, Word.Get(), Held.Get()}, 0, true},
        {{List, Word.Get(), Held.Get()}, 0, false},
    };
    Edited->Calls.clear();
    for (const auto& Row : kWrong) {
        SCOPED_TRACE(&Row - kWrong);
        VARIANT Given[3] = {Row.Given[0], Row.Given[1], Row.Given[2]};
        DISPPARAMS Passed{Given, nullptr, 3, 0};
        UINT Wrong = 99;
        EXPECT_EQ(Server->Invoke(Id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &Passed, Result.Out(),
                                 nullptr, &Wrong),
                  DISP_E_TYPEMISMATCH);
        EXPECT_TRUE(Wrong == Row.Wrong || (Wrong == 99 && Row.BySystem)) << Wrong;
    }
    SafeArrayDestroy(Array);
    EXPECT_EQ(Edited->Calls, std::vector<std::wstring>{});
    EXPECT_EQ(Buffer.Text(), L"");
    // An object that has none of the members.
    EXPECT_EQ(Server->Export(Asked.Get(), Bstr(L"MEMBER").Get(), Text.Out(), nullptr, &Flag), S_OK);
    EXPECT_EQ(Flag, kYes);
    EXPECT_EQ(Asked->Errors.size(), 1U);
    // And the next call works.
    EXPECT_FALSE(Exported(Edited).empty());
}

// What an operation answers that names a place that there is not.
enum class Meets {
    Nothing,  // a section that the operation does not know: a success that does nothing
    Refused,  // a failure that has nothing to tell: there is nowhere to go
    Fault     // a failure, told once
};

TEST_P(ComponentTest, SenselessArgumentsChangeNothing) {
    const struct {
        const wchar_t* Key;
        Meets Disp, Save, Move, Delete;
    } kRows[] = {
        {L"", Meets::Nothing, Meets::Nothing, Meets::Nothing, Meets::Nothing},
        {L"PIPPO", Meets::Nothing, Meets::Nothing, Meets::Nothing, Meets::Nothing},
        {L"FIELDS", Meets::Nothing, Meets::Nothing, Meets::Refused, Meets::Fault},
        {L"FIELDPARMS", Meets::Fault, Meets::Fault, Meets::Nothing, Meets::Nothing},
        {L"FIELDCAPTION", Meets::Fault, Meets::Fault, Meets::Fault, Meets::Fault},
    };
    const Ref<Stored> Edited = Object(L"STRINGTABLE");
    Tree->Model.SetSyntaxOn(false);
    EXPECT_FALSE(Show(Edited, [&](ScriptedTree& Window) {
        Caller Call = On();
        EXPECT_FALSE(Call.LoadData());
        for (int Nth = 1; Nth <= 2; ++Nth) {
            std::wstring Key;
            EXPECT_FALSE(Call.EditData(Call.HeadOf(Window.Model, L"FIELDS"), Key));
            const Head Parms = Call.HeadOf(Window.Model, Window.Leaf(L"FIELDPARMS", Nth));
            EXPECT_FALSE(Call.SaveData(Parms, L"NAME= " + std::to_wstring(Nth) + L"\r\n"));
        }
        EXPECT_FALSE(Call.Save());
        const auto Shown = [&] {
            std::vector<std::wstring> All;
            Window.Model.ForEach(
                [&](const window::TreeNode& Node) { All.push_back(Node.Key + L"|" + Node.Text); });
            return All;
        };
        const std::vector<std::wstring> Before = Shown();
        Window.Model.MarkModified(false);
        for (const std::int32_t Index : {-1, 0, 7, 0x7FFFFFFF, static_cast<std::int32_t>(0x80000000)})
            for (const auto& [Key, Disp, Save, Move, Delete] : kRows) {
                const Head Given{
                    .CurrFolder = L"nessuna", .CurrItem = L"nessuno 1", .Index = Index, .Key = Key};
                const auto Answers = [&](const char* Name, Meets Expected, const std::function<bool()>& Run) {
                    SCOPED_TRACE(std::string(Name) + " " + std::string(Given.Key.begin(), Given.Key.end()) +
                                 " " + std::to_string(Index));
                    Asked->Errors.clear();
                    EXPECT_EQ(Run(), Expected != Meets::Nothing);
                    EXPECT_EQ(Asked->Errors.size(), Expected == Meets::Fault ? 1U : 0U);
                    EXPECT_EQ(Shown(), Before);
                    EXPECT_FALSE(Window.Model.Modified());
                };
                std::wstring Text = L"prima", New = L"prima";
                Head At = Given;
                Answers("DispData", Disp, [&] { return Call.DispData(Given, Text); });
                EXPECT_EQ(Text, L"prima");
                Answers("SaveData", Save,
                        [&] { return Call.SaveData(Given, std::wstring(L"NAME= \0A\r\n", 10), &New); });
                EXPECT_EQ(New, L"");
                Answers("MoveData", Move, [&] { return Call.MoveData(At, Index); });
                EXPECT_EQ(At.CurrItem, Given.CurrItem);
                Answers("DeleteData", Delete, [&] { return Call.DeleteData(Given, false); });
            }
        // A place that there is, and directions that are none.
        Window.Model.SelectNode(Window.Model.NodeAt(L"FIELDS", 1));
        Head First = Call.HeadOf(Window.Model, Window.Model.NodeAt(L"FIELDS", 1));
        Asked->Errors.clear();
        EXPECT_TRUE(Call.MoveData(First, 0x7FFFFFFF)) << "nowhere to go";
        Window.Lent.Clear();
        EXPECT_EQ(Shown(), Before);
        EXPECT_EQ(Edited->Replaced, 1);
        EXPECT_FALSE(Call.Save());
        EXPECT_EQ(Edited->Replaced, 2);
        Ref<IDispatch> Back;
        return Call.Terminate(Back);
    }));
    const std::wstring Text = Exported(Edited);
    std::vector<std::wstring> Names;
    for (std::size_t At = 0; (At = Text.find(L"NAME= \"", At)) != Text.npos; ++At)
        Names.push_back(Text.substr(At, Text.find(L'\r', At) - At));
    EXPECT_EQ(Names, (std::vector<std::wstring>{L"NAME= \"1\"", L"NAME= \"2\""}));
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

// A tree whose end fails does not hold up that of the server object.
TEST(ComponentFactory, TheLastReferenceGoesWhereTheTreeFails) {
    const Component File;
    const Ref<ScriptedTree> Tree(new ScriptedTree(Binding::Early));
    Ref<::_vdSvr> Server = File.Create();
    ASSERT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
    Tree->OnCall = [](std::wstring_view) { return E_FAIL; };
    Server.Clear();
    EXPECT_EQ(Tree->Calls, std::vector<std::wstring>{L"Dispose"});
    EXPECT_EQ(Tree->Count, 1U);
    EXPECT_EQ(File.CanUnload(), S_OK);
}

TEST(ComponentFactory, ManyLivesLeaveNothing) {
    const auto Life = [] {
        {
            const Component File;
            const Ref<::_vdSvr> Server = File.Create();
            Variant Version;
            EXPECT_EQ(Server->CurrVersion(Version.Out()), S_OK);
            Ref<IDispatch> Object;
            EXPECT_EQ(Server->NewObject(Bstr(L"MEMBER").Get(), Bstr(L"PROVA").Get(), Object.Out()), S_OK);
            Bstr Text;
            VARIANT_BOOL Failed = kYes;
            EXPECT_EQ(Server->Export(Object.Get(), Bstr(L"MEMBER").Get(), Text.Out(), nullptr, &Failed),
                      S_OK);
            EXPECT_EQ(Failed, kNo);
        }
        EXPECT_EQ(GetModuleHandleW(L"KvDesSvr.dll"), nullptr);
    };
    Life();
    const MemorySpy Spy;
    Life();
    const long Once = Spy.Held();
    for (int I = 0; I < 50; ++I) Life();
    EXPECT_EQ(Spy.Held(), Once);
}

}  // namespace
}  // namespace kv::com::host
