#include "frame/vDesignPar.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "frame/CoreUtil.h"
#include "frame/Failure.h"
#include "frame/MsgUtil.h"

namespace kv {
namespace {

// The duplicate list: the keywords of one text, upper-cased, found by hash. Its storage is kept from text to
// text, so that a parser that runs again and again allocates nothing here.
class DuplicateList {
  public:
    void Clear() noexcept {
        for (const Entry& E : Entries_) Slots_[E.Slot] = 0;  // as many as there were, not as many as fit
        Entries_.clear();
        Letters_.clear();
    }

    // True when `Keyword` stands in the list already; else it is added as the last.
    bool Note(std::wstring_view Keyword) {
        const std::size_t Begin = Letters_.size();
        Letters_.append(Keyword);
        for (std::size_t At = Begin; At < Letters_.size(); ++At) Letters_[At] = StrUtil::Upper(Letters_[At]);
        const std::uint32_t Hash = HashOf(std::wstring_view(Letters_).substr(Begin));
        if (2 * (Entries_.size() + 1) > Slots_.size()) Grow();
        std::size_t Slot = Hash & (Slots_.size() - 1);
        for (; Slots_[Slot] != 0; Slot = (Slot + 1) & (Slots_.size() - 1)) {
            const Entry& E = Entries_[Slots_[Slot] - 1];
            if (E.Hash == Hash && Text(E) == std::wstring_view(Letters_).substr(Begin)) {
                Letters_.resize(Begin);
                return true;
            }
        }
        Entries_.push_back({Begin, Keyword.size(), Hash, Slot});
        Slots_[Slot] = static_cast<std::uint32_t>(Entries_.size());
        return false;
    }

    std::wstring_view Last() const noexcept {
        return Entries_.empty() ? std::wstring_view{} : Text(Entries_.back());
    }

  private:
    struct Entry {
        std::size_t Begin;
        std::size_t Length;
        std::uint32_t Hash;
        std::size_t Slot;
    };

    // Two letters a step: each step waits for the one before.
    static std::uint32_t HashOf(std::wstring_view Keyword) noexcept {
        const auto Letter = [&](std::size_t At) {
            return At < Keyword.size() ? static_cast<std::uint64_t>(Keyword[At]) : 0U;
        };
        std::uint64_t Hash = 14695981039346656037U;
        for (std::size_t At = 0; At < Keyword.size(); At += 2)
            Hash = (Hash ^ Letter(At) ^ Letter(At + 1) << 32U) * 1099511628211U;
        return static_cast<std::uint32_t>(Hash ^ Hash >> 32U);
    }

    std::wstring_view Text(const Entry& E) const noexcept {
        return std::wstring_view(Letters_).substr(E.Begin, E.Length);
    }

    void Grow() {
        std::vector<std::uint32_t> Wider(std::max<std::size_t>(64, 2 * Slots_.size()), 0U);
        for (std::size_t I = 0; I < Entries_.size(); ++I) {
            std::size_t Slot = Entries_[I].Hash & (Wider.size() - 1);
            while (Wider[Slot] != 0) Slot = (Slot + 1) & (Wider.size() - 1);
            Wider[Slot] = static_cast<std::uint32_t>(I + 1);
            Entries_[I].Slot = Slot;
        }
        Slots_ = std::move(Wider);
    }

    std::wstring Letters_;
    std::vector<Entry> Entries_;
    std::vector<std::uint32_t> Slots_;  // place in Entries_ + 1, 0 when free; a power of two
};

DuplicateList& Duplicates() noexcept {
    static DuplicateList One;
    return One;
}

constexpr bool IsComment(std::wstring_view Line) noexcept {
    return Line.empty() || Line.front() == L'\'' || Line.front() == L';' || Line.front() == L'*';
}

// Where the line ends, npos without a line end. Quicker than looking for both characters at once.
std::size_t LineEndIn(std::wstring_view Text) noexcept {
    std::size_t At = Text.find(StrUtil::kLineEnd[0]);
    while (At != Text.npos && (At + 1 == Text.size() || Text[At + 1] != StrUtil::kLineEnd[1]))
        At = Text.find(StrUtil::kLineEnd[0], At + 1);
    return At;
}

}  // namespace

std::wstring_view SectionText::TakeLine() noexcept {
    if (!Within_) ++Line_;
    const std::size_t End = LineEndIn(Rest_);
    const std::wstring_view Line = Rest_.substr(0, End);
    Rest_ = End == std::wstring_view::npos ? std::wstring_view{}
                                           : StrUtil::TrimLeft(Rest_.substr(End + StrUtil::kLineEnd.size()));
    return StrUtil::TrimRight(Line);
}

bool GetFieldValue(SectionText& Buffer, std::wstring_view& Keyword, std::wstring_view& Value,
                   bool WholeLine) {
    static constexpr std::wstring_view kSource = L"vDesignPar.GetFieldValue";  // measured at compile time
    return Trap(kSource, Buffer, [&] {
        const std::wstring_view Line = Buffer.TakeLine();
        Keyword = Line;
        if (IsComment(Line)) {
            Keyword = {};
            return false;
        }
        if (WholeLine) return false;
        const std::size_t Equals = Line.find(L'=');
        if (Equals == std::wstring_view::npos) {
            std::wstring Text;
            MsgUtil::MessageText(kSyntaxFault, Line, Text);
            Raise(kSyntaxFault, Text);
        }
        Value = StrUtil::TrimLeft(Line.substr(Equals + 1));
        Keyword = StrUtil::TrimRight(Line.substr(0, Equals));
        if (Keyword.size() == Equals) {
            Keyword = Line.substr(0, Equals + 1);
        } else {
            Buffer.Keyword_.assign(Keyword).push_back(L'=');
            Keyword = Buffer.Keyword_;
        }
        return false;
    });
}

void CheckParmOnce(std::wstring_view Keyword) {
    if (!Duplicates().Note(Keyword)) return;
    std::wstring Text(L"Ripetizone del parametro ");
    Text.append(Keyword).append(L".");
    Raise(kDesignFault, Text, L"65536");
}

void ClearParmCheck() noexcept { Duplicates().Clear(); }

std::wstring LastParmChecked() { return std::wstring(Duplicates().Last()); }

std::wstring_view Unquote(std::wstring_view Value) noexcept {
    Value = StrUtil::Trim(Value);
    if (Value.empty() || Value.front() != StrUtil::QuoteChar() || Value.back() != StrUtil::QuoteChar())
        return Value;
    return Value.size() == 1 ? std::wstring_view{} : Value.substr(1, Value.size() - 2);
}

std::wstring_view NextFlag(std::wstring_view& Value) noexcept {
    const std::size_t Bar = Value.find(L'|');
    if (Bar == std::wstring_view::npos) return std::exchange(Value, std::wstring_view{});
    const std::wstring_view Word = StrUtil::TrimRight(Value.substr(0, Bar));
    Value = StrUtil::TrimLeft(Value.substr(Bar + 1));
    return Word;
}

int BoolWord(std::wstring& Value) {
    static constexpr std::wstring_view kTrue[] = {L"TRUE", L"VERO"};
    static constexpr std::wstring_view kFalse[] = {L"FALSE", L"FALSO"};
    StrUtil::UpperInPlace(Value);
    if (Value.empty()) Value = kFalse[0];
    if (Value == kTrue[0] || Value == kTrue[1]) return -1;
    if (Value == kFalse[0] || Value == kFalse[1]) return 0;
    return 1;
}

void BadValue(std::wstring_view Keyword, std::wstring_view Value) {
    std::wstring Text(L"Valore sconosciuto per il parametro ");
    Text.append(Keyword).append(L"(").append(Value).append(L")");
    Raise(Text);
}

void UnknownParm(std::wstring_view Keyword, std::wstring_view Value) {
    std::wstring Text(L"Parametro non riconosciuto: ");
    Text.append(Keyword).append(Value);
    Raise(Text);
}

void AppendTabs(std::wstring& Buffer, std::int32_t Indent) {
    if (Indent > 0) Buffer.append(static_cast<std::size_t>(Indent), L'\t');
}

void AppendParm(std::wstring& Buffer, std::int32_t Indent, std::wstring_view Keyword, std::wstring_view Value,
                wchar_t Quote) {
    AppendTabs(Buffer, Indent);
    Buffer.append(Keyword).push_back(L' ');
    if (Quote != 0) Buffer.push_back(Quote);
    Buffer.append(Value);
    if (Quote != 0) Buffer.push_back(Quote);
    Buffer.append(StrUtil::kLineEnd);
}

std::wstring FormatParm(std::wstring_view Keyword, std::wstring_view Value, wchar_t Quote) {
    std::wstring Line;
    AppendParm(Line, 0, Keyword, Value, Quote);
    return Line;
}

void DispHeader(std::wstring& Buffer, const Identity& Record, std::int32_t Indent) {
    const auto Line = [&](std::wstring_view Keyword, std::wstring_view Value) {
        AppendTabs(Buffer, Indent);
        Buffer.append(L"'[").append(Keyword).append(L" ").append(Value).append(L"]").append(
            StrUtil::kLineEnd);
    };
    Line(L"ID=", std::to_wstring(Record.Id));
    Line(L"NAME=", Record.Name);
    Line(L"VERSION=", std::to_wstring(Record.Version));
}

bool ServerParmsSave(std::wstring_view Main, std::wstring_view Others, std::wstring& Result) {
    return Trap(L"vDesignPar.ServerParmsSave", [&] {
        if (Main.empty()) {
            if (!Others.empty()) Raise(L"Non è stato specificato il server.");
            Result.clear();
            return false;
        }
        std::wstring Joined(Main);
        Joined.append(1, L'\0').append(Others);
        CoreUtil::TrimEnd(Joined, std::wstring_view(L"\0", 1));
        std::vector<std::wstring> Names;
        for (std::wstring_view Rest = Joined;;) {
            const std::size_t End = Rest.find(L'\0');
            Names.emplace_back(Rest.substr(0, End));
            if (End == Rest.npos) break;
            Rest.remove_prefix(End + 1);
        }
        Names.erase(Names.begin());
        Result = MsgUtil::PackServer(Main, Names);
        return false;
    });
}

bool ServerParmsDisp(std::wstring_view Code, std::wstring_view Keyword1, std::wstring_view Keyword2,
                     std::wstring& Buffer, std::int32_t Indent) {
    return Trap(L"vDesignPar.ServerParmsDisp", [&] {
        std::wstring Main;
        std::vector<std::wstring> Others;
        if (MsgUtil::UnpackServer(Code, Main, Others)) {
            std::wstring Text;
            MsgUtil::MessageText(kWrongParameters, {}, Text);
            Raise(kWrongParameters, Text);
        }
        AppendParm(Buffer, Indent, Keyword1, Main, StrUtil::QuoteChar());
        for (const std::wstring& Name : Others)
            AppendParm(Buffer, Indent, Keyword2, Name, StrUtil::QuoteChar());
        return false;
    });
}

}  // namespace kv
