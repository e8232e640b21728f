// Makes the corpus and the dictionaries in the tree: fuzz_corpus <tests/golden> <fuzz>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "frame/vdbInclude.h"
#include "fuzz/Fuzz.h"
#include "host/ObjectJson.h"
#include "host/Text.h"

namespace kv::fuzz {
namespace {

namespace fs = std::filesystem;

std::size_t ClassOf(std::wstring_view Word) {
    return static_cast<std::size_t>(std::find(ClassWords().begin(), ClassWords().end(), Word) -
                                    ClassWords().begin());
}

class Maker {
  public:
    Maker(fs::path Golden, fs::path Into) : Golden_(std::move(Golden)), Into_(std::move(Into)) {}

    // From CLASS.SECTION.txt; "full" and "empty" are texts of the section PARMS, or of the one named before.
    void Sections() {
        for (const fs::path& File : FilesOf("section")) {
            const std::string Name = File.stem().string();
            const std::size_t Dot = Name.find('.');
            std::string Section = Name.substr(Dot + 1, Name.find('.', Dot + 1) - Dot - 1);
            if (Section == "full" || Section == "empty" || Section == "index")
                Section = Name.starts_with("ALIAS") ? "FIELDS" : "PARMS";
            const std::size_t Class = ClassOf(host::FromUtf8Lossy(Name.substr(0, Dot)));
            if (Class == ClassWords().size() || Name.ends_with("empty")) continue;
            Desk On(ClassWords()[Class], Grown(Class));
            const std::vector<std::wstring> Words = fuzz::Sections(On);
            const auto Place = std::find(Words.begin(), Words.end(), host::FromUtf8Lossy(Section));
            if (Place == Words.end()) {
                std::printf("no section %s\n", Name.c_str());
                continue;
            }
            const std::string Text = ReadFile(File);
            std::wstring Key = LeavesOf(On, *Place).front();
            std::printf("%-40s %s\n", Name.c_str(),
                        On.PutChecked(Key, host::FromUtf8Lossy(Text), true) ? "refused" : "");
            std::string Bytes{ChoiceByte(Class), ChoiceByte(static_cast<std::size_t>(Place - Words.begin())),
                              'A', 'C'};
            Put("section", Name, Bytes + Text);
            Words_.merge(WordsOf(Text));
        }
    }

    void Exports() {
        for (const fs::path& File : FilesOf("export")) {
            const std::string Name = File.stem().string();
            const std::string Text = ReadFile(File);
            Words_.merge(WordsOf(Text));
            const std::size_t Class = ClassOf(host::FromUtf8Lossy(Name));
            if (Name == "IMPORTPROC") Put("import", Name, "AA" + Text);
            if (Name == "TABLE" || Name == "PROFILE")
                Put("import", Name, std::string{ChoiceByte(Class), 'A'} + Text);
        }
    }

    // The grown object of each class, and a filled one of those whose section texts are there.
    void Objects() {
        for (std::size_t Class = 0; Class < ClassWords().size(); ++Class) {
            const std::wstring_view Word = ClassWords()[Class];
            const std::string Name = host::ToUtf8Lossy(Word);
            Desk On(Word, Grown(Class));
            for (const std::wstring& Section : fuzz::Sections(On))
                for (const std::string Kind : {".full", ""}) {
                    const fs::path File =
                        Golden_ / "section" /
                        (Name + (Section == L"PARMS" ? "" : "." + host::ToUtf8Lossy(Section)) + Kind +
                         ".txt");
                    if (!fs::exists(File)) continue;
                    const std::vector<std::wstring> Leaves = LeavesOf(On, Section);
                    if (!Leaves.empty())
                        static_cast<void>(
                            On.PutChecked(Leaves.front(), host::FromUtf8Lossy(ReadFile(File)), true));
                    break;
                }
            On.SaveChecked();
            const RegObject& Made = On.Object->Read();
            const std::string Json = host::ToJsonText(Made);
            Put("stored", Name, std::string{ChoiceByte(Class), 'A'} + Json);
            std::wstring Path = (Folder() / "clip").wstring();
            Must(!ClipboardStore(Made, Path), "it goes to the clipboard");
            if (Json.size() < 3000 || Word == L"TABLE")
                Put("clipboard", Name,
                    std::string{ChoiceByte(Class), 'C', 'A'} + ReadFile(Folder() / "clip"));
            if (Word == L"TABLE")
                for (const std::wstring_view Maps : {L"IMPORTPROC", L"PROFILE"})
                    Put("clipboard", "TABLE." + host::ToUtf8Lossy(Maps),
                        std::string{ChoiceByte(ClassOf(Maps)), 'C', 'A'} + ReadFile(Folder() / "clip"));
            Put("rpc", Name, Session(On, Name));
            Names_.merge(NamesOf(Made));
        }
        std::string Table;
        for (int Code = 0; Code < 256; ++Code)
            Table.push_back(static_cast<char>(DefaultSortWeight(static_cast<std::uint8_t>(Code))));
        Put("program_folder", "table", "A" + Table);
        Put("program_folder", "ini", "C[Velmira]\r\nStore=kvdesign.db\r\n");
        Put("program_folder", "empty", "A");
        Put("program_folder", "short", "A" + Table.substr(0, 100));
    }

    void Dictionaries() {
        std::string Sections;
        for (const std::string& Word : Words_) Sections += "\"" + Word + "\"\n";
        Dictionary("section", Sections +
                                  "\"\\x0d\\x0a\"\n\"|\"\n\"= TRUE\\x0d\\x0a\"\n\"= FALSE\\x0d\\x0a\"\n\"= "
                                  "\\\"\\\"\\x0d\\x0a\"\n\"\\x1e\"\n\"&H\"\n");
        std::string Members;
        for (const char* const Member : {"Name", "Desc", "Version", "Id", "UserList", "Text", "Number2",
                                         "Number3", "String3", "String4", "String5", "Values", "Children"})
            Members += "\"\\\"" + std::string(Member) + "\\\":\"\n";
        std::string Named;
        for (const std::string& Name : Names_) Named += "\"" + Name + "\"\n";
        Dictionary("stored", Members + Named);
        Dictionary("clipboard", Named);
        std::string Methods = Members;
        for (const char* const Method : {"registry/list",
                                         "registry/create",
                                         "registry/delete",
                                         "registry/export",
                                         "registry/import",
                                         "registry/object",
                                         "server/version",
                                         "open",
                                         "tree",
                                         "choices",
                                         "SyntaxOn",
                                         "modified",
                                         "DispData",
                                         "SaveData",
                                         "EditData",
                                         "MoveData",
                                         "DeleteData",
                                         "CopyData",
                                         "PasteData",
                                         "ShowPropTable",
                                         "TlbrButtonClick",
                                         "GetObjectInfo",
                                         "HelpShow",
                                         "Save",
                                         "close",
                                         "FINDTAG",
                                         "RENUMTAG",
                                         "MAPTABLE",
                                         "CONSTANTS",
                                         "Clsid",
                                         "CurrItem",
                                         "CurrFolder",
                                         "Index",
                                         "Key",
                                         "Buffer",
                                         "Direction",
                                         "Group",
                                         "Path",
                                         "Section",
                                         "Keyword",
                                         "HelpItem",
                                         "Method",
                                         "Value",
                                         "jsonrpc",
                                         "2.0",
                                         "id",
                                         "params",
                                         "PROVA"})
            Methods += "\"\\\"" + std::string(Method) + "\\\"\"\n";
        for (const std::wstring_view Word : ClassWords())
            Methods += "\"\\\"" + host::ToUtf8Lossy(Word) + "\\\"\"\n";
        Dictionary("rpc", Methods + "\":@A\"\n\":@C\"\n\"\\\\r\\\\n\"\n");
    }

  private:
    std::vector<fs::path> FilesOf(const char* Kind) const {
        std::vector<fs::path> Files;
        for (const fs::directory_entry& File : fs::directory_iterator(Golden_ / Kind))
            if (File.path().extension() == ".txt") Files.push_back(File.path());
        std::sort(Files.begin(), Files.end());
        return Files;
    }

    // The object is opened, each of a few nodes is shown and taken through the operations, and saved.
    static std::string Session(Desk& On, const std::string& Class) {
        constexpr std::size_t kNodes = 12;
        using Json = nlohmann::ordered_json;
        std::string Lines;
        int Id = 0;
        const auto Say = [&](const char* Method, const Json& Params, const std::string& Node = "") {
            std::string Line =
                Json{{"jsonrpc", "2.0"}, {"id", ++Id}, {"method", Method}, {"params", Params}}.dump();
            if (!Node.empty()) Line.replace(Line.find("\"@\""), 3, "@" + Node);
            Lines += Line + "\n";
        };
        const Json Object{{"Clsid", Class}, {"Name", "PROVA"}};
        Say("open", Object);
        std::size_t Place = 0;
        std::set<std::wstring, std::less<>> Seen;
        On.Tree().ForEach([&](const window::TreeNode& Node) {
            const std::string At(1, ChoiceByte(Place++));
            if (Place > 50 || Seen.size() > kNodes || !Seen.emplace(SectionWord(Node.Key)).second) return;
            if (!IsLeafKey(Node.Key)) {
                Say("EditData", {{"CurrItem", "@"}}, At);
                return;
            }
            Say("DispData", {{"CurrItem", "@"}}, At);
            std::wstring Text;
            if (!On.Disp(Node.Key, Text) && Text.size() < 600)
                Say("SaveData", {{"CurrItem", "@"}, {"Buffer", host::ToUtf8Lossy(Text)}}, At);
            Say("MoveData", {{"CurrItem", "@"}, {"Direction", 1}}, At);
        });
        Say("TlbrButtonClick", {{"CurrItem", "@"}, {"Method", "RENUMTAG"}}, "B");
        Lines += R"({"jsonrpc":"2.0","id":"host-1","result":"Yes"})"
                 "\n";
        Say("CopyData", {{"CurrItem", "@"}, {"Group", false}}, "A");
        Say("PasteData", {{"CurrItem", "@"}}, "A");
        Say("DeleteData", {{"CurrItem", "@"}, {"Group", false}}, "C");
        Say("Save", Json::object());
        Say("close", Json::object());
        Say("registry/export", Object);
        return Lines;
    }

    // The keywords of a text, with their "=", and the values in capitals.
    static std::set<std::string> WordsOf(const std::string& Text) {
        std::set<std::string> Words;
        for (std::size_t At = 0; At < Text.size();) {
            std::size_t End = At;
            while (End < Text.size() &&
                   ((Text[End] >= 'A' && Text[End] <= 'Z') || (Text[End] >= '0' && Text[End] <= '9')))
                ++End;
            if (End - At > 2 && Text[At] > '9')
                Words.insert(Text.substr(At, End - At + (Text[End] == '=' ? 1 : 0)));
            At = std::max(End, At + 1);
        }
        return Words;
    }

    static std::set<std::string> NamesOf(const RegObject& Object) {
        std::set<std::string> Names;
        for (const RegNamedValue& Value : Object.Values) Names.insert(host::ToUtf8Lossy(Value.Name));
        for (const RegObject& Child : Object.Children) {
            if (!Child.Name.empty() && !Child.Children.empty()) Names.insert(host::ToUtf8Lossy(Child.Name));
            Names.merge(NamesOf(Child));
        }
        return Names;
    }

    void Put(const char* Target, const std::string& Name, const std::string& Bytes) const {
        const fs::path Into = Into_ / "corpus" / Target;
        fs::create_directories(Into);
        WriteFile(Into / Name, Bytes);
    }
    void Dictionary(const char* Target, const std::string& Text) const {
        fs::create_directories(Into_ / "dict");
        WriteFile(Into_ / "dict" / Target, Text);
    }

    fs::path Golden_;
    fs::path Into_;
    std::set<std::string> Words_;
    std::set<std::string> Names_;
};

}  // namespace
}  // namespace kv::fuzz

int main(int Count, char** Words) {
    if (Count != 3) {
        std::fprintf(stderr, "usage: fuzz_corpus <tests/golden> <fuzz>\n");
        return 2;
    }
    kv::fuzz::Maker Make(Words[1], Words[2]);
    Make.Sections();
    Make.Exports();
    Make.Objects();
    Make.Dictionaries();
    return 0;
}
