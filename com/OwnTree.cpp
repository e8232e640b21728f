#include "com/OwnTree.h"

#include <string>
#include <vector>

#include "com/ByName.h"
#include "com/Failing.h"
#include "com/Values.h"
#include "frame/Failure.h"

namespace kv::com {
namespace {

using Model = std::shared_ptr<window::TreeModel>;

constexpr std::wstring_view kTree = L"vdbSvr.DesignTree";

template <class Body>
HRESULT Work(Body&& Run) noexcept {
    return Guard(__uuidof(::DesignTree), kTree, [&] {
        module::CheckThread();
        Run();
    });
}

/// The same for what answers something; the place is empty where it fails.
template <class T, class Maker>
HRESULT Answer(T* Into, Maker&& Run) noexcept {
    return Guard(__uuidof(::DesignTree), kTree, [&] {
        Give(Into, [&] {
            module::CheckThread();
            return Run();
        });
    });
}

/// The same for what tells in `Failed` that it has failed: True where it could not be tried.
template <class Body>
HRESULT Judged(VARIANT_BOOL* Failed, Body&& Run) noexcept {
    return Guard(__uuidof(::DesignTree), kTree, [&] {
        Told(Failed) = VARIANT_TRUE;
        module::CheckThread();
        if (!Run()) *Failed = VARIANT_FALSE;
    });
}

VARIANT_BOOL ToFlag(bool Flag) noexcept { return Flag ? VARIANT_TRUE : VARIANT_FALSE; }

class NodeOf final : public com::ComObject<::TreeNode> {
  public:
    NodeOf(Model Tree, std::wstring Key) : Tree_(std::move(Tree)), Key_(std::move(Key)) {}

    HRESULT STDMETHODCALLTYPE get_Text(BSTR* Caption) override {
        return Answer(Caption, [&] { return ToBstr(Tree_->NodeText(Key_)); });
    }
    HRESULT STDMETHODCALLTYPE put_Text(BSTR Caption) override {
        return Work([&] { Tree_->SetNodeText(Key_, FromBstr(Caption)); });
    }
    HRESULT STDMETHODCALLTYPE get_Key(BSTR* NodeKey) override {
        return Answer(NodeKey, [&] { return ToBstr(Key_); });
    }

  private:
    ~NodeOf() override = default;
    Model Tree_;
    std::wstring Key_;
};

class NodesOf final : public com::ComObject<::TreeNodes> {
  public:
    explicit NodesOf(Model Tree) : Tree_(std::move(Tree)) {}

    HRESULT STDMETHODCALLTYPE get_Item(BSTR Key, IDispatch** Node) override {
        return Answer(Node, [&] {
            std::wstring Wanted = FromBstr(Key);
            if (!Tree_->HasNode(Wanted)) RaiseFault(fault::kNoObject);
            return ToDispatch(Make<NodeOf>(Tree_, std::move(Wanted))).Detach();
        });
    }
    HRESULT STDMETHODCALLTYPE Clear() override {
        return Work([&] { Tree_->ClearNodes(); });
    }

  private:
    ~NodesOf() override = default;
    Model Tree_;
};

class ControlOf final : public com::ComObject<::TreeControl> {
  public:
    explicit ControlOf(Model Tree) : Tree_(std::move(Tree)) {}

    HRESULT STDMETHODCALLTYPE get_Nodes(IDispatch** Nodes) override {
        return Answer(Nodes, [&] { return ToDispatch(Make<NodesOf>(Tree_)).Detach(); });
    }

  private:
    ~ControlOf() override = default;
    Model Tree_;
};

/// The list of a MoveListItem that comes from without.
class ListByName final : public ParmListBase {
  public:
    explicit ListByName(IDispatch* Object)
        : Object_(Ref<IDispatch>(Object)), Count_(NumberOf(Object_.Get(L"Count").Get())) {}
    std::int32_t Count() const noexcept override { return Count_; }
    void Move(std::int32_t From, std::int32_t To) override {
        static_cast<void>(Object_.Call(L"Move", {&Variant(From).Get(), &Variant(To).Get()}));
    }
    void Remove(std::int32_t) override { RaiseFault(fault::kInvalidCall); }
    void Clear() noexcept override {}

  private:
    ByName Object_;
    std::int32_t Count_;
};

}  // namespace

// {6DF6D904-7983-4D89-B979-4036FDEF2ED8}
const GUID OwnTree::kOwn = {0x6DF6D904, 0x7983, 0x4D89, {0xB9, 0x79, 0x40, 0x36, 0xFD, 0xEF, 0x2E, 0xD8}};

HRESULT OwnTree::MarkModified(VARIANT_BOOL Modified) {
    return Work([&] { Model_->MarkModified(Modified != VARIANT_FALSE); });
}

HRESULT OwnTree::AddNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text, VARIANT Image,
                         VARIANT SelectedImage, BSTR* Kind, IDispatch** Node) {
    if (Node) *Node = nullptr;
    return Work([&] {
        const auto Optional = [](const VARIANT& From) {
            return IsAbsent(From) ? std::wstring() : TextOf(From);
        };
        const std::wstring From = Optional(Relative);
        const std::wstring Named = Optional(Key);
        const std::wstring Caption = Optional(Text);
        const std::wstring Word = Kind ? FromBstr(*Kind) : std::wstring();
        NewNode New{.Key = Named, .Text = Caption, .Kind = Word};
        if (!IsAbsent(Relative)) New.Relative = From;
        if (!IsAbsent(Relationship)) New.Relationship = NumberOf(Relationship);
        if (!IsAbsent(Image)) New.Image = New.SelectedImage = NumberOf(Image);
        if (!IsAbsent(SelectedImage)) New.SelectedImage = NumberOf(SelectedImage);
        Ref<NodeOf> Made = Make<NodeOf>(Model_, Named);
        Model_->AddNode(New);
        if (Node) *Node = ToDispatch(Made).Detach();
    });
}

HRESULT OwnTree::AddIconNode(VARIANT Relative, VARIANT Relationship, VARIANT Key, VARIANT Text, VARIANT Image,
                             VARIANT, BSTR* Kind, IDispatch** Node) {
    return AddNode(Relative, Relationship, Key, Text, Image, Image, Kind, Node);
}

HRESULT OwnTree::AddDefault(BSTR Section, BSTR Keyword, BSTR Word, VARIANT_BOOL* Failed) {
    return Judged(Failed,
                  [&] { return Model_->AddDefault(FromBstr(Section), FromBstr(Keyword), FromBstr(Word)); });
}

HRESULT OwnTree::AddToolButton(BSTR Key, BSTR ToolTip, LONG Style, LONG Bitmap, IDispatch*) {
    return Work([&] {
        const std::wstring Word = FromBstr(Key);
        const std::wstring Tip = FromBstr(ToolTip);
        Model_->AddToolButton({.Key = Word,
                               .ToolTip = Tip,
                               .Style = static_cast<std::int32_t>(Style),
                               .Bitmap = static_cast<std::int32_t>(Bitmap)});
    });
}

HRESULT OwnTree::SetTools(VARIANT Words, VARIANT_BOOL* Failed) {
    return Judged(Failed, [&] {
        const std::vector<std::wstring> Texts = FromArray(Words);
        const std::vector<std::wstring_view> Views(Texts.begin(), Texts.end());
        return Model_->SetTools(Views);
    });
}

HRESULT OwnTree::ShowTree(IDispatch*, BSTR, IDispatch**, VARIANT_BOOL, VARIANT_BOOL* Failed) {
    return Judged(Failed, []() -> bool { throw Refusal(E_UNEXPECTED, L"La finestra si apre con ShowData"); });
}

HRESULT OwnTree::Dispose() {
    return Work([] { throw Refusal(E_UNEXPECTED, L"L'albero si chiude con ShutDown"); });
}

HRESULT OwnTree::MoveListItem(IDispatch* List, LONG Direction, BSTR* RelativeKey, LONG* NewIndex,
                              VARIANT_BOOL* Failed) {
    return Judged(Failed, [&] {
        Told(RelativeKey);
        Told(NewIndex);
        ListByName Given(&Told(List));
        std::wstring Neighbour;
        std::int32_t Place = 0;
        if (Model_->MoveListItem(Given, static_cast<std::int32_t>(Direction), Neighbour, Place)) return true;
        Bstr Key(Neighbour);
        std::swap(*RelativeKey, *Key.Out());
        *NewIndex = Place;
        return false;
    });
}

HRESULT OwnTree::get_SyntaxOn(VARIANT_BOOL* Strict) {
    return Answer(Strict, [&] { return ToFlag(Model_->SyntaxOn()); });
}

HRESULT OwnTree::NodeId(BSTR Key, LONG* Position) {
    return Answer(Position, [&] { return static_cast<LONG>(Model_->NodeId(FromBstr(Key))); });
}

HRESULT OwnTree::get_TreeControl(IDispatch** Control) {
    return Answer(Control, [&] { return ToDispatch(Make<ControlOf>(Model_)).Detach(); });
}

HRESULT OwnTree::ClearNodes() {
    return Work([&] { Model_->ClearNodes(); });
}
HRESULT OwnTree::RemoveNode(BSTR Key) {
    return Work([&] { Model_->RemoveNode(FromBstr(Key)); });
}
HRESULT OwnTree::RemoveChildren(BSTR Key) {
    return Work([&] { Model_->RemoveChildren(FromBstr(Key)); });
}
HRESULT OwnTree::HasNode(BSTR Key, VARIANT_BOOL* There) {
    return Answer(There, [&] { return ToFlag(Model_->HasNode(FromBstr(Key))); });
}
HRESULT OwnTree::get_NodeText(BSTR Key, BSTR* Text) {
    return Answer(Text, [&] { return ToBstr(Model_->NodeText(FromBstr(Key))); });
}
HRESULT OwnTree::put_NodeText(BSTR Key, BSTR Text) {
    return Work([&] { Model_->SetNodeText(FromBstr(Key), FromBstr(Text)); });
}
HRESULT OwnTree::NodeParent(BSTR Key, BSTR* ParentKey) {
    return Answer(ParentKey, [&] { return ToBstr(Model_->NodeParent(FromBstr(Key))); });
}
HRESULT OwnTree::NodeAt(BSTR Folder, LONG Place, BSTR* Key) {
    return Answer(Key,
                  [&] { return ToBstr(Model_->NodeAt(FromBstr(Folder), static_cast<std::int32_t>(Place))); });
}
HRESULT OwnTree::SelectNode(BSTR Key) {
    return Work([&] { Model_->SelectNode(FromBstr(Key)); });
}

}  // namespace kv::com
