// The pictures: each file can be read and fits the bitmap resources, and each name and number has its
// picture.

#include "host/desktop/Pictures.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QRegularExpression>
#include <cmath>
#include <set>

#include "frame/DesignTree.h"
#include "resources/ToolButtons.h"

namespace kv::desktop {
namespace {

QDir Folder() { return QDir(QStringLiteral(KV_SOURCE_DIR "/resources/pictures")); }

// The names of the files without "kvdesign32", the larger drawing of "kvdesign".
QStringList Files() {
    QStringList Names;
    for (const QString& File : Folder().entryList({QStringLiteral("*.xpm")}, QDir::Files, QDir::Name))
        Names.append(File.chopped(4));
    EXPECT_EQ(Names.removeAll(QStringLiteral("kvdesign32")), 1);
    return Names;
}

QImage Drawn(const QString& Name) {
    return QImage(Folder().filePath(Name + QStringLiteral(".xpm")), "XPM")
        .convertToFormat(QImage::Format_ARGB32);
}

std::set<QRgb> Colours(const QImage& Of) {
    std::set<QRgb> Found;
    for (int Y = 0; Y < Of.height(); ++Y)
        for (int X = 0; X < Of.width(); ++X) Found.insert(Of.pixel(X, Y));
    return Found;
}

QImage AsShown(const QIcon& Icon, int Size) {
    return Icon.pixmap(QSize(Size, Size), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

// How bright a colour is to the eye, from 0 to 1.
double Light(QRgb Colour) {
    const auto Linear = [](int Value) {
        const double Share = Value / 255.0;
        return Share <= 0.04045 ? Share / 12.92 : std::pow((Share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * Linear(qRed(Colour)) + 0.7152 * Linear(qGreen(Colour)) + 0.0722 * Linear(qBlue(Colour));
}

TEST(Pictures, FilesFitTheBitmapResources) {
    for (const QString& Name : Files() + QStringList{QStringLiteral("kvdesign32")}) {
        const std::string Which = Name.toStdString();
        QFile File(Folder().filePath(Name + QStringLiteral(".xpm")));
        ASSERT_TRUE(File.open(QIODevice::ReadOnly)) << Which;
        const QString Text = QString::fromLatin1(File.readAll());
        const int Size = Name == QStringLiteral("kvdesign32") ? 32 : 16;
        const QRegularExpressionMatch Head =
            QRegularExpression(
                QStringLiteral(R"(static const char\* const (\w+)\[\] = \{\n"(\d+) (\d+) (\d+) 1",)"))
                .match(Text);
        ASSERT_TRUE(Head.hasMatch()) << Which;
        EXPECT_EQ(Head.captured(1), Name + QStringLiteral("_xpm")) << Which;
        EXPECT_EQ(Head.captured(2).toInt(), Size) << Which;
        EXPECT_EQ(Head.captured(3).toInt(), Size) << Which;
        EXPECT_GE(Head.captured(4).toInt(), 2) << Which;
        EXPECT_LE(Head.captured(4).toInt(), 16) << Which;

        const QImage Picture = Drawn(Name);
        ASSERT_FALSE(Picture.isNull()) << Which;
        EXPECT_EQ(Picture.size(), QSize(Size, Size)) << Which;
        EXPECT_EQ(static_cast<int>(Colours(Picture).size()), Head.captured(4).toInt())
            << Which << ": a colour "
            << "that is not used";
        EXPECT_EQ(qAlpha(Picture.pixel(0, 0)), 0) << Which << ": the ground shows through";
    }
}

// At least an eighth of the picture stands out, on a light ground and on a dark one.
TEST(Pictures, StandOutOnLightAndDark) {
    for (const QString& Name : Files())
        for (const QRgb Ground : {qRgb(250, 250, 250), qRgb(32, 33, 36)}) {
            const QImage Picture = Drawn(Name);
            int Clear = 0;
            for (int Y = 0; Y < 16; ++Y)
                for (int X = 0; X < 16; ++X) {
                    const QRgb Dot = Picture.pixel(X, Y);
                    if (qAlpha(Dot) == 0) continue;
                    const double Brighter = std::max(Light(Dot), Light(Ground));
                    const double Darker = std::min(Light(Dot), Light(Ground));
                    if ((Brighter + 0.05) / (Darker + 0.05) >= 2.9) ++Clear;
                }
            EXPECT_GE(Clear, 32) << Name.toStdString() << " on " << qRed(Ground);
        }
}

TEST(Pictures, NoTwoAreAlike) {
    std::set<QByteArray> Seen;
    for (const QString& Name : Files()) {
        const QImage Picture = Drawn(Name);
        const QByteArray Dots(reinterpret_cast<const char*>(Picture.constBits()), Picture.sizeInBytes());
        EXPECT_TRUE(Seen.insert(Dots).second) << Name.toStdString();
    }
}

TEST(Pictures, EveryFileHasItsNameAndEveryNameItsFile) {
    EXPECT_EQ(PictureNames(), Files());
    for (const char* const Name :
         {"findtag",    "renumtag", "maptable", "constants", "copy", "cut",     "paste", "folder",
          "folderopen", "leaf",     "tag",      "save",      "new",  "delete",  "up",    "down",
          "apply",      "revert",   "strict",   "changes",   "find", "kvdesign"})
        EXPECT_TRUE(PictureNames().contains(QLatin1String(Name))) << Name;
    for (const QString& Name : PictureNames()) {
        const QIcon Icon = PictureOf(Name);
        ASSERT_FALSE(Icon.isNull()) << Name.toStdString();
        EXPECT_EQ(AsShown(Icon, 16), Drawn(Name)) << Name.toStdString();
    }
    EXPECT_TRUE(PictureOf(QStringLiteral("nessuna")).isNull());
    EXPECT_TRUE(PictureOf({}).isNull());
}

TEST(Pictures, AreCrispWhenTheyAreLarger) {
    for (const QString& Name : PictureNames()) {
        const QIcon Icon = PictureOf(Name);
        for (const int Times : {2, 3, 4}) {
            const QImage Large = AsShown(Icon, 16 * Times);
            if (Name == QStringLiteral("kvdesign")) {
                // Drawn for itself; three times 16 is no multiple of that.
                if (Times == 2) {
                    EXPECT_EQ(Large, Drawn(QStringLiteral("kvdesign32")));
                }
                continue;
            }
            ASSERT_EQ(Large.size(), QSize(16 * Times, 16 * Times)) << Name.toStdString();
            const QImage Small = Drawn(Name);
            bool Same = true;
            for (int Y = 0; Y < Large.height(); ++Y)
                for (int X = 0; X < Large.width(); ++X)
                    Same = Same && Large.pixel(X, Y) == Small.pixel(X / Times, Y / Times);
            EXPECT_TRUE(Same) << Name.toStdString() << " times " << Times;
        }
    }
}

TEST(Pictures, NumbersOfTheTree) {
    const auto Shows = [](std::int32_t Number, const char* Name) {
        return AsShown(TreePicture(Number), 16) == Drawn(QLatin1String(Name));
    };
    EXPECT_TRUE(Shows(image::kFolder, "folder"));
    EXPECT_TRUE(Shows(image::kFolderOpen, "folderopen"));
    EXPECT_TRUE(Shows(image::kLeaf, "leaf"));
    EXPECT_TRUE(Shows(15, "tag"));
    for (const std::int32_t Unknown : {-1, 0, 1, 10, 16, 1000})
        EXPECT_TRUE(Shows(Unknown, "leaf")) << Unknown;
}

TEST(Pictures, EveryToolButtonHasItsOwn) {
    for (const resources::ToolButton& Button : resources::kToolButtons) {
        const QString Name =
            QString::fromWCharArray(Button.Word.data(), static_cast<qsizetype>(Button.Word.size())).toLower();
        ASSERT_FALSE(ToolPicture(Button.Bitmap).isNull()) << Button.Bitmap;
        EXPECT_EQ(AsShown(ToolPicture(Button.Bitmap), 16), Drawn(Name)) << Name.toStdString();
    }
    EXPECT_TRUE(ToolPicture(0).isNull());
    EXPECT_TRUE(ToolPicture(1004).isNull());
}

}  // namespace
}  // namespace kv::desktop
