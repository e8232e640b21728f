// The languages of the windows.

#include "host/desktop/Translations.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

#include "host/desktop/BrowserWindow.h"
#include "host/desktop/ClassNames.h"
#include "host/desktop/ObjectDialog.h"
#include "tests/desktop/Driving.h"

namespace kv::desktop::test {
namespace {

using kv::test::Operator;

class TranslationsTest : public DesktopTest {
  protected:
    void SetUp() override {
        if (!Translations::EnglishIsThere()) GTEST_SKIP() << "built without Qt's lrelease, in Italian only";
    }
    static QStringList Menus(const QMainWindow& Window) {
        QStringList All;
        for (const QAction* const Each : Window.menuBar()->actions()) All.append(Each->text());
        return All;
    }
};

TEST_F(TranslationsTest, EnglishStandsInEveryWindow) {
    const Translations English{QLocale(QLocale::English)};
    BrowserWindow Browser(OnDesk);
    Browser.Reload();
    EXPECT_EQ(Browser.windowTitle(), QStringLiteral("Objects of kvdesign.db"));
    EXPECT_EQ(Menus(Browser), QStringList({"&Store", "&Object", "&View", "&?"}));
    EXPECT_EQ(Browser.View()->model()->headerData(1, Qt::Horizontal).toString(),
              QStringLiteral("Description"));
    EXPECT_EQ(ClassName(L"STOPWORD"), QStringLiteral("Stop words"));
    const ObjectDialog Form(QStringLiteral("x"), {}, false, {}, nullptr);
    ASSERT_NE(Form.findChild<QDialogButtonBox*>(), nullptr);
    QStringList Buttons;
    for (const QAbstractButton* const Each : Form.findChild<QDialogButtonBox*>()->buttons())
        Buttons.append(Each->text());
    EXPECT_TRUE(Buttons.contains(QStringLiteral("&Cancel"))) << qPrintable(Buttons.join(u','));

    InWindow(L"FILTER", L"DISPONIBILI", [this](const Shown& On) {
        EXPECT_EQ(Menus(On.Window), QStringList({"&Object", "&Edit", "&Text", "&Go", "Too&ls"}));
        EXPECT_EQ(On.Window.ActionOf(QStringLiteral("apply"))->text(), QStringLiteral("&Apply the text"));
        On.Leaf(L"PARMS");
        On.Type(On.Editor().SectionText() + QStringLiteral("'x\r\n"));
        On.Do("apply");
        EXPECT_EQ(On.Window.Message(), QStringLiteral("Text applied."));
        Operator Person;
        Answers(Person, QStringLiteral("Unsaved changes will be lost."), QStringLiteral("Yes"));
        On.Do("reload");
    });
}

TEST_F(TranslationsTest, WhoReadsNeitherIsServedInEnglish) {
    const Translations Other{QLocale(QLocale::Japanese)};
    EXPECT_EQ(ClassName(L"LOAN"), QStringLiteral("Loan"));
}

TEST_F(TranslationsTest, ItalianIsWhatStandsInTheProgram) {
    for (const QLocale::Language Each : {QLocale::Italian, QLocale::C}) {
        const Translations Italian{QLocale(Each)};
        EXPECT_EQ(ClassName(L"LOAN"), QStringLiteral("Prestito"));
    }
    { const Translations English{QLocale(QLocale::English)}; }
    EXPECT_EQ(ClassName(L"LOAN"), QStringLiteral("Prestito")) << "a language goes with its owner";
}

}  // namespace
}  // namespace kv::desktop::test
