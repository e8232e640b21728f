// The texts of the numbered messages, the packed form of a server and its arguments, and the filter of texts.
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

/// A text as it may stand in a line: each control character but the tab becomes a blank (codes 0 to 31 and
/// 127 to 159, so line ends too), all else stays. The length stays with it, no pair of code units is parted,
/// and a text that has passed once passes again unchanged: what is filtered on the way in comes out as it is.
std::wstring FilterText(std::wstring_view Text);

}  // namespace kv::MsgUtil
