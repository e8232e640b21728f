// What comes back for lines that are no requests, and how requests are told apart and answered.
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/RpcMessage.h"
#include "tests/host/RpcScript.h"

namespace kv::test {
namespace {

const std::string kNoJson = WithId("null", Error(-32700, "the line is not JSON in UTF-8"));
const std::string kNoRequest = WithId("null", Error(-32600, "this is no request"));
const std::string kVersion = Result(R"({"CurrVersion":256})");

std::string Missing(std::string_view Name) {
    return Error(-32602, std::string("missing parameter: ").append(Name));
}

class RpcProtocol : public RpcScript {};

TEST_F(RpcProtocol, AnswersRequests) {
    EXPECT_EQ(Play({
                  {Call("server/version"), kVersion},
                  {R"({"jsonrpc":"2.0","id":1,"method":"server/version"})", kVersion},
                  {R"({"jsonrpc":"2.0","id":1,"method":"server/version","params":[]})", kVersion},
                  {R"( {"method":"server/version" , "id":1, "jsonrpc":"2.0"} )", kVersion},
                  {"\xEF\xBB\xBF" + Call("server/version"), kVersion},
                  {Call("server/version", R"({"Other":[1,{}],"CurrItem":7})"), kVersion},
              }),
              0);
}

TEST_F(RpcProtocol, GivesTheIdBackAsItCame) {
    std::vector<Exchange> Table;
    for (const char* Id :
         {"0", "-7", "1.5", "9007199254740993", R"("")", R"("a b\"\u00e8 \ud83d\ude00")", "null"})
        Table.push_back({R"({"jsonrpc":"2.0","method":"server/version","id":)" + std::string(Id) + "}",
                         WithId(Id, kVersion)});
    EXPECT_EQ(Play(Table), 0);
}

TEST_F(RpcProtocol, MembersOfAnAnswerStandInOrder) {
    EXPECT_EQ(Raw(Call("server/version") + "\n"),
              "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"CurrVersion\":256}}\n");
    EXPECT_EQ(Raw(Call("tree") + "\n"),
              "{\"jsonrpc\":\"2.0\",\"id\":1,\"error\":{\"code\":-32002,\"message\":\"nothing is open\"}}\n");
}

TEST_F(RpcProtocol, RefusesLinesThatAreNotJson) {
    EXPECT_EQ(Play({
                  {"{", kNoJson},
                  {"tree", kNoJson},
                  {R"({"jsonrpc":"2.0","id":1,"method":"server/version"}})", kNoJson},
                  {R"({"jsonrpc":"2.0","id":1,"method":"server/version"} {})", kNoJson},
                  {R"({"jsonrpc":"2.0","id":1,'method':"tree"})", kNoJson},
                  {R"({"jsonrpc":"2.0","id":1,"method":"\x41"})", kNoJson},
                  {std::string("\0", 1), kNoJson},
                  // not UTF-8: a stray byte, an overlong form, a surrogate in three bytes, beyond the last
                  {"\"\xE8\"", kNoJson},
                  {"{\"a\":\"\xC0\x80\"}", kNoJson},
                  {"{\"a\":\"\xED\xA0\x80\"}", kNoJson},
                  {"{\"a\":\"\xF4\x90\x80\x80\"}", kNoJson},
                  {Call("server/version"), kVersion},
              }),
              0);
}

TEST_F(RpcProtocol, RefusesWhatIsNoRequest) {
    const std::string WithOwnId = Error(-32600, "this is no request");
    EXPECT_EQ(Play({
                  {"{}", kNoRequest},
                  {"7", kNoRequest},
                  {"null", kNoRequest},
                  {R"("server/version")", kNoRequest},
                  {R"({"jsonrpc":"2.0"})", kNoRequest},
                  {R"({"jsonrpc":"2.0","method":7})", kNoRequest},
                  {R"({"method":"server/version"})", kNoRequest},
                  {R"({"jsonrpc":"1.0","method":"server/version","id":1})", WithOwnId},
                  {R"({"jsonrpc":2.0,"method":"server/version","id":1})", WithOwnId},
                  {R"({"jsonrpc":"2.0","id":1,"method":null})", WithOwnId},
                  {R"({"jsonrpc":"2.0","id":1,"result":{}})", WithOwnId},
                  {R"({"jsonrpc":"2.0","id":{},"method":"server/version"})", kNoRequest},
                  {R"({"jsonrpc":"2.0","id":[1],"method":"server/version"})", kNoRequest},
                  {R"({"jsonrpc":"2.0","id":true,"method":"server/version"})", kNoRequest},
                  {R"({"jsonrpc":"2.0","id":"\udc00","method":"server/version"})", kNoRequest},
                  {Call("server/version", "7"), WithOwnId},
                  {Call("server/version", "null"), WithOwnId},
                  {Call("server/version", R"("CurrItem")"), WithOwnId},
                  {Call("server/version"), kVersion},
              }),
              0);
}

TEST_F(RpcProtocol, RefusesUnknownMethods) {
    const std::string Unknown = Error(-32601, "there is no such method");
    EXPECT_EQ(Play({
                  {Call("Tree"), Unknown},
                  {Call("close "), Unknown},
                  {Call(""), Unknown},
                  {Call("rpc.discover"), Unknown},
                  {Call("window/beep"), Unknown},
                  {R"({"jsonrpc":"2.0","id":1,"method":"tree\ud800"})", Unknown},
                  {Call("tree", "[7]"), Error(-32002, "nothing is open")},
              }),
              0);
}

TEST_F(RpcProtocol, RefusesWrongParameters) {
    EXPECT_EQ(Play({
                  {Call("registry/list", R"(["MEMBER"])"), Error(-32602, "parameters are given by name")},
                  {Call("registry/list", R"({"Clsid":7})"), Error(-32602, "Clsid: a string is expected")},
                  {Call("registry/list", R"({"Clsid":null})"), Result("[]")},
                  {Call("registry/create"), Missing("Clsid")},
                  {Call("registry/create", R"({"Clsid":"MEMBER"})"), Missing("Name")},
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":null})"), Missing("Name")},
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":["A"]})"),
                   Error(-32602, "Name: a string is expected")},
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":"A","Desc":7})"),
                   Error(-32602, "Desc: a string is expected")},
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":"A\ud800"})"),
                   Error(-32602, "Name: the text is not valid Unicode")},
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":"A","Desc":"\udfff\ud83d"})"),
                   Error(-32602, "Desc: the text is not valid Unicode")},
                  {Call("registry/delete", R"({"Name":"A"})"), Missing("Clsid")},
                  {Call("registry/export", R"({"Clsid":"MEMBER"})"), Missing("Name")},
                  {Call("registry/import", R"({"Clsid":"MEMBER","Name":"A"})"), Missing("Buffer")},
                  {Call("registry/object", "{}"), Missing("Clsid")},
                  {Call("open", R"({"Clsid":"MEMBER"})"), Missing("Name")},
                  {Call("registry/list"), Result("[]")},
              }),
              0);
}

TEST_F(RpcProtocol, RefusesWhatDoesNotFitTheMoment) {
    const std::string NotNow = Error(-32002, "nothing is open");
    std::vector<Exchange> Table;
    for (const char* Method : {"tree", "choices", "SyntaxOn", "modified", "DispData", "SaveData", "EditData",
                               "MoveData", "DeleteData", "CopyData", "PasteData", "ShowPropTable",
                               "TlbrButtonClick", "GetObjectInfo", "HelpShow", "Save", "close"})
        Table.push_back({Call(Method), NotNow});
    Table.push_back({Call("registry/create", R"({"Clsid":"MEMBER","Name":"A"})"), "*"});
    Table.push_back({Call("open", R"({"Clsid":"MEMBER","Name":"A"})"), "*"});
    Table.push_back({Call("open", R"({"Clsid":"MEMBER","Name":"A"})"), Error(-32002, "an object is open")});
    Table.push_back({Call("open", "[1]"), Error(-32002, "an object is open")});
    Table.push_back({Call("close"), Result("{}")});
    Table.push_back({Call("close"), NotNow});
    EXPECT_EQ(Play(Table), 0);
}

TEST_F(RpcProtocol, CarriesOutARequestWithoutIdAndDoesNotAnswerIt) {
    EXPECT_EQ(
        Play({
            {R"({"jsonrpc":"2.0","method":"registry/create","params":{"Clsid":"MEMBER","Name":"A"}})", ""},
            {R"({"jsonrpc":"2.0","method":"registry/create","params":{"Clsid":"MEMBER","Name":"A"}})", ""},
            {R"({"jsonrpc":"2.0","method":"no such"})", ""},
            {R"({"jsonrpc":"2.0","method":"tree"})", ""},
            {R"({"jsonrpc":"2.0","method":"registry/create","params":[1]})", ""},
            {R"({"jsonrpc":"2.0","method":"open","params":{"Clsid":"MEMBER","Name":"A"}})", ""},
            {Call("modified"), Result(R"({"Value":false})")},
            {R"({"jsonrpc":"2.0","method":"close"})", ""},
            {Call("modified"), Error(-32002, "nothing is open")},
        }),
        0);
}

TEST_F(RpcProtocol, PassesOverBlankLines) {
    EXPECT_EQ(Play({{"", ""}, {"  \t ", ""}, {"\r", ""}, {Call("server/version") + "\r", kVersion}}), 0);
}

TEST_F(RpcProtocol, WorksBatchesInOrder) {
    const auto Array = [](std::initializer_list<std::string> Elements) {
        std::string Text = "[";
        for (const std::string& E : Elements) Text.append(Text.size() > 1 ? "," : "").append(E);
        return Text + "]";
    };
    const std::string Create =
        R"({"jsonrpc":"2.0","method":"registry/create","params":{"Clsid":"MEMBER","Name":"A"}})";
    EXPECT_EQ(
        Play({
            {"[]", WithId("null", Error(-32600, "the batch is empty"))},
            {"[1,[],{}]", Array({kNoRequest, kNoRequest, kNoRequest})},
            {Array({Create, WithId(R"("x")", Call("registry/list")), Call("tree"), Call("server/version")}),
             Array({R"({"jsonrpc":"2.0","id":"x","result":[{"Clsid":"MEMBER","Name":"A","Id":1,"Desc":"",
                        "Version":1,"UserList":"","Revision":1}]})",
                    Error(-32002, "nothing is open"), kVersion})},
            {Array({Create, R"({"jsonrpc":"2.0","method":"tree"})"}), ""},
            {"[[" + Call("server/version") + "]]", Array({kNoRequest})},
            {"[" + Call("server/version"), kNoJson},
        }),
        0);
}

// The window of an `open` in a batch is served by what follows in the batch, and then by the lines behind it.
TEST_F(RpcProtocol, ABatchMayOpenAndClose) {
    const std::string Open = Call("open", R"({"Clsid":"MEMBER","Name":"A"})");
    const auto Ask = [](std::string_view Id, const std::string& Request) { return WithId(Id, Request); };
    ASSERT_EQ(Play({{Call("registry/create", R"({"Clsid":"MEMBER","Name":"A"})"), "*"}}), 0);

    using Json = nlohmann::json;
    const auto Lines = [&](const std::string& Input) {
        std::vector<Json> All;
        std::istringstream Text(Raw(Input));
        for (std::string Line; std::getline(Text, Line);) All.push_back(Json::parse(Line));
        return All;
    };
    const auto Ids = [](const Json& Answers) {
        std::vector<int> All;
        for (const Json& Answer : Answers) All.push_back(Answer["id"]);
        return All;
    };

    const std::string Whole = "[" + Ask("1", Open) + "," + Ask("2", Call("modified")) + "," + Ask("3", Open) +
                              "," + Ask("4", Call("close")) + "," + Ask("5", Open) + "," +
                              Ask("6", Call("close")) + "," + Ask("7", Call("tree")) + "]\n";
    std::vector<Json> Out = Lines(Whole);
    ASSERT_EQ(Out.size(), 1U);
    EXPECT_EQ(Ids(Out[0]), (std::vector<int>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(Out[0][0]["result"].contains("Nodes"));
    EXPECT_EQ(Out[0][1]["result"], Json::parse(R"({"Value":false})"));
    EXPECT_EQ(Out[0][2]["error"]["code"], -32002);
    EXPECT_EQ(Out[0][3]["result"], Json::object());
    EXPECT_TRUE(Out[0][4]["result"].contains("Nodes"));
    EXPECT_EQ(Out[0][5]["result"], Json::object());
    EXPECT_EQ(Out[0][6]["error"]["code"], -32002);

    // Open as the last element: the answers come at once, the window stays.
    Out = Lines("[" + Ask("1", Call("server/version")) + "," + Ask("2", Open) + "]\n" +
                Ask("3", Call("modified")) + "\n[" + Ask("4", Call("modified")) + "," +
                Ask("5", Call("close")) + "]\n" + Ask("6", Call("server/version")) + "\n");
    ASSERT_EQ(Out.size(), 4U);
    EXPECT_EQ(Ids(Out[0]), (std::vector<int>{1, 2}));
    EXPECT_EQ(Out[1]["id"], 3);
    EXPECT_EQ(Out[1]["result"], Json::parse(R"({"Value":false})"));
    EXPECT_EQ(Ids(Out[2]), (std::vector<int>{4, 5}));
    EXPECT_EQ(Out[3]["result"]["CurrVersion"], 256);

    // The input ends inside the batch's window.
    Out = Lines("[" + Ask("1", Open) + "," + Ask("2", Call("modified")) + "]");
    ASSERT_EQ(Out.size(), 1U);
    EXPECT_EQ(Ids(Out[0]), (std::vector<int>{1, 2}));
}

TEST_F(RpcProtocol, TheLastLineNeedsNoLineEnd) {
    EXPECT_EQ(Raw(Call("server/version")), kVersion + "\n");
    EXPECT_EQ(Raw(""), "");
}

TEST_F(RpcProtocol, LongLinesAreFine) {
    const std::string Long(2'000'000, 'x');
    EXPECT_EQ(Play({{R"({"jsonrpc":"2.0","method":"server/version","id":")" + Long + R"("})",
                     R"({"jsonrpc":"2.0","result":{"CurrVersion":256},"id":")" + Long + R"("})"},
                    {Long, kNoJson},
                    {Call("server/version"), kVersion}}),
              0);
}

TEST_F(RpcProtocol, DeepLinesCostNoStack) {
    constexpr std::size_t kDeep = 200'000;
    const std::string Open(kDeep, '[');
    const std::string Close(kDeep, ']');
    std::string Objects;
    for (std::size_t I = 0; I < kDeep; ++I) Objects += R"({"a":)";
    const std::string Closed = Objects + "1" + std::string(kDeep, '}');
    EXPECT_EQ(
        Play({
            {Open, kNoJson},
            {Objects, kNoJson},
            {Open + Close, "[" + kNoRequest + "]"},
            {Closed, kNoRequest},
            {R"({"jsonrpc":"2.0","method":"server/version","id":)" + Open + Close + "}", kNoRequest},
            {R"({"jsonrpc":"2.0","method":"server/version","id":1,"params":{"x":)" + Open + Close + "}}",
             kVersion},
            {Call("registry/create", R"({"Clsid":)" + Closed + "}"),
             Error(-32602, "Clsid: a string is expected")},
            {Call("server/version"), kVersion},
        }),
        0);
}

// A half of a surrogate pair is no reason to refuse a line, only the text that it stands in.
TEST(RpcLine, TellsTextsWithHalfSurrogatePairs) {
    struct Row {
        const char* Name;
        const char* Literal;
        bool IsText;
    };
    const Row Table[] = {
        {"a pair", R"("\ud83d\ude00")", true},
        {"pair in capitals", R"("\uD83D\uDE00")", true},
        {"first half", R"("\ud83d")", false},
        {"second half", R"("\ude00")", false},
        {"the wrong way round", R"("\ude00\ud83d")", false},
        {"two first halves, then one second", R"("\ud83d\ud83d\ude00")", false},
        {"something between", R"("\ud83d \ude00")", false},
        {"another escape between", R"("\ud83d\n\ude00")", false},
        {"a backslash, then letters", R"("\\ud83d")", true},
        {"two backslashes, then an escape", R"("\\\\\ud83d")", false},
        {"the private-use character that stands in for halves", R"("\ue000")", true},
        {"no escape at all", R"("abc")", true},
    };
    for (const Row& R : Table) {
        const auto Line = host::ParseLine(R.Literal);
        ASSERT_TRUE(Line) << R.Name;
        EXPECT_EQ(Line->IsText(Line->Value), R.IsText) << R.Name;
    }

    // Every text is judged for itself, and one that is Unicode comes through as it was.
    const auto Line =
        host::ParseLine("[\"\\ud800\", \"\\ue000\", \"\xEE\x80\x81\", \"\\uE002\", \"\\udfff\"]");
    ASSERT_TRUE(Line);
    const std::vector<bool> Expected{false, true, true, true, false};
    for (std::size_t I = 0; I < Expected.size(); ++I)
        EXPECT_EQ(Line->IsText(Line->Value[I]), Expected[I]) << I;
    EXPECT_EQ(Line->Value[1], "\xEE\x80\x80");
    EXPECT_EQ(Line->Value[2], "\xEE\x80\x81");

    EXPECT_FALSE(host::ParseLine(R"("\ud8)"));
    EXPECT_FALSE(host::ParseLine(R"("\ud80g")"));
    EXPECT_FALSE(host::ParseLine("\\ud800"));
}

TEST(RpcParams, ReadsWholeNumbersOf32Bits) {
    struct Row {
        const char* Literal;
        std::optional<std::int32_t> Value;
    };
    const Row Table[] = {
        {"0", 0},
        {"-1", -1},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"2147483648", {}},
        {"-2147483649", {}},
        {"18446744073709551615", {}},
        {"1.5", {}},
        {"1e2", {}},
        {R"("1")", {}},
        {"true", {}},
    };
    for (const Row& R : Table) {
        const auto Line = host::ParseLine(std::string(R"({"Index":)") + R.Literal + "}");
        ASSERT_TRUE(Line);
        const host::RpcParams Params(Line->Value, *Line);
        if (R.Value) {
            EXPECT_EQ(Params.Number("Index"), *R.Value) << R.Literal;
            continue;
        }
        try {
            static_cast<void>(Params.Number("Index"));
            ADD_FAILURE() << R.Literal << " was taken";
        } catch (const host::RpcError& Refused) {
            EXPECT_EQ(Refused.Code, -32602) << R.Literal;
            EXPECT_EQ(Refused.Message, "Index: a whole number of 32 bits is expected") << R.Literal;
        }
    }
}

TEST_F(RpcProtocol, AStoreThatCannotBeOpenedIsToldInOneSentence) {
    std::istringstream In(Call("server/version") + "\n");
    std::ostringstream Out;
    std::ostringstream Told;
    Options.Store = Folder;  // a folder is no file
    EXPECT_EQ(host::RunRpc(Options, In, Out, Told), 3);
    EXPECT_EQ(Out.str(), "");
    const std::string Sentence = Told.str();
    EXPECT_EQ(std::count(Sentence.begin(), Sentence.end(), '\n'), 1) << Sentence;
    EXPECT_TRUE(Sentence.ends_with('\n')) << Sentence;

    Options.Store = Folder / "text.kv";
    std::ofstream(Options.Store) << "this is no store, and long enough to be told from one that is empty\n";
    std::ostringstream ToldToo;
    EXPECT_EQ(host::RunRpc(Options, In, Out, ToldToo), 3);
    EXPECT_EQ(Out.str(), "");
    EXPECT_NE(ToldToo.str(), "");
}

TEST_F(RpcProtocol, AnOutputThatTakesNoMoreEndsTheSession) {
    std::istringstream In(Call("server/version") + "\n" + Call("server/version") + "\n");
    std::ostream Out(nullptr);
    std::ostringstream Told;
    EXPECT_EQ(host::RunRpc(Options, In, Out, Told), 3);
    EXPECT_EQ(Told.str(), "kvdesign: the output takes no more\n");
    std::string Left;
    EXPECT_TRUE(std::getline(In, Left)) << "the second request was worked for nobody";
}

}  // namespace
}  // namespace kv::test
