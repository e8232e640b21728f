// The clipboard file. An input: bytes that choose the class that opens what was read, the entry, and strict
// or lax; then the file.
#include "frame/vdbInclude.h"
#include "fuzz/Fuzz.h"

namespace kv::fuzz {
namespace {

// True on failure.
bool LoadEntry(RegObject& Into, std::int32_t Index, Telling Faults) {
    std::wstring Name;
    std::wstring Path;
    Operator& Who = Operator::Instance();
    Who.Shown.clear();
    const bool Failed = ClipboardLoad(Into, Name, Path, Index, Faults);
    Must(Faults == Telling::Show || Who.Shown.empty(), "a fault that is kept is not shown");
    Must(Who.Shown.size() <= 1, "an error is shown once");
    Must(Failed || (Who.Shown.empty() && CoreUtil::Instance().LastError().Empty()),
         "a success tells nothing");
    Must(!Failed || !Who.Shown.empty() || !CoreUtil::Instance().LastError().Empty(), "a failure tells why");
    CoreUtil::Instance().ForgetError();
    return Failed;
}

void Run(Input In) {
    Operator::Instance();
    const std::wstring_view Word = ClassWords()[In.Choose(ClassWords().size())];
    const auto Index = static_cast<std::int32_t>(In.Choose(5)) - 1;
    const bool Strict = In.Choose(2) == 0;
    const std::filesystem::path File = Folder() / kClipboardFile;
    WriteFile(File, In.Rest());

    RegObject Read;
    if (LoadEntry(Read, Index, Strict ? Telling::Show : Telling::Keep)) return;
    Exercise(Word, Read, Strict);  // its tools read the file, too

    std::wstring Path;
    if (ClipboardStore(Read, Path)) {
        CoreUtil::Instance().ForgetError();
        return;
    }
    RegObject Again;
    Must(!LoadEntry(Again, 1, Telling::Show), "what was stored is read");
    Must(Again == Read, "what was stored comes back");
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run(kv::fuzz::Input(Data, Size));
    return 0;
}
