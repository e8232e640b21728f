#include <cstdint>
#include <utility>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

// The buttons and popups that several forms have.

const DemoTexts kSearch{{L"ITA", L"Avvia la ricerca"}, {L"ENG", L"Start the search"}};
const DemoTexts kToMenu{{L"ITA", L"Torna al menu"}, {L"ENG", L"Back to the menu"}};
const DemoTexts kHelpTip{{L"ITA", L"Come si usa questa pagina"}, {L"ENG", L"How to use this page"}};

const DemoButton kSearchButton{L"CERCA", L"QUERY", kSearch};
const DemoButton kMenuButton{L"MENU", L"MENU", kToMenu};
const DemoButton kHelpButton{L"AIUTO", L"HELP", kHelpTip};
const DemoButton kBackButton{
    L"INDIETRO", L"BACK", {{L"ITA", L"Pagina precedente"}, {L"ENG", L"Previous page"}}};

const std::vector<DemoPopup> kFormPopups{
    {L"Aiuto", L"ITA", L"AIUTO", L"HELP"},
    {L"Help", L"ENG", L"AIUTO", L"HELP"},
    {L"Torna al menu", L"ITA", L"MENU", L"MENU"},
    {L"Back to the menu", L"ENG", L"MENU", L"MENU"},
};

// Queries.

struct Value {
    std::wstring_view Name;
    std::wstring_view Desc;
    DemoTexts Labels;
};

struct SearchField {
    std::wstring_view Name;
    std::wstring_view Index;
    DemoTexts Labels;
    std::wstring_view StopWord{};
    bool Words = false;
    std::wstring_view Flags = L"NONE";
    std::vector<Value> Values{};
    std::int32_t Selected = 0;  // place among the values
};

struct QueryRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    DemoTexts Titles;
    DemoTexts Message;
    std::vector<DemoButton> Buttons;
    std::vector<SearchField> Fields;
    DemoTexts FirstSet{};
    DemoTexts SecondSet{};
    std::vector<DemoPopup> Popups{};
    std::vector<DemoPage> Html{};
    std::vector<DemoPage> HtmlRes{};
    std::vector<DemoPage> HtmlTempl{};
    std::vector<DemoPage> HtmlResTempl{};
};

const DemoTexts kTitleLabels{{L"ITA", L"Titolo"}, {L"ENG", L"Title"}, {L"FRE", L"Titre"}};
const DemoTexts kAuthorLabels{{L"ITA", L"Autore"}, {L"ENG", L"Author"}, {L"FRE", L"Auteur"}};
const DemoTexts kSubjectLabels{{L"ITA", L"Soggetto"}, {L"ENG", L"Subject"}, {L"FRE", L"Sujet"}};

std::vector<Value> Languages() {
    return {
        {L"ITA", L"Italiano", {{L"ITA", L"italiano"}, {L"ENG", L"Italian"}, {L"FRE", L"italien"}}},
        {L"ENG", L"Inglese", {{L"ITA", L"inglese"}, {L"ENG", L"English"}, {L"FRE", L"anglais"}}},
        {L"FRE", L"Francese", {{L"ITA", L"francese"}, {L"ENG", L"French"}, {L"FRE", L"français"}}},
        {L"GER", L"Tedesco", {{L"ITA", L"tedesco"}, {L"ENG", L"German"}, {L"FRE", L"allemand"}}},
    };
}

QueryRow SimpleQuery() {
    return {
        .Name = L"RICERCA",
        .Desc = L"Ricerca semplice: tre righe",
        .Parms =
            LR"(BROWSE= "ELENCO"
DEFAULTSET= 0
SETSELECT= FALSE
STYLE= HTML
ROWS= 3
SHOWRES= FALSE
TIMEOUT= 60
LARGEBUTT= TRUE
TOOLALIGN= TOP
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSALIGN= RIGHT
TIPSWIDTH= 30
FLAGS= NONE
)",
        .Titles = {{L"ITA", L"Ricerca nel catalogo"},
                   {L"ENG", L"Catalogue search"},
                   {L"FRE", L"Recherche dans le catalogue"}},
        .Message = {{L"ITA", L"Riempire almeno una riga"}, {L"ENG", L"Fill in one line at least"}},
        .Buttons = {kSearchButton, kHelpButton, kMenuButton},
        .Fields = {{.Name = L"AUTORE", .Index = L"AUT", .Labels = kAuthorLabels},
                   {.Name = L"TITOLO",
                    .Index = L"TIT",
                    .Labels = kTitleLabels,
                    .StopWord = L"ARTICOLI",
                    .Words = true},
                   {.Name = L"SOGGETTO", .Index = L"SOG", .Labels = kSubjectLabels, .Words = true}},
        .Popups = kFormPopups,
        .Html = {{L"pagine/ricerca.htm", L"ITA", L"QUERY"}, {L"pagine/ricerca_en.htm", L"ENG", L"QUERY"}},
    };
}

QueryRow AdvancedQuery() {
    return {
        .Name = L"AVANZATA",
        .Desc = L"Ricerca avanzata: sette righe, valori a scelta, due insiemi",
        .Parms =
            LR"(BROWSE= "TITOLI"
DEFAULTSET= 1
SETSELECT= TRUE
STYLE= HTML
ROWS= 7
SHOWRES= TRUE
TIMEOUT= 180
TOOLALIGN= BOTTOM
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSALIGN= LEFT
TIPSWIDTH= 25
FLAGS= NONE
)",
        .Titles = {{L"ITA", L"Ricerca avanzata"},
                   {L"ENG", L"Advanced search"},
                   {L"FRE", L"Recherche avancée"}},
        .Message = {{L"ITA", L"Riempire almeno una riga, oltre alla lingua e al tipo"},
                    {L"ENG", L"Fill in one line beside language and kind"}},
        .Buttons = {kSearchButton,
                    {L"INSIEMI",
                     L"SETOPS",
                     {{L"ITA", L"Unisci due ricerche"}, {L"ENG", L"Join two searches"}}},
                    kHelpButton,
                    kMenuButton},
        .Fields =
            {{.Name = L"AUTORE", .Index = L"AUT", .Labels = kAuthorLabels, .Flags = L"CAPTURE"},
             {.Name = L"TITOLO",
              .Index = L"TIT",
              .Labels = kTitleLabels,
              .StopWord = L"ARTICOLI",
              .Words = true,
              .Flags = L"CAPTURE"},
             {.Name = L"SOGGETTO", .Index = L"SOG", .Labels = kSubjectLabels, .Words = true},
             {.Name = L"EDITORE",
              .Index = L"EDI",
              .Labels = {{L"ITA", L"Editore"}, {L"ENG", L"Publisher"}},
              .StopWord = L"SIGLE"},
             {.Name = L"LINGUA",
              .Index = L"LIN",
              .Labels = {{L"ITA", L"Lingua"}, {L"ENG", L"Language"}, {L"FRE", L"Langue"}},
              .Values = Languages(),
              .Selected = 1},
             {.Name = L"DISPONIBILITÀ",
              .Index = L"STA",
              .Labels = {{L"ITA", L"Disponibilità"}, {L"ENG", L"Availability"}},
              .Values =
                  {{L"DISPONIBILE", L"A scaffale", {{L"ITA", L"a scaffale"}, {L"ENG", L"on the shelf"}}},
                   {L"PRESTATO", L"In prestito", {{L"ITA", L"in prestito"}, {L"ENG", L"on loan"}}},
                   {L"LETTURA",
                    L"In sola lettura",
                    {{L"ITA", L"solo in sala"}, {L"ENG", L"reading room only"}}}}},
             {.Name = L"VISIBILITÀ",
              .Index = L"VIS",
              .Labels = {{L"ITA", L"Visibilità"}, {L"ENG", L"Visibility"}},
              .Flags = L"HIDDEN",
              .Values = {{L"PUBBLICA", L"Per tutti", {{L"ITA", L"per tutti"}, {L"ENG", L"for all"}}}},
              .Selected = 1}},
        .FirstSet = {{L"ITA", L"Insieme A: nuova ricerca"}, {L"ENG", L"Set A: new search"}},
        .SecondSet = {{L"ITA", L"Insieme B: dentro i risultati"}, {L"ENG", L"Set B: within the results"}},
        .Popups = kFormPopups,
        .Html = {{L"pagine/avanzata.htm", L"ITA", L"QUERY"}, {L"pagine/avanzata_en.htm", L"ENG", L"QUERY"}},
        .HtmlRes = {{L"pagine/esito.htm", L"ITA", L"QUERYRESULT"},
                    {L"pagine/esito_en.htm", L"ENG", L"QUERYRESULT"}},
        .HtmlTempl = {{L"modelli/avanzata.htm", L"ITA", L"QUERY"},
                      {L"modelli/avanzata_en.htm", L"ENG", L"QUERY"}},
        .HtmlResTempl = {{L"modelli/esito.htm", L"ITA", L"QUERYRESULT"},
                         {L"modelli/esito_en.htm", L"ENG", L"QUERYRESULT"}},
    };
}

QueryRow PeriodicalQuery() {
    return {
        .Name = L"RICPERIODICI",
        .Desc = L"Ricerca di giornali e periodici",
        .Parms =
            LR"(BROWSE= "ELENCO"
STYLE= HTML
ROWS= 2
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
)",
        .Titles = {{L"ITA", L"Ricerca nell'emeroteca"}, {L"ENG", L"Newspapers and journals"}},
        .Message = {{L"ITA", L"Scrivere la testata"}, {L"ENG", L"Give the title of the journal"}},
        .Buttons = {kSearchButton, kMenuButton},
        .Fields = {{.Name = L"TESTATA",
                    .Index = L"PER",
                    .Labels = {{L"ITA", L"Testata"}, {L"ENG", L"Journal"}},
                    .StopWord = L"ARTICOLI",
                    .Words = true},
                   {.Name = L"PAESE",
                    .Index = L"PAE",
                    .Labels = {{L"ITA", L"Paese"}, {L"ENG", L"Country"}},
                    .Values = {{L"IT", L"Italia", {{L"ITA", L"Italia"}, {L"ENG", L"Italy"}}},
                               {L"FR", L"Francia", {{L"ITA", L"Francia"}, {L"ENG", L"France"}}}}}},
    };
}

QueryRow ChildrenQuery() {
    return {
        .Name = L"RICRAGAZZI",
        .Desc = L"Ricerca per i ragazzi: una riga sola, come la ricerca semplice",
        .Parms =
            LR"(BROWSE= "COPERTINE"
STYLE= HTML
ROWS= 1
LARGEBUTT= TRUE
HELP= "AIUTORAGAZZI"
MIRROROF= "RICERCA"
)",
        .Titles = {{L"ITA", L"Cerca un libro"}, {L"ENG", L"Find a book"}},
        .Message = {{L"ITA", L"Scrivi una parola"}, {L"ENG", L"Write a word"}},
        .Buttons = {kSearchButton},
        .Fields = {{.Name = L"TITOLO",
                    .Index = L"TIT",
                    .Labels = {{L"ITA", L"Che cosa cerchi?"}, {L"ENG", L"What are you looking for?"}},
                    .StopWord = L"ARTICOLI",
                    .Words = true}},
    };
}

void AddField(DemoDraft& To, std::int32_t At, const SearchField& Of) {
    To.Element(L"FIELDS");
    To.Section(L"FIELDPARMS", {At}, [&](LineWriter& Out) {
        Out.Quoted(L"NAME=", Of.Name);
        Out.Quoted(L"STOPWORD=", Of.StopWord);
        Out.Quoted(L"TABLES=", Of.Index);
        Out.Bool(L"WORDS=", Of.Words);
        Out.Number(L"SELECTED=", Of.Selected);
        Out.Plain(L"FLAGS=", Of.Flags);
    });
    To.Captions(L"FIELDCAPTION", {At}, Of.Labels);
    std::int32_t ValueAt = 0;
    for (const Value& Each : Of.Values) {
        To.Element(L"CONSTANTS", {At});
        To.Section(L"CONSTANTPARMS", {At, ++ValueAt}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Each.Name);
            Out.Quoted(L"DESC=", Each.Desc);
        });
        To.Captions(L"CONSTANTCAPTION", {At, ValueAt}, Each.Labels, Born::WithText);
    }
}

DemoObject Query(const QueryRow& Of) {
    DemoDraft Made(L"QUERY", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Captions(L"TITLES", {}, Of.Titles);
    Made.Captions(L"MESSAGE", {}, Of.Message);
    Made.Captions(L"OPTIONMSG1", {}, Of.FirstSet);
    Made.Captions(L"OPTIONMSG2", {}, Of.SecondSet);
    Made.Pages(L"HTML", Of.Html);
    Made.Pages(L"HTMLRES", Of.HtmlRes);
    Made.Pages(L"HTMLTEMPL", Of.HtmlTempl);
    Made.Pages(L"HTMLRESTEMPL", Of.HtmlResTempl);
    Made.Buttons(Of.Buttons, Born::WithText);
    Made.Popups(Of.Popups);
    std::int32_t At = 0;
    for (const SearchField& Each : Of.Fields) AddField(Made, ++At, Each);
    return Made.Take();
}

// Browses.

struct Filter {
    std::wstring_view Name;
    std::wstring_view Table;
    std::wstring_view Expression;
    bool Automatic;
    std::wstring_view MergeWith;
};

struct BrowseRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    DemoTexts Titles;
    std::vector<DemoButton> Buttons;
    std::vector<DemoButton> Popups{};  // entries without tips
    std::vector<Filter> Filters{};
    DemoTexts FilterTitles{};
    DemoTexts FilterMessages{};
    std::vector<DemoPage> Html{};
};

constexpr Filter kAvailable{L"DISPONIBILI", L"STATO", L"DISPONIBILE", false, L"AND"};
constexpr Filter kPublic{L"PUBBLICI", L"VISIBILITA", L"PUBBLICA", true, L"AND"};
constexpr Filter kOfTown{L"CITTÀ", L"SOGGETTI", L"BORGOVERDE OR VALDORO", false, L"OR"};

// What is told about the filters of a list, whichever list.
const DemoTexts kFilterTitles{{L"ITA", L"Limita l'elenco"}, {L"ENG", L"Limit the list"}};
const DemoTexts kFilterMessages{{L"ITA", L"L'elenco è limitato: non mostra tutto"},
                                {L"ENG", L"The list is limited: it does not show all"}};

std::vector<DemoButton> ListButtons() {
    return {{L"SCHEDA", L"RECORD", {{L"ITA", L"Mostra la scheda"}, {L"ENG", L"Show the record"}}},
            {L"SALVA", L"SHELF", {{L"ITA", L"Metti da parte"}, {L"ENG", L"Put on my shelf"}}},
            kBackButton,
            kHelpButton};
}

BrowseRow Answers() {
    return {
        .Name = L"ELENCO",
        .Desc = L"Elenco dei documenti trovati",
        .Parms =
            LR"(TABLE= "NOTIZIE"
PROFILE= "SCHEDA"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSWIDTH= 30
TIPSALIGN= RIGHT
ROWS= 20
ICONS= CHECK
ACTION= RECORD
REFERENCE= JUMP
MULTISEL= TRUE
TOOLTIPS= CHECK|COMMANDS
TOOLALIGN= TOP
)",
        .Titles = {{L"ITA", L"Documenti trovati"}, {L"ENG", L"Items found"}, {L"FRE", L"Documents trouvés"}},
        .Buttons = ListButtons(),
    };
}

BrowseRow Authors() {
    return {
        .Name = L"AUTORI",
        .Desc = L"Lista degli autori, con le occorrenze",
        .Parms =
            LR"(TABLE= "AUTORI"
PROFILE= "SCHEDA"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSWIDTH= 25
TIPSALIGN= LEFT
TIPSBUTTONS= BACK|HOME
ROWS= 15
ICONS= FOLDER
ACTION= OPEN
REFERENCE= IMMEDIATE
MULTISEL= TRUE
BOOLOPS= OR
SHOWOCCS= TRUE
TOOLTIPS= CHECK|FOLDER|COMMANDS
TOOLALIGN= TOP
)",
        .Titles = {{L"ITA", L"Lista degli autori"},
                   {L"ENG", L"List of authors"},
                   {L"FRE", L"Liste des auteurs"}},
        .Buttons = {{L"CERCA",
                     L"QUERY",
                     {{L"ITA", L"Cerca le opere degli autori scelti"},
                      {L"ENG", L"Find works of the chosen authors"}}},
                    {L"VAI", L"SEEK", {{L"ITA", L"Vai a un nome"}, {L"ENG", L"Go to a name"}}},
                    kBackButton,
                    kHelpButton},
        .Popups = {{L"CERCA", L"QUERY", {}}, {L"VAI", L"SEEK", {}}},
        .Filters = {kPublic, kOfTown},
        .FilterTitles = {{L"ITA", L"Limita gli autori"}, {L"ENG", L"Limit the authors"}},
        .FilterMessages = kFilterMessages,
        .Html = {{L"modelli/autori.htm", L"ITA", L"BROWSE"}, {L"modelli/autori_en.htm", L"ENG", L"BROWSE"}},
    };
}

BrowseRow Titles() {
    return {
        .Name = L"TITOLI",
        .Desc = L"Lista dei titoli, che si cerca mentre si scrive",
        .Parms =
            LR"(TABLE= "NOTIZIE"
PROFILE= "SCHEDA"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
STEM= "TITOLO"
TIPS= "CONSIGLI"
TIPSWIDTH= 25
TIPSALIGN= RIGHT
TIPSSIZABLE= TRUE
ROWS= 20
ICONS= ARROW
ACTION= RECORD
USECOOKED= TRUE
OPENRECORD= TRUE
REFERENCE= JUMP
AUTORUN= TRUE
BOOLOPS= AND
STEMAUTO= TRUE
STEMALIGN= BOTTOM
STEMDOCKED= TRUE
STEMIMMEDIATE= TRUE
STEMSIZABLE= TRUE
TOOLTIPS= CHECK|LINK|COMMANDS
TOOLALIGN= TOP
)",
        .Titles = {{L"ITA", L"Lista dei titoli"}, {L"ENG", L"List of titles"}, {L"FRE", L"Liste des titres"}},
        .Buttons = ListButtons(),
        .Popups = {{L"SCHEDA", L"RECORD", {}}, {L"SALVA", L"SHELF", {}}},
        .Filters = {kAvailable, kPublic},
        .FilterTitles = kFilterTitles,
        .FilterMessages = kFilterMessages,
        .Html = {{L"modelli/titoli.htm", L"ITA", L"BROWSE"}, {L"modelli/titoli_en.htm", L"ENG", L"BROWSE"}},
    };
}

BrowseRow Covers() {
    return {
        .Name = L"COPERTINE",
        .Desc = L"Copertine dei libri per ragazzi",
        .Parms =
            LR"(TABLE= "NOTIZIE"
PROFILE= "SCHEDARAGAZZI"
HELP= "AIUTORAGAZZI"
ROWS= 6
ICONS= NONE
ACTION= IMAGE
LARGEBUTT= TRUE
NOPOPUP= TRUE
MIRROROF= "TITOLI"
)",
        .Titles = {{L"ITA", L"Libri trovati"}, {L"ENG", L"Books found"}},
        .Buttons = {kBackButton},
        .Filters = {kAvailable},
        .FilterTitles = kFilterTitles,
        .FilterMessages = kFilterMessages,
    };
}

DemoObject Browse(const BrowseRow& Of) {
    DemoDraft Made(L"BROWSE", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Captions(L"TITLES", {}, Of.Titles);
    Made.Buttons(Of.Buttons, Born::WithText);
    std::int32_t At = 0;
    for (const DemoButton& Each : Of.Popups) {
        Made.Element(L"POPUPS");
        Made.Button(L"POPUPS", ++At, Each);
    }
    At = 0;
    for (const Filter& Each : Of.Filters) {
        Made.Element(L"FILTER");
        Made.Section(L"FILTER", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Each.Name);
            Out.Quoted(L"TABLE=", Each.Table);
            Out.Quoted(L"EXPRESSION=", Each.Expression);
            Out.Bool(L"AUTOMATIC=", Each.Automatic);
            Out.Plain(L"MERGEWITH=", Each.MergeWith);
            Out.Quoted(L"HELP=", L"AIUTOFILTRI");
        });
    }
    Made.Captions(L"FILTTITLES", {}, Of.FilterTitles);
    Made.Captions(L"FILTMESSAGES", {}, Of.FilterMessages);
    Made.Pages(L"HTML", Of.Html);
    return Made.Take();
}

// Menus, help and set operations.

struct FormRow {
    std::wstring_view Clsid;
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    DemoTexts Titles;
    std::vector<DemoPage> Html;
    std::vector<DemoButton> Buttons{};
    std::vector<DemoPopup> Popups{};
};

std::vector<FormRow> Menus() {
    return {
        {.Clsid = L"MENU",
         .Name = L"PRINCIPALE",
         .Desc = L"Menu con cui si apre il catalogo",
         .Parms = LR"(HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSALIGN= RIGHT
TIPSBUTTONS= CLOSE
TIPSWIDTH= 30
TOOLALIGN= TOP
LARGEBUTT= TRUE
TOOLTIPS= COMMANDS
FLAGS= NONE
)",
         .Titles = {{L"ITA", L"Biblioteca civica di Borgoverde"},
                    {L"ENG", L"Borgoverde public library"},
                    {L"FRE", L"Bibliothèque municipale de Borgoverde"}},
         .Html = {{L"pagine/menu.htm", L"ITA", L"MENU"}, {L"pagine/menu_en.htm", L"ENG", L"MENU"}},
         .Buttons =
             {{L"RICERCA", L"QUERY", {{L"ITA", L"Ricerca semplice"}, {L"ENG", L"Simple search"}}},
              {L"AVANZATA", L"QUERY", {{L"ITA", L"Ricerca avanzata"}, {L"ENG", L"Advanced search"}}},
              {L"AUTORI", L"BROWSE", {{L"ITA", L"Scorri gli autori"}, {L"ENG", L"Browse authors"}}},
              {L"TITOLI", L"BROWSE", {{L"ITA", L"Scorri i titoli"}, {L"ENG", L"Browse titles"}}},
              {L"INSIEMI", L"SETOPS", {{L"ITA", L"Unisci due ricerche"}, {L"ENG", L"Join two searches"}}},
              {L"PRESTITO", L"LOANSTART", {{L"ITA", L"Chiedi in prestito"}, {L"ENG", L"Ask to borrow"}}},
              kHelpButton},
         .Popups = {{L"Ricerca semplice", L"ITA", L"RICERCA", L"QUERY"},
                    {L"Simple search", L"ENG", L"RICERCA", L"QUERY"},
                    {L"Aiuto", L"ITA", L"AIUTO", L"HELP"},
                    {L"Help", L"ENG", L"AIUTO", L"HELP"}}},
        {.Clsid = L"MENU",
         .Name = L"MENURAGAZZI",
         .Desc = L"Menu delle postazioni per i ragazzi",
         .Parms = LR"(HELP= "AIUTORAGAZZI"
TOOLALIGN= BOTTOM
LARGEBUTT= TRUE
MIRROROF= "PRINCIPALE"
)",
         .Titles = {{L"ITA", L"Biblioteca dei ragazzi"}, {L"ENG", L"Children's library"}},
         .Html = {{L"pagine/ragazzi.htm", L"ITA", L"MENU"}},
         .Buttons = {{L"RICRAGAZZI", L"QUERY", {{L"ITA", L"Cerca un libro"}, {L"ENG", L"Find a book"}}}}},
    };
}

constexpr std::wstring_view kHelpParms =
    LR"(TOOLALIGN= TOP
TOOLTIPS= COMMANDS|LINK
FLAGS= NONE
)";
constexpr std::wstring_view kWebHelpParms =
    LR"(HELPWWW= "AIUTOWEB"
LARGEBUTT= TRUE
TOOLALIGN= BOTTOM
TOOLTIPS= LINK
FLAGS= NONE
MIRROROF= "AIUTO"
)";
constexpr std::wstring_view kFirstHelpParms =
    LR"(HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSALIGN= RIGHT
TIPSBUTTONS= BACK|CLOSE
LARGEBUTT= FALSE
TOOLALIGN= TOP
TIPSWIDTH= 30
TOOLTIPS= COMMANDS|LINK
FLAGS= NONE
)";

// A help that is a page in each of two languages, with a way back.
FormRow Help(std::wstring_view Name, std::wstring_view Desc, std::wstring_view Parms, DemoTexts Titles,
             std::wstring_view Page, std::wstring_view EnglishPage) {
    return {.Clsid = L"HELP",
            .Name = Name,
            .Desc = Desc,
            .Parms = Parms,
            .Titles = std::move(Titles),
            .Html = {{Page, L"ITA", L"HELP"}, {EnglishPage, L"ENG", L"HELP"}},
            .Buttons = {kBackButton}};
}

std::vector<FormRow> Helps() {
    FormRow First = Help(L"AIUTO", L"Aiuto del catalogo", kFirstHelpParms,
                         {{L"ITA", L"Aiuto"}, {L"ENG", L"Help"}, {L"FRE", L"Aide"}}, L"aiuto/indice.htm",
                         L"aiuto/indice_en.htm");
    First.Buttons = {kBackButton,
                     kMenuButton,
                     {L"INFO", L"INFO", {{L"ITA", L"La biblioteca"}, {L"ENG", L"About the library"}}}};
    First.Popups = {{L"Pagina precedente", L"ITA", L"INDIETRO", L"BACK"},
                    {L"Previous page", L"ENG", L"INDIETRO", L"BACK"}};
    return {
        std::move(First),
        Help(L"AIUTOWEB", L"Aiuto del catalogo in linea", kWebHelpParms,
             {{L"ITA", L"Aiuto in linea"}, {L"ENG", L"Online help"}}, L"aiuto/web.htm", L"aiuto/web_en.htm"),
        Help(L"AIUTOFILTRI", L"Che cosa fanno i filtri", kHelpParms,
             {{L"ITA", L"I filtri"}, {L"ENG", L"Filters"}}, L"aiuto/filtri.htm", L"aiuto/filtri_en.htm"),
        Help(L"AIUTOPRESTITO", L"Come si chiede un prestito", kHelpParms,
             {{L"ITA", L"Il prestito"}, {L"ENG", L"Loans"}}, L"aiuto/prestito.htm", L"aiuto/prestito_en.htm"),
        Help(L"AIUTORAGAZZI", L"Aiuto per i ragazzi", kHelpParms,
             {{L"ITA", L"Come si cerca"}, {L"ENG", L"How to search"}}, L"aiuto/ragazzi.htm",
             L"aiuto/ragazzi_en.htm"),
        Help(L"CONSIGLI", L"Consigli, a lato di ricerche ed elenchi", kHelpParms,
             {{L"ITA", L"Consigli"}, {L"ENG", L"Tips"}}, L"aiuto/consigli.htm", L"aiuto/consigli_en.htm"),
        Help(L"REGOLE", L"Regole del prestito, a lato della scheda", kHelpParms,
             {{L"ITA", L"Regole del prestito"}, {L"ENG", L"Loan rules"}}, L"aiuto/regole.htm",
             L"aiuto/regole_en.htm"),
    };
}

std::vector<FormRow> SetOperations() {
    const DemoButton Both{
        L"AND", L"SETOPS", {{L"ITA", L"Ciò che sta in ambedue"}, {L"ENG", L"What both hold"}}};
    const DemoButton Either{
        L"OR", L"SETOPS", {{L"ITA", L"Ciò che sta in uno dei due"}, {L"ENG", L"What one holds"}}};
    return {
        {.Clsid = L"SETOPS",
         .Name = L"INSIEMI",
         .Desc = L"Unisce, incrocia e sottrae i risultati di due ricerche",
         .Parms = LR"(HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
PATH= "lavoro/insiemi"
TIPS= "CONSIGLI"
TIPSALIGN= LEFT
TIPSBUTTONS= BACK|CLOSE
LARGEBUTT= FALSE
TOOLALIGN= TOP
TIPSWIDTH= 25
TOOLTIPS= CHECK|COMMANDS
FLAGS= BROWSEFILES
)",
         .Titles = {{L"ITA", L"Operazioni tra ricerche"}, {L"ENG", L"Set operations"}},
         .Html = {{L"pagine/insiemi.htm", L"ITA", L"SETOPS"}, {L"pagine/insiemi_en.htm", L"ENG", L"SETOPS"}},
         .Buttons = {Both,
                     Either,
                     {L"XOR",
                      L"SETOPS",
                      {{L"ITA", L"Ciò che sta in uno solo"}, {L"ENG", L"What only one holds"}}},
                     kHelpButton,
                     kMenuButton},
         .Popups = kFormPopups},
        {.Clsid = L"SETOPS",
         .Name = L"INSIEMISALA",
         .Desc = L"Le stesse operazioni nelle postazioni in sala, senza file",
         .Parms = LR"(HELP= "AIUTO"
LARGEBUTT= TRUE
TOOLALIGN= BOTTOM
FLAGS= NONE
)",
         .Titles = {{L"ITA", L"Unisci due ricerche"}, {L"ENG", L"Join two searches"}},
         .Html = {{L"pagine/insiemi.htm", L"ITA", L"SETOPS"}},
         .Buttons = {Both, Either}},
    };
}

DemoObject MenuShaped(const FormRow& Of) {
    DemoDraft Made(Of.Clsid, Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Captions(L"TITLES", {}, Of.Titles);
    Made.Pages(L"HTML", Of.Html);
    Made.Buttons(Of.Buttons, Born::WithText);
    Made.Popups(Of.Popups);
    return Made.Take();
}

// Web servers.

struct Named {
    std::wstring_view Name;
    std::wstring_view Desc;
    DemoTexts Texts;
};

struct TemplateRow {
    std::wstring_view List;
    std::vector<DemoPage> Pages;
};

struct ServerRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    std::vector<TemplateRow> Templates;
    std::vector<Named> Tags;
    std::vector<Named> Messages;
};

ServerRow PublicServer() {
    return {
        .Name = L"OPAC",
        .Desc = L"Catalogo in linea, italiano e inglese",
        .Parms =
            LR"(FLAGS= NONE
BROWSEROWS= 20
QUERYTIMEOUT= 60
MESSAGELEVEL= LOGERROR|LOGUSERCONNECT
LOGFILE= "registri/opac.log"
)",
        .Templates =
            {{L"BROWSE", {{L"web/elenco.htm", L"ITA", L"BROWSE"}, {L"web/elenco_en.htm", L"ENG", L"BROWSE"}}},
             {L"ERRORS", {{L"web/errore.htm", L"ITA", L"INFO"}, {L"web/errore_en.htm", L"ENG", L"INFO"}}},
             {L"HISTORY",
              {{L"web/percorso.htm", L"ITA", L"HBACK"}, {L"web/percorso_en.htm", L"ENG", L"HBACK"}}},
             {L"HOME", {{L"web/inizio.htm", L"ITA", L"MENU"}, {L"web/inizio_en.htm", L"ENG", L"MENU"}}},
             {L"LOAN",
              {{L"web/prestito.htm", L"ITA", L"LOANSTART"}, {L"web/prestito_en.htm", L"ENG", L"LOANSTART"}}},
             {L"LOANREPORT",
              {{L"web/tessera.htm", L"ITA", L"LOANACTION"}, {L"web/tessera_en.htm", L"ENG", L"LOANACTION"}}},
             {L"QUERY", {{L"web/ricerca.htm", L"ITA", L"QUERY"}, {L"web/ricerca_en.htm", L"ENG", L"QUERY"}}},
             {L"QUERYRESULT",
              {{L"web/esito.htm", L"ITA", L"QUERYRESULT"}, {L"web/esito_en.htm", L"ENG", L"QUERYRESULT"}}},
             {L"RECORD",
              {{L"web/scheda.htm", L"ITA", L"RECORD"}, {L"web/scheda_en.htm", L"ENG", L"RECORD"}}}},
        .Tags = {{L"BIBLIOTECA",
                  L"Nome della biblioteca",
                  {{L"ITA", L"Biblioteca civica di Borgoverde"}, {L"ENG", L"Borgoverde public library"}}},
                 {L"ORARIO",
                  L"Orario di apertura",
                  {{L"ITA", L"Dal martedì al sabato, dalle 9 alle 19"},
                   {L"ENG", L"Tuesday to Saturday, 9 am to 7 pm"}}},
                 {L"POSTA",
                  L"Indirizzo a cui si scrive",
                  {{L"ITA", L"Scrivi a biblioteca@biblioteca.example"},
                   {L"ENG", L"Write to biblioteca@biblioteca.example"}}}},
        .Messages = {{L"NESSUN RISULTATO",
                      L"La ricerca non trova nulla",
                      {{L"ITA", L"Nessun documento trovato"}, {L"ENG", L"No item was found"}}},
                     {L"TEMPO SCADUTO",
                      L"La ricerca dura troppo",
                      {{L"ITA", L"La ricerca ha richiesto troppo tempo"},
                       {L"ENG", L"The search took too long"}}},
                     {L"SESSIONE SCADUTA",
                      L"Il lettore è stato inattivo",
                      {{L"ITA", L"La sessione è scaduta: ricominciare dall'inizio"},
                       {L"ENG", L"The session has expired: start again"}}},
                     {L"ACCESSO NEGATO",
                      L"Il lettore non ha il permesso",
                      {{L"ITA", L"Non si ha il permesso di vedere questa pagina"},
                       {L"ENG", L"You may not see this page"}}}},
    };
}

ServerRow TrialServer() {
    return {
        .Name = L"OPACPROVE",
        .Desc = L"Server su cui si provano le pagine nuove",
        .Parms =
            LR"(FLAGS= DISABLEPERMISSIONCHECK
BROWSEROWS= 5
QUERYTIMEOUT= 0
MESSAGELEVEL= DEBUGMODE
LOGFILE= "registri/prove.log"
)",
        .Templates = {{L"HOME", {{L"prove/inizio.htm", L"ITA", L"MENU"}}},
                      {L"QUERY", {{L"prove/ricerca.htm", L"ITA", L"QUERY"}}}},
        .Tags = {{L"AVVISO",
                  L"Scritta in testa a ogni pagina",
                  {{L"ITA", L"Pagine di prova"}, {L"ENG", L"Trial pages"}}}},
        .Messages = {{L"NESSUN RISULTATO",
                      L"La ricerca non trova nulla",
                      {{L"ITA", L"Nessun documento trovato"}, {L"ENG", L"No item was found"}}}},
    };
}

void AddNamed(DemoDraft& To, std::wstring_view List, std::wstring_view Parms, std::wstring_view Texts,
              const std::vector<Named>& All) {
    std::int32_t At = 0;
    for (const Named& Each : All) {
        To.Element(List);
        To.Section(Parms, {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Each.Name);
            Out.Quoted(L"DESC=", Each.Desc);
        });
        To.Captions(Texts, {At}, Each.Texts, Born::WithText);
    }
}

DemoObject WebServer(const ServerRow& Of) {
    DemoDraft Made(L"WEBSERVER", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    for (const TemplateRow& Each : Of.Templates) Made.Pages(Each.List, Each.Pages);
    AddNamed(Made, L"CONSTANTS", L"CONSTANTPARMS", L"CONSTANTCAPTION", Of.Tags);
    AddNamed(Made, L"MESSAGE", L"MESSAGEPARMS", L"MESSAGECAPTION", Of.Messages);
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoNavigation() {
    std::vector<DemoObject> All;
    for (const QueryRow& Each : {SimpleQuery(), AdvancedQuery(), PeriodicalQuery(), ChildrenQuery()})
        All.push_back(Query(Each));
    for (const BrowseRow& Each : {Answers(), Authors(), Titles(), Covers()}) All.push_back(Browse(Each));
    for (const auto Make : {Menus, Helps, SetOperations})
        for (const FormRow& Each : Make()) All.push_back(MenuShaped(Each));
    for (const ServerRow& Each : {PublicServer(), TrialServer()}) All.push_back(WebServer(Each));
    return All;
}

}  // namespace kv::host
