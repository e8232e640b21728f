// The pictures of the desktop window: resources/pictures, each drawn once for every platform.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kv::desktop {

/// The picture of a name ("copy", "findtag"), also twice, three and four times as large, so that no screen
/// blurs it. An empty icon for a name that no picture bears. Made anew at each call.
QIcon PictureOf(const QString& Name);

/// The picture of an image number of the tree; that of the leaf for a number that has none.
QIcon TreePicture(std::int32_t Image);

/// The picture of a tool button by its id in the bitmap resources; an empty icon for another id.
QIcon ToolPicture(std::int32_t Bitmap);

/// The names, in alphabetical order.
QStringList PictureNames();

}  // namespace kv::desktop
