// An object as the texts of its sections, and what differs between two of them.
#pragma once

#include <string>
#include <vector>

#include "frame/RegData.h"
#include "window/WindowCore.h"

namespace kv::desktop {

/// One section of an object: a leaf of the tree.
struct SectionTextOf {
    std::wstring Word;                // section word
    std::wstring Caption;             // captions from below the root down to the leaf, joined by " / "; empty
                                      // ones and those that repeat the one above are left out
    std::vector<std::wstring> Lines;  // without line ends and without the three identity lines
};

/// The sections of the object that is open, in the order of the tree. The selection stays. A section that
/// cannot be rendered has the message as its one line, behind an apostrophe; nothing is shown.
std::vector<SectionTextOf> TextsOf(window::WindowCore& Core);

/// The same of an object that is not open, say a stored one, in a window of its own that nobody sees. Throws
/// kv::Failure with what the server says when it cannot be loaded.
std::vector<SectionTextOf> TextsOf(const std::wstring& Clsid, RegObject Content);

enum class Line { Same, Removed, Added };

struct LineChange {
    Line Is = Line::Same;
    std::wstring Text;
};

/// A section that differs. What has only moved has no lines.
struct SectionChange {
    enum class Kind { Changed, Removed, Added, Moved };
    Kind Is = Kind::Changed;
    std::wstring Caption;
    std::vector<LineChange> Lines;
};

/// What leads from `Before` to `After`, in the order of After; what was removed stands before what followed
/// it. Sections are paired in the order that both lists share: by caption and text, then by text, then by
/// caption; what is left is looked for elsewhere (moved) by its caption and text, or by a caption that stands
/// once; the rest is paired by its word alone. The cost grows with the texts and with what differs, not with
/// the square of either.
std::vector<SectionChange> Compare(const std::vector<SectionTextOf>& Before,
                                   const std::vector<SectionTextOf>& After);

}  // namespace kv::desktop
