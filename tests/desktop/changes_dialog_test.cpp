// The comparison as it is read, and the question about a save that another program overtook.

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <cmath>
#include <functional>

#include "host/desktop/ChangesDialog.h"

namespace kv::desktop {
namespace {

using Kind = SectionChange::Kind;

std::vector<SectionChange> Example() {
    std::vector<LineChange> Lines;
    for (int I = 1; I <= 9; ++I) Lines.push_back({Line::Same, L"L" + std::to_wstring(I)});
    Lines.push_back({Line::Removed, L"TAG= 1"});
    Lines.push_back({Line::Added, L"TAG= 2"});
    for (int I = 10; I <= 18; ++I) Lines.push_back({Line::Same, L"L" + std::to_wstring(I)});
    return {{Kind::Changed, L"Campi / AUTORE", Lines},
            {Kind::Removed, L"Campi / NOTE", {{Line::Removed, L"NAME= \"NOTE\""}}},
            {Kind::Added, L"Titolo: [ITA] <b>", {{Line::Added, L"TEXT= \"<b> & altro\""}}},
            {Kind::Moved, L"Campi / ANNO", {}}};
}

QStringList Shown(const ChangesDialog& Dialog) { return Dialog.Text()->toPlainText().split(u'\n'); }

QTextBlock BlockOf(const ChangesDialog& Dialog, const QString& Text) {
    for (QTextBlock Each = Dialog.Text()->document()->begin(); Each.isValid(); Each = Each.next())
        if (Each.text() == Text) return Each;
    ADD_FAILURE() << Text.toStdString();
    return {};
}

double Light(const QColor& Colour) {
    const auto Linear = [](double Share) {
        return Share <= 0.04045 ? Share / 12.92 : std::pow((Share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * Linear(Colour.redF()) + 0.7152 * Linear(Colour.greenF()) +
           0.0722 * Linear(Colour.blueF());
}

double Contrast(const QColor& A, const QColor& B) {
    const double Brighter = std::max(Light(A), Light(B));
    return (Brighter + 0.05) / (std::min(Light(A), Light(B)) + 0.05);
}

// Drives the question while it is open, and gives its answer.
Overtaken Ask(std::vector<SectionChange> Changes, const std::function<void(ChangesDialog&)>& Drive) {
    bool Driven = false;
    QTimer::singleShot(0, [&] {
        auto* const Open = qobject_cast<ChangesDialog*>(QApplication::activeModalWidget());
        if (!Open) return;
        Driven = true;
        static_cast<void>(QTest::qWaitForWindowActive(Open));
        Drive(*Open);
        // A button pressed by its letter takes a moment.
        if (!QTest::qWaitFor([&] { return !Open->isVisible(); }, 2000)) {
            ADD_FAILURE() << "the question is still open";
            Open->reject();
        }
    });
    const Overtaken Answer = ChangesDialog::AskOvertaken(std::move(Changes), nullptr);
    EXPECT_TRUE(Driven);
    return Answer;
}

QPushButton* Button(const ChangesDialog& In, const char* Name) {
    auto* const Found = In.findChild<QPushButton*>(QLatin1String(Name));
    EXPECT_NE(Found, nullptr) << Name;
    return Found;
}

TEST(ChangesDialog, ShowsEachSectionWithWhatStandsAround) {
    const ChangesDialog Dialog(QStringLiteral("Modifiche"), Example(), nullptr);
    EXPECT_EQ(Dialog.windowTitle(), QStringLiteral("Modifiche"));
    const QStringList Expected = {QStringLiteral("Campi / AUTORE (modificata)"),
                                  QStringLiteral("⋯ righe uguali: 6"),
                                  QStringLiteral("  L7"),
                                  QStringLiteral("  L8"),
                                  QStringLiteral("  L9"),
                                  QStringLiteral("- TAG= 1"),
                                  QStringLiteral("+ TAG= 2"),
                                  QStringLiteral("  L10"),
                                  QStringLiteral("  L11"),
                                  QStringLiteral("  L12"),
                                  QStringLiteral("⋯ righe uguali: 6"),
                                  QStringLiteral("Campi / NOTE (tolta)"),
                                  QStringLiteral("- NAME= \"NOTE\""),
                                  QStringLiteral("Titolo: [ITA] <b> (aggiunta)"),
                                  QStringLiteral("+ TEXT= \"<b> & altro\""),
                                  QStringLiteral("Campi / ANNO (spostata)")};
    EXPECT_EQ(Shown(Dialog), Expected) << Shown(Dialog).join(u'\n').toStdString();
    EXPECT_TRUE(Dialog.Text()->isReadOnly());
    EXPECT_FALSE(Dialog.Text()->accessibleName().isEmpty());
    EXPECT_EQ(BlockOf(Dialog, Expected[0]).blockFormat().headingLevel(), 2)
        << "screen readers find the sections";
    EXPECT_EQ(BlockOf(Dialog, Expected[5]).blockFormat().headingLevel(), 0);
    EXPECT_EQ(Dialog.Text()->textCursor().position(), 0);
}

TEST(ChangesDialog, SaysWhenNothingDiffers) {
    const ChangesDialog Dialog(QStringLiteral("Modifiche"), {}, nullptr);
    EXPECT_EQ(Shown(Dialog), QStringList{QStringLiteral("Nessuna differenza nel testo delle sezioni.")});
}

TEST(ChangesDialog, ReadsWellInLightAndDark) {
    QPalette Light;
    Light.setColor(QPalette::Base, Qt::white);
    Light.setColor(QPalette::Text, Qt::black);
    QPalette Dark;
    Dark.setColor(QPalette::Base, QColor(30, 30, 30));
    Dark.setColor(QPalette::Text, QColor(225, 225, 225));
    ChangesDialog Dialog(QStringLiteral("Modifiche"), Example(), nullptr);
    for (const QPalette& Colours : {Light, Dark, Light}) {
        Dialog.setPalette(Colours);
        const QColor Base = Colours.color(QPalette::Base);
        const auto Look = [&](const QString& Text) {
            const QTextBlock Block = BlockOf(Dialog, Text);
            const QColor Ink = Block.begin().fragment().charFormat().foreground().color();
            const QColor Ground = Block.blockFormat().background().style() == Qt::NoBrush
                                      ? Base
                                      : Block.blockFormat().background().color();
            EXPECT_GE(Contrast(Ink, Ground), 7.0) << Text.toStdString();
            return Ground;
        };
        const QColor Same = Look(QStringLiteral("  L9"));
        const QColor Removed = Look(QStringLiteral("- TAG= 1"));
        const QColor Added = Look(QStringLiteral("+ TAG= 2"));
        Look(QStringLiteral("Campi / AUTORE (modificata)"));
        EXPECT_EQ(Same, Base);
        EXPECT_GT(Removed.red(), Removed.green()) << "red";
        EXPECT_GT(Added.green(), Added.red()) << "green";
    }
}

TEST(ChangesDialog, GrowsWithTheFont) {
    ChangesDialog Dialog(QStringLiteral("Modifiche"), Example(), nullptr);
    const auto Points = [&] {
        return BlockOf(Dialog, QStringLiteral("- TAG= 1"))
            .begin()
            .fragment()
            .charFormat()
            .font()
            .pointSizeF();
    };
    QFont Larger = Dialog.font();
    Larger.setPointSizeF(24);
    EXPECT_LT(Points(), 24);
    Dialog.setFont(Larger);
    EXPECT_EQ(Points(), 24);
}

TEST(ChangesDialog, ThePreviewClosesByKey) {
    for (const Qt::Key Key : {Qt::Key_Return, Qt::Key_Escape}) {
        ChangesDialog Dialog(QStringLiteral("Modifiche"), Example(), nullptr);
        Dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Dialog));
        EXPECT_EQ(Dialog.focusWidget(), Dialog.Text()) << "the arrows scroll";
        EXPECT_EQ(Dialog.findChildren<QPushButton*>().size(), 1);
        QTest::keyClick(Dialog.Text(), Key);
        EXPECT_FALSE(Dialog.isVisible());
    }
}

TEST(AskOvertaken, TellsWhatItIsAbout) {
    static_cast<void>(Ask(Example(), [](ChangesDialog& Open) {
        EXPECT_TRUE(Open.accessibleDescription().startsWith(
            QStringLiteral("Un altro programma ha salvato questo oggetto dopo che è stato aperto.")));
        EXPECT_TRUE(Shown(Open).contains(QStringLiteral("- TAG= 1")));
        QStringList Texts;
        for (const char* const Name : {"TakeOver", "Keep", "Cancel"})
            Texts.append(Button(Open, Name)->text().remove(u'&'));
        EXPECT_EQ(Texts, (QStringList{QStringLiteral("Prendi la versione salvata"),
                                      QStringLiteral("Mantieni la mia"), QStringLiteral("Annulla")}));
        EXPECT_EQ(Open.findChildren<QPushButton*>().size(), 3);
        EXPECT_TRUE(Button(Open, "Cancel")->isDefault());
        Open.reject();
    }));
}

TEST(AskOvertaken, AnswersAsPressed) {
    const auto Press = [](const char* Name) {
        return Ask(Example(),
                   [&](ChangesDialog& Open) { QTest::mouseClick(Button(Open, Name), Qt::LeftButton); });
    };
    EXPECT_EQ(Press("TakeOver"), Overtaken::TakeOver);
    EXPECT_EQ(Press("Keep"), Overtaken::Keep);
    EXPECT_EQ(Press("Cancel"), Overtaken::Cancel);
    EXPECT_EQ(Ask({}, [](ChangesDialog& Open) { QTest::mouseClick(Button(Open, "Keep"), Qt::LeftButton); }),
              Overtaken::Keep)
        << "also where the texts are the same";
}

TEST(AskOvertaken, IsAnsweredByKeys) {
    const auto Type = [](Qt::Key Key, Qt::KeyboardModifiers With = Qt::NoModifier) {
        return Ask(Example(), [&](ChangesDialog& Open) { QTest::keyClick(Open.Text(), Key, With); });
    };
    EXPECT_EQ(Type(Qt::Key_Escape), Overtaken::Cancel);
    EXPECT_EQ(Type(Qt::Key_Return), Overtaken::Cancel) << "the default";
    EXPECT_EQ(Type(Qt::Key_P, Qt::AltModifier), Overtaken::TakeOver);
    EXPECT_EQ(Type(Qt::Key_M, Qt::AltModifier), Overtaken::Keep);
    EXPECT_EQ(Type(Qt::Key_A, Qt::AltModifier), Overtaken::Cancel);
    EXPECT_EQ(Ask(Example(), [](ChangesDialog& Open) { Open.close(); }), Overtaken::Cancel);
}

// Tab leads out of the text, and a button that has the focus is the one that Return presses.
TEST(AskOvertaken, TabLeadsToTheButtons) {
    EXPECT_EQ(Ask(Example(),
                  [](ChangesDialog& Open) {
                      QTest::keyClick(Open.Text(), Qt::Key_Tab);
                      auto* const First = qobject_cast<QPushButton*>(Open.focusWidget());
                      ASSERT_NE(First, nullptr);
                      Button(Open, "Keep")->setFocus();
                      QTest::keyClick(Button(Open, "Keep"), Qt::Key_Return);
                  }),
              Overtaken::Keep);
}

}  // namespace
}  // namespace kv::desktop
