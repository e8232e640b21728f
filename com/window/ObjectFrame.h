// The window of one object under edit: the tree of its sections and the text of the one that is selected.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "com/window/Handles.h"
#include "com/window/NodesView.h"
#include "com/window/Pictures.h"
#include "com/window/SectionEdit.h"
#include "frame/Failure.h"
#include "window/ObjectDesk.h"
#include "window/WindowCore.h"

namespace kv::com {

/// What the menus, the buttons and the keys send, as WM_COMMAND.
namespace command {
enum Id : int {
    // Those of window::kCommands, in their order.
    kSave = 100,
    kReload,
    kClose,
    kCopy,
    kCut,
    kPaste,
    kNew,
    kDelete,
    kDeleteAll,
    kMoveUp,
    kMoveDown,
    kProperties,
    kApply,
    kRevert,
    kStrict,
    kFind,
    kFindNext,
    kOtherPane,
    // Its own.
    kSelectAll,
    kFirstTool = 300,  // by its place among the words of the tool bar
};
}  // namespace command

/// The controls of the window besides those that bear the id of a command.
namespace control {
enum Id : int { kToolBar = 1, kSearch, kTree, kHeading, kText, kSign, kMessage, kStatus };
}  // namespace control

/// Lives inside the server's modal ShowTree, when LoadData has succeeded. The references must outlive it.
/// Nothing escapes from its window procedure.
class ObjectFrame final : private window::ObjectFace {
  public:
    /// Makes the window over `Owner` (may be null) and shows it. Raises when there is no window to be had.
    ObjectFrame(window::WindowCore& Core, HWND Owner);
    ObjectFrame(const ObjectFrame&) = delete;
    ObjectFrame& operator=(const ObjectFrame&) = delete;
    ~ObjectFrame() override;

    /// Takes messages, with the owner disabled, until the operator closes the window.
    void RunLoop();

    HWND Window() const noexcept { return Window_; }
    /// Says an error of the server in the message line.
    void ShowFault(const KvError& Error) { Desk_.ShowFault(Error); }
    /// The mark of unsaved changes has changed.
    void ShowTitle();

  private:
    struct Row;  // of the table of commands
    static const Row kCommands[];

    // The window.
    static LRESULT CALLBACK Procedure(HWND Window, UINT Message, WPARAM W, LPARAM L) noexcept;
    LRESULT Handle(UINT Message, WPARAM W, LPARAM L);
    LRESULT Notify(NMHDR& Told);
    void Make();
    void MakeChildren();
    void MakeMenus();
    void MakeToolBar();
    void MakeStatus();
    HWND Child(const wchar_t* Class, const wchar_t* Text, DWORD Style, DWORD ExtendedStyle, int Id);
    void Layout();
    void LayoutStatus(int Width);
    bool Translated(MSG& Message);
    bool DragSplit(UINT Message, int X);
    void TakeNode(HTREEITEM Item);
    bool DragNode(UINT Message, POINT Where);
    std::int32_t PlaceUnder(POINT Where);
    RECT RectOf(HTREEITEM Item) const;
    void Tip(int Id, wchar_t* Text, int Room) const;
    static std::wstring LabelOf(int Id);
    static std::wstring TipOf(int Id);
    static const Row* RowOf(int Id);
    static void AddTo(HMENU Menu, const Row& Command);
    void MoveFocus(bool Back);
    void TakeAway() noexcept;
    void Lost() noexcept;

    // The operator.
    void Do(int Id);
    bool FollowView();
    bool Apply() { return Desk_.Apply(); }
    bool Revert() { return Desk_.Revert(); }
    bool SwitchStrict();
    bool NewElement() { return Desk_.NewElement(); }
    bool DeleteElement() { return Desk_.DeleteElement(); }
    bool DeleteAll() { return Desk_.DeleteAll(); }
    bool MoveUp() { return Desk_.Move(+1); }
    bool MoveDown() { return Desk_.Move(-1); }
    bool Copy();
    bool Cut();
    bool Paste();
    bool SelectAll();
    bool ShowProperties() { return Desk_.ShowProperties(); }
    bool Save() { return Desk_.Save(); }
    bool Reload() { return Desk_.Reload(); }
    bool Find();
    bool FindNext();
    bool OtherPane();
    bool Close();
    void TreeMenu(POINT Where, bool ByKey);
    void Offer(int Id, bool Offered);

    // The window as window::ObjectDesk works on it.
    bool TextChanged() const override { return Text_.HasChanges(); }
    std::wstring Text() const override { return Text_.Text(); }
    void ShowText(const std::wstring& Text, bool) override { Text_.ShowSection(Text); }
    void ShowNoText() override { Text_.ShowNothing(); }
    void RevertText() override { Text_.Revert(); }
    int TextPosition() const override { return Text_.Cursor(); }
    void SetTextPosition(int Position) override { Text_.SetCursor(Position); }
    void ShowRefused(int Line) override;
    void Mark(std::wstring_view Key) override;
    bool IsOpen(const window::TreeNode& Node) const override;
    void Open(const window::TreeNode& Node) override;
    void Rebuild(const std::function<void()>& Build) override;
    void Tell(const std::wstring& Text, bool Fault) override;
    void ShowState() override;
    std::size_t AskLeaving(const std::wstring& Question) override;
    std::wstring Say(window::Phrase Of) const override { return window::TextOf(Of); }
    std::wstring Widened(const char* What) const override;
    bool Gone() const override { return !Window_; }

    /// What is done to the text that is being written, if one is; else it is meant for the object.
    bool InText(UINT Message) const;
    HWND Writing() const;
    HWND Of(int Id) const { return GetDlgItem(Window_, Id); }

    window::WindowCore& Core_;
    HWND Owner_;
    HWND Window_ = nullptr;
    HWND ToolBar_ = nullptr;
    HWND Tree_ = nullptr;
    Owned<HFONT> Font_;
    Owned<HFONT> Fixed_;
    Owned<HACCEL> Keys_;
    Owned<HACCEL> TreeKeys_;
    Owned<HICON> SignOfFault_;
    Owned<HICON> SignOfWord_;
    ToolPictures Pictures_;
    LetterSize Letter_;
    std::unique_ptr<NodesView> Nodes_;
    SectionEdit Text_;
    window::ObjectDesk Desk_{Core_, *this};
    std::vector<std::wstring> Tools_;     // the words of the tool bar, "" for a separator
    std::vector<std::wstring> ToolTips_;  // of the same
    std::vector<std::wstring> Status_;
    HWND Focused_ = nullptr;               // had the keyboard when the window lost it
    int Button_ = 0;                       // width of the buttons below the text
    int Row_ = 0;                          // of all of them with the switch
    int Split_ = 0;                        // width of the tree
    std::optional<int> Grip_;              // how far from the split it was gripped
    std::optional<std::wstring> Dragged_;  // the key of the node that follows the mouse
    bool Running_ = false;                 // what the operator asked for is being done, and may be asking
    bool Open_ = true;
};

}  // namespace kv::com
