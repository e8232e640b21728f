// What the classes of objects are called.
#pragma once

#include <QString>
#include <string_view>

namespace kv::desktop {

/// The Italian name of a class, translated; empty for a word that has none.
QString ClassName(std::wstring_view Word);

}  // namespace kv::desktop
