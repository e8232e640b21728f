#include "com/HostObjects.h"

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

/// The list of a MoveListItem. The host may keep the object; the list is reached during the call alone.
class LentList final : public com::ComObject<::ParmList> {
  public:
    explicit LentList(ParmListBase& List) noexcept : List_(&List) {}
    void TakeBack() noexcept { List_ = nullptr; }

    HRESULT STDMETHODCALLTYPE get_Count(LONG* Elements) override {
        return Guard(__uuidof(::ParmList), L"vdbSvr.ParmList", [&] { Told(Elements) = Lent().Count(); });
    }
    HRESULT STDMETHODCALLTYPE Move(LONG From, LONG To) override {
        return Guard(__uuidof(::ParmList), L"vdbSvr.ParmList", [&] { Lent().Move(From, To); });
    }

  private:
    ~LentList() override = default;
    ParmListBase& Lent() const {
        if (!List_) throw Refusal(E_UNEXPECTED, L"La lista vale solo durante MoveListItem");
        return *List_;
    }

    ParmListBase* List_;
};

class Lending {
  public:
    explicit Lending(ParmListBase& List) : Lent_(Make<LentList>(List)) {}
    Lending(const Lending&) = delete;
    Lending& operator=(const Lending&) = delete;
    ~Lending() { Lent_->TakeBack(); }
    Ref<IDispatch> Object() const noexcept { return ToDispatch(Lent_); }

  private:
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
    if (!Early_) return TextOf(Late_.Get(L"Name").Get());
    Bstr Text;
    Check(Early_->get_Name(Text.Out()), L"Name");
    return Text.Text();
}

std::wstring HostRegData::Clsid() const {
    if (!Early_) return TextOf(Late_.Get(L"Clsid").Get());
    Bstr Text;
    Check(Early_->get_Clsid(Text.Out()), L"Clsid");
    return Text.Text();
}

std::wstring HostRegData::UserList() const {
    if (!Early_) {
        const std::optional<Variant> Users = Late_.TryGet(L"UserList");
        return Users ? TextOf(Users->Get()) : std::wstring();
    }
    Bstr Text;
    Check(Early_->get_UserList(Text.Out()), L"UserList");
    return Text.Text();
}

void HostRegData::SetSaving(bool Saving) {
    if (Early_)
        Check(Early_->put_Saving(ToFlag(Saving)), L"Saving");
    else
        static_cast<void>(Late_.TryPut(L"Saving", {&Variant(Saving).Get()}));
}

const RegObject& HostRegData::Read() {
    Ref<IDispatch> Node;
    if (Early_)
        Check(Early_->get_Content(Node.Out()), L"Content");
    else
        Node = ObjectOf(Late_.Get(L"Content").Get());
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
    const Ref<IDispatch> Given = ToDispatch(Make<Node>(std::move(Content)));
    if (Early_)
        Check(Early_->Replace(Given.Get()), L"Replace");
    else
        static_cast<void>(Late_.Call(L"Replace", {&Variant(Given.Get()).Get()}));
}

// The tree. Each operation goes on as it comes.

HostDesignTree::HostDesignTree(IDispatch* Object)
    : Early_(As<::DesignTree>(NotNull(Object))), Late_(Ref<IDispatch>(Object)) {}

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
}

void HostDesignTree::AddNode(const NewNode& Node) { Add(&::DesignTree::AddNode, L"AddNode", Node); }

void HostDesignTree::AddIconNode(const NewNode& Node) {
    Add(&::DesignTree::AddIconNode, L"AddIconNode", Node);
}

void HostDesignTree::ClearNodes() {
    if (Early_)
        Check(Early_->ClearNodes(), L"ClearNodes");
    else
        static_cast<void>(Late_.Call(L"ClearNodes"));
}

void HostDesignTree::RemoveNode(std::wstring_view Key) {
    if (Early_)
        Check(Early_->RemoveNode(Bstr(Key).Get()), L"RemoveNode");
    else
        static_cast<void>(Late_.Call(L"RemoveNode", {&Variant(Key).Get()}));
}

void HostDesignTree::RemoveChildren(std::wstring_view Key) {
    if (Early_)
        Check(Early_->RemoveChildren(Bstr(Key).Get()), L"RemoveChildren");
    else
        static_cast<void>(Late_.Call(L"RemoveChildren", {&Variant(Key).Get()}));
}

bool HostDesignTree::HasNode(std::wstring_view Key) const {
    if (!Early_) return FlagOf(Late_.Call(L"HasNode", {&Variant(Key).Get()}).Get());
    VARIANT_BOOL There = VARIANT_FALSE;
    Check(Early_->HasNode(Bstr(Key).Get(), &There), L"HasNode");
    return There != VARIANT_FALSE;
}

std::wstring HostDesignTree::NodeText(std::wstring_view Key) const {
    if (!Early_) return TextOf(Late_.Get(L"NodeText", {&Variant(Key).Get()}).Get());
    Bstr Text;
    Check(Early_->get_NodeText(Bstr(Key).Get(), Text.Out()), L"NodeText");
    return Text.Text();
}

void HostDesignTree::SetNodeText(std::wstring_view Key, std::wstring_view Text) {
    if (Early_)
        Check(Early_->put_NodeText(Bstr(Key).Get(), Bstr(Text).Get()), L"NodeText");
    else
        Late_.Put(L"NodeText", {&Variant(Key).Get(), &Variant(Text).Get()});
}

std::wstring HostDesignTree::NodeParent(std::wstring_view Key) const {
    if (!Early_) return TextOf(Late_.Call(L"NodeParent", {&Variant(Key).Get()}).Get());
    Bstr Parent;
    Check(Early_->NodeParent(Bstr(Key).Get(), Parent.Out()), L"NodeParent");
    return Parent.Text();
}

std::int32_t HostDesignTree::NodeId(std::wstring_view Key) const {
    if (!Early_) return NumberOf(Late_.Call(L"NodeId", {&Variant(Key).Get()}).Get());
    LONG Position = 0;
    Check(Early_->NodeId(Bstr(Key).Get(), &Position), L"NodeId");
    return static_cast<std::int32_t>(Position);
}

std::wstring HostDesignTree::NodeAt(std::wstring_view Folder, std::int32_t Place) const {
    if (!Early_) return TextOf(Late_.Call(L"NodeAt", {&Variant(Folder).Get(), &Variant(Place).Get()}).Get());
    Bstr Key;
    Check(Early_->NodeAt(Bstr(Folder).Get(), Place, Key.Out()), L"NodeAt");
    return Key.Text();
}

void HostDesignTree::SelectNode(std::wstring_view Key) {
    if (Early_)
        Check(Early_->SelectNode(Bstr(Key).Get()), L"SelectNode");
    else
        static_cast<void>(Late_.Call(L"SelectNode", {&Variant(Key).Get()}));
}

bool HostDesignTree::MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                                  std::int32_t& NewIndex) {
    const Lending Lent(List);
    if (Early_) {
        Bstr Key(RelativeKey);
        LONG Index = NewIndex;
        VARIANT_BOOL Failed = VARIANT_TRUE;
        Check(Early_->MoveListItem(Lent.Object().Get(), Direction, Key.Out(), &Index, &Failed),
              L"MoveListItem");
        if (Failed != VARIANT_FALSE) return true;
        RelativeKey = Key.Text();
        NewIndex = static_cast<std::int32_t>(Index);
        return false;
    }
    const Variant Listed(Lent.Object().Get());
    const InOut Key{Variant(std::wstring_view(RelativeKey))};
    const InOut Index{Variant(NewIndex)};
    if (FlagOf(Late_
                   .Call(L"MoveListItem",
                         {&Listed.Get(), &Variant(Direction).Get(), Key.Argument(), Index.Argument()})
                   .Get()))
        return true;
    std::int32_t Moved = NumberOf(Index.Value());
    RelativeKey = TextOf(Key.Value());
    NewIndex = Moved;
    return false;
}

bool HostDesignTree::AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                std::wstring_view Word) {
    if (!Early_)
        return FlagOf(
            Late_
                .Call(L"AddDefault", {&Variant(Section).Get(), &Variant(Keyword).Get(), &Variant(Word).Get()})
                .Get());
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
    if (!Early_) return FlagOf(Late_.Call(L"SetTools", {&Array.Get()}).Get());
    VARIANT_BOOL Failed = VARIANT_FALSE;
    Check(Early_->SetTools(Array.Get(), &Failed), L"SetTools");
    return Failed != VARIANT_FALSE;
}

bool HostDesignTree::SyntaxOn() const {
    if (!Early_) return FlagOf(Late_.Get(L"SyntaxOn").Get());
    VARIANT_BOOL Strict = VARIANT_TRUE;
    Check(Early_->get_SyntaxOn(&Strict), L"SyntaxOn");
    return Strict != VARIANT_FALSE;
}

bool HostDesignTree::ShowTree(TreeCall& Call) {
    auto* const Told = dynamic_cast<HostRegData*>(Call.Target);
    auto* const CallBack = dynamic_cast<HostCallBack*>(Call.CallBack);
    const Ref<IDispatch> Before(Told ? Told->Object() : nullptr);
    IDispatch* const Back = CallBack ? CallBack->Object() : nullptr;
    Ref<IDispatch> After;
    bool Failed = false;
    if (Early_) {
        IDispatch* Target = Ref<IDispatch>(Before).Detach();
        VARIANT_BOOL Answer = VARIANT_FALSE;
        const HRESULT Shown =
            Early_->ShowTree(Back, Bstr(Call.ClassWord).Get(), &Target, ToFlag(Call.Flag), &Answer);
        After = Ref<IDispatch>(Target);
        if (Target) Target->Release();
        Check(Shown, L"ShowTree");
        Failed = Answer != VARIANT_FALSE;
    } else {
        const InOut Target{Variant(Before.Get())};
        Failed = FlagOf(Late_
                            .Call(L"ShowTree", {&Variant(Back).Get(), &Variant(Call.ClassWord).Get(),
                                                Target.Argument(), &Variant(Call.Flag).Get()})
                            .Get());
        After = ObjectOf(Target.Value());
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

HostClipItem::HostClipItem(IDispatch* Object)
    : Early_(As<::ClipItem>(NotNull(Object))), Late_(Ref<IDispatch>(Object)) {
    Ref<IDispatch> Data;
    if (Early_) {
        Bstr Word;
        Check(Early_->get_ClassWord(Word.Out()), L"ClassWord");
        Check(Early_->get_DataObj(Data.Out()), L"DataObj");
        Before_ = Word.Text();
    } else {
        Before_ = TextOf(Late_.Get(L"ClassWord").Get());
        Data = ObjectOf(Late_.Get(L"DataObj").Get());
    }
    Item_.ClassWord = Before_;
    if (Data) Item_.DataObj = std::make_shared<HostRegData>(Data.Get());
}

void HostClipItem::GiveBack() {
    if (Item_.ClassWord == Before_) return;
    if (Early_)
        Check(Early_->put_ClassWord(Bstr(Item_.ClassWord).Get()), L"ClassWord");
    else
        Late_.Put(L"ClassWord", {&Variant(std::wstring_view(Item_.ClassWord)).Get()});
}

}  // namespace kv::com
