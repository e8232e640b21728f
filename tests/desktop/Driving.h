// What the tests of the object window share: an installation, and an object open in its window.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "host/Demo.h"
#include "host/ObjectWindow.h"
#include "host/desktop/DesignWindow.h"
#include "host/desktop/Desk.h"
#include "host/desktop/QtText.h"
#include "host/desktop/SectionEditor.h"
#include "tests/desktop/Operator.h"

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& Text, std::ostream* Out) { *Out << '"' << qPrintable(Text) << '"'; }
QT_END_NAMESPACE

namespace kv::desktop::test {

/// A copy of the demonstration installation, which is made once a run.
class Installation {
  public:
    Installation() {
        static const QTemporaryDir Made;
        static const bool Ready = [] {
            const std::filesystem::path Folder = Made.path().toStdString();
            const Desk Making(Folder / "demo", Folder);  // says where the default sort table is written
            host::MakeDemo(Folder / "demo");
            return true;
        }();
        EXPECT_TRUE(Ready);
        std::filesystem::copy(std::filesystem::path(Made.path().toStdString()) / "demo", Folder() / "demo");
    }
    std::filesystem::path Folder() const { return Own_.path().toStdString(); }
    std::filesystem::path Program() const { return Folder() / "demo"; }
    std::filesystem::path Store() const { return Program() / host::kDemoStore; }

  private:
    QTemporaryDir Own_;
};

/// Answers the next message box, which must say `Said`, with the button of this label.
inline void Answers(kv::test::Operator& Person, const QString& Said, const QString& Label) {
    Person.In<QMessageBox>([Said, Label](QMessageBox& Box) {
        EXPECT_TRUE(Box.text().contains(Said)) << qPrintable(Box.text());
        QAbstractButton* const Button = kv::test::ButtonOf(Box, Label);
        ASSERT_NE(Button, nullptr) << qPrintable(Label);
        Button->click();
    });
}

/// One showing of an object.
struct Shown {
    DesignWindow& Window;
    window::WindowCore& Core;
    host::RegistryObject& Object;

    SectionEditor& Editor() const { return *Window.Editor(); }
    void Do(const char* Action) const {
        QAction* const Found = Window.ActionOf(QString::fromLatin1(Action));
        ASSERT_NE(Found, nullptr) << Action;
        ASSERT_TRUE(Found->isEnabled()) << Action;
        Found->trigger();
    }
    bool Offered(const char* Action) const {
        return Window.ActionOf(QString::fromLatin1(Action))->isEnabled();
    }
    /// Selects the n-th leaf of a section; its key.
    std::wstring Leaf(std::wstring_view Section, int Nth = 1) const {
        std::wstring Key;
        Core.Tree().ForEach([&](const window::TreeNode& Node) {
            if (IsLeafKey(Node.Key) && SectionWord(Node.Key) == Section && Nth-- == 1) Key = Node.Key;
        });
        EXPECT_FALSE(Key.empty());
        EXPECT_TRUE(Window.Select(Key)) << Window.Message().toStdString();
        return Key;
    }
    void Type(const QString& Text) const {
        Editor().selectAll();
        Editor().insertPlainText(Text);
    }
};

class DesktopTest : public ::testing::Test {
  protected:
    DesktopTest() : OnDesk(Place.Program(), Place.Folder()) { OnDesk.OpenStore(Place.Store()); }

    /// Opens the window as ShowObject does, but for the loop of events: `While` drives it.
    void InWindow(const std::wstring& Clsid, const std::wstring& Name,
                  const std::function<void(const Shown&)>& While) {
        const auto Object = OnDesk.Registry().Open(Clsid, Name);
        host::ObjectWindow Window(&OnDesk.Registry(), Object, OnDesk.Clipboard());
        bool Ran = false;
        const bool Failed = Window.Show(true, [&](window::WindowCore& Core) {
            DesignWindow Open(OnDesk, Core, *Object);
            Open.show();
            Open.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&Open));
            Ran = true;
            While({Open, Core, *Object});
        });
        EXPECT_FALSE(Failed);
        EXPECT_TRUE(Ran);
    }

    Installation Place;
    Desk OnDesk;
};

}  // namespace kv::desktop::test
