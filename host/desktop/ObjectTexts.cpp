#include "host/desktop/ObjectTexts.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "frame/ClipItem.h"
#include "frame/CoreUtil.h"
#include "host/ObjectWindow.h"
#include "host/desktop/InCommon.h"

namespace kv::desktop {
namespace {

using window::Selection;
using window::TreeModel;
using window::TreeNode;
using window::WindowCore;

// While it lives nothing is shown to the operator, and the last error that would have been is kept.
class Unseen final : public SilentPlatform {
  public:
    Unseen() : Before_(CoreUtil::Instance().SetPlatform(this)) {}
    ~Unseen() override { CoreUtil::Instance().SetPlatform(Before_); }

    void ShowError(const KvError& Error) override { Shown_ = Error; }
    std::wstring ProgramFolder() override { return Before_ ? Before_->ProgramFolder() : L"."; }
    std::wstring TempFolder() override { return Before_ ? Before_->TempFolder() : L"."; }

    KvError TakeShown() { return std::exchange(Shown_, {}); }

  private:
    Platform* Before_;
    KvError Shown_;
};

/// The identity lines that end a section, from the last upwards.
constexpr std::array<std::wstring_view, 3> kIdentityLines{L"'[VERSION= ", L"'[NAME= ", L"'[ID= "};

std::vector<std::wstring> LinesOf(std::wstring_view Text) {
    std::vector<std::wstring> Lines;
    while (!Text.empty()) {
        const std::size_t End = Text.find(L'\n');
        std::wstring_view Line = Text.substr(0, End);
        if (Line.ends_with(L'\r')) Line.remove_suffix(1);
        Lines.emplace_back(Line);
        Text.remove_prefix(End == std::wstring_view::npos ? Text.size() : End + 1);
    }
    for (const std::wstring_view Identity : kIdentityLines)
        if (!Lines.empty() && Lines.back().starts_with(Identity)) Lines.pop_back();
    return Lines;
}

std::wstring CaptionOf(const TreeNode& Leaf) {
    std::vector<const TreeNode*> Way;
    for (const TreeNode* N = &Leaf; N->Parent; N = N->Parent) Way.push_back(N);
    std::wstring Caption;
    std::wstring_view Above;
    for (auto N = Way.rbegin(); N != Way.rend(); ++N) {
        const std::wstring& Own = (*N)->Text;
        if (Own == Above || Own.find_first_not_of(L' ') == std::wstring::npos) continue;
        if (!Caption.empty()) Caption.append(L" / ");
        Caption.append(Own);
        Above = Own;
    }
    return Caption;
}

std::vector<SectionTextOf> Rendered(WindowCore& Core, Unseen& Quiet) {
    TreeModel& Tree = Core.Tree();
    const std::wstring Selected = Tree.Selected();
    std::vector<std::wstring> Keys;
    std::vector<SectionTextOf> Sections;
    Tree.ForEach([&](const TreeNode& Node) {
        if (!window::IsLeafKey(Node.Key)) return;
        Keys.push_back(Node.Key);
        Sections.push_back(
            {.Word = std::wstring(window::SectionWord(Node.Key)), .Caption = CaptionOf(Node), .Lines = {}});
    });
    for (std::size_t I = 0; I < Keys.size(); ++I) {
        std::wstring Text;
        if (Core.DispData({.CurrItem = Keys[I]}, Text))
            Sections[I].Lines = {L"'" + Quiet.TakeShown().Description};
        else
            Sections[I].Lines = LinesOf(Text);
    }
    if (Tree.HasNode(Selected)) Tree.SelectNode(Selected);
    return Sections;
}

// Numbers for what is equal.
class Numbers {
  public:
    std::uint32_t Of(std::wstring Text) {
        return Known_.try_emplace(std::move(Text), static_cast<std::uint32_t>(Known_.size())).first->second;
    }

  private:
    std::unordered_map<std::wstring, std::uint32_t> Known_;
};

std::vector<LineChange> CompareLines(const std::vector<std::wstring>& Before,
                                     const std::vector<std::wstring>& After) {
    Numbers Known;
    std::vector<std::uint32_t> A, B;
    for (const std::wstring& Line : Before) A.push_back(Known.Of(Line));
    for (const std::wstring& Line : After) B.push_back(Known.Of(Line));
    std::vector<LineChange> Changes;
    std::size_t I = 0, J = 0;
    const auto UpTo = [&](std::size_t IEnd, std::size_t JEnd) {
        for (; I < IEnd; ++I) Changes.push_back({Line::Removed, Before[I]});
        for (; J < JEnd; ++J) Changes.push_back({Line::Added, After[J]});
    };
    for (const auto& [SameI, SameJ] : InCommon(A, B)) {
        UpTo(SameI, SameJ);
        Changes.push_back({Line::Same, After[J]});
        ++I;
        ++J;
    }
    UpTo(Before.size(), After.size());
    return Changes;
}

/// What sections are compared by.
enum class By { CaptionAndText, Text, Caption, Word };
constexpr std::size_t kWays = 4;

// A section as the numbers of what it is compared by.
using Signs = std::array<std::uint32_t, kWays>;

class Pairing {
  public:
    Pairing(const std::vector<SectionTextOf>& Before, const std::vector<SectionTextOf>& After)
        : InA_(SignsOf(Before)), InB_(SignsOf(After)), A_(InA_.size()), B_(InB_.size()) {
        Between(By::CaptionAndText);
        Between(By::Text);
        Between(By::Caption);
        Elsewhere(By::CaptionAndText, false);
        Elsewhere(By::Caption, true);
        Between(By::Word);
    }

    struct Partner {
        std::optional<std::size_t> Place;  // in the other list
        bool Moved = false;
    };
    const Partner& OfBefore(std::size_t Place) const { return A_[Place]; }
    const Partner& OfAfter(std::size_t Place) const { return B_[Place]; }

  private:
    std::vector<Signs> SignsOf(const std::vector<SectionTextOf>& Sections);
    void Between(By Way);
    void Elsewhere(By Way, bool StandsOnce);
    void Pair(std::size_t A, std::size_t B, bool Moved) {
        A_[A] = {B, Moved};
        B_[B] = {A, Moved};
    }

    Numbers Known_;
    std::vector<Signs> InA_, InB_;
    std::vector<Partner> A_, B_;
};

std::vector<Signs> Pairing::SignsOf(const std::vector<SectionTextOf>& Sections) {
    // No text holds the character that stands between two parts.
    constexpr wchar_t kBreak = L'\n';
    std::vector<Signs> All;
    All.reserve(Sections.size());
    for (const SectionTextOf& Section : Sections) {
        std::wstring Text = Section.Word + kBreak;
        for (const std::wstring& Each : Section.Lines) Text.append(Each) += kBreak;
        const std::wstring Caption = Section.Word + kBreak + Section.Caption;
        All.push_back({Known_.Of(L"1" + Caption + kBreak + Text), Known_.Of(L"2" + Text),
                       Known_.Of(L"3" + Caption), Known_.Of(L"4" + Section.Word)});
    }
    return All;
}

// Pairs what is equal between two pairs that follow one another in both lists.
void Pairing::Between(By Way) {
    const auto Sign = static_cast<std::size_t>(Way);
    std::size_t I = 0, J = 0;
    const auto UpTo = [&](std::size_t IEnd, std::size_t JEnd) {
        std::vector<std::size_t> PlacesA, PlacesB;
        std::vector<std::uint32_t> A, B;
        for (; I < IEnd; ++I)
            if (!A_[I].Place) {
                PlacesA.push_back(I);
                A.push_back(InA_[I][Sign]);
            }
        for (; J < JEnd; ++J)
            if (!B_[J].Place) {
                PlacesB.push_back(J);
                B.push_back(InB_[J][Sign]);
            }
        for (const auto& [SameA, SameB] : InCommon(A, B)) Pair(PlacesA[SameA], PlacesB[SameB], false);
    };
    // The pairs found before; those that are made on the way lie behind.
    std::vector<std::pair<std::size_t, std::size_t>> Fixed;
    for (std::size_t P = 0; P < A_.size(); ++P)
        if (A_[P].Place && !A_[P].Moved) Fixed.emplace_back(P, *A_[P].Place);
    for (const auto& [FixedA, FixedB] : Fixed) {
        UpTo(FixedA, FixedB);
        I = FixedA + 1;
        J = FixedB + 1;
    }
    UpTo(A_.size(), B_.size());
}

// Pairs what is left and equal, wherever it stands; where asked, only what no other section equals.
void Pairing::Elsewhere(By Way, bool StandsOnce) {
    const auto Sign = static_cast<std::size_t>(Way);
    std::unordered_map<std::uint32_t, std::size_t> CountA, CountB;
    for (const Signs& Each : InA_) ++CountA[Each[Sign]];
    for (const Signs& Each : InB_) ++CountB[Each[Sign]];
    std::unordered_map<std::uint32_t, std::vector<std::size_t>>
        Left;  // from the back of the list to its front
    for (std::size_t P = A_.size(); P-- > 0;)
        if (!A_[P].Place) Left[InA_[P][Sign]].push_back(P);
    for (std::size_t P = 0; P < B_.size(); ++P) {
        if (B_[P].Place) continue;
        const std::uint32_t Own = InB_[P][Sign];
        if (StandsOnce && (CountA[Own] != 1 || CountB[Own] != 1)) continue;
        const auto Found = Left.find(Own);
        if (Found == Left.end() || Found->second.empty()) continue;
        Pair(Found->second.back(), P, true);
        Found->second.pop_back();
    }
}

}  // namespace

std::vector<SectionTextOf> TextsOf(WindowCore& Core) {
    Unseen Quiet;
    return Rendered(Core, Quiet);
}

std::vector<SectionTextOf> TextsOf(const std::wstring& Clsid, RegObject Content) {
    Unseen Quiet;
    ClipItem Clipboard;
    std::vector<SectionTextOf> Sections;
    // A server object hands its registry on to all: it has to be the one that is there.
    host::ObjectWindow Window(CoreUtil::Instance().Registry(),
                              std::make_shared<MemoryRegData>(Clsid, std::move(Content)), Clipboard);
    if (Window.Show(true, [&](WindowCore& Core) { Sections = Rendered(Core, Quiet); })) {
        CoreUtil::Instance().ShowLastError();  // what nobody has shown yet
        throw Failure(Quiet.TakeShown());
    }
    return Sections;
}

std::vector<SectionChange> Compare(const std::vector<SectionTextOf>& Before,
                                   const std::vector<SectionTextOf>& After) {
    using Kind = SectionChange::Kind;
    const Pairing Pairs(Before, After);
    std::vector<SectionChange> Changes;
    const auto Add = [&](Kind Is, const std::wstring& Caption, const std::vector<std::wstring>& Old,
                         const std::vector<std::wstring>& New) {
        SectionChange Change{.Is = Is, .Caption = Caption, .Lines = {}};
        if (Is == Kind::Removed || Is == Kind::Added || Old != New) Change.Lines = CompareLines(Old, New);
        if (Is != Kind::Changed || !Change.Lines.empty()) Changes.push_back(std::move(Change));
    };
    // Between two pairs that stayed where they were: what was removed comes before what was added.
    std::size_t I = 0, J = 0;
    const auto UpTo = [&](std::size_t IEnd, std::size_t JEnd) {
        for (; I < IEnd; ++I)
            if (!Pairs.OfBefore(I).Place) Add(Kind::Removed, Before[I].Caption, Before[I].Lines, {});
        for (; J < JEnd; ++J)
            if (const auto& From = Pairs.OfAfter(J).Place)
                Add(Kind::Moved, After[J].Caption, Before[*From].Lines, After[J].Lines);
            else
                Add(Kind::Added, After[J].Caption, {}, After[J].Lines);
    };
    for (std::size_t Stays = 0; Stays < After.size(); ++Stays) {
        const Pairing::Partner& Of = Pairs.OfAfter(Stays);
        if (!Of.Place || Of.Moved) continue;
        UpTo(*Of.Place, Stays);
        Add(Kind::Changed, After[J].Caption, Before[I].Lines, After[J].Lines);
        ++I;
        ++J;
    }
    UpTo(Before.size(), After.size());
    return Changes;
}

}  // namespace kv::desktop
