// The model behind DesignTree: the nodes, what the window offers, and the face on which it is shown.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/DesignTree.h"
#include "window/SiblingOrder.h"

namespace kv::window {

/// One node of the tree. The model owns the nodes; the pointers a node holds are never null for longer than
/// an operation, but for the root's parent.
struct TreeNode {
    std::wstring Key;
    std::wstring Text;
    TreeNode* Parent = nullptr;
    SiblingOrder<TreeNode> Children;
    SiblingLinks<TreeNode> Order;
    std::size_t Hash = 0;
    std::int32_t Image = 0;
    std::int32_t SelectedImage = 0;
    std::uint32_t KindNumber = 0;  // in the model's list of kinds
};

/// The nodes of a tree by key, found in constant time; hashed, with open addressing.
class KeyIndex {
  public:
    TreeNode* Find(std::wstring_view Key) const noexcept;
    /// `Node->Hash` is set here. The key must not be in the index.
    void Add(TreeNode* Node);
    void Remove(const TreeNode* Node) noexcept;
    void Clear() noexcept;
    std::size_t Count() const noexcept { return Count_; }

  private:
    std::vector<TreeNode*> Slots_;  // a power of two
    std::size_t Count_ = 0;
};

/// The window on a tree.
class TreeFace {
  public:
    virtual ~TreeFace() = default;
    /// Shows the tree and comes back when the operator closes it. True when the window failed.
    [[nodiscard]] virtual bool Run(TreeCall& Call) = 0;
    /// The mark of unsaved changes has changed.
    virtual void ModifiedChanged(bool) {}
};

/// Follows the nodes as they change, for a face that keeps a picture of them. Each change is told before and
/// after it. Nothing may escape from these operations, nor may they change the tree.
class TreeWatcher {
  public:
    virtual ~TreeWatcher() = default;
    /// A node will stand at the 1-based `Place` below `Parent` (null: it is the root).
    virtual void Adding(const TreeNode* Parent, std::int32_t Place) = 0;
    virtual void Added() = 0;
    /// A node will go, with what hangs below it.
    virtual void Removing(const TreeNode& Node) = 0;
    virtual void Removed() = 0;
    /// What hangs below a node will go; there is something.
    virtual void RemovingChildren(const TreeNode& Node) = 0;
    virtual void RemovedChildren() = 0;
    virtual void TextChanged(const TreeNode& Node) = 0;
};

/// A button of the tool bar.
struct ToolButton {
    std::wstring Key;
    std::wstring ToolTip;
    std::int32_t Style = 0;
    std::int32_t Bitmap = 0;
};

/// A value word list: the words registered for one keyword of one section, in order.
struct ValueWords {
    std::wstring Section;
    std::wstring Keyword;
    std::vector<std::wstring> Words;
};

class TreeModel : public kv::DesignTree {
  public:
    TreeModel() = default;
    ~TreeModel() override;

    /// The face that ShowTree runs; without one ShowTree fails. The caller owns it and takes it away (null).
    void SetFace(TreeFace* Face) noexcept { Face_ = Face; }

    /// Who follows the nodes, null for nobody. The caller owns it and takes it away.
    void SetWatcher(TreeWatcher* Watcher) noexcept { Watcher_ = Watcher; }

    // What a window reads.
    const TreeNode* Root() const noexcept { return Root_; }
    const TreeNode* Find(std::wstring_view Key) const noexcept { return Index_.Find(Key); }
    std::wstring_view Kind(const TreeNode& Node) const noexcept { return Kinds_[Node.KindNumber]; }
    std::size_t Count() const noexcept { return Index_.Count(); }
    /// Visits all nodes in display order, depth first.
    void ForEach(const std::function<void(const TreeNode&)>& Visit) const;
    const std::wstring& Selected() const noexcept { return Selected_; }
    bool Modified() const noexcept { return Modified_; }
    const std::vector<std::wstring>& Tools() const noexcept { return Tools_; }
    const std::vector<ToolButton>& Buttons() const noexcept { return Buttons_; }
    /// The words that the item has named since the last ForgetOffers: the buttons that it serves.
    const std::vector<std::wstring>& Served() const noexcept { return Served_; }
    const std::vector<ValueWords>& Choices() const noexcept { return Choices_; }
    /// The words of one keyword; empty when none is registered.
    std::span<const std::wstring> ChoicesOf(std::wstring_view Section,
                                            std::wstring_view Keyword) const noexcept;

    // What a window sets.
    void SetSyntaxOn(bool On) noexcept { SyntaxOn_ = On; }
    /// Forgets the value words and the served buttons: an object is about to be loaded.
    void ForgetOffers() noexcept;

    // DesignTree
    void MarkModified(bool Modified) override;
    void AddNode(const NewNode& Node) override;
    void AddIconNode(const NewNode& Node) override;
    void ClearNodes() override;
    void RemoveNode(std::wstring_view Key) override;
    void RemoveChildren(std::wstring_view Key) override;
    bool HasNode(std::wstring_view Key) const override { return Index_.Find(Key) != nullptr; }
    std::wstring NodeText(std::wstring_view Key) const override { return Known(Key).Text; }
    void SetNodeText(std::wstring_view Key, std::wstring_view Text) override;
    std::wstring NodeParent(std::wstring_view Key) const override;
    std::int32_t NodeId(std::wstring_view Key) const override;
    std::wstring NodeAt(std::wstring_view Folder, std::int32_t Place) const override;
    void SelectNode(std::wstring_view Key) override;
    [[nodiscard]] bool MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                                    std::int32_t& NewIndex) override;
    [[nodiscard]] bool AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                  std::wstring_view Word) override;
    void AddToolButton(const ToolButtonInfo& Button) override;
    [[nodiscard]] bool SetTools(std::span<const std::wstring_view> Words) override;
    bool SyntaxOn() const override { return SyntaxOn_; }
    [[nodiscard]] bool ShowTree(TreeCall& Call) override;
    void Dispose() override;

  private:
    TreeNode& Known(std::wstring_view Key) const;
    std::uint32_t KindNumber(std::wstring_view Kind);
    std::uint32_t NextPriority() noexcept;
    void AddTool(std::wstring_view Word);
    void Free(TreeNode* Node) noexcept;
    void FreeBelow(TreeNode* Node) noexcept;

    TreeFace* Face_ = nullptr;
    TreeWatcher* Watcher_ = nullptr;
    TreeNode* Root_ = nullptr;
    KeyIndex Index_;
    std::vector<std::wstring> Kinds_{L""};
    std::uint32_t Random_ = 0x9E3779B9U;
    std::wstring Selected_;
    bool Modified_ = false;
    bool SyntaxOn_ = true;
    std::vector<std::wstring> Tools_;
    std::vector<ToolButton> Buttons_;
    std::vector<std::wstring> Served_;
    std::vector<ValueWords> Choices_;
};

}  // namespace kv::window
