// Exported text through ImportData. An input: bytes that choose whether another class than the one that reads
// such text is asked, and strict or lax; then the text in UTF-8.
#include <algorithm>

#include "fuzz/Fuzz.h"
#include "host/Text.h"

namespace kv::fuzz {
namespace {

// True on failure: the object is then as it was.
bool Import(const std::shared_ptr<MemoryRegData>& Object, std::wstring Text, bool Strict) {
    const auto Tree = std::make_shared<window::TreeModel>();
    Tree->SetSyntaxOn(Strict);
    vdSvr Server(nullptr, [&] { return Tree; });
    const RegObject Before = Object->Read();
    if (!Operator::Instance().Try([&] { return Server.Import(Object, Object->Clsid(), Text); })) return false;
    Must(Object->Read() == Before, "a refused import leaves the object alone");
    return true;
}

// Elements get new ids with each import.
std::wstring WithoutIds(const std::wstring& Text) {
    std::wstring Out;
    for (std::size_t At = 0; At < Text.size();) {
        const std::size_t End = std::min(Text.find(L'\n', At), Text.size() - 1) + 1;
        const std::wstring_view Line = std::wstring_view(Text).substr(At, End - At);
        if (!Line.starts_with(L"'[ID= ")) Out.append(Line);
        At = End;
    }
    return Out;
}

void Run(Input In) {
    Operator::Instance();
    const auto Words = ClassWords();
    static const std::size_t kReads = static_cast<std::size_t>(
        std::find(Words.begin(), Words.end(), std::wstring_view(L"IMPORTPROC")) - Words.begin());
    const std::size_t Other = In.Choose(4 * Words.size());
    const std::size_t Class = Other < Words.size() && Other > 0 ? Other : kReads;
    const bool Strict = In.Choose(2) == 0;
    const auto Object = std::make_shared<MemoryRegData>(Words[Class], Grown(Class));
    if (Import(Object, host::FromUtf8Lossy(In.Rest()), Strict) || !Object->Written()) return;

    Desk On(Words[Class], Object->Read());
    Must(On.Opened(), "what was imported opens");
    On.SaveChecked();
    const std::optional<std::wstring> First = On.Exported(Strict);
    Must(First.has_value(), "what was imported is exported");
    Must(!Import(On.Object, *First, Strict), "what was exported is imported", *First);
    const std::optional<std::wstring> Again = On.Exported(Strict);
    Must(Again.has_value(), "what was imported again is exported", *First);
    MustEqual(WithoutIds(*Again), WithoutIds(*First), "what was exported comes back");
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run(kv::fuzz::Input(Data, Size));
    return 0;
}
