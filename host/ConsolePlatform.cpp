#include "host/ConsolePlatform.h"

#include <ostream>
#include <utility>

#include "host/Text.h"

namespace kv::host {

std::vector<KvError> ConsolePlatform::TakeShown() { return std::exchange(Shown_, {}); }

std::vector<std::wstring> ConsolePlatform::TakeListed() { return std::exchange(Listed_, {}); }

Answer ConsolePlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    Err_ << ToUtf8Lossy(Text) << '\n';
    return DefaultAnswer(Style);
}

std::optional<std::wstring> ConsolePlatform::SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                                      std::int32_t) {
    return Output_;
}

void ConsolePlatform::ShowList(std::wstring_view, std::span<const std::wstring> Items) {
    Listed_.insert(Listed_.end(), Items.begin(), Items.end());
}

}  // namespace kv::host
