// Stored objects. An input: bytes that choose the class, and strict or lax; then the content of a registry's
// row, JSON.
#include "fuzz/Fuzz.h"
#include "host/ObjectJson.h"

namespace kv::fuzz {
namespace {

void Run(Input In) {
    Operator::Instance();
    const std::wstring_view Word = ClassWords()[In.Choose(ClassWords().size())];
    const bool Strict = In.Choose(2) == 0;
    RegObject Content;
    try {
        Content = host::FromJsonText(In.Rest(), L"PROVA");
    } catch (const Failure& Refused) {
        Must(!Refused.Error().Description.empty(), "a refusal says why");
        return;
    }
    Must(host::FromJsonText(host::ToJsonText(Content), L"PROVA") == Content, "what was read comes back");
    Exercise(Word, Content, Strict);
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run(kv::fuzz::Input(Data, Size));
    return 0;
}
