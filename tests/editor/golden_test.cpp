// The text of each section as an operator sees it, and what is peculiar to one section.
#include <gtest/gtest.h>

#include <memory>

#include "items/services/diRepository.h"
#include "tests/editor/Sections.h"
#include "tests/frame/Told.h"
#include "window/TreeModel.h"

namespace kv::test {
namespace {

class GoldenText : public FrameTest {
  protected:
    template <class Record>
    static void Identify(Record& Into) {
        Into.Id = 17;
        Into.Name = L"Soggetti";
        Into.Version = 3;
    }
    template <class S>
    static std::string Shown(const typename S::Record& From) {
        std::wstring Buffer;
        EXPECT_TRUE(Succeeds(S::Disp(From, Buffer)));
        return Narrow(Buffer);
    }
};

TEST_F(GoldenText, Catalogue) {
    CatalogueRecord Record;
    Identify(Record);
    EXPECT_EQ(Shown<CatalogueSection>(Record),
              Narrow(Lines({L"RETRIEVAL= \"\"", L"TABLE= \"\"", L"PROFILE= \"\"", L"QUERY= \"\"",
                            L"BROWSE= \"\"", L"PATH= \"\"", L"HELP= \"\"", L"HELPWWW= \"\"", L"FLAGS= NONE",
                            L"MIRROROF= \"\"", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    std::wstring Text = Lines({L"mirrorof= x"});
    EXPECT_TRUE(CatalogueSection::Save(Record, Text, false));
    CoreUtil::Instance().ForgetError();
    Text = Lines({L"MIRROROF= \"Altro Catalogo\"", L"PATH= \"D:\\Cataloghi\\Città\"", L"RETRIEVAL= base",
                  L"TABLE= libri", L"PROFILE= \"scheda\"", L"QUERY= ricerca", L"BROWSE= elenco",
                  L"HELP= aiuto", L"HELPWWW= aiutoweb", L"FLAGS= NONE"});
    ASSERT_TRUE(Succeeds(CatalogueSection::Save(Record, Text, true)));
    EXPECT_EQ(Shown<CatalogueSection>(Record),
              Narrow(Lines({L"RETRIEVAL= \"BASE\"", L"TABLE= \"LIBRI\"", L"PROFILE= \"SCHEDA\"",
                            L"QUERY= \"RICERCA\"", L"BROWSE= \"ELENCO\"", L"PATH= \"D:\\Cataloghi\\Città\"",
                            L"HELP= \"AIUTO\"", L"HELPWWW= \"AIUTOWEB\"", L"FLAGS= NONE",
                            L"MIRROROF= \"Altro Catalogo\"", L"'[ID= 17]", L"'[NAME= Soggetti]",
                            L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, Filter) {
    FilterRecord Record;
    Identify(Record);
    EXPECT_EQ(Shown<FilterSection>(Record),
              Narrow(Lines({L"TABLE= \"\"", L"EXPRESSION= \"\"", L"AUTOMATIC= FALSE", L"MERGEWITH= AND",
                            L"HELP= \"\"", L"FLAGS= NONE", L"MIRROROF= \"\"", L"'[ID= 17]",
                            L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    std::wstring Text = Lines({L"TABLE= autori", L"EXPRESSION= \"nome=\"Dante\"\"", L"AUTOMATIC= vero",
                               L"MERGEWITH= or", L"HELP= h", L"FLAGS=", L"MIRROROF= Altro"});
    ASSERT_TRUE(Succeeds(FilterSection::Save(Record, Text, true)));
    EXPECT_EQ(Record.Expression, L"nome=\"Dante\"") << "inner quotes stay";
    EXPECT_EQ(Shown<FilterSection>(Record),
              Narrow(Lines({L"TABLE= \"AUTORI\"", L"EXPRESSION= \"nome=\"Dante\"\"", L"AUTOMATIC= TRUE",
                            L"MERGEWITH= OR", L"HELP= \"H\"", L"FLAGS= NONE", L"MIRROROF= \"Altro\"",
                            L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, Import) {
    ImportRecord Record;
    Identify(Record);
    EXPECT_EQ(Shown<ImportSection>(Record),
              Narrow(Lines({L"PROCEDURE= \"\"", L"RETRIEVAL= \"\"", L"SOURCEPATH= \"\"", L"TARGETPATH= \"\"",
                            L"LOGFILE= \"\"", L"PROCTYPE= NONE", L"FLAGS= NONE", L"LOCKED= FALSE",
                            L"MIRROROF= \"\"", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    std::wstring Text = Lines({L"PROCEDURE= carico", L"RETRIEVAL= base", L"SOURCEPATH= \"C:\\In\\*.dat\"",
                               L"TARGETPATH= FTP:utente,Chiave@host/dir;c:\\tmp", L"LOGFILE= C:\\log.txt",
                               L"PROCTYPE= refresh | nodbr", L"FLAGS= cabfiles|zipfiles", L"LOCKED= TRUE"});
    ASSERT_TRUE(Succeeds(ImportSection::Save(Record, Text, true)));
    EXPECT_EQ(Record.TargetPath, L"FTP:utente,Chiave@host/dir;c:\\tmp") << "a template begins free text";
    EXPECT_EQ(
        Shown<ImportSection>(Record),
        Narrow(Lines({L"PROCEDURE= \"CARICO\"", L"RETRIEVAL= \"BASE\"", L"SOURCEPATH= \"C:\\In\\*.dat\"",
                      L"TARGETPATH= \"FTP:utente,Chiave@host/dir;c:\\tmp\"", L"LOGFILE= \"C:\\log.txt\"",
                      L"PROCTYPE= NODBR|REFRESH", L"FLAGS= ZIPFILES|CABFILES", L"LOCKED= TRUE",
                      L"MIRROROF= \"\"", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, OfferedTemplatesAreTakenAsTheyStand) {
    for (const std::wstring Form :
         {L"FILE:<target>[;<ziptmppath>]", L"FTP:[user,pwd@]<target>[;<ziptmppath>]",
          L"HTTP:[pwd@]<target>[;<ziptmppath>]"}) {
        ImportRecord Record;
        std::wstring Text = L"TARGETPATH= " + Form;
        ASSERT_TRUE(Succeeds(ImportSection::Save(Record, Text, true)));
        EXPECT_EQ(Record.TargetPath, Form);
    }
}

TEST_F(GoldenText, Repository) {
    RepositoryRecord Record;
    Identify(Record);
    std::wstring Buffer;
    ASSERT_TRUE(Succeeds(Record.DispParm(Buffer, 2)));
    EXPECT_EQ(Narrow(Buffer),
              Narrow(Lines({L"\t\tPATH= \"\"", L"\t\tURL= \"\"", L"\t\tTABLE= \"\"", L"\t\tKEYFIELD= \"\"",
                            L"\t\tTEMPPATH= \"\"", L"\t\tREADONLY= FALSE", L"\t\tFLAGS= NONE",
                            L"\t\tMIRROROF= \"\"", L"\t\t'[ID= 17]", L"\t\t'[NAME= Soggetti]",
                            L"\t\t'[VERSION= 3]"})));
}

TEST_F(GoldenText, TextsPagesFontsAndButtons) {
    ParmItem Text;
    Identify(Text);
    Text.Text = L"Ricerca \"libera\"";
    Text.Language = L"ITA";
    const std::string Expected = Narrow(Lines({L"TEXT= \"Ricerca \"libera\"\"", L"LANG= \"ITA\"",
                                               L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"}));
    EXPECT_EQ(Shown<CaptionSection>(Text), Expected);
    EXPECT_EQ(Shown<TitleSection>(Text), Expected);

    HtmlRecord Page;
    Identify(Page);
    EXPECT_EQ(Shown<HtmlSection>(Page),
              Narrow(Lines({L"FILENAME= \"\"", L"LANG= \"\"", L"ACTION= NONE", L"'[ID= 17]",
                            L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    FontRecord Font;
    Identify(Font);
    Font.Size = 12;
    Font.Italic = true;
    EXPECT_EQ(Shown<FontSection>(Font),
              Narrow(Lines({L"NAME= \"Soggetti\"", L"SIZE= 12", L"BOLD= FALSE", L"ITALIC= TRUE",
                            L"UNDERLINE= FALSE", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    CommandRecord Button;
    Identify(Button);
    Button.Code = L"?????";
    Button.Action = 41;
    EXPECT_EQ(Shown<CommandSection>(Button),
              Narrow(Lines({L"CODE= \"?????\"", L"ACTION= QUERYGET", L"ENABLED= TRUE", L"VISIBLE= TRUE",
                            L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    PopupRecord Popup;
    Identify(Popup);
    EXPECT_EQ(Shown<PopupSection>(Popup),
              Narrow(Lines({L"TEXT= \"\"", L"LANG= \"\"", L"CODE= \"\"", L"ACTION= NONE", L"'[ID= 17]",
                            L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    std::wstring Entry =
        Lines({L"ACTION= back", L"CODE= indietro", L"LANG= ita", L"TEXT= \"Torna \"qui\"\""});
    ASSERT_TRUE(Succeeds(PopupSection::Save(Popup, Entry, true)));
    EXPECT_EQ(Shown<PopupSection>(Popup),
              Narrow(Lines({L"TEXT= \"Torna \"qui\"\"", L"LANG= \"ITA\"", L"CODE= \"INDIETRO\"",
                            L"ACTION= BACK", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, Application) {
    ApplicationRecord Record;
    Identify(Record);
    EXPECT_EQ(Shown<ApplicationSection>(Record),
              Narrow(Lines({L"RETRIEVAL= \"\"",      L"LANG= \"\"",
                            L"HELP= \"\"",           L"HELPWWW= \"\"",
                            L"STARTACTION= NONE",    L"STARTOBJECT= \"\"",
                            L"STARTUPMODE= DEFAULT", L"ALLOWSHUTDOWN= FALSE",
                            L"IDLEACTION= NONE",     L"IDLETIME= 0",
                            L"PASSWORD= \"\"",       L"MSIEFLAGS= NONE",
                            L"REMOTEDB= FALSE",      L"LOANENABLE= NOTENABLED",
                            L"LOANPATH= \"\"",       L"FORMAT= TEXT",
                            L"PRINTERFLAGS= NONE",   L"PRNMAXITEMS= NONE",
                            L"PRNMAXRECS= NONE",     L"FILEFLAGS= NONE",
                            L"FILEMAXITEMS= NONE",   L"FILEMAXRECS= NONE",
                            L"OUTPUTUSERLOG= FALSE", L"LOGFILE= \"\"",
                            L"MIRROROF= \"\"",       L"'[ID= 17]",
                            L"'[NAME= Soggetti]",    L"'[VERSION= 3]"})));
    std::wstring Text = Lines({L"MIRROROF= \"Sala A\"",
                               L"LOGFILE= \"C:\\Log\\sala.txt\"",
                               L"OUTPUTUSERLOG= vero",
                               L"FILEMAXRECS= 0",
                               L"FILEMAXITEMS= none",
                               L"FILEFLAGS= ownask | noown",
                               L"PRNMAXRECS= 50",
                               L"PRNMAXITEMS= 5",
                               L"PRINTERFLAGS= printerbutton|fontbutton",
                               L"FORMAT= rtf",
                               L"LOANPATH= \"D:\\Prestiti\"",
                               L"LOANENABLE= restartable|notenabled|startup",
                               L"REMOTEDB= TRUE",
                               L"MSIEFLAGS= enablenewwindow",
                               L"PASSWORD= \"Chiave\"",
                               L"IDLETIME= 300",
                               L"IDLEACTION= savescreen",
                               L"ALLOWSHUTDOWN= true",
                               L"STARTUPMODE= default|noresize|maximized",
                               L"STARTOBJECT= principale",
                               L"STARTACTION= menu",
                               L"HELPWWW= aiutoweb",
                               L"HELP= aiuto",
                               L"LANG= ita",
                               L"RETRIEVAL= biblio"});
    ASSERT_TRUE(Succeeds(ApplicationSection::Save(Record, Text, true)));
    EXPECT_EQ(Shown<ApplicationSection>(Record), Narrow(Lines({L"RETRIEVAL= \"BIBLIO\"",
                                                               L"LANG= \"ITA\"",
                                                               L"HELP= \"AIUTO\"",
                                                               L"HELPWWW= \"AIUTOWEB\"",
                                                               L"STARTACTION= MENU",
                                                               L"STARTOBJECT= \"PRINCIPALE\"",
                                                               L"STARTUPMODE= MAXIMIZED|NORESIZE",
                                                               L"ALLOWSHUTDOWN= TRUE",
                                                               L"IDLEACTION= SAVESCREEN",
                                                               L"IDLETIME= 300",
                                                               L"PASSWORD= \"Chiave\"",
                                                               L"MSIEFLAGS= ENABLENEWWINDOW",
                                                               L"REMOTEDB= TRUE",
                                                               L"LOANENABLE= NOTENABLED|STARTUP|RESTARTABLE",
                                                               L"LOANPATH= \"D:\\Prestiti\"",
                                                               L"FORMAT= RTF",
                                                               L"PRINTERFLAGS= FONTBUTTON|PRINTERBUTTON",
                                                               L"PRNMAXITEMS= 5",
                                                               L"PRNMAXRECS= 50",
                                                               L"FILEFLAGS= NOOWN|OWNASK",
                                                               L"FILEMAXITEMS= NONE",
                                                               L"FILEMAXRECS= 0",
                                                               L"OUTPUTUSERLOG= TRUE",
                                                               L"LOGFILE= \"C:\\Log\\sala.txt\"",
                                                               L"MIRROROF= \"Sala A\"",
                                                               L"'[ID= 17]",
                                                               L"'[NAME= Soggetti]",
                                                               L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, Browse) {
    BrowseRecord Record;
    Identify(Record);
    Record.Commands.Add({}).Code = L"CERCA";
    EXPECT_EQ(
        Shown<BrowseSection>(Record),
        Narrow(Lines(
            {L"TABLE= \"\"",        L"PROFILE= \"\"",     L"HELP= \"\"",           L"HELPWWW= \"\"",
             L"STEM= \"\"",         L"TIPS= \"\"",        L"TIPSWIDTH= 0",         L"ROWS= 0",
             L"ICONS= NONE",        L"ACTION= NONE",      L"USECOOKED= FALSE",     L"OPENRECORD= FALSE",
             L"REFERENCE= JUMP",    L"AUTORUN= FALSE",    L"MULTISEL= FALSE",      L"TIPSALIGN= NONE",
             L"TIPSBUTTONS= NONE",  L"TOOLTIPS= NONE",    L"BOOLOPS= NONE",        L"LARGEBUTT= FALSE",
             L"SHOWOCCS= FALSE",    L"STEMAUTO= FALSE",   L"FLAGS= NONE",          L"NOPOPUP= FALSE",
             L"STEMALIGN= NONE",    L"STEMDOCKED= FALSE", L"STEMIMMEDIATE= FALSE", L"STEMSIZABLE= FALSE",
             L"TIPSSIZABLE= FALSE", L"TOOLALIGN= NONE",   L"MIRROROF= \"\"",       L"'[ID= 17]",
             L"'[NAME= Soggetti]",  L"'[VERSION= 3]"})));
    std::wstring Text = Lines({L"MIRROROF= \"Altro Elenco\"",
                               L"TOOLALIGN= top",
                               L"TIPSSIZABLE= vero",
                               L"STEMSIZABLE= TRUE",
                               L"STEMIMMEDIATE= true",
                               L"STEMDOCKED= TRUE",
                               L"STEMALIGN= bottom",
                               L"NOPOPUP= TRUE",
                               L"FLAGS= none",
                               L"STEMAUTO= TRUE",
                               L"SHOWOCCS= TRUE",
                               L"LARGEBUTT= TRUE",
                               L"BOOLOPS= or",
                               L"TOOLTIPS= link | check",
                               L"TIPSBUTTONS= home|back",
                               L"TIPSALIGN= \"right\"",
                               L"MULTISEL= TRUE",
                               L"AUTORUN= TRUE",
                               L"REFERENCE= immediate",
                               L"OPENRECORD= TRUE",
                               L"USECOOKED= TRUE",
                               L"ACTION= imagetag",
                               L"ICONS= arrow",
                               L"ROWS= 20",
                               L"TIPSWIDTH= 30",
                               L"TIPS= suggerimenti",
                               L"STEM= parole",
                               L"HELPWWW= aiutoweb",
                               L"HELP= \"aiuto\"",
                               L"PROFILE= scheda",
                               L"TABLE= libri"});
    ASSERT_TRUE(Succeeds(BrowseSection::Save(Record, Text, true)));
    EXPECT_EQ(Record.Commands.Count(), 1) << "its lists stay";
    EXPECT_EQ(Shown<BrowseSection>(Record), Narrow(Lines({L"TABLE= \"LIBRI\"",
                                                          L"PROFILE= \"SCHEDA\"",
                                                          L"HELP= \"AIUTO\"",
                                                          L"HELPWWW= \"AIUTOWEB\"",
                                                          L"STEM= \"PAROLE\"",
                                                          L"TIPS= \"SUGGERIMENTI\"",
                                                          L"TIPSWIDTH= 30",
                                                          L"ROWS= 20",
                                                          L"ICONS= ARROW",
                                                          L"ACTION= IMAGETAG",
                                                          L"USECOOKED= TRUE",
                                                          L"OPENRECORD= TRUE",
                                                          L"REFERENCE= IMMEDIATE",
                                                          L"AUTORUN= TRUE",
                                                          L"MULTISEL= TRUE",
                                                          L"TIPSALIGN= RIGHT",
                                                          L"TIPSBUTTONS= BACK|HOME",
                                                          L"TOOLTIPS= CHECK|LINK",
                                                          L"BOOLOPS= OR",
                                                          L"LARGEBUTT= TRUE",
                                                          L"SHOWOCCS= TRUE",
                                                          L"STEMAUTO= TRUE",
                                                          L"FLAGS= NONE",
                                                          L"NOPOPUP= TRUE",
                                                          L"STEMALIGN= BOTTOM",
                                                          L"STEMDOCKED= TRUE",
                                                          L"STEMIMMEDIATE= TRUE",
                                                          L"STEMSIZABLE= TRUE",
                                                          L"TIPSSIZABLE= TRUE",
                                                          L"TOOLALIGN= TOP",
                                                          L"MIRROROF= \"Altro Elenco\"",
                                                          L"'[ID= 17]",
                                                          L"'[NAME= Soggetti]",
                                                          L"'[VERSION= 3]"})));
}

TEST_F(GoldenText, AFilterOfABrowse) {
    FilterRecord Record;
    std::wstring Text = Lines({L"MERGEWITH= or", L"EXPRESSION= \"anno>1900\"", L"NAME= \"Novecento\""});
    ASSERT_TRUE(Succeeds(BrowseFilterSection::Save(Record, Text, true)));
    EXPECT_EQ(Shown<BrowseFilterSection>(Record),
              Narrow(Lines({L"NAME= \"NOVECENTO\"", L"TABLE= \"\"", L"EXPRESSION= \"anno>1900\"",
                            L"AUTOMATIC= FALSE", L"MERGEWITH= OR", L"HELP= \"\"", L"FLAGS= NONE",
                            L"MIRROROF= \"\"", L"'[ID= 0]", L"'[NAME= NOVECENTO]", L"'[VERSION= 0]"})));
}

TEST_F(GoldenText, FontsAndMessagesOfAnApplication) {
    FontRecord Font;
    Identify(Font);
    Font.Size = 10;
    Font.Bold = true;
    const std::string Expected =
        Narrow(Lines({L"NAME= \"Soggetti\"", L"SIZE= 10", L"BOLD= TRUE", L"ITALIC= FALSE",
                      L"UNDERLINE= FALSE", L"'[ID= 17]", L"'[NAME= Soggetti]", L"'[VERSION= 3]"}));
    EXPECT_EQ(Shown<FormFontSection>(Font), Expected);
    EXPECT_EQ(Shown<MessageFontSection>(Font), Expected);
    EXPECT_EQ(Shown<TitleFontSection>(Font), Expected);

    MessageRecord Message;
    Identify(Message);
    Message.Desc = L"Fine della \"sessione\"";
    EXPECT_EQ(Shown<MessageSection>(Message),
              Narrow(Lines({L"NAME= \"Soggetti\"", L"DESC= \"Fine della \"sessione\"\"", L"'[ID= 17]",
                            L"'[NAME= Soggetti]", L"'[VERSION= 3]"})));
    ParmItem Text;
    Identify(Text);
    Text.Text = L"Arrivederci";
    Text.Language = L"ITA";
    EXPECT_EQ(Shown<MessageTextSection>(Text),
              Narrow(Lines({L"TEXT= \"Arrivederci\"", L"LANG= \"ITA\"", L"'[ID= 17]", L"'[NAME= Soggetti]",
                            L"'[VERSION= 3]"})));
}

// ---- what is peculiar to one section

TEST_F(GoldenText, AMessageNeedsANameOfItsOwnInStrictMode) {
    ParmList<MessageRecord> Messages;
    for (const wchar_t* Name : {L"ADDIO", L"BENVENUTO"}) Messages.Add({}).Name = Name;
    Messages.Item(2).Message.Add({}).Text = L"Benvenuto";
    const auto Save = [&](std::int32_t Index, std::wstring Text, bool Strict) {
        return ParmEditor::SaveMessage(Messages, Index, Text, FlagsFor(Strict));
    };
    EXPECT_TRUE(FailsWith(Save(2, L"NAME= \"\"\r\nDESC= x", true),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveMessage",
                           .Description = L"Non è stato specificato il nome del messaggio."}));
    EXPECT_TRUE(FailsWith(Save(2, L"NAME= addio\r\nDESC= x", true),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveMessage",
                           .Description = L"Il nome del messaggio non è univoco."}));
    EXPECT_EQ(Messages.Item(2).Name, L"BENVENUTO");
    EXPECT_EQ(Messages.Item(2).Desc, L"");
    EXPECT_TRUE(Succeeds(Save(2, L"NAME= benvenuto", true))) << "its own place is left out";
    EXPECT_TRUE(Succeeds(Save(2, L"DESC= \"Saluto\"", true))) << "a name left out is kept";
    EXPECT_EQ(Messages.Item(2).Name, L"BENVENUTO");
    EXPECT_EQ(Messages.Item(2).Desc, L"Saluto");
    EXPECT_TRUE(Succeeds(Save(2, L"NAME= addio", false)));
    EXPECT_EQ(Messages.Item(2).Name, L"ADDIO");
    EXPECT_TRUE(Succeeds(Save(1, L"NAME=", false)));
    EXPECT_EQ(Messages.Item(1).Name, L"");
    EXPECT_EQ(Messages.Item(2).Message.Count(), 1) << "the texts stay";
    EXPECT_TRUE(Save(3, L"NAME= x", true)) << "there is no third";
    EXPECT_EQ(CoreUtil::Instance().LastError().Number, 9);
    EXPECT_EQ(CoreUtil::Instance().LastError().Source, L"ParmEditor.SaveMessage");
    CoreUtil::Instance().ForgetError();
}

TEST_F(GoldenText, ACeilingBeyondItsRangeIsOverflow) {
    ApplicationRecord Record;
    std::wstring Text = L"PRNMAXRECS= 2147483648";
    for (const bool Strict : {true, false})
        EXPECT_TRUE(FailsWith(
            ApplicationSection::Save(Record, Text, Strict),
            {.Number = 6, .Source = L"ParmEditor.SaveApplication", .Description = L"Overflow", .Line = 1}));
    EXPECT_EQ(Record.PrnMaxRecs, -1);
}

TEST_F(GoldenText, AnEmptyLanguageIsRefusedInStrictModeAtTheEndOfTheText) {
    const Told Refused{.Number = 20000,
                       .Source = L"ParmEditor.SaveCaption",
                       .Description = L"Non è stato specificato un codice LANG valido."};
    for (const std::wstring_view Given :
         {L"", L"TEXT= x", L"TEXT= x\r\nLANG=", L"LANG= \"\"\r\nTEXT= x", L"LANG= \"\r\n"}) {
        ParmItem Item;
        Item.Text = L"prima";
        Item.Language = L"ENG";
        std::wstring Text(Given);
        EXPECT_TRUE(FailsWith(CaptionSection::Save(Item, Text, true), Refused)) << Narrow(Text);
        EXPECT_EQ(Item.Text, L"prima");
        EXPECT_EQ(Item.Language, L"ENG");
        ASSERT_TRUE(Succeeds(CaptionSection::Save(Item, Text, false))) << Narrow(Text);
        EXPECT_EQ(Item.Language, L"");
    }
    ParmItem Item;
    std::wstring Text = L"TEXT= x";
    EXPECT_TRUE(FailsWith(TitleSection::Save(Item, Text, true),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveTitle",
                           .Description = L"Non è stato specificato un codice LANG valido."}));
    HtmlRecord Page;
    EXPECT_TRUE(FailsWith(HtmlSection::Save(Page, Text = L"FILENAME= x", true),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveHtml",
                           .Description = L"Non è stato specificato un codice LANG valido."}));
    PopupRecord Popup;
    EXPECT_TRUE(FailsWith(PopupSection::Save(Popup, Text = L"TEXT= x", true),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SavePopup",
                           .Description = L"Non è stato specificato un codice LANG valido."}));
}

TEST_F(GoldenText, AFontsSizeBeyondItsRangeIsOverflow) {
    FontRecord Font;
    Font.Size = 9;
    std::wstring Text = L"'x\r\nSIZE= 2147483648";
    for (const bool Strict : {true, false}) {
        EXPECT_TRUE(FailsWith(
            FontSection::Save(Font, Text, Strict),
            {.Number = 6, .Source = L"ParmEditor.SaveFont", .Description = L"Overflow", .Line = 2}));
        EXPECT_EQ(Font.Size, 9);
    }
}

TEST_F(GoldenText, AButtonsToolTipsStayWhenItsTextIsSaved) {
    CommandRecord Button;
    Button.ToolTips.Add({}).Text = L"Cerca";
    std::wstring Text = L"CODE= cerca";
    ASSERT_TRUE(Succeeds(CommandSection::Save(Button, Text, true)));
    EXPECT_EQ(Button.Code, L"CERCA");
    ASSERT_EQ(Button.ToolTips.Count(), 1);
    EXPECT_EQ(Button.ToolTips.Item(1).Text, L"Cerca");
}

TEST_F(GoldenText, AFlagListWithoutTheSwitchIsLax) {
    ImportRecord Record;
    std::wstring Text = L"FLAGS= PIPPO";
    SaveFlags Flags;
    EXPECT_TRUE(Succeeds(ParmEditor::SaveImport(Record, Text, Flags)));
    Flags.Add(L"True", L"ALTRO");
    EXPECT_TRUE(Succeeds(ParmEditor::SaveImport(Record, Text, Flags)));
    Flags.Add(L"True", L"SYNTAXON");
    EXPECT_TRUE(FailsWith(ParmEditor::SaveImport(Record, Text, Flags),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveImport",
                           .Description = L"Valore sconosciuto per il parametro FLAGS=()",
                           .Line = 1}));
}

TEST_F(GoldenText, BitsWithoutAWordAreNotShown) {
    ImportRecord Record;
    Record.Flags = 0x7FFFFFFC;
    Record.ProcType = 0x101;
    FilterRecord Filter;
    Filter.MergeWith = 99;
    std::wstring Text;
    ASSERT_FALSE(ImportSection::Disp(Record, Text));
    EXPECT_NE(Text.find(L"FLAGS= NONE\r\n"), std::wstring::npos);
    EXPECT_NE(Text.find(L"PROCTYPE= NODBR\r\n"), std::wstring::npos);
    ASSERT_FALSE(FilterSection::Disp(Filter, Text));
    EXPECT_NE(Text.find(L"MERGEWITH= AND\r\n"), std::wstring::npos) << "a word that can be read back";
}

TEST_F(GoldenText, TheCaptionOfASavedTextComesBack) {
    ParmItem Item;
    std::wstring Caption = L"prima";
    std::wstring Text = L"TEXT= \"Un testo di più di venti caratteri\"\r\nLANG= ita";
    ASSERT_TRUE(Succeeds(CaptionSave(Text, Item, Caption, FlagsFor(true))));
    EXPECT_EQ(Narrow(Caption), Narrow(L"Etichetta: [ITA] Un testo di più di v"));
    Text = L"PIPPO= 1";
    EXPECT_TRUE(FailsWith(CaptionSave(Text, Item, Caption, FlagsFor(true)),
                          {.Number = 20000,
                           .Source = L"ParmEditor.SaveCaption",
                           .Description = L"Parametro non riconosciuto: PIPPO=1",
                           .Line = 1}));
    EXPECT_EQ(Narrow(Caption), Narrow(L"Etichetta: [ITA] Un testo di più di v"));
}

TEST_F(GoldenText, ARepositoryKeepsItsRecordWhenATextIsRefused) {
    RegObject Content;
    Content.Id = 17;
    Content.Name = L"DIGITALE";
    Content.Version = 3;
    Content.SetValue(L"Path", std::wstring(L"C:\\Prima"));
    Content.SetValue(L"ReadOnly", true);
    MemoryRegData Object(L"REPOSITORY", Content);
    diRepository Item;
    auto Tree = std::make_shared<window::TreeModel>();
    Item.DesignTree() = Tree;
    ASSERT_TRUE(Succeeds(Item.LoadData(Object)));
    const Head At{.CurrFolder = L"PARMS", .CurrItem = L"PARMS", .Key = L"PARMS"};
    const auto Text = [&] {
        std::wstring Buffer;
        EXPECT_FALSE(Item.DispData(At, Buffer, false, {}, 0));
        return Buffer;
    };
    const std::wstring Before = Text();
    const struct {
        std::wstring_view Text;
        Told Expected;
    } kRows[] = {
        {L"PATH= C:\\Dopo\r\nPIPPO= 1",
         {20000, L"RepositoryRecord.SaveParm", L"Parametro non riconosciuto: PIPPO=1", 2}},
        {L"PATH= C:\\Dopo\r\nPATH= x",
         {20000, L"RepositoryRecord.SaveParm", L"Ripetizone del parametro PATH=.", 2, L"65536"}},
        {L"READONLY=\r\nx", {20018, L"vDesignPar.GetFieldValue", L"Errore di sintassi: x.", 2}},
        {L"PATH= y\r\nREADONLY= boh",
         {20000, L"RepositoryRecord.SaveParm", L"Valore sconosciuto per il parametro READONLY=(BOH)", 2}},
    };
    std::wstring NewItemKey;
    for (const auto& Row : kRows) {
        std::wstring Buffer(Row.Text);
        EXPECT_TRUE(FailsWith(Item.SaveData(At, NewItemKey, Buffer, nullptr), Row.Expected));
        EXPECT_EQ(Narrow(Text()), Narrow(Before));
    }
    std::wstring Buffer = L"URL= http://esempio";
    EXPECT_TRUE(Succeeds(Item.SaveData(At, NewItemKey, Buffer, nullptr)));
    const std::wstring After = Text();
    EXPECT_NE(After.find(L"PATH= \"C:\\Prima\"\r\n"), std::wstring::npos)
        << "what is left out keeps its value";
    EXPECT_NE(After.find(L"READONLY= TRUE\r\n"), std::wstring::npos);
    EXPECT_NE(After.find(L"URL= \"http://esempio\"\r\n"), std::wstring::npos);
    EXPECT_FALSE(Object.Written()) << "nothing reaches the stored object before the save";
    EXPECT_TRUE(Succeeds(Item.Save(Object)));
    EXPECT_EQ(std::get<std::wstring>(*Object.Read().Value(L"Url")), L"http://esempio");
}

// The text of a repository that is exported through the record of an import leaves its other parameters
// alone.
TEST_F(GoldenText, ACatalogueReadThroughAnImportLeavesTheImportsOwnPropertiesToTheirDefaults) {
    ImportRecord Record;
    std::wstring Text = L"RETRIEVAL= base\r\nPATH= C:\\Dati";
    ASSERT_TRUE(Succeeds(CatalogueOfImportSection::Save(Record, Text, true)));
    EXPECT_EQ(Record.Retrieval, L"BASE");
    EXPECT_EQ(Record.Path, L"C:\\Dati");
    EXPECT_EQ(Record.Procedure, L"");
    EXPECT_FALSE(Record.Locked);
}

}  // namespace
}  // namespace kv::test
