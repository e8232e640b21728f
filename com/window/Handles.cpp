#include "com/window/Handles.h"

#include <algorithm>
#include <cwchar>

namespace kv::com {
namespace {

constexpr int kUsualDensity = 96;
constexpr WORD kManifest = 2;

NONCLIENTMETRICSW Metrics() {
    NONCLIENTMETRICSW Of{};
    Of.cbSize = sizeof Of;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, Of.cbSize, &Of, 0);
    return Of;
}

/// The device context of the screen.
class Screen {
  public:
    Screen() : Of_(GetDC(nullptr)) {}
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() { ReleaseDC(nullptr, Of_); }
    HDC Of() const noexcept { return Of_; }

  private:
    HDC Of_;
};

}  // namespace

HINSTANCE OwnModule() noexcept {
    static const int Here = 0;
    HMODULE Module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&Here), &Module);
    return Module;
}

Owned<HFONT> MessageFont() {
    const NONCLIENTMETRICSW Of = Metrics();
    return Owned<HFONT>(CreateFontIndirectW(&Of.lfMessageFont));
}

Owned<HFONT> FixedFont() {
    LOGFONTW Fixed{};
    Fixed.lfHeight = Metrics().lfMessageFont.lfHeight;
    Fixed.lfWeight = FW_NORMAL;
    Fixed.lfCharSet = DEFAULT_CHARSET;
    Fixed.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    std::wcscpy(Fixed.lfFaceName, L"Consolas");
    return Owned<HFONT>(CreateFontIndirectW(&Fixed));
}

LetterSize SizeOf(HFONT Font) {
    const Screen On;
    const SelectedInto Measured(On.Of(), Font);
    TEXTMETRICW Of{};
    if (!GetTextMetricsW(On.Of(), &Of)) return {};
    return {std::max<int>(1, Of.tmAveCharWidth), std::max<int>(1, Of.tmHeight)};
}

int WidthOf(HFONT Font, const std::wstring& Text) {
    const Screen On;
    const SelectedInto Measured(On.Of(), Font);
    SIZE Of{};
    GetTextExtentPoint32W(On.Of(), Text.c_str(), static_cast<int>(Text.size()), &Of);
    return Of.cx;
}

int PictureScale() {
    const Screen On;
    return std::max(1, (GetDeviceCaps(On.Of(), LOGPIXELSX) + kUsualDensity / 2) / kUsualDensity);
}

std::wstring TextOf(HWND Of) {
    std::wstring Text(static_cast<std::size_t>(GetWindowTextLengthW(Of)), L'\0');
    const int Length = GetWindowTextW(Of, Text.data(), static_cast<int>(Text.size()) + 1);
    Text.resize(static_cast<std::size_t>(Length));
    return Text;
}

VisualStyle::VisualStyle() noexcept {
    ACTCTXW Asked{};
    Asked.cbSize = sizeof Asked;
    Asked.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    Asked.hModule = OwnModule();
    Asked.lpResourceName = MAKEINTRESOURCEW(kManifest);
    Context_ = CreateActCtxW(&Asked);
    Active_ = Context_ != INVALID_HANDLE_VALUE && ActivateActCtx(Context_, &Cookie_) != 0;
}

VisualStyle::~VisualStyle() {
    if (Active_) DeactivateActCtx(0, Cookie_);
    if (Context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(Context_);
}

}  // namespace kv::com
