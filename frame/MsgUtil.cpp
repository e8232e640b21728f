#include "frame/MsgUtil.h"

#include <utility>

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

namespace {

void Pack(std::wstring_view Name, std::wstring& Into) {
    Into.append(std::to_wstring(Name.size())).append(1, L':').append(Name);
}

}  // namespace

std::wstring PackServer(std::wstring_view Main, const std::vector<std::wstring>& Others) {
    std::wstring Packed;
    Pack(Main, Packed);
    for (const std::wstring& Name : Others) Pack(Name, Packed);
    return Packed;
}

bool UnpackServer(std::wstring_view Packed, std::wstring& Main, std::vector<std::wstring>& Others) {
    std::vector<std::wstring> Names;
    while (!Packed.empty()) {
        std::size_t Length = 0;
        std::size_t At = 0;
        for (; At < Packed.size() && Packed[At] >= L'0' && Packed[At] <= L'9'; ++At) {
            Length = 10 * Length + static_cast<std::size_t>(Packed[At] - L'0');
            if (Length > Packed.size()) return true;
        }
        if (At == 0 || At == Packed.size() || Packed[At] != L':') return true;
        Packed.remove_prefix(At + 1);
        if (Length > Packed.size()) return true;
        Names.emplace_back(Packed.substr(0, Length));
        Packed.remove_prefix(Length);
    }
    Main = Names.empty() ? std::wstring() : std::move(Names.front());
    if (!Names.empty()) Names.erase(Names.begin());
    Others = std::move(Names);
    return false;
}

std::wstring FilterText(std::wstring_view Text) {
    std::wstring Filtered(Text);
    for (wchar_t& C : Filtered) {
        const auto Code = static_cast<std::uint32_t>(C);
        if ((Code < 0x20 && C != L'\t') || (Code >= 0x7F && Code <= 0x9F)) C = L' ';
    }
    return Filtered;
}

}  // namespace kv::MsgUtil
