#include "host/desktop/Pictures.h"

#include <QImage>
#include <QPixmap>
#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "frame/DesignTree.h"

namespace kv::desktop {
namespace {

#include "resources/pictures/apply.xpm"
#include "resources/pictures/changes.xpm"
#include "resources/pictures/constants.xpm"
#include "resources/pictures/copy.xpm"
#include "resources/pictures/cut.xpm"
#include "resources/pictures/delete.xpm"
#include "resources/pictures/down.xpm"
#include "resources/pictures/find.xpm"
#include "resources/pictures/findtag.xpm"
#include "resources/pictures/folder.xpm"
#include "resources/pictures/folderopen.xpm"
#include "resources/pictures/kvdesign.xpm"
#include "resources/pictures/kvdesign32.xpm"
#include "resources/pictures/leaf.xpm"
#include "resources/pictures/maptable.xpm"
#include "resources/pictures/new.xpm"
#include "resources/pictures/paste.xpm"
#include "resources/pictures/renumtag.xpm"
#include "resources/pictures/revert.xpm"
#include "resources/pictures/save.xpm"
#include "resources/pictures/strict.xpm"
#include "resources/pictures/tag.xpm"
#include "resources/pictures/up.xpm"

struct Picture {
    const char* Name;
    const char* const* Xpm;
    const char* const* Large = nullptr;  // the same at twice the size, where it was drawn for itself
};

constexpr Picture kPictures[] = {
    {"apply", apply_xpm},
    {"changes", changes_xpm},
    {"constants", constants_xpm},
    {"copy", copy_xpm},
    {"cut", cut_xpm},
    {"delete", delete_xpm},
    {"down", down_xpm},
    {"find", find_xpm},
    {"findtag", findtag_xpm},
    {"folder", folder_xpm},
    {"folderopen", folderopen_xpm},
    {"kvdesign", kvdesign_xpm, kvdesign32_xpm},
    {"leaf", leaf_xpm},
    {"maptable", maptable_xpm},
    {"new", new_xpm},
    {"paste", paste_xpm},
    {"renumtag", renumtag_xpm},
    {"revert", revert_xpm},
    {"save", save_xpm},
    {"strict", strict_xpm},
    {"tag", tag_xpm},
    {"up", up_xpm},
};

struct Numbered {
    std::int32_t Number;
    const char* Name;
};

constexpr std::int32_t kTagImage = 15;  // tags and messages of a web server

constexpr Numbered kTree[] = {
    {image::kLeaf, "leaf"},
    {image::kFolderOpen, "folderopen"},
    {image::kFolder, "folder"},
    {kTagImage, "tag"},
};

constexpr Numbered kTools[] = {
    {1000, "findtag"},
    {1001, "renumtag"},
    {1002, "maptable"},
    {1003, "constants"},
};

template <std::size_t Count>
const char* NameOf(const Numbered (&Table)[Count], std::int32_t Number, const char* Else) {
    const auto* const Row = std::find_if(std::begin(Table), std::end(Table),
                                         [&](const Numbered& R) { return R.Number == Number; });
    return Row == std::end(Table) ? Else : Row->Name;
}

// Disabled icons are made by the style from the same pixels.
QIcon Made(const Picture& From) {
    QIcon Icon;
    const auto Add = [&Icon](const char* const* Xpm, std::initializer_list<int> Times) {
        const QImage Drawn(Xpm);
        for (const int Each : Times)
            Icon.addPixmap(QPixmap::fromImage(
                Drawn.scaled(Drawn.size() * Each, Qt::KeepAspectRatio, Qt::FastTransformation)));
    };
    if (From.Large) {
        Add(From.Xpm, {1});
        Add(From.Large, {1, 2, 4, 8});
    } else {
        Add(From.Xpm, {1, 2, 3, 4});
    }
    return Icon;
}

}  // namespace

QIcon PictureOf(const QString& Name) {
    const auto* const Row = std::find_if(std::begin(kPictures), std::end(kPictures),
                                         [&](const Picture& P) { return Name == QLatin1String(P.Name); });
    return Row == std::end(kPictures) ? QIcon() : Made(*Row);
}

QIcon TreePicture(std::int32_t Image) { return PictureOf(QLatin1String(NameOf(kTree, Image, "leaf"))); }

QIcon ToolPicture(std::int32_t Bitmap) { return PictureOf(QLatin1String(NameOf(kTools, Bitmap, ""))); }

QStringList PictureNames() {
    QStringList Names;
    for (const Picture& Each : kPictures) Names.append(QLatin1String(Each.Name));
    return Names;
}

}  // namespace kv::desktop
