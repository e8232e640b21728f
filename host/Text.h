// Text at the edge: the core's wide strings, one character a wchar_t, to and from UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kv::host {

static_assert(sizeof(wchar_t) == 4, "a wchar_t holds every character of Unicode");

/// The text of strictly valid UTF-8, NUL characters included. Nothing for an overlong or cut sequence, a
/// surrogate, a value beyond 10FFFF, a stray byte.
std::optional<std::wstring> FromUtf8(std::string_view Bytes);

/// The same for text that is only shown: each byte that begins no character reads as U+FFFD.
std::wstring FromUtf8Lossy(std::string_view Bytes);

/// The UTF-8 of a text, NUL characters included. Nothing for a surrogate or a value beyond 10FFFF.
std::optional<std::string> ToUtf8(std::wstring_view Text);

/// The same for text that is only shown: what is no character becomes U+FFFD.
std::string ToUtf8Lossy(std::wstring_view Text);

}  // namespace kv::host
