#include "host/RpcMessage.h"

#include <bitset>
#include <cstddef>
#include <vector>

#include "host/Text.h"

namespace kv::host {
namespace {

constexpr std::size_t kEscape = 6;  // length of \uXXXX
constexpr std::size_t kNowhere = std::string::npos;

constexpr int HexDigit(char C) noexcept {
    if (C >= '0' && C <= '9') return C - '0';
    if (C >= 'A' && C <= 'F') return C - 'A' + 10;
    if (C >= 'a' && C <= 'f') return C - 'a' + 10;
    return -1;
}

// The code unit of the escape \uXXXX at a backslash, -1 when it is another escape.
int EscapedUnit(std::string_view Line, std::size_t Backslash) noexcept {
    if (Backslash + kEscape > Line.size() || Line[Backslash + 1] != 'u') return -1;
    int Unit = 0;
    for (std::size_t I = Backslash + 2; I < Backslash + kEscape; ++I) {
        const int Digit = HexDigit(Line[I]);
        if (Digit < 0) return -1;
        Unit = Unit * 16 + Digit;
    }
    return Unit;
}

// Calls `Visit(place, unit)` for every backslash that begins an escape.
template <class Visitor>
void ForEachEscape(std::string_view Line, Visitor&& Visit) {
    for (std::size_t At = Line.find('\\'); At != kNowhere; At = Line.find('\\', At + 2))
        Visit(At, EscapedUnit(Line, At));
}

// Places of the escapes that are one half of a surrogate pair without the other.
std::vector<std::size_t> HalfPairs(std::string_view Line) {
    std::vector<std::size_t> Halves;
    std::size_t First = kNowhere;  // a first half that waits for its second
    ForEachEscape(Line, [&](std::size_t At, int Unit) {
        const bool IsFirst = Unit >= 0xD800 && Unit <= 0xDBFF;
        const bool IsSecond = Unit >= 0xDC00 && Unit <= 0xDFFF;
        const bool Paired = IsSecond && First != kNowhere && First + kEscape == At;
        if (First != kNowhere && !Paired) Halves.push_back(First);
        First = IsFirst ? At : kNowhere;
        if (IsSecond && !Paired) Halves.push_back(At);
    });
    if (First != kNowhere) Halves.push_back(First);
    return Halves;
}

// The private-use characters of the basic plane.
constexpr int kFirstPrivate = 0xE000;
constexpr int kPrivate = 0xF900 - kFirstPrivate;

// A private-use character that the line does not hold; -1 when it holds them all.
int UnusedCharacter(std::string_view Line) {
    std::bitset<kPrivate> Used;
    const auto Note = [&](int Unit) {
        if (Unit >= kFirstPrivate && Unit < kFirstPrivate + kPrivate)
            Used.set(static_cast<std::size_t>(Unit - kFirstPrivate));
    };
    ForEachEscape(Line, [&](std::size_t, int Unit) { Note(Unit); });
    for (std::size_t At = 0; At + 2 < Line.size(); ++At)
        if ((Line[At] & 0xFE) == 0xEE)
            Note((Line[At] & 0x0F) << 12 | (Line[At + 1] & 0x3F) << 6 | (Line[At + 2] & 0x3F));
    for (int I = 0; I < kPrivate; ++I)
        if (!Used.test(static_cast<std::size_t>(I))) return kFirstPrivate + I;
    return -1;
}

void WriteUnit(std::string& Line, std::size_t Backslash, int Unit) {
    for (std::size_t I = Backslash + kEscape - 1; I > Backslash + 1; --I, Unit /= 16)
        Line[I] = "0123456789ABCDEF"[Unit % 16];
}

std::string Utf8(int Unit) {
    return {static_cast<char>(0xE0 | Unit >> 12), static_cast<char>(0x80 | (Unit >> 6 & 0x3F)),
            static_cast<char>(0x80 | (Unit & 0x3F))};
}

[[noreturn]] void BadParam(const char* Name, std::string_view Wanted) {
    throw RpcError(rpc_code::kBadParams, std::string(Name).append(": ").append(Wanted));
}

}  // namespace

RpcError::RpcError(const KvError& Failed)
    : Code(Failed.Number), Message(ToUtf8Lossy(Failed.Description)), Data(Json::object()) {
    Data["Source"] = TextJson(Failed.Source);
    Data["Number"] = Failed.Number;
    if (Failed.Line > 0) Data["Line"] = Failed.Line;
}

Json TextJson(std::wstring_view Text) { return ToUtf8Lossy(Text); }

Json ResultMessage(const Json& Id, Json Result) {
    Json Message{{"jsonrpc", "2.0"}, {"id", Id}};
    Message["result"] = std::move(Result);
    return Message;
}

Json ErrorMessage(const Json& Id, const RpcError& Error) {
    Json Member{{"code", Error.Code}, {"message", Error.Message}};
    if (!Error.Data.is_null()) Member["data"] = Error.Data;
    Json Message{{"jsonrpc", "2.0"}, {"id", Id}};
    Message["error"] = std::move(Member);
    return Message;
}

Json RequestMessage(const std::optional<std::string>& Id, std::string_view Method, Json Params) {
    Json Message{{"jsonrpc", "2.0"}};
    if (Id) Message["id"] = *Id;
    Message["method"] = Method;
    if (!Params.is_null()) Message["params"] = std::move(Params);
    return Message;
}

bool RpcLine::IsText(const JsonIn& Member) const {
    return HalfPair.empty() || Member.get_ref<const std::string&>().find(HalfPair) == kNowhere;
}

std::optional<RpcLine> ParseLine(std::string Line) {
    RpcLine Read;
    if (Line.find('\0') != std::string::npos) return std::nullopt;  // the parser would take it for the end
    if (const std::vector<std::size_t> Halves = HalfPairs(Line); !Halves.empty()) {
        const int Unused = UnusedCharacter(Line);
        if (Unused < 0) return std::nullopt;
        for (const std::size_t At : Halves) WriteUnit(Line, At, Unused);
        Read.HalfPair = Utf8(Unused);
    }
    Read.Value = JsonIn::parse(Line, nullptr, false);
    if (Read.Value.is_discarded()) return std::nullopt;
    return Read;
}

const JsonIn* RpcParams::Find(const char* Name) const {
    const auto At = Members_.find(Name);
    return At == Members_.end() || At->is_null() ? nullptr : &*At;
}

std::optional<std::wstring> RpcParams::FindText(const char* Name) const {
    const JsonIn* const Member = Find(Name);
    if (!Member) return std::nullopt;
    if (!Member->is_string()) BadParam(Name, "a string is expected");
    std::optional<std::wstring> Text;
    if (Line_.IsText(*Member)) Text = FromUtf8(Member->get_ref<const std::string&>());
    if (!Text) BadParam(Name, "the text is not valid Unicode");
    return Text;
}

std::optional<std::int32_t> RpcParams::FindNumber(const char* Name) const {
    const JsonIn* const Member = Find(Name);
    if (!Member) return std::nullopt;
    constexpr std::string_view kWanted = "a whole number of 32 bits is expected";
    if (!Member->is_number_integer()) BadParam(Name, kWanted);
    const bool Fits = Member->is_number_unsigned() ? std::in_range<std::int32_t>(Member->get<std::uint64_t>())
                                                   : std::in_range<std::int32_t>(Member->get<std::int64_t>());
    if (!Fits) BadParam(Name, kWanted);
    return Member->get<std::int32_t>();
}

std::optional<bool> RpcParams::FindFlag(const char* Name) const {
    const JsonIn* const Member = Find(Name);
    if (!Member) return std::nullopt;
    if (!Member->is_boolean()) BadParam(Name, "true or false is expected");
    return Member->get<bool>();
}

}  // namespace kv::host
