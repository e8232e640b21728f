// The clipboard file: built by hand from its layout and read; damaged in every way and read; written and
// compared byte for byte.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <random>

#include "frame/vdbInclude.h"
#include "tests/frame/ClipboardBytes.h"
#include "tests/frame/FailingMemory.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

constexpr std::int32_t kReadPastEnd = 62;
constexpr std::size_t kLargeAllocation = 1U << 20U;

RegObject Named(std::wstring_view Name) {
    RegObject Object;
    Object.Name = Name;
    return Object;
}

/// `Depth` objects, each the child of the one before; the outermost counts as 1.
RegObject Nested(int Depth) {
    RegObject Object = Named(L"1");
    RegObject* Last = &Object;
    for (int Level = 2; Level <= Depth; ++Level)
        Last = &Last->Children.emplace_back(Named(std::to_wstring(Level)));
    return Object;
}

class Clipboard : public FrameTest {
  protected:
    fs::path File() const { return Platform.Folder / "KVDSCLP.TMP"; }
    std::wstring Path() const { return File().wstring(); }

    bool Load(std::int32_t Index) {
        Target = RegObject{};
        Name.clear();
        std::wstring Where;
        return ClipboardLoad(Target, Name, Where, Index);
    }
    /// A failed load tells once, in the store or (inside an object) to the operator, with a text.
    void ExpectToldOnce() {
        const bool Stored = !CoreUtil::Instance().LastError().Empty();
        ASSERT_EQ(Platform.Shown.size() + (Stored ? 1U : 0U), 1U);
        const KvError Error = Stored ? CoreUtil::Instance().LastError() : Platform.Shown.front();
        EXPECT_NE(Error.Number, 0);
        EXPECT_FALSE(Error.Description.empty());
        EXPECT_EQ(Error.Source, Stored ? L"vdbInclude.ClipboardLoad" : L"vdbInclude.ReadKvData");
        CoreUtil::Instance().ForgetError();
        Platform.Shown.clear();
    }

    RegObject Target;
    std::wstring Name;
};

// ---- reading

TEST_F(Clipboard, TheEntryAskedForIsRead) {
    const std::vector<std::pair<std::string, RegObject>> Entries{
        {"primo", FullObject()}, {"secondo", Named(L"DUE")}, {"", FullObject()}, {"quarto", Nested(5)}};
    WriteFile(File(), ClipboardFile(Entries).Out.Bytes);
    for (std::int32_t Index = 1; Index <= 4; ++Index) {
        EXPECT_TRUE(Succeeds(Load(Index))) << Index;
        const auto& [EntryName, Object] = Entries[static_cast<std::size_t>(Index) - 1];
        EXPECT_EQ(Name, Wide(EntryName));
        EXPECT_TRUE(Target == Object) << Index;
    }
    EXPECT_TRUE(Platform.Shown.empty());
}

TEST_F(Clipboard, AnIndexBeyondTheNumberOfEntriesIsRefused) {
    WriteFile(File(), ClipboardFile({{"a", Named(L"A")}, {"b", Named(L"B")}}).Out.Bytes);
    EXPECT_TRUE(Succeeds(Load(2)));
    for (const std::int32_t Index : {3, 4, 2147483647}) {
        EXPECT_TRUE(FailsWith(Load(Index), {.Number = 20000,
                                            .Source = L"vdbInclude.ClipboardLoad",
                                            .Description = L"Elemento non presente nella clipboard."}));
        EXPECT_TRUE(Target == RegObject{});
    }
    WriteFile(File(), ClipboardFile({}).Out.Bytes);
    EXPECT_TRUE(FailsWith(Load(1), {.Number = 20000,
                                    .Source = L"vdbInclude.ClipboardLoad",
                                    .Description = L"Elemento non presente nella clipboard."}));
    EXPECT_TRUE(Succeeds(Load(0)));
}

TEST_F(Clipboard, IndexZeroReadsNothingAndSucceeds) {
    WriteFile(File(), ClipboardFile({{"a", FullObject()}}).Out.Bytes);
    for (const std::int32_t Index : {0, -1, -2147483647 - 1}) {
        RegObject Before = Named(L"prima");
        Before.SetValue(L"V", std::int32_t{1});
        RegObject Into = Before;
        std::wstring Same = L"prima";
        std::wstring Where;
        EXPECT_TRUE(Succeeds(ClipboardLoad(Into, Same, Where, Index)));
        EXPECT_TRUE(Into == Before);
        EXPECT_EQ(Same, L"prima");
        EXPECT_EQ(Where, Path()) << "the path is settled all the same";
    }
}

TEST_F(Clipboard, WhatWasReadReplacesWhatTheTargetHeld) {
    WriteFile(File(), ClipboardFile({{"a", FullObject()}, {"b", Named(L"B")}}).Out.Bytes);
    Target = FullObject();
    Target.Children.push_back(Named(L"altro"));
    std::wstring Where;
    EXPECT_TRUE(Succeeds(ClipboardLoad(Target, Name, Where, 2)));
    EXPECT_TRUE(Target == Named(L"B")) << "the children of the earlier ones are gone";
    EXPECT_EQ(Name, L"b");
}

TEST_F(Clipboard, TheFileLiesInTheTemporaryFolderUnlessThePathIsNamed) {
    WriteFile(File(), ClipboardFile({{"a", Named(L"A")}}).Out.Bytes);
    std::wstring Where;
    EXPECT_TRUE(Succeeds(ClipboardLoad(Target, Name, Where, 1)));
    EXPECT_EQ(Where, Path());

    const fs::path Other = Platform.Folder / "altra clipboard.tmp";
    WriteFile(Other, ClipboardFile({{"z", Named(L"Z")}}).Out.Bytes);
    Where = Other.wstring();
    EXPECT_TRUE(Succeeds(ClipboardLoad(Target, Name, Where, 1)));
    EXPECT_EQ(Name, L"z");
    EXPECT_EQ(Where, Other.wstring());
}

TEST_F(Clipboard, AFileThatDoesNotOpenIsToldWithItsPath) {
    const std::wstring Text = L"Impossibile aprire il file temporaneo " + Path();
    for (const std::int32_t Index : {0, 1, 7}) {
        EXPECT_TRUE(FailsWith(Load(Index),
                              {.Number = 53, .Source = L"vdbInclude.ClipboardLoad", .Description = Text}));
    }
    fs::create_directory(File());
    EXPECT_TRUE(Load(1));
    EXPECT_EQ(CoreUtil::Instance().LastError().Description, Text);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardLoad");
    EXPECT_NE(CoreUtil::Instance().LastError().Number, 0);
    EXPECT_TRUE(Platform.Shown.empty());
}

TEST_F(Clipboard, APathThatNoFileCanHaveIsToldTheSameWay) {
    std::wstring Where = std::wstring(1, static_cast<wchar_t>(0xD800));
    const std::wstring Text = L"Impossibile aprire il file temporaneo " + Where;
    EXPECT_TRUE(ClipboardLoad(Target, Name, Where, 1));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardLoad");
    EXPECT_TRUE(CoreUtil::Instance().LastError().Description == Text);
}

TEST_F(Clipboard, StringsAreOneByteACharacter) {
    std::string All;
    std::wstring Expected;
    for (int Byte = 0; Byte < 256; ++Byte) {
        All.push_back(static_cast<char>(Byte));
        Expected.push_back(StrUtil::FromWindows1252(static_cast<std::uint8_t>(Byte)));
    }
    ClipboardBytes Out;
    Out.Long(1).Long(0).String(All).String(All).String("").Long(0).Long(0).String(All);
    Out.Long(0).Long(0).String("").String("").String("").String("").Long(0);
    WriteFile(File(), Out.Bytes);
    EXPECT_TRUE(Succeeds(Load(1)));
    EXPECT_TRUE(Name == Expected);
    EXPECT_TRUE(Target.Name == Expected);
    EXPECT_TRUE(Target.Desc == Expected);
}

TEST_F(Clipboard, TheNextPositionIsFollowedNotTheOrderInTheFile) {
    ClipboardFile Made({{"a", Named(L"A")}, {"b", Named(L"B")}, {"c", Named(L"C")}});
    // The first entry points at the third.
    Made.Out.Put(4, static_cast<std::int32_t>(Made.Ends[1]) + 1);
    WriteFile(File(), Made.Out.Bytes);
    EXPECT_TRUE(Succeeds(Load(2)));
    EXPECT_EQ(Name, L"c");
    // And with a gap behind the last entry's end.
    WriteFile(File(), Made.Out.Bytes + "resto");
    EXPECT_TRUE(Succeeds(Load(2)));
    EXPECT_EQ(Target.Name, L"C");
}

// ---- damaged files

TEST_F(Clipboard, TruncatedAtEveryByteItReadsWhatIsWholeOrFails) {
    const std::vector<std::pair<std::string, RegObject>> Entries{
        {"primo", FullObject()}, {"secondo", Named(L"DUE")}, {"terzo", FullObject()}};
    const ClipboardFile Made(Entries);
    for (std::size_t Length = 0; Length <= Made.Out.Bytes.size(); ++Length) {
        WriteFile(File(), std::string_view(Made.Out.Bytes).substr(0, Length));
        for (std::int32_t Index = 1; Index <= 4; ++Index) {
            SCOPED_TRACE("length " + std::to_string(Length) + " index " + std::to_string(Index));
            const bool Failed = Load(Index);
            const auto At = static_cast<std::size_t>(Index) - 1;
            const bool Whole = Index <= 3 && Length >= Made.Ends[At];
            if (Length == Made.Out.Bytes.size()) {
                ASSERT_EQ(Failed, Index == 4);
            }
            if (Failed) {
                ExpectToldOnce();
            } else {
                EXPECT_TRUE(Succeeds(Failed));
                ASSERT_TRUE(Whole);
                ASSERT_TRUE(Target == Entries[At].second);
                ASSERT_EQ(Name, Wide(Entries[At].first));
            }
            if (HasFailure()) return;
        }
        EXPECT_EQ(Load(0), Length < 4) << "the number of entries is read all the same, " << Length;
        CoreUtil::Instance().ForgetError();
    }
}

TEST_F(Clipboard, AFaultInsideAnObjectIsShownThere) {
    ClipboardFile Made({{"a", FullObject()}});
    WriteFile(File(), std::string_view(Made.Out.Bytes).substr(0, Made.Out.Bytes.size() - 1));
    EXPECT_TRUE(Load(1));
    ASSERT_EQ(Platform.Shown.size(), 1U);
    EXPECT_EQ(Platform.Shown[0].Source, L"vdbInclude.ReadKvData");
    EXPECT_EQ(Platform.Shown[0].Number, kReadPastEnd);
    EXPECT_TRUE(CoreUtil::Instance().LastError().Empty()) << "it is not shown a second time";
    EXPECT_EQ(Target.Name, L"Soggetti") << "the part that was read is left";
    EXPECT_EQ(Target.UserList, L"ADMIN;UTENTE");

    Platform.Shown.clear();
    Platform.FailOnShow = true;
    EXPECT_TRUE(Load(1)) << "also where it can't be shown";
}

TEST_F(Clipboard, AFaultInAnEntrysNameIsToldByTheReader) {
    ClipboardFile Made({{"nome", FullObject()}});
    for (const std::int32_t Length : {-1, -2147483647 - 1, 2147483647, 1000000}) {
        Made.Out.Put(8, Length);
        WriteFile(File(), Made.Out.Bytes);
        bool Failed = false;
        EXPECT_LT(LargestPiece([&] { Failed = Load(1); }), kLargeAllocation);
        EXPECT_TRUE(Failed);
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardLoad");
        EXPECT_FALSE(CoreUtil::Instance().LastError().Description.empty());
        CoreUtil::Instance().ForgetError();
        EXPECT_TRUE(Platform.Shown.empty());
    }
}

TEST_F(Clipboard, EveryNegativeOrHugeLengthAndCountOfAnObjectFails) {
    const ClipboardFile Made({{"a", FullObject()}, {"b", Named(L"B")}});
    // Offsets of the lengths and counts of the outer object of entry 1: name at 4 + 4 + 4 + 1.
    ClipboardBytes Head;
    Head.Head(FullObject(), 2);
    const std::size_t Begin = 4 + 4 + 4 + 1;
    for (const std::size_t Field : {0U, 1U, 4U, 7U, 8U, 9U, 10U, 11U}) {
        for (const std::int32_t Value : {-1, -2147483647 - 1, 2147483647, 0x10000000, 1000}) {
            SCOPED_TRACE("field " + std::to_string(Field + 1) + " " + std::to_string(Value));
            ClipboardFile Damaged = Made;
            Damaged.Out.Put(Begin + Head.Longs[Field], Value);
            WriteFile(File(), Damaged.Out.Bytes);
            bool Failed = false;
            EXPECT_LT(LargestPiece([&] { Failed = Load(1); }), kLargeAllocation);
            EXPECT_TRUE(Failed);
            ExpectToldOnce();
        }
    }
    // Numbers are numbers.
    for (const std::size_t Field : {2U, 3U, 5U, 6U}) {
        ClipboardFile Changed = Made;
        Changed.Out.Put(Begin + Head.Longs[Field], -2147483647 - 1);
        WriteFile(File(), Changed.Out.Bytes);
        EXPECT_TRUE(Succeeds(Load(1)));
    }
}

TEST_F(Clipboard, ACountOfChildrenBeyondTheFileFails) {
    for (const std::int32_t Count : {1, 2, 100, 1000000, 2147483647, -1, -2147483647 - 1}) {
        ClipboardBytes Out;
        Out.Long(1).Long(0).String("a").Head(Named(L"A"), Count);
        WriteFile(File(), Out.Bytes);
        bool Failed = false;
        EXPECT_LT(LargestPiece([&] { Failed = Load(1); }), kLargeAllocation);
        EXPECT_TRUE(Failed) << Count;
        ExpectToldOnce();
    }
    // One child too few.
    ClipboardBytes Out;
    Out.Long(1).Long(0).String("a").Head(Named(L"A"), 2).Object(Named(L"B"));
    WriteFile(File(), Out.Bytes);
    EXPECT_TRUE(Load(1));
    ExpectToldOnce();
}

TEST_F(Clipboard, ANextPositionOutOfTheFileFailsWhenItIsFollowed) {
    for (const std::int32_t Next : {0, -1, -2147483647 - 1, 2147483647, 1000}) {
        ClipboardFile Made({{"a", Named(L"A")}, {"b", Named(L"B")}});
        Made.Out.Put(4, Next);
        WriteFile(File(), Made.Out.Bytes);
        EXPECT_TRUE(Succeeds(Load(1))) << "it is not followed";
        EXPECT_TRUE(Load(2)) << Next;
        ExpectToldOnce();
    }
}

TEST_F(Clipboard, MoreEntriesPromisedThanThereAre) {
    ClipboardFile Made({{"a", Named(L"A")}});
    for (const std::int32_t Count : {2, 1000, 2147483647}) {
        Made.Out.Put(0, Count);
        WriteFile(File(), Made.Out.Bytes);
        EXPECT_TRUE(Load(2)) << Count;
        ExpectToldOnce();
    }
    Made.Out.Put(0, -1);
    WriteFile(File(), Made.Out.Bytes);
    EXPECT_TRUE(Load(1));
    ExpectToldOnce();
}

// An entry that names itself as the next one would else be read as often as the number of entries promises.
TEST_F(Clipboard, MoreEntriesThanTheFileCanHoldFail) {
    ClipboardFile Made({{"a", Named(L"A")}});
    Made.Out.Put(0, 1000);
    Made.Out.Put(4, 5);
    WriteFile(File(), Made.Out.Bytes);
    EXPECT_TRUE(Load(1000));
    if (HasFailure()) return;
    ExpectToldOnce();
}

TEST_F(Clipboard, EveryIntegerDamagedInEveryWayNeitherCrashesNorTakesMuchMemory) {
    const ClipboardFile Made({{"primo", Named(L"UNO")}, {"secondo", FullObject()}, {"terzo", Nested(3)}});
    const auto Size = static_cast<std::int32_t>(Made.Out.Bytes.size());
    for (const std::size_t Offset : Made.Out.Longs) {
        for (const std::int32_t Value : {-1, 0, 1, 2, 5, 48, Size, Size + 1, Size + 2, 65536, 0x7FFFFFFF,
                                         0x7FFFFFFC, -0x7FFFFFFF, -2147483647 - 1}) {
            ClipboardFile Damaged = Made;
            Damaged.Out.Put(Offset, Value);
            WriteFile(File(), Damaged.Out.Bytes);
            for (const std::int32_t Index : {1, 3}) {
                bool Failed = false;
                const std::size_t Largest = LargestPiece([&] { Failed = Load(Index); });
                ASSERT_LT(Largest, kLargeAllocation) << "offset " << Offset << " value " << Value;
                if (Failed) ExpectToldOnce();
                ASSERT_FALSE(HasFailure()) << "offset " << Offset << " value " << Value;
            }
        }
    }
}

TEST_F(Clipboard, RandomDamageNeitherCrashesNorTakesMuchMemory) {
    const ClipboardFile Made({{"primo", FullObject()}, {"secondo", Nested(6)}});
    std::mt19937 Random(99);
    for (int Round = 0; Round < 600; ++Round) {
        std::string Bytes = Made.Out.Bytes;
        for (auto N = 1 + Random() % 4; N > 0; --N)
            Bytes[Random() % Bytes.size()] = static_cast<char>(Random() % 256);
        if (Random() % 3 == 0) Bytes.resize(Random() % Bytes.size());
        WriteFile(File(), Bytes);
        bool Failed = false;
        const std::size_t Largest =
            LargestPiece([&] { Failed = Load(static_cast<std::int32_t>(Random() % 4)); });
        ASSERT_LT(Largest, kLargeAllocation);
        if (Failed) ExpectToldOnce();
        ASSERT_FALSE(HasFailure()) << Round;
    }
}

TEST_F(Clipboard, SixtyFourLevelsAreReadAndSixtyFiveAreNot) {
    WriteFile(File(), ClipboardFile({{"a", Nested(64)}}).Out.Bytes);
    EXPECT_TRUE(Succeeds(Load(1)));
    EXPECT_TRUE(Target == Nested(64));
    for (const int Depth : {65, 66, 5000}) {
        WriteFile(File(), ClipboardFile({{"a", Nested(Depth)}}).Out.Bytes);
        EXPECT_TRUE(Load(1)) << Depth;
        ExpectToldOnce();
    }
}

TEST_F(Clipboard, AnObjectIsReadAtTheFilesPlace) {
    ClipboardBytes Out;
    Out.Object(FullObject()).Object(Named(L"DUE"));
    WriteFile(File(), Out.Bytes);
    FileNumber Number;
    ASSERT_EQ(OpenFile(Path(), 257, 32, 0, Number), 0);
    Target = Named(L"prima");
    Target.SetValue(L"V", std::wstring(L"x"));
    EXPECT_TRUE(Succeeds(ReadKvData(Target, Number)));
    EXPECT_TRUE(Target == FullObject());
    EXPECT_TRUE(Succeeds(ReadKvData(Target, Number)));
    EXPECT_TRUE(Target == Named(L"DUE"));
    EXPECT_TRUE(ReadKvData(Target, Number));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ReadKvData");
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, kReadPastEnd);
    EXPECT_TRUE(Number.IsOpen()) << "the file is closed by the caller";
}

// ---- writing

TEST_F(Clipboard, ASmallObjectByteForByte) {
    RegObject Object = Named(L"AB");
    Object.Text = L"t";
    Object.Id = 258;
    Object.Version = 3;
    Object.Desc = L"è€";
    Object.Number2 = -1;
    Object.Number3 = 7;
    Object.String3 = L"x";
    Object.UserList = L"U";
    Object.SetValue(L"N", std::int32_t{-5});
    Object.SetValue(L"B", true);
    Object.SetValue(L"S", std::wstring(L"\u03A9"));
    Object.Children.push_back(Named(L"C"));

    const auto Bytes = [](std::initializer_list<int> Each) {
        std::string Out;
        for (const int B : Each) Out.push_back(static_cast<char>(B));
        return Out;
    };
    const std::string Zero(4, '\0');
    const auto Plain = [&](char Letter, std::string_view Text) {
        std::string Out = Bytes({1, 0, 0, 0}) + Letter;
        Out += static_cast<char>(Text.size()) + std::string(3, '\0') + std::string(Text);
        for (int Rest = 0; Rest < 10; ++Rest) Out += Zero;
        return Out;
    };
    std::string Expected = Bytes({1, 0, 0, 0});   // one entry
    Expected += "NEXT";                           // put in below
    Expected += Bytes({2, 0, 0, 0}) + "AB";       // the entry's name is the object's
    Expected += Bytes({2, 0, 0, 0}) + "AB";       // Name
    Expected += Bytes({1, 0, 0, 0}) + "t";        // Text
    Expected += Bytes({2, 1, 0, 0, 3, 0, 0, 0});  // Id, Version
    Expected += Bytes({2, 0, 0, 0, 0xE8, 0x80});  // Desc, one byte a character
    Expected += Bytes({0xFF, 0xFF, 0xFF, 0xFF, 7, 0, 0, 0});
    Expected += Bytes({1, 0, 0, 0}) + "x" + Zero;
    Expected += Bytes({1, 0, 0, 0}) + "U" + Zero;  // UserList, String5
    Expected += Bytes({4, 0, 0, 0});               // the values are children
    Expected += Plain('N', "-5") + Plain('B', "True") + Plain('S', "?") + Plain('C', "");
    const std::size_t Behind = Expected.size() + 1;  // one past the end, 1-based
    Expected.replace(4, 4, Bytes({static_cast<int>(Behind % 256), static_cast<int>(Behind / 256), 0, 0}));

    std::wstring Where;
    EXPECT_TRUE(Succeeds(ClipboardStore(Object, Where)));
    EXPECT_EQ(Where, Path());
    EXPECT_EQ(ReadFile(File()), Expected);
}

TEST_F(Clipboard, ACopyReplacesTheFile) {
    WriteFile(File(), std::string(100000, 'x'));
    std::wstring Where;
    EXPECT_TRUE(Succeeds(ClipboardStore(Named(L"A"), Where)));
    EXPECT_EQ(ReadFile(File()), ClipboardFile({{"A", Named(L"A")}}).Out.Bytes);
    EXPECT_TRUE(Succeeds(ClipboardStore(Named(L"B"), Where)));
    EXPECT_TRUE(Succeeds(Load(1)));
    EXPECT_EQ(Name, L"B");
    EXPECT_TRUE(FailsWith(Load(2), {.Number = 20000,
                                    .Source = L"vdbInclude.ClipboardLoad",
                                    .Description = L"Elemento non presente nella clipboard."}));
}

TEST_F(Clipboard, WhatIsStoredIsLoadedAgain) {
    std::mt19937 Random(3);
    const auto Text = [&] {
        std::wstring Out;
        for (auto N = Random() % 12; N > 0; --N)
            Out.push_back(StrUtil::FromWindows1252(static_cast<std::uint8_t>(Random() % 256)));
        return Out;
    };
    const auto Number = [&] { return static_cast<std::int32_t>(Random()); };
    const std::function<RegObject(int)> Make = [&](int Depth) {
        RegObject Object;
        Object.Name = Text();
        Object.Text = Text();
        Object.Id = Number();
        Object.Version = Number();
        Object.Desc = Text();
        Object.Number2 = Number();
        Object.Number3 = Number();
        Object.String3 = Text();
        Object.String4 = Text();
        Object.UserList = Text();
        Object.String5 = Text();
        if (Depth > 0)
            for (auto N = Random() % 4; N > 0; --N) Object.Children.push_back(Make(Depth - 1));
        return Object;
    };
    for (int Round = 0; Round < 100; ++Round) {
        const RegObject Object = Make(4);
        std::wstring Where;
        ASSERT_TRUE(Succeeds(ClipboardStore(Object, Where)));
        ASSERT_EQ(ReadFile(File()),
                  ClipboardFile({{ClipboardBytes::Narrow1252(Object.Name), Object}}).Out.Bytes);
        ASSERT_TRUE(Succeeds(Load(1)));
        ASSERT_TRUE(Target == Object);
        ASSERT_EQ(Name, Object.Name);
    }
}

TEST_F(Clipboard, ValuesBecomeChildrenInFrontOfTheOthers) {
    RegObject Object = Named(L"A");
    Object.SetValue(L"Path", std::wstring(L"C:\\Dati"));
    Object.SetValue(L"Flags", std::int32_t{258});
    Object.SetValue(L"Off", false);
    RegObject List = Named(L"Titles");
    RegObject Element = Named(L"E");
    Element.SetValue(L"Text", std::wstring(L"testo"));
    List.Children.push_back(Element);
    Object.Children.push_back(List);
    std::wstring Where;
    ASSERT_TRUE(Succeeds(ClipboardStore(Object, Where)));
    ASSERT_TRUE(Succeeds(Load(1)));

    RegObject Expected = Named(L"A");
    const auto Value = [](std::wstring_view ValueName, std::wstring_view Text) {
        RegObject Child = Named(ValueName);
        Child.Text = Text;
        return Child;
    };
    Expected.Children = {Value(L"Path", L"C:\\Dati"), Value(L"Flags", L"258"), Value(L"Off", L"False")};
    RegObject ExpectedList = Named(L"Titles");
    RegObject ExpectedElement = Named(L"E");
    ExpectedElement.Children = {Value(L"Text", L"testo")};
    ExpectedList.Children = {ExpectedElement};
    Expected.Children.push_back(ExpectedList);
    EXPECT_TRUE(Target == Expected);
}

TEST_F(Clipboard, WhatIsTooDeepToBeReadAgainIsNotWritten) {
    std::wstring Where;
    EXPECT_TRUE(Succeeds(ClipboardStore(Nested(64), Where)));
    EXPECT_TRUE(Succeeds(Load(1)));
    const std::string Before = ReadFile(File());

    EXPECT_TRUE(ClipboardStore(Nested(65), Where));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardStore");
    EXPECT_FALSE(CoreUtil::Instance().LastError().Description.empty());
    CoreUtil::Instance().ForgetError();
    EXPECT_EQ(ReadFile(File()), Before) << "the file is as it was";

    // A value of the innermost object stands one level deeper in the file.
    for (const int Depth : {63, 64}) {
        RegObject Object = Nested(Depth);
        RegObject* Last = &Object;
        while (!Last->Children.empty()) Last = &Last->Children.front();
        Last->SetValue(L"Path", std::wstring(L"x"));
        const bool Refused = ClipboardStore(Object, Where);
        CoreUtil::Instance().ForgetError();
        EXPECT_EQ(Refused, Depth == 64) << Depth;
        EXPECT_TRUE(Succeeds(Load(1))) << "a clipboard that was written can be read, " << Depth;
    }
}

TEST_F(Clipboard, OnlyTheFileItselfIsLeftInTheFolder) {
    std::wstring Where;
    ASSERT_TRUE(Succeeds(ClipboardStore(FullObject(), Where)));
    ASSERT_TRUE(Succeeds(ClipboardStore(Named(L"A"), Where)));
    EXPECT_EQ(std::distance(fs::directory_iterator(Platform.Folder), fs::directory_iterator()), 1);
    fs::remove(File());
    fs::create_directory(File());
    WriteFile(File() / "x", "x");
    EXPECT_TRUE(ClipboardStore(Named(L"A"), Where));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardStore");
    EXPECT_EQ(std::distance(fs::directory_iterator(Platform.Folder), fs::directory_iterator()), 1)
        << "also after a failure";
}

TEST_F(Clipboard, TheFilesNameMayHoldAnyLetter) {
    std::wstring Where = Platform.Folder.wstring() + L"/città €.tmp";
    EXPECT_TRUE(Succeeds(ClipboardStore(Named(L"A"), Where)));
    EXPECT_TRUE(fs::exists(Platform.Folder / fs::path(u8"città €.tmp")));
    EXPECT_TRUE(Succeeds(ClipboardLoad(Target, Name, Where, 1)));
    EXPECT_EQ(Name, L"A");
}

TEST_F(Clipboard, AFileThatCantBeWrittenIsToldWithItsPath) {
    std::wstring Where = (Platform.Folder / "manca" / "x.tmp").wstring();
    EXPECT_TRUE(ClipboardStore(Named(L"A"), Where));
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.ClipboardStore");
    EXPECT_NE(CoreUtil::Instance().LastError().Number, 0);
    EXPECT_NE(CoreUtil::Instance().LastError().Description.find(Where), std::wstring::npos);
    EXPECT_TRUE(Platform.Shown.empty());
}

// ---- memory that runs out

TEST_F(Clipboard, NothingEscapesWhenMemoryRunsOut) {
    WriteFile(File(), ClipboardFile({{"un nome che non sta nella stringa breve", FullObject()}}).Out.Bytes);
    bool RanOut = true;
    for (std::size_t Pieces = 0; RanOut; ++Pieces) {
        ASSERT_LT(Pieces, 10000U);
        bool Failed = false;
        RanOut = RunsOutAfter(Pieces, [&] { Failed = Load(1); });
        Platform.Shown.clear();
        if (Failed) {
            EXPECT_TRUE(RanOut);
        } else {
            EXPECT_TRUE(Target == FullObject()) << Pieces;
        }
        CoreUtil::Instance().ForgetError();
    }
    const RegObject Source = FullObject();
    RanOut = true;
    for (std::size_t Pieces = 0; RanOut; ++Pieces) {
        ASSERT_LT(Pieces, 10000U);
        std::wstring Where;
        bool Failed = false;
        RanOut = RunsOutAfter(Pieces, [&] { Failed = ClipboardStore(Source, Where); });
        EXPECT_TRUE(!Failed || RanOut);
        CoreUtil::Instance().ForgetError();
    }
    EXPECT_TRUE(Succeeds(Load(1)));
    EXPECT_TRUE(Target == Source);
}

TEST_F(Clipboard, AFailureThatFindsNoMemoryIsReportedAllTheSame) {
    bool RanOut = true;
    for (std::size_t Pieces = 0; RanOut; ++Pieces) {
        ASSERT_LT(Pieces, 1000U);
        bool Failed = false;
        RanOut = RunsOutAfter(Pieces, [&] {
            Failed = Trap(L"diProva.UnaProceduraDalNomeLungo", []() -> bool {
                BadValue(L"PAROLACHIAVE=", L"un valore che non sta in nessuna stringa breve");
            });
        });
        EXPECT_TRUE(Failed);
        const KvError& Error = CoreUtil::Instance().LastError();
        EXPECT_EQ(Error.Number, RanOut ? 7 : 20000) << Pieces;
        EXPECT_FALSE(Error.Description.empty());
        EXPECT_EQ(Error.Source, L"diProva.UnaProceduraDalNomeLungo") << Pieces;
        CoreUtil::Instance().ForgetError();
        EXPECT_TRUE(CoreUtil::Instance().Pending().Empty());
    }
}

}  // namespace
}  // namespace kv::test
