// The window requests: an object opened, edited, saved, closed and opened again, through the real registry.
#include <sqlite3.h>

#include <functional>
#include <tuple>

#include "frame/vdbInclude.h"
#include "host/KvRegSvr.h"
#include "server/vdSvr.h"
#include "tests/host/RpcScript.h"

namespace kv::test {
namespace {

std::string Object(std::string_view Method, std::string_view Clsid, std::string_view Name) {
    return Call(Method, R"({"Clsid":")" + std::string(Clsid) + R"(","Name":")" + std::string(Name) + R"("})");
}

// A request on the first leaf of PARMS, with further members.
std::string On(std::string_view Method, std::string_view More = "") {
    return Call(Method, R"({"CurrItem":@leaf(PARMS))" + std::string(More) + "}");
}

std::string SaveText(std::string_view Text, std::string_view Leaf = "@leaf(PARMS)") {
    return Call("SaveData", R"({"CurrItem":)" + std::string(Leaf) + R"(,"Buffer":)" + Quoted(Text) + "}");
}

// The same request without its id.
std::string NoId(std::string Request) {
    constexpr std::string_view kId = R"("id":1,)";
    return Request.erase(Request.find(kId), kId.size());
}

std::string BufferIs(std::string_view Text) { return Result(R"({"Buffer":)" + Quoted(Text) + "}"); }

std::string Notice(std::string_view Method, std::string_view Value) {
    return std::string(R"({"jsonrpc":"2.0","method":"window/)")
        .append(Method)
        .append(R"(","params":{"Value":)")
        .append(Value)
        .append("}}\n");
}
const std::string kNowModified = Notice("modified", "true");
const std::string kNotModified = Notice("modified", "false");
const std::string kNothingShown = Error(0, "", "");
const std::string kSaved = Result(R"({"NewItemKey":""})");

class RpcWindow : public RpcScript {
  protected:
    /// A session over one new object.
    int PlayOn(std::string_view Clsid, std::vector<Exchange> Exchanges) {
        Exchanges.insert(Exchanges.begin(), {{Object("registry/create", Clsid, "PROVA"), "*"},
                                             {Object("open", Clsid, "PROVA"), "*"}});
        return Play(Exchanges);
    }
};

TEST_F(RpcWindow, OpenTellsNodesToolsAndInfo) {
    EXPECT_EQ(
        Play({
            {Call("registry/create",
                  R"({"Clsid":"FILTER","Name":"ROMANZI","Desc":"Solo \u00abromanzi\u00bb"})"),
             "*"},
            {Object("open", "FILTER", "ROMANZI"), "*"},
            {Call("tree"), Result(R"([
                       {"Key":"ROOT","Parent":"","Text":"ROMANZI","Kind":"","Image":12,"SelectedImage":11},
                       {"Key":"PARMS","Parent":"ROOT","Text":"Parametri","Kind":"","Image":12,"SelectedImage":11},
                       {"Key":@leaf(PARMS),"Parent":"PARMS","Text":"Parametri","Kind":"","Image":9,
                        "SelectedImage":9}])")},
            {Call("GetObjectInfo"), Result(R"({"Name":"ROMANZI","Desc":"Solo «romanzi»","Version":1,"Id":"1",
                       "Clsid":"FILTER","UserList":""})")},
            {Call("close"), Result("{}")},
            {Object("open", "FILTER", "ROMANZI"), R"(~{"result":{
                       "Tools":["COPY","CUT","PASTE","","FINDTAG","RENUMTAG","MAPTABLE","CONSTANTS"],
                       "Info":{"Name":"ROMANZI","Desc":"Solo «romanzi»","Version":1,"Id":"1","Clsid":"FILTER",
                               "UserList":""}}})"},
        }),
        0);
}

TEST_F(RpcWindow, OpenFailsForWhatIsNotThere) {
    EXPECT_EQ(
        Play({
            {Object("open", "MEMBER", "EVA"), Error(20016, "Istanza sconosciuta: EVA.", "KvRegSvr.Open")},
            {Object("open", "PIPPO", "EVA"), Error(20000, "Metodo sconosciuto [PIPPO]", "vdSvr.ShowData")},
            {Call("tree"), Error(-32002, "nothing is open")},
            {Object("registry/create", "MEMBER", "EVA"), "*"},
            {Call("open", R"({"Clsid":"MEMBER","Name":"EVA","SyntaxOn":"si"})"),
             Error(-32602, "SyntaxOn: true or false is expected")},
            {Call("open", R"({"Clsid":"MEMBER","Name":"ADA","SyntaxOn":0})"),
             Error(-32602, "SyntaxOn: true or false is expected")},
            {Call("tree"), Error(-32002, "nothing is open")},
            {Object("open", "MEMBER", "EVA"), "*"},
        }),
        0);
}

TEST_F(RpcWindow, EndOfInputClosesWithoutSaving) {
    ASSERT_EQ(PlayOn("MEMBER", {{SaveText("PASSWORD= segreto"), kNowModified + kSaved}}), 0);
    EXPECT_EQ(
        Play({{Object("open", "MEMBER", "PROVA"), "*"},
              {On("DispData"), BufferIs("PASSWORD= \"\"\r\n'[ID= 1]\r\n'[NAME= PROVA]\r\n'[VERSION= 1]\r\n")},
              {Call("registry/list"), R"(~{"result":[{"Clsid":"MEMBER","Name":"PROVA","Id":1,"Desc":"",
                        "Version":1,"UserList":"","Revision":1}]})"}}),
        0);
}

TEST_F(RpcWindow, WantsANodeOfTheTree) {
    const std::string NoNode = Error(-32602, "CurrItem: no node of the tree has this key");
    std::vector<Exchange> Table;
    const std::pair<const char*, const char*> Requests[] = {{"DispData", ""},
                                                            {"SaveData", R"(,"Buffer":"")"},
                                                            {"EditData", ""},
                                                            {"CopyData", ""},
                                                            {"MoveData", R"(,"Direction":1)"},
                                                            {"DeleteData", R"(,"Group":true)"},
                                                            {"PasteData", ""},
                                                            {"ShowPropTable", ""},
                                                            {"HelpShow", R"(,"HelpItem":"")"},
                                                            {"TlbrButtonClick", R"(,"Method":"FINDTAG")"}};
    for (const auto& [Method, More] : Requests) {
        for (const char* Key : {"PARMS 999999", "", "parms", "PARMS\\u0000"})
            Table.push_back(
                {Call(Method, R"({"CurrItem":")" + std::string(Key) + "\"" + More + "}"), NoNode});
        Table.push_back({Call(Method, R"({"CurrItem":7)" + std::string(More) + "}"),
                         Error(-32602, "CurrItem: a string is expected")});
        Table.push_back({Call(Method, R"({"CurrItem":"\ud800")" + std::string(More) + "}"),
                         Error(-32602, "CurrItem: the text is not valid Unicode")});
        for (const auto& [Name, Value, Wanted] :
             {std::tuple{"Index", R"("1")", "a whole number of 32 bits is expected"},
              std::tuple{"Index", "4294967297", "a whole number of 32 bits is expected"},
              std::tuple{"Key", "1", "a string is expected"},
              std::tuple{"CurrFolder", "{}", "a string is expected"}})
            Table.push_back({On(Method, std::string(More) + ",\"" + Name + "\":" + Value),
                             Error(-32602, std::string(Name) + ": " + Wanted)});
    }
    for (const char* Method : {"DispData", "SaveData", "EditData", "CopyData", "PasteData", "ShowPropTable"})
        if (Method != std::string("SaveData"))
            Table.push_back({Call(Method), Error(-32602, "missing parameter: CurrItem")});
    Table.push_back({On("SaveData"), Error(-32602, "missing parameter: Buffer")});
    Table.push_back({On("SaveData", R"(,"Buffer":"PASSWORD= \udbff")"),
                     Error(-32602, "Buffer: the text is not valid Unicode")});
    Table.push_back({On("MoveData"), Error(-32602, "missing parameter: Direction")});
    Table.push_back({On("DeleteData", R"(,"Group":1)"), Error(-32602, "Group: true or false is expected")});
    Table.push_back({On("CopyData", R"(,"Group":"no")"), Error(-32602, "Group: true or false is expected")});
    Table.push_back({On("PasteData", R"(,"Path":[])"), Error(-32602, "Path: a string is expected")});
    Table.push_back({On("HelpShow"), Error(-32602, "missing parameter: HelpItem")});
    Table.push_back({Call("TlbrButtonClick"), Error(-32602, "missing parameter: Method")});
    Table.push_back({Call("choices"), Error(-32602, "missing parameter: Section")});
    Table.push_back(
        {Call("SyntaxOn", R"({"Value":"no"})"), Error(-32602, "Value: true or false is expected")});
    Table.push_back({Call("modified"), Result(R"({"Value":false})")});
    EXPECT_EQ(PlayOn("MEMBER", Table), 0);
}

// The plain life of an item, operation by operation.
TEST_F(RpcWindow, PlainOperations) {
    EXPECT_EQ(PlayOn("MEMBER",
                     {
                         {On("EditData"), kSaved},
                         {On("MoveData", R"(,"Direction":1)"), kNothingShown},
                         {On("MoveData", R"(,"Direction":-1)"), kNothingShown},
                         {On("DeleteData"), Result("{}")},
                         {On("DeleteData", R"(,"Group":true)"), Result("{}")},
                         {On("ShowPropTable"), R"({"jsonrpc":"2.0","method":"window/beep"})"
                                               "\n" +
                                                   Result("{}")},
                         {On("HelpShow", R"(,"HelpItem":"PASSWORD=")"), Result("{}")},
                         {Call("TlbrButtonClick", R"({"Method":"FINDTAG"})"), Result("{}")},
                         {On("TlbrButtonClick", R"(,"Method":"CONSTANTS")"), Result("{}")},
                         {Call("TlbrButtonClick", R"({"Method":"PIPPO","Key":"PARMS"})"), Result("{}")},
                         {Call("modified"), Result(R"({"Value":false})")},
                     }),
              0);
}

TEST_F(RpcWindow, OverridesReachEveryPathOfAnItem) {
    EXPECT_EQ(
        PlayOn("MEMBER",
               {
                   {Call("DispData", R"({"CurrItem":"ROOT"})"), BufferIs("")},
                   {Call("DispData", R"({"CurrItem":"ROOT","Key":"PARMS","CurrFolder":"X","Index":-3})"),
                    BufferIs("PASSWORD= \"\"\r\n'[ID= 1]\r\n'[NAME= PROVA]\r\n'[VERSION= 1]\r\n")},
                   {On("DispData", R"(,"Key":"")"), BufferIs("")},
                   {On("DispData", R"(,"Key":"PIPPO")"), BufferIs("")},
                   {On("SaveData", R"(,"Key":"","Buffer":"nonsense")"), kNowModified + kSaved},
                   {On("SaveData", R"(,"Key":null,"Buffer":"nonsense")"),
                    Error(20018, "Errore di sintassi: nonsense.", "vDesignPar.GetFieldValue", 1)},
               }),
        0);
}

TEST_F(RpcWindow, AStructuralChangeMarksTheTree) {
    EXPECT_EQ(PlayOn("CATALOGUE",
                     {
                         {On("EditData"), kNowModified + R"(~{"result":{}})"},
                         {Call("tree"), "*"},
                         {Call("DispData", R"({"CurrItem":@key})"), "*"},
                         {On("EditData"), R"(~{"result":{}})"},
                         {Call("modified"), Result(R"({"Value":true})")},
                         {Call("Save"), kNotModified + Result(R"({"Revision":2})")},
                         // there is no folder to put a leaf into: nothing changes
                         {Call("EditData", R"({"CurrItem":"ROOT","Key":"PIPPO"})"),
                          Error(91, "Oggetto non impostato", "diCatalogue.EditData")},
                         {Call("modified"), Result(R"({"Value":false})")},
                     }),
              0);
}

TEST_F(RpcWindow, SaveDataIsStrictOrLax) {
    const std::string Odd = "AUTOMATIC= FORSE";
    const std::string Refused =
        Error(20000, "Valore sconosciuto per il parametro AUTOMATIC=(FORSE)", "ParmEditor.SaveFilter", 1);
    EXPECT_EQ(PlayOn("FILTER",
                     {
                         {Call("SyntaxOn"), Result(R"({"Value":true})")},
                         {SaveText(Odd), Refused},
                         {Call("SyntaxOn", R"({"Value":false})"), Result(R"({"Value":false})")},
                         {SaveText(Odd), kNowModified + kSaved},
                         {Call("SyntaxOn"), Result(R"({"Value":false})")},
                         {Call("SyntaxOn", R"({"Value":true})"), Result(R"({"Value":true})")},
                         {SaveText(Odd), Refused},
                         {Call("close"), Result("{}")},
                         {Call("open", R"({"Clsid":"FILTER","Name":"PROVA","SyntaxOn":false})"), "*"},
                         {Call("SyntaxOn"), Result(R"({"Value":false})")},
                         {SaveText(Odd), kNowModified + kSaved},
                         {Call("close"), Result("{}")},
                         {Object("open", "FILTER", "PROVA"), "*"},
                         {Call("SyntaxOn"), Result(R"({"Value":true})")},
                     }),
              0);
}

TEST_F(RpcWindow, TellsTheChoices) {
    const std::string Targets = R"(["FILE:<target>[;<ziptmppath>]","FTP:[user,pwd@]<target>[;<ziptmppath>]",
                                    "HTTP:[pwd@]<target>[;<ziptmppath>]"])";
    const std::string Types = R"(["NODBR","ONLYDBR","UNKNOWTAGWARN","UNKNOWTAGSTOP","INCREMENTAL","COMPACTDB",
                                  "NONULLMAINKEY","REFRESH","NONE"])";
    EXPECT_EQ(PlayOn("IMPORT",
                     {
                         {Call("choices", R"({"Section":"PARMS","Keyword":"LOCKED="})"),
                          Result(R"(["FALSE","TRUE"])")},
                         {Call("choices", R"({"Section":"PARMS","Keyword":"TARGETPATH="})"), Result(Targets)},
                         {Call("choices", R"({"Section":"PARMS","Keyword":"LOCKED"})"), Result("[]")},
                         {Call("choices", R"({"Section":"PIPPO","Keyword":"LOCKED="})"), Result("[]")},
                         {Call("choices", R"({"Section":"PARMS"})"),
                          Result(R"({"FLAGS=":["NONE","ZIPFILES","CABFILES"],"TARGETPATH=":)" + Targets +
                                 R"(,"LOCKED=":["FALSE","TRUE"],"PROCTYPE=":)" + Types + "}")},
                         {Call("choices", R"({"Section":"PIPPO"})"), Result("{}")},
                     }),
              0);
}

// A failure carries number, text, source and line of the server, and nothing has changed.
struct Refusal {
    const char* Clsid;
    const char* Text;
    int Number;
    const char* Message;
    const char* Source;
    int Line;
};

TEST_F(RpcWindow, ARefusedTextChangesNothing) {
    const Refusal Table[] = {
        {"MEMBER", "PASSWORD= a\r\n\r\nPIPPO=1", 20000, "Parametro non riconosciuto: PIPPO=1",
         "diMember.SaveParm", 3},
        {"MEMBER", "'nota\r\nPASSWORD a\r\n", 20018, "Errore di sintassi: PASSWORD a.",
         "vDesignPar.GetFieldValue", 2},
        {"MEMBER", "PASSWORD= a\r\nPASSWORD= b", 20000, "Ripetizone del parametro PASSWORD=.",
         "diMember.SaveParm", 2},
        {"MEMBER", "\u00C8= \xF0\x9F\x98\x80", 20000, "Parametro non riconosciuto: È=😀", "diMember.SaveParm",
         1},
        {"REPOSITORY", "PATH= C:\\x\r\nREADONLY= \"SI\"", 20000,
         "Valore sconosciuto per il parametro READONLY=(\"SI\")", "RepositoryRecord.SaveParm", 2},
        {"CATALOGUE", "TABLE= LIBRI\r\nFLAGS= A|B", 20000, "Valore sconosciuto per il parametro FLAGS=(B)",
         "ParmEditor.SaveCatalogue", 2},
        {"FILTER", "MERGEWITH= NOT", 20000, "Valore sconosciuto per il parametro MERGEWITH=(NOT)",
         "ParmEditor.SaveFilter", 1},
        {"IMPORT", "\r\n\r\nPROCTYPE= REFRESH|BOH", 20000, "Valore sconosciuto per il parametro PROCTYPE=()",
         "ParmEditor.SaveImport", 3},
        {"SORT", "NOMASK= TRUE\r\nNOSPACES= BOH", 20000, "Valore sconosciuto per il parametro NOSPACES=(BOH)",
         "diSort.SaveParm", 2},
    };
    for (const Refusal& R : Table) {
        SCOPED_TRACE(std::string(R.Clsid) + " " + R.Text);
        EXPECT_EQ(Play({
                      {Object("registry/create", R.Clsid, "PROVA"), "*"},
                      {Object("open", R.Clsid, "PROVA"), "*"},
                      {On("DispData"), "*"},
                      {SaveText(R.Text), Error(R.Number, R.Message, R.Source, R.Line)},
                      {On("DispData"), Result(R"({"Buffer":@buffer})")},
                      {Call("modified"), Result(R"({"Value":false})")},
                      {On("SaveData", R"(,"Buffer":@buffer)"), kNowModified + kSaved},
                      {SaveText(R.Text), Error(R.Number, R.Message, R.Source, R.Line)},
                      {Call("modified"), Result(R"({"Value":true})")},
                      {Call("Save"), kNotModified + Result(R"({"Revision":2})")},
                      {SaveText(R.Text), Error(R.Number, R.Message, R.Source, R.Line)},
                      {Call("modified"), Result(R"({"Value":false})")},
                      {Call("close"), Result("{}")},
                      {Object("registry/delete", R.Clsid, "PROVA"), Result("{}")},
                  }),
                  0);
    }
}

// Open, edit, save, close, open again; and every section shown, saved back as it is and shown again is equal.
struct Section {
    const char* Clsid;
    const char* Leaf;
    const char* Text;  // what is put in
    const char* Head;  // how it begins when it is shown
};

constexpr Section kSections[] = {
    {"CATALOGUE", "@leaf(PARMS)",
     "RETRIEVAL= biblio\r\nTABLE= libri\r\nPATH= \"C:\\Opac\"\r\nMIRROROF= \"Altro\"",
     "RETRIEVAL= \"BIBLIO\"\r\nTABLE= \"LIBRI\"\r\nPROFILE= \"\"\r\nQUERY= \"\"\r\nBROWSE= \"\"\r\n"
     "PATH= \"C:\\Opac\"\r\nHELP= \"\"\r\nHELPWWW= \"\"\r\nFLAGS= NONE\r\nMIRROROF= \"Altro\"\r\n"},
    {"FILTER", "@leaf(PARMS)", "EXPRESSION= \"tipo = 'citt\u00E0'\"\r\nAUTOMATIC= vero\r\nMERGEWITH= or",
     "TABLE= \"\"\r\nEXPRESSION= \"tipo = 'citt\u00E0'\"\r\nAUTOMATIC= TRUE\r\nMERGEWITH= OR\r\n"},
    {"IMPORT", "@leaf(PARMS)", "PROCTYPE= refresh|nodbr\r\nFLAGS= zipfiles\r\nLOCKED= TRUE\r\nLOGFILE= a.log",
     "PROCEDURE= \"\"\r\nRETRIEVAL= \"\"\r\nSOURCEPATH= \"\"\r\nTARGETPATH= \"\"\r\nLOGFILE= \"a.log\"\r\n"
     "PROCTYPE= NODBR|REFRESH\r\nFLAGS= ZIPFILES\r\nLOCKED= TRUE\r\n"},
    {"MEMBER", "@leaf(PARMS)", "PASSWORD= \"\xC3\xA0\xC5\xA1 \xF0\x9F\x98\x80\"", "PASSWORD= \"ÀŠ 😀\"\r\n"},
    {"REPOSITORY", "@leaf(PARMS)", "PATH= /var/oggetti\r\nREADONLY= TRUE\r\nKEYFIELD= codice",
     "PATH= \"/var/oggetti\"\r\nURL= \"\"\r\nTABLE= \"\"\r\nKEYFIELD= \"CODICE\"\r\nTEMPPATH= \"\"\r\n"
     "READONLY= TRUE\r\nFLAGS= NONE\r\n"},
    {"SORT", "@leaf(PARMS)", "NOMASK= TRUE\r\nNOSPACES= VERO",
     "NONUMERIC= FALSE\r\nNOTABLE= FALSE\r\nNOMASK= TRUE\r\nNOSPACES= TRUE\r\nFLAGS= NONE\r\n"},
    {"SORT", "@leaf(PARMS,2)", "61= 5A\r\nE9= 45",
     "'In questa sezione sono significative solo le cifre esadecimali\r\n"
     "'I codici di carattere assenti si assumono =0\r\n"
     "00 = 00  [ ] [ ]\r\n"},
};

// The line that shows the text of the section: the beginning told, whatever the rest.
class RpcRoundTrip : public RpcWindow {};

TEST_F(RpcRoundTrip, OpenEditSaveCloseReopen) {
    for (const Section& S : kSections) {
        SCOPED_TRACE(std::string(S.Clsid) + " " + S.Leaf);
        const std::string Show = Call("DispData", R"({"CurrItem":)" + std::string(S.Leaf) + "}");
        const std::string Same = Result(R"({"Buffer":@buffer})");
        EXPECT_EQ(
            Play({
                {Object("registry/create", S.Clsid, "PROVA"), "*"},
                {Object("open", S.Clsid, "PROVA"), "*"},
                {SaveText(S.Text, S.Leaf), kNowModified + kSaved},
                {Show, "^" + Quoted(S.Head)},
                {Call("SaveData", R"({"Buffer":@buffer,"CurrItem":)" + std::string(S.Leaf) + "}"), kSaved},
                {Show, Same},
                {Call("Save"), kNotModified + Result(R"({"Revision":2})")},
                {Show, Same},
                {Call("close"), Result("{}")},
                {Object("open", S.Clsid, "PROVA"), "*"},
                {Show, Same},
                {Call("SaveData", R"({"Buffer":@buffer,"CurrItem":)" + std::string(S.Leaf) + "}"),
                 kNowModified + kSaved},
                {Show, Same},
                {Call("Save"), kNotModified + Result(R"({"Revision":3})")},
                {Call("Save"), Result(R"({"Revision":4})")},
            }),
            0);
        // another process
        EXPECT_EQ(Play({
                      {Object("open", S.Clsid, "PROVA"), "*"},
                      {Show, "^" + Quoted(S.Head)},
                      {Call("close"), Result("{}")},
                      {Object("registry/delete", S.Clsid, "PROVA"), Result("{}")},
                  }),
                  0);
    }
}

// Whatever the class: a text saved back as it was shown changes nothing, accepted or refused. The object is
// new and has an element in each of its lists.
TEST_F(RpcRoundTrip, EveryLeafOfEveryClass) {
    for (const std::wstring_view Word : ClassWords()) {
        const std::string Clsid(Word.begin(), Word.end());
        SCOPED_TRACE(Clsid);
        const std::string Open =
            Call("open", R"({"Clsid":")" + Clsid + R"(","Name":"PROVA","SyntaxOn":false})");
        ASSERT_EQ(Play({{Object("registry/create", Clsid, "PROVA"), "*"}}), 0);
        std::vector<Exchange> Fill{{Open, "*"}};
        for (const Node& N : Nodes(Clsid, "PROVA"))
            if (N.Kind == "RG")
                Fill.push_back({Call("EditData", R"({"CurrItem":")" + N.Key + R"("})"), "..."});
        Fill.push_back({Call("Save"), "..."});
        ASSERT_EQ(Play(Fill), 0);

        std::vector<Exchange> Round{{Open, "*"}};
        int Place = 0;
        for (const Node& N : Nodes(Clsid, "PROVA")) {
            ++Place;
            if (N.Key.find(' ') == std::string::npos) continue;
            const std::string At = R"({"CurrItem":@node()" + std::to_string(Place) + ")";
            Round.push_back({Call("DispData", At + "}"), "*"});
            Round.push_back({Call("SaveData", At + R"(,"Buffer":@buffer})"), "..."});
            Round.push_back({Call("DispData", At + "}"), Result(R"({"Buffer":@buffer})")});
        }
        EXPECT_EQ(Play(Round), 0);
    }
}

TEST_F(RpcWindow, CopyWritesTheClipboardFileAndPasteFillsAnotherObject) {
    const std::filesystem::path File = Folder / "KVDSCLP.TMP";
    EXPECT_EQ(
        Play({
            {Object("registry/create", "MEMBER", "ADA"), Result(R"({"Id":1})")},
            {Object("registry/create", "MEMBER", "EVA"), Result(R"({"Id":2})")},
            {Object("open", "MEMBER", "ADA"), "*"},
            {SaveText("PASSWORD= mela"), "~{}\n" + kSaved},
            {On("CopyData"), Result(R"({"ClassWord":"MEMBER"})"),
             [&] { EXPECT_FALSE(std::filesystem::exists(File)); }},
            {Call("close"), Result("{}"), [&] { EXPECT_TRUE(std::filesystem::exists(File)); }},
            {Object("open", "MEMBER", "EVA"), "*"},
            {On("PasteData"), kNowModified + kSaved},
            {Call("tree"), "*"},
            {On("DispData"), BufferIs("PASSWORD= \"MELA\"\r\n'[ID= 2]\r\n'[NAME= EVA]\r\n'[VERSION= 1]\r\n")},
            {Object("registry/export", "MEMBER", "EVA"), "~{}\n~{}\n*"},
            {Call("Save"), kNotModified + Result(R"({"Revision":2})")},
            {Call("close"), Result("{}")},
            {Object("open", "MEMBER", "EVA"), "*"},
            {On("DispData"), BufferIs("PASSWORD= \"MELA\"\r\n'[ID= 2]\r\n'[NAME= EVA]\r\n'[VERSION= 1]\r\n")},
            {Call("close"), Result("{}")},
            // what was copied had not been saved
            {Object("open", "MEMBER", "ADA"), "*"},
            {On("DispData"), BufferIs("PASSWORD= \"\"\r\n'[ID= 1]\r\n'[NAME= ADA]\r\n'[VERSION= 1]\r\n")},
        }),
        0);

    RegObject Copied;
    std::wstring Name;
    std::wstring Path = File.wstring();
    ASSERT_FALSE(ClipboardLoad(Copied, Name, Path, 1));
    EXPECT_EQ(Name, L"ADA");
    ASSERT_TRUE(Copied.Child(L"Text"));
    EXPECT_EQ(Copied.Child(L"Text")->Text, L"MELA");
}

// A paste that is not saved is gone with the window.
TEST_F(RpcWindow, APasteIsStoredBySaveOnly) {
    EXPECT_EQ(
        Play({
            {Object("registry/create", "MEMBER", "ADA"), "*"},
            {Object("registry/create", "MEMBER", "EVA"), "*"},
            {Object("open", "MEMBER", "ADA"), "*"},
            {SaveText("PASSWORD= mela"), "~{}\n" + kSaved},
            {On("CopyData", R"(,"Group":true)"), Result(R"({"ClassWord":"MEMBER"})")},
            {Call("close"), Result("{}")},
            {Object("open", "MEMBER", "EVA"), "*"},
            {On("PasteData"), kNowModified + kSaved},
            {Call("close"), Result("{}")},
            {Object("open", "MEMBER", "EVA"), "*"},
            {On("DispData"), BufferIs("PASSWORD= \"\"\r\n'[ID= 2]\r\n'[NAME= EVA]\r\n'[VERSION= 1]\r\n")},
        }),
        0);
}

TEST_F(RpcWindow, PasteRefusesAForeignClass) {
    const auto Foreign = [](const char* Path) {
        return Error(20000, std::string("I dati memorizzati sono di una classe diversa da ") + Path,
                     "vdSvr.PasteData");
    };
    EXPECT_EQ(Play({
                  {Object("registry/create", "MEMBER", "ADA"), "*"},
                  {Object("registry/create", "FILTER", "ZETA"), "*"},
                  {Object("open", "MEMBER", "ADA"), "*"},
                  {On("PasteData"), Foreign("MEMBER")},  // the clipboard is empty
                  {On("PasteData", R"(,"Path":"")"), kSaved},
                  {On("CopyData"), Result(R"({"ClassWord":"MEMBER"})")},
                  {On("PasteData", R"(,"Path":"FILTER")"), Foreign("FILTER")},
                  {Call("close"), Result("{}")},
                  {Object("open", "FILTER", "ZETA"), "*"},
                  {On("DispData"), "*"},
                  {On("PasteData"), Foreign("FILTER")},
                  {On("DispData"), Result(R"({"Buffer":@buffer})")},
                  {Call("modified"), Result(R"({"Value":false})")},
                  {On("PasteData", R"(,"Path":"MEMBER")"), kNowModified + kSaved},
                  {Call("tree"), "*"},
                  {On("DispData"), Result(R"({"Buffer":@buffer})")},
              }),
              0);
}

TEST_F(RpcWindow, CopyFailsWhereTheFileCannotBeWritten) {
    Options.Temp = Folder / "nowhere";
    EXPECT_EQ(
        PlayOn("MEMBER",
               {
                   {On("CopyData"),
                    R"(~{"error":{"code":75,"data":{"Number":75,"Source":"vdbInclude.ClipboardStore"}}})"},
                   {On("PasteData"), Error(20000, "I dati memorizzati sono di una classe diversa da MEMBER",
                                           "vdSvr.PasteData")},
               }),
        0);
}

// A folder's name need not be ASCII.
TEST_F(RpcWindow, CopyWritesIntoAFolderOfAnyName) {
    Options.Temp = Folder / "citt\xC3\xA0 \xF0\x9F\x98\x80";
    std::filesystem::create_directory(Options.Temp);
    EXPECT_EQ(PlayOn("MEMBER", {{On("CopyData"), Result(R"({"ClassWord":"MEMBER"})")}}), 0);
    EXPECT_TRUE(std::filesystem::exists(Options.Temp / "KVDSCLP.TMP"));
}

// An error is told once and leaves nothing behind for the next request.
TEST_F(RpcWindow, AnErrorIsToldOnce) {
    EXPECT_EQ(PlayOn("MEMBER",
                     {
                         {SaveText("PIPPO=1"),
                          Error(20000, "Parametro non riconosciuto: PIPPO=1", "diMember.SaveParm", 1)},
                         {On("MoveData", R"(,"Direction":1)"), kNothingShown},
                         {Call("TlbrButtonClick", R"({"Method":"FINDTAG"})"), Result("{}")},
                         {Call("close"), Result("{}")},
                         {Object("open", "PIPPO", "X"),
                          Error(20000, "Metodo sconosciuto [PIPPO]", "vdSvr.ShowData")},
                         {Object("open", "MEMBER", "PROVA"), "*"},
                         {On("MoveData", R"(,"Direction":1)"), kNothingShown},
                         // without an id the work is done, and only the notice is seen
                         {NoId(SaveText("PIPPO=1")), ""},
                         {NoId(SaveText("PASSWORD= a")), kNowModified},
                         {On("MoveData", R"(,"Direction":1)"), kNothingShown},
                     }),
              0);
}

// What another program does to the file while the object is open.

void Rewrite(const std::filesystem::path& Store, std::wstring_view Clsid, std::wstring_view Name,
             const std::function<void(RegObject&)>& Change) {
    host::KvRegSvr Registry(Store);
    const auto Found = Registry.Open(Clsid, Name);
    RegObject Content = Found->Read();
    Change(Content);
    Found->SetSaving(true);
    Found->Write(Content);
}

TEST_F(RpcWindow, ASaveOverAnotherSaveIsRefusedAndLosesNothing) {
    const std::string Refused =
        R"(~{"error":{"code":20000,"data":{"Source":"ParmItem.Save","Number":20000}}})";
    const std::string Mine = "PASSWORD= \"MIA\"\r\n'[ID= 1]\r\n'[NAME= PROVA]\r\n'[VERSION= 1]\r\n";
    const std::string Theirs = "PASSWORD= \"LORO\"\r\n'[ID= 1]\r\n'[NAME= PROVA]\r\n'[VERSION= 1]\r\n";
    EXPECT_EQ(
        PlayOn(
            "MEMBER",
            {
                {SaveText("PASSWORD= mia"), kNowModified + kSaved},
                {Call("Save"), Refused,
                 [&] {
                     Rewrite(Options.Store, L"MEMBER", L"PROVA",
                             [](RegObject& Content) { Content.SetValue(L"Text", L"LORO"); });
                 }},
                {Call("modified"), Result(R"({"Value":true})")},
                {On("DispData"), BufferIs(Mine)},
                {Call("Save"), Refused},
                {Call("registry/list"), R"(~{"result":[{"Clsid":"MEMBER","Name":"PROVA","Id":1,"Desc":"",
                              "Version":1,"UserList":"","Revision":2}]})"},
                {Call("close"), Result("{}")},
                {Object("open", "MEMBER", "PROVA"), "*"},
                {On("DispData"), BufferIs(Theirs)},
                {SaveText("PASSWORD= mia"), kNowModified + kSaved},
                {Call("Save"), kNotModified + Result(R"({"Revision":3})")},
                {Call("Save"), Refused, [&] { host::KvRegSvr(Options.Store).Delete(L"MEMBER", L"PROVA"); }},
                {On("DispData"), BufferIs(Mine)},
                {Call("close"), Result("{}")},
                {Call("registry/list"), Result("[]")},
            }),
        0);
}

TEST_F(RpcWindow, TroubleWithTheStoreIsAnErrorOfTheRequest) {
    const auto Trouble = [](const char* Source) {
        return std::string(R"(~{"error":{"code":20000,"data":{"Source":")") + Source +
               R"(","Number":20000}}})";
    };
    const auto Spoil = [&] {
        sqlite3* Base = nullptr;
        ASSERT_EQ(sqlite3_open(Options.Store.c_str(), &Base), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(Base, "DROP TABLE objects", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(Base);
    };
    EXPECT_EQ(PlayOn("MEMBER",
                     {
                         {SaveText("PASSWORD= mia"), kNowModified + kSaved},
                         {Call("registry/list"), Trouble("KvRegSvr.List"), Spoil},
                         {Object("registry/create", "MEMBER", "ADA"), Trouble("KvRegSvr.Create")},
                         {Object("registry/delete", "MEMBER", "ADA"), Trouble("KvRegSvr.Delete")},
                         {Object("registry/object", "MEMBER", "ADA"), Trouble("KvRegSvr.Open")},
                         {Object("registry/export", "MEMBER", "ADA"), Trouble("KvRegSvr.Open")},
                         {Call("Save"), Trouble("ParmItem.Save")},
                         {Call("modified"), Result(R"({"Value":true})")},
                         {Call("close"), Result("{}")},
                         {Object("open", "MEMBER", "PROVA"), Trouble("KvRegSvr.Open")},
                         {Call("server/version"), Result(R"({"CurrVersion":256})")},
                     }),
              0);
}

TEST_F(RpcWindow, AnObjectThatCannotBeShownDoesNotOpen) {
    const std::string Closed = Error(-32002, "nothing is open");
    const auto Spoil = [&](std::wstring_view Clsid, std::function<void(RegObject&)> Change) {
        return [this, Clsid, Change] { Rewrite(Options.Store, Clsid, L"PROVA", Change); };
    };
    EXPECT_EQ(
        Play({
            {Object("registry/create", "IMPORT", "PROVA"), "*"},
            {Object("registry/create", "MEMBER", "PROVA"), "*"},
            {Object("open", "IMPORT", "PROVA"), Error(6, "Overflow", "ImportRecord.Load"),
             Spoil(L"IMPORT", [](RegObject& O) { O.SetValue(L"ProcType", std::wstring(L"99999999999")); })},
            {Call("tree"), Closed},
            {Object("open", "MEMBER", "PROVA"), Error(6, "Overflow", "diMember.GetObjectInfo"),
             Spoil(L"MEMBER", [](RegObject& O) { O.Version = 40000; })},
            {Call("tree"), Closed},
            {Object("open", "MEMBER", "PROVA"), "*",
             Spoil(L"MEMBER", [](RegObject& O) { O.Version = 32767; })},
        }),
        0);
}

// A paste whose content can't be loaded leaves the open object as it was.
TEST_F(RpcWindow, APasteThatFailsChangesNothing) {
    EXPECT_EQ(Play({
                  {Object("registry/create", "IMPORT", "PROVA"), "*"},
                  {Object("registry/create", "MEMBER", "PROVA"), "*"},
                  {Object("open", "MEMBER", "PROVA"), "*",
                   [&] {
                       Rewrite(Options.Store, L"MEMBER", L"PROVA", [](RegObject& Content) {
                           Content.SetValue(L"ProcType", std::wstring(L"99999999999"));
                       });
                   }},
                  {On("CopyData"), Result(R"({"ClassWord":"MEMBER"})")},
                  {Call("close"), Result("{}")},
                  {Object("open", "IMPORT", "PROVA"), "*"},
                  {On("DispData"), "*"},
                  {On("PasteData", R"(,"Path":"MEMBER")"), Error(6, "Overflow", "ImportRecord.Load")},
                  {Call("modified"), Result(R"({"Value":false})")},
                  {Call("tree"), "*"},
                  {On("DispData"), Result(R"({"Buffer":@buffer})")},
                  {Call("Save"), Result(R"({"Revision":2})")},
              }),
              0);
}

}  // namespace
}  // namespace kv::test
