// The web server: its parameters, its page templates, its tags and messages.
#include <gtest/gtest.h>

#include "items/navigation/diWebServer.h"
#include "tests/items/Reading.h"

namespace kv::test {
namespace {

constexpr std::wstring_view kTemplates[] = {L"BROWSE",     L"ERRORS", L"HISTORY",     L"HOME",  L"LOAN",
                                            L"LOANREPORT", L"QUERY",  L"QUERYRESULT", L"RECORD"};
constexpr std::wstring_view kLists[] = {L"Browse",     L"Errors", L"History",     L"Home",  L"Loan",
                                        L"LoanReport", L"Query",  L"QueryResult", L"Record"};

RegObject TextIn(std::int32_t Id, std::wstring_view Name, std::wstring_view Language,
                 std::wstring_view Text) {
    return Element(Id, Name, {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
RegObject Page(std::int32_t Id, std::wstring_view Language, std::wstring_view File) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"FileName", RegText(File)}, {L"Action", 2}});
}
// The object in which a record keeps its tags, or its messages.
RegObject WithNamed(RegObject Of, std::wstring_view Holder, std::vector<RegObject> Named) {
    RegObject& Made = Of.Children.emplace_back();
    Made.Name = Holder;
    Made = WithList(std::move(Made), L"Message", std::move(Named));
    return Of;
}
RegObject Described(RegObject Of, std::wstring_view Desc) {
    Of.Desc = Desc;
    return Of;
}

// Two of everything.
RegObject Full() {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"BrowseRows", 20},
                                                  {L"QueryTimeout", 60},
                                                  {L"Flags", 1},
                                                  {L"MessageLevel", 6},
                                                  {L"LogFile", RegText(L"C:\\Log\\Web.log")}});
    for (std::size_t I = 0; I < std::size(kLists); ++I) {
        const auto Id = static_cast<std::int32_t>(10 * I + 11);
        const std::wstring File(kTemplates[I]);
        Made = WithList(std::move(Made), kLists[I],
                        {Page(Id, L"ITA", File + L".it"), Page(Id + 1, L"ENG", File + L".en")});
    }
    Made =
        WithNamed(std::move(Made), L"Constants",
                  {WithList(Described(Element(201, L"TITOLO"), L"Titolo della pagina"), L"Message",
                            {TextIn(202, L"Intestazione della pagina", L"ITA", L"Catalogo"),
                             TextIn(203, L"", L"ENG", L"Catalogue")}),
                   WithList(Element(204, L"PIEDE"), L"Message",
                            {TextIn(205, L"Piede", L"ITA", L"Fine"), TextIn(206, L"Foot", L"ENG", L"End")})});
    return WithNamed(std::move(Made), L"Messages",
                     {WithList(Described(Element(301, L"ATTESA"), L"Durante la ricerca"), L"Message",
                               {TextIn(302, L"", L"ITA", L"Attendere il risultato della ricerca"),
                                TextIn(303, L"", L"ENG", L"Please wait")}),
                      WithList(Element(304, L"ERRORE"), L"Message",
                               {TextIn(305, L"", L"ITA", L"Errore"), TextIn(306, L"", L"ENG", L"Error")})});
}

class WebServer : public ::testing::Test {
  protected:
    using Words = std::vector<std::wstring>;
    using Numbers = std::vector<std::int32_t>;

    Desk On{L"WEBSERVER", Full()};

    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    // The folder of the texts of the n-th tag or message.
    std::wstring Texts(std::wstring_view Folder, std::size_t Nth) const {
        return KeyBelow(On, Node(Folder, Nth), 2);
    }
    static Numbers IdsOf(const std::vector<RegObject>& Elements) {
        Numbers Found;
        for (const RegObject& Each : Elements) Found.push_back(Each.Id);
        return Found;
    }
    // The tags or the messages as they would be stored now.
    std::vector<RegObject> Named(std::wstring_view Holder) {
        const RegObject* const Held = SavedBy(On).Child(Holder);
        EXPECT_NE(Held, nullptr);
        return Held ? ListOf(*Held, L"Message") : std::vector<RegObject>{};
    }
    // The line of a section's text that begins with the keyword.
    std::wstring LineOf(const std::wstring& Key, std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Key);
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos) << Narrow(Keyword);
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    // The tree is the one that the stored record builds.
    void ExpectSameTree() {
        Desk Again(L"WEBSERVER", SavedBy(On));
        EXPECT_EQ(Narrow(On.Picture()), Narrow(Again.Picture()));
    }
};

// The tree.

TEST(WebServerTree, AnEmptyServerHasAllFolders) {
    Desk Empty(L"WEBSERVER");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  BROWSE \"Browse Templates\" 12,11 RG\n"
                                              L"  CONSTANTS \"Tags\" 9,9 RG\n"
                                              L"  ERRORS \"Errors Templates\" 12,11 RG\n"
                                              L"  HISTORY \"History Templates\" 12,11 RG\n"
                                              L"  HOME \"Home Templates\" 12,11 RG\n"
                                              L"  LOAN \"Loan Templates\" 12,11 RG\n"
                                              L"  LOANREPORT \"LoanReport Templates\" 12,11 RG\n"
                                              L"  MESSAGE \"Messaggi di sistema\" 9,9 RG\n"
                                              L"  QUERY \"Query Templates\" 12,11 RG\n"
                                              L"  QUERYRESULT \"Query Result Templates\" 12,11 RG\n"
                                              L"  RECORD \"Record Templates\" 12,11 RG\n"));
    std::wstring Choices =
        L"PARMS FLAGS= NONE DISABLEPERMISSIONCHECK\n"
        L"PARMS MESSAGELEVEL= NONE ALERTERROR LOGERROR LOGUSERCONNECT LOGTRANSACTIONS DEBUGMODE\n";
    for (const std::wstring_view Word : kTemplates)
        Choices.append(Word).append(
            L" ACTION= MENU BROWSE HELP RECORD QUERY BACK QUIT LINK SHELL SPAWN LOANIC QUERYRESULT ADMIN "
            L"LANG HTMLMOVE LOGIN HBACK SPAWN16 SPAWNDOC SPAWNDOC16 SHELLDOC WEBCLIENT DBSELECT SETOPS "
            L"NAVIGATE PASSWORD CLIENTSETUP LOANSTART LOANQUIT SHELLWIN INFO KVRSELECT IMAGE SEEK OPEN "
            L"CLOSEALL QUERYGET BOOLSTEM SHELF IMAGELIST ZOOMIN ZOOMOUT MAP LOANACTION IMAGEUM\n");
    EXPECT_EQ(Narrow(Empty.Offered()), Narrow(Choices));
    EXPECT_TRUE(Empty.Tree->Served().empty());
}

TEST_F(WebServer, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()),
              Narrow(L"ROOT \"PROVA\" 12,11\n"
                     L"  PARMS \"Parametri\" 12,11\n"
                     L"    PARMS # \"Parametri\" 9,9\n"
                     L"  BROWSE \"Browse Templates\" 12,11 RG\n"
                     L"    BROWSE # \"File: [ITA] BROWSE.it\" 9,9\n"
                     L"    BROWSE # \"File: [ENG] BROWSE.en\" 9,9\n"
                     L"  CONSTANTS \"Tags\" 9,9 RG\n"
                     L"    CONSTANTS-# \"TITOLO\" 15,15 RDM\n"
                     L"      CONSTANTPARMS-# \"Parametri\" 9,9\n"
                     L"        CONSTANTPARMS-# # \"Parametri\" 9,9\n"
                     L"      CONSTANTCAPTION-# \"Tags\" 9,9 R\n"
                     L"        CONSTANTCAPTION-# # \"Tag: [ITA] Intestazione della p\" 9,9\n"
                     L"        CONSTANTCAPTION-# # \"Tag: [ENG] \" 9,9\n"
                     L"    CONSTANTS-# \"PIEDE\" 15,15 RDM\n"
                     L"      CONSTANTPARMS-# \"Parametri\" 9,9\n"
                     L"        CONSTANTPARMS-# # \"Parametri\" 9,9\n"
                     L"      CONSTANTCAPTION-# \"Tags\" 9,9 R\n"
                     L"        CONSTANTCAPTION-# # \"Tag: [ITA] Piede\" 9,9\n"
                     L"        CONSTANTCAPTION-# # \"Tag: [ENG] Foot\" 9,9\n"
                     L"  ERRORS \"Errors Templates\" 12,11 RG\n"
                     L"    ERRORS # \"File: [ITA] ERRORS.it\" 9,9\n"
                     L"    ERRORS # \"File: [ENG] ERRORS.en\" 9,9\n"
                     L"  HISTORY \"History Templates\" 12,11 RG\n"
                     L"    HISTORY # \"File: [ITA] HISTORY.it\" 9,9\n"
                     L"    HISTORY # \"File: [ENG] HISTORY.en\" 9,9\n"
                     L"  HOME \"Home Templates\" 12,11 RG\n"
                     L"    HOME # \"File: [ITA] HOME.it\" 9,9\n"
                     L"    HOME # \"File: [ENG] HOME.en\" 9,9\n"
                     L"  LOAN \"Loan Templates\" 12,11 RG\n"
                     L"    LOAN # \"File: [ITA] LOAN.it\" 9,9\n"
                     L"    LOAN # \"File: [ENG] LOAN.en\" 9,9\n"
                     L"  LOANREPORT \"LoanReport Templates\" 12,11 RG\n"
                     L"    LOANREPORT # \"File: [ITA] LOANREPORT.it\" 9,9\n"
                     L"    LOANREPORT # \"File: [ENG] LOANREPORT.en\" 9,9\n"
                     L"  MESSAGE \"Messaggi di sistema\" 9,9 RG\n"
                     L"    MESSAGE-# \"ATTESA\" 15,15 RDM\n"
                     L"      MESSAGEPARMS-# \"Parametri\" 9,9\n"
                     L"        MESSAGEPARMS-# # \"Parametri\" 9,9\n"
                     L"      MESSAGECAPTION-# \"Messaggi\" 9,9 R\n"
                     L"        MESSAGECAPTION-# # \"Messaggio: [ITA] Attendere il risulta\" 9,9\n"
                     L"        MESSAGECAPTION-# # \"Messaggio: [ENG] Please wait\" 9,9\n"
                     L"    MESSAGE-# \"ERRORE\" 15,15 RDM\n"
                     L"      MESSAGEPARMS-# \"Parametri\" 9,9\n"
                     L"        MESSAGEPARMS-# # \"Parametri\" 9,9\n"
                     L"      MESSAGECAPTION-# \"Messaggi\" 9,9 R\n"
                     L"        MESSAGECAPTION-# # \"Messaggio: [ITA] Errore\" 9,9\n"
                     L"        MESSAGECAPTION-# # \"Messaggio: [ENG] Error\" 9,9\n"
                     L"  QUERY \"Query Templates\" 12,11 RG\n"
                     L"    QUERY # \"File: [ITA] QUERY.it\" 9,9\n"
                     L"    QUERY # \"File: [ENG] QUERY.en\" 9,9\n"
                     L"  QUERYRESULT \"Query Result Templates\" 12,11 RG\n"
                     L"    QUERYRESULT # \"File: [ITA] QUERYRESULT.it\" 9,9\n"
                     L"    QUERYRESULT # \"File: [ENG] QUERYRESULT.en\" 9,9\n"
                     L"  RECORD \"Record Templates\" 12,11 RG\n"
                     L"    RECORD # \"File: [ITA] RECORD.it\" 9,9\n"
                     L"    RECORD # \"File: [ENG] RECORD.en\" 9,9\n"));
    // The key of a leaf below a tag or message is that of its folder, a blank and an id.
    const std::wstring Folder = Texts(L"CONSTANTS", 1);
    EXPECT_EQ(KeyBelow(On, Folder, 1).find(Folder + L" "), 0U);
}

// A tree that notes by which operation a node is made, and refuses the nodes of one section.
class NotingTree final : public DesignTree {
  public:
    explicit NotingTree(std::wstring_view Refused = L"-") : Refused_(Refused) {}

    std::vector<std::wstring> Plain;
    std::vector<std::wstring> Icons;
    window::TreeModel Model;

    void AddNode(const NewNode& Node) override {
        Note(Node, Plain);
        Model.AddNode(Node);
    }
    void AddIconNode(const NewNode& Node) override {
        Note(Node, Icons);
        Model.AddIconNode(Node);
    }
    void MarkModified(bool Modified) override { Model.MarkModified(Modified); }
    void ClearNodes() override { Model.ClearNodes(); }
    void RemoveNode(std::wstring_view Key) override { Model.RemoveNode(Key); }
    void RemoveChildren(std::wstring_view Key) override { Model.RemoveChildren(Key); }
    bool HasNode(std::wstring_view Key) const override { return Model.HasNode(Key); }
    std::wstring NodeText(std::wstring_view Key) const override { return Model.NodeText(Key); }
    void SetNodeText(std::wstring_view Key, std::wstring_view Text) override { Model.SetNodeText(Key, Text); }
    std::wstring NodeParent(std::wstring_view Key) const override { return Model.NodeParent(Key); }
    std::int32_t NodeId(std::wstring_view Key) const override { return Model.NodeId(Key); }
    std::wstring NodeAt(std::wstring_view Folder, std::int32_t Place) const override {
        return Model.NodeAt(Folder, Place);
    }
    void SelectNode(std::wstring_view Key) override { Model.SelectNode(Key); }
    [[nodiscard]] bool MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                                    std::int32_t& NewIndex) override {
        return Model.MoveListItem(List, Direction, RelativeKey, NewIndex);
    }
    [[nodiscard]] bool AddDefault(std::wstring_view, std::wstring_view, std::wstring_view) override {
        return false;
    }
    void AddToolButton(const ToolButtonInfo&) override {}
    [[nodiscard]] bool SetTools(std::span<const std::wstring_view>) override { return false; }
    bool SyntaxOn() const override { return true; }
    [[nodiscard]] bool ShowTree(TreeCall&) override { return true; }
    void Dispose() override {}

  private:
    void Note(const NewNode& Node, std::vector<std::wstring>& Into) const {
        if (Node.Key.starts_with(Refused_)) RaiseFault(fault::kSubscript);
        Into.emplace_back(Node.Key);
    }

    std::wstring Refused_;
};

bool OfNamed(std::wstring_view Key) { return Key.starts_with(L"CONSTANT") || Key.starts_with(L"MESSAGE"); }

TEST_F(WebServer, TagsAndMessagesAreIconNodesAllTheWayDown) {
    const auto Tree = std::make_shared<NotingTree>();
    diWebServer Item;
    Item.DesignTree() = Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    const auto Key = [&](std::wstring_view Folder, std::int32_t Nth) { return Tree->NodeAt(Folder, Nth); };
    std::wstring Made;
    for (const std::wstring Word : {L"CONSTANT", L"MESSAGE"}) {
        const std::wstring List = Word == L"CONSTANT" ? L"CONSTANTS" : L"MESSAGE";
        ASSERT_FALSE(Item.EditData({.CurrFolder = List, .CurrItem = List, .Key = List}, Made));
        const std::wstring Texts = Key(Key(List, 1), 2);
        ASSERT_FALSE(Item.EditData({.CurrFolder = Texts, .CurrItem = Texts, .Key = Word + L"CAPTION"}, Made));
        Head Leaf{.CurrFolder = Texts, .CurrItem = Made, .Key = Word + L"CAPTION"};
        ASSERT_FALSE(Item.MoveData(Leaf, 1));
        Head Named{.CurrFolder = Key(List, 2), .CurrItem = Key(List, 2), .Key = List};
        ASSERT_FALSE(Item.MoveData(Named, 1));
    }
    ASSERT_FALSE(Item.EditData({.CurrFolder = L"HOME", .CurrItem = L"HOME", .Key = L"HOME"}, Made));
    for (const std::wstring& Each : Tree->Plain) EXPECT_FALSE(OfNamed(Each)) << Narrow(Each);
    for (const std::wstring& Each : Tree->Icons) EXPECT_TRUE(OfNamed(Each)) << Narrow(Each);
    // For each of the two: the folder, two elements of six nodes, a new one of five, a new text, that text
    // moved, a moved element of six.
    EXPECT_EQ(Tree->Icons.size(), 2U * (1 + 12 + 5 + 1 + 1 + 6));
    Tree->Model.ForEach([&](const window::TreeNode& N) {
        if (!OfNamed(N.Key)) return;
        const bool IsNamed = N.Key.starts_with(L"CONSTANTS-") || N.Key.starts_with(L"MESSAGE-");
        EXPECT_EQ(N.Image, IsNamed ? 15 : 9) << Narrow(N.Key);
        EXPECT_EQ(N.SelectedImage, N.Image) << Narrow(N.Key);
    });
}

TEST_F(WebServer, ANodeThatCannotBeMadeIsToldByItsMaker) {
    const struct {
        std::wstring_view Nodes;
        std::wstring_view Source;
    } kRows[] = {
        {L"BROWSE ", L"diWebServer.SetNode"},          {L"RECORD ", L"diWebServer.SetNode"},
        {L"CONSTANTS-", L"diWebServer.SetConstNode"},  {L"CONSTANTCAPTION-", L"diWebServer.SetConstNode"},
        {L"MESSAGEPARMS-", L"diWebServer.SetMsgNode"}, {L"QUERYRESULT", L"diWebServer.LoadData"}};
    for (const auto& Row : kRows) {
        diWebServer Item;
        Item.DesignTree() = std::make_shared<NotingTree>(Row.Nodes);
        EXPECT_TRUE(Item.LoadData(*On.Object));
        EXPECT_EQ(Narrow(CoreUtil::Instance().LastError().Source), Narrow(Row.Source));
        CoreUtil::Instance().ForgetError();
    }
}

// Sections and export.

TEST_F(WebServer, SectionTexts) {
    for (const wchar_t* const Section :
         {L"PARMS", L"BROWSE", L"CONSTANTPARMS", L"CONSTANTCAPTION", L"MESSAGEPARMS", L"MESSAGECAPTION"}) {
        const std::wstring Key = On.Leaf(Section);
        EXPECT_TRUE(MatchesGolden("section/WEBSERVER." + Narrow(Section) + ".full.txt", On.Text(Key)));
        ExpectFixpoint(On, Key);
    }
    for (const std::wstring_view Section : kTemplates) {
        EXPECT_EQ(LineOf(On.Leaf(Section), L"FILENAME="), L"FILENAME= \"" + std::wstring(Section) + L".it\"");
        ExpectFixpoint(On, On.Leaf(Section, 2));
    }
    Desk Empty(L"WEBSERVER");
    EXPECT_TRUE(MatchesGolden("section/WEBSERVER.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
}

TEST_F(WebServer, FoldersShowAndTakeNothing) {
    for (const std::wstring& Key :
         {std::wstring(L"CONSTANTS"), std::wstring(L"MESSAGE"), Node(L"CONSTANTS", 1), Node(L"MESSAGE", 2)}) {
        const RegObject Before = SavedBy(On);
        EXPECT_EQ(Narrow(On.Text(Key)), "");
        EXPECT_TRUE(Accepted(On.Put(Key, L"PIPPO= 1")));
        EXPECT_TRUE(SavedBy(On) == Before);
    }
    for (const std::wstring_view Folder : kTemplates) {
        EXPECT_EQ(Narrow(On.Text(std::wstring(Folder))), "");
        EXPECT_TRUE(Refused(On.Put(std::wstring(Folder), L"FILENAME= \"x\""), 9, L"diWebServer.SaveData",
                            L"Indice non compreso nell'intervallo"));
    }
    EXPECT_EQ(Narrow(On.Text(Texts(L"MESSAGE", 1))), "");
    // The texts of a tag have a form to show where none of them is selected.
    const std::wstring Folder = Texts(L"CONSTANTS", 1);
    EXPECT_EQ(Narrow(On.Text(Folder)), Narrow(Lines({L"TEXT= \"\"", L"LANG= \"\""})));
    EXPECT_TRUE(Refused(On.Put(Folder, L"TEXT= \"x\"\r\nLANG= ITA"), 9, L"diWebServer.SaveData",
                        L"Indice non compreso nell'intervallo"));
    std::wstring Text = L"PIPPO= 1";
    std::wstring Made;
    for (const wchar_t* const Word : {L"", L"ALTRO"})
        EXPECT_TRUE(Accepted(On.Try([&] {
            return On.Core.SaveData({.CurrItem = L"ROOT", .Key = std::wstring(Word)}, Text, Made);
        }))) << "a section that the item does not know";
}

TEST_F(WebServer, Export) {
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/WEBSERVER.txt", Text));
    EXPECT_LT(Text.find(L"\tBEGIN LOANREPORT\r\n"), Text.find(L"\tBEGIN LOAN\r\n"));
    Desk Empty(L"WEBSERVER");
    EXPECT_EQ(
        Narrow(Empty.Exported()),
        Narrow(Lines({L"\tBEGIN PARMS", L"\t\tFLAGS= NONE", L"\t\tBROWSEROWS= 0", L"\t\tQUERYTIMEOUT= 0",
                      L"\t\tMESSAGELEVEL= NONE", L"\t\tLOGFILE= \"\"", L"\t\t'[ID= 7]", L"\t\t'[NAME= PROVA]",
                      L"\t\t'[VERSION= 3]", L"\tEND PARMS", L"\tBEGIN CONSTANTS", L"\tEND CONSTANTS",
                      L"\tBEGIN MESSAGE", L"\tEND MESSAGE"})));
}

TEST_F(WebServer, BlocksAndPlacesOfARendering) {
    diWebServer Item;
    Item.DesignTree() = On.Tree;
    ASSERT_FALSE(Item.LoadData(*On.Object));
    std::wstring Buffer;
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"MESSAGE"}, Buffer, true, {}, 1));
    EXPECT_EQ(Narrow(Buffer), Narrow(L"\tBEGIN MESSAGE\r\n\tEND MESSAGE\r\n"));
    const std::int32_t Of[] = {2, 1};
    Buffer.clear();
    ASSERT_FALSE(Item.DispData({.Index = 1, .Key = L"CONSTANTCAPTION"}, Buffer, true, Of, 2));
    EXPECT_EQ(Narrow(Buffer),
              Narrow(Lines({L"\t\tBEGIN CONSTANTCAPTION", L"\t\t\tTEXT= \"Fine\"", L"\t\t\tLANG= \"ITA\"",
                            L"\t\t\t'[ID= 205]", L"\t\t\t'[NAME= Piede]", L"\t\t\t'[VERSION= 0]",
                            L"\t\tEND CONSTANTCAPTION"})));
    const std::int32_t Beyond[] = {2, 9};
    EXPECT_TRUE(Item.DispData({.Index = 1, .Key = L"CONSTANTCAPTION"}, Buffer, true, Beyond, 2));
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diWebServer.DispData");
    CoreUtil::Instance().ForgetError();
}

// The parameters.

class WebServerParms : public WebServer {
  protected:
    static constexpr std::wstring_view kSource = L"diWebServer.SaveParm";
    std::wstring Key = On.Leaf(L"PARMS");

    std::wstring Line(std::wstring_view Keyword) { return LineOf(Key, Keyword); }
    std::int32_t Long(std::wstring_view Name) { return LongOf(SavedBy(On), Name); }
};

TEST_F(WebServerParms, EveryKeywordIsStored) {
    ASSERT_TRUE(Accepted(
        On.Put(Key, Lines({L"BROWSEROWS= 12.4", L"FLAGS= disablePermissionCheck", L"LOGFILE= \"D:\\Diario\"",
                           L"MESSAGELEVEL= logError | alertError", L"QUERYTIMEOUT= 0"}))));
    const RegObject Saved = SavedBy(On);
    EXPECT_EQ(LongOf(Saved, L"BrowseRows"), 12);
    EXPECT_EQ(LongOf(Saved, L"Flags"), 1);
    EXPECT_EQ(TextOf(Saved, L"LogFile"), L"D:\\Diario");
    EXPECT_EQ(LongOf(Saved, L"MessageLevel"), 3);
    EXPECT_EQ(LongOf(Saved, L"QueryTimeout"), 0);
    EXPECT_EQ(Narrow(On.Text(Key)),
              Narrow(Lines({L"FLAGS=DISABLEPERMISSIONCHECK", L"BROWSEROWS= 12", L"QUERYTIMEOUT= 0",
                            L"MESSAGELEVEL= ALERTERROR|LOGERROR", L"LOGFILE= \"D:\\Diario\"", L"'[ID= 7]",
                            L"'[NAME= PROVA]", L"'[VERSION= 3]"})));
    ExpectFixpoint(On, Key);
}

TEST_F(WebServerParms, WhatATextLeavesOutStays) {
    const RegObject Before = SavedBy(On);
    for (const wchar_t* const Text : {L"", L"'nota\r\n\r\n; altra\r\n", L"QUERYTIMEOUT= 60"}) {
        ASSERT_TRUE(Accepted(On.Put(Key, Text)));
        EXPECT_TRUE(SavedBy(On) == Before) << Narrow(Text);
    }
    ASSERT_TRUE(Accepted(On.Put(Key, L"LOGFILE=")));
    EXPECT_EQ(Line(L"LOGFILE="), L"LOGFILE= \"\"");
    EXPECT_EQ(Line(L"MESSAGELEVEL="), L"MESSAGELEVEL= LOGERROR|LOGUSERCONNECT");
}

TEST_F(WebServerParms, ALevelWithoutAWordShowsNoneAndReadsAsZero) {
    Desk Odd(L"WEBSERVER", With(Desk::Named(L"PROVA"), {{L"BrowseRows", 1}, {L"MessageLevel", 16}}));
    const std::wstring Leaf = Odd.Leaf(L"PARMS");
    EXPECT_NE(Odd.Text(Leaf).find(L"\r\nMESSAGELEVEL= \r\n"), std::wstring::npos) << "NONE is for 0 alone";
    ASSERT_TRUE(Accepted(Odd.Put(Leaf, Odd.Text(Leaf))));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"MessageLevel"), 0);
}

TEST_F(WebServerParms, FlagsAddAndOnlyNoneOrNothingClears) {
    // A bit without a word shows as none and stays, until the line clears it.
    Desk Odd(L"WEBSERVER", With(Desk::Named(L"PROVA"), {{L"BrowseRows", 1}, {L"Flags", 4}}));
    const std::wstring Leaf = Odd.Leaf(L"PARMS");
    EXPECT_EQ(Odd.Text(Leaf).find(L"FLAGS=\r\n"), 0U);
    ASSERT_TRUE(Accepted(Odd.Put(Leaf, L"FLAGS= DISABLEPERMISSIONCHECK")));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), 5);
    EXPECT_EQ(Odd.Text(Leaf).find(L"FLAGS=DISABLEPERMISSIONCHECK\r\n"), 0U);
    ASSERT_TRUE(Accepted(Odd.Put(Leaf, L"FLAGS= altro", false)));
    EXPECT_EQ(LongOf(SavedBy(Odd), L"Flags"), 5) << "lax mode passes over an unknown word";
    for (const wchar_t* const Clears : {L"FLAGS= NONE", L"FLAGS= none", L"FLAGS="}) {
        ASSERT_TRUE(Accepted(On.Put(Key, L"FLAGS= DISABLEPERMISSIONCHECK")));
        EXPECT_EQ(Line(L"FLAGS="), L"FLAGS=DISABLEPERMISSIONCHECK");
        ASSERT_TRUE(Accepted(On.Put(Key, Clears)));
        EXPECT_EQ(Long(L"Flags"), 0) << Narrow(Clears);
        EXPECT_EQ(Line(L"FLAGS="), L"FLAGS= NONE");
    }
    ASSERT_TRUE(Accepted(On.Put(Key, L"FLAGS= NONE|disablepermissioncheck", false)));
    EXPECT_EQ(Long(L"Flags"), 1) << "NONE is none of the words";
}

TEST_F(WebServerParms, LevelsReplace) {
    const struct {
        const wchar_t* Value;
        std::int32_t Stored;
        const wchar_t* Shown;
    } kRows[] = {
        {L"ALERTERROR", 0x01, L"ALERTERROR"},
        {L"LOGERROR", 0x02, L"LOGERROR"},
        {L"LOGUSERCONNECT", 0x04, L"LOGUSERCONNECT"},
        {L"LOGTRANSACTIONS", 0x08, L"LOGTRANSACTIONS"},
        {L"DEBUGMODE", 0x7FFFFFFF, L"ALERTERROR|LOGERROR|LOGTRANSACTIONS|LOGUSERCONNECT"},
        {L"logUserConnect|alertError", 0x05, L"ALERTERROR|LOGUSERCONNECT"},
        {L"LOGUSERCONNECT | LOGTRANSACTIONS", 0x0C, L"LOGTRANSACTIONS|LOGUSERCONNECT"},
        {L"NONE", 0, L"NONE"},
        {L"debugmode|alerterror", 0x7FFFFFFF, L"ALERTERROR|LOGERROR|LOGTRANSACTIONS|LOGUSERCONNECT"},
        {L"", 0, L"NONE"},
    };
    for (const auto& Row : kRows) {
        SCOPED_TRACE(Narrow(Row.Value));
        ASSERT_TRUE(Accepted(On.Put(Key, L"MESSAGELEVEL= " + std::wstring(Row.Value))));
        EXPECT_EQ(Long(L"MessageLevel"), Row.Stored);
        EXPECT_EQ(Narrow(Line(L"MESSAGELEVEL=")), Narrow(L"MESSAGELEVEL= " + std::wstring(Row.Shown)));
    }
    // What is shown of DEBUGMODE reads back as its four words.
    ASSERT_TRUE(Accepted(On.Put(Key, L"MESSAGELEVEL= DEBUGMODE")));
    ASSERT_TRUE(Accepted(On.Put(Key, On.Text(Key))));
    EXPECT_EQ(Long(L"MessageLevel"), 0x0F);
    ASSERT_TRUE(Accepted(On.Put(Key, L"MESSAGELEVEL= altro|LOGERROR|NONE", false)));
    EXPECT_EQ(Long(L"MessageLevel"), 2) << "lax mode passes over unknown words";
    ASSERT_TRUE(Accepted(On.Put(Key, L"MESSAGELEVEL= altro", false)));
    EXPECT_EQ(Long(L"MessageLevel"), 0) << "and replaces all the same";
}

TEST_F(WebServerParms, Refusals) {
    ExpectRefusals(On, Key, kSource,
                   {{L"FLAGS= altro", L"Valore sconosciuto per il parametro FLAGS=()", 1, false},
                    {L"FLAGS= NONE|DISABLEPERMISSIONCHECK",
                     L"Valore sconosciuto per il parametro FLAGS=(DISABLEPERMISSIONCHECK)", 1, false},
                    {L"FLAGS= \"NONE\"", L"Valore sconosciuto per il parametro FLAGS=()", 1, false},
                    {L"\r\nMESSAGELEVEL= altro|logerror",
                     L"Valore sconosciuto per il parametro MESSAGELEVEL=(LOGERROR)", 2, false},
                    {L"BROWSEROWS= 1\r\nBROWSEROWS= 1", L"Ripetizone del parametro BROWSEROWS=.", 2},
                    {L"FLAGS=\r\nFLAGS=", L"Ripetizone del parametro FLAGS=.", 2},
                    {L"LOGFILE=\r\nLOGFILE=", L"Ripetizone del parametro LOGFILE=.", 2},
                    {L"MESSAGELEVEL=\r\nMESSAGELEVEL=", L"Ripetizone del parametro MESSAGELEVEL=.", 2},
                    {L"QUERYTIMEOUT= 1\r\nQUERYTIMEOUT= 1", L"Ripetizone del parametro QUERYTIMEOUT=.", 2},
                    {L"browserows= 5", L"Parametro non riconosciuto: browserows=5", 1},
                    {L"MIRROROF= X", L"Parametro non riconosciuto: MIRROROF=X", 1}});
    EXPECT_TRUE(Refused(On.Put(Key, L"BROWSEROWS 5"), 20018, L"vDesignPar.GetFieldValue",
                        L"Errore di sintassi: BROWSEROWS 5.", 1));
}

TEST_F(WebServerParms, NumbersAreCheckedInStrictModeAtTheEnd) {
    ExpectRefusals(
        On, Key, kSource,
        {{L"BROWSEROWS= 0", L"BROWSEROWS= dev'essere un numero positivo.", 0, false},
         {L"BROWSEROWS= \"5\"", L"BROWSEROWS= dev'essere un numero positivo.", 0, false},
         {L"BROWSEROWS=\r\nQUERYTIMEOUT= -1", L"BROWSEROWS= dev'essere un numero positivo.", 0, false},
         {L"BROWSEROWS= 1\r\nQUERYTIMEOUT= -1", L"QUERYTIMEOUT= dev'essere >= 0.", 0, false},
         {L"BROWSEROWS= 0\r\nPIPPO= 1", L"Parametro non riconosciuto: PIPPO=1", 2}});
    ASSERT_TRUE(Accepted(On.Put(Key, L"BROWSEROWS= -7\r\nQUERYTIMEOUT= -8", false)));
    EXPECT_EQ(Long(L"BrowseRows"), -7);
    EXPECT_EQ(Long(L"QueryTimeout"), -8);
    // A text that leaves the number out is checked with the one that stays.
    EXPECT_TRUE(Refused(On.Put(Key, L"LOGFILE= x"), 20000, kSource,
                        L"BROWSEROWS= dev'essere un numero positivo.", 0));
    ASSERT_TRUE(Accepted(On.Put(Key, L"BROWSEROWS= 1\r\nQUERYTIMEOUT= 0")));
    EXPECT_TRUE(Refused(On.Put(Key, L"BROWSEROWS= 99999999999", false), 6, kSource, L"Overflow", 1));
}

// Names of tags and messages: one set of rules for both.

struct NamedCase {
    const wchar_t* Folder;
    const wchar_t* Parms;
    const wchar_t* Caption;
    const wchar_t* Holder;
    const wchar_t* Source;
    const wchar_t* First;
    const wchar_t* Second;
};
const NamedCase kNamed[] = {{L"CONSTANTS", L"CONSTANTPARMS", L"CONSTANTCAPTION", L"Constants",
                             L"diWebServer.SaveConstParm", L"TITOLO", L"PIEDE"},
                            {L"MESSAGE", L"MESSAGEPARMS", L"MESSAGECAPTION", L"Messages",
                             L"diWebServer.SaveMsgParm", L"ATTESA", L"ERRORE"}};

TEST_F(WebServer, NamesOfTagsAndMessages) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        const std::wstring Key = On.Leaf(Case.Parms, 2);
        std::wstring Text = L"NAME= \"nuovo\"\r\nDESC= \"Nome nuovo\"";
        std::wstring Made;
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, Made); })));
        EXPECT_EQ(Made, L"NUOVO");
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.First, L"NUOVO"}));
        RegObject Saved = Named(Case.Holder).at(1);
        EXPECT_EQ(Saved.Name, L"NUOVO");
        EXPECT_EQ(Saved.Desc, L"Nome nuovo");
        EXPECT_EQ(ListOf(Saved, L"Message").size(), 2U) << "its texts stay";
        EXPECT_EQ(LineOf(Key, L"NAME=") + LineOf(Key, L"DESC="), L"NAME= \"NUOVO\"DESC= \"Nome nuovo\"");
        ExpectFixpoint(On, Key);
        // What a text leaves out stays.
        ASSERT_TRUE(Accepted(On.Put(Key, L"DESC= altro")));
        EXPECT_EQ(Named(Case.Holder).at(1).Name, L"NUOVO");
        ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= ancora")));
        EXPECT_EQ(Named(Case.Holder).at(1).Desc, L"altro");
        ExpectRefusals(On, Key, Case.Source,
                       {{L"NAME=", L"Non è stato specificato il nome del messaggio.", 0, false},
                        {L"NAME= A\r\nNAME= A", L"Ripetizone del parametro NAME=.", 2},
                        {L"DESC= A\r\nDESC= A", L"Ripetizone del parametro DESC=.", 2},
                        {L"TEXT= A", L"Parametro non riconosciuto: TEXT=A", 1}});
        const std::wstring Taken = L"NAME= " + std::wstring(Case.First);
        EXPECT_TRUE(
            Refused(On.Put(Key, Taken), 20000, Case.Source, L"Il nome del messaggio non è univoco.", 0));
        ASSERT_TRUE(Accepted(On.Put(Key, Taken, false)));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.First, Case.First}));
        EXPECT_TRUE(
            Refused(On.Put(Key, L"DESC= x"), 20000, Case.Source, L"Il nome del messaggio non è univoco.", 0));
        ASSERT_TRUE(Accepted(On.Put(Key, L"NAME= \"\"", false)));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.First, L""}));
    }
    // A tag and a message may bear one name.
    ASSERT_TRUE(Accepted(On.Put(On.Leaf(L"CONSTANTPARMS", 2), L"NAME= UNO")));
    EXPECT_TRUE(Accepted(On.Put(On.Leaf(L"MESSAGEPARMS", 2), L"NAME= UNO")));
}

// The texts of tags and messages.

TEST_F(WebServer, TextsOfATag) {
    const std::wstring Key = On.Leaf(L"CONSTANTCAPTION");
    std::wstring Text = L"TEXT= \"Catalogo generale della biblioteca\"\r\nLANG= \"fra\"";
    std::wstring Made;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, Made); })));
    EXPECT_EQ(Made, L"Messaggio: [FRA] Catalogo generale de");
    EXPECT_EQ(On.Tree->NodeText(Key), Made) << "a save shows it as a message";
    EXPECT_EQ(CaptionsBelow(On, L"CONSTANTS").at(0), L"TITOLO") << "the tag keeps its name";
    RegObject Saved = ListOf(Named(L"Constants").at(0), L"Message").at(0);
    EXPECT_EQ(TextOf(Saved, L"Text"), L"Catalogo generale della biblioteca");
    EXPECT_EQ(TextOf(Saved, L"Language"), L"FRA");
    EXPECT_EQ(Saved.Id, 202);
    EXPECT_EQ(Saved.Name, L"Intestazione della pagina");
    ExpectFixpoint(On, Key);
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.LoadData(); })));
    EXPECT_EQ(On.Tree->NodeText(On.Leaf(L"CONSTANTCAPTION")), L"Tag: [FRA] Intestazione della p")
        << "and the tree as a tag";
}

TEST_F(WebServer, RefusalsOfATagsText) {
    const std::wstring Key = On.Leaf(L"CONSTANTCAPTION");
    ExpectRefusals(On, Key, L"diWebServer.ConstantSave",
                   {{L"TEXT= \"Senza lingua\"", L"Non è stato specificato un codice LANG valido.", 0, false},
                    {L"LANG= \"\"", L"Non è stato specificato un codice LANG valido.", 0, false},
                    {L"TEXT= A\r\nTEXT= A", L"Ripetizone del parametro TEXT=.", 2},
                    {L"LANG= A\r\nLANG= A", L"Ripetizone del parametro LANG=.", 2},
                    {L"NAME= A", L"Parametro non riconosciuto: NAME=A", 1}});
    EXPECT_EQ(On.Tree->NodeText(Key), L"Tag: [ITA] Intestazione della p");
    ASSERT_TRUE(Accepted(On.Put(Key, L"TEXT= \"Senza lingua\"", false)));
    EXPECT_EQ(LineOf(Key, L"LANG="), L"LANG= \"\"") << "what is left out goes";
    EXPECT_EQ(On.Tree->NodeText(Key), L"Messaggio: [] Senza lingua");
    ASSERT_TRUE(Accepted(On.Put(Key, L"LANG= ITA")));
    EXPECT_EQ(LineOf(Key, L"TEXT="), L"TEXT= \"\"");
}

TEST_F(WebServer, TheTextOfATagIsFilteredOnTheWayInAndOut) {
    const std::wstring Key = On.Leaf(L"CONSTANTCAPTION");
    ASSERT_TRUE(Accepted(On.Put(Key, L"TEXT= \"uno\x01\x7F\tdue\ntre\"\r\nLANG= ITA")));
    EXPECT_EQ(TextOf(ListOf(Named(L"Constants").at(0), L"Message").at(0), L"Text"), L"uno  \tdue tre");
    EXPECT_EQ(On.Tree->NodeText(Key), L"Messaggio: [ITA] uno  \tdue tre");
    ExpectFixpoint(On, Key);
    // One that was stored otherwise shows on one line, and is stored as shown once it is saved.
    Desk Odd(L"WEBSERVER",
             WithNamed(Desk::Named(L"PROVA"), L"Constants",
                       {WithList(Element(1, L"A"), L"Message", {TextIn(2, L"", L"ITA", L"uno\r\ndue")})}));
    const std::wstring Leaf = Odd.Leaf(L"CONSTANTCAPTION");
    EXPECT_EQ(Odd.Text(Leaf).find(L"TEXT= \"uno  due\"\r\n"), 0U);
    ExpectFixpoint(Odd, Leaf);
    EXPECT_EQ(TextOf(ListOf(ListOf(*SavedBy(Odd).Child(L"Constants"), L"Message").at(0), L"Message").at(0),
                     L"Text"),
              L"uno  due");
}

TEST_F(WebServer, TextsOfAMessage) {
    const std::wstring Key = On.Leaf(L"MESSAGECAPTION", 3);
    ASSERT_TRUE(Accepted(On.Put(Key, L"TEXT= \"Guasto\"\r\nLANG= deu")));
    EXPECT_EQ(On.Tree->NodeText(Key), L"Messaggio: [DEU] Guasto");
    const RegObject Saved = Named(L"Messages").at(1);
    EXPECT_EQ(TextOf(ListOf(Saved, L"Message").at(0), L"Text"), L"Guasto");
    EXPECT_TRUE(Refused(On.Put(Key, L"TEXT= x"), 20000, L"ParmEditor.SaveCaption",
                        L"Non è stato specificato un codice LANG valido."));
    ExpectFixpoint(On, Key);
}

TEST_F(WebServer, PagesShowOnTheirNodes) {
    for (std::size_t I = 0; I < std::size(kTemplates); ++I) {
        const std::wstring Folder(kTemplates[I]);
        SCOPED_TRACE(Narrow(Folder));
        ASSERT_TRUE(
            Accepted(On.Put(Node(Folder, 2), L"FILENAME= \"Nuova.htm\"\r\nLANG= spa\r\nACTION= MENU")));
        EXPECT_EQ(CaptionsBelow(On, Folder).at(1), L"File: [SPA] Nuova.htm");
        const RegObject& Saved = ListOf(SavedBy(On), kLists[I]).at(1);
        EXPECT_EQ(TextOf(Saved, L"FileName"), L"Nuova.htm");
        EXPECT_EQ(LongOf(Saved, L"Action"), 1);
        EXPECT_TRUE(Refused(On.Put(Node(Folder, 2), L"FILENAME= \"x\""), 20000, L"ParmEditor.SaveHtml",
                            L"Non è stato specificato un codice LANG valido."));
    }
}

// Adding, moving, deleting.

TEST_F(WebServer, NewPages) {
    for (std::size_t I = 0; I < std::size(kTemplates); ++I) {
        const std::wstring Folder(kTemplates[I]);
        SCOPED_TRACE(Narrow(Folder));
        std::wstring Made;
        // The last of the folder, also where a page is selected.
        ASSERT_TRUE(Accepted(AddAt(On, Node(Folder, 1), Made)));
        EXPECT_EQ(Made.find(Folder + L" "), 0U);
        EXPECT_EQ(KeysBelow(On, Folder).back(), Made);
        EXPECT_EQ(CaptionsBelow(On, Folder).back(), L"File: [] ");
        ASSERT_EQ(ListOf(SavedBy(On), kLists[I]).size(), 3U);
        EXPECT_NE(ListOf(On.Object->Read(), kLists[I]).at(2).Id, 0);
    }
    ExpectSameTree();
}

TEST_F(WebServer, NewTagsAndMessages) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Case.Folder, Made)));
        ASSERT_TRUE(Accepted(AddAt(On, Node(Case.Folder, 1), Made)));
        EXPECT_EQ(Made.find(std::wstring(Case.Folder) + L"-"), 0U);
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.First, Case.Second, L"?????", L"?????"}));
        EXPECT_EQ(KeysBelow(On, Case.Folder).back(), Made);
        const std::vector<RegObject> Saved = Named(Case.Holder);
        ASSERT_EQ(Saved.size(), 4U);
        EXPECT_EQ(Saved[3].Id, 0) << "none until it has a name";
        ASSERT_EQ(ListOf(Saved[3], L"Message").size(), 1U) << "with one text";
        EXPECT_NE(ListOf(Saved[3], L"Message")[0].Id, 0);
        EXPECT_EQ(KeysBelow(On, Texts(Case.Folder, 4)).size(), 1U);
        EXPECT_TRUE(Refused(On.Put(On.Leaf(Case.Parms, 4), L"NAME= \"?????\""), 20000, Case.Source,
                            L"Il nome del messaggio non è univoco."));
    }
    EXPECT_EQ(CaptionsBelow(On, Texts(L"CONSTANTS", 4)), Words{L"Tag: [] "});
    EXPECT_EQ(CaptionsBelow(On, Texts(L"MESSAGE", 4)), Words{L"Messaggio: [] "});
    ExpectSameTree();
}

TEST_F(WebServer, NewTexts) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        const std::wstring Folder = Texts(Case.Folder, 2);
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
        EXPECT_EQ(Made.find(Folder + L" "), 0U) << Narrow(Made);
        EXPECT_EQ(KeyBelow(On, Folder, 3), Made);
        ASSERT_TRUE(Accepted(On.Put(Made, L"TEXT= \"x\"\r\nLANG= ita")));
        const RegObject Saved = Named(Case.Holder).at(1);
        ASSERT_EQ(ListOf(Saved, L"Message").size(), 3U) << "in the list of the element above";
        EXPECT_EQ(TextOf(ListOf(Saved, L"Message").at(2), L"Text"), L"x");
        EXPECT_NE(ListOf(Saved, L"Message").at(2).Id, 0);
    }
}

TEST_F(WebServer, SectionsWithoutAList) {
    std::wstring Made;
    for (const wchar_t* const Section : {L"PARMS", L"CONSTANTPARMS", L"MESSAGEPARMS"}) {
        SCOPED_TRACE(Narrow(Section));
        const std::wstring Folder = On.Tree->NodeParent(On.Leaf(Section));
        const int Beeps = On.Platform.Beeps;
        ASSERT_TRUE(Accepted(AddAt(On, On.Leaf(Section), Made)));
        EXPECT_EQ(Made.find(std::wstring(Section) + L" "), 0U);
        EXPECT_EQ(KeyBelow(On, Folder, 2), Made);
        EXPECT_EQ(On.Tree->NodeText(Made), L"");
        EXPECT_EQ(On.Platform.Beeps, Beeps + 1);
        EXPECT_EQ(On.Text(Made), On.Text(KeyBelow(On, Folder, 1)));
    }
    const std::wstring Before = On.Picture();
    On.Tree->MarkModified(false);
    for (const wchar_t* const Section : {L"PARMS", L"CONSTANTPARMS", L"MESSAGEPARMS"}) {
        EXPECT_TRUE(Accepted(MoveAt(On, On.Leaf(Section), 1, Made)));
        EXPECT_TRUE(Accepted(DeleteAt(On, On.Leaf(Section))));
        EXPECT_TRUE(Accepted(DeleteAt(On, On.Leaf(Section), true)));
    }
    EXPECT_TRUE(
        Accepted(On.Try([&] { return On.Core.EditData({.CurrItem = L"ROOT", .Key = L"ALTRO"}, Made); })));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

TEST_F(WebServer, PagesMove) {
    for (std::size_t I = 0; I < std::size(kTemplates); ++I) {
        const std::wstring Folder(kTemplates[I]);
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        std::wstring Made;
        On.Tree->MarkModified(false);
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Node(Folder, 1), 1, Made)));
        EXPECT_FALSE(On.Tree->Modified());
        ASSERT_TRUE(Accepted(MoveAt(On, Node(Folder, 2), 1, Made)));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(Made, Node(Folder, 1));
        EXPECT_EQ(CaptionsBelow(On, Folder), (Words{Captions[1], Captions[0]}));
        const auto First = static_cast<std::int32_t>(10 * I + 11);
        EXPECT_EQ(IdsOf(ListOf(SavedBy(On), kLists[I])), (Numbers{First + 1, First}));
        ASSERT_TRUE(Accepted(MoveAt(On, Made, 0, Made)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Captions);
        EXPECT_TRUE(Accepted(MoveAt(On, Folder, 1, Made))) << "a folder stays";
    }
    ExpectSameTree();
}

TEST_F(WebServer, TagsAndMessagesMove) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        std::wstring Made;
        ASSERT_TRUE(Accepted(MoveAt(On, Node(Case.Folder, 1), -1, Made)));
        EXPECT_EQ(Made, Node(Case.Folder, 2));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.Second, Case.First}));
        EXPECT_EQ(Named(Case.Holder).at(0).Name, Case.Second);
        EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, -1, Made)));
        EXPECT_TRUE(Accepted(MoveAt(On, Case.Folder, 1, Made))) << "a folder stays";
        EXPECT_TRUE(Accepted(MoveAt(On, Texts(Case.Folder, 1), 1, Made)));
    }
    ExpectSameTree();
}

TEST_F(WebServer, TextsMoveAndTakeTheCaptionThatLoadingGives) {
    const std::wstring Tag = Texts(L"CONSTANTS", 1);
    ASSERT_TRUE(Accepted(On.Put(KeyBelow(On, Tag, 1), L"TEXT= \"Voce\"\r\nLANG= ITA")));
    EXPECT_EQ(CaptionsBelow(On, Tag), (Words{L"Messaggio: [ITA] Voce", L"Tag: [ENG] "}));
    std::wstring Made;
    ASSERT_TRUE(Accepted(MoveAt(On, KeyBelow(On, Tag, 1), -1, Made)));
    EXPECT_EQ(Made, KeyBelow(On, Tag, 2));
    EXPECT_EQ(Made.find(Tag + L" "), 0U);
    EXPECT_EQ(CaptionsBelow(On, Tag), (Words{L"Tag: [ENG] ", L"Tag: [ITA] Intestazione della p"}));
    EXPECT_TRUE(RefusedSilently(MoveAt(On, Made, -1, Made)));
    const std::wstring Message = Texts(L"MESSAGE", 2);
    ASSERT_TRUE(Accepted(MoveAt(On, KeyBelow(On, Message, 2), 1, Made)));
    EXPECT_EQ(CaptionsBelow(On, Message), (Words{L"Messaggio: [ENG] Error", L"Messaggio: [ITA] Errore"}));
    EXPECT_EQ(IdsOf(ListOf(Named(L"Constants").at(0), L"Message")), (Numbers{203, 202}));
    EXPECT_EQ(IdsOf(ListOf(Named(L"Messages").at(1), L"Message")), (Numbers{306, 305}));
    ExpectSameTree();
}

TEST_F(WebServer, PagesAreDeleted) {
    for (std::size_t I = 0; I < std::size(kTemplates); ++I) {
        const std::wstring Folder(kTemplates[I]);
        SCOPED_TRACE(Narrow(Folder));
        const Words Captions = CaptionsBelow(On, Folder);
        On.Tree->MarkModified(false);
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Folder, 1))));
        EXPECT_TRUE(On.Tree->Modified());
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Captions[1]});
        EXPECT_EQ(IdsOf(ListOf(SavedBy(On), kLists[I])), Numbers{static_cast<std::int32_t>(10 * I + 12)});
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
        EXPECT_TRUE(ListOf(SavedBy(On), kLists[I]).empty());
    }
    ExpectSameTree();
}

TEST_F(WebServer, AGroupOfTagsOrMessagesLosesOneOnly) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        std::wstring Made;
        ASSERT_TRUE(Accepted(AddAt(On, Case.Folder, Made)));
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Case.Folder, 2), true)));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), (Words{Case.First, L"?????"}));
        ASSERT_TRUE(Accepted(DeleteAt(On, Node(Case.Folder, 2), false)));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), Words{Case.First});
        EXPECT_EQ(Named(Case.Holder).size(), 1U);
        // With the folder selected there is no element to act on.
        for (const bool Group : {true, false})
            EXPECT_TRUE(Refused(DeleteAt(On, Case.Folder, Group), 9, L"diWebServer.DeleteData",
                                L"Indice non compreso nell'intervallo"));
        EXPECT_EQ(CaptionsBelow(On, Case.Folder), Words{Case.First});
    }
    ExpectSameTree();
}

TEST_F(WebServer, TextsAreDeleted) {
    for (const NamedCase& Case : kNamed) {
        SCOPED_TRACE(Narrow(Case.Folder));
        const std::wstring Folder = Texts(Case.Folder, 1);
        const Words Captions = CaptionsBelow(On, Folder);
        ASSERT_TRUE(Accepted(DeleteAt(On, KeyBelow(On, Folder, 1))));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{Captions[1]});
        EXPECT_EQ(ListOf(Named(Case.Holder).at(0), L"Message").size(), 1U);
        EXPECT_EQ(ListOf(Named(Case.Holder).at(1), L"Message").size(), 2U);
        ASSERT_TRUE(Accepted(DeleteAt(On, Folder, true)));
        EXPECT_EQ(CaptionsBelow(On, Folder), Words{});
        EXPECT_EQ(CaptionsBelow(On, Case.Folder).size(), 2U) << "the elements themselves stay";
    }
    ExpectSameTree();
}

TEST_F(WebServer, ComesBackFromTheStore) {
    const RegObject Saved = SavedBy(On);
    Desk Again(L"WEBSERVER", Saved);
    EXPECT_TRUE(SavedBy(Again) == Saved);
    EXPECT_EQ(Again.Exported(), On.Exported());
    EXPECT_EQ(Again.Picture(), On.Picture());
    std::wstring Word;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = L"ROOT"}, false, Word); })));
    EXPECT_EQ(Word, L"WEBSERVER");
    EXPECT_TRUE(
        Accepted(On.Try([&] { return On.Core.PasteData({.CurrItem = L"ROOT"}, std::nullopt, Word); })));
    EXPECT_EQ(On.Picture(), Again.Picture());
}

TEST_F(WebServer, ToolsAndPropertiesDoNothing) {
    const std::wstring Before = On.Picture();
    for (const wchar_t* const Tool : {L"FINDTAG", L"RENUMTAG", L"MAPTABLE", L"CONSTANTS"})
        On.Core.TlbrButtonClick(Tool, {.CurrItem = L"ROOT"});
    EXPECT_TRUE(On.Platform.Shown.empty());
    EXPECT_TRUE(On.Platform.FileQuestions.empty());
    EXPECT_EQ(On.Picture(), Before);
    diWebServer Item;
    std::wstring Name = L"x";
    std::wstring Desc = L"x";
    std::wstring Id;
    std::int16_t Version = 9;
    ASSERT_FALSE(Item.GetObjectInfo(Name, Desc, Version, Id)) << "an item that has loaded nothing";
    EXPECT_EQ(Name + Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
}

}  // namespace
}  // namespace kv::test
