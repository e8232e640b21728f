#include "host/RpcChannel.h"

#include <istream>
#include <ostream>

namespace kv::host {
namespace {

bool IsBlank(std::string_view Line) noexcept { return Line.find_first_not_of(" \t\r") == std::string::npos; }

}  // namespace

std::optional<Json> AnswerId(const RpcLine& Line, const JsonIn& Message) {
    if (!Message.is_object()) return std::nullopt;
    const auto Id = Message.find("id");
    if (Id == Message.end()) return std::nullopt;
    if (Id->is_null() || Id->is_number() || (Id->is_string() && Line.IsText(*Id))) return Json(*Id);
    return std::nullopt;
}

std::optional<std::string> RpcChannel::ReadLine() {
    std::string Line;
    while (!Broken_ && std::getline(In_, Line))
        if (!IsBlank(Line)) return Line;
    return std::nullopt;
}

void RpcChannel::Write(const Json& Message) {
    if (Broken_) return;
    Out_ << Message.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n' << std::flush;
    Broken_ = !Out_;
}

std::optional<std::string> RpcChannel::Reply::Text() const {
    const JsonIn& Member = Result();
    if (!Member.is_string() || !Line.IsText(Member)) return std::nullopt;
    return Member.get<std::string>();
}

std::optional<RpcChannel::Reply> RpcChannel::Ask(std::string_view Method, Json Params) {
    const std::string Id = "host-" + std::to_string(++Asked_);
    Write(RequestMessage(Id, Method, std::move(Params)));
    while (std::optional<std::string> Text = ReadLine()) {
        std::optional<RpcLine> Line = ParseLine(*std::move(Text));
        const std::optional<Json> LineId = Line ? AnswerId(*Line, Line->Value) : std::nullopt;
        if (LineId == Json(Id) && !Line->Value.contains("method")) {
            if (Line->Value.contains("error")) return std::nullopt;
            if (Line->Value.contains("result")) return Reply{*std::move(Line)};
        }
        Write(ErrorMessage(LineId.value_or(Json()),
                           RpcError(rpc_code::kNotNow, "the answer to " + Id + " is awaited")));
    }
    return std::nullopt;
}

}  // namespace kv::host
