// The files of the program's folder, VELMIRA.INI and KVDSRT.TAB. An input: a byte that chooses which of them
// are there; then the bytes of both. Nothing reads VELMIRA.INI, only its name is handed on: what it holds
// changes nothing, and it stays as it is. KVDSRT.TAB becomes the table of a new sort order.
#include "frame/vdbInclude.h"
#include "fuzz/Fuzz.h"

namespace kv::fuzz {
namespace {

void Run(Input In) {
    Operator::Instance();
    static const std::size_t kSort = [] {
        std::size_t At = 0;
        while (ClassWords()[At] != L"SORT") ++At;
        return At;
    }();
    const std::size_t There = In.Choose(4);
    const std::string Ini(In.Rest());
    const std::filesystem::path IniFile = Folder() / "VELMIRA.INI";
    const std::filesystem::path Table = Folder() / kSortTableFile;
    std::filesystem::remove(IniFile);
    std::filesystem::remove(Table);
    if ((There & 1) == 0) WriteFile(IniFile, Ini);
    if ((There & 2) == 0) WriteFile(Table, In.Rest());

    std::wstring Loaded;
    Must(!Operator::Instance().Try([&] { return DefaultSortLoad(Loaded); }), "the table is loaded");
    Must(Loaded.size() == ((There & 2) == 0 ? In.Rest().size() : 256), "the table is loaded whole");
    RegObject New = Grown(kSort);
    New.Values.clear();
    New.Children.clear();
    for (const bool Strict : {true, false}) Exercise(ClassWords()[kSort], New, Strict);
    if ((There & 1) == 0)
        Must(ReadFile(IniFile) == Ini, "the configuration file is left alone");
    else
        Must(!std::filesystem::exists(IniFile), "no configuration file is made");
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run(kv::fuzz::Input(Data, Size));
    return 0;
}
