// The window of one object under edit: the tree of its sections and the text of the one that is selected.
#pragma once

#include <QMainWindow>
#include <functional>
#include <string>
#include <vector>

#include "frame/Failure.h"
#include "host/KvRegSvr.h"
#include "host/desktop/Desk.h"
#include "host/desktop/ObjectTexts.h"
#include "window/Offers.h"
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
class DesignWindow final : public QMainWindow {
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
    const std::wstring& Current() const noexcept { return Current_; }

    // What the menus, the tool bar and the keys do. All answer False when the server has refused, the message
    // is shown then, or when the operator has called it off.

    /// Selects a node and shows its text. Text that is not applied is asked about first.
    bool Select(std::wstring_view Key);
    /// Hands the text over to the server. A refused text stays as it is typed.
    bool Apply();
    /// Takes back what is typed since the last Apply.
    bool Revert();
    bool NewElement();
    bool DeleteElement();
    bool DeleteAll();
    bool MoveUp() { return Move(+1, 1); }
    bool MoveDown() { return Move(-1, 1); }
    bool Copy();
    bool Cut();
    bool Paste();
    bool ShowProperties();
    /// A tool of the tool bar by its word.
    void RunTool(const std::wstring& Word);
    bool Save();
    /// Loads the object anew as it was saved last.
    bool Reload();
    /// What the object will be after the next save beside what is stored.
    bool ShowChanges();
    /// The next node whose caption holds the text of the search line.
    bool FindNext();

    /// An action by its name, for those who drive the window; null when there is none.
    QAction* ActionOf(const QString& Name) const;

  Q_SIGNALS:
    void Closed();

  protected:
    void closeEvent(QCloseEvent* Event) override;

  private:
    using Places = std::vector<std::int32_t>;  // 1-based, from below the topmost node down
    enum class Leave { Applied, Dropped, Stay };

    void MakeActions();
    void MakeBody();
    QAction* Make(const char* Name, const QString& Text, const QKeySequence& Key, const char* Picture,
                  bool (DesignWindow::*Do)());
    void MakeToolButtons();

    bool Guarded(const std::function<bool()>& Body);
    bool Structural(const std::function<bool()>& Operation);
    bool Replaced(const std::function<bool()>& Operation);
    bool LoadAnew(host::RegistryObject::State Stored);
    std::vector<SectionChange> ChangesSince(const host::RegistryObject::State& Stored);
    bool Move(std::int32_t Direction, int Steps);
    void MoveTo(const QString& Key, int Place);
    bool Display(std::wstring_view Key);
    void ShowSelected();
    void UpdateOffers();
    void ShowTitle();
    void Tell(const QString& Text, bool Fault);
    void ShowFault(const KvError& Error);
    bool Ask(const QString& Text, std::int32_t Style = 0);
    Leave LeaveText();
    bool SettleOvertaken(bool& Saved);
    bool MadeAnew();
    template <class Work>
    bool InText(Work&& Do);
    window::Selection At() const;
    const window::TreeNode* CurrentNode() const;
    window::Offers CurrentOffers() const;
    std::vector<Places> OpenBelow(const window::TreeNode* Top) const;
    void OpenAgain(const window::TreeNode* Top, const std::vector<Places>& Open);
    static const window::TreeNode* Below(const window::TreeNode* Top, const Places& Where);
    static Places PlacesOf(const window::TreeNode* Node);
    void AfterLoad(const Places& Selected);
    void MarkCurrent();
    void TreeMenu(const QPoint& Where);

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
    std::wstring Current_;
    int FaultLine_ = 0;
    bool Faulty_ = false;
    bool Applied_ = false;  // the text shown again is what has just been applied
    bool Busy_ = false;  // the tree changes under the view: what it selects meanwhile is not the operator's
};

}  // namespace kv::desktop
