#include "com/HostObjects.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "com/Dual.h"
#include "com/Failing.h"
#include "com/Node.h"
#include "frame/Failure.h"
// behind windows.h
#include <olectl.h>

namespace kv::com {
namespace {

IDispatch* NotNull(IDispatch* Object) {
    if (!Object) throw Refusal(E_POINTER, L"Manca un oggetto");
    return Object;
}

VARIANT_BOOL ToFlag(bool Flag) noexcept { return Flag ? VARIANT_TRUE : VARIANT_FALSE; }

class LentList;

/// An element of a lent list.
class LentElement final : public com::ComObject<::ListElement> {
  public:
    static const GUID kOwn;

    LentElement(Ref<LentList> Of, std::int32_t Number) : List_(std::move(Of)), Number_(Number) {}
    const LentList* List() const noexcept { return List_.Get(); }
    std::int32_t Number() const noexcept { return Number_; }

    HRESULT STDMETHODCALLTYPE get_Place(LONG* Index) override;

  private:
    ~LentElement() override = default;
    void* FindOwn(REFIID Wanted) noexcept override { return Wanted == kOwn ? this : nullptr; }

    Ref<LentList> List_;
    std::int32_t Number_;  // its 1-based place when the list was lent
};

// {0E3B2C5D-6C0F-4F0B-9B0E-2C6C7A5D8B41}
const GUID LentElement::kOwn = {0x0E3B2C5D, 0x6C0F, 0x4F0B, {0x9B, 0x0E, 0x2C, 0x6C, 0x7A, 0x5D, 0x8B, 0x41}};

/// The list of a MoveListItem. What the host does with it changes an order kept here; the list itself follows
/// when the host has done. The host may keep the object, which is good during the call alone.
class LentList final : public com::ComObject<::ParmList> {
  public:
    explicit LentList(std::int32_t Count) {
        for (std::int32_t Number = 1; Number <= Count; ++Number) Order_.push_back(Number);
        All_ = Order_.size();
    }
    void TakeBack() noexcept { Lent_ = false; }

    /// Puts the elements of `List` into the order that the host has made; raises where it has lost one.
    void Apply(ParmListBase& List) const {
        if (Order_.size() != All_)
            RaiseOfHost(L"MoveListItem", L"un elemento tolto dalla lista non è stato rimesso");
        std::vector<std::int32_t> Now(All_);
        for (std::size_t I = 0; I < All_; ++I) Now[I] = static_cast<std::int32_t>(I) + 1;
        for (std::size_t I = 0; I < All_; ++I) {
            const auto At = Now.begin() + static_cast<std::ptrdiff_t>(I);
            const auto From = std::find(At, Now.end(), Order_[I]);
            if (From == At) continue;
            List.Move(static_cast<std::int32_t>(From - Now.begin()) + 1, static_cast<std::int32_t>(I) + 1);
            std::rotate(At, From, From + 1);
        }
    }

    HRESULT STDMETHODCALLTYPE Add(IDispatch* Item, VARIANT Key, VARIANT Before, VARIANT After) override {
        return Work([&] {
            const Ref<LentElement> Element = OwnOf<LentElement>(&Told(Item));
            if (!Element || Element->List() != this)
                throw Refusal(E_INVALIDARG, L"L'elemento non è di questa lista");
            if (PlaceOf(Element->Number()) != 0)
                throw Refusal(E_INVALIDARG, L"L'elemento sta già nella lista");
            std::size_t Place = Order_.size();
            if (!IsAbsent(Before))
                Place = Slot(NumberOf(Before));
            else if (!IsAbsent(After))
                Place = Slot(NumberOf(After)) + 1;
            const std::wstring Named = IsAbsent(Key) ? std::wstring() : TextOf(Key);
            if (!Named.empty() && Known(Named)) RaiseFault(fault::kKeyTaken);
            if (Named.empty())
                Keys_.erase(Element->Number());
            else
                Keys_[Element->Number()] = Named;
            Order_.insert(Order_.begin() + static_cast<std::ptrdiff_t>(Place), Element->Number());
        });
    }
    HRESULT STDMETHODCALLTYPE Remove(LONG Index) override {
        return Work([&] { Order_.erase(Order_.begin() + static_cast<std::ptrdiff_t>(Slot(Index))); });
    }
    HRESULT STDMETHODCALLTYPE get_Count(LONG* Elements) override {
        return Answer(Elements, [&] { return static_cast<LONG>(Order_.size()); });
    }
    HRESULT STDMETHODCALLTYPE get_Item(LONG Index, IDispatch** Element) override {
        return Answer(Element, [&] {
            return ToDispatch(Make<LentElement>(Ref<LentList>(this), Order_[Slot(Index)])).Detach();
        });
    }
    HRESULT STDMETHODCALLTYPE Exists(BSTR Key, VARIANT_BOOL* There) override {
        return Answer(There, [&] { return ToFlag(Known(FromBstr(Key))); });
    }
    HRESULT STDMETHODCALLTYPE Clear() override {
        return Work([&] { Order_.clear(); });
    }
    HRESULT STDMETHODCALLTYPE Move(LONG From, LONG To) override {
        return Work([&] {
            const std::int32_t Number = Order_[Slot(From)];
            const std::size_t Target = Slot(To);
            Order_.erase(Order_.begin() + static_cast<std::ptrdiff_t>(Slot(From)));
            Order_.insert(Order_.begin() + static_cast<std::ptrdiff_t>(Target), Number);
        });
    }

    /// 1-based, 0 while the element is taken out.
    LONG PlaceOf(std::int32_t Number) const noexcept {
        const auto At = std::find(Order_.begin(), Order_.end(), Number);
        return At == Order_.end() ? 0 : static_cast<LONG>(At - Order_.begin()) + 1;
    }
    template <class T, class Maker>
    HRESULT Answer(T* Into, Maker&& Run) noexcept {
        return Guard(__uuidof(::ParmList), L"vdbSvr.ParmList", [&] {
            Give(Into, [&] {
                CheckLent();
                return Run();
            });
        });
    }

  private:
    ~LentList() override = default;
    template <class Body>
    HRESULT Work(Body&& Run) noexcept {
        return Guard(__uuidof(::ParmList), L"vdbSvr.ParmList", [&] {
            CheckLent();
            Run();
        });
    }
    void CheckLent() const {
        if (!Lent_) throw Refusal(E_UNEXPECTED, L"La lista vale solo durante MoveListItem");
    }
    std::size_t Slot(LONG Index) const {
        if (Index < 1 || static_cast<std::size_t>(Index) > Order_.size())
            throw Refusal(DISP_E_BADINDEX, L"Nessun elemento in quel posto");
        return static_cast<std::size_t>(Index) - 1;
    }
    bool Known(std::wstring_view Key) const {
        return std::any_of(Keys_.begin(), Keys_.end(), [&](const auto& Named) {
            return Named.second == Key && PlaceOf(Named.first) != 0;
        });
    }

    std::vector<std::int32_t> Order_;  // the elements by the places where they stood when the list was lent
    std::size_t All_ = 0;
    std::map<std::int32_t, std::wstring> Keys_;  // those that Add has given: the lists of a record have none
    bool Lent_ = true;
};

HRESULT LentElement::get_Place(LONG* Index) {
    return List_->Answer(Index, [&] { return List_->PlaceOf(Number_); });
}

class Lending {
  public:
    explicit Lending(ParmListBase& List) : List_(List), Lent_(Make<LentList>(List.Count())) {}
    Lending(const Lending&) = delete;
    Lending& operator=(const Lending&) = delete;
    ~Lending() { Lent_->TakeBack(); }
    Ref<IDispatch> Object() const noexcept { return ToDispatch(Lent_); }
    /// The call has ended well.
    void Settle() { Lent_->Apply(List_); }

  private:
    ParmListBase& List_;
    Ref<LentList> Lent_;
};

/// The picture of a tool button from the resources; nothing for 0 and where the picture can't be made.
Ref<IDispatch> PictureOf(std::int32_t Bitmap) noexcept {
    Ref<IDispatch> Made;
    if (Bitmap == 0) return Made;
    PICTDESC Described{};
    Described.cbSizeofstruct = sizeof Described;
    Described.picType = PICTYPE_BITMAP;
    Described.bmp.hbitmap = static_cast<HBITMAP>(
        LoadImageW(module::Handle(), MAKEINTRESOURCEW(Bitmap), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
    if (!Described.bmp.hbitmap) return Made;
    if (FAILED(OleCreatePictureIndirect(&Described, __uuidof(IDispatch), TRUE, Made.OutVoid()))) {
        Made.Detach();
        DeleteObject(Described.bmp.hbitmap);
    }
    return Made;
}

}  // namespace

// The stored object.

HostRegData::HostRegData(IDispatch* Object)
    : Early_(As<::RegData>(NotNull(Object))), Late_(Ref<IDispatch>(Object)) {}

std::wstring HostRegData::Name() const {
    if (!Early_) return Late_.Get(L"Name", TextOf);
    Bstr Text;
    Check(Early_->get_Name(Text.Out()), L"Name");
    return Text.Text();
}

std::wstring HostRegData::Clsid() const {
    if (!Early_) return Late_.Get(L"Clsid", TextOf);
    Bstr Text;
    Check(Early_->get_Clsid(Text.Out()), L"Clsid");
    return Text.Text();
}

std::wstring HostRegData::UserList() const {
    if (!Early_) return Late_.TryGet(L"UserList", TextOf).value_or(std::wstring());
    Bstr Text;
    Check(Early_->get_UserList(Text.Out()), L"UserList");
    return Text.Text();
}

void HostRegData::SetSaving(bool Saving) {
    if (Saving) {
        if (Early_)
            Check(Early_->put_Saving(VARIANT_TRUE), L"Saving");
        else
            static_cast<void>(Late_.TryPut(L"Saving", {&Variant(true).Get()}));
    }
    Stores_ = Saving;
}

const RegObject& HostRegData::Read() {
    if (Unsaved_) return *Unsaved_;
    Ref<IDispatch> Node;
    if (Early_)
        Check(Early_->get_Content(Node.Out()), L"Content");
    else
        Node = Late_.Get(L"Content", ObjectOf);
    RegObject Content = ReadNode(Node.Get());
    if (!Node) {
        // An object that has no content yet has its name.
        Content.Name = Name();
        Content.UserList = UserList();
    }
    Content_ = std::move(Content);
    return Content_;
}

void HostRegData::Write(RegObject Content) {
    if (!Stores_) {
        Unsaved_ = std::move(Content);
        return;
    }
    const Ref<IDispatch> Given = ToDispatch(Make<Node>(std::move(Content)));
    if (Early_)
        Check(Early_->Replace(Given.Get()), L"Replace");
    else
        static_cast<void>(Late_.Call(L"Replace", {&Variant(Given.Get()).Get()}));
    Unsaved_.reset();
}

// The tree. Each operation goes on as it comes.

HostDesignTree::HostDesignTree(IDispatch* Object)
    : Early_(As<::DesignTree>(NotNull(Object))), Late_(Ref<IDispatch>(Object)) {}

ByName HostDesignTree::Nodes() const {
    return ByName(ByName(Late_.Get(L"TreeControl", ObjectOf)).Get(L"Nodes", ObjectOf));
}

ByName HostDesignTree::NodeOf(std::wstring_view Key) const {
    return ByName(Nodes().Get(L"Item", ObjectOf, {&Variant(Key).Get()}));
}

window::TreeModel& HostDesignTree::Followed(const wchar_t* Lacks) const {
    if (!Followed_) Raise(L"Oggetto dell'applicazione: manca " + std::wstring(Lacks));
    return *Followed_;
}

void HostDesignTree::MarkModified(bool Modified) {
    if (Early_)
        Check(Early_->MarkModified(ToFlag(Modified)), L"MarkModified");
    else
        static_cast<void>(Late_.Call(L"MarkModified", {&Variant(Modified).Get()}));
}

void HostDesignTree::Add(AddMember Member, const wchar_t* Name, const NewNode& Node) {
    const Variant Relative = Node.Relative ? Variant(*Node.Relative) : Variant::Absent();
    const Variant Relationship = Node.Relationship ? Variant(*Node.Relationship) : Variant::Absent();
    const Variant Key(Node.Key);
    const Variant Text(Node.Text);
    const Variant Image(Node.Image);
    const Variant Selected(Node.SelectedImage);
    if (Early_) {
        Bstr Kind(Node.Kind);
        Ref<IDispatch> Added;
        Check((Early_.Get()->*Member)(Relative.Get(), Relationship.Get(), Key.Get(), Text.Get(), Image.Get(),
                                      Selected.Get(), Kind.Out(), Added.Out()),
              Name);
        return;
    }
    const InOut Kind{Variant(Node.Kind)};
    static_cast<void>(Late_.Call(Name, {&Relative.Get(), &Relationship.Get(), &Key.Get(), &Text.Get(),
                                        &Image.Get(), &Selected.Get(), Kind.Argument()}));
    if (Followed_) Followed_->AddNode(Node);
}

void HostDesignTree::AddNode(const NewNode& Node) { Add(&::DesignTree::AddNode, L"AddNode", Node); }

void HostDesignTree::AddIconNode(const NewNode& Node) {
    Add(&::DesignTree::AddIconNode, L"AddIconNode", Node);
}

void HostDesignTree::ClearNodes() {
    if (Early_) {
        Check(Early_->ClearNodes(), L"ClearNodes");
        return;
    }
    constexpr const wchar_t* kTelling[] = {L"HasNode", L"NodeText", L"NodeParent", L"NodeAt"};
    const bool Tells = std::all_of(std::begin(kTelling), std::end(kTelling),
                                   [&](const wchar_t* Name) { return Late_.Has(Name); });
    if (!Late_.TryCall(L"ClearNodes")) static_cast<void>(Nodes().Call(L"Clear"));
    Followed_ = Tells ? nullptr : std::make_unique<window::TreeModel>();
}

void HostDesignTree::RemoveNode(std::wstring_view Key) {
    if (Early_) {
        Check(Early_->RemoveNode(Bstr(Key).Get()), L"RemoveNode");
        return;
    }
    const Variant Named(Key);
    if (!Late_.TryCall(L"RemoveNode", {&Named.Get()})) {
        static_cast<void>(Followed(L"RemoveNode"));
        // A control without it is that of a window that takes out itself what its operator deletes.
        static_cast<void>(Nodes().TryCall(L"Remove", {&Named.Get()}));
    }
    if (Followed_) Followed_->RemoveNode(Key);
}

void HostDesignTree::RemoveChildren(std::wstring_view Key) {
    if (Early_) {
        Check(Early_->RemoveChildren(Bstr(Key).Get()), L"RemoveChildren");
    } else if (Late_.TryCall(L"RemoveChildren", {&Variant(Key).Get()})) {
        if (Followed_) Followed_->RemoveChildren(Key);
    } else {
        const window::TreeModel& Known = Followed(L"RemoveChildren");
        for (std::wstring First; !(First = Known.NodeAt(Key, 1)).empty();) RemoveNode(First);
    }
}

bool HostDesignTree::HasNode(std::wstring_view Key) const {
    if (!Early_) {
        const std::optional<bool> There = Late_.TryCall(L"HasNode", FlagOf, {&Variant(Key).Get()});
        return There ? *There : Followed(L"HasNode").HasNode(Key);
    }
    VARIANT_BOOL There = VARIANT_FALSE;
    Check(Early_->HasNode(Bstr(Key).Get(), &There), L"HasNode");
    return There != VARIANT_FALSE;
}

std::wstring HostDesignTree::NodeText(std::wstring_view Key) const {
    if (!Early_) {
        std::optional<std::wstring> Text = Late_.TryGet(L"NodeText", TextOf, {&Variant(Key).Get()});
        return Text ? *std::move(Text) : NodeOf(Key).Get(L"Text", TextOf);
    }
    Bstr Text;
    Check(Early_->get_NodeText(Bstr(Key).Get(), Text.Out()), L"NodeText");
    return Text.Text();
}

void HostDesignTree::SetNodeText(std::wstring_view Key, std::wstring_view Text) {
    if (Early_) {
        Check(Early_->put_NodeText(Bstr(Key).Get(), Bstr(Text).Get()), L"NodeText");
        return;
    }
    const Variant Caption(Text);
    if (!Late_.TryPut(L"NodeText", {&Variant(Key).Get(), &Caption.Get()}))
        NodeOf(Key).Put(L"Text", {&Caption.Get()});
}

std::wstring HostDesignTree::NodeParent(std::wstring_view Key) const {
    if (!Early_) {
        std::optional<std::wstring> Parent = Late_.TryCall(L"NodeParent", TextOf, {&Variant(Key).Get()});
        return Parent ? *std::move(Parent) : Followed(L"NodeParent").NodeParent(Key);
    }
    Bstr Parent;
    Check(Early_->NodeParent(Bstr(Key).Get(), Parent.Out()), L"NodeParent");
    return Parent.Text();
}

std::int32_t HostDesignTree::NodeId(std::wstring_view Key) const {
    if (!Early_) return Late_.Call(L"NodeId", NumberOf, {&Variant(Key).Get()});
    LONG Position = 0;
    Check(Early_->NodeId(Bstr(Key).Get(), &Position), L"NodeId");
    return static_cast<std::int32_t>(Position);
}

std::wstring HostDesignTree::NodeAt(std::wstring_view Folder, std::int32_t Place) const {
    if (!Early_) {
        std::optional<std::wstring> Key =
            Late_.TryCall(L"NodeAt", TextOf, {&Variant(Folder).Get(), &Variant(Place).Get()});
        return Key ? *std::move(Key) : Followed(L"NodeAt").NodeAt(Folder, Place);
    }
    Bstr Key;
    Check(Early_->NodeAt(Bstr(Folder).Get(), Place, Key.Out()), L"NodeAt");
    return Key.Text();
}

void HostDesignTree::SelectNode(std::wstring_view Key) {
    if (Early_) {
        Check(Early_->SelectNode(Bstr(Key).Get()), L"SelectNode");
        return;
    }
    // A window that selects by itself has selected the node of which its operator asks something.
    if (!Late_.TryCall(L"SelectNode", {&Variant(Key).Get()})) static_cast<void>(Followed(L"SelectNode"));
    if (Followed_) Followed_->SelectNode(Key);
}

bool HostDesignTree::MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                                  std::int32_t& NewIndex) {
    Lending Lent(List);
    const Ref<IDispatch> Listed = Lent.Object();
    std::wstring Neighbour;
    std::int32_t Place = 0;
    if (Early_) {
        Bstr Key(RelativeKey);
        LONG Index = NewIndex;
        VARIANT_BOOL Failed = VARIANT_TRUE;
        Check(Early_->MoveListItem(Listed.Get(), Direction, Key.Out(), &Index, &Failed), L"MoveListItem");
        if (Failed != VARIANT_FALSE) return true;
        Neighbour = Key.Text();
        Place = static_cast<std::int32_t>(Index);
    } else {
        const Variant Object(Listed.Get());
        const InOut Key{Variant(std::wstring_view(RelativeKey))};
        const InOut Index{Variant(NewIndex)};
        if (Late_.Call(L"MoveListItem", FlagOf,
                       {&Object.Get(), &Variant(Direction).Get(), Key.Argument(), Index.Argument()}))
            return true;
        Neighbour = Taken(L"MoveListItem", Key.Value(), TextOf);
        Place = Taken(L"MoveListItem", Index.Value(), NumberOf);
    }
    Lent.Settle();
    RelativeKey = std::move(Neighbour);
    NewIndex = Place;
    if (Followed_ && Followed_->HasNode(Followed_->Selected()))
        Followed_->RemoveNode(std::wstring(Followed_->Selected()));
    return false;
}

bool HostDesignTree::AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                std::wstring_view Word) {
    if (!Early_)
        return Late_.Call(L"AddDefault", FlagOf,
                          {&Variant(Section).Get(), &Variant(Keyword).Get(), &Variant(Word).Get()});
    VARIANT_BOOL Failed = VARIANT_FALSE;
    Check(Early_->AddDefault(Bstr(Section).Get(), Bstr(Keyword).Get(), Bstr(Word).Get(), &Failed),
          L"AddDefault");
    return Failed != VARIANT_FALSE;
}

void HostDesignTree::AddToolButton(const ToolButtonInfo& Button) {
    const Ref<IDispatch> Picture = PictureOf(Button.Bitmap);
    if (Early_)
        Check(Early_->AddToolButton(Bstr(Button.Key).Get(), Bstr(Button.ToolTip).Get(), Button.Style,
                                    Button.Bitmap, Picture.Get()),
              L"AddToolButton");
    else
        static_cast<void>(Late_.Call(
            L"AddToolButton",
            {&Variant(Button.Key).Get(), &Variant(Button.ToolTip).Get(), &Variant(Button.Style).Get(),
             &Variant(Button.Bitmap).Get(), &Variant(Picture.Get()).Get()}));
}

bool HostDesignTree::SetTools(std::span<const std::wstring_view> Words) {
    const Variant Array = ToArray(Words);
    if (!Early_) return Late_.Call(L"SetTools", FlagOf, {&Array.Get()});
    VARIANT_BOOL Failed = VARIANT_FALSE;
    Check(Early_->SetTools(Array.Get(), &Failed), L"SetTools");
    return Failed != VARIANT_FALSE;
}

bool HostDesignTree::SyntaxOn() const {
    if (!Early_) return Late_.Get(L"SyntaxOn", FlagOf);
    VARIANT_BOOL Strict = VARIANT_TRUE;
    Check(Early_->get_SyntaxOn(&Strict), L"SyntaxOn");
    return Strict != VARIANT_FALSE;
}

bool HostDesignTree::ShowTree(TreeCall& Call) {
    auto* const Given = dynamic_cast<HostRegData*>(Call.Target);
    auto* const CallBack = dynamic_cast<HostCallBack*>(Call.CallBack);
    const Ref<IDispatch> Before(Given ? Given->Object() : nullptr);
    IDispatch* const Back = CallBack ? CallBack->Object() : nullptr;
    Ref<IDispatch> After;
    bool Failed = false;
    if (Early_) {
        After = Before;
        VARIANT_BOOL Answer = VARIANT_FALSE;
        Check(Early_->ShowTree(Back, Bstr(Call.ClassWord).Get(), After.InOut(), ToFlag(Call.Flag), &Answer),
              L"ShowTree");
        Failed = Answer != VARIANT_FALSE;
    } else {
        const InOut Target{Variant(Before.Get())};
        Failed = Late_.Call(L"ShowTree", FlagOf,
                            {&Variant(Back).Get(), &Variant(Call.ClassWord).Get(), Target.Argument(),
                             &Variant(Call.Flag).Get()});
        After = Taken(L"ShowTree", Target.Value(), ObjectOf);
    }
    if (After.Get() != Before.Get()) {
        Returned_ = After ? std::make_unique<HostRegData>(After.Get()) : nullptr;
        Call.Target = Returned_.get();
    }
    return Failed;
}

void HostDesignTree::Dispose() {
    if (Early_)
        Check(Early_->Dispose(), L"Dispose");
    else
        static_cast<void>(Late_.Call(L"Dispose"));
}

// The clipboard holder.

kv::ClipItem ReadClipItem(IDispatch* Holder) {
    kv::ClipItem Read;
    Ref<IDispatch> Data;
    if (const Ref<::ClipItem> Early = As<::ClipItem>(NotNull(Holder))) {
        Bstr Word;
        Check(Early->get_ClassWord(Word.Out()), L"ClassWord");
        Check(Early->get_DataObj(Data.Out()), L"DataObj");
        Read.ClassWord = Word.Text();
    } else {
        const ByName Late{Ref<IDispatch>(Holder)};
        Read.ClassWord = Late.Get(L"ClassWord", TextOf);
        Data = Late.Get(L"DataObj", ObjectOf);
    }
    if (Data) Read.DataObj = std::make_shared<HostRegData>(Data.Get());
    return Read;
}

}  // namespace kv::com
