// The pictures of the window as image lists: those of the tree and of the tool bar.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "com/window/Handles.h"

namespace kv::com {

/// The pictures of the tree.
class TreePictures {
  public:
    TreePictures();
    HIMAGELIST List() const noexcept { return List_.get(); }
    /// Place of an image number of the tree in the list; that of the leaf for a number that has no picture.
    static int PlaceOf(std::int32_t Image) noexcept;

  private:
    Owned<HIMAGELIST> List_;
};

/// The pictures of the tool bar, in the order in which they are asked for.
class ToolPictures {
  public:
    ToolPictures();
    HIMAGELIST List() const noexcept { return List_.get(); }
    int Side() const noexcept { return Side_; }
    /// Adds the bitmap of this module with that id; -1 where there is none.
    int Add(std::int32_t Bitmap);
    /// Adds the picture of a word of the clipboard or of a command; -1 for a word that has none.
    int Add(std::wstring_view Word);

  private:
    int Side_;
    Owned<HIMAGELIST> List_;
};

}  // namespace kv::com
