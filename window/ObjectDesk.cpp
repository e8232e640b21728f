#include "window/ObjectDesk.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/StrUtil.h"

namespace kv::window {
namespace {

constexpr const wchar_t* kPathArrow = L" › ";

Selection On(std::wstring_view Key) {
    return {.CurrItem = std::wstring(Key), .CurrFolder = {}, .Index = {}, .Key = {}};
}

Platform& Door() { return CoreUtil::Instance().Door(); }

/// True for as long as it lives.
class While {
  public:
    explicit While(bool& Of) : Of_(Of), Before_(std::exchange(Of, true)) {}
    While(const While&) = delete;
    While& operator=(const While&) = delete;
    ~While() { Of_ = Before_; }

  private:
    bool& Of_;
    bool Before_;
};

/// The wait pointer, for what may take a while.
class Waiting {
  public:
    Waiting() { Door().SetPointer(kPointerWait); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        try {
            Door().SetPointer(kPointerDefault);
        } catch (...) {  // the pointer is the host's to draw
        }
    }
};

}  // namespace

// What the window shows.

std::wstring ObjectDesk::Heading() const {
    std::wstring Path;
    for (const TreeNode* N = CurrentNode(); N && N->Parent; N = N->Parent)
        Path = Path.empty() ? N->Text : N->Text + kPathArrow + Path;
    return Path;
}

std::wstring ObjectDesk::Name() const {
    const TreeNode* const Root = Core_.Tree().Root();
    return Root ? Root->Text : Core_.Object().Name();
}

Offers ObjectDesk::TreeOffers() const {
    const TreeNode* const Node = CurrentNode();
    return Node ? OffersOn(Core_.Tree(), *Node) : Offers{};
}

bool ObjectDesk::IsOffered(Command Id) const {
    switch (Id) {
        case Command::kNew:
            return TreeOffers().NewIn != nullptr;
        case Command::kDelete:
            return TreeOffers().Delete;
        case Command::kDeleteAll:
            return TreeOffers().DeleteAll;
        case Command::kMoveUp:
        case Command::kMoveDown:
            return TreeOffers().Move;
        case Command::kApply:
        case Command::kRevert:
            return Face_.TextChanged();
        default:
            return true;
    }
}

bool ObjectDesk::Serves(std::wstring_view Word) const {
    const std::vector<std::wstring>& Served = Core_.Tree().Served();
    return std::find(Served.begin(), Served.end(), Word) != Served.end();
}

Selection ObjectDesk::At() const { return On(Current_); }

// Messages.

void ObjectDesk::Tell(Phrase Of, std::initializer_list<std::wstring_view> Arguments, bool Fault) {
    Face_.Tell(Filled(Face_.Say(Of), Arguments), Fault);
}

void ObjectDesk::ShowFault(const KvError& Error) {
    Faulty_ = true;
    FaultLine_ = Error.Line;
    if (Error.Line > 0)
        Tell(Phrase::kFaultAtLine, {std::to_wstring(Error.Line), Error.Description}, true);
    else
        Face_.Tell(Error.Description, true);
}

void ObjectDesk::Caught() noexcept {
    Faulty_ = true;
    try {
        try {
            throw;
        } catch (const Failure& Fault) {
            ShowFault(Fault.Error());
        } catch (const std::exception& Trouble) {
            Face_.Tell(Face_.Widened(Trouble.what()), true);
        } catch (...) {
            Tell(Phrase::kUnknownFault, {}, true);
        }
    } catch (...) {
        try {
            Door().Beep();
        } catch (...) {  // nothing is left to tell it with
        }
    }
}

bool ObjectDesk::Guarded(const std::function<bool()>& Body) {
    bool Done = false;
    try {
        Face_.Tell({}, false);
        Faulty_ = false;
        FaultLine_ = 0;
        Done = Body();
        if (Face_.Gone()) return false;
        Face_.ShowState();
        return Done && !Faulty_;
    } catch (...) {
        Caught();
    }
    try {
        if (!Face_.Gone()) Face_.ShowState();
    } catch (...) {  // what came first has been told
    }
    return false;
}

bool ObjectDesk::Ask(Phrase Question, std::initializer_list<std::wstring_view> Arguments,
                     std::int32_t Style) {
    return Door().MessageBox(Filled(Face_.Say(Question), Arguments), box::kYesNo + box::kQuestion + Style) ==
           Answer::Yes;
}

// The text.

bool ObjectDesk::Display(std::wstring_view Key, bool Applied) {
    Current_ = Key;
    const TreeNode* const Node = CurrentNode();
    std::wstring Buffer;
    if (!Node || !IsLeafKey(Current_) || Core_.DispData(At(), Buffer)) {
        Face_.ShowNoText();
        return Node && !IsLeafKey(Current_);
    }
    Face_.ShowText(Buffer, Applied);
    return true;
}

// The view and the text follow what the tree says is selected.
void ObjectDesk::ShowSelected(bool Applied) {
    const TreeNode* Node = Core_.Tree().Find(Core_.Tree().Selected());
    if (!Node) Node = Core_.Tree().Root();
    const std::wstring Key = Node ? Node->Key : std::wstring();
    {
        const While Quiet(Busy_);
        Face_.Mark(Key);
    }
    Display(Key, Applied);
}

void ObjectDesk::MarkCurrent() {
    const While Quiet(Busy_);
    Face_.Mark(Current_);
}

bool ObjectDesk::Settled() {
    if (!Face_.TextChanged()) return true;
    switch (Face_.AskLeaving(Filled(Face_.Say(Phrase::kNotApplied), {Heading()}))) {
        case 0:
            return Apply();
        case 1:
            Display(std::wstring(Current_));
            return true;
        default:
            return false;
    }
}

bool ObjectDesk::Select(std::wstring_view Key) {
    const std::wstring Wanted(Key);
    const bool Left = Guarded([&] {
        if (!Settled() || !Core_.Tree().HasNode(Wanted)) return false;
        Core_.Tree().SelectNode(Wanted);
        return true;
    });
    if (!Left) {
        MarkCurrent();
        return false;
    }
    return Guarded([&] {
        ShowSelected();
        return true;
    });
}

bool ObjectDesk::Apply() {
    if (!Face_.TextChanged()) return true;
    return Guarded([&] {
        std::wstring Buffer = Face_.Text();
        std::wstring NewItemKey;
        bool Refused = false;
        {
            const While Quiet(Busy_);
            Refused = Core_.SaveData(At(), Buffer, NewItemKey);
            if (Refused) Face_.Mark(Current_);
        }
        if (Refused) {
            Face_.ShowRefused(FaultLine_);
            return false;
        }
        const int Position = Face_.TextPosition();
        ShowSelected(Core_.Tree().Selected() == Current_);
        Face_.SetTextPosition(Position);
        if (!Faulty_) Tell(Phrase::kApplied, {}, false);
        return true;
    });
}

bool ObjectDesk::Revert() {
    if (!Face_.TextChanged()) return true;
    return Guarded([&] {
        Face_.RevertText();
        return true;
    });
}

// The tree.

// An operation that changes nodes: the text is settled first, then the operator asked where there is
// something to ask, and afterwards the view follows the tree.
bool ObjectDesk::Structural(const std::function<bool()>& Operation, const std::function<bool()>& Agreed) {
    return Guarded([&] {
        if (!Settled() || (Agreed && !Agreed())) return false;
        bool Failed = false;
        {
            const While Quiet(Busy_);
            Failed = Operation();
        }
        const bool Silent = Failed && !Faulty_;
        if (Failed && Core_.Tree().HasNode(Current_)) Core_.Tree().SelectNode(Current_);
        ShowSelected();
        if (!Silent) return !Failed;
        Door().Beep();
        Tell(Phrase::kNotDone, {}, true);
        return false;
    });
}

bool ObjectDesk::NewElement() {
    const Offers Now = TreeOffers();
    if (!Now.NewIn) return false;
    const std::wstring Folder = Now.NewIn->Key;
    return Structural([&] {
        std::wstring NewItemKey;
        return Core_.EditData(On(Folder), NewItemKey);
    });
}

// Text that is applied may leave another node selected: what is offered there is asked anew.
bool ObjectDesk::DeleteElement() {
    if (!TreeOffers().Delete) return false;
    return Structural([&] { return Core_.DeleteData(At(), false); },
                      [&] {
                          return TreeOffers().Delete &&
                                 Ask(Phrase::kAskDelete, {CurrentNode()->Text}, box::kDefaultSecond);
                      });
}

bool ObjectDesk::DeleteAll() {
    if (!TreeOffers().DeleteAll) return false;
    return Structural([&] { return Core_.DeleteData(At(), true); },
                      [&] {
                          return TreeOffers().DeleteAll &&
                                 Ask(Phrase::kAskDeleteAll,
                                     {CurrentNode()->Text, std::to_wstring(CurrentNode()->Children.Count())},
                                     box::kDefaultSecond);
                      });
}

bool ObjectDesk::Move(std::int32_t Direction, int Steps) {
    if (!TreeOffers().Move) return false;
    return Structural([&] {
        const std::vector<Places> Open = OpenBelow(CurrentNode());
        for (int Step = 0; Step < Steps; ++Step) {
            std::wstring NewKey;
            if (Core_.MoveData(At(), Direction, NewKey)) return true;
            if (Core_.Tree().HasNode(NewKey)) Current_ = NewKey;
        }
        Core_.Tree().SelectNode(Current_);
        OpenAgain(CurrentNode(), Open);
        return false;
    });
}

bool ObjectDesk::MoveTo(std::wstring_view Key, std::int32_t Place) {
    if (Key != Current_ && !Select(Key)) return false;
    const TreeNode* const Node = CurrentNode();
    if (!Node || !Node->Parent) return false;
    const std::int32_t Now = SiblingOrder<TreeNode>::PlaceOf(Node);
    if (Place < Now) return Move(+1, Now - Place);
    if (Place > Now + 1) return Move(-1, Place - 1 - Now);
    return true;
}

// What is open at and below a node, each as the places that lead to it: keys are other ones when nodes are
// built anew.
std::vector<ObjectDesk::Places> ObjectDesk::OpenBelow(const TreeNode* Top) const {
    std::vector<Places> Open;
    std::vector<std::pair<const TreeNode*, Places>> Left{{Top, {}}};
    while (!Left.empty()) {
        const auto [Node, Where] = std::move(Left.back());
        Left.pop_back();
        if (!Node || !Face_.IsOpen(*Node)) continue;
        Open.push_back(Where);
        std::int32_t Place = 0;
        for (const TreeNode* Child = Node->Children.First(); Child;
             Child = SiblingOrder<TreeNode>::Next(Child)) {
            ++Place;
            if (Child->Children.Count() == 0) continue;
            Left.emplace_back(Child, Where);
            Left.back().second.push_back(Place);
        }
    }
    return Open;
}

void ObjectDesk::OpenAgain(const TreeNode* Top, const std::vector<Places>& Open) {
    for (const Places& Where : Open)
        if (const TreeNode* const Node = Below(Top, Where); Node && Node->Children.Count() > 0)
            Face_.Open(*Node);
}

// The node to which the places lead, or the last one on the way that is there.
const TreeNode* ObjectDesk::Below(const TreeNode* Top, const Places& Where) {
    for (const std::int32_t Place : Where) {
        const TreeNode* const Child = Top ? Top->Children.At(Place) : nullptr;
        if (!Child) break;
        Top = Child;
    }
    return Top;
}

ObjectDesk::Places ObjectDesk::PlacesOf(const TreeNode* Node) {
    Places Where;
    for (; Node && Node->Parent; Node = Node->Parent)
        Where.insert(Where.begin(), SiblingOrder<TreeNode>::PlaceOf(Node));
    return Where;
}

bool ObjectDesk::FindNext(std::wstring_view Sought) {
    const std::wstring Wanted = StrUtil::UpperCase(Sought);
    if (Wanted.empty()) return false;
    std::wstring First, Next;
    const bool Looked = Guarded([&] {
        bool Behind = false;
        Core_.Tree().ForEach([&](const TreeNode& Node) {
            std::wstring& Found = Behind ? Next : First;
            if (Found.empty() && StrUtil::UpperCase(Node.Text).find(Wanted) != std::wstring::npos)
                Found = Node.Key;
            Behind = Behind || Node.Key == Current_;
        });
        if (!First.empty() || !Next.empty()) return true;
        Tell(Phrase::kNotFound, {Sought}, true);
        Door().Beep();
        return false;
    });
    return Looked && Select(Next.empty() ? First : Next);
}

// The clipboard of the objects.

bool ObjectDesk::Copy() {
    return Guarded([&] {
        std::wstring ClassWord;
        if (!Settled() || Core_.CopyData(At(), false, ClassWord)) return false;
        if (ClassWord.empty())
            Tell(Phrase::kClipboardEmpty, {}, false);
        else
            Tell(Phrase::kClipboardHolds, {ClassWord}, false);
        return true;
    });
}

bool ObjectDesk::Cut() {
    if (!TreeOffers().Delete) return false;
    return Structural(
        [&] {
            const std::shared_ptr<RegData> Before = Core_.Clipboard().DataObj;
            std::wstring ClassWord;
            if (Core_.CopyData(At(), false, ClassWord) || Core_.Clipboard().DataObj == Before) return true;
            return Core_.DeleteData(At(), false);
        },
        [&] {
            return TreeOffers().Delete && Ask(Phrase::kAskCut, {CurrentNode()->Text}, box::kDefaultSecond);
        });
}

bool ObjectDesk::Paste() {
    return Guarded([&] {
        if (!Settled()) return false;
        if (Core_.Tree().Modified() && !Ask(Phrase::kAskPaste, {}, box::kDefaultSecond)) return false;
        std::wstring NewItemKey;
        return Replaced([&] { return Core_.PasteData(At(), std::nullopt, NewItemKey); });
    });
}

// The object.

void ObjectDesk::Show() {
    AfterLoad({});
    Face_.ShowState();
}

void ObjectDesk::AfterLoad(const Places& Selected) {
    if (const TreeNode* const Root = Core_.Tree().Root()) {
        Core_.Tree().SelectNode(Below(Root, Selected)->Key);
        const While Quiet(Busy_);
        Face_.Open(*Root);
    }
    ShowSelected();
}

bool ObjectDesk::Replaced(const std::function<bool()>& Operation) {
    const std::vector<Places> Open = OpenBelow(Core_.Tree().Root());
    const Places Selected = PlacesOf(CurrentNode());
    bool Failed = false;
    {
        const Waiting Here;
        const While Quiet(Busy_);
        Face_.Rebuild([&] { Failed = Operation(); });
    }
    if (Face_.Gone()) return false;
    {
        const While Quiet(Busy_);
        OpenAgain(Core_.Tree().Root(), Open);
    }
    AfterLoad(Selected);
    return !Failed;
}

bool ObjectDesk::ShowProperties() {
    return Guarded([&] { return !Core_.ShowPropTable(At()); });
}

bool ObjectDesk::RunTool(const std::wstring& Word) {
    return Structural([&] {
        Core_.TlbrButtonClick(Word, At());
        return Faulty_;
    });
}

bool ObjectDesk::Save() {
    return Guarded([&] {
        if (!Apply()) return false;
        if (const std::optional<bool> Ended = Face_.BeforeSave()) return *Ended;
        const Waiting Here;
        if (Core_.Save()) return false;
        Tell(Phrase::kSaved, {}, false);
        return true;
    });
}

bool ObjectDesk::Reload(const std::function<bool()>& Load) {
    return Guarded([&] {
        if (Unsaved() && !Ask(Phrase::kAskReload, {}, box::kDefaultSecond)) return false;
        return Load ? Load() : Replaced([&] { return Core_.Reload(); });
    });
}

bool ObjectDesk::MayClose() {
    bool May = false;
    Guarded([&] {
        if (!Settled()) return false;
        Answer Given = Answer::No;
        if (Core_.Tree().Modified())
            Given = Door().MessageBox(Filled(Face_.Say(Phrase::kAskSave), {Core_.Object().Name()}),
                                      box::kYesNoCancel + box::kQuestion);
        May = Given == Answer::Yes ? Save() : Given == Answer::No;
        return May;
    });
    return May;
}

}  // namespace kv::window
