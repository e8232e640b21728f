// What the operator does in a window on an object, step by step, whatever draws the window: the text that is
// being written is settled, the operator asked, the operation run, and the view follows the tree.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Failure.h"
#include "window/Commands.h"
#include "window/Offers.h"
#include "window/Texts.h"
#include "window/WindowCore.h"

namespace kv::window {

/// The window itself, as ObjectDesk works on it: an editor of text, a view of the tree, a message line.
class ObjectFace {
  public:
    virtual ~ObjectFace() = default;

    // The text.
    /// Whether something is typed that is not applied.
    virtual bool TextChanged() const = 0;
    /// As sections are parsed: lines end with CR LF.
    virtual std::wstring Text() const = 0;
    /// The text of the current node, which has no changes. `Applied`: it is what has just been handed over.
    virtual void ShowText(const std::wstring& Text, bool Applied) = 0;
    /// Nothing to edit.
    virtual void ShowNoText() = 0;
    /// Back to what ShowText was given.
    virtual void RevertText() = 0;
    virtual int TextPosition() const = 0;
    /// A position behind the end stands for the end.
    virtual void SetTextPosition(int Position) = 0;
    /// The text was refused, in that 1-based line, 0 where no line is to blame. It takes the keyboard.
    virtual void ShowRefused(int Line) = 0;

    // The tree.
    /// Selects a node and makes it visible; a key that no node bears takes the selection away.
    virtual void Mark(std::wstring_view Key) = 0;
    virtual bool IsOpen(const TreeNode& Node) const = 0;
    virtual void Open(const TreeNode& Node) = 0;
    /// Runs what builds all nodes anew; the view need not follow them one by one.
    virtual void Rebuild(const std::function<void()>& Build) = 0;

    // The operator.
    /// The message line; "" takes away what it says.
    virtual void Tell(const std::wstring& Text, bool Fault) = 0;
    /// Title, heading of the text and what is offered may be other ones.
    virtual void ShowState() = 0;
    /// What becomes of text that is not applied: 0 applied, 1 dropped, all else: it is not left.
    virtual std::size_t AskLeaving(const std::wstring& Question) = 0;
    /// In the operator's language.
    virtual std::wstring Say(Phrase Of) const = 0;
    /// The text of an exception.
    virtual std::wstring Widened(const char* What) const = 0;
    /// The object is about to be saved. An answer ends the command with it.
    virtual std::optional<bool> BeforeSave() { return std::nullopt; }
    /// Whether the window has been taken away in the middle of the work.
    virtual bool Gone() const { return false; }
};

/// All operations answer False when the server has refused, the message line tells why then, or when the
/// operator has called it off. Nothing escapes from those that the operator asks for. The references must
/// outlive the desk.
class ObjectDesk {
  public:
    ObjectDesk(WindowCore& Core, ObjectFace& Face) : Core_(Core), Face_(Face) {}
    ObjectDesk(const ObjectDesk&) = delete;
    ObjectDesk& operator=(const ObjectDesk&) = delete;

    // What the window shows.
    /// The key of the node whose text is shown, or which is selected.
    const std::wstring& Current() const noexcept { return Current_; }
    const TreeNode* CurrentNode() const { return Core_.Tree().Find(Current_); }
    /// The captions that lead to the current node, the root left out.
    std::wstring Heading() const;
    /// What the title calls the object.
    std::wstring Name() const;
    bool Unsaved() const { return Core_.Tree().Modified() || Face_.TextChanged(); }
    bool IsOffered(Command Id) const;
    /// Whether the item serves a tool of the tool bar.
    bool Serves(std::wstring_view Word) const;
    /// The tree changes under the view: what it selects meanwhile is not the operator's choice.
    bool Busy() const noexcept { return Busy_; }

    /// Shows the object, which has been loaded.
    void Show();
    /// An error of the server, in the message line.
    void ShowFault(const KvError& Error);
    /// Tells what is being caught; what fails even there is only heard.
    void Caught() noexcept;
    /// Runs what the operator asked for: nothing escapes, and the window shows the state afterwards.
    bool Guarded(const std::function<bool()>& Body);
    /// Marks the current node in the view.
    void MarkCurrent();

    // What the operator does.
    bool Select(std::wstring_view Key);
    bool Apply();
    bool Revert();
    bool NewElement();
    bool DeleteElement();
    bool DeleteAll();
    /// Direction as in MoveData, so many places; it stops where there is no place left.
    bool Move(std::int32_t Direction, int Steps = 1);
    /// Before the node that stands at that 1-based place of its list now; behind the last for one more.
    bool MoveTo(std::wstring_view Key, std::int32_t Place);
    bool Copy();
    /// The clipboard knows whole objects: with an element that is cut goes a copy of the object that it stood
    /// in.
    bool Cut();
    bool Paste();
    bool ShowProperties();
    bool RunTool(const std::wstring& Word);
    bool Save();
    /// Loads the object anew as it was saved last. `Load` does so in the place of WindowCore::Reload.
    bool Reload(const std::function<bool()>& Load = {});
    /// The next node whose caption holds this, round the end of the tree; case does not count.
    bool FindNext(std::wstring_view Sought);
    /// Settles what is not applied and not saved. False when the window is not to be closed.
    bool MayClose();

    // For what a window does besides.
    /// Settles text that is not applied. False when it is not left.
    bool Settled();
    /// Runs what builds the whole tree anew; what was open and selected is so again where it is still there.
    bool Replaced(const std::function<bool()>& Operation);
    bool Ask(Phrase Question, std::initializer_list<std::wstring_view> Arguments, std::int32_t Style);

  private:
    using Places = std::vector<std::int32_t>;  // 1-based, from below a node down

    Offers TreeOffers() const;
    Selection At() const;
    bool Structural(const std::function<bool()>& Operation, const std::function<bool()>& Agreed = {});
    bool Display(std::wstring_view Key, bool Applied = false);
    void ShowSelected(bool Applied = false);
    void AfterLoad(const Places& Selected);
    void Tell(Phrase Of, std::initializer_list<std::wstring_view> Arguments, bool Fault);
    std::vector<Places> OpenBelow(const TreeNode* Top) const;
    void OpenAgain(const TreeNode* Top, const std::vector<Places>& Open);
    static const TreeNode* Below(const TreeNode* Top, const Places& Where);
    static Places PlacesOf(const TreeNode* Node);

    WindowCore& Core_;
    ObjectFace& Face_;
    std::wstring Current_;
    int FaultLine_ = 0;
    bool Faulty_ = false;
    bool Busy_ = false;
};

}  // namespace kv::window
