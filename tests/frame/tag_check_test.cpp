// The tag tools against the way they are told, on lists made at random.
#include <gtest/gtest.h>

#include <random>

#include "frame/ParmList.h"
#include "frame/TagTools.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

struct Tagged {
    std::wstring Name;
    std::int32_t Tag = 0;
    std::int32_t GroupTag = 0;
    std::int32_t Level = 1;
};

// The check for repeated tags is told as a text of entries, five digits and a tab each, that grows and is
// searched from its front; the place of what is found tells the earlier field. Answers the text of the
// refusal, empty for none.
std::wstring Walk(const ParmList<Tagged>& Fields) {
    std::wstring Entries;
    for (std::int32_t I = 1; I <= Fields.Count(); ++I) {
        const Tagged& Field = Fields.Item(I);
        std::wstring Digits = std::to_wstring(Field.Tag);
        Digits.insert(0, 5 - Digits.size(), L'0');
        const std::wstring Entry = Digits + L'\t';
        if (const std::size_t At = Entries.find(Entry); At != std::wstring::npos) {
            const auto Earlier = static_cast<std::int32_t>((At + 1) / 6 + 1);
            return L"Tag duplicato: " + std::to_wstring(Field.Tag) + L"\r\n" + Fields.Item(Earlier).Name +
                   L"=" + Field.Name;
        }
        Entries += Entry;
    }
    return {};
}

class TagCheck : public FrameTest {};

TEST_F(TagCheck, AnswersAreThoseOfTheToldWalk) {
    std::mt19937 Random(7);
    const auto Below = [&](std::int32_t Bound) {
        return std::uniform_int_distribution<std::int32_t>(0, Bound - 1)(Random);
    };
    int Refusals = 0;
    int Passes = 0;
    for (int Round = 0; Round < 3000; ++Round) {
        const std::int32_t Greatest = Round % 3 == 0 ? 100000 : Round % 3 == 1 ? 1000 : 60;
        ParmList<Tagged> Fields;
        for (std::int32_t I = Below(60); I > 0; --I)
            Fields.Add({.Name = L"F" + std::to_wstring(I), .Tag = Below(Greatest)});
        const std::wstring Wanted = Walk(Fields);
        if (Wanted.empty()) {
            ++Passes;
            EXPECT_NO_THROW(CheckTags(Fields));
        } else {
            ++Refusals;
            const bool Failed = Trap(L"here", [&] {
                CheckTags(Fields);
                return false;
            });
            ASSERT_TRUE(Failed);
            EXPECT_EQ(Narrow(CoreUtil::Instance().LastError().Description), Narrow(Wanted));
            CoreUtil::Instance().ForgetError();
        }
    }
    EXPECT_GT(Refusals, 500);
    EXPECT_GT(Passes, 500);
}

// The group of a field is the nearest group field one level up, behind the last one of level 1.
TEST_F(TagCheck, GroupsAreThoseFoundByWalkingBack) {
    std::mt19937 Random(11);
    const auto Below = [&](std::int32_t Bound) {
        return std::uniform_int_distribution<std::int32_t>(0, Bound - 1)(Random);
    };
    for (int Round = 0; Round < 2000; ++Round) {
        ParmList<Tagged> Fields;
        for (std::int32_t Left = 6 + Below(30); Left > 0; --Left)
            Fields.Add({.Name = L"F",
                        .Tag = Below(9),
                        .GroupTag = Below(4) == 0 ? 0 : 1 + Below(50),
                        .Level = 1 + Below(5)});
        std::vector<std::int32_t> Wanted;
        for (std::int32_t I = 1; I <= Fields.Count(); ++I) {
            const Tagged& Field = Fields.Item(I);
            Wanted.push_back(Field.GroupTag != 0 && Field.Level == 1 ? I : 0);
            if (Field.GroupTag == 0 || Field.Level == 1) continue;
            for (std::int32_t Back = I - 1; Back > 0; --Back) {
                const Tagged& Before = Fields.Item(Back);
                if (Before.GroupTag == 0) continue;
                if (Before.Level == Field.Level - 1) Wanted.back() = Back;
                if (Before.Level == Field.Level - 1 || Before.Level == 1) break;
            }
        }
        Platform.Answers = {Answer::Yes};
        bool Changed = false;
        ASSERT_TRUE(Succeeds(RenumTags(L"TABLE", TagFieldsOf(Fields), Changed)));
        for (std::int32_t I = 1; I <= Fields.Count(); ++I) {
            ASSERT_EQ(Fields.Item(I).Tag, I);
            ASSERT_EQ(Fields.Item(I).GroupTag, Wanted[static_cast<std::size_t>(I) - 1]) << "field " << I;
        }
    }
}

}  // namespace
}  // namespace kv::test
