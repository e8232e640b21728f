// The one road of failures. A check that fails raises; the trap of the procedure hands what was raised to
// the reporter, which puts it into the error store of CoreUtil; the operation answers True. Nothing else in
// the core throws on purpose. Besides the trap only those catch that must not fail themselves: the reporter,
// the showing of an error, the question whether a path names a file.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kv {

class SectionText;

/// Number of every parse fault and class fault; the text is built on the spot.
inline constexpr std::int32_t kDesignFault = 20000;
/// Number of the syntax fault of a line; its text is the message of the same number.
inline constexpr std::int32_t kSyntaxFault = 20018;
/// "Parametri errati.", here for a stored form that does not unfold.
inline constexpr std::int32_t kWrongParameters = 20017;

/// Run-time faults: what went wrong below a procedure without having been raised by a check.
namespace fault {
inline constexpr std::int32_t kInvalidCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscript = 9;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kFileAccess = 75;
inline constexpr std::int32_t kFileExists = 58;
inline constexpr std::int32_t kReadPastEnd = 62;
inline constexpr std::int32_t kNoObject = 91;
inline constexpr std::int32_t kKeyTaken = 457;
}  // namespace fault

/// An error: the six values that travel, and beside them the line of the section text where a parser stood.
struct KvError {
    std::int32_t Number = 0;
    std::wstring Source;
    std::wstring Description;
    std::wstring HelpFile;
    std::wstring HelpContext;
    std::int32_t LastDLLError = 0;
    /// 1-based line of the section text, 0 when the fault has no line of its own.
    std::int32_t Line = 0;

    bool Empty() const noexcept { return Number == 0 && Description.empty(); }
};

/// The one exception type of the core. Only Raise throws it.
class Failure final : public std::exception {
  public:
    explicit Failure(KvError Error) : Error_(std::move(Error)) {}
    const KvError& Error() const noexcept { return Error_; }
    const char* what() const noexcept override { return "kv::Failure"; }

  private:
    KvError Error_;
};

/// Raises number 20000 with `Text`; source and help fields are left to the trap.
[[noreturn]] void Raise(std::wstring_view Text);
/// Raises `Number` with `Text` and, where given, the help-file field.
[[noreturn]] void Raise(std::int32_t Number, std::wstring_view Text, std::wstring_view HelpFile = {});
/// Raises a run-time fault (namespace fault) with the text that belongs to its number.
[[noreturn]] void RaiseFault(std::int32_t Number);

/// Bits of the reporter's flags. Every trap passes 0; other bits go to the store untouched.
namespace report {
inline constexpr std::int32_t kAppendSystemText = 2;
inline constexpr std::int32_t kPassThrough = 4;
inline constexpr std::int32_t kPassThroughToo = 8;  // the same as 4, tested after it
}  // namespace report

/// What a caller of ReportError lays over the pending error; an absent value leaves the pending one.
struct ErrorArguments {
    std::optional<std::int32_t> Number;
    std::optional<std::wstring_view> Source;
    std::optional<std::wstring_view> Description;
    std::optional<std::wstring_view> HelpFile;
    std::optional<std::wstring_view> HelpContext;
    std::optional<std::int32_t> LastDLLError;
};

/// Hands an error to the store of CoreUtil.
///
/// With bit 4 or 8 of `Flags` the arguments go as they are (absent ones as 0 or empty) and the pending error
/// stays untouched. Else the pending error is read (number 65535 counts as 0) and cleared, the arguments are
/// laid over it (a given description replaces the pending one, it is not joined to it), and with bit 2 the
/// system's text for LastDLLError is appended behind a line end.
/// Answers what the store answers: True when the error was kept.
bool ReportError(const ErrorArguments& Arguments, std::int32_t& Flags);

namespace detail {
/// The text of a run-time fault, empty for another number.
std::wstring_view TextOfFault(std::int32_t Number) noexcept;

/// Turns the exception in flight into the pending error and reports it under `Source`, with the line where
/// `Text` stands when there is one. Never throws; always answers True.
bool ReportCaught(std::wstring_view Source, const SectionText* Text) noexcept;
}  // namespace detail

/// Runs `Body`, which answers True on failure, under the error trap of the procedure `Source`
/// (`<class>.<procedure>`). What Body raises, and any other exception, is reported under Source and answers
/// True. A body whose callee has already reported just returns True.
template <class Body>
[[nodiscard]] bool Trap(std::wstring_view Source, Body&& Run) noexcept {
    try {
        return std::invoke(std::forward<Body>(Run));
    } catch (...) {
        return detail::ReportCaught(Source, nullptr);
    }
}

/// The same for a procedure that takes `Text` apart: the error keeps the line at which the text stands.
template <class Body>
[[nodiscard]] bool Trap(std::wstring_view Source, const SectionText& Text, Body&& Run) noexcept {
    try {
        return std::invoke(std::forward<Body>(Run));
    } catch (...) {
        return detail::ReportCaught(Source, &Text);
    }
}

}  // namespace kv
