#include "host/ObjectJson.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "frame/Failure.h"
#include "host/Text.h"

namespace kv::host {
namespace {

using Json = nlohmann::ordered_json;

/// A field of an object and the member that holds it; `Always` when it is written also where it is empty.
struct Field {
    const char* Member;
    std::variant<std::wstring RegObject::*, std::int32_t RegObject::*> Place;
    bool Always;
};

// In the order in which they are written; Values and Children follow.
constexpr Field kFields[] = {
    {"Name", &RegObject::Name, true},         {"Desc", &RegObject::Desc, true},
    {"Version", &RegObject::Version, true},   {"Id", &RegObject::Id, true},
    {"UserList", &RegObject::UserList, true}, {"Text", &RegObject::Text, false},
    {"Number2", &RegObject::Number2, false},  {"Number3", &RegObject::Number3, false},
    {"String3", &RegObject::String3, false},  {"String4", &RegObject::String4, false},
    {"String5", &RegObject::String5, false},
};
constexpr const char* kValues = "Values";
constexpr const char* kChildren = "Children";

constexpr const wchar_t* kNoWholeNumber = L" non è un numero intero a 32 bit";

[[noreturn]] void Refuse(std::wstring_view Called, std::wstring_view Reason) {
    Raise(L"Dati errati nell'oggetto " + std::wstring(Called) + L": " + std::wstring(Reason) + L".");
}

// Writing.

class ObjectWriter {
  public:
    explicit ObjectWriter(std::wstring_view Called) : Called_(Called) {}

    Json Write(const RegObject& Object, std::size_t Level) const {
        if (Level > kDeepestObject) Refuse(Called_, L"troppi livelli");
        Json Made = Json::object();
        Made.get_ref<Json::object_t&>().reserve(std::size(kFields) + 2);
        for (const Field& Entry : kFields)
            std::visit(
                [&](auto Place) {
                    const auto& Content = Object.*Place;
                    if (Entry.Always || Content != std::remove_cvref_t<decltype(Content)>{})
                        Put(Made, Entry.Member, Written(Content, Entry.Member));
                },
                Entry.Place);
        Put(Made, kValues, Values(Object));
        Json Children = Json::array();
        for (const RegObject& Child : Object.Children) Children.push_back(Write(Child, Level + 1));
        Put(Made, kChildren, std::move(Children));
        return Made;
    }

  private:
    // Members are put at the end without a look for one of the same name: that would be a walk for each.
    static void Put(Json& Object, std::string Member, Json Value) {
        Object.get_ref<Json::object_t&>().emplace_back(std::move(Member), std::move(Value));
    }

    Json Values(const RegObject& Object) const {
        Json Made = Json::object();
        std::unordered_set<std::wstring_view> Names;
        for (const RegNamedValue& Entry : Object.Values) {
            if (!Names.insert(Entry.Name).second)
                Refuse(Called_, L"il valore " + Entry.Name + L" è ripetuto");
            std::string Name = Text(Entry.Name, kValues);
            Json Value = std::visit([&](const auto& Held) { return Written(Held, Name); }, Entry.Value);
            Put(Made, std::move(Name), std::move(Value));
        }
        return Made;
    }

    static Json Written(std::int32_t Value, std::string_view) { return Value; }
    static Json Written(bool Value, std::string_view) { return Value; }
    Json Written(const std::wstring& Value, std::string_view Of) const { return Text(Value, Of); }

    std::string Text(std::wstring_view Content, std::string_view Of) const {
        std::optional<std::string> Bytes = ToUtf8(Content);
        if (!Bytes)
            Raise(L"Testo non valido nell'oggetto " + std::wstring(Called_) + L": " + FromUtf8Lossy(Of) +
                  L".");
        return *std::move(Bytes);
    }

    std::wstring_view Called_;
};

// Reading. The object grows as the text goes by; what is open is kept here and not on the stack.

using SaxBase = nlohmann::json_sax<nlohmann::json>;

class ObjectReader final : public SaxBase {
  public:
    explicit ObjectReader(std::wstring_view Called) : Called_(Called) {}

    RegObject Take() { return std::move(Root_); }

    bool null() override { return Other(); }
    bool boolean(bool Value) override {
        if (!InValues()) return Other();
        Add(Value);
        return true;
    }
    bool number_integer(std::int64_t Value) override { return Number(Value); }
    bool number_unsigned(std::uint64_t Value) override { return Number(Value); }
    bool number_float(double, const std::string&) override {
        if (!FieldAs<std::int32_t>() && !InValues()) return Other();
        Refuse(Called_, Where() + kNoWholeNumber);
    }
    bool string(std::string& Value) override {
        if (InValues()) {
            Add(Wide(Value));
        } else if (std::wstring* const Place = FieldAs<std::wstring>()) {
            *Place = Wide(Value);
        } else {
            return Other();
        }
        return true;
    }
    bool binary(nlohmann::json::binary_t&) override { return Other(); }

    bool key(std::string& Name) override {
        if (Passed_ > 0) return true;
        Key_ = std::move(Name);
        if (Open_.back().Within == Inside::Values) {
            if (!Names_.insert(Key_).second) Refuse(Called_, Where() + L" è ripetuto");
            return true;
        }
        Member_ = MemberOf(Key_);
        if (Member_ == kUnknown) return true;
        const std::uint32_t Bit = 1U << Member_;
        if ((Open_.back().Seen & Bit) != 0) Refuse(Called_, Where() + L" è ripetuto");
        Open_.back().Seen |= Bit;
        return true;
    }

    bool start_object(std::size_t) override {
        if (Open_.empty()) {
            Enter(Inside::Object, Root_);
        } else if (Passing()) {
            Pass();
        } else if (Open_.back().Within == Inside::Children) {
            Enter(Inside::Object, Open_.back().Object->Children.emplace_back());
        } else if (Open_.back().Within == Inside::Object && Member_ == kValuesMember) {
            Names_ = NameSet();  // clearing takes time by the most names that were ever held
            Enter(Inside::Values, *Open_.back().Object);
        } else {
            Wrong();
        }
        return true;
    }
    bool start_array(std::size_t) override {
        if (Passing())
            Pass();
        else if (!Open_.empty() && Open_.back().Within == Inside::Object && Member_ == kChildrenMember)
            Enter(Inside::Children, *Open_.back().Object);
        else
            Wrong();
        return true;
    }
    bool end_object() override { return Leave(); }
    bool end_array() override { return Leave(); }

    bool parse_error(std::size_t Position, const std::string&, const nlohmann::json::exception&) override {
        RefuseText(Position);
    }
    [[noreturn]] void RefuseText(std::size_t Position) const {
        Refuse(Called_, L"il testo non è JSON valido (byte " + std::to_wstring(Position) + L")");
    }

  private:
    using NameSet = std::unordered_set<std::string>;
    enum class Inside { Object, Values, Children };
    struct Bracket {
        Inside Within;
        RegObject* Object;
        std::uint32_t Seen = 0;  // the members that have stood, one bit each
    };

    static constexpr std::size_t kValuesMember = std::size(kFields);
    static constexpr std::size_t kChildrenMember = kValuesMember + 1;
    static constexpr std::size_t kUnknown = kChildrenMember + 1;
    static_assert(kUnknown <= std::numeric_limits<std::uint32_t>::digits);

    static std::size_t MemberOf(std::string_view Name) {
        if (Name == kValues) return kValuesMember;
        if (Name == kChildren) return kChildrenMember;
        const auto At = std::find_if(std::begin(kFields), std::end(kFields),
                                     [&](const auto& Entry) { return Entry.Member == Name; });
        return At == std::end(kFields) ? kUnknown : static_cast<std::size_t>(At - std::begin(kFields));
    }

    // Whether what comes lies within a member that is not known.
    bool Passing() const {
        return Passed_ > 0 ||
               (!Open_.empty() && Open_.back().Within == Inside::Object && Member_ == kUnknown);
    }
    void Pass() {
        if (++Passed_ > kDeepestObject) Refuse(Called_, L"troppi livelli");
    }

    // A child has one bracket of its own and one of the list that it stands in.
    void Enter(Inside Within, RegObject& Object) {
        if (Open_.size() + 1 > 2 * kDeepestObject - (Within == Inside::Object ? 1 : 0))
            Refuse(Called_, L"troppi livelli");
        Open_.push_back({Within, &Object});
    }
    bool Leave() {
        if (Passed_ > 0)
            --Passed_;
        else
            Open_.pop_back();
        return true;
    }

    bool InValues() const { return !Open_.empty() && Open_.back().Within == Inside::Values; }
    void Add(RegValue Value) { Open_.back().Object->Values.push_back({Wide(Key_), std::move(Value)}); }

    // The field that the member stands for, null when it is none of that type.
    template <class Type>
    Type* FieldAs() const {
        if (Passing() || Open_.empty() || Open_.back().Within != Inside::Object) return nullptr;
        if (Member_ >= std::size(kFields)) return nullptr;
        const auto* const Place = std::get_if<Type RegObject::*>(&kFields[Member_].Place);
        return Place ? &(Open_.back().Object->**Place) : nullptr;
    }

    template <class Integer>
    bool Number(Integer Value) {
        std::int32_t* const Place = FieldAs<std::int32_t>();
        if (!Place && !InValues()) return Other();
        if (!std::in_range<std::int32_t>(Value)) Refuse(Called_, Where() + kNoWholeNumber);
        if (Place)
            *Place = static_cast<std::int32_t>(Value);
        else
            Add(static_cast<std::int32_t>(Value));
        return true;
    }

    // A value that fits nothing is let be within a member that is not known.
    bool Other() const {
        if (!Passing()) Wrong();
        return true;
    }
    [[noreturn]] void Wrong() const {
        if (Open_.empty()) Refuse(Called_, L"il testo non è un oggetto");
        if (Open_.back().Within == Inside::Children)
            Refuse(Called_, L"un elemento di Children non è un oggetto");
        Refuse(Called_, Where() + L" non è del tipo giusto");
    }
    std::wstring Where() const {
        if (Open_.empty()) return L"il testo";
        if (Open_.back().Within == Inside::Children) return L"un elemento di Children";
        return (InValues() ? L"il valore " : L"il membro ") + Wide(Key_);
    }
    // The parser lets nothing by that is not UTF-8.
    static std::wstring Wide(std::string_view Bytes) { return FromUtf8Lossy(Bytes); }

    std::wstring_view Called_;
    RegObject Root_;
    std::vector<Bracket> Open_;
    std::size_t Passed_ = 0;  // brackets open within a member that is not known
    std::string Key_;
    std::size_t Member_ = 0;
    NameSet Names_;  // of the values so far
};

}  // namespace

Json ToJson(const RegObject& Object) { return ObjectWriter(Object.Name).Write(Object, 1); }

std::string ToJsonText(const RegObject& Object) { return ToJson(Object).dump(); }

RegObject FromJsonText(std::string_view Text, std::wstring_view Called) {
    ObjectReader Reader(Called);
    // The parser takes a NUL for the end of the text.
    if (const std::size_t Nul = Text.find('\0'); Nul != std::string_view::npos) Reader.RefuseText(Nul + 1);
    nlohmann::json::sax_parse(Text, static_cast<SaxBase*>(&Reader));
    return Reader.Take();
}

}  // namespace kv::host
