#include <algorithm>
#include <cstdint>
#include <span>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

// Retrieval bases.

constexpr std::wstring_view kBaseParms =
    LR"(PATH= "archivi/biblio"
COMPRESSED= TRUE
DBVERSION= 3.2
HTMLROOT= "pagine"
HELPTYPE= EXTERN-CHM
HELP= "PAGINE/AIUTO.CHM"
LOANPATH= "archivi/prestiti"
LOANENABLE= ENABLED|STARTUP|RESTARTABLE|PREVAIL
PRNMAXITEMS= 200
PRNMAXRECS= 50
FILEMAXITEMS= NONE
FILEMAXRECS= 500
URL= "https://biblioteca.example/catalogo"
DATALOCKPWD= &H1F40
LOCKFILE= "lavoro/biblio.lck"
BACKUPPATH= "copie/biblio"
TEMPPATH= "lavoro"
LOGFILE= "registri/biblio.log"
FLAGS= KEEPBACKUP|KILLAFTERCOPY
)";

constexpr std::wstring_view kTrialParms =
    LR"(PATH= "prove/biblio"
HELPTYPE= STANDARD
HELP= "AIUTO"
LOANENABLE= NOTENABLED
MIRROROF= "BIBLIO"
MENUBAR= FALSE
TEMPPATH= "lavoro"
)";

DemoObject Base(std::wstring_view Name, std::wstring_view Desc, std::wstring_view Parms) {
    DemoDraft Made(L"RETRIEVAL", Name, Desc);
    Made.Section(L"PARMS", {1}, Parms);
    return Made.Take();
}

// Applications.

constexpr std::wstring_view kReadersParms =
    LR"(RETRIEVAL= "BIBLIO"
LANG= "ITA"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
STARTACTION= MENU
STARTOBJECT= "PRINCIPALE"
STARTUPMODE= MAXIMIZED|NORESIZE
ALLOWSHUTDOWN= FALSE
IDLEACTION= RESTART
IDLETIME= 300
PASSWORD= "chiusura"
MSIEFLAGS= NONE
LOANENABLE= ENABLED|RESTARTABLE
LOANPATH= "archivi/prestiti"
FORMAT= RTF
PRINTERFLAGS= OWNASK|PRINTERBUTTON
PRNMAXITEMS= 50
PRNMAXRECS= 50
FILEFLAGS= NOOWN
FILEMAXITEMS= 100
OUTPUTUSERLOG= TRUE
LOGFILE= "registri/lettori.log"
)";

constexpr std::wstring_view kDeskParms =
    LR"(RETRIEVAL= "BIBLIO"
LANG= "ITA"
STARTACTION= LOANSTART
STARTUPMODE= HASCAPTION|QUERYUNLOAD
ALLOWSHUTDOWN= TRUE
IDLEACTION= PASSWORD
IDLETIME= 900
PASSWORD= "accoglienza"
LOANENABLE= ENABLED|STARTUP
LOANPATH= "archivi/prestiti"
FORMAT= TEXT
LOGFILE= "registri/banco.log"
MIRROROF= "LETTORI"
)";

constexpr DemoMessage kReadersMessages[] = {
    {L"APERTURA",
     {L"Apertura del catalogo in corso", L"Opening the catalogue", L"Ouverture du catalogue",
      L"Der Katalog wird geöffnet", L"Abriendo el catálogo"}},
    {L"BASE NON TROVATA",
     {L"Il catalogo non risponde", L"The catalogue does not answer", L"Le catalogue ne répond pas",
      L"Der Katalog antwortet nicht", L"El catálogo no responde"}},
    {L"CONFERMA USCITA",
     {L"Si vuole uscire?", L"Do you want to leave?", L"Voulez-vous quitter ?",
      L"Möchten Sie das Programm beenden?", L"¿Desea salir?"}},
    {L"INATTIVITÀ",
     {L"Nessuna attività: si torna all'inizio", L"No activity: going back to the start",
      L"Aucune activité : retour au début", L"Keine Eingabe: zurück zum Anfang",
      L"Sin actividad: se vuelve al inicio"}},
    {L"PAROLA ERRATA",
     {L"Parola d'ordine errata", L"Wrong password", L"Mot de passe incorrect", L"Falsches Kennwort",
      L"Contraseña incorrecta"}},
    {L"NESSUNA SCELTA",
     {L"Scegliere prima un documento", L"Choose an item first", L"Choisissez d'abord un document",
      L"Wählen Sie zuerst ein Dokument aus", L"Elija antes un documento"}},
    {L"STAMPA IN CORSO",
     {L"Stampa in corso", L"Printing", L"Impression en cours", L"Der Druck läuft", L"Imprimiendo"}},
    {L"STAMPANTE ASSENTE",
     {L"Nessuna stampante è collegata", L"No printer is connected", L"Aucune imprimante n'est connectée",
      L"Es ist kein Drucker angeschlossen", L"No hay ninguna impresora conectada"}},
    {L"TROPPE SCHEDE",
     {L"Si stampano al più cinquanta schede", L"No more than fifty records are printed",
      L"On imprime cinquante notices au plus", L"Es werden höchstens fünfzig Datensätze gedruckt",
      L"Se imprimen cincuenta fichas como máximo"}},
    {L"FILE SALVATO",
     {L"Il file è stato salvato", L"The file has been saved", L"Le fichier a été enregistré",
      L"Die Datei wurde gespeichert", L"El archivo se ha guardado"}},
    {L"FILE ESISTENTE",
     {L"Il file esiste già: sostituirlo?", L"The file exists: replace it?",
      L"Le fichier existe déjà : le remplacer ?", L"Die Datei besteht bereits: ersetzen?",
      L"El archivo ya existe: ¿sustituirlo?"}},
    {L"RICHIESTA INVIATA",
     {L"La richiesta è stata inviata al banco", L"The request has been sent to the desk",
      L"La demande a été envoyée au comptoir", L"Die Bestellung ging an die Ausleihe",
      L"La petición se ha enviado al mostrador"}},
};

constexpr DemoMessage kDeskMessages[] = {
    {L"LETTORE SOSPESO",
     {L"Il lettore è sospeso dal prestito", L"The reader may not borrow at present",
      L"Le lecteur est suspendu du prêt", L"Der Leser ist von der Ausleihe gesperrt",
      L"El lector tiene suspendido el préstamo"}},
    {L"COPIA NON TROVATA",
     {L"Nessuna copia ha questo codice", L"No copy bears this code", L"Aucun exemplaire n'a ce code",
      L"Kein Exemplar trägt diesen Code", L"Ningún ejemplar lleva este código"}},
};

struct Application {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    std::vector<DemoFont> FormFonts;
    std::vector<DemoFont> MessageFonts;
    std::vector<DemoFont> TitleFonts;
    std::span<const DemoMessage> Messages;
};

DemoObject VClient(const Application& Of) {
    DemoDraft Made(L"VCLIENT", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Fonts(L"FORMFONTS", Of.FormFonts);
    Made.Fonts(L"MESSAGEFONTS", Of.MessageFonts);
    Made.Fonts(L"TITLEFONTS", Of.TitleFonts);
    std::int32_t At = 0;
    for (const DemoMessage& Each : Of.Messages) {
        Made.Element(L"FIELDS");
        Made.Section(L"FIELDPARMS", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Each.Name);
            Out.Quoted(L"DESC=", Each.Texts[0]);
        });
        for (std::size_t I = 0; I < kDemoLanguages.size(); ++I)
            Made.Caption(L"FIELDCAPTION", {At, static_cast<std::int32_t>(I) + 1}, kDemoLanguages[I],
                         Each.Texts[I]);
    }
    return Made.Take();
}

// Display profiles.

/// What a field of a profile has beside its tag and its name in Italian.
struct Shown {
    std::int32_t Tag;
    std::wstring_view Browse{};
    std::wstring_view Profile{};
    std::wstring_view Flags = L"NONE";
    DemoTexts Labels{};  // behind the Italian one
};

struct Format {
    std::wstring_view Parms;
    DemoTexts Labels;
};

struct LoanTable {
    std::wstring_view Nature;
    std::wstring_view Level;
    DemoTexts Messages;
};

struct ProfileRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Table;  // whose fields it shows
    bool Mapped;              // all of them, or else those that Fields tells
    std::wstring_view Parms;
    std::vector<Shown> Fields{};
    std::vector<Format> Formats{};
    DemoTexts Titles{};
    std::vector<DemoButton> Buttons{};
    std::vector<DemoPopup> Popups{};
    std::vector<LoanTable> LoanTables{};
    std::vector<DemoPage> RecHtml{};
    std::vector<DemoPage> LoanHtml{};
    std::vector<DemoPage> Html{};
};

// A card of the catalogue, for screen, printer and file.
ProfileRow Card() {
    return {
        .Name = L"SCHEDA",
        .Desc = L"Scheda di catalogo, a schermo e in stampa",
        .Table = L"NOTIZIE",
        .Mapped = true,
        .Parms =
            LR"(ALIGN= LEFT
WIDTH= ADJUST
FLAGS= REFRESHTIPS
TABLE= "NOTIZIE"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
TIPS= "CONSIGLI"
TIPSALIGN= RIGHT
TIPSWIDTH= 30
TIPSBUTTONS= BACK|CLOSE
TOOLALIGN= TOP
TOOLTIPS= CHECK|LINK|COMMANDS
LINKEDPAGE= "MENU"
MASTER= SCHEDA="PAGINE"
MASTER= BANCO="SPORTELLO"
IMAGEOPTION= ALIGNRIGHT|LINKS
IMAGEROOT= "copertine"
IMAGEURL= "https://biblioteca.example/copertine"
IMAGEKEYFIELD= "NUMERO ISBN"
IMAGEEXT= "jpg"
IMAGESPERREC= 1
IMAGEMAXWIDTH= 120
IMAGEMAXHEIGHT= 180
)",
        .Fields =
            {{.Tag = 1, .Flags = L"LITERAL|NOHREF"},
             {.Tag = 12001,
              .Flags = L"FORCENAVY|NOREPAINT|ENDBANNER",
              .Labels =
                  {{L"ENG", L"Title: "}, {L"FRE", L"Titre: "}, {L"GER", L"Titel: "}, {L"SPA", L"Título: "}}},
             {.Tag = 12005,
              .Flags = L"PEER",
              .Labels = {{L"ENG", L"By: "}, {L"FRE", L"Par: "}, {L"GER", L"Von: "}, {L"SPA", L"Por: "}}},
             {.Tag = 205, .Labels = {{L"ENG", L"Edition: "}, {L"GER", L"Ausgabe: "}}},
             {.Tag = 12101, .Labels = {{L"ENG", L"Place: "}, {L"GER", L"Ort: "}}},
             {.Tag = 12102,
              .Browse = L"ELENCO",
              .Labels = {{L"ENG", L"Publisher: "}, {L"FRE", L"Éditeur: "}}},
             {.Tag = 410, .Profile = L"SCHEDA"},
             {.Tag = 461, .Profile = L"SCHEDA", .Labels = {{L"ENG", L"Volume of: "}}},
             {.Tag = 463, .Profile = L"SCHEDA", .Flags = L"SPLIT"},
             {.Tag = 606,
              .Browse = L"ELENCO",
              .Flags = L"PEER",
              .Labels = {{L"ENG", L"Subject: "}, {L"FRE", L"Sujet: "}}},
             {.Tag = 17001, .Browse = L"AUTORI", .Labels = {{L"ENG", L"Author: "}, {L"GER", L"Verfasser: "}}},
             {.Tag = 19502, .Flags = L"NOBREAK", .Labels = {{L"ENG", L"Shelf mark: "}}}},
        .Formats = {{LR"(NAME= "BREVE"
STYLE= BANNER
DEFSTYLE= TRUE
DISPTYPE= DISPLAY
)",
                     {{L"ITA", L"Scheda breve"}, {L"ENG", L"Short record"}, {L"FRE", L"Notice abrégée"}}},
                    {LR"(NAME= "ISBD"
STYLE= COOKED|DOUBLEFRAME
DISPTYPE= DISPLAY|PRINTER
TAG= 990
LANG= "ITA"
TAG= 990
LANG= "ENG"
)",
                     {{L"ITA", L"Descrizione"}, {L"ENG", L"Description"}}},
                    {LR"(NAME= "ELENCO"
STYLE= BANNER|BATCH|SPLITTED
DISPTYPE= PRINTER|FILE
)",
                     {{L"ITA", L"Elenco per la stampa"}, {L"ENG", L"List for printing"}}},
                    {LR"(NAME= "SCAMBIO"
STYLE= COOKED|NOPRINT
DISPTYPE= FILE
EXPORTSVR= "Scambio.Esporta"
EXPORTARG= "formato=scambio"
EXPORTARG= "cartella=scambio/uscita"
TAG= 990
LANG= "ITA"
)",
                     {{L"ITA", L"Formato di scambio"}, {L"ENG", L"Exchange format"}}}},
        .Titles = {{L"ITA", L"Scheda del documento"},
                   {L"ENG", L"Record"},
                   {L"FRE", L"Notice"},
                   {L"GER", L"Datensatz"},
                   {L"SPA", L"Ficha"}},
        .Buttons = {{L"INDIETRO",
                     L"BACK",
                     {{L"ITA", L"Torna ai risultati"}, {L"ENG", L"Back to the results"}}},
                    {L"ELENCO", L"BROWSE", {{L"ITA", L"Scorri l'elenco"}, {L"ENG", L"Browse the list"}}},
                    {L"RICHIEDI",
                     L"LOANSTART",
                     {{L"ITA", L"Chiedi in prestito"}, {L"ENG", L"Ask to borrow"}, {L"FRE", L"Emprunter"}}},
                    {L"AIUTO", L"HELP", {{L"ITA", L"Come si legge la scheda"}}}},
        .Popups = {{L"Torna ai risultati", L"ITA", L"INDIETRO", L"BACK"},
                   {L"Chiedi in prestito", L"ITA", L"RICHIEDI", L"LOANSTART"},
                   {L"Ask to borrow", L"ENG", L"RICHIEDI", L"LOANSTART"}},
        .RecHtml = {{L"pagine/scheda.htm", L"ITA", L"RECORD"}, {L"pagine/scheda_en.htm", L"ENG", L"RECORD"}},
        .Html = {{L"pagine/stampa.htm", L"ITA", L"NONE"}},
    };
}

// What the loan desk sees of a notice.
ProfileRow LoanView() {
    return {
        .Name = L"PRESTITO",
        .Desc = L"Copie di un documento e loro disponibilità",
        .Table = L"NOTIZIE",
        .Mapped = false,
        .Parms =
            LR"(ALIGN= RIGHT
WIDTH= 480
LARGEBUTT= TRUE
TABLE= "NOTIZIE"
HELP= "AIUTO"
TOOLALIGN= BOTTOM
TOOLTIPS= LOANLINK
LOANHELP= "AIUTOPRESTITO"
LOANTIPS= "REGOLE"
LOANALIGN= LEFT
LOANWIDTH= 40
LOANQUIT= TRUE
LOANLINKSONLY= "19501||19502"
LOANSORTBY= "19501||19505"
)",
        .Fields = {{.Tag = 12001, .Labels = {{L"ENG", L"Title: "}}},
                   {.Tag = 19501, .Labels = {{L"ENG", L"Library: "}}},
                   {.Tag = 19502, .Labels = {{L"ENG", L"Shelf mark: "}}},
                   {.Tag = 19505, .Flags = L"FORCENAVY", .Labels = {{L"ENG", L"Status: "}}},
                   {.Tag = 29502, .Labels = {{L"ENG", L"Due: "}}}},
        .Formats = {{LR"(NAME= "COPIE"
STYLE= BANNER
DEFSTYLE= TRUE
DISPTYPE= DISPLAY
)",
                     {{L"ITA", L"Copie possedute"}, {L"ENG", L"Copies"}}}},
        .Titles = {{L"ITA", L"Disponibilità"}, {L"ENG", L"Availability"}},
        .Buttons = {{L"PRESTA", L"LOANACTION", {{L"ITA", L"Registra il prestito"}}},
                    {L"ESCI", L"LOANQUIT", {{L"ITA", L"Chiudi il banco"}}}},
        .LoanTables = {{L"M",
                        L"MONOGRAFIA",
                        {{L"ITA", L"Prestito di trenta giorni"}, {L"ENG", L"Loan of thirty days"}}},
                       {L"S",
                        L"PERIODICO",
                        {{L"ITA", L"Solo lettura in sede"}, {L"ENG", L"Reading room only"}}},
                       {L"C", L"CARTOGRAFIA", {{L"ITA", L"A richiesta, per sette giorni"}}}},
        .LoanHtml = {{L"banco/disponibilita.htm", L"ITA", L"LOANSTART"},
                     {L"banco/disponibilita_en.htm", L"ENG", L"LOANSTART"}},
    };
}

ProfileRow Children() {
    return {
        .Name = L"SCHEDARAGAZZI",
        .Desc = L"Scheda per i ragazzi: poco testo, la copertina grande",
        .Table = L"NOTIZIE",
        .Mapped = false,
        .Parms =
            LR"(ALIGN= LEFT
WIDTH= PLAIN
LARGEBUTT= TRUE
TABLE= "NOTIZIE"
HELP= "AIUTORAGAZZI"
MIRROROF= "SCHEDA"
IMAGEOPTION= ALIGNTOP
IMAGEROOT= "copertine"
IMAGEMAXWIDTH= 300
)",
        .Fields = {{.Tag = 12001, .Flags = L"LITERAL"}, {.Tag = 17001, .Browse = L"ELENCO"}},
        .Titles = {{L"ITA", L"Il libro"}},
    };
}

ProfileRow Periodical() {
    return {
        .Name = L"TESTATA",
        .Desc = L"Testata di un periodico e fascicoli ricevuti",
        .Table = L"PERIODICI",
        .Mapped = true,
        .Parms =
            LR"(ALIGN= LEFT
WIDTH= ADJUST
TABLE= "PERIODICI"
HELP= "AIUTO"
)",
        .Titles = {{L"ITA", L"Periodico"}, {L"ENG", L"Periodical"}},
    };
}

// The fields of the profile, in the order of its table, each labelled in Italian as the mapping tool does it.
void AddFields(DemoDraft& To, const ProfileRow& Of) {
    std::int32_t At = 0;
    for (const DemoField& Field : DemoFieldsOf(Of.Table)) {
        const auto Told = std::find_if(Of.Fields.begin(), Of.Fields.end(),
                                       [&](const Shown& Each) { return Each.Tag == Field.Tag; });
        if (Told == Of.Fields.end() && !Of.Mapped) continue;
        const Shown Tells = Told == Of.Fields.end() ? Shown{.Tag = Field.Tag} : *Told;
        To.Element(L"FIELDS");
        To.Section(L"FIELDPARMS", {++At}, [&](LineWriter& Out) {
            Out.Number(L"TAG=", Tells.Tag);
            Out.Quoted(L"BROWSE=", Tells.Browse);
            Out.Quoted(L"PROFILE=", Tells.Profile);
            Out.Plain(L"FLAGS=", Tells.Flags);
        });
        const std::wstring Label = std::wstring(Field.Name) + L": ";
        DemoTexts Labels{{L"ITA", Label}};
        Labels.insert(Labels.end(), Tells.Labels.begin(), Tells.Labels.end());
        To.Captions(L"FIELDCAPTION", {At}, Labels);
    }
}

DemoObject Profile(const ProfileRow& Of) {
    DemoDraft Made(L"PROFILE", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Buttons(Of.Buttons);
    Made.Popups(Of.Popups);
    Made.Captions(L"TITLES", {}, Of.Titles);
    Made.Pages(L"RECHTML", Of.RecHtml);
    Made.Pages(L"LOANHTML", Of.LoanHtml);
    std::int32_t At = 0;
    for (const Format& Each : Of.Formats) {
        Made.Element(L"FORMATS");
        Made.Section(L"FORMATPARMS", {++At}, Each.Parms);
        Made.Captions(L"FORMATCAPTION", {At}, Each.Labels);
    }
    At = 0;
    for (const LoanTable& Each : Of.LoanTables) {
        Made.Element(L"LOANTABLES");
        Made.Section(L"LOANTABLEPARMS", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"NATURE=", Each.Nature);
            Out.Quoted(L"LEVEL=", Each.Level);
        });
        Made.Captions(L"LOANTABLECAPTION", {At}, Each.Messages);
    }
    AddFields(Made, Of);
    Made.Pages(L"HTML", Of.Html);
    return Made.Take();
}

// Web clients.

DemoObject WebClient(std::wstring_view Name, std::wstring_view Desc, std::wstring_view Parms,
                     const std::vector<DemoButton>& Buttons) {
    DemoDraft Made(L"WEBCLIENT", Name, Desc);
    Made.Section(L"PARMS", {1}, Parms);
    Made.Buttons(Buttons);
    const DemoButton& First = Buttons.front();
    const auto& [Language, Text] = First.Tips.front();
    Made.Popups({{Text, Language, First.Code, First.Action}});
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoClients() {
    const DemoButton Back{
        L"INDIETRO", L"HBACK", {{L"ITA", L"Pagina precedente"}, {L"ENG", L"Previous page"}}};
    std::vector<DemoObject> All{
        Base(L"BIBLIO", L"Base della biblioteca: notizie, copie, prestiti", kBaseParms),
        Base(L"PROVE", L"Copia della base su cui si fa pratica", kTrialParms),
        VClient({L"LETTORI",
                 L"Postazioni del pubblico",
                 kReadersParms,
                 {{L"Sans", 9}, {L"Sans", 11}},
                 {{L"Sans", 10, true}},
                 {{L"Serif", 14, true}, {L"Serif", 12}},
                 kReadersMessages}),
        VClient({L"BANCO",
                 L"Postazioni del banco dei prestiti",
                 kDeskParms,
                 {{L"Sans", 9}},
                 {{L"Sans", 9, true}},
                 {{L"Serif", 12, true}},
                 kDeskMessages}),
    };
    for (const ProfileRow& Each : {Card(), LoanView(), Children(), Periodical()})
        All.push_back(Profile(Each));
    All.push_back(WebClient(L"INTERNET", L"Catalogo in linea, dal navigatore di casa",
                            LR"(ADDRESSBAR= FALSE
STATUSBAR= FALSE
DEFAULTFONTSIZE= 2
PROTOCOL= "HTTP"
PROTOCOL= "HTTPS"
TOOLALIGN= TOP
FLAGS= ALLOWNEWWINDOW
)",
                            {Back,
                             {L"CERCA", L"QUERY", {{L"ITA", L"Nuova ricerca"}, {L"ENG", L"New search"}}},
                             {L"AIUTO", L"HELP", {{L"ITA", L"Aiuto"}, {L"ENG", L"Help"}}}}));
    All.push_back(WebClient(L"SALA", L"Navigatore delle postazioni in sala, caratteri grandi",
                            LR"(LARGEBUTT= TRUE
DEFAULTFONTSIZE= 4
PROTOCOL= "HTTPS"
TOOLALIGN= BOTTOM
FLAGS= NONE
MIRROROF= "INTERNET"
)",
                            {Back}));
    return All;
}

}  // namespace kv::host
