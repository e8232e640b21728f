// Sessions of the headless host. An input is the lines that a client sends; in them ":@A" stands for the key
// of the first node of the last tree, ":@B" for that of the second. The registry holds an object of each
// class, "PROVA".
#include <nlohmann/json.hpp>
#include <sstream>
#include <streambuf>

#include "fuzz/Fuzz.h"
#include "host/KvRegSvr.h"
#include "host/RpcChannel.h"
#include "host/RpcHost.h"

namespace kv::fuzz {
namespace {

using host::JsonIn;

/// The client: an output that checks what it is told, and an input that knows it.
class Client final : public std::streambuf {
  public:
    explicit Client(std::string_view Lines) : Lines_(Lines) {}

    /// What the host writes comes here.
    std::ostringstream Told;

    /// Checks what has come since the last call.
    void Hear() {
        std::istringstream Come(std::exchange(Told, std::ostringstream()).str());
        Asked_.clear();
        for (std::string Line; std::getline(Come, Line);) {
            const JsonIn Message = JsonIn::parse(Line, nullptr, false);
            Must(Message.is_array() ? !Message.empty() : Message.is_object(), "what is told is JSON");
            if (Message.is_array())
                for (const JsonIn& Each : Message) Hear(Each);
            else
                Hear(Message);
        }
    }

    /// Whether each request has had its one answer, where that can be told from the lines alone.
    void CheckCount() const { Must(!Counts_ || Answers_ == Wanted_, "each request has one answer"); }

  private:
    void Hear(const JsonIn& Message) {
        Must(Message.is_object() && Message.value("jsonrpc", "") == "2.0", "what is told is of the protocol");
        if (Message.contains("method")) {
            if (!Message.contains("id")) return;
            Asked_ = Message["id"].get<std::string>();
            AskedForFile_ = Message["method"] == "window/saveFile";
            Counts_ = false;  // the next line may be the answer
            return;
        }
        ++Answers_;
        Must(Message.contains("id") && Message.contains("result") != Message.contains("error"),
             "an answer has a result or an error");
        if (Message.contains("error")) {
            const JsonIn& Error = Message["error"];
            Must(Error["code"].is_number_integer() && Error["message"].is_string(),
                 "an error has a code and a text");
            Must(Error["code"] != host::rpc_code::kInternal, "the host does not fail");
            return;
        }
        const JsonIn& Result = Message["result"];
        if (Result.is_object() && Result.contains("Nodes"))
            Nodes_ = Result["Nodes"];
        else if (Result.is_array() && !Result.empty() && Result[0].contains("Key"))
            Nodes_ = Result;
    }

    int_type underflow() override {
        Hear();
        if (Lines_.empty()) return traits_type::eof();
        const std::size_t End = Lines_.find('\n');
        Line_ = Filled(Lines_.substr(0, End));
        Lines_.remove_prefix(End == std::string_view::npos ? Lines_.size() : End + 1);
        // A file is written in the folder of this process and nowhere else.
        if (!Asked_.empty() && AskedForFile_)
            Line_ = JsonIn{{"jsonrpc", "2.0"}, {"id", Asked_}, {"result", (Folder() / "chosen.txt").string()}}
                        .dump();
        Count();
        Line_.push_back('\n');
        setg(Line_.data(), Line_.data(), Line_.data() + Line_.size());
        return traits_type::to_int_type(*gptr());
    }

    std::string Filled(std::string_view Line) const {
        std::string Out;
        for (std::size_t At = 0; At < Line.size(); ++At) {
            Out.push_back(Line[At]);
            if (Line[At] != ':' || At + 2 >= Line.size() || Line[At + 1] != '@' || Nodes_.empty()) continue;
            const auto Nth = static_cast<std::uint8_t>(Line[At + 2] - 'A') % Nodes_.size();
            Out.append(Nodes_[Nth]["Key"].dump());
            At += 2;
        }
        return Out;
    }

    void Count() {
        if (Line_.find_first_not_of(" \t\r") == std::string::npos) return;
        const std::optional<host::RpcLine> Read = host::ParseLine(Line_);
        if (!Read) {
            ++Wanted_;
            return;
        }
        const JsonIn& Body = Read->Value;
        if (Body.is_array()) Counts_ = false;  // its answers come as one, or not at all
        if (!Body.is_object()) {
            ++Wanted_;
            return;
        }
        const bool IsRequest = Body.value("jsonrpc", JsonIn()) == "2.0" &&
                               Body.value("method", JsonIn()).is_string() &&
                               (!Body.contains("params") || Body["params"].is_structured());
        if (!IsRequest || Body.contains("id")) ++Wanted_;
    }

    std::string_view Lines_;
    std::string Line_;
    JsonIn Nodes_ = JsonIn::array();
    std::string Asked_;
    bool AskedForFile_ = false;
    bool Counts_ = true;
    int Wanted_ = 0;
    int Answers_ = 0;
};

constexpr std::int64_t kGrownRevision = 2;  // made and written once

const std::string& GrownStore() {
    static const std::string kBytes = [] {
        const std::filesystem::path File = Folder() / "made.db";
        {
            host::KvRegSvr Registry(File);
            for (std::size_t Class = 0; Class < ClassWords().size(); ++Class) {
                Registry.Create(ClassWords()[Class], L"PROVA", L"");
                const auto Made = Registry.Open(ClassWords()[Class], L"PROVA");
                Made->SetSaving(true);
                Made->Write(Grown(Class));
            }
        }
        return ReadFile(File);
    }();
    return kBytes;
}

void Run(std::string_view Lines) {
    Operator::Instance();
    const host::RpcOptions Options{.Store = Folder() / "store.db", .ProgramDir = Folder(), .Temp = Folder()};
    for (const char* const Left : {"KVDSCLP.TMP", "KVDSRT.TAB", "chosen.txt", "store.db-journal"})
        std::filesystem::remove(Folder() / Left);
    WriteFile(Options.Store, GrownStore());

    Client Speaking(Lines);
    std::istream In(&Speaking);
    std::ostringstream Log;
    Must(host::RunRpc(Options, In, Speaking.Told, Log) == 0, "the session ends well");
    Speaking.Hear();
    Speaking.CheckCount();
    Must(Log.str().empty(), "there is nothing to log");
    Must(CoreUtil::Instance().LastError().Empty(), "no error is left");

    host::KvRegSvr Registry(Options.Store);
    for (const host::RegistryEntry& Entry : Registry.List())
        if (Entry.Revision != kGrownRevision) Registry.ReadStored(Entry.Clsid, Entry.Name);
}

}  // namespace
}  // namespace kv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
    kv::fuzz::Run({reinterpret_cast<const char*>(Data), Size});
    return 0;
}
