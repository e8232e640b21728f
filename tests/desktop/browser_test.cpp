// The object browser, driven as the operator drives it.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTreeView>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/WholeObject.h"
#include "host/desktop/BrowserWindow.h"
#include "host/desktop/ClassNames.h"
#include "host/desktop/Desk.h"
#include "host/desktop/ObjectDialog.h"
#include "host/desktop/QtText.h"
#include "server/vdSvr.h"
#include "tests/desktop/Operator.h"

namespace kv::desktop {
namespace {

namespace fs = std::filesystem;
using test::ButtonOf;
using test::Operator;

class Browser : public testing::Test {
  protected:
    void SetUp() override {
        {
            host::KvRegSvr Made(Path("uno.db"));
            Made.Create(L"SORT", L"ITALIANO", L"Ordinamento alfabetico");
            Made.Create(L"SORT", L"CIFRE", L"Solo le cifre");
            Made.Create(L"FILTER", L"CITTÀ", L"Ciò che riguarda la città");
            Made.Create(L"IMPORTPROC", L"SPOGLI", L"");
        }
        Open(Path("uno.db"));
    }

    void Open(const fs::path& Store) {
        Window.emplace(On);
        Window->Show = [this](Desk&, QWidget*, const std::wstring& Clsid, const std::wstring& Name) {
            Shown.push_back({Clsid, Name});
        };
        Window->show();
        ASSERT_TRUE(Window->OpenStore(Store));
        Activate();
    }
    void Activate() {
        Window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&*Window));
    }

    fs::path Path(const char* Name) const { return Holder.path().toStdString() + "/" + Name; }
    QAction* Action(const char* Name) const {
        auto* const Found = Window->findChild<QAction*>(QLatin1String(Name));
        EXPECT_TRUE(Found) << Name;
        return Found;
    }
    void Do(const char* Name) {
        ASSERT_TRUE(Action(Name)->isEnabled()) << Name;
        Action(Name)->trigger();
    }
    QString Label(const char* Name) const { return Window->findChild<QLabel*>(QLatin1String(Name))->text(); }
    bool IsEmptyShown() const { return !Window->View()->isVisible(); }

    // What stands in the list, a class and a name a line; classes without objects are left out.
    QStringList Listed() const {
        QStringList All;
        const QAbstractItemModel& Model = *Window->View()->model();
        for (int C = 0; C < Model.rowCount(); ++C) {
            const QModelIndex Class = Model.index(C, 0);
            for (int R = 0; R < Model.rowCount(Class); ++R)
                All.append(Class.data().toString() + QLatin1Char('/') +
                           Model.index(R, 0, Class).data().toString());
        }
        return All;
    }
    std::vector<host::RegistryEntry> Stored() { return On.Registry().List(); }
    void Search(const QString& Text) {
        Window->SearchLine()->clear();
        QTest::keyClicks(Window->SearchLine(), Text);
    }

    static void Fill(ObjectDialog& Up, const QString& Name, const QString& Desc) {
        Up.findChild<QLineEdit*>(QStringLiteral("name"))->setText(Name);
        Up.findChild<QLineEdit*>(QStringLiteral("desc"))->setText(Desc);
    }
    static void Choose(QFileDialog& Up, const fs::path& File) {
        auto* const Name = Up.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_TRUE(Name);
        Name->setText(QString::fromStdString(File.string()));
        QTest::keyClick(Name, Qt::Key_Return);
    }
    void Spoil(const fs::path& File) {
        std::ofstream(File, std::ios::binary | std::ios::trunc) << std::string(8192, 'x');
    }

    QTemporaryDir Holder;
    Desk On{fs::path(), Holder.path().toStdString()};
    std::optional<BrowserWindow> Window;
    std::vector<ObjectKey> Shown;
};

TEST_F(Browser, ShowsTheClassesOfTheServerWithTheirItalianNamesAndTheObjects) {
    const QAbstractItemModel& Model = *Window->View()->model();
    const auto Known = ClassWords();
    ASSERT_EQ(Model.rowCount(), static_cast<int>(Known.size()));
    for (const std::wstring_view Word : Known)
        EXPECT_FALSE(ClassName(Word).isEmpty()) << qPrintable(FromWide(Word));
    EXPECT_EQ(Listed(), QStringList({"FILTER/CITTÀ", "IMPORTPROC/SPOGLI", "SORT/CIFRE", "SORT/ITALIANO"}));

    Window->Select({L"SORT", L"ITALIANO"});
    const QModelIndex At = Window->View()->currentIndex();
    EXPECT_EQ(At.siblingAtColumn(ObjectsModel::kDesc).data().toString(),
              QStringLiteral("Ordinamento alfabetico"));
    EXPECT_EQ(At.siblingAtColumn(ObjectsModel::kVersion).data().toInt(), 1);
    EXPECT_EQ(At.siblingAtColumn(ObjectsModel::kRevision).data().toInt(), 1);
    EXPECT_EQ(At.parent().siblingAtColumn(ObjectsModel::kDesc).data().toString(),
              QStringLiteral("Ordinamento (2)"));
    EXPECT_EQ(Label("where"), QString::fromStdString(Path("uno.db").string()));
    EXPECT_EQ(Label("counts"), QStringLiteral("Oggetti: 4   Classi: 3"));
}

TEST_F(Browser, AnObjectOfAnUnknownClassIsLeftOutAndCounted) {
    On.Registry().Create(L"ALTRO", L"X");
    Do("reload");
    EXPECT_EQ(Listed().size(), 4);
    EXPECT_EQ(Label("counts"), QStringLiteral("Oggetti: 4   Classi: 3   Di classe sconosciuta: 1"));
}

TEST_F(Browser, SearchesAsOneTypes) {
    const std::pair<QString, QStringList> Cases[] = {
        {QStringLiteral("ital"), {"SORT/ITALIANO"}},
        {QStringLiteral("solo LE"), {"SORT/CIFRE"}},
        {QStringLiteral("sort"), {"SORT/CIFRE", "SORT/ITALIANO"}},
        {QStringLiteral("sort cif"), {"SORT/CIFRE"}},
        {QStringLiteral("filtro"), {"FILTER/CITTÀ"}},
    };
    for (const auto& [Text, Found] : Cases) {
        Search(Text);
        EXPECT_EQ(Listed(), Found) << qPrintable(Text);
        EXPECT_FALSE(Window->Selected().Name.empty()) << "the first that was found is selected";
        EXPECT_TRUE(Window->View()->isExpanded(Window->View()->model()->index(0, 0)));
    }
    Search(QStringLiteral("niente"));
    EXPECT_TRUE(IsEmptyShown());
    EXPECT_EQ(Label("nothing"), QStringLiteral("Nessun oggetto: nessuno corrisponde a «niente»."));
    Window->findChild<QPushButton*>(QStringLiteral("nothingButton"))->click();
    EXPECT_EQ(Listed().size(), 4);
    EXPECT_FALSE(IsEmptyShown());
}

TEST_F(Browser, ReturnInTheSearchOpensWhatWasFoundAndEscapeEndsIt) {
    Do("find");
    Search(QStringLiteral("cifre"));
    QTest::keyClick(Window->SearchLine(), Qt::Key_Return);
    ASSERT_EQ(Shown.size(), 1U);
    EXPECT_EQ(Shown[0], (ObjectKey{L"SORT", L"CIFRE"}));
    QTest::keyClick(Window->SearchLine(), Qt::Key_Escape);
    EXPECT_EQ(Listed().size(), 4);
    EXPECT_EQ(Window->Selected(), (ObjectKey{L"SORT", L"CIFRE"})) << "what was selected stays so";
}

TEST_F(Browser, AFoldedClassStaysFoldedAfterASearchAndAReload) {
    QTreeView& View = *Window->View();
    const auto Sort = [&] { return View.model()->index(View.model()->rowCount() - 1, 0); };
    Window->Select({L"SORT", {}});
    const auto Folded = [&] {
        Window->Select({L"SORT", {}});
        return !View.isExpanded(View.currentIndex());
    };
    EXPECT_FALSE(Folded());
    QTest::keyClick(&View, Qt::Key_Left);
    EXPECT_TRUE(Folded());
    Do("reload");
    EXPECT_TRUE(Folded());
    Search(QStringLiteral("cifre"));
    EXPECT_TRUE(View.isExpanded(Sort()));
    Window->SearchLine()->clear();
    Do("unfoldAll");
    EXPECT_FALSE(Folded());
    Do("foldAll");
    EXPECT_TRUE(Folded());
}

TEST_F(Browser, OpensByDoubleClickAndByReturnAndShowsWhatItMade) {
    QTreeView& View = *Window->View();
    Window->Select({L"SORT", L"ITALIANO"});
    const QPoint Middle = View.visualRect(View.currentIndex()).center();
    QTest::mouseClick(View.viewport(), Qt::LeftButton, {}, Middle);
    QTest::mouseDClick(View.viewport(), Qt::LeftButton, {}, Middle);
    ASSERT_EQ(Shown.size(), 1U);
    EXPECT_EQ(Shown[0], (ObjectKey{L"SORT", L"ITALIANO"}));

    Window->Show = [](Desk& At, QWidget*, const std::wstring& Clsid, const std::wstring& Name) {
        const auto Object = At.Registry().Open(Clsid, Name);
        RegObject Content = Object->Read();
        Content.Desc = L"Cambiato";
        Object->SetSaving(true);
        Object->Write(Content);
    };
    View.setFocus();
    QTest::keyClick(&View, Qt::Key_Return);
    const QModelIndex At = View.currentIndex();
    EXPECT_EQ(At.siblingAtColumn(ObjectsModel::kDesc).data().toString(), QStringLiteral("Cambiato"));
    EXPECT_EQ(At.siblingAtColumn(ObjectsModel::kRevision).data().toInt(), 2);
    Window->Select({L"SORT", {}});
    EXPECT_FALSE(Action("open")->isEnabled()) << "a class is not opened";
}

TEST_F(Browser, MakesAnObjectAfterARefusedName) {
    Window->Select({L"SORT", {}});
    Operator Person;
    Person
        .In<ObjectDialog>([&](ObjectDialog& Up) {
            EXPECT_EQ(Up.Filled().Clsid, L"SORT") << "the class that is selected is proposed";
            EXPECT_FALSE(ButtonOf(Up, QStringLiteral("OK"))->isEnabled()) << "a name is needed";
            Fill(Up, QStringLiteral("CIFRE"), QStringLiteral("Un'altra"));
            ButtonOf(Up, QStringLiteral("OK"))->click();
        })
        .In<QMessageBox>([](QMessageBox& Up) {
            EXPECT_FALSE(Up.text().isEmpty());
            EXPECT_EQ(Up.icon(), QMessageBox::Warning);
            Up.accept();
        })
        .In<ObjectDialog>([&](ObjectDialog& Up) {
            EXPECT_EQ(Up.Filled().Name, L"CIFRE") << "the form stays as it was filled in";
            EXPECT_EQ(Up.Filled().Desc, L"Un'altra");
            Fill(Up, QStringLiteral(" NOMI "), QStringLiteral("Nomi di persona"));
            QTest::keyClick(Up.findChild<QLineEdit*>(QStringLiteral("name")), Qt::Key_Return);
        });
    Do("new");
    EXPECT_EQ(Window->Selected(), (ObjectKey{L"SORT", L"NOMI"}));
    EXPECT_EQ(On.Registry().ReadStored(L"SORT", L"NOMI").Desc, L"Nomi di persona");
    EXPECT_EQ(Stored().size(), 5U);
}

TEST_F(Browser, CopiesWithTheContentUnderANewName) {
    const auto Source = On.Registry().Open(L"SORT", L"ITALIANO");
    RegObject Content = Source->Read();
    Content.Version = 7;
    Content.Values.push_back({L"Flags", 3});
    Source->SetSaving(true);
    Source->Write(Content);
    Do("reload");
    Window->Select({L"SORT", L"ITALIANO"});
    Operator Person;
    Person
        .In<ObjectDialog>([&](ObjectDialog& Up) {
            EXPECT_FALSE(Up.findChild<QComboBox*>()->isEnabled());
            EXPECT_EQ(Up.Filled().Desc, L"Ordinamento alfabetico");
            ButtonOf(Up, QStringLiteral("OK"))->click();  // under its own name
        })
        .In<QMessageBox>([](QMessageBox& Up) { Up.accept(); })
        .In<ObjectDialog>([&](ObjectDialog& Up) {
            Fill(Up, QStringLiteral("FRANCESE"), QStringLiteral("Copia"));
            ButtonOf(Up, QStringLiteral("OK"))->click();
        });
    Do("copy");
    EXPECT_EQ(Window->Selected(), (ObjectKey{L"SORT", L"FRANCESE"}));
    const RegObject Made = On.Registry().ReadStored(L"SORT", L"FRANCESE");
    EXPECT_EQ(Made.Desc, L"Copia");
    EXPECT_EQ(Made.Version, 7);
    EXPECT_EQ(Made.Values, Content.Values);
    EXPECT_NE(Made.Id, On.Registry().ReadStored(L"SORT", L"ITALIANO").Id);
    EXPECT_EQ(On.Registry().ReadStored(L"SORT", L"ITALIANO").Desc, L"Ordinamento alfabetico");
}

TEST_F(Browser, DeletesAfterAQuestionWhoseDefaultIsNo) {
    Window->Select({L"SORT", L"CIFRE"});
    Operator Person;
    Person
        .In<QMessageBox>([](QMessageBox& Up) {
            EXPECT_EQ(Up.text(), QStringLiteral("Eliminare SORT/CIFRE?"));
            QTest::keyClick(&Up, Qt::Key_Return);
        })
        .Click(QStringLiteral("Sì"));
    Window->View()->setFocus();
    QTest::keyClick(Window->View(), Qt::Key_Delete);
    EXPECT_EQ(Stored().size(), 4U);
    Activate();
    QTest::keyClick(Window->View(), Qt::Key_Delete);
    EXPECT_EQ(Stored().size(), 3U);
    EXPECT_EQ(Window->Selected(), (ObjectKey{L"SORT", L"ITALIANO"})) << "what stood beside it";
}

TEST_F(Browser, TheQuestionTellsWhoNamesTheObject) {
    On.Registry().Create(L"SORT", L"TEDESCO");
    {
        const auto Other = On.Registry().Open(L"SORT", L"TEDESCO");
        RegObject Content = Other->Read();
        Content.Values.push_back({L"MirrorOf", std::wstring(L"ITALIANO")});
        Other->SetSaving(true);
        Other->Write(Content);
    }
    Do("reload");
    Window->Select({L"SORT", L"ITALIANO"});
    Operator Person;
    Person.In<QMessageBox>([](QMessageBox& Up) {
        EXPECT_EQ(Up.text(),
                  QStringLiteral("SORT/ITALIANO è usato da:\n\nSORT/TEDESCO\n\nEliminarlo ugualmente?"));
        EXPECT_EQ(Up.defaultButton()->text(), QStringLiteral("&No"));
        ButtonOf(Up, QStringLiteral("Sì"))->click();
    });
    Do("delete");
    EXPECT_FALSE(Listed().contains(QStringLiteral("SORT/ITALIANO")));
}

TEST_F(Browser, ExportsToAFileAndImportsItIntoAnother) {
    On.Registry().Create(L"IMPORTPROC", L"ALTRI");
    Do("reload");
    const auto Exported = [&](const char* File) {
        std::ifstream In(Path(File), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(In), {});
    };
    const auto Export = [&](const wchar_t* Name, const char* File) {
        Window->Select({L"IMPORTPROC", Name});
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path(File)); });
        Do("export");
    };
    Export(L"SPOGLI", "spogli.txt");
    std::string Text = Exported("spogli.txt");
    ASSERT_TRUE(Text.starts_with("BEGIN IMPORTPROC\r\n")) << Text;
    const std::string Plain = "READONLY";
    const std::size_t At = Text.find("FLAGS=");
    ASSERT_NE(At, std::string::npos);
    Text.replace(At, Text.find('\r', At) - At, "FLAGS= READONLY");
    std::ofstream(Path("cambiato.txt"), std::ios::binary) << Text;

    Window->Select({L"IMPORTPROC", L"ALTRI"});
    {
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path("cambiato.txt")); })
            .In<QMessageBox>([](QMessageBox& Up) {
                EXPECT_EQ(Up.defaultButton()->text(), QStringLiteral("&No"));
                ButtonOf(Up, QStringLiteral("Sì"))->click();
            });
        Do("import");
    }
    EXPECT_EQ(Window->Selected(), (ObjectKey{L"IMPORTPROC", L"ALTRI"}));
    EXPECT_EQ(Window->View()->currentIndex().siblingAtColumn(ObjectsModel::kRevision).data().toInt(), 2);
    Export(L"ALTRI", "altri.txt");
    EXPECT_NE(Exported("altri.txt").find(Plain), std::string::npos) << Exported("altri.txt");
}

TEST_F(Browser, TellsWhenAnImportChangesNothingOrIsRefused) {
    std::ofstream(Path("vuoto.txt")) << "BEGIN SORT\n";
    std::ofstream(Path("latin.txt")) << "citt\xE0\n";
    QString Said;
    const auto Import = [&](const ObjectKey& Into, const char* File, bool Asked) {
        Window->Select(Into);
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path(File)); });
        if (Asked) Person.Click(QStringLiteral("Sì"));
        Person.In<QMessageBox>([&](QMessageBox& Up) {
            Said = Up.text();
            Up.accept();
        });
        Do("import");
    };
    Import({L"SORT", L"CIFRE"}, "vuoto.txt", true);
    EXPECT_EQ(Said,
              QStringLiteral("Nulla è cambiato: gli oggetti della classe SORT non si leggono da un file."));
    Import({L"SORT", L"CIFRE"}, "latin.txt", false);
    EXPECT_TRUE(Said.endsWith(QStringLiteral("latin.txt non è testo UTF-8."))) << qPrintable(Said);
    Import({L"IMPORTPROC", L"SPOGLI"}, "vuoto.txt", true);
    EXPECT_FALSE(Said.isEmpty());
    for (const host::RegistryEntry& Entry : Stored()) EXPECT_EQ(Entry.Revision, 1);
}

TEST_F(Browser, GoesToAnotherStoreAndMakesANewOne) {
    {
        host::KvRegSvr Made(Path("due.db"));
        Made.Create(L"MEMBER", L"BANCO");
    }
    {
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path("due.db")); });
        Do("openStore");
    }
    EXPECT_EQ(Listed(), QStringList({"MEMBER/BANCO"}));
    EXPECT_EQ(Label("where"), QString::fromStdString(Path("due.db").string()));
    {
        Operator Person;  // a file that is there is not taken for a new one
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path("uno.db")); })
            .In<QMessageBox>([](QMessageBox& Up) { Up.accept(); });
        Do("newStore");
    }
    EXPECT_EQ(Listed(), QStringList({"MEMBER/BANCO"}));
    {
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Up) { Choose(Up, Path("tre")); });
        Do("newStore");
    }
    EXPECT_TRUE(fs::exists(Path("tre.db")));
    EXPECT_TRUE(IsEmptyShown());
    EXPECT_TRUE(Label("nothing").startsWith(QStringLiteral("Nessun oggetto:")));
    Operator Person;
    Person.In<ObjectDialog>([&](ObjectDialog& Up) {
        Fill(Up, QStringLiteral("PRIMO"), {});
        ButtonOf(Up, QStringLiteral("OK"))->click();
    });
    Window->findChild<QPushButton*>(QStringLiteral("nothingButton"))->click();
    EXPECT_EQ(Listed().size(), 1);
    EXPECT_FALSE(IsEmptyShown());
}

TEST_F(Browser, TheProgramFolderGoesWithTheStore) {
    EXPECT_EQ(On.Platform().ProgramFolder(), Holder.path().toStdWString());
    fs::create_directory(Path("sotto"));
    ASSERT_TRUE(Window->OpenStore(Path("sotto/due.db")));
    EXPECT_EQ(On.Platform().ProgramFolder(), Path("sotto").wstring());
}

TEST_F(Browser, RemembersTheStoreAndHowTheWindowWas) {
    EXPECT_EQ(BrowserWindow::LastStore(), Path("uno.db"));
    Window->View()->header()->resizeSection(ObjectsModel::kName, 123);
    Window->resize(777, 555);
    Window->close();
    Window.reset();
    Open(Path("due.db"));
    EXPECT_EQ(Window->View()->header()->sectionSize(ObjectsModel::kName), 123);
    EXPECT_EQ(Window->size(), QSize(777, 555));
    EXPECT_EQ(BrowserWindow::LastStore(), Path("due.db"));
    fs::remove(Path("due.db"));
    EXPECT_EQ(BrowserWindow::LastStore(), std::nullopt) << "it is not there any more";
}

TEST_F(Browser, AStoreThatCannotBeOpenedIsToldAndTheOtherStays) {
    Spoil(Path("rotto.db"));
    Operator Person;
    Person.In<QMessageBox>([&](QMessageBox& Up) {
        EXPECT_EQ(Up.text(), QStringLiteral("Il file %1 non è un registro, o è danneggiato.")
                                 .arg(QString::fromStdString(Path("rotto.db").string())));
        EXPECT_EQ(Up.icon(), QMessageBox::Critical);
        Up.accept();
    });
    EXPECT_FALSE(Window->OpenStore(Path("rotto.db")));
    EXPECT_EQ(Listed().size(), 4);
    EXPECT_EQ(BrowserWindow::LastStore(), Path("uno.db"));
}

TEST_F(Browser, AStoreThatFailsWhileItIsOpenIsToldAndTheWindowGoesOn) {
    const std::string Whole = [&] {
        std::ifstream In(Path("uno.db"), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(In), {});
    }();
    Spoil(Path("uno.db"));
    Window->Select({L"SORT", L"CIFRE"});
    QStringList Said;
    const std::function<void(QMessageBox&)> Hear = [&](QMessageBox& Up) {
        Said.append(Up.text());
        Up.accept();
    };
    {
        Operator Person;
        Person.In<QMessageBox>(Hear)
            .In<QMessageBox>(Hear)
            .In<QMessageBox>(Hear)
            .In<ObjectDialog>([](ObjectDialog& Up) {
                Fill(Up, QStringLiteral("NUOVO"), {});
                ButtonOf(Up, QStringLiteral("OK"))->click();
            })
            .In<QMessageBox>(Hear)
            .In<ObjectDialog>([](ObjectDialog& Up) { Up.reject(); });
        Do("reload");
        Do("delete");
        Do("export");
        Do("new");
    }
    ASSERT_EQ(Said.size(), 4);
    for (const QString& Each : Said) EXPECT_TRUE(Each.contains(QStringLiteral("uno.db"))) << qPrintable(Each);
    EXPECT_EQ(Listed().size(), 4) << "what was read stays in the list";

    std::ofstream(Path("uno.db"), std::ios::binary | std::ios::trunc) << Whole;
    Do("reload");
    EXPECT_EQ(Listed().size(), 4);
}

TEST_F(Browser, EveryActionIsReachedByKeyAndNamed) {
    for (const char* const Name : {"openStore", "newStore", "reload", "quit", "new", "open", "copy", "delete",
                                   "export", "import", "find"})
        EXPECT_FALSE(Action(Name)->shortcut().isEmpty()) << Name;
    for (QAction* const Each : Window->findChildren<QAction*>())
        if (!Each->objectName().isEmpty() && !Each->objectName().startsWith(QLatin1Char('_'))) {
            EXPECT_TRUE(Each->text().contains(QLatin1Char('&'))) << qPrintable(Each->text());
            EXPECT_FALSE(Each->statusTip().isEmpty()) << qPrintable(Each->text());
        }
    EXPECT_FALSE(Window->View()->accessibleName().isEmpty());
    EXPECT_FALSE(Window->SearchLine()->accessibleName().isEmpty());
    QTest::keyClick(Window->SearchLine(), Qt::Key_Down);
    EXPECT_TRUE(Window->View()->hasFocus());
}

TEST_F(Browser, WithoutAStoreItSaysSo) {
    Desk Bare{fs::path(), Holder.path().toStdString()};
    BrowserWindow Other(Bare);
    Other.show();
    EXPECT_EQ(Other.findChild<QLabel*>(QStringLiteral("nothing"))->text(),
              QStringLiteral("Nessun archivio aperto."));
    EXPECT_FALSE(Other.findChild<QAction*>(QStringLiteral("new"))->isEnabled());
    EXPECT_TRUE(Other.findChild<QAction*>(QStringLiteral("openStore"))->isEnabled());
}

}  // namespace
}  // namespace kv::desktop
