// A program whose thread has no apartment of its own: the component lives in one that the system makes, and
// is reached, as are the host's objects from there, by the proxies of its type library.

#include <cstdlib>
#include <thread>

#include "tests/com/Host.h"

namespace kv::com::host {
namespace {

constexpr VARIANT_BOOL kYes = VARIANT_TRUE;
constexpr VARIANT_BOOL kNo = VARIANT_FALSE;

void LivesByProxies(Binding As) {
    SCOPED_TRACE(As == Binding::Early ? "early" : "by name");
    Ref<::_vdSvr> Server;
    ASSERT_EQ(CoCreateInstance(__uuidof(::vdSvr), nullptr, CLSCTX_INPROC_SERVER, __uuidof(::_vdSvr),
                               Server.OutVoid()),
              S_OK);
    // What answers that is the system's and not the component.
    EXPECT_TRUE(kv::com::As<IMultiQI>(Server.Get()));
    const ByName Late{Ref<IDispatch>(Server.Get())};
    Variant Version;
    EXPECT_EQ(Server->CurrVersion(Version.Out()), S_OK);
    EXPECT_EQ(Version.Get().vt, VT_I2);
    EXPECT_EQ(Version.Get().iVal, 256);
    EXPECT_EQ(Late.Call(L"CurrVersion", NumberOf), 256);

    const Ref<Operator> Asked(new Operator(As));
    const Ref<ScriptedTree> Tree(new ScriptedTree(As));
    const Ref<Stored> Edited(new Stored(As, L"STRINGTABLE", L"PROVA"));
    Tree->Model.SetSyntaxOn(false);
    EXPECT_EQ(Server->putref_CallBack(Asked.Get()), S_OK);
    EXPECT_EQ(Server->putref_DesignTree(Tree.Get()), S_OK);
    const Ref<::TreeDll> Operations = kv::com::As<::TreeDll>(Server.Get());
    ASSERT_TRUE(Operations);
    bool Ran = false;
    Tree->Script = [&](ScriptedTree& Window) {
        Ran = true;
        VARIANT_BOOL Failed = kYes;
        const Bstr Fields(L"FIELDS");
        Bstr Key, New, Text(L"NAME= PRIMO\r\n");
        EXPECT_EQ(Operations->LoadData(nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_EQ(Window.Model.NodeText(L"ROOT"), L"PROVA");
        EXPECT_EQ(
            Operations->EditData(nullptr, Fields.Get(), Fields.Get(), 0, Fields.Get(), Key.Out(), &Failed),
            S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_TRUE(Window.Model.HasNode(Key.Text()));
        const std::wstring Leaf = Window.Leaf(L"FIELDPARMS");
        const Bstr At{std::wstring_view(Leaf)}, Folder{std::wstring_view(Window.Model.NodeParent(Leaf))},
            Parms(L"FIELDPARMS");
        EXPECT_EQ(Operations->SaveData(nullptr, Folder.Get(), At.Get(), 0, Parms.Get(), New.Out(), Text.Out(),
                                       &Failed),
                  S_OK);
        EXPECT_EQ(Failed, kNo);
        EXPECT_EQ(Operations->Save(nullptr, &Failed), S_OK);
        EXPECT_EQ(Failed, kNo);
        return false;
    };
    Ref<IDispatch> Target;
    VARIANT_BOOL Cancel = kNo, Failed = kYes;
    EXPECT_EQ(Server->ShowData(nullptr, Edited.Get(), Bstr(L"STRINGTABLE").Get(), Target.InOut(), kNo,
                               &Cancel, &Failed),
              S_OK);
    EXPECT_EQ(Failed, kNo);
    EXPECT_TRUE(Ran);
    EXPECT_EQ(Edited->Replaced, 1);
    Tree->Script = nullptr;

    Bstr Text;
    Variant Unread;
    EXPECT_EQ(Server->Export(Edited.Get(), Bstr(L"STRINGTABLE").Get(), Text.Out(), Unread.Out(), &Failed),
              S_OK);
    EXPECT_EQ(Failed, kNo);
    EXPECT_NE(Text.Text().find(L"NAME= \"PRIMO\""), std::wstring::npos);
    const InOut Buffer{Variant(std::wstring_view(L""))};
    EXPECT_FALSE(Late.Call(L"Export", FlagOf,
                           {&Variant(Edited.Get()).Get(), &Variant(std::wstring_view(L"STRINGTABLE")).Get(),
                            Buffer.Argument()}));
    EXPECT_EQ(TextOf(Buffer.Value()), Text.Text());
    // Failures come through as well: those of an operation, and a call that is refused.
    EXPECT_EQ(Server->Export(Edited.Get(), Bstr(L"PIPPO").Get(), Text.Out(), Unread.Out(), &Failed), S_OK);
    EXPECT_EQ(Failed, kYes);
    EXPECT_EQ(Asked->Errors, std::vector<std::wstring>{L"20000 vdSvr.Export: Metodo sconosciuto [PIPPO]"});
    EXPECT_EQ(Server->Export(nullptr, Bstr(L"MEMBER").Get(), Text.Out(), Unread.Out(), &Failed), E_POINTER);
    EXPECT_EQ(Server->ShutDown(), S_OK);
    EXPECT_EQ(Tree->Disposed, 1);
    EXPECT_EQ(Server->putref_CallBack(nullptr), S_OK);
}

void LivesWithoutAnApartment() {
    const HMODULE Loaded = LoadLibraryW(L"" KV_DLL);
    ASSERT_NE(Loaded, nullptr);
    const auto Call = [&](const char* Entry) {
        return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(Loaded, Entry)))();
    };
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    Living = 0;
    std::thread([] {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        for (const Binding As : {Binding::Early, Binding::ByName}) LivesByProxies(As);
        SetErrorInfo(0, nullptr);
        CoUninitialize();
    }).join();
    EXPECT_EQ(Living, 0);
    // All server objects of that apartment have gone, else no other thread could have one.
    {
        Ref<IClassFactory> Factory;
        Ref<::_vdSvr> Server;
        const auto ClassObject = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, LPVOID*)>(
            reinterpret_cast<void*>(GetProcAddress(Loaded, "DllGetClassObject")));
        EXPECT_EQ(ClassObject(__uuidof(::vdSvr), __uuidof(IClassFactory), Factory.OutVoid()), S_OK);
        EXPECT_EQ(Factory->CreateInstance(nullptr, __uuidof(::_vdSvr), Server.OutVoid()), S_OK);
    }
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
}

// In a process of its own, since Wine holds the class object of an apartment that it has made until the end.
TEST(ApartmentDeathTest, AProgramWithoutOneIsServedByProxies) {
    EXPECT_EXIT(
        {
            LivesWithoutAnApartment();
            std::_Exit(::testing::Test::HasFailure() ? 1 : 0);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace kv::com::host
