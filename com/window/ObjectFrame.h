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
#include "window/Offers.h"
#include "window/WindowCore.h"

namespace kv::com {

/// What the menus, the buttons and the keys send, as WM_COMMAND.
namespace command {
enum Id : int {
    kSave = 100,
    kClose,
    kApply,
    kRevert,
    kStrict,
    kCopy,
    kCut,
    kPaste,
    kSelectAll,
    kNew,
    kDelete,
    kDeleteAll,
    kMoveUp,
    kMoveDown,
    kProperties,
    kOtherPane,
    kFirstTool = 300,  // by its place among the words of the tool bar
};
}  // namespace command

/// The controls of the window besides those that bear the id of a command.
namespace control {
enum Id : int { kToolBar = 1, kTree, kHeading, kText, kSign, kMessage, kStatus };
}  // namespace control

/// Lives inside the server's modal ShowTree, when LoadData has succeeded. The references must outlive it.
/// Nothing escapes from its window procedure.
class ObjectFrame {
  public:
    /// Makes the window over `Owner` (may be null) and shows it. Raises when there is no window to be had.
    ObjectFrame(window::WindowCore& Core, HWND Owner);
    ObjectFrame(const ObjectFrame&) = delete;
    ObjectFrame& operator=(const ObjectFrame&) = delete;
    ~ObjectFrame();

    /// Takes messages, with the owner disabled, until the operator closes the window.
    void RunLoop();

    HWND Window() const noexcept { return Window_; }
    /// Says an error of the server in the message line.
    void ShowFault(const KvError& Error);
    /// The mark of unsaved changes has changed.
    void ShowTitle();

  private:
    enum class Leave { Applied, Dropped, Stay };
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
    bool Drag(UINT Message, int X);
    void Caught() noexcept;
    void Tip(int Id, wchar_t* Text, int Room) const;
    static std::wstring TipOf(int Id);
    void MoveFocus(bool Back);
    void TakeAway() noexcept;
    void Gone() noexcept;

    // The operator.
    void Do(int Id);
    bool Guarded(const std::function<bool()>& Body);
    bool Structural(const std::function<bool()>& Operation);
    bool Replaced(const std::function<bool()>& Operation);
    bool Select(std::wstring_view Key);
    bool FollowView();
    bool Apply();
    bool Revert();
    bool SwitchStrict();
    bool NewElement();
    bool DeleteElement();
    bool DeleteAll();
    bool MoveUp() { return Move(+1); }
    bool MoveDown() { return Move(-1); }
    bool Move(std::int32_t Direction);
    bool Copy();
    bool Cut();
    bool Paste();
    bool SelectAll();
    bool ShowProperties();
    void RunTool(const std::wstring& Word);
    bool Save();
    bool OtherPane();
    bool Close();
    void TreeMenu(POINT Where, bool ByKey);

    bool Display(const std::wstring& Key);
    void ShowSelected();
    void AfterLoad();
    void UpdateOffers();
    void Offer(int Id, bool Offered);
    void Tell(const std::wstring& Text, bool Fault);
    bool Ask(const std::wstring& Text, std::int32_t Style = 0);
    Leave LeaveText();
    bool Unsaved() const { return Core_.Tree().Modified() || Text_.HasChanges(); }
    window::Selection At() const;
    const window::TreeNode* CurrentNode() const { return Core_.Tree().Find(Current_); }
    window::Offers CurrentOffers() const;
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
    std::vector<std::wstring> Tools_;     // the words of the tool bar, "" for a separator
    std::vector<std::wstring> ToolTips_;  // of the same
    std::wstring Current_;                // the key of the node whose text is shown, or which is selected
    std::vector<std::wstring> Status_;
    HWND Focused_ = nullptr;   // had the keyboard when the window lost it
    int Button_ = 0;           // width of the buttons below the text
    int Row_ = 0;              // of all of them with the switch
    int Split_ = 0;            // width of the tree
    std::optional<int> Grip_;  // how far from the split it was gripped
    int FaultLine_ = 0;
    bool Faulty_ = false;
    bool Busy_ = false;  // the tree changes under the view: what it selects meanwhile is not the operator's
    bool Running_ = false;  // what the operator asked for is being done, and may be asking
    bool Open_ = true;
};

}  // namespace kv::com
