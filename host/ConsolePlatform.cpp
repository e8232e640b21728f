#include "host/ConsolePlatform.h"

#include <ostream>
#include <utility>

#include "host/Text.h"

namespace kv::host {

std::vector<KvError> ConsolePlatform::TakeShown() { return std::exchange(Shown_, {}); }

Answer ConsolePlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    Err_ << ToUtf8Lossy(Text) << '\n';
    return DefaultAnswer(Style);
}

std::optional<std::wstring> ConsolePlatform::SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                                      std::int32_t) {
    return std::nullopt;
}

void ConsolePlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    Err_ << ToUtf8Lossy(Caption) << '\n';
    for (const std::wstring& Item : Items) Err_ << "    " << ToUtf8Lossy(Item) << '\n';
}

}  // namespace kv::host
