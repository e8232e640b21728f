#include "frame/Platform.h"

namespace kv {

Answer DefaultAnswer(std::int32_t Style) noexcept {
    const std::int32_t Buttons = Style & box::kButtons;
    if (Buttons != box::kYesNo && Buttons != box::kYesNoCancel) return Answer::Ok;
    switch (Style & box::kDefaults) {
        case box::kDefaultSecond:
            return Answer::No;
        case box::kDefaultThird:
            return Buttons == box::kYesNoCancel ? Answer::Cancel : Answer::No;
        default:
            return Answer::Yes;
    }
}

Answer SilentPlatform::MessageBox(std::wstring_view, std::int32_t Style) { return DefaultAnswer(Style); }

}  // namespace kv
