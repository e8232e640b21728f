#include "items/definitions/diStopWord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "records/Sections.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = StopWordRecord;

constexpr std::wstring_view kWords = L"MESSAGE";
constexpr std::wstring_view kWordsCaption = L"Parole";
constexpr std::wstring_view kDefaultSeparator = L"=";

constexpr LadderRow<R> kParmLadder[] = {
    {L"ANYWHERE=", read::BoolOrTrue<&R::Anywhere>},
    {L"FLAGS=", read::Flags<&R::Flags, kStopWordFlags>},
    {L"IFFIRST=", read::BoolOrTrue<&R::IfFirst>},
    {L"IFNOTONLY=", read::BoolOrTrue<&R::IfNotOnly>},
    {L"IGNORECASE=", read::BoolOrTrue<&R::IgnoreCase>},
    {L"MIRROROF=", read::Text<&R::MirrorOf>},
    {L"SEPARATOR=",
     [](R& Into, Parm& P) {
         P.Unquote();
         if (P.Value.empty()) P.Bad();
         Into.Separator = P.Value;
         return false;
     }},
};

constexpr LineRow<R> kParmLines[] = {
    {L"ANYWHERE=", write::Bool<&R::Anywhere>},
    {L"IFFIRST=", write::Bool<&R::IfFirst>},
    {L"IFNOTONLY=", write::Bool<&R::IfNotOnly>},
    {L"IGNORECASE=", write::Bool<&R::IgnoreCase>},
    {L"SEPARATOR=",
     [](R& From, std::wstring_view Keyword, LineWriter& Out) {
         // What is shown is also what holds from now on.
         if (From.Separator.empty()) From.Separator = kDefaultSeparator;
         Out.Quoted(Keyword, From.Separator);
         return false;
     }},
    {L"FLAGS=", write::Flags<&R::Flags, kStopWordFlags>},
    {L"MIRROROF=", write::Quoted<&R::MirrorOf>},
};

constexpr auto kFlagChoices = NoneThen(kStopWordFlags);

constexpr Choice kChoices[] = {
    {kParms, L"ANYWHERE=", kBooleanWords},  {kParms, L"IFFIRST=", kBooleanWords},
    {kParms, L"IFNOTONLY=", kBooleanWords}, {kParms, L"IGNORECASE=", kBooleanWords},
    {kParms, L"FLAGS=", kFlagChoices},
};

std::wstring_view SeparatorOf(const R& Record) {
    return Record.Separator.empty() ? kDefaultSeparator : std::wstring_view(Record.Separator);
}

// One line of the word section on its way into the packed table.
class PairLine {
  public:
    PairLine(std::wstring_view Line, std::int32_t Number) : Line_(Line), Number_(Number) {}

    // Parts the line at the first separator.
    void Part(std::wstring_view Separator, std::wstring_view& Word, std::wstring_view& Replacement) const {
        const std::size_t At = Line_.find(Separator);
        if (At == std::wstring_view::npos)
            Refuse(L" non contiene il separatore (" + std::wstring(Separator) + L")");
        Word = Line_.substr(0, At);
        Replacement = Line_.substr(At + Separator.size());
    }

    // What stands between the quotes that a half must have.
    std::wstring_view Quoted(std::wstring_view Half) const {
        Half = StrUtil::Trim(Half);
        if (Half.empty() || Half.front() != StrUtil::QuoteChar() || Half.back() != StrUtil::QuoteChar())
            Refuse(L" contiene parole non racchiuse fra doppi apici.");
        return kv::Unquote(Half);
    }

    [[noreturn]] void Refuse(std::wstring_view What) const {
        std::wstring Text(L"La riga #");
        Text.append(std::to_wstring(Number_)).append(What);
        Raise(Text);
    }

  private:
    std::wstring_view Line_;
    std::int32_t Number_;
};

// The packed table as it grows. A word is a repeat when the text already holds a code 0, the word and a tab.
// Where such a word begins is kept under its hash, so that a repeat is found without walking the text; a tab
// inside a word or a replacement ends one such word more. Only a word with a code 0 inside, which may begin
// in one pair and end in another, is looked for in the text itself.
class PackedWords {
  public:
    // `Room` is what the text will need at most.
    explicit PackedWords(std::size_t Room) : Text_(1, L'\0'), Slots_(kFirstSlots) { Text_.reserve(Room + 1); }

    bool Holds(std::wstring_view Word) const {
        if (Word.find(L'\0') == Word.npos) return Slots_[SlotOf(Word, HashOf(Word))].Begin != kFree;
        std::wstring Wanted(1, L'\0');
        Wanted.append(Word).push_back(L'\t');
        return Text_.find(Wanted) != Text_.npos;
    }

    void Add(std::wstring_view Word, std::wstring_view Replacement) {
        std::size_t Begin = Text_.size();
        const std::size_t First = Begin;
        Text_.append(Word).append(1, L'\t').append(Replacement).push_back(L'\0');
        const std::size_t LastTab = Text_.rfind(L'\t');
        std::uint64_t Hash = kEmptyHash;
        for (std::size_t At = First; At <= LastTab; ++At) {
            if (Text_[At] == L'\0') {
                Begin = At + 1;
                Hash = kEmptyHash;
                continue;
            }
            if (Text_[At] == L'\t') Note(Begin, At, Hash);
            Hash = Next(Hash, Text_[At]);
        }
    }

    std::wstring Take() && { return std::move(Text_); }

  private:
    static constexpr std::size_t kFree = 0;  // no word begins there
    static constexpr std::size_t kFirstSlots = 64;
    struct Slot {
        std::size_t Begin = kFree;
        std::uint64_t Hash = 0;
    };

    std::size_t HomeOf(std::uint64_t Hash) const noexcept {
        return static_cast<std::size_t>(Hash ^ Hash >> 32U) & (Slots_.size() - 1);
    }
    std::size_t Behind(std::size_t At) const noexcept { return (At + 1) & (Slots_.size() - 1); }

    // Where a word is, or goes.
    std::size_t SlotOf(std::wstring_view Word, std::uint64_t Hash) const {
        const auto IsIt = [&](const Slot& Known) {
            const std::wstring_view Rest = std::wstring_view(Text_).substr(Known.Begin);
            return Known.Hash == Hash && Rest.starts_with(Word) && Rest[Word.size()] == L'\t';
        };
        std::size_t At = HomeOf(Hash);
        while (Slots_[At].Begin != kFree && !IsIt(Slots_[At])) At = Behind(At);
        return At;
    }

    void Note(std::size_t Begin, std::size_t End, std::uint64_t Hash) {
        if (2 * (Count_ + 1) > Slots_.size()) Grow();
        Slot& Place = Slots_[SlotOf(std::wstring_view(Text_).substr(Begin, End - Begin), Hash)];
        if (Place.Begin != kFree) return;
        Place = {Begin, Hash};
        ++Count_;
    }

    void Grow() {
        std::vector<Slot> Before(2 * Slots_.size());
        Before.swap(Slots_);
        for (const Slot& Known : Before) {
            if (Known.Begin == kFree) continue;
            std::size_t At = HomeOf(Known.Hash);
            while (Slots_[At].Begin != kFree) At = Behind(At);
            Slots_[At] = Known;
        }
    }

    // Character by character, so that the hash of each beginning of a text comes with that of the text.
    static constexpr std::uint64_t kEmptyHash = 1469598103934665603U;
    static std::uint64_t Next(std::uint64_t Hash, wchar_t C) noexcept {
        return (Hash ^ static_cast<std::uint64_t>(C)) * 1099511628211U;
    }
    static std::uint64_t HashOf(std::wstring_view Word) noexcept {
        std::uint64_t Hash = kEmptyHash;
        for (const wchar_t C : Word) Hash = Next(Hash, C);
        return Hash;
    }

    std::wstring Text_;
    std::vector<Slot> Slots_;  // a power of two
    std::size_t Count_ = 0;
};

}  // namespace

bool diStopWord::SaveData(const Head& At, std::wstring&, std::wstring& Buffer, RegData*) {
    return Trap(L"diStopWord.SaveData", [&] {
        const bool SyntaxOn = Tree().SyntaxOn();
        if (At.Key == kWords) return SaveTable(Buffer);
        if (At.Key == kParms) return SaveParm(Buffer, SyntaxOn);
        return false;
    });
}

bool diStopWord::Save(RegData& Clsid) {
    return Trap(L"diStopWord.Save", [&] { return Record().Save(Clsid); });
}

bool diStopWord::MoveData(Head&, std::int32_t) { return true; }

bool diStopWord::LoadData(RegData& Clsid) {
    return Trap(L"diStopWord.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kWords, kWordsCaption);
        vdbShared::AddLeaf(Tree(), kWords, kWordsCaption);
        return AddChoices(Tree(), kChoices);
    });
}

bool diStopWord::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                               std::wstring& Id) {
    return Trap(L"diStopWord.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diStopWord::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diStopWord.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        for (const std::wstring_view Section : {kParms, kWords})
            if (DispData(vdbShared::ExportHead(Section), Buffer, true, {}, 1)) return true;
        return false;
    });
}

bool diStopWord::EditData(const Head& At, std::wstring& NewItemKey) {
    return Trap(L"diStopWord.EditData", [&] {
        vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diStopWord::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions,
                          std::int32_t Indent) {
    return Trap(L"diStopWord.DispData", [&] {
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, Indent, [&] {
            const std::int32_t Inner = vdbShared::InnerIndent(Indent);
            if (At.Key == kWords) return DispTable(Buffer, Inner);
            if (At.Key == kParms) return DispParm(Buffer, Inner);
            return false;
        });
    });
}

bool diStopWord::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diStopWord.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diStopWord::DeleteData(const Head&, bool) { return false; }

bool diStopWord::SaveParm(std::wstring& Buffer, bool SyntaxOn) {
    return SaveSection(L"diStopWord.SaveParm", Scratch::Parameters, kParmLadder, Record(), Buffer, SyntaxOn,
                       [&](const R&) {
                           // The record before this text is asked, not the text: shown once, it has a
                           // separator.
                           if (Record().Separator.empty())
                               Raise(L"Non è stato definito il separatore delle stringhe per la tabella.");
                       });
}

bool diStopWord::DispParm(std::wstring& Buffer, std::int32_t Indent) {
    return DispSection(L"diStopWord.DispParm", kParmLines, Record(), Buffer, Indent);
}

bool diStopWord::SaveTable(std::wstring& Buffer) {
    SectionText Text(Buffer);
    return Trap(L"diStopWord.SaveTable", Text, [&] {
        const std::wstring Separator(SeparatorOf(Record()));
        PackedWords Packed(Buffer.size());  // a pair is never longer packed than typed
        std::wstring_view Line;
        std::wstring_view Unused;
        while (!Text.Empty()) {
            if (GetFieldValue(Text, Line, Unused, true)) return true;
            if (Line.empty()) continue;
            const PairLine Pair(Line, Text.Line());
            std::wstring_view Word;
            std::wstring_view Replacement;
            Pair.Part(Separator, Word, Replacement);
            Word = Pair.Quoted(Word);
            if (Word.empty()) Pair.Refuse(L" contiene una stringa vuota.");
            if (Packed.Holds(Word))
                Pair.Refuse(L" contiene la parola " + std::wstring(Word) + L" più di una volta.");
            Packed.Add(Word, Pair.Quoted(Replacement));
        }
        Record().Table = std::move(Packed).Take();
        return false;
    });
}

bool diStopWord::DispTable(std::wstring& Buffer, std::int32_t Indent) {
    return Trap(L"diStopWord.DispTable", [&] {
        const std::wstring_view Separator = SeparatorOf(Record());
        const auto Pair = [&](std::wstring_view Mark, std::wstring_view Word, std::wstring_view Replacement) {
            const wchar_t Quote = StrUtil::QuoteChar();
            AppendTabs(Buffer, Indent);
            Buffer.append(Mark).push_back(Quote);
            Buffer.append(Word).push_back(Quote);
            Buffer.append(Separator).push_back(Quote);
            Buffer.append(Replacement).push_back(Quote);
            Buffer.append(StrUtil::kLineEnd);
        };
        std::wstring_view Rest(Record().Table);
        const auto Pairs = static_cast<std::size_t>(std::count(Rest.begin(), Rest.end(), L'\0'));
        const std::size_t Marks = Separator.size() + 4 + StrUtil::kLineEnd.size();
        Buffer.reserve(Buffer.size() + Rest.size() + Pairs * (Marks + static_cast<std::size_t>(Indent)));
        if (!Rest.empty() && Rest.front() == L'\0') Rest.remove_prefix(1);
        while (!Rest.empty()) {
            const std::wstring_view Entry = Rest.substr(0, Rest.find(L'\0'));
            Rest.remove_prefix(std::min(Entry.size() + 1, Rest.size()));
            const std::size_t Tab = Entry.find(L'\t');
            Pair({}, Entry.substr(0, Tab),
                 Tab == std::wstring_view::npos ? std::wstring_view{} : Entry.substr(Tab + 1));
        }
        Pair(L"'", L"ParolaDaCercare", L"ParolaDiSostituzione");
        DispHeader(Buffer, Record(), Indent);
        return false;
    });
}

}  // namespace kv
