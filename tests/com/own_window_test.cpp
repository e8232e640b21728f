// The component's own window on an object of a host, through the file itself: early bound and by name, worked
// on by an operator who sits at another thread.

#include <atomic>
#include <thread>

#include "tests/com/Host.h"
#include "tests/com/WindowDriver.h"

namespace kv::com::host {
namespace {

using test::Narrow;
using test::Shown;
using test::Until;

constexpr const wchar_t* kWord = L"FILTER";
constexpr const wchar_t* kOld = L"AUTOMATIC= FALSE";
constexpr const wchar_t* kNew = L"AUTOMATIC= TRUE";
constexpr const wchar_t* kAskSave = L"Salvare le modifiche all'oggetto \"PROVA\"?";

struct Search {
    HWND Found = nullptr;
};

BOOL CALLBACK IsObjectWindow(HWND Window, LPARAM Into) {
    if (!IsWindowVisible(Window) || !GetMenu(Window)) return TRUE;
    reinterpret_cast<Search*>(Into)->Found = Window;
    return FALSE;
}

class OwnWindow : public ::testing::TestWithParam<Binding> {
  protected:
    void SetUp() override {
        Server = File.Create();
        Asked = Ref<Operator>(new Operator(GetParam()));
        Asked->Button = IDNO;
        ASSERT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    }
    void TearDown() override { SetErrorInfo(0, nullptr); }

    Ref<Stored> Object(std::wstring_view Word = kWord) const {
        return Ref<Stored>(new Stored(GetParam(), Word, L"PROVA"));
    }

    /// ShowData, by its slot or by its name; the object comes back as its target. `While` works on the
    /// window, which is closed afterwards.
    void InWindow(const Ref<Stored>& Edited, const std::function<void(Shown&)>& While) {
        const DWORD Here = GetCurrentThreadId();
        const auto Window = [&] {
            Search For;
            EnumThreadWindows(Here, IsObjectWindow, reinterpret_cast<LPARAM>(&For));
            return For.Found;
        };
        std::atomic<bool> Over{false};
        bool Opened = false;
        std::thread Driver([&] {
            HWND Open = nullptr;
            Until([&] { return Over || (Open = Window()) != nullptr; });
            if (!Open) return;
            Opened = true;
            window::TreeModel None;
            Shown On(None, Open, Beside.Get());
            On.Settle();
            While(On);
            test::CallOff(Window, Over);
        });
        Ref<IDispatch> Target;
        const Bstr Word(kWord);
        if (GetParam() == Binding::Early) {
            VARIANT_BOOL Cancel = VARIANT_FALSE, Failed = VARIANT_TRUE;
            EXPECT_EQ(Server->ShowData(nullptr, Edited.Get(), Word.Get(), Target.Out(), VARIANT_FALSE,
                                       &Cancel, &Failed),
                      S_OK);
            EXPECT_EQ(Failed, VARIANT_FALSE);
        } else {
            const InOut Back{Variant()}, Cancel{Variant(false)};
            const Variant Nothing(static_cast<IDispatch*>(nullptr)), Given(Edited.Get()), Class(Word.Text()),
                Flag(false);
            EXPECT_FALSE(FlagOf(ByName(Ref<IDispatch>(Server.Get()))
                                    .Call(L"ShowData", {&Nothing.Get(), &Given.Get(), &Class.Get(),
                                                        Back.Argument(), &Flag.Get(), Cancel.Argument()})
                                    .Get()));
            Target = ObjectOf(Back.Value());
        }
        Over = true;
        Driver.join();
        MSG Left{};
        while (PeekMessageW(&Left, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&Left);
        EXPECT_TRUE(Opened);
        EXPECT_EQ(Target.Get(), static_cast<IDispatch*>(Edited.Get()));
    }

    /// Types the other value into the section that has it.
    static void Change(const Shown& On) {
        ASSERT_TRUE(On.ClickSection(kOld));
        std::wstring Text = On.Text();
        On.Type(Text.replace(Text.find(kOld), std::wstring_view(kOld).size(), kNew));
    }
    static void Apply(const Shown& On) {
        On.Do(command::kApply);
        EXPECT_EQ(On.Message(), L"Testo applicato.") << Narrow(On.Message());
    }
    static void Save(const Shown& On) {
        On.Do(command::kSave);
        EXPECT_EQ(On.Message(), L"Oggetto salvato.") << Narrow(On.Message());
    }
    static bool Closed(const Shown& On) {
        return Until([&] { return !IsWindow(On.Window); });
    }

    /// What the host's object holds.
    std::wstring Held(const Ref<Stored>& Edited) {
        Bstr Text;
        VARIANT_BOOL Failed = VARIANT_TRUE;
        EXPECT_EQ(Server->Export(Edited.Get(), Bstr(kWord).Get(), Text.Out(), nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, VARIANT_FALSE);
        return Text.Text();
    }
    static bool Says(const std::wstring& Text, const wchar_t* Line) { return Text.find(Line) != Text.npos; }

    test::BesideWindow Beside;
    // The objects go before the file is left.
    Component File;
    Ref<::_vdSvr> Server;
    Ref<Operator> Asked;
};

TEST_P(OwnWindow, WhatIsSavedIsInTheHostsObject) {
    const Ref<Stored> Edited = Object();
    std::wstring Text;
    InWindow(Edited, [&](Shown& On) {
        Change(On);
        Apply(On);
        EXPECT_EQ(Edited->Replaced, 0) << "nothing leaves the window before it is saved";
        Text = On.Text();
        Save(On);
        EXPECT_EQ(Edited->Replaced, 1);
        On.Do(command::kClose);
        EXPECT_TRUE(Closed(On)) << "there is nothing to ask";
    });
    EXPECT_EQ(Edited->Saving, std::vector<bool>{true});
    EXPECT_TRUE(Says(Held(Edited), kNew));
    EXPECT_FALSE(Says(Held(Edited), kOld));
    InWindow(Edited, [&](Shown& On) {
        EXPECT_TRUE(On.ClickSection(kNew));
        EXPECT_EQ(On.Text(), Text);
    });
    EXPECT_EQ(Edited->Replaced, 1);
    EXPECT_TRUE(Asked->Asked.empty());
    EXPECT_TRUE(Asked->Errors.empty());
    EXPECT_EQ(Server->ShutDown(), S_OK);
}

TEST_P(OwnWindow, RefusedTextAndCancelLeaveTheHostsObjectAsItWas) {
    const Ref<Stored> Edited = Object();
    InWindow(Edited, [&](Shown& On) { Save(On); });
    const std::wstring Before = Held(Edited);
    const Ref<IDispatch> Content = Edited->Content;
    ASSERT_EQ(Edited->Replaced, 1);
    const auto Unchanged = [&] {
        EXPECT_EQ(Edited->Replaced, 1);
        EXPECT_EQ(Edited->Content.Get(), Content.Get());
        EXPECT_EQ(Held(Edited), Before);
    };

    InWindow(Edited, [&](Shown& On) {
        ASSERT_TRUE(On.ClickSection(kOld));
        const std::wstring Bad = On.Text() + L"PIPPO= 1\r\n";
        On.Type(Bad);
        for (const int Command : {command::kApply, command::kSave}) {
            On.Do(Command);
            EXPECT_NE(On.Message().find(L"Parametro non riconosciuto: PIPPO=1"), std::wstring::npos)
                << Narrow(On.Message());
            EXPECT_EQ(On.Text(), Bad);
        }
        On.Do(command::kClose, L"non \u00E8 stato applicato", L"Scarta");
        EXPECT_TRUE(Closed(On)) << "nothing has changed";
    });
    Unchanged();
    EXPECT_TRUE(Asked->Asked.empty());
    EXPECT_TRUE(Asked->Errors.empty()) << "the window itself tells";

    // Closed without saving; the host's object is asked in the operator's place.
    InWindow(Edited, [&](Shown& On) {
        Change(On);
        Apply(On);
        Asked->Button = IDCANCEL;
        On.Do(command::kClose);
        EXPECT_TRUE(IsWindow(On.Window));
        EXPECT_EQ(Asked->Asked, std::vector<std::wstring>{kAskSave});
        EXPECT_TRUE(Says(On.Text(), kNew));
        Asked->Button = IDNO;
        On.Do(command::kClose);
        EXPECT_TRUE(Closed(On));
    });
    EXPECT_EQ(Asked->Asked, std::vector<std::wstring>(2, kAskSave));
    Unchanged();

    Asked->Button = IDYES;
    InWindow(Edited, [&](Shown& On) {
        Change(On);
        Apply(On);
        On.Do(command::kClose);
        EXPECT_TRUE(Closed(On));
    });
    EXPECT_EQ(Edited->Replaced, 2);
    EXPECT_TRUE(Says(Held(Edited), kNew));
}

TEST_P(OwnWindow, AnObjectThatDoesNotTakeTheChangeKeepsTheOldOne) {
    const Ref<Stored> Edited = Object();
    InWindow(Edited, [&](Shown& On) {
        Save(On);
        Change(On);
        Apply(On);
        Edited->OnCall = [](std::wstring_view Member) { return Member == L"Replace" ? E_FAIL : S_OK; };
        On.Do(command::kSave);
        EXPECT_NE(On.Message().find(L"Oggetto dell'applicazione, Replace: "), std::wstring::npos)
            << Narrow(On.Message());
        EXPECT_EQ(Edited->Replaced, 1);
        EXPECT_TRUE(Says(On.Text(), kNew)) << "nothing is lost";
        // Yes saves, which fails: the window stays.
        Asked->Button = IDYES;
        On.Do(command::kClose);
        EXPECT_TRUE(IsWindow(On.Window));
        Asked->Button = IDNO;
        Edited->OnCall = nullptr;
        Save(On);
        EXPECT_EQ(Edited->Replaced, 2);
    });
    EXPECT_TRUE(Says(Held(Edited), kNew));
    EXPECT_TRUE(Asked->Errors.empty());
}

TEST_P(OwnWindow, WithoutACallBackTheSystemAsks) {
    ASSERT_EQ(Server->putref_CallBack(nullptr), S_OK);
    const Ref<Stored> Edited = Object();
    InWindow(Edited, [&](Shown& On) {
        Change(On);
        Apply(On);
        On.Do(command::kClose, kAskSave, IDCANCEL);
        EXPECT_TRUE(IsWindow(On.Window));
        On.Do(command::kClose, kAskSave, IDYES);
        EXPECT_TRUE(Closed(On));
    });
    EXPECT_EQ(Edited->Replaced, 1);
    EXPECT_TRUE(Says(Held(Edited), kNew));
}

TEST_P(OwnWindow, AnObjectOpensUnchangedBehindOneThatWasAbandoned) {
    InWindow(Object(), [&](Shown& On) {
        Change(On);
        Apply(On);
        EXPECT_NE(On.Title().find(L"* - kvdesign"), std::wstring::npos);
    });
    EXPECT_EQ(Asked->Asked, std::vector<std::wstring>{kAskSave});
    InWindow(Object(), [&](Shown& On) {
        EXPECT_EQ(On.Title().find(L"* - kvdesign"), std::wstring::npos) << Narrow(On.Title());
        EXPECT_TRUE(On.ClickSection(kOld));
        On.Do(command::kClose);
        EXPECT_TRUE(Closed(On));
    });
    EXPECT_EQ(Asked->Asked.size(), 1U) << "there is nothing to ask";
}

// From one of the host's objects into another; the other is stored when it is saved.
TEST_P(OwnWindow, APasteIsStoredByASaveAlone) {
    const Ref<Stored> From = Object();
    const Ref<Stored> To = Object();
    InWindow(From, [&](Shown& On) {
        Change(On);
        Apply(On);
        On.Do(command::kCopy);
        EXPECT_EQ(On.Message(), L"Negli appunti: un oggetto della classe FILTER.") << Narrow(On.Message());
    });
    EXPECT_EQ(From->Replaced, 0) << "the copy is no save";
    for (const bool Saves : {false, true})
        InWindow(To, [&](Shown& On) {
            On.Do(command::kPaste);
            EXPECT_TRUE(On.ClickSection(kNew));
            EXPECT_EQ(To->Replaced, 0);
            EXPECT_TRUE(To->Saving.empty());
            if (Saves) Save(On);
        });
    EXPECT_EQ(To->Replaced, 1);
    EXPECT_TRUE(Says(Held(To), kNew));
}

INSTANTIATE_TEST_SUITE_P(Bound, OwnWindow, ::testing::Values(Binding::Early, Binding::ByName),
                         [](const auto& Info) { return Info.param == Binding::Early ? "Early" : "ByName"; });

}  // namespace
}  // namespace kv::com::host
