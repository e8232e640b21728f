// The four entry points of the file, the class factory, and what registration writes.

#include <atomic>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "com/Common.h"
#include "com/Failing.h"
#include "com/Module.h"
#include "com/Ref.h"
#include "com/Server.h"
// behind windows.h
#include <olectl.h>

namespace kv::com {
namespace {

constexpr std::wstring_view kProgId = L"vdbSvr.vdSvr";
constexpr std::wstring_view kDescription = L"KvDesign design-time server";

/// Lives as long as the file is loaded; only its locks count.
class Factory final : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID Wanted, void** Into) override {
        if (!Into) return E_POINTER;
        *Into = Wanted == __uuidof(IUnknown) || Wanted == __uuidof(IClassFactory) ? this : nullptr;
        if (!*Into) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        module::Hold();
        return 2;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        module::Drop();
        return 1;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* Outer, REFIID Wanted, void** Into) override {
        if (!Into) return E_POINTER;
        *Into = nullptr;
        if (Outer) return CLASS_E_NOAGGREGATION;
        HRESULT Found = S_OK;
        const HRESULT Made =
            Guard(__uuidof(::_vdSvr), kProgId, [&] { Found = Make<Server>()->QueryInterface(Wanted, Into); });
        return FAILED(Made) ? Made : Found;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL Lock) override {
        if (Lock) {
            ++Locks_;
            module::Hold();
            return S_OK;
        }
        // Only what was locked is unlocked.
        for (long Held = Locks_; Held > 0;)
            if (Locks_.compare_exchange_weak(Held, Held - 1)) {
                module::Drop();
                return S_OK;
            }
        return E_UNEXPECTED;
    }

  private:
    std::atomic<long> Locks_{0};
};

Factory TheFactory;

std::wstring Braced(REFIID Id) {
    wchar_t Text[40];
    StringFromGUID2(Id, Text, static_cast<int>(std::size(Text)));
    return Text;
}

void CheckRegistry(LSTATUS Result) {
    if (Result != ERROR_SUCCESS)
        throw Refusal(SELFREG_E_CLASS,
                      L"Il registro di configurazione non si scrive: errore " + std::to_wstring(Result));
}

/// Writes one value of a key below the classes; an empty name is the key's own value.
void Write(const std::wstring& Key, const wchar_t* Name, std::wstring_view Text) {
    HKEY Opened = nullptr;
    CheckRegistry(
        RegCreateKeyExW(HKEY_CLASSES_ROOT, Key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &Opened, nullptr));
    const std::wstring Value(Text);
    const LSTATUS Written =
        RegSetValueExW(Opened, Name, 0, REG_SZ, reinterpret_cast<const BYTE*>(Value.c_str()),
                       static_cast<DWORD>((Value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(Opened);
    CheckRegistry(Written);
}

/// What is not there needs no removing.
void Remove(const std::wstring& Key) {
    const LSTATUS Gone = RegDeleteTreeW(HKEY_CLASSES_ROOT, Key.c_str());
    if (Gone != ERROR_FILE_NOT_FOUND && Gone != ERROR_PATH_NOT_FOUND) CheckRegistry(Gone);
}

std::wstring ClassKey() { return L"CLSID\\" + Braced(__uuidof(::vdSvr)); }

TLIBATTR LibraryAttributes() {
    TLIBATTR* Attributes = nullptr;
    const Ref<ITypeLib> Library = module::Library();
    if (FAILED(Library->GetLibAttr(&Attributes)))
        throw Refusal(SELFREG_E_TYPELIB, L"Libreria dei tipi illeggibile");
    const TLIBATTR Read = *Attributes;
    Library->ReleaseTLibAttr(Attributes);
    return Read;
}

/// Whether the file of the other width is registered. A system of one width answers for itself.
bool OtherWidthRegistered() {
    HKEY Opened = nullptr;
    constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, ClassKey().c_str(), 0, KEY_READ | kOther, &Opened) != ERROR_SUCCESS)
        return false;
    RegCloseKey(Opened);
    return true;
}

void RemoveLibrary() {
    const TLIBATTR Attributes = LibraryAttributes();
    const HRESULT Gone = UnRegisterTypeLib(Attributes.guid, Attributes.wMajorVerNum, Attributes.wMinorVerNum,
                                           Attributes.lcid, Attributes.syskind);
    const std::wstring Key = L"TypeLib\\" + Braced(Attributes.guid);
    // One that is not registered is told in two ways.
    if (FAILED(Gone) && Gone != TYPE_E_REGISTRYACCESS && Gone != E_INVALIDARG)
        throw Refusal(SELFREG_E_TYPELIB, L"La libreria dei tipi non si toglie");
    // The key of the library itself stays where the last version has gone.
    RegDeleteKeyW(HKEY_CLASSES_ROOT, Key.c_str());
}

void Register() {
    const std::wstring Path = module::Path();
    if (FAILED(RegisterTypeLib(module::Library().Get(), const_cast<wchar_t*>(Path.c_str()), nullptr)))
        throw Refusal(SELFREG_E_TYPELIB, L"La libreria dei tipi non si registra");
    const std::wstring LibraryId = Braced(LibraryAttributes().guid);
    const std::wstring Id = Braced(__uuidof(::vdSvr));
    const std::wstring Class = ClassKey();
    Write(Class, nullptr, kDescription);
    Write(Class + L"\\InprocServer32", nullptr, Path);
    Write(Class + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    Write(Class + L"\\ProgID", nullptr, kProgId);
    Write(Class + L"\\TypeLib", nullptr, LibraryId);
    Write(Class + L"\\Version", nullptr, L"1.0");
    Write(Class + L"\\Programmable", nullptr, L"");
    Write(std::wstring(kProgId), nullptr, kDescription);
    Write(std::wstring(kProgId) + L"\\CLSID", nullptr, Id);
}

void Unregister() {
    Remove(ClassKey());
    // The program identifier is one for both widths, the classes are two.
    if (!OtherWidthRegistered()) Remove(std::wstring(kProgId));
    RemoveLibrary();
}

}  // namespace
}  // namespace kv::com

extern "C" BOOL WINAPI DllMain(HINSTANCE Loaded, DWORD Reason, LPVOID) {
    if (Reason == DLL_PROCESS_ATTACH) {
        kv::com::module::SetHandle(Loaded);
        DisableThreadLibraryCalls(Loaded);
    }
    return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID Class, REFIID Interface, LPVOID* Into) {
    if (!Into) return E_POINTER;
    *Into = nullptr;
    if (Class != __uuidof(::vdSvr)) return CLASS_E_CLASSNOTAVAILABLE;
    return kv::com::TheFactory.QueryInterface(Interface, Into);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() { return kv::com::module::Unused() ? S_OK : S_FALSE; }

extern "C" HRESULT WINAPI DllRegisterServer() {
    const kv::com::module::Holder During;
    const HRESULT Done = kv::com::Guard(CLSID_NULL, L"DllRegisterServer", [] { kv::com::Register(); });
    // Half a registration is none.
    if (FAILED(Done)) kv::com::Guard(CLSID_NULL, L"DllRegisterServer", [] { kv::com::Unregister(); });
    return Done;
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
    const kv::com::module::Holder During;
    return kv::com::Guard(CLSID_NULL, L"DllUnregisterServer", [] { kv::com::Unregister(); });
}
