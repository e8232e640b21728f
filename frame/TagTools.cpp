#include "frame/TagTools.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "frame/CoreUtil.h"
#include "frame/DesignTree.h"
#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"

namespace kv {
namespace {

constexpr std::array<std::wstring_view, 3> kTagClasses{L"PROFILE", L"TABLE", L"IMPORTPROC"};
constexpr std::array<std::wstring_view, 1> kMessageClasses{L"VCLIENT"};

Platform& Door() { return CoreUtil::Instance().Door(); }

// Runs `Body` under the wait pointer, which goes however that ends.
template <class Body>
bool Waiting(std::wstring_view Source, Body&& Run) {
    Door().SetPointer(kPointerWait);
    const bool Failed = Trap(Source, Run);
    Door().SetPointer(kPointerDefault);
    return Failed;
}

// Whether the tool serves the class; where it does not, the operator is told.
bool Served(std::wstring_view ClassWord, std::span<const std::wstring_view> Classes) {
    if (std::find(Classes.begin(), Classes.end(), ClassWord) != Classes.end()) return true;
    static_cast<void>(Door().MessageBox(kToolNotServed, box::kOk));
    return false;
}

std::vector<std::wstring> FreeRuns(const TagFields& Fields) {
    std::vector<bool> Taken(static_cast<std::size_t>(kGreatestTag) + 2, false);
    Taken.back() = true;  // the run behind the highest tag ends here
    for (const TagField& Field : Fields)
        if (*Field.Tag >= 1 && *Field.Tag <= kGreatestTag) Taken[static_cast<std::size_t>(*Field.Tag)] = true;
    std::vector<std::wstring> Runs;
    for (std::size_t First = 1; First <= static_cast<std::size_t>(kGreatestTag);) {
        std::size_t Behind = First;
        while (!Taken[Behind]) ++Behind;
        if (Behind == First + 1)
            Runs.push_back(std::to_wstring(First));
        else if (Behind > First)
            Runs.push_back(std::to_wstring(First) + L" - " + std::to_wstring(Behind - 1));
        First = Behind + 1;
    }
    return Runs;
}

// Tags 1 to n in list order; group tags follow.
void NumberAnew(const TagFields& Fields) {
    // By level, the tag of the group field seen last since the last one of level 1; what was seen before
    // that counts for nothing, and is told by its head.
    struct Group {
        std::int32_t Tag = 0;
        std::int32_t Head = -1;
    };
    std::vector<Group> Groups;
    std::int32_t Head = 0;
    std::int32_t Next = 0;
    for (const TagField& Field : Fields) {
        *Field.Tag = ++Next;
        if (!Field.GroupTag || *Field.GroupTag == 0) continue;
        if (Field.Level < 1) {  // below no level: in no group
            *Field.GroupTag = 0;
            continue;
        }
        const auto Level = static_cast<std::size_t>(Field.Level);
        if (Level == 1) Head = Next;
        // What is deeper than any list is long needs no group.
        if (Level <= Fields.size() && Groups.size() < Level) Groups.resize(Level);
        if (Level <= Groups.size()) Groups[Level - 1] = {Next, Head};
        if (Level == 1) {
            *Field.GroupTag = Next;
        } else {
            // A level that was jumped over has none.
            const Group Above = Level - 2 < Groups.size() ? Groups[Level - 2] : Group{};
            *Field.GroupTag = Above.Head == Head ? Above.Tag : 0;
        }
    }
}

// Asks for a file and writes into it what `Write(Module)` makes. A cancelled dialog writes nothing.
template <class Maker>
bool WriteModule(std::wstring_view ClassWord, std::span<const std::wstring_view> Classes, Maker&& Write) {
    return Trap(L"vdbcModule.ExportFieldsToConsts", [&] {
        if (!Served(ClassWord, Classes)) return false;
        constexpr std::int32_t kDialogFlags = 2664450;
        const std::optional<std::wstring> Path =
            Door().SaveFile(L"File di uscita", L"Moduli VB|*.BAS|Tutti i file|*.*", 1, kDialogFlags);
        if (!Path) return false;
        // The dialog has asked before it gives the name of a file that exists.
        constexpr std::int32_t kMode =
            mode::kRecordLength | mode::kCreate | mode::kReadWrite | mode::kTruncate;
        FileNumber File;
        if (const std::int32_t Refused = OpenFile(*Path, kMode, 16, 0, File); Refused != 0)
            Raise(Refused, L"Impossibile creare il file " + *Path);
        std::wstring Module;
        Write(Module);
        File.Write(StrUtil::ToBytes(Module));
        return false;
    });
}

// `Public Const <prefix><name><suffix>=<value>`, blanks in the name as "_".
void AddConstant(std::wstring& Module, std::wstring_view Prefix, std::wstring Name, std::wstring_view Suffix,
                 std::wstring_view Value) {
    std::replace(Name.begin(), Name.end(), L' ', L'_');
    Module.append(L"Public Const ").append(Prefix).append(Name).append(Suffix).append(L"=").append(Value);
    Module.append(StrUtil::kLineEnd);
}

std::wstring InQuotes(const std::wstring& Text) { return StrUtil::QuoteChar() + Text + StrUtil::QuoteChar(); }

}  // namespace

bool FindFreeTags(std::wstring_view ClassWord, const TagFields& Fields) {
    return Trap(L"vdbcModule.FindFreeTags", [&] {
        if (!Served(ClassWord, kTagClasses)) return false;
        std::vector<std::wstring> Runs;
        if (Waiting(L"vdbcModule.FindFreeTags", [&] {
                Runs = FreeRuns(Fields);
                return false;
            }))
            return true;
        Door().ShowList(L"Tag disponibili", Runs);
        return false;
    });
}

bool RenumTags(std::wstring_view ClassWord, const TagFields& Fields, bool& Changed) {
    Changed = false;
    return Trap(L"vdbcModule.RenumTags", [&] {
        if (!Served(ClassWord, kTagClasses)) return false;
        if (Door().MessageBox(L"Confermi la rinumerazione dei Tag?",
                              box::kYesNo + box::kQuestion + box::kDefaultSecond) != Answer::Yes)
            return false;
        if (Waiting(L"vdbcModule.RenumTags", [&] {
                NumberAnew(Fields);
                return false;
            }))
            return true;
        Changed = true;
        return false;
    });
}

bool ExportFieldsToConsts(std::wstring_view ClassWord, const TagFields& Fields) {
    return WriteModule(ClassWord, kTagClasses, [&](std::wstring& Module) {
        for (const TagField& Field : Fields)
            AddConstant(Module, L"FTG_", *Field.Name, {}, std::to_wstring(*Field.Tag));
    });
}

bool ExportFieldsToConsts(std::wstring_view ClassWord, const TagMessages& Messages) {
    return WriteModule(ClassWord, kMessageClasses, [&](std::wstring& Module) {
        constexpr std::wstring_view kPrefix = L"MSG_";
        Module.append(L"'vdbApplication Messages").append(StrUtil::kLineEnd);
        for (const TagMessage& Message : Messages)
            for (const TagMessage::LanguageText& One : Message.Texts)
                AddConstant(Module, kPrefix, *Message.Name, L"_" + *One.Language, InQuotes(*One.Text));
        for (const TagMessage& Message : Messages)
            AddConstant(Module, kPrefix, *Message.Name, L"_STR", InQuotes(*Message.Name));
        // The text in Italian, or else the first, stands for the message: any text gives it a code.
        std::int32_t Code = 9999;
        for (const TagMessage& Message : Messages) {
            ++Code;
            if (!Message.Texts.empty())
                AddConstant(Module, kPrefix, *Message.Name, L"_COD", std::to_wstring(Code));
        }
    });
}

bool RunTagTool(std::wstring_view Method, std::wstring_view ClassWord, const TagFields& Fields,
                DesignTree& Tree) {
    if (Method == L"FINDTAG") return FindFreeTags(ClassWord, Fields);
    if (Method != L"RENUMTAG") return false;
    bool Changed = false;
    if (RenumTags(ClassWord, Fields, Changed)) return true;
    if (Changed) Tree.MarkModified(true);
    return false;
}

}  // namespace kv
