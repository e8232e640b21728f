// The nodes of a design tree in a tree view of the system.
#pragma once

#include <string_view>
#include <unordered_map>

#include "com/window/Pictures.h"
#include "com/window/Windows.h"
#include "window/TreeModel.h"

namespace kv::com {

/// Follows `Tree`, which must outlive it as the control `View` must, whose messages are handed to Notify.
/// Captions and pictures are not copied: the control asks for them.
class NodesView final : private window::TreeWatcher {
  public:
    NodesView(window::TreeModel& Tree, HWND View);
    NodesView(const NodesView&) = delete;
    NodesView& operator=(const NodesView&) = delete;
    ~NodesView() override;

    /// While a whole object is loaded the control is empty; at its end it is filled once.
    class Reloading {
      public:
        explicit Reloading(NodesView& View);
        Reloading(const Reloading&) = delete;
        Reloading& operator=(const Reloading&) = delete;
        ~Reloading();

      private:
        NodesView& View_;
    };

    /// Builds the control anew where it could not follow a change. Before anything is read from it.
    void Settle();

    /// The node that the control has selected, or that an item shows; null for none.
    const window::TreeNode* Selected() const;
    const window::TreeNode* NodeOf(HTREEITEM Item) const;
    HTREEITEM ItemOf(std::wstring_view Key) const;
    /// Selects a node and makes it visible; a key that no node bears takes the selection away.
    void Select(std::wstring_view Key);
    void Expand(std::wstring_view Key);
    bool IsOpen(const window::TreeNode& Node) const { return IsOpen(ItemOf(Node.Key)); }

    /// What the control asks for and tells of its items. True when it was that.
    bool Notify(NMHDR& Told);

  private:
    bool IsOpen(HTREEITEM Item) const;
    void Insert(const window::TreeNode& Node, HTREEITEM Parent, HTREEITEM After);
    void Fill();
    void Empty() noexcept;

    void Adding(const window::TreeNode* Parent, std::int32_t Place) override;
    void Added() override;
    void Removing(const window::TreeNode& Node) override;
    void Removed() override {}
    void RemovingChildren(const window::TreeNode& Node) override;
    void RemovedChildren() override {}
    void TextChanged(const window::TreeNode& Node) override;

    window::TreeModel& Tree_;
    HWND View_;
    TreePictures Pictures_;
    std::unordered_map<const window::TreeNode*, HTREEITEM> Items_;
    const window::TreeNode* Parent_ = nullptr;  // of the node that is being added
    std::int32_t Place_ = 0;
    bool Reloading_ = false;
    bool Stale_ = false;  // a change could not be followed
};

}  // namespace kv::com
