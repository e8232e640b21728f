// The core's wide text and Qt's.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kv::desktop {

inline QString FromWide(std::wstring_view Text) {
    return QString::fromWCharArray(Text.data(), static_cast<qsizetype>(Text.size()));
}
/// A lone surrogate becomes what it is in the core, too: a character that no store takes.
inline std::wstring ToWide(const QString& Text) { return Text.toStdWString(); }

}  // namespace kv::desktop
