// A host of the Windows component: opens an object, is refused a text, edits it, saves it, shows it as text.
//
//     windows_example            works without a screen
//     windows_example --window   opens the component's own window instead
//
// The component must be registered (regsvr32 KvDesSvr.dll). The stored object and the window are objects of
// this program, reached by the names of their members: so only the members that are needed stand here. A host
// may as well implement the interfaces RegData and DesignTree of the type library.
#include <KvDesSvr_h.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// An object whose members are looked up by name. An argument in/out comes as a variant by reference.
class ByName final : public IDispatch {
  public:
    /// Arguments in the order of the call; what the member answers goes into the last parameter.
    using Member = std::function<HRESULT(const std::vector<VARIANT*>&, VARIANT&)>;

    explicit ByName(std::map<std::wstring, Member> Members) {
        for (auto& [Name, Work] : Members) {
            Names_[Name] = static_cast<DISPID>(Members_.size());
            Members_.push_back(std::move(Work));
        }
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Into) override {
        if (Wanted != IID_IUnknown && Wanted != IID_IDispatch) {
            *Into = nullptr;
            return E_NOINTERFACE;
        }
        *Into = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
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
        const auto Found = Names_.find(*Names);
        *Ids = Found == Names_.end() ? DISPID_UNKNOWN : Found->second;
        return Found == Names_.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID Id, REFIID, LCID, WORD, DISPPARAMS* Given, VARIANT* Result,
                                     EXCEPINFO*, UINT*) override {
        std::vector<VARIANT*> Arguments;
        for (UINT I = Given->cArgs; I-- > 0;) {
            VARIANT& Argument = Given->rgvarg[I];
            Arguments.push_back(Argument.vt == (VT_VARIANT | VT_BYREF) ? Argument.pvarVal : &Argument);
        }
        VARIANT Answer;
        VariantInit(&Answer);
        const HRESULT Done = Members_[static_cast<std::size_t>(Id)](Arguments, Answer);
        if (Result && SUCCEEDED(Done))
            *Result = Answer;
        else
            VariantClear(&Answer);
        return Done;
    }

  private:
    ~ByName() = default;

    ULONG Count_ = 1;
    std::map<std::wstring, DISPID> Names_;
    std::vector<Member> Members_;
};

void Answer(VARIANT& Result, const wchar_t* Text) {
    Result.vt = VT_BSTR;
    Result.bstrVal = SysAllocString(Text);
}
void Answer(VARIANT& Result, bool Flag) {
    Result.vt = VT_BOOL;
    Result.boolVal = Flag ? VARIANT_TRUE : VARIANT_FALSE;
}
ByName::Member Text(const wchar_t* Words) {
    return [Words](const auto&, VARIANT& Result) { return Answer(Result, Words), S_OK; };
}
ByName::Member Flag(bool Value) {
    return [Value](const auto&, VARIANT& Result) { return Answer(Result, Value), S_OK; };
}
HRESULT Nothing(const std::vector<VARIANT*>&, VARIANT&) { return S_OK; }

void Print(std::wstring_view Line) {
    for (const wchar_t Letter : Line)
        if (Letter != L'\r') std::putchar(Letter < 128 ? static_cast<char>(Letter) : '?');
}

/// The object under edit, and how often it was saved. A real host would write the node to its registry.
struct Stored {
    IDispatch* Node = nullptr;
    int Saved = 0;
};

ByName* MakeObject(Stored& Kept) {
    return new ByName({
        {L"Name", Text(L"LETTORE")},
        {L"Clsid", Text(L"MEMBER")},
        {L"UserList", Text(L"")},
        {L"Saving", Nothing},
        {L"Content",
         [&Kept](const auto&, VARIANT& Result) {
             Result.vt = VT_DISPATCH;
             Result.pdispVal = Kept.Node;
             if (Kept.Node) Kept.Node->AddRef();
             return S_OK;
         }},
        {L"Replace",
         [&Kept](const auto& Arguments, VARIANT&) {
             if (Arguments.size() != 1 || Arguments[0]->vt != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
             Arguments[0]->pdispVal->AddRef();
             if (Kept.Node) Kept.Node->Release();
             Kept.Node = Arguments[0]->pdispVal;
             ++Kept.Saved;
             return S_OK;
         }},
    });
}

/// What the operator does: loads, types a wrong text, a right one, saves, closes. True on failure.
bool Edit(::TreeDll& Server, const std::wstring& Leaf) {
    VARIANT_BOOL Failed = VARIANT_TRUE;
    if (FAILED(Server.LoadData(nullptr, &Failed)) || Failed) return true;
    const BSTR Section = SysAllocString(L"PARMS");
    const BSTR Item = SysAllocString(Leaf.c_str());
    BSTR NewKey = nullptr;
    for (const wchar_t* Typed : {L"PIPPO= 1", L"PASSWORD= \"biblio\""}) {
        BSTR Buffer = SysAllocString(Typed);
        Server.SaveData(nullptr, Section, Item, 0, Section, &NewKey, &Buffer, &Failed);
        SysFreeString(Buffer);
    }
    SysFreeString(NewKey);
    SysFreeString(Item);
    SysFreeString(Section);
    if (Failed || FAILED(Server.Save(nullptr, &Failed)) || Failed) return true;
    IDispatch* Back = nullptr;
    Server.Terminate(nullptr, &Back, &Failed);
    if (Back) Back->Release();
    return Failed != VARIANT_FALSE;
}

/// A window without a screen, of what a class without lists needs. `Leaf` is the key of the last leaf.
ByName* MakeWindow(::TreeDll& Server, std::wstring& Leaf) {
    return new ByName({
        {L"ClearNodes", Nothing},
        {L"AddNode",
         [&Leaf](const auto& Arguments, VARIANT&) {
             if (Arguments.size() != 7 || Arguments[2]->vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
             const std::wstring Key = Arguments[2]->bstrVal;
             if (Key.find(L' ') != std::wstring::npos) Leaf = Key;
             return S_OK;
         }},
        {L"AddToolButton", Nothing},
        {L"SetTools", Flag(false)},
        {L"AddDefault", Flag(false)},
        {L"SyntaxOn", Flag(true)},
        {L"MarkModified", Nothing},
        {L"Dispose", Nothing},
        {L"ShowTree",
         [&Server, &Leaf](const auto&, VARIANT& Result) { return Answer(Result, Edit(Server, Leaf)), S_OK; }},
    });
}

ByName* MakeConsole() {
    return new ByName({{L"ShowError", [](const auto& Arguments, VARIANT&) {
                            Print(L"refused: ");
                            if (Arguments.size() == 3 && Arguments[2]->vt == VT_BSTR)
                                Print(Arguments[2]->bstrVal);
                            Print(L"\n");
                            return S_OK;
                        }}});
}

int Work(bool OwnWindow) {
    CLSID Class;
    ::_vdSvr* Server = nullptr;
    ::TreeDll* Tree = nullptr;
    if (FAILED(CLSIDFromProgID(L"vdbSvr.vdSvr", &Class)) ||
        FAILED(CoCreateInstance(Class, nullptr, CLSCTX_INPROC_SERVER, __uuidof(::_vdSvr),
                                reinterpret_cast<void**>(&Server)))) {
        Print(L"the component is not registered\n");
        return 1;
    }
    Server->QueryInterface(__uuidof(::TreeDll), reinterpret_cast<void**>(&Tree));

    Stored Kept;
    std::wstring Leaf;
    ByName* const Object = MakeObject(Kept);
    ByName* const Window = MakeWindow(*Tree, Leaf);
    ByName* const Console = MakeConsole();
    if (!OwnWindow) {
        Server->putref_CallBack(Console);
        Server->putref_DesignTree(Window);
    }

    const BSTR Word = SysAllocString(L"MEMBER");
    IDispatch* Target = nullptr;
    VARIANT_BOOL Cancel = VARIANT_FALSE;
    VARIANT_BOOL Failed = VARIANT_TRUE;
    Server->ShowData(nullptr, Object, Word, &Target, VARIANT_FALSE, &Cancel, &Failed);
    if (Target) Target->Release();
    const bool Opened = Failed == VARIANT_FALSE;

    BSTR Buffer = nullptr;
    if (Opened && SUCCEEDED(Server->Export(Object, Word, &Buffer, nullptr, &Failed)) && !Failed && Buffer)
        Print(Buffer);
    Print(Opened ? L"saved " + std::to_wstring(Kept.Saved) + L"\n" : L"not opened\n");
    SysFreeString(Buffer);
    SysFreeString(Word);

    Server->ShutDown();
    if (Kept.Node) Kept.Node->Release();
    Tree->Release();
    Server->Release();
    Console->Release();
    Window->Release();
    Object->Release();
    return Opened ? 0 : 1;
}

}  // namespace

int main(int Count, char** Arguments) {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const int Code = Work(Count > 1 && std::string_view(Arguments[1]) == "--window");
    CoFreeUnusedLibrariesEx(0, 0);
    CoUninitialize();
    return Code;
}
