#include "com/Node.h"

#include <unordered_set>
#include <utility>

#include "com/ByName.h"
#include "com/Failing.h"
#include "frame/Failure.h"

namespace kv::com {
namespace {

constexpr std::wstring_view kNode = L"vdbSvr.RegNode";
constexpr std::wstring_view kObject = L"vdbSvr.RegData";
constexpr std::wstring_view kClip = L"vdbSvr.ClipItem";

[[noreturn]] void TooDeep() { Raise(L"L'oggetto ha troppi livelli"); }

}  // namespace

// {542640C3-172A-4B4C-902A-98FA5066455B}
const GUID Node::kOwn = {0x542640C3, 0x172A, 0x4B4C, {0x90, 0x2A, 0x98, 0xFA, 0x50, 0x66, 0x45, 0x5B}};

Node::Node(RegObject Content, int Depth) : Depth_(Depth) {
    if (Depth > kDeepest) TooDeep();
    const std::vector<RegObject> Below = std::exchange(Content.Children, {});
    Own_ = std::move(Content);
    for (const RegObject& Child : Below) Children_.push_back(Make<Node>(Child, Depth + 1));
}

void* Node::FindOwn(REFIID Wanted) noexcept { return Wanted == kOwn ? this : nullptr; }

RegObject Node::Copy() const {
    RegObject Made = Own_;
    for (const Ref<Node>& Child : Children_) Made.Children.push_back(Child->Copy());
    return Made;
}

HRESULT Node::GetText(std::wstring RegObject::*Field, BSTR* Into) noexcept {
    return Guard(__uuidof(::RegNode), kNode, [&] { Give(Into, [&] { return ToBstr(Own_.*Field); }); });
}
HRESULT Node::PutText(std::wstring RegObject::*Field, BSTR From) noexcept {
    return Guard(__uuidof(::RegNode), kNode, [&] { Own_.*Field = FromBstr(From); });
}
HRESULT Node::GetNumber(std::int32_t RegObject::*Field, LONG* Into) noexcept {
    return Guard(__uuidof(::RegNode), kNode, [&] { Told(Into) = Own_.*Field; });
}
std::size_t Node::Slot(LONG Place) const {
    if (Place < 1 || static_cast<std::size_t>(Place) > Children_.size())
        throw Refusal(DISP_E_BADINDEX, L"Nessun figlio in quel posto");
    return static_cast<std::size_t>(Place) - 1;
}

HRESULT Node::get_Name(BSTR* Text) { return GetText(&RegObject::Name, Text); }
HRESULT Node::put_Name(BSTR Text) { return PutText(&RegObject::Name, Text); }
HRESULT Node::get_Text(BSTR* Text) { return GetText(&RegObject::Text, Text); }
HRESULT Node::put_Text(BSTR Text) { return PutText(&RegObject::Text, Text); }
HRESULT Node::get_Id(LONG* Number) { return GetNumber(&RegObject::Id, Number); }
HRESULT Node::put_Id(LONG Number) { return Own_.Id = Number, S_OK; }
HRESULT Node::get_Version(LONG* Number) { return GetNumber(&RegObject::Version, Number); }
HRESULT Node::put_Version(LONG Number) { return Own_.Version = Number, S_OK; }
HRESULT Node::get_Desc(BSTR* Text) { return GetText(&RegObject::Desc, Text); }
HRESULT Node::put_Desc(BSTR Text) { return PutText(&RegObject::Desc, Text); }
HRESULT Node::get_UserList(BSTR* Text) { return GetText(&RegObject::UserList, Text); }
HRESULT Node::put_UserList(BSTR Text) { return PutText(&RegObject::UserList, Text); }
HRESULT Node::get_Number2(LONG* Number) { return GetNumber(&RegObject::Number2, Number); }
HRESULT Node::put_Number2(LONG Number) { return Own_.Number2 = Number, S_OK; }
HRESULT Node::get_Number3(LONG* Number) { return GetNumber(&RegObject::Number3, Number); }
HRESULT Node::put_Number3(LONG Number) { return Own_.Number3 = Number, S_OK; }
HRESULT Node::get_String3(BSTR* Text) { return GetText(&RegObject::String3, Text); }
HRESULT Node::put_String3(BSTR Text) { return PutText(&RegObject::String3, Text); }
HRESULT Node::get_String4(BSTR* Text) { return GetText(&RegObject::String4, Text); }
HRESULT Node::put_String4(BSTR Text) { return PutText(&RegObject::String4, Text); }
HRESULT Node::get_String5(BSTR* Text) { return GetText(&RegObject::String5, Text); }
HRESULT Node::put_String5(BSTR Text) { return PutText(&RegObject::String5, Text); }

HRESULT Node::get_Value(BSTR ValueName, VARIANT* Content) {
    return Guard(__uuidof(::RegNode), kNode, [&] {
        Give(Content, [&] {
            const RegValue* const Value = Own_.Value(FromBstr(ValueName));
            return Value ? FromRegValue(*Value).Detach() : VARIANT{};
        });
    });
}

HRESULT Node::put_Value(BSTR ValueName, VARIANT Content) {
    return Guard(__uuidof(::RegNode), kNode, [&] {
        const std::wstring Name = FromBstr(ValueName);
        if (std::optional<RegValue> Value = ToRegValue(Content))
            Own_.SetValue(Name, *std::move(Value));
        else
            std::erase_if(Own_.Values, [&](const RegNamedValue& Held) { return Held.Name == Name; });
    });
}

HRESULT Node::get_ValueCount(LONG* Count) {
    return Guard(__uuidof(::RegNode), kNode, [&] { Told(Count) = static_cast<LONG>(Own_.Values.size()); });
}

HRESULT Node::get_ValueName(LONG Place, BSTR* Text) {
    return Guard(__uuidof(::RegNode), kNode, [&] {
        Give(Text, [&] {
            if (Place < 1 || static_cast<std::size_t>(Place) > Own_.Values.size())
                throw Refusal(DISP_E_BADINDEX, L"Nessun valore in quel posto");
            return ToBstr(Own_.Values[static_cast<std::size_t>(Place) - 1].Name);
        });
    });
}

HRESULT Node::get_ChildCount(LONG* Count) {
    return Guard(__uuidof(::RegNode), kNode, [&] { Told(Count) = static_cast<LONG>(Children_.size()); });
}

HRESULT Node::get_Child(LONG Place, IDispatch** Found) {
    return Guard(__uuidof(::RegNode), kNode,
                 [&] { Give(Found, [&] { return ToDispatch(Children_[Slot(Place)]).Detach(); }); });
}

HRESULT Node::AddChild(BSTR ChildName, IDispatch** Added) {
    return Guard(__uuidof(::RegNode), kNode, [&] {
        Give(Added, [&] {
            RegObject Named;
            Named.Name = FromBstr(ChildName);
            Children_.push_back(Make<Node>(std::move(Named), Depth_ + 1));
            return ToDispatch(Children_.back()).Detach();
        });
    });
}

HRESULT Node::RemoveChild(LONG Place) {
    return Guard(__uuidof(::RegNode), kNode,
                 [&] { Children_.erase(Children_.begin() + static_cast<std::ptrdiff_t>(Slot(Place))); });
}

HRESULT Node::Clear() {
    return Guard(__uuidof(::RegNode), kNode, [&] {
        Own_.Values.clear();
        Children_.clear();
    });
}

MemoryObject::MemoryObject(std::wstring_view ClassWord, RegObject Content)
    : Clsid_(ClassWord), Content_(Make<Node>(std::move(Content))) {}

HRESULT MemoryObject::get_Name(BSTR* Text) { return Content_->get_Name(Text); }
HRESULT MemoryObject::get_Clsid(BSTR* Text) {
    return Guard(__uuidof(::RegData), kObject, [&] { Give(Text, [&] { return ToBstr(Clsid_); }); });
}
HRESULT MemoryObject::get_UserList(BSTR* Text) { return Content_->get_UserList(Text); }
HRESULT MemoryObject::put_Saving(VARIANT_BOOL) { return S_OK; }
HRESULT MemoryObject::get_Content(IDispatch** Found) {
    return Guard(__uuidof(::RegData), kObject,
                 [&] { Give(Found, [&] { return ToDispatch(Content_).Detach(); }); });
}
HRESULT MemoryObject::Replace(IDispatch* Content) {
    return Guard(__uuidof(::RegData), kObject, [&] { Content_ = Make<Node>(ReadNode(&Told(Content))); });
}

HRESULT ClipHolder::get_DataObj(IDispatch** Held) {
    return Guard(__uuidof(::ClipItem), kClip,
                 [&] { Give(Held, [&] { return Ref<IDispatch>(Data_).Detach(); }); });
}
HRESULT ClipHolder::putref_DataObj(IDispatch* Given) { return Data_ = Ref<IDispatch>(Given), S_OK; }
HRESULT ClipHolder::get_ClassWord(BSTR* Text) {
    return Guard(__uuidof(::ClipItem), kClip, [&] { Give(Text, [&] { return ToBstr(ClassWord_); }); });
}
HRESULT ClipHolder::put_ClassWord(BSTR Text) {
    return Guard(__uuidof(::ClipItem), kClip, [&] { ClassWord_ = FromBstr(Text); });
}

namespace {

// A node of the host. What it holds beside the children stands in these tables; a member that it lacks is
// empty.
struct TextField {
    const wchar_t* Name;
    HRESULT (STDMETHODCALLTYPE ::RegNode::*Get)(BSTR*);
    std::wstring RegObject::*Into;
};
struct NumberField {
    const wchar_t* Name;
    HRESULT (STDMETHODCALLTYPE ::RegNode::*Get)(LONG*);
    std::int32_t RegObject::*Into;
};

constexpr TextField kTexts[] = {
    {L"Name", &::RegNode::get_Name, &RegObject::Name},
    {L"Text", &::RegNode::get_Text, &RegObject::Text},
    {L"Desc", &::RegNode::get_Desc, &RegObject::Desc},
    {L"UserList", &::RegNode::get_UserList, &RegObject::UserList},
    {L"String3", &::RegNode::get_String3, &RegObject::String3},
    {L"String4", &::RegNode::get_String4, &RegObject::String4},
    {L"String5", &::RegNode::get_String5, &RegObject::String5},
};
constexpr NumberField kNumbers[] = {
    {L"Id", &::RegNode::get_Id, &RegObject::Id},
    {L"Version", &::RegNode::get_Version, &RegObject::Version},
    {L"Number2", &::RegNode::get_Number2, &RegObject::Number2},
    {L"Number3", &::RegNode::get_Number3, &RegObject::Number3},
};

class Reader {
  public:
    RegObject Read(IDispatch* From, int Depth) {
        if (!From) return {};
        if (const Ref<Node> Own = OwnOf<Node>(From)) return Own->Copy();
        if (Depth > kDeepest) TooDeep();
        if (const Ref<::RegNode> Early = As<::RegNode>(From)) return ReadEarly(*Early.Get(), Depth);
        return ReadByName(ByName(Ref<IDispatch>(From)), Depth);
    }

  private:
    /// The values of one node, each name once.
    class Values {
      public:
        explicit Values(RegObject& Of) : Of_(Of) {}
        void Take(const std::wstring& Name, const VARIANT& Held) {
            std::optional<RegValue> Value = Taken(L"Value(" + Name + L")", Held, ToRegValue);
            if (!Value) return;
            if (Names_.insert(Name).second)
                Of_.Values.push_back({Name, *std::move(Value)});
            else
                Of_.SetValue(Name, *std::move(Value));
        }

      private:
        RegObject& Of_;
        std::unordered_set<std::wstring> Names_;
    };

    void Count(long Further) {
        if (Further < 0 || Further > kMostNodes - Counted_) Raise(L"L'oggetto ha troppi elementi");
        Counted_ += Further;
    }

    RegObject ReadEarly(::RegNode& From, int Depth) {
        RegObject Made;
        for (const TextField& Field : kTexts) {
            Bstr Text;
            Check((From.*Field.Get)(Text.Out()), Field.Name);
            Made.*Field.Into = Text.Text();
        }
        for (const NumberField& Field : kNumbers) {
            LONG Number = 0;
            Check((From.*Field.Get)(&Number), Field.Name);
            Made.*Field.Into = static_cast<std::int32_t>(Number);
        }
        LONG Number = 0;
        Check(From.get_ValueCount(&Number), L"ValueCount");
        Count(Number);
        Values Named(Made);
        for (LONG I = 1; I <= Number; ++I) {
            Bstr Name;
            Check(From.get_ValueName(I, Name.Out()), L"ValueName");
            Variant Held;
            Check(From.get_Value(Name.Get(), Held.Out()), L"Value");
            Named.Take(Name.Text(), Held.Get());
        }
        LONG Children = 0;
        Check(From.get_ChildCount(&Children), L"ChildCount");
        Count(Children);
        for (LONG I = 1; I <= Children; ++I) {
            Ref<IDispatch> Child;
            Check(From.get_Child(I, Child.Out()), L"Child");
            Made.Children.push_back(Read(Child.Get(), Depth + 1));
        }
        return Made;
    }

    RegObject ReadByName(const ByName& From, int Depth) {
        RegObject Made;
        const std::optional<std::int32_t> Number = From.TryGet(L"ValueCount", NumberOf);
        const std::optional<std::int32_t> Children = From.TryGet(L"ChildCount", NumberOf);
        if (!Number && !Children && !From.Has(L"Name"))
            Raise(L"Oggetto dell'applicazione: non è un nodo, mancano Name, ValueCount e ChildCount");
        for (const TextField& Field : kTexts)
            if (std::optional<std::wstring> Held = From.TryGet(Field.Name, TextOf))
                Made.*Field.Into = *std::move(Held);
        for (const NumberField& Field : kNumbers)
            if (const std::optional<std::int32_t> Held = From.TryGet(Field.Name, NumberOf))
                Made.*Field.Into = *Held;
        Count(Number.value_or(0));
        Values Named(Made);
        for (std::int32_t I = 1; I <= Number.value_or(0); ++I) {
            const Variant Place(I);
            const Variant Name(std::wstring_view(From.Get(L"ValueName", TextOf, {&Place.Get()})));
            const Variant Held = From.Get(L"Value", {&Name.Get()});
            Named.Take(TextOf(Name.Get()), Held.Get());
        }
        Count(Children.value_or(0));
        for (std::int32_t I = 1; I <= Children.value_or(0); ++I)
            Made.Children.push_back(Read(From.Get(L"Child", ObjectOf, {&Variant(I).Get()}).Get(), Depth + 1));
        return Made;
    }

    long Counted_ = 0;
};

}  // namespace

RegObject ReadNode(IDispatch* From) { return Reader().Read(From, 0); }

}  // namespace kv::com
