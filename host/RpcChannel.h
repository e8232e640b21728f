// The two streams of a session, line by line.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "host/RpcMessage.h"

namespace kv::host {

/// Reads lines and writes messages. The streams must outlive it.
class RpcChannel {
  public:
    RpcChannel(std::istream& In, std::ostream& Out) : In_(In), Out_(Out) {}

    /// The next line that is not blank; nothing at the end of the input, or once the output takes no more.
    std::optional<std::string> ReadLine();
    /// Writes one line and flushes it.
    void Write(const Json& Message);
    /// Sends a notice.
    void Notify(std::string_view Method, Json Params = {}) {
        Write(RequestMessage({}, Method, std::move(Params)));
    }

    /// What the other side answered: its line, and in it the member that is the answer.
    struct Reply {
        RpcLine Line;
        const JsonIn& Result() const { return Line.Value["result"]; }
        /// The result as text; nothing when it is none.
        std::optional<std::string> Text() const;
    };
    /// Sends a request and waits for its answer. Any other line is answered with kNotNow and not carried
    /// out. Nothing comes back when the answer is an error, or when the input ends.
    std::optional<Reply> Ask(std::string_view Method, Json Params);

    /// Whether the output takes no more.
    bool Broken() const noexcept { return Broken_; }

  private:
    std::istream& In_;
    std::ostream& Out_;
    std::int64_t Asked_ = 0;
    bool Broken_ = false;
};

/// The id under which a message is answered: its own when it is a string, a number or null, else nothing.
std::optional<Json> AnswerId(const RpcLine& Line, const JsonIn& Message);

}  // namespace kv::host
