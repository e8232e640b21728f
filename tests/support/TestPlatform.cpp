#include "tests/support/TestPlatform.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace kv::test {
namespace {

std::filesystem::path FreshFolder() {
    static std::atomic<int> Count{0};
    std::random_device Random;
    const std::filesystem::path Folder =
        std::filesystem::temp_directory_path() /
        ("kvtest-" + std::to_string(Random()) + "-" + std::to_string(++Count));
    std::filesystem::create_directories(Folder);
    return Folder;
}

}  // namespace

TestPlatform::TestPlatform() : Folder(FreshFolder()) {
    Before = CoreUtil::Instance().SetPlatform(this);
    CoreUtil::Instance().ForgetError();
}

TestPlatform::~TestPlatform() {
    CoreUtil::Instance().SetPlatform(Before);
    std::error_code Ignored;
    std::filesystem::remove_all(Folder, Ignored);
}

void TestPlatform::ShowError(const KvError& Error) {
    Shown.push_back(Error);
    if (FailOnShow) throw std::runtime_error("no screen");
}

Answer TestPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    Asked.emplace_back(Text);
    Styles.push_back(Style);
    if (Answers.empty()) return DefaultAnswer(Style);
    const Answer Given = Answers.front();
    Answers.pop_front();
    return Given;
}

std::optional<std::wstring> TestPlatform::SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                   std::int32_t FilterIndex, std::int32_t Flags) {
    FileQuestions.push_back({std::wstring(Title), std::wstring(Filter), FilterIndex, Flags});
    return SavePath;
}

void TestPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    Asked.emplace_back(Caption);
    Listed.emplace_back(Items.begin(), Items.end());
}

std::string ReadFile(const std::filesystem::path& Path) {
    std::ifstream In(Path, std::ios::binary);
    return {std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::filesystem::path& Path, std::string_view Bytes) {
    std::ofstream Out(Path, std::ios::binary | std::ios::trunc);
    Out.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
    if (!Out) throw std::runtime_error("cannot write " + Path.string());
}

std::string Narrow(std::wstring_view Text) {
    std::string Out;
    for (std::size_t At = 0; At < Text.size(); ++At) {
        auto Code = static_cast<std::uint32_t>(Text[At]);
        // Two 16-bit halves are one character; a half alone is shown as if it were one.
        if (Code >= 0xD800 && Code <= 0xDBFF && At + 1 < Text.size()) {
            const auto Second = static_cast<std::uint32_t>(Text[At + 1]);
            if (Second >= 0xDC00 && Second <= 0xDFFF) {
                Code = 0x10000 + ((Code & 0x3FFU) << 10U) + (Second & 0x3FFU);
                ++At;
            }
        }
        if (Code < 0x80) {
            Out.push_back(static_cast<char>(Code));
        } else if (Code < 0x800) {
            Out.push_back(static_cast<char>(0xC0U | (Code >> 6U)));
            Out.push_back(static_cast<char>(0x80U | (Code & 0x3FU)));
        } else if (Code < 0x10000) {
            Out.push_back(static_cast<char>(0xE0U | (Code >> 12U)));
            Out.push_back(static_cast<char>(0x80U | ((Code >> 6U) & 0x3FU)));
            Out.push_back(static_cast<char>(0x80U | (Code & 0x3FU)));
        } else {
            Out.push_back(static_cast<char>(0xF0U | (Code >> 18U)));
            Out.push_back(static_cast<char>(0x80U | ((Code >> 12U) & 0x3FU)));
            Out.push_back(static_cast<char>(0x80U | ((Code >> 6U) & 0x3FU)));
            Out.push_back(static_cast<char>(0x80U | (Code & 0x3FU)));
        }
    }
    return Out;
}

std::wstring Wide(std::string_view Utf8) {
    return std::filesystem::path(std::u8string(Utf8.begin(), Utf8.end())).wstring();
}

std::wstring Lines(std::initializer_list<std::wstring_view> Each) {
    std::wstring Joined;
    for (const std::wstring_view Line : Each) Joined.append(Line).append(L"\r\n");
    return Joined;
}

::testing::AssertionResult MatchesGolden(const std::string& Name, std::wstring_view Text) {
    const std::filesystem::path File = std::filesystem::path(KV_SOURCE_DIR) / "tests" / "golden" / Name;
    const std::filesystem::path New = File.string() + ".new";
    const std::string Bytes = Narrow(Text);
    if (std::getenv("KV_PROMOTE")) {
        std::filesystem::create_directories(File.parent_path());
        WriteFile(File, Bytes);
        std::filesystem::remove(New);
        return ::testing::AssertionSuccess();
    }
    if (std::filesystem::exists(File) && ReadFile(File) == Bytes) {
        std::error_code Ignored;
        std::filesystem::remove(New, Ignored);
        return ::testing::AssertionSuccess();
    }
    WriteFile(New, Bytes);
    return ::testing::AssertionFailure()
           << "differs from " << File << ", see " << New << "; KV_PROMOTE=1 takes it over.\n"
           << Bytes;
}

}  // namespace kv::test
