#include "frame/MsgUtil.h"

#include "resources/Messages.h"

namespace kv::MsgUtil {

void MessageText(std::int32_t Code, std::wstring_view Argument, std::wstring& Text) {
    Text.clear();
    const std::int64_t Place = std::int64_t{Code} - resources::kFirstMessage;
    if (Place < 0 || Place >= static_cast<std::int64_t>(resources::kMessages.size())) return;
    std::wstring_view Rest = resources::kMessages[static_cast<std::size_t>(Place)].Text;
    for (std::size_t At; (At = Rest.find(L"%%")) != std::wstring_view::npos; Rest.remove_prefix(At + 2)) {
        Text.append(Rest.substr(0, At));
        Text.append(Argument);
    }
    Text.append(Rest);
}

}  // namespace kv::MsgUtil
