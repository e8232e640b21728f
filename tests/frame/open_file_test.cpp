// The general file opener: every mode, existing and missing, and what can be done with the file then.
#include <gtest/gtest.h>

#include <filesystem>

#include "frame/vdbInclude.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

class OpensFiles : public FrameTest {
  protected:
    fs::path File() const { return Platform.Folder / "prova.dat"; }
    std::wstring Path() const { return File().wstring(); }
};

// The rules in their order, written down a second time.
std::int32_t ErrorOf(std::int32_t Mode, bool Exists) {
    if (Mode & 16) {
        if (Mode & 1) return 5;
        if ((Mode & 64) && (Mode & 32)) return 5;
        if ((Mode & 64) && Exists) return 58;
        if ((Mode & 32) && (Mode & 8)) return 5;
    } else {
        if (Mode & (32 | 64)) return 5;
        if (!Exists) return 53;
    }
    return Mode & (1 | 2 | 4) ? 0 : 5;
}

TEST_F(OpensFiles, EveryModeOnAMissingAndAnExistingFile) {
    const std::string Content = "dieci byte";
    for (std::int32_t Mode = 0; Mode < 512; ++Mode) {
        for (const bool Exists : {false, true}) {
            SCOPED_TRACE("mode " + std::to_string(Mode) + (Exists ? " existing" : " missing"));
            fs::remove(File());
            if (Exists) WriteFile(File(), Content);
            FileNumber Number;
            const std::int32_t Error = OpenFile(Path(), Mode, 0, 0, Number);
            ASSERT_EQ(Error, ErrorOf(Mode, Exists));
            ASSERT_EQ(Number.IsOpen(), Error == 0);
            if (Error == 0) {
                const std::int64_t Length = Exists && !(Mode & 32) ? 10 : 0;
                EXPECT_EQ(Number.Length(), Length);
                EXPECT_EQ(Number.Place(), Mode & 8 ? Length + 1 : 1);
                EXPECT_EQ(Number.RecordLength(), Mode & 128 ? 32 : 512);
                EXPECT_TRUE(fs::exists(File()));
                CloseFile(Number);
                EXPECT_EQ(ReadFile(File()), Exists && !(Mode & 32) ? Content : "");
            } else if (!(Mode & 32)) {
                EXPECT_EQ(fs::exists(File()), Exists) << "a refused mode makes no file";
                if (Exists) {
                    EXPECT_EQ(ReadFile(File()), Content);
                }
            }
        }
    }
}

TEST_F(OpensFiles, TheRulesAtTheirEdges) {
    WriteFile(File(), "x");
    const std::wstring Missing = (Platform.Folder / "manca").wstring();
    const struct {
        std::int32_t Mode;
        bool Exists;
        std::int32_t Error;
        const char* Why;
    } kRows[] = {
        {16 | 1, true, 5, "creating and reading"},
        {16 | 1, false, 5, "creating and reading, missing"},
        {16 | 1 | 64, true, 5, "reading is tested before the file's existence"},
        {16 | 64 | 32 | 2, true, 5, "must not exist and truncate, before existence"},
        {16 | 64 | 2, true, 58, "must not exist"},
        {16 | 64 | 32 | 8 | 2, false, 5, "both"},
        {16 | 32 | 8 | 2, true, 5, "truncate and append"},
        {16 | 64, true, 58, "existence is tested before the access bits"},
        {32 | 1, false, 5, "truncate without creating is tested before existence"},
        {64 | 1, false, 5, "must not exist without creating, before existence"},
        {32 | 64 | 2, true, 5, "both without creating"},
        {1, false, 53, "missing"},
        {0, false, 53, "existence is tested before the access bits"},
        {256, false, 53, "existence is tested before the access bits, binary"},
        {0, true, 5, "no access bit"},
        {256, true, 5, "no access bit, binary"},
        {8, true, 5, "append alone is no access"},
        {128, true, 5, "a record length alone is no access"},
        {1, true, 0, "reading"},
        {257, true, 0, "reading binary"},
    };
    for (const auto& Row : kRows) {
        FileNumber Number;
        EXPECT_EQ(OpenFile(Row.Exists ? Path() : Missing, Row.Mode, 0, 0, Number), Row.Error) << Row.Why;
        CloseFile(Number);
    }
    EXPECT_EQ(ReadFile(File()), "x");
    EXPECT_FALSE(fs::exists(Missing));
}

TEST_F(OpensFiles, ShareIsOneOfFiveValues) {
    WriteFile(File(), "x");
    for (const std::int32_t Share : {0, 16, 32, 48, 64}) {
        FileNumber Number;
        EXPECT_EQ(OpenFile(Path(), 257, Share, 0, Number), 0) << Share;
    }
    for (const std::int32_t Share :
         {-1, 1, 2, 8, 15, 17, 24, 31, 33, 63, 65, 80, 96, 112, 128, 256, -16, 2147483647}) {
        FileNumber Number;
        EXPECT_EQ(OpenFile(Path(), 257, Share, 0, Number), 5) << Share;
        EXPECT_FALSE(Number.IsOpen());
        EXPECT_EQ(OpenFile(Path(), 256 | 2 | 16 | 32, Share, 0, Number), 5) << Share;
        EXPECT_EQ(ReadFile(File()), "x") << "a refused opening truncates nothing";
    }
}

TEST_F(OpensFiles, Mode148MakesATextFileWithWriteAccess) {
    FileNumber Number;
    EXPECT_EQ(OpenFile(Path(), 148, 0, 0, Number), 0);
    EXPECT_TRUE(fs::exists(File()));
    EXPECT_EQ(Number.RecordLength(), 32) << "as given, here by default";
    Number.Write("riga\r\n");
    CloseFile(Number);
    EXPECT_EQ(ReadFile(File()), "riga\r\n");
}

TEST_F(OpensFiles, TheRecordLengthIsTakenWithItsBitOnly) {
    WriteFile(File(), "x");
    FileNumber Number;
    EXPECT_EQ(OpenFile(Path(), 257, 0, 0, Number, 100), 0);
    EXPECT_EQ(Number.RecordLength(), 512);
    EXPECT_EQ(OpenFile(Path(), 257 | 128, 0, 0, Number, 100), 0);
    EXPECT_EQ(Number.RecordLength(), 100);
    EXPECT_EQ(OpenFile(Path(), 257 | 128, 0, 0, Number), 0);
    EXPECT_EQ(Number.RecordLength(), 32);
}

TEST_F(OpensFiles, TheReservedArgumentIsNotRead) {
    WriteFile(File(), "x");
    for (const std::int32_t Reserved : {0, 1, -1, 77}) {
        FileNumber Number;
        EXPECT_EQ(OpenFile(Path(), 257, 0, Reserved, Number), 0);
    }
}

TEST_F(OpensFiles, WhatIsNoFileIsAnErrorNumberAndNothingElse) {
    fs::create_directory(Platform.Folder / "cartella");
    const std::wstring Paths[] = {(Platform.Folder / "cartella").wstring(), L"",
                                  (Platform.Folder / "manca" / "x").wstring(), std::wstring(5000, L'x')};
    for (const std::wstring& Each : Paths) {
        for (const std::int32_t Mode : {257, 1, 256 | 2 | 16, 2 | 16, 256 | 2 | 16 | 32}) {
            FileNumber Number;
            std::int32_t Error = 0;
            EXPECT_NO_THROW(Error = OpenFile(Each, Mode, 0, 0, Number));
            EXPECT_GT(Error, 0) << Narrow(Each.substr(0, 80)) << " mode " << Mode;
            EXPECT_FALSE(Number.IsOpen());
        }
    }
}

TEST_F(OpensFiles, ANameThatNoFileCanHaveIsAnErrorNumberToo) {
    const std::wstring Impossible = Platform.Folder.wstring() + L"/" + static_cast<wchar_t>(0xD800);
    for (const std::int32_t Mode : {257, 1, 256 | 2 | 16}) {
        FileNumber Number;
        std::int32_t Error = 0;
        EXPECT_NO_THROW(Error = OpenFile(Impossible, Mode, 0, 0, Number)) << Mode;
        EXPECT_GT(Error, 0) << Mode;
        EXPECT_FALSE(Number.IsOpen());
    }
}

TEST_F(OpensFiles, NamesMayHoldAnyLetter) {
    const std::wstring Name = Platform.Folder.wstring() + L"/perché €uro Ω.dat";
    FileNumber Number;
    ASSERT_EQ(OpenFile(Name, 256 | 2 | 16, 0, 0, Number), 0);
    Number.Write("x");
    CloseFile(Number);
    EXPECT_TRUE(CoreUtil::Instance().FileExists(Name));
    EXPECT_EQ(OpenFile(Name, 257, 0, 0, Number), 0);
    EXPECT_EQ(Number.Read(1), "x");
}

TEST_F(OpensFiles, ACharacterOfTwoHalvesIsOneLetterOfAName) {
    const std::wstring Halves{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDCD6)};
    WriteFile(Platform.Folder / std::u8string(u8"libro \U0001F4D6.dat"), "x");
    EXPECT_TRUE(CoreUtil::Instance().FileExists(Platform.Folder.wstring() + L"/libro " + Halves + L".dat"));
    EXPECT_FALSE(CoreUtil::Instance().FileExists(Platform.Folder.wstring() + L"/libro " +
                                                 Halves.substr(0, 1) + L".dat"));
}

TEST_F(OpensFiles, ClosingSetsItToNothing) {
    FileNumber Number;
    CloseFile(Number);
    EXPECT_FALSE(Number.IsOpen());
    WriteFile(File(), "abc");
    ASSERT_EQ(OpenFile(Path(), 257, 0, 0, Number), 0);
    EXPECT_TRUE(Number.IsOpen());
    CloseFile(Number);
    EXPECT_FALSE(Number.IsOpen());
    CloseFile(Number);
    EXPECT_FALSE(Number.IsOpen());
    EXPECT_EQ(OpenFile((Platform.Folder / "manca").wstring(), 257, 0, 0, Number), 53);
    EXPECT_FALSE(Number.IsOpen());
}

TEST_F(OpensFiles, ReadingStopsAtTheEnd) {
    WriteFile(File(), std::string("\x01\x02\x03\x84\xFF\xFF\xFF\xFF"
                                  "ab",
                                  10));
    FileNumber Number;
    ASSERT_EQ(OpenFile(Path(), 257, 32, 0, Number), 0);
    EXPECT_EQ(Number.ReadLong(), static_cast<std::int32_t>(0x84030201U)) << "little-endian";
    EXPECT_EQ(Number.ReadLong(), -1);
    EXPECT_EQ(Number.Place(), 9);
    EXPECT_EQ(NumberRaised([&] { Number.ReadLong(); }), 62);
    EXPECT_EQ(NumberRaised([&] { Number.Read(3); }), 62);
    EXPECT_EQ(NumberRaised([&] { Number.Read(-1); }), 62);
    EXPECT_EQ(NumberRaised([&] { Number.Read(0x7FFFFFFFFFFFFFFF); }), 62);
    EXPECT_EQ(NumberRaised([&] { Number.Read(-0x7FFFFFFFFFFFFFFF - 1); }), 62);
    EXPECT_EQ(Number.Read(0), "");
    EXPECT_EQ(Number.Read(2), "ab") << "a refused reading has not moved the place";
    EXPECT_EQ(Number.Read(0), "");
    EXPECT_EQ(NumberRaised([&] { Number.Read(1); }), 62);
    for (const std::int64_t Place : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{12},
                                     std::int64_t{0x7FFFFFFFFFFFFFFF}, -std::int64_t{0x7FFFFFFFFFFFFFFF} - 1})
        EXPECT_EQ(NumberRaised([&] { Number.Seek(Place); }), 62) << Place;
    Number.Seek(11);
    EXPECT_EQ(Number.Read(0), "");
    Number.Seek(9);
    EXPECT_EQ(Number.Read(2), "ab");
    Number.Seek(1);
    EXPECT_EQ(Number.Read(1), "\x01");
}

TEST_F(OpensFiles, ABinaryFileIsWrittenAtItsPlace) {
    WriteFile(File(), "0123456789");
    FileNumber Number;
    ASSERT_EQ(OpenFile(Path(), 256 | 4, 0, 0, Number), 0);
    Number.Write("ab");
    EXPECT_EQ(Number.Read(2), "23") << "the place is behind what was written";
    Number.Seek(9);
    Number.Write("XYZ");
    EXPECT_EQ(Number.Length(), 11);
    EXPECT_EQ(Number.Place(), 12);
    CloseFile(Number);
    EXPECT_EQ(ReadFile(File()), "ab234567XYZ");

    ASSERT_EQ(OpenFile(Path(), 256 | 2 | 8, 0, 0, Number), 0);
    EXPECT_EQ(Number.Place(), 12);
    Number.Write("!");
    CloseFile(Number);
    EXPECT_EQ(ReadFile(File()), "ab234567XYZ!");
}

TEST_F(OpensFiles, ATextFileIsAppendedTo) {
    for (const std::int32_t Mode : {2, 4, 2 | 8, 4 | 8, 2 | 16}) {
        SCOPED_TRACE(Mode);
        WriteFile(File(), "0123456789");
        FileNumber Number;
        ASSERT_EQ(OpenFile(Path(), Mode, 0, 0, Number), 0);
        Number.Write("abc");
        EXPECT_EQ(Number.Length(), 13) << "the file has grown";
        Number.Write("d");
        EXPECT_EQ(Number.Length(), 14);
        CloseFile(Number);
        EXPECT_EQ(ReadFile(File()), "0123456789abcd");
    }
}

TEST_F(OpensFiles, ATextFileIsReadWithItsBit) {
    WriteFile(File(),
              "riga\r\n\x1A"
              "fine");
    FileNumber Number;
    ASSERT_EQ(OpenFile(Path(), 1, 0, 0, Number), 0);
    EXPECT_EQ(Number.Length(), 11);
    EXPECT_EQ(Number.Read(11),
              "riga\r\n\x1A"
              "fine")
        << "no byte is read as another";
}

TEST_F(OpensFiles, AFileOpenForReadingIsNotWritten) {
    WriteFile(File(), "abc");
    FileNumber Number;
    ASSERT_EQ(OpenFile(Path(), 257, 0, 0, Number), 0);
    EXPECT_EQ(NumberRaised([&] { Number.Write("x"); }), 75);
    EXPECT_EQ(Number.Length(), 3);
    CloseFile(Number);
    EXPECT_EQ(ReadFile(File()), "abc");
}

}  // namespace
}  // namespace kv::test
