// A table of ten thousand fields in its window: what is done to one field must not cost what the whole table
// does. The times are printed, and not judged: they are those of the machine.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTreeView>
#include <cstdio>

#include "records/TableRecord.h"
#include "tests/desktop/Driving.h"

namespace kv::desktop::test {
namespace {

using kv::test::Operator;

constexpr std::int32_t kFields = 10000;

TableRecord LargeTable() {
    TableRecord Made;
    Made.Name = L"GRANDE";
    Made.Style = 0;
    Made.Index = L"TIT";
    for (std::int32_t I = 1; I <= kFields; ++I) {
        FieldRecord Field;
        Field.Id = I;
        Field.Name = L"CAMPO " + std::to_wstring(I);
        Field.Caption = L"Una etichetta";
        Field.DataType = 8;
        Field.Tag = I;
        Field.GroupTag = I - (I - 1) % 10;
        Field.Level = I % 10 == 1 ? 1 : 2;
        Field.Visible = true;
        Made.Fields.Add(std::move(Field));
    }
    return Made;
}

/// How long a piece of work took, until the window was painted again.
class Measured {
  public:
    explicit Measured(const char* What) : What_(What) { Clock_.start(); }
    Measured(const Measured&) = delete;
    Measured& operator=(const Measured&) = delete;
    ~Measured() {
        QApplication::processEvents();
        std::printf("    %-44s %8.1f ms\n", What_, static_cast<double>(Clock_.nsecsElapsed()) / 1e6);
    }

  private:
    const char* What_;
    QElapsedTimer Clock_;
};

class LargeTableTest : public DesktopTest {};

TEST_F(LargeTableTest, OpensScrollsMovesAndFinds) {
    {
        OnDesk.Registry().Create(L"TABLE", L"GRANDE", L"Diecimila campi");
        const auto Object = OnDesk.Registry().Open(L"TABLE", L"GRANDE");
        Object->SetSaving(true);
        Object->Write(LargeTable().SaveObject());
    }
    QElapsedTimer Opening;
    Opening.start();
    InWindow(L"TABLE", L"GRANDE", [&](const Shown& On) {
        QApplication::processEvents();
        std::printf("    %-44s %8.1f ms\n", "open", static_cast<double>(Opening.nsecsElapsed()) / 1e6);
        QTreeView& View = *On.Window.Tree();
        {
            const Measured Time("open the list of fields");
            View.expand(View.model()->index(1, 0, View.model()->index(0, 0)));
        }
        QScrollBar& Bar = *View.verticalScrollBar();
        {
            const Measured Time("scroll through it, page by page");
            int Pages = 0;
            for (int At = Bar.minimum(); At < Bar.maximum(); At += Bar.pageStep(), ++Pages) {
                Bar.setValue(At);
                QApplication::processEvents();
            }
            EXPECT_GT(Pages, 100);
        }
        {
            const Measured Time("open every node");
            View.expandAll();
        }
        {
            const Measured Time("to the end and back");
            Bar.setValue(Bar.maximum());
            QApplication::processEvents();
            Bar.setValue(Bar.minimum());
        }
        QSignalSpy Anew(View.model(), &QAbstractItemModel::modelReset);
        QSignalSpy In(View.model(), &QAbstractItemModel::rowsInserted);
        QSignalSpy Out(View.model(), &QAbstractItemModel::rowsRemoved);
        {
            const Measured Time("find the last field");
            On.Window.Search()->setText(QStringLiteral("campo 10000"));
            EXPECT_TRUE(On.Window.FindNext());
        }
        EXPECT_TRUE(View.currentIndex().data().toString().contains(QStringLiteral("CAMPO 10000")));
        {
            const Measured Time("find what is not there");
            On.Window.Search()->setText(QStringLiteral("non si trova"));
            EXPECT_FALSE(On.Window.FindNext());
        }
        On.Window.Search()->setText(QStringLiteral("campo 5000"));
        ASSERT_TRUE(On.Window.FindNext());
        const int Row = View.currentIndex().row();
        {
            const Measured Time("move a field up");
            On.Do("moveUp");
        }
        EXPECT_EQ(View.currentIndex().row(), Row - 1);
        EXPECT_TRUE(Anew.isEmpty()) << "the tree is not loaded again";
        EXPECT_EQ(Out.size(), 1);
        EXPECT_LT(In.size(), 10);
        {
            const Measured Time("add a field");
            On.Do("new");
        }
        {
            const Measured Time("delete it");
            Operator Person;
            Answers(Person, QStringLiteral("Eliminare"), QStringLiteral("Sì"));
            On.Do("delete");
        }
        EXPECT_TRUE(Anew.isEmpty());
        On.Leaf(L"FIELDPARMS", 7000);
        On.Type(On.Editor().SectionText().replace(QStringLiteral("Una etichetta"), QStringLiteral("Altra")));
        {
            const Measured Time("apply the text of a field");
            On.Do("apply");
        }
        EXPECT_FALSE(On.Editor().HasChanges()) << qPrintable(On.Window.Message());
        {
            const Measured Time("save");
            On.Do("save");
        }
        EXPECT_FALSE(On.Core.Tree().Modified());
    });
}

}  // namespace
}  // namespace kv::desktop::test
