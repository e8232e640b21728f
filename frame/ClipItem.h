// The holder behind the last argument of CopyData and PasteData.
#pragma once

#include <memory>
#include <string>

#include "frame/RegData.h"

namespace kv {

/// What the clipboard holds: a stored object and its class word. An empty clipboard has no object and an
/// empty word. The holder shares the object with whoever put it there.
struct ClipItem {
    std::shared_ptr<RegData> DataObj;
    std::wstring ClassWord;
};

}  // namespace kv
