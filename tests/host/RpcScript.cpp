#include "tests/host/RpcScript.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <streambuf>

namespace kv::test {
namespace {

using Json = nlohmann::json;

/// An input that asks for each line when it is wanted.
class Prompted final : public std::streambuf {
  public:
    explicit Prompted(std::function<std::optional<std::string>()> Source) : Source_(std::move(Source)) {}

  private:
    int_type underflow() override {
        std::optional<std::string> Next = Source_();
        if (!Next) return traits_type::eof();
        Line_ = *std::move(Next);
        Line_.push_back('\n');
        setg(Line_.data(), Line_.data(), Line_.data() + Line_.size());
        return traits_type::to_int_type(*gptr());
    }

    std::function<std::optional<std::string>()> Source_;
    std::string Line_;
};

/// What a session has told.
class Known {
  public:
    void Note(const Json& Message) {
        if (!Message.is_object() || !Message.contains("result")) return;
        const Json& Told = Message["result"];
        if (Told.is_array() && !Told.empty() && Told[0].contains("Key")) Nodes_ = Told;
        if (!Told.is_object()) return;
        if (Told.contains("Nodes")) Nodes_ = Told["Nodes"];
        if (Told.contains("Buffer")) Buffer_ = Told["Buffer"];
        for (const char* Name : {"NewItemKey", "CurrItem"})
            if (Told.contains(Name)) Key_ = Told[Name];
    }

    std::string Filled(std::string Text) const {
        Replace(Text, "@buffer", Buffer_);
        Replace(Text, "@key", Key_);
        std::map<std::string, int> Count;
        int Place = 0;
        for (const Json& Node : Nodes_) {
            const std::string Key = Node["Key"];
            Replace(Text, "@node(" + std::to_string(++Place) + ")", Key);
            const std::size_t Blank = Key.find(' ');
            if (Blank == std::string::npos) continue;
            const std::string Section = Key.substr(0, Blank);
            const int Nth = ++Count[Section];
            if (Nth == 1) Replace(Text, "@leaf(" + Section + ")", Key);
            Replace(Text, "@leaf(" + Section + "," + std::to_string(Nth) + ")", Key);
        }
        return Text;
    }

  private:
    static void Replace(std::string& Text, const std::string& Word, const Json& With) {
        for (std::size_t At = 0; (At = Text.find(Word, At)) != std::string::npos;)
            Text.replace(At, Word.size(), With.dump());
    }

    Json Nodes_ = Json::array();
    Json Buffer_ = "";
    Json Key_ = "";
};

bool Includes(const Json& Whole, const Json& Part) {
    if (!Part.is_object() || !Whole.is_object()) return Whole == Part;
    for (const auto& [Name, Value] : Part.items())
        if (!Whole.contains(Name) || !Includes(Whole[Name], Value)) return false;
    return true;
}

bool Fits(const std::string& Line, const std::string& Expected) {
    const Json Got = Json::parse(Line, nullptr, false);
    if (Got.is_discarded()) return false;
    if (Expected == "*") return Got.is_object() && Got.contains("result");
    if (Expected.starts_with('^')) {
        const std::string Beginning = Json::parse(Expected.substr(1));
        return Got.contains("result") && Got["result"]["Buffer"].get<std::string>().starts_with(Beginning);
    }
    if (Expected.starts_with('~')) return Includes(Got, Json::parse(Expected.substr(1)));
    return Got == Json::parse(Expected);
}

std::vector<std::string> SplitLines(const std::string& Text) {
    std::vector<std::string> All;
    std::istringstream Rest(Text);
    for (std::string Line; std::getline(Rest, Line);) {
        if (Line.starts_with(' ') && !All.empty())
            All.back().append(Line);
        else
            All.push_back(Line);
    }
    return All;
}

}  // namespace

std::string Quoted(std::string_view Utf8) { return Json(Utf8).dump(); }

std::string Call(std::string_view Method, std::string_view Params) {
    return std::string(R"({"jsonrpc":"2.0","id":1,"method":)")
        .append(Quoted(Method))
        .append(R"(,"params":)")
        .append(Params)
        .append("}");
}

std::string Result(std::string_view Json) {
    return std::string(R"({"jsonrpc":"2.0","id":1,"result":)").append(Json).append("}");
}

std::string Error(int Code, std::string_view Message) {
    return Json{{"jsonrpc", "2.0"}, {"id", 1}, {"error", {{"code", Code}, {"message", Message}}}}.dump();
}

std::string Error(int Code, std::string_view Message, std::string_view Source, int Line) {
    Json Data{{"Source", Source}, {"Number", Code}};
    if (Line > 0) Data["Line"] = Line;
    return Json{
        {"jsonrpc", "2.0"}, {"id", 1}, {"error", {{"code", Code}, {"message", Message}, {"data", Data}}}}
        .dump();
}

std::string WithId(std::string_view Id, std::string Answer) {
    Json Message = Json::parse(Answer);
    Message["id"] = Json::parse(Id);
    return Message.dump();
}

RpcScript::RpcScript() {
    std::string Name = (std::filesystem::temp_directory_path() / "kvdesign-rpc-XXXXXX").string();
    if (!mkdtemp(Name.data())) throw std::runtime_error("no temporary folder");
    Folder = Name;
    Options = {.Store = Folder / "store.kv", .ProgramDir = Folder, .Temp = Folder};
}

RpcScript::~RpcScript() {
    std::error_code Ignored;
    std::filesystem::remove_all(Folder, Ignored);
}

int RpcScript::Play(const std::vector<Exchange>& Exchanges, const std::string& AtEnd) {
    std::ostringstream Out;
    std::ostringstream Told;
    Known Heard;
    std::size_t Sent = 0;
    // Checks what has come back since the last line was sent.
    const auto Check = [&] {
        const std::string Text = Out.str();
        Out.str("");
        EXPECT_TRUE(Text.empty() || Text.ends_with('\n')) << Text;
        const std::vector<std::string> Got = SplitLines(Text);
        if (Sent == 0) {
            EXPECT_EQ(Text, "") << "before anything was sent";
            return;
        }
        const Exchange& Last = Exchanges[Sent - 1];
        const std::vector<std::string> Wanted = SplitLines(Heard.Filled(Last.Expect));
        bool Same = Got.size() == Wanted.size() || Last.Expect == "...";
        for (std::size_t I = 0; Same && I < Got.size() && Last.Expect != "..."; ++I)
            Same = Fits(Got[I], Wanted[I]);
        EXPECT_TRUE(Same) << "exchange " << Sent << ", sent\n  " << Last.Send << "\nexpected\n  "
                          << Heard.Filled(Last.Expect) << "\ngot\n  " << Text;
        for (const std::string& Line : Got)
            if (const Json Message = Json::parse(Line, nullptr, false); !Message.is_discarded())
                Heard.Note(Message);
    };
    Prompted Source([&]() -> std::optional<std::string> {
        Check();
        if (Sent == Exchanges.size()) return std::nullopt;
        if (Exchanges[Sent].Before) Exchanges[Sent].Before();
        return Heard.Filled(Exchanges[Sent++].Send);
    });
    std::istream In(&Source);
    const int Code = host::RunRpc(Options, In, Out, Told);
    EXPECT_EQ(Sent, Exchanges.size()) << "the session ended early: " << Told.str();
    EXPECT_EQ(Out.str(), AtEnd.empty() ? "" : AtEnd + "\n") << "when the input had ended";
    Log = Told.str();
    return Code;
}

std::string RpcScript::Raw(const std::string& Input) {
    std::istringstream In(Input);
    std::ostringstream Out;
    std::ostringstream Told;
    EXPECT_EQ(host::RunRpc(Options, In, Out, Told), 0) << Told.str();
    Log = Told.str();
    return Out.str();
}

std::vector<RpcScript::Node> RpcScript::Nodes(std::string_view Clsid, std::string_view Name) {
    const Json Request{{"jsonrpc", "2.0"},
                       {"id", 1},
                       {"method", "open"},
                       {"params", {{"Clsid", Clsid}, {"Name", Name}, {"SyntaxOn", false}}}};
    const Json Opened = Json::parse(Raw(Request.dump()), nullptr, false);
    std::vector<Node> All;
    if (Opened.is_object() && Opened.contains("result"))
        for (const Json& Each : Opened["result"]["Nodes"]) All.push_back({Each["Key"], Each["Kind"]});
    EXPECT_FALSE(All.empty()) << Opened;
    return All;
}

}  // namespace kv::test
