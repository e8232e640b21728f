// What those need who work by keyboard, with a screen reader, with large letters or in the dark: in every
// window and dialog, in both languages.

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QTreeView>
#include <map>
#include <set>

#include "host/desktop/BrowserWindow.h"
#include "host/desktop/ChangesDialog.h"
#include "host/desktop/ElidedLabel.h"
#include "host/desktop/ObjectDialog.h"
#include "host/desktop/Translations.h"
#include "tests/desktop/Driving.h"
#include "tests/desktop/Looks.h"

namespace kv::desktop::test {
namespace {

using kv::test::Operator;

QByteArray Called(const QObject& Which) {
    return QByteArray(Which.metaObject()->className()) + ' ' + Which.objectName().toUtf8();
}

// Parts that Qt makes of its own widgets are Qt's to name.
bool Ours(const QWidget& Which) {
    for (const QWidget* Each = &Which; Each && !Each->isWindow(); Each = Each->parentWidget())
        if (Each->objectName().startsWith(QLatin1String("qt_")) &&
            !Each->objectName().startsWith(QLatin1String("qt_msgbox")))
            return false;
    return true;
}

std::vector<QWidget*> Focusable(QWidget& Window) {
    std::vector<QWidget*> All;
    for (QWidget* const Each : Window.findChildren<QWidget*>())
        if (Each->isVisible() && Each->isEnabled() && Each->window() == &Window && Ours(*Each) &&
            (Each->focusPolicy() & Qt::TabFocus) != 0)
            All.push_back(Each);
    return All;
}

QString NameOf(QWidget& Which) {
    QAccessibleInterface* const Reads = QAccessible::queryAccessibleInterface(&Which);
    return Reads ? Reads->text(QAccessible::Name) : QString();
}

// The letter that Alt wants, none for a text without.
QChar Mnemonic(QString Text) {
    Text.replace(QStringLiteral("&&"), QString());
    const qsizetype At = Text.indexOf(u'&');
    return At >= 0 && At + 1 < Text.size() ? Text[At + 1].toLower() : QChar();
}

void ExpectOneEach(const std::vector<QString>& Texts, const char* Where) {
    std::map<QChar, QString> Taken;
    for (const QString& Text : Texts) {
        const QChar Letter = Mnemonic(Text);
        if (Letter.isNull()) continue;
        EXPECT_TRUE(Taken.emplace(Letter, Text).second)
            << Where << ": " << qPrintable(Text) << " and " << qPrintable(Taken[Letter]);
    }
}

void ExpectNamed(QWidget& Window) {
    EXPECT_FALSE(Window.windowTitle().isEmpty());
    for (QWidget* const Each : Focusable(Window))
        EXPECT_FALSE(NameOf(*Each).isEmpty())
            << Called(*Each).constData() << " in " << Called(Window).constData();
}

void ExpectActions(QWidget& Window) {
    std::map<QString, const QAction*> Keys;
    for (const QAction* const Each : Window.findChildren<QAction*>()) {
        if (Each->isSeparator() || Each->objectName().startsWith(QLatin1String("_q_"))) continue;
        // What does not fit into a bar goes into such a menu of Qt's.
        const auto* const Menu = qobject_cast<const QMenu*>(Each->parent());
        if (Menu && Menu->title().isEmpty() && Each == Menu->menuAction()) continue;
        EXPECT_FALSE(Each->text().isEmpty()) << Called(*Each->parent()).constData();
        for (const QKeySequence& Key : Each->shortcuts()) {
            const auto [At, New] = Keys.emplace(Key.toString(), Each);
            EXPECT_TRUE(New) << qPrintable(Key.toString()) << ": " << qPrintable(At->second->text()) << ", "
                             << qPrintable(Each->text());
        }
    }
    // What stands side by side: the menu bar with what Alt reaches in the window, and each menu.
    std::vector<QString> Top;
    for (const QWidget* const Each : Window.findChildren<QWidget*>()) {
        if (!Each->isVisible() || !Ours(*Each)) continue;
        if (const auto* const Button = qobject_cast<const QAbstractButton*>(Each))
            Top.push_back(Button->text());
        if (const auto* const Label = qobject_cast<const QLabel*>(Each); Label && Label->buddy())
            Top.push_back(Label->text());
    }
    for (const QMenuBar* const Bar : Window.findChildren<QMenuBar*>())
        for (const QAction* const Each : Bar->actions()) Top.push_back(Each->text());
    ExpectOneEach(Top, Called(Window).constData());
    for (const QMenu* const Menu : Window.findChildren<QMenu*>()) {
        std::vector<QString> Texts;
        for (const QAction* const Each : Menu->actions()) Texts.push_back(Each->text());
        ExpectOneEach(Texts, qPrintable(Menu->title()));
    }
}

void ExpectTabReachesAll(QWidget& Window) {
    const std::vector<QWidget*> All = Focusable(Window);
    ASSERT_FALSE(All.empty());
    All.front()->setFocus();
    std::set<QWidget*> Reached;
    for (std::size_t Step = 0; Step < 4 * All.size() && Window.focusWidget(); ++Step) {
        Reached.insert(Window.focusWidget());
        QTest::keyClick(Window.focusWidget(), Qt::Key_Tab);
    }
    for (QWidget* const Each : All)
        EXPECT_TRUE(Reached.contains(Each))
            << Called(*Each).constData() << " in " << Called(Window).constData();
}

void ExpectNothingCutOff(QWidget& Window) {
    QApplication::processEvents();
    for (QWidget* const Each : Window.findChildren<QWidget*>()) {
        if (!Each->isVisible() || Each->window() != &Window || !Ours(*Each)) continue;
        if (qobject_cast<QHeaderView*>(Each)) continue;  // looked at below
        const bool Whole = qobject_cast<QAbstractButton*>(Each) ||
                           (qobject_cast<QLabel*>(Each) && !qobject_cast<ElidedLabel*>(Each) &&
                            !qobject_cast<QLabel*>(Each)->wordWrap());
        const QSize Wanted = Whole ? Each->sizeHint() : Each->minimumSizeHint();
        EXPECT_GE(Each->width(), Wanted.width()) << Called(*Each).constData();
        EXPECT_GE(Each->height(), Wanted.height()) << Called(*Each).constData();
        const auto* const Label = qobject_cast<QLabel*>(Each);
        if (Label && Label->wordWrap()) {
            EXPECT_GE(Label->height(), Label->heightForWidth(Label->width())) << qPrintable(Label->text());
        }
    }
    for (const QToolBar* const Bar : Window.findChildren<QToolBar*>()) {
        const auto* const More = Bar->findChild<QWidget*>(QStringLiteral("qt_toolbar_ext_button"));
        EXPECT_FALSE(More && More->isVisible()) << qPrintable(Bar->windowTitle());
    }
    for (const QHeaderView* const Header : Window.findChildren<QHeaderView*>())
        for (int Column = 0; Header->isVisible() && Column < Header->count(); ++Column)
            EXPECT_GE(Header->sectionSize(Column), Header->sectionSizeHint(Column)) << Column;
}

/// The mean of what is seen of a widget, 0 to 255.
double Brightness(QWidget& Which) {
    const QImage Seen = Which.grab().toImage().scaled(64, 64).convertToFormat(QImage::Format_Grayscale8);
    double Sum = 0;
    for (int Y = 0; Y < Seen.height(); ++Y)
        for (int X = 0; X < Seen.width(); ++X) Sum += qGray(Seen.pixel(X, Y));
    return Sum / (Seen.width() * Seen.height());
}

class KeyboardTest : public DesktopTest {
  protected:
    /// Does this in every window and dialog, each as it opens.
    void InEach(const std::function<void(QWidget&)>& Do) {
        {
            BrowserWindow Browser(OnDesk);
            Browser.Reload();
            Browser.show();
            Browser.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&Browser));
            SCOPED_TRACE("browser");
            Do(Browser);
            for (const char* const Action : {"new", "copy", "delete", "about"}) {
                SCOPED_TRACE(Action);
                Browser.Select({L"SORT", L"ITALIANO"});
                Operator Person;
                Person.In<QDialog>([&](QDialog& Up) {
                    Do(Up);
                    Up.reject();
                });
                Browser.findChild<QAction*>(QLatin1String(Action))->trigger();
            }
        }
        for (const auto& [Clsid, Name, Section] : {std::tuple{L"TABLE", L"NOTIZIE", L"FIELDPARMS"},
                                                   std::tuple{L"MAIL", L"CENTRALE", L"FIELDCAPTION"}})
            InWindow(Clsid, Name, [&, Words = std::wstring(Section)](const Shown& On) {
                SCOPED_TRACE(qPrintable(FromWide(On.Object.Clsid())));
                On.Leaf(Words, 3);
                Do(On.Window);
                On.Type(QStringLiteral("=SBAGLIATO\r\n"));
                On.Do("apply");
                EXPECT_FALSE(On.Window.Message().isEmpty());
                Do(On.Window);
                Operator Person;
                const auto Look = [&](QDialog& Up) {
                    Do(Up);
                    Up.reject();
                };
                Person.In<QDialog>(Look);
                EXPECT_FALSE(On.Window.Select(L"ROOT"));
                On.Do("revert");
                Person.In<ChangesDialog>([&](ChangesDialog& Up) { Look(Up); });
                On.Do("changes");
                Person.In<QDialog>(Look);
                OnDesk.Platform().ShowList(L"Tag", std::vector<std::wstring>{L"1 - 10", L"12"});
                Person.In<QDialog>(Look);
                static_cast<void>(ChangesDialog::AskOvertaken({}, &On.Window));
            });
    }
};

TEST_F(KeyboardTest, ScreenReadersFindANameForAllThatHasTheFocus) { InEach(ExpectNamed); }

TEST_F(KeyboardTest, TheMessageIsReadOut) {
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(QStringLiteral("=SBAGLIATO\r\n"));
        On.Do("apply");
        bool Read = false;
        for (QLabel* const Each : On.Window.findChildren<QLabel*>())
            Read = Read || NameOf(*Each) == On.Window.Message();
        EXPECT_TRUE(Read);
    });
}

TEST_F(KeyboardTest, ActionsHaveATextAndNoTwoTheSameKeys) { InEach(ExpectActions); }

TEST_F(KeyboardTest, InEnglishToo) {
    const Translations English{QLocale(QLocale::English)};
    InEach([](QWidget& Window) {
        ExpectNamed(Window);
        ExpectActions(Window);
        ExpectNothingCutOff(Window);
    });
}

TEST_F(KeyboardTest, TabReachesEverything) { InEach(ExpectTabReachesAll); }

TEST_F(KeyboardTest, LettersOfAnySizeAreShownWhole) {
    const QFont Before = QApplication::font();
    for (const double Times : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(Times);
        QFont Large = Before;
        Large.setPointSizeF(Before.pointSizeF() * Times);
        QApplication::setFont(Large);
        InEach(ExpectNothingCutOff);
    }
    QApplication::setFont(Before);
}

TEST_F(KeyboardTest, WindowsAreLightOnALightDeskAndDarkOnADarkOne) {
    const QPalette Before = QApplication::palette();
    for (const bool Dark : {false, true}) {
        SCOPED_TRACE(Dark);
        QApplication::setPalette(Dark ? DarkLook() : LightLook());
        InEach([&](QWidget& Window) {
            for (QWidget* const Each : Focusable(Window)) {
                const bool Selected = qobject_cast<QAbstractButton*>(Each) != nullptr;
                if (Selected || Each->height() < 10) continue;
                const double Seen = Brightness(*Each);
                EXPECT_TRUE(Dark ? Seen < 110 : Seen > 150) << Seen << " " << Called(*Each).constData();
            }
        });
    }
    QApplication::setPalette(Before);
}

}  // namespace
}  // namespace kv::desktop::test
