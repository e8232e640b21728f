#include "frame/TagTools.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "frame/CoreUtil.h"
#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"

namespace kv {
namespace {

constexpr std::array<std::wstring_view, 3> kTagClasses{L"PROFILE", L"TABLE", L"IMPORTPROC"};

Platform& Door() { return CoreUtil::Instance().Door(); }

// Whether the tool serves the class; where it does not, the operator is told.
bool Served(std::wstring_view ClassWord, std::span<const std::wstring_view> Classes) {
    if (std::find(Classes.begin(), Classes.end(), ClassWord) != Classes.end()) return true;
    static_cast<void>(Door().MessageBox(L"Funzione non disponibile per questo oggetto.", box::kOk));
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

}  // namespace

bool FindFreeTags(std::wstring_view ClassWord, const TagFields& Fields) {
    return Trap(L"vdbcModule.FindFreeTags", [&] {
        if (!Served(ClassWord, kTagClasses)) return false;
        Door().SetPointer(kPointerWait);
        const std::vector<std::wstring> Runs = FreeRuns(Fields);
        Door().SetPointer(kPointerDefault);
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
        Door().SetPointer(kPointerWait);
        std::vector<std::int32_t> Groups;  // by level: the tag of the group field seen last, 0 where none was
        std::int32_t Next = 0;
        for (const TagField& Field : Fields) {
            *Field.Tag = ++Next;
            if (!Field.GroupTag || *Field.GroupTag == 0) continue;
            if (Field.Level <= 1) {
                *Field.GroupTag = Next;
                Groups.assign(1, Next);
            } else {
                const auto Level = static_cast<std::size_t>(Field.Level);
                // A level that was jumped over has no group; what is deeper than any list is long needs none.
                if (Level <= Fields.size() && Groups.size() < Level) Groups.resize(Level, 0);
                if (Level <= Groups.size()) Groups[Level - 1] = Next;
                *Field.GroupTag = Level - 2 < Groups.size() ? Groups[Level - 2] : 0;
            }
        }
        Changed = true;
        Door().SetPointer(kPointerDefault);
        return false;
    });
}

bool ExportFieldsToConsts(std::wstring_view ClassWord, const TagFields& Fields) {
    return Trap(L"vdbcModule.ExportFieldsToConsts", [&] {
        if (!Served(ClassWord, kTagClasses)) return false;
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
        for (const TagField& Field : Fields) {
            std::wstring Name = *Field.Name;
            std::replace(Name.begin(), Name.end(), L' ', L'_');
            Module.append(L"Public Const FTG_").append(Name).append(L"=").append(std::to_wstring(*Field.Tag));
            Module.append(StrUtil::kLineEnd);
        }
        File.Write(StrUtil::ToBytes(Module));
        return false;
    });
}

}  // namespace kv
