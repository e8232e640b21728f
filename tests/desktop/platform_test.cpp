// The door to the operator of the desktop: message boxes, the save dialog, the list form, pointer.

#include <gtest/gtest.h>

#include <QClipboard>
#include <QCursor>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

#include "host/desktop/QtPlatform.h"
#include "tests/desktop/Operator.h"

namespace kv::desktop {
namespace {

using test::ButtonOf;
using test::Operator;

class Platform : public testing::Test {
  protected:
    QtPlatform Door{std::filesystem::path(), std::filesystem::path()};
};

struct BoxCase {
    std::int32_t Style;
    QStringList Labels;
    QString Default;
    Answer ByDefault;
    Answer ByEscape;
    QMessageBox::Icon Icon;
};

TEST_F(Platform, BoxesHaveTheButtonsTheDefaultAndTheIconOfTheirStyle) {
    const QString Yes = QStringLiteral("Sì"), No = QStringLiteral("No"), Cancel = QStringLiteral("Annulla"),
                  Ok = QStringLiteral("OK");
    const BoxCase Cases[] = {
        {box::kOk, {Ok}, Ok, Answer::Ok, Answer::Ok, QMessageBox::NoIcon},
        {box::kOk + box::kCritical, {Ok}, Ok, Answer::Ok, Answer::Ok, QMessageBox::Critical},
        {box::kOk + box::kExclamation, {Ok}, Ok, Answer::Ok, Answer::Ok, QMessageBox::Warning},
        {box::kOk + box::kInformation, {Ok}, Ok, Answer::Ok, Answer::Ok, QMessageBox::Information},
        {box::kYesNo + box::kQuestion, {Yes, No}, Yes, Answer::Yes, Answer::No, QMessageBox::Question},
        {box::kYesNo + box::kDefaultSecond, {Yes, No}, No, Answer::No, Answer::No, QMessageBox::NoIcon},
        {box::kYesNo + box::kDefaultThird, {Yes, No}, No, Answer::No, Answer::No, QMessageBox::NoIcon},
        {box::kYesNoCancel, {Yes, No, Cancel}, Yes, Answer::Yes, Answer::Cancel, QMessageBox::NoIcon},
        {box::kYesNoCancel + box::kDefaultSecond,
         {Yes, No, Cancel},
         No,
         Answer::No,
         Answer::Cancel,
         QMessageBox::NoIcon},
        {box::kYesNoCancel + box::kQuestion + box::kDefaultThird + box::kForeground,
         {Yes, No, Cancel},
         Cancel,
         Answer::Cancel,
         Answer::Cancel,
         QMessageBox::Question},
    };
    for (const BoxCase& Case : Cases) {
        SCOPED_TRACE(Case.Style);
        Operator Person;
        Person
            .In<QMessageBox>([&](QMessageBox& Up) {
                EXPECT_EQ(Up.text(), QStringLiteral("Città <b>?"));
                EXPECT_EQ(Up.textFormat(), Qt::PlainText);
                EXPECT_EQ(Up.icon(), Case.Icon);
                EXPECT_EQ(Up.buttons().size(), Case.Labels.size());
                for (const QString& Label : Case.Labels)
                    EXPECT_TRUE(ButtonOf(Up, Label)) << qPrintable(Label);
                ASSERT_TRUE(Up.defaultButton());
                EXPECT_EQ(Up.defaultButton()->text().remove(QLatin1Char('&')), Case.Default);
                EXPECT_EQ(Up.windowFlags().testFlag(Qt::WindowStaysOnTopHint),
                          (Case.Style & box::kForeground) != 0);
                QTest::keyClick(&Up, Qt::Key_Return);
            })
            .In<QMessageBox>([](QMessageBox& Up) { QTest::keyClick(&Up, Qt::Key_Escape); });
        EXPECT_EQ(Door.MessageBox(L"Città <b>?", Case.Style), Case.ByDefault);
        EXPECT_EQ(Door.MessageBox(L"Città <b>?", Case.Style), Case.ByEscape);
    }
}

TEST_F(Platform, AButtonAnswersWhatItSays) {
    Operator Person;
    Person.Click(QStringLiteral("Sì")).Click(QStringLiteral("No")).Click(QStringLiteral("Annulla"));
    EXPECT_EQ(Door.MessageBox(L"?", box::kYesNoCancel + box::kDefaultThird), Answer::Yes);
    EXPECT_EQ(Door.MessageBox(L"?", box::kYesNoCancel), Answer::No);
    EXPECT_EQ(Door.MessageBox(L"?", box::kYesNoCancel), Answer::Cancel);
}

TEST_F(Platform, AnErrorIsABoxUnlessAWindowTakesIt) {
    KvError Error;
    Error.Number = 20002;
    Error.Line = 3;
    Error.Description = L"Valore sconosciuto";
    {
        Operator Person;
        Person.In<QMessageBox>([](QMessageBox& Up) {
            EXPECT_EQ(Up.text(), QStringLiteral("riga 3: Valore sconosciuto"));
            EXPECT_EQ(Up.icon(), QMessageBox::Critical);
            Up.accept();
        });
        Door.ShowError(Error);
    }
    std::wstring Taken;
    Door.OnError = [&](const KvError& Told) { Taken = Told.Description; };
    const Operator Nobody;
    Door.ShowError(Error);
    EXPECT_EQ(Taken, L"Valore sconosciuto");
}

class SaveDialog : public Platform {
  protected:
    static constexpr std::int32_t kFlags = 2664450;

    std::filesystem::path Path(const char* Name) const { return Folder.path().toStdString() + "/" + Name; }
    std::optional<std::wstring> Ask(std::int32_t Index = 1, std::int32_t Flags = kFlags) {
        return Door.SaveFile(L"File di uscita", L"Moduli VB|*.BAS|Tutti i file|*.*", Index, Flags);
    }
    static void Enter(QFileDialog& Up, const std::filesystem::path& File) {
        auto* const Name = Up.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_TRUE(Name);
        Name->setText(QString::fromStdString(File.string()));
        QTest::keyClick(Name, Qt::Key_Return);
    }

    QTemporaryDir Folder;
};

TEST_F(SaveDialog, HasTheTitleAndTheFilters) {
    Operator Person;
    Person.In<QFileDialog>([&](QFileDialog& Up) {
        EXPECT_EQ(Up.windowTitle(), QStringLiteral("File di uscita"));
        EXPECT_EQ(Up.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(Up.nameFilters(),
                  QStringList({QStringLiteral("Moduli VB (*.BAS)"), QStringLiteral("Tutti i file (*)")}));
        EXPECT_EQ(Up.selectedNameFilter(), QStringLiteral("Tutti i file (*)"));
        Enter(Up, Path("tag"));
    });
    EXPECT_EQ(Ask(2), Path("tag").wstring());
}

TEST_F(SaveDialog, AddsTheSuffixOfTheFilter) {
    Operator Person;
    Person.In<QFileDialog>([&](QFileDialog& Up) { Enter(Up, Path("tag")); });
    EXPECT_EQ(Ask(), Path("tag.BAS").wstring());
}

TEST_F(SaveDialog, CancelledGivesNoName) {
    Operator Person;
    Person.In<QFileDialog>([&](QFileDialog& Up) { QTest::keyClick(&Up, Qt::Key_Escape); });
    EXPECT_EQ(Ask(), std::nullopt);
}

TEST_F(SaveDialog, AsksBeforeAFileThatIsThere) {
    std::ofstream(Path("vecchio.bas")) << "x";
    {
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Enter(Up, Path("vecchio.bas")); })
            .In<QMessageBox>([&](QMessageBox& Up) {
                EXPECT_EQ(Up.text(), QStringLiteral("Il file %1 esiste già.\nSostituirlo?")
                                         .arg(QString::fromStdString(Path("vecchio.bas").string())));
                QTest::keyClick(&Up, Qt::Key_Return);  // No
            })
            .In<QFileDialog>([](QFileDialog& Up) { Up.reject(); });
        EXPECT_EQ(Ask(), std::nullopt);
    }
    {
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Enter(Up, Path("vecchio.bas")); })
            .Click(QStringLiteral("Sì"));
        EXPECT_EQ(Ask(), Path("vecchio.bas").wstring());
    }
    Operator Person;  // without the flag it does not ask
    Person.In<QFileDialog>([&](QFileDialog& Up) { Enter(Up, Path("vecchio.bas")); });
    EXPECT_EQ(Ask(1, 0), Path("vecchio.bas").wstring());
}

TEST_F(Platform, TheListFormShowsAndCopiesItsLines) {
    const std::vector<std::wstring> Runs{L"3 - 4", L"6", L"8 - 32767"};
    const auto Copied = [] { return QGuiApplication::clipboard()->text(); };
    Operator Person;
    Person.In<QDialog>([&](QDialog& Up) {
        EXPECT_EQ(Up.windowTitle(), QStringLiteral("Tag disponibili"));
        auto* const List = Up.findChild<QListView*>();
        ASSERT_TRUE(List);
        EXPECT_EQ(List->accessibleName(), QStringLiteral("Tag disponibili"));
        ASSERT_EQ(List->model()->rowCount(), 3);
        EXPECT_EQ(List->model()->index(2, 0).data().toString(), QStringLiteral("8 - 32767"));

        ButtonOf(Up, QStringLiteral("Copia"))->click();
        EXPECT_EQ(Copied(), QStringLiteral("3 - 4\n6\n8 - 32767"));
        List->setCurrentIndex(List->model()->index(1, 0));
        QTest::keyClick(List, Qt::Key_Down, Qt::ShiftModifier);
        List->actions().front()->trigger();
        EXPECT_EQ(Copied(), QStringLiteral("6\n8 - 32767"));
        EXPECT_EQ(List->actions().front()->shortcut(), QKeySequence(QKeySequence::Copy));
        ButtonOf(Up, QStringLiteral("Chiudi"))->click();
    });
    Door.ShowList(L"Tag disponibili", Runs);
}

TEST_F(Platform, TheWaitPointerDoesNotPileUp) {
    const auto Shape = [] {
        const QCursor* const Over = QGuiApplication::overrideCursor();
        return Over ? std::optional(Over->shape()) : std::nullopt;
    };
    EXPECT_EQ(Shape(), std::nullopt);
    Door.SetPointer(kPointerWait);
    Door.SetPointer(kPointerWait);
    EXPECT_EQ(Shape(), Qt::WaitCursor);
    {
        Operator Person;
        Person.In<QMessageBox>([&](QMessageBox& Up) {
            EXPECT_EQ(Shape(), std::nullopt) << "the operator is asked, and does not wait";
            Up.accept();
        });
        Door.MessageBox(L"?", box::kOk);
    }
    EXPECT_EQ(Shape(), Qt::WaitCursor);
    Door.SetPointer(kPointerDefault);
    EXPECT_EQ(Shape(), std::nullopt);
    Door.SetPointer(kPointerDefault);
    EXPECT_EQ(Shape(), std::nullopt);
    {
        QtPlatform Gone{std::filesystem::path(), std::filesystem::path()};
        Gone.SetPointer(kPointerWait);
    }
    EXPECT_EQ(Shape(), std::nullopt);
}

}  // namespace
}  // namespace kv::desktop
