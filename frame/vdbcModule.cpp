#include "frame/vdbcModule.h"

#include "frame/Failure.h"
#include "frame/Words.h"

namespace kv {

bool SetSaveFlags(SaveFlags& List, bool SyntaxOn) {
    return Trap(L"vdbcModule.SetSaveFlags", [&] {
        List.Clear();
        List.Add(SyntaxOn ? L"True" : L"False", kSyntaxOnFlag);
        return false;
    });
}

bool StrictFlag(const SaveFlags& List) {
    const std::wstring* Entry = List.Find(kSyntaxOnFlag);
    return Entry && *Entry == L"True";
}

bool AddChoices(DesignTree& Tree, std::span<const Choice> Choices) {
    for (const Choice& Row : Choices)
        for (const std::wstring_view Word : Row.Words)
            if (Tree.AddDefault(Row.Section, Row.Keyword, Word)) return true;
    return false;
}

bool BooleanDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword) {
    return Trap(L"vdbcModule.BooleanDefaults", [&] {
        const Choice Row{Section, Keyword, kBooleanWords};
        return AddChoices(Tree, {&Row, 1});
    });
}

}  // namespace kv
