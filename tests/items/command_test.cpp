// The tool command: parameters with the keyboard words, and its lists of titles, messages and label fonts.
#include <algorithm>

#include "items/services/diCommand.h"
#include "tests/items/Form.h"
#include "tests/items/RefusingTree.h"

namespace kv::test {
namespace {

RegObject FullCommand() {
    const auto Said = [](std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
        return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
    };
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"Code", RegText(L"CERCA")},
                                                  {L"Action", 5},
                                                  {L"Enabled", false},
                                                  {L"KbEnabled", true},
                                                  {L"KbCode", 10},
                                                  {L"KbShift", 6},
                                                  {L"Style", 1},
                                                  {L"Help", RegText(L"AIUTO")},
                                                  {L"MirrorOf", RegText(L"Altro Comando")}});
    Made = WithList(std::move(Made), L"Titles",
                    {Said(11, L"ITA", L"Ricerca avanzata nel catalogo"), Said(12, L"ENG", L"Search")});
    Made =
        WithList(std::move(Made), L"Messages",
                 {Said(21, L"ITA", L"La ricerca non ha trovato nulla"), Said(22, L"ENG", L"Nothing found")});
    return WithList(std::move(Made), L"TitleFonts",
                    {Element(31, L"Sans", {{L"Size", 10}, {L"Bold", true}}),
                     Element(32, L"Serif", {{L"Size", 12}, {L"Italic", true}})});
}

constexpr std::wstring_view kOfferedKeys =
    L" {BACK} {CENTER} {DEL} {DOWN} {END} {ENTER} {ESC} {F1} {F2} {F3} {F4} {F5} {F6} {F7} {F8} {F9} {F10} "
    L"{F11} {F12} {HOME} {INS} {LEFT} {NUMLOCK} {PAUSE} {PGDOWN} {PGUP} {RIGHT} {TAB} {UP}\n";

constexpr std::wstring_view kSource = L"ParmEditor.SaveToolCommand";

class Command : public FormTest {
  protected:
    Command() : FormTest(L"COMMAND", FullCommand()) {}

    std::wstring Offered(std::wstring_view Keyword) const {
        for (const window::ValueWords& Row : On.Tree->Choices()) {
            if (Row.Keyword != Keyword) continue;
            std::wstring All;
            for (const std::wstring& Each : Row.Words) All.append(L" ").append(Each);
            return All;
        }
        return {};
    }
};

// The tree.

TEST_F(Command, EmptyTreeAndChoices) {
    Desk Empty(L"COMMAND");
    ASSERT_TRUE(Accepted(Empty.Opened));
    EXPECT_EQ(Narrow(Empty.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                              L"  PARMS \"Parametri\" 12,11\n"
                                              L"    PARMS # \"Parametri\" 9,9\n"
                                              L"  TITLES \"Etichette\" 12,11 RG\n"
                                              L"  MESSAGE \"Messaggi\" 12,11 RG\n"
                                              L"  TITLEFONTS \"Font per le etichette\" 12,11 RG\n"));
    std::wstring Expected = L"PARMS COMMAND=";
    Expected.append(kOfferedActions).append(L"\n");
    Expected.append(L"PARMS ENABLED= FALSE TRUE\nPARMS KBENABLED= FALSE TRUE\nPARMS VISIBLE= FALSE TRUE\n");
    Expected.append(L"PARMS KBCODE=").append(kOfferedKeys);
    Expected.append(L"PARMS KBSHIFT= ALT CTRL SHIFT ALT+CTRL ALT+SHIFT CTRL+SHIFT\n");
    Expected.append(L"PARMS STYLE= DEFAULT CHECK PLACEHOLDER SEPARATOR\n");
    EXPECT_EQ(Narrow(Empty.Offered()), Narrow(Expected));
}

TEST_F(Command, FullTree) {
    ASSERT_TRUE(Accepted(On.Opened));
    EXPECT_EQ(Narrow(On.Picture()), Narrow(L"ROOT \"PROVA\" 12,11\n"
                                           L"  PARMS \"Parametri\" 12,11\n"
                                           L"    PARMS # \"Parametri\" 9,9\n"
                                           L"  TITLES \"Etichette\" 12,11 RG\n"
                                           L"    TITLES # \"Titolo: [ITA] Ricerca avanzata nel\" 9,9\n"
                                           L"    TITLES # \"Titolo: [ENG] Search\" 9,9\n"
                                           L"  MESSAGE \"Messaggi\" 12,11 RG\n"
                                           L"    MESSAGE # \"Messaggio: [ITA] La ricerca non ha tr\" 9,9\n"
                                           L"    MESSAGE # \"Messaggio: [ENG] Nothing found\" 9,9\n"
                                           L"  TITLEFONTS \"Font per le etichette\" 12,11 RG\n"
                                           L"    TITLEFONTS # \"Font: Sans, 10\" 9,9\n"
                                           L"    TITLEFONTS # \"Font: Serif, 12\" 9,9\n"));
    EXPECT_EQ(On.Platform.Beeps, 0);
}

// The parameters, keyword by keyword: tests/editor.

TEST_F(Command, ParameterTexts) {
    Desk Empty(L"COMMAND");
    EXPECT_TRUE(MatchesGolden("section/COMMAND.empty.txt", Empty.Text(Empty.Leaf(L"PARMS"))));
    ExpectFixpoint(Empty, Empty.Leaf(L"PARMS"));
    EXPECT_TRUE(MatchesGolden("section/COMMAND.full.txt", On.Text(Parms())));
    ExpectFixpoint(On, Parms());
}

TEST_F(Command, EveryKeywordIsStored) {
    for (const bool Strict : {true, false}) {
        ASSERT_TRUE(Accepted(
            On.Put(Parms(),
                   Lines({L"CODE= \"stampa\"", L"COMMAND= shell", L"ENABLED= vero", L"KBENABLED= falso",
                          L"VISIBLE= FALSE", L"KBCODE= {pgdown}", L"KBSHIFT= alt+shift", L"STYLE= separator",
                          L"HELP= \"guida\"", L"MIRROROF= \"Un Altro\""}),
                   Strict)));
        const RegObject& Now = SavedBy(On);
        EXPECT_EQ(TextOf(Now, L"Code"), L"STAMPA");
        EXPECT_EQ(LongOf(Now, L"Action"), 10);
        EXPECT_TRUE(BoolOf(Now, L"Enabled"));
        EXPECT_FALSE(BoolOf(Now, L"KbEnabled"));
        EXPECT_FALSE(BoolOf(Now, L"Visible"));
        EXPECT_EQ(LongOf(Now, L"KbCode"), 25);
        EXPECT_EQ(LongOf(Now, L"KbShift"), 5);
        EXPECT_EQ(LongOf(Now, L"Style"), 3);
        EXPECT_EQ(TextOf(Now, L"Help"), L"GUIDA");
        EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"Un Altro");
    }
}

TEST_F(Command, EveryOfferedWordIsTakenAndAnyOtherRefusedInStrictMode) {
    for (const window::ValueWords& Row : On.Tree->Choices()) {
        for (const std::wstring& Choice : Row.Words) {
            for (const bool Strict : {true, false}) {
                ASSERT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" " + Choice, Strict)));
                EXPECT_EQ(Narrow(LineOf(Row.Keyword)), Narrow(Row.Keyword + L" " + Choice));
            }
        }
        ExpectRefusals(On, Parms(), kSource,
                       {{L"CODE= x\r\n" + Row.Keyword + L" forse",
                         L"Valore sconosciuto per il parametro " + Row.Keyword + L"(FORSE)", 2, false}});
        EXPECT_TRUE(Accepted(On.Put(Parms(), Row.Keyword + L" forse", false)));
    }
    // Words of the actions that are not offered are taken all the same.
    for (const wchar_t* Name : {L"NONE", L"IMAGETAG"}) {
        EXPECT_EQ(Offered(L"COMMAND=").find(std::wstring(L" ") + Name + L" "), std::wstring::npos);
        ASSERT_TRUE(Accepted(On.Put(Parms(), std::wstring(L"COMMAND= ") + Name)));
        EXPECT_EQ(LineOf(L"COMMAND="), std::wstring(L"COMMAND= ") + Name);
    }
}

TEST_F(Command, NoKeyIsAnEmptyWord) {
    for (const wchar_t* Text : {L"CODE= x", L"KBCODE=\r\nKBSHIFT=", L"KBCODE= \"\"\r\nKBSHIFT= \"\""}) {
        ASSERT_TRUE(Accepted(On.Put(Parms(), L"KBCODE= {F3}\r\nKBSHIFT= CTRL")));
        ASSERT_TRUE(Accepted(On.Put(Parms(), Text)));
        EXPECT_EQ(Stored(L"KbCode"), 0);
        EXPECT_EQ(Stored(L"KbShift"), 0);
        EXPECT_EQ(LineOf(L"KBCODE="), L"KBCODE= ");
        EXPECT_EQ(LineOf(L"KBSHIFT="), L"KBSHIFT= ");
    }
    ExpectRefusals(
        On, Parms(), kSource,
        {{L"KBCODE= {F13}", L"Valore sconosciuto per il parametro KBCODE=({F13})", 1, false},
         {L"KBCODE= F3", L"Valore sconosciuto per il parametro KBCODE=(F3)", 1, false},
         {L"KBCODE= NONE", L"Valore sconosciuto per il parametro KBCODE=(NONE)", 1, false},
         {L"KBSHIFT= CTRL+ALT", L"Valore sconosciuto per il parametro KBSHIFT=(CTRL+ALT)", 1, false},
         {L"KBSHIFT= ALT|CTRL", L"Valore sconosciuto per il parametro KBSHIFT=(ALT|CTRL)", 1, false}});
}

TEST_F(Command, WhatATextLeavesOutReturnsToItsDefault) {
    ASSERT_TRUE(Accepted(On.Put(Parms(), L"'niente")));
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(Now, L"Code"), L"");
    EXPECT_EQ(LongOf(Now, L"Action"), -1);
    for (const wchar_t* Property : {L"Enabled", L"KbEnabled", L"Visible"}) EXPECT_TRUE(BoolOf(Now, Property));
    for (const wchar_t* Property : {L"KbCode", L"KbShift", L"Style"}) EXPECT_EQ(LongOf(Now, Property), 0);
    EXPECT_EQ(TextOf(Now, L"Help"), L"");
    EXPECT_EQ(TextOf(Now, L"MirrorOf"), L"");
    for (const wchar_t* List : {L"Titles", L"Messages", L"TitleFonts"})
        EXPECT_EQ(ListOf(Now, List).size(), 2U) << Narrow(List);
    ExpectRefusals(On, Parms(), kSource,
                   {{L"CODE= x\r\nCODE= x", L"Ripetizone del parametro CODE=.", 2},
                    {L"ACTION= MENU", L"Parametro non riconosciuto: ACTION=MENU", 1},
                    {L"HELP= x\r\ncode= x", L"Parametro non riconosciuto: code=x", 2}});
    EXPECT_TRUE(Refused(On.Put(Parms(), L"CODE= x\r\nsenza segno"), 20018, L"vDesignPar.GetFieldValue",
                        L"Errore di sintassi: senza segno.", 2));
    EXPECT_EQ(TextOf(SavedBy(On), L"Code"), L"");
}

// The elements.

TEST_F(Command, ElementTexts) {
    for (const wchar_t* Section : {L"TITLES", L"MESSAGE", L"TITLEFONTS"}) {
        const std::wstring Key = Node(Section, 1);
        EXPECT_TRUE(MatchesGolden("section/COMMAND." + Narrow(Section) + ".txt", On.Text(Key)));
        ExpectFixpoint(On, Key);
        ExpectFixpoint(On, Node(Section, 2));
        EXPECT_EQ(On.Text(Section), L"");
    }
}

TEST_F(Command, SavedElementsShowInTheirNodes) {
    const struct {
        std::wstring_view Section;
        std::wstring_view Text;
        std::wstring_view Caption;
        std::wstring_view List;
        std::wstring_view Stays;  // of the element beside it
    } kRows[] = {
        {L"TITLES", L"TEXT= Chercher\r\nLANG= fra", L"Titolo: [FRA] Chercher", L"Titles",
         L"Titolo: [ITA] Ricerca avanzata nel"},
        {L"MESSAGE", L"TEXT= Rien\r\nLANG= fra", L"Messaggio: [FRA] Rien", L"Messages",
         L"Messaggio: [ITA] La ricerca non ha tr"},
        {L"TITLEFONTS", L"NAME= \"Mono\"\r\nSIZE= 8\r\nUNDERLINE= TRUE", L"Font: Mono, 8", L"TitleFonts",
         L"Font: Sans, 10"},
    };
    for (const auto& Row : kRows) {
        const std::wstring Key = Node(Row.Section, 2);
        std::wstring NewKey;
        std::wstring Text(Row.Text);
        ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.SaveData({.CurrItem = Key}, Text, NewKey); })));
        EXPECT_EQ(NewKey, Row.Caption);
        EXPECT_EQ(On.Tree->NodeText(Key), Row.Caption);
        EXPECT_EQ(On.Tree->NodeText(Node(Row.Section, 1)), Row.Stays);
    }
    const RegObject& Now = SavedBy(On);
    EXPECT_EQ(TextOf(ListOf(Now, L"Titles")[1], L"Text"), L"Chercher");
    EXPECT_EQ(TextOf(ListOf(Now, L"Messages")[1], L"Text"), L"Rien");
    EXPECT_EQ(ListOf(Now, L"TitleFonts")[1].Name, L"Mono");
    EXPECT_EQ(LongOf(ListOf(Now, L"TitleFonts")[1], L"Size"), 8);
    EXPECT_FALSE(BoolOf(ListOf(Now, L"TitleFonts")[1], L"Italic")) << "what the text leaves out";
    ExpectSameTree();
}

TEST_F(Command, RefusalsOfTheElements) {
    const struct {
        std::wstring_view Section;
        std::wstring_view Parser;
        bool Speaks;
    } kRows[] = {{L"TITLES", L"ParmEditor.SaveTitle", true},
                 {L"MESSAGE", L"ParmEditor.SaveCaption", true},
                 {L"TITLEFONTS", L"ParmEditor.SaveFont", false}};
    const std::wstring Before = On.Picture();
    for (const auto& Row : kRows) {
        const std::wstring Key = Node(Row.Section, 1);
        ExpectRefusals(On, Key, Row.Parser, {{L"CODE= x", L"Parametro non riconosciuto: CODE=x", 1}});
        if (Row.Speaks) {
            EXPECT_TRUE(Refused(On.Put(Key, L"TEXT= x"), 20000, Row.Parser,
                                L"Non è stato specificato un codice LANG valido."));
        } else {
            ExpectRefusals(
                On, Key, Row.Parser,
                {{L"SIZE= 9\r\nBOLD= forse", L"Valore sconosciuto per il parametro BOLD=(FORSE)", 2, false}});
        }
    }
    EXPECT_EQ(On.Picture(), Before);
}

TEST_F(Command, ATextGoesIntoNoElementOfAnotherList) {
    const std::wstring Before = On.Picture();
    const std::wstring Message = On.Leaf(L"MESSAGE");
    const std::wstring Title = On.Text(On.Leaf(L"TITLES"));
    for (const window::Selection& At :
         {window::Selection{.CurrItem = Message, .Key = L"TITLES"},
          window::Selection{.CurrItem = L"ROOT", .CurrFolder = L"TITLES", .Key = L"TITLES"},
          window::Selection{.CurrItem = Message, .CurrFolder = L"TITLES", .Key = L"TITLES"}}) {
        std::wstring Text = L"TEXT= \"Altro\"\r\nLANG= \"ITA\"\r\n";
        std::wstring Made;
        EXPECT_TRUE(Refused(On.Try([&] { return On.Core.SaveData(At, Text, Made); }), 9,
                            L"diCommand.SaveData", L"Indice non compreso nell'intervallo"));
    }
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_EQ(On.Text(On.Leaf(L"TITLES")), Title);
}

TEST_F(Command, ListsGrowMoveAndShrink) {
    ExpectListLife(L"TITLES", L"Titles", L"Titolo: [] ", true, true);
    ExpectListLife(L"MESSAGE", L"Messages", L"Messaggio: [] ", true, true);
    ExpectListLife(L"TITLEFONTS", L"TitleFonts", L"Font: , 0", true, true);
}

TEST_F(Command, NewElementsHaveIdsOfTheirOwn) {
    Numbers Fresh;
    for (const auto& [Folder, List] : {std::pair<std::wstring, std::wstring_view>{L"TITLES", L"Titles"},
                                       {L"MESSAGE", L"Messages"},
                                       {L"TITLEFONTS", L"TitleFonts"}}) {
        for (const std::size_t Nth : {2U, 3U}) {
            std::wstring Made;
            ASSERT_TRUE(Accepted(AddAt(On, Folder, Made)));
            const std::int32_t Id = Ids(List).at(Nth);
            EXPECT_NE(Id, 0) << Narrow(Folder);
            EXPECT_EQ(std::count(Fresh.begin(), Fresh.end(), Id), 0) << Narrow(Folder);
            Fresh.push_back(Id);
        }
    }
    EXPECT_EQ(On.Platform.Beeps, 0);
}

TEST_F(Command, AFurtherLeafHasTheSectionWordForACaption) {
    std::wstring Made;
    ASSERT_TRUE(Accepted(AddAt(On, Parms(), Made)));
    EXPECT_EQ(Made, Node(L"PARMS", 2));
    EXPECT_EQ(On.Tree->NodeText(Made), L"PARMS");
    EXPECT_EQ(On.Text(Made), On.Text(Parms()));
    EXPECT_EQ(On.Platform.Beeps, 0);
    const std::wstring Before = On.Picture();
    EXPECT_TRUE(
        Refused(On.Try([&] { return On.Core.EditData({.CurrItem = Parms(), .Key = L"ALTRO"}, Made); }), 91,
                L"diCommand.SetNode", L"Oggetto non impostato"));
    EXPECT_EQ(On.Picture(), Before);
    On.Tree->MarkModified(false);
    for (const bool Group : {false, true}) EXPECT_TRUE(Accepted(DeleteAt(On, Parms(), Group)));
    EXPECT_TRUE(Accepted(MoveAt(On, Parms(), 1, Made)));
    EXPECT_EQ(On.Picture(), Before);
    EXPECT_FALSE(On.Tree->Modified());
}

// Failures of its procedures.

TEST(CommandItem, ANodeThatCannotBeMadeStopsTheLoadAndTheNewElement) {
    const TestPlatform Platform;
    auto Tree = std::make_shared<RefusingTree>();
    diCommand Item;
    Item.DesignTree() = Tree;
    MemoryRegData Object(L"COMMAND", FullCommand());
    for (const wchar_t* Word : {L"TITLES ", L"MESSAGE ", L"TITLEFONTS "}) {
        Tree->Refused = Word;
        EXPECT_TRUE(Item.LoadData(Object)) << Narrow(Word);
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCommand.SetNode");
        EXPECT_TRUE(Tree->Choices().empty()) << "the value words come last";
        CoreUtil::Instance().ForgetError();
    }
    Tree->Refused.clear();
    ASSERT_FALSE(Item.LoadData(Object));
    for (const std::wstring Word : {L"TITLES", L"MESSAGE", L"TITLEFONTS"}) {
        Tree->Refused = Word + L" ";
        std::wstring Made;
        EXPECT_TRUE(Item.EditData({.CurrFolder = Word, .CurrItem = Word, .Key = Word}, Made));
        EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"diCommand.SetNode");
        CoreUtil::Instance().ForgetError();
        EXPECT_EQ(Tree->CountBelow(Word), 2);
    }
    MemoryRegData Copy(L"COMMAND");
    ASSERT_FALSE(Item.Save(Copy));
    for (const wchar_t* List : {L"Titles", L"Messages", L"TitleFonts"})
        EXPECT_EQ(ListOf(Copy.Read(), List).size(), 2U) << "the new element is gone again";
}

TEST(CommandItem, WithoutATreeOrAnObjectItFailsUnderItsOwnName) {
    const TestPlatform Platform;
    diCommand Item;
    MemoryRegData Object(L"COMMAND", FullCommand());
    Head At{.Key = L"TITLES"};
    std::wstring Text, Key;
    ClipItem Nothing;
    const auto Told = [](bool Failed) {
        EXPECT_TRUE(Failed);
        EXPECT_EQ(CoreUtil::Instance().LastError().Number, 91);
        std::wstring Source = CoreUtil::Instance().LastError().Source;
        CoreUtil::Instance().ForgetError();
        return Source;
    };
    EXPECT_EQ(Told(Item.LoadData(Object)), L"diCommand.LoadData");
    EXPECT_EQ(Told(Item.ExportData(Object, Text)), L"diCommand.DispData");
    EXPECT_EQ(Told(Item.SaveData(At, Key, Text, nullptr)), L"diCommand.SaveData");
    EXPECT_EQ(Told(Item.DispData(At, Text, false, {}, 0)), L"diCommand.DispData");
    EXPECT_EQ(Told(Item.CopyData(At, false, Nothing)), L"diCommand.CopyData");
    std::wstring Name, Desc, Id;
    std::int16_t Version = -1;
    diCommand Empty;
    ASSERT_FALSE(Empty.GetObjectInfo(Name, Desc, Version, Id));
    EXPECT_EQ(Name + Desc, L"");
    EXPECT_EQ(Version, 0);
    EXPECT_EQ(Id, L"0");
}

// The whole.

TEST_F(Command, Export) {
    const std::wstring Text = On.Exported();
    EXPECT_TRUE(MatchesGolden("export/COMMAND.txt", Text));
    EXPECT_EQ(Text.find(L'\t'), std::wstring::npos) << "block lines stand in the first column";
    std::wstring Blocks;
    for (std::size_t At = 0; At < Text.size();) {
        const std::size_t End = Text.find(L"\r\n", At);
        const std::wstring Line = Text.substr(At, End - At);
        if (Line.starts_with(L"BEGIN ") || Line.starts_with(L"END ")) Blocks.append(Line).append(L"\n");
        At = End + 2;
    }
    EXPECT_EQ(Narrow(Blocks), Narrow(L"BEGIN COMMAND\n"
                                     L"BEGIN PARMS\nEND PARMS\n"
                                     L"BEGIN TITLES\nEND TITLES\nBEGIN TITLES\nEND TITLES\n"
                                     L"BEGIN MESSAGE\nEND MESSAGE\nBEGIN MESSAGE\nEND MESSAGE\n"
                                     L"BEGIN TITLEFONTS\nEND TITLEFONTS\nBEGIN TITLEFONTS\nEND TITLEFONTS\n"
                                     L"END COMMAND\n"));
    Desk Empty(L"COMMAND");
    const std::wstring Parms = Empty.Text(Empty.Leaf(L"PARMS"));
    EXPECT_EQ(Narrow(Empty.Exported()),
              Narrow(L"BEGIN COMMAND\r\nBEGIN PARMS\r\n" + Parms + L"END PARMS\r\nEND COMMAND\r\n"));
}

TEST_F(Command, NoIndentAnywhere) {
    diCommand Item;
    Item.DesignTree() = std::make_shared<window::TreeModel>();
    MemoryRegData Object(L"COMMAND", On.Object->Read());
    ASSERT_FALSE(Item.LoadData(Object));
    const std::int32_t Second = 2;
    for (const std::int32_t Indent : {0, 1, 3}) {
        for (const std::wstring Key : {L"PARMS", L"TITLES", L"MESSAGE", L"TITLEFONTS", L"ALTRO"}) {
            std::wstring Buffer;
            EXPECT_FALSE(Item.DispData({.Index = 1, .Key = Key}, Buffer, true, {&Second, 1}, Indent));
            EXPECT_TRUE(Buffer.starts_with(L"BEGIN " + Key + L"\r\n"));
            EXPECT_TRUE(Buffer.ends_with(L"END " + Key + L"\r\n"));
            EXPECT_EQ(Buffer.find(L'\t'), std::wstring::npos);
        }
    }
}

TEST_F(Command, SaveAndReload) {
    const RegObject& Saved = SavedBy(On);
    Desk Again(L"COMMAND", Saved);
    EXPECT_EQ(SavedBy(Again), Saved);
    EXPECT_EQ(Again.Text(Again.Leaf(L"PARMS")), On.Text(Parms()));
    EXPECT_EQ(Again.Picture(), On.Picture());
}

TEST_F(Command, CopyAndPasteIntoAnotherObject) {
    std::wstring Copied;
    ASSERT_TRUE(Accepted(On.Try([&] { return On.Core.CopyData({.CurrItem = Parms()}, false, Copied); })));
    EXPECT_EQ(Copied, L"COMMAND");
    RegObject Other = Desk::Named(L"ALTRO");
    Other.Id = 8;
    Desk Into(L"COMMAND", Other);
    Into.Clipboard = On.Clipboard;
    std::wstring NewKey;
    ASSERT_TRUE(Accepted(Into.Try(
        [&] { return Into.Core.PasteData({.CurrItem = Into.Leaf(L"PARMS")}, std::nullopt, NewKey); })));
    EXPECT_EQ(CaptionsBelow(Into, L"TITLES"), CaptionsBelow(On, L"TITLES"));
    EXPECT_EQ(CaptionsBelow(Into, L"TITLEFONTS"), CaptionsBelow(On, L"TITLEFONTS"));
    EXPECT_TRUE(Into.Text(Into.Leaf(L"PARMS")).starts_with(L"CODE= \"CERCA\"\r\nCOMMAND= QUERY\r\n"));
}

TEST_F(Command, OtherOperations) { ExpectNothingDone({L"", L"ALTRO", L"parms", L"COMMAND", L"MESSAGES"}); }

}  // namespace
}  // namespace kv::test
