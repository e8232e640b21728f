// The texts of the numbered messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kv::MsgUtil {

/// Puts the text of message `Code` into `Text`, every "%%" replaced by `Argument`. A number that is no
/// message gives the empty text.
void MessageText(std::int32_t Code, std::wstring_view Argument, std::wstring& Text);

}  // namespace kv::MsgUtil
