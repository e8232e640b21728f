// Handles that let go of themselves, and the sizes and fonts of the system.
#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "com/window/Windows.h"

namespace kv::com {

struct FreeHandle {
    void operator()(HFONT Of) const noexcept { DeleteObject(Of); }
    void operator()(HBITMAP Of) const noexcept { DeleteObject(Of); }
    void operator()(HDC Of) const noexcept { DeleteDC(Of); }
    void operator()(HICON Of) const noexcept { DestroyIcon(Of); }
    void operator()(HMENU Of) const noexcept { DestroyMenu(Of); }
    void operator()(HACCEL Of) const noexcept { DestroyAcceleratorTable(Of); }
    void operator()(HIMAGELIST Of) const noexcept { ImageList_Destroy(Of); }
};

/// Owns a handle of the system; null for none.
template <class Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, FreeHandle>;

/// The module in which this code lies, which need not be that of the process.
HINSTANCE OwnModule() noexcept;

/// Puts what was the device context's own back, so that what was selected can be deleted.
class SelectedInto {
  public:
    SelectedInto(HDC Into, HGDIOBJ Object) noexcept : Into_(Into), Before_(SelectObject(Into, Object)) {}
    SelectedInto(const SelectedInto&) = delete;
    SelectedInto& operator=(const SelectedInto&) = delete;
    ~SelectedInto() { SelectObject(Into_, Before_); }

  private:
    HDC Into_;
    HGDIOBJ Before_;
};

/// The font of the system's messages, and a fixed one of the same size.
Owned<HFONT> MessageFont();
Owned<HFONT> FixedFont();

/// Height of a line and mean width of a letter, in pixels.
struct LetterSize {
    int Width = 8;
    int Height = 16;
};
LetterSize SizeOf(HFONT Font);

/// How wide a text of one line is.
int WidthOf(HFONT Font, const std::wstring& Text);

/// How often a picture that was drawn for the usual density is enlarged, at least once.
int PictureScale();

/// The text of a window.
std::wstring TextOf(HWND Of);

/// While it lives, windows are made in the style that the manifest of this module asks for (resource 2); in
/// the plain one where there is no such manifest.
class VisualStyle {
  public:
    VisualStyle() noexcept;
    VisualStyle(const VisualStyle&) = delete;
    VisualStyle& operator=(const VisualStyle&) = delete;
    ~VisualStyle();

  private:
    HANDLE Context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR Cookie_ = 0;
    bool Active_ = false;
};

}  // namespace kv::com
