#include "com/window/Pictures.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/DesignTree.h"

namespace kv::com {
namespace {

#include "resources/pictures/apply.xpm"
#include "resources/pictures/copy.xpm"
#include "resources/pictures/cut.xpm"
#include "resources/pictures/delete.xpm"
#include "resources/pictures/down.xpm"
#include "resources/pictures/folder.xpm"
#include "resources/pictures/folderopen.xpm"
#include "resources/pictures/leaf.xpm"
#include "resources/pictures/new.xpm"
#include "resources/pictures/paste.xpm"
#include "resources/pictures/revert.xpm"
#include "resources/pictures/save.xpm"
#include "resources/pictures/tag.xpm"
#include "resources/pictures/up.xpm"

constexpr int kSide = 16;
constexpr std::int32_t kTagImage = 15;  // tags and messages of a web server

struct Numbered {
    std::int32_t Number;
    const char* const* Xpm;
};
constexpr Numbered kTree[] = {
    {image::kLeaf, leaf_xpm},
    {image::kFolderOpen, folderopen_xpm},
    {image::kFolder, folder_xpm},
    {kTagImage, tag_xpm},
};

struct Named {
    std::wstring_view Word;
    const char* const* Xpm;
};
constexpr Named kTools[] = {
    {L"COPY", copy_xpm},   {L"CUT", cut_xpm},       {L"PASTE", paste_xpm}, {L"save", save_xpm},
    {L"apply", apply_xpm}, {L"revert", revert_xpm}, {L"new", new_xpm},     {L"delete", delete_xpm},
    {L"up", up_xpm},       {L"down", down_xpm},
};

constexpr std::uint32_t kNothing = 0xFF00FF;  // the colour that no picture uses stands for what shows through

// A picture of one letter a pixel as pixels, each drawn `Scale` times either way. The picture is ours: its
// form is not doubted.
Owned<HBITMAP> Drawn(const char* const* Xpm, int Scale) {
    char* At = nullptr;
    const long Width = std::strtol(Xpm[0], &At, 10);
    const long Height = std::strtol(At, &At, 10);
    const long Colours = std::strtol(At, &At, 10);
    std::array<std::uint32_t, 128> Colour{};
    for (long Row = 1; Row <= Colours; ++Row) {
        const char* const Value = std::strstr(Xpm[Row] + 1, "c ") + 2;
        Colour[static_cast<unsigned char>(Xpm[Row][0]) & 0x7FU] =
            *Value == '#' ? static_cast<std::uint32_t>(std::strtoul(Value + 1, nullptr, 16)) : kNothing;
    }
    BITMAPINFO Form{};
    Form.bmiHeader.biSize = sizeof Form.bmiHeader;
    Form.bmiHeader.biWidth = Width * Scale;
    Form.bmiHeader.biHeight = -Height * Scale;  // top down
    Form.bmiHeader.biPlanes = 1;
    Form.bmiHeader.biBitCount = 32;
    void* Bits = nullptr;
    Owned<HBITMAP> Made(CreateDIBSection(nullptr, &Form, DIB_RGB_COLORS, &Bits, nullptr, 0));
    if (!Made) return Made;
    auto* Pixel = static_cast<std::uint32_t*>(Bits);
    for (long Y = 0; Y < Height * Scale; ++Y)
        for (long X = 0; X < Width * Scale; ++X)
            *Pixel++ = Colour[static_cast<unsigned char>(Xpm[1 + Colours + Y / Scale][X / Scale]) & 0x7FU];
    return Made;
}

Owned<HIMAGELIST> EmptyList(int Side) {
    return Owned<HIMAGELIST>(ImageList_Create(Side, Side, ILC_COLOR24 | ILC_MASK, 0, 8));
}

int AddTo(HIMAGELIST List, HBITMAP Picture, COLORREF ShowsThrough) {
    return Picture ? ImageList_AddMasked(List, Picture, ShowsThrough) : -1;
}

}  // namespace

TreePictures::TreePictures() : List_(EmptyList(kSide * PictureScale())) {
    for (const Numbered& Each : kTree)
        AddTo(List_.get(), Drawn(Each.Xpm, PictureScale()).get(), RGB(0xFF, 0, 0xFF));
}

int TreePictures::PlaceOf(std::int32_t Image) noexcept {
    const auto* const Row = std::find_if(std::begin(kTree), std::end(kTree),
                                         [&](const Numbered& R) { return R.Number == Image; });
    return Row == std::end(kTree) ? 0 : static_cast<int>(Row - std::begin(kTree));
}

ToolPictures::ToolPictures() : Side_(kSide * PictureScale()), List_(EmptyList(Side_)) {}

// What shows through has the colour of the first pixel.
int ToolPictures::Add(std::int32_t Bitmap) {
    if (Bitmap <= 0 || Bitmap > 0xFFFF) return -1;
    const Owned<HBITMAP> Loaded(
        static_cast<HBITMAP>(LoadImageW(OwnModule(), MAKEINTRESOURCEW(static_cast<WORD>(Bitmap)),
                                        IMAGE_BITMAP, Side_, Side_, LR_CREATEDIBSECTION)));
    return AddTo(List_.get(), Loaded.get(), CLR_DEFAULT);
}

int ToolPictures::Add(std::wstring_view Word) {
    const auto* const Row =
        std::find_if(std::begin(kTools), std::end(kTools), [&](const Named& R) { return R.Word == Word; });
    if (Row == std::end(kTools)) return -1;
    return AddTo(List_.get(), Drawn(Row->Xpm, PictureScale()).get(), RGB(0xFF, 0, 0xFF));
}

}  // namespace kv::com
