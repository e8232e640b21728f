// A platform for tests: it writes down what the operator would see and answers from a script.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "frame/CoreUtil.h"
#include "frame/Platform.h"

namespace kv::test {

class TestPlatform final : public Platform {
  public:
    /// The door of the core until it dies; the folders are a fresh temporary one.
    TestPlatform();
    ~TestPlatform() override;

    void ShowError(const KvError& Error) override;
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override { ++Beeps; }
    void SetPointer(std::int32_t Pointer) override { Pointers.push_back(Pointer); }
    std::wstring ProgramFolder() override { return Folder.wstring(); }
    std::wstring TempFolder() override { return Folder.wstring(); }

    std::filesystem::path Folder;
    Platform* Before = nullptr;  // whose place it took, and to whom it gives it back
    std::vector<KvError> Shown;
    std::vector<std::wstring> Asked;
    std::vector<std::int32_t> Styles;  // of the message boxes
    std::deque<Answer> Answers;        // the default button where it is empty
    struct FileQuestion {
        std::wstring Title;
        std::wstring Filter;
        std::int32_t FilterIndex;
        std::int32_t Flags;
    };
    std::vector<FileQuestion> FileQuestions;
    std::optional<std::wstring> SavePath;           // what the file dialog answers, cancelled where absent
    std::vector<std::vector<std::wstring>> Listed;  // the items of the lists shown
    int Beeps = 0;
    std::vector<std::int32_t> Pointers;
    bool FailOnShow = false;  // throws from ShowError
};

/// The whole content of a file, as bytes; writes one.
std::string ReadFile(const std::filesystem::path& Path);
void WriteFile(const std::filesystem::path& Path, std::string_view Bytes);

/// UTF-8 for messages of failing tests and for golden files.
std::string Narrow(std::wstring_view Text);
std::wstring Wide(std::string_view Utf8);

/// Lines joined by CR LF, with one behind the last.
std::wstring Lines(std::initializer_list<std::wstring_view> Each);

/// Compares `Text` with tests/golden/<Name>, byte for byte (UTF-8). With KV_PROMOTE set in the environment
/// the file is written instead. Where they differ the text is left beside it as <Name>.new.
::testing::AssertionResult MatchesGolden(const std::string& Name, std::wstring_view Text);

}  // namespace kv::test
