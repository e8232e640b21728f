// The registry requests, with nothing open and beside an open window.
#include "tests/host/RpcScript.h"

namespace kv::test {
namespace {

std::string Create(std::string_view Clsid, std::string_view Name) {
    return Call("registry/create",
                R"({"Clsid":")" + std::string(Clsid) + R"(","Name":")" + std::string(Name) + R"("})");
}

std::string Object(std::string_view Method, std::string_view Clsid, std::string_view Name) {
    return Call(Method, R"({"Clsid":")" + std::string(Clsid) + R"(","Name":")" + std::string(Name) + R"("})");
}

class RpcRegistry : public RpcScript {};

TEST_F(RpcRegistry, CreatesAndLists) {
    EXPECT_EQ(Play({
                  {Call("registry/list"), Result("[]")},
                  {Call("registry/create",
                        R"({"Clsid":"MEMBER","Name":"Niccol\u00f2 \"\ud83d\ude00\"","Desc":"socio"})"),
                   Result(R"({"Id":1})")},
                  {Create("MEMBER", "ADA"), Result(R"({"Id":2})")},
                  {Create("FILTER", "ZETA"), Result(R"({"Id":3})")},
                  {Call("registry/list"), Result(R"([
                       {"Clsid":"FILTER","Name":"ZETA","Id":3,"Desc":"","Version":1,"UserList":"","Revision":1},
                       {"Clsid":"MEMBER","Name":"ADA","Id":2,"Desc":"","Version":1,"UserList":"","Revision":1},
                       {"Clsid":"MEMBER","Name":"Niccolò \"😀\"","Id":1,"Desc":"socio","Version":1,"UserList":"",
                        "Revision":1}])")},
                  {Call("registry/list", R"({"Clsid":"FILTER"})"), Result(R"([
                       {"Clsid":"FILTER","Name":"ZETA","Id":3,"Desc":"","Version":1,"UserList":"","Revision":1}])")},
                  {Call("registry/list", R"({"Clsid":"SORT"})"), Result("[]")},
                  {Call("registry/list", R"({"Clsid":"PIPPO"})"), Result("[]")},
              }),
              0);
}

TEST_F(RpcRegistry, RefusesToCreateWhatCannotBe) {
    EXPECT_EQ(Play({
                  {Create("MEMBER", "ADA"), Result(R"({"Id":1})")},
                  {Create("MEMBER", "ADA"), Error(20015, "L'istanza esiste già.", "KvRegSvr.Create")},
                  {Create("PIPPO", "ADA"), Error(20004, "Classe sconosciuta: PIPPO.", "KvRegSvr.Create")},
                  {Create("member", "ADA"), Error(20004, "Classe sconosciuta: member.", "KvRegSvr.Create")},
                  {Create("", "ADA"), Error(20004, "Classe sconosciuta: .", "KvRegSvr.Create")},
                  {Create("MEMBER", ""), Error(20017, "Parametri errati.", "KvRegSvr.Create")},
                  {Call("registry/list"), Result(R"([
                       {"Clsid":"MEMBER","Name":"ADA","Id":1,"Desc":"","Version":1,"UserList":"","Revision":1}])")},
                  {Create("FILTER", "ADA"), "*"},
              }),
              0);
}

TEST_F(RpcRegistry, Deletes) {
    EXPECT_EQ(Play({
                  {Create("MEMBER", "ADA"), "*"},
                  {Object("registry/delete", "MEMBER", "ADA"), Result("{}")},
                  {Object("registry/delete", "MEMBER", "ADA"),
                   Error(20016, "Istanza sconosciuta: ADA.", "KvRegSvr.Delete")},
                  {Object("registry/delete", "PIPPO", "ADA"),
                   Error(20016, "Istanza sconosciuta: ADA.", "KvRegSvr.Delete")},
                  {Call("registry/list"), Result("[]")},
              }),
              0);
}

TEST_F(RpcRegistry, ShowsTheStoredObject) {
    EXPECT_EQ(Play({
                  {Create("MEMBER", "ADA"), "*"},
                  {Object("registry/object", "MEMBER", "ADA"),
                   R"(~{"result":{"Name":"ADA","Version":1,"Desc":"","UserList":"","Children":[]}})"},
                  {Object("registry/object", "MEMBER", "EVA"),
                   Error(20016, "Istanza sconosciuta: EVA.", "KvRegSvr.Open")},
              }),
              0);
}

const std::string kWait = R"({"jsonrpc":"2.0","method":"window/pointer","params":{"Value":11}})"
                          "\n";
const std::string kDone = R"({"jsonrpc":"2.0","method":"window/pointer","params":{"Value":0}})"
                          "\n";

TEST_F(RpcRegistry, ExportsThroughTheServer) {
    EXPECT_EQ(
        Play({
            {Create("MEMBER", "ADA"), "*"},
            {Create("FILTER", "ZETA"), "*"},
            {Object("registry/export", "MEMBER", "ADA"),
             kWait + kDone +
                 Result(
                     R"({"Buffer":"\tBEGIN PARMS\r\n\t\tPASSWORD= \"\"\r\n\t\t'[ID= 1]\r\n\t\t'[NAME= ADA]\r\n\t\t'[VERSION= 1]\r\n\tEND PARMS\r\n"})")},
            {Object("registry/export", "FILTER", "ZETA"),
             kWait + kDone +
                 Result(
                     R"({"Buffer":"BEGIN FILTER\r\nBEGIN PARMS\r\nTABLE= \"\"\r\nEXPRESSION= \"\"\r\nAUTOMATIC= FALSE\r\nMERGEWITH= AND\r\nHELP= \"\"\r\nFLAGS= NONE\r\nMIRROROF= \"\"\r\n'[ID= 2]\r\n'[NAME= ZETA]\r\n'[VERSION= 1]\r\nEND PARMS\r\nEND FILTER\r\n"})")},
            {Object("registry/export", "MEMBER", "EVA"),
             Error(20016, "Istanza sconosciuta: EVA.", "KvRegSvr.Open")},
            {Object("registry/export", "PIPPO", "EVA"),
             kWait + kDone + Error(20000, "Metodo sconosciuto [PIPPO]", "vdSvr.Export")},
        }),
        0);
}

TEST_F(RpcRegistry, ImportsThroughTheServer) {
    const auto Import = [](std::string_view Clsid, std::string_view Name) {
        return Call("registry/import", R"({"Clsid":")" + std::string(Clsid) + R"(","Name":")" +
                                           std::string(Name) + R"(","Buffer":"PASSWORD= \"X\"\r\n"})");
    };
    EXPECT_EQ(Play({
                  {Create("MEMBER", "ADA"), "*"},
                  {Import("MEMBER", "ADA"), Result("{}")},
                  {Import("MEMBER", "EVA"), Error(20016, "Istanza sconosciuta: EVA.", "KvRegSvr.Open")},
                  {Import("PIPPO", "ADA"), Error(20000, "Metodo sconosciuto [PIPPO]", "vdSvr.Import")},
                  {Call("registry/list"), R"(~{"result":[
                       {"Clsid":"MEMBER","Name":"ADA","Id":1,"Desc":"","Version":1,"UserList":"","Revision":1}]})"},
                  {Call("registry/import", R"({"Clsid":"MEMBER","Name":"ADA","Buffer":"\ud800"})"),
                   Error(-32602, "Buffer: the text is not valid Unicode")},
              }),
              0);
}

// What is stored is seen, not what is being edited; only the open object can't be deleted.
TEST_F(RpcRegistry, WorksBesideAnOpenWindow) {
    EXPECT_EQ(
        Play({
            {Create("MEMBER", "ADA"), "*"},
            {Object("open", "MEMBER", "ADA"), "*"},
            {Call("SaveData", R"({"CurrItem":@leaf(PARMS),"Buffer":"PASSWORD= segreto"})"),
             R"({"jsonrpc":"2.0","method":"window/modified","params":{"Value":true}})"
             "\n*"},
            {Object("registry/export", "MEMBER", "ADA"),
             "~{}\n~{}\n"
             R"(~{"result":{"Buffer":"\tBEGIN PARMS\r\n\t\tPASSWORD= \"\"\r\n\t\t'[ID= 1]\r\n\t\t'[NAME= ADA]\r\n\t\t'[VERSION= 1]\r\n\tEND PARMS\r\n"}})"},
            {Object("registry/delete", "MEMBER", "ADA"), Error(-32002, "the object is open")},
            {Create("FILTER", "ADA"), Result(R"({"Id":2})")},
            {Object("registry/delete", "FILTER", "ADA"), Result("{}")},
            {Object("registry/delete", "MEMBER", "EVA"),
             Error(20016, "Istanza sconosciuta: EVA.", "KvRegSvr.Delete")},
            {Object("registry/export", "PIPPO", "EVA"),
             "~{}\n~{}\n" + Error(20000, "Metodo sconosciuto [PIPPO]", "vdSvr.Export")},
            {Call("modified"), Result(R"({"Value":true})")},
            {Call("DispData", R"({"CurrItem":@leaf(PARMS)})"),
             R"(~{"result":{"Buffer":"PASSWORD= \"SEGRETO\"\r\n'[ID= 1]\r\n'[NAME= ADA]\r\n'[VERSION= 1]\r\n"}})"},
            {Call("Save"), "~{}\n" + Result(R"({"Revision":2})")},
            {Object("registry/export", "MEMBER", "ADA"),
             "~{}\n~{}\n"
             R"(~{"result":{"Buffer":"\tBEGIN PARMS\r\n\t\tPASSWORD= \"SEGRETO\"\r\n\t\t'[ID= 1]\r\n\t\t'[NAME= ADA]\r\n\t\t'[VERSION= 1]\r\n\tEND PARMS\r\n"}})"},
            {Call("close"), Result("{}")},
            {Object("registry/delete", "MEMBER", "ADA"), Result("{}")},
        }),
        0);
}

}  // namespace
}  // namespace kv::test
