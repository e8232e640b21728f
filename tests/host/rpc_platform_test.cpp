// What the server shows and asks, as the client meets it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "host/RpcPlatform.h"

namespace kv::test {
namespace {

using Json = nlohmann::json;

class RpcPlatformTest : public ::testing::Test {
  protected:
    // The lines that were written, as JSON.
    std::vector<Json> Written() const {
        std::vector<Json> All;
        std::istringstream Text(Out.str());
        for (std::string Line; std::getline(Text, Line);) All.push_back(Json::parse(Line));
        return All;
    }
    static Json Request(int Number, const char* Method, Json Params) {
        return {{"jsonrpc", "2.0"},
                {"id", "host-" + std::to_string(Number)},
                {"method", Method},
                {"params", std::move(Params)}};
    }
    static std::string Answer(const std::string& Result, int Number = 1) {
        return R"({"jsonrpc":"2.0","id":"host-)" + std::to_string(Number) + R"(","result":)" + Result + "}\n";
    }

    std::istringstream In;
    std::ostringstream Out;
    host::RpcChannel Channel{In, Out};
    host::RpcPlatform Platform{Channel, "/opt/kv", ""};
};

TEST_F(RpcPlatformTest, KeepsTheFolders) {
    EXPECT_EQ(Platform.ProgramFolder(), L"/opt/kv");
    EXPECT_EQ(Platform.TempFolder(), L"");
    EXPECT_EQ(host::RpcPlatform(Channel, "citt\xC3\xA0", "t").ProgramFolder(), L"citt\u00E0");
    EXPECT_THROW(host::RpcPlatform(Channel, "citt\xE0", "t"), std::filesystem::filesystem_error);
}

struct BoxRow {
    std::int32_t Style;
    const char* Buttons;
    int Default;
    const char* Icon;
    std::vector<std::pair<std::string, kv::Answer>> Answers;  // result, what it means
};

TEST_F(RpcPlatformTest, AsksWithMessageBoxes) {
    using enum kv::Answer;
    const BoxRow Table[] = {
        {66083,
         "YesNoCancel",
         3,
         "question",
         {{R"("Yes")", Yes},
          {R"("No")", No},
          {R"("Cancel")", Cancel},
          {R"("Ok")", Cancel},
          {"null", Cancel}}},
        {65828,
         "YesNo",
         2,
         "question",
         {{R"("Yes")", Yes}, {R"("No")", No}, {R"("Cancel")", No}, {R"("yes")", No}, {"7", No}, {"{}", No}}},
        {0, "Ok", 1, "", {{R"("Ok")", Ok}, {R"("No")", Ok}}},
        {64, "Ok", 1, "information", {{R"("Ok")", Ok}}},
        {4 + 48, "YesNo", 1, "exclamation", {{R"("No")", No}, {R"("\ud800")", Yes}}},
        {3 + 16 + 256, "YesNoCancel", 2, "critical", {{R"("Cancel")", Cancel}, {"true", No}}},
        {4 + 512, "YesNo", 2, "", {{"null", No}}},
    };
    int Asked = 0;
    for (const BoxRow& Row : Table)
        for (const auto& [Result, Meaning] : Row.Answers) {
            ++Asked;
            Out.str("");
            In.clear();
            In.str(Answer(Result, Asked));
            EXPECT_EQ(Platform.MessageBox(L"Ci sono gi\u00E0  due?", Row.Style), Meaning)
                << Row.Style << Result;
            EXPECT_EQ(Written(), std::vector<Json>{Request(Asked, "window/messageBox",
                                                           {{"Text", "Ci sono gi\xC3\xA0  due?"},
                                                            {"Buttons", Row.Buttons},
                                                            {"Default", Row.Default},
                                                            {"Icon", Row.Icon},
                                                            {"Style", Row.Style}})});
        }
}

TEST_F(RpcPlatformTest, AsksForAFile) {
    struct Row {
        const char* Result;
        std::optional<std::wstring> Path;
    };
    const Row Table[] = {
        {R"("C:\\temp\\citt\u00e0.BAS")", L"C:\\temp\\citt\u00E0.BAS"},
        {R"("/tmp/\ud83d\ude00")", L"/tmp/\U0001F600"},
        {"null", {}},
        {R"("")", {}},
        {R"("a\ud800")", {}},
        {"false", {}},
        {R"(["a"])", {}},
    };
    int Asked = 0;
    for (const Row& R : Table) {
        Out.str("");
        In.clear();
        In.str(Answer(R.Result, ++Asked));
        EXPECT_EQ(Platform.SaveFile(L"File di uscita", L"Moduli VB|*.BAS|Tutti i file|*.*", 1, 2664450),
                  R.Path)
            << R.Result;
        EXPECT_EQ(Written(), std::vector<Json>{Request(Asked, "window/saveFile",
                                                       {{"Title", "File di uscita"},
                                                        {"Filter", "Moduli VB|*.BAS|Tutti i file|*.*"},
                                                        {"FilterIndex", 1},
                                                        {"Flags", 2664450}})});
    }
}

TEST_F(RpcPlatformTest, ShowsAList) {
    In.str(Answer("{}") + Answer("null", 2));
    const std::vector<std::wstring> Items{L"3 - 4", L"6 - 32767"};
    Platform.ShowList(L"Tag disponibili", Items);
    Platform.ShowList(L"", {});
    EXPECT_EQ(Written(),
              (std::vector<Json>{Request(1, "window/list",
                                         {{"Caption", "Tag disponibili"}, {"Items", {"3 - 4", "6 - 32767"}}}),
                                 Request(2, "window/list", {{"Caption", ""}, {"Items", Json::array()}})}));
}

TEST_F(RpcPlatformTest, GivesNotices) {
    Platform.Beep();
    Platform.SetPointer(11);
    Platform.SetPointer(0);
    EXPECT_EQ(Out.str(),
              "{\"jsonrpc\":\"2.0\",\"method\":\"window/beep\"}\n"
              "{\"jsonrpc\":\"2.0\",\"method\":\"window/pointer\",\"params\":{\"Value\":11}}\n"
              "{\"jsonrpc\":\"2.0\",\"method\":\"window/pointer\",\"params\":{\"Value\":0}}\n");
}

// Only the answer is read; any other line is told that it comes at the wrong time.
TEST_F(RpcPlatformTest, WhileItWaitsOnlyTheAnswerIsRead) {
    In.str(
        "\n"
        "{\"jsonrpc\":\"2.0\",\"id\":4,\"method\":\"tree\"}\n"
        "{\"jsonrpc\":\"2.0\",\"id\":\"host-1\",\"method\":\"tree\",\"result\":\"Yes\"}\n"
        "{\"jsonrpc\":\"2.0\",\"method\":\"close\"}\n"
        "{\"jsonrpc\":\"2.0\",\"id\":\"host-2\",\"result\":\"Yes\"}\n"
        "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":\"Yes\"}\n"
        "{\"jsonrpc\":\"2.0\",\"id\":\"host-1\"}\n"
        "{\"jsonrpc\":\"2.0\",\"id\":[1],\"result\":\"Yes\"}\n"
        "[{\"jsonrpc\":\"2.0\",\"id\":\"host-1\",\"result\":\"Yes\"}]\n"
        "not JSON\n"
        "\"\xE8\"\n" +
        Answer(R"("Yes")") + "{\"jsonrpc\":\"2.0\",\"id\":5,\"method\":\"tree\"}\n");
    EXPECT_EQ(Platform.MessageBox(L"?", 65828), kv::Answer::Yes);
    const std::vector<Json> Lines = Written();
    const Json Ids{4, "host-1", nullptr, "host-2", 1, "host-1", nullptr, nullptr, nullptr, nullptr};
    ASSERT_EQ(Lines.size(), 1 + Ids.size());
    for (std::size_t I = 0; I < Ids.size(); ++I)
        EXPECT_EQ(Lines[I + 1],
                  (Json{{"jsonrpc", "2.0"},
                        {"id", Ids[I]},
                        {"error", {{"code", -32002}, {"message", "the answer to host-1 is awaited"}}}}))
            << I;
    std::string Left;
    ASSERT_TRUE(std::getline(In, Left));
    EXPECT_EQ(Json::parse(Left)["id"], 5) << "what follows the answer is not read";
}

TEST_F(RpcPlatformTest, AnErrorAnswerCountsAsTheDefault) {
    const std::string Refusal = R"({"jsonrpc":"2.0","id":"host-1","error":{"code":-32601,"message":"no"}})";
    In.str(Refusal + "\n");
    EXPECT_EQ(Platform.MessageBox(L"?", 66083), kv::Answer::Cancel);
    EXPECT_EQ(Written().size(), 1U);
}

TEST_F(RpcPlatformTest, TheEndOfInputCountsAsTheDefault) {
    EXPECT_EQ(Platform.MessageBox(L"?", 65828), kv::Answer::No);
    EXPECT_EQ(Platform.MessageBox(L"?", 4), kv::Answer::Yes);
    EXPECT_EQ(Platform.MessageBox(L"!", 0), kv::Answer::Ok);
    EXPECT_EQ(Platform.SaveFile(L"", L"", 1, 0), std::nullopt);
    Platform.ShowList(L"", {});
    EXPECT_EQ(Written().size(), 5U);
}

TEST_F(RpcPlatformTest, KeepsTheFirstErrorShown) {
    EXPECT_EQ(Platform.TakeShown(), std::nullopt);
    KvError First;
    First.Number = 20000;
    First.Description = L"uno";
    KvError Second;
    Second.Number = 20018;
    Platform.ShowError(First);
    Platform.ShowError(Second);
    const std::optional<KvError> Shown = Platform.TakeShown();
    ASSERT_TRUE(Shown);
    EXPECT_EQ(Shown->Number, 20000);
    EXPECT_EQ(Shown->Description, L"uno");
    EXPECT_FALSE(Platform.TakeShown());
    EXPECT_EQ(Out.str(), "") << "an error is no message of its own";
}

}  // namespace
}  // namespace kv::test
