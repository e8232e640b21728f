// Lists, tools and imports over the protocol: what an object with lists of its own adds to the plain life.
#include "tests/host/RpcScript.h"

namespace kv::test {
namespace {

const std::string kNowModified = R"({"jsonrpc":"2.0","method":"window/modified","params":{"Value":true}})"
                                 "\n";
const std::string kNotModified = R"({"jsonrpc":"2.0","method":"window/modified","params":{"Value":false}})"
                                 "\n";
const std::string kWorking = R"({"jsonrpc":"2.0","method":"window/pointer","params":{"Value":11}})"
                             "\n"
                             R"({"jsonrpc":"2.0","method":"window/pointer","params":{"Value":0}})"
                             "\n";

std::string Asks(int Number, std::string_view Method, std::string_view Params) {
    return R"({"jsonrpc":"2.0","id":"host-)" + std::to_string(Number) + R"(","method":"window/)" +
           std::string(Method) + R"(","params":)" + std::string(Params) + "}";
}

std::string Answers(int Number, std::string_view Result) {
    return R"({"jsonrpc":"2.0","id":"host-)" + std::to_string(Number) + R"(","result":)" +
           std::string(Result) + "}";
}

std::string Tool(std::string_view Method) {
    return Call("TlbrButtonClick", R"({"Method":")" + std::string(Method) + R"("})");
}

std::string At(std::string_view Method, std::string_view Key, std::string_view More = "") {
    return Call(Method, R"({"CurrItem":)" + std::string(Key) + std::string(More) + "}");
}

// An import procedure with fields named A, B and C: nodes 4 (the folder), 5, 8 and 11, each with a folder and
// a leaf below it.
class RpcTools : public RpcScript {
  protected:
    int PlayOn(std::vector<Exchange> Exchanges, const std::string& AtEnd = "") {
        const std::string Named = R"({"Clsid":"IMPORTPROC","Name":"PROVA"})";
        std::vector<Exchange> Start{{Call("registry/create", Named), "*"},
                                    {Call("open", Named), "*"},
                                    {At("EditData", R"("FIELDS")"), kNowModified + R"(~{"result":{}})"},
                                    {At("EditData", R"("FIELDS")"), "*"},
                                    {At("EditData", R"("FIELDS")"), "*"},
                                    {Call("tree"), "*"}};
        int Tag = 7;
        for (const char* Leaf : {"@node(7)", "@node(10)", "@node(13)"}) {
            const std::string Name(1, "ABC"[Tag - 7]);
            Start.push_back(
                {At("SaveData", Leaf,
                    R"(,"Buffer":"NAME= )" + Name + R"(\r\nTAG= )" + std::to_string(Tag++) + "\""),
                 R"(~{"result":{"NewItemKey":")" + Name + "\"}}"});
        }
        Start.push_back({Call("Save"), kNotModified + Result(R"({"Revision":2})")});
        Exchanges.insert(Exchanges.begin(), Start.begin(), Start.end());
        return Play(Exchanges, AtEnd);
    }
};

TEST_F(RpcTools, MovesAndDeletesElements) {
    const std::string NoMove = Error(0, "", "");
    EXPECT_EQ(PlayOn({
                  {At("MoveData", "@node(5)", R"(,"Direction":1)"), NoMove},
                  {At("MoveData", "@node(11)", R"(,"Direction":-1)"), NoMove},
                  {Call("modified"), Result(R"({"Value":false})")},
                  {At("MoveData", "@node(11)", R"(,"Direction":1)"), kNowModified + R"(~{"result":{}})"},
                  {At("DispData", "@node(13)"), Error(-32602, "CurrItem: no node of the tree has this key")},
                  {Call("tree"), "*"},
                  {At("DispData", "@node(10)"), "^" + Quoted("NAME= \"C\"\r\nTAG= 9\r\n")},
                  {At("DispData", "@node(13)"), "^" + Quoted("NAME= \"B\"\r\nTAG= 8\r\n")},
                  {At("MoveData", "@key", R"(,"Direction":-1)"), R"(~{"result":{}})"},
                  {Call("tree"), "*"},
                  {At("DispData", "@node(13)"), "^" + Quoted("NAME= \"C\"\r\n")},
                  {At("DeleteData", "@node(8)"), Result("{}")},
                  {Call("tree"), "*"},
                  {At("DispData", "@node(10)"), "^" + Quoted("NAME= \"C\"\r\n")},
                  {Call("Save"), kNotModified + Result(R"({"Revision":3})")},
                  {At("DeleteData", R"("FIELDS")", R"(,"Group":true)"), kNowModified + Result("{}")},
                  {Call("tree"), Result(R"([
                       {"Key":"ROOT","Parent":"","Text":"PROVA","Kind":"","Image":12,"SelectedImage":11},
                       {"Key":"PARMS","Parent":"ROOT","Text":"Parametri","Kind":"","Image":12,"SelectedImage":11},
                       {"Key":@leaf(PARMS),"Parent":"PARMS","Text":"Parametri","Kind":"","Image":9,
                        "SelectedImage":9},
                       {"Key":"FIELDS","Parent":"ROOT","Text":"Campi","Kind":"RG","Image":12,"SelectedImage":11},
                       {"Key":"INDEXES","Parent":"ROOT","Text":"Indici","Kind":"RG","Image":12,
                        "SelectedImage":11},
                       {"Key":"SCRIPTS","Parent":"ROOT","Text":"Scripts","Kind":"RG","Image":12,
                        "SelectedImage":11}])")},
                  // an index beyond the list, which only an override can pass
                  {At("DeleteData", R"("FIELDS")", R"(,"Index":1)"),
                   R"(~{"error":{"code":9,"data":{"Number":9,"Source":"diImportProc.DeleteData"}}})"},
              }),
              0);
}

// While a tool asks, only the answer is read.
TEST_F(RpcTools, AsksTheClient) {
    const std::string Question =
        R"({"Text":"Confermi la rinumerazione dei Tag?","Buttons":"YesNo","Default":2,
                                     "Icon":"question","Style":292})";
    const auto Busy = [](int Number) {
        return Error(-32002, "the answer to host-" + std::to_string(Number) + " is awaited");
    };
    EXPECT_EQ(
        PlayOn({
            {Tool("FINDTAG"),
             kWorking + Asks(1, "list", R"({"Caption":"Tag disponibili","Items":["1 - 6","10 - 32767"]})")},
            {Answers(1, "{}"), Result("{}")},
            {Tool("RENUMTAG"), Asks(2, "messageBox", Question)},
            {Call("modified"), Busy(2)},
            {"", ""},
            {"[" + Call("modified") + "]", WithId("null", Busy(2))},
            {Answers(1, R"("Yes")"), WithId(R"("host-1")", Busy(2))},
            {Answers(2, R"("No")"), Result("{}")},
            {Call("modified"), Result(R"({"Value":false})")},
            {Tool("RENUMTAG"), Asks(3, "messageBox", Question)},
            {R"({"jsonrpc":"2.0","id":"host-3","error":{"code":-32601,"message":"no"}})", Result("{}")},
            {Tool("RENUMTAG"), Asks(4, "messageBox", Question)},
            {Answers(4, R"("Yes")"), kWorking + kNowModified + Result("{}")},
            {At("DispData", "@node(13)"), "^" + Quoted("NAME= \"C\"\r\nTAG= 3\r\n")},
            // in a batch the questions go out at once, the answers together
            {"[" + Tool("RENUMTAG") + "," + Call("modified") + "]", Asks(5, "messageBox", Question)},
            {Answers(5, R"("Yes")"), kWorking + "[" + Result("{}") + "," + Result(R"({"Value":true})") + "]"},
        }),
        0);
}

TEST_F(RpcTools, TheEndOfInputWhileAToolAsksIsTheDefaultAndEndsTheSession) {
    EXPECT_EQ(PlayOn({{Tool("RENUMTAG"), "~{}"}}, Result("{}")), 0);
    EXPECT_EQ(Play({{Call("open", R"({"Clsid":"IMPORTPROC","Name":"PROVA"})"), "*"},
                    {At("DispData", "@node(13)"), "^" + Quoted("NAME= \"C\"\r\nTAG= 9\r\n")}}),
              0);
}

TEST_F(RpcTools, WhatAToolShowsIsTheErrorOfTheRequest) {
    EXPECT_EQ(PlayOn({
                  {Tool("MAPTABLE"), Result("{}")},  // nothing on the clipboard: it ends quietly
                  {Call("registry/create", R"({"Clsid":"MEMBER","Name":"ADA"})"), "*"},
                  {Call("close"), Result("{}")},
                  {Call("open", R"({"Clsid":"MEMBER","Name":"ADA"})"), "*"},
                  {At("CopyData", R"("ROOT")"), Result(R"({"ClassWord":"MEMBER"})")},
                  {Call("close"), Result("{}")},
                  {Call("open", R"({"Clsid":"IMPORTPROC","Name":"PROVA"})"), "*"},
                  {Tool("MAPTABLE"), Error(20000, "L'oggetto nella clipboard non ha campi o non è una TABLE.",
                                           "diImportProc.MapTable")},
                  {Call("modified"), Result(R"({"Value":false})")},
              }),
              0);
}

TEST_F(RpcTools, ImportsWhatWasExported) {
    const std::string Named = R"({"Clsid":"IMPORTPROC","Name":"PROVA"})";
    const std::string Copy = R"({"Clsid":"IMPORTPROC","Name":"COPIA"})";
    const std::string Import = R"({"Clsid":"IMPORTPROC","Name":"COPIA","Buffer":)";
    EXPECT_EQ(PlayOn({
                  {Call("close"), Result("{}")},
                  {Call("registry/create", Copy), "*"},
                  {Call("registry/export", Named), kWorking + "*"},
                  {Call("registry/import", Import + "@buffer}"), Result("{}")},
                  {Call("open", Copy), "*"},
                  {At("DispData", "@node(10)"), "^" + Quoted("NAME= \"B\"\r\nTAG= 8\r\n")},
                  // an import beside the open window is another save of the object
                  {Call("registry/export", Named), kWorking + "*"},
                  {Call("registry/import", Import + "@buffer}"), Result("{}")},
                  {Call("Save"), R"(~{"error":{"code":20000,"data":{"Source":"ImportProcRecord.Save"}}})"},
                  {Call("registry/import", Import + R"("BEGIN TABLE\r\nEND TABLE\r\n"})"),
                   Error(20000, "Errore nei dati di import.", "diImportProc.ImportData")},
                  {Call("registry/list", R"({"Clsid":"IMPORTPROC"})"), R"(~{"result":[
                       {"Clsid":"IMPORTPROC","Name":"COPIA","Id":2,"Desc":"","Version":1,"UserList":"",
                        "Revision":3},
                       {"Clsid":"IMPORTPROC","Name":"PROVA","Id":1,"Desc":"","Version":1,"UserList":"",
                        "Revision":2}]})"},
              }),
              0);
}

}  // namespace
}  // namespace kv::test
