#include "tests/com/Host.h"

namespace kv::com::host {
namespace {

/// What the component makes beside its host's program, which here is a test, goes when the tests have run.
class WeightsFile final : public ::testing::Environment {
  public:
    void TearDown() override {
        std::wstring Path(MAX_PATH, L'\0');
        Path.resize(GetModuleFileNameW(nullptr, Path.data(), MAX_PATH));
        DeleteFileW(Path.replace(Path.find_last_of(L"\\/") + 1, Path.npos, L"KVDSRT.TAB").c_str());
    }
};
[[maybe_unused]] ::testing::Environment* const kGone = ::testing::AddGlobalTestEnvironment(new WeightsFile);

}  // namespace

Component::Component() {
    Loaded_ = LoadLibraryW(L"" KV_DLL);
    if (!Loaded_) throw std::runtime_error("the component cannot be loaded");
    ClassObject_ = reinterpret_cast<decltype(ClassObject_)>(
        reinterpret_cast<void*>(GetProcAddress(Loaded_, "DllGetClassObject")));
    CanUnload_ = reinterpret_cast<decltype(CanUnload_)>(
        reinterpret_cast<void*>(GetProcAddress(Loaded_, "DllCanUnloadNow")));
    Living = 0;
}

Component::~Component() {
    EXPECT_EQ(Living, 0) << "objects of the host are still held";
    EXPECT_EQ(CanUnload_(), S_OK) << "objects of the component are still held";
    SetErrorInfo(0, nullptr);
    FreeLibrary(Loaded_);
}

HRESULT Component::ClassObject(REFCLSID Class, REFIID Interface, void** Into) const {
    return ClassObject_(Class, Interface, Into);
}

Ref<::_vdSvr> Component::Create() const {
    Ref<IClassFactory> Factory;
    EXPECT_EQ(ClassObject_(__uuidof(::vdSvr), __uuidof(IClassFactory), Factory.OutVoid()), S_OK);
    Ref<::_vdSvr> Made;
    EXPECT_EQ(Factory->CreateInstance(nullptr, __uuidof(::_vdSvr), Made.OutVoid()), S_OK);
    return Made;
}

const Ref<ITypeLib>& Library() {
    static const Ref<ITypeLib> The = [] {
        Ref<ITypeLib> Found;
        EXPECT_EQ(LoadTypeLibEx(L"" KV_DLL, REGKIND_NONE, Found.Out()), S_OK);
        return Found;
    }();
    return The;
}

MemorySpy::MemorySpy() {
    // The system keeps strings that were given back for the next that is wanted, unless told not to.
    if (const auto NoCache = reinterpret_cast<void(WINAPI*)()>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache"))))
        NoCache();
    EXPECT_EQ(CoRegisterMallocSpy(this), S_OK);
}

MemorySpy::~MemorySpy() { CoRevokeMallocSpy(); }

std::wstring Words() {
    Ref<IErrorInfo> Information;
    Bstr Text;
    if (GetErrorInfo(0, Information.Out()) == S_OK) Information->GetDescription(Text.Out());
    return Text.Text();
}

}  // namespace kv::com::host
