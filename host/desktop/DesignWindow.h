// The window of one object under edit: the tree of its sections and the text of the one that is selected.
#pragma once

#include <QMainWindow>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "frame/Failure.h"
#include "host/KvRegSvr.h"
#include "host/desktop/Desk.h"
#include "host/desktop/ObjectTexts.h"
#include "window/ObjectDesk.h"
#include "window/WindowCore.h"

class QAction;
class QLabel;
class QLineEdit;
class QSplitter;
class QTreeView;

namespace kv::desktop {

class ElidedLabel;
class NodesModel;
class SectionEditor;

/// Opens the window on a stored object, modally: it comes back when the operator closes it. What cannot be
/// opened is told in a box. Throws nothing.
void ShowObject(Desk& On, QWidget* Parent, const std::wstring& Clsid, const std::wstring& Name);

/// Lives inside the server's modal ShowTree, when LoadData has succeeded. While it lives it shows the errors
/// of the server. The references must outlive it.
class DesignWindow final : public QMainWindow, private window::ObjectFace {
    Q_OBJECT

  public:
    DesignWindow(Desk& On, window::WindowCore& Core, host::RegistryObject& Object, QWidget* Parent = nullptr);
    ~DesignWindow() override;

    QTreeView* Tree() const noexcept { return View_; }
    SectionEditor* Editor() const noexcept { return Editor_; }
    QLineEdit* Search() const noexcept { return Search_; }
    /// What the message line says, "" for nothing.
    QString Message() const;
    /// The key of the node whose text is shown, or which is selected.
    const std::wstring& Current() const noexcept { return Desk_.Current(); }

    // What the menus, the tool bar and the keys do, by window::ObjectDesk. All answer False when the server
    // has refused, the message is shown then, or when the operator has called it off.

    /// Selects a node and shows its text. Text that is not applied is asked about first.
    bool Select(std::wstring_view Key) { return Desk_.Select(Key); }
    /// Hands the text over to the server. A refused text stays as it is typed.
    bool Apply() { return Desk_.Apply(); }
    /// Takes back what is typed since the last Apply.
    bool Revert() { return Desk_.Revert(); }
    bool NewElement() { return Desk_.NewElement(); }
    bool DeleteElement() { return Desk_.DeleteElement(); }
    bool DeleteAll() { return Desk_.DeleteAll(); }
    bool MoveUp() { return Desk_.Move(+1); }
    bool MoveDown() { return Desk_.Move(-1); }
    bool Copy();
    bool Cut();
    bool Paste();
    bool ShowProperties() { return Desk_.ShowProperties(); }
    bool Save() { return Desk_.Save(); }
    /// Loads the object anew as it was saved last.
    bool Reload();
    /// What the object will be after the next save beside what is stored.
    bool ShowChanges();
    /// The next node whose caption holds the text of the search line.
    bool FindNext();

    /// An action by its name, for those who drive the window; null when there is none.
    QAction* ActionOf(const QString& Name) const;
    /// What the window says, in Italian as it stands in the sources; UTF-8.
    static const char* SourceOf(window::Phrase Of);

  Q_SIGNALS:
    void Closed();

  protected:
    void closeEvent(QCloseEvent* Event) override;

  private:
    void MakeActions();
    void MakeBody();
    QAction* Make(const char* Name, const QString& Text, const QKeySequence& Key, const char* Picture,
                  bool (DesignWindow::*Do)());
    void MakeToolButtons();
    void MakeStatus();
    void TreeMenu(const QPoint& Where);

    // The window as window::ObjectDesk works on it.
    bool TextChanged() const override;
    std::wstring Text() const override;
    void ShowText(const std::wstring& Text, bool Applied) override;
    void ShowNoText() override;
    void RevertText() override;
    int TextPosition() const override;
    void SetTextPosition(int Position) override;
    void ShowRefused(int Line) override;
    void Mark(std::wstring_view Key) override;
    bool IsOpen(const window::TreeNode& Node) const override;
    void Open(const window::TreeNode& Node) override;
    void Rebuild(const std::function<void()>& Build) override;
    void Tell(const std::wstring& Text, bool Fault) override;
    void ShowState() override;
    std::size_t AskLeaving(const std::wstring& Question) override;
    std::wstring Say(window::Phrase Of) const override;
    std::wstring Widened(const char* What) const override;
    std::optional<bool> BeforeSave() override;

    bool LoadAnew(host::RegistryObject::State Stored);
    std::vector<SectionChange> ChangesSince(const host::RegistryObject::State& Stored);
    bool MadeAnew();
    void Said(const QString& Text, bool Fault);
    QString Said(window::Phrase Of) const;
    template <class Work>
    bool InText(Work&& Do);

    Desk& On_;
    window::WindowCore& Core_;
    host::RegistryObject& Object_;
    NodesModel* Nodes_ = nullptr;
    QTreeView* View_ = nullptr;
    SectionEditor* Editor_ = nullptr;
    QLineEdit* Search_ = nullptr;
    ElidedLabel* Heading_ = nullptr;
    QLabel* Message_ = nullptr;
    QLabel* Sign_ = nullptr;
    QSplitter* Split_ = nullptr;
    std::vector<std::pair<QAction*, std::wstring>> Tools_;
    window::ObjectDesk Desk_{Core_, *this};
};

}  // namespace kv::desktop
