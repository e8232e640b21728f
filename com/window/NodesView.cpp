#include "com/window/NodesView.h"

namespace kv::com {
namespace {

using window::SiblingOrder;
using window::TreeNode;

/// The control is not drawn while it lives.
class Undrawn {
  public:
    explicit Undrawn(HWND Of) : Of_(Of) { SendMessageW(Of_, WM_SETREDRAW, FALSE, 0); }
    Undrawn(const Undrawn&) = delete;
    Undrawn& operator=(const Undrawn&) = delete;
    ~Undrawn() {
        SendMessageW(Of_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(Of_, nullptr, TRUE);
    }

  private:
    HWND Of_;
};

LPARAM ParamOf(const TreeNode& Node) { return reinterpret_cast<LPARAM>(&Node); }
const TreeNode* NodeIn(LPARAM Param) { return reinterpret_cast<const TreeNode*>(Param); }

}  // namespace

NodesView::NodesView(window::TreeModel& Tree, HWND View) : Tree_(Tree), View_(View) {
    SendMessageW(View_, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(Pictures_.List()));
    Fill();
    Tree_.SetWatcher(this);
}

NodesView::~NodesView() {
    Tree_.SetWatcher(nullptr);
    Empty();
    SendMessageW(View_, TVM_SETIMAGELIST, TVSIL_NORMAL, 0);
}

NodesView::Reloading::Reloading(NodesView& View) : View_(View) {
    View_.Empty();
    View_.Reloading_ = true;
}

NodesView::Reloading::~Reloading() {
    View_.Reloading_ = false;
    View_.Stale_ = true;
}

void NodesView::Settle() {
    if (!Stale_) return;
    Empty();
    Fill();
}

const TreeNode* NodesView::NodeOf(HTREEITEM Item) const {
    if (!Item) return nullptr;
    TVITEMW Asked{};
    Asked.mask = TVIF_HANDLE | TVIF_PARAM;
    Asked.hItem = Item;
    return SendMessageW(View_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&Asked)) ? NodeIn(Asked.lParam)
                                                                                  : nullptr;
}

const TreeNode* NodesView::Selected() const {
    return NodeOf(reinterpret_cast<HTREEITEM>(SendMessageW(View_, TVM_GETNEXTITEM, TVGN_CARET, 0)));
}

HTREEITEM NodesView::ItemOf(std::wstring_view Key) const {
    const TreeNode* const Node = Tree_.Find(Key);
    const auto At = Node ? Items_.find(Node) : Items_.end();
    return At == Items_.end() ? nullptr : At->second;
}

void NodesView::Select(std::wstring_view Key) {
    Settle();
    const HTREEITEM Item = ItemOf(Key);
    SendMessageW(View_, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(Item));
    if (Item) SendMessageW(View_, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(Item));
}

void NodesView::Expand(std::wstring_view Key) {
    Settle();
    if (const HTREEITEM Item = ItemOf(Key))
        SendMessageW(View_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(Item));
}

bool NodesView::IsOpen(HTREEITEM Item) const {
    return Item && (SendMessageW(View_, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(Item), TVIS_EXPANDED) &
                    TVIS_EXPANDED) != 0;
}

// The second image is that of a folder shown open and of a node that is selected.
bool NodesView::Notify(NMHDR& Told) {
    switch (Told.code) {
        case TVN_GETDISPINFOW: {
            TVITEMW& Asked = reinterpret_cast<NMTVDISPINFOW&>(Told).item;
            const TreeNode* const Node = NodeIn(Asked.lParam);
            if (!Node) return true;
            if (Asked.mask & TVIF_TEXT) Asked.pszText = const_cast<wchar_t*>(Node->Text.c_str());
            if (Asked.mask & TVIF_IMAGE)
                Asked.iImage = TreePictures::PlaceOf(IsOpen(Asked.hItem) ? Node->SelectedImage : Node->Image);
            if (Asked.mask & TVIF_SELECTEDIMAGE)
                Asked.iSelectedImage = TreePictures::PlaceOf(Node->SelectedImage);
            return true;
        }
        case TVN_DELETEITEMW:
            Items_.erase(NodeIn(reinterpret_cast<NMTREEVIEWW&>(Told).itemOld.lParam));
            return true;
        default:
            return false;
    }
}

void NodesView::Insert(const TreeNode& Node, HTREEITEM Parent, HTREEITEM After) {
    HTREEITEM& Item = Items_[&Node];
    TVINSERTSTRUCTW New{};
    New.hParent = Parent;
    New.hInsertAfter = After;
    New.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    New.item.pszText = LPSTR_TEXTCALLBACKW;
    New.item.iImage = I_IMAGECALLBACK;
    New.item.iSelectedImage = I_IMAGECALLBACK;
    New.item.lParam = ParamOf(Node);
    Item =
        reinterpret_cast<HTREEITEM>(SendMessageW(View_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&New)));
    if (!Item) Stale_ = true;
}

void NodesView::Fill() {
    const Undrawn While(View_);
    Stale_ = false;
    Tree_.ForEach([&](const TreeNode& Node) {
        const auto Above = Node.Parent ? Items_.find(Node.Parent) : Items_.end();
        Insert(Node, Above == Items_.end() ? TVI_ROOT : Above->second, TVI_LAST);
    });
}

void NodesView::Empty() noexcept {
    const Undrawn While(View_);
    SendMessageW(View_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    Items_.clear();
}

void NodesView::Adding(const TreeNode* Parent, std::int32_t Place) {
    Parent_ = Parent;
    Place_ = Place;
}

void NodesView::Added() {
    if (Reloading_ || Stale_) return;
    try {
        const TreeNode* const Node = Parent_ ? Parent_->Children.At(Place_) : Tree_.Root();
        const auto Above = Parent_ ? Items_.find(Parent_) : Items_.end();
        const TreeNode* const Before = Parent_ ? Parent_->Children.At(Place_ - 1) : nullptr;
        const auto Neighbour = Before ? Items_.find(Before) : Items_.end();
        Insert(*Node, Above == Items_.end() ? TVI_ROOT : Above->second,
               Neighbour == Items_.end() ? TVI_FIRST : Neighbour->second);
        // The first child of a node gives it its sign.
        if (Parent_ && Parent_->Children.Count() == 1) InvalidateRect(View_, nullptr, TRUE);
    } catch (...) {
        Stale_ = true;
    }
}

void NodesView::Removing(const TreeNode& Node) {
    const auto At = Items_.find(&Node);
    // Null would mean all.
    if (At != Items_.end() && At->second)
        SendMessageW(View_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(At->second));
}

void NodesView::RemovingChildren(const TreeNode& Node) {
    const auto At = Items_.find(&Node);
    if (At == Items_.end() || !At->second) return;
    const Undrawn While(View_);
    const HTREEITEM Parent = At->second;
    while (const LRESULT Child =
               SendMessageW(View_, TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(Parent)))
        if (!SendMessageW(View_, TVM_DELETEITEM, 0, Child)) break;
}

void NodesView::TextChanged(const TreeNode& Node) {
    const auto At = Items_.find(&Node);
    if (At == Items_.end() || !At->second) return;
    TVITEMW Changed{};
    Changed.mask = TVIF_HANDLE | TVIF_TEXT;
    Changed.hItem = At->second;
    Changed.pszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(View_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&Changed));
    InvalidateRect(View_, nullptr, TRUE);  // one text that is asked for is as good as another to the control
}

}  // namespace kv::com
