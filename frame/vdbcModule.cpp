#include "frame/vdbcModule.h"

#include "frame/Failure.h"
#include "frame/vDesignPar.h"

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

namespace {

// One row of words for one keyword.
bool Offer(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword,
           std::span<const std::wstring_view> Words) {
    const Choice Row{Section, Keyword, Words};
    return AddChoices(Tree, {&Row, 1});
}

constexpr auto kToolTipChoices = NoneThen(kToolTipWords);
constexpr auto kTipsButtonChoices = WordsOf(kTipsButtonWords);
constexpr std::array<std::wstring_view, 5> kAlignChoices{L"NONE", L"LEFT", L"RIGHT", L"TOP", L"BOTTOM"};
constexpr auto kMergeChoices = WordsOf(kMergeWords);

constexpr std::int32_t kFirstOffered = 1;
constexpr std::int32_t kLastOffered = 49;

// The loop of the two flag converters: words as typed, an unknown one always refused.
bool SetBits(std::wstring_view Source, std::wstring_view Value, WordTable Words, std::int32_t& Flags) {
    return Trap(Source, [&] {
        Flags = 0;
        if (Value == kNone) return false;
        while (!Value.empty()) {
            const Word* const Known = FindWord(Words, NextFlag(Value));
            if (!Known) BadValue(kTipsButtons, Value);
            Flags |= Known->Value;
        }
        return false;
    });
}

}  // namespace

bool ToolTipsSet(std::wstring_view Value, std::int32_t& Flags) {
    return SetBits(L"vdbcModule.ToolTipsSet", Value, kToolTipWords, Flags);
}

bool TipsSetButtons(std::wstring_view Value, std::int32_t& Flags) {
    return SetBits(L"vdbcModule.TipsSetButtons", Value, kTipsButtonWords, Flags);
}

bool TipsSetAlignment(std::wstring_view Value, std::int32_t& Align, std::wstring_view Keyword) {
    return Trap(L"vdbcModule.TipsSetAlignment", [&] {
        const std::wstring Folded = StrUtil::UpperCase(Value);
        const Word* const Known = FindWord(kAlignWords, Folded.empty() ? kNone : std::wstring_view(Folded));
        if (!Known) BadValue(Keyword, Folded);
        Align = Known->Value;
        return false;
    });
}

bool ToolTipsGet(std::int32_t ToolTips, std::wstring& Buffer, std::int32_t Indent) {
    return Trap(L"vdbcModule.ToolTipsGet", [&] {
        AppendParm(Buffer, Indent, kToolTips, JoinWords(kToolTipWords, ToolTips));
        return false;
    });
}

bool TipsGetButtons(std::int32_t TipsButtons, std::wstring& Buffer, std::int32_t Indent) {
    return Trap(L"vdbcModule.TipsGetButtons", [&] {
        AppendParm(Buffer, Indent, kTipsButtons, JoinWords(kTipsButtonWords, TipsButtons));
        return false;
    });
}

bool TipsGetAlignment(std::int32_t Align, std::wstring& Buffer, std::int32_t Indent,
                      std::wstring_view Keyword) {
    return Trap(L"vdbcModule.TipsGetAlignment", [&] {
        const std::wstring_view Known = WordOf(kAlignWords, Align);
        AppendParm(Buffer, Indent, Keyword, Known.empty() ? kNone : Known);
        return false;
    });
}

bool TipsAlignCheck(std::wstring_view Value, std::int32_t Align, std::int32_t Width) {
    return Trap(L"vdbcModule.TipsAlignCheck", [&] {
        if (Value.empty()) return false;
        if (Align == 0) Raise(L"Selezionare una modalità di allineamento per TIPS=.");
        if (Width < 10 || Width > 90) Raise(L"Ampiezza relativa per TIPS= non corretta (10%-90%).");
        return false;
    });
}

bool BooleanDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword) {
    return Trap(L"vdbcModule.BooleanDefaults", [&] { return Offer(Tree, Section, Keyword, kBooleanWords); });
}

bool FilterDefaults(DesignTree& Tree, std::wstring_view Section) {
    return Trap(L"vdbcModule.FilterDefaults", [&] {
        return BooleanDefaults(Tree, Section, L"AUTOMATIC=") ||
               Offer(Tree, Section, L"MERGEWITH=", kMergeChoices);
    });
}

bool ActionDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view Keyword) {
    return Trap(L"vdbcModule.ActionDefaults", [&] {
        for (const Word& Row : kActionWords)
            if (Row.Value >= kFirstOffered && Row.Value <= kLastOffered)
                if (Tree.AddDefault(Section, Keyword, Row.Text)) return true;
        return false;
    });
}

bool HtmlDefaults(DesignTree& Tree, std::wstring_view Section) {
    return Trap(L"vdbcModule.HtmlDefaults", [&] { return ActionDefaults(Tree, Section, L"ACTION="); });
}

bool ToolTipsDefaults(DesignTree& Tree, std::wstring_view Section) {
    return Trap(L"vdbcModule.ToolTipsDefaults",
                [&] { return Offer(Tree, Section, kToolTips, kToolTipChoices); });
}

bool TipsDefaults(DesignTree& Tree, std::wstring_view Section, std::wstring_view AlignKeyword,
                  std::wstring_view ButtonsKeyword) {
    return Trap(L"vdbcModule.TipsDefaults", [&] {
        if (!AlignKeyword.empty() && Offer(Tree, Section, AlignKeyword, kAlignChoices)) return true;
        return !ButtonsKeyword.empty() && Offer(Tree, Section, ButtonsKeyword, kTipsButtonChoices);
    });
}

std::wstring caption::OfLanguage(std::wstring_view Label, std::wstring_view Language,
                                 std::wstring_view Text) {
    std::wstring Made(Label);
    Made.append(Language).append(L"] ").append(Text.substr(0, kShown));
    return Made;
}

}  // namespace kv
