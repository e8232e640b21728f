// The window of an object: every class from opening to reopening, the tree, the questions, the saving.

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QTreeView>
#include <set>

#include "host/desktop/ChangesDialog.h"
#include "host/desktop/NodesModel.h"
#include "tests/desktop/Driving.h"

namespace kv::desktop::test {
namespace {

using kv::test::Operator;
using window::TreeNode;

class DesignWindowTest : public DesktopTest {
  protected:
    static const TreeNode& Folder(const Shown& On, std::wstring_view Key) {
        const TreeNode* const Found = On.Core.Tree().Find(Key);
        EXPECT_NE(Found, nullptr);
        return *Found;
    }
    static QStringList CaptionsIn(const TreeNode& Of) {
        QStringList All;
        for (std::int32_t Place = 1; const TreeNode* const Child = Of.Children.At(Place); ++Place)
            All.append(FromWide(Child->Text));
        return All;
    }
    // What the tree view shows below a node, read through its model alone.
    static QStringList ShownIn(const Shown& On, std::wstring_view Key) {
        const auto& Model = dynamic_cast<const NodesModel&>(*On.Window.Tree()->model());
        const QModelIndex Above = Model.IndexOf(Key);
        QStringList All;
        for (int Row = 0; Row < Model.rowCount(Above); ++Row)
            All.append(Model.index(Row, 0, Above).data().toString());
        return All;
    }
    static QString Selected(const Shown& On) { return On.Window.Tree()->currentIndex().data().toString(); }
    /// Another program saves the object meanwhile.
    void SavedElsewhere(const std::wstring& Clsid, const std::wstring& Name) {
        host::KvRegSvr Other(Place.Store());
        const auto Theirs = Other.Open(Clsid, Name);
        Theirs->SetSaving(true);
        RegObject Content = Theirs->Read();
        Content.Desc = L"Salvato altrove";
        Theirs->Write(Content);
    }
};

// One object of each class.

TEST_F(DesignWindowTest, EveryClassIsOpenedEditedRefusedCorrectedSavedAndReopened) {
    std::set<std::wstring> Classes;
    for (const host::RegistryEntry& Entry : OnDesk.Registry().List()) {
        if (!Classes.insert(Entry.Clsid).second) continue;
        SCOPED_TRACE(qPrintable(FromWide(Entry.Clsid + L"/" + Entry.Name)));
        QString Good;
        InWindow(Entry.Clsid, Entry.Name, [&](const Shown& On) {
            EXPECT_TRUE(On.Window.windowTitle().contains(FromWide(Entry.Name)));
            EXPECT_FALSE(On.Window.isWindowModified());
            std::wstring First;
            On.Core.Tree().ForEach([&](const TreeNode& Node) {
                if (First.empty() && IsLeafKey(Node.Key)) First = Node.Key;
            });
            ASSERT_FALSE(First.empty());
            ASSERT_TRUE(On.Window.Select(First)) << qPrintable(On.Window.Message());
            Good = On.Editor().SectionText();
            ASSERT_FALSE(Good.isEmpty());

            // Refused: as typed, told, marked, and nothing is changed.
            const QString Bad = QStringLiteral("=SBAGLIATO\r\n") + Good;
            On.Type(Bad);
            EXPECT_TRUE(On.Editor().HasChanges());
            EXPECT_TRUE(On.Window.isWindowModified());
            On.Do("apply");
            if (Entry.Clsid != L"STOPWORD") {
                EXPECT_FALSE(On.Window.Message().isEmpty());
                EXPECT_EQ(On.Editor().SectionText(), Bad);
                EXPECT_TRUE(On.Editor().HasChanges());
                EXPECT_EQ(On.Editor().FaultLine(), 1);
                EXPECT_EQ(On.Editor().textCursor().blockNumber(), 0);
                EXPECT_FALSE(On.Core.Tree().Modified());
            }
            // Corrected.
            On.Type(Good);
            On.Type(Good + QStringLiteral("'nota\r\n"));
            On.Do("apply");
            EXPECT_FALSE(On.Editor().HasChanges()) << qPrintable(On.Window.Message());
            EXPECT_TRUE(On.Core.Tree().Modified());
            On.Do("save");
            EXPECT_FALSE(On.Core.Tree().Modified()) << qPrintable(On.Window.Message());
            EXPECT_FALSE(On.Window.isWindowModified());
            EXPECT_GT(On.Object.Revision(), Entry.Revision);
        });
        InWindow(Entry.Clsid, Entry.Name, [&](const Shown& On) {
            std::wstring First;
            On.Core.Tree().ForEach([&](const TreeNode& Node) {
                if (First.empty() && IsLeafKey(Node.Key)) First = Node.Key;
            });
            ASSERT_TRUE(On.Window.Select(First));
            EXPECT_EQ(On.Editor().SectionText(), Good);
        });
    }
    EXPECT_EQ(Classes.size(), 30U);
}

// The text.

TEST_F(DesignWindowTest, KeysTypeApplyAndRevert) {
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        EXPECT_FALSE(On.Offered("apply"));
        const QString Before = On.Editor().SectionText();
        On.Editor().moveCursor(QTextCursor::Start);
        QTest::keyClicks(&On.Editor(), "'nota ");
        EXPECT_TRUE(On.Offered("apply"));
        On.Do("revert");
        EXPECT_EQ(On.Editor().SectionText(), Before);
        EXPECT_FALSE(On.Editor().HasChanges());
        QString Changed = Before;
        Changed.replace(QStringLiteral("AUTOMATIC= FALSE"), QStringLiteral("AUTOMATIC= TRUE"));
        ASSERT_NE(Changed, Before);
        On.Type(Changed);
        QTest::keyClick(&On.Editor(), Qt::Key_Return, Qt::ControlModifier);
        EXPECT_FALSE(On.Editor().HasChanges());
        EXPECT_EQ(On.Editor().SectionText(), Changed);
        EXPECT_EQ(On.Window.Message(), QStringLiteral("Testo applicato."));
    });
}

TEST_F(DesignWindowTest, TheWordsOfTheItemComplete) {
    InWindow(L"IMPORT", L"SPOGLI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(QStringLiteral("PROCTYPE= NODBR|"));
        On.Editor().moveCursor(QTextCursor::End);
        QTest::keyClicks(&On.Editor(), "IN");
        On.Do("complete");
        QTest::keyClick(&On.Editor(), Qt::Key_Return);
        EXPECT_EQ(On.Editor().SectionText(), QStringLiteral("PROCTYPE= NODBR|INCREMENTAL"));
        On.Type(QStringLiteral("PROCT"));
        On.Editor().moveCursor(QTextCursor::End);
        On.Do("complete");
        QTest::keyClick(&On.Editor(), Qt::Key_Tab);
        EXPECT_EQ(On.Editor().SectionText(), QStringLiteral("PROCTYPE= "));
    });
}

TEST_F(DesignWindowTest, TheStrictSwitchDecidesWhatIsRefused) {
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        const QString Loose = QStringLiteral("AUTOMATIC= FORSE\r\n");
        EXPECT_TRUE(On.Window.ActionOf(QStringLiteral("strict"))->isChecked());
        On.Type(Loose);
        On.Do("apply");
        EXPECT_EQ(On.Window.Message(),
                  QStringLiteral("Riga 1: Valore sconosciuto per il parametro AUTOMATIC=(FORSE)"));
        On.Do("strict");
        On.Do("apply");
        EXPECT_FALSE(On.Editor().HasChanges()) << qPrintable(On.Window.Message());
        On.Do("strict");
        EXPECT_TRUE(On.Core.Tree().SyntaxOn());
    });
}

TEST_F(DesignWindowTest, TextThatIsNotAppliedIsAskedAboutBeforeItIsLeft) {
    InWindow(L"SORT", L"ITALIANO", [](const Shown& On) {
        const std::wstring First = On.Leaf(L"PARMS", 1);
        const QString Text = On.Editor().SectionText();
        On.Type(QStringLiteral("=SBAGLIATO"));
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Annulla"));
            EXPECT_FALSE(On.Window.Select(kRootKey));
        }
        EXPECT_EQ(On.Window.Current(), First);
        EXPECT_EQ(On.Editor().SectionText(), QStringLiteral("=SBAGLIATO"));
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Applica"));
            EXPECT_FALSE(On.Window.Select(kRootKey)) << "refused: the text is not left";
        }
        EXPECT_EQ(On.Window.Current(), First);
        EXPECT_FALSE(On.Window.Message().isEmpty());
        {
            // The view goes back, too, when it was the view that left.
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Annulla"));
            On.Window.Tree()->setCurrentIndex(On.Window.Tree()->model()->index(0, 0));
            QCoreApplication::processEvents();
            const auto& Model = dynamic_cast<const NodesModel&>(*On.Window.Tree()->model());
            EXPECT_EQ(On.Window.Tree()->currentIndex(), Model.IndexOf(First));
        }
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Scarta"));
            EXPECT_TRUE(On.Window.Select(kRootKey));
        }
        EXPECT_EQ(On.Window.Current(), kRootKey);
        EXPECT_TRUE(On.Window.Select(First));
        EXPECT_EQ(On.Editor().SectionText(), Text);
        On.Type(Text + QStringLiteral("'nota\r\n"));
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Applica"));
            EXPECT_TRUE(On.Window.Select(kRootKey));
        }
        EXPECT_TRUE(On.Core.Tree().Modified());
    });
}

TEST_F(DesignWindowTest, AppliedAndRevertedTextCanBeUndone) {
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        const QString Before = On.Editor().SectionText();
        On.Editor().moveCursor(QTextCursor::Start);
        QTest::keyClicks(&On.Editor(), "'nota");
        QTest::keyClick(&On.Editor(), Qt::Key_Return);
        const QString Typed = On.Editor().SectionText();
        On.Do("revert");
        EXPECT_EQ(On.Editor().SectionText(), Before);
        EXPECT_FALSE(On.Editor().HasChanges());
        On.Editor().undo();
        EXPECT_EQ(On.Editor().SectionText(), Typed);
        EXPECT_TRUE(On.Editor().HasChanges());
        On.Do("apply");
        EXPECT_FALSE(On.Editor().HasChanges());
        EXPECT_EQ(On.Editor().SectionText(), Before) << "comments are not kept";
        On.Editor().undo();
        EXPECT_EQ(On.Editor().SectionText(), Typed);
        EXPECT_TRUE(On.Editor().HasChanges());
    });
}

// The tree.

TEST_F(DesignWindowTest, TheNodeThatIsMarkedIsTheOneThatIsWorkedOn) {
    InWindow(L"SORT", L"ITALIANO", [](const Shown& On) {
        QTreeView& View = *On.Window.Tree();
        View.expandAll();
        const std::wstring First = On.Leaf(L"PARMS", 1);
        const auto Click = [&](const QPoint& Where) {
            QTest::mouseClick(View.viewport(), Qt::LeftButton, {}, Where);
            QCoreApplication::processEvents();
        };
        const auto Marked = [&] {
            const QModelIndexList All = View.selectionModel()->selectedIndexes();
            return All.size() == 1 && All.front() == View.currentIndex()
                       ? ToWide(All.front().data(NodesModel::kKeyRole).toString())
                       : std::wstring(L"none");
        };
        const QRect Root = View.visualRect(View.model()->index(0, 0));
        On.Type(QStringLiteral("=SBAGLIATO"));
        for (const char* const Answer : {"Annulla", "Applica"}) {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QString::fromLatin1(Answer));
            Click(Root.center());
            EXPECT_EQ(On.Window.Current(), First) << Answer;
            EXPECT_EQ(Marked(), First) << Answer;
        }
        On.Do("revert");
        Click(Root.center());
        EXPECT_EQ(On.Window.Current(), kRootKey);
        EXPECT_EQ(Marked(), kRootKey);
        Click({Root.center().x(), View.viewport()->height() - 2});  // below the nodes
        EXPECT_EQ(On.Window.Current(), kRootKey);
        EXPECT_EQ(Marked(), kRootKey);
    });
}

TEST_F(DesignWindowTest, WhatIsOpenBelowAMovedElementStaysOpen) {
    InWindow(L"MENU", L"PRINCIPALE", [](const Shown& On) {
        QTreeView& View = *On.Window.Tree();
        View.expandAll();
        ASSERT_TRUE(On.Window.Select(Folder(On, L"COMMANDS").Children.At(1)->Key));
        On.Do("moveDown");
        const QModelIndex Moved = View.currentIndex();
        EXPECT_EQ(Moved.row(), 1);
        EXPECT_TRUE(View.isExpanded(Moved));
        ASSERT_GT(View.model()->rowCount(Moved), 1);
        for (int Row = 0; Row < View.model()->rowCount(Moved); ++Row)
            EXPECT_TRUE(View.isExpanded(View.model()->index(Row, 0, Moved))) << Row;
    });
}

TEST_F(DesignWindowTest, CuttingAnElementSaysThatTheWholeObjectGoesAlong) {
    InWindow(L"MENU", L"PRINCIPALE", [](const Shown& On) {
        On.Window.Tree()->setFocus();
        const int Before = Folder(On, L"COMMANDS").Children.Count();
        ASSERT_TRUE(On.Window.Select(Folder(On, L"COMMANDS").Children.At(1)->Key));
        {
            Operator Person;
            Person.In<QMessageBox>([](QMessageBox& Box) {
                EXPECT_TRUE(Box.text().startsWith(QStringLiteral("Negli appunti va l'intero oggetto.")));
                QTest::keyClick(&Box, Qt::Key_Return);  // No
            });
            On.Do("cut");
        }
        EXPECT_EQ(Folder(On, L"COMMANDS").Children.Count(), Before);
        Operator Person;
        Answers(Person, QStringLiteral("Negli appunti va l'intero oggetto."), QStringLiteral("Sì"));
        On.Do("cut");
        EXPECT_EQ(Folder(On, L"COMMANDS").Children.Count(), Before - 1);
        EXPECT_EQ(On.Core.Clipboard().ClassWord, L"MENU");
    });
}

TEST_F(DesignWindowTest, OnlyWhatTheKindAllowsIsOffered) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        const auto Offered = [&] {
            QStringList All;
            for (const char* const Name : {"new", "delete", "deleteAll", "moveUp", "moveDown"})
                if (On.Offered(Name)) All.append(QString::fromLatin1(Name));
            return All.join(u' ');
        };
        On.Window.Select(kRootKey);
        EXPECT_EQ(Offered(), QString());
        On.Leaf(L"PARMS");
        EXPECT_EQ(Offered(), QString());
        On.Window.Select(L"FIELDS");
        EXPECT_EQ(Offered(), QStringLiteral("new deleteAll"));
        On.Window.Select(Folder(On, L"FIELDS").Children.At(1)->Key);
        EXPECT_EQ(Offered(), QStringLiteral("new delete moveUp moveDown"));
    });
}

TEST_F(DesignWindowTest, ElementsAreAddedMovedAndDeletedWithTheirNodes) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        const QAbstractItemModelTester Watches(On.Window.Tree()->model(),
                                               QAbstractItemModelTester::FailureReportingMode::Fatal);
        QSignalSpy Resets(On.Window.Tree()->model(), &QAbstractItemModel::modelReset);
        const QStringList Before = CaptionsIn(Folder(On, L"FIELDS"));
        const TreeNode* const Second = Folder(On, L"FIELDS").Children.At(2);
        ASSERT_TRUE(On.Window.Select(Second->Key));
        const QString Name = FromWide(Second->Text);
        On.Window.Tree()->expand(On.Window.Tree()->currentIndex());

        On.Do("moveDown");
        EXPECT_EQ(Selected(On), Name);
        EXPECT_TRUE(On.Window.Tree()->isExpanded(On.Window.Tree()->currentIndex())) << "it stays open";
        EXPECT_EQ(CaptionsIn(Folder(On, L"FIELDS")).indexOf(Name), 2);
        EXPECT_EQ(ShownIn(On, L"FIELDS"), CaptionsIn(Folder(On, L"FIELDS")));
        EXPECT_TRUE(On.Core.Tree().Modified());
        On.Do("moveUp");
        On.Do("moveUp");
        EXPECT_EQ(CaptionsIn(Folder(On, L"FIELDS")).indexOf(Name), 0);
        On.Do("moveUp");  // there is no place to go
        EXPECT_EQ(On.Window.Message(), QStringLiteral("Operazione non eseguita."));
        EXPECT_EQ(Selected(On), Name);
        EXPECT_EQ(ShownIn(On, L"FIELDS").size(), Before.size());

        On.Do("new");
        EXPECT_EQ(ShownIn(On, L"FIELDS").size(), Before.size() + 1);
        EXPECT_EQ(SectionWord(On.Window.Current()), L"FIELDS");
        {
            Operator Person;
            Answers(Person, QStringLiteral("Eliminare \""), QStringLiteral("No"));
            On.Do("delete");
        }
        EXPECT_EQ(ShownIn(On, L"FIELDS").size(), Before.size() + 1);
        {
            Operator Person;
            Answers(Person, QStringLiteral("Eliminare \""), QStringLiteral("Sì"));
            On.Do("delete");
        }
        EXPECT_EQ(ShownIn(On, L"FIELDS").size(), Before.size());
        EXPECT_EQ(On.Window.Tree()->currentIndex().data(NodesModel::kKeyRole).toString(),
                  FromWide(On.Window.Current()));
        EXPECT_EQ(Resets.count(), 0) << "no operation loads the tree anew";
    });
}

TEST_F(DesignWindowTest, DeletingAllAsksWithNoAsItsDefault) {
    InWindow(L"MENU", L"PRINCIPALE", [](const Shown& On) {
        std::wstring Full;
        On.Core.Tree().ForEach([&](const TreeNode& Node) {
            if (Full.empty() && On.Core.Tree().Kind(Node) == kind::kList && Node.Children.Count() > 0)
                Full = Node.Key;
        });
        ASSERT_FALSE(Full.empty());
        ASSERT_TRUE(On.Window.Select(Full));
        {
            Operator Person;
            Person.In<QMessageBox>([](QMessageBox& Box) {
                EXPECT_TRUE(Box.text().startsWith(QStringLiteral("Eliminare tutti gli elementi di ")));
                QTest::keyClick(&Box, Qt::Key_Return);
            });
            On.Do("deleteAll");
        }
        EXPECT_GT(Folder(On, Full).Children.Count(), 0);
        {
            Operator Person;
            Answers(Person, QStringLiteral("Eliminare tutti"), QStringLiteral("Sì"));
            On.Do("deleteAll");
        }
        EXPECT_EQ(Folder(On, Full).Children.Count(), 0);
        EXPECT_EQ(ShownIn(On, Full), QStringList());
        EXPECT_EQ(On.Window.Current(), Full);
        EXPECT_FALSE(On.Offered("deleteAll"));
    });
}

TEST_F(DesignWindowTest, ADragMovesWithinTheListOnly) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        auto& Model = dynamic_cast<NodesModel&>(*On.Window.Tree()->model());
        QSignalSpy Resets(&Model, &QAbstractItemModel::modelReset);
        QStringList Wanted = CaptionsIn(Folder(On, L"FIELDS"));
        const auto Drag = [&](int From, int Row, const QModelIndex& Onto) {
            const QModelIndex Dragged = Model.index(From, 0, Model.IndexOf(L"FIELDS"));
            EXPECT_TRUE(Dragged.flags() & Qt::ItemIsDragEnabled);
            const std::unique_ptr<QMimeData> Data(Model.mimeData({Dragged}));
            if (!Model.canDropMimeData(Data.get(), Qt::MoveAction, Row, 0, Onto)) return false;
            EXPECT_FALSE(Model.dropMimeData(Data.get(), Qt::MoveAction, Row, 0, Onto))
                << "the view must not take the node out";
            QCoreApplication::processEvents();
            return true;
        };
        const QModelIndex List = Model.IndexOf(L"FIELDS");
        ASSERT_GE(Wanted.size(), 5);
        EXPECT_TRUE(Drag(4, 1, List));
        Wanted.move(4, 1);
        EXPECT_EQ(ShownIn(On, L"FIELDS"), Wanted);
        EXPECT_EQ(Selected(On), Wanted[1]);
        EXPECT_TRUE(Drag(0, 3, Model.IndexOf(L"FIELDS")));  // before what is the fourth now
        Wanted.move(0, 2);
        EXPECT_EQ(ShownIn(On, L"FIELDS"), Wanted);
        EXPECT_TRUE(Drag(1, -1, Model.IndexOf(L"FIELDS")));  // onto the folder: to the end
        Wanted.move(1, Wanted.size() - 1);
        EXPECT_EQ(ShownIn(On, L"FIELDS"), Wanted);
        EXPECT_TRUE(Drag(3, 3, Model.IndexOf(L"FIELDS"))) << "to where it stands already";
        EXPECT_EQ(ShownIn(On, L"FIELDS"), Wanted);
        EXPECT_FALSE(Drag(0, 0, Model.IndexOf(kRootKey)));
        EXPECT_FALSE(Drag(0, -1, Model.IndexOf(L"PARMS")));
        EXPECT_FALSE(Model.flags(Model.IndexOf(L"PARMS")) & Qt::ItemIsDragEnabled);
        EXPECT_EQ(Resets.count(), 0);
    });
}

TEST_F(DesignWindowTest, CaptionsLiveWithTheText) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        const TreeNode* const First = Folder(On, L"FIELDS").Children.At(1);
        const std::wstring Element = First->Key;
        std::wstring Leaf;
        for (const TreeNode* N = First; N; N = N->Children.At(1))
            if (IsLeafKey(N->Key)) Leaf = N->Key;
        ASSERT_FALSE(Leaf.empty());
        ASSERT_TRUE(On.Window.Select(Leaf));
        QString Text = On.Editor().SectionText();
        Text.replace(QRegularExpression(QStringLiteral("^NAME= .*$"), QRegularExpression::MultilineOption),
                     QStringLiteral("NAME= \"NUOVONOME\"\r"));
        On.Type(Text);
        On.Do("apply");
        EXPECT_FALSE(On.Editor().HasChanges()) << qPrintable(On.Window.Message());
        EXPECT_TRUE(ShownIn(On, L"FIELDS").join(u'\n').contains(QStringLiteral("NUOVONOME")));
    });
}

TEST_F(DesignWindowTest, ARenamedAliasIsSelectedAtItsNewPlace) {
    const std::vector<host::RegistryEntry> All = OnDesk.Registry().List(L"ALIAS");
    ASSERT_FALSE(All.empty());
    InWindow(L"ALIAS", All.front().Name, [](const Shown& On) {
        On.Leaf(L"FIELDS", 1);
        ASSERT_GT(ShownIn(On, L"FIELDS").size(), 1);
        On.Type(QStringLiteral("NAME= \"zzz\"\r\n"));
        On.Do("apply");
        EXPECT_EQ(ShownIn(On, L"FIELDS").last(), QStringLiteral("zzz"));
        EXPECT_EQ(Selected(On), QStringLiteral("zzz"));
        EXPECT_TRUE(On.Editor().SectionText().contains(QStringLiteral("zzz")));
    });
}

TEST_F(DesignWindowTest, TheSearchGoesFromNodeToNodeAndRoundTheEnd) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        On.Do("find");
        QTest::keyClicks(On.Window.Search(), "parametri");
        QStringList Keys;
        for (int Time = 0; Time < 3; ++Time) {
            QTest::keyClick(On.Window.Search(), Qt::Key_Return);
            EXPECT_EQ(Selected(On).toLower(), QStringLiteral("parametri"));
            Keys.append(FromWide(On.Window.Current()));
        }
        EXPECT_EQ(QSet<QString>(Keys.begin(), Keys.end()).size(), 3);
        On.Window.Search()->setText(QStringLiteral("non c'è"));
        EXPECT_FALSE(On.Window.FindNext());
        EXPECT_EQ(On.Window.Message(), QStringLiteral("\"non c'è\" non si trova nell'albero."));
    });
}

// The texts.

TEST_F(DesignWindowTest, SaysWhatAllWindowsSay) {
    for (const window::PhraseRow& Each : window::kPhrases)
        EXPECT_EQ(QString::fromUtf8(DesignWindow::SourceOf(Each.Of)), FromWide(Each.Text));
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        std::vector<std::pair<QString, QStringList>> Wanted, Menus;
        for (const wchar_t* const Caption : window::kMenus) Wanted.push_back({FromWide(Caption), {}});
        for (const window::CommandRow& Each : window::kCommands)
            Wanted[static_cast<std::size_t>(Each.In)].second.append(FromWide(Each.Caption));
        // What the other windows lack.
        const QStringList Own{QStringLiteral("&Modifiche..."), QStringLiteral("C&ompleta")};
        for (const QAction* const Menu : On.Window.menuBar()->actions()) {
            Menus.push_back({Menu->text(), {}});
            if (Menus.size() == std::size(window::kMenus)) continue;  // the tools are the server's
            for (const QAction* const Each : Menu->menu()->actions())
                if (!Own.contains(Each->text())) Menus.back().second.append(Each->text());
        }
        EXPECT_EQ(Menus, Wanted);
        for (const window::CommandRow& Each : window::kCommands) {
            const QAction* const Found = On.Window.ActionOf(QString::fromLatin1(Each.Name));
            ASSERT_NE(Found, nullptr) << Each.Name;
            EXPECT_EQ(Found->text(), FromWide(Each.Caption));
        }
    });
}

// The tools.

TEST_F(DesignWindowTest, TheToolBarIsThatOfTheServer) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        EXPECT_EQ(On.Window.ActionOf(QStringLiteral("findtag"))->toolTip(),
                  QStringLiteral("Trova tag libero"));
        EXPECT_FALSE(On.Window.ActionOf(QStringLiteral("findtag"))->icon().isNull());
        EXPECT_TRUE(On.Offered("findtag"));
        EXPECT_TRUE(On.Offered("constants"));
    });
    InWindow(L"MENU", L"PRINCIPALE", [](const Shown& On) {
        for (const char* const Tool : {"findtag", "renumtag", "maptable", "constants"})
            EXPECT_FALSE(On.Offered(Tool)) << Tool;
    });
}

TEST_F(DesignWindowTest, TheTagListIsShown) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        Operator Person;
        Person.In<QDialog>([](QDialog& Form) {
            EXPECT_EQ(Form.windowTitle(), QStringLiteral("Tag disponibili"));
            EXPECT_NE(Form.findChild<QAbstractItemView*>(), nullptr);
            Form.close();
        });
        On.Do("findtag");
    });
}

TEST_F(DesignWindowTest, RenumberingAsksFirst) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        Operator Person;
        Person.In<QMessageBox>([](QMessageBox& Box) {
            EXPECT_EQ(Box.text(), QStringLiteral("Confermi la rinumerazione dei Tag?"));
            QTest::keyClick(&Box, Qt::Key_Escape);
        });
        On.Do("renumtag");
        EXPECT_FALSE(On.Core.Tree().Modified()) << "called off";
    });
}

TEST_F(DesignWindowTest, ConstantsGoIntoTheFileThatIsNamed) {
    const std::filesystem::path File = Place.Folder() / "costanti.bas";
    InWindow(L"TABLE", L"NOTIZIE", [&](const Shown& On) {
        {
            Operator Person;
            Person.In<QFileDialog>([](QFileDialog& Dialog) { Dialog.reject(); });
            On.Do("constants");
        }
        EXPECT_FALSE(std::filesystem::exists(File));
        Operator Person;
        Person.In<QFileDialog>([&](QFileDialog& Dialog) {
            auto* const Name = Dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(Name, nullptr);
            Name->setText(QString::fromStdString(File.string()));
            QTest::keyClick(Name, Qt::Key_Return);
        });
        On.Do("constants");
        EXPECT_FALSE(On.Core.Tree().Modified());
    });
    EXPECT_GT(std::filesystem::file_size(File), 1000U);
}

TEST_F(DesignWindowTest, FieldsAreMappedFromACopiedTableAfterTheQuestions) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        On.Window.Tree()->setFocus();
        On.Do("copy");
    });
    InWindow(L"PROFILE", L"SCHEDA", [](const Shown& On) {
        Operator Person;
        Answers(Person, QStringLiteral("Si vogliono rimuovere i campi già presenti"),
                QStringLiteral("Annulla"));
        On.Do("maptable");
        EXPECT_FALSE(On.Core.Tree().Modified());
        Answers(Person, QStringLiteral("Si vogliono rimuovere i campi già presenti"), QStringLiteral("Sì"));
        Answers(Person, QStringLiteral("Operazione completata: salvare l'oggetto"), QStringLiteral("OK"));
        On.Do("maptable");
        EXPECT_TRUE(On.Core.Tree().Modified());
    });
}

TEST_F(DesignWindowTest, PropertiesBeepAndChangeNothing) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        On.Leaf(L"PARMS");
        const QString Text = On.Editor().SectionText();
        EXPECT_TRUE(On.Window.ShowProperties()) << qPrintable(On.Window.Message());
        EXPECT_EQ(On.Window.Message(), QString());
        EXPECT_EQ(On.Editor().SectionText(), Text);
        EXPECT_FALSE(On.Core.Tree().Modified());
    });
}

TEST_F(DesignWindowTest, AnObjectGoesOverTheClipboardIntoAnotherOfItsClass) {
    const std::vector<host::RegistryEntry> All = OnDesk.Registry().List(L"FILTER");
    ASSERT_GE(All.size(), 2U);
    QString Text;
    InWindow(L"FILTER", All[0].Name, [&](const Shown& On) {
        On.Leaf(L"PARMS");
        Text = On.Editor().SectionText();
        On.Window.Tree()->setFocus();
        On.Do("copy");
        EXPECT_EQ(On.Window.Message(), QStringLiteral("Negli appunti: un oggetto della classe FILTER."));
    });
    InWindow(L"SORT", L"ITALIANO", [&](const Shown& On) {
        On.Window.Tree()->setFocus();
        On.Do("paste");
        EXPECT_EQ(On.Window.Message(),
                  QStringLiteral("I dati memorizzati sono di una classe diversa da SORT"));
        EXPECT_FALSE(On.Core.Tree().Modified());
    });
    InWindow(L"FILTER", All[1].Name, [&](const Shown& On) {
        On.Window.Tree()->setFocus();
        On.Do("paste");
        EXPECT_TRUE(On.Core.Tree().Modified()) << qPrintable(On.Window.Message());
        On.Leaf(L"PARMS");
        EXPECT_EQ(On.Editor().SectionText().section(QStringLiteral("'["), 0, 0),
                  Text.section(QStringLiteral("'["), 0, 0));
        Operator Person;
        Answers(Person, QStringLiteral("andranno perse. Incollare?"), QStringLiteral("No"));
        On.Window.Tree()->setFocus();
        On.Do("paste");
    });
}

// Saving and closing.

TEST_F(DesignWindowTest, ClosingAsksWhatBecomesOfTheChanges) {
    const auto Change = [](const Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Editor().SectionText().replace(QStringLiteral("AUTOMATIC= FALSE"),
                                                  QStringLiteral("AUTOMATIC= TRUE")));
    };
    const auto Automatic = [&] {
        const RegObject Stored = OnDesk.Registry().ReadStored(L"FILTER", L"DISPONIBILI");
        for (const auto& [Name, Value] : Stored.Values)
            if (Name == L"Automatic") return std::get<bool>(Value);
        return false;
    };
    ASSERT_FALSE(Automatic());
    InWindow(L"FILTER", L"DISPONIBILI", [&](const Shown& On) {
        Change(On);
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Annulla"));
            EXPECT_FALSE(On.Window.close());
        }
        EXPECT_TRUE(On.Window.isVisible());
        EXPECT_TRUE(On.Editor().HasChanges());
        {
            Operator Person;
            Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Applica"));
            Answers(Person, QStringLiteral("Salvare le modifiche all'oggetto \"DISPONIBILI\"?"),
                    QStringLiteral("Annulla"));
            EXPECT_FALSE(On.Window.close());
        }
        EXPECT_TRUE(On.Core.Tree().Modified());
        Operator Person;
        Answers(Person, QStringLiteral("Salvare le modifiche"), QStringLiteral("No"));
        EXPECT_TRUE(On.Window.close());
    });
    EXPECT_FALSE(Automatic());
    InWindow(L"FILTER", L"DISPONIBILI", [&](const Shown& On) {
        Change(On);
        Operator Person;
        Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Scarta"));
        EXPECT_TRUE(On.Window.close()) << "nothing else has changed";
    });
    EXPECT_FALSE(Automatic());
    InWindow(L"FILTER", L"DISPONIBILI", [&](const Shown& On) {
        Change(On);
        Operator Person;
        Answers(Person, QStringLiteral("non è stato applicato"), QStringLiteral("Applica"));
        Answers(Person, QStringLiteral("Salvare le modifiche"), QStringLiteral("Sì"));
        QSignalSpy Closed(&On.Window, &DesignWindow::Closed);
        EXPECT_TRUE(On.Window.close());
        EXPECT_EQ(Closed.count(), 1);
    });
    EXPECT_TRUE(Automatic());
}

TEST_F(DesignWindowTest, AnOvertakenSaveCanBeCalledOffTakenOverOrKept) {
    const auto Changed = [](const Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Editor().SectionText().replace(QStringLiteral("AUTOMATIC= FALSE"),
                                                  QStringLiteral("AUTOMATIC= TRUE")));
        On.Do("apply");
    };
    InWindow(L"FILTER", L"DISPONIBILI", [&](const Shown& On) {
        Changed(On);
        SavedElsewhere(L"FILTER", L"DISPONIBILI");
        {
            Operator Person;
            Person.In<ChangesDialog>([](ChangesDialog& Dialog) {
                const QString Text = Dialog.Text()->toPlainText();
                EXPECT_TRUE(Text.contains(QStringLiteral("AUTOMATIC= TRUE"))) << qPrintable(Text);
                Dialog.reject();
            });
            On.Do("save");
        }
        EXPECT_TRUE(On.Core.Tree().Modified());
        EXPECT_TRUE(On.Editor().SectionText().contains(QStringLiteral("AUTOMATIC= TRUE")))
            << "nothing is lost";
        {
            Operator Person;
            Person.Click(QStringLiteral("Prendi la versione salvata"));
            On.Do("save");
        }
        EXPECT_FALSE(On.Core.Tree().Modified());
        On.Leaf(L"PARMS");
        EXPECT_TRUE(On.Editor().SectionText().contains(QStringLiteral("AUTOMATIC= FALSE")));
        EXPECT_EQ(On.Object.Read().Desc, L"Salvato altrove");

        Changed(On);
        SavedElsewhere(L"FILTER", L"DISPONIBILI");
        {
            Operator Person;
            Person.Click(QStringLiteral("Mantieni la mia"));
            On.Do("save");
        }
        EXPECT_FALSE(On.Core.Tree().Modified()) << qPrintable(On.Window.Message());
        EXPECT_EQ(On.Window.Message(), QStringLiteral("Oggetto salvato."));
    });
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        EXPECT_TRUE(On.Editor().SectionText().contains(QStringLiteral("AUTOMATIC= TRUE")));
    });
}

TEST_F(DesignWindowTest, AnObjectDeletedElsewhereKeepsItsEdits) {
    InWindow(L"FILTER", L"DISPONIBILI", [&](const Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Editor().SectionText() + QStringLiteral("'nota\r\n"));
        On.Do("apply");
        OnDesk.Registry().Delete(L"FILTER", L"DISPONIBILI");
        On.Do("changes");
        EXPECT_EQ(On.Window.Message(), QStringLiteral("L'oggetto non è più nell'archivio."));
        {
            Operator Person;
            Answers(Person, QStringLiteral("è stato eliminato da un altro programma. Ricrearlo"),
                    QStringLiteral("No"));
            On.Do("save");
        }
        EXPECT_TRUE(On.Core.Tree().Modified());
        const QString Text = On.Editor().SectionText();
        {
            Operator Person;
            Answers(Person, QStringLiteral("è stato eliminato da un altro programma. Ricrearlo"),
                    QStringLiteral("Sì"));
            On.Do("save");
        }
        EXPECT_FALSE(On.Core.Tree().Modified()) << qPrintable(On.Window.Message());
        On.Type(Text.section(QStringLiteral("'["), 0, 0)
                    .replace(QStringLiteral("AUTOMATIC= FALSE"), QStringLiteral("AUTOMATIC= TRUE")));
        On.Do("apply");
        On.Do("save");
        EXPECT_FALSE(On.Core.Tree().Modified()) << "and goes on as any other";
    });
    InWindow(L"FILTER", L"DISPONIBILI", [](const Shown& On) {
        On.Leaf(L"PARMS");
        EXPECT_TRUE(On.Editor().SectionText().contains(QStringLiteral("AUTOMATIC= TRUE")));
    });
}

TEST_F(DesignWindowTest, ThePreviewTellsWhatTheNextSaveChanges) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        const auto Preview = [&] {
            QString Text;
            Operator Person;
            Person.In<ChangesDialog>([&](ChangesDialog& Dialog) {
                Text = Dialog.Text()->toPlainText();
                Dialog.reject();
            });
            On.Do("changes");
            return Text;
        };
        const QString None = Preview();
        On.Leaf(L"PARMS");
        On.Type(
            On.Editor().SectionText().replace(QStringLiteral("TABLEID= 1"), QStringLiteral("TABLEID= 77")));
        On.Do("apply");
        const QString Some = Preview();
        EXPECT_NE(Some, None);
        EXPECT_TRUE(Some.contains(QStringLiteral("TABLEID= 77"))) << qPrintable(Some);
        EXPECT_TRUE(On.Core.Tree().Modified());
        EXPECT_EQ(SectionWord(On.Window.Current()), L"PARMS") << "the selection stays";
    });
}

TEST_F(DesignWindowTest, ReloadingGoesBackToWhatIsStored) {
    InWindow(L"TABLE", L"NOTIZIE", [](const Shown& On) {
        const QStringList Before = ShownIn(On, L"FIELDS");
        On.Window.Select(L"FIELDS");
        On.Do("new");
        {
            Operator Person;
            Answers(Person, QStringLiteral("andranno perse. Ricaricare l'oggetto?"), QStringLiteral("No"));
            On.Do("reload");
        }
        EXPECT_EQ(ShownIn(On, L"FIELDS").size(), Before.size() + 1);
        {
            Operator Person;
            Answers(Person, QStringLiteral("andranno perse. Ricaricare l'oggetto?"), QStringLiteral("Sì"));
            On.Do("reload");
        }
        EXPECT_EQ(ShownIn(On, L"FIELDS"), Before);
        EXPECT_FALSE(On.Core.Tree().Modified());
    });
}

TEST_F(DesignWindowTest, AnObjectThatIsNotThereIsToldInABox) {
    Operator Person;
    Person.In<QMessageBox>([](QMessageBox& Box) {
        EXPECT_TRUE(Box.text().contains(QStringLiteral("NESSUNO"))) << qPrintable(Box.text());
        Box.accept();
    });
    ShowObject(OnDesk, nullptr, L"FILTER", L"NESSUNO");
}

TEST_F(DesignWindowTest, ShowObjectComesBackWhenTheWindowIsClosed) {
    Operator Person;
    Person.In<DesignWindow>([](DesignWindow& Window) {
        EXPECT_TRUE(Window.windowTitle().contains(QStringLiteral("DISPONIBILI")));
        Window.close();
    });
    ShowObject(OnDesk, nullptr, L"FILTER", L"DISPONIBILI");
}

}  // namespace
}  // namespace kv::desktop::test
