// Sits before the modal windows that come up while a test runs, and does in each what it was told.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace kv::test {

/// The button of a window with this label, its mnemonic left aside.
inline QAbstractButton* ButtonOf(QWidget& Window, const QString& Label) {
    for (QAbstractButton* const Each : Window.findChildren<QAbstractButton*>())
        if (Each->isVisible() && Each->text().remove(QLatin1Char('&')) == Label) return Each;
    return nullptr;
}

class Operator {
  public:
    Operator() { Watch(); }
    Operator(const Operator&) = delete;
    Operator& operator=(const Operator&) = delete;
    /// All that was told must have come up.
    ~Operator() {
        *Alive_ = false;
        EXPECT_EQ(Steps_.size(), 0U) << "a modal window has not come up";
    }

    /// In the next modal window, which must be of that kind.
    template <class Window>
    Operator& In(std::function<void(Window&)> Do) {
        Steps_.push_back([Do = std::move(Do)](QWidget* Up) {
            auto* const Its = qobject_cast<Window*>(Up);
            if (Its) Do(*Its);
            return Its != nullptr;
        });
        return *this;
    }

    /// In the next modal window clicks the button with this label.
    Operator& Click(const QString& Label) {
        return In<QDialog>([Label](QDialog& Up) {
            QAbstractButton* const Button = ButtonOf(Up, Label);
            if (Button) {
                Button->click();
            } else {
                ADD_FAILURE() << "no button " << qPrintable(Label);
                Up.close();
            }
        });
    }

  private:
    // The next look is arranged before a step is done, since a step may open the next window.
    void Watch() {
        QTimer::singleShot(10, qApp, [this, Alive = Alive_] {
            if (*Alive) Look();
        });
    }
    void Look() {
        Watch();
        QWidget* const Up = QApplication::activeModalWidget();
        if (!Up || !Up->isVisible()) {
            Waiting_.restart();
            return;
        }
        // Keys go to the active window, and without a screen nobody makes it so.
        if (!Up->isActiveWindow() && Waiting_.elapsed() < 1000) {
            Up->activateWindow();
            return;
        }
        if (!Steps_.empty()) {
            auto Step = std::move(Steps_.front());
            Steps_.pop_front();
            Waiting_.restart();
            if (Step(Up)) return;
            Steps_.push_front(std::move(Step));
        }
        // The window of an object stays as long as its test wants it.
        if (qobject_cast<QMainWindow*>(Up)) return;
        // A window that nobody closes would stop the test.
        if (Waiting_.elapsed() < 3000) return;
        ADD_FAILURE() << "nobody expected " << Up->metaObject()->className() << " "
                      << qPrintable(Up->windowTitle());
        Up->close();
    }

    std::deque<std::function<bool(QWidget*)>> Steps_;
    std::shared_ptr<bool> Alive_ = std::make_shared<bool>(true);
    QElapsedTimer Waiting_;
};

}  // namespace kv::test
