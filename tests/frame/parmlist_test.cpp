// The keyed list: 1-based places, keys, what is refused, and random operations against a plain vector.
#include "frame/ParmList.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/frame/Told.h"

namespace kv::test {
namespace {

constexpr std::int32_t kSubscript = 9;
constexpr std::int32_t kKeyTaken = 457;

using Words = ParmList<std::wstring>;

std::vector<std::wstring> Content(const Words& List) {
    std::vector<std::wstring> Out;
    for (std::int32_t I = 1; I <= List.Count(); ++I) Out.push_back(List.Item(I));
    return Out;
}
using Expected = std::vector<std::wstring>;

Words Three() {
    Words List;
    List.Add(L"a", L"KA");
    List.Add(L"b", L"KB");
    List.Add(L"c", L"KC");
    return List;
}

TEST(KeyedList, IsEmptyAtFirst) {
    Words List;
    EXPECT_EQ(List.Count(), 0);
    EXPECT_FALSE(List.Exists(L""));
    EXPECT_EQ(List.Find(L"X"), nullptr);
    List.Clear();
    EXPECT_EQ(List.Count(), 0);
}

TEST(KeyedList, AddsAtTheEndBeforeAndAfter) {
    Words List = Three();
    EXPECT_EQ(Content(List), (Expected{L"a", L"b", L"c"}));
    List.Add(L"x", L"", 1);
    EXPECT_EQ(Content(List), (Expected{L"x", L"a", L"b", L"c"}));
    List.Add(L"y", L"", 4);
    EXPECT_EQ(Content(List), (Expected{L"x", L"a", L"b", L"y", L"c"}));
    List.Add(L"z", L"", {}, 5);
    EXPECT_EQ(Content(List), (Expected{L"x", L"a", L"b", L"y", L"c", L"z"}));
    std::wstring& Added = List.Add(L"w", L"KW", {}, 1);
    EXPECT_EQ(Content(List), (Expected{L"x", L"w", L"a", L"b", L"y", L"c", L"z"}));
    Added = L"W";
    EXPECT_EQ(List.Item(2), L"W") << "Add answers the element in the list";
    ASSERT_NE(List.Find(L"KW"), nullptr);
    EXPECT_EQ(*List.Find(L"KW"), L"W");
}

TEST(KeyedList, PlacesOutsideTheListAreTheSubscriptFault) {
    Words List = Three();
    for (const std::int32_t Place : {0, -1, 4, 5, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(NumberRaised([&] { static_cast<void>(List.Item(Place)); }), kSubscript) << Place;
        EXPECT_EQ(NumberRaised([&] { List.Remove(Place); }), kSubscript) << Place;
        EXPECT_EQ(NumberRaised([&] { List.Add(L"x", L"KX", Place); }), kSubscript) << Place;
        EXPECT_EQ(NumberRaised([&] { List.Add(L"x", L"KX", {}, Place); }), kSubscript) << Place;
        EXPECT_EQ(NumberRaised([&] { List.Move(Place, 1); }), kSubscript) << Place;
        EXPECT_EQ(NumberRaised([&] { List.Move(1, Place); }), kSubscript) << Place;
    }
    Words Empty;
    EXPECT_EQ(NumberRaised([&] { static_cast<void>(Empty.Item(1)); }), kSubscript);
    EXPECT_EQ(NumberRaised([&] { Empty.Remove(1); }), kSubscript);
    EXPECT_EQ(Content(List), (Expected{L"a", L"b", L"c"})) << "the list is as it was";
    EXPECT_FALSE(List.Exists(L"KX"));
}

TEST(KeyedList, AKeyThatIsTakenIsRefused) {
    Words List = Three();
    EXPECT_EQ(NumberRaised([&] { List.Add(L"x", L"KB"); }), kKeyTaken);
    EXPECT_EQ(NumberRaised([&] { List.Add(L"x", L"KB", 1); }), kKeyTaken);
    EXPECT_EQ(Content(List), (Expected{L"a", L"b", L"c"}));
    EXPECT_EQ(*List.Find(L"KB"), L"b");
    List.Add(L"x");
    List.Add(L"y");
    EXPECT_EQ(List.Count(), 5) << "elements without a key are no duplicates";
    EXPECT_FALSE(List.Exists(L""));
}

TEST(KeyedList, AKeyGoesWithItsElement) {
    Words List = Three();
    List.Remove(2);
    EXPECT_EQ(Content(List), (Expected{L"a", L"c"}));
    EXPECT_FALSE(List.Exists(L"KB"));
    EXPECT_TRUE(List.Exists(L"KC"));
    List.Add(L"B", L"KB", 1);
    EXPECT_EQ(*List.Find(L"KB"), L"B");
    List.Move(1, 3);
    EXPECT_EQ(Content(List), (Expected{L"a", L"c", L"B"}));
    EXPECT_EQ(*List.Find(L"KB"), L"B");
    EXPECT_EQ(*List.Find(L"KA"), L"a");
    List.Clear();
    EXPECT_EQ(List.Count(), 0);
    EXPECT_FALSE(List.Exists(L"KA"));
    List.Add(L"a", L"KA");
    EXPECT_EQ(List.Count(), 1);
}

TEST(KeyedList, MovesAnElementToAPlace) {
    const struct {
        std::int32_t From;
        std::int32_t To;
        Expected After;
    } kRows[] = {
        {1, 1, {L"a", L"b", L"c"}}, {1, 2, {L"b", L"a", L"c"}}, {1, 3, {L"b", L"c", L"a"}},
        {2, 1, {L"b", L"a", L"c"}}, {2, 3, {L"a", L"c", L"b"}}, {3, 1, {L"c", L"a", L"b"}},
        {3, 2, {L"a", L"c", L"b"}}, {3, 3, {L"a", L"b", L"c"}},
    };
    for (const auto& Row : kRows) {
        Words List = Three();
        List.Move(Row.From, Row.To);
        EXPECT_EQ(Content(List), Row.After) << Row.From << " to " << Row.To;
    }
}

TEST(KeyedList, ACopyIsDeep) {
    Words List = Three();
    Words Copy = List;
    EXPECT_TRUE(Copy == List);
    EXPECT_NE(&Copy.Item(1), &List.Item(1));
    Copy.Item(1) = L"altro";
    Copy.Remove(2);
    EXPECT_EQ(Content(List), (Expected{L"a", L"b", L"c"}));
    EXPECT_EQ(*Copy.Find(L"KA"), L"altro");
    EXPECT_EQ(*List.Find(L"KA"), L"a");
    EXPECT_TRUE(List.Exists(L"KB"));
    EXPECT_FALSE(Copy.Exists(L"KB"));
    EXPECT_FALSE(Copy == List);

    Copy = List;
    EXPECT_TRUE(Copy == List);
    const Words& Itself = Copy;
    Copy = Itself;
    EXPECT_TRUE(Copy == List);

    const std::wstring* const Address = &Copy.Item(1);
    const Words Moved = std::move(Copy);
    EXPECT_EQ(&Moved.Item(1), Address) << "an element keeps its address";
    EXPECT_EQ(Moved.Find(L"KA"), Address);
}

TEST(KeyedList, EqualMeansElementsAndOrder) {
    Words Other = Three();
    EXPECT_TRUE(Three() == Other);
    Other.Move(1, 2);
    EXPECT_FALSE(Three() == Other);
    Words NoKey;
    NoKey.Add(L"a");
    Words WithKey;
    WithKey.Add(L"a", L"K");
    EXPECT_TRUE(NoKey == WithKey) << "a key is not stored";
    EXPECT_FALSE(Words() == NoKey);
    WithKey.Item(1) = L"b";
    EXPECT_FALSE(NoKey == WithKey);
}

TEST(KeyedList, ElementsKeepTheirAddressesWhileOthersComeAndGo) {
    Words List;
    std::wstring* const First = &List.Add(L"primo", L"P");
    for (int I = 0; I < 1000; ++I) List.Add(L"x", L"", 1);
    for (int I = 0; I < 500; ++I) List.Remove(1);
    List.Move(List.Count(), 1);
    EXPECT_EQ(&List.Item(1), First);
    EXPECT_EQ(List.Find(L"P"), First);
}

TEST(KeyedList, RandomOperationsAgreeWithAPlainVector) {
    struct Plain {
        std::wstring Element;
        std::wstring Key;
    };
    std::mt19937 Random(5);
    const auto Below = [&](std::size_t N) { return static_cast<std::int32_t>(Random() % N); };
    for (int Round = 0; Round < 60; ++Round) {
        Words List;
        std::vector<Plain> Model;
        for (int Step = 0; Step < 200; ++Step) {
            const auto Size = static_cast<std::int32_t>(Model.size());
            const std::int32_t Place = Below(Model.size() + 3) - 1;  // also outside
            const bool Inside = Place >= 1 && Place <= Size;
            switch (Below(6)) {
                case 0:
                case 1: {
                    const std::wstring Key = Below(3) == 0 ? L"" : L"K" + std::to_wstring(Below(25));
                    const std::wstring Element = std::to_wstring(Step);
                    const std::int32_t Where = Below(3);
                    std::size_t At = Model.size();
                    bool Allowed = true;
                    if (Where != 0) Allowed = Inside;
                    if (Where != 0 && Inside) At = static_cast<std::size_t>(Place) - (Where == 1 ? 1U : 0U);
                    bool Taken = false;
                    for (const Plain& P : Model) Taken = Taken || (!Key.empty() && P.Key == Key);
                    const std::int32_t Number = NumberRaised([&] {
                        if (Where == 0)
                            List.Add(Element, Key);
                        else if (Where == 1)
                            List.Add(Element, Key, Place);
                        else
                            List.Add(Element, Key, {}, Place);
                    });
                    ASSERT_EQ(Number == 0, Allowed && !Taken);
                    if (Number == 0)
                        Model.insert(Model.begin() + static_cast<std::ptrdiff_t>(At), {Element, Key});
                    break;
                }
                case 2:
                    ASSERT_EQ(NumberRaised([&] { List.Remove(Place); }), Inside ? 0 : kSubscript);
                    if (Inside) Model.erase(Model.begin() + (Place - 1));
                    break;
                case 3: {
                    const std::int32_t To = Below(Model.size() + 3) - 1;
                    const bool Both = Inside && To >= 1 && To <= Size;
                    ASSERT_EQ(NumberRaised([&] { List.Move(Place, To); }), Both ? 0 : kSubscript);
                    if (Both) {
                        const Plain Moved = Model[static_cast<std::size_t>(Place) - 1];
                        Model.erase(Model.begin() + (Place - 1));
                        Model.insert(Model.begin() + (To - 1), Moved);
                    }
                    break;
                }
                case 4: {
                    Words Copy = List;
                    ASSERT_TRUE(Copy == List);
                    List = std::move(Copy);
                    break;
                }
                default:
                    if (Below(40) == 0) {
                        List.Clear();
                        Model.clear();
                    }
                    break;
            }
            ASSERT_EQ(List.Count(), static_cast<std::int32_t>(Model.size()));
            for (std::size_t I = 0; I < Model.size(); ++I) {
                ASSERT_EQ(List.Item(static_cast<std::int32_t>(I) + 1), Model[I].Element);
                if (!Model[I].Key.empty()) {
                    ASSERT_EQ(List.Find(Model[I].Key), &List.Item(static_cast<std::int32_t>(I) + 1));
                }
            }
            for (std::int32_t K = 0; K < 25; ++K) {
                const std::wstring Key = L"K" + std::to_wstring(K);
                bool Has = false;
                for (const Plain& P : Model) Has = Has || P.Key == Key;
                ASSERT_EQ(List.Exists(Key), Has);
            }
        }
    }
}

}  // namespace
}  // namespace kv::test
