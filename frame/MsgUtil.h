// The texts of the numbered messages, and the packed form of a server and its arguments.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv::MsgUtil {

/// Puts the text of message `Code` into `Text`, every "%%" replaced by `Argument`. A number that is no
/// message gives the empty text.
void MessageText(std::int32_t Code, std::wstring_view Argument, std::wstring& Text);

/// A server's name and the further names that go with it as one text: for each, the decimal count of its
/// characters, ":" and the characters. `PackServer(L"srv", {L"a"})` is `3:srv1:a`.
std::wstring PackServer(std::wstring_view Main, const std::vector<std::wstring>& Others);

/// Unfolds a packed server; the empty text is no server, "" and no further names. True, with nothing stored,
/// when `Packed` is no such text.
[[nodiscard]] bool UnpackServer(std::wstring_view Packed, std::wstring& Main,
                                std::vector<std::wstring>& Others);

}  // namespace kv::MsgUtil
