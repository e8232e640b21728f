// Section texts of every class through SaveData. An input: a byte that chooses the class, then steps ended by
// the byte 1E; a step: bytes that choose the section, one of its leaves and how it is saved, and the text in
// UTF-8. The steps meet one object, which has a few elements in each of its lists.
#include <array>

#include "fuzz/Fuzz.h"
#include "host/Text.h"

namespace kv::fuzz {
namespace {

constexpr int kSteps = 4;

// The objects stay open from input to input; one that was changed is loaded anew.
Desk& DeskOf(std::size_t Class) {
    static std::array<std::unique_ptr<Desk>, 64> kDesks;
    std::unique_ptr<Desk>& Kept = kDesks.at(Class);
    if (!Kept) Kept = std::make_unique<Desk>(ClassWords()[Class], Grown(Class));
    return *Kept;
}

void Run(Input In) {
    const std::size_t Class = In.Choose(ClassWords().size());
    Desk& On = DeskOf(Class);
    bool Changed = false;
    for (int Step = 0; Step < kSteps && !In.Rest().empty(); ++Step) {
        Input One(In.Until('\x1E'));
        const std::vector<std::wstring> Words = Sections(On);
        const std::vector<std::wstring> Leaves = LeavesOf(On, Words[One.Choose(Words.size())]);
        const std::wstring& Key = Leaves[One.Choose(Leaves.size())];
        const std::size_t How = One.Choose(4);
        if (On.PutChecked(Key, host::FromUtf8Lossy(One.Rest()), (How & 1) == 0)) continue;
        Changed = true;
        if ((How & 2) != 0) On.SaveChecked();
    }
    if (!Changed) return;
    if (!(On.Object->Read() == Grown(Class))) On.Object->Write(Grown(Class));
    Must(!On.Load(), "the object loads as before");
    On.Tree().MarkModified(false);
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run(kv::fuzz::Input(Data, Size));
    return 0;
}
