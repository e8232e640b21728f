#include "window/TreeModel.h"

#include <algorithm>
#include <utility>

#include "frame/Failure.h"

namespace kv::window {
namespace {

std::size_t HashOf(std::wstring_view Key) noexcept { return std::hash<std::wstring_view>{}(Key); }

}  // namespace

TreeNode* KeyIndex::Find(std::wstring_view Key) const noexcept {
    if (Slots_.empty()) return nullptr;
    const std::size_t Mask = Slots_.size() - 1;
    const std::size_t Hash = HashOf(Key);
    for (std::size_t S = Hash & Mask; Slots_[S]; S = (S + 1) & Mask)
        if (Slots_[S]->Hash == Hash && Slots_[S]->Key == Key) return Slots_[S];
    return nullptr;
}

void KeyIndex::Add(TreeNode* Node) {
    if (2 * (Count_ + 1) > Slots_.size()) {
        std::vector<TreeNode*> Wider(std::max<std::size_t>(16, 2 * Slots_.size()), nullptr);
        for (TreeNode* N : Slots_) {
            if (!N) continue;
            std::size_t S = N->Hash & (Wider.size() - 1);
            while (Wider[S]) S = (S + 1) & (Wider.size() - 1);
            Wider[S] = N;
        }
        Slots_ = std::move(Wider);
    }
    Node->Hash = HashOf(Node->Key);
    const std::size_t Mask = Slots_.size() - 1;
    std::size_t S = Node->Hash & Mask;
    while (Slots_[S]) S = (S + 1) & Mask;
    Slots_[S] = Node;
    ++Count_;
}

void KeyIndex::Remove(const TreeNode* Node) noexcept {
    const std::size_t Mask = Slots_.size() - 1;
    std::size_t Hole = Node->Hash & Mask;
    while (Slots_[Hole] != Node) Hole = (Hole + 1) & Mask;
    // What stands behind moves up, so that no search stops at the hole before it should.
    for (std::size_t S = (Hole + 1) & Mask; Slots_[S]; S = (S + 1) & Mask) {
        const std::size_t Home = Slots_[S]->Hash & Mask;
        if (((S - Home) & Mask) >= ((S - Hole) & Mask)) {
            Slots_[Hole] = Slots_[S];
            Hole = S;
        }
    }
    Slots_[Hole] = nullptr;
    --Count_;
}

void KeyIndex::Clear() noexcept {
    Slots_.clear();
    Count_ = 0;
}

TreeModel::~TreeModel() {
    if (Root_) Free(Root_);
}

TreeNode& TreeModel::Known(std::wstring_view Key) const {
    TreeNode* const Found = Index_.Find(Key);
    if (!Found) RaiseFault(fault::kNoObject);
    return *Found;
}

std::uint32_t TreeModel::KindNumber(std::wstring_view Kind) {
    const auto At = std::find(Kinds_.begin(), Kinds_.end(), Kind);
    if (At != Kinds_.end()) return static_cast<std::uint32_t>(At - Kinds_.begin());
    Kinds_.emplace_back(Kind);
    return static_cast<std::uint32_t>(Kinds_.size() - 1);
}

std::uint32_t TreeModel::NextPriority() noexcept {
    Random_ ^= Random_ << 13U;
    Random_ ^= Random_ >> 17U;
    Random_ ^= Random_ << 5U;
    return Random_;
}

void TreeModel::ForEach(const std::function<void(const TreeNode&)>& Visit) const {
    const TreeNode* N = Root_;
    while (N) {
        Visit(*N);
        if (const TreeNode* Child = N->Children.First()) {
            N = Child;
            continue;
        }
        // No child: the next sibling of this node or of the nearest one above that has one.
        const TreeNode* Next = nullptr;
        for (; N && N->Parent && !Next; N = N->Parent) Next = SiblingOrder<TreeNode>::Next(N);
        N = Next;
    }
}

std::span<const std::wstring> TreeModel::ChoicesOf(std::wstring_view Section,
                                                   std::wstring_view Keyword) const noexcept {
    for (const ValueWords& Row : Choices_)
        if (Row.Section == Section && Row.Keyword == Keyword) return Row.Words;
    return {};
}

void TreeModel::ForgetOffers() noexcept {
    Choices_.clear();
    Served_.clear();
}

void TreeModel::MarkModified(bool Modified) {
    if (Modified_ == Modified) return;
    Modified_ = Modified;
    if (Face_) Face_->ModifiedChanged(Modified);
}

void TreeModel::AddNode(const NewNode& Node) {
    if (Node.Key.empty()) RaiseFault(fault::kInvalidCall);
    if (Index_.Find(Node.Key)) RaiseFault(fault::kKeyTaken);
    TreeNode* Parent = nullptr;
    TreeNode* Next = nullptr;
    if (!Node.Relative) {
        if (Root_) RaiseFault(fault::kKeyTaken);
    } else {
        TreeNode& Relative = Known(*Node.Relative);
        const std::int32_t Relationship = Node.Relationship.value_or(relation::kChild);
        if (Relationship == relation::kChild) {
            Parent = &Relative;
        } else if (Relative.Parent &&
                   (Relationship == relation::kBefore || Relationship == relation::kAfter)) {
            Parent = Relative.Parent;
            Next = Relationship == relation::kBefore ? &Relative : SiblingOrder<TreeNode>::Next(&Relative);
        } else {
            RaiseFault(fault::kInvalidCall);
        }
    }
    auto New = std::make_unique<TreeNode>();
    New->Key = Node.Key;
    New->Text = Node.Text;
    New->Parent = Parent;
    New->Image = Node.Image;
    New->SelectedImage = Node.SelectedImage;
    New->KindNumber = KindNumber(Node.Kind);
    Index_.Add(New.get());
    if (Watcher_) {
        const std::int32_t Last = Parent ? Parent->Children.Count() : 0;
        Watcher_->Adding(Parent, Next ? SiblingOrder<TreeNode>::PlaceOf(Next) : Last + 1);
    }
    TreeNode* const Added = New.release();
    if (Parent)
        Parent->Children.InsertBefore(Added, Next, NextPriority());
    else
        Root_ = Added;
    if (Watcher_) Watcher_->Added();
}

void TreeModel::AddIconNode(const NewNode& Node) {
    NewNode Plain = Node;
    Plain.SelectedImage = Node.Image;
    AddNode(Plain);
}

// Post-order over what hangs below, so that depth and breadth cost no stack.
void TreeModel::FreeBelow(TreeNode* Node) noexcept {
    TreeNode* N = Node;
    for (;;) {
        if (TreeNode* Child = N->Children.First()) {
            N = Child;
        } else if (N == Node) {
            return;
        } else {
            TreeNode* const Parent = N->Parent;
            Parent->Children.Remove(N);
            Index_.Remove(N);
            delete N;
            N = Parent;
        }
    }
}

void TreeModel::Free(TreeNode* Node) noexcept {
    if (Watcher_) Watcher_->Removing(*Node);
    FreeBelow(Node);
    if (Node->Parent)
        Node->Parent->Children.Remove(Node);
    else
        Root_ = nullptr;
    Index_.Remove(Node);
    delete Node;
    if (Watcher_) Watcher_->Removed();
}

void TreeModel::ClearNodes() {
    if (Root_) Free(Root_);
    Index_.Clear();
    Selected_.clear();
}

void TreeModel::RemoveNode(std::wstring_view Key) {
    TreeNode& Node = Known(Key);
    const TreeNode* Selected = Index_.Find(Selected_);
    while (Selected && Selected != &Node) Selected = Selected->Parent;
    if (Selected) {
        // The selection goes to the sibling that takes the place, else to the one before, else up.
        const TreeNode* Heir = Node.Parent;
        if (Node.Parent) {
            const std::int32_t Place = SiblingOrder<TreeNode>::PlaceOf(&Node);
            if (const TreeNode* Next = Node.Parent->Children.At(Place + 1))
                Heir = Next;
            else if (const TreeNode* Before = Node.Parent->Children.At(Place - 1))
                Heir = Before;
        }
        Selected_ = Heir ? Heir->Key : std::wstring();
    }
    Free(&Node);
}

void TreeModel::RemoveChildren(std::wstring_view Key) {
    TreeNode& Node = Known(Key);
    if (Node.Children.Count() == 0) return;
    if (Watcher_) Watcher_->RemovingChildren(Node);
    FreeBelow(&Node);
    if (Watcher_) Watcher_->RemovedChildren();
    if (!Index_.Find(Selected_)) Selected_ = Node.Key;
}

void TreeModel::SetNodeText(std::wstring_view Key, std::wstring_view Text) {
    TreeNode& Node = Known(Key);
    Node.Text = Text;
    if (Watcher_) Watcher_->TextChanged(Node);
}

std::wstring TreeModel::NodeParent(std::wstring_view Key) const {
    const TreeNode* const Parent = Known(Key).Parent;
    return Parent ? Parent->Key : std::wstring();
}

std::int32_t TreeModel::NodeId(std::wstring_view Key) const {
    const TreeNode& Node = Known(Key);
    return Node.Parent ? SiblingOrder<TreeNode>::PlaceOf(&Node) : 1;
}

std::wstring TreeModel::NodeAt(std::wstring_view Folder, std::int32_t Place) const {
    const TreeNode* const Child = Known(Folder).Children.At(Place);
    return Child ? Child->Key : std::wstring();
}

void TreeModel::SelectNode(std::wstring_view Key) { Selected_ = Known(Key).Key; }

bool TreeModel::MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                             std::int32_t& NewIndex) {
    TreeNode& Node = Known(Selected_);
    if (!Node.Parent) return true;
    const std::int32_t Place = SiblingOrder<TreeNode>::PlaceOf(&Node);
    const std::int32_t Target = Direction > 0 ? Place - 1 : Place + 1;
    const TreeNode* const Neighbour = Node.Parent->Children.At(Target);
    if (!Neighbour || Place > List.Count() || Target > List.Count()) return true;
    std::wstring NeighbourKey = Neighbour->Key;
    List.Move(Place, Target);
    RelativeKey = std::move(NeighbourKey);
    NewIndex = Target;
    Selected_ = RelativeKey;
    Free(&Node);
    return false;
}

bool TreeModel::AddDefault(std::wstring_view Section, std::wstring_view Keyword, std::wstring_view Word) {
    auto Row = std::find_if(Choices_.begin(), Choices_.end(), [&](const ValueWords& Words) {
        return Words.Section == Section && Words.Keyword == Keyword;
    });
    if (Row == Choices_.end())
        Row = Choices_.insert(Row, ValueWords{std::wstring(Section), std::wstring(Keyword), {}});
    Row->Words.emplace_back(Word);
    return false;
}

void TreeModel::AddTool(std::wstring_view Word) {
    if (Word.empty() || std::find(Tools_.begin(), Tools_.end(), Word) == Tools_.end())
        Tools_.emplace_back(Word);
}

void TreeModel::AddToolButton(const ToolButtonInfo& Button) {
    AddTool(Button.Key);
    Buttons_.push_back({std::wstring(Button.Key), std::wstring(Button.ToolTip), Button.Style, Button.Bitmap});
}

bool TreeModel::SetTools(std::span<const std::wstring_view> Words) {
    for (const std::wstring_view Word : Words) {
        AddTool(Word);
        if (std::find(Served_.begin(), Served_.end(), Word) == Served_.end()) Served_.emplace_back(Word);
    }
    return false;
}

bool TreeModel::ShowTree(TreeCall& Call) {
    if (!Face_) return true;
    const bool Failed = Face_->Run(Call);
    // The tool bar was made for this showing; the next one hands its buttons over again.
    Tools_.clear();
    Buttons_.clear();
    return Failed;
}

void TreeModel::Dispose() {
    ClearNodes();
    ForgetOffers();
    Tools_.clear();
    Buttons_.clear();
    Face_ = nullptr;
}

}  // namespace kv::window
