// JSON-RPC messages: a line taken apart, the parameters of a request, the errors that answer it.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "frame/Failure.h"

namespace kv::host {

/// What is written: members keep their order.
using Json = nlohmann::ordered_json;
/// What is read: members are found by name.
using JsonIn = nlohmann::json;

/// Codes of the protocol's own errors. All others come from the server.
namespace rpc_code {
inline constexpr std::int32_t kNoJson = -32700;
inline constexpr std::int32_t kNoRequest = -32600;
inline constexpr std::int32_t kUnknownMethod = -32601;
inline constexpr std::int32_t kBadParams = -32602;
inline constexpr std::int32_t kInternal = -32603;  // the host itself has failed, out of memory for one
inline constexpr std::int32_t kNotNow = -32002;    // the request does not fit the moment
}  // namespace rpc_code

/// The error member of an answer. Thrown by what works on a request, caught where requests are worked.
struct RpcError {
    std::int32_t Code = 0;
    std::string Message;
    Json Data;  // null when the error has none

    RpcError(std::int32_t ErrorCode, std::string_view Text) : Code(ErrorCode), Message(Text) {}
    /// A failure of the server; an empty one has code 0 and no text.
    explicit RpcError(const KvError& Failed);
};

/// Wide text as a JSON string: what is no Unicode in it shows as the replacement character.
Json TextJson(std::wstring_view Text);

/// A result or error, ready to be written. `Id` is a string, a number or null.
Json ResultMessage(const Json& Id, Json Result);
Json ErrorMessage(const Json& Id, const RpcError& Error);
/// A request of the host's own; a notice when there is no id. Null `Params` are left out.
Json RequestMessage(const std::optional<std::string>& Id, std::string_view Method, Json Params);

/// One line read. JSON lets a string hold one half of a surrogate pair, which is no character and can't be
/// told in UTF-8. Each such half reads as `HalfPair`, a character that is nowhere else in the line; empty
/// when there is none.
struct RpcLine {
    JsonIn Value;
    std::string HalfPair;

    /// Whether a string of this line is Unicode throughout.
    bool IsText(const JsonIn& Member) const;
};

/// Takes a line apart; nothing when it is not JSON in UTF-8. Depth costs memory and no stack.
std::optional<RpcLine> ParseLine(std::string Line);

/// The parameters of a request, by name. Everything here throws RpcError kBadParams for a member that is
/// missing or of another type; a member that is null counts as absent. Members that nobody asks for are let
/// be.
class RpcParams {
  public:
    RpcParams(const JsonIn& Members, const RpcLine& Line) : Members_(Members), Line_(Line) {}

    std::wstring Text(const char* Name) const { return Needed(Name, FindText(Name)); }
    std::int32_t Number(const char* Name) const { return Needed(Name, FindNumber(Name)); }

    std::optional<std::wstring> FindText(const char* Name) const;
    std::optional<std::int32_t> FindNumber(const char* Name) const;
    std::optional<bool> FindFlag(const char* Name) const;

  private:
    const JsonIn* Find(const char* Name) const;
    template <class Value>
    static Value Needed(const char* Name, std::optional<Value> Found) {
        if (!Found) throw RpcError(rpc_code::kBadParams, std::string("missing parameter: ") + Name);
        return *std::move(Found);
    }

    const JsonIn& Members_;
    const RpcLine& Line_;
};

}  // namespace kv::host
