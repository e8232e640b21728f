// The default sort table and the file it is kept in.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <utility>

#include "frame/vdbInclude.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

// clang-format off
constexpr std::uint8_t kWeights[256] = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 00
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 10
    32, 0, 0, 0, 0, 0, 69, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 20
    48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 0, 0, 0, 0, 0, 0,  // 30
    65, 65, 66, 67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 78, 79,  // 40
    80, 81, 82, 83, 84, 85, 86, 87, 88, 89, 90, 0, 0, 0, 0, 0,  // 50
    0, 65, 66, 67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 78, 79,  // 60
    80, 81, 82, 83, 84, 85, 86, 87, 88, 89, 90, 0, 0, 0, 0, 0,  // 70
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 83, 0, 0, 0, 90, 0,  // 80
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 83, 0, 79, 0, 90, 89,  // 90
    0, 0, 67, 76, 0, 89, 0, 0, 0, 67, 65, 0, 0, 0, 82, 0,  // A0
    0, 0, 50, 51, 0, 77, 0, 0, 0, 49, 48, 0, 49, 49, 51, 0,  // B0
    65, 65, 65, 65, 65, 65, 65, 67, 69, 69, 69, 69, 73, 73, 73, 73,  // C0
    0, 78, 79, 79, 79, 79, 79, 0, 0, 85, 85, 85, 85, 89, 0, 83,  // D0
    65, 65, 65, 65, 65, 65, 65, 67, 69, 69, 69, 69, 73, 73, 73, 73,  // E0
    0, 78, 79, 79, 79, 79, 79, 0, 0, 85, 85, 85, 85, 89, 0, 89,  // F0
};
// clang-format on

class SortTable : public FrameTest {
  protected:
    fs::path File() const { return Platform.Folder / "KVDSRT.TAB"; }
    static std::string Default() { return {reinterpret_cast<const char*>(kWeights), sizeof kWeights}; }
    static std::wstring AsText(std::string_view Bytes) {
        std::wstring Text;
        for (const char C : Bytes) Text.push_back(static_cast<std::uint8_t>(C));
        return Text;
    }
};

TEST_F(SortTable, EveryCodeHasItsWeight) {
    for (int Code = 0; Code < 256; ++Code)
        EXPECT_EQ(DefaultSortWeight(static_cast<std::uint8_t>(Code)), kWeights[Code]) << Code;
    EXPECT_EQ(DefaultSortWeight('&'), 'E');
    EXPECT_EQ(DefaultSortWeight('@'), 'A');
    EXPECT_EQ(DefaultSortWeight('\t'), 0);
}

TEST_F(SortTable, TheFileIsMadeByteForByte) {
    EXPECT_TRUE(Succeeds(DefaultSortCreate()));
    EXPECT_EQ(fs::file_size(File()), 256U);
    EXPECT_EQ(ReadFile(File()), Default());
    EXPECT_EQ(std::distance(fs::directory_iterator(Platform.Folder), fs::directory_iterator()), 1)
        << "and nothing else";
}

TEST_F(SortTable, AnEarlierFileIsReplaced) {
    for (const std::size_t Length : {0U, 10U, 256U, 1000U}) {
        WriteFile(File(), std::string(Length, 'x'));
        EXPECT_TRUE(Succeeds(DefaultSortCreate()));
        EXPECT_EQ(ReadFile(File()), Default());
    }
}

TEST_F(SortTable, AMissingFileIsMadeByTheFirstLoad) {
    std::wstring Table = L"prima";
    EXPECT_TRUE(Succeeds(DefaultSortLoad(Table)));
    EXPECT_EQ(Table, AsText(Default()));
    EXPECT_EQ(ReadFile(File()), Default());
}

TEST_F(SortTable, WhateverIsThereIsLoaded) {
    std::string All;
    for (int C = 255; C >= 0; --C) All.push_back(static_cast<char>(C));
    const std::string Contents[] = {
        std::string(),      std::string("A"),         std::string("\0\0B", 3), All,
        All + All + "\r\n", std::string(255, '\x1A'), std::string(100000, 'z')};
    for (const std::string& Bytes : Contents) {
        WriteFile(File(), Bytes);
        std::wstring Table = L"prima";
        EXPECT_TRUE(Succeeds(DefaultSortLoad(Table)));
        EXPECT_EQ(Table, AsText(Bytes)) << "one character a byte, " << Bytes.size();
        EXPECT_EQ(ReadFile(File()), Bytes) << "the file is not touched";
    }
}

TEST_F(SortTable, AFolderInItsPlaceFails) {
    fs::create_directory(File());
    std::wstring Table = L"prima";
    EXPECT_TRUE(DefaultSortLoad(Table));
    EXPECT_EQ(Table, L"");
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.DefaultSortLoad");
    EXPECT_NE(CoreUtil::Instance().LastError().Number, 0);
    EXPECT_FALSE(CoreUtil::Instance().LastError().Description.empty());
    CoreUtil::Instance().ForgetError();

    EXPECT_TRUE(DefaultSortCreate());
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.DefaultSortCreate");
    EXPECT_FALSE(CoreUtil::Instance().LastError().Description.empty());
    EXPECT_TRUE(Platform.Shown.empty());
}

/// A platform whose folders have any name.
class FolderPlatform final : public SilentPlatform {
  public:
    explicit FolderPlatform(std::wstring Folder)
        : Folder_(std::move(Folder)), Before(CoreUtil::Instance().SetPlatform(this)) {}
    ~FolderPlatform() override { CoreUtil::Instance().SetPlatform(Before); }
    std::wstring ProgramFolder() override { return Folder_; }
    std::wstring TempFolder() override { return Folder_; }

  private:
    std::wstring Folder_;
    kv::Platform* const Before;
};

TEST_F(SortTable, TheProgramFolderMayHaveAnyLetter) {
    const fs::path Folder = Platform.Folder / fs::path(u8"Città è €");
    fs::create_directory(Folder);
    const FolderPlatform Other(Platform.Folder.wstring() + L"/Città è €");
    std::wstring Table;
    EXPECT_TRUE(Succeeds(DefaultSortLoad(Table)));
    EXPECT_EQ(Table, AsText(Default()));
    EXPECT_TRUE(fs::exists(Folder / "KVDSRT.TAB"));
    EXPECT_TRUE(Succeeds(DefaultSortLoad(Table))) << "and again from the file that is there";
}

TEST_F(SortTable, AProgramFolderThatIsNoneFailsWhereTheFileIsMade) {
    const fs::path Whole = Platform.Folder;
    Platform.Folder = Whole / "missing";
    std::wstring Table = L"prima";
    EXPECT_TRUE(DefaultSortLoad(Table));
    EXPECT_EQ(Table, L"");
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"vdbInclude.DefaultSortCreate");
    Platform.Folder = Whole;
}

}  // namespace
}  // namespace kv::test
