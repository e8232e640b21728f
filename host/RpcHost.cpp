#include "host/RpcHost.h"

#include <algorithm>
#include <istream>
#include <iterator>
#include <memory>
#include <ostream>
#include <utility>

#include "frame/MsgUtil.h"
#include "host/KvRegSvr.h"
#include "host/ObjectJson.h"
#include "host/ObjectWindow.h"
#include "host/RpcChannel.h"
#include "host/RpcPlatform.h"

namespace kv::host {
namespace {

constexpr std::int32_t kUnknownClass = 20004;
constexpr int kExitDone = 0;
constexpr int kExitFailed = 3;

Json Empty() { return Json::object(); }

Json One(const char* Name, Json Value) {
    Json Result = Json::object();
    Result[Name] = std::move(Value);
    return Result;
}

/// The platform of the process for as long as it lives.
class PlatformScope {
  public:
    explicit PlatformScope(Platform& Door) : Before_(CoreUtil::Instance().SetPlatform(&Door)) {}
    PlatformScope(const PlatformScope&) = delete;
    PlatformScope& operator=(const PlatformScope&) = delete;
    ~PlatformScope() { CoreUtil::Instance().SetPlatform(Before_); }

  private:
    Platform* Before_;
};

/// The id under which a request is answered; nothing when it is not to be answered.
using ReplyTo = std::optional<Json>;

struct Request {
    RpcParams Params;
    const ReplyTo& Id;
};

/// The result of a request; nothing when the request has been answered already, or will be later.
using Outcome = std::optional<Json>;

/// When a request may come.
enum class Moment { Any, Closed, Open };

class RpcSession {
  public:
    RpcSession(const RpcOptions& Options, std::istream& In, std::ostream& Out, std::ostream& Log)
        : Registry_(Options.Store),
          Channel_(In, Out),
          Platform_(Channel_, Options.ProgramDir, Options.Temp),
          Scope_(Platform_),
          Side_(&Registry_, [] { return std::make_shared<window::TreeModel>(); }),
          Log_(Log) {}

    /// Works requests until the input ends. True when the output has failed.
    bool Run() {
        Serve();
        return Channel_.Broken();
    }

  private:
    struct Row {
        std::string_view Method;
        Moment Fits;
        Outcome (RpcSession::*Handle)(const Request&);
    };
    static const Row kRequests[];

    // Lines and requests. What an `open` starts is served inside it, so that these run nested at times.

    struct Message {
        std::shared_ptr<const RpcLine> Line;
        const JsonIn* Body;
    };
    void Serve();
    std::optional<Message> Next();
    void Work(const Message& Read);
    Outcome Carry(const Message& Read, const ReplyTo& Id);
    void Succeed(const ReplyTo& Id, Json Result) {
        if (Id) Reply(ResultMessage(*Id, std::move(Result)));
    }
    void Fail(const ReplyTo& Id, const RpcError& Error) {
        if (Id) Reply(ErrorMessage(*Id, Error));
    }
    void Reply(Json Answer);
    void TellModified();

    // What the handlers share.

    void Must(bool Failed);
    template <class Body>
    void InRegistry(std::wstring_view Source, Body&& Run);
    std::shared_ptr<RegData> Stored(const RpcParams& P, std::shared_ptr<RegistryObject>* Kept = nullptr);
    static window::Selection Overridden(const RpcParams& P, std::wstring CurrItem);
    window::Selection Selected(const RpcParams& P) const;
    window::TreeModel& Tree() const { return Core_->Tree(); }
    Json Nodes() const;
    Json Info();

    // Handlers.

    Outcome ServerVersion(const Request& R);
    Outcome RegistryList(const Request& R);
    Outcome RegistryCreate(const Request& R);
    Outcome RegistryDelete(const Request& R);
    Outcome RegistryExport(const Request& R);
    Outcome RegistryImport(const Request& R);
    Outcome RegistryStored(const Request& R);
    Outcome Open(const Request& R);
    Outcome Close(const Request& R);
    Outcome GetTree(const Request& R);
    Outcome Choices(const Request& R);
    Outcome SyntaxOn(const Request& R);
    Outcome Modified(const Request& R);
    Outcome DispData(const Request& R);
    Outcome SaveData(const Request& R);
    Outcome EditData(const Request& R);
    Outcome MoveData(const Request& R);
    Outcome DeleteData(const Request& R);
    Outcome CopyData(const Request& R);
    Outcome PasteData(const Request& R);
    Outcome ShowPropTable(const Request& R);
    Outcome TlbrButtonClick(const Request& R);
    Outcome GetObjectInfo(const Request& R);
    Outcome HelpShow(const Request& R);
    Outcome Save(const Request& R);

    KvRegSvr Registry_;
    RpcChannel Channel_;
    RpcPlatform Platform_;
    PlatformScope Scope_;
    vdSvr Side_;  // serves the registry requests, beside the window
    ClipItem Clipboard_;
    std::ostream& Log_;

    // The batch being worked, its next element and the answers so far.
    std::shared_ptr<const RpcLine> Batch_;
    std::size_t BatchPlace_ = 0;
    Json BatchAnswers_ = Json::array();

    // The open window; null when there is none.
    window::WindowCore* Core_ = nullptr;
    std::shared_ptr<RegistryObject> Object_;
    bool ToldModified_ = false;
    bool Closing_ = false;
    ReplyTo CloseId_;
};

// The requests, in the order in which the protocol names them.
const RpcSession::Row RpcSession::kRequests[] = {
    {"registry/list", Moment::Any, &RpcSession::RegistryList},
    {"registry/create", Moment::Any, &RpcSession::RegistryCreate},
    {"registry/delete", Moment::Any, &RpcSession::RegistryDelete},
    {"registry/export", Moment::Any, &RpcSession::RegistryExport},
    {"registry/import", Moment::Any, &RpcSession::RegistryImport},
    {"registry/object", Moment::Any, &RpcSession::RegistryStored},
    {"server/version", Moment::Any, &RpcSession::ServerVersion},
    {"open", Moment::Closed, &RpcSession::Open},
    {"tree", Moment::Open, &RpcSession::GetTree},
    {"choices", Moment::Open, &RpcSession::Choices},
    {"SyntaxOn", Moment::Open, &RpcSession::SyntaxOn},
    {"modified", Moment::Open, &RpcSession::Modified},
    {"DispData", Moment::Open, &RpcSession::DispData},
    {"SaveData", Moment::Open, &RpcSession::SaveData},
    {"EditData", Moment::Open, &RpcSession::EditData},
    {"MoveData", Moment::Open, &RpcSession::MoveData},
    {"DeleteData", Moment::Open, &RpcSession::DeleteData},
    {"CopyData", Moment::Open, &RpcSession::CopyData},
    {"PasteData", Moment::Open, &RpcSession::PasteData},
    {"ShowPropTable", Moment::Open, &RpcSession::ShowPropTable},
    {"TlbrButtonClick", Moment::Open, &RpcSession::TlbrButtonClick},
    {"GetObjectInfo", Moment::Open, &RpcSession::GetObjectInfo},
    {"HelpShow", Moment::Open, &RpcSession::HelpShow},
    {"Save", Moment::Open, &RpcSession::Save},
    {"close", Moment::Open, &RpcSession::Close},
};

// Lines and requests.

void RpcSession::Serve() {
    while (!Closing_) {
        const std::optional<Message> Read = Next();
        if (!Read) return;
        Work(*Read);
    }
}

// The next element of the batch, else the next line. A batch is answered when it is asked for more: by then
// its last element has been answered, also where that is an `open` whose window is being served.
std::optional<RpcSession::Message> RpcSession::Next() {
    for (;;) {
        if (Batch_) {
            if (BatchPlace_ < Batch_->Value.size()) return Message{Batch_, &Batch_->Value[BatchPlace_++]};
            Batch_.reset();
            const Json Answers = std::exchange(BatchAnswers_, Json::array());
            if (!Answers.empty()) Channel_.Write(Answers);
        }
        std::optional<std::string> Text = Channel_.ReadLine();
        if (!Text) return std::nullopt;
        std::optional<RpcLine> Parsed = ParseLine(*std::move(Text));
        if (!Parsed) {
            Reply(ErrorMessage(nullptr, RpcError(rpc_code::kNoJson, "the line is not JSON in UTF-8")));
            continue;
        }
        auto Line = std::make_shared<const RpcLine>(*std::move(Parsed));
        if (!Line->Value.is_array()) {
            const JsonIn* const Body = &Line->Value;
            return Message{std::move(Line), Body};
        }
        if (Line->Value.empty()) {
            Reply(ErrorMessage(nullptr, RpcError(rpc_code::kNoRequest, "the batch is empty")));
            continue;
        }
        Batch_ = std::move(Line);
        BatchPlace_ = 0;
    }
}

void RpcSession::Reply(Json Answer) {
    if (Batch_)
        BatchAnswers_.push_back(std::move(Answer));
    else
        Channel_.Write(Answer);
}

void RpcSession::Work(const Message& Read) {
    const JsonIn& Body = *Read.Body;
    const ReplyTo Id = AnswerId(*Read.Line, Body);
    const auto Has = [&](const char* Name, auto&& Fits) {
        const auto Member = Body.find(Name);
        return Member != Body.end() && Fits(*Member);
    };
    const bool IsRequest = Body.is_object() && Body.contains("id") == Id.has_value() &&
                           Has("jsonrpc", [](const JsonIn& M) { return M == "2.0"; }) &&
                           Has("method", [](const JsonIn& M) { return M.is_string(); }) &&
                           (!Body.contains("params") || Body["params"].is_structured());
    if (!IsRequest) {
        Fail(Id.value_or(Json()), RpcError(rpc_code::kNoRequest, "this is no request"));
        return;
    }
    try {
        if (Outcome Result = Carry(Read, Id)) {
            TellModified();
            Succeed(Id, *std::move(Result));
        }
    } catch (const RpcError& Error) {
        TellModified();
        Fail(Id, Error);
    } catch (const std::exception& Error) {
        Log_ << "kvdesign: " << Error.what() << std::endl;
        Fail(Id, RpcError(rpc_code::kInternal, "the host has failed"));
    }
}

Outcome RpcSession::Carry(const Message& Read, const ReplyTo& Id) {
    static const JsonIn kNoParams = JsonIn::object();
    const JsonIn& Body = *Read.Body;
    const auto& Method = Body["method"].get_ref<const std::string&>();
    const auto Found = std::find_if(std::begin(kRequests), std::end(kRequests),
                                    [&](const Row& Candidate) { return Candidate.Method == Method; });
    if (Found == std::end(kRequests)) throw RpcError(rpc_code::kUnknownMethod, "there is no such method");
    if (Found->Fits == Moment::Closed && Core_) throw RpcError(rpc_code::kNotNow, "an object is open");
    if (Found->Fits == Moment::Open && !Core_) throw RpcError(rpc_code::kNotNow, "nothing is open");
    const auto Params = Body.find("params");
    const bool None = Params == Body.end() || Params->empty();
    if (!None && Params->is_array()) throw RpcError(rpc_code::kBadParams, "parameters are given by name");

    static_cast<void>(Platform_.TakeShown());
    CoreUtil::Instance().ForgetError();
    Outcome Result = (this->*Found->Handle)({RpcParams(None ? kNoParams : *Params, *Read.Line), Id});
    if (Result) Must(false);
    return Result;
}

// Only what has changed by the end of a request is told: an operation that fails may set the mark and take it
// back.
void RpcSession::TellModified() {
    if (!Core_ || Tree().Modified() == ToldModified_) return;
    ToldModified_ = !ToldModified_;
    Channel_.Notify("window/modified", One("Value", ToldModified_));
}

// What the handlers share.

// Ends the request with an error when an operation has failed or something has been shown since it began.
void RpcSession::Must(bool Failed) {
    const std::optional<KvError> Shown = Platform_.TakeShown();
    if (Failed || Shown) throw RpcError(Shown.value_or(KvError{}));
}

// Registry failures take the road of all others: into the error store, and shown once.
template <class Body>
void RpcSession::InRegistry(std::wstring_view Source, Body&& Run) {
    const bool Failed = Trap(Source, [&] {
        RaiseStoreErrors(Run);
        return false;
    });
    if (Failed) CoreUtil::Instance().ShowLastError();
    Must(Failed);
}

// The stored object that the parameters name. A class word that the server does not know is the server's to
// refuse: it is handed an empty object.
std::shared_ptr<RegData> RpcSession::Stored(const RpcParams& P, std::shared_ptr<RegistryObject>* Kept) {
    const std::wstring Clsid = P.Text("Clsid");
    const std::wstring Name = P.Text("Name");
    const auto Known = ClassWords();
    if (std::find(Known.begin(), Known.end(), Clsid) == Known.end())
        return std::make_shared<MemoryRegData>(Clsid);
    std::shared_ptr<RegistryObject> Found;
    InRegistry(L"KvRegSvr.Open", [&] { Found = Registry_.Open(Clsid, Name); });
    if (Kept) *Kept = Found;
    return Found;
}

// The node and what the parameters override of the head.
window::Selection RpcSession::Overridden(const RpcParams& P, std::wstring CurrItem) {
    return {std::move(CurrItem), P.FindText("CurrFolder"), P.FindNumber("Index"), P.FindText("Key")};
}

window::Selection RpcSession::Selected(const RpcParams& P) const {
    std::wstring CurrItem = P.Text("CurrItem");
    if (!Tree().HasNode(CurrItem))
        throw RpcError(rpc_code::kBadParams, "CurrItem: no node of the tree has this key");
    return Overridden(P, std::move(CurrItem));
}

Json RpcSession::Nodes() const {
    Json All = Json::array();
    Tree().ForEach([&](const window::TreeNode& Node) {
        All.push_back({{"Key", TextJson(Node.Key)},
                       {"Parent", Node.Parent ? TextJson(Node.Parent->Key) : Json("")},
                       {"Text", TextJson(Node.Text)},
                       {"Kind", TextJson(Tree().Kind(Node))},
                       {"Image", Node.Image},
                       {"SelectedImage", Node.SelectedImage}});
    });
    return All;
}

Json RpcSession::Info() {
    std::wstring Name, Desc, Id, Clsid, UserList;
    std::int16_t Version = 0;
    Must(Core_->GetObjectInfo(Name, Desc, Version, Id, Clsid, UserList));
    return {{"Name", TextJson(Name)}, {"Desc", TextJson(Desc)},   {"Version", Version},
            {"Id", TextJson(Id)},     {"Clsid", TextJson(Clsid)}, {"UserList", TextJson(UserList)}};
}

// Handlers: the registry.

Outcome RpcSession::ServerVersion(const Request&) { return One("CurrVersion", Side_.CurrVersion()); }

Outcome RpcSession::RegistryList(const Request& R) {
    const std::optional<std::wstring> Clsid = R.Params.FindText("Clsid");
    Json All = Json::array();
    InRegistry(L"KvRegSvr.List", [&] {
        for (const RegistryEntry& Entry : Registry_.List(Clsid))
            All.push_back({{"Clsid", TextJson(Entry.Clsid)},
                           {"Name", TextJson(Entry.Name)},
                           {"Id", Entry.Id},
                           {"Desc", TextJson(Entry.Desc)},
                           {"Version", Entry.Version},
                           {"UserList", TextJson(Entry.UserList)},
                           {"Revision", Entry.Revision}});
    });
    return All;
}

Outcome RpcSession::RegistryCreate(const Request& R) {
    const std::wstring Clsid = R.Params.Text("Clsid");
    const std::wstring Name = R.Params.Text("Name");
    const std::wstring Desc = R.Params.FindText("Desc").value_or(L"");
    std::int32_t Id = 0;
    InRegistry(L"KvRegSvr.Create", [&] {
        const auto Known = ClassWords();
        if (std::find(Known.begin(), Known.end(), Clsid) == Known.end()) {
            std::wstring Text;
            MsgUtil::MessageText(kUnknownClass, Clsid, Text);
            Raise(kUnknownClass, Text);
        }
        Id = Registry_.Create(Clsid, Name, Desc);
    });
    return One("Id", Id);
}

Outcome RpcSession::RegistryDelete(const Request& R) {
    const std::wstring Clsid = R.Params.Text("Clsid");
    const std::wstring Name = R.Params.Text("Name");
    if (Object_ && Object_->Clsid() == Clsid && Object_->Name() == Name)
        throw RpcError(rpc_code::kNotNow, "the object is open");
    InRegistry(L"KvRegSvr.Delete", [&] { Registry_.Delete(Clsid, Name); });
    return Empty();
}

Outcome RpcSession::RegistryExport(const Request& R) {
    const std::shared_ptr<RegData> Object = Stored(R.Params);
    std::wstring Buffer;
    Must(Side_.Export(Object, Object->Clsid(), Buffer));
    return One("Buffer", TextJson(Buffer));
}

Outcome RpcSession::RegistryImport(const Request& R) {
    std::wstring Buffer = R.Params.Text("Buffer");
    const std::shared_ptr<RegData> Object = Stored(R.Params);
    Must(Side_.Import(Object, Object->Clsid(), Buffer));
    return Empty();
}

Outcome RpcSession::RegistryStored(const Request& R) {
    const std::wstring Clsid = R.Params.Text("Clsid");
    const std::wstring Name = R.Params.Text("Name");
    Json Object;
    InRegistry(L"KvRegSvr.Open", [&] { Object = ToJson(Registry_.ReadStored(Clsid, Name)); });
    return Object;
}

// Handlers: the window.

Outcome RpcSession::Open(const Request& R) {
    const bool SyntaxOn = R.Params.FindFlag("SyntaxOn").value_or(true);
    std::shared_ptr<RegistryObject> Object;
    ObjectWindow Window(&Registry_, Stored(R.Params, &Object), Clipboard_);
    bool Answered = false;
    const auto While = [&](window::WindowCore& Core) {
        struct Opened {
            RpcSession& Session;
            ~Opened() {
                Session.Core_ = nullptr;
                Session.Object_.reset();
            }
        } const Here{*this};
        Core_ = &Core;
        Object_ = Object;
        ToldModified_ = false;
        Json Result = Json::object();
        Result["Nodes"] = Nodes();
        Result["Tools"] = Json::array();
        for (const std::wstring& Word : Tree().Tools()) Result["Tools"].push_back(TextJson(Word));
        Result["Info"] = Info();
        Succeed(R.Id, std::move(Result));
        Answered = true;
        Serve();
    };
    const bool Failed = Window.Show(SyntaxOn, While);
    if (!Answered) {
        CoreUtil::Instance().ShowLastError();  // an unknown class word waits in the store
        Must(true);
    }
    if (std::exchange(Closing_, false)) {
        const ReplyTo Id = std::exchange(CloseId_, std::nullopt);
        if (Failed)
            Fail(Id, RpcError(Platform_.TakeShown().value_or(KvError{})));
        else
            Succeed(Id, Empty());
    }
    return std::nullopt;
}

// Ends the serving inside the window; Open answers when the window has ended.
Outcome RpcSession::Close(const Request& R) {
    Closing_ = true;
    CloseId_ = R.Id;
    return std::nullopt;
}

Outcome RpcSession::GetTree(const Request&) { return Nodes(); }

Outcome RpcSession::Choices(const Request& R) {
    const std::wstring Section = R.Params.Text("Section");
    const std::optional<std::wstring> Keyword = R.Params.FindText("Keyword");
    const auto AsArray = [](std::span<const std::wstring> List) {
        Json All = Json::array();
        for (const std::wstring& Word : List) All.push_back(TextJson(Word));
        return All;
    };
    if (Keyword) return AsArray(Tree().ChoicesOf(Section, *Keyword));
    Json All = Json::object();
    for (const window::ValueWords& Words : Tree().Choices())
        if (Words.Section == Section) All[TextJson(Words.Keyword).get<std::string>()] = AsArray(Words.Words);
    return All;
}

Outcome RpcSession::SyntaxOn(const Request& R) {
    if (const std::optional<bool> Value = R.Params.FindFlag("Value")) Tree().SetSyntaxOn(*Value);
    return One("Value", Tree().SyntaxOn());
}

Outcome RpcSession::Modified(const Request&) { return One("Value", Tree().Modified()); }

Outcome RpcSession::DispData(const Request& R) {
    std::wstring Buffer;
    Must(Core_->DispData(Selected(R.Params), Buffer));
    return One("Buffer", TextJson(Buffer));
}

Outcome RpcSession::SaveData(const Request& R) {
    std::wstring Buffer = R.Params.Text("Buffer");
    std::wstring NewItemKey;
    Must(Core_->SaveData(Selected(R.Params), Buffer, NewItemKey));
    return One("NewItemKey", TextJson(NewItemKey));
}

Outcome RpcSession::EditData(const Request& R) {
    std::wstring NewItemKey;
    Must(Core_->EditData(Selected(R.Params), NewItemKey));
    return One("NewItemKey", TextJson(NewItemKey));
}

Outcome RpcSession::MoveData(const Request& R) {
    const std::int32_t Direction = R.Params.Number("Direction");
    std::wstring CurrItem;
    Must(Core_->MoveData(Selected(R.Params), Direction, CurrItem));
    return One("CurrItem", TextJson(CurrItem));
}

Outcome RpcSession::DeleteData(const Request& R) {
    const bool Group = R.Params.FindFlag("Group").value_or(false);
    Must(Core_->DeleteData(Selected(R.Params), Group));
    return Empty();
}

Outcome RpcSession::CopyData(const Request& R) {
    const bool Group = R.Params.FindFlag("Group").value_or(false);
    std::wstring ClassWord;
    Must(Core_->CopyData(Selected(R.Params), Group, ClassWord));
    return One("ClassWord", TextJson(ClassWord));
}

Outcome RpcSession::PasteData(const Request& R) {
    const std::optional<std::wstring> Path = R.Params.FindText("Path");
    std::wstring NewItemKey;
    Must(Core_->PasteData(Selected(R.Params), Path, NewItemKey));
    return One("NewItemKey", TextJson(NewItemKey));
}

Outcome RpcSession::ShowPropTable(const Request& R) {
    Must(Core_->ShowPropTable(Selected(R.Params)));
    return Empty();
}

// Without a CurrItem the tool meets the node that is selected in the window.
Outcome RpcSession::TlbrButtonClick(const Request& R) {
    const std::wstring Method = R.Params.Text("Method");
    const bool Given = R.Params.FindText("CurrItem").has_value();
    Core_->TlbrButtonClick(Method, Given ? Selected(R.Params) : Overridden(R.Params, Tree().Selected()));
    return Empty();
}

Outcome RpcSession::GetObjectInfo(const Request&) { return Info(); }

Outcome RpcSession::HelpShow(const Request& R) {
    const std::wstring HelpItem = R.Params.Text("HelpItem");
    Must(Core_->HelpShow(Selected(R.Params), HelpItem));
    return Empty();
}

Outcome RpcSession::Save(const Request&) {
    Must(Core_->Save());
    return One("Revision", Object_->Revision());
}

}  // namespace

int RunRpc(const RpcOptions& Options, std::istream& In, std::ostream& Out, std::ostream& Log) {
    try {
        RpcSession Session(Options, In, Out, Log);
        if (!Session.Run()) return kExitDone;
        Log << "kvdesign: the output takes no more" << std::endl;
    } catch (const std::exception& Trouble) {
        Log << "kvdesign: " << Trouble.what() << std::endl;
    }
    return kExitFailed;
}

}  // namespace kv::host
