// The object browser: the registry by class, and what is done with whole objects.
#pragma once

#include <QMainWindow>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "host/desktop/ObjectsModel.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace kv::desktop {

class Desk;
class ElidedLabel;

/// Remembers the last store, its place on the screen and the widths of its columns (QSettings of the
/// application). Trouble with the store and refusals are told in a box; the window goes on.
class BrowserWindow final : public QMainWindow {
    Q_OBJECT

  public:
    /// `On` must outlive it. No store is opened.
    explicit BrowserWindow(Desk& On, QWidget* Parent = nullptr);

    /// The store of the last time, where it is still there.
    static std::optional<std::filesystem::path> LastStore();

    /// Opens a store, which is made where there is none, and remembers it. False when that failed, which has
    /// been told; the store before stays.
    bool OpenStore(const std::filesystem::path& File);
    /// Shows the objects as they are stored now. What is selected stays so.
    void Reload();

    /// What is selected; no class and no name where nothing is.
    ObjectKey Selected() const;
    /// Selects an object or a class; what the search has left out is not selected.
    void Select(const ObjectKey& Key);

    /// How an object is opened; ShowObject at first.
    std::function<void(Desk& On, QWidget* Parent, const std::wstring& Clsid, const std::wstring& Name)> Show;

    // For those who drive it; the actions bear object names.
    QTreeView* View() const noexcept { return View_; }
    QLineEdit* SearchLine() const noexcept { return Search_; }

  protected:
    void closeEvent(QCloseEvent* Event) override;
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void MakeActions();
    void MakeCentre();
    void Connect();
    QAction* Act(const char* Name, const QString& Text, const QString& Tip, void (BrowserWindow::*Does)());

    void ChooseStore();
    void ChooseNewStore();
    void MakeNew();
    void OpenSelected();
    void CopySelected();
    void DeleteSelected();
    void ExportSelected();
    void ImportIntoSelected();
    void TellAbout();

    template <class Body>
    bool Told(Body&& Run);
    void Tell(const std::wstring& Sentence, std::int32_t Icon);
    bool Ask(const QString& Question);
    void ShowMade(const ObjectKey& Made);
    void ApplySearch();
    void Unfold();
    void ShowState();
    QString FolderOfFiles() const;

    Desk& On_;
    ObjectsModel* Objects_ = nullptr;
    ObjectsFilter* Filter_ = nullptr;
    QStackedWidget* Centre_ = nullptr;
    QTreeView* View_ = nullptr;
    QLabel* Nothing_ = nullptr;
    QPushButton* NothingButton_ = nullptr;
    QAction* NothingAction_ = nullptr;
    QLineEdit* Search_ = nullptr;
    ElidedLabel* Where_ = nullptr;
    QLabel* Counts_ = nullptr;
    QStringList Folded_;  // class words
    bool Unfolding_ = false;

    QAction* OpenStore_ = nullptr;
    QAction* NewStore_ = nullptr;
    QAction* Reload_ = nullptr;
    QAction* Quit_ = nullptr;
    QAction* New_ = nullptr;
    QAction* Open_ = nullptr;
    QAction* Copy_ = nullptr;
    QAction* Delete_ = nullptr;
    QAction* Export_ = nullptr;
    QAction* Import_ = nullptr;
    QAction* Find_ = nullptr;
    QAction* EndSearch_ = nullptr;
    QAction* UnfoldAll_ = nullptr;
    QAction* FoldAll_ = nullptr;
    QAction* About_ = nullptr;
};

}  // namespace kv::desktop
