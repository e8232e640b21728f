#include "fuzz/Fuzz.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "host/ObjectJson.h"
#include "host/Text.h"

namespace kv::fuzz {
namespace {

constexpr std::size_t kShownAtMost = 4000;  // characters, of what a broken rule is told with

}  // namespace

void Must(bool Holds, std::string_view What, std::wstring_view More) {
    if (Holds) return;
    std::fprintf(stderr, "broken rule: %s\n", std::string(What).c_str());
    for (const wchar_t C : More.substr(0, kShownAtMost)) {
        if ((C >= L' ' && C < 0x7F) || C == L'\r' || C == L'\n')
            std::fputc(static_cast<char>(C), stderr);
        else
            std::fprintf(stderr, "\\x%02X", static_cast<unsigned>(C));
    }
    std::fputc('\n', stderr);
    std::abort();
}

void MustEqual(const std::wstring& Got, const std::wstring& Wanted, std::string_view What) {
    if (Got != Wanted) Must(false, What, Wanted + L"\n-- as --\n" + Got);
}

std::size_t Input::Choose(std::size_t Bound) {
    if (Rest_.empty()) return 0;
    const auto Byte = static_cast<std::uint8_t>(static_cast<std::uint8_t>(Rest_.front()) - 'A');
    Rest_.remove_prefix(1);
    return Bound == 0 ? 0 : Byte % Bound;
}

std::string_view Input::Until(char Mark) {
    const std::size_t At = Rest_.find(Mark);
    const std::string_view Found = Rest_.substr(0, At);
    Rest_.remove_prefix(At == std::string_view::npos ? Rest_.size() : At + 1);
    return Found;
}

char ChoiceByte(std::size_t Choice) { return static_cast<char>('A' + Choice); }

const std::filesystem::path& Folder() {
    struct Made {
        std::filesystem::path Path =
            std::filesystem::temp_directory_path() / ("kvfuzz-" + std::to_string(::getpid()));
        Made() { std::filesystem::create_directories(Path); }
        ~Made() {
            std::error_code Ignored;
            std::filesystem::remove_all(Path, Ignored);
        }
    };
    static const Made kFolder;
    return kFolder.Path;
}

void WriteFile(const std::filesystem::path& File, std::string_view Bytes) {
    std::ofstream Out(File, std::ios::binary | std::ios::trunc);
    Out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
}

std::string ReadFile(const std::filesystem::path& File) {
    std::ifstream In(File, std::ios::binary);
    return {std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>()};
}

Operator& Operator::Instance() {
    static Operator* const kThe = new Operator;  // outlives whatever may show something at the end
    return *kThe;
}

Operator::Operator() { CoreUtil::Instance().SetPlatform(this); }

Answer Operator::MessageBox(std::wstring_view, std::int32_t Style) {
    return Agrees && (Style & box::kButtons) != box::kOk ? Answer::Yes : DefaultAnswer(Style);
}

std::optional<std::wstring> Operator::SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                               std::int32_t) {
    if (!Agrees) return std::nullopt;
    return (Folder() / "chosen.txt").wstring();
}

void Operator::Settle(bool Failed) {
    Must(Failed || Shown.empty(), "a success shows nothing", Shown.empty() ? L"" : Shown.front().Description);
    Must(Shown.size() <= 1, "an error is shown once");
    for (const KvError& Error : Shown) {
        Must(Error.Number != 0, "an error that is shown has a number", Error.Description);
        Must(!Error.Source.empty(), "an error that is shown has a source", Error.Description);
        Must(!Error.Description.empty(), "an error that is shown has a text", Error.Source);
    }
    Must(CoreUtil::Instance().LastError().Empty(), "no error waits to be shown later",
         CoreUtil::Instance().LastError().Description);
}

// An open object.

Desk::Desk(std::wstring_view ClassWord, RegObject Content)
    : Object(std::make_shared<MemoryRegData>(ClassWord, std::move(Content))),
      Server(nullptr, [this] { return Tree_; }),
      Core(Server, *Tree_, *Object, Clipboard_) {
    Operator::Instance();
    Tree_->SetFace(this);
    RegData* Target = nullptr;
    Must(!Server.ShowData(nullptr, Object, std::wstring(ClassWord), Target, false), "a window opens");
    Opened_ = !Load();
}

Desk::~Desk() { Tree_->SetFace(nullptr); }

bool Desk::Load() {
    Seen_.reset();
    Separated_ = false;
    return Operator::Instance().Try([&] { return Core.LoadData(); });
}

std::vector<std::wstring> Desk::Keys(bool Leaves) const {
    std::vector<std::wstring> Found;
    Tree_->ForEach([&](const window::TreeNode& Node) {
        if (IsLeafKey(Node.Key) == Leaves) Found.push_back(Node.Key);
    });
    return Found;
}

bool Desk::Disp(const std::wstring& Key, std::wstring& Text) {
    Text.clear();
    return Operator::Instance().Try([&] { return Core.DispData({.CurrItem = Key}, Text); });
}

std::vector<std::wstring> Desk::Texts() {
    std::vector<std::wstring> All;
    for (const std::wstring& Key : Keys(true))
        if (Disp(Key, All.emplace_back())) All.back().clear();
    return All;
}

bool Desk::Put(std::wstring& Key, std::wstring Text, bool Strict) {
    Tree_->SetSyntaxOn(Strict);
    const std::wstring Typed = Text;
    std::wstring NewItemKey;
    const bool Failed =
        Operator::Instance().Try([&] { return Core.SaveData({.CurrItem = Key}, Text, NewItemKey); });
    Must(Text == Typed, "the operator's text is not eaten", Typed);
    // An element that was renamed may have a new leaf.
    if (!Failed && !Tree_->HasNode(Key)) Key = NewItemKey;
    return Failed;
}

bool Desk::PutChecked(std::wstring Key, const std::wstring& Text, bool Strict) {
    if (!Seen_) Seen_ = See();
    const bool Modified = Tree_->Modified();
    if (Put(Key, Text, Strict)) {
        Must(See() == *Seen_, "a refused text changes nothing", Text);
        Must(Tree_->Modified() == Modified, "a refused text leaves the mark alone", Text);
        return true;
    }
    Seen_.reset();
    if (Text.find(L'\0') != std::wstring::npos) Separated_ = true;
    std::wstring Shown;
    std::wstring Again;
    Must(!Disp(Key, Shown), "what was accepted can be shown", Text);
    if (Separated_) return false;
    Must(!Put(Key, Shown, Strict), "what is shown is accepted", Shown);
    Must(!Disp(Key, Again), "what was shown can be shown again", Shown);
    MustEqual(Again, Shown, "what was shown comes back");
    return false;
}

void Desk::SaveChecked() {
    const std::vector<std::wstring> Before =
        Texts();  // first: rendering may fill in what is made on first sight
    const RegObject Stored = Object->Read();
    if (Operator::Instance().Try([&] { return Core.Save(); })) {
        Must(Object->Read() == Stored, "a refused save leaves the stored object alone");
        return;
    }
    Must(!Tree_->Modified(), "nothing is unsaved after a save");
    const std::string Json = host::ToJsonText(Object->Read());
    Must(host::FromJsonText(Json, L"") == Object->Read(), "the stored form comes back from the registry");
    Must(!Load(), "what was saved can be loaded");
    const std::vector<std::wstring> After = Texts();
    for (std::size_t I = 0; I < std::min(Before.size(), After.size()); ++I)
        MustEqual(After[I], Before[I], "what was saved comes back");
    Must(Before.size() == After.size(), "what was saved has as many leaves");
}

std::optional<std::wstring> Desk::Exported(bool Strict) {
    const auto OfItsOwn = std::make_shared<window::TreeModel>();
    OfItsOwn->SetSyntaxOn(Strict);
    vdSvr Exporter(nullptr, [&] { return OfItsOwn; });
    std::wstring Text;
    if (Operator::Instance().Try([&] { return Exporter.Export(Object, Object->Clsid(), Text); }))
        return std::nullopt;
    return Text;
}

Desk::Sight Desk::See() {
    Sight Seen;
    Tree_->ForEach([&](const window::TreeNode& Node) {
        for (const window::TreeNode* N = Node.Parent; N; N = N->Parent) Seen.Tree.push_back(L' ');
        Seen.Tree.append(Node.Key).append(L" ").append(Node.Text).append(L"\n");
    });
    MemoryRegData Copy(Object->Clsid());
    ClipItem Into{.DataObj = std::shared_ptr<RegData>(std::shared_ptr<void>(), &Copy),
                  .ClassWord = Object->Clsid()};
    const bool Failed = Operator::Instance().Try(
        [&] { return Server.CopyData(Object->Clsid(), Head{.Key = L"ROOT"}, false, Into); });
    if (!Failed && Copy.Written())
        Seen.Copy = Copy.Read();
    else
        Seen.Texts = Texts();
    return Seen;
}

// Objects.

const RegObject& Grown(std::size_t Class) {
    static std::array<std::optional<RegObject>, 64> kMade;
    std::optional<RegObject>& Made = kMade.at(Class);
    if (Made) return *Made;
    const std::wstring_view Word = ClassWords()[Class];
    RegObject Content;
    Content.Id = 7;
    Content.Name = L"PROVA";
    Content.Desc = L"Oggetto di prova";
    Content.Version = 3;
    Content.UserList = L"ADMIN";
    Desk On(Word, Content);
    Must(On.Opened(), "an empty object opens", Word);
    On.Tree().SetSyntaxOn(false);
    for (int Round = 0; Round < 2; ++Round)
        for (const std::wstring& Key : On.Keys(false)) {
            if (!On.Tree().HasNode(Key)) continue;
            std::wstring New;
            if (Operator::Instance().Try([&] { return On.Core.EditData({.CurrItem = Key}, New); })) continue;
            // Its elements may not bear one name.
            if (Word == L"CATPROC" && Key == L"FIELDS")
                Must(!On.Put(New, L"NAME= C" + std::to_wstring(Round), false), "a component takes a name");
            if (Operator::Instance().Try([&] { return On.Core.Save(); })) Must(!On.Load(), "it loads", Word);
        }
    On.Texts();
    Must(!Operator::Instance().Try([&] { return On.Core.Save(); }), "a grown object is saved", Word);
    Made = On.Object->Read();
    return *Made;
}

std::vector<std::wstring> Sections(const Desk& Of) {
    std::vector<std::wstring> Words;
    for (const std::wstring& Key : Of.Keys(true)) {
        const std::wstring Word(SectionWord(Key));
        if (std::find(Words.begin(), Words.end(), Word) == Words.end()) Words.push_back(Word);
    }
    return Words;
}

std::vector<std::wstring> LeavesOf(const Desk& Of, std::wstring_view Section) {
    std::vector<std::wstring> Found = Of.Keys(true);
    std::erase_if(Found, [&](const std::wstring& Key) { return SectionWord(Key) != Section; });
    return Found;
}

void Exercise(std::wstring_view ClassWord, const RegObject& Content, bool Strict) {
    constexpr std::size_t kNodes = 24;  // of each kind; more of them tell nothing new
    Operator& Who = Operator::Instance();
    Desk On(ClassWord, Content);
    Must(On.Object->Read() == Content, "loading changes nothing");
    if (!On.Opened()) return;
    std::vector<std::wstring> Leaves = On.Keys(true);
    if (Leaves.size() > kNodes) Leaves.resize(kNodes);
    for (const std::wstring& Key : Leaves) {
        std::wstring Text;
        if (!On.Tree().HasNode(Key) || On.Disp(Key, Text)) continue;
        On.PutChecked(Key, Text, Strict);
    }
    On.SaveChecked();
    const std::optional<std::wstring> First = On.Exported(Strict);
    Must(First == On.Exported(Strict), "an export is stable");
    On.Tree().SetSyntaxOn(Strict);
    Who.Agrees = Strict;
    for (const std::wstring_view Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"}) {
        const std::vector<std::wstring> Nodes = On.Keys(true);
        if (Nodes.empty()) break;
        Who.Shown.clear();
        On.Core.TlbrButtonClick(std::wstring(Tool), {.CurrItem = Nodes.back()});
        Must(Who.Shown.size() <= 1, "a tool shows one error");
        if (On.Load()) return;
    }
    Who.Agrees = false;
    std::vector<std::wstring> Folders = On.Keys(false);
    if (Folders.size() > kNodes) Folders.resize(kNodes);
    for (const std::wstring& Key : Folders) {
        std::wstring New;
        if (!On.Tree().HasNode(Key)) continue;
        if (Who.Try([&] { return On.Core.EditData({.CurrItem = Key}, New); })) continue;
        std::wstring Moved;
        for (const std::int32_t Direction : {1, -1})
            if (On.Tree().HasNode(New))
                if (!Who.Try([&] { return On.Core.MoveData({.CurrItem = New}, Direction, Moved); }))
                    New = Moved;
        if (On.Tree().HasNode(New))
            static_cast<void>(Who.Try([&] { return On.Core.DeleteData({.CurrItem = New}, Strict); }));
    }
    On.Texts();
    On.Load();
}

}  // namespace kv::fuzz
