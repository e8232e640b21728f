// The record protocol, on a record made for the purpose: what is stored under which name, what is converted,
// what is kept, what CopyTo takes over.
#include <gtest/gtest.h>

#include <memory>

#include "records/ParmItem.h"
#include "records/StoredBody.h"
#include "tests/frame/FailingMemory.h"
#include "tests/frame/Told.h"
#include "tests/records/Filled.h"

namespace kv::test {
namespace {

/// An element that has a list of its own.
struct Leaf final : Stored<Leaf> {
    static constexpr std::wstring_view kClass = L"Leaf";

    std::wstring Code = L"?????";
    std::uint8_t Weight = 7;
    ParmList<ParmItem> Tips;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Code", &Leaf::Code), Parameter(L"Weight", &Leaf::Weight),
                    List(L"Tips", &Leaf::Tips));
    }
};

/// One property of every type and role, none of them with the plain default.
struct AllKinds final : Stored<AllKinds> {
    static constexpr std::wstring_view kClass = L"AllKinds";

    std::wstring Origin = L"origine";
    std::int8_t Tiny = -3;
    std::int16_t Short = -300;
    std::int32_t Wide = -70000;
    std::uint8_t Octet = 200;
    bool Flag = true;
    std::wstring Text = L"testo";
    ParmList<Leaf> Leaves;
    std::int32_t Mark = 5;

    static constexpr auto Properties(auto With) {
        using R = AllKinds;
        return With(
            HeaderField(L"Origin", &R::Origin), Parameter(L"Tiny", &R::Tiny), Parameter(L"Short", &R::Short),
            Parameter(L"Wide", &R::Wide), Parameter(L"Octet", &R::Octet), Parameter(L"Flag", &R::Flag),
            Parameter(L"Text", &R::Text), List(L"Leaves", &R::Leaves), HeaderField(L"Mark", &R::Mark));
    }
};

RegObject Valued(std::wstring_view Name, RegValue Value) {
    RegObject Object;
    Object.SetValue(Name, std::move(Value));
    return Object;
}
RegObject AsChild(std::wstring_view Name, std::wstring_view Text) {
    RegObject Object;
    RegObject& Child = Object.Children.emplace_back();
    Child.Name = Name;
    Child.Text = Text;
    return Object;
}

class RecordProtocol : public FrameTest {
  protected:
    static bool Load(AllKinds& Into, RegObject From) {
        MemoryRegData Object(L"PROVA", std::move(From));
        return Into.Load(Object);
    }
    static RegObject Saved(const AllKinds& Record, RegObject Before = {}) {
        MemoryRegData Object(L"PROVA", std::move(Before));
        EXPECT_TRUE(Succeeds(Record.Save(Object)));
        EXPECT_TRUE(Object.Written());
        return Object.Read();
    }
};

// ---- saving

TEST_F(RecordProtocol, ScalarsAreValuesAndListsAreChildren) {
    AllKinds Record;
    Record.Id = 17;
    Record.Name = L"Nome";
    Record.Desc = L"Descrizione";
    Record.Version = 3;
    Leaf& First = Record.Leaves.Add({});
    First.Id = 5;
    First.Name = L"primo";
    First.Code = L"A";
    ParmItem& Tip = First.Tips.Add({});
    Tip.Text = L"ciao";
    Tip.Language = L"ITA";
    Record.Leaves.Add({}).Name = L"secondo";

    const RegObject Object = Saved(Record);
    EXPECT_EQ(Object.Id, 17);
    EXPECT_EQ(Object.Name, L"Nome");
    EXPECT_EQ(Object.Desc, L"Descrizione");
    EXPECT_EQ(Object.Version, 3);
    const std::vector<RegNamedValue> Expected{{L"Origin", L"origine"},
                                              {L"Tiny", std::int32_t{-3}},
                                              {L"Short", std::int32_t{-300}},
                                              {L"Wide", std::int32_t{-70000}},
                                              {L"Octet", std::int32_t{200}},
                                              {L"Flag", true},
                                              {L"Text", L"testo"},
                                              {L"Mark", std::int32_t{5}}};
    EXPECT_TRUE(Object.Values == Expected) << "in the order of the properties, each with its type";
    ASSERT_EQ(Object.Children.size(), 1U);
    EXPECT_EQ(Object.Children[0].Name, L"Leaves");
    ASSERT_EQ(Object.Children[0].Children.size(), 2U);
    const RegObject& Element = Object.Children[0].Children[0];
    EXPECT_EQ(Element.Id, 5);
    EXPECT_EQ(Element.Name, L"primo");
    EXPECT_EQ(std::get<std::wstring>(*Element.Value(L"Code")), L"A");
    EXPECT_EQ(std::get<std::int32_t>(*Element.Value(L"Weight")), 7);
    ASSERT_NE(Element.Child(L"Tips"), nullptr);
    EXPECT_EQ(std::get<std::wstring>(*Element.Child(L"Tips")->Children.at(0).Value(L"Language")), L"ITA");
    EXPECT_EQ(Object.Children[0].Children[1].Name, L"secondo");
}

TEST_F(RecordProtocol, AnEmptyListIsStoredToo) {
    const RegObject Object = Saved(AllKinds{});
    ASSERT_NE(Object.Child(L"Leaves"), nullptr);
    EXPECT_TRUE(Object.Child(L"Leaves")->Children.empty());
}

TEST_F(RecordProtocol, TheNameOfTheRecordIsThatOfTheStoredObject) {
    MemoryRegData Object(L"PROVA");
    AllKinds Record;
    Record.Name = L"NUOVO";
    EXPECT_TRUE(Succeeds(Record.Save(Object)));
    EXPECT_EQ(Object.Name(), L"NUOVO");
}

/// A stored object that fails.
class BrokenRegData final : public RegData {
  public:
    std::wstring Name() const override { return L"X"; }
    std::wstring Clsid() const override { return L"PROVA"; }
    std::wstring UserList() const override { return {}; }
    void SetSaving(bool) override {}
    const RegObject& Read() override { Raise(L"Illeggibile."); }
    void Write(RegObject) override { Raise(20015, L"L'istanza esiste già."); }
};

TEST_F(RecordProtocol, AFailingObjectIsToldUnderTheRecordsName) {
    BrokenRegData Object;
    AllKinds Record;
    EXPECT_TRUE(FailsWith(Record.Load(Object),
                          {.Number = 20000, .Source = L"AllKinds.Load", .Description = L"Illeggibile."}));
    EXPECT_TRUE(
        FailsWith(Record.Save(Object),
                  {.Number = 20015, .Source = L"AllKinds.Save", .Description = L"L'istanza esiste già."}));
}

// ---- loading

TEST_F(RecordProtocol, WhatWasSavedIsLoaded) {
    Filler Random(11);
    for (int Round = 0; Round < 300; ++Round) {
        const auto Record = Random.Record<AllKinds>();
        AllKinds Loaded = Random.Record<AllKinds>();
        MemoryRegData Object(L"PROVA");
        ASSERT_TRUE(Succeeds(Record.Save(Object)));
        ASSERT_TRUE(Succeeds(Loaded.Load(Object)));
        ASSERT_TRUE(Loaded == Record) << "whatever the record held before";
        ASSERT_TRUE(Loaded.SaveObject() == Record.SaveObject());
    }
}

TEST_F(RecordProtocol, AnAbsentPropertyGetsItsDefault) {
    AllKinds Record;
    Record.Text = L"altro";
    Record.Wide = 9;
    Record.Leaves.Add({});
    EXPECT_TRUE(Succeeds(Load(Record, RegObject{})));
    EXPECT_TRUE(Record == AllKinds{});

    RegObject Some = Valued(L"Wide", std::int32_t{9});
    Some.Name = L"Nome";
    EXPECT_TRUE(Succeeds(Load(Record, Some)));
    AllKinds Expected;
    Expected.Name = L"Nome";
    Expected.Wide = 9;
    EXPECT_TRUE(Record == Expected);

    RegObject Elements;
    Elements.Children.emplace_back().Name = L"Leaves";
    Elements.Children[0].Children.resize(2);
    EXPECT_TRUE(Succeeds(Load(Record, Elements)));
    ASSERT_EQ(Record.Leaves.Count(), 2);
    EXPECT_EQ(Record.Leaves.Item(1).Code, L"?????") << "also in the elements of a list";
    EXPECT_EQ(Record.Leaves.Item(2).Weight, 7);
}

TEST_F(RecordProtocol, TheFlagsAndTheExtraListAreNotRead) {
    MemoryRegData Object(L"PROVA", Valued(L"Wide", std::int32_t{9}));
    ParmList<std::wstring> Extra;
    for (const std::int32_t Flags : {0, 1, -1}) {
        AllKinds Record;
        EXPECT_TRUE(Succeeds(Record.Load(Object, Flags, &Extra)));
        EXPECT_EQ(Record.Wide, 9);
    }
}

TEST_F(RecordProtocol, AValueMayBeAChildOfItsName) {
    AllKinds Record;
    EXPECT_TRUE(Succeeds(Load(Record, AsChild(L"Text", L"dalla clipboard"))));
    EXPECT_EQ(Record.Text, L"dalla clipboard");
    EXPECT_TRUE(Succeeds(Load(Record, AsChild(L"Wide", L"-12"))));
    EXPECT_EQ(Record.Wide, -12);
    EXPECT_TRUE(Succeeds(Load(Record, AsChild(L"Flag", L"False"))));
    EXPECT_FALSE(Record.Flag);

    RegObject Both = AsChild(L"Text", L"figlio");
    Both.SetValue(L"Text", std::wstring(L"valore"));
    EXPECT_TRUE(Succeeds(Load(Record, Both)));
    EXPECT_EQ(Record.Text, L"valore") << "a value of that name comes first";

    RegObject Object;
    RegObject& Leaves = Object.Children.emplace_back();
    Leaves.Name = L"Leaves";
    Leaves.Children.push_back(AsChild(L"Weight", L"9"));
    EXPECT_TRUE(Succeeds(Load(Record, Object)));
    EXPECT_EQ(Record.Leaves.Item(1).Weight, 9) << "also in the elements of a list";
}

TEST_F(RecordProtocol, AValueOfAnotherTypeIsConverted) {
    const struct {
        const char* What;
        RegValue Value;
        std::wstring Text;
        std::int32_t Wide;
        bool Flag;
    } kRows[] = {
        {"number", std::int32_t{42}, L"42", 42, true},
        {"zero", std::int32_t{0}, L"0", 0, false},
        {"minus one", std::int32_t{-1}, L"-1", -1, true},
        {"true", true, L"True", -1, true},
        {"false", false, L"False", 0, false},
        {"text of a number", std::wstring(L" 12.5 kg"), L" 12.5 kg", 12, true},
        {"text of true", std::wstring(L"True"), L"True", 0, true},
        {"text of false", std::wstring(L"false"), L"false", 0, false},
        {"Italian text", std::wstring(L"FALSO"), L"FALSO", 0, false},
        {"empty text", std::wstring(), L"", 0, false},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Row.What);
        AllKinds Record;
        EXPECT_TRUE(Succeeds(Load(Record, Valued(L"Text", Row.Value))));
        EXPECT_EQ(Record.Text, Row.Text);
        EXPECT_TRUE(Succeeds(Load(Record, Valued(L"Wide", Row.Value))));
        EXPECT_EQ(Record.Wide, Row.Wide);
        EXPECT_TRUE(Succeeds(Load(Record, Valued(L"Flag", Row.Value))));
        EXPECT_EQ(Record.Flag, Row.Flag);
    }
}

// In the clipboard file every value is text: it must mean there what it means in the store.
TEST_F(RecordProtocol, ANumberForABooleanMeansTheSameAsText) {
    for (const std::int32_t Number : {0, 1, -1, 7}) {
        AllKinds FromValue;
        EXPECT_TRUE(Succeeds(Load(FromValue, Valued(L"Flag", Number))));
        AllKinds FromText;
        EXPECT_TRUE(Succeeds(Load(FromText, AsChild(L"Flag", std::to_wstring(Number)))));
        EXPECT_EQ(FromText.Flag, FromValue.Flag) << Number;
    }
}

TEST_F(RecordProtocol, AValueBeyondItsPropertyIsOverflow) {
    const struct {
        const wchar_t* Name;
        RegValue Value;
        bool Fits;
    } kRows[] = {
        {L"Tiny", std::int32_t{127}, true},           {L"Tiny", std::int32_t{-128}, true},
        {L"Tiny", std::int32_t{128}, false},          {L"Tiny", std::int32_t{-129}, false},
        {L"Short", std::int32_t{32767}, true},        {L"Short", std::int32_t{-32768}, true},
        {L"Short", std::int32_t{32768}, false},       {L"Short", std::int32_t{-32769}, false},
        {L"Octet", std::int32_t{255}, true},          {L"Octet", std::int32_t{0}, true},
        {L"Octet", std::int32_t{256}, false},         {L"Octet", std::int32_t{-1}, false},
        {L"Octet", std::wstring(L"256"), false},      {L"Octet", std::wstring(L"255"), true},
        {L"Wide", std::wstring(L"2147483647"), true}, {L"Wide", std::wstring(L"2147483648"), false},
        {L"Wide", std::wstring(L"1e400"), false},     {L"Wide", std::wstring(L"-2147483648"), true},
    };
    for (const auto& Row : kRows) {
        AllKinds Record;
        const bool Failed = Load(Record, Valued(Row.Name, Row.Value));
        if (Row.Fits)
            EXPECT_TRUE(Succeeds(Failed)) << Narrow(Row.Name);
        else
            EXPECT_TRUE(
                FailsWith(Failed, {.Number = 6, .Source = L"AllKinds.Load", .Description = L"Overflow"}))
                << Narrow(Row.Name);
    }
    RegObject Nested;
    Nested.Children.emplace_back().Name = L"Leaves";
    Nested.Children[0].Children.push_back(Valued(L"Weight", std::int32_t{300}));
    AllKinds Record;
    EXPECT_TRUE(FailsWith(Load(Record, Nested),
                          {.Number = 6, .Source = L"AllKinds.Load", .Description = L"Overflow"}));
}

// ---- what the record does not know

TEST_F(RecordProtocol, WhatIsNotKnownIsKept) {
    RegObject Object = Valued(L"Futuro", std::wstring(L"x"));
    Object.SetValue(L"Wide", std::int32_t{9});
    Object.SetValue(L"Altro", std::int32_t{4});
    Object.SetValue(L"Acceso", true);
    Object.Name = L"Nome";
    Object.Text = L"primo";
    Object.Number2 = 2;
    Object.Number3 = 3;
    Object.String3 = L"s3";
    Object.String4 = L"s4";
    Object.UserList = L"ADMIN";
    Object.String5 = L"s5";
    RegObject Child;
    Child.Name = L"NonSo";
    Child.Id = 8;
    Child.Children.resize(2);
    Object.Children.push_back(Child);
    RegObject& Leaves = Object.Children.emplace_back();
    Leaves.Name = L"Leaves";
    RegObject Element = Valued(L"ElementoFuturo", std::wstring(L"y"));
    Element.SetValue(L"Code", std::wstring(L"A"));
    Element.Number2 = 22;
    Element.String5 = L"e5";
    Element.Children.push_back(Child);
    Leaves.Children.push_back(Element);

    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, Object)));
    EXPECT_EQ(Record.Wide, 9);
    Record.Wide = 10;
    Record.Leaves.Item(1).Code = L"B";
    Record.Leaves.Add({}).Code = L"C";
    const RegObject After = Saved(Record);

    ASSERT_NE(After.Value(L"Futuro"), nullptr);
    EXPECT_EQ(std::get<std::wstring>(*After.Value(L"Futuro")), L"x");
    EXPECT_EQ(std::get<std::int32_t>(*After.Value(L"Altro")), 4);
    EXPECT_EQ(std::get<bool>(*After.Value(L"Acceso")), true);
    EXPECT_EQ(std::get<std::int32_t>(*After.Value(L"Wide")), 10);
    EXPECT_EQ(After.Text, L"primo");
    EXPECT_EQ(After.Number2, 2);
    EXPECT_EQ(After.Number3, 3);
    EXPECT_EQ(After.String3, L"s3");
    EXPECT_EQ(After.String4, L"s4");
    EXPECT_EQ(After.UserList, L"ADMIN");
    EXPECT_EQ(After.String5, L"s5");
    ASSERT_NE(After.Child(L"NonSo"), nullptr);
    EXPECT_TRUE(*After.Child(L"NonSo") == Child);

    ASSERT_NE(After.Child(L"Leaves"), nullptr);
    const RegObject& Kept = After.Child(L"Leaves")->Children.at(0);
    EXPECT_EQ(std::get<std::wstring>(*Kept.Value(L"Code")), L"B");
    EXPECT_EQ(std::get<std::wstring>(*Kept.Value(L"ElementoFuturo")), L"y") << "also in an element";
    EXPECT_EQ(Kept.Number2, 22);
    EXPECT_EQ(Kept.String5, L"e5");
    ASSERT_NE(Kept.Child(L"NonSo"), nullptr);
    EXPECT_EQ(After.Child(L"Leaves")->Children.at(1).Value(L"ElementoFuturo"), nullptr);

    AllKinds Again;
    ASSERT_TRUE(Succeeds(Load(Again, After)));
    EXPECT_TRUE(Again.SaveObject() == After) << "a load and a save change nothing";
}

TEST_F(RecordProtocol, WhatAListBearsBesideItsElementsIsKept) {
    RegObject Object;
    RegObject& Leaves = Object.Children.emplace_back();
    Leaves.Name = L"Leaves";
    Leaves.Id = 12;
    Leaves.Desc = L"la lista";
    Leaves.Version = 2;
    Leaves.Text = L"t";
    Leaves.SetValue(L"Futuro", std::wstring(L"x"));
    Leaves.Children.resize(1);
    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, Object)));
    ASSERT_EQ(Record.Leaves.Count(), 1);
    const RegObject After = Saved(Record);
    ASSERT_NE(After.Child(L"Leaves"), nullptr);
    EXPECT_EQ(After.Child(L"Leaves")->Id, 12);
    EXPECT_EQ(After.Child(L"Leaves")->Desc, L"la lista");
    EXPECT_EQ(After.Child(L"Leaves")->Version, 2);
    EXPECT_EQ(After.Child(L"Leaves")->Text, L"t");
    EXPECT_NE(After.Child(L"Leaves")->Value(L"Futuro"), nullptr);
    EXPECT_EQ(After.Child(L"Leaves")->Children.size(), 1U);
}

TEST_F(RecordProtocol, AValueThatBearsAListsNameIsKept) {
    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, Valued(L"Leaves", std::wstring(L"non una lista")))));
    EXPECT_EQ(Record.Leaves.Count(), 0);
    const RegObject After = Saved(Record);
    ASSERT_NE(After.Value(L"Leaves"), nullptr);
    EXPECT_EQ(std::get<std::wstring>(*After.Value(L"Leaves")), L"non una lista");
}

TEST_F(RecordProtocol, ALoadForgetsWhatTheObjectBeforeHad) {
    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, Valued(L"Futuro", std::wstring(L"x")))));
    ASSERT_TRUE(Succeeds(Load(Record, RegObject{})));
    EXPECT_EQ(Saved(Record).Value(L"Futuro"), nullptr);
}

TEST_F(RecordProtocol, AChildThatHeldAValueBecomesAValue) {
    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, AsChild(L"Text", L"x"))));
    const RegObject After = Saved(Record);
    EXPECT_EQ(std::get<std::wstring>(*After.Value(L"Text")), L"x");
    EXPECT_EQ(After.Child(L"Text"), nullptr) << "it does not stand there twice";
}

TEST_F(RecordProtocol, TheUsersOfTheTargetStay) {
    RegObject Before;
    Before.UserList = L"BIBLIO";
    EXPECT_EQ(Saved(AllKinds{}, Before).UserList, L"BIBLIO");
    AllKinds Loaded;
    RegObject Source;
    Source.UserList = L"ADMIN";
    ASSERT_TRUE(Succeeds(Load(Loaded, Source)));
    EXPECT_EQ(Saved(Loaded, Before).UserList, L"BIBLIO");
    EXPECT_EQ(Saved(Loaded).UserList, L"ADMIN");
}

// ---- CopyTo

/// Two records that differ in every property.
struct TwoRecords {
    AllKinds From;
    AllKinds Target;

    TwoRecords() {
        From.Id = 1;
        From.Name = L"da";
        From.Desc = L"dd";
        From.Version = 2;
        From.Origin = L"o1";
        From.Tiny = 1;
        From.Short = 1;
        From.Wide = 1;
        From.Octet = 1;
        From.Flag = false;
        From.Text = L"t1";
        From.Leaves.Add({}).Code = L"P1";
        From.Mark = 1;
        Target.Id = 9;
        Target.Name = L"a";
        Target.Desc = L"aa";
        Target.Version = 8;
        Target.Origin = L"o2";
        Target.Tiny = 2;
        Target.Short = 2;
        Target.Wide = 2;
        Target.Octet = 2;
        Target.Flag = true;
        Target.Text = L"t2";
        Target.Leaves.Add({}).Code = L"P2";
        Target.Leaves.Add({}).Code = L"P3";
        Target.Mark = 2;
    }

    void ExpectTarget(const AllKinds& TargetBefore, bool Parms, bool Lists, const AllKinds& Source) const {
        AllKinds Expected = Source;
        if (!Parms) {
            Expected.Tiny = TargetBefore.Tiny;
            Expected.Short = TargetBefore.Short;
            Expected.Wide = TargetBefore.Wide;
            Expected.Octet = TargetBefore.Octet;
            Expected.Flag = TargetBefore.Flag;
            Expected.Text = TargetBefore.Text;
        }
        if (!Lists) Expected.Leaves = TargetBefore.Leaves;
        EXPECT_TRUE(Target == Expected);
    }
};

TEST_F(RecordProtocol, CopyToTakesOverWhatItIsTold) {
    for (int Bits = 0; Bits < 8; ++Bits) {
        const bool WithParms = (Bits & 1) != 0;
        const bool WithLists = (Bits & 2) != 0;
        const bool HeaderOnly = (Bits & 4) != 0;
        for (const bool Done : {false, true}) {
            SCOPED_TRACE(std::to_string(Bits) + (Done ? " moved" : " copied"));
            TwoRecords Two;
            const AllKinds Source = Two.From;
            const AllKinds Before = Two.Target;
            if (Done)
                std::move(Two.From).CopyTo(Two.Target, WithParms, WithLists, HeaderOnly);
            else
                Two.From.CopyTo(Two.Target, WithParms, WithLists, HeaderOnly);
            Two.ExpectTarget(Before, WithParms && !HeaderOnly, WithLists && !HeaderOnly, Source);
            if (!Done) {
                EXPECT_TRUE(Two.From == Source) << "the source stays";
            }
        }
    }
}

TEST_F(RecordProtocol, AScratchHasTheHeaderAndDefaults) {
    TwoRecords Two;
    AllKinds Scratch;
    Two.From.CopyTo(Scratch, false, false, true);
    EXPECT_EQ(Scratch.Id, 1);
    EXPECT_EQ(Scratch.Name, L"da");
    EXPECT_EQ(Scratch.Origin, L"o1") << "what is not a parameter goes over";
    EXPECT_EQ(Scratch.Mark, 1);
    EXPECT_EQ(Scratch.Text, L"testo") << "the parameters stay at their defaults";
    EXPECT_EQ(Scratch.Wide, -70000);
    EXPECT_EQ(Scratch.Leaves.Count(), 0);

    Scratch.Text = L"nuovo";
    Scratch.Leaves.Add({}).Code = L"di prova";
    std::move(Scratch).CopyTo(Two.From, true, false, false);
    EXPECT_EQ(Two.From.Text, L"nuovo");
    EXPECT_EQ(Two.From.Wide, -70000) << "a keyword left out returns to its default";
    ASSERT_EQ(Two.From.Leaves.Count(), 1) << "the record's lists stay";
    EXPECT_EQ(Two.From.Leaves.Item(1).Code, L"P1");
}

TEST_F(RecordProtocol, AnElementIsCopiedPlainly) {
    Leaf Element;
    Element.Name = L"n";
    Element.Code = L"A";
    Element.Tips.Add({}).Text = L"x";
    Leaf Scratch;
    Element.CopyTo(Scratch, /*WithParms=*/true, /*WithLists=*/false, /*HeaderOnly=*/true);
    EXPECT_EQ(Scratch.Name, L"n");
    EXPECT_EQ(Scratch.Code, L"?????");
    Scratch.Code = L"B";
    Scratch.CopyTo(Element);
    EXPECT_EQ(Element.Code, L"B");
    EXPECT_EQ(Element.Tips.Count(), 1);
}

TEST_F(RecordProtocol, ACommitKeepsWhatTheRecordDoesNotKnow) {
    AllKinds Record;
    ASSERT_TRUE(Succeeds(Load(Record, Valued(L"Futuro", std::wstring(L"x")))));
    AllKinds Scratch;
    Record.CopyTo(Scratch, false, false, true);
    Scratch.Text = L"nuovo";
    std::move(Scratch).CopyTo(Record, true, false, false);
    const RegObject After = Saved(Record);
    ASSERT_NE(After.Value(L"Futuro"), nullptr);
    EXPECT_EQ(std::get<std::wstring>(*After.Value(L"Text")), L"nuovo");
}

TEST_F(RecordProtocol, ACopyOntoItselfChangesNothing) {
    TwoRecords Two;
    const AllKinds Before = Two.From;
    Two.From.CopyTo(Two.From, true, true, false);
    EXPECT_TRUE(Two.From == Before);
    AllKinds& Same = Two.From;
    std::move(Two.From).CopyTo(Same, true, true, false);
    EXPECT_TRUE(Same == Before);
}

TEST_F(RecordProtocol, ACopiedListIsAnotherList) {
    TwoRecords Two;
    Two.From.CopyTo(Two.Target, true, true, false);
    Two.Target.Leaves.Item(1).Code = L"cambiato";
    EXPECT_EQ(Two.From.Leaves.Item(1).Code, L"P1");
}

// ---- by name, equality

TEST_F(RecordProtocol, PropertiesAnswerToTheirNames) {
    AllKinds Record;
    Record.Id = 17;
    Record.Name = L"Nome";
    Record.Desc = L"Desc";
    Record.Version = 3;
    const struct {
        std::wstring_view Name;
        RegValue Value;
    } kRows[] = {{L"Id", std::int32_t{17}},
                 {L"Name", L"Nome"},
                 {L"Desc", L"Desc"},
                 {L"Version", std::int32_t{3}},
                 {L"Origin", L"origine"},
                 {L"Tiny", std::int32_t{-3}},
                 {L"Short", std::int32_t{-300}},
                 {L"Wide", std::int32_t{-70000}},
                 {L"Octet", std::int32_t{200}},
                 {L"Flag", true},
                 {L"Text", L"testo"},
                 {L"Mark", std::int32_t{5}}};
    for (const auto& Row : kRows) {
        const auto Found = Record.ByName(Row.Name);
        ASSERT_TRUE(Found.has_value()) << Narrow(Row.Name);
        EXPECT_TRUE(*Found == Row.Value) << Narrow(Row.Name);
    }
    for (const std::wstring_view Name : {L"Leaves", L"", L"id", L"WIDE", L"Altro"})
        EXPECT_FALSE(Record.ByName(Name).has_value()) << Narrow(Name);
}

TEST_F(RecordProtocol, EqualMeansSameIdentityAndProperties) {
    const AllKinds Same;
    EXPECT_TRUE(Same == AllKinds{});
    const std::function<void(AllKinds&)> kChanges[] = {
        [](AllKinds& R) { R.Id = 1; },        [](AllKinds& R) { R.Name = L"x"; },
        [](AllKinds& R) { R.Desc = L"x"; },   [](AllKinds& R) { R.Version = 1; },
        [](AllKinds& R) { R.Origin = L"x"; }, [](AllKinds& R) { R.Tiny = 0; },
        [](AllKinds& R) { R.Short = 0; },     [](AllKinds& R) { R.Wide = 0; },
        [](AllKinds& R) { R.Octet = 0; },     [](AllKinds& R) { R.Flag = false; },
        [](AllKinds& R) { R.Text = L"x"; },   [](AllKinds& R) { R.Mark = 0; },
        [](AllKinds& R) { R.Leaves.Add({}); }};
    for (const auto& Change : kChanges) {
        AllKinds Other;
        Change(Other);
        EXPECT_FALSE(Same == Other);
    }
    AllKinds One;
    AllKinds Two;
    One.Leaves.Add({}).Tips.Add({}).Text = L"a";
    Two.Leaves.Add({}).Tips.Add({}).Text = L"b";
    EXPECT_FALSE(One == Two) << "down to the elements of an element's list";
}

// ---- memory that runs out

TEST_F(RecordProtocol, NothingEscapesWhenMemoryRunsOut) {
    Filler Random(4);
    AllKinds Record = Random.Record<AllKinds>();
    Record.Leaves.Clear();
    Record.Leaves.Add({}).Tips.Add({}).Text = L"un testo che non sta nella stringa breve";
    MemoryRegData Object(L"PROVA");
    ASSERT_TRUE(Succeeds(Record.Save(Object)));
    const RegObject Before = Object.Read();

    bool RanOut = true;
    for (std::size_t Pieces = 0; RanOut; ++Pieces) {
        ASSERT_LT(Pieces, 10000U);
        AllKinds Loaded;
        bool Failed = false;
        ASSERT_NO_THROW(RanOut = RunsOutAfter(Pieces, [&] { Failed = Loaded.Load(Object); })) << Pieces;
        EXPECT_EQ(Failed, RanOut);
        if (!Failed) {
            EXPECT_TRUE(Loaded == Record);
        }
        CoreUtil::Instance().ForgetError();
    }
    Record.Wide = 123456;
    RanOut = true;
    for (std::size_t Pieces = 0; RanOut; ++Pieces) {
        ASSERT_LT(Pieces, 10000U);
        bool Failed = false;
        ASSERT_NO_THROW(RanOut = RunsOutAfter(Pieces, [&] { Failed = Record.Save(Object); })) << Pieces;
        EXPECT_EQ(Failed, RanOut);
        if (Failed) {
            EXPECT_TRUE(Object.Read() == Before) << "wholly or not at all";
        }
        CoreUtil::Instance().ForgetError();
    }
    EXPECT_TRUE(Object.Read() == Record.SaveObject());
}

/// A holder with a list of its own, inside a record, and a list of strings.
struct Holder final : Stored<Holder> {
    static constexpr std::wstring_view kClass = L"Holder";

    std::int32_t Count = 0;
    ParmList<ParmItem> Texts;

    static constexpr auto Properties(auto With) {
        return With(Parameter(L"Count", &Holder::Count), List(L"Texts", &Holder::Texts));
    }
};
struct WithHolder final : Stored<WithHolder> {
    static constexpr std::wstring_view kClass = L"WithHolder";
    static constexpr std::int32_t kVersion = 4;

    Holder Inner;
    ParmList<std::wstring> Words;
    std::wstring Text;

    static constexpr auto Properties(auto With) {
        using R = WithHolder;
        return With(List(L"Inner", &R::Inner), Parameter(L"Words", &R::Words), Parameter(L"Text", &R::Text));
    }
};

WithHolder FullHolder() {
    WithHolder Made;
    Made.Name = L"NOME";
    Made.Text = L"testo";
    Made.Inner.Count = 3;
    ParmItem One;
    One.Text = L"uno";
    Made.Inner.Texts.Add(One);
    Made.Words.Add(L"HTTP");
    Made.Words.Add(L"");
    Made.Words.Add(L"FTP");
    return Made;
}

TEST(NestedRecord, IsAChildObjectUnderItsPropertysName) {
    const RegObject Out = FullHolder().SaveObject();
    ASSERT_EQ(Out.Children.size(), 2U);
    EXPECT_EQ(Out.Children[0].Name, L"Inner");
    ASSERT_NE(Out.Children[0].Child(L"Texts"), nullptr);
    EXPECT_EQ(Out.Children[0].Child(L"Texts")->Children.size(), 1U);
    ASSERT_EQ(Out.Children[1].Children.size(), 3U);
    EXPECT_EQ(Out.Children[1].Children[0].Text, L"HTTP");
    EXPECT_EQ(Out.Children[1].Children[2].Text, L"FTP");
    WithHolder Back;
    Back.LoadObject(Out);
    EXPECT_EQ(Back, FullHolder());
    EXPECT_EQ(Back.Inner.Name, L"") << "the name of the child is the property's";
    WithHolder Other = FullHolder();
    Other.Inner.Texts.Item(1).Text = L"due";
    EXPECT_FALSE(Other == FullHolder());
}

TEST(NestedRecord, KeepsWhatItDoesNotKnow) {
    RegObject Out = FullHolder().SaveObject();
    Out.Children[0].SetValue(L"Altro", std::wstring(L"resta"));
    Out.SetValue(L"Inner", std::int32_t{8});
    WithHolder Back;
    Back.LoadObject(Out);
    EXPECT_EQ(Back.SaveObject(), Out);
    RegObject Bare;
    Back.LoadObject(Bare);
    EXPECT_EQ(Back.Inner, Holder{}) << "absent: its default";
    EXPECT_EQ(Back.Words.Count(), 0);
}

TEST(NestedRecord, GoesWithItsRole) {
    const WithHolder From = FullHolder();
    const WithHolder Scratch = From.MakeScratch();
    EXPECT_EQ(Scratch.Inner, Holder{});
    EXPECT_EQ(Scratch.Words.Count(), 0) << "a list of strings that is a parameter";
    WithHolder Target = FullHolder();
    Target.Inner.Count = 9;
    WithHolder Empty;
    Empty.Name = L"NOME";
    std::move(Empty).Commit(Target);
    EXPECT_EQ(Target.Inner.Count, 9) << "a commit leaves what is a list";
    EXPECT_EQ(Target.Words.Count(), 0);
    EXPECT_EQ(From.ByName(L"Inner"), std::nullopt);
}

TEST(NestedRecord, ARecordTellsItsCurrentVersion) {
    EXPECT_EQ(WithHolder::CurrentVersion(), 4);
    EXPECT_EQ(Holder::CurrentVersion(), 1);
}

}  // namespace
}  // namespace kv::test
