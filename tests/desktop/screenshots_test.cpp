// Pictures of the real windows. They are made at each run, so that they can be made; tools/screenshots.sh
// names the folder (KV_SCREENSHOTS) in which they stay.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QDir>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QStyleFactory>
#include <QTreeView>
#include <algorithm>
#include <cstdlib>

#include "host/desktop/BrowserWindow.h"
#include "host/desktop/ChangesDialog.h"
#include "tests/desktop/Driving.h"
#include "tests/desktop/Looks.h"

namespace kv::desktop::test {
namespace {

using kv::test::Operator;

constexpr QSize kSize(1100, 700);

class ScreenshotsTest : public DesktopTest {
  protected:
    ScreenshotsTest() : StyleBefore_(QApplication::style()->objectName()), Before_(QApplication::palette()) {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(LightLook());
    }
    ~ScreenshotsTest() override {
        QApplication::setStyle(StyleBefore_);
        QApplication::setPalette(Before_);
    }

    void Keep(const QImage& Whole, const char* Name) const {
        // 256 colours make a small file: those that are seen most, but none beside one that is there already.
        QHash<QRgb, int> Seen;
        for (int Y = 0; Y < Whole.height(); ++Y)
            for (int X = 0; X < Whole.width(); ++X) ++Seen[Whole.pixel(X, Y)];
        EXPECT_GT(Seen.size(), 50) << Name << " is empty";
        QList<QRgb> All = Seen.keys();
        std::sort(All.begin(), All.end(), [&](QRgb A, QRgb B) { return Seen[A] > Seen[B]; });
        QList<QRgb> Colours;
        const auto Near = [](QRgb A, QRgb B) {
            return std::abs(qRed(A) - qRed(B)) + std::abs(qGreen(A) - qGreen(B)) +
                       std::abs(qBlue(A) - qBlue(B)) <
                   20;
        };
        for (const QRgb Each : All)
            if (Colours.size() < 256 &&
                std::none_of(Colours.begin(), Colours.end(), [&](QRgb Taken) { return Near(Each, Taken); }))
                Colours.append(Each);
        const QImage Small = Whole.convertToFormat(QImage::Format_Indexed8, Colours);
        const QString Asked = qEnvironmentVariable("KV_SCREENSHOTS");
        const QDir Folder(Asked.isEmpty() ? QString::fromStdString(Place.Folder().string()) : Asked);
        constexpr int kSmallest = 0;
        EXPECT_TRUE(Small.save(Folder.filePath(QString::fromLatin1(Name) + QStringLiteral(".png")), "PNG",
                               kSmallest));
    }
    static QImage Grabbed(QWidget& Window) {
        QApplication::processEvents();
        return Window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    // With the popup that stands over the window.
    static QImage GrabbedWith(QWidget& Window, QWidget& Popup) {
        QImage Whole = Grabbed(Window);
        QPainter(&Whole).drawPixmap(Window.mapFromGlobal(Popup.mapToGlobal(QPoint())), Popup.grab());
        return Whole;
    }
    /// The window of an object with a section open, and what else is to be seen.
    void Shoot(const char* Name, const std::wstring& Clsid, const std::wstring& Object,
               std::wstring_view Section, int Nth, const std::function<void(const Shown&)>& More = {}) {
        InWindow(Clsid, Object, [&](const Shown& On) {
            On.Window.resize(kSize);
            On.Leaf(Section, Nth);
            On.Editor().setFocus();
            QApplication::processEvents();
            if (More)
                More(On);
            else
                Keep(Grabbed(On.Window), Name);
        });
    }

  private:
    QString StyleBefore_;
    QPalette Before_;
};

TEST_F(ScreenshotsTest, OfTheBrowserAndOfElevenClasses) {
    {
        BrowserWindow Browser(OnDesk);
        ASSERT_TRUE(Browser.OpenStore(Place.Store()));
        Browser.resize(kSize);
        Browser.show();
        Browser.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Browser));
        Browser.Select({L"CATALOGUE", L"GENERALE"});
        // The same wherever the pictures are made.
        Browser.findChild<QLabel*>(QStringLiteral("where"))
            ->setText(QStringLiteral("/srv/biblioteca/kvdesign.db"));
        Keep(Grabbed(Browser), "browser");
        Browser.close();
    }
    Shoot("table", L"TABLE", L"NOTIZIE", L"FIELDPARMS", 14);
    Shoot("query", L"QUERY", L"AVANZATA", L"CONSTANTCAPTION", 17);
    Shoot("menu", L"MENU", L"PRINCIPALE", L"COMMANDPARMS", 3);
    Shoot("stringtable", L"STRINGTABLE", L"CATALOGO", L"FIELDCAPTION", 7);
    Shoot("webserver", L"WEBSERVER", L"OPAC", L"PARMS", 1);
    Shoot("mail", L"MAIL", L"CENTRALE", L"FIELDCAPTION", 6);
    Shoot("vclient", L"VCLIENT", L"LETTORI", L"PARMS", 1);
    Shoot("alias", L"ALIAS", L"SPORTELLI", L"FIELDS", 2);
    Shoot("sort", L"SORT", L"ITALIANO", L"PARMS", 2);
    Shoot("filter-refused", L"FILTER", L"DISPONIBILI", L"PARMS", 1, [&](const Shown& On) {
        On.Type(On.Editor().SectionText().replace(QStringLiteral("MERGEWITH= AND"),
                                                  QStringLiteral("MERGEWITH= OPPURE")));
        On.Do("apply");
        EXPECT_GT(On.Editor().FaultLine(), 1);
        Keep(Grabbed(On.Window), "filter-refused");
    });
    Shoot("profile-completion", L"PROFILE", L"SCHEDA", L"FORMATPARMS", 2, [&](const Shown& On) {
        SectionEditor& Editor = On.Editor();
        QTextCursor At = Editor.document()->find(QStringLiteral("STYLE="));
        ASSERT_FALSE(At.isNull());
        At.movePosition(QTextCursor::EndOfBlock);
        Editor.setTextCursor(At);
        QTest::keyClicks(&Editor, "|");
        QWidget& Popup = *Editor.Completer()->popup();
        ASSERT_TRUE(QTest::qWaitFor([&] { return Popup.isVisible(); }));
        Keep(GrabbedWith(On.Window, Popup), "profile-completion");
        On.Do("revert");
    });
    QApplication::setPalette(DarkLook());
    Shoot("table-dark", L"TABLE", L"NOTIZIE", L"PARMS", 1);
}

TEST_F(ScreenshotsTest, OfWhatTheNextSaveChanges) {
    Shoot("changes", L"TABLE", L"NOTIZIE", L"FIELDPARMS", 14, [&](const Shown& On) {
        On.Type(On.Editor().SectionText().replace(QStringLiteral("SIZE= 3"), QStringLiteral("SIZE= 12")));
        On.Do("apply");
        const window::TreeNode* const Leaf = On.Core.Tree().Find(On.Window.Current());
        ASSERT_TRUE(On.Window.Select(Leaf->Parent->Parent->Key));
        On.Do("moveUp");
        On.Do("new");
        On.Window.resize(kSize);
        Operator Person;
        Person.In<ChangesDialog>([&](ChangesDialog& Dialog) {
            Keep(Grabbed(Dialog), "changes");
            Dialog.reject();
        });
        On.Do("changes");
    });
}

}  // namespace
}  // namespace kv::desktop::test
